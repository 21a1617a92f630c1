// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15
import VexalPlugin 1.0
import "qrc:/qml/Legend"

Item {
    id: top
    width: 800
    height: 400

    Component {
        id: plotterComponent
        BarPlotter {}
    }

    Component {
        id: legendComponent
        HorizontalLegend {}
    }

    TestCase {
        name: "HorizontalLegend"
        when: windowShown

        function init() {
            failOnWarning(/.*/)
        }

        function makePlotters(count, name = i => "series " + i) {
            const plotters = []
            for (let i = 0; i < count; ++i)
                plotters.push(createTemporaryObject(plotterComponent, top, { name: name(i) }))
            return plotters
        }

        function makeLegend(count, width, name) {
            const legend = createTemporaryObject(legendComponent, top, { width: width, plotterList: makePlotters(count, name) })
            legend.height = Qt.binding(() => legend.implicitHeight)
            tryVerify(() => findChild(legend, "colorDot" + (count - 1)) !== null, 1000, "rows made")
            return legend
        }

        function entryOf(legend, i) {
            return findChild(legend, "colorDot" + i).parent.parent.parent
        }

        function test_entries_are_as_wide_as_their_names_data() {
            return [
                { tag: "5 plotters in 800 pixels fit one row", count: 5, width: 800, rows: 1 },
                { tag: "2 plotters in 800 pixels take only their own width", count: 2, width: 800, rows: 1 },
                { tag: "5 plotters in 250 pixels wrap into rows", count: 5, width: 250, rows: 3 }
            ]
        }

        function test_entries_are_as_wide_as_their_names(row) {
            const legend = makeLegend(row.count, row.width)
            const grid = findChild(legend, "legendGrid")
            let total = 0
            for (let i = 0; i < row.count; ++i) {
                const entry = entryOf(legend, i)
                const name = findChild(legend, "legendName" + i)
                compare(name.text, "series " + i)
                verify(!name.truncated, "a short name is shown whole")
                compare(entry.width, entry.fixedWidth + name.implicitWidth, "entry " + i + " as wide as its name")
                total += entry.width
            }
            compare(grid.width, Math.min(row.width, total), "the entries side by side, or the legend's width")
            fuzzyCompare(grid.x, (row.width - grid.width) / 2, 0.5, "centred to the pixel")
            compare(legend.implicitHeight, 30 * row.rows, "content height")
        }

        function test_long_names_elide_with_the_whole_name_in_a_tooltip() {
            const longName = "channel 1 (noisy) of the second detector stack, raw"
            const legend = makeLegend(2, 800, i => i === 0 ? longName : "short")
            const name = findChild(legend, "legendName0")
            verify(name.truncated, "the long name is elided")
            compare(name.width, legend.maxNameWidth)
            compare(entryOf(legend, 0).width, entryOf(legend, 0).fixedWidth + legend.maxNameWidth)
            verify(!findChild(legend, "legendName1").truncated, "the short name is whole")
            mouseMove(name, 10, 5)
            const tip = findChild(entryOf(legend, 0), "nameToolTip")
            tryCompare(tip, "visible", true)
            compare(tip.contentItem.text, longName)
            // A wider maximum shows it whole.
            legend.maxNameWidth = 1000
            verify(!name.truncated, "shown whole once it fits")
        }

        function test_colour_dialog_data() {
            return [
                { tag: "accepting recolours the chosen plotter", index: 1, accept: true, expected: "#ff0000" },
                { tag: "rejecting keeps the colour", index: 1, accept: false, expected: "#07cbf2" }
            ]
        }

        function test_colour_dialog(row) {
            const legend = makeLegend(3, 500)
            const dialog = findChild(legend, "colorDialog")
            mouseClick(findChild(legend, "colorDot" + row.index))
            compare(legend.currColorSelected, row.index)
            tryCompare(dialog, "visible", true)
            dialog.selectedColor = "#ff0000"
            if (row.accept)
                dialog.accept()
            else
                dialog.reject()
            tryCompare(dialog, "visible", false)
            compare(legend.plotterList[row.index].color, row.expected)
            compare(legend.plotterList[0].color, "#07cbf2", "the other plotters keep theirs")
        }

        function test_hidden_plotter_dot_opens_no_dialog() {
            const legend = makeLegend(2, 500)
            legend.plotterList[0].visible = false
            mouseClick(findChild(legend, "colorDot0"))
            compare(legend.currColorSelected, -1)
            compare(findChild(legend, "colorDialog").visible, false)
        }

        function test_accepting_without_a_chosen_plotter_changes_nothing() {
            const legend = makeLegend(2, 500)
            const dialog = findChild(legend, "colorDialog")
            legend.currColorSelected = 5
            dialog.open()
            dialog.selectedColor = "#00ff00"
            dialog.accept()
            compare(legend.plotterList.map(p => String(p.color)), ["#07cbf2", "#07cbf2"])
        }
    }
}
