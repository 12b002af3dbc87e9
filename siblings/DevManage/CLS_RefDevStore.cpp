#include "CLS_RefDevStore.h"

#include "CLS_IDevFactory.h"
#include "CLS_RefInstallation.h"
#include "DevManageControl.h"
#include "STRCT_DevRecords.h"

#include <set>

namespace {

const char* const CONST_RESOURCE_ROOT_ID = "resource_root_id";

// Operations that FailNext can make fail; they and the ones below are counted.
const std::set<std::string>& FailableOperations()
{
    static const std::set<std::string> s_setOperations{
        "GetAllItems",  "GetItem",          "GetItemOfChannel", "ListItemsOfType", "ListIdsOfType",
        "ListChildren", "QueryDeviceParam", "GetAllNodes",      "GetNodesOfRoot"};
    return s_setOperations;
}

bool IsCountedOperation(const std::string& _strOperation)
{
    return FailableOperations().count(_strOperation) > 0 || _strOperation == "IsIdAdmitted" ||
           _strOperation == "GetResourceTree" || _strOperation == "GetDevFactory" ||
           _strOperation == "GetCustomTree";
}

bool IsObjectFunction(const std::string& _strFunction)
{
    return _strFunction == "GetResourceTree" || _strFunction == "GetDevFactory" ||
           _strFunction == "GetCustomTree";
}

// A weak pointer whose object is already gone: what a reader meets when an item is removed
// between the list and the lock.
std::weak_ptr<STRCT_VideoItem> ExpiredPointer()
{
    std::shared_ptr<STRCT_VideoItem> spGone = std::make_shared<STRCT_VideoGroup>();
    std::weak_ptr<STRCT_VideoItem> wpGone = spGone;
    return wpGone; // spGone ends here, and with it the object
}

std::string Utf8(const QString& _qstrText)
{
    return _qstrText.toUtf8().toStdString();
}

} // namespace

CLS_RefDevStore& CLS_RefDevStore::Instance()
{
    // Never destroyed: threads may still poll while the process exits.
    static CLS_RefDevStore* s_pStore = new CLS_RefDevStore();
    return *s_pStore;
}

CLS_RefDevStore::CLS_RefDevStore()
{
    ResetLocked(); // no other thread can see the store yet
}

// ---- helpers, m_mtx held ----------------------------------------------------------------------

void CLS_RefDevStore::ResetLocked()
{
    ClearItemsLocked();
    m_ullNextSeq = 0;
    m_iStaleEntries = 0;
    m_mapAdmitted.clear();
    m_blAdmittedDefault = true;
    m_mapDeviceParam.clear();
    m_iDeviceParamDefault = 0;
    m_mapFailures.clear();
    m_mapCallCounts.clear();
    m_mapLastCalls.clear();
    m_mapObjectAvailable = {{"GetResourceTree", true}, {"GetDevFactory", true}, {"GetCustomTree", true}};
    m_qmapCustomNodes.clear();
}

void CLS_RefDevStore::ClearItemsLocked()
{
    ++m_ullRevision;
    m_mapItems.clear();
    m_mapOrder.clear();
    m_mapChildren.clear();
}

bool CLS_RefDevStore::EnterOperation(const char* _pOperation, const std::string& _strArgs,
                                     STRCT_DevResult& _strctResult)
{
    ++m_mapCallCounts[_pOperation];
    m_mapLastCalls[_pOperation] = _strArgs;
    auto it = m_mapFailures.find(_pOperation);
    if (it == m_mapFailures.end() || it->second.m_iCount <= 0) {
        return false;
    }
    --it->second.m_iCount;
    _strctResult.m_iCode = it->second.m_iCode;
    _strctResult.m_qstrMessage = QStringLiteral("injected failure");
    return true;
}

void CLS_RefDevStore::Replace(STRCT_Entry& _strctEntry, const std::shared_ptr<STRCT_VideoItem>& _spNew)
{
    // The old object stays whole for whoever holds it locked; its weak pointers expire.
    _strctEntry.m_spItem = _spNew;
}

std::weak_ptr<STRCT_VideoItem> CLS_RefDevStore::HandOut(const STRCT_Entry& _strctEntry, int _iStaleBit) const
{
    if (0 != (_strctEntry.m_iStale & _iStaleBit)) {
        return ExpiredPointer();
    }
    return _strctEntry.m_spItem;
}

void CLS_RefDevStore::AppendStaleEntries(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems) const
{
    if (m_iStaleEntries <= 0) {
        return;
    }
    for (int i = 0; i < m_iStaleEntries; ++i) {
        _qvecItems.append(ExpiredPointer());
    }
    _qvecItems.append(std::weak_ptr<STRCT_VideoItem>()); // and one that never pointed anywhere
}

int CLS_RefDevStore::AddItemLocked(int _iType, const std::string& _strId, const std::string& _strName,
                                   const std::string& _strParentId, int _iOrderNo, int _iStatus,
                                   int _iChannelNo, const std::string& _strTreeId)
{
    if (_strId.empty() || m_mapItems.count(_strId) > 0) {
        return -1;
    }
    std::shared_ptr<STRCT_VideoItem> spItem = MakeDevRecord(_iType);
    if (!spItem) {
        return -1;
    }
    spItem->m_strId = _strId;
    spItem->m_strName = _strName;
    spItem->m_strParentId = _strParentId;
    spItem->m_iOrderNo = _iOrderNo;
    spItem->m_iStatus = _iStatus;
    spItem->m_strTreeId = _strTreeId.empty() ? _strId : _strTreeId;
    if (int* pChannelNo = DevRecordChannelNo(spItem.get())) {
        *pChannelNo = _iChannelNo;
    }
    InsertLocked(spItem);
    return 0;
}

void CLS_RefDevStore::InsertLocked(const std::shared_ptr<STRCT_VideoItem>& _spItem)
{
    ++m_ullRevision;
    STRCT_Entry strctEntry;
    strctEntry.m_spItem = _spItem;
    strctEntry.m_ullSeq = m_ullNextSeq++;
    m_mapOrder[strctEntry.m_ullSeq] = _spItem->m_strId;
    m_mapChildren[_spItem->m_strParentId][strctEntry.m_ullSeq] = _spItem->m_strId;
    m_mapItems[_spItem->m_strId] = strctEntry;
}

bool CLS_RefDevStore::SetStatusLocked(STRCT_Entry& _strctEntry, int _iStatus)
{
    if (_strctEntry.m_spItem->m_iStatus == _iStatus) {
        return false;
    }
    std::shared_ptr<STRCT_VideoItem> spNew = CloneDevRecord(_strctEntry.m_spItem);
    spNew->m_iStatus = _iStatus;
    Replace(_strctEntry, spNew);
    return true;
}

// ---- operations ---------------------------------------------------------------------------------

STRCT_DevResult CLS_RefDevStore::GetAllItems(QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapItems)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    STRCT_DevResult strctResult;
    if (EnterOperation("GetAllItems", std::string(), strctResult)) {
        return strctResult;
    }
    for (const auto& pairOrder : m_mapOrder) {
        const STRCT_Entry& strctEntry = m_mapItems.at(pairOrder.second);
        const STRCT_VideoItem& item = *strctEntry.m_spItem;
        std::string strKey = item.m_strId == CONST_RESOURCE_ROOT_ID ? item.m_strId : item.m_strTreeId;
        if (strKey.empty()) {
            strKey = item.m_strId;
        }
        _qmapItems.insert(QString::fromStdString(strKey), strctEntry.m_spItem);
    }
    return strctResult;
}

STRCT_DevResult CLS_RefDevStore::GetItem(std::weak_ptr<STRCT_VideoItem>& _wpItem, const QString& _qstrId)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    STRCT_DevResult strctResult;
    const std::string strId = Utf8(_qstrId);
    if (EnterOperation("GetItem", strId, strctResult)) {
        return strctResult;
    }
    auto it = m_mapItems.find(strId);
    if (it == m_mapItems.end()) {
        strctResult.m_iCode = -1;
        strctResult.m_qstrMessage = QStringLiteral("no such item");
        return strctResult;
    }
    _wpItem = HandOut(it->second, DEVMANAGECTL_STALE_IN_GETITEM);
    return strctResult;
}

STRCT_DevResult CLS_RefDevStore::GetItemOfChannel(std::weak_ptr<STRCT_VideoItem>& _wpItem,
                                                  const QString& _qstrId, int _iChannelNo, int _iFlag)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    STRCT_DevResult strctResult;
    const std::string strId = Utf8(_qstrId);
    if (EnterOperation("GetItemOfChannel",
                       strId + "|" + std::to_string(_iChannelNo) + "|" + std::to_string(_iFlag),
                       strctResult)) {
        return strctResult;
    }

    // A negative channel number looks the id up itself; otherwise the id is a device, and the
    // answer is its channel-like child of that number. The flag has no meaning here.
    auto it = m_mapItems.end();
    if (_iChannelNo < 0) {
        it = m_mapItems.find(strId);
    } else {
        auto itChildren = m_mapChildren.find(strId);
        if (itChildren != m_mapChildren.end()) {
            for (const auto& pairChild : itChildren->second) {
                auto itChild = m_mapItems.find(pairChild.second);
                const int* pChannelNo = DevRecordChannelNo(itChild->second.m_spItem.get());
                if (nullptr != pChannelNo && *pChannelNo == _iChannelNo) {
                    it = itChild;
                    break;
                }
            }
        }
    }
    if (it == m_mapItems.end()) {
        strctResult.m_iCode = -1;
        strctResult.m_qstrMessage = QStringLiteral("no such channel");
        return strctResult;
    }

    STRCT_Entry& strctEntry = it->second;
    if (strctEntry.m_blStatusOnLookup) {
        strctEntry.m_blStatusOnLookup = false;
        std::shared_ptr<STRCT_VideoItem> spNew = CloneDevRecord(strctEntry.m_spItem);
        spNew->m_iStatus = strctEntry.m_iStatusOnLookup;
        Replace(strctEntry, spNew);
    }
    _wpItem = HandOut(strctEntry, DEVMANAGECTL_STALE_IN_CHANNEL_GET);
    return strctResult;
}

STRCT_DevResult CLS_RefDevStore::ListItemsOfType(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems,
                                                 int _iType, const QVector<QString>& _qvecFilterIds)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    STRCT_DevResult strctResult;
    if (EnterOperation("ListItemsOfType",
                       std::to_string(_iType) + "|" + std::to_string(_qvecFilterIds.size()), strctResult)) {
        return strctResult;
    }
    AppendStaleEntries(_qvecItems);
    for (const auto& pairOrder : m_mapOrder) {
        const STRCT_Entry& strctEntry = m_mapItems.at(pairOrder.second);
        if (strctEntry.m_spItem->GetType() != _iType) {
            continue;
        }
        // An empty filter means none.
        if (!_qvecFilterIds.isEmpty() && !_qvecFilterIds.contains(QString::fromStdString(pairOrder.second))) {
            continue;
        }
        _qvecItems.append(HandOut(strctEntry, DEVMANAGECTL_STALE_IN_LISTS));
    }
    return strctResult;
}

STRCT_DevResult CLS_RefDevStore::ListIdsOfType(int _iType, QVector<QString>& _qvecIds)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    STRCT_DevResult strctResult;
    if (EnterOperation("ListIdsOfType", std::to_string(_iType), strctResult)) {
        return strctResult;
    }
    for (const auto& pairOrder : m_mapOrder) {
        if (m_mapItems.at(pairOrder.second).m_spItem->GetType() == _iType) {
            _qvecIds.append(QString::fromStdString(pairOrder.second));
        }
    }
    return strctResult;
}

STRCT_DevResult CLS_RefDevStore::ListChildren(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems,
                                              const QString& _qstrParentId)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    STRCT_DevResult strctResult;
    const std::string strParentId = Utf8(_qstrParentId);
    if (EnterOperation("ListChildren", strParentId, strctResult)) {
        return strctResult;
    }
    AppendStaleEntries(_qvecItems);
    auto itChildren = m_mapChildren.find(strParentId);
    if (itChildren == m_mapChildren.end()) {
        return strctResult;
    }
    for (const auto& pairChild : itChildren->second) {
        _qvecItems.append(HandOut(m_mapItems.at(pairChild.second), DEVMANAGECTL_STALE_IN_LISTS));
    }
    return strctResult;
}

bool CLS_RefDevStore::IsIdAdmitted(const QString& _qstrId)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    const std::string strId = Utf8(_qstrId);
    ++m_mapCallCounts["IsIdAdmitted"];
    m_mapLastCalls["IsIdAdmitted"] = strId;
    auto it = m_mapAdmitted.find(strId);
    return it == m_mapAdmitted.end() ? m_blAdmittedDefault : it->second;
}

int CLS_RefDevStore::QueryDeviceParam(const QString& _qstrDevId, int _iChannelNo, int _iParamType,
                                      QMap<QString, QString>& _qmapValues, QString& _qstrValue)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    STRCT_DevResult strctResult;
    const std::string strDevId = Utf8(_qstrDevId);
    const std::string strArgs = strDevId + "|" + std::to_string(_iChannelNo) + "|" +
                                std::to_string(_iParamType) + "|" + std::to_string(_qmapValues.size()) + "|" +
                                Utf8(_qstrValue);
    if (EnterOperation("QueryDeviceParam", strArgs, strctResult)) {
        return strctResult.m_iCode;
    }
    if (PARAM_IMAGE_CHANNEL != _iParamType) {
        return -1;
    }
    auto it = m_mapDeviceParam.find(strDevId);
    const int iValue = it == m_mapDeviceParam.end() ? m_iDeviceParamDefault : it->second;
    _qstrValue = QString::number(iValue);
    _qmapValues.insert(QStringLiteral("value"), _qstrValue);
    return iValue;
}

STRCT_DevResult CLS_RefDevStore::GetAllNodes(QMap<QString, CLS_CustomTreeNode>& _qmapNodes, int _iFlag)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    STRCT_DevResult strctResult;
    if (EnterOperation("GetAllNodes", std::to_string(_iFlag), strctResult)) {
        return strctResult;
    }
    for (auto it = m_qmapCustomNodes.cbegin(); it != m_qmapCustomNodes.cend(); ++it) {
        _qmapNodes.insert(it.key(), it.value());
    }
    return strctResult;
}

STRCT_DevResult CLS_RefDevStore::GetNodesOfRoot(const QString& _qstrRootId,
                                                QMap<QString, CLS_CustomTreeNode>& _qmapNodes, int _iFlag)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    STRCT_DevResult strctResult;
    if (EnterOperation("GetNodesOfRoot", Utf8(_qstrRootId) + "|" + std::to_string(_iFlag), strctResult)) {
        return strctResult;
    }
    for (auto it = m_qmapCustomNodes.cbegin(); it != m_qmapCustomNodes.cend(); ++it) {
        // The root itself, and every node whose chain of parents reaches it. The walk is bounded
        // by the number of nodes, so a loop in the parents ends it.
        bool blBelow = it.key() == _qstrRootId;
        QString qstrParentId = it.value().m_qstrTreeParentId;
        for (int iStep = 0; !blBelow && !qstrParentId.isEmpty() && iStep < m_qmapCustomNodes.size();
             ++iStep) {
            if (qstrParentId == _qstrRootId) {
                blBelow = true;
                break;
            }
            auto itParent = m_qmapCustomNodes.constFind(qstrParentId);
            if (itParent == m_qmapCustomNodes.cend()) {
                break;
            }
            qstrParentId = itParent.value().m_qstrTreeParentId;
        }
        if (blBelow) {
            _qmapNodes.insert(it.key(), it.value());
        }
    }
    return strctResult;
}

bool CLS_RefDevStore::TakeObjectCall(const std::string& _strFunction)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    ++m_mapCallCounts[_strFunction];
    auto it = m_mapObjectAvailable.find(_strFunction);
    return it != m_mapObjectAvailable.end() && it->second;
}

// ---- controls ---------------------------------------------------------------------------------

void CLS_RefDevStore::Reset()
{
    std::lock_guard<std::mutex> lock(m_mtx);
    ResetLocked();
}

void CLS_RefDevStore::ClearItems()
{
    std::lock_guard<std::mutex> lock(m_mtx);
    ClearItemsLocked();
}

int CLS_RefDevStore::AddItem(int _iType, const std::string& _strId, const std::string& _strName,
                             const std::string& _strParentId, int _iOrderNo, int _iStatus, int _iChannelNo,
                             const std::string& _strTreeId)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    return AddItemLocked(_iType, _strId, _strName, _strParentId, _iOrderNo, _iStatus, _iChannelNo,
                         _strTreeId);
}

int CLS_RefDevStore::RemoveItem(const std::string& _strId)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    auto it = m_mapItems.find(_strId);
    if (it == m_mapItems.end()) {
        return -1;
    }
    const unsigned long long ullSeq = it->second.m_ullSeq;
    auto itSiblings = m_mapChildren.find(it->second.m_spItem->m_strParentId);
    if (itSiblings != m_mapChildren.end()) {
        itSiblings->second.erase(ullSeq);
        if (itSiblings->second.empty()) {
            m_mapChildren.erase(itSiblings);
        }
    }
    m_mapOrder.erase(ullSeq);
    m_mapItems.erase(it); // the last strong reference of the layer goes here
    ++m_ullRevision;
    return 0;
}

int CLS_RefDevStore::SetStatus(const std::string& _strId, int _iStatus)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    auto it = m_mapItems.find(_strId);
    if (it == m_mapItems.end()) {
        return -1;
    }
    std::shared_ptr<STRCT_VideoItem> spNew = CloneDevRecord(it->second.m_spItem);
    spNew->m_iStatus = _iStatus;
    Replace(it->second, spNew);
    return 0;
}

int CLS_RefDevStore::SetName(const std::string& _strId, const std::string& _strName)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    auto it = m_mapItems.find(_strId);
    if (it == m_mapItems.end()) {
        return -1;
    }
    std::shared_ptr<STRCT_VideoItem> spNew = CloneDevRecord(it->second.m_spItem);
    spNew->m_strName = _strName;
    Replace(it->second, spNew);
    return 0;
}

int CLS_RefDevStore::SetDevBindType(const std::string& _strId, int _iDevBindType)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    auto it = m_mapItems.find(_strId);
    if (it == m_mapItems.end()) {
        return -1;
    }
    std::shared_ptr<STRCT_VideoItem> spNew = CloneDevRecord(it->second.m_spItem);
    spNew->m_iDevBindType = _iDevBindType;
    Replace(it->second, spNew);
    return 0;
}

int CLS_RefDevStore::GetStatus(const std::string& _strId, int& _iStatus)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    auto it = m_mapItems.find(_strId);
    if (it == m_mapItems.end()) {
        return -1;
    }
    _iStatus = it->second.m_spItem->m_iStatus;
    return 0;
}

int CLS_RefDevStore::ItemCount()
{
    std::lock_guard<std::mutex> lock(m_mtx);
    return static_cast<int>(m_mapItems.size());
}

int CLS_RefDevStore::SetStatusOnLookup(const std::string& _strId, int _iStatus)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    auto it = m_mapItems.find(_strId);
    if (it == m_mapItems.end()) {
        return -1;
    }
    it->second.m_blStatusOnLookup = true;
    it->second.m_iStatusOnLookup = _iStatus;
    return 0;
}

int CLS_RefDevStore::SetStale(const std::string& _strId, int _iWhere)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    auto it = m_mapItems.find(_strId);
    if (it == m_mapItems.end()) {
        return -1;
    }
    it->second.m_iStale = _iWhere;
    return 0;
}

void CLS_RefDevStore::SetStaleEntries(int _iCount)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    m_iStaleEntries = _iCount < 0 ? 0 : _iCount;
}

int CLS_RefDevStore::SetObjectAvailable(const std::string& _strFunction, bool _blAvailable)
{
    if (!IsObjectFunction(_strFunction)) {
        return -1;
    }
    std::lock_guard<std::mutex> lock(m_mtx);
    m_mapObjectAvailable[_strFunction] = _blAvailable;
    return 0;
}

void CLS_RefDevStore::SetIdAdmitted(const std::string& _strId, bool _blAdmitted)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    if (_strId.empty()) {
        m_blAdmittedDefault = _blAdmitted;
    } else {
        m_mapAdmitted[_strId] = _blAdmitted;
    }
}

void CLS_RefDevStore::SetDeviceParam(const std::string& _strId, int _iValue)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    if (_strId.empty()) {
        m_iDeviceParamDefault = _iValue;
    } else {
        m_mapDeviceParam[_strId] = _iValue;
    }
}

int CLS_RefDevStore::FailNext(const std::string& _strOperation, int _iCount, int _iCode)
{
    if (FailableOperations().count(_strOperation) == 0) {
        return -1;
    }
    std::lock_guard<std::mutex> lock(m_mtx);
    STRCT_Failure& strctFailure = m_mapFailures[_strOperation];
    strctFailure.m_iCount = _iCount < 0 ? 0 : _iCount;
    strctFailure.m_iCode = _iCode < 0 ? _iCode : -1;
    return 0;
}

int CLS_RefDevStore::CallCount(const std::string& _strOperation)
{
    if (!IsCountedOperation(_strOperation)) {
        return -1;
    }
    std::lock_guard<std::mutex> lock(m_mtx);
    auto it = m_mapCallCounts.find(_strOperation);
    return it == m_mapCallCounts.end() ? 0 : it->second;
}

int CLS_RefDevStore::LastCall(const std::string& _strOperation, std::string& _strArgs)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    auto it = m_mapLastCalls.find(_strOperation);
    if (it == m_mapLastCalls.end()) {
        return -1;
    }
    _strArgs = it->second;
    return 0;
}

int CLS_RefDevStore::AddCustomNode(const CLS_CustomTreeNode& _clsNode)
{
    if (_clsNode.m_qstrTreeId.isEmpty()) {
        return -1;
    }
    std::lock_guard<std::mutex> lock(m_mtx);
    CLS_CustomTreeNode clsNode = _clsNode;
    auto itParent = m_qmapCustomNodes.constFind(clsNode.m_qstrTreeParentId);
    if (!clsNode.m_qstrTreeParentId.isEmpty() && itParent != m_qmapCustomNodes.cend()) {
        clsNode.m_qstrDevParentId = itParent.value().m_qstrDevId;
    }
    m_qmapCustomNodes.insert(clsNode.m_qstrTreeId, clsNode);
    return 0;
}

int CLS_RefDevStore::RemoveCustomNode(const QString& _qstrTreeId)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    return m_qmapCustomNodes.remove(_qstrTreeId) > 0 ? 0 : -1;
}

void CLS_RefDevStore::ClearCustomTree()
{
    std::lock_guard<std::mutex> lock(m_mtx);
    m_qmapCustomNodes.clear();
}

// ---- whole installations --------------------------------------------------------------------------

int CLS_RefDevStore::LoadInstallation(const STRCT_RefInstallation& _strctInstallation)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    ResetLocked();
    m_strLoadError.clear();
    for (const STRCT_RefItemValues& strctValues : _strctInstallation.m_vecItems) {
        std::shared_ptr<STRCT_VideoItem> spItem = MakeDevRecord(strctValues.m_iType);
        if (!spItem || strctValues.m_strId.empty() || m_mapItems.count(strctValues.m_strId) > 0) {
            continue; // the reader and the generator never hand such an item in
        }
        spItem->m_strId = strctValues.m_strId;
        spItem->m_strName = strctValues.m_strName;
        spItem->m_strParentId = strctValues.m_strParentId;
        spItem->m_iOrderNo = strctValues.m_iOrderNo;
        spItem->m_iStatus = strctValues.m_iStatus;
        spItem->m_strTreeId = strctValues.m_strTreeId.empty() ? strctValues.m_strId : strctValues.m_strTreeId;
        spItem->m_strExtend = strctValues.m_strExtend;
        spItem->m_iDevBindType = strctValues.m_iDevBindType;
        if (int* pChannelNo = DevRecordChannelNo(spItem.get())) {
            *pChannelNo = strctValues.m_iChannelNo;
        }
        if (STRCT_DevHost* pHost = dynamic_cast<STRCT_DevHost*>(spItem.get())) {
            pHost->m_strAddress = strctValues.m_strAddress;
            pHost->m_iPort = strctValues.m_iPort;
        } else if (STRCT_DevDecoder* pDecoder = dynamic_cast<STRCT_DevDecoder*>(spItem.get())) {
            pDecoder->m_strAddress = strctValues.m_strAddress;
            pDecoder->m_iPort = strctValues.m_iPort;
        } else if (STRCT_DevChannel* pChannel = dynamic_cast<STRCT_DevChannel*>(spItem.get())) {
            pChannel->m_iStreamType = strctValues.m_iStreamType;
        }
        InsertLocked(spItem);
    }
    for (const CLS_CustomTreeNode& clsNode : _strctInstallation.m_qvecNodes) {
        if (!clsNode.m_qstrTreeId.isEmpty()) {
            m_qmapCustomNodes.insert(clsNode.m_qstrTreeId, clsNode);
        }
    }
    for (const auto& pairParam : _strctInstallation.m_mapImageParams) {
        m_mapDeviceParam[pairParam.first] = pairParam.second;
    }
    return static_cast<int>(m_mapItems.size());
}

void CLS_RefDevStore::FailLoad(const std::string& _strError)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    ResetLocked();
    m_strLoadError = _strError;
}

std::string CLS_RefDevStore::LoadError()
{
    std::lock_guard<std::mutex> lock(m_mtx);
    return m_strLoadError;
}

bool CLS_RefDevStore::SimulateStep(std::mt19937& _rng, std::string& _strId, int& _iStatus)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    // Candidates in insertion order, so that one seed picks the same ids in the same installation.
    if (m_ullSimRevision != m_ullRevision) {
        m_vecSimHosts.clear();
        m_vecSimChannels.clear();
        for (const auto& pairOrder : m_mapOrder) {
            STRCT_Entry& strctEntry = m_mapItems.at(pairOrder.second);
            const int iType = strctEntry.m_spItem->GetType();
            if (3 == iType) {
                m_vecSimHosts.push_back(&strctEntry);
            } else if (4 == iType) {
                m_vecSimChannels.push_back(&strctEntry);
            }
        }
        m_ullSimRevision = m_ullRevision;
    }
    const std::vector<STRCT_Entry*>& vecHosts = m_vecSimHosts;
    const std::vector<STRCT_Entry*>& vecChannels = m_vecSimChannels;
    if (vecHosts.empty() && vecChannels.empty()) {
        return false;
    }

    // One event in eight is a host, unless there are only hosts or only channels.
    STRCT_Entry* pEntry = nullptr;
    const bool blHost = vecChannels.empty() || (!vecHosts.empty() && 0 == _rng() % 8);
    const std::vector<STRCT_Entry*>& vecFrom = blHost ? vecHosts : vecChannels;
    pEntry = vecFrom[std::uniform_int_distribution<size_t>(0, vecFrom.size() - 1)(_rng)];

    // A channel below an off-line host cannot come on line by itself: its event brings the host
    // back instead.
    if (!blHost) {
        auto itParent = m_mapItems.find(pEntry->m_spItem->m_strParentId);
        if (itParent != m_mapItems.end() && 3 == itParent->second.m_spItem->GetType() &&
            1 != itParent->second.m_spItem->m_iStatus) {
            pEntry = &itParent->second;
        }
    }

    const int iNewStatus = 1 == pEntry->m_spItem->m_iStatus ? 0 : 1;
    _strId = pEntry->m_spItem->m_strId;
    _iStatus = iNewStatus;
    SetStatusLocked(*pEntry, iNewStatus);
    if (3 == pEntry->m_spItem->GetType()) {
        // A host takes its channels with it, off line and back on line.
        auto itChildren = m_mapChildren.find(_strId);
        if (itChildren != m_mapChildren.end()) {
            for (const auto& pairChild : itChildren->second) {
                STRCT_Entry& strctChild = m_mapItems.at(pairChild.second);
                if (4 == strctChild.m_spItem->GetType()) {
                    SetStatusLocked(strctChild, iNewStatus);
                }
            }
        }
    }
    return true;
}
