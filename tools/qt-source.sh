# Functions that build Qt modules from Debian's source packages. Source this file after packaging/windows/common.sh,
# which provides fail() and logged().
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
prepare_apt() {
    local apt=$1
    mkdir -p "$apt/lists/partial" "$apt/archives/partial" "$apt/sources.list.d"
    apt-get indextargets --format "deb-src \$(REPO_URI) \$(RELEASE) \$(COMPONENT)" 'Created-By: Packages' |
        grep '/debian' | sort -u >"$apt/sources.list" || fail "apt-get is configured without a Debian mirror"
    apt_options=(-o "Dir::Etc::sourcelist=$apt/sources.list" -o "Dir::Etc::sourceparts=$apt/sources.list.d"
        -o "Dir::State::lists=$apt/lists" -o "Dir::Cache=$apt" -o "Dir::Cache::archives=$apt/archives"
        -o APT::Sandbox::User=root)
    logged "$apt/update.log" "reading Debian's source lists" apt-get "${apt_options[@]}" update
}

# unpack_source PACKAGE VERSION FOLDER: downloads a source package and unpacks it into FOLDER/source.
unpack_source() {
    local package=$1 version=$2 folder=$3
    mkdir "$folder"
    (cd "$folder" && logged "$folder/download.log" "downloading $package $version" \
        apt-get "${apt_options[@]}" source --download-only "$package=$version")
    # --no-check: apt-get has already verified the download.
    logged "$folder/unpack.log" "unpacking $package" \
        dpkg-source --no-check -x "$folder"/*.dsc "$folder/source"
}
