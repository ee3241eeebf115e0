#!/usr/bin/env bash
# Measures the line and branch coverage of all tests in app/, scan/, analysis/ and results/. Prints a table of the
# files, the totals and the lines that were not run. Branches for exceptions do not count. Fails if a test fails.
set -euo pipefail

fail() {
    echo "tools/coverage.sh: $*" >&2
    exit 2
}

[[ $# -eq 0 ]] || fail "takes no arguments (got: $*)"
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
        fail "the build failed"
    fi
done

# The counters accumulate over runs.
find "$build" -name '*.gcda' -delete
status=0
if ! QT_QPA_PLATFORM=offscreen ctest --preset coverage >"$scratch/tests.log" 2>&1; then
    status=1
    cat "$scratch/tests.log" >&2
    echo "tools/coverage.sh: tests failed" >&2
fi

# Only objects of the program, not the headers compiled into tests.
if ! gcovr --root "$root" --filter '(app|scan|analysis|results)/' --exclude 'build/' \
    --exclude-throw-branches --exclude-unreachable-branches --json "$scratch/coverage.json" \
    "$build"/CMakeFiles/quillory*.dir >"$scratch/gcovr.log" 2>&1; then
    cat "$scratch/gcovr.log" >&2
    fail "gcovr failed"
fi
python3 "$root/tools/coverage_table.py" "$scratch/coverage.json" || fail "cannot print the table"
exit $status
