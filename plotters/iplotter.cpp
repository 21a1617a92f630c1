// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/iplotter.h>

#include <vexal/ichartarea.h>
#include <vexal/sprogramshaderdefinition.h>
#include "core/numeric_p.h"
#include "core/slidingwindow_p.h"
#include "plotters/glhelpers_p.h"
#include "plotters/gpuarrays_p.h"
#include "plotters/persharegroup_p.h"

#include <QtCore/QDebug>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtOpenGL/QOpenGLShaderProgram>

#include <algorithm>
#include <array>
#include <utility>

//-----------------------------------------------------------------------------
// [SECTION] Construction and chart attachment
//-----------------------------------------------------------------------------

IPlotter::IPlotter(QObject *parent)
    : QObject(parent)
    , m_gpuArrays(std::make_unique<Vexal::GpuArrays>())
{
}

IPlotter::~IPlotter()
{
    detachFromChart();
}

void IPlotter::detachFromChart()
{
    // Also the charts that list this plotter without it pointing back (their
    // plotter property): a frame must not reach members about to be destroyed.
    if (IChartArea *chart = m_chartArea.data())
        chart->forgetPlotter(this);
    m_chartArea.clear();
    const QList<QPointer<IChartArea>> listedBy = std::exchange(m_listedBy, {});
    for (const QPointer<IChartArea> &chart : listedBy) {
        if (chart)
            chart->forgetPlotter(this);
    }
}

void IPlotter::noteListedBy(IChartArea *chart)
{
    m_listedBy.removeIf([](const QPointer<IChartArea> &c) { return c.isNull(); });
    if (!m_listedBy.contains(chart))
        m_listedBy.append(chart);
}

void IPlotter::forgetChart(const IChartArea *chart)
{
    {
        QMutexLocker locker(&m_framesMutex);
        m_frames.remove(chart);
    }
    m_gpuArrays->dropCopiesOf(chart);
    if (m_chartArea.data() != chart)
        return;
    m_chartArea.clear();
    emit chartAreaChanged();
}

IChartArea *IPlotter::chartArea() const
{
    return m_chartArea.data();
}

void IPlotter::setChartArea(IChartArea *chart)
{
    if (m_chartArea.data() == chart)
        return;
    if (IChartArea *old = m_chartArea.data())
        old->removePlotter(this);
    // Stored before registering so that the chart's call back into this setter
    // finds the value unchanged.
    m_chartArea = chart;
    if (chart)
        chart->addPlotter(this);
    emit chartAreaChanged();
}

void IPlotter::requestChartUpdate() const
{
    if (IChartArea *chart = m_chartArea.data())
        chart->requestUpdate();
    // Charts that list this plotter without being its chartArea show it too.
    for (const QPointer<IChartArea> &chart : m_listedBy) {
        if (chart && chart != m_chartArea)
            chart->requestUpdate();
    }
}

//-----------------------------------------------------------------------------
// [SECTION] Properties
//-----------------------------------------------------------------------------

void IPlotter::setName(const QString &name)
{
    if (m_name == name)
        return;
    m_name = name;
    emit nameChanged();
}

void IPlotter::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    emit colorChanged();
    requestChartUpdate();
}

void IPlotter::setVisible(bool visible)
{
    if (m_visible == visible)
        return;
    m_visible = visible;
    emit visibleChanged();
    requestChartUpdate();
}

void IPlotter::setZOrder(double zOrder)
{
    if (Vexal::fuzzyEqual(m_zOrder, zOrder))
        return;
    m_zOrder = zOrder;
    emit zOrderChanged();
    requestChartUpdate();
}

void IPlotter::setLegendToolTipText(const QString &text)
{
    m_legendToolTipText = text;
    emit legendToolTipTextChanged();
}

void IPlotter::setWarningMessage(const QString &message)
{
    m_warningMessage = message;
    emit warningMessageChanged();
}

void IPlotter::setVectorDim(uchar dim)
{
    if (m_vectorDim == dim)
        return;
    m_vectorDim = dim;
    emit vectorDimChanged();
}

void IPlotter::setDrawLayer(uint layerMask)
{
    if (m_drawLayer == layerMask)
        return;
    m_drawLayer = layerMask;
    emit drawLayerChanged();
    requestChartUpdate();
}

void IPlotter::setShowLegend(bool show)
{
    if (m_showLegend == show)
        return;
    m_showLegend = show;
    // Legends listen to drawLayerChanged for everything that decides whether a
    // plotter is listed.
    emit drawLayerChanged();
}

void IPlotter::setXOffset(double offset)
{
    if (Vexal::fuzzyEqual(m_xOffset, offset))
        return;
    m_xOffset = offset;
    emit xOffsetChanged();
    emit modAreaChanged();
    requestChartUpdate();
}

QRectF IPlotter::dataArea() const
{
    QRectF area = m_plotterArea;
    area.moveLeft(offsetSubtracts ? area.left() - m_xOffset : area.left() + m_xOffset);
    return area;
}

void IPlotter::setPlotterArea(const QRectF &area)
{
    storePlotterArea(area);
}

bool IPlotter::storePlotterArea(const QRectF &area)
{
    if (Vexal::sameRect(m_plotterArea, area))
        return false;
    m_plotterArea = area;
    emit plotterAreaChanged();
    emit modAreaChanged();
    requestChartUpdate();
    return true;
}

//-----------------------------------------------------------------------------
// [SECTION] Data
//-----------------------------------------------------------------------------

const QList<double> &IPlotter::data() const
{
    return m_data;
}

void IPlotter::setData(const QList<double> &data)
{
    if (Vexal::sameData(m_data, data))
        return;
    IChartArea *chart = m_chartArea.data();
    if (!chart)
        return; // data given to a plotter without a chart are dropped
    m_data = data;
    markDataReplaced();
    rebuildArrays();
    emit dataChanged();
    requestChartUpdate();
}

void IPlotter::appendData(const QList<double> &values)
{
    if (values.isEmpty() || (!m_chartArea && !keepsDataWithoutChart))
        return;
    const qsizetype before = m_data.size();
    QRectF area = m_plotterArea;
    const double cell = before > 0 && area.width() > 0.0 ? area.width() / double(before) : 1.0;
    area.setWidth(area.width() + cell * double(values.size()));
    storePlotterArea(area);
    takeTail(before, values);
}

void IPlotter::replaceTail(qsizetype first, const QList<double> &tail)
{
    if (first <= 0 || first > m_data.size()) {
        setData(tail);
        return;
    }
    if (!m_chartArea && !keepsDataWithoutChart)
        return;
    takeTail(first, tail);
}

void IPlotter::dropFront(qsizetype count)
{
    if (count <= 0 || m_data.isEmpty())
        return;
    if (count >= m_data.size()) {
        clear();
        return;
    }
    // Taken out of m_data first, so that the front erase finds the list
    // unshared and moves a pointer instead of the values.
    QList<double> kept = std::exchange(m_data, QList<double>());
    Vexal::dropFront(kept, count);
    takeFrontDrop(kept, count);
}

void IPlotter::takeFrontDrop(const QList<double> &kept, qsizetype)
{
    setData(kept);
}

void IPlotter::takeTail(qsizetype first, const QList<double> &tail)
{
    // The first change of a list shared with its giver copies it once; later
    // ones touch only the tail.
    if (first == 0) {
        m_data = tail; // shares the giver's list
    } else {
        m_data.resize(first);
        m_data.append(tail);
    }
    ++m_dataStamp;
    // A bounded log: a consumer older than all of it rebuilds in full.
    if (m_tailChanges.size() == 64)
        m_tailChanges.removeFirst();
    m_tailChanges.append({m_dataStamp, first});
    dataTailChanged(first);
    emit dataChanged();
    requestChartUpdate();
}

void IPlotter::markDataReplaced()
{
    ++m_dataStamp;
    m_tailChanges.clear();
}

qsizetype IPlotter::unchangedSince(quint64 stamp) const
{
    if (stamp == m_dataStamp)
        return m_data.size();
    // Every change after stamp must be in the log, the first one included.
    if (m_tailChanges.isEmpty() || m_tailChanges.first().first > stamp + 1)
        return 0;
    // Newest first: the changes after stamp are at the end of the log.
    qsizetype unchanged = m_data.size();
    for (auto it = m_tailChanges.crbegin(); it != m_tailChanges.crend() && it->first > stamp; ++it)
        unchanged = std::min(unchanged, it->second);
    return unchanged;
}

void IPlotter::dataTailChanged(qsizetype)
{
    rebuildArrays();
}

void IPlotter::rebuildArrays()
{
    if (!initialized)
        return;
    QMutexLocker locker(&dataMutex);
    if (__update_vertex())
        dirtyFlags |= DirtyBits::Vertex;
    if (__update_index())
        dirtyFlags |= DirtyBits::Index;
}

void IPlotter::clear()
{
    setData(QList<double>());
}

//-----------------------------------------------------------------------------
// [SECTION] Base hooks
//-----------------------------------------------------------------------------

double IPlotter::max_in(const QRectF &) const
{
    return 0.0;
}

double IPlotter::min_in(const QRectF &) const
{
    return 0.0;
}

bool IPlotter::valueRange(const QRectF &rect, double &minimum, double &maximum) const
{
    if (data().isEmpty())
        return false;
    minimum = min_in(rect);
    maximum = max_in(rect);
    return true;
}

QRectF IPlotter::area_at(const QPointF &) const
{
    return QRectF();
}

SInfoPoint IPlotter::mouse_hovering(const QPointF &) const
{
    return SInfoPoint();
}

QList<SAttributeDefinition> IPlotter::declareArributeArray()
{
    qWarning().noquote().nospace() << "None Attribute define for " << programLabel << " shader program";
    return {};
}

void IPlotter::declareUniforms()
{
    qInfo().noquote().nospace() << "None Attribute define for " << programLabel << " shader program";
}

bool IPlotter::__update_vertex()
{
    return false;
}

bool IPlotter::__update_index()
{
    return false;
}

void IPlotter::__update_custom()
{
}

void IPlotter::_update_uniforms(QOpenGLShaderProgram &, const SRenderLayerDefinition &)
{
}

SAttributePointer IPlotter::_fetch_attribute_data(const int &index) const
{
    qCritical().nospace() << "Fetch attribute data for " << index << " not implemented!";
    return SAttributePointer();
}

void IPlotter::_fetch_render_layers(QList<SRenderLayerDefinition> &, const QRectF &)
{
}

//-----------------------------------------------------------------------------
// [SECTION] Render pipeline (render thread)
//-----------------------------------------------------------------------------

void IPlotter::initialize()
{
    initialized = true;
    attributeDefinitions = declareArributeArray();
    {
        QMutexLocker locker(&dataMutex);
        __update_vertex();
        __update_index();
    }
    QList<Vexal::GpuArrays::Slot> arrays;
    for (const SAttributeDefinition &definition : std::as_const(attributeDefinitions)) {
        arrays.append({QOpenGLBuffer::Type(definition.bufferType),
                      QOpenGLBuffer::UsagePattern(definition.usagePattern)});
    }
    // Every array starts out changed: each share group uploads it once.
    m_gpuArrays->setSlots(arrays);
}

void IPlotter::prepareRender()
{
    if (!initialized)
        initialize();
}

void IPlotter::uploadFrameArrays()
{
    // Rebuilt arrays become changed for every share group; each group then
    // uploads what its copy lacks.
    quint32 declared = 0;
    for (int i = 0; i < attributeDefinitions.size(); ++i) {
        const quint32 mask = attributeDefinitions.at(i).dirtyMask;
        declared |= mask;
        if (mask & dirtyFlags)
            m_gpuArrays->markChanged(i);
    }
    dirtyFlags &= ~declared;
    for (int i = 0; i < attributeDefinitions.size(); ++i) {
        QMutexLocker locker(attributeDefinitions.at(i).mutex);
        m_gpuArrays->uploadIfStale(i, [&] {
            const SAttributePointer bytes = _fetch_attribute_data(i);
            return std::pair{bytes.data, qsizetype(bytes.size)};
        });
    }
}

IPlotter::FrameScope::FrameScope(const IChartArea *chart)
    : m_previous(Vexal::exchangeFrameOwner(chart))
{
}

IPlotter::FrameScope::~FrameScope()
{
    Vexal::exchangeFrameOwner(m_previous);
}

namespace {

const IChartArea *frameChart()
{
    return static_cast<const IChartArea *>(Vexal::frameOwner());
}

// The framebuffer pixels of the chart whose frame is taken: its width, its
// height and its pixels per logical pixel; 0, 0, 1 outside a frame.
std::array<double, 3> chartPixels()
{
    const IChartArea *chart = frameChart();
    if (!chart)
        return {0.0, 0.0, 1.0};
    const double ratio = chart->pixelRatio();
    return {chart->width() * ratio, chart->height() * ratio, ratio};
}

} // namespace

IPlotter::FrameRecord &IPlotter::currentFrame() const
{
    QMutexLocker locker(&m_framesMutex);
    std::shared_ptr<FrameRecord> &record = m_frames[frameChart()];
    if (!record)
        record = std::make_shared<FrameRecord>();
    return *record;
}

void IPlotter::captureFrame(const QRectF &visibleRect)
{
    FrameRecord &record = currentFrame();
    const auto [pixelWidth, pixelHeight, pixelRatio] = chartPixels();
    record.state = {m_visible, m_plotterArea, dataArea(), m_color, pixelWidth, pixelHeight, pixelRatio};
    if (!m_visible || !(visibleRect.intersects(m_plotterArea) || visibleRect.intersects(record.state.dataArea)))
        return;
    _fetch_render_layers(record.layers, visibleRect);
    std::sort(record.layers.begin(), record.layers.end(),
              [](const SRenderLayerDefinition &a, const SRenderLayerDefinition &b) { return a.layer < b.layer; });
    uploadFrameArrays();
}

void IPlotter::render(const QRectF &area)
{
    const FrameRecord &record = currentFrame();
    if (!record.state.visible || !area.intersects(record.state.plotterArea))
        return;
    for (const SRenderLayerDefinition &layer : std::as_const(record.layers)) {
        if (layer.count <= 0 || layer.mode == 0)
            continue;
        if (QOpenGLShaderProgram *program = programFor(layer.program))
            drawRenderLayer(layer, *program, float(record.state.pixelRatio));
    }
    Vexal::reportGlError();
}

void IPlotter::drawRenderLayer(const SRenderLayerDefinition &layer, QOpenGLShaderProgram &program, float pixelRatio)
{
    QOpenGLFunctions *gl = QOpenGLContext::currentContext()->functions();
    const auto buffer = [this](int index) -> QOpenGLBuffer & { return *m_gpuArrays->buffer(index); };
    program.bind();
    _update_uniforms(program, layer);
    for (int index : layer.attributes) {
        const SAttributeDefinition &definition = attributeDefinitions.at(index);
        const QByteArray name = definition.name.toLatin1();
        buffer(index).bind();
        program.enableAttributeArray(name.constData());
        program.setAttributeBuffer(name.constData(), GLenum(definition.glType), definition.offset,
                                   definition.tupleSize, definition.stride);
    }
    if (layer.indexAttribute != -1)
        buffer(layer.indexAttribute).bind();
    if (layer.lineWidth > 0.0f)
        gl->glLineWidth(layer.lineWidth * pixelRatio);
    if (layer.mode & DrawFlags::Arrays) {
        gl->glDrawArrays(GLenum(layer.mode & ~DrawFlags::Arrays), layer.first, layer.count);
    } else if (layer.mode & DrawFlags::Elements) {
        const GLenum indexType = GLenum(attributeDefinitions.at(layer.indexAttribute).glType);
        gl->glDrawElements(GLenum(layer.mode & ~DrawFlags::Elements), layer.count, indexType,
                           reinterpret_cast<const void *>(qintptr(layer.first)));
    }
    if (layer.indexAttribute != -1)
        buffer(layer.indexAttribute).release();
    for (int index : layer.attributes) {
        program.disableAttributeArray(attributeDefinitions.at(index).name.toLatin1().constData());
        buffer(index).release();
    }
}

//-----------------------------------------------------------------------------
// [SECTION] Shader program registry
//-----------------------------------------------------------------------------

namespace {

// Programs are linked once per OpenGL share group: every chart whose context
// shares with the first one uses the same build, and a window whose context
// shares nothing (or that outlives the first) gets its own.
struct ProgramRegistry
{
    using Programs = QHash<QString, std::shared_ptr<QOpenGLShaderProgram>>;

    QList<SProgramShaderDefinition *> definitions; // in registration order, names unique
    Vexal::PerShareGroup<Programs> programs;       // linked programs per share group
    QMutex mutex;                                  // serialises builds from several render threads

    // The current share group's programs, made empty on first use; null
    // without a current context.
    Programs *currentPrograms() { return programs.current([] { return std::make_unique<Programs>(); }); }
    const Programs *builtPrograms() const { return programs.existing(); }
};

// Lives as long as the process and is never destroyed: the definitions it
// holds are meant to live that long, and stay reachable to the very end.
ProgramRegistry &registry()
{
    static ProgramRegistry *const instance = new ProgramRegistry;
    return *instance;
}

} // namespace

void IPlotter::registerProgramDefinition(SProgramShaderDefinition *definition)
{
    const QString name = definition->name();
    QList<SProgramShaderDefinition *> &definitions = registry().definitions;
    const bool known = std::any_of(definitions.cbegin(), definitions.cend(),
                                   [&](SProgramShaderDefinition *d) { return d->name() == name; });
    if (!known)
        definitions.append(definition);
}

QList<SProgramShaderDefinition *> IPlotter::programDefinitions()
{
    return registry().definitions;
}

bool IPlotter::programsBuilt()
{
    ProgramRegistry &reg = registry();
    QMutexLocker locker(&reg.mutex);
    const ProgramRegistry::Programs *programs = reg.builtPrograms();
    return programs && !programs->isEmpty();
}

void IPlotter::buildPrograms()
{
    ProgramRegistry &reg = registry();
    QMutexLocker locker(&reg.mutex);
    ProgramRegistry::Programs *programs = reg.currentPrograms();
    if (!programs)
        return; // no context to build in
    for (SProgramShaderDefinition *definition : std::as_const(reg.definitions)) {
        const QString name = definition->name();
        if (programs->contains(name))
            qWarning() << "Skipping" << name << "program shader because already exist another program with that name.";
        // Built on the render thread, so it cannot be a child of the application
        // object; the registry keeps it for as long as its share group lives.
        auto program = std::make_shared<QOpenGLShaderProgram>();
        const QList<ShaderSource> sources = definition->shaderSources();
        for (const ShaderSource &source : sources)
            program->addCacheableShaderFromSourceCode(source.stage, source.source);
        if (program->link())
            programs->insert(name, program);
        else
            qWarning() << "Cannot compile" << name << "program shader.\nLOG:\n" << qPrintable(program->log());
    }
}

QOpenGLShaderProgram *IPlotter::programFor(const QString &name)
{
    ProgramRegistry &reg = registry();
    QMutexLocker locker(&reg.mutex);
    const ProgramRegistry::Programs *programs = reg.builtPrograms();
    return programs ? programs->value(name).get() : nullptr;
}
