#!/usr/bin/env bash
# Installs what is missing, builds the program and starts it. Without a display it drives the window itself and leaves
# screenshots of every page.
set -euo pipefail

usage() {
    cat <<'TEXT'
./run.sh [--tour] [FOLDER...]

Opens the window; it lists the FOLDERs, or all volumes without FOLDER. Where there is no display, and with
--tour, a script drives the window on a virtual display instead: it scans the FOLDERs and shows their
duplicates (it deletes nothing), or, without FOLDER, scans a generated sample and deletes its copies.
Screenshots of every page are left in build/tour/; those of the sample on a dark desktop and on a small
screen are in folders of their own there.
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

tools/setup.sh build run tour
tools/build.sh release quillory quillory-cli quillory-tour
[ -n "$tour" ] || echo "There is no display: driving the window on a virtual one"
readonly program=build/release/tools/tour/quillory-tour
if [ ${#folders[@]} -eq 0 ]; then
    tools/with-display.sh "$program" --dark --output build/tour/dark-desktop >/dev/null
    QUILLORY_SCREEN=1280x720 tools/with-display.sh "$program" --output build/tour/small-screen >/dev/null
fi
exec tools/with-display.sh "$program" --output build/tour "${folders[@]}"
