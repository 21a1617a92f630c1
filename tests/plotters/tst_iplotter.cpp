// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Unit tests of the plotter base: properties and their signals, chart
// attachment, the data setter and the base hooks.
#include <vexal/ichartarea.h>
#include <vexal/iplotter.h>

#include <QtCore/QMetaMethod>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <memory>

namespace {

class CountingChart : public IChartArea
{
public:
    CountingChart() { setUpdateIntervalMs(0); }
    int accepted = 0; // accepted redraw requests
    void updateArea() override
    {
        ++accepted;
        IChartArea::updateArea();
    }
};

// Opens the protected hooks of the base to the tests.
class PlotterProbe : public IPlotter
{
public:
    using IPlotter::__update_index;
    using IPlotter::__update_vertex;
    using IPlotter::_fetch_attribute_data;
    using IPlotter::_fetch_render_layers;
    using IPlotter::declareArributeArray;
    using IPlotter::declareUniforms;
    using IPlotter::offsetSubtracts;
    using IPlotter::programLabel;
};

QStringList signalNames(const QMetaObject &mo)
{
    QStringList names;
    for (int i = mo.methodOffset(); i < mo.methodCount(); ++i) {
        if (mo.method(i).methodType() == QMetaMethod::Signal)
            names << QString::fromLatin1(mo.method(i).name());
    }
    return names;
}

QStringList propertyNames(const QMetaObject &mo)
{
    QStringList names;
    for (int i = mo.propertyOffset(); i < mo.propertyCount(); ++i)
        names << QString::fromLatin1(mo.property(i).name());
    return names;
}

} // namespace

class tst_IPlotter : public QObject
{
    Q_OBJECT

private slots:
    void defaults();
    void signalsAndPropertiesAreDeclaredInOrder();
    void settersNotifyAndRepaint_data();
    void settersNotifyAndRepaint();
    void showLegendEmitsDrawLayerChanged();
    void modAreaFollowsPlotterAreaAndOffset_data();
    void modAreaFollowsPlotterAreaAndOffset();
    void chartAreaSetter();
    void dataWithoutChartIsDropped();
    void dataSetterStoresSharedAndNotifies();
    void equalDataEmitsNothing_data();
    void equalDataEmitsNothing();
    void baseHooksReportWhatIsMissing();
};

void tst_IPlotter::defaults()
{
    IPlotter p;
    QCOMPARE(p.name(), QString());
    QCOMPARE(p.legendToolTipText(), QString());
    QCOMPARE(p.warningMessage(), QString());
    QCOMPARE(p.color(), QColor(7, 203, 242, 255));
    QCOMPARE(p.visible(), true);
    QCOMPARE(p.zOrder(), 0.0);
    QCOMPARE(p.xOffset(), 0.0);
    QVERIFY(p.data().isEmpty());
    QCOMPARE(p.vectorDim(), uchar(1));
    QVERIFY(p.plotterArea().isNull());
    QCOMPARE(p.drawLayer(), 1u);
    QCOMPARE(p.showLegend(), true);
    QCOMPARE(p.chartArea(), nullptr);
    QVERIFY(!IPlotter::staticMetaObject.property(IPlotter::staticMetaObject.indexOfProperty("modArea")).isWritable());
}

void tst_IPlotter::signalsAndPropertiesAreDeclaredInOrder()
{
    const QStringList signalOrder{"colorChanged", "visibleChanged", "zOrderChanged", "plotterAreaChanged",
                                  "initChanged", "chartAreaChanged", "drawLayerChanged", "showLegendChanged",
                                  "nameChanged", "legendToolTipTextChanged", "dataChanged", "vectorDimChanged",
                                  "warningMessageChanged", "xOffsetChanged", "modAreaChanged"};
    QCOMPARE(signalNames(IPlotter::staticMetaObject), signalOrder);
    const QStringList propertyOrder{"name", "color", "visible", "zOrder", "legendToolTipText",
                                    "warningMessage", "data", "vectorDim", "plotterArea", "modArea",
                                    "drawLayer", "showLegend", "chartArea", "xOffset"};
    QCOMPARE(propertyNames(IPlotter::staticMetaObject), propertyOrder);
}

void tst_IPlotter::settersNotifyAndRepaint_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("initial");
    QTest::addColumn<QVariant>("next");
    QTest::addColumn<int>("emits");
    QTest::addColumn<bool>("repaints");

    const QVariant none;
    QTest::newRow("the same name emits nothing") << QByteArray("name") << none << QVariant(QString()) << 0 << false;
    QTest::newRow("a new name emits without a repaint") << QByteArray("name") << none << QVariant("bars") << 1 << false;
    QTest::newRow("the default colour again emits nothing")
        << QByteArray("color") << none << QVariant(QColor(7, 203, 242)) << 0 << false;
    QTest::newRow("a new colour emits and repaints") << QByteArray("color") << none << QVariant(QColor(Qt::red)) << 1 << true;
    QTest::newRow("staying visible emits nothing") << QByteArray("visible") << none << QVariant(true) << 0 << false;
    QTest::newRow("hiding emits and repaints") << QByteArray("visible") << none << QVariant(false) << 1 << true;
    QTest::newRow("zOrder moved by 1e-13 of 1.0 emits nothing")
        << QByteArray("zOrder") << QVariant(1.0) << QVariant(1.0 + 1e-13) << 0 << false;
    QTest::newRow("zOrder from 0.0 to 1e-300 emits and repaints")
        << QByteArray("zOrder") << QVariant(0.0) << QVariant(1e-300) << 1 << true;
    QTest::newRow("the same legend tooltip text still emits")
        << QByteArray("legendToolTipText") << none << QVariant(QString()) << 1 << false;
    QTest::newRow("the same warning message still emits")
        << QByteArray("warningMessage") << none << QVariant(QString()) << 1 << false;
    QTest::newRow("the same vector dimension emits nothing") << QByteArray("vectorDim") << none << QVariant(1) << 0 << false;
    QTest::newRow("a new vector dimension emits") << QByteArray("vectorDim") << none << QVariant(2) << 1 << false;
    QTest::newRow("the same draw layer emits nothing") << QByteArray("drawLayer") << none << QVariant(1u) << 0 << false;
    QTest::newRow("a new draw layer emits and repaints") << QByteArray("drawLayer") << none << QVariant(6u) << 1 << true;
    QTest::newRow("xOffset 0 again emits nothing") << QByteArray("xOffset") << none << QVariant(0.0) << 0 << false;
    QTest::newRow("a new xOffset emits and repaints") << QByteArray("xOffset") << none << QVariant(5.0) << 1 << true;
    QTest::newRow("xOffset moved by 1e-13 of 1.0 emits nothing")
        << QByteArray("xOffset") << QVariant(1.0) << QVariant(1.0 + 1e-13) << 0 << false;
    QTest::newRow("the same plotter area emits nothing")
        << QByteArray("plotterArea") << QVariant(QRectF(0, 0, 4, 2)) << QVariant(QRectF(0, 0, 4, 2)) << 0 << false;
    QTest::newRow("a new plotter area emits and repaints")
        << QByteArray("plotterArea") << none << QVariant(QRectF(0, 0, 4, 2)) << 1 << true;
}

void tst_IPlotter::settersNotifyAndRepaint()
{
    QFETCH(QByteArray, property);
    QFETCH(QVariant, initial);
    QFETCH(QVariant, next);
    QFETCH(int, emits);
    QFETCH(bool, repaints);

    CountingChart chart;
    IPlotter p;
    p.setChartArea(&chart);
    if (initial.isValid())
        QVERIFY(p.setProperty(property, initial));
    const QMetaProperty meta = p.metaObject()->property(p.metaObject()->indexOfProperty(property));
    QSignalSpy spy(&p, meta.notifySignal());
    const int acceptedBefore = chart.accepted;
    QVERIFY(p.setProperty(property, next));
    QCOMPARE(spy.count(), emits);
    QCOMPARE(chart.accepted - acceptedBefore, repaints ? 1 : 0);
    if (emits)
        QCOMPARE(p.property(property), next);
}

void tst_IPlotter::showLegendEmitsDrawLayerChanged()
{
    IPlotter p;
    QSignalSpy drawLayer(&p, &IPlotter::drawLayerChanged);
    QSignalSpy showLegend(&p, &IPlotter::showLegendChanged);
    p.setShowLegend(true);
    QCOMPARE(drawLayer.count(), 0);
    p.setShowLegend(false);
    QCOMPARE(p.showLegend(), false);
    QCOMPARE(drawLayer.count(), 1);
    QCOMPARE(showLegend.count(), 0);
}

void tst_IPlotter::modAreaFollowsPlotterAreaAndOffset_data()
{
    QTest::addColumn<bool>("subtracts");
    QTest::addColumn<QRectF>("expected");
    QTest::newRow("an offset moves the data area left by default") << true << QRectF(5, 0, 10, 2);
    QTest::newRow("an adding offset moves the data area right") << false << QRectF(15, 0, 10, 2);
}

void tst_IPlotter::modAreaFollowsPlotterAreaAndOffset()
{
    QFETCH(bool, subtracts);
    QFETCH(QRectF, expected);

    PlotterProbe p;
    p.offsetSubtracts = subtracts;
    QSignalSpy spy(&p, &IPlotter::modAreaChanged);
    p.setPlotterArea(QRectF(10, 0, 10, 2));
    p.setXOffset(5);
    QCOMPARE(spy.count(), 2);
    QCOMPARE(p.modArea(), expected);
    QCOMPARE(p.dataArea(), expected);
    QCOMPARE(p.plotterArea(), QRectF(10, 0, 10, 2));
}

void tst_IPlotter::chartAreaSetter()
{
    IChartArea first, second;
    IPlotter p;
    QSignalSpy spy(&p, &IPlotter::chartAreaChanged);
    p.setChartArea(&first);
    QCOMPARE(spy.count(), 1);
    p.setChartArea(&first);
    QCOMPARE(spy.count(), 1);
    p.setChartArea(&second);
    QCOMPARE(spy.count(), 2);
    QVERIFY(first.plotter().isEmpty());
    QCOMPARE(second.plotter(), QList<IPlotter *>{&p});
    p.setChartArea(nullptr);
    QCOMPARE(spy.count(), 3);
    QVERIFY(second.plotter().isEmpty());
}

void tst_IPlotter::dataWithoutChartIsDropped()
{
    IPlotter p;
    QSignalSpy spy(&p, &IPlotter::dataChanged);
    p.setData({1, 2, 3});
    QVERIFY(p.data().isEmpty());
    QCOMPARE(spy.count(), 0);
}

void tst_IPlotter::dataSetterStoresSharedAndNotifies()
{
    CountingChart chart;
    IPlotter p;
    p.setChartArea(&chart);
    const QList<double> values{1, 2, 3};
    QSignalSpy spy(&p, &IPlotter::dataChanged);
    const int acceptedBefore = chart.accepted;
    p.setData(values);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(p.data(), values);
    QCOMPARE(p.data().constData(), values.constData()); // shared, not copied
    QCOMPARE(chart.accepted - acceptedBefore, 1);
}

void tst_IPlotter::equalDataEmitsNothing_data()
{
    QTest::addColumn<QList<double>>("next");
    QTest::addColumn<int>("emits");
    QTest::newRow("an equal list element for element emits nothing") << QList<double>{1, 2, 3} << 0;
    QTest::newRow("a list of another length emits") << QList<double>{1, 2} << 1;
    QTest::newRow("a list with one value changed emits") << QList<double>{1, 2, 4} << 1;
    QTest::newRow("an empty list emits") << QList<double>{} << 1;
}

void tst_IPlotter::equalDataEmitsNothing()
{
    QFETCH(QList<double>, next);
    QFETCH(int, emits);

    IChartArea chart;
    IPlotter p;
    p.setChartArea(&chart);
    p.setData({1, 2, 3});
    QSignalSpy spy(&p, &IPlotter::dataChanged);
    p.setData(next);
    QCOMPARE(spy.count(), emits);
    QCOMPARE(p.data(), emits ? next : QList<double>({1, 2, 3}));
}

void tst_IPlotter::baseHooksReportWhatIsMissing()
{
    PlotterProbe p;
    p.programLabel = QStringLiteral("bars");
    QTest::ignoreMessage(QtWarningMsg, "None Attribute define for bars shader program");
    QVERIFY(p.declareArributeArray().isEmpty());
    QTest::ignoreMessage(QtInfoMsg, "None Attribute define for bars shader program");
    p.declareUniforms();
    QTest::ignoreMessage(QtCriticalMsg, "Fetch attribute data for 3 not implemented!");
    const SAttributePointer bytes = p._fetch_attribute_data(3);
    QCOMPARE(bytes.data, nullptr);
    QCOMPARE(bytes.size, 0);
    QCOMPARE(p.__update_vertex(), false);
    QCOMPARE(p.__update_index(), false);
    QCOMPARE(p.max_in(QRectF(0, 0, 1, 1)), 0.0);
    QCOMPARE(p.min_in(QRectF(0, 0, 1, 1)), 0.0);
    QVERIFY(p.area_at(QPointF(0, 0)).isNull());
    const SInfoPoint info = p.mouse_hovering(QPointF(0, 0));
    QCOMPARE(info.valid, false);
    QCOMPARE(info.index, -1);
    QVERIFY(info.area.isNull());
    QList<SRenderLayerDefinition> layers(2);
    p._fetch_render_layers(layers, QRectF(0, 0, 1, 1));
    QCOMPARE(layers.size(), 2); // the base keeps the previous content
}

QTEST_MAIN(tst_IPlotter)
#include "tst_iplotter.moc"
