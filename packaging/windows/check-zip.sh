#!/usr/bin/env bash
# Takes the zip apart and checks what it promises: packaging/windows/check-zip.sh FILE.zip VERSION
set -euo pipefail

SCRIPT_NAME=check-zip.sh
here=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=packaging/windows/common.sh
. "$here/common.sh"

readonly mingw=x86_64-w64-mingw32
(($# == 2)) || fail "say which zip to check and which version it has to be"
[[ -f $1 ]] || fail "there is no file $1"
readonly zip=$1 version=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
unzip -q "$zip" -d "$work" 2>/dev/null || fail "$zip cannot be unpacked"
readonly folder=$work/quillory-$version-windows-x64
[[ $(ls -A "$work") == "$(basename -- "$folder")" ]] || fail "$zip does not hold the one folder of version $version"
readonly program=$folder/quillory.exe
[[ -f $program ]] || fail "there is no quillory.exe"

# A window program: a console one opens a black box behind its window.
"$mingw-objdump" -p "$program" >"$work/headers"
grep -q '^Subsystem.*Windows GUI' "$work/headers" || fail "quillory.exe is no window program"

# The other one is a console program: it prints to the console that it was started in.
[[ -f $folder/quillory-cli.exe ]] || fail "there is no quillory-cli.exe"
"$mingw-objdump" -p "$folder/quillory-cli.exe" >"$work/headers"
grep -q '^Subsystem.*Windows CUI' "$work/headers" || fail "quillory-cli.exe is no console program"
! grep -Eq 'DLL Name: Qt6(Gui|Widgets)' "$work/headers" || fail "quillory-cli.exe needs libraries for windows"
for file in man/quillory-cli.1 completions/{quillory-cli.bash,_quillory-cli,quillory-cli.fish}; do
    [[ -f $folder/$file ]] || fail "there is no $file"
done

# Types of resources: 14 icons, 16 version, 24 manifest.
wrestool --extract --raw --type=24 "$program" >"$work/manifest"
for promise in '<longPathAware[^>]*>true<' '<dpiAwareness[^>]*>PerMonitorV2' 'level="asInvoker"'; do
    grep -Eq "$promise" "$work/manifest" || fail "the manifest lacks $promise"
done
wrestool --extract --raw --type=16 "$program" | tr -d '\0' >"$work/version"
grep -aq "ProductVersion.*$version" "$work/version" || fail "the version resource does not say $version"
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
echo "$(basename -- "$zip"): window program, icon, version $version, manifest and libraries are in order"
