#!/usr/bin/env bash
# Builds every benchmark and runs each of them once at its smallest size: says that they work, not how fast anything is.
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
    # Beside the programs lie folders of what was generated for them.
    if [ -f "$program" ]; then
        run_small "$program"
    fi
done

mkdir "$work/files"
echo same >"$work/files/1.txt"
echo same >"$work/files/2.txt"
echo else >"$work/files/3.txt"
# The engine and the floor have to come to the same answer.
run "$programs/scan_folders" "$work/files"
head -n 4 "$work/output" >"$work/engine"
run "$programs/floor" "$work/files"
head -n 4 "$work/output" | cmp -s - "$work/engine" || fail "the floor finds something else than the engine"
grep -qx 'groups     1' "$work/engine" || fail "the engine does not find the pair of copies"
run "$programs/group_contents" "$work/files"
grep -qx 'groups     1' "$work/output" || fail "the comparison of contents does not find the pair of copies"
run "$programs/read_all" "$work/files"
grep -qx 'bytes 15' "$work/output" || fail "read_all does not read every byte"
run "$programs/gui_heartbeat" --groups 500 --rows 100 --members 500 --photos 1 "$work/files"
echo "All benchmarks run"
