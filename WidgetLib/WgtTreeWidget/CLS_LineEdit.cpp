#include "CLS_LineEdit.h"

#include <QPainter>

CLS_LineEdit::CLS_LineEdit(QWidget* parent) : QLineEdit(parent) {}

void CLS_LineEdit::paintEvent(QPaintEvent* _pEvent)
{
    QLineEdit::paintEvent(_pEvent);

    // Qt hides its own placeholder while the line has the focus; this prompt stays.
    if (!placeholderText().isEmpty()) {
        m_qstrPromptText = placeholderText();
        setPlaceholderText(QString());
    }
    if (text().isEmpty() && !m_qstrPromptText.isEmpty()) {
        QPainter painter(this);
        painter.setPen(m_clrPromptColor);
        const QRect rectText(QPoint(3, 0), QPoint(rect().right(), rect().bottom()));
        painter.drawText(rectText, Qt::AlignLeft | Qt::AlignVCenter, m_qstrPromptText);
    }
}
