#pragma once
// Test helpers around CLS_WgtBaseTreeWidget: a subclass that opens the protected members to the
// tests, record and button makers, row positions for mouse events, and a log that turns every
// signal of the tree into one line, in emission order. GUI thread only.

#include "CLS_TreeSnapshot.h"
#include "CLS_WgtBaseTreeWidget.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QMouseEvent>
#include <QStackedWidget>
#include <QStringList>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QTimer>
#include <QTreeWidget>

#include <functional>
#include <utility>

// Exposes the protected hooks and fields. startDrag is wrapped only to let a test act while the
// drag's own event loop runs (see m_fnDuringDrag); it calls the tree's startDrag unchanged.
class CLS_TestBaseTree : public CLS_WgtBaseTreeWidget
{
public:
    using CLS_WgtBaseTreeWidget::CLS_WgtBaseTreeWidget;

    using CLS_WgtBaseTreeWidget::CreateItemButtons;
    using CLS_WgtBaseTreeWidget::CreateNode;
    using CLS_WgtBaseTreeWidget::CreateTree;
    using CLS_WgtBaseTreeWidget::dragEnterEvent;
    using CLS_WgtBaseTreeWidget::dropEvent;
    using CLS_WgtBaseTreeWidget::leaveEvent;
    using CLS_WgtBaseTreeWidget::mouseMoveEvent;
    using CLS_WgtBaseTreeWidget::mousePressEvent;
    using CLS_WgtBaseTreeWidget::mouseReleaseEvent;
    using CLS_WgtBaseTreeWidget::SlotCheckStateChanged;
    using CLS_WgtBaseTreeWidget::SlotClickButton;
    using CLS_WgtBaseTreeWidget::SlotClicked;
    using CLS_WgtBaseTreeWidget::SlotCurrentChanged;
    using CLS_WgtBaseTreeWidget::SlotDblClicked;
    using CLS_WgtBaseTreeWidget::SortByNo;

    using CLS_WgtBaseTreeWidget::m_blCheckEnable;
    using CLS_WgtBaseTreeWidget::m_blDragEnable;
    using CLS_WgtBaseTreeWidget::m_blDragging;
    using CLS_WgtBaseTreeWidget::m_blDropEnable;
    using CLS_WgtBaseTreeWidget::m_blRightClickEnable;
    using CLS_WgtBaseTreeWidget::m_blSendChecked;
    using CLS_WgtBaseTreeWidget::m_blSendSelected;
    using CLS_WgtBaseTreeWidget::m_clsDragItem;
    using CLS_WgtBaseTreeWidget::m_iBtnShowType;
    using CLS_WgtBaseTreeWidget::m_iDefaultFlags;
    using CLS_WgtBaseTreeWidget::m_iTextMaxWidth;
    using CLS_WgtBaseTreeWidget::m_pHoverNode;
    using CLS_WgtBaseTreeWidget::m_qmapNodes;
    using CLS_WgtBaseTreeWidget::m_qstrRootId;

    using QObject::isSignalConnected;
    using QObject::receivers;
    using QTreeWidget::indexFromItem;

    // Runs once inside the drag's event loop, queued at the start of each startDrag.
    std::function<void()> m_fnDuringDrag;
    int m_iDragDepth = 0;  // > 0 while the tree's startDrag runs
    int m_iStartDrags = 0; // calls of startDrag so far

    void startDrag(Qt::DropActions _supportedActions) override
    {
        ++m_iStartDrags;
        ++m_iDragDepth;
        if (m_fnDuringDrag)
            QTimer::singleShot(0, this, std::exchange(m_fnDuringDrag, {}));
        CLS_WgtBaseTreeWidget::startDrag(_supportedActions);
        --m_iDragDepth;
    }
};

namespace CLS_TreeTestUtil {

inline CLS_TreeItem MakeItem(const QString& _qstrId, const QString& _qstrParentId, int _iSortNo = 99,
                             const QString& _qstrText = QString())
{
    CLS_TreeItem clsItem;
    clsItem.m_qstrId = _qstrId;
    clsItem.m_qstrParentId = _qstrParentId;
    clsItem.m_iSortNo = _iSortNo;
    clsItem.m_qstrText = _qstrText.isEmpty() ? _qstrId : _qstrText;
    clsItem.m_qstrTooltip = "tip " + _qstrId;
    return clsItem;
}

inline CLS_ItemButton MakeButton(const QString& _qstrId, bool _blCheckable = false, bool _blChecked = false)
{
    CLS_ItemButton clsButton;
    clsButton.m_qstrId = _qstrId;
    clsButton.m_qstrText = "text " + _qstrId;
    clsButton.m_qstrTooltip = "tip " + _qstrId;
    clsButton.m_blCheckable = _blCheckable;
    clsButton.m_blChecked = _blChecked;
    return clsButton;
}

inline void Add(QMap<QString, CLS_TreeItem>& _qmapItems, const CLS_TreeItem& _clsItem)
{
    _qmapItems.insert(_clsItem.m_qstrId, _clsItem);
}

inline QStringList Ids(const QVector<CLS_TreeItem>& _qvecItems)
{
    QStringList qlstIds;
    for (const CLS_TreeItem& clsItem : _qvecItems)
        qlstIds << clsItem.m_qstrId;
    return qlstIds;
}

// Ids of the children of a row, in row order.
inline QStringList ChildIds(const QTreeWidgetItem* _pNode)
{
    QStringList qlstIds;
    for (int i = 0; _pNode != nullptr && i < _pNode->childCount(); ++i)
        qlstIds << CLS_TreeSnapshot::NodeId(_pNode->child(i));
    return qlstIds;
}

// Centre of a row on the viewport (column 0), where a user would click it.
inline QPoint RowCenter(CLS_TestBaseTree& _tree, const QString& _qstrId)
{
    QTreeWidgetItem* pNode = _tree.GetNodeById(_qstrId);
    Q_ASSERT(pNode != nullptr);
    return _tree.visualRect(_tree.indexFromItem(pNode, 0)).center();
}

// A point on the viewport below the last row.
inline QPoint EmptyAreaPoint(CLS_TestBaseTree& _tree)
{
    return QPoint(10, _tree.viewport()->height() - 5);
}

// Centre of the check box of a row, taken from the style as the delegate does.
inline QPoint CheckBoxCenter(CLS_TestBaseTree& _tree, const QString& _qstrId)
{
    QTreeWidgetItem* pNode = _tree.GetNodeById(_qstrId);
    Q_ASSERT(pNode != nullptr);
    QStyleOptionViewItem option;
    option.initFrom(_tree.viewport());
    option.rect = _tree.visualRect(_tree.indexFromItem(pNode, 0));
    option.features |= QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
    return _tree.style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, &_tree).center();
}

// A plain mouse move without buttons, straight to the viewport, so that it reaches
// mouseMoveEvent whatever the platform does with the cursor.
inline void MoveMouse(CLS_TestBaseTree& _tree, const QPoint& _pos, Qt::MouseButtons _buttons = Qt::NoButton)
{
    QMouseEvent event(QEvent::MouseMove, _pos, _tree.viewport()->mapToGlobal(_pos), Qt::NoButton, _buttons,
                      Qt::NoModifier);
    QApplication::sendEvent(_tree.viewport(), &event);
}

// The column-1 widget of a row as a stack, or null.
inline QStackedWidget* StackOf(CLS_TestBaseTree& _tree, const QString& _qstrId)
{
    QTreeWidgetItem* pNode = _tree.GetNodeById(_qstrId);
    return pNode == nullptr ? nullptr : qobject_cast<QStackedWidget*>(_tree.itemWidget(pNode, 1));
}

} // namespace CLS_TreeTestUtil

// Every signal of one tree as a line, in emission order:
//   Clicked(b) DblClicked(b) RightClicked(b) Selected(b<-a) CheckedStatus(l1,1) Checked(l1,1)
//   ClickButton(row,btn,checkable,checked) Droped(c) Pressed(b)
// "Pressed" is QTreeWidget::itemPressed, which the base class's press emits; it marks where the
// base press ran. A line ends in "!" when the id argument differs from the record's id.
class CLS_TreeSignalLog : public QObject
{
public:
    explicit CLS_TreeSignalLog(CLS_WgtBaseTreeWidget* _pTree) : QObject(_pTree)
    {
        auto mark = [](const QString& _qstrId, const CLS_TreeItem& _clsItem) {
            return _qstrId == _clsItem.m_qstrId ? QString() : QString("!");
        };
        connect(_pTree, &CLS_WgtBaseTreeWidget::SignClicked, this,
                [this, mark](QString _qstrId, CLS_TreeItem _clsItem) {
                    Add("Clicked(" + _qstrId + ")" + mark(_qstrId, _clsItem));
                });
        connect(_pTree, &CLS_WgtBaseTreeWidget::SignDblClicked, this,
                [this, mark](QString _qstrId, CLS_TreeItem _clsItem) {
                    Add("DblClicked(" + _qstrId + ")" + mark(_qstrId, _clsItem));
                });
        connect(_pTree, &CLS_WgtBaseTreeWidget::SignRightClicked, this,
                [this, mark](QString _qstrId, CLS_TreeItem _clsItem) {
                    Add("RightClicked(" + _qstrId + ")" + mark(_qstrId, _clsItem));
                });
        connect(_pTree, &CLS_WgtBaseTreeWidget::SignSelected, this,
                [this, mark](QString _qstrId, CLS_TreeItem _clsItem, QString _qstrOldId) {
                    Add("Selected(" + _qstrId + "<-" + _qstrOldId + ")" + mark(_qstrId, _clsItem));
                });
        connect(_pTree, &CLS_WgtBaseTreeWidget::SignCheckedStatusChanged, this,
                [this, mark](QString _qstrId, bool _blChecked, CLS_TreeItem _clsItem) {
                    Add("CheckedStatus(" + _qstrId + (_blChecked ? ",1)" : ",0)") + mark(_qstrId, _clsItem));
                });
        connect(_pTree, &CLS_WgtBaseTreeWidget::SignChecked, this,
                [this, mark](QString _qstrId, bool _blChecked, CLS_TreeItem _clsItem) {
                    Add("Checked(" + _qstrId + (_blChecked ? ",1)" : ",0)") + mark(_qstrId, _clsItem));
                });
        connect(_pTree, &CLS_WgtBaseTreeWidget::SignClickButton, this,
                [this](QString _qstrId, CLS_ItemButton _clsButton) {
                    Add(QString("ClickButton(%1,%2,%3,%4)")
                            .arg(_qstrId, _clsButton.m_qstrId)
                            .arg(int(_clsButton.m_blCheckable))
                            .arg(int(_clsButton.m_blChecked)));
                });
        connect(_pTree, &CLS_WgtBaseTreeWidget::SignDroped, this,
                [this](CLS_TreeItem _clsItem) { Add("Droped(" + _clsItem.m_qstrId + ")"); });
        connect(_pTree, &QTreeWidget::itemPressed, this, [this](QTreeWidgetItem* _pNode, int) {
            Add("Pressed(" + CLS_TreeSnapshot::NodeId(_pNode) + ")");
        });
    }

    void Add(const QString& _qstrLine) { m_qlstLines << _qstrLine; }
    void Clear() { m_qlstLines.clear(); }
    QString Text() const { return m_qlstLines.join(" "); }
    const QStringList& Lines() const { return m_qlstLines; }
    int Count(const QString& _qstrPrefix) const
    {
        int iCount = 0;
        for (const QString& qstrLine : m_qlstLines)
            iCount += qstrLine.startsWith(_qstrPrefix + "(") ? 1 : 0;
        return iCount;
    }

private:
    QStringList m_qlstLines;
};
