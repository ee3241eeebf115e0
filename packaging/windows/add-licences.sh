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
for licence in LGPL-3.0-only GPL-3.0-only qt6-base-copyright qt6-imageformats-copyright; do
    cp "$2/LICENSES/$licence.txt" "$target/" || fail "Qt came without $licence.txt"
done
cp /usr/share/doc/g++-mingw-w64-x86-64-posix/copyright "$target/GCC-runtime-copyright.txt" ||
    fail "the notice of the compiler's libraries is missing"
cp /usr/share/doc/mingw-w64-x86-64-dev/copyright "$target/MinGW-w64-copyright.txt" ||
    fail "the notice of MinGW-w64 is missing"
cat >"$target/README.txt" <<'TEXT'
Quillory comes with unmodified libraries under licences of their own:

Qt6*.dll, platforms, styles, imageformats   Qt, LGPL 3: LGPL-3.0-only.txt with GPL-3.0-only.txt. You may
                                            replace them by your own build. Sources: Debian's source packages
                                            qt6-base and qt6-imageformats; notices of all parts:
                                            qt6-base-copyright.txt, qt6-imageformats-copyright.txt
libstdc++-6.dll, libgcc_s_seh-1.dll         GCC runtime library exception: GCC-runtime-copyright.txt
libwinpthread-1.dll                         MinGW-w64: MinGW-w64-copyright.txt
TEXT
# For Notepad.
sed -i 's/$/\r/' "$target/README.txt"
