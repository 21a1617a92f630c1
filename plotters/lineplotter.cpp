// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/lineplotter.h>

#include <vexal/ichartarea.h>
#include <vexal/sareaplotterprogram.h>
#include "core/cellgrid_p.h"
#include "core/numeric_p.h"
#include "plotters/glhelpers_p.h"
#include "plotters/gpuarrays_p.h"
#include "plotters/linepyramid_p.h"
#include "plotters/plotterframes_p.h"

#include <QtCore/QDebug>
#include <QtOpenGL/QOpenGLShaderProgram>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Pyramid groups per pixel column, at least: each group then lies within a
// fraction of a pixel of the column it is counted in.
constexpr double GroupsPerPixel = 4.0;
// From this many values per pixel column on, columns are drawn instead of the
// segments between values.
constexpr double ColumnsFromValuesPerPixel = 2.0;

using Group = Vexal::LinePyramid::Group;

// Cuts segment a-b to box; false when nothing of it lies inside.
bool clipSegment(QPointF &a, QPointF &b, const QRectF &box)
{
    double t0 = 0.0, t1 = 1.0;
    const double dx = b.x() - a.x(), dy = b.y() - a.y();
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {a.x() - box.left(), box.right() - a.x(), a.y() - box.top(), box.bottom() - a.y()};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0.0) {
            if (q[i] < 0.0)
                return false;
            continue;
        }
        const double t = q[i] / p[i];
        if (p[i] < 0.0)
            t0 = std::max(t0, t);
        else
            t1 = std::min(t1, t);
    }
    if (!(t0 <= t1))
        return false;
    const QPointF start = a;
    a = start + t0 * QPointF(dx, dy);
    b = start + t1 * QPointF(dx, dy);
    return true;
}

// Writes the segments of one frame as quads (two triangles each) in device
// pixels, from cell positions and values.
class SegmentWriter
{
public:
    SegmentWriter(const Vexal::LineFrame &frame, const QRectF &dataArea, qsizetype cells, double width)
        : m_cellWidth(dataArea.width() / double(cells)),
          m_left(dataArea.left() - frame.rect.left()),
          m_top(frame.rect.top()),
          m_scaleX(frame.pixels.width() / frame.rect.width()),
          m_scaleY(frame.pixels.height() / frame.rect.height()),
          m_halfWidth(width / 2.0),
          m_box(-width - 1.0, -width - 1.0, frame.pixels.width() + 2.0 * width + 2.0,
                frame.pixels.height() + 2.0 * width + 2.0)
    {
    }

    // The pixel x of the centre of (fractional) cell c.
    double x(double c) const { return (m_left + (c + 0.5) * m_cellWidth) * m_scaleX; }
    // The pixel y of value v.
    double y(double v) const { return (v - m_top) * m_scaleY; }
    // The pixel of value v at the centre of (fractional) cell c.
    QPointF at(double c, double v) const { return QPointF(x(c), y(v)); }

    // A quad around a-b, longer by half the width at both ends, so that joins
    // are filled and a segment of length 0 shows as a dot.
    void add(QPointF a, QPointF b, QList<QVector2D> &out) const
    {
        if (!clipSegment(a, b, m_box))
            return;
        QPointF d = b - a;
        const double length = std::hypot(d.x(), d.y());
        d = length > 0.0 ? d / length : QPointF(1.0, 0.0);
        const QPointF along = d * m_halfWidth;
        const QPointF across(-d.y() * m_halfWidth, d.x() * m_halfWidth);
        const QVector2D p0(a - along - across), p1(a - along + across);
        const QVector2D p2(b + along - across), p3(b + along + across);
        out << p0 << p1 << p2 << p2 << p1 << p3;
    }

private:
    double m_cellWidth; // data width of a cell
    double m_left;      // data x of the first cell's left edge, from the view's left edge
    double m_top;       // value at the view's bottom edge
    double m_scaleX;    // device pixels per data unit along x
    double m_scaleY;    // device pixels per value unit
    double m_halfWidth; // half the stroke, device pixels
    QRectF m_box;       // segments are cut to the view and a stroke's width around it
};

// Every segment between neighbouring finite values of [first, last), and a
// dot for a finite value between two gaps.
void writeValueSegments(const QList<double> &values, qsizetype first, qsizetype last, const SegmentWriter &writer,
                        QList<QVector2D> &out)
{
    const qsizetype n = values.size();
    for (qsizetype i = first; i < last; ++i) {
        const double v = values[i];
        if (!std::isfinite(v))
            continue;
        const bool next = i + 1 < n && std::isfinite(values[i + 1]);
        const bool previous = i > 0 && std::isfinite(values[i - 1]);
        if (next)
            writer.add(writer.at(double(i), v), writer.at(double(i + 1), values[i + 1]), out);
        else if (!previous)
            writer.add(writer.at(double(i), v), writer.at(double(i), v), out);
    }
}

// Collects groups of values into the pixel columns that hold their centres
// and draws each column as the polyline through its values looks: a vertical
// stroke from the column's minimum to its maximum, joined from the previous
// column's last value to its first.
class ColumnWriter
{
public:
    ColumnWriter(const SegmentWriter &writer, QList<QVector2D> &out) : m_writer(writer), m_out(out) {}

    // The group whose values centre on pixel x; groups come from left to right.
    void take(double x, const Group &g)
    {
        const double column = std::floor(x);
        if (!m_open || column != m_column) {
            finishColumn();
            m_column = column;
            m_current = g;
            m_open = true;
            return;
        }
        if (!std::isnan(g.min)) {
            m_current.min = std::isnan(m_current.min) ? g.min : std::min(m_current.min, g.min);
            m_current.max = std::isnan(m_current.max) ? g.max : std::max(m_current.max, g.max);
        }
        m_current.last = g.last;
    }

    void finishColumn()
    {
        if (!m_open)
            return;
        const double x = m_column + 0.5;
        if (!std::isnan(m_current.min))
            m_writer.add({x, m_writer.y(m_current.min)}, {x, m_writer.y(m_current.max)}, m_out);
        if (m_hasPrevious && std::isfinite(m_previous.last) && std::isfinite(m_current.first))
            m_writer.add({m_previousX, m_writer.y(m_previous.last)}, {x, m_writer.y(m_current.first)}, m_out);
        m_previous = m_current;
        m_previousX = x;
        m_hasPrevious = true;
        m_open = false;
    }

private:
    const SegmentWriter &m_writer; // maps cells and values to pixels
    QList<QVector2D> &m_out;       // receives the quads
    Group m_current{};             // the column being collected
    double m_column = 0.0;         // its pixel column
    bool m_open = false;           // a column is being collected
    Group m_previous{};            // the last column drawn
    double m_previousX = 0.0;      // its pixel x
    bool m_hasPrevious = false;    // a column was drawn
};

// A value as a group of one: NaN bounds where it is not finite.
Group groupOfValue(double v)
{
    const double bound = std::isfinite(v) ? v : std::numeric_limits<double>::quiet_NaN();
    return {v, bound, bound, v};
}

// Values [first, last) drawn by pixel columns.
void writeValueColumns(const QList<double> &values, qsizetype first, qsizetype last, const SegmentWriter &writer,
                       QList<QVector2D> &out)
{
    ColumnWriter columns(writer, out);
    for (qsizetype i = first; i < last; ++i)
        columns.take(writer.x(double(i)), groupOfValue(values[i]));
    columns.finishColumn();
}

// The groups of one level that hold values [first, last), drawn by pixel
// columns: group j holds values [j * size - lead, (j + 1) * size - lead).
void writeGroupColumns(const QList<Group> &groups, qsizetype size, qsizetype lead, qsizetype values, qsizetype first,
                       qsizetype last, const SegmentWriter &writer, QList<QVector2D> &out)
{
    ColumnWriter columns(writer, out);
    const qsizetype end = std::min((last + lead + size - 1) / size, groups.size());
    for (qsizetype j = (first + lead) / size; j < end; ++j) {
        const qsizetype begin = std::max<qsizetype>(j * size - lead, 0);
        const double centre = (double(begin) + double(std::min((j + 1) * size - lead, values) - 1)) / 2.0;
        columns.take(writer.x(centre), groups[j]);
    }
    columns.finishColumn();
}

} // namespace

//-----------------------------------------------------------------------------
// [SECTION] Construction and properties
//-----------------------------------------------------------------------------

LinePlotter::LinePlotter(QObject *parent)
    : IPlotter1D(parent),
      m_pyramid(std::make_unique<Vexal::LinePyramid>())
{
    programLabel = QStringLiteral("line");
    keepsDataWithoutChart = true;
}

LinePlotter::~LinePlotter()
{
    detachFromChart();
}

void LinePlotter::setLineWidth(double width)
{
    if (!(width > 0.0) || !std::isfinite(width)) {
        qWarning().nospace() << "LinePlotter: lineWidth " << width << " is not a positive width; using 1";
        width = 1.0;
    }
    if (m_lineWidth == width)
        return;
    m_lineWidth = width;
    ++m_styleVersion;
    emit lineWidthChanged();
    requestChartUpdate();
}

void LinePlotter::setDecimation(bool enable)
{
    if (m_decimation == enable)
        return;
    m_decimation = enable;
    ++m_styleVersion;
    emit decimationChanged();
    requestChartUpdate();
}

void LinePlotter::setData(const QList<double> &data)
{
    if (Vexal::sameData(m_data, data))
        return;
    m_data = data;
    m_pyramid->build(m_data);
    showNewData();
}

void LinePlotter::takeFrontDrop(const QList<double> &kept, qsizetype count)
{
    m_data = kept;
    m_pyramid->dropFront(m_data, count);
    showNewData();
}

void LinePlotter::showNewData()
{
    markDataReplaced();
    storePlotterArea(withDataExtent(plotterArea()));
    emit dataChanged();
    requestChartUpdate();
}

void LinePlotter::dataTailChanged(qsizetype firstChanged)
{
    m_pyramid->update(m_data, firstChanged);
    storePlotterArea(withDataExtent(plotterArea()));
}

void LinePlotter::setPlotterArea(const QRectF &area)
{
    storePlotterArea(withDataExtent(area));
}

QRectF LinePlotter::withDataExtent(QRectF area) const
{
    // From the smallest finite value (or 0) to the largest (or 0), so that
    // all-negative data lie inside too; a flat line at 0 keeps the smallest
    // height that still intersects views.
    double min = 0.0, max = 0.0;
    if (!m_pyramid->range(m_data, 0, m_data.size(), min, max))
        min = max = 0.0;
    const double bottom = std::min(min, 0.0);
    area.setTop(bottom);
    area.setHeight(std::max(std::max(max, 0.0) - bottom, std::numeric_limits<double>::min()));
    return area;
}

//-----------------------------------------------------------------------------
// [SECTION] Queries
//-----------------------------------------------------------------------------

bool LinePlotter::valueRange(const QRectF &rect, double &minimum, double &maximum) const
{
    const Vexal::CellRange shown = visibleCells(rect);
    return !shown.isEmpty() && m_pyramid->range(m_data, shown.first, shown.last, minimum, maximum);
}

double LinePlotter::peakIn(qsizetype first, qsizetype last) const
{
    double minimum = 0.0, maximum = 0.0;
    return m_pyramid->range(m_data, first, last, minimum, maximum) ? maximum : qQNaN();
}

double LinePlotter::troughIn(qsizetype first, qsizetype last) const
{
    double minimum = 0.0, maximum = 0.0;
    return m_pyramid->range(m_data, first, last, minimum, maximum) ? minimum : qQNaN();
}

SInfoPoint LinePlotter::mouse_hovering(const QPointF &point) const
{
    SInfoPoint info;
    info.plotter = const_cast<LinePlotter *>(this);
    info.index = _index_at(point.x());
    if (info.index < 0 || info.index >= m_data.size())
        return info;
    const double v = m_data[info.index];
    const Vexal::CellGrid grid(dataArea(), m_data.size());
    info.area = QRectF(grid.cellLeft(info.index), std::min(v, 0.0), grid.cellWidth(), std::abs(v));
    info.x = grid.cellLeft(info.index) + grid.cellWidth() / 2.0;
    info.value = v;
    info.valid = std::isfinite(v);
    return info;
}

//-----------------------------------------------------------------------------
// [SECTION] Frame
//-----------------------------------------------------------------------------

Vexal::LineFrame &LinePlotter::lineFrame() const
{
    return frameExtra<Vexal::LineFrame>();
}

void LinePlotter::buildVertices(Vexal::LineFrame &frame) const
{
    frame.vertices.clear();
    const Vexal::CellRange visible = visibleCells(frame.rect);
    if (visible.isEmpty() || frame.pixels.isEmpty() || !(frame.rect.width() > 0.0) || !(frame.rect.height() > 0.0))
        return;
    // One cell beyond each edge: the segments that leave the view are drawn.
    const qsizetype n = m_data.size();
    const qsizetype first = std::max<qsizetype>(visible.first - 1, 0);
    const qsizetype last = std::min<qsizetype>(qsizetype(visible.last) + 1, n);
    const SegmentWriter writer(frame, frame.dataArea, n, m_lineWidth * currentFrame().state.pixelRatio);
    const double valuesPerPixel = frame.rect.width() / frame.pixels.width() / sampleWidth();
    if (!m_decimation || !(valuesPerPixel >= ColumnsFromValuesPerPixel)) {
        writeValueSegments(m_data, first, last, writer, frame.vertices);
        return;
    }
    const int level = m_pyramid->levelFor(valuesPerPixel / GroupsPerPixel);
    if (level == 0) {
        writeValueColumns(m_data, first, last, writer, frame.vertices);
        return;
    }
    writeGroupColumns(m_pyramid->level(level), Vexal::LinePyramid::groupSize(level), m_pyramid->leadIn(level), n,
                      first, last, writer, frame.vertices);
}

void LinePlotter::_fetch_render_layers(QList<SRenderLayerDefinition> &layers, const QRectF &area)
{
    Vexal::LineFrame &frame = lineFrame();
    const FrameState &state = currentFrame().state;
    const QSizeF pixels(state.pixelWidth, state.pixelHeight);
    const bool current = Vexal::sameRect(frame.rect, area) && Vexal::sameRect(frame.dataArea, state.dataArea)
                         && frame.pixels == pixels && frame.stamp == dataStamp() && frame.style == m_styleVersion;
    if (!current) {
        frame.rect = area;
        frame.dataArea = state.dataArea;
        frame.pixels = pixels;
        frame.stamp = dataStamp();
        frame.style = m_styleVersion;
        buildVertices(frame);
        gpuArrays().markChanged(0);
    }
    // Device pixels from the bottom-left corner to clip space, where +1 is
    // the bottom edge in the chart's framebuffer.
    QMatrix4x4 matrix;
    if (!pixels.isEmpty()) {
        matrix.translate(-1.0f, 1.0f);
        matrix.scale(float(2.0 / pixels.width()), float(-2.0 / pixels.height()));
    }
    frame.matrix = matrix;
    frame.color = state.color;
    if (layers.size() != 1) {
        SRenderLayerDefinition line;
        line.program = QString::fromLatin1(SAreaPlotterProgram::Name);
        line.mode = DrawFlags::Arrays | GL_TRIANGLES;
        line.attributes = {0};
        layers = {line};
    }
    layers[0].count = qint32(frame.vertices.size());
}

QList<SAttributeDefinition> LinePlotter::declareArributeArray()
{
    return {Vexal::attributeDefinition(QStringLiteral("vertex"), DirtyBits::Vertex, QOpenGLBuffer::VertexBuffer,
                                       QOpenGLBuffer::DynamicDraw, GL_FLOAT, 2, &dataMutex)};
}

SAttributePointer LinePlotter::_fetch_attribute_data(const int &index) const
{
    if (index != 0)
        return SAttributePointer();
    const QList<QVector2D> &vertices = lineFrame().vertices;
    return {vertices.constData(), qint32(vertices.size() * qsizetype(sizeof(QVector2D)))};
}

void LinePlotter::_update_uniforms(QOpenGLShaderProgram &program, const SRenderLayerDefinition &)
{
    const Vexal::LineFrame &frame = lineFrame();
    program.setUniformValue("matrix", frame.matrix);
    program.setUniformValue("color", frame.color);
}
