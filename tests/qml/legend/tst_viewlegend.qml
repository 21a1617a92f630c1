// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15
import VexalPlugin 1.0
import "qrc:/qml/Legend"

Item {
    id: top
    width: 500
    height: 400

    Component {
        id: plotterComponent
        BarPlotter {}
    }

    // Placed in the top-right corner, as over a chart.
    Component {
        id: legendComponent
        ViewLegend {
            anchors.right: parent.right
        }
    }

    TestCase {
        name: "ViewLegend"
        when: windowShown

        property var legend: null

        function init() {
            failOnWarning(/.*/)
            mouseMove(top, 10, 390)
            const plotters = ["a", "b"].map(n => createTemporaryObject(plotterComponent, top, { name: n }))
            legend = createTemporaryObject(legendComponent, top, { plotterList: plotters })
            verify(legend !== null)
        }

        // Hovers the corner square and waits for the legend to open.
        function open() {
            mouseMove(legend, 15, 15)
            tryCompare(legend, "state", "full_view")
            tryCompare(legend, "height", 300)
        }

        function test_starts_as_a_small_red_square() {
            compare(legend.state, "minimized")
            compare(legend.width, 30)
            compare(legend.height, 30)
            verify(legend.clip)
            verify(findChild(legend, "minimizedMark").visible)
        }

        function test_hover_opens_it() {
            mouseMove(legend, 15, 15)
            compare(legend.state, "full_view")
            tryCompare(legend, "height", 300)
            compare(legend.width, 200)
            verify(!findChild(legend, "minimizedMark").visible)
        }

        function test_leaving_folds_it() {
            open()
            mouseMove(top, 10, 390)
            compare(legend.state, "minimized")
            tryCompare(legend, "width", 30)
            compare(legend.height, 30)
        }

        function test_animation_order_data() {
            return [
                { tag: "opening widens and then lowers", from: "minimized", to: "full_view", order: ["width", "height"] },
                { tag: "closing raises and then narrows", from: "full_view", to: "minimized", order: ["height", "width"] }
            ]
        }

        function test_animation_order(row) {
            // A transition makes its animations when it first runs.
            open()
            mouseMove(top, 10, 390)
            tryCompare(legend, "width", 30)
            // A QML list property: copied to an array for find().
            const transition = Array.from(legend.transitions).find(t => t.from === row.from && t.to === row.to)
            verify(transition !== undefined)
            const steps = Array.from(transition.animations[0].animations)
            compare(steps.length, 2)
            for (let i = 0; i < steps.length; ++i) {
                compare(steps[i].property, row.order[i], "step " + i)
                compare(steps[i].duration, 200)
            }
        }

        function test_pin_keeps_it_open_data() {
            return [
                { tag: "pinned it stays open when the mouse leaves", pinned: true, state: "full_view" },
                { tag: "unpinned it folds when the mouse leaves", pinned: false, state: "minimized" }
            ]
        }

        function test_pin_keeps_it_open(row) {
            open()
            const pin = findChild(legend, "pin")
            if (row.pinned)
                mouseClick(pin)
            compare(pin.checked, row.pinned)
            mouseMove(top, 10, 390)
            compare(legend.state, row.state)
        }

        function test_open_legend_lists_the_plotters() {
            open()
            compare(legend.title.width, 170)
            compare(legend.list.width, 200)
            compare(legend.list.height, 60, "as high as its rows")
            compare(findChild(legend, "legendName1").text, "b")
            mouseClick(findChild(legend, "legendName1"))
            compare(legend.plotterList[1].visible, false)
        }
    }
}
