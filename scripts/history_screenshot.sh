#!/usr/bin/env bash
# Takes a picture of the "Histórico de jornadas" window for the README: starts the program in a
# fresh folder with a month of recorded days, opens the window from the end of the "Opciones"
# menu, and saves docs/history-window.png. An executable may be given; otherwise it is built.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
root=$(vt_root)
cd "$root"

vt_install_packages "${VT_DISPLAY_PACKAGES[@]}"
program=${1:-}
if [ -z "$program" ]; then
    vt_install_packages "${VT_BUILD_PACKAGES[@]}"
    vt_build_program VendrakoTimer
    program=build/run/src/VendrakoTimer
fi

vt_temporary_workspace
cp "$program" "$work/VendrakoTimer"

printf '%s\r\n' "[GENERAL]" "FECHA=$(date +%d-%m-%y)" "ENTRADA1=08:00" "SALIDA1=14:00" "ENTRADA2=15:00" "NUM_ALARMAS=0" "" \
    "[CONFIG]" "LUNES=08:00|P" "MARTES=08:00|P" "MIERCOLES=08:00|P" "JUEVES=08:00|P" "VIERNES=07:00|C" \
    "SABADO=00:00|C" "DOMINGO=00:00|C" >"$work/VendrakoTimer.ini"
# The month so far: working days with varied leaving times, a holiday, one day left open.
{
    printf 'Fecha;Entrada 1;Salida 1;Entrada 2;Salida;Jornada;Previsto;Ausencia\r\n'
    today=$(date +%d)
    for day in $(seq 1 $((10#$today - 1))); do
        date=$(date +%Y-%m)-$(printf %02d "$day")
        weekday=$(date -d "$date" +%u)
        [ "$weekday" -gt 5 ] && continue
        shown=$(date -d "$date" +%d/%m/%Y)
        if [ "$weekday" -eq 5 ]; then
            printf '%s;07:5%d;;;15:%d0;C;07:00;\r\n' "$shown" $((day % 10)) $((day % 6))
        elif [ $((day % 11)) -eq 3 ]; then
            printf '%s;;;;;P;08:00;festivo\r\n' "$shown"
        elif [ $((day % 13)) -eq 5 ]; then
            printf '%s;08:0%d;14:00;;;P;08:00;\r\n' "$shown" $((day % 10))
        else
            printf '%s;08:0%d;14:00;15:00;17:%d5;P;08:00;\r\n' "$shown" $((day % 10)) $((day % 6))
        fi
    done
} >"$work/Historico.csv"

vt_show_workspace_program 1024x900x24
# "Opciones" is the first menu; its last item is the history. An open day is asked about first:
# Escape leaves it open, so the table shows it as such.
eval "$(xdotool getwindowgeometry --shell "$window")"
xdotool mousemove "$((X + 30))" "$((Y + 10))" click 1 2>/dev/null || true
sleep 0.5
xdotool key Up Return
sleep 1
# Windows named like the history that are narrow are its questions about open days.
windows_named() {
    xdotool search --all --pid "$program_pid" --name "de jornadas$" 2>/dev/null | while read -r id; do
        eval "$(xdotool getwindowgeometry --shell "$id")"
        if { [ "$1" = big ] && [ "$WIDTH" -gt 700 ]; } || { [ "$1" = small ] && [ "$WIDTH" -le 700 ]; }; then
            echo "$id"
        fi
    done | head -n 1 || true
}
for _ in 1 2 3 4 5; do
    asked=$(windows_named small)
    [ -z "$asked" ] && break
    xdotool windowfocus --sync "$asked" key Escape 2>/dev/null || true
    sleep 0.5
done
sleep 1
shown=$(windows_named big)
[ -n "$shown" ] || { import -window root /tmp/h_root.png; echo "The history window did not appear." >&2; exit 1; }
eval "$(xdotool getwindowgeometry --shell "$shown")"
import -window root -crop "${WIDTH}x${HEIGHT}+${X}+${Y}" "$root/docs/history-window.png"
echo "Saved $root/docs/history-window.png"
kill -TERM "$program_pid"
wait "$program_pid" || true
program_pid=""
