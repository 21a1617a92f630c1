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

ShareGroupProgram::~ShareGroupProgram()
{
    // Runs at process exit: the wrappers stay (their GL objects may have no
    // context left to be freed in), only the group watches must not outlive us.
    for (const Build &build : std::as_const(m_builds))
        QObject::disconnect(build.groupWatch);
}

QOpenGLShaderProgram *ShareGroupProgram::acquire()
{
    QOpenGLContext *context = QOpenGLContext::currentContext();
    if (!context)
        return nullptr;
    QOpenGLContextGroup *group = context->shareGroup();
    QMutexLocker locker(&m_mutex);
    Build &build = m_builds[group];
    if (!build.program) {
        build.program = new QOpenGLShaderProgram;
        build.groupWatch = QObject::connect(group, &QObject::destroyed, [this, group] { forget(group); });
    }
    if (!build.program->isLinked())
        link(*build.program, *context);
    return build.program;
}

QOpenGLShaderProgram *ShareGroupProgram::current() const
{
    QOpenGLContext *context = QOpenGLContext::currentContext();
    if (!context)
        return nullptr;
    QMutexLocker locker(&m_mutex);
    return m_builds.value(context->shareGroup()).program;
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

void ShareGroupProgram::forget(const QOpenGLContextGroup *group)
{
    QMutexLocker locker(&m_mutex);
    // The group has freed the GL object already; only the wrapper is left.
    delete m_builds.take(group).program;
}
