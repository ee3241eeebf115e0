#!/usr/bin/env bash
# Checks that the sources can be installed and uninstalled without a package and used in another CMake project, as
# docs/installing.md describes. Run packaging/linux/build.sh first.
set -euo pipefail

fail() {
    printf 'packaging/linux/check-sources.sh: %s\n' "$1" >&2
    exit 1
}

(($# == 0)) || fail "takes no arguments (got: $*)"
cd "$(dirname -- "${BASH_SOURCE[0]}")/../.."
[[ -x build/deb/quillory ]] || fail "run packaging/linux/build.sh first"
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
ctest --test-dir "$embedding" --show-only | grep -qx 'Total Tests: 0' || fail "a subproject adds tests"
logged cmake --install "$embedding" --prefix "$work/embedded"
[[ ! -e $work/embedded ]] || fail "a subproject installs files"
echo "The sources: installed, removed, and built inside another project"
