// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15
import VexalPlugin 1.0
import "qrc:/qml"

Rectangle {
    id: top
    width: 200
    height: 150
    color: "#3050a0"

    Component {
        id: tooltipComponent
        ChartTooltip {
            x: 20
            y: 20
        }
    }

    TestCase {
        name: "ChartTooltip"
        when: windowShown

        function init() {
            failOnWarning(/.*/) // any warning fails
        }

        function test_geometry() {
            const tip = createTemporaryObject(tooltipComponent, top)
            compare(tip.width, 110)
            compare(tip.height, 65)
            compare(tip.y2, 0.8)
            compare(tip.delta, 13)
            compare(tip.radius, 4)
            verify(tip.layer.enabled)
        }

        function test_shape_data() {
            // Points of the window: the tooltip spans 20 .. 130 by 20 .. 85; its
            // box ends at y 72 and the triangle points down to (75, 85).
            return [
                { tag: "the box is white", x: 40, y: 40, white: true },
                { tag: "the triangle under the middle is white", x: 75, y: 78, white: true },
                { tag: "beside the triangle the background shows", x: 40, y: 80, white: false },
                { tag: "outside the box the background shows", x: 10, y: 40, white: false }
            ]
        }

        function test_shape(row) {
            createTemporaryObject(tooltipComponent, top)
            waitForRendering(top)
            const image = grabImage(top)
            const pixel = image.pixel(row.x, row.y)
            compare(Qt.colorEqual(pixel, "white"), row.white, String(pixel))
        }

        function test_shadow_darkens_below_the_box() {
            createTemporaryObject(tooltipComponent, top)
            waitForRendering(top)
            const image = grabImage(top)
            // 3 pixels below the box's bottom edge, left of the triangle.
            const shaded = image.pixel(40, 74)
            const plain = image.pixel(10, 140)
            verify(shaded.r < plain.r && shaded.g < plain.g && shaded.b < plain.b,
                   "shadow " + shaded + " over background " + plain)
        }
    }
}
