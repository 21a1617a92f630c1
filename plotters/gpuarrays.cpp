// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include "plotters/gpuarrays_p.h"

#include <QtGui/QOpenGLContext>

namespace Vexal {

void GpuArrays::setSlots(const QList<Slot> &arrays)
{
    m_copies.clear();
    m_slots = arrays;
    m_versions = QList<quint64>(arrays.size(), 1);
}

GpuArrays::Copy *GpuArrays::current()
{
    return m_copies.current([this] {
        auto copy = std::make_unique<Copy>();
        for (const Slot &slot : std::as_const(m_slots)) {
            QOpenGLBuffer buffer(slot.type);
            buffer.create();
            buffer.setUsagePattern(slot.usage);
            copy->buffers.append(buffer);
        }
        copy->versions = QList<quint64>(m_slots.size(), 0);
        copy->bytes = QList<qsizetype>(m_slots.size(), 0);
        return copy;
    });
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
