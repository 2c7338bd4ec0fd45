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
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

for tool in trayer dbus-run-session xdotool Xvfb /usr/libexec/at-spi-bus-launcher; do
    if ! command -v "$tool" >/dev/null; then
        echo "FAIL: $tool is missing (the test command installs it)"
        exit 1
    fi
done
if ! /usr/bin/python3 -c "import pyatspi" 2>/dev/null; then
    echo "FAIL: python3-pyatspi is missing (the test command installs it)"
    exit 1
fi

# The accessibility bus lives on a session bus of this check's own.
if [ -z "${VT_E2E_SESSION:-}" ]; then
    VT_E2E_SESSION=1 exec dbus-run-session -- bash "${BASH_SOURCE[0]}" "$@" 2> >(grep -v "dbus-daemon" >&2)
fi

source "$here/desktop.bash"
start_display
widgets() { /usr/bin/python3 "$here/widgets.py" "$@"; }
# Starts the accessibility registry before the program, which looks for it only at start.
widgets names >/dev/null 2>&1

trayer --edge bottom --align right --widthtype request --height 24 --SetDockType true \
    >"$work/trayer.log" 2>&1 &
background_pids+=($!)
wait_for_window 10 --name "^panel$" || fail "the tray host did not start"

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

# Waits up to $3 seconds for the widget after the label $1 to read $2.
wait_for_text_after() {
    local tries=$(($3 * 5))
    for _ in $(seq 1 "$tries"); do
        [ "$(widgets text-after "$1" 2>/dev/null)" = "$2" ] && return 0
        sleep 0.2
    done
    return 1
}

# Clicks the middle of the widget of role $1 named $2, waiting up to 10 s for it.
click_widget() {
    local at
    for _ in $(seq 1 50); do
        if at=$(widgets center "$1" "$2" 2>/dev/null); then
            # shellcheck disable=SC2086
            xdotool mousemove --sync $at click 1
            return 0
        fi
        sleep 0.2
    done
    fail "no $1 \"$2\" to click"
    widgets names | head -n 60
    return 1
}

# Types $2 into the clock-in box labelled $1 and leaves it, as a user does.
type_clock_in() {
    click_widget text "$1" || return 1
    xdotool type --delay 50 "$2"
    xdotool key Tab
}

# ASan and faketime both want to come first among the preloaded libraries; under the
# sanitizers the order is left to the loader.
export ASAN_OPTIONS="${ASAN_OPTIONS:+$ASAN_OPTIONS:}verify_asan_link_order=0"
# "DESA" skips the start-up backups, so a mirror of LOG in Backup can only come from "Salir".
# The library rather than the faketime command, which would stand between this script and the
# program's process id.
libfaketime=$(ls /usr/lib/*/faketime/libfaketime.so.1 | head -n1)
program+=(QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 LD_PRELOAD="$libfaketime" FAKETIME="@2026-03-16 08:05:00" "$app_dir/VendrakoTimer" DESA)
"${program[@]}" >>"$work/program.log" 2>&1 &
pid=$!
background_pids+=("$pid")

if wait_for_window 30 --all --pid "$pid" --name "^VendrakoTimer$"; then
    answer_box "$pid"
else
    fail "no proximity report at start-up"
fi
if ! wait_for_window 30 --name "^VendrakoTimer 3\.52$"; then
    fail "no main window within 30 s"
    finish "working day"
fi

# The first start of a new day.
[ "$(setting FECHA)" = "16-03-26" ] && pass "FECHA is the new day" ||
    fail "FECHA is \"$(setting FECHA)\", not 16-03-26"
[ "$(setting ENTRADA1)" = "08:05" ] && pass "the arrival 08:05 is recorded" ||
    fail "ENTRADA1 is \"$(setting ENTRADA1)\", not 08:05"
[ -z "$(setting SALIDA1)$(setting ENTRADA2)" ] && pass "yesterday's break is cleared" ||
    fail "SALIDA1/ENTRADA2 still hold \"$(setting SALIDA1)\"/\"$(setting ENTRADA2)\""

# The overdue alarm.
if grep -aq "REP> 15/03/2026 10:00 00 D 00 0 Llamar a Ana" "$run_log" 2>/dev/null; then
    pass "the overdue alarm left a \"REP> \" line in TIMER.LOG"
else
    fail "no \"REP> \" line for the alarm in TIMER.LOG"
fi
if wait_for_window 15 --name "^Repetici"; then
    pass "the repeat-later dialog came up"
    click_widget "push button" "15 Minutos"
    # Started at 08:05:00; a quarter of an hour after the click, seconds dropped.
    for _ in $(seq 1 50); do
        case "$(setting REP_001)" in "16/03/2026 08:2"[01]" Llamar a Ana") break ;; esac
        sleep 0.2
    done
    case "$(setting REP_001)" in
        "16/03/2026 08:2"[01]" Llamar a Ana") pass "\"15 Minutos\" stored \"$(setting REP_001)\"" ;;
        *) fail "after \"15 Minutos\" REP_001 is \"$(setting REP_001)\"" ;;
    esac
    [ "$(setting NUM_ALARMAS)" = "0" ] && pass "the one-time alarm is gone from the agenda" ||
        fail "NUM_ALARMAS is \"$(setting NUM_ALARMAS)\""
    for _ in $(seq 1 25); do
        xdotool search --name "^Repetici" >/dev/null 2>&1 || break
        sleep 0.2
    done
    xdotool search --name "^Repetici" >/dev/null 2>&1 && fail "the repeat-later dialog stayed open"
else
    fail "no repeat-later dialog within 15 s"
fi

# The departure of a split day needs all three clock-ins.
wait_for_text_after "Salida:" "..." 5 && pass "the departure waits for the break" ||
    fail "the departure label reads \"$(widgets text-after Salida:)\", not \"...\""
type_clock_in "Salida 1:" 1200
wait_for_text_after "Salida:" "..." 5 || fail "the departure is set before \"Entrada 2\""
type_clock_in "Entrada 2:" 1230
# 08:05 + 8 h + the half-hour break.
if wait_for_text_after "Salida:" "16:35" 5; then
    pass "the departure label reads 16:35"
else
    fail "the departure label reads \"$(widgets text-after Salida:)\", not 16:35"
fi
[ "$(setting SALIDA1) $(setting ENTRADA2)" = "12:00 12:30" ] && pass "the break is saved" ||
    fail "SALIDA1/ENTRADA2 are \"$(setting SALIDA1)\"/\"$(setting ENTRADA2)\""

# "Salir" from the tray menu: the icon sits in trayer's panel.
[ -e "$app_dir/Backup/TIMER.LOG" ] && fail "TIMER.LOG was mirrored before closing"
panel=$(xdotool search --name "^panel$" | head -n1)
eval "$(xdotool getwindowgeometry --shell "$panel")"
xdotool mousemove --sync $((X + WIDTH / 2)) $((Y + HEIGHT / 2)) click 3
# The tray menu is not among the windows the accessibility bus lists; "Salir" is the item
# before the last ("Histórico de jornadas…"), which Up Up reaches from the top.
sleep 1
xdotool key Up Up Return
if wait_for_window 15 --all --pid "$pid" --name "^VendrakoTimer$"; then
    pass "the closing report is shown"
    if cmp -s "$run_log" "$app_dir/Backup/TIMER.LOG"; then
        pass "LOG is mirrored into Backup"
    else
        fail "Backup/TIMER.LOG is missing or differs from LOG/TIMER.LOG"
    fi
    answer_box "$pid"
else
    fail "no report after \"Salir\""
fi
if wait_for_exit "$pid" 20; then
    [ "$exit_status" -eq 0 ] && pass "the program ended with status 0" ||
        fail "the program ended with status $exit_status"
else
    fail "the program still runs 20 s after \"Salir\""
fi

finish "working day"
