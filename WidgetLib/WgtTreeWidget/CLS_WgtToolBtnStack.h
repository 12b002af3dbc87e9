#pragma once
// The stack in column 1 of a row: the row's tool bar, behind a blank page in hover mode.
// Leaving it turns it back to page 0. GUI thread only.

#include <QStackedWidget>

/// The widget in column 1 of a row with buttons: a QStackedWidget whose last page is the row's
/// CLS_WgtItemToolBar. At ITEM_BTN_SHOW_ALWAYS it has that one page; at other show types page 0 is
/// blank and page 1 the tool bar. Made and owned by CLS_WgtBaseTreeWidget. GUI thread only.
class CLS_WgtToolBtnStack : public QStackedWidget
{
    Q_OBJECT

public:
    /// The constructors of QStackedWidget.
    using QStackedWidget::QStackedWidget;

protected:
    /// Turns the stack back to page 0 whenever the mouse leaves it: the blank page of a two-page
    /// stack, no change for a one-page stack. The tree keeps the row as its hover row.
    void leaveEvent(QEvent* _pEvent) override;
};
