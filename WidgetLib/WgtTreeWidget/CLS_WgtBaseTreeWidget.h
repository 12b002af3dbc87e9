#pragma once
// The generic tree of the library: turns a flat map of CLS_TreeItem records into rows, keeps the
// one index from record id to row, and answers lookups by id, text, parent and child.
// A node is a row (QTreeWidgetItem*), an item is a record (CLS_TreeItem). GUI thread only.

#include "TreeStructDefine.h"

#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTreeWidget>
#include <QVector>

#include <memory>

class CLS_WgtItemToolBar;
class QPushButton;

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

    // Elision width for rows written from now on; below 1 turns elision off.
    void SetTextMaxWidth(int _iWidth);

    void SetLang(const QString& _qstrLang);
    void LoadStyleSheet(const QString& _qstrStyleSheet);

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

    // Makes the tool bar of a row; null for no buttons.
    CLS_WgtItemToolBar* CreateItemButtons(const QString& _qstrId,
                                          const QVector<CLS_ItemButton>& _qvecButtons);

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
    int m_iTextMaxWidth = -1; // elision width in pixels; below 1 means no elision
    QString m_qstrRootId;     // root id of the last accepted Init

private:
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
    int CreateTreeOnPath(QTreeWidgetItem* _pParent, const CLS_TreeItem& _clsItem,
                         const QMap<QString, QVector<CLS_TreeItem>>& _qmapChildren, bool _blCreate,
                         QSet<QString>& _qsetPath);
    QString ElidedText(const QString& _qstrText, QTreeWidgetItem* _pNode) const;
};
