#!/usr/bin/env bash
# Installs the Debian package in a fresh Debian, runs both programs and removes the package. No file may remain:
#
#     mmdebstrap --customize-hook='packaging/linux/try-package.sh PACKAGE.deb PICTURE.png "$1"' SUITE /dev/null
#
# PICTURE is the output file for a screenshot. mmdebstrap passes the root folder of the fresh Debian and removes it.
set -euo pipefail

fail() {
    printf 'try-package.sh: %s\n' "$1" >&2
    exit 1
}

(($# == 3)) || fail "expected a package, an output file for the screenshot and the root folder of a fresh Debian"
readonly package=$1 picture=$2 root=$3 here=${BASH_SOURCE[0]%/*}
[[ -f $package && -x $root/usr/bin/dpkg ]] || fail "no package $package, or no Debian in $root"

in_root() {
    chroot "$root" env LC_ALL=C.UTF-8 "$@"
}
quietly() {
    "$@" >"$root/tmp/log" 2>&1 </dev/null || {
        tail -n 20 "$root/tmp/log" >&2
        fail "$* failed"
    }
}
# Lists all files except the records of dpkg and apt, which change with every installation.
files() {
    (cd "$root" && find . -xdev \( -path ./proc -o -path ./sys -o -path ./dev -o -path ./run -o -path ./tmp -o \
        -path ./var/lib/dpkg -o -path ./var/log -o -path ./var/cache \) -prune -o -print | LC_ALL=C sort)
}

# Installs the dependencies first, so that the package adds only its own files.
mkdir -p "$root/tmp/user" "$root/tmp/runtime"
cp "$package" "$root/tmp/quillory.deb"
quietly in_root apt-get satisfy -y -qq --no-install-recommends "$(dpkg-deb -f "$package" Depends)"
files >"$root/tmp/before"
# Unlike apt, dpkg installs no other packages.
quietly in_root dpkg --install /tmp/quillory.deb

chown 1000:1000 "$root/tmp/user" "$root/tmp/runtime"
chmod 700 "$root/tmp/runtime"
as_user=(chroot --userspec=1000:1000 "$root" env -u XDG_CONFIG_HOME -u XDG_CACHE_HOME -u XDG_DATA_HOME LC_ALL=C.UTF-8
    PATH=/usr/bin:/bin HOME=/tmp/user TMPDIR=/tmp XDG_RUNTIME_DIR=/tmp/runtime)
"${as_user[@]}" sh -c 'mkdir ~/files && echo equal >~/files/1 && cp ~/files/1 ~/files/2'
code=0
"${as_user[@]}" quillory-cli find --fail-on-duplicates /tmp/user/files >"$root/tmp/log" 2>&1 || code=$?
((code == 3)) || fail "quillory-cli finds no duplicates (exit code $code): $(<"$root/tmp/log")"
"${as_user[@]}" bash -c '. /usr/share/bash-completion/completions/quillory-cli && complete -p quillory-cli' \
    >/dev/null || fail "bash has no completions for quillory-cli"
"$here/../../tools/with-display.sh" "$here/../start-and-close.sh" "$picture" "${as_user[@]}" quillory /tmp/user/files ||
    fail "the installed program does not start and exit correctly"

rm -rf "$root/tmp/user/files"
[[ -z $(find "$root/tmp/user" -type f) ]] || fail "files left in the home folder: $(find "$root/tmp/user" -type f)"
quietly in_root dpkg --purge quillory
files >"$root/tmp/after"
diff "$root/tmp/before" "$root/tmp/after" >"$root/tmp/log" || fail "files left or removed: $(<"$root/tmp/log")"
echo "$(basename -- "$package"): installed in a fresh Debian, started, closed, removed; no file remained"
