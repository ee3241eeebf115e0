#!/usr/bin/env bash
# Builds the Qt base libraries with ThreadSanitizer, from Debian's source package of the installed version, and prints
# their prefix. Reuses a prefix in the cache; a new one appears there only when it is complete. Takes about ten
# minutes on two cores.
#
# ThreadSanitizer does not see the locks, queues and memory accesses of Debian's Qt, which is not instrumented. It would
# report false data races and miss real ones. Suppressing everything that involves Qt would hide real data races.
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
Builds Qt with ThreadSanitizer in ${QUILLORY_CACHE:-~/.cache/quillory} unless it is there, and prints its prefix.
QUILLORY_JOBS sets the number of parallel compilers (default: one per core).
USAGE
}

# Only the features that the tests use. Bundled libraries where the source package has them, because those of the system
# are not instrumented. -O1 keeps the reported stacks readable. Rename the prefix below when this changes.
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
    note "this takes about ten minutes on two cores, only once"
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
    # A second build waits for the first one and uses its result.
    exec 9>"$cache/qt-tsan.lock"
    flock 9
fi
if [[ ! -e $prefix/complete ]]; then
    work=$cache/qt-tsan-build
    # Keeps the logs of a failed build.
    trap 'rm -rf "$work/stage" "$work"/*/source "$work"/*/build' EXIT
    rm -rf "$work" "$prefix"
    mkdir -p "$work" "$(dirname "$prefix")"
    build_qt
    rm -rf "$work"
fi
printf '%s\n' "$prefix"
