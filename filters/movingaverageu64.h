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

private:
    int m_depth = 16; // number of cells averaged, 16
};
