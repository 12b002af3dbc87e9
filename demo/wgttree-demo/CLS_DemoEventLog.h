#pragma once
// The demo's event log: one row per line, newest at the bottom, long lines wrapped. A list, so that
// the skin's sheet for lists gives it the look of the trees; its rows are measured at the width they
// are painted at, so that no row keeps room for a line it doesn't show. GUI thread only.

#include <QListWidget>

class CLS_DemoEventLog : public QListWidget
{
    Q_OBJECT

public:
    explicit CLS_DemoEventLog(QWidget* _pParent = nullptr);

    // Adds a row "HH:mm:ss  <text>" and scrolls to it; the oldest rows go past CONST_MAX_ROWS.
    void AppendLine(const QString& _qstrText);

    static const int CONST_MAX_ROWS = 2000;
};
