// Randomized model test of CLS_WgtDeviceTree. A seeded generator writes a list of calls (builds of
// every form, adds, changes, deletes, row moves, channel-state batches, host commands, check changes,
// the check batch timeout, device-layer changes); each call runs on a real tree over the reference
// device layer and on a small model of the tree's rules written here. After every step the node map,
// the id map, the rows (place, record, shown icon, check state), the queries and the emitted signals
// of both must agree. A failure prints the seed, the shortest failing prefix, a reduced list of steps
// and both sides of the first difference.
//
// The status thread is kept out of the results: no event loop ever runs here, so its queued reports
// never arrive, and the application object is switched off, so each worker leaves after one pass.
// The 200 ms check batch is closed by calling its timeout slot.
//
// WGT_MODEL_SEEDS ("1,2,3") and WGT_MODEL_STEPS replace the fixed defaults (seeds 1 to 12, 500 steps).
// WGT_MODEL_MUTATE=1 breaks one rule of the model on purpose, to show that a broken rule is caught.

#include "CLS_DevManage.h"
#include "CLS_IResourceTree.h"
#include "CLS_TestDeviceTree.h"
#include "DevManageControl.h"
#include "Logger.h"
#include "LxAppManager.h"
#include "LxAppManagerControl.h"

#include <QColor>
#include <QDir>
#include <QElapsedTimer>
#include <QIcon>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPixmap>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <random>
#include <vector>

using namespace CLS_DevTreeTestUtil;

namespace {

const QString CONST_RES_ROOT = "resource_root_id";
const QString CONST_CUS_ROOT = "custom_root_id";
const QString CONST_FAV_ROOT = "favorite_root_id";
const QString CONST_PFL_ROOT = "passengerflow_root_id";
const QStringList CONST_ROOTS = {CONST_RES_ROOT, CONST_CUS_ROOT, CONST_FAV_ROOT, CONST_PFL_ROOT};

bool s_blMutate = false; // the sanity mutation of the model

// ---- images ---------------------------------------------------------------------------------------

const QStringList& ImageNames()
{
    static const QStringList s_qlst = {
        "root_icon.png",      "fenzu.png",           "host_online.png",       "host_offline.png",
        "channel_online.png", "channel_offline.png", "channel_no.png",        "alarm_in.png",
        "alarm_out.png",      "decoder_online.png",  "decoderout_online.png", "decoderin_online.png",
        "car_item.png",       "carerr_item.png",     "pad_item.png",          "paderr_item.png",
        "way_item.png",       "wayerr_item.png"};
    return s_qlst;
}

QColor ImageColor(int _iIndex)
{
    return QColor(10 + 12 * _iIndex, 255 - 12 * _iIndex, 40 + 7 * _iIndex);
}

bool MakeImages(const QString& _qstrDir)
{
    if (!QDir().mkpath(_qstrDir))
        return false;
    for (int i = 0; i < ImageNames().size(); ++i) {
        QImage image(8, 8, QImage::Format_RGB32);
        image.fill(ImageColor(i));
        if (!image.save(_qstrDir + ImageNames().at(i)))
            return false;
    }
    return true;
}

// The image name of an icon path as the model holds it.
QString ImageOfPath(const QString& _qstrPath, const QString& _qstrPicPath)
{
    if (_qstrPath.isEmpty())
        return "<none>";
    if (_qstrPath.startsWith(_qstrPicPath) && ImageNames().contains(_qstrPath.mid(_qstrPicPath.size())))
        return _qstrPath.mid(_qstrPicPath.size());
    return "<other:" + _qstrPath + ">";
}

// The image name of the icon a row shows, found by its colour; remembered per icon object.
QString ImageOfRow(QTreeWidgetItem* _pItem)
{
    static QHash<qint64, QString> s_qhashSeen;
    const QIcon icon = _pItem->icon(0);
    if (icon.isNull())
        return "<none>";
    auto it = s_qhashSeen.constFind(icon.cacheKey());
    if (it != s_qhashSeen.cend())
        return it.value();
    QString qstrName = "<other>";
    const QPixmap pixmap = icon.pixmap(8, 8);
    if (pixmap.isNull()) {
        qstrName = "<none>";
    } else {
        const QColor color = pixmap.toImage().pixelColor(4, 4);
        for (int i = 0; i < ImageNames().size(); ++i) {
            if (ImageColor(i) == color)
                qstrName = ImageNames().at(i);
        }
    }
    s_qhashSeen.insert(icon.cacheKey(), qstrName);
    return qstrName;
}

// ---- the device layer as the test filled it -------------------------------------------------------

struct STRCT_MRes
{
    int m_iType = 4;
    QString m_qstrId;
    QString m_qstrName;
    QString m_qstrParentId;
    QString m_qstrTreeId;
    int m_iOrderNo = 0;
    int m_iStatus = 0;
    int m_iChannelNo = 0;
    int m_iDevBindType = -1;
    bool m_blNull = false; // a null element of a pointer vector
};

bool IsChannelKind(int _iType)
{
    return _iType == 4 || _iType == 5 || _iType == 6 || _iType == 13 || _iType == 17;
}

std::shared_ptr<STRCT_VideoItem> MakeObject(const STRCT_MRes& _res)
{
    auto pRes = std::make_shared<CLS_TestChannel>(_res.m_iType);
    pRes->m_strId = _res.m_qstrId.toStdString();
    pRes->m_strName = _res.m_qstrName.toStdString();
    pRes->m_strParentId = _res.m_qstrParentId.toStdString();
    pRes->m_strTreeId = _res.m_qstrTreeId.toStdString();
    pRes->m_iOrderNo = _res.m_iOrderNo;
    pRes->m_iStatus = _res.m_iStatus;
    pRes->m_iChannelNo = _res.m_iChannelNo;
    pRes->m_iDevBindType = _res.m_iDevBindType;
    return pRes;
}

struct STRCT_MCust
{
    QString m_qstrTreeId, m_qstrDevId, m_qstrParentId, m_qstrName;
    int m_iType = 4, m_iSortNo = 0, m_iStatus = 0, m_iChannelNo = -1;
    QString m_qstrDevParentId; // taken by the device layer from the parent present when the node is added
};

// What the reference device layer holds; changed only together with it.
struct CLS_DevMirror
{
    QMap<QString, STRCT_MRes> m_qmapItems; // by resource id
    QMap<QString, STRCT_MCust> m_qmapCust; // by tree id

    // GetAllItems: by tree id.
    QMap<QString, STRCT_MRes> AllByTreeId() const
    {
        QMap<QString, STRCT_MRes> qmap;
        for (const STRCT_MRes& res : m_qmapItems)
            qmap.insert(res.m_qstrTreeId, res);
        return qmap;
    }

    CLS_CustomTreeNode CustNode(const STRCT_MCust& _cust) const
    {
        CLS_CustomTreeNode node;
        node.m_qstrTreeId = _cust.m_qstrTreeId;
        node.m_qstrDevId = _cust.m_qstrDevId;
        node.m_qstrTreeParentId = _cust.m_qstrParentId;
        node.m_qstrName = _cust.m_qstrName;
        node.m_iType = _cust.m_iType;
        node.m_iSortNo = _cust.m_iSortNo;
        node.m_iStatus = _cust.m_iStatus;
        node.m_iChannelNo = _cust.m_iChannelNo;
        node.m_qstrDevParentId = _cust.m_qstrDevParentId;
        return node;
    }

    QMap<QString, CLS_CustomTreeNode> AllNodes() const
    {
        QMap<QString, CLS_CustomTreeNode> qmap;
        for (const STRCT_MCust& cust : m_qmapCust)
            qmap.insert(cust.m_qstrTreeId, CustNode(cust));
        return qmap;
    }

    QMap<QString, CLS_CustomTreeNode> NodesOfRoot(const QString& _qstrRoot) const
    {
        QMap<QString, CLS_CustomTreeNode> qmap;
        for (const STRCT_MCust& cust : m_qmapCust) {
            bool blBelow = cust.m_qstrTreeId == _qstrRoot;
            QString qstrParent = cust.m_qstrParentId;
            for (int i = 0; !blBelow && !qstrParent.isEmpty() && i < m_qmapCust.size(); ++i) {
                if (qstrParent == _qstrRoot) {
                    blBelow = true;
                    break;
                }
                auto it = m_qmapCust.constFind(qstrParent);
                if (it == m_qmapCust.cend())
                    break;
                qstrParent = it->m_qstrParentId;
            }
            if (blBelow)
                qmap.insert(cust.m_qstrTreeId, CustNode(cust));
        }
        return qmap;
    }
};

// ---- one step -----------------------------------------------------------------------------------

enum n_Op
{
    OP_NEW_TREE,
    OP_INIT_NODES,
    OP_INIT_SIBLING,
    OP_INIT_WEAK,
    OP_INIT_RAW,
    OP_CLEAR,
    OP_UPDATE_NODES_MAP,
    OP_ADD_NODE,
    OP_ADD_ID,
    OP_ADD_IDS,
    OP_ADD_WEAKS,
    OP_ADD_VARIANT,
    OP_MODIFY_ID,
    OP_MODIFY_LIST,
    OP_MODIFY_RAWS,
    OP_MODIFY_IDS_EMPTY,
    OP_CAPTION,
    OP_DELETE,
    OP_DELETE_IDS,
    OP_MOVE_ROW,
    OP_MOVE_NODES,
    OP_MOVE_NODES_IDS,
    OP_STATUS,
    OP_HOST,
    OP_ONLINE_ICON,
    OP_CHANNEL_STATUS_UPDATE,
    OP_SET_CHECK,
    OP_TIMEOUT,
    OP_DBLCLICK,
    OP_DEV_ADD,
    OP_DEV_REMOVE,
    OP_DEV_NAME,
    OP_DEV_BIND,
    OP_DEV_STATUS,
    OP_STATUS_FILTER,
    OP_CHANNEL_COUNTS,
    OP_VIEW_STATE,
    OP_WORD_SEARCH,
    OP_SELECTED_NODES,
    OP_DRAG_DATA,
    OP_ACCESSIBLE,
};

struct STRCT_Step
{
    n_Op m_iOp = OP_TIMEOUT;
    QString m_qstrA, m_qstrB;
    int m_iA = 0, m_iB = 0, m_iC = 0;
    bool m_blA = false;
    int m_iNodeSet = 0, m_iBindSet = 0, m_iBtnSet = 0;
    QVector<QPair<QString, CLS_CustomTreeNode>> m_qvecKeyed; // node maps, key first
    QVector<CLS_CustomTreeNode> m_qvecNodes;
    QVector<QString> m_qvecIds;
    QVector<STRCT_MRes> m_qvecRes;
    QVector<QPair<QString, QPair<bool, int>>> m_qvecBatch;
};

QSet<int> NodeSet(int _iChoice)
{
    switch (_iChoice) {
    case 1:
        return {2, 4};
    case 2:
        return {2, 3, 4, 5, 6, 12, 13, 17};
    case 3:
        return {4, 3};
    case 4:
        return {3, 12, 4, 5, 6, 17, 13};
    default:
        return {};
    }
}

QSet<int> BindSet(int _iChoice)
{
    switch (_iChoice) {
    case 1:
        return {-1, 0, 1, 2, 3, 4, 9};
    case 2:
        return {-1, 2};
    default:
        return {};
    }
}

QMap<int, QVector<CLS_ItemButton>> BtnSet(int _iChoice)
{
    QMap<int, QVector<CLS_ItemButton>> qmap;
    if (_iChoice == 1) {
        qmap[4] = {MakeButton("play", "ignored.png", true, false), MakeButton("rec")};
        qmap[3] = {MakeButton("cfg")};
    } else if (_iChoice == 2) {
        qmap[2] = {MakeButton("grp", "", false, true)};
    }
    return qmap;
}

QString NodeLine(const CLS_CustomTreeNode& _node)
{
    return NodeText(_node);
}

QString ResLine(const STRCT_MRes& _res)
{
    if (_res.m_blNull)
        return "null";
    return QString("{type=%1 id=%2 tree=%3 parent=%4 name=%5 order=%6 status=%7 ch=%8 bind=%9}")
        .arg(_res.m_iType)
        .arg(_res.m_qstrId, _res.m_qstrTreeId, _res.m_qstrParentId, _res.m_qstrName)
        .arg(_res.m_iOrderNo)
        .arg(_res.m_iStatus)
        .arg(_res.m_iChannelNo)
        .arg(_res.m_iDevBindType);
}

QString ShortNode(const CLS_CustomTreeNode& _node)
{
    return QString("{tree=%1 dev=%2 parent=%3 name=%4 type=%5 sort=%6 status=%7 bind=%8}")
        .arg(_node.m_qstrTreeId, _node.m_qstrDevId, _node.m_qstrTreeParentId, _node.m_qstrName)
        .arg(_node.m_iType)
        .arg(_node.m_iSortNo)
        .arg(_node.m_iStatus)
        .arg(_node.m_iDevBindType);
}

QString Describe(const STRCT_Step& _step)
{
    auto sets = [&] {
        return QString(" types#%1 binds#%2 btns#%3")
            .arg(_step.m_iNodeSet)
            .arg(_step.m_iBindSet)
            .arg(_step.m_iBtnSet);
    };
    auto ids = [&] { return "[" + QStringList(_step.m_qvecIds.toList()).join(",") + "]"; };
    auto res = [&] {
        QStringList qlst;
        for (const STRCT_MRes& r : _step.m_qvecRes)
            qlst << ResLine(r);
        return "[" + qlst.join(" ") + "]";
    };
    auto nodes = [&] {
        QStringList qlst;
        for (const CLS_CustomTreeNode& n : _step.m_qvecNodes)
            qlst << ShortNode(n);
        return "[" + qlst.join(" ") + "]";
    };
    auto keyed = [&] {
        QStringList qlst;
        for (const auto& kn : _step.m_qvecKeyed)
            qlst << kn.first + ":" + ShortNode(kn.second);
        return "{" + qlst.join(" ") + "}";
    };
    switch (_step.m_iOp) {
    case OP_NEW_TREE:
        return QString("new CLS_WgtDeviceTree(type %1, drag %2, check %3)")
            .arg(_step.m_iA)
            .arg(_step.m_blA)
            .arg(_step.m_iB);
    case OP_INIT_NODES:
        return QString("Init(nodes %1, root \"%2\"%3)").arg(keyed(), _step.m_qstrA, sets());
    case OP_INIT_SIBLING:
        return QString("Init(root \"%1\"%2) from the device layer").arg(_step.m_qstrA, sets());
    case OP_INIT_WEAK:
        return QString("Init(weak GetAllItems%1, root \"%2\"%3)")
            .arg(_step.m_blA ? " less resource_root_id" : "", _step.m_qstrA, sets());
    case OP_INIT_RAW:
        return QString("Init(raw GetAllItems%1, root \"%2\"%3, extra %4)")
            .arg(_step.m_blA ? " less resource_root_id" : "", _step.m_qstrA, sets(), keyed());
    case OP_CLEAR:
        return "Clear()";
    case OP_UPDATE_NODES_MAP:
        return "UpdateNodesMap(" + keyed() + ")";
    case OP_ADD_NODE:
        return "AddItem(node " + nodes() + ")";
    case OP_ADD_ID:
        return "AddItem(\"" + _step.m_qstrA + "\")";
    case OP_ADD_IDS:
        return QString("AddItems(%1, %2)").arg(ids()).arg(_step.m_blA);
    case OP_ADD_WEAKS:
        return QString("AddItems(weak %1, %2)").arg(res()).arg(_step.m_blA);
    case OP_ADD_VARIANT:
        return _step.m_blA ? "AddItems(QVariant())" : "AddItems(QVariant " + nodes() + ")";
    case OP_MODIFY_ID:
        return "ModifyItem(\"" + _step.m_qstrA + "\")";
    case OP_MODIFY_LIST:
        return "ModifyItems(list " + nodes() + ")";
    case OP_MODIFY_RAWS:
        return QString("ModifyItems(raw %1, %2)").arg(res()).arg(_step.m_blA);
    case OP_MODIFY_IDS_EMPTY:
        return "ModifyItems(ids " + ids() + ", true)";
    case OP_CAPTION:
        return QString("ModifyCaptionByChannelId(\"%1\", \"%2\")").arg(_step.m_qstrA, _step.m_qstrB);
    case OP_DELETE:
        return "DeleteItem(\"" + _step.m_qstrA + "\")";
    case OP_DELETE_IDS:
        return QString("DeleteItems(%1, %2)").arg(ids()).arg(_step.m_blA);
    case OP_MOVE_ROW:
        return QString("%1(\"%2\", \"%3\")")
            .arg(_step.m_iA == 0 ? "MoveUpOneRow" : "MoveDownOneRow", _step.m_qstrA, _step.m_qstrB);
    case OP_MOVE_NODES:
        return QString("MoveNodes(raw %1, %2)").arg(res()).arg(_step.m_iA);
    case OP_MOVE_NODES_IDS:
        return QString("MoveNodes(ids %1, %2)").arg(ids()).arg(_step.m_iA);
    case OP_STATUS: {
        if (_step.m_iA == 1)
            return "UpdateAllChannelsStatus(QVariant())";
        if (_step.m_iA == 2)
            return "UpdateAllChannelsStatus(QVariant(QString))";
        QStringList qlst;
        for (const auto& e : _step.m_qvecBatch)
            qlst << QString("%1:(%2,%3)").arg(e.first).arg(e.second.first).arg(e.second.second);
        return "UpdateAllChannelsStatus({" + qlst.join(" ") + "})";
    }
    case OP_HOST:
        return QString("UpdateHostStatus(\"%1\", %2)").arg(_step.m_qstrA).arg(_step.m_iA);
    case OP_ONLINE_ICON:
        return QString("UpdateNodeOnlineStatus(\"%1\", %2)").arg(_step.m_qstrA).arg(_step.m_blA);
    case OP_CHANNEL_STATUS_UPDATE:
        return "UpdateChannelStatus()";
    case OP_SET_CHECK:
        return QString("SetItemCheckStatus(\"%1\", %2, %3)")
            .arg(_step.m_qstrA)
            .arg(_step.m_iA)
            .arg(_step.m_blA);
    case OP_TIMEOUT:
        return "SlotCheckedSignalWatcherTimeout()";
    case OP_DBLCLICK:
        return "SlotDblClicked(\"" + _step.m_qstrA + "\")";
    case OP_DEV_ADD:
        return "device layer: add " + res();
    case OP_DEV_REMOVE:
        return "device layer: remove \"" + _step.m_qstrA + "\"";
    case OP_DEV_NAME:
        return QString("device layer: name of \"%1\" = \"%2\"").arg(_step.m_qstrA, _step.m_qstrB);
    case OP_DEV_BIND:
        return QString("device layer: bind type of \"%1\" = %2").arg(_step.m_qstrA).arg(_step.m_iA);
    case OP_DEV_STATUS:
        return QString("device layer: status of \"%1\" = %2").arg(_step.m_qstrA).arg(_step.m_iA);
    case OP_STATUS_FILTER:
        return QString("SetStatusFilter(%1)").arg(_step.m_iA);
    case OP_CHANNEL_COUNTS:
        return QString("SetShowChannelCounts(%1)").arg(_step.m_blA);
    case OP_VIEW_STATE:
        return _step.m_iA == 0   ? QString("RestoreViewState(SaveViewState())")
               : _step.m_iA == 1 ? QString("RestoreViewState(bytes that are no state)")
                                 : QString("SetKeepViewState(%1)").arg(_step.m_blA);
    case OP_WORD_SEARCH:
        return QString("SetSearchMode(%1), SetSearchShowsPath(%2), search \"%3\"")
            .arg(_step.m_iA)
            .arg(_step.m_blA)
            .arg(_step.m_qstrA);
    case OP_SELECTED_NODES:
        return QString("SetMultiSelect(%1), select {%2}, GetSelectedNodes")
            .arg(_step.m_blA)
            .arg(QStringList(_step.m_qvecIds.toList()).join(","));
    case OP_DRAG_DATA:
        return QString("ReadDragData(CreateDragData({%1}))")
            .arg(QStringList(_step.m_qvecIds.toList()).join(","));
    case OP_ACCESSIBLE:
        return QString("SetAccessibleTreeName(\"%1\"), the words of {%2}")
            .arg(_step.m_qstrA, QStringList(_step.m_qvecIds.toList()).join(","));
    }
    return "?";
}

// ---- the generator --------------------------------------------------------------------------------

class CLS_Gen
{
public:
    explicit CLS_Gen(quint32 _uiSeed) : m_rng(_uiSeed) {}

    int Pick(int _iCount) { return int(m_rng() % quint32(_iCount)); }
    bool Chance(int _iPercent) { return Pick(100) < _iPercent; }
    template <typename T>
    T One(const QVector<T>& _qvec)
    {
        return _qvec.at(Pick(_qvec.size()));
    }

    QString TreeId() { return One<QString>({"n0", "n1", "n2", "n3", "n4", "t_r0", "t_r1", "r2", "r3"}); }
    QString DevId() { return One<QString>({"r0", "r1", "r2", "r3", "r4", "d0", "d1", ""}); }
    QString AnyId()
    {
        return One<QString>({"n0", "n1", "n2", "n3", "t_r0", "t_r1", "r0", "r1", "r2", "r3", "r4", "d0", "",
                             CONST_RES_ROOT, CONST_CUS_ROOT, CONST_FAV_ROOT, CONST_PFL_ROOT, "c0", "c1"});
    }
    QString Root()
    {
        return Chance(70) ? m_qstrTreeRoot : One<QString>(QVector<QString>::fromList(CONST_ROOTS));
    }
    QString ParentFor(const QString& _qstrTreeId)
    {
        for (int i = 0; i < 10; ++i) {
            QString qstr = Chance(35) ? Root() : (Chance(15) ? QString() : TreeId());
            if (qstr != _qstrTreeId)
                return qstr;
        }
        return QString();
    }
    int Type() { return One<int>({2, 2, 3, 4, 4, 4, 5, 6, 7, 12, 13, 17}); }
    int Bind() { return One<int>({-1, -1, -1, -1, 0, 2, 3, 4, 9}); }

    CLS_CustomTreeNode Node()
    {
        CLS_CustomTreeNode node;
        node.m_qstrTreeId = Chance(5) ? QString() : TreeId();
        node.m_qstrDevId = DevId();
        node.m_qstrTreeParentId = ParentFor(node.m_qstrTreeId);
        node.m_qstrDevParentId = Chance(50) ? node.m_qstrTreeParentId : DevId();
        node.m_qstrName = One<QString>({"A", "B", "C"});
        node.m_iType = Type();
        node.m_iStatus = Pick(3);
        node.m_iSortNo = Pick(4);
        node.m_iDevBindType = Bind();
        node.m_iChannelNo = Pick(3) - 1;
        if (Chance(20))
            node.m_qmapExtend.insert("k", Pick(5));
        if (Chance(10))
            node.m_qstrExtend = "x";
        return node;
    }

    CLS_CustomTreeNode RootNode(const QString& _qstrKey)
    {
        CLS_CustomTreeNode node = Node();
        node.m_qstrTreeId = _qstrKey;
        node.m_qstrDevId = Chance(70) ? _qstrKey : DevId();
        node.m_qstrTreeParentId.clear();
        node.m_iType = Chance(80) ? 2 : Type();
        return node;
    }

    STRCT_MRes Res(const QString& _qstrId)
    {
        STRCT_MRes res;
        res.m_iType = One<int>({2, 3, 3, 4, 4, 4, 5, 6, 12, 13, 17});
        res.m_qstrId = _qstrId;
        res.m_qstrName = One<QString>({"R", "S", "T"});
        res.m_qstrTreeId = Chance(50) ? _qstrId : "t_" + _qstrId;
        res.m_qstrParentId =
            One<QString>({CONST_RES_ROOT, CONST_RES_ROOT, "r0", "r1", "t_r0", "t_r1", "r2", "", "n0"});
        if (res.m_qstrParentId == _qstrId || res.m_qstrParentId == res.m_qstrTreeId)
            res.m_qstrParentId = CONST_RES_ROOT;
        res.m_iOrderNo = Chance(60) ? 0 : Pick(3);
        res.m_iStatus = Pick(3);
        res.m_iChannelNo = IsChannelKind(res.m_iType) ? Pick(4) : 0;
        return res;
    }

    // A resource object of the test's own (not in the device layer).
    STRCT_MRes LocalRes()
    {
        STRCT_MRes res = Res(One<QString>({"r0", "r1", "r2", "d0", ""}));
        res.m_qstrTreeId = Chance(60) ? TreeId() : res.m_qstrTreeId;
        if (res.m_qstrParentId == res.m_qstrTreeId)
            res.m_qstrParentId.clear();
        if (Chance(30))
            res.m_qstrParentId = Root();
        res.m_iDevBindType = Bind();
        return res;
    }

    QVector<STRCT_Step> Steps(int _iCount)
    {
        QVector<STRCT_Step> qvec;
        qvec << NewTree();
        for (int i = 1; i < _iCount; ++i)
            qvec << Next();
        return qvec;
    }

    STRCT_Step NewTree()
    {
        STRCT_Step step;
        step.m_iOp = OP_NEW_TREE;
        step.m_iA = Pick(5);
        step.m_blA = Chance(50);
        step.m_iB = Chance(85) ? 1 : 0;
        switch (step.m_iA) {
        case 1:
            m_qstrTreeRoot = CONST_RES_ROOT;
            break;
        case 3:
            m_qstrTreeRoot = CONST_FAV_ROOT;
            break;
        case 4:
            m_qstrTreeRoot = CONST_PFL_ROOT;
            break;
        default:
            m_qstrTreeRoot = CONST_CUS_ROOT;
            break;
        }
        m_iTreeType = step.m_iA;
        return step;
    }

    void Sets(STRCT_Step& _step)
    {
        _step.m_iNodeSet = Chance(50) ? 0 : 1 + Pick(4);
        _step.m_iBindSet = Chance(60) ? 0 : 1 + Pick(2);
        _step.m_iBtnSet = Pick(3);
        _step.m_qstrA = Chance(75) ? One<QString>({"Root", "All"}) : QString();
    }

    QVector<QPair<QString, CLS_CustomTreeNode>> Keyed(int _iMax, bool _blRoot)
    {
        QVector<QPair<QString, CLS_CustomTreeNode>> qvec;
        if (_blRoot) {
            const QString qstrKey = Chance(80) ? m_qstrTreeRoot : Root();
            qvec << qMakePair(qstrKey, RootNode(qstrKey));
        }
        const int iCount = Pick(_iMax + 1);
        for (int i = 0; i < iCount; ++i) {
            CLS_CustomTreeNode node = Node();
            QString qstrKey = Chance(85) ? node.m_qstrTreeId : (Chance(50) ? TreeId() : QString());
            qvec << qMakePair(qstrKey, node);
        }
        return qvec;
    }

    STRCT_Step Next()
    {
        STRCT_Step step;
        const int iRoll = Pick(1000);
        if (iRoll < 8)
            return NewTree();
        if (iRoll < 60) {
            const int iForm = Pick(10);
            Sets(step);
            if (iForm < 5) {
                step.m_iOp = OP_INIT_NODES;
                step.m_qvecKeyed = Keyed(6, Chance(60));
            } else if (iForm < 7) {
                step.m_iOp = OP_INIT_SIBLING;
            } else if (iForm < 9) {
                step.m_iOp = OP_INIT_WEAK;
                step.m_blA = Chance(25);
            } else {
                step.m_iOp = OP_INIT_RAW;
                step.m_blA = Chance(25);
                step.m_qvecKeyed = Keyed(2, false);
            }
            if (m_iTreeType == 1 && step.m_iOp == OP_INIT_NODES && Chance(50))
                step.m_iOp = OP_INIT_SIBLING;
            return step;
        }
        if (iRoll < 70) {
            step.m_iOp = OP_CLEAR;
            return step;
        }
        if (iRoll < 80) {
            step.m_iOp = OP_UPDATE_NODES_MAP;
            step.m_qvecKeyed = Keyed(2, false);
            return step;
        }
        if (iRoll < 180) {
            step.m_iOp = OP_ADD_NODE;
            step.m_qvecNodes << Node();
            return step;
        }
        if (iRoll < 230) {
            step.m_iOp = OP_ADD_ID;
            step.m_qstrA = Chance(50) ? One<QString>({"t_r0", "t_r1", "t_r2", "t_r3", "t_r4"}) : AnyId();
            return step;
        }
        if (iRoll < 250) {
            step.m_iOp = OP_ADD_IDS;
            for (int i = Pick(4); i > 0; --i)
                step.m_qvecIds << (Chance(50) ? One<QString>({"t_r0", "t_r1", "t_r2", "t_r3"}) : AnyId());
            step.m_blA = Chance(50);
            return step;
        }
        if (iRoll < 280) {
            step.m_iOp = OP_ADD_WEAKS;
            for (int i = Pick(3); i > 0; --i)
                step.m_qvecRes << LocalRes();
            step.m_blA = Chance(50);
            return step;
        }
        if (iRoll < 310) {
            step.m_iOp = OP_ADD_VARIANT;
            step.m_blA = Chance(10);
            for (int i = Pick(4); i > 0; --i)
                step.m_qvecNodes << Node();
            return step;
        }
        if (iRoll < 340) {
            step.m_iOp = OP_MODIFY_ID;
            step.m_qstrA = Chance(50) ? One<QString>({"t_r0", "t_r1", "r2", "r3", "c0", "c1"}) : AnyId();
            return step;
        }
        if (iRoll < 380) {
            step.m_iOp = OP_MODIFY_LIST;
            for (int i = Pick(4); i > 0; --i)
                step.m_qvecNodes << Node();
            return step;
        }
        if (iRoll < 400) {
            step.m_iOp = OP_MODIFY_RAWS;
            for (int i = Pick(3); i > 0; --i) {
                STRCT_MRes res = LocalRes();
                res.m_blNull = Chance(15);
                step.m_qvecRes << res;
            }
            step.m_blA = Chance(50);
            return step;
        }
        if (iRoll < 405) {
            step.m_iOp = Chance(50) ? OP_MODIFY_IDS_EMPTY : OP_MOVE_NODES_IDS;
            step.m_qvecIds << TreeId() << TreeId();
            step.m_iA = Pick(2);
            return step;
        }
        if (iRoll < 435) {
            step.m_iOp = OP_CAPTION;
            step.m_qstrA = Chance(80) ? DevId() : AnyId();
            step.m_qstrB = One<QString>({"X", "Y", ""});
            return step;
        }
        if (iRoll < 500) {
            step.m_iOp = OP_DELETE;
            step.m_qstrA = Chance(70) ? TreeId() : AnyId();
            return step;
        }
        if (iRoll < 520) {
            step.m_iOp = OP_DELETE_IDS;
            for (int i = Pick(4); i > 0; --i)
                step.m_qvecIds << (Chance(70) ? TreeId() : AnyId());
            step.m_blA = Chance(50);
            return step;
        }
        if (iRoll < 570) {
            step.m_iOp = OP_MOVE_ROW;
            step.m_iA = Pick(2);
            step.m_qstrA = Chance(85) ? TreeId() : AnyId();
            step.m_qstrB = Chance(85) ? TreeId() : AnyId();
            return step;
        }
        if (iRoll < 590) {
            step.m_iOp = OP_MOVE_NODES;
            const int iCount = Chance(80) ? 2 : One<int>({0, 1, 3});
            for (int i = 0; i < iCount; ++i) {
                STRCT_MRes res = LocalRes();
                res.m_blNull = Chance(5);
                step.m_qvecRes << res;
            }
            step.m_iA = One<int>({-1, 0, 0, 1, 1, 2});
            return step;
        }
        if (iRoll < 680) {
            step.m_iOp = OP_STATUS;
            step.m_iA = Chance(5) ? 1 : (Chance(5) ? 2 : 0);
            for (int i = Pick(4); i > 0; --i)
                step.m_qvecBatch << qMakePair(Chance(80) ? DevId() : AnyId(),
                                              qMakePair(Chance(40), One<int>({0, 1, 1, 0, 2, 5})));
            return step;
        }
        if (iRoll < 720) {
            step.m_iOp = OP_HOST;
            step.m_qstrA = Chance(60) ? TreeId() : AnyId();
            step.m_iA = One<int>({3, 4, 41, 5});
            return step;
        }
        if (iRoll < 735) {
            step.m_iOp = OP_ONLINE_ICON;
            step.m_qstrA = AnyId();
            step.m_blA = Chance(50);
            return step;
        }
        if (iRoll < 740) {
            step.m_iOp = OP_CHANNEL_STATUS_UPDATE;
            return step;
        }
        if (iRoll < 850) {
            step.m_iOp = OP_SET_CHECK;
            step.m_qstrA = Chance(80) ? TreeId() : AnyId();
            step.m_iA = One<int>({0, 2, 2, 1});
            step.m_blA = Chance(65);
            return step;
        }
        if (iRoll < 872) {
            step.m_iOp = OP_TIMEOUT;
            return step;
        }
        if (iRoll < 880) {
            // Finding and taking rows: the search by words with paths, the selected nodes, the
            // drag payload.
            const int iKind = Pick(4);
            step.m_iOp = iKind == 0   ? OP_WORD_SEARCH
                         : iKind == 1 ? OP_SELECTED_NODES
                         : iKind == 2 ? OP_DRAG_DATA
                                      : OP_ACCESSIBLE;
            step.m_iA = One<int>({0, 1, 1, 2});
            step.m_blA = Chance(60);
            step.m_qstrA = One<QString>({"a", "b", "c", "r", "s", "x", "a x", "x a", "c c", "all", "z", " ",
                                         "c n", "t r", "A", "ct_r0"});
            for (int i = Pick(5); i > 0; --i)
                step.m_qvecIds << (Chance(80) ? TreeId() : AnyId());
            return step;
        }
        if (iRoll < 890) {
            // What operators switch: the status filter, the painted counts, the view state.
            const int iKind = Pick(3);
            step.m_iOp = iKind == 0 ? OP_STATUS_FILTER : iKind == 1 ? OP_CHANNEL_COUNTS : OP_VIEW_STATE;
            step.m_iA = iKind == 0 ? One<int>({-1, 0, 1, 2, 3, 1, 2}) : Pick(3);
            step.m_blA = Chance(60);
            return step;
        }
        if (iRoll < 920) {
            step.m_iOp = OP_DBLCLICK;
            step.m_qstrA = Chance(80) ? TreeId() : AnyId();
            return step;
        }
        // The device layer changes under the tree.
        const int iDev = Pick(5);
        const QString qstrRes = One<QString>({"r0", "r1", "r2", "r3", "r4"});
        step.m_qstrA = qstrRes;
        if (iDev == 0) {
            step.m_iOp = OP_DEV_ADD;
            step.m_qvecRes << Res(qstrRes);
        } else if (iDev == 1) {
            step.m_iOp = OP_DEV_REMOVE;
        } else if (iDev == 2) {
            step.m_iOp = OP_DEV_NAME;
            step.m_qstrB = One<QString>({"N1", "N2"});
        } else if (iDev == 3) {
            step.m_iOp = OP_DEV_BIND;
            step.m_iA = Bind();
        } else {
            step.m_iOp = OP_DEV_STATUS;
            step.m_iA = Pick(3);
        }
        return step;
    }

    // The device layer at the start of a run: a root most of the time, a few resources, and a custom
    // tree with its three roots and a few nodes.
    CLS_DevMirror Installation()
    {
        CLS_DevMirror mirror;
        if (Chance(85)) {
            STRCT_MRes root;
            root.m_iType = 2;
            root.m_qstrId = CONST_RES_ROOT;
            root.m_qstrTreeId = CONST_RES_ROOT;
            root.m_qstrName = "All";
            root.m_iChannelNo = 0;
            mirror.m_qmapItems.insert(root.m_qstrId, root);
        }
        for (const QString& qstrId : {"r0", "r1", "r2", "r3", "r4"}) {
            if (Chance(70))
                mirror.m_qmapItems.insert(qstrId, Res(qstrId));
        }
        for (const QString& qstrRoot : {CONST_CUS_ROOT, CONST_FAV_ROOT, CONST_PFL_ROOT}) {
            if (Chance(80))
                mirror.m_qmapCust.insert(qstrRoot, STRCT_MCust{qstrRoot, qstrRoot, "", "Top", 2, 0, 0, -1});
        }
        for (const QString& qstrId : {"c0", "c1", "c2", "c3"}) {
            if (!Chance(75))
                continue;
            STRCT_MCust cust;
            cust.m_qstrTreeId = qstrId;
            cust.m_qstrDevId = One<QString>({"r0", "r1", "r2", "r3", "r4", "gone", qstrId});
            cust.m_qstrParentId =
                One<QString>({CONST_CUS_ROOT, CONST_FAV_ROOT, CONST_PFL_ROOT, "c0", "c1", ""});
            if (cust.m_qstrParentId == qstrId)
                cust.m_qstrParentId = CONST_CUS_ROOT;
            cust.m_qstrName = "C" + qstrId;
            cust.m_iType = One<int>({2, 4, 4, 3});
            cust.m_iSortNo = Pick(3);
            cust.m_iStatus = Pick(2);
            cust.m_iChannelNo = Pick(3);
            mirror.m_qmapCust.insert(qstrId, cust);
        }
        return mirror;
    }

private:
    std::mt19937 m_rng;
    QString m_qstrTreeRoot = CONST_CUS_ROOT;
    int m_iTreeType = 0;
};

// ---- the model of the base tree's rows -----------------------------------------------------------

struct STRCT_MRow
{
    CLS_TreeItem m_clsRec;
    QString m_qstrShown; // icon path shown
    int m_iStored = -1;  // own check state; -1 none
    int m_iFlags = 0;
    STRCT_MRow* m_pParent = nullptr;
    QVector<STRCT_MRow*> m_qvecKids;
};

class CLS_ModelBase
{
public:
    CLS_ModelBase(bool _blCheck, bool _blDrag) : m_blCheck(_blCheck)
    {
        m_iDefaultFlags = 0x61 | (_blCheck ? 0x10 : 0) | (_blDrag ? 0x04 : 0);
    }

    std::function<void(STRCT_MRow*, bool)> m_funRowChecked; // the panel's check signal
    std::function<bool(const STRCT_MRow*)> m_funHidden;     // rows the status filter hides

    STRCT_MRow* Row(const QString& _qstrId) const { return m_qmapIndex.value(_qstrId, nullptr); }

    int Data(const STRCT_MRow* _pRow) const
    {
        if (!_pRow->m_qvecKids.isEmpty() && (_pRow->m_iFlags & 0x20)) {
            bool blChecked = false, blUnchecked = false;
            for (const STRCT_MRow* pKid : _pRow->m_qvecKids) {
                const int iState = Data(pKid);
                if (iState < 0)
                    return -1;
                if (iState == 1)
                    return 1;
                (iState == 2 ? blChecked : blUnchecked) = true;
                if (blChecked && blUnchecked)
                    return 1;
            }
            return blUnchecked ? 0 : (blChecked ? 2 : -1);
        }
        return _pRow->m_iStored;
    }

    STRCT_MRow* MakeRow(const CLS_TreeItem& _clsItem)
    {
        m_vecPool.emplace_back(new STRCT_MRow);
        STRCT_MRow* pRow = m_vecPool.back().get();
        pRow->m_clsRec = _clsItem;
        pRow->m_qstrShown = _clsItem.m_qstrIcon;
        pRow->m_iFlags = _clsItem.m_iItemFlags != 0 ? _clsItem.m_iItemFlags : m_iDefaultFlags;
        pRow->m_iStored = m_blCheck ? 0 : -1;
        return pRow;
    }

    void Clear()
    {
        m_qvecTop.clear();
        m_qmapIndex.clear();
    }

    int Init(const QString& _qstrRootId, const QMap<QString, CLS_TreeItem>& _qmapItems)
    {
        if (_qstrRootId.isEmpty() || _qmapItems.isEmpty() || !_qmapItems.contains(_qstrRootId))
            return -1;
        Clear();
        QMap<QString, QVector<CLS_TreeItem>> qmapKids;
        for (const CLS_TreeItem& clsItem : _qmapItems) {
            if (clsItem.m_qstrParentId.isEmpty())
                continue;
            qmapKids[clsItem.m_qstrParentId] << clsItem; // first order does not matter: sorted below
        }
        return CreateTree(nullptr, _qmapItems.value(_qstrRootId), qmapKids);
    }

    int CreateTree(STRCT_MRow* _pParent, const CLS_TreeItem& _clsItem,
                   const QMap<QString, QVector<CLS_TreeItem>>& _qmapKids)
    {
        if (_clsItem.m_qstrId.isEmpty())
            return -1;
        STRCT_MRow* pRow = MakeRow(_clsItem);
        pRow->m_pParent = _pParent;
        (_pParent == nullptr ? m_qvecTop : _pParent->m_qvecKids) << pRow;
        m_qmapIndex.insert(_clsItem.m_qstrId, pRow);
        QVector<CLS_TreeItem> qvecKids = _qmapKids.value(_clsItem.m_qstrId);
        std::stable_sort(
            qvecKids.begin(), qvecKids.end(),
            [](const CLS_TreeItem& _a, const CLS_TreeItem& _b) { return _a.m_iSortNo < _b.m_iSortNo; });
        for (const CLS_TreeItem& clsKid : qvecKids)
            CreateTree(pRow, clsKid, _qmapKids);
        return 0;
    }

    int AddItem(const CLS_TreeItem& _clsItem)
    {
        if (Row(_clsItem.m_qstrId) != nullptr)
            return -1;
        STRCT_MRow* pParent = Row(_clsItem.m_qstrParentId);
        if (pParent == nullptr || _clsItem.m_qstrId.isEmpty())
            return -1;
        STRCT_MRow* pRow = MakeRow(_clsItem);
        m_qmapIndex.insert(_clsItem.m_qstrId, pRow);
        int iAt = pParent->m_qvecKids.size();
        for (int i = 0; i < pParent->m_qvecKids.size(); ++i) {
            if (pParent->m_qvecKids.at(i)->m_clsRec.m_iSortNo > _clsItem.m_iSortNo) {
                iAt = i;
                break;
            }
        }
        pRow->m_pParent = pParent;
        pParent->m_qvecKids.insert(iAt, pRow);
        return 0;
    }

    void Descendants(STRCT_MRow* _pRow, QVector<STRCT_MRow*>& _qvecOut, bool _blAll) const
    {
        for (STRCT_MRow* pKid : _pRow->m_qvecKids) {
            _qvecOut << pKid;
            if (_blAll)
                Descendants(pKid, _qvecOut, true);
        }
    }

    void DeleteItem(const QString& _qstrId)
    {
        STRCT_MRow* pRow = _qstrId.isEmpty() ? nullptr : Row(_qstrId);
        if (pRow == nullptr)
            return;
        m_qmapIndex.remove(_qstrId);
        QVector<STRCT_MRow*> qvecAll;
        Descendants(pRow, qvecAll, true);
        for (STRCT_MRow* pKid : qvecAll)
            m_qmapIndex.remove(pKid->m_clsRec.m_qstrId);
        (pRow->m_pParent == nullptr ? m_qvecTop : pRow->m_pParent->m_qvecKids).removeOne(pRow);
        pRow->m_pParent = nullptr;
    }

    void UpdateItem(const CLS_TreeItem& _clsItem)
    {
        STRCT_MRow* pRow = Row(_clsItem.m_qstrId);
        if (pRow == nullptr)
            return;
        pRow->m_iFlags = _clsItem.m_iItemFlags != 0 ? _clsItem.m_iItemFlags : m_iDefaultFlags;
        pRow->m_clsRec = _clsItem;
        pRow->m_qstrShown = _clsItem.m_qstrIcon;
    }

    void UpdateItemIcon(const QString& _qstrId, const QString& _qstrIcon)
    {
        if (STRCT_MRow* pRow = Row(_qstrId))
            pRow->m_qstrShown = _qstrIcon;
    }

    void SetData(STRCT_MRow* _pRow, int _iValue)
    {
        const int iPresent = Data(_pRow);
        if (iPresent < 0) {
            _pRow->m_iStored = _iValue;
            return;
        }
        const bool blEqual = iPresent == _iValue;
        if ((_pRow->m_iFlags & 0x20) && _iValue != 1) {
            const QVector<STRCT_MRow*> qvecKids = _pRow->m_qvecKids;
            for (STRCT_MRow* pKid : qvecKids) {
                if (Data(pKid) >= 0)
                    SetData(pKid, _iValue);
            }
        }
        _pRow->m_iStored = _iValue;
        if (blEqual)
            return;
        // The tree's slot: gate, then the record's id.
        if (m_blCheck && m_blSendChecked && m_funRowChecked)
            m_funRowChecked(_pRow, Data(_pRow) != 0);
    }

    void SetItemCheckStatus(const QString& _qstrId, int _iState, bool _blSend)
    {
        if (_qstrId.isEmpty() || !m_blCheck)
            return;
        STRCT_MRow* pRow = Row(_qstrId);
        if (pRow == nullptr)
            return;
        if (!_blSend)
            m_blSendChecked = false;
        SetData(pRow, _iState);
        m_blSendChecked = true;
    }

    int CheckState(const QString& _qstrId, int& _iState) const
    {
        STRCT_MRow* pRow = _qstrId.isEmpty() ? nullptr : Row(_qstrId);
        if (pRow == nullptr)
            return -1;
        _iState = std::max(0, Data(pRow));
        return 0;
    }

    int CheckedItems(QVector<CLS_TreeItem>& _qvecOut, bool _blLeaves) const
    {
        if (!m_blCheck)
            return -1;
        for (auto it = m_qmapIndex.cbegin(); it != m_qmapIndex.cend(); ++it) {
            if (Data(it.value()) != 2 || (m_funHidden && m_funHidden(it.value())))
                continue;
            if (!_blLeaves || it.value()->m_qvecKids.isEmpty())
                _qvecOut << it.value()->m_clsRec;
        }
        return 0;
    }

    int Move(bool _blUp, const QString& _qstrSrc, const QString& _qstrDst)
    {
        STRCT_MRow* pSrc = Row(_qstrSrc);
        if (pSrc == nullptr)
            return -1;
        STRCT_MRow* pDst = Row(_qstrDst);
        if (pDst == nullptr || pSrc->m_pParent == nullptr)
            return -1;
        QVector<STRCT_MRow*>& qvecKids = pSrc->m_pParent->m_qvecKids;
        const int iCount = qvecKids.size();
        const int iSrc = qvecKids.indexOf(pSrc);
        if (iCount == 0 || iSrc < 0)
            return -1;
        if (_blUp ? !(iSrc > 0 && iSrc < iCount) : !(iSrc >= 0 && iSrc < iCount - 1))
            return -1;
        const int iDst = qvecKids.indexOf(pDst);
        if (iDst < 0)
            return -1;
        std::swap(pSrc->m_clsRec.m_iSortNo, pDst->m_clsRec.m_iSortNo);
        qvecKids[iSrc] = pDst;
        qvecKids[iDst] = pSrc;
        return 0;
    }

    bool m_blCheck;
    int m_iDefaultFlags;
    bool m_blSendChecked = true;
    std::vector<std::unique_ptr<STRCT_MRow>> m_vecPool;
    QMap<QString, STRCT_MRow*> m_qmapIndex;
    QVector<STRCT_MRow*> m_qvecTop;
};

// ---- the model of the device tree ----------------------------------------------------------------

class CLS_ModelTree
{
public:
    CLS_ModelTree(int _iType, bool _blDrag, bool _blCheck, const QString& _qstrPicPath,
                  const CLS_DevMirror* _pDev)
        : m_iType(_iType), m_blDrag(_blDrag), m_blCheck(_blCheck), m_qstrPic(_qstrPicPath), m_pDev(_pDev),
          m_base(_blCheck, _blDrag)
    {
        m_qsetNodeTypes = _iType == 1 ? QSet<int>{3, 12, 4, 5, 6, 17, 13} : QSet<int>{2, 4};
        m_qsetBindTypes = {-1, 0, 1, 2, 3, 4};
        m_base.m_funRowChecked = [this](STRCT_MRow* _pRow, bool _blChecked) {
            SlotCheckedStatusChange(_pRow->m_clsRec.m_qstrId, _blChecked);
        };
        m_base.m_funHidden = [this](const STRCT_MRow* _pRow) { return !FilterShows(_pRow); };
    }

    // The status filter and the counts, the slow way: straight from the rows and the nodes.
    int m_iFilter = 0;
    int ChannelState(const STRCT_MRow* _pRow) const
    {
        const auto it = m_qmapNodes.constFind(_pRow->m_clsRec.m_qstrId);
        if (it == m_qmapNodes.cend() || it->m_iType != 4)
            return -1;
        return it->m_iStatus == 1 ? 1 : 0;
    }
    void Counts(const STRCT_MRow* _pRow, int& _iOnline, int& _iTotal) const
    {
        for (const STRCT_MRow* pKid : _pRow->m_qvecKids) {
            const int iState = ChannelState(pKid);
            _iOnline += iState == 1 ? 1 : 0;
            _iTotal += iState >= 0 ? 1 : 0;
            Counts(pKid, _iOnline, _iTotal);
        }
    }
    bool FilterShows(const STRCT_MRow* _pRow) const
    {
        if (m_iFilter == 0 || _pRow->m_pParent == nullptr)
            return true;
        const int iState = ChannelState(_pRow);
        if (iState >= 0)
            return iState == (m_iFilter == 1 ? 1 : 0);
        int iOnline = 0, iTotal = 0;
        Counts(_pRow, iOnline, iTotal);
        return m_iFilter == 1 ? iOnline > 0 : iTotal - iOnline > 0;
    }

    // -- presentation --

    int InitNodeRaw(const STRCT_MRes& _res, CLS_CustomTreeNode& _node, const QString& _qstrRootName)
    {
        if (_qstrRootName.isEmpty() && !m_qsetNodeTypes.contains(_res.m_iType))
            return -1;
        if (!m_qsetBindTypes.isEmpty() && !m_qsetBindTypes.contains(_res.m_iDevBindType))
            return -1;
        if (_res.m_iType == 17 || _res.m_iType == 13) {
            _node.m_iChannelNo = _res.m_iChannelNo;
            _node.m_iSortNo = _res.m_iOrderNo;
        } else if (_res.m_iType == 4) {
            _node.m_iChannelNo = _res.m_iChannelNo;
            _node.m_iSortNo = _res.m_iChannelNo;
        }
        FillCommon(_res, _node, _qstrRootName);
        if (_res.m_iOrderNo != 0)
            _node.m_iSortNo = _res.m_iOrderNo;
        return 0;
    }

    int InitNodeWeak(const STRCT_MRes& _res, CLS_CustomTreeNode& _node, const QString& _qstrRootName)
    {
        if (_qstrRootName.isEmpty() && !m_qsetNodeTypes.contains(_res.m_iType))
            return -1;
        if (!m_qsetBindTypes.isEmpty() && !m_qsetBindTypes.contains(_res.m_iDevBindType))
            return -1;
        if (_res.m_iType == 4 || _res.m_iType == 17)
            _node.m_iChannelNo = _res.m_iChannelNo;
        FillCommon(_res, _node, _qstrRootName);
        _node.m_iSortNo = _res.m_iOrderNo;
        return 0;
    }

    void FillCommon(const STRCT_MRes& _res, CLS_CustomTreeNode& _node, const QString& _qstrRootName)
    {
        _node.m_qstrDevId = _res.m_qstrId;
        _node.m_qstrName = _qstrRootName.isEmpty() ? _res.m_qstrName : _qstrRootName;
        _node.m_qstrTreeId = _qstrRootName.isEmpty() ? _res.m_qstrTreeId : _res.m_qstrId;
        _node.m_qstrDevParentId = _res.m_qstrParentId;
        _node.m_qstrTreeParentId = _res.m_qstrParentId;
        _node.m_iType = _res.m_iType;
        _node.m_iDevBindType = _res.m_iDevBindType;
        _node.m_iStatus = _res.m_iStatus;
        _node.m_qstrExtend.clear();
    }

    static int WeakSort(const STRCT_MRes& _res)
    {
        switch (_res.m_iType) {
        case 4:
            return _res.m_iChannelNo;
        case 5:
            return _res.m_iChannelNo + 1000;
        case 6:
            return _res.m_iChannelNo + 2000;
        case 17:
            return _res.m_iChannelNo + 3000;
        case 13:
            return _res.m_iChannelNo + 4000;
        default:
            return 99;
        }
    }

    void DragRule(const CLS_CustomTreeNode& _node, CLS_TreeItem& _clsItem) const
    {
        if (m_blDrag && m_iType == 2 &&
            (_node.m_iType != 4 || _node.m_iDevBindType == 2 || _node.m_iDevBindType == 3 ||
             _node.m_iDevBindType == 4))
            _clsItem.m_iItemFlags = m_blCheck ? 0x71 : 0x61;
    }

    // res: null for a ready node; bWeak chooses the row order rule.
    int CreateItem(CLS_TreeItem& _clsItem, CLS_CustomTreeNode& _node, const STRCT_MRes* _pRes, bool _blWeak,
                   const QString& _qstrName)
    {
        if (_pRes != nullptr) {
            const int iRet =
                _blWeak ? InitNodeWeak(*_pRes, _node, _qstrName) : InitNodeRaw(*_pRes, _node, _qstrName);
            if (iRet < 0)
                return iRet;
        }
        if (_qstrName.isEmpty() && !m_qsetNodeTypes.contains(_node.m_iType))
            return -1;
        _clsItem.m_qstrId = _node.m_qstrTreeId;
        _clsItem.m_qstrText = _node.m_qstrName;
        _clsItem.m_qstrTooltip = _node.m_qstrName;
        _clsItem.m_varData = QVariant(_node.m_qstrDevId);
        _clsItem.m_qstrParentId = _node.m_qstrTreeParentId;
        if (_clsItem.m_qstrParentId.isEmpty() && _qstrName.isEmpty())
            _clsItem.m_qstrParentId = m_qstrRootId;
        _clsItem.m_iSortNo = (_blWeak && _pRes != nullptr) ? WeakSort(*_pRes) : _node.m_iSortNo;
        DragRule(_node, _clsItem);
        SetItemIcon(_node, _clsItem, !_qstrName.isEmpty());
        if (_qstrName.isEmpty())
            CreateItemToolBtn(_node, _clsItem);
        return 0;
    }

    void SetItemIcon(const CLS_CustomTreeNode& _node, CLS_TreeItem& _clsItem, bool _blRoot)
    {
        QString qstrImage;
        if (_blRoot) {
            qstrImage = m_iType == 1 ? "root_icon.png" : "fenzu.png";
        } else {
            switch (_node.m_iType) {
            case 2:
                qstrImage = "fenzu.png";
                break;
            case 3:
                qstrImage = _node.m_iStatus == 0 ? "host_offline.png" : "host_online.png";
                break;
            case 4:
                qstrImage = _node.m_iStatus == 0
                                ? "channel_offline.png"
                                : (_node.m_iStatus == 2 ? "channel_no.png" : "channel_online.png");
                break;
            case 5:
                qstrImage = "alarm_in.png";
                break;
            case 6:
                qstrImage = "alarm_out.png";
                break;
            case 12:
                qstrImage = "decoder_online.png";
                break;
            case 13:
                qstrImage = "decoderout_online.png";
                break;
            case 17:
                qstrImage = "decoderin_online.png";
                break;
            default:
                break;
            }
            const bool blOn = _node.m_iStatus == 1;
            if (_node.m_iDevBindType == 3)
                qstrImage = blOn ? "car_item.png" : "carerr_item.png";
            else if (_node.m_iDevBindType == 2)
                qstrImage = blOn ? "pad_item.png" : "paderr_item.png";
            else if (_node.m_iDevBindType == 4)
                qstrImage = blOn ? "way_item.png" : "wayerr_item.png";
        }
        _clsItem.m_qstrIcon = qstrImage.isEmpty() ? QString() : m_qstrPic + qstrImage;
    }

    void CreateItemToolBtn(const CLS_CustomTreeNode& _node, CLS_TreeItem& _clsItem)
    {
        if (_node.m_qstrTreeId.isEmpty() || !m_qsetNodeTypes.contains(_node.m_iType) ||
            _node.m_iDevBindType == 2 || _node.m_iDevBindType == 3)
            return;
        QVector<CLS_ItemButton> qvecButtons;
        for (CLS_ItemButton clsButton : m_qmapItemBtns[_node.m_iType]) {
            clsButton.m_qstrIcon = m_qstrPic + clsButton.m_qstrId + ".png";
            clsButton.m_varData = QVariant(_node.m_qstrDevId);
            qvecButtons << clsButton;
        }
        _clsItem.m_qvecButtons = qvecButtons;
    }

    int InitItem(const CLS_CustomTreeNode& _node, CLS_TreeItem& _clsItem, bool _blRoot, bool _blUseStatus)
    {
        if (!m_qsetNodeTypes.contains(_node.m_iType))
            return -1;
        _clsItem.m_qstrId = _node.m_qstrTreeId;
        _clsItem.m_qstrText = _node.m_qstrName;
        _clsItem.m_qstrTooltip = _node.m_qstrName;
        if (!_blUseStatus) {
            SetItemIcon(_node, _clsItem, _blRoot);
        } else {
            QString qstrIcon;
            if (_node.m_iStatus == 0)
                UpdateNodeOnlineStatus(_node.m_qstrTreeId, false, qstrIcon);
            else if (_node.m_iStatus == 1)
                UpdateNodeOnlineStatus(_node.m_qstrTreeId, true, qstrIcon);
            _clsItem.m_qstrIcon = qstrIcon;
        }
        _clsItem.m_varData = QVariant(_node.m_qstrDevId);
        _clsItem.m_qstrParentId = _node.m_qstrTreeParentId;
        _clsItem.m_iSortNo = _node.m_iSortNo;
        DragRule(_node, _clsItem);
        CreateItemToolBtn(_node, _clsItem);
        return 0;
    }

    int UpdateNodeOnlineStatus(const QString& _qstrId, bool _blOnline, QString& _qstrIcon)
    {
        if (_qstrId.isEmpty() || !m_qmapNodes.contains(_qstrId))
            return -1;
        const CLS_CustomTreeNode& node = m_qmapNodes[_qstrId];
        bool blRoot = false;
        if (m_iType == 1 && _qstrId == CONST_RES_ROOT) {
            _qstrIcon = m_qstrPic + "root_icon.png";
            blRoot = true;
        } else if (m_iType != 1 && (_qstrId == CONST_CUS_ROOT || _qstrId == CONST_FAV_ROOT)) {
            _qstrIcon = m_qstrPic + "fenzu.png";
            blRoot = true;
        }
        if (!blRoot) {
            QString qstrImage;
            switch (node.m_iType) {
            case 3:
                qstrImage = _blOnline ? "host_online.png" : "host_offline.png";
                break;
            case 2:
                qstrImage = "fenzu.png";
                break;
            case 4:
                qstrImage = _blOnline ? "channel_online.png" : "channel_offline.png";
                break;
            case 5:
                qstrImage = "alarm_in.png";
                break;
            case 6:
                qstrImage = "alarm_out.png";
                break;
            case 12:
                qstrImage = "decoder_online.png";
                break;
            case 13:
                qstrImage = "decoderout_online.png";
                break;
            case 17:
                qstrImage = "decoderin_online.png";
                break;
            default:
                break;
            }
            if (node.m_iDevBindType == 3)
                qstrImage = _blOnline ? "car_item.png" : "carerr_item.png";
            else if (node.m_iDevBindType == 2)
                qstrImage = _blOnline ? "pad_item.png" : "paderr_item.png";
            else if (node.m_iDevBindType == 4)
                qstrImage = _blOnline ? "way_item.png" : "wayerr_item.png";
            if (!qstrImage.isEmpty())
                _qstrIcon = m_qstrPic + qstrImage;
        }
        m_base.UpdateItemIcon(_qstrId, _qstrIcon);
        return 0;
    }

    // -- builds --

    void Clear()
    {
        m_base.Clear();
        ClearData();
    }

    void ClearData()
    {
        m_qmapNodes.clear();
        m_qmapIdMap.clear();
        m_qmapItemBtns.clear();
        m_qstrRootId.clear();
    }

    void Insert(const CLS_CustomTreeNode& _node)
    {
        m_qmapNodes.insert(_node.m_qstrTreeId, _node);
        m_qmapIdMap.insert(_node.m_qstrDevId, _node.m_qstrTreeId);
    }

    void Sets(const STRCT_Step& _step)
    {
        if (!NodeSet(_step.m_iNodeSet).isEmpty())
            m_qsetNodeTypes = NodeSet(_step.m_iNodeSet);
        if (!BindSet(_step.m_iBindSet).isEmpty())
            m_qsetBindTypes = BindSet(_step.m_iBindSet);
        m_qmapItemBtns = BtnSet(_step.m_iBtnSet);
    }

    void EmitInit(const QMap<QString, CLS_TreeItem>& _qmapItems)
    {
        m_qlstEvents << QString("init:%1:%2").arg(m_qstrRootId).arg(_qmapItems.size());
        m_base.Init(m_qstrRootId, _qmapItems);
        m_blThread = true;
    }

    int InitNodes(QMap<QString, CLS_CustomTreeNode>& _qmapNodes, const STRCT_Step& _step)
    {
        const QString& qstrRootName = _step.m_qstrA;
        m_qlstEvents << "clear";
        Clear();
        auto rootNode = [&](const QString& _qstrKey) {
            CLS_CustomTreeNode node;
            node.m_qstrTreeId = _qstrKey;
            node.m_qstrDevId = _qstrKey;
            node.m_qstrName = qstrRootName;
            node.m_iType = 2;
            return node;
        };
        if (!_qmapNodes.contains(CONST_CUS_ROOT) && (m_iType == 0 || m_iType == 2))
            _qmapNodes.insert(CONST_CUS_ROOT, rootNode(CONST_CUS_ROOT));
        else if (!_qmapNodes.contains(CONST_FAV_ROOT) && m_iType == 3)
            _qmapNodes.insert(CONST_FAV_ROOT, rootNode(CONST_FAV_ROOT));
        else if (m_iType == 4)
            _qmapNodes.insert(CONST_PFL_ROOT, rootNode(CONST_PFL_ROOT));
        Sets(_step);

        const QString qstrRootKey =
            m_iType == 4 ? CONST_PFL_ROOT
                         : (m_iType == 3 ? CONST_FAV_ROOT : (m_iType == 1 ? CONST_RES_ROOT : CONST_CUS_ROOT));
        QMap<QString, CLS_TreeItem> qmapItems;
        CLS_CustomTreeNode root = _qmapNodes.value(qstrRootKey);
        CLS_TreeItem clsRoot;
        const int iRet = CreateItem(clsRoot, root, nullptr, false, qstrRootName);
        if (iRet < 0)
            return iRet;
        Insert(root);
        m_qstrRootId = root.m_qstrTreeId;
        qmapItems.insert(root.m_qstrTreeId, clsRoot);
        for (auto it = _qmapNodes.cbegin(); it != _qmapNodes.cend(); ++it) {
            if (it.key().isEmpty() || CONST_ROOTS.contains(it.key()))
                continue;
            CLS_CustomTreeNode node = it.value();
            CLS_TreeItem clsItem;
            if (CreateItem(clsItem, node, nullptr, false, QString()) < 0)
                continue;
            Insert(node);
            qmapItems.insert(node.m_qstrTreeId, clsItem);
        }
        EmitInit(qmapItems);
        return 0;
    }

    // Raw and weak builds from resources keyed by tree id; a missing entry of the weak map is an
    // expired pointer.
    int InitRes(const QMap<QString, STRCT_MRes>& _qmapData, const QSet<QString>& _qsetExpired, bool _blWeak,
                const STRCT_Step& _step, const QMap<QString, CLS_CustomTreeNode>& _qmapExtra)
    {
        const QString& qstrRootName = _step.m_qstrA;
        if (!_blWeak && _qmapData.isEmpty())
            return -1;
        m_qlstEvents << "clear";
        Clear();
        Sets(_step);
        const QString qstrRootKey =
            m_iType == 3 ? CONST_FAV_ROOT : (m_iType == 1 ? CONST_RES_ROOT : CONST_CUS_ROOT);
        STRCT_MRes resRoot;
        if (_qmapData.contains(qstrRootKey)) {
            resRoot = _qmapData.value(qstrRootKey);
        } else if (_blWeak) {
            resRoot.m_iType = 2;
            resRoot.m_qstrId = CONST_RES_ROOT;
            resRoot.m_iChannelNo = 0;
        } else {
            return -1;
        }
        QMap<QString, CLS_TreeItem> qmapItems;
        CLS_CustomTreeNode root;
        CLS_TreeItem clsRoot;
        if (CreateItem(clsRoot, root, &resRoot, _blWeak, qstrRootName) < 0)
            return -1;
        Insert(root);
        m_qstrRootId = root.m_qstrTreeId;
        qmapItems.insert(root.m_qstrTreeId, clsRoot);
        for (auto it = _qmapData.cbegin(); it != _qmapData.cend(); ++it) {
            if (it.key().isEmpty() || it.key() == CONST_RES_ROOT || it.key() == CONST_CUS_ROOT ||
                it.key() == CONST_FAV_ROOT)
                continue;
            if (_qsetExpired.contains(it.key()) || it->m_qstrId.isEmpty())
                continue;
            CLS_CustomTreeNode node;
            CLS_TreeItem clsItem;
            if (CreateItem(clsItem, node, &it.value(), _blWeak, QString()) < 0)
                continue;
            Insert(node);
            qmapItems.insert(node.m_qstrTreeId, clsItem);
        }
        EmitInit(qmapItems);
        for (auto it = _qmapExtra.cbegin(); it != _qmapExtra.cend(); ++it)
            m_qmapNodes.insert(it.key(), it.value());
        return 0;
    }

    // -- GetVideoData: resources by key, as the tree fetches them --
    QMap<QString, STRCT_MRes> VideoData() const
    {
        if (m_iType == 1)
            return m_pDev->AllByTreeId();
        QMap<QString, STRCT_MRes> qmap;
        const QMap<QString, CLS_CustomTreeNode> qmapNodes = m_pDev->AllNodes();
        for (const CLS_CustomTreeNode& node : qmapNodes) {
            if (node.m_iType == 2)
                continue;
            auto it = m_pDev->m_qmapItems.constFind(node.m_qstrDevId);
            if (it != m_pDev->m_qmapItems.cend())
                qmap.insert(node.m_qstrTreeId, it.value());
        }
        return qmap;
    }

    // -- changes --

    int AddWeak(const STRCT_MRes& _res)
    {
        if (_res.m_qstrTreeId.isEmpty())
            return -1;
        if (m_iType != 3 && m_qmapNodes.contains(_res.m_qstrTreeId))
            return -1;
        CLS_CustomTreeNode node;
        CLS_TreeItem clsItem;
        if (CreateItem(clsItem, node, &_res, true, QString()) < 0)
            return -1;
        if (m_iType != 3)
            m_qmapNodes.insert(node.m_qstrTreeId, node);
        m_qmapIdMap.insert(node.m_qstrDevId, node.m_qstrTreeId);
        m_base.AddItem(clsItem);
        return 0;
    }

    int AddNode(CLS_CustomTreeNode _node)
    {
        if (_node.m_qstrTreeId.isEmpty() || m_qmapNodes.contains(_node.m_qstrTreeId))
            return -1;
        CLS_TreeItem clsItem;
        const int iRet = CreateItem(clsItem, _node, nullptr, false, QString());
        if (iRet < 0)
            return iRet;
        Insert(_node);
        m_base.AddItem(clsItem);
        return 0;
    }

    int AddWeaks(const QVector<STRCT_MRes>& _qvecRes, bool _blSend)
    {
        int iCount = 0;
        for (const STRCT_MRes& res : _qvecRes)
            iCount += AddWeak(res) >= 0 ? 1 : 0;
        if (m_iType != 1 || _blSend)
            m_qlstEvents << "statusupdate";
        return iCount;
    }

    int AddVariant(const QVector<CLS_CustomTreeNode>& _qvecNodes)
    {
        int iCount = 0;
        for (CLS_CustomTreeNode node : _qvecNodes) {
            CLS_TreeItem clsItem;
            if (CreateItem(clsItem, node, nullptr, false, QString()) < 0)
                continue;
            Insert(node);
            if (m_base.AddItem(clsItem) >= 0)
                ++iCount;
        }
        return iCount;
    }

    int ModifyRaw(const STRCT_MRes& _res)
    {
        if (!m_qmapNodes.contains(_res.m_qstrTreeId))
            return -1;
        CLS_CustomTreeNode& node = m_qmapNodes[_res.m_qstrTreeId];
        InitNodeRaw(_res, node, QString());
        CLS_TreeItem clsItem;
        if (InitItem(m_qmapNodes[_res.m_qstrTreeId], clsItem, false, true) < 0)
            return -1;
        m_base.UpdateItem(clsItem);
        return 0;
    }

    int ModifyList(const QVector<CLS_CustomTreeNode>& _qvecNodes)
    {
        for (const CLS_CustomTreeNode& node : _qvecNodes) {
            if (!m_qmapNodes.contains(node.m_qstrTreeId))
                continue;
            m_qmapNodes[node.m_qstrTreeId] = node;
            CLS_TreeItem clsItem;
            if (InitItem(node, clsItem, false, true) >= 0) {
                m_base.UpdateItem(clsItem);
                if (!s_blMutate)
                    return 0;
            }
        }
        return 0;
    }

    int Caption(const QString& _qstrDevId, const QString& _qstrCaption)
    {
        if (_qstrDevId.isEmpty() || !m_qmapIdMap.contains(_qstrDevId))
            return -1;
        const QString qstrTreeId = m_qmapIdMap.value(_qstrDevId);
        if (qstrTreeId.isEmpty() || !m_qmapNodes.contains(qstrTreeId))
            return -1;
        m_qmapNodes[qstrTreeId].m_qstrName = _qstrCaption;
        CLS_TreeItem clsItem;
        if (InitItem(m_qmapNodes[qstrTreeId], clsItem, false, true) < 0)
            return -1;
        m_base.UpdateItem(clsItem);
        return 0;
    }

    int DeleteItem(const QString& _qstrId)
    {
        if (_qstrId.isEmpty() || !m_qmapNodes.contains(_qstrId))
            return -1;
        const CLS_CustomTreeNode node = m_qmapNodes.value(_qstrId);
        m_qmapNodes.remove(_qstrId);
        m_qmapIdMap.remove(node.m_qstrDevId);
        m_base.DeleteItem(_qstrId);
        return 0;
    }

    int DeleteItems(const QVector<QString>& _qvecIds, bool _blSend)
    {
        int iCount = 0;
        for (const QString& qstrId : _qvecIds)
            iCount += DeleteItem(qstrId) >= 0 ? 1 : 0;
        if (m_iType == 1 && !_blSend)
            return iCount;
        QStringList qlst;
        for (const QString& qstrId : _qvecIds) {
            if (!qstrId.isEmpty() && m_qmapNodes.contains(qstrId))
                qlst << m_qmapNodes.value(qstrId).m_qstrDevId;
        }
        m_qlstEvents << "del:[" + qlst.join(",") + "]";
        return iCount;
    }

    int Move(bool _blUp, const QString& _qstrSrc, const QString& _qstrDst)
    {
        const int iRet = m_base.Move(_blUp, _qstrSrc, _qstrDst);
        if (iRet == 0)
            m_qstrCurrent = _qstrSrc;
        return iRet;
    }

    int MoveNodes(const QVector<STRCT_MRes>& _qvecRes, int _iMoveType)
    {
        if (_iMoveType < 0 || _iMoveType > 1 || m_iType == 1 || _qvecRes.size() != 2)
            return -1;
        if (_qvecRes[0].m_blNull || _qvecRes[1].m_blNull)
            return -1;
        const QString qstrSrc = _qvecRes[0].m_qstrTreeId, qstrDst = _qvecRes[1].m_qstrTreeId;
        if (qstrSrc.isEmpty() || qstrDst.isEmpty() || !m_qmapNodes.contains(qstrSrc) ||
            !m_qmapNodes.contains(qstrDst))
            return -1;
        std::swap(m_qmapNodes[qstrSrc].m_iSortNo, m_qmapNodes[qstrDst].m_iSortNo);
        return Move(_iMoveType == 0, qstrSrc, qstrDst);
    }

    // -- status --

    int StatusBatch(const QVector<QPair<QString, QPair<bool, int>>>& _qvecBatch)
    {
        QMap<QString, QPair<bool, int>> qmap;
        for (const auto& entry : _qvecBatch)
            qmap.insert(entry.first, entry.second);
        for (auto it = qmap.cbegin(); it != qmap.cend(); ++it) {
            if (it.key().isEmpty() || !m_qmapIdMap.contains(it.key()))
                continue;
            const QString qstrTreeId = m_qmapIdMap.value(it.key());
            if (qstrTreeId.isEmpty() || !m_qmapNodes.contains(qstrTreeId))
                continue;
            CLS_CustomTreeNode& node = m_qmapNodes[qstrTreeId];
            if (it->first && node.m_iDevBindType < 1)
                node.m_iDevBindType = 9;
            else if (!it->first && node.m_iDevBindType == 9)
                node.m_iDevBindType = -1;
            QString qstrScratch;
            if (it->second == 0)
                UpdateNodeOnlineStatus(qstrTreeId, false, qstrScratch);
            else if (it->second == 1)
                UpdateNodeOnlineStatus(qstrTreeId, true, qstrScratch);
            m_qmapNodes[qstrTreeId].m_iStatus = it->second;
        }
        m_qlstEvents << QString("chstatus:%1").arg(qmap.size());
        return 0;
    }

    int HostStatus(const QString& _qstrId, int _iCmd)
    {
        if (_qstrId.isEmpty() || !m_qmapNodes.contains(_qstrId))
            return -1;
        const CLS_CustomTreeNode node = m_qmapNodes.value(_qstrId);
        if (m_iType != 1 || node.m_iType != 3)
            return 0;
        QString qstrIcon;
        if (_iCmd == 3 && node.m_iStatus != 1) {
            UpdateNodeOnlineStatus(_qstrId, true, qstrIcon);
            m_qmapNodes[_qstrId].m_iStatus = 1;
        } else if ((_iCmd == 4 || _iCmd == 41) && node.m_iStatus == 1) {
            UpdateNodeOnlineStatus(_qstrId, false, qstrIcon);
            m_qmapNodes[_qstrId].m_iStatus = 0;
        }
        return 0;
    }

    // -- check state and events --

    void SetItemCheckStatus(const QString& _qstrId, int _iState, bool _blSend)
    {
        const QString qstrId = _qstrId.isEmpty() ? m_qstrRootId : _qstrId;
        m_qmapSendMap.insert(qstrId, _blSend);
        m_base.SetItemCheckStatus(qstrId, _iState, _blSend);
    }

    int GetChilds(const QString& _qstrId, QVector<CLS_CustomTreeNode>& _qvecNodes, bool _blAll) const
    {
        STRCT_MRow* pRow = _qstrId.isEmpty() ? nullptr : m_base.Row(_qstrId);
        if (pRow == nullptr)
            return -1;
        QVector<STRCT_MRow*> qvecRows;
        m_base.Descendants(pRow, qvecRows, _blAll);
        for (STRCT_MRow* pKid : qvecRows) {
            const QString& qstrKid = pKid->m_clsRec.m_qstrId;
            if (!qstrKid.isEmpty() && m_qmapNodes.contains(qstrKid))
                _qvecNodes << m_qmapNodes.value(qstrKid);
        }
        return 0;
    }

    void SlotCheckedStatusChange(const QString& _qstrId, bool _blChecked)
    {
        if (_qstrId.isEmpty() || !m_qmapNodes.contains(_qstrId))
            return;
        const CLS_CustomTreeNode node = m_qmapNodes.value(_qstrId);
        if (m_iType == 2 && node.m_iType == 2) {
            QVector<CLS_CustomTreeNode> qvecKids;
            if (GetChilds(_qstrId, qvecKids, false) < 0 || qvecKids.isEmpty()) {
                SetItemCheckStatus(_qstrId, 0, false);
                return;
            }
        }
        if (node.m_iType == 2)
            return;
        m_qlstEvents << QString("chk:%1:%2").arg(NodeLine(node)).arg(_blChecked);
        if (!m_blTimer) {
            m_blTimer = true;
            m_qvecQueue.clear();
            m_qmapSendMap.clear();
        }
        if (!(m_qmapSendMap.contains(_qstrId) && !m_qmapSendMap.value(_qstrId)))
            m_qvecQueue << qMakePair(node, _blChecked);
    }

    void Timeout()
    {
        m_blTimer = false;
        if (m_qvecQueue.isEmpty())
            return;
        m_qmapSendMap.clear();
        QStringList qlst;
        for (const auto& pair : m_qvecQueue)
            qlst << NodeLine(pair.first) + "=" + QString::number(pair.second);
        m_qlstEvents << "queue:[" + qlst.join(" | ") + "]:null";
        m_qvecQueue.clear();
    }

    void DblClick(const QString& _qstrId)
    {
        if (_qstrId.isEmpty() || !m_qmapNodes.contains(_qstrId))
            return;
        const CLS_CustomTreeNode node = m_qmapNodes.value(_qstrId);
        if (node.m_iType == 2)
            return;
        m_qlstEvents << "dbl:" + NodeLine(node);
        int iState = 0;
        const QString& qstrId = node.m_qstrTreeId;
        if (!qstrId.isEmpty() && m_qmapNodes.contains(qstrId))
            m_base.CheckState(qstrId, iState);
        if (!qstrId.isEmpty() && m_qmapNodes.contains(qstrId) && iState != 0)
            SetItemCheckStatus(qstrId, 0, true);
        else
            SetItemCheckStatus(qstrId, 2, true);
    }

    // The entries of the search list for a line, as "id=text" (or "<no results>"): the rows below the
    // root row in the tree's order; mode 0 matches the line in the row text, mode 1 every word in the
    // node's name or extend; with paths, up to three parents' names follow an em dash.
    QStringList SearchEntries(const QString& _qstrLine, int _iMode, bool _blPaths) const
    {
        const STRCT_MRow* pRoot = m_base.Row(m_qstrRootId);
        const QStringList qlstWords = _iMode == 1
                                          ? _qstrLine.split(QRegularExpression("\\s+"), Qt::SkipEmptyParts)
                                          : QStringList{_qstrLine};
        if (pRoot == nullptr || qlstWords.isEmpty())
            return {"<no results>"};
        auto nameOf = [this](const STRCT_MRow* _pRow, bool _blNode) {
            const auto it = m_qmapNodes.constFind(_pRow->m_clsRec.m_qstrId);
            return _blNode && it != m_qmapNodes.cend() ? it->m_qstrName : _pRow->m_clsRec.m_qstrText;
        };
        QStringList qlstEntries;
        std::function<void(const STRCT_MRow*)> walk = [&](const STRCT_MRow* _pRow) {
            for (const STRCT_MRow* pKid : _pRow->m_qvecKids) {
                const auto itNode = m_qmapNodes.constFind(pKid->m_clsRec.m_qstrId);
                const QString qstrName = nameOf(pKid, _iMode == 1);
                // In mode 1 a row without a node is never a hit.
                bool blMatch = _iMode == 0 || itNode != m_qmapNodes.cend();
                for (const QString& qstrWord : qlstWords) {
                    blMatch = blMatch && (qstrName.contains(qstrWord, Qt::CaseInsensitive) ||
                                          (_iMode == 1 && itNode != m_qmapNodes.cend() &&
                                           itNode->m_qstrExtend.contains(qstrWord, Qt::CaseInsensitive)));
                }
                if (blMatch) {
                    QStringList qlstParents;
                    for (const STRCT_MRow* pUp = pKid->m_pParent;
                         pUp != nullptr && pUp != pRoot && qlstParents.size() < 3; pUp = pUp->m_pParent)
                        qlstParents << nameOf(pUp, true);
                    QString qstrText = qstrName;
                    if (_blPaths && !qlstParents.isEmpty())
                        qstrText += QString::fromUtf8(" \u2014 ") + qlstParents.join(" / ");
                    qlstEntries << pKid->m_clsRec.m_qstrId + "=" + qstrText;
                }
                walk(pKid);
            }
        };
        walk(pRoot);
        return qlstEntries.isEmpty() ? QStringList{"<no results>"} : qlstEntries;
    }

    // The nodes of the selected rows in the tree's order; rows without a node left out.
    QVector<CLS_CustomTreeNode> SelectedNodes(const QSet<QString>& _qsetSelected) const
    {
        QVector<CLS_CustomTreeNode> qvecNodes;
        std::function<void(const QVector<STRCT_MRow*>&)> walk = [&](const QVector<STRCT_MRow*>& _qvecRows) {
            for (const STRCT_MRow* pRow : _qvecRows) {
                // A row that is not both selectable and enabled takes no selection.
                if (_qsetSelected.contains(pRow->m_clsRec.m_qstrId) && (pRow->m_iFlags & 0x21) == 0x21 &&
                    m_qmapNodes.contains(pRow->m_clsRec.m_qstrId))
                    qvecNodes << m_qmapNodes.value(pRow->m_clsRec.m_qstrId);
                walk(pRow->m_qvecKids);
            }
        };
        walk(m_base.m_qvecTop);
        return qvecNodes;
    }

    int m_iType;
    bool m_blDrag, m_blCheck;
    QString m_qstrPic;
    const CLS_DevMirror* m_pDev;
    CLS_ModelBase m_base;
    QMap<QString, CLS_CustomTreeNode> m_qmapNodes;
    QMap<QString, QString> m_qmapIdMap;
    QMap<int, QVector<CLS_ItemButton>> m_qmapItemBtns;
    QString m_qstrRootId;
    QSet<int> m_qsetNodeTypes, m_qsetBindTypes;
    bool m_blTimer = false;
    QVector<QPair<CLS_CustomTreeNode, bool>> m_qvecQueue;
    QMap<QString, bool> m_qmapSendMap;
    QStringList m_qlstEvents;
    QString m_qstrCurrent; // the row a move made current; empty when unknown
    bool m_blThread = false;
};

// ---- the run: the real tree and the model side by side -------------------------------------------

// The test tree with the protected add of a ready node opened as well.
class CLS_ModelTestTree : public CLS_TestDeviceTree
{
public:
    CLS_ModelTestTree(int _iType, bool _blDrag, bool _blCheck)
        : CLS_TestDeviceTree(nullptr, n_DevTreeType(_iType), _blDrag, _blCheck)
    {}
    using CLS_WgtDeviceTree::AddItem;
};

QString KeyedText(const QMap<QString, CLS_CustomTreeNode>& _qmap)
{
    QStringList qlst;
    for (auto it = _qmap.cbegin(); it != _qmap.cend(); ++it)
        qlst << it.key() + "=" + NodeLine(it.value());
    return qlst.join("\n  ");
}

// A short identity of a node for the queries; the records themselves are compared in the node map.
QString NodeKey(const CLS_CustomTreeNode& _node)
{
    return _node.m_qstrTreeId + '/' + _node.m_qstrDevId + '/' + _node.m_qstrName + '/' +
           QString::number(_node.m_iSortNo) + '/' + QString::number(_node.m_iStatus);
}

QString NodeKeys(const QVector<CLS_CustomTreeNode>& _qvec)
{
    QString qstr = "[";
    for (const CLS_CustomTreeNode& node : _qvec)
        qstr += NodeKey(node) + ' ';
    return qstr + ']';
}

QString NodesText(const QVector<CLS_CustomTreeNode>& _qvec)
{
    QStringList qlst;
    for (const CLS_CustomTreeNode& node : _qvec)
        qlst << NodeLine(node);
    return "[" + qlst.join(" | ") + "]";
}

class CLS_Run
{
public:
    explicit CLS_Run(quint32 _uiSeed) : m_uiSeed(_uiSeed) {}
    ~CLS_Run() { DropTree(); }

    // Runs the steps from a fresh start; the index of the first failing step or -1. _qstrWhy gets the
    // difference.
    int Play(const QVector<STRCT_Step>& _qvecSteps, QString& _qstrWhy)
    {
        DevManageCtl_Reset();
        CLS_Gen gen(m_uiSeed ^ 0x5bd1e995u);
        m_dev = gen.Installation();
        for (const STRCT_MRes& res : m_dev.m_qmapItems)
            DevAdd(res);
        for (STRCT_MCust& cust : m_dev.m_qmapCust) {
            auto itParent = m_dev.m_qmapCust.constFind(cust.m_qstrParentId);
            if (!cust.m_qstrParentId.isEmpty() && itParent != m_dev.m_qmapCust.cend() &&
                itParent.key() < cust.m_qstrTreeId)
                cust.m_qstrDevParentId = itParent->m_qstrDevId;
            DevManageCtl_AddCustomNode(cust.m_qstrTreeId.toUtf8(), cust.m_qstrDevId.toUtf8(),
                                       cust.m_qstrParentId.toUtf8(), cust.m_qstrName.toUtf8(), cust.m_iType,
                                       cust.m_iSortNo, cust.m_iStatus, cust.m_iChannelNo);
        }
        for (int i = 0; i < _qvecSteps.size(); ++i) {
            m_qlstActual.clear();
            QString qstrResults;
            Apply(_qvecSteps.at(i), qstrResults);
            if (!Compare(_qvecSteps.at(i), qstrResults, _qstrWhy))
                return i;
        }
        return -1;
    }

private:
    static int DevAdd(const STRCT_MRes& _res)
    {
        const QString qstrTree = _res.m_qstrTreeId == _res.m_qstrId ? QString() : _res.m_qstrTreeId;
        return DevManageCtl_AddItem(_res.m_iType, _res.m_qstrId.toUtf8(), _res.m_qstrName.toUtf8(),
                                    _res.m_qstrParentId.toUtf8(), _res.m_iOrderNo, _res.m_iStatus,
                                    _res.m_iChannelNo, qstrTree.toUtf8());
    }

    void DropTree()
    {
        m_pModel.reset();
        if (m_pTree != nullptr) {
            delete m_pTree;
            m_pTree = nullptr;
        }
    }

    void NewTree(int _iType, bool _blDrag, bool _blCheck)
    {
        DropTree();
        m_iSearchMode = 0;
        m_pTree = new CLS_ModelTestTree(_iType, _blDrag, _blCheck);
        m_pModel.reset(new CLS_ModelTree(_iType, _blDrag, _blCheck, m_pTree->m_qstrPicPath, &m_dev));
        static QSet<QString> s_qsetMade;
        if (!s_qsetMade.contains(m_pTree->m_qstrPicPath)) {
            s_qsetMade.insert(m_pTree->m_qstrPicPath);
            MakeImages(m_pTree->m_qstrPicPath);
        }
        CLS_ModelTestTree* pTree = m_pTree;
        QStringList& qlst = m_qlstActual;
        QObject::connect(pTree, &CLS_WgtDeviceTree::SignClear, pTree, [&qlst] { qlst << "clear"; });
        QObject::connect(pTree, &CLS_WgtDeviceTree::SignInit, pTree,
                         [&qlst](QString _qstrRoot, QVariant _var) {
                             qlst << QString("init:%1:%2")
                                         .arg(_qstrRoot)
                                         .arg(_var.value<QMap<QString, CLS_TreeItem>>().size());
                         });
        QObject::connect(pTree, &CLS_WgtDeviceTree::SignCheckedStatusChanged, pTree,
                         [&qlst](CLS_CustomTreeNode _node, bool _bl) {
                             qlst << QString("chk:%1:%2").arg(NodeLine(_node)).arg(_bl);
                         });
        QObject::connect(pTree, &CLS_WgtDeviceTree::SignCheckedStatusChangedQueue, pTree,
                         [&qlst](QVector<QPair<CLS_CustomTreeNode, bool>> _qvec, void* _p) {
                             QStringList qlstEntries;
                             for (const auto& pair : _qvec)
                                 qlstEntries << NodeLine(pair.first) + "=" + QString::number(pair.second);
                             qlst << "queue:[" + qlstEntries.join(" | ") +
                                         "]:" + (_p == nullptr ? "null" : "ptr");
                         });
        QObject::connect(pTree, &CLS_WgtDeviceTree::SignDblClicked, pTree,
                         [&qlst](CLS_CustomTreeNode _node) { qlst << "dbl:" + NodeLine(_node); });
        auto ids = [](const QVector<std::string>& _qvec) {
            QStringList qlstIds;
            for (const std::string& str : _qvec)
                qlstIds << QString::fromStdString(str);
            return "[" + qlstIds.join(",") + "]";
        };
        QObject::connect(pTree, &CLS_WgtDeviceTree::SignDeleteNode, pTree,
                         [&qlst, ids](QVector<std::string> _qvec) { qlst << "del:" + ids(_qvec); });
        QObject::connect(pTree, &CLS_WgtDeviceTree::SignModifyNode, pTree,
                         [&qlst, ids](QVector<std::string> _qvec) { qlst << "mod:" + ids(_qvec); });
        QObject::connect(pTree, &CLS_WgtDeviceTree::SignAddNode, pTree,
                         [&qlst, ids](QVector<std::string> _qvec) { qlst << "add:" + ids(_qvec); });
        QObject::connect(pTree, &CLS_WgtDeviceTree::SignChannelStatusUpdate, pTree,
                         [&qlst] { qlst << "statusupdate"; });
        QObject::connect(pTree, &CLS_WgtDeviceTree::SignUpdateChannelsStatus, pTree, [&qlst](QVariant _var) {
            qlst << QString("chstatus:%1").arg(_var.value<QMap<QString, QPair<bool, int>>>().size());
        });
        QObject::connect(pTree, &CLS_WgtDeviceTree::SignChecked, pTree, [&qlst] { qlst << "signchecked"; });
        QObject::connect(pTree, &CLS_WgtDeviceTree::SignLocationChanged, pTree,
                         [&qlst] { qlst << "location"; });
    }

    // Keeps the objects of a raw build alive for the call.
    QMap<QString, STRCT_VideoItem*> RawData(bool _blLessRoot,
                                            std::vector<std::shared_ptr<STRCT_VideoItem>>& _vecHold)
    {
        QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapWeak;
        DevManage::GetResourceTree()->GetAllItems(qmapWeak);
        QMap<QString, STRCT_VideoItem*> qmapRaw;
        for (auto it = qmapWeak.cbegin(); it != qmapWeak.cend(); ++it) {
            if (_blLessRoot && it.key() == CONST_RES_ROOT)
                continue;
            _vecHold.push_back(it.value().lock());
            qmapRaw.insert(it.key(), _vecHold.back().get());
        }
        return qmapRaw;
    }

    QMap<QString, CLS_CustomTreeNode> KeyedMap(const STRCT_Step& _step)
    {
        QMap<QString, CLS_CustomTreeNode> qmap;
        for (const auto& kn : _step.m_qvecKeyed)
            qmap.insert(kn.first, kn.second);
        return qmap;
    }

    // One step on both sides. The results of both go to _qstrResults as "tree | model".
    void Apply(const STRCT_Step& _step, QString& _qstrResults)
    {
        CLS_ModelTree* pModel = m_pModel.get();
        CLS_ModelTestTree* pTree = m_pTree;
        int iTree = 0, iModel = 0;
        QStringList qlstExtraTree, qlstExtraModel;
        if (pModel != nullptr) {
            pModel->m_qlstEvents.clear();
            pModel->m_qstrCurrent.clear();
        }
        if (_step.m_iOp != OP_NEW_TREE && _step.m_iOp < OP_DEV_ADD && pTree == nullptr)
            return;
        switch (_step.m_iOp) {
        case OP_NEW_TREE:
            NewTree(_step.m_iA, _step.m_blA, _step.m_iB != 0);
            m_qlstActual.clear();
            break;
        case OP_INIT_NODES: {
            QMap<QString, CLS_CustomTreeNode> qmapTree = KeyedMap(_step), qmapModel = KeyedMap(_step);
            iTree = pTree->Init(qmapTree, _step.m_qstrA, BtnSet(_step.m_iBtnSet), NodeSet(_step.m_iNodeSet),
                                BindSet(_step.m_iBindSet));
            iModel = pModel->InitNodes(qmapModel, _step);
            qlstExtraTree << "caller map: " + KeyedText(qmapTree);
            qlstExtraModel << "caller map: " + KeyedText(qmapModel);
            break;
        }
        case OP_INIT_SIBLING: {
            iTree = pTree->Init(_step.m_qstrA, BtnSet(_step.m_iBtnSet), NodeSet(_step.m_iNodeSet),
                                BindSet(_step.m_iBindSet));
            if (pModel->m_iType == 1) {
                QMap<QString, STRCT_MRes> qmapData = m_dev.AllByTreeId();
                QSet<QString> qsetExpired;
                if (!qmapData.contains(CONST_RES_ROOT))
                    qsetExpired.insert(CONST_RES_ROOT);
                iModel = pModel->InitRes(qmapData, qsetExpired, true, _step, {});
            } else {
                QMap<QString, CLS_CustomTreeNode> qmapNodes =
                    pModel->m_iType == 3 ? m_dev.NodesOfRoot(CONST_FAV_ROOT) : m_dev.AllNodes();
                iModel = pModel->InitNodes(qmapNodes, _step);
            }
            break;
        }
        case OP_INIT_WEAK: {
            QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapWeak;
            DevManage::GetResourceTree()->GetAllItems(qmapWeak);
            if (_step.m_blA)
                qmapWeak.remove(CONST_RES_ROOT);
            iTree = pTree->Init(qmapWeak, _step.m_qstrA, BtnSet(_step.m_iBtnSet), NodeSet(_step.m_iNodeSet),
                                BindSet(_step.m_iBindSet));
            QStringList qlstKeys;
            for (auto it = qmapWeak.cbegin(); it != qmapWeak.cend(); ++it)
                qlstKeys << it.key() + (it.value().expired() ? "(expired)" : "");
            qlstExtraTree << "caller map: " + qlstKeys.join(",");

            QMap<QString, STRCT_MRes> qmapData = m_dev.AllByTreeId();
            if (_step.m_blA)
                qmapData.remove(CONST_RES_ROOT);
            QSet<QString> qsetExpired;
            QStringList qlstModelKeys;
            for (auto it = qmapData.cbegin(); it != qmapData.cend(); ++it)
                qlstModelKeys << it.key();
            if (pModel->m_iType == 1 && !qmapData.contains(CONST_RES_ROOT)) {
                qsetExpired.insert(CONST_RES_ROOT);
                qlstModelKeys << CONST_RES_ROOT + "(expired)";
                std::sort(qlstModelKeys.begin(), qlstModelKeys.end());
            }
            qlstExtraModel << "caller map: " + qlstModelKeys.join(",");
            iModel = pModel->InitRes(qmapData, qsetExpired, true, _step, {});
            break;
        }
        case OP_INIT_RAW: {
            std::vector<std::shared_ptr<STRCT_VideoItem>> vecHold;
            const QMap<QString, STRCT_VideoItem*> qmapRaw = RawData(_step.m_blA, vecHold);
            iTree = pTree->Init(qmapRaw, _step.m_qstrA, BtnSet(_step.m_iBtnSet), NodeSet(_step.m_iNodeSet),
                                BindSet(_step.m_iBindSet), KeyedMap(_step));
            QMap<QString, STRCT_MRes> qmapData = m_dev.AllByTreeId();
            if (_step.m_blA)
                qmapData.remove(CONST_RES_ROOT);
            iModel = pModel->InitRes(qmapData, {}, false, _step, KeyedMap(_step));
            break;
        }
        case OP_CLEAR:
            pTree->Clear();
            pModel->Clear();
            break;
        case OP_UPDATE_NODES_MAP: {
            const QMap<QString, CLS_CustomTreeNode> qmap = KeyedMap(_step);
            iTree = pTree->UpdateNodesMap(qmap);
            for (auto it = qmap.cbegin(); it != qmap.cend(); ++it)
                pModel->m_qmapNodes.insert(it.key(), it.value());
            break;
        }
        case OP_ADD_NODE:
            iTree = pTree->AddItem(_step.m_qvecNodes.first());
            iModel = pModel->AddNode(_step.m_qvecNodes.first());
            break;
        case OP_ADD_ID: {
            iTree = pTree->AddItem(_step.m_qstrA);
            const QMap<QString, STRCT_MRes> qmapData = pModel->VideoData();
            iModel = qmapData.contains(_step.m_qstrA) ? pModel->AddWeak(qmapData.value(_step.m_qstrA)) : -1;
            break;
        }
        case OP_ADD_IDS: {
            iTree = pTree->AddItems(_step.m_qvecIds, _step.m_blA);
            const QMap<QString, STRCT_MRes> qmapData = pModel->VideoData();
            QVector<STRCT_MRes> qvecRes;
            for (const QString& qstrId : _step.m_qvecIds) {
                if (qmapData.contains(qstrId))
                    qvecRes << qmapData.value(qstrId);
            }
            iModel = pModel->AddWeaks(qvecRes, _step.m_blA);
            break;
        }
        case OP_ADD_WEAKS: {
            std::vector<std::shared_ptr<STRCT_VideoItem>> vecHold;
            QVector<std::weak_ptr<STRCT_VideoItem>> qvecWeak;
            for (const STRCT_MRes& res : _step.m_qvecRes) {
                vecHold.push_back(MakeObject(res));
                qvecWeak << vecHold.back();
            }
            iTree = pTree->AddItems(qvecWeak, _step.m_blA);
            iModel = pModel->AddWeaks(_step.m_qvecRes, _step.m_blA);
            break;
        }
        case OP_ADD_VARIANT:
            if (_step.m_blA) {
                iTree = pTree->AddItems(QVariant());
                iModel = -1;
            } else {
                iTree = pTree->AddItems(QVariant::fromValue(_step.m_qvecNodes));
                iModel = pModel->AddVariant(_step.m_qvecNodes);
            }
            break;
        case OP_MODIFY_ID: {
            iTree = pTree->ModifyItem(_step.m_qstrA);
            const QMap<QString, STRCT_MRes> qmapData = pModel->VideoData();
            iModel = qmapData.contains(_step.m_qstrA) ? pModel->ModifyRaw(qmapData.value(_step.m_qstrA)) : -1;
            break;
        }
        case OP_MODIFY_LIST:
            iTree = pTree->ModifyItems(QList<CLS_CustomTreeNode>::fromVector(_step.m_qvecNodes));
            iModel = pModel->ModifyList(_step.m_qvecNodes);
            break;
        case OP_MODIFY_RAWS: {
            std::vector<std::shared_ptr<STRCT_VideoItem>> vecHold;
            QVector<STRCT_VideoItem*> qvecRaw;
            for (const STRCT_MRes& res : _step.m_qvecRes) {
                vecHold.push_back(res.m_blNull ? nullptr : MakeObject(res));
                qvecRaw << vecHold.back().get();
            }
            iTree = pTree->ModifyItems(qvecRaw, _step.m_blA);
            QStringList qlst;
            for (const STRCT_MRes& res : _step.m_qvecRes) {
                if (!res.m_blNull && pModel->ModifyRaw(res) >= 0) {
                    ++iModel;
                    qlst << res.m_qstrId;
                }
            }
            if (pModel->m_iType != 1 || _step.m_blA)
                pModel->m_qlstEvents << "mod:[" + qlst.join(",") + "]";
            break;
        }
        case OP_MODIFY_IDS_EMPTY:
            iTree = pTree->ModifyItems(_step.m_qvecIds, true);
            break;
        case OP_MOVE_NODES_IDS:
            iTree = pTree->MoveNodes(_step.m_qvecIds, _step.m_iA);
            break;
        case OP_CAPTION:
            iTree = pTree->ModifyCaptionByChannelId(_step.m_qstrA, _step.m_qstrB);
            iModel = pModel->Caption(_step.m_qstrA, _step.m_qstrB);
            break;
        case OP_DELETE:
            iTree = pTree->DeleteItem(_step.m_qstrA);
            iModel = pModel->DeleteItem(_step.m_qstrA);
            break;
        case OP_DELETE_IDS:
            iTree = pTree->DeleteItems(_step.m_qvecIds, _step.m_blA);
            iModel = pModel->DeleteItems(_step.m_qvecIds, _step.m_blA);
            break;
        case OP_MOVE_ROW:
            iTree = _step.m_iA == 0 ? pTree->MoveUpOneRow(_step.m_qstrA, _step.m_qstrB)
                                    : pTree->MoveDownOneRow(_step.m_qstrA, _step.m_qstrB);
            iModel = pModel->Move(_step.m_iA == 0, _step.m_qstrA, _step.m_qstrB);
            break;
        case OP_MOVE_NODES: {
            std::vector<std::shared_ptr<STRCT_VideoItem>> vecHold;
            QVector<STRCT_VideoItem*> qvecRaw;
            for (const STRCT_MRes& res : _step.m_qvecRes) {
                vecHold.push_back(res.m_blNull ? nullptr : MakeObject(res));
                qvecRaw << vecHold.back().get();
            }
            iTree = pTree->MoveNodes(qvecRaw, _step.m_iA);
            iModel = pModel->MoveNodes(_step.m_qvecRes, _step.m_iA);
            break;
        }
        case OP_STATUS:
            if (_step.m_iA == 1) {
                iTree = pTree->UpdateAllChannelsStatus(QVariant());
                iModel = -1;
            } else if (_step.m_iA == 2) {
                iTree = pTree->UpdateAllChannelsStatus(QVariant(QString("x")));
                iModel = -1;
            } else {
                QMap<QString, QPair<bool, int>> qmap;
                for (const auto& entry : _step.m_qvecBatch)
                    qmap.insert(entry.first, entry.second);
                iTree = pTree->UpdateAllChannelsStatus(QVariant::fromValue(qmap));
                iModel = pModel->StatusBatch(_step.m_qvecBatch);
            }
            break;
        case OP_HOST:
            iTree = pTree->UpdateHostStatus(_step.m_qstrA, _step.m_iA);
            iModel = pModel->HostStatus(_step.m_qstrA, _step.m_iA);
            break;
        case OP_ONLINE_ICON: {
            QString qstrTree = pModel->m_qstrPic + "channel_no.png", qstrModel = qstrTree;
            iTree = pTree->UpdateNodeOnlineStatus(_step.m_qstrA, _step.m_blA, qstrTree);
            iModel = pModel->UpdateNodeOnlineStatus(_step.m_qstrA, _step.m_blA, qstrModel);
            qlstExtraTree << "icon " + ImageOfPath(qstrTree, pModel->m_qstrPic);
            qlstExtraModel << "icon " + ImageOfPath(qstrModel, pModel->m_qstrPic);
            break;
        }
        case OP_CHANNEL_STATUS_UPDATE:
            pTree->UpdateChannelStatus();
            pModel->m_qlstEvents << "statusupdate";
            break;
        case OP_SET_CHECK:
            pTree->SetItemCheckStatus(_step.m_qstrA, Qt::CheckState(_step.m_iA), _step.m_blA);
            pModel->SetItemCheckStatus(_step.m_qstrA, _step.m_iA, _step.m_blA);
            break;
        case OP_TIMEOUT:
            pTree->SlotCheckedSignalWatcherTimeout();
            pModel->Timeout();
            break;
        case OP_DBLCLICK:
            pTree->SlotDblClicked(_step.m_qstrA, RowOf(*pTree, _step.m_qstrA));
            pModel->DblClick(_step.m_qstrA);
            break;
        case OP_DEV_ADD: {
            const STRCT_MRes& res = _step.m_qvecRes.first();
            iTree = DevAdd(res);
            iModel = m_dev.m_qmapItems.contains(res.m_qstrId) ? -1 : 0;
            if (iModel == 0)
                m_dev.m_qmapItems.insert(res.m_qstrId, res);
            break;
        }
        case OP_DEV_REMOVE:
            iTree = DevManageCtl_RemoveItem(_step.m_qstrA.toUtf8());
            iModel = m_dev.m_qmapItems.remove(_step.m_qstrA) > 0 ? 0 : -1;
            break;
        case OP_DEV_NAME:
            iTree = DevManageCtl_SetName(_step.m_qstrA.toUtf8(), _step.m_qstrB.toUtf8());
            iModel = m_dev.m_qmapItems.contains(_step.m_qstrA) ? 0 : -1;
            if (iModel == 0)
                m_dev.m_qmapItems[_step.m_qstrA].m_qstrName = _step.m_qstrB;
            break;
        case OP_DEV_BIND:
            iTree = DevManageCtl_SetDevBindType(_step.m_qstrA.toUtf8(), _step.m_iA);
            iModel = m_dev.m_qmapItems.contains(_step.m_qstrA) ? 0 : -1;
            if (iModel == 0)
                m_dev.m_qmapItems[_step.m_qstrA].m_iDevBindType = _step.m_iA;
            break;
        case OP_DEV_STATUS:
            iTree = DevManageCtl_SetStatus(_step.m_qstrA.toUtf8(), _step.m_iA);
            iModel = m_dev.m_qmapItems.contains(_step.m_qstrA) ? 0 : -1;
            if (iModel == 0)
                m_dev.m_qmapItems[_step.m_qstrA].m_iStatus = _step.m_iA;
            break;
        }
        if (_step.m_iOp == OP_STATUS_FILTER || _step.m_iOp == OP_CHANNEL_COUNTS ||
            _step.m_iOp == OP_VIEW_STATE)
            ApplyOperatorView(_step, iTree, iModel, qlstExtraTree, qlstExtraModel);
        if (_step.m_iOp == OP_WORD_SEARCH || _step.m_iOp == OP_SELECTED_NODES || _step.m_iOp == OP_DRAG_DATA)
            ApplyFindAndTake(_step, qlstExtraTree, qlstExtraModel);
        if (_step.m_iOp == OP_ACCESSIBLE)
            ApplyAccessible(_step, qlstExtraTree, qlstExtraModel);
        _qstrResults = QString("result tree %1 model %2").arg(iTree).arg(iModel);
        m_bResultsDiffer = iTree != iModel;
        m_qlstExtraTree = qlstExtraTree;
        m_qlstExtraModel = qlstExtraModel;
        if (_step.m_iOp >= OP_INIT_NODES && _step.m_iOp <= OP_INIT_RAW && m_pModel)
            AdoptTieOrder();
    }

    // Rows of equal number have no settled order after a build: the model takes the tree's order
    // where it is a reordering within runs of equal numbers.
    void AdoptTieOrder()
    {
        CLS_WgtBaseTreeWidget* pBase = BaseOf(*m_pTree);
        if (pBase == nullptr)
            return;
        for (STRCT_MRow* pRow : m_pModel->m_base.m_qmapIndex) {
            QTreeWidgetItem* pItem = pBase->GetNodeById(pRow->m_clsRec.m_qstrId);
            if (pItem == nullptr || pItem->childCount() != pRow->m_qvecKids.size())
                continue;
            QVector<STRCT_MRow*> qvecNew;
            QVector<STRCT_MRow*> qvecLeft = pRow->m_qvecKids;
            bool blOk = true;
            for (int i = 0; i < pItem->childCount() && blOk; ++i) {
                const QString qstrId = pItem->child(i)->data(0, Qt::UserRole).toString();
                auto it = std::find_if(qvecLeft.begin(), qvecLeft.end(),
                                       [&](STRCT_MRow* _p) { return _p->m_clsRec.m_qstrId == qstrId; });
                if (it == qvecLeft.end() ||
                    (*it)->m_clsRec.m_iSortNo != pRow->m_qvecKids.at(i)->m_clsRec.m_iSortNo) {
                    blOk = false;
                    break;
                }
                qvecNew << *it;
                qvecLeft.erase(it);
            }
            if (blOk)
                pRow->m_qvecKids = qvecNew;
        }
    }

    // -- comparison --

    static QString RowLine(const CLS_TreeItem& _clsItem, int _iCheck, int _iFlags, const QString& _qstrShown)
    {
        return QString("%1 chk=%2 fl=0x%3 shown=%4")
            .arg(RowText(_clsItem))
            .arg(_iCheck)
            .arg(_iFlags, 0, 16)
            .arg(_qstrShown);
    }

    void ModelRows(const QVector<STRCT_MRow*>& _qvecRows, int _iDepth, QStringList& _qlst) const
    {
        for (const STRCT_MRow* pRow : _qvecRows) {
            _qlst << QString(_iDepth * 2, ' ') + RowLine(pRow->m_clsRec, m_pModel->m_base.Data(pRow),
                                                         pRow->m_iFlags,
                                                         ImageOfPath(pRow->m_qstrShown, m_pModel->m_qstrPic));
            ModelRows(pRow->m_qvecKids, _iDepth + 1, _qlst);
        }
    }

    static void TreeRows(QTreeWidgetItem* _pItem, int _iDepth, QStringList& _qlst)
    {
        const CLS_TreeItem clsItem = _pItem->data(0, Qt::UserRole + 1).value<CLS_TreeItem>();
        const QVariant varCheck = _pItem->data(0, Qt::CheckStateRole);
        _qlst << QString(_iDepth * 2, ' ') + RowLine(clsItem, varCheck.isValid() ? varCheck.toInt() : -1,
                                                     int(_pItem->flags()), ImageOfRow(_pItem));
        for (int i = 0; i < _pItem->childCount(); ++i)
            TreeRows(_pItem->child(i), _iDepth + 1, _qlst);
    }

    // The ids worth asking about: every key and row of the model, the resource ids of its id map,
    // every root id, and a few that no tree holds.
    QStringList AllIds() const
    {
        QStringList qlst = {"", "zz", "r0", "d0"};
        qlst << CONST_ROOTS;
        auto add = [&qlst](const QString& _qstr) {
            if (!qlst.contains(_qstr))
                qlst << _qstr;
        };
        for (auto it = m_pModel->m_qmapNodes.cbegin(); it != m_pModel->m_qmapNodes.cend(); ++it) {
            add(it.key());
            add(it->m_qstrTreeId);
        }
        for (auto it = m_pModel->m_qmapIdMap.cbegin(); it != m_pModel->m_qmapIdMap.cend(); ++it) {
            add(it.key());
            add(it.value());
        }
        for (const QString& qstr : m_pModel->m_base.m_qmapIndex.keys())
            add(qstr);
        return qlst;
    }

    // Each query on both sides, as text.
    QString Queries(bool _blModel)
    {
        CLS_ModelTree& model = *m_pModel;
        CLS_ModelTestTree& tree = *m_pTree;
        QStringList qlst;
        auto node = [](int _iRet, const CLS_CustomTreeNode& _node) {
            return _iRet < 0 ? QString::number(_iRet) : "0 " + NodeKey(_node);
        };
        for (const QString& qstrId : AllIds()) {
            CLS_CustomTreeNode nodeOut;
            int iRet;
            // GetItemById
            if (_blModel) {
                iRet = (!qstrId.isEmpty() && model.m_qmapNodes.contains(qstrId)) ? 0 : -1;
                if (iRet == 0)
                    nodeOut = model.m_qmapNodes.value(qstrId);
            } else {
                iRet = tree.GetItemById(qstrId, nodeOut);
            }
            qlst << "GetItemById(" + qstrId + ") " + node(iRet, nodeOut);
            // GetItemByDevId and GetItemByChannelId
            nodeOut = CLS_CustomTreeNode();
            if (_blModel) {
                const QString qstrTree = model.m_qmapIdMap.value(qstrId);
                iRet = (!qstrId.isEmpty() && model.m_qmapIdMap.contains(qstrId) && !qstrTree.isEmpty() &&
                        model.m_qmapNodes.contains(qstrTree))
                           ? 0
                           : -1;
                if (iRet == 0)
                    nodeOut = model.m_qmapNodes.value(qstrTree);
                qlst << "GetItemByDevId(" + qstrId + ") " + node(iRet, nodeOut);
                qlst << "GetItemByChannelId(" + qstrId + ") " + node(iRet, nodeOut);
            } else {
                iRet = tree.GetItemByDevId(qstrId, nodeOut);
                qlst << "GetItemByDevId(" + qstrId + ") " + node(iRet, nodeOut);
                nodeOut = CLS_CustomTreeNode();
                iRet = tree.GetItemByChannelId(qstrId, nodeOut);
                qlst << "GetItemByChannelId(" + qstrId + ") " + node(iRet, nodeOut);
            }
            // GetChilds, both depths, with a filled vector
            for (bool blAll : {false, true}) {
                QVector<CLS_CustomTreeNode> qvec;
                CLS_CustomTreeNode first;
                first.m_qstrTreeId = "old";
                qvec << first;
                iRet = _blModel ? model.GetChilds(qstrId, qvec, blAll) : tree.GetChilds(qstrId, qvec, blAll);
                qlst
                    << QString("GetChilds(%1,%2) %3 %4").arg(qstrId).arg(blAll).arg(iRet).arg(NodeKeys(qvec));
            }
            // GetChildsByDevId
            {
                QVector<CLS_CustomTreeNode> qvec;
                if (_blModel) {
                    const QString qstrTree = model.m_qmapIdMap.value(qstrId);
                    iRet = (qstrId.isEmpty() || !model.m_qmapIdMap.contains(qstrId))
                               ? -1
                               : model.GetChilds(qstrTree, qvec, false);
                } else {
                    iRet = tree.GetChildsByDevId(qstrId, qvec);
                }
                qlst << QString("GetChildsByDevId(%1) %2 %3").arg(qstrId).arg(iRet).arg(NodeKeys(qvec));
            }
            // GetChannelsById
            {
                QVector<CLS_CustomTreeNode> qvec;
                if (_blModel) {
                    QVector<CLS_CustomTreeNode> qvecAll;
                    iRet = model.GetChilds(qstrId, qvecAll, false);
                    for (const CLS_CustomTreeNode& n : qvecAll)
                        if (!n.m_qstrDevId.isEmpty())
                            qvec << n;
                } else {
                    iRet = tree.GetChannelsById(qstrId, qvec);
                }
                qlst << QString("GetChannelsById(%1) %2 %3").arg(qstrId).arg(iRet).arg(NodeKeys(qvec));
            }
            // GetParent and GetParentByDevId
            auto parentOf = [&](const QString& _qstrTree, CLS_CustomTreeNode& _out) {
                STRCT_MRow* pRow = _qstrTree.isEmpty() ? nullptr : model.m_base.Row(_qstrTree);
                if (pRow == nullptr || pRow->m_pParent == nullptr)
                    return -1;
                const QString qstrParent = pRow->m_pParent->m_clsRec.m_qstrId;
                if (qstrParent.isEmpty() || !model.m_qmapNodes.contains(qstrParent))
                    return -1;
                _out = model.m_qmapNodes.value(qstrParent);
                return 0;
            };
            nodeOut = CLS_CustomTreeNode();
            iRet = _blModel ? parentOf(qstrId, nodeOut) : tree.GetParent(qstrId, nodeOut);
            qlst << "GetParent(" + qstrId + ") " + node(iRet, nodeOut);
            nodeOut = CLS_CustomTreeNode();
            if (_blModel)
                iRet = (qstrId.isEmpty() || !model.m_qmapIdMap.contains(qstrId))
                           ? -1
                           : parentOf(model.m_qmapIdMap.value(qstrId), nodeOut);
            else
                iRet = tree.GetParentByDevId(qstrId, nodeOut);
            qlst << "GetParentByDevId(" + qstrId + ") " + node(iRet, nodeOut);
            // GetItemCheckStatus
            int iState = 7;
            if (_blModel) {
                iRet = (qstrId.isEmpty() || !model.m_qmapNodes.contains(qstrId))
                           ? -1
                           : model.m_base.CheckState(qstrId, iState);
            } else {
                Qt::CheckState state = Qt::Unchecked;
                iRet = tree.GetItemCheckStatus(qstrId, state);
                iState = int(state);
            }
            qlst << QString("GetItemCheckStatus(%1) %2 %3").arg(qstrId).arg(iRet).arg(iRet < 0 ? 7 : iState);
        }
        // Three-argument channel lookup for a few pairs.
        for (const QString& qstrParent :
             {CONST_CUS_ROOT, CONST_RES_ROOT, QString("n0"), QString("n1"), QString()}) {
            for (const QString& qstrChannel : {QString("r0"), QString("d0"), QString()}) {
                CLS_CustomTreeNode nodeOut;
                nodeOut.m_qstrName = "untouched";
                int iRet;
                if (_blModel) {
                    QVector<CLS_CustomTreeNode> qvec;
                    iRet = qstrParent.isEmpty() ? -1 : model.GetChilds(qstrParent, qvec, false);
                    if (iRet >= 0) {
                        for (const CLS_CustomTreeNode& n : qvec) {
                            if (!n.m_qstrDevId.isEmpty() && n.m_qstrDevId == qstrChannel) {
                                nodeOut = n;
                                break;
                            }
                        }
                    }
                } else {
                    iRet = tree.GetItemByChannelId(qstrParent, qstrChannel, nodeOut);
                }
                qlst << QString("GetItemByChannelId(%1,%2) %3 %4")
                            .arg(qstrParent, qstrChannel)
                            .arg(iRet)
                            .arg(NodeKey(nodeOut));
            }
        }
        // GetAllNodeParent over all ids, with one id already in the vector.
        {
            QVector<QString> qvecParents = {"n1"};
            int iRet;
            if (_blModel) {
                for (const QString& qstrId : AllIds()) {
                    STRCT_MRow* pRow = qstrId.isEmpty() ? nullptr : model.m_base.Row(qstrId);
                    if (pRow == nullptr || pRow->m_pParent == nullptr)
                        continue;
                    const QString qstrParent = pRow->m_pParent->m_clsRec.m_qstrId;
                    if (qstrParent.isEmpty() || !model.m_qmapNodes.contains(qstrParent))
                        continue;
                    const QString qstrTree = model.m_qmapNodes.value(qstrParent).m_qstrTreeId;
                    if (!qvecParents.contains(qstrTree))
                        qvecParents << qstrTree;
                }
                iRet = 0;
            } else {
                iRet = tree.GetAllNodeParent(QVector<QString>::fromList(AllIds()), qvecParents);
            }
            qlst << QString("GetAllNodeParent %1 [%2]")
                        .arg(iRet)
                        .arg(QStringList(qvecParents.toList()).join(","));
        }
        // Checked lists.
        {
            QVector<CLS_CustomTreeNode> qvec;
            int iRet;
            if (_blModel) {
                QVector<CLS_TreeItem> qvecRows;
                iRet = model.m_base.CheckedItems(qvecRows, true);
                if (iRet >= 0) {
                    for (const CLS_TreeItem& clsItem : qvecRows) {
                        if (!model.m_qmapNodes.contains(clsItem.m_qstrId))
                            continue;
                        CLS_CustomTreeNode n = model.m_qmapNodes.value(clsItem.m_qstrId);
                        n.m_iSortNo = clsItem.m_iSortNo;
                        qvec << n;
                    }
                }
            } else {
                iRet = tree.GetCheckedChannel(qvec);
                for (int i = 1; i < qvec.size(); ++i) {
                    if (qvec.at(i).m_iSortNo < qvec.at(i - 1).m_iSortNo)
                        qlst << "GetCheckedChannel not sorted";
                }
            }
            std::sort(qvec.begin(), qvec.end(),
                      [](const CLS_CustomTreeNode& _a, const CLS_CustomTreeNode& _b) {
                          return _a.m_iSortNo != _b.m_iSortNo ? _a.m_iSortNo < _b.m_iSortNo
                                                              : NodeKey(_a) < NodeKey(_b);
                      });
            qlst << QString("GetCheckedChannel %1 %2").arg(iRet).arg(NodeKeys(qvec));
        }
        for (bool blGroups : {false, true}) {
            QVector<CLS_CustomTreeNode> qvec;
            int iRet;
            if (_blModel) {
                QVector<CLS_TreeItem> qvecRows;
                iRet = model.m_base.CheckedItems(qvecRows, false);
                if (iRet >= 0 || !blGroups) {
                    for (const CLS_TreeItem& clsItem : qvecRows) {
                        if (!model.m_qmapNodes.contains(clsItem.m_qstrId))
                            continue;
                        const CLS_CustomTreeNode n = model.m_qmapNodes.value(clsItem.m_qstrId);
                        if (!blGroups || (n.m_iType == 2 && n.m_qstrDevId != CONST_CUS_ROOT))
                            qvec << n;
                    }
                }
            } else {
                iRet = blGroups ? tree.GetCheckedGroup(qvec) : tree.GetAllCheckedItems(qvec);
            }
            qlst << QString("%1 %2 %3")
                        .arg(blGroups ? "GetCheckedGroup" : "GetAllCheckedItems")
                        .arg(iRet)
                        .arg(NodeKeys(qvec));
        }
        return qlst.join("\n");
    }

    static QString FirstDiff(const QString& _qstrA, const QString& _qstrB)
    {
        const QStringList qlstA = _qstrA.split('\n'), qlstB = _qstrB.split('\n');
        for (int i = 0; i < std::max(qlstA.size(), qlstB.size()); ++i) {
            const QString a = qlstA.value(i, "<missing>"), b = qlstB.value(i, "<missing>");
            if (a != b)
                return QString("line %1\n    tree:  %2\n    model: %3").arg(i + 1).arg(a, b);
        }
        return QString();
    }

    void ApplyOperatorView(const STRCT_Step& _step, int& _iTree, int& _iModel, QStringList& _qlstExtraTree,
                           QStringList& _qlstExtraModel)
    {
        if (_step.m_iOp == OP_STATUS_FILTER) {
            _iTree = m_pTree->SetStatusFilter(_step.m_iA);
            _iModel = _step.m_iA >= 0 && _step.m_iA <= 2 ? 0 : -1;
            if (_iModel == 0)
                m_pModel->m_iFilter = _step.m_iA;
            _qlstExtraTree << QString("filter %1").arg(m_pTree->GetStatusFilter());
            _qlstExtraModel << QString("filter %1").arg(m_pModel->m_iFilter);
            m_blOperatorView = true;
        } else if (_step.m_iOp == OP_CHANNEL_COUNTS) {
            m_pTree->SetShowChannelCounts(_step.m_blA);
            _qlstExtraTree << QString("counts shown %1").arg(m_pTree->GetShowChannelCounts());
            _qlstExtraModel << QString("counts shown %1").arg(_step.m_blA);
            m_blOperatorView = true;
        } else if (_step.m_iA == 0) {
            const QByteArray qbaState = m_pTree->SaveViewState();
            _iTree = m_pTree->RestoreViewState(qbaState);
            _iModel = 0;
            _qlstExtraTree << (m_pTree->SaveViewState() == qbaState ? "state kept" : "state changed");
            _qlstExtraModel << "state kept";
        } else if (_step.m_iA == 1) {
            _iTree = m_pTree->RestoreViewState(QByteArray("WTVS\x01\x00\x00\x00\x09", 9));
            _iModel = -1;
        } else {
            m_pTree->SetKeepViewState(_step.m_blA);
        }
    }

    // What a reader hears: the tree's name, and the words of rows, made from the model's node as it
    // is now (kind and state; the counts, when shown, follow them).
    void ApplyAccessible(const STRCT_Step& _step, QStringList& _qlstExtraTree, QStringList& _qlstExtraModel)
    {
        if (m_pTree == nullptr)
            return;
        m_pTree->SetAccessibleTreeName(_step.m_qstrA.trimmed() == "a" ? QString() : _step.m_qstrA);
        _qlstExtraTree << "name " + BaseOf(*m_pTree)->accessibleName();
        _qlstExtraModel << "name " + (_step.m_qstrA.trimmed() == "a" ? PanelOf(*m_pTree)->windowTitle()
                                                                     : _step.m_qstrA);
        for (const QString& qstrId : _step.m_qvecIds) {
            QTreeWidgetItem* pRow = BaseOf(*m_pTree)->GetNodeById(qstrId);
            if (pRow == nullptr || m_pModel == nullptr || !m_pModel->m_qmapNodes.contains(qstrId))
                continue;
            const QString qstrWords = pRow->data(0, Qt::AccessibleDescriptionRole).toString();
            const CLS_CustomTreeNode& node = m_pModel->m_qmapNodes[qstrId];
            const QString qstrState = CLS_DeviceTreeAccessible::StateText(node);
            const QString qstrExpected = CLS_DeviceTreeAccessible::KindText(node) +
                                         (qstrState.isEmpty() ? QString() : ", " + qstrState);
            _qlstExtraTree << qstrId + ": " + qstrWords.left(qstrExpected.size());
            _qlstExtraModel << qstrId + ": " + qstrExpected;
        }
    }

    // The search line, the selection and the drag payload against the model's rows and nodes. Each
    // step sets what it uses, so that nothing carries over to the steps after it.
    void ApplyFindAndTake(const STRCT_Step& _step, QStringList& _qlstExtraTree, QStringList& _qlstExtraModel)
    {
        if (m_pTree == nullptr)
            return;
        if (_step.m_iOp == OP_WORD_SEARCH) {
            m_pTree->SetSearchMode(_step.m_iA);
            if (_step.m_iA == 0 || _step.m_iA == 1)
                m_iSearchMode = _step.m_iA;
            m_pTree->SetSearchShowsPath(_step.m_blA);
            _qlstExtraTree << QString("mode %1 paths %2")
                                  .arg(m_pTree->GetSearchMode())
                                  .arg(m_pTree->GetSearchShowsPath());
            _qlstExtraModel << QString("mode %1 paths %2").arg(m_iSearchMode).arg(_step.m_blA);
            auto* pLine = PanelOf(*m_pTree)->findChild<QLineEdit*>("qlineedtQueryInput");
            auto* pList = PanelOf(*m_pTree)->findChild<QListWidget*>("qlistWgtQueryResult");
            pLine->clear();
            pLine->setText(_step.m_qstrA);
            for (int i = 0; i < pList->count(); ++i) {
                const QVariant varId = pList->item(i)->data(Qt::UserRole);
                _qlstExtraTree << (varId.isValid() ? varId.toString() + "=" + pList->item(i)->text()
                                                   : QString("<no results>"));
            }
            pLine->clear();
            _qlstExtraModel << m_pModel->SearchEntries(_step.m_qstrA, m_iSearchMode, _step.m_blA);
        } else if (_step.m_iOp == OP_SELECTED_NODES) {
            // Rows selected by the program: listed in row order, rows without a node left out. The
            // selection is dropped again afterwards.
            CLS_WgtBaseTreeWidget* pBase = BaseOf(*m_pTree);
            m_pTree->SetMultiSelect(true);
            pBase->clearSelection();
            QSet<QString> qsetSelected;
            for (const QString& qstrId : _step.m_qvecIds) {
                // A hidden row is never a selected one to the view (QTreeWidget::selectedItems).
                QTreeWidgetItem* pRow = pBase->GetNodeById(qstrId);
                if (pRow != nullptr && !pRow->isHidden()) {
                    pRow->setSelected(true);
                    qsetSelected.insert(qstrId);
                }
            }
            QVector<CLS_CustomTreeNode> qvecNodes;
            const int iRet = m_pTree->GetSelectedNodes(qvecNodes);
            _qlstExtraTree << QString("selected %1 %2").arg(iRet).arg(NodeKeys(qvecNodes));
            _qlstExtraModel << QString("selected 0 %1").arg(NodeKeys(m_pModel->SelectedNodes(qsetSelected)));
            pBase->clearSelection();
            m_pTree->SetMultiSelect(_step.m_blA);
            _qlstExtraTree << QString("multi-select %1").arg(m_pTree->GetMultiSelect());
            _qlstExtraModel << QString("multi-select %1").arg(_step.m_blA);
        } else {
            const std::unique_ptr<QMimeData> pData(m_pTree->CreateDragData(_step.m_qvecIds));
            QVector<CLS_CustomTreeNode> qvecRead;
            const int iRet = CLS_WgtDeviceTree::ReadDragData(pData.get(), qvecRead);
            QStringList qlstRead, qlstModel, qlstNames;
            for (const CLS_CustomTreeNode& node : qvecRead)
                qlstRead << QString("%1|%2|%3|%4|%5")
                                .arg(node.m_qstrTreeId, node.m_qstrDevId)
                                .arg(node.m_iType)
                                .arg(node.m_qstrName)
                                .arg(node.m_iChannelNo);
            for (const QString& qstrId : _step.m_qvecIds) {
                const auto it = m_pModel->m_qmapNodes.constFind(qstrId);
                if (qstrId.isEmpty() || it == m_pModel->m_qmapNodes.cend())
                    continue;
                qlstModel << QString("%1|%2|%3|%4|%5")
                                 .arg(it->m_qstrTreeId, it->m_qstrDevId)
                                 .arg(it->m_iType)
                                 .arg(it->m_qstrName)
                                 .arg(it->m_iChannelNo);
                qlstNames << it->m_qstrName;
            }
            _qlstExtraTree << QString("payload %1 [%2] text \"%3\"")
                                  .arg(iRet)
                                  .arg(qlstRead.join(" "))
                                  .arg(pData->text());
            _qlstExtraModel
                << QString("payload 0 [%1] text \"%2\"").arg(qlstModel.join(" ")).arg(qlstNames.join("\n"));
        }
    }

    // Once a run has asked for the filter or the counts: every row's hidden flag and counts, as the
    // rows and nodes of the model say.
    QString OperatorView(bool _blModel) const
    {
        QStringList qlst;
        CLS_WgtBaseTreeWidget* pBase = BaseOf(*m_pTree);
        for (auto it = m_pModel->m_base.m_qmapIndex.cbegin(); it != m_pModel->m_base.m_qmapIndex.cend();
             ++it) {
            QString qstrCounts = "-";
            int iOnline = 0, iTotal = 0;
            bool blHidden = false;
            if (_blModel) {
                m_pModel->Counts(it.value(), iOnline, iTotal);
                blHidden = !m_pModel->FilterShows(it.value());
                if (m_pModel->m_qmapNodes.contains(it.key()))
                    qstrCounts = QString("%1/%2").arg(iOnline).arg(iTotal);
            } else {
                QTreeWidgetItem* pRow = pBase->GetNodeById(it.key());
                blHidden = pRow != nullptr && pRow->isHidden();
                if (m_pTree->GetChannelCounts(it.key(), iOnline, iTotal) == 0)
                    qstrCounts = QString("%1/%2").arg(iOnline).arg(iTotal);
            }
            qlst << QString("%1 %2%3").arg(it.key(), qstrCounts, blHidden ? " hidden" : "");
        }
        return qlst.join("\n");
    }

    bool Compare(const STRCT_Step& _step, const QString& _qstrResults, QString& _qstrWhy)
    {
        auto fail = [&](const QString& _qstrWhat, const QString& _qstrTree, const QString& _qstrModel) {
            _qstrWhy =
                QString("%1 differ after \"%2\" (%3)\n  first difference: %4\n  tree:\n%5\n  model:\n%6")
                    .arg(_qstrWhat, Describe(_step), _qstrResults, FirstDiff(_qstrTree, _qstrModel),
                         _qstrTree, _qstrModel);
            return false;
        };
        if (m_bResultsDiffer)
            return fail("results", _qstrResults, _qstrResults + " (expected equal)");
        if (m_qlstExtraTree != m_qlstExtraModel)
            return fail("outputs", m_qlstExtraTree.join("\n"), m_qlstExtraModel.join("\n"));
        if (m_pTree == nullptr)
            return true;
        CLS_ModelTree& model = *m_pModel;
        const QString qstrEvTree = m_qlstActual.join("\n"), qstrEvModel = model.m_qlstEvents.join("\n");
        if (qstrEvTree != qstrEvModel)
            return fail("signals", qstrEvTree, qstrEvModel);
        // The stores behind the queries.
        if (KeyedText(m_pTree->m_qmapNodes) != KeyedText(model.m_qmapNodes))
            return fail("node maps", KeyedText(m_pTree->m_qmapNodes), KeyedText(model.m_qmapNodes));
        auto idMap = [](const QMap<QString, QString>& _qmap) {
            QStringList qlst;
            for (auto it = _qmap.cbegin(); it != _qmap.cend(); ++it)
                qlst << it.key() + ">" + it.value();
            return qlst.join("\n");
        };
        if (idMap(m_pTree->m_qmapDevIdToTreeId) != idMap(model.m_qmapIdMap))
            return fail("id maps", idMap(m_pTree->m_qmapDevIdToTreeId), idMap(model.m_qmapIdMap));
        if (m_pTree->m_qstrRootId != model.m_qstrRootId)
            return fail("root ids", m_pTree->m_qstrRootId, model.m_qstrRootId);
        if (m_pTree->m_tmCheckedWatcher.isActive() != model.m_blTimer ||
            m_pTree->m_qvecCheckChangedQueue.size() != model.m_qvecQueue.size())
            return fail("check batch",
                        QString("timer %1 queue %2")
                            .arg(m_pTree->m_tmCheckedWatcher.isActive())
                            .arg(m_pTree->m_qvecCheckChangedQueue.size()),
                        QString("timer %1 queue %2").arg(model.m_blTimer).arg(model.m_qvecQueue.size()));
        // Rows.
        QStringList qlstTree, qlstModel;
        CLS_WgtBaseTreeWidget* pBase = BaseOf(*m_pTree);
        for (int i = 0; i < pBase->topLevelItemCount(); ++i)
            TreeRows(pBase->topLevelItem(i), 0, qlstTree);
        ModelRows(model.m_base.m_qvecTop, 0, qlstModel);
        if (qlstTree != qlstModel)
            return fail("rows", qlstTree.join("\n"), qlstModel.join("\n"));
        QStringList qlstIndexTree, qlstIndexModel;
        for (const QString& qstrId : AllIds()) {
            if (pBase->GetNodeById(qstrId) != nullptr)
                qlstIndexTree << qstrId;
            if (model.m_base.Row(qstrId) != nullptr)
                qlstIndexModel << qstrId;
        }
        if (qlstIndexTree != qlstIndexModel)
            return fail("row index", qlstIndexTree.join(","), qlstIndexModel.join(","));
        // A move makes its source row current.
        if (!model.m_qstrCurrent.isEmpty()) {
            CLS_CustomTreeNode nodeTree, nodeModel;
            const int iTree = m_pTree->GetCurrentItem(nodeTree);
            const int iModel = model.m_qmapNodes.contains(model.m_qstrCurrent) ? 0 : -1;
            if (iModel == 0)
                nodeModel = model.m_qmapNodes.value(model.m_qstrCurrent);
            const QString a = QString("%1 %2").arg(iTree).arg(iTree < 0 ? "" : NodeLine(nodeTree));
            const QString b = QString("%1 %2").arg(iModel).arg(iModel < 0 ? "" : NodeLine(nodeModel));
            if (a != b)
                return fail("current row", a, b);
        }
        const QString qstrQTree = Queries(false), qstrQModel = Queries(true);
        if (qstrQTree != qstrQModel)
            return fail("queries", qstrQTree, qstrQModel);
        if (m_blOperatorView) {
            const QString qstrOvTree = OperatorView(false), qstrOvModel = OperatorView(true);
            if (qstrOvTree != qstrOvModel)
                return fail("filter and counts", qstrOvTree, qstrOvModel);
        }
        return true;
    }

    quint32 m_uiSeed;
    CLS_DevMirror m_dev;
    CLS_ModelTestTree* m_pTree = nullptr;
    std::unique_ptr<CLS_ModelTree> m_pModel;
    QStringList m_qlstActual;
    bool m_bResultsDiffer = false;
    bool m_blOperatorView = false; // the run asked for the status filter or the counts
    int m_iSearchMode = 0;         // the tree's search mode as the steps set it
    QStringList m_qlstExtraTree, m_qlstExtraModel;
};

QVector<quint32> SeedsFromEnv()
{
    const QByteArray qbaSeeds = qgetenv("WGT_MODEL_SEEDS");
    QVector<quint32> qvec;
    if (!qbaSeeds.isEmpty()) {
        for (const QByteArray& qba : qbaSeeds.split(','))
            if (!qba.trimmed().isEmpty())
                qvec << qba.trimmed().toUInt();
    }
    if (qvec.isEmpty())
        for (quint32 ui = 1; ui <= 12; ++ui)
            qvec << ui;
    return qvec;
}

int StepsFromEnv()
{
    bool blOk = false;
    const int iSteps = qEnvironmentVariableIntValue("WGT_MODEL_STEPS", &blOk);
    return blOk && iSteps > 0 ? iSteps : 500;
}

} // namespace

class tst_ModelDeviceTree : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qRegisterMetaType<CLS_TreeItem>("CLS_TreeItem");
        qRegisterMetaType<CLS_CustomTreeNode>("CLS_CustomTreeNode");
        s_blMutate = qEnvironmentVariableIntValue("WGT_MODEL_MUTATE") == 1;
        QVERIFY(DevManage::GetResourceTree() != nullptr);
        // The gateways' first binds are not made for several threads at once: bind the ones the
        // status workers use here, before the first worker starts.
        Logger::GetModuleFun("PrintLog", "");
        LxAppManager::GetModuleFun("GetApp", "");
        // No application object: each status worker leaves after its first pass.
        LxAppManagerCtl_SetAppAvailable(0);
    }

    void shouldAgreeWithModelOnEverySeed()
    {
        const QVector<quint32> qvecSeeds = SeedsFromEnv();
        const int iSteps = StepsFromEnv();
        QElapsedTimer timer;
        timer.start();
        for (quint32 uiSeed : qvecSeeds) {
            CLS_Gen gen(uiSeed);
            const QVector<STRCT_Step> qvecSteps = gen.Steps(iSteps);
            QString qstrWhy;
            int iFail;
            {
                CLS_Run run(uiSeed);
                iFail = run.Play(qvecSteps, qstrWhy);
            }
            if (iFail < 0)
                continue;
            // Shortest failing prefix, replayed from a fresh tree: the smallest n whose first n steps fail.
            int iLow = 1, iHigh = iFail + 1;
            while (iLow < iHigh) {
                const int iMid = (iLow + iHigh) / 2;
                CLS_Run run(uiSeed);
                QString qstrIgnored;
                if (run.Play(qvecSteps.mid(0, iMid), qstrIgnored) >= 0)
                    iHigh = iMid;
                else
                    iLow = iMid + 1;
            }
            QVector<STRCT_Step> qvecPrefix = qvecSteps.mid(0, iHigh);
            {
                CLS_Run run(uiSeed);
                run.Play(qvecPrefix, qstrWhy);
            }
            // A shorter list with the same failure: drop steps one at a time while it still fails,
            // within a time budget.
            QVector<STRCT_Step> qvecReduced = qvecPrefix;
            QString qstrReducedWhy = qstrWhy;
            QElapsedTimer budget;
            budget.start();
            for (int i = qvecReduced.size() - 2; i >= 1 && budget.elapsed() < 30000; --i) {
                QVector<STRCT_Step> qvecTry = qvecReduced;
                qvecTry.remove(i);
                CLS_Run run(uiSeed);
                QString qstrTryWhy;
                const int iTryFail = run.Play(qvecTry, qstrTryWhy);
                if (iTryFail == qvecTry.size() - 1) {
                    qvecReduced = qvecTry;
                    qstrReducedWhy = qstrTryWhy;
                }
            }
            QStringList qlstPrefix, qlstReduced;
            for (int i = 0; i < qvecPrefix.size(); ++i)
                qlstPrefix << QString("  %1. %2").arg(i + 1).arg(Describe(qvecPrefix.at(i)));
            for (int i = 0; i < qvecReduced.size(); ++i)
                qlstReduced << QString("  %1. %2").arg(i + 1).arg(Describe(qvecReduced.at(i)));
            const QString qstrReport = QString("seed %1: shortest failing prefix %2 of %3 steps "
                                               "(WGT_MODEL_SEEDS=%1 WGT_MODEL_STEPS=%2)\n%4\n"
                                               "%5\nreduced to %6 steps:\n%7\n%8")
                                           .arg(uiSeed)
                                           .arg(qvecPrefix.size())
                                           .arg(iSteps)
                                           .arg(qlstPrefix.join("\n"), qstrWhy)
                                           .arg(qvecReduced.size())
                                           .arg(qlstReduced.join("\n"), qstrReducedWhy);
            fprintf(stderr, "%s\n", qstrReport.toLocal8Bit().constData());
            QFAIL(qPrintable(QString("seed %1 fails at step %2; see the report above")
                                 .arg(uiSeed)
                                 .arg(qvecPrefix.size())));
        }
        qInfo("%d seeds x %d steps in %lld ms", qvecSeeds.size(), iSteps, timer.elapsed());
    }
};

QTEST_MAIN(tst_ModelDeviceTree)
#include "tst_ModelDeviceTree.moc"
