#!/usr/bin/env bash
# Builds with gcc's counters, runs all tests off screen and prints which lines and branches of app/, scan/,
# analysis/ and results/ they run: a table per file, the totals, and what was not run.
#
#   tools/coverage.sh
#
# Branches that only a thrown exception takes do not count. Fails when a test fails.
set -euo pipefail

fail() {
    echo "tools/coverage.sh: $*" >&2
    exit 2
}

[[ $# -eq 0 ]] || fail "takes no argument, got '$*'"
for tool in g++ cmake ctest ninja gcovr python3; do
    command -v "$tool" >/dev/null || fail "$tool is missing"
done

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$root/build/coverage
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

cd "$root"
for step in "cmake --preset coverage" "cmake --build --preset coverage"; do
    if ! $step >"$scratch/build.log" 2>&1; then
        tail -40 "$scratch/build.log" >&2
        fail "the build with coverage counters failed"
    fi
done

# Counts add up from run to run.
find "$build" -name '*.gcda' -delete
status=0
if ! QT_QPA_PLATFORM=offscreen ctest --preset coverage >"$scratch/tests.log" 2>&1; then
    status=1
    cat "$scratch/tests.log" >&2
    echo "tools/coverage.sh: tests failed; the figures are those of this run" >&2
fi

# Only the program's own objects: what a test compiles of our headers is not the program.
if ! gcovr --root "$root" --filter '(app|scan|analysis|results)/' --exclude 'build/' \
    --exclude-throw-branches --exclude-unreachable-branches --json "$scratch/coverage.json" \
    "$build"/CMakeFiles/quillory*.dir >"$scratch/gcovr.log" 2>&1; then
    cat "$scratch/gcovr.log" >&2
    fail "gcovr failed"
fi
python3 "$root/tools/coverage_table.py" "$scratch/coverage.json" || fail "no coverage figures"
exit $status
