// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick 2.14
import QtQuick.Controls 2.12
import QtQuick.Controls.Material 2.12
import QtQuick.Dialogs
import "../utils.js" as Utils

// A legend folded into a small square that opens while hovered or pinned.
// Its content is right-aligned, so it opens leftwards and downwards from the
// top-right corner of wherever it is placed.
Item {
    id: legend

    property real legendWidth: 200
    property real legendHeight: 270
    property real legendTitleHeight: 30
    property real elemHeight: 30
    property alias plotterList: list.model
    // Index of the plotter whose colour the dialog is picking.
    property int currColorSelected: -1
    property alias title: titleBar
    property alias list: list

    clip: true
    state: hoverArea.containsMouse || pin.checked ? "full_view" : "minimized"

    // Hover on any child keeps the legend open, so the content lives inside.
    MouseArea {
        id: hoverArea
        anchors.right: parent.right
        width: legend.legendWidth
        height: legend.legendTitleHeight + list.contentHeight
        hoverEnabled: true
        acceptedButtons: Qt.NoButton

        Rectangle {
            id: titleBar
            anchors.right: parent.right
            width: legend.legendWidth - legend.legendTitleHeight
            height: legend.legendTitleHeight
            color: legend.Material.primary

            Label {
                x: 12
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Legend")
            }

            CheckBox {
                id: pin
                objectName: "pin"
                anchors.right: parent.right
                anchors.rightMargin: 12
                width: legend.legendTitleHeight
                height: legend.legendTitleHeight
                padding: 0
            }
        }

        ListView {
            id: list
            anchors.top: titleBar.bottom
            anchors.right: parent.right
            width: legend.legendWidth
            height: contentHeight
            interactive: false
            delegate: LegendElement {
                width: list.width
                height: legend.elemHeight
                colorMA.onClicked: Utils.pickColor(legend, colorDialog, index)
            }
        }

        Rectangle {
            objectName: "minimizedMark"
            anchors.right: parent.right
            width: legend.legendTitleHeight
            height: width
            color: legend.Material.background
            visible: legend.state === "minimized"

            Rectangle {
                anchors.centerIn: parent
                width: parent.width / 2
                height: width
                color: "red"
            }
        }
    }

    ColorDialog {
        id: colorDialog
        objectName: "colorDialog"
        onAccepted: Utils.setPlotterColor(legend.plotterList, legend.currColorSelected, selectedColor)
    }

    states: [
        State {
            name: "minimized"
            PropertyChanges {
                target: legend
                width: legend.legendTitleHeight
                height: legend.legendTitleHeight
            }
        },
        State {
            name: "full_view"
            PropertyChanges {
                target: legend
                width: legend.legendWidth
                height: legend.legendHeight + legend.legendTitleHeight
            }
        }
    ]

    // Opening widens first and then lowers; closing does the reverse.
    transitions: [
        Transition {
            from: "minimized"
            to: "full_view"
            SequentialAnimation {
                NumberAnimation { property: "width"; duration: 200 }
                NumberAnimation { property: "height"; duration: 200 }
            }
        },
        Transition {
            from: "full_view"
            to: "minimized"
            SequentialAnimation {
                NumberAnimation { property: "height"; duration: 200 }
                NumberAnimation { property: "width"; duration: 200 }
            }
        }
    ]
}
