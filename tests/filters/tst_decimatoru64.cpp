// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Unit tests of the decimating filter: which level reaches the plotters for a
// chart's pixel width and visible rectangle, and how it follows their changes.
#include <vexal/decimatoru64.h>

#include <vexal/ichartarea.h>
#include "testplotter1d.h"
#include "testzoomchart.h"

#include <QtGui/QGuiApplication>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <memory>

namespace {

// 1024 values over an area 1024 units wide: one unit per input cell, 11 levels.
QList<double> ramp(int n)
{
    QList<double> values(n);
    for (int i = 0; i < n; ++i)
        values[i] = i;
    return values;
}

const QRectF RampArea(0, 0, 1024, 1);

} // namespace

class tst_DecimatorU64 : public QObject
{
    Q_OBJECT

private:
    // A decimator fed with the ramp, pushing to a recording plotter.
    struct Tree
    {
        Tree()
        {
            plotterChart.setWidth(10); // plotters need a chart to keep data
            plotter.setChartArea(&plotterChart);
            decimator.addPlotter(&plotter);
            decimator.setArea(RampArea);
            decimator.setData(ramp(1024));
        }
        IChartArea plotterChart;  // holds the plotter only
        TestPlotter1D plotter;    // receives the decimator's output
        DecimatorU64 decimator;   // under test
    };

private slots:
    void withoutAChartTheInputPasses();
    void levelFollowsThePixelWidth_data();
    void levelFollowsThePixelWidth();
    void levelFollowsTheZoom_data();
    void levelFollowsTheZoom();
    void levelFollowsTheChartRectOfAPlainChart();
    void chartsNarrowerThanAPixelAreIgnored();
    void aLevelChangeIsPushedOnce();
    void theChosenLevelIsSharedNotCopied();
    void emptyInputKeepsTheOldData();
    void equalInputIsNotPropagated();
    void shorterInputClampsTheLevel();
    void anEarlierChartNoLongerSteers();
    void aDestroyedChartIsForgotten();
};

void tst_DecimatorU64::withoutAChartTheInputPasses()
{
    Tree tree;
    QCOMPARE(tree.decimator.level(), 0);
    QCOMPARE(tree.decimator.data(), ramp(1024));
    QCOMPARE(tree.decimator.decimator().levelCount(), 11);
    QCOMPARE(tree.plotter.lastData(), ramp(1024));
}

void tst_DecimatorU64::levelFollowsThePixelWidth_data()
{
    QTest::addColumn<double>("pixels");
    QTest::addColumn<int>("level");

    // chartRect 1024 units wide: units per pixel = 1024 / pixels.
    QTest::newRow("2048 pixels show every value") << 2048.0 << 0;
    QTest::newRow("1024 pixels show every value") << 1024.0 << 0;
    QTest::newRow("512 pixels take level 1") << 512.0 << 1;
    QTest::newRow("300 pixels round up to level 2") << 300.0 << 2;
    QTest::newRow("100 pixels take level 4") << 100.0 << 4;
    QTest::newRow("1 pixel takes the last level") << 1.0 << 10;
}

void tst_DecimatorU64::levelFollowsThePixelWidth()
{
    QFETCH(double, pixels);
    QFETCH(int, level);

    Tree tree;
    IChartArea chart;
    chart.setChartRect(RampArea);
    chart.setWidth(pixels);
    tree.decimator.setChartArea(&chart);
    QCOMPARE(tree.decimator.level(), level);
    QVERIFY(tree.decimator.data().isSharedWith(tree.decimator.decimator().level(level)));
    QCOMPARE(tree.plotter.lastData(), tree.decimator.decimator().level(level));

    // Back to full width through widthChanged.
    chart.setWidth(4096);
    QCOMPARE(tree.decimator.level(), 0);
    QCOMPARE(tree.plotter.lastData(), ramp(1024));
}

void tst_DecimatorU64::levelFollowsTheZoom_data()
{
    QTest::addColumn<QRectF>("zoom");
    QTest::addColumn<int>("level");

    // 128 pixels; units per pixel = zoom width / 128.
    QTest::newRow("the whole range takes level 3") << QRectF(0, 0, 1024, 1) << 3;
    QTest::newRow("a 4x zoom takes level 1") << QRectF(0, 0, 256, 1) << 1;
    QTest::newRow("an 8x zoom shows every value") << QRectF(100, 0, 128, 1) << 0;
    QTest::newRow("a zoom-out beyond the data takes the last level") << QRectF(0, 0, 1e9, 1) << 10;
    QTest::newRow("a zero-width zoom shows every value") << QRectF(5, 0, 0, 1) << 0;
}

void tst_DecimatorU64::levelFollowsTheZoom()
{
    QFETCH(QRectF, zoom);
    QFETCH(int, level);

    Tree tree;
    TestZoomChart chart;
    chart.setWidth(128);
    chart.setZoomRect(QRectF(0, 0, 1, 1));
    tree.decimator.setChartArea(&chart);
    QCOMPARE(tree.decimator.level(), 0);

    chart.setZoomRect(zoom);
    QCOMPARE(tree.decimator.level(), level);
    QCOMPARE(tree.plotter.lastData(), tree.decimator.decimator().level(level));
}

void tst_DecimatorU64::levelFollowsTheChartRectOfAPlainChart()
{
    Tree tree;
    IChartArea chart;
    chart.setWidth(128);
    chart.setChartRect(QRectF(0, 0, 128, 1));
    tree.decimator.setChartArea(&chart);
    QCOMPARE(tree.decimator.level(), 0);
    chart.setChartRect(RampArea);
    QCOMPARE(tree.decimator.level(), 3);
}

void tst_DecimatorU64::chartsNarrowerThanAPixelAreIgnored()
{
    Tree tree;
    IChartArea chart;
    chart.setChartRect(RampArea);
    chart.setWidth(0.5);
    tree.decimator.setChartArea(&chart);
    QCOMPARE(tree.decimator.level(), 0);
    chart.setWidth(0.0);
    QCOMPARE(tree.decimator.level(), 0);
}

void tst_DecimatorU64::aLevelChangeIsPushedOnce()
{
    Tree tree;
    IChartArea chart;
    chart.setChartRect(RampArea);
    chart.setWidth(1024);
    tree.decimator.setChartArea(&chart);
    QSignalSpy spy(&tree.decimator, &Filter1D::dataChanged);
    const int calls = tree.plotter.dataCalls();

    chart.setWidth(256); // level 2
    QCOMPARE(spy.size(), 1);
    QCOMPARE(tree.plotter.dataCalls(), calls + 1);
    chart.setWidth(300); // still level 2
    QCOMPARE(spy.size(), 1);

    // New input together with a new level: one push as well.
    tree.decimator.setData(ramp(1024).mid(0, 512) + ramp(512));
    QCOMPARE(spy.size(), 2);
    QCOMPARE(tree.plotter.dataCalls(), calls + 2);
}

void tst_DecimatorU64::theChosenLevelIsSharedNotCopied()
{
    Tree tree;
    IChartArea chart;
    chart.setChartRect(RampArea);
    chart.setWidth(100);
    tree.decimator.setChartArea(&chart);
    const QList<double> &chosen = tree.decimator.decimator().level(tree.decimator.level());
    QVERIFY(tree.plotter.data().isSharedWith(chosen));
}

void tst_DecimatorU64::emptyInputKeepsTheOldData()
{
    Tree tree;
    QSignalSpy spy(&tree.decimator, &Filter1D::dataChanged);
    tree.decimator.setData({});
    QCOMPARE(tree.decimator.data(), ramp(1024));
    QCOMPARE(spy.size(), 0);
}

void tst_DecimatorU64::equalInputIsNotPropagated()
{
    Tree tree;
    QSignalSpy spy(&tree.decimator, &Filter1D::dataChanged);
    tree.decimator.setData(ramp(1024));
    QCOMPARE(spy.size(), 0);
}

void tst_DecimatorU64::shorterInputClampsTheLevel()
{
    Tree tree;
    auto chart = std::make_unique<IChartArea>();
    chart->setChartRect(RampArea);
    chart->setWidth(1);
    tree.decimator.setChartArea(chart.get());
    QCOMPARE(tree.decimator.level(), 10);

    // Without a chart the level is not chosen again: only clamped.
    tree.decimator.setChartArea(nullptr);
    tree.decimator.setData({7.0, 8.0, 9.0});
    QCOMPARE(tree.decimator.decimator().levelCount(), 3);
    QCOMPARE(tree.decimator.level(), 2);
    QCOMPARE(tree.decimator.data(), (QList<double>{9.0}));
    QCOMPARE(tree.plotter.lastData(), (QList<double>{9.0}));
}

void tst_DecimatorU64::anEarlierChartNoLongerSteers()
{
    Tree tree;
    IChartArea first, second;
    for (IChartArea *chart : {&first, &second}) {
        chart->setChartRect(RampArea);
        chart->setWidth(2048);
    }
    tree.decimator.setChartArea(&first);
    tree.decimator.setChartArea(&second);
    first.setWidth(1);
    QCOMPARE(tree.decimator.level(), 0);
    second.setWidth(512);
    QCOMPARE(tree.decimator.level(), 1);
}

void tst_DecimatorU64::aDestroyedChartIsForgotten()
{
    Tree tree;
    auto chart = std::make_unique<IChartArea>();
    chart->setChartRect(RampArea);
    chart->setWidth(512);
    tree.decimator.setChartArea(chart.get());
    QSignalSpy spy(&tree.decimator, &Filter1D::chartAreaChanged);

    chart.reset();
    QCOMPARE(tree.decimator.chartArea(), nullptr);
    QCOMPARE(spy.size(), 1);
    tree.decimator.setData(ramp(100)); // would read the freed chart otherwise
    QCOMPARE(tree.decimator.level(), 1);
    QCOMPARE(tree.decimator.data().size(), 50);
}

QTEST_MAIN(tst_DecimatorU64)
#include "tst_decimatoru64.moc"
