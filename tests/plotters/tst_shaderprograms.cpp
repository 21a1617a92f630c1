// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Tests of the shader program definitions and the program registry: exact
// sources, registration, building per share group, failures, and what the
// "area_gradient" and "hresbar" programs put on the screen.
#include <vexal/iplotter.h>
#include <vexal/sareagradientprogram.h>
#include <vexal/sareaplotterprogram.h>
#include <vexal/shresbarprogram.h>
#include "quickscene.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QMatrix4x4>
#include <QtGui/QOffscreenSurface>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtOpenGL/QOpenGLFramebufferObject>
#include <QtOpenGL/QOpenGLShaderProgram>
#include <QtTest/QTest>

#include <memory>

namespace {

// A current OpenGL context on an offscreen surface, optionally sharing with another.
struct GLContext
{
    QOffscreenSurface surface;
    QOpenGLContext context;

    explicit GLContext(QOpenGLContext *shareWith = nullptr)
    {
        surface.create();
        context.setShareContext(shareWith);
        if (context.create())
            context.makeCurrent(&surface);
    }
    bool isCurrent() const { return QOpenGLContext::currentContext() == &context; }
};

QStringList lines(const QString &source)
{
    return source.split(QLatin1Char('\n'));
}

// A definition whose vertex shader does not compile.
class BrokenProgram : public SAreaPlotterProgram
{
public:
    QString name() const override { return QStringLiteral("broken"); }
    QString vertexSource() const override { return QStringLiteral("void main() { this is not GLSL }\n"); }
};

// Another definition under an existing name.
class ImpostorProgram : public SAreaPlotterProgram
{
public:
    QString vertexSource() const override { return QStringLiteral("impostor"); }
};

// Reads a pixel of the framebuffer in image orientation (row 0 = clip y +1).
QColor pixel(QOpenGLFramebufferObject &fbo, int x, int y)
{
    return fbo.toImage().pixelColor(x, y);
}

} // namespace

class tst_ShaderPrograms : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void flatColorFragmentSource();
    void areaSources();
    void areaGradientSources();
    void hresBarSources();
    void subclassesInheritTheAssembly();
    void firstDefinitionUnderANameWins();
    void programsAreBuiltPerShareGroup();
    void rebuildingWarnsAndReplaces();
    void gradientRunsFromBottomColourAtTopToTopColourAtBottom();
    void hresBarKeepsSubUnitPrecisionFarFromTheOrigin();
    void failingDefinitionLeavesTheOthersUsable();
};

void tst_ShaderPrograms::initTestCase()
{
    IPlotter::registerProgramDefinition(new SAreaPlotterProgram);
    IPlotter::registerProgramDefinition(new SHResBarProgram);
    IPlotter::registerProgramDefinition(new SAreaGradientProgram);
    QCOMPARE(IPlotter::programDefinitions().size(), 3);
}

void tst_ShaderPrograms::flatColorFragmentSource()
{
    const QStringList expected{"#ifdef GL_ES", "precision mediump float;", "#endif", "uniform vec4 color;",
                               "void main()", "{", "   gl_FragColor = color;", "}"};
    QCOMPARE(lines(SAreaPlotterProgram::flatColorFragmentSource()), expected); // no final newline
}

void tst_ShaderPrograms::areaSources()
{
    SAreaPlotterProgram area;
    QCOMPARE(area.name(), QStringLiteral("area"));
    const QStringList vertex{"attribute vec2 vertex;", "uniform mat4 matrix;", "void main()", "{",
                             "   gl_Position = matrix * vec4( vertex.xy, 1.0, 1.0);", "}", ""};
    QCOMPARE(lines(area.vertexSource()), vertex);
    QCOMPARE(area.fragmentSource(), SAreaPlotterProgram::flatColorFragmentSource());
    const QList<ShaderSource> sources = area.shaderSources();
    QCOMPARE(sources.size(), 2);
    QCOMPARE(sources[0].stage, QOpenGLShader::Vertex);
    QCOMPARE(sources[0].source, area.vertexSource());
    QCOMPARE(sources[1].stage, QOpenGLShader::Fragment);
    QCOMPARE(sources[1].source, area.fragmentSource());
}

void tst_ShaderPrograms::areaGradientSources()
{
    SAreaGradientProgram gradient;
    QCOMPARE(gradient.name(), QStringLiteral("area_gradient"));
    const QStringList vertex{"attribute vec2 vertex;", "uniform mat4 matrix;", "uniform vec4 color_top;",
                             "uniform vec4 color_bot;", "varying vec4 vColor;", "void main()", "{",
                             "   vec4 pos = matrix * vec4( vertex.xy, 1.0, 1.0);",
                             "   float middle = (-pos.y+1.0)/2.0;", "   vColor = mix(color_bot, color_top, middle);",
                             "   gl_Position = pos;", "}", ""};
    QCOMPARE(lines(gradient.vertexSource()), vertex);
    const QStringList fragment{"#ifdef GL_ES", "precision mediump float;", "#endif", "varying vec4 vColor;",
                               "void main()", "{", "   gl_FragColor = vColor;", "}"};
    QCOMPARE(lines(gradient.fragmentSource()), fragment);
    QCOMPARE(gradient.shaderSources()[0].source, gradient.vertexSource());
}

void tst_ShaderPrograms::hresBarSources()
{
    SHResBarProgram hres;
    QCOMPARE(hres.name(), QStringLiteral("hresbar"));
    const QList<ShaderSource> sources = hres.shaderSources();
    QCOMPARE(sources.size(), 2);
    QCOMPARE(sources[0].stage, QOpenGLShader::Vertex);
    const QStringList vertex{"attribute vec3 vertex;", "uniform float x_msb;", "uniform float x_lsb;",
                             "uniform float screen_dx;", "uniform float screen_dy;", "void main()", "{",
                             "   float x\t\t= ((vertex[0] - x_msb) + (vertex[1] - x_lsb))*screen_dx - 1.0;",
                             "   float y\t\t= -vertex[2]/screen_dy + 1.0;",
                             "   gl_Position = vec4( x, y, 1.0, 1.0);", "}", ""};
    QCOMPARE(lines(sources[0].source), vertex);
    QCOMPARE(sources[1].stage, QOpenGLShader::Fragment);
    QCOMPARE(sources[1].source, SAreaPlotterProgram::flatColorFragmentSource());
}

void tst_ShaderPrograms::subclassesInheritTheAssembly()
{
    ImpostorProgram impostor;
    const QList<ShaderSource> sources = impostor.shaderSources();
    QCOMPARE(sources[0].source, QStringLiteral("impostor"));
    QCOMPARE(sources[1].source, SAreaPlotterProgram::flatColorFragmentSource());
}

void tst_ShaderPrograms::firstDefinitionUnderANameWins()
{
    const QList<SProgramShaderDefinition *> before = IPlotter::programDefinitions();
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    IPlotter::registerProgramDefinition(new ImpostorProgram); // named "area" too
    QCOMPARE(IPlotter::programDefinitions(), before);
}

void tst_ShaderPrograms::programsAreBuiltPerShareGroup()
{
    GLContext first;
    QVERIFY(first.isCurrent());
    QVERIFY(!IPlotter::programsBuilt());
    QCOMPARE(IPlotter::programFor(QStringLiteral("area")), nullptr);
    IPlotter::buildPrograms();
    QVERIFY(IPlotter::programsBuilt());
    QOpenGLShaderProgram *area = IPlotter::programFor(QStringLiteral("area"));
    QVERIFY(area && area->isLinked());
    for (const char *name : {"hresbar", "area_gradient"})
        QVERIFY2(IPlotter::programFor(QString::fromLatin1(name)), name);
    QCOMPARE(IPlotter::programFor(QStringLiteral("no such program")), nullptr);

    GLContext sharing(&first.context);
    QVERIFY(sharing.isCurrent());
    QVERIFY(IPlotter::programsBuilt());
    QCOMPARE(IPlotter::programFor(QStringLiteral("area")), area);

    GLContext alone;
    QVERIFY(alone.isCurrent());
    QVERIFY(!IPlotter::programsBuilt());
}

void tst_ShaderPrograms::rebuildingWarnsAndReplaces()
{
    GLContext gl;
    QVERIFY(gl.isCurrent());
    IPlotter::buildPrograms();
    QOpenGLShaderProgram *first = IPlotter::programFor(QStringLiteral("hresbar"));
    for (const char *name : {"area", "hresbar", "area_gradient"}) {
        const QString message = QStringLiteral("Skipping \"%1\" program shader because already exist another "
                                               "program with that name.").arg(QLatin1String(name));
        QTest::ignoreMessage(QtWarningMsg, qPrintable(message));
    }
    IPlotter::buildPrograms();
    QOpenGLShaderProgram *second = IPlotter::programFor(QStringLiteral("hresbar"));
    QVERIFY(second && second->isLinked());
    QVERIFY(second != first); // built anyway, in place of the earlier one
}

void tst_ShaderPrograms::gradientRunsFromBottomColourAtTopToTopColourAtBottom()
{
    GLContext gl;
    QVERIFY(gl.isCurrent());
    IPlotter::buildPrograms();
    QOpenGLFramebufferObject fbo(64, 64);
    fbo.bind();
    QOpenGLFunctions *f = gl.context.functions();
    f->glViewport(0, 0, 64, 64);
    f->glClearColor(0, 0, 0, 0);
    f->glClear(GL_COLOR_BUFFER_BIT);

    QOpenGLShaderProgram *program = IPlotter::programFor(QStringLiteral("area_gradient"));
    QVERIFY(program);
    program->bind();
    program->setUniformValue("matrix", QMatrix4x4()); // vertices are clip coordinates
    program->setUniformValue("color_top", QColor(Qt::red));
    program->setUniformValue("color_bot", QColor(Qt::blue));
    const GLfloat quad[] = {-1, -1, -1, 1, 1, -1, 1, 1};
    program->enableAttributeArray("vertex");
    program->setAttributeArray("vertex", quad, 2);
    f->glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    program->disableAttributeArray("vertex");

    const QColor top = pixel(fbo, 32, 0);     // clip y close to +1
    const QColor bottom = pixel(fbo, 32, 63); // clip y close to -1
    QVERIFY2(top.blue() > 250 && top.red() < 5, VexalTest::describe(top));
    QVERIFY2(bottom.red() > 250 && bottom.blue() < 5, VexalTest::describe(bottom));
    const QColor middle = pixel(fbo, 32, 32);
    QVERIFY2(qAbs(middle.red() - middle.blue()) < 10, VexalTest::describe(middle));
}

void tst_ShaderPrograms::hresBarKeepsSubUnitPrecisionFarFromTheOrigin()
{
    GLContext gl;
    QVERIFY(gl.isCurrent());
    IPlotter::buildPrograms();
    // 16 pixels show 2 data units from x = 10,000,000.0: 8 pixels per unit.
    const int width = 16;
    QOpenGLFramebufferObject fbo(width, 4);
    fbo.bind();
    QOpenGLFunctions *f = gl.context.functions();
    f->glViewport(0, 0, width, 4);
    f->glClearColor(0, 0, 0, 0);
    f->glClear(GL_COLOR_BUFFER_BIT);

    const auto msb = [](double v) { return float(v); };
    const auto lsb = [](double v) { return float(v - double(float(v))); };
    const double left = 10000000.0;
    const double barLeft = 10000000.25, barRight = 10000001.25;
    QOpenGLShaderProgram *program = IPlotter::programFor(QStringLiteral("hresbar"));
    QVERIFY(program);
    program->bind();
    program->setUniformValue("x_msb", msb(left));
    program->setUniformValue("x_lsb", lsb(left));
    program->setUniformValue("screen_dx", float(2.0 / 2.0));
    program->setUniformValue("screen_dy", 1.0f);
    program->setUniformValue("color", QColor(Qt::white));
    // y 0 at the top edge, y 2 at the bottom: the bar fills the height.
    const GLfloat bar[] = {msb(barLeft), lsb(barLeft), 0,  msb(barLeft), lsb(barLeft), 2,
                           msb(barRight), lsb(barRight), 0, msb(barRight), lsb(barRight), 2};
    program->enableAttributeArray("vertex");
    program->setAttributeArray("vertex", bar, 3);
    f->glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    program->disableAttributeArray("vertex");

    // The bar covers pixels 2..9 (0.25 and 1.25 units at 8 px per unit).
    const QImage image = fbo.toImage();
    QCOMPARE(image.pixelColor(1, 2).alpha(), 0);
    QCOMPARE(image.pixelColor(2, 2), QColor(Qt::white));
    QCOMPARE(image.pixelColor(9, 2), QColor(Qt::white));
    QCOMPARE(image.pixelColor(10, 2).alpha(), 0);
    // Single-precision positions would have put the bar's left edge on pixel 0.
    const float naiveOffset = float(barLeft) - float(left);
    QCOMPARE(naiveOffset, 0.0f);
}

void tst_ShaderPrograms::failingDefinitionLeavesTheOthersUsable()
{
    IPlotter::registerProgramDefinition(new BrokenProgram);
    GLContext gl;
    QVERIFY(gl.isCurrent());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral(
        "^Cannot compile \"broken\" program shader.\nLOG:\n.+")));
    IPlotter::buildPrograms();
    QCOMPARE(IPlotter::programFor(QStringLiteral("broken")), nullptr);
    QVERIFY(IPlotter::programsBuilt());
    QOpenGLShaderProgram *area = IPlotter::programFor(QStringLiteral("area"));
    QVERIFY(area && area->isLinked());
}

QTEST_MAIN(tst_ShaderPrograms)
#include "tst_shaderprograms.moc"
