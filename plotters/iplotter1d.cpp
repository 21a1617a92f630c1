// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/iplotter1d.h>

#include "core/cellgrid_p.h"

#include <cmath>

IPlotter1D::IPlotter1D(QObject *parent)
    : IPlotter(parent)
{
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
    const int start = __start_index(rect);
    const int end = __end_index(rect);
    float m = 0.0f; // single precision on purpose: axes scale to it
    for (int i = start; i < end; ++i) {
        if (double(m) < values[i])
            m = float(values[i]);
    }
    return double(m);
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
