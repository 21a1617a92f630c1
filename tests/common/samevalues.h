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

// The levels of a maximum pyramid of factor 2 grouping fixed pairs counted
// from the first cell ever held, origin cells before input's first (a group
// of one where a pair lost a half to the front or has none yet), each cell at
// least 0, NaN never winning: what DecimatorU64 holds after appends and drops.
inline QList<QList<double>> fixedPairLevels(const QList<double> &input, qsizetype origin = 0)
{
    QList<QList<double>> levels{input};
    for (int k = 1; levels.last().size() > 1; ++k) {
        const QList<double> &below = levels.last();
        const qsizetype first = origin >> (k - 1); // below's first cell, counted from the first ever
        QList<double> level(((first + below.size() - 1) >> 1) - (first >> 1) + 1);
        for (qsizetype i = 0; i < below.size(); ++i) {
            double &cell = level[((first + i) >> 1) - (first >> 1)];
            cell = below[i] > cell ? below[i] : cell;
        }
        levels.append(level);
    }
    return levels;
}

} // namespace VexalTest
