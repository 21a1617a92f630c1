// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Runs the demo as a user would: its screenshot shows the five charts with
// their data, axes and legends where the layout puts them, and bad arguments
// are answered with a clear message.
#include <QtCore/QHash>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtTest/QTest>

#include <algorithm>
#include <cmath>

namespace {

const QString demo = QStringLiteral(VEXAL_DEMO_PATH);

struct Run
{
    int exitCode = -1;  // the demo's exit code, -1 when it did not finish
    QByteArray output;  // stdout and stderr together
};

Run runDemo(const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(demo, arguments);
    Run run;
    if (process.waitForFinished(120000))
        run.exitCode = process.exitCode();
    run.output = process.readAll();
    return run;
}

// Share of the pixels of region whose colour is within tolerance of colour.
double shareOf(const QImage &image, const QRect &region, const QColor &colour, int tolerance)
{
    int hits = 0;
    for (int y = region.top(); y <= region.bottom(); ++y) {
        for (int x = region.left(); x <= region.right(); ++x) {
            const QColor c = image.pixelColor(x, y);
            hits += qAbs(c.red() - colour.red()) <= tolerance && qAbs(c.green() - colour.green()) <= tolerance
                && qAbs(c.blue() - colour.blue()) <= tolerance;
        }
    }
    return double(hits) / double(region.width() * region.height());
}

// A colour seen through the overview's band, 30 % of "#4dc2e6" over it.
QColor underBand(const QColor &c)
{
    const QColor band("#4dc2e6");
    const auto mix = [](int under, int over) { return qRound(0.7 * under + 0.3 * over); };
    return QColor(mix(c.red(), band.red()), mix(c.green(), band.green()), mix(c.blue(), band.blue()));
}

// WCAG's relative luminance of a colour.
double luminance(const QColor &c)
{
    const auto channel = [](double v) { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
}

// WCAG's contrast ratio of two colours, from 1 to 21.
double contrast(const QColor &a, const QColor &b)
{
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

// The colours of region with how often each occurs.
QHash<QRgb, int> coloursOf(const QImage &image, const QRect &region)
{
    QHash<QRgb, int> counts;
    for (int y = region.top(); y <= region.bottom(); ++y) {
        for (int x = region.left(); x <= region.right(); ++x)
            ++counts[image.pixel(x, y)];
    }
    return counts;
}

// The commonest colour of region: the background behind its text.
QColor backgroundOf(const QImage &image, const QRect &region)
{
    const QHash<QRgb, int> counts = coloursOf(image, region);
    QRgb background = 0;
    int most = 0;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        if (it.value() > most) {
            most = it.value();
            background = it.key();
        }
    }
    return QColor(background);
}

// The contrast of the text of region against its background: the pixel
// farthest from the background is the core of a glyph.
double textContrast(const QImage &image, const QRect &region)
{
    const QColor background = backgroundOf(image, region);
    double best = 1.0;
    const QHash<QRgb, int> counts = coloursOf(image, region);
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        best = std::max(best, contrast(QColor(it.key()), background));
    return best;
}

} // namespace

class tst_VexalDemo : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void screenshotShowsEveryChart_data();
    void screenshotShowsEveryChart();
    void argumentsAreChecked_data();
    void argumentsAreChecked();
    void darkThemeLabelsAreReadable_data();
    void darkThemeLabelsAreReadable();

private:
    QTemporaryDir m_dir;
    QImage m_screenshot;
    QImage m_darkScreenshot; // the demo under the Dark theme, taken by the first dark row
};

void tst_VexalDemo::initTestCase()
{
    const QString picture = m_dir.filePath(QStringLiteral("demo.png"));
    const Run run = runDemo({QStringLiteral("--screenshot"), picture});
    QVERIFY2(run.exitCode == 0, run.output.constData());
    QVERIFY(run.output.contains("wrote"));
    QVERIFY(m_screenshot.load(picture));
    QCOMPARE(m_screenshot.size(), QSize(1280, 900));
}

void tst_VexalDemo::screenshotShowsEveryChart_data()
{
    QTest::addColumn<QRect>("region");
    QTest::addColumn<QColor>("colour");
    QTest::addColumn<double>("minShare");
    QTest::addColumn<double>("maxShare");
    QTest::addColumn<int>("tolerance");

    // Label shares are low but far from zero: the live histogram may show only
    // three short y labels, where a view without labels has none at all.
    // Below a 48-pixel tool bar the window shows three views in its upper half
    // and two in its lower half; each view keeps its chart in the upper part,
    // the navigator and legend below it.
    const QColor teal("#009688"), indigo("#3f51b5"), pink("#e91e63"), purple("#673ab7"), red("#ef5350");
    const QColor text(Qt::black); // with a wide tolerance: the dark, antialiased label pixels
    QTest::newRow("the live histogram's bars stand in its chart")
        << QRect(180, 230, 120, 70) << teal << 0.5 << 1.0 << 12;
    QTest::newRow("the live histogram's tails are low: the chart's top is empty")
        << QRect(80, 100, 120, 60) << teal << 0.0 << 0.01 << 12;
    QTest::newRow("the long series' bars fill its chart")
        << QRect(500, 230, 330, 70) << indigo << 0.02 << 1.0 << 12;
    QTest::newRow("the signed chirp's dense band swings above and below the middle of its chart")
        << QRect(1100, 130, 150, 150) << pink << 0.5 << 1.0 << 12;
    QTest::newRow("the signed chirp's slow swings leave room between them")
        << QRect(990, 150, 60, 100) << pink << 0.05 << 0.6 << 12;
    QTest::newRow("the pair bars stand far right of the origin in their chart")
        << QRect(80, 650, 530, 60) << purple << 0.5 << 1.0 << 12;
    QTest::newRow("the pair bars' zoom fits their values: the peaks leave room between them")
        << QRect(80, 515, 530, 20) << purple << 0.05 << 0.6 << 12;
    QTest::newRow("the CSV peaks rise in their chart")
        << QRect(710, 690, 540, 25) << red << 0.3 << 1.0 << 12;
    QTest::newRow("the live histogram's legend shows its colour dot")
        << QRect(150, 415, 30, 20) << teal << 0.05 << 1.0 << 12;
    QTest::newRow("the signed chirp's legend shows its colour dot")
        << QRect(860, 415, 400, 20) << pink << 0.004 << 1.0 << 12;
    QTest::newRow("the y axis of the live histogram has labels")
        << QRect(15, 95, 45, 225) << text << 0.003 << 0.5 << 150;
    QTest::newRow("the y axis of the signed chirp has a label in its lower part, below zero")
        << QRect(860, 245, 55, 50) << text << 0.003 << 0.5 << 150;
    QTest::newRow("the x axis of the CSV chart has labels")
        << QRect(700, 707, 560, 16) << text << 0.01 << 0.5 << 150;
    // Every overview strip shows its view's series, under the band that
    // marks the whole data.
    QTest::newRow("the live histogram's overview shows its bars")
        << QRect(200, 380, 100, 20) << underBand(teal) << 0.5 << 1.0 << 16;
    QTest::newRow("the pair bars' overview shows them")
        << QRect(80, 795, 530, 12) << underBand(purple) << 0.5 << 1.0 << 16;
    QTest::newRow("the CSV chart's overview shows its bars")
        << QRect(710, 807, 540, 2) << underBand(red) << 0.3 << 1.0 << 16;
}

void tst_VexalDemo::screenshotShowsEveryChart()
{
    QFETCH(QRect, region);
    QFETCH(QColor, colour);
    QFETCH(double, minShare);
    QFETCH(double, maxShare);
    QFETCH(int, tolerance);

    const double share = shareOf(m_screenshot, region, colour, tolerance);
    QVERIFY2(share >= minShare && share <= maxShare, QByteArray::number(share).constData());
}

void tst_VexalDemo::argumentsAreChecked_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("message");

    QTest::newRow("an unknown option gets the usage and code 2")
        << QStringList{"--frobnicate"} << 2 << QByteArray("Usage:");
    QTest::newRow("a stray argument gets the usage and code 2")
        << QStringList{"file.csv"} << 2 << QByteArray("unexpected argument 'file.csv'");
    QTest::newRow("a missing CSV file is named")
        << QStringList{"--csv", "/nonexistent/values.csv"} << 1
        << QByteArray("cannot read the CSV file '/nonexistent/values.csv'");
    QTest::newRow("help prints the usage") << QStringList{"--help"} << 0 << QByteArray("--screenshot");
}

void tst_VexalDemo::argumentsAreChecked()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, message);

    const Run run = runDemo(arguments);
    QCOMPARE(run.exitCode, exitCode);
    QVERIFY2(run.output.contains(message), run.output.constData());
}

void tst_VexalDemo::darkThemeLabelsAreReadable_data()
{
    QTest::addColumn<QRect>("region");
    // The axis and legend text regions of the screenshot rows above.
    QTest::newRow("the live histogram's y labels contrast at least 4.5:1") << QRect(15, 95, 45, 225);
    QTest::newRow("the long series' x labels contrast at least 4.5:1") << QRect(460, 330, 370, 18);
    QTest::newRow("the CSV chart's x labels contrast at least 4.5:1") << QRect(700, 707, 560, 16);
    QTest::newRow("the live histogram's legend name contrasts at least 4.5:1") << QRect(160, 415, 120, 20);
}

void tst_VexalDemo::darkThemeLabelsAreReadable()
{
    QFETCH(QRect, region);
    if (m_darkScreenshot.isNull()) {
        const QString picture = m_dir.filePath(QStringLiteral("dark.png"));
        const Run run = runDemo({QStringLiteral("--dark"), QStringLiteral("--screenshot"), picture});
        QVERIFY2(run.exitCode == 0, run.output.constData());
        QVERIFY(m_darkScreenshot.load(picture));
    }
    // The picture is dark: most of the region is a dark background.
    const QColor background = backgroundOf(m_darkScreenshot, region);
    QVERIFY2(luminance(background) < 0.1, qPrintable(background.name()));
    const double ratio = textContrast(m_darkScreenshot, region);
    QVERIFY2(ratio >= 4.5, QByteArray::number(ratio).constData());
}

QTEST_GUILESS_MAIN(tst_VexalDemo)
#include "tst_vexaldemo.moc"
