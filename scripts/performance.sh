#!/usr/bin/env bash
# Runs every benchmark, then measures the whole program beside a bare Qt window program built
# by the same compiler, flags and Qt (a main window with menus and some 45 widgets), on a
# virtual display with a tray, and prints one table. The program is measured twice: with an
# empty agenda and with a full one (998 alarms of all nine repeat choices, 998 reminders).
#  - start-up: from starting the process to its first window on the screen (the proximity
#    report), and to its main window (the report is answered at once, and the moment before
#    the answer is not counted); the median of VT_PERF_STARTS starts (21), the programs taking
#    turns;
#  - memory: resident set two seconds after the main window appeared, the median;
#  - idle CPU: processor time of all its threads over VT_PERF_IDLE_SECONDS (60) idle seconds.
# Takes about two minutes; best run on an otherwise idle machine.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
root=$(vt_root)
cd "$root"

vt_install_packages "${VT_BUILD_PACKAGES[@]}" "${VT_DISPLAY_PACKAGES[@]}" trayer libx11-dev libxtst-dev
starts=${VT_PERF_STARTS:-21}
idle_seconds=${VT_PERF_IDLE_SECONDS:-60}

mapfile -t benches < <(cd bench && ls bench_*.cpp | sed 's/\.cpp$//')
cmake -S . -B build/perf -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build build/perf -j "$(vt_jobs)" --target VendrakoTimer bare_window window_watch "${benches[@]}" >/dev/null

echo "== Benchmarks (Release)"
for bench in "${benches[@]}"; do
    # Only the result lines, which follow the dashed line under the column heads.
    "build/perf/bench/$bench" 2>/dev/null | awk 'seen { print } /^-+$/ { seen = 1 }'
done

work=$(mktemp -d)
pids=()
cleanup() {
    for pid in "${pids[@]}"; do kill -KILL "$pid" 2>/dev/null || true; done
    rm -rf "$work"
}
trap cleanup EXIT

vt_start_xvfb
pids+=("$VT_XVFB_PID")
trayer --edge bottom --align right --widthtype request --height 24 >/dev/null 2>&1 &
pids+=($!)
sleep 1

mkdir -m 700 "$work/runtime"
environment=(env -u LC_ALL -u QT_QPA_PLATFORM LANG=C.UTF-8 LC_TIME=en_GB.UTF-8 HOME="$work"
    XDG_RUNTIME_DIR="$work/runtime")

# Starts program $1 ("vendrako", "full" with the full agenda, "bare" or "ticking", the bare
# window with an empty one-second timer); prints "<ms to main window> <pid> <ms to first window>". VendrakoTimer always starts in the same folder, so that
# after the uncounted first start each one is an ordinary day's start with its files in place.
mkdir -p "$work/vendrako" "$work/full"
cp build/perf/src/VendrakoTimer "$work/vendrako/"
cp build/perf/src/VendrakoTimer "$work/full/"
# The full agenda: 998 alarms cycling through the nine repeat choices, 998 reminders, all in
# the future so that nothing falls due while measuring. Windows-1252, CR LF, like the program's
# own file.
awk 'BEGIN {
    split("00 D,01 D,07 D,01 M,03 M,01 A,02 A,04 A,06 A", every, ",")
    printf "[GENERAL]\r\nFECHA=\r\nENTRADA1=\r\nSALIDA1=\r\nENTRADA2=\r\nNUM_ALARMAS=998\r\n\r\n[REPETICIONES]\r\n"
    for (i = 1; i <= 998; i++)
        printf "REP_%03d=%02d/%02d/2031 %02d:%02d Llamar al cliente n\xfamero %d\r\n", i, i % 28 + 1, i % 12 + 1, i % 24, i % 60, i
    printf "\r\n[ALARMAS]\r\n"
    for (i = 1; i <= 998; i++)
        printf "ALA_%03d=%02d/%02d/2030 %02d:%02d %s 07 %d Reuni\xf3n de equipo %d (1990)\r\n", i, i % 28 + 1, i % 12 + 1, i % 24, i % 60, every[i % 9 + 1], i % 2, i
}' >"$work/full/VendrakoTimer.ini"
start() {
    if [ "$1" = vendrako ] || [ "$1" = full ]; then
        build/perf/bench/window_watch --answer VendrakoTimer "VendrakoTimer 3.52" -- \
            "${environment[@]}" "$work/$1/VendrakoTimer" 2>/dev/null
    else
        build/perf/bench/window_watch "Bare window" -- "${environment[@]}" build/perf/bench/bare_window \
            $([ "$1" = ticking ] && echo --tick) 2>/dev/null
    fi
}

resident_kb() { awk '/^VmRSS:/ { print $2 }' "/proc/$1/status"; }
# Processor time of every thread of process $1, in nanoseconds.
cpu_ns() { cat /proc/"$1"/task/*/schedstat 2>/dev/null | awk '{ sum += $1 } END { printf "%d", sum }'; }
median() { sort -n | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }
stop() {
    kill -TERM "$1" 2>/dev/null || true
    for _ in $(seq 50); do kill -0 "$1" 2>/dev/null || return 0; sleep 0.1; done
    kill -KILL "$1" 2>/dev/null || true
}

# One start of each that is not counted fills the disk and font caches for both; then the two
# take turns, so that whatever else the machine does falls on both alike.
declare -A startup first_window memory idle times firsts sizes
for round in $(seq 0 "$starts"); do
    for program in bare vendrako full; do
        read -r ms pid first < <(start "$program")
        pids+=("$pid")
        sleep 2
        if [ "$round" -gt 0 ]; then
            times[$program]+="$ms "
            firsts[$program]+="$first "
            sizes[$program]+="$(resident_kb "$pid") "
        fi
        stop "$pid"
    done
done
for program in bare vendrako full; do
    startup[$program]=$(printf '%s\n' ${times[$program]} | median)
    first_window[$program]=$(printf '%s\n' ${firsts[$program]} | median)
    memory[$program]=$(printf '%s\n' ${sizes[$program]} | median)
done

echo "== Idle for ${idle_seconds} s"
declare -A idle_pid before
for program in bare ticking vendrako full; do
    read -r _ pid _ < <(start "$program")
    pids+=("$pid")
    idle_pid[$program]=$pid
done
sleep 5
for program in bare ticking vendrako full; do before[$program]=$(cpu_ns "${idle_pid[$program]}"); done
sleep "$idle_seconds"
for program in bare ticking vendrako full; do
    used=$(($(cpu_ns "${idle_pid[$program]}") - before[$program]))
    idle[$program]=$(awk -v ns="$used" -v s="$idle_seconds" 'BEGIN { printf "%.3f", ns / (s * 1e9) * 100 }')
    stop "${idle_pid[$program]}"
done

ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f×", a / b }'; }
echo
echo "| measure | VendrakoTimer | bare Qt window | ratio | target |"
echo "|---|---|---|---|---|"
for program in vendrako full; do
    what=$([ "$program" = full ] && echo ", full agenda" || echo "")
    echo "| start-up to first window (the report)$what | ${first_window[$program]} ms | ${first_window[bare]} ms |" \
        "$(ratio "${first_window[$program]}" "${first_window[bare]}") | 1.15× or less |"
    echo "| start-up to main window$what | ${startup[$program]} ms | ${startup[bare]} ms |" \
        "$(ratio "${startup[$program]}" "${startup[bare]}") | 1.3× or less |"
    echo "| resident memory after start$what | $((memory[$program] / 1024)) MiB | $((memory[bare] / 1024)) MiB |" \
        "$(ratio "${memory[$program]}" "${memory[bare]}") | $([ "$program" = full ] && echo 1.1 || echo 1.2)× or less |"
    echo "| CPU over ${idle_seconds} idle seconds$what | ${idle[$program]} % | ${idle[bare]} %" \
        "(${idle[ticking]} % with an empty 1-s timer) | — | 0.1 % of a core or less |"
done
