// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/iplotter1d.h>

#include "core/cellgrid_p.h"
#include "core/numeric_p.h"
#include "plotters/samplewindow_p.h"

#include <cmath>

IPlotter1D::IPlotter1D(QObject *parent)
    : IPlotter(parent)
{
}

IPlotter1D::~IPlotter1D() = default;

Vexal::ItemSeries IPlotter1D::items() const
{
    const QList<double> &values = data();
    const qsizetype count = values.size() < itemOffset ? 0 : values.size() / itemStride;
    return {values.constData() + (count > 0 ? itemOffset : 0), count, itemStride};
}

Vexal::PeakPyramid &IPlotter1D::peaks() const
{
    if (!m_peaks)
        const_cast<IPlotter1D *>(this)->m_peaks = std::make_unique<Vexal::PeakPyramid>();
    return *m_peaks;
}

Vexal::DataStamps IPlotter1D::stampsFor(const Vexal::PeakPyramid &pyramid) const
{
    // Item i is unchanged when its value, at itemOffset + i * itemStride, is.
    const qsizetype unchangedValues = unchangedSince(pyramid.builtStamp());
    return {dataStamp(), std::max<qsizetype>(unchangedValues - itemOffset, 0) / itemStride};
}

double IPlotter1D::peakIn(qsizetype first, qsizetype last) const
{
    return peaks().peakIn(items(), stampsFor(peaks()), first, last);
}

Vexal::PeakPyramid &IPlotter1D::troughs() const
{
    if (!m_troughs)
        const_cast<IPlotter1D *>(this)->m_troughs = std::make_unique<Vexal::PeakPyramid>();
    return *m_troughs;
}

double IPlotter1D::trough(int level, qsizetype group) const
{
    return -troughs().peak(items().negated(), stampsFor(troughs()), level, group);
}

double IPlotter1D::troughIn(qsizetype first, qsizetype last) const
{
    return -troughs().peakIn(items().negated(), stampsFor(troughs()), first, last);
}

double IPlotter1D::groupPeak(int level, qsizetype group) const
{
    return peaks().peak(items(), stampsFor(peaks()), level, group);
}

std::pair<float, float> IPlotter1D::columnOf(double peak, int level, qsizetype group, bool hangs) const
{
    if (!hangs)
        return {0.0f, Vexal::toFloat(peak)};
    const double low = trough(level, group);
    return {Vexal::toFloat(std::min(low, 0.0)), Vexal::toFloat(std::max(peak, 0.0))};
}

Vexal::CellRange IPlotter1D::itemsShownBy(const QRectF &rect) const
{
    return visibleCells(rect);
}

double IPlotter1D::min_in(const QRectF &rect) const
{
    double minimum = 0.0, maximum = 0.0;
    return valueRange(rect, minimum, maximum) ? minimum : 0.0;
}

bool IPlotter1D::valueRange(const QRectF &rect, double &minimum, double &maximum) const
{
    const Vexal::CellRange shown = itemsShownBy(rect);
    if (shown.isEmpty())
        return false;
    minimum = troughIn(shown.first, shown.last);
    maximum = peakIn(shown.first, shown.last);
    return !std::isnan(minimum);
}

bool IPlotter1D::followWindow(Vexal::SampleWindow &window, Vexal::CellRange visible, double pixelsPerItem) const
{
    return window.follow(items().count, visible, pixelsPerItem, dataStamp());
}

void IPlotter1D::setDataWithPeak(const QList<double> &values, double peak)
{
    m_peakHint = peak;
    setData(values);
    m_peakHint.reset();
}

void IPlotter1D::setHeightToPeak()
{
    const double peak = peakIn(0, items().count);
    setPlotterAreaHeight(peak > 0.0 ? peak : 0.0);
}

double IPlotter1D::dataMaximum() const
{
    if (m_peakHint)
        return *m_peakHint > 0.0 ? *m_peakHint : 0.0;
    double maximum = 0.0;
    for (double v : data()) {
        if (v > maximum)
            maximum = v;
    }
    return maximum;
}

Vexal::CellRange IPlotter1D::visibleCells(const QRectF &rect) const
{
    const QRectF area = dataArea();
    const qsizetype count = items().count;
    const Vexal::CellGrid grid(area, count);
    const double left = std::max(area.left(), rect.left());
    const double right = std::min(area.right(), rect.right());
    if (!(left <= right))
        return {};
    return grid.cellsBetween(left, right).clampedTo(count);
}

double IPlotter1D::pixelsPerUnit(const QRectF &rect) const
{
    return rect.width() > 0.0 ? currentFrame().state.pixelWidth / rect.width() : 0.0;
}

double IPlotter1D::sampleWidth() const
{
    return Vexal::CellGrid(dataArea(), data().size()).cellWidth();
}

int IPlotter1D::_index_at(double x) const
{
    const QRectF area = dataArea();
    if (!area.contains(QPointF(x, 0.0)))
        return -1;
    return Vexal::CellGrid(area, data().size()).cellAt(x);
}

int IPlotter1D::__start_index(const QRectF &rect) const
{
    const QRectF area = dataArea();
    const QRectF r = area.intersected(rect);
    return std::max(Vexal::CellGrid(area, data().size()).cellAt(r.left()), 0);
}

int IPlotter1D::__end_index(const QRectF &rect) const
{
    const QRectF area = dataArea();
    const QRectF r = area.intersected(rect);
    const int i = Vexal::CellGrid(area, data().size()).cellsBetween(r.left(), r.right()).last;
    return std::min(i, int(data().size()));
}

double IPlotter1D::max_in(const QRectF &rect) const
{
    const QList<double> &values = data();
    if (rect.intersected(dataArea()).isEmpty() || values.isEmpty())
        return 0.0;
    // Single precision on purpose: axes scale to it. NaN and values below 0 give 0.
    const float m = float(peakIn(__start_index(rect), __end_index(rect)));
    return m > 0.0f ? double(m) : 0.0;
}

SInfoPoint IPlotter1D::mouse_hovering(const QPointF &point) const
{
    SInfoPoint info;
    info.plotter = const_cast<IPlotter1D *>(this);
    info.index = _index_at(point.x());
    if (info.index == -1 || info.index >= data().size())
        return info;
    const double v = data()[info.index];
    if (point.y() > v)
        return info;
    info.area = Vexal::CellGrid(dataArea(), data().size()).cellRect(info.index, v);
    info.valid = true;
    return info;
}
