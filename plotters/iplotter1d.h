// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/iplotter.h>

// Base of plotters whose data are one list of doubles, sample i covering an
// equal share of the data area. Maps rectangles to index ranges, x positions to
// samples and mouse positions to hover records.
class VEXAL_EXPORT IPlotter1D : public IPlotter
{
    Q_OBJECT

public:
    explicit IPlotter1D(QObject *parent = nullptr);

    double max_in(const QRectF &rect) const override;
    SInfoPoint mouse_hovering(const QPointF &point) const override;

    virtual int _index_at(double x) const;
    virtual int __start_index(const QRectF &rect) const;
    virtual int __end_index(const QRectF &rect) const;

protected:
    // Width of one sample in data units (infinite without data).
    double sampleWidth() const;
};
