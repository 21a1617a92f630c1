// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15
import VexalPlugin 1.0
import "qrc:/qml"

Item {
    id: top
    width: 600
    height: 400

    // A main chart over x 0 .. 1000 and a 500-pixel navigator bar for it.
    Component {
        id: harnessComponent

        Item {
            property alias main: mainChart
            property alias bar: navBar

            width: 500
            height: 300

            ChartArea {
                id: mainChart
                width: 500
                height: 200
                updateIntervalMs: 0

                BarPlotter {
                    chartArea: mainChart
                    plotterArea: Qt.rect(0, 0, 1000, 10)
                    data: [2, 4, 6, 8, 10]
                }
            }

            NavigatorBar {
                id: navBar
                y: 220
                width: 500
                height: 58
                mainChartArea: mainChart
            }
        }
    }

    TestCase {
        name: "NavigatorBar"
        when: windowShown

        property var main: null
        property var bar: null
        property var nav: null
        property var band: null
        property var navMA: null

        function init() {
            failOnWarning(/.*/)
            const harness = createTemporaryObject(harnessComponent, top)
            verify(harness !== null)
            main = harness.main
            bar = harness.bar
            nav = bar.navChart
            band = findChild(nav, "navBarRect")
            navMA = findChild(nav, "navMA")
            // Both charts show all of the data once their start-up settles.
            tryVerify(() => main.zoomRect.width === 1000 && nav.zoomRect.width === 1000, 2000,
                      "the charts never showed the whole data")
        }

        function setMainZoom(x, y, width) {
            main.zoomRect = Qt.rect(x, y, width, 5)
        }

        function compareZoom(rect, x, width, message) {
            fuzzyCompare(rect.x, x, 1e-9, message + ": x")
            fuzzyCompare(rect.width, width, 1e-9, message + ": width")
        }

        function test_overview_without_plotters_spans_the_main_data() {
            compare(nav.plotter.length, 0)
            compare(nav.chartRect, main.chartRect)
            compare(nav.adaptChartHeight, false)
            compare(bar.flickRatio, 0.5)
        }

        function test_band_marks_the_main_zoom_data() {
            return [
                { tag: "a zoom over 200 to 500 is a band from 100 to 250 pixels",
                  nav: [0, 1000], main: [200, 300], x: 100, width: 150 },
                { tag: "a zoom of all the data fills the bar",
                  nav: [0, 1000], main: [0, 1000], x: 0, width: 500 },
                { tag: "in a zoomed overview the band is wider",
                  nav: [200, 500], main: [300, 100], x: 100, width: 100 },
                { tag: "a band far left of the overview stops 100 pixels out",
                  nav: [500, 200], main: [0, 100], x: -100, width: -900 }
            ]
        }

        function test_band_marks_the_main_zoom(row) {
            nav.zoomRect = Qt.rect(row.nav[0], 0, row.nav[1], 10.5)
            setMainZoom(row.main[0], 0, row.main[1])
            fuzzyCompare(band.x, row.x, 1e-9, "band x")
            fuzzyCompare(band.width, row.width, 1e-9, "band width")
            compare(band.height, bar.height)
        }

        function test_press_chooses_the_band_gesture_data() {
            // The band spans 100 .. 250 pixels.
            return [
                { tag: "9 pixels left of the left edge stretches the left edge", x: 91, state: "stretchLeft" },
                { tag: "9 pixels right of the left edge stretches the left edge", x: 109, state: "stretchLeft" },
                { tag: "10 pixels right of the left edge drags", x: 110, state: "dragging" },
                { tag: "10 pixels left of the left edge drags", x: 90, state: "dragging" },
                { tag: "9 pixels left of the right edge stretches the right edge", x: 241, state: "stretchRight" },
                { tag: "9 pixels right of the right edge stretches the right edge", x: 259, state: "stretchRight" },
                { tag: "10 pixels right of the right edge drags", x: 260, state: "dragging" },
                { tag: "the middle of the band drags", x: 175, state: "dragging" }
            ]
        }

        function test_press_chooses_the_band_gesture(row) {
            setMainZoom(200, 0, 300)
            mousePress(navMA, row.x, 29)
            compare(navMA.state, row.state)
            mouseRelease(navMA, row.x, 29)
            compare(navMA.state, "", "the release clears the gesture")
        }

        function test_band_gestures_data() {
            // The main zoom starts at x 200, 300 wide, 2 above the bottom.
            return [
                { tag: "dragging centres the band under the mouse",
                  from: 175, to: 275, x: 400, y: 2, width: 300 },
                { tag: "dragging stops at the right end of the data",
                  from: 175, to: 480, x: 700, y: 2, width: 300 },
                { tag: "dragging stops at the left end of the data",
                  from: 175, to: 20, x: 0, y: 2, width: 300 },
                { tag: "stretching the left edge moves it and drops the zoom to y 0",
                  from: 100, to: 50, x: 100, y: 0, width: 400 },
                { tag: "stretching the right edge moves it and drops the zoom to y 0",
                  from: 250, to: 400, x: 200, y: 0, width: 600 },
                { tag: "the left edge stretched past the right one keeps 30 pixels",
                  from: 100, to: 300, x: 440, y: 0, width: 60 },
                { tag: "the right edge stretched past the left one keeps 30 pixels",
                  from: 250, to: 10, x: 200, y: 0, width: 60 }
            ]
        }

        function test_band_gestures(row) {
            setMainZoom(200, 2, 300)
            compare(main.zoomRect.y, 2)
            mousePress(navMA, row.from, 29)
            mouseMove(navMA, row.to, 29)
            mouseRelease(navMA, row.to, 29)
            compareZoom(main.zoomRect, row.x, row.width, row.tag)
            compare(main.zoomRect.y, row.y, "zoom y")
        }

        function test_click_in_the_band_changes_nothing() {
            setMainZoom(200, 2, 300)
            const before = main.zoomRect
            mouseClick(navMA, 175, 29)
            compare(main.zoomRect, before)
        }

        function test_recalc_width_data() {
            // A 500-pixel bar over 1000: a band under 75 pixels is a zoom under 150.
            return [
                { tag: "a tenth at the start zooms the overview from its left edge",
                  main: [0, 100], x: 0, width: 100 * 500 / 75 },
                { tag: "a tenth inside the overview's candidate keeps its left edge",
                  main: [400, 100], x: 0, width: 100 * 500 / 75 },
                { tag: "a tenth at the end centres the overview as far as the data goes",
                  main: [900, 100], x: 1000 - 100 * 500 / 75, width: 100 * 500 / 75 },
                { tag: "a band of exactly 75 pixels shows everything",
                  main: [300, 150], x: 0, width: 1000 },
                { tag: "the whole data shows everything",
                  main: [0, 1000], x: 0, width: 1000 }
            ]
        }

        function test_recalc_width(row) {
            setMainZoom(row.main[0], 0, row.main[1])
            nav.recalcWidth()
            compareZoom(nav.zoomRect, row.x, row.width, row.tag)
            fuzzyCompare(band.width, Math.max(row.main[1] / 1000 * 500, 75), 1e-9, "band width")
            verify(band.x >= 0 && band.x + band.width <= 500, "the band is in view")
        }

        function test_scroll_bar_shows_when_the_overview_is_zoomed_data() {
            return [
                { tag: "hidden while the overview shows everything", main: [0, 1000], visible: false },
                { tag: "shown for a narrow zoom", main: [0, 30], visible: true }
            ]
        }

        function test_scroll_bar_shows_when_the_overview_is_zoomed(row) {
            setMainZoom(row.main[0], 0, row.main[1])
            nav.recalcWidth()
            const scrollbar = findChild(bar, "scrollbar")
            compare(scrollbar.visible, row.visible)
            compare(findChild(bar, "track").visible, row.visible)
        }

        // Zooms the main chart onto 30 of the data: the overview is 200 wide
        // and its scroll bar 100 pixels.
        function zoomNarrow() {
            setMainZoom(0, 0, 30)
            nav.recalcWidth()
            compareZoom(nav.zoomRect, 0, 200, "narrow overview")
            const scrollbar = findChild(bar, "scrollbar")
            compare(scrollbar.width, 100)
            return scrollbar
        }

        function test_dragging_the_scroll_bar_scrolls_only_the_overview() {
            const scrollbar = zoomNarrow()
            mousePress(scrollbar, 50, 3)
            mouseMove(scrollbar, 100, 3)
            mouseRelease(scrollbar, 100, 3)
            compareZoom(nav.zoomRect, 100, 200, "overview moved by 50 pixels")
            compare(scrollbar.x, 50)
            compareZoom(main.zoomRect, 0, 30, "main zoom kept")
        }

        function test_clicking_the_track_centres_the_scroll_bar_data() {
            return [
                { tag: "a click at 400 pixels centres the bar there", x: 400, expected: 700 },
                { tag: "a click near the right end stops at the end", x: 480, expected: 800 }
            ]
        }

        function test_clicking_the_track_centres_the_scroll_bar(row) {
            zoomNarrow()
            mouseClick(findChild(bar, "track"), row.x, 3)
            compareZoom(nav.zoomRect, row.expected, 200, row.tag)
            compareZoom(main.zoomRect, 0, 30, "main zoom kept")
        }

        function test_wheel_scrolls_the_overview_data() {
            return [
                { tag: "turning forward shows later x", narrow: true, delta: 120, expected: 48 },
                { tag: "turning back stops at the left end", narrow: true, delta: -120, expected: 0 },
                { tag: "nothing scrolls while the overview shows everything", narrow: false, delta: 120, expected: 0 }
            ]
        }

        function test_wheel_scrolls_the_overview(row) {
            if (row.narrow)
                zoomNarrow()
            const width = nav.zoomRect.width
            mouseWheel(bar, 300, 29, 0, row.delta)
            compareZoom(nav.zoomRect, row.expected, width, row.tag)
        }

        function test_width_change_recalculates_the_overview() {
            setMainZoom(0, 0, 200)
            nav.recalcWidth()
            compare(nav.zoomRect.width, 1000, "a 100-pixel band")
            bar.width = 300
            compareZoom(nav.zoomRect, 0, 800, "a 60-pixel band widened to 75")
        }
    }
}
