// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Unit tests of the minimal-width merge of (width, value) pairs and of its
// mergeWidth dead band.
#include <vexal/minimalwidth2d.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <cmath>
#include <limits>

namespace {

const double NaN = std::numeric_limits<double>::quiet_NaN();

// Compares pair lists with a tolerance: merged widths carry rounding errors.
bool samePairs(const QList<double> &a, const QList<double> &b)
{
    if (a.size() != b.size())
        return false;
    for (qsizetype i = 0; i < a.size(); ++i) {
        const bool bothNaN = std::isnan(a[i]) && std::isnan(b[i]);
        if (!bothNaN && !(std::fabs(a[i] - b[i]) <= 1e-12))
            return false;
    }
    return true;
}

QByteArray describe(const QList<double> &list)
{
    QByteArray text = "[";
    for (double v : list)
        text += QByteArray::number(v) + ' ';
    return text + ']';
}

} // namespace

class tst_MinimalWidth2D : public QObject
{
    Q_OBJECT

private slots:
    void defaults();
    void merges_data();
    void merges();
    void everyInputIsPublished();
    void mergeWidthSetter_data();
    void mergeWidthSetter();
    void mergeWidthRecomputesFromTheParent();
    void percMarginChangesOnlyTheDeadBand();
};

void tst_MinimalWidth2D::defaults()
{
    MinimalWidth2D filter;
    QCOMPARE(filter.mergeWidth(), 1.0);
    QCOMPARE(filter.percMargin(), 0.2);
}

void tst_MinimalWidth2D::merges_data()
{
    QTest::addColumn<double>("mergeWidth");
    QTest::addColumn<QList<double>>("input");
    QTest::addColumn<QList<double>>("output");

    QTest::newRow("narrow items merge into one of mergeWidth plus a remainder")
        << 1.0 << QList<double>{2, 5, 0.3, 1, 0.3, 7, 0.5, 2} << QList<double>{2, 5, 1, 7, 0.1, 2};
    QTest::newRow("an odd-length input ignores the last element")
        << 1.0 << QList<double>{2, 5, 3} << QList<double>{2, 5};
    QTest::newRow("an empty input gives an empty output") << 1.0 << QList<double>() << QList<double>();
    QTest::newRow("one element gives an empty output") << 1.0 << QList<double>{4} << QList<double>();
    QTest::newRow("a wide item after a narrow one is merged, not passed")
        << 1.0 << QList<double>{0.5, 1, 3, 2} << QList<double>{1, 2, 2.5, 2};
    QTest::newRow("a remainder below mergeWidth seeds the next merge with its value")
        << 1.0 << QList<double>{0.7, 9, 0.7, 3, 0.7, 1} << QList<double>{1, 9, 1, 3, 0.1, 1};
    QTest::newRow("negative values merge to 0 but the remainder keeps its value")
        << 1.0 << QList<double>{0.5, -3, 0.6, -1} << QList<double>{1, 0, 0.1, -1};
    QTest::newRow("a zero-width item's value is carried into the next merge")
        << 1.0 << QList<double>{0, 5, 0.5, 1, 0.6, 2} << QList<double>{1, 5, 0.1, 2};
    QTest::newRow("mergeWidth 0 passes every item")
        << 0.0 << QList<double>{0.1, 1, 0.2, 2} << QList<double>{0.1, 1, 0.2, 2};
    QTest::newRow("negative widths are accumulated, nothing is lost")
        << 1.0 << QList<double>{-0.5, 4, 2, 1} << QList<double>{1, 4, 0.5, 1};
    QTest::newRow("a NaN width ends the merge with a NaN-wide item")
        << 1.0 << QList<double>{0.5, 3, NaN, 1} << QList<double>{1, 3, NaN, 1};
}

void tst_MinimalWidth2D::merges()
{
    QFETCH(double, mergeWidth);
    QFETCH(QList<double>, input);
    QFETCH(QList<double>, output);

    MinimalWidth2D filter;
    filter.setMergeWidth(mergeWidth);
    QCOMPARE(filter.mergeWidth(), mergeWidth);
    filter.setData(input);
    QVERIFY2(samePairs(filter.data(), output), describe(filter.data()) + " instead of " + describe(output));
}

void tst_MinimalWidth2D::everyInputIsPublished()
{
    MinimalWidth2D filter;
    filter.setData({2, 5});
    QSignalSpy spy(&filter, &Filter1D::dataChanged);
    filter.setData({2, 5});
    QCOMPARE(spy.size(), 1);
}

void tst_MinimalWidth2D::mergeWidthSetter_data()
{
    QTest::addColumn<double>("requested");
    QTest::addColumn<double>("stored");

    QTest::newRow("1.1 lies in the dead band around 1.0") << 1.1 << 1.0;
    QTest::newRow("0.9 lies in the dead band around 1.0") << 0.9 << 1.0;
    QTest::newRow("1.2 is outside the dead band") << 1.2 << 1.2;
    QTest::newRow("0.8 is outside the dead band") << 0.8 << 0.8;
    QTest::newRow("-1 is ignored") << -1.0 << 1.0;
    QTest::newRow("NaN is ignored") << NaN << 1.0;
    QTest::newRow("0 is stored") << 0.0 << 0.0;
}

void tst_MinimalWidth2D::mergeWidthSetter()
{
    QFETCH(double, requested);
    QFETCH(double, stored);

    MinimalWidth2D filter;
    QSignalSpy spy(&filter, &MinimalWidth2D::mergeWidthChanged);
    filter.setMergeWidth(requested);
    QCOMPARE(filter.mergeWidth(), stored);
    QCOMPARE(spy.size(), stored == 1.0 ? 0 : 1);
}

void tst_MinimalWidth2D::mergeWidthRecomputesFromTheParent()
{
    Filter1D parent;
    parent.setData({0.5, 1, 0.5, 2, 0.5, 3, 0.5, 4});
    MinimalWidth2D filter;
    parent.addFilter(&filter);
    QCOMPARE(filter.data(), (QList<double>{1, 2, 1, 4}));
    filter.setMergeWidth(2.0);
    QCOMPARE(filter.data(), (QList<double>{2, 4}));
}

void tst_MinimalWidth2D::percMarginChangesOnlyTheDeadBand()
{
    MinimalWidth2D filter;
    filter.setData({0.5, 1, 0.5, 2});
    const QList<double> before = filter.data();
    QSignalSpy marginSpy(&filter, &MinimalWidth2D::percMarginChanged);
    QSignalSpy dataSpy(&filter, &Filter1D::dataChanged);
    filter.setPercMargin(0.2 + 1e-15);
    QCOMPARE(marginSpy.size(), 0);
    filter.setPercMargin(0.05);
    QCOMPARE(marginSpy.size(), 1);
    QCOMPARE(dataSpy.size(), 0);
    QCOMPARE(filter.data(), before);
    filter.setMergeWidth(1.1); // outside the narrower band now
    QCOMPARE(filter.mergeWidth(), 1.1);
}

QTEST_APPLESS_MAIN(tst_MinimalWidth2D)
#include "tst_minimalwidth2d.moc"
