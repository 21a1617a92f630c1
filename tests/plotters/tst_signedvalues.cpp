// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Signed data in views that reach below 0: bars, bars with widths and areas
// stand on the value 0 (negative ones hang down from it), groups narrower than
// a pixel keep their troughs, and a chart that spans the visible values shows
// both halves of a signed line. Checked by pixels.
#include <vexal/chartarea.h>
#include <vexal/ichartarea.h>
#include <vexal/iplotter.h>
#include <vexal/lineplotter.h>
#include "plotterscene.h"

#include <QtGui/QGuiApplication>
#include <QtTest/QTest>

#include <cmath>

using PlotterTest::background;
using VexalTest::QuickScene;

namespace {

// The chart shows values -5 to 5 over x 0 to 20: 10 pixels per unit.
const QByteArray SignedRect = "Qt.rect(0, -5, 20, 10)";

int rowOf(double value)
{
    return int(100.0 - (value + 5.0) * 10.0);
}

// A red plotter of the given type named "series" over x 0 to 20.
QByteArray seriesScene(const QByteArray &type, const QByteArray &extra = QByteArray())
{
    return PlotterTest::chartScene("        " + type + " {\n"
                                   "            objectName: \"series\"\n"
                                   "            chartArea: chart\n"
                                   "            color: \"#ff0000\"\n"
                                   "            plotterArea: Qt.rect(0, 0, 20, 0)\n"
                                   + extra + "        }\n",
                                   SignedRect);
}

// The values of cells 2 units wide: +2, -3, +4, -2, ...
QList<double> alternating()
{
    QList<double> values;
    for (int k = 0; k < 10; ++k)
        values << (k % 2 ? -1.0 : 1.0) * (2 + k % 3);
    return values;
}

// Every value is drawn from 0 to itself in its cell (2 units, 20 pixels
// wide), and nothing beyond either end.
void verifyColumnsFromZero(const QImage &image, const QList<double> &values)
{
    for (int k = 0; k < values.size(); ++k) {
        const int x = k * 20 + 5; // where the area's two samples of value k are joined
        const double v = values[k];
        const double sign = v < 0 ? -1.0 : 1.0;
        PLOTTER_COMPARE_PIXEL(image, QPoint(x, rowOf(v / 2.0)), QColor(Qt::red));
        PLOTTER_COMPARE_PIXEL(image, QPoint(x, rowOf(v + 0.4 * sign)), background);
        PLOTTER_COMPARE_PIXEL(image, QPoint(x, rowOf(-0.6 * sign)), background);
    }
}

// A zoomable chart named "chart" over a green background, with extra
// properties and a plotter.
QByteArray zoomableScene(const QByteArray &properties, const QByteArray &plotter)
{
    return "import QtQuick 2.15\n"
           "import VexalPlugin 1.0\n"
           "Rectangle {\n"
           "    color: \"#00ff00\"\n"
           "    ChartArea {\n"
           "        id: chart\n"
           "        objectName: \"chart\"\n"
           "        anchors.fill: parent\n"
           "        updateIntervalMs: 0\n"
           + properties + plotter +
           "    }\n"
           "}\n";
}

bool isRed(const QImage &image, int x, int y)
{
    return VexalTest::sameColor(image.pixelColor(x, y), QColor(Qt::red));
}

} // namespace

class tst_SignedValues : public QObject
{
    Q_OBJECT

private slots:
    void barsAndAreasStandOnZero_data();
    void barsAndAreasStandOnZero();
    void narrowGroupsKeepTheirTroughs_data();
    void narrowGroupsKeepTheirTroughs();
    void positiveViewsKeepBarsFromTheBottomEdge();
    void signedLineShowsBothHalvesInASpanningChart();
    void switchingIncludeZeroAfterTheFirstFrameRedrawsTheBars();
};

void tst_SignedValues::barsAndAreasStandOnZero_data()
{
    QTest::addColumn<QByteArray>("qml");
    QTest::addColumn<bool>("pairs"); // data are width/value pairs

    QTest::newRow("negative bars hang down from 0") << seriesScene("BarPlotter") << false;
    QTest::newRow("negative bars with widths hang down from 0") << seriesScene("BarPlotterDx") << true;
    QTest::newRow("areas fill between the values and 0")
        << seriesScene("AreaPlotter", "            borderEnable: false\n") << false;
}

void tst_SignedValues::barsAndAreasStandOnZero()
{
    QFETCH(QByteArray, qml);
    QFETCH(bool, pairs);
    // Areas join samples at the left edges of their cells: each value is
    // given twice, so that the area is flat at it across half its cell.
    const QList<double> shown = alternating();
    QList<double> values;
    for (double v : shown) {
        if (pairs)
            values << 2.0 << v;
        else if (qml.contains("AreaPlotter"))
            values << v << v;
        else
            values << v;
    }
    const QImage image = PlotterTest::drawWithData<IPlotter>(qml, "series", values);
    QVERIFY(!image.isNull());
    verifyColumnsFromZero(image, shown);
}

void tst_SignedValues::narrowGroupsKeepTheirTroughs_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::newRow("bars narrower than a pixel keep a single deep trough") << QByteArray("BarPlotter");
    QTest::newRow("areas narrower than a pixel keep a single deep trough") << QByteArray("AreaPlotter");
}

void tst_SignedValues::narrowGroupsKeepTheirTroughs()
{
    QFETCH(QByteArray, type);
    constexpr int Samples = 1000000;
    constexpr int Trough = 700001;
    QList<double> values(Samples);
    for (int i = 0; i < Samples; ++i)
        values[i] = i % 2 ? -2.0 : 2.0;
    values[Trough] = -4.5;
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(seriesScene(type));
    QVERIFY(scene.isReady());
    scene.find<IPlotter>("series")->setData(values);
    const QImage image = scene.grab();
    // Every column spans -2 to 2; the trough's column reaches further down.
    for (int x : {20, 100, 180}) {
        PLOTTER_COMPARE_PIXEL(image, QPoint(x, rowOf(1.5)), QColor(Qt::red));
        PLOTTER_COMPARE_PIXEL(image, QPoint(x, rowOf(-1.5)), QColor(Qt::red));
        PLOTTER_COMPARE_PIXEL(image, QPoint(x, rowOf(-3.0)), background);
    }
    const int troughColumn = int(Trough * 200.0 / Samples);
    bool found = false;
    for (int x = troughColumn - 1; x <= troughColumn + 1; ++x)
        found = found || isRed(image, x, rowOf(-3.5));
    QVERIFY2(found, "the single deep trough is lost");
}

void tst_SignedValues::positiveViewsKeepBarsFromTheBottomEdge()
{
    // A view from 100 to 110: the bars reach up from below the bottom edge to
    // their values.
    const QImage image = PlotterTest::drawWithData<IPlotter>(
        PlotterTest::chartScene("        BarPlotter {\n"
                                "            objectName: \"series\"\n"
                                "            chartArea: chart\n"
                                "            color: \"#ff0000\"\n"
                                "            plotterArea: Qt.rect(0, 0, 20, 0)\n"
                                "        }\n",
                                "Qt.rect(0, 100, 20, 10)"),
        "series", {104, 108});
    QVERIFY(!image.isNull());
    PLOTTER_COMPARE_PIXEL(image, QPoint(50, 100 - 35), QColor(Qt::red));
    PLOTTER_COMPARE_PIXEL(image, QPoint(50, 100 - 45), background);
    PLOTTER_COMPARE_PIXEL(image, QPoint(150, 100 - 75), QColor(Qt::red));
    PLOTTER_COMPARE_PIXEL(image, QPoint(150, 100 - 85), background);
}

void tst_SignedValues::signedLineShowsBothHalvesInASpanningChart()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(zoomableScene("        includeZero: false\n",
                                   "        LinePlotter {\n"
                                   "            objectName: \"line\"\n"
                                   "            chartArea: chart\n"
                                   "            color: \"#ff0000\"\n"
                                   "            lineWidth: 2\n"
                                   "            plotterArea: Qt.rect(0, 0, 1000, 0)\n"
                                   "        }\n"));
    QVERIFY(scene.isReady());
    auto *chart = scene.find<ChartArea>("chart");
    auto *line = scene.find<LinePlotter>("line");
    QList<double> sine(1000);
    for (int i = 0; i < sine.size(); ++i)
        sine[i] = std::sin(2.0 * M_PI * i / 250.0);
    line->setData(sine);
    chart->resetZoomView();
    QImage image = scene.grab();
    QTRY_VERIFY(chart->zoomRect().top() < -1.0);
    image = scene.grab();
    QVERIFY2(chart->zoomRect().bottom() > 1.0, QByteArray::number(chart->zoomRect().bottom()));
    // Troughs of the sine near the bottom edge, crests near the top: a red
    // pixel in the lowest and the highest tenth of the chart.
    int lowRed = 0, highRed = 0;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < 10; ++y)
            highRed += isRed(image, x, y);
        for (int y = 90; y < 100; ++y)
            lowRed += isRed(image, x, y);
    }
    QVERIFY2(highRed > 0 && lowRed > 0,
             QByteArray::number(highRed) + " red pixels at the top, " + QByteArray::number(lowRed) + " at the bottom");
}

void tst_SignedValues::switchingIncludeZeroAfterTheFirstFrameRedrawsTheBars()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(zoomableScene("",
                                   "        BarPlotter {\n"
                                   "            objectName: \"bars\"\n"
                                   "            chartArea: chart\n"
                                   "            color: \"#ff0000\"\n"
                                   "            plotterArea: Qt.rect(0, 0, 2, 0)\n"
                                   "        }\n"));
    QVERIFY(scene.isReady());
    auto *chart = scene.find<ChartArea>("chart");
    scene.find<IPlotter>("bars")->setData({4, -4});
    chart->resetZoomView();
    // From 0 up: only the positive bar shows, filling its column to 4 / 4.2.
    QTRY_COMPARE(chart->zoomRect().top(), 0.0);
    QImage image = scene.grab();
    PLOTTER_COMPARE_PIXEL(image, QPoint(50, 60), QColor(Qt::red));
    PLOTTER_COMPARE_PIXEL(image, QPoint(150, 60), background);
    // Spanning the values (-4.4 to 4.4): the negative bar hangs from the middle.
    chart->setIncludeZero(false);
    QTRY_VERIFY(chart->zoomRect().top() < -4.0);
    image = scene.grab();
    PLOTTER_COMPARE_PIXEL(image, QPoint(50, 25), QColor(Qt::red));
    PLOTTER_COMPARE_PIXEL(image, QPoint(50, 75), background);
    PLOTTER_COMPARE_PIXEL(image, QPoint(150, 75), QColor(Qt::red));
    PLOTTER_COMPARE_PIXEL(image, QPoint(150, 25), background);
    // And back.
    chart->setIncludeZero(true);
    QTRY_COMPARE(chart->zoomRect().top(), 0.0);
    image = scene.grab();
    PLOTTER_COMPARE_PIXEL(image, QPoint(150, 60), background);
    PLOTTER_COMPARE_PIXEL(image, QPoint(50, 60), QColor(Qt::red));
}

VEXAL_GL_TEST_MAIN(tst_SignedValues)

#include "tst_signedvalues.moc"
