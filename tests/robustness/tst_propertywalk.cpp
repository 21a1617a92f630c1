// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Walks the meta-object of every QML type of the module: every writable
// property is written with an empty list, null, 0, -1, NaN, both infinities,
// a huge value and a value of the wrong type, then its first value again;
// every invokable method is called with null and empty arguments. Each object
// is tried alone and attached to a chart that draws after every write. Nothing
// may crash, report an OpenGL error or upset a sanitizer.
#include <vexal/chartarea.h>
#include <vexal/iplotter.h>
#include "quickscene.h"

#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlComponent>
#include <QtTest/QTest>

#include <cmath>
#include <limits>
#include <memory>

namespace {

// Every creatable QML type of the module.
const QStringList ModuleTypes{
    QStringLiteral("ChartArea"),         QStringLiteral("IChartArea"),       QStringLiteral("BarPlotter"),
    QStringLiteral("BarPlotterDx"),      QStringLiteral("AreaPlotter"),      QStringLiteral("BarDecorator"),
    QStringLiteral("IFIlterU64"),        QStringLiteral("DecimatorU64"),     QStringLiteral("RandomU64Data"),
    QStringLiteral("MovingAverageU64"),  QStringLiteral("FixedDecimatorU64"), QStringLiteral("Filter1D"),
    QStringLiteral("FixedDecimator2D"),  QStringLiteral("MinimalWidth2D"),   QStringLiteral("SCSVReader")};

// The values every property is written with, in this order.
QList<QVariant> hostileValues()
{
    const double inf = std::numeric_limits<double>::infinity();
    return {QVariant(QVariantList{}),
            QVariant::fromValue(nullptr),
            QVariant(0),
            QVariant(-1),
            QVariant(std::numeric_limits<double>::quiet_NaN()),
            QVariant(inf),
            QVariant(-inf),
            QVariant(1e300),
            QVariant(QStringLiteral("not a value of this type")),
            QVariant(QVariantList{1.0, -2.0, std::nan(""), 1e300})};
}

// The first meta-object above the module's own classes (QObject or a Qt Quick
// base): the properties and methods after its own are the module's.
const QMetaObject *qtBaseOf(const QMetaObject *meta)
{
    const auto isQt = [](const QMetaObject *m) {
        return qstrcmp(m->className(), "QObject") == 0 || QByteArray(m->className()).startsWith("QQuick");
    };
    while (meta->superClass() && !isQt(meta->superClass()))
        meta = meta->superClass();
    return meta->superClass() ? meta->superClass() : meta;
}

} // namespace

class tst_PropertyWalk : public QObject
{
    Q_OBJECT

private slots:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral("OPENGL ERROR"))); }
    void everyPropertyTakesHostileValues_data();
    void everyPropertyTakesHostileValues();
    void everyInvokableTakesNullArguments_data();
    void everyInvokableTakesNullArguments();

private:
    struct Subject
    {
        std::unique_ptr<VexalTest::QuickScene> scene; // a window with a drawing chart
        QObject *object = nullptr;                     // the object under test, owned by the scene
    };
    static Subject makeSubject(const QString &type, bool attached);
    static void addRows();
    static void settle(Subject &subject);
};

void tst_PropertyWalk::addRows()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("attached");
    for (const QString &type : ModuleTypes) {
        QTest::addRow("%s alone", qPrintable(type)) << type << false;
        QTest::addRow("%s on a drawing chart", qPrintable(type)) << type << true;
    }
}

tst_PropertyWalk::Subject tst_PropertyWalk::makeSubject(const QString &type, bool attached)
{
    // A drawing chart with bars and a decimator, and the object under test;
    // attached, it joins the chart (plotters, decorators, decimators) or feeds
    // the bars (other filters); a chart under test shows the bars itself.
    const QByteArray attach = attached ? R"(
        Component.onCompleted: {
            if (subject.chartArea !== undefined) subject.chartArea = chart
            if (subject.addPlotter !== undefined && subject.plotters === undefined) subject.addPlotter(bars)
            if (subject.plotter !== undefined) subject.plotter = [bars]
        })" : "";
    const QByteArray qml = "import QtQuick\nimport VexalPlugin 1.0\nItem {\n"
                           "    ChartArea { id: chart; anchors.fill: parent; updateIntervalMs: 0 }\n"
                           "    BarPlotter { id: bars; chartArea: chart; data: [1, 2, 3, 4] }\n"
                           "    " + type.toLatin1() + " { id: subject; objectName: \"subject\" }\n"
                           + attach + "\n}\n";
    Subject subject;
    subject.scene = std::make_unique<VexalTest::QuickScene>(qml);
    if (subject.scene->isReady())
        subject.object = subject.scene->root()->findChild<QObject *>(QStringLiteral("subject"));
    return subject;
}

void tst_PropertyWalk::settle(Subject &subject)
{
    QCoreApplication::processEvents();
    // A frame with every change, also on objects that are not attached.
    subject.scene->grab();
}

void tst_PropertyWalk::everyPropertyTakesHostileValues_data()
{
    addRows();
}

void tst_PropertyWalk::everyPropertyTakesHostileValues()
{
    QFETCH(QString, type);
    QFETCH(bool, attached);
    Subject subject = makeSubject(type, attached);
    QVERIFY(subject.object);
    const QMetaObject *meta = subject.object->metaObject();
    int written = 0;
    for (int i = qtBaseOf(meta)->propertyCount(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        if (!property.isWritable())
            continue;
        const QVariant original = property.read(subject.object);
        for (const QVariant &value : hostileValues()) {
            property.write(subject.object, value);
            settle(subject);
        }
        property.write(subject.object, original);
        settle(subject);
        ++written;
    }
    QVERIFY2(written > 0, "the type has writable properties of its own");
    QVERIFY(!subject.scene->grab().isNull());
}

void tst_PropertyWalk::everyInvokableTakesNullArguments_data()
{
    addRows();
}

void tst_PropertyWalk::everyInvokableTakesNullArguments()
{
    QFETCH(QString, type);
    QFETCH(bool, attached);
    Subject subject = makeSubject(type, attached);
    QVERIFY(subject.object);
    const QPointer<QObject> guard = subject.object;
    const QMetaObject *meta = subject.object->metaObject();
    for (int i = qtBaseOf(meta)->methodCount(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.methodType() != QMetaMethod::Method || method.access() != QMetaMethod::Public)
            continue;
        // Default-constructed arguments: null pointers, empty lists and
        // strings, zeros.
        QList<QMetaType> types;
        QList<void *> values;
        for (int p = 0; p < method.parameterCount(); ++p) {
            types.append(method.parameterMetaType(p));
            values.append(types.last().create());
        }
        QList<QGenericArgument> arguments(10);
        for (int p = 0; p < values.size(); ++p)
            arguments[p] = QGenericArgument(types[p].name(), values[p]);
        // Return values are dropped; the call itself is under test.
        method.invoke(subject.object, Qt::DirectConnection, arguments[0], arguments[1], arguments[2],
                      arguments[3], arguments[4], arguments[5], arguments[6], arguments[7], arguments[8],
                      arguments[9]);
        for (int p = 0; p < values.size(); ++p)
            types[p].destroy(values[p]);
        settle(subject);
    }
    // The calls neither destroyed the object nor stopped the window drawing.
    QVERIFY(guard);
    QVERIFY(!subject.scene->grab().isNull());
}

VEXAL_GL_TEST_MAIN(tst_PropertyWalk)
#include "tst_propertywalk.moc"
