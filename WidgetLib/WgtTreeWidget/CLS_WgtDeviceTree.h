#pragma once
// The device tree a page embeds: the installation's resources as a tree of rows. Keeps its own model
// (CLS_CustomTreeNode records by tree id), turns resources and nodes into CLS_TreeItem rows of its
// panel, and turns the panel's row signals into node signals for pages. Reaches the base tree only
// through the panel. GUI thread, except Init, which may be called from any thread (rows are made on
// the widget's thread in SlotInit).

#include "CLS_DeviceTreeAccessible.h"
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

/// Which channel rows a device tree shows (CLS_WgtDeviceTree::SetStatusFilter): all, those on line
/// (status 1) or those off line (any other status), each with the rows that lead to them.
enum n_StatusFilter : int
{
    STATUS_FILTER_ALL = 0,     ///< Every row; the filter is off.
    STATUS_FILTER_ONLINE = 1,  ///< Channels with status 1, and the rows above them.
    STATUS_FILTER_OFFLINE = 2, ///< Channels with any status but 1, and the rows above them.
};

/// The device tree a client page embeds: the installation's resources (groups, hosts, channels,
/// alarm inputs and outputs, decoders) as a tree of rows.
///
/// Keeps its own model, CLS_CustomTreeNode records by tree id (m_qmapNodes) with a device id -> tree
/// id map, and shows it through a CLS_WgtTreeWidget panel, its child widget. Builds come from the
/// device layer (Init with a root name), from ready nodes, or from resources; a build empties the
/// tree first, and the rows are made on the widget's thread in SlotInit(). The first successful build
/// starts a CLS_DeviceTreeBGThread that reports channel states to UpdateAllChannelsStatus(). Row
/// signals of the panel come out as node signals (SignClicked(), SignCheckedStatusChanged(), ...), with
/// check changes also gathered into 200 ms batches (SignCheckedStatusChangedQueue()).
///
/// Threads: GUI thread (the widget's thread) for everything except the Init forms, which may run on
/// any thread. The model has no lock.
class CLS_WgtDeviceTree : public QWidget
{
    Q_OBJECT

public:
    /// Creates the panel, the layout that holds it, the status-filter, search and selection helpers,
    /// and the wiring to the panel and to the custom-tree manager of the device layer. No rows, no
    /// status thread yet. @p _iTreeType is fixed for the object's life and picks the default type set
    /// (resource tree: hosts, channels, alarm inputs and outputs, decoders; others: groups and
    /// channels). The five flags in order: drag, check boxes, right-click menu, search line, drop;
    /// @p _iBtnShowType says when the rows' tool buttons show. GUI thread.
    CLS_WgtDeviceTree(QWidget* parent = nullptr, n_DevTreeType _iTreeType = DEV_TREE_RESOURCE,
                      bool _blDrag = false, bool _blCheck = false, bool _blRightMenu = false,
                      bool _blSearch = false, bool _blDrop = false,
                      n_ItemBtnShowType _iBtnShowType = ITEM_BTN_SHOW_ALWAYS);
    /// Stops and deletes the status thread (waits for its loop to end), then empties the model and
    /// disconnects the panel from this object's slots. GUI thread.
    ~CLS_WgtDeviceTree() override;

    /// Builds the tree from the device layer's own data, by tree type: the favourites part of the
    /// custom tree (favourites tree), all resources (resource tree), or the whole custom tree (others),
    /// handed on to the matching Init form with the other arguments. First of the tree's virtual
    /// operations; subclasses extend it.
    /// @param _qstrRootName text of the root row.
    /// @param _qmapItemBtns tool-button templates by node type; replace the current ones, also when empty.
    /// @param _qsetNodeTypes type codes allowed into the tree; empty keeps the current set.
    /// @param _qsetDevBindTypes bind types allowed into the tree; empty keeps the current set.
    /// @return 0, or -1 when the application data, the data manager or the needed device-layer object
    /// is missing or its fetch fails (the tree is then left as it was), or the negative result of
    /// the build (the tree is then empty). Any thread.
    virtual int
    Init(const QString& _qstrRootName,
         const QMap<int, QVector<CLS_ItemButton>>& _qmapItemBtns = QMap<int, QVector<CLS_ItemButton>>(),
         const QSet<int>& _qsetNodeTypes = QSet<int>(), const QSet<int>& _qsetDevBindTypes = QSet<int>());

public slots:
    /// Builds from ready nodes: empties the tree (SignClear), makes a row of each node under its own
    /// m_qstrTreeId, emits SignInit() for the rows and starts the status thread. The caller's map may
    /// gain a root node: "custom_root_id" (generic and custom trees) or "favorite_root_id"
    /// (favourites) when missing; a passenger-flow tree always gets a new "passengerflow_root_id".
    /// The other arguments are as for the device-layer form.
    /// @return 0; -1 without a panel; the negative result of the build when the root is refused
    /// (the tree then stays empty). Nodes that are refused are left out silently. Any thread.
    int Init(QMap<QString, CLS_CustomTreeNode>& _qmapNodes, QString _qstrRootName = QString(),
             QMap<int, QVector<CLS_ItemButton>> _qmapItemBtns = QMap<int, QVector<CLS_ItemButton>>(),
             QSet<int> _qsetNodeTypes = QSet<int>(), QSet<int> _qsetDevBindTypes = QSet<int>());
    /// Builds from resources the caller owns; they are read during the call only. The root is the
    /// entry under the tree type's root key ("favorite_root_id", "resource_root_id", else
    /// "custom_root_id"). _qmapNodes are extra lookup nodes put into the model after the build,
    /// without rows or id-map entries.
    /// @return 0; -1 for an empty map or without a panel (the tree is then left as it was); -1 when
    /// the root is missing or refused (the tree is then empty). Any thread.
    int Init(QMap<QString, STRCT_VideoItem*> _qmapData, QString _qstrRootName = QString(),
             QMap<int, QVector<CLS_ItemButton>> _qmapItemBtns = QMap<int, QVector<CLS_ItemButton>>(),
             QSet<int> _qsetNodeTypes = QSet<int>(), QSet<int> _qsetDevBindTypes = QSet<int>(),
             QMap<QString, CLS_CustomTreeNode> _qmapNodes = QMap<QString, CLS_CustomTreeNode>());
    /// Builds from the device layer's resources; each is locked only for its own step. A resource
    /// tree's map may gain an expired "resource_root_id" entry; a missing or expired root is replaced
    /// by a stand-in group.
    /// @return 0; -1 without a panel; the negative result of the build when the root is refused
    /// (the tree then stays empty). Any thread.
    int Init(QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapData, QString _qstrRootName = QString(),
             QMap<int, QVector<CLS_ItemButton>> _qmapItemBtns = QMap<int, QVector<CLS_ItemButton>>(),
             QSet<int> _qsetNodeTypes = QSet<int>(), QSet<int> _qsetDevBindTypes = QSet<int>());

    /// Empties the rows and the model (ClearData()); nothing without a panel. Keeps the view state
    /// first when SetKeepViewState() is on. The clear an Init on another thread queued empties the
    /// rows only. The status thread keeps running. Connected to SignClear; GUI thread.
    void Clear();

    // Changes, one resource or node at a time. The QString forms are the extension points.

    /// Adds the row of the resource with tree id @p _qstrTreeId, looked up in GetVideoData().
    /// @return 0, the negative result of GetVideoData(), or -1 without a panel, when the id is not
    /// found, is already in the tree (but for a favourites tree), or the resource is refused. GUI thread.
    virtual int AddItem(QString _qstrTreeId);
    /// Adds the rows of these tree ids, looked up in GetVideoData() (unknown ids are skipped), as the
    /// weak-pointer form does, with its signal.
    /// @return the number of rows added, or the negative result of GetVideoData(). GUI thread.
    virtual int AddItems(QVector<QString> _qvecItems, bool _blSendSignal = false);
    /// Adds a row per resource in one batch of row changes. Emits SignChannelStatusUpdate() (every
    /// channel reported again, the new ones among them) unless this is a resource tree and
    /// @p _blSendSignal is false. @return the number of rows added. GUI thread.
    int AddItems(const QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems, bool _blSendSignal = false);
    /// Adds the nodes of a `QVector<CLS_CustomTreeNode>` held in @p _qvarNodes. A known tree id is
    /// not refused: its record is replaced, and the panel keeps its row.
    /// @return the number of rows the panel took, or -1 for an invalid variant or without a panel.
    /// GUI thread.
    int AddItems(QVariant _qvarNodes);
    /// Re-reads the resource with tree id @p _qstrTreeId (looked up in GetVideoData()) into its node
    /// and updates its row, icon by status included.
    /// @return 0, the negative result of GetVideoData(), or -1 when the id is unknown here or to the
    /// device layer, or the row is refused. GUI thread.
    virtual int ModifyItem(QString _qstrTreeId);
    /// Replaces the records of the known nodes in order and updates the row of the first one that
    /// makes a row, then stops (kept: pages call once per node). Unknown tree ids are skipped.
    /// @return always 0. GUI thread.
    virtual int ModifyItems(QList<CLS_CustomTreeNode> _qvecNodes);
    /// Empty here on purpose: no change. For subclasses. @return always 0.
    virtual int ModifyItems(QVector<QString> _qvecItems, bool _blSendSignal = false);
    /// Re-reads each resource (the caller owns them; read during the call only) into its node and
    /// updates its row, in one batch. Emits SignModifyNode() with the resource ids of the rows
    /// changed unless this is a resource tree and @p _blSendSignal is false.
    /// @return the number of resources changed. GUI thread.
    int ModifyItems(const QVector<STRCT_VideoItem*>& _qvecItems, bool _blSendSignal = false);
    /// Renames the node of device (channel) id @p _qstrChannelID to @p _qstrCaption and updates its row.
    /// @return 0, or -1 without a panel, for an empty or unknown id, or when the row is refused (the
    /// name in the model is then changed all the same). GUI thread.
    int ModifyCaptionByChannelId(const QString& _qstrChannelID, const QString& _qstrCaption);
    /// Removes the node of tree id @p _qstrId and its id-map entry; the panel drops the row with its
    /// descendants, whose nodes stay in the model until deleted themselves.
    /// @return 0, or -1 without a panel or for an empty or unknown id. GUI thread.
    virtual int DeleteItem(QString _qstrId);
    /// DeleteItem() for each tree id, in one batch. Emits SignDeleteNode() unless this is a resource
    /// tree and @p _blSendSignal is false; its ids are collected after the deletes (kept), so it names
    /// only nodes still in the model. @return the number of nodes deleted. GUI thread.
    virtual int DeleteItems(QVector<QString> _qvecIds, bool _blSendSignal = false);
    /// Empty here on purpose: no change. For subclasses. @return always 0.
    virtual int MoveNodes(QVector<QString> _qvecItems, int _iMoveType = -1);
    /// Moves the row of @p _qvecItems[0] one place up (@p _iMoveType 0) or down (1) by exchanging it
    /// with its sibling @p _qvecItems[1]; the two nodes' sort numbers are exchanged first. The caller
    /// owns the resources. Not for resource trees.
    /// @return the panel's result (0, or -1 when the rows are not siblings or cannot move), or -1 for
    /// another move type (the default among them), a resource tree, not exactly two resources, a null
    /// or unknown one, or no panel (the numbers are then exchanged all the same). GUI thread.
    int MoveNodes(const QVector<STRCT_VideoItem*>& _qvecItems, int _iMoveType = -1);

    /// Applies a batch of channel states from the status thread: @p _qvarData holds a
    /// `QMap<QString, QPair<bool, int>>` of resource id -> (image channel, status). Each known channel
    /// gets the status, the icon for status 0 or 1, and bind type 9 while it is an image channel
    /// without another bind kind (-1 again when it no longer is); the channel counts follow. Emits
    /// SignUpdateChannelsStatus() with the batch afterwards.
    /// @return 0, or -1 without a panel or for a variant of another type. GUI thread (queued from the
    /// status thread).
    int UpdateAllChannelsStatus(QVariant _qvarData);
    /// Declared interface only: changes nothing. @return always -1.
    int UpdateAllChannelsStatus(const QMap<QString, int>& _qmapData);
    /// Host on line (@p _iCmdType 3) or off line (4, 41) by a device-layer event: the icon and status
    /// of host node @p _strId (a tree id) change when they differ. Resource trees only; other nodes and
    /// commands change nothing. @p _pParam is unused.
    /// @return 0, or -1 for an empty or unknown id. GUI thread.
    int UpdateHostStatus(QString _strId, int _iCmdType, void* _pParam = nullptr);

    /// Sets the check state of a row, its children following; an empty id addresses the root row.
    /// Silent unless @p _blSend: then the change and the children's are reported as a click would be
    /// (SignCheckedStatusChanged(), the check batch). A silent set also keeps a later report of the
    /// same row out of the check batch that is open. Nothing without check boxes. GUI thread.
    void SetItemCheckStatus(const QString& _qstrId, Qt::CheckState _iState, bool _blSend = false);
    /// Enables (@p blState false) or disables (true) the row of tree id @p _qstrId; unlike
    /// SetItemCheckStatus() an empty id is not the root. GUI thread.
    void SetItemDisabled(const QString& _qstrId, bool blState);
    /// Clears the selection of the panel's tree. GUI thread.
    void ClearSelect();
    /// Shows the panel's search line and gives it the focus. GUI thread.
    void ShowSearch();
    /// Empties the panel's search line and hides its result list. GUI thread.
    void ClearSearch();
    /// Empties and hides the panel's search line. GUI thread.
    void ClearAndCloseSearch();

public:
    /// Empties the model alone: nodes, id map, button templates, root id. The type sets, the rows and
    /// the status thread stay. GUI thread, or the thread of a running Init.
    void ClearData();
    /// Stores @p _qstrName as the widget's dynamic property "ObjName".
    void SetName(const QString& _qstrName);
    /// The dynamic property "ObjName" (SetName()), empty when never set.
    QString GetName();
    /// Inserts the nodes into the model under the map's keys, without rows or id-map entries; the
    /// channel counts follow. @return always 0. GUI thread.
    int UpdateNodesMap(const QMap<QString, CLS_CustomTreeNode>& _qmapNodes);
    /// Does nothing here. @return always 0.
    int LoadStyle();
    /// Does nothing here. @return always 0.
    int LoadLang();
    /// Shows the panel's context menu with these entries at the cursor; nothing without a panel or
    /// menu. GUI thread.
    void ShowMenu(const QList<_MenuItem>& _qlstItems);

    // Builds: nodes into the model, rows into _qmapItems.

    /// Build from resources the caller owns. The root is the entry under the tree type's root key
    /// ("favorite_root_id", "resource_root_id", else "custom_root_id") and is named @p _qstrRootName;
    /// root keys, empty keys, null resources, empty ids and refused resources make no row. Nodes go
    /// into the model (and m_qstrRootId), rows into @p _qmapItems by tree id.
    /// @return 0, or -1 when the root is missing or refused. Thread of the Init that calls it.
    int BuildTreeItems(const QMap<QString, STRCT_VideoItem*>& _qmapData, const QString& _qstrRootName,
                       QMap<QString, CLS_TreeItem>& _qmapItems);
    /// Build from the device layer's resources, as the raw-pointer form; a missing or expired root is
    /// replaced by a stand-in group with id "resource_root_id".
    /// @return 0, or the negative result of the root's row. Thread of the Init that calls it.
    int BuildTreeItems(const QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapData,
                       const QString& _qstrRootName, QMap<QString, CLS_TreeItem>& _qmapItems);
    /// Build from nodes: the root is the node under the tree type's root key (a default node when
    /// absent), every other node except the root keys makes a row under its own m_qstrTreeId.
    /// @return 0, or the negative result of the root's row. Thread of the Init that calls it.
    int BuildTreeItems(const QMap<QString, CLS_CustomTreeNode>& _qmapNodes, const QString& _qstrRootName,
                       QMap<QString, CLS_TreeItem>& _qmapItems);
    /// Rows of the model as it stands, icons by type; @p _qstrRootId marks the root's row. Nodes of
    /// types not allowed are left out. @return always 0. GUI thread.
    int BuildTreeItems(const QString& _qstrRootId, QMap<QString, CLS_TreeItem>& _qmapItems);
    /// Nodes only, added to the model without clearing it and without rows; the root ("resource_root_id"
    /// for a resource tree, else "custom_root_id") is named @p _qstrRootName and its tree id goes to
    /// @p _qstrRootId. @return 0, or -1 when the root is missing or refused. GUI thread.
    int BuildTreeNodes(const QMap<QString, STRCT_VideoItem*>& _qmapData, const QString& _qstrRootName,
                       QString& _qstrRootId);
    /// This tree's current resources from the device layer, appended to @p _qmapData: for a resource
    /// tree all resources; for the others the resources of the custom tree's non-group nodes, keyed by
    /// tree id (nodes the device layer doesn't know are left out).
    /// @return 0, or -1 when a device-layer object is missing or its listing fails. Any thread.
    int GetVideoData(QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapData);
    /// The resource of one tree id out of GetVideoData(), written to @p _wpItem on success.
    /// @return 0, GetVideoData()'s result when negative, or -1 when absent.
    int FindVideoItem(const QString& _qstrTreeId, std::weak_ptr<STRCT_VideoItem>& _wpItem);

    /// Folds groups, hosts and decoders, despite the name (kept: pages call it by this name); the root
    /// stays open. GUI thread.
    void ExpandHostItem();
    /// Expands every row. GUI thread.
    void ExpandAll();
    /// Collapses every row. GUI thread.
    void CollapseAll();

    /// Icon of a node's row for an on-line flag, by root, type and bind kind: written to @p _qstrIcon
    /// (left as it was for a type without an icon) and set on the row. The node's status stays.
    /// @return 0, or -1 without a panel or for an empty or unknown tree id. GUI thread.
    int UpdateNodeOnlineStatus(const QString& _qstrId, bool _blOnline, QString& _qstrIcon);
    /// Makes the status thread report every channel again: emits SignChannelStatusUpdate(). GUI thread.
    void UpdateChannelStatus();

    // Queries. Vectors are appended to; a single out-record is written only on success. All return
    // 0 on success and -1 (or the panel's negative result) otherwise; GUI thread.

    /// The node of tree id @p _qstrId. @return 0, or -1 for an empty or unknown id.
    int GetItemById(const QString& _qstrId, CLS_CustomTreeNode& _node);
    /// The node of device id @p _qstrDevId (the last one built when several share it).
    /// @return 0, or -1 for an empty or unknown id.
    int GetItemByDevId(const QString& _qstrDevId, CLS_CustomTreeNode& _node);
    /// The node of channel id @p _qstrChannelId, as GetItemByDevId().
    int GetItemByChannelId(const QString& _qstrChannelId, CLS_CustomTreeNode& _node);
    /// The child of row @p _qstrParentId (one level) with device id @p _qstrChannelId.
    /// @return 0 also when no child has the channel id: _node is then left alone; the negative result
    /// of GetChannelsById() for a parent it cannot read.
    int GetItemByChannelId(const QString& _qstrParentId, const QString& _qstrChannelId,
                           CLS_CustomTreeNode& _node);
    /// Nodes of the children of row @p _qstrId, one level or (@p _blAll) all levels, in row order;
    /// rows without a node are left out. @return 0, or -1 without a panel or for an unknown row.
    int GetChilds(const QString& _qstrId, QVector<CLS_CustomTreeNode>& _qvecNodes, bool _blAll);
    /// GetChilds() one level, of the row of device id @p _qstrDevId.
    /// @return as GetChilds(), or -1 for an empty or unknown device id.
    int GetChildsByDevId(const QString& _qstrDevId, QVector<CLS_CustomTreeNode>& _qvecNodes);
    /// Nodes of the children (one level) of row @p _qstrId that have a device id: channels, but any
    /// other child with a device id too. @return 0, or -1 without a panel or for an empty or unknown row.
    int GetChannelsById(const QString& _qstrId, QVector<CLS_CustomTreeNode>& _qvecNodes);
    /// The node of the parent row of tree id @p _qstrId.
    /// @return 0, or -1 without a panel, for an unknown or top-level row, or a parent without a node.
    int GetParent(const QString& _qstrId, CLS_CustomTreeNode& _node);
    /// GetParent() of the row of device id @p _qstrDevId.
    /// @return as GetParent(), or -1 for an empty or unknown device id.
    int GetParentByDevId(const QString& _qstrDevId, CLS_CustomTreeNode& _node);
    /// The parents' tree ids of these rows, each once (ids already in @p _qvecParentIds are not added
    /// again); rows without a parent node are skipped. @return 0, or -1 for an empty @p _qvecIds.
    int GetAllNodeParent(const QVector<QString>& _qvecIds, QVector<QString>& _qvecParentIds);
    /// The node of the current row. @return 0, or -1 without a panel, without a current row, for a
    /// disabled current row or one without a node.
    int GetCurrentItem(CLS_CustomTreeNode& _node);
    /// The check state of the row of tree id @p _qstrId.
    /// @return 0, or -1 without a panel, for an empty or unknown id, or a node without a row.
    int GetItemCheckStatus(const QString& _qstrId, Qt::CheckState& _iState);
    /// Nodes of the checked leaf rows (fully checked, enabled and not hidden), each with its row's
    /// sort number; afterwards the whole of @p _qvecNodes is sorted by SortChannel().
    /// @return 0, or -1 without a panel or without check boxes.
    int GetCheckedChannel(QVector<CLS_CustomTreeNode>& _qvecNodes);
    /// Nodes of every fully checked, enabled and visible row, leaves and parents alike.
    /// @return the panel's result: 0, or -1 without check boxes (nothing appended); -1 without a panel.
    int GetAllCheckedItems(QVector<CLS_CustomTreeNode>& _qvecNodes);
    /// Nodes of the fully checked groups, except the custom root.
    /// @return 0, or -1 without a panel or without check boxes.
    int GetCheckedGroup(QVector<CLS_CustomTreeNode>& _qvecNodes);
    /// Order of GetCheckedChannel(): true when @p _left has the smaller m_iSortNo. Any thread.
    static bool SortChannel(const CLS_CustomTreeNode& _left, const CLS_CustomTreeNode& _right);

    /// Makes the row of tree id @p _qstrId current and scrolls it into view; SignSelected() only when
    /// @p _blSend. An empty or unknown id changes nothing. GUI thread.
    void SetCurrentItem(const QString& _qstrId, bool _blSend = false);

    // What operators keep an eye on; all off until a page turns them on (README: "Status filter,
    // channel counts and view state").

    /// Shows only the channels that match @p _iFilter (an n_StatusFilter) and the rows above them; the
    /// root always shows. Rows it hides are hidden rows to the rest of the tree.
    /// @return 0, or -1 (no change) for another value or a tree without a panel. GUI thread.
    int SetStatusFilter(int _iFilter) { return m_pOperatorView->SetStatusFilter(_iFilter); }
    /// The n_StatusFilter in force; STATUS_FILTER_ALL until one is set.
    int GetStatusFilter() const { return m_pOperatorView->GetStatusFilter(); }
    /// Paints "online/total" at the right end of every row with channels below it, or stops. GUI thread.
    void SetShowChannelCounts(bool _blShow) { m_pOperatorView->SetShowChannelCounts(_blShow); }
    /// Whether the channel counts are painted (SetShowChannelCounts()).
    bool GetShowChannelCounts() const { return m_pOperatorView->GetShowChannelCounts(); }
    /// Channels (type 4) below the node by rows, on line meaning status 1; 0/0 for a node without a
    /// row. Answers whether or not the counts are shown (the first question starts keeping them).
    /// @return 0, or -1 for an empty or unknown tree id (the counts are then not written). GUI thread.
    int GetChannelCounts(const QString& _qstrTreeId, int& _iOnline, int& _iTotal) const;
    /// Expanded rows, current row and first row in view, by tree id (docs/view-state-format.md).
    /// GUI thread.
    QByteArray SaveViewState() const { return m_pOperatorView->SaveViewState(); }
    /// Restores what SaveViewState() gave. No signal for the restored current row.
    /// @return 0, or -1 for bytes it cannot read (nothing changes). GUI thread.
    int RestoreViewState(const QByteArray& _qbaState) { return m_pOperatorView->RestoreViewState(_qbaState); }
    /// While on, each Init after an earlier Init or Clear gives back what was open before it; off
    /// forgets the kept state. GUI thread.
    void SetKeepViewState(bool _blKeep) { m_pOperatorView->SetKeepViewState(_blKeep); }
    /// Whether the view state is kept across builds (SetKeepViewState()).
    bool GetKeepViewState() const { return m_pOperatorView->GetKeepViewState(); }

    // Finding and taking rows; all off until a page turns them on (README: "Search by words,
    // several rows and the drag payload").

    /// 0: the search line matches the row text as one piece; 1: every word of the line, in any
    /// order, in the node's name or its m_qstrExtend. Another value changes nothing. GUI thread.
    void SetSearchMode(int _iMode) { m_pWordSearch->SetSearchMode(_iMode); }
    /// The search mode in force (SetSearchMode()), 0 until one is set.
    int GetSearchMode() const { return m_pWordSearch->GetSearchMode(); }
    /// Result entries read "Name — Parent / Grandparent" (at most three parents, the root left out)
    /// while on. GUI thread.
    void SetSearchShowsPath(bool _blShow) { m_pWordSearch->SetSearchShowsPath(_blShow); }
    /// Whether search results show the path (SetSearchShowsPath()).
    bool GetSearchShowsPath() const { return m_pWordSearch->GetSearchShowsPath(); }
    /// The name assistive technology gives the tree from now on; an empty name goes back to the
    /// default, the panel's window title ("Resource tree" in English, translated). GUI thread.
    void SetAccessibleTreeName(const QString& _qstrName) { m_pAccessible->SetTreeName(_qstrName); }
    /// On: Ctrl and Shift extend the selection; SignSelected and GetCurrentItem stay with the current
    /// row. Off: single selection, and only the current row stays selected. GUI thread.
    void SetMultiSelect(bool _blOn) { m_pMultiSelect->SetMultiSelect(_blOn); }
    /// Whether several rows can be selected (SetMultiSelect()).
    bool GetMultiSelect() const { return m_pMultiSelect->GetMultiSelect(); }
    /// The selected nodes in row order, appended; rows without a node are left out.
    /// @return always 0. GUI thread.
    int GetSelectedNodes(QVector<CLS_CustomTreeNode>& _qvecNodes) const
    {
        return m_pMultiSelect->GetSelectedNodes(_qvecNodes);
    }
    /// A new drag payload for the nodes of these tree ids, in this order (docs/drag-payload-format.md);
    /// ids without a node are left out. The caller owns it. A drag of the tree's rows carries the same
    /// for the rows it takes. GUI thread.
    QMimeData* CreateDragData(const QVector<QString>& _qvecTreeIds) const
    {
        return m_pMultiSelect->CreateDragData(_qvecTreeIds);
    }
    /// The nodes of such a payload, appended. The payload stays the caller's.
    /// @return 0, or -1 (nothing appended) for a null payload, one without
    /// "application/x-wgttree-nodes", or bytes that are not such a node list. Any thread.
    static int ReadDragData(const QMimeData* _pData, QVector<CLS_CustomTreeNode>& _qvecNodes)
    {
        return CLS_DeviceTreeDragData::Read(_pData, _qvecNodes);
    }

signals:
    /// A finished build for SlotInit(): the root's tree id and a `QMap<QString, CLS_TreeItem>` of the
    /// rows. Emitted by each successful Init; queued to the widget's thread when Init runs elsewhere.
    void SignInit(QString _qstrRootId, QVariant _varData);
    /// Emitted by the Init forms before they build, to empty the tree through Clear(); queued when
    /// Init runs on another thread (the model is then emptied at once, the rows later).
    void SignClear();

    // Resource ids.

    /// Resources added. No emitter in this library; it is declared for pages.
    void SignAddNode(QVector<std::string> _qvecDevIds);
    /// Resource ids of the rows ModifyItems() changed.
    void SignModifyNode(QVector<std::string> _qvecDevIds);
    /// Resource ids named by DeleteItems(): only nodes still in the model after its deletes.
    void SignDeleteNode(QVector<std::string> _qvecDevIds);

    /// The channel-state batch as it came in, after UpdateAllChannelsStatus() applied it.
    void SignUpdateChannelsStatus(QVariant _qvarData);
    /// Asks the status thread to forget its cache and report every channel again. Emitted by
    /// UpdateChannelStatus() and AddItems().
    void SignChannelStatusUpdate();

    // Node-level signals; every node is a copy of the model's record.

    /// A row with a node was clicked.
    void SignClicked(CLS_CustomTreeNode _node);
    /// A row with a node, not a group, was double-clicked; its check state is toggled (and reported)
    /// afterwards, unless a slot deleted the tree.
    void SignDblClicked(CLS_CustomTreeNode _node);
    /// The check state of a row, not a group, changed by the user or a reported SetItemCheckStatus();
    /// emitted at once, ahead of the batch of SignCheckedStatusChangedQueue().
    void SignCheckedStatusChanged(CLS_CustomTreeNode _node, bool _blChecked);
    /// The current row changed to a row with a node.
    void SignSelected(CLS_CustomTreeNode _node);
    /// A row with a node was right-clicked.
    void SignRightClicked(CLS_CustomTreeNode _node);
    /// Entry @p _qstrItemId of the context menu was chosen (@p _blChecked its check state); @p _node is
    /// the current row's, not necessarily the one right-clicked.
    void SignRightMenuItemClicked(CLS_CustomTreeNode _node, QString _qstrItemId, bool _blChecked);
    /// A tool button of a row was clicked: @p _qstrCmd is the button's id, @p _button the button.
    void SignToolButtonClicked(QString _qstrCmd, CLS_CustomTreeNode _node, CLS_ItemButton _button);
    /// Emitted by SlotChecked(); reached only if a page connects SlotChecked itself.
    void SignChecked(CLS_CustomTreeNode _node, bool _blChecked);
    /// Check changes of one 200 ms batch in order of arrival, a row as often as it changed; the batch
    /// opens with its first change. @p _pWgtPanel is always null here.
    void SignCheckedStatusChangedQueue(QVector<QPair<CLS_CustomTreeNode, bool>> _qvecCheckChangedQueue,
                                       void* _pWgtPanel = nullptr);
    /// A node moved between parents. Declared for pages; no emitter in this library.
    void SignLocationChanged(QString _qstrSrcParentId, QString _qstrDstParentId, QString _qstrChannelId,
                             QVector<QString> _qvecTreeNodeIds, void* _pParam);

protected slots:
    /// Makes the rows of a build in the panel (the variant holds a `QMap<QString, CLS_TreeItem>`),
    /// expands them, folds groups, hosts and decoders, and restores a kept view state. A variant of
    /// another type does nothing. Connected to SignInit; widget's thread.
    void SlotInit(QString _qstrRootId, QVariant _varData);

    /// Adds the row of one resource.
    /// @return 0, or -1 without a panel, for an expired resource, an empty or (but for a favourites
    /// tree, which keeps no node for it) known tree id, or a refused resource. GUI thread.
    int AddItem(std::weak_ptr<STRCT_VideoItem> _pItem);
    /// Adds the row of one node. @return 0, -1 without a panel or for an empty or known tree id, or
    /// the negative result of the row. GUI thread.
    int AddItem(CLS_CustomTreeNode _node);
    /// Re-reads the resource (the caller's; read during the call only) into its node (a refusal leaves
    /// the node as it was) and updates its row, icon by status included.
    /// @return 0, or -1 for null, without a panel, an unknown tree id, or a refused row. GUI thread.
    int ModifyItem(STRCT_VideoItem* _pItem);
    /// Exchanges the places of row @p _qstrSrcId, which needs a row above it, and its sibling
    /// @p _qstrDesId; the model's sort numbers stay. Connected to the custom-tree manager's
    /// SignMoveUpOneRow.
    /// @return 0, or -1 without a panel or when the panel cannot move the rows. GUI thread.
    int MoveUpOneRow(const QString& _qstrSrcId, const QString& _qstrDesId);
    /// As MoveUpOneRow(), for a source row with a row below it; connected to SignMoveDownOneRow.
    /// @return 0, or -1 without a panel or when the panel cannot move the rows. GUI thread.
    int MoveDownOneRow(const QString& _qstrSrcId, const QString& _qstrDesId);

    // Row signals of the panel to node signals; rows without a node are ignored. GUI thread.

    /// Emits SignClicked().
    void SlotClicked(QString _qstrId, CLS_TreeItem _clsData);
    /// Emits SignDblClicked() for a non-group node, then toggles the row's check state with reporting.
    void SlotDblClicked(QString _qstrId, CLS_TreeItem _clsData);
    /// Emits SignCheckedStatusChanged() (if connected) and queues the change for the check batch,
    /// opening a batch if none is open. Groups are never reported; an empty group of a custom tree is
    /// put back to unchecked quietly.
    void SlotCheckedStatusChange(QString _qstrId, bool _blChecked, CLS_TreeItem _clsData);
    /// Emits SignSelected() for the new current row.
    void SlotSelected(QString _qstrId, CLS_TreeItem _clsData, QString _qstrOldId);
    /// Emits SignRightClicked().
    void SlotRightClicked(QString _qstrId, CLS_TreeItem _clsData);
    /// Emits SignRightMenuItemClicked() with the current row's node; nothing without one.
    void SlotTreeMenuItemClicked(QString _qstrItemId, bool _blChecked);
    /// Emits SignToolButtonClicked() with the button's id as command.
    void SlotClickButton(QString _qstrId, CLS_ItemButton _clsData);
    /// Empty on purpose: a drop is consumed without a change of the model.
    void SlotDroped(CLS_TreeItem _clsDropItem);
    /// Emits SignChecked(). Connected by nothing in this class.
    void SlotChecked(QString _qstrId, bool _blChecked, CLS_TreeItem _clsData);
    /// Ends the check batch: stops the timer and emits SignCheckedStatusChangedQueue() with the
    /// queued changes, if any.
    void SlotCheckedSignalWatcherTimeout();

protected:
    /// Connects the panel's row signals to the slots above and, when the device layer has a custom-tree
    /// manager, its row moves to MoveUpOneRow() and MoveDownOneRow(). Called by the constructor.
    void ConnectSignals();

    // Presentation: resource to node, node to row.

    /// Sets m_qstrPicPath to the image folder of the configured skin under the application folder,
    /// falling back to the "dark" skin's when that folder is missing.
    void LoadPicPath();
    /// Fills @p _node from a resource (the caller's; read during the call only). A non-empty
    /// @p _qstrRootName makes it the root: that name, the resource id as tree id, and no type filter.
    /// @return 0, or -1 for null, a type not allowed, or a bind type not allowed.
    int InitNode(STRCT_VideoItem* _pItem, CLS_CustomTreeNode& _node, const QString& _qstrRootName);
    /// As the raw form, with the resource locked for the call; the sort number is the order number,
    /// and a decoder output's channel number is not read (the node's stays).
    /// @return 0, or -1 for an expired or refused resource.
    int InitNode(std::weak_ptr<STRCT_VideoItem> _pItem, CLS_CustomTreeNode& _node,
                 const QString& _qstrRootName);
    /// Makes the row of a node: @p _node is filled from @p _pItem first unless that is null. A non-empty
    /// @p _qstrName makes the root's row (root icon, no tool buttons, no type filter); a row without
    /// a parent goes under the root. In a custom tree with drag, only channels without a pad, car or
    /// way bind kind stay draggable.
    /// @return 0, InitNode()'s negative result, or -1 for a type not allowed.
    int CreateItem(CLS_TreeItem& _clsItem, CLS_CustomTreeNode& _node, STRCT_VideoItem* _pItem,
                   const QString& _qstrName);
    /// As the raw form; the row's sort number puts channels first, then alarm inputs, alarm outputs,
    /// decoder inputs and outputs, each by number.
    int CreateItem(CLS_TreeItem& _clsItem, CLS_CustomTreeNode& _node, std::weak_ptr<STRCT_VideoItem> _pItem,
                   const QString& _qstrName);
    /// Makes the row of a model node; with @p _blUseStatus the icon follows the node's status (and is
    /// set on the existing row), else its type. The parent id is taken as it is.
    /// @return 0, or -1 for a type not allowed (roots included).
    int InitItem(const CLS_CustomTreeNode& _node, CLS_TreeItem& _clsItem, bool _blRoot, bool _blUseStatus);
    /// Sets the row's icon by root, type, status and bind kind (the bind kind wins).
    void SetItemIcon(const CLS_CustomTreeNode& _node, CLS_TreeItem& _clsItem, bool _blRoot);
    /// Gives the row the tool buttons of its type's templates, with their pictures and the node's device
    /// id as data; none for pad and car bind kinds or types not allowed.
    void CreateItemToolBtn(const CLS_CustomTreeNode& _node, CLS_TreeItem& _clsItem);
    /// Replaces the button templates; rows that exist keep their buttons.
    void SetItemToolButtons(const QMap<int, QVector<CLS_ItemButton>>& _qmapItemBtns);
    /// Kept empty: copies nothing. @return always 0.
    int CloneNode(const CLS_CustomTreeNode& _nodeSrc, CLS_CustomTreeNode& _nodeDst);
    /// Kept empty: the status thread asks the device. @return always false.
    bool IsImageChannel(const QString& _qstrId);

    n_DevTreeType m_iTreeType; ///< Kind of tree, from the constructor; fixed for the object's life.
    QMap<QString, CLS_CustomTreeNode> m_qmapNodes;     ///< Tree id -> node; GUI thread, no lock.
    QMap<QString, QString> m_qmapDevIdToTreeId;        ///< Device id -> tree id (last inserted wins).
    CLS_WgtTreeWidget* m_pTreePanel = nullptr;         ///< The panel; child widget once the layout takes it.
    QString m_qstrPicPath;                             ///< Image folder, with a trailing slash.
    QMap<int, QVector<CLS_ItemButton>> m_qmapItemBtns; ///< Button templates by node type.
    QString m_qstrRootId;                              ///< Tree id of the root of the last build.
    QSet<int> m_qsetNodeTypes;                         ///< Type codes allowed into the tree.
    QSet<int> m_qsetDevBindTypes;                  ///< Bind types allowed into the tree; empty allows any.
    bool m_blDrag = false;                         ///< Rows can be dragged (constructor flag).
    bool m_blCheck = false;                        ///< Rows have check boxes (constructor flag).
    CLS_DeviceTreeBGThread* m_pBGThread = nullptr; ///< Child status thread; made by the first good build.
    QTimer m_tmCheckedWatcher;                     ///< No parent; the 200 ms batch of check changes.
    QMutex m_mtxChecked;                           ///< Guards the two below; never held across a call out.
    /// Check changes of the open batch, in order of arrival.
    QVector<QPair<CLS_CustomTreeNode, bool>> m_qvecCheckChangedQueue;
    QMap<QString, bool> m_qmapCheckChanged; ///< Id -> _blSend of the latest SetItemCheckStatus().

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
    CLS_DeviceTreeAccessible* m_pAccessible = nullptr; ///< The rows in words for readers (a child).

    // Clears that an Init on a foreign thread has queued and whose model part it has already done.
    QAtomicInt m_iQueuedRowClears;
    // True while EmitClear's own emission runs on this widget's thread (GUI thread only).
    bool m_blDirectClear = false;
};
