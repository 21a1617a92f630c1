// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Qt Quick Test runner for the module's QML-facing behaviour.
#include "quickscene.h"

#include <QtQml/QQmlEngine>
#include <QtQuickTest/quicktest.h>

class Setup : public QObject
{
    Q_OBJECT

public:
    Setup() { VexalTest::prepareOpenGLTests(); }

public slots:
    void qmlEngineAvailable(QQmlEngine *) { VexalTest::registerTestTypes(); }
};

QUICK_TEST_MAIN_WITH_SETUP(vexal, Setup)

#include "quicktestmain.moc"
