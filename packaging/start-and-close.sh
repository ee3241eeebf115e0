#!/usr/bin/env bash
# Starts the program on the display that is there, waits for its window, takes a picture of it, closes it the way a
# person does and expects the program to end well:
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

(($# >= 2)) || fail "say which picture to write and which program to start"
[[ -n ${DISPLAY:-} ]] || fail "there is no display"
for tool in xdotool import; do
    command -v "$tool" >/dev/null || fail "$tool is missing"
done
/usr/bin/python3 -c 'import Xlib' 2>/dev/null || fail "python3-xlib is missing"
picture=$1
shift

# The close button without a window manager that draws one.
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

# The title is the program's name and nothing else, on every page. xdotool itself knows no capitals, and the box
# that tells of a missing library is called like the file.
find_window() {
    local candidate
    for candidate in $(xdotool search --onlyvisible --name '^Quillory$' 2>/dev/null); do
        [[ $(xdotool getwindowname "$candidate" 2>/dev/null) == Quillory ]] && printf '%s\n' "$candidate" && return
    done
    return 1
}

window=
for ((i = 0; i < seconds_to_open * 5; ++i)); do
    kill -0 "$program" 2>/dev/null || fail "$1 ended before it showed a window"
    window=$(find_window) && break
    sleep 0.2
done
[[ -n $window ]] || fail "$1 showed no window within $seconds_to_open seconds"
sleep 2 # for the first picture to be complete
import -window "$window" "$picture" || fail "cannot take a picture of the window"

ask_to_close "$window" || fail "cannot close the window"
for ((i = 0; i < seconds_to_close * 5; ++i)); do
    kill -0 "$program" 2>/dev/null || break
    sleep 0.2
done
kill -0 "$program" 2>/dev/null && fail "$1 still runs $seconds_to_close seconds after its window was closed"
code=0
wait "$program" || code=$?
((code == 0)) || fail "$1 ended with exit code $code"
