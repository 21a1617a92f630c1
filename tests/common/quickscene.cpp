// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#include "quickscene.h"

#include "testplotter.h"
#include "testplotter1d.h"
#include "testzoomchart.h"

#include <QtQml/QQmlEngine>
#include <QtQml/qqml.h>
#include <QtQuick/QQuickItem>
#include <QtTest/QTest>

namespace VexalTest {

void prepareOpenGLTests()
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGL);
}

void registerTestTypes()
{
    qmlRegisterType<TestPlotter>("VexalTest", 1, 0, "TestPlotter");
    qmlRegisterType<TestPlotter1D>("VexalTest", 1, 0, "TestPlotter1D");
    qmlRegisterType<TestZoomChart>("VexalTest", 1, 0, "TestZoomChart");
}

QuickScene::QuickScene(const QByteArray &qml, const QSize &size)
    : m_engine(std::make_unique<QQmlEngine>())
    , m_window(std::make_unique<QQuickWindow>())
{
    QQmlComponent component(m_engine.get());
    component.setData(qml, QUrl(QStringLiteral("file:///vexal-test/Scene.qml")));
    QObject *object = component.create();
    if (!object) {
        qWarning().noquote() << component.errorString();
        return;
    }
    m_root.reset(qobject_cast<QQuickItem *>(object));
    if (!m_root) {
        delete object;
        return;
    }
    m_window->setColor(Qt::black);
    m_window->resize(size);
    m_root->setParentItem(m_window->contentItem());
    m_root->setSize(size);
    m_window->show();
    m_ready = QTest::qWaitForWindowExposed(m_window.get());
}

QuickScene::~QuickScene() = default;

QImage QuickScene::grab()
{
    return m_window->grabWindow();
}

bool sameColor(const QColor &a, const QColor &b, int tolerance)
{
    return qAbs(a.red() - b.red()) <= tolerance && qAbs(a.green() - b.green()) <= tolerance
        && qAbs(a.blue() - b.blue()) <= tolerance && qAbs(a.alpha() - b.alpha()) <= tolerance;
}

bool sameImage(const QImage &a, const QImage &b, int tolerance)
{
    if (a.size() != b.size())
        return false;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            if (!sameColor(a.pixelColor(x, y), b.pixelColor(x, y), tolerance))
                return false;
        }
    }
    return true;
}

QByteArray describe(const QColor &c)
{
    return QStringLiteral("rgba(%1, %2, %3, %4)").arg(c.red()).arg(c.green()).arg(c.blue()).arg(c.alpha()).toLatin1();
}

} // namespace VexalTest
