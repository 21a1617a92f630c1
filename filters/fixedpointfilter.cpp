// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/fixedpointfilter.h>

#include "core/numeric_p.h"

#include <QtCore/QDebug>

FixedPointFilter::FixedPointFilter(QObject *parent)
    : Filter1D(parent)
{
    keepsRootInput = true; // recomputes from its whole input after an append
}

FixedPointFilter::~FixedPointFilter() = default;

void FixedPointFilter::applyNumPoint(int count)
{
    m_numPoint = count;
    if (const Filter1D *parent = parentFilter())
        setData(parent->data());
    emit numPointChanged();
}

int FixedPointFilter::withinCellLimit(int count) const
{
    if (count <= Vexal::MaxCells)
        return count;
    qWarning().nospace() << metaObject()->className() << ": numPoint " << count << " is too large, using "
                         << Vexal::MaxCells;
    return Vexal::MaxCells;
}
