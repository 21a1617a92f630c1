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

        function test_x_edge_labels_move_inside_the_axis() {
            // Ticks at 0, 2, ..., 8 with the last one on the right edge.
            const axis = createTemporaryObject(xAxisComponent, top, {
                width: 400, rectArea: Qt.rect(0, 0, 8, 1), axisTextFunc: v => v.toFixed(2) + " M" })
            const ticks = ticksOf(axis)
            verify(ticks.length >= 3)
            for (let i = 0; i < ticks.length; ++i) {
                const label = findChild(ticks[i], "tickLabel")
                const left = label.mapToItem(axis, 0, 0).x
                verify(left >= -1e-9 && left + label.width <= axis.width + 1e-9,
                       "label " + label.text + " from " + left + " to " + (left + label.width))
                const tickX = ticks[i].mapToItem(axis, 0, 0).x
                if (tickX - label.width / 2 >= 0 && tickX + label.width / 2 <= axis.width)
                    fuzzyCompare(left + label.width / 2, tickX + 0.5 * ticks[i].width - 0.5, 0.51,
                                 "a label away from the edges stays centred: " + label.text)
            }
            compare(labelOf(ticks[ticks.length - 1]), "8.00 M")
            const last = findChild(ticks[ticks.length - 1], "tickLabel")
            fuzzyCompare(last.mapToItem(axis, 0, 0).x + last.width, axis.width, 1e-9, "the last label ends at the edge")
        }

        function test_x_labels_never_overlap_data() {
            const origin = new Date(2026, 10, 22, 23, 59, 0)
            return [
                { tag: "short labels all show", width: 700, rect: Qt.rect(0, 0, 1000, 1), allShown: true },
                { tag: "long numbers beside the first label moved inside give way to it",
                  width: 528, rect: Qt.rect(10000000, 0, 1300, 1), text: v => v.toFixed(1), allShown: false },
                { tag: "long numbers beside the last label give way to it",
                  width: 528, rect: Qt.rect(9998700, 0, 1300, 1), text: v => v.toFixed(1), allShown: false },
                { tag: "dated labels across midnight keep apart", width: 400, rect: Qt.rect(0, 0, 120, 1),
                  format: "datetime", origin: origin, allShown: true },
                { tag: "two wide labels show only the first", width: 150, rect: Qt.rect(0, 0, 1000, 1),
                  text: v => "sample number " + v, allShown: false }
            ]
        }

        function test_x_labels_never_overlap(row) {
            const properties = { width: row.width, rectArea: row.rect }
            if (row.text)
                properties.axisTextFunc = row.text
            if (row.format) {
                properties.labelFormat = row.format
                properties.timeOrigin = row.origin
            }
            const axis = createTemporaryObject(xAxisComponent, top, properties)
            const labels = ticksOf(axis).map(tick => findChild(tick, "tickLabel"))
            verify(labels.length >= 2, labels.length + " ticks")
            verify(labels[0].visible, "the first label shows")
            const shown = labels.filter(label => label.visible)
            compare(shown.length === labels.length, row.allShown, shown.length + " of " + labels.length + " labels show")
            let right = -Infinity
            for (const label of shown) {
                const left = label.mapToItem(axis, 0, 0).x
                verify(left >= right + 2, label.text + " starts at " + left + ", the label before it ends at " + right)
                verify(left >= -1e-9 && left + label.width <= axis.width + 1e-9, label.text + " inside the axis")
                right = left + label.width
            }
        }

        function test_x_label_formats_data() {
            const origin = new Date(2026, 10, 22, 23, 59, 0)
            return [
                { tag: "plain numbers at whole steps", format: "plain", rect: Qt.rect(0, 0, 10, 1),
                  labels: ["0", "1", "2", "3"] },
                { tag: "plain numbers without float noise", format: "plain", rect: Qt.rect(0, 0, 1, 1),
                  labels: ["0", "0.1", "0.2", "0.3"] },
                { tag: "seconds across midnight show the date where it changes", format: "datetime", origin: origin,
                  rect: Qt.rect(0, 0, 120, 1),
                  labels: ["2026-11-22 23:59:00", "23:59:30", "2026-11-23 00:00:00", "00:00:30"] },
                { tag: "days show dates only", format: "datetime", origin: origin, rect: Qt.rect(60, 0, 864000, 1),
                  labels: ["2026-11-23", "2026-11-25", "2026-11-27"] },
                { tag: "sub-second steps show their digits", format: "datetime", origin: origin,
                  rect: Qt.rect(0.5, 0, 0.002, 1),
                  labels: ["2026-11-22 23:59:00.5000", "23:59:00.5005", "23:59:00.5010"] },
                { tag: "SI stays the default", format: "si", rect: Qt.rect(0, 0, 1000, 1),
                  labels: ["0", "125.00", "250.00"] }
            ]
        }

        function test_x_label_formats(row) {
            const properties = { width: 700, rectArea: row.rect, labelFormat: row.format }
            if (row.origin)
                properties.timeOrigin = row.origin
            const axis = createTemporaryObject(xAxisComponent, top, properties)
            compare(ticksOf(axis).map(labelOf).slice(0, row.labels.length), row.labels)
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

        function test_signed_y_ticks_data() {
            return [
                { tag: "a range from -1.3 to 1.3 ticks every half unit from -1",
                  height: 400, tickHeight: 50, rect: Qt.rect(0, -1.3, 10, 2.6), log: false, step: 0.5,
                  values: [-1, -0.5, 0, 0.5, 1], labels: ["-1", "-0.5", "0", "0.5", "1"] },
                { tag: "an all-negative range ticks below zero only, without float noise",
                  height: 400, tickHeight: 50, rect: Qt.rect(0, -1.05, 10, 1), log: false, step: 0.2,
                  values: [-1, -0.8, -0.6, -0.4, -0.2], labels: ["-1", "-0.8", "-0.6", "-0.4", "-0.2"] },
                { tag: "a range far above zero ticks from its bottom",
                  height: 300, tickHeight: 50, rect: Qt.rect(0, 1000.3, 10, 2), log: false, step: 0.5,
                  values: [1000.5, 1001, 1001.5, 1002], labels: ["1000.5", "1001", "1001.5", "1002"] },
                { tag: "a wide range steps by round ten thousands",
                  height: 400, tickHeight: 50, rect: Qt.rect(0, -12345, 10, 50000), log: false, step: 10000,
                  values: [-10000, 0, 10000, 20000, 30000], labels: ["-10000", "0", "10000", "20000", "30000"] },
                { tag: "a taller tick height takes a wider step",
                  height: 400, tickHeight: 100, rect: Qt.rect(0, -1.3, 10, 2.6), log: false, step: 1,
                  values: [-1, 0, 1], labels: ["-1", "0", "1"] },
                { tag: "ticks on both edges of the range are kept",
                  height: 400, tickHeight: 50, rect: Qt.rect(0, -2, 10, 4), log: false, step: 0.5,
                  values: [-2, -1.5, -1, -0.5, 0, 0.5, 1, 1.5, 2],
                  labels: ["-2", "-1.5", "-1", "-0.5", "0", "0.5", "1", "1.5", "2"] },
                { tag: "log scale writes the signed exponents as powers of ten",
                  height: 300, tickHeight: 50, rect: Qt.rect(0, -2.3, 10, 5), log: true, step: 1,
                  values: [-2, -1, 0, 1, 2],
                  labels: ["10<sup>-2</sup>", "10<sup>-1</sup>", "10<sup>0</sup>", "10<sup>1</sup>", "10<sup>2</sup>"] }
            ]
        }

        // Whether step is 1, 2 or 5 times a power of ten.
        function isRoundStep(step) {
            const exponent = Math.floor(Math.log10(step) + 1e-9)
            const mantissa = step / Math.pow(10, exponent)
            return [1, 2, 5].some(m => Math.abs(mantissa - m) < 1e-9)
        }

        function test_signed_y_ticks(row) {
            const axis = createTemporaryObject(yAxisComponent, top, {
                width: 500, height: row.height, tickHeight: row.tickHeight, rectArea: row.rect,
                isLogScale: row.log, includeZero: false })
            const bottom = row.rect.y
            const topValue = row.rect.y + row.rect.height
            const step = axis.dyTicks
            compare(step, row.step, "step")
            verify(isRoundStep(step), "1, 2 or 5 times a power of ten")
            verify(step / row.rect.height * row.height >= row.tickHeight - 1e-9, "ticks at least tickHeight apart")
            // The next smaller round step would crowd the ticks.
            const smaller = step / (isRoundStep(step / 2) ? 2 : 2.5)
            verify(smaller / row.rect.height * row.height < row.tickHeight, "the smallest step that fits")
            const ticks = ticksOf(axis)
            compare(ticks.map(t => t.value), row.values, "tick values")
            verify(ticks[0].value >= bottom, "first tick at or above the bottom")
            verify(ticks[0].value - step < bottom, "no room for a tick below the first")
            verify(ticks[ticks.length - 1].value + step > topValue, "no room for a tick above the last")
            for (let i = 0; i < ticks.length; ++i) {
                const value = ticks[i].value
                verify(value >= bottom && value <= topValue, "tick " + i + " inside the range")
                fuzzyCompare(value / step, Math.round(value / step), 1e-9, "tick " + i + " a multiple of the step")
                fuzzyCompare(ticks[i].y, row.height - (value - bottom) / row.rect.height * row.height, 1e-9,
                             "line " + i)
                compare(ticks[i].width, 500, "lines cross the whole axis")
                compare(labelOf(ticks[i]), row.labels[i], "label " + i)
                verify(ticks[i].visible, "line " + i + " shown")
            }
        }

        function test_signed_labels_use_the_text_function() {
            const axis = createTemporaryObject(yAxisComponent, top, {
                width: 500, height: 400, rectArea: Qt.rect(0, -1.05, 10, 1), includeZero: false,
                axisTextFunc: Utils.format_event })
            compare(ticksOf(axis).map(labelOf), ["-1.00", "-0.80", "-0.60", "-0.40", "-0.20"])
        }

        function test_signed_axis_without_room_draws_nothing_data() {
            return [
                { tag: "a signed axis shorter than tickHeight has no tick",
                  height: 49, rect: Qt.rect(0, -1.3, 10, 2.6) },
                { tag: "a signed axis over an empty range has no tick",
                  height: 400, rect: Qt.rect(0, -1, 10, 0) }
            ]
        }

        function test_signed_axis_without_room_draws_nothing(row) {
            const axis = createTemporaryObject(yAxisComponent, top, {
                width: 500, height: row.height, rectArea: row.rect, includeZero: false })
            compare(axis.yTicks, 0)
            compare(ticksOf(axis).length, 0)
        }

        function test_zero_based_ticks_are_kept_data() {
            return [
                { tag: "a signed range still ticks from zero by default",
                  height: 400, rect: Qt.rect(0, -1.3, 10, 2.6), set: false },
                { tag: "includeZero on ticks a signed range from zero",
                  height: 400, rect: Qt.rect(0, -1.3, 10, 2.6), set: true },
                { tag: "includeZero on keeps the power-of-two steps",
                  height: 300, rect: Qt.rect(0, 0, 1000, 1000), set: true },
                { tag: "includeZero on keeps the tick cap",
                  height: 100, rect: Qt.rect(0, 0, 3, 3), set: true }
            ]
        }

        function test_zero_based_ticks_are_kept(row) {
            const properties = { width: 500, height: row.height, rectArea: row.rect }
            if (row.set)
                properties.includeZero = true
            const axis = createTemporaryObject(yAxisComponent, top, properties)
            verify(axis.includeZero, "on by default")
            // Ticks i × step from 0, as many as fit the height and the tick cap.
            const maxTicks = Math.floor(row.height / 50)
            const step = Utils.tickStep(row.rect.height, maxTicks)
            const count = Math.min(Math.floor(row.rect.height / step) + 1, maxTicks)
            compare(axis.dyTicks, step, "step")
            const ticks = ticksOf(axis)
            compare(ticks.length, count, "line count")
            for (let i = 0; i < count; ++i) {
                compare(ticks[i].value, i * step, "value " + i)
                compare(ticks[i].y, row.height - i * step / row.rect.height * row.height, "line " + i)
                compare(labelOf(ticks[i]), String(i * step), "label " + i)
            }
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
