// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15
import VexalPlugin 1.0
import "qrc:/qml/utils.js" as Utils

TestCase {
    name: "Utils"

    Component {
        id: plotterComponent
        BarPlotter {}
    }

    function test_bound_data() {
        return [
            { tag: "a value inside the range is kept", val: 5, min: 0, max: 10, result: 5 },
            { tag: "a value below the range is raised to min", val: -3, min: 0, max: 10, result: 0 },
            { tag: "a value above the range is lowered to max", val: 12, min: 0, max: 10, result: 10 },
            { tag: "with min above max the result is max", val: 5, min: 10, max: 0, result: 0 }
        ]
    }

    function test_bound(row) {
        compare(Utils.bound(row.val, row.min, row.max), row.result)
    }

    function test_format_event_data() {
        return [
            { tag: "thousands get a K", val: 1500, text: "1.50K" },
            { tag: "millions get an M", val: 2500000, text: "2.50M" },
            { tag: "billions get a G", val: 3e9, text: "3.00G" },
            { tag: "a thousand exactly is 1.00K", val: 1000, text: "1.00K" },
            { tag: "small counts keep two decimals", val: 999, text: "999.00" },
            { tag: "negative counts are never scaled", val: -5000, text: "-5000.00" }
        ]
    }

    function test_format_event(row) {
        compare(Utils.format_event(row.val), row.text)
    }

    function test_describe_var_data() {
        return [
            { tag: "entries are padded to 20 characters under VALUES",
              args: [{ a: 1, speed: 2.5 }],
              text: "VALUES: \n  - a:              1\n  - speed:          2.5\n" },
            { tag: "the title and the padding can be chosen",
              args: [{ x: "on" }, "STATE", 8],
              text: "STATE: \n  - x:  on\n" },
            { tag: "a key longer than the padding is not cut",
              args: [{ averylongkeyname: 0 }, "T", 6],
              text: "T: \n  - averylongkeyname:0\n" }
        ]
    }

    function test_describe_var(row) {
        compare(Utils.describeVar(...row.args), row.text)
    }

    function test_var_to_string_returns_nothing() {
        compare(Utils.varToString({ a: 1 }), undefined)
    }

    function test_tick_step_data() {
        return [
            { tag: "1000 over 10 ticks steps by 125", span: 1000, ticks: 10, step: 125 },
            { tag: "1 over 4 ticks steps by a quarter", span: 1, ticks: 4, step: 0.25 },
            { tag: "2500 over 3 ticks steps by 1000", span: 2500, ticks: 3, step: 1000 },
            { tag: "300 over 7 ticks steps by 64", span: 300, ticks: 7, step: 64 }
        ]
    }

    function test_tick_step(row) {
        compare(Utils.tickStep(row.span, row.ticks), row.step)
    }

    function test_set_plotter_color_data() {
        return [
            { tag: "an index in the list recolours that plotter", index: 1, colors: ["#07cbf2", "#ff0000"] },
            { tag: "a negative index changes nothing", index: -1, colors: ["#07cbf2", "#07cbf2"] },
            { tag: "an index past the list changes nothing", index: 2, colors: ["#07cbf2", "#07cbf2"] }
        ]
    }

    function test_set_plotter_color(row) {
        const plotters = [createTemporaryObject(plotterComponent, this), createTemporaryObject(plotterComponent, this)]
        Utils.setPlotterColor(plotters, row.index, "#ff0000")
        compare(plotters.map(p => String(p.color)), row.colors)
    }
}
