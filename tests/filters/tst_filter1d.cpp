// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Unit tests of the filter tree node: data, area and id flow, index lookups,
// and the safety rules of the tree (null pointers, cycles, destroyed nodes).
#include <vexal/filter1d.h>

#include <vexal/ichartarea.h>

#include "filterprobe.h"
#include "testplotter1d.h"

#include <QtCore/QUuid>
#include <QtGui/QGuiApplication>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <cmath>
#include <limits>
#include <memory>

namespace {

const double NaN = std::numeric_limits<double>::quiet_NaN();
const double Inf = std::numeric_limits<double>::infinity();

} // namespace

class tst_Filter1D : public QObject
{
    Q_OBJECT

private:
    // Plotters drop data while they have no chart: every test plotter gets one.
    TestPlotter1D *newPlotter()
    {
        auto *plotter = new TestPlotter1D(m_chart.get());
        plotter->setChartArea(m_chart.get());
        return plotter;
    }

    std::unique_ptr<IChartArea> m_chart; // the chart of the current test's plotters

private slots:
    void init() { m_chart = std::make_unique<IChartArea>(); }
    void cleanup() { m_chart.reset(); }

    void startsEmptyWithAFreshId();
    void setDataPropagatesOnlyChanges_data();
    void setDataPropagatesOnlyChanges();
    void childrenAndPlottersAreServedInOrderBeforeTheSignal();
    void addFilterHandsDownIdAreaAndDataInThatOrder();
    void addFilterTwiceDoesNothing();
    void addPlotterHandsDownAreaThenData();
    void setAreaPropagatesOnlyChanges_data();
    void setAreaPropagatesOnlyChanges();
    void setDataIDIsNotForwarded();
    void removedNodesNoLongerReceive();
    void removeFilterClearsTheParentLink();
    void nullPointersAreRefused();
    void cyclesAreRefused_data();
    void cyclesAreRefused();
    void destroyedNodesLeaveTheLists();
    void destroyedParentLeavesTheChildOnItsOwnData();
    void indexAt_data();
    void indexAt();
    void valueAtOutsideTheAreaIsZero();
    void areaAt_data();
    void areaAt();
    void maxIn_data();
    void maxIn();
    void size2DCountsWholePairs_data();
    void size2DCountsWholePairs();
};

void tst_Filter1D::startsEmptyWithAFreshId()
{
    Filter1D a, b;
    QVERIFY(a.area().isNull());
    QVERIFY(a.data().isEmpty());
    QVERIFY(a.plotters().isEmpty());
    QVERIFY(a.filters().isEmpty());
    // The default QUuid text form, with braces; every node has its own.
    QVERIFY(a.dataID().startsWith(QLatin1Char('{')));
    QVERIFY(!QUuid::fromString(a.dataID()).isNull());
    QVERIFY(a.dataID() != b.dataID());
}

void tst_Filter1D::setDataPropagatesOnlyChanges_data()
{
    QTest::addColumn<QList<double>>("first");
    QTest::addColumn<QList<double>>("second");
    QTest::addColumn<bool>("propagated");

    const QList<double> list{1.0, 2.0, 3.0};
    QTest::newRow("the same shared list is not propagated") << list << list << false;
    QTest::newRow("an equal copy is not propagated") << list << QList<double>{1.0, 2.0, 3.0} << false;
    QTest::newRow("a longer list is propagated") << list << QList<double>{1.0, 2.0, 3.0, 4.0} << true;
    QTest::newRow("one changed value is propagated") << list << QList<double>{1.0, 2.5, 3.0} << true;
    QTest::newRow("an empty list after data is propagated") << list << QList<double>() << true;
    QTest::newRow("an empty list on empty data is not propagated") << QList<double>() << QList<double>() << false;
    QTest::newRow("the same NaN bytes are not propagated") << QList<double>{NaN} << QList<double>{NaN} << false;
    QTest::newRow("zero after minus zero is propagated") << QList<double>{-0.0} << QList<double>{0.0} << true;
}

void tst_Filter1D::setDataPropagatesOnlyChanges()
{
    QFETCH(QList<double>, first);
    QFETCH(QList<double>, second);
    QFETCH(bool, propagated);

    Filter1D parent;
    Filter1D child;
    TestPlotter1D *plotter = newPlotter();
    parent.addFilter(&child);
    parent.addPlotter(plotter);
    parent.setData(first);
    QSignalSpy parentSpy(&parent, &Filter1D::dataChanged);
    QSignalSpy childSpy(&child, &Filter1D::dataChanged);
    const int plotterCalls = plotter->dataCalls();

    parent.setData(second);
    QCOMPARE(parentSpy.size(), propagated ? 1 : 0);
    QCOMPARE(childSpy.size(), propagated ? 1 : 0);
    QCOMPARE(plotter->dataCalls(), plotterCalls + (propagated ? 1 : 0));
    QCOMPARE(child.data().size(), second.size());
}

void tst_Filter1D::childrenAndPlottersAreServedInOrderBeforeTheSignal()
{
    QStringList log;
    FilterProbe parent(QStringLiteral("parent"), &log);
    FilterProbe first(QStringLiteral("first"), &log);
    FilterProbe second(QStringLiteral("second"), &log);
    TestPlotter1D *plotterA = newPlotter();
    TestPlotter1D *plotterB = newPlotter();
    parent.addFilter(&first);
    parent.addFilter(&second);
    parent.addPlotter(plotterA);
    parent.addPlotter(plotterB);
    connect(plotterA, &TestPlotter1D::received, this, [&] { log << QStringLiteral("plotterA"); });
    connect(plotterB, &TestPlotter1D::received, this, [&] { log << QStringLiteral("plotterB"); });
    connect(&first, &Filter1D::dataChanged, this, [&] { log << QStringLiteral("first.changed"); });
    connect(&parent, &Filter1D::dataChanged, this, [&] { log << QStringLiteral("parent.changed"); });
    log.clear();

    parent.setData({4.0, 5.0});
    const QStringList expected{"parent.data", "first.data", "first.changed", "second.data",
                               "plotterA", "plotterB", "parent.changed"};
    QCOMPARE(log, expected);
    // The same list object reaches every receiver: shared, not copied.
    QVERIFY(first.data().isSharedWith(parent.data()));
    QVERIFY(plotterA->data().isSharedWith(parent.data()));
}

void tst_Filter1D::addFilterHandsDownIdAreaAndDataInThatOrder()
{
    QStringList log;
    Filter1D parent;
    parent.setDataID(QStringLiteral("stream"));
    parent.setArea(QRectF(0, 0, 4, 2));
    parent.setData({1.0, 2.0});
    FilterProbe child(QStringLiteral("child"), &log);
    QSignalSpy childData(&child, &Filter1D::dataChanged);

    parent.addFilter(&child);
    QCOMPARE(log, (QStringList{"child.id", "child.area", "child.data"}));
    QCOMPARE(child.dataID(), QStringLiteral("stream"));
    QCOMPARE(child.area(), QRectF(0, 0, 4, 2));
    QCOMPARE(child.data(), (QList<double>{1.0, 2.0}));
    QCOMPARE(childData.size(), 1);
    QCOMPARE(parent.filters(), (QList<Filter1D *>{&child}));
}

void tst_Filter1D::addFilterTwiceDoesNothing()
{
    QStringList log;
    Filter1D parent;
    parent.setData({1.0});
    FilterProbe child(QStringLiteral("child"), &log);
    parent.addFilter(&child);
    log.clear();

    parent.addFilter(&child);
    QVERIFY(log.isEmpty());
    QCOMPARE(parent.filters().size(), 1);
}

void tst_Filter1D::addPlotterHandsDownAreaThenData()
{
    Filter1D filter;
    filter.setArea(QRectF(0, 0, 3, 1));
    filter.setData({7.0, 8.0, 9.0});
    TestPlotter1D *plotter = newPlotter();

    filter.addPlotter(plotter);
    filter.addPlotter(plotter);
    QCOMPARE(plotter->calls(), (QStringList{"area", "data"}));
    QCOMPARE(plotter->plotterArea(), QRectF(0, 0, 3, 1));
    QCOMPARE(plotter->data(), (QList<double>{7.0, 8.0, 9.0}));
    QCOMPARE(filter.plotters(), (QList<IPlotter1D *>{plotter}));
}

void tst_Filter1D::setAreaPropagatesOnlyChanges_data()
{
    QTest::addColumn<QRectF>("next");
    QTest::addColumn<bool>("propagated");

    QTest::newRow("the same rectangle is not propagated") << QRectF(1, 0, 10, 5) << false;
    QTest::newRow("a rectangle off by 1e-14 is not propagated") << QRectF(1 + 1e-14, 0, 10, 5) << false;
    QTest::newRow("a wider rectangle is propagated") << QRectF(1, 0, 11, 5) << true;
    QTest::newRow("a moved rectangle is propagated") << QRectF(2, 0, 10, 5) << true;
    QTest::newRow("a zero-width rectangle is propagated") << QRectF(1, 0, 0, 5) << true;
    QTest::newRow("a negative-width rectangle is propagated") << QRectF(1, 0, -10, 5) << true;
}

void tst_Filter1D::setAreaPropagatesOnlyChanges()
{
    QFETCH(QRectF, next);
    QFETCH(bool, propagated);

    QStringList log;
    FilterProbe parent(QStringLiteral("parent"), &log);
    FilterProbe child(QStringLiteral("child"), &log);
    TestPlotter1D *plotter = newPlotter();
    parent.addFilter(&child);
    parent.addPlotter(plotter);
    parent.setArea(QRectF(1, 0, 10, 5));
    connect(plotter, &TestPlotter1D::received, this, [&] { log << QStringLiteral("plotter"); });
    connect(&parent, &Filter1D::areaChanged, this, [&] { log << QStringLiteral("parent.changed"); });
    log.clear();

    parent.setArea(next);
    const QStringList expected = propagated ? QStringList{"parent.area", "child.area", "plotter", "parent.changed"}
                                            : QStringList{"parent.area"};
    QCOMPARE(log, expected);
    if (propagated) {
        QCOMPARE(child.area(), next);
        QCOMPARE(plotter->lastArea(), next);
    }
}

void tst_Filter1D::setDataIDIsNotForwarded()
{
    Filter1D parent, child;
    parent.addFilter(&child);
    QSignalSpy spy(&parent, &Filter1D::dataIDChanged);
    parent.setDataID(QStringLiteral("other"));
    parent.setDataID(QStringLiteral("other"));
    QCOMPARE(spy.size(), 1);
    QVERIFY(child.dataID() != QStringLiteral("other"));
}

void tst_Filter1D::removedNodesNoLongerReceive()
{
    Filter1D parent, child;
    TestPlotter1D *plotter = newPlotter();
    parent.addFilter(&child);
    parent.addPlotter(plotter);
    parent.removeFilter(&child);
    parent.removePlotter(plotter);
    parent.removeFilter(&child);     // absent: nothing happens
    parent.removePlotter(plotter);
    const int plotterCalls = plotter->dataCalls();

    parent.setData({3.0});
    QVERIFY(child.data().isEmpty());
    QCOMPARE(plotter->dataCalls(), plotterCalls);
    QVERIFY(parent.filters().isEmpty());
    QVERIFY(parent.plotters().isEmpty());
}

void tst_Filter1D::removeFilterClearsTheParentLink()
{
    QStringList log;
    Filter1D parent;
    parent.setData({5.0, 6.0});
    FilterProbe child(QStringLiteral("child"), &log);
    parent.addFilter(&child);
    child.Filter1D::setData({1.0}); // the child's own output now differs from its input
    QCOMPARE(child.originalData(), (QList<double>{5.0, 6.0}));

    parent.removeFilter(&child);
    QCOMPARE(child.originalData(), (QList<double>{1.0}));
}

void tst_Filter1D::nullPointersAreRefused()
{
    Filter1D filter;
    filter.setData({1.0});
    QTest::ignoreMessage(QtWarningMsg, "Filter1D::addFilter: a null filter was ignored");
    filter.addFilter(nullptr);
    QTest::ignoreMessage(QtWarningMsg, "Filter1D::addPlotter: a null plotter was ignored");
    filter.addPlotter(nullptr);
    QVERIFY(filter.filters().isEmpty());
    QVERIFY(filter.plotters().isEmpty());
    filter.setData({2.0}); // still works with nothing attached
    QCOMPARE(filter.data(), (QList<double>{2.0}));
}

void tst_Filter1D::cyclesAreRefused_data()
{
    QTest::addColumn<int>("depth");
    QTest::newRow("a filter added to itself is refused") << 0;
    QTest::newRow("a parent added to its child is refused") << 1;
    QTest::newRow("a root added to its grandchild is refused") << 2;
}

void tst_Filter1D::cyclesAreRefused()
{
    QFETCH(int, depth);
    std::vector<std::unique_ptr<Filter1D>> chain;
    chain.push_back(std::make_unique<Filter1D>());
    for (int i = 0; i < depth; ++i) {
        chain.push_back(std::make_unique<Filter1D>());
        chain[size_t(i)]->addFilter(chain[size_t(i) + 1].get());
    }
    Filter1D *root = chain.front().get();
    Filter1D *leaf = chain.back().get();

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("addFilter: refused .* cycle")));
    leaf->addFilter(root);
    QVERIFY(!leaf->filters().contains(root));
    root->setData({1.0, 2.0}); // would recurse forever through a cycle
    QCOMPARE(leaf->data(), (QList<double>{1.0, 2.0}));
}

void tst_Filter1D::destroyedNodesLeaveTheLists()
{
    Filter1D parent;
    auto *child = new Filter1D;
    auto *kept = new Filter1D(&parent);
    TestPlotter1D *plotter = newPlotter();
    parent.addFilter(child);
    parent.addFilter(kept);
    parent.addPlotter(plotter);

    delete child;
    delete plotter;
    QCOMPARE(parent.filters(), (QList<Filter1D *>{kept}));
    QVERIFY(parent.plotters().isEmpty());
    parent.setData({1.0}); // would touch freed objects otherwise
    QCOMPARE(kept->data(), (QList<double>{1.0}));
}

void tst_Filter1D::destroyedParentLeavesTheChildOnItsOwnData()
{
    QStringList log;
    auto parent = std::make_unique<Filter1D>();
    parent->setData({1.0, 2.0});
    FilterProbe child(QStringLiteral("child"), &log);
    parent->addFilter(&child);
    child.Filter1D::setData({9.0});

    parent.reset();
    QCOMPARE(child.originalData(), (QList<double>{9.0}));
}

void tst_Filter1D::indexAt_data()
{
    QTest::addColumn<QList<double>>("values");
    QTest::addColumn<QRectF>("area");
    QTest::addColumn<double>("x");
    QTest::addColumn<int>("index");

    const QList<double> four{1, 2, 3, 4};
    const QRectF area(0, 0, 8, 10); // cells of width 2
    QTest::newRow("an empty list gives -1") << QList<double>() << area << 1.0 << -1;
    QTest::newRow("a zero-width area gives -1") << four << QRectF(0, 0, 0, 10) << 0.0 << -1;
    QTest::newRow("x left of the area gives -1") << four << area << -0.5 << -1;
    QTest::newRow("x right of the area gives -1") << four << area << 8.5 << -1;
    QTest::newRow("x at the left edge gives 0") << four << area << 0.0 << 0;
    QTest::newRow("x at the right edge gives n - 1") << four << area << 8.0 << 3;
    QTest::newRow("the left half of cell 1 gives 1") << four << area << 2.9 << 1;
    QTest::newRow("the right half of cell 1 rounds to 2") << four << area << 3.1 << 2;
    QTest::newRow("an area above y = 0 gives -1") << four << QRectF(0, 1, 8, 10) << 3.0 << -1;
    QTest::newRow("a NaN position gives -1") << four << area << NaN << -1;
    QTest::newRow("a negative-width area stays in range") << four << QRectF(8, 0, -8, 10) << 1.0 << 3;
    QTest::newRow("an infinitely wide area gives cell 0") << four << QRectF(0, 0, Inf, 10) << 1e300 << 0;
}

void tst_Filter1D::indexAt()
{
    QFETCH(QList<double>, values);
    QFETCH(QRectF, area);
    QFETCH(double, x);
    QFETCH(int, index);

    Filter1D filter;
    filter.setArea(area);
    filter.setData(values);
    QCOMPARE(filter.index_at(x), index);
    if (index >= 0)
        QCOMPARE(filter.value_at(x), values.at(index));
}

void tst_Filter1D::valueAtOutsideTheAreaIsZero()
{
    Filter1D filter;
    filter.setArea(QRectF(0, 0, 2, 1));
    filter.setData({5.0, 6.0});
    QCOMPARE(filter.value_at(-1.0), 0.0);
    QCOMPARE(filter.value_at(1.9), 6.0);
}

void tst_Filter1D::areaAt_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<QRectF>("column");

    QTest::newRow("a point outside gives a null rectangle") << QPointF(-3, 0) << QRectF();
    QTest::newRow("a point in cell 0 gives its column") << QPointF(0.5, 0) << QRectF(0, 0, 2, 5);
    QTest::newRow("a point in the right half of cell 0 gives cell 1") << QPointF(1.5, 7) << QRectF(2, 0, 2, -1);
}

void tst_Filter1D::areaAt()
{
    QFETCH(QPointF, point);
    QFETCH(QRectF, column);

    Filter1D filter;
    filter.setArea(QRectF(0, 0, 4, 1));
    filter.setData({5.0, -1.0});
    QCOMPARE(filter.area_at(point), column);
    QCOMPARE(filter.area_at(point).isNull(), column.isNull());
}

void tst_Filter1D::maxIn_data()
{
    QTest::addColumn<QList<double>>("values");
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<double>("max");

    const QRectF all(0, 0, 4, 1);
    QTest::newRow("negative values give 0") << QList<double>{-3, -1, -2, -5} << all << 0.0;
    QTest::newRow("the whole area gives the largest value") << QList<double>{1, 7, 3, 2} << all << 7.0;
    QTest::newRow("a part of the area sees only its cells") << QList<double>{1, 7, 3, 2} << QRectF(2, 0, 2, 1) << 3.0;
    QTest::newRow("a rectangle beyond the area sees the last cells") << QList<double>{1, 7, 3, 9} << QRectF(3, 0, 50, 1) << 9.0;
    QTest::newRow("a rectangle outside the area gives 0") << QList<double>{1, 7} << QRectF(10, 0, 2, 1) << 0.0;
    QTest::newRow("empty data give 0") << QList<double>() << all << 0.0;
    QTest::newRow("NaN values are skipped") << QList<double>{NaN, 2, NaN, 1} << all << 2.0;
    QTest::newRow("infinity is the maximum") << QList<double>{1, Inf, 3, 2} << all << Inf;
    QTest::newRow("one element") << QList<double>{4} << all << 4.0;
}

void tst_Filter1D::maxIn()
{
    QFETCH(QList<double>, values);
    QFETCH(QRectF, rect);
    QFETCH(double, max);

    Filter1D filter;
    filter.setArea(QRectF(0, 0, 4, 1));
    filter.setData(values);
    QCOMPARE(filter.max_in(rect), max);
}

void tst_Filter1D::size2DCountsWholePairs_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("pairs");
    QTest::newRow("5 elements hold 2 pairs") << 5 << 2;
    QTest::newRow("4 elements hold 2 pairs") << 4 << 2;
    QTest::newRow("1 element holds no pair") << 1 << 0;
    QTest::newRow("no element holds no pair") << 0 << 0;
}

void tst_Filter1D::size2DCountsWholePairs()
{
    QFETCH(int, size);
    QFETCH(int, pairs);
    QStringList log;
    FilterProbe filter(QStringLiteral("f"), &log);
    filter.setData(QList<double>(size, 1.0));
    QCOMPARE(filter.size2D(), pairs);
}

QTEST_MAIN(tst_Filter1D)
#include "tst_filter1d.moc"
