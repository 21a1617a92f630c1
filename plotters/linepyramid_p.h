// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

// The reduction behind LinePlotter. Internal: not installed; tests, fuzz
// targets and benchmarks read it.

#include <QtCore/QList>

namespace Vexal {

// Level k >= 1 holds, for each group of 16 * 4^(k - 1) consecutive values,
// the first, smallest, largest and last value. Minimum and maximum skip NaN
// and infinities (NaN when a group has no finite value); first and last are
// kept as they are, so that gaps at group edges stay visible. Smaller groups
// are not stored: they are read from the values, which costs little for the
// few that a view draws, and the levels take 2.7 bytes per value. Groups are
// counted from the first value ever held: after values are dropped at the
// front (a sliding window), a level's first group holds only the values left
// of it, and the others do not move.
class LinePyramid
{
public:
    static constexpr qsizetype FirstGroup = 16; // values per group of level 1
    static constexpr qsizetype Factor = 4;      // groups of a level per group of the next

    struct Group
    {
        double first; // first value of the group
        double min;   // smallest finite value, NaN when none
        double max;   // largest finite value, NaN when none
        double last;  // last value of the group
    };

    // Rebuilds every level from the values, the first one starting its
    // groups; fewer than two values leave no level.
    void build(const QList<double> &values)
    {
        m_origin = 0;
        rebuildFrom(values, 0);
    }
    // The values are the ones built for, changed or appended from
    // firstChanged on: rebuilds only the groups from the one that holds
    // firstChanged on.
    void update(const QList<double> &values, qsizetype firstChanged) { rebuildFrom(values, firstChanged); }
    // The values are the ones built for without their first count: drops the
    // groups that held only those and reads each level's first group again.
    void dropFront(const QList<double> &values, qsizetype count);
    // Levels above the values themselves (level 1 is the first).
    int levelCount() const { return int(m_levels.size()); }
    // The groups of level k >= 1.
    const QList<Group> &level(int k) const { return m_levels[k - 1]; }
    // Values of the first group of level k that were dropped before values[0]:
    // group j of level k holds values [j * groupSize(k) - leadIn(k), ...).
    qsizetype leadIn(int k) const { return m_origin % groupSize(k); }
    // Values in one group of level k (1 for level 0, the values themselves).
    static qsizetype groupSize(int k);
    // Groups (or values) of level k per group of level k + 1.
    static qsizetype factorAbove(int k) { return k == 0 ? FirstGroup : Factor; }
    // The deepest level whose groups hold at most valuesPerGroup values; 0: the values.
    int levelFor(double valuesPerGroup) const;
    // The finite minimum and maximum of values [first, last), whole groups
    // read from the levels; false when there is none.
    bool range(const QList<double> &values, qsizetype first, qsizetype last, double &min, double &max) const;
    // Bytes held by the levels.
    qsizetype bytes() const;

private:
    void rebuildFrom(const QList<double> &values, qsizetype firstChanged);
    // Groups of each level, the values counted from the first ever held.
    int countLevels(qsizetype values) const;
    // Reads the first group of every level again.
    void refreshFirstGroups(const QList<double> &values);
    // Groups of level k - 1 that the first group of level k no longer holds.
    qsizetype droppedBelow(int k) const { return (m_origin / groupSize(k - 1)) % factorAbove(k - 1); }

    QList<QList<Group>> m_levels; // level 1 upwards; empty
    qsizetype m_origin = 0;       // values dropped before the first held, since the last build; 0
};

} // namespace Vexal
