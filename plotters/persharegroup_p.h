// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

// One value per OpenGL share group: the module's GPU resources (buffers,
// programs) belong to the share group of the context that uses them. Qt Quick
// windows share no contexts unless the application asks, so each window gets
// its own, made on first use there and dropped when its group goes.
// Internal: not installed.

#include <QtCore/QHash>
#include <QtCore/QMutex>
#include <QtCore/QObject>
#include <QtGui/QOpenGLContext>

#include <memory>

namespace Vexal {

template <typename T>
class PerShareGroup
{
public:
    PerShareGroup() = default;
    ~PerShareGroup() { clear(); }
    Q_DISABLE_COPY_MOVE(PerShareGroup)

    // Render thread: the value of the current context's share group, made by
    // make() (returning std::unique_ptr<T>) on first use; null without a
    // current context. The value stays where it is until its group goes.
    template <typename Make>
    T *current(Make &&make)
    {
        QOpenGLContextGroup *group = currentGroup();
        if (!group)
            return nullptr;
        QMutexLocker locker(&m_mutex);
        Entry &entry = m_entries[group];
        if (!entry.value) {
            entry.value = make();
            entry.watch = QObject::connect(group, &QObject::destroyed, [this, group] { forget(group); });
        }
        return entry.value.get();
    }

    // Render thread: the current share group's value if it was made, else null.
    T *existing() const
    {
        QOpenGLContextGroup *group = currentGroup();
        QMutexLocker locker(&m_mutex);
        const auto it = m_entries.constFind(group);
        return it == m_entries.cend() ? nullptr : it->value.get();
    }

    // Calls visit(T &) for the value of every share group.
    template <typename Visit>
    void forEach(Visit &&visit)
    {
        QMutexLocker locker(&m_mutex);
        for (const Entry &entry : std::as_const(m_entries))
            visit(*entry.value);
    }

    // Drops every value; their GL objects are freed through their groups.
    void clear()
    {
        QMutexLocker locker(&m_mutex);
        for (const Entry &entry : std::as_const(m_entries))
            QObject::disconnect(entry.watch);
        m_entries.clear();
    }

private:
    struct Entry
    {
        std::shared_ptr<T> value;      // the group's value
        QMetaObject::Connection watch; // drops it when the group goes
    };

    static QOpenGLContextGroup *currentGroup()
    {
        QOpenGLContext *context = QOpenGLContext::currentContext();
        return context ? context->shareGroup() : nullptr;
    }

    void forget(const QOpenGLContextGroup *group)
    {
        QMutexLocker locker(&m_mutex);
        // The group freed the GL objects with its last context.
        m_entries.remove(group);
    }

    QHash<const QOpenGLContextGroup *, Entry> m_entries; // one per live share group
    mutable QMutex m_mutex;                              // render threads of several windows
};

} // namespace Vexal
