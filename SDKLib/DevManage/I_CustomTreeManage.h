#pragma once
// The custom-tree manager of the device-management library, reached through
// DevManage::GetCustomTree(). The implementation lives in that library; the meta-object of this
// interface lives here so that the tree widgets can connect to its signals.
//
// The two move signals carry a result: a device tree connects them to its own MoveUpOneRow and
// MoveDownOneRow, and the slot's int comes back to the emitter. That only works over a direct
// connection, so the manager must emit them from the GUI thread.

#include "STRCT_DevResult.h"
#include "TreeStructDefine.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QVariant>

class I_CustomTreeManage : public QObject
{
    Q_OBJECT

public:
    explicit I_CustomTreeManage(QObject* parent = nullptr);
    ~I_CustomTreeManage() override;

    // Every node of the custom tree, keyed by tree id, appended to _qmapNodes. The tree widgets
    // pass 0 as _iFlag.
    virtual STRCT_DevResult GetAllNodes(QMap<QString, CLS_CustomTreeNode>& _qmapNodes, int _iFlag) = 0;

    // The nodes below the root _qstrRootId, and the root itself under its id, appended to
    // _qmapNodes. The tree widgets pass 0 as _iFlag.
    virtual STRCT_DevResult GetNodesOfRoot(const QString& _qstrRootId,
                                           QMap<QString, CLS_CustomTreeNode>& _qmapNodes, int _iFlag) = 0;

signals:
    void SignDataError();
    void SignInitFinished();
    void SignAddCustomTreeData(QVariant _qvarItems);
    void SignDeleteCustomTreeData(QVariant _qvarItems);
    void SignModifyCustomTreeData(QVariant _qvarItems);
    // The result is the connected slot's, or 0 when nothing answered.
    int SignMoveUpOneRow(QString _qstrSrcId, QString _qstrDesId);
    int SignMoveDownOneRow(QString _qstrSrcId, QString _qstrDesId);
};
