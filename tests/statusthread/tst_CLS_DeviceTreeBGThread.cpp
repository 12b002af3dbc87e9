// CLS_DeviceTreeBGThread on a real worker against the reference device layer and application
// library: its states, the first pass and forced reports, what stops it, and how it reads a device
// layer that is not ready, fails or hands out stale pointers. The behaviours that need a whole
// wait of about ten seconds live in tst_DeviceTreeBGThread_polling.

#include "CLS_StatusThreadKit.h"
#include "DevManageControl.h"
#include "LxAppManagerControl.h"

#include <QElapsedTimer>
#include <QtTest>

#include <atomic>
#include <memory>

namespace {

const QString CONST_qstrLogNoApp = QStringLiteral("3|WgtTreeWidget|run|nullptr == pApp ");
const QString CONST_qstrLogNoFactory = QStringLiteral("3|WgtTreeWidget|run|nullptr == pDevFactory ");

// Generous: a first pass starts at once and takes milliseconds.
const int CONST_FIRST_REPORT_MSECS = 10000;

QString LastCall(const char* _pOperation)
{
    char szBuffer[512] = {0};
    if (DevManageCtl_LastCall(_pOperation, szBuffer, sizeof(szBuffer)) < 0) {
        return QStringLiteral("<never called>");
    }
    return QString::fromUtf8(szBuffer);
}

int Calls(const char* _pOperation)
{
    return DevManageCtl_CallCount(_pOperation);
}

// Whether the thread spends _iTicks more ticks in its wait between passes within five seconds: each
// tick asks the application manager for the app once, and nothing else here does.
bool WaitTicks(int _iTicks)
{
    const int iBefore = LxAppManagerCtl_CallCount("GetApp");
    return QTest::qWaitFor([&] { return LxAppManagerCtl_CallCount("GetApp") >= iBefore + _iTicks; }, 5000);
}

} // namespace

class tst_CLS_DeviceTreeBGThread : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    // states
    void shouldBeCreatedInStateZeroWithEmptyCache();
    void shouldMoveThroughStatesWithStartPauseStop();
    void shouldRefuseStartWhileRunningAndKeepCache();
    void shouldClearCacheOnStartAfterStop();
    void shouldLeaveRunAtOnceWhenStartWasNotCalled();

    // reports
    void shouldReportEveryChannelWithImageFlagOnFirstPass();
    void shouldSendBatchAsChannelMapInQVariantQueuedToOwner();
    void shouldAskDeviceOncePerChannelNewToCache();
    void shouldReportAllChannelsAgainAfterForcedReport();
    void shouldForgetCacheWhenOwnerAsksForFullReport();

    // what ends run()
    void shouldEndRunWithinTicksWhenStoppedDuringWait();
    void shouldNotEndRunWhenPausedDuringWait();
    void shouldEndPausedRunAtStartOfNextPass();
    void shouldEndRunWhenApplicationQuits();
    void shouldEndRunAndLogWhenApplicationObjectIsMissing();
    void shouldRunAgainWithOldCacheAfterApplicationExit();
    void shouldReturnFromDestructorOnlyAfterRunEnded_data();
    void shouldReturnFromDestructorOnlyAfterRunEnded();

    // a device layer that isn't ready or fails
    void shouldRunPassesBackToBackWithoutChannels();
    void shouldRetryEverySecondWhileResourceTreeIsMissing();
    void shouldEndAtLoopTopWhenStoppedDuringRetrySleep();
    void shouldCutRetrySleepShortWhenStopped();
    void shouldRetryAfterSleepWhenListingChannelsFails();
    void shouldDropPassAndRetryAtOnceWhenIdListFails();
    void shouldSpinAndLogWhileDeviceFactoryIsMissing();

    // what the two passes read
    void shouldSkipExpiredAndEmptyPointers();
    void shouldReportChannelSeenOnlyBySecondPassWithoutImageFlag();
    void shouldSkipIdInSecondPass_data();
    void shouldSkipIdInSecondPass();
    void shouldLetSecondPassOverwriteFirstPassValue();
    void shouldCallDeviceLayerWithExpectedArguments();
};

void tst_CLS_DeviceTreeBGThread::initTestCase()
{
    BindGateways();
}

void tst_CLS_DeviceTreeBGThread::init()
{
    DevManageCtl_Reset();
    LxAppManagerCtl_Reset();
    CLS_LogRecords::Take();
}

// ---- states ---------------------------------------------------------------------------------

void tst_CLS_DeviceTreeBGThread::shouldBeCreatedInStateZeroWithEmptyCache()
{
    CLS_TestBGThread clsThread;

    QCOMPARE(clsThread.State(), 0);
    QVERIFY(clsThread.Cache().empty());
    QVERIFY(!clsThread.isRunning());
}

void tst_CLS_DeviceTreeBGThread::shouldMoveThroughStatesWithStartPauseStop()
{
    CLS_TestBGThread clsThread;
    QStringList qlstSteps;
    auto step = [&](const char* _pName, int _iResult) {
        qlstSteps << QString("%1:%2->%3").arg(_pName).arg(_iResult).arg(clsThread.State());
    };

    step("Start", clsThread.Start());
    step("Start", clsThread.Start());
    step("Pause", clsThread.Pause());
    step("Start", clsThread.Start());
    step("Stop", clsThread.Stop());
    step("Stop", clsThread.Stop());
    step("Pause", clsThread.Pause());
    step("Start", clsThread.Start());

    QCOMPARE(qlstSteps, QStringList({"Start:0->1", "Start:-1->1", "Pause:0->2", "Start:0->1", "Stop:0->3",
                                     "Stop:0->3", "Pause:0->2", "Start:0->1"}));
    QVERIFY(!clsThread.isRunning()); // Start() alone starts no thread
}

void tst_CLS_DeviceTreeBGThread::shouldRefuseStartWhileRunningAndKeepCache()
{
    LoadTwoHosts();
    CLS_ThreadRig clsRig;
    clsRig.Run();
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);

    QCOMPARE(clsRig.m_clsThread.Start(), -1);

    QCOMPARE(clsRig.m_clsThread.CacheText(), FirstReportOfTwoHosts());
    // A cleared cache would end the wait at its first tick and bring a full report: two ticks of
    // the wait without a second pass show that it was kept.
    QVERIFY(WaitTicks(2));
    QCOMPARE(clsRig.m_clsThread.PassesDone(), 1);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(clsRig.m_clsTree.Texts(), QStringList({FirstReportOfTwoHosts()}));
    QCOMPARE(clsRig.m_clsThread.State(), 1);
}

void tst_CLS_DeviceTreeBGThread::shouldClearCacheOnStartAfterStop()
{
    LoadTwoHosts();
    CLS_ThreadRig clsRig;
    clsRig.Run();
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    clsRig.StopAndJoin();
    QCOMPARE(clsRig.m_clsThread.CacheText(), FirstReportOfTwoHosts()); // a stop keeps it

    QCOMPARE(clsRig.m_clsThread.Start(), 0);
    QVERIFY(clsRig.m_clsThread.Cache().empty());

    // Started again, the thread reports everything anew.
    clsRig.m_clsThread.start(QThread::InheritPriority);
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 2, CONST_FIRST_REPORT_MSECS);
    QCOMPARE(clsRig.m_clsTree.Texts(), QStringList({FirstReportOfTwoHosts(), FirstReportOfTwoHosts()}));
}

void tst_CLS_DeviceTreeBGThread::shouldLeaveRunAtOnceWhenStartWasNotCalled()
{
    LoadTwoHosts();
    CLS_ThreadRig clsRig;

    clsRig.m_clsThread.start(QThread::InheritPriority); // state 0: run() returns at its first step

    QVERIFY(clsRig.WaitEnd(2000));
    QCOMPARE(Calls("GetResourceTree"), 0);
    QCOMPARE(Calls("ListItemsOfType"), 0);
    QCOMPARE(clsRig.m_clsThread.State(), 0);
    QCOMPARE(clsRig.m_clsThread.PassesDone(), 0);
    QCoreApplication::sendPostedEvents(); // anything run() had emitted arrives now
    QCOMPARE(clsRig.m_clsTree.Count(), 0);
}

// ---- reports --------------------------------------------------------------------------------

void tst_CLS_DeviceTreeBGThread::shouldReportEveryChannelWithImageFlagOnFirstPass()
{
    LoadTwoHosts();
    CLS_ThreadRig clsRig;

    clsRig.Run();

    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    QCOMPARE(clsRig.m_clsTree.Texts(), QStringList({FirstReportOfTwoHosts()}));
    QCOMPARE(clsRig.m_clsThread.CacheText(), FirstReportOfTwoHosts());
    QVERIFY(WaitTicks(2));
    QCOMPARE(clsRig.m_clsThread.PassesDone(), 1);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(clsRig.m_clsTree.Count(), 1); // then the wait: nothing more
}

void tst_CLS_DeviceTreeBGThread::shouldSendBatchAsChannelMapInQVariantQueuedToOwner()
{
    LoadTwoHosts();
    CLS_ThreadRig clsRig;

    clsRig.Run();

    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    QCOMPARE(clsRig.m_clsTree.m_qvecTypes.at(0), qMetaTypeId<ChannelBatch>());
    QVERIFY(clsRig.m_clsTree.m_qvecOnGui.at(0)); // arrived on the owner's thread
    const QMetaObject& metaObject = CLS_DeviceTreeBGThread::staticMetaObject;
    QVERIFY(metaObject.indexOfSignal("SignChannelStatusChanged(QVariant)") >= 0);
    QVERIFY(metaObject.indexOfSlot("SlotChannelStatusChanged()") >= 0);
}

void tst_CLS_DeviceTreeBGThread::shouldAskDeviceOncePerChannelNewToCache()
{
    LoadTwoHosts();
    CLS_ThreadRig clsRig;

    clsRig.Run();

    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    QCOMPARE(Calls("QueryDeviceParam"), 3);
    clsRig.m_clsTree.UpdateChannelStatus();
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 2, CONST_FIRST_REPORT_MSECS);
    QCOMPARE(Calls("QueryDeviceParam"), 6); // all new again after the clear
}

void tst_CLS_DeviceTreeBGThread::shouldReportAllChannelsAgainAfterForcedReport()
{
    LoadTwoHosts();
    CLS_ThreadRig clsRig;
    clsRig.Run();
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    DevManageCtl_SetDeviceParam("chA1", 0); // host A stops answering as an image device

    clsRig.m_clsTree.UpdateChannelStatus();

    // Noticed at the next tick of the wait, long before the wait would have run out.
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 2, 5000);
    QCOMPARE(clsRig.m_clsTree.Texts(),
             QStringList({FirstReportOfTwoHosts(), QStringLiteral("chA1=0/1 chA2=0/0 chB1=0/1")}));
}

void tst_CLS_DeviceTreeBGThread::shouldForgetCacheWhenOwnerAsksForFullReport()
{
    LoadTwoHosts();
    CLS_ThreadRig clsRig;
    clsRig.Run();
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    clsRig.StopAndJoin();
    QVERIFY(!clsRig.m_clsThread.Cache().empty());

    // Sender and receiver share the GUI thread: the slot runs within the emission.
    clsRig.m_clsTree.UpdateChannelStatus();

    QVERIFY(clsRig.m_clsThread.Cache().empty());
}

// ---- what ends run() ------------------------------------------------------------------------

void tst_CLS_DeviceTreeBGThread::shouldEndRunWithinTicksWhenStoppedDuringWait()
{
    LoadTwoHosts();
    CLS_ThreadRig clsRig;
    clsRig.Run();
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    QVERIFY(WaitTicks(1)); // inside the wait of about ten seconds

    QCOMPARE(clsRig.m_clsThread.Stop(), 0);

    QVERIFY(clsRig.WaitEnd(2000));
    QCOMPARE(clsRig.m_clsThread.State(), 3);
    QCOMPARE(Calls("ListItemsOfType"), 1); // no further pass
}

void tst_CLS_DeviceTreeBGThread::shouldNotEndRunWhenPausedDuringWait()
{
    LoadTwoHosts();
    CLS_ThreadRig clsRig;
    clsRig.Run();
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);

    QCOMPARE(clsRig.m_clsThread.Pause(), 0);

    QVERIFY(!clsRig.WaitEnd(1500)); // the wait doesn't look at state 2
    QVERIFY(clsRig.m_clsThread.isRunning());
    QCOMPARE(clsRig.m_clsThread.State(), 2);
}

void tst_CLS_DeviceTreeBGThread::shouldEndPausedRunAtStartOfNextPass()
{
    LoadTwoHosts();
    CLS_ThreadRig clsRig;
    clsRig.Run();
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    clsRig.m_clsThread.Pause();
    QVERIFY(!clsRig.WaitEnd(300));

    // A cleared cache cuts the wait short; the next pass then finds state 2 at its first step.
    clsRig.m_clsThread.SlotChannelStatusChanged();

    QVERIFY(clsRig.WaitEnd(2000));
    QCOMPARE(clsRig.m_clsThread.State(), 2);
    QCOMPARE(Calls("ListItemsOfType"), 1);
    QCoreApplication::sendPostedEvents(); // anything run() had emitted arrives now
    QCOMPARE(clsRig.m_clsTree.Count(), 1);
}

void tst_CLS_DeviceTreeBGThread::shouldEndRunWhenApplicationQuits()
{
    LoadTwoHosts();
    CLS_ThreadRig clsRig;
    clsRig.Run();
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);

    LxAppManagerCtl_SetAppState(2);

    QVERIFY(clsRig.WaitEnd(2000));
    QCOMPARE(clsRig.m_clsThread.State(), 1); // left as it was
    QVERIFY(LxAppManagerCtl_CallCount("GetAppState") > 0);
    QCOMPARE(Calls("ListItemsOfType"), 1);
}

void tst_CLS_DeviceTreeBGThread::shouldEndRunAndLogWhenApplicationObjectIsMissing()
{
    LoadTwoHosts();
    LxAppManagerCtl_SetAppAvailable(0);
    CLS_LogTap clsLog;
    CLS_ThreadRig clsRig;

    clsRig.Run();

    // The pass runs and reports; the first tick of the wait ends the thread.
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    QVERIFY(clsRig.WaitEnd(2000));
    QCOMPARE(clsLog.Lines(), QStringList({CONST_qstrLogNoApp}));
    QCOMPARE(clsRig.m_clsThread.State(), 1);
    QCOMPARE(LxAppManagerCtl_CallCount("GetApp"), 1);
    QCOMPARE(LxAppManagerCtl_CallCount("GetAppState"), 0);
}

void tst_CLS_DeviceTreeBGThread::shouldRunAgainWithOldCacheAfterApplicationExit()
{
    LoadTwoHosts();
    LxAppManagerCtl_SetAppState(2);
    CLS_ThreadRig clsRig;
    clsRig.Run();
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    QVERIFY(clsRig.WaitEnd(2000));
    LxAppManagerCtl_SetAppState(1);

    // What the tree does on its next build: Start() refuses, the thread starts all the same.
    QCOMPARE(clsRig.m_clsThread.Start(), -1);
    QCOMPARE(clsRig.m_clsThread.CacheText(), FirstReportOfTwoHosts());
    clsRig.m_clsThread.start(QThread::InheritPriority);

    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsThread.PassesDone(), 2, CONST_FIRST_REPORT_MSECS); // a second pass
    QCOMPARE(Calls("ListIdsOfType"), 2);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(clsRig.m_clsTree.Count(), 1); // against the old cache nothing is new
    QVERIFY(clsRig.m_clsThread.isRunning());
}

void tst_CLS_DeviceTreeBGThread::shouldReturnFromDestructorOnlyAfterRunEnded_data()
{
    QTest::addColumn<bool>("blResourceTree");

    QTest::newRow("inside the wait") << true;
    QTest::newRow("inside the retry sleep") << false;
}

void tst_CLS_DeviceTreeBGThread::shouldReturnFromDestructorOnlyAfterRunEnded()
{
    QFETCH(bool, blResourceTree);
    LoadTwoHosts();
    DevManageCtl_SetObjectAvailable("GetResourceTree", blResourceTree ? 1 : 0);
    auto* pOwner = new QObject();
    auto* pThread = new CLS_DeviceTreeBGThread(pOwner);
    auto spFinished = std::make_shared<std::atomic<bool>>(false);
    // Direct: runs on the worker as it leaves, before a waiter is released.
    connect(
        pThread, &QThread::finished, pThread, [spFinished]() { spFinished->store(true); },
        Qt::DirectConnection);
    CLS_TreeStandIn clsTree;
    clsTree.Attach(pThread);
    pThread->Start();
    pThread->start(QThread::InheritPriority);
    if (blResourceTree) {
        QTRY_COMPARE_WITH_TIMEOUT(clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    } else {
        QTRY_VERIFY_WITH_TIMEOUT(Calls("GetResourceTree") >= 1, CONST_FIRST_REPORT_MSECS);
    }
    QVERIFY(pThread->isRunning());

    delete pOwner; // deletes the thread, which stops and waits by itself

    QVERIFY(spFinished->load());
}

// ---- a device layer that isn't ready or fails ---------------------------------------------------

void tst_CLS_DeviceTreeBGThread::shouldRunPassesBackToBackWithoutChannels()
{
    DevManageCtl_AddGroup("resource_root_id", "All", "", 0, "");
    DevManageCtl_AddHost("hostA", "Host A", "resource_root_id", 1, 1, "");
    CLS_ThreadRig clsRig;

    clsRig.Run();

    // With a wait between them, twenty passes would take minutes.
    QTRY_VERIFY_WITH_TIMEOUT(Calls("ListItemsOfType") >= 20, 10000);
    QCOMPARE(clsRig.m_clsTree.Count(), 0);
    QVERIFY(LxAppManagerCtl_CallCount("GetApp") >= 19); // one tick per pass
    QVERIFY(clsRig.m_clsThread.Cache().empty());
}

void tst_CLS_DeviceTreeBGThread::shouldRetryEverySecondWhileResourceTreeIsMissing()
{
    LoadTwoHosts();
    DevManageCtl_SetObjectAvailable("GetResourceTree", 0);
    CLS_ThreadRig clsRig;
    QElapsedTimer clsTimer;
    clsTimer.start();

    clsRig.Run();

    QTRY_VERIFY_WITH_TIMEOUT(Calls("GetResourceTree") >= 2, 10000);
    QVERIFY2(clsTimer.elapsed() >= 900, qPrintable(QString("retried after %1 ms").arg(clsTimer.elapsed())));
    QCOMPARE(Calls("ListItemsOfType"), 0);
    QCOMPARE(LxAppManagerCtl_CallCount("GetApp"), 0); // the wait is never reached
    QCOMPARE(clsRig.m_clsTree.Count(), 0);

    DevManageCtl_SetObjectAvailable("GetResourceTree", 1);
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    QCOMPARE(clsRig.m_clsTree.Texts(), QStringList({FirstReportOfTwoHosts()}));
}

void tst_CLS_DeviceTreeBGThread::shouldEndAtLoopTopWhenStoppedDuringRetrySleep()
{
    LoadTwoHosts();
    DevManageCtl_SetObjectAvailable("GetResourceTree", 0);
    CLS_ThreadRig clsRig;
    clsRig.Run();
    QTRY_VERIFY_WITH_TIMEOUT(Calls("GetResourceTree") >= 1, CONST_FIRST_REPORT_MSECS);
    // Right after an attempt the loop sleeps for a second: stop it in there.
    const int iCallsBefore = Calls("GetResourceTree");
    QTRY_VERIFY_WITH_TIMEOUT(Calls("GetResourceTree") > iCallsBefore, CONST_FIRST_REPORT_MSECS);
    const int iCallsAtStop = Calls("GetResourceTree");
    DevManageCtl_SetObjectAvailable("GetResourceTree", 1);

    clsRig.m_clsThread.Stop();

    QVERIFY(clsRig.WaitEnd(3000));
    QCOMPARE(Calls("GetResourceTree"), iCallsAtStop); // left at the top, before the next attempt
    QCOMPARE(Calls("ListItemsOfType"), 0);
    QCOMPARE(clsRig.m_clsTree.Count(), 0);
}

void tst_CLS_DeviceTreeBGThread::shouldCutRetrySleepShortWhenStopped()
{
    LoadTwoHosts();
    DevManageCtl_SetObjectAvailable("GetResourceTree", 0);
    CLS_ThreadRig clsRig;
    clsRig.Run();
    // A new attempt has just been made: the loop is at the start of its second's sleep.
    QTRY_VERIFY_WITH_TIMEOUT(Calls("GetResourceTree") >= 1, CONST_FIRST_REPORT_MSECS);
    const int iCallsBefore = Calls("GetResourceTree");
    QTRY_VERIFY_WITH_TIMEOUT(Calls("GetResourceTree") > iCallsBefore, CONST_FIRST_REPORT_MSECS);
    QElapsedTimer clsTimer;
    clsTimer.start();

    clsRig.m_clsThread.Stop();

    QVERIFY(clsRig.WaitEnd(3000));
    // Sleeping on through the second would end run() about 1,000 ms after the attempt.
    QVERIFY2(clsTimer.elapsed() < 900,
             qPrintable(QString("run ended %1 ms after the stop").arg(clsTimer.elapsed())));
    QCOMPARE(clsRig.m_clsThread.State(), 3);
}

void tst_CLS_DeviceTreeBGThread::shouldRetryAfterSleepWhenListingChannelsFails()
{
    LoadTwoHosts();
    DevManageCtl_FailNext("ListItemsOfType", 2, -5);
    CLS_ThreadRig clsRig;
    QElapsedTimer clsTimer;
    clsTimer.start();

    clsRig.Run();

    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    QVERIFY2(clsTimer.elapsed() >= 1800, qPrintable(QString("reported after %1 ms").arg(clsTimer.elapsed())));
    QCOMPARE(Calls("ListItemsOfType"), 3);
    QCOMPARE(clsRig.m_clsTree.Texts(), QStringList({FirstReportOfTwoHosts()}));
}

void tst_CLS_DeviceTreeBGThread::shouldDropPassAndRetryAtOnceWhenIdListFails()
{
    LoadTwoHosts();
    DevManageCtl_FailNext("ListIdsOfType", 1, -1);
    CLS_ThreadRig clsRig;

    clsRig.Run();

    // The retry comes at once, not after a wait.
    QTRY_VERIFY_WITH_TIMEOUT(clsRig.m_clsThread.PassesDone() >= 2, 5000);
    QCOMPARE(Calls("ListIdsOfType"), 2);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(clsRig.m_clsTree.Count(), 0); // the first pass's changes are lost
    QCOMPARE(clsRig.m_clsThread.CacheText(), FirstReportOfTwoHosts());
    QCOMPARE(Calls("ListItemsOfType"), 2);
}

void tst_CLS_DeviceTreeBGThread::shouldSpinAndLogWhileDeviceFactoryIsMissing()
{
    LoadTwoHosts();
    DevManageCtl_SetObjectAvailable("GetDevFactory", 0);
    CLS_LogTap clsLog;
    CLS_ThreadRig clsRig;

    clsRig.Run();

    QTRY_VERIFY_WITH_TIMEOUT(clsLog.Count(CONST_qstrLogNoFactory) >= 5, 5000);
    QVERIFY(Calls("ListItemsOfType") >= 5);
    QCOMPARE(LxAppManagerCtl_CallCount("GetApp"), 0); // no wait between the passes
    QCOMPARE(clsRig.m_clsTree.Count(), 0);
    const QStringList qlstLines = clsLog.Lines();
    QCOMPARE(QSet<QString>(qlstLines.cbegin(), qlstLines.cend()), QSet<QString>({CONST_qstrLogNoFactory}));
    // Without a factory the device can't be asked: no channel is an image channel.
    QCOMPARE(clsRig.m_clsThread.CacheText(), QStringLiteral("chA1=0/1 chA2=0/0 chB1=0/1"));

    DevManageCtl_SetObjectAvailable("GetDevFactory", 1);

    // Only a pass that found the factory goes on to the wait.
    QVERIFY(WaitTicks(1));
    QVERIFY(Calls("ListIdsOfType") >= 1);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(clsRig.m_clsTree.Count(), 0); // the cache took those channels in already
    clsLog.Clear();
    const int iPasses = clsRig.m_clsThread.PassesDone();
    QVERIFY(WaitTicks(2));
    QCOMPARE(clsRig.m_clsThread.PassesDone(), iPasses); // and the spinning has stopped
    QCOMPARE(clsLog.Lines(), QStringList());
}

// ---- what the two passes read -------------------------------------------------------------------

void tst_CLS_DeviceTreeBGThread::shouldSkipExpiredAndEmptyPointers()
{
    LoadTwoHosts();
    DevManageCtl_SetStaleEntries(2); // every list opens with two expired and one empty pointer
    CLS_ThreadRig clsRig;

    clsRig.Run();

    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    QCOMPARE(clsRig.m_clsTree.Texts(), QStringList({FirstReportOfTwoHosts()}));
}

void tst_CLS_DeviceTreeBGThread::shouldReportChannelSeenOnlyBySecondPassWithoutImageFlag()
{
    LoadTwoHosts();
    DevManageCtl_SetStale("chA2", DEVMANAGECTL_STALE_IN_LISTS); // gone for the first pass only
    CLS_ThreadRig clsRig;

    clsRig.Run();

    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    QCOMPARE(clsRig.m_clsTree.Texts(), QStringList({QStringLiteral("chA1=1/1 chA2=0/0 chB1=0/1")}));
    QCOMPARE(Calls("QueryDeviceParam"), 2); // not asked for chA2
}

void tst_CLS_DeviceTreeBGThread::shouldSkipIdInSecondPass_data()
{
    QTest::addColumn<int>("iCase");

    QTest::newRow("not admitted") << 0;
    QTest::newRow("lookup fails") << 1;
    QTest::newRow("lookup gives an expired pointer") << 2;
}

void tst_CLS_DeviceTreeBGThread::shouldSkipIdInSecondPass()
{
    QFETCH(int, iCase);
    LoadTwoHosts();
    DevManageCtl_SetStale("chA2", DEVMANAGECTL_STALE_IN_LISTS); // only the second pass could see it
    switch (iCase) {
    case 0:
        DevManageCtl_SetIdAdmitted("chA2", 0);
        break;
    case 1:
        DevManageCtl_FailNext("GetItemOfChannel", 100, -2);
        break;
    default:
        DevManageCtl_SetStale("chA2", DEVMANAGECTL_STALE_IN_LISTS | DEVMANAGECTL_STALE_IN_CHANNEL_GET);
        break;
    }
    CLS_ThreadRig clsRig;

    clsRig.Run();

    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    QCOMPARE(clsRig.m_clsTree.Texts(), QStringList({QStringLiteral("chA1=1/1 chB1=0/1")}));
    QCOMPARE(clsRig.m_clsThread.CacheText(), QStringLiteral("chA1=1/1 chB1=0/1"));
    QCOMPARE(Calls("IsIdAdmitted"), 3);
}

void tst_CLS_DeviceTreeBGThread::shouldLetSecondPassOverwriteFirstPassValue()
{
    LoadTwoHosts();
    // chA1 goes off line between the two reads of the pass.
    DevManageCtl_SetStatusOnLookup("chA1", 0);
    CLS_ThreadRig clsRig;

    clsRig.Run();

    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    QCOMPARE(clsRig.m_clsTree.Texts(), QStringList({QStringLiteral("chA1=1/0 chA2=1/0 chB1=0/1")}));
    QCOMPARE(clsRig.m_clsThread.CacheText(), QStringLiteral("chA1=1/0 chA2=1/0 chB1=0/1"));
}

void tst_CLS_DeviceTreeBGThread::shouldCallDeviceLayerWithExpectedArguments()
{
    LoadTwoHosts();
    CLS_ThreadRig clsRig;

    clsRig.Run();

    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    QCOMPARE(LastCall("ListItemsOfType"), QStringLiteral("4|0"));
    QCOMPARE(LastCall("ListIdsOfType"), QStringLiteral("4"));
    QCOMPARE(LastCall("IsIdAdmitted"), QStringLiteral("chB1"));
    QCOMPARE(LastCall("GetItemOfChannel"), QStringLiteral("chB1|-1|0"));
    QCOMPARE(LastCall("GetItem"), QStringLiteral("chB1"));
    QCOMPARE(LastCall("ListChildren"), QStringLiteral("hostB"));
    QCOMPARE(LastCall("QueryDeviceParam"), QStringLiteral("chB1|0|10072|0|"));
    QCOMPARE(Calls("GetItemOfChannel"), 3);
    QCOMPARE(Calls("GetItem"), 3);
}

QTEST_GUILESS_MAIN(tst_CLS_DeviceTreeBGThread)
#include "tst_CLS_DeviceTreeBGThread.moc"
