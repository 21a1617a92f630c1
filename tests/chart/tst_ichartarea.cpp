// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Unit tests of the chart item: properties, plotter list, mapping, throttle,
// chart rectangle and layer sorting.
#include <vexal/ichartarea.h>
#include <vexal/barplotter.h>
#include "testplotter.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QThread>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <memory>

namespace {

// Counts accepted redraw requests: requestUpdate recomputes the area exactly
// when it schedules a frame.
class CountingChart : public IChartArea
{
public:
    int accepted = 0; // updateArea calls, i.e. accepted requests
    void updateArea() override
    {
        ++accepted;
        IChartArea::updateArea();
    }
};

TestPlotter *plotterWithArea(const QRectF &area, QObject *parent)
{
    auto *p = new TestPlotter(parent);
    p->setPlotterArea(area);
    return p;
}

} // namespace

class tst_IChartArea : public QObject
{
    Q_OBJECT

private slots:
    void defaults();
    void chartRectSetterComparesFuzzily_data();
    void chartRectSetterComparesFuzzily();
    void flagSettersEmitOnChangeOnly();
    void renderScaleTakesPositiveFiniteScales_data();
    void renderScaleTakesPositiveFiniteScales();
    void framebufferSizeFollowsTheRenderScale();
    void plotterPropertyReplacesTheListAsItIs();
    void addPlotterAttachesOnce();
    void addPlotterMovesAPlotterFromAnotherChart();
    void addPlotterIgnoresNull();
    void removePlotterAlwaysEmits_data();
    void removePlotterAlwaysEmits();
    void mapPointToChart_data();
    void mapPointToChart();
    void throttleDropsRequests_data();
    void throttleDropsRequests();
    void droppedRequestRedrawsOnceAtTheIntervalEnd();
    void requestBeforeTheFrameIsTakenNeedsNoSecondRedraw();
    void lockedUpdatesNeverRedraw();
    void shouldUpdateFalseNeverRedraws();
    void requestsFromOtherThreadsRunOnTheChartThread();
    void updateAreaFollowsPlotters_data();
    void updateAreaFollowsPlotters();
    void sortLayersByMaskAndZOrder();
    void renderPlottersSkipsHiddenAndOutsidePlotters();
    void destroyedPlotterLeavesEveryList();
    void destroyedListedPlotterLeavesTheList();
    void destroyedListedPlotterLeavesBeforeItsMembersGo();
    void destroyedChartLeavesNoDanglingPointer();
};

void tst_IChartArea::defaults()
{
    IChartArea chart;
    QCOMPARE(chart.chartRect(), QRectF(0, 0, 1, 1));
    QCOMPARE(chart.adaptAreaToPlotters(), true);
    QVERIFY(chart.plotter().isEmpty());
    QCOMPARE(chart.shouldUpdate(), true);
    QCOMPARE(chart.updateIntervalMs(), 25u);
    QCOMPARE(chart.renderScale(), 1.0);
    QCOMPARE(chart.visibleRect(), chart.chartRect());
    for (int k = 0; k < 3; ++k)
        QVERIFY(chart.layer(k).isEmpty());
}

void tst_IChartArea::chartRectSetterComparesFuzzily_data()
{
    QTest::addColumn<QRectF>("next");
    QTest::addColumn<bool>("emits");

    QTest::newRow("the same rectangle emits nothing") << QRectF(0, 0, 1, 1) << false;
    QTest::newRow("a rectangle within fuzzy tolerance emits nothing") << QRectF(0, 0, 1 + 1e-14, 1) << false;
    QTest::newRow("a moved rectangle emits") << QRectF(0.5, 0, 1, 1) << true;
    QTest::newRow("a resized rectangle emits") << QRectF(0, 0, 1, 2) << true;
}

void tst_IChartArea::chartRectSetterComparesFuzzily()
{
    QFETCH(QRectF, next);
    QFETCH(bool, emits);

    CountingChart chart;
    QSignalSpy spy(&chart, &IChartArea::chartRectChanged);
    chart.setChartRect(next);
    QCOMPARE(spy.count(), emits ? 1 : 0);
    QCOMPARE(chart.accepted, 0); // no redraw is requested
    if (emits)
        QCOMPARE(chart.chartRect(), next);
}

void tst_IChartArea::flagSettersEmitOnChangeOnly()
{
    IChartArea chart;
    QSignalSpy adapt(&chart, &IChartArea::adaptAreaToPlottersChanged);
    QSignalSpy should(&chart, &IChartArea::shouldUpdateChanged);
    chart.setAdaptAreaToPlotters(true);
    chart.setShouldUpdate(true);
    QCOMPARE(adapt.count(), 0);
    QCOMPARE(should.count(), 0);
    chart.setAdaptAreaToPlotters(false);
    chart.setShouldUpdate(false);
    QCOMPARE(adapt.count(), 1);
    QCOMPARE(should.count(), 1);
    chart.setUpdateIntervalMs(7);
    QCOMPARE(chart.updateIntervalMs(), 7u);
}

void tst_IChartArea::renderScaleTakesPositiveFiniteScales_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("taken");
    QTest::addColumn<QString>("warning");

    QTest::newRow("twice the pixels are taken") << 2.0 << 2.0 << QString();
    QTest::newRow("a fraction is taken") << 0.5 << 0.5 << QString();
    QTest::newRow("zero warns and uses 1") << 0.0 << 1.0 << QStringLiteral("0");
    QTest::newRow("a negative scale warns and uses 1") << -3.0 << 1.0 << QStringLiteral("-3");
    QTest::newRow("NaN warns and uses 1") << qQNaN() << 1.0 << QStringLiteral("nan");
    QTest::newRow("infinity warns and uses 1") << qInf() << 1.0 << QStringLiteral("inf");
}

void tst_IChartArea::renderScaleTakesPositiveFiniteScales()
{
    QFETCH(double, scale);
    QFETCH(double, taken);
    QFETCH(QString, warning);

    IChartArea chart;
    chart.setRenderScale(3.0);
    QSignalSpy changed(&chart, &IChartArea::renderScaleChanged);
    if (!warning.isEmpty())
        QTest::ignoreMessage(QtWarningMsg, qPrintable(QStringLiteral("IChartArea::renderScale: %1 is not a positive "
                                                                     "finite scale; using 1").arg(warning)));
    chart.setRenderScale(scale);
    QCOMPARE(chart.renderScale(), taken);
    QCOMPARE(changed.count(), 1);
    chart.setRenderScale(taken);
    QCOMPARE(changed.count(), 1); // the same scale again emits nothing
}

void tst_IChartArea::framebufferSizeFollowsTheRenderScale()
{
    IChartArea chart;
    chart.setSize(QSizeF(200.5, 100));
    QCOMPARE(chart.framebufferSize(), QSize(200, 100));
    chart.setRenderScale(2.0);
    QCOMPARE(chart.framebufferSize(), QSize(400, 200));
    chart.setSize(QSizeF(0, 0));
    QCOMPARE(chart.framebufferSize(), QSize(2, 2)); // never empty
}

void tst_IChartArea::plotterPropertyReplacesTheListAsItIs()
{
    CountingChart chart;
    chart.setUpdateIntervalMs(0);
    TestPlotter a, b;
    QSignalSpy spy(&chart, &IChartArea::plotterChanged);

    chart.setPlotter({&a, &b});
    QCOMPARE(spy.count(), 1);
    QCOMPARE(chart.accepted, 1);
    QCOMPARE(chart.plotter(), (QList<IPlotter *>{&a, &b}));
    QCOMPARE(a.chartArea(), nullptr); // the plotters' own chartArea is not touched

    chart.setPlotter({&a, &b});
    QCOMPARE(spy.count(), 1);
    chart.setPlotter({&b, &a});
    QCOMPARE(spy.count(), 2);
    chart.setPlotter({&b});
    QCOMPARE(spy.count(), 3);
}

void tst_IChartArea::addPlotterAttachesOnce()
{
    CountingChart chart;
    chart.setUpdateIntervalMs(0);
    TestPlotter plotter;
    QSignalSpy listSpy(&chart, &IChartArea::plotterChanged);
    QSignalSpy chartSpy(&plotter, &IPlotter::chartAreaChanged);

    chart.addPlotter(&plotter);
    QCOMPARE(chart.plotter(), QList<IPlotter *>{&plotter});
    QCOMPARE(plotter.chartArea(), &chart);
    QCOMPARE(listSpy.count(), 1);
    QCOMPARE(chartSpy.count(), 1);
    QCOMPARE(chart.accepted, 1);

    chart.addPlotter(&plotter);
    QCOMPARE(chart.plotter().size(), 1);
    QCOMPARE(listSpy.count(), 1);
    QCOMPARE(chart.accepted, 1);

    // Attaching through the plotter's property lists it exactly once as well.
    TestPlotter other;
    other.setChartArea(&chart);
    QCOMPARE(chart.plotter(), (QList<IPlotter *>{&plotter, &other}));
}

void tst_IChartArea::addPlotterMovesAPlotterFromAnotherChart()
{
    IChartArea first, second;
    TestPlotter plotter;
    first.addPlotter(&plotter);
    second.addPlotter(&plotter);
    QVERIFY(first.plotter().isEmpty());
    QCOMPARE(second.plotter(), QList<IPlotter *>{&plotter});
    QCOMPARE(plotter.chartArea(), &second);
}

void tst_IChartArea::addPlotterIgnoresNull()
{
    IChartArea chart;
    QSignalSpy spy(&chart, &IChartArea::plotterChanged);
    QTest::ignoreMessage(QtWarningMsg, "IChartArea::addPlotter: a null plotter was ignored");
    chart.addPlotter(nullptr);
    QVERIFY(chart.plotter().isEmpty());
    QCOMPARE(spy.count(), 0);
}

void tst_IChartArea::removePlotterAlwaysEmits_data()
{
    QTest::addColumn<bool>("attached");
    QTest::newRow("removing an attached plotter emits") << true;
    QTest::newRow("removing a plotter that is not attached still emits") << false;
}

void tst_IChartArea::removePlotterAlwaysEmits()
{
    QFETCH(bool, attached);

    CountingChart chart;
    chart.setUpdateIntervalMs(0);
    TestPlotter plotter;
    if (attached)
        chart.addPlotter(&plotter);
    const int acceptedBefore = chart.accepted;
    QSignalSpy spy(&chart, &IChartArea::plotterChanged);
    chart.removePlotter(&plotter);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(chart.accepted, acceptedBefore + 1);
    QVERIFY(chart.plotter().isEmpty());
    QCOMPARE(plotter.chartArea(), attached ? &chart : nullptr); // left as it was
}

void tst_IChartArea::mapPointToChart_data()
{
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QPointF>("expected");

    const QRectF r(10, 0, 20, 5); // on a 200 x 100 item: 10 px per x unit, 20 px per y unit
    QTest::newRow("a point inside maps proportionally") << r << QPointF(15, 1) << QPointF(50, 80);
    QTest::newRow("the bottom-left corner maps to the bottom-left pixel") << r << QPointF(10, 0) << QPointF(0, 100);
    QTest::newRow("the top-right corner maps to the top-right pixel") << r << QPointF(30, 5) << QPointF(200, 0);
    QTest::newRow("a point left of the rectangle is outside") << r << QPointF(9.9, 1) << QPointF(-1, -1);
    QTest::newRow("a point above the rectangle is outside") << r << QPointF(15, 5.1) << QPointF(-1, -1);
    QTest::newRow("a point below the rectangle is outside") << r << QPointF(15, -0.1) << QPointF(-1, -1);
    QTest::newRow("a point right of the rectangle is outside") << r << QPointF(30.1, 1) << QPointF(-1, -1);
}

void tst_IChartArea::mapPointToChart()
{
    QFETCH(QRectF, rect);
    QFETCH(QPointF, point);
    QFETCH(QPointF, expected);

    IChartArea chart;
    chart.setSize(QSizeF(200, 100));
    chart.setChartRect(rect);
    QCOMPARE(chart.mapPointToChart(point), expected);
}

void tst_IChartArea::throttleDropsRequests_data()
{
    QTest::addColumn<uint>("intervalMs");
    QTest::addColumn<int>("gapMs");

    QTest::newRow("two requests 10 ms apart within 25 ms schedule one frame") << 25u << 10;
    QTest::newRow("two requests within a long interval schedule one frame") << 1000u << 10;
    QTest::newRow("an interval of 0 lets both requests schedule a frame") << 0u << 10;
    QTest::newRow("requests further apart than the interval both schedule") << 20u << 60;
}

void tst_IChartArea::throttleDropsRequests()
{
    QFETCH(uint, intervalMs);
    QFETCH(int, gapMs);

    CountingChart chart;
    chart.setUpdateIntervalMs(intervalMs);
    QElapsedTimer gap;
    chart.requestUpdate();
    gap.start();
    QTest::qSleep(gapMs);
    // The chart's own timer started before ours: its elapsed time is at least
    // what we measure. Decide only where the measurement is unambiguous.
    const qint64 measured = gap.elapsed();
    if (uint(gapMs) < intervalMs && measured >= intervalMs)
        QSKIP("the machine slept past the interval; the outcome would not show the rule");
    chart.requestUpdate();
    QCOMPARE(chart.accepted, intervalMs == 0 || uint(gapMs) > intervalMs ? 2 : 1);
}

void tst_IChartArea::droppedRequestRedrawsOnceAtTheIntervalEnd()
{
    CountingChart chart;
    chart.setUpdateIntervalMs(100);
    chart.requestUpdate();
    chart.captureFrame(); // the scene graph takes the scheduled frame
    const int taken = chart.accepted; // taking the frame adapts the area too
    chart.requestUpdate(); // inside the interval: not drawn now
    chart.requestUpdate(); // a burst still asks for one trailing redraw
    QCOMPARE(chart.accepted, taken);
    QTRY_COMPARE_WITH_TIMEOUT(chart.accepted, taken + 1, 2000);
    // Nothing more was asked for: no further redraw follows.
    QTest::qWait(300);
    QCOMPARE(chart.accepted, taken + 1);
}

void tst_IChartArea::requestBeforeTheFrameIsTakenNeedsNoSecondRedraw()
{
    CountingChart chart;
    chart.setUpdateIntervalMs(100);
    chart.requestUpdate();
    chart.requestUpdate(); // the scheduled frame is not taken yet: it will draw this
    QTest::qWait(300);
    QCOMPARE(chart.accepted, 1);
}

void tst_IChartArea::lockedUpdatesNeverRedraw()
{
    CountingChart chart;
    chart.setUpdateIntervalMs(0);
    chart.lock_update();
    chart.requestUpdate();
    QCOMPARE(chart.accepted, 0);
    chart.unlock_update();
    QCOMPARE(chart.accepted, 0); // unlocking does not redraw by itself
    chart.requestUpdate();
    QCOMPARE(chart.accepted, 1);
}

void tst_IChartArea::shouldUpdateFalseNeverRedraws()
{
    CountingChart chart;
    chart.setUpdateIntervalMs(0);
    chart.setShouldUpdate(false);
    chart.requestUpdate();
    QCOMPARE(chart.accepted, 0);
    chart.setShouldUpdate(true);
    chart.requestUpdate();
    QCOMPARE(chart.accepted, 1);
}

void tst_IChartArea::requestsFromOtherThreadsRunOnTheChartThread()
{
    CountingChart chart;
    chart.setUpdateIntervalMs(0);
    std::unique_ptr<QThread> worker(QThread::create([&chart] { chart.requestUpdate(); }));
    worker->start();
    QVERIFY(worker->wait(5000));
    QCOMPARE(chart.accepted, 0);
    QTRY_COMPARE(chart.accepted, 1);
}

void tst_IChartArea::updateAreaFollowsPlotters_data()
{
    QTest::addColumn<QList<QRectF>>("areas");
    QTest::addColumn<QRectF>("expected");

    QTest::newRow("no plotters give the unit rectangle raised by 5%")
        << QList<QRectF>{} << QRectF(0, 0, 1, 1.05);
    QTest::newRow("a flat plotter area gets height 1 before the 5%")
        << QList<QRectF>{QRectF(0, 5, 10, 0)} << QRectF(0, 5, 10, 1.05);
    QTest::newRow("one plotter area is raised by 5% of its height")
        << QList<QRectF>{QRectF(2, 0, 10, 40)} << QRectF(2, 0, 10, 42);
    QTest::newRow("two plotter areas are united")
        << QList<QRectF>{QRectF(0, 0, 10, 20), QRectF(5, 0, 20, 10)} << QRectF(0, 0, 25, 21);
    QTest::newRow("null plotter areas count as nothing")
        << QList<QRectF>{QRectF(), QRectF(1, 0, 2, 2)} << QRectF(1, 0, 2, 2.1);
}

void tst_IChartArea::updateAreaFollowsPlotters()
{
    QFETCH(QList<QRectF>, areas);
    QFETCH(QRectF, expected);

    IChartArea chart;
    chart.setAdaptAreaToPlotters(false); // attaching must not update the area yet
    for (const QRectF &area : areas)
        chart.addPlotter(plotterWithArea(area, &chart));
    chart.setAdaptAreaToPlotters(true);
    QSignalSpy spy(&chart, &IChartArea::chartRectChanged);
    chart.updateArea();
    QCOMPARE(chart.chartRect(), expected);
    chart.updateArea();
    QCOMPARE(spy.count(), 1); // emitted once, on change

    chart.setAdaptAreaToPlotters(false);
    chart.setChartRect(QRectF(-1, -1, 3, 3));
    chart.updateArea();
    QCOMPARE(chart.chartRect(), QRectF(-1, -1, 3, 3));
}

void tst_IChartArea::sortLayersByMaskAndZOrder()
{
    IChartArea chart;
    auto make = [&chart](uint mask, double z) {
        auto *p = new TestPlotter(&chart);
        p->setDrawLayer(mask);
        p->setZOrder(z);
        chart.addPlotter(p);
        return p;
    };
    TestPlotter *a = make(1, 3.0);
    TestPlotter *b = make(2, 1.0);
    TestPlotter *c = make(3, -1.0);
    TestPlotter *d = make(4, 0.0);
    TestPlotter *e = make(1, 0.5);
    TestPlotter *none = make(8, 0.0); // bit 3 belongs to no layer
    chart.sortLayers();
    QCOMPARE(chart.layer(0), (QList<IPlotter *>{c, e, a}));
    QCOMPARE(chart.layer(1), (QList<IPlotter *>{c, b}));
    QCOMPARE(chart.layer(2), (QList<IPlotter *>{d}));
    for (int k = 0; k < 3; ++k)
        QVERIFY(!chart.layer(k).contains(none));

    // Rebuilt from scratch each time.
    a->setDrawLayer(4);
    chart.sortLayers();
    QCOMPARE(chart.layer(0), (QList<IPlotter *>{c, e}));
    QCOMPARE(chart.layer(2), (QList<IPlotter *>{d, a}));
}

void tst_IChartArea::renderPlottersSkipsHiddenAndOutsidePlotters()
{
    // Without a GL context the plotters' render must stop before any GL call:
    // plotters outside the chart rectangle and invisible ones return at once.
    IChartArea chart;
    chart.setAdaptAreaToPlotters(false);
    chart.setChartRect(QRectF(0, 0, 10, 10));
    TestPlotter *outside = plotterWithArea(QRectF(20, 0, 5, 5), &chart);
    TestPlotter *hidden = plotterWithArea(QRectF(0, 0, 5, 5), &chart);
    hidden->setVisible(false);
    TestPlotter *touching = plotterWithArea(QRectF(10, 0, 5, 5), &chart); // shares an edge only
    for (TestPlotter *p : {outside, hidden, touching})
        chart.addPlotter(p);
    chart.captureFrame();
    chart.renderPlotters();
    QCOMPARE(outside->renders() + hidden->renders() + touching->renders(), 0);
    QCOMPARE(chart.layer(0).size(), 3); // sorted into their layer all the same
}

void tst_IChartArea::destroyedPlotterLeavesEveryList()
{
    IChartArea chart;
    auto *plotter = new TestPlotter;
    plotter->setDrawLayer(7);
    chart.addPlotter(plotter);
    chart.sortLayers();
    QCOMPARE(chart.layer(2).size(), 1);
    QSignalSpy spy(&chart, &IChartArea::plotterChanged);
    delete plotter;
    QVERIFY(chart.plotter().isEmpty());
    for (int k = 0; k < 3; ++k)
        QVERIFY(chart.layer(k).isEmpty());
    QCOMPARE(spy.count(), 1);
}

void tst_IChartArea::destroyedListedPlotterLeavesTheList()
{
    IChartArea chart;
    auto *plotter = new TestPlotter;
    chart.setPlotter({plotter}); // listed, but its chartArea stays null
    QCOMPARE(plotter->chartArea(), nullptr);
    delete plotter;
    QVERIFY(chart.plotter().isEmpty());
}

void tst_IChartArea::destroyedListedPlotterLeavesBeforeItsMembersGo()
{
    // A frame must not reach a plotter whose own destructor has run: the
    // list change has to happen while the object is still a BarPlotter, not
    // once only its QObject part is left.
    IChartArea chart;
    auto *bars = new BarPlotter;
    chart.setPlotter({bars});
    bool stillWhole = false;
    connect(&chart, &IChartArea::plotterChanged, &chart,
            [&] { stillWhole = chart.plotter().isEmpty() && qobject_cast<BarPlotter *>(static_cast<QObject *>(bars)); });
    delete bars;
    QVERIFY(chart.plotter().isEmpty());
    QVERIFY(stillWhole);
}

void tst_IChartArea::destroyedChartLeavesNoDanglingPointer()
{
    TestPlotter attached, removed;
    auto *chart = new IChartArea;
    chart->addPlotter(&attached);
    chart->addPlotter(&removed);
    chart->removePlotter(&removed); // still points at the chart, no longer listed
    QSignalSpy spy(&attached, &IPlotter::chartAreaChanged);
    delete chart;
    QCOMPARE(attached.chartArea(), nullptr);
    QCOMPARE(removed.chartArea(), nullptr);
    QCOMPARE(spy.count(), 1);
    attached.setColor(Qt::blue); // asks a chart for a repaint only if there is one
}

QTEST_MAIN(tst_IChartArea)
#include "tst_ichartarea.moc"
