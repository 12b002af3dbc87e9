#pragma once
// The in-memory installation of the reference device layer: resource items, custom-tree nodes,
// the device factory's answers, and the test controls (failures, stale pointers, call records).
// One process-wide instance, never destroyed, so that a status thread still polling at exit
// never meets a dead store.
//
// Threading: every member function takes m_mtx for its whole length and calls nothing outside
// the store while holding it, so it is safe from any thread. Items are handed out as weak
// pointers and never changed after that: a change replaces the item by a changed copy.

#include "CLS_IResourceTree.h"
#include "STRCT_DevResult.h"
#include "TreeStructDefine.h"

#include <QMap>
#include <QString>
#include <QVector>

#include <map>
#include <memory>
#include <mutex>
#include <random>
#include <string>
#include <vector>

struct STRCT_RefInstallation;

class CLS_RefDevStore
{
public:
    static CLS_RefDevStore& Instance();

    CLS_RefDevStore(const CLS_RefDevStore&) = delete;
    CLS_RefDevStore& operator=(const CLS_RefDevStore&) = delete;

    // ---- operations of the resource tree, the device factory and the custom tree ----
    STRCT_DevResult GetAllItems(QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapItems);
    STRCT_DevResult GetItem(std::weak_ptr<STRCT_VideoItem>& _wpItem, const QString& _qstrId);
    STRCT_DevResult GetItemOfChannel(std::weak_ptr<STRCT_VideoItem>& _wpItem, const QString& _qstrId,
                                     int _iChannelNo, int _iFlag);
    STRCT_DevResult ListItemsOfType(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems, int _iType,
                                    const QVector<QString>& _qvecFilterIds);
    STRCT_DevResult ListIdsOfType(int _iType, QVector<QString>& _qvecIds);
    STRCT_DevResult ListChildren(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems,
                                 const QString& _qstrParentId);
    bool IsIdAdmitted(const QString& _qstrId);
    int QueryDeviceParam(const QString& _qstrDevId, int _iChannelNo, int _iParamType,
                         QMap<QString, QString>& _qmapValues, QString& _qstrValue);
    STRCT_DevResult GetAllNodes(QMap<QString, CLS_CustomTreeNode>& _qmapNodes, int _iFlag);
    STRCT_DevResult GetNodesOfRoot(const QString& _qstrRootId, QMap<QString, CLS_CustomTreeNode>& _qmapNodes,
                                   int _iFlag);

    // Counts a call of the exported object function and tells whether it gives its object.
    bool TakeObjectCall(const std::string& _strFunction);

    // ---- controls (see DevManageControl.h) ----
    void Reset();
    void ClearItems();
    int AddItem(int _iType, const std::string& _strId, const std::string& _strName,
                const std::string& _strParentId, int _iOrderNo, int _iStatus, int _iChannelNo,
                const std::string& _strTreeId);
    int RemoveItem(const std::string& _strId);
    int SetStatus(const std::string& _strId, int _iStatus);
    int SetName(const std::string& _strId, const std::string& _strName);
    int SetDevBindType(const std::string& _strId, int _iDevBindType);
    int GetStatus(const std::string& _strId, int& _iStatus);
    int ItemCount();
    int SetStatusOnLookup(const std::string& _strId, int _iStatus);
    int SetStale(const std::string& _strId, int _iWhere);
    void SetStaleEntries(int _iCount);
    int SetObjectAvailable(const std::string& _strFunction, bool _blAvailable);
    void SetIdAdmitted(const std::string& _strId, bool _blAdmitted);
    void SetDeviceParam(const std::string& _strId, int _iValue);
    int FailNext(const std::string& _strOperation, int _iCount, int _iCode);
    int CallCount(const std::string& _strOperation);
    // The last call's arguments into _strArgs; -1 when unknown or never called.
    int LastCall(const std::string& _strOperation, std::string& _strArgs);
    int AddCustomNode(const CLS_CustomTreeNode& _clsNode);
    int RemoveCustomNode(const QString& _qstrTreeId);
    void ClearCustomTree();

    // ---- whole installations (CLS_RefInstallation) ----
    // Reset, then every item, node and image answer of _strctInstallation, all under one hold of
    // the lock: a reader sees the old installation or the new one, never a part. Forgets the last
    // load error. Returns the number of resource items.
    int LoadInstallation(const STRCT_RefInstallation& _strctInstallation);
    // Reset, and keep _strError as the last load error.
    void FailLoad(const std::string& _strError);
    std::string LoadError();

    // One event of the status simulation, made the way SetStatus makes a change: a random host or
    // channel changes its state (see CLS_RefDevSimulator). False when there is neither; otherwise
    // the picked id and its new status.
    bool SimulateStep(std::mt19937& _rng, std::string& _strId, int& _iStatus);

private:
    CLS_RefDevStore();

    struct STRCT_Entry
    {
        std::shared_ptr<STRCT_VideoItem> m_spItem; // the one strong reference of the layer
        unsigned long long m_ullSeq = 0;           // insertion order
        int m_iStale = 0;                          // n_DevManageCtlStale bits
        bool m_blStatusOnLookup = false;           // one-shot status change at GetItemOfChannel
        int m_iStatusOnLookup = 0;
    };

    struct STRCT_Failure
    {
        int m_iCount = 0;
        int m_iCode = -1;
    };

    // All of these expect m_mtx held.
    void ResetLocked();
    void ClearItemsLocked();
    // Counts the call, keeps its arguments, and gives true (with the code set) when it must fail.
    bool EnterOperation(const char* _pOperation, const std::string& _strArgs, STRCT_DevResult& _strctResult);
    void Replace(STRCT_Entry& _strctEntry, const std::shared_ptr<STRCT_VideoItem>& _spNew);
    std::weak_ptr<STRCT_VideoItem> HandOut(const STRCT_Entry& _strctEntry, int _iStaleBit) const;
    void AppendStaleEntries(QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems) const;
    // Takes _spItem into the installation, after the items already there.
    void InsertLocked(const std::shared_ptr<STRCT_VideoItem>& _spItem);
    // Replaces the item by a copy with _iStatus, when that differs; true if it changed.
    bool SetStatusLocked(STRCT_Entry& _strctEntry, int _iStatus);
    int AddItemLocked(int _iType, const std::string& _strId, const std::string& _strName,
                      const std::string& _strParentId, int _iOrderNo, int _iStatus, int _iChannelNo,
                      const std::string& _strTreeId);

    std::mutex m_mtx;
    std::map<std::string, STRCT_Entry> m_mapItems;        // resource id -> item
    std::map<unsigned long long, std::string> m_mapOrder; // insertion order -> resource id
    std::map<std::string, std::map<unsigned long long, std::string>> m_mapChildren; // parent id -> children
    unsigned long long m_ullNextSeq = 0;
    int m_iStaleEntries = 0;
    std::map<std::string, bool> m_mapAdmitted;
    bool m_blAdmittedDefault = true;
    std::map<std::string, int> m_mapDeviceParam;
    int m_iDeviceParamDefault = 0;
    std::map<std::string, STRCT_Failure> m_mapFailures;
    std::map<std::string, int> m_mapCallCounts;
    std::map<std::string, std::string> m_mapLastCalls;
    std::map<std::string, bool> m_mapObjectAvailable; // "GetResourceTree", "GetDevFactory", "GetCustomTree"
    QMap<QString, CLS_CustomTreeNode> m_qmapCustomNodes; // tree id -> node
    std::string m_strLoadError;                          // kept by Reset: it belongs to the last load
    // The simulation's candidates in insertion order, made again when m_ullRevision has moved on
    // (items added or removed). Entries of a std::map stay where they are until erased.
    unsigned long long m_ullRevision = 0;
    unsigned long long m_ullSimRevision = ~0ULL;
    std::vector<STRCT_Entry*> m_vecSimHosts;
    std::vector<STRCT_Entry*> m_vecSimChannels;
};
