#pragma once
// The search line of the tree panel: a QLineEdit that paints its own prompt, taken over from the
// placeholder text, for as long as the line is empty (also while it has the focus). GUI thread only.

#include <QColor>
#include <QLineEdit>
#include <QString>

class CLS_LineEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit CLS_LineEdit(QWidget* parent = nullptr);

    QString PromptText() const { return m_qstrPromptText; }

protected:
    void paintEvent(QPaintEvent* _pEvent) override;

private:
    QString m_qstrPromptText;               // prompt taken over from the placeholder
    QColor m_clrPromptColor = Qt::darkGray; // colour of the prompt
};
