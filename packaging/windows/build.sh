#!/usr/bin/env bash
# Cross-builds the zip and the installer for Windows on a Debian machine. See --help.
set -euo pipefail

SCRIPT_NAME=packaging/windows/build.sh
here=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=packaging/windows/common.sh
. "$here/common.sh"

usage() {
    cat <<'TEXT'
Usage: packaging/windows/build.sh [--test [CTEST-ARGUMENT...]]

Cross-builds the program and packs it with its libraries in build/packages:
  quillory-<version>-windows-x64.zip
  quillory-<version>-windows-x64-setup.exe
The first run also builds Qt into ${QUILLORY_CACHE:-~/.cache/quillory} (about twelve minutes on two cores).

--test  also tests the result under Wine: runs the tests, starts the packed program, takes screenshots of all pages
        on a virtual display, and installs and removes the program. Further arguments are passed to ctest and skip
        the test of the installer: --test -R endToEnd

QUILLORY_JOBS sets the number of parallel compilers and tests (default: one per core).
TEXT
}

test=
case ${1:-} in
'') ;;
-h | --help)
    usage
    exit
    ;;
--test)
    test=ON
    shift
    ;;
*) fail "unknown argument: $1 (see --help)" ;;
esac
jobs=${QUILLORY_JOBS:-$(nproc)}
[[ $jobs =~ ^[1-9][0-9]*$ ]] || fail "QUILLORY_JOBS must be a positive number (got: $jobs)"

cd "$here/../.."
readonly build=$PWD/build/windows out=$PWD/build/packages
mkdir -p "$build" "$out" 2>/dev/null || fail "cannot create $build and $out"
tools/setup.sh build windows ${test:+wine}
qt=$("$here/build-qt.sh")

# The dates in the zip and in the programs are those of the last commit, so that builds are reproducible.
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null || date +%s)}
export SOURCE_DATE_EPOCH

targets=(--target quillory quillory-cli)
[[ -z $test ]] || targets=()
logged "$build/configure.log" "configuring" cmake -G Ninja -S . -B "$build" \
    -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" -DQUILLORY_WINDOWS_QT="$qt" \
    -DCMAKE_BUILD_TYPE=Release -DQUILLORY_WARNINGS_AS_ERRORS=ON \
    -DQUILLORY_BUILD_TESTS="${test:-OFF}" -DQUILLORY_BUILD_TOOLS="${test:-OFF}" \
    -DCMAKE_CROSSCOMPILING_EMULATOR="$here/wine.sh;$build/wine"
logged "$build/build.log" "building" cmake --build "$build" --parallel "$jobs" "${targets[@]}"
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
name=quillory-$version-windows-x64

# The programs, the plugins that they use, and the libraries that these need.
stage=$build/stage
rm -rf "$stage"
logged "$build/install.log" "packing" cmake --install "$build" --prefix "$stage/$name" --strip
for plugin in platforms/qwindows styles/qwindowsvistastyle imageformats/q{gif,ico,jpeg,webp}; do
    # Stripping also replaces the build time of Qt with SOURCE_DATE_EPOCH.
    install -D -m 755 --strip --strip-program=x86_64-w64-mingw32-strip "$qt/plugins/$plugin.dll" \
        "$stage/$name/$plugin.dll" || fail "the Qt in $qt has no plugin $plugin"
done
"$here/add-libraries.sh" "$stage/$name" "$qt/bin"
"$here/add-licences.sh" "$stage/$name" "$qt"

# Sorted names and fixed dates make the zip reproducible.
find "$stage/$name" -exec touch --date="@$SOURCE_DATE_EPOCH" {} +
rm -f "$stage/$name.zip"
(cd "$stage" && find "$name" -type f | LC_ALL=C sort | TZ=UTC zip -q -9 -X -@ "$name.zip") || fail "zip failed"
"$here/check-zip.sh" "$stage/$name.zip" "$version"
mv "$stage/$name.zip" "$out/$name.zip"
echo "$out/$name.zip"
"$here/build-installer.sh" "$stage/$name" "$version" "$out/$name-setup.exe"
echo "$out/$name-setup.exe"
[[ $test ]] || exit 0
"$here/test-under-wine.sh" "$build" "$stage/$name" "$qt" "$@"
(($#)) || "$here/check-installer.sh" "$out/$name-setup.exe" "$stage/$name" "$version" "$build/wine-installer"
