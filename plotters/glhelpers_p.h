// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QDebug>
#include <QtCore/QList>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtOpenGL/QOpenGLBuffer>

#include <vexal/plotterrecords.h>

// Helpers of the concrete plotters for their buffers, declarations and draw calls.
namespace Vexal {

// One attribute (or index array) declaration of a layered plotter, tightly
// packed from offset 0 and uploaded under the given plotter mutex.
inline SAttributeDefinition attributeDefinition(const QString &name, quint32 dirtyMask, QOpenGLBuffer::Type bufferType,
                                                QOpenGLBuffer::UsagePattern usage, GLenum glType, int tupleSize,
                                                QMutex *mutex)
{
    SAttributeDefinition definition;
    definition.name = name;
    definition.dirtyMask = dirtyMask;
    definition.usagePattern = usage;
    definition.bufferType = bufferType;
    definition.glType = glType;
    definition.tupleSize = tupleSize;
    definition.mutex = mutex;
    return definition;
}

// Reads one pending OpenGL error after a draw and reports it; errors are never
// acted upon.
inline void reportGlError()
{
    const GLenum error = QOpenGLContext::currentContext()->functions()->glGetError();
    if (error != GL_NO_ERROR)
        qWarning().nospace() << "WE GOT AN OPENGL ERROR CODE: " << uint(error);
}

} // namespace Vexal
