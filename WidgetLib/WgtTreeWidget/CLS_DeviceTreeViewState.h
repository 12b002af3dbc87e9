#pragma once
// What an operator left open in a tree, by row id: the expanded rows, the current row and the first
// row in view; read from a base tree, put back into one, and written in a small versioned format of
// our own (docs/view-state-format.md). Reading bytes never trusts them: any input is either read
// whole or refused. GUI thread only (the codec itself is plain data and may run anywhere).

#include <QByteArray>
#include <QSet>
#include <QString>

class CLS_WgtBaseTreeWidget;

class CLS_DeviceTreeViewState
{
public:
    QSet<QString> m_qsetExpanded; // ids of the expanded rows (rows with children only)
    QString m_qstrCurrentId;      // empty: no current row
    QString m_qstrTopId;          // first row in view; empty: none

    // The state of a tree as it stands.
    static CLS_DeviceTreeViewState Capture(CLS_WgtBaseTreeWidget* _pTree);
    // Puts the state back: exactly the saved rows expanded, the saved row current (silently, no
    // signal), the saved first row at the top. Ids the tree does not hold are passed over.
    void Apply(CLS_WgtBaseTreeWidget* _pTree) const;

    QByteArray Encode() const;
    // 0, or -1 for bytes that are not a whole state of a known version (_stState untouched).
    static int Decode(const QByteArray& _qbaBytes, CLS_DeviceTreeViewState& _stState);

    static constexpr quint8 CONST_uVersion = 1;
};
