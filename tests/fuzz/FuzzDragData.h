#pragma once
// Decoder of the drag-payload fuzz target, shared with the corpus replay: any bytes go, as they are,
// under the nodes format of a QMimeData to CLS_DeviceTreeDragData::Read, with a vector that already
// holds a node. A refusal must leave the vector as it was; a read must append what Decode of the same
// bytes gives, and those nodes, written again with Encode, must read back the same.

#include "CLS_DeviceTreeDragData.h"

#include <QMimeData>
#include <QStringList>

namespace WgtFuzz {

struct STRCT_DragDataRun
{
    int m_iResult = 0; // Read
    int m_iNodes = 0;  // nodes appended
    QStringList m_qlstProblems;
};

// The five fields that travel, one entry a node.
inline QStringList DragNodeFields(const QVector<CLS_CustomTreeNode>& _qvecNodes, int _iFrom = 0)
{
    QStringList qlstOut;
    for (int i = _iFrom; i < _qvecNodes.size(); ++i) {
        const CLS_CustomTreeNode& node = _qvecNodes[i];
        qlstOut << QStringList{node.m_qstrTreeId, node.m_qstrDevId, QString::number(node.m_iType),
                               node.m_qstrName, QString::number(node.m_iChannelNo)}
                       .join(QChar(0x1f));
    }
    return qlstOut;
}

inline STRCT_DragDataRun RunDragData(const uint8_t* _pData, size_t _iSize)
{
    STRCT_DragDataRun run;
    const QByteArray qbaBytes(reinterpret_cast<const char*>(_pData), static_cast<int>(_iSize));
    QMimeData data;
    data.setData(CLS_DeviceTreeDragData::s_pszNodesMime, qbaBytes);

    CLS_CustomTreeNode kept;
    kept.m_qstrTreeId = "kept";
    kept.m_qstrName = "Kept";
    kept.m_iChannelNo = 3;
    QVector<CLS_CustomTreeNode> qvecNodes{kept};
    const QStringList qlstBefore = DragNodeFields(qvecNodes);
    run.m_iResult = CLS_DeviceTreeDragData::Read(&data, qvecNodes);
    run.m_iNodes = qvecNodes.size() - 1;

    QVector<CLS_CustomTreeNode> qvecDecoded;
    const int iDecoded = CLS_DeviceTreeDragData::Decode(qbaBytes, qvecDecoded);
    if (iDecoded != run.m_iResult)
        run.m_qlstProblems << QString("read gave %1, decode %2").arg(run.m_iResult).arg(iDecoded);
    if (run.m_iResult != 0) {
        if (run.m_iResult != -1)
            run.m_qlstProblems << QString("read gave %1").arg(run.m_iResult);
        if (DragNodeFields(qvecNodes) != qlstBefore)
            run.m_qlstProblems << QString("refused, yet the vector holds %1 nodes").arg(qvecNodes.size());
        return run;
    }
    if (DragNodeFields(qvecNodes).mid(0, 1) != qlstBefore)
        run.m_qlstProblems << "the node already in the vector changed";
    const QStringList qlstRead = DragNodeFields(qvecNodes, 1);
    if (qlstRead != DragNodeFields(qvecDecoded))
        run.m_qlstProblems << "read and decode gave other nodes";

    QVector<CLS_CustomTreeNode> qvecAgain;
    const int iAgain = CLS_DeviceTreeDragData::Decode(CLS_DeviceTreeDragData::Encode(qvecDecoded), qvecAgain);
    if (iAgain != 0)
        run.m_qlstProblems
            << QString("the nodes written again were refused (%1 nodes)").arg(qvecDecoded.size());
    else if (DragNodeFields(qvecAgain) != qlstRead)
        run.m_qlstProblems
            << QString("the nodes written again read back otherwise (%1 nodes)").arg(qvecDecoded.size());
    return run;
}

} // namespace WgtFuzz
