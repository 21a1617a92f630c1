// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/ichartarea.h>

#include <QtCore/QSharedPointer>
#include <QtQuick/QQuickItemGrabResult>

// The chart item that QML views use: it draws the sub-rectangle zoomRect of
// chartRect, lets the zoom's height follow the largest visible value, and can
// grab a picture of itself.
class VEXAL_EXPORT ChartArea : public IChartArea
{
    Q_OBJECT
    Q_PROPERTY(QRectF zoomRect READ zoomRect WRITE setZoomRect NOTIFY zoomRectChanged)
    Q_PROPERTY(bool adaptChartHeight READ adaptChartHeight WRITE setAdaptChartHeight NOTIFY adaptChartHeightChanged)

public:
    explicit ChartArea(QQuickItem *parent = nullptr);
    ~ChartArea() override;

    QRectF zoomRect() const { return m_zoomRect; }
    void setZoomRect(const QRectF &rect);
    bool adaptChartHeight() const { return m_adaptChartHeight; }
    void setAdaptChartHeight(bool adapt);

    // Shows the whole chartRect again.
    Q_INVOKABLE void resetZoomView();
    // Grabs a picture at twice the item's size and keeps it in grabResult();
    // it writes no file (the QML view saves its own pictures), so path is unused.
    Q_INVOKABLE void exportImage(const QString &path);
    QSharedPointer<QQuickItemGrabResult> grabResult() const { return m_grabResult; }

    QRectF visibleRect() const override;
    void updateArea() override;

signals:
    void zoomRectChanged();
    void adaptChartHeightChanged();

private:
    void startShowingAllOnceSettled();

    QRectF m_zoomRect{0, 0, 1, 1};                   // data rectangle shown, kept inside chartRect
    QSharedPointer<QQuickItemGrabResult> m_grabResult; // result of the last exportImage, null
    bool m_adaptChartHeight = true;                  // zoom height follows the visible maximum
};
