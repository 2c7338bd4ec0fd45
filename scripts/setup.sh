# Shared by the run and test commands: installs what a fresh Debian 12 machine is missing.
# Sourced, not run.

vt_install_packages() {
    local missing=()
    local pkg
    for pkg in "$@"; do
        if ! dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q "install ok installed"; then
            missing+=("$pkg")
        fi
    done
    if [ ${#missing[@]} -eq 0 ]; then
        return 0
    fi
    echo "== Installing: ${missing[*]}"
    local sudo=""
    if [ "$(id -u)" -ne 0 ]; then
        sudo="sudo"
    fi
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# What building the program needs.
VT_BUILD_PACKAGES=(g++ cmake ninja-build pkg-config qt6-base-dev qt6-base-dev-tools
                   libgl-dev libgtest-dev libgmock-dev googletest libbenchmark-dev libglib2.0-dev libical-dev)
# What showing it on a virtual display needs.
VT_DISPLAY_PACKAGES=(xvfb xauth xdotool x11-utils imagemagick fonts-dejavu-core)
# What the checks need besides.
VT_CHECK_PACKAGES=(clang clang-format libclang-rt-14-dev chromium
                   faketime trayer dbus-daemon at-spi2-core python3-pyatspi
                   python3-icalendar python3-recurring-ical-events)

vt_root() { cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd; }

vt_jobs() { nproc 2>/dev/null || echo 2; }

# Builds the given targets of the program in the Release tree build/run.
vt_build_program() {
    cmake -S . -B build/run -G Ninja -DCMAKE_BUILD_TYPE=Release -DVENDRAKO_TESTS=OFF -DVENDRAKO_BENCH=OFF >/dev/null
    cmake --build build/run -j "$(vt_jobs)" --target "$@"
}

# Starts a virtual display on a free number and exports DISPLAY; its process id goes into
# VT_XVFB_PID.
vt_start_xvfb() {
    local number
    number=$(for n in $(seq 90 130); do [ -e "/tmp/.X11-unix/X$n" ] || { echo "$n"; break; }; done)
    export DISPLAY=":$number"
    Xvfb "$DISPLAY" -screen 0 "${1:-1024x768x24}" -nolisten tcp >/dev/null 2>&1 &
    VT_XVFB_PID=$!
    for _ in $(seq 50); do xdpyinfo >/dev/null 2>&1 && break; sleep 0.1; done
}

# Waits up to 20 s for the main window of the program with process id $1 and prints its
# window id. The proximity report comes up before the main window: it is answered with Enter,
# as a user would. Fails when the program ends first or the window never comes.
vt_wait_for_main_window() {
    local pid=$1 window box
    for _ in $(seq 100); do
        window=$(xdotool search --name "VendrakoTimer 3.52" 2>/dev/null | head -n 1 || true)
        if [ -n "$window" ]; then
            echo "$window"
            return 0
        fi
        kill -0 "$pid" 2>/dev/null || return 1
        box=$(xdotool search --all --pid "$pid" --name "^VendrakoTimer$" 2>/dev/null | head -n 1 || true)
        if [ -n "$box" ]; then
            xdotool windowfocus --sync "$box" 2>/dev/null || true
            xdotool key --clearmodifiers Return 2>/dev/null || true
        fi
        sleep 0.2
    done
    return 1
}

# For the screenshot scripts: a temporary folder in $work, removed on exit together with the
# program ($program_pid) and the virtual display ($xvfb_pid) when they are still running. The
# program is given time to end before its display goes: Qt aborts a program whose display
# vanishes under it.
vt_temporary_workspace() {
    work=$(mktemp -d)
    xvfb_pid=""
    program_pid=""
    trap vt_remove_workspace EXIT
}
# Starts the program copied into the workspace on a virtual display of size $1, in developer
# mode, and waits for its main window: sets xvfb_pid, program_pid and window (its id).
vt_show_workspace_program() {
    vt_start_xvfb "$1"
    xvfb_pid=$VT_XVFB_PID
    LC_TIME=en_GB.UTF-8 HOME="$work" "$work/VendrakoTimer" DESA >/dev/null 2>&1 &
    program_pid=$!
    window=$(vt_wait_for_main_window "$program_pid") || { echo "The main window did not appear." >&2; exit 1; }
    sleep 1
}
vt_remove_workspace() {
    if [ -n "$program_pid" ]; then
        kill "$program_pid" 2>/dev/null || true
        for _ in $(seq 30); do kill -0 "$program_pid" 2>/dev/null || break; sleep 0.1; done
    fi
    [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null || true
    rm -rf "$work"
}
