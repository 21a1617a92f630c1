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
if grep -hE "libvexal|/(chart|plotters|filters|sources|plugin)/[a-z0-9]+\.(cpp|h):" "$reports"/leaks.* 2>/dev/null; then
    echo "leaks allocated by the module (above)"
    exit 1
fi
cat "$reports"/leaks.* 2>/dev/null | grep -E "^(Direct|Indirect) leak|SUMMARY" || true
