#include "CLS_DeviceTreeStatusFilter.h"

#include "CLS_DeviceTreeChannelCounts.h"
#include "CLS_TreeRowBatch.h"
#include "CLS_WgtBaseTreeWidget.h"

#include <QAbstractItemModel>
#include <QTreeWidgetItem>
#include <QVector>

namespace {

constexpr int CONST_iFilterAll = 0;
constexpr int CONST_iFilterOnline = 1;
constexpr int CONST_iFilterOffline = 2;

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
    connect(m_pTree->model(), &QAbstractItemModel::modelAboutToBeReset, this,
            [this]() { m_qhashHidden.clear(); });
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
    if (m_qhashHidden.contains(_pRow))
        return;
    const bool blTreeHidden = _pRow->isHidden();
    m_qhashHidden.insert(_pRow, blTreeHidden);
    if (!blTreeHidden)
        _pRow->setHidden(true);
}

void CLS_DeviceTreeStatusFilter::Unhide(QTreeWidgetItem* _pRow)
{
    const auto it = m_qhashHidden.find(_pRow);
    if (it == m_qhashHidden.end())
        return;
    const bool blTreeHidden = it.value();
    m_qhashHidden.erase(it);
    if (!blTreeHidden && _pRow->treeWidget() != nullptr)
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
        const QList<QTreeWidgetItem*> qlstRows = m_qhashHidden.keys();
        for (QTreeWidgetItem* pRow : qlstRows)
            Unhide(pRow);
        m_qhashHidden.clear();
        return;
    }
    QVector<QTreeWidgetItem*> qvecStack;
    for (int i = 0; i < m_pTree->topLevelItemCount(); ++i)
        qvecStack.append(m_pTree->topLevelItem(i));
    while (!qvecStack.isEmpty()) {
        QTreeWidgetItem* pRow = qvecStack.takeLast();
        ApplyRow(pRow);
        for (int i = pRow->childCount() - 1; i >= 0; --i)
            qvecStack.append(pRow->child(i));
    }
}

void CLS_DeviceTreeStatusFilter::SlotKeepListApplied()
{
    for (auto it = m_qhashHidden.begin(); it != m_qhashHidden.end();) {
        QTreeWidgetItem* pRow = it.key();
        if (pRow->treeWidget() == nullptr) {
            it = m_qhashHidden.erase(it); // taken out of the tree for good
            continue;
        }
        it.value() = pRow->isHidden();
        if (!it.value())
            pRow->setHidden(true);
        ++it;
    }
}
