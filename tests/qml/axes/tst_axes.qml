// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15
import VexalPlugin 1.0
import "qrc:/qml"
import "qrc:/qml/utils.js" as Utils

Item {
    id: top
    width: 800
    height: 400

    Component {
        id: xAxisComponent
        LinearXAxis {}
    }

    Component {
        id: yAxisComponent
        LinearYAxis {
            x: 60
        }
    }

    TestCase {
        name: "Axes"
        when: windowShown

        function init() {
            failOnWarning(/.*/)
        }

        function ticksOf(axis) {
            const repeater = findChild(axis, "ticks")
            const ticks = []
            for (let i = 0; i < repeater.count; ++i)
                ticks.push(repeater.itemAt(i))
            return ticks
        }

        function labelOf(tick) {
            return tick.children[0].text
        }

        function test_x_ticks_data() {
            return [
                { tag: "700 pixels over 0 to 1000 give 9 ticks every 125",
                  width: 700, rect: Qt.rect(0, 0, 1000, 1), step: 125, first: 0, count: 9,
                  labels: ["0", "125.00", "250.00"] },
                { tag: "a range starting at 130 puts the first tick at 250",
                  width: 700, rect: Qt.rect(130, 0, 1000, 1), step: 125, first: 250, count: 8,
                  labels: ["250.00", "375.00", "500.00"] },
                { tag: "a range of microseconds ticks every half microsecond",
                  width: 700, rect: Qt.rect(0, 0, 3.2e-6, 1), step: 0.5e-6, first: 0, count: 7,
                  labels: ["0", "500.00e-9", "1.00e-6"] },
                { tag: "a narrow axis takes a wider step and caps the tick count",
                  width: 140, rect: Qt.rect(0, 0, 1000, 1), step: 500, first: 0, count: 2,
                  labels: ["0", "500.00"] },
                { tag: "an axis narrower than one tick draws none",
                  width: 60, rect: Qt.rect(0, 0, 1000, 1), step: 2000, first: 0, count: 0,
                  labels: [] }
            ]
        }

        function test_x_ticks(row) {
            const axis = createTemporaryObject(xAxisComponent, top, { width: row.width, rectArea: row.rect })
            fuzzyCompare(axis.dxTick, row.step, row.step * 1e-12, "step")
            fuzzyCompare(axis.xTickOffset, row.first, 1e-12, "first tick value")
            const ticks = ticksOf(axis)
            compare(ticks.length, row.count, "tick count")
            for (let i = 0; i < row.labels.length; ++i)
                compare(labelOf(ticks[i]), row.labels[i], "label " + i)
        }

        function test_x_tick_placement() {
            const axis = createTemporaryObject(xAxisComponent, top, { width: 700, rectArea: Qt.rect(130, 0, 1000, 1) })
            const ticks = ticksOf(axis)
            // Tick i shows 250 + 125 i at (value - 130) / 1000 of the width.
            for (let i = 0; i < ticks.length; ++i) {
                const pos = ticks[i].mapToItem(axis, 0, 0)
                fuzzyCompare(pos.x, (125 * i + 120) * 0.7, 1e-9, "tick " + i)
                compare(ticks[i].width, 1)
                compare(ticks[i].height, 8)
                compare(ticks[i].color, axis.axisBaseColor)
            }
        }

        function test_x_labels_use_the_text_function() {
            const axis = createTemporaryObject(xAxisComponent, top, {
                width: 700, rectArea: Qt.rect(0, 0, 1000, 1), axisTextFunc: v => "t" + v })
            compare(ticksOf(axis).map(labelOf).slice(0, 3), ["t0", "t125", "t250"])
        }

        function test_format_num_data() {
            return [
                { tag: "below 1e-18 is zero", num: 1e-19, text: "0" },
                { tag: "attounits", num: 2.5e-16, text: "250.00e-18" },
                { tag: "femtounits", num: 3e-13, text: "300.00e-15" },
                { tag: "picounits", num: 1.5e-11, text: "15.00e-12" },
                { tag: "nanounits", num: 4e-7, text: "400.00e-9" },
                { tag: "microunits", num: -2e-4, text: "-200.00e-6" },
                { tag: "milliunits", num: 0.25, text: "250.00e-3" },
                { tag: "units and above are written plainly", num: 12500, text: "12500.00" }
            ]
        }

        function test_format_num(row) {
            const axis = createTemporaryObject(xAxisComponent, top)
            compare(axis.format_num(row.num), row.text)
        }

        function test_y_ticks_data() {
            return [
                { tag: "300 pixels over 0 to 1000 give 5 lines every 250",
                  height: 300, rect: Qt.rect(0, 0, 1000, 1000), log: false, step: 250,
                  ys: [300, 225, 150, 75, 0], labels: ["0", "250", "500", "750", "1000"] },
                { tag: "the tick count is capped by the pixel height",
                  height: 100, rect: Qt.rect(0, 0, 3, 3), log: false, step: 2,
                  ys: [100, 100 - 200 / 3], labels: ["0", "2"] },
                { tag: "an axis shorter than 50 pixels has no tick",
                  height: 49, rect: Qt.rect(0, 0, 1000, 1000), log: false, step: Infinity,
                  ys: [], labels: [] },
                { tag: "log scale writes the values as powers of ten",
                  height: 300, rect: Qt.rect(0, 0, 3.5, 3.5), log: true, step: 1,
                  ys: [300, 300 - 300 / 3.5, 300 - 600 / 3.5, 300 - 900 / 3.5],
                  labels: ["10<sup>0</sup>", "10<sup>1</sup>", "10<sup>2</sup>", "10<sup>3</sup>"] }
            ]
        }

        function test_y_ticks(row) {
            const axis = createTemporaryObject(yAxisComponent, top, {
                width: 500, height: row.height, rectArea: row.rect, isLogScale: row.log })
            compare(axis.dyTicks, row.step, "step")
            const ticks = ticksOf(axis)
            compare(ticks.length, row.ys.length, "line count")
            for (let i = 0; i < ticks.length; ++i) {
                fuzzyCompare(ticks[i].y, row.ys[i], 1e-9, "line " + i)
                compare(ticks[i].width, 500, "lines cross the whole axis")
                compare(labelOf(ticks[i]), row.labels[i], "label " + i)
            }
        }

        function test_log_scale_shows_only_whole_exponents() {
            const axis = createTemporaryObject(yAxisComponent, top, {
                width: 500, height: 300, rectArea: Qt.rect(0, 0, 2, 2), isLogScale: true })
            compare(axis.dyTicks, 0.5)
            compare(ticksOf(axis).map(t => t.visible), [true, false, true, false, true])
        }

        function test_log_scale_with_units_keeps_the_nan_exponent() {
            const axis = createTemporaryObject(yAxisComponent, top, {
                width: 500, height: 300, rectArea: Qt.rect(0, 0, 4000, 4000), isLogScale: true,
                axisTextFunc: Utils.format_event })
            compare(ticksOf(axis).map(labelOf).slice(0, 2), ["10<sup>0</sup>", "10<sup>NaN</sup>"])
        }

        function test_y_labels_sit_left_of_the_lines() {
            const axis = createTemporaryObject(yAxisComponent, top, {
                width: 500, height: 300, rectArea: Qt.rect(0, 0, 1000, 1000) })
            const label = ticksOf(axis)[2].children[0]
            compare(label.x + label.width, -axis.textOffset)
            // Centred on the 1-pixel line, to the whole pixel.
            fuzzyCompare(label.y + label.height / 2, 0.5, 0.5)
            compare(axis.textOffset, 16)
        }

        function test_degenerate_ranges_draw_nothing_data() {
            return [
                { tag: "an x axis over an empty range", component: xAxisComponent },
                { tag: "a y axis over an empty range", component: yAxisComponent }
            ]
        }

        function test_degenerate_ranges_draw_nothing(row) {
            const axis = createTemporaryObject(row.component, top, {
                width: 500, height: 300, rectArea: Qt.rect(0, 0, 0, 0) })
            compare(ticksOf(axis).length, 0)
        }
    }
}
