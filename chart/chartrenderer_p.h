// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/vexalglobal.h>

#include <QtQuick/QQuickFramebufferObject>

#include <memory>

class IChartArea;
struct ChartRenderGate;

// Render-thread side of a chart item: creates the framebuffer, triggers the
// one-time shader build, hands the synchronize step to the chart and sets the
// GL state of every frame before the plotters draw.
class VEXAL_EXPORT ChartRenderer : public QQuickFramebufferObject::Renderer
{
public:
    ChartRenderer() = default;
    ~ChartRenderer() override;

    QOpenGLFramebufferObject *createFramebufferObject(const QSize &size) override;
    void synchronize(QQuickFramebufferObject *item) override;
    void render() override;

private:
    IChartArea *item = nullptr;             // bound at the first synchronize; not owned
    std::shared_ptr<ChartRenderGate> gate;  // tells whether item is still alive
    QSize framebufferSize;                  // the item's framebufferSize() at the last synchronize; empty before
};
