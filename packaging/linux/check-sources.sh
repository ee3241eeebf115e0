#!/usr/bin/env bash
# Checks what docs/installing.md says about the sources: installing and removing without a package, and the use inside
# another CMake project. It installs what build.sh has built: packaging/linux/check-sources.sh
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

readonly embedding=build/embedding
logged cmake -G Ninja -S tests/subproject -B "$embedding" -DCMAKE_BUILD_TYPE=Debug
logged cmake --build "$embedding" --target embedding
logged "$embedding/embedding"
ctest --test-dir "$embedding" --show-only | grep -qx 'Total Tests: 0' || fail "a subproject brings its tests along"
logged cmake --install "$embedding" --prefix "$work/embedded"
[[ ! -e $work/embedded ]] || fail "a subproject installs files"
echo "The sources: installed, removed, and built inside another project"
