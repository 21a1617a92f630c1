#!/usr/bin/env bash
# Installs what is missing, builds the module and runs every test under Xvfb,
# once as a normal build and once with AddressSanitizer and
# UndefinedBehaviorSanitizer.
#   bash tools/test.sh            both configurations
#   bash tools/test.sh --quick    the normal configuration only
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/common.sh

quick=0
[[ "${1:-}" == "--quick" ]] && quick=1

install_missing_packages
run_tests() { # build-dir cmake-flags...
    local dir=$1; shift
    configure_and_build "$dir" "$@"
    echo "== tests in $dir"
    (cd "$dir" && with_display ctest --output-on-failure -j2 --timeout 600)
}

run_tests build
echo "== benchmark, short mode (no timing is asserted)"
with_display build/bin/vexal-bench-charts --short
if [[ $quick == 0 ]]; then
    # Leaks of Qt, Mesa and the X libraries are not ours; the module's own
    # lifetimes are checked by the tests themselves.
    export ASAN_OPTIONS=detect_leaks=0:abort_on_error=1
    export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
    run_tests build-asan -DVEXAL_SANITIZE=ON -DVEXAL_BUILD_BENCH=OFF
fi
