// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15
import VexalPlugin 1.0
import VexalTest 1.0

Item {
    id: root
    width: 200
    height: 100

    Component {
        id: chartComponent
        IChartArea {
            width: 200
            height: 100
        }
    }

    Component {
        id: plotterComponent
        TestPlotter {}
    }

    SignalSpy { id: rectSpy; signalName: "chartRectChanged" }
    SignalSpy { id: plotterSpy; signalName: "plotterChanged" }
    SignalSpy { id: shouldSpy; signalName: "shouldUpdateChanged" }
    SignalSpy { id: adaptSpy; signalName: "adaptAreaToPlottersChanged" }

    TestCase {
        name: "IChartArea"

        function createChart() {
            var chart = createTemporaryObject(chartComponent, root)
            verify(chart !== null)
            for (var spy of [rectSpy, plotterSpy, shouldSpy, adaptSpy]) {
                spy.target = chart
                spy.clear()
            }
            return chart
        }

        function test_defaults() {
            var chart = createChart()
            compare(chart.chartRect, Qt.rect(0, 0, 1, 1))
            compare(chart.adaptAreaToPlotters, true)
            compare(chart.shouldUpdate, true)
            compare(chart.updateIntervalMs, 25)
            compare(chart.plotter.length, 0)
        }

        function test_setters_notify_on_change_only_data() {
            return [
                { tag: "chartRect changed", property: "chartRect", value: Qt.rect(1, 2, 3, 4), spy: rectSpy, emits: 1 },
                { tag: "chartRect unchanged", property: "chartRect", value: Qt.rect(0, 0, 1, 1), spy: rectSpy, emits: 0 },
                { tag: "shouldUpdate changed", property: "shouldUpdate", value: false, spy: shouldSpy, emits: 1 },
                { tag: "shouldUpdate unchanged", property: "shouldUpdate", value: true, spy: shouldSpy, emits: 0 },
                { tag: "adaptAreaToPlotters changed", property: "adaptAreaToPlotters", value: false, spy: adaptSpy, emits: 1 },
                { tag: "adaptAreaToPlotters unchanged", property: "adaptAreaToPlotters", value: true, spy: adaptSpy, emits: 0 }
            ]
        }

        function test_setters_notify_on_change_only(row) {
            var chart = createChart()
            chart[row.property] = row.value
            compare(row.spy.count, row.emits)
            compare(chart[row.property], row.value)
        }

        function test_update_interval_is_writable() {
            var chart = createChart()
            chart.updateIntervalMs = 0
            compare(chart.updateIntervalMs, 0)
        }

        function test_add_and_remove_plotters() {
            var chart = createChart()
            var plotter = createTemporaryObject(plotterComponent, root)
            chart.addPlotter(plotter)
            compare(plotterSpy.count, 1)
            compare(chart.plotter.length, 1)
            compare(chart.plotter[0], plotter)
            compare(plotter.chartArea, chart)
            chart.addPlotter(plotter)
            compare(plotterSpy.count, 1)
            chart.removePlotter(plotter)
            compare(plotterSpy.count, 2)
            compare(chart.plotter.length, 0)
            chart.removePlotter(plotter)
            compare(plotterSpy.count, 3)
        }

        function test_plotter_chart_area_property_attaches() {
            var chart = createChart()
            var plotter = createTemporaryObject(plotterComponent, root, { chartArea: chart })
            compare(chart.plotter.length, 1)
            plotter.chartArea = null
            compare(chart.plotter.length, 0)
        }

        function test_plotter_list_property() {
            var chart = createChart()
            var a = createTemporaryObject(plotterComponent, root)
            var b = createTemporaryObject(plotterComponent, root)
            chart.plotter = [a, b]
            compare(plotterSpy.count, 1)
            compare(chart.plotter.length, 2)
            compare(a.chartArea, null)
        }

        function test_map_point_to_chart_data() {
            return [
                { tag: "inside", point: Qt.point(5, 0.5), expected: Qt.point(100, 50) },
                { tag: "bottom-left corner", point: Qt.point(0, 0), expected: Qt.point(0, 100) },
                { tag: "outside", point: Qt.point(11, 0.5), expected: Qt.point(-1, -1) }
            ]
        }

        function test_map_point_to_chart(row) {
            var chart = createChart()
            chart.adaptAreaToPlotters = false
            chart.chartRect = Qt.rect(0, 0, 10, 1)
            compare(chart.mapPointToChart(row.point), row.expected)
        }

        function test_lock_and_unlock_update() {
            var chart = createChart()
            chart.updateIntervalMs = 0
            chart.lock_update()
            var plotter = createTemporaryObject(plotterComponent, root, { plotterArea: Qt.rect(0, 0, 4, 2) })
            chart.addPlotter(plotter) // would recompute chartRect if not locked
            compare(chart.chartRect, Qt.rect(0, 0, 1, 1))
            chart.unlock_update()
            compare(chart.chartRect, Qt.rect(0, 0, 1, 1))
            plotter.plotterArea = Qt.rect(0, 0, 4, 4)
            compare(chart.chartRect, Qt.rect(0, 0, 4, 4.2))
        }
    }
}
