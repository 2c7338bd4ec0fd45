#!/usr/bin/env bash
# Builds the libFuzzer targets (clang, address and undefined-behaviour sanitizers) and runs
# them, each on a scratch copy of its seed corpus so the repository's seeds stay as they are.
#
#   bash scripts/fuzz.sh [--seconds S | --runs N] [target ...]
#
# With no target every fuzz_* target runs in turn. VT_FUZZ_FLAGS adds libFuzzer options (for
# example -max_len=1024). Prints the executions of each; stops with a
# non-zero status and the failing input's path at the first finding.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
root=$(vt_root)
cd "$root"

limit=(-max_total_time=20)
case "${1:-}" in
    --seconds) limit=(-max_total_time="$2"); shift 2 ;;
    --runs) limit=(-runs="$2"); shift 2 ;;
esac

CXX=clang++ cmake -S . -B build/fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVENDRAKO_FUZZ=ON >/dev/null
cmake --build build/fuzz -j "$(vt_jobs)" >/dev/null

targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    for target in build/fuzz/fuzz/fuzz_*; do
        targets+=("$(basename "$target")")
    done
fi

for name in "${targets[@]}"; do
    work=$(mktemp -d)
    cp -r "fuzz/corpus/${name#fuzz_}" "$work/corpus"
    status=0
    start=$SECONDS
    # shellcheck disable=SC2086
    "build/fuzz/fuzz/$name" "${limit[@]}" ${VT_FUZZ_FLAGS:-} -print_final_stats=1 -artifact_prefix="$work/" \
        "$work/corpus" >"$work/log" 2>&1 || status=$?
    runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$work/log" | grep -o '[0-9]*$' || echo "?")
    echo "$name: $runs executions in $((SECONDS - start)) s"
    if [ "$status" -ne 0 ]; then
        tail -n 40 "$work/log" >&2
        echo "Fuzz target $name found a failing input; it is kept in $work." >&2
        exit 1
    fi
    rm -rf "$work"
done
