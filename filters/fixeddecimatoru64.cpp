// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/fixeddecimatoru64.h>

#include "filters/roundedgroups_p.h"

#include <algorithm>

FixedDecimatorU64::FixedDecimatorU64(QObject *parent)
    : FixedPointFilter(parent)
{
    m_data.resize(numPoint());
}

FixedDecimatorU64::~FixedDecimatorU64() = default;

void FixedDecimatorU64::setNumPoint(int count)
{
    count = withinCellLimit(std::max(count, 1));
    if (const Filter1D *parent = parentFilter())
        count = int(std::min(qsizetype(count), parent->data().size()));
    if (numPoint() == count)
        return;
    m_data = QList<double>(count);
    applyNumPoint(count);
}

void FixedDecimatorU64::_clear_func()
{
    Filter1D::_clear_func();
    m_data = QList<double>(numPoint());
}

bool FixedDecimatorU64::_filter_func(const QList<double> &input)
{
    if (area().isNull() || input.isEmpty())
        return false;
    const qsizetype n = input.size();
    // The output keeps its size; cells that no group reaches keep their values.
    double *out = m_data.data();
    const qsizetype cells = m_data.size();
    Vexal::forEachRoundedGroup(n, double(n) / double(numPoint()), [&](qsizetype k, qsizetype begin, qsizetype end) {
        if (k >= cells)
            return;
        // The first largest value of the group; negative values are kept.
        out[k] = begin == end ? 0.0 : *std::max_element(input.cbegin() + begin, input.cbegin() + end);
    });
    return true;
}
