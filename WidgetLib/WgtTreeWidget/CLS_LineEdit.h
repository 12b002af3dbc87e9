#pragma once
// The search line of the tree panel: a QLineEdit that paints its own prompt, taken over from the
// placeholder text, for as long as the line is empty (also while it has the focus). GUI thread only.

#include <QColor>
#include <QLineEdit>
#include <QString>

/// The search line of the tree panel. Set the prompt with setPlaceholderText(): at the next paint
/// the line takes it over (placeholderText() is then empty) and paints it in dark grey, 3 pixels
/// from the left, for as long as the line is empty, with or without the focus. GUI thread only.
class CLS_LineEdit : public QLineEdit
{
    Q_OBJECT

public:
    /// An empty line without prompt.
    explicit CLS_LineEdit(QWidget* parent = nullptr);

    /// The prompt taken over from the placeholder text; a placeholder set since the last paint is
    /// not in it yet. Empty while no placeholder was ever painted.
    QString PromptText() const { return m_qstrPromptText; }

protected:
    /// Paints the line, takes over a new placeholder text as the prompt, and draws the prompt
    /// while the text is empty.
    void paintEvent(QPaintEvent* _pEvent) override;

private:
    QString m_qstrPromptText;               // prompt taken over from the placeholder
    QColor m_clrPromptColor = Qt::darkGray; // colour of the prompt
};
