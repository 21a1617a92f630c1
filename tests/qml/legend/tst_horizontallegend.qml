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

        function makePlotters(count) {
            const plotters = []
            for (let i = 0; i < count; ++i)
                plotters.push(createTemporaryObject(plotterComponent, top, { name: "series " + i }))
            return plotters
        }

        function makeLegend(count, width) {
            const legend = createTemporaryObject(legendComponent, top, { width: width, plotterList: makePlotters(count) })
            legend.height = Qt.binding(() => legend.implicitHeight)
            // The grid makes its rows at its next layout.
            tryVerify(() => findChild(legend, "colorDot" + (count - 1)) !== null, 1000, "rows made")
            return legend
        }

        function test_grid_layout_data() {
            return [
                { tag: "5 plotters in 400 pixels lay out 2 columns of 3 rows", count: 5, width: 400, gridWidth: 270, height: 90 },
                { tag: "2 plotters in 800 pixels take only 2 cells", count: 2, width: 800, gridWidth: 270, height: 30 },
                { tag: "5 plotters in 800 pixels fit one row", count: 5, width: 800, gridWidth: 675, height: 30 },
                { tag: "a legend narrower than a cell shows none", count: 3, width: 100, gridWidth: 0, height: 0 }
            ]
        }

        function test_grid_layout(row) {
            const legend = makeLegend(row.count, row.width)
            const grid = findChild(legend, "legendGrid")
            compare(grid.width, row.gridWidth, "whole cells")
            fuzzyCompare(grid.x, (row.width - row.gridWidth) / 2, 0.5, "centred to the pixel")
            compare(legend.implicitHeight, row.height, "content height")
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
