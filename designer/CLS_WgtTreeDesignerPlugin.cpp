#include "CLS_WgtTreeDesignerPlugin.h"

#include "CLS_DesignerTreeIcon.h"

#include <QWidget>

CLS_WgtTreeDesignerPlugin::CLS_WgtTreeDesignerPlugin(STRCT_Widget _stWidget, QObject* _pParent)
    : QObject(_pParent), m_stWidget(std::move(_stWidget))
{}

QString CLS_WgtTreeDesignerPlugin::name() const
{
    return m_stWidget.m_qstrClass;
}

QString CLS_WgtTreeDesignerPlugin::group() const
{
    return QStringLiteral("WgtTreeWidget");
}

QString CLS_WgtTreeDesignerPlugin::toolTip() const
{
    return m_stWidget.m_qstrToolTip;
}

QString CLS_WgtTreeDesignerPlugin::whatsThis() const
{
    return m_stWidget.m_qstrWhatsThis;
}

QString CLS_WgtTreeDesignerPlugin::includeFile() const
{
    return m_stWidget.m_qstrInclude;
}

QIcon CLS_WgtTreeDesignerPlugin::icon() const
{
    return CLS_DesignerTreeIcon::Make(m_stWidget.m_blDeviceIcon);
}

bool CLS_WgtTreeDesignerPlugin::isContainer() const
{
    return false;
}

QWidget* CLS_WgtTreeDesignerPlugin::createWidget(QWidget* _pParent)
{
    return m_stWidget.m_fnCreate ? m_stWidget.m_fnCreate(_pParent) : nullptr;
}

bool CLS_WgtTreeDesignerPlugin::isInitialized() const
{
    return m_blInitialized;
}

void CLS_WgtTreeDesignerPlugin::initialize(QDesignerFormEditorInterface* _pCore)
{
    Q_UNUSED(_pCore)
    m_blInitialized = true;
}

QString CLS_WgtTreeDesignerPlugin::domXml() const
{
    return QStringLiteral("<ui language=\"c++\">\n"
                          " <widget class=\"%1\" name=\"%2\">\n"
                          "  <property name=\"geometry\">\n"
                          "   <rect><x>0</x><y>0</y><width>%3</width><height>%4</height></rect>\n"
                          "  </property>\n"
                          " </widget>\n"
                          "</ui>\n")
        .arg(m_stWidget.m_qstrClass, m_stWidget.m_qstrObjectName)
        .arg(m_stWidget.m_size.width())
        .arg(m_stWidget.m_size.height());
}
