#include "CLS_TestBaseTree.h"

void CLS_TestBaseTree::startDrag(Qt::DropActions _supportedActions)
{
    ++m_iStartDrags;
    ++m_iDragDepth;
    if (m_fnDuringDrag)
        QTimer::singleShot(0, this, std::exchange(m_fnDuringDrag, {}));
    CLS_WgtBaseTreeWidget::startDrag(_supportedActions);
    --m_iDragDepth;
}
