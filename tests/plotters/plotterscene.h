// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
#pragma once

// Scenes and pixel checks shared by the plotter tests.
#include "quickscene.h"
#include "core/numeric_p.h"

#include <QtCore/QByteArray>
#include <QtCore/QRectF>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtTest/QTest>

namespace PlotterTest {

// Background of every scene, so that untouched pixels are recognisable.
inline const QColor background(0, 255, 0);

// A 200 x 100 chart named "chart" over the green background, with the given QML
// objects (plotters) inside it. chartRect (0, 0, 20, 10) maps one data unit to
// 10 pixels, value 0 on the bottom edge.
inline QByteArray chartScene(const QByteArray &plotters, const QByteArray &chartRect = "Qt.rect(0, 0, 20, 10)")
{
    return "import QtQuick 2.15\n"
           "import VexalPlugin 1.0\n"
           "Rectangle {\n"
           "    color: \"#00ff00\"\n"
           "    IChartArea {\n"
           "        id: chart\n"
           "        objectName: \"chart\"\n"
           "        anchors.fill: parent\n"
           "        adaptAreaToPlotters: false\n"
           "        updateIntervalMs: 0\n"
           "        chartRect: " + chartRect + "\n"
           + plotters +
           "    }\n"
           "}\n";
}

// The pixel that shows data point (x, y) on the chart above.
inline QPoint pixelOf(double x, double y)
{
    return QPoint(int(x * 10.0), int(100.0 - y * 10.0));
}

inline QByteArray pixelMessage(const QPoint &p, const QColor &actual, const QColor &expected)
{
    return "pixel (" + QByteArray::number(p.x()) + ", " + QByteArray::number(p.y()) + ") is "
        + VexalTest::describe(actual) + ", expected " + VexalTest::describe(expected);
}

// Fails the test unless every OpenGL error report is absent from now on.
inline void failOnOpenGLErrors()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral("OPENGL ERROR")));
}

// Shows the scene, gives the plotter named plotterName the values and grabs the
// frame drawn with them, failing the test on any OpenGL error report. A null
// image when the scene did not show or the plotter did not keep the values.
template <typename Plotter>
QImage drawWithData(const QByteArray &qml, const QString &plotterName, const QList<double> &values)
{
    failOnOpenGLErrors();
    VexalTest::QuickScene scene(qml);
    Plotter *plotter = scene.isReady() ? scene.find<Plotter>(plotterName) : nullptr;
    if (!plotter)
        return QImage();
    plotter->setData(values);
    if (!Vexal::sameData(plotter->data(), values))
        return QImage();
    return scene.grab();
}

} // namespace PlotterTest

// Compares one pixel of an image with an expected colour, with the default tolerance.
#define PLOTTER_COMPARE_PIXEL(image, point, expected)                                                 \
    do {                                                                                              \
        const QPoint pixel_ = (point);                                                                \
        const QColor actual_ = (image).pixelColor(pixel_);                                            \
        QVERIFY2(VexalTest::sameColor(actual_, (expected)),                                           \
                 PlotterTest::pixelMessage(pixel_, actual_, (expected)).constData());                 \
    } while (false)
