// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick
import VexalPlugin 1.0

// Live data at a 1 ms interval, one source accumulating (append) and one
// replacing, through a decimator and a moving average into three plotters,
// and a stream of 100 000 values a second into a full sliding window of
// 1e7 values, while a driver zooms, pans, hides and recolours them.
VexalQML {
    id: view
    width: 800
    height: 600

    RandomU64Data {
        id: growing
        type: "normal"; append: true; interval: 1; numBin: 4096; area: Qt.rect(0, 0, 4096, 0)
    }
    RandomU64Data {
        id: replacing
        type: "white"; append: false; interval: 1; numBin: 2048; area: Qt.rect(0, 0, 4096, 0)
    }
    DecimatorU64 { id: decimator; chartArea: view.refChartArea }
    MovingAverageU64 { id: average; depth: 8 }
    BarPlotter { id: bars; name: "growing"; chartArea: view.refChartArea }
    AreaPlotter { id: smoothed; name: "smoothed"; chartArea: view.refChartArea; zOrder: 1 }
    BarPlotter { id: noise; name: "noise"; chartArea: view.refChartArea; color: "orange"; zOrder: 2 }
    DecimatorU64 { id: window; chartArea: view.refChartArea; capacity: 10000000; area: Qt.rect(0, 0, 4096, 0) }
    BarPlotter { id: windowBars; name: "window"; chartArea: view.refChartArea; color: "seagreen"; zOrder: 3 }
    BarDecorator { id: decorator; chartArea: view.refChartArea; active: true; plotters: [bars, noise] }

    Component.onCompleted: {
        growing.addFilter(decimator)
        decimator.addPlotter(bars)
        replacing.addFilter(average)
        average.addPlotter(smoothed)
        replacing.addPlotter(noise)
        window.addPlotter(windowBars)
        // Full before the first second is measured: memory must stay flat from there on.
        window.data = Array.from({ length: window.capacity }, () => Math.random() * 100)
    }

    // 1 000 values every 10 ms: each append drops as many at the front.
    Timer {
        interval: 10
        repeat: true
        running: true
        onTriggered: window.appendData(Array.from({ length: 1000 }, () => Math.random() * 100))
    }

    readonly property var colours: ["orange", "steelblue", "seagreen", "crimson"]

    // One action every 100 ms, in a cycle of ten.
    Timer {
        interval: 100
        repeat: true
        running: true
        property int step: 0
        onTriggered: {
            const chart = view.refChartArea
            const zoom = chart.zoomRect
            switch (step % 10) {
            case 0: chart.zoomRect = Qt.rect(zoom.x, zoom.y, zoom.width / 2, zoom.height); break
            case 1: chart.zoomRect = Qt.rect(zoom.x + zoom.width / 4, zoom.y, zoom.width, zoom.height); break
            case 2: noise.visible = !noise.visible; break
            case 3: smoothed.color = view.colours[step % 4]; break
            case 4: chart.zoomRect = Qt.rect(zoom.x - zoom.width / 8, zoom.y, zoom.width, zoom.height); break
            case 5: bars.visible = !bars.visible; break
            case 6: noise.color = view.colours[(step + 1) % 4]; break
            case 7: chart.resetZoomView(); break
            case 8: smoothed.visible = !smoothed.visible; break
            default: bars.color = view.colours[(step + 2) % 4]; break
            }
            decorator.mouseX = (step * 37) % chart.width
            decorator.mouseY = chart.height - 10
            ++step
        }
    }
}
