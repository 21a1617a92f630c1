// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/bardecorator.h>

#include <vexal/ichartarea.h>
#include "plotters/glhelpers_p.h"
#include "plotters/gpuarrays_p.h"
#include "plotters/sharegroupprogram_p.h"
#include "core/numeric_p.h"
#include "core/numeric_p.h"

#include <QtOpenGL/QOpenGLShaderProgram>

#include <algorithm>
#include <cmath>

//-----------------------------------------------------------------------------
// [SECTION] Shader variants
//-----------------------------------------------------------------------------

namespace {

// Desktop OpenGL 4.x builds the version 330 program but draws nothing; OpenGL
// ES above 3.2 binds the version 330 attributes by location; every other
// context uses the attribute program, bound by name.
enum Variant { SkippedVariant = 0, LocationVariant = 1, NamedVariant = 2 };

// The decorator's arrays in its GPU arrays.
enum Array { VertexArray, TimeArray, IndexArray };

constexpr int PointLocation = 0; // "point" in the version 330 program
constexpr int TimeLocation = 1;  // "time" in the version 330 program
constexpr float NeverFades = 4000000.0f; // fade start of the newest highlight

const char *const AttributeVertexHeader =
    "attribute vec2 point;\n"
    "attribute float time;\n"
    "varying vec4 vColor;\n";

const char *const Version330VertexHeader =
    "#version 330\n"
    "layout (location = 0) in vec2 point;\n"
    "layout (location = 1) in float time;\n"
    "out vec4 vColor;\n";

// Alpha falls from the colour's alpha to 0 during the time unit after "time".
const char *const VertexBody =
    "uniform vec4 color;\n"
    "uniform float curr_time;\n"
    "uniform float screen_dy;\n"
    "uniform float screen_y;\n"
    "void main()\n"
    "{\n"
    "   float alpha = min ( max( time - curr_time, 0.0 ), color.w );\n"
    "   vColor      = vec4(color.xyz, alpha );\n"
    "   float y\t\t= -(point.y - screen_y)*screen_dy + 1.0;   gl_Position = vec4( point.x, y, 1.0, 1.0);\n"
    "}\n";

const char *const AttributeFragmentShader =
    "#ifdef GL_ES\nprecision mediump float;\n#endif\nvarying vec4 vColor;\nvoid main()\n{\n    gl_FragColor = vColor;\n}";

const char *const Version330FragmentShader =
    "#version 330\nout vec4 FragColor;\nin vec4 vColor;\nvoid main()\n{\n    FragColor = vColor;\n}";

int chooseVariant(const QOpenGLContext &context)
{
    const QSurfaceFormat format = context.format();
    const int major = format.majorVersion();
    const int minor = format.minorVersion();
    if (!context.isOpenGLES() && major >= 4)
        return SkippedVariant;
    if (context.isOpenGLES() && (major > 3 || (major == 3 && minor > 2)))
        return LocationVariant;
    return NamedVariant;
}

QList<ShaderSource> variantSources(int variant)
{
    const bool attributes = variant == NamedVariant;
    const QString header = QString::fromLatin1(attributes ? AttributeVertexHeader : Version330VertexHeader);
    return {{QOpenGLShader::Vertex, header + QString::fromLatin1(VertexBody)},
            {QOpenGLShader::Fragment,
             QString::fromLatin1(attributes ? AttributeFragmentShader : Version330FragmentShader)}};
}

// Shared by every decorator.
ShareGroupProgram &decoratorProgram()
{
    // Never destroyed: its programs live as long as their share groups.
    static ShareGroupProgram *const program = new ShareGroupProgram("BarDecorator", chooseVariant, variantSources);
    return *program;
}

// The shader's clock: time units since midnight.
float shaderTimeNow(float timeScale)
{
    return float(QTime::currentTime().msecsSinceStartOfDay()) / timeScale;
}

} // namespace

//-----------------------------------------------------------------------------
// [SECTION] Construction and properties
//-----------------------------------------------------------------------------

BarDecorator::BarDecorator(QObject *parent)
    : IPlotter(parent)
    , m_highlightTimes(4, NeverFades)
{
    setColor(QColor(255, 255, 255, 70));
    for (quint32 k = 0; k < quint32(m_maxHighlights); ++k) {
        const quint32 corner = 4 * k;
        m_highlightIndices << corner << corner + 1 << corner + 2 << corner + 2 << corner + 1 << corner + 3;
    }
    gpuArrays().setSlots({{QOpenGLBuffer::VertexBuffer, QOpenGLBuffer::DynamicDraw},
                          {QOpenGLBuffer::VertexBuffer, QOpenGLBuffer::DynamicDraw},
                          {QOpenGLBuffer::IndexBuffer, QOpenGLBuffer::StaticDraw}});
    m_fadeTimer.setInterval(20);
    connect(&m_fadeTimer, &QTimer::timeout, this, &BarDecorator::fadeTick);
    pushHighlight(QRectF());
}

BarDecorator::~BarDecorator()
{
    detachFromChart();
}

void BarDecorator::setActive(bool active)
{
    if (m_active == active)
        return;
    m_active = active;
    if (!active)
        pushHighlight(QRectF()); // the current highlight fades out
    emit activeChanged();
}

void BarDecorator::setMouseX(double x)
{
    if (qFuzzyCompare(m_mouseX, x))
        return;
    m_mouseX = x;
    updateHover();
}

void BarDecorator::setMouseY(double y)
{
    if (qFuzzyCompare(m_mouseY, y))
        return;
    m_mouseY = y;
    updateHover();
}

//-----------------------------------------------------------------------------
// [SECTION] Watched plotters
//-----------------------------------------------------------------------------

void BarDecorator::setPlotters(const QList<IPlotter *> &plotters)
{
    // QML turns list entries that are not plotters into nulls.
    QList<IPlotter *> watched = plotters;
    if (watched.removeAll(nullptr) > 0)
        qWarning("BarDecorator::plotters: null entries (or objects that are not plotters) were ignored");
    if (watched == m_plotters)
        return;
    // Plotters dropped from the list keep their connections.
    m_plotters = watched;
    for (IPlotter *plotter : std::as_const(m_plotters))
        watch(plotter);
    emit plottersChanged();
}

void BarDecorator::addPlotter(IPlotter *newPlotter)
{
    if (!newPlotter) {
        qWarning("BarDecorator::addPlotter: a null plotter was ignored");
        return;
    }
    if (m_plotters.contains(newPlotter))
        return;
    m_plotters.append(newPlotter);
    watch(newPlotter);
    emit plottersChanged();
}

void BarDecorator::removePlotter(IPlotter *plotter)
{
    if (!m_plotters.removeOne(plotter))
        return;
    unwatch(plotter);
    emit plottersChanged();
}

void BarDecorator::removeAllPlotter()
{
    if (m_plotters.isEmpty())
        return;
    const QList<IPlotter *> removed = std::exchange(m_plotters, {});
    for (IPlotter *plotter : removed)
        unwatch(plotter);
    emit plottersChanged();
}

void BarDecorator::watch(IPlotter *plotter)
{
    unwatch(plotter);
    connect(plotter, &IPlotter::dataChanged, this, &BarDecorator::updateHover, Qt::DirectConnection);
    // The pointer is only compared, never used, once the plotter is gone.
    connect(plotter, &QObject::destroyed, this, [this, plotter] { forgetPlotter(plotter); });
}

void BarDecorator::unwatch(IPlotter *plotter)
{
    disconnect(plotter, &IPlotter::dataChanged, this, &BarDecorator::updateHover);
    disconnect(plotter, &QObject::destroyed, this, nullptr);
}

void BarDecorator::forgetPlotter(const IPlotter *plotter)
{
    if (m_plotters.removeAll(plotter) > 0)
        emit plottersChanged();
}

//-----------------------------------------------------------------------------
// [SECTION] Hover
//-----------------------------------------------------------------------------

QPointF BarDecorator::mouseInChart(const IChartArea &chart) const
{
    const QRectF visible = chart.visibleRect();
    return QPointF(visible.left() + visible.width() * m_mouseX / chart.width(),
                   visible.top() + visible.height() * (1.0 - m_mouseY / chart.height()));
}

void BarDecorator::updateHover()
{
    const IChartArea *chart = chartArea();
    if (!chart || !m_active)
        return;
    const QPointF mouse = mouseInChart(*chart);
    // A chart item without a size yet maps the mouse nowhere.
    if (!std::isfinite(mouse.x()) || !std::isfinite(mouse.y()))
        return;
    // Higher layer masks are drawn later, so the plotter on top is asked first.
    std::stable_sort(m_plotters.begin(), m_plotters.end(),
                     [](const IPlotter *a, const IPlotter *b) { return a->drawLayer() > b->drawLayer(); });
    QVariantList hovered;
    int hit = -1;
    QRectF hitRect;
    for (int i = 0; i < m_plotters.size(); ++i) {
        const IPlotter *plotter = m_plotters.at(i);
        if (!plotter->visible())
            continue;
        const SInfoPoint info = plotter->mouse_hovering(mouse);
        if (!info.valid)
            continue;
        hovered.append(QVariantMap{{QStringLiteral("rect"), info.area},
                                   {QStringLiteral("name"), plotter->name()},
                                   {QStringLiteral("color"), plotter->color()}});
        if (hit < 0) {
            hit = i;
            hitRect = info.area;
        }
    }
    const QRectF newest = m_history.first().rect;
    if (hit >= 0) {
        if (Vexal::sameRect(hitRect, newest)) {
            // the same bar: nothing to redraw
        } else if (newest.left() == hitRect.left() && newest.right() == hitRect.right()) {
            reshapeHighlight(hitRect);
        } else {
            pushHighlight(hitRect);
        }
        if (hit >= 1) // brought to the front
            m_plotters.at(hit)->setZOrder(m_plotters.first()->zOrder() + 0.0001);
    } else if (!newest.isNull()) {
        pushHighlight(QRectF()); // left every bar: the highlight fades out
    }
    if (hovered == m_infoMap)
        return;
    m_infoMap = hovered;
    emit infoMapChanged();
}

//-----------------------------------------------------------------------------
// [SECTION] Highlight history
//-----------------------------------------------------------------------------

void BarDecorator::pushHighlight(const QRectF &rect)
{
    m_history.prepend({rect, QTime::currentTime().addSecs(3600)});
    if (const IChartArea *chart = chartArea(); chart && m_maxHighlights > 0) {
        markHighlightsChanged();
        const QRectF visible = chart->visibleRect();
        const float x0 = Vexal::toFloat(2.0 * (rect.left() - visible.left()) / visible.width() - 1.0);
        const float x1 = Vexal::toFloat(2.0 * (rect.right() - visible.left()) / visible.width() - 1.0);
        const float h = Vexal::toFloat(rect.height());
        // Each goes in front, so the list starts (x1, h), (x1, 0), (x0, h), (x0, 0).
        for (const QVector2D &corner : {QVector2D(x0, 0), QVector2D(x0, h), QVector2D(x1, 0), QVector2D(x1, h)})
            m_highlightVertices.prepend(corner);
        m_highlightVertices.resize(4 * m_maxHighlights);
    }
    if (m_history.size() > 1) {
        // The previous highlight starts to fade now. The first four times belong
        // to the newest highlight and never fade.
        m_history[1].expiry = QTime::currentTime();
        const float fadeStart = shaderTimeNow(m_timeScale) + 1.0f;
        m_highlightTimes.insert(std::min<qsizetype>(4, m_highlightTimes.size()), 4, fadeStart);
        m_highlightTimes.resize(4 * m_maxHighlights);
        markHighlightsChanged();
    }
    if (!m_fadeTimer.isActive())
        m_fadeTimer.start();
}

void BarDecorator::reshapeHighlight(const QRectF &rect)
{
    // Same horizontal extent, another height: the newest highlight is rewritten in
    // place, in chart coordinates as they stand, without fading.
    m_highlightVertices.resize(4 * m_maxHighlights);
    if (m_maxHighlights > 0) {
        m_highlightVertices[0] = QVector2D(rect.bottomLeft());
        m_highlightVertices[1] = QVector2D(rect.topLeft());
        m_highlightVertices[2] = QVector2D(rect.bottomRight());
        m_highlightVertices[3] = QVector2D(rect.topRight());
    }
    markHighlightsChanged();
}

void BarDecorator::fadeTick()
{
    const QTime now = QTime::currentTime();
    while (m_history.size() >= 2) {
        if (m_history.last().expiry.msecsTo(now) <= int(m_timeScale))
            break;
        m_history.removeLast();
    }
    if (m_history.size() == 1)
        m_fadeTimer.stop();
    requestChartUpdate();
}

//-----------------------------------------------------------------------------
// [SECTION] Render thread
//-----------------------------------------------------------------------------

void BarDecorator::markHighlightsChanged()
{
    gpuArrays().markChanged(VertexArray);
    gpuArrays().markChanged(TimeArray);
}

void BarDecorator::prepareRender()
{
    QOpenGLShaderProgram *program = decoratorProgram().acquire();
    if (visible() && program) {
        program->bind();
        uploadStaleArrays();
    }
    // Never more than this window has vertices and times for; the history
    // itself changes on the GUI thread while the frame is drawn.
    Vexal::GpuArrays &gpu = gpuArrays();
    const qsizetype uploaded = std::min(gpu.uploadedBytes(VertexArray) / qsizetype(sizeof(QVector2D)),
                                        gpu.uploadedBytes(TimeArray) / qsizetype(sizeof(float))) / 4;
    DecoratorFrame &frame = frameExtra<DecoratorFrame>();
    frame.highlights = std::min({m_maxHighlights, int(m_history.size()), int(uploaded)});
    // Read here rather than while drawing: the local time reads shared
    // time-zone state that the GUI thread's fade ticks read too.
    frame.time = shaderTimeNow(m_timeScale);
}

void BarDecorator::uploadStaleArrays()
{
    Vexal::GpuArrays &gpu = gpuArrays();
    gpu.uploadListIfStale(VertexArray, m_highlightVertices);
    gpu.uploadListIfStale(TimeArray, m_highlightTimes);
    gpu.uploadListIfStale(IndexArray, m_highlightIndices);
}

void BarDecorator::render(const QRectF &area)
{
    const FrameState &frame = currentFrame().state;
    const DecoratorFrame &own = frameExtra<DecoratorFrame>();
    const int highlights = own.highlights;
    if (!frame.visible || highlights <= 0)
        return;
    const int variant = decoratorProgram().variant();
    QOpenGLShaderProgram *program = decoratorProgram().current();
    if (variant == SkippedVariant || !program)
        return;
    QOpenGLFunctions *gl = QOpenGLContext::currentContext()->functions();
    // Lights up what lies below in proportion to its own alpha.
    gl->glBlendFunc(GL_SRC_ALPHA, GL_DST_ALPHA);
    program->bind();
    program->setUniformValue("screen_dy", Vexal::toFloat(2.0 / area.height()));
    program->setUniformValue("screen_y", Vexal::toFloat(area.top()));
    program->setUniformValue("color", frame.color);
    program->setUniformValue("curr_time", own.time);

    const bool byLocation = variant == LocationVariant;
    const int point = byLocation ? PointLocation : program->attributeLocation("point");
    const int time = byLocation ? TimeLocation : program->attributeLocation("time");
    Vexal::GpuArrays &gpu = gpuArrays();
    gpu.buffer(VertexArray)->bind();
    program->enableAttributeArray(point);
    program->setAttributeBuffer(point, GL_FLOAT, 0, 2, 0);
    gpu.buffer(TimeArray)->bind();
    program->enableAttributeArray(time);
    program->setAttributeBuffer(time, GL_FLOAT, 0, 1, 0);
    gpu.buffer(IndexArray)->bind();
    gl->glDrawElements(GL_TRIANGLES, highlights * 6, GL_UNSIGNED_INT, nullptr);
    gpu.buffer(IndexArray)->release();
    Vexal::reportGlError();
    // The time attribute stays enabled.
    program->disableAttributeArray(point);
    gpu.buffer(VertexArray)->release();
}
