#!/usr/bin/env bash
# Installs, upgrades, starts and removes the program under Wine. Compares files and registry before and after:
#
#     packaging/windows/check-installer.sh INSTALLER.exe FOLDER VERSION WINE-PREFIX
#
# FOLDER contains the files that the installer must install. Replaces the Wine prefix.
set -euo pipefail

SCRIPT_NAME=check-installer.sh
here=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=packaging/windows/common.sh
. "$here/common.sh"

(($# == 4)) || fail "expected an installer, the folder that it installs, its version and a Wine prefix"
[[ -f $1 && -d $2 ]] || fail "no such installer or folder: $1, $2"
readonly installer=$1 content=$2 version=$3 root=$here/../..
mkdir -p "$(dirname -- "$4")"
prefix=$(realpath -m -- "$4")
readonly prefix wine64=${QUILLORY_WINE64:-/usr/lib/wine/wine64}
work=$(mktemp -d)
end_wine() {
    WINEPREFIX=$prefix "$(dirname -- "$wine64")/wineserver64" "$1" || true # the server may not run
}
# shellcheck disable=SC2317 # called by the trap
clean_up() {
    end_wine -k
    rm -rf "$work"
}
trap clean_up EXIT

# Resource types: 14 icon, 16 version, 24 manifest.
wrestool --extract --raw --type=24 "$installer" >"$work/manifest"
grep -q 'level="asInvoker"' "$work/manifest" || fail "the installer asks for administrator rights"
wrestool --extract --raw --type=16 "$installer" | tr -d '\0' >"$work/version"
grep -aq "ProductVersion.*$version" "$work/version" || fail "the version resource does not contain $version"
wrestool --extract --type=14 "$installer" >"$work/icon"
icotool --list "$work/icon" 2>/dev/null | grep -q -- '--width=48 ' || fail "the installer has no icon"

# An older version with a different program and a plugin that the new version lacks.
mkdir -p "$work/old/plugins"
echo old | tee "$work/old/quillory.exe" >"$work/old/plugins/dropped.dll"
"$here/build-installer.sh" "$work/old" 0.0.1 "$work/older.exe"

rm -rf "$prefix"
mkdir "$work/nothing"
"$here/make-wine-prefix.sh" "$prefix" "$work/nothing"
readonly drive=$prefix/drive_c
cp "$work/older.exe" "$drive/quillory/older.exe"
cp "$installer" "$drive/quillory/newer.exe"
mkdir "$drive/two words"

export FONTCONFIG_FILE=$prefix/fonts.conf
export WINEPREFIX=$prefix WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
# Waits until all processes have ended, because an uninstaller continues in a copy of itself.
run() {
    local code=0
    (cd "$drive" && env -u DISPLAY timeout --kill-after=20 120 "$wine64" "$@" </dev/null >"$work/output" 2>&1) || code=$?
    end_wine -w
    return "$code"
}
expect_code() {
    local expected=$1 code=0
    shift
    run "$@" || code=$?
    ((code == expected)) || fail "$* ended with exit code $code, not $expected"
}
# Prints the names of all files and all values of the registry. Skips temporary files, because the uninstaller leaves a
# copy of itself there, and the drivers, whose entries Wine rewrites at each start.
state() {
    (cd "$prefix" && find drive_c drive_d -not -path '*/[Tt]emp*' | LC_ALL=C sort)
    sed -E '/^#time=/d; s/^(\[.*\]) [0-9]+$/\1/' "$prefix/user.reg"
    sed -E '/^#time=/d; s/^(\[.*\]) [0-9]+$/\1/' "$prefix/system.reg" |
        awk '/^\[/ { ours = !/^\[System\\/ } ours'
}
expect_state() {
    state >"$work/now"
    diff "$1" "$work/now" >"$work/changes" || fail "$2: $(<"$work/changes")"
}
registry_has() {
    grep -qF -- "$1" "$prefix/user.reg"
}
expect_menu_entry() {
    if [[ $1 == on ]]; then
        registry_has "@=\"\\\"${folder//\\/\\\\}\\\\quillory.exe\\\" \\\"%1\\\"\"" || fail "no context menu entry: $2"
    else
        ! registry_has 'Directory\\shell\\Quillory' || fail "there is a context menu entry: $2"
    fi
}
# Compares all bytes, and the names including their case.
expect_installed() {
    cp -r "$1" "$work/expected"
    cp "$2/uninstall.exe" "$work/expected/uninstall.exe" || fail "no uninstaller in $2"
    diff -rq "$work/expected" "$2" >"$work/changes" || fail "installed files differ: $(<"$work/changes")"
    rm -rf "$work/expected"
}

# On Windows, every user has these keys.
for key in 'HKCU\Software\Classes' 'HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall'; do
    expect_code 0 reg add "$key" /f
done
user=$(find "$drive/users" -mindepth 1 -maxdepth 1 -not -name Public)
mkdir -p "$user/AppData/Local/Programs"
readonly user installed=$user/AppData/Local/Programs/Quillory
folder="C:\\users\\$(basename -- "$user")\\AppData\\Local\\Programs\\Quillory"
state >"$work/before"

expect_code 0 'C:\quillory\older.exe' /S
expect_installed "$work/old" "$installed"
expect_menu_entry off "it is off by default"
expect_code 0 'C:\quillory\newer.exe' /S /CONTEXTMENU=1
expect_installed "$content" "$installed"
expect_menu_entry on "/CONTEXTMENU=1 adds it"
registry_has "\"DisplayVersion\"=\"$version\"" || fail "the registry does not list version $version as installed"
[[ -f $user/AppData/Roaming/Microsoft/Windows/Start\ Menu/Programs/Quillory.lnk ]] || fail "no Start menu entry"
expect_code 0 'C:\quillory\newer.exe' /S
expect_menu_entry on "the earlier installation had one"
state >"$work/installed"
expect_code 2 'C:\quillory\newer.exe' /S /CONTEXTMENU=yes
expect_state "$work/installed" "an invalid argument changed files or registry"
echo "Upgraded an older version: only the new files remain; upgrades keep the context menu entry"

# Even without a display, the program runs, so its file is in use.
(cd "$drive" && exec env -u DISPLAY "$wine64" "$folder\\quillory.exe" >/dev/null 2>&1 </dev/null) &
for ((i = 0; i < 100; ++i)); do
    ! "$wine64" tasklist 2>/dev/null | grep -qi quillory.exe || break
    sleep 0.2
done
for program in 'C:\quillory\newer.exe /S' "$folder\\uninstall.exe /S _?=$folder"; do
    code=0
    # shellcheck disable=SC2086 # splits the arguments, which contain no spaces
    timeout --kill-after=20 120 "$wine64" $program >/dev/null 2>&1 </dev/null || code=$?
    ((code == 2)) || fail "$program ended with exit code $code while the program ran, not 2"
done
end_wine -k
end_wine -w
expect_state "$work/installed" "files or registry changed while the program ran"
echo "While the program runs, installer and uninstaller fail and change nothing"

"$root/tools/with-display.sh" "$root/packaging/start-and-close.sh" "$prefix.png" \
    "$wine64" "$folder\\quillory.exe" 'C:\two words' || fail "the installed program does not start and exit correctly"
end_wine -k
end_wine -w
echo "The installed program starts and exits; screenshot: $prefix.png"

# Two arguments, because Wine would quote one with a space, and /D takes no quotes.
expect_code 0 'C:\quillory\newer.exe' /S /CONTEXTMENU=0 '/D=C:\two' 'words\Quillory'
expect_menu_entry off "/CONTEXTMENU=0 removes it"
expect_installed "$content" "$drive/two words/Quillory"
[[ ! -e $installed ]] || fail "the earlier installation is still in its folder"
expect_code 0 'C:\quillory\newer.exe' /S /CONTEXTMENU=1
mkdir "$drive/two words/Quillory/man/notes"
for file in "$drive/two words/Quillory"/{notes.txt,man/notes/notes.txt}; do
    echo mine >"$file"
done
expect_code 0 'C:\two words\Quillory\uninstall.exe' /S
for file in "$drive/two words/Quillory"/{notes.txt,man/notes/notes.txt}; do
    grep -qx mine "$file" 2>/dev/null || fail "the uninstaller removed $file, a file of the user"
    rm "$file"
done
rmdir "$drive/two words/Quillory"/{man/notes,man,}
expect_state "$work/before" "the uninstaller left files or removed too many"
echo "$(basename -- "$installer"): installed, upgraded, started, moved, removed; only the user's files remain"
