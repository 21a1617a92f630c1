// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/chartarea.h>

#include <vexal/iplotter.h>

#include "chart/ichartarea_p.h"
#include "core/numeric_p.h"

#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QThread>
#include <QtCore/QThreadPool>

#include <algorithm>
#include <cmath>

ChartArea::ChartArea(QQuickItem *parent)
    : IChartArea(parent)
{
    startShowingAllOnceSettled();
}

ChartArea::~ChartArea()
{
    closeRenderGate();
}

// A fresh chart shows its whole data once QML bindings and plotters have
// settled: 100 ms after construction a pool task resets the zoom. The task
// reaches the chart through the render gate, which a destroyed chart closes,
// and the zoom is written on the chart's own thread.
void ChartArea::startShowingAllOnceSettled()
{
    QThreadPool *pool = QThreadPool::globalInstance();
    if (!pool)
        return;
    const std::shared_ptr<ChartRenderGate> gate = renderGate();
    // The future is dropped on purpose: nobody waits for the task.
    (void)QtConcurrent::run(pool, [gate] {
        QThread::msleep(100);
        const std::lock_guard<std::recursive_mutex> locker(gate->mutex);
        if (auto *chart = static_cast<ChartArea *>(gate->chart)) {
            QMetaObject::invokeMethod(chart, [chart] { chart->setZoomRect(chart->chartRect()); },
                                      Qt::QueuedConnection);
        }
    });
}

void ChartArea::setZoomRect(const QRectF &rect)
{
    if (Vexal::sameRect(m_zoomRect, rect))
        return;
    m_zoomRect = rect;
    Vexal::emitOnOwnThread(this, &ChartArea::zoomRectChanged);
    announceVisibleRect();
    requestUpdate();
}

void ChartArea::setAdaptChartHeight(bool adapt)
{
    if (m_adaptChartHeight == adapt)
        return;
    m_adaptChartHeight = adapt;
    emit adaptChartHeightChanged();
}

void ChartArea::setIncludeZero(bool include)
{
    if (m_includeZero == include)
        return;
    m_includeZero = include;
    emit includeZeroChanged();
    // The heights from 0 start at the chart's bottom, not where the values were.
    if (include)
        setZoomRect(m_zoomRect.translated(0.0, chartRect().top() - m_zoomRect.top()));
    requestUpdate();
}

void ChartArea::setFollow(bool follow)
{
    if (m_follow == follow)
        return;
    m_follow = follow;
    emit followChanged();
}

void ChartArea::followDataFrom(const QRectF &before)
{
    const QRectF after = chartRect();
    if (!m_follow || !(after.right() > before.right()))
        return;
    const double tolerance = 1e-9 * std::max(1.0, std::abs(before.width()));
    const bool showedAll = m_zoomRect.left() <= before.left() + tolerance
                           && m_zoomRect.right() >= before.right() - tolerance;
    QRectF zoom = m_zoomRect;
    if (showedAll) {
        zoom.setLeft(after.left());
        zoom.setRight(after.right());
    } else {
        zoom.moveRight(after.right());
    }
    setZoomRect(zoom);
}

void ChartArea::resetZoomView()
{
    setZoomRect(chartRect());
}

void ChartArea::exportImage(const QString &)
{
    m_grabResult = grabToImage(QSize(int(width() * 2), int(height() * 2)));
}

QRectF ChartArea::visibleRect() const
{
    return m_zoomRect;
}

QRectF ChartArea::valuesColumn(const QRectF &r) const
{
    const QRectF chart = chartRect();
    return QRectF(r.left(), chart.top(), r.width(), chart.height());
}

void ChartArea::fitHeightFromZero(QRectF &r) const
{
    const QRectF column = valuesColumn(r);
    double m = 1.0;
    for (const IPlotter *p : plotter()) {
        if (p->visible())
            m = std::max(m, p->max_in(column));
    }
    // Plotter areas reaching below 0 (signed lines) keep their bottom.
    const double top = m * 1.05;
    r.setHeight(r.top() < 0.0 ? top - r.top() : top);
}

bool ChartArea::fitHeightToValues(QRectF &r) const
{
    const QRectF column = valuesColumn(r);
    double low = qInf(), high = -qInf();
    for (const IPlotter *p : plotter()) {
        double minimum = 0.0, maximum = 0.0;
        if (p->visible() && p->valueRange(column, minimum, maximum)) {
            low = std::min(low, minimum);
            high = std::max(high, maximum);
        }
    }
    if (!std::isfinite(low) || !std::isfinite(high) || !std::isfinite(high - low))
        return false;
    // 5 % of the span above and below; a constant gets 5 % of its value, or 1 at 0.
    const double span = high - low;
    double margin = span > 0.0 ? 0.05 * span : 0.05 * std::abs(low);
    if (!(high + margin > low - margin)) // 0, or too small to tell apart at these values
        margin = 1.0;
    r.setTop(low - margin);
    r.setBottom(high + margin);
    return true;
}

void ChartArea::updateArea()
{
    const QRectF before = chartRect();
    IChartArea::updateArea();
    followDataFrom(before);
    const QRectF chart = chartRect();
    QRectF r = m_zoomRect.intersected(chart);
    if (r.isNull())
        r = chart;
    if (m_adaptChartHeight) {
        if (m_includeZero || !fitHeightToValues(r))
            fitHeightFromZero(r);
    } else {
        r.setHeight(chart.height());
        r = r.intersected(chart);
    }
    setZoomRect(r);
}
