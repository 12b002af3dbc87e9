#pragma once
// The resource tree of the reference device layer: a thin face of CLS_RefDevStore. Safe from any
// thread; one process-wide instance, handed out by "GetResourceTree".

#include "CLS_IResourceTree.h"

class CLS_RefResourceTree : public CLS_IResourceTree
{
public:
    STRCT_DevResult GetAllItems(QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapItems) override;
    STRCT_DevResult GetItem(std::weak_ptr<STRCT_VideoItem>& _wpItem, const QString& _qstrId) override;
    STRCT_DevResult GetItemOfChannel(std::weak_ptr<STRCT_VideoItem>& _wpItem, const QString& _qstrId,
                                     int _iChannelNo, int _iFlag) override;
    STRCT_DevResult ListItemsOfType(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems, int _iType,
                                    const QVector<QString>& _qvecFilterIds) override;
    STRCT_DevResult ListIdsOfType(int _iType, QVector<QString>& _qvecIds) override;
    STRCT_DevResult ListChildren(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems,
                                 const QString& _qstrParentId) override;
};
