// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Controls.Material 2.12
import Qt5Compat.GraphicalEffects

// An icon drawn in one colour: the theme's foreground, its accent while
// hovered, or the colour given.
Item {
    id: icon

    property alias sourceImage: image.source
    property bool hoverable: false
    property bool hovered: false
    property alias mirror: image.mirror
    property alias sourceSize: image.sourceSize
    property alias color: overlay.color

    Image {
        id: image
        anchors.fill: parent
        visible: false
        fillMode: Image.PreserveAspectFit
        // Rounded, as a size in whole pixels.
        sourceSize.width: Math.round(icon.width)
        sourceSize.height: Math.round(icon.height)
    }

    ColorOverlay {
        id: overlay
        anchors.fill: image
        source: image
        color: icon.hovered ? icon.Material.accent : icon.Material.foreground
    }
}
