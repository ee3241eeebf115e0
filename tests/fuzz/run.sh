#!/usr/bin/env bash
# Builds the fuzz targets with clang and runs each for some seconds.
#
#   tests/fuzz/run.sh [--keep] [SECONDS]     seconds per target, default 20
#
# Each target starts with a copy of its corpus (tests/fuzz/corpus). --keep replaces the corpus by the smallest set of
# inputs that reaches the same code. Exits with 1 if a target has a finding; the input that triggers it is in
# build/fuzz/findings.
set -euo pipefail

targets=(fuzz_fileHash fuzz_fileCategories fuzz_groupMarks fuzz_report)

fail() {
    echo "tests/fuzz/run.sh: $*" >&2
    exit 2
}

keep=no
if [[ ${1-} == --keep ]]; then
    keep=yes
    shift
fi
seconds=${1-20}
[[ $# -le 1 ]] || fail "expected at most one number of seconds, got $# arguments"
[[ $seconds =~ ^[1-9][0-9]{0,4}$ ]] || fail "expected seconds per target from 1 to 99999, not '$seconds'"
for tool in clang++ cmake ninja; do
    command -v "$tool" >/dev/null || fail "$tool is missing"
done

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
build=$root/build/fuzz
findings=$build/findings
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$findings"

cd "$root"
for step in "cmake --preset fuzz" "cmake --build --preset fuzz --target fuzzers"; do
    if ! $step >"$scratch/build.log" 2>&1; then
        cat "$scratch/build.log" >&2
        fail "the fuzz targets do not build"
    fi
done

# Prints the number after the last "$1: " in the libFuzzer log $2.
figure() {
    sed -n "s/.* $1: \([0-9]*\) .*/\1/p" "$2" | tail -1
}

run_target() {
    local target=$1 log=$scratch/$1.log corpus=$scratch/$1 found=yes kept executions
    mkdir -p "$corpus"
    cp "$root/tests/fuzz/corpus/$target"/* "$corpus"
    kept=$(find "$corpus" -type f | wc -l)
    "$build/tests/fuzz/$target" -max_total_time="$seconds" -timeout=20 -print_final_stats=1 \
        -artifact_prefix="$findings/$target-" "$corpus" >"$log" 2>&1 && found=no
    executions=$(sed -n 's/^stat::number_of_executed_units: //p' "$log")
    if [[ $found == yes || -z $executions ]]; then
        echo "$target: FINDING after ${executions:-no} executions"
        grep -avE '^(#[0-9]|INFO|stat::)' "$log" | head -60
        return 1
    fi
    echo "$target: $executions executions, no finding," \
        "$(figure cov "$log") edges and $(figure ft "$log") features reached, from $kept kept inputs"
    if [[ $keep == yes ]]; then
        mkdir "$corpus.merged"
        "$build/tests/fuzz/$target" -merge=1 -use_counters=0 "$corpus.merged" "$corpus" >"$log" 2>&1
        rm -f "$root/tests/fuzz/corpus/$target"/*
        cp "$corpus.merged"/* "$root/tests/fuzz/corpus/$target"
    fi
}

# One target per core at a time.
runs=()
for target in "${targets[@]}"; do
    while (($(jobs -rp | wc -l) >= $(nproc))); do
        sleep 0.1
    done
    run_target "$target" >"$scratch/$target.report" &
    runs+=("$target:$!")
done
status=0
for run in "${runs[@]}"; do
    wait "${run#*:}" || status=1
    cat "$scratch/${run%:*}.report"
done
exit $status
