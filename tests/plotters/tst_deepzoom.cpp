// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Long series seen at every zoom depth: each chart draws a window of bars or
// samples around its view, and groups at their peak where many share a pixel
// column. Checked by pixels for bar and area plotters.
#include <vexal/areaplotter.h>
#include <vexal/barplotter.h>
#include <vexal/barplotterdx.h>
#include <vexal/ichartarea.h>
#include <vexal/lineplotter.h>
#include "plotterscene.h"

#include <QtGui/QGuiApplication>
#include <QtTest/QTest>

using PlotterTest::background;
using VexalTest::QuickScene;

namespace {

constexpr int Samples = 1000000;    // long enough for windows and groups to matter
constexpr int Middle = 500000;      // where the zoomed views start
constexpr double ViewHeight = 10.0; // value range of every view: 10 pixels per unit

// A red plotter named "series" over all samples, one unit per sample.
QByteArray seriesScene(const QString &kind)
{
    const bool area = kind == QLatin1String("area");
    const bool line = kind == QLatin1String("line");
    const QByteArray type = area ? "AreaPlotter" : line ? "LinePlotter" : "BarPlotter";
    const QByteArray extra = area ? "borderEnable: false\n" : line ? "lineWidth: 2\n" : "";
    return PlotterTest::chartScene("        " + type + " {\n"
                                   "            objectName: \"series\"\n"
                                   "            chartArea: chart\n"
                                   "            color: \"#ff0000\"\n"
                                   "            " + extra +
                                   "            plotterArea: Qt.rect(0, 0, " + QByteArray::number(Samples) + ", 0)\n"
                                   "        }\n");
}

// Sample i is 1 + (i + shift) % 7: neighbours always differ.
QList<double> staircase(int shift = 0)
{
    QList<double> values(Samples);
    for (int i = 0; i < Samples; ++i)
        values[i] = 1 + (i + shift) % 7;
    return values;
}

// The pixel row that shows value y on a view ViewHeight high (100 pixels).
int rowOf(double y)
{
    return int(100.0 - y * 100.0 / ViewHeight);
}

// Checks that every bar of a view 20 samples wide from first stands at its
// value: red just below it, background just above it.
void verifyBars(const QImage &image, const QList<double> &values, int first)
{
    for (int k = 0; k < 20; ++k) {
        const int x = k * 10 + 5; // the bar's middle column
        const double v = values[first + k];
        PLOTTER_COMPARE_PIXEL(image, QPoint(x, rowOf(v - 0.3)), QColor(Qt::red));
        PLOTTER_COMPARE_PIXEL(image, QPoint(x, rowOf(v + 0.3)), background);
    }
}

// Looks at the pixel columns around x: is any of them red at value y?
bool redNear(const QImage &image, double x, double y)
{
    for (int column = int(x) - 2; column <= int(x) + 2; ++column) {
        if (column >= 0 && column < image.width()
            && VexalTest::sameColor(image.pixelColor(column, rowOf(y)), QColor(Qt::red))) {
            return true;
        }
    }
    return false;
}

QRectF samplesView(double first, double count)
{
    return QRectF(first, 0, count, ViewHeight);
}

// Shows count samples from first. The chart's rectangle asks for no redraw
// by itself: the caller asks, as an application moving the view would.
void showSamples(IChartArea *chart, double first, double count)
{
    chart->setChartRect(samplesView(first, count));
    chart->requestUpdate();
}

} // namespace

class tst_DeepZoom : public QObject
{
    Q_OBJECT

private slots:
    void barsAcrossWindowEdgesAndPans();
    void zoomInToSingleSamplesAndOutAgain_data();
    void zoomInToSingleSamplesAndOutAgain();
    void dataChangeWhileZoomedIn_data();
    void dataChangeWhileZoomedIn();
    void barsWithWidthsKeepTheirPeaksWhenNarrow();
    void twoChartsInOneWindowShowTheirOwnParts();
};

void tst_DeepZoom::barsAcrossWindowEdgesAndPans()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(seriesScene(QStringLiteral("bars")));
    QVERIFY(scene.isReady());
    auto *chart = scene.find<IChartArea>("chart");
    const QList<double> values = staircase();
    scene.find<BarPlotter>("series")->setData(values);

    // Zoomed into 20 bars: the window holds [Middle - 20, Middle + 40).
    showSamples(chart, Middle, 20);
    verifyBars(scene.grab(), values, Middle);
    // Inside the window, up to its right edge: the window's last bars.
    showSamples(chart, Middle + 20, 20);
    verifyBars(scene.grab(), values, Middle + 20);
    // Down to its left edge: the window's first bars.
    showSamples(chart, Middle - 20, 20);
    verifyBars(scene.grab(), values, Middle - 20);
    // Across its right edge: a new window.
    showSamples(chart, Middle + 30, 20);
    verifyBars(scene.grab(), values, Middle + 30);
    // Far away and back.
    showSamples(chart, Samples - 20, 20);
    verifyBars(scene.grab(), values, Samples - 20);
    showSamples(chart, 0, 20);
    verifyBars(scene.grab(), values, 0);
}

void tst_DeepZoom::zoomInToSingleSamplesAndOutAgain_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("bars keep a single high sample visible at every depth") << QStringLiteral("bars");
    QTest::newRow("areas keep a single high sample visible at every depth") << QStringLiteral("area");
    QTest::newRow("lines keep a single high sample visible at every depth") << QStringLiteral("line");
}

void tst_DeepZoom::zoomInToSingleSamplesAndOutAgain()
{
    QFETCH(QString, kind);
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(seriesScene(kind));
    QVERIFY(scene.isReady());
    auto *chart = scene.find<IChartArea>("chart");
    QList<double> values(Samples, 1.0);
    const int spike = 700001; // one sample at 9, the rest at 1
    values[spike] = 9.0;
    scene.find<IPlotter>("series")->setData(values);

    // 5,000 samples per pixel: the column of the spike shows its peak.
    const auto verifyWholeView = [&] {
        showSamples(chart, 0, Samples);
        const QImage image = scene.grab();
        const double spikeColumn = spike * 200.0 / Samples;
        QVERIFY2(redNear(image, spikeColumn, 6.0), "the single high sample is lost");
        // Bars and areas are filled below the values, a line runs through them.
        PLOTTER_COMPARE_PIXEL(image, QPoint(50, rowOf(kind == QLatin1String("line") ? 1.0 : 0.5)), QColor(Qt::red));
        PLOTTER_COMPARE_PIXEL(image, QPoint(50, rowOf(2.0)), background);
    };
    verifyWholeView();
    // Zooming in by factors of ten with the spike in the middle of the view.
    for (double width = Samples / 10.0; width >= 10; width /= 10.0) {
        showSamples(chart, spike - width / 2, width);
        QVERIFY2(redNear(scene.grab(), 100.0, 6.0), qPrintable(QStringLiteral("lost at %1").arg(width)));
    }
    showSamples(chart, spike - 1, 4);
    const QImage closest = scene.grab();
    if (kind == QLatin1String("bars")) {
        PLOTTER_COMPARE_PIXEL(closest, QPoint(75, rowOf(8.5)), QColor(Qt::red)); // the spike, 50 pixels wide
        PLOTTER_COMPARE_PIXEL(closest, QPoint(25, rowOf(1.5)), background);       // its neighbours at 1
        PLOTTER_COMPARE_PIXEL(closest, QPoint(125, rowOf(1.5)), background);
    } else if (kind == QLatin1String("line")) {
        // Cell centres at x 25, 75, 125, 175: the line rises from 1 to the
        // spike's 9 at x 75 and falls back to 1 at x 125.
        PLOTTER_COMPARE_PIXEL(closest, QPoint(50, rowOf(5.0)), QColor(Qt::red));
        PLOTTER_COMPARE_PIXEL(closest, QPoint(100, rowOf(5.0)), QColor(Qt::red));
        PLOTTER_COMPARE_PIXEL(closest, QPoint(25, rowOf(5.0)), background);
        PLOTTER_COMPARE_PIXEL(closest, QPoint(150, rowOf(5.0)), background);
    } else {
        // The area rises from sample spike - 1 at x 0 to the spike at x 50 and
        // falls to the next sample at x 100.
        PLOTTER_COMPARE_PIXEL(closest, QPoint(50, rowOf(8.5)), QColor(Qt::red));
        PLOTTER_COMPARE_PIXEL(closest, QPoint(10, rowOf(5.0)), background);
        PLOTTER_COMPARE_PIXEL(closest, QPoint(150, rowOf(1.5)), background);
    }
    verifyWholeView();
}

void tst_DeepZoom::dataChangeWhileZoomedIn_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("bars show the new values at once") << QStringLiteral("bars");
    QTest::newRow("areas show the new values at once") << QStringLiteral("area");
}

void tst_DeepZoom::dataChangeWhileZoomedIn()
{
    QFETCH(QString, kind);
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(seriesScene(kind));
    QVERIFY(scene.isReady());
    auto *chart = scene.find<IChartArea>("chart");
    auto *series = scene.find<IPlotter>("series");
    series->setData(QList<double>(Samples, 2.0));
    showSamples(chart, Middle, 20);
    PLOTTER_COMPARE_PIXEL(scene.grab(), QPoint(100, rowOf(1.5)), QColor(Qt::red));

    series->setData(QList<double>(Samples, 6.0));
    const QImage image = scene.grab();
    for (int x : {5, 100, 195}) {
        PLOTTER_COMPARE_PIXEL(image, QPoint(x, rowOf(5.5)), QColor(Qt::red));
        PLOTTER_COMPARE_PIXEL(image, QPoint(x, rowOf(6.5)), background);
    }
    if (kind == QLatin1String("bars")) {
        const QList<double> stairs = staircase(3);
        series->setData(stairs);
        verifyBars(scene.grab(), stairs, Middle);
    }
}

void tst_DeepZoom::barsWithWidthsKeepTheirPeaksWhenNarrow()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(PlotterTest::chartScene(R"(
        BarPlotterDx {
            objectName: "pairs"
            chartArea: chart
            color: "#ff0000"
        }
)"));
    QVERIFY(scene.isReady());
    auto *chart = scene.find<IChartArea>("chart");
    // 200,000 bars 0.5 units wide, all at 1 but one at 9.
    QList<double> pairs;
    pairs.reserve(400000);
    for (int k = 0; k < 200000; ++k)
        pairs << 0.5 << (k == 150001 ? 9.0 : 1.0);
    scene.find<BarPlotterDx>("pairs")->setData(pairs);
    showSamples(chart, 0, 100000);
    const QImage whole = scene.grab();
    QVERIFY2(redNear(whole, 150001 * 0.5 * 200.0 / 100000, 8.0), "the single high bar is lost");
    PLOTTER_COMPARE_PIXEL(whole, QPoint(20, rowOf(0.5)), QColor(Qt::red));
    PLOTTER_COMPARE_PIXEL(whole, QPoint(20, rowOf(1.5)), background);
    // Ten bars: each 20 pixels wide at its own height.
    showSamples(chart, 150001 * 0.5 - 2.0, 5);
    const QImage close = scene.grab();
    PLOTTER_COMPARE_PIXEL(close, QPoint(90, rowOf(8.5)), QColor(Qt::red));
    PLOTTER_COMPARE_PIXEL(close, QPoint(70, rowOf(1.5)), background);
    PLOTTER_COMPARE_PIXEL(close, QPoint(110, rowOf(1.5)), background);
}

void tst_DeepZoom::twoChartsInOneWindowShowTheirOwnParts()
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
        x: 0; width: 100; height: 100
        adaptAreaToPlotters: false
        updateIntervalMs: 0
        BarPlotter {
            objectName: "series"
            chartArea: leftChart
            color: "#ff0000"
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
    auto *series = scene.find<BarPlotter>("series");
    series->setPlotterArea(QRectF(0, 0, Samples, 0));
    QList<double> values(Samples, 2.0);
    for (int i = 0; i < 10; ++i)
        values[Samples - 10 + i] = 8.0; // the last ten bars are high
    series->setData(values);
    right->setPlotter({series});
    // Left: the first ten bars; right: the last ten.
    showSamples(left, 0, 10);
    showSamples(right, Samples - 10, 10);
    const QImage image = scene.grab();
    for (int x : {5, 50, 95}) {
        PLOTTER_COMPARE_PIXEL(image, QPoint(x, rowOf(1.5)), QColor(Qt::red));
        PLOTTER_COMPARE_PIXEL(image, QPoint(x, rowOf(2.5)), background);
        PLOTTER_COMPARE_PIXEL(image, QPoint(100 + x, rowOf(7.5)), QColor(Qt::red));
        PLOTTER_COMPARE_PIXEL(image, QPoint(100 + x, rowOf(8.5)), background);
    }
}

VEXAL_GL_TEST_MAIN(tst_DeepZoom)

#include "tst_deepzoom.moc"
