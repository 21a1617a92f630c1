// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/vexalglobal.h>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QRectF>

#include <optional>
#include <QtCore/QString>

class IPlotter1D;
Q_MOC_INCLUDE(<vexal/iplotter1d.h>)

// A node of the data-flow tree between a data source and its plotters. It
// turns its input into its output with _filter_func and pushes the output,
// together with its area and id, down to every child filter and attached
// one-dimensional plotter. The base class is the identity filter.
class VEXAL_EXPORT Filter1D : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QList<double> data READ data WRITE setData NOTIFY dataChanged)
    Q_PROPERTY(QRectF area READ area WRITE setArea NOTIFY areaChanged)
    Q_PROPERTY(QString dataID READ dataID WRITE setDataID NOTIFY dataIDChanged)

public:
    explicit Filter1D(QObject *parent = nullptr);
    ~Filter1D() override;

    virtual const QList<double> &data() const;
    virtual void setData(const QList<double> &input);
    virtual const QRectF &area() const;
    virtual void setArea(const QRectF &r);
    virtual const QString &dataID() const;
    virtual void setDataID(const QString &id);

    Q_INVOKABLE void addFilter(Filter1D *filter);
    Q_INVOKABLE void removeFilter(Filter1D *filter);
    Q_INVOKABLE void addPlotter(IPlotter1D *plotter);
    Q_INVOKABLE void removePlotter(IPlotter1D *plotter);
    Q_INVOKABLE QList<IPlotter1D *> plotters() const;
    const QList<Filter1D *> &filters() const { return m_filters; }

    // Largest value of the cells that r covers, never below 0.0.
    virtual double max_in(const QRectF &r) const;
    // Value of the cell at x; 0.0 when x lies outside the area.
    virtual double value_at(double x) const;
    // Cell nearest to x (rounded, not floored), or -1 outside the area.
    virtual int index_at(double x) const;
    // Column of the cell at p.x() from 0 to its value; null outside the area.
    virtual const QRectF area_at(const QPointF &p) const;

signals:
    void dataChanged();
    void areaChanged();
    void chartAreaChanged();
    void dataIDChanged();

protected:
    // Turns input into the output; returns true when the output changed.
    virtual bool _filter_func(const QList<double> &input);
    // Range of output cells covered by r, end exclusive; not clamped.
    virtual int __start_index(const QRectF &r) const;
    virtual int __end_index(const QRectF &r) const;

    // Hands the output to every child and plotter, then emits dataChanged.
    void _request_data_update();
    // The largest value of the output (NaN ignored) when this node knows it
    // without reading the output, so that plotters need not read it either.
    virtual std::optional<double> outputPeak() const;
    // The input of this node: the parent's output, or this node's own output.
    const QList<double> &originalData() const;
    const Filter1D *parentFilter() const { return m_parentFilter.data(); }
    // Number of whole (width, value) pairs in the output.
    int size2D() const;

    QList<double> m_data; // this node's output, empty

private:
    void setParentFilter(const Filter1D *parent);
    bool isInSubtreeOf(const Filter1D *root) const;
    void forgetNode(QObject *node);

    QRectF m_area;                          // data rectangle shared with children and plotters, null
    QString m_dataID;                       // identity of the data stream, a fresh UUID
    QList<Filter1D *> m_filters;            // child filters in order of addFilter; not owned
    QList<IPlotter1D *> m_plotters;         // attached plotters in order of addPlotter; not owned
    QPointer<const Filter1D> m_parentFilter; // node whose output feeds this one, null
};
