// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/vexalglobal.h>

#include <QtCore/QList>
#include <QtCore/QRectF>

// A pyramid of ever coarser copies of a series: level 0 is the input, each
// further level keeps the maximum of groups of about `factor` cells of the level
// below, down to a single cell, so that peaks survive any zoom-out. Level 0
// shares the input's storage; every list is implicitly shared when handed out.
// Instantiated in the library for double.
template <typename T>
class VEXAL_EXPORT DecimatorFilter
{
public:
    // factor is the size ratio between two levels; it must exceed 1.
    explicit DecimatorFilter(double factor = 2.0);

    // Rebuilds the pyramid from input; returns false, keeping the old levels,
    // when input is empty or equal to level 0.
    bool setData(const QList<T> &input);
    // Puts tail in place of level 0's cells from first on and brings the
    // levels up to date at a cost that follows the tail. With a factor of 2
    // every level then groups fixed pairs of cells counted from the first (a
    // last group of one where a level's length is odd), so that groups never
    // move as cells arrive: level k changes from cell first >> k on. Returns
    // true when the levels above 0 were rebuilt whole instead (grouped
    // otherwise before, or another factor).
    bool replaceTail(qsizetype first, const QList<T> &tail);
    // Drops level 0's first count cells. With a factor of 2 the levels then
    // group fixed pairs counted from the first cell ever held, the dropped
    // ones included (a first group of one where its pair's left cell is
    // gone), so that groups do not move as a sliding window moves on: each
    // level loses its dropped groups from its front and recomputes its first
    // one, at a cost that follows the cells dropped and the levels.
    void dropFront(qsizetype count);

    // The level whose cells are about one pixel wide, given the data units per
    // pixel and the area that level 0 spans.
    int levelFor(double unitsPerPixel, const QRectF &area) const;

    const QList<QList<T>> &levels() const { return m_levels; }
    const QList<T> &level(int k) const { return m_levels.at(k); }
    int levelCount() const { return int(m_levels.size()); }
    double factor() const { return m_factor; }

private:
    QList<T> reduce(const QList<T> &source, QList<T> storage) const;
    // Regroups every level in fixed pairs, from level 0 as it is.
    void regroupInFixedPairs();

    QList<QList<T>> m_levels{QList<T>()}; // level 0 is the input, then coarser levels; one empty level
    double m_factor = 2.0;                // size ratio between two levels, 2
    bool m_fixedPairs = false;            // the levels group fixed pairs (after replaceTail); false
    qsizetype m_origin = 0;               // cells dropped before level 0's first, counted in fixed pairs; 0
};

extern template class DecimatorFilter<double>;
