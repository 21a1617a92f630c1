// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// examples/chart.qml: the README's example, run by the install test
import QtQuick
import QtQuick.Window
import VexalPlugin 1.0

Window {
    width: 800; height: 500; visible: true

    VexalQML {
        id: view
        anchors.fill: parent
        title: "Live histogram"
        xTitle: "bin"
        // The overview strip under the chart shows the bars too.
        overview: true

        // A source of live data, reduced to the chart's pixel width, drawn as bars.
        RandomU64Data {
            id: source
            type: "normal"; interval: 200; numBin: 4096
            area: Qt.rect(0, 0, 4096, 1)
            Component.onCompleted: addFilter(decimator)
        }
        DecimatorU64 {
            id: decimator
            chartArea: view.refChartArea
            Component.onCompleted: addPlotter(bars)
        }
        BarPlotter {
            id: bars
            name: "histogram"
            color: "steelblue"
            chartArea: view.refChartArea
        }
    }
}
