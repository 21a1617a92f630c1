// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/filter1d.h>

// Merges (width, value) pairs narrower than mergeWidth into items of exactly
// mergeWidth carrying the largest value they absorbed, so that no bar is drawn
// thinner than that; items wide enough pass through unchanged.
class VEXAL_EXPORT MinimalWidth2D : public Filter1D
{
    Q_OBJECT
    Q_PROPERTY(double mergeWidth READ mergeWidth WRITE setMergeWidth NOTIFY mergeWidthChanged)
    Q_PROPERTY(double percMargin READ percMargin WRITE setPercMargin NOTIFY percMarginChanged)

public:
    explicit MinimalWidth2D(QObject *parent = nullptr);
    ~MinimalWidth2D() override;

    double mergeWidth() const { return m_mergeWidth; }
    // Ignores negative and NaN widths and changes within the percMargin dead
    // band; recomputes from the parent's output.
    void setMergeWidth(double width);
    double percMargin() const { return m_percMargin; }
    void setPercMargin(double margin);

signals:
    void mergeWidthChanged();
    void percMarginChanged();

protected:
    bool _filter_func(const QList<double> &input) override;

private:
    double m_mergeWidth = 1.0; // smallest width of an output item, 1.0
    double m_percMargin = 0.2; // relative dead band for mergeWidth changes, 0.2
};
