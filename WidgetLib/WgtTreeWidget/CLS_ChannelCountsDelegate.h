#pragma once
// Paints "online/total" at the right end of column 0 of every row that has channels below it, in a
// dimmer shade of the row's text colour; the row's name is elided before the counts instead of
// running under them. The row's text, record and data stay as they are: the counts live only in
// the painting, read from a CLS_DeviceTreeChannelCounts. GUI thread only.

#include <QStyledItemDelegate>

class CLS_DeviceTreeChannelCounts;
class CLS_WgtBaseTreeWidget;

/// Delegate of a device tree that paints "online/total" at the right end of column 0.
///
/// Rows with channels below them get their counts, read from a CLS_DeviceTreeChannelCounts, in a
/// dimmer shade of the row's text colour; their name is elided before the counts. Other rows and
/// columns paint as with a QStyledItemDelegate. Rows' texts and data are never changed. Made and
/// owned by CLS_DeviceTreeOperatorView while the counts are shown. GUI thread only.
class CLS_ChannelCountsDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// Makes a delegate for the rows of @p _pTree. Both pointers are not owned and must outlive this
    /// delegate (the device tree owns all three).
    /// @param _pTree   base tree whose rows are painted.
    /// @param _pCounts counts painted.
    /// @param _pParent QObject parent, normally the operator view.
    CLS_ChannelCountsDelegate(CLS_WgtBaseTreeWidget* _pTree, CLS_DeviceTreeChannelCounts* _pCounts,
                              QObject* _pParent = nullptr);

    /// The text painted for a row: "online/total", or empty for a row with no channel below it, a
    /// column other than 0 or an invalid index. May start the counting (see
    /// CLS_DeviceTreeChannelCounts::CountsOf()).
    QString CountText(const QModelIndex& _index) const;

    /// Paints the row's background across the cell, the row in what is left, and the counts
    /// right-aligned at the end; a row without counts paints as with the base class.
    void paint(QPainter* _pPainter, const QStyleOptionViewItem& _option,
               const QModelIndex& _index) const override;
    /// The base class's size, widened by the counts and their margins where there are counts.
    QSize sizeHint(const QStyleOptionViewItem& _option, const QModelIndex& _index) const override;

private:
    CLS_WgtBaseTreeWidget* m_pTree = nullptr;
    CLS_DeviceTreeChannelCounts* m_pCounts = nullptr;
};
