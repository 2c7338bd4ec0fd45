# Shared by the end-to-end checks that drive the real program (sourced, not run): a virtual
# display of the check's own, a scratch folder with a copy of the program, the environment the
# program runs in, and the waits on windows and processes.
# The sourcing script sets `executable` first; it gets `work`, `app_dir` and `program`.

source "$(dirname "${BASH_SOURCE[0]}")/checks.bash"

work=$(mktemp -d)
app_dir="$work/app"
mkdir -p "$app_dir" "$work/home"
mkdir -m 700 "$work/runtime"
cp "$executable" "$app_dir/VendrakoTimer"

# Processes to kill when the check ends, however it ends; the display goes last.
background_pids=()
cleanup() {
    local i pid
    for ((i = ${#background_pids[@]} - 1; i >= 0; i--)); do
        pid=${background_pids[i]}
        if kill -0 "$pid" 2>/dev/null; then
            kill -KILL "$pid" 2>/dev/null
            wait "$pid" 2>/dev/null
        fi
    done
    rm -rf "$work"
}
trap cleanup EXIT

# A display of our own: Xvfb picks a free number and reports it.
start_display() {
    Xvfb -displayfd 9 -nolisten tcp -screen 0 1024x768x24 9>"$work/display" 2>"$work/xvfb.log" &
    background_pids+=($!)
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
}

# The program checks for a "dd/MM/yyyy" short date, which en_GB gives; LC_ALL would override
# LC_TIME, so it goes. Home and runtime folders are the check's own. env execs the program, so
# the pid of a background start is the program's own. A script may put a prefix (faketime)
# before the program.
program=(env -u LC_ALL -u QT_QPA_PLATFORM LANG=C.UTF-8 LC_TIME=en_GB.UTF-8 TZ=Europe/Madrid
    HOME="$work/home" XDG_RUNTIME_DIR="$work/runtime" XDG_CONFIG_HOME="$work/home/.config"
    XDG_DATA_HOME="$work/home/.local/share")

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

# Presses Enter in the message box titled "VendrakoTimer" of process $1.
answer_box() {
    local box
    box=$(xdotool search --all --pid "$1" --name "^VendrakoTimer$" | head -n1)
    xdotool windowfocus --sync "$box" 2>/dev/null
    xdotool key --clearmodifiers Return
}

# Ends the check: the program's output on failure, and the exit status.
program_output() {
    echo "--- program output ---"
    cat "$work/program.log" 2>/dev/null
}
finish() { finish_checks "$1" program_output; }
