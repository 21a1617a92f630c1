// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

// Value comparisons shared by the tests and fuzz targets.

#include <QtCore/QList>

#include <algorithm>
#include <cmath>

namespace VexalTest {

// True when both lists hold the same values, NaN matching NaN.
inline bool sameValues(const QList<double> &a, const QList<double> &b)
{
    if (a.size() != b.size())
        return false;
    for (qsizetype i = 0; i < a.size(); ++i) {
        if (!(a[i] == b[i] || (std::isnan(a[i]) && std::isnan(b[i]))))
            return false;
    }
    return true;
}

// The levels of a maximum pyramid of factor 2 grouping fixed pairs from the
// first cell (a last group of one where a level's length is odd), each cell
// at least 0, NaN never winning: what DecimatorU64 holds after an append.
inline QList<QList<double>> fixedPairLevels(const QList<double> &input)
{
    QList<QList<double>> levels{input};
    while (levels.last().size() > 1) {
        const QList<double> &below = levels.last();
        QList<double> level((below.size() + 1) / 2);
        for (qsizetype g = 0; g < level.size(); ++g) {
            double v = 0.0;
            for (qsizetype i = 2 * g; i < std::min(2 * g + 2, below.size()); ++i)
                v = below[i] > v ? below[i] : v;
            level[g] = v;
        }
        levels.append(level);
    }
    return levels;
}

} // namespace VexalTest
