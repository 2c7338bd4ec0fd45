#!/usr/bin/env bash
# The run command: installs what is missing, builds, and starts VendrakoTimer.
# With a display it simply runs the program. Without one it starts it on a virtual display,
# waits for the main window, saves a screenshot, and closes the program through its normal
# closing path (SIGTERM), so that the whole start-up and shutdown are seen to work.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
root=$(vt_root)
cd "$root"

vt_install_packages "${VT_BUILD_PACKAGES[@]}" "${VT_DISPLAY_PACKAGES[@]}"

vt_build_program VendrakoTimer vendrako_short_date
exe="$root/build/run/src/VendrakoTimer"

# The program only works on a desktop with a day/month/year short date; the helper prints the
# format as the program reads it ("dd/MM/yyyy" when it will start).
format=$(QT_QPA_PLATFORM=offscreen "$root/build/run/src/vendrako_short_date" 2>/dev/null || true)
program=("$exe")
if [ "${format^^}" != "DD/MM/YYYY" ]; then
    echo "The short date format here is '${format}', not 'dd/MM/yyyy': using LC_TIME=en_GB.UTF-8."
    program=(env -u LC_ALL LC_TIME=en_GB.UTF-8 "$exe")
fi

if [ -n "${DISPLAY:-}" ] && xdpyinfo >/dev/null 2>&1; then
    echo "Starting $exe (its data lives beside it, in $(dirname "$exe"))"
    exec "${program[@]}" "$@"
fi

echo "No display: starting the program on a virtual display."
vt_start_xvfb
program_pid=""
cleanup() {
    [ -n "$program_pid" ] && kill "$program_pid" 2>/dev/null || true
    kill "$VT_XVFB_PID" 2>/dev/null || true
}
trap cleanup EXIT

"${program[@]}" "$@" &
program_pid=$!
if ! window=$(vt_wait_for_main_window "$program_pid"); then
    echo "The main window did not appear." >&2
    exit 1
fi
sleep 1
shot="$root/build/run/screenshot.png"
import -window root "$shot"
echo "The main window is up; screenshot saved to $shot"

kill -TERM "$program_pid"
status=0
wait "$program_pid" || status=$?
program_pid=""
echo "The program closed through its closing path (exit status $status)."
exit "$status"
