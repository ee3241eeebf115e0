#!/usr/bin/env bash
# Compares the engine with other programs that find duplicates, in interleaved rounds on the same files, measures the
# window, and writes the tables of docs/benchmarks.md. Installs the "bench" packages of tools/packages.txt. The test
# files (14 GB) stay in the user's cache folder.
set -euo pipefail

parts=(usr small large pairs photos growth window)
usage="[--rounds N] [--cold-rounds N] [--only PART] [--corpus FOLDER...] [--output FILE], parts: ${parts[*]}"

fail() {
    echo "compare.sh: $*" >&2
    exit 2
}

cd "$(dirname "${BASH_SOURCE[0]}")/.."
project=$PWD
readonly project usage
readonly programs=$project/build/bench/bench
readonly cache=${XDG_CACHE_HOME:-$HOME/.cache}/quillory-bench
readonly document=$project/docs/benchmarks.md

rounds=5
cold_rounds=3
folders=()
output=
partial=

whole_number() {
    [[ ${2:-} =~ ^[0-9]+$ ]] || fail "$1 takes a number"
}

parse() {
    while [ $# -gt 0 ]; do
        case $1 in
        --rounds)
            whole_number "$@"
            [ "$2" -gt 0 ] || fail "--rounds takes a number from 1"
            rounds=$2
            shift 2
            ;;
        --cold-rounds)
            whole_number "$@"
            cold_rounds=$2
            shift 2
            ;;
        --only)
            [[ -n ${2:-} && " ${parts[*]} " == *" $2 "* ]] || fail "--only takes one of: ${parts[*]}"
            parts=("$2")
            partial=yes
            shift 2
            ;;
        --corpus)
            shift
            while [ $# -gt 0 ] && [ "${1#--}" = "$1" ]; do
                if [ ! -d "$1" ] || [ ! -r "$1" ]; then
                    fail "$1 is not a readable folder"
                fi
                folders+=("$(realpath "$1")")
                shift
            done
            [ ${#folders[@]} -gt 0 ] || fail "--corpus takes folders"
            parts=()
            partial=yes
            ;;
        --output)
            [ -n "${2:-}" ] || fail "--output takes a file"
            if [ -d "$2" ] || [ ! -w "$(dirname "$2")" ]; then
                fail "$2 cannot be written"
            fi
            output=$(realpath "$2")
            shift 2
            ;;
        *) fail "unknown argument: $1 (arguments: $usage)" ;;
        esac
    done
    # Some of the tables must not replace all of them by default.
    if [ -z "$output" ] && [ -z "$partial" ]; then
        output=$document
    fi
    if [ -n "$output" ] && [ -e "$output" ]; then
        python3 bench/compare_table.py --check "$output" || exit 2
    fi
}

# make_corpus NAME: creates a corpus unless it exists. Discards an incomplete one.
make_corpus() {
    local folder=$cache/$1-1
    if [ ! -d "$folder" ]; then
        echo "Creating test files: $folder" >&2
        rm -rf "$folder.part"
        mkdir -p "$folder.part"
        python3 bench/make_corpus.py "$1" "$folder.part"
        mv "$folder.part" "$folder"
        sync
    fi
}

# run CORPUS STATE ROUND TOOL FOLDER...: runs one program on the folders of a corpus and adds its measurements to
# runs.tsv. STATE is warm or cold.
run() {
    local corpus=$1 state=$2 round=$3 tool=$4
    shift 4
    local output_file=$work/$corpus.$tool.txt
    local command
    case $tool in
    quillory) command=("$programs/scan_folders" "$@") ;;
    quillory-find)
        command=("$project/build/bench/cli/quillory-cli" find --min-size 0 --format paths --progress never "$@")
        ;;
    lower-bound) command=("$programs/lower_bound" "$@") ;;
    read-all) command=("$programs/read_all" "$@") ;;
    # As similar as the options allow: no hidden files; empty files and hard links count as copies.
    jdupes-TT) command=(jdupes -r -q -m -A -H -z -T -T "$@") ;;
    jdupes) command=(jdupes -r -q -m -A -H -z "$@") ;;
    fdupes) command=(fdupes -r -q -m -A -H "$@") ;;
    rdfind) command=(rdfind -dryrun true -makeresultsfile false -ignoreempty false -removeidentinode false "$@") ;;
    rmlint) command=(rmlint -T duplicates -o summary:stdout "$@") ;;
    find) command=(find "$@" -mindepth 1 -name '.*' -prune -o -type f -print) ;;
    esac
    if [ "$state" = cold ]; then
        sync
        echo 3 >/proc/sys/vm/drop_caches
    fi
    local figures
    figures=$(python3 "$project/bench/measure_run.py" "$output_file" "${command[@]}")
    # Round 0 is the warm-up.
    if [ "$round" -gt 0 ]; then
        printf '%s\t%s\t%s\t%s\n' "$corpus" "$state" "$tool" "$figures" >>"$work/runs.tsv"
    fi
}

readonly tools=(quillory quillory-find lower-bound jdupes-TT rdfind jdupes fdupes rmlint read-all find)

# compare CORPUS FOLDER...: interleaves the programs, so that other load on the machine affects all of them.
compare() {
    local corpus=$1 round tool
    shift
    echo "Comparing on $corpus" >&2
    for ((round = 0; round <= rounds; round++)); do
        for tool in "${tools[@]}"; do
            run "$corpus" warm "$round" "$tool" "$@"
        done
    done
    for ((round = 1; round <= cold_rounds; round++)); do
        for tool in "${tools[@]}"; do
            run "$corpus" cold "$round" "$tool" "$@"
        done
    done
}

# Measures 1, 2, 4 and 8 parts of the small files.
measure_growth() {
    local parts_used round tool list
    echo "Measuring growth" >&2
    for ((round = 0; round <= rounds; round++)); do
        for parts_used in 1 2 4 8; do
            mapfile -t list < <(small_parts "$parts_used")
            for tool in quillory quillory-find lower-bound; do
                run "growth-$parts_used" warm "$round" "$tool" "${list[@]}"
            done
        done
    done
}

small_parts() {
    local part
    for ((part = 0; part < $1; part++)); do
        echo "$cache/small-1/part-$part"
    done
}

measure_window() {
    echo "Measuring the window" >&2
    QT_QPA_PLATFORM=offscreen "$programs/gui_heartbeat" /usr >"$work/window.txt" 2>"$work/window.errors" ||
        { cat "$work/window.errors" >&2 && exit 1; }
}

measure() {
    local part list
    for part in "${parts[@]}"; do
        case $part in
        usr) compare usr /usr ;;
        small)
            make_corpus small
            mapfile -t list < <(small_parts 4)
            compare small "${list[@]}"
            ;;
        growth)
            make_corpus small
            measure_growth
            ;;
        window) measure_window ;;
        *)
            make_corpus "$part"
            compare "$part" "$cache/$part-1"
            ;;
        esac
    done
    if [ ${#folders[@]} -gt 0 ]; then
        compare given "${folders[@]}"
    fi
}

parse "$@"
if [ "$cold_rounds" -gt 0 ] && ! { [ -w /proc/sys/vm/drop_caches ] && [ "$(id -u)" -eq 0 ]; }; then
    echo "Skipping the cold rounds: only root can empty the cache" >&2
    cold_rounds=0
fi
tools/setup.sh build run bench
tools/build.sh bench scan_folders quillory-cli lower_bound read_all gui_heartbeat >&2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
measure
if [ -n "$output" ]; then
    python3 bench/compare_table.py --into "$output" "$work"
    echo "Written: $output" >&2
else
    python3 bench/compare_table.py --print "$work"
fi
