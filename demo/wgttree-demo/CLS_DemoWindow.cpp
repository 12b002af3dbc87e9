#include "CLS_DemoWindow.h"

#include "CLS_DemoEventLog.h"
#include "CLS_DemoLayoutPane.h"
#include "CLS_DemoSiblings.h"
#include "CLS_DevManage.h"
#include "CLS_IResourceTree.h"
#include "CLS_WgtDeviceTree.h"
#include "DevStructDefine.h"
#include "FunctionUtil.h"
#include "I_AppSignals.h"
#include "LxAppManager.h"
#include "Param.h"

#include <QApplication>
#include <QComboBox>
#include <QFont>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QMouseEvent>
#include <QScreen>
#include <QSet>
#include <QSplitter>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <memory>

namespace {

const char* const CONST_RESOURCE_ROOT = "resource_root_id";
const char* const CONST_CUSTOM_ROOT = "custom_root_id";
const char* const CONST_FAVORITE_ROOT = "favorite_root_id";
const int CONST_TYPE_HOST = 3;
const int CONST_TYPE_CHANNEL = 4;
// The scale at which the application's hub reports 1.0: the usual desktop's logical resolution.
const double CONST_BASE_DPI = 96.0;

// A caption above a widget, both in one column; the caption is set in bold.
QWidget* Titled(QLabel* _pTitle, QWidget* _pWidget)
{
    auto* pBox = new QWidget;
    auto* pLayout = new QVBoxLayout(pBox);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(2);
    QFont qfont = _pTitle->font();
    qfont.setBold(true);
    _pTitle->setFont(qfont);
    _pTitle->setContentsMargins(10, 4, 0, 0);
    pLayout->addWidget(_pTitle);
    pLayout->addWidget(_pWidget, 1);
    return pBox;
}

CLS_ItemButton MakeButton(const QString& _qstrId, const QString& _qstrText, const QString& _qstrTooltip)
{
    CLS_ItemButton clsButton;
    clsButton.m_qstrId = _qstrId; // the icon is "<skin images>/<id>.png"
    clsButton.m_qstrText = _qstrText;
    clsButton.m_qstrTooltip = _qstrTooltip;
    return clsButton;
}

_MenuItem MakeEntry(const QString& _qstrId, const QString& _qstrText, bool _blEnable = true)
{
    _MenuItem item;
    item.m_qstrItemId = _qstrId;
    item.m_qstrItemText = _qstrText;
    item.m_blEnable = _blEnable;
    return item;
}

_MenuItem MakeCheckEntry(const QString& _qstrId, const QString& _qstrText, bool _blChecked)
{
    _MenuItem item = MakeEntry(_qstrId, _qstrText);
    item.m_blCheckable = true;
    item.m_blChecked = _blChecked;
    return item;
}

} // namespace

CLS_DemoWindow::CLS_DemoWindow(const CLS_DemoSiblings* _pSiblings, QWidget* parent)
    : QMainWindow(parent), m_pSiblings(_pSiblings)
{
    setWindowTitle(tr("WgtTreeWidget demo"));

    // The five flags: drag, check boxes, right-click menu, search line, drop.
    // The resource tree's rows can be dragged out (to the layout), never dropped on.
    m_pResourceTree =
        new CLS_WgtDeviceTree(this, DEV_TREE_RESOURCE, true, false, true, true, false, ITEM_BTN_SHOW_HOVER);
    m_pCustomTree =
        new CLS_WgtDeviceTree(this, DEV_TREE_CUSTOM, true, true, false, false, true, ITEM_BTN_SHOW_HOVER);
    m_pFavoriteTree = new CLS_WgtDeviceTree(this, DEV_TREE_FAVORITE, false, false, false, false, false,
                                            ITEM_BTN_SHOW_ALWAYS);
    m_pResourceTree->SetName("resource");
    m_pCustomTree->SetName("custom");
    m_pFavoriteTree->SetName("favorite");

    m_pLog = new CLS_DemoEventLog;
    m_pLog->setAccessibleName(tr("Event log"));
    m_pStatusLine = new QLabel;
    m_pStatusLine->setContentsMargins(10, 2, 10, 4);

    auto* pSideTrees = new QSplitter(Qt::Vertical);
    pSideTrees->addWidget(
        Titled(AddCaption("custom", tr("Custom tree (check, drag to reorder)")), m_pCustomTree));
    pSideTrees->addWidget(Titled(AddCaption("favourites", tr("Favourites")), m_pFavoriteTree));
    pSideTrees->setSizes({430, 300});

    auto* pSplitter = new QSplitter(Qt::Horizontal);
    // The resource tree shows its on-line counts, and a switch above it filters by status.
    m_pFilter = new QComboBox;
    m_pFilter->addItem(tr("All channels"), int(STATUS_FILTER_ALL));
    m_pFilter->addItem(tr("On line"), int(STATUS_FILTER_ONLINE));
    m_pFilter->addItem(tr("Off line"), int(STATUS_FILTER_OFFLINE));
    m_pFilter->setAccessibleName(tr("Status filter"));
    connect(m_pFilter, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this](int _iIndex) { m_pResourceTree->SetStatusFilter(m_pFilter->itemData(_iIndex).toInt()); });
    m_pResourceTree->SetShowChannelCounts(true);
    m_pResourceTree->SetKeepViewState(true); // a rebuild keeps what was open
    // Search by any words of the name or the address, each hit with the rows above it; Ctrl and
    // Shift take several cameras, which drag out to the layout at once.
    m_pResourceTree->SetSearchMode(1);
    m_pResourceTree->SetSearchShowsPath(true);
    m_pResourceTree->SetMultiSelect(true);
    QWidget* pResourceBox = Titled(AddCaption("resources", tr("Resources")), m_pResourceTree);
    auto* pFilterRow = new QHBoxLayout;
    pFilterRow->setContentsMargins(10, 0, 4, 0);
    pFilterRow->addWidget(AddCaption("show", tr("Show:")));
    pFilterRow->addWidget(m_pFilter, 1);
    static_cast<QVBoxLayout*>(pResourceBox->layout())->insertLayout(1, pFilterRow);
    pSplitter->addWidget(pResourceBox);
    pSplitter->addWidget(pSideTrees);
    // A page's layout takes cameras dragged out of the resource tree; the log goes below it.
    m_pLayoutPane = new CLS_DemoLayoutPane;
    m_pLayoutPane->setAccessibleName(tr("Layout"));
    connect(m_pLayoutPane, &CLS_DemoLayoutPane::SignDropped, this, [this](int _iAdded, int _iCarried) {
        AppendLog(tr("layout: %1 of %2 dragged rows added").arg(_iAdded).arg(_iCarried));
    });
    auto* pRightColumn = new QSplitter(Qt::Vertical);
    pRightColumn->addWidget(Titled(AddCaption("layout", tr("Layout (drop cameras here)")), m_pLayoutPane));
    pRightColumn->addWidget(Titled(AddCaption("events", tr("Events")), m_pLog));
    pRightColumn->setSizes({220, 510});
    pSplitter->addWidget(pRightColumn);
    pSplitter->setStretchFactor(0, 3);
    pSplitter->setStretchFactor(1, 2);
    pSplitter->setStretchFactor(2, 3);
    pSplitter->setSizes({440, 380, 380});

    auto* pCentral = new QWidget;
    auto* pLayout = new QVBoxLayout(pCentral);
    pLayout->setContentsMargins(4, 4, 4, 0);
    pLayout->setSpacing(0);
    pLayout->addWidget(pSplitter, 1);
    pLayout->addWidget(m_pStatusLine);
    setCentralWidget(pCentral);
    // The skin's common sheets; the trees add their own.
    FunctionUtil::LoadStyle("Demo", this);

    connect(m_pResourceTree, &CLS_WgtDeviceTree::SignUpdateChannelsStatus, this,
            &CLS_DemoWindow::SlotStatusBatch);
    connect(m_pResourceTree, &CLS_WgtDeviceTree::SignRightClicked, this,
            &CLS_DemoWindow::SlotResourceRightClicked);
    connect(m_pResourceTree, &CLS_WgtDeviceTree::SignRightMenuItemClicked, this,
            &CLS_DemoWindow::SlotMenuItemClicked);
    for (CLS_WgtDeviceTree* pTree : {m_pResourceTree, m_pCustomTree}) {
        connect(pTree, &CLS_WgtDeviceTree::SignToolButtonClicked, this,
                &CLS_DemoWindow::SlotToolButtonClicked);
    }
    connect(
        m_pResourceTree, &CLS_WgtDeviceTree::SignDblClicked, this,
        [this](const CLS_CustomTreeNode& _node) { AppendLog(tr("double click: %1").arg(_node.m_qstrName)); });
    connect(m_pCustomTree, &CLS_WgtDeviceTree::SignCheckedStatusChangedQueue, this,
            &CLS_DemoWindow::SlotCheckedQueue);
    connect(m_pFavoriteTree, &CLS_WgtDeviceTree::SignSelected, this, [this](const CLS_CustomTreeNode& _node) {
        AppendLog(tr("favourite selected: %1").arg(_node.m_qstrName));
    });
    connect(&m_tmRefresh, &QTimer::timeout, this, &CLS_DemoWindow::SlotRefreshStatus);

    // The checkable entries of the context menu and their state at the start.
    m_qmapMenuChecks.insert("show_numbers", false);
    m_qmapMenuChecks.insert("show_offline", true);

    resize(1200, 780);
}

CLS_DemoWindow::~CLS_DemoWindow()
{
    m_tmRefresh.stop();
    disconnect(m_connDpi);
}

int CLS_DemoWindow::SetStatusFilter(const QString& _qstrFilter)
{
    const QStringList qlstNames = {"all", "online", "offline"};
    const int iIndex = qlstNames.indexOf(_qstrFilter);
    if (iIndex < 0)
        return -1;
    m_pFilter->setCurrentIndex(iIndex); // the switch sets the tree's filter
    return 0;
}

void CLS_DemoWindow::SaveViewState() const
{
    typedef int (*PFun_SetParam)(const std::string&, const std::string&, const std::string&);
    auto pFunSetParam = reinterpret_cast<PFun_SetParam>(Param::GetModuleFun("SetParam"));
    if (nullptr != pFunSetParam)
        pFunSetParam("WgtTreeDemo", "resourceViewState",
                     m_pResourceTree->SaveViewState().toBase64().toStdString());
}

void CLS_DemoWindow::RestoreViewState()
{
    const std::string strState = Param::GetParam("WgtTreeDemo", "resourceViewState", "");
    if (!strState.empty() &&
        m_pResourceTree->RestoreViewState(QByteArray::fromBase64(QByteArray::fromStdString(strState))) != 0)
        AppendLog(tr("the saved view of the resource tree could not be read"));
}

int CLS_DemoWindow::InitTrees()
{
    const CLS_ItemButton clsPreview = MakeButton("preview", tr("Preview"), tr("Open the live view"));
    const CLS_ItemButton clsPlayback = MakeButton("playback", tr("Playback"), tr("Play the recordings back"));
    QMap<int, QVector<CLS_ItemButton>> qmapButtons;
    qmapButtons.insert(CONST_TYPE_HOST, {clsPreview, clsPlayback});
    qmapButtons.insert(CONST_TYPE_CHANNEL, {clsPreview, clsPlayback});

    // The resource tree from weak pointers: the device layer keeps the objects, the tree copies.
    CLS_IResourceTree* pResourceTree = DevManage::GetResourceTree();
    if (nullptr == pResourceTree) {
        AppendLog(tr("the device layer gives no resource tree"));
        return -1;
    }
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapItems;
    if (pResourceTree->GetAllItems(qmapItems).m_iCode < 0 || qmapItems.isEmpty()) {
        AppendLog(tr("the device layer lists no resource"));
        return -1;
    }
    // Groups are not in a resource tree's default types; installations file their hosts in groups.
    const QSet<int> qsetNodeTypes = {2, CONST_TYPE_HOST, CONST_TYPE_CHANNEL, 5, 6, 12, 13, 17};
    if (m_pResourceTree->Init(qmapItems, tr("All resources"), qmapButtons, qsetNodeTypes) != 0) {
        AppendLog(tr("the resource tree could not be built"));
        return -1;
    }

    // The custom and favourites trees read the device layer's custom tree themselves.
    QMap<int, QVector<CLS_ItemButton>> qmapChannelButtons;
    qmapChannelButtons.insert(CONST_TYPE_CHANNEL, {clsPreview});
    if (m_pCustomTree->Init(tr("Custom tree"), qmapChannelButtons) != 0)
        AppendLog(tr("no custom tree in this installation"));
    if (m_pFavoriteTree->Init(tr("Favourites")) != 0)
        AppendLog(tr("no favourites in this installation"));

    const STRCT_DemoTreeCounts clsCounts = CountResourceTree();
    AppendLog(tr("installation: %1 hosts, %2 channels, %3 rows")
                  .arg(clsCounts.m_iHosts)
                  .arg(clsCounts.m_iChannels)
                  .arg(clsCounts.m_iRows));
    UpdateStatusLine();
    return 0;
}

void CLS_DemoWindow::SetStatusRefresh(int _iMsecs)
{
    if (_iMsecs <= 0) {
        m_tmRefresh.stop();
        return;
    }
    m_tmRefresh.start(_iMsecs);
}

void CLS_DemoWindow::WatchScreenScale()
{
    QWindow* pWindow = windowHandle();
    if (nullptr == pWindow)
        return;
    connect(pWindow, &QWindow::screenChanged, this, &CLS_DemoWindow::SlotScreenChanged, Qt::UniqueConnection);
    SlotScreenChanged(pWindow->screen());
}

int CLS_DemoWindow::TypeSearch(const QString& _qstrText, QStringList& _qlstEntries)
{
    // Like PrepareForPicture, the demo reaches below the device tree here, for the picture only.
    auto* pLine = m_pResourceTree->findChild<QLineEdit*>("qlineedtQueryInput");
    auto* pList = m_pResourceTree->findChild<QListWidget*>("qlistWgtQueryResult");
    if (pLine == nullptr || pList == nullptr || pLine->isHidden())
        return -1;
    pLine->setFocus(Qt::MouseFocusReason);
    for (const QChar qchKey : _qstrText) {
        QKeyEvent clsPress(QEvent::KeyPress, 0, Qt::NoModifier, QString(qchKey));
        QApplication::sendEvent(pLine, &clsPress);
        QKeyEvent clsRelease(QEvent::KeyRelease, 0, Qt::NoModifier, QString(qchKey));
        QApplication::sendEvent(pLine, &clsRelease);
    }
    int iResults = 0;
    for (int i = 0; i < pList->count(); ++i) {
        _qlstEntries << pList->item(i)->text();
        if (pList->item(i)->data(Qt::UserRole).isValid())
            ++iResults;
    }
    return iResults;
}

void CLS_DemoWindow::PrepareForPicture()
{
    // A page never reaches below the device tree; the demo does, only to unfold rows for the
    // picture and to stand the mouse on one row.
    if (QTreeWidget* pView = ViewOf(m_pResourceTree)) {
        QVector<QTreeWidgetItem*> qvecHosts;
        for (QTreeWidgetItemIterator it(pView); *it != nullptr && qvecHosts.size() < 2; ++it) {
            CLS_CustomTreeNode node;
            if (m_pResourceTree->GetItemById((*it)->data(0, Qt::UserRole).toString(), node) == 0 &&
                CONST_TYPE_HOST == node.m_iType)
                qvecHosts.append(*it);
        }
        for (QTreeWidgetItem* pHost : qAsConst(qvecHosts)) {
            for (QTreeWidgetItem* pRow = pHost; nullptr != pRow; pRow = pRow->parent())
                pView->expandItem(pRow);
        }
        pView->scrollToTop();
        QTreeWidgetItem* pHost = qvecHosts.isEmpty() ? nullptr : qvecHosts.constFirst();
        QTreeWidgetItem* pRow = (nullptr != pHost && pHost->childCount() > 2) ? pHost->child(2) : pHost;
        if (nullptr != pRow) {
            pView->setCurrentItem(pRow);
            // Two more cameras of the host taken with Ctrl, as a user picks cameras for a layout.
            for (int i = 4; i < 8 && i < pHost->childCount(); i += 3)
                pHost->child(i)->setSelected(true);
            const QPoint qptAt = pView->visualItemRect(pRow).center();
            QMouseEvent clsMove(QEvent::MouseMove, qptAt, pView->viewport()->mapToGlobal(qptAt), Qt::NoButton,
                                Qt::NoButton, Qt::NoModifier);
            QApplication::sendEvent(pView->viewport(), &clsMove);
        }
    }
    m_pCustomTree->ExpandAll();
    m_pFavoriteTree->ExpandAll();

    // The selected cameras in the layout, through the payload a drag of them carries.
    QVector<CLS_CustomTreeNode> qvecSelected;
    m_pResourceTree->GetSelectedNodes(qvecSelected);
    QVector<QString> qvecIds;
    for (const CLS_CustomTreeNode& node : qAsConst(qvecSelected))
        qvecIds.append(node.m_qstrTreeId);
    const std::unique_ptr<QMimeData> pPayload(m_pResourceTree->CreateDragData(qvecIds));
    QVector<CLS_CustomTreeNode> qvecDropped;
    if (CLS_WgtDeviceTree::ReadDragData(pPayload.get(), qvecDropped) == 0)
        m_pLayoutPane->AddNodes(qvecDropped);

    // The first group of the custom tree that holds channels alone, ticked as a user would.
    QVector<CLS_CustomTreeNode> qvecNodes;
    m_pCustomTree->GetChilds(CONST_CUSTOM_ROOT, qvecNodes, true);
    for (const CLS_CustomTreeNode& node : qAsConst(qvecNodes)) {
        if (2 != node.m_iType)
            continue;
        QVector<CLS_CustomTreeNode> qvecChildren;
        m_pCustomTree->GetChilds(node.m_qstrTreeId, qvecChildren, false);
        const bool blChannelsOnly =
            !qvecChildren.isEmpty() &&
            std::all_of(qvecChildren.cbegin(), qvecChildren.cend(), [](const CLS_CustomTreeNode& _child) {
                return CONST_TYPE_CHANNEL == _child.m_iType;
            });
        if (blChannelsOnly) {
            m_pCustomTree->SetItemCheckStatus(node.m_qstrTreeId, Qt::Checked, true);
            break;
        }
    }
}

QMap<QString, QString> CLS_DemoWindow::Captions() const
{
    QMap<QString, QString> qmapCaptions;
    for (auto it = m_qmapCaptions.cbegin(); it != m_qmapCaptions.cend(); ++it)
        qmapCaptions.insert(it.key(), it.value()->text());
    qmapCaptions.insert("title", windowTitle());
    qmapCaptions.insert("filter", m_pFilter->currentText());
    qmapCaptions.insert("status", m_pStatusLine->text());
    return qmapCaptions;
}

STRCT_DemoTreeCounts CLS_DemoWindow::CountResourceTree() const
{
    return CountTree(m_pResourceTree, CONST_RESOURCE_ROOT);
}

STRCT_DemoTreeCounts CLS_DemoWindow::CountCustomTree() const
{
    return CountTree(m_pCustomTree, CONST_CUSTOM_ROOT);
}

STRCT_DemoTreeCounts CLS_DemoWindow::CountFavoriteTree() const
{
    return CountTree(m_pFavoriteTree, CONST_FAVORITE_ROOT);
}

void CLS_DemoWindow::SlotStatusBatch(QVariant _qvarData)
{
    const auto qmapBatch = _qvarData.value<QMap<QString, QPair<bool, int>>>();
    ++m_iStatusBatches;
    m_iStatusEntries += qmapBatch.size();
    int iOnline = 0;
    for (auto it = qmapBatch.cbegin(); it != qmapBatch.cend(); ++it) {
        if (1 == it.value().second)
            ++iOnline;
    }
    AppendLog(tr("status batch %1: %2 channels, %3 on, %4 off")
                  .arg(m_iStatusBatches)
                  .arg(qmapBatch.size())
                  .arg(iOnline)
                  .arg(qmapBatch.size() - iOnline));
    SyncHostStates();
    UpdateStatusLine();
    emit SignStatusBatchApplied(m_iStatusBatches);
}

void CLS_DemoWindow::SlotResourceRightClicked(CLS_CustomTreeNode _node)
{
    // The menu's answer names the current row, so the clicked row becomes current first.
    m_pResourceTree->SetCurrentItem(_node.m_qstrTreeId, false);
    m_pResourceTree->ShowMenu(BuildMenu(_node));
}

void CLS_DemoWindow::SlotMenuItemClicked(CLS_CustomTreeNode _node, QString _qstrItemId, bool _blChecked)
{
    if (m_qmapMenuChecks.contains(_qstrItemId))
        m_qmapMenuChecks[_qstrItemId] = _blChecked;
    AppendLog(
        tr("menu: %1 on %2%3").arg(_qstrItemId, _node.m_qstrName, _blChecked ? tr(" (checked)") : QString()));
    if ("refresh" == _qstrItemId) {
        m_pResourceTree->UpdateChannelStatus();
    } else if ("expand" == _qstrItemId) {
        m_pResourceTree->ExpandAll();
    } else if ("collapse" == _qstrItemId) {
        m_pResourceTree->CollapseAll();
    }
}

void CLS_DemoWindow::SlotToolButtonClicked(QString _qstrCmd, CLS_CustomTreeNode _node, CLS_ItemButton _button)
{
    AppendLog(QString("%1: %2 [%3]").arg(_qstrCmd, _node.m_qstrName, _button.m_varData.toString()));
}

void CLS_DemoWindow::SlotCheckedQueue(QVector<QPair<CLS_CustomTreeNode, bool>> _qvecCheckChangedQueue,
                                      void* _pWgtPanel)
{
    Q_UNUSED(_pWgtPanel)
    QStringList qlstChanges;
    for (const auto& pair : qAsConst(_qvecCheckChangedQueue))
        qlstChanges << (pair.second ? "+" : "-") + pair.first.m_qstrName;
    AppendLog(tr("check batch of %1: %2").arg(_qvecCheckChangedQueue.size()).arg(qlstChanges.join(", ")));
}

void CLS_DemoWindow::SlotRefreshStatus()
{
    for (CLS_WgtDeviceTree* pTree : {m_pResourceTree, m_pCustomTree, m_pFavoriteTree})
        pTree->UpdateChannelStatus();
    UpdateStatusLine();
}

void CLS_DemoWindow::SlotScreenChanged(QScreen* _pScreen)
{
    disconnect(m_connDpi);
    if (nullptr != _pScreen) {
        m_connDpi =
            connect(_pScreen, &QScreen::logicalDotsPerInchChanged, this, &CLS_DemoWindow::SlotCheckScale);
    }
    SlotCheckScale();
}

void CLS_DemoWindow::SlotCheckScale()
{
    QWindow* pWindow = windowHandle();
    QScreen* pScreen = nullptr == pWindow ? nullptr : pWindow->screen();
    if (nullptr == pScreen)
        return;
    const double dScale = pScreen->logicalDotsPerInch() / CONST_BASE_DPI;
    if (m_dScale <= 0.0) {
        m_dScale = dScale; // the first look is the starting point, not a change
        return;
    }
    if (qFuzzyCompare(dScale, m_dScale))
        return;
    m_dScale = dScale;
    // The hub belongs to the application library; every panel of the process follows its signal.
    auto pFunGetAppSignals =
        reinterpret_cast<LxAppManager::PFun_GetAppSignals>(LxAppManager::GetModuleFun("GetAppSignals"));
    I_AppSignals* pSignals = nullptr == pFunGetAppSignals ? nullptr : pFunGetAppSignals();
    if (nullptr == pSignals) {
        AppendLog(tr("screen scale %1, no application hub to tell").arg(dScale));
        return;
    }
    AppendLog(tr("screen scale %1: SignResizeView sent").arg(dScale));
    emit pSignals->SignResizeView(dScale, dScale);
}

QLabel* CLS_DemoWindow::AddCaption(const QString& _qstrKey, const QString& _qstrText)
{
    auto* pCaption = new QLabel(_qstrText); // the caller puts it in a layout
    m_qmapCaptions.insert(_qstrKey, pCaption);
    return pCaption;
}

void CLS_DemoWindow::AppendLog(const QString& _qstrText)
{
    m_pLog->AppendLine(_qstrText);
}

void CLS_DemoWindow::SyncHostStates()
{
    CLS_IResourceTree* pResourceTree = DevManage::GetResourceTree();
    if (nullptr == pResourceTree)
        return;
    QVector<CLS_CustomTreeNode> qvecNodes;
    m_pResourceTree->GetChilds(CONST_RESOURCE_ROOT, qvecNodes, true);
    for (const CLS_CustomTreeNode& node : qAsConst(qvecNodes)) {
        if (CONST_TYPE_HOST != node.m_iType)
            continue;
        std::weak_ptr<STRCT_VideoItem> wpItem;
        if (pResourceTree->GetItem(wpItem, node.m_qstrDevId).m_iCode < 0)
            continue;
        const std::shared_ptr<STRCT_VideoItem> spItem = wpItem.lock();
        if (nullptr == spItem)
            continue;
        // The device layer's event codes: 3 on line, 4 off line. The tree acts on real changes only.
        m_pResourceTree->UpdateHostStatus(node.m_qstrTreeId, 1 == spItem->m_iStatus ? 3 : 4);
    }
}

void CLS_DemoWindow::UpdateStatusLine()
{
    const STRCT_DemoTreeCounts clsCounts = CountResourceTree();
    const int iChanges = (nullptr == m_pSiblings || nullptr == m_pSiblings->m_pFunSimulationChanges)
                             ? 0
                             : m_pSiblings->m_pFunSimulationChanges();
    m_pStatusLine->setText(tr("%1 hosts  \u00b7  %2 channels, %3 on line  \u00b7  %4 status batches  \u00b7  "
                              "%5 simulated changes")
                               .arg(clsCounts.m_iHosts)
                               .arg(clsCounts.m_iChannels)
                               .arg(clsCounts.m_iChannelsOnline)
                               .arg(m_iStatusBatches)
                               .arg(iChanges));
}

QList<_MenuItem> CLS_DemoWindow::BuildMenu(const CLS_CustomTreeNode& _node) const
{
    QList<_MenuItem> qlstItems;
    if (CONST_TYPE_HOST == _node.m_iType || CONST_TYPE_CHANNEL == _node.m_iType) {
        qlstItems << MakeEntry("preview", CONST_TYPE_HOST == _node.m_iType ? tr("Preview all channels")
                                                                           : tr("Open preview"));
        qlstItems << MakeEntry("playback", tr("Playback"));
    }
    _MenuItem view = MakeEntry("view", tr("View"));
    view.m_qlstChildren << MakeCheckEntry("show_numbers", tr("Show channel numbers"),
                                          m_qmapMenuChecks.value("show_numbers"));
    view.m_qlstChildren << MakeCheckEntry("show_offline", tr("Show off-line channels"),
                                          m_qmapMenuChecks.value("show_offline"));
    view.m_qlstChildren << MakeEntry("expand", tr("Expand all")) << MakeEntry("collapse", tr("Collapse all"));
    qlstItems << view;
    qlstItems << MakeEntry("refresh", tr("Refresh states"));
    qlstItems << MakeEntry("remote_config", tr("Remote configuration"), false);
    return qlstItems;
}

STRCT_DemoTreeCounts CLS_DemoWindow::CountTree(CLS_WgtDeviceTree* _pTree, const QString& _qstrRootId) const
{
    STRCT_DemoTreeCounts clsCounts;
    if (QTreeWidget* pView = ViewOf(_pTree)) {
        for (QTreeWidgetItemIterator it(pView); *it != nullptr; ++it)
            ++clsCounts.m_iRows;
    }
    QVector<CLS_CustomTreeNode> qvecNodes;
    _pTree->GetChilds(_qstrRootId, qvecNodes, true);
    for (const CLS_CustomTreeNode& node : qAsConst(qvecNodes)) {
        if (CONST_TYPE_HOST == node.m_iType) {
            ++clsCounts.m_iHosts;
        } else if (CONST_TYPE_CHANNEL == node.m_iType) {
            ++clsCounts.m_iChannels;
            if (1 == node.m_iStatus)
                ++clsCounts.m_iChannelsOnline;
        }
    }
    return clsCounts;
}

QTreeWidget* CLS_DemoWindow::ViewOf(CLS_WgtDeviceTree* _pTree)
{
    return nullptr == _pTree ? nullptr : _pTree->findChild<QTreeWidget*>();
}
