#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Vexal developers
# SPDX-License-Identifier: MIT
# Runs the soak scene (live data at 1 ms through filters into a chart view that
# is zoomed, panned, hidden and recoloured) for SECONDS, then checks that no
# OpenGL error was logged, that memory did not grow and that the frame rate did
# not decay between the first and the last minute (thirds for short runs).
#   bash tools/soak.sh [SECONDS] [BUILD_DIR]     (600 s and build/ by default)
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/common.sh

seconds=${1:-600}
dir=${2:-build}
max_growth_kib=${VEXAL_SOAK_MAX_GROWTH_KIB:-65536}
log=$(mktemp)
trap 'rm -f "$log"' EXIT

cmake --build "$dir" --target vexal-soak >/dev/null
echo "== soak for ${seconds}s"
with_display "$dir/bin/vexal-soak" "$seconds" 2>"$log" | tee "$log.samples" | awk 'NR % 60 == 0'
samples=$log.samples
trap 'rm -f "$log" "$samples"' EXIT

errors=$(grep -c "WE GOT AN OPENGL ERROR CODE" "$log" || true)
awk -v window=$((seconds >= 180 ? 60 : seconds / 3)) -v seconds="$seconds" \
    -v errors="$errors" -v max_growth="$max_growth_kib" '
    { frames[$2] = $3; rss[$2] = $4; last = $2 }
    function sum(from, to,   s, t) { for (t = from; t <= to; ++t) s += frames[t]; return s }
    function peak(from, to,   m, t) { for (t = from; t <= to; ++t) if (rss[t] > m) m = rss[t]; return m }
    END {
        firstFps = sum(1, window) / window; lastFps = sum(last - window + 1, last) / window
        firstRss = peak(1, window); lastRss = peak(last - window + 1, last)
        printf "soak: %d s; frame rate first %.1f/s, last %.1f/s; resident memory first %d KiB, last %d KiB; OpenGL errors %d\n",
               last, firstFps, lastFps, firstRss, lastRss, errors
        ok = last >= seconds && errors == 0 && lastRss - firstRss <= max_growth && lastFps >= 0.75 * firstFps
        if (!ok) print "soak: FAILED (a short run, an OpenGL error, memory growth or a decaying frame rate)"
        exit !ok
    }' "$samples"
