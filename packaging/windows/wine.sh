#!/usr/bin/env bash
# Runs a Windows program in a Wine prefix that make-wine-prefix.sh has created:
#
#     packaging/windows/wine.sh PREFIX PROGRAM.exe [ARGUMENT...]
#
# First copies the program to the libraries in C:\quillory of the prefix, because the machine's files are not visible
# there. Output and exit code are those of the program. QUILLORY_WINE_SECONDS limits its time (default: 900).
set -euo pipefail

fail() {
    printf 'wine.sh: %s\n' "$1" >&2
    exit 125
}

(($# >= 2)) || fail "expected a Wine prefix and a program"
[[ -e $1/complete ]] || fail "$1 is not a complete Wine prefix (make-wine-prefix.sh creates one)"
[[ -f $2 ]] || fail "no such program: $2"
WINEPREFIX=$(realpath -- "$1")
program=$(realpath -- "$2")
shift 2

folder=$WINEPREFIX/drive_c/quillory
name=$(basename -- "$program")
# A hard link, because it is faster than a copy. The temporary name keeps parallel runs from using an incomplete copy.
part=$folder/.$name.$$
if ! [[ $program -ef $folder/$name ]]; then
    if ! cp -lf "$program" "$part" 2>/dev/null && ! cp -f "$program" "$part"; then
        fail "cannot copy $program into $folder"
    fi
    mv -f "$part" "$folder/$name"
fi

export FONTCONFIG_FILE=$WINEPREFIX/fonts.conf
export WINEPREFIX WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
# Wine does not pass QT_* variables to programs, but passes WINEQT_* as QT_*. Qt for Windows has no xcb or wayland.
case ${QT_QPA_PLATFORM:-} in
xcb* | wayland*) unset QT_QPA_PLATFORM ;;
esac
while IFS= read -r variable; do
    export "WINE$variable=${!variable}"
done < <(compgen -e QT_ || true)
# Without this variable, the messages of Qt do not reach standard error.
export WINEQT_FORCE_STDERR_LOGGING=1

cd "$folder"
exec timeout --foreground --kill-after=20 "${QUILLORY_WINE_SECONDS:-900}" \
    "${QUILLORY_WINE64:-/usr/lib/wine/wine64}" "C:\\quillory\\$name" "$@" </dev/null
