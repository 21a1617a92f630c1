// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Uses the exported classes from C++ and, given a QML file, shows it and checks
// that the chart drew: vexal-consumer [--qml FILE --expect COLOR]
#include <vexal/chartarea.h>
#include <vexal/filter1d.h>
#include <vexal/barplotterdx.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>
#include <QtQuick/QQuickWindow>

#include <cstdio>

namespace {

// Pair data (width, value) through a filter into a BarPlotterDx far from the origin.
bool pairDataReachThePlotter()
{
    ChartArea chart;
    BarPlotterDx bars;
    bars.setChartArea(&chart);
    Filter1D source;
    source.addPlotter(&bars);
    source.setArea(QRectF(1e7, 0, 6, 1));
    source.setData({2, 5, 1, 3, 3, 4});
    // The plotter takes its position from the filter; width and height follow
    // its bars once it has drawn.
    printf("BarPlotterDx: %lld values at x %.1f\n", qlonglong(bars.data().size()), bars.plotterArea().x());
    return bars.data() == source.data() && bars.plotterArea().x() == 1e7;
}

// Shows the QML file and checks that the centre of its window has the colour.
int showAndCheck(QGuiApplication &app, const QString &file, const QColor &expected)
{
    QQmlApplicationEngine engine(file);
    if (engine.rootObjects().isEmpty())
        return 1;
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    int result = 1;
    QTimer::singleShot(1000, window, [&] {
        const QImage image = window->grabWindow();
        const QColor centre = image.pixelColor(image.width() / 2, image.height() / 2);
        printf("centre pixel %s, expected %s\n", qPrintable(centre.name()), qPrintable(expected.name()));
        result = centre.rgb() == expected.rgb() ? 0 : 1;
        app.quit();
    });
    app.exec();
    return result;
}

} // namespace

int main(int argc, char **argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGL);
    QGuiApplication app(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption qml(QStringLiteral("qml"), QStringLiteral("QML file to show."), QStringLiteral("FILE"));
    const QCommandLineOption expect(QStringLiteral("expect"), QStringLiteral("Colour at the window's centre."),
                                    QStringLiteral("COLOR"));
    parser.addOptions({qml, expect});
    parser.process(app);

    if (!pairDataReachThePlotter())
        return 1;
    if (parser.isSet(qml))
        return showAndCheck(app, parser.value(qml), QColor(parser.value(expect)));
    return 0;
}
