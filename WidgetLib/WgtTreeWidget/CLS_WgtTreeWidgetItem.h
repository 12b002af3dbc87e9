#pragma once
// One row of CLS_WgtBaseTreeWidget. It notices real changes of its check state and reports them
// through SignCheckStateChanged; propagation up and down is left to Qt::ItemIsAutoTristate.
// GUI thread only: the tree relies on the signal reaching it directly.

#include <QObject>
#include <QTreeWidgetItem>
#include <QVariant>

/// One row of CLS_WgtBaseTreeWidget: a QTreeWidgetItem that is also a QObject, so that it can report
/// real changes of its check state. Made by the tree (CLS_WgtBaseTreeWidget::CreateNode) and owned
/// like any QTreeWidgetItem: by its parent row or the tree widget, else by whoever holds it. The
/// QObject side has no parent. GUI thread only.
class CLS_WgtTreeWidgetItem : public QObject, public QTreeWidgetItem
{
    Q_OBJECT

public:
    /// A row of QTreeWidgetItem type _iType, without data, parent or QObject parent.
    explicit CLS_WgtTreeWidgetItem(int _iType);
    /// Deletes the row's children, as every QTreeWidgetItem does.
    ~CLS_WgtTreeWidgetItem() override;

    /// Column 0 / Qt::CheckStateRole: the first state a row ever gets is silent; later,
    /// SignCheckStateChanged goes out only when the state really changed, after Qt has set the
    /// children (so theirs come first). A row with children does this inside a CLS_TreeRowBatch of
    /// its tree that keeps the layout. Every other column and role goes straight to QTreeWidgetItem.
    void setData(int _iColumn, int _iRole, const QVariant& _varValue) override;
    /// As QTreeWidgetItem::data; a reader's roles (Qt::AccessibleTextRole and
    /// Qt::AccessibleDescriptionRole) that the row has no value of are answered by the tree's
    /// CLS_TreeAccessibility, in words made when asked.
    QVariant data(int _iColumn, int _iRole) const override;

signals:
    /// The check state of _pItem (this row) changed; _blChecked is true for checked and partially
    /// checked alike. Emitted from inside setData on the GUI thread; the tree connects directly.
    void SignCheckStateChanged(QTreeWidgetItem* _pItem, bool _blChecked);
};
