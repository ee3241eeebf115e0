#!/usr/bin/env bash
# Puts the licences of the libraries that come along into FOLDER/licences: packaging/windows/add-licences.sh FOLDER QT
set -euo pipefail

SCRIPT_NAME=add-licences.sh
here=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=packaging/windows/common.sh
. "$here/common.sh"

(($# == 2)) || fail "say which folder to complete and where Qt is"
[[ -d $1 ]] || fail "there is no folder $1"
[[ -d $2/LICENSES ]] || fail "$2 is no Qt with its licences"
target=$1/licences
mkdir -p "$target"
[[ -f $2/libraries.txt ]] || fail "$2 has no record of its libraries"
# A record with the line endings of Windows would not be the one that check-libraries.sh compares.
cp "$2/libraries.txt" "$target/"
for licence in LGPL-3.0-only GPL-3.0-only; do
    cp "$2/LICENSES/$licence.txt" "$target/" || fail "Qt came without $licence.txt"
done
while read -r package _; do
    cp "$2/LICENSES/$package-copyright.txt" "$target/" || fail "Qt came without the notice of $package"
done <"$2/libraries.txt"
cp /usr/share/doc/g++-mingw-w64-x86-64-posix/copyright "$target/GCC-runtime-copyright.txt" ||
    fail "the notice of the compiler's libraries is missing"
cp /usr/share/doc/mingw-w64-x86-64-dev/copyright "$target/MinGW-w64-copyright.txt" ||
    fail "the notice of MinGW-w64 is missing"
cat >"$target/README.txt" <<'TEXT'
Quillory comes with libraries under licences of their own:

Qt6*.dll, platforms, styles, imageformats   Qt, LGPL 3: LGPL-3.0-only.txt with GPL-3.0-only.txt. You may
                                            replace them by your own build. Notices of all parts:
                                            qt6-base-copyright.txt, qt6-imageformats-copyright.txt

These files contain zlib, libpng, libjpeg-turbo, libwebp, FreeType, HarfBuzz, PCRE2 and double-conversion, each under
the licence in its *-copyright.txt. Portions of this software are copyright The FreeType Project (www.freetype.org).
This software is based in part on the work of the Independent JPEG Group.

The sources are Debian's source packages, in the versions that libraries.txt tells: https://snapshot.debian.org/

libstdc++-6.dll, libgcc_s_seh-1.dll         GCC runtime library exception: GCC-runtime-copyright.txt
libwinpthread-1.dll                         MinGW-w64: MinGW-w64-copyright.txt
TEXT
# For Notepad.
sed -i 's/$/\r/' "$target/README.txt"
