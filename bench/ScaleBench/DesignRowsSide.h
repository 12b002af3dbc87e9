#pragma once
// The plain tree of ScaleSides.h carrying what our tree's design asks of every row and nothing
// else: the row is a CLS_WgtTreeWidgetItem (a QObject) whose check signal is connected to the tree,
// the row holds its record (CLS_TreeItem, with the channel's own copy of the tool buttons), the
// tree keeps an id -> row map, the device tree a node per row and a device id -> tree id map, and a
// check change goes from the row's signal to a look-up of its node and a copy of the node into the
// check queue. Its figures are a floor for ours: what the design's own per-row work costs on top of
// the plain tree, measured alone. Included by the source file of ScaleDay, after ScaleSides.h.

#include "CLS_WgtTreeWidgetItem.h"

namespace {

class CLS_DesignRowsSide : public CLS_BaseSide
{
public:
    void Init(const STRCT_Case& _stCase) override
    {
        m_pReceiver = std::make_unique<QObject>();
        if (_stCase.m_qstrButtons != "none")
            m_qvecButtons = ChannelButtons();
        CLS_BaseSide::Init(_stCase);
    }
    void CheckRoot(bool _blChecked) override
    {
        m_qvecQueue.reserve(m_qmapNodes.size());
        CLS_BaseSide::CheckRoot(_blChecked);
    }
    void Destroy() override
    {
        CLS_BaseSide::Destroy();
        m_qmapRows.clear();
        m_qmapNodes.clear();
        m_qmapDevToTree.clear();
        m_qvecQueue.clear();
        m_pReceiver.reset();
    }

protected:
    QTreeWidgetItem* MakeRow(const QString& _qstrId, const QString& _qstrParentId, const QString& _qstrText,
                             const QIcon& _icon, int _iType, Qt::ItemFlags _flags) override
    {
        auto* pItem = new CLS_WgtTreeWidgetItem(QTreeWidgetItem::UserType + 1);
        QObject::connect(
            pItem, &CLS_WgtTreeWidgetItem::SignCheckStateChanged, m_pReceiver.get(),
            [this](QTreeWidgetItem* _pItem, bool _blChecked) { ReportCheck(_pItem, _blChecked); });

        CLS_CustomTreeNode node;
        node.m_qstrTreeId = _qstrId;
        node.m_qstrDevId = _qstrId;
        node.m_qstrTreeParentId = _qstrParentId;
        node.m_qstrName = _qstrText;
        node.m_iType = _iType;
        CLS_TreeItem clsItem;
        clsItem.m_qstrId = _qstrId;
        clsItem.m_qstrText = _qstrText;
        clsItem.m_qstrTooltip = _qstrText;
        clsItem.m_qstrParentId = _qstrParentId;
        clsItem.m_varData = QVariant(_qstrId);
        if (_iType == 4 && !m_qvecButtons.isEmpty()) {
            // Each channel's buttons carry its device id, as the device tree gives them.
            QVector<CLS_ItemButton> qvecButtons = m_qvecButtons;
            for (CLS_ItemButton& clsButton : qvecButtons)
                clsButton.m_varData = QVariant(_qstrId);
            clsItem.m_qvecButtons = qvecButtons;
        }
        FillRow(pItem, _qstrId, _qstrText, _icon, _iType, _flags);
        pItem->setData(0, Qt::UserRole + 3, QVariant::fromValue(clsItem));
        m_qmapRows.insert(_qstrId, pItem);
        m_qmapNodes.insert(_qstrId, node);
        m_qmapDevToTree.insert(_qstrId, _qstrId);
        return pItem;
    }

private:
    void ReportCheck(QTreeWidgetItem* _pItem, bool _blChecked)
    {
        const QVariant varRecord = _pItem->data(0, Qt::UserRole + 3);
        const auto* pRecord = static_cast<const CLS_TreeItem*>(varRecord.constData());
        const auto it = m_qmapNodes.constFind(pRecord->m_qstrId);
        if (it != m_qmapNodes.cend() && it.value().m_iType != 2)
            m_qvecQueue.append(qMakePair(it.value(), _blChecked));
    }

    std::unique_ptr<QObject> m_pReceiver;
    QVector<CLS_ItemButton> m_qvecButtons;
    QMap<QString, QTreeWidgetItem*> m_qmapRows;
    QMap<QString, CLS_CustomTreeNode> m_qmapNodes;
    QMap<QString, QString> m_qmapDevToTree;
    QVector<QPair<CLS_CustomTreeNode, bool>> m_qvecQueue;
};

} // namespace
