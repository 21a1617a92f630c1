// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtTest 1.15
import VexalPlugin 1.0
import "qrc:/qml" as Resources

// The chart view is reachable from the module import alone and from the
// library's resources; both give a working view.
Item {
    id: root
    width: 400
    height: 300

    Component { id: fromModule; VexalQML { anchors.fill: parent } }
    Component { id: fromResources; Resources.VexalQML { anchors.fill: parent } }
    Component { id: axisFromModule; LinearXAxis { width: 700; rectArea: Qt.rect(0, 0, 1000, 1) } }
    Component { id: legendFromModule; HorizontalLegend { width: 300 } }

    TestCase {
        name: "ModuleRoutes"
        when: windowShown

        function test_view_data() {
            return [
                { tag: "import VexalPlugin alone gives VexalQML", component: fromModule },
                { tag: "qrc:/qml gives VexalQML", component: fromResources }
            ]
        }

        function test_view(row) {
            const view = createTemporaryObject(row.component, root)
            verify(view !== null)
            verify(view.refChartArea !== null)
            compare(view.refChartArea.width, root.width - 60 - 12)
            compare(view.format_time(0.0025), "2.50 ms")
        }

        function test_module_lists_the_parts() {
            const axis = createTemporaryObject(axisFromModule, root)
            verify(axis !== null)
            compare(axis.dxTick, 125)
            verify(createTemporaryObject(legendFromModule, root) !== null)
        }
    }
}
