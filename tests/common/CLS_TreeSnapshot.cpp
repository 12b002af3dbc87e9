#include "CLS_TreeSnapshot.h"

namespace CLS_TreeSnapshot {

QString NodeId(const QTreeWidgetItem* _pNode)
{
    return _pNode->data(0, Qt::UserRole).toString();
}

QString Snapshot(const QTreeWidgetItem* _pNode)
{
    QString qstrText = NodeId(_pNode);
    if (_pNode->childCount() == 0)
        return qstrText;
    QStringList qlstChildren;
    for (int i = 0; i < _pNode->childCount(); ++i)
        qlstChildren << Snapshot(_pNode->child(i));
    return qstrText + "(" + qlstChildren.join(",") + ")";
}

QString Snapshot(const QTreeWidget& _tree)
{
    QStringList qlstTop;
    for (int i = 0; i < _tree.topLevelItemCount(); ++i)
        qlstTop << Snapshot(_tree.topLevelItem(i));
    return qlstTop.join(",");
}

} // namespace CLS_TreeSnapshot
