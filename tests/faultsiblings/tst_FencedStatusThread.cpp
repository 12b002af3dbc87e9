// The channel status thread over a device layer that throws: every operation of the loop that
// throws is logged once at level 3 and taken as that operation's failure, the thread goes on, and
// once the layer answers again a full report agrees with it. One host with two channels, both
// image channels: a full report is "h1c1=1/1 h1c2=1/0".

#include "CLS_StatusThreadKit.h"
#include "FaultDevManageControl.h"
#include "LxAppManagerControl.h"

#include <QElapsedTimer>
#include <QtTest>

namespace {
const QString CONST_qstrFullReport = QStringLiteral("h1c1=1/1 h1c2=1/0");
} // namespace

class tst_FencedStatusThread : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { BindGateways(); }

    void init()
    {
        FaultCtl_Reset();
        FaultCtl_Load(1, 2);
        LxAppManagerCtl_Reset();
        m_clsLog.Clear();
    }

    void shouldTakeAThrowingLoopOperationAsItsFailure_data();
    void shouldTakeAThrowingLoopOperationAsItsFailure();
    void shouldLogAnExceptionOfAnyTypeWithoutItsText();
    void shouldRetryEverySecondWhileTheListingAlwaysThrows();
    void shouldEndOnStopWhileTheDeviceLayerAnswersSlowly();

private:
    CLS_LogTap m_clsLog;
};

// Where the operation throws (the calls of it to let through first), the function whose record
// names it, whether the pass starts again after a second's sleep, and the first report. Calls of a
// first pass, in order: GetResourceTree, ListItemsOfType; per channel in IsImageChannel
// GetResourceTree, GetItem, ListChildren, GetDevFactory, QueryDeviceParam; GetDevFactory,
// ListIdsOfType; per channel IsIdAdmitted, GetResourceTree, GetItemOfChannel.
void tst_FencedStatusThread::shouldTakeAThrowingLoopOperationAsItsFailure_data()
{
    QTest::addColumn<QString>("operation");
    QTest::addColumn<int>("skip");
    QTest::addColumn<QString>("function");
    QTest::addColumn<bool>("sleeps");
    QTest::addColumn<QString>("firstReport"); // empty: the pass's changes are lost

    QTest::newRow("step 3 resource tree") << "GetResourceTree" << 0 << "run" << true << CONST_qstrFullReport;
    QTest::newRow("step 4 channel list") << "ListItemsOfType" << 0 << "run" << true << CONST_qstrFullReport;
    // In IsImageChannel: the first channel counts as no image channel.
    QTest::newRow("image: resource tree")
        << "GetResourceTree" << 1 << "IsImageChannel" << false << "h1c1=0/1 h1c2=1/0";
    QTest::newRow("image: item") << "GetItem" << 0 << "IsImageChannel" << false << "h1c1=0/1 h1c2=1/0";
    QTest::newRow("image: children") << "ListChildren" << 0 << "IsImageChannel" << false
                                     << "h1c1=0/1 h1c2=1/0";
    QTest::newRow("image: factory") << "GetDevFactory" << 0 << "IsImageChannel" << false
                                    << "h1c1=0/1 h1c2=1/0";
    QTest::newRow("image: query") << "QueryDeviceParam" << 0 << "IsImageChannel" << false
                                  << "h1c1=0/1 h1c2=1/0";
    // Steps 7 and 8 start again at once, and what the pass found is lost.
    QTest::newRow("step 7 factory") << "GetDevFactory" << 2 << "run" << false << QString();
    QTest::newRow("step 8 id list") << "ListIdsOfType" << 0 << "run" << false << QString();
    // In the second pass the id is skipped; the first pass has reported it already.
    QTest::newRow("step 9 admission") << "IsIdAdmitted" << 0 << "run" << false << CONST_qstrFullReport;
    QTest::newRow("step 9 resource tree") << "GetResourceTree" << 3 << "run" << false << CONST_qstrFullReport;
    QTest::newRow("step 9 channel item") << "GetItemOfChannel" << 0 << "run" << false << CONST_qstrFullReport;
}

void tst_FencedStatusThread::shouldTakeAThrowingLoopOperationAsItsFailure()
{
    QFETCH(QString, operation);
    QFETCH(int, skip);
    QFETCH(QString, function);
    QFETCH(bool, sleeps);
    QFETCH(QString, firstReport);
    const QByteArray qbaOperation = operation.toUtf8();

    // Given an operation that throws once
    FaultCtl_Throw(qbaOperation.constData(), skip, 1, 0);
    CLS_ThreadRig clsRig;
    QElapsedTimer timer;
    timer.start();

    // When the thread polls
    clsRig.Run();

    // Then the throw is logged once, under the function that made the call
    const QString qstrLine =
        QString("3|WgtTreeWidget|%1|sibling call threw operation:[%2] exception:[fault %2]")
            .arg(function, operation);
    QTRY_COMPARE_WITH_TIMEOUT(m_clsLog.Count(qstrLine), 1, 5000);
    QCOMPARE(FaultCtl_Thrown(qbaOperation.constData()), 1);

    if (firstReport.isEmpty()) {
        // The first pass's changes are lost: the pass after it finds nothing new, and nothing is
        // reported until the cache is cleared.
        QTRY_VERIFY_WITH_TIMEOUT(clsRig.m_clsThread.PassesDone() >= 2, 5000);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(clsRig.m_clsTree.Texts(), QStringList());
    } else {
        QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, 5000);
        QCOMPARE(clsRig.m_clsTree.Texts(), QStringList({firstReport}));
        if (sleeps)
            QVERIFY2(timer.elapsed() >= 900,
                     qPrintable(QString("first report after %1 ms").arg(timer.elapsed())));
    }

    // And once the layer answers again, a full report agrees with it
    const int iBefore = clsRig.m_clsTree.Count();
    clsRig.m_clsTree.UpdateChannelStatus();
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), iBefore + 1, 5000);
    QCOMPARE(clsRig.m_clsTree.Texts().last(), CONST_qstrFullReport);
    QCOMPARE(m_clsLog.Count(qstrLine), 1);
    QCOMPARE(clsRig.m_clsThread.isRunning(), true);
}

void tst_FencedStatusThread::shouldLogAnExceptionOfAnyTypeWithoutItsText()
{
    FaultCtl_Throw("ListItemsOfType", 0, 1, 1);
    CLS_ThreadRig clsRig;
    clsRig.Run();

    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, 5000);
    QCOMPARE(clsRig.m_clsTree.Texts(), QStringList({CONST_qstrFullReport}));
    QCOMPARE(m_clsLog.Count(
                 "3|WgtTreeWidget|run|sibling call threw operation:[ListItemsOfType] exception:[unknown "
                 "exception]"),
             1);
}

void tst_FencedStatusThread::shouldRetryEverySecondWhileTheListingAlwaysThrows()
{
    FaultCtl_Throw("ListItemsOfType", 0, -1, 0);
    CLS_ThreadRig clsRig;
    QElapsedTimer timer;
    timer.start();
    clsRig.Run();

    // A retry a second: the third try comes two seconds after the first at the earliest (a spin
    // would make it at once); how much later depends on the machine's load alone. Nothing is
    // reported meanwhile.
    QTRY_VERIFY_WITH_TIMEOUT(FaultCtl_Calls("ListItemsOfType") >= 3, 20000);
    const qint64 llMsecs = timer.elapsed();
    QVERIFY2(llMsecs >= 1800, qPrintable(QString("3 tries in %1 ms").arg(llMsecs)));
    QCOMPARE(clsRig.m_clsTree.Count(), 0);
    QCOMPARE(
        m_clsLog.Count("3|WgtTreeWidget|run|sibling call threw operation:[ListItemsOfType] exception:[fault "
                       "ListItemsOfType]"),
        FaultCtl_Thrown("ListItemsOfType"));

    // Healed, the next try reports every channel.
    FaultCtl_Heal();
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, 3000);
    QCOMPARE(clsRig.m_clsTree.Texts(), QStringList({CONST_qstrFullReport}));
}

void tst_FencedStatusThread::shouldEndOnStopWhileTheDeviceLayerAnswersSlowly()
{
    FaultCtl_Delay("GetItemOfChannel", 200);
    FaultCtl_Throw("IsIdAdmitted", 1, -1, 0); // the first id passes, the second throws
    CLS_ThreadRig clsRig;
    clsRig.Run();
    QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, 5000);
    QCOMPARE(clsRig.m_clsTree.Texts(), QStringList({CONST_qstrFullReport}));

    clsRig.m_clsThread.Stop();
    QVERIFY(clsRig.WaitEnd(3000));
}

QTEST_MAIN(tst_FencedStatusThread)
#include "tst_FencedStatusThread.moc"
