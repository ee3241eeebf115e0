#!/usr/bin/env bash
# Runs what build.sh has built under Wine: the tests, the packed program, the tour through its pages.
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
    fail "build, packed program and Qt are expected in $build, $packed and $qt"
readonly pages=$build/pages

# What is packed, and what only tests need.
content=$build/wine-content
rm -rf "$content"
cp -r "$packed" "$content"
install -D "$qt/plugins/platforms/qoffscreen.dll" "$content/platforms/qoffscreen.dll"
cp "$qt/bin/Qt6Test.dll" "$content/"
# The offscreen platform draws boxes for letters unless it finds fonts here.
install -D -t "$content/lib/fonts" /usr/share/fonts/truetype/open-sans/OpenSans-{Regular,Bold}.ttf
# Tests start these.
cp "$build/tests/scan_and_close.exe" "$build/tools/tour/quillory-tour.exe" "$content/"
"$here/make-wine-prefix.sh" "$build/wine" "$content"

readonly wineserver=/usr/lib/wine/wineserver64
# Ends Wine's server, and with it what a test may have left running in the prefix.
end_wine() {
    WINEPREFIX=$build/wine "$wineserver" -k || true # there may be none
    WINEPREFIX=$build/wine "$wineserver" -w
}
# Wine's server and services are up until end_wine. Each test would bring them up anew otherwise, and ctest would wait
# seconds for them to go, because they hold the output of the test that they came with.
start_wine() {
    end_wine
    WINEPREFIX=$build/wine "$wineserver" -p
    "$here/wine.sh" "$build/wine" "$build/wine/drive_c/windows/system32/cmd.exe" /c exit >/dev/null 2>&1 ||
        fail "Wine does not start"
}
trap end_wine EXIT

# Wine is slow with windows, and a new file takes it the longer the more its folder holds: what repeats itself is done
# less often, unless told otherwise.
export QUILLORY_MODEL_SEQUENCES=${QUILLORY_MODEL_SEQUENCES:-40} QUILLORY_STRESS_ROUNDS=${QUILLORY_STRESS_ROUNDS:-6}
export QUILLORY_LARGE_FOLDER=${QUILLORY_LARGE_FOLDER:-5000}

echo "Tests, under Wine:"
start_wine
QUILLORY_TEST_SECOND_DRIVE=D:/ ctest --test-dir "$build" --output-on-failure --no-tests=error \
    --parallel "${QUILLORY_JOBS:-$(nproc)}" "$@" || fail "tests have failed under Wine"
# The windows that follow are for a display, which the services know nothing of.
end_wine
echo "Left out, and why:"
grep -a '^SKIP ' "$build/Testing/Temporary/LastTest.log" || echo "nothing"

rm -rf "$pages"
mkdir -p "$pages"
root=$here/../..
"$root/tools/with-display.sh" "$root/packaging/start-and-close.sh" "$pages/packed.png" \
    "$here/wine.sh" "$build/wine" "$packed/quillory.exe" || fail "the packed program does not start and end as it should"
echo "The packed program starts and ends; its window: $pages/packed.png"

tour=$build/tools/tour/quillory-tour.exe
if [[ -f $tour ]]; then
    "$root/tools/with-display.sh" "$here/wine.sh" "$build/wine" "$tour" --output 'C:\quillory\pages' ||
        fail "the tour has failed under Wine"
    cp "$build"/wine/drive_c/quillory/pages/*.png "$pages/"
    echo "The tour has gone through all pages; their pictures: $pages"
fi
