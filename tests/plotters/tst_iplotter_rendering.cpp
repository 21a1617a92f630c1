// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Pixel tests of the plotter render pipeline on the real OpenGL scene graph.
#include <vexal/iplotter.h>
#include <vexal/ichartarea.h>
#include "quickscene.h"
#include "testplotter.h"

#include <QtGui/QGuiApplication>
#include <QtOpenGL/QOpenGLShaderProgram>
#include <QtTest/QTest>

#include <atomic>
#include <memory>

using VexalTest::QuickScene;

namespace {

// A 200 x 100 chart over a green background; chartRect (0, 0, 20, 10) maps one
// data unit to 10 pixels, value 0 at the bottom edge.
const QByteArray chartScene = R"(
import QtQuick 2.15
import VexalPlugin 1.0
import VexalTest 1.0
Rectangle {
    color: "#00ff00"
    IChartArea {
        objectName: "chart"
        anchors.fill: parent
        adaptAreaToPlotters: false
        chartRect: Qt.rect(0, 0, 20, 10)
        updateIntervalMs: 0
    }
}
)";

const QColor background(0, 255, 0);

// Pixel centre of a data point on the 200 x 100 chart above.
QPoint pixelOf(double x, double y)
{
    return QPoint(int(x * 10.0), int(100.0 - y * 10.0));
}

} // namespace

class tst_IPlotterRendering : public QObject
{
    Q_OBJECT

private:
    TestPlotter *addRect(IChartArea *chart, const QRectF &rect, const QColor &color)
    {
        auto *plotter = new TestPlotter(chart);
        plotter->setColor(color);
        plotter->setPlotterArea(rect);
        plotter->setChartArea(chart);
        plotter->setData({rect.left(), rect.top(), rect.right(), rect.bottom()});
        return plotter;
    }

    void comparePixel(const QImage &image, const QPoint &p, const QColor &expected)
    {
        const QColor actual = image.pixelColor(p);
        QVERIFY2(VexalTest::sameColor(actual, expected),
                 QByteArray("pixel (" + QByteArray::number(p.x()) + ", " + QByteArray::number(p.y()) + ") is "
                            + VexalTest::describe(actual) + ", expected " + VexalTest::describe(expected)));
    }

private slots:
    void emptyChartIsTransparent();
    void rectangleLandsOnComputedPixels();
    void drawLayersAndZOrderDecideWhatLiesOnTop_data();
    void drawLayersAndZOrderDecideWhatLiesOnTop();
    void invisiblePlotterNeitherUploadsNorDraws();
    void unknownProgramLayerIsSkipped_data();
    void unknownProgramLayerIsSkipped();
    void twoChartsShareOneProgramBuild();
    void windowsWithOwnContextsEachDraw();
};

void tst_IPlotterRendering::emptyChartIsTransparent()
{
    QuickScene scene(chartScene);
    QVERIFY(scene.isReady());
    const QImage image = scene.grab();
    for (const QPoint &p : {QPoint(1, 1), QPoint(100, 50), QPoint(198, 98)})
        comparePixel(image, p, background);
}

void tst_IPlotterRendering::rectangleLandsOnComputedPixels()
{
    QuickScene scene(chartScene);
    QVERIFY(scene.isReady());
    auto *chart = scene.find<IChartArea>("chart");
    QVERIFY(chart);
    // Value 0 at the bottom edge: a rectangle from y 0 to 4 fills the lowest 40 rows.
    addRect(chart, QRectF(2, 0, 6, 4), Qt::red);
    const QImage image = scene.grab();
    comparePixel(image, pixelOf(5, 2), Qt::red);
    comparePixel(image, pixelOf(2.2, 0.1), Qt::red);  // near the bottom-left corner
    comparePixel(image, pixelOf(7.8, 3.8), Qt::red);  // near the top-right corner
    comparePixel(image, pixelOf(5, 4.3), background); // just above
    comparePixel(image, pixelOf(1.7, 2), background); // just left
    comparePixel(image, pixelOf(8.3, 2), background); // just right
    comparePixel(image, pixelOf(15, 8), background);  // far away
}

void tst_IPlotterRendering::drawLayersAndZOrderDecideWhatLiesOnTop_data()
{
    QTest::addColumn<uint>("redLayer");
    QTest::addColumn<double>("redZ");
    QTest::addColumn<uint>("blueLayer");
    QTest::addColumn<double>("blueZ");
    QTest::addColumn<QColor>("onTop");

    QTest::newRow("higher zOrder in the same layer lies on top") << 1u << 2.0 << 1u << 1.0 << QColor(Qt::red);
    QTest::newRow("lower zOrder in the same layer lies underneath") << 1u << -1.0 << 1u << 1.0 << QColor(Qt::blue);
    QTest::newRow("layer 2 lies above layer 1 whatever the zOrder") << 1u << 9.0 << 4u << -9.0 << QColor(Qt::blue);
    QTest::newRow("layer 0 lies below layer 1 whatever the zOrder") << 2u << -5.0 << 1u << 5.0 << QColor(Qt::red);
    QTest::newRow("a plotter in layers 0 and 2 is drawn last") << 5u << 0.0 << 2u << 0.0 << QColor(Qt::red);
}

void tst_IPlotterRendering::drawLayersAndZOrderDecideWhatLiesOnTop()
{
    QFETCH(uint, redLayer);
    QFETCH(double, redZ);
    QFETCH(uint, blueLayer);
    QFETCH(double, blueZ);
    QFETCH(QColor, onTop);

    QuickScene scene(chartScene);
    QVERIFY(scene.isReady());
    auto *chart = scene.find<IChartArea>("chart");
    TestPlotter *red = addRect(chart, QRectF(2, 0, 10, 5), Qt::red);
    TestPlotter *blue = addRect(chart, QRectF(6, 0, 10, 8), Qt::blue);
    red->setDrawLayer(redLayer);
    red->setZOrder(redZ);
    blue->setDrawLayer(blueLayer);
    blue->setZOrder(blueZ);
    const QImage image = scene.grab();
    comparePixel(image, pixelOf(4, 2), Qt::red);   // only red
    comparePixel(image, pixelOf(14, 7), Qt::blue); // only blue
    comparePixel(image, pixelOf(9, 2), onTop);     // both
}

void tst_IPlotterRendering::invisiblePlotterNeitherUploadsNorDraws()
{
    QuickScene scene(chartScene);
    QVERIFY(scene.isReady());
    auto *chart = scene.find<IChartArea>("chart");
    TestPlotter *plotter = addRect(chart, QRectF(0, 0, 20, 10), Qt::red);
    QImage image = scene.grab();
    comparePixel(image, pixelOf(15, 5), Qt::red);
    const int uploadsWhenVisible = plotter->uploads();
    QCOMPARE(uploadsWhenVisible, 1);

    plotter->setVisible(false);
    plotter->setData({0, 0, 10, 10}); // the left half only, not uploaded while hidden
    image = scene.grab();
    comparePixel(image, pixelOf(5, 5), background);
    comparePixel(image, pixelOf(15, 5), background);
    QCOMPARE(plotter->uploads(), uploadsWhenVisible);
    QCOMPARE(plotter->renders(), 1);
    QVERIFY(plotter->pendingDirtyFlags() & DirtyBits::Vertex);

    plotter->setVisible(true);
    image = scene.grab();
    QCOMPARE(plotter->uploads(), uploadsWhenVisible + 1);
    comparePixel(image, pixelOf(5, 5), Qt::red);
    comparePixel(image, pixelOf(15, 5), background);
}

void tst_IPlotterRendering::unknownProgramLayerIsSkipped_data()
{
    QTest::addColumn<QString>("skippedProgram");
    QTest::addColumn<int>("skippedCount");
    QTest::addColumn<quint32>("skippedMode");

    const quint32 strip = DrawFlags::Arrays | GL_TRIANGLE_STRIP;
    QTest::newRow("a layer with an unknown program") << QStringLiteral("no such program") << 4 << strip;
    QTest::newRow("a layer with count 0") << QStringLiteral("area") << 0 << strip;
    QTest::newRow("a layer with mode 0") << QStringLiteral("area") << 4 << quint32(0);
}

void tst_IPlotterRendering::unknownProgramLayerIsSkipped()
{
    QFETCH(QString, skippedProgram);
    QFETCH(int, skippedCount);
    QFETCH(quint32, skippedMode);

    QuickScene scene(chartScene);
    QVERIFY(scene.isReady());
    auto *chart = scene.find<IChartArea>("chart");
    TestPlotter *plotter = addRect(chart, QRectF(2, 0, 6, 4), Qt::red);
    SRenderLayerDefinition skipped = TestPlotter::rectangleLayer(skippedProgram);
    skipped.count = skippedCount;
    skipped.mode = skippedMode;
    skipped.layer = 0;
    SRenderLayerDefinition drawn = TestPlotter::rectangleLayer();
    drawn.layer = 1;
    plotter->setLayers({drawn, skipped}); // sorted by layer: the skipped one comes first
    const QImage image = scene.grab();
    comparePixel(image, pixelOf(5, 2), Qt::red);
    comparePixel(image, pixelOf(15, 8), background);
}

void tst_IPlotterRendering::twoChartsShareOneProgramBuild()
{
    const QByteArray twoCharts = R"(
import QtQuick 2.15
import VexalPlugin 1.0
Rectangle {
    color: "#00ff00"
    IChartArea {
        objectName: "left"
        x: 0; width: 100; height: 100
        adaptAreaToPlotters: false
        chartRect: Qt.rect(0, 0, 10, 10)
        updateIntervalMs: 0
    }
    IChartArea {
        objectName: "right"
        x: 100; width: 100; height: 100
        adaptAreaToPlotters: false
        chartRect: Qt.rect(0, 0, 10, 10)
        updateIntervalMs: 0
    }
}
)";
    QuickScene scene(twoCharts);
    QVERIFY(scene.isReady());
    // What the render thread sees after each frame: the linked "area" program of
    // the window's context.
    // Shared with the render thread, which may still be in the slot after this
    // function has returned.
    struct RenderThreadView
    {
        std::atomic<QOpenGLShaderProgram *> program{nullptr};
        std::atomic<bool> built{false};
    };
    const auto view = std::make_shared<RenderThreadView>();
    connect(&scene.window(), &QQuickWindow::afterRendering, this, [view] {
        view->program = IPlotter::programFor(QStringLiteral("area"));
        view->built = IPlotter::programsBuilt();
    }, Qt::DirectConnection);
    // A second build would announce itself with "Skipping" for every name.
    QTest::failOnWarning(QRegularExpression(QStringLiteral("^Skipping")));

    addRect(scene.find<IChartArea>("left"), QRectF(0, 0, 5, 5), Qt::red);
    addRect(scene.find<IChartArea>("right"), QRectF(5, 0, 5, 5), Qt::blue);
    const QImage image = scene.grab();
    comparePixel(image, QPoint(25, 75), Qt::red);
    comparePixel(image, QPoint(175, 75), Qt::blue);
    QVERIFY(view->built);
    QOpenGLShaderProgram *firstBuild = view->program;
    QVERIFY(firstBuild);
    QVERIFY(firstBuild->isLinked());

    // The charts are recreated by a resize; their programs stay.
    scene.window().resize(220, 110);
    scene.root()->setSize(QSizeF(220, 110));
    scene.grab();
    QCOMPARE(view->program.load(), firstBuild);
}

void tst_IPlotterRendering::windowsWithOwnContextsEachDraw()
{
    QuickScene first(chartScene);
    QVERIFY(first.isReady());
    addRect(first.find<IChartArea>("chart"), QRectF(0, 0, 5, 5), Qt::red);
    comparePixel(first.grab(), pixelOf(2, 2), Qt::red);

    QuickScene second(chartScene);
    QVERIFY(second.isReady());
    addRect(second.find<IChartArea>("chart"), QRectF(10, 0, 5, 5), Qt::blue);
    comparePixel(second.grab(), pixelOf(12, 2), Qt::blue);
    // The first window still draws after the second one built its programs.
    comparePixel(first.grab(), pixelOf(2, 2), Qt::red);
}

VEXAL_GL_TEST_MAIN(tst_IPlotterRendering)
#include "tst_iplotter_rendering.moc"
