#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Vexal developers
# SPDX-License-Identifier: MIT
# Installs what is missing, builds the module and runs every test under Xvfb:
# as a normal build (with the benchmark's short mode and a one-minute soak),
# then with AddressSanitizer and UndefinedBehaviorSanitizer, then the rendering
# and live-data tests with ThreadSanitizer on the threaded render loop, then
# each fuzz target for 30 seconds.
#   bash tools/test.sh            everything
#   bash tools/test.sh --quick    the normal configuration only
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/common.sh

quick=0
[[ "${1:-}" == "--quick" ]] && quick=1

# A test that cannot even reach the X server (seen once in a while from a busy
# Xvfb) gets one more run; a test that fails for a reason of its own fails
# again and stays failed.
CTEST_FLAGS=(--output-on-failure -j2 --repeat until-pass:2)

install_missing_packages
run_tests() { # build-dir cmake-flags...
    local dir=$1; shift
    configure_and_build "$dir" "$@"
    echo "== tests in $dir"
    (cd "$dir" && with_display ctest "${CTEST_FLAGS[@]}" --timeout 600)
}

run_thread_tests() {
    echo "== building the rendering and live-data tests in build-tsan"
    cmake -S . -B build-tsan -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVEXAL_SANITIZE=thread \
        -DVEXAL_BUILD_BENCH=OFF -DVEXAL_BUILD_EXAMPLES=OFF >/dev/null
    # The tests that render or stream live data carry the CTest label "threads".
    local tests
    tests=$(cd build-tsan && ctest -N -L '^threads$' | awk '/Test +#[0-9]+:/ { print $3 }')
    cmake --build build-tsan -j"$(nproc)" --target vexalplugin $tests
    echo "== tests in build-tsan, threaded render loop"
    # Known races inside Qt and Mesa are suppressed, each with its reason.
    # Qt's own symbols are stripped, so what is left of theirs cannot be named:
    # the run fails on the tests' own failures and on every race of the
    # module's own (below).
    local reports=$PWD/build-tsan/tsan-reports
    rm -rf "$reports" && mkdir -p "$reports"
    (cd build-tsan && QSG_RENDER_LOOP=threaded \
        TSAN_OPTIONS="suppressions=$PWD/../tests/robustness/tsan.supp exitcode=0 log_path=$reports/report" \
        with_display ctest -L '^threads$' "${CTEST_FLAGS[@]}" --timeout 900)
    # A race is the module's when its own code makes one of the two accesses:
    # the first frame of an access's stack, below the sanitizer's own, lies in
    # the module's sources.
    local own
    own=$(awk '/WARNING: ThreadSanitizer/ { ++report }
               /^ +#0 / { top = 1 }
               /^ +#[0-9]+ / && top && !/libtsan|sanitizer_common/ {
                   top = 0
                   if (/\/(core|chart|plotters|filters|sources|plugin)\/[a-z0-9_]+\.(cpp|h):/ && !/\/tests\//)
                       print FILENAME ", report " report
               }' "$reports"/report.* 2>/dev/null | sort -u)
    if [[ -n $own ]]; then
        echo "ThreadSanitizer found races in the module's code:" $own
        return 1
    fi
}

run_tests build
echo "== benchmark, short mode (no timing is asserted)"
with_display build/bin/vexal-bench-charts --short
with_display build/bin/vexal-bench-charts --deep --short
with_display build/bin/vexal-bench-charts --stream --short
with_display build/bin/vexal-bench-charts --stream-window --short
bash tools/soak.sh 60 build
if [[ $quick == 0 ]]; then
    # Leaks of Qt, Mesa and the X libraries are not ours; the lifetime tests
    # turn leak detection on for themselves, with those leaks suppressed.
    export ASAN_OPTIONS=detect_leaks=0:abort_on_error=1
    export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
    run_tests build-asan -DVEXAL_SANITIZE=ON -DVEXAL_BUILD_BENCH=OFF
    unset ASAN_OPTIONS
    run_thread_tests
    bash tools/fuzz.sh 30
fi
