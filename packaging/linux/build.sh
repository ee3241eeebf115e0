#!/usr/bin/env bash
# Builds build/packages/quillory_<version>_<architecture>.deb and prints its path. Uses its own build folder, because
# Debian requires hardening flags.
set -euo pipefail

fail() {
    printf 'packaging/linux/build.sh: %s\n' "$1" >&2
    exit 1
}

(($# == 0)) || fail "takes no arguments (got: $*)"
cd "$(dirname -- "${BASH_SOURCE[0]}")/../.."
readonly build=build/deb out=build/packages
tools/setup.sh build deb >&2

mkdir -p "$build" "$out" 2>/dev/null || fail "cannot create $PWD/$build and $PWD/$out"
export DEB_BUILD_MAINT_OPTIONS=hardening=+all
# The package contains no debug information; generating it would take a fifth of the build time.
export DEB_CXXFLAGS_MAINT_STRIP=-g
# The dates in the package are those of the last commit, so that builds are reproducible.
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null || date +%s)}
export SOURCE_DATE_EPOCH
if ! {
    cmake -G Ninja -S . -B "$build" -DCMAKE_BUILD_TYPE=None -DQUILLORY_BUILD_TESTS=OFF -DQUILLORY_BUILD_TOOLS=OFF \
        -DCMAKE_CXX_FLAGS="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS) -DNDEBUG" \
        -DCMAKE_EXE_LINKER_FLAGS="$(dpkg-buildflags --get LDFLAGS)" &&
        rm -rf "$build/packages" &&
        cmake --build "$build" --target quillory quillory-cli &&
        cmake --build "$build" --target package
} >"$build.log" 2>&1 </dev/null; then
    tail -n 25 "$build.log" >&2
    fail "the package could not be built; see $build.log"
fi
package=$(basename -- "$build"/packages/*.deb)
mv "$build/packages/$package" "$out/$package"
printf '%s\n' "$PWD/$out/$package"
