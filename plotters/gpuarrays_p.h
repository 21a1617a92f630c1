// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

// The GPU copies of a plotter's arrays, one set of buffers per OpenGL share
// group and chart. Qt Quick windows do not share contexts unless the
// application asks: a plotter drawn by charts in several windows keeps a copy
// in each, a window that comes back with a new context starts from nothing,
// and a copy goes with its share group. Two charts in one window may show
// different parts of the data, so each chart keeps its own copy as well.
// Internal: not installed.

#include "plotters/persharegroup_p.h"

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QMutex>
#include <QtOpenGL/QOpenGLBuffer>

namespace Vexal {

// The chart whose frame the calling thread takes or draws, null outside one;
// set by IPlotter::FrameScope. GPU copies are kept per such chart.
const void *frameOwner();
// Makes owner the calling thread's frame owner; returns the previous one.
const void *exchangeFrameOwner(const void *owner);

class GpuArrays
{
public:
    // How the buffer of one array is made.
    struct Slot
    {
        QOpenGLBuffer::Type type = QOpenGLBuffer::VertexBuffer;            // vertex or index buffer
        QOpenGLBuffer::UsagePattern usage = QOpenGLBuffer::DynamicDraw; // upload frequency hint
    };

    GpuArrays() = default;
    Q_DISABLE_COPY_MOVE(GpuArrays)

    // Declares the arrays; copies made for earlier declarations are dropped.
    void setSlots(const QList<Slot> &arrays);
    int count() const { return int(m_slots.size()); }

    // GUI thread or synchronize step: array i changed, so every share group
    // uploads it again before its next draw. Arrays not declared yet are
    // uploaded in full once declared.
    void markChanged(int i)
    {
        if (i < m_versions.size())
            ++m_versions[i];
    }
    // How often array i changed: 1 after its declaration.
    quint64 version(int i) const { return m_versions[i]; }

    // Synchronize step, a context current: uploads array i into the current
    // share group's buffer unless that copy is up to date. fetch() gives the
    // bytes (pointer and size) and is called only when an upload is due.
    template <typename Fetch>
    void uploadIfStale(int i, Fetch &&fetch)
    {
        Copy *copy = current();
        if (!copy || copy->versions[i] == m_versions[i])
            return;
        copy->versions[i] = m_versions[i];
        const auto [data, bytes] = fetch();
        copy->bytes[i] = bytes;
        QOpenGLBuffer &buffer = copy->buffers[i];
        buffer.bind();
        buffer.allocate(data, int(bytes));
        buffer.release();
    }

    // The same for an array kept as a list.
    template <typename T>
    void uploadListIfStale(int i, const QList<T> &list)
    {
        uploadIfStale(i, [&list] {
            return std::pair{static_cast<const void *>(list.constData()), list.size() * qsizetype(sizeof(T))};
        });
    }

    // Render thread, a context current: the current share group's buffer of
    // array i, created on first use; null without a current context.
    QOpenGLBuffer *buffer(int i);
    // Render thread: the bytes that the current share group's buffer of array
    // i holds, 0 before its first upload.
    qsizetype uploadedBytes(int i);
    // Drops the copies of a chart that no longer draws the plotter.
    void dropCopiesOf(const void *owner);

private:
    struct Copy
    {
        QList<QOpenGLBuffer> buffers; // one per slot, created in the group
        QList<quint64> versions;      // version of each array the buffers hold, 0 = none
        QList<qsizetype> bytes;       // bytes each buffer holds, 0
    };

    using Copies = QHash<const void *, std::shared_ptr<Copy>>; // per frame owner

    Copy *current();

    QList<Slot> m_slots;            // one per array
    QList<quint64> m_versions;      // per array, counts its changes from 1
    PerShareGroup<Copies> m_copies; // the buffers of each share group and chart that drew
    QMutex m_copiesMutex;           // render threads of windows that share contexts
};

} // namespace Vexal
