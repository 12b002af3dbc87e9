#pragma once
// What a drag out of the device tree carries for a page: the dragged nodes as compact UTF-8 JSON
// under "application/x-wgttree-nodes" (treeId, devId, type, name, channelNo of each node, in
// order) and their names as plain text, beside the tree's own row format (docs/drag-payload-format.md).
// Reading never trusts the bytes: a payload is read whole or refused, and a refusal appends nothing.
// Plain functions of their arguments; any thread (QMimeData is a core class).

#include "TreeStructDefine.h"

#include <QByteArray>
#include <QVector>

class QMimeData;

/// The page formats of a drag out of the device tree: write, read and make payloads.
///
/// The nodes format ("application/x-wgttree-nodes") is a compact UTF-8 JSON array of objects with
/// the keys treeId, devId, type, name and channelNo, in the order of the drag; "text/plain" holds
/// the names, one a line (docs/drag-payload-format.md). Reading never trusts the bytes: a payload is
/// read whole or refused, and a refusal appends nothing. Static functions of their arguments only;
/// any thread.
class CLS_DeviceTreeDragData
{
public:
    static const char* const s_pszNodesMime; ///< "application/x-wgttree-nodes": the nodes as JSON
    /// The tree's own row format, "application/x-qabstractitemmodeldatalist" (the address of a row,
    /// meaningful only inside this process); a page has no use for it.
    static const char* const s_pszTreeMime;

    /// Puts the nodes format and "text/plain" (the names joined by line breaks, none at the end)
    /// into @p _pData, replacing those two and leaving its other formats alone. Not owned; null
    /// @p _pData: nothing.
    static void AddPageFormats(const QVector<CLS_CustomTreeNode>& _qvecNodes, QMimeData* _pData);
    /// A new payload, owned by the caller (QDrag takes it): _qbaRowAddress under the tree's own
    /// format, plus the page formats of the nodes. Never null.
    static QMimeData* Create(const QVector<CLS_CustomTreeNode>& _qvecNodes, const QByteArray& _qbaRowAddress);

    /// The nodes format of the nodes: a compact JSON array, one object of five keys per node.
    static QByteArray Encode(const QVector<CLS_CustomTreeNode>& _qvecNodes);
    /// Appends the nodes of _qbaJson to _qvecNodes. Only the five fields of the format are filled;
    /// the others keep a new node's values. Keys beyond the five are passed over.
    /// @return 0 (also for an empty array), or -1 for bytes that are not a JSON array of whole
    ///         node objects, or that nest deeper than 32 levels (_qvecNodes untouched).
    static int Decode(const QByteArray& _qbaJson, QVector<CLS_CustomTreeNode>& _qvecNodes);
    /// Decode() of the nodes format of _pData (not owned).
    /// @return 0, or -1 for a null payload, one without that format, or bytes Decode() refuses.
    static int Read(const QMimeData* _pData, QVector<CLS_CustomTreeNode>& _qvecNodes);
};
