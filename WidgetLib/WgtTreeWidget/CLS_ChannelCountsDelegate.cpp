#include "CLS_ChannelCountsDelegate.h"

#include "CLS_DeviceTreeChannelCounts.h"
#include "CLS_WgtBaseTreeWidget.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

namespace {

// The base tree keeps each row's record id under this role of column 0.
constexpr int CONST_iIdRole = Qt::UserRole;
// Space between the name and the counts, and after the counts.
constexpr int CONST_iCountMargin = 6;

} // namespace

CLS_ChannelCountsDelegate::CLS_ChannelCountsDelegate(CLS_WgtBaseTreeWidget* _pTree,
                                                     CLS_DeviceTreeChannelCounts* _pCounts, QObject* _pParent)
    : QStyledItemDelegate(_pParent), m_pTree(_pTree), m_pCounts(_pCounts)
{}

QString CLS_ChannelCountsDelegate::CountText(const QModelIndex& _index) const
{
    if (m_pTree == nullptr || m_pCounts == nullptr || !_index.isValid() || _index.column() != 0)
        return QString();
    QTreeWidgetItem* pRow = m_pTree->GetNodeById(_index.data(CONST_iIdRole).toString());
    int iOnline = 0;
    int iTotal = 0;
    if (pRow == nullptr || !m_pCounts->CountsOf(pRow, iOnline, iTotal) || iTotal <= 0)
        return QString();
    return QStringLiteral("%1/%2").arg(iOnline).arg(iTotal);
}

void CLS_ChannelCountsDelegate::paint(QPainter* _pPainter, const QStyleOptionViewItem& _option,
                                      const QModelIndex& _index) const
{
    const QString qstrCounts = CountText(_index);
    if (qstrCounts.isEmpty()) {
        QStyledItemDelegate::paint(_pPainter, _option, _index);
        return;
    }
    const int iWidth = _option.fontMetrics.horizontalAdvance(qstrCounts) + 2 * CONST_iCountMargin;
    const QRect rectCounts(_option.rect.right() - iWidth + 1, _option.rect.top(), iWidth,
                           _option.rect.height());

    // The row's background across the whole cell, then the row itself in what is left of it.
    QStyleOptionViewItem optFull(_option);
    initStyleOption(&optFull, _index);
    const QWidget* pWidget = _option.widget;
    QStyle* pStyle = pWidget != nullptr ? pWidget->style() : QApplication::style();
    pStyle->drawPrimitive(QStyle::PE_PanelItemViewItem, &optFull, _pPainter, pWidget);
    QStyleOptionViewItem optName(_option);
    optName.rect.setRight(rectCounts.left() - 1);
    QStyledItemDelegate::paint(_pPainter, optName, _index);

    const bool blSelected = (_option.state & QStyle::State_Selected) != 0;
    QColor color = _option.palette.color(blSelected ? QPalette::HighlightedText : QPalette::Text);
    color.setAlphaF(0.6);
    _pPainter->save();
    _pPainter->setPen(color);
    _pPainter->setFont(_option.font);
    _pPainter->drawText(rectCounts.adjusted(0, 0, -CONST_iCountMargin, 0), Qt::AlignRight | Qt::AlignVCenter,
                        qstrCounts);
    _pPainter->restore();
}

QSize CLS_ChannelCountsDelegate::sizeHint(const QStyleOptionViewItem& _option,
                                          const QModelIndex& _index) const
{
    QSize size = QStyledItemDelegate::sizeHint(_option, _index);
    const QString qstrCounts = CountText(_index);
    if (!qstrCounts.isEmpty())
        size.rwidth() += _option.fontMetrics.horizontalAdvance(qstrCounts) + 2 * CONST_iCountMargin;
    return size;
}
