#pragma once
// The demo's "layout": a list that takes cameras dragged out of a device tree, several at once, and
// lists them in the order they came, as a page that builds a video wall would. It reads the drag with
// CLS_WgtDeviceTree::ReadDragData and refuses any drag without the tree's nodes. GUI thread only.

#include "TreeStructDefine.h"

#include <QListWidget>
#include <QVector>

class CLS_DemoLayoutPane : public QListWidget
{
    Q_OBJECT

public:
    explicit CLS_DemoLayoutPane(QWidget* _pParent = nullptr);

    // Lists channels of type 4 (other nodes of the drag are left out); gives how many were added.
    int AddNodes(const QVector<CLS_CustomTreeNode>& _qvecNodes);

signals:
    // A drop was taken: the channels added and the nodes the drag carried.
    void SignDropped(int _iAdded, int _iCarried);

protected:
    void dragEnterEvent(QDragEnterEvent* _pEvent) override;
    void dragMoveEvent(QDragMoveEvent* _pEvent) override;
    void dropEvent(QDropEvent* _pEvent) override;
    QStringList mimeTypes() const override;
};
