// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include "plotters/linepyramid_p.h"

#include <algorithm>
#include <cmath>
#include <limits>

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

// A full group. The plain comparisons skip NaN by themselves; a group whose
// extremes come out infinite (an infinity inside, or no finite value) is
// read again the careful way.
LinePyramid::Group groupOfFullValues(const double *values)
{
    double min = std::numeric_limits<double>::infinity();
    double max = -min;
    for (qsizetype i = 0; i < LinePyramid::Factor; ++i) {
        min = values[i] < min ? values[i] : min;
        max = values[i] > max ? values[i] : max;
    }
    if (std::isinf(min) || std::isinf(max))
        return groupOfValues(values, LinePyramid::Factor);
    return {values[0], min, max, values[LinePyramid::Factor - 1]};
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
        size *= Factor;
    return size;
}

void LinePyramid::build(const QList<double> &values)
{
    // Levels keep their storage between builds: replacing data of the same
    // length touches no new pages.
    const qsizetype n = values.size();
    size_t count = 0;
    for (qsizetype m = n; m > 1; m = (m + Factor - 1) / Factor)
        ++count;
    m_levels.resize(count);
    if (count == 0)
        return;
    std::vector<Group> &first = m_levels[0];
    first.resize(size_t((n + Factor - 1) / Factor));
    const double *raw = values.constData();
    const qsizetype full = n / Factor;
    for (qsizetype j = 0; j < full; ++j)
        first[size_t(j)] = groupOfFullValues(raw + j * Factor);
    if (full * Factor < n)
        first.back() = groupOfValues(raw + full * Factor, n - full * Factor);
    for (size_t k = 1; k < count; ++k) {
        const std::vector<Group> &below = m_levels[k - 1];
        const qsizetype m = qsizetype(below.size());
        std::vector<Group> &next = m_levels[k];
        next.resize(size_t((m + Factor - 1) / Factor));
        for (qsizetype i = 0; i < m; i += Factor)
            next[size_t(i / Factor)] = mergedGroup(below.data() + i, std::min(Factor, m - i));
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
    int k = 0;
    qsizetype a = std::max<qsizetype>(first, 0);
    qsizetype b = std::min(last, values.size()); // [a, b) in units of level k
    const auto take = [&](qsizetype i) {
        if (k == 0) {
            if (std::isfinite(values[i]))
                widen(min, max, values[i], values[i]);
        } else if (const Group &g = level(k)[size_t(i)]; !std::isnan(g.min)) {
            widen(min, max, g.min, g.max);
        }
    };
    while (a < b) {
        if (k == levelCount() || b - a < 2 * Factor) {
            for (qsizetype i = a; i < b; ++i)
                take(i);
            break;
        }
        while (a % Factor)
            take(a++);
        while (b % Factor)
            take(--b);
        a /= Factor;
        b /= Factor;
        ++k;
    }
    return !std::isnan(min);
}

qsizetype LinePyramid::bytes() const
{
    qsizetype total = 0;
    for (const std::vector<Group> &level : m_levels)
        total += qsizetype(level.capacity() * sizeof(Group));
    return total;
}

} // namespace Vexal
