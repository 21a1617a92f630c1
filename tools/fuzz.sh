#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Vexal developers
# SPDX-License-Identifier: MIT
# Builds the libFuzzer targets with clang, replays the inputs that once broke
# them, then fuzzes each target for SECONDS from its seed corpus.
#   bash tools/fuzz.sh [SECONDS] [TARGET...]    (30 s and every target by default)
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/common.sh

seconds=${1:-30}
targets=("${@:2}")
[[ ${#targets[@]} == 0 ]] && targets=(fuzz_filters fuzz_plotters fuzz_scsvreader fuzz_linepyramid fuzz_appends)
dir=${VEXAL_FUZZ_DIR:-build-fuzz}

install_missing_packages
echo "== building ${targets[*]} in $dir"
CXX=clang++ cmake -S . -B "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVEXAL_SANITIZE=fuzzer \
    -DVEXAL_BUILD_BENCH=OFF -DVEXAL_BUILD_EXAMPLES=OFF >/dev/null
cmake --build "$dir" -j"$(nproc)" --target "${targets[@]}"

export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
for target in "${targets[@]}"; do
    regressions=tests/fuzz/regressions/$target
    if compgen -G "$regressions/*" >/dev/null; then
        echo "== $target: replaying the inputs that once broke it"
        "$dir/bin/$target" "$regressions"/*
    fi
    corpus=$dir/corpus/$target
    mkdir -p "$corpus" "$dir/artifacts"
    cp -rn "tests/fuzz/corpus/$target/." "$corpus/" 2>/dev/null || true
    echo "== $target: fuzzing for ${seconds}s"
    "$dir/bin/$target" -max_total_time="$seconds" -print_final_stats=1 \
        -artifact_prefix="$dir/artifacts/$target-" "$corpus"
done
