#pragma once
// The Qt Designer plugin of this library (libWgtTreeWidgetDesigner.so for Qt 5,
// libWgtTreeWidgetQt6Designer.so for Qt 6): CLS_WgtDeviceTree and CLS_WgtTreeWidget in the widget
// box's group "WgtTreeWidget". Designer, QUiLoader and QPluginLoader load it from a folder of
// designer plugins; a form compiled by uic includes the widgets' headers and makes them with a
// parent only, as the plugin does.

#include <QList>
#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

class CLS_WgtTreeDesignerCollection : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

public:
    explicit CLS_WgtTreeDesignerCollection(QObject* _pParent = nullptr);

    QList<QDesignerCustomWidgetInterface*> customWidgets() const override;

private:
    QList<QDesignerCustomWidgetInterface*> m_qlstWidgets; // children of this object
};
