// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick
import QtTest
import VexalPlugin 1.0
import VexalTest 1.0

// Appending JavaScript arrays from QML, to a filter tree and to a plotter,
// clearing them, and a sliding window (capacity) followed by a chart.
TestCase {
    id: testCase
    name: "Appends"
    width: 200
    height: 100
    when: windowShown

    IChartArea {
        id: chart
        anchors.fill: parent
    }

    Filter1D {
        id: root
        area: Qt.rect(0, 0, 10, 1)
    }

    DecimatorU64 {
        id: decimator
    }

    BarPlotter {
        id: plotter
        chartArea: chart
    }

    BarPlotter {
        id: direct
        chartArea: chart
        plotterArea: Qt.rect(0, 0, 4, 0)
    }

    ChartArea {
        id: windowChart
        width: 200
        height: 100
        follow: true
        updateIntervalMs: 0
    }

    Filter1D {
        id: windowRoot
        area: Qt.rect(0, 0, 0, 1)
    }

    BarPlotter {
        id: windowBars
        chartArea: windowChart
    }

    function init() {
        root.addFilter(decimator)
        decimator.addPlotter(plotter)
        root.data = [1, 2, 3, 4, 5]
        direct.data = [1, 2, 3, 4]
    }

    function cleanup() {
        root.clear()
        root.capacity = 0
        direct.clear()
    }

    function test_capacityKeepsTheNewestValuesAndMovesTheArea() {
        root.area = Qt.rect(0, 0, 10, 1)
        root.capacity = 6
        root.appendData([6, 7, 8])
        compare(root.data, [3, 4, 5, 6, 7, 8])
        // Cells two units wide: the three appended widen the area to 16, the
        // two dropped move its left edge to 4.
        compare(root.area.x, 4)
        compare(root.area.width, 12)
        compare(plotter.plotterArea.x, 4)
        root.capacity = 2
        compare(root.data, [7, 8])
        compare(decimator.data, [7, 8])
    }

    function test_aFollowingChartZoomsOntoTheWindow() {
        windowRoot.addPlotter(windowBars)
        windowRoot.capacity = 10
        windowRoot.appendData([9, 9, 9, 9, 9, 9, 9, 9, 9, 9])
        windowRoot.appendData([2, 1, 1, 1, 1, 1, 1, 1, 1, 1])
        compare(windowBars.data, [2, 1, 1, 1, 1, 1, 1, 1, 1, 1])
        // The zoom follows to the ten values kept, scaled to their peak of 2,
        // not to the dropped peaks of 9.
        tryVerify(() => windowChart.zoomRect.x === 10 && windowChart.zoomRect.width === 10, 2000,
                  "the zoom never showed the window: " + windowChart.zoomRect)
        tryVerify(() => windowChart.zoomRect.height < 3, 2000, "the zoom still spans dropped peaks")
        windowRoot.clear()
        windowRoot.capacity = 0
    }

    function test_arraysAppendedToTheRootReachThePlotter() {
        root.appendData([6, 7])
        root.appendData([8])
        compare(root.data, [1, 2, 3, 4, 5, 6, 7, 8])
        compare(plotter.data, decimator.data)
        // Five cells two units wide, then three more.
        compare(root.area.width, 16)
        compare(plotter.plotterArea.width, 16)
    }

    function test_arraysAppendedToAPlotterWidenItsArea() {
        direct.appendData([5, 6])
        compare(direct.data, [1, 2, 3, 4, 5, 6])
        compare(direct.plotterArea.width, 6)
    }

    function test_clearEmptiesTheTree() {
        root.clear()
        compare(root.data, [])
        compare(decimator.data, [])
        compare(plotter.data, [])
        root.appendData([9])
        compare(plotter.data, [9])
    }
}
