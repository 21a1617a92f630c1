// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

// What one chart's frames of a plotter hold: the window of groups around its
// view, the arrays built for that window and the frame's uniforms. Each chart
// that shows a plotter keeps its own (IPlotter::frameExtra). Internal: not
// installed; tests read them.

#include <vexal/barplotterdx.h>
#include "plotters/samplewindow_p.h"

#include <QtGui/QColor>
#include <QtGui/QMatrix4x4>
#include <QtGui/QVector2D>

namespace Vexal {

// A chart's frame of a BarPlotter.
struct BarFrame
{
    SampleWindow window;      // groups held; none
    QList<float> points;      // "point" attribute, 4 per group (1 in the geometry variant); empty
    QList<float> vertexIds;   // "vertexID" attribute, 4 per group, from 0 at the window's left; empty
    QList<quint32> indices;   // two triangles per group, 6 indices; empty
    double left = 0.0;        // data x of the window's left edge; 0
    double groupWidth = 0.0;  // data width of one group; 0
    CellRange drawn;          // groups drawn, counted from the window's left; none
    bool hangs = false;       // built for a view reaching below 0: bars hang down from 0; false
};

// A chart's frame of an AreaPlotter.
struct AreaFrame
{
    QRectF rect;             // visible rectangle, null
    SampleWindow window;     // groups of samples held; none
    bool hangs = false;      // built for a view reaching below 0: filled down to the troughs; false
    QList<QVector2D> fill;   // fill strip (k, 0), (k, peak), k counted from the window's left; empty
    QList<QVector2D> border; // border line strip (k, peak); empty
    QMatrix4x4 matrix;       // window group index and value to clip space
    QColor borderColor;      // border line colour
    QColor top;              // fill colour at the top edge
    QColor bottom;           // fill colour at value 0
};

// A chart's frame of a BarPlotterDx.
struct PairFrame
{
    QRectF rect;                          // visible rectangle, null
    SampleWindow window;                  // groups of bars held; none
    double bottom = 0.0;                  // value at the view's bottom edge they were built for; 0
    QList<BarPlotterDx::Vertex> vertices; // 4 per group, x relative to the plotter area's left edge, y to bottom; empty
    QList<quint32> indices;               // two triangles per group, 6 indices; empty
    CellRange drawn;                      // groups drawn, counted from the window's left; none
    float xMsb = 0.0f;                    // the view's left edge relative to the plotter area, split
    float xLsb = 0.0f;
    float screenDx = 0.0f;                // clip units per data unit along x
    float screenDy = 0.0f;                // half the view's height
    QColor color;                         // bar colour
};

// A chart's frame of a LinePlotter: the segments of its view, each drawn as
// two triangles, in device pixels from the view's bottom-left corner.
struct LineFrame
{
    QRectF rect;               // visible rectangle the vertices were built for; null
    QRectF dataArea;           // data area they were built for; null
    QSizeF pixels;             // device pixels of the chart they were built for; empty
    quint64 stamp = 0;         // data stamp they were built for; 0 = none
    quint64 style = 0;         // style version (width, decimation) they were built for; 0 = none
    QList<QVector2D> vertices; // six per segment; empty
    QMatrix4x4 matrix;         // device pixels to clip space
    QColor color;              // line colour
};

} // namespace Vexal
