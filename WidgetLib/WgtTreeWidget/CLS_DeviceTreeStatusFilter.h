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

class CLS_DeviceTreeStatusFilter : public QObject
{
    Q_OBJECT

public:
    // Both must outlive this object (the device tree owns all three).
    CLS_DeviceTreeStatusFilter(CLS_WgtBaseTreeWidget* _pTree, CLS_DeviceTreeChannelCounts* _pCounts,
                               QObject* _pParent = nullptr);

    // 0 all, 1 on line only, 2 off line only (n_StatusFilter). -1 for any other value, with no change.
    int SetFilter(int _iFilter);
    int Filter() const { return m_iFilter; }

    // Whether the filter alone shows the row.
    bool Shows(QTreeWidgetItem* _pRow);
    // Applies the filter to one row (a row whose counts or state changed).
    void ApplyRow(QTreeWidgetItem* _pRow);
    // Applies the filter to every row (a switch, a rebuild).
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
