#pragma once
// Test helper: every signal of a base tree as one line, in emission order. GUI thread only.

#include "CLS_WgtBaseTreeWidget.h"

#include <QObject>
#include <QStringList>

// Every signal of one tree as a line, in emission order:
//   Clicked(b) DblClicked(b) RightClicked(b) Selected(b<-a) CheckedStatus(l1,1) Checked(l1,1)
//   ClickButton(row,btn,checkable,checked) Droped(c) Pressed(b)
// "Pressed" is QTreeWidget::itemPressed, which the base class's press emits; it marks where the
// base press ran. A line ends in "!" when the id argument differs from the record's id.
class CLS_TreeSignalLog : public QObject
{
public:
    explicit CLS_TreeSignalLog(CLS_WgtBaseTreeWidget* _pTree);

    void Add(const QString& _qstrLine) { m_qlstLines << _qstrLine; }
    void Clear() { m_qlstLines.clear(); }
    QString Text() const { return m_qlstLines.join(" "); }
    const QStringList& Lines() const { return m_qlstLines; }
    int Count(const QString& _qstrPrefix) const;

private:
    QStringList m_qlstLines;
};
