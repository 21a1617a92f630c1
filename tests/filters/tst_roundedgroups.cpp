// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Unit tests of the rounded grouping that the decimating filters share: group
// ends at round(k * step), empty groups for steps below one, clamps.
#include "filters/roundedgroups_p.h"

#include <QtTest/QTest>

#include <limits>
#include <utility>

using Groups = QList<std::pair<qsizetype, qsizetype>>;
Q_DECLARE_METATYPE(Groups)

namespace {

Groups groupsOf(qsizetype n, double step)
{
    Groups groups;
    Vexal::forEachRoundedGroup(n, step, [&](qsizetype k, qsizetype begin, qsizetype end) {
        // Groups come in order, numbered from 0.
        if (k != groups.size())
            groups.append({-1, -1});
        groups.append({begin, end});
    });
    return groups;
}

} // namespace

class tst_RoundedGroups : public QObject
{
    Q_OBJECT

private slots:
    void roundedEnd_data();
    void roundedEnd();
    void groups_data();
    void groups();
};

void tst_RoundedGroups::roundedEnd_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<qsizetype>("end");

    QTest::newRow("below one half rounds down") << 2.49 << qsizetype(2);
    QTest::newRow("one half rounds up") << 2.5 << qsizetype(3);
    QTest::newRow("below the lower bound is clamped up") << 0.2 << qsizetype(1);
    QTest::newRow("beyond the upper bound gives the upper bound") << 50.0 << qsizetype(10);
    QTest::newRow("infinity gives the upper bound") << std::numeric_limits<double>::infinity() << qsizetype(10);
    QTest::newRow("NaN gives the upper bound") << std::numeric_limits<double>::quiet_NaN() << qsizetype(10);
}

void tst_RoundedGroups::roundedEnd()
{
    QFETCH(double, x);
    QFETCH(qsizetype, end);
    QCOMPARE(Vexal::roundedEnd(x, 1, 10), end);
}

void tst_RoundedGroups::groups_data()
{
    QTest::addColumn<qsizetype>("n");
    QTest::addColumn<double>("step");
    QTest::addColumn<Groups>("expected");

    QTest::newRow("pairs of a list of even length") << qsizetype(4) << 2.0 << Groups{{0, 2}, {2, 4}};
    QTest::newRow("a step of 2.5 alternates groups of 3 and 2")
        << qsizetype(10) << 2.5 << Groups{{0, 3}, {3, 5}, {5, 8}, {8, 10}};
    QTest::newRow("a step below one leaves empty groups")
        << qsizetype(2) << 0.75 << Groups{{0, 1}, {1, 2}};
    QTest::newRow("a step of 0.4 leaves empty groups between the values")
        << qsizetype(2) << 0.4 << Groups{{0, 0}, {0, 1}, {1, 1}, {1, 2}};
    QTest::newRow("a zero step makes one group of everything") << qsizetype(5) << 0.0 << Groups{{0, 5}};
    QTest::newRow("a NaN step makes one group of everything")
        << qsizetype(5) << std::numeric_limits<double>::quiet_NaN() << Groups{{0, 5}};
    QTest::newRow("an empty list has no groups") << qsizetype(0) << 2.0 << Groups{};
}

void tst_RoundedGroups::groups()
{
    QFETCH(qsizetype, n);
    QFETCH(double, step);
    QFETCH(Groups, expected);
    QCOMPARE(groupsOf(n, step), expected);
}

QTEST_APPLESS_MAIN(tst_RoundedGroups)
#include "tst_roundedgroups.moc"
