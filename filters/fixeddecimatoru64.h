// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/fixedpointfilter.h>

// Reduces a series to numPoint cells, each holding the largest value of its
// share of the input.
class VEXAL_EXPORT FixedDecimatorU64 : public FixedPointFilter
{
    Q_OBJECT

public:
    explicit FixedDecimatorU64(QObject *parent = nullptr);
    ~FixedDecimatorU64() override;

    // At least 1 and, under a parent, at most the parent's size; recomputes.
    void setNumPoint(int count) override;

protected:
    bool _filter_func(const QList<double> &input) override;
    // Back to numPoint cells of 0, as a new filter starts.
    void _clear_func() override;
};
