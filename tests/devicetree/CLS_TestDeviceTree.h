#pragma once
// Test helpers around CLS_WgtDeviceTree: a subclass that opens the protected members to the tests,
// resource records of the kinds the tree reads a channel number from, node makers, the panel and
// base tree inside a device tree, mouse positions on its rows, and one-line texts of nodes and
// trees for readable failures. GUI thread only.

#include "CLS_TreeSnapshot.h"
#include "CLS_WgtBaseTreeWidget.h"
#include "CLS_WgtDeviceTree.h"
#include "CLS_WgtTreeWidget.h"
#include "DevStructDefine.h"
#include "TreeStructDefine.h"

#include <QApplication>
#include <QHeaderView>
#include <QMetaType>
#include <QPair>
#include <QStringList>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QTest>
#include <QTreeWidgetItem>
#include <QVector>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

// Opens the protected operations and fields of the device tree.
class CLS_TestDeviceTree : public CLS_WgtDeviceTree
{
public:
    using CLS_WgtDeviceTree::CLS_WgtDeviceTree;

    using CLS_WgtDeviceTree::CloneNode;
    using CLS_WgtDeviceTree::ConnectSignals;
    using CLS_WgtDeviceTree::CreateItem;
    using CLS_WgtDeviceTree::CreateItemToolBtn;
    using CLS_WgtDeviceTree::InitItem;
    using CLS_WgtDeviceTree::InitNode;
    using CLS_WgtDeviceTree::IsImageChannel;
    using CLS_WgtDeviceTree::LoadPicPath;
    using CLS_WgtDeviceTree::MoveDownOneRow;
    using CLS_WgtDeviceTree::MoveUpOneRow;
    using CLS_WgtDeviceTree::SetItemIcon;
    using CLS_WgtDeviceTree::SetItemToolButtons;
    using CLS_WgtDeviceTree::SlotChecked;
    using CLS_WgtDeviceTree::SlotCheckedSignalWatcherTimeout;
    using CLS_WgtDeviceTree::SlotCheckedStatusChange;
    using CLS_WgtDeviceTree::SlotClickButton;
    using CLS_WgtDeviceTree::SlotClicked;
    using CLS_WgtDeviceTree::SlotDblClicked;
    using CLS_WgtDeviceTree::SlotDroped;
    using CLS_WgtDeviceTree::SlotInit;
    using CLS_WgtDeviceTree::SlotRightClicked;
    using CLS_WgtDeviceTree::SlotSelected;
    using CLS_WgtDeviceTree::SlotTreeMenuItemClicked;

    using CLS_WgtDeviceTree::m_blCheck;
    using CLS_WgtDeviceTree::m_blDrag;
    using CLS_WgtDeviceTree::m_iTreeType;
    using CLS_WgtDeviceTree::m_mtxChecked;
    using CLS_WgtDeviceTree::m_pBGThread;
    using CLS_WgtDeviceTree::m_pTreePanel;
    using CLS_WgtDeviceTree::m_qmapCheckChanged;
    using CLS_WgtDeviceTree::m_qmapDevIdToTreeId;
    using CLS_WgtDeviceTree::m_qmapItemBtns;
    using CLS_WgtDeviceTree::m_qmapNodes;
    using CLS_WgtDeviceTree::m_qsetDevBindTypes;
    using CLS_WgtDeviceTree::m_qsetNodeTypes;
    using CLS_WgtDeviceTree::m_qstrPicPath;
    using CLS_WgtDeviceTree::m_qstrRootId;
    using CLS_WgtDeviceTree::m_qvecCheckChangedQueue;
    using CLS_WgtDeviceTree::m_tmCheckedWatcher;

    using QObject::receivers;
};

// Takes the panel away from a tree for one scope, as if it had never been made, and gives it back
// on every path out of the scope.
class CLS_PanelAway
{
public:
    explicit CLS_PanelAway(CLS_TestDeviceTree& _tree)
        : m_tree(_tree), m_pPanel(std::exchange(_tree.m_pTreePanel, nullptr))
    {}
    ~CLS_PanelAway() { m_tree.m_pTreePanel = m_pPanel; }
    CLS_PanelAway(const CLS_PanelAway&) = delete;
    CLS_PanelAway& operator=(const CLS_PanelAway&) = delete;

private:
    CLS_TestDeviceTree& m_tree;
    CLS_WgtTreeWidget* m_pPanel;
};

// A resource record as the device layer lays out its channel-like kinds (4, 5, 6, 13, 17): the
// channel number opens the record's own fields. Records of other kinds (2, 3, 7, 12) are made of
// it too; nothing reads their number.
struct CLS_TestChannel : public STRCT_VideoItem
{
    int m_iChannelNo = 0; // must stay the first own field
    int m_iTypeCode = 4;

    explicit CLS_TestChannel(int _iTypeCode = 4) : m_iTypeCode(_iTypeCode) {}
    int GetType() override { return m_iTypeCode; }
};

// What a test needs to fill in a resource; the rest keeps the record's defaults.
struct STRCT_TestRes
{
    int m_iType = 4;
    std::string m_strId;
    std::string m_strTreeId;
    std::string m_strParentId;
    std::string m_strName;
    int m_iChannelNo = 0;
    int m_iOrderNo = 0;
    int m_iStatus = 0;
    int m_iDevBindType = -1;
    std::string m_strExtend;
};

namespace CLS_DevTreeTestUtil {

inline std::shared_ptr<CLS_TestChannel> MakeRes(const STRCT_TestRes& _stRes)
{
    auto pRes = std::make_shared<CLS_TestChannel>(_stRes.m_iType);
    pRes->m_strId = _stRes.m_strId;
    pRes->m_strTreeId = _stRes.m_strTreeId;
    pRes->m_strParentId = _stRes.m_strParentId;
    pRes->m_strName = _stRes.m_strName;
    pRes->m_iChannelNo = _stRes.m_iChannelNo;
    pRes->m_iOrderNo = _stRes.m_iOrderNo;
    pRes->m_iStatus = _stRes.m_iStatus;
    pRes->m_iDevBindType = _stRes.m_iDevBindType;
    pRes->m_strExtend = _stRes.m_strExtend;
    return pRes;
}

// A channel resource "id" with tree id "t_id" under "parent".
inline std::shared_ptr<CLS_TestChannel> MakeChannelRes(int _iType, const std::string& _strId,
                                                       const std::string& _strParentId, int _iChannelNo,
                                                       int _iOrderNo = 0)
{
    STRCT_TestRes stRes;
    stRes.m_iType = _iType;
    stRes.m_strId = _strId;
    stRes.m_strTreeId = "t_" + _strId;
    stRes.m_strParentId = _strParentId;
    stRes.m_strName = "name " + _strId;
    stRes.m_iChannelNo = _iChannelNo;
    stRes.m_iOrderNo = _iOrderNo;
    return MakeRes(stRes);
}

inline CLS_CustomTreeNode MakeNode(const QString& _qstrTreeId, const QString& _qstrParentId, int _iType,
                                   const QString& _qstrDevId, int _iSortNo = 0, int _iStatus = 0,
                                   int _iDevBindType = -1)
{
    CLS_CustomTreeNode node;
    node.m_qstrTreeId = _qstrTreeId;
    node.m_qstrTreeParentId = _qstrParentId;
    node.m_qstrDevId = _qstrDevId;
    node.m_qstrDevParentId = _qstrParentId;
    node.m_qstrName = "name " + _qstrTreeId;
    node.m_iType = _iType;
    node.m_iSortNo = _iSortNo;
    node.m_iStatus = _iStatus;
    node.m_iDevBindType = _iDevBindType;
    return node;
}

inline void Add(QMap<QString, CLS_CustomTreeNode>& _qmapNodes, const CLS_CustomTreeNode& _node)
{
    _qmapNodes.insert(_node.m_qstrTreeId, _node);
}

// Every field a tree writes or must keep, in one line.
inline QString NodeText(const CLS_CustomTreeNode& _node)
{
    QStringList qlstExtend;
    for (auto it = _node.m_qmapExtend.cbegin(); it != _node.m_qmapExtend.cend(); ++it)
        qlstExtend << it.key() + "=" + it.value().toString();
    return QString("tree=%1 parent=%2 dev=%3 devparent=%4 name=%5 type=%6 status=%7 sort=%8 bind=%9 "
                   "ext=%10 ch=%11 valid=%12 res=%13/%14/%15 extmap={%16}")
        .arg(_node.m_qstrTreeId, _node.m_qstrTreeParentId, _node.m_qstrDevId, _node.m_qstrDevParentId,
             _node.m_qstrName)
        .arg(_node.m_iType)
        .arg(_node.m_iStatus)
        .arg(_node.m_iSortNo)
        .arg(_node.m_iDevBindType)
        .arg(_node.m_qstrExtend)
        .arg(_node.m_iChannelNo)
        .arg(int(_node.m_blValid))
        .arg(_node.m_qstrReserved)
        .arg(_node.m_llReserved)
        .arg(_node.m_iReserved)
        .arg(qlstExtend.join(","));
}

inline QStringList TreeIds(const QVector<CLS_CustomTreeNode>& _qvecNodes)
{
    QStringList qlstIds;
    for (const CLS_CustomTreeNode& node : _qvecNodes)
        qlstIds << node.m_qstrTreeId;
    return qlstIds;
}

// A row record in one line: id, parent, text, tool tip, icon, data, order, flags and buttons.
inline QString RowText(const CLS_TreeItem& _clsItem)
{
    QStringList qlstButtons;
    for (const CLS_ItemButton& clsButton : _clsItem.m_qvecButtons)
        qlstButtons << QString("%1:%2:%3:%4:%5:%6:%7")
                           .arg(clsButton.m_qstrId, clsButton.m_qstrText, clsButton.m_qstrTooltip,
                                clsButton.m_qstrIcon, clsButton.m_varData.toString())
                           .arg(int(clsButton.m_blCheckable))
                           .arg(int(clsButton.m_blChecked));
    return QString("id=%1 parent=%2 text=%3 tip=%4 icon=%5 data=%6 sort=%7 flags=0x%8 buttons=[%9]")
        .arg(_clsItem.m_qstrId, _clsItem.m_qstrParentId, _clsItem.m_qstrText, _clsItem.m_qstrTooltip,
             _clsItem.m_qstrIcon, _clsItem.m_varData.toString())
        .arg(_clsItem.m_iSortNo)
        .arg(_clsItem.m_iItemFlags, 0, 16)
        .arg(qlstButtons.join(" "));
}

inline CLS_ItemButton MakeButton(const QString& _qstrId, const QString& _qstrIcon = QString(),
                                 bool _blCheckable = false, bool _blChecked = false)
{
    CLS_ItemButton clsButton;
    clsButton.m_qstrId = _qstrId;
    clsButton.m_qstrText = "text " + _qstrId;
    clsButton.m_qstrTooltip = "tip " + _qstrId;
    clsButton.m_qstrIcon = _qstrIcon;
    clsButton.m_blCheckable = _blCheckable;
    clsButton.m_blChecked = _blChecked;
    return clsButton;
}

// The panel and the base tree inside a device tree, found the way a test finds any child.
inline CLS_WgtTreeWidget* PanelOf(CLS_WgtDeviceTree& _tree)
{
    return _tree.findChild<CLS_WgtTreeWidget*>();
}

inline CLS_WgtBaseTreeWidget* BaseOf(CLS_WgtDeviceTree& _tree)
{
    CLS_WgtTreeWidget* pPanel = PanelOf(_tree);
    return pPanel == nullptr ? nullptr : pPanel->findChild<CLS_WgtBaseTreeWidget*>();
}

// The rows as "root(a(a1,a2),b)"; empty for no rows.
inline QString Rows(CLS_WgtDeviceTree& _tree)
{
    CLS_WgtBaseTreeWidget* pBase = BaseOf(_tree);
    return pBase == nullptr ? QString("<no base tree>") : CLS_TreeSnapshot::Snapshot(*pBase);
}

inline CLS_TreeItem RowOf(CLS_WgtDeviceTree& _tree, const QString& _qstrId)
{
    CLS_TreeItem clsItem;
    if (CLS_WgtBaseTreeWidget* pBase = BaseOf(_tree))
        pBase->GetItemById(_qstrId, clsItem);
    return clsItem;
}

inline QTreeWidgetItem* NodeOf(CLS_WgtDeviceTree& _tree, const QString& _qstrId)
{
    CLS_WgtBaseTreeWidget* pBase = BaseOf(_tree);
    return pBase == nullptr ? nullptr : pBase->GetNodeById(_qstrId);
}

inline Qt::CheckState CheckOf(CLS_WgtDeviceTree& _tree, const QString& _qstrId)
{
    QTreeWidgetItem* pNode = NodeOf(_tree, _qstrId);
    return pNode == nullptr ? Qt::Unchecked : Qt::CheckState(pNode->data(0, Qt::CheckStateRole).toInt());
}

// Shows the tree with every row open, so that every row has a place on the screen.
inline bool ShowOpen(CLS_WgtDeviceTree& _tree)
{
    if (CLS_WgtBaseTreeWidget* pBase = BaseOf(_tree))
        pBase->expandAll();
    _tree.resize(360, 480);
    _tree.show();
    return QTest::qWaitForWindowExposed(&_tree);
}

// Centre of a row's text cell (column 0) on the base tree's viewport, where a user clicks it. The
// row's whole rectangle would reach into column 1, whose cell is another current index.
inline QPoint RowCenter(CLS_WgtDeviceTree& _tree, const QString& _qstrId)
{
    CLS_WgtBaseTreeWidget* pBase = BaseOf(_tree);
    QTreeWidgetItem* pNode = NodeOf(_tree, _qstrId);
    Q_ASSERT(pBase != nullptr && pNode != nullptr);
    const QRect rectRow = pBase->visualItemRect(pNode);
    const int iRight = std::min(rectRow.right(), pBase->header()->sectionViewportPosition(1) - 1);
    return QPoint((rectRow.left() + iRight) / 2, rectRow.center().y());
}

// Centre of a row's check box, taken from the style as the delegate does.
inline QPoint CheckBoxCenter(CLS_WgtDeviceTree& _tree, const QString& _qstrId)
{
    CLS_WgtBaseTreeWidget* pBase = BaseOf(_tree);
    QTreeWidgetItem* pNode = NodeOf(_tree, _qstrId);
    Q_ASSERT(pBase != nullptr && pNode != nullptr);
    QStyleOptionViewItem option;
    option.initFrom(pBase->viewport());
    option.rect = pBase->visualItemRect(pNode);
    option.features |= QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
    return pBase->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, pBase).center();
}

inline void ClickRow(CLS_WgtDeviceTree& _tree, const QString& _qstrId,
                     Qt::MouseButton _button = Qt::LeftButton)
{
    QTest::mouseClick(BaseOf(_tree)->viewport(), _button, Qt::NoModifier, RowCenter(_tree, _qstrId));
}

inline void ClickCheckBox(CLS_WgtDeviceTree& _tree, const QString& _qstrId)
{
    QTest::mouseClick(BaseOf(_tree)->viewport(), Qt::LeftButton, Qt::NoModifier,
                      CheckBoxCenter(_tree, _qstrId));
}

// Press, release, double-click press, release: what a user's double click delivers.
inline void DoubleClickRow(CLS_WgtDeviceTree& _tree, const QString& _qstrId)
{
    QWidget* pViewport = BaseOf(_tree)->viewport();
    const QPoint pos = RowCenter(_tree, _qstrId);
    QTest::mouseClick(pViewport, Qt::LeftButton, Qt::NoModifier, pos);
    QTest::mouseDClick(pViewport, Qt::LeftButton, Qt::NoModifier, pos);
    QTest::mouseRelease(pViewport, Qt::LeftButton, Qt::NoModifier, pos);
}

// The check batch as "c1:1 c2:0".
inline QString BatchText(const QVector<QPair<CLS_CustomTreeNode, bool>>& _qvecBatch)
{
    QStringList qlstEntries;
    for (const auto& pair : _qvecBatch)
        qlstEntries << pair.first.m_qstrTreeId + (pair.second ? ":1" : ":0");
    return qlstEntries.join(" ");
}

// Top-level widgets still alive, as "Class \"name\"". Views of a menu library are left out: the
// panel neither parents nor deletes them.
inline QStringList LeakedWindows()
{
    QStringList qlstLeaked;
    for (QWidget* pWidget : QApplication::topLevelWidgets()) {
        bool blMenu = false;
        for (QWidget* pUp = pWidget; pUp != nullptr && !blMenu; pUp = pUp->parentWidget())
            blMenu = pUp->inherits("CLS_ViewBasic");
        if (!blMenu)
            qlstLeaked << QString("%1 \"%2\"").arg(pWidget->metaObject()->className(), pWidget->objectName());
    }
    return qlstLeaked;
}

} // namespace CLS_DevTreeTestUtil

typedef QVector<QPair<CLS_CustomTreeNode, bool>> CLS_CheckBatch;
