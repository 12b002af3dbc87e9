// CLS_DeviceTreeBGThread across whole waits: what a later pass reports after the first. Each case
// waits for at least one wait of about ten seconds, so the timeouts are generous.

#include "CLS_StatusThreadKit.h"
#include "DevManageControl.h"
#include "LxAppManagerControl.h"

#include <QtTest>

namespace {

const int CONST_FIRST_REPORT_MSECS = 10000;
// One wait of 100 ticks of 100 ms plus a pass, with room to spare.
const int CONST_NEXT_PASS_MSECS = 25000;

const QString CONST_qstrLogNoFactory = QStringLiteral("3|WgtTreeWidget|run|nullptr == pDevFactory ");

int Calls(const char* _pOperation)
{
    return DevManageCtl_CallCount(_pOperation);
}

} // namespace

class tst_DeviceTreeBGThread_polling : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void shouldReportOneEntryWithStoredImageFlagForOneStatusChange();
    void shouldEmitNothingWhenNothingChanged();
    void shouldNotReportChannelsFirstSeenWithoutFactoryUntilTheyChange();
    void shouldKeepRemovedChannelInCacheWithoutReportingIt();
    void shouldReportOnlyChannelAddedAfterFirstPass();
};

void tst_DeviceTreeBGThread_polling::initTestCase()
{
    BindGateways();
}

void tst_DeviceTreeBGThread_polling::init()
{
    DevManageCtl_Reset();
    LxAppManagerCtl_Reset();
    CLS_LogRecords::Take();
}

void tst_DeviceTreeBGThread_polling::shouldReportOneEntryWithStoredImageFlagForOneStatusChange()
{
    LoadTwoHosts();
    CLS_ThreadRig clsRig;
    clsRig.Run();
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);
    // The device would answer differently now; the stored flag is what counts.
    DevManageCtl_SetDeviceParam("chA1", 0);

    DevManageCtl_SetStatus("chA2", 1);

    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 2, CONST_NEXT_PASS_MSECS);
    QCOMPARE(clsRig.m_clsTree.Texts(), QStringList({FirstReportOfTwoHosts(), QStringLiteral("chA2=1/1")}));
    QCOMPARE(Calls("QueryDeviceParam"), 3); // known channels aren't asked again
}

void tst_DeviceTreeBGThread_polling::shouldEmitNothingWhenNothingChanged()
{
    LoadTwoHosts();
    CLS_ThreadRig clsRig;
    clsRig.Run();
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);

    // Wait for the end of a second pass; what it emitted, if anything, is posted by then.
    QTRY_VERIFY_WITH_TIMEOUT(clsRig.m_clsThread.PassesDone() >= 2, CONST_NEXT_PASS_MSECS);
    QVERIFY(Calls("ListIdsOfType") >= 2);
    QCoreApplication::sendPostedEvents();

    QCOMPARE(clsRig.m_clsTree.Count(), 1);
    QCOMPARE(clsRig.m_clsThread.CacheText(), FirstReportOfTwoHosts());
}

void tst_DeviceTreeBGThread_polling::shouldNotReportChannelsFirstSeenWithoutFactoryUntilTheyChange()
{
    LoadTwoHosts();
    DevManageCtl_SetObjectAvailable("GetDevFactory", 0);
    CLS_LogTap clsLog;
    CLS_ThreadRig clsRig;
    clsRig.Run();
    QTRY_VERIFY_WITH_TIMEOUT(clsLog.Count(CONST_qstrLogNoFactory) >= 1, CONST_FIRST_REPORT_MSECS);
    DevManageCtl_SetObjectAvailable("GetDevFactory", 1);
    // Only a pass that found the factory goes on to the wait, whose every tick asks for the app.
    QTRY_VERIFY_WITH_TIMEOUT(LxAppManagerCtl_CallCount("GetApp") >= 1, CONST_FIRST_REPORT_MSECS);
    QVERIFY(Calls("ListIdsOfType") >= 1);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(clsRig.m_clsTree.Count(), 0);

    DevManageCtl_SetStatus("chB1", 0);

    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_NEXT_PASS_MSECS);
    QCOMPARE(clsRig.m_clsTree.Texts(), QStringList({QStringLiteral("chB1=0/0")}));
}

void tst_DeviceTreeBGThread_polling::shouldKeepRemovedChannelInCacheWithoutReportingIt()
{
    LoadTwoHosts();
    CLS_ThreadRig clsRig;
    clsRig.Run();
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);

    DevManageCtl_RemoveItem("chA2");
    DevManageCtl_SetStatus("chB1", 0); // something for the next pass to report

    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 2, CONST_NEXT_PASS_MSECS);
    QCOMPARE(clsRig.m_clsTree.Texts().at(1), QStringLiteral("chB1=0/0"));
    QCOMPARE(clsRig.m_clsThread.CacheText(), QStringLiteral("chA1=1/1 chA2=1/0 chB1=0/0"));
}

void tst_DeviceTreeBGThread_polling::shouldReportOnlyChannelAddedAfterFirstPass()
{
    LoadTwoHosts();
    CLS_ThreadRig clsRig;
    clsRig.Run();
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, CONST_FIRST_REPORT_MSECS);

    DevManageCtl_AddChannel("chA3", "A3", "hostA", 4, 1, 3, "t_chA3");

    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 2, CONST_NEXT_PASS_MSECS);
    QCOMPARE(clsRig.m_clsTree.Texts().at(1), QStringLiteral("chA3=1/1")); // its image flag asked
    QCOMPARE(Calls("QueryDeviceParam"), 4);
}

QTEST_GUILESS_MAIN(tst_DeviceTreeBGThread_polling)
#include "tst_DeviceTreeBGThread_polling.moc"
