#include "filters/fixedpointfilter.h"

FixedPointFilter::FixedPointFilter(QObject *parent)
    : Filter1D(parent)
{
}

FixedPointFilter::~FixedPointFilter() = default;

void FixedPointFilter::applyNumPoint(int count)
{
    m_numPoint = count;
    if (const Filter1D *parent = parentFilter())
        setData(parent->data());
    emit numPointChanged();
}
