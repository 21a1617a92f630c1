// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15
import VexalPlugin 1.0
import "qrc:/qml"

// Wheel, keys, pinch and the program's zoomIn/zoomOut/panBy/showAll on a view
// of 1 000 values: each ends inside the data, with the navigator's band on
// the new zoom. Driven by real wheel, key and touch events.
Item {
    id: scene
    width: 640
    height: 440

    Component {
        id: viewComponent

        VexalQML {
            id: view
            width: 600
            height: 400
            updateIntervalMs: 0

            BarPlotter {
                chartArea: view.refChartArea
                color: "red"
                plotterArea: Qt.rect(0, 0, 1000, 1)
                data: Array.from({ length: 1000 }, (_, i) => 1 + i % 5)
            }
        }
    }

    TestCase {
        name: "Navigation"
        when: windowShown

        property var view: null
        property var chart: null
        property var mouse: null

        function init() {
            failOnWarning(/.*/) // any warning fails
            view = createTemporaryObject(viewComponent, scene)
            verify(view !== null)
            chart = view.refChartArea
            mouse = view.refChartMouse
            tryVerify(() => chart.zoomRect.width === 1000, 2000, "the zoom never showed the whole data")
        }

        function compareZoomX(x, width, message) {
            fuzzyCompare(chart.zoomRect.x, x, 1e-6, message + ": zoom x " + chart.zoomRect)
            fuzzyCompare(chart.zoomRect.width, width, 1e-6, message + ": zoom width " + chart.zoomRect)
        }

        // The navigator's band spans the main zoom.
        function verifyBand() {
            const band = findChild(view, "navBarRect")
            const nav = view.refNavigator
            const x1 = (chart.zoomRect.x - nav.zoomRect.x) / nav.zoomRect.width * nav.width
            fuzzyCompare(band.x, Math.max(x1, -100), 1e-6, "the band's left edge")
        }

        function test_wheel_zooms_around_the_cursor() {
            // The cursor a quarter across the chart: data x 250 stays under it.
            const x = mouse.width / 4
            mouseWheel(mouse, x, 100, 0, 120)
            compareZoomX(250 - 250 / 1.25, 1000 / 1.25, "one notch in")
            fuzzyCompare(view.dataXAt(x), 250, 1e-6, "the data under the cursor")
            mouseWheel(mouse, x, 100, 0, -120)
            compareZoomX(0, 1000, "one notch out")
            mouseWheel(mouse, x, 100, 0, -360)
            compareZoomX(0, 1000, "zooming out stops at the whole data")
            verifyBand()
        }

        function test_shift_wheel_and_sideways_wheel_pan() {
            view.zoomIn(4)
            compareZoomX(375, 250, "zoomIn(4) around the middle")
            mouseWheel(mouse, 100, 100, 0, -120, Qt.NoButton, Qt.ShiftModifier)
            compareZoomX(400, 250, "Shift and a notch down pan right by a tenth")
            mouseWheel(mouse, 100, 100, 120, 0)
            compareZoomX(375, 250, "a notch sideways pans left by a tenth")
            for (let i = 0; i < 40; ++i)
                mouseWheel(mouse, 100, 100, 0, 120, Qt.NoButton, Qt.ShiftModifier)
            compareZoomX(0, 250, "panning stops at the data's left edge")
            verifyBand()
        }

        function test_keys_zoom_pan_and_show_everything() {
            mouseClick(mouse, 10, 10, Qt.MiddleButton) // the view takes the focus
            keyClick(Qt.Key_Plus)
            compareZoomX(250, 500, "+ zooms in twice")
            keyClick(Qt.Key_Right)
            compareZoomX(300, 500, "Right pans by a tenth")
            for (let i = 0; i < 20; ++i)
                keyClick(Qt.Key_Right)
            compareZoomX(500, 500, "panning stops at the data's right edge")
            keyClick(Qt.Key_Minus)
            compareZoomX(0, 1000, "- zooms out, inside the data")
            keyClick(Qt.Key_Plus)
            keyClick(Qt.Key_Left)
            compareZoomX(200, 500, "Left pans back")
            keyClick(Qt.Key_Home)
            compareZoomX(0, 1000, "Home shows everything")
            verifyBand()
        }

        function test_program_functions_stay_inside_the_data() {
            view.zoomIn(10, 990)
            compareZoomX(900, 100, "zoomIn around x 990, moved back inside")
            view.panBy(-2)
            compareZoomX(700, 100, "panBy(-2) moves two widths left")
            view.zoomOut(4)
            compareZoomX(550, 400, "zoomOut(4) widens around the middle")
            view.zoomOut(100)
            compareZoomX(0, 1000, "zooming out stops at the whole data")
            view.zoomIn(0)
            compareZoomX(0, 1000, "a factor of 0 does nothing")
            view.zoomIn(5)
            view.showAll()
            compareZoomX(0, 1000, "showAll shows everything")
        }

        function test_pinch_zooms_around_its_centre() {
            const pinchArea = view.refChartArea
            const touch = touchEvent(pinchArea)
            touch.press(0, pinchArea, 200, 150).press(1, pinchArea, 300, 150).commit()
            for (let step = 1; step <= 10; ++step)
                touch.move(0, pinchArea, 200 - 5 * step, 150).move(1, pinchArea, 300 + 5 * step, 150).commit()
            touch.release(0, pinchArea, 150, 150).release(1, pinchArea, 350, 150).commit()
            // Fingers from 100 to 200 pixels apart (the scale counts from the
            // drag threshold on): narrower, around the centre's data x.
            const centre = 250 / chart.width * 1000
            verify(chart.zoomRect.width < 900, "the pinch zoomed in: " + chart.zoomRect)
            verify(chart.zoomRect.x > 0 && chart.zoomRect.x < centre && chart.zoomRect.right > centre,
                   "around its centre " + centre + ": " + chart.zoomRect)
        }
    }
}
