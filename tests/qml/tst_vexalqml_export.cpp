// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// VexalQML.exportImage: the saved picture has upsize times the view's size,
// and what the charts and labels draw is drawn at that size, not scaled up
// from the screen's pixels.
#include "quickscene.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtGui/QGuiApplication>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <cmath>

namespace {

constexpr QSize ViewSize(600, 400);
const QColor BarColor(70, 130, 180);

// Bars of alternating heights whose edges fall between the screen's pixels,
// under a title.
const char *const SceneQml = R"(
import QtQuick 2.15
import VexalPlugin 1.0
import "qrc:/qml"

VexalQML {
    id: view
    updateIntervalMs: 0
    title: "Export of seventeen bars"
    enableLegend: false

    BarPlotter {
        chartArea: view.refChartArea
        color: "#4682b4"
        plotterArea: Qt.rect(0, 0, 17, 10)
        data: [4, 9, 4, 9, 4, 9, 4, 9, 4, 9, 4, 9, 4, 9, 4, 9, 4]
    }
}
)";

} // namespace

class TstVexalQmlExport : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void pictureHasUpsizeTimesTheViewSize_data();
    void pictureHasUpsizeTimesTheViewSize();
    void barEdgesStayHardAtEveryUpsize_data();
    void barEdgesStayHardAtEveryUpsize();
    void titleIsDrawnAtThePictureSize();
    void exportWarnsNothingAndLeavesTheScreenScale();
    void screenKeepsItsPictureDuringTheExport();
    void exportsAskedTogetherAreWrittenInTurn();
    void unwritablePathWarnsAndStillCompletes();
    void badUpsizeWarnsAndSavesAtTheViewSize_data();
    void badUpsizeWarnsAndSavesAtTheViewSize();

private:
    QImage exportAt(const QVariant &upsize);
    void askExport(const QString &path, const QVariant &upsize);
    struct RowEdges
    {
        int steps = 0;   // changes between bar and background along the row
        int blended = 0; // pixels that are neither
    };
    RowEdges barEdgesOnARow(const QImage &picture, int upsize) const;
    QRectF chartRect() const;

    std::unique_ptr<VexalTest::QuickScene> m_scene;
    QTemporaryDir m_dir;
    int m_exports = 0;
};

void TstVexalQmlExport::init()
{
    QVERIFY(m_dir.isValid());
    m_scene = std::make_unique<VexalTest::QuickScene>(SceneQml, ViewSize);
    QVERIFY(m_scene->isReady());
    QObject *chart = m_scene->find<QObject>(QStringLiteral("chart"));
    QVERIFY(chart);
    QTRY_COMPARE_WITH_TIMEOUT(chart->property("zoomRect").toRectF().width(), 17.0, 2000);
    m_scene->grab();
}

void TstVexalQmlExport::cleanup()
{
    m_scene.reset();
}

// Exports the view and reads the saved picture back.
QImage TstVexalQmlExport::exportAt(const QVariant &upsize)
{
    const QString path = m_dir.filePath(QStringLiteral("export%1.png").arg(++m_exports));
    QSignalSpy done(m_scene->root(), SIGNAL(exportComplete(QString)));
    askExport(path, upsize);
    if (!done.wait(5000))
        return {};
    return QImage(path).convertToFormat(QImage::Format_RGB32);
}

void TstVexalQmlExport::askExport(const QString &path, const QVariant &upsize)
{
    QMetaObject::invokeMethod(m_scene->root(), "exportImage", Q_ARG(QVariant, path), Q_ARG(QVariant, upsize));
}

// The chart item's rectangle in the view's logical pixels.
QRectF TstVexalQmlExport::chartRect() const
{
    const auto *chart = m_scene->find<QQuickItem>(QStringLiteral("chart"));
    return chart->mapRectToItem(m_scene->root(), QRectF(0, 0, chart->width(), chart->height()));
}

// Pixels of a picture's region that are neither the background nor the ink:
// the blends that smooth an edge.
static int blendedPixels(const QImage &image, const QRect &region, const QColor &ink, const QColor &background)
{
    int blended = 0;
    for (int y = region.top(); y <= region.bottom(); ++y) {
        for (int x = region.left(); x <= region.right(); ++x) {
            const QColor c = image.pixelColor(x, y);
            blended += !VexalTest::sameColor(c, ink, 12) && !VexalTest::sameColor(c, background, 12);
        }
    }
    return blended;
}

void TstVexalQmlExport::pictureHasUpsizeTimesTheViewSize_data()
{
    QTest::addColumn<double>("upsize");
    QTest::newRow("upsize 1 keeps the view's size") << 1.0;
    QTest::newRow("upsize 2 doubles it") << 2.0;
    QTest::newRow("upsize 1.5 rounds to whole pixels") << 1.5;
}

void TstVexalQmlExport::pictureHasUpsizeTimesTheViewSize()
{
    QFETCH(double, upsize);
    const QImage picture = exportAt(upsize);
    QCOMPARE(picture.size(), QSize(qRound(600 * upsize), qRound(400 * upsize)));
}

void TstVexalQmlExport::barEdgesStayHardAtEveryUpsize_data()
{
    QTest::addColumn<int>("upsize");
    QTest::newRow("at the screen's size") << 1;
    QTest::newRow("at twice the size") << 2;
    QTest::newRow("at three times the size") << 3;
}

// The edges along a row through the tall bars only (above 4.5, below 8.5 of
// the 9.45 shown).
TstVexalQmlExport::RowEdges TstVexalQmlExport::barEdgesOnARow(const QImage &picture, int upsize) const
{
    const QRectF chart = chartRect();
    const int y = int((chart.top() + chart.height() * 0.25) * upsize);
    const QRect row(int(chart.left() * upsize) + 2, y, int(chart.width() * upsize) - 4, 1);
    RowEdges edges;
    edges.blended = blendedPixels(picture, row, BarColor, picture.pixelColor(row.left(), y));
    for (int x = row.left() + 1; x <= row.right(); ++x)
        edges.steps += VexalTest::sameColor(picture.pixelColor(x, y), BarColor, 12)
                       != VexalTest::sameColor(picture.pixelColor(x - 1, y), BarColor, 12);
    return edges;
}

void TstVexalQmlExport::barEdgesStayHardAtEveryUpsize()
{
    QFETCH(int, upsize);
    const QImage picture = exportAt(upsize);
    QVERIFY(!picture.isNull());
    // Eight tall bars: sixteen edges, each a step from one colour to the other.
    const RowEdges edges = barEdgesOnARow(picture, upsize);
    QCOMPARE(edges.steps, 16);
    QCOMPARE(edges.blended, 0);
}

void TstVexalQmlExport::titleIsDrawnAtThePictureSize()
{
    const QImage single = exportAt(1);
    const QImage twice = exportAt(2);
    QVERIFY(!single.isNull() && !twice.isNull());
    const auto *title = m_scene->find<QQuickItem>(QStringLiteral("title"));
    QVERIFY(title);
    const QRect box = title->mapRectToItem(m_scene->root(), QRectF(0, 0, title->width(), title->height())).toAlignedRect();
    const QColor background = single.pixelColor(box.topLeft() - QPoint(4, 4));
    const QColor ink = title->property("color").value<QColor>();
    const int blendsAtOne = blendedPixels(single, box, ink, background);
    const int blendsAtTwo = blendedPixels(twice, QRect(box.topLeft() * 2, box.size() * 2), ink, background);
    // Glyphs drawn at twice the size have outlines twice as long, and so
    // about twice the blended pixels; a picture scaled up from the screen's
    // would have each blended pixel four times.
    QVERIFY2(blendsAtOne > 50, QByteArray::number(blendsAtOne) + " blended pixels at the screen's size");
    QVERIFY2(blendsAtTwo < 3 * blendsAtOne,
             QByteArray::number(blendsAtTwo) + " blended pixels at twice the size, "
                 + QByteArray::number(blendsAtOne) + " at the screen's size");
}

void TstVexalQmlExport::exportWarnsNothingAndLeavesTheScreenScale()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
    QVERIFY(!exportAt(2).isNull());
    for (const char *name : {"chart", "navigator"}) {
        const auto *chart = m_scene->find<QObject>(QString::fromLatin1(name));
        QVERIFY(chart);
        QCOMPARE(chart->property("renderScale").toDouble(), 1.0);
    }
    // Back on the screen the bars are drawn at the screen's pixels again.
    const QRectF chart = chartRect();
    const QImage screen = m_scene->grab();
    QVERIFY(VexalTest::sameColor(screen.pixelColor(QPointF(chart.left() + chart.width() * 1.5 / 17,
                                                           chart.bottom() - 4).toPoint()), BarColor, 12));
}

void TstVexalQmlExport::screenKeepsItsPictureDuringTheExport()
{
    const QImage before = m_scene->grab();
    const QObject *chart = m_scene->find<QObject>(QStringLiteral("chart"));
    QSignalSpy done(m_scene->root(), SIGNAL(exportComplete(QString)));
    askExport(m_dir.filePath("during.png"), 3);
    // The copy passes through one more texture, which rounds the blends of
    // translucent edges differently; a view scaled up would move whole bars.
    int scaledFrames = 0;
    QElapsedTimer clock;
    clock.start();
    while (done.isEmpty() && clock.elapsed() < 5000) {
        QTest::qWait(5);
        const bool scaled = chart->property("renderScale").toDouble() > 1.0;
        const QImage during = m_scene->grab();
        scaledFrames += scaled;
        QVERIFY2(VexalTest::sameImage(during, before, 64), scaled ? "scaled up" : "before scaling");
    }
    QCOMPARE(done.size(), 1);
    QVERIFY2(scaledFrames > 0, "no frame was seen while the view was scaled up");
}

void TstVexalQmlExport::exportsAskedTogetherAreWrittenInTurn()
{
    QSignalSpy done(m_scene->root(), SIGNAL(exportComplete(QString)));
    const QString twice = m_dir.filePath(QStringLiteral("twice.png"));
    const QString once = m_dir.filePath(QStringLiteral("once.png"));
    askExport(twice, 2);
    askExport(once, 1);
    QTRY_COMPARE_WITH_TIMEOUT(done.size(), 2, 5000);
    QCOMPARE(done.at(0).at(0).toString(), twice);
    QCOMPARE(done.at(1).at(0).toString(), once);
    const struct { QString path; int upsize; } pictures[] = {{twice, 2}, {once, 1}};
    for (const auto &[path, upsize] : pictures) {
        const QImage picture = QImage(path).convertToFormat(QImage::Format_RGB32);
        QCOMPARE(picture.size(), ViewSize * upsize);
        const RowEdges edges = barEdgesOnARow(picture, upsize);
        QCOMPARE(edges.steps, 16);
        QCOMPARE(edges.blended, 0);
    }
}

void TstVexalQmlExport::unwritablePathWarnsAndStillCompletes()
{
    const QString path = QStringLiteral("/nonexistent-directory/picture.png");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("VexalQML.exportImage: cannot write "
                                                                         "/nonexistent-directory/picture.png$")));
    QSignalSpy done(m_scene->root(), SIGNAL(exportComplete(QString)));
    askExport(path, 2);
    QVERIFY(done.wait(5000));
    QCOMPARE(done.at(0).at(0).toString(), path);
    QCOMPARE(m_scene->find<QObject>(QStringLiteral("chart"))->property("renderScale").toDouble(), 1.0);
}

void TstVexalQmlExport::badUpsizeWarnsAndSavesAtTheViewSize_data()
{
    QTest::addColumn<QVariant>("upsize");
    QTest::addColumn<QString>("shown");
    QTest::newRow("zero") << QVariant(0.0) << QStringLiteral("0");
    QTest::newRow("a negative factor") << QVariant(-2.0) << QStringLiteral("-2");
    QTest::newRow("not a number") << QVariant(std::nan("")) << QStringLiteral("NaN");
    QTest::newRow("infinity") << QVariant(HUGE_VAL) << QStringLiteral("Infinity");
    QTest::newRow("a word") << QVariant(QStringLiteral("big")) << QStringLiteral("big");
}

void TstVexalQmlExport::badUpsizeWarnsAndSavesAtTheViewSize()
{
    QFETCH(QVariant, upsize);
    QFETCH(QString, shown);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("VexalQML.exportImage: upsize %1 is not a "
                                                                         "positive finite factor; using 1$")
                                                              .arg(QRegularExpression::escape(shown))));
    QCOMPARE(exportAt(upsize).size(), ViewSize);
}

VEXAL_GL_TEST_MAIN(TstVexalQmlExport)

#include "tst_vexalqml_export.moc"
