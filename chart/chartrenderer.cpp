// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include "chart/chartrenderer_p.h"

#include <vexal/ichartarea.h>
#include <vexal/iplotter.h>

#include "chart/ichartarea_p.h"

#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtOpenGL/QOpenGLFramebufferObject>

ChartRenderer::~ChartRenderer() = default;

QOpenGLFramebufferObject *ChartRenderer::createFramebufferObject(const QSize &size)
{
    if (!IPlotter::programsBuilt())
        IPlotter::buildPrograms();
    QOpenGLFramebufferObjectFormat format;
    format.setAttachment(QOpenGLFramebufferObject::NoAttachment);
    format.setSamples(0);
    return new QOpenGLFramebufferObject(framebufferSize.isEmpty() ? size : framebufferSize, format);
}

void ChartRenderer::synchronize(QQuickFramebufferObject *quickItem)
{
    if (!item) {
        item = static_cast<IChartArea *>(quickItem);
        gate = item->renderGate();
    }
    // A resized item or a new renderScale: the framebuffer is made again
    // before this frame draws.
    framebufferSize = item->framebufferSize();
    if (framebufferObject() && framebufferObject()->size() != framebufferSize)
        invalidateFramebufferObject();
    item->synchronizePlotters();
}

void ChartRenderer::render()
{
    QOpenGLFunctions *gl = QOpenGLContext::currentContext()->functions();
    gl->glClearColor(0, 0, 0, 0);
    gl->glClear(GL_COLOR_BUFFER_BIT);
    gl->glEnable(GL_BLEND);
    gl->glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE_MINUS_DST_ALPHA, GL_ONE);
    gl->glBlendEquation(GL_FUNC_ADD);
    if (!gate)
        return;
    const std::lock_guard<std::recursive_mutex> locker(gate->mutex);
    if (gate->chart)
        gate->chart->renderPlotters();
}
