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

cmake -S . -B build/run -G Ninja -DCMAKE_BUILD_TYPE=Release -DVENDRAKO_TESTS=OFF -DVENDRAKO_BENCH=OFF >/dev/null
cmake --build build/run -j "$(vt_jobs)" --target VendrakoTimer vendrako_short_date
exe="$root/build/run/src/VendrakoTimer"

# The program only works with a day-first short date ("dd/MM/yyyy"); Qt takes it from LC_TIME.
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
display_number=$(for n in $(seq 90 130); do [ -e "/tmp/.X11-unix/X$n" ] || { echo "$n"; break; }; done)
export DISPLAY=":$display_number"
Xvfb "$DISPLAY" -screen 0 1024x768x24 -nolisten tcp >/dev/null 2>&1 &
xvfb_pid=$!
program_pid=""
cleanup() {
    [ -n "$program_pid" ] && kill "$program_pid" 2>/dev/null || true
    kill "$xvfb_pid" 2>/dev/null || true
}
trap cleanup EXIT
for _ in $(seq 50); do xdpyinfo >/dev/null 2>&1 && break; sleep 0.1; done

"${program[@]}" "$@" &
program_pid=$!
window=""
for _ in $(seq 100); do
    window=$(xdotool search --name "VendrakoTimer 3.52" 2>/dev/null | head -n 1 || true)
    [ -n "$window" ] && break
    # The proximity report comes up before the main window: answer it as a user would.
    box=$(xdotool search --all --pid "$program_pid" --name "^VendrakoTimer$" 2>/dev/null | head -n 1 || true)
    if [ -n "$box" ]; then
        xdotool windowfocus --sync "$box" 2>/dev/null || true
        xdotool key --clearmodifiers Return 2>/dev/null || true
    fi
    if ! kill -0 "$program_pid" 2>/dev/null; then
        echo "The program ended before its window appeared." >&2
        exit 1
    fi
    sleep 0.2
done
if [ -z "$window" ]; then
    echo "The main window did not appear within 20 seconds." >&2
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
