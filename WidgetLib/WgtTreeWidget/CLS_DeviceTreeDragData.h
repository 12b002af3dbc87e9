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

class CLS_DeviceTreeDragData
{
public:
    static const char* const s_pszNodesMime; // "application/x-wgttree-nodes"
    static const char* const s_pszTreeMime;  // the tree's own row format, read by its model on a drop

    // Puts the nodes format and "text/plain" (one name a line) into _pData; null _pData: nothing.
    static void AddPageFormats(const QVector<CLS_CustomTreeNode>& _qvecNodes, QMimeData* _pData);
    // A new payload, owned by the caller (QDrag takes it): _qbaRowAddress under the tree's own
    // format, plus the page formats.
    static QMimeData* Create(const QVector<CLS_CustomTreeNode>& _qvecNodes, const QByteArray& _qbaRowAddress);

    static QByteArray Encode(const QVector<CLS_CustomTreeNode>& _qvecNodes);
    // Appends the nodes of _qbaJson to _qvecNodes: 0, or -1 for bytes that are not a JSON array of
    // whole node objects (_qvecNodes untouched). Only the five fields of the format are filled.
    static int Decode(const QByteArray& _qbaJson, QVector<CLS_CustomTreeNode>& _qvecNodes);
    // Decode of the nodes format of _pData; -1 for a null payload or one without that format.
    static int Read(const QMimeData* _pData, QVector<CLS_CustomTreeNode>& _qvecNodes);
};
