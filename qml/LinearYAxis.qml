// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick 2.14
import QtQuick.Controls.Material 2.12
import "utils.js" as Utils

// Horizontal grid lines across a chart with their labels on the left. With
// includeZero the tick values start at 0, as the chart's zoom height rules
// keep the visible rectangle starting there; without, they follow the visible
// range wherever it lies, negative values included.
Item {
    id: yAxisNew

    // Under the Dark theme the theme's dividers and foreground; the greys of
    // the Light theme otherwise.
    readonly property bool darkTheme: Material.theme === Material.Dark
    property color axisLineColor: darkTheme ? Material.dividerColor : Material.color(Material.Grey, Material.Shade300)
    property color axisBaseColor: darkTheme ? Material.hintTextColor : Material.color(Material.Grey, Material.Shade400)
    property color axisTextColor: darkTheme ? Material.foreground : Material.color(Material.Grey, Material.Shade700)
    property rect rectArea
    // Value to label text; null writes the value itself.
    property var axisTextFunc: null
    property int textOffset: 16

    // In log scale the values are exponents of ten.
    property bool isLogScale: false
    // false: ticks at round multiples of a 1, 2 or 5 × 10^k step across
    // rectArea, from its bottom (rectArea.y) to its top, of any sign.
    property bool includeZero: true
    property real tickHeight: 50
    readonly property int maxNumYTicks: Math.floor(height / tickHeight)
    // Smallest data distance between two ticks, and the round step chosen above it.
    readonly property real minDyTick: rectArea.height / maxNumYTicks
    readonly property real dyTicks: includeZero ? Utils.tickStep(rectArea.height, maxNumYTicks)
                                                : Utils.roundTickStep(rectArea.height, height / tickHeight)
    // Value at the axis' bottom edge, and the first tick's multiple of the step.
    readonly property real bottomValue: includeZero ? 0 : rectArea.y
    // A tick that misses the bottom by rounding noise only is kept.
    readonly property real firstTickIndex: includeZero ? 0 : Math.ceil(rectArea.y / dyTicks - 1e-9)
    // NaN for a degenerate rectangle, which draws no tick.
    readonly property int yTicks: (includeZero ? Math.min(Math.floor(rectArea.height / dyTicks) + 1, maxNumYTicks)
                                               : signedTickCount()) || 0

    z: -1

    // Multiples of the step up to the top edge; none on an axis shorter than
    // tickHeight. Ticks tickHeight apart fit at most maxNumYTicks + 1 times,
    // which also bounds the count where rectArea.y is too large for its height
    // to be told apart.
    function signedTickCount() {
        if (maxNumYTicks <= 0)
            return 0
        const lastIndex = Math.floor((rectArea.y + rectArea.height) / dyTicks + 1e-9)
        return Utils.bound(lastIndex - firstTickIndex + 1, 0, maxNumYTicks + 1)
    }

    function tickValue(index) {
        const value = (firstTickIndex + index) * dyTicks
        return includeZero ? value : Utils.roundToStep(value, dyTicks)
    }

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
            readonly property real value: yAxisNew.tickValue(index)

            y: yAxisNew.height - (value - yAxisNew.bottomValue) / yAxisNew.rectArea.height * yAxisNew.height
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
