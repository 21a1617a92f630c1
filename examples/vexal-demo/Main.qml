// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
pragma ComponentBehavior: Bound
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Controls.Material 2.15
import QtQuick.Layouts 1.15
import VexalPlugin 1.0
import VexalDemo 1.0
import "qrc:/qml"

// Five views of what the module is for: a live histogram, ten million samples
// that zoom and pan smoothly, a signed waveform of ten million samples drawn
// as a line, bars of individual widths far from the origin, and a series read
// from a CSV file.
ApplicationWindow {
    id: window

    width: 1280
    height: 900
    visible: true
    title: "Vexal demo"
    Material.theme: dark ? Material.Dark : Material.Light
    Material.accent: Material.Teal

    readonly property var views: [liveView, longView, signedView, pairView, csvView]
    // Series of the CSV chart, given by main.cpp.
    required property string csvFile
    // The Dark Material theme (--dark).
    property bool dark: false

    header: ToolBar {
        Material.background: window.dark ? Material.color(Material.Grey, Material.Shade900) : "white"
        Material.foreground: window.dark ? "white" : Material.color(Material.Grey, Material.Shade900)
        RowLayout {
            anchors.fill: parent
            anchors.leftMargin: 12
            Label {
                text: "Vexal: GPU charts of long series"
                font.pointSize: 13
                Layout.fillWidth: true
            }
            Switch {
                id: logScale
                text: "Log scale"
            }
            Button {
                text: "Export PNG"
                onClicked: liveView.exportImage("vexal-export.png", 2)
            }
        }
    }

    Connections {
        target: liveView
        function onExportComplete(path) { status.text = "Exported the live histogram to " + path }
    }

    footer: Label {
        id: status
        padding: 6
        text: "Drag left to zoom (the direction picks the gesture), drag with the right button to pan, Esc cancels."
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 6
        spacing: 5

        // Three views above, two below.
        RowLayout {
            spacing: 5

            // ---- Live histogram: normal samples accumulate, decimated to the pixel width
            DemoView {
                id: liveView
                title: "Live histogram (DecimatorU64 → BarPlotter)"
                xLabel: value => value.toFixed(0)
                xTitle: "bin"
                yTitle: "count"

                RandomU64Data {
                    id: live
                    type: "normal"
                    append: true
                    interval: 100
                    numBin: 2048
                    area: Qt.rect(0, 0, 2048, 1)
                    Component.onCompleted: addFilter(liveDecimator)
                }
                DecimatorU64 {
                    id: liveDecimator
                    chartArea: liveView.refChartArea
                    Component.onCompleted: addPlotter(liveBars)
                }
                BarPlotter {
                    id: liveBars
                    name: "histogram"
                    color: Material.color(Material.Teal)
                    chartArea: liveView.refChartArea
                }
                BarDecorator {
                    id: decorator
                    chartArea: liveView.refChartArea
                    drawLayer: 2
                    active: liveView.refChartMouse.containsMouse
                    mouseX: liveView.refChartMouse.mouseX
                    mouseY: liveView.refChartMouse.mouseY
                    Component.onCompleted: addPlotter(liveBars)
                }
                HoverTooltip {
                    view: liveView
                    info: decorator.infoMap.length > 0 ? decorator.infoMap[0] : null
                }
            }

            // ---- Ten million samples with a smoothed overlay
            DemoView {
                id: longView
                title: "10 000 000 samples, smoothed (AreaPlotter)"
                xLabel: value => value >= 1e6 ? (value / 1e6).toFixed(2) + " M"
                                              : value >= 1e3 ? (value / 1e3).toFixed(0) + " k" : value.toFixed(0)
                xTitle: "sample"

                DemoSeries {
                    id: longSeries
                    Component.onCompleted: {
                        addFilter(longDecimator)
                        count = 10000000
                    }
                }
                DecimatorU64 {
                    id: longDecimator
                    chartArea: longView.refChartArea
                    Component.onCompleted: {
                        addPlotter(longBars)
                        addFilter(smoothing)
                    }
                }
                MovingAverageU64 {
                    id: smoothing
                    depth: 8
                    Component.onCompleted: addPlotter(smoothArea)
                }
                BarPlotter {
                    id: longBars
                    name: "signal"
                    color: Material.color(Material.Indigo)
                    chartArea: longView.refChartArea
                }
                AreaPlotter {
                    id: smoothArea
                    name: "average"
                    color: Qt.rgba(1.0, 0.6, 0.0, 0.45)
                    borderColor: Material.color(Material.Orange, Material.Shade800)
                    borderWidth: 2
                    zOrder: 1
                    chartArea: longView.refChartArea
                }
            }

            // ---- A signed waveform: the y axis follows the values below 0
            DemoView {
                id: signedView
                title: "Signed chirp, 10 000 000 samples (LinePlotter)"
                includeZero: false
                xLabel: longView.xLabel
                xTitle: "sample"

                DemoSeries {
                    id: chirpSeries
                    shape: DemoSeries.Chirp
                    Component.onCompleted: {
                        addPlotter(chirpLine)
                        count = 10000000
                    }
                }
                LinePlotter {
                    id: chirpLine
                    name: "chirp"
                    color: Material.color(Material.Pink)
                    chartArea: signedView.refChartArea
                }
            }
        }

        RowLayout {
            spacing: 5

            // ---- Pair data: bars of individual widths, ten million units from the origin
            DemoView {
                id: pairView
                title: "Bars of individual widths at x ≈ 1e7 (MinimalWidth2D → BarPlotterDx)"
                xLabel: value => value.toFixed(1)

                Filter1D {
                    id: pairs
                    Component.onCompleted: {
                        addFilter(merge)
                        let values = []
                        let total = 0
                        for (let k = 0; k < 3000; ++k) {
                            const width = 0.05 + (k % 7) * 0.08 + (k % 13 === 0 ? 2.0 : 0.0)
                            values.push(width, 20 + 15 * Math.sin(k / 40) + (k % 17) * 1.5)
                            total += width
                        }
                        area = Qt.rect(10000000, 0, total, 1)
                        data = values
                    }
                }
                MinimalWidth2D {
                    id: merge
                    mergeWidth: 0.5
                    Component.onCompleted: addPlotter(pairBars)
                }
                BarPlotterDx {
                    id: pairBars
                    name: "pairs"
                    color: Material.color(Material.DeepPurple)
                    chartArea: pairView.refChartArea
                }
            }

            // ---- A series read from a CSV file (one number a line)
            DemoView {
                id: csvView
                title: "A day of readings from a CSV file (SCSVReader → BarPlotter): " + window.csvFile
                // Readings 21.6 s apart from midnight on: the sample's 4000 lines span a day.
                xFormat: "datetime"
                timeOrigin: new Date(2026, 10, 23)
                xTitle: "local time"

                SCSVReader {
                    id: csv
                    binWidth: 21.6
                    Component.onCompleted: {
                        addPlotter(csvBars)
                        file = window.csvFile
                    }
                }
                BarPlotter {
                    id: csvBars
                    name: "CSV"
                    color: Material.color(Material.Red, Material.Shade400)
                    chartArea: csvView.refChartArea
                }
            }
        }
    }

    // One titled chart view of the grid; its children are the data-flow tree.
    component DemoView: Pane {
        id: pane

        property alias title: view.title
        property alias refChartArea: view.refChartArea
        property alias refNavigator: view.refNavigator
        property alias refChartMouse: view.refChartMouse
        property alias includeZero: view.includeZero
        property alias xTitle: view.xTitle
        property alias yTitle: view.yTitle
        // The x labels' format and, for "datetime", the time of x = 0.
        property string xFormat: "si"
        property date timeOrigin: new Date(0)
        // Tick label of an x value; the view's default shows seconds.
        property var xLabel: null
        default property alias tree: holder.data

        function exportImage(path, upsize) { view.exportImage(path, upsize) }
        signal exportComplete(string path)

        Layout.fillWidth: true
        Layout.fillHeight: true
        padding: 4
        Material.elevation: 2

        VexalQML {
            id: view
            anchors.fill: parent
            isYAxisLog: logScale.checked
            // The overview strip shows the view's series.
            overview: true
            onExportComplete: path => pane.exportComplete(path)
            Component.onCompleted: {
                if (pane.xLabel)
                    xAxis.axisTextFunc = pane.xLabel
                xAxis.labelFormat = pane.xFormat
                xAxis.timeOrigin = pane.timeOrigin
            }
        }
        Item { id: holder }
    }

    // The hovered bar's name and value above it.
    component HoverTooltip: ChartTooltip {
        id: hoverTip
        property DemoView view
        property var info: null

        readonly property point anchor: info ? view.refChartArea.mapPointToChart(
            Qt.point(info.rect.x + info.rect.width / 2, info.rect.y + info.rect.height)) : Qt.point(-1, -1)

        parent: view.refChartArea
        visible: info !== null && anchor.x >= 0
        x: anchor.x - width / 2
        y: anchor.y - height - 4
        z: 10

        Column {
            anchors.centerIn: parent
            anchors.verticalCenterOffset: -parent.delta / 2
            Label {
                text: hoverTip.info ? hoverTip.info.name : ""
                color: hoverTip.info ? hoverTip.info.color : "black"
                font.pointSize: 9
            }
            Label {
                text: hoverTip.info ? hoverTip.info.rect.height.toFixed(0) + " counts" : ""
                font.pointSize: 9
            }
        }
    }
}
