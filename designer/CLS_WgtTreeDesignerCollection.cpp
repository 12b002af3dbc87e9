#include "CLS_WgtTreeDesignerCollection.h"

#include "CLS_WgtDeviceTree.h"
#include "CLS_WgtTreeDesignerPlugin.h"
#include "CLS_WgtTreeWidget.h"

CLS_WgtTreeDesignerCollection::CLS_WgtTreeDesignerCollection(QObject* _pParent) : QObject(_pParent)
{
    CLS_WgtTreeDesignerPlugin::STRCT_Widget stDevices;
    stDevices.m_qstrClass = QStringLiteral("CLS_WgtDeviceTree");
    stDevices.m_qstrInclude = QStringLiteral("CLS_WgtDeviceTree.h");
    stDevices.m_qstrObjectName = QStringLiteral("wgtDeviceTree");
    stDevices.m_qstrToolTip = tr("Device tree: hosts, channels and groups with their states");
    stDevices.m_qstrWhatsThis =
        tr("A tree of an installation's resources (a resource tree by default) with a search line, "
           "check boxes, tool buttons per row and channel states kept current. The page fills it with "
           "Init and reacts to its signals.");
    stDevices.m_size = QSize(300, 500);
    stDevices.m_blDeviceIcon = true;
    stDevices.m_fnCreate = [](QWidget* _pParent) { return new CLS_WgtDeviceTree(_pParent); };
    m_qlstWidgets.append(new CLS_WgtTreeDesignerPlugin(stDevices, this));

    CLS_WgtTreeDesignerPlugin::STRCT_Widget stPanel;
    stPanel.m_qstrClass = QStringLiteral("CLS_WgtTreeWidget");
    stPanel.m_qstrInclude = QStringLiteral("CLS_WgtTreeWidget.h");
    stPanel.m_qstrObjectName = QStringLiteral("wgtTreeWidget");
    stPanel.m_qstrToolTip = tr("Tree panel: a tree of records with a search line");
    stPanel.m_qstrWhatsThis = tr("The panel that the device tree is built on: rows made from records, "
                                 "a search line, check boxes and tool buttons per row.");
    stPanel.m_size = QSize(300, 500);
    stPanel.m_fnCreate = [](QWidget* _pParent) { return new CLS_WgtTreeWidget(_pParent); };
    m_qlstWidgets.append(new CLS_WgtTreeDesignerPlugin(stPanel, this));
}

QList<QDesignerCustomWidgetInterface*> CLS_WgtTreeDesignerCollection::customWidgets() const
{
    return m_qlstWidgets;
}
