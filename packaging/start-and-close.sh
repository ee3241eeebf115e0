#!/usr/bin/env bash
# Starts a program on the current display, waits for its window, takes a screenshot, closes the window and checks the
# exit code:
#
#     packaging/start-and-close.sh PICTURE.png COMMAND [ARGUMENT...]
set -euo pipefail

output=
fail() {
    [[ -z $output ]] || tail -n 20 "$output" >&2
    printf 'start-and-close.sh: %s\n' "$1" >&2
    exit 1
}

readonly seconds_to_open=60 seconds_to_close=20

(($# >= 2)) || fail "expected a picture file and a command"
[[ -n ${DISPLAY:-} ]] || fail "no display (DISPLAY is not set)"
for tool in xdotool import; do
    command -v "$tool" >/dev/null || fail "$tool is missing"
done
/usr/bin/python3 -c 'import Xlib' 2>/dev/null || fail "python3-xlib is missing"
picture=$1
shift

# Sends the event of the close button. There may be no window manager.
ask_to_close() {
    /usr/bin/python3 - "$1" <<'PYTHON'
import sys
from Xlib import X, display
from Xlib.protocol import event

server = display.Display()
window = server.create_resource_object("window", int(sys.argv[1]))
data = (32, [server.intern_atom("WM_DELETE_WINDOW"), X.CurrentTime, 0, 0, 0])
window.send_event(event.ClientMessage(window=window, client_type=server.intern_atom("WM_PROTOCOLS"), data=data))
server.sync()
PYTHON
}

output=$(mktemp)
"$@" </dev/null >"$output" 2>&1 &
program=$!
# shellcheck disable=SC2317 # called by the trap
clean_up() {
    kill "$program" 2>/dev/null || true
    rm -f "$output"
}
trap clean_up EXIT

# The title is always the name of the program. The exact comparison is needed because xdotool ignores case, and an error
# message about a missing library has the name of the file as its title.
find_window() {
    local candidate
    for candidate in $(xdotool search --onlyvisible --name '^Quillory$' 2>/dev/null); do
        [[ $(xdotool getwindowname "$candidate" 2>/dev/null) == Quillory ]] && printf '%s\n' "$candidate" && return
    done
    return 1
}

window=
for ((i = 0; i < seconds_to_open * 5; ++i)); do
    kill -0 "$program" 2>/dev/null || fail "$1 exited before it showed a window"
    window=$(find_window) && break
    sleep 0.2
done
[[ -n $window ]] || fail "$1 showed no window within $seconds_to_open seconds"
sleep 2 # the window may not be painted yet
import -window "$window" "$picture" || fail "cannot take a screenshot of the window"

ask_to_close "$window" || fail "cannot close the window"
for ((i = 0; i < seconds_to_close * 5; ++i)); do
    kill -0 "$program" 2>/dev/null || break
    sleep 0.2
done
kill -0 "$program" 2>/dev/null && fail "$1 still runs $seconds_to_close seconds after its window was closed"
code=0
wait "$program" || code=$?
((code == 0)) || fail "$1 exited with code $code"
