// The Qt Designer plugin of the tree widgets: what the widget box shows of each widget, the widgets
// its collection makes, and a form holding both trees loaded through QUiLoader.

#include "CLS_TestPaths.h"
#include "CLS_WgtDeviceTree.h"
#include "CLS_WgtTreeWidget.h"

#include <QBuffer>
#include <QPluginLoader>
#include <QUiLoader>
#include <QXmlStreamReader>
#include <QtTest>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <memory>

namespace {

QString PluginDir()
{
    const QString qstrDir = qEnvironmentVariable("WGT_DESIGNER_PLUGIN_DIR");
    return qstrDir.isEmpty() ? CLS_TestPaths::QFromProgramDir(WGT_DESIGNER_DIR) : qstrDir;
}

QString PluginFile()
{
    return PluginDir() + QStringLiteral("/") + QStringLiteral(WGT_DESIGNER_PLUGIN_FILE);
}

// The class, object name, width and height of the widget in a plugin's domXml.
struct STRCT_Dom
{
    QString m_qstrClass;
    QString m_qstrName;
    int m_iWidth = 0;
    int m_iHeight = 0;
};

STRCT_Dom ReadDom(const QString& _qstrXml)
{
    STRCT_Dom stDom;
    QXmlStreamReader reader(_qstrXml);
    QString qstrElement;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            qstrElement = reader.name().toString();
            if (qstrElement == QLatin1String("widget") && stDom.m_qstrClass.isEmpty()) {
                stDom.m_qstrClass = reader.attributes().value(QLatin1String("class")).toString();
                stDom.m_qstrName = reader.attributes().value(QLatin1String("name")).toString();
            }
        } else if (reader.isCharacters() && !reader.isWhitespace()) {
            if (qstrElement == QLatin1String("width"))
                stDom.m_iWidth = reader.text().toString().toInt();
            else if (qstrElement == QLatin1String("height"))
                stDom.m_iHeight = reader.text().toString().toInt();
        }
    }
    return reader.hasError() ? STRCT_Dom() : stDom;
}

const char* const CONST_pForm = R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0">
 <class>TwoTrees</class>
 <widget class="QWidget" name="TwoTrees">
  <layout class="QHBoxLayout" name="layout">
   <item>
    <widget class="CLS_WgtDeviceTree" name="devices"/>
   </item>
   <item>
    <widget class="CLS_WgtTreeWidget" name="panel"/>
   </item>
  </layout>
 </widget>
</ui>
)";

} // namespace

class tst_DesignerPlugin : public QObject
{
    Q_OBJECT

private slots:
    void shouldNameThePluginFileAfterTheQtMajor();
    void shouldOfferBothTreesInTheWidgetBoxGroup();
    void shouldDescribeEachTreeWithASizedDefaultWidget();
    void shouldMakeWidgetsOfTheRightClasses();
    void shouldLoadAFormHoldingBothTreesThroughQUiLoader();
};

void tst_DesignerPlugin::shouldNameThePluginFileAfterTheQtMajor()
{
    const QString qstrExpected = QT_VERSION_MAJOR == 5 ? QStringLiteral("libWgtTreeWidgetDesigner.so")
                                                       : QStringLiteral("libWgtTreeWidgetQt6Designer.so");
    QCOMPARE(QStringLiteral(WGT_DESIGNER_PLUGIN_FILE), qstrExpected);
    QVERIFY2(QFileInfo::exists(PluginFile()), qPrintable(PluginFile()));
}

void tst_DesignerPlugin::shouldOfferBothTreesInTheWidgetBoxGroup()
{
    QPluginLoader loader(PluginFile());
    QVERIFY2(loader.load(), qPrintable(loader.errorString()));
    auto* pCollection = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(loader.instance());
    QVERIFY(pCollection != nullptr);
    QStringList qlstNames;
    for (QDesignerCustomWidgetInterface* pWidget : pCollection->customWidgets()) {
        qlstNames << pWidget->name();
        QCOMPARE(pWidget->group(), QStringLiteral("WgtTreeWidget"));
        QCOMPARE(pWidget->includeFile(), pWidget->name() + QStringLiteral(".h"));
        QVERIFY(!pWidget->toolTip().isEmpty());
        QVERIFY(!pWidget->whatsThis().isEmpty());
        QVERIFY(!pWidget->icon().isNull());
        QVERIFY(!pWidget->isContainer());
        QVERIFY(!pWidget->isInitialized());
        pWidget->initialize(nullptr);
        QVERIFY(pWidget->isInitialized());
    }
    QCOMPARE(qlstNames, QStringList({"CLS_WgtDeviceTree", "CLS_WgtTreeWidget"}));
}

void tst_DesignerPlugin::shouldDescribeEachTreeWithASizedDefaultWidget()
{
    QPluginLoader loader(PluginFile());
    auto* pCollection = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(loader.instance());
    QVERIFY(pCollection != nullptr);
    QStringList qlstObjectNames;
    for (QDesignerCustomWidgetInterface* pWidget : pCollection->customWidgets()) {
        const STRCT_Dom stDom = ReadDom(pWidget->domXml());
        QCOMPARE(stDom.m_qstrClass, pWidget->name());
        qlstObjectNames << stDom.m_qstrName;
        QCOMPARE(stDom.m_iWidth, 300);
        QCOMPARE(stDom.m_iHeight, 500);
    }
    QCOMPARE(qlstObjectNames, QStringList({"wgtDeviceTree", "wgtTreeWidget"}));
}

void tst_DesignerPlugin::shouldMakeWidgetsOfTheRightClasses()
{
    QPluginLoader loader(PluginFile());
    auto* pCollection = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(loader.instance());
    QVERIFY(pCollection != nullptr);
    QWidget form;
    const QList<QDesignerCustomWidgetInterface*> qlstWidgets = pCollection->customWidgets();
    QCOMPARE(qlstWidgets.size(), 2);
    QWidget* pDevices = qlstWidgets.at(0)->createWidget(&form);
    QWidget* pPanel = qlstWidgets.at(1)->createWidget(&form);
    QVERIFY(qobject_cast<CLS_WgtDeviceTree*>(pDevices) != nullptr);
    QVERIFY(qobject_cast<CLS_WgtTreeWidget*>(pPanel) != nullptr);
    QCOMPARE(pDevices->parentWidget(), &form);
    QCOMPARE(pPanel->parentWidget(), &form);
}

void tst_DesignerPlugin::shouldLoadAFormHoldingBothTreesThroughQUiLoader()
{
    QUiLoader loader;
    loader.clearPluginPaths();
    loader.addPluginPath(PluginDir());
    const QStringList qlstAvailable = loader.availableWidgets();
    QVERIFY(qlstAvailable.contains("CLS_WgtDeviceTree"));
    QVERIFY(qlstAvailable.contains("CLS_WgtTreeWidget"));

    QByteArray qbaForm(CONST_pForm);
    QBuffer buffer(&qbaForm);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    std::unique_ptr<QWidget> pForm(loader.load(&buffer));
    QVERIFY2(pForm != nullptr, qPrintable(loader.errorString()));
    auto* pDevices = pForm->findChild<CLS_WgtDeviceTree*>("devices");
    auto* pPanel = pForm->findChild<CLS_WgtTreeWidget*>("panel");
    QVERIFY(pDevices != nullptr);
    QVERIFY(pPanel != nullptr);
    QVERIFY(pDevices->findChild<CLS_WgtTreeWidget*>() != nullptr); // the device tree's own panel
}

QTEST_MAIN(tst_DesignerPlugin)
#include "tst_DesignerPlugin.moc"
