// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include "plotters/linepyramid_p.h"

#include "core/slidingwindow_p.h"

#include <algorithm>
#include <cmath>
#include <limits>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace Vexal {

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

// Widens [min, max] by a finite range; a NaN bound is taken over.
void widen(double &min, double &max, double low, double high)
{
    if (low < min || std::isnan(min))
        min = low;
    if (high > max || std::isnan(max))
        max = high;
}

LinePyramid::Group groupOfValues(const double *values, qsizetype count)
{
    LinePyramid::Group g{values[0], NaN, NaN, values[count - 1]};
    for (qsizetype i = 0; i < count; ++i) {
        if (std::isfinite(values[i]))
            widen(g.min, g.max, values[i], values[i]);
    }
    return g;
}

// The smallest and largest of a full group of level 1, NaN skipped: +inf and
// -inf when there is no other value.
#if defined(__SSE2__)
void extremesOfFullGroup(const double *values, double &low, double &high)
{
    // minpd(v, m) is v < m ? v : m lane by lane, which skips NaN like the
    // plain comparison below.
    constexpr double Inf = std::numeric_limits<double>::infinity();
    __m128d min[2] = {_mm_set1_pd(Inf), _mm_set1_pd(Inf)};
    __m128d max[2] = {_mm_set1_pd(-Inf), _mm_set1_pd(-Inf)};
    for (qsizetype i = 0; i < LinePyramid::FirstGroup; i += 4) {
        for (int pair = 0; pair < 2; ++pair) {
            const __m128d v = _mm_loadu_pd(values + i + 2 * pair);
            min[pair] = _mm_min_pd(v, min[pair]);
            max[pair] = _mm_max_pd(v, max[pair]);
        }
    }
    const __m128d lows = _mm_min_pd(min[0], min[1]);
    const __m128d highs = _mm_max_pd(max[0], max[1]);
    low = std::min(_mm_cvtsd_f64(lows), _mm_cvtsd_f64(_mm_unpackhi_pd(lows, lows)));
    high = std::max(_mm_cvtsd_f64(highs), _mm_cvtsd_f64(_mm_unpackhi_pd(highs, highs)));
}
#else
void extremesOfFullGroup(const double *values, double &low, double &high)
{
    low = std::numeric_limits<double>::infinity();
    high = -low;
    for (qsizetype i = 0; i < LinePyramid::FirstGroup; ++i) {
        low = values[i] < low ? values[i] : low;
        high = values[i] > high ? values[i] : high;
    }
}
#endif

// A full group of level 1; one whose extremes come out infinite (an infinity
// inside, or no finite value) is read again the careful way.
LinePyramid::Group groupOfFullValues(const double *values)
{
    double low = 0.0, high = 0.0;
    extremesOfFullGroup(values, low, high);
    if (std::isinf(low) || std::isinf(high))
        return groupOfValues(values, LinePyramid::FirstGroup);
    return {values[0], low, high, values[LinePyramid::FirstGroup - 1]};
}

LinePyramid::Group mergedGroup(const LinePyramid::Group *groups, qsizetype count)
{
    LinePyramid::Group g{groups[0].first, NaN, NaN, groups[count - 1].last};
    for (qsizetype i = 0; i < count; ++i) {
        if (!std::isnan(groups[i].min))
            widen(g.min, g.max, groups[i].min, groups[i].max);
    }
    return g;
}

} // namespace

qsizetype LinePyramid::groupSize(int k)
{
    qsizetype size = 1;
    for (int i = 0; i < k; ++i)
        size *= factorAbove(i);
    return size;
}

int LinePyramid::countLevels(qsizetype values) const
{
    int count = 0;
    for (qsizetype groups = values; groups > 1;) {
        ++count;
        const qsizetype size = groupSize(count);
        groups = (values + leadIn(count) + size - 1) / size;
    }
    return count;
}

void LinePyramid::rebuildFrom(const QList<double> &values, qsizetype firstChanged)
{
    // Levels keep their storage between builds: replacing data of the same
    // length touches no new pages.
    const qsizetype n = values.size();
    const int count = countLevels(n);
    m_levels.resize(count);
    if (count == 0)
        return;
    QList<Group> &first = m_levels[0];
    const qsizetype lead = leadIn(1);
    first.resize((n + lead + FirstGroup - 1) / FirstGroup);
    const double *raw = values.constData();
    qsizetype changed = (std::clamp<qsizetype>(firstChanged, 0, n) + lead) / FirstGroup; // first changed group of each level
    for (qsizetype j = changed; j < first.size(); ++j) {
        const qsizetype begin = std::max<qsizetype>(j * FirstGroup - lead, 0);
        const qsizetype end = std::min((j + 1) * FirstGroup - lead, n);
        first[j] = end - begin == FirstGroup ? groupOfFullValues(raw + begin) : groupOfValues(raw + begin, end - begin);
    }
    for (int k = 2; k <= count; ++k) {
        const QList<Group> &below = m_levels[k - 2];
        QList<Group> &next = m_levels[k - 1];
        const qsizetype dropped = droppedBelow(k);
        const qsizetype m = below.size();
        next.resize((m + dropped + Factor - 1) / Factor);
        changed = (changed + dropped) / Factor;
        for (qsizetype i = changed; i < next.size(); ++i) {
            const qsizetype begin = std::max<qsizetype>(i * Factor - dropped, 0);
            next[i] = mergedGroup(below.constData() + begin, std::min((i + 1) * Factor - dropped, m) - begin);
        }
    }
}

void LinePyramid::dropFront(const QList<double> &values, qsizetype count)
{
    if (count <= 0)
        return;
    const qsizetype before = m_origin;
    m_origin += count;
    m_levels.resize(countLevels(values.size())); // fewer values may need fewer levels
    for (int k = 1; k <= levelCount(); ++k) {
        QList<Group> &groups = m_levels[k - 1];
        const qsizetype size = groupSize(k);
        Vexal::dropFront(groups, std::min(m_origin / size - before / size, groups.size()));
    }
    refreshFirstGroups(values);
}

void LinePyramid::refreshFirstGroups(const QList<double> &values)
{
    if (m_levels.isEmpty())
        return;
    m_levels[0].first() = groupOfValues(values.constData(), std::min(FirstGroup - leadIn(1), values.size()));
    for (int k = 2; k <= levelCount(); ++k) {
        const QList<Group> &below = m_levels[k - 2];
        m_levels[k - 1].first() = mergedGroup(below.constData(), std::min(Factor - droppedBelow(k), below.size()));
    }
}

int LinePyramid::levelFor(double valuesPerGroup) const
{
    int k = 0;
    while (k < levelCount() && double(groupSize(k + 1)) <= valuesPerGroup)
        ++k;
    return k;
}

bool LinePyramid::range(const QList<double> &values, qsizetype first, qsizetype last, double &min,
                        double &max) const
{
    min = max = NaN;
    // Climbs while whole groups fit, reading the ragged ends on each level.
    // Indices count from the first value ever held, as the groups do.
    int k = 0;
    qsizetype a = std::max<qsizetype>(first, 0) + m_origin;
    qsizetype b = std::min(last, values.size()) + m_origin; // [a, b) in units of level k
    const auto take = [&](qsizetype i) {
        if (k == 0) {
            if (const double v = values[i - m_origin]; std::isfinite(v))
                widen(min, max, v, v);
        } else if (const Group &g = level(k)[i - m_origin / groupSize(k)]; !std::isnan(g.min)) {
            widen(min, max, g.min, g.max);
        }
    };
    while (a < b) {
        const qsizetype factor = factorAbove(k);
        if (k == levelCount() || b - a < 2 * factor) {
            for (qsizetype i = a; i < b; ++i)
                take(i);
            break;
        }
        while (a % factor)
            take(a++);
        while (b % factor)
            take(--b);
        a /= factor;
        b /= factor;
        ++k;
    }
    return !std::isnan(min);
}

qsizetype LinePyramid::bytes() const
{
    qsizetype total = 0;
    for (const QList<Group> &level : m_levels)
        total += level.capacity() * qsizetype(sizeof(Group));
    return total;
}

} // namespace Vexal
