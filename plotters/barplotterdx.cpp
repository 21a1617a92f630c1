// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/barplotterdx.h>

#include <vexal/ichartarea.h>
#include <vexal/shresbarprogram.h>
#include "plotters/glhelpers_p.h"
#include "core/cellgrid_p.h"

#include <QtOpenGL/QOpenGLShaderProgram>

#include <algorithm>

namespace {

enum Attribute { VertexAttribute = 0, IndexAttribute = 1 };

constexpr qintptr IndexBytesPerBar = 6 * qintptr(sizeof(quint32));

} // namespace

//-----------------------------------------------------------------------------
// [SECTION] Construction and plotter area
//-----------------------------------------------------------------------------

BarPlotterDx::BarPlotterDx(QObject *parent)
    : IPlotter1D(parent)
{
}

BarPlotterDx::~BarPlotterDx()
{
    detachFromChart();
}

void BarPlotterDx::setPlotterArea(const QRectF &area)
{
    // The data own the size; only the position comes from outside.
    QRectF stored = area;
    stored.setSize(plotterArea().size());
    storePlotterArea(stored);
}

double BarPlotterDx::__dx_from_to(int from, int to) const
{
    double sum = 0.0;
    for (int i = from; i <= to; ++i)
        sum += widthOf(i);
    return sum;
}

//-----------------------------------------------------------------------------
// [SECTION] Vertex and index data
//-----------------------------------------------------------------------------

QList<SAttributeDefinition> BarPlotterDx::declareArributeArray()
{
    return {Vexal::attributeDefinition(QStringLiteral("vertex"), DirtyBits::Vertex, QOpenGLBuffer::VertexBuffer,
                                       QOpenGLBuffer::DynamicDraw, GL_FLOAT, 3, &dataMutex),
            Vexal::attributeDefinition(QStringLiteral("index"), DirtyBits::Index, QOpenGLBuffer::IndexBuffer,
                                       QOpenGLBuffer::StaticDraw, GL_UNSIGNED_INT, 1, &dataMutex)};
}

SAttributePointer BarPlotterDx::_fetch_attribute_data(const int &attribute) const
{
    switch (attribute) {
    case VertexAttribute:
        return {m_vertices.constData(), qint32(m_vertices.size() * qsizetype(sizeof(Vertex)))};
    case IndexAttribute:
        return {m_indexData.constData(), qint32(m_indexData.size() * qsizetype(sizeof(quint32)))};
    default:
        return SAttributePointer();
    }
}

bool BarPlotterDx::__update_vertex()
{
    const QList<double> &values = data();
    if (values.isEmpty())
        return false;
    // A single double holds a width but no value: the height is then 0.
    double maximum = values.size() > 1 ? values[1] : 0.0;
    double x = 0.0;
    // Sized by the number of doubles, twice the bars: the zero tail is uploaded too.
    m_vertices.clear();
    m_vertices.resize(4 * values.size());
    Vertex *corners = m_vertices.data();
    for (int k = 0; k < barCount(); ++k) {
        const double next = x + widthOf(k);
        const Vexal::SplitDouble left = Vexal::splitDouble(x);
        const Vexal::SplitDouble right = Vexal::splitDouble(next);
        const float top = Vexal::toFloat(valueOf(k));
        corners[4 * k] = {left.msb, left.lsb, 0.0f};
        corners[4 * k + 1] = {right.msb, right.lsb, 0.0f};
        corners[4 * k + 2] = {left.msb, left.lsb, top};
        corners[4 * k + 3] = {right.msb, right.lsb, top};
        if (valueOf(k) > maximum)
            maximum = valueOf(k);
        x = next;
    }
    setPlotterAreaHeight(maximum);
    setPlotterAreaWidth(x);
    return true;
}

bool BarPlotterDx::__update_index()
{
    const qsizetype doubles = data().size();
    if (m_indexData.size() > 6 * doubles)
        return false; // never shrinks
    // One "bar" per double, twice as many as exist.
    m_indexData.clear();
    m_indexData.resize(6 * doubles);
    quint32 *indices = m_indexData.data();
    for (qsizetype k = 0; k < doubles; ++k) {
        const quint32 corner = quint32(4 * k);
        const quint32 bar[6] = {corner + 1, corner + 2, corner, corner + 1, corner + 2, corner + 3};
        std::copy(bar, bar + 6, indices + 6 * k);
    }
    return true;
}

//-----------------------------------------------------------------------------
// [SECTION] Frame
//-----------------------------------------------------------------------------

void BarPlotterDx::__update_draw_index()
{
    PairFrame &frame = frameExtra<PairFrame>();
    const QRectF area = plotterArea();
    const QRectF shown = area.intersected(frame.rect);
    const int count = barCount();
    double x = area.left();
    int k = 0;
    while (k < count && shown.left() > x) {
        ++k;
        x += widthOf(k - 1);
    }
    frame.drawFirst = std::max(k - 1, 0);
    // Runs at least once when the right edge lies beyond x, but never past the
    // last bar.
    while (k < count && shown.right() > x) {
        x += widthOf(k);
        ++k;
    }
    frame.drawLast = k;
}

void BarPlotterDx::_fetch_render_layers(QList<SRenderLayerDefinition> &layers, const QRectF &rect)
{
    PairFrame &frame = frameExtra<PairFrame>();
    frame.rect = rect;
    captureUniforms(frame);
    __update_draw_index();
    if (layers.isEmpty()) {
        SRenderLayerDefinition bars;
        bars.program = QString::fromLatin1(SHResBarProgram::Name);
        bars.mode = DrawFlags::Elements | GL_TRIANGLES;
        bars.attributes = {VertexAttribute};
        bars.indexAttribute = IndexAttribute;
        layers.append(bars);
    }
    // For indexed drawing "first" is a byte offset into the index buffer.
    layers.first().first = qint32(frame.drawFirst * IndexBytesPerBar);
    layers.first().count = (frame.drawLast - frame.drawFirst) * 6;
}

void BarPlotterDx::captureUniforms(PairFrame &frame)
{
    // The view's left edge relative to the plotter area, split like the vertices'
    // x so that the shader subtracts the large and the small parts separately.
    const Vexal::SplitDouble left = Vexal::splitDouble(frame.rect.left() - plotterArea().left());
    frame.uniforms = {left.msb, left.lsb, Vexal::toFloat(2.0 / frame.rect.width()),
                      Vexal::toFloat(frame.rect.height() * 0.5), color()};
}

void BarPlotterDx::_update_uniforms(QOpenGLShaderProgram &program, const SRenderLayerDefinition &)
{
    const FrameUniforms &uniforms = frameExtra<PairFrame>().uniforms;
    program.setUniformValue("x_msb", uniforms.xMsb);
    program.setUniformValue("x_lsb", uniforms.xLsb);
    program.setUniformValue("screen_dx", uniforms.screenDx);
    program.setUniformValue("screen_dy", uniforms.screenDy);
    program.setUniformValue("color", uniforms.color);
}

//-----------------------------------------------------------------------------
// [SECTION] Queries
//-----------------------------------------------------------------------------

int BarPlotterDx::_index_at(double x) const
{
    const QRectF area = plotterArea();
    if (!area.contains(QPointF(x, 0.0)))
        return -1;
    if (qFuzzyCompare(area.left(), x))
        return 0;
    if (qFuzzyCompare(area.right(), x))
        return barCount(); // one past the last bar
    // A point on an inner boundary belongs to the bar on its left. Rounding may
    // leave x beyond the summed edges; it then belongs to the last bar.
    int i = -1;
    double edge = area.left();
    while (x > edge && i + 1 < barCount()) {
        edge += widthOf(i + 1);
        ++i;
    }
    return i;
}

int BarPlotterDx::__start_index(const QRectF &rect) const
{
    const int i = _index_at(rect.left());
    return i > 0 ? i - 1 : 0;
}

int BarPlotterDx::__end_index(const QRectF &rect) const
{
    return _index_at(rect.right());
}

double BarPlotterDx::max_in(const QRectF &rect) const
{
    const QRectF shown = rect.intersected(plotterArea());
    if (shown.isEmpty() || data().isEmpty())
        return 0.0;
    const int end = std::min(__end_index(shown), barCount());
    double maximum = 0.0;
    for (int k = __start_index(shown); k < end; ++k)
        maximum = std::max(maximum, valueOf(k));
    return maximum;
}

QRectF BarPlotterDx::area_at(const QPointF &point) const
{
    const int i = _index_at(point.x());
    // The right edge answers one past the last bar, which has no value.
    if (i < 0 || i >= barCount())
        return QRectF();
    // A uniform width per double, unlike the exact rectangle of mouse_hovering.
    return Vexal::CellGrid(plotterArea(), data().size()).cellRect(i, valueOf(i));
}

SInfoPoint BarPlotterDx::mouse_hovering(const QPointF &point) const
{
    SInfoPoint info;
    info.plotter = const_cast<BarPlotterDx *>(this);
    info.index = _index_at(point.x());
    // The right edge's index has no bar: not valid, the index stays as found.
    if (info.index < 0 || info.index >= barCount() || point.y() > valueOf(info.index))
        return info;
    const double left = plotterArea().left() + __dx_from_to(0, info.index - 1);
    info.area = QRectF(left, 0.0, widthOf(info.index), valueOf(info.index));
    info.valid = true;
    return info;
}
