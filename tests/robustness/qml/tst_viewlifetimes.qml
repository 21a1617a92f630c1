// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick
import QtTest
import VexalPlugin 1.0

// Complete chart views with live data, a navigator, a decorator and filters,
// created and destroyed again and again while they render.
TestCase {
    id: testCase
    name: "ViewLifetimes"
    width: 400
    height: 300
    when: windowShown

    Component {
        id: viewComponent
        VexalQML {
            id: view
            anchors.fill: parent
            updateIntervalMs: 0
            RandomU64Data {
                id: source
                type: "white"; append: false; interval: 5; numBin: 128; area: Qt.rect(0, 0, 128, 0)
            }
            DecimatorU64 { id: decimator; chartArea: view.refChartArea }
            BarPlotter { id: bars; name: "bars"; chartArea: view.refChartArea }
            AreaPlotter { id: overview; chartArea: view.refNavigator }
            BarDecorator { chartArea: view.refChartArea; active: true; plotters: [bars]; mouseX: 50; mouseY: 150 }
            Component.onCompleted: {
                source.addFilter(decimator)
                decimator.addPlotter(bars)
                source.addPlotter(overview)
            }
        }
    }

    function test_aHundredViewsComeAndGo() {
        const before = testCase.children.length
        for (let i = 0; i < 100; ++i) {
            const view = viewComponent.createObject(testCase)
            verify(view, "view " + i + " was created")
            // Half of them go before their charts' start-up tasks have run.
            if (i % 2 === 0)
                waitForRendering(view)
            view.destroy()
            wait(0)
        }
        tryCompare(testCase.children, "length", before)
    }
}
