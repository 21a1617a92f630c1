// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include "plotters/sharegroupprogram_p.h"

#include <QtCore/QDebug>
#include <QtGui/QOpenGLContext>
#include <QtOpenGL/QOpenGLShaderProgram>

ShareGroupProgram::ShareGroupProgram(const char *ownerName, VariantChooser chooseVariant,
                                     VariantSources sourcesOf)
    : m_ownerName(ownerName)
    , m_chooseVariant(chooseVariant)
    , m_sourcesOf(sourcesOf)
{
}

QOpenGLShaderProgram *ShareGroupProgram::acquire()
{
    // Contexts of one group may live on several render threads: one links.
    QMutexLocker locker(&m_linkMutex);
    QOpenGLShaderProgram *program = m_builds.current([] { return std::make_unique<QOpenGLShaderProgram>(); });
    if (program && !program->isLinked())
        link(*program, *QOpenGLContext::currentContext());
    return program;
}

QOpenGLShaderProgram *ShareGroupProgram::current() const
{
    return m_builds.existing();
}

void ShareGroupProgram::link(QOpenGLShaderProgram &program, const QOpenGLContext &context)
{
    const int variant = m_chooseVariant(context);
    m_variant.store(variant, std::memory_order_relaxed);
    // A program that failed to link keeps its stages, so a retry adds them again.
    const QList<ShaderSource> sources = m_sourcesOf(variant);
    for (const ShaderSource &source : sources)
        program.addCacheableShaderFromSourceCode(source.stage, source.source);
    if (!program.link())
        qCritical().noquote().nospace() << "Link shader program for " << m_ownerName
                                        << " failed with log:\n" << program.log();
}
