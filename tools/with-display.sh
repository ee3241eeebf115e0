#!/usr/bin/env bash
# Runs a command on a new virtual X server: tools/with-display.sh COMMAND [ARGUMENT...]. Stops the server when the
# command ends and returns its exit code. QUILLORY_SCREEN sets the size of the screen (default: 1280x960).
set -euo pipefail

if [ $# -eq 0 ]; then
    echo "with-display: expected a command" >&2
    exit 2
fi
type -P -- "$1" >/dev/null || {
    echo "with-display: command not found: $1" >&2
    exit 2
}
command -v Xvfb >/dev/null || {
    echo "with-display: Xvfb is missing; install it with 'tools/setup.sh display'" >&2
    exit 1
}

work=$(mktemp -d "${TMPDIR:-/tmp}/quillory-XXXXXX")
readonly work
server=
manager=
child=
# shellcheck disable=SC2317 # called by the trap
clean_up() {
    trap - EXIT
    [ -z "$child" ] || { kill "$child" 2>/dev/null && wait "$child" 2>/dev/null; } || true
    [ -z "$manager" ] || kill "$manager" 2>/dev/null || true
    [ -z "$server" ] || { kill "$server" 2>/dev/null && wait "$server" 2>/dev/null; } || true
    rm -rf "$work"
}
trap clean_up EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

# The server chooses a free display number and writes it to the pipe.
mkfifo "$work/number"
Xvfb -displayfd 3 -screen 0 "${QUILLORY_SCREEN:-1280x960}x24" -dpi 96 -wr -nolisten tcp -noreset \
    3>"$work/number" >"$work/server.log" 2>&1 &
server=$!
exec 4<"$work/number"
number=
if ! read -r -t 30 number <&4; then
    tail -n 5 "$work/server.log" >&2
    echo "with-display: Xvfb did not start" >&2
    exit 1
fi
exec 4<&-

# Deleted on exit, even if the command is interrupted.
export TMPDIR=$work
export DISPLAY=:$number
export QT_QPA_PLATFORM=xcb
unset WAYLAND_DISPLAY
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
    mkdir -m 700 "$work/runtime"
    export XDG_RUNTIME_DIR=$work/runtime
fi
# With any other encoding, Qt prints a warning and uses UTF-8.
if [ "$(locale charmap 2>/dev/null)" != UTF-8 ]; then
    export LC_ALL=C.UTF-8
fi

# Draws the frames of the windows. Optional.
if command -v openbox >/dev/null; then
    XDG_CACHE_HOME=$work openbox --startup "touch '$work/managed'" >"$work/manager.log" 2>&1 &
    manager=$!
    for ((i = 0; i < 100; i++)); do
        [ ! -e "$work/managed" ] || break
        sleep 0.1
    done
fi

# In the background: bash does not run traps while it waits for a foreground command.
"$@" <&0 &
child=$!
code=0
wait "$child" || code=$?
child=
exit "$code"
