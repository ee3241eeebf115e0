#!/usr/bin/env bash
# Builds all benchmarks and runs each once at its smallest size, to check that they work.
set -euo pipefail

if [ $# -gt 0 ]; then
    echo "smoke.sh: unknown argument: $1" >&2
    exit 2
fi
cd "$(dirname "${BASH_SOURCE[0]}")/.."
readonly programs=build/bench/bench
tools/setup.sh build run bench
tools/build.sh bench

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() {
    cat "$work/output" >&2
    echo "smoke.sh: $*" >&2
    exit 1
}

run() {
    timeout 60 "$@" >"$work/output" 2>&1 || fail "failed: $*"
}

# Every benchmark has a run of size 0 or 1000.
readonly smallest='/(0|1000)(/|$)'
run_small() {
    local name names
    names=$("$1" --benchmark_list_tests | cut -d/ -f1 | sort -u)
    run "$1" --benchmark_min_time=0.001 "--benchmark_filter=$smallest"
    for name in $names; do
        grep -q "^$name/" "$work/output" || fail "$(basename "$1") has no small run of $name"
    done
}

for program in "$programs"/bench_*; do
    # The build also creates folders with names like those of the programs.
    if [ -f "$program" ]; then
        run_small "$program"
    fi
done

mkdir "$work/files"
echo same >"$work/files/1.txt"
echo same >"$work/files/2.txt"
echo else >"$work/files/3.txt"
# The engine and the lower bound must find the same.
run "$programs/scan_folders" "$work/files"
head -n 4 "$work/output" >"$work/engine"
run "$programs/lower_bound" "$work/files"
head -n 4 "$work/output" | cmp -s - "$work/engine" || fail "lower_bound finds other groups than the engine"
grep -qx 'groups     1' "$work/engine" || fail "the engine does not find the two copies"
run "$programs/group_contents" "$work/files"
grep -qx 'groups     1' "$work/output" || fail "group_contents does not find the two copies"
run "$programs/read_all" "$work/files"
grep -qx 'bytes 15' "$work/output" || fail "read_all does not read every byte"
run "$programs/gui_heartbeat" --groups 500 --rows 100 --members 500 --photos 1 "$work/files"
echo "All benchmarks work"
