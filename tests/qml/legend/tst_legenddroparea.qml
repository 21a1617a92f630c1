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

    // Cleared when the watched legend is destroyed.
    property Item watched: null

    Component {
        id: plotterComponent
        BarPlotter {}
    }

    Component {
        id: sourceComponent
        VerticalLegend {
            height: 150
        }
    }

    Component {
        id: dropComponent
        LegendDropArea {
            y: 250
            width: 400
        }
    }

    TestCase {
        name: "LegendDropArea"
        when: windowShown

        property var source: null
        property var target: null
        property var titleBar: null

        function init() {
            failOnWarning(/.*/)
            const plotters = ["a", "b"].map(n => createTemporaryObject(plotterComponent, top, { name: n }))
            source = createTemporaryObject(sourceComponent, top, { plotterList: plotters })
            target = createTemporaryObject(dropComponent, top, { plotterList: plotters })
            top.watched = source
            titleBar = source.children[0]
            compare(titleBar.height, 36)
        }

        // Drags the source's title bar by its middle towards a point of the
        // scene; the drag starts a few pixels short of it, after its threshold.
        function dragTitleTo(x, y) {
            mousePress(titleBar, 100, 18)
            for (let step = 1; step <= 10; ++step)
                mouseMove(titleBar.parent, 100 + (x - 100) * step / 10, 18 + (y - 18) * step / 10, -1, Qt.LeftButton)
            // Drag moves reach drop areas through posted events.
            wait(0)
        }

        function test_geometry_data() {
            return [
                { tag: "horizontally the drop area lies after the edge", h: true, drop: 50, area: [0, 0, 400, 50] },
                { tag: "a negative extent puts it before the edge", h: true, drop: -40, area: [0, -40, 400, 40] },
                { tag: "vertically it is a strip beside the edge", h: false, drop: 50, area: [0, 0, 50, 0] },
                { tag: "vertically a negative extent lies left of the edge", h: false, drop: -30, area: [-30, 0, 30, 0] }
            ]
        }

        function test_geometry(row) {
            target.hDirection = row.h
            target.extendDropArea = row.drop
            const area = target.dropArea
            compare([area.x, area.y, area.width, area.height], row.area)
            compare(target.implicitWidth, 0)
            compare(target.implicitHeight, 0)
        }

        function test_entering_opens_a_new_legend() {
            dragTitleTo(200, 285)
            verify(target.legend !== null, "a legend made in the container")
            compare(target.legend.plotterList, target.plotterList)
            compare(target.legend.height, 60, "the container opened by extendLength")
            compare(source.opacity, 0, "the dragged legend turns transparent")
            mouseRelease(titleBar.parent, 200, 285)
        }

        function test_leaving_undoes_the_preview() {
            dragTitleTo(200, 285)
            verify(target.legend !== null)
            mouseMove(titleBar.parent, 200, 100, -1, Qt.LeftButton)
            wait(0)
            compare(target.legend, null, "the new legend is gone")
            compare(source.opacity, 1, "the dragged legend is back")
            mouseRelease(titleBar.parent, 200, 100)
            compare(titleBar.y, 0, "the title bar returns to its legend")
        }

        function test_dropping_moves_the_legend() {
            dragTitleTo(200, 285)
            mouseRelease(titleBar.parent, 200, 285)
            tryCompare(top, "watched", null, 1000, "the dragged legend is destroyed")
            verify(target.legend !== null, "the new legend stays")
            compare(target.legend.height, 60)
        }

        function test_vertical_area_makes_a_vertical_legend() {
            target.hDirection = false
            target.height = 300
            target.extendLength = 200
            target.extendDropArea = 80
            target.x = 300
            target.y = 0
            dragTitleTo(330, 100)
            verify(target.legend !== null)
            compare(target.legend.width, 200)
            compare(target.legend.height, 300)
            compare(findChild(target.legend, "legendName1").text, "b")
            mouseRelease(titleBar.parent, 330, 100)
        }
    }
}
