// How CLS_WgtDeviceTree owns its status thread: made once by the first successful build and
// connected by signature, started again by a later build once it has ended, left running by a
// clear, and joined by the destructor; and a state change in the device layer travelling through
// the thread to a row's icon on the GUI thread.

#include "CLS_DevResKit.h"
#include "CLS_DeviceTreeBGThread.h"

#include <QAtomicInt>
#include <QPointer>
#include <QSignalSpy>
#include <QtTest>

using namespace CLS_DevTreeTestUtil;

namespace {

const int CONST_FIRST_REPORT_MSECS = 15000;
// One wait of about ten seconds plus a pass, with room to spare.
const int CONST_NEXT_PASS_MSECS = 30000;

} // namespace

class tst_DeviceTreeThreadWiring : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void shouldMakeNoThreadBeforeSuccessfulInit();
    void shouldCreateThreadOnceAndConnectBySignature();
    void shouldRestartEndedThreadOnLaterInit();
    void shouldLeaveThreadRunningOnClear();
    void shouldReturnFromDestructorOnlyAfterRunEnded();
    void shouldBringChannelChangeToRowIconOnGuiThread();
};

void tst_DeviceTreeThreadWiring::initTestCase()
{
    BindGateways();
    QVERIFY(MakeIconFiles());
}

void tst_DeviceTreeThreadWiring::init()
{
    DevManageCtl_Reset();
    LxAppManagerCtl_Reset();
    TakeLogLines();
}

void tst_DeviceTreeThreadWiring::cleanup()
{
    QVERIFY2(LeakedWindows().isEmpty(), qPrintable(LeakedWindows().join(", ")));
}

void tst_DeviceTreeThreadWiring::shouldMakeNoThreadBeforeSuccessfulInit()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    QVERIFY(tree.m_pBGThread == nullptr);
    QCOMPARE(tree.Init(QMap<QString, STRCT_VideoItem*>(), "All"), -1);
    LxAppManagerCtl_SetAppDataAvailable(0);
    QCOMPARE(tree.Init("All"), -1);

    QVERIFY(tree.m_pBGThread == nullptr);
    QVERIFY(tree.findChild<CLS_DeviceTreeBGThread*>() == nullptr);
}

void tst_DeviceTreeThreadWiring::shouldCreateThreadOnceAndConnectBySignature()
{
    LoadInstallation();
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);

    QCOMPARE(tree.Init("All"), 0);
    CLS_DeviceTreeBGThread* pThread = tree.m_pBGThread;
    QVERIFY(pThread != nullptr);
    QCOMPARE(pThread->parent(), static_cast<QObject*>(&tree));
    QVERIFY(pThread->isRunning());
    QCOMPARE(tree.receivers(SIGNAL(SignChannelStatusUpdate())), 1);
    QVERIFY(QObject::disconnect(pThread, SIGNAL(SignChannelStatusChanged(QVariant)), &tree,
                                SLOT(UpdateAllChannelsStatus(QVariant))));
    QVERIFY(QObject::connect(pThread, SIGNAL(SignChannelStatusChanged(QVariant)), &tree,
                             SLOT(UpdateAllChannelsStatus(QVariant))));

    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode("resource_root_id", QString(), 2, "resource_root_id"));
    QCOMPARE(tree.Init(qmapNodes, "All"), 0);
    QCOMPARE(tree.Init("All"), 0);

    QCOMPARE(tree.m_pBGThread, pThread);
    QCOMPARE(tree.findChildren<CLS_DeviceTreeBGThread*>().size(), 1);
    QCOMPARE(tree.receivers(SIGNAL(SignChannelStatusUpdate())), 1);
}

void tst_DeviceTreeThreadWiring::shouldRestartEndedThreadOnLaterInit()
{
    LoadInstallation();
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    QSignalSpy spy(&tree, &CLS_WgtDeviceTree::SignUpdateChannelsStatus);
    QCOMPARE(tree.Init("All"), 0);
    QVERIFY(spy.wait(CONST_FIRST_REPORT_MSECS));
    spy.clear();
    QCOMPARE(tree.m_pBGThread->Stop(), 0);
    QTRY_VERIFY_WITH_TIMEOUT(!tree.m_pBGThread->isRunning(), 5000);

    QCOMPARE(tree.Init("All"), 0);

    QVERIFY(tree.m_pBGThread->isRunning());
    // A fresh cache: the first pass reports every channel again.
    QVERIFY(spy.wait(CONST_FIRST_REPORT_MSECS));
    typedef QMap<QString, QPair<bool, int>> CLS_Batch;
    QCOMPARE(spy.takeFirst().at(0).value<CLS_Batch>().size(), 3);
}

void tst_DeviceTreeThreadWiring::shouldLeaveThreadRunningOnClear()
{
    LoadInstallation();
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    QCOMPARE(tree.Init("All"), 0);
    CLS_DeviceTreeBGThread* pThread = tree.m_pBGThread;

    tree.Clear();

    QCOMPARE(tree.m_pBGThread, pThread);
    QVERIFY(pThread->isRunning());
    QCOMPARE(tree.receivers(SIGNAL(SignChannelStatusUpdate())), 1);
    QCOMPARE(Rows(tree), QString());
}

void tst_DeviceTreeThreadWiring::shouldReturnFromDestructorOnlyAfterRunEnded()
{
    LoadInstallation();
    auto* pTree = new CLS_TestDeviceTree(nullptr, DEV_TREE_RESOURCE);
    QCOMPARE(pTree->Init("All"), 0);
    QPointer<CLS_DeviceTreeBGThread> pThread = pTree->m_pBGThread;
    QAtomicInt iFinished(0);
    // Direct: set on the worker as it leaves run, before the wait can return.
    connect(
        pThread.data(), &QThread::finished, pThread.data(), [&iFinished] { iFinished.storeRelease(1); },
        Qt::DirectConnection);
    QVERIFY(pThread->isRunning());

    delete pTree;

    QCOMPARE(iFinished.loadAcquire(), 1);
    QVERIFY(pThread.isNull());
}

void tst_DeviceTreeThreadWiring::shouldBringChannelChangeToRowIconOnGuiThread()
{
    // Given a resource tree from the device layer whose thread has made its first report
    LoadInstallation();
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    QList<QThread*> qlstThreads;
    QList<QVariant> qlstBatches;
    connect(&tree, &CLS_WgtDeviceTree::SignUpdateChannelsStatus, &tree, [&](QVariant _qvarData) {
        qlstThreads << QThread::currentThread();
        qlstBatches << _qvarData;
    });
    QCOMPARE(tree.Init("All"), 0);
    QTRY_COMPARE_WITH_TIMEOUT(qlstBatches.size(), 1, CONST_FIRST_REPORT_MSECS);
    QCOMPARE(ShownIcon(tree, "ch1"), QString("channel_online.png"));

    // When one channel goes off line in the device layer
    QCOMPARE(DevManageCtl_SetStatus("ch1", 0), 0);

    // Then its row shows it, from a batch of that channel alone, applied on the GUI thread
    QTRY_COMPARE_WITH_TIMEOUT(ShownIcon(tree, "ch1"), QString("channel_offline.png"), CONST_NEXT_PASS_MSECS);
    QCOMPARE(qlstBatches.size(), 2);
    const auto qmapBatch = qlstBatches.at(1).value<QMap<QString, QPair<bool, int>>>();
    QCOMPARE(qmapBatch.keys(), QStringList{"ch1"});
    QCOMPARE(qmapBatch.value("ch1").second, 0);
    QCOMPARE(tree.m_qmapNodes.value("ch1").m_iStatus, 0);
    for (QThread* pThread : qlstThreads)
        QCOMPARE(pThread, QCoreApplication::instance()->thread());
}

QTEST_MAIN(tst_DeviceTreeThreadWiring)
#include "tst_DeviceTreeThreadWiring.moc"
