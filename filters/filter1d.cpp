// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/filter1d.h>

#include <vexal/iplotter1d.h>
#include "core/cellgrid_p.h"
#include "core/numeric_p.h"
#include "core/slidingwindow_p.h"

#include <QtCore/QDebug>
#include <QtCore/QSet>
#include <QtCore/QUuid>

#include <algorithm>
#include <cmath>

//-----------------------------------------------------------------------------
// [SECTION] Construction and properties
//-----------------------------------------------------------------------------

Filter1D::Filter1D(QObject *parent)
    : QObject(parent)
    , m_dataID(QUuid::createUuid().toString())
{
}

Filter1D::~Filter1D() = default;

const QList<double> &Filter1D::data() const
{
    return m_data;
}

void Filter1D::setData(const QList<double> &input)
{
    if (!m_parentFilter && m_capacity > 0 && input.size() > m_capacity) {
        // Only the newest values are kept, each at the x it has in the list.
        dropAreaCells(input.size() - m_capacity, input.size());
        setData(input.last(m_capacity));
        return;
    }
    if (keepsRootInput && !m_parentFilter)
        m_input = input;
    if (_filter_func(input))
        _request_data_update();
}

void Filter1D::appendData(const QList<double> &values)
{
    if (m_parentFilter) {
        qWarning("Filter1D::appendData: ignored on a node fed by a parent; append to the root of its tree");
        return;
    }
    if (values.isEmpty())
        return;
    const qsizetype before = inputValues().size();
    QRectF widened = m_area;
    const double cell = before > 0 && widened.width() > 0.0 ? widened.width() / double(before) : 1.0;
    widened.setWidth(widened.width() + cell * double(values.size()));
    setArea(widened);
    takeInputTail(before, values);
    dropOverflow();
}

void Filter1D::clear()
{
    _clear_func();
    for (qsizetype i = 0; i < m_filters.size(); ++i)
        m_filters.at(i)->clear();
    for (qsizetype i = 0; i < m_plotters.size(); ++i)
        m_plotters.at(i)->clear();
    // A filter of a fixed number of cells keeps them, at 0: handed down too.
    if (data().isEmpty())
        emit dataChanged();
    else
        _request_data_update();
}

void Filter1D::setCapacity(int capacity)
{
    if (capacity < 0) {
        qWarning("Filter1D::capacity: %d is negative; using 0 (no limit)", capacity);
        capacity = 0;
    }
    if (m_capacity == capacity)
        return;
    if (m_parentFilter && capacity > 0)
        qWarning("Filter1D::capacity: ignored on a node fed by a parent; set it on the root of its tree");
    m_capacity = capacity;
    emit capacityChanged();
    dropOverflow();
}

const QRectF &Filter1D::area() const
{
    return m_area;
}

void Filter1D::setArea(const QRectF &r)
{
    if (Vexal::sameRect(m_area, r))
        return;
    m_area = r;
    // Indexed loops: a child's handlers may change these lists meanwhile.
    for (qsizetype i = 0; i < m_filters.size(); ++i)
        m_filters.at(i)->setArea(r);
    for (qsizetype i = 0; i < m_plotters.size(); ++i)
        m_plotters.at(i)->setPlotterArea(r);
    emit areaChanged();
}

const QString &Filter1D::dataID() const
{
    return m_dataID;
}

void Filter1D::setDataID(const QString &id)
{
    if (m_dataID == id)
        return;
    m_dataID = id;
    emit dataIDChanged();
}

//-----------------------------------------------------------------------------
// [SECTION] Tree
//-----------------------------------------------------------------------------

void Filter1D::addFilter(Filter1D *filter)
{
    if (!filter) {
        qWarning("Filter1D::addFilter: a null filter was ignored");
        return;
    }
    if (m_filters.contains(filter))
        return;
    if (isInSubtreeOf(filter)) {
        qWarning("Filter1D::addFilter: refused a filter that is this node or one of its ancestors (a cycle)");
        return;
    }
    m_filters.append(filter);
    connect(filter, &QObject::destroyed, this, &Filter1D::forgetNode, Qt::UniqueConnection);
    filter->setParentFilter(this);
    filter->setDataID(dataID());
    filter->setArea(area());
    filter->setData(data());
}

void Filter1D::removeFilter(Filter1D *filter)
{
    if (!m_filters.removeOne(filter))
        return;
    // A detached child no longer recomputes from this node's output.
    if (filter->m_parentFilter == this)
        filter->setParentFilter(nullptr);
}

void Filter1D::addPlotter(IPlotter1D *plotter)
{
    if (!plotter) {
        qWarning("Filter1D::addPlotter: a null plotter was ignored");
        return;
    }
    if (m_plotters.contains(plotter))
        return;
    m_plotters.append(plotter);
    connect(plotter, &QObject::destroyed, this, &Filter1D::forgetNode, Qt::UniqueConnection);
    plotter->setPlotterArea(area());
    plotter->setData(data());
}

void Filter1D::removePlotter(IPlotter1D *plotter)
{
    m_plotters.removeOne(plotter);
}

QList<IPlotter1D *> Filter1D::plotters() const
{
    return m_plotters;
}

void Filter1D::setParentFilter(const Filter1D *parent)
{
    m_parentFilter = parent;
}

// True when this node is root itself or lies below it: adding root as a child
// would then close a cycle and recurse forever on setData.
bool Filter1D::isInSubtreeOf(const Filter1D *root) const
{
    QList<const Filter1D *> pending{root};
    QSet<const Filter1D *> visited;
    while (!pending.isEmpty()) {
        const Filter1D *node = pending.takeLast();
        if (node == this)
            return true;
        if (visited.contains(node))
            continue;
        visited.insert(node);
        for (const Filter1D *child : node->m_filters)
            pending.append(child);
    }
    return false;
}

void Filter1D::forgetNode(QObject *node)
{
    // Compared by address only: the object is already partly destroyed.
    m_filters.removeIf([node](const Filter1D *f) { return static_cast<const QObject *>(f) == node; });
    m_plotters.removeIf([node](const IPlotter1D *p) { return static_cast<const QObject *>(p) == node; });
}

//-----------------------------------------------------------------------------
// [SECTION] Data flow
//-----------------------------------------------------------------------------

bool Filter1D::_filter_func(const QList<double> &input)
{
    if (Vexal::sameData(m_data, input))
        return false;
    m_data = input;
    return true;
}

void Filter1D::_request_data_update()
{
    // A shallow copy: stays valid even if a handler replaces this node's output.
    const QList<double> output = data();
    for (qsizetype i = 0; i < m_filters.size(); ++i)
        m_filters.at(i)->setData(output);
    const std::optional<double> peak = outputPeak();
    for (qsizetype i = 0; i < m_plotters.size(); ++i) {
        if (peak)
            m_plotters.at(i)->setDataWithPeak(output, *peak);
        else
            m_plotters.at(i)->setData(output);
    }
    emit dataChanged();
}

qsizetype Filter1D::_filter_tail(qsizetype first, const QList<double> &tail)
{
    if (!keepsRootInput) {
        // The identity: the output is the input.
        m_data.resize(first);
        m_data.append(tail);
        return first;
    }
    if (!m_parentFilter) {
        m_input.resize(first);
        m_input.append(tail);
    }
    return _filter_func(inputValues()) ? 0 : data().size();
}

void Filter1D::_clear_func()
{
    m_data.clear();
    m_input.clear();
}

const QList<double> &Filter1D::inputValues() const
{
    if (const Filter1D *parent = m_parentFilter.data())
        return parent->data();
    return keepsRootInput ? m_input : m_data;
}

void Filter1D::takeInputTail(qsizetype first, const QList<double> &tail)
{
    const qsizetype before = data().size();
    const qsizetype changed = _filter_tail(first, tail);
    if (changed < data().size() || data().size() != before)
        handDownTail(changed);
}

void Filter1D::handDownTail(qsizetype first)
{
    if (first <= 0) {
        _request_data_update();
        return;
    }
    const QList<double> output = data();
    const QList<double> tail = output.mid(first);
    for (qsizetype i = 0; i < m_filters.size(); ++i)
        m_filters.at(i)->takeInputTail(first, tail);
    for (qsizetype i = 0; i < m_plotters.size(); ++i)
        m_plotters.at(i)->replaceTail(first, tail);
    emit dataChanged();
}

bool Filter1D::_drop_front(qsizetype count)
{
    if (!keepsRootInput) {
        Vexal::dropFront(m_data, count); // the identity
        return true;
    }
    if (!m_parentFilter)
        Vexal::dropFront(m_input, count);
    _filter_func(inputValues());
    return false;
}

void Filter1D::takeInputDrop(qsizetype count)
{
    if (!_drop_front(count)) {
        _request_data_update();
        return;
    }
    for (qsizetype i = 0; i < m_filters.size(); ++i)
        m_filters.at(i)->takeInputDrop(count);
    for (qsizetype i = 0; i < m_plotters.size(); ++i)
        m_plotters.at(i)->dropFront(count);
    emit dataChanged();
}

void Filter1D::dropOverflow()
{
    const qsizetype n = inputValues().size();
    if (m_parentFilter || m_capacity <= 0 || n <= m_capacity)
        return;
    dropAreaCells(n - m_capacity, n);
    takeInputDrop(n - m_capacity);
}

void Filter1D::dropAreaCells(qsizetype count, qsizetype n)
{
    QRectF moved = m_area;
    moved.setLeft(m_area.left() + m_area.width() * double(count) / double(n));
    setArea(moved);
}

std::optional<double> Filter1D::outputPeak() const
{
    return std::nullopt;
}

const QList<double> &Filter1D::originalData() const
{
    if (const Filter1D *parent = m_parentFilter.data())
        return parent->data();
    return data();
}

int Filter1D::size2D() const
{
    return int(data().size() / 2);
}

//-----------------------------------------------------------------------------
// [SECTION] Index lookups
//-----------------------------------------------------------------------------

int Filter1D::__start_index(const QRectF &r) const
{
    const QRectF covered = m_area.intersected(r);
    return Vexal::CellGrid(m_area, data().size()).cellAt(covered.left());
}

int Filter1D::__end_index(const QRectF &r) const
{
    const QRectF covered = m_area.intersected(r);
    return Vexal::CellGrid(m_area, data().size()).cellsBetween(covered.left(), covered.right()).last;
}

int Filter1D::index_at(double x) const
{
    const qsizetype n = data().size();
    // QRectF::contains lets NaN through: no comparison with it fails.
    if (std::isnan(x) || !m_area.contains(x, 0.0) || n == 0 || Vexal::fuzzyEqual(m_area.width(), 0.0))
        return -1;
    // Rounds to the nearest cell boundary: the right half of cell k maps to k + 1.
    const int k = Vexal::CellGrid(m_area, n).nearestBoundary(x);
    return std::clamp(k, 0, int(n - 1));
}

double Filter1D::value_at(double x) const
{
    const int k = index_at(x);
    return k < 0 ? 0.0 : data().at(k);
}

const QRectF Filter1D::area_at(const QPointF &p) const
{
    const int k = index_at(p.x());
    if (k < 0)
        return QRectF();
    return Vexal::CellGrid(m_area, data().size()).cellRect(k, data().at(k));
}

double Filter1D::max_in(const QRectF &r) const
{
    const QList<double> &values = data();
    if (r.intersected(m_area).isEmpty() || values.isEmpty())
        return 0.0;
    // Clamped here: derived index rules and rounding may reach past the ends.
    const qsizetype start = std::max(__start_index(r), 0);
    const qsizetype end = std::min(qsizetype(__end_index(r)), values.size());
    double m = 0.0;
    for (qsizetype k = start; k < end; ++k)
        m = std::max(m, values.at(k));
    return m;
}
