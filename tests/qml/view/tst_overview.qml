// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15
import VexalPlugin 1.0
import "qrc:/qml"

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
            property alias bars: bars
            property alias marks: marks

            // Twenty bars, low in the left half and tall in the right half.
            BarPlotter {
                id: bars
                objectName: "bars"
                chartArea: view.refChartArea
                name: "bars"
                color: "#ff0000"
                plotterArea: Qt.rect(0, 0, 20, 10)
                data: [1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9]
            }

            // Drawn in the overlay layer: not a series of its own.
            BarPlotter {
                id: marks
                chartArea: view.refChartArea
                drawLayer: 4
                color: "#00ff00"
                plotterArea: Qt.rect(0, 0, 20, 10)
                data: [9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9]
            }
        }
    }

    // A hundred thousand values of 5 through a decimator that follows the
    // main chart's zoom, with a peak of 9 in their first tenth.
    Component {
        id: decimatedComponent

        VexalQML {
            id: decimated
            width: 600
            height: 400
            updateIntervalMs: 0
            overview: true

            Filter1D {
                area: Qt.rect(0, 0, 100000, 1)
                data: Array.from({ length: 100000 }, (_, i) => i >= 5000 && i < 6000 ? 9 : 5)
                Component.onCompleted: addFilter(decimator)
            }
            DecimatorU64 {
                id: decimator
                chartArea: decimated.refChartArea
                Component.onCompleted: addPlotter(decimatedBars)
            }
            BarPlotter {
                id: decimatedBars
                color: "#ff0000"
                chartArea: decimated.refChartArea
            }
        }
    }

    Component {
        id: ownPlotterComponent

        BarPlotter {
            color: "#0000ff"
            plotterArea: Qt.rect(0, 0, 20, 10)
            data: [5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5]
        }
    }

    TestCase {
        name: "Overview"
        when: windowShown

        property var view: null
        property var nav: null

        function init() {
            failOnWarning(/.*/)
            view = createTemporaryObject(viewComponent, scene)
            verify(view !== null)
            nav = view.refNavigator
            tryVerify(() => view.refChartArea.zoomRect.width === 20, 2000, "the zoom never showed the whole data")
        }

        // The window's pixel at the overview's point (x, y). The window is
        // grabbed whole: grabImage(item) crops the window at the item's
        // position within its parent, not within the window.
        function stripPixel(image, x, y) {
            const p = nav.mapToItem(scene, x, y)
            return image.pixel(p.x, p.y)
        }

        // Share of the overview's pixels in the x range [x0, x1) of the data,
        // in its bottom rows (under the lowest bar's top), that show the
        // colour test accepts.
        function shareIn(x0, x1, test) {
            const image = grabImage(scene)
            const zoom = nav.zoomRect
            let hits = 0
            let total = 0
            const left = Math.max(0, Math.ceil((x0 - zoom.x) / zoom.width * nav.width))
            const right = Math.min(nav.width, Math.floor((x1 - zoom.x) / zoom.width * nav.width))
            for (let y = nav.height - 5; y < nav.height - 1; ++y) {
                for (let x = left + 1; x < right - 1; ++x) {
                    hits += test(stripPixel(image, x, y))
                    ++total
                }
            }
            return hits / total
        }

        // Pure red, green and blue, also under the translucent band that
        // marks the main zoom.
        function isRed(c) { return c.r > 0.7 && c.g < 0.35 && c.b < 0.35 }
        function isGreen(c) { return c.g > 0.7 && c.r < 0.35 && c.b < 0.35 }
        function isBlue(c) { return c.b > 0.7 && c.r < 0.35 && c.g < 0.35 }

        // Share of the overview's top quarter, between the fractions from and
        // to of its width, that shows the colour test accepts.
        function topShare(from, to, test) {
            const image = grabImage(scene)
            let hits = 0
            let total = 0
            for (let y = Math.ceil(nav.height * 0.1); y < nav.height / 4; ++y) {
                for (let x = Math.ceil(nav.width * from); x < nav.width * to; x += 2) {
                    hits += test(stripPixel(image, x, y))
                    ++total
                }
            }
            return hits / total
        }

        // Share of the overview's top quarter, over the tall right half, that is red.
        function redAtTheTop() {
            return topShare(0.55, 0.95, isRed)
        }

        function test_the_strip_keeps_the_whole_series_while_the_main_chart_zooms_in_and_out() {
            view.visible = false // the scene's own view gives way
            view = createTemporaryObject(decimatedComponent, scene)
            nav = view.refNavigator
            const main = view.refChartArea
            tryVerify(() => main.zoomRect.width === 100000, 2000, "the main zoom never showed the whole series")
            // All the way in, far right of the peak: ten values across the chart.
            for (let step = 0; step < 20 && main.zoomRect.width > 10; ++step)
                view.zoomIn(2, 90000)
            verify(main.zoomRect.width <= 10, "zoomed in to " + main.zoomRect.width + " values")
            wait(50)
            // The strip zooms around the band once the band is narrow: read it
            // over the whole series.
            nav.resetZoomView()
            tryVerify(() => shareIn(0, 100000, isRed) > 0.9, 2000, "the strip lost the series while zoomed in")
            verify(topShare(0.05, 0.06, isRed) > 0.9, "the peak shows in the strip while zoomed in")
            view.showAll()
            tryVerify(() => main.zoomRect.width === 100000, 2000, "showAll never showed the whole series")
            tryVerify(() => shareIn(0, 100000, isRed) > 0.9 && topShare(0.05, 0.06, isRed) > 0.9, 2000,
                      "the strip lost the series after zooming back out")
        }

        function test_the_strip_stays_empty_without_overview() {
            compare(view.overview, false)
            compare(nav.plotter.length, 0)
            compare(shareIn(0, 20, isRed), 0, "no bars in the strip")
        }

        function test_overview_draws_the_main_series_in_the_strip() {
            view.overview = true
            compare(Array.from(nav.plotter), [view.bars])
            tryVerify(() => shareIn(0, 20, isRed) > 0.9, 2000, "the bars fill the strip's bottom rows")
            tryVerify(() => redAtTheTop() > 0.9, 2000, "the tall bars reach the top quarter")
            compare(topShare(0.05, 0.45, isGreen), 0, "the overlay layer stays out of the strip")
            compare(view.bars.chartArea, view.refChartArea, "the bars still belong to the main chart")
        }

        function test_overview_set_at_creation_lists_the_series() {
            const other = createTemporaryObject(viewComponent, scene, { overview: true })
            compare(Array.from(other.refNavigator.plotter), [other.bars])
        }

        function test_a_plotter_moved_into_or_out_of_the_series_layer_follows() {
            view.overview = true
            view.marks.drawLayer = 1
            const listed = Array.from(nav.plotter)
            verify(listed.length === 2 && listed.includes(view.bars) && listed.includes(view.marks),
                   "both series listed: " + listed)
            // The marks stand at 9 over the low left half of the bars.
            tryVerify(() => topShare(0.05, 0.45, isGreen) > 0.9, 2000, "the marks never showed in the strip")
            view.marks.drawLayer = 4
            compare(Array.from(nav.plotter), [view.bars])
            tryVerify(() => topShare(0.05, 0.45, isGreen) === 0, 2000, "the marks stayed in the strip")
        }

        function test_turning_overview_off_empties_the_strip() {
            view.overview = true
            tryVerify(() => shareIn(0, 20, isRed) > 0.9, 2000, "the bars never showed")
            view.overview = false
            compare(nav.plotter.length, 0)
            tryVerify(() => shareIn(0, 20, isRed) === 0, 2000, "the bars stayed in the strip")
        }

        function test_the_strip_follows_new_data() {
            view.overview = true
            tryVerify(() => redAtTheTop() > 0.9, 2000, "the tall bars never showed")
            view.bars.data = Array(20).fill(1).concat([9])
            view.bars.plotterArea = Qt.rect(0, 0, 21, 10)
            tryVerify(() => redAtTheTop() < 0.1, 2000, "the tall half stayed after the data changed")
            view.bars.appendData(Array(21).fill(9))
            tryVerify(() => redAtTheTop() > 0.9, 2000, "the appended tall bars never showed")
        }

        function test_a_series_added_later_is_listed_and_a_removed_one_leaves() {
            view.overview = true
            const later = createTemporaryObject(ownPlotterComponent, view, { chartArea: view.refChartArea })
            compare(Array.from(nav.plotter), [view.bars, later])
            tryVerify(() => shareIn(0, 10, isBlue) > 0.3, 2000, "the later series never showed")
            later.chartArea = null
            compare(Array.from(nav.plotter), [view.bars])
            tryVerify(() => shareIn(0, 10, isBlue) === 0, 2000, "the strip kept a series that left")
            const gone = ownPlotterComponent.createObject(view, { chartArea: view.refChartArea })
            compare(Array.from(nav.plotter), [view.bars, gone])
            gone.destroy()
            tryVerify(() => nav.plotter.length === 1, 2000, "a destroyed series stayed listed")
            tryVerify(() => shareIn(0, 10, isBlue) === 0, 2000, "the strip kept a destroyed series")
        }

        function test_plotters_the_application_put_into_the_strip_stay() {
            const own = createTemporaryObject(ownPlotterComponent, view, { chartArea: view.refNavigator })
            view.overview = true
            compare(Array.from(nav.plotter), [own, view.bars])
            view.overview = false
            compare(Array.from(nav.plotter), [own])
            tryVerify(() => shareIn(0, 20, isBlue) > 0.9, 2000, "the application's plotter left the strip")
        }

        function test_a_series_already_in_the_strip_is_not_listed_twice() {
            view.refNavigator.plotter = [view.bars]
            view.overview = true
            compare(Array.from(nav.plotter), [view.bars])
            view.overview = false
            compare(Array.from(nav.plotter), [view.bars], "the application's listing stays")
        }
    }
}
