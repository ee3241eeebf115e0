#!/usr/bin/env bash
# Builds one preset quietly: tools/build.sh release [target...]. The compiler's words go to build/<preset>.log and are
# shown when it fails.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
[ $# -gt 0 ] || {
    echo "build.sh: say which preset to build" >&2
    exit 2
}
readonly preset=$1
shift
grep -qF "\"configurePreset\": \"$preset\"" CMakePresets.json || {
    echo "build.sh: there is no preset '$preset' in CMakePresets.json" >&2
    exit 2
}
readonly log=build/$preset.log
targets=()
if [ $# -gt 0 ]; then
    targets=(--target "$@")
fi

mkdir -p build
echo "Building ($preset)"
if ! { cmake --preset "$preset" && cmake --build --preset "$preset" "${targets[@]}"; } >"$log" 2>&1; then
    tail -n 60 "$log" >&2
    echo "The build failed, all of its output is in $log" >&2
    exit 1
fi
