#pragma once
// The generic tree of the library: turns a flat map of CLS_TreeItem records into rows, keeps the
// one index from record id to row, and answers lookups by id, text, parent and child.
// A node is a row (QTreeWidgetItem*), an item is a record (CLS_TreeItem). GUI thread only.

#include "TreeStructDefine.h"

#include <QMap>
#include <QSet>
#include <QString>
#include <QTreeWidget>
#include <QVector>

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

    // Row walkers. Outputs are appended to, never cleared.
    int GetChildNode(QTreeWidgetItem* _pNode, QVector<QTreeWidgetItem*>& _qvecNodes, bool _blAllLevels);
    int GetParentNode(QTreeWidgetItem* _pNode, QVector<QTreeWidgetItem*>& _qvecNodes);
    int GetParentNode(QTreeWidgetItem* _pNode, QMap<QString, QTreeWidgetItem*>& _qmapNodes);

    // Elision width for rows written from now on; below 1 turns elision off.
    void SetTextMaxWidth(int _iWidth);

    void SetLang(const QString& _qstrLang);
    void LoadStyleSheet(const QString& _qstrStyleSheet);

public slots:
    void SetItemExpandStatus(QString _qstrId, n_TreeExpandType _iExpandType);
    void SetAllExpandStatus(bool _blShow);

signals:
    void SignCheckedStatusChanged(QString _qstrId, bool _blChecked, CLS_TreeItem _clsData);

protected slots:
    void SlotCheckStateChanged(QTreeWidgetItem* _pItem, bool _blChecked);

protected:
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
    // CreateTree with the ids of the rows from the root down to _clsItem, so that a record listed
    // (directly or through others) under itself is not descended into again.
    int CreateTreeOnPath(QTreeWidgetItem* _pParent, const CLS_TreeItem& _clsItem,
                         const QMap<QString, QVector<CLS_TreeItem>>& _qmapChildren, bool _blCreate,
                         QSet<QString>& _qsetPath);
    QString ElidedText(const QString& _qstrText, QTreeWidgetItem* _pNode) const;
};
