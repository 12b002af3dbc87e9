#pragma once
// The generic tree of the library: turns a flat map of CLS_TreeItem records into rows, keeps the
// one index from record id to row, and answers lookups by id, text, parent and child.
// A node is a row (QTreeWidgetItem*), an item is a record (CLS_TreeItem). GUI thread only.

#include "TreeStructDefine.h"

#include <QHash>
#include <QHeaderView>
#include <QMap>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTreeWidget>
#include <QVector>

#include <functional>
#include <memory>

class CLS_WgtItemToolBar;
class QMimeData;
class QPushButton;
class QStackedWidget;

/// The generic tree of the library: a QTreeWidget of two columns (column 0 the icon, text and check
/// box of a row, column 1 its tool bar) built from a flat map of CLS_TreeItem records. It keeps one
/// index from record id to row and answers lookups by id, text, parent and child; editing, check
/// state, selection, expansion and narrowing go through slots that take record ids.
///
/// A node is a row (QTreeWidgetItem*, a CLS_WgtTreeWidgetItem owned by the QTreeWidget), an item is
/// a record (CLS_TreeItem, stored in its row; lookups hand out copies). Functions that return an int
/// give 0 on success and -1 on failure; output vectors and maps are appended to, never cleared.
/// Slots do nothing for an empty or unknown id. GUI thread only.
///
/// Tool bars. Rows with buttons get their bar (a CLS_WgtToolBtnStack in column 1) with the row as
/// long as the tree holds at most CONST_iEagerToolBarRows of them (TOOLBAR_MOUNT_AUTO, the default),
/// so itemWidget(row, 1) is the stack right after the build. In a bigger tree a row's bar is made
/// when the row is first laid out inside the viewport, when the mouse is over it, or when
/// EnsureItemButtons asks for it; a bar scrolled far out of view may be given back, to serve
/// another row with buttons that look the same, and the row gets a bar again, with the live check
/// state of its buttons, when it comes back into view. A row taken out of the view (a move, a drag,
/// a delete) loses its bar for good, as a bar made at build time does. The type applies to rows
/// made from then on. A build of more than CONST_iEagerToolBarRows rows none of which holds its bar
/// as an index widget (bars on demand, or no buttons) turns on uniform row heights, unless the page
/// had; the first bar mounted as an index widget turns them off again.
class CLS_WgtBaseTreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    /// An empty tree: two columns, hidden header, single selection, mouse tracking, no auto scroll.
    /// The four flags in order, fixed for the tree's life: check boxes (tristate, derived from the
    /// children), drag (rows move inside the tree), drop (rows accept drops), right click
    /// (SignRightClicked). _iBtnShowType says how the rows' tool bars appear.
    CLS_WgtBaseTreeWidget(QWidget* parent = nullptr, bool _blCheckEnable = false, bool _blDragEnable = false,
                          bool _blDropEnable = false, bool _blRightClickEnable = false,
                          n_ItemBtnShowType _iBtnShowType = ITEM_BTN_SHOW_ALWAYS);
    /// Drops the tool bars made on demand and frees the rows taken out by DeleteItem; the rows still
    /// in the tree go with the QTreeWidget.
    ~CLS_WgtBaseTreeWidget() override;

    /// Rebuilds the whole tree below the record _qstrRootId; with _blShowRoot false the root gets no
    /// row and its children become the top-level rows. Children are found by m_qstrParentId and
    /// ordered by m_iSortNo; records that cannot be reached from the root, records with an empty id
    /// and records listed under their own descendants get no row. The old rows, their tool bars and
    /// the rows taken out by DeleteItem go first. Runs in a batch and emits nothing.
    /// @return 0; -1 (old tree kept) for an empty root id, an empty map or a root id that is not in
    ///         the map; -1 also when the root record's own m_qstrId is empty (the old tree is gone).
    int Init(const QString& _qstrRootId, const QMap<QString, CLS_TreeItem>& _qmapItems, bool _blShowRoot);
    /// Removes every row, empties the id index and frees the rows taken out by DeleteItem. The root
    /// id of the last Init stays. Emits nothing.
    void Clear();

    /// The row of record _qstrId, or null for an unknown id (also the root when it was not shown).
    /// The row belongs to the tree.
    QTreeWidgetItem* GetNodeById(const QString& _qstrId);
    /// Copies the record bound to _pNode into _clsItem.
    /// @return 0; -1 for a null row or a row without a record (_clsItem is then left alone).
    int GetBindData(QTreeWidgetItem* _pNode, CLS_TreeItem& _clsItem);
    /// Copies the record of row _qstrId into _clsItem. @return 0; -1 for an unknown id.
    int GetItemById(const QString& _qstrId, CLS_TreeItem& _clsItem);
    /// Appends the records below the root row whose m_qstrText (not the elided display text) holds
    /// _qstrName, ignoring case, depth first with each parent ahead of its children; the root itself
    /// is not tested, and an empty name matches every row.
    /// @return 0; -1 when the root has no row (not shown, or no tree built).
    int GetItemByName(const QString& _qstrName, QVector<CLS_TreeItem>& _qvecItems);
    /// Appends the records of the children of row _qstrId; with _blAllLevels of all rows below it,
    /// depth first with each parent ahead of its children. @return 0; -1 for an empty or unknown id.
    int GetChilds(const QString& _qstrId, QVector<CLS_TreeItem>& _qvecItems, bool _blAllLevels);
    /// Copies the record of the current row into _clsItem.
    /// @return 0; -1 when no row is current or the current row is disabled.
    int GetCurrentItem(CLS_TreeItem& _clsItem);
    /// Inserts the record of every indexed row into _qmapItems under its id (an existing key is
    /// overwritten). @return always 0.
    int GetAllItems(QMap<QString, CLS_TreeItem>& _qmapItems);
    /// Copies the record of the parent row of _qstrId into _clsItem.
    /// @return 0; -1 for an empty or unknown id or a top-level row (the children of a root that was
    ///         not shown are top-level rows).
    int GetParent(const QString& _qstrId, CLS_TreeItem& _clsItem);
    /// Rows whose m_qstrText holds _qstrName, ignoring case, inserted into _qmapNodes by record id.
    /// @return 0; -1 for an empty name.
    int GetNodeByName(const QString& _qstrName, QMap<QString, QTreeWidgetItem*>& _qmapNodes);

    /// The check state of row _qstrId into _iState: Qt::Checked, Qt::PartiallyChecked (only some
    /// rows below it checked) or Qt::Unchecked. In a tree without check boxes it gives Qt::Unchecked.
    /// @return 0; -1 for an empty or unknown id.
    int GetItemCheckStatus(const QString& _qstrId, Qt::CheckState& _iState);
    /// Appends the records of the fully checked rows that are enabled and not hidden themselves, in
    /// id order; with _blLeafOnly only rows without children. A partially checked row is never
    /// listed. @return 0; -1 in a tree without check boxes.
    int GetCheckedItems(QVector<CLS_TreeItem>& _qvecItems, bool _blLeafOnly);
    /// GetCheckedItems with _blLeafOnly true: the checked rows without children.
    /// @return 0; -1 in a tree without check boxes.
    int GetCheckedNodes(QVector<CLS_TreeItem>& _qvecItems);

    /// Appends the child rows of _pNode; with _blAllLevels all rows below it, depth first with each
    /// parent ahead of its children. @return 0; -1 for a null row.
    int GetChildNode(QTreeWidgetItem* _pNode, QVector<QTreeWidgetItem*>& _qvecNodes, bool _blAllLevels);
    /// Appends the ancestors of _pNode, nearest first, up to its top-level row.
    /// @return 0; -1 for a null or top-level row.
    int GetParentNode(QTreeWidgetItem* _pNode, QVector<QTreeWidgetItem*>& _qvecNodes);
    /// Inserts the ancestors of _pNode into _qmapNodes by record id, up to the top-level row or the
    /// first ancestor without a record.
    /// @return 0; -1 for a null or top-level row or a parent without a record.
    int GetParentNode(QTreeWidgetItem* _pNode, QMap<QString, QTreeWidgetItem*>& _qmapNodes);

    /// Root id of the last accepted Init (the root has a row only if it was shown); empty before.
    const QString& GetRootId() const { return m_qstrRootId; }
    /// The row and every row below it, hidden or folded ones too; 0 for no row.
    static int CountRows(const QTreeWidgetItem* _pRow);
    /// The bytes of the tree's own drag format for a row: its address as decimal text, which is only
    /// meaningful inside this process and which nothing reads back.
    static QByteArray RowAddressBytes(const QTreeWidgetItem* _pRow);
    /// Called by startDrag with the payload it has just made, before the drag starts, so that an
    /// owner can add formats of its own for receivers outside this tree; gives how many rows the drag
    /// carries for them (the picture of a drag of several rows tells how many more there are).
    /// Empty: nothing is added. The payload belongs to the drag: add to it, do not keep or delete it.
    /// The hook runs on the GUI thread and replaces any earlier one.
    void SetDragPayloadHook(std::function<int(QMimeData*)> _fnHook) { m_fnDragPayload = std::move(_fnHook); }

    /// Elision width in pixels for rows written from now on (by Init, AddItem, UpdateItem); below 1
    /// turns elision off. Measured with the row's own font, which rows made here leave unset (the
    /// application's default font).
    void SetTextMaxWidth(int _iWidth);

    /// Does nothing: the tree holds no translatable text of its own.
    void SetLang(const QString& _qstrLang);
    /// Sets _qstrStyleSheet as the tree's style sheet; it also reaches the rows' tool bars.
    void LoadStyleSheet(const QString& _qstrStyleSheet);

    /// Opens a batch of many-row changes; CLS_TreeRowBatch calls it and pairs it with EndRowBatch.
    /// Every operation of this tree that touches many rows runs inside a batch of its own; owners
    /// wrap loops of single-row calls. Batches nest; the outermost one keeps every column's width
    /// (ResizeToContents columns turn Interactive), turns updates off and, with _blLayoutOnce, lays
    /// the rows out only at the end. Signals go out as without a batch.
    void BeginRowBatch(bool _blLayoutOnce = true);
    /// Closes a batch; the outermost one lays a shown tree out, gives each column its resize mode
    /// back (sizing it at once) and turns updates on again. A call without an open batch does nothing.
    void EndRowBatch();
    /// Whether a batch is open.
    bool InRowBatch() const { return m_iRowBatchDepth > 0; }
    /// Inside a batch, after a call that laid the rows out (expandAll, a scroll to a row): keeps
    /// the rest of the batch from laying them out again after each change. Outside one, nothing.
    void DeferRowLayout();

    /// Most rows with buttons whose bars TOOLBAR_MOUNT_AUTO makes with the rows; a build with more
    /// makes them on demand. A build of more rows than this without index widgets gets uniform row
    /// heights (see the class description).
    static constexpr int CONST_iEagerToolBarRows = 2000;
    /// When the bars of rows with buttons are made; applies to rows made from then on.
    void SetToolBarMountType(n_ToolBarMountType _iType);
    /// The type set by SetToolBarMountType; TOOLBAR_MOUNT_AUTO by default.
    n_ToolBarMountType GetToolBarMountType() const { return m_iToolBarMountType; }
    /// The stack of a row's bar, made now if it is still to come; null for a null row or a row
    /// without one. A bar made at build time is itemWidget(row, 1); a bar made on demand is a child of
    /// the viewport that the tree places over column 1 of its row itself (an index widget would make
    /// the view lay out every row again for each new bar). The stack belongs to the tree; do not keep
    /// it: a bar made on demand may later be given back, to serve another row, or be deleted.
    QWidget* EnsureItemButtons(QTreeWidgetItem* _pNode);
    /// The same without making anything: null while the bar is still to come.
    QWidget* GetItemButtons(QTreeWidgetItem* _pNode) const;
    /// Rows whose bar is still to come (for tests and benchmarks).
    int PendingToolBarCount() const { return m_qhashPendingBars.size(); }

public slots:
    /// Adds a row for _clsTreeItem under its parent row, behind all siblings of equal or lower
    /// number, with its tool bar (whose stack gets 50 x 30). Emits nothing.
    /// @return 0; -1 for an empty or existing id or a parent without a row, so no top-level row can
    ///         be added.
    int AddItem(CLS_TreeItem _clsTreeItem);
    /// AddItem for each record in order, inside one batch; records that fail are skipped.
    void AddItems(QVector<CLS_TreeItem> _qvecTreeItems);
    /// Takes row _qstrId and every row below it out of the tree and the id index; they lose their
    /// tool bars. The rows stay allocated, owned by the tree, until the next Init, Clear or the
    /// tree's end, so pointers to them stay valid until then. May emit SignSelected when the
    /// current row goes.
    void DeleteItem(QString _qstrId);
    /// Rewrites row _clsItem.m_qstrId from the record: flags (a disabled row comes back enabled
    /// unless the flags say otherwise), elided text, tool tip, icon and the stored record. Place,
    /// tool bar, check, hidden and expanded state stay: a new parent, sort number or button list is
    /// stored with the record but not applied.
    void UpdateItem(CLS_TreeItem _clsItem);
    /// Shows the icon file _qstrIcon on row _qstrId; the stored record keeps its m_qstrIcon.
    void UpdateItemIcon(QString _qstrId, QString _qstrIcon);
    /// Disables (blState true) or enables row _qstrId. Works in trees with check boxes only. A
    /// disabled row is left out of GetCheckedItems, GetCurrentItem, SignDblClicked and drops.
    void SetItemDisabled(QString _qstrId, bool blState);

    /// Sets the check state of row _qstrId; for rows with Qt::ItemIsAutoTristate (part of the default
    /// flags) Qt passes a full state down to every row below it and derives the states of the rows
    /// above. Silent unless _blSend is true: then SignCheckedStatusChanged goes out for the row and
    /// each row below whose state really changed. Nothing in a tree without check boxes.
    void SetItemCheckStatus(QString _qstrId, Qt::CheckState _iState, bool _blSend = false);
    /// Scrolls row _qstrId into view and makes it current. Silent unless _blSend is true: then
    /// SignSelected goes out if the current row changes.
    void SetCurrentItem(QString _qstrId, bool _blSend = false);

    /// Narrows the tree by hiding (never removing) rows: row _qstrId and its ancestors are shown and
    /// expanded, every other row, the row's descendants included, is hidden. Emits
    /// SignKeepListApplied. This class has no call that shows every row again.
    void SetShowItemById(QString _qstrId);
    /// Narrows the tree to the rows whose m_qstrText holds _qstrName, ignoring case, and their
    /// ancestors: shown and expanded, all others hidden (every row when nothing matches). Emits
    /// SignKeepListApplied. An empty name does nothing; it does not show all rows again.
    void SetShowItemByName(QString _qstrName);
    /// Swaps row _qstrSrcId with its sibling _qstrDesId and swaps the m_iSortNo of their stored
    /// records, then scrolls to the source row and makes it current (SignSelected if that changes
    /// the current row). The target need not be the row above. All children of the parent are taken
    /// out and put back, so they and the rows below them lose their tool bars.
    /// @return 0; -1 for an unknown id, a top-level source, a source that is its parent's first child
    ///         or a target that is not its sibling.
    int MoveUpOneRow(QString _qstrSrcId, QString _qstrDesId);
    /// As MoveUpOneRow, but the source must not be its parent's last child; the target need not be
    /// the row below.
    /// @return 0; -1 for an unknown id, a top-level source, a source that is its parent's last child
    ///         or a target that is not its sibling.
    int MoveDownOneRow(QString _qstrSrcId, QString _qstrDesId);

    /// Collapses or expands row _qstrId as _iExpandType says; another value does nothing.
    void SetItemExpandStatus(QString _qstrId, n_TreeExpandType _iExpandType);
    /// Expands (_blShow true) or collapses every row.
    void SetAllExpandStatus(bool _blShow);

signals:
    /// A tool button of row _qstrId was triggered; _clsData is the button's record with its action's
    /// live checkable and checked state.
    void SignClickButton(QString _qstrId, CLS_ItemButton _clsData);
    /// Row _qstrId was clicked; _clsData is a copy of its record. Sent also for a disabled row that
    /// Qt reports.
    void SignClicked(QString _qstrId, CLS_TreeItem _clsData);
    /// Enabled row _qstrId was double-clicked; _clsData is a copy of its record.
    void SignDblClicked(QString _qstrId, CLS_TreeItem _clsData);
    /// Row _qstrId was pressed with the right button, in a tree with right click enabled. The row has
    /// just been made current (with SignSelected if that changed the current row), so that listeners
    /// find it current.
    void SignRightClicked(QString _qstrId, CLS_TreeItem _clsData);
    /// Row _qstrId became current, by the user or by SetCurrentItem with _blSend; _qstrOldId is the
    /// id of the previous current row, empty if there was none.
    void SignSelected(QString _qstrId, CLS_TreeItem _clsData, QString _qstrOldId);
    /// Declared for pages that connect to it; this tree never emits it (the check signal is
    /// SignCheckedStatusChanged).
    void SignChecked(QString _qstrId, bool _blChecked, CLS_TreeItem _clsData);
    /// The check state of row _qstrId really changed; _blChecked is true for checked and partially
    /// checked alike. Sent for the user's clicks and for SetItemCheckStatus with _blSend, for each
    /// row whose state was set (rows below first), not for rows above whose state follows theirs.
    void SignCheckedStatusChanged(QString _qstrId, bool _blChecked, CLS_TreeItem _clsData);
    /// A drop was accepted; the record is the target row's, sent before the row moves. Only in
    /// trees with drag enabled.
    void SignDroped(CLS_TreeItem _clsDropItem);
    /// SetShowItemById or SetShowItemByName has just set the hidden flag of every row (sent from
    /// inside it), for views that hide rows of their own on top of that narrowing.
    void SignKeepListApplied();

protected slots:
    /// Connected to itemClicked: emits SignClicked for a row with a record.
    void SlotClicked(QTreeWidgetItem* _pItem, int _iColumn);
    /// Connected to itemDoubleClicked: emits SignDblClicked for an indexed, enabled row.
    void SlotDblClicked(QTreeWidgetItem* _pItem, int _iColumn);
    /// Connected to currentItemChanged: emits SignSelected for a new current row with a record,
    /// unless a silent SetCurrentItem is running.
    void SlotCurrentChanged(QTreeWidgetItem* _pCurrent, QTreeWidgetItem* _pPrevious);
    /// Emits SignClickButton; not connected here (the tool bars are wired signal to signal).
    void SlotClickButton(QString _qstrId, CLS_ItemButton _clsBtn);
    /// Connected to each row's CLS_WgtTreeWidgetItem::SignCheckStateChanged: emits
    /// SignCheckedStatusChanged in a tree with check boxes, unless a silent SetItemCheckStatus runs.
    void SlotCheckStateChanged(QTreeWidgetItem* _pItem, bool _blChecked);

protected:
    /// Left press in a drag tree: records the row that was current before the press, if it has no
    /// children, for the drop check. Right press on a row with right click enabled: makes the row
    /// current with SignSelected, then emits SignRightClicked. Then the view's own handling.
    void mousePressEvent(QMouseEvent* _pEvent) override;
    /// Ends the drag state that pauses the hover switch, then the view's own handling.
    void mouseReleaseEvent(QMouseEvent* _pEvent) override;
    /// The hover switch at ITEM_BTN_SHOW_HOVER (paused while a drag is over a drag tree): the row
    /// the mouse left turns to its blank page, the row under it shows its bar, made now if still to
    /// come. Then the view's own handling.
    void mouseMoveEvent(QMouseEvent* _pEvent) override;
    /// Leaving the tree turns the hover row's stack to its blank page (at any show type but
    /// ITEM_BTN_SHOW_ALWAYS). The hover row is kept: coming back onto it does not show its bar again.
    void leaveEvent(QEvent* _pEvent) override;
    /// In a drag tree accepts every drag as a move and pauses the hover switch.
    void dragEnterEvent(QDragEnterEvent* _pEvent) override;
    /// In a drag tree: vetoes a drop on no row, on a disabled row or on the row recorded at the last
    /// left press; otherwise emits SignDroped with the target's record and lets Qt move the current
    /// row (with several selected, only that one). Without drag, Qt's own handling.
    void dropEvent(QDropEvent* _pEvent) override;
    /// Drags the current row as a move (nothing when there is none or it is disabled): the payload
    /// holds RowAddressBytes of the row under "application/x-qabstractitemmodeldatalist" plus what
    /// the SetDragPayloadHook adds; the picture is a button named "dragBgBtn" (for style sheets) with
    /// the row's icon and text, and "(+n)" for more rows. _supportedActions is ignored. Blocks in a
    /// nested event loop until the drop or cancel.
    void startDrag(Qt::DropActions _supportedActions) override;

    /// Makes the tool bar of a row; null for no buttons. Bars are made without a parent; a bar made
    /// on demand is born in its stack, which is already in the viewport, so that the style sheets of
    /// the tree reach its buttons once, as they are made, instead of again at a change of parent.
    /// The bar's SignTriggered is connected to SignClickButton; a bar without parent is the caller's.
    CLS_WgtItemToolBar* CreateItemButtons(const QString& _qstrId, const QVector<CLS_ItemButton>& _qvecButtons,
                                          QWidget* _pParent = nullptr);

    /// Makes the rows of _clsItem and everything below it, from _qmapChildren (parent id -> child
    /// records), each level ordered by m_iSortNo; adds to the tree without clearing it or its index.
    /// With _blCreate the row of _clsItem goes under _pParent (top level when null); without it
    /// _clsItem gets no row and its children become top-level rows. Children with an empty id, and
    /// records listed under their own descendants, are skipped.
    /// @return 0; -1 when _clsItem has an empty id.
    int CreateTree(QTreeWidgetItem* _pParent, const CLS_TreeItem& _clsItem,
                   const QMap<QString, QVector<CLS_TreeItem>>& _qmapChildren, bool _blCreate);
    /// Makes an unattached row for _clsItem: flags (m_iItemFlags, or m_iDefaultFlags for 0), an
    /// unchecked box in a tree with check boxes, elided text, tool tip, icon, the id under
    /// Qt::UserRole and the record under Qt::UserRole + 1; its check signal goes to
    /// SlotCheckStateChanged. Neither inserted nor indexed: the caller owns it until it is added to
    /// the tree. Null for an empty id.
    QTreeWidgetItem* CreateNode(const CLS_TreeItem& _clsItem);
    /// Order of siblings: true when _clsFirst has the smaller m_iSortNo.
    static bool SortByNo(CLS_TreeItem& _clsFirst, CLS_TreeItem& _clsSecond);

    /// Record id -> row; the rows belong to the QTreeWidget.
    QMap<QString, QTreeWidgetItem*> m_qmapNodes;
    /// Flags of rows whose record has m_iItemFlags 0: selectable, enabled and auto-tristate, with
    /// user-checkable, drag-enabled and drop-enabled as the constructor's flags say.
    int m_iDefaultFlags = 0x61;
    bool m_blCheckEnable = false; ///< Rows have check boxes.
    bool m_blDragEnable = false;  ///< Rows can be dragged and moved inside the tree.
    bool m_blDropEnable = false;  ///< Rows accept drops.
    n_ItemBtnShowType m_iBtnShowType = ITEM_BTN_SHOW_ALWAYS; ///< How the rows' tool bars appear.
    /// Row whose tool bar the hover switch last turned on; may name a row taken out by DeleteItem.
    QTreeWidgetItem* m_pHoverNode = nullptr;
    bool m_blSendChecked = true;       ///< Gate of SignCheckedStatusChanged; false in a silent change.
    bool m_blSendSelected = true;      ///< Gate of SignSelected; false in a silent SetCurrentItem.
    bool m_blRightClickEnable = false; ///< SignRightClicked is sent.
    CLS_TreeItem m_clsDragItem;        ///< Record kept at a left press for the drop check.
    bool m_blDragging = false;         ///< A drag entered the tree and no release or drop ended it yet.
    int m_iTextMaxWidth = -1;          ///< Elision width in pixels; below 1 means no elision.
    QString m_qstrRootId;              ///< Root id of the last accepted Init.
    std::function<int(QMimeData*)> m_fnDragPayload; ///< The hook of SetDragPayloadHook; empty for none.

private:
    // A bar that is still to be made: the buttons of the build, the live check state of each button
    // once a made bar was given back, and whether AddItem made the row (its stack gets 50 x 30).
    struct STRCT_PendingBar
    {
        QString m_qstrId;
        QVector<CLS_ItemButton> m_qvecButtons;
        QVector<bool> m_qvecChecked;
        bool m_blFixedGeometry = false;
    };

    // Mounts the stack of a new row, now or on demand.
    void MountItemButtons(QTreeWidgetItem* _pNode, const QString& _qstrId,
                          const QVector<CLS_ItemButton>& _qvecButtons, bool _blFixedGeometry,
                          bool _blOnDemand);
    // Makes the stack with its bar and sets it in column 1; _pChecked restores the check states.
    void SetItemButtons(QTreeWidgetItem* _pNode, const QString& _qstrId,
                        const QVector<CLS_ItemButton>& _qvecButtons, bool _blFixedGeometry,
                        const QVector<bool>* _pChecked);
    bool OnDemandFor(int _iButtonRows) const;
    // Uniform row heights for a big build whose rows hold no widget (bars on demand, or none), off
    // again once a row gets its bar as an index widget; a page's own setting is left alone.
    void SetUniformRows(bool _blUniform);
    bool m_blUniformRows = false; // uniformRowHeights was turned on by the tree, not by a page
    void MountPendingBar(QTreeWidgetItem* _pNode);
    void ReleaseDemandBar(QTreeWidgetItem* _pNode);
    // Called before the viewport paints: mounts the bars of the rows about to be seen, and gives
    // back bars far out of view once there are many.
    void MountVisibleToolBars();
    void ForgetRemovedRows(const QModelIndex& _parent, int _iFirst, int _iLast);
    void ForgetAllRows();

    int MoveOneRow(const QString& _qstrSrcId, const QString& _qstrDesId, bool _blUp);
    void ApplyKeepList(const QSet<QString>& _qsetKeep);
    void FreeTakenNodes();

    // Rows taken out by DeleteItem. They stay alive (the hover pointer and pages' pointers may
    // still name them) and are freed with the next rebuild, Clear or the tree itself.
    QVector<QTreeWidgetItem*> m_qvecTakenNodes;
    // The picture source of the last drag; never shown, kept until the next drag or the tree goes.
    std::unique_ptr<QPushButton> m_pDragBgBtn;

    // CreateTree with the ids of the rows from the root down to _clsItem, so that a record listed
    // (directly or through others) under itself is not descended into again.
    // Parent id -> its children, by reference into the records of the build.
    using ChildMap = QMap<QString, QVector<const CLS_TreeItem*>>;
    int CreateTreeOnPath(QTreeWidgetItem* _pParent, const CLS_TreeItem& _clsItem,
                         const ChildMap& _qmapChildren, bool _blCreate, QSet<QString>& _qsetPath);
    QString ElidedText(const QString& _qstrText, QTreeWidgetItem* _pNode) const;

    int m_iRowBatchDepth = 0;
    QVector<QHeaderView::ResizeMode> m_qvecBatchModes; // each column's mode, while a batch is open
    bool m_blBatchUpdates = true;                      // updatesEnabled when the batch opened

    n_ToolBarMountType m_iToolBarMountType = TOOLBAR_MOUNT_AUTO;
    bool m_blBuildOnDemand = false;          // the bars of the build under way come on demand
    QSet<QTreeWidgetItem*> m_qsetButtonRows; // rows in the view that have a bar or will have one
    QHash<QTreeWidgetItem*, STRCT_PendingBar> m_qhashPendingBars;
    // Bars made on demand, with what it takes to make them again and the number of the viewport
    // paint that last saw their row.
    struct STRCT_DemandBar
    {
        STRCT_PendingBar m_stBar;
        quint64 m_uSeen = 0;
        QPointer<QStackedWidget> m_pStack; // a child of the viewport
    };
    // The stack with its bar; with a parent (the viewport), the stack is made hidden inside it.
    QStackedWidget* MakeItemButtons(const QString& _qstrId, const QVector<CLS_ItemButton>& _qvecButtons,
                                    bool _blFixedGeometry, const QVector<bool>* _pChecked,
                                    QWidget* _pParent = nullptr);
    bool PlaceDemandBar(QTreeWidgetItem* _pNode, QWidget* _pStack);
    // Hides a bar made on demand and keeps the state of its buttons; with _blKeep the stack may
    // wait for another row (TakeSpareBar), else it goes.
    void DropDemandWidget(STRCT_DemandBar& _stDemand, bool _blKeep);
    QStackedWidget* TakeSpareBar(const STRCT_PendingBar& _stBar);
    QHash<QTreeWidgetItem*, STRCT_DemandBar> m_qhashDemandBars;
    // Stacks given back, hidden, ready for another row with the same buttons (the same vector,
    // shared with the button template of the build, e.g. every channel of a device tree).
    struct STRCT_SpareBar
    {
        QVector<CLS_ItemButton> m_qvecButtons;
        QPointer<QStackedWidget> m_pStack;
    };
    QVector<STRCT_SpareBar> m_qvecSpareBars;
    static constexpr int CONST_iSpareBars = 256;
    // Bars made on demand that stay with their rows out of view: at least this many, and two
    // screens of rows.
    static constexpr int CONST_iKeptBars = 64;
    quint64 m_uPaintStamp = 0;
    QObject* m_pPaintWatch = nullptr; // the viewport's filter that calls MountVisibleToolBars
    bool m_blMounting = false;
};
