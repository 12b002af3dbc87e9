// CLS_DeviceTreeBGThread with the device layer present and no application library at all: the
// function "GetApp" can't be bound, so the first tick of the wait ends the thread with a log line.

#include "CLS_StatusThreadKit.h"
#include "DevManageControl.h"

#include <QtTest>

namespace {

const QString CONST_qstrLogNoApp = QStringLiteral("3|WgtTreeWidget|run|nullptr == pApp ");

} // namespace

class tst_DeviceTreeBGThread_noapp : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void shouldReportFirstPassThenEndAndLogWithoutApplicationLibrary();
    void shouldEndAgainAfterEachStartWithoutApplicationLibrary();
};

void tst_DeviceTreeBGThread_noapp::initTestCase()
{
    BindGateways();
    QVERIFY(nullptr == LxAppManager::GetModuleFun("GetApp", ""));
}

void tst_DeviceTreeBGThread_noapp::init()
{
    DevManageCtl_Reset();
    CLS_LogRecords::Take();
}

void tst_DeviceTreeBGThread_noapp::shouldReportFirstPassThenEndAndLogWithoutApplicationLibrary()
{
    LoadTwoHosts();
    CLS_LogTap clsLog;
    CLS_ThreadRig clsRig;

    clsRig.Run();

    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, 10000);
    QCOMPARE(clsRig.m_clsTree.Texts(), QStringList({FirstReportOfTwoHosts()}));
    QVERIFY(clsRig.WaitEnd(2000));
    QCOMPARE(clsLog.Lines(), QStringList({CONST_qstrLogNoApp}));
    QCOMPARE(clsRig.m_clsThread.State(), 1);
}

void tst_DeviceTreeBGThread_noapp::shouldEndAgainAfterEachStartWithoutApplicationLibrary()
{
    LoadTwoHosts();
    CLS_LogTap clsLog;
    CLS_ThreadRig clsRig;
    clsRig.Run();
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, 10000);
    QVERIFY(clsRig.WaitEnd(2000));

    // The state is still 1: Start() refuses and keeps the cache; the loop runs one more pass.
    QCOMPARE(clsRig.m_clsThread.Start(), -1);
    clsRig.m_clsThread.start(QThread::InheritPriority);

    QVERIFY(clsRig.WaitEnd(10000));
    QCOMPARE(clsLog.Lines(), QStringList({CONST_qstrLogNoApp, CONST_qstrLogNoApp}));
    QCOMPARE(DevManageCtl_CallCount("ListItemsOfType"), 2);
    QCoreApplication::sendPostedEvents();  // anything run() had emitted arrives now
    QCOMPARE(clsRig.m_clsTree.Count(), 1); // nothing new against the kept cache
}

QTEST_GUILESS_MAIN(tst_DeviceTreeBGThread_noapp)
#include "tst_DeviceTreeBGThread_noapp.moc"
