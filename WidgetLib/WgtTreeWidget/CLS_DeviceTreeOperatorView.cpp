#include "CLS_DeviceTreeOperatorView.h"

#include "CLS_ChannelCountsDelegate.h"
#include "CLS_DeviceTreeChannelCounts.h"
#include "CLS_DeviceTreeStatusFilter.h"
#include "CLS_DeviceTreeViewState.h"
#include "CLS_WgtBaseTreeWidget.h"
#include "CLS_WgtDeviceTree.h"

#include <QStyledItemDelegate>
#include <QThread>

#include <utility>

CLS_DeviceTreeOperatorView::CLS_DeviceTreeOperatorView(CLS_WgtBaseTreeWidget* _pTree,
                                                       const QMap<QString, CLS_CustomTreeNode>* _pNodes,
                                                       QObject* _pParent)
    : QObject(_pParent), m_pTree(_pTree), m_pNodes(_pNodes)
{}

CLS_DeviceTreeOperatorView::~CLS_DeviceTreeOperatorView()
{
    if (m_pCountsDelegate != nullptr && m_pTree != nullptr)
        SetShowChannelCounts(false); // the tree gets its own delegate back
    delete m_pCountsDelegate;
    delete m_pStatusFilter; // before the counts it follows
    delete m_pChannelCounts;
}

CLS_DeviceTreeChannelCounts* CLS_DeviceTreeOperatorView::ChannelCounts()
{
    if (m_pChannelCounts == nullptr && m_pTree != nullptr) {
        m_pChannelCounts = new CLS_DeviceTreeChannelCounts(m_pTree, m_pNodes, this);
        m_pChannelCounts->SetRowChangedHandler([this](QTreeWidgetItem* _pRow) {
            if (m_pStatusFilter != nullptr)
                m_pStatusFilter->ApplyRow(_pRow);
        });
        m_pChannelCounts->SetCountsMovedHandler([this]() {
            if (m_pCountsDelegate != nullptr && m_pTree != nullptr)
                m_pTree->viewport()->update(); // one repaint for many rows
        });
        m_pChannelCounts->SetRecountedHandler([this]() {
            if (m_pStatusFilter != nullptr)
                m_pStatusFilter->ApplyAll();
        });
    }
    return m_pChannelCounts;
}

int CLS_DeviceTreeOperatorView::SetStatusFilter(int _iFilter)
{
    if (_iFilter != STATUS_FILTER_ALL && _iFilter != STATUS_FILTER_ONLINE &&
        _iFilter != STATUS_FILTER_OFFLINE)
        return -1;
    if (m_pStatusFilter == nullptr) {
        if (_iFilter == STATUS_FILTER_ALL)
            return 0; // nothing to switch off
        if (ChannelCounts() == nullptr)
            return -1;
        m_pStatusFilter = new CLS_DeviceTreeStatusFilter(m_pTree, m_pChannelCounts, this);
    }
    return m_pStatusFilter->SetFilter(_iFilter);
}

int CLS_DeviceTreeOperatorView::GetStatusFilter() const
{
    return m_pStatusFilter != nullptr ? m_pStatusFilter->Filter() : STATUS_FILTER_ALL;
}

void CLS_DeviceTreeOperatorView::SetShowChannelCounts(bool _blShow)
{
    if (_blShow == (m_pCountsDelegate != nullptr) || m_pTree == nullptr || ChannelCounts() == nullptr)
        return;
    if (_blShow) {
        // The tree's delegate and column 0's: whichever a caller asks for is the one that paints.
        m_pCountsDelegate = new CLS_ChannelCountsDelegate(m_pTree, m_pChannelCounts, this);
        m_pPlainDelegate = m_pTree->itemDelegate();
        m_pTree->setItemDelegate(m_pCountsDelegate);
        m_pTree->setItemDelegateForColumn(0, m_pCountsDelegate);
    } else {
        m_pTree->setItemDelegateForColumn(0, nullptr);
        if (m_pPlainDelegate == nullptr)
            m_pPlainDelegate = new QStyledItemDelegate(m_pTree); // the view's own went with it
        m_pTree->setItemDelegate(m_pPlainDelegate);
        delete std::exchange(m_pCountsDelegate, nullptr);
    }
    m_pTree->viewport()->update();
}

void CLS_DeviceTreeOperatorView::GetChannelCounts(const QString& _qstrTreeId, int& _iOnline, int& _iTotal)
{
    // Counting starts with the first question and is kept from then on.
    int iOnline = 0;
    int iTotal = 0;
    if (ChannelCounts() != nullptr)
        m_pChannelCounts->CountsOf(m_pTree->GetNodeById(_qstrTreeId), iOnline, iTotal);
    _iOnline = iOnline;
    _iTotal = iTotal;
}

QByteArray CLS_DeviceTreeOperatorView::SaveViewState() const
{
    return CLS_DeviceTreeViewState::Capture(m_pTree).Encode();
}

int CLS_DeviceTreeOperatorView::RestoreViewState(const QByteArray& _qbaState)
{
    CLS_DeviceTreeViewState stState;
    if (m_pTree == nullptr || CLS_DeviceTreeViewState::Decode(_qbaState, stState) != 0)
        return -1;
    stState.Apply(m_pTree);
    return 0;
}

void CLS_DeviceTreeOperatorView::SetKeepViewState(bool _blKeep)
{
    m_blKeepViewState = _blKeep;
    if (!_blKeep)
        m_qbaKeptViewState.clear();
}

void CLS_DeviceTreeOperatorView::BeforeClear()
{
    // A clear of an empty tree keeps what the last tree with rows left open.
    if (m_blKeepViewState && m_pTree != nullptr && m_pTree->topLevelItemCount() > 0)
        m_qbaKeptViewState = SaveViewState();
}

void CLS_DeviceTreeOperatorView::AfterRowsBuilt()
{
    if (m_pChannelCounts != nullptr)
        m_pChannelCounts->EnsureCounted(); // the filter follows the new count
    if (m_blKeepViewState && !m_qbaKeptViewState.isEmpty())
        RestoreViewState(m_qbaKeptViewState);
}

void CLS_DeviceTreeOperatorView::NoteStatus(const QString& _qstrTreeId)
{
    // A build on a page's thread writes nodes too: its rows, made later on this thread, are
    // counted anew then.
    if (m_pChannelCounts != nullptr && QThread::currentThread() == thread())
        m_pChannelCounts->NoteStatus(_qstrTreeId);
}

void CLS_DeviceTreeOperatorView::NoteStatus(const QString& _qstrTreeId, int _iType, int _iStatus)
{
    if (m_pChannelCounts != nullptr)
        m_pChannelCounts->NoteStatus(_qstrTreeId, _iType, _iStatus);
}
