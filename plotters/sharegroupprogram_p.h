// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <vexal/sprogramshaderdefinition.h>

#include "plotters/persharegroup_p.h"

#include <QtOpenGL/QOpenGLShaderProgram>

#include <atomic>

// A shader program that one plotter class builds for itself rather than through
// the named program registry. It is built lazily on the render thread, once per
// OpenGL share group: contexts that share resources use one build, a context
// that shares nothing gets its own, and a build is dropped together with the
// group whose contexts all died, so a dead context's program is never used.
class ShareGroupProgram
{
public:
    // Picks the source variant for the context being built for.
    using VariantChooser = int (*)(const QOpenGLContext &context);
    // The shader stages of a variant, in the order they are added.
    using VariantSources = QList<ShaderSource> (*)(int variant);

    ShareGroupProgram(const char *ownerName, VariantChooser chooseVariant, VariantSources sourcesOf);
    Q_DISABLE_COPY_MOVE(ShareGroupProgram)

    // Render thread, with a context current: the program of the current share
    // group, built first (and built again at every call while it is not linked).
    // Null without a current context.
    QOpenGLShaderProgram *acquire();
    // Render thread: the current share group's program as built so far, or null.
    QOpenGLShaderProgram *current() const;
    // Any thread: the variant chosen by the latest build, 0 before the first one.
    int variant() const { return m_variant.load(std::memory_order_relaxed); }

private:
    void link(QOpenGLShaderProgram &program, const QOpenGLContext &context);

    const char *m_ownerName;                        // class name printed on link failure
    VariantChooser m_chooseVariant;                 // picks the variant at each build
    VariantSources m_sourcesOf;                     // shader stages of a variant
    Vexal::PerShareGroup<QOpenGLShaderProgram> m_builds; // one build per live share group
    std::atomic<int> m_variant{0};                  // variant of the latest build, 0
    QMutex m_linkMutex;                             // one link at a time
};
