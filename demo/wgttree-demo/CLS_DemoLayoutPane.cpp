#include "CLS_DemoLayoutPane.h"

#include "CLS_WgtDeviceTree.h"

#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QMimeData>

namespace {

const int CONST_TYPE_CHANNEL = 4;

bool CarriesNodes(const QMimeData* _pData)
{
    QVector<CLS_CustomTreeNode> qvecNodes;
    return CLS_WgtDeviceTree::ReadDragData(_pData, qvecNodes) == 0 && !qvecNodes.isEmpty();
}

} // namespace

CLS_DemoLayoutPane::CLS_DemoLayoutPane(QWidget* _pParent) : QListWidget(_pParent)
{
    setAcceptDrops(true);
    setDragDropMode(QAbstractItemView::DropOnly);
    setSelectionMode(QAbstractItemView::NoSelection);
    setFocusPolicy(Qt::NoFocus);
}

QStringList CLS_DemoLayoutPane::mimeTypes() const
{
    return {"application/x-wgttree-nodes"};
}

int CLS_DemoLayoutPane::AddNodes(const QVector<CLS_CustomTreeNode>& _qvecNodes)
{
    int iAdded = 0;
    for (const CLS_CustomTreeNode& node : _qvecNodes) {
        if (node.m_iType != CONST_TYPE_CHANNEL)
            continue;
        auto* pItem = new QListWidgetItem(node.m_qstrName, this);
        pItem->setToolTip(node.m_qstrDevId);
        ++iAdded;
    }
    if (iAdded > 0)
        scrollToBottom();
    return iAdded;
}

void CLS_DemoLayoutPane::dragEnterEvent(QDragEnterEvent* _pEvent)
{
    if (CarriesNodes(_pEvent->mimeData()))
        _pEvent->acceptProposedAction();
    else
        _pEvent->ignore();
}

void CLS_DemoLayoutPane::dragMoveEvent(QDragMoveEvent* _pEvent)
{
    // The whole pane takes the drop, wherever it lands.
    if (CarriesNodes(_pEvent->mimeData()))
        _pEvent->acceptProposedAction();
    else
        _pEvent->ignore();
}

void CLS_DemoLayoutPane::dropEvent(QDropEvent* _pEvent)
{
    QVector<CLS_CustomTreeNode> qvecNodes;
    if (CLS_WgtDeviceTree::ReadDragData(_pEvent->mimeData(), qvecNodes) != 0) {
        _pEvent->ignore();
        return;
    }
    _pEvent->acceptProposedAction();
    emit SignDropped(AddNodes(qvecNodes), qvecNodes.size());
}
