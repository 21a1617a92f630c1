// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Tests of the area plotter: its vertices, layers and properties, and the fill
// and border it draws.
#include <vexal/areaplotter.h>
#include "plotters/plotterframes_p.h"
#include <vexal/ichartarea.h>
#include "plotterscene.h"

#include <QtGui/QGuiApplication>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <cmath>
#include <limits>
#include <memory>

using PlotterTest::background;
using PlotterTest::pixelOf;
using VexalTest::QuickScene;

namespace {

constexpr double Inf = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

// Counts the repaint requests that plotters send.
class RequestCountingChart : public IChartArea
{
public:
    int requests = 0; // requestUpdate calls
    void requestUpdate() override { ++requests; }
};

// Opens the vertex arrays and frame hooks to the tests.
class AreaPlotterProbe : public AreaPlotter
{
public:
    using AreaPlotter::_fetch_render_layers;
    using AreaPlotter::areaFrame;
    using AreaPlotter::initialized;

    // The vertices of the frame taken for view (outside a chart: every sample
    // drawn on its own).
    const Vexal::AreaFrame &frameFor(const QRectF &view)
    {
        QList<SRenderLayerDefinition> layers;
        _fetch_render_layers(layers, view);
        return areaFrame();
    }
};

// A probe on its chart whose vertices are rebuilt with every data change.
struct AttachedArea
{
    RequestCountingChart chart;  // (0, 0, 1, 1) until a test sets it
    AreaPlotterProbe plotter;    // attached to chart

    AttachedArea()
    {
        chart.setAdaptAreaToPlotters(false);
        plotter.setPlotterArea(QRectF(0, 0, 10, 1));
        plotter.setChartArea(&chart);
        plotter.initialized = true;
    }
};

QList<QVector2D> points(const QList<QPointF> &list)
{
    QList<QVector2D> result;
    for (const QPointF &p : list)
        result.append(QVector2D(p));
    return result;
}

// Ten samples 2 units apart, value 4, red fill and blue border.
const QByteArray redArea = R"(
        AreaPlotter {
            objectName: "area"
            chartArea: chart
            color: "#ff0000"
            borderColor: "#0000ff"
            plotterArea: Qt.rect(0, 0, 20, 0)
            data: [4, 4, 4, 4, 4, 4, 4, 4, 4, 4]
        }
)";

} // namespace

class tst_AreaPlotter : public QObject
{
    Q_OBJECT

private slots:
    // CPU side
    void defaults();
    void verticesFollowTheValues();
    void noDataGiveHeightZeroAndEmptyArrays();
    void badValuesKeepTheHeightRules_data();
    void badValuesKeepTheHeightRules();
    void firstFrameAppendsFillAndBorderLayers();
    void laterFramesFollowTheViewAndTheBorder_data();
    void laterFramesFollowTheViewAndTheBorder();
    void settersEmitAndRepaint_data();
    void settersEmitAndRepaint();
    void xOffsetMovesTheDataAreaRight();
    void plotterAreaHeightBelongsToTheDataOnceInitialized();

    // Pixels
    void fillAndBorderColours();
    void defaultFillIsHalfTransparent();
    void gradientRunsFromBottomToTop_data();
    void gradientRunsFromBottomToTop();
    void xOffsetMovesTheFillRight();
    void badValuesDrawWithoutErrors_data();
    void badValuesDrawWithoutErrors();
};

//-----------------------------------------------------------------------------
// [SECTION] CPU side
//-----------------------------------------------------------------------------

void tst_AreaPlotter::defaults()
{
    AreaPlotter p;
    QCOMPARE(p.borderWidth(), 3.0);
    QCOMPARE(p.borderColor(), QColor(7, 203, 242));
    QCOMPARE(p.borderEnable(), true);
    QCOMPARE(p.enableGradient(), false);
    QCOMPARE(p.gradientColor(), QColor(7, 203, 242));
    QColor halfTransparent(7, 203, 242);
    halfTransparent.setAlphaF(0.5f);
    QCOMPARE(p.color(), halfTransparent);
}

void tst_AreaPlotter::verticesFollowTheValues()
{
    AttachedArea a;
    a.plotter.setData({1, -2, 3});
    const Vexal::AreaFrame &frame = a.plotter.frameFor(QRectF(0, 0, 10, 1));
    QCOMPARE(frame.fill, points({{0, 0}, {0, 1}, {1, 0}, {1, -2}, {2, 0}, {2, 3}}));
    QCOMPARE(frame.border, points({{0, 1}, {1, -2}, {2, 3}}));
    QCOMPARE(a.plotter.plotterArea().height(), 3.0);
}

void tst_AreaPlotter::noDataGiveHeightZeroAndEmptyArrays()
{
    AttachedArea a;
    a.plotter.setData({5});
    a.plotter.setData({});
    QCOMPARE(a.plotter.plotterArea().height(), 0.0);
    QVERIFY(a.plotter.frameFor(QRectF(0, 0, 10, 1)).fill.isEmpty());
    QVERIFY(a.plotter.areaFrame().border.isEmpty());
    QList<SRenderLayerDefinition> layers;
    a.plotter._fetch_render_layers(layers, QRectF(0, 0, 10, 1));
    QCOMPARE(layers.size(), 2);
    QCOMPARE(layers[0].count, 0);
    QCOMPARE(layers[1].count, 0);
}

void tst_AreaPlotter::badValuesKeepTheHeightRules_data()
{
    QTest::addColumn<QList<double>>("values");
    QTest::addColumn<double>("height");

    QTest::newRow("all values negative give height 0") << QList<double>{-1, -5} << 0.0;
    QTest::newRow("NaN is never the maximum") << QList<double>{NaN, 2, NaN} << 2.0;
    QTest::newRow("infinity is the maximum") << QList<double>{1, Inf, -Inf} << Inf;
    QTest::newRow("huge values are kept in double") << QList<double>{1e300, -1e300} << 1e300;
}

void tst_AreaPlotter::badValuesKeepTheHeightRules()
{
    QFETCH(QList<double>, values);
    QFETCH(double, height);

    AttachedArea a;
    a.plotter.setData(values);
    QCOMPARE(a.plotter.plotterArea().height(), height);
    const Vexal::AreaFrame &frame = a.plotter.frameFor(QRectF(0, 0, 10, 1));
    QCOMPARE(frame.border.size(), values.size());
    QCOMPARE(frame.fill.size(), 2 * values.size());
    for (const QVector2D &v : std::as_const(frame.border))
        QVERIFY(std::isnan(v.y()) || std::fabs(v.y()) <= std::numeric_limits<float>::infinity());
}

void tst_AreaPlotter::firstFrameAppendsFillAndBorderLayers()
{
    AttachedArea a;
    a.plotter.setData(QList<double>(10, 1.0));
    a.chart.setChartRect(QRectF(2.5, 0, 4, 1)); // samples 2 to 6 of 10 on width 10
    QList<SRenderLayerDefinition> layers;
    a.plotter._fetch_render_layers(layers, a.chart.visibleRect());
    QCOMPARE(layers.size(), 2);
    const SRenderLayerDefinition &fill = layers[0];
    QCOMPARE(fill.layer, 0);
    QCOMPARE(fill.first, 4);
    QCOMPARE(fill.count, 12); // samples 2 to 7: the curve runs on to the sample after the view
    QCOMPARE(fill.program, QStringLiteral("area_gradient"));
    QCOMPARE(fill.mode, 0x1005u);
    QCOMPARE(fill.attributes, QList<int>{0});
    QCOMPARE(fill.lineWidth, -1.0f);
    QCOMPARE(fill.indexAttribute, -1);
    const SRenderLayerDefinition &border = layers[1];
    QCOMPARE(border.layer, 1);
    QCOMPARE(border.first, 2);
    QCOMPARE(border.count, 6);
    QCOMPARE(border.lineWidth, 3.0f);
    QCOMPARE(border.program, QStringLiteral("area"));
    QCOMPARE(border.mode, 0x1003u);
    QCOMPARE(border.attributes, QList<int>{1});
}

void tst_AreaPlotter::laterFramesFollowTheViewAndTheBorder_data()
{
    QTest::addColumn<bool>("borderBefore");
    QTest::addColumn<bool>("borderAfter");
    QTest::addColumn<quint32>("borderMode");

    QTest::newRow("an enabled border follows the view") << true << true << 0x1003u;
    QTest::newRow("a border switched off is no longer drawn") << true << false << 0u;
    QTest::newRow("a border switched on again is drawn again") << false << true << 0x1003u;
}

void tst_AreaPlotter::laterFramesFollowTheViewAndTheBorder()
{
    QFETCH(bool, borderBefore);
    QFETCH(bool, borderAfter);
    QFETCH(quint32, borderMode);

    AttachedArea a;
    a.plotter.setData(QList<double>(10, 1.0));
    a.chart.setChartRect(QRectF(0, 0, 10, 1));
    a.plotter.setBorderEnable(borderBefore);
    QList<SRenderLayerDefinition> layers;
    a.plotter._fetch_render_layers(layers, a.chart.visibleRect());
    a.plotter.setBorderEnable(borderAfter);
    a.plotter.setBorderWidth(7.0); // taken by the next frame
    a.chart.setChartRect(QRectF(5.5, 0, 10, 1));
    a.plotter._fetch_render_layers(layers, a.chart.visibleRect());
    QCOMPARE(layers.size(), 2);
    QCOMPARE(layers[0].first, 10);
    QCOMPARE(layers[0].count, 10);
    QCOMPARE(layers[1].mode, borderMode);
    QCOMPARE(layers[1].first, 5);
    QCOMPARE(layers[1].lineWidth, 7.0f);
}

void tst_AreaPlotter::settersEmitAndRepaint_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("emitted");
    QTest::addColumn<int>("repaints");

    QTest::newRow("a new borderWidth emits and repaints") << QByteArray("borderWidth") << QVariant(5.0) << 1 << 1;
    QTest::newRow("a borderWidth within fuzzy equality emits nothing")
        << QByteArray("borderWidth") << QVariant(3.0 + 1e-13) << 0 << 0;
    QTest::newRow("a new borderColor emits and repaints") << QByteArray("borderColor") << QVariant(QColor(Qt::red)) << 1 << 1;
    QTest::newRow("the same borderColor emits nothing") << QByteArray("borderColor") << QVariant(QColor(7, 203, 242)) << 0 << 0;
    QTest::newRow("switching the border off emits and repaints") << QByteArray("borderEnable") << QVariant(false) << 1 << 1;
    QTest::newRow("switching the gradient on emits and repaints") << QByteArray("enableGradient") << QVariant(true) << 1 << 1;
    QTest::newRow("a new gradientColor emits and repaints")
        << QByteArray("gradientColor") << QVariant(QColor(Qt::blue)) << 1 << 1;
}

void tst_AreaPlotter::settersEmitAndRepaint()
{
    QFETCH(QByteArray, property);
    QFETCH(QVariant, value);
    QFETCH(int, emitted);
    QFETCH(int, repaints);

    AttachedArea a;
    const QMetaProperty meta = a.plotter.metaObject()->property(a.plotter.metaObject()->indexOfProperty(property));
    QSignalSpy spy(&a.plotter, meta.notifySignal());
    a.chart.requests = 0;
    QVERIFY(meta.write(&a.plotter, value));
    QCOMPARE(spy.count(), emitted);
    QCOMPARE(a.chart.requests, repaints);
}

void tst_AreaPlotter::xOffsetMovesTheDataAreaRight()
{
    AreaPlotter p;
    p.setPlotterArea(QRectF(10, 0, 4, 1));
    p.setXOffset(5);
    QCOMPARE(p.dataArea(), QRectF(15, 0, 4, 1));
}

void tst_AreaPlotter::plotterAreaHeightBelongsToTheDataOnceInitialized()
{
    AttachedArea a;
    a.plotter.initialized = false;
    a.plotter.setPlotterArea(QRectF(0, 0, 10, 8));
    QCOMPARE(a.plotter.plotterArea().height(), 8.0);
    a.plotter.initialized = true;
    a.plotter.setData({1, 2});
    a.plotter.setPlotterArea(QRectF(3, 0, 10, 8));
    QCOMPARE(a.plotter.plotterArea(), QRectF(3, 0, 10, 2));
}

//-----------------------------------------------------------------------------
// [SECTION] Pixels
//-----------------------------------------------------------------------------

void tst_AreaPlotter::fillAndBorderColours()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(PlotterTest::chartScene(redArea));
    QVERIFY(scene.isReady());
    const QImage image = scene.grab();
    // Samples at x = 0, 2, ..., 18: the fill ends at the last sample.
    PLOTTER_COMPARE_PIXEL(image, pixelOf(8, 2), QColor(Qt::red));
    PLOTTER_COMPARE_PIXEL(image, pixelOf(0.3, 0.1), QColor(Qt::red));
    PLOTTER_COMPARE_PIXEL(image, pixelOf(8, 4.05), QColor(Qt::blue)); // the 3 pixel border on value 4
    PLOTTER_COMPARE_PIXEL(image, pixelOf(8, 3.95), QColor(Qt::blue));
    PLOTTER_COMPARE_PIXEL(image, pixelOf(8, 4.5), background);
    PLOTTER_COMPARE_PIXEL(image, pixelOf(19, 2), background);
}

void tst_AreaPlotter::defaultFillIsHalfTransparent()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(PlotterTest::chartScene(R"(
        AreaPlotter {
            chartArea: chart
            borderEnable: false
            plotterArea: Qt.rect(0, 0, 20, 0)
            data: [4, 4, 4]
        }
)"));
    QVERIFY(scene.isReady());
    // Half of rgb(7, 203, 242) over half of the green background.
    const QColor blended(4, 229, 121);
    PLOTTER_COMPARE_PIXEL(scene.grab(), pixelOf(10, 2), blended);
}

void tst_AreaPlotter::gradientRunsFromBottomToTop_data()
{
    QTest::addColumn<bool>("gradient");
    QTest::addColumn<QColor>("bottom");
    QTest::addColumn<QColor>("middle");

    QTest::newRow("with the gradient the bottom shows gradientColor")
        << true << QColor(Qt::blue) << QColor(127, 0, 128);
    QTest::newRow("without the gradient the fill is one colour") << false << QColor(Qt::red) << QColor(Qt::red);
}

void tst_AreaPlotter::gradientRunsFromBottomToTop()
{
    QFETCH(bool, gradient);
    QFETCH(QColor, bottom);
    QFETCH(QColor, middle);

    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(PlotterTest::chartScene(R"(
        AreaPlotter {
            objectName: "area"
            chartArea: chart
            color: "#ff0000"
            gradientColor: "#0000ff"
            borderEnable: false
            plotterArea: Qt.rect(0, 0, 20, 0)
            data: [10, 10, 10]
        }
)"));
    QVERIFY(scene.isReady());
    scene.find<AreaPlotter>("area")->setEnableGradient(gradient);
    const QImage image = scene.grab();
    PLOTTER_COMPARE_PIXEL(image, QPoint(50, 99), bottom); // value 0: clip y +1
    PLOTTER_COMPARE_PIXEL(image, QPoint(50, 0), QColor(Qt::red)); // the chart's top: clip y -1
    const QColor halfway = image.pixelColor(50, 50);
    QVERIFY2(VexalTest::sameColor(halfway, middle, 6), VexalTest::describe(halfway).constData());
}

void tst_AreaPlotter::xOffsetMovesTheFillRight()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(PlotterTest::chartScene(redArea));
    QVERIFY(scene.isReady());
    PLOTTER_COMPARE_PIXEL(scene.grab(), pixelOf(1, 2), QColor(Qt::red));
    scene.find<AreaPlotter>("area")->setXOffset(2);
    const QImage image = scene.grab();
    PLOTTER_COMPARE_PIXEL(image, pixelOf(1, 2), background);
    PLOTTER_COMPARE_PIXEL(image, pixelOf(3, 2), QColor(Qt::red));
    PLOTTER_COMPARE_PIXEL(image, pixelOf(17.5, 2), QColor(Qt::red));
}

void tst_AreaPlotter::badValuesDrawWithoutErrors_data()
{
    QTest::addColumn<QList<double>>("values");

    QTest::newRow("an empty list") << QList<double>{};
    QTest::newRow("NaN among the values") << QList<double>{4, NaN, 4, 4};
    QTest::newRow("infinities among the values") << QList<double>{4, Inf, -Inf, 4};
    QTest::newRow("huge values") << QList<double>{1e300, -1e300, 4};
    QTest::newRow("a single value") << QList<double>{4};
}

void tst_AreaPlotter::badValuesDrawWithoutErrors()
{
    QFETCH(QList<double>, values);

    const QImage image = PlotterTest::drawWithData<AreaPlotter>(PlotterTest::chartScene(redArea), "area", values);
    QVERIFY(!image.isNull());
    PLOTTER_COMPARE_PIXEL(image, pixelOf(19.5, 9.5), background); // nothing beyond the last sample
}

VEXAL_GL_TEST_MAIN(tst_AreaPlotter)
#include "tst_areaplotter.moc"
