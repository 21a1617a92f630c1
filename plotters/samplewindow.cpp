// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include "plotters/samplewindow_p.h"

#include <algorithm>
#include <limits>

namespace Vexal {

namespace {

constexpr double NoPeak = std::numeric_limits<double>::quiet_NaN();

// Ranges shorter than this are read value by value: cheaper than building
// the stored levels for them.
constexpr qsizetype DirectReadLimit = qsizetype(1) << 16;

// A window wider than this many views is rebuilt around the view.
constexpr qsizetype WidestWindowInViews = 8;

double peakOfItems(const ItemSeries &items, qsizetype first, qsizetype last)
{
    double peak = NoPeak;
    for (qsizetype i = first; i < last; ++i)
        peak = peakOf(peak, items.at(i));
    return peak;
}

} // namespace

//-----------------------------------------------------------------------------
// [SECTION] PeakPyramid
//-----------------------------------------------------------------------------

qsizetype PeakPyramid::groupCount(qsizetype items, int level)
{
    const qsizetype size = qsizetype(1) << level;
    return (items + size - 1) / size;
}

void PeakPyramid::buildFor(const ItemSeries &items, quint64 stamp)
{
    if (m_stamp == stamp)
        return;
    m_stamp = stamp;
    m_levels.clear();
    const int firstStored = MaxComputedLevel + 1;
    const qsizetype groupSize = qsizetype(1) << firstStored;
    QList<double> level(groupCount(items.count, firstStored));
    for (qsizetype g = 0; g < level.size(); ++g)
        level[g] = peakOfItems(items, g * groupSize, std::min(items.count, (g + 1) * groupSize));
    while (level.size() > 1) {
        QList<double> next((level.size() + 1) / 2);
        for (qsizetype g = 0; g < next.size(); ++g)
            next[g] = 2 * g + 1 < level.size() ? peakOf(level[2 * g], level[2 * g + 1]) : level[2 * g];
        m_levels.append(std::move(level));
        level = std::move(next);
    }
    m_levels.append(std::move(level));
}

double PeakPyramid::storedPeak(int level, qsizetype group) const
{
    return m_levels[level - MaxComputedLevel - 1][group];
}

double PeakPyramid::peak(const ItemSeries &items, quint64 stamp, int level, qsizetype group)
{
    if (level <= MaxComputedLevel) {
        const qsizetype size = qsizetype(1) << level;
        return peakOfItems(items, group * size, std::min(items.count, (group + 1) * size));
    }
    buildFor(items, stamp);
    const qsizetype levels = m_levels.size();
    if (level - MaxComputedLevel - 1 >= levels)
        return group == 0 && levels > 0 ? m_levels.last().value(0, NoPeak) : NoPeak;
    return storedPeak(level, group);
}

double PeakPyramid::peakIn(const ItemSeries &items, quint64 stamp, qsizetype first, qsizetype last)
{
    first = std::max<qsizetype>(first, 0);
    last = std::min(last, items.count);
    const int firstStored = MaxComputedLevel + 1;
    const qsizetype groupSize = qsizetype(1) << firstStored;
    // Short ranges, and the partial groups at both ends, read the items.
    const qsizetype alignedFirst = (first + groupSize - 1) / groupSize;
    const qsizetype alignedLast = last / groupSize;
    if (last - first < DirectReadLimit || alignedFirst >= alignedLast)
        return peakOfItems(items, first, last);
    buildFor(items, stamp);
    double peak = peakOf(peakOfItems(items, first, alignedFirst * groupSize),
                         peakOfItems(items, alignedLast * groupSize, last));
    // Whole groups: climb the levels, taking the odd group at either end.
    qsizetype a = alignedFirst;
    qsizetype b = alignedLast;
    for (const QList<double> &level : std::as_const(m_levels)) {
        if (a >= b)
            break;
        if (a & 1)
            peak = peakOf(peak, level[a++]);
        if (b & 1)
            peak = peakOf(peak, level[--b]);
        a /= 2;
        b /= 2;
    }
    return peak;
}

qsizetype PeakPyramid::bytes() const
{
    qsizetype total = 0;
    for (const QList<double> &level : m_levels)
        total += level.size() * qsizetype(sizeof(double));
    return total;
}

//-----------------------------------------------------------------------------
// [SECTION] SampleWindow
//-----------------------------------------------------------------------------

int SampleWindow::levelFor(double pixelsPerItem)
{
    if (!(pixelsPerItem > 0.0) || pixelsPerItem >= 1.0)
        return 0;
    const int level = int(std::ceil(std::log2(1.0 / pixelsPerItem)));
    return std::clamp(level, 0, 62);
}

CellRange SampleWindow::groupsOf(CellRange visible) const
{
    const qsizetype size = groupSize();
    const qsizetype first = std::max(visible.first, 0) / size;
    const qsizetype last = (qsizetype(std::max(visible.last, 0)) + size - 1) / size;
    return {int(first), int(last)};
}

bool SampleWindow::follow(qsizetype items, CellRange visible, double pixelsPerItem, quint64 dataStamp)
{
    const int wanted = levelFor(pixelsPerItem);
    SampleWindow next;
    next.level = wanted;
    const CellRange shown = next.groupsOf(visible.clampedTo(items));
    const qsizetype shownSize = std::max<qsizetype>(shown.size(), 1);
    const bool holds = stamp == dataStamp && level == wanted && shown.first >= first && shown.last <= last
                       && size() <= WidestWindowInViews * shownSize;
    if (holds)
        return false;
    next.first = std::max<qsizetype>(shown.first - shownSize, 0);
    next.last = std::min(qsizetype(shown.last) + shownSize, PeakPyramid::groupCount(items, wanted));
    next.stamp = dataStamp;
    *this = next;
    return true;
}

} // namespace Vexal
