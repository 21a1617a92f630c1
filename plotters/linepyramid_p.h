// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

// The reduction behind LinePlotter. Internal: not installed; tests, fuzz
// targets and benchmarks read it.

#include <QtCore/QList>

#include <vector>

namespace Vexal {

// Level k >= 1 holds, for each group of 4^k consecutive values, the first,
// smallest, largest and last value. Minimum and maximum skip NaN and
// infinities (NaN when a group has no finite value); first and last are kept
// as they are, so that gaps at group edges stay visible.
class LinePyramid
{
public:
    static constexpr qsizetype Factor = 4; // values per group grow by this from one level to the next

    struct Group
    {
        double first; // first value of the group
        double min;   // smallest finite value, NaN when none
        double max;   // largest finite value, NaN when none
        double last;  // last value of the group
    };

    // Rebuilds every level from the values; fewer than two values leave no level.
    void build(const QList<double> &values);
    // Levels above the values themselves (level 1 is the first).
    int levelCount() const { return int(m_levels.size()); }
    // The groups of level k >= 1.
    const std::vector<Group> &level(int k) const { return m_levels[size_t(k - 1)]; }
    // Values in one group of level k.
    static qsizetype groupSize(int k);
    // The deepest level whose groups hold at most valuesPerGroup values; 0: the values.
    int levelFor(double valuesPerGroup) const;
    // The finite minimum and maximum of values [first, last), whole groups
    // read from the levels; false when there is none.
    bool range(const QList<double> &values, qsizetype first, qsizetype last, double &min, double &max) const;
    // Bytes held by the levels.
    qsizetype bytes() const;

private:
    std::vector<std::vector<Group>> m_levels; // level 1 upwards; empty
};

} // namespace Vexal
