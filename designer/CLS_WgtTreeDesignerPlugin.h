#pragma once
// One widget of this library in Qt Designer's widget box: its class, header, group
// ("WgtTreeWidget"), icon, tool tip and default size, and how Designer (and QUiLoader) make it.
// CLS_WgtTreeDesignerCollection holds one for CLS_WgtDeviceTree and one for CLS_WgtTreeWidget.

#include <QObject>
#include <QSize>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

#include <functional>

class CLS_WgtTreeDesignerPlugin : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    struct STRCT_Widget
    {
        QString m_qstrClass;      // class name, as uic writes it
        QString m_qstrInclude;    // header a generated form includes
        QString m_qstrObjectName; // object name of a new widget on a form
        QString m_qstrToolTip;    // the widget box's tool tip
        QString m_qstrWhatsThis;  // the widget box's longer help
        QSize m_size;             // size of a new widget on a form
        bool m_blDeviceIcon = false;
        std::function<QWidget*(QWidget*)> m_fnCreate;
    };

    explicit CLS_WgtTreeDesignerPlugin(STRCT_Widget _stWidget, QObject* _pParent = nullptr);

    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override;
    QWidget* createWidget(QWidget* _pParent) override;
    bool isInitialized() const override;
    void initialize(QDesignerFormEditorInterface* _pCore) override;
    QString domXml() const override;

private:
    STRCT_Widget m_stWidget;
    bool m_blInitialized = false;
};
