// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Every property that changes how a plotter draws takes effect at the next
// frame, however many frames came before: each is changed after the third
// frame and then changed back, and a pixel shows both changes.
#include <vexal/areaplotter.h>
#include <vexal/ichartarea.h>
#include "plotterscene.h"

#include <QtGui/QGuiApplication>
#include <QtTest/QTest>

using PlotterTest::chartScene;
using PlotterTest::pixelOf;

namespace {

const QColor red(255, 0, 0);
const QColor blue(0, 0, 255);
const QColor black(0, 0, 0);
const QColor white(255, 255, 255);
const QColor &green = PlotterTest::background;

// Red bars over the whole chart up to value 5, and blue bars up to value 3
// drawn over them (higher zOrder).
const QByteArray twoBars = R"(
        BarPlotter { objectName: "bars"; chartArea: chart; color: "#ff0000"
                     plotterArea: Qt.rect(0, 0, 20, 1); data: Array(20).fill(5) }
        BarPlotter { objectName: "top"; chartArea: chart; color: "#0000ff"; zOrder: 1
                     plotterArea: Qt.rect(0, 0, 20, 1); data: Array(20).fill(3) }
)";

// A red area up to value 5 with a 3-pixel black border along its top.
const QByteArray borderedArea = R"(
        AreaPlotter { objectName: "area"; chartArea: chart; color: "#ff0000"
                      enableGradient: false; gradientColor: "#ffffff"
                      borderEnable: true; borderWidth: 3; borderColor: "#000000"
                      plotterArea: Qt.rect(0, 0, 20, 1)
                      Component.onCompleted: data = Array(20).fill(5) }
)";

// Red bars of individual widths up to value 5 over the whole chart.
const QByteArray pairBars = R"(
        BarPlotterDx { objectName: "pairs"; chartArea: chart; color: "#ff0000"
                       plotterArea: Qt.rect(0, 0, 0, 0)
                       Component.onCompleted: data = [10, 5, 10, 5] }
)";

} // namespace

class tst_LiveProperties : public QObject
{
    Q_OBJECT

private slots:
    void init() { PlotterTest::failOnOpenGLErrors(); }
    void changeShowsAtTheNextFrame_data();
    void changeShowsAtTheNextFrame();
    void newestDataShowAfterAThrottledBurst();
};

void tst_LiveProperties::changeShowsAtTheNextFrame_data()
{
    QTest::addColumn<QByteArray>("plotters");
    QTest::addColumn<QString>("plotter");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QPoint>("probe");
    QTest::addColumn<QColor>("before");
    QTest::addColumn<QColor>("after");

    const QPoint upper = pixelOf(10.5, 4.0); // red bars only
    const QPoint lower = pixelOf(10.5, 1.5); // blue bars over red ones
    QTest::newRow("bar colour") << twoBars << QStringLiteral("bars") << QByteArray("color") << QVariant(QColor(white)) << upper
                                << red << white;
    QTest::newRow("bar visibility") << twoBars << QStringLiteral("bars") << QByteArray("visible") << QVariant(false) << upper
                                    << red << green;
    QTest::newRow("bar offset") << twoBars << QStringLiteral("bars") << QByteArray("xOffset") << QVariant(15.0)
                                << pixelOf(10.5, 4.0) << red << green;
    QTest::newRow("bar z order") << twoBars << QStringLiteral("bars") << QByteArray("zOrder") << QVariant(2.0) << lower << blue
                                 << red;
    QTest::newRow("bar draw layer") << twoBars << QStringLiteral("bars") << QByteArray("drawLayer") << QVariant(4u) << lower
                                    << blue << red;
    const QPoint fill = pixelOf(10.5, 2.5);
    const QPoint border = QPoint(105, 50);      // on the border's middle line
    const QPoint nearBorder = QPoint(105, 53);  // three pixels below it
    const QPoint bottom = QPoint(105, 99);      // value 0, where a gradient starts
    QTest::newRow("area colour") << borderedArea << QStringLiteral("area") << QByteArray("color") << QVariant(QColor(blue)) << fill
                                 << red << blue;
    QTest::newRow("area border switched off") << borderedArea << QStringLiteral("area") << QByteArray("borderEnable")
                                              << QVariant(false) << border << black << red;
    QTest::newRow("area border width") << borderedArea << QStringLiteral("area") << QByteArray("borderWidth") << QVariant(9.0)
                                       << nearBorder << red << black;
    QTest::newRow("area border colour") << borderedArea << QStringLiteral("area") << QByteArray("borderColor")
                                        << QVariant(QColor(blue)) << border << black << blue;
    QTest::newRow("area gradient switched on") << borderedArea << QStringLiteral("area") << QByteArray("enableGradient")
                                               << QVariant(true) << bottom << red << white;
    QTest::newRow("pair bar colour") << pairBars << QStringLiteral("pairs") << QByteArray("color") << QVariant(QColor(blue)) << fill
                                     << red << blue;
    QTest::newRow("pair bar visibility") << pairBars << QStringLiteral("pairs") << QByteArray("visible") << QVariant(false)
                                         << fill << red << green;
}

void tst_LiveProperties::changeShowsAtTheNextFrame()
{
    QFETCH(QByteArray, plotters);
    QFETCH(QString, plotter);
    QFETCH(QByteArray, property);
    QFETCH(QVariant, value);
    QFETCH(QPoint, probe);
    QFETCH(QColor, before);
    QFETCH(QColor, after);

    VexalTest::QuickScene scene(chartScene(plotters));
    QVERIFY(scene.isReady());
    IPlotter *target = scene.find<IPlotter>(plotter);
    QVERIFY(target);
    QImage image;
    for (int frame = 0; frame < 3; ++frame)
        image = scene.grab();
    PLOTTER_COMPARE_PIXEL(image, probe, before);

    const QVariant original = target->property(property.constData());
    QVERIFY(target->setProperty(property.constData(), value));
    image = scene.grab();
    PLOTTER_COMPARE_PIXEL(image, probe, after);

    QVERIFY(target->setProperty(property.constData(), original));
    image = scene.grab();
    PLOTTER_COMPARE_PIXEL(image, probe, before);
}

void tst_LiveProperties::newestDataShowAfterAThrottledBurst()
{
    VexalTest::QuickScene scene(chartScene(twoBars));
    QVERIFY(scene.isReady());
    auto *chart = scene.find<IChartArea>(QStringLiteral("chart"));
    IPlotter *bars = scene.find<IPlotter>(QStringLiteral("bars"));
    chart->setUpdateIntervalMs(25);
    const QPoint probe = pixelOf(10.5, 4.0); // above the blue bars, inside the first red ones
    bars->setData(QList<double>(20, 10.0));
    QTest::qWait(5);
    bars->setData(QList<double>(20, 2.0)); // inside the interval after the first
    // Frames drawn later show the newest data without any further request.
    QTRY_VERIFY_WITH_TIMEOUT(VexalTest::sameColor(scene.grab().pixelColor(probe), green), 1000);
}

VEXAL_GL_TEST_MAIN(tst_LiveProperties)
#include "tst_liveproperties.moc"
