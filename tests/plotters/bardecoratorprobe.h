// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

// Opens the decorator's history and arrays to the tests; production code keeps
// them protected.
#include <vexal/bardecorator.h>
#include "plotters/gpuarrays_p.h"

class BarDecoratorProbe : public BarDecorator
{
public:
    using BarDecorator::fadeTick;
    using BarDecorator::gpuArrays;
    using BarDecorator::m_fadeTimer;
    using BarDecorator::m_highlightIndices;
    using BarDecorator::m_highlightTimes;
    using BarDecorator::m_highlightVertices;
    using BarDecorator::m_history;
    using BarDecorator::m_timeScale;
    using BarDecorator::pushHighlight;
};

// Two red bars for the decorator scenes: [0, 10) 4 high and [10, 20) 8 high on a
// chart of 20 x 10 units shown on 200 x 100 pixels. The decorator's higher
// zOrder draws its highlights over the bars.
inline const QByteArray decoratedBars = R"(
        BarPlotter {
            id: bars
            objectName: "bars"
            name: "bars"
            chartArea: chart
            color: "#ff0000"
            plotterArea: Qt.rect(0, 0, 20, 10)
            data: [4, 8]
        }
        BarDecorator {
            objectName: "decorator"
            chartArea: chart
            plotters: [bars]
            active: true
            zOrder: 1
        }
)";
