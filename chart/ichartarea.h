#pragma once

#include "plugin/vexalglobal.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QList>
#include <QtCore/QMutex>
#include <QtCore/QRectF>
#include <QtCore/QThread>
#include <QtQuick/QQuickFramebufferObject>

#include <array>
#include <memory>
#include <mutex>

class IPlotter;
Q_MOC_INCLUDE("plotters/iplotter.h")

// Shared between a chart and its renderer: the renderer draws only while the
// chart is alive, and the GUI thread changes the plotter lists only between
// frames. A standard mutex, so that thread checkers see the ordering it gives.
struct ChartRenderGate
{
    std::recursive_mutex mutex;        // held while drawing and while the plotter lists change
    class IChartArea *chart = nullptr; // null once the chart is being destroyed
};

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

    Q_INVOKABLE void addPlotter(IPlotter *plotter);
    Q_INVOKABLE void removePlotter(IPlotter *plotter);
    Q_INVOKABLE virtual QPointF mapPointToChart(QPointF point) const;
    Q_INVOKABLE void lock_update();
    Q_INVOKABLE void unlock_update();

    Renderer *createRenderer() const override;
    // Throttled redraw request; callable from any thread.
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

    void lockData() { dataMutex.lock(); }
    void unlockData() { dataMutex.unlock(); }

    // The plotters of draw layer k, as sorted by the last sortLayers().
    QList<IPlotter *> layer(int k) const { return layers.at(size_t(k)); }
    std::shared_ptr<ChartRenderGate> renderGate() const { return m_gate; }
    // Called by a plotter that is being destroyed: it leaves every list at once.
    void forgetPlotter(QObject *plotter);

signals:
    void chartRectChanged();
    void plotterChanged();
    void shouldUpdateChanged();
    void adaptAreaToPlottersChanged();

protected:
    // Emits a change signal on the chart's own thread. The render thread's
    // synchronize step recomputes the rectangles; QML and the chart's other
    // listeners still hear of the change on the thread they live in, and a
    // notice still pending when the chart goes is dropped with it.
    template <typename Chart>
    void emitOnOwnThread(void (Chart::*signal)())
    {
        auto *chart = static_cast<Chart *>(this);
        if (QThread::currentThread() == thread())
            emit(chart->*signal)();
        else
            QMetaObject::invokeMethod(chart, signal, Qt::QueuedConnection);
    }

    // Stops the renderer from calling back; every destructor of the hierarchy
    // calls it first, so no frame runs on a half-destroyed chart.
    void closeRenderGate();
    void watchLifetime(IPlotter *plotter);

    std::array<QList<IPlotter *>, 3> layers; // per draw layer, sorted by zOrder
    QMutex dataMutex;                         // held by plotters while they replace their data
    bool updateLocked = false;                // set by lock_update
    bool updatingArea = false;                // updateArea runs; nested requests only redraw
    QElapsedTimer updateTimer;                // time since the last accepted redraw request

private:
    QRectF m_chartRect{0, 0, 1, 1};           // data rectangle shown by the item
    bool m_adaptAreaToPlotters = true;        // chartRect follows the plotters' areas
    QList<IPlotter *> m_plotter;              // attached plotters, in order of attachment; not owned
    bool m_shouldUpdate = true;               // false: change notifications never redraw
    uint m_updateIntervalMs = 25;             // minimum ms between accepted redraws, 0 = no throttle
    std::shared_ptr<ChartRenderGate> m_gate;  // shared with the renderer
    QRectF m_frameRect;                       // visibleRect() as captured for the frame being drawn
};
