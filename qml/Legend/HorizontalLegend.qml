// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick 2.14
import QtQuick.Controls.Material 2.12
import QtQuick.Dialogs
import "../utils.js" as Utils

// The plotters of plotterList in rows, each entry as wide as its name (up to
// maxNameWidth, beyond which the name elides), the rows centred as a block.
Rectangle {
    id: legend

    property alias plotterList: repeater.model
    // Index of the plotter whose colour the dialog is picking.
    property int currColorSelected: -1
    // The widest a name is shown before it elides.
    property real maxNameWidth: 200
    // The entries side by side, counted again when an entry's width changes.
    property real entriesWidth: 0

    function measure() {
        let total = 0
        for (let i = 0; i < repeater.count; ++i) {
            const entry = repeater.itemAt(i)
            total += entry ? entry.width : 0
        }
        entriesWidth = total
    }

    implicitHeight: repeater.count > 0 ? flow.implicitHeight : 0
    color: Material.background

    Flow {
        id: flow
        objectName: "legendGrid"
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(legend.width, legend.entriesWidth)
        height: parent.height

        Repeater {
            id: repeater
            onItemAdded: legend.measure()
            onItemRemoved: legend.measure()

            delegate: LegendElement {
                width: Math.min(implicitWidth, legend.width)
                height: 30
                clip: true
                maxNameWidth: legend.maxNameWidth
                colorMA.onClicked: Utils.pickColor(legend, colorDialog, index)
                onWidthChanged: legend.measure()
            }
        }
    }

    ColorDialog {
        id: colorDialog
        objectName: "colorDialog"
        onAccepted: Utils.setPlotterColor(legend.plotterList, legend.currColorSelected, selectedColor)
    }
}
