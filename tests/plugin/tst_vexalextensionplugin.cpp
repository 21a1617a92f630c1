// SPDX-FileCopyrightText: 2026 The Vexal developers
// SPDX-License-Identifier: MIT
// Tests of the plugin entry: metadata, type registration and resources.
#include <vexal/ichartarea.h>
#include <vexal/iplotter.h>
#include <vexal/sprogramshaderdefinition.h>

#include <QtCore/QFile>
#include <QtCore/QLibraryInfo>
#include <QtCore/QPluginLoader>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlExtensionPlugin>
#include <QtTest/QTest>

#include <memory>

namespace {

const QString pluginPath = QStringLiteral(VEXAL_PLUGIN_PATH);

// An engine that knows only Qt's own modules: VexalPlugin is reachable only
// through what the test registered itself.
std::unique_ptr<QQmlEngine> engineWithoutBuildTree()
{
    auto engine = std::make_unique<QQmlEngine>();
    engine->setImportPathList({QLibraryInfo::path(QLibraryInfo::QmlImportsPath)});
    return engine;
}

} // namespace

class tst_VexalExtensionPlugin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void metadataNamesThePlugin();
    void oneInstancePerProcess();
    void registersUnderTheModuleNameWhateverTheUri_data();
    void registersUnderTheModuleNameWhateverTheUri();
    void registersTheProgramDefinitionsInOrder();
    void resourcesAreRegisteredAtLoad_data();
    void resourcesAreRegisteredAtLoad();

private:
    QPluginLoader m_loader{pluginPath};
    QQmlExtensionPlugin *m_plugin = nullptr;
};

void tst_VexalExtensionPlugin::initTestCase()
{
    QVERIFY2(m_loader.load(), qPrintable(m_loader.errorString()));
    m_plugin = qobject_cast<QQmlExtensionPlugin *>(m_loader.instance());
    QVERIFY(m_plugin);
    m_plugin->registerTypes("some.other.uri");
}

void tst_VexalExtensionPlugin::metadataNamesThePlugin()
{
    const QJsonObject meta = m_loader.metaData();
    QCOMPARE(meta.value(QStringLiteral("IID")).toString(), QStringLiteral("org.vexal.VexalExtensionPlugin/1.0"));
    QCOMPARE(meta.value(QStringLiteral("className")).toString(), QStringLiteral("VexalExtensionPlugin"));
    QCOMPARE(m_plugin->metaObject()->className(), "VexalExtensionPlugin");
}

void tst_VexalExtensionPlugin::oneInstancePerProcess()
{
    QPluginLoader second(pluginPath);
    QCOMPARE(second.instance(), m_loader.instance());
}

void tst_VexalExtensionPlugin::registersUnderTheModuleNameWhateverTheUri_data()
{
    QTest::addColumn<QByteArray>("typeName");
    QTest::addColumn<QByteArray>("className");
    QTest::newRow("ChartArea creates a zoomable chart") << QByteArray("ChartArea") << QByteArray("ChartArea");
    QTest::newRow("IChartArea creates a chart item") << QByteArray("IChartArea") << QByteArray("IChartArea");
}

void tst_VexalExtensionPlugin::registersUnderTheModuleNameWhateverTheUri()
{
    QFETCH(QByteArray, typeName);
    QFETCH(QByteArray, className);

    auto engine = engineWithoutBuildTree();
    QQmlComponent component(engine.get());
    component.setData("import VexalPlugin 1.0\n" + typeName + " {}\n", QUrl());
    std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString()));
    QVERIFY(object->inherits(className));
}

void tst_VexalExtensionPlugin::registersTheProgramDefinitionsInOrder()
{
    QStringList names;
    for (const SProgramShaderDefinition *definition : IPlotter::programDefinitions())
        names << definition->name();
    QCOMPARE(names, (QStringList{"area", "hresbar", "area_gradient"}));
}

void tst_VexalExtensionPlugin::resourcesAreRegisteredAtLoad_data()
{
    QTest::addColumn<QString>("path");
    for (const char *path : {":/qml/VexalQML.qml", ":/qml/LinearXAxis.qml", ":/qml/LinearYAxis.qml",
                             ":/qml/NavigatorBar.qml", ":/qml/ChartTooltip.qml", ":/qml/utils.js",
                             ":/qml/Legend/ColoredIcon.qml", ":/qml/Legend/LegendElement.qml",
                             ":/qml/Legend/HorizontalLegend.qml", ":/qml/Legend/VerticalLegend.qml",
                             ":/qml/Legend/ViewLegend.qml", ":/qml/Legend/LegendDropArea.qml",
                             ":/resources/warning.svg"})
        QTest::newRow(path) << QString::fromLatin1(path);
}

void tst_VexalExtensionPlugin::resourcesAreRegisteredAtLoad()
{
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.size() > 0);
}

QTEST_MAIN(tst_VexalExtensionPlugin)
#include "tst_vexalextensionplugin.moc"
