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

/// The custom-tree manager of the device-management library, reached through
/// DevManage::GetCustomTree().
///
/// An abstract QObject: the library implements it and owns the one object of the process (never
/// delete it). Its meta-object lives in this library so that the tree widgets can connect to its
/// signals. The device tree reads the custom tree's nodes through GetAllNodes() and
/// GetNodesOfRoot(), and connects SignMoveUpOneRow() and SignMoveDownOneRow() to its row moves;
/// the other signals are for pages and are not connected by the tree widgets.
class I_CustomTreeManage : public QObject
{
    Q_OBJECT

public:
    /// Makes the interface part of the manager; @p parent owns it when not null.
    explicit I_CustomTreeManage(QObject* parent = nullptr);
    /// Destroys the manager (only its library does).
    ~I_CustomTreeManage() override;

    /// Every node of the custom tree, keyed by tree id, appended to _qmapNodes (never cleared).
    /// The tree widgets pass 0 as _iFlag and call it on the thread of a device tree's Init, which
    /// need not be the GUI thread.
    /// @return the result; a negative m_iCode means failure. The device tree does not read it and
    ///         builds from whatever was appended.
    virtual STRCT_DevResult GetAllNodes(QMap<QString, CLS_CustomTreeNode>& _qmapNodes, int _iFlag) = 0;

    /// The nodes below the root _qstrRootId, and the root itself under its id, appended to
    /// _qmapNodes (never cleared). The favourites tree passes "favorite_root_id", and 0 as _iFlag,
    /// on the thread of its Init.
    /// @return the result; a negative m_iCode means failure. The device tree does not read it and
    ///         builds from whatever was appended.
    virtual STRCT_DevResult GetNodesOfRoot(const QString& _qstrRootId,
                                           QMap<QString, CLS_CustomTreeNode>& _qmapNodes, int _iFlag) = 0;

signals:
    /// The manager met an error in the custom tree's data. Not connected by the tree widgets.
    void SignDataError();
    /// The manager has loaded the custom tree. Not connected by the tree widgets.
    void SignInitFinished();
    /// Nodes were added to the custom tree; @p _qvarItems carries them in the manager's own form.
    /// Not connected by the tree widgets.
    void SignAddCustomTreeData(QVariant _qvarItems);
    /// Nodes were deleted from the custom tree; @p _qvarItems carries them in the manager's own
    /// form. Not connected by the tree widgets.
    void SignDeleteCustomTreeData(QVariant _qvarItems);
    /// Nodes of the custom tree were changed; @p _qvarItems carries them in the manager's own form.
    /// Not connected by the tree widgets.
    void SignModifyCustomTreeData(QVariant _qvarItems);
    /// Asks each device tree to exchange row _qstrSrcId with its sibling _qstrDesId, the source
    /// moving up (CLS_WgtDeviceTree::MoveUpOneRow()). Emit from the GUI thread: the result comes
    /// back only over a direct connection.
    /// @return the result of the last connected slot called (0 moved, -1 refused), or 0 when
    ///         nothing answered.
    int SignMoveUpOneRow(QString _qstrSrcId, QString _qstrDesId);
    /// Asks each device tree to exchange row _qstrSrcId with its sibling _qstrDesId, the source
    /// moving down (CLS_WgtDeviceTree::MoveDownOneRow()). Emit from the GUI thread, as
    /// SignMoveUpOneRow().
    /// @return the result of the last connected slot called (0 moved, -1 refused), or 0 when
    ///         nothing answered.
    int SignMoveDownOneRow(QString _qstrSrcId, QString _qstrDesId);
};
