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
    if (input.isEmpty())
        return false;
    // The window starts filled with the first value. The cell leaving it is
    // clamped to 0 for every i <= depth, so in[0] is taken out depth + 1 times
    // against depth copies: the first value weighs -1/depth on every later
    // average. This running-sum rule is the filter's contract.
    m_data = QList<double>();
    averageFrom(input, 0, double(m_depth) * input.first());
    return true;
}

qsizetype MovingAverageU64::_filter_tail(qsizetype first, const QList<double> &tail)
{
    // Only values appended to an input of two or more, at the same depth.
    if (first != m_inputCount || first < 2 || m_tailDepth != m_depth || tail.isEmpty())
        return Filter1D::_filter_tail(first, tail);
    if (!parentFilter())
        m_input.append(tail);
    const qsizetype from = first - 1;
    averageFrom(inputValues(), from, m_sumBeforeTail);
    return from;
}

void MovingAverageU64::averageFrom(const QList<double> &input, qsizetype from, double sum)
{
    const qsizetype n = input.size();
    const qsizetype depth = m_depth;
    const qsizetype outSize = n + (depth - 1) * 2;
    m_data.resize(outSize);
    const double *in = input.constData();
    double *out = m_data.data();
    for (qsizetype i = from; i < outSize; ++i) {
        // The averages before n - 1 never change as values are appended.
        if (i == n - 1)
            m_sumBeforeTail = sum;
        const qsizetype leaving = std::clamp(i - depth, qsizetype(0), n - 1);
        const qsizetype entering = std::min(i + 1, n - 1);
        sum = sum - in[leaving] + in[entering];
        out[i] = sum / double(depth);
    }
    m_inputCount = n;
    m_tailDepth = m_depth;
}
