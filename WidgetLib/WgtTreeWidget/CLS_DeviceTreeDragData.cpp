#include "CLS_DeviceTreeDragData.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>
#include <QJsonValue>
#include <QMimeData>
#include <QString>
#include <QStringList>

#include <cmath>
#include <limits>

const char* const CLS_DeviceTreeDragData::s_pszNodesMime = "application/x-wgttree-nodes";
const char* const CLS_DeviceTreeDragData::s_pszTreeMime = "application/x-qabstractitemmodeldatalist";

namespace {

// The five keys of a node object; nothing else is written, anything else is passed over on reading.
const QLatin1String CONST_strKeyTreeId("treeId");
const QLatin1String CONST_strKeyDevId("devId");
const QLatin1String CONST_strKeyType("type");
const QLatin1String CONST_strKeyName("name");
const QLatin1String CONST_strKeyChannelNo("channelNo");

bool ReadString(const QJsonObject& _qjoNode, QLatin1String _strKey, QString& _qstrOut)
{
    const auto it = _qjoNode.constFind(_strKey);
    if (it == _qjoNode.constEnd() || !it.value().isString())
        return false;
    _qstrOut = it.value().toString();
    return true;
}

// A JSON number is a double to Qt: only a whole one within int's range is a node's number
// (1.0 is 1; 1.5, 1e12 and -3e9 are refused rather than cut down).
bool ReadInt(const QJsonObject& _qjoNode, QLatin1String _strKey, int& _iOut)
{
    const auto it = _qjoNode.constFind(_strKey);
    if (it == _qjoNode.constEnd() || !it.value().isDouble())
        return false;
    const double dValue = it.value().toDouble();
    if (!(dValue >= std::numeric_limits<int>::min() && dValue <= std::numeric_limits<int>::max()) ||
        std::floor(dValue) != dValue)
        return false;
    _iOut = static_cast<int>(dValue);
    return true;
}

// Deeper than this, the bytes are no node list, even with nested values under extra keys: refused
// before the JSON parser sees them (nesting a list needs two levels).
constexpr int CONST_iMaxDepth = 32;

// Whether the arrays and objects of the bytes nest deeper than CONST_iMaxDepth, brackets inside
// strings not counted. Malformed bytes are the parser's to refuse.
bool NestsTooDeep(const QByteArray& _qbaJson)
{
    int iDepth = 0;
    bool blInString = false;
    bool blEscaped = false;
    for (const char chByte : _qbaJson) {
        if (blInString) {
            if (blEscaped)
                blEscaped = false;
            else if (chByte == '\\')
                blEscaped = true;
            else if (chByte == '"')
                blInString = false;
            continue;
        }
        if (chByte == '"') {
            blInString = true;
        } else if (chByte == '[' || chByte == '{') {
            if (++iDepth > CONST_iMaxDepth)
                return true;
        } else if (chByte == ']' || chByte == '}') {
            --iDepth;
        }
    }
    return false;
}

} // namespace

void CLS_DeviceTreeDragData::AddPageFormats(const QVector<CLS_CustomTreeNode>& _qvecNodes, QMimeData* _pData)
{
    if (_pData == nullptr)
        return;
    _pData->setData(QString::fromLatin1(s_pszNodesMime), Encode(_qvecNodes));
    QStringList qlstNames;
    qlstNames.reserve(_qvecNodes.size());
    for (const CLS_CustomTreeNode& node : _qvecNodes)
        qlstNames << node.m_qstrName;
    _pData->setText(qlstNames.join(QLatin1Char('\n')));
}

QMimeData* CLS_DeviceTreeDragData::Create(const QVector<CLS_CustomTreeNode>& _qvecNodes,
                                          const QByteArray& _qbaRowAddress)
{
    QMimeData* pData = new QMimeData; // the caller's
    pData->setData(QString::fromLatin1(s_pszTreeMime), _qbaRowAddress);
    AddPageFormats(_qvecNodes, pData);
    return pData;
}

QByteArray CLS_DeviceTreeDragData::Encode(const QVector<CLS_CustomTreeNode>& _qvecNodes)
{
    QJsonArray qjaNodes;
    for (const CLS_CustomTreeNode& node : _qvecNodes) {
        QJsonObject qjoNode;
        qjoNode.insert(CONST_strKeyTreeId, node.m_qstrTreeId);
        qjoNode.insert(CONST_strKeyDevId, node.m_qstrDevId);
        qjoNode.insert(CONST_strKeyType, node.m_iType);
        qjoNode.insert(CONST_strKeyName, node.m_qstrName);
        qjoNode.insert(CONST_strKeyChannelNo, node.m_iChannelNo);
        qjaNodes.append(qjoNode);
    }
    return QJsonDocument(qjaNodes).toJson(QJsonDocument::Compact);
}

// Taken: a JSON array (empty too) whose every element is an object with all five keys, treeId,
// devId and name strings, type and channelNo whole numbers within int's range. Other keys of an
// object are passed over (a later writer may add some), unless they nest deeper than
// CONST_iMaxDepth levels in all. Anything else refuses the whole input, and nothing is appended
// before every element has been read.
int CLS_DeviceTreeDragData::Decode(const QByteArray& _qbaJson, QVector<CLS_CustomTreeNode>& _qvecNodes)
{
    if (NestsTooDeep(_qbaJson))
        return -1;
    QJsonParseError qjpeError;
    const QJsonDocument qjdDoc = QJsonDocument::fromJson(_qbaJson, &qjpeError);
    if (qjpeError.error != QJsonParseError::NoError || !qjdDoc.isArray())
        return -1;
    const QJsonArray qjaNodes = qjdDoc.array();
    QVector<CLS_CustomTreeNode> qvecRead;
    qvecRead.reserve(qjaNodes.size());
    for (const QJsonValue& qjvNode : qjaNodes) {
        if (!qjvNode.isObject())
            return -1;
        const QJsonObject qjoNode = qjvNode.toObject();
        CLS_CustomTreeNode node;
        if (!ReadString(qjoNode, CONST_strKeyTreeId, node.m_qstrTreeId) ||
            !ReadString(qjoNode, CONST_strKeyDevId, node.m_qstrDevId) ||
            !ReadInt(qjoNode, CONST_strKeyType, node.m_iType) ||
            !ReadString(qjoNode, CONST_strKeyName, node.m_qstrName) ||
            !ReadInt(qjoNode, CONST_strKeyChannelNo, node.m_iChannelNo))
            return -1;
        qvecRead.append(node);
    }
    _qvecNodes += qvecRead;
    return 0;
}

int CLS_DeviceTreeDragData::Read(const QMimeData* _pData, QVector<CLS_CustomTreeNode>& _qvecNodes)
{
    const QString qstrFormat = QString::fromLatin1(s_pszNodesMime);
    if (_pData == nullptr || !_pData->hasFormat(qstrFormat))
        return -1;
    return Decode(_pData->data(qstrFormat), _qvecNodes);
}
