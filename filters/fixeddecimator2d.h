// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/fixedpointfilter.h>

// Reduces (width, value) pair data to numPoint output cells spread over the
// area's width, each taking the largest value of the pairs it covers. Only
// cell 0 (the cell width) and cell 2 (the last cell's maximum) of the output
// are written, on every pass; the other cells stay 0.0.
class VEXAL_EXPORT FixedDecimator2D : public FixedPointFilter
{
    Q_OBJECT

public:
    explicit FixedDecimator2D(QObject *parent = nullptr);
    ~FixedDecimator2D() override;

    // At least 1; recomputes from the parent's output.
    void setNumPoint(int count) override;

protected:
    bool _filter_func(const QList<double> &input) override;
};
