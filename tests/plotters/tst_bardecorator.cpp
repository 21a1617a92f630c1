// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Tests of the bar decorator: hover publishing, highlight history and fade,
// watched plotters, and that desktop OpenGL 4 draws no highlight.
#include <vexal/bardecorator.h>
#include "bardecoratorprobe.h"
#include <vexal/ichartarea.h>
#include "plotterscene.h"
#include <vexal/barplotter.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QOpenGLContext>
#include <QtQuick/QSGRendererInterface>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <memory>

using PlotterTest::pixelOf;
using VexalTest::QuickScene;

namespace {

constexpr float NeverFades = 4000000.0f;

// A 200 x 100 chart item showing (0, 0, 20, 10), a bar plotter with two bars
// [0, 10) 4 high and [10, 20) 8 high, and an active decorator watching it. No
// window: hovering needs none.
struct HoverSetup
{
    IChartArea chart;            // 10 pixels per unit
    BarPlotter bars;             // the watched plotter
    BarDecoratorProbe decorator; // on the chart, active

    HoverSetup()
    {
        chart.setSize(QSizeF(200, 100));
        chart.setAdaptAreaToPlotters(false);
        chart.setChartRect(QRectF(0, 0, 20, 10));
        bars.setName(QStringLiteral("bars"));
        bars.setPlotterArea(QRectF(0, 0, 20, 10));
        bars.setData({4, 8});
        bars.setChartArea(&chart);
        decorator.setChartArea(&chart);
        decorator.addPlotter(&bars);
        decorator.setActive(true);
    }

    // Moves the mouse to a data point (item pixels, y downwards).
    void hover(double x, double y)
    {
        decorator.setMouseX(x * 10.0);
        decorator.setMouseY(100.0 - y * 10.0);
    }
};

QVariantMap hoverEntry(const QRectF &rect, const QString &name, const QColor &color)
{
    return {{QStringLiteral("rect"), rect}, {QStringLiteral("name"), name}, {QStringLiteral("color"), color}};
}

// What a highlight pushed for rect looks like on a chart showing (0, 0, 20, 10).
QList<QVector2D> pushedCorners(const QRectF &rect)
{
    const float x0 = float(rect.left() / 10.0 - 1.0);
    const float x1 = float(rect.right() / 10.0 - 1.0);
    const float h = float(rect.height());
    return {QVector2D(x1, h), QVector2D(x1, 0), QVector2D(x0, h), QVector2D(x0, 0)};
}

} // namespace

class tst_BarDecorator : public QObject
{
    Q_OBJECT

private slots:
    // Construction and pushes
    void constructionPushesANullHighlight();
    void pushesPutTheNewestHighlightFirst();
    void elevenPushesKeepTenHighlights();
    void fadeTickDropsFadedHighlights();
    void fadeTickWithoutChartDoesNotCrash();

    // Hover
    void hoverPublishesTheBarUnderTheMouse();
    void movingWithinTheSameBarChangesNothing();
    void sameExtentOtherHeightRewritesInPlace();
    void leavingAllBarsPushesANullHighlightOnce();
    void inactiveDecoratorIgnoresTheMouse();
    void topDrawnPlotterIsAskedFirstAndBroughtToTheFront();
    void dataChangesOfWatchedPlottersUpdateTheHover();

    // Watched plotters
    void plotterListSignals_data();
    void plotterListSignals();
    void destroyedPlottersAreDropped();
    void destroyedChartStopsTheHover();

    // Pixels
    void desktopOpenGL4DrawsNoHighlight();
};

//-----------------------------------------------------------------------------
// [SECTION] Construction and pushes
//-----------------------------------------------------------------------------

void tst_BarDecorator::constructionPushesANullHighlight()
{
    BarDecoratorProbe d;
    QCOMPARE(d.m_history.size(), 1);
    QVERIFY(d.m_history.first().rect.isNull());
    QVERIFY(d.m_highlightVertices.isEmpty()); // no chart to place it on
    QCOMPARE(d.m_highlightTimes, QList<float>(4, NeverFades));
    QCOMPARE(d.m_highlightIndices.size(), 60);
    QCOMPARE(d.m_highlightIndices.mid(6, 6), QList<quint32>({4, 5, 6, 6, 5, 7}));
    for (int array = 0; array < d.gpuArrays().count(); ++array)
        QCOMPARE(d.gpuArrays().version(array), 1u); // every window uploads each array once
    QCOMPARE(d.color(), QColor(255, 255, 255, 70));
    QVERIFY(d.m_fadeTimer.isActive());
    QCOMPARE(d.m_fadeTimer.interval(), 20);
    QCOMPARE(d.active(), false);
    QVERIFY(d.infoMap().isEmpty());
}

void tst_BarDecorator::pushesPutTheNewestHighlightFirst()
{
    HoverSetup s;
    BarDecoratorProbe &d = s.decorator;
    const float before = float(QTime::currentTime().msecsSinceStartOfDay()) / 100.0f + 1.0f;
    d.pushHighlight(QRectF(2, 0, 4, 3));
    const float after = float(QTime::currentTime().msecsSinceStartOfDay()) / 100.0f + 1.0f;
    QCOMPARE(d.m_history.size(), 2);
    QCOMPARE(d.m_history.first().rect, QRectF(2, 0, 4, 3));
    QVERIFY(d.m_history.first().expiry > QTime::currentTime().addSecs(3500));
    QVERIFY(d.m_history.at(1).expiry <= QTime::currentTime());
    QCOMPARE(d.m_highlightVertices.size(), 40);
    QCOMPARE(d.m_highlightVertices.mid(0, 4), pushedCorners(QRectF(2, 0, 4, 3)));
    QCOMPARE(d.m_highlightVertices.mid(4), QList<QVector2D>(36));
    QCOMPARE(d.m_highlightTimes.size(), 40);
    QCOMPARE(d.m_highlightTimes.mid(0, 4), QList<float>(4, NeverFades));
    for (int i = 4; i < 8; ++i)
        QVERIFY(d.m_highlightTimes[i] >= before && d.m_highlightTimes[i] <= after);
    QCOMPARE(d.m_highlightTimes.mid(8), QList<float>(32, 0.0f));
    QVERIFY(d.gpuArrays().version(0) > 1); // the vertices changed for every window
}

void tst_BarDecorator::elevenPushesKeepTenHighlights()
{
    HoverSetup s;
    BarDecoratorProbe &d = s.decorator;
    for (int i = 0; i < 11; ++i)
        d.pushHighlight(QRectF(i, 0, 1, i + 1));
    QCOMPARE(d.m_highlightVertices.size(), 40);
    QCOMPARE(d.m_highlightTimes.size(), 40);
    QCOMPARE(d.m_history.size(), 12); // the null one and eleven
    QCOMPARE(d.m_highlightVertices.mid(0, 4), pushedCorners(QRectF(10, 0, 1, 11)));
    QCOMPARE(d.m_highlightVertices.mid(36, 4), pushedCorners(QRectF(1, 0, 1, 2))); // the oldest kept
}

void tst_BarDecorator::fadeTickDropsFadedHighlights()
{
    HoverSetup s;
    BarDecoratorProbe &d = s.decorator;
    d.pushHighlight(QRectF(0, 0, 1, 1));
    d.pushHighlight(QRectF(1, 0, 1, 1));
    QVERIFY(d.m_fadeTimer.isActive());
    const QTime now = QTime::currentTime();
    d.m_history.last().expiry = now.addMSecs(-500); // faded long ago
    d.m_history[d.m_history.size() - 2].expiry = now.addMSecs(-500);
    d.m_history[1].expiry = now.addSecs(10); // still fading
    d.fadeTick();
    QCOMPARE(d.m_history.size(), 2);
    QVERIFY(d.m_fadeTimer.isActive());
    d.m_history[1].expiry = now.addMSecs(-500);
    d.fadeTick();
    QCOMPARE(d.m_history.size(), 1);
    QCOMPARE(d.m_history.first().rect, QRectF(1, 0, 1, 1)); // the newest never fades
    QVERIFY(!d.m_fadeTimer.isActive());
}

void tst_BarDecorator::fadeTickWithoutChartDoesNotCrash()
{
    BarDecoratorProbe d;
    d.pushHighlight(QRectF(0, 0, 1, 1));
    d.m_history.last().expiry = QTime::currentTime().addMSecs(-500);
    d.fadeTick();
    QCOMPARE(d.m_history.size(), 1);
    QVERIFY(!d.m_fadeTimer.isActive());
}

//-----------------------------------------------------------------------------
// [SECTION] Hover
//-----------------------------------------------------------------------------

void tst_BarDecorator::hoverPublishesTheBarUnderTheMouse()
{
    HoverSetup s;
    QSignalSpy changed(&s.decorator, &BarDecorator::infoMapChanged);
    s.hover(5, 2);
    QCOMPARE(changed.count(), 1); // mouseX alone still points above the bar
    QCOMPARE(s.decorator.infoMap(),
             QVariantList{hoverEntry(QRectF(0, 0, 10, 4), QStringLiteral("bars"), QColor(7, 203, 242))});
    QCOMPARE(s.decorator.m_history.first().rect, QRectF(0, 0, 10, 4));
}

void tst_BarDecorator::movingWithinTheSameBarChangesNothing()
{
    HoverSetup s;
    s.hover(5, 2);
    const auto history = s.decorator.m_history.size();
    const quint64 vertices = s.decorator.gpuArrays().version(0);
    QSignalSpy changed(&s.decorator, &BarDecorator::infoMapChanged);
    s.hover(7, 3);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(s.decorator.m_history.size(), history);
    QCOMPARE(s.decorator.gpuArrays().version(0), vertices);
}

void tst_BarDecorator::sameExtentOtherHeightRewritesInPlace()
{
    HoverSetup s;
    s.hover(5, 2);
    const auto history = s.decorator.m_history.size();
    s.bars.setData({6, 8}); // the same bar grows; the watched plotter's data change re-runs the hover
    QCOMPARE(s.decorator.m_history.size(), history); // no fade
    // Rewritten in chart coordinates, without the conversion to clip x.
    const QRectF grown(0, 0, 10, 6);
    QCOMPARE(s.decorator.m_highlightVertices.mid(0, 4),
             QList<QVector2D>({QVector2D(grown.bottomLeft()), QVector2D(grown.topLeft()),
                               QVector2D(grown.bottomRight()), QVector2D(grown.topRight())}));
    QCOMPARE(s.decorator.m_highlightVertices.size(), 40);
    QCOMPARE(s.decorator.infoMap().first().toMap().value(QStringLiteral("rect")).toRectF(), grown);
}

void tst_BarDecorator::leavingAllBarsPushesANullHighlightOnce()
{
    HoverSetup s;
    s.hover(5, 2);
    const auto onBar = s.decorator.m_history.size();
    QSignalSpy changed(&s.decorator, &BarDecorator::infoMapChanged);
    s.hover(5, 6); // above the first bar
    QCOMPARE(s.decorator.m_history.size(), onBar + 1);
    QVERIFY(s.decorator.m_history.first().rect.isNull());
    QVERIFY(s.decorator.infoMap().isEmpty());
    QCOMPARE(changed.count(), 1);
    s.hover(4, 7);
    s.hover(3, 9);
    QCOMPARE(s.decorator.m_history.size(), onBar + 1);
    QCOMPARE(changed.count(), 1);
}

void tst_BarDecorator::inactiveDecoratorIgnoresTheMouse()
{
    HoverSetup s;
    s.hover(5, 2);
    const auto onBar = s.decorator.m_history.size();
    QSignalSpy activeChanged(&s.decorator, &BarDecorator::activeChanged);
    s.decorator.setActive(false);
    QCOMPARE(activeChanged.count(), 1);
    QCOMPARE(s.decorator.m_history.size(), onBar + 1); // the highlight fades out
    QVERIFY(s.decorator.m_history.first().rect.isNull());
    QSignalSpy changed(&s.decorator, &BarDecorator::infoMapChanged);
    s.hover(15, 2);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(s.decorator.m_history.size(), onBar + 1);
    s.decorator.setActive(true);
    s.hover(15, 3);
    QCOMPARE(s.decorator.m_history.first().rect, QRectF(10, 0, 10, 8));
}

void tst_BarDecorator::topDrawnPlotterIsAskedFirstAndBroughtToTheFront()
{
    HoverSetup s;
    BarPlotter top;
    top.setName(QStringLiteral("top"));
    top.setDrawLayer(4); // drawn in layer 2, above layer 1
    top.setZOrder(0.5);
    top.setPlotterArea(QRectF(0, 0, 20, 10));
    top.setData({3, 3});
    top.setChartArea(&s.chart);
    s.bars.setZOrder(2.0);
    s.decorator.addPlotter(&top);
    s.hover(5, 2); // both plotters have a bar there
    const QVariantList info = s.decorator.infoMap();
    QCOMPARE(info.size(), 2);
    QCOMPARE(info[0].toMap().value(QStringLiteral("name")).toString(), QStringLiteral("top"));
    QCOMPARE(s.decorator.m_history.first().rect, QRectF(0, 0, 10, 3));
    QCOMPARE(s.decorator.plotters(), QList<IPlotter *>({&top, &s.bars}));
    QCOMPARE(s.bars.zOrder(), 2.0); // the hit was the first plotter: no change
    s.hover(5, 3.5);                // only the lower plotter has a bar there
    QCOMPARE(s.decorator.infoMap().size(), 1);
    QCOMPARE(s.bars.zOrder(), 0.5 + 0.0001);
}

void tst_BarDecorator::dataChangesOfWatchedPlottersUpdateTheHover()
{
    HoverSetup s;
    s.hover(5, 3);
    QCOMPARE(s.decorator.infoMap().size(), 1);
    s.bars.setData({2, 8}); // the bar under the mouse drops below it
    QVERIFY(s.decorator.infoMap().isEmpty());
    s.decorator.removePlotter(&s.bars);
    s.bars.setData({5, 8}); // no longer watched
    QVERIFY(s.decorator.infoMap().isEmpty());
}

//-----------------------------------------------------------------------------
// [SECTION] Watched plotters
//-----------------------------------------------------------------------------

void tst_BarDecorator::plotterListSignals_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("emitted");
    QTest::addColumn<int>("remaining");

    // Starts with plotters a and b watched.
    QTest::newRow("adding a new plotter emits") << "add c" << 1 << 3;
    QTest::newRow("adding a watched plotter changes nothing") << "add a" << 0 << 2;
    QTest::newRow("adding null changes nothing") << "add null" << 0 << 2;
    QTest::newRow("removing a watched plotter emits") << "remove a" << 1 << 1;
    QTest::newRow("removing an unknown plotter changes nothing") << "remove c" << 0 << 2;
    QTest::newRow("removing all emits once") << "remove all" << 1 << 0;
    QTest::newRow("setting the same list changes nothing") << "set a b" << 0 << 2;
    QTest::newRow("setting another list emits") << "set c" << 1 << 1;
}

void tst_BarDecorator::plotterListSignals()
{
    QFETCH(QString, operation);
    QFETCH(int, emitted);
    QFETCH(int, remaining);

    BarPlotter a, b, c;
    BarDecorator d;
    d.setPlotters({&a, &b});
    QSignalSpy changed(&d, &BarDecorator::plottersChanged);
    if (operation == "add c")
        d.addPlotter(&c);
    else if (operation == "add a")
        d.addPlotter(&a);
    else if (operation == "add null") {
        QTest::ignoreMessage(QtWarningMsg, "BarDecorator::addPlotter: a null plotter was ignored");
        d.addPlotter(nullptr);
    }
    else if (operation == "remove a")
        d.removePlotter(&a);
    else if (operation == "remove c")
        d.removePlotter(&c);
    else if (operation == "remove all")
        d.removeAllPlotter();
    else if (operation == "set a b")
        d.setPlotters({&a, &b});
    else if (operation == "set c")
        d.setPlotters({&c});
    QCOMPARE(changed.count(), emitted);
    QCOMPARE(d.plotters().size(), remaining);
}

void tst_BarDecorator::destroyedPlottersAreDropped()
{
    HoverSetup s;
    auto *doomed = new BarPlotter;
    doomed->setPlotterArea(QRectF(0, 0, 20, 10));
    doomed->setData({9, 9});
    doomed->setChartArea(&s.chart);
    s.decorator.addPlotter(doomed);
    QSignalSpy changed(&s.decorator, &BarDecorator::plottersChanged);
    delete doomed;
    QCOMPARE(changed.count(), 1);
    QCOMPARE(s.decorator.plotters(), QList<IPlotter *>{&s.bars});
    s.hover(5, 2); // would ask the destroyed plotter first
    QCOMPARE(s.decorator.infoMap().size(), 1);
}

void tst_BarDecorator::destroyedChartStopsTheHover()
{
    BarPlotter bars;
    BarDecoratorProbe d;
    {
        IChartArea chart;
        chart.setSize(QSizeF(200, 100));
        bars.setPlotterArea(QRectF(0, 0, 20, 10));
        bars.setData({4});
        d.setChartArea(&chart);
        d.addPlotter(&bars);
        d.setActive(true);
    }
    QCOMPARE(d.chartArea(), nullptr);
    const auto history = d.m_history.size();
    d.setMouseX(50);
    d.setMouseY(50);
    QCOMPARE(d.m_history.size(), history);
    d.fadeTick();
}

//-----------------------------------------------------------------------------
// [SECTION] Pixels
//-----------------------------------------------------------------------------

void tst_BarDecorator::desktopOpenGL4DrawsNoHighlight()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(PlotterTest::chartScene(decoratedBars));
    QVERIFY(scene.isReady());
    auto *context = static_cast<QOpenGLContext *>(scene.window().rendererInterface()->getResource(
        &scene.window(), QSGRendererInterface::OpenGLContextResource));
    QVERIFY(context);
    if (context->isOpenGLES() || context->format().majorVersion() < 4)
        QSKIP("This scene's context is not desktop OpenGL 4 or later");
    auto *decorator = scene.find<BarDecorator>("decorator");
    decorator->setMouseX(50);
    decorator->setMouseY(90);
    QCOMPARE(decorator->infoMap().size(), 1); // published all the same
    const QImage image = scene.grab();
    PLOTTER_COMPARE_PIXEL(image, pixelOf(5, 2), QColor(Qt::red));
    PLOTTER_COMPARE_PIXEL(image, pixelOf(5, 6), PlotterTest::background);
}

VEXAL_GL_TEST_MAIN(tst_BarDecorator)
#include "tst_bardecorator.moc"
