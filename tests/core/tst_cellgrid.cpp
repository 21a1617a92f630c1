// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Unit tests of the cell grid: the cell at an x, a cell's x range, the cells
// a range of x touches, the nearest boundary, and empty grids.
#include "core/cellgrid_p.h"

#include <QtTest/QTest>

#include <cmath>
#include <limits>

namespace {

const double Inf = std::numeric_limits<double>::infinity();
const double NaN = std::numeric_limits<double>::quiet_NaN();
const int IntMax = std::numeric_limits<int>::max();

} // namespace

class tst_CellGrid : public QObject
{
    Q_OBJECT

private slots:
    void cellAt_data();
    void cellAt();
    void cellsBetween_data();
    void cellsBetween();
    void nearestBoundary_data();
    void nearestBoundary();
    void cellRectCoversItsCell();
    void emptyGridMapsEverythingToCellZero();
    void clampedRanges_data();
    void clampedRanges();
};

void tst_CellGrid::cellAt_data()
{
    QTest::addColumn<QRectF>("area");
    QTest::addColumn<int>("count");
    QTest::addColumn<double>("x");
    QTest::addColumn<int>("cell");

    const QRectF ten(0, 0, 10, 1);
    QTest::newRow("the left edge is cell 0") << ten << 5 << 0.0 << 0;
    QTest::newRow("inside a cell rounds down") << ten << 5 << 3.9 << 1;
    QTest::newRow("a cell boundary starts the next cell") << ten << 5 << 4.0 << 2;
    QTest::newRow("the right edge is one past the last cell") << ten << 5 << 10.0 << 5;
    QTest::newRow("left of the grid is negative") << ten << 5 << -0.5 << -1;
    QTest::newRow("a grid far from the origin") << QRectF(1e7, 0, 4, 1) << 4 << 1e7 + 2.5 << 2;
    QTest::newRow("far right saturates at the int range") << ten << 5 << 1e300 << IntMax;
    QTest::newRow("NaN gives cell 0") << ten << 5 << NaN << 0;
}

void tst_CellGrid::cellAt()
{
    QFETCH(QRectF, area);
    QFETCH(int, count);
    QFETCH(double, x);
    QFETCH(int, cell);
    QCOMPARE(Vexal::CellGrid(area, count).cellAt(x), cell);
}

void tst_CellGrid::cellsBetween_data()
{
    QTest::addColumn<double>("x0");
    QTest::addColumn<double>("x1");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");

    // Five cells of width 2 over [0, 10].
    QTest::newRow("the whole grid") << 0.0 << 10.0 << 0 << 5;
    QTest::newRow("inside one cell") << 2.5 << 3.5 << 1 << 2;
    QTest::newRow("ending on a boundary excludes the next cell") << 2.0 << 6.0 << 1 << 3;
    QTest::newRow("ending just past a boundary includes the next cell") << 2.0 << 6.1 << 1 << 4;
    QTest::newRow("a point range on a boundary is empty") << 4.0 << 4.0 << 2 << 2;
}

void tst_CellGrid::cellsBetween()
{
    QFETCH(double, x0);
    QFETCH(double, x1);
    QFETCH(int, first);
    QFETCH(int, last);
    const Vexal::CellRange range = Vexal::CellGrid(QRectF(0, 0, 10, 1), 5).cellsBetween(x0, x1);
    QCOMPARE(range.first, first);
    QCOMPARE(range.last, last);
    QCOMPARE(range.size(), std::max(last - first, 0));
}

void tst_CellGrid::nearestBoundary_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<int>("boundary");

    // Five cells of width 2 over [0, 10].
    QTest::newRow("the left half of a cell gives its own index") << 2.9 << 1;
    QTest::newRow("the middle of a cell gives the next index") << 3.0 << 2;
    QTest::newRow("the right half of a cell gives the next index") << 3.5 << 2;
    QTest::newRow("the right edge gives the cell count") << 10.0 << 5;
}

void tst_CellGrid::nearestBoundary()
{
    QFETCH(double, x);
    QFETCH(int, boundary);
    QCOMPARE(Vexal::CellGrid(QRectF(0, 0, 10, 1), 5).nearestBoundary(x), boundary);
}

void tst_CellGrid::cellRectCoversItsCell()
{
    const Vexal::CellGrid grid(QRectF(-4, 0, 8, 1), 4);
    QCOMPARE(grid.cellWidth(), 2.0);
    QCOMPARE(grid.cellLeft(3), 2.0);
    QCOMPARE(grid.cellRect(1, 7.5), QRectF(-2, 0, 2, 7.5));
    // A cell's own left edge maps back to it, for every cell.
    for (int i = 0; i < grid.count(); ++i)
        QCOMPARE(grid.cellAt(grid.cellLeft(i)), i);
}

void tst_CellGrid::emptyGridMapsEverythingToCellZero()
{
    const Vexal::CellGrid grid(QRectF(0, 0, 10, 1), 0);
    QCOMPARE(grid.cellWidth(), Inf);
    QCOMPARE(grid.cellAt(7.0), 0);
    QCOMPARE(grid.cellsBetween(0.0, 10.0).first, 0);
    QVERIFY(grid.cellsBetween(0.0, 10.0).clampedTo(grid.count()).isEmpty());
}

void tst_CellGrid::clampedRanges_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("clampedFirst");
    QTest::addColumn<int>("clampedLast");

    QTest::newRow("a range inside stays") << 1 << 3 << 1 << 3;
    QTest::newRow("a range over both ends is cut to the cells") << -5 << 50 << 0 << 10;
    QTest::newRow("a range left of the cells is empty at 0") << -5 << -1 << 0 << 0;
    QTest::newRow("a range right of the cells is empty at the end") << 12 << 20 << 10 << 10;
    QTest::newRow("a reversed range becomes empty") << 6 << 2 << 6 << 6;
}

void tst_CellGrid::clampedRanges()
{
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(int, clampedFirst);
    QFETCH(int, clampedLast);
    const Vexal::CellRange clamped = Vexal::CellRange{first, last}.clampedTo(10);
    QCOMPARE(clamped.first, clampedFirst);
    QCOMPARE(clamped.last, clampedLast);
}

QTEST_APPLESS_MAIN(tst_CellGrid)
#include "tst_cellgrid.moc"
