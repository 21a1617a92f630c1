// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.2
import VexalPlugin 1.0

TestCase {
    name: "BarDecoratorQml"
    when: windowShown
    width: 200; height: 100

    IChartArea {
        id: chart
        width: 200; height: 100
        adaptAreaToPlotters: false
        chartRect: Qt.rect(0, 0, 20, 10)
        updateIntervalMs: 0
    }
    BarPlotter {
        id: bars
        name: "bars"
        color: "red"
        chartArea: chart
        plotterArea: Qt.rect(0, 0, 20, 10)
        data: [2, 4, 6, 8]
    }
    Component { id: decoratorComponent; BarDecorator {} }
    Component { id: spyComponent; SignalSpy {} }

    function test_defaults() {
        var d = createTemporaryObject(decoratorComponent, this)
        compare(d.active, false)
        compare(d.infoMap.length, 0)
        compare(d.plotters.length, 0)
        compare(d.mouseX, 0)
        compare(d.mouseY, 0)
        compare(d.color, Qt.rgba(1, 1, 1, 70 / 255))
    }

    function test_plotterListMethods() {
        var d = createTemporaryObject(decoratorComponent, this)
        var spy = createTemporaryObject(spyComponent, this, { target: d, signalName: "plottersChanged" })
        d.addPlotter(bars)
        d.addPlotter(bars)
        compare(d.plotters.length, 1)
        compare(spy.count, 1)
        d.removeAllPlotter()
        compare(d.plotters.length, 0)
        compare(spy.count, 2)
    }

    function test_infoMapDescribesTheBarUnderTheMouse_data() {
        return [
            { tag: "on the second bar", x: 75, y: 80, count: 1, rect: Qt.rect(5, 0, 5, 4) },
            { tag: "on the last bar near its top", x: 190, y: 21, count: 1, rect: Qt.rect(15, 0, 5, 8) },
            { tag: "above the first bar", x: 25, y: 50, count: 0 },
        ]
    }

    function test_infoMapDescribesTheBarUnderTheMouse(row) {
        var d = createTemporaryObject(decoratorComponent, this, { chartArea: chart, active: true })
        d.plotters = [bars]
        var spy = createTemporaryObject(spyComponent, this, { target: d, signalName: "infoMapChanged" })
        d.mouseX = row.x
        d.mouseY = row.y
        compare(d.infoMap.length, row.count)
        if (row.count === 0) {
            compare(spy.count, 0)
            return
        }
        compare(d.infoMap[0].rect, row.rect)
        compare(d.infoMap[0].name, "bars")
        compare(d.infoMap[0].color, Qt.rgba(1, 0, 0, 1))
    }

    function test_inactiveDecoratorPublishesNothing() {
        var d = createTemporaryObject(decoratorComponent, this, { chartArea: chart })
        d.plotters = [bars]
        d.mouseX = 75
        d.mouseY = 80
        compare(d.infoMap.length, 0)
        var spy = createTemporaryObject(spyComponent, this, { target: d, signalName: "activeChanged" })
        d.active = true
        compare(spy.count, 1)
        d.mouseX = 76
        compare(d.infoMap.length, 1)
    }
}
