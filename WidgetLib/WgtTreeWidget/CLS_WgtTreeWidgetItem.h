#pragma once
// One row of CLS_WgtBaseTreeWidget. It notices real changes of its check state and reports them
// through SignCheckStateChanged; propagation up and down is left to Qt::ItemIsAutoTristate.
// GUI thread only: the tree relies on the signal reaching it directly.

#include <QObject>
#include <QTreeWidgetItem>
#include <QVariant>

class CLS_WgtTreeWidgetItem : public QObject, public QTreeWidgetItem
{
    Q_OBJECT

public:
    explicit CLS_WgtTreeWidgetItem(int _iType);
    ~CLS_WgtTreeWidgetItem() override;

    // Column 0 / Qt::CheckStateRole: the first state a row ever gets is silent; later, a signal goes
    // out only when the state really changed, after Qt has set the children (so theirs come first).
    void setData(int _iColumn, int _iRole, const QVariant& _varValue) override;

signals:
    void SignCheckStateChanged(QTreeWidgetItem* _pItem, bool _blChecked);
};
