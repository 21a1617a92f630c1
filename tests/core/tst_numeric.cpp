// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Unit tests of the numeric helpers: fuzzy comparisons, list identity,
// saturating conversions and the double split of single-precision vertices.
#include "core/numeric_p.h"

#include <QtTest/QTest>

#include <cfloat>
#include <cmath>
#include <limits>

namespace {

const double Inf = std::numeric_limits<double>::infinity();
const double NaN = std::numeric_limits<double>::quiet_NaN();

} // namespace

class tst_Numeric : public QObject
{
    Q_OBJECT

private slots:
    void fuzzyEqual_data();
    void fuzzyEqual();
    void sameRect_data();
    void sameRect();
    void sameData_data();
    void sameData();
    void toInt_data();
    void toInt();
    void toFloat_data();
    void toFloat();
    void splitDoubleKeepsTheLowBits_data();
    void splitDoubleKeepsTheLowBits();
};

void tst_Numeric::fuzzyEqual_data()
{
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<bool>("equal");

    QTest::newRow("two zeros are equal") << 0.0 << 0.0 << true;
    QTest::newRow("zero never equals a tiny value") << 0.0 << 1e-300 << false;
    QTest::newRow("a difference of one part in 1e13 is equal") << 1.0 << 1.0 + 1e-13 << true;
    QTest::newRow("a difference of one part in 1e11 is not") << 1.0 << 1.0 + 1e-11 << false;
    QTest::newRow("opposite signs are not equal") << 1.0 << -1.0 << false;
    QTest::newRow("NaN equals nothing") << NaN << NaN << false;
}

void tst_Numeric::fuzzyEqual()
{
    QFETCH(double, a);
    QFETCH(double, b);
    QFETCH(bool, equal);
    QCOMPARE(Vexal::fuzzyEqual(a, b), equal);
    QCOMPARE(Vexal::fuzzyEqual(b, a), equal);
}

void tst_Numeric::sameRect_data()
{
    QTest::addColumn<QRectF>("a");
    QTest::addColumn<QRectF>("b");
    QTest::addColumn<bool>("same");

    QTest::newRow("equal rectangles") << QRectF(1, 2, 3, 4) << QRectF(1, 2, 3, 4) << true;
    QTest::newRow("a moved rectangle differs") << QRectF(1, 2, 3, 4) << QRectF(1.5, 2, 3, 4) << false;
    QTest::newRow("a wider rectangle differs") << QRectF(1, 2, 3, 4) << QRectF(1, 2, 3.5, 4) << false;
    QTest::newRow("two null rectangles are the same") << QRectF() << QRectF() << true;
}

void tst_Numeric::sameRect()
{
    QFETCH(QRectF, a);
    QFETCH(QRectF, b);
    QFETCH(bool, same);
    QCOMPARE(Vexal::sameRect(a, b), same);
}

void tst_Numeric::sameData_data()
{
    QTest::addColumn<QList<double>>("a");
    QTest::addColumn<QList<double>>("b");
    QTest::addColumn<bool>("same");

    QTest::newRow("two empty lists are the same") << QList<double>() << QList<double>() << true;
    QList<double> reserved;
    reserved.reserve(4);
    QTest::newRow("an empty and a reserved empty list are the same") << QList<double>() << reserved << true;
    QTest::newRow("equal values are the same") << QList<double>{1, 2, 3} << QList<double>{1, 2, 3} << true;
    QTest::newRow("one value differs") << QList<double>{1, 2, 3} << QList<double>{1, 2, 4} << false;
    QTest::newRow("a shorter list differs") << QList<double>{1, 2} << QList<double>{1, 2, 3} << false;
    // Byte-wise: the same NaN bits are the same data, although NaN != NaN.
    QTest::newRow("the same NaN is the same data") << QList<double>{NaN} << QList<double>{NaN} << true;
    QTest::newRow("zero and minus zero differ") << QList<double>{0.0} << QList<double>{-0.0} << false;
}

void tst_Numeric::sameData()
{
    QFETCH(QList<double>, a);
    QFETCH(QList<double>, b);
    QFETCH(bool, same);
    QCOMPARE(Vexal::sameData(a, b), same);
    const QList<double> shared = a;
    QVERIFY(Vexal::sameData(a, shared));
}

void tst_Numeric::toInt_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("result");

    QTest::newRow("truncates towards zero") << 2.9 << 2;
    QTest::newRow("truncates negatives towards zero") << -2.9 << -2;
    QTest::newRow("NaN gives 0") << NaN << 0;
    QTest::newRow("plus infinity saturates") << Inf << std::numeric_limits<int>::max();
    QTest::newRow("minus infinity saturates") << -Inf << std::numeric_limits<int>::min();
    QTest::newRow("a huge value saturates") << 1e20 << std::numeric_limits<int>::max();
}

void tst_Numeric::toInt()
{
    QFETCH(double, value);
    QFETCH(int, result);
    QCOMPARE(Vexal::toInt(value), result);
}

void tst_Numeric::toFloat_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<float>("result");

    QTest::newRow("rounds like a plain conversion") << 0.1 << 0.1f;
    QTest::newRow("beyond the float range saturates") << 1e300 << FLT_MAX;
    QTest::newRow("beyond the negative range saturates") << -1e300 << -FLT_MAX;
    QTest::newRow("infinity passes") << Inf << std::numeric_limits<float>::infinity();
}

void tst_Numeric::toFloat()
{
    QFETCH(double, value);
    QFETCH(float, result);
    QCOMPARE(Vexal::toFloat(value), result);
    QVERIFY(std::isnan(Vexal::toFloat(NaN)));
}

void tst_Numeric::splitDoubleKeepsTheLowBits_data()
{
    QTest::addColumn<double>("value");

    QTest::newRow("a value ten million from the origin") << 1e7 + 0.123456789;
    QTest::newRow("a negative value far from the origin") << -3e8 - 0.5;
    QTest::newRow("a value that is exact in float") << 0.25;
    QTest::newRow("zero") << 0.0;
}

void tst_Numeric::splitDoubleKeepsTheLowBits()
{
    QFETCH(double, value);
    const Vexal::SplitDouble split = Vexal::splitDouble(value);
    QCOMPARE(split.msb, float(value));
    // The sum of both parts comes within float rounding of the low part, far
    // closer than the most significant part alone.
    const double error = std::fabs(double(split.msb) + double(split.lsb) - value);
    QVERIFY2(error <= std::fabs(value - double(split.msb)) * 1e-6 + 1e-30, qPrintable(QString::number(error)));
}

QTEST_APPLESS_MAIN(tst_Numeric)
#include "tst_numeric.moc"
