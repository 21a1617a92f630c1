// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Process set-up shared by the fuzz targets: an off-screen application object,
// which chart items need, and a message handler that keeps the module's
// warnings about refused input from flooding the run.
#include <QtCore/QtGlobal>
#include <QtGui/QGuiApplication>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

void quietMessages(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type != QtFatalMsg)
        return;
    std::fprintf(stderr, "fatal: %s\n", qPrintable(message));
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(quietMessages);
    // Qt sees only the program name: the fuzzer's flags are not its business.
    static int qtArgc = 1;
    static char *qtArgv[] = {(*argv)[0], nullptr};
    static QGuiApplication application(qtArgc, qtArgv);
    return 0;
}
