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

    function test_round_tick_step_data() {
        return [
            { tag: "2.6 over 8 ticks steps by a half", span: 2.6, ticks: 8, step: 0.5 },
            { tag: "1 over 8 ticks steps by two tenths", span: 1, ticks: 8, step: 0.2 },
            { tag: "4 over 8 ticks steps by exactly a half", span: 4, ticks: 8, step: 0.5 },
            { tag: "a fraction of a tick count is honoured", span: 10, ticks: 7.5, step: 2 },
            { tag: "7 over 1 tick steps by ten", span: 7, ticks: 1, step: 10 },
            { tag: "50000 over 8 ticks steps by ten thousand", span: 50000, ticks: 8, step: 10000 },
            { tag: "3e-7 over 6 ticks steps by 5e-8", span: 3e-7, ticks: 6, step: 5e-8 },
            { tag: "an empty span has no step", span: 0, ticks: 8, step: NaN },
            { tag: "no tick room has no step", span: 1, ticks: 0, step: NaN }
        ]
    }

    function test_round_tick_step(row) {
        const step = Utils.roundTickStep(row.span, row.ticks)
        if (isNaN(row.step))
            verify(isNaN(step), "NaN, got " + step)
        else
            verify(step === row.step, "exactly " + row.step + ", got " + step)
    }

    function test_round_to_step_data() {
        return [
            { tag: "three steps of two tenths below zero", value: -3 * 0.2, step: 0.2, result: -0.6, text: "-0.6" },
            { tag: "a whole step keeps no decimals", value: 7 * 10000, step: 10000, result: 70000, text: "70000" },
            { tag: "tiny steps keep their decimals", value: 3 * 5e-8, step: 5e-8, result: 1.5e-7, text: "1.5e-7" },
            { tag: "minus zero is written as zero", value: -0 * 0.5, step: 0.5, result: 0, text: "0" }
        ]
    }

    function test_round_to_step(row) {
        const rounded = Utils.roundToStep(row.value, row.step)
        verify(rounded === row.result, "exactly " + row.result + ", got " + rounded)
        compare(String(rounded), row.text)
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
