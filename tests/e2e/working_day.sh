#!/usr/bin/env bash
# A user's morning with the real program: a desktop with a tray (trayer), the clock set by
# faketime to Monday 16/03/2026 08:05, and a settings file last written on the Sunday with an
# alarm for that Sunday. Drives the program with xdotool, reads its labels over the
# accessibility bus, and checks the files it writes:
#  - the first start of the day records the arrival and the new work date;
#  - the overdue alarm is logged as "REP> " and its repeat-later dialog comes up;
#  - "15 Minutos" stores the reminder again for a quarter of an hour later;
#  - typing "Salida 1" and "Entrada 2" of a split day sets the departure label;
#  - "Salir" in the tray menu mirrors LOG into Backup, shows the report and ends the program.
# Usage: working_day.sh /path/to/VendrakoTimer
set -u

executable=${1:?usage: working_day.sh /path/to/VendrakoTimer}
for tool in trayer dbus-run-session xdotool Xvfb /usr/libexec/at-spi-bus-launcher; do
    command -v "$tool" >/dev/null || { echo "FAIL: $tool is missing (the test command installs it)"; exit 1; }
done
/usr/bin/python3 -c "import pyatspi" 2>/dev/null ||
    { echo "FAIL: python3-pyatspi is missing (the test command installs it)"; exit 1; }
source "$(dirname "${BASH_SOURCE[0]}")/desktop.bash"

trayer --edge bottom --align right --widthtype request --height 24 --SetDockType true \
    >"$work/trayer.log" 2>&1 &
background_pids+=($!)
check "the tray host started" wait_for_window 10 --name "^panel$"

ini="$app_dir/VendrakoTimer.ini"
run_log="$app_dir/LOG/TIMER.LOG"
# Written as the program writes it: Windows-1252, CR LF. Monday is a split day of 8 hours.
printf '%s\r\n' "[GENERAL]" "FECHA=15-03-26" "ENTRADA1=08:00" "SALIDA1=14:00" "ENTRADA2=15:00" \
    "NUM_ALARMAS=1" "" "[CONFIG]" "LUNES=08:00|P" "MARTES=08:00|C" "MIERCOLES=08:00|C" \
    "JUEVES=08:00|C" "VIERNES=07:00|C" "SABADO=00:00|C" "DOMINGO=00:00|C" "" "[REPETICIONES]" "" \
    "[ALARMAS]" "ALA_001=15/03/2026 10:00 00 D 00 0 Llamar a Ana" "" "[ACCESOS]" \
    "ULTIMO=15/03/2026 18:00:00" >"$ini"

# The value of KEY in the settings file, without the CR.
setting() { grep -a "^$1=" "$ini" | head -n1 | cut -d= -f2- | tr -d '\r'; }
# Checks KEY=VALUE in the settings file for each argument (an empty VALUE: no such value).
settings_are() {
    local kv
    for kv; do
        check "${kv%%=*} is \"${kv#*=}\" (it reads \"$(setting "${kv%%=*}")\")" [ "$(setting "${kv%%=*}")" = "${kv#*=}" ]
    done
}
# Whether the departure label (the widget after "Salida:") reads $1.
departure_is() { [ "$(widgets text-after Salida:)" = "$1" ]; }

# Clicks the middle of the widget of role $1 named $2, waiting up to 10 s for it.
click_widget() {
    if ! wait_until 10 widgets center "$1" "$2"; then
        fail "no $1 \"$2\" to click"
        widgets names | head -n 60
        return 1
    fi
    # shellcheck disable=SC2046
    xdotool mousemove --sync $(widgets center "$1" "$2") click 1
}
# Types $2 into the clock-in box labelled $1 and leaves it, as a user does.
type_clock_in() { click_widget text "$1" && xdotool type --delay 50 "$2" && xdotool key Tab; }

# ASan and faketime both want to come first among the preloaded libraries; under the
# sanitizers the order is left to the loader.
export ASAN_OPTIONS="${ASAN_OPTIONS:+$ASAN_OPTIONS:}verify_asan_link_order=0"
# "DESA" skips the start-up backups, so a mirror of LOG in Backup can only come from "Salir".
# The library rather than the faketime command, which would stand between this script and the
# program's process id.
libfaketime=$(find /usr/lib -maxdepth 3 -path "*/faketime/libfaketime.so.1" | head -n1)
start "${program[@]}" QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 LD_PRELOAD="$libfaketime" \
    FAKETIME="@2026-03-16 08:05:00" "$app_dir/VendrakoTimer" DESA
check "the proximity report at start-up" answer_box "$pid" 30
check "the main window within 30 s" wait_for_window 30 --name "^VendrakoTimer 3\.52$" || finish "working day"

# The first start of a new day: the new date, the arrival 08:05, yesterday's break cleared.
settings_are FECHA=16-03-26 ENTRADA1=08:05 SALIDA1= ENTRADA2=

# The overdue alarm.
check "the overdue alarm left a \"REP> \" line in TIMER.LOG" \
    grep -aqs "REP> 15/03/2026 10:00 00 D 00 0 Llamar a Ana" "$run_log"
if check "the repeat-later dialog came up within 15 s" wait_for_window 15 --name "^Repetici"; then
    click_widget "push button" "15 Minutos"
    # Started at 08:05:00; a quarter of an hour after the click, seconds dropped.
    stored_again() { [[ $(setting REP_001) == "16/03/2026 08:2"[01]" Llamar a Ana" ]]; }
    wait_until 10 stored_again
    check "\"15 Minutos\" stored REP_001 \"$(setting REP_001)\"" stored_again
    # The one-time alarm is gone from the agenda.
    settings_are NUM_ALARMAS=0
    no_window() { ! xdotool search "$@"; }
    check "the repeat-later dialog closed" wait_until 5 no_window --name "^Repetici"
fi

# The departure of a split day needs all three clock-ins.
check "the departure waits for the break" wait_until 5 departure_is "..."
type_clock_in "Salida 1:" 1200
check "the departure still waits before \"Entrada 2\"" wait_until 5 departure_is "..."
type_clock_in "Entrada 2:" 1230
# 08:05 + 8 h + the half-hour break.
check "the departure label reads 16:35" wait_until 5 departure_is 16:35 ||
    echo "it reads \"$(widgets text-after Salida:)\""
settings_are SALIDA1=12:00 ENTRADA2=12:30

# "Salir" from the tray menu: the icon sits in trayer's panel.
check "TIMER.LOG is not mirrored before closing" [ ! -e "$app_dir/Backup/TIMER.LOG" ]
eval "$(xdotool getwindowgeometry --shell "$(xdotool search --name "^panel$" | head -n1)")"
xdotool mousemove --sync $((X + WIDTH / 2)) $((Y + HEIGHT / 2)) click 3
# The tray menu is not among the windows the accessibility bus lists; "Salir" is the item
# before the last ("Histórico de jornadas…"), which Up Up reaches from the top.
sleep 1
xdotool key Up Up Return
if check "the closing report is shown after \"Salir\"" box_up "$pid" 15; then
    check "LOG is mirrored into Backup" cmp -s "$run_log" "$app_dir/Backup/TIMER.LOG"
    answer_box "$pid"
fi
exits "$pid" 20 -eq 0 "the program after \"Salir\""

finish "working day"
