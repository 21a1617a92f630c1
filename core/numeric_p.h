// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

// Numeric helpers shared by the chart, the plotters and the filters: fuzzy
// comparisons, saturating conversions and the double split for single-precision
// vertices. Internal: not installed.

#include <QtCore/QList>
#include <QtCore/QRectF>

#include <cmath>
#include <cstring>
#include <limits>

namespace Vexal {

// Doubles are equal when min(|a|, |b|) >= |a - b| * 1e12: zero never equals a
// non-zero value, and two zeros are equal.
inline bool fuzzyEqual(double a, double b)
{
    return std::min(std::fabs(a), std::fabs(b)) >= std::fabs(a - b) * 1e12;
}

// Rectangles are equal when their top-left points and sizes compare equal with
// Qt's fuzzy QPointF/QSizeF equality.
inline bool sameRect(const QRectF &a, const QRectF &b)
{
    return a.topLeft() == b.topLeft() && a.size() == b.size();
}

// Data lists are the same when they share storage or hold the same bytes.
inline bool sameData(const QList<double> &a, const QList<double> &b)
{
    if (a.size() != b.size())
        return false;
    return a.constData() == b.constData() || a.isEmpty()
        || std::memcmp(a.constData(), b.constData(), size_t(a.size()) * sizeof(double)) == 0;
}

// The most cells a filter makes from one parameter (a count or a depth): far
// more than any screen shows, and small enough to allocate.
constexpr int MaxCells = 1 << 20;

// Truncates towards zero like a plain int conversion, but saturates at the int
// range (and maps NaN to 0) where the plain conversion would be undefined.
inline int toInt(double v)
{
    if (std::isnan(v))
        return 0;
    if (v >= 2147483647.0)
        return std::numeric_limits<int>::max();
    if (v <= -2147483648.0)
        return std::numeric_limits<int>::min();
    return int(v);
}

// Rounds a double to float like a plain conversion, but saturates finite values
// beyond the float range at +-FLT_MAX where the plain conversion is undefined.
// NaN and infinities pass through.
inline float toFloat(double v)
{
    constexpr double largest = std::numeric_limits<float>::max();
    if (std::isfinite(v) && std::fabs(v) > largest)
        return v > 0 ? std::numeric_limits<float>::max() : std::numeric_limits<float>::lowest();
    return float(v);
}

// A double split into two floats whose sum keeps the double's low bits: msb is
// the value rounded to float, lsb what that rounding lost (formed in double).
struct SplitDouble
{
    float msb = 0.0f; // most significant part
    float lsb = 0.0f; // least significant part
};

inline SplitDouble splitDouble(double v)
{
    const float msb = toFloat(v);
    return {msb, toFloat(v - double(msb))};
}


} // namespace Vexal
