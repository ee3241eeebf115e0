#!/usr/bin/env bash
# Builds the Qt base libraries with ThreadSanitizer, from the source package of the Qt that Debian has installed, and
# prints their prefix. A prefix that is already in the cache is used again; a new one appears there complete or not at
# all. About ten minutes on two cores.
#
# Debian's Qt is not instrumented: the sanitizer sees neither the locks and queues inside Qt, and would report races that
# are none, nor the accesses made there on the program's behalf. To suppress what crosses Qt's queues would hide real races.
set -euo pipefail

SCRIPT_NAME=build-qt-tsan.sh
here=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=packaging/windows/common.sh
. "$here/../../packaging/windows/common.sh"
# shellcheck source=tools/qt-source.sh
. "$here/../qt-source.sh"

usage() {
    cat <<'USAGE'
Usage: tools/sanitizers/build-qt-tsan.sh
Builds Qt with ThreadSanitizer into ${QUILLORY_CACHE:-~/.cache/quillory} unless it is there, and prints its prefix.
QUILLORY_JOBS limits the compilers that run at a time (default: one for each core).
USAGE
}

# What the tests use and no more; bundled sources where Debian's package has them, as a library of the system is not
# instrumented either. -O1 keeps the stacks in the reports readable. Rename the prefix below when this changes.
flags='-O1 -g1 -fsanitize=thread -fno-omit-frame-pointer -Wno-tsan'
options=(-DCMAKE_BUILD_TYPE=None "-DCMAKE_CXX_FLAGS=$flags" "-DCMAKE_C_FLAGS=$flags"
    -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF -DBUILD_WITH_PCH=OFF -DQT_QPA_DEFAULT_PLATFORM=offscreen
    -DFEATURE_gif=ON -DINPUT_opengl=no)
for feature in sql network dbus printsupport xml vulkan opengl icu glib xcb xlib linuxfb vnc libinput evdev tslib mtdev \
    libudev gtk3 system_pcre2 system_harfbuzz system_doubleconversion separate_debug_info; do
    options+=("-DFEATURE_$feature=OFF")
done

build_qt() {
    local version folder=$work/qt6-base
    version=$(dpkg-query -W -f '${source:Version}' qt6-base-dev)
    prepare_apt "$work/apt"
    note "this takes about ten minutes on two cores, once"
    unpack_source qt6-base "$version" "$folder"
    logged "$folder/configure.log" "configuring" cmake -G Ninja -S "$folder/source" -B "$folder/build" \
        -DCMAKE_INSTALL_PREFIX="$prefix" "${options[@]}"
    logged "$folder/build.log" "building" cmake --build "$folder/build" --parallel "$jobs"
    logged "$folder/install.log" "installing" env DESTDIR="$work/stage" cmake --install "$folder/build"
    touch "$work/stage$prefix/complete"
    mv "$work/stage$prefix" "$prefix"
}

[[ ${1:-} == --help || ${1:-} == -h ]] && { usage; exit; }
(($# == 0)) || fail "takes no arguments (got: $*)"
read_jobs
"$here/../setup.sh" build tsan >&2
version=$(dpkg-query -W -f '${source:Upstream-Version}' qt6-base-dev 2>/dev/null) || fail "qt6-base-dev is not installed"
open_cache
prefix=$cache/qt-tsan/qt-$version
if [[ ! -e $prefix/complete ]]; then
    # Two builds at a time would only slow each other down; the second one finds the first one's result.
    exec 9>"$cache/qt-tsan.lock"
    flock 9
fi
if [[ ! -e $prefix/complete ]]; then
    work=$cache/qt-tsan-build
    # A failed build leaves its logs.
    trap 'rm -rf "$work/stage" "$work"/*/source "$work"/*/build' EXIT
    rm -rf "$work" "$prefix"
    mkdir -p "$work" "$(dirname "$prefix")"
    build_qt
    rm -rf "$work"
fi
printf '%s\n' "$prefix"
