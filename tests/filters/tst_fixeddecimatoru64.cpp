// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Unit tests of the fixed decimator for value lists: slices, empty slices,
// kept cells, the numPoint clamps and the null-area rule.
#include <vexal/fixeddecimatoru64.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <cmath>
#include <limits>

namespace {

const double NaN = std::numeric_limits<double>::quiet_NaN();
const QRectF SomeArea(0, 0, 10, 1);

} // namespace

class tst_FixedDecimatorU64 : public QObject
{
    Q_OBJECT

private slots:
    void startsWith256Zeros();
    void slices_data();
    void slices();
    void cellsNotReachedKeepTheirValues();
    void nullAreaIgnoresInput_data();
    void nullAreaIgnoresInput();
    void numPointWithoutParent_data();
    void numPointWithoutParent();
    void numPointUnderAParent_data();
    void numPointUnderAParent();
    void nanAtTheStartOfASliceWins();
};

void tst_FixedDecimatorU64::startsWith256Zeros()
{
    FixedDecimatorU64 filter;
    QCOMPARE(filter.numPoint(), 256);
    QCOMPARE(filter.data(), QList<double>(256, 0.0));
}

void tst_FixedDecimatorU64::slices_data()
{
    QTest::addColumn<int>("numPoint");
    QTest::addColumn<QList<double>>("input");
    QTest::addColumn<QList<double>>("output");

    QTest::newRow("4 points of [1, 5, 2, 8, 3, 9, 4, 7] give [5, 8, 9, 7]")
        << 4 << QList<double>{1, 5, 2, 8, 3, 9, 4, 7} << QList<double>{5, 8, 9, 7};
    // step 0.5: ends 1 (0.5 rounds up), 1, 2 (1.5 rounds up), 2: slices [0,1), [], [1,2), [].
    QTest::newRow("an input shorter than numPoint leaves empty slices at 0")
        << 4 << QList<double>{3, 6} << QList<double>{3, 0, 6, 0};
    QTest::newRow("negative values are kept") << 2 << QList<double>{-5, -2, -9, -7} << QList<double>{-2, -7};
    QTest::newRow("one value into one point") << 1 << QList<double>{42} << QList<double>{42};
    // step 5/3: ends 2, 3, 5.
    QTest::newRow("uneven slices follow the rounded ends") << 3 << QList<double>{1, 4, 2, 8, 5} << QList<double>{4, 2, 8};
}

void tst_FixedDecimatorU64::slices()
{
    QFETCH(int, numPoint);
    QFETCH(QList<double>, input);
    QFETCH(QList<double>, output);

    FixedDecimatorU64 filter;
    filter.setNumPoint(numPoint);
    filter.setArea(SomeArea);
    QSignalSpy spy(&filter, &Filter1D::dataChanged);
    filter.setData(input);
    QCOMPARE(filter.data(), output);
    QCOMPARE(spy.size(), 1);
}

void tst_FixedDecimatorU64::cellsNotReachedKeepTheirValues()
{
    FixedDecimatorU64 filter;
    filter.setNumPoint(4);
    filter.setArea(SomeArea);
    filter.setData({1, 2, 3, 4});
    // One value over 4 points: step 0.25, ends 0, 1 (0.5 rounds up): the walk
    // is done after two slices and cells 2 and 3 keep the old 3 and 4.
    filter.setData({9});
    QCOMPARE(filter.data(), (QList<double>{0, 9, 3, 4}));
}

void tst_FixedDecimatorU64::nullAreaIgnoresInput_data()
{
    QTest::addColumn<QRectF>("area");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("a null area ignores input") << QRectF() << false;
    QTest::newRow("a zero-width area that is not null accepts input") << QRectF(0, 0, 0, 1) << true;
    QTest::newRow("a negative-width area accepts input") << QRectF(0, 0, -3, 1) << true;
}

void tst_FixedDecimatorU64::nullAreaIgnoresInput()
{
    QFETCH(QRectF, area);
    QFETCH(bool, accepted);

    FixedDecimatorU64 filter;
    filter.setNumPoint(2);
    filter.setArea(area);
    QSignalSpy spy(&filter, &Filter1D::dataChanged);
    filter.setData({1, 2, 3, 4});
    QCOMPARE(spy.size(), accepted ? 1 : 0);
    QCOMPARE(filter.data(), (accepted ? QList<double>{2, 4} : QList<double>{0, 0}));
}

void tst_FixedDecimatorU64::numPointWithoutParent_data()
{
    QTest::addColumn<int>("requested");
    QTest::addColumn<int>("stored");
    QTest::newRow("0 stores 1") << 0 << 1;
    QTest::newRow("-5 stores 1") << -5 << 1;
    QTest::newRow("1000 stores 1000 without a parent") << 1000 << 1000;
    QTest::newRow("the largest int stores 2^20, the most cells a filter makes")
        << std::numeric_limits<int>::max() << (1 << 20);
}

void tst_FixedDecimatorU64::numPointWithoutParent()
{
    QFETCH(int, requested);
    QFETCH(int, stored);

    FixedDecimatorU64 filter;
    QSignalSpy spy(&filter, &FixedDecimatorU64::numPointChanged);
    if (requested > (1 << 20))
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("numPoint \\d+ is too large, using 1048576")));
    filter.setNumPoint(requested);
    QCOMPARE(filter.numPoint(), stored);
    QCOMPARE(filter.data(), QList<double>(stored, 0.0));
    QCOMPARE(spy.size(), 1);
}

void tst_FixedDecimatorU64::numPointUnderAParent_data()
{
    QTest::addColumn<QList<double>>("parentData");
    QTest::addColumn<int>("requested");
    QTest::addColumn<QList<double>>("output");

    const QList<double> eight{1, 5, 2, 8, 3, 9, 4, 7};
    QTest::newRow("a parent's data are decimated again") << eight << 4 << QList<double>{5, 8, 9, 7};
    QTest::newRow("numPoint is clamped to the parent's size") << eight << 100 << eight;
    QTest::newRow("an empty parent clamps numPoint to 0") << QList<double>() << 3 << QList<double>();
}

void tst_FixedDecimatorU64::numPointUnderAParent()
{
    QFETCH(QList<double>, parentData);
    QFETCH(int, requested);
    QFETCH(QList<double>, output);

    Filter1D parent;
    parent.setArea(SomeArea);
    parent.setData(parentData);
    FixedDecimatorU64 filter;
    parent.addFilter(&filter);
    filter.setNumPoint(requested);
    QCOMPARE(filter.numPoint(), int(output.size()));
    QCOMPARE(filter.data(), output);

    // Data arriving later with numPoint 0 write nothing and stay in bounds.
    parent.setData({1, 2, 3});
    QCOMPARE(filter.data().size(), output.size());
}

void tst_FixedDecimatorU64::nanAtTheStartOfASliceWins()
{
    FixedDecimatorU64 filter;
    filter.setNumPoint(2);
    filter.setArea(SomeArea);
    filter.setData({NaN, 5, 1, NaN});
    QVERIFY(std::isnan(filter.data().at(0)));
    QCOMPARE(filter.data().at(1), 1.0);
}

QTEST_APPLESS_MAIN(tst_FixedDecimatorU64)
#include "tst_fixeddecimatoru64.moc"
