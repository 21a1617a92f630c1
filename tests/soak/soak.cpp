// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Shows the soak scene for a given number of seconds and prints, once a
// second, "soak <second> <frames swapped during it> <resident KiB>" for
// tools/soak.sh.
#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickView>

#include <atomic>
#include <cstdio>

namespace {

// The process's resident set size in KiB, from /proc.
long residentKiB()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (QByteArray line = status.readLine(); !line.isEmpty(); line = status.readLine()) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toLong();
    }
    return -1;
}

} // namespace

int main(int argc, char **argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGL);
    QGuiApplication app(argc, argv);
    const int seconds = argc > 1 ? QByteArray(argv[1]).toInt() : 60;

    std::atomic<int> frames{0}; // swapped on the render thread; outlives the window
    QQuickView view;
    view.engine()->addImportPath(QStringLiteral(VEXAL_QML_IMPORT_DIR));
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.setSource(QUrl::fromLocalFile(QStringLiteral(VEXAL_SOAK_QML)));
    if (view.status() != QQuickView::Ready)
        return 1;
    view.resize(800, 600);
    view.show();

    QObject::connect(&view, &QQuickWindow::frameSwapped, &view, [&frames] { ++frames; }, Qt::DirectConnection);
    int elapsed = 0;
    QTimer clock;
    QObject::connect(&clock, &QTimer::timeout, &app, [&] {
        std::printf("soak %d %d %ld\n", ++elapsed, frames.exchange(0), residentKiB());
        std::fflush(stdout);
        if (elapsed >= seconds)
            app.quit();
    });
    clock.start(1000);
    return app.exec();
}
