#pragma once
// What an operator gets on top of a device tree's rows: the status filter, the painted channel
// counts and the view state kept across rebuilds. Owns the three (CLS_DeviceTreeStatusFilter,
// CLS_ChannelCountsDelegate, CLS_DeviceTreeChannelCounts) and makes each when a page first asks for
// it; until then it costs the tree nothing. The device tree forwards its calls and tells it of
// clears, builds and status writes. GUI thread only.

#include "TreeStructDefine.h"

#include <QByteArray>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QString>

class CLS_ChannelCountsDelegate;
class QAbstractItemDelegate;
class CLS_DeviceTreeChannelCounts;
class CLS_DeviceTreeStatusFilter;
class CLS_WgtBaseTreeWidget;
class QTreeWidgetItem;

/// The operator's views of a device tree: status filter, painted channel counts and kept view state.
///
/// Made empty by CLS_WgtDeviceTree together with the tree; the channel counts, the filter and the
/// counts delegate are made on first use and are owned (deleted) by this object. The device tree
/// forwards the page's calls here and reports its clears, builds and status writes through
/// BeforeClear(), AfterRowsBuilt() and NoteStatus(). GUI thread only, unless a member says otherwise.
class CLS_DeviceTreeOperatorView : public QObject
{
    Q_OBJECT

public:
    /// Makes an empty operator view: the counts, filter and delegate wait for their first use.
    /// @param _pTree   base tree whose rows are filtered, counted and painted; not owned, watched
    ///                 through a QPointer (a null or deleted tree turns most calls into no-ops).
    /// @param _pNodes  the device tree's node model, read by tree id and never written; not owned,
    ///                 must outlive this object (the device tree owns both).
    /// @param _pParent QObject parent, normally the device tree.
    CLS_DeviceTreeOperatorView(CLS_WgtBaseTreeWidget* _pTree,
                               const QMap<QString, CLS_CustomTreeNode>* _pNodes, QObject* _pParent = nullptr);
    /// Gives the tree its own delegate back if the counts were painted, then deletes the counts
    /// delegate, the filter and the counts (in that order).
    ~CLS_DeviceTreeOperatorView() override;

    /// Shows all rows (0), only on-line channels (1) or only off-line channels (2) with the rows that
    /// lead to them (n_StatusFilter). The first non-zero value makes the counts and the filter.
    /// @return 0 on success (also for 0 before any filter exists); -1 for any other value or without
    ///         a tree, with nothing changed.
    int SetStatusFilter(int _iFilter);
    /// The filter in force: 0 all (also before any filter was set), 1 on line only, 2 off line only.
    int GetStatusFilter() const;
    /// Paints, or stops painting, "online/total" in column 0 of every row with channels below it.
    /// On: a CLS_ChannelCountsDelegate replaces the tree's delegate (kept aside). Off: the kept
    /// delegate returns (a new QStyledItemDelegate, owned by the tree, if it is gone). Repaints the
    /// view; no-op when nothing changes or without a tree.
    void SetShowChannelCounts(bool _blShow);
    /// Whether the channel counts are painted.
    bool GetShowChannelCounts() const { return m_pCountsDelegate != nullptr; }
    /// Channels below the row of @p _qstrTreeId (the row itself not counted) and how many of them
    /// are on line; 0/0 for an id without a row. The first call starts the counting, which is then
    /// kept current.
    void GetChannelCounts(const QString& _qstrTreeId, int& _iOnline, int& _iTotal);
    /// The tree's expanded rows, current row and first row in view, in the format of
    /// CLS_DeviceTreeViewState::Encode() (docs/view-state-format.md); an empty state without a tree.
    QByteArray SaveViewState() const;
    /// Puts back a state of SaveViewState() (CLS_DeviceTreeViewState::Apply(); no SignSelected).
    /// @return 0, or -1 for bytes that are not a whole state of a known version, or without a
    ///         tree; nothing changes then.
    int RestoreViewState(const QByteArray& _qbaState);
    /// On: every clear of a tree with rows keeps its view state, and the next build puts it back.
    /// Off: forgets a kept state.
    void SetKeepViewState(bool _blKeep);
    /// Whether the view state is kept across clears and rebuilds.
    bool GetKeepViewState() const { return m_blKeepViewState; }

    /// Hook of the device tree: its rows are about to be cleared. Keeps the view state when keeping
    /// is on and the tree has rows (a clear of an empty tree keeps the last state).
    void BeforeClear();
    /// Hook of the device tree: the rows of a build are made. Counts again if counting has begun
    /// (the filter follows) and puts back a kept view state.
    void AfterRowsBuilt();
    /// Hook of the device tree: the node of @p _qstrTreeId was written (a status or a rewritten
    /// node); the counts follow. May be called from any thread: from another thread than this
    /// object's (a build on a page's thread) it does nothing, as its rows are counted when made.
    void NoteStatus(const QString& _qstrTreeId);
    /// Hook of the device tree for a status batch: the node of @p _qstrTreeId now has type
    /// @p _iType and status @p _iStatus; the counts follow without a look-up of the node.
    /// GUI thread only.
    void NoteStatus(const QString& _qstrTreeId, int _iType, int _iStatus);

private:
    CLS_DeviceTreeChannelCounts* ChannelCounts();

    QPointer<CLS_WgtBaseTreeWidget> m_pTree;
    const QMap<QString, CLS_CustomTreeNode>* m_pNodes = nullptr;
    CLS_DeviceTreeChannelCounts* m_pChannelCounts = nullptr; // children of this object
    CLS_DeviceTreeStatusFilter* m_pStatusFilter = nullptr;
    CLS_ChannelCountsDelegate* m_pCountsDelegate = nullptr;
    QPointer<QAbstractItemDelegate> m_pPlainDelegate; // the tree's delegate while the counts paint
    bool m_blKeepViewState = false;
    QByteArray m_qbaKeptViewState; // taken from a tree with rows before its clear
};
