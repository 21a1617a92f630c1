// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick
import QtTest
import VexalPlugin 1.0

// What a careless scene may do to the module: null plotters and filters,
// filter cycles, values out of range and values of the wrong type. Each gets
// a clear warning or error, and the scene goes on drawing live data.
TestCase {
    id: testCase
    name: "Misuse"
    width: 200
    height: 100
    when: windowShown

    Component {
        id: sceneComponent
        Item {
            anchors.fill: parent
            property alias chart: chart
            property alias bars: bars
            property alias decorator: decorator
            property alias source: source
            property alias average: average
            property alias child: child
            ChartArea { id: chart; anchors.fill: parent; updateIntervalMs: 0 }
            BarPlotter { id: bars; chartArea: chart }
            BarDecorator { id: decorator; chartArea: chart; plotters: [bars] }
            RandomU64Data {
                id: source
                type: "white"; append: false; interval: 10; numBin: 16; area: Qt.rect(0, 0, 16, 0)
            }
            MovingAverageU64 { id: average; depth: 2 }
            Filter1D { id: child }
        }
    }

    // source -> average -> child, and the average drawn as bars.
    function makeScene() {
        const scene = createTemporaryObject(sceneComponent, testCase)
        scene.source.addFilter(scene.average)
        scene.average.addFilter(scene.child)
        scene.average.addPlotter(scene.bars)
        return scene
    }

    // New data still flow from the source down to the bars and the child.
    function verifyStillLive(scene) {
        let received = 0
        const count = () => ++received
        scene.bars.dataChanged.connect(count)
        tryVerify(() => received >= 2, 5000, "live data still reach the bars")
        scene.bars.dataChanged.disconnect(count)
        compare(scene.bars.data.length, 16 + 2)
        compare(scene.child.data.length, 16 + 2)
        waitForRendering(scene.chart)
        compare(scene.chart.plotter.length, 2)
    }

    function test_nullsAndCyclesAreRefusedWithAWarning_data() {
        return [
            { tag: "a null plotter added to a chart", warning: "IChartArea::addPlotter: a null plotter was ignored",
              misuse: s => s.chart.addPlotter(null) },
            { tag: "a null plotter added to a decorator", warning: "BarDecorator::addPlotter: a null plotter was ignored",
              misuse: s => s.decorator.addPlotter(null) },
            { tag: "a null plotter added to a filter", warning: "Filter1D::addPlotter: a null plotter was ignored",
              misuse: s => s.average.addPlotter(null) },
            { tag: "a null filter added to a filter", warning: "Filter1D::addFilter: a null filter was ignored",
              misuse: s => s.average.addFilter(null) },
            { tag: "a chart's plotter list holding a null",
              warning: /IChartArea::plotter: null entries .* were ignored/,
              misuse: s => { s.chart.plotter = [s.bars, null, s.decorator] } },
            { tag: "a decorator's plotter list holding a null",
              warning: /BarDecorator::plotters: null entries .* were ignored/,
              misuse: s => { s.decorator.plotters = [null, s.bars] } },
            { tag: "a filter added to itself", warning: /Filter1D::addFilter: refused .* \(a cycle\)/,
              misuse: s => s.average.addFilter(s.average) },
            { tag: "a filter added to its own descendant", warning: /Filter1D::addFilter: refused .* \(a cycle\)/,
              misuse: s => s.child.addFilter(s.source) },
            { tag: "a zero bin count", warning: /numBin 0 refused/,
              misuse: s => { s.source.numBin = 0 } },
            { tag: "a negative bin count", warning: /numBin -3 refused/,
              misuse: s => { s.source.numBin = -3 } },
            { tag: "a zero interval", warning: /interval 0 ms refused/,
              misuse: s => { s.source.interval = 0 } },
            { tag: "a negative interval", warning: /interval -10 ms refused/,
              misuse: s => { s.source.interval = -10 } },
            { tag: "a zero averaging depth", warning: /depth 0 refused/,
              misuse: s => { s.average.depth = 0 } },
        ]
    }

    function test_nullsAndCyclesAreRefusedWithAWarning(row) {
        const scene = makeScene()
        ignoreWarning(row.warning)
        row.misuse(scene)
        compare(scene.source.numBin, 16)
        compare(scene.source.interval, 10)
        compare(scene.average.depth, 2)
        verifyStillLive(scene)
    }

    // Values of the wrong type are the engine's to refuse: it throws or warns,
    // and the property keeps a value of its own type.
    function test_wrongTypesLeaveTheSceneLive_data() {
        return [
            { tag: "text as a plotter's data", misuse: s => { s.bars.data = "not numbers" } },
            { tag: "a filter as a plotter's chart", misuse: s => { s.bars.chartArea = s.source } },
            { tag: "a decorator as a plotter's chart", misuse: s => { s.bars.chartArea = s.decorator } },
            { tag: "a filter in a chart's plotter list", misuse: s => { s.chart.plotter = [s.bars, s.source, s.decorator] } },
            { tag: "a chart in a decorator's plotter list", misuse: s => { s.decorator.plotters = [s.chart, s.bars] } },
            { tag: "text as a zoom rectangle", misuse: s => { s.chart.zoomRect = "everything" } },
            { tag: "an object as a colour", misuse: s => { s.bars.color = s.chart } },
            { tag: "text as a bin count", misuse: s => { s.source.numBin = "many" } },
            { tag: "text as an interval", misuse: s => { s.source.interval = "soon" } },
            { tag: "a decorator given to a filter as a plotter", misuse: s => s.average.addPlotter(s.decorator) },
            { tag: "a plotter given to a filter as a filter", misuse: s => s.average.addFilter(s.bars) },
            { tag: "a filter given to a chart as a plotter", misuse: s => s.chart.addPlotter(s.source) },
        ]
    }

    function test_wrongTypesLeaveTheSceneLive(row) {
        const scene = makeScene()
        try {
            row.misuse(scene)
        } catch (error) {
            verify(String(error).length > 0, "the engine names the error")
        }
        verify(scene.bars.chartArea === scene.chart || scene.bars.chartArea === null)
        scene.bars.chartArea = scene.chart
        verify(scene.source.numBin >= 1)
        verify(scene.source.interval >= 1)
        scene.source.numBin = 16
        scene.source.interval = 10
        scene.chart.plotter = [scene.bars, scene.decorator]
        verifyStillLive(scene)
    }
}
