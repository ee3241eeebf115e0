#!/usr/bin/env bash
# Makes an installer from the folder of the unpacked zip: packaging/windows/build-installer.sh FOLDER VERSION OUTPUT.exe
# The same folder and version give the same bytes.
set -euo pipefail

SCRIPT_NAME=build-installer.sh
here=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=packaging/windows/common.sh
. "$here/common.sh"

(($# == 3)) || fail "say which folder to install, its version and which installer to write"
[[ -f $1/quillory.exe ]] || fail "there is no program in $1"
[[ $2 =~ ^[0-9]+\.[0-9]+\.[0-9]+$ ]] || fail "a version is three numbers (got: $2)"
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
    # $ and quotes have a meaning of their own in the script.
    [[ $name =~ ^[A-Za-z0-9._+/-]+$ ]] || fail "the installer cannot hold a file of this name: $name"
done

# One file and one folder at a time: what the uninstaller removes is what the installer has put there.
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
