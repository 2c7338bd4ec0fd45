#!/usr/bin/env bash
# Takes a picture of the main window with some marked days for the README: builds the program,
# copies it into a fresh folder with a prepared agenda around today's date, starts it on a
# virtual display, points at a marked day so that its details show, and saves
# docs/main-window.png.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
root=$(vt_root)
cd "$root"

vt_install_packages "${VT_BUILD_PACKAGES[@]}" "${VT_DISPLAY_PACKAGES[@]}"
vt_build_program VendrakoTimer

vt_temporary_workspace
cp build/run/src/VendrakoTimer "$work/"

day() { date -d "$1" +%d/%m/%Y; }
# Today's view starts on the Monday of this week: the cell of a date is its distance from there.
monday=$(date -d "today -$(( $(date +%u) - 1 )) days" +%F)
cell_of() { echo $(( ( $(date -d "$1" +%s) - $(date -d "$monday" +%s) ) / 86400 )); }

printf '%s\r\n' "[GENERAL]" "FECHA=$(date +%d-%m-%y)" "ENTRADA1=08:00" "SALIDA1=" "ENTRADA2=" "NUM_ALARMAS=3" "" \
    "[CONFIG]" "" \
    "[REPETICIONES]" "REP_001=$(day '+2 days') 09:30 Llamar a la gestoria" "REP_002=$(day '+9 days') 12:00 Revisar el informe" "" \
    "[ALARMAS]" "ALA_001=$(day '+2 days') 10:00 01 M 07 0 Pagar el alquiler" \
    "ALA_002=$(day '+5 days') 09:00 01 A 14 1 Cumpleanos de Ana (1990)" \
    "ALA_003=$(day '+12 days') 17:00 07 D 00 0 Clase de ingles" "" \
    "[ACCESOS]" "ULTIMO=$(date +%d/%m/%Y) 00:00:00" >"$work/VendrakoTimer.ini"

vt_show_workspace_program 800x600x24

# Point at the day with the birthday: its texts show in the detail area below the calendar.
cell=$(cell_of "+5 days")
eval "$(xdotool getwindowgeometry --shell "$window")"
calendar_x=$((X + 224)); calendar_y=$((Y + 28))
xdotool mousemove "$((calendar_x + (cell % 7) * 28 + 14))" "$((calendar_y + (cell / 7) * 29 + 14))"
sleep 1
eval "$(xdotool getwindowgeometry --shell "$window")"
import -window root -crop "${WIDTH}x${HEIGHT}+${X}+${Y}" "$root/docs/main-window.png"
echo "Saved $root/docs/main-window.png"
kill -TERM "$program_pid"
wait "$program_pid" || true
program_pid=""
