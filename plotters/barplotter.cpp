// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include <vexal/barplotter.h>

#include "plotters/glhelpers_p.h"
#include "plotters/gpuarrays_p.h"
#include "plotters/sharegroupprogram_p.h"
#include "plotters/plotterframes_p.h"
#include "core/cellgrid_p.h"
#include "core/numeric_p.h"

#include <QtOpenGL/QOpenGLShaderProgram>

#include <algorithm>
#include <cmath>

//-----------------------------------------------------------------------------
// [SECTION] Shader variants
//-----------------------------------------------------------------------------

namespace {

// Five ways of drawing the bars exist; variant 0 is the one every context
// takes (chooseVariant). Variants 1 to 4 are kept: part of the bar plotter's
// shader interface, reachable by changing chooseVariant alone. The variant
// decides the array layouts and the draw call:
//   0, 3: attribute vertex shader, vertex ids as an attribute, indexed triangles;
//   1, 4: GLSL 130, vertex ids from gl_VertexID, indexed triangles;
//   2:    GLSL 150 with a geometry shader that grows one point per bar into a bar.
constexpr int GeometryVariant = 2;

// The plotter's arrays in its GPU arrays.
enum Array { PointArray, VertexIdArray, IndexArray };

// "point" values per bar: four corners (bottom, bottom, top, top), one for the
// geometry shader, none for an unknown variant.
qsizetype pointsPerBar(int variant)
{
    if (variant == GeometryVariant)
        return 1;
    return variant >= 0 && variant <= 4 ? 4 : 0;
}

bool hasIndices(int variant)
{
    return variant != GeometryVariant;
}

bool hasVertexIds(int variant)
{
    return variant == 0 || variant == 3;
}

// Every vertex shader declares the same four uniforms after its inputs.
#define BAR_UNIFORMS                  \
    "uniform float screen_x;\n"       \
    "uniform float screen_dx;\n"      \
    "uniform float screen_dy;\n"      \
    "uniform float screen_y;\n"

const char *const AttributeVertexShader =
    "attribute float point;\n"
    "attribute float vertexID;\n"
    BAR_UNIFORMS
    "void main()\n"
    "{\n"
    "   float x\t\t= vertexID * screen_dx + screen_x;\n"
    "   gl_Position\t= vec4( x, -(point - screen_y)/screen_dy + 1.0, 1.0, 1.0);\n"
    "}\n";

const char *const Glsl130VertexShader =
    "#version 130\n"
    "in float point;\n"
    BAR_UNIFORMS
    "void main()\n"
    "{\n"
    "   float index\t= trunc( gl_VertexID / 4 ) + mod( gl_VertexID, 2 );\n"
    "   float x\t\t= index * screen_dx + screen_x;\n"
    "   gl_Position\t= vec4( x, -(point - screen_y)/screen_dy + 1, 1.0, 1.0);\n"
    "}";

const char *const Glsl150VertexShader =
    "#version 150\n"
    "in float point;\n"
    BAR_UNIFORMS
    "void main()\n"
    "{\n"
    "   float x1 = gl_VertexID * screen_dx + screen_x; float x2 = (gl_VertexID+1) * screen_dx + screen_x;"
    " gl_Position = vec4( x1, -(point - screen_y)/screen_dy + 1, x2, screen_y/screen_dy + 1);\n"
    "}";

const char *const Glsl150GeometryShader =
    "#version 150\n"
    "layout (points) in;\n"
    "layout (triangle_strip, max_vertices = 4) out;\n"
    "void main()\n"
    "{\n"
    "   vec4 bar = gl_in[0].gl_Position;\n"
    "   gl_Position = vec4( bar.x, bar.w, 0.0, 1.0); EmitVertex();\n"
    "   gl_Position = vec4( bar.z, bar.w, 0.0, 1.0); EmitVertex();\n"
    "   gl_Position = vec4( bar.x, bar.y, 0.0, 1.0); EmitVertex();\n"
    "   gl_Position = vec4( bar.z, bar.y, 0.0, 1.0); EmitVertex();\n"
    "   EndPrimitive();\n"
    "}";

#undef BAR_UNIFORMS

const char *const GlesFragmentShader =
    "#ifdef GL_ES\n"
    "precision mediump float;\n"
    "#endif\n"
    "uniform vec4 bar_color;\n"
    "void main()\n"
    "{\n"
    "    gl_FragColor = bar_color;\n"
    "}";

const char *const Glsl130FragmentShader =
    "#version 130\nout vec4 FragColor;\nuniform vec4 bar_color;\nvoid main()\n{\n    FragColor = bar_color;\n}";

int chooseVariant(const QOpenGLContext &)
{
    // Every context takes the attribute variant; the other paths stay selectable
    // by changing this one assignment.
    const int variant = 0;
    return variant;
}

QList<ShaderSource> variantSources(int variant)
{
    const auto source = [](QOpenGLShader::ShaderType stage, const char *text) {
        return ShaderSource{stage, QString::fromLatin1(text)};
    };
    switch (variant) {
    case 0:
    case 3:
        return {source(QOpenGLShader::Vertex, AttributeVertexShader),
                source(QOpenGLShader::Fragment, GlesFragmentShader)};
    case 1:
    case 4:
        return {source(QOpenGLShader::Vertex, Glsl130VertexShader),
                source(QOpenGLShader::Fragment, Glsl130FragmentShader)};
    case GeometryVariant:
        return {source(QOpenGLShader::Vertex, Glsl150VertexShader),
                source(QOpenGLShader::Geometry, Glsl150GeometryShader),
                source(QOpenGLShader::Fragment, Glsl130FragmentShader)};
    default:
        return {};
    }
}

// Shared by every bar plotter.
ShareGroupProgram &barProgram()
{
    // Never destroyed: its programs live as long as their share groups.
    static ShareGroupProgram *const program = new ShareGroupProgram("BarPlotter", chooseVariant, variantSources);
    return *program;
}

} // namespace

//-----------------------------------------------------------------------------
// [SECTION] Construction and properties
//-----------------------------------------------------------------------------

BarPlotter::BarPlotter(QObject *parent)
    : IPlotter1D(parent)
{
    gpuArrays().setSlots({{QOpenGLBuffer::VertexBuffer, QOpenGLBuffer::DynamicDraw},
                          {QOpenGLBuffer::VertexBuffer, QOpenGLBuffer::DynamicDraw},
                          {QOpenGLBuffer::IndexBuffer, QOpenGLBuffer::DynamicDraw}});
    keepsDataWithoutChart = true;
}

BarPlotter::~BarPlotter()
{
    // The buffers free their GL objects in the members' destructors.
    detachFromChart();
}

void BarPlotter::setData(const QList<double> &values)
{
    // Unlike the base setter, bars keep data given before a chart is attached.
    if (Vexal::sameData(data(), values))
        return;
    m_data = values;
    markDataReplaced();
    if (m_glReady)
        updateHeight();
    emit dataChanged();
    requestChartUpdate();
}

void BarPlotter::setPlotterArea(const QRectF &area)
{
    QRectF stored = area;
    // Once the first frame was prepared the height is the data maximum, not the caller's.
    if (m_glReady)
        stored.setHeight(plotterArea().height());
    storePlotterArea(stored);
}

QRectF BarPlotter::area_at(const QPointF &point) const
{
    const QList<double> &values = data();
    const int index = _index_at(point.x());
    // The right edge answers one past the last bar, which has no value.
    if (index < 0 || index >= values.size())
        return QRectF();
    return Vexal::CellGrid(dataArea(), values.size()).cellRect(index, values[index]);
}

Vexal::BarFrame &BarPlotter::barFrame() const
{
    return frameExtra<Vexal::BarFrame>();
}

void BarPlotter::updateHeight()
{
    setPlotterAreaHeight(dataMaximum());
}

void BarPlotter::dataTailChanged(qsizetype)
{
    if (m_glReady)
        setHeightToPeak();
}

//-----------------------------------------------------------------------------
// [SECTION] Window arrays (synchronize step)
//-----------------------------------------------------------------------------

void BarPlotter::_fetch_render_layers(QList<SRenderLayerDefinition> &, const QRectF &area)
{
    Vexal::BarFrame &frame = barFrame();
    const qsizetype count = data().size();
    const Vexal::CellGrid grid(dataArea(), count);
    const Vexal::CellRange visible = visibleCells(area);
    const bool hangs = area.top() < 0.0;
    if (followWindow(frame.window, visible, grid.cellWidth() * pixelsPerUnit(area)) || frame.hangs != hangs) {
        frame.hangs = hangs;
        rebuildWindowArrays(frame);
    }
    frame.drawn = frame.window.drawnGroups(visible);
    frame.groupWidth = grid.cellWidth() * double(frame.window.groupSize());
    frame.left = grid.cellLeft(frame.window.first * frame.window.groupSize());
}

void BarPlotter::rebuildWindowArrays(Vexal::BarFrame &frame)
{
    const Vexal::SampleWindow &window = frame.window;
    const int variant = barProgram().variant();
    const qsizetype perBar = pointsPerBar(variant);
    const qsizetype bars = window.size();
    const qsizetype items = data().size();
    frame.points.resize(bars * perBar);
    for (qsizetype k = 0; k < bars; ++k) {
        const qsizetype group = window.first + k;
        const auto [bottom, top] = columnOf(groupPeak(window.level, group), window.level, group, frame.hangs);
        float *corners = frame.points.data() + k * perBar;
        std::fill_n(corners, perBar / 2, bottom);
        std::fill_n(corners + perBar / 2, perBar - perBar / 2, top);
    }
    frame.indices.resize(hasIndices(variant) ? bars * 6 : 0);
    Vexal::writeBarIndices(frame.indices.data(), frame.indices.size() / 6);
    frame.vertexIds.resize(hasVertexIds(variant) ? bars * 4 : 0);
    for (qsizetype k = 0; k < frame.vertexIds.size() / 4; ++k) {
        // The last group of a level may hold fewer bars: its right edge is the data's.
        const double groupEnd = std::min<double>(double(window.first + k + 1) * double(window.groupSize()), double(items));
        const float right = float(groupEnd / double(window.groupSize()) - double(window.first));
        float *ids = frame.vertexIds.data() + 4 * k;
        ids[0] = ids[2] = float(k);
        ids[1] = ids[3] = right;
    }
    for (int array : {PointArray, VertexIdArray, IndexArray})
        gpuArrays().markChanged(array);
}

void BarPlotter::uploadFrameArrays()
{
    const Vexal::BarFrame &frame = barFrame();
    Vexal::GpuArrays &gpu = gpuArrays();
    gpu.uploadListIfStale(PointArray, frame.points);
    gpu.uploadListIfStale(IndexArray, frame.indices);
    gpu.uploadListIfStale(VertexIdArray, frame.vertexIds);
}

//-----------------------------------------------------------------------------
// [SECTION] Render thread
//-----------------------------------------------------------------------------

void BarPlotter::prepareRender()
{
    barProgram().acquire();
    if (!m_glReady) {
        m_glReady = true;
        updateHeight();
    }
}

void BarPlotter::render(const QRectF &area)
{
    const FrameRecord &record = currentFrame();
    const FrameState &state = record.state;
    if (!state.visible || !state.dataArea.intersects(area))
        return;
    const Vexal::BarFrame &frame = barFrame();
    QOpenGLShaderProgram *program = barProgram().current();
    if (!program || pointsPerBar(barProgram().variant()) == 0 || frame.drawn.isEmpty())
        return;
    const int first = frame.drawn.first;
    const int last = frame.drawn.last;

    program->bind();
    program->setUniformValue("bar_color", state.color);
    program->setUniformValue("screen_dx", Vexal::toFloat(2.0 * frame.groupWidth / area.width()));
    program->setUniformValue("screen_x", Vexal::toFloat(2.0 * (frame.left - area.left()) / area.width() - 1.0));
    program->setUniformValue("screen_dy", Vexal::toFloat(area.height() * 0.5));
    program->setUniformValue("screen_y", Vexal::toFloat(area.top()));
    bindAttributes(*program);
    QOpenGLFunctions *gl = QOpenGLContext::currentContext()->functions();
    Vexal::GpuArrays &gpu = gpuArrays();
    if (hasIndices(barProgram().variant())) {
        gpu.buffer(IndexArray)->bind();
        const qintptr firstByte = qintptr(first) * 6 * qintptr(sizeof(quint32));
        gl->glDrawElements(GL_TRIANGLES, (last - first) * 6, GL_UNSIGNED_INT,
                           reinterpret_cast<const void *>(firstByte));
        gpu.buffer(IndexArray)->release();
    } else {
        gl->glDrawArrays(GL_POINTS, first, last - first);
    }
    Vexal::reportGlError();
    releaseAttributes(*program);
}

void BarPlotter::bindAttributes(QOpenGLShaderProgram &program)
{
    gpuArrays().buffer(PointArray)->bind();
    program.enableAttributeArray("point");
    program.setAttributeBuffer("point", GL_FLOAT, 0, 1, 0);
    if (!hasVertexIds(barProgram().variant()))
        return;
    gpuArrays().buffer(VertexIdArray)->bind();
    program.enableAttributeArray("vertexID");
    program.setAttributeBuffer("vertexID", GL_FLOAT, 0, 1, 0);
}

void BarPlotter::releaseAttributes(QOpenGLShaderProgram &program)
{
    program.disableAttributeArray("point");
    gpuArrays().buffer(PointArray)->release();
    if (!hasVertexIds(barProgram().variant()))
        return;
    program.disableAttributeArray("vertexID");
    gpuArrays().buffer(VertexIdArray)->release();
}
