// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Unit tests of the CSV reader: what each kind of line reads as, the area it
// publishes, missing files, and a file of ten million lines.
#include <vexal/scsvreader.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include "samevalues.h"

#include <cmath>
#include <memory>

using VexalTest::sameValues;

namespace {

// The reading rule as it reads: every line of the file opened as text goes
// whole to QString::toDouble.
QList<double> referenceRead(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QList<double> values;
    while (!file.atEnd())
        values.append(QString(file.readLine()).toDouble());
    return values;
}

} // namespace

class tst_SCSVReader : public QObject
{
    Q_OBJECT

private:
    QString write(const QByteArray &content)
    {
        const QString path = m_dir.filePath(QStringLiteral("data%1.csv").arg(m_files++));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write the test file");
        return path;
    }

    QTemporaryDir m_dir; // the test files
    int m_files = 0;     // files written so far, for unique names

private slots:
    void defaults();
    void readsOneNumberPerLine_data();
    void readsOneNumberPerLine();
    void areaWidthIsCountTimesBinWidth_data();
    void areaWidthIsCountTimesBinWidth();
    void emptyFileOnEmptyDataChangesNothing();
    void unreadablePathsKeepTheOldData_data();
    void unreadablePathsKeepTheOldData();
    void theSamePathDoesNotReload();
    void binWidthAloneKeepsTheArea();
    void tenMillionLines();
};

void tst_SCSVReader::defaults()
{
    SCSVReader reader;
    QVERIFY(reader.file().isEmpty());
    QCOMPARE(reader.binWidth(), 9.375e-12);
    QVERIFY(reader.data().isEmpty());
}

void tst_SCSVReader::readsOneNumberPerLine_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QList<double>>("values");

    const auto asQString = [](const char *text) { return QString::fromUtf8(text).toDouble(); };
    QTest::newRow("one number a line") << QByteArray("1\n2.5\n-3e2\n") << QList<double>{1, 2.5, -300};
    QTest::newRow("the last line without a line break") << QByteArray("1\n2") << QList<double>{1, 2};
    QTest::newRow("CRLF line ends") << QByteArray("1\r\n2\r\n") << QList<double>{1, 2};
    QTest::newRow("carriage returns inside a line are dropped") << QByteArray("1\r2\n") << QList<double>{12};
    QTest::newRow("a last line of a carriage return only reads as 0") << QByteArray("1\n\r") << QList<double>{1, 0};
    QTest::newRow("a file of one carriage return holds one line") << QByteArray("\r") << QList<double>{0};
    QTest::newRow("text lines read as 0") << QByteArray("value\n5\nx7\n") << QList<double>{0, 5, 0};
    QTest::newRow("two numbers with a separator read as 0") << QByteArray("1;2\n3,4\n") << QList<double>{0, 0};
    QTest::newRow("empty lines read as 0") << QByteArray("1\n\n2\n") << QList<double>{1, 0, 2};
    QTest::newRow("a lone line break is one empty line") << QByteArray("\n") << QList<double>{0};
    QTest::newRow("surrounding white space is ignored") << QByteArray("  4 \t\n\t-1\n") << QList<double>{4, -1};
    // Whatever QString makes of these spellings (Qt 6.4: only lower case).
    QTest::newRow("NaN and infinity spellings read as QString reads them")
        << QByteArray("nan\nNaN\ninf\n-inf\n+inf\nINF\n1e999\n")
        << QList<double>{asQString("nan"), asQString("NaN"), asQString("inf"), asQString("-inf"),
                         asQString("+inf"), asQString("INF"), asQString("1e999")};
    QTest::newRow("other number forms read as QString reads them")
        << QByteArray("0x10\n1,000\n1.5e\n1e-999\n-1e999\n  +3\n.5\n5.\n1e+3\n1_000\n")
        << QList<double>{asQString("0x10"), asQString("1,000"), asQString("1.5e"), asQString("1e-999"),
                         asQString("-1e999"), 3, 0.5, 5, 1000, asQString("1_000")};
    QTest::newRow("a non-breaking space reads as QString reads it")
        << QByteArray("\xC2\xA0" "5\n") << QList<double>{asQString("\xC2\xA0" "5")};
    QTest::newRow("non-ASCII text reads as 0") << QByteArray("\xC3\xA9t\xC3\xA9\n") << QList<double>{0};
    QTest::newRow("a line of three million characters") << QByteArray(3'000'000, ' ') + "42\n7\n" << QList<double>{42, 7};
    QTest::newRow("a UTF-8 byte order mark does not spoil the first number")
        << QByteArray("\xEF\xBB\xBF" "7\n8\n") << QList<double>{7, 8};
}

void tst_SCSVReader::readsOneNumberPerLine()
{
    QFETCH(QByteArray, content);
    QFETCH(QList<double>, values);

    const QString path = write(content);
    SCSVReader reader;
    QSignalSpy spy(&reader, &Filter1D::dataChanged);
    reader.setFile(path);
    const std::unique_ptr<char[]> actual(QTest::toString(reader.data()));
    QVERIFY2(sameValues(reader.data(), values), actual.get());
    QCOMPARE(spy.size(), 1);
    // The block reader gives what a line-by-line QString read gives.
    QVERIFY(sameValues(reader.data(), referenceRead(path)));
}

void tst_SCSVReader::areaWidthIsCountTimesBinWidth_data()
{
    QTest::addColumn<int>("lines");
    QTest::addColumn<double>("binWidth");
    QTest::addColumn<double>("width");
    QTest::newRow("1000 lines at the default width span 9.375e-9") << 1000 << 9.375e-12 << 9.375e-9;
    QTest::newRow("3 lines of width 2 span 6") << 3 << 2.0 << 6.0;
    QTest::newRow("a zero bin width spans 0") << 3 << 0.0 << 0.0;
    QTest::newRow("a negative bin width spans backwards") << 3 << -1.0 << -3.0;
}

void tst_SCSVReader::areaWidthIsCountTimesBinWidth()
{
    QFETCH(int, lines);
    QFETCH(double, binWidth);
    QFETCH(double, width);

    QByteArray content;
    for (int i = 0; i < lines; ++i)
        content += QByteArray::number(i) + '\n';
    SCSVReader reader;
    reader.setBinWidth(binWidth);
    reader.setFile(write(content));
    QCOMPARE(reader.data().size(), lines);
    QCOMPARE(reader.area(), QRectF(0, 0, width, 0));
}

void tst_SCSVReader::emptyFileOnEmptyDataChangesNothing()
{
    SCSVReader reader;
    reader.setBinWidth(1.0);
    reader.setFile(write("5\n6\n"));
    QSignalSpy dataSpy(&reader, &Filter1D::dataChanged);
    reader.setFile(write(""));
    QVERIFY(reader.data().isEmpty());
    QCOMPARE(reader.area().width(), 0.0);
    QCOMPARE(dataSpy.size(), 1);

    reader.setFile(write(""));
    QCOMPARE(dataSpy.size(), 1); // empty after empty: nothing to publish
}

void tst_SCSVReader::unreadablePathsKeepTheOldData_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a missing file keeps the old data") << QStringLiteral("no such file.csv");
    QTest::newRow("a directory keeps the old data") << QStringLiteral(".");
    QTest::newRow("an empty path keeps the old data") << QString();
}

void tst_SCSVReader::unreadablePathsKeepTheOldData()
{
    QFETCH(QString, name);
    SCSVReader reader;
    reader.setBinWidth(1.0);
    reader.setFile(write("1\n2\n"));
    QSignalSpy fileSpy(&reader, &SCSVReader::fileChanged);
    QSignalSpy dataSpy(&reader, &Filter1D::dataChanged);

    reader.setFile(name.isEmpty() ? name : m_dir.filePath(name));
    QCOMPARE(fileSpy.size(), 1);
    QCOMPARE(reader.data(), (QList<double>{1, 2}));
    QCOMPARE(reader.area(), QRectF(0, 0, 2, 0));
    QCOMPARE(dataSpy.size(), 0);
}

void tst_SCSVReader::theSamePathDoesNotReload()
{
    const QString path = write("1\n");
    SCSVReader reader;
    reader.setFile(path);
    write(""); // another file, so that the path below can be rewritten
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("2\n3\n");
    file.close();
    QSignalSpy fileSpy(&reader, &SCSVReader::fileChanged);
    reader.setFile(path);
    QCOMPARE(fileSpy.size(), 0);
    QCOMPARE(reader.data(), (QList<double>{1}));

    reader.setFile(QString());
    reader.setFile(path);
    QCOMPARE(reader.data(), (QList<double>{2, 3}));
}

void tst_SCSVReader::binWidthAloneKeepsTheArea()
{
    SCSVReader reader;
    reader.setBinWidth(1.0);
    reader.setFile(write("1\n2\n3\n"));
    QSignalSpy spy(&reader, &SCSVReader::binWidthChanged);
    reader.setBinWidth(1.0 + 1e-14);
    QCOMPARE(spy.size(), 0);
    reader.setBinWidth(5.0);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(reader.area(), QRectF(0, 0, 3, 0));
}

void tst_SCSVReader::tenMillionLines()
{
    constexpr int Lines = 10'000'000;
    const QString path = m_dir.filePath(QStringLiteral("big.csv"));
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QByteArray chunk;
        for (int i = 0; i < Lines; ++i) {
            chunk += QByteArray::number(i % 1000) + ".5\n";
            if (chunk.size() > (1 << 20)) {
                file.write(chunk);
                chunk.clear();
            }
        }
        file.write(chunk);
    }
    SCSVReader reader;
    reader.setFile(path);
    const QList<double> &values = reader.data();
    QCOMPARE(values.size(), Lines);
    QCOMPARE(values.first(), 0.5);
    QCOMPARE(values.at(1234567), 567.5);
    QCOMPARE(values.last(), 999.5);
    QCOMPARE(reader.area().width(), Lines * 9.375e-12);
}

QTEST_GUILESS_MAIN(tst_SCSVReader)
#include "tst_scsvreader.moc"
