// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/areaplotter.h>

#include <vexal/ichartarea.h>
#include <vexal/sareagradientprogram.h>
#include "plotters/glhelpers_p.h"
#include "plotters/gpuarrays_p.h"
#include "plotters/plotterframes_p.h"
#include "core/cellgrid_p.h"

#include <QtGui/QMatrix4x4>
#include <QtGui/QVector2D>
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
    const Vexal::AreaFrame &frame = areaFrame();
    switch (index) {
    case FillAttribute:
        return bytesOf(frame.fill);
    case BorderAttribute:
        return bytesOf(frame.border);
    default:
        return SAttributePointer();
    }
}

bool AreaPlotter::__update_vertex()
{
    setPlotterAreaHeight(dataMaximum());
    // Nothing to upload yet: each chart rebuilds its window at its next frame.
    return false;
}

void AreaPlotter::dataTailChanged(qsizetype)
{
    // Each chart rebuilds its window at its next frame, as after setData.
    if (initialized)
        setHeightToPeak();
}

void AreaPlotter::rebuildWindowVertices(Vexal::AreaFrame &frame)
{
    const Vexal::SampleWindow &window = frame.window;
    frame.fill.resize(2 * window.size());
    frame.border.resize(window.size());
    for (qsizetype k = 0; k < window.size(); ++k) {
        const qsizetype group = window.first + k;
        const double peak = groupPeak(window.level, group);
        const auto [low, high] = columnOf(peak, window.level, group, frame.hangs);
        frame.fill[2 * k] = QVector2D(float(k), low);
        frame.fill[2 * k + 1] = QVector2D(float(k), high);
        frame.border[k] = QVector2D(float(k), Vexal::toFloat(peak));
    }
    gpuArrays().markChanged(FillAttribute);
    gpuArrays().markChanged(BorderAttribute);
}

//-----------------------------------------------------------------------------
// [SECTION] Frame
//-----------------------------------------------------------------------------

void AreaPlotter::_fetch_render_layers(QList<SRenderLayerDefinition> &layers, const QRectF &area)
{
    Vexal::AreaFrame &frame = areaFrame();
    frame.rect = area;
    const Vexal::CellRange visible = visibleCells(frame.rect);
    const bool hangs = area.top() < 0.0;
    if (followWindow(frame.window, visible, sampleWidth() * pixelsPerUnit(area)) || frame.hangs != hangs) {
        frame.hangs = hangs;
        rebuildWindowVertices(frame);
    }
    // One vertex past the visible ones where there is one: the curve runs on
    // to the next sample instead of ending a cell short of the view's edge.
    const Vexal::CellRange drawn = frame.window.drawnGroups(visible, 1);
    captureUniforms(frame);
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
    layers[FillLayer].first = 2 * drawn.first;
    layers[FillLayer].count = 2 * drawn.size();
    SRenderLayerDefinition &border = layers[BorderLayer];
    border.first = drawn.first;
    border.count = drawn.size();
    border.lineWidth = float(m_borderWidth);
    border.mode = m_borderEnable ? DrawFlags::Arrays | GL_LINE_STRIP : 0;
}

Vexal::AreaFrame &AreaPlotter::areaFrame() const
{
    return frameExtra<Vexal::AreaFrame>();
}

void AreaPlotter::captureUniforms(Vexal::AreaFrame &frame)
{
    // x runs from the window's left edge in groups; worked out in double
    // precision so that deep zooms into long series stay exact.
    const Vexal::CellGrid grid(dataArea(), data().size());
    const double groupWidth = grid.cellWidth() * double(frame.window.groupSize());
    const double windowLeft = grid.cellLeft(frame.window.first * frame.window.groupSize());
    const QRectF &rect = frame.rect;
    QMatrix4x4 matrix;
    matrix.ortho(rect);
    matrix(0, 0) = Vexal::toFloat(2.0 * groupWidth / rect.width());
    matrix(0, 3) = Vexal::toFloat(2.0 * (windowLeft - rect.left()) / rect.width() - 1.0);
    // The gradient runs from the bottom colour at value 0 to the top colour at
    // the top edge.
    frame.matrix = matrix;
    frame.borderColor = m_borderColor;
    frame.top = color();
    frame.bottom = m_enableGradient ? m_gradientColor : color();
}

void AreaPlotter::_update_uniforms(QOpenGLShaderProgram &program, const SRenderLayerDefinition &layer)
{
    const Vexal::AreaFrame &frame = areaFrame();
    program.setUniformValue("matrix", frame.matrix);
    if (layer.layer != FillLayer) {
        program.setUniformValue("color", frame.borderColor);
        return;
    }
    program.setUniformValue("color_top", frame.top);
    program.setUniformValue("color_bot", frame.bottom);
}
