#!/usr/bin/env bash
# Runs the tests, the packed program and the program that takes the screenshots under Wine, after build.sh:
#
#     packaging/windows/test-under-wine.sh BUILD PACKED-FOLDER QT [CTEST-ARGUMENT...]
set -euo pipefail

SCRIPT_NAME=test-under-wine.sh
here=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=packaging/windows/common.sh
. "$here/common.sh"

(($# >= 3)) || fail "build.sh --test starts this script"
build=$1 packed=$2 qt=$3
shift 3
[[ -f $build/CTestTestfile.cmake && -f $packed/quillory.exe && -d $qt/plugins ]] ||
    fail "expected a build in $build, a packed program in $packed and Qt in $qt"
readonly pages=$build/pages

# The packed files, and those that only tests need.
content=$build/wine-content
rm -rf "$content"
cp -r "$packed" "$content"
install -D "$qt/plugins/platforms/qoffscreen.dll" "$content/platforms/qoffscreen.dll"
cp "$qt/bin/Qt6Test.dll" "$content/"
# Without fonts in this folder, the offscreen platform draws boxes instead of letters.
install -D -t "$content/lib/fonts" /usr/share/fonts/truetype/open-sans/OpenSans-{Regular,Bold}.ttf
# Tests start these programs.
cp "$build/tests/scan_and_close.exe" "$build/tools/tour/quillory-tour.exe" "$content/"
"$here/make-wine-prefix.sh" "$build/wine" "$content"

readonly wineserver=/usr/lib/wine/wineserver64
# Ends Wine's server and all processes that tests have left running in the prefix.
end_wine() {
    WINEPREFIX=$build/wine "$wineserver" -k || true # the server may not run
    WINEPREFIX=$build/wine "$wineserver" -w
}
# Keeps Wine's server and services running until end_wine. Otherwise each test would start them, and ctest would wait
# seconds for them to exit, because they keep the output of that test open.
start_wine() {
    end_wine
    WINEPREFIX=$build/wine "$wineserver" -p
    "$here/wine.sh" "$build/wine" "$build/wine/drive_c/windows/system32/cmd.exe" /c exit >/dev/null 2>&1 ||
        fail "Wine does not start"
}
trap end_wine EXIT

# Fewer repetitions by default: under Wine, windows are slow, and the time to create a file grows with the number of
# files in its folder.
export QUILLORY_MODEL_SEQUENCES=${QUILLORY_MODEL_SEQUENCES:-40} QUILLORY_STRESS_ROUNDS=${QUILLORY_STRESS_ROUNDS:-6}
export QUILLORY_LARGE_FOLDER=${QUILLORY_LARGE_FOLDER:-5000}

echo "Tests, under Wine:"
start_wine
QUILLORY_TEST_SECOND_DRIVE=D:/ ctest --test-dir "$build" --output-on-failure --no-tests=error \
    --parallel "${QUILLORY_JOBS:-$(nproc)}" "$@" || fail "tests failed under Wine"
# The next programs need a display. The running services were started without one.
end_wine
echo "Skipped tests:"
grep -a '^SKIP ' "$build/Testing/Temporary/LastTest.log" || echo "none"

rm -rf "$pages"
mkdir -p "$pages"
root=$here/../..
"$root/tools/with-display.sh" "$root/packaging/start-and-close.sh" "$pages/packed.png" \
    "$here/wine.sh" "$build/wine" "$packed/quillory.exe" || fail "the packed program does not start and exit correctly"
echo "The packed program starts and exits; screenshot: $pages/packed.png"

tour=$build/tools/tour/quillory-tour.exe
if [[ -f $tour ]]; then
    "$root/tools/with-display.sh" "$here/wine.sh" "$build/wine" "$tour" --output 'C:\quillory\pages' ||
        fail "the tour failed under Wine"
    cp "$build"/wine/drive_c/quillory/pages/*.png "$pages/"
    echo "Screenshots of all pages: $pages"
fi
