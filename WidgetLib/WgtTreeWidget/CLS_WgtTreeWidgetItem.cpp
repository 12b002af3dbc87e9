#include "CLS_WgtTreeWidgetItem.h"

#include "CLS_TreeAccessibility.h"
#include "CLS_TreeRowBatch.h"
#include "CLS_WgtBaseTreeWidget.h"

CLS_WgtTreeWidgetItem::CLS_WgtTreeWidgetItem(int _iType) : QObject(nullptr), QTreeWidgetItem(_iType) {}

CLS_WgtTreeWidgetItem::~CLS_WgtTreeWidgetItem() = default;

void CLS_WgtTreeWidgetItem::setData(int _iColumn, int _iRole, const QVariant& _varValue)
{
    if (_iColumn != 0 || _iRole != Qt::CheckStateRole) {
        QTreeWidgetItem::setData(_iColumn, _iRole, _varValue);
        return;
    }

    const QVariant varOld = data(0, Qt::CheckStateRole);
    if (!varOld.isValid()) {
        // No state yet: the very first state is set silently.
        QTreeWidgetItem::setData(_iColumn, _iRole, _varValue);
        return;
    }

    // A row with children passes the state down to all of them inside the call below, by a click
    // as well as by the tree's own call: one batch for the whole cascade.
    // No row moves or changes its height: the view keeps its layout.
    CLS_TreeRowBatch batch(childCount() > 0 ? qobject_cast<CLS_WgtBaseTreeWidget*>(treeWidget()) : nullptr,
                           false);

    // For a row with children this is the state Qt derives from them.
    const bool blSame = (QVariant(varOld.toInt()) == _varValue);
    QTreeWidgetItem::setData(_iColumn, _iRole, _varValue); // children are set (and signal) in here
    if (blSame)
        return;

    // Read again: Qt may derive something other than what was asked for.
    const int iState = data(0, Qt::CheckStateRole).toInt();
    emit SignCheckStateChanged(this, iState != Qt::Unchecked);
}

QVariant CLS_WgtTreeWidgetItem::data(int _iColumn, int _iRole) const
{
    QVariant varValue = QTreeWidgetItem::data(_iColumn, _iRole);
    if ((_iRole == Qt::AccessibleTextRole || _iRole == Qt::AccessibleDescriptionRole) && !varValue.isValid())
        varValue = CLS_TreeAccessibility::RowData(this, _iColumn, _iRole);
    return varValue;
}
