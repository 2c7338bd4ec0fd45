#!/usr/bin/env bash
# Starts the real program on a virtual display, in a fresh folder of its own, and checks that
# its window appears, that a second copy on the same folder is turned away without touching
# anything, and that SIGTERM takes the closing path and ends the program cleanly.
# Usage: smoke.sh /path/to/VendrakoTimer
set -u

executable=${1:?usage: smoke.sh /path/to/VendrakoTimer}
source "$(dirname "${BASH_SOURCE[0]}")/desktop.bash"
start_display
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

finish smoke
