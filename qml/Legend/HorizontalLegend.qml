// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick 2.14
import QtQuick.Controls.Material 2.12
import QtQuick.Dialogs
import "../utils.js" as Utils

// The plotters of plotterList in rows of 135-pixel cells, centred.
Rectangle {
    id: legend

    property alias plotterList: grid.model
    // Index of the plotter whose colour the dialog is picking.
    property int currColorSelected: -1

    // The grid's content height, counted from its rows: a view as low as its
    // content lays out lazily and would report a stale one.
    implicitHeight: grid.columns > 0 ? Math.ceil(grid.count / grid.columns) * grid.cellHeight : 0
    color: Material.background

    GridView {
        id: grid
        objectName: "legendGrid"
        anchors.horizontalCenter: parent.horizontalCenter
        // As many whole cells as fit the legend or the plotters, whichever is less.
        readonly property int columns: Math.floor(Math.min(legend.width, cellWidth * count) / cellWidth)

        width: columns * cellWidth
        height: parent.height
        cellWidth: 135
        cellHeight: 30
        interactive: false

        delegate: LegendElement {
            width: grid.cellWidth
            height: grid.cellHeight
            clip: true
            colorMA.onClicked: Utils.pickColor(legend, colorDialog, index)
        }
    }

    ColorDialog {
        id: colorDialog
        objectName: "colorDialog"
        onAccepted: Utils.setPlotterColor(legend.plotterList, legend.currColorSelected, selectedColor)
    }
}
