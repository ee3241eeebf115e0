#!/usr/bin/env bash
# Builds and runs tests with AddressSanitizer and UndefinedBehaviorSanitizer (asan), then with ThreadSanitizer (tsan).
# See --help.
set -euo pipefail

fail() {
    echo "tools/sanitizers/run.sh: $*" >&2
    exit 2
}

usage() {
    cat <<'TEXT'
Usage: tools/sanitizers/run.sh [--all] [asan|tsan] [REGEX]

Runs the tests whose names match REGEX. Without REGEX, runs the tests of threads and memory: the engine, closing the
window, and short versions of the stress test and the model test. --all runs all tests at full length. Also runs the
probes: faulty programs that the sanitizers must report, and a correct one that they must not.

asan and tsan select one of the sanitizers. tsan needs an instrumented Qt; the first run builds it (build-qt-tsan.sh).
TEXT
}

engine='abandonedWalk|analysisProgress|bytesRead|concurrentHashing|contentEquality|contentGroups|contentGroupsOfRandomFiles'
engine+='|creationTime|digest|duplicateAnalysis|duplicateGroup|fileCategories|fileCollection|fileHash|fileSurvey'
engine+='|fingerprintQueue|folderWalk|jsonReport|largeTrees|removal|scanProgress|skipRules|specialFiles'
window='backgroundTasks|closingTheProgram|closingTheWindow|firstRows|loadQueue|resultsModel|windowStress|thumbnailQueue'
regex="^tst_($engine|$window)\$"
length=short
presets=()
while [ $# -gt 0 ]; do
    case $1 in
    -h | --help)
        usage
        exit
        ;;
    --all)
        length=full
        regex=.
        ;;
    asan | tsan) presets+=("$1") ;;
    -*) fail "unknown argument: $1 (see --help)" ;;
    *)
        [ $# -eq 1 ] || fail "unexpected arguments after the regular expression: ${*:2}"
        length=full
        regex=$1
        ;;
    esac
    shift
done
[ ${#presets[@]} -gt 0 ] || presets=(asan tsan)

cd "$(dirname "${BASH_SOURCE[0]}")/../.."
tools/setup.sh build run test
# ThreadSanitizer of GCC 12 does not support the wide address space randomisation of newer kernels.
unrandomised=()
if [ "$(sysctl -n vm.mmap_rnd_bits 2>/dev/null || echo 28)" -gt 28 ] && setarch -R true 2>/dev/null; then
    unrandomised=(setarch -R)
fi

# Shortens the two longest tests to about a minute each, unless the caller has set their length.
shorten() {
    local rounds=30 sequences=200
    if [ "$1" = tsan ]; then
        rounds=15 sequences=80
    fi
    export QUILLORY_STRESS_ROUNDS=${QUILLORY_STRESS_ROUNDS:-$rounds}
    export QUILLORY_MODEL_SEQUENCES=${QUILLORY_MODEL_SEQUENCES:-$sequences}
}

# run_preset PRESET: builds and runs only the selected tests.
run_preset() {
    local preset=$1 options=() tests targets
    if [ "$preset" = tsan ]; then
        local qt
        qt=$(tools/sanitizers/build-qt-tsan.sh)
        options=(-DCMAKE_PREFIX_PATH="$qt")
    fi
    mkdir -p build
    cmake --preset "$preset" "${options[@]}" >"build/$preset.log" 2>&1 || {
        tail -n 20 "build/$preset.log" >&2
        fail "configuring failed; see build/$preset.log"
    }
    tests=$(ctest --preset "$preset" -N -R "$regex" | sed -n 's/^ *Test *#[0-9]*: //p')
    mapfile -t targets < <(grep -v '^probe_' <<<"$tests")
    [ -n "${targets[*]}" ] || [ "$regex" != "${regex#*probe_}" ] || fail "no test name matches '$regex'"
    tools/build.sh "$preset" sanitizer_probe "${targets[@]}"
    "${unrandomised[@]}" ctest --preset "$preset" --parallel "$(nproc)" -R "$regex|^probe_"
}

for preset in "${presets[@]}"; do
    (
        [ $length = full ] || shorten "$preset"
        run_preset "$preset"
    )
done
