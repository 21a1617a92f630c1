// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// The complete chart view rendered in a window: pixels chosen from the layout
// (chart area, axis labels, navigator band, legend dots) must show what the
// layout puts there.
#include "quickscene.h"

#include <QtGui/QGuiApplication>
#include <QtTest/QTest>

namespace {

// A 600 x 400 view: the chart spans x 60 .. 588 and y 12 .. 258, the x axis
// lies under it, the navigator spans y 294 .. 352 and the one legend row
// y 358 .. 388, its two cells centred at x 165 .. 435.
constexpr QSize ViewSize(600, 400);
constexpr QRect ChartRect(60, 12, 528, 246);
constexpr QRect NavigatorRect(60, 294, 528, 58);
constexpr int LegendRowY = 373;
constexpr int LegendLeft = 165;

const QColor Background(Qt::black);
const QColor BarColor(70, 130, 180);
const QColor AreaColor(255, 165, 0);
// The data rectangle shown is 10.5 high: the largest bar and 5% above it.
constexpr double ZoomHeight = 10.5;

const char *const SceneQml = R"(
import QtQuick 2.15
import VexalPlugin 1.0
import "qrc:/qml"

VexalQML {
    id: view
    updateIntervalMs: 0

    // Ten bars rising from 1 to 10 over x 0 .. 1000, drawn over a flat area of 2.
    BarPlotter {
        chartArea: view.refChartArea
        name: "bars"
        color: "#4682b4"
        zOrder: 1
        plotterArea: Qt.rect(0, 0, 1000, 10)
        data: [1, 2, 3, 4, 5, 6, 7, 8, 9, 10]
    }
    AreaPlotter {
        chartArea: view.refChartArea
        name: "area"
        color: "#ffa500"
        plotterArea: Qt.rect(0, 0, 1000, 2)
        data: [2, 2, 2, 2, 2, 2, 2, 2, 2, 2]
    }
}
)";

} // namespace

class TstVexalQmlScreenshot : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void chartAreaShowsThePlotters_data();
    void chartAreaShowsThePlotters();
    void axisLabelsAreDrawnBesideTheChart_data();
    void axisLabelsAreDrawnBesideTheChart();
    void navigatorBandMarksTheZoom_data();
    void navigatorBandMarksTheZoom();
    void legendShowsOneDotPerPlotter();

private:
    QImage grabWithZoom(const QRectF &zoom);
    static bool hasInk(const QImage &image, const QRect &region);
    static void comparePixel(const QImage &image, const QPoint &pixel, const QColor &expected, int tolerance);

    std::unique_ptr<VexalTest::QuickScene> m_scene;
    QObject *m_chart = nullptr;
};

void TstVexalQmlScreenshot::init()
{
    m_scene = std::make_unique<VexalTest::QuickScene>(SceneQml, ViewSize);
    QVERIFY(m_scene->isReady());
    m_chart = m_scene->find<QObject>(QStringLiteral("chart"));
    QVERIFY(m_chart);
    // The chart shows all of its data once its start-up settles.
    QTRY_COMPARE_WITH_TIMEOUT(m_chart->property("zoomRect").toRectF().width(), 1000.0, 2000);
}

void TstVexalQmlScreenshot::cleanup()
{
    m_scene.reset();
}

// Shows the zoom (with the chart's own height) and grabs the window.
QImage TstVexalQmlScreenshot::grabWithZoom(const QRectF &zoom)
{
    QRectF rect = zoom;
    rect.setHeight(m_chart->property("zoomRect").toRectF().height());
    m_chart->setProperty("zoomRect", rect);
    return m_scene->grab();
}

// True when some pixel of the region differs from the window's background.
bool TstVexalQmlScreenshot::hasInk(const QImage &image, const QRect &region)
{
    for (int y = region.top(); y <= region.bottom(); ++y) {
        for (int x = region.left(); x <= region.right(); ++x) {
            if (!VexalTest::sameColor(image.pixelColor(x, y), Background, 40))
                return true;
        }
    }
    return false;
}

void TstVexalQmlScreenshot::comparePixel(const QImage &image, const QPoint &pixel, const QColor &expected,
                                         int tolerance)
{
    QVERIFY(!image.isNull());
    const QColor actual = image.pixelColor(pixel);
    QVERIFY2(VexalTest::sameColor(actual, expected, tolerance),
             VexalTest::describe(actual) + " instead of " + VexalTest::describe(expected));
}

void TstVexalQmlScreenshot::chartAreaShowsThePlotters_data()
{
    QTest::addColumn<QRectF>("zoom");
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QColor>("expected");

    const QRectF all(0, 0, 1000, 1);
    QTest::newRow("the last bar rises almost to the top")
        << all << QPointF(950, 9.5) << BarColor;
    QTest::newRow("the area shows above the first bar")
        << all << QPointF(50, 1.5) << AreaColor;
    QTest::newRow("above the first bar and the area the view is transparent")
        << all << QPointF(50, 5) << Background;
    QTest::newRow("zoomed onto the right half the sixth bar comes first")
        << QRectF(500, 0, 500, 1) << QPointF(520, 5.5) << BarColor;
    QTest::newRow("zoomed onto the right half the sixth bar ends at 6")
        << QRectF(500, 0, 500, 1) << QPointF(520, 6.5) << Background;
}

void TstVexalQmlScreenshot::chartAreaShowsThePlotters()
{
    QFETCH(QRectF, zoom);
    QFETCH(QPointF, point);
    QFETCH(QColor, expected);
    // The data point's pixel: x across the zoom, y up from the chart's bottom.
    const int x = ChartRect.left() + int((point.x() - zoom.left()) / zoom.width() * ChartRect.width());
    const int y = ChartRect.top() + ChartRect.height() - int(point.y() / ZoomHeight * ChartRect.height());
    comparePixel(grabWithZoom(zoom), QPoint(x, y), expected, 8);
}

void TstVexalQmlScreenshot::axisLabelsAreDrawnBesideTheChart_data()
{
    QTest::addColumn<QRect>("region");
    QTest::addColumn<bool>("inked");

    // Labels of the x axis are centred under their ticks, 9 pixels below the chart.
    QTest::newRow("the x label of the first tick is under the chart's left edge")
        << QRect(ChartRect.left() - 4, ChartRect.bottom() + 10, 9, 14) << true;
    QTest::newRow("the y label of 0 is left of the chart's bottom")
        << QRect(10, ChartRect.bottom() - 6, 34, 12) << true;
    QTest::newRow("the y labels keep 16 pixels free left of the chart")
        << QRect(ChartRect.left() - 15, ChartRect.top(), 14, ChartRect.height() - 1) << false;
    QTest::newRow("nothing is drawn between the x labels and the navigator")
        << QRect(ChartRect.left(), NavigatorRect.top() - 6, ChartRect.width(), 4) << false;
}

void TstVexalQmlScreenshot::axisLabelsAreDrawnBesideTheChart()
{
    QFETCH(QRect, region);
    QFETCH(bool, inked);
    const QImage image = grabWithZoom(QRectF(0, 0, 1000, 1));
    QVERIFY(!image.isNull());
    QCOMPARE(hasInk(image, region), inked);
}

void TstVexalQmlScreenshot::navigatorBandMarksTheZoom_data()
{
    QTest::addColumn<QRectF>("zoom");
    QTest::addColumn<int>("x");
    QTest::addColumn<bool>("inBand");

    const QRectF leftHalf(0, 0, 500, 1);
    QTest::newRow("the band covers the zoomed left half")
        << leftHalf << NavigatorRect.left() + 100 << true;
    QTest::newRow("the band ends at the zoom's right edge")
        << leftHalf << NavigatorRect.left() + 270 << false;
    QTest::newRow("a zoom on the right half moves the band there")
        << QRectF(500, 0, 500, 1) << NavigatorRect.left() + 400 << true;
}

void TstVexalQmlScreenshot::navigatorBandMarksTheZoom()
{
    QFETCH(QRectF, zoom);
    QFETCH(int, x);
    QFETCH(bool, inBand);
    // The band's "#4d4dc2e6" (30% of a light blue) over the black window.
    const QColor band(23, 58, 69);
    const QPoint pixel(x, NavigatorRect.center().y());
    const QColor expected = inBand ? band : Background;
    grabWithZoom(zoom);
    // The band follows the zoom through bindings and the navigator chart's
    // throttled redraw: under load it may show one interval later.
    QTRY_VERIFY_WITH_TIMEOUT(VexalTest::sameColor(m_scene->grab().pixelColor(pixel), expected, 6), 2000);
}

void TstVexalQmlScreenshot::legendShowsOneDotPerPlotter()
{
    const QImage image = grabWithZoom(QRectF(0, 0, 1000, 1));
    QVERIFY(!image.isNull());
    // Each entry's 10-pixel dot: a run of each plotter's colour along the row.
    int bars = 0;
    int area = 0;
    int firstDot = image.width();
    for (int x = 0; x < image.width(); ++x) {
        const QColor c = image.pixelColor(x, LegendRowY);
        const bool isBars = VexalTest::sameColor(c, BarColor, 8);
        const bool isArea = VexalTest::sameColor(c, AreaColor, 8);
        bars += isBars;
        area += isArea;
        if ((isBars || isArea) && x < firstDot)
            firstDot = x;
    }
    QVERIFY2(bars >= 6 && bars <= 12, QByteArray::number(bars) + " pixels of the bars' dot");
    QVERIFY2(area >= 6 && area <= 12, QByteArray::number(area) + " pixels of the area's dot");
    // Left of the centred entries lies the legend's plain background.
    const QColor margin = image.pixelColor(firstDot - 20, LegendRowY);
    QVERIFY2(firstDot > LegendLeft - 60 && margin.lightness() > 200, VexalTest::describe(margin));
}

VEXAL_GL_TEST_MAIN(TstVexalQmlScreenshot)

#include "tst_vexalqml_screenshot.moc"
