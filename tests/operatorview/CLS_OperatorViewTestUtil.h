#pragma once
// Helpers of the status filter, channel count and view state tests: a small resource tree and a
// custom tree with known states, the rows a person sees as one string, a status batch, and the
// counts made the slow way, by walking the nodes. GUI thread only.

#include "CLS_TestDeviceTree.h"

#include <QMap>
#include <QPair>
#include <QVariant>

namespace CLS_OperatorViewTestUtil {

using namespace CLS_DevTreeTestUtil;

// resource_root_id: h1 (H1): c1 (C1, on), c2 (C2, off), a1 (A1, alarm input)
//                   h2 (H2): c3 (C3, off)
//                   h3 (H3): c5 (C5, on), c6 (C6, status 2)
inline QMap<QString, CLS_CustomTreeNode> ResourceNodes()
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode("resource_root_id", QString(), 2, "resource_root_id"));
    Add(qmapNodes, MakeNode("h1", "resource_root_id", 3, "H1", 1, 1));
    Add(qmapNodes, MakeNode("c1", "h1", 4, "C1", 1, 1));
    Add(qmapNodes, MakeNode("c2", "h1", 4, "C2", 2, 0));
    Add(qmapNodes, MakeNode("a1", "h1", 5, "A1", 1001, 1));
    Add(qmapNodes, MakeNode("h2", "resource_root_id", 3, "H2", 2, 1));
    Add(qmapNodes, MakeNode("c3", "h2", 4, "C3", 1, 0));
    Add(qmapNodes, MakeNode("h3", "resource_root_id", 3, "H3", 3, 1));
    Add(qmapNodes, MakeNode("c5", "h3", 4, "C5", 1, 1));
    Add(qmapNodes, MakeNode("c6", "h3", 4, "C6", 2, 2));
    return qmapNodes;
}

inline bool BuildResource(CLS_TestDeviceTree& _tree)
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes = ResourceNodes();
    return _tree.Init(qmapNodes, "All") == 0 &&
           Rows(_tree) == "resource_root_id(h1(c1,c2,a1),h2(c3),h3(c5,c6))";
}

// custom_root_id: g1: c1 (D1, on), g2: g3: c4 (D4, off), c3 (D3, on), g4 (empty)
inline QMap<QString, CLS_CustomTreeNode> CustomNodes()
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode("g1", "custom_root_id", 2, QString(), 1));
    Add(qmapNodes, MakeNode("c1", "g1", 4, "D1", 1, 1));
    Add(qmapNodes, MakeNode("g2", "custom_root_id", 2, "G2", 2));
    Add(qmapNodes, MakeNode("g3", "g2", 2, QString(), 1));
    Add(qmapNodes, MakeNode("c4", "g3", 4, "D4", 1, 0));
    Add(qmapNodes, MakeNode("c3", "custom_root_id", 4, "D3", 3, 1));
    Add(qmapNodes, MakeNode("g4", "custom_root_id", 2, "G4", 4));
    return qmapNodes;
}

inline bool BuildCustom(CLS_TestDeviceTree& _tree)
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes = CustomNodes();
    return _tree.Init(qmapNodes, "Root") == 0 && Rows(_tree) == "custom_root_id(g1(c1),g2(g3(c4)),c3,g4)";
}

// The rows whose own hidden flag is off, as "root(a(a1),b)": below a hidden row nothing is listed.
inline QString ShownOf(const QTreeWidgetItem* _pRow)
{
    QStringList qlstChildren;
    for (int i = 0; i < _pRow->childCount(); ++i) {
        if (!_pRow->child(i)->isHidden())
            qlstChildren << ShownOf(_pRow->child(i));
    }
    const QString qstrId = CLS_TreeSnapshot::NodeId(_pRow);
    return qlstChildren.isEmpty() ? qstrId : qstrId + "(" + qlstChildren.join(",") + ")";
}

inline QString Shown(CLS_WgtDeviceTree& _tree)
{
    CLS_WgtBaseTreeWidget* pBase = BaseOf(_tree);
    QStringList qlstTop;
    for (int i = 0; pBase != nullptr && i < pBase->topLevelItemCount(); ++i) {
        if (!pBase->topLevelItem(i)->isHidden())
            qlstTop << ShownOf(pBase->topLevelItem(i));
    }
    return qlstTop.join(",");
}

// Ids of every row whose own hidden flag is on, sorted.
inline QStringList HiddenIds(CLS_WgtDeviceTree& _tree)
{
    QStringList qlstIds;
    CLS_WgtBaseTreeWidget* pBase = BaseOf(_tree);
    QMap<QString, CLS_TreeItem> qmapItems;
    if (pBase != nullptr)
        pBase->GetAllItems(qmapItems);
    for (auto it = qmapItems.cbegin(); it != qmapItems.cend(); ++it) {
        QTreeWidgetItem* pRow = pBase->GetNodeById(it.key());
        if (pRow != nullptr && pRow->isHidden())
            qlstIds << it.key();
    }
    qlstIds.sort();
    return qlstIds;
}

// A status batch as the status thread sends it: device id -> (image channel, status).
inline QVariant Batch(const QMap<QString, int>& _qmapStatus)
{
    QMap<QString, QPair<bool, int>> qmapBatch;
    for (auto it = _qmapStatus.cbegin(); it != _qmapStatus.cend(); ++it)
        qmapBatch.insert(it.key(), qMakePair(false, it.value()));
    return QVariant::fromValue(qmapBatch);
}

// The counts of every node, the slow way: each channel node that has a row adds itself to every
// node above it, following the nodes' parent ids (an empty parent id means the root).
inline QMap<QString, QPair<int, int>> CountsByWalk(CLS_TestDeviceTree& _tree)
{
    QMap<QString, QPair<int, int>> qmapCounts;
    for (auto it = _tree.m_qmapNodes.cbegin(); it != _tree.m_qmapNodes.cend(); ++it) {
        if (it.value().m_iType != 4 || NodeOf(_tree, it.key()) == nullptr)
            continue;
        const bool blOnline = it.value().m_iStatus == 1;
        QString qstrUp = it.value().m_qstrTreeParentId;
        if (qstrUp.isEmpty())
            qstrUp = _tree.m_qstrRootId;
        for (int iGuard = 0; !qstrUp.isEmpty() && iGuard < 64; ++iGuard) {
            QPair<int, int>& pairCounts = qmapCounts[qstrUp];
            pairCounts.first += blOnline ? 1 : 0;
            pairCounts.second += 1;
            if (qstrUp == _tree.m_qstrRootId)
                break;
            const QString qstrNext = _tree.m_qmapNodes.value(qstrUp).m_qstrTreeParentId;
            qstrUp = qstrNext.isEmpty() ? _tree.m_qstrRootId : qstrNext;
        }
    }
    return qmapCounts;
}

// The tree's answers for every node that has a row, as "id:online/total", rows without channels
// below them left out; the same for the walk.
inline QString CountsText(CLS_TestDeviceTree& _tree)
{
    QStringList qlstOut;
    for (auto it = _tree.m_qmapNodes.cbegin(); it != _tree.m_qmapNodes.cend(); ++it) {
        if (NodeOf(_tree, it.key()) == nullptr)
            continue;
        int iOnline = -1;
        int iTotal = -1;
        if (_tree.GetChannelCounts(it.key(), iOnline, iTotal) != 0)
            qlstOut << it.key() + ":error";
        else if (iTotal != 0 || iOnline != 0)
            qlstOut << QString("%1:%2/%3").arg(it.key()).arg(iOnline).arg(iTotal);
    }
    return qlstOut.join(" ");
}

inline QString WalkText(CLS_TestDeviceTree& _tree)
{
    const QMap<QString, QPair<int, int>> qmapCounts = CountsByWalk(_tree);
    QStringList qlstOut;
    for (auto it = qmapCounts.cbegin(); it != qmapCounts.cend(); ++it)
        qlstOut << QString("%1:%2/%3").arg(it.key()).arg(it.value().first).arg(it.value().second);
    return qlstOut.join(" ");
}

} // namespace CLS_OperatorViewTestUtil
