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

void PeakPyramid::buildFor(const ItemSeries &items, DataStamps stamps)
{
    if (m_stamp == stamps.data)
        return;
    // Items changed or appended at the end change only the groups from the
    // one that holds the first changed item on; the rest is kept.
    qsizetype changed = m_stamp != 0 ? std::min({stamps.unchanged, m_count, items.count}) : 0;
    if (changed <= 0)
        m_levels.clear();
    m_stamp = stamps.data;
    m_count = items.count;
    const int firstStored = MaxComputedLevel + 1;
    const qsizetype groupSize = qsizetype(1) << firstStored;
    if (m_levels.isEmpty())
        m_levels.append(QList<double>());
    changed /= groupSize;
    QList<double> &bottom = m_levels.first();
    bottom.resize(groupCount(items.count, firstStored));
    for (qsizetype g = changed; g < bottom.size(); ++g)
        bottom[g] = peakOfItems(items, g * groupSize, std::min(items.count, (g + 1) * groupSize));
    qsizetype k = 1;
    for (; m_levels[k - 1].size() > 1; ++k) {
        changed /= 2;
        if (m_levels.size() == k)
            m_levels.append(QList<double>());
        const QList<double> &below = m_levels[k - 1];
        QList<double> &level = m_levels[k];
        level.resize((below.size() + 1) / 2);
        for (qsizetype g = changed; g < level.size(); ++g)
            level[g] = 2 * g + 1 < below.size() ? peakOf(below[2 * g], below[2 * g + 1]) : below[2 * g];
    }
    m_levels.resize(k); // fewer items may need fewer levels
}

double PeakPyramid::storedPeak(int level, qsizetype group) const
{
    return m_levels[level - MaxComputedLevel - 1][group];
}

double PeakPyramid::peak(const ItemSeries &items, DataStamps stamps, int level, qsizetype group)
{
    if (level <= MaxComputedLevel) {
        const qsizetype size = qsizetype(1) << level;
        return peakOfItems(items, group * size, std::min(items.count, (group + 1) * size));
    }
    buildFor(items, stamps);
    const qsizetype levels = m_levels.size();
    if (level - MaxComputedLevel - 1 >= levels)
        return group == 0 && levels > 0 ? m_levels.last().value(0, NoPeak) : NoPeak;
    return storedPeak(level, group);
}

double PeakPyramid::peakIn(const ItemSeries &items, DataStamps stamps, qsizetype first, qsizetype last)
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
    buildFor(items, stamps);
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
