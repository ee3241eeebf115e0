# Functions that the scripts in this folder source. They set SCRIPT_NAME, which begins every message.
# shellcheck shell=bash

fail() {
    printf '%s: %s\n' "$SCRIPT_NAME" "$1" >&2
    exit 1
}

note() {
    printf '%s: %s\n' "$SCRIPT_NAME" "$1" >&2
}

# logged FILE WHAT COMMAND...: runs a command and writes its output to FILE. If the command fails, prints the last lines
# and exits.
logged() {
    local log=$1 what=$2
    shift 2
    note "$what (log: $log)"
    "$@" >"$log" 2>&1 </dev/null || {
        tail -n 25 "$log" >&2
        fail "$what failed; see $log"
    }
}

# Installs the missing ones of the given Debian packages.
need_packages() {
    local package missing=()
    command -v dpkg-query >/dev/null || fail "this script needs Debian (no dpkg-query found)"
    for package in "$@"; do
        [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || missing+=("$package")
    done
    ((${#missing[@]})) || return 0
    local as_root=()
    if ((EUID != 0)); then
        sudo -n true 2>/dev/null || fail "missing packages; run: sudo apt-get install ${missing[*]}"
        as_root=(sudo)
    fi
    note "installing ${missing[*]}"
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null ||
        fail "cannot install ${missing[*]} (try apt-get update first)"
}
