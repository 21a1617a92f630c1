// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include "plotters/gpuarrays_p.h"

#include <QtGui/QOpenGLContext>

#include <utility>

namespace Vexal {

namespace {

thread_local const void *t_frameOwner = nullptr;

} // namespace

const void *frameOwner()
{
    return t_frameOwner;
}

const void *exchangeFrameOwner(const void *owner)
{
    return std::exchange(t_frameOwner, owner);
}

void GpuArrays::setSlots(const QList<Slot> &arrays)
{
    m_copies.clear();
    m_slots = arrays;
    m_versions = QList<quint64>(arrays.size(), 1);
}

GpuArrays::Copy *GpuArrays::current()
{
    Copies *copies = m_copies.current([] { return std::make_unique<Copies>(); });
    if (!copies)
        return nullptr;
    QMutexLocker locker(&m_copiesMutex);
    std::shared_ptr<Copy> &copy = (*copies)[frameOwner()];
    if (!copy) {
        copy = std::make_shared<Copy>();
        for (const Slot &slot : std::as_const(m_slots)) {
            QOpenGLBuffer buffer(slot.type);
            buffer.create();
            buffer.setUsagePattern(slot.usage);
            copy->buffers.append(buffer);
        }
        copy->versions = QList<quint64>(m_slots.size(), 0);
        copy->bytes = QList<qsizetype>(m_slots.size(), 0);
    }
    return copy.get();
}

void GpuArrays::dropCopiesOf(const void *owner)
{
    QMutexLocker locker(&m_copiesMutex);
    m_copies.forEach([owner](Copies &copies) { copies.remove(owner); });
}

QOpenGLBuffer *GpuArrays::buffer(int i)
{
    Copy *copy = current();
    return copy ? &copy->buffers[i] : nullptr;
}

qsizetype GpuArrays::uploadedBytes(int i)
{
    Copy *copy = current();
    return copy ? copy->bytes[i] : 0;
}

} // namespace Vexal
