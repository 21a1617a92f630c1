// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Unit tests of the one-dimensional plotter: index ranges, index under a point,
// maxima and hover records.
#include <vexal/ichartarea.h>
#include <vexal/iplotter1d.h>

#include <QtTest/QTest>

namespace {

class Plotter1DProbe : public IPlotter1D
{
public:
    using IPlotter::offsetSubtracts;
};

// A plotter on a chart (data are dropped without one) with the given series.
struct Fixture
{
    IChartArea chart;
    Plotter1DProbe plotter;

    Fixture(const QList<double> &values, const QRectF &area, double xOffset = 0.0, bool subtracts = true)
    {
        plotter.offsetSubtracts = subtracts;
        plotter.setChartArea(&chart);
        plotter.setPlotterArea(area);
        plotter.setXOffset(xOffset);
        plotter.setData(values);
    }
};

} // namespace

class tst_IPlotter1D : public QObject
{
    Q_OBJECT

private slots:
    void indexAt_data();
    void indexAt();
    void indexRanges_data();
    void indexRanges();
    void maxIn_data();
    void maxIn();
    void hovering_data();
    void hovering();
};

void tst_IPlotter1D::indexAt_data()
{
    QTest::addColumn<QList<double>>("values");
    QTest::addColumn<QRectF>("area");
    QTest::addColumn<double>("xOffset");
    QTest::addColumn<bool>("subtracts");
    QTest::addColumn<double>("x");
    QTest::addColumn<int>("expected");

    const QList<double> four{1, 2, 3, 4};
    const QRectF area(0, 0, 8, 4);
    QTest::newRow("the left edge gives sample 0") << four << area << 0.0 << true << 0.0 << 0;
    QTest::newRow("inside sample 1") << four << area << 0.0 << true << 3.9 << 1;
    QTest::newRow("an inner boundary belongs to the right sample") << four << area << 0.0 << true << 4.0 << 2;
    QTest::newRow("the right edge gives one past the last sample") << four << area << 0.0 << true << 8.0 << 4;
    QTest::newRow("left of the area gives -1") << four << area << 0.0 << true << -0.1 << -1;
    QTest::newRow("right of the area gives -1") << four << area << 0.0 << true << 8.1 << -1;
    QTest::newRow("an area that does not span y = 0 gives -1")
        << four << QRectF(0, 1, 8, 4) << 0.0 << true << 3.0 << -1;
    QTest::newRow("no data give 0 anywhere inside the area") << QList<double>{} << area << 0.0 << true << 7.0 << 0;
    QTest::newRow("an offset of 5 moves the data area 5 units left")
        << four << QRectF(10, 0, 8, 4) << 5.0 << true << 5.0 << 0;
    QTest::newRow("a subtracting offset leaves the old left edge outside")
        << four << QRectF(10, 0, 8, 4) << 5.0 << true << 13.5 << -1;
    QTest::newRow("an adding offset of 5 moves the data area 5 units right")
        << four << QRectF(10, 0, 8, 4) << 5.0 << false << 15.0 << 0;
    QTest::newRow("an adding offset leaves the old left edge outside")
        << four << QRectF(10, 0, 8, 4) << 5.0 << false << 14.9 << -1;
}

void tst_IPlotter1D::indexAt()
{
    QFETCH(QList<double>, values);
    QFETCH(QRectF, area);
    QFETCH(double, xOffset);
    QFETCH(bool, subtracts);
    QFETCH(double, x);
    QFETCH(int, expected);

    Fixture f(values, area, xOffset, subtracts);
    QCOMPARE(f.plotter._index_at(x), expected);
}

void tst_IPlotter1D::indexRanges_data()
{
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");

    // Ten samples of width 1 from x = 10.
    QTest::newRow("the whole area covers every sample") << QRectF(0, 0, 100, 10) << 0 << 10;
    QTest::newRow("a rectangle inside rounds outwards") << QRectF(12.5, 0, 3, 10) << 2 << 6;
    QTest::newRow("a rectangle on sample boundaries keeps them") << QRectF(13, 0, 2, 10) << 3 << 5;
    QTest::newRow("a rectangle past the right edge ends at n") << QRectF(18.5, 0, 30, 10) << 8 << 10;
    QTest::newRow("a rectangle left of the area starts at 0 and ends at 0 or less")
        << QRectF(0, 0, 5, 10) << 0 << 0;
}

void tst_IPlotter1D::indexRanges()
{
    QFETCH(QRectF, rect);
    QFETCH(int, start);
    QFETCH(int, end);

    Fixture f(QList<double>(10, 1.0), QRectF(10, 0, 10, 1));
    QCOMPARE(f.plotter.__start_index(rect), start);
    QVERIFY2(f.plotter.__end_index(rect) <= end, QByteArray::number(f.plotter.__end_index(rect)));
    if (end > 0)
        QCOMPARE(f.plotter.__end_index(rect), end);
}

void tst_IPlotter1D::maxIn_data()
{
    QTest::addColumn<QList<double>>("values");
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<double>("expected");

    const QRectF all(0, 0, 100, 100);
    QTest::newRow("no data give 0") << QList<double>{} << all << 0.0;
    QTest::newRow("the largest value of the range") << QList<double>{1, 7, 3, 5} << all << 7.0;
    QTest::newRow("only samples inside the rectangle count")
        << QList<double>{1, 7, 3, 5} << QRectF(2, 0, 1, 10) << 3.0;
    QTest::newRow("all-negative values give 0") << QList<double>{-1, -7} << all << 0.0;
    QTest::newRow("values carry float precision only")
        << QList<double>{1.0, 16777217.0} << all << 16777216.0;
    QTest::newRow("a rectangle outside the data area gives 0") << QList<double>{1, 7} << QRectF(50, 0, 10, 10) << 0.0;
}

void tst_IPlotter1D::maxIn()
{
    QFETCH(QList<double>, values);
    QFETCH(QRectF, rect);
    QFETCH(double, expected);

    Fixture f(values, QRectF(0, 0, values.size(), 10));
    QCOMPARE(f.plotter.max_in(rect), expected);
}

void tst_IPlotter1D::hovering_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<int>("index");
    QTest::addColumn<QRectF>("area");

    // Values 4, 2, -1 on an area 6 wide: samples are 2 units wide.
    QTest::newRow("a point inside a bar is valid") << QPointF(1, 3) << true << 0 << QRectF(0, 0, 2, 4);
    QTest::newRow("a point on the top of a bar is valid") << QPointF(3, 2) << true << 1 << QRectF(2, 0, 2, 2);
    QTest::newRow("a point above a bar is not valid but keeps the index") << QPointF(3, 2.5) << false << 1 << QRectF();
    QTest::newRow("a point below a negative bar's top is valid")
        << QPointF(5, -2) << true << 2 << QRectF(4, 0, 2, -1);
    QTest::newRow("a point outside the data area has no index") << QPointF(7, 0) << false << -1 << QRectF();
    QTest::newRow("the right edge has no sample to hover") << QPointF(6, 0) << false << 3 << QRectF();
}

void tst_IPlotter1D::hovering()
{
    QFETCH(QPointF, point);
    QFETCH(bool, valid);
    QFETCH(int, index);
    QFETCH(QRectF, area);

    Fixture f({4, 2, -1}, QRectF(0, 0, 6, 4));
    const SInfoPoint info = f.plotter.mouse_hovering(point);
    QCOMPARE(info.plotter, &f.plotter);
    QCOMPARE(info.valid, valid);
    QCOMPARE(info.index, index);
    QCOMPARE(info.area, area);
    QCOMPARE(info.area.isNull(), !valid);
}

QTEST_MAIN(tst_IPlotter1D)
#include "tst_iplotter1d.moc"
