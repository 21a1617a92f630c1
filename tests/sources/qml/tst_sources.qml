// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick
import QtTest
import VexalPlugin 1.0
import VexalTest 1.0

// Sources wired in QML to a filter and a recording plotter.
TestCase {
    id: testCase
    name: "Sources"
    width: 200
    height: 100
    when: windowShown

    IChartArea {
        id: chart
        anchors.fill: parent
    }

    Component {
        id: randomTree
        Item {
            property alias source: source
            property alias plotter: plotter
            RandomU64Data {
                id: source
                type: "white"
                append: false
                numBin: 32
                interval: 5
            }
            TestPlotter1D {
                id: plotter
                chartArea: chart
            }
            Component.onCompleted: source.addPlotter(plotter)
        }
    }

    Component {
        id: csvTree
        Item {
            property alias reader: reader
            property alias average: average
            property alias plotter: plotter
            SCSVReader {
                id: reader
                binWidth: 2
            }
            MovingAverageU64 {
                id: average
                depth: 1
            }
            TestPlotter1D {
                id: plotter
                chartArea: chart
            }
            Component.onCompleted: {
                reader.addFilter(average)
                average.addPlotter(plotter)
            }
        }
    }

    function localPath(relative) {
        return decodeURIComponent(Qt.resolvedUrl(relative).toString().replace(/^file:\/\//, ""))
    }

    function test_randomNoiseReachesThePlotter() {
        const tree = createTemporaryObject(randomTree, testCase)
        tryVerify(() => tree.plotter.dataCalls > 0)
        const values = tree.plotter.lastData
        compare(values.length, 32)
        for (let i = 0; i < values.length; ++i)
            verify(values[i] >= 0 && values[i] < 100)
    }

    function test_randomTypeChangeRegeneratesAtOnce() {
        const tree = createTemporaryObject(randomTree, testCase)
        const calls = tree.plotter.dataCalls
        tree.source.numBin = 8
        tree.source.type = "normal"
        compare(tree.plotter.dataCalls, calls + 1)
        compare(tree.plotter.lastData.length, 8)
    }

    function test_csvFlowsThroughAFilter() {
        const tree = createTemporaryObject(csvTree, testCase)
        tree.reader.file = localPath("data/values.csv")
        // depth 1 over [3, 1, 4, 1, 5]: sums 3-3+1, 1-3+4, 2-1+1, 2-4+5, 3-1+5.
        compare(tree.average.data, [1, 2, 2, 3, 7])
        compare(tree.plotter.lastData, [1, 2, 2, 3, 7])
        compare(tree.plotter.lastArea, Qt.rect(0, 0, 10, 0))
        compare(tree.average.dataID, tree.reader.dataID)
    }

    function test_csvMissingFileKeepsThePlotterData() {
        const tree = createTemporaryObject(csvTree, testCase)
        tree.reader.file = localPath("data/values.csv")
        const calls = tree.plotter.dataCalls
        tree.reader.file = localPath("data/missing.csv")
        compare(tree.plotter.dataCalls, calls)
        compare(tree.plotter.lastData, [1, 2, 2, 3, 7])
    }
}
