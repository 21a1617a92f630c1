// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick 2.14
import QtQuick.Controls.Material 2.12

// A place along an edge where a dragged legend can be docked. While a legend
// is dragged over the drop area a container opens with a new legend of
// plotterList and the dragged one turns transparent; dropping destroys the
// dragged legend, so the legend has moved here, and leaving undoes it all.
// The drop area and the container lie after the edge, or before it when their
// extent is negative.
Item {
    id: dropRoot

    property bool hDirection: true
    property real extendLength: 60
    property real extendDropArea: 50
    property alias dropArea: area
    property var plotterList

    // The legend made for the drag under way, or docked here by a drop.
    property Item legend: null
    property bool docked: false
    // The dragged legend, transparent while the new one stands in for it.
    property Item dragSource: null

    implicitWidth: 0
    implicitHeight: 0

    function preview(source) {
        if (legend || !source)
            return
        const component = hDirection ? barComponent : columnComponent
        legend = component.createObject(container, { plotterList: plotterList })
        docked = false
        dragSource = source
        source.opacity = 0
    }

    function cancelPreview() {
        if (!legend || docked)
            return
        legend.destroy()
        legend = null
        if (dragSource)
            dragSource.opacity = 1
        dragSource = null
    }

    function dock(source) {
        if (!legend || docked || source === legend)
            return
        docked = true
        dragSource = null
        source.destroy()
    }

    DropArea {
        id: area
        x: dropRoot.hDirection ? 0 : Math.min(dropRoot.extendDropArea, 0)
        y: dropRoot.hDirection ? Math.min(dropRoot.extendDropArea, 0) : 0
        width: dropRoot.hDirection ? dropRoot.width : Math.abs(dropRoot.extendDropArea)
        height: dropRoot.hDirection ? Math.abs(dropRoot.extendDropArea) : dropRoot.height
        onEntered: (drag) => dropRoot.preview(drag.source)
        onExited: dropRoot.cancelPreview()
        onDropped: (drop) => dropRoot.dock(drop.source)
    }

    Item {
        id: container
        readonly property real extent: dropRoot.legend ? Math.abs(dropRoot.extendLength) : 0
        x: dropRoot.hDirection ? 0 : Math.min(dropRoot.extendLength, 0)
        y: dropRoot.hDirection ? Math.min(dropRoot.extendLength, 0) : 0
        width: dropRoot.hDirection ? dropRoot.width : extent
        height: dropRoot.hDirection ? extent : dropRoot.height
    }

    Component {
        id: barComponent

        // A horizontal legend with a handle that drags it to another drop area.
        Rectangle {
            id: bar
            property alias plotterList: barLegend.plotterList

            width: container.width
            height: container.height
            color: Material.background
            Drag.active: handle.drag.active
            Drag.hotSpot: Qt.point(handle.x + handle.width / 2, height / 2)

            Repeater {
                model: 2
                Rectangle {
                    required property int index
                    x: 12 + index * 6
                    y: 12
                    width: 3
                    height: bar.height - 24
                    color: handle.containsMouse ? bar.Material.accent : bar.Material.primary
                }
            }

            MouseArea {
                id: handle
                x: 12
                width: 9
                height: bar.height
                hoverEnabled: true
                cursorShape: Qt.OpenHandCursor
                drag.target: bar
                onReleased: {
                    bar.Drag.drop()
                    bar.x = 0
                    bar.y = 0
                }
            }

            HorizontalLegend {
                id: barLegend
                x: 21
                width: bar.width - x
                height: bar.height
            }
        }
    }

    Component {
        id: columnComponent
        VerticalLegend {}
    }
}
