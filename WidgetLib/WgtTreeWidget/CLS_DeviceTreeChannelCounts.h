#pragma once
// On-line and total counts of the channels (nodes of type 4) below every row of a device tree,
// kept current as rows come and go and as channel states change, so that a status batch of k
// channels costs k times the depth of the tree, never a walk of it. Reads the device tree's node
// model by tree id (never writes it) and the rows of its base tree. A rebuild of the rows marks the
// counts stale; the next question or change counts them again in one walk. GUI thread only.

#include "TreeStructDefine.h"

#include <QHash>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVector>

#include <functional>

class CLS_WgtBaseTreeWidget;
class QModelIndex;
class QTreeWidgetItem;

/// On-line and total counts of the channels below every row of a device tree, kept current.
///
/// A channel is a node of type 4; it is on line with status 1. Counting starts with the first
/// question and is then kept up by the base tree's model signals (rows inserted and removed, a new
/// record, a reset) and by NoteStatus(): a status change costs the depth of its row, never a walk.
/// A rebuild of the rows marks the counts stale; the next question or notice counts again in one
/// walk. Reads the node model and the rows, never writes them. Made and owned by
/// CLS_DeviceTreeOperatorView. GUI thread only.
class CLS_DeviceTreeChannelCounts : public QObject
{
    Q_OBJECT

public:
    /// Makes stale counts and follows the model of @p _pTree from now on.
    /// @param _pTree   base tree whose rows are counted; not owned, watched through a QPointer.
    /// @param _pNodes  the device tree's node model, read by tree id; not owned, must outlive this
    ///                 object (the device tree owns both).
    /// @param _pParent QObject parent, normally the operator view.
    CLS_DeviceTreeChannelCounts(CLS_WgtBaseTreeWidget* _pTree,
                                const QMap<QString, CLS_CustomTreeNode>* _pNodes,
                                QObject* _pParent = nullptr);

    /// What a row is to the counts: not a channel, a channel off line (any status but 1), on line.
    enum n_ChannelState : int
    {
        CHANNEL_NONE = -1,   ///< not a channel (no node, or a node of another type)
        CHANNEL_OFFLINE = 0, ///< a channel whose status is not 1
        CHANNEL_ONLINE = 1,  ///< a channel whose status is 1
    };

    /// Channels below the row (not the row itself) into @p _iTotal, those on line into
    /// @p _iOnline; counts first if the counts are stale.
    /// @return true; false for a null row or one the tree does not hold (outputs untouched).
    bool CountsOf(QTreeWidgetItem* _pRow, int& _iOnline, int& _iTotal);
    /// The row's own state (n_ChannelState), read from its node when the row was last counted or
    /// noted; CHANNEL_NONE for a row not counted. Counts first if the counts are stale.
    int StateOf(QTreeWidgetItem* _pRow);

    /// The node of this tree id may have changed (a status batch wrote its status, a page rewrote
    /// it): its row is read again and the counts above it follow. Nothing for an id without a row;
    /// stale counts are counted again instead.
    void NoteStatus(const QString& _qstrTreeId);
    /// The same with the node's type and status at hand (a status batch): no look-up of the node,
    /// and the row is found through the channels already counted.
    void NoteStatus(const QString& _qstrTreeId, int _iType, int _iStatus);
    /// Counts again now if the rows were rebuilt since the last count (calls the recounted handler).
    void EnsureCounted();

    /// Called, after the change, for every row whose own state changed and for every row whose
    /// on-line or off-line count went from none to some or back (the filter follows). Not called for
    /// the rows of a full count: see SetRecountedHandler. Replaces the previous handler; empty: none.
    void SetRowChangedHandler(std::function<void(QTreeWidgetItem*)> _fnChanged);
    /// Called once for each change of any row's counts (the painted counts follow). Replaces the
    /// previous handler; empty: none.
    void SetCountsMovedHandler(std::function<void()> _fnMoved);
    /// Called after a full count of all rows. Replaces the previous handler; empty: none.
    void SetRecountedHandler(std::function<void()> _fnRecounted);

private:
    struct STRCT_RowCounts
    {
        int m_iOnline = 0; // channels on line below the row
        int m_iTotal = 0;  // channels below the row
        int m_iState = CHANNEL_NONE;
    };

    void Recount();
    // The row's own state from its node (by the id kept in the row); files a channel's row by id.
    int ReadState(QTreeWidgetItem* _pRow);
    static int StateOfNode(int _iType, int _iStatus);
    // Counts a row that is new to this object and everything below it; its entry is made here.
    STRCT_RowCounts& CountSubtree(QTreeWidgetItem* _pRow);
    // Adds the row's channels (and the row itself) to every ancestor, with a sign; _blLater keeps
    // the ancestors for SlotRowsRemoved instead of telling the handler now.
    void AddToAncestors(QTreeWidgetItem* _pRow, const STRCT_RowCounts& _stCounts, int _iSign,
                        bool _blLater = false);
    QTreeWidgetItem* RowOfIndex(const QModelIndex& _index) const;
    // Whether the on-line or the off-line count went from zero to more or back.
    static bool Crossed(const STRCT_RowCounts& _stBefore, const STRCT_RowCounts& _stAfter);
    // Reads a counted row's state again (or takes the one given) and moves the counts above it by
    // the difference.
    void Restate(QTreeWidgetItem* _pRow, int _iKnownState = -2);

    void SlotRowsInserted(const QModelIndex& _parent, int _iFirst, int _iLast);
    void SlotRowsAboutToBeRemoved(const QModelIndex& _parent, int _iFirst, int _iLast);
    void SlotRowsRemoved();
    void SlotDataChanged(const QModelIndex& _topLeft, const QModelIndex& _bottomRight,
                         const QVector<int>& _qvecRoles);
    void SlotReset();

    QPointer<CLS_WgtBaseTreeWidget> m_pTree;
    const QMap<QString, CLS_CustomTreeNode>* m_pNodes = nullptr;
    // Every row counted so far, also rows taken out since (a move puts them back with their
    // counts); emptied when the rows are rebuilt, before the tree frees the rows it took out.
    QHash<QTreeWidgetItem*, STRCT_RowCounts> m_qhashRows;
    QVector<QTreeWidgetItem*> m_qvecLater; // ancestors of rows about to leave
    // Tree id -> row of every channel counted (a row taken out may stay until the next rebuild).
    QHash<QString, QTreeWidgetItem*> m_qhashChannelRows;
    bool m_blStale = true;
    std::function<void(QTreeWidgetItem*)> m_fnChanged;
    std::function<void()> m_fnMoved;
    std::function<void()> m_fnRecounted;
};
