// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Tests of the line pyramid: its groups and the visible ranges it answers.
#include "plotters/linepyramid_p.h"
#include "randomwalk.h"

#include <QtTest/QTest>

#include <cmath>
#include <cstring>
#include <limits>

using PlotterTest::randomWalk;

namespace {

constexpr double Inf = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

// The first, smallest, largest and last of values [begin, end), as a group holds them.
Vexal::LinePyramid::Group scanned(const QList<double> &values, qsizetype begin, qsizetype end)
{
    Vexal::LinePyramid::Group g{values[begin], NaN, NaN, values[end - 1]};
    for (qsizetype i = begin; i < end; ++i) {
        if (std::isfinite(values[i])) {
            g.min = std::isnan(g.min) ? values[i] : std::min(g.min, values[i]);
            g.max = std::isnan(g.max) ? values[i] : std::max(g.max, values[i]);
        }
    }
    return g;
}

bool sameGroup(const Vexal::LinePyramid::Group &a, const Vexal::LinePyramid::Group &b)
{
    const auto same = [](double x, double y) { return x == y || (std::isnan(x) && std::isnan(y)); };
    return same(a.first, b.first) && same(a.min, b.min) && same(a.max, b.max) && same(a.last, b.last);
}

} // namespace

class tst_LinePyramid : public QObject
{
    Q_OBJECT

private slots:
    void groupsHoldFirstMinMaxLast_data();
    void groupsHoldFirstMinMaxLast();
    void levelsShrinkToOneGroup();
    void rangeEqualsTheRawScan_data();
    void rangeEqualsTheRawScan();
    void levelForChoosesTheDeepestGroupWithinAPixel();
    void appendEqualsABuildOfTheWholeSeries_data();
    void appendEqualsABuildOfTheWholeSeries();
    void droppedFrontKeepsTheGroupsOfTheWholeSeries_data();
    void droppedFrontKeepsTheGroupsOfTheWholeSeries();
};

void tst_LinePyramid::groupsHoldFirstMinMaxLast_data()
{
    QTest::addColumn<QList<double>>("values");
    QTest::addColumn<QList<double>>("group"); // first, min, max, last of group 0

    QTest::newRow("signed values keep their troughs") << QList<double>{1, -3, 2, 0} << QList<double>{1, -3, 2, 0};
    QTest::newRow("NaN is skipped by min and max but kept at the edges")
        << QList<double>{NaN, 5, -1, NaN} << QList<double>{NaN, -1, 5, NaN};
    QTest::newRow("infinity is not finite") << QList<double>{Inf, 2, -Inf, 3} << QList<double>{Inf, 2, 3, 3};
    QTest::newRow("a short last group ends at the data") << QList<double>{7, 8} << QList<double>{7, 7, 8, 8};
}

void tst_LinePyramid::groupsHoldFirstMinMaxLast()
{
    QFETCH(QList<double>, values);
    QFETCH(QList<double>, group);

    Vexal::LinePyramid pyramid;
    pyramid.build(values);
    QVERIFY(pyramid.levelCount() >= 1);
    const Vexal::LinePyramid::Group g = pyramid.level(1).front();
    const double actual[4] = {g.first, g.min, g.max, g.last};
    for (int i = 0; i < 4; ++i) {
        if (std::isnan(group[i]))
            QVERIFY(std::isnan(actual[i]));
        else
            QCOMPARE(actual[i], group[i]);
    }
}

void tst_LinePyramid::levelsShrinkToOneGroup()
{
    Vexal::LinePyramid pyramid;
    pyramid.build(randomWalk(1000, 1));
    QCOMPARE(pyramid.level(1).size(), size_t(63)); // 62 full groups of 16 and one of 8
    QCOMPARE(pyramid.level(2).size(), size_t(16));
    QCOMPARE(pyramid.level(pyramid.levelCount()).size(), size_t(1));
    pyramid.build({});
    QCOMPARE(pyramid.levelCount(), 0);
}

void tst_LinePyramid::rangeEqualsTheRawScan_data()
{
    QTest::addColumn<qsizetype>("start");
    QTest::addColumn<qsizetype>("end");

    QTest::newRow("the whole series") << qsizetype(0) << qsizetype(10007);
    QTest::newRow("ragged edges on both sides") << qsizetype(13) << qsizetype(9001);
    QTest::newRow("a few samples") << qsizetype(500) << qsizetype(503);
    QTest::newRow("a range past the end is cut") << qsizetype(9990) << qsizetype(20000);
}

void tst_LinePyramid::rangeEqualsTheRawScan()
{
    QFETCH(qsizetype, start);
    QFETCH(qsizetype, end);

    QList<double> values = randomWalk(10007, 2);
    values[700] = NaN;
    values[701] = Inf;
    Vexal::LinePyramid pyramid;
    pyramid.build(values);
    double min = Inf, max = -Inf;
    for (qsizetype i = start; i < std::min(end, values.size()); ++i) {
        if (std::isfinite(values[i])) {
            min = std::min(min, values[i]);
            max = std::max(max, values[i]);
        }
    }
    double rangeMin = 0.0, rangeMax = 0.0;
    QVERIFY(pyramid.range(values, start, end, rangeMin, rangeMax));
    QCOMPARE(rangeMin, min);
    QCOMPARE(rangeMax, max);
}

void tst_LinePyramid::levelForChoosesTheDeepestGroupWithinAPixel()
{
    Vexal::LinePyramid pyramid;
    pyramid.build(randomWalk(100000, 3));
    QCOMPARE(pyramid.levelFor(0.5), 0);
    QCOMPARE(pyramid.levelFor(15.9), 0);
    QCOMPARE(pyramid.levelFor(16.0), 1);
    QCOMPARE(pyramid.levelFor(83.3), 2);
    QCOMPARE(pyramid.levelFor(1e12), pyramid.levelCount());
}

void tst_LinePyramid::appendEqualsABuildOfTheWholeSeries_data()
{
    QTest::addColumn<qsizetype>("before");
    QTest::addColumn<qsizetype>("after");

    QTest::newRow("an append into an empty series builds it") << qsizetype(0) << qsizetype(5000);
    QTest::newRow("an append to a single value") << qsizetype(1) << qsizetype(2);
    QTest::newRow("an append of one value to a ragged last group") << qsizetype(4999) << qsizetype(5000);
    QTest::newRow("an append that fills a group exactly") << qsizetype(16) << qsizetype(32);
    QTest::newRow("an append that adds levels on top") << qsizetype(20) << qsizetype(100003);
}

void tst_LinePyramid::appendEqualsABuildOfTheWholeSeries()
{
    QFETCH(qsizetype, before);
    QFETCH(qsizetype, after);

    QList<double> values = randomWalk(after, 4);
    if (after > 3)
        values[after - 3] = NaN; // a gap in the tail
    Vexal::LinePyramid appended;
    appended.build(values.first(before));
    appended.update(values, before);
    Vexal::LinePyramid built;
    built.build(values);
    QCOMPARE(appended.levelCount(), built.levelCount());
    for (int k = 1; k <= built.levelCount(); ++k) {
        QCOMPARE(appended.level(k).size(), built.level(k).size());
        for (qsizetype j = 0; j < built.level(k).size(); ++j) {
            const Vexal::LinePyramid::Group &a = appended.level(k)[j];
            const Vexal::LinePyramid::Group &b = built.level(k)[j];
            QVERIFY2(std::memcmp(&a, &b, sizeof a) == 0, qPrintable(QStringLiteral("level %1 group %2").arg(k).arg(j)));
        }
    }
}

void tst_LinePyramid::droppedFrontKeepsTheGroupsOfTheWholeSeries_data()
{
    QTest::addColumn<qsizetype>("window");
    QTest::addColumn<QList<qsizetype>>("appends");

    QTest::newRow("a window slides by single values") << qsizetype(100) << QList<qsizetype>(70, 1);
    QTest::newRow("a long window slides by chunks") << qsizetype(50000) << QList<qsizetype>(12, 7777);
    QTest::newRow("chunks longer than the window") << qsizetype(300) << QList<qsizetype>{1000, 17, 5000};
    QTest::newRow("a window of two values") << qsizetype(2) << QList<qsizetype>{1, 1, 64, 3};
    QTest::newRow("a window of one value has no level") << qsizetype(1) << QList<qsizetype>{5, 1};
}

void tst_LinePyramid::droppedFrontKeepsTheGroupsOfTheWholeSeries()
{
    QFETCH(qsizetype, window);
    QFETCH(QList<qsizetype>, appends);

    // Fills the window, then appends and drops as a sliding window does.
    QList<double> all = randomWalk(window, 5);
    all[window / 2] = NaN;
    QList<double> kept = all;
    Vexal::LinePyramid pyramid;
    pyramid.build(kept);
    unsigned seed = 6;
    for (qsizetype count : appends) {
        const QList<double> values = randomWalk(count, seed++);
        all += values;
        kept += values;
        pyramid.update(kept, kept.size() - count);
        const qsizetype dropped = std::max<qsizetype>(kept.size() - window, 0);
        kept.remove(0, dropped);
        pyramid.dropFront(kept, dropped);
    }
    const qsizetype origin = all.size() - kept.size();
    // Every group but a level's first equals the group of the whole series
    // that holds the same values; the first holds the values kept of it.
    Vexal::LinePyramid whole;
    whole.build(all);
    for (int k = 1; k <= pyramid.levelCount(); ++k) {
        const qsizetype size = Vexal::LinePyramid::groupSize(k);
        const qsizetype lead = origin % size;
        QCOMPARE(pyramid.leadIn(k), lead);
        QCOMPARE(pyramid.level(k).size(), (kept.size() + lead + size - 1) / size);
        QVERIFY2(sameGroup(pyramid.level(k).first(), scanned(kept, 0, std::min(size - lead, kept.size()))),
                 qPrintable(QStringLiteral("the first group of level %1").arg(k)));
        for (qsizetype j = 1; j < pyramid.level(k).size(); ++j)
            QVERIFY2(sameGroup(pyramid.level(k)[j], whole.level(k)[j + origin / size]),
                     qPrintable(QStringLiteral("level %1 group %2").arg(k).arg(j)));
    }
    QVERIFY(pyramid.levelCount() == 0 ? kept.size() < 2 : pyramid.level(pyramid.levelCount()).size() == 1);
    // Ranges still equal a plain scan of the values kept.
    for (const auto &[first, end] : {std::pair<qsizetype, qsizetype>{0, kept.size()}, {1, kept.size() - 1},
                                      {kept.size() / 3, kept.size() / 2 + 40}}) {
        const qsizetype last = std::min(end, kept.size());
        if (last <= first)
            continue;
        double min = 0, max = 0;
        const bool found = pyramid.range(kept, first, last, min, max);
        const Vexal::LinePyramid::Group expected = scanned(kept, first, last);
        QCOMPARE(found, !std::isnan(expected.min));
        QVERIFY(sameGroup({0, min, max, 0}, {0, expected.min, expected.max, 0}));
    }
}

QTEST_APPLESS_MAIN(tst_LinePyramid)
#include "tst_linepyramid.moc"
