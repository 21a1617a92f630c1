#include "plotters/gpuarrays_p.h"

#include <QtGui/QOpenGLContext>

namespace Vexal {

GpuArrays::~GpuArrays()
{
    // The buffers free their GL objects through their share group's resource
    // guard, also when no context of that group is current here.
    for (const std::shared_ptr<Copy> &copy : std::as_const(m_copies))
        QObject::disconnect(copy->watch);
}

void GpuArrays::setSlots(const QList<Slot> &arrays)
{
    QMutexLocker locker(&m_mutex);
    for (const std::shared_ptr<Copy> &copy : std::as_const(m_copies))
        QObject::disconnect(copy->watch);
    m_copies.clear();
    m_slots = arrays;
    m_versions = QList<quint64>(arrays.size(), 1);
}

GpuArrays::Copy *GpuArrays::current()
{
    QOpenGLContext *context = QOpenGLContext::currentContext();
    if (!context)
        return nullptr;
    QOpenGLContextGroup *group = context->shareGroup();
    QMutexLocker locker(&m_mutex);
    std::shared_ptr<Copy> &copy = m_copies[group];
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
        copy->watch = QObject::connect(group, &QObject::destroyed, [this, group] { forget(group); });
    }
    return copy.get();
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

void GpuArrays::forget(const QOpenGLContextGroup *group)
{
    QMutexLocker locker(&m_mutex);
    // The group has freed the GL objects with its last context.
    m_copies.remove(group);
}

} // namespace Vexal
