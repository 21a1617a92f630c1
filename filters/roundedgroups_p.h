// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QtGlobal>

#include <algorithm>

// Internal helpers of the decimating filters; not part of the public interface.
namespace Vexal {

// round(x) for the group ends below, clamped to [lo, hi]. Half-way values
// round up like std::round; the fractional part x - trunc(x) is exact for the
// positions used here (0 <= x < 2^52), so the result is the same without the
// cost of a library call per group. Infinite and NaN positions give hi.
inline qsizetype roundedEnd(double x, qsizetype lo, qsizetype hi)
{
    if (!(x < double(hi)))
        return hi;
    const auto whole = qsizetype(x);
    const qsizetype end = whole + (x - double(whole) >= 0.5 ? 1 : 0);
    return std::clamp(end, lo, hi);
}

// Splits [0, n) into consecutive groups whose ends are round(x) for the
// positions x = step, step + step, ... accumulated by repeated addition, and
// calls group(k, begin, end) for group k = 0, 1, ... until the input is used
// up. With step < 1 some groups are empty. A step that does not advance
// (0, negative, NaN) makes one group of everything.
template <typename Group>
void forEachRoundedGroup(qsizetype n, double step, Group &&group)
{
    if (!(step > 0.0)) {
        group(qsizetype(0), qsizetype(0), n);
        return;
    }
    double x = 0.0;
    qsizetype begin = 0;
    for (qsizetype k = 0; begin < n; ++k) {
        x += step;
        const qsizetype end = roundedEnd(x, begin, n);
        group(k, begin, end);
        begin = end;
    }
}

} // namespace Vexal
