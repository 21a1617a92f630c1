#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Vexal developers
# SPDX-License-Identifier: MIT
# Installs what is missing, builds the module and runs the demo: in a window
# when a display is available, otherwise rendered once under Xvfb to a picture
# whose path is printed. Arguments go to vexal-demo (e.g. --csv FILE).
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/common.sh

install_missing_packages
# Only the demo and the module it loads, not the tests and benchmarks.
echo "== building the demo in build"
configure build
cmake --build build -j"$(nproc)" --target vexal-demo
export QSG_RHI_BACKEND=opengl
if [[ -n "${DISPLAY:-}" ]] && xdpyinfo >/dev/null 2>&1; then
    exec build/bin/vexal-demo "$@"
fi
picture="${VEXAL_DEMO_PICTURE:-$PWD/vexal-demo.png}"
echo "== no display: rendering the demo under Xvfb"
xvfb-run -a -s "-screen 0 1280x1024x24" build/bin/vexal-demo --screenshot "$picture" "$@"
echo "The demo's window is in $picture"
