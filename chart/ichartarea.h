// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/vexalglobal.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QList>
#include <QtCore/QRectF>
#include <QtCore/QTimer>
#include <QtQuick/QQuickFramebufferObject>

#include <array>
#include <memory>

class IPlotter;
Q_MOC_INCLUDE(<vexal/iplotter.h>)
struct ChartRenderGate; // the chart's lifetime as its renderer sees it; internal

// Threads, and what each touches:
//
// | what                                   | written by            | read by                     | guarded by                      |
// |----------------------------------------|-----------------------|-----------------------------|---------------------------------|
// | properties, plotter data, filters      | GUI thread            | GUI thread                  | nothing (one thread)            |
// | plotter list, layer lists              | GUI thread            | render thread (draw)        | render gate mutex               |
// | plotter arrays and GPU buffers         | GUI (CPU), render (GPU) | render thread (upload)    | synchronize step (GUI blocked)  |
// | frame state (rectangles, colours)      | render thread, in the synchronize step | render thread (draw) | synchronize step           |
// | chart alive? (for renderer, pool task) | GUI thread (destructor) | render thread, pool task  | render gate mutex               |
//
// The scene graph blocks the GUI thread during the renderer's synchronize
// step: everything the draw reads is taken there (captureFrame), so the draw
// that follows reads nothing the GUI thread writes. The render gate is the
// one lock of the chart; it orders the plotter lists against a draw in flight
// and a chart's destruction against its renderer and start-up task.

// The QML item on which plotters draw. It owns the list of attached plotters,
// the data rectangle mapped onto the item, the three draw layers and the
// throttle that turns many change notifications into few redraws.
class VEXAL_EXPORT IChartArea : public QQuickFramebufferObject
{
    Q_OBJECT
    Q_PROPERTY(QRectF chartRect READ chartRect WRITE setChartRect NOTIFY chartRectChanged)
    Q_PROPERTY(bool adaptAreaToPlotters READ adaptAreaToPlotters WRITE setAdaptAreaToPlotters NOTIFY adaptAreaToPlottersChanged)
    Q_PROPERTY(QList<IPlotter *> plotter READ plotter WRITE setPlotter NOTIFY plotterChanged)
    Q_PROPERTY(bool shouldUpdate READ shouldUpdate WRITE setShouldUpdate NOTIFY shouldUpdateChanged)
    Q_PROPERTY(uint updateIntervalMs READ updateIntervalMs WRITE setUpdateIntervalMs)
    Q_PROPERTY(qreal renderScale READ renderScale WRITE setRenderScale NOTIFY renderScaleChanged)

public:
    explicit IChartArea(QQuickItem *parent = nullptr);
    ~IChartArea() override;

    QRectF chartRect() const { return m_chartRect; }
    void setChartRect(const QRectF &rect);
    bool adaptAreaToPlotters() const { return m_adaptAreaToPlotters; }
    void setAdaptAreaToPlotters(bool adapt);
    QList<IPlotter *> plotter() const { return m_plotter; }
    void setPlotter(const QList<IPlotter *> &plotters);
    bool shouldUpdate() const { return m_shouldUpdate; }
    void setShouldUpdate(bool shouldUpdate);
    uint updateIntervalMs() const { return m_updateIntervalMs; }
    void setUpdateIntervalMs(uint intervalMs);
    qreal renderScale() const { return m_renderScale; }
    void setRenderScale(qreal scale);
    // Framebuffer pixels per logical pixel: the window's device pixel ratio
    // (1 outside a window) times renderScale.
    qreal pixelRatio() const;
    // The framebuffer's size: the item's size times pixelRatio().
    QSize framebufferSize() const;

    Q_INVOKABLE void addPlotter(IPlotter *plotter);
    Q_INVOKABLE void removePlotter(IPlotter *plotter);
    Q_INVOKABLE virtual QPointF mapPointToChart(QPointF point) const;
    Q_INVOKABLE void lock_update();
    Q_INVOKABLE void unlock_update();

    Renderer *createRenderer() const override;
    // Throttled redraw request; callable from any thread. A request inside the
    // interval after the last accepted one is not drawn at once, but one redraw
    // follows at the end of that interval, so the newest state always shows.
    virtual void requestUpdate();
    // The data rectangle that plotters are drawn and hovered in.
    virtual QRectF visibleRect() const;
    // Render thread, GUI thread blocked: lets every plotter upload what changed,
    // then takes the frame (captureFrame).
    virtual void synchronizePlotters();
    // Render thread: one frame of drawing, from what captureFrame took.
    virtual void renderPlotters();
    // Recomputes the rectangles, sorts the layers and lets every plotter take
    // what its draw reads of the GUI-side state. Part of the synchronize step,
    // where the GUI thread is blocked: the draw that follows runs while the GUI
    // thread goes on, so it must read nothing that the GUI thread writes.
    void captureFrame();
    // Recomputes chartRect from the plotters.
    virtual void updateArea();
    // Rebuilds the three layer lists.
    virtual void sortLayers();

    // kept: part of the plotter interface; plotters change their data on the
    // GUI thread only, so there is nothing for a lock here to order.
    void lockData() {}
    void unlockData() {}

    // The plotters of draw layer k, as sorted by the last sortLayers().
    QList<IPlotter *> layer(int k) const { return layers.at(size_t(k)); }
    // Internal: shared with the renderer and the start-up task.
    std::shared_ptr<ChartRenderGate> renderGate() const { return m_gate; }
    // Called by a plotter that is being destroyed: it leaves every list at once.
    void forgetPlotter(QObject *plotter);

signals:
    void chartRectChanged();
    void plotterChanged();
    void shouldUpdateChanged();
    void adaptAreaToPlottersChanged();
    void renderScaleChanged();
    // visibleRect() changed: chartRect here, zoomRect on a ChartArea.
    void visibleRectChanged(const QRectF &rect);

protected:
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    // Stops the renderer from calling back; every destructor of the hierarchy
    // calls it first, so no frame runs on a half-destroyed chart.
    void closeRenderGate();
    // Emits visibleRectChanged with the current visibleRect(); subclasses call
    // it whenever what visibleRect() returns changes.
    void announceVisibleRect();
    void watchLifetime(IPlotter *plotter);

    std::array<QList<IPlotter *>, 3> layers; // per draw layer, sorted by zOrder
    bool updateLocked = false;                // set by lock_update
    bool updatingArea = false;                // updateArea runs; nested requests only redraw
    QElapsedTimer updateTimer;                // time since the last accepted redraw request

private:
    QRectF m_chartRect{0, 0, 1, 1};           // data rectangle shown by the item
    bool m_adaptAreaToPlotters = true;        // chartRect follows the plotters' areas
    QList<IPlotter *> m_plotter;              // attached plotters, in order of attachment; not owned
    bool m_shouldUpdate = true;               // false: change notifications never redraw
    uint m_updateIntervalMs = 25;             // minimum ms between accepted redraws, 0 = no throttle
    qreal m_renderScale = 1.0;                // framebuffer pixels per device pixel (an export draws at 2, 3...); 1
    std::shared_ptr<ChartRenderGate> m_gate;  // shared with the renderer
    QRectF m_frameRect;                       // visibleRect() as captured for the frame being drawn
    QTimer m_trailingUpdate;                  // single shot: redraws once at the end of a throttled interval
};
