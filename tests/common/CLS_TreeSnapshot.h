#pragma once
// Test helper: a tree as one short string of record ids, "root(a(a1,a2),b)", so that one
// comparison checks a whole structure and a failure prints something readable.

#include <QString>
#include <QStringList>
#include <QTreeWidget>
#include <QTreeWidgetItem>

namespace CLS_TreeSnapshot {

inline QString NodeId(const QTreeWidgetItem* _pNode)
{
    return _pNode->data(0, Qt::UserRole).toString();
}

inline QString Snapshot(const QTreeWidgetItem* _pNode)
{
    QString qstrText = NodeId(_pNode);
    if (_pNode->childCount() == 0)
        return qstrText;
    QStringList qlstChildren;
    for (int i = 0; i < _pNode->childCount(); ++i)
        qlstChildren << Snapshot(_pNode->child(i));
    return qstrText + "(" + qlstChildren.join(",") + ")";
}

inline QString Snapshot(const QTreeWidget& _tree)
{
    QStringList qlstTop;
    for (int i = 0; i < _tree.topLevelItemCount(); ++i)
        qlstTop << Snapshot(_tree.topLevelItem(i));
    return qlstTop.join(",");
}

} // namespace CLS_TreeSnapshot
