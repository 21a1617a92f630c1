// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

// n equal cells side by side over an area: the one place where filters and
// plotters turn x positions into cell indices and back. Internal: not installed.

#include "core/numeric_p.h"

#include <QtCore/QRectF>

#include <algorithm>
#include <cmath>

namespace Vexal {

// A half-open range [first, last) of cell indices.
struct CellRange
{
    int first = 0; // first index in the range
    int last = 0;  // one past the last index

    bool isEmpty() const { return last <= first; }
    int size() const { return std::max(last - first, 0); }
    // The range cut to the cells [0, count).
    CellRange clampedTo(qsizetype count) const
    {
        const int n = int(std::min<qsizetype>(count, std::numeric_limits<int>::max()));
        const int a = std::clamp(first, 0, n);
        return {a, std::clamp(last, a, n)};
    }
};

// Cell i covers [left + i * width, left + (i + 1) * width). Positions are
// measured from the area's left edge and divided by the cell width, so every
// user computes the same index for the same x. An empty grid has infinitely
// wide cells: every x maps to cell 0, and callers check indices against count.
class CellGrid
{
public:
    CellGrid() = default;
    CellGrid(const QRectF &area, qsizetype count)
        : m_left(area.left())
        , m_width(area.width() / double(count))
        , m_count(count)
    {
    }

    double left() const { return m_left; }
    double cellWidth() const { return m_width; }
    qsizetype count() const { return m_count; }

    // Left edge of cell i.
    double cellLeft(qsizetype i) const { return m_left + double(i) * m_width; }
    // The column of cell i from value 0 up to height.
    QRectF cellRect(qsizetype i, double height) const { return QRectF(cellLeft(i), 0.0, m_width, height); }
    // The cell that contains x (rounded down); not clamped: x at the right edge
    // gives count, x left of the grid a negative index.
    int cellAt(double x) const { return toInt(std::floor(position(x))); }
    // The cell boundary nearest to x: the right half of cell k gives k + 1.
    int nearestBoundary(double x) const { return toInt(std::round(position(x))); }
    // The cells that [x0, x1] touches, from the cell of x0 to the first cell
    // whose left edge is at or beyond x1; not clamped.
    CellRange cellsBetween(double x0, double x1) const
    {
        return {cellAt(x0), toInt(std::ceil(position(x1)))};
    }

private:
    double position(double x) const { return (x - m_left) / m_width; }

    double m_left = 0.0;   // left edge of cell 0, 0
    double m_width = 0.0;  // width of one cell (infinite when count is 0), 0
    qsizetype m_count = 0; // number of cells, 0
};

} // namespace Vexal
