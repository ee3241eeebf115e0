#!/usr/bin/env bash
# Copies the libraries that Windows programs and plugins need into their folder, except those that Windows contains:
#
#     packaging/windows/add-libraries.sh FOLDER LIBRARY-FOLDER...
#
# Looks for them in the library folders, then in the folders of the compiler.
set -euo pipefail

SCRIPT_NAME=add-libraries.sh
here=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=packaging/windows/common.sh
. "$here/common.sh"

readonly mingw=x86_64-w64-mingw32
(($# >= 2)) || fail "expected a folder of programs and the folders of the libraries"
folder=$1
shift
[[ -d $folder ]] || fail "no such folder: $folder"
sources=("$@" "$(dirname -- "$($mingw-g++-posix -print-file-name=libstdc++-6.dll)")" "/usr/$mingw/lib")

imports() {
    "$mingw-objdump" -p "$1" | sed -n 's/^\s*DLL Name: //p'
}
find_library() {
    local source
    for source in "${sources[@]}"; do
        [[ -f $source/$1 ]] && printf '%s\n' "$source/$1" && return
    done
    return 1
}
# The compiler has an import library for each library of Windows. API sets (api-ms-win-*) have none.
is_of_windows() {
    local name=${1,,}
    [[ $name == api-ms-win-* || -f /usr/$mingw/lib/lib${name%.*}.a ]]
}

mapfile -d '' -t pending < <(find "$folder" -type f \( -name '*.exe' -o -name '*.dll' \) -print0)
while ((${#pending[@]})); do
    file=${pending[0]}
    pending=("${pending[@]:1}")
    while IFS= read -r library; do
        [[ ! -e $folder/$library ]] || continue
        if source=$(find_library "$library"); then
            cp "$source" "$folder/$library"
            "$mingw-strip" --strip-unneeded "$folder/$library"
            pending+=("$folder/$library")
        elif ! is_of_windows "$library"; then
            fail "$(basename -- "$file") needs $library, which is neither in ${sources[*]} nor part of Windows"
        fi
    done < <(imports "$file")
done
