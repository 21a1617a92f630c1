// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Plotters and decorators in several top-level windows, each with an OpenGL
// context of its own that shares nothing with the others: a plotter moved
// between charts of different windows, listed by two at once, drawn again
// after its window was closed and shown, or kept while its chart changes
// window, draws in each window; nothing crashes or reports an OpenGL error.
#include <vexal/areaplotter.h>
#include <vexal/bardecorator.h>
#include <vexal/barplotter.h>
#include <vexal/barplotterdx.h>
#include <vexal/ichartarea.h>
#include "plotterscene.h"

#include <QtGui/QGuiApplication>
#include <QtTest/QTest>

#include <memory>

using PlotterTest::background;
using PlotterTest::chartScene;
using PlotterTest::pixelOf;

namespace {

const QColor plotterColor(255, 0, 0);
// A point inside every plotter's drawing below: x 10, half way up to value 5.
const QPoint inside = pixelOf(10.0, 2.5);

QList<double> dataFor(const QString &kind)
{
    // Pairs: two bars of width 10; one-dimensional: twenty cells.
    return kind == QLatin1String("pairs") ? QList<double>{10, 5, 10, 5} : QList<double>(20, 5.0);
}

// A red plotter of the given kind on chart, covering x 0 to 20 up to value 5.
std::unique_ptr<IPlotter> makePlotter(const QString &kind, IChartArea *chart)
{
    std::unique_ptr<IPlotter> plotter;
    if (kind == QLatin1String("bars")) {
        plotter = std::make_unique<BarPlotter>();
    } else if (kind == QLatin1String("area")) {
        auto area = std::make_unique<AreaPlotter>();
        area->setBorderEnable(false);
        area->setEnableGradient(false);
        plotter = std::move(area);
    } else {
        plotter = std::make_unique<BarPlotterDx>();
    }
    plotter->setColor(plotterColor);
    plotter->setPlotterArea(QRectF(0, 0, 20, 1));
    // Set after the chart: the area plotter takes data only once it has one.
    plotter->setChartArea(chart);
    plotter->setData(dataFor(kind));
    return plotter;
}

// One window with an empty chart.
struct Window
{
    VexalTest::QuickScene scene{chartScene("")};
    IChartArea *chart() const { return scene.find<IChartArea>(QStringLiteral("chart")); }
};

QByteArray describeAt(const QImage &image)
{
    return PlotterTest::pixelMessage(inside, image.pixelColor(inside), plotterColor);
}

} // namespace

class tst_MultiWindow : public QObject
{
    Q_OBJECT

private slots:
    void init() { PlotterTest::failOnOpenGLErrors(); }
    void plotterMovesBetweenWindows_data();
    void plotterMovesBetweenWindows();
    void plotterListedInTwoWindows_data();
    void plotterListedInTwoWindows();
    void windowClosedAndShownAgain_data();
    void windowClosedAndShownAgain();
    void chartReparentedIntoAnotherWindow_data();
    void chartReparentedIntoAnotherWindow();
    void plotterDestroyedWhileAnotherWindowDrawsIt();
    void decoratorMovesBetweenWindows();

private:
    static void addKinds();
    static bool drawsPlotter(Window &window);
};

void tst_MultiWindow::addKinds()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("bars") << QStringLiteral("bars");
    QTest::newRow("area") << QStringLiteral("area");
    QTest::newRow("bars with widths") << QStringLiteral("pairs");
}

bool tst_MultiWindow::drawsPlotter(Window &window)
{
    const QImage image = window.scene.grab();
    const bool drawn = VexalTest::sameColor(image.pixelColor(inside), plotterColor);
    if (!drawn && !VexalTest::sameColor(image.pixelColor(inside), background))
        qWarning("%s", describeAt(image).constData());
    return drawn;
}

void tst_MultiWindow::plotterMovesBetweenWindows_data()
{
    addKinds();
}

void tst_MultiWindow::plotterMovesBetweenWindows()
{
    QFETCH(QString, kind);
    Window windows[3];
    for (Window &w : windows)
        QVERIFY(w.scene.isReady());
    const std::unique_ptr<IPlotter> plotter = makePlotter(kind, windows[0].chart());
    // Around all three windows and back to the first, twice.
    for (int step = 0; step < 7; ++step) {
        Window &current = windows[step % 3];
        plotter->setChartArea(current.chart());
        QVERIFY2(drawsPlotter(current), qPrintable(QStringLiteral("step %1").arg(step)));
        for (Window &other : windows) {
            if (&other != &current)
                QVERIFY2(!drawsPlotter(other), qPrintable(QStringLiteral("step %1").arg(step)));
        }
    }
}

void tst_MultiWindow::plotterListedInTwoWindows_data()
{
    addKinds();
}

void tst_MultiWindow::plotterListedInTwoWindows()
{
    QFETCH(QString, kind);
    Window first;
    Window second;
    QVERIFY(first.scene.isReady() && second.scene.isReady());
    const std::unique_ptr<IPlotter> plotter = makePlotter(kind, first.chart());
    second.chart()->setPlotter({plotter.get()});
    for (int frame = 0; frame < 3; ++frame) {
        QVERIFY(drawsPlotter(first));
        QVERIFY(drawsPlotter(second));
    }
    // New data reach both windows.
    plotter->setData(QList<double>(dataFor(kind).size(), 0.5));
    QVERIFY(!drawsPlotter(first));
    QVERIFY(!drawsPlotter(second));
}

void tst_MultiWindow::windowClosedAndShownAgain_data()
{
    addKinds();
}

void tst_MultiWindow::windowClosedAndShownAgain()
{
    QFETCH(QString, kind);
    Window window;
    QVERIFY(window.scene.isReady());
    const std::unique_ptr<IPlotter> plotter = makePlotter(kind, window.chart());
    QVERIFY(drawsPlotter(window));
    for (int round = 0; round < 2; ++round) {
        window.scene.window().close();
        // Its scene graph and context go; showing it again makes new ones.
        window.scene.window().releaseResources();
        QCoreApplication::processEvents();
        window.scene.window().show();
        // Grabbed as soon as it is exposed again, with a new context.
        QVERIFY(QTest::qWaitForWindowExposed(&window.scene.window()));
        QVERIFY2(drawsPlotter(window), qPrintable(QStringLiteral("round %1").arg(round)));
    }
}

void tst_MultiWindow::chartReparentedIntoAnotherWindow_data()
{
    addKinds();
}

void tst_MultiWindow::chartReparentedIntoAnotherWindow()
{
    QFETCH(QString, kind);
    Window first;
    Window second;
    QVERIFY(first.scene.isReady() && second.scene.isReady());
    const std::unique_ptr<IPlotter> plotter = makePlotter(kind, first.chart());
    QVERIFY(drawsPlotter(first));
    IChartArea *chart = first.chart();
    chart->setParentItem(second.scene.root());
    QVERIFY(!drawsPlotter(first));
    QVERIFY(drawsPlotter(second));
    chart->setParentItem(first.scene.root());
    QVERIFY(drawsPlotter(first));
}

void tst_MultiWindow::plotterDestroyedWhileAnotherWindowDrawsIt()
{
    Window first;
    Window second;
    QVERIFY(first.scene.isReady() && second.scene.isReady());
    auto plotter = makePlotter(QStringLiteral("bars"), first.chart());
    second.chart()->setPlotter({plotter.get()});
    QVERIFY(drawsPlotter(first));
    QVERIFY(drawsPlotter(second));
    plotter.reset();
    QVERIFY(first.chart()->plotter().isEmpty());
    QVERIFY(second.chart()->plotter().isEmpty());
    QVERIFY(!drawsPlotter(first));
    QVERIFY(!drawsPlotter(second));
}

void tst_MultiWindow::decoratorMovesBetweenWindows()
{
    Window first;
    Window second;
    QVERIFY(first.scene.isReady() && second.scene.isReady());
    const std::unique_ptr<IPlotter> bars = makePlotter(QStringLiteral("bars"), first.chart());
    const std::unique_ptr<IPlotter> otherBars = makePlotter(QStringLiteral("bars"), second.chart());
    // Drawn before the bars, highlighting the bar under the mouse at x 15
    // (pixel 150, 80), away from the pixel that the checks read.
    BarDecorator decorator;
    decorator.setZOrder(-1);
    decorator.setChartArea(first.chart());
    decorator.addPlotter(bars.get());
    decorator.setActive(true);
    const auto hover = [&decorator] {
        decorator.setMouseX(150);
        decorator.setMouseY(80);
    };
    hover();
    QVERIFY(drawsPlotter(first));
    decorator.setChartArea(second.chart());
    decorator.addPlotter(otherBars.get());
    hover();
    QVERIFY(!decorator.infoMap().isEmpty()); // it highlights a bar in the second window
    // The second window's own bars still draw with the decorator in it, and
    // the first window's bars without it.
    for (int frame = 0; frame < 3; ++frame) {
        QVERIFY(drawsPlotter(second));
        QVERIFY(drawsPlotter(first));
    }
    decorator.setChartArea(first.chart());
    hover();
    QVERIFY(drawsPlotter(first));
    QVERIFY(drawsPlotter(second));
}

VEXAL_GL_TEST_MAIN(tst_MultiWindow)
#include "tst_multiwindow.moc"
