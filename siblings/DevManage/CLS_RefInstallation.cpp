#include "CLS_RefInstallation.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>
#include <QJsonValue>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <climits>
#include <cmath>
#include <set>

namespace {

const char* const CONST_RESOURCE_ROOT_ID = "resource_root_id";

enum n_RefKind
{
    REF_KIND_GROUP = 2,
    REF_KIND_HOST = 3,
    REF_KIND_CHANNEL = 4,
    REF_KIND_ALARM_IN = 5,
    REF_KIND_ALARM_OUT = 6,
    REF_KIND_DECODER = 12,
    REF_KIND_DECODER_OUT = 13,
    REF_KIND_DECODER_IN = 17,
};

// The child lists of a channel-like kind: JSON key, id suffix and default caption.
struct STRCT_ChildList
{
    const char* m_pKey;
    int m_iType;
    const char* m_pIdSuffix;
    const char* m_pCaption;
};

const STRCT_ChildList CONST_arrHostLists[] = {
    {"channels", REF_KIND_CHANNEL, "_ch", "Channel"},
    {"alarmIns", REF_KIND_ALARM_IN, "_ai", "Alarm input"},
    {"alarmOuts", REF_KIND_ALARM_OUT, "_ao", "Alarm output"},
};

const STRCT_ChildList CONST_arrDecoderLists[] = {
    {"outputs", REF_KIND_DECODER_OUT, "_out", "Output"},
    {"inputs", REF_KIND_DECODER_IN, "_in", "Input"},
};

// The three custom-tree sections: JSON key, root id, default caption of the root.
struct STRCT_TreeSection
{
    const char* m_pKey;
    const char* m_pRootId;
    const char* m_pRootName;
};

const STRCT_TreeSection CONST_arrTreeSections[] = {
    {"customTree", "custom_root_id", "Custom"},
    {"favorites", "favorite_root_id", "Favourites"},
    {"passengerFlow", "passengerflow_root_id", "Passenger flow"},
};

std::string Utf8(const QString& _qstrText)
{
    return _qstrText.toUtf8().toStdString();
}

// Reads one JSON document into an installation, keeping the first error with its path.
class CLS_Reader
{
public:
    explicit CLS_Reader(STRCT_RefInstallation& _strctOut) : m_strctOut(_strctOut) {}

    bool ReadDocument(const QJsonObject& _qjsonTop);

    QString m_qstrError;

private:
    bool Fail(const QString& _qstrPath, const QString& _qstrProblem)
    {
        if (m_qstrError.isEmpty())
            m_qstrError = _qstrPath.isEmpty() ? _qstrProblem : _qstrPath + ": " + _qstrProblem;
        return false;
    }

    static QString Join(const QString& _qstrPath, const QString& _qstrKey)
    {
        return _qstrPath.isEmpty() ? _qstrKey : _qstrPath + "." + _qstrKey;
    }

    // Every key must be one of _qlstKeys; keys starting with '_' are free notes.
    bool CheckKeys(const QJsonObject& _qjsonObject, const QStringList& _qlstKeys, const QString& _qstrPath)
    {
        for (auto it = _qjsonObject.constBegin(); it != _qjsonObject.constEnd(); ++it) {
            if (!it.key().startsWith('_') && !_qlstKeys.contains(it.key()))
                return Fail(Join(_qstrPath, it.key()), QStringLiteral("unknown key"));
        }
        return true;
    }

    bool ReadInt(const QJsonObject& _qjsonObject, const char* _pKey, const QString& _qstrPath, int& _iValue)
    {
        const QJsonValue qjsonValue = _qjsonObject.value(QLatin1String(_pKey));
        if (qjsonValue.isUndefined())
            return true; // the default stays
        const double dValue = qjsonValue.toDouble();
        if (!qjsonValue.isDouble() || std::floor(dValue) != dValue || dValue < INT_MIN || dValue > INT_MAX)
            return Fail(Join(_qstrPath, _pKey), QStringLiteral("expected an integer"));
        _iValue = static_cast<int>(dValue);
        return true;
    }

    bool ReadStatus(const QJsonObject& _qjsonObject, const QString& _qstrPath, int& _iStatus)
    {
        if (!ReadInt(_qjsonObject, "status", _qstrPath, _iStatus))
            return false;
        if (_iStatus < 0 || _iStatus > 2)
            return Fail(Join(_qstrPath, "status"), QStringLiteral("expected 0, 1 or 2"));
        return true;
    }

    bool ReadString(const QJsonObject& _qjsonObject, const char* _pKey, const QString& _qstrPath,
                    QString& _qstrValue)
    {
        const QJsonValue qjsonValue = _qjsonObject.value(QLatin1String(_pKey));
        if (qjsonValue.isUndefined())
            return true;
        if (!qjsonValue.isString())
            return Fail(Join(_qstrPath, _pKey), QStringLiteral("expected a string"));
        _qstrValue = qjsonValue.toString();
        return true;
    }

    // An id: a non-empty string. _blRequired: no default exists.
    bool ReadId(const QJsonObject& _qjsonObject, const char* _pKey, const QString& _qstrPath,
                bool _blRequired, QString& _qstrId)
    {
        if (_blRequired && !_qjsonObject.contains(QLatin1String(_pKey)))
            return Fail(Join(_qstrPath, _pKey), QStringLiteral("missing"));
        const bool blPresent = _qjsonObject.contains(QLatin1String(_pKey));
        if (!ReadString(_qjsonObject, _pKey, _qstrPath, _qstrId))
            return false;
        if (blPresent && _qstrId.isEmpty())
            return Fail(Join(_qstrPath, _pKey), QStringLiteral("must not be empty"));
        return true;
    }

    bool ReadBool(const QJsonObject& _qjsonObject, const char* _pKey, const QString& _qstrPath,
                  bool& _blValue)
    {
        const QJsonValue qjsonValue = _qjsonObject.value(QLatin1String(_pKey));
        if (qjsonValue.isUndefined())
            return true;
        if (!qjsonValue.isBool())
            return Fail(Join(_qstrPath, _pKey), QStringLiteral("expected true or false"));
        _blValue = qjsonValue.toBool();
        return true;
    }

    // The array under _pKey, or an empty one when the key is absent.
    bool ReadArray(const QJsonObject& _qjsonObject, const char* _pKey, const QString& _qstrPath,
                   QJsonArray& _qjsonArray)
    {
        const QJsonValue qjsonValue = _qjsonObject.value(QLatin1String(_pKey));
        _qjsonArray = QJsonArray();
        if (qjsonValue.isUndefined())
            return true;
        if (!qjsonValue.isArray())
            return Fail(Join(_qstrPath, _pKey), QStringLiteral("expected an array"));
        _qjsonArray = qjsonValue.toArray();
        return true;
    }

    bool ObjectAt(const QJsonArray& _qjsonArray, int _iIndex, const QString& _qstrPath,
                  QJsonObject& _qjsonObject)
    {
        if (!_qjsonArray.at(_iIndex).isObject())
            return Fail(_qstrPath, QStringLiteral("expected an object"));
        _qjsonObject = _qjsonArray.at(_iIndex).toObject();
        return true;
    }

    // The fields every resource item has. The caller has set the defaults in _strctItem.
    bool ReadCommon(const QJsonObject& _qjsonObject, const QString& _qstrPath, bool _blIdRequired,
                    STRCT_RefItemValues& _strctItem);
    bool AddItem(const STRCT_RefItemValues& _strctItem, const QString& _qstrPath);

    bool ReadGroupContent(const QJsonObject& _qjsonObject, const QString& _qstrPath,
                          const std::string& _strParentId);
    bool ReadGroup(const QJsonObject& _qjsonObject, const QString& _qstrPath, const std::string& _strParentId,
                   int _iOrderNo);
    bool ReadDevice(const QJsonObject& _qjsonObject, const QString& _qstrPath,
                    const std::string& _strParentId, int _iOrderNo, int _iType);
    bool ReadTreeSection(const QJsonObject& _qjsonTop, const STRCT_TreeSection& _strctSection);

    STRCT_RefInstallation& m_strctOut;
    std::set<std::string> m_setIds;
    std::set<std::string> m_setTreeIds;
    std::map<std::string, size_t> m_mapItemIndex; // resource id -> index in m_vecItems
    QSet<QString> m_qsetNodeIds;
};

bool CLS_Reader::ReadCommon(const QJsonObject& _qjsonObject, const QString& _qstrPath, bool _blIdRequired,
                            STRCT_RefItemValues& _strctItem)
{
    QString qstrId = QString::fromStdString(_strctItem.m_strId);
    QString qstrName;
    QString qstrTreeId;
    QString qstrExtend;
    if (!ReadId(_qjsonObject, "id", _qstrPath, _blIdRequired, qstrId) ||
        !ReadString(_qjsonObject, "name", _qstrPath, qstrName) ||
        !ReadId(_qjsonObject, "treeId", _qstrPath, false, qstrTreeId) ||
        !ReadString(_qjsonObject, "extend", _qstrPath, qstrExtend) ||
        !ReadInt(_qjsonObject, "order", _qstrPath, _strctItem.m_iOrderNo) ||
        !ReadStatus(_qjsonObject, _qstrPath, _strctItem.m_iStatus) ||
        !ReadInt(_qjsonObject, "devBindType", _qstrPath, _strctItem.m_iDevBindType)) {
        return false;
    }
    _strctItem.m_strId = Utf8(qstrId);
    if (_qjsonObject.contains(QLatin1String("name")))
        _strctItem.m_strName = Utf8(qstrName);
    else if (_strctItem.m_strName.empty())
        _strctItem.m_strName = _strctItem.m_strId;
    _strctItem.m_strTreeId = qstrTreeId.isEmpty() ? _strctItem.m_strId : Utf8(qstrTreeId);
    _strctItem.m_strExtend = Utf8(qstrExtend);
    return true;
}

bool CLS_Reader::AddItem(const STRCT_RefItemValues& _strctItem, const QString& _qstrPath)
{
    if (_strctItem.m_strId == CONST_RESOURCE_ROOT_ID)
        return Fail(Join(_qstrPath, "id"), QStringLiteral("\"resource_root_id\" is reserved for the root"));
    if (!m_setIds.insert(_strctItem.m_strId).second)
        return Fail(Join(_qstrPath, "id"),
                    QStringLiteral("duplicate id \"%1\"").arg(QString::fromStdString(_strctItem.m_strId)));
    if (!m_setTreeIds.insert(_strctItem.m_strTreeId).second)
        return Fail(
            Join(_qstrPath, "treeId"),
            QStringLiteral("duplicate tree id \"%1\"").arg(QString::fromStdString(_strctItem.m_strTreeId)));
    m_mapItemIndex[_strctItem.m_strId] = m_strctOut.m_vecItems.size();
    m_strctOut.m_vecItems.push_back(_strctItem);
    return true;
}

// "groups", "hosts" and "decoders" of the top level or of a group, in that order; order numbers
// run on across the three lists.
bool CLS_Reader::ReadGroupContent(const QJsonObject& _qjsonObject, const QString& _qstrPath,
                                  const std::string& _strParentId)
{
    int iOrderNo = 0;
    QJsonArray qjsonGroups;
    if (!ReadArray(_qjsonObject, "groups", _qstrPath, qjsonGroups))
        return false;
    for (int i = 0; i < qjsonGroups.size(); ++i) {
        const QString qstrPath = Join(_qstrPath, QStringLiteral("groups[%1]").arg(i));
        QJsonObject qjsonGroup;
        if (!ObjectAt(qjsonGroups, i, qstrPath, qjsonGroup) ||
            !ReadGroup(qjsonGroup, qstrPath, _strParentId, ++iOrderNo))
            return false;
    }
    const struct
    {
        const char* m_pKey;
        int m_iType;
    } arrDevices[] = {{"hosts", REF_KIND_HOST}, {"decoders", REF_KIND_DECODER}};
    for (const auto& strctDevices : arrDevices) {
        QJsonArray qjsonDevices;
        if (!ReadArray(_qjsonObject, strctDevices.m_pKey, _qstrPath, qjsonDevices))
            return false;
        for (int i = 0; i < qjsonDevices.size(); ++i) {
            const QString qstrPath =
                Join(_qstrPath, QStringLiteral("%1[%2]").arg(strctDevices.m_pKey).arg(i));
            QJsonObject qjsonDevice;
            if (!ObjectAt(qjsonDevices, i, qstrPath, qjsonDevice) ||
                !ReadDevice(qjsonDevice, qstrPath, _strParentId, ++iOrderNo, strctDevices.m_iType)) {
                return false;
            }
        }
    }
    return true;
}

bool CLS_Reader::ReadGroup(const QJsonObject& _qjsonObject, const QString& _qstrPath,
                           const std::string& _strParentId, int _iOrderNo)
{
    if (!CheckKeys(_qjsonObject,
                   {"id", "name", "treeId", "order", "status", "devBindType", "extend", "groups", "hosts",
                    "decoders"},
                   _qstrPath)) {
        return false;
    }
    STRCT_RefItemValues strctItem;
    strctItem.m_iType = REF_KIND_GROUP;
    strctItem.m_strParentId = _strParentId;
    strctItem.m_iOrderNo = _iOrderNo;
    strctItem.m_iStatus = 0;
    if (!ReadCommon(_qjsonObject, _qstrPath, true, strctItem) || !AddItem(strctItem, _qstrPath))
        return false;
    return ReadGroupContent(_qjsonObject, _qstrPath, strctItem.m_strId);
}

bool CLS_Reader::ReadDevice(const QJsonObject& _qjsonObject, const QString& _qstrPath,
                            const std::string& _strParentId, int _iOrderNo, int _iType)
{
    const bool blHost = _iType == REF_KIND_HOST;
    QStringList qlstKeys = {"id",          "name",   "treeId",  "order", "status",
                            "devBindType", "extend", "address", "port"};
    if (blHost)
        qlstKeys << "imageChannel"
                 << "channels"
                 << "alarmIns"
                 << "alarmOuts";
    else
        qlstKeys << "outputs"
                 << "inputs";
    if (!CheckKeys(_qjsonObject, qlstKeys, _qstrPath))
        return false;

    STRCT_RefItemValues strctDevice;
    strctDevice.m_iType = _iType;
    strctDevice.m_strParentId = _strParentId;
    strctDevice.m_iOrderNo = _iOrderNo;
    strctDevice.m_iStatus = 1;
    QString qstrAddress;
    bool blImageChannel = false;
    if (!ReadCommon(_qjsonObject, _qstrPath, true, strctDevice) ||
        !ReadString(_qjsonObject, "address", _qstrPath, qstrAddress) ||
        !ReadInt(_qjsonObject, "port", _qstrPath, strctDevice.m_iPort) ||
        !ReadBool(_qjsonObject, "imageChannel", _qstrPath, blImageChannel)) {
        return false;
    }
    if (strctDevice.m_iPort < 0 || strctDevice.m_iPort > 65535)
        return Fail(Join(_qstrPath, "port"), QStringLiteral("expected 0 to 65535"));
    strctDevice.m_strAddress = Utf8(qstrAddress);
    if (!AddItem(strctDevice, _qstrPath))
        return false;

    // Children: order numbers run on across the lists; channel numbers count within each list.
    int iOrderNo = 0;
    std::string strFirstChannelId;
    const STRCT_ChildList* pLists = blHost ? CONST_arrHostLists : CONST_arrDecoderLists;
    const int iLists = blHost ? 3 : 2;
    for (int iList = 0; iList < iLists; ++iList) {
        const STRCT_ChildList& strctList = pLists[iList];
        QJsonArray qjsonChildren;
        if (!ReadArray(_qjsonObject, strctList.m_pKey, _qstrPath, qjsonChildren))
            return false;
        for (int i = 0; i < qjsonChildren.size(); ++i) {
            const QString qstrPath = Join(_qstrPath, QStringLiteral("%1[%2]").arg(strctList.m_pKey).arg(i));
            QJsonObject qjsonChild;
            if (!ObjectAt(qjsonChildren, i, qstrPath, qjsonChild))
                return false;
            QStringList qlstChildKeys = {"id",     "name",        "treeId", "order",
                                         "status", "devBindType", "extend", "channelNo"};
            if (strctList.m_iType == REF_KIND_CHANNEL)
                qlstChildKeys << "streamType";
            if (!CheckKeys(qjsonChild, qlstChildKeys, qstrPath))
                return false;

            STRCT_RefItemValues strctChild;
            strctChild.m_iType = strctList.m_iType;
            strctChild.m_strParentId = strctDevice.m_strId;
            strctChild.m_iOrderNo = ++iOrderNo;
            strctChild.m_iStatus = strctDevice.m_iStatus;
            strctChild.m_iChannelNo = i + 1;
            if (!ReadInt(qjsonChild, "channelNo", qstrPath, strctChild.m_iChannelNo) ||
                !ReadInt(qjsonChild, "streamType", qstrPath, strctChild.m_iStreamType)) {
                return false;
            }
            const QString qstrNo = QString::number(strctChild.m_iChannelNo);
            strctChild.m_strId = strctDevice.m_strId + strctList.m_pIdSuffix + Utf8(qstrNo);
            strctChild.m_strName = std::string(strctList.m_pCaption) + " " + Utf8(qstrNo);
            if (!ReadCommon(qjsonChild, qstrPath, false, strctChild) || !AddItem(strctChild, qstrPath))
                return false;
            if (strctList.m_iType == REF_KIND_CHANNEL && strFirstChannelId.empty())
                strFirstChannelId = strctChild.m_strId;
        }
    }
    // The status thread asks a host's first channel whether the host has an image channel.
    if (blImageChannel && !strFirstChannelId.empty())
        m_strctOut.m_mapImageParams[strFirstChannelId] = 1;
    return true;
}

bool CLS_Reader::ReadTreeSection(const QJsonObject& _qjsonTop, const STRCT_TreeSection& _strctSection)
{
    const QString qstrPath = QLatin1String(_strctSection.m_pKey);
    const QJsonValue qjsonValue = _qjsonTop.value(qstrPath);
    if (qjsonValue.isUndefined())
        return true; // no such tree, not even its root
    if (!qjsonValue.isObject())
        return Fail(qstrPath, QStringLiteral("expected an object"));
    const QJsonObject qjsonSection = qjsonValue.toObject();
    if (!CheckKeys(qjsonSection, {"rootName", "nodes"}, qstrPath))
        return false;

    const QString qstrRootId = QLatin1String(_strctSection.m_pRootId);
    CLS_CustomTreeNode clsRoot;
    clsRoot.m_qstrTreeId = qstrRootId;
    clsRoot.m_qstrDevId = qstrRootId;
    clsRoot.m_qstrName = QLatin1String(_strctSection.m_pRootName);
    clsRoot.m_iType = REF_KIND_GROUP;
    if (!ReadString(qjsonSection, "rootName", qstrPath, clsRoot.m_qstrName))
        return false;

    QJsonArray qjsonNodes;
    if (!ReadArray(qjsonSection, "nodes", qstrPath, qjsonNodes))
        return false;
    QVector<CLS_CustomTreeNode> qvecNodes;
    QStringList qlstPaths;
    QMap<QString, int> qmapIndex;    // tree id -> index in qvecNodes
    QMap<QString, int> qmapSiblings; // parent tree id -> children so far
    for (int i = 0; i < qjsonNodes.size(); ++i) {
        const QString qstrNodePath = Join(qstrPath, QStringLiteral("nodes[%1]").arg(i));
        QJsonObject qjsonNode;
        if (!ObjectAt(qjsonNodes, i, qstrNodePath, qjsonNode) ||
            !CheckKeys(qjsonNode,
                       {"id", "parent", "name", "resource", "type", "order", "status", "channelNo",
                        "devBindType", "extend"},
                       qstrNodePath)) {
            return false;
        }
        CLS_CustomTreeNode clsNode;
        QString qstrResource;
        if (!ReadId(qjsonNode, "id", qstrNodePath, true, clsNode.m_qstrTreeId) ||
            !ReadId(qjsonNode, "parent", qstrNodePath, false, clsNode.m_qstrTreeParentId) ||
            !ReadId(qjsonNode, "resource", qstrNodePath, false, qstrResource)) {
            return false;
        }
        if (clsNode.m_qstrTreeParentId.isEmpty())
            clsNode.m_qstrTreeParentId = qstrRootId;

        // Defaults: a node bound to a resource takes its caption, kind and state; a node of its
        // own is a group whose device id is its tree id.
        clsNode.m_qstrDevId = clsNode.m_qstrTreeId;
        clsNode.m_iType = REF_KIND_GROUP;
        clsNode.m_qstrName = clsNode.m_qstrTreeId;
        if (!qstrResource.isEmpty()) {
            auto it = m_mapItemIndex.find(Utf8(qstrResource));
            if (it == m_mapItemIndex.end())
                return Fail(Join(qstrNodePath, "resource"),
                            QStringLiteral("unknown resource \"%1\"").arg(qstrResource));
            const STRCT_RefItemValues& strctItem = m_strctOut.m_vecItems[it->second];
            clsNode.m_qstrDevId = qstrResource;
            clsNode.m_qstrName = QString::fromStdString(strctItem.m_strName);
            clsNode.m_iType = strctItem.m_iType;
            clsNode.m_iStatus = strctItem.m_iStatus;
            clsNode.m_iDevBindType = strctItem.m_iDevBindType;
            clsNode.m_qstrExtend = QString::fromStdString(strctItem.m_strExtend);
            const bool blChannelLike =
                strctItem.m_iType == REF_KIND_CHANNEL || strctItem.m_iType == REF_KIND_ALARM_IN ||
                strctItem.m_iType == REF_KIND_ALARM_OUT || strctItem.m_iType == REF_KIND_DECODER_OUT ||
                strctItem.m_iType == REF_KIND_DECODER_IN;
            if (blChannelLike)
                clsNode.m_iChannelNo = strctItem.m_iChannelNo;
        }
        clsNode.m_iSortNo = ++qmapSiblings[clsNode.m_qstrTreeParentId];
        if (!ReadString(qjsonNode, "name", qstrNodePath, clsNode.m_qstrName) ||
            !ReadInt(qjsonNode, "type", qstrNodePath, clsNode.m_iType) ||
            !ReadInt(qjsonNode, "order", qstrNodePath, clsNode.m_iSortNo) ||
            !ReadStatus(qjsonNode, qstrNodePath, clsNode.m_iStatus) ||
            !ReadInt(qjsonNode, "channelNo", qstrNodePath, clsNode.m_iChannelNo) ||
            !ReadInt(qjsonNode, "devBindType", qstrNodePath, clsNode.m_iDevBindType) ||
            !ReadString(qjsonNode, "extend", qstrNodePath, clsNode.m_qstrExtend)) {
            return false;
        }
        const bool blRootId = clsNode.m_qstrTreeId == "custom_root_id" ||
                              clsNode.m_qstrTreeId == "favorite_root_id" ||
                              clsNode.m_qstrTreeId == "passengerflow_root_id";
        if (blRootId)
            return Fail(Join(qstrNodePath, "id"),
                        QStringLiteral("\"%1\" is reserved for a root").arg(clsNode.m_qstrTreeId));
        if (m_qsetNodeIds.contains(clsNode.m_qstrTreeId))
            return Fail(Join(qstrNodePath, "id"),
                        QStringLiteral("duplicate node id \"%1\"").arg(clsNode.m_qstrTreeId));
        m_qsetNodeIds.insert(clsNode.m_qstrTreeId);
        qmapIndex.insert(clsNode.m_qstrTreeId, qvecNodes.size());
        qvecNodes.append(clsNode);
        qlstPaths.append(qstrNodePath);
    }

    // Parents: the root or a node of the same tree, written before or after; every chain must
    // reach the root.
    for (int i = 0; i < qvecNodes.size(); ++i) {
        CLS_CustomTreeNode& clsNode = qvecNodes[i];
        if (clsNode.m_qstrTreeParentId == qstrRootId) {
            clsNode.m_qstrDevParentId = qstrRootId;
            continue;
        }
        auto itParent = qmapIndex.constFind(clsNode.m_qstrTreeParentId);
        if (itParent == qmapIndex.cend())
            return Fail(Join(qlstPaths.at(i), "parent"),
                        QStringLiteral("unknown parent \"%1\"").arg(clsNode.m_qstrTreeParentId));
        clsNode.m_qstrDevParentId = qvecNodes.at(itParent.value()).m_qstrDevId;
    }
    for (int i = 0; i < qvecNodes.size(); ++i) {
        QString qstrStep = qvecNodes.at(i).m_qstrTreeParentId;
        for (int iStep = 0; qstrStep != qstrRootId; ++iStep) {
            if (iStep > qvecNodes.size())
                return Fail(
                    Join(qlstPaths.at(i), "parent"),
                    QStringLiteral("parents form a loop through \"%1\"").arg(qvecNodes.at(i).m_qstrTreeId));
            qstrStep = qvecNodes.at(qmapIndex.value(qstrStep)).m_qstrTreeParentId;
        }
    }
    m_strctOut.m_qvecNodes.append(clsRoot);
    m_strctOut.m_qvecNodes += qvecNodes;
    return true;
}

bool CLS_Reader::ReadDocument(const QJsonObject& _qjsonTop)
{
    if (!CheckKeys(_qjsonTop,
                   {"version", "rootName", "groups", "hosts", "decoders", "customTree", "favorites",
                    "passengerFlow"},
                   QString())) {
        return false;
    }
    int iVersion = 1;
    if (!ReadInt(_qjsonTop, "version", QString(), iVersion))
        return false;
    if (iVersion != 1)
        return Fail(QStringLiteral("version"), QStringLiteral("unsupported version %1").arg(iVersion));

    STRCT_RefItemValues strctRoot;
    strctRoot.m_iType = REF_KIND_GROUP;
    strctRoot.m_strId = CONST_RESOURCE_ROOT_ID;
    strctRoot.m_strTreeId = CONST_RESOURCE_ROOT_ID;
    QString qstrRootName = QStringLiteral("All resources");
    if (!ReadString(_qjsonTop, "rootName", QString(), qstrRootName))
        return false;
    strctRoot.m_strName = Utf8(qstrRootName);
    m_setIds.insert(strctRoot.m_strId);
    m_setTreeIds.insert(strctRoot.m_strTreeId);
    m_mapItemIndex[strctRoot.m_strId] = 0;
    m_strctOut.m_vecItems.push_back(strctRoot);

    if (!ReadGroupContent(_qjsonTop, QString(), CONST_RESOURCE_ROOT_ID))
        return false;
    for (const STRCT_TreeSection& strctSection : CONST_arrTreeSections) {
        if (!ReadTreeSection(_qjsonTop, strctSection))
            return false;
    }
    return true;
}

// ---- generator ----------------------------------------------------------------------------------

STRCT_RefItemValues ItemValues(int _iType, const std::string& _strId, const std::string& _strName,
                               const std::string& _strParentId, int _iOrderNo, int _iStatus,
                               int _iChannelNo = 0)
{
    STRCT_RefItemValues strctItem;
    strctItem.m_iType = _iType;
    strctItem.m_strId = _strId;
    strctItem.m_strTreeId = _strId; // rows find their parents by resource id
    strctItem.m_strName = _strName;
    strctItem.m_strParentId = _strParentId;
    strctItem.m_iOrderNo = _iOrderNo;
    strctItem.m_iStatus = _iStatus;
    strctItem.m_iChannelNo = _iChannelNo;
    return strctItem;
}

CLS_CustomTreeNode Node(const QString& _qstrTreeId, const QString& _qstrParentId,
                        const QString& _qstrDevParentId, const QString& _qstrName, int _iSortNo)
{
    CLS_CustomTreeNode clsNode;
    clsNode.m_qstrTreeId = _qstrTreeId;
    clsNode.m_qstrDevId = _qstrTreeId;
    clsNode.m_qstrTreeParentId = _qstrParentId;
    clsNode.m_qstrDevParentId = _qstrDevParentId;
    clsNode.m_qstrName = _qstrName;
    clsNode.m_iType = REF_KIND_GROUP;
    clsNode.m_iSortNo = _iSortNo;
    return clsNode;
}

CLS_CustomTreeNode ChannelNode(const QString& _qstrPrefix, const STRCT_RefItemValues& _strctChannel,
                               const QString& _qstrParentId, int _iSortNo)
{
    const QString qstrDevId = QString::fromStdString(_strctChannel.m_strId);
    CLS_CustomTreeNode clsNode;
    clsNode.m_qstrTreeId = _qstrPrefix + qstrDevId;
    clsNode.m_qstrDevId = qstrDevId;
    clsNode.m_qstrTreeParentId = _qstrParentId;
    clsNode.m_qstrDevParentId = _qstrParentId;
    clsNode.m_qstrName = QString::fromStdString(_strctChannel.m_strName);
    clsNode.m_iType = REF_KIND_CHANNEL;
    clsNode.m_iStatus = _strctChannel.m_iStatus;
    clsNode.m_iSortNo = _iSortNo;
    clsNode.m_iChannelNo = _strctChannel.m_iChannelNo;
    return clsNode;
}

// Line and column (both from 1) of the byte at _iOffset of a UTF-8 text; the column counts
// characters, not bytes.
void TextPosition(const QByteArray& _qbaText, int _iOffset, int& _iLine, int& _iColumn)
{
    const int iEnd = std::max(0, std::min(_iOffset, static_cast<int>(_qbaText.size())));
    _iLine = 1;
    _iColumn = 1;
    for (int i = 0; i < iEnd; ++i) {
        const unsigned char ucByte = static_cast<unsigned char>(_qbaText.at(i));
        if ('\n' == ucByte) {
            ++_iLine;
            _iColumn = 1;
        } else if ((ucByte & 0xC0) != 0x80) { // not a continuation byte
            ++_iColumn;
        }
    }
}

// The message as one line: ids, keys and file names may hold line breaks and other controls,
// which are written as a backslash, 'u' and four hex digits, as JSON would write them.
QString OneLine(const QString& _qstrText)
{
    QString qstrLine;
    qstrLine.reserve(_qstrText.size());
    for (const QChar qch : _qstrText) {
        const ushort usCode = qch.unicode();
        if (usCode < 0x20 || usCode == 0x7F || usCode == 0x2028 || usCode == 0x2029)
            qstrLine += QStringLiteral("\\u%1").arg(usCode, 4, 16, QLatin1Char('0'));
        else
            qstrLine += qch;
    }
    return qstrLine;
}

} // namespace

int RefInstallation::Parse(const QByteArray& _qbaJson, STRCT_RefInstallation& _strctInstallation,
                           QString& _qstrError, const QString& _qstrSource)
{
    _strctInstallation = STRCT_RefInstallation();
    QString qstrError;
    QJsonParseError qjsonError;
    const QJsonDocument qjsonDocument = QJsonDocument::fromJson(_qbaJson, &qjsonError);
    if (qjsonError.error != QJsonParseError::NoError) {
        int iLine = 1;
        int iColumn = 1;
        TextPosition(_qbaJson, qjsonError.offset, iLine, iColumn);
        if (_qstrSource.isEmpty()) {
            qstrError = QStringLiteral("invalid JSON at line %1, column %2: %3")
                            .arg(iLine)
                            .arg(iColumn)
                            .arg(qjsonError.errorString());
        } else {
            qstrError = QStringLiteral("%1:%2:%3: invalid JSON: %4")
                            .arg(_qstrSource)
                            .arg(iLine)
                            .arg(iColumn)
                            .arg(qjsonError.errorString());
        }
    } else if (!qjsonDocument.isObject()) {
        qstrError = QStringLiteral("the document must be a JSON object");
    } else {
        CLS_Reader clsReader(_strctInstallation);
        if (clsReader.ReadDocument(qjsonDocument.object())) {
            _qstrError.clear();
            return 0;
        }
        qstrError = clsReader.m_qstrError;
    }
    // Nothing half-read stays behind.
    _strctInstallation = STRCT_RefInstallation();
    if (!_qstrSource.isEmpty() && qjsonError.error == QJsonParseError::NoError)
        qstrError = _qstrSource + ": " + qstrError;
    _qstrError = OneLine(qstrError);
    return -1;
}

int RefInstallation::Generate(int _iChannels, int _iChannelsPerHost,
                              STRCT_RefInstallation& _strctInstallation)
{
    if (_iChannels < 0 || _iChannelsPerHost < 1)
        return -1;
    _strctInstallation = STRCT_RefInstallation();
    std::vector<STRCT_RefItemValues>& vecItems = _strctInstallation.m_vecItems;
    const std::string strRoot = CONST_RESOURCE_ROOT_ID;
    vecItems.push_back(ItemValues(REF_KIND_GROUP, strRoot, "All resources", "", 0, 0));

    const int iHosts = (_iChannels + _iChannelsPerHost - 1) / _iChannelsPerHost;
    const int iGroups = std::min(4, std::max(1, (iHosts + 9) / 10));
    for (int iGroup = 1; iGroup <= iGroups; ++iGroup) {
        vecItems.push_back(ItemValues(REF_KIND_GROUP, "group" + std::to_string(iGroup),
                                      "Area " + std::to_string(iGroup), strRoot, iGroup, 0));
    }

    std::vector<size_t> vecChannels; // indices into vecItems
    std::vector<int> vecInGroup(iGroups + 1, 0);
    for (int iHost = 1; iHost <= iHosts; ++iHost) {
        const std::string strHost = "host" + std::to_string(iHost);
        const int iGroup = 1 + (iHost - 1) * iGroups / iHosts;
        const int iHostStatus = iHost % 10 == 0 ? 0 : 1; // every tenth recorder is off line
        STRCT_RefItemValues strctHost =
            ItemValues(REF_KIND_HOST, strHost, "Recorder " + std::to_string(iHost),
                       "group" + std::to_string(iGroup), ++vecInGroup[iGroup], iHostStatus);
        strctHost.m_strAddress =
            "10.0." + std::to_string(iHost / 250) + "." + std::to_string(iHost % 250 + 1);
        strctHost.m_iPort = 8000;
        vecItems.push_back(strctHost);

        const int iFirst = (iHost - 1) * _iChannelsPerHost;
        const int iCount = std::min(_iChannelsPerHost, _iChannels - iFirst);
        for (int iNo = 1; iNo <= iCount; ++iNo) {
            // Some cameras of the on-line recorders are off line too.
            const int iStatus = iHostStatus == 0 || (iHost * 7 + iNo * 3) % 11 == 0 ? 0 : 1;
            vecChannels.push_back(vecItems.size());
            STRCT_RefItemValues strctChannel = ItemValues(
                REF_KIND_CHANNEL, strHost + "_ch" + std::to_string(iNo),
                "Camera " + std::to_string(iHost) + "-" + std::to_string(iNo), strHost, iNo, iStatus, iNo);
            // The camera's address, for a search by address: "10.0.3.7:5".
            strctChannel.m_strExtend = strctHost.m_strAddress + ":" + std::to_string(iNo);
            vecItems.push_back(strctChannel);
        }
        if (iHost % 4 == 1) { // alarms on every fourth recorder
            for (int iNo = 1; iNo <= 2; ++iNo) {
                vecItems.push_back(
                    ItemValues(REF_KIND_ALARM_IN, strHost + "_ai" + std::to_string(iNo),
                               "Alarm input " + std::to_string(iHost) + "-" + std::to_string(iNo), strHost,
                               iCount + iNo, iHostStatus, iNo));
            }
            vecItems.push_back(ItemValues(REF_KIND_ALARM_OUT, strHost + "_ao1",
                                          "Alarm output " + std::to_string(iHost) + "-1", strHost, iCount + 3,
                                          iHostStatus, 1));
        }
        if (iHost % 2 == 1 && iCount > 0) // odd recorders have an image channel
            _strctInstallation.m_mapImageParams[strHost + "_ch1"] = 1;
    }

    vecItems.push_back(ItemValues(REF_KIND_DECODER, "dec1", "Decoder 1", strRoot, iGroups + 1, 1));
    for (int iNo = 1; iNo <= 4; ++iNo) {
        vecItems.push_back(ItemValues(REF_KIND_DECODER_OUT, "dec1_out" + std::to_string(iNo),
                                      "Output " + std::to_string(iNo), "dec1", iNo, 1, iNo));
    }
    for (int iNo = 1; iNo <= 2; ++iNo) {
        vecItems.push_back(ItemValues(REF_KIND_DECODER_IN, "dec1_in" + std::to_string(iNo),
                                      "Input " + std::to_string(iNo), "dec1", 4 + iNo, 1, iNo));
    }

    // Custom trees over channels spread through the installation: three custom groups of four,
    // five favourites in a group and two at the top, three passenger-flow points.
    QVector<CLS_CustomTreeNode>& qvecNodes = _strctInstallation.m_qvecNodes;
    const size_t uiChannels = vecChannels.size();
    const size_t uiStride = std::max<size_t>(1, uiChannels / 12);
    auto ChannelAt = [&](size_t _uiSlot) -> const STRCT_RefItemValues& {
        return vecItems[vecChannels[(_uiSlot * uiStride) % uiChannels]];
    };

    qvecNodes.append(Node("custom_root_id", "", "", "Custom", 0));
    const char* const arrCustomGroups[] = {"Entrances", "Lobbies", "Car parks"};
    for (int iGroup = 0; iGroup < 3; ++iGroup) {
        const QString qstrGroup = QStringLiteral("cgrp%1").arg(iGroup + 1);
        qvecNodes.append(
            Node(qstrGroup, "custom_root_id", "custom_root_id", arrCustomGroups[iGroup], iGroup + 1));
        for (int i = 0; i < 4 && size_t(iGroup * 4 + i) < uiChannels; ++i)
            qvecNodes.append(ChannelNode("c_", ChannelAt(iGroup * 4 + i), qstrGroup, i + 1));
    }

    qvecNodes.append(Node("favorite_root_id", "", "", "Favourites", 0));
    qvecNodes.append(Node("fav_main", "favorite_root_id", "favorite_root_id", "Main", 1));
    QSet<QString> qsetFavourites;
    for (int i = 0; i < 7 && size_t(i) < uiChannels; ++i) {
        const STRCT_RefItemValues& strctChannel =
            vecItems[vecChannels[(i * uiStride + uiStride / 2) % uiChannels]];
        if (qsetFavourites.contains(QString::fromStdString(strctChannel.m_strId)))
            continue;
        qsetFavourites.insert(QString::fromStdString(strctChannel.m_strId));
        qvecNodes.append(i < 5 ? ChannelNode("f_", strctChannel, "fav_main", i + 1)
                               : ChannelNode("f_", strctChannel, "favorite_root_id", i - 3));
    }

    qvecNodes.append(Node("passengerflow_root_id", "", "", "Passenger flow", 0));
    qvecNodes.append(Node("pf_gates", "passengerflow_root_id", "passengerflow_root_id", "Gates", 1));
    for (int i = 0; i < 3 && size_t(i) < uiChannels; ++i) {
        CLS_CustomTreeNode clsNode = ChannelNode(
            "p_", vecItems[vecChannels[(uiChannels - 1 - i * uiStride % uiChannels)]], "pf_gates", i + 1);
        clsNode.m_iDevBindType = 2 + i; // pad, car, way
        qvecNodes.append(clsNode);
    }
    return static_cast<int>(vecItems.size());
}
