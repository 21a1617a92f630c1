// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick
import QtTest
import VexalPlugin 1.0
import VexalTest 1.0

// Appending JavaScript arrays from QML, to a filter tree and to a plotter,
// and clearing them.
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

    function init() {
        root.addFilter(decimator)
        decimator.addPlotter(plotter)
        root.data = [1, 2, 3, 4, 5]
        direct.data = [1, 2, 3, 4]
    }

    function cleanup() {
        root.clear()
        direct.clear()
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
