#pragma once
// Value records that travel through the tree widgets and their signals: one row of a generic tree
// (CLS_TreeItem), one tool button of a row (CLS_ItemButton), one node of the device tree
// (CLS_CustomTreeNode) and one context-menu entry (_MenuItem), with their enumerations.
// Plain copyable values with no behaviour; safe to copy across threads by queued signals.

#include <QList>
#include <QMap>
#include <QMetaType>
#include <QString>
#include <QVariant>
#include <QVector>

namespace Common {

// Base of CLS_TreeItem and CLS_ItemButton. Deliberately without a default constructor and
// without virtual operations: the derived records hand over empty values themselves.
class CLS_ItemBase
{
public:
    CLS_ItemBase(const QString& _qstrId, const QString& _qstrText, const QString& _qstrTooltip,
                 const QString& _qstrIcon, QVariant _varData);
    CLS_ItemBase(const CLS_ItemBase& _other);
    CLS_ItemBase& operator=(const CLS_ItemBase& _other) = default;

    QString m_qstrId;      // id of the row or button; an empty id is refused by the base tree
    QString m_qstrText;    // display text (row) or QAction text (button)
    QString m_qstrTooltip; // tool tip of the row or QAction
    QString m_qstrIcon;    // path of the icon file
    QVariant m_varData;    // owner data; the device tree keeps the device id here as a QString
};

} // namespace Common

// One tool button of a row. The tool bar stores a whole copy as the QAction's data.
class CLS_ItemButton : public Common::CLS_ItemBase
{
public:
    CLS_ItemButton();

    bool m_blCheckable = false; // the QAction is checkable
    bool m_blChecked = false;   // the QAction starts checked
};
// The records hold only Qt's implicitly shared values and plain numbers: containers may move
// them in memory (a grown QVector of rows or nodes copies no string).
Q_DECLARE_TYPEINFO(CLS_ItemButton, Q_RELOCATABLE_TYPE);

// One row of the base tree. The whole record is stored in its row under Qt::UserRole + 1.
class CLS_TreeItem : public Common::CLS_ItemBase
{
public:
    CLS_TreeItem();
    CLS_TreeItem(const CLS_TreeItem& _other) = default;
    CLS_TreeItem& operator=(const CLS_TreeItem& _other) = default;

    QString m_qstrParentId;                // id of the parent row, empty at a top row
    int m_iReserved = 0;                   // copied, never interpreted
    int m_iSortNo = 99;                    // order among siblings; smaller sorts first
    QVector<CLS_ItemButton> m_qvecButtons; // tool buttons of the row's second column
    int m_iItemFlags = 0;                  // Qt::ItemFlags of the row; 0 = the tree's default flags
};
Q_DECLARE_TYPEINFO(CLS_TreeItem, Q_RELOCATABLE_TYPE);

// One node of the device tree, kept in its node map under m_qstrTreeId.
class CLS_CustomTreeNode
{
public:
    CLS_CustomTreeNode() = default;
    CLS_CustomTreeNode(const CLS_CustomTreeNode& _other) = default;
    CLS_CustomTreeNode& operator=(const CLS_CustomTreeNode& _other) = default;
    ~CLS_CustomTreeNode() = default;

    QString m_qstrReserved;
    qint64 m_llReserved = 0;
    QString m_qstrTreeId;                        // key of the node and id of its row
    QString m_qstrDevId;                         // id of the resource behind the node
    QString m_qstrTreeParentId;                  // tree id of the parent node, empty at a root
    QString m_qstrDevParentId;                   // device id of the parent
    QString m_qstrName;                          // caption: text and tool tip of the row
    QVector<CLS_CustomTreeNode*> m_qvecChildren; // declared and copied, never filled here
    int m_iType = 0;                             // type code of the resource
    int m_iStatus = 0;                           // 0 off line, 1 on line, 2 no channel state
    int m_iSortNo = 0;
    int m_iReserved = 0;
    int m_iDevBindType = -1; // -1 none; 2, 3, 4 pad, car, way
    QString m_qstrExtend;
    int m_iChannelNo = -1; // set for type codes 4, 13 and 17 only
    bool m_blValid = true;
    QMap<QString, QVariant> m_qmapExtend; // page data, copied and never read here
};
Q_DECLARE_TYPEINFO(CLS_CustomTreeNode, Q_RELOCATABLE_TYPE);

// One context-menu entry, with its sub-entries. The struct bears the name it is registered under
// (Qt 6 takes a meta-type's name from the C++ type itself); pages know it as _MenuItem.
typedef struct STRUCT_MenuItem _MenuItem;
struct STRUCT_MenuItem
{
    QString m_qstrItemId;
    QString m_qstrItemText;
    bool m_blEnable = true;
    bool m_blCheckable = false;
    bool m_blChecked = false;
    QString m_qstrItemIcon;
    QList<_MenuItem> m_qlstChildren;
};

enum n_DevTreeType : int
{
    DEV_TREE_GENERIC = 0,
    DEV_TREE_RESOURCE = 1,
    DEV_TREE_CUSTOM = 2,
    DEV_TREE_FAVORITE = 3,
    DEV_TREE_PASSENGER_FLOW = 4,
};

enum n_ItemBtnShowType : int
{
    ITEM_BTN_SHOW_ALWAYS = 0,
    ITEM_BTN_SHOW_HOVER = 1,
};

// When the tool bars of rows with buttons are made. AUTO builds every bar with its row while the
// tree holds at most CLS_WgtBaseTreeWidget::CONST_iEagerToolBarRows rows with buttons, and mounts the
// bars of a bigger tree on demand: when the row is first laid out inside the viewport, hovered, or
// asked for through CLS_WgtBaseTreeWidget::EnsureItemButtons. AT_BUILD and ON_DEMAND choose one of
// the two whatever the size.
enum n_ToolBarMountType : int
{
    TOOLBAR_MOUNT_AUTO = 0,
    TOOLBAR_MOUNT_AT_BUILD = 1,
    TOOLBAR_MOUNT_ON_DEMAND = 2,
};

enum n_TreeExpandType : int
{
    TREE_COLLAPSE = 0,
    TREE_EXPAND = 1,
    TREE_EXPAND_ALL = 2,
};

Q_DECLARE_METATYPE(CLS_ItemButton)
Q_DECLARE_METATYPE(CLS_TreeItem)
Q_DECLARE_METATYPE(CLS_CustomTreeNode)

// _MenuItem travels under the name "STRUCT_MenuItem" and its list as "QList<STRUCT_MenuItem>".
Q_DECLARE_METATYPE(STRUCT_MenuItem)
