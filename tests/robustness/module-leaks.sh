#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Vexal developers
# SPDX-License-Identifier: MIT
# Runs a test with LeakSanitizer and fails when the test fails or when a leak
# was allocated by the module's own code. Leaks of Qt, Mesa and the X
# libraries are suppressed in lsan.supp where they can be named; those of
# libraries unloaded before the check have no names left and are only listed.
#   module-leaks.sh SUPPRESSIONS TEST [ARGS...]
set -euo pipefail
suppressions=$1; shift
reports=$(mktemp -d)
trap 'rm -rf "$reports"' EXIT
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=0:exitcode=0:log_path=$reports/leaks"
export LSAN_OPTIONS="suppressions=$suppressions:print_suppressions=0"
"$@"
# An unnamed frame "(.../libvexal.so...+0xOFFSET)" is the module's only when
# the offset lies inside the library's loaded segments: addresses of a library
# unloaded before the check are sometimes reported against the module.
module_frames() {
    grep -hE "/(core|chart|plotters|filters|sources|plugin)/[a-z0-9_]+\.(cpp|h):" "$reports"/leaks.* 2>/dev/null || true
    local frames
    frames=$(grep -hoE "\([^()+ ]*libvexal[^()+ ]*\+0x[0-9a-f]+\)" "$reports"/leaks.* 2>/dev/null | sort -u || true)
    local frame library offset end vaddr memsz
    for frame in $frames; do
        frame=${frame#(}; frame=${frame%)}
        library=${frame%%+*}
        offset=$((16#${frame##*+0x}))
        end=0
        while read -r vaddr memsz; do
            (( vaddr + memsz > end )) && end=$((vaddr + memsz))
        done < <(readelf -lW "$library" | awk '$1 == "LOAD" { print $3, $6 }')
        if (( offset < end )); then echo "($frame)"; fi
    done
}
frames=$(module_frames)
if [[ -n $frames ]]; then
    echo "$frames"
    echo "leaks allocated by the module (above)"
    exit 1
fi
cat "$reports"/leaks.* 2>/dev/null | grep -E "^(Direct|Indirect) leak|SUMMARY" || true
