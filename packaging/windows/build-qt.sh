#!/usr/bin/env bash
# Cross-builds the Qt that the Windows program ships with, from the source package of the Qt that Debian has
# installed: the machine's moc, uic and rcc must be of the same version as the libraries.
# Prints the prefix. A prefix that is already in the cache is used again; a new one appears there complete or
# not at all. About ten minutes on two cores.
set -euo pipefail

SCRIPT_NAME=build-qt.sh
here=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=packaging/windows/common.sh
. "$here/common.sh"

usage() {
    cat <<'USAGE'
Usage: packaging/windows/build-qt.sh
Builds Qt for Windows x64 into ${QUILLORY_CACHE:-~/.cache/quillory} unless it is there, and prints its prefix.
QUILLORY_JOBS limits the compilers that run at a time (default: one for each core).
USAGE
}

# Part of the prefix's name: raise it when the options below change.
recipe=1

# Everything the program does not use is off, and what it uses comes from Qt's own bundled sources: the
# libraries then depend on nothing but Windows.
qt_options=(
    -DCMAKE_BUILD_TYPE=Release
    -DBUILD_SHARED_LIBS=ON
    -DQT_HOST_PATH=/usr
    -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake
    -DQT_QMAKE_TARGET_MKSPEC=win32-g++
    -DQT_BUILD_EXAMPLES=OFF
    -DQT_BUILD_TESTS=OFF
    -DFEATURE_pkg_config=OFF
    -DINPUT_opengl=no
    # The platform plugin does not link with either both or none of these.
    -DFEATURE_direct2d=ON
    -DFEATURE_direct2d1_1=OFF
    # Debian's source package lacks the sources of this one.
    -DFEATURE_tabletevent=OFF
)
for feature in dbus network sql printsupport xml vulkan icu glib zstd fontconfig qmake androiddeployqt \
    system_zlib system_png system_jpeg system_freetype system_harfbuzz system_pcre2 system_doubleconversion \
    system_libb2; do
    qt_options+=("-DFEATURE_$feature=OFF")
done

# download_source PACKAGE VERSION FOLDER: fetches a Debian source package with package lists of its own, so that
# the machine needs no deb-src entry and no root rights.
download_source() {
    local package=$1 version=$2 folder=$3 apt=$3/apt
    mkdir -p "$apt/lists/partial" "$apt/archives/partial" "$apt/sources.list.d"
    apt-get indextargets --format "deb-src \$(REPO_URI) \$(RELEASE) \$(COMPONENT)" 'Created-By: Packages' |
        grep '/debian' | sort -u >"$apt/sources.list" || fail "apt-get knows no Debian mirror"
    local options=(-o "Dir::Etc::sourcelist=$apt/sources.list" -o "Dir::Etc::sourceparts=$apt/sources.list.d"
        -o "Dir::State::lists=$apt/lists" -o "Dir::Cache=$apt" -o "Dir::Cache::archives=$apt/archives")
    logged "$folder/apt-update.log" "reading Debian's source lists" apt-get "${options[@]}" update
    (cd "$folder" && logged "$folder/apt-source.log" "downloading $package $version" \
        apt-get "${options[@]}" source --download-only "$package=$version")
}

[[ ${1:-} == --help || ${1:-} == -h ]] && { usage; exit; }
(($# == 0)) || fail "takes no arguments (got: $*)"
jobs=${QUILLORY_JOBS:-$(nproc)}
[[ $jobs =~ ^[1-9][0-9]*$ ]] || fail "QUILLORY_JOBS must be a positive number (got: $jobs)"
[[ $(uname -sm) == "Linux x86_64" ]] || fail "runs on Linux x86_64 only (this is $(uname -sm))"

need_packages g++-mingw-w64-x86-64-posix mingw-w64-tools ninja-build cmake qt6-base-dev qt6-base-dev-tools dpkg-dev

version=$(dpkg-query -W -f '${source:Version}' qt6-base-dev)
cache=${QUILLORY_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/quillory}
mkdir -p "$cache" 2>/dev/null && [[ -w $cache ]] || fail "cannot write the cache folder $cache"
cache=$(CDPATH="" cd -- "$cache" && pwd)
prefix=$cache/qt-$version-windows-x64-r$recipe
if [[ -e $prefix/complete ]]; then
    printf '%s\n' "$prefix"
    exit
fi

# Two builds at a time would only slow each other down; the second one finds the first one's result.
exec 9>"$cache/qt-windows.lock"
flock 9
if [[ ! -e $prefix/complete ]]; then
    work=$cache/qt-windows-build
    rm -rf "$work" "$prefix"
    mkdir -p "$work"
    download_source qt6-base "$version" "$work"
    # The signature was checked against the lists; --no-check only leaves out the uploader's own.
    logged "$work/unpack.log" "unpacking Qt" \
        dpkg-source --no-check -x "$work"/qt6-base_*.dsc "$work/source"
    logged "$work/configure.log" "configuring Qt" \
        cmake -G Ninja -S "$work/source" -B "$work/build" "${qt_options[@]}" \
        -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" -DCMAKE_INSTALL_PREFIX="$prefix"
    logged "$work/build.log" "building Qt $version, about ten minutes on two cores" \
        cmake --build "$work/build" --parallel "$jobs"
    logged "$work/install.log" "installing Qt" \
        env DESTDIR="$work/stage" cmake --install "$work/build" --strip
    cp -r "$work/source/LICENSES" "$work/stage$prefix/LICENSES"
    touch "$work/stage$prefix/complete"
    mv "$work/stage$prefix" "$prefix"
    rm -rf "$work"
fi
printf '%s\n' "$prefix"
