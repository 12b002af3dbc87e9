#include "CLS_DeviceTreeChannelCounts.h"

#include "CLS_WgtBaseTreeWidget.h"

#include <QAbstractItemModel>
#include <QTreeWidgetItem>
#include <QVector>

#include <utility>

namespace {

constexpr int CONST_iTypeChannel = 4;
// The base tree keeps each row's record id under this role of column 0.
constexpr int CONST_iIdRole = Qt::UserRole;
constexpr int CONST_iRecordRole = Qt::UserRole + 1;
// "Read the state from the node" for Restate.
constexpr int CONST_iUnknownState = -2;

} // namespace

CLS_DeviceTreeChannelCounts::CLS_DeviceTreeChannelCounts(CLS_WgtBaseTreeWidget* _pTree,
                                                         const QMap<QString, CLS_CustomTreeNode>* _pNodes,
                                                         QObject* _pParent)
    : QObject(_pParent), m_pTree(_pTree), m_pNodes(_pNodes)
{
    if (m_pTree == nullptr)
        return;
    QAbstractItemModel* pModel = m_pTree->model();
    connect(pModel, &QAbstractItemModel::rowsInserted, this, &CLS_DeviceTreeChannelCounts::SlotRowsInserted);
    connect(pModel, &QAbstractItemModel::rowsAboutToBeRemoved, this,
            &CLS_DeviceTreeChannelCounts::SlotRowsAboutToBeRemoved);
    connect(pModel, &QAbstractItemModel::rowsRemoved, this, &CLS_DeviceTreeChannelCounts::SlotRowsRemoved);
    connect(pModel, &QAbstractItemModel::dataChanged, this, &CLS_DeviceTreeChannelCounts::SlotDataChanged);
    connect(pModel, &QAbstractItemModel::modelAboutToBeReset, this, &CLS_DeviceTreeChannelCounts::SlotReset);
}

void CLS_DeviceTreeChannelCounts::SetRowChangedHandler(std::function<void(QTreeWidgetItem*)> _fnChanged)
{
    m_fnChanged = std::move(_fnChanged);
}

void CLS_DeviceTreeChannelCounts::SetCountsMovedHandler(std::function<void()> _fnMoved)
{
    m_fnMoved = std::move(_fnMoved);
}

void CLS_DeviceTreeChannelCounts::SetRecountedHandler(std::function<void()> _fnRecounted)
{
    m_fnRecounted = std::move(_fnRecounted);
}

bool CLS_DeviceTreeChannelCounts::CountsOf(QTreeWidgetItem* _pRow, int& _iOnline, int& _iTotal)
{
    EnsureCounted();
    const auto it = m_qhashRows.constFind(_pRow);
    if (_pRow == nullptr || it == m_qhashRows.cend() || _pRow->treeWidget() == nullptr)
        return false;
    _iOnline = it.value().m_iOnline;
    _iTotal = it.value().m_iTotal;
    return true;
}

int CLS_DeviceTreeChannelCounts::StateOf(QTreeWidgetItem* _pRow)
{
    EnsureCounted();
    const auto it = m_qhashRows.constFind(_pRow);
    return it == m_qhashRows.cend() ? CHANNEL_NONE : it.value().m_iState;
}

void CLS_DeviceTreeChannelCounts::EnsureCounted()
{
    if (m_blStale)
        Recount();
}

int CLS_DeviceTreeChannelCounts::ReadState(QTreeWidgetItem* _pRow)
{
    if (m_pNodes == nullptr)
        return CHANNEL_NONE;
    const QString qstrId = _pRow->data(0, CONST_iIdRole).toString();
    const auto it = m_pNodes->constFind(qstrId);
    if (it == m_pNodes->cend() || it.value().m_iType != CONST_iTypeChannel)
        return CHANNEL_NONE;
    m_qhashChannelRows.insert(qstrId, _pRow);
    return StateOfNode(it.value().m_iType, it.value().m_iStatus);
}

int CLS_DeviceTreeChannelCounts::StateOfNode(int _iType, int _iStatus)
{
    if (_iType != CONST_iTypeChannel)
        return CHANNEL_NONE;
    return _iStatus == 1 ? CHANNEL_ONLINE : CHANNEL_OFFLINE;
}

void CLS_DeviceTreeChannelCounts::Recount()
{
    m_qhashRows.clear();
    m_qhashChannelRows.clear();
    m_blStale = false;
    if (m_pTree != nullptr) {
        m_qhashRows.reserve(m_pTree->topLevelItemCount() + 64);
        for (int i = 0; i < m_pTree->topLevelItemCount(); ++i)
            CountSubtree(m_pTree->topLevelItem(i));
    }
    if (m_fnRecounted)
        m_fnRecounted();
}

CLS_DeviceTreeChannelCounts::STRCT_RowCounts&
CLS_DeviceTreeChannelCounts::CountSubtree(QTreeWidgetItem* _pRow)
{
    // Depth first without recursion: a row is summed into its parent once all its children are.
    struct STRCT_Step
    {
        QTreeWidgetItem* m_pRow;
        int m_iNext;
    };
    QVector<STRCT_Step> qvecStack;
    qvecStack.append({_pRow, 0});
    STRCT_RowCounts& stTop = m_qhashRows[_pRow];
    stTop = STRCT_RowCounts();
    stTop.m_iState = ReadState(_pRow);
    while (!qvecStack.isEmpty()) {
        STRCT_Step& stStep = qvecStack.last();
        if (stStep.m_iNext < stStep.m_pRow->childCount()) {
            QTreeWidgetItem* pChild = stStep.m_pRow->child(stStep.m_iNext++);
            STRCT_RowCounts stChild;
            stChild.m_iState = ReadState(pChild);
            m_qhashRows.insert(pChild, stChild);
            qvecStack.append({pChild, 0});
            continue;
        }
        QTreeWidgetItem* pDone = stStep.m_pRow;
        qvecStack.removeLast();
        if (qvecStack.isEmpty())
            break;
        const STRCT_RowCounts stDone = m_qhashRows.value(pDone);
        STRCT_RowCounts& stParent = m_qhashRows[qvecStack.last().m_pRow];
        stParent.m_iOnline += stDone.m_iOnline + (stDone.m_iState == CHANNEL_ONLINE ? 1 : 0);
        stParent.m_iTotal += stDone.m_iTotal + (stDone.m_iState != CHANNEL_NONE ? 1 : 0);
    }
    return m_qhashRows[_pRow];
}

void CLS_DeviceTreeChannelCounts::AddToAncestors(QTreeWidgetItem* _pRow, const STRCT_RowCounts& _stCounts,
                                                 int _iSign, bool _blLater)
{
    const int iOnline = _iSign * (_stCounts.m_iOnline + (_stCounts.m_iState == CHANNEL_ONLINE ? 1 : 0));
    const int iTotal = _iSign * (_stCounts.m_iTotal + (_stCounts.m_iState != CHANNEL_NONE ? 1 : 0));
    if (iOnline == 0 && iTotal == 0)
        return;
    bool blCrossing = true;
    for (QTreeWidgetItem* pUp = _pRow->parent(); pUp != nullptr; pUp = pUp->parent()) {
        STRCT_RowCounts& stUp = m_qhashRows[pUp];
        const STRCT_RowCounts stBefore = stUp;
        stUp.m_iOnline += iOnline;
        stUp.m_iTotal += iTotal;
        // Above a row whose counts kept their sign, none changes sign: those rows are not told.
        blCrossing = blCrossing && Crossed(stBefore, stUp);
        if (!blCrossing)
            continue;
        if (_blLater)
            m_qvecLater.append(pUp);
        else if (m_fnChanged)
            m_fnChanged(pUp);
    }
    if (m_fnMoved)
        m_fnMoved();
}

bool CLS_DeviceTreeChannelCounts::Crossed(const STRCT_RowCounts& _stBefore, const STRCT_RowCounts& _stAfter)
{
    return (_stBefore.m_iOnline > 0) != (_stAfter.m_iOnline > 0) ||
           (_stBefore.m_iTotal - _stBefore.m_iOnline > 0) != (_stAfter.m_iTotal - _stAfter.m_iOnline > 0);
}

void CLS_DeviceTreeChannelCounts::NoteStatus(const QString& _qstrTreeId)
{
    if (m_pTree == nullptr)
        return;
    if (m_blStale) {
        Recount(); // reads every state as it stands, this one included
        return;
    }
    Restate(m_pTree->GetNodeById(_qstrTreeId));
}

void CLS_DeviceTreeChannelCounts::NoteStatus(const QString& _qstrTreeId, int _iType, int _iStatus)
{
    if (m_pTree == nullptr)
        return;
    if (m_blStale) {
        Recount();
        return;
    }
    // A status batch names channels: their rows are at hand without a search of the tree's index.
    QTreeWidgetItem* pRow = m_qhashChannelRows.value(_qstrTreeId, nullptr);
    if (pRow == nullptr || pRow->treeWidget() == nullptr) {
        pRow = m_pTree->GetNodeById(_qstrTreeId);
        if (pRow == nullptr)
            return;
    }
    Restate(pRow, StateOfNode(_iType, _iStatus));
}

void CLS_DeviceTreeChannelCounts::Restate(QTreeWidgetItem* _pRow, int _iKnownState)
{
    if (_pRow == nullptr)
        return;
    const auto it = m_qhashRows.find(_pRow);
    if (it == m_qhashRows.end())
        return;
    const int iOld = it.value().m_iState;
    // The state read from the node may also file the row among the channels (ReadState).
    const int iState =
        _iKnownState == CONST_iUnknownState || iOld == CHANNEL_NONE ? ReadState(_pRow) : _iKnownState;
    if (iState == iOld)
        return;
    it.value().m_iState = iState;
    if (iOld != CHANNEL_NONE && iState != CHANNEL_NONE) {
        // On line or off line: only the on-line counts above it move.
        const int iDelta = iState == CHANNEL_ONLINE ? 1 : -1;
        bool blCrossing = true;
        for (QTreeWidgetItem* pUp = _pRow->parent(); pUp != nullptr; pUp = pUp->parent()) {
            STRCT_RowCounts& stUp = m_qhashRows[pUp];
            const STRCT_RowCounts stBefore = stUp;
            stUp.m_iOnline += iDelta;
            blCrossing = blCrossing && Crossed(stBefore, stUp);
            if (blCrossing && m_fnChanged)
                m_fnChanged(pUp);
        }
        if (m_fnMoved)
            m_fnMoved();
    } else {
        // A channel no more, or a channel now (a rewritten node).
        AddToAncestors(_pRow, STRCT_RowCounts{0, 0, iOld}, -1);
        AddToAncestors(_pRow, STRCT_RowCounts{0, 0, iState}, 1);
    }
    if (m_fnChanged)
        m_fnChanged(_pRow);
}

QTreeWidgetItem* CLS_DeviceTreeChannelCounts::RowOfIndex(const QModelIndex& _index) const
{
    if (!_index.isValid() || m_pTree == nullptr)
        return nullptr;
    return m_pTree->GetNodeById(_index.sibling(_index.row(), 0).data(CONST_iIdRole).toString());
}

void CLS_DeviceTreeChannelCounts::SlotRowsInserted(const QModelIndex& _parent, int _iFirst, int _iLast)
{
    if (m_blStale || m_pTree == nullptr)
        return; // a rebuild is under way: the rows are counted once, when next asked
    QTreeWidgetItem* pParent = RowOfIndex(_parent);
    if (_parent.isValid() && pParent == nullptr)
        return;
    if (pParent == nullptr) {
        // A new top-level row: only a rebuild makes those.
        m_blStale = true;
        return;
    }
    for (int i = _iFirst; i <= _iLast && i < pParent->childCount(); ++i) {
        QTreeWidgetItem* pRow = pParent->child(i);
        auto it = m_qhashRows.find(pRow);
        // A row taken out by a move comes back with its counts; a new row is counted now.
        const STRCT_RowCounts stCounts = it != m_qhashRows.end() ? it.value() : CountSubtree(pRow);
        AddToAncestors(pRow, stCounts, 1);
        if (m_fnChanged)
            m_fnChanged(pRow);
    }
}

void CLS_DeviceTreeChannelCounts::SlotRowsAboutToBeRemoved(const QModelIndex& _parent, int _iFirst,
                                                           int _iLast)
{
    if (m_blStale || m_pTree == nullptr)
        return;
    QTreeWidgetItem* pParent = RowOfIndex(_parent);
    if (pParent == nullptr) {
        // A top-level row goes: counted again when next asked.
        m_blStale = true;
        return;
    }
    for (int i = _iFirst; i <= _iLast && i < pParent->childCount(); ++i) {
        QTreeWidgetItem* pRow = pParent->child(i);
        const auto it = m_qhashRows.constFind(pRow);
        if (it != m_qhashRows.cend())
            AddToAncestors(pRow, it.value(), -1, true);
    }
}

void CLS_DeviceTreeChannelCounts::SlotRowsRemoved()
{
    // The ancestors of rows that left are told once the rows are out, not in the middle of it.
    const QVector<QTreeWidgetItem*> qvecRows = std::exchange(m_qvecLater, {});
    if (!m_fnChanged)
        return;
    for (QTreeWidgetItem* pRow : qvecRows) {
        if (pRow->treeWidget() != nullptr)
            m_fnChanged(pRow);
    }
}

void CLS_DeviceTreeChannelCounts::SlotDataChanged(const QModelIndex& _topLeft,
                                                  const QModelIndex& _bottomRight,
                                                  const QVector<int>& _qvecRoles)
{
    // A new record (a modified node) may change what a row is; a new icon or check state cannot.
    if (m_blStale || !_topLeft.isValid() ||
        (!_qvecRoles.isEmpty() && !_qvecRoles.contains(CONST_iRecordRole) &&
         !_qvecRoles.contains(CONST_iIdRole)))
        return;
    for (int iRow = _topLeft.row(); iRow <= _bottomRight.row(); ++iRow)
        Restate(RowOfIndex(_topLeft.sibling(iRow, 0)));
}

void CLS_DeviceTreeChannelCounts::SlotReset()
{
    // Before the tree frees the rows it took out: no entry may outlive its row.
    m_qhashRows.clear();
    m_qhashChannelRows.clear();
    m_qvecLater.clear();
    m_blStale = true;
}
