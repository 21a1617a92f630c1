// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// The bar decorator's highlight on a context that draws it: OpenGL ES (Mesa
// offers 3.2, which takes the attribute program bound by name). OpenGL errors
// are not fatal here: Qt's own OpenGL ES frame (outside the chart's drawing)
// leaves GL_INVALID_OPERATION pending, which the next plotter draw reports.
#include <vexal/bardecorator.h>
#include "bardecoratorprobe.h"
#include <vexal/ichartarea.h>
#include "plotterscene.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QOpenGLContext>
#include <QtGui/QSurfaceFormat>
#include <QtQuick/QSGRendererInterface>
#include <QtTest/QTest>

using PlotterTest::background;
using PlotterTest::pixelOf;
using VexalTest::QuickScene;

namespace {

// White at alpha 70 added to the red bar below, in proportion to the bar's alpha 1.
const QColor highlightedRed(255, 70, 70);

// A scene whose decorator draws, with the mouse not yet on a bar.
struct HighlightScene
{
    QuickScene scene{PlotterTest::chartScene(decoratedBars)}; // the two red bars
    BarDecorator *decorator = nullptr;                        // active, watching the bars

    bool drawsHighlights()
    {
        if (!scene.isReady())
            return false;
        decorator = scene.find<BarDecorator>("decorator");
        auto *context = static_cast<QOpenGLContext *>(scene.window().rendererInterface()->getResource(
            &scene.window(), QSGRendererInterface::OpenGLContextResource));
        return decorator && context && context->isOpenGLES();
    }

    void hover(double x, double y)
    {
        decorator->setMouseX(x * 10.0);
        decorator->setMouseY(100.0 - y * 10.0);
    }
};

bool looksLike(const QImage &image, const QPoint &p, const QColor &expected)
{
    return VexalTest::sameColor(image.pixelColor(p), expected);
}

} // namespace

class tst_BarDecoratorHighlight : public QObject
{
    Q_OBJECT

private slots:
    void highlightLightsUpTheHoveredBar();
    void previousHighlightFadesOut();
    void deactivatingFadesTheHighlightOut();
};

void tst_BarDecoratorHighlight::highlightLightsUpTheHoveredBar()
{
    HighlightScene s;
    QVERIFY2(s.drawsHighlights(), "an OpenGL ES context was requested");
    PLOTTER_COMPARE_PIXEL(s.scene.grab(), pixelOf(5, 2), QColor(Qt::red));
    s.hover(5, 2);
    // Shown with the next frame, which the fade clock asks for.
    QTRY_VERIFY(looksLike(s.scene.grab(), pixelOf(5, 2), highlightedRed));
    const QImage image = s.scene.grab();
    PLOTTER_COMPARE_PIXEL(image, pixelOf(5, 2), highlightedRed);
    PLOTTER_COMPARE_PIXEL(image, pixelOf(0.5, 3.8), highlightedRed); // near the bar's top-left corner
    PLOTTER_COMPARE_PIXEL(image, pixelOf(15, 2), QColor(Qt::red));   // the other bar
    PLOTTER_COMPARE_PIXEL(image, pixelOf(5, 6), background);         // above the bar
}

void tst_BarDecoratorHighlight::previousHighlightFadesOut()
{
    HighlightScene s;
    QVERIFY2(s.drawsHighlights(), "an OpenGL ES context was requested");
    s.hover(5, 2);
    QTRY_VERIFY(looksLike(s.scene.grab(), pixelOf(5, 2), highlightedRed));
    s.hover(15, 2);
    // The new highlight shows at the next frame; the old one fades within its time unit.
    QTRY_VERIFY(looksLike(s.scene.grab(), pixelOf(15, 2), highlightedRed));
    QTRY_VERIFY(looksLike(s.scene.grab(), pixelOf(5, 2), Qt::red));
    PLOTTER_COMPARE_PIXEL(s.scene.grab(), pixelOf(15, 2), highlightedRed);
}

void tst_BarDecoratorHighlight::deactivatingFadesTheHighlightOut()
{
    HighlightScene s;
    QVERIFY2(s.drawsHighlights(), "an OpenGL ES context was requested");
    s.hover(15, 7);
    QTRY_VERIFY(looksLike(s.scene.grab(), pixelOf(15, 7), highlightedRed));
    s.decorator->setActive(false);
    QTRY_VERIFY(looksLike(s.scene.grab(), pixelOf(15, 7), Qt::red));
    s.hover(5, 2); // ignored while inactive
    PLOTTER_COMPARE_PIXEL(s.scene.grab(), pixelOf(5, 2), QColor(Qt::red));
}

int main(int argc, char **argv)
{
    VexalTest::prepareOpenGLTests();
    QSurfaceFormat format = QSurfaceFormat::defaultFormat();
    format.setRenderableType(QSurfaceFormat::OpenGLES);
    QSurfaceFormat::setDefaultFormat(format);
    QGuiApplication app(argc, argv);
    VexalTest::registerTestTypes();
    tst_BarDecoratorHighlight test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_bardecorator_highlight.moc"
