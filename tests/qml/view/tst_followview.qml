// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15
import VexalPlugin 1.0
import "qrc:/qml"

// A view that follows streamed data: appends move the zoom, a user's zoom or
// pan stops it, showing everything (gesture, Home) and the switch resume it,
// and the switch shows the state. Driven by real mouse and key events.
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
            follow: true
            showFollowSwitch: true

            property alias bars: bars

            BarPlotter {
                id: bars
                chartArea: view.refChartArea
                color: "red"
                plotterArea: Qt.rect(0, 0, 1000, 1)
                data: Array.from({ length: 1000 }, (_, i) => 1 + i % 5)
            }
        }
    }

    TestCase {
        name: "FollowView"
        when: windowShown

        property var view: null
        property var chart: null

        function init() {
            failOnWarning(/.*/) // any warning fails
            view = createTemporaryObject(viewComponent, scene)
            verify(view !== null)
            chart = view.refChartArea
            tryVerify(() => chart.zoomRect.width === 1000, 2000, "the zoom never showed the whole data")
        }

        function appendTen() {
            view.bars.appendData([2, 2, 2, 2, 2, 2, 2, 2, 2, 2])
        }

        // A left-button drag to the right and down over the chart: a zoom onto the band.
        function zoomOntoBand() {
            const mouse = view.refChartMouse
            mousePress(mouse, 100, 50, Qt.LeftButton)
            mouseMove(mouse, 300, 150)
            mouseRelease(mouse, 300, 150, Qt.LeftButton)
        }

        function test_appends_grow_a_zoom_that_shows_everything() {
            appendTen()
            tryCompare(chart.zoomRect, "width", 1010)
            compare(chart.zoomRect.x, 0)
        }

        function test_a_user_zoom_stops_following_and_showing_all_resumes() {
            zoomOntoBand()
            verify(chart.zoomRect.width < 1000, "the drag zoomed in: " + chart.zoomRect)
            verify(!view.follow, "a zoom by the user turns follow off")
            const switcher = findChild(view, "followSwitch")
            verify(!switcher.checked, "the switch shows follow off")
            const zoomed = chart.zoomRect
            appendTen()
            wait(50)
            compare(chart.zoomRect, zoomed, "the zoom stays where the user put it")
            // The show-everything gesture: a drag to the left and up.
            const mouse = view.refChartMouse
            mousePress(mouse, 300, 150, Qt.LeftButton)
            mouseMove(mouse, 100, 50)
            mouseRelease(mouse, 100, 50, Qt.LeftButton)
            verify(view.follow, "showing everything turns follow back on")
            verify(switcher.checked, "the switch shows follow on")
            appendTen()
            tryCompare(chart.zoomRect, "width", 1020)
        }

        function test_a_narrow_zoom_set_by_code_moves_with_the_newest_value() {
            chart.zoomRect = Qt.rect(100, 0, 50, chart.zoomRect.height)
            verify(view.follow, "code that sets the zoom leaves follow on")
            appendTen()
            tryCompare(chart.zoomRect, "x", 960)
            compare(chart.zoomRect.width, 50)
        }

        function test_a_drag_on_the_navigator_stops_following() {
            zoomOntoBand()
            keyClick(Qt.Key_Home)
            verify(view.follow)
            chart.zoomRect = Qt.rect(0, 0, 100, chart.zoomRect.height)
            const navigator = findChild(view, "navMA")
            verify(navigator !== null)
            mousePress(navigator, 20, 10, Qt.LeftButton)
            mouseMove(navigator, 200, 10)
            mouseRelease(navigator, 200, 10, Qt.LeftButton)
            verify(chart.zoomRect.x > 0, "the navigator moved the zoom: " + chart.zoomRect)
            verify(!view.follow, "a drag on the navigator turns follow off")
        }

        function test_the_wheel_and_the_keys_stop_following() {
            mouseWheel(view.refChartMouse, 100, 100, 0, 120)
            verify(!view.follow, "a wheel zoom turns follow off")
            keyClick(Qt.Key_Home)
            verify(view.follow)
            keyClick(Qt.Key_Shift)
            verify(view.follow, "a key that does nothing leaves follow on")
            keyClick(Qt.Key_Right)
            verify(!view.follow, "a pan by key turns follow off")
        }

        function test_home_resumes_following() {
            zoomOntoBand()
            verify(!view.follow)
            keyClick(Qt.Key_Home)
            verify(view.follow, "Home turns follow back on")
            compare(chart.zoomRect.width, 1000)
        }

        function test_the_switch_turns_follow_off_and_on() {
            const switcher = findChild(view, "followSwitch")
            verify(switcher.visible)
            mouseClick(switcher)
            verify(!view.follow, "a click turns follow off")
            verify(!switcher.checked)
            appendTen()
            wait(50)
            compare(chart.zoomRect.width, 1000, "the zoom no longer follows")
            mouseClick(switcher)
            verify(view.follow, "a second click turns it on")
            verify(switcher.checked)
            zoomOntoBand()
            verify(!switcher.checked, "the switch shows what a gesture did")
        }
    }
}
