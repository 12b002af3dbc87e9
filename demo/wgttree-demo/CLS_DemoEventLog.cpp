#include "CLS_DemoEventLog.h"

#include <QPainter>
#include <QStyledItemDelegate>
#include <QTextLayout>
#include <QTime>

#include <cmath>

namespace {

// Lays a row's text out in lines of _iWidth; gives the height of the lines.
qreal LayOutText(QTextLayout& _layout, int _iWidth)
{
    QTextOption textOption;
    textOption.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    _layout.setTextOption(textOption);
    qreal dHeight = 0;
    _layout.beginLayout();
    for (QTextLine line = _layout.createLine(); line.isValid(); line = _layout.createLine()) {
        line.setLineWidth(_iWidth);
        line.setPosition(QPointF(0, dHeight));
        dHeight += line.height();
    }
    _layout.endLayout();
    return dHeight;
}

// Measures and paints a row's lines with one text layout, at the width the list paints the row at.
// The list's own hints are taken (in Qt 5) at a width that keeps room for a vertical scroll bar,
// shown or not, while its rows are painted as wide as the viewport: a line that fits the one but not
// the other would be placed as two lines and painted as one, with an empty line under it. The style's
// painter also takes each line to be as tall as the one before, so a row whose first line is taller
// than its last (Chinese text, then a name in Latin letters) would show as one elided line. A wrapped
// list lays its rows out again whenever its size changes, so the width read here is the current one.
class CLS_DemoLogRowDelegate : public QStyledItemDelegate
{
public:
    explicit CLS_DemoLogRowDelegate(QListView* _pView) : QStyledItemDelegate(_pView), m_pView(_pView) {}

    QSize sizeHint(const QStyleOptionViewItem& _option, const QModelIndex& _index) const override
    {
        QStyleOptionViewItem option(_option);
        initStyleOption(&option, _index);
        const int iRowWidth = qMax(1, m_pView->viewport()->width() - 2 * m_pView->spacing());
        QTextLayout layout(option.text, option.font);
        const qreal dHeight = LayOutText(layout, qMax(1, iRowWidth - 2 * TextMargin()));
        return QSize(iRowWidth, static_cast<int>(std::ceil(dHeight)));
    }

    void paint(QPainter* _pPainter, const QStyleOptionViewItem& _option,
               const QModelIndex& _index) const override
    {
        QStyleOptionViewItem option(_option);
        initStyleOption(&option, _index);
        const QString qstrText = option.text;
        // The row's panel (the skin's hover look) through the style, the text here.
        option.text.clear();
        QStyle* pStyle = m_pView->style();
        pStyle->drawControl(QStyle::CE_ItemViewItem, &option, _pPainter, m_pView);

        const QRect qrectText = option.rect.adjusted(TextMargin(), 0, -TextMargin(), 0);
        QTextLayout layout(qstrText, option.font);
        LayOutText(layout, qMax(1, qrectText.width()));
        const QPalette::ColorGroup group =
            (option.state & QStyle::State_Enabled) ? QPalette::Normal : QPalette::Disabled;
        _pPainter->save();
        _pPainter->setPen(option.palette.color(
            group, (option.state & QStyle::State_Selected) ? QPalette::HighlightedText : QPalette::Text));
        layout.draw(_pPainter, qrectText.topLeft());
        _pPainter->restore();
    }

private:
    // Space left and right of the text, as the style leaves it beside an item's text.
    int TextMargin() const
    {
        return m_pView->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, m_pView) + 1;
    }

    QListView* m_pView; // the delegate's parent
};

} // namespace

CLS_DemoEventLog::CLS_DemoEventLog(QWidget* _pParent) : QListWidget(_pParent)
{
    setWordWrap(true); // also makes the list lay its rows out again at every change of its size
    setSelectionMode(QAbstractItemView::NoSelection);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setItemDelegate(new CLS_DemoLogRowDelegate(this)); // owned by the list
}

void CLS_DemoEventLog::AppendLine(const QString& _qstrText)
{
    while (count() >= CONST_MAX_ROWS)
        delete takeItem(0);
    addItem(QTime::currentTime().toString("HH:mm:ss  ") + _qstrText);
    scrollToBottom();
}
