#!/usr/bin/env bash
# Installs what is missing, builds everything with warnings as errors and runs the tests. Arguments go to ctest:
# ./test.sh -R endToEnd
# ./test.sh --coverage builds and runs them once more with counters and ends with the lines and branches they reach.
set -euo pipefail

fail() {
    echo "test.sh: $*" >&2
    exit 2
}

cd "$(dirname "${BASH_SOURCE[0]}")"
case ${1--} in
-h | --help)
    sed -n '2,/^[^#]/s/^# //p' test.sh
    exit
    ;;
--coverage)
    [ $# -eq 1 ] || fail "--coverage goes alone"
    tools/setup.sh build run test coverage
    exec tools/coverage.sh
    ;;
-*) ;;
*) fail "unknown argument: $1 (arguments go to ctest; one test by its name: ./test.sh -R $1)" ;;
esac

tools/setup.sh build run test
# ctest itself ignores what it does not know and would run every test.
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
