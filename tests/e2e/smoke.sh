#!/usr/bin/env bash
# Starts the real program on a virtual display, in a fresh folder of its own, and checks that
# its window appears, that a second copy on the same folder is turned away without touching
# anything, and that SIGTERM takes the closing path and ends the program cleanly, within 2 s
# whatever is on the screen (the start-up report, the repeat-later dialog, a closing scan that
# would warn). Then the installed desktop entry: a Spanish desktop starts the program, a
# month-first one is refused.
# Usage: smoke.sh /path/to/VendrakoTimer
set -u

executable=${1:?usage: smoke.sh /path/to/VendrakoTimer}
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# The refusal's text is read over the accessibility bus, on a session bus of this check's own.
if [ -z "${VT_E2E_SESSION:-}" ]; then
    VT_E2E_SESSION=1 exec dbus-run-session -- bash "${BASH_SOURCE[0]}" "$@" 2> >(grep -v "dbus-daemon" >&2)
fi
source "$here/desktop.bash"
start_display
widgets() { /usr/bin/python3 "$here/widgets.py" "$@"; }
widgets names >/dev/null 2>&1
program+=("$app_dir/VendrakoTimer")
first_pid=""
second_pid=""

listing() { (cd "$app_dir" && find . -printf '%p %s %T@\n' | sort); }

# "DESA" skips the start-up backups, so a "Backup" folder can only come from the closing path.
"${program[@]}" DESA >>"$work/program.log" 2>&1 &
first_pid=$!
background_pids+=("$first_pid")
# The proximity report comes up before the main window; it is answered like a user would.
if wait_for_window 20 --all --pid "$first_pid" --name "^VendrakoTimer$"; then
    pass "the proximity report is shown at start-up"
    answer_box "$first_pid"
else
    fail "no proximity report at start-up"
fi
if wait_for_window 20 --name "^VendrakoTimer 3\.52$"; then
    pass "main window \"VendrakoTimer 3.52\" appeared"
else
    fail "no window \"VendrakoTimer 3.52\" within 20 s"
    cat "$work/program.log"
    exit 1
fi
if [ -e "$app_dir/Backup" ]; then
    fail "\"Backup\" exists before closing although started with DESA"
fi

# A second copy on the same folder says so and leaves; it must not touch the folder.
before=$(listing)
"${program[@]}" >>"$work/program.log" 2>&1 &
second_pid=$!
background_pids+=("$second_pid")
if wait_for_window 20 --all --pid "$second_pid" --name "^VendrakoTimer$"; then
    pass "second instance shows its message box"
    # Enter presses the box's button; the second copy must then end by itself.
    answer_box "$second_pid"
else
    fail "second instance showed no message box"
fi
if wait_for_exit "$second_pid" 10; then
    if [ "$exit_status" -ne 0 ]; then
        pass "second instance exited with status $exit_status"
    else
        fail "second instance exited with status 0"
    fi
else
    fail "second instance did not end after its message box was answered"
fi
second_pid=""
after=$(listing)
if [ "$before" = "$after" ]; then
    pass "second instance left the folder unchanged"
else
    fail "second instance changed the folder"
    diff <(echo "$before") <(echo "$after")
fi
if kill -0 "$first_pid" 2>/dev/null; then
    pass "first instance still running"
else
    fail "first instance died while the second was turned away"
fi

# The session ending: SIGTERM takes the closing path, without anything modal.
kill -TERM "$first_pid"
if wait_for_exit "$first_pid" 10; then
    if [ "$exit_status" -eq 0 ]; then
        pass "SIGTERM: program exited with status 0"
    else
        fail "SIGTERM: program exited with status $exit_status"
    fi
else
    fail "SIGTERM: program still running after 10 s"
fi
first_pid=""
if [ -d "$app_dir/Backup" ]; then
    pass "closing path ran (\"Backup\" folder created)"
else
    fail "closing path did not run (no \"Backup\" folder)"
fi

# SIGTERM to process $1 (started at "$2", a date +%s.%N): gone within 2 s with status 0.
ends_within_2s() {
    kill -TERM "$1"
    if wait_for_exit "$1" 3; then
        local took
        took=$(echo "$(date +%s.%N) - $2" | bc)
        if [ "$(echo "$took < 2" | bc)" -eq 1 ] && [ "$exit_status" -eq 0 ]; then
            pass "$3: gone after SIGTERM in ${took%???????} s, status 0"
        else
            fail "$3: took ${took} s after SIGTERM, status $exit_status"
        fi
    else
        fail "$3: still running 3 s after SIGTERM"
    fi
}

# SIGTERM while the start-up report is open: the closing path still runs (with DESA only it
# makes "Backup").
rm -rf "$app_dir/Backup"
"${program[@]}" DESA >>"$work/program.log" 2>&1 &
pid=$!
background_pids+=("$pid")
if wait_for_window 20 --all --pid "$pid" --name "^VendrakoTimer$"; then
    ends_within_2s "$pid" "$(date +%s.%N)" "start-up report open"
    [ -d "$app_dir/Backup" ] && pass "the closing path ran over the start-up report" ||
        fail "no \"Backup\" after SIGTERM over the start-up report"
else
    fail "no proximity report at start-up"
fi

# SIGTERM while the repeat-later dialog shows a due reminder: the reminder stays.
ini="$app_dir/VendrakoTimer.ini"
today=$(TZ=Europe/Madrid date +%d/%m/%Y)
printf '%s\r\n' "[GENERAL]" "FECHA=$(TZ=Europe/Madrid date +%d-%m-%y)" "NUM_ALARMAS=0" "" "[REPETICIONES]" \
    "REP_001=$today 00:00 Llamar a Ana" "" "[ALARMAS]" "" >"$ini"
"${program[@]}" DESA >>"$work/program.log" 2>&1 &
pid=$!
background_pids+=("$pid")
wait_for_window 20 --all --pid "$pid" --name "^VendrakoTimer$" && answer_box "$pid"
if wait_for_window 20 --pid "$pid" --name "^Repetici"; then
    ends_within_2s "$pid" "$(date +%s.%N)" "repeat-later dialog open"
    grep -aq "^REP_001=$today 00:00 Llamar a Ana" "$ini" && pass "the reminder is still in the settings file" ||
        fail "the reminder is gone: $(grep -a REP_ "$ini")"
else
    fail "no repeat-later dialog"
fi
rm -f "$ini"

# SIGTERM when the closing scan would warn of a recent file dated in the future.
touch "$work/futuro.odt"
mkdir -p "$work/home/.local/share"
cat >"$work/home/.local/share/recently-used.xbel" <<XBEL
<?xml version="1.0" encoding="UTF-8"?>
<xbel version="1.0" xmlns:bookmark="http://www.freedesktop.org/standards/desktop-bookmarks">
  <bookmark href="file://$work/futuro.odt" added="2099-01-01T10:00:00Z" modified="2099-01-01T10:00:00Z" visited="2099-01-01T10:00:00Z"/>
</xbel>
XBEL
"${program[@]}" DESA >>"$work/program.log" 2>&1 &
pid=$!
background_pids+=("$pid")
# The start-up report, then the start-up scan's own warning, answered like a user would.
for box in report warning; do
    if wait_for_window 20 --all --pid "$pid" --name "^VendrakoTimer$"; then
        answer_box "$pid"
        sleep 0.5
    else
        fail "no $box box at start-up"
    fi
done
if wait_for_window 20 --pid "$pid" --name "^VendrakoTimer 3\.52$"; then
    sleep 1
    ends_within_2s "$pid" "$(date +%s.%N)" "closing scan with a future file"
else
    fail "no main window after the warning of the future file"
fi
rm -f "$work/home/.local/share/recently-used.xbel"

# The installed desktop entry, started the way a desktop does, in Spanish and in US English.
build_dir=$(dirname "$executable")
while [ ! -f "$build_dir/CMakeCache.txt" ] && [ "$build_dir" != / ]; do build_dir=$(dirname "$build_dir"); done
prefix="$work/installed"
if cmake --install "$build_dir" --prefix "$prefix" >"$work/install.log" 2>&1; then
    exec_line=$(sed -n 's/^Exec=//p' "$prefix/share/applications/VendrakoTimer.desktop")
    read -r -a exec_words <<<"$exec_line"
    # A desktop session's environment: the language in LANG alone, the entry's Exec on PATH.
    session=(env -u LC_ALL -u LC_TIME -u LC_MESSAGES -u QT_QPA_PLATFORM PATH="$prefix/bin:$PATH"
        HOME="$work/home" XDG_RUNTIME_DIR="$work/runtime" XDG_CONFIG_HOME="$work/home/.config"
        XDG_DATA_HOME="$work/home/.local/share" TZ=Europe/Madrid QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1)
    installed_listing() { (cd "$prefix/bin" && find . | sort); }

    before=$(installed_listing)
    "${session[@]}" LANG=en_US.UTF-8 "${exec_words[@]}" >>"$work/program.log" 2>&1 &
    pid=$!
    background_pids+=("$pid")
    refusal="Para que el programa funcione correctamente el formato de la fecha debe ser 'dd/MM/yyyy'."
    if wait_for_window 20 --all --pid "$pid" --name "^VendrakoTimer$"; then
        for _ in $(seq 1 25); do
            widgets names 2>/dev/null | grep -Fxq "label: $refusal" && break
            sleep 0.2
        done
        widgets names 2>/dev/null | grep -Fxq "label: $refusal" && pass "en_US: refused with the date-format message" ||
            { fail "en_US: the box does not read the date-format message"; widgets names | head -n 20; }
        answer_box "$pid"
        if wait_for_exit "$pid" 10; then
            [ "$exit_status" -ne 0 ] && pass "en_US: ended with status $exit_status" ||
                fail "en_US: ended with status 0"
        else
            fail "en_US: still running after its refusal was answered"
        fi
    else
        fail "en_US: no refusal box"
    fi
    [ "$before" = "$(installed_listing)" ] && pass "en_US: nothing written beside the program" ||
        fail "en_US: files were written: $(installed_listing | tr '\n' ' ')"

    "${session[@]}" LANG=es_ES.UTF-8 "${exec_words[@]}" >>"$work/program.log" 2>&1 &
    pid=$!
    background_pids+=("$pid")
    wait_for_window 20 --all --pid "$pid" --name "^VendrakoTimer$" && answer_box "$pid"
    if wait_for_window 20 --pid "$pid" --name "^VendrakoTimer 3\.52$"; then
        pass "es_ES through the desktop entry's \"Exec=$exec_line\": the main window is up"
    else
        fail "es_ES through the desktop entry: no main window"
    fi
    kill -TERM "$pid" 2>/dev/null
    wait_for_exit "$pid" 5 || fail "es_ES: still running after SIGTERM"
else
    fail "cmake --install into $prefix failed"
    cat "$work/install.log"
fi

finish smoke
