// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include "testplotter.h"

#include <QtOpenGL/QOpenGLShaderProgram>
#include <QtGui/QMatrix4x4>

TestPlotter::TestPlotter(QObject *parent)
    : IPlotter(parent)
    , m_layers{rectangleLayer()}
{
    programLabel = QStringLiteral("test");
}

TestPlotter::~TestPlotter()
{
    detachFromChart();
}

SRenderLayerDefinition TestPlotter::rectangleLayer(const QString &program)
{
    SRenderLayerDefinition layer;
    layer.program = program;
    layer.mode = DrawFlags::Arrays | GL_TRIANGLE_STRIP;
    layer.first = 0;
    layer.count = 4;
    layer.attributes = {0};
    return layer;
}

void TestPlotter::setLayers(const QList<SRenderLayerDefinition> &layers)
{
    m_layers = layers;
}

void TestPlotter::render(const QRectF &area)
{
    const FrameState &frame = currentFrame().state;
    if (frame.visible && area.intersects(frame.plotterArea))
        m_renders.ref();
    IPlotter::render(area);
}

QList<SAttributeDefinition> TestPlotter::declareArributeArray()
{
    SAttributeDefinition vertex;
    vertex.name = QStringLiteral("vertex");
    vertex.dirtyMask = DirtyBits::Vertex;
    vertex.usagePattern = QOpenGLBuffer::DynamicDraw;
    vertex.bufferType = QOpenGLBuffer::VertexBuffer;
    vertex.glType = GL_FLOAT;
    vertex.tupleSize = 2;
    vertex.mutex = &dataMutex;
    return {vertex};
}

bool TestPlotter::__update_vertex()
{
    const QList<double> &d = data();
    m_vertices.clear();
    if (d.size() < 4)
        return true;
    const float l = float(d[0]), b = float(d[1]), r = float(d[2]), t = float(d[3]);
    m_vertices = {l, b, l, t, r, b, r, t};
    return true;
}

void TestPlotter::_update_uniforms(QOpenGLShaderProgram &program, const SRenderLayerDefinition &)
{
    QMatrix4x4 matrix;
    matrix.ortho(m_visible);
    program.setUniformValue("matrix", matrix);
    program.setUniformValue("color", currentFrame().state.color);
}

SAttributePointer TestPlotter::_fetch_attribute_data(const int &) const
{
    m_uploads.ref();
    return {m_vertices.constData(), qint32(m_vertices.size() * sizeof(float))};
}

void TestPlotter::_fetch_render_layers(QList<SRenderLayerDefinition> &layers, const QRectF &area)
{
    m_visible = area;
    layers = m_layers;
}
