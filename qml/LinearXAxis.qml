// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick 2.14
import QtQuick.Controls.Material 2.12
import "utils.js" as Utils

// Tick marks and labels under a chart for the data range rectArea.x .. right.
Item {
    id: xAxis

    // Under the Dark theme the theme's dividers and foreground; the greys of
    // the Light theme otherwise.
    readonly property bool darkTheme: Material.theme === Material.Dark
    property color axisLineColor: darkTheme ? Material.dividerColor : Material.color(Material.Grey, Material.Shade300)
    property color axisBaseColor: darkTheme ? Material.hintTextColor : Material.color(Material.Grey, Material.Shade400)
    property color axisTextColor: darkTheme ? Material.foreground : Material.color(Material.Grey, Material.Shade700)
    property rect rectArea
    // Value to label text; null selects format_num. Used by the "si" format.
    property var axisTextFunc: null
    property int textOffset: 1
    // "si": engineering steps and suffixes (or axisTextFunc), the default;
    // "plain": plain numbers at 1, 2 or 5 x 10^k; "datetime": x is seconds
    // since timeOrigin, labelled from microseconds to days at round time
    // steps, with the date where it changes.
    property string labelFormat: "si"
    property date timeOrigin: new Date(0)

    property real minTickWidth: 70
    readonly property bool datetime: labelFormat === "datetime"
    // Date labels are wider.
    readonly property real maxNumTick: width / (datetime ? Math.max(minTickWidth, 110) : minTickWidth)
    // Smallest data distance between two ticks, and the round step chosen above it.
    readonly property real minDxTick: rectArea.width / maxNumTick
    readonly property real dxTick: datetime ? Utils.timeTickStep(rectArea.width, maxNumTick)
                                 : labelFormat === "plain" ? Utils.roundTickStep(rectArea.width, maxNumTick)
                                 : Utils.tickStep(rectArea.width, maxNumTick)
    // Local seconds of x = 0 since the epoch: date ticks fall on round local times.
    readonly property real valueOrigin: datetime ? timeOrigin.getTime() / 1000 - timeOrigin.getTimezoneOffset() * 60 : 0
    readonly property real xTickOffset: Math.ceil((rectArea.x + valueOrigin) / dxTick - 1e-9) * dxTick - valueOrigin
    // NaN for a degenerate rectangle, which draws no tick.
    readonly property int xTicks: Math.floor((rectArea.width - xTickOffset + rectArea.x) / dxTick) + 1 || 0
    readonly property int tickCount: Math.floor(Math.max(Math.min(xTicks, maxNumTick), 0))
    // Per tick, its label's text and whether it shows (labelsThatFit).
    readonly property var tickLabels: labelsThatFit()

    implicitHeight: 8 + textOffset + tickMetrics.height

    function format_num(num, decimals = 2) {
        return Utils.formatSmall(num, decimals, ["e-18", "e-15", "e-12", "e-9", "e-6", "e-3", ""])
    }

    // The label of tick index, at value.
    function label(value, index = 0) {
        if (datetime)
            return Utils.timeLabel(timeOrigin, value, dxTick, index === 0)
        if (labelFormat === "plain")
            return String(Utils.roundToStep(value, dxTick))
        // Called through a local: the property is a var, not a method.
        const format = axisTextFunc
        return format ? format(value) : format_num(value)
    }

    // The first label and the last (both kept inside the axis) always show,
    // the last unless it would touch the first; a label between them shows
    // where it keeps a gap to the label shown before it and to the last.
    function labelsThatFit() {
        const gap = 4
        const labels = []
        for (let i = 0; i < tickCount; ++i) {
            const value = xTickOffset + i * dxTick
            const text = label(value, i)
            const textWidth = tickMetrics.advanceWidth(text)
            const left = Utils.bound(toPixels(value - rectArea.x) - textWidth / 2, 0, width - textWidth)
            labels.push({ text: text, shown: true, left: left, right: left + textWidth })
        }
        if (tickCount < 2)
            return labels
        const last = labels[tickCount - 1]
        last.shown = last.left >= labels[0].right + gap
        let shownRight = labels[0].right
        for (const between of labels.slice(1, -1)) {
            between.shown = between.left >= shownRight + gap && (!last.shown || between.right + gap <= last.left)
            if (between.shown)
                shownRight = between.right
        }
        return labels
    }

    // Maps a data span onto the axis' pixels.
    function toPixels(span) {
        return span / rectArea.width * width
    }

    FontMetrics {
        id: tickMetrics
        font.pointSize: 9
    }

    Item {
        id: ticks
        x: xAxis.toPixels(xAxis.xTickOffset - xAxis.rectArea.x) || 0

        Repeater {
            objectName: "ticks"
            model: xAxis.tickCount

            Rectangle {
                required property int index
                readonly property real value: xAxis.xTickOffset + index * xAxis.dxTick

                x: xAxis.toPixels(index * xAxis.dxTick)
                width: 1
                height: 8
                color: xAxis.axisBaseColor

                Text {
                    objectName: "tickLabel"
                    // The tick's x in the axis: a label centred under it that
                    // would stick out of the axis is moved inside instead.
                    readonly property real tickX: ticks.x + parent.x

                    x: Utils.bound(-width / 2, -tickX, xAxis.width - tickX - width)
                    y: parent.height + xAxis.textOffset
                    // The repeater may build a tick before the labels follow its count.
                    readonly property var tickLabel: xAxis.tickLabels[parent.index]
                    visible: tickLabel ? tickLabel.shown : false
                    font.pointSize: 9
                    color: xAxis.axisTextColor
                    text: tickLabel ? tickLabel.text : ""
                }
            }
        }
    }
}
