// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Unit tests of the moving average: its running-sum rule with the first value's
// weighting, the padded output length, and the depth setter.
#include <vexal/movingaverageu64.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <cmath>
#include <limits>

namespace {

const double NaN = std::numeric_limits<double>::quiet_NaN();

// The rule as it reads: the window starts filled with in[0]; the leaving index
// is clamped to [0, n - 1] and the entering one to n - 1.
QList<double> referenceAverage(const QList<double> &in, int depth)
{
    const qsizetype n = in.size();
    QList<double> out(n + (depth - 1) * 2);
    double sum = depth * in[0];
    for (qsizetype i = 0; i < out.size(); ++i) {
        const qsizetype a = std::min(std::max<qsizetype>(i - depth, 0), n - 1);
        const qsizetype b = std::min(i + 1, n - 1);
        sum = sum - in[a] + in[b];
        out[i] = sum / depth;
    }
    return out;
}

} // namespace

class tst_MovingAverageU64 : public QObject
{
    Q_OBJECT

private slots:
    void defaults();
    void averages_data();
    void averages();
    void emptyInputChangesNothing();
    void everyInputIsPublished();
    void depthAppliesToTheNextInput();
    void depthOutOfRangeIsRefused_data();
    void depthOutOfRangeIsRefused();
    void nanPoisonsTheRunningSum();
};

void tst_MovingAverageU64::defaults()
{
    MovingAverageU64 filter;
    QCOMPARE(filter.depth(), 16);
    QVERIFY(filter.data().isEmpty());
}

void tst_MovingAverageU64::averages_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<QList<double>>("input");
    QTest::addColumn<QList<double>>("output");

    QTest::newRow("depth 1 turns [1, 2, 3] into [2, 4, 5]") << 1 << QList<double>{1, 2, 3} << QList<double>{2, 4, 5};
    QTest::newRow("one value at depth 16 gives 31 equal cells") << 16 << QList<double>{2.5} << QList<double>(31, 2.5);
    QTest::newRow("a constant input stays constant") << 3 << QList<double>{4, 4, 4, 4} << QList<double>(8, 4.0);
    // Depth 2 over [0, 2, 4]: sums 0+2, 2+4-0, 6+4-0, 10+4-2, 12+4-4, 12+4-4.
    QTest::newRow("the first value is taken out one time too many")
        << 2 << QList<double>{0, 2, 4} << QList<double>{1, 3, 5, 6, 6};
    QTest::newRow("a step in the first value shifts later averages by -in[0] / depth")
        << 2 << QList<double>{10, 0, 0} << QList<double>{5, 0, -5, -5, -5};
}

void tst_MovingAverageU64::averages()
{
    QFETCH(int, depth);
    QFETCH(QList<double>, input);
    QFETCH(QList<double>, output);

    MovingAverageU64 filter;
    filter.setDepth(depth);
    filter.setData(input);
    QCOMPARE(filter.data(), output);
    QCOMPARE(filter.data(), referenceAverage(input, depth));
}

void tst_MovingAverageU64::emptyInputChangesNothing()
{
    MovingAverageU64 filter;
    filter.setData({1.0});
    QSignalSpy spy(&filter, &Filter1D::dataChanged);
    filter.setData({});
    QCOMPARE(spy.size(), 0);
    QCOMPARE(filter.data().size(), 31);
}

void tst_MovingAverageU64::everyInputIsPublished()
{
    MovingAverageU64 filter;
    filter.setData({1.0, 2.0});
    QSignalSpy spy(&filter, &Filter1D::dataChanged);
    filter.setData({1.0, 2.0}); // equal input, equal output: published anyway
    QCOMPARE(spy.size(), 1);
}

void tst_MovingAverageU64::depthAppliesToTheNextInput()
{
    MovingAverageU64 filter;
    filter.setData({1, 2, 3});
    const QList<double> before = filter.data();
    QSignalSpy depthSpy(&filter, &MovingAverageU64::depthChanged);
    QSignalSpy dataSpy(&filter, &Filter1D::dataChanged);

    filter.setDepth(1);
    filter.setDepth(1);
    QCOMPARE(depthSpy.size(), 1);
    QCOMPARE(dataSpy.size(), 0);
    QCOMPARE(filter.data(), before);
    filter.setData({1, 2, 3});
    QCOMPARE(filter.data(), (QList<double>{2, 4, 5}));
}

void tst_MovingAverageU64::depthOutOfRangeIsRefused_data()
{
    QTest::addColumn<int>("depth");
    QTest::newRow("depth 0 is refused") << 0;
    QTest::newRow("depth -3 is refused") << -3;
    QTest::newRow("the lowest int is refused") << std::numeric_limits<int>::min();
    QTest::newRow("a depth beyond 2^20 is refused") << (1 << 20) + 1;
    QTest::newRow("the largest int is refused") << std::numeric_limits<int>::max();
}

void tst_MovingAverageU64::depthOutOfRangeIsRefused()
{
    QFETCH(int, depth);
    MovingAverageU64 filter;
    filter.setDepth(4);
    QSignalSpy spy(&filter, &MovingAverageU64::depthChanged);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("depth .* refused, it must be at least 1")));
    filter.setDepth(depth);
    QCOMPARE(filter.depth(), 4);
    QCOMPARE(spy.size(), 0);
    filter.setData({1, 2, 3});
    QCOMPARE(filter.data().size(), 3 + 2 * 3);
}

void tst_MovingAverageU64::nanPoisonsTheRunningSum()
{
    MovingAverageU64 filter;
    filter.setDepth(2);
    filter.setData({1.0, NaN, 3.0});
    // The NaN enters the sum at once (in[i + 1]) and never leaves it.
    QCOMPARE(filter.data().size(), 5);
    for (qsizetype i = 0; i < filter.data().size(); ++i)
        QVERIFY(std::isnan(filter.data().at(i)));
}

QTEST_APPLESS_MAIN(tst_MovingAverageU64)
#include "tst_movingaverageu64.moc"
