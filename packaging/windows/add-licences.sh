#!/usr/bin/env bash
# Copies the licences of the bundled libraries into FOLDER/licences: packaging/windows/add-licences.sh FOLDER QT
set -euo pipefail

SCRIPT_NAME=add-licences.sh
here=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=packaging/windows/common.sh
. "$here/common.sh"

(($# == 2)) || fail "expected the folder of the program and the prefix of Qt"
[[ -d $1 ]] || fail "no such folder: $1"
[[ -d $2/LICENSES ]] || fail "the Qt in $2 has no licences"
target=$1/licences
mkdir -p "$target"
[[ -f $2/libraries.txt ]] || fail "the Qt in $2 has no list of its libraries"
# Keeps the Unix line endings, because check-libraries.sh compares whole lines.
cp "$2/libraries.txt" "$target/"
for licence in LGPL-3.0-only GPL-3.0-only; do
    cp "$2/LICENSES/$licence.txt" "$target/" || fail "the Qt in $2 has no $licence.txt"
done
while read -r package _; do
    cp "$2/LICENSES/$package-copyright.txt" "$target/" || fail "the Qt in $2 has no notice of $package"
done <"$2/libraries.txt"
cp /usr/share/doc/g++-mingw-w64-x86-64-posix/copyright "$target/GCC-runtime-copyright.txt" ||
    fail "the notice of the compiler's libraries is missing"
cp /usr/share/doc/mingw-w64-x86-64-dev/copyright "$target/MinGW-w64-copyright.txt" ||
    fail "the notice of MinGW-w64 is missing"
cat >"$target/README.txt" <<'TEXT'
Quillory includes libraries that have their own licences:

Qt6*.dll, platforms, styles, imageformats   Qt, LGPL 3: LGPL-3.0-only.txt with GPL-3.0-only.txt. You may
                                            replace them with your own build. Notices of all parts:
                                            qt6-base-copyright.txt, qt6-imageformats-copyright.txt

These files contain zlib, libpng, libjpeg-turbo, libwebp, FreeType, HarfBuzz, PCRE2 and double-conversion, each under
the licence in its *-copyright.txt. Portions of this software are copyright The FreeType Project (www.freetype.org).
This software is based in part on the work of the Independent JPEG Group.

The sources are Debian's source packages, in the versions that libraries.txt lists: https://snapshot.debian.org/

libstdc++-6.dll, libgcc_s_seh-1.dll         GCC runtime library exception: GCC-runtime-copyright.txt
libwinpthread-1.dll                         MinGW-w64: MinGW-w64-copyright.txt
TEXT
# Windows line endings, for Notepad.
sed -i 's/$/\r/' "$target/README.txt"
