// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Unit tests of the random data source: the normal histogram and white noise,
// reset and append, the timer rules and the refused settings.
#include <vexal/randomu64data.h>

#include <QtCore/QTimer>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

namespace {

double sum(const QList<double> &values)
{
    return std::accumulate(values.cbegin(), values.cend(), 0.0);
}

QTimer *timerOf(const RandomU64Data &source)
{
    return source.findChild<QTimer *>();
}

// A change of the area regenerates the data from scratch.
void reset(RandomU64Data &source)
{
    source.setArea(QRectF(0, 0, source.area().width() + 1, 1));
}

} // namespace

class tst_RandomU64Data : public QObject
{
    Q_OBJECT

private slots:
    void startsEmptyWithARunningTimer();
    void normalHistogramPeaksInTheMiddle();
    void whiteNoiseLiesBetween0And100();
    void fewBinsPutEverySampleOnTheMean_data();
    void fewBinsPutEverySampleOnTheMean();
    void typeRegeneratesOnlyWhenItChanges();
    void unknownTypeIsRefused();
    void aTickAppendsAnotherHistogram();
    void aTickWithoutAppendReplaces();
    void grownNumBinCountsMissingCellsAsZero();
    void numBinTakesEffectAtTheNextReset();
    void settingsBelowOneAreRefused_data();
    void settingsBelowOneAreRefused();
    void runningIsTheTimerInterval_data();
    void runningIsTheTimerInterval();
    void intervalAndRepeatConfigureTheTimer();
};

void tst_RandomU64Data::startsEmptyWithARunningTimer()
{
    RandomU64Data source;
    QVERIFY(source.data().isEmpty());
    QCOMPARE(source.type(), QStringLiteral("normal"));
    QCOMPARE(source.numBin(), 1024);
    QVERIFY(source.append());
    QVERIFY(source.repeat());
    QVERIFY(source.running());
    QTimer *timer = timerOf(source);
    QVERIFY(timer);
    QVERIFY(timer->isActive());
    QCOMPARE(timer->interval(), 2500);
    QVERIFY(!timer->isSingleShot());
}

void tst_RandomU64Data::normalHistogramPeaksInTheMiddle()
{
    RandomU64Data source;
    QSignalSpy spy(&source, &Filter1D::dataChanged);
    reset(source);
    QCOMPARE(spy.size(), 1);
    const QList<double> &bins = source.data();
    QCOMPARE(bins.size(), 1024);
    // 10000 samples of N(512, 128): a sample outside [0, 1024) is 4 sigma out.
    const double total = sum(bins);
    QVERIFY(total <= 10000.0);
    QVERIFY2(total >= 9990.0, QByteArray::number(total));
    double mean = 0.0;
    for (int k = 0; k < bins.size(); ++k) {
        QCOMPARE(bins[k], std::floor(bins[k])); // counts
        mean += k * bins[k] / total;
    }
    double variance = 0.0;
    for (int k = 0; k < bins.size(); ++k)
        variance += (k + 0.5 - mean) * (k + 0.5 - mean) * bins[k] / total;
    // The standard errors are about 1.3 bins for the mean and 0.9 for sigma.
    QVERIFY2(std::fabs(mean - 512.0) < 12.0, QByteArray::number(mean));
    QVERIFY2(std::fabs(std::sqrt(variance) - 128.0) < 12.0, QByteArray::number(std::sqrt(variance)));
}

void tst_RandomU64Data::whiteNoiseLiesBetween0And100()
{
    RandomU64Data source;
    source.setType(QStringLiteral("white"));
    const QList<double> &values = source.data();
    QCOMPARE(values.size(), 1024);
    for (double v : values)
        QVERIFY(v >= 0.0 && v < 100.0);
    QVERIFY(std::adjacent_find(values.cbegin(), values.cend(), std::not_equal_to<>()) != values.cend());
    const double mean = sum(values) / values.size();
    QVERIFY2(std::fabs(mean - 50.0) < 10.0, QByteArray::number(mean)); // about 11 standard errors
}

void tst_RandomU64Data::fewBinsPutEverySampleOnTheMean_data()
{
    QTest::addColumn<int>("numBin");
    QTest::addColumn<QList<double>>("bins");
    QTest::newRow("one bin takes every sample") << 1 << QList<double>{10000};
    QTest::newRow("seven bins have no spread: all on bin 3") << 7 << QList<double>{0, 0, 0, 10000, 0, 0, 0};
}

void tst_RandomU64Data::fewBinsPutEverySampleOnTheMean()
{
    QFETCH(int, numBin);
    QFETCH(QList<double>, bins);
    RandomU64Data source;
    source.setNumBin(numBin);
    reset(source);
    QCOMPARE(source.data(), bins);
}

void tst_RandomU64Data::typeRegeneratesOnlyWhenItChanges()
{
    RandomU64Data source;
    QSignalSpy dataSpy(&source, &Filter1D::dataChanged);
    QSignalSpy typeSpy(&source, &RandomU64Data::typeChanged);
    source.setType(QStringLiteral("normal"));
    QCOMPARE(dataSpy.size(), 0);
    QCOMPARE(typeSpy.size(), 0);
    source.setType(QStringLiteral("white"));
    QCOMPARE(dataSpy.size(), 1);
    QCOMPARE(typeSpy.size(), 1);
    QCOMPARE(source.data().size(), 1024);
}

void tst_RandomU64Data::unknownTypeIsRefused()
{
    RandomU64Data source;
    reset(source);
    const QList<double> before = source.data();
    QSignalSpy dataSpy(&source, &Filter1D::dataChanged);
    QSignalSpy typeSpy(&source, &RandomU64Data::typeChanged);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("unknown type \"pink\" refused")));
    source.setType(QStringLiteral("pink"));
    QCOMPARE(source.type(), QStringLiteral("normal"));
    QCOMPARE(source.data(), before);
    QCOMPARE(dataSpy.size(), 0);
    QCOMPARE(typeSpy.size(), 0);
}

void tst_RandomU64Data::aTickAppendsAnotherHistogram()
{
    RandomU64Data source;
    reset(source);
    const QList<double> first = source.data();
    QSignalSpy spy(&source, &Filter1D::dataChanged);
    source.setInterval(0);
    QVERIFY(spy.wait());
    const QList<double> &second = source.data();
    QCOMPARE(second.size(), first.size());
    for (qsizetype k = 0; k < first.size(); ++k)
        QVERIFY(second[k] >= first[k]);
    const double added = sum(second) - sum(first);
    QVERIFY2(added >= 9990.0 && added <= 10000.0, QByteArray::number(added));
}

void tst_RandomU64Data::aTickWithoutAppendReplaces()
{
    RandomU64Data source;
    source.setAppend(false);
    reset(source);
    QSignalSpy spy(&source, &Filter1D::dataChanged);
    source.setInterval(0);
    QVERIFY(spy.wait());
    QVERIFY(sum(source.data()) <= 10000.0);
}

void tst_RandomU64Data::grownNumBinCountsMissingCellsAsZero()
{
    RandomU64Data source;
    source.setType(QStringLiteral("white"));
    source.setNumBin(8);
    reset(source);
    source.setNumBin(16);
    QSignalSpy spy(&source, &Filter1D::dataChanged);
    source.setInterval(0);
    QVERIFY(spy.wait());
    const QList<double> &values = source.data();
    QCOMPARE(values.size(), 16);
    for (qsizetype k = 8; k < 16; ++k)
        QVERIFY(values[k] >= 0.0 && values[k] < 100.0); // fresh noise only
}

void tst_RandomU64Data::numBinTakesEffectAtTheNextReset()
{
    RandomU64Data source;
    reset(source);
    QSignalSpy spy(&source, &RandomU64Data::numBinChanged);
    source.setNumBin(64);
    source.setNumBin(64);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(source.data().size(), 1024);
    reset(source);
    QCOMPARE(source.data().size(), 64);
}

void tst_RandomU64Data::settingsBelowOneAreRefused_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("warning");
    QTest::newRow("no bin at all") << QByteArray("numBin") << 0 << "numBin 0 refused, it must be at least 1";
    QTest::newRow("a negative bin count") << QByteArray("numBin") << -5 << "numBin -5 refused, it must be at least 1";
    QTest::newRow("an interval of 0 ms") << QByteArray("interval") << 0 << "interval 0 ms refused, it must be at least 1";
    QTest::newRow("a negative interval")
        << QByteArray("interval") << -40 << "interval -40 ms refused, it must be at least 1";
}

void tst_RandomU64Data::settingsBelowOneAreRefused()
{
    QFETCH(QByteArray, property);
    QFETCH(int, value);
    QFETCH(QString, warning);
    RandomU64Data source;
    const QVariant before = source.property(property);
    QSignalSpy numBinSpy(&source, &RandomU64Data::numBinChanged);
    QSignalSpy intervalSpy(&source, &RandomU64Data::intervalChanged);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QRegularExpression::escape(warning)));
    QVERIFY(source.setProperty(property, value));
    QCOMPARE(source.property(property), before);
    QCOMPARE(timerOf(source)->interval(), 2500);
    QCOMPARE(numBinSpy.size() + intervalSpy.size(), 0);
}

void tst_RandomU64Data::runningIsTheTimerInterval_data()
{
    QTest::addColumn<bool>("running");
    QTest::addColumn<int>("interval");
    QTest::newRow("running false keeps the timer firing at 0 ms") << false << 0;
    QTest::newRow("running true after false fires at 1 ms") << true << 1;
}

void tst_RandomU64Data::runningIsTheTimerInterval()
{
    QFETCH(bool, running);
    QFETCH(int, interval);

    RandomU64Data source;
    QSignalSpy runningSpy(&source, &RandomU64Data::runningChanged);
    source.setRunning(false);
    source.setRunning(running);
    QCOMPARE(runningSpy.size(), running ? 2 : 1);
    QTimer *timer = timerOf(source);
    QVERIFY(timer->isActive());
    QCOMPARE(timer->interval(), interval);
    QSignalSpy dataSpy(&source, &Filter1D::dataChanged);
    QTRY_VERIFY(dataSpy.size() >= 2);
}

void tst_RandomU64Data::intervalAndRepeatConfigureTheTimer()
{
    RandomU64Data source;
    QSignalSpy intervalSpy(&source, &RandomU64Data::intervalChanged);
    QSignalSpy repeatSpy(&source, &RandomU64Data::repeatChanged);
    source.setInterval(40);
    source.setInterval(40);
    source.setRepeat(false);
    source.setRepeat(false);
    QCOMPARE(intervalSpy.size(), 1);
    QCOMPARE(repeatSpy.size(), 1);
    QCOMPARE(timerOf(source)->interval(), 40);
    QVERIFY(timerOf(source)->isSingleShot());
}

QTEST_GUILESS_MAIN(tst_RandomU64Data)
#include "tst_randomu64data.moc"
