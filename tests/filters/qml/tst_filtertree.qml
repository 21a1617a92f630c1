// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick
import QtTest
import VexalPlugin 1.0
import VexalTest 1.0

// Filter trees wired in QML, from a source node through filters to a recording
// plotter on a chart.
TestCase {
    id: testCase
    name: "FilterTree"
    width: 200
    height: 100
    when: windowShown

    IChartArea {
        id: chart
        anchors.fill: parent
    }

    Component {
        id: plotterComponent
        TestPlotter1D {
            chartArea: chart
        }
    }

    function ramp(n) {
        const values = []
        for (let i = 0; i < n; ++i)
            values.push(i)
        return values
    }

    // root -> filter -> new plotter; returns the plotter.
    function wire(root, filter) {
        const plotter = createTemporaryObject(plotterComponent, testCase)
        root.addFilter(filter)
        filter.addPlotter(plotter)
        return plotter
    }

    function test_bothNamesCreateAFilter1D() {
        const a = createTemporaryQmlObject("import VexalPlugin 1.0; IFIlterU64 {}", testCase)
        const b = createTemporaryQmlObject("import VexalPlugin 1.0; Filter1D {}", testCase)
        verify(a.toString().startsWith("Filter1D"))
        verify(b.toString().startsWith("Filter1D"))
        a.data = [1, 2]
        a.addFilter(b)
        compare(b.data, [1, 2])
    }

    Component {
        id: identityTree
        Item {
            property alias root: root
            property alias child: child
            property var events: []
            IFIlterU64 {
                id: root
                onDataChanged: events.push("root " + plotter.dataCalls)
            }
            Filter1D {
                id: child
                onDataChanged: events.push("child")
            }
            TestPlotter1D {
                id: plotter
                chartArea: chart
            }
            property alias plotter: plotter
            Component.onCompleted: {
                root.addFilter(child)
                child.addPlotter(plotter)
            }
        }
    }

    function test_dataAreaAndIdReachThePlotterBeforeTheSignals() {
        const tree = createTemporaryObject(identityTree, testCase)
        tree.root.dataID = "stream"
        tree.root.area = Qt.rect(0, 0, 3, 10)
        tree.events = []
        tree.root.data = [4, 5, 6]
        compare(tree.plotter.lastData, [4, 5, 6])
        compare(tree.plotter.lastArea, Qt.rect(0, 0, 3, 10))
        compare(tree.events, ["child", "root 2"])
        compare(tree.child.plotters().length, 1)

        tree.root.data = [4, 5, 6] // equal: nothing moves
        compare(tree.plotter.dataCalls, 2)
        compare(tree.events.length, 2)
    }

    function test_nullsAreRefused() {
        const root = createTemporaryQmlObject("import VexalPlugin 1.0; Filter1D {}", testCase)
        ignoreWarning("Filter1D::addFilter: a null filter was ignored")
        root.addFilter(null)
        ignoreWarning("Filter1D::addPlotter: a null plotter was ignored")
        root.addPlotter(null)
        compare(root.plotters().length, 0)
    }

    function test_movingAverage() {
        const root = createTemporaryQmlObject("import VexalPlugin 1.0; Filter1D {}", testCase)
        const average = createTemporaryQmlObject("import VexalPlugin 1.0; MovingAverageU64 { depth: 1 }", testCase)
        const plotter = wire(root, average)
        root.data = [1, 2, 3]
        compare(plotter.lastData, [2, 4, 5])
    }

    function test_fixedDecimator() {
        const root = createTemporaryQmlObject("import VexalPlugin 1.0; Filter1D { area: Qt.rect(0, 0, 8, 1) }", testCase)
        const decimator = createTemporaryQmlObject("import VexalPlugin 1.0; FixedDecimatorU64 {}", testCase)
        const plotter = wire(root, decimator)
        root.data = [1, 5, 2, 8, 3, 9, 4, 7]
        decimator.numPoint = 4
        compare(plotter.lastData, [5, 8, 9, 7])
        compare(plotter.lastArea, Qt.rect(0, 0, 8, 1))
    }

    function test_fixedDecimator2D() {
        const root = createTemporaryQmlObject("import VexalPlugin 1.0; Filter1D { area: Qt.rect(0, 0, 10, 1) }", testCase)
        const decimator = createTemporaryQmlObject("import VexalPlugin 1.0; FixedDecimator2D { numPoint: 5 }", testCase)
        const plotter = wire(root, decimator)
        root.data = [2, 1, 2, 5, 2, 3, 2, 4, 2, 2]
        compare(plotter.lastData, [2, 0, 4, 0, 0])
    }

    function test_minimalWidth() {
        const root = createTemporaryQmlObject("import VexalPlugin 1.0; Filter1D {}", testCase)
        const merge = createTemporaryQmlObject("import VexalPlugin 1.0; MinimalWidth2D { mergeWidth: 1 }", testCase)
        const plotter = wire(root, merge)
        root.data = [2, 5, 0.3, 1, 0.3, 7, 0.5, 2]
        const out = plotter.lastData
        compare(out.length, 6)
        compare(out.slice(0, 5), [2, 5, 1, 7, out[4]])
        fuzzyCompare(out[4], 0.1, 1e-12)
        compare(out[5], 2)
        merge.mergeWidth = 20 // everything merges into one item
        compare(plotter.lastData.length, 2)
    }

    function test_decimatorFollowsTheChartWidth() {
        const sized = createTemporaryQmlObject(
            "import VexalPlugin 1.0; IChartArea { width: 100; height: 10; adaptAreaToPlotters: false; chartRect: Qt.rect(0, 0, 1024, 1) }",
            testCase)
        const root = createTemporaryQmlObject("import VexalPlugin 1.0; Filter1D { area: Qt.rect(0, 0, 1024, 1) }", testCase)
        const decimator = createTemporaryQmlObject("import VexalPlugin 1.0; DecimatorU64 {}", testCase)
        const plotter = wire(root, decimator)
        root.data = ramp(1024)
        compare(plotter.lastData.length, 1024)
        decimator.chartArea = sized  // 10.24 units per pixel: level 4
        compare(plotter.lastData.length, 64)
        compare(plotter.lastData[63], 1023) // peaks survive
        sized.width = 512            // 2 units per pixel: level 1
        compare(plotter.lastData.length, 512)
    }

    function test_decimatorFollowsTheZoom() {
        const zoomable = createTemporaryQmlObject(
            "import VexalTest 1.0; TestZoomChart { width: 128; height: 10; zoomRect: Qt.rect(0, 0, 128, 1) }", testCase)
        const root = createTemporaryQmlObject("import VexalPlugin 1.0; Filter1D { area: Qt.rect(0, 0, 1024, 1) }", testCase)
        const decimator = createTemporaryQmlObject("import VexalPlugin 1.0; DecimatorU64 {}", testCase)
        decimator.chartArea = zoomable
        const plotter = wire(root, decimator)
        root.data = ramp(1024)
        compare(plotter.lastData.length, 1024)
        zoomable.zoomRect = Qt.rect(0, 0, 1024, 1) // 8 units per pixel: level 3
        compare(plotter.lastData.length, 128)
    }
}
