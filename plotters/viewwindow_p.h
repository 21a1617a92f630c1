// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

// The part of a long series that a plotter builds and uploads: the cells
// around the visible range, so that a frame, a zoom step and a pan step cost
// in proportion to the pixels shown rather than to the length of the data.
// Internal: not installed.

#include "core/cellgrid_p.h"

#include <QtCore/QRectF>

namespace Vexal {

class ViewWindow
{
public:
    // Cells held on each side of the visible range, in visible widths: a pan
    // by up to one view width reuses the window.
    static constexpr int Margin = 1;
    // A window this many times larger than the view it serves is built anew,
    // so that zooming deep into a wide window lets its arrays shrink again.
    static constexpr int MaxOversize = 8;

    // Chooses the window for the cells of grid that the x range of visible
    // shows. Returns true when the window changed (the caller rebuilds its
    // arrays from cells()), false when the current one still covers the view.
    bool update(const CellGrid &grid, const QRectF &visible)
    {
        const CellRange shown = grid.cellsBetween(visible.left(), visible.right()).clampedTo(grid.count());
        if (m_valid && m_count == grid.count() && covers(shown))
            return false;
        const int extra = Margin * std::max(shown.size(), 1);
        m_cells = CellRange{shown.first - extra, shown.last + extra}.clampedTo(grid.count());
        m_count = grid.count();
        m_valid = true;
        return true;
    }

    // The next update builds a new window (the data changed).
    void invalidate() { m_valid = false; }

    // The cells held, in the grid's indices.
    CellRange cells() const { return m_cells; }
    bool isValid() const { return m_valid; }

private:
    bool covers(const CellRange &shown) const
    {
        const bool inside = shown.first >= m_cells.first && shown.last <= m_cells.last;
        const bool oversized = m_cells.size() > MaxOversize * std::max(shown.size(), 1) + 2 * MaxOversize;
        return inside && !oversized;
    }

    CellRange m_cells;     // cells held, empty
    qsizetype m_count = 0; // cell count of the grid the window was chosen on, 0
    bool m_valid = false;  // false until the first update and after invalidate()
};

} // namespace Vexal
