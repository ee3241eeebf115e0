#!/usr/bin/env bash
# Installs what is missing, builds the program and starts it. Without a display it goes through the window by itself
# instead and leaves pictures of every page.
set -euo pipefail

usage() {
    cat <<'TEXT'
./run.sh [--tour] [FOLDER...]

Starts the window. Where there is no display, or with --tour, the window is driven on a virtual display
instead: it scans the FOLDERs and looks at their duplicates (nothing is deleted), or, without FOLDER, scans a
sample made for it and deletes its copies. Pictures of every page are left in build/tour/.
TEXT
}

fail() {
    echo "run.sh: $*" >&2
    exit 2
}

tour=
folders=()
for argument in "$@"; do
    case $argument in
    -h | --help)
        usage
        exit 0
        ;;
    --tour) tour=yes ;;
    -*) fail "unknown argument: $argument" ;;
    *)
        [ -d "$argument" ] || fail "no such folder: $argument"
        folders+=("$(realpath -- "$argument")")
        ;;
    esac
done
cd "$(dirname "${BASH_SOURCE[0]}")"

if [ -z "$tour" ] && [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    tools/setup.sh build run
    tools/build.sh release quillory
    [ ${#folders[@]} -eq 0 ] || echo "The window takes its folders by the Add button: ${folders[*]}"
    exec build/release/quillory
fi

tools/setup.sh build run tour
tools/build.sh release quillory quillory-tour
[ -n "$tour" ] || echo "There is no display: driving the window on a virtual one"
exec tools/with-display.sh build/release/tools/tour/quillory-tour --output build/tour "${folders[@]}"
