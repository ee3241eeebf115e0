#!/usr/bin/env bash
# Unpacks the zip and checks its contents: packaging/windows/check-zip.sh FILE.zip VERSION
set -euo pipefail

SCRIPT_NAME=check-zip.sh
here=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=packaging/windows/common.sh
. "$here/common.sh"

readonly mingw=x86_64-w64-mingw32
(($# == 2)) || fail "expected a zip and its version"
[[ -f $1 ]] || fail "no such file: $1"
readonly zip=$1 version=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
unzip -q "$zip" -d "$work" 2>/dev/null || fail "$zip cannot be unpacked"
readonly folder=$work/quillory-$version-windows-x64
[[ $(ls -A "$work") == "$(basename -- "$folder")" ]] || fail "$zip must contain one folder, ${folder##*/}"
readonly program=$folder/quillory.exe
[[ -f $program ]] || fail "quillory.exe is missing"

# Windows would open a console window together with a console program.
"$mingw-objdump" -p "$program" >"$work/headers"
grep -q '^Subsystem.*Windows GUI' "$work/headers" || fail "quillory.exe is not a window program"

# A console program, so that its output appears in the console.
[[ -f $folder/quillory-cli.exe ]] || fail "quillory-cli.exe is missing"
"$mingw-objdump" -p "$folder/quillory-cli.exe" >"$work/headers"
grep -q '^Subsystem.*Windows CUI' "$work/headers" || fail "quillory-cli.exe is not a console program"
! grep -Eq 'DLL Name: Qt6(Gui|Widgets)' "$work/headers" || fail "quillory-cli.exe links Qt Gui or Qt Widgets"
for file in man/quillory-cli.1 completions/{quillory-cli.bash,_quillory-cli,quillory-cli.fish}; do
    [[ -f $folder/$file ]] || fail "$file is missing"
done

# Resource types: 14 icon, 16 version, 24 manifest.
wrestool --extract --raw --type=24 "$program" >"$work/manifest"
for setting in '<longPathAware[^>]*>true<' '<dpiAwareness[^>]*>PerMonitorV2' 'level="asInvoker"'; do
    grep -Eq "$setting" "$work/manifest" || fail "the manifest lacks $setting"
done
wrestool --extract --raw --type=16 "$program" | tr -d '\0' >"$work/version"
grep -aq "ProductVersion.*$version" "$work/version" || fail "the version resource does not contain $version"
wrestool --extract --type=14 "$program" >"$work/icon"
icotool --list "$work/icon" >"$work/sizes"
for size in 16 32 48 256; do
    grep -q -- "--width=$size " "$work/sizes" || fail "the icon has no picture of $size pixels"
done

[[ -f $folder/platforms/qwindows.dll ]] || fail "Qt's platform plugin is missing"
cp -r "$folder" "$work/complete"
"$here/add-libraries.sh" "$work/complete" "$work/none"
diff -rq "$folder" "$work/complete" >"$work/missing" || fail "libraries are missing: $(<"$work/missing")"
"$here/check-libraries.sh" "$folder"
echo "$(basename -- "$zip"): programs, icon, version $version, manifest and libraries passed"
