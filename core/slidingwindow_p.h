// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

// Dropping the oldest values of a list that works as a sliding window.
// Internal: not installed.

#include <QtCore/QList>

namespace Vexal {

// Drops the first count values without moving the others: the list only
// moves its start. Once, when the list has less room than its length again,
// it takes that much room and touches it: appends then fill the room at the
// end, and when it is full the values move back to the front of the same
// block, so the block neither grows nor leaves unused pages behind while the
// window moves on, and resident memory stays flat.
template <typename T>
void dropFront(QList<T> &list, qsizetype count)
{
    list.remove(0, count);
    const qsizetype kept = list.size();
    if (list.capacity() >= 2 * kept)
        return;
    list.resize(2 * kept);
    list.resize(kept);
}

} // namespace Vexal
