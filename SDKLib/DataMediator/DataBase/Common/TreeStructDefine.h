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

/// Fields shared by the records of a row and of a row's tool button.
namespace Common {

/// Base of CLS_TreeItem and CLS_ItemButton: id, text, tool tip, icon and owner data. Deliberately
/// without a default constructor and without virtual operations: the derived records hand over
/// empty values themselves. A plain value; copies share their strings implicitly.
class CLS_ItemBase
{
public:
    /// Takes the five fields in declaration order; _varData is moved in.
    CLS_ItemBase(const QString& _qstrId, const QString& _qstrText, const QString& _qstrTooltip,
                 const QString& _qstrIcon, QVariant _varData);
    /// Copies the five fields.
    CLS_ItemBase(const CLS_ItemBase& _other);
    /// Member-wise assignment of the five fields.
    CLS_ItemBase& operator=(const CLS_ItemBase& _other) = default;

    QString m_qstrId;      ///< Id of the row or button; the base tree refuses a row with an empty id.
    QString m_qstrText;    ///< Row: display text (the base tree may elide it). Button: its QAction's text.
    QString m_qstrTooltip; ///< Tool tip of the row or of the button's QAction.
    QString m_qstrIcon;    ///< Path of the icon file; empty for no icon.
    QVariant m_varData;    ///< Owner data; the device tree keeps the device id here, as a QString.
};

} // namespace Common

/// One tool button of a row. The tool bar stores a whole copy as the QAction's data; the copy it
/// reports when the button is triggered carries the action's live checkable and checked state.
class CLS_ItemButton : public Common::CLS_ItemBase
{
public:
    /// An empty button: empty strings, invalid data, not checkable, not checked.
    CLS_ItemButton();

    bool m_blCheckable = false; ///< The QAction is checkable.
    bool m_blChecked = false;   ///< The QAction starts checked (in a reported copy: is checked now).
};
// The records hold only Qt's implicitly shared values and plain numbers: containers may move
// them in memory (a grown QVector of rows or nodes copies no string).
Q_DECLARE_TYPEINFO(CLS_ItemButton, Q_RELOCATABLE_TYPE);

/// One row of the base tree (CLS_WgtBaseTreeWidget). The whole record is stored in its row under
/// Qt::UserRole + 1, the id under Qt::UserRole; lookups hand out copies of it.
class CLS_TreeItem : public Common::CLS_ItemBase
{
public:
    /// An empty record: empty strings, invalid data, sort number 99, no buttons, default flags.
    CLS_TreeItem();
    /// Member-wise copy.
    CLS_TreeItem(const CLS_TreeItem& _other) = default;
    /// Member-wise assignment.
    CLS_TreeItem& operator=(const CLS_TreeItem& _other) = default;

    QString m_qstrParentId; ///< Id of the parent row; empty at a top row.
    int m_iReserved = 0;    ///< Copied with the record; never interpreted.
    int m_iSortNo = 99;     ///< Order among siblings: smaller first, by a strict less-than on this field.
    /// Tool buttons shown in the row's second column, in order; empty for no tool bar.
    QVector<CLS_ItemButton> m_qvecButtons;
    int m_iItemFlags = 0; ///< Qt::ItemFlags value of the row; 0 takes the tree's default flags.
};
Q_DECLARE_TYPEINFO(CLS_TreeItem, Q_RELOCATABLE_TYPE);

/// One node of the device tree, kept in its node map under m_qstrTreeId and handed to pages in
/// the node-level signals. All operations are member-wise; the map and vector share their data.
class CLS_CustomTreeNode
{
public:
    /// An empty node: bind type -1, channel number -1, valid; everything else 0 or empty.
    CLS_CustomTreeNode() = default;
    /// Member-wise copy.
    CLS_CustomTreeNode(const CLS_CustomTreeNode& _other) = default;
    /// Member-wise assignment.
    CLS_CustomTreeNode& operator=(const CLS_CustomTreeNode& _other) = default;
    /// Member-wise destruction; the pointers of m_qvecChildren are not deleted.
    ~CLS_CustomTreeNode() = default;

    QString m_qstrReserved;     ///< Copied with the node; nothing in this library sets or reads it.
    qint64 m_llReserved = 0;    ///< Copied with the node; nothing in this library sets or reads it.
    QString m_qstrTreeId;       ///< Key of the node and id of its row; unique in a tree.
    QString m_qstrDevId;        ///< Id of the resource behind the node; custom-tree nodes may share it.
    QString m_qstrTreeParentId; ///< m_qstrTreeId of the parent node; empty at a root.
    QString m_qstrDevParentId;  ///< Device id of the parent; filled from the same field as the tree one.
    QString m_qstrName;         ///< Caption: text and tool tip of the row.
    /// Declared and copied, never filled in this library (not owned: nothing deletes the pointers).
    /// Parents and children are found through the parent ids and the rows instead.
    QVector<CLS_CustomTreeNode*> m_qvecChildren;
    /// Type code of the resource: 2 group, 3 host, 4 channel, 5 alarm input, 6 alarm output,
    /// 12 decoder, 13 decoder output, 17 decoder input.
    int m_iType = 0;
    int m_iStatus = 0;   ///< On-line state: 0 off line, 1 on line, 2 (channels) no channel state.
    int m_iSortNo = 0;   ///< Order among siblings (smaller first), from the resource's order number.
    int m_iReserved = 0; ///< Copied with the node; never interpreted.
    /// Bind type of the resource: -1 none; 2, 3, 4 pad, car, way; 9 image channel (set by the
    /// device tree's status updates). Tested against the tree's filter of bind types.
    int m_iDevBindType = -1;
    QString m_qstrExtend;  ///< Second string of the resource; searched together with the name.
    int m_iChannelNo = -1; ///< Channel number; set for type codes 4, 13 and 17 only, -1 elsewhere.
    bool m_blValid = true; ///< Copied with the node; nothing in this library reads it.
    QMap<QString, QVariant> m_qmapExtend; ///< Page data: copied, never read or written here.
};
Q_DECLARE_TYPEINFO(CLS_CustomTreeNode, Q_RELOCATABLE_TYPE);

/// The name pages use for STRUCT_MenuItem, one context-menu entry.
typedef struct STRUCT_MenuItem _MenuItem;
/// One context-menu entry, with its sub-entries. The struct bears the name it is registered under
/// (Qt 6 takes a meta-type's name from the C++ type itself); pages know it as _MenuItem. Filled by
/// pages and shown by the menu library; this library only copies and forwards it.
struct STRUCT_MenuItem
{
    QString m_qstrItemId;            ///< Id of the entry; comes back when the entry is chosen.
    QString m_qstrItemText;          ///< Text of the entry, or title of its sub-menu.
    bool m_blEnable = true;          ///< The entry (a sub-menu: all entries under it) can be chosen.
    bool m_blCheckable = false;      ///< The entry has a check mark; ignored for an entry with children.
    bool m_blChecked = false;        ///< The entry starts checked; the chosen state comes back.
    QString m_qstrItemIcon;          ///< Path of the entry's icon file; empty for none.
    QList<_MenuItem> m_qlstChildren; ///< Sub-entries in order; an entry with any is a sub-menu.
};

/// Kind of a device tree (CLS_WgtDeviceTree): decides its root id and several of its rules.
enum n_DevTreeType : int
{
    DEV_TREE_GENERIC = 0,        ///< Fed with ready nodes; makes root "custom_root_id" if missing.
    DEV_TREE_RESOURCE = 1,       ///< The resource tree of the installation; root "resource_root_id".
    DEV_TREE_CUSTOM = 2,         ///< The custom tree; root "custom_root_id".
    DEV_TREE_FAVORITE = 3,       ///< The favourites tree; root "favorite_root_id".
    DEV_TREE_PASSENGER_FLOW = 4, ///< The passenger-flow tree; root "passengerflow_root_id".
};

/// How the tool buttons of a row appear in its second column.
enum n_ItemBtnShowType : int
{
    /// The tool bar shows at all times; the row's stack has one page.
    ITEM_BTN_SHOW_ALWAYS = 0,
    /// The stack shows a blank page first; the mouse over the row turns it to the tool bar, and
    /// moving off the row back. Any other non-zero value gives the blank page without the switch.
    ITEM_BTN_SHOW_HOVER = 1,
};

/// When the tool bars of rows with buttons are made. AUTO builds every bar with its row while the
/// tree holds at most CLS_WgtBaseTreeWidget::CONST_iEagerToolBarRows rows with buttons, and mounts
/// the bars of a bigger tree on demand: when the row is first laid out inside the viewport, hovered,
/// or asked for through CLS_WgtBaseTreeWidget::EnsureItemButtons. AT_BUILD and ON_DEMAND choose one
/// of the two whatever the size.
enum n_ToolBarMountType : int
{
    TOOLBAR_MOUNT_AUTO = 0,      ///< With the row up to CONST_iEagerToolBarRows button rows, else on demand.
    TOOLBAR_MOUNT_AT_BUILD = 1,  ///< Every bar is made with its row, as an index widget.
    TOOLBAR_MOUNT_ON_DEMAND = 2, ///< Every bar is made when its row is first seen, hovered or asked for.
};

/// What CLS_WgtBaseTreeWidget::SetItemExpandStatus does to a row; other values do nothing.
enum n_TreeExpandType : int
{
    TREE_COLLAPSE = 0,   ///< Collapse the row itself; its descendants keep their state.
    TREE_EXPAND = 1,     ///< Expand every ancestor of the row and the row itself.
    TREE_EXPAND_ALL = 2, ///< As TREE_EXPAND, and expand every descendant of the row too.
};

Q_DECLARE_METATYPE(CLS_ItemButton)
Q_DECLARE_METATYPE(CLS_TreeItem)
Q_DECLARE_METATYPE(CLS_CustomTreeNode)

// _MenuItem travels under the name "STRUCT_MenuItem" and its list as "QList<STRUCT_MenuItem>".
Q_DECLARE_METATYPE(STRUCT_MenuItem)
