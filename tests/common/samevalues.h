// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>

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

} // namespace VexalTest
