#!/usr/bin/env bash
# Starts the real program on a virtual display, in a fresh folder of its own, and checks that
# its window appears, that a second copy on the same folder is turned away without touching
# anything, and that SIGTERM takes the closing path and ends the program cleanly.
# Usage: smoke.sh /path/to/VendrakoTimer
set -u

executable=${1:?usage: smoke.sh /path/to/VendrakoTimer}
failures=0
pass() { echo "PASS: $*"; }
fail() {
    echo "FAIL: $*"
    failures=$((failures + 1))
}

work=$(mktemp -d)
app_dir="$work/app"
mkdir -p "$app_dir" "$work/home"
xvfb_pid=""
first_pid=""
second_pid=""

cleanup() {
    for pid in "$second_pid" "$first_pid" "$xvfb_pid"; do
        if [ -n "$pid" ] && kill -0 "$pid" 2>/dev/null; then
            kill -KILL "$pid" 2>/dev/null
            wait "$pid" 2>/dev/null
        fi
    done
    rm -rf "$work"
}
trap cleanup EXIT

cp "$executable" "$app_dir/VendrakoTimer"

# A display of our own: Xvfb picks a free number and reports it.
Xvfb -displayfd 9 -nolisten tcp -screen 0 1024x768x24 9>"$work/display" 2>"$work/xvfb.log" &
xvfb_pid=$!
for _ in $(seq 1 100); do
    [ -s "$work/display" ] && break
    sleep 0.1
done
if [ ! -s "$work/display" ]; then
    fail "Xvfb did not start"
    cat "$work/xvfb.log"
    exit 1
fi
export DISPLAY=":$(head -n1 "$work/display")"

# The program checks for a "dd/MM/yyyy" short date, which en_GB gives; LC_ALL would override
# LC_TIME, so it goes. Home and runtime folders are the test's own. env execs the program,
# so the pid of a background start is the program's own.
mkdir -m 700 "$work/runtime"
program=(env -u LC_ALL -u QT_QPA_PLATFORM LANG=C.UTF-8 LC_TIME=en_GB.UTF-8 TZ=Europe/Madrid
    HOME="$work/home" XDG_RUNTIME_DIR="$work/runtime" XDG_CONFIG_HOME="$work/home/.config"
    "$app_dir/VendrakoTimer")

# Waits up to $1 seconds for a window matching the rest of the arguments (xdotool search).
wait_for_window() {
    local seconds=$1
    shift
    local tries=$((seconds * 5))
    for _ in $(seq 1 "$tries"); do
        if xdotool search "$@" >/dev/null 2>&1; then
            return 0
        fi
        sleep 0.2
    done
    return 1
}

# Waits up to $2 seconds for process $1 to end; its exit status is left in $exit_status.
wait_for_exit() {
    local pid=$1 tries=$(($2 * 10))
    for _ in $(seq 1 "$tries"); do
        if ! kill -0 "$pid" 2>/dev/null; then
            wait "$pid"
            exit_status=$?
            return 0
        fi
        sleep 0.1
    done
    return 1
}

listing() { (cd "$app_dir" && find . -printf '%p %s %T@\n' | sort); }

# Presses Enter in the message box titled "VendrakoTimer" of process $1.
answer_box() {
    local box
    box=$(xdotool search --all --pid "$1" --name "^VendrakoTimer$" | head -n1)
    xdotool windowfocus --sync "$box" 2>/dev/null
    xdotool key --clearmodifiers Return
}

# "DESA" skips the start-up backups, so a "Backup" folder can only come from the closing path.
"${program[@]}" DESA >>"$work/program.log" 2>&1 &
first_pid=$!
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

if [ "$failures" -ne 0 ]; then
    echo "--- program output ---"
    cat "$work/program.log"
    echo "FAIL: $failures check(s) failed"
    exit 1
fi
echo "PASS: all smoke checks"
