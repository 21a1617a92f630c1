// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15
import VexalPlugin 1.0
import "qrc:/qml"

Item {
    id: top
    width: 640
    height: 440

    Component {
        id: viewComponent

        VexalQML {
            id: view
            width: 600
            height: 400
            updateIntervalMs: 0

            // Bars and an area over x 0 .. 1000, and a decorator-like overlay in layer 2.
            BarPlotter {
                chartArea: view.refChartArea
                name: "first"
                color: "steelblue"
                plotterArea: Qt.rect(0, 0, 1000, 10)
                data: [1, 2, 3, 4, 5, 6, 7, 8, 9, 10]
            }
            AreaPlotter {
                chartArea: view.refChartArea
                name: "second"
                color: "orange"
                plotterArea: Qt.rect(0, 0, 1000, 5)
                data: [5, 4, 3, 2, 1]
            }
            BarPlotter {
                chartArea: view.refChartArea
                name: "overlay"
                drawLayer: 2
                plotterArea: Qt.rect(0, 0, 1000, 5)
            }
        }
    }

    SignalSpy {
        id: exportSpy
        signalName: "exportComplete"
    }

    Image {
        id: exported
        cache: false
        asynchronous: false
    }

    TestCase {
        name: "VexalQML"
        when: windowShown

        property var view: null
        property var chart: null
        property var mouse: null

        function init() {
            failOnWarning(/.*/) // any warning fails
            view = createTemporaryObject(viewComponent, top)
            verify(view !== null)
            chart = view.refChartArea
            mouse = view.refChartMouse
            // The chart shows all of its data once its start-up settles.
            tryVerify(() => chart.zoomRect.width === 1000, 2000, "the zoom never showed the whole data")
        }

        function setZoom(x, width) {
            chart.zoomRect = Qt.rect(x, 0, width, chart.zoomRect.height)
        }

        function compareZoomX(x, width, message) {
            fuzzyCompare(chart.zoomRect.x, x, 1e-9, message + ": zoom x")
            fuzzyCompare(chart.zoomRect.width, width, 1e-9, message + ": zoom width")
        }

        // A left-button drag over the chart, from and to chart pixels.
        function drag(from, to) {
            mousePress(mouse, from.x, from.y, Qt.LeftButton)
            mouseMove(mouse, to.x, to.y)
            mouseRelease(mouse, to.x, to.y, Qt.LeftButton)
        }

        function test_layout_data() {
            return [
                { tag: "with navigator and legend the chart leaves room for both",
                  navigator: true, legend: true, legendHeight: 30, navHeight: 58 },
                { tag: "without navigator the chart reaches down to the legend",
                  navigator: false, legend: true, legendHeight: 30, navHeight: 0 },
                { tag: "without legend the navigator sits 6 pixels above the bottom",
                  navigator: true, legend: false, legendHeight: 0, navHeight: 58 },
                { tag: "with neither the chart fills the view but for the axes",
                  navigator: false, legend: false, legendHeight: 0, navHeight: 0 }
            ]
        }

        function test_layout(row) {
            view.enableNavigatorBar = row.navigator
            view.enableLegend = row.legend
            const legendBottomMargin = row.legend ? 12 : 6
            const navBottom = view.height - legendBottomMargin - row.legendHeight - 6
            const chartBottom = navBottom - row.navHeight - 36
            const pos = chart.mapToItem(view, 0, 0)
            compare(pos.x, 60, "y axis margin")
            compare(pos.y, 12, "top margin")
            compare(chart.width, view.width - 72, "chart width")
            compare(chart.height, chartBottom - 12, "chart height")
            compare(view.refNavigator.width, chart.width, "navigator as wide as the chart")
            compare(view.refNavigator.height, row.navHeight, "navigator height")
            compare(view.refLegend.height, row.legendHeight, "legend height")
            compare(view.refLegend.visible, row.legend, "legend visibility")
            compare(view.xAxis.mapToItem(view, 0, 0).y, pos.y + chart.height, "x axis under the chart")
            compare(view.yAxis.height, chart.height, "y axis as high as the chart")
        }

        function test_gesture_data() {
            // Chart pixels: the press is at (264, 100); the zoom starts at x 200, width 400.
            return [
                { tag: "a drag up and to the right resets a zoom whose double exceeds the pixel width",
                  zoom: [200, 400], to: [400, 20], label: "Zoom Out", expected: [0, 1000] },
                { tag: "a drag up and to the right doubles a narrow zoom in place",
                  zoom: [200, 100], to: [400, 20], label: "Zoom Out", expected: [200, 200] },
                { tag: "a zoom out that would pass the right edge ends at the right edge",
                  zoom: [700, 200], to: [400, 20], label: "Zoom Out", expected: [600, 400] },
                { tag: "a drag up and to the left fits the whole data",
                  zoom: [200, 400], to: [100, 20], label: "Zoom Fit", expected: [0, 1000] },
                { tag: "a drag down and to the right zooms onto the band",
                  zoom: [200, 400], to: [396, 180], label: "Zoom Rect", expected: [400, 100] },
                { tag: "a drag down and to the left halves the zoom keeping its left edge",
                  zoom: [200, 400], to: [100, 180], label: "Zoom In", expected: [200, 200] }
            ]
        }

        function test_gesture(row) {
            compare(chart.width, 528)
            setZoom(row.zoom[0], row.zoom[1])
            mousePress(mouse, 264, 100, Qt.LeftButton)
            mouseMove(mouse, row.to[0], row.to[1])
            const label = findChild(view, "gestureLabel")
            verify(label.visible, "feedback shown while dragging")
            compare(label.text, row.label)
            compare(findChild(view, "selectionBand").visible, row.label === "Zoom Rect", "selection band")
            mouseRelease(mouse, row.to[0], row.to[1], Qt.LeftButton)
            verify(!label.visible, "feedback hidden after the release")
            compareZoomX(row.expected[0], row.expected[1], row.tag)
        }

        function test_selection_band_follows_the_mouse() {
            mousePress(mouse, 100, 50, Qt.LeftButton)
            mouseMove(mouse, 300, 150)
            const band = findChild(view, "selectionBand")
            compare(band.x, 100)
            compare(band.width, 200)
            compare(band.height, chart.height)
            // The band stops at the chart's right edge.
            mouseMove(mouse, chart.width + 40, 150)
            compare(band.width, chart.width - 100)
            mouseRelease(mouse, chart.width + 40, 150, Qt.LeftButton)
            compareZoomX(100 / 528 * 1000, 428 / 528 * 1000, "zoomed onto the clamped band")
        }

        function test_click_halves_the_zoom() {
            setZoom(100, 800)
            mouseClick(mouse, 200, 100, Qt.LeftButton)
            compareZoomX(100, 400, "a click is a zoom in")
        }

        function test_escape_cancels_the_drag() {
            setZoom(200, 400)
            mousePress(mouse, 264, 100, Qt.LeftButton)
            mouseMove(mouse, 100, 180)
            keyClick(Qt.Key_Escape)
            verify(view.stopZoom, "Escape stops the zoom")
            verify(!findChild(view, "gestureLabel").visible, "feedback hidden after Escape")
            mouseRelease(mouse, 100, 180, Qt.LeftButton)
            compareZoomX(200, 400, "the cancelled release")
            verify(!view.stopZoom, "the release re-arms the gestures")
            drag(Qt.point(264, 100), Qt.point(100, 180))
            compareZoomX(200, 200, "the next gesture")
        }

        function test_pan_data() {
            return [
                { tag: "dragging left with the middle button shows later x",
                  button: Qt.MiddleButton, zoom: [200, 264], dx: -132, expected: 266 },
                { tag: "dragging right with the right button shows earlier x",
                  button: Qt.RightButton, zoom: [200, 264], dx: 132, expected: 134 },
                { tag: "panning stops at the right end of the data",
                  button: Qt.MiddleButton, zoom: [700, 264], dx: -264, expected: 736 },
                { tag: "panning stops at the left end of the data",
                  button: Qt.RightButton, zoom: [50, 264], dx: 264, expected: 0 }
            ]
        }

        function test_pan(row) {
            setZoom(row.zoom[0], row.zoom[1])
            mousePress(mouse, 300, 100, row.button)
            mouseMove(mouse, 300 + row.dx, 100, -1, row.button)
            mouseRelease(mouse, 300 + row.dx, 100, row.button)
            compareZoomX(row.expected, row.zoom[1], row.tag)
            verify(!findChild(view, "gestureLabel").visible, "panning shows no zoom feedback")
        }

        function test_format_time_data() {
            return [
                { tag: "milliseconds", num: 0.0025, decimals: 2, text: "2.50 ms" },
                { tag: "below an attosecond is zero", num: 5e-19, decimals: 2, text: "0" },
                { tag: "negative values keep their sign", num: -0.5, decimals: 2, text: "-500.00 ms" },
                { tag: "attoseconds", num: 3e-18, decimals: 1, text: "3.0 as" },
                { tag: "femtoseconds", num: 2e-15, decimals: 2, text: "2.00 fs" },
                { tag: "picoseconds", num: 4.5e-12, decimals: 2, text: "4.50 ps" },
                { tag: "nanoseconds", num: 7e-9, decimals: 0, text: "7 ns" },
                { tag: "microseconds", num: 1.5e-6, decimals: 2, text: "1.50 us" },
                { tag: "seconds", num: 90, decimals: 2, text: "90.00 s" }
            ]
        }

        function test_format_time(row) {
            compare(view.format_time(row.num, row.decimals), row.text)
        }

        function test_format_time_defaults_to_two_decimals() {
            compare(view.format_time(1.25), "1.25 s")
        }

        function test_axes_follow_the_zoom() {
            setZoom(250, 500)
            compare(view.xAxis.rectArea, chart.zoomRect)
            compare(view.yAxis.rectArea, chart.zoomRect)
            compare(view.xAxis.axisTextFunc(0.002), "2.00 ms", "x labels are times")
            compare(view.yAxis.axisTextFunc(2500), "2.50K", "y labels are event counts")
        }

        function test_navigator_range_labels() {
            const start = findChild(view, "rangeStart")
            const end = findChild(view, "rangeEnd")
            // The navigator fits the whole data once its chart has settled.
            tryCompare(end, "text", "1000.00 s")
            compare(start.text, view.format_time(view.refNavigator.zoomRect.left))
            compare(end.text, view.format_time(view.refNavigator.zoomRect.right))
            view.xAxis.labelFormat = "datetime"
            view.xAxis.timeOrigin = new Date(2026, 10, 23, 12, 0, 0)
            compare(start.text, "2026-11-23 12:00", "in the axis' date format")
            compare(end.text, view.xAxis.label(view.refNavigator.zoomRect.right))
            view.xAxis.labelFormat = "plain"
            compare(end.text, "1000")
            view.enableNavigatorBar = false
            verify(!start.visible && !end.visible, "hidden with the navigator")
        }

        function test_aliases_reach_the_parts() {
            view.isYAxisLog = true
            verify(view.yAxis.isLogScale)
            view.updateIntervalMs = 40
            compare(chart.updateIntervalMs, 40)
            verify(view.refNavigator.adaptChartHeight === false, "the navigator's chart")
        }

        function test_legend_lists_the_layer_one_plotters() {
            const names = view.refLegend.plotterList.map(p => p.name)
            compare(names.sort(), ["first", "second"])
            view.refLegend.plotterList[0].drawLayer = 3
            compare(view.refLegend.plotterList.length, 1, "a plotter in two layers has no row")
        }

        function test_clicking_a_name_hides_its_plotter() {
            const plotter = view.refLegend.plotterList[0]
            const row = findChild(view.refLegend, "legendName0")
            verify(row !== null)
            mouseClick(row)
            verify(!plotter.visible, "hidden by the first click")
            mouseClick(row)
            verify(plotter.visible, "shown again by the second click")
        }

        function test_gesture_recentres_the_navigator() {
            // A tenth of the data: the band would be 52.8 pixels wide.
            setZoom(800, 200)
            drag(Qt.point(264, 100), Qt.point(100, 180))
            const nav = view.refNavigator.zoomRect
            fuzzyCompare(nav.width, 100 * 528 / 75, 1e-9, "band kept 75 pixels wide")
            verify(nav.left <= 800 && nav.right >= 900, "the main zoom stays in view")
        }

        function test_mouse_gestures_during_an_export_are_dropped() {
            setZoom(200, 400)
            const path = Qt.application.arguments[0] + "_guarded.png"
            exportSpy.target = view
            exportSpy.clear()
            view.exportImage(path, 2)
            drag(Qt.point(100, 100), Qt.point(300, 200))
            mouseWheel(mouse, 200, 100, 0, 120)
            compareZoomX(200, 400, "during the export")
            exportSpy.wait(5000)
            compareZoomX(200, 400, "after the export")
            drag(Qt.point(100, 100), Qt.point(300, 200))
            verify(chart.zoomRect.width < 400, "a drag after the export zooms again")
        }

        function test_a_view_destroyed_during_an_export_leaves_quietly() {
            const doomed = createTemporaryObject(viewComponent, top)
            exportSpy.target = doomed
            exportSpy.clear()
            doomed.exportImage(Qt.application.arguments[0] + "_doomed.png", 2)
            doomed.destroy()
            // Frames go on in the window (the test's view changes its zoom);
            // none may touch the destroyed view.
            for (let frame = 0; frame < 10; ++frame) {
                setZoom(100 + frame, 400)
                wait(20)
            }
            compare(exportSpy.count, 0)
        }

        function test_export_of_a_view_in_no_window_warns_and_does_not_complete() {
            const loose = createTemporaryObject(viewComponent, null)
            verify(loose !== null && loose.Window.window === null)
            const path = Qt.application.arguments[0] + "_nowindow.png"
            ignoreWarning("VexalQML.exportImage: the view is in no window; " + path + " was not written")
            exportSpy.target = loose
            exportSpy.clear()
            loose.exportImage(path, 2)
            wait(50)
            compare(exportSpy.count, 0)
        }

        function test_export_writes_a_picture_twice_the_size() {
            // Beside the test executable, which CTest names by its absolute path.
            const path = Qt.application.arguments[0] + "_export.png"
            exportSpy.target = view
            exportSpy.clear()
            view.exportImage(path, 2)
            exportSpy.wait(5000)
            compare(exportSpy.signalArguments[0][0], path)
            exported.source = ""
            exported.source = "file://" + path
            compare(exported.status, Image.Ready)
            compare(exported.sourceSize, Qt.size(1200, 800))
        }
    }
}
