#!/usr/bin/env bash
# Checks in a clone of the current commit that release.sh refuses contradictory states: packaging/check-release.sh
set -euo pipefail

fail() {
    printf 'packaging/check-release.sh: %s\n' "$1" >&2
    exit 1
}

(($# == 0)) || fail "takes no arguments (got: $*)"
cd "$(dirname -- "${BASH_SOURCE[0]}")/.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
git clone -q --no-local . "$work/clone"
# Also checks uncommitted changes of the script.
cp packaging/release.sh "$work/release.sh"
cd "$work/clone"
export GIT_AUTHOR_NAME=check GIT_AUTHOR_EMAIL=check@localhost GIT_COMMITTER_NAME=check GIT_COMMITTER_EMAIL=check@localhost
cp "$work/release.sh" packaging/release.sh
git tag -l | xargs -r git tag -d >/dev/null
git add packaging
git commit -q --allow-empty -m "State to check"
start=$(git rev-parse HEAD)
version=$(sed -n 's/^ *VERSION //p' CMakeLists.txt)

again() {
    git reset -q --hard "$start"
    git clean -qfd
}
expect_refusal() {
    ! packaging/release.sh --check >"$work/output" 2>&1 || fail "it does not refuse $1"
    grep -q "$2" "$work/output" || fail "it refuses $1 for another reason: $(<"$work/output")"
    again
}
expect_consent() {
    packaging/release.sh --check >"$work/output" 2>&1 || fail "it refuses $1: $(<"$work/output")"
    again
}

expect_consent "a clean checkout"
echo "// changed" >>app/main.cpp
expect_refusal "a changed file" 'differs from the commit'
touch new-file
expect_refusal "a file that is not committed" 'differs from the commit'
sed -i "s/^## $version - /## 0.0.1 - /" CHANGELOG.md && git commit -qam "Another change log"
expect_refusal "a change log of another version" 'must begin with'
sed -i "s/^    VERSION $version/    VERSION 999.0.0/" CMakeLists.txt && git commit -qam "Another version"
expect_refusal "a version without its changes" 'must begin with'
sed -i "s/^## $version - .*/## $version - 2026-02-30/" CHANGELOG.md && git commit -qam "Impossible date"
expect_refusal "an impossible date" 'invalid date'
git tag "v$version"
expect_consent "the tagged commit"
git commit -q --allow-empty -m "Later change"
expect_refusal "a version whose tag is another commit" 'already published'
mkdir "$work/results"
! packaging/release.sh "$work/results" >"$work/output" 2>&1 || fail "it does not refuse a folder that exists"
grep -q 'already exists' "$work/output" || fail "it refuses a folder for another reason: $(<"$work/output")"
echo "release.sh refuses every contradictory state"
