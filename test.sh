#!/usr/bin/env bash
# Installs missing packages, builds everything with warnings as errors and runs the tests.
#
#   ./test.sh [CTEST-ARGUMENT...]    for example -R fileHash: the tests whose names match
#   ./test.sh --coverage             measures the line and branch coverage of all tests
set -euo pipefail

fail() {
    echo "test.sh: $*" >&2
    exit 2
}

cd "$(dirname "${BASH_SOURCE[0]}")"
case ${1--} in
-h | --help)
    sed -n '2,/^[^#]/s/^# \{0,1\}//p' test.sh
    exit
    ;;
--coverage)
    [ $# -eq 1 ] || fail "--coverage takes no further arguments"
    tools/setup.sh build run test coverage
    exec tools/coverage.sh
    ;;
-*) ;;
*) fail "unknown argument: $1 (to run tests by name: ./test.sh -R $1)" ;;
esac

tools/setup.sh build run test
# ctest ignores unknown options and would run all tests.
known=" $(ctest --help | tr -s ',=[\n' ' ') "
for argument in "$@"; do
    option=${argument%%=*}
    case $option in
    -[jI][0-9]*) ;;
    -*) [ "$known" != "${known/ $option /}" ] || fail "unknown argument: $argument" ;;
    esac
done
tools/build.sh dev
exec ctest --preset dev --no-tests=error "$@"
