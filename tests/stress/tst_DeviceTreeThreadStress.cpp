// Device trees under load from other threads: the reference device layer flips channel states,
// removes and adds channels (their weak pointers expire) and hands out stale pointers, while one
// tree polls, while several trees poll at once, while the page deletes and builds trees again, and
// while a tree is destroyed in the middle of a pass. Each case runs for a bounded time
// (WGT_STRESS_MSECS, default 3000 ms) from a fixed seed (WGT_STRESS_SEED); afterwards the trees must
// agree with the device layer, and once a tree is gone nothing may read the device layer for it.

#include "CLS_DevResKit.h"
#include "CLS_DeviceTreeBGThread.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>
#include <atomic>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

using namespace CLS_DevTreeTestUtil;

namespace {

const int CONST_CONVERGE_MSECS = 30000;

int StressMsecs()
{
    bool blOk = false;
    const int iValue = qEnvironmentVariableIntValue("WGT_STRESS_MSECS", &blOk);
    return blOk && iValue > 0 ? iValue : 3000;
}

unsigned int StressSeed()
{
    bool blOk = false;
    const int iValue = qEnvironmentVariableIntValue("WGT_STRESS_SEED", &blOk);
    return blOk ? static_cast<unsigned int>(iValue) : 20261122u;
}

// hosts x channels below "resource_root_id"; resource ids equal tree ids. Returns the channel ids.
std::vector<std::string> LoadHosts(int _iHosts, int _iChannels)
{
    std::vector<std::string> vecChannels;
    DevManageCtl_AddGroup("resource_root_id", "All", "", 0, "");
    for (int iHost = 0; iHost < _iHosts; ++iHost) {
        const std::string strHost = "host" + std::to_string(iHost);
        DevManageCtl_AddHost(strHost.c_str(), strHost.c_str(), "resource_root_id", iHost, 1, "");
        for (int iChannel = 0; iChannel < _iChannels; ++iChannel) {
            const std::string strChannel = strHost + "_ch" + std::to_string(iChannel);
            DevManageCtl_AddChannel(strChannel.c_str(), strChannel.c_str(), strHost.c_str(), iChannel,
                                    iChannel % 2, iChannel + 1, "");
            vecChannels.push_back(strChannel);
        }
    }
    return vecChannels;
}

// Changes the device layer from its own thread until stopped: state flips (the item is replaced,
// its weak pointers expire), a channel removed and added again, stale pointers handed out for a
// while. Every channel exists again when Stop() returns, with no stale mark left.
class CLS_LayerMutator
{
public:
    CLS_LayerMutator(std::vector<std::string> _vecChannels, unsigned int _uiSeed)
        : m_vecChannels(std::move(_vecChannels)), m_uiSeed(_uiSeed)
    {}

    ~CLS_LayerMutator() { Stop(); }

    void Start()
    {
        m_blStop = false;
        m_thread = std::thread([this]() { Run(); });
    }

    void Stop()
    {
        m_blStop = true;
        if (m_thread.joinable())
            m_thread.join();
    }

    int Changes() const { return m_iChanges.load(); }
    int Failures() const { return m_iFailures.load(); }

private:
    void Run()
    {
        std::mt19937 rng(m_uiSeed);
        std::uniform_int_distribution<size_t> pick(0, m_vecChannels.size() - 1);
        std::uniform_int_distribution<int> kind(0, 99);
        std::vector<std::string> vecStale;
        while (!m_blStop) {
            const std::string& strId = m_vecChannels[pick(rng)];
            const int iKind = kind(rng);
            int iResult = 0;
            if (iKind < 70) {
                int iStatus = 0;
                iResult = DevManageCtl_GetStatus(strId.c_str(), &iStatus);
                if (iResult == 0)
                    iResult = DevManageCtl_SetStatus(strId.c_str(), iStatus == 1 ? 0 : 1);
            } else if (iKind < 85) {
                int iStatus = 0;
                DevManageCtl_GetStatus(strId.c_str(), &iStatus);
                const std::string strHost = strId.substr(0, strId.find("_ch"));
                iResult = DevManageCtl_RemoveItem(strId.c_str());
                if (iResult == 0) {
                    iResult = DevManageCtl_AddChannel(strId.c_str(), strId.c_str(), strHost.c_str(), 0,
                                                      iStatus == 1 ? 0 : 1, 1, "");
                }
            } else if (iKind < 95) {
                iResult = DevManageCtl_SetStale(strId.c_str(), DEVMANAGECTL_STALE_IN_LISTS |
                                                                   DEVMANAGECTL_STALE_IN_GETITEM |
                                                                   DEVMANAGECTL_STALE_IN_CHANNEL_GET);
                vecStale.push_back(strId);
            } else if (!vecStale.empty()) {
                iResult = DevManageCtl_SetStale(vecStale.back().c_str(), 0);
                vecStale.pop_back();
            }
            if (iResult != 0)
                ++m_iFailures;
            ++m_iChanges;
            if (m_iChanges.load() % 16 == 0)
                std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
        for (const std::string& strId : vecStale)
            DevManageCtl_SetStale(strId.c_str(), 0);
    }

    std::vector<std::string> m_vecChannels;
    unsigned int m_uiSeed;
    std::atomic<bool> m_blStop{false};
    std::atomic<int> m_iChanges{0};
    std::atomic<int> m_iFailures{0};
    std::thread m_thread;
};

// Channels whose node in the tree holds another state than the device layer, as "id:tree/layer".
QStringList Disagreements(CLS_WgtDeviceTree& _tree, const std::vector<std::string>& _vecChannels)
{
    QStringList qlst;
    for (const std::string& strId : _vecChannels) {
        const QString qstrId = QString::fromStdString(strId);
        int iLayer = -1;
        DevManageCtl_GetStatus(strId.c_str(), &iLayer);
        CLS_CustomTreeNode node;
        if (_tree.GetItemByDevId(qstrId, node) != 0) {
            qlst << qstrId + ":missing";
            continue;
        }
        if (node.m_iStatus != iLayer)
            qlst << QString("%1:%2/%3").arg(qstrId).arg(node.m_iStatus).arg(iLayer);
    }
    return qlst;
}

// Every node has its row, and the id map points each channel at its own node.
QStringList BrokenStores(CLS_TestDeviceTree& _tree)
{
    QStringList qlst;
    for (auto it = _tree.m_qmapNodes.cbegin(); it != _tree.m_qmapNodes.cend(); ++it) {
        if (NodeOf(_tree, it.key()) == nullptr)
            qlst << it.key() + ":no row";
    }
    for (auto it = _tree.m_qmapDevIdToTreeId.cbegin(); it != _tree.m_qmapDevIdToTreeId.cend(); ++it) {
        if (!_tree.m_qmapNodes.contains(it.value()))
            qlst << it.key() + ":no node " + it.value();
        else if (_tree.m_qmapNodes.value(it.value()).m_qstrDevId != it.key())
            qlst << it.key() + ":wrong node " + it.value();
    }
    return qlst;
}

// The status threads of the trees are gone: each thread object was deleted with its tree, and Qt
// ends the process when a thread object is deleted while its thread still runs, so a null pointer
// here means that thread has left run() and reads the device layer no more.
bool ThreadsGone(const QVector<QPointer<CLS_DeviceTreeBGThread>>& _qvecThreads)
{
    return std::all_of(_qvecThreads.cbegin(), _qvecThreads.cend(),
                       [](const QPointer<CLS_DeviceTreeBGThread>& _pThread) { return _pThread.isNull(); });
}

} // namespace

class tst_DeviceTreeThreadStress : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void shouldAgreeWithLayerAfterMutationsWhileOneTreePolls();
    void shouldAgreeWithLayerAfterMutationsWhileSeveralTreesPoll();
    void shouldSurviveDeleteAndReInitOfTreesWhileLayerMutates();
    void shouldEndStatusThreadWhenTreeIsDestroyedMidPass();
};

void tst_DeviceTreeThreadStress::initTestCase()
{
    BindGateways();
    qInfo("stress: %d ms per case, seed %u", StressMsecs(), StressSeed());
}

void tst_DeviceTreeThreadStress::init()
{
    DevManageCtl_Reset();
    LxAppManagerCtl_Reset();
    TakeLogLines();
}

void tst_DeviceTreeThreadStress::cleanup()
{
    DevManageCtl_Reset();
    QVERIFY2(LeakedWindows().isEmpty(), qPrintable(LeakedWindows().join(", ")));
}

void tst_DeviceTreeThreadStress::shouldAgreeWithLayerAfterMutationsWhileOneTreePolls()
{
    const std::vector<std::string> vecChannels = LoadHosts(20, 16);
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    QSignalSpy spyBatches(&tree, &CLS_WgtDeviceTree::SignUpdateChannelsStatus);
    QCOMPARE(tree.Init("All"), 0);
    const int iNodes = tree.m_qmapNodes.size();
    QCOMPARE(iNodes, 1 + 20 + 20 * 16);

    CLS_LayerMutator mutator(vecChannels, StressSeed());
    mutator.Start();
    QElapsedTimer timer;
    timer.start();
    int iForced = 0;
    while (timer.elapsed() < StressMsecs()) {
        QTest::qWait(40);
        // A page asking for a full report, as AddItems does: every pass then starts at once.
        tree.UpdateChannelStatus();
        ++iForced;
    }
    mutator.Stop();
    QVERIFY(mutator.Changes() > 0);
    QCOMPARE(mutator.Failures(), 0);

    tree.UpdateChannelStatus();
    QTRY_VERIFY2_WITH_TIMEOUT(Disagreements(tree, vecChannels).isEmpty(),
                              qPrintable(Disagreements(tree, vecChannels).mid(0, 10).join(" ")),
                              CONST_CONVERGE_MSECS);
    QCOMPARE(tree.m_qmapNodes.size(), iNodes);
    QVERIFY2(BrokenStores(tree).isEmpty(), qPrintable(BrokenStores(tree).mid(0, 10).join(" ")));
    QVERIFY(spyBatches.size() > 1);
    qInfo("one tree: %d layer changes, %d forced reports, %d batches", mutator.Changes(), iForced,
          static_cast<int>(spyBatches.size()));
}

void tst_DeviceTreeThreadStress::shouldAgreeWithLayerAfterMutationsWhileSeveralTreesPoll()
{
    const std::vector<std::string> vecChannels = LoadHosts(10, 16);
    std::vector<std::unique_ptr<CLS_TestDeviceTree>> vecTrees;
    std::vector<std::unique_ptr<QSignalSpy>> vecSpies;
    for (int i = 0; i < 4; ++i) {
        vecTrees.push_back(std::make_unique<CLS_TestDeviceTree>(nullptr, DEV_TREE_RESOURCE));
        vecSpies.push_back(std::make_unique<QSignalSpy>(vecTrees.back().get(),
                                                        &CLS_WgtDeviceTree::SignUpdateChannelsStatus));
        QCOMPARE(vecTrees.back()->Init("All"), 0);
    }

    CLS_LayerMutator mutator(vecChannels, StressSeed() + 1);
    mutator.Start();
    std::mt19937 rng(StressSeed());
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < StressMsecs()) {
        QTest::qWait(30);
        vecTrees[rng() % vecTrees.size()]->UpdateChannelStatus();
    }
    mutator.Stop();
    QCOMPARE(mutator.Failures(), 0);

    for (auto& pTree : vecTrees)
        pTree->UpdateChannelStatus();
    for (size_t i = 0; i < vecTrees.size(); ++i) {
        CLS_TestDeviceTree& tree = *vecTrees[i];
        QTRY_VERIFY2_WITH_TIMEOUT(
            Disagreements(tree, vecChannels).isEmpty(),
            qPrintable(QString("tree %1: ").arg(i) + Disagreements(tree, vecChannels).mid(0, 10).join(" ")),
            CONST_CONVERGE_MSECS);
        QVERIFY2(BrokenStores(tree).isEmpty(), qPrintable(BrokenStores(tree).mid(0, 10).join(" ")));
        QVERIFY(vecSpies[i]->size() > 1);
    }
    QVector<QPointer<CLS_DeviceTreeBGThread>> qvecThreads;
    for (auto& pTree : vecTrees)
        qvecThreads.append(pTree->m_pBGThread);
    vecSpies.clear();
    vecTrees.clear();
    QVERIFY(ThreadsGone(qvecThreads));
    qInfo("four trees: %d layer changes", mutator.Changes());
}

void tst_DeviceTreeThreadStress::shouldSurviveDeleteAndReInitOfTreesWhileLayerMutates()
{
    const std::vector<std::string> vecChannels = LoadHosts(10, 16);
    CLS_LayerMutator mutator(vecChannels, StressSeed() + 2);
    mutator.Start();
    std::mt19937 rng(StressSeed());
    int iRounds = 0;
    int iReInits = 0;
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < StressMsecs()) {
        auto pTree = std::make_unique<CLS_TestDeviceTree>(nullptr, DEV_TREE_RESOURCE);
        QCOMPARE(pTree->Init("All"), 0);
        QPointer<CLS_DeviceTreeBGThread> pThread = pTree->m_pBGThread;
        const int iSteps = static_cast<int>(rng() % 4);
        for (int iStep = 0; iStep < iSteps; ++iStep) {
            QTest::qWait(static_cast<int>(rng() % 40));
            switch (rng() % 3) {
            case 0:
                QCOMPARE(pTree->Init("All"), 0);
                // The same thread object serves the new build.
                QCOMPARE(pTree->m_pBGThread, pThread.data());
                ++iReInits;
                break;
            case 1:
                pTree->UpdateChannelStatus();
                break;
            default:
                pTree->Clear();
                break;
            }
            QVERIFY2(BrokenStores(*pTree).isEmpty(), qPrintable(BrokenStores(*pTree).mid(0, 10).join(" ")));
        }
        // Destroyed wherever its thread happens to be: in a pass, in the wait, or not yet started.
        pTree.reset();
        QVERIFY(ThreadsGone({pThread}));
        ++iRounds;
    }
    mutator.Stop();
    QCOMPARE(mutator.Failures(), 0);
    QVERIFY(iRounds > 0);
    qInfo("delete and re-init: %d trees, %d re-inits, %d layer changes", iRounds, iReInits,
          mutator.Changes());
}

void tst_DeviceTreeThreadStress::shouldEndStatusThreadWhenTreeIsDestroyedMidPass()
{
    // A large installation makes the first pass long: every channel is new and is asked whether it
    // is an image channel.
    const std::vector<std::string> vecChannels = LoadHosts(50, 20);
    CLS_LayerMutator mutator(vecChannels, StressSeed() + 3);
    mutator.Start();
    std::mt19937 rng(StressSeed());
    int iRounds = 0;
    int iMidPass = 0;
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < StressMsecs() || iRounds < 4) {
        auto pTree = std::make_unique<CLS_TestDeviceTree>(nullptr, DEV_TREE_RESOURCE);
        QCOMPARE(pTree->Init("All"), 0);
        const int iCallsBefore = DevManageCtl_CallCount("GetItem");
        if (iRounds % 2 == 1) {
            // Wait until the first pass asks its image-channel questions, then a little more.
            QElapsedTimer waiting;
            waiting.start();
            while (DevManageCtl_CallCount("GetItem") == iCallsBefore && waiting.elapsed() < 10000)
                std::this_thread::sleep_for(std::chrono::microseconds(200));
            std::this_thread::sleep_for(std::chrono::milliseconds(rng() % 5));
        }
        // Otherwise at once: the thread may not have reached its first pass yet.
        // Image-channel questions under way: the first pass is running right now.
        if (DevManageCtl_CallCount("GetItem") > iCallsBefore)
            ++iMidPass;
        // The destructor returns only once run() has ended (one that never returned would end the
        // test at its time limit).
        QPointer<CLS_DeviceTreeBGThread> pThread = pTree->m_pBGThread;
        pTree.reset();
        QVERIFY(ThreadsGone({pThread}));
        QCoreApplication::processEvents();
        ++iRounds;
    }
    mutator.Stop();
    QCOMPARE(mutator.Failures(), 0);
    QVERIFY(iMidPass > 0);
    qInfo("destroyed mid-pass: %d of %d trees", iMidPass, iRounds);
}

QTEST_MAIN(tst_DeviceTreeThreadStress)
#include "tst_DeviceTreeThreadStress.moc"
