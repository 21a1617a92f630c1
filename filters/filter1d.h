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
    Q_PROPERTY(int capacity READ capacity WRITE setCapacity NOTIFY capacityChanged)

public:
    explicit Filter1D(QObject *parent = nullptr);
    ~Filter1D() override;

    virtual const QList<double> &data() const;
    virtual void setData(const QList<double> &input);
    // Appends values to the input of this node (a root of the tree) and hands
    // down what changed, at a cost that follows the values appended where
    // the node can update its output's end (the identity, DecimatorU64,
    // MovingAverageU64) and a recomputation elsewhere. The area widens by
    // one input cell per value (a cell being its width divided by the
    // values before, or 1 when there were none), so that every value keeps
    // its x. Children and plotters get what setData with the whole input
    // would give them, except that DecimatorU64 then groups fixed pairs.
    Q_INVOKABLE void appendData(const QList<double> &values);
    // Empties the input, the output and everything below, from the screen too.
    Q_INVOKABLE void clear();
    // The most values a root keeps (0: no limit): a sliding window over the
    // newest ones. Values dropped at the front, by an append, a longer list
    // or a lower capacity, move the area right by one cell each, so that
    // every value kept keeps its x. The drop costs what is dropped, not a
    // shift of what is kept.
    int capacity() const { return m_capacity; }
    void setCapacity(int capacity);
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
    void capacityChanged();

protected:
    // Turns input into the output; returns true when the output changed.
    virtual bool _filter_func(const QList<double> &input);
    // The input changed from index first on: it is now its values before
    // first followed by tail (a root's own input is brought up to date
    // here). Brings the output up to date and returns the index of its first
    // changed value: 0 when all of it may have changed, its size when none
    // did. The identity appends to its output; a node that keeps its input
    // recomputes from it.
    virtual qsizetype _filter_tail(qsizetype first, const QList<double> &tail);
    // Empties the output (and the kept input).
    virtual void _clear_func();
    // The first count values of the input are gone (a root drops them from
    // its kept input here). Brings the output up to date and returns true
    // when it lost exactly its first count values (the identity), false when
    // it was recomputed.
    virtual bool _drop_front(qsizetype count);
    // The input of this node: the parent's output, a root's kept input, or
    // the identity's own output.
    virtual const QList<double> &inputValues() const;
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

    QList<double> m_data;        // this node's output, empty
    QList<double> m_input;       // a root's input, kept when keepsRootInput; empty
    bool keepsRootInput = false; // as a root, keeps its input to recompute after appends

private:
    // The input changed from first on: updates the output and hands down its change.
    void takeInputTail(qsizetype first, const QList<double> &tail);
    // Hands the output from index first on to every child and plotter.
    void handDownTail(qsizetype first);
    // The input lost its first count values: updates the output and hands its change down.
    void takeInputDrop(qsizetype count);
    // Drops the oldest values of a root beyond its capacity.
    void dropOverflow();
    // Moves the area right by count of its cells, of n cells in all.
    void dropAreaCells(qsizetype count, qsizetype n);
    void setParentFilter(const Filter1D *parent);
    bool isInSubtreeOf(const Filter1D *root) const;
    void forgetNode(QObject *node);

    QRectF m_area;                          // data rectangle shared with children and plotters, null
    QString m_dataID;                       // identity of the data stream, a fresh UUID
    QList<Filter1D *> m_filters;            // child filters in order of addFilter; not owned
    QList<IPlotter1D *> m_plotters;         // attached plotters in order of addPlotter; not owned
    int m_capacity = 0;                     // most values a root keeps; 0 = no limit
    QPointer<const Filter1D> m_parentFilter; // node whose output feeds this one, null
};
