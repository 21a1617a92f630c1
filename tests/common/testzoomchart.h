// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/ichartarea.h>

// A chart with a zoom rectangle that it draws instead of chartRect, announced
// by zoomRectChanged() and visibleRectChanged(), as zoomable charts do.
class TestZoomChart : public IChartArea
{
    Q_OBJECT
    Q_PROPERTY(QRectF zoomRect READ zoomRect WRITE setZoomRect NOTIFY zoomRectChanged)

public:
    explicit TestZoomChart(QQuickItem *parent = nullptr);
    ~TestZoomChart() override;

    QRectF zoomRect() const { return m_zoomRect; }
    void setZoomRect(const QRectF &rect);
    QRectF visibleRect() const override { return m_zoomRect; }

signals:
    void zoomRectChanged();

private:
    QRectF m_zoomRect{0, 0, 1, 1}; // the rectangle drawn, (0, 0, 1, 1)
};
