#!/usr/bin/env bash
# Checks the versions of the libraries that are linked into the DLLs of a folder:
#
#     packaging/windows/check-libraries.sh FOLDER
#
# Each library of library-versions.txt must be in at least one DLL. No DLL may contain an older version, or a version
# that FOLDER/licences/libraries.txt does not list.
set -euo pipefail

SCRIPT_NAME=check-libraries.sh
here=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=packaging/windows/common.sh
. "$here/common.sh"

(($# == 1)) || fail "expected a folder"
folder=$1
[[ -f $folder/licences/libraries.txt ]] || fail "no libraries.txt in $folder/licences"

# Prints "PACKAGE VERSION" for each library in the DLLs. build-libraries.sh compiles these words into them.
linked_libraries() {
    find "$folder" -name '*.dll' -exec grep -aohE 'Debian source: [a-z0-9.+-]+ [0-9A-Za-z.+~:-]+' {} + |
        cut -d ' ' -f 3- | sort -u
}

linked=$(linked_libraries)
while read -r package minimum; do
    versions=$(awk -v package="$package" '$1 == package { print $2 }' <<<"$linked")
    [[ $versions ]] || fail "$package is in no DLL: Qt has used its own copy"
    while IFS= read -r version; do
        dpkg --compare-versions "$version" ge "$minimum" || fail "$package is $version, older than $minimum"
        grep -qxF "$package $version" "$folder/licences/libraries.txt" ||
            fail "libraries.txt does not say that $package is $version"
    done <<<"$versions"
done < <(grep -v '^#' "$here/library-versions.txt")
