#pragma once
// A scope in which a base tree changes many rows at once. While the outermost batch of a tree is
// open, the view does no per-row work that only the end state needs: the header does not size
// its columns to their contents after each row (a pass over up to a thousand laid-out rows per
// change), and the tree does not repaint. When it closes, each column gets its resize mode back,
// the columns are sized once, synchronously, and the tree repaints once. Batches nest; only the
// outermost one suspends and restores. Nothing a page observes changes: signals go out as they
// did, in the same order, from inside the operation. A null tree, or one destroyed inside the
// scope, is allowed. GUI thread only.

#include <QPointer>

class CLS_WgtBaseTreeWidget;

/// A scope in which a CLS_WgtBaseTreeWidget changes many rows at once: the constructor calls
/// CLS_WgtBaseTreeWidget::BeginRowBatch, the destructor CLS_WgtBaseTreeWidget::EndRowBatch. Keep it
/// on the stack of the GUI thread; it does not own the tree and follows it with a guarded pointer.
///
///     CLS_TreeRowBatch batch(pTree);
///     for (const CLS_TreeItem& clsItem : qvecItems)
///         pTree->UpdateItem(clsItem);
class CLS_TreeRowBatch
{
public:
    /// Opens a batch on _pTree (nothing for a null tree). _blLayoutOnce: the rows are laid out once
    /// at the end instead of after each change. A batch that changes no row's place or height
    /// (check states) passes false: the view then keeps its layout, and each change costs the view
    /// what it costs without a batch.
    explicit CLS_TreeRowBatch(CLS_WgtBaseTreeWidget* _pTree, bool _blLayoutOnce = true);
    /// Closes the batch; the outermost one sizes the columns, lays out and repaints the tree once.
    /// Nothing happens when the tree was null or has been destroyed meanwhile.
    ~CLS_TreeRowBatch();

    /// Not copyable: each batch is closed exactly once.
    CLS_TreeRowBatch(const CLS_TreeRowBatch&) = delete;
    /// Not assignable.
    CLS_TreeRowBatch& operator=(const CLS_TreeRowBatch&) = delete;

private:
    QPointer<CLS_WgtBaseTreeWidget> m_pTree;
};
