#!/usr/bin/env bash
# Tries what docs/installing.md says about the sources: installing and removing without a package, and the use inside
# another CMake project. Takes what build.sh has built: packaging/linux/check-sources.sh
set -euo pipefail

fail() {
    printf 'packaging/linux/check-sources.sh: %s\n' "$1" >&2
    exit 1
}

(($# == 0)) || fail "takes no arguments (got: $*)"
cd "$(dirname -- "${BASH_SOURCE[0]}")/../.."
[[ -x build/deb/quillory ]] || fail "packaging/linux/build.sh has to run first"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
logged() {
    "$@" >"$work/log" 2>&1 </dev/null || {
        tail -n 25 "$work/log" >&2
        fail "$* failed"
    }
}

logged cmake --install build/deb --prefix "$work/prefix"
for program in quillory quillory-cli; do
    logged env QT_QPA_PLATFORM=offscreen "$work/prefix/bin/$program" --version
done
xargs rm <build/deb/install_manifest.txt
left=$(find "$work/prefix" -not -type d)
[[ -z $left ]] || fail "the install manifest does not name ${left//$'\n'/ }"

logged cmake -G Ninja -S tests/subproject -B "$work/embedding" -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_INSTALL_PREFIX="$work/embedded"
logged cmake --build "$work/embedding" --target embedding
logged "$work/embedding/embedding"
ctest --test-dir "$work/embedding" --show-only | grep -qx 'Total Tests: 0' || fail "a subproject brings its tests along"
logged cmake --install "$work/embedding"
[[ ! -e $work/embedded ]] || fail "a subproject installs files"
echo "The sources: installed, removed, and built inside another project"
