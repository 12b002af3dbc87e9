#include "CLS_DeviceTreeMultiSelect.h"

#include "CLS_DeviceTreeDragData.h"
#include "CLS_WgtBaseTreeWidget.h"

#include <QMimeData>
#include <QSet>
#include <QTreeWidgetItem>

CLS_DeviceTreeMultiSelect::CLS_DeviceTreeMultiSelect(CLS_WgtBaseTreeWidget* _pTree,
                                                     const QMap<QString, CLS_CustomTreeNode>* _pNodes,
                                                     QObject* _pParent)
    : QObject(_pParent), m_pTree(_pTree), m_pNodes(_pNodes)
{
    if (m_pTree != nullptr)
        m_pTree->SetDragPayloadHook([this](QMimeData* _pData) { return AddDragFormats(_pData); });
}

CLS_DeviceTreeMultiSelect::~CLS_DeviceTreeMultiSelect()
{
    if (m_pTree != nullptr)
        m_pTree->SetDragPayloadHook(nullptr);
}

void CLS_DeviceTreeMultiSelect::SetMultiSelect(bool _blOn)
{
    m_blMultiSelect = _blOn;
    if (m_pTree == nullptr)
        return;
    if (_blOn) {
        m_pTree->setSelectionMode(QAbstractItemView::ExtendedSelection);
        return;
    }
    m_pTree->setSelectionMode(QAbstractItemView::SingleSelection);
    // The view keeps a selection made before the switch: narrow it to what a single selection allows.
    QTreeWidgetItem* pCurrent = m_pTree->currentItem();
    const bool blCurrentSelected = pCurrent != nullptr && pCurrent->isSelected();
    if (m_pTree->selectedItems().size() > (blCurrentSelected ? 1 : 0)) {
        m_pTree->clearSelection();
        if (blCurrentSelected)
            pCurrent->setSelected(true);
    }
}

const CLS_CustomTreeNode* CLS_DeviceTreeMultiSelect::NodeOfRow(QTreeWidgetItem* _pRow) const
{
    if (_pRow == nullptr || m_pTree == nullptr || m_pNodes == nullptr)
        return nullptr;
    CLS_TreeItem clsItem;
    if (m_pTree->GetBindData(_pRow, clsItem) != 0 || clsItem.m_qstrId.isEmpty())
        return nullptr;
    const auto it = m_pNodes->constFind(clsItem.m_qstrId);
    return it != m_pNodes->constEnd() ? &it.value() : nullptr;
}

int CLS_DeviceTreeMultiSelect::GetSelectedNodes(QVector<CLS_CustomTreeNode>& _qvecNodes) const
{
    if (m_pTree == nullptr)
        return 0;
    const QList<QTreeWidgetItem*> qlstSelected = m_pTree->selectedItems();
    if (qlstSelected.isEmpty())
        return 0;
    // The selection lists rows in the order they were selected: one walk over the rows puts them in
    // row order, whatever the size of the selection.
    const QSet<QTreeWidgetItem*> qsetSelected(qlstSelected.cbegin(), qlstSelected.cend());
    int iLeft = qsetSelected.size();
    QVector<QTreeWidgetItem*> qvecStack;
    for (int i = m_pTree->topLevelItemCount() - 1; i >= 0; --i)
        qvecStack.append(m_pTree->topLevelItem(i));
    while (!qvecStack.isEmpty() && iLeft > 0) {
        QTreeWidgetItem* pRow = qvecStack.takeLast();
        if (qsetSelected.contains(pRow)) {
            --iLeft;
            if (const CLS_CustomTreeNode* pNode = NodeOfRow(pRow))
                _qvecNodes.append(*pNode);
        }
        for (int i = pRow->childCount() - 1; i >= 0; --i)
            qvecStack.append(pRow->child(i));
    }
    return 0;
}

QMimeData* CLS_DeviceTreeMultiSelect::CreateDragData(const QVector<QString>& _qvecTreeIds) const
{
    QVector<CLS_CustomTreeNode> qvecNodes;
    QByteArray qbaAddress;
    for (const QString& qstrId : _qvecTreeIds) {
        if (m_pNodes == nullptr)
            break;
        const auto it = m_pNodes->constFind(qstrId);
        if (qstrId.isEmpty() || it == m_pNodes->constEnd())
            continue;
        qvecNodes.append(it.value());
        QTreeWidgetItem* pRow = m_pTree != nullptr ? m_pTree->GetNodeById(qstrId) : nullptr;
        if (qbaAddress.isEmpty() && pRow != nullptr)
            qbaAddress = CLS_WgtBaseTreeWidget::RowAddressBytes(pRow);
    }
    return CLS_DeviceTreeDragData::Create(qvecNodes, qbaAddress);
}

int CLS_DeviceTreeMultiSelect::AddDragFormats(QMimeData* _pData) const
{
    if (m_pTree == nullptr)
        return 0;
    QVector<CLS_CustomTreeNode> qvecNodes;
    if (m_blMultiSelect)
        GetSelectedNodes(qvecNodes);
    if (qvecNodes.isEmpty()) {
        if (const CLS_CustomTreeNode* pNode = NodeOfRow(m_pTree->currentItem()))
            qvecNodes.append(*pNode);
    }
    CLS_DeviceTreeDragData::AddPageFormats(qvecNodes, _pData);
    return qvecNodes.size();
}
