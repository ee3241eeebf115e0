#!/usr/bin/env bash
# Cross-builds the libraries that Qt for Windows links. Uses Debian's source packages, which contain security fixes that
# Qt's own copies lack. The libraries are static, so that Qt's DLLs contain them.
#
#     packaging/windows/build-libraries.sh WORK STAGE PREFIX
#
# WORK is an empty folder for sources and objects. STAGE is the folder that becomes PREFIX when it
# contains Qt too. STAGE/libraries.txt lists the package and the version of each library. Every object file contains the
# same words, so that check-libraries.sh finds them in the DLLs. Takes about two minutes on two cores.
set -euo pipefail

SCRIPT_NAME=build-libraries.sh
here=$(CDPATH="" cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=packaging/windows/common.sh
. "$here/common.sh"
# shellcheck source=tools/qt-source.sh
. "$here/../../tools/qt-source.sh"

(($# == 3)) || fail "build-qt.sh starts this script"
work=$1 stage=$2 prefix=$3
read_jobs
mkdir -p "$stage/lib" "$stage/include" "$stage/LICENSES"
prepare_apt "$work/apt"

# unpack PACKAGE: unpacks the newest version on the mirror into WORK/PACKAGE/source and adds it to libraries.txt.
unpack() {
    local package=$1 folder=$work/$1 version
    unpack_newest_source "$package" "$folder"
    version=$(dpkg-parsechangelog -l "$folder/source/debian/changelog" -S Version)
    printf '%s %s\n' "$package" "$version" >>"$stage/libraries.txt"
    printf 'static const char debianSource[] __attribute__((used)) = "Debian source: %s %s";\n' \
        "$package" "$version" >"$folder/mark.h"
    cp "$folder/source/debian/copyright" "$stage/LICENSES/$package-copyright.txt"
}

# configure PACKAGE OPTION...: configures the build in WORK/PACKAGE/build with CMake.
configure() {
    local package=$1 folder=$work/$1
    shift
    logged "$folder/configure.log" "configuring $package" \
        cmake -G Ninja -S "$folder/source" -B "$folder/build" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" -DQUILLORY_WINDOWS_QT="$stage" \
        -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR:STRING=lib -DBUILD_SHARED_LIBS=OFF \
        -DCMAKE_C_FLAGS="-include $folder/mark.h" -DCMAKE_CXX_FLAGS="-include $folder/mark.h" "$@"
}

# build PACKAGE [TARGET]: builds one target, or all.
build() {
    local package=$1
    logged "$work/$package/build.log" "building $package" \
        cmake --build "$work/$package/build" --parallel "$jobs" --target "${2:-all}"
}

# add PACKAGE OPTION...: for a package that installs only its static library and headers.
add() {
    local package=$1
    unpack "$package"
    configure "$@"
    build "$package"
    install_into_stage "$package"
}

install_into_stage() {
    logged "$work/$1/install.log" "installing $1" \
        env DESTDIR="${stage%"$prefix"}" cmake --install "$work/$1/build"
}

# The build of zlib always creates the DLL too, from files that Debian's source package lacks.
add_zlib() {
    local folder=$work/zlib
    unpack zlib
    sed -i 's/^add_library(zlib SHARED .*/add_library(zlib STATIC zutil.c)/' "$folder/source/CMakeLists.txt"
    configure zlib
    build zlib zlibstatic
    cp "$folder/build/libzlibstatic.a" "$stage/lib/libz.a"
    cp "$folder/source/zlib.h" "$folder/build/zconf.h" "$stage/include/"
}

# Without support for compressed fonts, which Windows does not use, and without FreeType's copy of zlib.
add_freetype() {
    unpack freetype
    sed -i -E 's:^#define (FT_CONFIG_OPTION_USE_(ZLIB|LZW)).*:/* no \1 */:' \
        "$work/freetype/source/include/freetype/config/ftoption.h"
    configure freetype -DFT_DISABLE_ZLIB=ON -DFT_DISABLE_BZIP2=ON -DFT_DISABLE_PNG=ON -DFT_DISABLE_HARFBUZZ=ON \
        -DFT_DISABLE_BROTLI=ON
    build freetype
    install_into_stage freetype
}

# Only the 16-bit library, which Qt uses, without the just-in-time compiler.
add_pcre2() {
    add pcre2 -DBUILD_STATIC_LIBS=ON -DPCRE2_BUILD_PCRE2_8=OFF -DPCRE2_BUILD_PCRE2_16=ON -DPCRE2_SUPPORT_JIT=OFF \
        -DPCRE2_SUPPORT_UNICODE=ON -DPCRE2_BUILD_PCRE2GREP=OFF -DPCRE2_BUILD_TESTS=OFF
    # Otherwise the header declares the functions of a DLL.
    sed -i 's/defined(PCRE2_STATIC)/1/' "$stage/include/pcre2.h"
}

add_zlib
add libpng1.6 -DPNG_SHARED=OFF -DPNG_EXECUTABLES=OFF -DPNG_TESTS=OFF
add libjpeg-turbo -DENABLE_SHARED=OFF -DWITH_TURBOJPEG=OFF -DREQUIRE_SIMD=ON
add libwebp -DWEBP_BUILD_ANIM_UTILS=OFF -DWEBP_BUILD_CWEBP=OFF -DWEBP_BUILD_DWEBP=OFF -DWEBP_BUILD_GIF2WEBP=OFF \
    -DWEBP_BUILD_IMG2WEBP=OFF -DWEBP_BUILD_VWEBP=OFF -DWEBP_BUILD_WEBPINFO=OFF -DWEBP_BUILD_WEBPMUX=OFF \
    -DWEBP_BUILD_EXTRAS=OFF -DWEBP_USE_THREAD=OFF
add_freetype
add harfbuzz -DHB_BUILD_SUBSET=OFF
add_pcre2
add double-conversion
# Removes programs and manual pages.
rm -rf "${stage:?}"/{bin,cmake,man,share}
