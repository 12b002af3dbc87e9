#include "CLS_WgtDeviceTree.h"

#include "CLS_DeviceTreeBGThread.h"

#include "CLS_DevManage.h"
#include "CLS_IApp.h"
#include "CLS_IResourceTree.h"
#include "CLS_RowIconCache.h"
#include "CLS_TreeRowBatch.h"
#include "CLS_WgtBaseTreeWidget.h"
#include "CLS_WgtTreeWidget.h"
#include "DevStructDefine.h"
#include "I_CustomTreeManage.h"
#include "Logger.h"
#include "LxAppManager.h"
#include "Param.h"
#include "SiblingFence.h"

#include <QCoreApplication>
#include <QFile>
#include <QMetaMethod>
#include <QMutexLocker>
#include <QPointer>
#include <QThread>
#include <QVBoxLayout>

#include <algorithm>
#include <cstring>

namespace {

const char* const CONST_pModule = "WgtTreeWidget";

// What a device-layer operation that threw counts as: a failed call.
const STRCT_DevResult CONST_stFailedResult{-1, QString(), QMap<QString, QString>()};

const QString CONST_qstrResourceRootId = QStringLiteral("resource_root_id");
const QString CONST_qstrCustomRootId = QStringLiteral("custom_root_id");
const QString CONST_qstrFavoriteRootId = QStringLiteral("favorite_root_id");
const QString CONST_qstrPassengerFlowRootId = QStringLiteral("passengerflow_root_id");

constexpr int CONST_iCheckedWatcherMs = 200;
constexpr int CONST_iFlagsNoDrag = 0x61;      // selectable, enabled, auto tristate
constexpr int CONST_iFlagsNoDragCheck = 0x71; // the same, user checkable

// Type codes of the resource model.
constexpr int CONST_iTypeGroup = 2;
constexpr int CONST_iTypeHost = 3;
constexpr int CONST_iTypeChannel = 4;
constexpr int CONST_iTypeAlarmIn = 5;
constexpr int CONST_iTypeAlarmOut = 6;
constexpr int CONST_iTypeDecoder = 12;
constexpr int CONST_iTypeDecoderOut = 13;
constexpr int CONST_iTypeDecoderIn = 17;

// Bind kinds: pad, car, way; 9 marks an image channel.
constexpr int CONST_iBindPad = 2;
constexpr int CONST_iBindCar = 3;
constexpr int CONST_iBindWay = 4;
constexpr int CONST_iBindImageChannel = 9;

bool IsRootKey(const QString& _qstrKey)
{
    return _qstrKey == CONST_qstrResourceRootId || _qstrKey == CONST_qstrCustomRootId ||
           _qstrKey == CONST_qstrFavoriteRootId || _qstrKey == CONST_qstrPassengerFlowRootId;
}

// The channel number of a channel-like record (codes 4, 5, 6, 13 and 17). Those records are
// defined by the device-management library, not here; each opens its own fields with an int, the
// channel number, which sits right behind the STRCT_VideoItem base. Only call it for those codes.
int ReadChannelNo(const STRCT_VideoItem* _pItem)
{
    int iChannelNo = 0;
    std::memcpy(&iChannelNo, reinterpret_cast<const char*>(_pItem) + sizeof(STRCT_VideoItem), sizeof(int));
    return iChannelNo;
}

QString FromUtf8(const std::string& _str)
{
    return QString::fromUtf8(_str.data(), static_cast<int>(_str.size()));
}

bool IsBoundKind(int _iDevBindType)
{
    return _iDevBindType == CONST_iBindPad || _iDevBindType == CONST_iBindCar ||
           _iDevBindType == CONST_iBindWay;
}

// QMap::insert for keys that mostly come in ascending order, as a build made from a map gives them:
// with the end as hint the map appends after one comparison instead of searching from its root. A
// key out of order, or one the map holds, is inserted (or replaced) as by the plain insert.
template <typename Key, typename Value>
void InsertAtEnd(QMap<Key, Value>& _qmapTarget, const Key& _key, const Value& _value)
{
    _qmapTarget.insert(_qmapTarget.cend(), _key, _value);
}

// The key of the root in a build's source. Resource and raw sources know no passenger-flow root.
QString BuildRootKey(n_DevTreeType _iTreeType, bool _blNodes)
{
    if (_blNodes && _iTreeType == DEV_TREE_PASSENGER_FLOW)
        return CONST_qstrPassengerFlowRootId;
    if (_iTreeType == DEV_TREE_FAVORITE)
        return CONST_qstrFavoriteRootId;
    return _iTreeType == DEV_TREE_RESOURCE ? CONST_qstrResourceRootId : CONST_qstrCustomRootId;
}

// Every build: the root's row first (a negative result ends the build with it), then one row per
// entry in key order. Root keys are passed over (a node source also passes over the passenger-flow
// root), as are empty keys and entries _fnItem refuses; _fnKeep stores each row made.
template <typename Source, typename RootFn, typename ItemFn, typename KeepFn>
int BuildRows(const Source& _qmapSource, bool _blNodes, RootFn _fnRoot, ItemFn _fnItem, KeepFn _fnKeep)
{
    CLS_CustomTreeNode nodeRoot;
    CLS_TreeItem clsRoot;
    const int iRet = _fnRoot(nodeRoot, clsRoot);
    if (iRet < 0)
        return iRet;
    _fnKeep(nodeRoot, clsRoot, true);
    for (auto it = _qmapSource.cbegin(); it != _qmapSource.cend(); ++it) {
        const QString& qstrKey = it.key();
        if (qstrKey.isEmpty() ||
            (_blNodes ? IsRootKey(qstrKey)
                      : qstrKey == CONST_qstrResourceRootId || qstrKey == CONST_qstrCustomRootId ||
                            qstrKey == CONST_qstrFavoriteRootId))
            continue;
        CLS_CustomTreeNode node;
        CLS_TreeItem clsItem;
        if (_fnItem(it.value(), node, clsItem) < 0)
            continue;
        _fnKeep(node, clsItem, false);
    }
    return 0;
}

} // namespace

// ---- construction and teardown -------------------------------------------------------------------

CLS_WgtDeviceTree::CLS_WgtDeviceTree(QWidget* parent, n_DevTreeType _iTreeType, bool _blDrag, bool _blCheck,
                                     bool _blRightMenu, bool _blSearch, bool _blDrop,
                                     n_ItemBtnShowType _iBtnShowType)
    : QWidget(parent), m_iTreeType(_iTreeType), m_blDrag(_blDrag), m_blCheck(_blCheck)
{
    // Made with our own parent; the layout below moves it under this widget.
    m_pTreePanel =
        new CLS_WgtTreeWidget(parent, _blCheck, _blDrag, _blSearch, _blRightMenu, _blDrop, _iBtnShowType);

    if (m_iTreeType == DEV_TREE_RESOURCE)
        m_qsetNodeTypes = {CONST_iTypeHost,      CONST_iTypeDecoder,  CONST_iTypeChannel,
                           CONST_iTypeAlarmIn,   CONST_iTypeAlarmOut, CONST_iTypeDecoderIn,
                           CONST_iTypeDecoderOut};
    else
        m_qsetNodeTypes = {CONST_iTypeGroup, CONST_iTypeChannel};
    m_qsetDevBindTypes = {-1, 0, 1, 2, 3, 4};

    auto* pLayout = new QVBoxLayout;
    pLayout->addWidget(m_pTreePanel);
    setLayout(pLayout);

    m_pOperatorView = new CLS_DeviceTreeOperatorView(PanelTree(), &m_qmapNodes, this);
    m_pWordSearch = new CLS_DeviceTreeWordSearch(m_pTreePanel, &m_qmapNodes, this);
    m_pMultiSelect = new CLS_DeviceTreeMultiSelect(PanelTree(), &m_qmapNodes, this);
    m_pAccessible = new CLS_DeviceTreeAccessible(m_pTreePanel, &m_qmapNodes, this);
    LoadPicPath();
    qRegisterMetaType<CLS_CustomTreeNode>("CLS_CustomTreeNode");
    ConnectSignals();

    m_tmCheckedWatcher.setInterval(CONST_iCheckedWatcherMs);
    connect(&m_tmCheckedWatcher, &QTimer::timeout, this, &CLS_WgtDeviceTree::SlotCheckedSignalWatcherTimeout);

    // Automatic: a caller on another thread hands over to this widget's thread.
    connect(this, &CLS_WgtDeviceTree::SignInit, this, &CLS_WgtDeviceTree::SlotInit);
    connect(this, &CLS_WgtDeviceTree::SignClear, this, &CLS_WgtDeviceTree::Clear);
}

CLS_WgtDeviceTree::~CLS_WgtDeviceTree()
{
    StopStatusThread();
    delete std::exchange(m_pOperatorView, nullptr); // before the model it reads
    ClearData();
    // The panel outlives our fields (QWidget deletes it later): cut its signals to our slots first.
    if (m_pTreePanel != nullptr)
        disconnect(m_pTreePanel, nullptr, this, nullptr);
}

void CLS_WgtDeviceTree::ConnectSignals()
{
    if (m_pTreePanel != nullptr) {
        connect(m_pTreePanel, &CLS_WgtTreeWidget::SignClicked, this, &CLS_WgtDeviceTree::SlotClicked);
        connect(m_pTreePanel, &CLS_WgtTreeWidget::SignDblClicked, this, &CLS_WgtDeviceTree::SlotDblClicked);
        connect(m_pTreePanel, &CLS_WgtTreeWidget::SignCheckedStatusChanged, this,
                &CLS_WgtDeviceTree::SlotCheckedStatusChange);
        connect(m_pTreePanel, &CLS_WgtTreeWidget::SignSelected, this, &CLS_WgtDeviceTree::SlotSelected);
        connect(m_pTreePanel, &CLS_WgtTreeWidget::SignRightClicked, this,
                &CLS_WgtDeviceTree::SlotRightClicked);
        connect(m_pTreePanel, &CLS_WgtTreeWidget::SignTreeMenuItemClicked, this,
                &CLS_WgtDeviceTree::SlotTreeMenuItemClicked);
        connect(m_pTreePanel, &CLS_WgtTreeWidget::SignClickButton, this, &CLS_WgtDeviceTree::SlotClickButton);
        connect(m_pTreePanel, &CLS_WgtTreeWidget::SignDroped, this, &CLS_WgtDeviceTree::SlotDroped);
        // SignChecked is left unconnected on purpose: SlotChecked is for pages to wire.
    }
    if (I_CustomTreeManage* pCustomTree =
            WGT_SIBLING_CALL("GetCustomTree", nullptr, DevManage::GetCustomTree())) {
        connect(pCustomTree, &I_CustomTreeManage::SignMoveUpOneRow, this, &CLS_WgtDeviceTree::MoveUpOneRow);
        connect(pCustomTree, &I_CustomTreeManage::SignMoveDownOneRow, this,
                &CLS_WgtDeviceTree::MoveDownOneRow);
    }
}

void CLS_WgtDeviceTree::StartStatusThread()
{
    // The thread object becomes a child of this widget, so it is made on the widget's thread: an
    // Init on another thread hands this step over, behind its SignInit.
    if (QThread::currentThread() != thread()) {
        QMetaObject::invokeMethod(
            this, [this] { StartStatusThread(); }, Qt::QueuedConnection);
        return;
    }
    if (m_pBGThread == nullptr) {
        m_pBGThread = new CLS_DeviceTreeBGThread(this);
        // By signature, as automatic connections: the worker's reports arrive queued on this thread.
        connect(m_pBGThread, SIGNAL(SignChannelStatusChanged(QVariant)), this,
                SLOT(UpdateAllChannelsStatus(QVariant)));
        connect(this, SIGNAL(SignChannelStatusUpdate()), m_pBGThread, SLOT(SlotChannelStatusChanged()));
    }
    if (!m_pBGThread->isRunning()) {
        m_pBGThread->Start(); // -1 after an exit by the application state: the old cache stays
        m_pBGThread->start(QThread::InheritPriority);
    }
}

void CLS_WgtDeviceTree::StopStatusThread()
{
    if (m_pBGThread == nullptr)
        return;
    disconnect(m_pBGThread, SIGNAL(SignChannelStatusChanged(QVariant)), this,
               SLOT(UpdateAllChannelsStatus(QVariant)));
    disconnect(this, SIGNAL(SignChannelStatusUpdate()), m_pBGThread, SLOT(SlotChannelStatusChanged()));
    m_pBGThread->Stop();
    delete m_pBGThread; // waits until the worker has left its loop
    m_pBGThread = nullptr;
}

// ---- model and build ------------------------------------------------------------------------------

void CLS_WgtDeviceTree::Clear()
{
    if (m_pTreePanel == nullptr)
        return;
    m_pOperatorView->BeforeClear();
    CLS_TreeRowBatch batch(PanelTree());
    m_pTreePanel->Clear();
    // The clear queued by an Init on a foreign thread: that Init already emptied the model before
    // building the new one, which must survive this late clear of the rows.
    if (sender() == this && !m_blDirectClear && m_iQueuedRowClears.loadAcquire() > 0) {
        m_iQueuedRowClears.deref();
        return;
    }
    ClearData();
}

void CLS_WgtDeviceTree::ClearData()
{
    m_qmapNodes.clear();
    m_qmapDevIdToTreeId.clear();
    m_qmapItemBtns.clear();
    m_qstrRootId = QString();
}

void CLS_WgtDeviceTree::SetName(const QString& _qstrName)
{
    setProperty("ObjName", _qstrName);
}

QString CLS_WgtDeviceTree::GetName()
{
    return property("ObjName").toString();
}

int CLS_WgtDeviceTree::UpdateNodesMap(const QMap<QString, CLS_CustomTreeNode>& _qmapNodes)
{
    for (auto it = _qmapNodes.cbegin(); it != _qmapNodes.cend(); ++it) {
        m_qmapNodes.insert(it.key(), it.value());
        m_pOperatorView->NoteStatus(it.key()); // a rewritten node may change the counts
    }
    return 0;
}

int CLS_WgtDeviceTree::LoadStyle()
{
    return 0;
}

int CLS_WgtDeviceTree::LoadLang()
{
    return 0;
}

void CLS_WgtDeviceTree::EmitClear()
{
    // On this widget's thread the clear runs within the emission. From another thread it is queued
    // and would arrive after the new model is built; so the model part is done here and the queued
    // clear only empties the rows (see Clear).
    if (QThread::currentThread() != thread()) {
        ClearData();
        m_iQueuedRowClears.ref();
        emit SignClear();
        return;
    }
    m_blDirectClear = true;
    emit SignClear();
    m_blDirectClear = false;
}

int CLS_WgtDeviceTree::Init(const QString& _qstrRootName,
                            const QMap<int, QVector<CLS_ItemButton>>& _qmapItemBtns,
                            const QSet<int>& _qsetNodeTypes, const QSet<int>& _qsetDevBindTypes)
{
    // Every call into a sibling goes through the fence. One that throws counts as a missing object;
    // a fetch that throws fails the Init before anything is cleared (its code alone is ignored).
    auto pFunGetAppData =
        reinterpret_cast<LxAppManager::PFun_GetAppData>(LxAppManager::GetModuleFun("GetAppData"));
    CLS_IAppData* pCommonData =
        pFunGetAppData != nullptr ? WGT_SIBLING_CALL("GetAppData", nullptr, pFunGetAppData()) : nullptr;
    if (pCommonData == nullptr ||
        WGT_SIBLING_CALL("GetDataManager", nullptr, pCommonData->GetDataManager()) == nullptr) {
        WGT_LOG(CONST_pModule, 3) << "nullptr == pCommonData ";
        return -1;
    }
    // Asked again; only its presence counts.
    if (WGT_SIBLING_CALL("GetDataManager", nullptr, pCommonData->GetDataManager()) == nullptr) {
        WGT_LOG(CONST_pModule, 3) << "nullptr == pDataManager ";
        return -1;
    }

    if (m_iTreeType == DEV_TREE_FAVORITE) {
        I_CustomTreeManage* pCustomTree =
            WGT_SIBLING_CALL("GetCustomTree", nullptr, DevManage::GetCustomTree());
        if (pCustomTree == nullptr) {
            WGT_LOG(CONST_pModule, 3) << "nullptr == pCustomTree ";
            return -1;
        }
        QMap<QString, CLS_CustomTreeNode> qmapNodes;
        if (!WGT_SIBLING_RUN("GetNodesOfRoot",
                             pCustomTree->GetNodesOfRoot(CONST_qstrFavoriteRootId, qmapNodes, 0)))
            return -1;
        return Init(qmapNodes, _qstrRootName, _qmapItemBtns, _qsetNodeTypes, _qsetDevBindTypes);
    }
    if (m_iTreeType == DEV_TREE_RESOURCE) {
        CLS_IResourceTree* pResourceTree =
            WGT_SIBLING_CALL("GetResourceTree", nullptr, DevManage::GetResourceTree());
        if (pResourceTree == nullptr) {
            WGT_LOG(CONST_pModule, 3) << "nullptr == pResourceTree ";
            return -1;
        }
        QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapData;
        if (!WGT_SIBLING_RUN("GetAllItems", pResourceTree->GetAllItems(qmapData)))
            return -1;
        return Init(qmapData, _qstrRootName, _qmapItemBtns, _qsetNodeTypes, _qsetDevBindTypes);
    }
    I_CustomTreeManage* pCustomTree = WGT_SIBLING_CALL("GetCustomTree", nullptr, DevManage::GetCustomTree());
    if (pCustomTree == nullptr) {
        WGT_LOG(CONST_pModule, 3) << "nullptr == pCustomTree ";
        return -1;
    }
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    if (!WGT_SIBLING_RUN("GetAllNodes", pCustomTree->GetAllNodes(qmapNodes, 0)))
        return -1;
    return Init(qmapNodes, _qstrRootName, _qmapItemBtns, _qsetNodeTypes, _qsetDevBindTypes);
}

int CLS_WgtDeviceTree::Init(QMap<QString, CLS_CustomTreeNode>& _qmapNodes, QString _qstrRootName,
                            QMap<int, QVector<CLS_ItemButton>> _qmapItemBtns, QSet<int> _qsetNodeTypes,
                            QSet<int> _qsetDevBindTypes)
{
    if (m_pTreePanel == nullptr)
        return -1;
    EmitClear();

    // The root goes into the caller's map (kept: callers read it back).
    auto InsertRoot = [&](const QString& _qstrKey) {
        CLS_CustomTreeNode nodeRoot;
        nodeRoot.m_qstrTreeId = _qstrKey;
        nodeRoot.m_qstrDevId = _qstrKey;
        nodeRoot.m_qstrName = _qstrRootName;
        nodeRoot.m_iType = CONST_iTypeGroup;
        _qmapNodes.insert(_qstrKey, nodeRoot);
    };
    if (!_qmapNodes.contains(CONST_qstrCustomRootId) &&
        (m_iTreeType == DEV_TREE_GENERIC || m_iTreeType == DEV_TREE_CUSTOM))
        InsertRoot(CONST_qstrCustomRootId);
    else if (!_qmapNodes.contains(CONST_qstrFavoriteRootId) && m_iTreeType == DEV_TREE_FAVORITE)
        InsertRoot(CONST_qstrFavoriteRootId);
    else if (m_iTreeType == DEV_TREE_PASSENGER_FLOW)
        InsertRoot(CONST_qstrPassengerFlowRootId); // replaces whatever the caller put there

    if (!_qsetNodeTypes.isEmpty())
        m_qsetNodeTypes = _qsetNodeTypes;
    if (!_qsetDevBindTypes.isEmpty())
        m_qsetDevBindTypes = _qsetDevBindTypes;
    m_qmapItemBtns = _qmapItemBtns;

    QMap<QString, CLS_TreeItem> qmapItems;
    const int iRet = BuildTreeItems(static_cast<const QMap<QString, CLS_CustomTreeNode>&>(_qmapNodes),
                                    _qstrRootName, qmapItems);
    if (iRet < 0)
        return iRet;

    emit SignInit(m_qstrRootId, QVariant::fromValue(qmapItems));
    StartStatusThread();
    return 0;
}

int CLS_WgtDeviceTree::Init(QMap<QString, STRCT_VideoItem*> _qmapData, QString _qstrRootName,
                            QMap<int, QVector<CLS_ItemButton>> _qmapItemBtns, QSet<int> _qsetNodeTypes,
                            QSet<int> _qsetDevBindTypes, QMap<QString, CLS_CustomTreeNode> _qmapNodes)
{
    if (_qmapData.isEmpty() || m_pTreePanel == nullptr)
        return -1;
    EmitClear();

    if (!_qsetNodeTypes.isEmpty())
        m_qsetNodeTypes = _qsetNodeTypes;
    if (!_qsetDevBindTypes.isEmpty())
        m_qsetDevBindTypes = _qsetDevBindTypes;
    m_qmapItemBtns = _qmapItemBtns;

    QMap<QString, CLS_TreeItem> qmapItems;
    const int iRet = BuildTreeItems(_qmapData, _qstrRootName, qmapItems);
    if (iRet < 0)
        return iRet;

    emit SignInit(m_qstrRootId, QVariant::fromValue(qmapItems));
    StartStatusThread();

    // Lookup data only: no row, no id-map entry.
    for (auto it = _qmapNodes.cbegin(); it != _qmapNodes.cend(); ++it) {
        m_qmapNodes.insert(it.key(), it.value());
        m_pOperatorView->NoteStatus(it.key()); // a rewritten node may change the counts
    }
    return 0;
}

int CLS_WgtDeviceTree::Init(QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapData, QString _qstrRootName,
                            QMap<int, QVector<CLS_ItemButton>> _qmapItemBtns, QSet<int> _qsetNodeTypes,
                            QSet<int> _qsetDevBindTypes)
{
    if (m_pTreePanel == nullptr)
        return -1;

    if (m_iTreeType == DEV_TREE_RESOURCE && !_qmapData.contains(CONST_qstrResourceRootId)) {
        // Kept as it stands: the object dies at the end of this block and the caller's map keeps an
        // expired entry; the build's fallback makes the root.
        auto spRoot = std::make_shared<STRCT_VideoGroup>();
        spRoot->m_strId = CONST_qstrResourceRootId.toStdString();
        spRoot->m_strTreeId = CONST_qstrResourceRootId.toStdString();
        spRoot->m_strName = _qstrRootName.toUtf8().toStdString();
        spRoot->m_strParentId.clear();
        spRoot->m_iOrderNo = 0;
        _qmapData.insert(CONST_qstrResourceRootId, std::weak_ptr<STRCT_VideoItem>(spRoot));
    }

    EmitClear();

    if (!_qsetNodeTypes.isEmpty())
        m_qsetNodeTypes = _qsetNodeTypes;
    if (!_qsetDevBindTypes.isEmpty())
        m_qsetDevBindTypes = _qsetDevBindTypes;
    m_qmapItemBtns = _qmapItemBtns;

    QMap<QString, CLS_TreeItem> qmapItems;
    const int iRet =
        BuildTreeItems(static_cast<const QMap<QString, std::weak_ptr<STRCT_VideoItem>>&>(_qmapData),
                       _qstrRootName, qmapItems);
    if (iRet < 0)
        return iRet;

    emit SignInit(m_qstrRootId, QVariant::fromValue(qmapItems));
    StartStatusThread();
    return 0;
}

int CLS_WgtDeviceTree::BuildTreeItems(const QMap<QString, STRCT_VideoItem*>& _qmapData,
                                      const QString& _qstrRootName, QMap<QString, CLS_TreeItem>& _qmapItems)
{
    STRCT_VideoItem* pRoot = _qmapData.value(BuildRootKey(m_iTreeType, false), nullptr);
    return BuildRows(
        _qmapData, false,
        [&](CLS_CustomTreeNode& _node, CLS_TreeItem& _clsItem) {
            return pRoot == nullptr ? -1 : CreateItem(_clsItem, _node, pRoot, _qstrRootName);
        },
        [this](STRCT_VideoItem* _pItem, CLS_CustomTreeNode& _node, CLS_TreeItem& _clsItem) {
            if (_pItem == nullptr || _pItem->m_strId.empty())
                return -1;
            return CreateItem(_clsItem, _node, _pItem, QString());
        },
        [&](const CLS_CustomTreeNode& _node, const CLS_TreeItem& _clsItem, bool _blRoot) {
            KeepBuiltRow(_node, _clsItem, _blRoot, _qmapItems);
        });
}

int CLS_WgtDeviceTree::BuildTreeItems(const QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapData,
                                      const QString& _qstrRootName, QMap<QString, CLS_TreeItem>& _qmapItems)
{
    // A weak build always has a root object: a stand-in group when the data has none.
    std::shared_ptr<STRCT_VideoItem> spRoot = _qmapData.value(BuildRootKey(m_iTreeType, false)).lock();
    if (!spRoot) {
        auto spGroup = std::make_shared<STRCT_VideoGroup>();
        spGroup->m_strId = CONST_qstrResourceRootId.toStdString();
        spRoot = spGroup;
    }
    return BuildRows(
        _qmapData, false,
        [&](CLS_CustomTreeNode& _node, CLS_TreeItem& _clsItem) {
            return CreateItem(_clsItem, _node, std::weak_ptr<STRCT_VideoItem>(spRoot), _qstrRootName);
        },
        [this](const std::weak_ptr<STRCT_VideoItem>& _wpItem, CLS_CustomTreeNode& _node,
               CLS_TreeItem& _clsItem) {
            {
                std::shared_ptr<STRCT_VideoItem> spItem = _wpItem.lock();
                if (!spItem || spItem->m_strId.empty())
                    return -1;
            }
            return CreateItem(_clsItem, _node, _wpItem, QString());
        },
        [&](const CLS_CustomTreeNode& _node, const CLS_TreeItem& _clsItem, bool _blRoot) {
            KeepBuiltRow(_node, _clsItem, _blRoot, _qmapItems);
        });
}

int CLS_WgtDeviceTree::BuildTreeItems(const QMap<QString, CLS_CustomTreeNode>& _qmapNodes,
                                      const QString& _qstrRootName, QMap<QString, CLS_TreeItem>& _qmapItems)
{
    return BuildRows(
        _qmapNodes, true,
        [&](CLS_CustomTreeNode& _node, CLS_TreeItem& _clsItem) {
            _node = _qmapNodes.value(BuildRootKey(m_iTreeType, true)); // a default node when absent
            return CreateItem(_clsItem, _node, static_cast<STRCT_VideoItem*>(nullptr), _qstrRootName);
        },
        [this](const CLS_CustomTreeNode& _nodeIn, CLS_CustomTreeNode& _node, CLS_TreeItem& _clsItem) {
            _node = _nodeIn;
            return CreateItem(_clsItem, _node, static_cast<STRCT_VideoItem*>(nullptr), QString());
        },
        [&](const CLS_CustomTreeNode& _node, const CLS_TreeItem& _clsItem, bool _blRoot) {
            KeepBuiltRow(_node, _clsItem, _blRoot, _qmapItems);
        });
}

void CLS_WgtDeviceTree::KeepBuiltRow(const CLS_CustomTreeNode& _node, const CLS_TreeItem& _clsItem,
                                     bool _blRoot, QMap<QString, CLS_TreeItem>& _qmapItems)
{
    // The node's own tree id, not the key it came under.
    InsertAtEnd(m_qmapNodes, _node.m_qstrTreeId, _node);
    InsertAtEnd(m_qmapDevIdToTreeId, _node.m_qstrDevId, _node.m_qstrTreeId);
    if (_blRoot)
        m_qstrRootId = _node.m_qstrTreeId;
    InsertAtEnd(_qmapItems, _node.m_qstrTreeId, _clsItem);
}

int CLS_WgtDeviceTree::BuildTreeItems(const QString& _qstrRootId, QMap<QString, CLS_TreeItem>& _qmapItems)
{
    for (auto it = m_qmapNodes.cbegin(); it != m_qmapNodes.cend(); ++it) {
        if (it.key().isEmpty())
            continue;
        CLS_TreeItem clsItem;
        if (InitItem(it.value(), clsItem, it.key() == _qstrRootId, false) < 0)
            continue;
        _qmapItems.insert(it.key(), clsItem);
    }
    return 0;
}

int CLS_WgtDeviceTree::BuildTreeNodes(const QMap<QString, STRCT_VideoItem*>& _qmapData,
                                      const QString& _qstrRootName, QString& _qstrRootId)
{
    const QString qstrRootKey =
        m_iTreeType == DEV_TREE_RESOURCE ? CONST_qstrResourceRootId : CONST_qstrCustomRootId;
    STRCT_VideoItem* pRoot = _qmapData.value(qstrRootKey, nullptr);
    if (pRoot == nullptr)
        return -1;

    CLS_CustomTreeNode nodeRoot;
    if (InitNode(pRoot, nodeRoot, _qstrRootName) < 0)
        return -1;
    m_qmapNodes.insert(nodeRoot.m_qstrTreeId, nodeRoot);
    m_qmapDevIdToTreeId.insert(nodeRoot.m_qstrDevId, nodeRoot.m_qstrTreeId);
    _qstrRootId = nodeRoot.m_qstrTreeId;

    for (auto it = _qmapData.cbegin(); it != _qmapData.cend(); ++it) {
        const QString& qstrKey = it.key();
        if (qstrKey.isEmpty() || qstrKey == CONST_qstrResourceRootId || qstrKey == CONST_qstrCustomRootId)
            continue;
        STRCT_VideoItem* pItem = it.value();
        if (pItem == nullptr || pItem->m_strId.empty())
            continue;
        CLS_CustomTreeNode node;
        if (InitNode(pItem, node, QString()) < 0)
            continue;
        m_qmapNodes.insert(node.m_qstrTreeId, node);
        m_qmapDevIdToTreeId.insert(node.m_qstrDevId, node.m_qstrTreeId);
    }
    return 0;
}

int CLS_WgtDeviceTree::GetVideoData(QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapData)
{
    // Sibling calls through the fence: a fetch that throws gives -1, a lookup that throws leaves its
    // resource out as one that isn't found.
    if (m_iTreeType == DEV_TREE_RESOURCE) {
        CLS_IResourceTree* pResourceTree =
            WGT_SIBLING_CALL("GetResourceTree", nullptr, DevManage::GetResourceTree());
        if (pResourceTree == nullptr) {
            WGT_LOG(CONST_pModule, 3) << "nullptr == pResourceTree ";
            return -1;
        }
        if (!WGT_SIBLING_RUN("GetAllItems", pResourceTree->GetAllItems(_qmapData)))
            return -1;
        return 0;
    }

    I_CustomTreeManage* pCustomTree = WGT_SIBLING_CALL("GetCustomTree", nullptr, DevManage::GetCustomTree());
    if (pCustomTree == nullptr) {
        WGT_LOG(CONST_pModule, 3) << "nullptr == pCustomTree ";
        return -1;
    }
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    if (!WGT_SIBLING_RUN("GetAllNodes", pCustomTree->GetAllNodes(qmapNodes, 0)))
        return -1;

    // Keyed by tree id, found by device id: one channel may stand under several tree ids.
    for (auto it = qmapNodes.cbegin(); it != qmapNodes.cend(); ++it) {
        const CLS_CustomTreeNode& node = it.value();
        if (node.m_iType == CONST_iTypeGroup)
            continue;
        CLS_IResourceTree* pResourceTree =
            WGT_SIBLING_CALL("GetResourceTree", nullptr, DevManage::GetResourceTree());
        if (pResourceTree == nullptr) {
            WGT_LOG(CONST_pModule, 3) << "nullptr == pResourceTree ";
            return -1;
        }
        std::weak_ptr<STRCT_VideoItem> wpItem;
        if (WGT_SIBLING_CALL("GetItem", CONST_stFailedResult,
                             pResourceTree->GetItem(wpItem, node.m_qstrDevId))
                .m_iCode >= 0)
            _qmapData.insert(node.m_qstrTreeId, wpItem);
    }
    return 0;
}

void CLS_WgtDeviceTree::SlotInit(QString _qstrRootId, QVariant _varData)
{
    using ItemMap = QMap<QString, CLS_TreeItem>;
    if (!_varData.isValid() || !_varData.canConvert<ItemMap>())
        return;
    const ItemMap qmapItems = _varData.value<ItemMap>();
    if (m_pTreePanel == nullptr)
        return;
    CLS_TreeRowBatch batch(PanelTree());
    m_pTreePanel->Init(_qstrRootId, qmapItems, true);

    m_pTreePanel->SetAllExpandStatus(true);
    ExpandHostItem(); // folds groups, hosts and decoders back in
    m_pOperatorView->AfterRowsBuilt();
}

void CLS_WgtDeviceTree::ExpandHostItem()
{
    if (m_pTreePanel == nullptr)
        return;
    // One batch: the column is sized once, after the last fold.
    CLS_TreeRowBatch batch(PanelTree());

    // Collapses, despite the name (kept: pages call it by this name).
    for (auto it = m_qmapNodes.cbegin(); it != m_qmapNodes.cend(); ++it) {
        if (it.key() == m_qstrRootId)
            continue;
        const int iType = it.value().m_iType;
        if (iType == CONST_iTypeGroup || iType == CONST_iTypeHost || iType == CONST_iTypeDecoder)
            m_pTreePanel->SetItemExpandStatus(it.key(), TREE_COLLAPSE);
    }
}

void CLS_WgtDeviceTree::ExpandAll()
{
    if (CLS_WgtBaseTreeWidget* pTree = PanelTree())
        pTree->SetAllExpandStatus(true); // QTreeView::expandAll, in a batch
}

void CLS_WgtDeviceTree::CollapseAll()
{
    if (CLS_WgtBaseTreeWidget* pTree = PanelTree())
        pTree->SetAllExpandStatus(false); // QTreeView::collapseAll, in a batch
}

CLS_WgtBaseTreeWidget* CLS_WgtDeviceTree::PanelTree() const
{
    return m_pTreePanel != nullptr ? m_pTreePanel->GetBaseTree() : nullptr;
}

// ---- presentation -----------------------------------------------------------------------------------

void CLS_WgtDeviceTree::LoadPicPath()
{
    const QString qstrAppDir = QCoreApplication::applicationDirPath();
    m_qstrPicPath = QString("%1/resource/skin/dark/WgtTreeWidget/images/").arg(qstrAppDir);
    const QString qstrSkin = QString::fromStdString(Param::GetParam("SystemConfig", "skin", "dark"));
    if (qstrSkin.isEmpty())
        return;
    m_qstrPicPath = QString("%1/resource/skin/%2/WgtTreeWidget/images/").arg(qstrAppDir, qstrSkin);
    if (!QFile::exists(m_qstrPicPath))
        m_qstrPicPath = QString("%1/resource/skin/dark/WgtTreeWidget/images/").arg(qstrAppDir);
}

int CLS_WgtDeviceTree::InitNode(STRCT_VideoItem* _pItem, CLS_CustomTreeNode& _node,
                                const QString& _qstrRootName)
{
    if (_pItem == nullptr)
        return -1;
    const int iType = _pItem->GetType();
    if (_qstrRootName.isEmpty() && !m_qsetNodeTypes.contains(iType))
        return -1;
    if (!m_qsetDevBindTypes.isEmpty() && !m_qsetDevBindTypes.contains(_pItem->m_iDevBindType))
        return -1;

    if (iType == CONST_iTypeDecoderIn || iType == CONST_iTypeDecoderOut) {
        _node.m_iChannelNo = ReadChannelNo(_pItem);
        _node.m_iSortNo = _pItem->m_iOrderNo;
    } else if (iType == CONST_iTypeChannel) {
        _node.m_iChannelNo = ReadChannelNo(_pItem);
        _node.m_iSortNo = _node.m_iChannelNo;
    }
    _node.m_qstrDevId = FromUtf8(_pItem->m_strId);
    _node.m_qstrName = _qstrRootName.isEmpty() ? FromUtf8(_pItem->m_strName) : _qstrRootName;
    _node.m_qstrTreeId = _qstrRootName.isEmpty() ? FromUtf8(_pItem->m_strTreeId) : FromUtf8(_pItem->m_strId);
    _node.m_qstrDevParentId = FromUtf8(_pItem->m_strParentId);
    _node.m_qstrTreeParentId = _node.m_qstrDevParentId;
    _node.m_iType = iType;
    _node.m_iDevBindType = _pItem->m_iDevBindType;
    _node.m_iStatus = _pItem->m_iStatus;
    _node.m_qstrExtend = FromUtf8(_pItem->m_strExtend);
    // A channel sorts by its number only while its order number is 0.
    if (_pItem->m_iOrderNo != 0)
        _node.m_iSortNo = _pItem->m_iOrderNo;
    return 0;
}

int CLS_WgtDeviceTree::InitNode(std::weak_ptr<STRCT_VideoItem> _pItem, CLS_CustomTreeNode& _node,
                                const QString& _qstrRootName)
{
    const std::shared_ptr<STRCT_VideoItem> spItem = _pItem.lock(); // held for the whole call
    if (!spItem)
        return -1;
    const int iType = spItem->GetType();
    if (_qstrRootName.isEmpty() && !m_qsetNodeTypes.contains(iType))
        return -1;
    if (!m_qsetDevBindTypes.isEmpty() && !m_qsetDevBindTypes.contains(spItem->m_iDevBindType))
        return -1;

    // Differs from the raw form on purpose: 13 keeps -1, and the sort number is the order number.
    if (iType == CONST_iTypeChannel || iType == CONST_iTypeDecoderIn)
        _node.m_iChannelNo = ReadChannelNo(spItem.get());
    _node.m_qstrDevId = FromUtf8(spItem->m_strId);
    _node.m_qstrName = _qstrRootName.isEmpty() ? FromUtf8(spItem->m_strName) : _qstrRootName;
    _node.m_qstrTreeId = _qstrRootName.isEmpty() ? FromUtf8(spItem->m_strTreeId) : FromUtf8(spItem->m_strId);
    _node.m_qstrDevParentId = FromUtf8(spItem->m_strParentId);
    _node.m_qstrTreeParentId = _node.m_qstrDevParentId;
    _node.m_iType = iType;
    _node.m_iDevBindType = spItem->m_iDevBindType;
    _node.m_iStatus = spItem->m_iStatus;
    _node.m_qstrExtend = FromUtf8(spItem->m_strExtend);
    _node.m_iSortNo = spItem->m_iOrderNo;
    return 0;
}

namespace {

// Row fields shared by both forms of CreateItem: id, texts, data, parent, drag flags.
void FillRow(CLS_TreeItem& _clsItem, const CLS_CustomTreeNode& _node, const QString& _qstrName,
             const QString& _qstrRootId)
{
    _clsItem.m_qstrId = _node.m_qstrTreeId;
    _clsItem.m_qstrText = _node.m_qstrName;
    _clsItem.m_qstrTooltip = _node.m_qstrName;
    _clsItem.m_varData = QVariant(_node.m_qstrDevId);
    _clsItem.m_qstrParentId = _node.m_qstrTreeParentId;
    if (_clsItem.m_qstrParentId.isEmpty() && _qstrName.isEmpty())
        _clsItem.m_qstrParentId = _qstrRootId; // no parent: under the root
}

} // namespace

int CLS_WgtDeviceTree::CreateItem(CLS_TreeItem& _clsItem, CLS_CustomTreeNode& _node, STRCT_VideoItem* _pItem,
                                  const QString& _qstrName)
{
    if (_pItem != nullptr) {
        const int iRet = InitNode(_pItem, _node, _qstrName);
        if (iRet < 0)
            return iRet;
    }
    if (_qstrName.isEmpty() && !m_qsetNodeTypes.contains(_node.m_iType))
        return -1;

    FillRow(_clsItem, _node, _qstrName, m_qstrRootId);
    _clsItem.m_iSortNo = _node.m_iSortNo;

    if (m_blDrag && m_iTreeType == DEV_TREE_CUSTOM &&
        (_node.m_iType != CONST_iTypeChannel || IsBoundKind(_node.m_iDevBindType)))
        _clsItem.m_iItemFlags = m_blCheck ? CONST_iFlagsNoDragCheck : CONST_iFlagsNoDrag;

    SetItemIcon(_node, _clsItem, !_qstrName.isEmpty());
    if (_qstrName.isEmpty())
        CreateItemToolBtn(_node, _clsItem);
    return 0;
}

int CLS_WgtDeviceTree::CreateItem(CLS_TreeItem& _clsItem, CLS_CustomTreeNode& _node,
                                  std::weak_ptr<STRCT_VideoItem> _pItem, const QString& _qstrName)
{
    // Held to the end: the row order below reads the object again.
    const std::shared_ptr<STRCT_VideoItem> spItem = _pItem.lock();
    if (spItem) {
        const int iRet = InitNode(_pItem, _node, _qstrName);
        if (iRet < 0)
            return iRet;
    }
    if (_qstrName.isEmpty() && !m_qsetNodeTypes.contains(_node.m_iType))
        return -1;

    FillRow(_clsItem, _node, _qstrName, m_qstrRootId);
    if (spItem) {
        // Channels, then alarm inputs, alarm outputs, decoder inputs and outputs, each by number.
        switch (spItem->GetType()) {
        case CONST_iTypeChannel:
            _clsItem.m_iSortNo = ReadChannelNo(spItem.get());
            break;
        case CONST_iTypeAlarmIn:
            _clsItem.m_iSortNo = ReadChannelNo(spItem.get()) + 1000;
            break;
        case CONST_iTypeAlarmOut:
            _clsItem.m_iSortNo = ReadChannelNo(spItem.get()) + 2000;
            break;
        case CONST_iTypeDecoderIn:
            _clsItem.m_iSortNo = ReadChannelNo(spItem.get()) + 3000;
            break;
        case CONST_iTypeDecoderOut:
            _clsItem.m_iSortNo = ReadChannelNo(spItem.get()) + 4000;
            break;
        default:
            break; // the record's default stays
        }
    }

    if (m_blDrag && m_iTreeType == DEV_TREE_CUSTOM &&
        (_node.m_iType != CONST_iTypeChannel || IsBoundKind(_node.m_iDevBindType)))
        _clsItem.m_iItemFlags = m_blCheck ? CONST_iFlagsNoDragCheck : CONST_iFlagsNoDrag;

    SetItemIcon(_node, _clsItem, !_qstrName.isEmpty());
    if (_qstrName.isEmpty())
        CreateItemToolBtn(_node, _clsItem);
    return 0;
}

int CLS_WgtDeviceTree::InitItem(const CLS_CustomTreeNode& _node, CLS_TreeItem& _clsItem, bool _blRoot,
                                bool _blUseStatus)
{
    if (!m_qsetNodeTypes.contains(_node.m_iType)) // for roots too
        return -1;

    _clsItem.m_qstrId = _node.m_qstrTreeId;
    _clsItem.m_qstrText = _node.m_qstrName;
    _clsItem.m_qstrTooltip = _node.m_qstrName;

    if (!_blUseStatus) {
        SetItemIcon(_node, _clsItem, _blRoot);
    } else {
        // Sets the row's icon at once and hands it back; any status but 0 and 1 leaves it empty.
        QString qstrIcon;
        if (_node.m_iStatus == 0)
            UpdateNodeOnlineStatus(_node.m_qstrTreeId, false, qstrIcon);
        else if (_node.m_iStatus == 1)
            UpdateNodeOnlineStatus(_node.m_qstrTreeId, true, qstrIcon);
        _clsItem.m_qstrIcon = qstrIcon;
    }

    _clsItem.m_varData = QVariant(_node.m_qstrDevId);
    _clsItem.m_qstrParentId = _node.m_qstrTreeParentId; // no fall-back to the root here
    _clsItem.m_iSortNo = _node.m_iSortNo;

    if (m_blDrag && m_iTreeType == DEV_TREE_CUSTOM &&
        (_node.m_iType != CONST_iTypeChannel || IsBoundKind(_node.m_iDevBindType)))
        _clsItem.m_iItemFlags = m_blCheck ? CONST_iFlagsNoDragCheck : CONST_iFlagsNoDrag;

    CreateItemToolBtn(_node, _clsItem);
    return 0;
}

void CLS_WgtDeviceTree::SetItemIcon(const CLS_CustomTreeNode& _node, CLS_TreeItem& _clsItem, bool _blRoot)
{
    if (_blRoot) {
        _clsItem.m_qstrIcon = PicPath(m_iTreeType == DEV_TREE_RESOURCE ? QStringLiteral("root_icon.png")
                                                                       : QStringLiteral("fenzu.png"));
        return;
    }

    QString qstrImage;
    switch (_node.m_iType) {
    case CONST_iTypeGroup:
        qstrImage = QStringLiteral("fenzu.png");
        break;
    case CONST_iTypeHost:
        qstrImage =
            _node.m_iStatus == 0 ? QStringLiteral("host_offline.png") : QStringLiteral("host_online.png");
        break;
    case CONST_iTypeChannel:
        if (_node.m_iStatus == 0)
            qstrImage = QStringLiteral("channel_offline.png");
        else if (_node.m_iStatus == 2)
            qstrImage = QStringLiteral("channel_no.png");
        else
            qstrImage = QStringLiteral("channel_online.png");
        break;
    case CONST_iTypeAlarmIn:
        qstrImage = QStringLiteral("alarm_in.png");
        break;
    case CONST_iTypeAlarmOut:
        qstrImage = QStringLiteral("alarm_out.png");
        break;
    case CONST_iTypeDecoder:
        qstrImage = QStringLiteral("decoder_online.png");
        break;
    case CONST_iTypeDecoderOut:
        qstrImage = QStringLiteral("decoderout_online.png");
        break;
    case CONST_iTypeDecoderIn:
        qstrImage = QStringLiteral("decoderin_online.png");
        break;
    default:
        break;
    }

    // The bind kind wins. Note: it tests for on line (1), the type stage for off line (0).
    switch (_node.m_iDevBindType) {
    case CONST_iBindCar:
        qstrImage = _node.m_iStatus == 1 ? QStringLiteral("car_item.png") : QStringLiteral("carerr_item.png");
        break;
    case CONST_iBindPad:
        qstrImage = _node.m_iStatus == 1 ? QStringLiteral("pad_item.png") : QStringLiteral("paderr_item.png");
        break;
    case CONST_iBindWay:
        qstrImage = _node.m_iStatus == 1 ? QStringLiteral("way_item.png") : QStringLiteral("wayerr_item.png");
        break;
    default:
        break;
    }

    _clsItem.m_qstrIcon = qstrImage.isEmpty() ? QString() : PicPath(qstrImage);
}

void CLS_WgtDeviceTree::CreateItemToolBtn(const CLS_CustomTreeNode& _node, CLS_TreeItem& _clsItem)
{
    if (_node.m_qstrTreeId.isEmpty() || !m_qsetNodeTypes.contains(_node.m_iType) ||
        _node.m_iDevBindType == CONST_iBindPad || _node.m_iDevBindType == CONST_iBindCar)
        return;

    // The inserting lookup: a type without templates gains an empty entry (kept).
    const QVector<CLS_ItemButton> qvecTemplates = m_qmapItemBtns[_node.m_iType];
    QVector<CLS_ItemButton> qvecButtons;
    qvecButtons.reserve(qvecTemplates.size());
    for (const CLS_ItemButton& clsTemplate : qvecTemplates) {
        CLS_ItemButton clsButton = clsTemplate;
        clsButton.m_qstrIcon = ButtonPicPath(clsTemplate.m_qstrId); // from the id alone
        clsButton.m_varData = QVariant(_node.m_qstrDevId);
        qvecButtons.append(clsButton);
    }
    _clsItem.m_qvecButtons = qvecButtons;
}

void CLS_WgtDeviceTree::SetItemToolButtons(const QMap<int, QVector<CLS_ItemButton>>& _qmapItemBtns)
{
    m_qmapItemBtns = _qmapItemBtns;
}

int CLS_WgtDeviceTree::CloneNode(const CLS_CustomTreeNode& _nodeSrc, CLS_CustomTreeNode& _nodeDst)
{
    Q_UNUSED(_nodeSrc)
    Q_UNUSED(_nodeDst)
    return 0;
}

bool CLS_WgtDeviceTree::IsImageChannel(const QString& _qstrId)
{
    Q_UNUSED(_qstrId)
    return false;
}

// ---- changes ----------------------------------------------------------------------------------------

int CLS_WgtDeviceTree::FindVideoItem(const QString& _qstrTreeId, std::weak_ptr<STRCT_VideoItem>& _wpItem)
{
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapData;
    const int iRet = GetVideoData(qmapData);
    if (iRet < 0)
        return iRet;
    auto it = qmapData.constFind(_qstrTreeId);
    if (it == qmapData.cend())
        return -1;
    _wpItem = it.value();
    return 0;
}

int CLS_WgtDeviceTree::AddItem(QString _qstrTreeId)
{
    std::weak_ptr<STRCT_VideoItem> wpItem;
    const int iRet = FindVideoItem(_qstrTreeId, wpItem);
    return iRet < 0 ? iRet : AddItem(wpItem);
}

int CLS_WgtDeviceTree::AddItem(std::weak_ptr<STRCT_VideoItem> _pItem)
{
    if (m_pTreePanel == nullptr)
        return -1;
    const std::shared_ptr<STRCT_VideoItem> spItem = _pItem.lock(); // alive through CreateItem
    if (!spItem)
        return -1;
    const QString qstrTreeId = FromUtf8(spItem->m_strTreeId);
    if (qstrTreeId.isEmpty())
        return -1;
    if (m_iTreeType != DEV_TREE_FAVORITE && m_qmapNodes.contains(qstrTreeId))
        return -1;

    CLS_CustomTreeNode node;
    CLS_TreeItem clsItem;
    if (CreateItem(clsItem, node, _pItem, QString()) < 0)
        return -1;
    // A favourites tree keeps no node for it (kept: the row and the id map change only).
    if (m_iTreeType != DEV_TREE_FAVORITE)
        m_qmapNodes.insert(node.m_qstrTreeId, node);
    m_qmapDevIdToTreeId.insert(node.m_qstrDevId, node.m_qstrTreeId);
    m_pTreePanel->AddItem(clsItem);
    return 0;
}

int CLS_WgtDeviceTree::AddItem(CLS_CustomTreeNode _node)
{
    if (m_pTreePanel == nullptr || _node.m_qstrTreeId.isEmpty() || m_qmapNodes.contains(_node.m_qstrTreeId))
        return -1;
    CLS_TreeItem clsItem;
    const int iRet = CreateItem(clsItem, _node, static_cast<STRCT_VideoItem*>(nullptr), QString());
    if (iRet < 0)
        return iRet;
    m_qmapNodes.insert(_node.m_qstrTreeId, _node);
    m_qmapDevIdToTreeId.insert(_node.m_qstrDevId, _node.m_qstrTreeId);
    m_pTreePanel->AddItem(clsItem);
    return 0;
}

int CLS_WgtDeviceTree::AddItems(QVector<QString> _qvecItems, bool _blSendSignal)
{
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapData;
    const int iRet = GetVideoData(qmapData);
    if (iRet < 0)
        return iRet;
    QVector<std::weak_ptr<STRCT_VideoItem>> qvecItems;
    for (const QString& qstrId : qAsConst(_qvecItems)) {
        auto it = qmapData.constFind(qstrId);
        if (it != qmapData.cend())
            qvecItems.append(it.value());
    }
    return AddItems(qvecItems, _blSendSignal);
}

int CLS_WgtDeviceTree::AddItems(const QVector<std::weak_ptr<STRCT_VideoItem>>& _qvecItems, bool _blSendSignal)
{
    int iCount = 0;
    {
        CLS_TreeRowBatch batch(PanelTree());
        const CLS_RowIconCache iconBatch;
        for (const std::weak_ptr<STRCT_VideoItem>& wpItem : _qvecItems) {
            if (AddItem(wpItem) >= 0)
                ++iCount;
        }
    }
    // Makes the status thread report every channel again, the new ones among them.
    if (m_iTreeType != DEV_TREE_RESOURCE || _blSendSignal)
        emit SignChannelStatusUpdate();
    return iCount;
}

int CLS_WgtDeviceTree::AddItems(QVariant _qvarNodes)
{
    if (!_qvarNodes.isValid() || m_pTreePanel == nullptr)
        return -1;
    const QVector<CLS_CustomTreeNode> qvecNodes = _qvarNodes.value<QVector<CLS_CustomTreeNode>>();
    CLS_TreeRowBatch batch(PanelTree());
    const CLS_RowIconCache iconBatch;
    int iCount = 0;
    for (CLS_CustomTreeNode node : qvecNodes) {
        CLS_TreeItem clsItem;
        if (CreateItem(clsItem, node, static_cast<STRCT_VideoItem*>(nullptr), QString()) < 0)
            continue;
        // No duplicate test (kept): a known id replaces the record, and the panel refuses the row.
        m_qmapNodes.insert(node.m_qstrTreeId, node);
        m_qmapDevIdToTreeId.insert(node.m_qstrDevId, node.m_qstrTreeId);
        if (m_pTreePanel->AddItem(clsItem) >= 0)
            ++iCount;
        else
            m_pOperatorView->NoteStatus(node.m_qstrTreeId); // a replaced record of a row that stays
    }
    return iCount;
}

int CLS_WgtDeviceTree::ModifyItem(QString _qstrTreeId)
{
    std::weak_ptr<STRCT_VideoItem> wpItem;
    const int iRet = FindVideoItem(_qstrTreeId, wpItem);
    if (iRet < 0)
        return iRet;
    const std::shared_ptr<STRCT_VideoItem> spItem = wpItem.lock();
    if (!spItem)
        return -1;
    return ModifyItem(spItem.get());
}

int CLS_WgtDeviceTree::ModifyItem(STRCT_VideoItem* _pItem)
{
    if (_pItem == nullptr || m_pTreePanel == nullptr)
        return -1;
    const QString qstrTreeId = FromUtf8(_pItem->m_strTreeId);
    auto it = m_qmapNodes.find(qstrTreeId);
    if (it == m_qmapNodes.end())
        return -1;
    InitNode(_pItem, it.value(), QString()); // a refusal leaves the record as it was (kept)
    const CLS_CustomTreeNode node = it.value();
    m_pOperatorView->NoteStatus(qstrTreeId); // the record stays changed even if no row follows
    CLS_TreeItem clsItem;
    if (InitItem(node, clsItem, false, true) < 0)
        return -1;
    m_pTreePanel->UpdateItem(clsItem);
    return 0;
}

int CLS_WgtDeviceTree::ModifyItems(QList<CLS_CustomTreeNode> _qvecNodes)
{
    for (const CLS_CustomTreeNode& node : qAsConst(_qvecNodes)) {
        if (!m_qmapNodes.contains(node.m_qstrTreeId))
            continue;
        m_qmapNodes.insert(node.m_qstrTreeId, node);
        m_pOperatorView->NoteStatus(node.m_qstrTreeId); // the record stays changed even if no row follows
        CLS_TreeItem clsItem;
        if (InitItem(node, clsItem, false, true) < 0)
            continue;
        if (m_pTreePanel != nullptr)
            m_pTreePanel->UpdateItem(clsItem);
        return 0; // the first that goes through ends the call (kept)
    }
    return 0;
}

int CLS_WgtDeviceTree::ModifyItems(QVector<QString> _qvecItems, bool _blSendSignal)
{
    Q_UNUSED(_qvecItems)
    Q_UNUSED(_blSendSignal)
    return 0;
}

int CLS_WgtDeviceTree::ModifyItems(const QVector<STRCT_VideoItem*>& _qvecItems, bool _blSendSignal)
{
    int iCount = 0;
    QVector<std::string> qvecDevIds;
    {
        CLS_TreeRowBatch batch(PanelTree());
        for (STRCT_VideoItem* pItem : _qvecItems) {
            if (ModifyItem(pItem) < 0)
                continue;
            qvecDevIds.append(pItem->m_strId);
            ++iCount;
        }
    }
    if (m_iTreeType != DEV_TREE_RESOURCE || _blSendSignal)
        emit SignModifyNode(qvecDevIds);
    return iCount;
}

int CLS_WgtDeviceTree::ModifyCaptionByChannelId(const QString& _qstrChannelID, const QString& _qstrCaption)
{
    if (m_pTreePanel == nullptr || _qstrChannelID.isEmpty() || !m_qmapDevIdToTreeId.contains(_qstrChannelID))
        return -1;
    const QString qstrTreeId = m_qmapDevIdToTreeId.value(_qstrChannelID);
    auto it = m_qmapNodes.find(qstrTreeId);
    if (qstrTreeId.isEmpty() || it == m_qmapNodes.end())
        return -1;
    it.value().m_qstrName = _qstrCaption;
    const CLS_CustomTreeNode node = it.value();
    CLS_TreeItem clsItem;
    if (InitItem(node, clsItem, false, true) < 0)
        return -1;
    m_pTreePanel->UpdateItem(clsItem);
    return 0;
}

int CLS_WgtDeviceTree::DeleteItem(QString _qstrId)
{
    if (m_pTreePanel == nullptr || _qstrId.isEmpty() || !m_qmapNodes.contains(_qstrId))
        return -1;
    const CLS_CustomTreeNode node = m_qmapNodes.value(_qstrId);
    m_qmapNodes.remove(_qstrId);
    m_qmapDevIdToTreeId.remove(node.m_qstrDevId);
    // The panel drops the row and its descendants; their nodes stay until deleted themselves.
    m_pTreePanel->DeleteItem(_qstrId);
    return 0;
}

int CLS_WgtDeviceTree::DeleteItems(QVector<QString> _qvecIds, bool _blSendSignal)
{
    int iCount = 0;
    {
        CLS_TreeRowBatch batch(PanelTree());
        for (const QString& qstrId : qAsConst(_qvecIds)) {
            if (DeleteItem(qstrId) >= 0) // through the virtual table
                ++iCount;
        }
    }
    if (m_iTreeType == DEV_TREE_RESOURCE && !_blSendSignal)
        return iCount;

    // Collected after the deletes (kept): names only nodes that are still there.
    QVector<std::string> qvecDevIds;
    for (const QString& qstrId : qAsConst(_qvecIds)) {
        auto it = m_qmapNodes.constFind(qstrId);
        if (!qstrId.isEmpty() && it != m_qmapNodes.cend())
            qvecDevIds.append(it.value().m_qstrDevId.toStdString());
    }
    emit SignDeleteNode(qvecDevIds);
    return iCount;
}

int CLS_WgtDeviceTree::MoveNodes(QVector<QString> _qvecItems, int _iMoveType)
{
    Q_UNUSED(_qvecItems)
    Q_UNUSED(_iMoveType)
    return 0;
}

int CLS_WgtDeviceTree::MoveNodes(const QVector<STRCT_VideoItem*>& _qvecItems, int _iMoveType)
{
    if (_iMoveType < 0 || _iMoveType > 1 || m_iTreeType == DEV_TREE_RESOURCE || _qvecItems.size() != 2)
        return -1;
    STRCT_VideoItem* pSrc = _qvecItems.at(0);
    STRCT_VideoItem* pDes = _qvecItems.at(1);
    if (pSrc == nullptr || pDes == nullptr)
        return -1;
    const QString qstrSrcId = FromUtf8(pSrc->m_strTreeId);
    const QString qstrDesId = FromUtf8(pDes->m_strTreeId);
    if (qstrSrcId.isEmpty() || qstrDesId.isEmpty() || !m_qmapNodes.contains(qstrSrcId) ||
        !m_qmapNodes.contains(qstrDesId))
        return -1;

    std::swap(m_qmapNodes[qstrSrcId].m_iSortNo, m_qmapNodes[qstrDesId].m_iSortNo);
    if (m_pTreePanel == nullptr)
        return -1;
    // A refusal of the panel leaves the numbers exchanged (kept).
    if (_iMoveType == 1)
        return m_pTreePanel->MoveDownOneRow(qstrSrcId, qstrDesId);
    return m_pTreePanel->MoveUpOneRow(qstrSrcId, qstrDesId);
}

int CLS_WgtDeviceTree::MoveUpOneRow(const QString& _qstrSrcId, const QString& _qstrDesId)
{
    if (m_pTreePanel == nullptr)
        return -1;
    return m_pTreePanel->MoveUpOneRow(_qstrSrcId, _qstrDesId);
}

int CLS_WgtDeviceTree::MoveDownOneRow(const QString& _qstrSrcId, const QString& _qstrDesId)
{
    if (m_pTreePanel == nullptr)
        return -1;
    return m_pTreePanel->MoveDownOneRow(_qstrSrcId, _qstrDesId);
}

// ---- status -----------------------------------------------------------------------------------------

int CLS_WgtDeviceTree::UpdateAllChannelsStatus(QVariant _qvarData)
{
    using StatusMap = QMap<QString, QPair<bool, int>>;
    if (m_pTreePanel == nullptr || !_qvarData.isValid() || !_qvarData.canConvert<StatusMap>())
        return -1;
    const StatusMap qmapStatus = _qvarData.value<StatusMap>();
    {
        CLS_TreeRowBatch batch(PanelTree());
        const CLS_RowIconCache iconBatch; // the few status pictures, read once for the batch
        for (auto it = qmapStatus.cbegin(); it != qmapStatus.cend(); ++it) {
            // Iterators instead of a test and a second search: a batch can carry every channel of
            // the installation. The node is found again after the icon, as before.
            if (it.key().isEmpty())
                continue;
            const auto itTreeId = m_qmapDevIdToTreeId.constFind(it.key());
            if (itTreeId == m_qmapDevIdToTreeId.cend())
                continue;
            const QString qstrTreeId = itTreeId.value();
            if (qstrTreeId.isEmpty())
                continue;
            auto itFound = m_qmapNodes.find(qstrTreeId);
            if (itFound == m_qmapNodes.end())
                continue;

            const bool blImage = it.value().first;
            const int iStatus = it.value().second;
            {
                CLS_CustomTreeNode& node = itFound.value();
                if (blImage && node.m_iDevBindType < 1)
                    node.m_iDevBindType = CONST_iBindImageChannel;
                else if (!blImage && node.m_iDevBindType == CONST_iBindImageChannel)
                    node.m_iDevBindType = -1;
            }
            QString qstrIcon;
            if (iStatus == 0)
                UpdateNodeOnlineStatus(qstrTreeId, false, qstrIcon);
            else if (iStatus == 1)
                UpdateNodeOnlineStatus(qstrTreeId, true, qstrIcon);
            auto itNode = m_qmapNodes.find(qstrTreeId);
            if (itNode != m_qmapNodes.end()) {
                itNode.value().m_iStatus = iStatus; // every value, after the icon
                m_pOperatorView->NoteStatus(qstrTreeId, itNode.value().m_iType, iStatus);
            }
        }
    }
    emit SignUpdateChannelsStatus(_qvarData);
    return 0;
}

int CLS_WgtDeviceTree::UpdateAllChannelsStatus(const QMap<QString, int>& _qmapData)
{
    Q_UNUSED(_qmapData)
    return -1;
}

int CLS_WgtDeviceTree::UpdateHostStatus(QString _strId, int _iCmdType, void* _pParam)
{
    Q_UNUSED(_pParam)
    if (_strId.isEmpty() || !m_qmapNodes.contains(_strId))
        return -1;
    const CLS_CustomTreeNode node = m_qmapNodes.value(_strId);
    if (m_iTreeType != DEV_TREE_RESOURCE || node.m_iType != CONST_iTypeHost)
        return 0;

    QString qstrIcon;
    if (_iCmdType == 3 && node.m_iStatus != 1) {
        UpdateNodeOnlineStatus(_strId, true, qstrIcon);
        auto it = m_qmapNodes.find(_strId);
        if (it != m_qmapNodes.end())
            it.value().m_iStatus = 1;
        return 0;
    }
    if ((_iCmdType == 4 || _iCmdType == 41) && node.m_iStatus == 1) {
        UpdateNodeOnlineStatus(_strId, false, qstrIcon);
        auto it = m_qmapNodes.find(_strId);
        if (it != m_qmapNodes.end())
            it.value().m_iStatus = 0;
        return 0;
    }
    return 0;
}

int CLS_WgtDeviceTree::UpdateNodeOnlineStatus(const QString& _qstrId, bool _blOnline, QString& _qstrIcon)
{
    if (_qstrId.isEmpty() || m_pTreePanel == nullptr)
        return -1;
    auto it = m_qmapNodes.constFind(_qstrId);
    if (it == m_qmapNodes.cend())
        return -1;
    const CLS_CustomTreeNode& node = it.value();

    bool blRoot = false;
    if (m_iTreeType == DEV_TREE_RESOURCE) {
        if (_qstrId == CONST_qstrResourceRootId) {
            _qstrIcon = PicPath(QStringLiteral("root_icon.png"));
            blRoot = true;
        }
    } else if (_qstrId == CONST_qstrCustomRootId || _qstrId == CONST_qstrFavoriteRootId) {
        _qstrIcon = PicPath(QStringLiteral("fenzu.png"));
        blRoot = true;
    }

    if (!blRoot) {
        switch (node.m_iType) {
        case CONST_iTypeHost:
            _qstrIcon =
                PicPath(_blOnline ? QStringLiteral("host_online.png") : QStringLiteral("host_offline.png"));
            break;
        case CONST_iTypeGroup:
            _qstrIcon = PicPath(QStringLiteral("fenzu.png"));
            break;
        case CONST_iTypeChannel:
            _qstrIcon = PicPath(_blOnline ? QStringLiteral("channel_online.png")
                                          : QStringLiteral("channel_offline.png"));
            break;
        case CONST_iTypeAlarmIn:
            _qstrIcon = PicPath(QStringLiteral("alarm_in.png"));
            break;
        case CONST_iTypeAlarmOut:
            _qstrIcon = PicPath(QStringLiteral("alarm_out.png"));
            break;
        case CONST_iTypeDecoder:
            _qstrIcon = PicPath(QStringLiteral("decoder_online.png"));
            break;
        case CONST_iTypeDecoderOut:
            _qstrIcon = PicPath(QStringLiteral("decoderout_online.png"));
            break;
        case CONST_iTypeDecoderIn:
            _qstrIcon = PicPath(QStringLiteral("decoderin_online.png"));
            break;
        default:
            break; // the caller's value stays
        }
        switch (node.m_iDevBindType) {
        case CONST_iBindCar:
            _qstrIcon =
                PicPath(_blOnline ? QStringLiteral("car_item.png") : QStringLiteral("carerr_item.png"));
            break;
        case CONST_iBindPad:
            _qstrIcon =
                PicPath(_blOnline ? QStringLiteral("pad_item.png") : QStringLiteral("paderr_item.png"));
            break;
        case CONST_iBindWay:
            _qstrIcon =
                PicPath(_blOnline ? QStringLiteral("way_item.png") : QStringLiteral("wayerr_item.png"));
            break;
        default:
            break;
        }
    }

    m_pTreePanel->UpdateItemIcon(_qstrId, _qstrIcon);
    return 0;
}

void CLS_WgtDeviceTree::UpdateChannelStatus()
{
    emit SignChannelStatusUpdate();
}

// ---- queries ----------------------------------------------------------------------------------------

int CLS_WgtDeviceTree::GetItemById(const QString& _qstrId, CLS_CustomTreeNode& _node)
{
    if (_qstrId.isEmpty())
        return -1;
    auto it = m_qmapNodes.constFind(_qstrId);
    if (it == m_qmapNodes.cend())
        return -1;
    _node = it.value();
    return 0;
}

int CLS_WgtDeviceTree::GetItemByDevId(const QString& _qstrDevId, CLS_CustomTreeNode& _node)
{
    if (_qstrDevId.isEmpty())
        return -1;
    auto itId = m_qmapDevIdToTreeId.constFind(_qstrDevId);
    if (itId == m_qmapDevIdToTreeId.cend() || itId.value().isEmpty())
        return -1;
    auto it = m_qmapNodes.constFind(itId.value());
    if (it == m_qmapNodes.cend())
        return -1;
    _node = it.value();
    return 0;
}

int CLS_WgtDeviceTree::GetItemByChannelId(const QString& _qstrChannelId, CLS_CustomTreeNode& _node)
{
    return GetItemByDevId(_qstrChannelId, _node);
}

int CLS_WgtDeviceTree::GetItemByChannelId(const QString& _qstrParentId, const QString& _qstrChannelId,
                                          CLS_CustomTreeNode& _node)
{
    QVector<CLS_CustomTreeNode> qvecChannels;
    const int iRet = GetChannelsById(_qstrParentId, qvecChannels);
    if (iRet < 0)
        return iRet;
    for (const CLS_CustomTreeNode& node : qAsConst(qvecChannels)) {
        if (node.m_qstrDevId == _qstrChannelId) {
            _node = node;
            break;
        }
    }
    return 0; // also when not found: _node is then untouched
}

int CLS_WgtDeviceTree::GetChilds(const QString& _qstrId, QVector<CLS_CustomTreeNode>& _qvecNodes, bool _blAll)
{
    if (m_pTreePanel == nullptr)
        return -1;
    QVector<CLS_TreeItem> qvecRows;
    const int iRet = m_pTreePanel->GetChilds(_qstrId, qvecRows, _blAll);
    if (iRet < 0)
        return iRet;
    for (const CLS_TreeItem& clsRow : qAsConst(qvecRows)) {
        if (clsRow.m_qstrId.isEmpty())
            continue;
        auto it = m_qmapNodes.constFind(clsRow.m_qstrId);
        if (it != m_qmapNodes.cend())
            _qvecNodes.append(it.value());
    }
    return 0;
}

bool CLS_WgtDeviceTree::HasChildNode(const QString& _qstrId)
{
    CLS_WgtBaseTreeWidget* pTree = PanelTree();
    if (pTree == nullptr || _qstrId.isEmpty())
        return false;
    QTreeWidgetItem* pNode = pTree->GetNodeById(_qstrId);
    if (pNode == nullptr)
        return false;
    for (int i = 0; i < pNode->childCount(); ++i) {
        CLS_TreeItem clsRow;
        if (pTree->GetBindData(pNode->child(i), clsRow) == 0 && !clsRow.m_qstrId.isEmpty() &&
            m_qmapNodes.contains(clsRow.m_qstrId))
            return true;
    }
    return false;
}

QString CLS_WgtDeviceTree::PicPath(const QString& _qstrImage) const
{
    return CachedPicPath(m_qhashPicPaths, _qstrImage, QString());
}

QString CLS_WgtDeviceTree::ButtonPicPath(const QString& _qstrButtonId) const
{
    return CachedPicPath(m_qhashButtonPics, _qstrButtonId, QStringLiteral(".png"));
}

QString CLS_WgtDeviceTree::CachedPicPath(QHash<QString, QString>& _qhashCache, const QString& _qstrKey,
                                         const QString& _qstrSuffix) const
{
    QMutexLocker locker(&m_mtxPicPaths);
    if (m_qstrPicPathOfCache != m_qstrPicPath) {
        m_qhashPicPaths.clear();
        m_qhashButtonPics.clear();
        m_qstrPicPathOfCache = m_qstrPicPath;
    }
    auto it = _qhashCache.constFind(_qstrKey);
    if (it == _qhashCache.cend())
        it = _qhashCache.insert(_qstrKey, m_qstrPicPath + _qstrKey + _qstrSuffix);
    return it.value();
}

int CLS_WgtDeviceTree::GetChildsByDevId(const QString& _qstrDevId, QVector<CLS_CustomTreeNode>& _qvecNodes)
{
    if (_qstrDevId.isEmpty() || !m_qmapDevIdToTreeId.contains(_qstrDevId))
        return -1;
    return GetChilds(m_qmapDevIdToTreeId.value(_qstrDevId), _qvecNodes, false);
}

int CLS_WgtDeviceTree::GetChannelsById(const QString& _qstrId, QVector<CLS_CustomTreeNode>& _qvecNodes)
{
    if (m_pTreePanel == nullptr || _qstrId.isEmpty())
        return -1;
    QVector<CLS_TreeItem> qvecRows;
    const int iRet = m_pTreePanel->GetChilds(_qstrId, qvecRows, false);
    if (iRet < 0)
        return iRet;
    for (const CLS_TreeItem& clsRow : qAsConst(qvecRows)) {
        auto it = m_qmapNodes.constFind(clsRow.m_qstrId);
        if (it != m_qmapNodes.cend() && !it.value().m_qstrDevId.isEmpty())
            _qvecNodes.append(it.value());
    }
    return 0;
}

int CLS_WgtDeviceTree::GetParent(const QString& _qstrId, CLS_CustomTreeNode& _node)
{
    if (m_pTreePanel == nullptr)
        return -1;
    CLS_TreeItem clsRow;
    const int iRet = m_pTreePanel->GetParent(_qstrId, clsRow);
    if (iRet < 0)
        return iRet;
    if (clsRow.m_qstrId.isEmpty())
        return -1;
    auto it = m_qmapNodes.constFind(clsRow.m_qstrId);
    if (it == m_qmapNodes.cend())
        return -1;
    _node = it.value();
    return 0;
}

int CLS_WgtDeviceTree::GetParentByDevId(const QString& _qstrDevId, CLS_CustomTreeNode& _node)
{
    if (m_pTreePanel == nullptr || _qstrDevId.isEmpty() || !m_qmapDevIdToTreeId.contains(_qstrDevId))
        return -1;
    return GetParent(m_qmapDevIdToTreeId.value(_qstrDevId), _node);
}

int CLS_WgtDeviceTree::GetAllNodeParent(const QVector<QString>& _qvecIds, QVector<QString>& _qvecParentIds)
{
    if (_qvecIds.isEmpty())
        return -1;
    for (const QString& qstrId : _qvecIds) {
        CLS_CustomTreeNode nodeParent;
        if (GetParent(qstrId, nodeParent) < 0)
            continue;
        if (!_qvecParentIds.contains(nodeParent.m_qstrTreeId))
            _qvecParentIds.append(nodeParent.m_qstrTreeId);
    }
    return 0;
}

int CLS_WgtDeviceTree::GetCurrentItem(CLS_CustomTreeNode& _node)
{
    if (m_pTreePanel == nullptr)
        return -1;
    CLS_TreeItem clsRow;
    const int iRet = m_pTreePanel->GetCurrentItem(clsRow);
    if (iRet < 0)
        return iRet;
    if (clsRow.m_qstrId.isEmpty())
        return -1;
    auto it = m_qmapNodes.constFind(clsRow.m_qstrId);
    if (it == m_qmapNodes.cend())
        return -1;
    _node = it.value();
    return 0;
}

int CLS_WgtDeviceTree::GetItemCheckStatus(const QString& _qstrId, Qt::CheckState& _iState)
{
    if (m_pTreePanel == nullptr || _qstrId.isEmpty() || !m_qmapNodes.contains(_qstrId))
        return -1;
    return m_pTreePanel->GetItemCheckStatus(_qstrId, _iState) < 0 ? -1 : 0;
}

int CLS_WgtDeviceTree::GetCheckedChannel(QVector<CLS_CustomTreeNode>& _qvecNodes)
{
    if (m_pTreePanel == nullptr)
        return -1;
    QVector<CLS_TreeItem> qvecRows;
    const int iRet = m_pTreePanel->GetCheckedNodes(qvecRows);
    if (iRet < 0)
        return iRet;
    for (const CLS_TreeItem& clsRow : qAsConst(qvecRows)) {
        auto it = m_qmapNodes.constFind(clsRow.m_qstrId);
        if (it == m_qmapNodes.cend())
            continue;
        CLS_CustomTreeNode node = it.value();
        node.m_iSortNo = clsRow.m_iSortNo; // the row's number: row moves change only the row
        _qvecNodes.append(node);
    }
    std::sort(_qvecNodes.begin(), _qvecNodes.end(), &CLS_WgtDeviceTree::SortChannel);
    return 0;
}

int CLS_WgtDeviceTree::GetAllCheckedItems(QVector<CLS_CustomTreeNode>& _qvecNodes)
{
    if (m_pTreePanel == nullptr)
        return -1;
    QVector<CLS_TreeItem> qvecRows;
    const int iRet = m_pTreePanel->GetCheckedItems(qvecRows, false);
    for (const CLS_TreeItem& clsRow : qAsConst(qvecRows)) {
        auto it = m_qmapNodes.constFind(clsRow.m_qstrId);
        if (it != m_qmapNodes.cend())
            _qvecNodes.append(it.value());
    }
    return iRet;
}

int CLS_WgtDeviceTree::GetCheckedGroup(QVector<CLS_CustomTreeNode>& _qvecNodes)
{
    if (m_pTreePanel == nullptr)
        return -1;
    QVector<CLS_TreeItem> qvecRows;
    const int iRet = m_pTreePanel->GetCheckedItems(qvecRows, false);
    if (iRet < 0)
        return iRet;
    for (const CLS_TreeItem& clsRow : qAsConst(qvecRows)) {
        auto it = m_qmapNodes.constFind(clsRow.m_qstrId);
        if (it == m_qmapNodes.cend())
            continue;
        if (it.value().m_iType == CONST_iTypeGroup && it.value().m_qstrDevId != CONST_qstrCustomRootId)
            _qvecNodes.append(it.value());
    }
    return 0;
}

bool CLS_WgtDeviceTree::SortChannel(const CLS_CustomTreeNode& _left, const CLS_CustomTreeNode& _right)
{
    return _left.m_iSortNo < _right.m_iSortNo;
}

// ---- events -----------------------------------------------------------------------------------------

bool CLS_WgtDeviceTree::LookupNode(const QString& _qstrId, CLS_CustomTreeNode& _node) const
{
    if (_qstrId.isEmpty())
        return false;
    auto it = m_qmapNodes.constFind(_qstrId);
    if (it == m_qmapNodes.cend())
        return false;
    _node = it.value();
    return true;
}

void CLS_WgtDeviceTree::SlotClicked(QString _qstrId, CLS_TreeItem _clsData)
{
    Q_UNUSED(_clsData)
    CLS_CustomTreeNode node;
    if (LookupNode(_qstrId, node))
        emit SignClicked(node);
}

void CLS_WgtDeviceTree::SlotDblClicked(QString _qstrId, CLS_TreeItem _clsData)
{
    Q_UNUSED(_clsData)
    CLS_CustomTreeNode node;
    if (!LookupNode(_qstrId, node) || node.m_iType == CONST_iTypeGroup)
        return;

    // A page may delete the row, clear the tree or even delete this widget in its slot: from here on
    // only ids are used, each looked up afresh.
    QPointer<CLS_WgtDeviceTree> pSelf(this);
    emit SignDblClicked(node);
    if (pSelf.isNull())
        return;

    const QString qstrTreeId = node.m_qstrTreeId;
    Qt::CheckState iState = Qt::Unchecked;
    if (m_pTreePanel != nullptr && !qstrTreeId.isEmpty() && m_qmapNodes.contains(qstrTreeId))
        m_pTreePanel->GetItemCheckStatus(qstrTreeId, iState); // only the state counts
    SetItemCheckStatus(qstrTreeId, iState != Qt::Unchecked ? Qt::Unchecked : Qt::Checked, true);
}

void CLS_WgtDeviceTree::SlotCheckedStatusChange(QString _qstrId, bool _blChecked, CLS_TreeItem _clsData)
{
    Q_UNUSED(_clsData)
    if (_qstrId.isEmpty())
        return;
    const auto itNode = m_qmapNodes.constFind(_qstrId);
    if (itNode == m_qmapNodes.cend())
        return;

    if (itNode.value().m_iType == CONST_iTypeGroup) {
        // An empty group of a custom tree can't stay checked: put it back quietly.
        if (m_iTreeType == DEV_TREE_CUSTOM && !HasChildNode(_qstrId))
            SetItemCheckStatus(_qstrId, Qt::Unchecked, false);
        return; // groups are never reported
    }

    // The node as it is now: what the page is told and what the batch reports, whatever the
    // page's slot changes. With nothing connected, nothing runs in between and the map's own
    // node is queued.
    static const QMetaMethod s_signal = QMetaMethod::fromSignal(&CLS_WgtDeviceTree::SignCheckedStatusChanged);
    CLS_CustomTreeNode nodeSent;
    const bool blConnected = isSignalConnected(s_signal);
    if (blConnected) {
        nodeSent = itNode.value();
        QPointer<CLS_WgtDeviceTree> pSelf(this);
        emit SignCheckedStatusChanged(nodeSent, _blChecked); // outside the lock
        if (pSelf.isNull())
            return; // a page deleted the tree in its slot
    }

    QMutexLocker locker(&m_mtxChecked);
    if (!m_tmCheckedWatcher.isActive()) {
        // Opens a batch: fixed 200 ms from this first change.
        m_tmCheckedWatcher.start();
        m_qvecCheckChangedQueue.clear();
        m_qmapCheckChanged.clear();
    }
    auto itSend = m_qmapCheckChanged.constFind(_qstrId);
    if (itSend != m_qmapCheckChanged.cend() && !itSend.value())
        return; // quietly set earlier in this batch
    // An empty entry filled in place: one copy of the node instead of two.
    m_qvecCheckChangedQueue.append(QPair<CLS_CustomTreeNode, bool>());
    m_qvecCheckChangedQueue.last().first = blConnected ? nodeSent : itNode.value();
    m_qvecCheckChangedQueue.last().second = _blChecked;
}

void CLS_WgtDeviceTree::SlotSelected(QString _qstrId, CLS_TreeItem _clsData, QString _qstrOldId)
{
    Q_UNUSED(_clsData)
    Q_UNUSED(_qstrOldId)
    CLS_CustomTreeNode node;
    if (LookupNode(_qstrId, node))
        emit SignSelected(node);
}

void CLS_WgtDeviceTree::SlotRightClicked(QString _qstrId, CLS_TreeItem _clsData)
{
    Q_UNUSED(_clsData)
    CLS_CustomTreeNode node;
    if (LookupNode(_qstrId, node))
        emit SignRightClicked(node);
}

void CLS_WgtDeviceTree::SlotTreeMenuItemClicked(QString _qstrItemId, bool _blChecked)
{
    if (m_pTreePanel == nullptr)
        return;
    // The current row, not necessarily the one right-clicked.
    CLS_CustomTreeNode node;
    if (GetCurrentItem(node) < 0)
        return;
    emit SignRightMenuItemClicked(node, _qstrItemId, _blChecked);
}

void CLS_WgtDeviceTree::SlotClickButton(QString _qstrId, CLS_ItemButton _clsData)
{
    CLS_CustomTreeNode node;
    if (LookupNode(_qstrId, node))
        emit SignToolButtonClicked(_clsData.m_qstrId, node, _clsData);
}

void CLS_WgtDeviceTree::SlotDroped(CLS_TreeItem _clsDropItem)
{
    Q_UNUSED(_clsDropItem)
}

void CLS_WgtDeviceTree::SlotChecked(QString _qstrId, bool _blChecked, CLS_TreeItem _clsData)
{
    Q_UNUSED(_clsData)
    CLS_CustomTreeNode node;
    if (LookupNode(_qstrId, node))
        emit SignChecked(node, _blChecked);
}

void CLS_WgtDeviceTree::SlotCheckedSignalWatcherTimeout()
{
    m_tmCheckedWatcher.stop(); // a repeating timer: this stop makes one shot per batch
    QVector<QPair<CLS_CustomTreeNode, bool>> qvecQueue;
    {
        QMutexLocker locker(&m_mtxChecked);
        if (m_qvecCheckChangedQueue.isEmpty())
            return;
        m_qmapCheckChanged.clear();
        qvecQueue = std::move(m_qvecCheckChangedQueue);
        m_qvecCheckChangedQueue.clear();
    }
    emit SignCheckedStatusChangedQueue(qvecQueue, nullptr);
}

void CLS_WgtDeviceTree::SetItemCheckStatus(const QString& _qstrId, Qt::CheckState _iState, bool _blSend)
{
    if (m_pTreePanel == nullptr)
        return;
    const QString qstrId = _qstrId.isEmpty() ? m_qstrRootId : _qstrId; // empty: the root row
    {
        QMutexLocker locker(&m_mtxChecked);
        m_qmapCheckChanged.insert(qstrId, _blSend);
        if (_blSend) {
            // Room for every row the cascade may report, so that the queue of a big site doesn't
            // grow and move step by step.
            CLS_WgtBaseTreeWidget* pTree = PanelTree();
            const int iRows =
                pTree != nullptr ? CLS_WgtBaseTreeWidget::CountRows(pTree->GetNodeById(qstrId)) : 0;
            if (iRows > 64)
                m_qvecCheckChangedQueue.reserve(m_qvecCheckChangedQueue.size() + iRows);
        }
    }
    // Not under the lock: the panel may come straight back into SlotCheckedStatusChange.
    m_pTreePanel->SetItemCheckStatus(qstrId, _iState, _blSend);
    m_pTreePanel->update();
}

void CLS_WgtDeviceTree::SetItemDisabled(const QString& _qstrId, bool blState)
{
    if (m_pTreePanel == nullptr)
        return;
    // The caller's id as given: unlike SetItemCheckStatus an empty id is not the root here.
    m_pTreePanel->SetItemDisabled(_qstrId, blState);
}

void CLS_WgtDeviceTree::SetCurrentItem(const QString& _qstrId, bool _blSend)
{
    if (m_pTreePanel == nullptr)
        return;
    m_pTreePanel->SetCurrentItem(_qstrId, _blSend);
}

void CLS_WgtDeviceTree::ClearSelect()
{
    if (m_pTreePanel != nullptr && m_pTreePanel->GetBaseTree() != nullptr)
        m_pTreePanel->GetBaseTree()->clearSelection();
}

void CLS_WgtDeviceTree::ShowSearch()
{
    if (m_pTreePanel != nullptr)
        m_pTreePanel->SetSearchVisible(true);
}

void CLS_WgtDeviceTree::ClearSearch()
{
    if (m_pTreePanel != nullptr)
        m_pTreePanel->ClearSearch();
}

void CLS_WgtDeviceTree::ClearAndCloseSearch()
{
    if (m_pTreePanel != nullptr)
        m_pTreePanel->ClearAndCloseSearch();
}

void CLS_WgtDeviceTree::ShowMenu(const QList<_MenuItem>& _qlstItems)
{
    if (m_pTreePanel == nullptr)
        return;
    m_pTreePanel->ShowMenu(_qlstItems);
}

// ---- status filter, channel counts, view state (CLS_DeviceTreeOperatorView) -------------------------

int CLS_WgtDeviceTree::GetChannelCounts(const QString& _qstrTreeId, int& _iOnline, int& _iTotal) const
{
    if (_qstrTreeId.isEmpty() || !m_qmapNodes.contains(_qstrTreeId))
        return -1;
    m_pOperatorView->GetChannelCounts(_qstrTreeId, _iOnline, _iTotal);
    return 0;
}
