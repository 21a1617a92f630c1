// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Controls 2.12
import QtQuick.Controls.Material 2.12

// One legend row for the plotter modelData: its colour dot (click to recolour),
// its name (click to hide or show it) and its warning, if any.
Item {
    id: element

    required property var modelData
    required property int index
    readonly property bool shown: modelData.visible
    property alias colorMA: colorMouse

    implicitWidth: 135
    implicitHeight: 30

    Row {
        anchors.left: parent.left
        anchors.leftMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Rectangle {
            id: dot
            anchors.verticalCenter: parent.verticalCenter
            width: element.height / 3
            height: width
            radius: width / 2
            color: element.shown ? element.modelData.color
                                 : Material.color(Material.Grey, Material.Shade400)

            MouseArea {
                id: colorMouse
                objectName: "colorDot" + element.index
                anchors.fill: parent
                enabled: element.shown
                cursorShape: Qt.PointingHandCursor
            }
        }

        Item {
            width: 2
            height: 1
        }

        Label {
            id: nameLabel
            objectName: "legendName" + element.index
            anchors.verticalCenter: parent.verticalCenter
            text: element.modelData.name
            color: Material.color(Material.Grey, element.shown ? Material.Shade700 : Material.Shade400)

            MouseArea {
                id: nameMouse
                anchors.fill: parent
                hoverEnabled: true
                cursorShape: Qt.PointingHandCursor
                onClicked: element.modelData.visible = !element.modelData.visible
            }

            ToolTip {
                objectName: "nameToolTip"
                visible: nameMouse.containsMouse && element.shown
                         && element.modelData.legendToolTipText !== ""
                contentItem: Text {
                    text: element.modelData.legendToolTipText
                    color: "white"
                    horizontalAlignment: Text.AlignHCenter
                    font.family: "Monospace"
                }
            }
        }

        Item {
            objectName: "warningMark"
            anchors.verticalCenter: parent.verticalCenter
            width: nameLabel.height * 1.4
            height: width
            visible: element.modelData.warningMessage !== ""

            ColoredIcon {
                anchors.fill: parent
                sourceImage: "qrc:/resources/warning.svg"
                color: Material.color(Material.Orange, Material.Shade600)
            }

            MouseArea {
                id: warningMouse
                anchors.fill: parent
                hoverEnabled: true
            }

            ToolTip {
                objectName: "warningToolTip"
                visible: warningMouse.containsMouse
                text: element.modelData.warningMessage
            }
        }
    }
}
