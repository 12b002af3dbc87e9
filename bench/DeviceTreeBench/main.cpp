// Times CLS_WgtDeviceTree and its status thread on one installation of hosts with 32 channels each,
// against hand-written code that does the same work on a bare QTreeWidget (or, for the poll pass,
// a plain loop over the device layer), in the same run and on the same records.
// Prints one table: case, rows or channels, our time, baseline time, ratio (ours / baseline), and
// the same per channel. The icons are real pictures, drawn beside the program at its start; the
// baseline keeps one shared QIcon per picture file, as an experienced Qt engineer writes it, while
// the tree reads each file once per build or batch. Nothing here asserts a time; the program fails
// (exit 1) only when a result is wrong: a row count, or a poll pass over an unchanged installation that
// reports something.
//
//   DeviceTreeBench [--hosts <count>] [--reps <count>]
//
// The installation lives in the reference device layer (libDevManage.so, linked, so its control
// functions are at hand); the reference application library is linked for the application state
// that ends the status thread's loop after one pass. GUI thread, like the widgets it measures.

#include "CLS_DevManage.h"
#include "CLS_DeviceTreeBGThread.h"
#include "CLS_IDevFactory.h"
#include "CLS_IResourceTree.h"
#include "CLS_WgtDeviceTree.h"
#include "DevManageControl.h"
#include "DevStructDefine.h"
#include "LxAppManager.h"
#include "LxAppManagerControl.h"

#include <QAction>
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QHash>
#include <QHeaderView>
#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QStackedWidget>
#include <QToolBar>
#include <QTreeWidget>
#include <QTreeWidgetItem>
#include <QTreeWidgetItemIterator>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <vector>

// ---- allocation counter -----------------------------------------------------------------------------

// Counts every heap allocation of the process while switched on: malloc, calloc and realloc are
// taken over here and handed to the C library's own entry points, so Qt's containers and strings
// (which allocate with malloc) are counted as well as operator new (which calls malloc). Only used
// around a poll pass that runs on this thread while every other thread of the program is idle, so
// the count is the pass's own, device layer included.
namespace {
std::atomic<bool> s_blCountAllocs{false};
std::atomic<long long> s_llAllocs{0};

inline void CountAlloc()
{
    if (s_blCountAllocs.load(std::memory_order_relaxed))
        s_llAllocs.fetch_add(1, std::memory_order_relaxed);
}
} // namespace

extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void __libc_free(void*);

void* malloc(std::size_t _uSize)
{
    CountAlloc();
    return __libc_malloc(_uSize);
}
void* calloc(std::size_t _uCount, std::size_t _uSize)
{
    CountAlloc();
    return __libc_calloc(_uCount, _uSize);
}
void* realloc(void* _p, std::size_t _uSize)
{
    CountAlloc();
    return __libc_realloc(_p, _uSize);
}
void free(void* _p)
{
    __libc_free(_p);
}
}

namespace {

constexpr int CONST_iChannelsPerHost = 32;
constexpr int CONST_iHostsPerArea = 10; // generic tree: area groups of ten host groups
constexpr int CONST_iAppQuitting = 2;
const QString CONST_qstrResourceRootId = QStringLiteral("resource_root_id");
const QString CONST_qstrCustomRootId = QStringLiteral("custom_root_id");

bool s_blFailed = false;

void Fail(const QString& _qstrWhat)
{
    std::fprintf(stderr, "MISMATCH: %s\n", qPrintable(_qstrWhat));
    s_blFailed = true;
}

// ---- table ------------------------------------------------------------------------------------------

void PrintHeader()
{
    std::printf("%-24s %8s %11s %14s %7s %14s %14s\n", "case", "size", "ours (ms)", "baseline (ms)", "ratio",
                "ours (us/ch)", "base (us/ch)");
}

void PrintRow(const char* _pCase, int _iSize, int _iChannels, double _dOurs, double _dBase)
{
    const double dRatio = _dBase > 0.0 ? _dOurs / _dBase : 0.0;
    std::printf("%-24s %8d %11.3f %14.3f %7.2f %14.3f %14.3f\n", _pCase, _iSize, _dOurs, _dBase, dRatio,
                _dOurs * 1000.0 / _iChannels, _dBase * 1000.0 / _iChannels);
    std::fflush(stdout);
}

// A part of the case above it: ours only, no baseline.
void PrintPart(const char* _pCase, int _iSize, int _iChannels, double _dOurs)
{
    std::printf("%-24s %8d %11.3f %14s %7s %14.3f %14s\n", _pCase, _iSize, _dOurs, "-", "-",
                _dOurs * 1000.0 / _iChannels, "-");
    std::fflush(stdout);
}

// Best of _iReps runs of _fun, in ms; _funSetup runs untimed before each.
double BestOf(int _iReps, const std::function<void()>& _funSetup, const std::function<void()>& _fun,
              const std::function<void()>& _funTeardown = {})
{
    double dBest = 1e300;
    for (int i = 0; i < _iReps; ++i) {
        if (_funSetup)
            _funSetup();
        QElapsedTimer timer;
        timer.start();
        _fun();
        dBest = std::min(dBest, timer.nsecsElapsed() / 1e6);
        if (_funTeardown)
            _funTeardown();
    }
    return dBest;
}

int CountRows(QWidget* _pWidget)
{
    auto* pTree = qobject_cast<QTreeWidget*>(_pWidget);
    if (pTree == nullptr)
        pTree = _pWidget->findChild<QTreeWidget*>();
    if (pTree == nullptr)
        return -1;
    int iRows = 0;
    for (QTreeWidgetItemIterator it(pTree); *it != nullptr; ++it)
        ++iRows;
    return iRows;
}

// ---- the installation ---------------------------------------------------------------------------------

QString HostId(int _iHost)
{
    return QString("host_%1").arg(_iHost, 6, 10, QChar('0'));
}

QString ChannelId(int _iHost, int _iCh)
{
    return QString("%1_ch%2").arg(HostId(_iHost)).arg(_iCh + 1, 2, 10, QChar('0'));
}

// Every third channel off line; the others on line.
int ChannelStatus(int _iHost, int _iCh)
{
    return (_iHost + _iCh) % 3 == 0 ? 0 : 1;
}

// The custom (generic) tree's nodes: area groups, one group per host, its channels. The root is
// left to Init, which adds it.
QMap<QString, CLS_CustomTreeNode> MakeNodes(int _iHosts)
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    for (int iHost = 0; iHost < _iHosts; ++iHost) {
        const QString qstrArea = QString("area_%1").arg(iHost / CONST_iHostsPerArea, 5, 10, QChar('0'));
        if (iHost % CONST_iHostsPerArea == 0) {
            CLS_CustomTreeNode node;
            node.m_qstrTreeId = qstrArea;
            node.m_qstrDevId = qstrArea;
            node.m_qstrTreeParentId = CONST_qstrCustomRootId;
            node.m_qstrName = QString("Area %1").arg(iHost / CONST_iHostsPerArea);
            node.m_iType = 2;
            node.m_iSortNo = iHost / CONST_iHostsPerArea;
            qmapNodes.insert(node.m_qstrTreeId, node);
        }
        CLS_CustomTreeNode nodeHost;
        nodeHost.m_qstrTreeId = "g_" + HostId(iHost);
        nodeHost.m_qstrDevId = nodeHost.m_qstrTreeId;
        nodeHost.m_qstrTreeParentId = qstrArea;
        nodeHost.m_qstrName = QString("Recorder %1").arg(iHost);
        nodeHost.m_iType = 2;
        nodeHost.m_iSortNo = iHost % CONST_iHostsPerArea;
        qmapNodes.insert(nodeHost.m_qstrTreeId, nodeHost);
        for (int iCh = 0; iCh < CONST_iChannelsPerHost; ++iCh) {
            CLS_CustomTreeNode node;
            node.m_qstrDevId = ChannelId(iHost, iCh);
            node.m_qstrTreeId = "c_" + node.m_qstrDevId;
            node.m_qstrTreeParentId = nodeHost.m_qstrTreeId;
            node.m_qstrDevParentId = HostId(iHost);
            node.m_qstrName = QString("Recorder %1 Cam %2").arg(iHost).arg(iCh + 1, 2, 10, QChar('0'));
            node.m_iType = 4;
            node.m_iStatus = ChannelStatus(iHost, iCh);
            node.m_iSortNo = iCh + 1;
            node.m_iChannelNo = iCh + 1;
            qmapNodes.insert(node.m_qstrTreeId, node);
        }
    }
    return qmapNodes;
}

// The same hosts and channels as resources of the device layer, hosts under the resource root.
void LoadInstallation(int _iHosts)
{
    DevManageCtl_Reset();
    DevManageCtl_AddGroup("resource_root_id", "All resources", "", 0, "");
    for (int iHost = 0; iHost < _iHosts; ++iHost) {
        const QByteArray qbaHost = HostId(iHost).toUtf8();
        const QByteArray qbaHostName = QString("Recorder %1").arg(iHost).toUtf8();
        DevManageCtl_AddHost(qbaHost.constData(), qbaHostName.constData(), "resource_root_id", iHost, 1, "");
        for (int iCh = 0; iCh < CONST_iChannelsPerHost; ++iCh) {
            const QByteArray qbaCh = ChannelId(iHost, iCh).toUtf8();
            const QByteArray qbaName =
                QString("Recorder %1 Cam %2").arg(iHost).arg(iCh + 1, 2, 10, QChar('0')).toUtf8();
            DevManageCtl_AddChannel(qbaCh.constData(), qbaName.constData(), qbaHost.constData(), iCh + 1,
                                    ChannelStatus(iHost, iCh), iCh + 1, "");
        }
    }
}

// ---- the baseline tree ----------------------------------------------------------------------------------

// One row as a page would describe it before building: what the bare tree needs, nothing more.
struct STRCT_BareRow
{
    QString m_qstrId;
    QString m_qstrParentId;
    QString m_qstrDevId;
    QString m_qstrText;
    QString m_qstrIcon;
    int m_iSortNo = 0;
};

// The same rows on a plain QTreeWidget: text, tool tip, icon, check state, the id in item data,
// children ordered by sort number, and one device id -> row hash for status updates. Root open,
// the rest folded, as the device tree leaves it.
class CLS_BareTree
{
public:
    static constexpr int CONST_iIdRole = Qt::UserRole + 1;

    QTreeWidget m_tree;
    QHash<QString, QTreeWidgetItem*> m_qhashByDevId; // rows owned by m_tree

    // The device tree's header: one column as wide as its contents, hidden.
    CLS_BareTree()
    {
        m_tree.header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        m_tree.header()->setHidden(true);
    }

    void Build(const QString& _qstrRootId, const QVector<STRCT_BareRow>& _qvecRows)
    {
        m_tree.clear();
        m_qhashByDevId.clear();
        QHash<QString, QVector<const STRCT_BareRow*>> qhashChildren;
        const STRCT_BareRow* pRoot = nullptr;
        for (const STRCT_BareRow& stRow : _qvecRows) {
            if (stRow.m_qstrId == _qstrRootId)
                pRoot = &stRow;
            else
                qhashChildren[stRow.m_qstrParentId].append(&stRow);
        }
        if (pRoot == nullptr)
            return;
        for (auto& qvecChildren : qhashChildren) {
            std::stable_sort(qvecChildren.begin(), qvecChildren.end(),
                             [](const STRCT_BareRow* _pA, const STRCT_BareRow* _pB) {
                                 return _pA->m_iSortNo < _pB->m_iSortNo;
                             });
        }
        QTreeWidgetItem* pRootItem = MakeRow(*pRoot);
        m_tree.addTopLevelItem(pRootItem);
        AddChildren(pRootItem, pRoot->m_qstrId, qhashChildren);
        pRootItem->setExpanded(true);
    }

    void SetIcon(const QString& _qstrDevId, const QString& _qstrIcon)
    {
        if (QTreeWidgetItem* pItem = m_qhashByDevId.value(_qstrDevId))
            pItem->setIcon(0, Icon(_qstrIcon));
    }

    // A tool bar in column 1 of the row of each device id: a stack of one page holding a bar with
    // one action per button, each with its picture, text, tool tip and the button in its data.
    void MountToolBars(const QVector<QString>& _qvecDevIds, const QVector<CLS_ItemButton>& _qvecButtons)
    {
        m_tree.setColumnCount(2);
        for (const QString& qstrDevId : _qvecDevIds) {
            QTreeWidgetItem* pItem = m_qhashByDevId.value(qstrDevId);
            if (pItem == nullptr)
                continue;
            auto* pBar = new QToolBar;
            QList<QAction*> qlstActions;
            for (const CLS_ItemButton& clsButton : _qvecButtons) {
                auto* pAction = new QAction(Icon(clsButton.m_qstrIcon), clsButton.m_qstrText, pBar);
                pAction->setToolTip(clsButton.m_qstrTooltip);
                pAction->setData(QVariant::fromValue(clsButton));
                qlstActions.append(pAction);
            }
            pBar->addActions(qlstActions);
            auto* pStack = new QStackedWidget;
            pStack->addWidget(pBar);
            m_tree.setItemWidget(pItem, 1, pStack);
            pStack->setCurrentIndex(0);
        }
    }

private:
    // One shared QIcon per picture file.
    QIcon Icon(const QString& _qstrPath)
    {
        auto it = m_qhashIcons.constFind(_qstrPath);
        if (it == m_qhashIcons.cend())
            it = m_qhashIcons.insert(_qstrPath, QIcon(_qstrPath));
        return it.value();
    }
    QHash<QString, QIcon> m_qhashIcons;

    QTreeWidgetItem* MakeRow(const STRCT_BareRow& _stRow)
    {
        auto* pItem = new QTreeWidgetItem;
        pItem->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        pItem->setCheckState(0, Qt::Unchecked);
        pItem->setText(0, _stRow.m_qstrText);
        pItem->setToolTip(0, _stRow.m_qstrText);
        pItem->setIcon(0, Icon(_stRow.m_qstrIcon));
        pItem->setData(0, CONST_iIdRole, _stRow.m_qstrId);
        m_qhashByDevId.insert(_stRow.m_qstrDevId, pItem);
        return pItem;
    }

    void AddChildren(QTreeWidgetItem* _pParent, const QString& _qstrId,
                     const QHash<QString, QVector<const STRCT_BareRow*>>& _qhashChildren)
    {
        auto it = _qhashChildren.constFind(_qstrId);
        if (it == _qhashChildren.cend())
            return;
        QList<QTreeWidgetItem*> qlstItems;
        qlstItems.reserve(it->size());
        for (const STRCT_BareRow* pRow : *it)
            qlstItems.append(MakeRow(*pRow));
        _pParent->addChildren(qlstItems);
        for (int i = 0; i < it->size(); ++i)
            AddChildren(qlstItems.at(i), it->at(i)->m_qstrId, _qhashChildren);
    }
};

// The icon file of the device tree for a node, by the same rules, so both sides load the same.
QString IconOf(const QString& _qstrPicPath, int _iType, int _iStatus)
{
    switch (_iType) {
    case 2:
        return _qstrPicPath + "fenzu.png";
    case 3:
        return _qstrPicPath + (_iStatus == 0 ? "host_offline.png" : "host_online.png");
    case 4:
        return _qstrPicPath + (_iStatus == 0 ? "channel_offline.png" : "channel_online.png");
    default:
        return QString();
    }
}

QString PicPath()
{
    return QCoreApplication::applicationDirPath() + "/resource/skin/dark/WgtTreeWidget/images/";
}

// The rows a page would describe for the generic tree of _qmapNodes: the root "Custom", then every
// node with the icon of its type and status.
QVector<STRCT_BareRow> BareRowsOfNodes(const QMap<QString, CLS_CustomTreeNode>& _qmapNodes,
                                       const QString& _qstrPicPath)
{
    QVector<STRCT_BareRow> qvecRows;
    qvecRows.reserve(_qmapNodes.size() + 1);
    qvecRows.append(
        {CONST_qstrCustomRootId, QString(), CONST_qstrCustomRootId, "Custom", _qstrPicPath + "fenzu.png", 0});
    for (const CLS_CustomTreeNode& node : _qmapNodes)
        qvecRows.append({node.m_qstrTreeId, node.m_qstrTreeParentId, node.m_qstrDevId, node.m_qstrName,
                         IconOf(_qstrPicPath, node.m_iType, node.m_iStatus), node.m_iSortNo});
    return qvecRows;
}

// Test-only view of the status thread: one poll pass on the calling thread. With the application
// state at "quitting", run() returns at the first tick of the wait that follows a pass, so one call
// is one pass (and the state stays "running", so the next call is the next pass, cache kept).
class CLS_BenchBGThread : public CLS_DeviceTreeBGThread
{
public:
    using CLS_DeviceTreeBGThread::CLS_DeviceTreeBGThread;
    void RunOnePass() { run(); }
    std::size_t CacheSize()
    {
        QReadLocker lock(&m_rwlockChannelStatus);
        return m_mapChannelStatus.size();
    }
};

// Draws the pictures the trees of this program show into the skin folder beside it, where the device
// tree looks for them: each a 16 x 16 square of its own colour. False if one cannot be written.
bool DrawPictures()
{
    const QString qstrPicPath = PicPath();
    if (!QDir().mkpath(qstrPicPath))
        return false;
    const QStringList qlstNames{"root_icon",    "fenzu",          "host_online",
                                "host_offline", "channel_online", "channel_offline",
                                "channel_no",   "preview",        "playback"};
    for (int i = 0; i < qlstNames.size(); ++i) {
        QImage image(16, 16, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(QColor::fromHsv(i * 36, 200, 220));
        painter.drawRoundedRect(QRectF(1, 1, 14, 14), 3, 3);
        painter.end();
        if (!image.save(qstrPicPath + qlstNames.at(i) + ".png", "PNG"))
            return false;
    }
    return true;
}

// ---- cases -----------------------------------------------------------------------------------------

void BenchGenericInit(int _iHosts, int _iReps)
{
    const QMap<QString, CLS_CustomTreeNode> qmapNodes = MakeNodes(_iHosts);
    const int iExpectedRows = qmapNodes.size() + 1; // plus the root Init adds
    const int iChannels = _iHosts * CONST_iChannelsPerHost;

    std::unique_ptr<CLS_WgtDeviceTree> pTree;
    QMap<QString, CLS_CustomTreeNode> qmapCopy;
    int iRows = 0;
    const double dOurs = BestOf(
        _iReps,
        [&] {
            pTree = std::make_unique<CLS_WgtDeviceTree>(nullptr, DEV_TREE_GENERIC, false, true);
            qmapCopy = qmapNodes;
        },
        [&] {
            pTree->Init(qmapCopy, "Custom");
            QCoreApplication::processEvents();
        },
        [&] {
            iRows = CountRows(pTree.get());
            pTree.reset();
        });
    if (iRows != iExpectedRows)
        Fail(QString("generic init: %1 rows, expected %2").arg(iRows).arg(iExpectedRows));

    // Baseline: the page's own rows from the same nodes.
    const QString qstrPicPath = PicPath();
    std::unique_ptr<CLS_BareTree> pBare;
    const double dBase = BestOf(
        _iReps, [&] { pBare = std::make_unique<CLS_BareTree>(); },
        [&] {
            pBare->Build(CONST_qstrCustomRootId, BareRowsOfNodes(qmapNodes, qstrPicPath));
            QCoreApplication::processEvents();
        },
        [&] {
            iRows = CountRows(&pBare->m_tree);
            pBare.reset();
        });
    if (iRows != iExpectedRows)
        Fail(QString("generic baseline: %1 rows, expected %2").arg(iRows).arg(iExpectedRows));
    PrintRow("init nodes (generic)", iExpectedRows, iChannels, dOurs, dBase);

    // Of which the model and row records alone (no widget rows): BuildTreeItems on a fresh tree.
    QMap<QString, CLS_TreeItem> qmapRows;
    const double dModel = BestOf(
        _iReps,
        [&] {
            pTree = std::make_unique<CLS_WgtDeviceTree>(nullptr, DEV_TREE_GENERIC, false, true);
            qmapRows.clear();
        },
        [&] { pTree->BuildTreeItems(qmapNodes, "Custom", qmapRows); }, [&] { pTree.reset(); });
    PrintPart("  of which records", qmapRows.size(), iChannels, dModel);
}

// A build in which every channel row carries a tool bar of two buttons: a widget stack, a bar and
// its buttons per row, made and mounted on the view. Fewer hosts than the other cases: each bar is a
// handful of widgets, and Qt's handling of the events they post grows faster than their number.
void BenchToolBarInit(int _iHosts, int _iReps)
{
    const QMap<QString, CLS_CustomTreeNode> qmapNodes = MakeNodes(_iHosts);
    const int iExpectedRows = qmapNodes.size() + 1;
    const int iChannels = _iHosts * CONST_iChannelsPerHost;
    const QString qstrPicPath = PicPath();
    QVector<CLS_ItemButton> qvecButtons(2);
    qvecButtons[0].m_qstrId = "preview";
    qvecButtons[0].m_qstrText = "Preview";
    qvecButtons[0].m_qstrTooltip = "Open the live view";
    qvecButtons[1].m_qstrId = "playback";
    qvecButtons[1].m_qstrText = "Playback";
    qvecButtons[1].m_qstrTooltip = "Play the recordings back";

    std::unique_ptr<CLS_WgtDeviceTree> pTree;
    QMap<QString, CLS_CustomTreeNode> qmapCopy;
    int iRows = 0;
    int iBars = 0;
    const double dOurs = BestOf(
        _iReps,
        [&] {
            pTree = std::make_unique<CLS_WgtDeviceTree>(nullptr, DEV_TREE_GENERIC, false, true);
            qmapCopy = qmapNodes;
        },
        [&] {
            pTree->Init(qmapCopy, "Custom", {{4, qvecButtons}});
            QCoreApplication::processEvents();
        },
        [&] {
            iRows = CountRows(pTree.get());
            iBars = pTree->findChildren<QToolBar*>().size();
            pTree.reset();
        });
    if (iRows != iExpectedRows || iBars != iChannels)
        Fail(QString("tool bar init: %1 rows and %2 bars, expected %3 and %4")
                 .arg(iRows)
                 .arg(iBars)
                 .arg(iExpectedRows)
                 .arg(iChannels));

    // Baseline: the plain rows of the generic case, then a bar of the same buttons on each channel.
    QVector<CLS_ItemButton> qvecBareButtons = qvecButtons;
    for (CLS_ItemButton& clsButton : qvecBareButtons)
        clsButton.m_qstrIcon = qstrPicPath + clsButton.m_qstrId + ".png";
    QVector<QString> qvecChannelIds;
    for (const CLS_CustomTreeNode& node : qmapNodes) {
        if (node.m_iType == 4)
            qvecChannelIds.append(node.m_qstrDevId);
    }
    std::unique_ptr<CLS_BareTree> pBare;
    const double dBase = BestOf(
        _iReps, [&] { pBare = std::make_unique<CLS_BareTree>(); },
        [&] {
            pBare->Build(CONST_qstrCustomRootId, BareRowsOfNodes(qmapNodes, qstrPicPath));
            pBare->MountToolBars(qvecChannelIds, qvecBareButtons);
            QCoreApplication::processEvents();
        },
        [&] {
            iBars = pBare->m_tree.findChildren<QToolBar*>().size();
            pBare.reset();
        });
    if (iBars != iChannels)
        Fail(QString("tool bar baseline: %1 bars, expected %2").arg(iBars).arg(iChannels));
    PrintRow("init with tool bars", iExpectedRows, iChannels, dOurs, dBase);
}

// Leaves the last resource tree and bare tree in _pTree / _pBare for the status case.
void BenchResourceInit(int _iHosts, int _iReps,
                       const QMap<QString, std::weak_ptr<STRCT_VideoItem>>& _qmapItems,
                       std::unique_ptr<CLS_WgtDeviceTree>& _pTree, std::unique_ptr<CLS_BareTree>& _pBare)
{
    const int iExpectedRows = _qmapItems.size();
    const int iChannels = _iHosts * CONST_iChannelsPerHost;

    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapCopy;
    int iRows = 0;
    const double dOurs = BestOf(
        _iReps,
        [&] {
            _pTree.reset();
            _pTree = std::make_unique<CLS_WgtDeviceTree>(nullptr, DEV_TREE_RESOURCE, false, true);
            qmapCopy = _qmapItems;
        },
        [&] {
            _pTree->Init(qmapCopy, "All resources");
            QCoreApplication::processEvents();
        },
        [&] { iRows = CountRows(_pTree.get()); });
    if (iRows != iExpectedRows)
        Fail(QString("resource init: %1 rows, expected %2").arg(iRows).arg(iExpectedRows));

    // Baseline: each resource locked once and read into a row, then the same build.
    const QString qstrPicPath = PicPath();
    const double dBase = BestOf(
        _iReps,
        [&] {
            _pBare.reset();
            _pBare = std::make_unique<CLS_BareTree>();
        },
        [&] {
            QVector<STRCT_BareRow> qvecRows;
            qvecRows.reserve(_qmapItems.size());
            for (const std::weak_ptr<STRCT_VideoItem>& wpItem : _qmapItems) {
                const std::shared_ptr<STRCT_VideoItem> spItem = wpItem.lock();
                if (!spItem)
                    continue;
                const QString qstrId = QString::fromStdString(spItem->m_strId);
                const bool blRoot = qstrId == CONST_qstrResourceRootId;
                qvecRows.append(
                    {QString::fromStdString(spItem->m_strTreeId),
                     QString::fromStdString(spItem->m_strParentId), qstrId,
                     blRoot ? QString("All resources") : QString::fromStdString(spItem->m_strName),
                     blRoot ? qstrPicPath + "root_icon.png"
                            : IconOf(qstrPicPath, spItem->GetType(), spItem->m_iStatus),
                     spItem->m_iOrderNo});
            }
            _pBare->Build(CONST_qstrResourceRootId, qvecRows);
            QCoreApplication::processEvents();
        },
        [&] { iRows = CountRows(&_pBare->m_tree); });
    if (iRows != iExpectedRows)
        Fail(QString("resource baseline: %1 rows, expected %2").arg(iRows).arg(iExpectedRows));
    PrintRow("init weak (resource)", iExpectedRows, iChannels, dOurs, dBase);

    // Of which the folding after the rows are in: everything open, then each host closed on its
    // own, the way Init leaves the tree.
    const double dFold = BestOf(
        _iReps, [&] { _pTree->ExpandAll(); },
        [&] {
            _pTree->ExpandHostItem();
            QCoreApplication::processEvents();
        });
    PrintPart("  of which host folding", iExpectedRows, iChannels, dFold);

    // Of which the model and row records alone (no widget rows): BuildTreeItems on a fresh tree.
    std::unique_ptr<CLS_WgtDeviceTree> pScratch;
    QMap<QString, CLS_TreeItem> qmapRows;
    const double dModel = BestOf(
        _iReps,
        [&] {
            pScratch = std::make_unique<CLS_WgtDeviceTree>(nullptr, DEV_TREE_RESOURCE, false, true);
            qmapRows.clear();
        },
        [&] { pScratch->BuildTreeItems(_qmapItems, "All resources", qmapRows); }, [&] { pScratch.reset(); });
    PrintPart("  of which records", qmapRows.size(), iChannels, dModel);
}

// One batch naming every channel, each with a status other than the one it shows.
void BenchStatusBatch(int _iHosts, int _iReps, CLS_WgtDeviceTree* _pTree, CLS_BareTree* _pBare)
{
    const int iChannels = _iHosts * CONST_iChannelsPerHost;
    using StatusMap = QMap<QString, QPair<bool, int>>;
    StatusMap qmapBatch[2];
    for (int iHost = 0; iHost < _iHosts; ++iHost) {
        for (int iCh = 0; iCh < CONST_iChannelsPerHost; ++iCh) {
            const QString qstrId = ChannelId(iHost, iCh);
            const int iStatus = ChannelStatus(iHost, iCh);
            qmapBatch[0].insert(qstrId, qMakePair(false, 1 - iStatus));
            qmapBatch[1].insert(qstrId, qMakePair(false, iStatus));
        }
    }

    int iRep = 0;
    int iApplied = 0;
    QObject::connect(_pTree, &CLS_WgtDeviceTree::SignUpdateChannelsStatus, _pTree,
                     [&](QVariant) { ++iApplied; });
    const double dOurs = BestOf(_iReps, {}, [&] {
        const QVariant qvarBatch = QVariant::fromValue(qmapBatch[iRep++ % 2]);
        if (_pTree->UpdateAllChannelsStatus(qvarBatch) != 0)
            Fail("status batch refused");
        QCoreApplication::processEvents();
    });
    if (iApplied != _iReps)
        Fail(QString("status batch: %1 batches applied, expected %2").arg(iApplied).arg(_iReps));
    CLS_CustomTreeNode node;
    // Resource rows: the tree id is the resource id.
    if (_pTree->GetItemById(ChannelId(0, 1), node) != 0) {
        Fail("status batch: channel row not found");
    } else {
        const int iExpected = qmapBatch[(iRep - 1) % 2].value(ChannelId(0, 1)).second;
        if (node.m_iStatus != iExpected)
            Fail(QString("status batch: channel status %1, expected %2").arg(node.m_iStatus).arg(iExpected));
    }

    // Baseline: the page's own loop: device id -> row, icon by status.
    const QString qstrPicPath = PicPath();
    iRep = 0;
    const double dBase = BestOf(_iReps, {}, [&] {
        const QVariant qvarBatch = QVariant::fromValue(qmapBatch[iRep++ % 2]);
        const StatusMap qmapStatus = qvarBatch.value<StatusMap>();
        for (auto it = qmapStatus.cbegin(); it != qmapStatus.cend(); ++it)
            _pBare->SetIcon(it.key(), IconOf(qstrPicPath, 4, it.value().second));
        QCoreApplication::processEvents();
    });
    PrintRow("status batch (all ch)", iChannels, iChannels, dOurs, dBase);
}

// A hand-written poller: the channels listed once, each locked once, its status compared with the
// cache, changes collected.
class CLS_BarePoller
{
public:
    QMap<QString, QPair<bool, int>> Pass()
    {
        QMap<QString, QPair<bool, int>> qmapChanges;
        CLS_IResourceTree* pResourceTree = DevManage::GetResourceTree();
        if (pResourceTree == nullptr)
            return qmapChanges;
        QVector<std::weak_ptr<STRCT_VideoItem>> qvecItems;
        if (pResourceTree->ListItemsOfType(qvecItems, 4, QVector<QString>()).m_iCode < 0)
            return qmapChanges;
        for (const std::weak_ptr<STRCT_VideoItem>& wpItem : qvecItems) {
            const std::shared_ptr<STRCT_VideoItem> spItem = wpItem.lock();
            if (!spItem)
                continue;
            auto it = m_mapCache.find(spItem->m_strId);
            if (it == m_mapCache.end()) {
                m_mapCache.emplace(spItem->m_strId, spItem->m_iStatus);
                qmapChanges.insert(QString::fromStdString(spItem->m_strId),
                                   qMakePair(false, spItem->m_iStatus));
            } else if (it->second != spItem->m_iStatus) {
                it->second = spItem->m_iStatus;
                qmapChanges.insert(QString::fromStdString(spItem->m_strId),
                                   qMakePair(false, spItem->m_iStatus));
            }
        }
        return qmapChanges;
    }

private:
    std::map<std::string, int> m_mapCache;
};

void BenchPollPass(int _iHosts, int _iReps)
{
    const int iChannels = _iHosts * CONST_iChannelsPerHost;
    LxAppManagerCtl_SetAppState(CONST_iAppQuitting);

    CLS_BenchBGThread clsThread;
    int iEmits = 0;
    int iReported = 0;
    QObject::connect(
        &clsThread, &CLS_DeviceTreeBGThread::SignChannelStatusChanged, &clsThread,
        [&](QVariant _qvarData) {
            ++iEmits;
            iReported += _qvarData.value<QMap<QString, QPair<bool, int>>>().size();
        },
        Qt::DirectConnection);
    clsThread.Start();
    clsThread.RunOnePass(); // fills the cache: every channel reported once
    if (iEmits != 1 || iReported != iChannels)
        Fail(QString("first pass: %1 emissions of %2 channels, expected 1 of %3")
                 .arg(iEmits)
                 .arg(iReported)
                 .arg(iChannels));
    if (static_cast<int>(clsThread.CacheSize()) != iChannels)
        Fail(QString("first pass: cache of %1").arg(clsThread.CacheSize()));

    iEmits = 0;
    long long llAllocs = 0;
    const double dOurs = BestOf(
        _iReps, [&] { s_llAllocs = 0; },
        [&] {
            s_blCountAllocs = true;
            clsThread.RunOnePass();
            s_blCountAllocs = false;
        },
        [&] { llAllocs = s_llAllocs; });
    if (iEmits != 0)
        Fail(QString("unchanged installation: %1 emissions").arg(iEmits));
    const long long llOurAllocs = llAllocs;

    CLS_BarePoller clsBare;
    if (clsBare.Pass().size() != iChannels)
        Fail("baseline first pass");
    int iBareChanges = 0;
    const double dBase = BestOf(
        _iReps, [&] { s_llAllocs = 0; },
        [&] {
            s_blCountAllocs = true;
            iBareChanges += clsBare.Pass().size();
            s_blCountAllocs = false;
        },
        [&] { llAllocs = s_llAllocs; });
    if (iBareChanges != 0)
        Fail("baseline: changes on an unchanged installation");
    PrintRow("poll pass (unchanged)", iChannels, iChannels, dOurs, dBase);

    // Of which the device layer's own calls of a pass (the lists, and per channel the admission
    // and the fresh read), made the way the pass makes them, with their allocations.
    long long llLayerAllocs = 0;
    const double dLayer = BestOf(
        _iReps, [&] { s_llAllocs = 0; },
        [&] {
            s_blCountAllocs = true;
            CLS_IResourceTree* pTree = DevManage::GetResourceTree();
            CLS_IDevFactory* pFactory = DevManage::GetDevFactory();
            QVector<std::weak_ptr<STRCT_VideoItem>> qvecItems;
            pTree->ListItemsOfType(qvecItems, 4, QVector<QString>());
            QVector<QString> qvecIds;
            pTree->ListIdsOfType(4, qvecIds);
            for (const QString& qstrId : qvecIds) {
                if (!pFactory->IsIdAdmitted(qstrId))
                    continue;
                std::weak_ptr<STRCT_VideoItem> wpItem;
                pTree->GetItemOfChannel(wpItem, qstrId, -1, 0);
            }
            s_blCountAllocs = false;
        },
        [&] { llLayerAllocs = s_llAllocs; });
    PrintPart("  of which device layer", iChannels, iChannels, dLayer);
    std::printf("%-24s %8d %11lld %14lld %7.2f %14.2f %14.2f   (allocations, per channel)\n",
                "poll pass allocs", iChannels, llOurAllocs, llAllocs,
                llAllocs > 0 ? double(llOurAllocs) / llAllocs : 0.0, double(llOurAllocs) / iChannels,
                double(llAllocs) / iChannels);
    std::printf("%-24s %8d %11lld %14s %7s %14.2f %14s   (allocations, per channel)\n",
                "  of which device layer", iChannels, llLayerAllocs, "-", "-",
                double(llLayerAllocs) / iChannels, "-");
    LxAppManagerCtl_SetAppState(1);
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    QCommandLineOption optHosts("hosts", "Hosts of 32 channels each (default 1000).", "count", "1000");
    QCommandLineOption optReps("reps", "Runs per case; the best one counts (default 3).", "count", "3");
    parser.addOption(optHosts);
    parser.addOption(optReps);
    parser.process(app);
    const int iHosts = parser.value(optHosts).toInt();
    const int iReps = parser.value(optReps).toInt();
    if (iHosts < 1 || iReps < 1) {
        std::fprintf(stderr, "--hosts and --reps need positive numbers\n");
        return 2;
    }

    if (!DrawPictures()) {
        std::fprintf(stderr, "cannot write the pictures into %s\n", qPrintable(PicPath()));
        return 1;
    }
    LxAppManagerCtl_Reset();
    LoadInstallation(iHosts);
    {
        // Binds the sibling libraries and reads the settings once, so that their log lines come
        // before the table and their one-time cost is in no case.
        CLS_WgtDeviceTree clsWarm(nullptr, DEV_TREE_RESOURCE);
        LxAppManager::GetModuleFun("GetApp", "");
    }
    std::printf("%d hosts x %d channels, best of %d\n", iHosts, CONST_iChannelsPerHost, iReps);
    PrintHeader();

    {
        // The status threads of the trees below would poll the device layer beside the timings;
        // without a resource tree they only sleep. The weak map is taken before it goes.
        QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapItems;
        CLS_IResourceTree* pResourceTree = DevManage::GetResourceTree();
        if (pResourceTree == nullptr || pResourceTree->GetAllItems(qmapItems).m_iCode < 0) {
            std::fprintf(stderr, "no resource tree in the device layer\n");
            return 1;
        }
        DevManageCtl_SetObjectAvailable("GetResourceTree", 0);
        std::unique_ptr<CLS_WgtDeviceTree> pTree;
        std::unique_ptr<CLS_BareTree> pBare;
        BenchGenericInit(iHosts, iReps);
        // Two sizes, to show how the cost of a bar grows with the number of bars.
        BenchToolBarInit(std::min(iHosts, 25), iReps);
        if (iHosts > 25)
            BenchToolBarInit(std::min(iHosts, 100), iReps);
        BenchResourceInit(iHosts, iReps, qmapItems, pTree, pBare);
        if (pTree && pBare)
            BenchStatusBatch(iHosts, iReps, pTree.get(), pBare.get());
    } // the trees stop their status threads here (each within a second)
    DevManageCtl_SetObjectAvailable("GetResourceTree", 1);

    BenchPollPass(iHosts, iReps);
    return s_blFailed ? 1 : 0;
}
