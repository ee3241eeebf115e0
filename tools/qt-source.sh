# Builds Qt modules from Debian's source packages; shared by the scripts that need a Qt of their own and meant to be
# sourced after a fail() and logged() like those of packaging/windows/common.sh.
# shellcheck shell=bash

# Sets jobs, the compilers to run at a time.
read_jobs() {
    jobs=${QUILLORY_JOBS:-$(nproc)}
    [[ $jobs =~ ^[1-9][0-9]*$ ]] || fail "QUILLORY_JOBS must be a positive number (got: $jobs)"
}

# Sets cache, the folder for what is built once and used by every build folder.
open_cache() {
    cache=${QUILLORY_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/quillory}
    mkdir -p "$cache" 2>/dev/null || fail "cannot make the cache folder $cache"
    [[ -w $cache ]] || fail "cannot write into the cache folder $cache"
    cache=$(CDPATH="" cd -- "$cache" && pwd)
}

# prepare_apt FOLDER: package lists of its own, so that the machine needs no deb-src entry and no root rights.
prepare_apt() {
    local apt=$1
    mkdir -p "$apt/lists/partial" "$apt/archives/partial" "$apt/sources.list.d"
    apt-get indextargets --format "deb-src \$(REPO_URI) \$(RELEASE) \$(COMPONENT)" 'Created-By: Packages' |
        grep '/debian' | sort -u >"$apt/sources.list" || fail "apt-get knows no Debian mirror"
    apt_options=(-o "Dir::Etc::sourcelist=$apt/sources.list" -o "Dir::Etc::sourceparts=$apt/sources.list.d"
        -o "Dir::State::lists=$apt/lists" -o "Dir::Cache=$apt" -o "Dir::Cache::archives=$apt/archives"
        -o APT::Sandbox::User=root)
    logged "$apt/update.log" "reading Debian's source lists" apt-get "${apt_options[@]}" update
}

# unpack_source PACKAGE VERSION FOLDER: Debian's source package, unpacked into FOLDER/source.
unpack_source() {
    local package=$1 version=$2 folder=$3
    mkdir "$folder"
    (cd "$folder" && logged "$folder/download.log" "downloading $package $version" \
        apt-get "${apt_options[@]}" source --download-only "$package=$version")
    # What apt-get downloads it has checked already.
    logged "$folder/unpack.log" "unpacking $package" \
        dpkg-source --no-check -x "$folder"/*.dsc "$folder/source"
}
