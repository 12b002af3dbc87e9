#pragma once
// The custom-tree manager of the reference device layer: custom groups, favourites and the
// passenger-flow tree, kept as CLS_CustomTreeNode records in CLS_RefDevStore. The operations are
// safe from any thread. The object itself is a QObject living on the thread that first asked
// "GetCustomTree" for it (the GUI thread in a client); it emits none of its signals on its own.

#include "I_CustomTreeManage.h"

class CLS_RefCustomTree : public I_CustomTreeManage
{
public:
    explicit CLS_RefCustomTree(QObject* parent = nullptr);

    STRCT_DevResult GetAllNodes(QMap<QString, CLS_CustomTreeNode>& _qmapNodes, int _iFlag) override;
    STRCT_DevResult GetNodesOfRoot(const QString& _qstrRootId, QMap<QString, CLS_CustomTreeNode>& _qmapNodes,
                                   int _iFlag) override;
};
