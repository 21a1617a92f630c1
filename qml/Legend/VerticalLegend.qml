// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick 2.14
import QtQuick.Controls 2.12
import QtQuick.Controls.Material 2.12
import QtQuick.Dialogs
import "../utils.js" as Utils

// The plotters of plotterList in a column under a "Legend" title bar; the
// title bar can be dragged onto a LegendDropArea to move the legend there.
Rectangle {
    id: legend

    property alias plotterList: list.model
    // Index of the plotter whose colour the dialog is picking.
    property int currColorSelected: -1

    implicitWidth: 200
    implicitHeight: parent ? parent.height : 0
    color: Material.background

    Rectangle {
        id: titleBar
        width: legend.width
        height: 36
        z: 1
        color: legend.Material.primary
        // A drop moves the whole legend, not only its title bar.
        Drag.source: legend
        Drag.active: titleMouse.drag.active
        Drag.hotSpot: Qt.point(width / 2, height / 2)

        Label {
            anchors.left: parent.left
            anchors.leftMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Legend")
        }

        MouseArea {
            id: titleMouse
            anchors.fill: parent
            cursorShape: drag.active ? Qt.ClosedHandCursor : Qt.OpenHandCursor
            drag.target: titleBar
            onReleased: {
                titleBar.Drag.drop()
                titleBar.x = 0
                titleBar.y = 0
            }
        }
    }

    ListView {
        id: list
        y: 36
        width: legend.width
        height: legend.height - y
        clip: true
        delegate: LegendElement {
            width: list.width
            colorMA.onClicked: Utils.pickColor(legend, colorDialog, index)
        }
    }

    ColorDialog {
        id: colorDialog
        objectName: "colorDialog"
        // The flag works, but Qt 6.4's description of QtQuick.Dialogs lacks its type.
        options: ColorDialog.ShowAlphaChannel // qmllint disable type
        onAccepted: Utils.setPlotterColor(legend.plotterList, legend.currColorSelected, selectedColor)
    }
}
