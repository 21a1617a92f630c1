// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick 2.14
import QtQuick.Controls 2.12
import QtQuick.Controls.Material 2.12
import VexalPlugin 1.0
import "utils.js" as Utils

// An overview strip under the main chart: its own chart shows the whole data
// (or, when the main zoom is narrow, enough around it to keep the band at
// least minWidth pixels wide); the band marks the main zoom and moves or
// stretches it; the scroll bar and the wheel scroll the overview.
Item {
    id: flickable

    property var mainChartArea: null
    property alias navChart: navigator
    readonly property real flickRatio: width / mainRect.width

    // The main chart's rectangles, with a unit square while there is no chart.
    readonly property rect mainRect: mainChartArea ? mainChartArea.chartRect : Qt.rect(0, 0, 1, 1)
    readonly property rect mainZoom: mainChartArea ? mainChartArea.zoomRect : Qt.rect(0, 0, 1, 1)
    readonly property rect navRect: navigator.chartRect
    readonly property rect navZoom: navigator.zoomRect

    clip: true
    onWidthChanged: navigator.recalcWidth()

    // Data distance covered by a number of the bar's pixels in the overview.
    function toData(pixels) {
        return pixels / width * navZoom.width
    }

    // The user moved the main chart's zoom with the bar.
    signal userZoomed()

    function setMainZoom(x, y, width) {
        if (!mainChartArea)
            return
        mainChartArea.zoomRect = Qt.rect(x, y, width, mainZoom.height)
        userZoomed()
    }

    // Moves the overview so that its zoom starts at x, kept inside its chart.
    function scrollOverview(x) {
        const left = Utils.bound(x, navRect.left, navRect.right - navZoom.width)
        navigator.zoomRect = Qt.rect(left, navZoom.y, navZoom.width, navZoom.height)
    }

    // Centres the scroll bar on barX, a position in the bar's pixels.
    function scrollTo(barX) {
        scrollOverview((barX - scrollbar.width / 2) / width * navRect.width + navRect.left)
    }

    Connections {
        target: flickable.mainChartArea
        // New data extents: fit the overview to them again.
        function onChartRectChanged() { navigator.recalcWidth() }
    }

    Connections {
        target: navigator
        // The data of the overview's own plotters grew or changed.
        function onChartRectChanged() { navigator.recalcWidth() }
    }

    Repeater {
        model: [0, flickable.height - 1]
        Rectangle {
            required property real modelData
            y: modelData
            width: flickable.width
            height: 1
            color: Material.color(Material.Grey, Material.Shade300)
        }
    }

    Rectangle {
        id: track
        objectName: "track"
        readonly property color shade: Material.color(Material.Grey, Material.Shade400)
        anchors.bottom: parent.bottom
        width: flickable.width
        height: 6
        radius: 3
        z: 900
        color: Qt.rgba(shade.r, shade.g, shade.b, 0.5)
        visible: scrollbar.visible

        MouseArea {
            anchors.fill: parent
            onClicked: (mouse) => flickable.scrollTo(mouse.x)
        }
    }

    Rectangle {
        id: scrollbar
        objectName: "scrollbar"
        anchors.bottom: parent.bottom
        width: Math.max(flickable.width * flickable.navZoom.width / flickable.navRect.width, 40)
        height: 6
        radius: 3
        z: 1000
        color: Material.primary
        // NaN while the overview shows everything, and then the bar is hidden.
        x: (flickable.navZoom.x - flickable.navRect.x) / (flickable.navRect.width - flickable.navZoom.width)
           * (flickable.width - width) || 0
        visible: width < 0.999 * flickable.width

        MouseArea {
            anchors.fill: parent
            onMouseXChanged: if (pressed) flickable.scrollTo(scrollbar.x + mouseX)
        }
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.MiddleButton
        propagateComposedEvents: true
        onWheel: (wheel) => {
            if (scrollbar.visible)
                flickable.scrollOverview(flickable.navZoom.left + flickable.toData(wheel.angleDelta.y))
        }
    }

    ChartArea {
        id: navigator
        objectName: "navigator"

        // Narrowest band, in pixels, before the overview zooms in around it.
        property real minWidth: 75

        anchors.fill: parent
        adaptChartHeight: false
        // Without plotters of its own the overview spans the main chart's data.
        adaptAreaToPlotters: plotter.length > 0

        Binding on chartRect {
            when: !navigator.adaptAreaToPlotters
            value: flickable.mainRect
            // Plotters listed here take over from the data rectangle they find.
            restoreMode: Binding.RestoreNone
        }

        function recalcWidth() {
            const main = flickable.mainZoom
            if (main.width / flickable.mainRect.width * flickable.width >= minWidth) {
                resetZoomView()
                return
            }
            const zoom = flickable.navZoom
            const w = main.width * flickable.width / minWidth
            const candidate = Qt.rect(zoom.left, zoom.y, w, zoom.height)
            if (main.left < candidate.right && main.right > candidate.left) {
                zoomRect = candidate
                return
            }
            const middle = main.left + main.width / 2
            const x = Math.min(Math.max(middle - w / 2, flickable.navRect.left), flickable.navRect.right - w)
            zoomRect = Qt.rect(x, zoom.y, w, zoom.height)
        }

        MouseArea {
            id: navMA
            objectName: "navMA"

            readonly property real mouseDx: 10
            readonly property real minRectWidth: 3 * mouseDx
            property real old_x: 0

            anchors.fill: parent
            hoverEnabled: true
            cursorShape: nearEdge(mouseX) ? Qt.SizeHorCursor : Qt.ArrowCursor

            function nearEdge(x) {
                return Math.abs(x - navBarRect.x) < mouseDx
                       || Math.abs(x - navBarRect.x - navBarRect.width) < mouseDx
            }

            // The data x under the bar's pixel x.
            function dataX(x) {
                return flickable.toData(x) + flickable.navZoom.left
            }

            onPressed: (mouse) => {
                old_x = mouse.x
                if (Math.abs(mouse.x - navBarRect.x) < mouseDx)
                    state = "stretchLeft"
                else if (Math.abs(mouse.x - navBarRect.x - navBarRect.width) < mouseDx)
                    state = "stretchRight"
                else
                    state = "dragging"
            }

            onMouseXChanged: {
                if (state === "" || mouseX === old_x)
                    return
                const main = flickable.mainZoom
                // A stretched band keeps at least minRectWidth pixels.
                const minData = flickable.toData(minRectWidth)
                if (state === "dragging") {
                    const x = Utils.bound(dataX(mouseX) - main.width / 2,
                                          flickable.mainRect.left, flickable.mainRect.right - main.width)
                    flickable.setMainZoom(x, main.y, main.width)
                } else if (state === "stretchLeft") {
                    const x = Math.min(dataX(mouseX), main.right - minData)
                    flickable.setMainZoom(x, 0, main.right - x)
                } else {
                    const x = Math.max(dataX(mouseX), main.left + minData)
                    flickable.setMainZoom(main.left, 0, x - main.left)
                }
                old_x = mouseX
            }

            onReleased: {
                state = ""
                navigator.recalcWidth()
            }

            // The band gesture under way, chosen at the press.
            states: [
                State { name: "dragging" },
                State { name: "stretchLeft" },
                State { name: "stretchRight" }
            ]

            Rectangle {
                id: navBarRect
                objectName: "navBarRect"
                readonly property real x1: (flickable.mainZoom.x - flickable.navZoom.x) / flickable.navZoom.width * navigator.width
                readonly property real x2: (flickable.mainZoom.right - flickable.navZoom.x) / flickable.navZoom.width * navigator.width
                x: Utils.bound(x1, -100, navigator.width + 100)
                width: Math.min(x2 - x, navigator.width)
                height: navigator.height
                color: "#4d4dc2e6"
            }
        }
    }
}
