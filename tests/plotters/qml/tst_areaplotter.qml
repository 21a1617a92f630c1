// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.2
import VexalPlugin 1.0

TestCase {
    name: "AreaPlotterQml"

    Component { id: areaComponent; AreaPlotter {} }
    Component { id: spyComponent; SignalSpy {} }

    function test_defaults() {
        var area = createTemporaryObject(areaComponent, this)
        compare(area.borderWidth, 3)
        compare(area.borderColor, Qt.rgba(7 / 255, 203 / 255, 242 / 255, 1))
        compare(area.borderEnable, true)
        compare(area.enableGradient, false)
        compare(area.gradientColor, Qt.rgba(7 / 255, 203 / 255, 242 / 255, 1))
        fuzzyCompare(area.color.a, 0.5, 0.01)
    }

    function test_setters_data() {
        return [
            { tag: "borderWidth emits on change", property: "borderWidth", value: 5, signal: "borderWidthChanged" },
            { tag: "borderColor emits on change", property: "borderColor", value: "red", signal: "borderColorChanged" },
            { tag: "borderEnable emits on change", property: "borderEnable", value: false, signal: "borderEnableChanged" },
            { tag: "enableGradient emits on change", property: "enableGradient", value: true, signal: "enableGradientChanged" },
            { tag: "gradientColor emits on change", property: "gradientColor", value: "blue", signal: "gradientColorChanged" },
        ]
    }

    function test_setters(row) {
        var area = createTemporaryObject(areaComponent, this)
        var spy = createTemporaryObject(spyComponent, this, { target: area, signalName: row.signal })
        area[row.property] = row.value
        compare(spy.count, 1)
        area[row.property] = row.value
        compare(spy.count, 1)
    }

    function test_dataWithoutAChartAreDropped() {
        var area = createTemporaryObject(areaComponent, this)
        area.data = [1, 2]
        compare(area.data.length, 0)
    }
}
