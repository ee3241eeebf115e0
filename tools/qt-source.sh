# Functions that build Qt modules from Debian's source packages. Source this file after packaging/windows/common.sh,
# which provides fail(), note() and logged().
# shellcheck shell=bash

# Sets jobs, the number of parallel compilers.
read_jobs() {
    jobs=${QUILLORY_JOBS:-$(nproc)}
    [[ $jobs =~ ^[1-9][0-9]*$ ]] || fail "QUILLORY_JOBS must be a positive number (got: $jobs)"
}

# Sets cache, the folder for builds that all build folders share.
open_cache() {
    cache=${QUILLORY_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/quillory}
    mkdir -p "$cache" 2>/dev/null || fail "cannot create the cache folder $cache"
    [[ -w $cache ]] || fail "cannot write into the cache folder $cache"
    cache=$(CDPATH="" cd -- "$cache" && pwd)
}

# prepare_apt FOLDER: creates separate package lists, so that the machine needs no deb-src entry and no root access.
# Debian's main archive is listed before that of its security team: mirrors of the latter drop what has moved into the
# former, and apt-get takes the first of two equal versions.
prepare_apt() {
    local apt=$1
    mkdir -p "$apt/lists/partial" "$apt/archives/partial" "$apt/sources.list.d"
    apt-get indextargets --format "deb-src \$(REPO_URI) \$(RELEASE) \$(COMPONENT)" 'Created-By: Packages' |
        grep '/debian' | LC_ALL=C sort -ru >"$apt/sources.list" || fail "apt-get is configured without a Debian mirror"
    apt_options=(-o "Dir::Etc::sourcelist=$apt/sources.list" -o "Dir::Etc::sourceparts=$apt/sources.list.d"
        -o "Dir::State::lists=$apt/lists" -o "Dir::Cache=$apt" -o "Dir::Cache::archives=$apt/archives"
        -o APT::Sandbox::User=root)
    logged "$apt/update.log" "reading Debian's source lists" apt-get "${apt_options[@]}" update
}

# newest_sources PACKAGE: prints the versions of a source package, newest first.
newest_sources() {
    apt-cache "${apt_options[@]}" showsrc --only-source "$1" | sed -n 's/^Version: //p' | sort -Vru
}

# unpack_newest_source PACKAGE FOLDER: unpacks the newest version that can be downloaded. Mirrors list a version for a
# while after a newer one has replaced its files.
unpack_newest_source() {
    local package=$1 folder=$2 version
    while IFS= read -r version; do
        rm -rf "$folder"
        (unpack_source "$package" "$version" "$folder") && return
        note "$package $version cannot be downloaded"
    done < <(newest_sources "$package")
    fail "no version of $package can be downloaded"
}

# unpack_source PACKAGE VERSION FOLDER: downloads a source package and unpacks it into FOLDER/source.
unpack_source() {
    local package=$1 version=$2 folder=$3
    mkdir "$folder"
    (cd "$folder" && logged "$folder/download.log" "downloading $package $version" \
        apt-get "${apt_options[@]}" source --only-source --download-only "$package=$version") || exit 1
    # --no-check: apt-get has already verified the download.
    logged "$folder/unpack.log" "unpacking $package" \
        dpkg-source --no-check -x "$folder"/*.dsc "$folder/source"
}
