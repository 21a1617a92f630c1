// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Values appended to a plotter: the area widens by one cell per value, the
// data equal the whole list, and the picture equals the one that setData with
// the whole list draws, for bars, areas and lines, on short and long series.
#include <vexal/areaplotter.h>
#include <vexal/barplotter.h>
#include <vexal/barplotterdx.h>
#include <vexal/filter1d.h>
#include <vexal/ichartarea.h>
#include <vexal/lineplotter.h>
#include "plotterscene.h"

#include <QtGui/QGuiApplication>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

using PlotterTest::background;
using VexalTest::QuickScene;

namespace {

// A red plotter of the given type named "series" over x 0 to 10 of a chart
// 20 wide (10 pixels per unit), values 0 to 10; areas without their border,
// which would cover thin peaks in its own colour.
QByteArray seriesScene(const QByteArray &type)
{
    const QByteArray border = type == "AreaPlotter" ? "            borderEnable: false\n" : "";
    return PlotterTest::chartScene("        " + type + " {\n"
                                   "            objectName: \"series\"\n"
                                   "            chartArea: chart\n"
                                   "            color: \"#ff0000\"\n"
                                   "            plotterArea: Qt.rect(0, 0, 10, 0)\n"
                                   + border + "        }\n");
}

QList<double> ramp(int count, double from)
{
    QList<double> values;
    for (int i = 0; i < count; ++i)
        values << from + (i % 7);
    return values;
}

// True when both pictures have the same colour at every pixel.
bool samePicture(const QImage &a, const QImage &b, QByteArray &where)
{
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            if (!VexalTest::sameColor(a.pixelColor(x, y), b.pixelColor(x, y))) {
                where = PlotterTest::pixelMessage(QPoint(x, y), a.pixelColor(x, y), b.pixelColor(x, y));
                return false;
            }
        }
    }
    return true;
}

} // namespace

class tst_AppendData : public QObject
{
    Q_OBJECT

private slots:
    void areaWidensByOneCellPerValue_data();
    void areaWidensByOneCellPerValue();
    void emptyAppendChangesNothing();
    void clearEmptiesTheData();
    void appendedPictureEqualsTheWholeList_data();
    void appendedPictureEqualsTheWholeList();
    void manyAppendsToALongSeriesShowTheNewPeaks_data();
    void manyAppendsToALongSeriesShowTheNewPeaks();
    void aSlidingWindowShowsLikeItsValuesSetWhole_data();
    void aSlidingWindowShowsLikeItsValuesSetWhole();
    void theNewestValuesOfABurstAreDrawnAtTheEndOfTheInterval();
};

void tst_AppendData::areaWidensByOneCellPerValue_data()
{
    QTest::addColumn<QRectF>("area");
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("appended");
    QTest::addColumn<double>("expectedWidth");

    QTest::newRow("cells of half a unit widen by half a unit each") << QRectF(3, 0, 5, 2) << 10 << 4 << 7.0;
    QTest::newRow("a plotter without values takes cells one unit wide") << QRectF(3, 0, 5, 2) << 0 << 4 << 9.0;
    QTest::newRow("an area without width takes cells one unit wide") << QRectF(3, 0, 0, 0) << 10 << 4 << 4.0;
}

void tst_AppendData::areaWidensByOneCellPerValue()
{
    QFETCH(QRectF, area);
    QFETCH(int, before);
    QFETCH(int, appended);
    QFETCH(double, expectedWidth);

    BarPlotter bars;
    bars.setPlotterArea(area);
    bars.setData(ramp(before, 1));
    QSignalSpy areaSpy(&bars, &IPlotter::plotterAreaChanged);
    QSignalSpy dataSpy(&bars, &IPlotter::dataChanged);
    bars.appendData(ramp(appended, 1));
    QCOMPARE(bars.data().size(), before + appended);
    QCOMPARE(bars.plotterArea().left(), 3.0);
    QCOMPARE(bars.plotterArea().width(), expectedWidth);
    QCOMPARE(areaSpy.count(), 1);
    QCOMPARE(dataSpy.count(), 1);
}

void tst_AppendData::emptyAppendChangesNothing()
{
    LinePlotter line;
    line.setPlotterArea(QRectF(0, 0, 10, 0));
    line.setData({1, 2, 3});
    QSignalSpy dataSpy(&line, &IPlotter::dataChanged);
    line.appendData({});
    QCOMPARE(dataSpy.count(), 0);
    QCOMPARE(line.data(), QList<double>({1, 2, 3}));
    QCOMPARE(line.plotterArea().width(), 10.0);
}

void tst_AppendData::clearEmptiesTheData()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(seriesScene("BarPlotter"));
    QVERIFY(scene.isReady());
    auto *bars = scene.find<BarPlotter>("series");
    bars->setData(QList<double>(10, 5.0));
    PLOTTER_COMPARE_PIXEL(scene.grab(), PlotterTest::pixelOf(5, 2), QColor(Qt::red));
    QSignalSpy dataSpy(bars, &IPlotter::dataChanged);
    bars->clear();
    QVERIFY(bars->data().isEmpty());
    QCOMPARE(dataSpy.count(), 1);
    PLOTTER_COMPARE_PIXEL(scene.grab(), PlotterTest::pixelOf(5, 2), background);
}

void tst_AppendData::appendedPictureEqualsTheWholeList_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::newRow("bars appended show like the whole list") << QByteArray("BarPlotter");
    QTest::newRow("areas appended show like the whole list") << QByteArray("AreaPlotter");
    QTest::newRow("lines appended show like the whole list") << QByteArray("LinePlotter");
    QTest::newRow("bars with widths appended show like the whole list") << QByteArray("BarPlotterDx");
}

void tst_AppendData::appendedPictureEqualsTheWholeList()
{
    QFETCH(QByteArray, type);
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(seriesScene(type));
    QVERIFY(scene.isReady());
    auto *series = scene.find<IPlotter>("series");
    const QList<double> head = ramp(10, 1);
    const QList<double> tail = ramp(10, 2);
    series->setData(head);
    scene.grab(); // a frame of the first values: the append must replace what it drew
    series->appendData(tail);
    const QImage appended = scene.grab();
    const QRectF area = series->plotterArea();
    if (type != "BarPlotterDx") {
        // The new values show right of the old ones: value 7 in cell 15.
        QCOMPARE(area.width(), 20.0);
        PLOTTER_COMPARE_PIXEL(appended, PlotterTest::pixelOf(15.5, 6.95), QColor(Qt::red));
    } else {
        // Bars with widths span the sum of their widths, at even positions.
        double widths = 0.0;
        const QList<double> all = head + tail;
        for (qsizetype i = 0; i < all.size(); i += 2)
            widths += all[i];
        QCOMPARE(area.width(), widths);
    }

    series->setData({});
    series->setPlotterArea(area);
    series->setData(head + tail);
    QByteArray where;
    QVERIFY2(samePicture(appended, scene.grab(), where), where.constData());
}

void tst_AppendData::manyAppendsToALongSeriesShowTheNewPeaks_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::newRow("bars narrower than a pixel show appended peaks") << QByteArray("BarPlotter");
    QTest::newRow("areas narrower than a pixel show appended peaks") << QByteArray("AreaPlotter");
    QTest::newRow("lines narrower than a pixel show appended peaks") << QByteArray("LinePlotter");
}

void tst_AppendData::manyAppendsToALongSeriesShowTheNewPeaks()
{
    QFETCH(QByteArray, type);
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(seriesScene(type));
    QVERIFY(scene.isReady());
    auto *chart = scene.find<IChartArea>("chart");
    auto *series = scene.find<IPlotter>("series");
    // 1e6 values of 1 over x 0 to 10, then 100 appends of 10 000 values of 1
    // (a pixel each), the middle value of every tenth append at 9: the series
    // ends at x 20.
    series->setData(QList<double>(1000000, 1.0));
    scene.grab(); // zoomed-out frames build the stored levels of the first values
    for (int k = 0; k < 100; ++k) {
        QList<double> values(10000, 1.0);
        if (k % 10 == 9)
            values[5000] = 9.0;
        series->appendData(values);
        if (k % 25 == 0)
            scene.grab();
    }
    QCOMPARE(series->plotterArea().width(), 20.0);
    chart->requestUpdate();
    const QImage image = scene.grab();
    // The peak of append k = 10 p - 1 is at pixel 100 + 10 p - 0.5; the
    // values around it stay at 1. An area peaks at its groups' left edges and
    // falls within a group (1.6 pixels here), so value 5 is looked at.
    const int row = PlotterTest::pixelOf(0, 5).y();
    for (int peak = 1; peak <= 10; ++peak) {
        bool found = false;
        for (int x = 100 + 10 * peak - 3; x <= std::min(199, 100 + 10 * peak + 1); ++x)
            found = found || VexalTest::sameColor(image.pixelColor(x, row), QColor(Qt::red));
        QVERIFY2(found, qPrintable(QStringLiteral("appended peak %1 is lost").arg(peak)));
    }
    PLOTTER_COMPARE_PIXEL(image, QPoint(145, row), background);
}

void tst_AppendData::aSlidingWindowShowsLikeItsValuesSetWhole_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::newRow("bars of a window show like its values") << QByteArray("BarPlotter");
    QTest::newRow("areas of a window show like its values") << QByteArray("AreaPlotter");
    QTest::newRow("lines of a window show like its values") << QByteArray("LinePlotter");
}

void tst_AppendData::aSlidingWindowShowsLikeItsValuesSetWhole()
{
    QFETCH(QByteArray, type);
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(seriesScene(type));
    QVERIFY(scene.isReady());
    auto *series = scene.find<IPlotter1D>("series");
    // Ten values over x 0 to 10, then five more: the window of ten keeps the
    // last ten, over x 5 to 15, the high first ones gone.
    Filter1D root;
    root.setCapacity(10);
    root.setArea(QRectF(0, 0, 10, 0));
    root.addPlotter(series);
    root.setData(QList<double>(10, 9.0));
    scene.grab(); // a frame of the first values: the drop must replace what it drew
    const QList<double> tail = ramp(5, 1);
    root.appendData(tail);
    QCOMPARE(series->plotterArea().left(), 5.0);
    QCOMPARE(series->plotterArea().right(), 15.0);
    const QImage windowed = scene.grab();
    PLOTTER_COMPARE_PIXEL(windowed, PlotterTest::pixelOf(2.5, 1), background);
    PLOTTER_COMPARE_PIXEL(windowed, PlotterTest::pixelOf(7.5, 8.95), QColor(Qt::red));

    root.removePlotter(series);
    series->setData({});
    series->setPlotterArea(QRectF(5, 0, 10, 0));
    series->setData(QList<double>(5, 9.0) + tail);
    QByteArray where;
    QVERIFY2(samePicture(windowed, scene.grab(), where), where.constData());
}

void tst_AppendData::theNewestValuesOfABurstAreDrawnAtTheEndOfTheInterval()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(seriesScene("BarPlotter"));
    QVERIFY(scene.isReady());
    auto *chart = scene.find<IChartArea>("chart");
    auto *series = scene.find<IPlotter>("series");
    chart->setUpdateIntervalMs(300);
    series->setData(QList<double>(10, 9.0));
    scene.grab(); // the first request is drawn at once and starts the interval
    // A burst inside the interval: only the newest values matter, and no
    // later change comes to draw them.
    series->setData(QList<double>(10, 5.0));
    series->appendData({2.0});
    series->setData(QList<double>(10, 2.0));
    QTest::qWait(600);
    const QImage image = scene.grab();
    PLOTTER_COMPARE_PIXEL(image, PlotterTest::pixelOf(5.5, 1), QColor(Qt::red));
    PLOTTER_COMPARE_PIXEL(image, PlotterTest::pixelOf(5.5, 4), background);
}

VEXAL_GL_TEST_MAIN(tst_AppendData)

#include "tst_appenddata.moc"
