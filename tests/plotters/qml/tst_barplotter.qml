// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.2
import VexalPlugin 1.0

TestCase {
    name: "BarPlotterQml"

    Component { id: barComponent; BarPlotter {} }
    Component { id: spyComponent; SignalSpy {} }

    function test_defaults() {
        var bars = createTemporaryObject(barComponent, this)
        compare(bars.color, Qt.rgba(7 / 255, 203 / 255, 242 / 255, 1))
        compare(bars.visible, true)
        compare(bars.zOrder, 0)
        compare(bars.drawLayer, 1)
        compare(bars.data.length, 0)
        compare(bars.chartArea, null)
    }

    function test_dataAreKeptWithoutAChart() {
        var bars = createTemporaryObject(barComponent, this)
        var spy = createTemporaryObject(spyComponent, this, { target: bars, signalName: "dataChanged" })
        bars.data = [1, 2, 3]
        compare(bars.data.length, 3)
        compare(spy.count, 1)
        bars.data = [1, 2, 3]
        compare(spy.count, 1)
    }

    function test_plotterAreaKeepsTheCallersHeightBeforeTheFirstFrame() {
        var bars = createTemporaryObject(barComponent, this)
        bars.plotterArea = Qt.rect(1, 0, 8, 3)
        compare(bars.plotterArea, Qt.rect(1, 0, 8, 3))
    }
}
