// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/ichartarea.h>

#include <vexal/iplotter.h>

#include "chart/chartrenderer_p.h"
#include "chart/ichartarea_p.h"
#include "core/numeric_p.h"

#include <QtCore/QDebug>
#include <QtCore/QScopedValueRollback>
#include <QtCore/QThread>
#include <QtQuick/QQuickWindow>

#include <algorithm>
#include <cmath>

//-----------------------------------------------------------------------------
// [SECTION] Construction
//-----------------------------------------------------------------------------

IChartArea::IChartArea(QQuickItem *parent)
    : QQuickFramebufferObject(parent)
    , m_gate(std::make_shared<ChartRenderGate>())
{
    m_gate->chart = this;
    m_trailingUpdate.setSingleShot(true);
    connect(&m_trailingUpdate, &QTimer::timeout, this, &IChartArea::requestUpdate);
    // Plotters put value 0 at clip y = +1, which the unmirrored framebuffer
    // shows on the item's bottom edge.
    setMirrorVertically(false);
    // The framebuffer has the item's size, so its pixels map one to one onto
    // the window: nearest sampling copies them exactly (linear sampling would
    // blur a chart placed at a fractional position) and costs a software
    // rasteriser a good part of a frame less.
    setSmooth(false);
    // The framebuffer follows the item's size times renderScale, which the
    // renderer checks at every frame (framebufferSize).
    setTextureFollowsItemSize(false);
}

IChartArea::~IChartArea()
{
    closeRenderGate();
    const QList<IPlotter *> attached = m_plotter;
    for (IPlotter *p : attached)
        p->forgetChart(this);
}

void IChartArea::closeRenderGate()
{
    const std::lock_guard<std::recursive_mutex> locker(m_gate->mutex);
    m_gate->chart = nullptr;
}

QQuickFramebufferObject::Renderer *IChartArea::createRenderer() const
{
    return new ChartRenderer;
}

//-----------------------------------------------------------------------------
// [SECTION] Properties
//-----------------------------------------------------------------------------

void IChartArea::setChartRect(const QRectF &rect)
{
    if (Vexal::sameRect(m_chartRect, rect))
        return;
    m_chartRect = rect;
    Vexal::emitOnOwnThread(this, &IChartArea::chartRectChanged);
    announceVisibleRect();
}

void IChartArea::setAdaptAreaToPlotters(bool adapt)
{
    if (m_adaptAreaToPlotters == adapt)
        return;
    m_adaptAreaToPlotters = adapt;
    emit adaptAreaToPlottersChanged();
}

void IChartArea::setPlotter(const QList<IPlotter *> &plotters)
{
    // QML turns list entries that are not plotters into nulls.
    QList<IPlotter *> listed = plotters;
    if (listed.removeAll(nullptr) > 0)
        qWarning("IChartArea::plotter: null entries (or objects that are not plotters) were ignored");
    // Compared element by element: QList's own comparison hands memcmp a null
    // pointer for empty lists.
    if (std::equal(m_plotter.cbegin(), m_plotter.cend(), listed.cbegin(), listed.cend()))
        return;
    {
        const std::lock_guard<std::recursive_mutex> locker(m_gate->mutex);
        m_plotter = listed;
    }
    for (IPlotter *p : std::as_const(listed))
        watchLifetime(p);
    emit plotterChanged();
    requestUpdate();
}

void IChartArea::setShouldUpdate(bool shouldUpdate)
{
    if (m_shouldUpdate == shouldUpdate)
        return;
    m_shouldUpdate = shouldUpdate;
    emit shouldUpdateChanged();
}

void IChartArea::setUpdateIntervalMs(uint intervalMs)
{
    m_updateIntervalMs = intervalMs;
}

void IChartArea::setRenderScale(qreal scale)
{
    if (!(scale > 0.0) || !std::isfinite(scale)) {
        qWarning().nospace() << "IChartArea::renderScale: " << scale << " is not a positive finite scale; using 1";
        scale = 1.0;
    }
    if (qFuzzyCompare(m_renderScale, scale))
        return;
    m_renderScale = scale;
    emit renderScaleChanged();
    // Not throttled: an export waits for this frame.
    update();
}

qreal IChartArea::pixelRatio() const
{
    return (window() ? window()->effectiveDevicePixelRatio() : 1.0) * m_renderScale;
}

QSize IChartArea::framebufferSize() const
{
    const QSize items(qMax(1, int(width())), qMax(1, int(height())));
    return items * pixelRatio();
}

void IChartArea::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickFramebufferObject::geometryChange(newGeometry, oldGeometry);
    // A new size needs a new framebuffer, which the next frame makes.
    if (newGeometry.size() != oldGeometry.size())
        update();
}

//-----------------------------------------------------------------------------
// [SECTION] Plotter list
//-----------------------------------------------------------------------------

void IChartArea::addPlotter(IPlotter *plotter)
{
    if (!plotter) {
        qWarning("IChartArea::addPlotter: a null plotter was ignored");
        return;
    }
    if (m_plotter.contains(plotter))
        return;
    {
        const std::lock_guard<std::recursive_mutex> locker(m_gate->mutex);
        m_plotter.append(plotter);
    }
    watchLifetime(plotter);
    plotter->setChartArea(this);
    emit plotterChanged();
    requestUpdate();
}

void IChartArea::removePlotter(IPlotter *plotter)
{
    {
        const std::lock_guard<std::recursive_mutex> locker(m_gate->mutex);
        m_plotter.removeOne(plotter);
    }
    emit plotterChanged();
    requestUpdate();
}

void IChartArea::watchLifetime(IPlotter *plotter)
{
    // A listed plotter that does not point back at this chart (set through the
    // plotter property) still leaves the lists when it is destroyed.
    if (plotter)
        plotter->noteListedBy(this);
}

void IChartArea::forgetPlotter(QObject *plotter)
{
    // Compared by address only: the plotter may already be partly destroyed.
    const auto isGone = [plotter](const IPlotter *p) { return static_cast<const QObject *>(p) == plotter; };
    qsizetype removed = 0;
    {
        const std::lock_guard<std::recursive_mutex> locker(m_gate->mutex);
        removed = m_plotter.removeIf(isGone);
        for (QList<IPlotter *> &list : layers)
            list.removeIf(isGone);
    }
    if (removed == 0)
        return;
    emit plotterChanged();
    requestUpdate();
}

//-----------------------------------------------------------------------------
// [SECTION] Mapping and update throttle
//-----------------------------------------------------------------------------

QPointF IChartArea::mapPointToChart(QPointF point) const
{
    const QRectF r = visibleRect();
    const double w = width();
    const double h = height();
    const double x = (point.x() - r.x()) / r.width() * w;
    const double y = h - h * (point.y() - r.y()) / r.height();
    if (x < 0 || x > w || y < 0 || y > h)
        return QPointF(-1, -1);
    return QPointF(x, y);
}

void IChartArea::lock_update()
{
    updateLocked = true;
}

void IChartArea::unlock_update()
{
    updateLocked = false;
}

QRectF IChartArea::visibleRect() const
{
    return m_chartRect;
}

void IChartArea::announceVisibleRect()
{
    Vexal::emitOnOwnThread(this, &IChartArea::visibleRectChanged, visibleRect());
}

void IChartArea::requestUpdate()
{
    // Changes made while the frame is taken (the rectangles that updateArea
    // adapts) are drawn by that very frame, and changes made by the accepted
    // request's own updateArea by the frame it schedules: neither asks again.
    if (m_gate->capturing || updatingArea)
        return;
    if (QThread::currentThread() != thread()) {
        // Render-thread or pool-thread callers: the item may only be updated
        // from its own thread.
        QMetaObject::invokeMethod(this, &IChartArea::requestUpdate, Qt::QueuedConnection);
        return;
    }
    if (updateLocked || !m_shouldUpdate)
        return;
    if (m_updateIntervalMs != 0 && updateTimer.isValid() && updateTimer.elapsed() < m_updateIntervalMs) {
        // Not drawn now; one redraw at the end of the interval draws the newest
        // state, unless a frame not yet taken will draw it anyway.
        if (!m_gate->framePending && !m_trailingUpdate.isActive())
            m_trailingUpdate.start(int(m_updateIntervalMs - updateTimer.elapsed()));
        return;
    }
    if (!updateTimer.isValid())
        updateTimer.start();
    if (m_updateIntervalMs != 0)
        updateTimer.restart();
    // A rectangle that updateArea changes asks for a redraw again; that nested
    // request returns at once (it would otherwise recompute the area endlessly
    // for rectangles that never compare equal, such as NaN).
    {
        const QScopedValueRollback<bool> updating(updatingArea, true);
        updateArea();
    }
    m_gate->framePending = true;
    update();
}

void IChartArea::updateArea()
{
    if (!m_adaptAreaToPlotters)
        return;
    QRectF r;
    for (const IPlotter *p : std::as_const(m_plotter))
        r = r.united(p->plotterArea());
    if (r.isNull())
        r = QRectF(0, 0, 1, 1);
    if (qFuzzyCompare(r.height(), 0.0))
        r.setHeight(1.0);
    r.setHeight(r.height() * 1.05);
    setChartRect(r);
}

//-----------------------------------------------------------------------------
// [SECTION] Layers and drawing (render thread)
//-----------------------------------------------------------------------------

void IChartArea::synchronizePlotters()
{
    const IPlotter::FrameScope scope(this);
    // Iterates a copy: a plotter's signals may change the list while it prepares.
    const QList<IPlotter *> plotters = m_plotter;
    for (IPlotter *p : plotters)
        p->prepareRender();
    captureFrame();
}

void IChartArea::captureFrame()
{
    const IPlotter::FrameScope scope(this);
    // The plotters' areas are final once they have prepared (the first
    // preparation builds their arrays and so their heights).
    m_gate->framePending = false;
    m_gate->capturing = true;
    updateArea();
    m_gate->capturing = false;
    sortLayers();
    m_frameRect = visibleRect();
    const QList<IPlotter *> plotters = m_plotter; // see synchronizePlotters
    for (IPlotter *p : plotters)
        p->captureFrame(m_frameRect);
}

void IChartArea::sortLayers()
{
    for (size_t k = 0; k < layers.size(); ++k) {
        QList<IPlotter *> &list = layers[k];
        list.clear();
        for (IPlotter *p : std::as_const(m_plotter)) {
            if (p->drawLayer() & (1u << k))
                list.append(p);
        }
        std::sort(list.begin(), list.end(),
                  [](const IPlotter *a, const IPlotter *b) { return a->zOrder() < b->zOrder(); });
    }
}

void IChartArea::renderPlotters()
{
    const IPlotter::FrameScope scope(this);
    for (const QList<IPlotter *> &layer : layers) {
        const QList<IPlotter *> plotters = layer; // see synchronizePlotters
        for (IPlotter *p : plotters)
            p->render(m_frameRect);
    }
}
