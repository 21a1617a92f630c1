// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Tests of the line plotter: its properties and queries, the line it draws and
// the decimated picture against the raw one.
#include <vexal/ichartarea.h>
#include <vexal/lineplotter.h>
#include "plotterscene.h"
#include "randomwalk.h"

#include <QtGui/QGuiApplication>
#include <QtTest/QTest>

#include <cmath>
#include <limits>

using PlotterTest::background;
using PlotterTest::pixelOf;
using VexalTest::QuickScene;

using PlotterTest::randomWalk;

namespace {

constexpr double Inf = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
const QColor red(255, 0, 0);

// Ten cells 2 units wide in red: cell i is centred at x = 2i + 1.
QByteArray redLine(const QByteArray &extra = QByteArray())
{
    return "        LinePlotter {\n"
           "            objectName: \"line\"\n"
           "            chartArea: chart\n"
           "            color: \"#ff0000\"\n"
           "            plotterArea: Qt.rect(0, 0, 20, 0)\n"
           + extra + "        }\n";
}

// A step from 2 (cells 0-4) to 8 (cells 5-9).
const QList<double> step{2, 2, 2, 2, 2, 8, 8, 8, 8, 8};

bool isBackground(const QColor &c)
{
    return VexalTest::sameColor(c, background);
}

} // namespace

class tst_LinePlotter : public QObject
{
    Q_OBJECT

private slots:
    void defaults();
    void badLineWidthIsStoredAsOne_data();
    void badLineWidthIsStoredAsOne();
    void visibleMinimumAndMaximum();
    void plotterAreaSpansTheSignedData();
    void hoveringFindsTheCellUnderTheMouse();

    void lineRunsThroughCellCentres();
    void negativeValuesAreDrawn();
    void nonFiniteValuesLeaveGaps_data();
    void nonFiniteValuesLeaveGaps();
    void xOffsetMovesTheLineLeft();
    void dataSetBeforeTheChartAreDrawn();
    void lineWidthWidensTheStroke();
    void changesAfterTheFirstFrameShow();
    void twoChartsShowTheirOwnParts();
    void decimatedPictureEqualsTheRawOne_data();
    void decimatedPictureEqualsTheRawOne();
    void badValuesDrawWithoutErrors_data();
    void badValuesDrawWithoutErrors();
};

//-----------------------------------------------------------------------------
// [SECTION] Properties and queries
//-----------------------------------------------------------------------------

void tst_LinePlotter::defaults()
{
    LinePlotter p;
    QCOMPARE(p.lineWidth(), 1.5);
    QCOMPARE(p.decimation(), true);
}

void tst_LinePlotter::badLineWidthIsStoredAsOne_data()
{
    QTest::addColumn<double>("width");
    QTest::newRow("zero width") << 0.0;
    QTest::newRow("negative width") << -2.0;
    QTest::newRow("NaN width") << NaN;
}

void tst_LinePlotter::badLineWidthIsStoredAsOne()
{
    QFETCH(double, width);
    LinePlotter p;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("lineWidth"));
    p.setLineWidth(width);
    QCOMPARE(p.lineWidth(), 1.0);
}

void tst_LinePlotter::visibleMinimumAndMaximum()
{
    IChartArea chart;
    chart.setAdaptAreaToPlotters(false);
    LinePlotter p;
    p.setPlotterArea(QRectF(0, 0, 10, 0));
    p.setChartArea(&chart);
    p.setData({3, -7, 1, 9, -2, 4, 0, 5, -1, 2});
    QCOMPARE(p.max_in(QRectF(0, -10, 10, 20)), 9.0);
    QCOMPARE(p.min_in(QRectF(0, -10, 10, 20)), -7.0);
    QCOMPARE(p.max_in(QRectF(4, -10, 2, 20)), 4.0);
    QCOMPARE(p.min_in(QRectF(4, -10, 2, 20)), -2.0);
}

void tst_LinePlotter::plotterAreaSpansTheSignedData()
{
    LinePlotter p;
    p.setPlotterArea(QRectF(5, 0, 10, 3));
    QCOMPARE(p.plotterArea().left(), 5.0);
    QCOMPARE(p.plotterArea().width(), 10.0);
    p.setData({3, -7, NaN, 9});
    QCOMPARE(p.plotterArea().top(), -7.0);
    QCOMPARE(p.plotterArea().bottom(), 9.0);
    p.setData({-2, -4});
    QCOMPARE(p.plotterArea().top(), -4.0);
    QCOMPARE(p.plotterArea().bottom(), 0.0);
    QCOMPARE(p.plotterArea().left(), 5.0);
}

void tst_LinePlotter::hoveringFindsTheCellUnderTheMouse()
{
    LinePlotter p;
    p.setPlotterArea(QRectF(0, 0, 10, 0));
    p.setData({3, -7, NaN, 9, 1});
    const SInfoPoint negative = p.mouse_hovering(QPointF(3.1, 0));
    QVERIFY(negative.valid);
    QCOMPARE(negative.index, 1);
    QCOMPARE(negative.value, -7.0);
    QCOMPARE(negative.area, QRectF(2, -7, 2, 7));
    const SInfoPoint gap = p.mouse_hovering(QPointF(5, 0));
    QCOMPARE(gap.index, 2);
    QVERIFY(!gap.valid);
    QVERIFY(!p.mouse_hovering(QPointF(11, 0)).valid);
}

//-----------------------------------------------------------------------------
// [SECTION] Pixels
//-----------------------------------------------------------------------------

void tst_LinePlotter::lineRunsThroughCellCentres()
{
    const QImage image = PlotterTest::drawWithData<LinePlotter>(PlotterTest::chartScene(redLine()), "line", step);
    QVERIFY(!image.isNull());
    PLOTTER_COMPARE_PIXEL(image, pixelOf(5, 2), red);
    PLOTTER_COMPARE_PIXEL(image, pixelOf(15, 8), red);
    PLOTTER_COMPARE_PIXEL(image, pixelOf(10, 5), red);        // the step between cells 4 and 5
    PLOTTER_COMPARE_PIXEL(image, pixelOf(5, 8), background);
    PLOTTER_COMPARE_PIXEL(image, pixelOf(0.4, 2), background); // left of the first cell centre
    PLOTTER_COMPARE_PIXEL(image, pixelOf(19.6, 8), background); // right of the last one
}

void tst_LinePlotter::negativeValuesAreDrawn()
{
    const QImage image = PlotterTest::drawWithData<LinePlotter>(
        PlotterTest::chartScene(redLine(), "Qt.rect(0, -10, 20, 20)"), "line", QList<double>(10, -6.0));
    QVERIFY(!image.isNull());
    // Value v shows on row (10 - v) * 5 of the 100 rows.
    PLOTTER_COMPARE_PIXEL(image, QPoint(100, 80), red);
    PLOTTER_COMPARE_PIXEL(image, QPoint(100, 20), background);
}

void tst_LinePlotter::nonFiniteValuesLeaveGaps_data()
{
    QTest::addColumn<double>("bad");
    QTest::newRow("NaN leaves a gap") << NaN;
    QTest::newRow("infinity leaves a gap") << Inf;
    QTest::newRow("minus infinity leaves a gap") << -Inf;
}

void tst_LinePlotter::nonFiniteValuesLeaveGaps()
{
    QFETCH(double, bad);
    QList<double> values(10, 4.0);
    values[5] = bad;
    const QImage image = PlotterTest::drawWithData<LinePlotter>(PlotterTest::chartScene(redLine()), "line", values);
    QVERIFY(!image.isNull());
    PLOTTER_COMPARE_PIXEL(image, pixelOf(3, 4), red);
    PLOTTER_COMPARE_PIXEL(image, pixelOf(11, 4), background); // cell 5
    PLOTTER_COMPARE_PIXEL(image, pixelOf(16, 4), red);
}

void tst_LinePlotter::xOffsetMovesTheLineLeft()
{
    const QImage image = PlotterTest::drawWithData<LinePlotter>(
        PlotterTest::chartScene(redLine("            xOffset: 4\n")), "line", step);
    QVERIFY(!image.isNull());
    PLOTTER_COMPARE_PIXEL(image, pixelOf(6, 5), red); // the step, 4 units left of x = 10
    PLOTTER_COMPARE_PIXEL(image, pixelOf(10, 5), background);
}

void tst_LinePlotter::dataSetBeforeTheChartAreDrawn()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(PlotterTest::chartScene(QByteArray()));
    QVERIFY(scene.isReady());
    auto *chart = scene.find<IChartArea>("chart");
    QVERIFY(chart);
    LinePlotter plotter;
    plotter.setColor(red);
    plotter.setPlotterArea(QRectF(0, 0, 20, 0));
    plotter.setData(step);
    plotter.setChartArea(chart);
    const QImage image = scene.grab();
    plotter.setChartArea(nullptr);
    PLOTTER_COMPARE_PIXEL(image, pixelOf(5, 2), red);
    PLOTTER_COMPARE_PIXEL(image, pixelOf(10, 5), red);
}

void tst_LinePlotter::lineWidthWidensTheStroke()
{
    const QImage image = PlotterTest::drawWithData<LinePlotter>(
        PlotterTest::chartScene(redLine("            lineWidth: 9\n")), "line", QList<double>(10, 5.0));
    QVERIFY(!image.isNull());
    const QPoint centre = pixelOf(10, 5);
    PLOTTER_COMPARE_PIXEL(image, centre + QPoint(0, 3), red);
    PLOTTER_COMPARE_PIXEL(image, centre - QPoint(0, 4), red);
    PLOTTER_COMPARE_PIXEL(image, centre + QPoint(0, 7), background);
    PLOTTER_COMPARE_PIXEL(image, centre - QPoint(0, 7), background);
}

void tst_LinePlotter::changesAfterTheFirstFrameShow()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(PlotterTest::chartScene(redLine()));
    QVERIFY(scene.isReady());
    auto *chart = scene.find<IChartArea>("chart");
    auto *line = scene.find<LinePlotter>("line");
    line->setData(QList<double>(10, 5.0));
    const QPoint centre = pixelOf(10, 5);
    QImage image = scene.grab();
    PLOTTER_COMPARE_PIXEL(image, centre, red);
    PLOTTER_COMPARE_PIXEL(image, centre - QPoint(0, 4), background);
    // A wider stroke in another colour.
    line->setLineWidth(9);
    line->setColor(Qt::blue);
    image = scene.grab();
    PLOTTER_COMPARE_PIXEL(image, centre - QPoint(0, 4), QColor(Qt::blue));
    // New data, then a view of the right half, twice as high: 20 pixels per
    // unit along x, 5 per unit along y.
    line->setData({1, 1, 1, 1, 1, 9, 9, 9, 9, 9});
    chart->setChartRect(QRectF(10, 0, 10, 20));
    chart->requestUpdate();
    image = scene.grab();
    PLOTTER_COMPARE_PIXEL(image, QPoint(100, 100 - 45), QColor(Qt::blue));
    PLOTTER_COMPARE_PIXEL(image, QPoint(100, 100 - 25), background);
    // No decimation, then decimation again: the same line.
    line->setDecimation(false);
    PLOTTER_COMPARE_PIXEL(scene.grab(), QPoint(100, 100 - 45), QColor(Qt::blue));
}

void tst_LinePlotter::twoChartsShowTheirOwnParts()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(R"(
import QtQuick 2.15
import VexalPlugin 1.0
Rectangle {
    color: "#00ff00"
    IChartArea {
        id: leftChart
        objectName: "left"
        width: 100; height: 100
        adaptAreaToPlotters: false
        updateIntervalMs: 0
        LinePlotter {
            objectName: "line"
            chartArea: leftChart
            color: "#ff0000"
            lineWidth: 3
        }
    }
    IChartArea {
        objectName: "right"
        x: 100; width: 100; height: 100
        adaptAreaToPlotters: false
        updateIntervalMs: 0
    }
}
)");
    QVERIFY(scene.isReady());
    auto *left = scene.find<IChartArea>("left");
    auto *right = scene.find<IChartArea>("right");
    auto *line = scene.find<LinePlotter>("line");
    constexpr int Values = 1000000;
    line->setPlotterArea(QRectF(0, 0, Values, 0));
    QList<double> values(Values, -5.0);
    for (int i = Values - 10; i < Values; ++i)
        values[i] = 5.0; // the last ten values are high
    line->setData(values);
    right->setPlotter({line});
    left->setChartRect(QRectF(0, -10, 10, 20));
    right->setChartRect(QRectF(Values - 10, -10, 10, 20));
    left->requestUpdate();
    right->requestUpdate();
    const QImage image = scene.grab();
    // Value v shows on row 50 - 5 v of either chart.
    PLOTTER_COMPARE_PIXEL(image, QPoint(50, 75), red);
    PLOTTER_COMPARE_PIXEL(image, QPoint(50, 25), background);
    PLOTTER_COMPARE_PIXEL(image, QPoint(150, 25), red);
    PLOTTER_COMPARE_PIXEL(image, QPoint(150, 75), background);
}

void tst_LinePlotter::decimatedPictureEqualsTheRawOne_data()
{
    QTest::addColumn<double>("visible"); // samples across the view, centred on the middle

    QTest::newRow("the whole series") << 1e6;
    QTest::newRow("a third of the series") << 3e5;
    QTest::newRow("a tenth of the series") << 1e5;
    QTest::newRow("ten thousand samples") << 1e4;
    QTest::newRow("two thousand samples") << 2e3;
}

void tst_LinePlotter::decimatedPictureEqualsTheRawOne()
{
    QFETCH(double, visible);
    PlotterTest::failOnOpenGLErrors();
    const QList<double> values = randomWalk(1000000, 7);
    QuickScene scene(PlotterTest::chartScene(redLine("            lineWidth: 1\n")), QSize(1200, 400));
    QVERIFY(scene.isReady());
    auto *chart = scene.find<IChartArea>("chart");
    auto *plotter = scene.find<LinePlotter>("line");
    QVERIFY(chart && plotter);
    plotter->setPlotterArea(QRectF(0, 0, double(values.size()), 0));
    plotter->setData(values);
    const double left = (double(values.size()) - visible) / 2.0;
    const QRectF view(left, 0, visible, 1);
    const double min = plotter->min_in(view), max = plotter->max_in(view);
    chart->setChartRect(QRectF(left, min - 1.0, visible, max - min + 2.0));
    chart->requestUpdate();
    const QImage decimated = scene.grab();
    plotter->setDecimation(false);
    const QImage raw = scene.grab();
    QCOMPARE(decimated.size(), raw.size());
    qsizetype differing = 0, drawn = 0;
    for (int y = 0; y < raw.height(); ++y) {
        for (int x = 0; x < raw.width(); ++x) {
            differing += !VexalTest::sameColor(raw.pixelColor(x, y), decimated.pixelColor(x, y));
            drawn += !isBackground(raw.pixelColor(x, y));
        }
    }
    QVERIFY2(drawn > raw.width(), "the raw line draws at least one pixel per column");
    const double share = double(differing) / double(raw.width() * raw.height());
    QVERIFY2(share <= 0.005, QByteArray::number(share * 100.0) + " % of the pixels differ");
}

void tst_LinePlotter::badValuesDrawWithoutErrors_data()
{
    QTest::addColumn<QList<double>>("values");
    QTest::addColumn<QByteArray>("area");

    const QByteArray normal = "Qt.rect(0, 0, 20, 0)";
    QTest::newRow("NaN and infinities") << QList<double>{NaN, Inf, -Inf, 4, NaN} << normal;
    QTest::newRow("denormal values") << QList<double>{4.9e-324, -4.9e-324, 2.2e-310} << normal;
    QTest::newRow("huge values") << QList<double>{1e300, -1e300, 4, 1e308} << normal;
    QTest::newRow("empty data") << QList<double>{} << normal;
    QTest::newRow("a single value") << QList<double>{4} << normal;
    QTest::newRow("a zero-width plotter area") << QList<double>{1, 2, 3} << QByteArray("Qt.rect(5, 0, 0, 0)");
}

void tst_LinePlotter::badValuesDrawWithoutErrors()
{
    QFETCH(QList<double>, values);
    QFETCH(QByteArray, area);
    const QByteArray qml = "        LinePlotter {\n"
                           "            objectName: \"line\"\n"
                           "            chartArea: chart\n"
                           "            color: \"#ff0000\"\n"
                           "            plotterArea: " + area + "\n"
                           "        }\n";
    // The empty list equals the initial data, so the scene is grabbed either way.
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(PlotterTest::chartScene(qml));
    QVERIFY(scene.isReady());
    auto *plotter = scene.find<LinePlotter>("line");
    QVERIFY(plotter);
    plotter->setData(values);
    const QImage image = scene.grab();
    QVERIFY(!image.isNull());
    PLOTTER_COMPARE_PIXEL(image, pixelOf(19.8, 9.8), background); // nothing beyond the last cell
}

VEXAL_GL_TEST_MAIN(tst_LinePlotter)
#include "tst_lineplotter.moc"
