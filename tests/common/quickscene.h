// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <memory>

namespace VexalTest {

// Selects the OpenGL scene graph (the only one that draws framebuffer-object
// items) and registers the test-only QML types; call before the application.
void prepareOpenGLTests();
void registerTestTypes();

// A window showing one QML scene from source text, for pixel tests.
class QuickScene
{
public:
    QuickScene(const QByteArray &qml, const QSize &size = QSize(200, 100));
    ~QuickScene();

    bool isReady() const { return m_ready; }
    QQuickWindow &window() { return *m_window; }
    QQuickItem *root() const { return m_root.get(); }
    template <typename T> T *find(const QString &objectName) const
    {
        return root()->findChild<T *>(objectName);
    }
    // Synchronises and renders the current state, then reads the window back.
    QImage grab();

private:
    // Declared in the order of construction; destroyed item first, engine last.
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<QQuickItem> m_root;
    bool m_ready = false;
};

// True when every channel differs by at most the tolerance.
bool sameColor(const QColor &a, const QColor &b, int tolerance = 3);
// True when both images have the same size and every pixel the same colour
// within the tolerance.
bool sameImage(const QImage &a, const QImage &b, int tolerance = 3);
// Describes a colour for failure messages.
QByteArray describe(const QColor &c);

} // namespace VexalTest

// Runs a QTest object on the OpenGL scene graph under a real window system.
#define VEXAL_GL_TEST_MAIN(TestObject)                   \
    int main(int argc, char **argv)                      \
    {                                                    \
        VexalTest::prepareOpenGLTests();                 \
        QGuiApplication app(argc, argv);                 \
        VexalTest::registerTestTypes();                  \
        TestObject test;                                 \
        QTEST_SET_MAIN_SOURCE_PATH                       \
        return QTest::qExec(&test, argc, argv);          \
    }
