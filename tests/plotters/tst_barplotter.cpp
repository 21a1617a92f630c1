// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Tests of the bar plotter: its CPU-side arrays and the bars it draws.
#include <vexal/barplotter.h>
#include "plotters/gpuarrays_p.h"
#include "plotters/plotterframes_p.h"
#include <vexal/ichartarea.h>
#include "plotterscene.h"

#include <QtGui/QGuiApplication>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <cmath>
#include <limits>

using PlotterTest::background;
using PlotterTest::pixelOf;
using VexalTest::QuickScene;

namespace {

// Opens the frame arrays to the tests; production code keeps them protected.
class BarPlotterProbe : public BarPlotter
{
public:
    using BarPlotter::gpuArrays;
    using BarPlotter::barFrame;
    using BarPlotter::m_glReady;

    // A plotter whose height follows its data, as after its first frame.
    static BarPlotterProbe *ready(const QList<double> &values, const QRectF &area = QRectF(0, 0, 8, 1))
    {
        auto *p = new BarPlotterProbe;
        p->setPlotterArea(area);
        p->m_glReady = true;
        p->setData(values);
        return p;
    }

    // The frame taken for a view (outside a chart: no pixel size, every bar
    // drawn on its own).
    const Vexal::BarFrame &frameFor(const QRectF &view)
    {
        QList<SRenderLayerDefinition> layers;
        _fetch_render_layers(layers, view);
        return barFrame();
    }
    const Vexal::BarFrame &wholeFrame() { return frameFor(dataArea()); }
};

QList<double> filled(int n, double v)
{
    return QList<double>(n, v);
}

// 0, 1, 2, ... n - 1.
QList<double> rampOf(int n)
{
    QList<double> values(n);
    for (int i = 0; i < n; ++i)
        values[i] = i;
    return values;
}

QList<quint32> barIndices(quint32 bar)
{
    const quint32 c = 4 * bar;
    return {c + 1, c + 2, c, c + 1, c + 2, c + 3};
}

constexpr double Inf = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

// Bars of data (1, 2, 3, 4) two units wide from x = 2, in red.
const QByteArray fourRedBars = R"(
        BarPlotter {
            objectName: "bars"
            chartArea: chart
            color: "#ff0000"
            plotterArea: Qt.rect(2, 0, 8, 0)
            data: [1, 2, 3, 4]
        }
)";

} // namespace

class tst_BarPlotter : public QObject
{
    Q_OBJECT

private slots:
    // CPU side
    void pointsAndVertexIdsFollowTheBarLayout();
    void indicesOfEachBarFormTwoTriangles();
    void sameValuesChangeNothing();
    void windowHoldsTheViewAndAViewWidthEachSide_data();
    void windowHoldsTheViewAndAViewWidthEachSide();
    void panWithinTheWindowKeepsItsArrays();
    void zoomingFarInShrinksTheWindow();
    void dataChangeRebuildsTheWindow();
    void dataBeforeTheFirstFrameAreOnlyStored();
    void heightIsTheDataMaximum_data();
    void heightIsTheDataMaximum();
    void areaAt_data();
    void areaAt();
    void plotterAreaHeightBelongsToTheData();

    // Pixels
    void barsStandOnTheBottomEdge();
    void negativeBarsStayBelowTheBaseLine();
    void xOffsetMovesTheBarsLeft();
    void plotterAreaRightOfTheChartDrawsNothing();
    void shrunkDataDrawOnlyTheRemainingBars();
    void badValuesDrawWithoutErrors_data();
    void badValuesDrawWithoutErrors();
    void windowsComeAndGo();
};

//-----------------------------------------------------------------------------
// [SECTION] CPU side
//-----------------------------------------------------------------------------

void tst_BarPlotter::pointsAndVertexIdsFollowTheBarLayout()
{
    std::unique_ptr<BarPlotterProbe> p(BarPlotterProbe::ready({1.5, -2.0}));
    const Vexal::BarFrame &frame = p->wholeFrame();
    QCOMPARE(frame.points, QList<float>({0, 0, 1.5f, 1.5f, 0, 0, -2.0f, -2.0f}));
    QCOMPARE(frame.vertexIds, QList<float>({0, 1, 0, 1, 1, 2, 1, 2}));
    QCOMPARE(frame.left, 0.0);
    QCOMPARE(frame.groupWidth, 4.0);
    // Points, vertex ids and indices are changed for every chart (version 1
    // is their declaration).
    for (int array = 0; array < p->gpuArrays().count(); ++array)
        QVERIFY(p->gpuArrays().version(array) > 1);
}

void tst_BarPlotter::indicesOfEachBarFormTwoTriangles()
{
    std::unique_ptr<BarPlotterProbe> p(BarPlotterProbe::ready({1, 2, 3}));
    QCOMPARE(p->wholeFrame().indices, barIndices(0) + barIndices(1) + barIndices(2));
}

void tst_BarPlotter::sameValuesChangeNothing()
{
    std::unique_ptr<BarPlotterProbe> p(BarPlotterProbe::ready({1, 2, 3}));
    p->wholeFrame();
    const quint64 points = p->gpuArrays().version(0);
    QSignalSpy changed(p.get(), &IPlotter::dataChanged);
    p->setData(QList<double>{1, 2, 3}); // equal bytes, other storage
    p->wholeFrame();
    QCOMPARE(changed.count(), 0);
    QCOMPARE(p->gpuArrays().version(0), points);
}

void tst_BarPlotter::windowHoldsTheViewAndAViewWidthEachSide_data()
{
    QTest::addColumn<QRectF>("view");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("drawnFirst"); // counted from the window's left

    // 1000 bars one unit wide from x = 0.
    QTest::newRow("a view in the middle holds ten bars more on each side") << QRectF(400, 0, 10, 1) << 390 << 420 << 10;
    QTest::newRow("a view at the left edge holds no bar before the first") << QRectF(0, 0, 10, 1) << 0 << 20 << 0;
    QTest::newRow("a view at the right edge holds no bar after the last") << QRectF(990, 0, 10, 1) << 980 << 1000 << 10;
    QTest::newRow("a view between bars holds both bars it touches") << QRectF(400.5, 0, 1, 1) << 398 << 404 << 2;
}

void tst_BarPlotter::windowHoldsTheViewAndAViewWidthEachSide()
{
    QFETCH(QRectF, view);
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(int, drawnFirst);

    std::unique_ptr<BarPlotterProbe> p(BarPlotterProbe::ready(rampOf(1000), QRectF(0, 0, 1000, 1)));
    const Vexal::BarFrame &frame = p->frameFor(view);
    QCOMPARE(frame.window.first, first);
    QCOMPARE(frame.window.last, last);
    QCOMPARE(frame.points.size(), 4 * (last - first));
    QCOMPARE(frame.points.at(2), float(first)); // the window's first bar holds its own value
    QCOMPARE(frame.left, double(first));
    QCOMPARE(frame.drawn.first, drawnFirst);
}

void tst_BarPlotter::panWithinTheWindowKeepsItsArrays()
{
    std::unique_ptr<BarPlotterProbe> p(BarPlotterProbe::ready(rampOf(1000), QRectF(0, 0, 1000, 1)));
    p->frameFor(QRectF(400, 0, 10, 1));
    const quint64 points = p->gpuArrays().version(0);
    const Vexal::BarFrame &panned = p->frameFor(QRectF(405, 0, 10, 1));
    QCOMPARE(p->gpuArrays().version(0), points); // nothing rebuilt, nothing uploaded
    QCOMPARE(panned.drawn.first, 15);
    p->frameFor(QRectF(415, 0, 10, 1)); // past the window's right edge
    QVERIFY(p->gpuArrays().version(0) > points);
    QCOMPARE(p->barFrame().window.first, 405);
}

void tst_BarPlotter::zoomingFarInShrinksTheWindow()
{
    std::unique_ptr<BarPlotterProbe> p(BarPlotterProbe::ready(rampOf(1000), QRectF(0, 0, 1000, 1)));
    p->frameFor(QRectF(0, 0, 1000, 1));
    QCOMPARE(p->barFrame().window.size(), 1000);
    p->frameFor(QRectF(500, 0, 200, 1)); // inside the window and not too narrow: kept
    QCOMPARE(p->barFrame().window.size(), 1000);
    p->frameFor(QRectF(500, 0, 100, 1)); // a tenth of the window: rebuilt around the view
    QCOMPARE(p->barFrame().window.first, 400);
    QCOMPARE(p->barFrame().window.last, 700);
}

void tst_BarPlotter::dataChangeRebuildsTheWindow()
{
    std::unique_ptr<BarPlotterProbe> p(BarPlotterProbe::ready(rampOf(1000), QRectF(0, 0, 1000, 1)));
    p->frameFor(QRectF(400, 0, 10, 1));
    QList<double> changed = rampOf(1000);
    changed[395] = -7.0;
    p->setData(changed);
    const Vexal::BarFrame &frame = p->frameFor(QRectF(400, 0, 10, 1));
    QCOMPARE(frame.points.at(4 * (395 - 390) + 2), -7.0f);
}

void tst_BarPlotter::dataBeforeTheFirstFrameAreOnlyStored()
{
    BarPlotterProbe p; // no chart either: bars keep their data all the same
    QSignalSpy changed(&p, &IPlotter::dataChanged);
    p.setData({1, 2});
    QCOMPARE(p.data(), QList<double>({1, 2}));
    QCOMPARE(changed.count(), 1);
    for (int array = 0; array < p.gpuArrays().count(); ++array)
        QCOMPARE(p.gpuArrays().version(array), 1u); // as declared: nothing built yet
}

void tst_BarPlotter::heightIsTheDataMaximum_data()
{
    QTest::addColumn<QList<double>>("values");
    QTest::addColumn<double>("height");
    QTest::addColumn<QList<float>>("tops"); // the "point" of each bar's top corners

    QTest::newRow("positive values give their maximum") << QList<double>{1, 5, 3} << 5.0 << QList<float>{1, 5, 3};
    QTest::newRow("all values negative give height 0") << QList<double>{-1, -5} << 0.0 << QList<float>{-1, -5};
    QTest::newRow("no values give height 0") << QList<double>{} << 0.0 << QList<float>{};
    QTest::newRow("NaN is never the maximum") << QList<double>{NaN, 2} << 2.0 << QList<float>{float(NaN), 2};
    QTest::newRow("infinity is the maximum") << QList<double>{1, Inf} << Inf << QList<float>{1, float(Inf)};
    QTest::newRow("huge values saturate at the float range")
        << QList<double>{1e300, -1e300} << 1e300
        << QList<float>{std::numeric_limits<float>::max(), std::numeric_limits<float>::lowest()};
}

void tst_BarPlotter::heightIsTheDataMaximum()
{
    QFETCH(QList<double>, values);
    QFETCH(double, height);
    QFETCH(QList<float>, tops);

    std::unique_ptr<BarPlotterProbe> p(BarPlotterProbe::ready({9}));
    p->setData(values);
    QCOMPARE(p->plotterArea().height(), height);
    // The whole area with a nominal height: an all-negative area has none.
    const QList<float> &points = p->frameFor(QRectF(0, 0, 8, 1)).points;
    QCOMPARE(points.size(), 4 * tops.size());
    for (int k = 0; k < tops.size(); ++k) {
        const float top = points.at(4 * k + 2);
        QVERIFY2(std::isnan(tops[k]) ? std::isnan(top) : top == tops[k], qPrintable(QString::number(k)));
        QCOMPARE(points.at(4 * k), 0.0f);
    }
}

void tst_BarPlotter::areaAt_data()
{
    QTest::addColumn<QList<double>>("values");
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QRectF>("expected");

    const QList<double> four{1, 2, 3, 4};
    QTest::newRow("bar 2 of 4 on width 8 is 2 wide from x 4") << four << QPointF(5, 0) << QRectF(4, 0, 2, 3);
    QTest::newRow("the left edge belongs to bar 0") << four << QPointF(0, 0) << QRectF(0, 0, 2, 1);
    QTest::newRow("a point left of every bar gives a null rectangle") << four << QPointF(-1, 0) << QRectF();
    QTest::newRow("a point right of every bar gives a null rectangle") << four << QPointF(9, 0) << QRectF();
    QTest::newRow("the right edge has no bar") << four << QPointF(8, 0) << QRectF();
    QTest::newRow("no data give a null rectangle") << QList<double>{} << QPointF(3, 0) << QRectF();
}

void tst_BarPlotter::areaAt()
{
    QFETCH(QList<double>, values);
    QFETCH(QPointF, point);
    QFETCH(QRectF, expected);

    BarPlotterProbe p;
    p.setPlotterArea(QRectF(0, 0, 8, 5));
    p.setData(values);
    QCOMPARE(p.area_at(point), expected);
}

void tst_BarPlotter::plotterAreaHeightBelongsToTheData()
{
    BarPlotterProbe p;
    p.setPlotterArea(QRectF(0, 0, 8, 3));
    QCOMPARE(p.plotterArea(), QRectF(0, 0, 8, 3)); // no arrays yet: the caller's height
    p.m_glReady = true;
    p.setData({2, 7});
    QSignalSpy changed(&p, &IPlotter::plotterAreaChanged);
    p.setPlotterArea(QRectF(1, 0, 4, 100));
    QCOMPARE(p.plotterArea(), QRectF(1, 0, 4, 7));
    QCOMPARE(changed.count(), 1);
    p.setPlotterArea(QRectF(1, 0, 4, 50)); // only the height differs
    QCOMPARE(changed.count(), 1);
}

//-----------------------------------------------------------------------------
// [SECTION] Pixels
//-----------------------------------------------------------------------------

void tst_BarPlotter::barsStandOnTheBottomEdge()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(PlotterTest::chartScene(fourRedBars));
    QVERIFY(scene.isReady());
    const QImage image = scene.grab();
    for (int k = 0; k < 4; ++k) {
        const double left = 2 + 2 * k;
        const double height = k + 1;
        PLOTTER_COMPARE_PIXEL(image, pixelOf(left + 0.2, 0.05), QColor(Qt::red));          // bottom edge
        PLOTTER_COMPARE_PIXEL(image, pixelOf(left + 1.8, height - 0.15), QColor(Qt::red)); // top right
        PLOTTER_COMPARE_PIXEL(image, pixelOf(left + 1, height + 0.25), background);        // above
    }
    PLOTTER_COMPARE_PIXEL(image, pixelOf(1.7, 0.5), background);  // left of the first bar
    PLOTTER_COMPARE_PIXEL(image, pixelOf(10.3, 0.5), background); // right of the last bar
}

void tst_BarPlotter::negativeBarsStayBelowTheBaseLine()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(PlotterTest::chartScene(fourRedBars));
    QVERIFY(scene.isReady());
    auto *bars = scene.find<BarPlotter>("bars");
    bars->setData({-3, 2, -1, 4});
    const QImage image = scene.grab();
    PLOTTER_COMPARE_PIXEL(image, pixelOf(3, 0.1), background); // bar 0 grows downwards, out of view
    PLOTTER_COMPARE_PIXEL(image, pixelOf(5, 1.5), QColor(Qt::red));
    PLOTTER_COMPARE_PIXEL(image, pixelOf(7, 0.1), background);
    PLOTTER_COMPARE_PIXEL(image, pixelOf(9, 3.5), QColor(Qt::red));
}

void tst_BarPlotter::xOffsetMovesTheBarsLeft()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(PlotterTest::chartScene(fourRedBars));
    QVERIFY(scene.isReady());
    scene.find<BarPlotter>("bars")->setXOffset(2);
    const QImage image = scene.grab();
    PLOTTER_COMPARE_PIXEL(image, pixelOf(0.5, 0.5), QColor(Qt::red)); // bar 0 now from 0 to 2
    PLOTTER_COMPARE_PIXEL(image, pixelOf(7.5, 3.5), QColor(Qt::red)); // bar 3 now from 6 to 8
    PLOTTER_COMPARE_PIXEL(image, pixelOf(8.5, 0.5), background);      // where bar 3 stood
}

void tst_BarPlotter::plotterAreaRightOfTheChartDrawsNothing()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(PlotterTest::chartScene(fourRedBars));
    QVERIFY(scene.isReady());
    auto *chart = scene.find<IChartArea>("chart");
    chart->setChartRect(QRectF(-30, 0, 20, 10)); // ends at -10, left of the bars at 2
    chart->requestUpdate();
    const QImage image = scene.grab();
    for (int x = 5; x < 200; x += 10)
        PLOTTER_COMPARE_PIXEL(image, QPoint(x, 95), background);
}

void tst_BarPlotter::shrunkDataDrawOnlyTheRemainingBars()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(PlotterTest::chartScene(fourRedBars));
    QVERIFY(scene.isReady());
    auto *bars = scene.find<BarPlotter>("bars");
    bars->setData(filled(8, 5.0));
    PLOTTER_COMPARE_PIXEL(scene.grab(), pixelOf(9.5, 4.5), QColor(Qt::red));
    bars->setData({1, 1});
    const QImage image = scene.grab();
    PLOTTER_COMPARE_PIXEL(image, pixelOf(3, 0.5), QColor(Qt::red)); // bar 0, now 4 wide
    PLOTTER_COMPARE_PIXEL(image, pixelOf(9, 0.5), QColor(Qt::red)); // bar 1
    PLOTTER_COMPARE_PIXEL(image, pixelOf(9.5, 4.5), background);    // the old bars are gone
    PLOTTER_COMPARE_PIXEL(image, pixelOf(3, 1.5), background);
}

void tst_BarPlotter::badValuesDrawWithoutErrors_data()
{
    QTest::addColumn<QList<double>>("values");
    QTest::addColumn<QList<double>>("drawnHeights"); // NaN: the bar's pixels are not checked

    QTest::newRow("an empty list draws nothing") << QList<double>{} << QList<double>{};
    QTest::newRow("NaN leaves its neighbours standing") << QList<double>{NaN, 3, NaN, 2} << QList<double>{NaN, 3, NaN, 2};
    QTest::newRow("infinities draw without error")
        << QList<double>{Inf, 3, -Inf, 2} << QList<double>{NaN, 3, NaN, 2};
    QTest::newRow("huge values fill the chart height")
        << QList<double>{1e300, 3, -1e300, 2} << QList<double>{10, 3, 0, 2};
    QTest::newRow("negative values leave the chart empty") << QList<double>{-1, -2, -3, -4} << QList<double>{0, 0, 0, 0};
}

void tst_BarPlotter::badValuesDrawWithoutErrors()
{
    QFETCH(QList<double>, values);
    QFETCH(QList<double>, drawnHeights);

    const QImage image = PlotterTest::drawWithData<BarPlotter>(PlotterTest::chartScene(fourRedBars), "bars", values);
    QVERIFY(!image.isNull());
    if (values.isEmpty())
        PLOTTER_COMPARE_PIXEL(image, pixelOf(3, 0.5), background);
    for (int k = 0; k < drawnHeights.size(); ++k) {
        const double height = drawnHeights[k];
        if (std::isnan(height))
            continue;
        const double middle = 3 + 2 * k;
        if (height > 0)
            PLOTTER_COMPARE_PIXEL(image, pixelOf(middle, height - 0.5), QColor(Qt::red));
        if (height < 10)
            PLOTTER_COMPARE_PIXEL(image, pixelOf(middle, height + 0.5), background);
    }
}

void tst_BarPlotter::windowsComeAndGo()
{
    // Each window has its own context; the bar program is built for each one,
    // also after the first window and its context are gone.
    PlotterTest::failOnOpenGLErrors();
    for (int round = 0; round < 3; ++round) {
        QuickScene scene(PlotterTest::chartScene(fourRedBars));
        QVERIFY(scene.isReady());
        PLOTTER_COMPARE_PIXEL(scene.grab(), pixelOf(9, 3.5), QColor(Qt::red));
    }
    QuickScene first(PlotterTest::chartScene(fourRedBars));
    QuickScene second(PlotterTest::chartScene(fourRedBars));
    QVERIFY(first.isReady());
    QVERIFY(second.isReady());
    PLOTTER_COMPARE_PIXEL(second.grab(), pixelOf(9, 3.5), QColor(Qt::red));
    PLOTTER_COMPARE_PIXEL(first.grab(), pixelOf(7, 2.5), QColor(Qt::red));
}

VEXAL_GL_TEST_MAIN(tst_BarPlotter)
#include "tst_barplotter.moc"
