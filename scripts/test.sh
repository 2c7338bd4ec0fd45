#!/usr/bin/env bash
# The test command: installs what is missing, checks the formatting, builds with warnings as
# errors, runs every test, runs them again under the address and undefined-behaviour
# sanitizers, and runs each fuzz target for a short while. Exits non-zero on any failure.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
root=$(vt_root)
cd "$root"

vt_install_packages "${VT_BUILD_PACKAGES[@]}" "${VT_DISPLAY_PACKAGES[@]}" "${VT_CHECK_PACKAGES[@]}"
jobs=$(vt_jobs)
fuzz_seconds=${VT_FUZZ_SECONDS:-20}
passed=0

# Runs one ctest tree and adds its count of passed tests to the total.
run_ctest() {
    local log
    log=$(mktemp)
    ctest --test-dir "$1" -j "$jobs" --output-on-failure | tee "$log"
    local total
    total=$(grep -oE 'tests passed, [0-9]+ tests failed out of [0-9]+' "$log" | grep -oE '[0-9]+$')
    passed=$((passed + total))
    rm -f "$log"
}

echo "== Formatting"
mapfile -t sources < <(git ls-files -co --exclude-standard -- '*.cpp' '*.h')
clang-format --dry-run --Werror "${sources[@]}"

echo "== Build (warnings are errors)"
cmake -S . -B build/ci -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVENDRAKO_WERROR=ON >/dev/null
cmake --build build/ci -j "$jobs"
echo "== Tests"
run_ctest build/ci

echo "== Benchmarks compile and run (figures are read by hand, not judged here)"
for bench in build/ci/bench/bench_*; do
    "$bench" --benchmark_min_time=0.01 >/dev/null
done

echo "== Build with address and undefined-behaviour sanitizers"
cmake -S . -B build/asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DVENDRAKO_WERROR=ON -DVENDRAKO_SANITIZE=ON \
      -DVENDRAKO_BENCH=OFF >/dev/null
cmake --build build/asan -j "$jobs"
echo "== Tests under the sanitizers"
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 \
UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
LSAN_OPTIONS="suppressions=$root/scripts/lsan-suppressions.txt:print_suppressions=0" \
    run_ctest build/asan

echo "== Fuzz targets, ${fuzz_seconds} s each"
bash scripts/fuzz.sh --seconds "$fuzz_seconds"

echo "== All checks passed"
echo "tests: ${passed} passed, 0 failed"
