// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/areaplotter.h>

#include <vexal/ichartarea.h>
#include <vexal/sareagradientprogram.h>
#include "plotters/glhelpers_p.h"
#include "core/cellgrid_p.h"

#include <QtGui/QMatrix4x4>
#include <QtOpenGL/QOpenGLShaderProgram>

#include <algorithm>

namespace {

enum Attribute { FillAttribute = 0, BorderAttribute = 1 };
enum Layer { FillLayer = 0, BorderLayer = 1 };

SAttributeDefinition vertexAttribute(quint32 dirtyMask, QMutex *mutex)
{
    return Vexal::attributeDefinition(QStringLiteral("vertex"), dirtyMask, QOpenGLBuffer::VertexBuffer,
                                      QOpenGLBuffer::DynamicDraw, GL_FLOAT, 2, mutex);
}

SAttributePointer bytesOf(const QList<QVector2D> &vertices)
{
    return {vertices.constData(), qint32(vertices.size() * qsizetype(sizeof(QVector2D)))};
}

} // namespace

//-----------------------------------------------------------------------------
// [SECTION] Construction and properties
//-----------------------------------------------------------------------------

AreaPlotter::AreaPlotter(QObject *parent)
    : IPlotter1D(parent)
{
    // xOffset moves an area to the right, unlike the other plotters.
    offsetSubtracts = false;
    QColor fill = color();
    fill.setAlphaF(0.5f);
    setColor(fill);
}

AreaPlotter::~AreaPlotter()
{
    detachFromChart();
}

void AreaPlotter::setBorderWidth(double width)
{
    if (qFuzzyCompare(m_borderWidth, width))
        return;
    m_borderWidth = width;
    emit borderWidthChanged();
    requestChartUpdate();
}

void AreaPlotter::setBorderColor(const QColor &color)
{
    if (m_borderColor == color)
        return;
    m_borderColor = color;
    emit borderColorChanged();
    requestChartUpdate();
}

void AreaPlotter::setBorderEnable(bool enable)
{
    if (m_borderEnable == enable)
        return;
    m_borderEnable = enable;
    emit borderEnableChanged();
    requestChartUpdate();
}

// The two gradient setters do not ask for a repaint: the next frame picks them up.
void AreaPlotter::setEnableGradient(bool enable)
{
    if (m_enableGradient == enable)
        return;
    m_enableGradient = enable;
    emit enableGradientChanged();
    requestChartUpdate();
}

void AreaPlotter::setGradientColor(const QColor &color)
{
    if (m_gradientColor == color)
        return;
    m_gradientColor = color;
    emit gradientColorChanged();
    requestChartUpdate();
}

void AreaPlotter::setPlotterArea(const QRectF &area)
{
    QRectF stored = area;
    // Once the vertices exist the height is the data maximum, not the caller's.
    if (initialized)
        stored.setHeight(plotterArea().height());
    storePlotterArea(stored);
}

//-----------------------------------------------------------------------------
// [SECTION] Vertex data
//-----------------------------------------------------------------------------

QList<SAttributeDefinition> AreaPlotter::declareArributeArray()
{
    return {vertexAttribute(DirtyBits::Vertex, &dataMutex), vertexAttribute(BorderDirty, &dataMutex)};
}

SAttributePointer AreaPlotter::_fetch_attribute_data(const int &index) const
{
    switch (index) {
    case FillAttribute:
        return bytesOf(m_areaVertices);
    case BorderAttribute:
        return bytesOf(m_borderVertices);
    default:
        return SAttributePointer();
    }
}

bool AreaPlotter::__update_vertex()
{
    const QList<double> &values = data();
    const qsizetype n = values.size();
    // Only the first 2n fill vertices are written; the zero tail is uploaded too.
    m_areaVertices.clear();
    m_areaVertices.resize(4 * n);
    m_borderVertices.clear();
    m_borderVertices.resize(n);
    double maximum = 0.0;
    for (qsizetype i = 0; i < n; ++i) {
        const QVector2D top(float(i), Vexal::toFloat(values[i]));
        m_areaVertices[2 * i] = QVector2D(float(i), 0.0f);
        m_areaVertices[2 * i + 1] = top;
        m_borderVertices[i] = top;
        if (values[i] > maximum)
            maximum = values[i];
    }
    setPlotterAreaHeight(maximum);
    // The fill's bit is set by the data setter when this returns true.
    dirtyFlags |= BorderDirty;
    return true;
}

//-----------------------------------------------------------------------------
// [SECTION] Frame
//-----------------------------------------------------------------------------

void AreaPlotter::_fetch_render_layers(QList<SRenderLayerDefinition> &layers, const QRectF &area)
{
    AreaFrame &frame = frameExtra<AreaFrame>();
    frame.rect = area;
    captureUniforms(frame);
    // Kept within the samples: a view far from the data would otherwise give
    // indexes whose doubled vertex counts overflow. A range that would be empty
    // or reversed draws nothing either way.
    const int samples = int(data().size());
    const int start = std::clamp(__start_index(frame.rect), 0, samples);
    const int end = std::clamp(__end_index(frame.rect), start, samples);
    if (layers.size() != 2) {
        SRenderLayerDefinition fill;
        fill.program = QString::fromLatin1(SAreaGradientProgram::Name);
        fill.mode = DrawFlags::Arrays | GL_TRIANGLE_STRIP;
        fill.attributes = {FillAttribute};
        SRenderLayerDefinition border;
        border.layer = BorderLayer;
        border.program = QString::fromLatin1(SAreaPlotterProgram::Name);
        border.attributes = {BorderAttribute};
        layers = {fill, border};
    }
    // Every frame takes the ranges of the view and the border as it is set now,
    // so that switching the border or changing its width shows at once.
    layers[FillLayer].first = 2 * start;
    layers[FillLayer].count = 2 * (end - start);
    SRenderLayerDefinition &border = layers[BorderLayer];
    border.first = start;
    border.count = end - start;
    border.lineWidth = float(m_borderWidth);
    border.mode = m_borderEnable ? DrawFlags::Arrays | GL_LINE_STRIP : 0;
}

void AreaPlotter::captureUniforms(AreaFrame &frame)
{
    const QRectF area = plotterArea();
    const double sampleWidth = Vexal::CellGrid(area, data().size()).cellWidth();
    QMatrix4x4 matrix;
    matrix.ortho(frame.rect);
    matrix.translate(Vexal::toFloat(area.left() + xOffset()), 0.0f, 0.0f);
    matrix.scale(Vexal::toFloat(sampleWidth), 1.0f, 1.0f);
    // The gradient runs from the bottom colour at value 0 to the top colour at
    // the top edge.
    frame.uniforms = {matrix, m_borderColor, color(), m_enableGradient ? m_gradientColor : color()};
}

void AreaPlotter::_update_uniforms(QOpenGLShaderProgram &program, const SRenderLayerDefinition &layer)
{
    const FrameUniforms &uniforms = frameExtra<AreaFrame>().uniforms;
    program.setUniformValue("matrix", uniforms.matrix);
    if (layer.layer != FillLayer) {
        program.setUniformValue("color", uniforms.border);
        return;
    }
    program.setUniformValue("color_top", uniforms.top);
    program.setUniformValue("color_bot", uniforms.bottom);
}
