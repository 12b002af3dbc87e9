#pragma once
// Paints "online/total" at the right end of column 0 of every row that has channels below it, in a
// dimmer shade of the row's text colour; the row's name is elided before the counts instead of
// running under them. The row's text, record and data stay as they are: the counts live only in
// the painting, read from a CLS_DeviceTreeChannelCounts. GUI thread only.

#include <QStyledItemDelegate>

class CLS_DeviceTreeChannelCounts;
class CLS_WgtBaseTreeWidget;

class CLS_ChannelCountsDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    // Both must outlive this delegate (the device tree owns all three).
    CLS_ChannelCountsDelegate(CLS_WgtBaseTreeWidget* _pTree, CLS_DeviceTreeChannelCounts* _pCounts,
                              QObject* _pParent = nullptr);

    // The text painted for a row: "online/total", or empty for a row with no channel below it.
    QString CountText(const QModelIndex& _index) const;

    void paint(QPainter* _pPainter, const QStyleOptionViewItem& _option,
               const QModelIndex& _index) const override;
    QSize sizeHint(const QStyleOptionViewItem& _option, const QModelIndex& _index) const override;

private:
    CLS_WgtBaseTreeWidget* m_pTree = nullptr;
    CLS_DeviceTreeChannelCounts* m_pCounts = nullptr;
};
