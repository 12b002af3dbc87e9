// Large installations through CLS_WgtDeviceTree against a plain QTreeWidget written the way an
// experienced Qt engineer writes it: rows built with addChildren, one shared QIcon per picture file,
// uniform row heights, and the two tool buttons of a channel painted by a QStyledItemDelegate, with
// no widget per row. A custom tree of groups of 32 channels under one root, the dark skin of the demo
// loaded, the window shown (offscreen without a display).
//
//   ScaleBench [--groups 1000,3125] [--timeout S] [--only ours|base]
//       runs every case in child processes (one process per case and side, so that the peak RSS
//       of each side is its own) and prints one table: case, rows, ours, baseline, ratio.
//   ScaleBench --child --side ours|base --groups N --buttons none|always|hover --expanded 0|1
//       one case on one side; prints "OP <name> <ms>" lines, then "RSS <kB>".
//   ScaleBench --operator-view [--groups 3125]
//       our tree alone, expanded, with and without the status filter and the painted channel counts:
//       a status batch of every channel plain and with both on (ratio), switching the filter on
//       and off, and saving and restoring the view state with every group expanded.
//   ScaleBench --find-and-take [--groups 3125]
//       our tree alone, expanded, channels with addresses: one keystroke of the search by name
//       (the tree's own) against one keystroke of the search by words with paths (ratio), for the
//       same few hits and for every channel; CreateDragData + ReadDragData of 1,000 nodes; GetSelectedNodes
//       of 1,000 selected rows.
//   ScaleBench --day [--groups 1000,3125] [--no-siblings]
//       a page's day in one tree, for hover, no and always-shown buttons: Init, ExpandAll, 40 pages
//       of scrolling, a status batch that turns every channel off line, the root checked, two
//       search keystrokes, the tree deleted, peak RSS. Each side in a process of its own (the
//       program ScaleDay), with the sibling libraries on the library path or, with --no-siblings,
//       without them; our tree's status thread runs.
//   ScaleBench --soak [--seconds 120] [--channels 32000] [--changes-per-second 500]
//       the resource tree of the reference device layer at that size, every host expanded, the
//       simulator changing channels; prints the GUI thread's longest and 99th-percentile stall
//       (from a 10 ms heartbeat timer), RSS at minute 1 (or the start) and at the end, and the
//       status batches applied.
//
// The status thread of the device tree is stopped in the cases (see RunChild). Nothing here
// asserts a time. A case that runs over the timeout is printed as "timeout".

#include "CLS_DevManage.h"
#include "CLS_IResourceTree.h"
#include "CLS_WgtBaseTreeWidget.h"
#include "CLS_WgtDeviceTree.h"
#include "CLS_WgtTreeWidget.h"
#include "DevManageControl.h"
#include "DevStructDefine.h"
#include "LxAppManagerControl.h"
#include "ScaleSides.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QHeaderView>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QProcess>
#include <QProcessEnvironment>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>

#include <dlfcn.h>

namespace {

int RunChild(const QString& _qstrSide, const STRCT_Case& _stCase)
{
    // The status thread of the device tree leaves its loop after its first pass: the custom tree
    // here has no channels in the device layer, and a thread that finds none polls again at once.
    // Both sides then run on the GUI thread alone; the soak mode runs the thread for real.
    LxAppManagerCtl_SetAppState(2);
    std::unique_ptr<CLS_Side> pSide;
    if (_qstrSide == "ours")
        pSide = std::make_unique<CLS_OurSide>();
    else
        pSide = std::make_unique<CLS_BaseSide>();
    CLS_Side& side = *pSide;
    const int iChannels = _stCase.m_iGroups * CONST_iChannelsPerGroup;

    Report("init", TimeMs([&] {
               side.Init(_stCase);
               Settle(side.Window());
           }));
    if (_stCase.m_blExpanded) {
        Report("expand all", TimeMs([&] {
                   side.ExpandAll();
                   Settle(side.Window());
               }));
    }
    // A mouse over a channel row, so that a hover tool bar is up during the rest.
    if (QAbstractItemView* pView = side.View()) {
        const QPoint point(40, pView->viewport()->height() / 2);
        QMouseEvent move(QEvent::MouseMove, point, pView->viewport()->mapToGlobal(point), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(pView->viewport(), &move);
        Settle(side.Window());

        QScrollBar* pBar = pView->verticalScrollBar();
        Report("scroll 40 pages", TimeMs([&] {
                   for (int i = 0; i < CONST_iScrollPages; ++i) {
                       pBar->setValue(pBar->value() + pBar->pageStep());
                       QCoreApplication::processEvents();
                       pView->viewport()->repaint();
                   }
               }));
        pBar->setValue(0);
        Settle(side.Window());
    }
    const StatusMap qmapOnline = Batch(_stCase.m_iGroups, 1, 1);
    Report("status all", TimeMs([&] {
               side.Status(qmapOnline);
               Settle(side.Window());
           }));
    const StatusMap qmapFew = Batch(_stCase.m_iGroups, 20, 0);
    Report("status 5%", TimeMs([&] {
               side.Status(qmapFew);
               Settle(side.Window());
           }));
    Report("check+uncheck root", TimeMs([&] {
               side.CheckRoot(true);
               Settle(side.Window());
               side.CheckRoot(false);
               Settle(side.Window());
           }));
    if (QLineEdit* pLine = side.SearchLine()) {
        pLine->setFocus();
        Report("search keystroke", TimeMs([&] {
                   TypeKey(pLine, Qt::Key_7, "7");
                   Settle(side.Window());
               }));
        pLine->clear();
        Settle(side.Window());
    }
    Report("show by name+undo", TimeMs([&] {
               side.ShowByName("cam 0007-0");
               Settle(side.Window());
               side.ShowByName(CONST_qstrCommon);
               Settle(side.Window());
           }));
    if (!_stCase.m_blExpanded) {
        Report("expand all", TimeMs([&] {
                   side.ExpandAll();
                   Settle(side.Window());
               }));
    }
    Report("delete tree", TimeMs([&] {
               side.Destroy();
               QCoreApplication::processEvents();
           }));
    std::printf("ROWS %d\n", iChannels + _stCase.m_iGroups + 1);
    std::printf("RSS %ld\n", PeakRssKb());
    std::fflush(stdout);
    return 0;
}

// ---- status filter, channel counts and view state ---------------------------------------------------

// Median of five runs of _fnRun, each after _fnSetUp (not timed), with a paint after each.
double MedianMs(QWidget* _pWindow, const std::function<void()>& _fnSetUp, const std::function<void()>& _fnRun)
{
    QVector<double> qvecMs;
    for (int i = 0; i < 5; ++i) {
        _fnSetUp();
        Settle(_pWindow);
        qvecMs << TimeMs([&] {
            _fnRun();
            Settle(_pWindow);
        });
    }
    std::sort(qvecMs.begin(), qvecMs.end());
    return qvecMs.at(2);
}

int RunOperatorView(int _iGroups)
{
    LxAppManagerCtl_SetAppState(2); // no status thread: see RunChild
    CLS_OurSide side;
    side.Init(STRCT_Case{_iGroups, "none", true});
    side.ExpandAll();
    Settle(side.Window());
    CLS_WgtDeviceTree* pTree = side.Tree();
    const int iRows = _iGroups * (CONST_iChannelsPerGroup + 1) + 1;
    const StatusMap qmapOn = Batch(_iGroups, 1, 1);
    const StatusMap qmapOff = Batch(_iGroups, 1, 0);
    auto batchPair = [&] {
        side.Status(qmapOn);
        Settle(side.Window());
        side.Status(qmapOff);
    };
    auto offline = [&] { side.Status(qmapOff); };

    std::printf("%-52s %8s %10s %10s %8s\n", "case", "rows", "with (ms)", "plain (ms)", "ratio");
    auto row = [&](const char* _pCase, double _dWith, double _dPlain) {
        const QString qstrPlain = _dPlain < 0 ? QString("-") : QString::number(_dPlain, 'f', 1);
        const QString qstrRatio =
            _dPlain < 0 ? QString("-") : QString::number(_dWith / qMax(0.05, _dPlain), 'f', 2);
        std::printf("%-52s %8d %10.1f %10s %8s\n", _pCase, iRows, _dWith, qPrintable(qstrPlain),
                    qPrintable(qstrRatio));
        std::fflush(stdout);
    };
    // A batch that turns every channel on line and one that turns every channel off line again.
    const double dPlain = MedianMs(side.Window(), offline, batchPair);
    pTree->SetShowChannelCounts(true);
    pTree->SetStatusFilter(STATUS_FILTER_ONLINE);
    const double dWith = MedianMs(side.Window(), offline, batchPair);
    row("status all on, then all off: filter on line + counts", dWith, dPlain);
    pTree->SetStatusFilter(STATUS_FILTER_ALL);
    pTree->SetShowChannelCounts(false);
    const double dCounts = [&] {
        pTree->SetShowChannelCounts(true);
        const double d = MedianMs(side.Window(), offline, batchPair);
        pTree->SetShowChannelCounts(false);
        return d;
    }();
    row("status all on, then all off: counts only", dCounts, dPlain);

    // A batch of one channel in twenty going off line, and back: the common case.
    const StatusMap qmapFewOff = Batch(_iGroups, 20, 0);
    const StatusMap qmapFewOn = Batch(_iGroups, 20, 1);
    auto online = [&] { side.Status(qmapOn); };
    auto fewPair = [&] {
        side.Status(qmapFewOff);
        Settle(side.Window());
        side.Status(qmapFewOn);
    };
    const double dFewPlain = MedianMs(side.Window(), online, fewPair);
    pTree->SetShowChannelCounts(true);
    pTree->SetStatusFilter(STATUS_FILTER_OFFLINE);
    const double dFewWith = MedianMs(side.Window(), online, fewPair);
    pTree->SetStatusFilter(STATUS_FILTER_ALL);
    pTree->SetShowChannelCounts(false);
    row("status 5% off, then on again: filter off line + counts", dFewWith, dFewPlain);
    side.Status(qmapOff);
    Settle(side.Window());

    // Every channel off line: the on-line filter hides all 100,000 rows but the root.
    const double dOn = MedianMs(
        side.Window(), [&] { pTree->SetStatusFilter(STATUS_FILTER_ALL); },
        [&] { pTree->SetStatusFilter(STATUS_FILTER_ONLINE); });
    row("filter on line switched on (every row hidden)", dOn, -1);
    const double dOff = MedianMs(
        side.Window(), [&] { pTree->SetStatusFilter(STATUS_FILTER_ONLINE); },
        [&] { pTree->SetStatusFilter(STATUS_FILTER_ALL); });
    row("filter switched off again", dOff, -1);
    const double dSwap = MedianMs(
        side.Window(), [&] { pTree->SetStatusFilter(STATUS_FILTER_ONLINE); },
        [&] { pTree->SetStatusFilter(STATUS_FILTER_OFFLINE); });
    row("filter on line to off line (every row shown)", dSwap, -1);
    pTree->SetStatusFilter(STATUS_FILTER_ALL);

    QByteArray qbaState;
    const double dSave = MedianMs(
        side.Window(), [] {}, [&] { qbaState = pTree->SaveViewState(); });
    row(qPrintable(
            QString("save view state (%1 groups expanded, %2 bytes)").arg(_iGroups).arg(qbaState.size())),
        dSave, -1);
    const double dRestore = MedianMs(
        side.Window(), [&] { pTree->CollapseAll(); }, [&] { pTree->RestoreViewState(qbaState); });
    row("restore view state after fold all", dRestore, -1);
    // For scale on this machine: the tree's own expand-all of the same rows after a fold-all.
    const double dExpand = MedianMs(
        side.Window(), [&] { pTree->CollapseAll(); }, [&] { pTree->ExpandAll(); });
    row("for scale: ExpandAll after fold all", dExpand, -1);
    side.Destroy();
    return 0;
}

// ---- search by words, several rows, drag payload ---------------------------------------------------

int RunFindAndTake(int _iGroups)
{
    LxAppManagerCtl_SetAppState(2); // no status thread: see RunChild
    CLS_OurSide side;
    STRCT_Case stCase{_iGroups, "none", true};
    stCase.m_blAddresses = true;
    side.Init(stCase);
    side.ExpandAll();
    Settle(side.Window());
    CLS_WgtDeviceTree* pTree = side.Tree();
    QLineEdit* pLine = side.SearchLine();
    auto* pList = pTree->findChild<QListWidget*>("qlistWgtQueryResult");
    const int iRows = _iGroups * (CONST_iChannelsPerGroup + 1) + 1;
    std::printf("%-58s %8s %10s %10s %8s\n", "case", "rows", "ours (ms)", "by name", "ratio");
    auto row = [&](const QString& _qstrCase, double _dOurs, double _dByName) {
        const QString qstrByName = _dByName < 0 ? QString("-") : QString::number(_dByName, 'f', 1);
        const QString qstrRatio =
            _dByName < 0 ? QString("-") : QString::number(_dOurs / qMax(0.05, _dByName), 'f', 2);
        std::printf("%-58s %8d %10.2f %10s %8s\n", qPrintable(_qstrCase), iRows, _dOurs,
                    qPrintable(qstrByName), qPrintable(qstrRatio));
        std::fflush(stdout);
    };
    // One keystroke: the line holds _qstrBefore (not timed), then _qchKey is typed.
    int iHits = 0;
    auto keystroke = [&](const QString& _qstrBefore, Qt::Key _key, const QString& _qstrKey) {
        pLine->setFocus();
        const double dMs = MedianMs(
            side.Window(),
            [&] {
                pLine->setText(_qstrBefore);
                Settle(side.Window());
            },
            [&] { TypeKey(pLine, _key, _qstrKey); });
        iHits = pList->count();
        pLine->clear();
        Settle(side.Window());
        return dMs;
    };

    // One keystroke of the tree's own search by name against one of the search by words with paths;
    // the label takes the hits of each, words first.
    auto compare = [&](const QString& _qstrLabel, const QString& _qstrNameBefore, Qt::Key _nameKey,
                       const QString& _qstrNameKey, const QString& _qstrWordsBefore, Qt::Key _wordsKey,
                       const QString& _qstrWordsKey) {
        pTree->SetSearchMode(0);
        pTree->SetSearchShowsPath(false);
        const double dByName = keystroke(_qstrNameBefore, _nameKey, _qstrNameKey);
        const int iByName = iHits;
        pTree->SetSearchMode(1);
        pTree->SetSearchShowsPath(true);
        const double dWords = keystroke(_qstrWordsBefore, _wordsKey, _qstrWordsKey);
        row(_qstrLabel.arg(iHits).arg(iByName), dWords, dByName);
    };

    // A few hundred hits: one group's channels and ten more.
    compare("keystroke, few hits: \"0042 cam\" words+paths (%1) / \"cam 0042\" (%2)", "cam 004", Qt::Key_2,
            "2", "0042 ca", Qt::Key_M, "m");
    const double dAddress = keystroke("10.0.0.4", Qt::Key_2, "2"); // words and paths still on
    row(QString("keystroke, by address: \"10.0.0.42\" words+paths (%1)").arg(iHits), dAddress, -1);
    // Every channel: 100,000 hits (every row's name holds "North", so both lines find the same rows).
    compare("keystroke, every channel: \"north cam\" words+paths (%1) / \"cam\" (%2)", "ca", Qt::Key_M, "m",
            "north ca", Qt::Key_M, "m");
    pTree->SetSearchMode(0);
    pTree->SetSearchShowsPath(false);

    // The payload of 1,000 channels, made and read back.
    QVector<QString> qvecIds;
    for (int g = 0; qvecIds.size() < 1000; ++g) {
        for (int c = 0; c < CONST_iChannelsPerGroup && qvecIds.size() < 1000; ++c)
            qvecIds.append(ChannelId(g, c));
    }
    // Median of five runs without a paint: these calls change nothing on the screen.
    auto medianOfFive = [](const std::function<void()>& _fnRun) {
        QVector<double> qvecMs;
        for (int i = 0; i < 5; ++i)
            qvecMs << TimeMs(_fnRun);
        std::sort(qvecMs.begin(), qvecMs.end());
        return qvecMs.at(2);
    };
    int iRead = 0;
    const double dPayload = medianOfFive([&] {
        std::unique_ptr<QMimeData> pData(pTree->CreateDragData(qvecIds));
        QVector<CLS_CustomTreeNode> qvecNodes;
        CLS_WgtDeviceTree::ReadDragData(pData.get(), qvecNodes);
        iRead = qvecNodes.size();
    });
    row(QString("CreateDragData + ReadDragData of %1 nodes").arg(iRead), dPayload, -1);

    // 1,000 selected rows handed out in row order.
    pTree->SetMultiSelect(true);
    auto* pView = pTree->findChild<CLS_WgtBaseTreeWidget*>();
    for (const QString& qstrId : qAsConst(qvecIds))
        pView->GetNodeById(qstrId)->setSelected(true);
    int iSelected = 0;
    const double dSelected = medianOfFive([&] {
        QVector<CLS_CustomTreeNode> qvecNodes;
        pTree->GetSelectedNodes(qvecNodes);
        iSelected = qvecNodes.size();
    });
    row(QString("GetSelectedNodes of %1 selected rows").arg(iSelected), dSelected, -1);
    side.Destroy();
    return 0;
}

// ---- soak -----------------------------------------------------------------------------------------

long RssKb()
{
    QFile file("/proc/self/status");
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& qbaLine : file.readAll().split('\n')) {
        if (qbaLine.startsWith("VmRSS:"))
            return qbaLine.mid(6).trimmed().split(' ').value(0).toLong();
    }
    return -1;
}

// The resource tree of a synthetic installation in the reference device layer, every row
// expanded, tool buttons on hosts and channels (on hover), the status thread running and the
// layer's simulator changing channels. A 10 ms timer on the GUI thread measures how late each of
// its ticks comes: the longest and the 99th-percentile stall.
int RunSoak(int _iChannels, int _iSeconds, int _iRate)
{
    LxAppManagerCtl_SetAppState(1);
    if (DevManageCtl_GenerateInstallation(_iChannels, 16) < 0) {
        std::fprintf(stderr, "the device layer could not make the installation\n");
        return 1;
    }
    QElapsedTimer clock;
    clock.start();
    QWidget window;
    auto* pLayout = new QVBoxLayout(&window);
    auto* pTree = new CLS_WgtDeviceTree(nullptr, DEV_TREE_RESOURCE, false, false, false, true, false,
                                        ITEM_BTN_SHOW_HOVER);
    pLayout->addWidget(pTree);
    window.resize(420, 900);
    window.show();
    int iBatches = 0;
    long long llEntries = 0;
    QObject::connect(pTree, &CLS_WgtDeviceTree::SignUpdateChannelsStatus, pTree, [&](QVariant _varData) {
        ++iBatches;
        llEntries += _varData.value<StatusMap>().size();
    });

    CLS_IResourceTree* pResourceTree = DevManage::GetResourceTree();
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapItems;
    if (pResourceTree == nullptr || pResourceTree->GetAllItems(qmapItems).m_iCode < 0) {
        std::fprintf(stderr, "the device layer lists no resource\n");
        return 1;
    }
    QMap<int, QVector<CLS_ItemButton>> qmapButtons{{3, ChannelButtons()}, {4, ChannelButtons()}};
    if (pTree->Init(qmapItems, "All resources", qmapButtons, {2, 3, 4}) != 0) {
        std::fprintf(stderr, "the resource tree could not be built\n");
        return 1;
    }
    pTree->ExpandAll();
    Settle(&window);
    std::printf("soak: %d channels, %d rows, ready after %.0f ms\n", _iChannels, int(qmapItems.size()),
                clock.nsecsElapsed() / 1e6);
    const long lRssStart = RssKb();
    DevManageCtl_StartSimulation(_iRate, 1);

    QVector<double> qvecStalls;
    qvecStalls.reserve(_iSeconds * 100);
    long lRssMinute = -1;
    QElapsedTimer tick;
    tick.start();
    QElapsedTimer run;
    run.start();
    QTimer heartbeat;
    heartbeat.setTimerType(Qt::PreciseTimer);
    QObject::connect(&heartbeat, &QTimer::timeout, &heartbeat, [&]() {
        qvecStalls.append(qMax(0.0, tick.nsecsElapsed() / 1e6 - 10.0));
        tick.restart();
        if (lRssMinute < 0 && run.elapsed() >= 60000)
            lRssMinute = RssKb();
        if (run.elapsed() >= _iSeconds * 1000LL)
            QCoreApplication::quit();
    });
    heartbeat.start(10);
    QCoreApplication::exec();
    DevManageCtl_StopSimulation();

    std::sort(qvecStalls.begin(), qvecStalls.end());
    const double dMax = qvecStalls.isEmpty() ? 0 : qvecStalls.last();
    const double dP99 = qvecStalls.isEmpty() ? 0 : qvecStalls.at(int(qvecStalls.size() * 0.99));
    const long lRssEnd = RssKb();
    const long lRssBase = lRssMinute > 0 ? lRssMinute : lRssStart;
    std::printf("seconds: %d, simulated changes: %d (%d/s asked)\n", _iSeconds,
                DevManageCtl_SimulationChanges(), _iRate);
    std::printf("status batches applied: %d (%lld entries)\n", iBatches, llEntries);
    std::printf("GUI stall, longest: %.1f ms, 99th percentile: %.1f ms (%d ticks of 10 ms)\n", dMax, dP99,
                int(qvecStalls.size()));
    std::printf(
        "RSS: start %.1f MB, minute 1 %s MB, end %.1f MB, growth from %s %.1f %%\n", lRssStart / 1024.0,
        lRssMinute > 0 ? qPrintable(QString::number(lRssMinute / 1024.0, 'f', 1)) : "-", lRssEnd / 1024.0,
        lRssMinute > 0 ? "minute 1" : "the start", 100.0 * (lRssEnd - lRssBase) / qMax(1L, lRssBase));
    std::fflush(stdout);
    return 0;
}

// ---- driver ---------------------------------------------------------------------------------------

struct STRCT_Result
{
    QMap<QString, double> m_qmapOps; // op -> ms
    long m_lRssKb = -1;
    bool m_blTimeout = false;
};

STRCT_Result RunSide(const QString& _qstrSide, const STRCT_Case& _stCase, int _iTimeoutS)
{
    STRCT_Result result;
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(),
                  {"--child", "--side", _qstrSide, "--groups", QString::number(_stCase.m_iGroups),
                   "--buttons", _stCase.m_qstrButtons, "--expanded", _stCase.m_blExpanded ? "1" : "0"});
    QByteArray qbaOut;
    QElapsedTimer timer;
    timer.start();
    while (!process.waitForFinished(200)) {
        qbaOut += process.readAllStandardOutput();
        if (timer.elapsed() > _iTimeoutS * 1000LL) {
            process.kill();
            process.waitForFinished();
            result.m_blTimeout = true;
            break;
        }
    }
    qbaOut += process.readAllStandardOutput();
    for (const QByteArray& qbaLine : qbaOut.split('\n')) {
        if (qbaLine.startsWith("OP ")) {
            const int iLast = qbaLine.lastIndexOf(' ');
            result.m_qmapOps.insert(QString::fromUtf8(qbaLine.mid(3, iLast - 3)),
                                    qbaLine.mid(iLast + 1).toDouble());
        } else if (qbaLine.startsWith("RSS ")) {
            result.m_lRssKb = qbaLine.mid(4).toLong();
        }
    }
    return result;
}

int RunDriver(const QList<int>& _qlstGroups, int _iTimeoutS, const QString& _qstrOnly)
{
    const QStringList qlstOps = {"init",       "expand all",         "scroll 40 pages",  "status all",
                                 "status 5%",  "check+uncheck root", "search keystroke", "show by name+undo",
                                 "delete tree"};
    std::printf("%-44s %8s %12s %14s %8s\n", "case", "rows", "ours (ms)", "baseline (ms)", "ratio");
    std::fflush(stdout);
    for (int iGroups : _qlstGroups) {
        const int iRows = iGroups * (CONST_iChannelsPerGroup + 1) + 1;
        for (const QString& qstrButtons : {QString("none"), QString("always"), QString("hover")}) {
            for (bool blExpanded : {false, true}) {
                const STRCT_Case stCase{iGroups, qstrButtons, blExpanded};
                const STRCT_Result ours =
                    _qstrOnly == "base" ? STRCT_Result() : RunSide("ours", stCase, _iTimeoutS);
                const STRCT_Result base =
                    _qstrOnly == "ours" ? STRCT_Result() : RunSide("base", stCase, _iTimeoutS);
                const QString qstrCase = QString("%1, %2, buttons %3")
                                             .arg(iGroups)
                                             .arg(blExpanded ? "expanded" : "collapsed")
                                             .arg(qstrButtons);
                auto cell = [](const STRCT_Result& _result, const QString& _qstrOp) {
                    if (_result.m_qmapOps.contains(_qstrOp))
                        return QString::number(_result.m_qmapOps.value(_qstrOp), 'f', 1);
                    return QString(_result.m_blTimeout ? "timeout" : "-");
                };
                for (const QString& qstrOp : qlstOps) {
                    const QString qstrOurs = cell(ours, qstrOp);
                    const QString qstrBase = cell(base, qstrOp);
                    QString qstrRatio = "-";
                    if (ours.m_qmapOps.contains(qstrOp) && base.m_qmapOps.contains(qstrOp))
                        qstrRatio = QString::number(
                            ours.m_qmapOps.value(qstrOp) / qMax(0.05, base.m_qmapOps.value(qstrOp)), 'f', 2);
                    std::printf("%-44s %8d %12s %14s %8s\n", qPrintable(qstrCase + ": " + qstrOp), iRows,
                                qPrintable(qstrOurs), qPrintable(qstrBase), qPrintable(qstrRatio));
                }
                const QString qstrRatio = (ours.m_lRssKb > 0 && base.m_lRssKb > 0)
                                              ? QString::number(double(ours.m_lRssKb) / base.m_lRssKb, 'f', 2)
                                              : QString("-");
                std::printf(
                    "%-44s %8d %12s %14s %8s\n", qPrintable(qstrCase + ": peak RSS (MB)"), iRows,
                    ours.m_lRssKb > 0 ? qPrintable(QString::number(ours.m_lRssKb / 1024.0, 'f', 1)) : "-",
                    base.m_lRssKb > 0 ? qPrintable(QString::number(base.m_lRssKb / 1024.0, 'f', 1)) : "-",
                    qPrintable(qstrRatio));
                std::fflush(stdout);
            }
        }
    }
    return 0;
}

// ---- a page's day -------------------------------------------------------------------------------

// The folder of the reference sibling libraries this program is linked with.
QString SiblingFolder()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&DevManageCtl_Reset), &info) == 0 || info.dli_fname == nullptr)
        return QString();
    return QFileInfo(QString::fromLocal8Bit(info.dli_fname)).absolutePath();
}

// Runs ScaleDay (beside this program) once per side, size and button kind, with the sibling
// libraries on the library path or an empty folder in their place, and prints the day's
// operations: ours, plain and the ratio, and the longest single operation of each side.
int RunDay(const QList<int>& _qlstGroups, bool _blSiblings, int _iTimeoutS)
{
    const QString qstrProgram = QCoreApplication::applicationDirPath() + "/ScaleDay";
    QTemporaryDir emptyDir;
    const QString qstrLibPath = _blSiblings ? SiblingFolder() : emptyDir.path();
    std::printf("day: sibling libraries %s\n", _blSiblings ? qPrintable("from " + qstrLibPath) : "absent");
    const QStringList qlstOps = {
        "init",           "expand all",       "scroll 40 pages", "status batch, all off line",
        "check the root", "search keystroke", "delete the tree"};
    auto runOne = [&](const QString& _qstrSide, int _iGroups, const QString& _qstrButtons) {
        STRCT_Result result;
        QProcess process;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("LD_LIBRARY_PATH", qstrLibPath);
        process.setProcessEnvironment(env);
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(qstrProgram, {"--side", _qstrSide, "--groups", QString::number(_iGroups), "--buttons",
                                    _qstrButtons});
        if (!process.waitForFinished(_iTimeoutS * 1000)) {
            process.kill();
            process.waitForFinished();
            result.m_blTimeout = true;
        }
        for (const QByteArray& qbaLine : process.readAllStandardOutput().split('\n')) {
            if (qbaLine.startsWith("OP ")) {
                const int iLast = qbaLine.lastIndexOf(' ');
                result.m_qmapOps.insert(QString::fromUtf8(qbaLine.mid(3, iLast - 3)),
                                        qbaLine.mid(iLast + 1).toDouble());
            } else if (qbaLine.startsWith("RSS ")) {
                result.m_lRssKb = qbaLine.mid(4).toLong();
            }
        }
        return result;
    };
    // "design" is the plain tree carrying only our design's own per-row work (see DesignRowsSide.h):
    // its ratio to the plain tree is a floor for ours.
    std::printf("%-40s %12s %12s %8s %12s %8s\n", "case: operation", "ours (ms)", "plain (ms)", "ratio",
                "design (ms)", "ratio");
    auto cell = [](double _dValue, bool _blTimeout) {
        return _dValue < 0 ? QString(_blTimeout ? "timeout" : "-") : QString::number(_dValue, 'f', 1);
    };
    auto ratio = [](double _dTop, double _dBottom) {
        return _dTop < 0 || _dBottom < 0 ? QString("-")
                                         : QString::number(_dTop / qMax(0.05, _dBottom), 'f', 2);
    };
    int iIncomplete = 0; // sides that timed out or left an operation out
    for (int iGroups : _qlstGroups) {
        const int iRows = iGroups * (CONST_iChannelsPerGroup + 1) + 1;
        for (const QString& qstrButtons : {QString("hover"), QString("none"), QString("always")}) {
            const STRCT_Result ours = runOne("ours", iGroups, qstrButtons);
            const STRCT_Result base = runOne("base", iGroups, qstrButtons);
            const STRCT_Result design = runOne("design", iGroups, qstrButtons);
            for (const STRCT_Result* pResult : {&ours, &base, &design})
                iIncomplete += pResult->m_qmapOps.size() == qlstOps.size() ? 0 : 1;
            const QString qstrCase = QString("%1 rows, %2").arg(iRows).arg(qstrButtons);
            double dLongest = 0;
            for (const QString& qstrOp : qlstOps) {
                const double dOurs = ours.m_qmapOps.value(qstrOp, -1);
                const double dBase = base.m_qmapOps.value(qstrOp, -1);
                const double dDesign = design.m_qmapOps.value(qstrOp, -1);
                dLongest = qMax(dLongest, dOurs);
                std::printf("%-40s %12s %12s %8s %12s %8s\n", qPrintable(qstrCase + ": " + qstrOp),
                            qPrintable(cell(dOurs, ours.m_blTimeout)),
                            qPrintable(cell(dBase, base.m_blTimeout)), qPrintable(ratio(dOurs, dBase)),
                            qPrintable(cell(dDesign, design.m_blTimeout)), qPrintable(ratio(dDesign, dBase)));
            }
            auto mb = [](const STRCT_Result& _result) { return _result.m_lRssKb / 1024.0; };
            std::printf(
                "%-40s %12.1f %12.1f %8s %12.1f %8s\n", qPrintable(qstrCase + ": peak RSS (MB)"), mb(ours),
                mb(base),
                qPrintable(ratio(ours.m_lRssKb > 0 ? mb(ours) : -1, base.m_lRssKb > 0 ? mb(base) : -1)),
                mb(design),
                qPrintable(ratio(design.m_lRssKb > 0 ? mb(design) : -1, base.m_lRssKb > 0 ? mb(base) : -1)));
            std::printf("%-40s %12.1f\n", qPrintable(qstrCase + ": longest operation of ours"), dLongest);
            std::fflush(stdout);
        }
    }
    if (iIncomplete > 0)
        std::printf("%d runs of a side did not finish the day\n", iIncomplete);
    return iIncomplete > 0 ? 1 : 0;
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    QCommandLineOption optChild("child", "Run one case on one side.");
    QCommandLineOption optSide("side", "ours or base.", "side", "ours");
    QCommandLineOption optGroups("groups", "Groups of 32 channels; a comma list for the driver.", "list",
                                 "1000,3125");
    QCommandLineOption optButtons("buttons", "none, always or hover.", "type", "none");
    QCommandLineOption optExpanded("expanded", "1: every group expanded before the rest.", "flag", "0");
    QCommandLineOption optTimeout("timeout", "Seconds per child process (default 600).", "seconds", "600");
    QCommandLineOption optOnly("only", "Run one side only: ours or base.", "side");
    QCommandLineOption optOperator("operator-view", "Status filter, counts and view state (see the head).");
    QCommandLineOption optFind("find-and-take",
                               "Search by words, several rows, drag payload (see the head).");
    QCommandLineOption optDay("day", "A page's day in one tree against a plain tree (see the head).");
    QCommandLineOption optNoSiblings("no-siblings", "The day without the sibling libraries on the path.");
    QCommandLineOption optSoak("soak", "The soak run of the resource tree (see the program's head).");
    QCommandLineOption optSeconds("seconds", "Length of the soak (120).", "seconds", "120");
    QCommandLineOption optChannels("channels", "Channels of the soak (32000).", "count", "32000");
    QCommandLineOption optRate("changes-per-second", "Simulated changes of the soak (500).", "count", "500");
    parser.addOptions({optChild, optSide, optGroups, optButtons, optExpanded, optTimeout, optOnly, optSoak,
                       optSeconds, optChannels, optRate, optOperator, optFind, optDay, optNoSiblings});
    parser.process(app);

    if (parser.isSet(optOperator))
        return RunOperatorView(parser.isSet(optGroups) ? parser.value(optGroups).toInt() : 3125);
    if (parser.isSet(optFind))
        return RunFindAndTake(parser.isSet(optGroups) ? parser.value(optGroups).toInt() : 3125);
    if (parser.isSet(optDay)) {
        QList<int> qlstGroups;
        for (const QString& qstrPart : parser.value(optGroups).split(',', Qt::SkipEmptyParts))
            qlstGroups.append(qstrPart.toInt());
        return RunDay(qlstGroups, !parser.isSet(optNoSiblings), parser.value(optTimeout).toInt());
    }
    if (parser.isSet(optSoak))
        return RunSoak(parser.value(optChannels).toInt(), parser.value(optSeconds).toInt(),
                       parser.value(optRate).toInt());

    if (parser.isSet(optChild)) {
        STRCT_Case stCase;
        stCase.m_iGroups = parser.value(optGroups).toInt();
        stCase.m_qstrButtons = parser.value(optButtons);
        stCase.m_blExpanded = parser.value(optExpanded) == "1";
        return RunChild(parser.value(optSide), stCase);
    }
    QList<int> qlstGroups;
    for (const QString& qstrPart : parser.value(optGroups).split(',', Qt::SkipEmptyParts))
        qlstGroups.append(qstrPart.toInt());
    return RunDriver(qlstGroups, parser.value(optTimeout).toInt(), parser.value(optOnly));
}
