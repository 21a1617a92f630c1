// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/ichartarea.h>

#include <QtCore/QSharedPointer>
#include <QtQuick/QQuickItemGrabResult>

// The chart item that QML views use: it draws the sub-rectangle zoomRect of
// chartRect, lets the zoom's height follow the visible values (from 0 up to
// the largest, or around all of them for signed data), and can grab a picture
// of itself.
class VEXAL_EXPORT ChartArea : public IChartArea
{
    Q_OBJECT
    Q_PROPERTY(QRectF zoomRect READ zoomRect WRITE setZoomRect NOTIFY zoomRectChanged)
    Q_PROPERTY(bool adaptChartHeight READ adaptChartHeight WRITE setAdaptChartHeight NOTIFY adaptChartHeightChanged)
    Q_PROPERTY(bool includeZero READ includeZero WRITE setIncludeZero NOTIFY includeZeroChanged)
    Q_PROPERTY(bool follow READ follow WRITE setFollow NOTIFY followChanged)

public:
    explicit ChartArea(QQuickItem *parent = nullptr);
    ~ChartArea() override;

    QRectF zoomRect() const { return m_zoomRect; }
    void setZoomRect(const QRectF &rect);
    bool adaptChartHeight() const { return m_adaptChartHeight; }
    void setAdaptChartHeight(bool adapt);
    bool includeZero() const { return m_includeZero; }
    void setIncludeZero(bool include);
    // While on, data that grow to the right move the zoom: a zoom that showed
    // all the data grows with them, any other keeps its width and moves its
    // right edge to the newest value's. Writing zoomRect leaves it on.
    bool follow() const { return m_follow; }
    void setFollow(bool follow);

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
    void includeZeroChanged();
    void followChanged();

private:
    void startShowingAllOnceSettled();
    // With follow on: moves the zoom after chartRect's right edge moved from
    // before's to where it is now.
    void followDataFrom(const QRectF &before);
    // The vertical range of the new zoom r from 0 (or the plotters' lowest
    // bottom) to just above the largest value shown in r's x range.
    void fitHeightFromZero(QRectF &r) const;
    // The vertical range of the new zoom r around the values shown in its x
    // range, wherever they lie; false when no visible plotter shows a finite
    // value there.
    bool fitHeightToValues(QRectF &r) const;
    // What the plotters are asked for the values shown in r: r's x range over
    // the whole height of the chart.
    QRectF valuesColumn(const QRectF &r) const;

    QRectF m_zoomRect{0, 0, 1, 1};                   // data rectangle shown, kept inside chartRect
    QSharedPointer<QQuickItemGrabResult> m_grabResult; // result of the last exportImage, null
    bool m_adaptChartHeight = true;                  // zoom height follows the visible maximum
    bool m_includeZero = true;                       // the adapted height starts at 0; false: spans the visible values
    bool m_follow = false;                           // the zoom follows data that grow to the right
};
