// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Tests of the bar plotter: its CPU-side arrays and the bars it draws.
#include <vexal/barplotter.h>
#include "plotters/gpuarrays_p.h"
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

// Opens the arrays to the tests; production code keeps them protected.
class BarPlotterProbe : public BarPlotter
{
public:
    using BarPlotter::gpuArrays;
    using BarPlotter::m_glReady;
    using BarPlotter::m_indices;
    using BarPlotter::m_points;
    using BarPlotter::m_vertexIds;

    // A plotter whose arrays exist, as after its first frame.
    static BarPlotterProbe *ready(const QList<double> &values, const QRectF &area = QRectF(0, 0, 8, 1))
    {
        auto *p = new BarPlotterProbe;
        p->setPlotterArea(area);
        p->m_glReady = true;
        p->setData(values);
        return p;
    }
};

QList<double> filled(int n, double v)
{
    return QList<double>(n, v);
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
    void shrinkingKeepsTheLongerIndexArray();
    void growingWritesOnlyTheNewBars();
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
    QCOMPARE(p->m_points, QList<float>({0, 0, 1.5f, 1.5f, 0, 0, -2.0f, -2.0f}));
    QCOMPARE(p->m_vertexIds, QList<float>({0, 1, 0, 1, 1, 2, 1, 2}));
    // Points, vertex ids and indices are changed for every window (version 1
    // is their declaration).
    for (int array = 0; array < p->gpuArrays().count(); ++array)
        QVERIFY(p->gpuArrays().version(array) > 1);
}

void tst_BarPlotter::indicesOfEachBarFormTwoTriangles()
{
    std::unique_ptr<BarPlotterProbe> p(BarPlotterProbe::ready({1, 2, 3}));
    QCOMPARE(p->m_indices, barIndices(0) + barIndices(1) + barIndices(2));
}

void tst_BarPlotter::sameValuesChangeNothing()
{
    std::unique_ptr<BarPlotterProbe> p(BarPlotterProbe::ready({1, 2, 3}));
    const quint64 points = p->gpuArrays().version(0);
    QSignalSpy changed(p.get(), &IPlotter::dataChanged);
    p->setData(QList<double>{1, 2, 3}); // equal bytes, other storage
    QCOMPARE(changed.count(), 0);
    QCOMPARE(p->gpuArrays().version(0), points);
}

void tst_BarPlotter::shrinkingKeepsTheLongerIndexArray()
{
    std::unique_ptr<BarPlotterProbe> p(BarPlotterProbe::ready(filled(10, 1.0)));
    const quint64 points = p->gpuArrays().version(0);
    const quint64 indices = p->gpuArrays().version(2);
    p->setData(filled(4, 2.0));
    QCOMPARE(p->m_indices.size(), 60);
    QCOMPARE(p->m_vertexIds.size(), 40);
    QCOMPARE(p->m_points.size(), 16);
    QVERIFY(p->gpuArrays().version(0) > points);
    QCOMPARE(p->gpuArrays().version(2), indices); // nothing to upload for the indices
}

void tst_BarPlotter::growingWritesOnlyTheNewBars()
{
    std::unique_ptr<BarPlotterProbe> p(BarPlotterProbe::ready(filled(4, 1.0)));
    // Marks the first four bars: a rewrite would undo the marks.
    p->m_indices.fill(7);
    p->m_vertexIds.fill(-1.0f);
    p->setData(filled(10, 1.0));
    QCOMPARE(p->m_indices.size(), 60);
    QCOMPARE(p->m_indices.mid(0, 24), QList<quint32>(24, 7));
    QCOMPARE(p->m_vertexIds.mid(0, 16), QList<float>(16, -1.0f));
    QList<quint32> newBars;
    for (quint32 k = 4; k < 10; ++k)
        newBars += barIndices(k);
    QCOMPARE(p->m_indices.mid(24), newBars);
    QCOMPARE(p->m_vertexIds.mid(36), QList<float>({9, 10, 9, 10}));
}

void tst_BarPlotter::dataBeforeTheFirstFrameAreOnlyStored()
{
    BarPlotterProbe p; // no chart either: bars keep their data all the same
    QSignalSpy changed(&p, &IPlotter::dataChanged);
    p.setData({1, 2});
    QCOMPARE(p.data(), QList<double>({1, 2}));
    QCOMPARE(changed.count(), 1);
    QVERIFY(p.m_points.isEmpty());
    QVERIFY(p.m_indices.isEmpty());
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
    QCOMPARE(p->m_points.size(), 4 * tops.size());
    for (int k = 0; k < tops.size(); ++k) {
        const float top = p->m_points.at(4 * k + 2);
        QVERIFY2(std::isnan(tops[k]) ? std::isnan(top) : top == tops[k], qPrintable(QString::number(k)));
        QCOMPARE(p->m_points.at(4 * k), 0.0f);
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
