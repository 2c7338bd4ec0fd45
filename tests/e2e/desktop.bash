# Shared by the end-to-end checks that drive the real program (sourced, not run): a session bus
# and a virtual display of the check's own, a scratch folder with a copy of the program, the
# environment the program runs in, the reading of its widgets over the accessibility bus, and
# the waits on windows and processes.
# The sourcing script sets `executable` first; it gets `work`, `app_dir` and `program`.
# shellcheck disable=SC2034,SC2154

# The accessibility bus, over which labels are read, lives on a session bus of this check's own.
if [ -z "${VT_E2E_SESSION:-}" ]; then
    VT_E2E_SESSION=1 exec dbus-run-session -- bash "$0" "$@" 2> >(grep -v "dbus-daemon" >&2)
fi
e2e_dir=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$e2e_dir/checks.bash"

work=$(mktemp -d)
app_dir="$work/app"
mkdir -p "$app_dir" "$work/home"
mkdir -m 700 "$work/runtime"
cp "$executable" "$app_dir/VendrakoTimer"

# Processes to kill when the check ends, however it ends; the display goes last.
background_pids=()
cleanup() {
    local i
    for ((i = ${#background_pids[@]} - 1; i >= 0; i--)); do
        kill -KILL "${background_pids[i]}" 2>/dev/null && wait "${background_pids[i]}" 2>/dev/null
    done
    rm -rf "$work"
}
trap cleanup EXIT

# Runs "$@" (quietly) every 0.1 s until it succeeds, for up to $1 seconds of real time.
wait_until() {
    local end=$((${EPOCHREALTIME/./} + $1 * 1000000))
    shift
    until "$@" >/dev/null 2>&1; do
        [ "${EPOCHREALTIME/./}" -lt "$end" ] || return 1
        sleep 0.1
    done
}
# Waits up to $1 seconds for a window matching the rest of the arguments (xdotool search).
wait_for_window() { wait_until "$1" xdotool search "${@:2}"; }
# Waits for the message box titled "VendrakoTimer" of process $1 (up to 20 s unless $2 says
# otherwise); answer_box then presses Enter in it.
box_up() { wait_for_window "${2:-20}" --all --pid "$1" --name "^VendrakoTimer$"; }
answer_box() {
    box_up "$@" || return 1
    xdotool windowfocus --sync "$(xdotool search --all --pid "$1" --name "^VendrakoTimer$" | head -n1)" 2>/dev/null
    xdotool key --clearmodifiers Return
}

# Waits up to $2 seconds for process $1 to end; its exit status is left in $exit_status.
gone() { ! kill -0 "$1"; }
wait_for_exit() {
    wait_until "$2" gone "$1" || return 1
    wait "$1"
    exit_status=$?
}
# Checks that process $1 ends within $2 seconds with a status that passes the test "$3 $4"
# ("-eq 0", "-ne 0"); $5 says which process it is.
exits() {
    if wait_for_exit "$1" "$2"; then
        check "$5 ended with status $exit_status" [ "$exit_status" "$3" "$4" ]
    else
        fail "$5 still runs $2 s later"
    fi
}

# A display of our own: Xvfb picks a free number and reports it.
Xvfb -displayfd 9 -nolisten tcp -screen 0 1024x768x24 9>"$work/display" 2>"$work/xvfb.log" &
background_pids+=($!)
if ! wait_until 10 test -s "$work/display"; then
    fail "Xvfb did not start"
    cat "$work/xvfb.log"
    exit 1
fi
DISPLAY=":$(head -n1 "$work/display")"
export DISPLAY

# The program's widgets as the accessibility bus shows them (widgets.py). The first call starts
# the accessibility registry, which the program looks for only when it starts.
widgets() { /usr/bin/python3 "$e2e_dir/widgets.py" "$@"; }
widgets names >/dev/null 2>&1

# The program checks for a "dd/MM/yyyy" short date, which en_GB gives; LC_ALL would override
# LC_TIME, so it goes. Home and runtime folders are the check's own (`home_env`). env execs the
# program, so the pid of a background start is the program's own. A script may put a prefix
# (faketime) before the program.
home_env=(HOME="$work/home" XDG_RUNTIME_DIR="$work/runtime" XDG_CONFIG_HOME="$work/home/.config"
    XDG_DATA_HOME="$work/home/.local/share" TZ=Europe/Madrid)
program=(env -u LC_ALL -u QT_QPA_PLATFORM LANG=C.UTF-8 LC_TIME=en_GB.UTF-8 "${home_env[@]}")

# Starts "$@" in the background, its output in the program log; its process id goes in `pid`.
start() {
    "$@" >>"$work/program.log" 2>&1 &
    pid=$!
    background_pids+=("$pid")
}

# Ends the check: the program's output on failure, and the exit status.
program_output() {
    echo "--- program output ---"
    cat "$work/program.log" 2>/dev/null
}
finish() { finish_checks "$1" program_output; }
