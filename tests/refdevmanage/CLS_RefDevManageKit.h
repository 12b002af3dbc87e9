#pragma once
// Shared pieces of the reference device layer tests: the objects through the gateway, the last
// load error as text, items and statuses read back through the resource tree, and the shipped
// installation files. Any thread, once BindGateway() has run on the main thread.

#include "CLS_DevManage.h"
#include "CLS_IResourceTree.h"
#include "CLS_TestPaths.h"
#include "DevManageControl.h"
#include "I_CustomTreeManage.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

namespace CLS_RefDevKit {

// The gateway's first bind is not thread-safe by design: made before any worker runs.
inline void BindGateway()
{
    DevManage::GetModuleFun("GetResourceTree", "");
}

inline QString InstallationFile(const char* _pName)
{
    return CLS_TestPaths::QFromProgramDir(WGT_INSTALLATIONS_DIR) + "/" + QLatin1String(_pName);
}

inline QString LastLoadError()
{
    char szBuffer[1024] = {0};
    DevManageCtl_LastLoadError(szBuffer, sizeof(szBuffer));
    return QString::fromUtf8(szBuffer);
}

// The item of a resource id, or null.
inline std::shared_ptr<STRCT_VideoItem> Item(const QString& _qstrId)
{
    std::weak_ptr<STRCT_VideoItem> wpItem;
    CLS_IResourceTree* pTree = DevManage::GetResourceTree();
    if (pTree == nullptr || pTree->GetItem(wpItem, _qstrId).m_iCode < 0)
        return nullptr;
    return wpItem.lock();
}

inline int CountOfType(int _iType)
{
    QVector<QString> qvecIds;
    DevManage::GetResourceTree()->ListIdsOfType(_iType, qvecIds);
    return qvecIds.size();
}

inline QMap<QString, CLS_CustomTreeNode> AllNodes()
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    DevManage::GetCustomTree()->GetAllNodes(qmapNodes, 0);
    return qmapNodes;
}

// Every resource item as "id:status", in insertion order.
inline QStringList Statuses()
{
    QStringList qlstStatuses;
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapItems;
    DevManage::GetResourceTree()->GetAllItems(qmapItems);
    for (const auto& wpItem : qmapItems) {
        if (std::shared_ptr<STRCT_VideoItem> spItem = wpItem.lock())
            qlstStatuses << QString::fromStdString(spItem->m_strId) + ":" +
                                QString::number(spItem->m_iStatus);
    }
    return qlstStatuses;
}

// Every resource item as "id|type|parent|tree id|order|status|name".
inline QStringList Layout()
{
    QStringList qlstItems;
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapItems;
    DevManage::GetResourceTree()->GetAllItems(qmapItems);
    for (const auto& wpItem : qmapItems) {
        if (std::shared_ptr<STRCT_VideoItem> spItem = wpItem.lock()) {
            qlstItems << QStringList{QString::fromStdString(spItem->m_strId),
                                     QString::number(spItem->GetType()),
                                     QString::fromStdString(spItem->m_strParentId),
                                     QString::fromStdString(spItem->m_strTreeId),
                                     QString::number(spItem->m_iOrderNo),
                                     QString::number(spItem->m_iStatus),
                                     QString::fromStdString(spItem->m_strName)}
                             .join('|');
        }
    }
    return qlstItems;
}

} // namespace CLS_RefDevKit
