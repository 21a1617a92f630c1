// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/decimatorfilter.h>

#include "filters/roundedgroups_p.h"
#include "core/cellgrid_p.h"
#include "core/slidingwindow_p.h"

#include <QtCore/QDebug>

#include <algorithm>
#include <cmath>
#include <utility>

// This file is built with the loop vectorizer fully enabled: the pairwise
// reduction is the hot loop of every long series.

namespace {

template <typename T>
T atLeast(T value, T floor)
{
    return value > floor ? value : floor;
}

// The common case of an even size and factor 2: every group holds two cells.
template <typename T>
void reducePairs(const T *in, T *out, qsizetype m)
{
    for (qsizetype k = 0; k < m; ++k)
        out[k] = atLeast(in[2 * k + 1], atLeast(in[2 * k], T(0)));
}

// The first cell of a level grouped in fixed pairs: the first cell below on
// its own where its pair lost its left half (alone) or has no right half.
template <typename T>
T firstOfFixedPairs(const QList<T> &below, bool alone)
{
    const T first = atLeast(below.first(), T(0));
    return alone || below.size() == 1 ? first : atLeast(below[1], first);
}

// Cells from..end of level from the cells below, in pairs counted from the
// first cell ever held: with alone = 1 the first cell below is the right half
// of a pair whose left half was dropped, so it is a group of its own, and so
// is a last cell without a right half.
template <typename T>
void reduceFixedPairs(const QList<T> &below, QList<T> &level, int alone, qsizetype from)
{
    const qsizetype n = below.size();
    level.resize((n + alone + 1) / 2);
    if (from == 0 && alone) {
        level.first() = firstOfFixedPairs(below, true);
        from = 1;
    }
    const qsizetype wholePairs = (n + alone) / 2; // cells whose pair is complete
    if (from < wholePairs)
        reducePairs(below.constData() + 2 * from - alone, level.data() + from, wholePairs - from);
    if (wholePairs < level.size())
        level.last() = atLeast(below.last(), T(0));
}

template <typename T>
void reduceGroups(const T *in, qsizetype n, T *out, qsizetype m, double step)
{
    qsizetype written = 0;
    Vexal::forEachRoundedGroup(n, step, [&](qsizetype k, qsizetype begin, qsizetype end) {
        T v = T(0);
        for (qsizetype i = begin; i < end; ++i)
            v = atLeast(in[i], v);
        if (k < m) {
            out[k] = v;
            written = k + 1;
        } else {
            // Rounding drift could leave groups past the last cell: merged into it.
            out[m - 1] = atLeast(v, out[m - 1]);
        }
    });
    std::fill(out + written, out + m, T(0));
}

} // namespace

template <typename T>
DecimatorFilter<T>::DecimatorFilter(double factor)
    : m_factor(factor > 1.0 ? factor : 2.0)
{
    if (!(factor > 1.0))
        qWarning() << "DecimatorFilter: reduction factor" << factor << "is not above 1, using 2";
}

template <typename T>
bool DecimatorFilter<T>::setData(const QList<T> &input)
{
    if (input.isEmpty() || Vexal::sameData(m_levels.first(), input))
        return false;
    // The old levels lend their storage to the new ones of the same size: a
    // stream of equally long inputs then rebuilds without allocating.
    m_fixedPairs = false;
    m_origin = 0;
    QList<QList<T>> previous = std::exchange(m_levels, QList<QList<T>>{input});
    for (qsizetype k = 1; m_levels.last().size() > 1; ++k) {
        QList<T> storage = k < previous.size() ? std::move(previous[k]) : QList<T>();
        m_levels.append(reduce(m_levels.last(), std::move(storage)));
    }
    return true;
}

template <typename T>
bool DecimatorFilter<T>::replaceTail(qsizetype first, const QList<T> &tail)
{
    QList<T> &input = m_levels.first();
    first = std::clamp<qsizetype>(first, 0, input.size());
    input.resize(first);
    input.append(tail);
    if (m_factor != 2.0) {
        const QList<T> all = input;
        m_levels = {QList<T>()};
        setData(all);
        return true;
    }
    const bool regroup = !m_fixedPairs;
    m_fixedPairs = true;
    qsizetype changed = regroup ? 0 : first; // first changed cell of each level in turn
    qsizetype k = 1;
    for (; m_levels[k - 1].size() > 1; ++k) {
        const int alone = int((m_origin >> (k - 1)) & 1); // the first cell below stands alone
        changed = (changed + alone) / 2;
        if (m_levels.size() == k)
            m_levels.append(QList<T>());
        changed = std::min(changed, m_levels[k].size()); // cells a level did not have yet are new too
        reduceFixedPairs(m_levels[k - 1], m_levels[k], alone, changed);
    }
    m_levels.resize(k); // a shorter input needs fewer levels
    return regroup;
}

template <typename T>
void DecimatorFilter<T>::regroupInFixedPairs()
{
    m_fixedPairs = false;
    replaceTail(m_levels.first().size(), QList<T>());
}

template <typename T>
void DecimatorFilter<T>::dropFront(qsizetype count)
{
    QList<T> &input = m_levels.first();
    count = std::clamp<qsizetype>(count, 0, input.size());
    if (count == 0)
        return;
    const qsizetype before = m_origin;
    m_origin += count;
    Vexal::dropFront(input, count);
    if (input.isEmpty() || m_factor != 2.0 || !m_fixedPairs) {
        const QList<T> kept = input;
        m_levels = {QList<T>()};
        m_origin = 0;
        if (m_factor != 2.0)
            setData(kept);
        else if (!kept.isEmpty()) {
            m_levels.first() = kept;
            regroupInFixedPairs();
        }
        return;
    }
    qsizetype k = 1;
    for (; k < m_levels.size() && m_levels[k - 1].size() > 1; ++k) {
        QList<T> &level = m_levels[k];
        Vexal::dropFront(level, (m_origin >> k) - (before >> k));
        level.first() = firstOfFixedPairs(m_levels[k - 1], (m_origin >> (k - 1)) & 1);
    }
    m_levels.resize(k); // a shorter window needs fewer levels
}

// One pass over the contiguous cells of source: each output cell is the largest
// value of its group, compared against 0.0, so no cell is negative and NaN
// values never win. storage is reused when it has the right size and nobody
// else holds it.
template <typename T>
QList<T> DecimatorFilter<T>::reduce(const QList<T> &source, QList<T> storage) const
{
    const qsizetype n = source.size();
    // Strictly fewer cells than the source, so that the pyramid always ends.
    const qsizetype m = std::min(qsizetype(std::ceil(double(n) / m_factor)), n - 1);
    if (storage.size() != m || !storage.isDetached())
        storage = QList<T>(m);
    const double step = double(n) / double(m);
    if (step == 2.0)
        reducePairs(source.constData(), storage.data(), m);
    else
        reduceGroups(source.constData(), n, storage.data(), m, step);
    return storage;
}

template <typename T>
int DecimatorFilter<T>::levelFor(double unitsPerPixel, const QRectF &area) const
{
    const qsizetype n = m_levels.first().size();
    if (n == 0 || Vexal::fuzzyEqual(area.width(), 0.0))
        return 0;
    const double w0 = Vexal::CellGrid(area, n).cellWidth();
    if (w0 > unitsPerPixel)
        return 0; // input cells are already wider than a pixel
    const int k = Vexal::toInt(std::ceil(std::log(unitsPerPixel / w0) / std::log(m_factor)));
    return std::clamp(k, 0, levelCount() - 1);
}

template class DecimatorFilter<double>;
