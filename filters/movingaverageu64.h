// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/filter1d.h>

// Smooths a series with a running mean over `depth` cells. The output is
// longer than the input by 2 x (depth - 1) cells, the window running in and out
// past both ends.
class VEXAL_EXPORT MovingAverageU64 : public Filter1D
{
    Q_OBJECT
    Q_PROPERTY(int depth READ depth WRITE setDepth NOTIFY depthChanged)

public:
    explicit MovingAverageU64(QObject *parent = nullptr);
    ~MovingAverageU64() override;

    int depth() const { return m_depth; }
    // Applies to the next input; a depth below 1 is refused.
    void setDepth(int depth);

signals:
    void depthChanged();

protected:
    bool _filter_func(const QList<double> &input) override;
    // Values appended to the input change only the averages from the one
    // whose window reached the old last value on: those are recomputed from
    // the running sum kept there, the same sums a whole input gives.
    qsizetype _filter_tail(qsizetype first, const QList<double> &tail) override;

private:
    // Replaces the averages from index from on, the running sum being sum
    // after the average before from.
    void averageFrom(const QList<double> &input, qsizetype from, double sum);

    int m_depth = 16;             // number of cells averaged, 16
    qsizetype m_inputCount = 0;   // input cells of the last averages, 0
    int m_tailDepth = 0;          // depth of the last averages, 0
    double m_sumBeforeTail = 0.0; // running sum after average m_inputCount - 2, 0
};
