// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Tests of the bars with widths: split-precision vertices, indices, index
// lookups and draw ranges, and the bars they draw far from x = 0.
#include <vexal/barplotterdx.h>
#include "plotters/plotterframes_p.h"
#include "core/numeric_p.h"
#include <vexal/ichartarea.h>
#include "plotterscene.h"
#include "core/numeric_p.h"

#include <QtGui/QGuiApplication>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <cmath>
#include <limits>

using PlotterTest::background;
using VexalTest::QuickScene;

namespace {

constexpr double Inf = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

using Vertex = BarPlotterDx::Vertex;

// Opens the frame arrays to the tests.
class BarPlotterDxProbe : public BarPlotterDx
{
public:
    using BarPlotterDx::pairFrame;

    // The frame taken for a view (outside a chart: every bar drawn on its own).
    const Vexal::PairFrame &frameFor(const QRectF &view)
    {
        QList<SRenderLayerDefinition> layers;
        _fetch_render_layers(layers, view);
        return pairFrame();
    }
    const Vexal::PairFrame &wholeFrame() { return frameFor(plotterArea()); }
};

// A plotter on a chart with its height and width taken from the given pairs.
struct AttachedBars
{
    IChartArea chart;          // chartRect set by the tests that draw ranges
    BarPlotterDxProbe plotter; // attached to chart

    explicit AttachedBars(const QList<double> &pairs, const QPointF &position = QPointF(10, 0))
    {
        chart.setAdaptAreaToPlotters(false);
        plotter.setPlotterArea(QRectF(position, QSizeF()));
        plotter.setChartArea(&chart);
        plotter.setData(pairs);
        plotter.__update_vertex();
        plotter.__update_index();
    }
};

bool sameVertex(const Vertex &a, const Vertex &b)
{
    return a.xMsb == b.xMsb && a.xLsb == b.xLsb && a.y == b.y;
}

const QList<double> sixBars{2, 5, 1, 3, 3, 4}; // [0, 2) 5, [2, 3) 3, [3, 6) 4

// Where the shader puts x: the large and the small parts are subtracted apart.
float shaderClipX(const Vertex &v, const Vexal::SplitDouble &left, float screenDx)
{
    return ((v.xMsb - left.msb) + (v.xLsb - left.lsb)) * screenDx - 1.0f;
}

// Bars far from 0: a first bar 10,000,000.25 wide and 0 high, then [+0.25, +2.25)
// 5 high and [+2.25, +5.25) 8 high, seen from x = 10,000,000 on.
const QByteArray farBars = R"(
        BarPlotterDx {
            objectName: "bars"
            chartArea: chart
            color: "#ff0000"
            data: [10000000.25, 0, 2, 5, 3, 8]
        }
)";

} // namespace

class tst_BarPlotterDx : public QObject
{
    Q_OBJECT

private slots:
    // CPU side
    void pairsBecomeBarsWithSplitX();
    void indicesFormTwoTrianglesPerBar();
    void aShorterListRebuildsTheWindow();
    void oddAndShortListsFollowTheHeightRules_data();
    void oddAndShortListsFollowTheHeightRules();
    void indexAt_data();
    void indexAt();
    void maxInCoversTheBarsAroundTheRectangle_data();
    void maxInCoversTheBarsAroundTheRectangle();
    void areaAtUsesAUniformWidth_data();
    void areaAtUsesAUniformWidth();
    void mouseHovering_data();
    void mouseHovering();
    void plotterAreaTakesOnlyThePosition();
    void drawRangeFollowsTheView_data();
    void drawRangeFollowsTheView();
    void splitXKeepsAQuarterUnitAtTenMillion();

    // Pixels
    void barsFarFromZeroLandOnTheirPixels();
    void badPairsDrawWithoutErrors_data();
    void badPairsDrawWithoutErrors();
};

//-----------------------------------------------------------------------------
// [SECTION] CPU side
//-----------------------------------------------------------------------------

void tst_BarPlotterDx::pairsBecomeBarsWithSplitX()
{
    AttachedBars b(sixBars);
    QCOMPARE(b.plotter.plotterArea(), QRectF(10, 0, 6, 5));
    const QList<Vertex> &vertices = b.plotter.wholeFrame().vertices;
    QCOMPARE(vertices.size(), 12);
    const QList<Vertex> written{{0, 0, 0}, {2, 0, 0}, {0, 0, 5}, {2, 0, 5},
                                {2, 0, 0}, {3, 0, 0}, {2, 0, 3}, {3, 0, 3},
                                {3, 0, 0}, {6, 0, 0}, {3, 0, 4}, {6, 0, 4}};
    for (int i = 0; i < 12; ++i)
        QVERIFY2(sameVertex(vertices[i], written[i]), qPrintable(QString::number(i)));
}

void tst_BarPlotterDx::indicesFormTwoTrianglesPerBar()
{
    AttachedBars b(sixBars);
    const QList<quint32> &indices = b.plotter.wholeFrame().indices;
    QCOMPARE(indices.size(), 18);
    for (quint32 k = 0; k < 3; ++k) {
        const quint32 c = 4 * k;
        QCOMPARE(indices.mid(6 * k, 6), QList<quint32>({c + 1, c + 2, c, c + 1, c + 2, c + 3}));
    }
}

void tst_BarPlotterDx::aShorterListRebuildsTheWindow()
{
    AttachedBars b(sixBars);
    b.plotter.wholeFrame();
    b.plotter.setData({1, 1});
    QCOMPARE(b.plotter.__update_index(), false); // indices belong to each chart's window
    QCOMPARE(b.plotter.__update_vertex(), true);
    QCOMPARE(b.plotter.wholeFrame().vertices.size(), 4);
    QCOMPARE(b.plotter.pairFrame().indices.size(), 6);
}

void tst_BarPlotterDx::oddAndShortListsFollowTheHeightRules_data()
{
    QTest::addColumn<QList<double>>("pairs");
    QTest::addColumn<bool>("rebuilt");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<int>("vertices");

    QTest::newRow("an empty list rebuilds nothing") << QList<double>{} << false << QSizeF(0, 0) << 0;
    QTest::newRow("a single double gives width and height 0") << QList<double>{4} << true << QSizeF(0, 0) << 0;
    QTest::newRow("an odd last element is ignored") << QList<double>{2, 5, 1} << true << QSizeF(2, 5) << 4;
    QTest::newRow("all values negative give the largest of them")
        << QList<double>{1, -4, 1, -2} << true << QSizeF(2, -2) << 8;
    QTest::newRow("NaN values are never the maximum") << QList<double>{1, 3, 1, NaN} << true << QSizeF(2, 3) << 8;
    QTest::newRow("an infinite value is the maximum") << QList<double>{1, 3, 1, Inf} << true << QSizeF(2, Inf) << 8;
    QTest::newRow("an infinite width gives an infinite area") << QList<double>{Inf, 3, 1, 1} << true << QSizeF(Inf, 3) << 8;
}

void tst_BarPlotterDx::oddAndShortListsFollowTheHeightRules()
{
    QFETCH(QList<double>, pairs);
    QFETCH(bool, rebuilt);
    QFETCH(QSizeF, size);
    QFETCH(int, vertices);

    AttachedBars b({});
    b.plotter.setData(pairs);
    QCOMPARE(b.plotter.__update_vertex(), rebuilt);
    QCOMPARE(b.plotter.plotterArea().width(), size.width()); // compared apart: infinities compare equal
    QCOMPARE(b.plotter.plotterArea().height(), size.height());
    QCOMPARE(b.plotter.frameFor(QRectF(10, 0, 10, 1)).vertices.size(), vertices);
}

void tst_BarPlotterDx::indexAt_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<int>("index");

    // The area starts at 10.
    QTest::newRow("the left edge is bar 0") << 10.0 << 0;
    QTest::newRow("an inner boundary belongs to the bar on its left") << 12.0 << 0;
    QTest::newRow("inside the second bar") << 12.5 << 1;
    QTest::newRow("inside the last bar") << 15.9 << 2;
    QTest::newRow("the right edge is one past the last bar") << 16.0 << 3;
    QTest::newRow("left of the area") << 9.9 << -1;
    QTest::newRow("right of the area") << 16.1 << -1;
    QTest::newRow("NaN is nowhere") << NaN << -1;
}

void tst_BarPlotterDx::indexAt()
{
    QFETCH(double, x);
    QFETCH(int, index);

    AttachedBars b(sixBars);
    QCOMPARE(b.plotter._index_at(x), index);
}

void tst_BarPlotterDx::maxInCoversTheBarsAroundTheRectangle_data()
{
    QTest::addColumn<QList<double>>("pairs");
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<double>("maximum");

    QTest::newRow("inside the middle bar reaches back to the bar before it")
        << sixBars << QRectF(12.2, 0, 0.6, 1) << 5.0;
    QTest::newRow("the whole area excludes the bar at the right edge's index")
        << sixBars << QRectF(0, 0, 100, 10) << 5.0;
    QTest::newRow("a rectangle beside the area gives 0") << sixBars << QRectF(20, 0, 5, 5) << 0.0;
    QTest::newRow("all values negative give 0") << QList<double>{2, -5, 1, -3, 3, -4} << QRectF(12.2, 0, 3, 1) << 0.0;
}

void tst_BarPlotterDx::maxInCoversTheBarsAroundTheRectangle()
{
    QFETCH(QList<double>, pairs);
    QFETCH(QRectF, rect);
    QFETCH(double, maximum);

    AttachedBars b(pairs);
    // A negative height keeps y = 0 inside the area, so the lookups still work.
    QCOMPARE(b.plotter.max_in(rect), maximum);
}

void tst_BarPlotterDx::areaAtUsesAUniformWidth_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<QRectF>("area");

    // Width 6 over 6 doubles: one unit per index, not the bars' own widths.
    QTest::newRow("the second bar") << 12.5 << QRectF(11, 0, 1, 3);
    QTest::newRow("the first bar") << 10.5 << QRectF(10, 0, 1, 5);
    QTest::newRow("outside the area") << 30.0 << QRectF();
    QTest::newRow("the right edge has no bar") << 16.0 << QRectF();
}

void tst_BarPlotterDx::areaAtUsesAUniformWidth()
{
    QFETCH(double, x);
    QFETCH(QRectF, area);

    AttachedBars b(sixBars);
    QCOMPARE(b.plotter.area_at(QPointF(x, 0)), area);
}

void tst_BarPlotterDx::mouseHovering_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<int>("index");
    QTest::addColumn<QRectF>("area");

    QTest::newRow("on the second bar gives its exact rectangle") << QPointF(12.5, 2) << true << 1 << QRectF(12, 0, 1, 3);
    QTest::newRow("on the third bar") << QPointF(14, 4) << true << 2 << QRectF(13, 0, 3, 4);
    QTest::newRow("above a bar is not valid but keeps the index") << QPointF(12.5, 4) << false << 1 << QRectF();
    QTest::newRow("the right edge is not valid") << QPointF(16, 0) << false << 3 << QRectF();
    QTest::newRow("outside the area") << QPointF(5, 0) << false << -1 << QRectF();
}

void tst_BarPlotterDx::mouseHovering()
{
    QFETCH(QPointF, point);
    QFETCH(bool, valid);
    QFETCH(int, index);
    QFETCH(QRectF, area);

    AttachedBars b(sixBars);
    const SInfoPoint info = b.plotter.mouse_hovering(point);
    QCOMPARE(info.valid, valid);
    QCOMPARE(info.index, index);
    QCOMPARE(info.area, area);
    QCOMPARE(info.plotter, &b.plotter);
}

void tst_BarPlotterDx::plotterAreaTakesOnlyThePosition()
{
    AttachedBars b(sixBars);
    QSignalSpy changed(&b.plotter, &IPlotter::plotterAreaChanged);
    b.plotter.setPlotterArea(QRectF(10, 0, 100, 100));
    QCOMPARE(changed.count(), 0);
    b.plotter.setPlotterArea(QRectF(-3, 1, 100, 100));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(b.plotter.plotterArea(), QRectF(-3, 1, 6, 5));
}

void tst_BarPlotterDx::drawRangeFollowsTheView_data()
{
    QTest::addColumn<QPointF>("position");
    QTest::addColumn<QRectF>("view");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");

    // Bars [0, 2), [2, 3), [3, 6) from the given position.
    QTest::newRow("a view inside the middle bar starts one bar earlier")
        << QPointF(0, 0) << QRectF(2.5, 0, 1, 1) << 1 << 3;
    QTest::newRow("a view over everything draws every bar") << QPointF(0, 0) << QRectF(-5, 0, 20, 1) << 0 << 3;
    QTest::newRow("a view on the first bar only") << QPointF(0, 0) << QRectF(0, 0, 1, 1) << 0 << 1;
    QTest::newRow("a view beyond the last bar reads no width past the data")
        << QPointF(-100, 0) << QRectF(50, 0, 10, 1) << 2 << 3;
}

void tst_BarPlotterDx::drawRangeFollowsTheView()
{
    QFETCH(QPointF, position);
    QFETCH(QRectF, view);
    QFETCH(int, first);
    QFETCH(int, last);

    AttachedBars b(sixBars, position);
    b.chart.setChartRect(view);
    QList<SRenderLayerDefinition> layers;
    b.plotter._fetch_render_layers(layers, b.chart.visibleRect());
    QCOMPARE(layers.size(), 1);
    const SRenderLayerDefinition &layer = layers.first();
    // Counted from the window's first bar: a byte offset into its indices.
    QCOMPARE(layer.first / 24 + b.plotter.pairFrame().window.first, first);
    QCOMPARE(layer.count, (last - first) * 6);
    QCOMPARE(layer.program, QStringLiteral("hresbar"));
    QCOMPARE(layer.mode, 0x2004u);
    QCOMPARE(layer.attributes, QList<int>{0});
    QCOMPARE(layer.indexAttribute, 1);
    b.plotter._fetch_render_layers(layers, b.chart.visibleRect()); // later frames update the one layer
    QCOMPARE(layers.size(), 1);
}

void tst_BarPlotterDx::splitXKeepsAQuarterUnitAtTenMillion()
{
    const double x = 10000000.25;
    QVERIFY(double(float(x)) != x); // not representable in one float
    AttachedBars b({x, 0, 2, 5}, QPointF(0, 0));
    const Vertex barLeft = b.plotter.wholeFrame().vertices[4]; // bar 1 starts at x
    QCOMPARE(double(barLeft.xMsb) + double(barLeft.xLsb), x);

    // A view from 10,000,000 on, 20 units wide: the shader's arithmetic in floats.
    const Vexal::SplitDouble viewLeft = Vexal::splitDouble(10000000.0);
    const float screenDx = 2.0f / 20.0f;
    const float expected = -1.0f + 0.25f * screenDx;
    QCOMPARE(shaderClipX(barLeft, viewLeft, screenDx), expected);
    const float floatOnly = (float(x) - float(10000000.0)) * screenDx - 1.0f;
    QVERIFY(floatOnly != expected);
}

//-----------------------------------------------------------------------------
// [SECTION] Pixels
//-----------------------------------------------------------------------------

void tst_BarPlotterDx::barsFarFromZeroLandOnTheirPixels()
{
    PlotterTest::failOnOpenGLErrors();
    QuickScene scene(PlotterTest::chartScene(farBars, "Qt.rect(10000000, 0, 20, 10)"));
    QVERIFY(scene.isReady());
    const QImage image = scene.grab();
    // 10 pixels per unit: bar 1 covers pixels 2.5 to 22.5 up to row 50, bar 2
    // pixels 22.5 to 52.5 up to row 20.
    const double rightLeftEdge = 0.25 * 10;
    const double floatOnlyLeftEdge = double(float(10000000.25) - float(10000000.0)) * 10;
    QVERIFY(int(floatOnlyLeftEdge) != int(rightLeftEdge)); // one float would start bar 1 at pixel 0
    PLOTTER_COMPARE_PIXEL(image, QPoint(int(floatOnlyLeftEdge) + 1, 95), background);
    PLOTTER_COMPARE_PIXEL(image, QPoint(int(rightLeftEdge) + 1, 95), QColor(Qt::red));
    PLOTTER_COMPARE_PIXEL(image, QPoint(21, 45), background);      // above bar 1
    PLOTTER_COMPARE_PIXEL(image, QPoint(24, 45), QColor(Qt::red)); // bar 2
    PLOTTER_COMPARE_PIXEL(image, QPoint(51, 25), QColor(Qt::red));
    PLOTTER_COMPARE_PIXEL(image, QPoint(54, 95), background);
}

void tst_BarPlotterDx::badPairsDrawWithoutErrors_data()
{
    QTest::addColumn<QList<double>>("pairs");

    QTest::newRow("an empty list") << QList<double>{};
    QTest::newRow("a single double") << QList<double>{3};
    QTest::newRow("an odd-length list") << QList<double>{2, 5, 1};
    QTest::newRow("NaN widths and values") << QList<double>{NaN, 5, 2, NaN, 2, 3};
    QTest::newRow("infinite widths and values") << QList<double>{2, Inf, Inf, 3, 2, -Inf};
    QTest::newRow("huge and negative widths") << QList<double>{1e300, 5, -4, 3, 2, -1e300};
}

void tst_BarPlotterDx::badPairsDrawWithoutErrors()
{
    QFETCH(QList<double>, pairs);

    const QByteArray qml = PlotterTest::chartScene(farBars, "Qt.rect(-10, 0, 20, 10)");
    const QImage image = PlotterTest::drawWithData<BarPlotterDx>(qml, "bars", pairs);
    QVERIFY(!image.isNull());
    PLOTTER_COMPARE_PIXEL(image, QPoint(50, 5), background); // nothing reaches the top left
}

VEXAL_GL_TEST_MAIN(tst_BarPlotterDx)
#include "tst_barplotterdx.moc"
