// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/filter1d.h>

// Base of the filters that reduce their input to a fixed number of output
// cells, numPoint, whatever the chart's size.
class VEXAL_EXPORT FixedPointFilter : public Filter1D
{
    Q_OBJECT
    Q_PROPERTY(int numPoint READ numPoint WRITE setNumPoint NOTIFY numPointChanged)

public:
    ~FixedPointFilter() override;

    int numPoint() const { return m_numPoint; }
    // Each filter clamps the count its own way, then calls applyNumPoint.
    virtual void setNumPoint(int count) = 0;

signals:
    void numPointChanged();

protected:
    explicit FixedPointFilter(QObject *parent);

    // Stores the count, recomputes from the parent's output, if any, and signals.
    void applyNumPoint(int count);
    // The count, lowered with a warning to the most cells a filter makes.
    int withinCellLimit(int count) const;

private:
    int m_numPoint = 256; // number of output cells, 256
};
