// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Values appended to the root of a filter tree: every filter hands down what
// setData with the whole input would hand down (DecimatorU64 grouping fixed
// pairs), to child filters and plotters alike, and the area widens by one
// input cell per value. clear() empties the whole tree.
#include <vexal/barplotter.h>
#include <vexal/decimatorfilter.h>
#include <vexal/decimatoru64.h>
#include <vexal/filter1d.h>
#include <vexal/fixeddecimator2d.h>
#include <vexal/fixeddecimatoru64.h>
#include <vexal/minimalwidth2d.h>
#include <vexal/movingaverageu64.h>

#include <QtGui/QGuiApplication>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include "samevalues.h"

#include <cmath>
#include <functional>
#include <memory>
#include <random>

using VexalTest::fixedPairLevels;
using VexalTest::sameValues;

namespace {

using MakeFilter = std::function<std::unique_ptr<Filter1D>()>;

template <typename T>
MakeFilter maker()
{
    return [] { return std::make_unique<T>(); };
}

// Pseudo-random values in [0, 100) with a NaN now and then; pairs get
// positive widths at even positions.
QList<double> someValues(qsizetype n, unsigned seed, bool pairs = false)
{
    std::mt19937 engine(seed);
    std::uniform_real_distribution<double> uniform(0.0, 100.0);
    QList<double> values(n);
    for (qsizetype i = 0; i < n; ++i)
        values[i] = pairs && i % 2 == 0 ? 0.01 + uniform(engine) / 1000.0 : uniform(engine);
    if (!pairs && n > 7)
        values[7] = qQNaN();
    return values;
}

// Where a decimator's levels differ from the expected ones; empty when nowhere.
QString levelsDiffer(const QList<QList<double>> &levels, const QList<QList<double>> &expected)
{
    if (levels.size() != expected.size())
        return QStringLiteral("%1 levels instead of %2").arg(levels.size()).arg(expected.size());
    for (qsizetype k = 0; k < levels.size(); ++k) {
        if (!sameValues(levels[k], expected[k]))
            return QStringLiteral("level %1").arg(k);
    }
    return QString();
}

// A root of the given type with an identity child and a plotter under each.
struct Tree
{
    std::unique_ptr<Filter1D> root; // the filter under test
    Filter1D child;                 // an identity filter below it
    BarPlotter rootPlotter;         // the root's plotter
    BarPlotter childPlotter;        // the child's plotter

    explicit Tree(const MakeFilter &make) : root(make())
    {
        root->setArea(QRectF(0, 0, 10, 1));
        root->addFilter(&child);
        root->addPlotter(&rootPlotter);
        child.addPlotter(&childPlotter);
    }
};

} // namespace

class tst_FilterAppends : public QObject
{
    Q_OBJECT

private slots:
    void appendsHandDownWhatTheWholeInputWould_data();
    void appendsHandDownWhatTheWholeInputWould();
    void areaWidensByOneInputCellPerValue();
    void decimatorLevelsGroupFixedPairsAfterAnAppend_data();
    void decimatorLevelsGroupFixedPairsAfterAnAppend();
    void appendToAChildIsRefused();
    void clearEmptiesTheWholeTree();
    void clearKeepsAFixedDecimatorsCellsAtZero();
    void capacityKeepsTheNewestValues_data();
    void capacityKeepsTheNewestValues();
    void droppedValuesMoveTheAreaByTheirCells_data();
    void droppedValuesMoveTheAreaByTheirCells();
    void decimatorLevelsKeepTheirPairsAsTheWindowMoves_data();
    void decimatorLevelsKeepTheirPairsAsTheWindowMoves();
    void aWindowStaysBoundedInMemory();
    void badCapacitiesWarn();
};

void tst_FilterAppends::appendsHandDownWhatTheWholeInputWould_data()
{
    QTest::addColumn<MakeFilter>("make");
    QTest::addColumn<bool>("pairs");

    QTest::newRow("the identity appends") << maker<Filter1D>() << false;
    QTest::newRow("a moving average updates its end") << maker<MovingAverageU64>() << false;
    QTest::newRow("a fixed decimator recomputes") << maker<FixedDecimatorU64>() << false;
    QTest::newRow("a fixed pair decimator recomputes") << maker<FixedDecimator2D>() << true;
    QTest::newRow("a minimal-width merge recomputes") << maker<MinimalWidth2D>() << true;
}

void tst_FilterAppends::appendsHandDownWhatTheWholeInputWould()
{
    QFETCH(MakeFilter, make);
    QFETCH(bool, pairs);

    const QList<double> head = someValues(1000, 1, pairs);
    const QList<double> tail1 = someValues(10, 2, pairs);
    const QList<double> tail2 = someValues(300, 3, pairs);
    Tree appended(make);
    appended.root->setData(head);
    appended.root->appendData(tail1);
    appended.root->appendData(tail2);
    Tree whole(make);
    whole.root->setArea(appended.root->area());
    whole.root->setData(head + tail1 + tail2);

    QVERIFY(sameValues(appended.root->data(), whole.root->data()));
    QVERIFY(sameValues(appended.child.data(), whole.child.data()));
    QVERIFY(sameValues(appended.rootPlotter.data(), whole.rootPlotter.data()));
    QVERIFY(sameValues(appended.childPlotter.data(), whole.childPlotter.data()));
}

void tst_FilterAppends::areaWidensByOneInputCellPerValue()
{
    Tree tree(maker<MovingAverageU64>());
    tree.root->setData(QList<double>(100, 1.0)); // cells 0.1 wide
    QSignalSpy areaSpy(tree.root.get(), &Filter1D::areaChanged);
    tree.root->appendData(QList<double>(20, 2.0));
    QCOMPARE(areaSpy.count(), 1);
    QCOMPARE(tree.root->area(), QRectF(0, 0, 12, 1));
    QCOMPARE(tree.child.area(), QRectF(0, 0, 12, 1));
    QCOMPARE(tree.rootPlotter.plotterArea().width(), 12.0);
    // Into an empty filter: cells one unit wide.
    Tree empty(maker<Filter1D>());
    empty.root->appendData({1, 2, 3});
    QCOMPARE(empty.root->area().width(), 13.0);
    QCOMPARE(empty.rootPlotter.data(), QList<double>({1, 2, 3}));
}

void tst_FilterAppends::decimatorLevelsGroupFixedPairsAfterAnAppend_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<QList<int>>("appends");

    QTest::newRow("odd lengths regroup on the first append") << 1001 << QList<int>{1, 2, 3};
    QTest::newRow("many single values") << 4 << QList<int>(70, 1);
    QTest::newRow("an append into an empty decimator") << 0 << QList<int>{513, 1000};
    QTest::newRow("a long series and a short tail") << 100000 << QList<int>{7};
}

void tst_FilterAppends::decimatorLevelsGroupFixedPairsAfterAnAppend()
{
    QFETCH(int, before);
    QFETCH(QList<int>, appends);

    DecimatorU64 decimator;
    BarPlotter plotter;
    decimator.addPlotter(&plotter);
    QList<double> all = someValues(before, 4);
    if (!all.isEmpty())
        decimator.setData(all);
    unsigned seed = 5;
    for (int count : appends) {
        const QList<double> values = someValues(count, seed++);
        decimator.appendData(values);
        all += values;
    }
    const QString difference = levelsDiffer(decimator.decimator().levels(), fixedPairLevels(all));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    QVERIFY(sameValues(plotter.data(), decimator.data()));
}

void tst_FilterAppends::appendToAChildIsRefused()
{
    Tree tree(maker<Filter1D>());
    tree.root->setData({1, 2, 3});
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("appendData: ignored on a node fed by a parent"));
    tree.child.appendData({4});
    QCOMPARE(tree.child.data(), QList<double>({1, 2, 3}));
}

void tst_FilterAppends::clearEmptiesTheWholeTree()
{
    Tree tree(maker<DecimatorU64>());
    tree.root->setData(someValues(1000, 6));
    QSignalSpy dataSpy(tree.root.get(), &Filter1D::dataChanged);
    tree.root->clear();
    QCOMPARE(dataSpy.count(), 1);
    QVERIFY(tree.root->data().isEmpty());
    QVERIFY(tree.child.data().isEmpty());
    QVERIFY(tree.rootPlotter.data().isEmpty());
    QVERIFY(tree.childPlotter.data().isEmpty());
    // Values appended after clear() start a new series.
    tree.root->appendData({5, 6});
    QCOMPARE(tree.childPlotter.data(), QList<double>({5, 6}));
}

void tst_FilterAppends::clearKeepsAFixedDecimatorsCellsAtZero()
{
    Tree tree(maker<FixedDecimatorU64>());
    tree.root->setData(someValues(1000, 7));
    const qsizetype cells = tree.root->data().size();
    QVERIFY(cells > 0);
    tree.root->clear();
    QCOMPARE(tree.root->data(), QList<double>(cells, 0.0));
    QCOMPARE(tree.childPlotter.data(), QList<double>(cells, 0.0));
    // And it decimates what comes next into the same cells.
    tree.root->appendData(someValues(500, 8));
    QCOMPARE(tree.root->data().size(), cells);
    QVERIFY(tree.root->data() != QList<double>(cells, 0.0));
}

// How the values of a test reach the root: a whole list, then appends, then
// a capacity lowered below the length.
struct Feed
{
    int head = 0;       // values set as a whole list first
    QList<int> appends; // sizes of the appends that follow
    int capacity = 0;   // capacity set before any value
    int lowered = 0;    // capacity set after the values; 0 = none
};
Q_DECLARE_METATYPE(Feed)

namespace {

// Feeds values to tree's root as f says; returns every value given.
QList<double> feedRoot(Tree &tree, const Feed &f)
{
    tree.root->setCapacity(f.capacity);
    QList<double> all = someValues(f.head, 9);
    if (!all.isEmpty())
        tree.root->setData(all);
    unsigned seed = 10;
    for (int count : f.appends) {
        const QList<double> values = someValues(count, seed++);
        tree.root->appendData(values);
        all += values;
    }
    if (f.lowered > 0)
        tree.root->setCapacity(f.lowered);
    return all;
}

// The number of values a root keeps of given ones under f.
qsizetype keptOf(const Feed &f, qsizetype given)
{
    const int limit = f.lowered > 0 ? f.lowered : f.capacity;
    return limit > 0 ? std::min<qsizetype>(limit, given) : given;
}

// The ways a window drops values, as rows named after them with a prefix.
// Windows too short for a fixed decimator's cells are left out for it: cells
// that no value reaches keep older values there.
void addWindowRows(const char *prefix, const MakeFilter &make, bool tinyWindows = true)
{
    const QList<QPair<const char *, Feed>> feeds{
        {"a window that overflows", Feed{0, {400, 400, 400, 30}, 1000, 0}},
        {"a list set longer than the capacity", Feed{1500, {}, 1000, 0}},
        {"a set list, then appends past the capacity", Feed{900, {50, 50, 50}, 1000, 0}},
        {"an append longer than the capacity", Feed{10, {3000}, 1000, 0}},
        {"the capacity lowered below the length", Feed{1200, {100}, 0, 700}},
        {"a capacity of one", Feed{5, {1, 1, 3}, 1, 0}}};
    for (const auto &[name, f] : feeds) {
        if (tinyWindows || f.capacity != 1)
            QTest::addRow("%s: %s", prefix, name) << make << f;
    }
}

} // namespace

void tst_FilterAppends::capacityKeepsTheNewestValues_data()
{
    QTest::addColumn<MakeFilter>("make");
    QTest::addColumn<Feed>("feed");
    addWindowRows("the identity", maker<Filter1D>());
    addWindowRows("a moving average", maker<MovingAverageU64>());
    addWindowRows("a fixed decimator", maker<FixedDecimatorU64>(), false);
}

void tst_FilterAppends::capacityKeepsTheNewestValues()
{
    QFETCH(MakeFilter, make);
    QFETCH(Feed, feed);

    Tree windowed(make);
    const QList<double> all = feedRoot(windowed, feed);
    const QList<double> kept = all.last(keptOf(feed, all.size()));
    Tree whole(make);
    whole.root->setArea(windowed.root->area());
    whole.root->setData(kept);

    QVERIFY(sameValues(windowed.root->data(), whole.root->data()));
    QVERIFY(sameValues(windowed.child.data(), whole.child.data()));
    QVERIFY(sameValues(windowed.rootPlotter.data(), whole.rootPlotter.data()));
    QVERIFY(sameValues(windowed.childPlotter.data(), whole.childPlotter.data()));
}

void tst_FilterAppends::droppedValuesMoveTheAreaByTheirCells_data()
{
    QTest::addColumn<MakeFilter>("make");
    QTest::addColumn<Feed>("feed");
    addWindowRows("the identity", maker<Filter1D>());
    addWindowRows("a decimator", maker<DecimatorU64>());
}

void tst_FilterAppends::droppedValuesMoveTheAreaByTheirCells()
{
    QFETCH(MakeFilter, make);
    QFETCH(Feed, feed);

    // Every value kept stays where it is without a capacity.
    Tree tree(make);
    const QList<double> all = feedRoot(tree, feed);
    Tree unbounded(make);
    feedRoot(unbounded, Feed{feed.head, feed.appends, 0, 0});
    const QRectF full = unbounded.root->area();
    const qsizetype dropped = all.size() - keptOf(feed, all.size());
    const double cell = full.width() / double(all.size());
    const QRectF expected(full.left() + double(dropped) * cell, 0, double(all.size() - dropped) * cell, 1);
    QCOMPARE(tree.root->area(), expected);
    QCOMPARE(tree.child.area(), expected);
    QCOMPARE(tree.rootPlotter.plotterArea().left(), expected.left());
    QCOMPARE(tree.childPlotter.plotterArea().right(), expected.right());
}

void tst_FilterAppends::decimatorLevelsKeepTheirPairsAsTheWindowMoves_data()
{
    QTest::addColumn<int>("capacity");
    QTest::addColumn<QList<int>>("appends");

    QTest::newRow("single values slide an odd window") << 7 << QList<int>(40, 1);
    QTest::newRow("chunks slide a long window") << 1000 << QList<int>(30, 333);
    QTest::newRow("a window of two") << 2 << QList<int>{1, 1, 1, 5, 1};
    QTest::newRow("chunks longer than the window") << 100 << QList<int>{250, 7, 1000};
}

void tst_FilterAppends::decimatorLevelsKeepTheirPairsAsTheWindowMoves()
{
    QFETCH(int, capacity);
    QFETCH(QList<int>, appends);

    DecimatorU64 decimator;
    BarPlotter plotter;
    decimator.addPlotter(&plotter);
    decimator.setCapacity(capacity);
    QList<double> all;
    unsigned seed = 20;
    for (int count : appends) {
        const QList<double> values = someValues(count, seed++);
        decimator.appendData(values);
        all += values;
    }
    const qsizetype dropped = std::max<qsizetype>(all.size() - capacity, 0);
    const QList<QList<double>> expected = fixedPairLevels(all.mid(dropped), dropped);
    const QString difference = levelsDiffer(decimator.decimator().levels(), expected);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    QVERIFY(sameValues(plotter.data(), decimator.data()));
}

void tst_FilterAppends::aWindowStaysBoundedInMemory()
{
    Tree tree(maker<Filter1D>());
    tree.root->setCapacity(10000);
    const QList<double> chunk = someValues(1000, 30);
    for (int i = 0; i < 200; ++i)
        tree.root->appendData(chunk);
    QCOMPARE(tree.root->data().size(), 10000);
    QCOMPARE(tree.childPlotter.data().size(), 10000);
    // Room for the window and one chunk's growth, not for the 200 000 values streamed.
    QVERIFY2(tree.root->data().capacity() < 40000, qPrintable(QString::number(tree.root->data().capacity())));
    QVERIFY(tree.childPlotter.data().capacity() < 40000);
}

void tst_FilterAppends::badCapacitiesWarn()
{
    Tree tree(maker<Filter1D>());
    tree.root->setData(someValues(100, 31));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("capacity: -5 is negative; using 0"));
    tree.root->setCapacity(-5);
    QCOMPARE(tree.root->capacity(), 0);
    QCOMPARE(tree.root->data().size(), 100);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("capacity: ignored on a node fed by a parent"));
    tree.child.setCapacity(10);
    QCOMPARE(tree.child.data().size(), 100);
}

QTEST_MAIN(tst_FilterAppends)
#include "tst_filterappends.moc"
