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

class CLS_WgtBaseTreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    // The four flags in order: check boxes, drag, drop, right click.
    CLS_WgtBaseTreeWidget(QWidget* parent = nullptr, bool _blCheckEnable = false, bool _blDragEnable = false,
                          bool _blDropEnable = false, bool _blRightClickEnable = false,
                          n_ItemBtnShowType _iBtnShowType = ITEM_BTN_SHOW_ALWAYS);
    ~CLS_WgtBaseTreeWidget() override;

    // Rebuilds the whole tree below the record _qstrRootId; with _blShowRoot false the root gets no
    // row and its children become the top-level rows. -1 (old tree kept) for an empty root id, an
    // empty map or a root id that is not in the map.
    int Init(const QString& _qstrRootId, const QMap<QString, CLS_TreeItem>& _qmapItems, bool _blShowRoot);
    void Clear();

    QTreeWidgetItem* GetNodeById(const QString& _qstrId);
    int GetBindData(QTreeWidgetItem* _pNode, CLS_TreeItem& _clsItem);
    int GetItemById(const QString& _qstrId, CLS_TreeItem& _clsItem);
    int GetItemByName(const QString& _qstrName, QVector<CLS_TreeItem>& _qvecItems);
    int GetChilds(const QString& _qstrId, QVector<CLS_TreeItem>& _qvecItems, bool _blAllLevels);
    int GetCurrentItem(CLS_TreeItem& _clsItem);
    int GetAllItems(QMap<QString, CLS_TreeItem>& _qmapItems);
    int GetParent(const QString& _qstrId, CLS_TreeItem& _clsItem);
    // Rows whose full text holds _qstrName, ignoring case, by record id. -1 for an empty name.
    int GetNodeByName(const QString& _qstrName, QMap<QString, QTreeWidgetItem*>& _qmapNodes);

    // Check state. Only fully checked, enabled and visible rows are listed; the bool of
    // GetCheckedItems keeps rows without children only. -1 in a tree without check boxes.
    int GetItemCheckStatus(const QString& _qstrId, Qt::CheckState& _iState);
    int GetCheckedItems(QVector<CLS_TreeItem>& _qvecItems, bool _blLeafOnly);
    int GetCheckedNodes(QVector<CLS_TreeItem>& _qvecItems);

    // Row walkers. Outputs are appended to, never cleared.
    int GetChildNode(QTreeWidgetItem* _pNode, QVector<QTreeWidgetItem*>& _qvecNodes, bool _blAllLevels);
    int GetParentNode(QTreeWidgetItem* _pNode, QVector<QTreeWidgetItem*>& _qvecNodes);
    int GetParentNode(QTreeWidgetItem* _pNode, QMap<QString, QTreeWidgetItem*>& _qmapNodes);

    // Root id of the last accepted Init (the root has a row only if it was shown).
    const QString& GetRootId() const { return m_qstrRootId; }
    // The row and every row below it, hidden or folded ones too; 0 for no row.
    static int CountRows(const QTreeWidgetItem* _pRow);
    // The bytes of the tree's own drag format for a row: its address as decimal text, which is only
    // meaningful inside this process and which nothing reads back.
    static QByteArray RowAddressBytes(const QTreeWidgetItem* _pRow);
    // Called by startDrag with the payload it has just made, before the drag starts, so that an
    // owner can add formats of its own for receivers outside this tree; gives how many rows the drag
    // carries for them (the picture of a drag of several rows tells how many more there are).
    // Empty: nothing is added.
    void SetDragPayloadHook(std::function<int(QMimeData*)> _fnHook) { m_fnDragPayload = std::move(_fnHook); }

    // Elision width for rows written from now on; below 1 turns elision off.
    void SetTextMaxWidth(int _iWidth);

    void SetLang(const QString& _qstrLang);
    void LoadStyleSheet(const QString& _qstrStyleSheet);

    // Many-row changes: see CLS_TreeRowBatch, which calls these two. Every operation of this tree
    // that touches many rows runs inside a batch of its own; owners wrap loops of single-row calls.
    void BeginRowBatch(bool _blLayoutOnce = true);
    void EndRowBatch();
    bool InRowBatch() const { return m_iRowBatchDepth > 0; }
    // Inside a batch, after a call that laid the rows out (expandAll, a scroll to a row): keeps
    // the rest of the batch from laying them out again after each change.
    void DeferRowLayout();

    // Tool bars. Rows with buttons get their bar (a CLS_WgtToolBtnStack in column 1) with the row as
    // long as the tree holds at most CONST_iEagerToolBarRows of them (TOOLBAR_MOUNT_AUTO, the
    // default), so itemWidget(row, 1) is the stack right after the build. In a bigger tree a row's
    // bar is made when the row is first laid out inside the viewport, when the mouse is over it, or
    // when EnsureItemButtons asks for it; a bar scrolled far out of view may be given back, to
    // serve another row with buttons that look the same, and the row gets a bar again, with the
    // live check state of its buttons, when it comes back into view. A row taken out of the view (a
    // move, a drag, a delete) loses its bar for good, as a bar made at build time does. The type
    // applies to rows made from then on. A build of more than CONST_iEagerToolBarRows rows none of
    // which holds its bar as an index widget (bars on demand, or no buttons) turns on uniform row
    // heights, unless the page had; the first bar mounted as an index widget turns them off again.
    static constexpr int CONST_iEagerToolBarRows = 2000;
    void SetToolBarMountType(n_ToolBarMountType _iType);
    n_ToolBarMountType GetToolBarMountType() const { return m_iToolBarMountType; }
    // The stack of a row's bar, made now if it is still to come; null for a row without one. A bar
    // made at build time is itemWidget(row, 1); a bar made on demand is a child of the viewport
    // that the tree places over column 1 of its row itself (an index widget would make the view
    // lay out every row again for each new bar).
    QWidget* EnsureItemButtons(QTreeWidgetItem* _pNode);
    // The same without making anything: null while the bar is still to come.
    QWidget* GetItemButtons(QTreeWidgetItem* _pNode) const;
    // Rows whose bar is still to come (for tests and benchmarks).
    int PendingToolBarCount() const { return m_qhashPendingBars.size(); }

public slots:
    // Editing. AddItem places the row behind all siblings of equal or lower number.
    int AddItem(CLS_TreeItem _clsTreeItem);
    void AddItems(QVector<CLS_TreeItem> _qvecTreeItems);
    void DeleteItem(QString _qstrId);
    void UpdateItem(CLS_TreeItem _clsItem);
    void UpdateItemIcon(QString _qstrId, QString _qstrIcon);
    void SetItemDisabled(QString _qstrId, bool blState);

    // Program changes are silent unless _blSend is true.
    void SetItemCheckStatus(QString _qstrId, Qt::CheckState _iState, bool _blSend = false);
    void SetCurrentItem(QString _qstrId, bool _blSend = false);

    // Narrowing by hiding (never removing) rows, and swapping two siblings.
    void SetShowItemById(QString _qstrId);
    void SetShowItemByName(QString _qstrName);
    int MoveUpOneRow(QString _qstrSrcId, QString _qstrDesId);
    int MoveDownOneRow(QString _qstrSrcId, QString _qstrDesId);

    void SetItemExpandStatus(QString _qstrId, n_TreeExpandType _iExpandType);
    void SetAllExpandStatus(bool _blShow);

signals:
    void SignClickButton(QString _qstrId, CLS_ItemButton _clsData);
    void SignClicked(QString _qstrId, CLS_TreeItem _clsData);
    void SignDblClicked(QString _qstrId, CLS_TreeItem _clsData);
    void SignRightClicked(QString _qstrId, CLS_TreeItem _clsData);
    void SignSelected(QString _qstrId, CLS_TreeItem _clsData, QString _qstrOldId);
    // Declared for pages that connect to it; this tree never emits it (the check signal is
    // SignCheckedStatusChanged).
    void SignChecked(QString _qstrId, bool _blChecked, CLS_TreeItem _clsData);
    void SignCheckedStatusChanged(QString _qstrId, bool _blChecked, CLS_TreeItem _clsData);
    // A drop was accepted; the record is the target row's, sent before the row moves.
    void SignDroped(CLS_TreeItem _clsDropItem);
    // SetShowItemById or SetShowItemByName has just set the hidden flag of every row (sent from
    // inside it), for views that hide rows of their own on top of that narrowing.
    void SignKeepListApplied();

protected slots:
    void SlotClicked(QTreeWidgetItem* _pItem, int _iColumn);
    void SlotDblClicked(QTreeWidgetItem* _pItem, int _iColumn);
    void SlotCurrentChanged(QTreeWidgetItem* _pCurrent, QTreeWidgetItem* _pPrevious);
    // Emits SignClickButton; not connected here (the tool bars are wired signal to signal).
    void SlotClickButton(QString _qstrId, CLS_ItemButton _clsBtn);
    void SlotCheckStateChanged(QTreeWidgetItem* _pItem, bool _blChecked);

protected:
    void mousePressEvent(QMouseEvent* _pEvent) override;
    void mouseReleaseEvent(QMouseEvent* _pEvent) override;
    void mouseMoveEvent(QMouseEvent* _pEvent) override;
    void leaveEvent(QEvent* _pEvent) override;
    void dragEnterEvent(QDragEnterEvent* _pEvent) override;
    void dropEvent(QDropEvent* _pEvent) override;
    void startDrag(Qt::DropActions _supportedActions) override;

    // Makes the tool bar of a row; null for no buttons. Bars are made without a parent; a bar made
    // on demand is born in its stack, which is already in the viewport, so that the style sheets of
    // the tree reach its buttons once, as they are made, instead of again at a change of parent.
    CLS_WgtItemToolBar* CreateItemButtons(const QString& _qstrId, const QVector<CLS_ItemButton>& _qvecButtons,
                                          QWidget* _pParent = nullptr);

    int CreateTree(QTreeWidgetItem* _pParent, const CLS_TreeItem& _clsItem,
                   const QMap<QString, QVector<CLS_TreeItem>>& _qmapChildren, bool _blCreate);
    QTreeWidgetItem* CreateNode(const CLS_TreeItem& _clsItem);
    static bool SortByNo(CLS_TreeItem& _clsFirst, CLS_TreeItem& _clsSecond);

    QMap<QString, QTreeWidgetItem*> m_qmapNodes; // record id -> row; the rows belong to the QTreeWidget
    int m_iDefaultFlags = 0x61;                  // flags of rows whose record has m_iItemFlags 0
    bool m_blCheckEnable = false;
    bool m_blDragEnable = false;
    bool m_blDropEnable = false;
    n_ItemBtnShowType m_iBtnShowType = ITEM_BTN_SHOW_ALWAYS;
    QTreeWidgetItem* m_pHoverNode = nullptr; // row whose tool bar the hover switch last turned on
    bool m_blSendChecked = true;             // gate of SignCheckedStatusChanged
    bool m_blSendSelected = true;            // gate of SignSelected
    bool m_blRightClickEnable = false;
    CLS_TreeItem m_clsDragItem; // record kept at a left press for the drop check
    bool m_blDragging = false;
    int m_iTextMaxWidth = -1;                       // elision width in pixels; below 1 means no elision
    QString m_qstrRootId;                           // root id of the last accepted Init
    std::function<int(QMimeData*)> m_fnDragPayload; // SetDragPayloadHook

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
