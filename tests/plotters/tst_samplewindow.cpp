// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Tests of the peak pyramid and of the window of groups that each chart's
// frames hold.
#include "plotters/samplewindow_p.h"

#include <QtTest/QTest>

#include <cmath>
#include <limits>
#include <random>

using Vexal::DataStamps;
using Vexal::ItemSeries;
using Vexal::PeakPyramid;
using Vexal::SampleWindow;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

ItemSeries seriesOf(const QList<double> &values, int stride = 1)
{
    return {values.constData(), values.size() / stride, stride};
}

// The peak of items [first, last) read one by one.
double plainPeak(const ItemSeries &items, qsizetype first, qsizetype last)
{
    double peak = NaN;
    for (qsizetype i = first; i < last; ++i)
        peak = Vexal::peakOf(peak, items.at(i));
    return peak;
}

bool samePeak(double a, double b)
{
    return (std::isnan(a) && std::isnan(b)) || a == b;
}

QList<double> randomValues(qsizetype n)
{
    std::mt19937_64 generator(7);
    std::uniform_real_distribution<double> value(-1000.0, 1000.0);
    QList<double> values(n);
    for (double &v : values)
        v = value(generator);
    return values;
}

} // namespace

class tst_SampleWindow : public QObject
{
    Q_OBJECT

private slots:
    void peakIgnoresNaN_data();
    void peakIgnoresNaN();
    void groupPeaksAtEveryLevel();
    void rangePeaksMatchReadingEveryItem_data();
    void rangePeaksMatchReadingEveryItem();
    void pairsReadEverySecondValue();
    void newStampRebuildsTheStoredLevels();
    void changedTailUpdatesTheTailOnly_data();
    void changedTailUpdatesTheTailOnly();
    void unknownUnchangedCountRebuildsEverything();
    void levelMakesGroupsAtLeastAPixelWide_data();
    void levelMakesGroupsAtLeastAPixelWide();
    void windowFollowsTheView_data();
    void windowFollowsTheView();
};

void tst_SampleWindow::peakIgnoresNaN_data()
{
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<double>("peak");

    QTest::newRow("the larger of two values") << 1.0 << 3.0 << 3.0;
    QTest::newRow("NaN first gives the other") << NaN << -2.0 << -2.0;
    QTest::newRow("NaN second gives the other") << -2.0 << NaN << -2.0;
    QTest::newRow("two NaN give NaN") << NaN << NaN << NaN;
}

void tst_SampleWindow::peakIgnoresNaN()
{
    QFETCH(double, a);
    QFETCH(double, b);
    QFETCH(double, peak);
    QVERIFY(samePeak(Vexal::peakOf(a, b), peak));
}

void tst_SampleWindow::groupPeaksAtEveryLevel()
{
    const QList<double> values = randomValues(1000);
    const ItemSeries items = seriesOf(values);
    PeakPyramid pyramid;
    for (int level = 0; level <= 11; ++level) {
        const qsizetype size = qsizetype(1) << level;
        const qsizetype groups = PeakPyramid::groupCount(items.count, level);
        QCOMPARE(groups, (1000 + size - 1) / size);
        for (qsizetype g = 0; g < groups; ++g) {
            const double expected = plainPeak(items, g * size, std::min<qsizetype>((g + 1) * size, 1000));
            QVERIFY2(samePeak(pyramid.peak(items, 1, level, g), expected),
                     qPrintable(QStringLiteral("level %1 group %2").arg(level).arg(g)));
        }
    }
}

void tst_SampleWindow::rangePeaksMatchReadingEveryItem_data()
{
    QTest::addColumn<qsizetype>("first");
    QTest::addColumn<qsizetype>("last");

    QTest::newRow("a short range is read directly") << qsizetype(10) << qsizetype(500);
    QTest::newRow("a long range with ragged ends uses the stored levels") << qsizetype(3) << qsizetype(299997);
    QTest::newRow("the whole series") << qsizetype(0) << qsizetype(300000);
    QTest::newRow("a range past the end is cut") << qsizetype(200001) << qsizetype(900000);
    QTest::newRow("an empty range has no peak") << qsizetype(50) << qsizetype(50);
}

void tst_SampleWindow::rangePeaksMatchReadingEveryItem()
{
    QFETCH(qsizetype, first);
    QFETCH(qsizetype, last);

    QList<double> values = randomValues(300000);
    values[150000] = 5000.0; // a peak inside the stored levels
    values[7] = NaN;
    const ItemSeries items = seriesOf(values);
    PeakPyramid pyramid;
    const double expected = plainPeak(items, first, std::min<qsizetype>(last, items.count));
    QVERIFY(samePeak(pyramid.peakIn(items, 1, first, last), expected));
}

void tst_SampleWindow::pairsReadEverySecondValue()
{
    // Widths of 100 never count: only the values at odd positions are items.
    QList<double> pairs;
    for (int k = 0; k < 100000; ++k)
        pairs << 100.0 << double(k % 10);
    const ItemSeries items{pairs.constData() + 1, 100000, 2};
    PeakPyramid pyramid;
    QCOMPARE(pyramid.peakIn(items, 1, 0, 100000), 9.0);
    QCOMPARE(pyramid.peak(items, 1, 10, 0), 9.0);
    QCOMPARE(pyramid.peak(items, 1, 1, 0), 1.0);
}

void tst_SampleWindow::newStampRebuildsTheStoredLevels()
{
    QList<double> values(100000, 1.0);
    PeakPyramid pyramid;
    QCOMPARE(pyramid.peakIn(seriesOf(values), 1, 0, 100000), 1.0);
    QVERIFY(pyramid.bytes() > 0);
    values[60000] = 4.0;
    QCOMPARE(pyramid.peakIn(seriesOf(values), 1, 0, 100000), 1.0); // same stamp: the stored levels
    QCOMPARE(pyramid.peakIn(seriesOf(values), 2, 0, 100000), 4.0);
    QCOMPARE(pyramid.peak(seriesOf(values), 2, 16, 0), 4.0);
}

void tst_SampleWindow::changedTailUpdatesTheTailOnly_data()
{
    QTest::addColumn<qsizetype>("before");
    QTest::addColumn<qsizetype>("after");

    QTest::newRow("an append into an empty series builds it") << qsizetype(0) << qsizetype(100000);
    QTest::newRow("an append of one item to a ragged last group") << qsizetype(99999) << qsizetype(100000);
    QTest::newRow("an append that starts a new group") << qsizetype(65536) << qsizetype(65600);
    QTest::newRow("an append that adds levels on top") << qsizetype(100) << qsizetype(300000);
    QTest::newRow("a changed tail of the same length") << qsizetype(-200000) << qsizetype(300000);
}

void tst_SampleWindow::changedTailUpdatesTheTailOnly()
{
    QFETCH(qsizetype, before);
    QFETCH(qsizetype, after);

    // A negative count before: the series kept its length and its values
    // changed from -before on.
    const bool sameLength = before < 0;
    const qsizetype unchanged = sameLength ? -before : before;
    QList<double> values = randomValues(after);
    values[unchanged / 2] = 6000.0; // an old peak
    PeakPyramid updated;
    // Built for the first values (data stamp 1), then for the new ones with
    // the unchanged count: only the tail of the levels is rebuilt.
    const QList<double> old = sameLength ? randomValues(after) : values.first(unchanged);
    QList<double> first = old;
    if (sameLength)
        std::copy(values.cbegin(), values.cbegin() + unchanged, first.begin());
    if (first.size() > unchanged)
        first.last() = 9000.0; // an old peak in what changes
    updated.peakIn(seriesOf(first), DataStamps(1), 0, first.size());
    values[after - 1] = 7000.0; // a new peak in the tail
    PeakPyramid built;
    for (int level = 4; level <= 18; level += 2) {
        const qsizetype groups = PeakPyramid::groupCount(after, level);
        for (qsizetype g : {qsizetype(0), groups / 2, groups - 1}) {
            const double expected = built.peak(seriesOf(values), DataStamps(1), level, g);
            QVERIFY2(samePeak(updated.peak(seriesOf(values), DataStamps(2, unchanged), level, g), expected),
                     qPrintable(QStringLiteral("level %1 group %2").arg(level).arg(g)));
        }
    }
    QVERIFY(samePeak(updated.peakIn(seriesOf(values), DataStamps(2, unchanged), 0, after), 7000.0));
    QCOMPARE(updated.bytes(), built.bytes());
}

void tst_SampleWindow::unknownUnchangedCountRebuildsEverything()
{
    QList<double> values(100000, 1.0);
    values[10] = 5.0;
    PeakPyramid pyramid;
    QCOMPARE(pyramid.peakIn(seriesOf(values), DataStamps(1), 0, 100000), 5.0);
    // Replaced (no value known to be unchanged) by longer values: the old peak goes.
    values[10] = 1.0;
    values.append(QList<double>(1000, 2.0));
    QCOMPARE(pyramid.peakIn(seriesOf(values), DataStamps(2, 0), 0, values.size()), 2.0);
    QCOMPARE(pyramid.peak(seriesOf(values), DataStamps(2, 0), 17, 0), 2.0);
    // Shorter values: the levels above the new top go.
    values.resize(100);
    QCOMPARE(pyramid.peakIn(seriesOf(values), DataStamps(3, 0), 0, values.size()), 1.0);
    QCOMPARE(pyramid.peak(seriesOf(values), DataStamps(3, 0), 17, 0), 1.0);
}

void tst_SampleWindow::levelMakesGroupsAtLeastAPixelWide_data()
{
    QTest::addColumn<double>("pixelsPerItem");
    QTest::addColumn<int>("level");

    QTest::newRow("items a pixel wide are drawn one by one") << 1.0 << 0;
    QTest::newRow("wide items are drawn one by one") << 30.0 << 0;
    QTest::newRow("half a pixel makes pairs") << 0.5 << 1;
    QTest::newRow("a bit less than half a pixel makes groups of four") << 0.49 << 2;
    QTest::newRow("a thousand items per pixel make groups of 1024") << 0.001 << 10;
    QTest::newRow("no pixel size draws every item") << 0.0 << 0;
    QTest::newRow("NaN draws every item") << NaN << 0;
}

void tst_SampleWindow::levelMakesGroupsAtLeastAPixelWide()
{
    QFETCH(double, pixelsPerItem);
    QFETCH(int, level);
    QCOMPARE(SampleWindow::levelFor(pixelsPerItem), level);
}

void tst_SampleWindow::windowFollowsTheView_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<double>("pixelsPerItem");
    QTest::addColumn<bool>("moved");
    QTest::addColumn<int>("windowFirst");
    QTest::addColumn<int>("windowLast");
    QTest::addColumn<int>("level");

    // The window first holds [400, 700) at level 0, for the view [500, 600).
    QTest::newRow("a pan inside the window keeps it") << 550 << 650 << 2.0 << false << 400 << 700 << 0;
    QTest::newRow("a pan across its edge moves it") << 650 << 750 << 2.0 << true << 550 << 850 << 0;
    QTest::newRow("a zoom far in moves it around the view") << 540 << 550 << 20.0 << true << 530 << 560 << 0;
    QTest::newRow("narrower items change the level") << 0 << 1000 << 0.25 << true << 0 << 250 << 2;
    QTest::newRow("a view at the start keeps no margin before it") << 0 << 100 << 2.0 << true << 0 << 200 << 0;
}

void tst_SampleWindow::windowFollowsTheView()
{
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(double, pixelsPerItem);
    QFETCH(bool, moved);
    QFETCH(int, windowFirst);
    QFETCH(int, windowLast);
    QFETCH(int, level);

    SampleWindow window;
    QVERIFY(window.follow(1000, {500, 600}, 2.0, 1));
    QCOMPARE(window.first, 400);
    QCOMPARE(window.last, 700);
    QCOMPARE(window.follow(1000, {first, last}, pixelsPerItem, 1), moved);
    QCOMPARE(window.first, windowFirst);
    QCOMPARE(window.last, windowLast);
    QCOMPARE(window.level, level);
    QVERIFY(window.follow(1000, {first, last}, pixelsPerItem, 2)); // new data: always rebuilt
}

QTEST_APPLESS_MAIN(tst_SampleWindow)

#include "tst_samplewindow.moc"
