#include "CLS_RefResourceTree.h"

#include "CLS_RefDevStore.h"

STRCT_DevResult CLS_RefResourceTree::GetAllItems(QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapItems)
{
    return CLS_RefDevStore::Instance().GetAllItems(_qmapItems);
}

STRCT_DevResult CLS_RefResourceTree::GetItem(std::weak_ptr<STRCT_VideoItem>& _wpItem, const QString& _qstrId)
{
    return CLS_RefDevStore::Instance().GetItem(_wpItem, _qstrId);
}

STRCT_DevResult CLS_RefResourceTree::GetItemOfChannel(std::weak_ptr<STRCT_VideoItem>& _wpItem,
                                                      const QString& _qstrId, int _iChannelNo, int _iFlag)
{
    return CLS_RefDevStore::Instance().GetItemOfChannel(_wpItem, _qstrId, _iChannelNo, _iFlag);
}

STRCT_DevResult CLS_RefResourceTree::ListItemsOfType(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems,
                                                     int _iType, const QVector<QString>& _qvecFilterIds)
{
    return CLS_RefDevStore::Instance().ListItemsOfType(_qvecItems, _iType, _qvecFilterIds);
}

STRCT_DevResult CLS_RefResourceTree::ListIdsOfType(int _iType, QVector<QString>& _qvecIds)
{
    return CLS_RefDevStore::Instance().ListIdsOfType(_iType, _qvecIds);
}

STRCT_DevResult CLS_RefResourceTree::ListChildren(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems,
                                                  const QString& _qstrParentId)
{
    return CLS_RefDevStore::Instance().ListChildren(_qvecItems, _qstrParentId);
}
