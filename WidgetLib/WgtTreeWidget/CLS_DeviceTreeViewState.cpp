#include "CLS_DeviceTreeViewState.h"

#include "CLS_TreeRowBatch.h"
#include "CLS_WgtBaseTreeWidget.h"

#include <QStringList>
#include <QTreeWidgetItem>
#include <QVector>
#include <QtEndian>

#include <cstring>

namespace {

// The base tree keeps each row's record id under this role of column 0.
constexpr int CONST_iIdRole = Qt::UserRole;
const char CONST_acMagic[4] = {'W', 'T', 'V', 'S'};
constexpr int CONST_iHeaderSize = 4 + 1 + 4; // magic, version, number of expanded ids

QString RowId(const QTreeWidgetItem* _pRow)
{
    return _pRow->data(0, CONST_iIdRole).toString();
}

// Every row that has children (the tree's own walker).
template <typename Fn>
void ForEachParentRow(CLS_WgtBaseTreeWidget* _pTree, Fn _fn)
{
    QVector<QTreeWidgetItem*> qvecRows;
    for (int i = 0; i < _pTree->topLevelItemCount(); ++i) {
        qvecRows.append(_pTree->topLevelItem(i));
        _pTree->GetChildNode(_pTree->topLevelItem(i), qvecRows, true);
    }
    for (QTreeWidgetItem* pRow : qAsConst(qvecRows)) {
        if (pRow->childCount() > 0)
            _fn(pRow);
    }
}

void AppendString(QByteArray& _qbaOut, const QString& _qstr)
{
    const QByteArray qbaUtf8 = _qstr.toUtf8();
    char acLength[4];
    qToBigEndian<quint32>(static_cast<quint32>(qbaUtf8.size()), acLength);
    _qbaOut.append(acLength, 4);
    _qbaOut.append(qbaUtf8);
}

// Reads a length and that many bytes at _iPos; false when the bytes run out first.
bool ReadString(const QByteArray& _qbaIn, int& _iPos, QString& _qstrOut)
{
    if (_qbaIn.size() - _iPos < 4)
        return false;
    const quint32 uLength = qFromBigEndian<quint32>(_qbaIn.constData() + _iPos);
    _iPos += 4;
    if (uLength > static_cast<quint32>(_qbaIn.size() - _iPos))
        return false;
    _qstrOut = QString::fromUtf8(_qbaIn.constData() + _iPos, static_cast<int>(uLength));
    _iPos += static_cast<int>(uLength);
    return true;
}

} // namespace

CLS_DeviceTreeViewState CLS_DeviceTreeViewState::Capture(CLS_WgtBaseTreeWidget* _pTree)
{
    CLS_DeviceTreeViewState stState;
    if (_pTree == nullptr)
        return stState;
    ForEachParentRow(_pTree, [&stState](QTreeWidgetItem* _pRow) {
        if (_pRow->isExpanded())
            stState.m_qsetExpanded.insert(RowId(_pRow));
    });
    if (QTreeWidgetItem* pCurrent = _pTree->currentItem())
        stState.m_qstrCurrentId = RowId(pCurrent);
    if (QTreeWidgetItem* pTop = _pTree->itemAt(QPoint(0, 0)))
        stState.m_qstrTopId = RowId(pTop);
    return stState;
}

void CLS_DeviceTreeViewState::Apply(CLS_WgtBaseTreeWidget* _pTree) const
{
    if (_pTree == nullptr)
        return;
    {
        CLS_TreeRowBatch batch(_pTree);
        ForEachParentRow(_pTree, [this](QTreeWidgetItem* _pRow) {
            const bool blExpand = m_qsetExpanded.contains(RowId(_pRow));
            if (_pRow->isExpanded() != blExpand)
                _pRow->setExpanded(blExpand);
        });
    }
    // Making a row current scrolls to it, which opens its folded ancestors: fold them again.
    if (QTreeWidgetItem* pCurrent = _pTree->GetNodeById(m_qstrCurrentId)) {
        _pTree->SetCurrentItem(m_qstrCurrentId, false);
        for (QTreeWidgetItem* pUp = pCurrent->parent(); pUp != nullptr; pUp = pUp->parent()) {
            if (pUp->isExpanded() && !m_qsetExpanded.contains(RowId(pUp)))
                pUp->setExpanded(false);
        }
    }
    // The first row goes to the top only where it can be seen without opening anything.
    QTreeWidgetItem* pTop = _pTree->GetNodeById(m_qstrTopId);
    if (pTop == nullptr || pTop->isHidden())
        return;
    for (QTreeWidgetItem* pUp = pTop->parent(); pUp != nullptr; pUp = pUp->parent()) {
        if (!pUp->isExpanded() || pUp->isHidden())
            return;
    }
    _pTree->scrollToItem(pTop, QAbstractItemView::PositionAtTop);
}

QByteArray CLS_DeviceTreeViewState::Encode() const
{
    QByteArray qbaOut;
    qbaOut.append(CONST_acMagic, 4);
    qbaOut.append(static_cast<char>(CONST_uVersion));
    char acCount[4];
    qToBigEndian<quint32>(static_cast<quint32>(m_qsetExpanded.size()), acCount);
    qbaOut.append(acCount, 4);
    AppendString(qbaOut, m_qstrCurrentId);
    AppendString(qbaOut, m_qstrTopId);
    // Sorted, so that one state always gives the same bytes.
    QStringList qlstExpanded(m_qsetExpanded.cbegin(), m_qsetExpanded.cend());
    qlstExpanded.sort();
    for (const QString& qstrId : qAsConst(qlstExpanded))
        AppendString(qbaOut, qstrId);
    return qbaOut;
}

int CLS_DeviceTreeViewState::Decode(const QByteArray& _qbaBytes, CLS_DeviceTreeViewState& _stState)
{
    if (_qbaBytes.size() < CONST_iHeaderSize || std::memcmp(_qbaBytes.constData(), CONST_acMagic, 4) != 0 ||
        static_cast<quint8>(_qbaBytes.at(4)) != CONST_uVersion)
        return -1;
    const quint32 uExpanded = qFromBigEndian<quint32>(_qbaBytes.constData() + 5);
    int iPos = CONST_iHeaderSize;
    // Each id takes at least its four length bytes: a count beyond that is a lie.
    if (uExpanded > static_cast<quint32>(_qbaBytes.size() - iPos) / 4)
        return -1;
    CLS_DeviceTreeViewState stRead;
    if (!ReadString(_qbaBytes, iPos, stRead.m_qstrCurrentId) ||
        !ReadString(_qbaBytes, iPos, stRead.m_qstrTopId))
        return -1;
    stRead.m_qsetExpanded.reserve(static_cast<int>(uExpanded));
    for (quint32 i = 0; i < uExpanded; ++i) {
        QString qstrId;
        if (!ReadString(_qbaBytes, iPos, qstrId))
            return -1;
        stRead.m_qsetExpanded.insert(qstrId);
    }
    if (iPos != _qbaBytes.size())
        return -1; // bytes behind a whole state: not ours
    _stState = stRead;
    return 0;
}
