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

    // Ten periods of a sine of amplitude 1 over x 0 .. 10000.
    readonly property int sampleCount: 10000
    readonly property var sine: Array.from({ length: sampleCount }, (_, i) => Math.sin(i * 2 * Math.PI / 1000))

    Component {
        id: viewComponent

        VexalQML {
            id: view
            width: 600
            height: 400
            updateIntervalMs: 0
            includeZero: false

            LinePlotter {
                chartArea: view.refChartArea
                name: "sine"
                color: "red"
                lineWidth: 2
                plotterArea: Qt.rect(0, 0, scene.sampleCount, 1)
                data: scene.sine
            }
        }
    }

    TestCase {
        name: "SignedView"
        when: windowShown

        property var view: null
        property var chart: null

        function init() {
            failOnWarning(/.*/) // any warning fails
            view = createTemporaryObject(viewComponent, scene)
            verify(view !== null)
            chart = view.refChartArea
            tryVerify(() => chart.zoomRect.width === scene.sampleCount, 2000, "the zoom never showed the whole data")
        }

        function test_include_zero_reaches_the_chart_and_the_y_axis() {
            verify(!chart.includeZero, "the chart follows the view")
            verify(!view.yAxis.includeZero, "the y axis follows the view")
            view.includeZero = true
            verify(chart.includeZero, "the chart follows a change")
            verify(view.yAxis.includeZero, "the y axis follows a change")
            chart.includeZero = false
            verify(!view.includeZero, "the alias reads the chart")
            verify(!view.yAxis.includeZero, "the y axis follows the chart")
        }

        function test_zoom_spans_the_negative_values() {
            tryVerify(() => chart.zoomRect.y < -0.9, 2000, "the zoom never reached below 0")
            const rect = chart.zoomRect
            verify(rect.y > -1.5 && rect.y + rect.height > 0.9 && rect.y + rect.height < 1.5,
                   "the zoom hugs the sine: " + rect)
            compare(view.yAxis.rectArea, rect)
        }

        function test_y_axis_labels_negative_values() {
            tryVerify(() => chart.zoomRect.y < -0.9, 2000, "the zoom never reached below 0")
            const repeater = findChild(view.yAxis, "ticks")
            const negative = []
            for (let i = 0; i < repeater.count; ++i) {
                const tick = repeater.itemAt(i)
                if (tick.value < 0)
                    negative.push(tick)
            }
            verify(negative.length > 0, "a tick below 0")
            for (const tick of negative) {
                const label = tick.children[0].text
                compare(label, view.yAxis.axisTextFunc(tick.value))
                verify(label.startsWith("-"), "negative label " + label)
                verify(tick.y > view.yAxis.height / 2 && tick.y <= view.yAxis.height, "drawn in the lower half")
            }
        }

        // Share of the pixels of rows [y0, y1) of the chart that are red.
        function redShare(image, y0, y1) {
            let hits = 0
            let total = 0
            for (let y = Math.ceil(y0); y < y1; ++y) {
                for (let x = 0; x < chart.width; x += 2) {
                    const c = image.pixel(x, y)
                    hits += c.r > 0.7 && c.g < 0.35 && c.b < 0.35
                    ++total
                }
            }
            return hits / total
        }

        function test_the_line_swings_below_zero() {
            tryVerify(() => chart.zoomRect.y < -0.9, 2000, "the zoom never reached below 0")
            waitForRendering(chart)
            const image = grabImage(chart)
            const rect = chart.zoomRect
            const rowOf = value => chart.height - (value - rect.y) / rect.height * chart.height
            // Troughs of ten periods cross the band from -0.98 to -0.7, peaks the band from 0.7 to 0.98.
            verify(redShare(image, rowOf(-0.7), rowOf(-0.98)) > 0.005, "line in the troughs")
            verify(redShare(image, rowOf(0.98), rowOf(0.7)) > 0.005, "line at the peaks")
            // Below the troughs and above the peaks the chart is empty.
            compare(redShare(image, rowOf(-1.01) + 2, chart.height), 0, "nothing under the troughs")
            compare(redShare(image, 0, rowOf(1.01) - 2), 0, "nothing over the peaks")
        }
    }
}
