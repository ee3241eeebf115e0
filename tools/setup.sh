#!/usr/bin/env bash
# Installs the packages that the named purposes need and that are missing, see packages.txt:
#
#     tools/setup.sh build run
#
# Nothing is downloaded when nothing is missing. QUILLORY_NO_SETUP=1 skips the whole step, for machines where
# Qt and the tools come from somewhere else.
set -euo pipefail

project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
readonly project
readonly list=$project/tools/packages.txt
readonly log=$project/build/setup.log

fail() {
    echo "setup: $*" >&2
    exit 1
}

# The packages of all purposes named, each once.
packages_for() {
    awk -v purposes=" $* " '!/^#/ && NF && index(purposes, " " $1 " ") && !seen[$2]++ { print $2 }' "$list"
}

is_installed() {
    dpkg-query --show --showformat='${db:Status-Status}\n' "$1" 2>/dev/null | grep -qx installed
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        env "$@"
    elif [ -t 0 ]; then
        sudo env "$@"
    else
        sudo -n env "$@" # nobody there to type a password
    fi
}

apt() {
    as_root DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300 "$@" >>"$log" 2>&1
}

install_packages() {
    apt install -y --no-install-recommends "$@"
}

if [ $# -eq 0 ]; then
    fail "say what for: $(awk '!/^#/ && NF { print $1 }' "$list" | uniq | paste -sd ' ')"
fi
for purpose in "$@"; do
    [ -n "$(packages_for "$purpose")" ] || fail "no packages are listed for '$purpose' in tools/packages.txt"
done
if [ -n "${QUILLORY_NO_SETUP:-}" ]; then
    exit 0
fi

mapfile -t wanted < <(packages_for "$@")
command -v dpkg-query >/dev/null ||
    fail "this is no Debian or Ubuntu: install the like of '${wanted[*]}' and set QUILLORY_NO_SETUP=1"
missing=()
for package in "${wanted[@]}"; do
    is_installed "$package" || missing+=("$package")
done
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

command -v apt-get >/dev/null || fail "missing packages and no apt-get to install them: ${missing[*]}"
if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
    fail "missing packages and neither root nor sudo to install them: ${missing[*]}"
fi
mkdir -p "$(dirname "$log")"
echo "Installing what is missing, once: ${missing[*]}"
: >"$log"
# The lists of a fresh machine are empty and those of an old one name versions that are gone: only then
# they are fetched.
install_packages "${missing[@]}" || { apt update && install_packages "${missing[@]}"; } ||
    fail "could not install ${missing[*]}; the reason stands at the end of $log"
