// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/iplotter.h>

#include <memory>
#include <optional>
#include <utility>

namespace Vexal {
class PeakPyramid;
struct DataStamps;
struct ItemSeries;
struct SampleWindow;
struct CellRange;
}

// Base of plotters whose data are one list of doubles, sample i covering an
// equal share of the data area. Maps rectangles to index ranges, x positions to
// samples and mouse positions to hover records.
class VEXAL_EXPORT IPlotter1D : public IPlotter
{
    Q_OBJECT

public:
    explicit IPlotter1D(QObject *parent = nullptr);
    ~IPlotter1D() override;

    double max_in(const QRectF &rect) const override;
    // The smallest value in the x range of rect, of either sign; 0 when it
    // shows none.
    double min_in(const QRectF &rect) const override;
    bool valueRange(const QRectF &rect, double &minimum, double &maximum) const override;

    // setData for a source that knows the largest value of values (NaN
    // ignored): plotters whose height follows the data maximum take it
    // instead of reading every value.
    void setDataWithPeak(const QList<double> &values, double peak);
    SInfoPoint mouse_hovering(const QPointF &point) const override;

    virtual int _index_at(double x) const;
    virtual int __start_index(const QRectF &rect) const;
    virtual int __end_index(const QRectF &rect) const;

protected:
    // Width of one sample in data units (infinite without data).
    double sampleWidth() const;

    // The items drawn, one per cell: item i is data()[itemOffset + i * itemStride].
    Vexal::ItemSeries items() const;
    // Peaks of groups of items, worked out of the current data on demand.
    Vexal::PeakPyramid &peaks() const;
    // The stamps of the current data, for a pyramid worked out of them.
    Vexal::DataStamps stampsFor(const Vexal::PeakPyramid &pyramid) const;
    // The peak of items [first, last), NaN when there is none; a plotter with
    // a reduction of its own answers from it.
    virtual double peakIn(qsizetype first, qsizetype last) const;
    // Troughs (minima) of groups of items, NaN ignored, worked out on demand
    // like the peaks: only signed views and queries for minima need them.
    double trough(int level, qsizetype group) const;
    // The trough of items [first, last), NaN when there is none.
    virtual double troughIn(qsizetype first, qsizetype last) const;
    // The items that rect shows along x, whatever its height.
    virtual Vexal::CellRange itemsShownBy(const QRectF &rect) const;
    // The peak of group g of 2^level items, NaN when all of them are NaN.
    double groupPeak(int level, qsizetype group) const;
    // What a bar or area column of group g of 2^level items, whose peak is
    // peak, covers standing on value 0: from 0 to the peak, or, where views
    // reach below 0 (hangs), from the lower of 0 and its trough to the
    // higher of 0 and its peak.
    std::pair<float, float> columnOf(double peak, int level, qsizetype group, bool hangs) const;
    // Moves a chart's window of groups so that it holds the items that rect
    // shows (visible), items pixelsPerItem device pixels wide; true when it
    // moved and its arrays must be rebuilt.
    bool followWindow(Vexal::SampleWindow &window, Vexal::CellRange visible, double pixelsPerItem) const;
    // The cells of the data area that rect reaches along x (whatever the
    // heights of both), from the cell of its left edge to the first cell at or
    // beyond its right edge, cut to the data.
    Vexal::CellRange visibleCells(const QRectF &rect) const;
    // The largest data value that is not NaN and not below 0: the data
    // maximum that plotter heights follow. Taken from setDataWithPeak's peak
    // while it runs, read from the data otherwise.
    double dataMaximum() const;
    // Sets the plotter area's height to the data maximum (never below 0)
    // from the peak pyramid: after a change at the end of the data it costs
    // what changed, not the whole data.
    void setHeightToPeak();
    // Device pixels per data unit along x in the current frame (0 outside one).
    double pixelsPerUnit(const QRectF &rect) const;

    int itemStride = 1; // doubles from one item to the next; 1
    int itemOffset = 0; // position of an item's value among its doubles; 0

private:
    Vexal::PeakPyramid &troughs() const;

    std::unique_ptr<Vexal::PeakPyramid> m_peaks;   // made on first use
    std::unique_ptr<Vexal::PeakPyramid> m_troughs; // peaks of the negated items; made on first use
    std::optional<double> m_peakHint;            // setDataWithPeak's peak while it runs; none
};
