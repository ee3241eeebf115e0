#!/usr/bin/env bash
# Builds the Debian package and checks its descriptions and Debian's policy. Then installs it, starts and closes the
# program on a virtual display, and removes it: nothing must remain. Installing needs root or sudo.
set -euo pipefail

fail() {
    printf 'packaging/linux/check.sh: %s\n' "$1" >&2
    exit 1
}

usage() {
    cat <<'TEXT'
Usage: packaging/linux/check.sh [--no-install]
Builds the Debian package and checks it. --no-install skips installing and removing it, which needs root.
TEXT
}

install=yes
case "$#:${1:-}" in
0:) ;;
1:-h | 1:--help)
    usage
    exit
    ;;
1:--no-install) install= ;;
*) fail "unknown arguments: $* (see --help)" ;;
esac

as_root() {
    if ((EUID == 0)); then "$@"; else sudo -n "$@"; fi
}
is_installed() {
    dpkg-query -W -f '${db:Status-Status}' quillory 2>/dev/null | grep -qx installed
}
# All files on the machine with the name of the program.
traces() {
    find /usr /etc /opt /var -xdev -iname '*quillory*' -not -path "$PWD/*" -not -path '*/.cache/*' 2>/dev/null | sort
}

cd "$(dirname -- "${BASH_SOURCE[0]}")/../.."
if [[ $install ]]; then
    ((EUID == 0)) || sudo -n true 2>/dev/null ||
        fail "installing the package needs root, or sudo without a password (or use --no-install)"
    ! is_installed || fail "quillory is already installed; remove it first"
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

package=$(packaging/linux/build.sh)
dpkg-deb -x "$package" "$work/content"
version=$(dpkg-deb -f "$package" Version)

entry=$work/content/usr/share/applications/quillory.desktop
desktop-file-validate "$entry" || fail "the menu entry is invalid"
program=$(sed -n 's/^Exec=\([^ ]*\) %F$/\1/p' "$entry")
[[ -n $program && -x $work/content/usr/bin/$program ]] || fail "the menu entry does not start a program of the package with folders"
icon=$(sed -n 's/^Icon=//p' "$entry")
for file in 48x48/apps/"$icon".png scalable/apps/"$icon".svg; do
    [[ -f $work/content/usr/share/icons/hicolor/$file ]] || fail "the package has no icon $file"
done
appstreamcli validate --no-net "$work"/content/usr/share/metainfo/*.xml >"$work/appstream" 2>&1 || {
    cat "$work/appstream" >&2
    fail "the catalogue entry is invalid"
}
[[ $("$work/content/usr/bin/$program" --version) == "Quillory $version" ]] ||
    fail "the program does not print version $version"
grep -q "<release version=\"$version\"" "$work"/content/usr/share/metainfo/*.xml ||
    fail "the catalogue entry does not name version $version"
while IFS= read -r picture; do
    [[ -f docs/screenshots/$picture ]] || fail "the catalogue entry shows $picture, which is not in docs/screenshots"
done < <(sed -n 's|.*<image>.*/\(.*\)</image>.*|\1|p' "$work"/content/usr/share/metainfo/*.xml)
for file in bin/quillory-cli share/man/man1/quillory-cli.1.gz share/bash-completion/completions/quillory-cli \
    share/zsh/vendor-completions/_quillory-cli share/fish/vendor_completions.d/quillory-cli.fish; do
    [[ -f $work/content/usr/$file ]] || fail "the package has no $file"
done
lintian_options=(--fail-on "error,warning")
((EUID != 0)) || lintian_options+=(--allow-root)
lintian "${lintian_options[@]}" "$package" || fail "lintian reports problems in $package"
echo "$(basename -- "$package"): menu entry, catalogue entry and lintian passed"
[[ $install ]] || exit 0

traces >"$work/before"
as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
    -o DPkg::Lock::Timeout=300 "$package" >"$work/apt" 2>&1 || {
    tail -n 20 "$work/apt" >&2
    fail "the package cannot be installed"
}
uninstall() {
    as_root env DEBIAN_FRONTEND=noninteractive apt-get purge -y -qq -o DPkg::Lock::Timeout=300 quillory \
        >"$work/apt" 2>&1
}
trap 'uninstall || true; rm -rf "$work"' EXIT

mkdir "$work/home"
printf equal | tee "$work/home/1" >"$work/home/2"
quillory-cli find --fail-on-duplicates "$work/home" >"$work/found" && fail "quillory-cli finds no duplicates"
(($? == 3)) || fail "quillory-cli does not run"
rm "$work/home"/[12]
HOME=$work/home XDG_CONFIG_HOME='' XDG_CACHE_HOME='' XDG_DATA_HOME='' tools/with-display.sh \
    packaging/start-and-close.sh build/packages/quillory-linux.png "$program" ||
    fail "the installed program does not start and exit correctly"
left=$(find "$work/home" -type f)
[[ -z $left ]] || fail "the program left files in the home folder: ${left//$'\n'/ }"

dpkg -L quillory | sort >"$work/files"
uninstall || fail "the package cannot be removed"
trap 'rm -rf "$work"' EXIT
! is_installed || fail "the package is still installed after its removal"
while IFS= read -r file; do
    [[ -d $file || ! -e $file ]] || fail "$file was not removed"
done <"$work/files"
traces >"$work/after"
left=$(comm -13 "$work/before" "$work/after")
[[ -z $left ]] || fail "not removed: ${left//$'\n'/ }"
echo "$(basename -- "$package"): installed, started, closed, removed; nothing remained"
echo "Picture of the window: build/packages/quillory-linux.png"
