#pragma once
// Several rows of a device tree taken at once: Ctrl and Shift extend the selection while multi-select
// is on, the selected nodes are handed out in row order, and a drag of the tree's rows carries, besides
// the tree's own format, the nodes of the dragged rows for receivers outside the tree
// (CLS_DeviceTreeDragData: "application/x-wgttree-nodes" and "text/plain"). The current row stays the
// one that SignSelected and GetCurrentItem speak of, and a drop inside the tree still moves one row.
// GUI thread only.

#include "TreeStructDefine.h"

#include <QMap>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVector>

class CLS_WgtBaseTreeWidget;
class QMimeData;
class QTreeWidgetItem;

/// Several rows of a device tree taken at once, and the page formats of a drag of its rows.
///
/// While multi-select is on, Ctrl and Shift extend the selection; the selected nodes are handed out
/// in row order. A drag of the tree's rows carries, besides the tree's own format, the nodes of the
/// dragged rows (CLS_DeviceTreeDragData). The current row stays the one that SignSelected and
/// GetCurrentItem speak of, and a drop inside the tree still moves one row. Made and owned by
/// CLS_WgtDeviceTree. GUI thread only.
class CLS_DeviceTreeMultiSelect : public QObject
{
    Q_OBJECT

public:
    /// Makes the object with multi-select off and hooks it into the drags of @p _pTree.
    /// @param _pTree   base tree whose selection and drags are served; not owned, watched through a
    ///                 QPointer.
    /// @param _pNodes  the device tree's node model, read by tree id; not owned, must outlive this
    ///                 object (the device tree owns both).
    /// @param _pParent QObject parent, normally the device tree.
    CLS_DeviceTreeMultiSelect(CLS_WgtBaseTreeWidget* _pTree, const QMap<QString, CLS_CustomTreeNode>* _pNodes,
                              QObject* _pParent = nullptr);
    /// Takes its hook out of the tree's drags.
    ~CLS_DeviceTreeMultiSelect() override;

    /// On: extended selection. Off: single selection, and of the rows selected only the current one
    /// stays selected (if it was).
    void SetMultiSelect(bool _blOn);
    /// Whether multi-select is on (false by default).
    bool GetMultiSelect() const { return m_blMultiSelect; }
    /// Nodes of the selected rows in row order (depth first, parents ahead of children), appended
    /// to @p _qvecNodes; rows without a node are left out.
    /// @return 0, also for no selection or no tree.
    int GetSelectedNodes(QVector<CLS_CustomTreeNode>& _qvecNodes) const;
    /// A new payload (the caller owns it; never null) for the nodes of these tree ids, in this
    /// order; ids without a node are left out. The tree's own format holds the address of the row
    /// of the first id with a node and a row (empty bytes when there is none).
    QMimeData* CreateDragData(const QVector<QString>& _qvecTreeIds) const;

private:
    // What a drag of the tree's rows adds to its payload: the selected rows, or the current row
    // when none of them is selected or multi-select is off. Gives how many rows it put in.
    int AddDragFormats(QMimeData* _pData) const;
    const CLS_CustomTreeNode* NodeOfRow(QTreeWidgetItem* _pRow) const;

    QPointer<CLS_WgtBaseTreeWidget> m_pTree;
    const QMap<QString, CLS_CustomTreeNode>* m_pNodes = nullptr;
    bool m_blMultiSelect = false;
};
