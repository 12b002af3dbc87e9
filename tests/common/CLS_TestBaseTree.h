#pragma once
// Test helpers around CLS_WgtBaseTreeWidget: a subclass that opens the protected members to the
// tests; with it come the record and button makers and row positions (CLS_TreeTestUtil.h) and the
// log of the tree's signals (CLS_TreeSignalLog.h). GUI thread only. The code lives in the
// test-support library, compiled once for every test program.

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
    using CLS_WgtBaseTreeWidget::sizeHintForColumn;
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

    void startDrag(Qt::DropActions _supportedActions) override;
};

#include "CLS_TreeSignalLog.h"
#include "CLS_TreeTestUtil.h"
