// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/fixeddecimator2d.h>

#include "core/cellgrid_p.h"

#include <algorithm>

FixedDecimator2D::FixedDecimator2D(QObject *parent)
    : FixedPointFilter(parent)
{
}

FixedDecimator2D::~FixedDecimator2D() = default;

void FixedDecimator2D::setNumPoint(int count)
{
    const int atLeastOne = std::max(count, 1);
    if (numPoint() == count || numPoint() == atLeastOne)
        return;
    applyNumPoint(withinCellLimit(atLeastOne));
}

bool FixedDecimator2D::_filter_func(const QList<double> &input)
{
    const qsizetype pairs = input.size() / 2;
    // An input without a whole pair is ignored like an empty one.
    if (area().isNull() || pairs == 0)
        return false;
    const int cells = numPoint();
    QList<double> output(cells);
    const double cell = Vexal::CellGrid(area(), cells).cellWidth();
    const double tolerance = cell / 1000.0;
    qsizetype pair = 0;
    double pairEnd = input.at(0); // right edge of the current pair
    double peak = input.at(1);    // largest value seen for the current cell
    double edge = 0.0;
    double lastPeak = peak; // maximum of the last cell
    for (int k = 0; k < cells; ++k) {
        edge += cell;
        // The walk stops at the last pair when the area is wider than the pairs.
        while (edge - tolerance > pairEnd && pair + 1 < pairs) {
            ++pair;
            pairEnd += input.at(2 * pair);
            peak = std::max(peak, input.at(2 * pair + 1));
        }
        lastPeak = peak;
        peak = input.at(2 * pair + 1);
    }
    // Every cell is written to the same two slots, the cell width and the
    // maximum, so only the last cell's maximum remains.
    output[0] = cell;
    if (output.size() > 2)
        output[2] = lastPeak;
    m_data = std::move(output);
    return true;
}
