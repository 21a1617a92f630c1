// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

// What makes a frame cost pixels rather than samples, shared by the plotters
// that draw one item per cell. A frame builds and uploads only a window of
// items around the visible ones, and where several items fall into one pixel
// column it draws groups of 2^level items, each at its peak (its maximum).
// Internal: not installed.

#include "core/cellgrid_p.h"

#include <QtCore/QList>

#include <algorithm>
#include <cmath>

namespace Vexal {

// Writes the indices of that many bars (two triangles over four corners each,
// corners counted from 0) into indices, six per bar.
inline void writeBarIndices(quint32 *indices, qsizetype bars)
{
    for (qsizetype k = 0; k < bars; ++k) {
        const quint32 corner = quint32(4 * k);
        const quint32 bar[6] = {corner + 1, corner + 2, corner, corner + 1, corner + 2, corner + 3};
        std::copy(bar, bar + 6, indices + 6 * k);
    }
}

// The larger of two values where NaN stands for a missing value: NaN only
// when both are.
inline double peakOf(double a, double b)
{
    return std::isnan(a) || b > a ? b : a;
}

// A plotter's items read from its data list: item i is
// sign * values[offset + i * stride] (bars: every value; width/value pairs:
// each value). A sign of -1 turns peaks into troughs.
struct ItemSeries
{
    const double *values = nullptr; // the data, not owned
    qsizetype count = 0;            // number of items
    int stride = 1;                 // doubles from one item to the next
    double sign = 1.0;              // 1: the values; -1: the values negated
    double at(qsizetype i) const { return sign * values[i * stride]; }
    ItemSeries negated() const { return {values, count, stride, -sign}; }
};

// The data a pyramid is asked about: their stamp, and how many leading items
// are the same as when the pyramid was last built (0: none, or not known).
struct DataStamps
{
    DataStamps(quint64 dataStamp, qsizetype unchangedItems = 0) : data(dataStamp), unchanged(unchangedItems) {}
    quint64 data;        // changes with every change of the data
    qsizetype unchanged; // leading items unchanged since the pyramid's build
};

// Peaks of groups of 2^level items, NaN ignored. Levels up to MaxComputedLevel
// are read from the items themselves; the levels above are stored in 1/8 of a
// double per item, built once per data change (the data stamp), only when a
// frame or a query needs them, and after a change at the end of the data only
// from the group that holds its first changed item on.
class PeakPyramid
{
public:
    static constexpr int MaxComputedLevel = 3; // groups of up to 8 items are read directly

    // Items in level: groups of 2^level, the last one possibly shorter.
    static qsizetype groupCount(qsizetype items, int level);

    // The peak of group g of 2^level items; NaN when all of them are NaN.
    double peak(const ItemSeries &items, DataStamps stamps, int level, qsizetype group);
    // The peak of items [first, last); NaN when there are none.
    double peakIn(const ItemSeries &items, DataStamps stamps, qsizetype first, qsizetype last);
    // Bytes held by the stored levels.
    qsizetype bytes() const;
    // The data stamp the stored levels were built for; 0 = none.
    quint64 builtStamp() const { return m_stamp; }

private:
    void buildFor(const ItemSeries &items, DataStamps stamps);
    double storedPeak(int level, qsizetype group) const;

    QList<QList<double>> m_levels; // m_levels[k]: level MaxComputedLevel + 1 + k; empty
    quint64 m_stamp = 0;           // data stamp the levels were built for; 0 = none
    qsizetype m_count = 0;         // items they were built for; 0
};

// The groups a chart's frames hold on the GPU for one plotter.
struct SampleWindow
{
    int level = 0;       // groups of 2^level items; 0
    qsizetype first = 0; // first group held; 0
    qsizetype last = 0;  // one past the last group held; 0
    quint64 stamp = 0;   // data stamp it was built for; 0 = not built

    qsizetype groupSize() const { return qsizetype(1) << level; }
    qsizetype size() const { return last - first; }

    // The lowest level whose groups are at least a pixel wide, for items
    // pixelsPerItem pixels wide (0 or less: every item is drawn).
    static int levelFor(double pixelsPerItem);
    // The visible items [visible.first, visible.last) as groups of this level.
    CellRange groupsOf(CellRange visible) const;
    // The groups to draw for the visible items, extended by extraAfter groups
    // on the right, counted from the window's first group and cut to it.
    CellRange drawnGroups(CellRange visible, int extraAfter = 0) const
    {
        const CellRange groups = groupsOf(visible);
        const int held = int(first);
        return CellRange{groups.first - held, groups.last - held + extraAfter}.clampedTo(size());
    }

    // Keeps the window when it still holds the visible items at the level
    // that the item width asks for, and is not far wider than the view;
    // otherwise moves it to the visible groups with one view width of margin
    // on each side. Returns true when it moved, so that its arrays are rebuilt.
    bool follow(qsizetype items, CellRange visible, double pixelsPerItem, quint64 dataStamp);
};

} // namespace Vexal
