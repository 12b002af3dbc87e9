#include "CLS_SearchResultDelegate.h"

#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace {

constexpr qreal CONST_dDimAlpha = 0.55; // opacity of the parents' part

} // namespace

CLS_SearchResultDelegate::CLS_SearchResultDelegate(QObject* _pParent) : QStyledItemDelegate(_pParent) {}

QVector<CLS_SearchResultDelegate::STRCT_Segment>
CLS_SearchResultDelegate::NameSegments(const QString& _qstrName, const QStringList& _qlstWords)
{
    // Mark every character inside an occurrence of a word, then cut the name where the mark changes.
    QVector<bool> qvecBold(_qstrName.size(), false);
    for (const QString& qstrWord : _qlstWords) {
        if (qstrWord.isEmpty())
            continue;
        for (int iAt = _qstrName.indexOf(qstrWord, 0, Qt::CaseInsensitive); iAt >= 0;
             iAt = _qstrName.indexOf(qstrWord, iAt + 1, Qt::CaseInsensitive)) {
            std::fill(qvecBold.begin() + iAt, qvecBold.begin() + iAt + qstrWord.size(), true);
        }
    }
    QVector<STRCT_Segment> qvecSegments;
    int iStart = 0;
    for (int i = 1; i <= _qstrName.size(); ++i) {
        if (i < _qstrName.size() && qvecBold.at(i) == qvecBold.at(iStart))
            continue;
        STRCT_Segment segment;
        segment.m_qstrText = _qstrName.mid(iStart, i - iStart);
        segment.m_blBold = qvecBold.at(iStart);
        qvecSegments.append(segment);
        iStart = i;
    }
    return qvecSegments;
}

QVector<CLS_SearchResultDelegate::STRCT_Segment>
CLS_SearchResultDelegate::Segments(const QModelIndex& _index) const
{
    const QString qstrText = _index.data(Qt::DisplayRole).toString();
    const QVariant varNameLength = _index.data(CONST_iNameLengthRole);
    const int iNameLength = varNameLength.isValid()
                                ? std::clamp(varNameLength.toInt(), 0, int(qstrText.size()))
                                : int(qstrText.size());
    QVector<STRCT_Segment> qvecSegments = NameSegments(qstrText.left(iNameLength), m_qlstWords);
    if (iNameLength < qstrText.size()) {
        STRCT_Segment segment;
        segment.m_qstrText = qstrText.mid(iNameLength);
        segment.m_blDim = true;
        qvecSegments.append(segment);
    }
    return qvecSegments;
}

void CLS_SearchResultDelegate::paint(QPainter* _pPainter, const QStyleOptionViewItem& _option,
                                     const QModelIndex& _index) const
{
    QStyleOptionViewItem opt = _option;
    initStyleOption(&opt, _index);
    const QWidget* pWidget = opt.widget;
    QStyle* pStyle = pWidget != nullptr ? pWidget->style() : QApplication::style();

    // The place of the text as the style lays it out, with the text still in the option.
    const int iMargin = pStyle->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, pWidget) + 1;
    const QRect rectText =
        pStyle->subElementRect(QStyle::SE_ItemViewItemText, &opt, pWidget).adjusted(iMargin, 0, -iMargin, 0);
    // Background, selection and focus as the style paints them; the text is ours.
    opt.text.clear();
    pStyle->drawControl(QStyle::CE_ItemViewItem, &opt, _pPainter, pWidget);
    const QPalette::ColorGroup iGroup =
        (opt.state & QStyle::State_Enabled) ? QPalette::Normal : QPalette::Disabled;
    const QColor qclrText = opt.palette.color(
        iGroup, (opt.state & QStyle::State_Selected) ? QPalette::HighlightedText : QPalette::Text);
    QColor qclrDim = qclrText;
    qclrDim.setAlphaF(qclrText.alphaF() * CONST_dDimAlpha);
    QFont fontBold = opt.font;
    fontBold.setBold(true);

    _pPainter->save();
    _pPainter->setClipRect(rectText);
    int iX = rectText.left();
    for (const STRCT_Segment& segment : Segments(_index)) {
        const QFont& font = segment.m_blBold ? fontBold : opt.font;
        const QFontMetrics metrics(font);
        const int iRoom = rectText.right() + 1 - iX;
        if (iRoom <= 0)
            break;
        QString qstrRun = segment.m_qstrText;
        const int iWidth = metrics.horizontalAdvance(qstrRun);
        const bool blLast = iWidth > iRoom;
        if (blLast)
            qstrRun = metrics.elidedText(qstrRun, Qt::ElideRight, iRoom);
        _pPainter->setFont(font);
        _pPainter->setPen(segment.m_blDim ? qclrDim : qclrText);
        _pPainter->drawText(QRect(iX, rectText.top(), iRoom, rectText.height()),
                            Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, qstrRun);
        if (blLast)
            break;
        iX += iWidth;
    }
    _pPainter->restore();
}

QSize CLS_SearchResultDelegate::sizeHint(const QStyleOptionViewItem& _option, const QModelIndex& _index) const
{
    // One line of the list's font: the height does not depend on the text, so a short one is
    // measured instead of a long path.
    QStyleOptionViewItem opt = _option;
    initStyleOption(&opt, _index);
    opt.text = QStringLiteral("Wg");
    const QWidget* pWidget = opt.widget;
    QStyle* pStyle = pWidget != nullptr ? pWidget->style() : QApplication::style();
    return pStyle->sizeFromContents(QStyle::CT_ItemViewItem, &opt, QSize(), pWidget);
}
