#include "CLS_TreeAccessibility.h"

#include "CLS_WgtBaseTreeWidget.h"
#include "CLS_WgtItemToolBar.h"
#include "TreeStructDefine.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QStackedWidget>
#include <QToolButton>
#include <QTreeWidgetItem>

namespace {

// The record a row was built from; an empty record for a row without one.
CLS_TreeItem RecordOf(const QTreeWidgetItem* _pRow)
{
    CLS_TreeItem clsItem;
    if (auto* pTree = qobject_cast<CLS_WgtBaseTreeWidget*>(_pRow->treeWidget()))
        pTree->GetBindData(const_cast<QTreeWidgetItem*>(_pRow), clsItem);
    return clsItem;
}

// A bar's buttons are named as the bar names them for a reader.
QString ButtonName(const CLS_ItemButton& _clsButton)
{
    return !_clsButton.m_qstrText.isEmpty() ? _clsButton.m_qstrText : _clsButton.m_qstrTooltip;
}

bool BareKey(const QKeyEvent* _pEvent, Qt::KeyboardModifiers _iWanted = Qt::NoModifier)
{
    return (_pEvent->modifiers() & ~Qt::KeypadModifier) == _iWanted;
}

} // namespace

CLS_TreeAccessibility::CLS_TreeAccessibility(QWidget* _pPanel, CLS_WgtBaseTreeWidget* _pTree)
    : QObject(_pTree), m_pPanel(_pPanel), m_pTree(_pTree), m_pTreeWidget(_pTree)
{
    if (_pPanel != nullptr)
        _pPanel->installEventFilter(this);
    if (_pTree != nullptr)
        _pTree->installEventFilter(this);
    TranslateTexts();
}

CLS_TreeAccessibility::~CLS_TreeAccessibility() = default;

void CLS_TreeAccessibility::SetTreeName(const QString& _qstrName)
{
    m_qstrOwnName = _qstrName;
    ApplyTreeName();
}

QString CLS_TreeAccessibility::TreeName() const
{
    return m_pTree != nullptr ? m_pTree->accessibleName() : QString();
}

void CLS_TreeAccessibility::SetRowDescriber(RowDescriber _fnDescribe)
{
    m_fnDescribe = std::move(_fnDescribe);
}

void CLS_TreeAccessibility::ApplyTreeName()
{
    if (m_pTree == nullptr)
        return;
    QString qstrName = m_qstrOwnName;
    if (qstrName.isEmpty() && m_pPanel != nullptr)
        qstrName = m_pPanel->windowTitle();
    if (m_pTree->accessibleName() != qstrName)
        m_pTree->setAccessibleName(qstrName);
}

void CLS_TreeAccessibility::TranslateTexts()
{
    if (m_pTree == nullptr)
        return;
    ApplyTreeName();
    m_pTree->setAccessibleDescription(tr("acc_tree_desc"));
    // The header is hidden on screen, yet a reader lists its sections: they are named, not numbered.
    QTreeWidgetItem* pHeader = m_pTree->headerItem();
    if (pHeader != nullptr && pHeader->columnCount() >= 2) {
        pHeader->setData(0, Qt::AccessibleTextRole, tr("acc_header_name"));
        pHeader->setData(1, Qt::AccessibleTextRole, tr("acc_header_buttons"));
    }
}

QVariant CLS_TreeAccessibility::RowData(const QTreeWidgetItem* _pRow, int _iColumn, int _iRole)
{
    if (_pRow == nullptr || (_iRole != Qt::AccessibleTextRole && _iRole != Qt::AccessibleDescriptionRole))
        return QVariant();
    auto* pTree = qobject_cast<CLS_WgtBaseTreeWidget*>(_pRow->treeWidget());
    if (pTree == nullptr)
        return QVariant();
    // Asked only by a reader: a look among the tree's own children costs nothing the rows pay.
    const auto* pSelf = pTree->findChild<CLS_TreeAccessibility*>(QString(), Qt::FindDirectChildrenOnly);
    if (pSelf == nullptr)
        return QVariant();
    if (_iColumn == 0) {
        if (_iRole == Qt::AccessibleDescriptionRole)
            return pSelf->RowDescription(_pRow);
        // The full text: the row shows it elided when the tree has a maximum width.
        const QString qstrText = RecordOf(_pRow).m_qstrText;
        return qstrText.isEmpty() ? QVariant() : QVariant(qstrText);
    }
    if (_iColumn == 1) {
        if (_iRole == Qt::AccessibleTextRole)
            return pSelf->ButtonsName(_pRow);
        return RecordOf(_pRow).m_qvecButtons.isEmpty() ? QString() : tr("acc_buttons_desc");
    }
    return QVariant();
}

QString CLS_TreeAccessibility::RowDescription(const QTreeWidgetItem* _pRow) const
{
    if (_pRow == nullptr)
        return QString();
    QString qstrWords = m_fnDescribe ? m_fnDescribe(_pRow) : DefaultRowDescription(_pRow);
    // Qt's cells report no mixed check state to a reader: the words say it.
    if ((_pRow->flags() & Qt::ItemIsUserCheckable) && _pRow->checkState(0) == Qt::PartiallyChecked)
        qstrWords =
            qstrWords.isEmpty() ? tr("acc_part_checked") : tr("acc_words_part_checked").arg(qstrWords);
    return qstrWords;
}

QString CLS_TreeAccessibility::DefaultRowDescription(const QTreeWidgetItem* _pRow)
{
    if (_pRow == nullptr)
        return QString();
    if (_pRow->childCount() > 0)
        return tr("acc_row_branch").arg(_pRow->childCount());
    const CLS_TreeItem clsItem = RecordOf(_pRow);
    return clsItem.m_qstrTooltip != clsItem.m_qstrText ? clsItem.m_qstrTooltip : QString();
}

QString CLS_TreeAccessibility::ButtonsName(const QTreeWidgetItem* _pRow) const
{
    QStringList qlstNames;
    if (_pRow != nullptr) {
        const CLS_TreeItem clsItem = RecordOf(_pRow);
        for (const CLS_ItemButton& clsButton : clsItem.m_qvecButtons) {
            const QString qstrName = ButtonName(clsButton);
            qlstNames << (qstrName.isEmpty() ? clsButton.m_qstrId : qstrName);
        }
    }
    if (qlstNames.isEmpty())
        return tr("acc_no_buttons");
    return tr("acc_buttons_name").arg(qlstNames.join(", "));
}

bool CLS_TreeAccessibility::EnterRowButtons()
{
    if (m_pTree == nullptr)
        return false;
    QTreeWidgetItem* pRow = m_pTree->currentItem();
    if (pRow == nullptr || RecordOf(pRow).m_qvecButtons.isEmpty())
        return false;
    m_pTree->scrollToItem(pRow);
    QWidget* pHolder = m_pTree->EnsureItemButtons(pRow); // a bar still to come is made here
    CLS_WgtItemToolBar* pBar = pHolder != nullptr ? pHolder->findChild<CLS_WgtItemToolBar*>() : nullptr;
    if (pBar == nullptr)
        return false;
    // A bar shown on hover has an empty page in front: the buttons come forward while in use.
    auto* pStack = qobject_cast<QStackedWidget*>(pHolder);
    if (pStack != nullptr && pStack->currentWidget() != pBar) {
        RestoreStack();
        m_pShownStack = pStack;
        m_iStackPageBefore = pStack->currentIndex();
        pStack->setCurrentWidget(pBar);
    }
    const QList<QToolButton*> qlstButtons =
        BarButtons(qobject_cast<QToolButton*>(pBar->widgetForAction(pBar->actions().value(0))));
    for (QToolButton* pButton : qlstButtons)
        pButton->installEventFilter(this);
    if (qlstButtons.isEmpty())
        return false;
    qlstButtons.first()->setFocus(Qt::TabFocusReason);
    return true;
}

bool CLS_TreeAccessibility::LeaveRowButtons()
{
    if (m_pTree == nullptr)
        return false;
    m_pTree->setFocus(Qt::OtherFocusReason);
    RestoreStack();
    AnnounceCurrentRow();
    return true;
}

void CLS_TreeAccessibility::AnnounceCurrentRow()
{
    AnnounceCurrent(m_pTree.data());
}

int CLS_TreeAccessibility::CurrentChild(QAbstractItemView* _pView)
{
    if (_pView == nullptr || _pView->model() == nullptr)
        return -1;
    const QModelIndex index = _pView->currentIndex();
    if (!index.isValid())
        return -1;
    const QRect rectItem = _pView->visualRect(index.sibling(index.row(), 0));
    if (!rectItem.isValid() || !_pView->viewport()->rect().intersects(rectItem))
        return -1;
    QAccessibleInterface* pView = QAccessible::queryAccessibleInterface(_pView);
    if (pView == nullptr)
        return -1;
    // The cell under a point of the item, found the way a reader finds one.
    const QPoint ptGlobal =
        _pView->viewport()->mapToGlobal(QPoint(rectItem.left() + 1, rectItem.center().y()));
    QAccessibleInterface* pCell = pView->childAt(ptGlobal.x(), ptGlobal.y());
    return pCell != nullptr ? pView->indexOfChild(pCell) : -1;
}

void CLS_TreeAccessibility::AnnounceCurrent(QAbstractItemView* _pView)
{
    if (!QAccessible::isActive() || _pView == nullptr || !_pView->hasFocus())
        return;
    const int iChild = CurrentChild(_pView);
    if (iChild < 0)
        return;
    QAccessibleEvent event(_pView, QAccessible::Focus);
    event.setChild(iChild);
    QAccessible::updateAccessibility(&event);
}

QList<QToolButton*> CLS_TreeAccessibility::BarButtons(const QToolButton* _pButton) const
{
    QList<QToolButton*> qlstButtons;
    auto* pBar = _pButton != nullptr ? qobject_cast<CLS_WgtItemToolBar*>(_pButton->parentWidget()) : nullptr;
    if (pBar == nullptr || m_pTreeWidget == nullptr || !m_pTreeWidget->isAncestorOf(pBar))
        return qlstButtons;
    const QList<QAction*> qlstActions = pBar->actions();
    for (QAction* pAction : qlstActions) {
        auto* pButton = qobject_cast<QToolButton*>(pBar->widgetForAction(pAction));
        if (pButton != nullptr && pAction->isVisible() && pAction->isEnabled())
            qlstButtons.append(pButton);
    }
    return qlstButtons;
}

bool CLS_TreeAccessibility::ButtonKeyPressed(QToolButton* _pButton, const QKeyEvent* _pEvent)
{
    const QList<QToolButton*> qlstButtons = BarButtons(_pButton);
    const int iAt = qlstButtons.indexOf(_pButton);
    if (iAt < 0)
        return false;
    if (_pEvent->key() == Qt::Key_Escape && BareKey(_pEvent))
        return LeaveRowButtons();
    if (_pEvent->key() == Qt::Key_Left && BareKey(_pEvent, Qt::ControlModifier))
        return LeaveRowButtons();
    if (!BareKey(_pEvent))
        return false;
    switch (_pEvent->key()) {
    case Qt::Key_Left:
        if (iAt > 0)
            qlstButtons.at(iAt - 1)->setFocus(Qt::BacktabFocusReason);
        return true;
    case Qt::Key_Right:
        if (iAt + 1 < qlstButtons.size())
            qlstButtons.at(iAt + 1)->setFocus(Qt::TabFocusReason);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        _pButton->click(); // Space presses the button by itself
        return true;
    default:
        return false;
    }
}

void CLS_TreeAccessibility::RestoreStack()
{
    if (m_pShownStack != nullptr && m_iStackPageBefore >= 0 && m_iStackPageBefore < m_pShownStack->count())
        m_pShownStack->setCurrentIndex(m_iStackPageBefore);
    m_pShownStack = nullptr;
    m_iStackPageBefore = -1;
}

void CLS_TreeAccessibility::MarkFocus(QToolButton* _pButton, bool _blFocused)
{
    if (m_pMarked != nullptr) {
        m_pMarked->setStyleSheet(m_qstrSheetBefore);
        m_pMarked = nullptr;
    }
    if (!_blFocused || BarButtons(_pButton).isEmpty())
        return;
    m_pMarked = _pButton;
    m_qstrSheetBefore = _pButton->styleSheet();
    _pButton->setStyleSheet(
        m_qstrSheetBefore +
        QStringLiteral("\nQToolButton { border: 2px solid palette(highlight); border-radius: 3px; }"));
}

bool CLS_TreeAccessibility::eventFilter(QObject* _pWatched, QEvent* _pEvent)
{
    const QEvent::Type iType = _pEvent->type();
    if (_pWatched == m_pPanel && iType == QEvent::WindowTitleChange) {
        ApplyTreeName();
    } else if (_pWatched == m_pTreeWidget) {
        if (iType == QEvent::LanguageChange) {
            TranslateTexts();
        } else if (iType == QEvent::KeyPress) {
            const auto* pKey = static_cast<QKeyEvent*>(_pEvent);
            if (pKey->key() == Qt::Key_Right && BareKey(pKey, Qt::ControlModifier) && EnterRowButtons())
                return true;
        }
    } else if (auto* pButton = qobject_cast<QToolButton*>(_pWatched)) {
        if (iType == QEvent::KeyPress) {
            if (ButtonKeyPressed(pButton, static_cast<QKeyEvent*>(_pEvent)))
                return true;
        } else if (iType == QEvent::FocusIn) {
            MarkFocus(pButton, true);
        } else if (iType == QEvent::FocusOut) {
            MarkFocus(pButton, false);
            // Leaving the bar for anything but another of its buttons puts its page back.
            const QList<QToolButton*> qlstButtons = BarButtons(pButton);
            if (!qlstButtons.contains(qobject_cast<QToolButton*>(QApplication::focusWidget())))
                RestoreStack();
        }
    }
    return QObject::eventFilter(_pWatched, _pEvent);
}
