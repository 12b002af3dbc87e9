#include "CLS_DeviceTreeStatusFilter.h"

#include "CLS_DeviceTreeChannelCounts.h"
#include "CLS_TreeRowBatch.h"
#include "CLS_WgtBaseTreeWidget.h"

#include <QAbstractItemModel>
#include <QTreeWidgetItem>
#include <QVector>

#include <utility>

namespace {

constexpr int CONST_iFilterAll = 0;
constexpr int CONST_iFilterOnline = 1;
constexpr int CONST_iFilterOffline = 2;

// Every row of the tree, parents before their children (the tree's own walker).
template <typename Fn>
void ForEachRow(CLS_WgtBaseTreeWidget* _pTree, Fn _fn)
{
    QVector<QTreeWidgetItem*> qvecRows;
    for (int i = 0; i < _pTree->topLevelItemCount(); ++i) {
        qvecRows.append(_pTree->topLevelItem(i));
        _pTree->GetChildNode(_pTree->topLevelItem(i), qvecRows, true);
    }
    for (QTreeWidgetItem* pRow : qAsConst(qvecRows))
        _fn(pRow);
}

} // namespace

CLS_DeviceTreeStatusFilter::CLS_DeviceTreeStatusFilter(CLS_WgtBaseTreeWidget* _pTree,
                                                       CLS_DeviceTreeChannelCounts* _pCounts,
                                                       QObject* _pParent)
    : QObject(_pParent), m_pTree(_pTree), m_pCounts(_pCounts)
{
    if (m_pTree == nullptr)
        return;
    connect(m_pTree, &CLS_WgtBaseTreeWidget::SignKeepListApplied, this,
            &CLS_DeviceTreeStatusFilter::SlotKeepListApplied);
    // The rows go with a rebuild, before the tree frees those it took out.
    connect(m_pTree->model(), &QAbstractItemModel::modelAboutToBeReset, this, [this]() {
        m_qsetHidden.clear();
        m_qsetTreeHidden.clear();
    });
    NoteTreeHidden(); // a narrowing made before the filter: every hidden row is the tree's
}

int CLS_DeviceTreeStatusFilter::SetFilter(int _iFilter)
{
    if (_iFilter != CONST_iFilterAll && _iFilter != CONST_iFilterOnline && _iFilter != CONST_iFilterOffline)
        return -1;
    if (_iFilter == m_iFilter)
        return 0;
    m_iFilter = _iFilter;
    ApplyAll();
    return 0;
}

bool CLS_DeviceTreeStatusFilter::Shows(QTreeWidgetItem* _pRow)
{
    if (m_iFilter == CONST_iFilterAll || _pRow == nullptr || _pRow->parent() == nullptr ||
        m_pCounts == nullptr)
        return true; // the root row always shows
    const int iState = m_pCounts->StateOf(_pRow);
    if (iState != CLS_DeviceTreeChannelCounts::CHANNEL_NONE)
        return m_iFilter == CONST_iFilterOnline ? iState == CLS_DeviceTreeChannelCounts::CHANNEL_ONLINE
                                                : iState == CLS_DeviceTreeChannelCounts::CHANNEL_OFFLINE;
    int iOnline = 0;
    int iTotal = 0;
    if (!m_pCounts->CountsOf(_pRow, iOnline, iTotal))
        return true;
    return m_iFilter == CONST_iFilterOnline ? iOnline > 0 : iTotal - iOnline > 0;
}

void CLS_DeviceTreeStatusFilter::Hide(QTreeWidgetItem* _pRow)
{
    if (m_qsetHidden.contains(_pRow))
        return;
    m_qsetHidden.insert(_pRow);
    if (!m_qsetTreeHidden.contains(_pRow))
        _pRow->setHidden(true);
}

void CLS_DeviceTreeStatusFilter::Unhide(QTreeWidgetItem* _pRow)
{
    if (!m_qsetHidden.remove(_pRow))
        return;
    if (!m_qsetTreeHidden.contains(_pRow) && _pRow->treeWidget() != nullptr)
        _pRow->setHidden(false);
}

void CLS_DeviceTreeStatusFilter::ApplyRow(QTreeWidgetItem* _pRow)
{
    if (_pRow == nullptr || _pRow->treeWidget() == nullptr)
        return;
    if (Shows(_pRow))
        Unhide(_pRow);
    else
        Hide(_pRow);
}

void CLS_DeviceTreeStatusFilter::ApplyAll()
{
    if (m_pTree == nullptr)
        return;
    if (m_pCounts != nullptr)
        m_pCounts->EnsureCounted();
    CLS_TreeRowBatch batch(m_pTree);
    if (m_iFilter == CONST_iFilterAll) {
        // Only the rows the filter hid need their own flag back.
        const QSet<QTreeWidgetItem*> qsetRows = std::exchange(m_qsetHidden, {});
        for (QTreeWidgetItem* pRow : qsetRows) {
            if (!m_qsetTreeHidden.contains(pRow) && pRow->treeWidget() != nullptr)
                pRow->setHidden(false);
        }
        return;
    }
    ForEachRow(m_pTree, [this](QTreeWidgetItem* _pRow) { ApplyRow(_pRow); });
}

void CLS_DeviceTreeStatusFilter::NoteTreeHidden()
{
    m_qsetTreeHidden.clear();
    if (m_pTree == nullptr)
        return;
    ForEachRow(m_pTree, [this](QTreeWidgetItem* _pRow) {
        if (_pRow->isHidden())
            m_qsetTreeHidden.insert(_pRow);
    });
}

void CLS_DeviceTreeStatusFilter::SlotKeepListApplied()
{
    // The narrowing has just set every row's flag: those it hid are its own from now on.
    NoteTreeHidden();
    for (auto it = m_qsetHidden.begin(); it != m_qsetHidden.end();) {
        QTreeWidgetItem* pRow = *it;
        if (pRow->treeWidget() == nullptr) {
            it = m_qsetHidden.erase(it); // taken out of the tree for good
            continue;
        }
        if (!m_qsetTreeHidden.contains(pRow))
            pRow->setHidden(true);
        ++it;
    }
}
