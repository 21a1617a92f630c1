// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/minimalwidth2d.h>

#include "core/numeric_p.h"

#include <cmath>

MinimalWidth2D::MinimalWidth2D(QObject *parent)
    : Filter1D(parent)
{
    keepsRootInput = true; // recomputes from its whole input after an append
}

MinimalWidth2D::~MinimalWidth2D() = default;

void MinimalWidth2D::setMergeWidth(double width)
{
    if (width < 0.0 || std::isnan(width))
        return;
    // Small changes (a zoom that barely moved) would only make the bars flicker.
    const double low = (1.0 - m_percMargin) * m_mergeWidth;
    const double high = (1.0 + m_percMargin) * m_mergeWidth;
    if (width > low && width < high)
        return;
    m_mergeWidth = width;
    if (const Filter1D *parent = parentFilter())
        setData(parent->data());
    emit mergeWidthChanged();
}

void MinimalWidth2D::setPercMargin(double margin)
{
    if (Vexal::fuzzyEqual(m_percMargin, margin))
        return;
    m_percMargin = margin;
    emit percMarginChanged();
}

bool MinimalWidth2D::_filter_func(const QList<double> &input)
{
    const qsizetype pairs = input.size() / 2;
    const double *in = input.constData();
    QList<double> output;
    output.reserve(2 * pairs + 2); // a pair appends at most two items
    double width = 0.0; // accumulated width of the items being merged
    double peak = 0.0;  // their largest value; merged items are never negative
    for (qsizetype k = 0; k < pairs; ++k) {
        const double w = in[2 * k];
        const double v = in[2 * k + 1];
        if (w >= m_mergeWidth && width == 0.0) {
            output << w << v;
            continue;
        }
        width += w;
        if (v > peak)
            peak = v;
        if (width < m_mergeWidth)
            continue;
        output << m_mergeWidth << peak;
        width -= m_mergeWidth;
        peak = v; // the overflowing item seeds the next merge
        if (width < m_mergeWidth)
            continue;
        output << width << peak;
        width = 0.0;
        peak = 0.0;
    }
    if (!Vexal::fuzzyEqual(width, 0.0))
        output << width << peak;
    m_data = std::move(output);
    return true;
}
