// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

// Internals of the chart item shared by the chart, its renderer and the
// zoomable chart's start-up task. Not installed.

#include <vexal/ichartarea.h>

#include <QtCore/QMetaObject>
#include <QtCore/QThread>

#include <atomic>
#include <mutex>

// Shared between a chart and its renderer: the renderer draws only while the
// chart is alive, and the GUI thread changes the plotter lists only between
// frames. A standard mutex, so that thread checkers see the ordering it gives.
struct ChartRenderGate
{
    std::recursive_mutex mutex;  // held while drawing and while the plotter lists change
    IChartArea *chart = nullptr; // null once the chart is being destroyed
    std::atomic<bool> capturing{false};    // the synchronize step takes the frame: what changes now is drawn
    std::atomic<bool> framePending{false}; // a redraw was scheduled and its frame not yet taken
};

namespace Vexal {

// Emits a change signal on the chart's own thread. The render thread's
// synchronize step recomputes the rectangles; QML and the chart's other
// listeners still hear of the change on the thread they live in, and a notice
// still pending when the chart goes is dropped with it.
template <typename Chart, typename... Params, typename... Args>
void emitOnOwnThread(Chart *chart, void (Chart::*signal)(Params...), const Args &...args)
{
    if (QThread::currentThread() == chart->thread())
        emit(chart->*signal)(args...);
    else
        QMetaObject::invokeMethod(chart, [chart, signal, args...] { emit(chart->*signal)(args...); },
                                  Qt::QueuedConnection);
}

} // namespace Vexal
