// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// vexal-demo: what the module is for, in one window.
//   vexal-demo                      interactive window
//   vexal-demo --csv FILE           loads FILE into the CSV chart instead of the sample
//   vexal-demo --screenshot OUT.png renders the window, writes the picture and exits
#include "demoseries.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFileInfo>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>
#include <QtQuick/QQuickWindow>
#include <QtQuickControls2/QQuickStyle>

#include <cstdio>
#include <memory>

namespace {

constexpr int ScreenshotWarmUpMs = 2500;   // live data has arrived and the zoom has settled
constexpr int ScreenshotStableFrames = 3;  // frames swapped after the warm-up before grabbing

struct Options
{
    QString csvFile = QStringLiteral(":/sample.csv"); // series of the CSV chart
    QString screenshot;                               // picture to write, empty for a window
    bool dark = false;                                // the Dark Material theme
};

// Parses the command line; returns the exit code to stop with, or -1 to go on.
int parseArguments(const QStringList &arguments, Options &options)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Vexal demo: long series, live data, zoom and export."));
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help."));
    const QCommandLineOption csv(QStringLiteral("csv"), QStringLiteral("Load FILE (one number a line)."),
                                 QStringLiteral("FILE"));
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Write the window to OUT.png once the data are shown, then exit."),
                                        QStringLiteral("OUT.png"));
    const QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("Use the Dark Material theme."));
    parser.addOptions({help, csv, screenshot, dark});
    if (!parser.parse(arguments) || !parser.positionalArguments().isEmpty()) {
        const QString error = parser.errorText().isEmpty()
            ? QStringLiteral("unexpected argument '%1'").arg(parser.positionalArguments().value(0))
            : parser.errorText();
        fprintf(stderr, "vexal-demo: %s\n\n%s", qPrintable(error), qPrintable(parser.helpText()));
        return 2;
    }
    if (parser.isSet(help)) {
        printf("%s", qPrintable(parser.helpText()));
        return 0;
    }
    if (parser.isSet(csv)) {
        options.csvFile = parser.value(csv);
        const QFileInfo file(options.csvFile);
        if (!file.exists() || !file.isReadable() || file.isDir()) {
            fprintf(stderr, "vexal-demo: cannot read the CSV file '%s'\n", qPrintable(options.csvFile));
            return 1;
        }
    }
    options.screenshot = parser.value(screenshot);
    options.dark = parser.isSet(dark);
    return -1;
}

// Writes the window to path once the data are shown and frames are stable.
void scheduleScreenshot(QQuickWindow *window, const QString &path)
{
    auto frames = std::make_shared<int>(0);
    QTimer::singleShot(ScreenshotWarmUpMs, window, [window, path, frames] {
        QObject::connect(window, &QQuickWindow::frameSwapped, window, [window, path, frames] {
            if (++*frames != ScreenshotStableFrames)
                return;
            const bool saved = window->grabWindow().save(path);
            if (saved)
                printf("vexal-demo: wrote %s\n", qPrintable(QFileInfo(path).absoluteFilePath()));
            else
                fprintf(stderr, "vexal-demo: cannot write '%s'\n", qPrintable(path));
            QCoreApplication::exit(saved ? 0 : 1);
        }, Qt::QueuedConnection);
        window->update();
    });
}

} // namespace

int main(int argc, char **argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGL); // chart items draw with OpenGL
    QGuiApplication app(argc, argv);
    app.setApplicationName(QStringLiteral("vexal-demo"));
    Options options;
    if (const int code = parseArguments(app.arguments(), options); code >= 0)
        return code;

    QQuickStyle::setStyle(QStringLiteral("Material"));
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral(VEXAL_DEMO_QML_DIR));
    engine.setInitialProperties({{QStringLiteral("csvFile"), options.csvFile}, {QStringLiteral("dark"), options.dark}});
    engine.load(QUrl(QStringLiteral("qrc:/Main.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    if (!options.screenshot.isEmpty())
        scheduleScreenshot(window, options.screenshot);
    return app.exec();
}
