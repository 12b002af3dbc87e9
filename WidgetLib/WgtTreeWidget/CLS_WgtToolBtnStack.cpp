#include "CLS_WgtToolBtnStack.h"

void CLS_WgtToolBtnStack::leaveEvent(QEvent* _pEvent)
{
    // For every show type: with one page nothing changes; with two the blank page comes back while
    // the tree keeps this row as its hover row.
    setCurrentIndex(0);
    QWidget::leaveEvent(_pEvent);
}
