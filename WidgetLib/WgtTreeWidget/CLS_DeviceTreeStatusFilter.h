#pragma once
// The status filter of a device tree: shows only the channels on line, or only those off line,
// with the rows that lead to them; the root row always shows. It hides rows on top of whatever the
// tree's own narrowing (the keep list of a search by id or name) hides: a row shows only when both
// show it, and switching either off gives back what the other alone shows. Follows the channel
// counts row by row, so a status batch touches only the rows whose verdict it changes. GUI thread
// only.

#include <QObject>
#include <QPointer>
#include <QSet>

class CLS_DeviceTreeChannelCounts;
class CLS_WgtBaseTreeWidget;
class QTreeWidgetItem;

/// The status filter of a device tree: only on-line or only off-line channels, with the rows that
/// lead to them.
///
/// A channel row shows when its state matches, any other row while it has a matching channel below
/// it, the root row always. Rows are hidden with their own hidden flag, on top of what the tree's
/// own narrowing (SetShowItemById, SetShowItemByName) hides: the filter never shows a row the
/// narrowing hid. Follows CLS_DeviceTreeChannelCounts row by row, so a status batch touches only the
/// rows whose verdict it changes. Made and owned by CLS_DeviceTreeOperatorView. GUI thread only.
class CLS_DeviceTreeStatusFilter : public QObject
{
    Q_OBJECT

public:
    /// Makes a filter that shows all rows, notes the rows hidden now as the tree's own, and follows
    /// the tree's narrowing (SignKeepListApplied) and rebuilds from now on.
    /// @param _pTree   base tree whose rows are hidden; not owned, watched through a QPointer.
    /// @param _pCounts counts the filter reads; not owned, must outlive this object (the device
    ///                 tree owns all three).
    /// @param _pParent QObject parent, normally the operator view.
    CLS_DeviceTreeStatusFilter(CLS_WgtBaseTreeWidget* _pTree, CLS_DeviceTreeChannelCounts* _pCounts,
                               QObject* _pParent = nullptr);

    /// 0 all, 1 on line only, 2 off line only (n_StatusFilter); a change applies to every row.
    /// @return 0, or -1 for any other value, with no change.
    int SetFilter(int _iFilter);
    /// The filter in force: 0, 1 or 2 (0 by default).
    int Filter() const { return m_iFilter; }

    /// Whether the filter alone shows the row (the tree's own narrowing not asked). True for a null
    /// row, the root row, a row the counts do not hold, and any row while the filter is 0.
    bool Shows(QTreeWidgetItem* _pRow);
    /// Applies the filter to one row (a row whose counts or state changed); nothing for a null row
    /// or one taken out of the tree.
    void ApplyRow(QTreeWidgetItem* _pRow);
    /// Applies the filter to every row (a switch, a rebuild), counting first if needed; with the
    /// filter at 0 only the rows it hid are shown again.
    void ApplyAll();

private:
    // The tree's own narrowing set every row's hidden flag: note it as the tree's, hide again.
    void SlotKeepListApplied();
    // Notes every row hidden now as hidden by the tree's own narrowing.
    void NoteTreeHidden();
    void Hide(QTreeWidgetItem* _pRow);
    void Unhide(QTreeWidgetItem* _pRow);

    QPointer<CLS_WgtBaseTreeWidget> m_pTree;
    CLS_DeviceTreeChannelCounts* m_pCounts = nullptr;
    int m_iFilter = 0;
    QSet<QTreeWidgetItem*> m_qsetHidden; // rows the filter hides
    // Rows the tree's own narrowing hid when it last ran: they stay hidden when the filter lets go.
    QSet<QTreeWidgetItem*> m_qsetTreeHidden;
};
