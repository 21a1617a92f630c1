// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Controls 2.12
import QtQuick.Controls.Material 2.12

// One legend row for the plotter modelData: its colour dot (click to recolour),
// its name (click to hide or show it) and its warning, if any. The row is as
// wide as its name up to maxNameWidth; a longer name, or one that does not
// fit the row's width, is elided and shown whole in a tooltip.
Item {
    id: element

    required property var modelData
    required property int index
    readonly property bool shown: modelData.visible
    property alias colorMA: colorMouse
    property real maxNameWidth: 200
    // Everything in the row but the name: margins, dot, spacing, warning.
    readonly property real fixedWidth: 12 + dot.width + 6 + (warningMark.visible ? 2 + warningMark.width : 0) + 12

    implicitWidth: fixedWidth + Math.min(nameLabel.implicitWidth, maxNameWidth)
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
            width: Math.max(0, Math.min(implicitWidth, element.maxNameWidth, element.width - element.fixedWidth))
            elide: Text.ElideRight
            text: element.modelData.name
            // The theme's foreground and hint colour under the Dark theme.
            color: element.Material.theme === Material.Dark
                   ? (element.shown ? element.Material.foreground : element.Material.hintTextColor)
                   : Material.color(Material.Grey, element.shown ? Material.Shade700 : Material.Shade400)

            MouseArea {
                id: nameMouse
                anchors.fill: parent
                hoverEnabled: true
                cursorShape: Qt.PointingHandCursor
                onClicked: element.modelData.visible = !element.modelData.visible
            }

            ToolTip {
                id: nameToolTip
                objectName: "nameToolTip"
                readonly property string extra: element.modelData.legendToolTipText
                visible: nameMouse.containsMouse && element.shown && (nameLabel.truncated || extra !== "")
                contentItem: Text {
                    // An elided name first, whole.
                    text: nameLabel.truncated ? element.modelData.name + (nameToolTip.extra !== "" ? "\n" + nameToolTip.extra : "")
                                              : nameToolTip.extra
                    color: "white"
                    horizontalAlignment: Text.AlignHCenter
                    font.family: "Monospace"
                }
            }
        }

        Item {
            id: warningMark
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
