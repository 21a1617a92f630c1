// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Unit tests of the fixed decimator for (width, value) pairs: its fixed write
// slots, the bounded pair walk and the numPoint setter.
#include <vexal/fixeddecimator2d.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <limits>

namespace {

const double NaN = std::numeric_limits<double>::quiet_NaN();

// Five items of width 2 with values 1, 5, 3, 4, 2: 10 units in all.
const QList<double> FivePairs{2, 1, 2, 5, 2, 3, 2, 4, 2, 2};

} // namespace

class tst_FixedDecimator2D : public QObject
{
    Q_OBJECT

private slots:
    void defaultNumPointIs256();
    void writesOnlyTheCellWidthAndTheLastMaximum_data();
    void writesOnlyTheCellWidthAndTheLastMaximum();
    void nullAreaOrNoWholePairIgnoresInput_data();
    void nullAreaOrNoWholePairIgnoresInput();
    void numPointSetter_data();
    void numPointSetter();
    void numPointRecomputesFromTheParent();
};

void tst_FixedDecimator2D::defaultNumPointIs256()
{
    FixedDecimator2D filter;
    QCOMPARE(filter.numPoint(), 256);
    filter.setArea(QRectF(0, 0, 10, 1));
    filter.setData(FivePairs);
    QCOMPARE(filter.data().size(), 256);
}

void tst_FixedDecimator2D::writesOnlyTheCellWidthAndTheLastMaximum_data()
{
    QTest::addColumn<int>("numPoint");
    QTest::addColumn<QRectF>("area");
    QTest::addColumn<QList<double>>("input");
    QTest::addColumn<QList<double>>("output");

    const QRectF ten(0, 0, 10, 1);
    // Cells of 2 units; the last cell reaches item 4 from item 3: max(4, 2).
    QTest::newRow("five cells over five pairs") << 5 << ten << FivePairs << QList<double>{2, 0, 4, 0, 0};
    // Cells of 5 units; the last one walks items 2 to 4 from item 2: max(3, 4, 2).
    QTest::newRow("two cells: no slot 2, only the width")
        << 2 << ten << FivePairs << QList<double>{5, 0};
    QTest::newRow("one cell holds the width") << 1 << ten << FivePairs << QList<double>{10};
    QTest::newRow("an area wider than the pairs stops at the last pair")
        << 4 << QRectF(0, 0, 1000, 1) << FivePairs << QList<double>{250, 0, 2, 0};
    QTest::newRow("an odd-length input ignores its last element")
        << 3 << QRectF(0, 0, 3, 1) << QList<double>{1, 7, 1, 8, 1, 9, 1} << QList<double>{1, 0, 9};
    QTest::newRow("a single pair") << 3 << QRectF(0, 0, 3, 1) << QList<double>{1, 6} << QList<double>{1, 0, 6};
    QTest::newRow("a NaN width stops the walk")
        << 3 << QRectF(0, 0, 6, 1) << QList<double>{NaN, 1, 2, 5, 2, 3} << QList<double>{2, 0, 1};
    QTest::newRow("zero-width pairs are walked over")
        << 3 << QRectF(0, 0, 3, 1) << QList<double>{1, 1, 0, 8, 1, 2, 1, 3} << QList<double>{1, 0, 3};
    QTest::newRow("a zero-width area writes width 0")
        << 3 << QRectF(0, 0, 0, 1) << FivePairs << QList<double>{0, 0, 1};
}

void tst_FixedDecimator2D::writesOnlyTheCellWidthAndTheLastMaximum()
{
    QFETCH(int, numPoint);
    QFETCH(QRectF, area);
    QFETCH(QList<double>, input);
    QFETCH(QList<double>, output);

    FixedDecimator2D filter;
    filter.setNumPoint(numPoint);
    filter.setArea(area);
    QSignalSpy spy(&filter, &Filter1D::dataChanged);
    filter.setData(input);
    QCOMPARE(filter.data(), output);
    QCOMPARE(spy.size(), 1);
}

void tst_FixedDecimator2D::nullAreaOrNoWholePairIgnoresInput_data()
{
    QTest::addColumn<QRectF>("area");
    QTest::addColumn<QList<double>>("input");
    QTest::newRow("a null area ignores input") << QRectF() << FivePairs;
    QTest::newRow("an empty list is ignored") << QRectF(0, 0, 10, 1) << QList<double>();
    QTest::newRow("one element without its value is ignored") << QRectF(0, 0, 10, 1) << QList<double>{3};
}

void tst_FixedDecimator2D::nullAreaOrNoWholePairIgnoresInput()
{
    QFETCH(QRectF, area);
    QFETCH(QList<double>, input);

    FixedDecimator2D filter;
    filter.setArea(area);
    QSignalSpy spy(&filter, &Filter1D::dataChanged);
    filter.setData(input);
    QCOMPARE(spy.size(), 0);
    QVERIFY(filter.data().isEmpty());
}

void tst_FixedDecimator2D::numPointSetter_data()
{
    QTest::addColumn<int>("initial");
    QTest::addColumn<int>("requested");
    QTest::addColumn<int>("stored");
    QTest::addColumn<bool>("signalled");

    QTest::newRow("0 stores 1") << 8 << 0 << 1 << true;
    QTest::newRow("-4 stores 1") << 8 << -4 << 1 << true;
    QTest::newRow("0 when 1 is stored does nothing") << 1 << 0 << 1 << false;
    QTest::newRow("the same value does nothing") << 8 << 8 << 8 << false;
    QTest::newRow("a new value is stored") << 8 << 3 << 3 << true;
    QTest::newRow("the largest int stores 2^20, the most cells a filter makes")
        << 8 << std::numeric_limits<int>::max() << (1 << 20) << true;
}

void tst_FixedDecimator2D::numPointSetter()
{
    QFETCH(int, initial);
    QFETCH(int, requested);
    QFETCH(int, stored);
    QFETCH(bool, signalled);

    FixedDecimator2D filter;
    filter.setNumPoint(initial);
    QSignalSpy spy(&filter, &FixedDecimator2D::numPointChanged);
    if (requested > (1 << 20))
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("numPoint \\d+ is too large, using 1048576")));
    filter.setNumPoint(requested);
    QCOMPARE(filter.numPoint(), stored);
    QCOMPARE(spy.size(), signalled ? 1 : 0);
}

void tst_FixedDecimator2D::numPointRecomputesFromTheParent()
{
    Filter1D parent;
    parent.setArea(QRectF(0, 0, 10, 1));
    parent.setData(FivePairs);
    FixedDecimator2D filter;
    parent.addFilter(&filter);
    QCOMPARE(filter.data().size(), 256);

    filter.setNumPoint(5);
    QCOMPARE(filter.data(), (QList<double>{2, 0, 4, 0, 0}));
}

QTEST_APPLESS_MAIN(tst_FixedDecimator2D)
#include "tst_fixeddecimator2d.moc"
