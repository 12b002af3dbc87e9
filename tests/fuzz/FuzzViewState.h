#pragma once
// Decoder of the view-state fuzz target, shared with the corpus replay: any bytes go to
// CLS_WgtDeviceTree::RestoreViewState of a kept custom tree. Whatever the bytes, the call must give
// what the codec's own reading gives, leave the tree untouched when it refuses, and otherwise leave
// exactly the readable ids of the state expanded and its row current.

#include "CLS_DeviceTreeViewState.h"
#include "FuzzDecoders.h"

#include <QSet>
#include <QStringList>

namespace WgtFuzz {

struct STRCT_ViewStateRun
{
    int m_iResult = 0;  // RestoreViewState
    int m_iDecoded = 0; // CLS_DeviceTreeViewState::Decode of the same bytes
    QStringList m_qlstProblems;
};

// custom_root_id: g0 .. g3, each with channels g<i>c0 .. g<i>c2
inline QMap<QString, CLS_CustomTreeNode> ViewStateNodes()
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    for (int i = 0; i < 4; ++i) {
        CLS_CustomTreeNode group;
        group.m_qstrTreeId = QString("g%1").arg(i);
        group.m_qstrTreeParentId = "custom_root_id";
        group.m_iType = 2;
        group.m_iSortNo = i;
        qmapNodes.insert(group.m_qstrTreeId, group);
        for (int j = 0; j < 3; ++j) {
            CLS_CustomTreeNode channel;
            channel.m_qstrTreeId = QString("g%1c%2").arg(i).arg(j);
            channel.m_qstrTreeParentId = group.m_qstrTreeId;
            channel.m_qstrDevId = "D" + channel.m_qstrTreeId;
            channel.m_iType = 4;
            channel.m_iSortNo = j;
            qmapNodes.insert(channel.m_qstrTreeId, channel);
        }
    }
    return qmapNodes;
}

inline CLS_FuzzDeviceTree* ViewStateTree()
{
    static CLS_FuzzDeviceTree* s_pTree = nullptr;
    if (s_pTree == nullptr || !KeptTrees().contains(s_pTree)) {
        s_pTree = new CLS_FuzzDeviceTree(DEV_TREE_CUSTOM); // owned by KeptTrees
        KeptTrees().append(s_pTree);
        QMap<QString, CLS_CustomTreeNode> qmapNodes = ViewStateNodes();
        s_pTree->Init(qmapNodes, "Root");
    }
    return s_pTree;
}

// Expanded rows that have children, sorted, then the current row: "g1,custom_root_id|g1c0".
inline QString ViewOf(CLS_WgtBaseTreeWidget* _pTree, QSet<QString>* _pExpanded = nullptr)
{
    QStringList qlstExpanded;
    QMap<QString, CLS_TreeItem> qmapItems;
    _pTree->GetAllItems(qmapItems);
    for (auto it = qmapItems.cbegin(); it != qmapItems.cend(); ++it) {
        QTreeWidgetItem* pRow = _pTree->GetNodeById(it.key());
        if (pRow != nullptr && pRow->childCount() > 0 && pRow->isExpanded())
            qlstExpanded << it.key();
    }
    qlstExpanded.sort();
    if (_pExpanded != nullptr)
        *_pExpanded = QSet<QString>(qlstExpanded.cbegin(), qlstExpanded.cend());
    QTreeWidgetItem* pCurrent = _pTree->currentItem();
    return qlstExpanded.join(",") + "|" +
           (pCurrent != nullptr ? pCurrent->data(0, Qt::UserRole).toString() : "");
}

inline STRCT_ViewStateRun RunViewState(const uint8_t* _pData, size_t _iSize)
{
    STRCT_ViewStateRun run;
    CLS_FuzzDeviceTree* pTree = ViewStateTree();
    CLS_WgtBaseTreeWidget* pBase = pTree->BaseTree();
    // The same starting point for every input.
    pBase->collapseAll();
    pBase->GetNodeById("custom_root_id")->setExpanded(true);
    pBase->GetNodeById("g1")->setExpanded(true);
    pTree->SetCurrentItem("g1c0");
    const QString qstrBefore = ViewOf(pBase);

    const QByteArray qbaBytes(reinterpret_cast<const char*>(_pData), static_cast<int>(_iSize));
    run.m_iResult = pTree->RestoreViewState(qbaBytes);
    CLS_DeviceTreeViewState stState;
    run.m_iDecoded = CLS_DeviceTreeViewState::Decode(qbaBytes, stState);
    if (run.m_iResult != run.m_iDecoded)
        run.m_qlstProblems << QString("restore gave %1, the codec %2").arg(run.m_iResult).arg(run.m_iDecoded);

    QSet<QString> qsetExpanded;
    const QString qstrAfter = ViewOf(pBase, &qsetExpanded);
    if (run.m_iResult != 0) {
        if (qstrAfter != qstrBefore)
            run.m_qlstProblems << QString("refused, yet %1 became %2").arg(qstrBefore, qstrAfter);
        return run;
    }
    QSet<QString> qsetWanted;
    for (const QString& qstrId : qAsConst(stState.m_qsetExpanded)) {
        QTreeWidgetItem* pRow = pBase->GetNodeById(qstrId);
        if (pRow != nullptr && pRow->childCount() > 0)
            qsetWanted.insert(qstrId);
    }
    if (qsetExpanded != qsetWanted)
        run.m_qlstProblems << QString("expanded %1").arg(qstrAfter);
    if (pBase->GetNodeById(stState.m_qstrCurrentId) != nullptr &&
        !qstrAfter.endsWith("|" + stState.m_qstrCurrentId))
        run.m_qlstProblems << QString("current row of %1 is not %2").arg(qstrAfter, stState.m_qstrCurrentId);
    return run;
}

} // namespace WgtFuzz
