#pragma once
// The resource tree of the installation, owned by the device-management library and reached
// through DevManage::GetResourceTree(). Only the library knows the implementation; the tree
// widgets call it from the GUI thread and from the channel status thread without a lock, so an
// implementation must be safe to call from several threads at once.
//
// Every operation gives a STRCT_DevResult whose negative m_iCode means failure. Output containers
// are appended to and never cleared. Items are handed out as weak pointers: the resource tree keeps
// them alive, a caller locks one only for the length of its use.

#include "DevStructDefine.h"
#include "STRCT_DevResult.h"

#include <QMap>
#include <QString>
#include <QVector>

#include <memory>

/// The resource tree of the installation: the interface of the device-management library's object.
///
/// Reached through DevManage::GetResourceTree(); the library owns the one object of the process
/// (never delete it). Called from the GUI thread, the thread of a device tree's Init and the channel
/// status thread at once, without a lock: an implementation must be thread safe. Each operation
/// gives a STRCT_DevResult whose negative m_iCode means failure; output containers are appended to,
/// never cleared. Items are weak pointers: the resource tree keeps them alive, a caller locks one
/// only for the length of its use.
class CLS_IResourceTree
{
public:
    /// Virtual, so that an implementation is destroyed whole; only the library destroys one.
    virtual ~CLS_IResourceTree() = default;

    /// Every resource, keyed by its tree id, appended to _qmapItems; the root is under
    /// "resource_root_id". The device tree does not read the code: it builds from what was appended.
    virtual STRCT_DevResult GetAllItems(QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapItems) = 0;

    /// The item of the resource id _qstrId into _wpItem, which stays empty when there is none
    /// (negative code).
    virtual STRCT_DevResult GetItem(std::weak_ptr<STRCT_VideoItem>& _wpItem, const QString& _qstrId) = 0;

    /// The item of _qstrId into _wpItem, by the form of the lookup that also takes a channel number
    /// and a flag. The channel status thread passes -1 and 0 (the item of _qstrId itself).
    virtual STRCT_DevResult GetItemOfChannel(std::weak_ptr<STRCT_VideoItem>& _wpItem, const QString& _qstrId,
                                             int _iChannelNo, int _iFlag) = 0;

    /// Every item whose GetType() is _iType, appended to _qvecItems, narrowed by _qvecFilterIds. The
    /// tree widgets pass an empty filter, which means none. Weak pointers may be empty or expired: a
    /// caller skips them.
    virtual STRCT_DevResult ListItemsOfType(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems, int _iType,
                                            const QVector<QString>& _qvecFilterIds) = 0;

    /// Every id of the items whose GetType() is _iType, appended to _qvecIds.
    virtual STRCT_DevResult ListIdsOfType(int _iType, QVector<QString>& _qvecIds) = 0;

    /// The items right below the item _qstrParentId, appended to _qvecItems. Weak pointers may be
    /// empty or expired: a caller skips them.
    virtual STRCT_DevResult ListChildren(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems,
                                         const QString& _qstrParentId) = 0;
};
