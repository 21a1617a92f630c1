// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Unit tests of the zoomable chart: zoom rectangle rules, height that follows
// the visible maximum, reset, the start-up reset task and image grabs.
#include <vexal/chartarea.h>
#include <vexal/iplotter1d.h>
#include "quickscene.h"
#include "testplotter.h"

#include <QtCore/QTemporaryDir>
#include <QtGui/QGuiApplication>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <memory>

namespace {

// A one-dimensional plotter on the chart with the given values, one unit per sample.
IPlotter1D *addSeries(ChartArea &chart, const QList<double> &values, double left = 0.0)
{
    auto *p = new IPlotter1D(&chart);
    p->setChartArea(&chart);
    p->setPlotterArea(QRectF(left, 0, values.size(), 1));
    p->setData(values);
    return p;
}

class CountingChartArea : public ChartArea
{
public:
    CountingChartArea() { setUpdateIntervalMs(0); }
    int accepted = 0; // accepted redraw requests
    void updateArea() override
    {
        ++accepted;
        ChartArea::updateArea();
    }
};

} // namespace

class tst_ChartArea : public QObject
{
    Q_OBJECT

private slots:
    void defaults();
    void zoomRectSetterComparesFuzzilyAndRedraws();
    void freshChartShowsUnitZoomAfterFirstUpdate();
    void zoomHeightFollowsVisibleMaximum_data();
    void zoomHeightFollowsVisibleMaximum();
    void signedZoomSpansTheVisibleValues_data();
    void signedZoomSpansTheVisibleValues();
    void signedZoomFollowsTheVisibleCellsOnly();
    void includeZeroNotifiesAndRedraws();
    void followMovesTheZoomWithGrowingData_data();
    void followMovesTheZoomWithGrowingData();
    void writtenZoomKeepsFollowOn();
    void zoomOutsideChartRectIsReplaced();
    void signedZoomOutsideChartRectIsFittedAtOnce();
    void fixedHeightTakesChartHeight();
    void resetZoomViewShowsWholeChart();
    void visibleRectAndMappingUseTheZoom();
    void startupTaskShowsWholeDataAfter100ms();
    void chartDestroyedWithinItsFirst100msIsNeverTouched();
    void exportImageKeepsTheGrabAndWritesNothing();
    void chartAtFractionalPositionCopiesItsPixelsExactly();
};

void tst_ChartArea::defaults()
{
    ChartArea chart;
    QCOMPARE(chart.zoomRect(), QRectF(0, 0, 1, 1));
    QCOMPARE(chart.adaptChartHeight(), true);
    QVERIFY(chart.grabResult().isNull());
    QSignalSpy spy(&chart, &ChartArea::adaptChartHeightChanged);
    chart.setAdaptChartHeight(true);
    QCOMPARE(spy.count(), 0);
    chart.setAdaptChartHeight(false);
    QCOMPARE(spy.count(), 1);
}

void tst_ChartArea::zoomRectSetterComparesFuzzilyAndRedraws()
{
    CountingChartArea chart;
    chart.setAdaptAreaToPlotters(false);
    chart.setAdaptChartHeight(false);
    QSignalSpy zoom(&chart, &ChartArea::zoomRectChanged);
    chart.setZoomRect(QRectF(0, 0, 1 + 1e-14, 1));
    QCOMPARE(zoom.count(), 0);
    QCOMPARE(chart.accepted, 0);
    chart.setZoomRect(QRectF(0, 0, 0.5, 1));
    QCOMPARE(zoom.count(), 1);
    QCOMPARE(chart.accepted, 1); // the redraw request keeps the zoom as it is
    QCOMPARE(chart.zoomRect(), QRectF(0, 0, 0.5, 1));
}

void tst_ChartArea::freshChartShowsUnitZoomAfterFirstUpdate()
{
    ChartArea chart;
    chart.requestUpdate();
    QCOMPARE(chart.chartRect(), QRectF(0, 0, 1, 1.05));
    QCOMPARE(chart.zoomRect(), QRectF(0, 0, 1, 1.05));
}

void tst_ChartArea::zoomHeightFollowsVisibleMaximum_data()
{
    QTest::addColumn<QList<double>>("first");
    QTest::addColumn<QList<double>>("second");
    QTest::addColumn<bool>("secondVisible");
    QTest::addColumn<double>("expectedHeight");

    QTest::newRow("a visible maximum of 40 gives a zoom height of 42")
        << QList<double>{10, 40, 5} << QList<double>{1, 2, 3} << true << 42.0;
    QTest::newRow("the larger maximum of two visible plotters counts")
        << QList<double>{10, 40, 5} << QList<double>{100, 2, 3} << true << 105.0;
    QTest::newRow("an invisible plotter does not count")
        << QList<double>{10, 40, 5} << QList<double>{100, 2, 3} << false << 42.0;
    QTest::newRow("all-zero data keep a unit-sized view")
        << QList<double>{0, 0, 0} << QList<double>{0, 0} << true << 1.05;
    QTest::newRow("all-negative data keep a unit-sized view")
        << QList<double>{-4, -9, -1} << QList<double>{-1} << true << 1.05;
}

void tst_ChartArea::zoomHeightFollowsVisibleMaximum()
{
    QFETCH(QList<double>, first);
    QFETCH(QList<double>, second);
    QFETCH(bool, secondVisible);
    QFETCH(double, expectedHeight);

    ChartArea chart;
    chart.setUpdateIntervalMs(0);
    addSeries(chart, first);
    addSeries(chart, second)->setVisible(secondVisible);
    chart.setZoomRect(QRectF(0, 0, 3, 1));
    chart.updateArea();
    QCOMPARE(chart.zoomRect().height(), expectedHeight);
    QCOMPARE(chart.zoomRect().left(), 0.0);
    QCOMPARE(chart.zoomRect().width(), 3.0);
}

void tst_ChartArea::signedZoomSpansTheVisibleValues_data()
{
    QTest::addColumn<QList<double>>("first");
    QTest::addColumn<QList<double>>("second");
    QTest::addColumn<bool>("secondVisible");
    QTest::addColumn<double>("expectedBottom");
    QTest::addColumn<double>("expectedTop");

    QTest::newRow("signed data get 5 % of their span above and below")
        << QList<double>{-4, 6, 1} << QList<double>{} << true << -4.5 << 6.5;
    QTest::newRow("all-negative data stay below 0")
        << QList<double>{-10, -30, -20} << QList<double>{} << true << -31.0 << -9.0;
    QTest::newRow("all-positive data do not reach down to 0")
        << QList<double>{100, 110, 105} << QList<double>{} << true << 99.5 << 110.5;
    QTest::newRow("two visible plotters are spanned together")
        << QList<double>{-4, 6, 1} << QList<double>{10, 2, 3} << true << -4.7 << 10.7;
    QTest::newRow("an invisible plotter does not count")
        << QList<double>{-4, 6, 1} << QList<double>{10, 2, 3} << false << -4.5 << 6.5;
    QTest::newRow("a constant gets 5 % of its value")
        << QList<double>{-20, -20, -20} << QList<double>{} << true << -21.0 << -19.0;
    QTest::newRow("a constant 0 gets 1 above and below")
        << QList<double>{0, 0, 0} << QList<double>{} << true << -1.0 << 1.0;
    QTest::newRow("NaN values are ignored")
        << QList<double>{qQNaN(), -2, 2} << QList<double>{} << true << -2.2 << 2.2;
    QTest::newRow("no finite value keeps the heights from 0")
        << QList<double>{qQNaN(), qQNaN(), qQNaN()} << QList<double>{} << true << 0.0 << 1.05;
}

void tst_ChartArea::signedZoomSpansTheVisibleValues()
{
    QFETCH(QList<double>, first);
    QFETCH(QList<double>, second);
    QFETCH(bool, secondVisible);
    QFETCH(double, expectedBottom);
    QFETCH(double, expectedTop);

    ChartArea chart;
    chart.setUpdateIntervalMs(0);
    chart.setIncludeZero(false);
    addSeries(chart, first);
    if (!second.isEmpty())
        addSeries(chart, second)->setVisible(secondVisible);
    chart.setZoomRect(QRectF(0, 0, 3, 1));
    chart.updateArea();
    QVERIFY2(qAbs(chart.zoomRect().top() - expectedBottom) < 1e-9, QByteArray::number(chart.zoomRect().top()));
    QVERIFY2(qAbs(chart.zoomRect().bottom() - expectedTop) < 1e-9, QByteArray::number(chart.zoomRect().bottom()));
    QCOMPARE(chart.zoomRect().left(), 0.0);
    QCOMPARE(chart.zoomRect().width(), 3.0);
}

void tst_ChartArea::signedZoomFollowsTheVisibleCellsOnly()
{
    ChartArea chart;
    chart.setUpdateIntervalMs(0);
    chart.setIncludeZero(false);
    addSeries(chart, {-100, 1, 2, 3, 100});
    chart.setZoomRect(QRectF(1, 0, 3, 1));
    chart.updateArea();
    QCOMPARE(chart.zoomRect().top(), 0.9);
    QCOMPARE(chart.zoomRect().bottom(), 3.1);
    chart.setIncludeZero(true);
    chart.updateArea();
    QCOMPARE(chart.zoomRect().top(), 0.0);
    QCOMPARE(chart.zoomRect().height(), 3.0 * 1.05);
}

void tst_ChartArea::includeZeroNotifiesAndRedraws()
{
    CountingChartArea chart;
    QCOMPARE(chart.includeZero(), true);
    QSignalSpy spy(&chart, &ChartArea::includeZeroChanged);
    chart.setIncludeZero(true);
    QCOMPARE(spy.count(), 0);
    chart.setIncludeZero(false);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(chart.includeZero(), false);
    QCOMPARE(chart.accepted, 1);
}

void tst_ChartArea::followMovesTheZoomWithGrowingData_data()
{
    QTest::addColumn<bool>("follow");
    QTest::addColumn<QRectF>("zoom");     // before 20 values are appended to 100
    QTest::addColumn<double>("expectedLeft");
    QTest::addColumn<double>("expectedWidth");

    QTest::newRow("a zoom that showed all data grows with them") << true << QRectF(0, 0, 100, 1) << 0.0 << 120.0;
    QTest::newRow("a zoom into the data keeps its width and moves to the newest value")
        << true << QRectF(30, 0, 10, 1) << 110.0 << 10.0;
    QTest::newRow("without follow the zoom stays") << false << QRectF(30, 0, 10, 1) << 30.0 << 10.0;
    QTest::newRow("without follow a zoom on all data stays") << false << QRectF(0, 0, 100, 1) << 0.0 << 100.0;
}

void tst_ChartArea::followMovesTheZoomWithGrowingData()
{
    QFETCH(bool, follow);
    QFETCH(QRectF, zoom);
    QFETCH(double, expectedLeft);
    QFETCH(double, expectedWidth);

    ChartArea chart;
    chart.setUpdateIntervalMs(0);
    IPlotter1D *series = addSeries(chart, QList<double>(100, 1.0));
    chart.updateArea();
    chart.setFollow(follow);
    chart.setZoomRect(zoom);
    series->appendData(QList<double>(20, 2.0));
    chart.updateArea();
    QCOMPARE(chart.chartRect().width(), 120.0);
    QCOMPARE(chart.zoomRect().left(), expectedLeft);
    QCOMPARE(chart.zoomRect().width(), expectedWidth);
}

void tst_ChartArea::writtenZoomKeepsFollowOn()
{
    ChartArea chart;
    chart.setUpdateIntervalMs(0);
    QCOMPARE(chart.follow(), false);
    QSignalSpy spy(&chart, &ChartArea::followChanged);
    chart.setFollow(true);
    QCOMPARE(spy.count(), 1);
    IPlotter1D *series = addSeries(chart, QList<double>(100, 1.0));
    chart.updateArea();
    chart.setZoomRect(QRectF(10, 0, 20, 1));
    QCOMPARE(chart.follow(), true);
    // Replacing the values without growing them does not move the zoom.
    series->setData(QList<double>(100, 3.0));
    chart.updateArea();
    QCOMPARE(chart.zoomRect().left(), 10.0);
    series->appendData({4, 4, 4, 4, 4});
    chart.updateArea();
    QCOMPARE(chart.zoomRect().left(), 85.0);
    QCOMPARE(chart.zoomRect().width(), 20.0);
}

void tst_ChartArea::zoomOutsideChartRectIsReplaced()
{
    ChartArea chart;
    chart.setUpdateIntervalMs(0);
    addSeries(chart, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}); // chartRect (0, 0, 10, 1.05)
    chart.lock_update(); // one step at a time
    chart.setZoomRect(QRectF(50, 0, 5, 1));
    chart.updateArea();
    // The chart rectangle, its height fitted at once to the values it shows:
    // no later update is needed (none may come for data that stay as they are).
    QCOMPARE(chart.zoomRect(), QRectF(0, 0, 10, 10.5));
    chart.updateArea();
    QCOMPARE(chart.zoomRect(), QRectF(0, 0, 10, 10.5));
}

void tst_ChartArea::signedZoomOutsideChartRectIsFittedAtOnce()
{
    ChartArea chart;
    chart.setUpdateIntervalMs(0);
    chart.setIncludeZero(false);
    addSeries(chart, {-10, 0, 10, 30});
    chart.lock_update();
    chart.setZoomRect(QRectF(50, 100, 5, 1));
    chart.updateArea();
    QCOMPARE(chart.zoomRect().left(), 0.0);
    QCOMPARE(chart.zoomRect().width(), 4.0);
    QCOMPARE(chart.zoomRect().top(), -12.0);
    QCOMPARE(chart.zoomRect().bottom(), 32.0);
}

void tst_ChartArea::fixedHeightTakesChartHeight()
{
    ChartArea chart;
    chart.setUpdateIntervalMs(0);
    chart.setAdaptChartHeight(false);
    chart.setAdaptAreaToPlotters(false);
    chart.setChartRect(QRectF(0, 0, 10, 20));
    chart.setZoomRect(QRectF(8, 5, 6, 2)); // sticks out to the right and starts at y 5
    chart.updateArea();
    // Height of the chart from the zoom's bottom, then cut to the chart.
    QCOMPARE(chart.zoomRect(), QRectF(8, 5, 2, 15));
}

void tst_ChartArea::resetZoomViewShowsWholeChart()
{
    ChartArea chart;
    chart.setAdaptAreaToPlotters(false);
    chart.setAdaptChartHeight(false);
    chart.setChartRect(QRectF(0, 0, 10, 5));
    QSignalSpy spy(&chart, &ChartArea::zoomRectChanged);
    chart.resetZoomView();
    QCOMPARE(chart.zoomRect(), QRectF(0, 0, 10, 5));
    QCOMPARE(spy.count(), 1);
    chart.resetZoomView(); // already showing the chart rectangle
    QCOMPARE(spy.count(), 1);
}

void tst_ChartArea::visibleRectAndMappingUseTheZoom()
{
    ChartArea chart;
    chart.setSize(QSizeF(100, 50));
    chart.setAdaptAreaToPlotters(false);
    chart.setAdaptChartHeight(false);
    chart.setChartRect(QRectF(0, 0, 100, 10));
    chart.setZoomRect(QRectF(50, 0, 10, 10));
    QCOMPARE(chart.visibleRect(), QRectF(50, 0, 10, 10));
    QCOMPARE(chart.chartRect(), QRectF(0, 0, 100, 10)); // the member itself
    QCOMPARE(chart.mapPointToChart(QPointF(55, 5)), QPointF(50, 25));
    QCOMPARE(chart.mapPointToChart(QPointF(45, 5)), QPointF(-1, -1));
}

void tst_ChartArea::startupTaskShowsWholeDataAfter100ms()
{
    ChartArea chart;
    chart.setAdaptAreaToPlotters(false);
    chart.setAdaptChartHeight(false);
    chart.setChartRect(QRectF(0, 0, 30, 3));
    QSignalSpy spy(&chart, &ChartArea::zoomRectChanged);
    QTRY_COMPARE_WITH_TIMEOUT(chart.zoomRect(), QRectF(0, 0, 30, 3), 5000);
    QCOMPARE(spy.count(), 1);
}

void tst_ChartArea::chartDestroyedWithinItsFirst100msIsNeverTouched()
{
    // Under the sanitizer configuration a late write would be reported as a
    // use after free; here it would crash or change the next chart.
    for (int i = 0; i < 20; ++i)
        delete new ChartArea;
    ChartArea survivor;
    survivor.setAdaptAreaToPlotters(false);
    survivor.setAdaptChartHeight(false);
    survivor.setChartRect(QRectF(0, 0, 7, 7));
    QTRY_COMPARE_WITH_TIMEOUT(survivor.zoomRect(), QRectF(0, 0, 7, 7), 5000);
    QTest::qWait(150); // every task of the destroyed charts has woken up by now
    QCOMPARE(survivor.zoomRect(), QRectF(0, 0, 7, 7));
}

void tst_ChartArea::exportImageKeepsTheGrabAndWritesNothing()
{
    VexalTest::QuickScene scene(R"(
import QtQuick 2.15
import VexalPlugin 1.0
Item {
    ChartArea { objectName: "chart"; width: 60; height: 40 }
}
)");
    QVERIFY(scene.isReady());
    auto *chart = scene.find<ChartArea>("chart");
    QVERIFY(chart);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("chart.png"));
    chart->exportImage(path);
    QVERIFY(chart->grabResult());
    QSignalSpy ready(chart->grabResult().data(), &QQuickItemGrabResult::ready);
    QVERIFY(ready.wait(5000));
    QCOMPARE(chart->grabResult()->image().size(), QSize(120, 80));
    QVERIFY(!QFile::exists(path));
    QVERIFY(QDir(dir.path()).isEmpty());
}

void tst_ChartArea::chartAtFractionalPositionCopiesItsPixelsExactly()
{
    // The chart's framebuffer is as large as the item: half a pixel off the
    // grid, its edges must stay sharp instead of blending into the background.
    VexalTest::QuickScene scene(R"(
import QtQuick 2.15
import VexalPlugin 1.0
Rectangle {
    color: "white"
    ChartArea { objectName: "chart"; x: 20.5; y: 10; width: 100; height: 50 }
}
)");
    QVERIFY(scene.isReady());
    auto *chart = scene.find<ChartArea>("chart");
    QVERIFY(chart);
    TestPlotter plotter;
    plotter.setColor(Qt::green);
    plotter.setPlotterArea(QRectF(0, 0, 100, 10));
    plotter.setChartArea(chart);
    plotter.setData({0, 0, 50, 10}); // the left half of the chart
    chart->updateArea();
    chart->resetZoomView();

    const QImage image = scene.grab();
    const int row = 35; // the middle of the chart
    int green = 0, white = 0;
    for (int x = 10; x < 140; ++x) {
        const QColor c = image.pixelColor(x, row);
        green += VexalTest::sameColor(c, Qt::green);
        white += VexalTest::sameColor(c, Qt::white);
        QVERIFY2(VexalTest::sameColor(c, Qt::green) || VexalTest::sameColor(c, Qt::white),
                 QByteArray("x = ") + QByteArray::number(x) + ": " + VexalTest::describe(c));
    }
    QCOMPARE(green, 50);
    QCOMPARE(white, 130 - 50);
}

VEXAL_GL_TEST_MAIN(tst_ChartArea)
#include "tst_chartarea.moc"
