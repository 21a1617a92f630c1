#include "plotters/iplotter1d.h"

#include "plugin/vexalutils.h"

#include <cmath>

IPlotter1D::IPlotter1D(QObject *parent)
    : IPlotter(parent)
{
}

double IPlotter1D::sampleWidth() const
{
    return dataArea().width() / double(data().size());
}

int IPlotter1D::_index_at(double x) const
{
    const QRectF area = dataArea();
    if (!area.contains(QPointF(x, 0.0)))
        return -1;
    return Vexal::toInt(std::floor((x - area.left()) / sampleWidth()));
}

int IPlotter1D::__start_index(const QRectF &rect) const
{
    const QRectF area = dataArea();
    const QRectF r = area.intersected(rect);
    const int i = Vexal::toInt(std::floor((r.left() - area.left()) / sampleWidth()));
    return std::max(i, 0);
}

int IPlotter1D::__end_index(const QRectF &rect) const
{
    const QRectF area = dataArea();
    const QRectF r = area.intersected(rect);
    const int i = Vexal::toInt(std::ceil((r.right() - area.left()) / sampleWidth()));
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
    const QRectF area = dataArea();
    const double dx = sampleWidth();
    info.area = QRectF(area.left() + info.index * dx, 0.0, dx, v);
    info.valid = true;
    return info;
}
