#!/usr/bin/env bash
# Cross-builds the Qt of the Windows program from Debian's source packages. Takes the version of the installed Qt, whose
# moc, uic and rcc must match the libraries. Prints the prefix. Reuses a prefix in the cache; a new one appears there
# only when it is complete. Takes about twelve minutes on two cores.
set -euo pipefail

SCRIPT_NAME=build-qt.sh
here=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=packaging/windows/common.sh
. "$here/common.sh"
# shellcheck source=tools/qt-source.sh
. "$here/../../tools/qt-source.sh"

usage() {
    cat <<'USAGE'
Usage: packaging/windows/build-qt.sh [--cached]
Builds Qt for Windows x64 into ${QUILLORY_CACHE:-~/.cache/quillory} unless it is there, and prints its prefix.
--cached builds nothing and fails if it is not there.
QUILLORY_JOBS sets the number of parallel compilers (default: one per core).
USAGE
}

# Part of the name of the prefix. Increase it when the options below change.
recipe=2

# Only the features that the program uses, with the static libraries of build-libraries.sh: Qt's DLLs then depend only
# on Windows and the compiler's libraries. Configuring fails if the library of a feature that is ON is missing.
base_options=(
    -DBUILD_SHARED_LIBS=ON
    -DQT_QMAKE_TARGET_MKSPEC=win32-g++
    -DFEATURE_pkg_config=OFF
    -DINPUT_opengl=no
    # The platform plugin links only if exactly one of these is on.
    -DFEATURE_direct2d=ON
    -DFEATURE_direct2d1_1=OFF
    # Debian's source package lacks the sources of this feature.
    -DFEATURE_tabletevent=OFF
)
for feature in dbus network sql printsupport xml vulkan icu glib zstd fontconfig qmake androiddeployqt \
    system_libb2; do
    base_options+=("-DFEATURE_$feature=OFF")
done
for library in zlib png jpeg freetype harfbuzz pcre2 doubleconversion; do
    base_options+=("-DFEATURE_system_$library=ON")
done
# For thumbnails of WebP pictures.
formats_options=(-DFEATURE_system_webp=ON -DFEATURE_tiff=OFF -DFEATURE_jasper=OFF -DFEATURE_mng=OFF)

# build_module PACKAGE VERSION OPTION...: builds Debian's source package and installs it into the stage.
build_module() {
    local package=$1 version=$2 folder=$work/$1
    shift 2
    unpack_source "$package" "$version" "$folder"
    logged "$folder/configure.log" "configuring $package" \
        cmake -G Ninja -S "$folder/source" -B "$folder/build" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" -DQUILLORY_WINDOWS_QT="$stage" \
        -DCMAKE_INSTALL_PREFIX="$prefix" -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF "$@"
    logged "$folder/build.log" "building $package $version" cmake --build "$folder/build" --parallel "$jobs"
    logged "$folder/install.log" "installing $package" \
        env DESTDIR="$work/stage" cmake --install "$folder/build" --strip
    mkdir -p "$stage/LICENSES"
    cp "$folder"/source/LICENSES/* "$stage/LICENSES/"
    cp "$folder/source/debian/copyright" "$stage/LICENSES/$package-copyright.txt"
    printf '%s %s\n' "$package" "$version" >>"$stage/libraries.txt"
}

[[ ${1:-} == --help || ${1:-} == -h ]] && { usage; exit; }
cached=
[[ $# -eq 1 && $1 == --cached ]] && cached=yes && shift
(($# == 0)) || fail "unknown arguments: $* (see --help)"
read_jobs
[[ $(uname -sm) == "Linux x86_64" ]] || fail "runs on Linux x86_64 only (this is $(uname -sm))"
[[ $cached ]] || "$here/../../tools/setup.sh" build windows >&2

version=$(dpkg-query -W -f '${source:Version}' qt6-base-dev 2>/dev/null) || fail "qt6-base-dev is not installed"
cache=${QUILLORY_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/quillory}
[[ ! $cached || -d $cache ]] || fail "there is no Qt for Windows in $cache"
open_cache
prefix=$cache/qt-$version-windows-x64-r$recipe
if [[ -e $prefix/complete ]]; then
    printf '%s\n' "$prefix"
    exit
fi
[[ ! $cached ]] || fail "there is no Qt for Windows in $cache"

# A second build waits for the first one and uses its result.
exec 9>"$cache/qt-windows.lock"
flock 9
if [[ ! -e $prefix/complete ]]; then
    work=$cache/qt-windows-build
    stage=$work/stage$prefix
    rm -rf "$work" "$prefix"
    mkdir -p "$work"
    note "this takes about twelve minutes on two cores, only once"
    "$here/build-libraries.sh" "$work" "$stage" "$prefix"
    prepare_apt "$work/apt"
    build_module qt6-base "$version" "${base_options[@]}"
    build_module qt6-imageformats "$(apt-get "${apt_options[@]}" --print-uris -qq --only-source source \
        qt6-imageformats | sed -n "s/.* qt6-imageformats_\(.*\)\.dsc .*/\1/p")" "${formats_options[@]}"
    touch "$stage/complete"
    mv "$stage" "$prefix"
    rm -rf "$work"
fi
printf '%s\n' "$prefix"
