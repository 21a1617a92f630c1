// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Dialogs
import QtTest 1.15
import VexalPlugin 1.0
import "qrc:/qml/Legend"

Item {
    id: top
    width: 400
    height: 300

    Component {
        id: plotterComponent
        BarPlotter {}
    }

    Component {
        id: legendComponent
        VerticalLegend {}
    }

    TestCase {
        name: "VerticalLegend"
        when: windowShown

        property var legend: null

        function init() {
            failOnWarning(/.*/)
            const plotters = ["a", "b", "c"].map(n => createTemporaryObject(plotterComponent, top, { name: n }))
            legend = createTemporaryObject(legendComponent, top, { plotterList: plotters })
            tryVerify(() => findChild(legend, "colorDot2") !== null, 1000, "rows made")
        }

        function test_fills_its_parent_height_under_a_title_bar() {
            compare(legend.width, 200)
            compare(legend.height, top.height)
            const first = findChild(legend, "legendName0")
            compare(first.text, "a")
            verify(first.mapToItem(legend, 0, 0).y >= 36, "rows start under the 36-pixel title bar")
        }

        function test_rows_list_the_plotters_in_order_data() {
            return [
                { tag: "the first row names the first plotter", index: 0, name: "a" },
                { tag: "the last row names the last plotter", index: 2, name: "c" }
            ]
        }

        function test_rows_list_the_plotters_in_order(row) {
            compare(findChild(legend, "legendName" + row.index).text, row.name)
        }

        function test_colour_dialog_shows_alpha_and_recolours() {
            const dialog = findChild(legend, "colorDialog")
            verify(dialog.options & ColorDialog.ShowAlphaChannel, "alpha channel shown")
            mouseClick(findChild(legend, "colorDot2"))
            compare(legend.currColorSelected, 2)
            tryCompare(dialog, "visible", true)
            dialog.selectedColor = Qt.rgba(0, 1, 0, 0.5)
            dialog.accept()
            tryCompare(dialog, "visible", false)
            compare(legend.plotterList[2].color, Qt.rgba(0, 1, 0, 0.5))
        }

        function test_clicking_a_name_hides_the_plotter() {
            mouseClick(findChild(legend, "legendName1"))
            compare(legend.plotterList.map(p => p.visible), [true, false, true])
        }
    }
}
