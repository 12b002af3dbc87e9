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

class CLS_DeviceTreeOperatorView : public QObject
{
    Q_OBJECT

public:
    // _pNodes is the device tree's model; the device tree owns this object and outlives it.
    CLS_DeviceTreeOperatorView(CLS_WgtBaseTreeWidget* _pTree,
                               const QMap<QString, CLS_CustomTreeNode>* _pNodes, QObject* _pParent = nullptr);
    ~CLS_DeviceTreeOperatorView() override;

    int SetStatusFilter(int _iFilter);
    int GetStatusFilter() const;
    void SetShowChannelCounts(bool _blShow);
    bool GetShowChannelCounts() const { return m_pCountsDelegate != nullptr; }
    // Counts of the row of a tree id; 0/0 for an id without a row.
    void GetChannelCounts(const QString& _qstrTreeId, int& _iOnline, int& _iTotal);
    QByteArray SaveViewState() const;
    int RestoreViewState(const QByteArray& _qbaState);
    void SetKeepViewState(bool _blKeep);
    bool GetKeepViewState() const { return m_blKeepViewState; }

    // Hooks of the device tree: its rows are about to be cleared; the rows of a build are made; a
    // status batch wrote the status of a node.
    void BeforeClear();
    void AfterRowsBuilt();
    void NoteStatus(const QString& _qstrTreeId);
    void NoteStatus(const QString& _qstrTreeId, int _iType, int _iStatus); // GUI thread: a status batch

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
