// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Shapes 1.12
import Qt5Compat.GraphicalEffects

// A white speech bubble with a shadow: a rounded box on the upper y2 of the
// item and a triangle below it pointing down at the bottom centre.
Item {
    id: tooltip

    readonly property real y2: 0.8
    readonly property real delta: height * (1 - y2)
    property alias radius: bubble.radius

    implicitWidth: 110
    implicitHeight: 65

    layer.enabled: true
    layer.samples: 4
    layer.effect: DropShadow {
        horizontalOffset: 3
        verticalOffset: 3
        radius: 8.0
        samples: 17
        color: "#80000000"
    }

    Rectangle {
        id: bubble
        width: tooltip.width
        height: tooltip.height * tooltip.y2
        radius: 4
        color: "white"
    }

    Shape {
        anchors.fill: parent

        ShapePath {
            fillColor: bubble.color
            fillRule: ShapePath.WindingFill
            strokeColor: "transparent"
            startX: (tooltip.width - tooltip.delta) / 2
            startY: bubble.height
            PathLine { x: (tooltip.width + tooltip.delta) / 2; y: bubble.height }
            PathLine { x: tooltip.width / 2; y: tooltip.height }
            PathLine { x: (tooltip.width - tooltip.delta) / 2; y: bubble.height }
        }
    }
}
