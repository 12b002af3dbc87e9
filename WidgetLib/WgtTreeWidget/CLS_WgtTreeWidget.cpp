#include "CLS_WgtTreeWidget.h"

#include "CLS_LineEdit.h"
#include "CLS_TreeAccessibility.h"
#include "CLS_ViewBasic.h"
#include "CLS_WgtBaseTreeWidget.h"
#include "CLS_WgtTranslator.h"
#include "FunctionUtil.h"
#include "I_AppSignals.h"
#include "LxAppManager.h"
#include "Param.h"
#include "SiblingFence.h"
#include "Ui_CLS_WgtTreeWidget.h"

#include <QCoreApplication>
#include <QCursor>
#include <QDir>
#include <QEvent>
#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QListWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int CONST_iResultHeight = 38;     // height of one result
constexpr int CONST_iResultEdge = 3;        // edge added to the results' height
constexpr int CONST_iResultMaxHeight = 280; // the list scrolls beyond this
constexpr int CONST_iNoResultHeight = 41;   // height of the "msg_no_results" entry

I_AppSignals* AppSignals()
{
    using PFunGetAppSignals = I_AppSignals* (*)();
    auto pFun = reinterpret_cast<PFunGetAppSignals>(LxAppManager::GetModuleFun("GetAppSignals", ""));
    return pFun != nullptr ? WGT_SIBLING_CALL("GetAppSignals", nullptr, pFun()) : nullptr;
}

} // namespace

CLS_WgtTreeWidget::CLS_WgtTreeWidget(QWidget* parent, bool _blCheck, bool _blDrag, bool _blSearch,
                                     bool _blMenu, bool _blDrop, n_ItemBtnShowType _iBtnShowType)
    : QWidget(parent), m_pUi(new Ui_CLS_WgtTreeWidget), m_blShowSearch(_blSearch)
{
    // Once per process, before the first text of the form is translated.
    CLS_WgtTranslator::Install();
    m_pUi->setupUi(this); // connects the on_ slots by name
    m_pBaseTree = new CLS_WgtBaseTreeWidget(this, _blCheck, _blDrag, _blDrop, _blMenu, _iBtnShowType);
    if (_blMenu)
        CreateMenu();
    LoadPicPath();
    InitView();
    ConnectSignals();
    TranslateAccessibleTexts();
    m_pAccessibility = new CLS_TreeAccessibility(this, m_pBaseTree);
    LoadStyle();

    if (I_AppSignals* pAppSignals = AppSignals())
        connect(pAppSignals, &I_AppSignals::SignResizeView, this, &CLS_WgtTreeWidget::SlotResizeView);
}

CLS_WgtTreeWidget::~CLS_WgtTreeWidget()
{
    if (I_AppSignals* pAppSignals = AppSignals())
        disconnect(pAppSignals, &I_AppSignals::SignResizeView, this, &CLS_WgtTreeWidget::SlotResizeView);
    // The form record only holds pointers to children of this widget, which Qt destroys.
    delete m_pUi;
    m_pUi = nullptr;
    // m_pMenu is left alone: it belongs to the menu library.
}

void CLS_WgtTreeWidget::CreateMenu()
{
    QMap<QString, QVariant> qmapParam;
    qmapParam.insert("MenuType", QString("CLS_Menu"));
    m_pMenu = GetWgtView("WgtMenu", qmapParam);
    // No null check: without a menu Qt refuses the connection with a warning and the panel goes on.
    connect(m_pMenu, &CLS_ViewBasic::SignRequestTaskRsulted, this,
            [this](QString _qstrBusinessKey, QVariantMap _qmapData, QString _qstrBusinessUUID) {
                Q_UNUSED(_qstrBusinessKey)
                Q_UNUSED(_qstrBusinessUUID)
                // Every answer of the menu view counts as a chosen entry.
                WGT_SIBLING_RUN("hide", m_pMenu->hide());
                const QString qstrItemId = _qmapData.value("StrMenuItemClicked").toString();
                const bool blChecked = _qmapData.value("boolTreeWidget").toBool();
                emit SignTreeMenuItemClicked(qstrItemId, blChecked);
            });
}

void CLS_WgtTreeWidget::ShowMenu(const QList<_MenuItem>& _qlstItems)
{
    if (m_pMenu == nullptr)
        return;
    QVariantMap qmapResult;
    QVariantMap qmapInfo;
    qmapInfo.insert("Info", QVariant::fromValue(_qlstItems));
    // The menu view is the menu library's: a request that throws is as one it didn't answer.
    WGT_SIBLING_RUN("TaskRequest", m_pMenu->TaskRequest("setInfo", qmapInfo, qmapResult));

    QVariantMap qmapExec;
    qmapExec.insert("Pointexec", QCursor::pos()); // where the cursor is now, not where the click was
    WGT_SIBLING_RUN("TaskRequest", m_pMenu->TaskRequest("exec", qmapExec, qmapResult));
}

void CLS_WgtTreeWidget::LoadPicPath()
{
    const QString qstrAppDir = QCoreApplication::applicationDirPath();
    m_qstrPicPath = QString("%1/resource/skin/dark/WgtTreeWidget/images/").arg(qstrAppDir);
    const QString qstrSkin = QString::fromStdString(Param::GetParam("SystemConfig", "skin", "dark"));
    if (qstrSkin.isEmpty())
        return;
    const QString qstrPath = QString("%1/resource/skin/%2/WgtTreeWidget/images/").arg(qstrAppDir, qstrSkin);
    if (QDir(qstrPath).exists())
        m_qstrPicPath = qstrPath;
}

void CLS_WgtTreeWidget::InitView()
{
    if (m_pBaseTree == nullptr)
        return;
    m_pUi->qvboxlayoutTreeLayout->addWidget(m_pBaseTree);

    CLS_LineEdit* pLine = m_pUi->qlineedtQueryInput;
    QListWidget* pList = m_pUi->qlistWgtQueryResult;
    pLine->setContextMenuPolicy(Qt::NoContextMenu);
    pLine->setMaxLength(100);
    pList->setMaximumHeight(CONST_iResultMaxHeight);
    pList->hide();

    auto* pLineLayout = new QHBoxLayout(pLine);
    pLineLayout->setContentsMargins(0, 0, 0, 0);
    pLineLayout->setSpacing(0);

    const int iSide = pLine->height();
    m_pBtnSearch = new QToolButton(pLine);
    m_pBtnSearch->setMaximumSize(iSide, iSide);
    m_pBtnSearch->setIcon(QIcon(m_qstrPicPath + "icon_search.png"));
    m_pBtnSearch->setCursor(Qt::PointingHandCursor);
    m_pBtnSearch->setObjectName("qtoolbtnSearch");

    m_pBtnClear = new QToolButton(pLine);
    m_pBtnClear->setMaximumSize(iSide, iSide);
    m_pBtnClear->setIcon(QIcon(m_qstrPicPath + "edit_close.png"));
    m_pBtnClear->setCursor(Qt::PointingHandCursor);
    m_pBtnClear->setObjectName("qtoolbtnClear");

    // Both at the right end of the line, clear to the left of search.
    pLineLayout->addWidget(m_pBtnClear, 1, Qt::AlignRight);
    pLineLayout->addWidget(m_pBtnSearch, 0, Qt::AlignRight);

    pLine->clear();
    pList->clear();
    pList->hide();
    m_pBtnClear->hide();

    if (!m_blShowSearch) {
        pLine->hide();
    } else {
        pLine->show();
        pLine->setFocus(Qt::OtherFocusReason);
    }
}

void CLS_WgtTreeWidget::ConnectSignals()
{
    connect(m_pBaseTree, &CLS_WgtBaseTreeWidget::SignClicked, this, &CLS_WgtTreeWidget::SignClicked);
    connect(m_pBaseTree, &CLS_WgtBaseTreeWidget::SignDblClicked, this, &CLS_WgtTreeWidget::SignDblClicked);
    connect(m_pBaseTree, &CLS_WgtBaseTreeWidget::SignCheckedStatusChanged, this,
            &CLS_WgtTreeWidget::SignCheckedStatusChanged);
    connect(m_pBaseTree, &CLS_WgtBaseTreeWidget::SignSelected, this, &CLS_WgtTreeWidget::SignSelected);
    connect(m_pBaseTree, &CLS_WgtBaseTreeWidget::SignRightClicked, this,
            &CLS_WgtTreeWidget::SignRightClicked);
    connect(m_pBaseTree, &CLS_WgtBaseTreeWidget::SignClickButton, this, &CLS_WgtTreeWidget::SignClickButton);
    connect(m_pBaseTree, &CLS_WgtBaseTreeWidget::SignDroped, this, &CLS_WgtTreeWidget::SignDroped);

    // Return also reaches on_qlineedtQueryInput_returnPressed by name, so it searches twice; kept.
    connect(m_pUi->qlineedtQueryInput, &QLineEdit::returnPressed, this, &CLS_WgtTreeWidget::ExecuteSearch);
    connect(m_pBtnSearch, &QToolButton::clicked, this, &CLS_WgtTreeWidget::ExecuteSearch);
    connect(m_pBtnClear, &QToolButton::clicked, this, &CLS_WgtTreeWidget::ClearSearch);

    m_pUi->qlineedtQueryInput->installEventFilter(this);
    m_pUi->qlistWgtQueryResult->installEventFilter(this);
    if (m_blShowSearch && m_pBaseTree != nullptr)
        m_pBaseTree->installEventFilter(this); // Ctrl+F
}

void CLS_WgtTreeWidget::SetAccessibleTreeName(const QString& _qstrName)
{
    if (m_pAccessibility != nullptr)
        m_pAccessibility->SetTreeName(_qstrName);
}

void CLS_WgtTreeWidget::TranslateAccessibleTexts()
{
    m_pUi->qlineedtQueryInput->setAccessibleName(tr("acc_search_input"));
    m_pUi->qlineedtQueryInput->setAccessibleDescription(tr("acc_search_input_desc"));
    m_pUi->qlistWgtQueryResult->setAccessibleName(tr("acc_search_result"));
    m_pUi->qlistWgtQueryResult->setAccessibleDescription(tr("acc_search_result_desc"));
    if (m_pBtnClear != nullptr) {
        m_pBtnClear->setAccessibleName(tr("acc_btn_clear"));
        m_pBtnClear->setAccessibleDescription(tr("acc_btn_clear_desc"));
    }
    if (m_pBtnSearch != nullptr) {
        m_pBtnSearch->setAccessibleName(tr("acc_btn_search"));
        m_pBtnSearch->setAccessibleDescription(tr("acc_btn_search_desc"));
    }
}

void CLS_WgtTreeWidget::changeEvent(QEvent* _pEvent)
{
    if (_pEvent->type() == QEvent::LanguageChange) {
        m_pUi->retranslateUi(this);
        TranslateAccessibleTexts();
        QListWidget* pList = m_pUi->qlistWgtQueryResult;
        for (int i = 0; i < pList->count(); ++i) {
            QListWidgetItem* pItem = pList->item(i);
            if (!pItem->data(Qt::UserRole).isValid()) // the no-results entry
                pItem->setText(tr("msg_no_results"));
        }
    }
    QWidget::changeEvent(_pEvent);
}

bool CLS_WgtTreeWidget::eventFilter(QObject* _pWatched, QEvent* _pEvent)
{
    if (m_pUi == nullptr) // being destroyed
        return QWidget::eventFilter(_pWatched, _pEvent);
    if (_pWatched == m_pBaseTree &&
        (_pEvent->type() == QEvent::ShortcutOverride || _pEvent->type() == QEvent::KeyPress)) {
        // Ctrl+F in the tree opens the search line; the tree's key wins over a page's shortcut.
        if (!IsFindKey(static_cast<QKeyEvent*>(_pEvent)))
            return QWidget::eventFilter(_pWatched, _pEvent);
        _pEvent->accept();
        if (_pEvent->type() == QEvent::KeyPress)
            SetSearchVisible(true);
        return true;
    }
    const bool blSearchWidget =
        _pWatched == m_pUi->qlineedtQueryInput || _pWatched == m_pUi->qlistWgtQueryResult;
    if (_pEvent->type() == QEvent::ShortcutOverride && blSearchWidget) {
        // While a search is open, Escape clears it before any shortcut of the page sees the key.
        auto* pKeyEvent = static_cast<QKeyEvent*>(_pEvent);
        if (pKeyEvent->key() == Qt::Key_Escape && pKeyEvent->modifiers() == Qt::NoModifier &&
            (!m_pUi->qlineedtQueryInput->text().isEmpty() || !m_pUi->qlistWgtQueryResult->isHidden())) {
            pKeyEvent->accept();
            return true;
        }
    }
    if (_pEvent->type() == QEvent::KeyPress && blSearchWidget) {
        const auto* pKeyEvent = static_cast<QKeyEvent*>(_pEvent);
        if (pKeyEvent->modifiers() & ~Qt::KeypadModifier)
            return QWidget::eventFilter(_pWatched, _pEvent); // only bare keys are ours
        if (_pWatched == m_pUi->qlineedtQueryInput && LineKeyPressed(pKeyEvent->key()))
            return true;
        if (_pWatched == m_pUi->qlistWgtQueryResult && ListKeyPressed(pKeyEvent->key()))
            return true;
    }
    return QWidget::eventFilter(_pWatched, _pEvent);
}

bool CLS_WgtTreeWidget::IsFindKey(const QKeyEvent* _pEvent)
{
    return _pEvent->key() == Qt::Key_F && (_pEvent->modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier;
}

bool CLS_WgtTreeWidget::LineKeyPressed(int _iKey)
{
    QListWidget* pList = m_pUi->qlistWgtQueryResult;
    switch (_iKey) {
    case Qt::Key_Down:
        if (pList->isHidden() || pList->count() == 0)
            return false;
        // The focus first, then the row: a reader hears the list, then its first result. Taken for
        // any other reason than the mouse's, the focus would make the first row current inside the
        // focus change itself, and the result would be heard ahead of the list.
        pList->setFocus(Qt::MouseFocusReason);
        pList->setCurrentRow(0);
        return true;
    case Qt::Key_Escape: {
        // Taken only when there was a search to clear; otherwise it goes on to the page (a dialog
        // closes on it).
        const bool blOpen = !m_pUi->qlineedtQueryInput->text().isEmpty() || !pList->isHidden();
        ClearSearch();
        return blOpen;
    }
    default:
        return false;
    }
}

bool CLS_WgtTreeWidget::ListKeyPressed(int _iKey)
{
    QListWidget* pList = m_pUi->qlistWgtQueryResult;
    switch (_iKey) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (pList->currentItem() == nullptr)
            return false;
        ActivateResult(pList->currentItem());
        return true;
    case Qt::Key_Up:
        if (pList->currentRow() > 0)
            return false;
        m_pUi->qlineedtQueryInput->setFocus(Qt::BacktabFocusReason);
        return true;
    case Qt::Key_Escape:
        // The line first, so that hiding the list hands the focus nowhere else.
        m_pUi->qlineedtQueryInput->setFocus(Qt::OtherFocusReason);
        ClearSearch();
        return true;
    default:
        return false;
    }
}

void CLS_WgtTreeWidget::ActivateResult(QListWidgetItem* _pItem)
{
    const bool blRow = _pItem->data(Qt::UserRole).isValid();
    // The line takes the focus while the list closes: the tree, taking it with no current row,
    // would make its first row current on its own.
    m_pUi->qlineedtQueryInput->setFocus(Qt::OtherFocusReason);
    on_qlistWgtQueryResult_itemDoubleClicked(_pItem);
    if (blRow && m_pBaseTree != nullptr) {
        m_pBaseTree->setFocus(Qt::OtherFocusReason);
        if (m_pAccessibility != nullptr)
            m_pAccessibility->AnnounceCurrentRow(); // the row is what a reader hears last
    }
}

int CLS_WgtTreeWidget::LoadStyle()
{
    FunctionUtil::LoadStyle("WgtTreeWidget", this, "");
    return 0;
}

void CLS_WgtTreeWidget::SlotResizeView(double _dXScale, double _dYScale)
{
    Q_UNUSED(_dXScale)
    Q_UNUSED(_dYScale)
    LoadStyle(); // the resize broadcast only reloads the style
}

// ---- search --------------------------------------------------------------------------------------

void CLS_WgtTreeWidget::ExecuteSearch()
{
    const QString qstrText = m_pUi->qlineedtQueryInput->text();
    if (qstrText.isEmpty())
        return; // an open list stays as it is

    QListWidget* pList = m_pUi->qlistWgtQueryResult;
    pList->clear();

    QVector<CLS_TreeItem> qvecRows;
    QList<QListWidgetItem*> qlstEntries;
    bool blFound = false;
    if (m_fnSearch) {
        blFound = m_fnSearch(qstrText, qlstEntries) >= 0 && !qlstEntries.isEmpty();
    } else {
        blFound = m_pBaseTree != nullptr && m_pBaseTree->GetItemByName(qstrText, qvecRows) >= 0 &&
                  !qvecRows.isEmpty();
    }
    if (!blFound) {
        qDeleteAll(qlstEntries);
        auto* pItem = new QListWidgetItem(tr("msg_no_results"));
        pList->setFixedHeight(CONST_iNoResultHeight);
        pList->addItem(pItem);
        pList->show();
        return;
    }

    const int iCount = m_fnSearch ? qlstEntries.size() : qvecRows.size();
    const int iHeight = iCount * CONST_iResultHeight;
    pList->setFixedHeight(iHeight < CONST_iResultMaxHeight - CONST_iResultEdge ? iHeight + CONST_iResultEdge
                                                                               : CONST_iResultMaxHeight);
    for (const CLS_TreeItem& clsRow : qAsConst(qvecRows)) {
        auto* pItem = new QListWidgetItem();
        pItem->setData(Qt::DisplayRole, clsRow.m_qstrText);
        pItem->setData(Qt::UserRole, clsRow.m_qstrId);
        pList->addItem(pItem);
    }
    for (QListWidgetItem* pItem : qAsConst(qlstEntries))
        pList->addItem(pItem);
    pList->show();
}

QListWidget* CLS_WgtTreeWidget::GetResultList() const
{
    return m_pUi != nullptr ? m_pUi->qlistWgtQueryResult : nullptr;
}

void CLS_WgtTreeWidget::on_qlineedtQueryInput_textChanged(const QString& _qstrText)
{
    if (_qstrText.isEmpty()) {
        ClearSearch();
        return;
    }
    m_pBtnClear->show();
    ExecuteSearch();
}

void CLS_WgtTreeWidget::on_qlineedtQueryInput_returnPressed()
{
    ExecuteSearch();
}

void CLS_WgtTreeWidget::on_qlistWgtQueryResult_itemDoubleClicked(QListWidgetItem* _pItem)
{
    if (m_pBaseTree == nullptr)
        return;
    m_pUi->qlistWgtQueryResult->hide();
    const QVariant varId = _pItem != nullptr ? _pItem->data(Qt::UserRole) : QVariant();
    if (varId.isValid())
        m_pBaseTree->SetCurrentItem(varId.toString(), true);
    // Emptying the line lets the text-changed slot finish the job.
    m_pUi->qlineedtQueryInput->clear();
}

void CLS_WgtTreeWidget::ClearSearch()
{
    m_pUi->qlineedtQueryInput->clear();
    m_pUi->qlistWgtQueryResult->clear();
    m_pUi->qlistWgtQueryResult->hide();
    m_pBtnClear->hide();
}

void CLS_WgtTreeWidget::ClearAndCloseSearch()
{
    ClearSearch();
    m_pUi->qlineedtQueryInput->hide();
}

void CLS_WgtTreeWidget::SetSearchVisible(bool _blVisible)
{
    if (_blVisible) {
        m_pUi->qlineedtQueryInput->show();
        m_pUi->qlineedtQueryInput->setFocus(Qt::OtherFocusReason);
    } else {
        m_pUi->qlineedtQueryInput->hide();
    }
}

// ---- forwarders ----------------------------------------------------------------------------------

int CLS_WgtTreeWidget::Init(const QString& _qstrRootId, const QMap<QString, CLS_TreeItem>& _qmapItems,
                            bool _blShowRoot)
{
    return m_pBaseTree != nullptr ? m_pBaseTree->Init(_qstrRootId, _qmapItems, _blShowRoot) : -1;
}

int CLS_WgtTreeWidget::GetItemById(const QString& _qstrId, CLS_TreeItem& _clsItem)
{
    return m_pBaseTree != nullptr ? m_pBaseTree->GetItemById(_qstrId, _clsItem) : -1;
}

int CLS_WgtTreeWidget::GetItemByName(const QString& _qstrName, QVector<CLS_TreeItem>& _qvecItems)
{
    return m_pBaseTree != nullptr ? m_pBaseTree->GetItemByName(_qstrName, _qvecItems) : -1;
}

int CLS_WgtTreeWidget::GetCurrentItem(CLS_TreeItem& _clsItem)
{
    return m_pBaseTree != nullptr ? m_pBaseTree->GetCurrentItem(_clsItem) : -1;
}

int CLS_WgtTreeWidget::GetAllItems(QMap<QString, CLS_TreeItem>& _qmapItems)
{
    return m_pBaseTree != nullptr ? m_pBaseTree->GetAllItems(_qmapItems) : -1;
}

int CLS_WgtTreeWidget::GetCheckedItems(QVector<CLS_TreeItem>& _qvecItems, bool _blLeafOnly)
{
    return m_pBaseTree != nullptr ? m_pBaseTree->GetCheckedItems(_qvecItems, _blLeafOnly) : -1;
}

int CLS_WgtTreeWidget::GetCheckedNodes(QVector<CLS_TreeItem>& _qvecItems)
{
    return m_pBaseTree != nullptr ? m_pBaseTree->GetCheckedItems(_qvecItems, true) : -1;
}

int CLS_WgtTreeWidget::GetChilds(const QString& _qstrId, QVector<CLS_TreeItem>& _qvecItems, bool _blAllLevels)
{
    return m_pBaseTree != nullptr ? m_pBaseTree->GetChilds(_qstrId, _qvecItems, _blAllLevels) : -1;
}

int CLS_WgtTreeWidget::GetParent(const QString& _qstrId, CLS_TreeItem& _clsItem)
{
    return m_pBaseTree != nullptr ? m_pBaseTree->GetParent(_qstrId, _clsItem) : -1;
}

int CLS_WgtTreeWidget::GetItemCheckStatus(const QString& _qstrId, Qt::CheckState& _iState)
{
    return m_pBaseTree != nullptr ? m_pBaseTree->GetItemCheckStatus(_qstrId, _iState) : -1;
}

int CLS_WgtTreeWidget::AddItem(CLS_TreeItem _clsTreeItem)
{
    return m_pBaseTree != nullptr ? m_pBaseTree->AddItem(_clsTreeItem) : -1;
}

int CLS_WgtTreeWidget::MoveUpOneRow(QString _qstrSrcId, QString _qstrDesId)
{
    return m_pBaseTree != nullptr ? m_pBaseTree->MoveUpOneRow(_qstrSrcId, _qstrDesId) : -1;
}

int CLS_WgtTreeWidget::MoveDownOneRow(QString _qstrSrcId, QString _qstrDesId)
{
    return m_pBaseTree != nullptr ? m_pBaseTree->MoveDownOneRow(_qstrSrcId, _qstrDesId) : -1;
}

void CLS_WgtTreeWidget::AddItems(QVector<CLS_TreeItem> _qvecTreeItems)
{
    if (m_pBaseTree != nullptr)
        m_pBaseTree->AddItems(_qvecTreeItems);
}

void CLS_WgtTreeWidget::DeleteItem(QString _qstrId)
{
    if (m_pBaseTree != nullptr)
        m_pBaseTree->DeleteItem(_qstrId);
}

void CLS_WgtTreeWidget::UpdateItem(CLS_TreeItem _clsItem)
{
    if (m_pBaseTree != nullptr)
        m_pBaseTree->UpdateItem(_clsItem);
}

void CLS_WgtTreeWidget::UpdateItemIcon(QString _qstrId, QString _qstrIcon)
{
    if (m_pBaseTree != nullptr)
        m_pBaseTree->UpdateItemIcon(_qstrId, _qstrIcon);
}

void CLS_WgtTreeWidget::SetItemDisabled(QString _qstrId, bool blState)
{
    if (m_pBaseTree != nullptr)
        m_pBaseTree->SetItemDisabled(_qstrId, blState);
}

void CLS_WgtTreeWidget::SetTextMaxWidth(int _iWidth)
{
    if (m_pBaseTree != nullptr)
        m_pBaseTree->SetTextMaxWidth(_iWidth);
}

void CLS_WgtTreeWidget::Clear()
{
    if (m_pBaseTree != nullptr)
        m_pBaseTree->Clear();
}

void CLS_WgtTreeWidget::SetItemCheckStatus(QString _qstrId, Qt::CheckState _iState, bool _blSend)
{
    if (m_pBaseTree != nullptr)
        m_pBaseTree->SetItemCheckStatus(_qstrId, _iState, _blSend);
}

void CLS_WgtTreeWidget::SetCurrentItem(QString _qstrId, bool _blSend)
{
    if (m_pBaseTree != nullptr)
        m_pBaseTree->SetCurrentItem(_qstrId, _blSend);
}

void CLS_WgtTreeWidget::SetShowItemById(QString _qstrId)
{
    if (m_pBaseTree != nullptr)
        m_pBaseTree->SetShowItemById(_qstrId);
}

void CLS_WgtTreeWidget::SetShowItemByName(QString _qstrName)
{
    if (m_pBaseTree != nullptr)
        m_pBaseTree->SetShowItemByName(_qstrName);
}

void CLS_WgtTreeWidget::SetItemExpandStatus(QString _qstrId, n_TreeExpandType _iExpandType)
{
    if (m_pBaseTree != nullptr)
        m_pBaseTree->SetItemExpandStatus(_qstrId, _iExpandType);
}

void CLS_WgtTreeWidget::SetAllExpandStatus(bool _blShow)
{
    if (m_pBaseTree != nullptr)
        m_pBaseTree->SetAllExpandStatus(_blShow);
}

void CLS_WgtTreeWidget::ClearSelect()
{
    if (m_pBaseTree != nullptr)
        m_pBaseTree->clearSelection();
}
