// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.2
import VexalPlugin 1.0

TestCase {
    name: "BarPlotterDxQml"
    when: windowShown

    IChartArea {
        id: chart
        width: 200; height: 100
        adaptAreaToPlotters: false
        updateIntervalMs: 0
    }
    Component { id: dxComponent; BarPlotterDx {} }
    Component { id: spyComponent; SignalSpy {} }

    function test_pairDataOnAChart() {
        var bars = createTemporaryObject(dxComponent, this, { chartArea: chart })
        var spy = createTemporaryObject(spyComponent, this, { target: bars, signalName: "dataChanged" })
        bars.data = [2, 5, 1, 3]
        compare(spy.count, 1)
        compare(bars.data.length, 4)
        // Width and height follow the data once the first frame built them.
        tryCompare(bars, "plotterArea", Qt.rect(0, 0, 3, 5))
    }

    function test_plotterAreaTakesOnlyThePosition() {
        var bars = createTemporaryObject(dxComponent, this, { chartArea: chart })
        bars.data = [2, 5, 1, 3]
        tryCompare(bars, "plotterArea", Qt.rect(0, 0, 3, 5))
        bars.plotterArea = Qt.rect(7, 0, 100, 100)
        compare(bars.plotterArea, Qt.rect(7, 0, 3, 5))
    }
}
