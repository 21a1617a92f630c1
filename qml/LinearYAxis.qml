// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick 2.14
import QtQuick.Controls.Material 2.12
import "utils.js" as Utils

// Horizontal grid lines across a chart with their labels on the left. Tick
// values start at 0: the chart's zoom height rules keep the visible rectangle
// starting there.
Item {
    id: yAxisNew

    property color axisLineColor: Material.color(Material.Grey, Material.Shade300)
    property color axisBaseColor: Material.color(Material.Grey, Material.Shade400)
    property color axisTextColor: Material.color(Material.Grey, Material.Shade700)
    property rect rectArea
    // Value to label text; null writes the value itself.
    property var axisTextFunc: null
    property int textOffset: 16

    // In log scale the values are exponents of ten.
    property bool isLogScale: false
    property real tickHeight: 50
    readonly property int maxNumYTicks: Math.floor(height / tickHeight)
    // Smallest data distance between two ticks, and the round step chosen above it.
    readonly property real minDyTick: rectArea.height / maxNumYTicks
    readonly property real dyTicks: Utils.tickStep(rectArea.height, maxNumYTicks)
    // NaN for a degenerate rectangle, which draws no tick.
    readonly property int yTicks: Math.min(Math.floor(rectArea.height / dyTicks) + 1, maxNumYTicks) || 0

    z: -1

    function label(value) {
        const format = axisTextFunc
        const text = format ? format(value) : value
        // A unit letter in the text makes the exponent NaN; that label is kept.
        return isLogScale ? "10<sup>" + Math.floor(text) + "</sup>" : text
    }

    Repeater {
        objectName: "ticks"
        model: Math.max(yAxisNew.yTicks, 0)

        Rectangle {
            required property int index
            readonly property real value: index * yAxisNew.dyTicks

            y: yAxisNew.height - value / yAxisNew.rectArea.height * yAxisNew.height
            width: yAxisNew.width
            height: 1
            color: yAxisNew.axisLineColor
            visible: !yAxisNew.isLogScale || Number.isInteger(value)

            Text {
                anchors.right: parent.left
                anchors.rightMargin: yAxisNew.textOffset
                anchors.verticalCenter: parent.verticalCenter
                horizontalAlignment: Text.AlignRight
                textFormat: Text.RichText
                font.pointSize: 9
                color: yAxisNew.axisTextColor
                text: yAxisNew.label(parent.value)
            }
        }
    }
}
