#!/usr/bin/env bash
# Installs the missing packages of the given purposes (see packages.txt):
#
#     tools/setup.sh build run
#
# Needs no network if no package is missing. With QUILLORY_NO_SETUP=1, does nothing: for machines on which Qt and the
# tools do not come from packages.
set -euo pipefail

project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
readonly project
readonly list=$project/tools/packages.txt
readonly log=$project/build/setup.log

fail() {
    echo "setup: $*" >&2
    exit 1
}

# Prints the packages of the given purposes, each once.
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
        sudo -n env "$@" # fails instead of asking for a password
    fi
}

apt() {
    as_root DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300 "$@" >>"$log" 2>&1
}

install_packages() {
    apt install -y --no-install-recommends "$@"
}

if [ $# -eq 0 ]; then
    fail "expected purposes: $(awk '!/^#/ && NF { print $1 }' "$list" | uniq | paste -sd ' ')"
fi
for purpose in "$@"; do
    [ -n "$(packages_for "$purpose")" ] || fail "tools/packages.txt has no purpose '$purpose'"
done
if [ -n "${QUILLORY_NO_SETUP:-}" ]; then
    exit 0
fi

mapfile -t wanted < <(packages_for "$@")
command -v dpkg-query >/dev/null ||
    fail "not a Debian or Ubuntu system: install equivalents of '${wanted[*]}' and set QUILLORY_NO_SETUP=1"
missing=()
for package in "${wanted[@]}"; do
    is_installed "$package" || missing+=("$package")
done
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

command -v apt-get >/dev/null || fail "apt-get is not available to install these packages: ${missing[*]}"
if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
    fail "root or sudo is required to install these packages: ${missing[*]}"
fi
mkdir -p "$(dirname "$log")"
echo "Installing missing packages: ${missing[*]}"
: >"$log"
# Updates the package lists only if the installation fails: they are empty on a new machine and may be outdated on an
# old one.
install_packages "${missing[@]}" || { apt update && install_packages "${missing[@]}"; } ||
    fail "cannot install ${missing[*]}; see the end of $log"
