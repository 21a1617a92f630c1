// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/barplotterdx.h>

#include <vexal/ichartarea.h>
#include <vexal/shresbarprogram.h>
#include "plotters/glhelpers_p.h"
#include "core/cellgrid_p.h"
#include "plotters/gpuarrays_p.h"
#include "plotters/plotterframes_p.h"

#include <QtOpenGL/QOpenGLShaderProgram>

#include <algorithm>
#include <cmath>

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
    // Items are the bars: the value of each width/value pair.
    itemStride = 2;
    itemOffset = 1;
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

const QList<double> &BarPlotterDx::edges() const
{
    if (m_edgesStamp == dataStamp())
        return m_edges;
    // Edges up to the first bar whose width or value changed stay as they
    // are: after an append only the new ones are summed.
    const qsizetype unchangedBars = m_edges.isEmpty() ? 0 : unchangedSince(m_edgesStamp) / 2;
    m_edgesStamp = dataStamp();
    const int count = barCount();
    const int first = int(std::min<qsizetype>({unchangedBars, count, m_edges.size() - 1}));
    m_edges.resize(count + 1);
    double x = first > 0 ? m_edges[first] : 0.0;
    for (int k = std::max(first, 0); k < count; ++k) {
        m_edges[k] = x;
        x += widthOf(k);
    }
    m_edges[count] = x;
    return m_edges;
}

int BarPlotterDx::firstEdgeAtOrAfter(double x, int from) const
{
    // Binary search: widths are meant to be positive, so the edges ascend.
    const QList<double> &e = edges();
    int low = std::min(from, barCount());
    int high = barCount();
    while (low < high) {
        const int middle = low + (high - low) / 2;
        if (e[middle] >= x)
            high = middle;
        else
            low = middle + 1;
    }
    return low;
}

double BarPlotterDx::__dx_from_to(int from, int to) const
{
    return from > to ? 0.0 : edges()[to + 1] - edges()[from];
}

Vexal::PairFrame &BarPlotterDx::pairFrame() const
{
    return frameExtra<Vexal::PairFrame>();
}

//-----------------------------------------------------------------------------
// [SECTION] Vertex and index data
//-----------------------------------------------------------------------------

QList<SAttributeDefinition> BarPlotterDx::declareArributeArray()
{
    return {Vexal::attributeDefinition(QStringLiteral("vertex"), DirtyBits::Vertex, QOpenGLBuffer::VertexBuffer,
                                       QOpenGLBuffer::DynamicDraw, GL_FLOAT, 3, &dataMutex),
            Vexal::attributeDefinition(QStringLiteral("index"), DirtyBits::Index, QOpenGLBuffer::IndexBuffer,
                                       QOpenGLBuffer::DynamicDraw, GL_UNSIGNED_INT, 1, &dataMutex)};
}

SAttributePointer BarPlotterDx::_fetch_attribute_data(const int &attribute) const
{
    const Vexal::PairFrame &frame = pairFrame();
    switch (attribute) {
    case VertexAttribute:
        return {frame.vertices.constData(), qint32(frame.vertices.size() * qsizetype(sizeof(Vertex)))};
    case IndexAttribute:
        return {frame.indices.constData(), qint32(frame.indices.size() * qsizetype(sizeof(quint32)))};
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
    for (int k = 0; k < barCount(); ++k) {
        if (valueOf(k) > maximum)
            maximum = valueOf(k);
    }
    setPlotterAreaHeight(maximum);
    setPlotterAreaWidth(edges().last());
    return true;
}

void BarPlotterDx::dataTailChanged(qsizetype)
{
    if (!initialized || data().isEmpty())
        return;
    // The rule of __update_vertex, from the peak pyramid and the summed
    // edges, which both rebuild only what changed: the largest value, NaN
    // when the first one is (no comparison with it succeeds), 0 without one.
    const QList<double> &values = data();
    const double first = values.size() > 1 ? values[1] : 0.0;
    setPlotterAreaHeight(std::isnan(first) || barCount() == 0 ? first : std::max(first, peakIn(0, barCount())));
    setPlotterAreaWidth(edges().last());
}

bool BarPlotterDx::__update_index()
{
    // Indices belong to each chart's window of bars, built with its vertices.
    return false;
}

void BarPlotterDx::rebuildWindowArrays(Vexal::PairFrame &frame)
{
    const Vexal::SampleWindow &window = frame.window;
    const QList<double> &e = edges();
    const qsizetype size = window.groupSize();
    frame.vertices.resize(4 * window.size());
    frame.indices.resize(6 * window.size());
    for (qsizetype k = 0; k < window.size(); ++k) {
        const qsizetype group = window.first + k;
        const Vexal::SplitDouble left = Vexal::splitDouble(e[group * size]);
        const Vexal::SplitDouble right = Vexal::splitDouble(e[std::min(qsizetype(barCount()), (group + 1) * size)]);
        const auto [low, high] = columnOf(groupPeak(window.level, group), window.level, group, frame.bottom < 0.0);
        const float bottom = Vexal::toFloat(low - frame.bottom);
        const float top = Vexal::toFloat(high - frame.bottom);
        Vertex *corners = frame.vertices.data() + 4 * k;
        corners[0] = {left.msb, left.lsb, bottom};
        corners[1] = {right.msb, right.lsb, bottom};
        corners[2] = {left.msb, left.lsb, top};
        corners[3] = {right.msb, right.lsb, top};
    }
    Vexal::writeBarIndices(frame.indices.data(), window.size());
    gpuArrays().markChanged(VertexAttribute);
    gpuArrays().markChanged(IndexAttribute);
}

//-----------------------------------------------------------------------------
// [SECTION] Frame
//-----------------------------------------------------------------------------

void BarPlotterDx::__update_draw_index()
{
    Vexal::PairFrame &frame = pairFrame();
    const QRectF area = plotterArea();
    // Along x only, whatever the heights: from the bar that holds the view's
    // left edge (one before the first edge at or beyond it) to the first edge
    // at or beyond its right edge.
    const double left = std::max(area.left(), frame.rect.left()) - area.left();
    const double right = std::min(area.right(), frame.rect.right()) - area.left();
    const int first = std::max(firstEdgeAtOrAfter(left, 0) - 1, 0);
    const int last = std::max(firstEdgeAtOrAfter(right, 0), first);
    const QList<double> &e = edges();
    const double pixelsPerBar = last > first ? (e[last] - e[first]) / (last - first) * pixelsPerUnit(frame.rect) : 0.0;
    // The program maps value 0 to the bottom edge: vertices hold values
    // counted from the view's bottom, rebuilt when that moves.
    if (followWindow(frame.window, {first, last}, pixelsPerBar) || frame.bottom != frame.rect.top()) {
        frame.bottom = frame.rect.top();
        rebuildWindowArrays(frame);
    }
    frame.drawn = frame.window.drawnGroups({first, last});
}

void BarPlotterDx::_fetch_render_layers(QList<SRenderLayerDefinition> &layers, const QRectF &rect)
{
    Vexal::PairFrame &frame = pairFrame();
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
    layers.first().first = qint32(frame.drawn.first * IndexBytesPerBar);
    layers.first().count = frame.drawn.size() * 6;
}

void BarPlotterDx::captureUniforms(Vexal::PairFrame &frame)
{
    // The view's left edge relative to the plotter area, split like the vertices'
    // x so that the shader subtracts the large and the small parts separately.
    const Vexal::SplitDouble left = Vexal::splitDouble(frame.rect.left() - plotterArea().left());
    frame.xMsb = left.msb;
    frame.xLsb = left.lsb;
    frame.screenDx = Vexal::toFloat(2.0 / frame.rect.width());
    frame.screenDy = Vexal::toFloat(frame.rect.height() * 0.5);
    frame.color = color();
}

void BarPlotterDx::_update_uniforms(QOpenGLShaderProgram &program, const SRenderLayerDefinition &)
{
    const Vexal::PairFrame &frame = pairFrame();
    program.setUniformValue("x_msb", frame.xMsb);
    program.setUniformValue("x_lsb", frame.xLsb);
    program.setUniformValue("screen_dx", frame.screenDx);
    program.setUniformValue("screen_dy", frame.screenDy);
    program.setUniformValue("color", frame.color);
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
    if (barCount() == 0 || !(x > area.left()))
        return -1; // NaN as well
    return std::min(firstEdgeAtOrAfter(x - area.left(), 1), barCount()) - 1;
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
    const double peak = peakIn(__start_index(shown), end);
    return peak > 0.0 ? peak : 0.0;
}

Vexal::CellRange BarPlotterDx::itemsShownBy(const QRectF &rect) const
{
    const QRectF area = plotterArea();
    const double left = std::max(area.left(), rect.left());
    const double right = std::min(area.right(), rect.right());
    if (data().isEmpty() || !(left <= right))
        return {};
    // Bars from the one holding the left edge to the one holding the right edge.
    return Vexal::CellRange{std::max(_index_at(left), 0), _index_at(right) + 1}.clampedTo(barCount());
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
