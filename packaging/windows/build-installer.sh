#!/usr/bin/env bash
# Builds an installer from the unpacked zip: packaging/windows/build-installer.sh FOLDER VERSION OUTPUT.exe
# The output depends only on the folder and the version, byte for byte.
set -euo pipefail

SCRIPT_NAME=build-installer.sh
here=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=packaging/windows/common.sh
. "$here/common.sh"

(($# == 3)) || fail "expected a folder to install, its version and an output file"
[[ -f $1/quillory.exe ]] || fail "no quillory.exe in $1"
[[ $2 =~ ^[0-9]+\.[0-9]+\.[0-9]+$ ]] || fail "a version consists of three numbers (got: $2)"
command -v makensis >/dev/null || fail "makensis is missing (Debian package nsis)"
folder=$(realpath -- "$1")
version=$2
output=$(realpath -m -- "$3")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

mapfile -t files < <(cd "$folder" && find . -type f -printf '%P\n' | LC_ALL=C sort)
# Deepest first, so that each folder is empty when it is removed.
mapfile -t folders < <(cd "$folder" && find . -mindepth 1 -type d -printf '%P\n' | LC_ALL=C sort -r)
for name in "${files[@]}"; do
    # NSIS gives $ and quotes a special meaning.
    [[ $name =~ ^[A-Za-z0-9._+/-]+$ ]] || fail "the installer cannot contain a file with this name: $name"
done

# Lists every file and folder, so that the uninstaller removes exactly what the installer has installed.
{
    echo '!macro InstallContent'
    for name in "${files[@]}"; do
        path=$(dirname -- "$name")
        [[ $path == . ]] && path= || path="\\${path//\//\\}"
        printf "  SetOutPath \"\$INSTDIR%s\"\n  File \"%s\"\n" "$path" "$folder/$name"
    done
    echo '!macroend'
    echo '!macro RemoveContent'
    for name in "${files[@]}"; do
        printf "  Delete \"\$INSTDIR\\\\%s\"\n" "${name//\//\\}"
    done
    for name in "${folders[@]}"; do
        printf "  RMDir \"\$INSTDIR\\\\%s\"\n" "${name//\//\\}"
    done
    echo '!macroend'
} >"$work/content.nsh"

size=$(find "$folder" -type f -printf '%s\n' | awk '{ kibibytes += int(($1 + 1023) / 1024) } END { print kibibytes }')
mkdir -p "$(dirname -- "$output")"
makensis -NOCD -INPUTCHARSET UTF8 -WX -V2 -DVERSION="$version" -DCONTENT="$work/content.nsh" -DSIZE="$size" \
    -DICONS="$here/../../resources/app-icons" -DOUTPUT="$work/installer.exe" "$here/installer.nsi" >&2 ||
    fail "makensis failed"
mv "$work/installer.exe" "$output"
