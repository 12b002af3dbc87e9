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

class CLS_IResourceTree
{
public:
    virtual ~CLS_IResourceTree() = default;

    // Every resource, keyed by its tree id; the root is under "resource_root_id".
    virtual STRCT_DevResult GetAllItems(QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapItems) = 0;

    // The item of _qstrId; _wpItem stays empty when there is none.
    virtual STRCT_DevResult GetItem(std::weak_ptr<STRCT_VideoItem>& _wpItem, const QString& _qstrId) = 0;

    // The item of _qstrId, by the form of the lookup that also takes a channel number and a flag.
    // The tree widgets pass -1 and 0.
    virtual STRCT_DevResult GetItemOfChannel(std::weak_ptr<STRCT_VideoItem>& _wpItem, const QString& _qstrId,
                                             int _iChannelNo, int _iFlag) = 0;

    // Every item whose GetType() is _iType. The tree widgets pass an empty filter, which means none.
    virtual STRCT_DevResult ListItemsOfType(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems, int _iType,
                                            const QVector<QString>& _qvecFilterIds) = 0;

    // Every id of the items whose GetType() is _iType.
    virtual STRCT_DevResult ListIdsOfType(int _iType, QVector<QString>& _qvecIds) = 0;

    // The items right below the item _qstrParentId.
    virtual STRCT_DevResult ListChildren(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems,
                                         const QString& _qstrParentId) = 0;
};
