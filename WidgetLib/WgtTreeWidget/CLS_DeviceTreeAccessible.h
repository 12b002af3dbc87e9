#pragma once
// A device tree's rows in words for assistive technology: each row's kind and state, as its icon
// shows them ("Channel, on line", "Recorder, off line", "Channel, no video"), and for a row with
// channels below it, with counts on, how many are on line ("Group, 12 of 16 channels on line").
// Installed as the panel's row describer (CLS_TreeAccessibility). GUI thread only.

#include "TreeStructDefine.h"

#include <QMap>
#include <QObject>
#include <QPointer>
#include <QString>

class CLS_WgtDeviceTree;
class CLS_WgtTreeWidget;
class QTreeWidgetItem;

/// A device tree's rows in words for assistive technology.
///
/// The description of a row's name cell is its kind and its state as its icon shows them, in the
/// current language:
/// - kind by type code: group, recorder (host), channel, alarm input and output, decoder and its
///   outputs and inputs, and the other resource kinds; a root is a group;
/// - state: a recorder or channel is "off line" at status 0; a channel of status 2 has "no video";
///   any other status is "on line". A bound pad, car or way is "on line" at status 1, else it has
///   "a fault" (the icon's error picture). Other kinds have no state.
/// - with channel counts shown (CLS_WgtDeviceTree::SetShowChannelCounts), a row with channels below
///   it adds "12 of 16 channels on line".
///
/// Words are made when a reader asks, from the node as it is then. Made and owned by
/// CLS_WgtDeviceTree. GUI thread only.
class CLS_DeviceTreeAccessible : public QObject
{
    Q_OBJECT

public:
    /// Installs the describer on @p _pPanel's tree.
    /// @param _pPanel  the device tree's panel; not owned.
    /// @param _pNodes  the device tree's node model, read by tree id; not owned, must outlive this
    ///                 object (the device tree owns both).
    /// @param _pTree   the device tree, asked for its channel counts; also the QObject parent.
    CLS_DeviceTreeAccessible(CLS_WgtTreeWidget* _pPanel, const QMap<QString, CLS_CustomTreeNode>* _pNodes,
                             CLS_WgtDeviceTree* _pTree);
    ~CLS_DeviceTreeAccessible() override;

    /// Gives the panel's tree the page's accessible name (CLS_WgtTreeWidget::SetAccessibleTreeName).
    void SetTreeName(const QString& _qstrName);
    /// The description of the row with tree id @p _qstrTreeId; empty for an id without a node.
    QString Describe(const QString& _qstrTreeId) const;
    /// The kind of @p _node in words ("Channel").
    static QString KindText(const CLS_CustomTreeNode& _node);
    /// The state of @p _node in words ("on line"); empty for a kind without a state.
    static QString StateText(const CLS_CustomTreeNode& _node);

private:
    QPointer<CLS_WgtTreeWidget> m_pPanel;
    const QMap<QString, CLS_CustomTreeNode>* m_pNodes = nullptr;
    CLS_WgtDeviceTree* m_pTree = nullptr;
};
