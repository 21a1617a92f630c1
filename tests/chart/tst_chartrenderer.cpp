// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Tests of the chart renderer with a current offscreen OpenGL context.
#include "chart/chartrenderer_p.h"
#include <vexal/ichartarea.h>
#include <vexal/iplotter.h>
#include <vexal/sareaplotterprogram.h>
#include "testplotter.h"

#include <QtGui/QOffscreenSurface>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtOpenGL/QOpenGLFramebufferObject>
#include <QtTest/QTest>

#include <memory>

class tst_ChartRenderer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void framebufferHasNoAttachmentsAndBuildsProgramsOnce();
    void renderBeforeSynchronizeOnlyClears();
    void renderSetsTheBlendStateAndDrawsTheChart();
    void renderAfterTheChartIsGoneOnlyClears();

private:
    QOffscreenSurface m_surface;
    QOpenGLContext m_context;
};

void tst_ChartRenderer::initTestCase()
{
    IPlotter::registerProgramDefinition(new SAreaPlotterProgram);
    m_surface.create();
    QVERIFY(m_context.create());
    QVERIFY(m_context.makeCurrent(&m_surface));
}

void tst_ChartRenderer::framebufferHasNoAttachmentsAndBuildsProgramsOnce()
{
    ChartRenderer renderer;
    QVERIFY(!IPlotter::programsBuilt());
    std::unique_ptr<QOpenGLFramebufferObject> fbo(renderer.createFramebufferObject(QSize(32, 16)));
    QVERIFY(fbo->isValid());
    QCOMPARE(fbo->size(), QSize(32, 16));
    QCOMPARE(fbo->attachment(), QOpenGLFramebufferObject::NoAttachment);
    QCOMPARE(fbo->format().samples(), 0);
    QVERIFY(IPlotter::programsBuilt());

    // A second framebuffer (a resize, or a second chart) reuses the programs.
    QOpenGLShaderProgram *area = IPlotter::programFor(QStringLiteral("area"));
    QTest::failOnWarning(QRegularExpression(QStringLiteral("^Skipping")));
    std::unique_ptr<QOpenGLFramebufferObject> again(ChartRenderer().createFramebufferObject(QSize(8, 8)));
    QCOMPARE(IPlotter::programFor(QStringLiteral("area")), area);
}

void tst_ChartRenderer::renderBeforeSynchronizeOnlyClears()
{
    QOpenGLFramebufferObject fbo(8, 8);
    fbo.bind();
    QOpenGLFunctions *gl = m_context.functions();
    gl->glClearColor(1, 0, 0, 1);
    gl->glClear(GL_COLOR_BUFFER_BIT);
    ChartRenderer renderer;
    renderer.render();
    QCOMPARE(fbo.toImage().pixelColor(4, 4), QColor(0, 0, 0, 0));
}

void tst_ChartRenderer::renderSetsTheBlendStateAndDrawsTheChart()
{
    QOpenGLFramebufferObject fbo(20, 10);
    fbo.bind();
    QOpenGLFunctions *gl = m_context.functions();
    gl->glViewport(0, 0, 20, 10);
    IChartArea chart;
    chart.setAdaptAreaToPlotters(false);
    chart.setChartRect(QRectF(0, 0, 20, 10));
    TestPlotter plotter;
    plotter.setColor(Qt::green);
    plotter.setPlotterArea(QRectF(0, 0, 10, 10));
    plotter.setChartArea(&chart);
    plotter.setData({0, 0, 10, 10});

    ChartRenderer renderer;
    renderer.synchronize(&chart);
    QVERIFY(plotter.isInitialized()); // synchronize let the plotter upload
    QCOMPARE(plotter.uploads(), 1);
    renderer.render();

    QVERIFY(gl->glIsEnabled(GL_BLEND));
    GLint value = 0;
    const std::pair<GLenum, GLint> state[] = {{GL_BLEND_SRC_RGB, GL_SRC_ALPHA},
                                              {GL_BLEND_DST_RGB, GL_ONE_MINUS_SRC_ALPHA},
                                              {GL_BLEND_SRC_ALPHA, GL_ONE_MINUS_DST_ALPHA},
                                              {GL_BLEND_DST_ALPHA, GL_ONE},
                                              {GL_BLEND_EQUATION_RGB, GL_FUNC_ADD}};
    for (const auto &[name, expected] : state) {
        gl->glGetIntegerv(name, &value);
        QCOMPARE(value, expected);
    }
    const QImage image = fbo.toImage();
    QCOMPARE(image.pixelColor(5, 5), QColor(Qt::green));
    QCOMPARE(image.pixelColor(15, 5), QColor(0, 0, 0, 0));
    QCOMPARE(plotter.renders(), 1);
}

void tst_ChartRenderer::renderAfterTheChartIsGoneOnlyClears()
{
    QOpenGLFramebufferObject fbo(20, 10);
    fbo.bind();
    ChartRenderer renderer;
    TestPlotter plotter;
    {
        IChartArea chart;
        plotter.setPlotterArea(QRectF(0, 0, 10, 10));
        plotter.setChartArea(&chart);
        renderer.synchronize(&chart);
    }
    renderer.render();
    QCOMPARE(plotter.renders(), 0);
    QCOMPARE(fbo.toImage().pixelColor(5, 5), QColor(0, 0, 0, 0));
}

QTEST_MAIN(tst_ChartRenderer)
#include "tst_chartrenderer.moc"
