#!/usr/bin/env bash
# Builds all files of a release. See --help.
set -euo pipefail

fail() {
    printf 'packaging/release.sh: %s\n' "$1" >&2
    exit 1
}

usage() {
    cat <<'TEXT'
Usage: packaging/release.sh FOLDER
       packaging/release.sh --check

Creates these files and SHA256SUMS in FOLDER, which must not exist:
  quillory_<version>_<architecture>.deb
  quillory-<version>-windows-x64.zip
  quillory-<version>-windows-x64-setup.exe
  quillory-<version>.tar.gz, the sources of the current commit, from which the other files are built

It fails unless the working tree is clean, the first heading of CHANGELOG.md names the version of CMakeLists.txt, and
the tag v<version>, if it exists, is the current commit. --check only checks these conditions.

The date of the commit is used in all files, so the same commit gives the same bytes on the same machine.
TEXT
}

check=
folder=
case "$#:${1:-}" in
1:-h | 1:--help)
    usage
    exit
    ;;
1:--check) check=yes ;;
1:-*) fail "unknown argument: $1 (see --help)" ;;
1:?*) folder=$(realpath -m -- "$1") ;;
*) fail "expected a folder (see --help)" ;;
esac

cd "$(dirname -- "${BASH_SOURCE[0]}")/.."
[[ $(git rev-parse --show-toplevel 2>/dev/null) == "$PWD" ]] || fail "$PWD is not a git checkout"
changes=$(git status --porcelain | head -n 5)
[[ -z $changes ]] || fail "the working tree differs from the commit: ${changes//$'\n'/, }"
version=$(sed -n 's/^ *VERSION \([0-9.]*\)$/\1/p' CMakeLists.txt)
[[ $version ]] || fail "CMakeLists.txt names no version"
heading=$(grep -m 1 '^## ' CHANGELOG.md || true)
[[ $heading =~ ^"## $version - "([0-9]{4}-[0-9]{2}-[0-9]{2})$ ]] ||
    fail "CHANGELOG.md must begin with \"## $version - <date>\", not \"$heading\""
date --date="${BASH_REMATCH[1]}" >/dev/null 2>&1 || fail "invalid date in CHANGELOG.md: ${BASH_REMATCH[1]}"
tagged=$(git rev-parse --quiet --verify "v$version^{commit}" || true)
[[ -z $tagged || $tagged == "$(git rev-parse HEAD)" ]] ||
    fail "version $version is already published: the tag v$version is another commit"
echo "Version $version: working tree, change log and tag agree"
[[ ! $check ]] || exit 0
[[ ! -e $folder ]] || fail "$folder already exists"

SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
export SOURCE_DATE_EPOCH
readonly work=$PWD/build/publish source=quillory-$version
rm -rf "$work"
mkdir -p "$work/files"
# --no-name: otherwise gzip may store a name and a time.
git archive --format=tar --prefix="$source/" HEAD | gzip --best --no-name >"$work/files/$source.tar.gz"

# Builds from the archive, so that the packages contain only committed files.
tar -xf "$work/files/$source.tar.gz" -C "$work"
for script in linux windows; do
    "$work/$source/packaging/$script/build.sh" >"$work/$script.log" 2>&1 || {
        tail -n 25 "$work/$script.log" >&2
        fail "the packages for $script could not be built; see $work/$script.log"
    }
done
mv "$work/$source/build/packages"/*"$version"* "$work/files/"
(cd "$work/files" && sha256sum -- * >SHA256SUMS)
mkdir -p "$(dirname -- "$folder")"
mv "$work/files" "$folder"
rm -rf "$work"
(cd "$folder" && cat SHA256SUMS)
