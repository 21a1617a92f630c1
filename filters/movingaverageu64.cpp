// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/movingaverageu64.h>

#include "core/numeric_p.h"

#include <QtCore/QDebug>

#include <algorithm>

MovingAverageU64::MovingAverageU64(QObject *parent)
    : Filter1D(parent)
{
    keepsRootInput = true; // recomputes from its whole input after an append
}

MovingAverageU64::~MovingAverageU64() = default;

void MovingAverageU64::setDepth(int depth)
{
    if (depth < 1 || depth > Vexal::MaxCells) {
        qWarning() << "MovingAverageU64: depth" << depth << "refused, it must be at least 1 and at most"
                   << Vexal::MaxCells << "; keeping" << m_depth;
        return;
    }
    if (m_depth == depth)
        return;
    m_depth = depth;
    emit depthChanged();
}

bool MovingAverageU64::_filter_func(const QList<double> &input)
{
    const qsizetype n = input.size();
    if (n == 0)
        return false;
    const qsizetype depth = m_depth;
    const qsizetype outSize = n + (depth - 1) * 2;
    QList<double> output(outSize);
    const double *in = input.constData();
    double *out = output.data();
    // The window starts filled with the first value. The cell leaving it is
    // clamped to 0 for every i <= depth, so in[0] is taken out depth + 1 times
    // against depth copies: the first value weighs -1/depth on every later
    // average. This running-sum rule is the filter's contract.
    double sum = double(depth) * in[0];
    for (qsizetype i = 0; i < outSize; ++i) {
        const qsizetype leaving = std::clamp(i - depth, qsizetype(0), n - 1);
        const qsizetype entering = std::min(i + 1, n - 1);
        sum = sum - in[leaving] + in[entering];
        out[i] = sum / double(depth);
    }
    m_data = std::move(output);
    return true;
}
