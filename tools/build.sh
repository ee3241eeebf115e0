#!/usr/bin/env bash
# Builds a preset: tools/build.sh PRESET [TARGET...]. Writes all output to build/<preset>.log; prints its end on
# failure.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
[ $# -gt 0 ] || {
    echo "build.sh: expected the name of a preset" >&2
    exit 2
}
readonly preset=$1
shift
grep -qF "\"configurePreset\": \"$preset\"" CMakePresets.json || {
    echo "build.sh: CMakePresets.json has no preset '$preset'" >&2
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
    echo "The build failed; see $log" >&2
    exit 1
fi
