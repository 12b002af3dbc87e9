// A device layer for the tests of the sibling fence, built as "libDevManage.so": a small
// installation whose every operation can be told to throw (once, n times, always) and to answer
// slowly. See FaultDevManageControl.h.

#include "FaultDevManageControl.h"

#include "CLS_IDevFactory.h"
#include "CLS_IResourceTree.h"
#include "DevStructDefine.h"
#include "I_CustomTreeManage.h"

#include <QMap>
#include <QString>
#include <QVector>

#include <chrono>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

struct STRCT_FaultHost : public STRCT_VideoItem
{
    int GetType() override { return 3; }
};

// A channel record opens its own fields with the channel number, as the tree expects.
struct STRCT_FaultChannel : public STRCT_VideoItem
{
    int GetType() override { return 4; }
    int m_iChannelNo = 0;
};

struct STRCT_FaultPlan
{
    int m_iSkip = 0;
    int m_iCount = 0; // -1: every call
    int m_iKind = 0;
    int m_iDelayMs = 0;
    int m_iCalls = 0;
    int m_iThrown = 0;
    bool m_blHereOnly = false; // only calls of m_idThread count and throw
    std::thread::id m_idThread;
};

std::mutex s_mtx; // guards everything below
std::map<std::string, STRCT_FaultPlan> s_mapPlans;
std::vector<std::shared_ptr<STRCT_VideoItem>> s_vecItems; // root, then each host with its channels
QMap<QString, CLS_CustomTreeNode> s_qmapNodes;

// Counts the call, sleeps as planned, then throws if the plan says so. Outside the lock while it
// sleeps or throws.
void Enter(const char* _pOperation)
{
    int iDelay = 0;
    int iThrow = -1;
    {
        std::lock_guard<std::mutex> lock(s_mtx);
        STRCT_FaultPlan& stPlan = s_mapPlans[_pOperation];
        ++stPlan.m_iCalls;
        iDelay = stPlan.m_iDelayMs;
        if (stPlan.m_blHereOnly && std::this_thread::get_id() != stPlan.m_idThread) {
            // not aimed at this thread
        } else if (stPlan.m_iSkip > 0) {
            --stPlan.m_iSkip;
        } else if (0 != stPlan.m_iCount) {
            if (stPlan.m_iCount > 0)
                --stPlan.m_iCount;
            ++stPlan.m_iThrown;
            iThrow = stPlan.m_iKind;
        }
    }
    if (iDelay > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(iDelay));
    if (0 == iThrow)
        throw std::runtime_error(std::string("fault ") + _pOperation);
    if (1 == iThrow)
        throw 17;
}

// Under s_mtx.
std::shared_ptr<STRCT_VideoItem> Find(const QString& _qstrId)
{
    const std::string strId = _qstrId.toStdString();
    for (const std::shared_ptr<STRCT_VideoItem>& spItem : s_vecItems) {
        if (spItem->m_strId == strId)
            return spItem;
    }
    return nullptr;
}

STRCT_DevResult NotFound()
{
    STRCT_DevResult stResult;
    stResult.m_iCode = -1;
    return stResult;
}

class CLS_FaultTree : public CLS_IResourceTree
{
public:
    STRCT_DevResult GetAllItems(QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapItems) override
    {
        Enter("GetAllItems");
        std::lock_guard<std::mutex> lock(s_mtx);
        for (const std::shared_ptr<STRCT_VideoItem>& spItem : s_vecItems)
            _qmapItems.insert(QString::fromStdString(spItem->m_strTreeId), spItem);
        return {};
    }
    STRCT_DevResult GetItem(std::weak_ptr<STRCT_VideoItem>& _wpItem, const QString& _qstrId) override
    {
        Enter("GetItem");
        std::lock_guard<std::mutex> lock(s_mtx);
        _wpItem = Find(_qstrId);
        return _wpItem.expired() ? NotFound() : STRCT_DevResult();
    }
    STRCT_DevResult GetItemOfChannel(std::weak_ptr<STRCT_VideoItem>& _wpItem, const QString& _qstrId, int,
                                     int) override
    {
        Enter("GetItemOfChannel");
        std::lock_guard<std::mutex> lock(s_mtx);
        _wpItem = Find(_qstrId);
        return _wpItem.expired() ? NotFound() : STRCT_DevResult();
    }
    STRCT_DevResult ListItemsOfType(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems, int _iType,
                                    const QVector<QString>&) override
    {
        Enter("ListItemsOfType");
        std::lock_guard<std::mutex> lock(s_mtx);
        for (const std::shared_ptr<STRCT_VideoItem>& spItem : s_vecItems) {
            if (spItem->GetType() == _iType)
                _qvecItems.append(spItem);
        }
        return {};
    }
    STRCT_DevResult ListIdsOfType(int _iType, QVector<QString>& _qvecIds) override
    {
        Enter("ListIdsOfType");
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
        Enter("ListChildren");
        std::lock_guard<std::mutex> lock(s_mtx);
        const std::string strParentId = _qstrParentId.toStdString();
        for (const std::shared_ptr<STRCT_VideoItem>& spItem : s_vecItems) {
            if (spItem->m_strParentId == strParentId)
                _qvecItems.append(spItem);
        }
        return {};
    }
};

class CLS_FaultFactory : public CLS_IDevFactory
{
public:
    bool IsIdAdmitted(const QString&) override
    {
        Enter("IsIdAdmitted");
        return true;
    }
    int QueryDeviceParam(const QString&, int, int, QMap<QString, QString>&, QString&) override
    {
        Enter("QueryDeviceParam");
        return 1;
    }
};

class CLS_FaultCustomTree : public I_CustomTreeManage
{
public:
    STRCT_DevResult GetAllNodes(QMap<QString, CLS_CustomTreeNode>& _qmapNodes, int) override
    {
        Enter("GetAllNodes");
        std::lock_guard<std::mutex> lock(s_mtx);
        for (auto it = s_qmapNodes.cbegin(); it != s_qmapNodes.cend(); ++it)
            _qmapNodes.insert(it.key(), it.value());
        return {};
    }
    // The same nodes, below the root asked for.
    STRCT_DevResult GetNodesOfRoot(const QString& _qstrRootId, QMap<QString, CLS_CustomTreeNode>& _qmapNodes,
                                   int) override
    {
        Enter("GetNodesOfRoot");
        std::lock_guard<std::mutex> lock(s_mtx);
        for (auto it = s_qmapNodes.cbegin(); it != s_qmapNodes.cend(); ++it) {
            CLS_CustomTreeNode node = it.value();
            if (node.m_qstrTreeId == "custom_root_id") {
                node.m_qstrTreeId = node.m_qstrDevId = node.m_qstrName = _qstrRootId;
            } else if (node.m_qstrTreeParentId == "custom_root_id") {
                node.m_qstrTreeParentId = _qstrRootId;
            }
            _qmapNodes.insert(node.m_qstrTreeId, node);
        }
        return {};
    }
};

CLS_FaultTree s_clsTree;
CLS_FaultFactory s_clsFactory;

CLS_CustomTreeNode MakeNode(const QString& _qstrTreeId, const QString& _qstrDevId, const QString& _qstrParent,
                            int _iType)
{
    CLS_CustomTreeNode node;
    node.m_qstrTreeId = _qstrTreeId;
    node.m_qstrDevId = _qstrDevId;
    node.m_qstrTreeParentId = _qstrParent;
    node.m_qstrName = _qstrTreeId;
    node.m_iType = _iType;
    return node;
}

} // namespace

extern "C" CLS_IResourceTree* GetResourceTree()
{
    Enter("GetResourceTree");
    return &s_clsTree;
}

extern "C" CLS_IDevFactory* GetDevFactory()
{
    Enter("GetDevFactory");
    return &s_clsFactory;
}

extern "C" I_CustomTreeManage* GetCustomTree()
{
    Enter("GetCustomTree");
    // Made on first use and never destroyed: the status threads may still ask during exit.
    static I_CustomTreeManage* s_pCustomTree = new CLS_FaultCustomTree();
    return s_pCustomTree;
}

extern "C" void* GetUtil()
{
    return nullptr;
}

extern "C" void FaultCtl_Reset(void)
{
    std::lock_guard<std::mutex> lock(s_mtx);
    s_mapPlans.clear();
    s_vecItems.clear();
    s_qmapNodes.clear();
}

extern "C" void FaultCtl_Load(int _iHosts, int _iChannels)
{
    std::lock_guard<std::mutex> lock(s_mtx);
    s_vecItems.clear();
    s_qmapNodes.clear();
    auto spRoot = std::make_shared<STRCT_VideoGroup>();
    spRoot->m_strId = spRoot->m_strTreeId = "resource_root_id";
    spRoot->m_strName = "All";
    s_vecItems.push_back(spRoot);
    s_qmapNodes.insert("custom_root_id", MakeNode("custom_root_id", "custom_root_id", QString(), 2));
    s_qmapNodes.insert("g1", MakeNode("g1", "g1", "custom_root_id", 2));
    for (int iHost = 1; iHost <= _iHosts; ++iHost) {
        auto spHost = std::make_shared<STRCT_FaultHost>();
        spHost->m_strId = spHost->m_strTreeId = "h" + std::to_string(iHost);
        spHost->m_strName = spHost->m_strId;
        spHost->m_strParentId = "resource_root_id";
        spHost->m_iStatus = 1;
        s_vecItems.push_back(spHost);
        for (int iChannel = 1; iChannel <= _iChannels; ++iChannel) {
            auto spChannel = std::make_shared<STRCT_FaultChannel>();
            spChannel->m_strId = spChannel->m_strTreeId = spHost->m_strId + "c" + std::to_string(iChannel);
            spChannel->m_strName = spChannel->m_strId;
            spChannel->m_strParentId = spHost->m_strId;
            spChannel->m_iStatus = iChannel % 2;
            spChannel->m_iChannelNo = iChannel;
            s_vecItems.push_back(spChannel);
            const QString qstrId = QString::fromStdString(spChannel->m_strId);
            s_qmapNodes.insert("n_" + qstrId, MakeNode("n_" + qstrId, qstrId, "g1", 4));
        }
    }
}

extern "C" int FaultCtl_SetStatus(const char* _pId, int _iStatus)
{
    std::lock_guard<std::mutex> lock(s_mtx);
    std::shared_ptr<STRCT_VideoItem> spItem = Find(QString::fromUtf8(_pId));
    if (nullptr == spItem)
        return -1;
    spItem->m_iStatus = _iStatus;
    return 0;
}

extern "C" int FaultCtl_GetStatus(const char* _pId)
{
    std::lock_guard<std::mutex> lock(s_mtx);
    std::shared_ptr<STRCT_VideoItem> spItem = Find(QString::fromUtf8(_pId));
    return nullptr == spItem ? -1 : spItem->m_iStatus;
}

extern "C" void FaultCtl_Throw(const char* _pOperation, int _iSkip, int _iCount, int _iKind)
{
    std::lock_guard<std::mutex> lock(s_mtx);
    STRCT_FaultPlan& stPlan = s_mapPlans[_pOperation];
    stPlan.m_iSkip = _iSkip;
    stPlan.m_iCount = _iCount;
    stPlan.m_iKind = _iKind;
    stPlan.m_blHereOnly = false;
}

extern "C" void FaultCtl_ThrowHere(const char* _pOperation, int _iSkip, int _iCount, int _iKind)
{
    FaultCtl_Throw(_pOperation, _iSkip, _iCount, _iKind);
    std::lock_guard<std::mutex> lock(s_mtx);
    STRCT_FaultPlan& stPlan = s_mapPlans[_pOperation];
    stPlan.m_blHereOnly = true;
    stPlan.m_idThread = std::this_thread::get_id();
}

extern "C" void FaultCtl_Delay(const char* _pOperation, int _iMsecs)
{
    std::lock_guard<std::mutex> lock(s_mtx);
    s_mapPlans[_pOperation].m_iDelayMs = _iMsecs;
}

extern "C" void FaultCtl_Heal(void)
{
    std::lock_guard<std::mutex> lock(s_mtx);
    for (auto& pairPlan : s_mapPlans) {
        pairPlan.second.m_iSkip = 0;
        pairPlan.second.m_iCount = 0;
        pairPlan.second.m_iDelayMs = 0;
    }
}

extern "C" int FaultCtl_Calls(const char* _pOperation)
{
    std::lock_guard<std::mutex> lock(s_mtx);
    auto it = s_mapPlans.find(_pOperation);
    return it == s_mapPlans.end() ? 0 : it->second.m_iCalls;
}

extern "C" int FaultCtl_Thrown(const char* _pOperation)
{
    std::lock_guard<std::mutex> lock(s_mtx);
    auto it = s_mapPlans.find(_pOperation);
    return it == s_mapPlans.end() ? 0 : it->second.m_iThrown;
}
