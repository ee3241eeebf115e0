#!/usr/bin/env bash
# Runs a Windows program under Wine, in a Wine prefix that make-wine-prefix.sh has made:
#
#     packaging/windows/wine.sh PREFIX PROGRAM.exe [ARGUMENT...]
#
# The program is put into C:\quillory of the prefix first, where the libraries are: the machine's own files are on no
# drive there. Output and exit code are the program's. QUILLORY_WINE_SECONDS limits its time (default 900).
set -euo pipefail

fail() {
    printf 'wine.sh: %s\n' "$1" >&2
    exit 125
}

(($# >= 2)) || fail "say which Wine prefix to use and which program to run"
[[ -e $1/complete ]] || fail "$1 is not a complete Wine prefix (make-wine-prefix.sh makes one)"
[[ -f $2 ]] || fail "there is no program $2"
WINEPREFIX=$(realpath -- "$1")
program=$(realpath -- "$2")
shift 2

folder=$WINEPREFIX/drive_c/quillory
name=$(basename -- "$program")
# A link costs nothing. Through a name of its own, so that two runs at a time do not see each other's half.
part=$folder/.$name.$$
if ! [[ $program -ef $folder/$name ]]; then
    if ! cp -lf "$program" "$part" 2>/dev/null && ! cp -f "$program" "$part"; then
        fail "cannot copy $program into $folder"
    fi
    mv -f "$part" "$folder/$name"
fi

export FONTCONFIG_FILE=$WINEPREFIX/fonts.conf
export WINEPREFIX WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
# Wine hands Qt's variables on under another name only. There is one platform for windows on Windows.
case ${QT_QPA_PLATFORM:-} in
xcb* | wayland*) unset QT_QPA_PLATFORM ;;
esac
while IFS= read -r variable; do
    export "WINE$variable=${!variable}"
done < <(compgen -e QT_ || true)
# Without it nothing of what a test says reaches standard output or error.
export WINEQT_FORCE_STDERR_LOGGING=1

cd "$folder"
exec timeout --foreground --kill-after=20 "${QUILLORY_WINE_SECONDS:-900}" \
    "${QUILLORY_WINE64:-/usr/lib/wine/wine64}" "C:\\quillory\\$name" "$@" </dev/null
