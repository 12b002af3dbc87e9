#pragma once
// The device tree a page embeds: the installation's resources as a tree of rows. Keeps its own model
// (CLS_CustomTreeNode records by tree id), turns resources and nodes into CLS_TreeItem rows of its
// panel, and turns the panel's row signals into node signals for pages. Reaches the base tree only
// through the panel. GUI thread, except Init, which may be called from any thread (rows are made on
// the widget's thread in SlotInit).

#include "CLS_DeviceTreeDragData.h"
#include "CLS_DeviceTreeMultiSelect.h"
#include "CLS_DeviceTreeOperatorView.h"
#include "CLS_DeviceTreeWordSearch.h"
#include "TreeStructDefine.h"

#include <QAtomicInt>
#include <QByteArray>
#include <QHash>
#include <QList>
#include <QMap>
#include <QMutex>
#include <QPair>
#include <QSet>
#include <QString>
#include <QTimer>
#include <QVariant>
#include <QVector>
#include <QWidget>

#include <memory>
#include <string>

class CLS_DeviceTreeBGThread;
class CLS_WgtBaseTreeWidget;
class CLS_WgtTreeWidget;
struct STRCT_VideoItem;
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
// Qt 6's meta-object code needs the complete type of every slot argument (Qt 5's did not).
Q_MOC_INCLUDE("DevStructDefine.h")
#endif

// Which channel rows a device tree shows (SetStatusFilter): all, those on line (status 1) or those
// off line (any other status), with the rows that lead to them.
enum n_StatusFilter : int
{
    STATUS_FILTER_ALL = 0,
    STATUS_FILTER_ONLINE = 1,
    STATUS_FILTER_OFFLINE = 2,
};

class CLS_WgtDeviceTree : public QWidget
{
    Q_OBJECT

public:
    // The five flags in order: drag, check boxes, right-click menu, search line, drop.
    CLS_WgtDeviceTree(QWidget* parent = nullptr, n_DevTreeType _iTreeType = DEV_TREE_RESOURCE,
                      bool _blDrag = false, bool _blCheck = false, bool _blRightMenu = false,
                      bool _blSearch = false, bool _blDrop = false,
                      n_ItemBtnShowType _iBtnShowType = ITEM_BTN_SHOW_ALWAYS);
    ~CLS_WgtDeviceTree() override;

    // Builds the tree from the device layer's own data: the custom tree, its favourites part or all
    // resources, by tree type. First of the tree's virtual operations; subclasses extend it.
    virtual int
    Init(const QString& _qstrRootName,
         const QMap<int, QVector<CLS_ItemButton>>& _qmapItemBtns = QMap<int, QVector<CLS_ItemButton>>(),
         const QSet<int>& _qsetNodeTypes = QSet<int>(), const QSet<int>& _qsetDevBindTypes = QSet<int>());

public slots:
    // Builds from ready nodes. The caller's map may gain a root node.
    int Init(QMap<QString, CLS_CustomTreeNode>& _qmapNodes, QString _qstrRootName = QString(),
             QMap<int, QVector<CLS_ItemButton>> _qmapItemBtns = QMap<int, QVector<CLS_ItemButton>>(),
             QSet<int> _qsetNodeTypes = QSet<int>(), QSet<int> _qsetDevBindTypes = QSet<int>());
    // Builds from resources the caller owns; they are read during the call only. _qmapNodes are
    // extra lookup nodes without rows.
    int Init(QMap<QString, STRCT_VideoItem*> _qmapData, QString _qstrRootName = QString(),
             QMap<int, QVector<CLS_ItemButton>> _qmapItemBtns = QMap<int, QVector<CLS_ItemButton>>(),
             QSet<int> _qsetNodeTypes = QSet<int>(), QSet<int> _qsetDevBindTypes = QSet<int>(),
             QMap<QString, CLS_CustomTreeNode> _qmapNodes = QMap<QString, CLS_CustomTreeNode>());
    // Builds from the device layer's resources; each is locked only for its own step. A resource
    // tree's map may gain an expired "resource_root_id" entry.
    int Init(QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapData, QString _qstrRootName = QString(),
             QMap<int, QVector<CLS_ItemButton>> _qmapItemBtns = QMap<int, QVector<CLS_ItemButton>>(),
             QSet<int> _qsetNodeTypes = QSet<int>(), QSet<int> _qsetDevBindTypes = QSet<int>());

    // Empties the rows and the model. The status thread keeps running.
    void Clear();

    // Changes, one resource or node at a time. The QString forms are the extension points.
    virtual int AddItem(QString _qstrTreeId);
    virtual int AddItems(QVector<QString> _qvecItems, bool _blSendSignal = false);
    int AddItems(const QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems, bool _blSendSignal = false);
    int AddItems(QVariant _qvarNodes);
    virtual int ModifyItem(QString _qstrTreeId);
    // Changes only the first known node that makes a row (kept: pages call once per node).
    virtual int ModifyItems(QList<CLS_CustomTreeNode> _qvecNodes);
    // Empty here on purpose: 0 and no change. For subclasses.
    virtual int ModifyItems(QVector<QString> _qvecItems, bool _blSendSignal = false);
    int ModifyItems(const QVector<STRCT_VideoItem*>& _qvecItems, bool _blSendSignal = false);
    int ModifyCaptionByChannelId(const QString& _qstrChannelID, const QString& _qstrCaption);
    virtual int DeleteItem(QString _qstrId);
    virtual int DeleteItems(QVector<QString> _qvecIds, bool _blSendSignal = false);
    // Empty here on purpose: 0 and no change. For subclasses.
    virtual int MoveNodes(QVector<QString> _qvecItems, int _iMoveType = -1);
    int MoveNodes(const QVector<STRCT_VideoItem*>& _qvecItems, int _iMoveType = -1);

    // Channel states from the status thread (QMap<QString,QPair<bool,int>> in the variant).
    int UpdateAllChannelsStatus(QVariant _qvarData);
    // Declared interface only: always -1.
    int UpdateAllChannelsStatus(const QMap<QString, int>& _qmapData);
    // Host on line (3) or off line (4, 41) by a device-layer event; resource trees only.
    int UpdateHostStatus(QString _strId, int _iCmdType, void* _pParam = nullptr);

    // Check state of a row; an empty id addresses the root row. Silent unless _blSend.
    void SetItemCheckStatus(const QString& _qstrId, Qt::CheckState _iState, bool _blSend = false);
    void SetItemDisabled(const QString& _qstrId, bool blState);
    void ClearSelect();
    void ShowSearch();
    void ClearSearch();
    void ClearAndCloseSearch();

public:
    // Empties the model alone: nodes, id map, button templates, root id. The type sets stay.
    void ClearData();
    void SetName(const QString& _qstrName);
    QString GetName();
    // Inserts the nodes into the model without rows or id-map entries. Always 0.
    int UpdateNodesMap(const QMap<QString, CLS_CustomTreeNode>& _qmapNodes);
    int LoadStyle();
    int LoadLang();
    // Shows the panel's context menu with these entries; nothing without a panel.
    void ShowMenu(const QList<_MenuItem>& _qlstItems);

    // Builds: nodes into the model, rows into _qmapItems.
    int BuildTreeItems(const QMap<QString, STRCT_VideoItem*>& _qmapData, const QString& _qstrRootName,
                       QMap<QString, CLS_TreeItem>& _qmapItems);
    int BuildTreeItems(const QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapData,
                       const QString& _qstrRootName, QMap<QString, CLS_TreeItem>& _qmapItems);
    int BuildTreeItems(const QMap<QString, CLS_CustomTreeNode>& _qmapNodes, const QString& _qstrRootName,
                       QMap<QString, CLS_TreeItem>& _qmapItems);
    // Rows of the model as it stands. Always 0.
    int BuildTreeItems(const QString& _qstrRootId, QMap<QString, CLS_TreeItem>& _qmapItems);
    // Nodes only; the root's tree id goes to _qstrRootId.
    int BuildTreeNodes(const QMap<QString, STRCT_VideoItem*>& _qmapData, const QString& _qstrRootName,
                       QString& _qstrRootId);
    // This tree's current resources from the device layer, appended to _qmapData.
    int GetVideoData(QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapData);
    // The resource of one tree id out of GetVideoData: its result when negative, -1 when absent.
    int FindVideoItem(const QString& _qstrTreeId, std::weak_ptr<STRCT_VideoItem>& _wpItem);

    // Folds groups, hosts and decoders (the root stays open).
    void ExpandHostItem();
    void ExpandAll();
    void CollapseAll();

    // Icon of a node's row for an on-line flag: written to _qstrIcon and set on the row.
    int UpdateNodeOnlineStatus(const QString& _qstrId, bool _blOnline, QString& _qstrIcon);
    // Makes the status thread report every channel again.
    void UpdateChannelStatus();

    // Queries. Vectors are appended to; a single out-record is written only on success.
    int GetItemById(const QString& _qstrId, CLS_CustomTreeNode& _node);
    int GetItemByDevId(const QString& _qstrDevId, CLS_CustomTreeNode& _node);
    int GetItemByChannelId(const QString& _qstrChannelId, CLS_CustomTreeNode& _node);
    // 0 also when no child has the channel id: _node is then left alone.
    int GetItemByChannelId(const QString& _qstrParentId, const QString& _qstrChannelId,
                           CLS_CustomTreeNode& _node);
    int GetChilds(const QString& _qstrId, QVector<CLS_CustomTreeNode>& _qvecNodes, bool _blAll);
    int GetChildsByDevId(const QString& _qstrDevId, QVector<CLS_CustomTreeNode>& _qvecNodes);
    int GetChannelsById(const QString& _qstrId, QVector<CLS_CustomTreeNode>& _qvecNodes);
    int GetParent(const QString& _qstrId, CLS_CustomTreeNode& _node);
    int GetParentByDevId(const QString& _qstrDevId, CLS_CustomTreeNode& _node);
    int GetAllNodeParent(const QVector<QString>& _qvecIds, QVector<QString>& _qvecParentIds);
    int GetCurrentItem(CLS_CustomTreeNode& _node);
    int GetItemCheckStatus(const QString& _qstrId, Qt::CheckState& _iState);
    int GetCheckedChannel(QVector<CLS_CustomTreeNode>& _qvecNodes);
    int GetAllCheckedItems(QVector<CLS_CustomTreeNode>& _qvecNodes);
    int GetCheckedGroup(QVector<CLS_CustomTreeNode>& _qvecNodes);
    static bool SortChannel(const CLS_CustomTreeNode& _left, const CLS_CustomTreeNode& _right);

    void SetCurrentItem(const QString& _qstrId, bool _blSend = false);

    // What operators keep an eye on; all off until a page turns them on (README: "Status filter,
    // channel counts and view state").
    // Shows only the channels of the n_StatusFilter and the rows above them; the root always shows.
    // Rows it hides are hidden rows to the rest of the tree. 0, or -1 (no change) for another value.
    int SetStatusFilter(int _iFilter) { return m_pOperatorView->SetStatusFilter(_iFilter); }
    int GetStatusFilter() const { return m_pOperatorView->GetStatusFilter(); }
    // Paints "online/total" at the right end of every row with channels below it.
    void SetShowChannelCounts(bool _blShow) { m_pOperatorView->SetShowChannelCounts(_blShow); }
    bool GetShowChannelCounts() const { return m_pOperatorView->GetShowChannelCounts(); }
    // Channels (type 4) below the node by rows, on line meaning status 1; -1 for an unknown id.
    // Answers whether or not the counts are shown (the first question starts keeping them).
    int GetChannelCounts(const QString& _qstrTreeId, int& _iOnline, int& _iTotal) const;
    // Expanded rows, current row and first row in view, by tree id (docs/view-state-format.md).
    QByteArray SaveViewState() const { return m_pOperatorView->SaveViewState(); }
    // 0, or -1 for bytes it cannot read (nothing changes). No signal for the restored current row.
    int RestoreViewState(const QByteArray& _qbaState) { return m_pOperatorView->RestoreViewState(_qbaState); }
    // While on, each Init after an earlier Init or Clear gives back what was open before it.
    void SetKeepViewState(bool _blKeep) { m_pOperatorView->SetKeepViewState(_blKeep); }
    bool GetKeepViewState() const { return m_pOperatorView->GetKeepViewState(); }

    // Finding and taking rows; all off until a page turns them on (README: "Search by words,
    // several rows and the drag payload").
    // 0: the search line matches the row text as one piece; 1: every word of the line, in any
    // order, in the node's name or its m_qstrExtend. Another value changes nothing.
    void SetSearchMode(int _iMode) { m_pWordSearch->SetSearchMode(_iMode); }
    int GetSearchMode() const { return m_pWordSearch->GetSearchMode(); }
    // Result entries read "Name — Parent / Grandparent" (at most three parents, the root left out).
    void SetSearchShowsPath(bool _blShow) { m_pWordSearch->SetSearchShowsPath(_blShow); }
    bool GetSearchShowsPath() const { return m_pWordSearch->GetSearchShowsPath(); }
    // Ctrl and Shift extend the selection; SignSelected and GetCurrentItem stay with the current row.
    void SetMultiSelect(bool _blOn) { m_pMultiSelect->SetMultiSelect(_blOn); }
    bool GetMultiSelect() const { return m_pMultiSelect->GetMultiSelect(); }
    // The selected nodes in row order, appended. 0.
    int GetSelectedNodes(QVector<CLS_CustomTreeNode>& _qvecNodes) const
    {
        return m_pMultiSelect->GetSelectedNodes(_qvecNodes);
    }
    // A drag payload for these nodes (docs/drag-payload-format.md); the caller owns it. A drag of
    // the tree's rows carries the same for the rows it takes.
    QMimeData* CreateDragData(const QVector<QString>& _qvecTreeIds) const
    {
        return m_pMultiSelect->CreateDragData(_qvecTreeIds);
    }
    // The nodes of such a payload, appended; -1 (nothing appended) for a null payload, one without
    // "application/x-wgttree-nodes", or bytes that are not such a node list.
    static int ReadDragData(const QMimeData* _pData, QVector<CLS_CustomTreeNode>& _qvecNodes)
    {
        return CLS_DeviceTreeDragData::Read(_pData, _qvecNodes);
    }

signals:
    void SignInit(QString _qstrRootId, QVariant _varData);
    void SignClear();

    // Resource ids. SignAddNode has no emitter in this library; it is declared for pages.
    void SignAddNode(QVector<std::string> _qvecDevIds);
    void SignModifyNode(QVector<std::string> _qvecDevIds);
    void SignDeleteNode(QVector<std::string> _qvecDevIds);

    // The channel-state batch as it came in, after it was applied.
    void SignUpdateChannelsStatus(QVariant _qvarData);
    // Asks the status thread to forget its cache.
    void SignChannelStatusUpdate();

    // Node-level signals; every node is a copy of the model's record.
    void SignClicked(CLS_CustomTreeNode _node);
    void SignDblClicked(CLS_CustomTreeNode _node);
    void SignCheckedStatusChanged(CLS_CustomTreeNode _node, bool _blChecked);
    void SignSelected(CLS_CustomTreeNode _node);
    void SignRightClicked(CLS_CustomTreeNode _node);
    void SignRightMenuItemClicked(CLS_CustomTreeNode _node, QString _qstrItemId, bool _blChecked);
    void SignToolButtonClicked(QString _qstrCmd, CLS_CustomTreeNode _node, CLS_ItemButton _button);
    // Reached only if a page connects SlotChecked itself.
    void SignChecked(CLS_CustomTreeNode _node, bool _blChecked);
    // Check changes of one 200 ms batch in order of arrival; _pWgtPanel is always null here.
    void SignCheckedStatusChangedQueue(QVector<QPair<CLS_CustomTreeNode, bool>> _qvecCheckChangedQueue,
                                       void* _pWgtPanel = nullptr);
    // Declared for pages; no emitter in this library.
    void SignLocationChanged(QString _qstrSrcParentId, QString _qstrDstParentId, QString _qstrChannelId,
                             QVector<QString> _qvecTreeNodeIds, void* _pParam);

protected slots:
    void SlotInit(QString _qstrRootId, QVariant _varData);

    int AddItem(std::weak_ptr<STRCT_VideoItem> _pItem);
    int AddItem(CLS_CustomTreeNode _node);
    int ModifyItem(STRCT_VideoItem* _pItem);
    int MoveUpOneRow(const QString& _qstrSrcId, const QString& _qstrDesId);
    int MoveDownOneRow(const QString& _qstrSrcId, const QString& _qstrDesId);

    // Row signals of the panel to node signals.
    void SlotClicked(QString _qstrId, CLS_TreeItem _clsData);
    void SlotDblClicked(QString _qstrId, CLS_TreeItem _clsData);
    void SlotCheckedStatusChange(QString _qstrId, bool _blChecked, CLS_TreeItem _clsData);
    void SlotSelected(QString _qstrId, CLS_TreeItem _clsData, QString _qstrOldId);
    void SlotRightClicked(QString _qstrId, CLS_TreeItem _clsData);
    void SlotTreeMenuItemClicked(QString _qstrItemId, bool _blChecked);
    void SlotClickButton(QString _qstrId, CLS_ItemButton _clsData);
    // Empty on purpose: a drop is consumed without a change of the model.
    void SlotDroped(CLS_TreeItem _clsDropItem);
    // Connected by nothing in this class.
    void SlotChecked(QString _qstrId, bool _blChecked, CLS_TreeItem _clsData);
    void SlotCheckedSignalWatcherTimeout();

protected:
    void ConnectSignals();

    // Presentation: resource to node, node to row.
    void LoadPicPath();
    int InitNode(STRCT_VideoItem* _pItem, CLS_CustomTreeNode& _node, const QString& _qstrRootName);
    int InitNode(std::weak_ptr<STRCT_VideoItem> _pItem, CLS_CustomTreeNode& _node,
                 const QString& _qstrRootName);
    int CreateItem(CLS_TreeItem& _clsItem, CLS_CustomTreeNode& _node, STRCT_VideoItem* _pItem,
                   const QString& _qstrName);
    int CreateItem(CLS_TreeItem& _clsItem, CLS_CustomTreeNode& _node, std::weak_ptr<STRCT_VideoItem> _pItem,
                   const QString& _qstrName);
    int InitItem(const CLS_CustomTreeNode& _node, CLS_TreeItem& _clsItem, bool _blRoot, bool _blUseStatus);
    void SetItemIcon(const CLS_CustomTreeNode& _node, CLS_TreeItem& _clsItem, bool _blRoot);
    void CreateItemToolBtn(const CLS_CustomTreeNode& _node, CLS_TreeItem& _clsItem);
    // Replaces the button templates; rows that exist keep their buttons.
    void SetItemToolButtons(const QMap<int, QVector<CLS_ItemButton>>& _qmapItemBtns);
    // Kept empty: copies nothing, always 0.
    int CloneNode(const CLS_CustomTreeNode& _nodeSrc, CLS_CustomTreeNode& _nodeDst);
    // Kept empty: always false; the status thread asks the device.
    bool IsImageChannel(const QString& _qstrId);

    n_DevTreeType m_iTreeType;
    QMap<QString, CLS_CustomTreeNode> m_qmapNodes;     // tree id -> node; GUI thread, no lock
    QMap<QString, QString> m_qmapDevIdToTreeId;        // device id -> tree id (last inserted wins)
    CLS_WgtTreeWidget* m_pTreePanel = nullptr;         // child widget once the layout takes it
    QString m_qstrPicPath;                             // image folder, with a trailing slash
    QMap<int, QVector<CLS_ItemButton>> m_qmapItemBtns; // button templates by node type
    QString m_qstrRootId;                              // tree id of the root of the last build
    QSet<int> m_qsetNodeTypes;                         // type codes allowed into the tree
    QSet<int> m_qsetDevBindTypes;                      // bind types allowed into the tree
    bool m_blDrag = false;
    bool m_blCheck = false;
    CLS_DeviceTreeBGThread* m_pBGThread = nullptr; // child; made by the first successful build
    QTimer m_tmCheckedWatcher;                     // no parent; 200 ms batch of check changes
    QMutex m_mtxChecked;                           // guards the two below; never held across a call out
    QVector<QPair<CLS_CustomTreeNode, bool>> m_qvecCheckChangedQueue;
    QMap<QString, bool> m_qmapCheckChanged; // id -> _blSend of the latest SetItemCheckStatus

private:
    // Creates and starts the status thread after a successful build.
    void StartStatusThread();
    // Stops and deletes the status thread (destructor).
    void StopStatusThread();
    // Emits SignClear; on a foreign thread empties the model at once (see Clear).
    void EmitClear();
    // The panel's base tree, for a batch of row changes (CLS_TreeRowBatch); null without a panel.
    CLS_WgtBaseTreeWidget* PanelTree() const;
    // The model's record of a row id, copied into _node; false for an empty or unknown id.
    bool LookupNode(const QString& _qstrId, CLS_CustomTreeNode& _node) const;
    // The path of one of the skin's pictures (a button's picture by the button's id), one shared
    // string per picture: every row and record of a build refers to one of a few dozen files, and
    // a status batch writes one per channel. Builds may run on a page's thread (Init) while status
    // batches run on the GUI thread, so the cache has a lock of its own.
    QString PicPath(const QString& _qstrImage) const;
    QString ButtonPicPath(const QString& _qstrButtonId) const;
    QString CachedPicPath(QHash<QString, QString>& _qhashCache, const QString& _qstrKey,
                          const QString& _qstrSuffix) const;
    mutable QMutex m_mtxPicPaths;
    mutable QString m_qstrPicPathOfCache;              // the folder the cache below was made for
    mutable QHash<QString, QString> m_qhashPicPaths;   // picture -> path
    mutable QHash<QString, QString> m_qhashButtonPics; // button id -> path
    // Whether GetChilds of the row, one level, would find a node: stops at the first one and copies
    // no node (a check of the root asks this of every group).
    bool HasChildNode(const QString& _qstrId);

    // Stores one node and row record of a build (the root's id becomes m_qstrRootId).
    void KeepBuiltRow(const CLS_CustomTreeNode& _node, const CLS_TreeItem& _clsItem, bool _blRoot,
                      QMap<QString, CLS_TreeItem>& _qmapItems);
    // Status filter, channel counts and view state; a child of this widget.
    CLS_DeviceTreeOperatorView* m_pOperatorView = nullptr;
    // Search by words and paths; several rows selected and dragged out. Children of this widget.
    CLS_DeviceTreeWordSearch* m_pWordSearch = nullptr;
    CLS_DeviceTreeMultiSelect* m_pMultiSelect = nullptr;

    // Clears that an Init on a foreign thread has queued and whose model part it has already done.
    QAtomicInt m_iQueuedRowClears;
    // True while EmitClear's own emission runs on this widget's thread (GUI thread only).
    bool m_blDirectClear = false;
};
