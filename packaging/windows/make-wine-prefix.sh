#!/usr/bin/env bash
# Creates a Wine prefix for tests of Windows programs and copies a folder into its C:\quillory:
#
#     packaging/windows/make-wine-prefix.sh PREFIX FOLDER
#
# The prefix reports Windows 10 and has two drives, C: and D:. No other folder of the machine is visible in it, so a
# scan of all drives stays inside. Reuses an existing prefix and replaces C:\quillory.
set -euo pipefail

SCRIPT_NAME=make-wine-prefix.sh
here=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=packaging/windows/common.sh
. "$here/common.sh"

(($# == 2)) || fail "expected a prefix to create and a folder to copy into it"
[[ -d $2 ]] || fail "no such folder: $2"
wine64=${QUILLORY_WINE64:-/usr/lib/wine/wine64}
[[ -x $wine64 ]] || fail "Wine is missing ($wine64; Debian package wine64)"
mkdir -p "$(dirname -- "$1")"
prefix=$(realpath -m -- "$1")
content=$(realpath -- "$2")
[[ ! -e $prefix || -e $prefix/complete || ! -e $prefix/drive_c ]] || rm -rf "$prefix" # incomplete

# Hides the machine's fonts. Qt takes letters that one font lacks from others, and Wine crashes on colour fonts,
# because it finds no outlines in them.
export FONTCONFIG_FILE=$prefix/fonts.conf
export WINEPREFIX=$prefix WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
unset DISPLAY
in_wine() {
    timeout --kill-after=20 300 "$wine64" "$@" </dev/null >>"$prefix.log" 2>&1 || fail "Wine cannot run $1 (see $prefix.log)"
}
wait_for_wine() {
    timeout 300 "$(dirname -- "$wine64")/wineserver64" -w || fail "Wine does not exit"
}
# Prints a LOGFONTW structure in hexadecimal: the font with this name, 12 pixels high, of normal weight.
log_font() {
    local hex record
    hex=$(printf %s "$1" | iconv -t UTF-16LE | od -An -v -tx1 | tr -d ' \n')
    printf -v record '%s%024d%s%016d%s' f4ffffff 0 90010000 0 "$hex"
    printf '%s%0*d' "$record" $((184 - ${#record})) 0
}

if [[ ! -e $prefix/complete ]]; then
    note "creating a Wine prefix in $prefix"
    : >"$prefix.log"
    mkdir -p "$prefix"
    echo '<fontconfig/>' >"$FONTCONFIG_FILE"
    in_wine wineboot --init
    in_wine winecfg /v win10
    # Otherwise a crashed program would wait until its dialog is closed.
    in_wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f
    # Text as smooth and as wide as on Windows, so that screenshots show whether it fits.
    in_wine reg add 'HKCU\Control Panel\Desktop' /v FontSmoothing /t REG_SZ /d 2 /f
    in_wine reg add 'HKCU\Control Panel\Desktop' /v FontSmoothingType /t REG_DWORD /d 1 /f
    for use in Caption Icon Menu Message SmCaption Status; do
        in_wine reg add 'HKCU\Control Panel\Desktop\WindowMetrics' /v "${use}Font" /t REG_BINARY \
            /d "$(log_font 'Open Sans')" /f
    done
    in_wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v 'Segoe UI' /t REG_SZ /d 'Open Sans' /f
    wait_for_wine
    cp /usr/share/wine/fonts/*.ttf "$prefix/drive_c/windows/Fonts/" || fail "Wine's fonts are missing (fonts-wine)"
    cp /usr/share/fonts/truetype/open-sans/OpenSans-*.ttf "$prefix/drive_c/windows/Fonts/" ||
        fail "Open Sans is missing (fonts-open-sans)"
    cp /usr/share/fonts/truetype/ancient-scripts/Symbola*.ttf "$prefix/drive_c/windows/Fonts/" ||
        fail "Symbola is missing (fonts-symbola)"
    # Replaces the user's folders, which are links into the machine's home folder.
    while IFS= read -r -d '' link; do
        rm "$link" && mkdir "$link"
    done < <(find "$prefix/drive_c/users" -type l -print0)
    rm -f "$prefix"/dosdevices/z: "$prefix"/dosdevices/[d-z]::
    mkdir -p "$prefix/drive_d"
    ln -sfn ../drive_d "$prefix/dosdevices/d:"
    touch "$prefix/complete"
fi
rm -rf "$prefix/drive_c/quillory"
cp -r "$content" "$prefix/drive_c/quillory"
