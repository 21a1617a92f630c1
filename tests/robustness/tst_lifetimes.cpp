// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Destroys charts, plotters, decorators, filters and sources in every order
// while the scene renders live data. Nothing may crash, draw or read freed
// memory, or keep a pointer to what is gone; the sanitizer configuration runs
// this with leak detection on.
#include <vexal/chartarea.h>
#include <vexal/decimatoru64.h>
#include <vexal/bardecorator.h>
#include <vexal/iplotter1d.h>
#include "quickscene.h"

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtTest/QTest>

namespace {

// Live data from a source through a decimator and a moving average into bars
// and an area; pairs with fixed data; a decorator watching the bars and area.
const QByteArray LiveScene = R"(
import QtQuick
import VexalPlugin 1.0
Item {
    ChartArea { id: chart; objectName: "chart"; anchors.fill: parent; updateIntervalMs: 0 }
    RandomU64Data {
        id: source; objectName: "source"
        type: "white"; append: false; interval: 5; numBin: 200; area: Qt.rect(0, 0, 200, 0)
    }
    DecimatorU64 { id: decimator; objectName: "decimator"; chartArea: chart }
    MovingAverageU64 { id: average; objectName: "average"; depth: 4 }
    BarPlotter { id: bars; objectName: "bars"; chartArea: chart }
    AreaPlotter { id: area; objectName: "area"; chartArea: chart }
    BarPlotterDx { objectName: "pairs"; chartArea: chart; data: [20, 50, 10, 30, 30, 40] }
    BarDecorator { objectName: "decorator"; chartArea: chart; active: true; plotters: [bars, area] }
    Component.onCompleted: {
        source.addFilter(decimator)
        decimator.addPlotter(bars)
        source.addFilter(average)
        average.addPlotter(area)
    }
}
)";

// Counts the frames that a window swaps, on the render thread, for as long as
// the window lives.
class FrameCounter : public QObject
{
public:
    explicit FrameCounter(QQuickWindow *window) : QObject(window)
    {
        setObjectName(QStringLiteral("frameCounter"));
        connect(window, &QQuickWindow::frameSwapped, this, &FrameCounter::count, Qt::DirectConnection);
    }
    int frames() const { return m_frames.loadAcquire(); }

private:
    void count() { m_frames.ref(); }

    QAtomicInt m_frames; // frames swapped so far
};

// Renders count more frames of the window, asking for each.
bool renderFrames(QQuickWindow &window, int count = 3)
{
    auto *counter = static_cast<FrameCounter *>(window.findChild<QObject *>(QStringLiteral("frameCounter")));
    if (!counter)
        counter = new FrameCounter(&window);
    const int target = counter->frames() + count;
    // A generous wait: the sanitizer configurations render slowly.
    return QTest::qWaitFor([&] {
        window.update();
        return counter->frames() >= target;
    }, 30000);
}

// Moves the decorator's mouse from bar to bar, so that highlights are pushed
// and its fade timer runs.
void hoverAround(QObject *root)
{
    for (BarDecorator *decorator : root->findChildren<BarDecorator *>()) {
        for (double x : {10.0, 60.0, 110.0, 160.0}) {
            decorator->setMouseX(x);
            decorator->setMouseY(95.0);
        }
    }
}

bool isAlive(const QSet<const QObject *> &alive, const QObject *object)
{
    return object == nullptr || alive.contains(object);
}

// Every pointer that a surviving object holds leads to a surviving object.
void verifyNoDanglingPointers(QObject *root)
{
    const QList<QObject *> children = root->findChildren<QObject *>();
    const QSet<const QObject *> alive(children.cbegin(), children.cend());
    for (const IChartArea *chart : root->findChildren<IChartArea *>()) {
        for (const IPlotter *p : chart->plotter())
            QVERIFY2(alive.contains(p), "a chart lists a destroyed plotter");
        for (int k = 0; k < 3; ++k) {
            for (const IPlotter *p : chart->layer(k))
                QVERIFY2(alive.contains(p), "a chart layer holds a destroyed plotter");
        }
    }
    for (const IPlotter *plotter : root->findChildren<IPlotter *>())
        QVERIFY2(isAlive(alive, plotter->chartArea()), "a plotter points at a destroyed chart");
    for (const BarDecorator *decorator : root->findChildren<BarDecorator *>()) {
        for (const IPlotter *p : decorator->plotters())
            QVERIFY2(alive.contains(p), "a decorator watches a destroyed plotter");
    }
    for (const Filter1D *filter : root->findChildren<Filter1D *>()) {
        for (const IPlotter1D *p : filter->plotters())
            QVERIFY2(alive.contains(p), "a filter feeds a destroyed plotter");
        for (const Filter1D *child : filter->filters())
            QVERIFY2(alive.contains(child), "a filter feeds a destroyed filter");
    }
    for (const DecimatorU64 *decimator : root->findChildren<DecimatorU64 *>())
        QVERIFY2(isAlive(alive, decimator->chartArea()), "a decimator follows a destroyed chart");
}

} // namespace

class tst_Lifetimes : public QObject
{
    Q_OBJECT

private slots:
    void objectsGoInAnyOrderWhileTheSceneRenders_data();
    void objectsGoInAnyOrderWhileTheSceneRenders();
    void survivorsOfADeadChartKeepWorking();
    void chartGoesWithinItsFirst100ms();
};

void tst_Lifetimes::objectsGoInAnyOrderWhileTheSceneRenders_data()
{
    QTest::addColumn<QStringList>("order");
    QTest::newRow("a bar plotter goes before its chart") << QStringList{"bars", "chart"};
    QTest::newRow("an area plotter goes before its chart") << QStringList{"area", "chart"};
    QTest::newRow("a pair plotter goes before its chart") << QStringList{"pairs", "chart"};
    QTest::newRow("a decorator goes before its chart") << QStringList{"decorator", "chart"};
    QTest::newRow("a chart goes with every plotter attached")
        << QStringList{"chart", "bars", "area", "pairs", "decorator"};
    QTest::newRow("watched plotters go while the decorator fades") << QStringList{"bars", "area", "decorator"};
    QTest::newRow("the chart goes while the decorator fades") << QStringList{"chart", "decorator"};
    QTest::newRow("a source goes before the filters it feeds") << QStringList{"source", "decimator", "average"};
    QTest::newRow("filters go before their source") << QStringList{"decimator", "average", "source"};
    QTest::newRow("a filter goes before its plotter") << QStringList{"decimator", "bars", "average", "area"};
    QTest::newRow("a plotter goes before its filter") << QStringList{"bars", "decimator", "area", "average"};
    QTest::newRow("a decimator outlives its chart") << QStringList{"chart"};
    QTest::newRow("a decimator goes before its chart") << QStringList{"decimator", "chart"};
    QTest::newRow("nothing goes before the scene") << QStringList{};
}

void tst_Lifetimes::objectsGoInAnyOrderWhileTheSceneRenders()
{
    QFETCH(QStringList, order);
    VexalTest::QuickScene scene(LiveScene, QSize(200, 100));
    QVERIFY(scene.isReady());
    QVERIFY(renderFrames(scene.window()));
    for (const QString &name : std::as_const(order)) {
        QPointer<QObject> object = scene.find<QObject>(name);
        QVERIFY2(object, qPrintable(name));
        hoverAround(scene.root());
        delete object.data();
        QVERIFY(renderFrames(scene.window()));
        QTest::qWait(30); // source ticks and fade ticks reach what is left
        hoverAround(scene.root());
        QVERIFY(renderFrames(scene.window()));
        verifyNoDanglingPointers(scene.root());
    }
    // The scene then goes as a whole, in the engine's own order.
}

void tst_Lifetimes::survivorsOfADeadChartKeepWorking()
{
    VexalTest::QuickScene scene(LiveScene, QSize(200, 100));
    QVERIFY(scene.isReady());
    QVERIFY(renderFrames(scene.window()));
    delete scene.find<ChartArea>("chart");
    const QList<IPlotter *> plotters = scene.root()->findChildren<IPlotter *>();
    QCOMPARE(plotters.size(), 4);
    for (IPlotter *plotter : plotters) {
        QCOMPARE(plotter->chartArea(), nullptr);
        plotter->setColor(Qt::red);
        plotter->setVisible(false);
        plotter->setPlotterArea(QRectF(0, 0, 5, 5));
        plotter->setData({1, 2, 3, 4});
    }
    hoverAround(scene.root());
    auto *decimator = scene.find<DecimatorU64>("decimator");
    QCOMPARE(decimator->chartArea(), nullptr);
    decimator->setData({4, 3, 2, 1});
    decimator->setArea(QRectF(0, 0, 8, 1));
    QTest::qWait(50);
    QVERIFY(renderFrames(scene.window()));
}

void tst_Lifetimes::chartGoesWithinItsFirst100ms()
{
    VexalTest::QuickScene scene(LiveScene, QSize(200, 100));
    QVERIFY(scene.isReady());
    for (int i = 0; i < 20; ++i) {
        auto *chart = new ChartArea(scene.root());
        chart->setSize(QSizeF(100, 50));
        QVERIFY(renderFrames(scene.window(), 1));
        delete chart;
    }
    QTest::qWait(150); // every start-up task of the destroyed charts has woken up
    QVERIFY(renderFrames(scene.window()));
}

VEXAL_GL_TEST_MAIN(tst_Lifetimes)

#include "tst_lifetimes.moc"
