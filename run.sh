#!/usr/bin/env bash
# Installs missing packages, builds the program and starts it. Without a display, operates the window on a virtual one
# and saves screenshots. See --help.
set -euo pipefail

usage() {
    cat <<'TEXT'
./run.sh [--tour] [FOLDER...]

Starts the program with the FOLDERs on its start page, or with all volumes if no FOLDER is given.

Without a display, or with --tour, a program operates the window on a virtual display and saves screenshots of
all pages in build/tour/. It scans the FOLDERs and deletes nothing. If no FOLDER is given, it scans a generated
sample and deletes its copies, also on a dark desktop and on a small screen (in subfolders of build/tour/).
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
    tools/build.sh release quillory quillory-cli
    exec build/release/quillory "${folders[@]}"
fi

tools/setup.sh build run display
tools/build.sh release quillory quillory-cli quillory-tour
[ -n "$tour" ] || echo "No display found: operating the window on a virtual one"
readonly program=build/release/tools/tour/quillory-tour
if [ ${#folders[@]} -eq 0 ]; then
    tools/with-display.sh "$program" --dark --output build/tour/dark-desktop >/dev/null
    QUILLORY_SCREEN=1280x720 tools/with-display.sh "$program" --output build/tour/small-screen >/dev/null
fi
exec tools/with-display.sh "$program" --output build/tour "${folders[@]}"
