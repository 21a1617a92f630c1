// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Unit tests of the maximum pyramid: level sizes and groups, values that are
// negative, NaN or infinite, storage reuse, and the choice of level.
#include <vexal/decimatorfilter.h>
#include "core/numeric_p.h"

#include <QtTest/QTest>

#include <cmath>
#include <limits>
#include <random>

namespace {

const double NaN = std::numeric_limits<double>::quiet_NaN();
const double Inf = std::numeric_limits<double>::infinity();

// The reduction written plainly, as the rule reads: cell j is the maximum of
// L[p .. round(x) - 1] against 0.0, with x accumulated by repeated addition.
QList<double> referenceReduce(const QList<double> &level, double factor)
{
    const qsizetype n = level.size();
    const qsizetype m = qsizetype(std::ceil(double(n) / factor));
    const double step = double(n) / double(m);
    QList<double> out(m);
    double x = 0.0;
    qsizetype p = 0;
    for (qsizetype j = 0; p < n; ++j) {
        x += step;
        const qsizetype e = std::min(qsizetype(std::round(x)), n);
        double v = 0.0;
        for (qsizetype i = p; i < e; ++i)
            v = level[i] > v ? level[i] : v;
        out[j] = v;
        p = e;
    }
    return out;
}

QList<double> randomValues(qsizetype n, unsigned seed)
{
    std::mt19937 engine(seed);
    std::uniform_real_distribution<double> uniform(-10.0, 100.0);
    QList<double> values(n);
    for (double &v : values)
        v = uniform(engine);
    return values;
}

QList<qsizetype> levelSizes(const DecimatorFilter<double> &pyramid)
{
    QList<qsizetype> sizes;
    for (const QList<double> &level : pyramid.levels())
        sizes << level.size();
    return sizes;
}

} // namespace

class tst_DecimatorFilter : public QObject
{
    Q_OBJECT

private slots:
    void startsWithOneEmptyLevel();
    void levelsFollowTheReductionRule_data();
    void levelsFollowTheReductionRule();
    void fiveValuesGroupAsTwoOneTwo();
    void negativeNaNAndInfiniteValues_data();
    void negativeNaNAndInfiniteValues();
    void emptyOrEqualInputKeepsTheLevels_data();
    void emptyOrEqualInputKeepsTheLevels();
    void levelZeroSharesTheInput();
    void rebuildsReuseOnlyUnsharedStorage();
    void factorThreeGroupsByThree();
    void factorNotAboveOneFallsBackToTwo_data();
    void factorNotAboveOneFallsBackToTwo();
    void levelFor_data();
    void levelFor();
};

void tst_DecimatorFilter::startsWithOneEmptyLevel()
{
    DecimatorFilter<double> pyramid;
    QCOMPARE(pyramid.levelCount(), 1);
    QVERIFY(pyramid.level(0).isEmpty());
    QCOMPARE(pyramid.factor(), 2.0);
}

void tst_DecimatorFilter::levelsFollowTheReductionRule_data()
{
    QTest::addColumn<qsizetype>("size");
    QTest::addColumn<QList<qsizetype>>("sizes");

    QTest::newRow("one element gives a single level") << qsizetype(1) << QList<qsizetype>{1};
    QTest::newRow("two elements give two levels") << qsizetype(2) << QList<qsizetype>{2, 1};
    QTest::newRow("five elements give 5, 3, 2, 1") << qsizetype(5) << QList<qsizetype>{5, 3, 2, 1};
    QTest::newRow("eight elements halve exactly") << qsizetype(8) << QList<qsizetype>{8, 4, 2, 1};
    QTest::newRow("seven elements round up") << qsizetype(7) << QList<qsizetype>{7, 4, 2, 1};
    QTest::newRow("1000 elements") << qsizetype(1000)
                                   << QList<qsizetype>{1000, 500, 250, 125, 63, 32, 16, 8, 4, 2, 1};
    QTest::newRow("4097 elements mix pairs and odd groups") << qsizetype(4097) << QList<qsizetype>();
    QTest::newRow("100001 elements") << qsizetype(100001) << QList<qsizetype>();
}

void tst_DecimatorFilter::levelsFollowTheReductionRule()
{
    QFETCH(qsizetype, size);
    QFETCH(QList<qsizetype>, sizes);

    const QList<double> input = randomValues(size, unsigned(size));
    DecimatorFilter<double> pyramid;
    QVERIFY(pyramid.setData(input));
    if (!sizes.isEmpty())
        QCOMPARE(levelSizes(pyramid), sizes);
    QCOMPARE(pyramid.level(0), input);
    QCOMPARE(pyramid.levels().last().size(), 1);
    for (int k = 1; k < pyramid.levelCount(); ++k)
        QCOMPARE(pyramid.level(k), referenceReduce(pyramid.level(k - 1), 2.0));
}

void tst_DecimatorFilter::fiveValuesGroupAsTwoOneTwo()
{
    // x = 1.667, 3.333, 5 round to 2, 3, 5: groups [0,2), [2,3), [3,5).
    DecimatorFilter<double> pyramid;
    pyramid.setData({1.0, 5.0, 2.0, 3.0, 4.0});
    QCOMPARE(pyramid.level(1), (QList<double>{5.0, 2.0, 4.0}));
    QCOMPARE(pyramid.level(2), (QList<double>{5.0, 4.0}));
    QCOMPARE(pyramid.level(3), (QList<double>{5.0}));
}

void tst_DecimatorFilter::negativeNaNAndInfiniteValues_data()
{
    QTest::addColumn<QList<double>>("input");
    QTest::addColumn<QList<double>>("level1");

    QTest::newRow("negative values give coarser levels of 0") << QList<double>{-1, -2, -3, -4} << QList<double>{0, 0};
    QTest::newRow("NaN values never win") << QList<double>{NaN, 1, NaN, NaN} << QList<double>{1, 0};
    QTest::newRow("infinity survives") << QList<double>{1, Inf, 2, 3} << QList<double>{Inf, 3};
    QTest::newRow("minus infinity gives 0") << QList<double>{-Inf, -Inf, 2, 3} << QList<double>{0, 3};
    QTest::newRow("odd groups skip NaN too") << QList<double>{NaN, NaN, 4, NaN, 1} << QList<double>{0, 4, 1};
}

void tst_DecimatorFilter::negativeNaNAndInfiniteValues()
{
    QFETCH(QList<double>, input);
    QFETCH(QList<double>, level1);

    DecimatorFilter<double> pyramid;
    pyramid.setData(input);
    QVERIFY(Vexal::sameData(pyramid.level(0), input)); // level 0 keeps the input as it is
    QCOMPARE(pyramid.level(1), level1);
}

void tst_DecimatorFilter::emptyOrEqualInputKeepsTheLevels_data()
{
    QTest::addColumn<QList<double>>("next");
    QTest::newRow("empty input keeps old levels") << QList<double>();
    QTest::newRow("equal input keeps old levels") << QList<double>{3, 1, 4, 1, 5};
}

void tst_DecimatorFilter::emptyOrEqualInputKeepsTheLevels()
{
    QFETCH(QList<double>, next);

    DecimatorFilter<double> pyramid;
    pyramid.setData({3, 1, 4, 1, 5});
    const QList<QList<double>> before = pyramid.levels();
    QVERIFY(!pyramid.setData(next));
    QCOMPARE(pyramid.levelCount(), before.size());
    for (int k = 0; k < pyramid.levelCount(); ++k)
        QVERIFY(pyramid.level(k).isSharedWith(before.at(k)));
}

void tst_DecimatorFilter::levelZeroSharesTheInput()
{
    const QList<double> input = randomValues(1000, 1);
    DecimatorFilter<double> pyramid;
    pyramid.setData(input);
    QVERIFY(pyramid.level(0).isSharedWith(input));
}

void tst_DecimatorFilter::rebuildsReuseOnlyUnsharedStorage()
{
    DecimatorFilter<double> pyramid;
    pyramid.setData(randomValues(64, 1));
    const double *freeStorage = pyramid.level(2).constData();
    const QList<double> handedOut = pyramid.level(1); // as a plotter holds its level
    const QList<double> handedOutCopy(handedOut.cbegin(), handedOut.cend());

    const QList<double> next = randomValues(64, 2);
    pyramid.setData(next);
    QCOMPARE(pyramid.level(2).constData(), freeStorage);
    QCOMPARE(handedOut, handedOutCopy); // never written through a shared list
    QVERIFY(!pyramid.level(1).isSharedWith(handedOut));
    QCOMPARE(pyramid.level(1), referenceReduce(next, 2.0));
    QCOMPARE(pyramid.level(2), referenceReduce(pyramid.level(1), 2.0));
}

void tst_DecimatorFilter::factorThreeGroupsByThree()
{
    DecimatorFilter<double> pyramid(3.0);
    pyramid.setData({1, 2, 3, 6, 5, 4, 7, 9, 8, 0});
    // 10 values: 4 cells of step 2.5, ends 3, 5, 8, 10 (2.5 and 7.5 round up).
    QCOMPARE(levelSizes(pyramid), (QList<qsizetype>{10, 4, 2, 1}));
    QCOMPARE(pyramid.level(1), (QList<double>{3, 6, 9, 8}));
    QCOMPARE(pyramid.level(2), referenceReduce(pyramid.level(1), 3.0));
}

void tst_DecimatorFilter::factorNotAboveOneFallsBackToTwo_data()
{
    QTest::addColumn<double>("factor");
    QTest::newRow("factor 1 would never end") << 1.0;
    QTest::newRow("factor 0") << 0.0;
    QTest::newRow("a negative factor") << -2.0;
    QTest::newRow("a NaN factor") << NaN;
}

void tst_DecimatorFilter::factorNotAboveOneFallsBackToTwo()
{
    QFETCH(double, factor);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("reduction factor .* is not above 1")));
    DecimatorFilter<double> pyramid(factor);
    QCOMPARE(pyramid.factor(), 2.0);
    pyramid.setData({1, 2, 3, 4, 5});
    QCOMPARE(levelSizes(pyramid), (QList<qsizetype>{5, 3, 2, 1}));
}

void tst_DecimatorFilter::levelFor_data()
{
    QTest::addColumn<qsizetype>("size");
    QTest::addColumn<QRectF>("area");
    QTest::addColumn<double>("unitsPerPixel");
    QTest::addColumn<int>("level");

    // 1024 values over 1024 units: one unit per input cell; 11 levels.
    const QRectF area(0, 0, 1024, 1);
    QTest::newRow("cells wider than a pixel take level 0") << qsizetype(1024) << area << 0.5 << 0;
    QTest::newRow("cells exactly a pixel wide take level 0") << qsizetype(1024) << area << 1.0 << 0;
    QTest::newRow("two units per pixel take level 1") << qsizetype(1024) << area << 2.0 << 1;
    QTest::newRow("three units per pixel round up to level 2") << qsizetype(1024) << area << 3.0 << 2;
    QTest::newRow("1000 units per pixel take level 10") << qsizetype(1024) << area << 1000.0 << 10;
    QTest::newRow("a huge zoom-out is clamped to the last level") << qsizetype(1024) << area << 1e9 << 10;
    QTest::newRow("an empty pyramid takes level 0") << qsizetype(0) << area << 4.0 << 0;
    QTest::newRow("a zero-width area takes level 0") << qsizetype(1024) << QRectF(0, 0, 0, 1) << 4.0 << 0;
    QTest::newRow("a negative-width area takes level 0") << qsizetype(1024) << QRectF(0, 0, -1024, 1) << 4.0 << 0;
    QTest::newRow("negative units per pixel take level 0") << qsizetype(1024) << area << -4.0 << 0;
    QTest::newRow("NaN units per pixel take level 0") << qsizetype(1024) << area << NaN << 0;
    QTest::newRow("infinite units per pixel take the last level") << qsizetype(1024) << area << Inf << 10;
}

void tst_DecimatorFilter::levelFor()
{
    QFETCH(qsizetype, size);
    QFETCH(QRectF, area);
    QFETCH(double, unitsPerPixel);
    QFETCH(int, level);

    DecimatorFilter<double> pyramid;
    pyramid.setData(randomValues(size, 3));
    QCOMPARE(pyramid.levelFor(unitsPerPixel, area), level);
}

QTEST_APPLESS_MAIN(tst_DecimatorFilter)
#include "tst_decimatorfilter.moc"
