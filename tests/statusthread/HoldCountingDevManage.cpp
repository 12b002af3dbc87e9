// A device layer for the status thread's tests, built as "libDevManage.so": one host with a number
// of channels, and a device that, each time it is asked for its image channel, counts how many of
// the channels somebody besides the layer itself holds locked at that moment. The status thread
// asks that question while it folds a pass into its cache.

#include "CLS_IDevFactory.h"
#include "CLS_IResourceTree.h"
#include "DevStructDefine.h"

#include <QMap>
#include <QString>
#include <QVector>

#include <algorithm>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace {

struct STRCT_HoldHost : public STRCT_VideoItem
{
    int GetType() override { return 3; }
};

struct STRCT_HoldChannel : public STRCT_VideoItem
{
    int GetType() override { return 4; }
};

std::mutex s_mtx;
std::vector<std::shared_ptr<STRCT_VideoItem>> s_vecItems; // host first, then its channels
int s_iQueries = 0;
int s_iMaxHeld = 0;

std::shared_ptr<STRCT_VideoItem> Find(const QString& _qstrId)
{
    const std::string strId = _qstrId.toStdString();
    for (const std::shared_ptr<STRCT_VideoItem>& spItem : s_vecItems) {
        if (spItem->m_strId == strId)
            return spItem;
    }
    return nullptr;
}

class CLS_HoldTree : public CLS_IResourceTree
{
public:
    STRCT_DevResult GetAllItems(QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapItems) override
    {
        std::lock_guard<std::mutex> lock(s_mtx);
        for (const std::shared_ptr<STRCT_VideoItem>& spItem : s_vecItems)
            _qmapItems.insert(QString::fromStdString(spItem->m_strTreeId), spItem);
        return {};
    }
    STRCT_DevResult GetItem(std::weak_ptr<STRCT_VideoItem>& _wpItem, const QString& _qstrId) override
    {
        std::lock_guard<std::mutex> lock(s_mtx);
        _wpItem = Find(_qstrId);
        return {};
    }
    STRCT_DevResult GetItemOfChannel(std::weak_ptr<STRCT_VideoItem>& _wpItem, const QString& _qstrId, int,
                                     int) override
    {
        return GetItem(_wpItem, _qstrId);
    }
    STRCT_DevResult ListItemsOfType(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems, int _iType,
                                    const QVector<QString>&) override
    {
        std::lock_guard<std::mutex> lock(s_mtx);
        for (const std::shared_ptr<STRCT_VideoItem>& spItem : s_vecItems) {
            if (spItem->GetType() == _iType)
                _qvecItems.append(spItem);
        }
        return {};
    }
    STRCT_DevResult ListIdsOfType(int _iType, QVector<QString>& _qvecIds) override
    {
        std::lock_guard<std::mutex> lock(s_mtx);
        for (const std::shared_ptr<STRCT_VideoItem>& spItem : s_vecItems) {
            if (spItem->GetType() == _iType)
                _qvecIds.append(QString::fromStdString(spItem->m_strId));
        }
        return {};
    }
    STRCT_DevResult ListChildren(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems,
                                 const QString& _qstrParentId) override
    {
        std::lock_guard<std::mutex> lock(s_mtx);
        for (const std::shared_ptr<STRCT_VideoItem>& spItem : s_vecItems) {
            if (QString::fromStdString(spItem->m_strParentId) == _qstrParentId)
                _qvecItems.append(spItem);
        }
        return {};
    }
};

class CLS_HoldFactory : public CLS_IDevFactory
{
public:
    bool IsIdAdmitted(const QString&) override { return true; }
    int QueryDeviceParam(const QString&, int, int, QMap<QString, QString>&, QString&) override
    {
        std::lock_guard<std::mutex> lock(s_mtx);
        ++s_iQueries;
        // The layer's own list holds one reference; any more is a reader's lock.
        const int iHeld = static_cast<int>(std::count_if(
            s_vecItems.cbegin(), s_vecItems.cend(),
            [](const std::shared_ptr<STRCT_VideoItem>& _spItem) { return _spItem.use_count() > 1; }));
        s_iMaxHeld = std::max(s_iMaxHeld, iHeld);
        return 1;
    }
};

CLS_HoldTree s_clsTree;
CLS_HoldFactory s_clsFactory;

} // namespace

extern "C" CLS_IResourceTree* GetResourceTree()
{
    return &s_clsTree;
}

extern "C" CLS_IDevFactory* GetDevFactory()
{
    return &s_clsFactory;
}

extern "C" void* GetCustomTree()
{
    return nullptr;
}

extern "C" void* GetUtil()
{
    return nullptr;
}

// One host "host" with the channels "ch01" ... below it; the counts start again.
extern "C" void HoldCtl_Load(int _iChannels)
{
    std::lock_guard<std::mutex> lock(s_mtx);
    s_vecItems.clear();
    s_iQueries = 0;
    s_iMaxHeld = 0;
    auto spHost = std::make_shared<STRCT_HoldHost>();
    spHost->m_strId = spHost->m_strTreeId = "host";
    spHost->m_strParentId = "resource_root_id";
    s_vecItems.push_back(spHost);
    for (int i = 1; i <= _iChannels; ++i) {
        auto spChannel = std::make_shared<STRCT_HoldChannel>();
        spChannel->m_strId = spChannel->m_strTreeId = (i < 10 ? "ch0" : "ch") + std::to_string(i);
        spChannel->m_strParentId = "host";
        spChannel->m_iStatus = i % 2;
        s_vecItems.push_back(spChannel);
    }
}

// Image channel questions so far, and the most channels held by others at one of them.
extern "C" int HoldCtl_Queries()
{
    std::lock_guard<std::mutex> lock(s_mtx);
    return s_iQueries;
}

extern "C" int HoldCtl_MaxHeldAtQuery()
{
    std::lock_guard<std::mutex> lock(s_mtx);
    return s_iMaxHeld;
}
