#pragma once
// What an operator left open in a tree, by row id: the expanded rows, the current row and the first
// row in view; read from a base tree, put back into one, and written in a small versioned format of
// our own (docs/view-state-format.md). Reading bytes never trusts them: any input is either read
// whole or refused. GUI thread only (the codec itself is plain data and may run anywhere).

#include <QByteArray>
#include <QSet>
#include <QString>

class CLS_WgtBaseTreeWidget;

/// What an operator left open in a tree, by row id, and its byte format.
///
/// Capture() reads the expanded rows, the current row and the first row in view from a base tree,
/// Apply() puts them back; Encode() and Decode() write and read the versioned format of
/// docs/view-state-format.md. Decode() never trusts its input: any bytes are read whole or refused.
/// Capture() and Apply(): GUI thread only; the rest is plain data and may run on any thread.
class CLS_DeviceTreeViewState
{
public:
    QSet<QString> m_qsetExpanded; ///< ids of the expanded rows (rows with children only)
    QString m_qstrCurrentId;      ///< id of the current row; empty: no current row
    QString m_qstrTopId;          ///< id of the first row in view; empty: none

    /// The state of a tree as it stands; an empty state for a null tree.
    static CLS_DeviceTreeViewState Capture(CLS_WgtBaseTreeWidget* _pTree);
    /// Puts the state back: exactly the saved rows expanded (all others folded), the saved row
    /// current (silently, no signal, its folded parents left folded), the saved first row at the
    /// top if it can be seen. Ids the tree does not hold are passed over; a null tree: nothing.
    void Apply(CLS_WgtBaseTreeWidget* _pTree) const;

    /// The state in format version CONST_uVersion; the expanded ids sorted, so that one state
    /// always gives the same bytes.
    QByteArray Encode() const;
    /// Reads bytes of Encode() into @p _stState.
    /// @return 0, or -1 for bytes that are not a whole state of a known version (_stState untouched).
    static int Decode(const QByteArray& _qbaBytes, CLS_DeviceTreeViewState& _stState);

    static constexpr quint8 CONST_uVersion = 1; ///< format version written, and the only one read
};
