// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls.Material 2.12
import QtTest 1.15
import VexalPlugin 1.0
import "qrc:/qml/Legend"

Item {
    id: top
    width: 300
    height: 200

    Component {
        id: plotterComponent
        BarPlotter {
            name: "voltage"
            color: "#2196f3"
        }
    }

    Component {
        id: elementComponent
        LegendElement {}
    }

    TestCase {
        name: "LegendElement"
        when: windowShown

        property var plotter: null
        property var element: null

        function init() {
            failOnWarning(/.*/)
            plotter = createTemporaryObject(plotterComponent, top)
            element = createTemporaryObject(elementComponent, top, { modelData: plotter, index: 0 })
            verify(element !== null)
        }

        function dot() {
            return findChild(element, "colorDot0").parent
        }

        function test_size_and_name() {
            // Margins of 12, the dot and 6 of spacing around the name.
            compare(element.fixedWidth, 40)
            compare(element.implicitWidth, 40 + findChild(element, "legendName0").implicitWidth)
            compare(element.implicitHeight, 30)
            compare(findChild(element, "legendName0").text, "voltage")
            compare(dot().width, 10, "a third of the row height")
            compare(dot().mapToItem(element, 0, 0).x, 12, "left margin")
        }

        function test_colours_follow_visibility_data() {
            return [
                { tag: "a visible plotter shows its colour and a dark name", visible: true,
                  dot: "#2196f3", name: Material.color(Material.Grey, Material.Shade700) },
                { tag: "a hidden plotter is greyed out", visible: false,
                  dot: Material.color(Material.Grey, Material.Shade400),
                  name: Material.color(Material.Grey, Material.Shade400) }
            ]
        }

        function test_colours_follow_visibility(row) {
            plotter.visible = row.visible
            compare(dot().color, row.dot)
            compare(findChild(element, "legendName0").color, row.name)
            compare(element.colorMA.enabled, row.visible, "the dot picks colours only while visible")
        }

        function test_clicking_the_name_toggles_the_plotter() {
            const name = findChild(element, "legendName0")
            mouseClick(name)
            compare(plotter.visible, false)
            mouseClick(name)
            compare(plotter.visible, true)
        }

        function test_warning_mark_data() {
            return [
                { tag: "an empty warning shows no mark", message: "", shown: false },
                { tag: "a warning shows the mark", message: "data dropped", shown: true }
            ]
        }

        function test_warning_mark(row) {
            plotter.warningMessage = row.message
            const mark = findChild(element, "warningMark")
            compare(mark.visible, row.shown)
            const name = findChild(element, "legendName0")
            compare(mark.width, name.height * 1.4)
        }

        function test_hovering_the_warning_shows_it() {
            plotter.warningMessage = "data dropped"
            const mark = findChild(element, "warningMark")
            const tip = findChild(element, "warningToolTip")
            mouseMove(mark, mark.width / 2, mark.height / 2)
            tryCompare(tip, "visible", true)
            compare(tip.text, "data dropped")
        }

        function test_name_tooltip_data() {
            return [
                { tag: "a tooltip text shows while hovering a visible plotter", text: "mean of 8", visible: true, shown: true },
                { tag: "no text shows no tooltip", text: "", visible: true, shown: false },
                { tag: "a hidden plotter shows no tooltip", text: "mean of 8", visible: false, shown: false }
            ]
        }

        function test_name_tooltip(row) {
            plotter.legendToolTipText = row.text
            plotter.visible = row.visible
            const name = findChild(element, "legendName0")
            mouseMove(name, name.width / 2, name.height / 2)
            const tip = findChild(element, "nameToolTip")
            tryCompare(tip, "visible", row.shown)
            if (row.shown) {
                compare(tip.contentItem.text, row.text)
                compare(tip.contentItem.color, "#ffffff")
                compare(tip.contentItem.font.family, "Monospace")
            }
        }
    }
}
