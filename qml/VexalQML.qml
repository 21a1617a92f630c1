// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.14
import QtQuick.Controls 2.12
import QtQuick.Controls.Material 2.12
import QtQuick.Shapes 1.12
import VexalPlugin 1.0
import "./Legend"
import "utils.js" as Utils

// A complete chart: the zoomable chart area with its axes, a navigator bar and
// a legend. Left-button gestures zoom (the direction of the drag chooses how),
// the middle and right buttons pan, Escape cancels a gesture. The wheel zooms
// around the cursor and pans with Shift, a pinch zooms, + and - zoom, the
// arrow keys pan and Home shows everything.
Item {
    id: vexal

    property alias refChartArea: chart
    property alias refNavigator: navBar.navChart
    property alias refChartMouse: zoomMouse
    property alias refLegend: legend
    property alias isYAxisLog: linearYAxis.isLogScale
    property alias updateIntervalMs: chart.updateIntervalMs
    // false: the zoom height spans the visible values of either sign and the
    // y axis follows it, for signals that swing around 0.
    property alias includeZero: chart.includeZero
    // The zoom follows data that grow to the right (ChartArea.follow). A zoom
    // or pan by the user turns it off; showing everything (the gesture,
    // showAll(), Home) or the follow switch turns it back on.
    property alias follow: chart.follow
    // Shows a switch for follow in the chart's top right corner.
    property bool showFollowSwitch: false
    // follow was on when the user last zoomed or panned.
    property bool followSuspended: false
    readonly property alias xAxis: linearXAxis
    readonly property alias yAxis: linearYAxis
    // Set by Escape: the gesture under way does nothing at its release.
    property bool stopZoom: false
    property bool enableNavigatorBar: true
    // Shows the main chart's series (the plotters that the legend lists) in
    // the overview strip too, each drawn there at the strip's width from its
    // own data, so that the strip follows every change of them. Plotters that
    // the application put into refNavigator itself stay there.
    property bool overview: false
    property bool enableLegend: true
    // Titles above the chart, under the x axis and left of the y axis; an
    // empty title takes no room.
    property string title: ""
    property string xTitle: ""
    property string yTitle: ""

    signal exportComplete(string path)

    implicitWidth: 200
    implicitHeight: 200

    // Saves the view, on the theme's background, at upsize times its size.
    // The view is drawn again at that size (the charts' framebuffers too), so
    // that bars, lines and text are as sharp as on the screen, not scaled up.
    // An export asked for while another runs follows it.
    function exportImage(path, upsize = 1) {
        let scale = upsize
        if (!(scale > 0) || !isFinite(scale)) {
            console.warn("VexalQML.exportImage: upsize " + upsize + " is not a positive finite factor; using 1")
            scale = 1
        }
        if (!vexal.Window.window) {
            console.warn("VexalQML.exportImage: the view is in no window; " + path + " was not written")
            return
        }
        exporting.queue.push({ path: path, scale: scale })
        if (!exporting.busy)
            exportNext()
    }

    function exportNext() {
        const job = exporting.queue.shift()
        const size = Qt.size(Math.round(width * job.scale), Math.round(height * job.scale))
        // The screen keeps the view as it is while the export scales it up.
        screenCopy.scheduleUpdate()
        exporting.busy = true
        // A frame begun calls back before the scene is taken: the copy is
        // taken in the first frame, the view scaled up from the second on.
        afterFrames(2, function () {
            exporting.scale = job.scale
            setChartsRenderScale(job.scale)
            // The frame after the next one has the charts drawn at that scale.
            afterFrames(2, function () {
                saveView.sourceRect = Qt.rect(0, 0, size.width, size.height)
                saveView.textureSize = size
                saveView.scheduleUpdate()
                saveView.grabToImage(result => finishExport(result, job.path), size)
            })
        })
    }

    function finishExport(result, path) {
        if (!result.saveToFile(path))
            console.warn("VexalQML.exportImage: cannot write " + path)
        exporting.scale = 1
        setChartsRenderScale(1)
        exporting.busy = false
        vexal.exportComplete(path)
        if (exporting.queue.length > 0)
            exportNext()
    }

    function setChartsRenderScale(scale) {
        chart.renderScale = scale
        navBar.navChart.renderScale = scale
    }

    // Calls callback on the GUI thread when the count-th frame from now
    // begins, before that frame takes the scene (the Connections below count
    // them, and go with the view if it is destroyed first).
    function afterFrames(count, callback) {
        exporting.next = callback
        exporting.framesLeft = count
        vexal.Window.window.update()
    }

    Connections {
        target: exporting.framesLeft > 0 ? vexal.Window.window : null
        function onAfterAnimating() {
            // A frame that begins while the target lets go of the window
            // may still call in: nothing waits then.
            if (exporting.framesLeft <= 0)
                return
            if (--exporting.framesLeft > 0) {
                vexal.Window.window.update()
                return
            }
            const next = exporting.next
            exporting.next = null
            next()
        }
    }

    // Lists the main chart's series in the overview while overview is on,
    // after the plotters that the application put there.
    function syncOverview() {
        const nav = navBar.navChart
        // A plotter being destroyed reads as null until every chart let it go.
        const own = Array.from(nav.plotter).filter(p => p && !plotterLists.listed.includes(p))
        const listed = plotterLists.forOverview.filter(p => !own.includes(p))
        plotterLists.listed = listed
        nav.plotter = own.concat(listed)
    }

    Component.onCompleted: syncOverview()

    QtObject {
        id: plotterLists
        // The main chart's plotters that draw a series (layer 1), which the
        // legend lists; follows the plotter list and each plotter's drawLayer.
        readonly property var chartSeries: Array.from(chart.plotter).filter(p => p && p.drawLayer === 1)
        // The series that the overview shows too.
        readonly property var forOverview: vexal.overview ? chartSeries : []
        property var listed: [] // the main chart's plotters that syncOverview put into the overview

        onForOverviewChanged: vexal.syncOverview()
    }

    Connections {
        target: navBar.navChart
        // Plotters that the application put into the overview (or took out).
        function onPlotterChanged() { vexal.syncOverview() }
    }

    // Seconds as text in the SI time unit that suits their magnitude.
    function format_time(num, decimals = 2) {
        return Utils.formatSmall(num, decimals, [" as", " fs", " ps", " ns", " us", " ms", " s"])
    }

    // The gesture of a drag from the press point to (x, y); y grows downwards.
    function gestureTo(x, y) {
        const right = x > zoomMouse.startMouseX
        if (y < zoomMouse.startMouseY)
            return right ? "Zoom Out" : "Zoom Fit"
        return right ? "Zoom Rect" : "Zoom In"
    }

    function setZoomX(x, width) {
        const rect = chart.zoomRect
        chart.zoomRect = Qt.rect(x, rect.y, width, rect.height)
    }

    // A zoom or pan by the user: the view stops following the data.
    function userMovedView() {
        if (!chart.follow)
            return
        followSuspended = true
        chart.follow = false
    }

    // Shows the whole data, and follows them again if it did before the
    // user's last zoom or pan.
    function showAll() {
        chart.resetZoomView()
        if (followSuspended)
            chart.follow = true
        followSuspended = false
        navBar.navChart.recalcWidth()
    }

    // The x range of the zoom narrowed by factor (above 1 zooms in, below 1
    // out) around the data x center (the middle by default), kept inside
    // the data.
    function zoomIn(factor = 2, center = chart.zoomRect.x + chart.zoomRect.width / 2) {
        if (!(factor > 0))
            return
        const rect = chart.zoomRect
        const data = chart.chartRect
        const width = Math.min(rect.width / factor, data.width)
        const left = center - (center - rect.x) / factor
        setZoomX(Utils.bound(left, data.left, data.right - width), width)
        navBar.navChart.recalcWidth()
    }

    // Moves the zoom by fraction of its width (negative: to the left), kept
    // inside the data.
    function panBy(fraction) {
        const rect = chart.zoomRect
        const data = chart.chartRect
        setZoomX(Utils.bound(rect.x + fraction * rect.width, data.left, data.right - rect.width), rect.width)
        navBar.navChart.recalcWidth()
    }

    // The data x under the chart's pixel x.
    function dataXAt(pixelX) {
        return chart.zoomRect.x + pixelX / chart.width * chart.zoomRect.width
    }

    // Without a factor: the zoom-out gesture (twice as wide, the whole data
    // once wider than the chart's pixels). With one: zoomIn(1 / factor).
    function zoomOut(factor) {
        if (factor !== undefined) {
            if (factor > 0)
                zoomIn(1 / factor)
            return
        }
        const rect = chart.zoomRect
        const newWidth = rect.width * 2
        // A data width against the item's pixel width: kept as the reset rule.
        if (newWidth > chart.width) {
            chart.resetZoomView()
            return
        }
        const right = chart.chartRect.right
        setZoomX(rect.x + newWidth > right ? right - newWidth : rect.x, newWidth)
    }

    // Zooms onto the selection band.
    function zoomToBand() {
        const rect = chart.zoomRect
        const x1 = Math.min(zoomMouse.p1, zoomMouse.p2) / chart.width * rect.width + rect.x
        const x2 = Math.max(zoomMouse.p1, zoomMouse.p2) / chart.width * rect.width + rect.x
        // A band of no width (press on the right edge) would show nothing.
        if (x2 > x1)
            setZoomX(x1, x2 - x1)
    }

    function zoom(gesture) {
        if (gesture === "Zoom Fit") {
            showAll()
            return
        }
        userMovedView()
        if (gesture === "Zoom Out")
            zoomOut()
        else if (gesture === "Zoom Rect")
            zoomToBand()
        else
            setZoomX(chart.zoomRect.x, chart.zoomRect.width / 2)
        navBar.navChart.recalcWidth()
    }

    // Moves the zoom by a number of the chart's pixels, inside the chart's data.
    function pan(pixels) {
        userMovedView()
        const rect = chart.zoomRect
        const dx = pixels / chart.width * rect.width
        setZoomX(Utils.bound(rect.x + dx, chart.chartRect.left, chart.chartRect.right - rect.width), rect.width)
    }

    Item {
        id: keyHandler
        anchors.fill: parent
        focus: vexal.visible
        Keys.onEscapePressed: vexal.stopZoom = true
        Keys.onPressed: (event) => {
            if (event.key === Qt.Key_Home) {
                vexal.showAll()
                event.accepted = true
                return
            }
            // Zoom factors and pan fractions of the keys.
            const zooms = { [Qt.Key_Plus]: 2, [Qt.Key_Equal]: 2, [Qt.Key_Minus]: 0.5 }
            const pans = { [Qt.Key_Left]: -0.1, [Qt.Key_Right]: 0.1 }
            if (!(event.key in zooms) && !(event.key in pans))
                return
            vexal.userMovedView()
            if (event.key in zooms)
                vexal.zoomIn(zooms[event.key])
            else
                vexal.panBy(pans[event.key])
            event.accepted = true
        }
    }

    // The view as exportImage draws it: its content, scaled by exporting.scale.
    Item {
        id: exportFrame
        anchors.fill: parent

        Item {
            id: root
            anchors.fill: parent
            // Scaled up while an export draws the view at its size.
            transform: Scale { xScale: exporting.scale; yScale: exporting.scale }

            LinearYAxis {
                id: linearYAxis
                anchors.fill: chart
                rectArea: chart.zoomRect
                includeZero: chart.includeZero
                axisTextFunc: Utils.format_event
            }

            Label {
                id: titleLabel
                objectName: "title"
                anchors.top: parent.top
                anchors.topMargin: 6
                // Centred over the chart, kept inside the view and elided
                // when wider than the view.
                width: Math.min(implicitWidth, vexal.width - 12)
                x: Utils.bound(chart.x + (chart.width - width) / 2, 6, vexal.width - 6 - width)
                elide: Text.ElideRight
                visible: vexal.title !== ""
                text: vexal.title
                font.bold: true
                color: linearXAxis.axisTextColor
            }

            Label {
                id: yTitleLabel
                objectName: "yTitle"
                // Rotated about its centre, which sits in the left margin's first band.
                x: 6 + height / 2 - width / 2
                y: chart.y + chart.height / 2 - height / 2
                rotation: -90
                visible: vexal.yTitle !== ""
                text: vexal.yTitle
                color: linearYAxis.axisTextColor
            }

            ChartArea {
                id: chart
                objectName: "chart"
                anchors.top: parent.top
                anchors.topMargin: 12 + (titleLabel.visible ? titleLabel.height + 6 : 0)
                anchors.left: parent.left
                anchors.leftMargin: (linearYAxis.visible ? 60 : 12) + (yTitleLabel.visible ? yTitleLabel.height + 6 : 0)
                anchors.right: parent.right
                anchors.rightMargin: 12
                anchors.bottom: navBar.top
                anchors.bottomMargin: (linearXAxis.visible ? 36 : 12) + (xTitleLabel.visible ? xTitleLabel.height + 2 : 0)
            }

            Label {
                id: xTitleLabel
                objectName: "xTitle"
                anchors.bottom: navBar.top
                anchors.bottomMargin: 4
                anchors.horizontalCenter: chart.horizontalCenter
                visible: vexal.xTitle !== ""
                text: vexal.xTitle
                color: linearXAxis.axisTextColor
            }

            LinearXAxis {
                id: linearXAxis
                anchors.top: chart.bottom
                anchors.left: chart.left
                width: chart.width
                rectArea: chart.zoomRect
                axisTextFunc: vexal.format_time
            }

            NavigatorBar {
                id: navBar
                anchors.left: chart.left
                anchors.right: chart.right
                anchors.bottom: legend.top
                anchors.bottomMargin: 6
                height: vexal.enableNavigatorBar ? 58 : 0
                enabled: vexal.enableNavigatorBar
                visible: vexal.enableNavigatorBar
                mainChartArea: chart
                onUserZoomed: vexal.userMovedView()
            }

            HorizontalLegend {
                id: legend
                anchors.left: parent.left
                anchors.right: parent.right
                anchors.bottom: parent.bottom
                anchors.bottomMargin: vexal.enableLegend ? 12 : 6
                height: vexal.enableLegend ? implicitHeight : 0
                enabled: vexal.enableLegend
                visible: vexal.enableLegend
                // Decorators and overlays draw in other layers and have no row.
                plotterList: plotterLists.chartSeries
            }

            // The overview's range under its two ends, above the legend.
            Item {
                id: navRange
                anchors.top: navBar.bottom
                anchors.left: navBar.left
                anchors.right: navBar.right
                visible: vexal.enableNavigatorBar

                Label {
                    objectName: "rangeStart"
                    anchors.left: parent.left
                    text: linearXAxis.label(navBar.navChart.zoomRect.left)
                    color: linearXAxis.axisTextColor
                }

                Label {
                    objectName: "rangeEnd"
                    anchors.right: parent.right
                    text: linearXAxis.label(navBar.navChart.zoomRect.right)
                    color: linearXAxis.axisTextColor
                }
            }

            MouseArea {
                id: zoomMouse
                objectName: "zoomMouse"

                // Ends of the selection band and the press point, in the chart's pixels.
                property real p1: 0
                property real p2: 0
                property real startMouseX: 0
                property real startMouseY: 0
                readonly property bool zooming: pressed && !vexal.stopZoom

                anchors.fill: chart
                hoverEnabled: true

                onPressed: (mouse) => {
                    keyHandler.forceActiveFocus()
                    p1 = mouse.x
                    p2 = mouse.x
                    startMouseX = mouse.x
                    startMouseY = mouse.y
                }
                onPositionChanged: (mouse) => {
                    if (zooming)
                        p2 = Utils.bound(mouse.x, 0, width)
                }
                onReleased: (mouse) => {
                    if (!vexal.stopZoom)
                        vexal.zoom(vexal.gestureTo(mouse.x, mouse.y))
                    vexal.stopZoom = false
                }
                // A notch (120) zooms by 1.25 around the cursor; with Shift, or
                // sideways, it pans by a tenth of the view.
                onWheel: (wheel) => {
                    const notchesUp = wheel.angleDelta.y / 120
                    const notchesSideways = wheel.angleDelta.x / 120
                    vexal.userMovedView()
                    if (wheel.modifiers & Qt.ShiftModifier)
                        vexal.panBy(-notchesUp * 0.1)
                    else if (notchesSideways !== 0)
                        vexal.panBy(-notchesSideways * 0.1)
                    else
                        vexal.zoomIn(Math.pow(1.25, notchesUp), vexal.dataXAt(wheel.x))
                }
            }

            // A touchpad or touch screen pinch zooms around its centre.
            PinchHandler {
                id: pinch
                objectName: "pinch"
                property real lastScale: 1

                target: null
                parent: chart
                onActiveChanged: lastScale = 1
                onActiveScaleChanged: {
                    if (!active || !(activeScale > 0))
                        return
                    vexal.userMovedView()
                    vexal.zoomIn(activeScale / lastScale, vexal.dataXAt(centroid.position.x))
                    lastScale = activeScale
                }
            }

            MouseArea {
                id: panMouse
                property real oldFrameX: 0

                anchors.fill: chart
                acceptedButtons: Qt.MiddleButton | Qt.RightButton
                propagateComposedEvents: true

                onPressed: (mouse) => oldFrameX = mouse.x
                onMouseXChanged: {
                    const delta = oldFrameX - mouseX
                    if (delta === 0)
                        return
                    oldFrameX = mouseX
                    vexal.pan(delta)
                }
            }

            Switch {
                objectName: "followSwitch"
                anchors.top: chart.top
                anchors.right: chart.right
                visible: vexal.showFollowSwitch
                text: qsTr("Follow")
                checked: chart.follow
                onToggled: {
                    chart.follow = checked
                    vexal.followSuspended = false
                    // Toggling replaced the binding: the switch shows the state again.
                    checked = Qt.binding(() => chart.follow)
                }
            }

            // Feedback of the zoom gesture under way.
            Item {
                id: gestureFeedback
                readonly property string gesture: vexal.gestureTo(zoomMouse.mouseX, zoomMouse.mouseY)

                anchors.fill: chart
                visible: zoomMouse.zooming

                Rectangle {
                    objectName: "selectionBand"
                    x: Math.min(zoomMouse.p1, zoomMouse.p2)
                    width: Math.abs(zoomMouse.p1 - zoomMouse.p2)
                    height: parent.height
                    color: "#4d4dc2e6"
                    visible: gestureFeedback.gesture === "Zoom Rect"
                }

                Rectangle {
                    x: zoomMouse.startMouseX - width / 2
                    y: zoomMouse.startMouseY - height / 2
                    width: 20
                    height: 20
                    color: "transparent"
                    border.color: "red"
                    border.width: 4
                }

                Shape {
                    anchors.fill: parent

                    ShapePath {
                        strokeColor: "red"
                        strokeWidth: 4
                        fillColor: "transparent"
                        startX: zoomMouse.startMouseX
                        startY: zoomMouse.startMouseY
                        PathLine { x: zoomMouse.mouseX; y: zoomMouse.mouseY }
                    }
                }

                Label {
                    objectName: "gestureLabel"
                    x: zoomMouse.mouseX - width / 2
                    y: zoomMouse.mouseY - height - 8
                    text: gestureFeedback.gesture
                    color: Material.foreground
                }
            }
        }
    }

    // The state of an export under way.
    QtObject {
        id: exporting
        property real scale: 1      // the view's scale while it is drawn for the picture; 1
        property bool busy: false   // an export is under way: the screen shows screenCopy
        property var queue: []      // exports asked for and not begun: { path, scale }
        property int framesLeft: 0  // frames to begin before next is called (afterFrames)
        property var next: null     // what afterFrames calls then
    }

    // The picture that exportImage saves: the view over the theme's background.
    ShaderEffectSource {
        id: saveView
        width: vexal.width
        height: vexal.height
        sourceItem: exportFrame
        live: false
        visible: false
        // The view scaled up is drawn into the picture only.
        hideSource: exporting.scale !== 1

        Rectangle {
            anchors.fill: parent
            z: -0.5
            color: vexal.Material.background
        }
    }

    // The view as it was before an export began, shown over it while the
    // export draws the view scaled up.
    ShaderEffectSource {
        id: screenCopy
        anchors.fill: parent
        sourceItem: exportFrame
        live: false
        visible: exporting.busy
    }

    // While an export runs, the mouse would reach the view scaled up under
    // the copy: the clicks, drags and wheel turns of those frames are dropped.
    MouseArea {
        objectName: "exportMouseGuard"
        anchors.fill: parent
        visible: exporting.busy
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onWheel: (wheel) => wheel.accepted = true
    }
}
