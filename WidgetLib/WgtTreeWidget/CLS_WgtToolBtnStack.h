#pragma once
// The stack in column 1 of a row: the row's tool bar, behind a blank page in hover mode.
// Leaving it turns it back to page 0. GUI thread only.

#include <QStackedWidget>

class CLS_WgtToolBtnStack : public QStackedWidget
{
    Q_OBJECT

public:
    using QStackedWidget::QStackedWidget;

protected:
    void leaveEvent(QEvent* _pEvent) override;
};
