// The status simulation against everything that reads the reference device layer at once: reader
// threads on the resource tree interface and a resource tree widget with its status thread, for
// a bounded time. Meant for ThreadSanitizer: no race, no crash, and every status read is 0 or 1.

#include "CLS_RefDevManageKit.h"
#include "CLS_WgtDeviceTree.h"
#include "Logger.h"
#include "LxAppManager.h"
#include "LxAppManagerControl.h"

#include <QElapsedTimer>
#include <QtTest>

#include <atomic>
#include <chrono>
#include <random>
#include <thread>
#include <vector>

using namespace CLS_RefDevKit;

namespace {

const int CONST_iReaders = 4;
const int CONST_iRunMsecs = 3000;
const int CONST_iMaxRunMsecs = 30000;

// What the readers saw, shared with the main thread through atomics only.
struct STRCT_ReaderTally
{
    std::atomic<bool> m_blStop{false};
    std::atomic<int> m_iBadStatuses{0};
    std::atomic<int> m_iItemsRead{0};
    std::atomic<int> m_arrPasses[CONST_iReaders] = {};
};

void CheckStatus(const std::shared_ptr<STRCT_VideoItem>& _spItem, STRCT_ReaderTally& _strctTally)
{
    if (!_spItem)
        return; // expired between list and lock: a reader's normal lot
    const int iType = _spItem->GetType();
    if ((iType == 3 || iType == 4) && _spItem->m_iStatus != 0 && _spItem->m_iStatus != 1)
        ++_strctTally.m_iBadStatuses;
    ++_strctTally.m_iItemsRead;
}

// One reader: every operation of the resource tree interface, again and again.
void ReadLoop(int _iReader, STRCT_ReaderTally& _strctTally)
{
    std::mt19937 rng(static_cast<unsigned int>(_iReader));
    while (!_strctTally.m_blStop.load()) {
        CLS_IResourceTree* pTree = DevManage::GetResourceTree();
        if (pTree == nullptr) {
            ++_strctTally.m_iBadStatuses; // never switched off in this test
            return;
        }
        QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapAll;
        pTree->GetAllItems(qmapAll);
        QVector<QString> qvecChannelIds;
        QVector<QString> qvecHostIds;
        for (const auto& wpItem : qmapAll) {
            std::shared_ptr<STRCT_VideoItem> spItem = wpItem.lock();
            CheckStatus(spItem, _strctTally);
            if (spItem && spItem->GetType() == 4)
                qvecChannelIds << QString::fromStdString(spItem->m_strId);
            if (spItem && spItem->GetType() == 3)
                qvecHostIds << QString::fromStdString(spItem->m_strId);
        }
        for (int i = 0; i < 50 && !qvecChannelIds.isEmpty(); ++i) {
            const QString& qstrId = qvecChannelIds.at(static_cast<int>(rng() % qvecChannelIds.size()));
            std::weak_ptr<STRCT_VideoItem> wpChannel;
            if (pTree->GetItemOfChannel(wpChannel, qstrId, -1, 0).m_iCode >= 0)
                CheckStatus(wpChannel.lock(), _strctTally);
            std::weak_ptr<STRCT_VideoItem> wpItem;
            if (pTree->GetItem(wpItem, qstrId).m_iCode >= 0)
                CheckStatus(wpItem.lock(), _strctTally);
        }
        QVector<std::weak_ptr<STRCT_VideoItem>> qvecChannels;
        pTree->ListItemsOfType(qvecChannels, 4, QVector<QString>());
        for (const auto& wpChannel : qvecChannels)
            CheckStatus(wpChannel.lock(), _strctTally);
        if (!qvecHostIds.isEmpty()) {
            QVector<std::weak_ptr<STRCT_VideoItem>> qvecChildren;
            pTree->ListChildren(qvecChildren, qvecHostIds.at(static_cast<int>(rng() % qvecHostIds.size())));
            for (const auto& wpChild : qvecChildren)
                CheckStatus(wpChild.lock(), _strctTally);
        }
        ++_strctTally.m_arrPasses[_iReader];
        std::this_thread::sleep_for(std::chrono::milliseconds(1)); // a poller, not a spinner
    }
}

} // namespace

class tst_RefDevSimulationReaders : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void shouldServeReadersAndStatusThreadWhileSimulating();
};

void tst_RefDevSimulationReaders::initTestCase()
{
    // The first binds are not thread-safe by design: made here, before any worker runs.
    BindGateway();
    Logger::GetModuleFun("PrintLog", "");
    LxAppManager::GetModuleFun("GetApp", "");
}

void tst_RefDevSimulationReaders::init()
{
    DevManageCtl_StopSimulation();
    DevManageCtl_Reset();
    LxAppManagerCtl_Reset();
}

void tst_RefDevSimulationReaders::cleanup()
{
    DevManageCtl_StopSimulation();
}

void tst_RefDevSimulationReaders::shouldServeReadersAndStatusThreadWhileSimulating()
{
    // Given the sample installation in a resource tree whose status thread runs
    QCOMPARE(DevManageCtl_LoadInstallationFile(InstallationFile("sample.json").toUtf8().constData()), 941);
    CLS_WgtDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    int iBatches = 0;
    int iBadReported = 0;
    connect(&tree, &CLS_WgtDeviceTree::SignUpdateChannelsStatus, this, [&](QVariant _qvarData) {
        ++iBatches;
        const auto qmapBatch = _qvarData.value<QMap<QString, QPair<bool, int>>>();
        for (const auto& pairState : qmapBatch)
            iBadReported += pairState.second == 0 || pairState.second == 1 ? 0 : 1;
    });
    QCOMPARE(tree.Init("All"), 0);

    // When readers and the simulation run together for a while
    STRCT_ReaderTally strctTally;
    std::vector<std::thread> vecReaders;
    for (int i = 0; i < CONST_iReaders; ++i)
        vecReaders.emplace_back(ReadLoop, i, std::ref(strctTally));
    QCOMPARE(DevManageCtl_StartSimulation(200, 1234), 0);

    QVector<QString> qvecChannelIds;
    DevManage::GetResourceTree()->ListIdsOfType(4, qvecChannelIds);
    QCOMPARE(qvecChannelIds.size(), 800);
    int iBadNodes = 0;
    QElapsedTimer timer;
    timer.start();
    // At least the run time, and until the status thread has finished two passes inside it
    // (slow under ThreadSanitizer), within a bound.
    for (int iTick = 0;
         timer.elapsed() < CONST_iRunMsecs || (iBatches < 2 && timer.elapsed() < CONST_iMaxRunMsecs);
         ++iTick) {
        if (iTick % 10 == 0)
            tree.UpdateChannelStatus(); // a full report again: the status thread's next pass reads all
        QTest::qWait(100);
        for (int i = iTick % 16; i < qvecChannelIds.size(); i += 16) {
            CLS_CustomTreeNode node;
            if (tree.GetItemByDevId(qvecChannelIds.at(i), node) == 0 && node.m_iStatus != 0 &&
                node.m_iStatus != 1)
                ++iBadNodes;
        }
    }
    strctTally.m_blStop.store(true);
    for (std::thread& thread : vecReaders)
        thread.join();
    DevManageCtl_StopSimulation();

    // Then nobody saw a status other than 0 or 1, and everybody got on with the work
    QCOMPARE(strctTally.m_iBadStatuses.load(), 0);
    QCOMPARE(iBadReported, 0);
    QCOMPARE(iBadNodes, 0);
    for (int i = 0; i < CONST_iReaders; ++i)
        QVERIFY2(strctTally.m_arrPasses[i].load() > 0,
                 qPrintable(QString("reader %1 never finished a pass").arg(i)));
    QVERIFY(strctTally.m_iItemsRead.load() > 0);
    QVERIFY(DevManageCtl_SimulationChanges() > 0);
    QVERIFY2(iBatches >= 2, qPrintable(QString("%1 reports in %2 ms").arg(iBatches).arg(timer.elapsed())));

    // And once the simulation stands still, a full report brings the tree to the layer's states
    tree.UpdateChannelStatus();
    auto Mismatches = [&] {
        QStringList qlstWrong;
        for (const QString& qstrId : qvecChannelIds) {
            CLS_CustomTreeNode node;
            int iStatus = -1;
            DevManageCtl_GetStatus(qstrId.toUtf8().constData(), &iStatus);
            if (tree.GetItemByDevId(qstrId, node) != 0 || node.m_iStatus != iStatus)
                qlstWrong << qstrId;
        }
        return qlstWrong;
    };
    QTRY_VERIFY2_WITH_TIMEOUT(Mismatches().isEmpty(), qPrintable(Mismatches().mid(0, 10).join(' ')), 30000);
}

QTEST_MAIN(tst_RefDevSimulationReaders)
#include "tst_RefDevSimulationReaders.moc"
