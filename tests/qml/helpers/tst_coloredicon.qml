// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Controls.Material 2.12
import QtTest 1.15
import VexalPlugin 1.0
import "qrc:/qml/Legend"

Rectangle {
    id: top
    width: 100
    height: 100
    color: "black"

    Component {
        id: iconComponent
        ColoredIcon {
            width: 48
            height: 48
            sourceImage: "qrc:/resources/warning.svg"
        }
    }

    TestCase {
        name: "ColoredIcon"
        when: windowShown

        function init() {
            failOnWarning(/.*/)
        }

        // The colour of the triangle's body, below its exclamation mark, in the window.
        function bodyColor(icon) {
            waitForRendering(top)
            return grabImage(top).pixel(icon.x + 12, icon.y + 40)
        }

        function test_tint_data() {
            return [
                { tag: "a given colour tints the icon", color: "#fb8c00", hovered: false, expected: "#fb8c00" },
                { tag: "without a colour it takes the foreground", color: undefined, hovered: false,
                  expected: top.Material.foreground },
                { tag: "hovered it takes the accent", color: undefined, hovered: true,
                  expected: top.Material.accent }
            ]
        }

        function test_tint(row) {
            const icon = createTemporaryObject(iconComponent, top, { hovered: row.hovered })
            if (row.color !== undefined)
                icon.color = row.color
            const pixel = bodyColor(icon)
            const expected = Qt.color(row.expected)
            fuzzyCompare(pixel.r, expected.r, 0.02, "red")
            fuzzyCompare(pixel.g, expected.g, 0.02, "green")
            fuzzyCompare(pixel.b, expected.b, 0.02, "blue")
        }

        function test_icon_keeps_its_cut_out_mark() {
            const icon = createTemporaryObject(iconComponent, top, { color: "white" })
            waitForRendering(top)
            // The exclamation mark is a hole in the one path: the background shows.
            compare(grabImage(top).pixel(24, 26), Qt.color("black"))
            compare(icon.sourceSize, Qt.size(48, 48))
            verify(!icon.hoverable)
        }
    }
}
