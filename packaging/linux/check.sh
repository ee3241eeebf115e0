#!/usr/bin/env bash
# Builds the Debian package and checks its descriptions, its manual pages and Debian's policy. Then installs it in a fresh
# Debian, starts and closes the programs on a virtual display, and removes it: nothing must remain. The fresh Debian
# needs root or sudo.
set -euo pipefail

fail() {
    printf 'packaging/linux/check.sh: %s\n' "$1" >&2
    exit 1
}

usage() {
    cat <<'TEXT'
Usage: packaging/linux/check.sh [--no-install]
Builds the Debian package and checks it. --no-install skips the fresh Debian, which needs root. mmdebstrap creates it in
a temporary folder from the packages of this machine's release.
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
cd "$(dirname -- "${BASH_SOURCE[0]}")/../.."
if [[ $install ]]; then
    ((EUID == 0)) || sudo -n true 2>/dev/null ||
        fail "a fresh Debian needs root, or sudo without a password (or use --no-install)"
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
# The identifier begins with the domain of the homepage, whose last part appstreamcli does not know: cid-maybe-not-rdns.
appstreamcli validate --no-net --pedantic "$work"/content/usr/share/metainfo/*.xml >"$work/appstream" 2>&1 || {
    cat "$work/appstream" >&2
    fail "the catalogue entry is invalid"
}
! grep -E '^[EWIP]: ' "$work/appstream" | grep -v ' cid-maybe-not-rdns ' || fail "appstreamcli reports problems in the catalogue entry"
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
for page in quillory quillory-cli; do
    man --warnings --encoding=UTF-8 --local-file "$work/content/usr/share/man/man1/$page.1.gz" >/dev/null 2>"$work/man"
    [[ ! -s $work/man ]] || fail "man reports problems in the manual page of $page: $(<"$work/man")"
done
lintian_options=(--pedantic --display-info --fail-on "error,warning,info,pedantic")
((EUID != 0)) || lintian_options+=(--allow-root)
lintian "${lintian_options[@]}" "$package" || fail "lintian reports problems in $package"
echo "$(basename -- "$package"): menu entry, catalogue entry, manual pages and lintian passed"
packaging/linux/check-sources.sh
[[ $install ]] || exit 0

suite=$(sed -n "s/^VERSION_CODENAME=//p" /etc/os-release)
picture=$PWD/build/packages/quillory-linux.png
as_root mmdebstrap --quiet --mode=root --variant=apt --format=null \
    --customize-hook="'$PWD/packaging/linux/try-package.sh' '$package' '$picture' \"\$1\"" \
    "${suite:-bookworm}" /dev/null || fail "the package does not work in a fresh Debian"
echo "Screenshot of the window: build/packages/quillory-linux.png"
