#include "CLS_RefCustomTree.h"

#include "CLS_RefDevStore.h"

CLS_RefCustomTree::CLS_RefCustomTree(QObject* parent) : I_CustomTreeManage(parent) {}

STRCT_DevResult CLS_RefCustomTree::GetAllNodes(QMap<QString, CLS_CustomTreeNode>& _qmapNodes, int _iFlag)
{
    return CLS_RefDevStore::Instance().GetAllNodes(_qmapNodes, _iFlag);
}

STRCT_DevResult CLS_RefCustomTree::GetNodesOfRoot(const QString& _qstrRootId,
                                                  QMap<QString, CLS_CustomTreeNode>& _qmapNodes, int _iFlag)
{
    return CLS_RefDevStore::Instance().GetNodesOfRoot(_qstrRootId, _qmapNodes, _iFlag);
}
