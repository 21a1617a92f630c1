// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15
import VexalPlugin 1.0
import "qrc:/qml"

// The view's titles: each shows its text beside the part it names and moves
// the chart over by its own height; empty titles take no room.
Item {
    id: scene
    width: 640
    height: 900

    Component {
        id: viewComponent

        VexalQML {
            width: 600
            height: 400
            updateIntervalMs: 0
        }
    }

    TestCase {
        name: "Titles"
        when: windowShown

        function test_titles_sit_beside_their_parts() {
            const plain = createTemporaryObject(viewComponent, scene)
            const titled = createTemporaryObject(viewComponent, scene,
                                                 { y: 450, title: "Detector rates", xTitle: "time", yTitle: "counts" })
            const chart = titled.refChartArea
            const plainChart = plain.refChartArea
            const title = findChild(titled, "title")
            const xTitle = findChild(titled, "xTitle")
            const yTitle = findChild(titled, "yTitle")
            compare(title.text, "Detector rates")
            compare(xTitle.text, "time")
            compare(yTitle.text, "counts")
            verify(title.visible && xTitle.visible && yTitle.visible)
            // Above, below and left of the chart, inside the view.
            verify(title.y + title.height <= chart.y, "the title above the chart")
            verify(xTitle.y >= chart.y + chart.height + 20, "the x title below the axis labels")
            verify(xTitle.y + xTitle.height <= titled.height, "the x title inside the view")
            const yTitleRight = yTitle.x + yTitle.width / 2 + yTitle.height / 2
            verify(yTitleRight <= chart.x - 40, "the y title left of the axis labels: " + yTitleRight + " " + chart.x)
            verify(yTitle.x + yTitle.width / 2 - yTitle.height / 2 >= 0, "the y title inside the view")
            // Each moves the chart by its own height.
            compare(chart.y - plainChart.y, title.height + 6)
            compare(chart.x - plainChart.x, yTitle.height + 6)
            compare(plainChart.height - chart.height, title.height + 6 + xTitle.height + 2)
        }

        function test_empty_titles_take_no_room() {
            const plain = createTemporaryObject(viewComponent, scene)
            const blank = createTemporaryObject(viewComponent, scene, { y: 450, title: "", xTitle: "", yTitle: "" })
            verify(!findChild(blank, "title").visible)
            verify(!findChild(blank, "xTitle").visible)
            verify(!findChild(blank, "yTitle").visible)
            compare(blank.refChartArea.x, plain.refChartArea.x)
            compare(blank.refChartArea.y, plain.refChartArea.y)
            compare(blank.refChartArea.width, plain.refChartArea.width)
            compare(blank.refChartArea.height, plain.refChartArea.height)
        }

        function test_titles_show_as_text_pixels() {
            const titled = createTemporaryObject(viewComponent, scene, { title: "WWWWWWWW" })
            const title = findChild(titled, "title")
            waitForRendering(titled)
            const image = grabImage(titled)
            let dark = 0
            for (let x = Math.floor(title.x); x < title.x + title.width; ++x) {
                for (let y = Math.floor(title.y); y < title.y + title.height; ++y) {
                    const c = image.pixel(x, y)
                    if (c.r < 0.5 && c.g < 0.5 && c.b < 0.5)
                        ++dark
                }
            }
            verify(dark > 20, "the title's text is drawn: " + dark + " dark pixels")
        }
    }
}
