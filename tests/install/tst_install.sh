#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Vexal developers
# SPDX-License-Identifier: MIT
# Installs the built module under a temporary prefix, builds the C++ consumer
# example against it, and shows a QML file from outside the source tree that
# imports the installed module.
#   tst_install.sh SOURCE_DIR BUILD_DIR
set -euo pipefail
source_dir=$1
build_dir=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build_dir" --prefix "$work/prefix" >/dev/null
qml_dir=$(dirname "$(find "$work/prefix" -name qmldir -path '*VexalPlugin*')")
for file in qmldir libvexalplugin.so vexal.qmltypes VexalQML.qml Legend/HorizontalLegend.qml; do
    [[ -e "$qml_dir/$file" ]] || { echo "missing from the installed module: $file"; exit 1; }
done

# Only public headers are installed, all of them as <vexal/NAME.h>.
headers=$(find "$work/prefix/include" -name '*.h')
[[ -e "$work/prefix/include/vexal/chartarea.h" ]] || { echo "missing from the installed headers: vexal/chartarea.h"; exit 1; }
if grep -q '_p\.h$' <<<"$headers"; then echo "internal headers were installed:" $(grep '_p\.h$' <<<"$headers"); exit 1; fi
if grep -v '/include/vexal/[a-z0-9]*\.h$' <<<"$headers"; then echo "headers installed outside include/vexal (above)"; exit 1; fi

cmake -S "$source_dir/examples/cpp-consumer" -B "$work/consumer" -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/consumer" >/dev/null

cat > "$work/chart.qml" <<'QML'
import QtQuick 2.15
import QtQuick.Window 2.15
import VexalPlugin 1.0

Window {
    width: 400; height: 300; visible: true
    VexalQML {
        id: view
        anchors.fill: parent
        enableNavigatorBar: false
        enableLegend: false
        BarPlotter {
            color: "#ff8000"
            chartArea: view.refChartArea
            plotterArea: Qt.rect(0, 0, 4, 1)
            Component.onCompleted: data = [10, 10, 10, 10]
        }
    }
}
QML
export QML_IMPORT_PATH="$(dirname "$qml_dir")"
"$work/consumer/vexal-consumer" --qml "$work/chart.qml" --expect "#ff8000"
# The README's example: live histogram bars reach the middle of the window.
cp "$source_dir/examples/chart.qml" "$work/readme.qml"
"$work/consumer/vexal-consumer" --qml "$work/readme.qml" --expect steelblue
