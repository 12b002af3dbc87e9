// The status simulation of the reference device layer: its start and stop rules, its pace, its
// count, what one event does to a host and its channels, the same picks for the same seed, and a
// process that leaves with the simulation still running.

#include "CLS_RefDevManageKit.h"
#include "CLS_RefDevSimulator.h"
#include "CLS_RefDevStore.h"

#include <QElapsedTimer>
#include <QtTest>

#include <random>

using namespace CLS_RefDevKit;

namespace {

int StatusOf(const char* _pId)
{
    int iStatus = -1;
    DevManageCtl_GetStatus(_pId, &iStatus);
    return iStatus;
}

QStringList JournalText(int _iCount)
{
    QStringList qlstEvents;
    for (const std::string& strEvent : CLS_RefDevSimulator::Instance().Journal()) {
        if (qlstEvents.size() == _iCount)
            break;
        qlstEvents << QString::fromStdString(strEvent);
    }
    return qlstEvents;
}

// Runs a simulation on a fresh generated installation until it has made _iCount events, and gives
// them back.
QStringList RunUntil(unsigned int _uiSeed, int _iCount)
{
    DevManageCtl_GenerateInstallation(160, 16);
    if (DevManageCtl_StartSimulation(500, _uiSeed) != 0)
        return {"<not started>"};
    QElapsedTimer timer;
    timer.start();
    while (DevManageCtl_SimulationChanges() < _iCount && timer.elapsed() < 30000)
        QTest::qWait(20);
    DevManageCtl_StopSimulation();
    return JournalText(_iCount);
}

} // namespace

class tst_RefDevSimulation : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void shouldRefuseRateBelowOne_data();
    void shouldRefuseRateBelowOne();
    void shouldRefuseSecondStart();
    void shouldStopSafelyWhenNotRunning();
    void shouldChangeStatusesAtAboutTheRate();
    void shouldApplyNothingAfterStop();
    void shouldKeepCountAfterStopAndRestartItAtStart();
    void shouldCountOneChangePerEventMatchingHostStatuses();
    void shouldOnlyWriteZeroOrOne();
    void shouldTakeChannelsWithHostAndBringThemBack();
    void shouldPickTheSameEventsForTheSameSeed();
    void shouldRunOnEmptyInstallationWithoutChanges();
    void shouldKeepRunningAcrossLoads();
    // Last: leaves the simulation running for the process exit (also its own ctest entry).
    void shouldLeaveRunningSimulationToProcessExit();
};

void tst_RefDevSimulation::initTestCase()
{
    BindGateway();
}

void tst_RefDevSimulation::init()
{
    DevManageCtl_StopSimulation();
    DevManageCtl_Reset();
}

void tst_RefDevSimulation::cleanup()
{
    if (QString(QTest::currentTestFunction()) != "shouldLeaveRunningSimulationToProcessExit")
        DevManageCtl_StopSimulation();
}

void tst_RefDevSimulation::shouldRefuseRateBelowOne_data()
{
    QTest::addColumn<int>("iRate");
    QTest::newRow("zero") << 0;
    QTest::newRow("negative") << -10;
}

void tst_RefDevSimulation::shouldRefuseRateBelowOne()
{
    QFETCH(int, iRate);
    QCOMPARE(DevManageCtl_GenerateInstallation(16, 4), 1 + 1 + 4 + 16 + 3 + 7);
    QCOMPARE(DevManageCtl_StartSimulation(iRate, 1), -1);
    QVERIFY(!CLS_RefDevSimulator::Instance().IsRunning());
    QCOMPARE(DevManageCtl_StartSimulation(1, 1), 0); // nothing left behind that blocks a start
}

void tst_RefDevSimulation::shouldRefuseSecondStart()
{
    QCOMPARE(DevManageCtl_StartSimulation(10, 1), 0);
    QCOMPARE(DevManageCtl_StartSimulation(10, 2), -1);
    QVERIFY(CLS_RefDevSimulator::Instance().IsRunning());
    DevManageCtl_StopSimulation();
    QVERIFY(!CLS_RefDevSimulator::Instance().IsRunning());
    QCOMPARE(DevManageCtl_StartSimulation(10, 2), 0);
}

void tst_RefDevSimulation::shouldStopSafelyWhenNotRunning()
{
    DevManageCtl_StopSimulation();
    DevManageCtl_StopSimulation();
    QVERIFY(!CLS_RefDevSimulator::Instance().IsRunning());
    QCOMPARE(DevManageCtl_StartSimulation(5, 3), 0);
    DevManageCtl_StopSimulation();
    DevManageCtl_StopSimulation();
    QVERIFY(!CLS_RefDevSimulator::Instance().IsRunning());
}

void tst_RefDevSimulation::shouldChangeStatusesAtAboutTheRate()
{
    QCOMPARE(DevManageCtl_GenerateInstallation(160, 16), 1 + 1 + 10 + 160 + 9 + 7);
    const QStringList qlstBefore = Statuses();
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(DevManageCtl_StartSimulation(100, 7), 0);

    // At 100 a second, 60 events take some 0.6 s; a slow machine gets 10 s. The events are paced,
    // not sent at once: 60 of them never come before 0.5 s (one at the start, one per 10 ms). How
    // fast a loaded machine keeps up is a figure of the demo's summary, not a test.
    QTRY_VERIFY_WITH_TIMEOUT(DevManageCtl_SimulationChanges() >= 60, 10000);
    const qint64 llMsecs = timer.elapsed();
    QVERIFY2(llMsecs >= 500, qPrintable(QString("60 changes in %1 ms").arg(llMsecs)));
    QVERIFY(Statuses() != qlstBefore);
}

void tst_RefDevSimulation::shouldApplyNothingAfterStop()
{
    QCOMPARE(DevManageCtl_GenerateInstallation(160, 16), 188);
    QCOMPARE(DevManageCtl_StartSimulation(200, 11), 0);
    QTRY_VERIFY_WITH_TIMEOUT(DevManageCtl_SimulationChanges() >= 20, 10000);
    DevManageCtl_StopSimulation();
    // The stop has joined the simulator's thread, so nothing can change after it: a new start is
    // taken at once, where a simulation still running refuses one.
    QVERIFY(DevManageCtl_SimulationChanges() >= 20);
    QCOMPARE(DevManageCtl_StartSimulation(200, 11), 0);
    DevManageCtl_StopSimulation();
}

void tst_RefDevSimulation::shouldKeepCountAfterStopAndRestartItAtStart()
{
    QCOMPARE(DevManageCtl_GenerateInstallation(32, 8), 1 + 1 + 4 + 32 + 3 + 7);
    QCOMPARE(DevManageCtl_StartSimulation(200, 5), 0);
    QTRY_VERIFY_WITH_TIMEOUT(DevManageCtl_SimulationChanges() >= 10, 10000);
    DevManageCtl_StopSimulation();
    const int iChanges = DevManageCtl_SimulationChanges();
    QVERIFY(iChanges >= 10);

    // At one a second, the first event comes at once and the next a second later.
    QCOMPARE(DevManageCtl_StartSimulation(1, 5), 0);
    QTRY_COMPARE(DevManageCtl_SimulationChanges(), 1);
    DevManageCtl_StopSimulation();
    QCOMPARE(DevManageCtl_SimulationChanges(), 1);
}

void tst_RefDevSimulation::shouldCountOneChangePerEventMatchingHostStatuses()
{
    QCOMPARE(DevManageCtl_GenerateInstallation(160, 16), 188);
    QCOMPARE(DevManageCtl_StartSimulation(300, 21), 0);
    QTRY_VERIFY_WITH_TIMEOUT(DevManageCtl_SimulationChanges() >= 150, 15000);
    DevManageCtl_StopSimulation();

    const std::vector<std::string> vecJournal = CLS_RefDevSimulator::Instance().Journal();
    QCOMPARE(static_cast<int>(vecJournal.size()), DevManageCtl_SimulationChanges());
    // A host changes only by its own events: its state is the one of its last event.
    QMap<QString, int> qmapLastHostStatus;
    for (const std::string& strEvent : vecJournal) {
        const QStringList qlstParts = QString::fromStdString(strEvent).split('=');
        QCOMPARE(qlstParts.size(), 2);
        if (!qlstParts.at(0).contains("_"))
            qmapLastHostStatus[qlstParts.at(0)] = qlstParts.at(1).toInt();
    }
    QVERIFY2(!qmapLastHostStatus.isEmpty(), "no host event among 150");
    for (auto it = qmapLastHostStatus.cbegin(); it != qmapLastHostStatus.cend(); ++it)
        QCOMPARE(StatusOf(it.key().toUtf8().constData()), it.value());
}

void tst_RefDevSimulation::shouldOnlyWriteZeroOrOne()
{
    // A channel in the "no channel state" (2) leaves it at its first event, or at its host's.
    QCOMPARE(DevManageCtl_LoadInstallation(
                 R"({"hosts": [{"id": "h", "channels": [{"status": 2}, {"status": 2}]}]})"),
             4);
    std::mt19937 rng(3);
    for (int i = 0; i < 200; ++i) {
        std::string strId;
        int iStatus = -1;
        QVERIFY(CLS_RefDevStore::Instance().SimulateStep(rng, strId, iStatus));
        QVERIFY2(iStatus == 0 || iStatus == 1, strId.c_str());
        QCOMPARE(StatusOf(strId.c_str()), iStatus);
    }
    for (const char* pId : {"h", "h_ch1", "h_ch2"}) {
        const int iNow = StatusOf(pId);
        QVERIFY2(iNow == 0 || iNow == 1, pId);
    }
}

void tst_RefDevSimulation::shouldTakeChannelsWithHostAndBringThemBack()
{
    QCOMPARE(
        DevManageCtl_LoadInstallation(R"({"hosts": [{"id": "h", "channels": [{}, {}, {"status": 0}]}]})"), 5);
    std::mt19937 rng(1);
    std::string strId;
    int iStatus = -1;
    // Events on channels until the host's own event takes it off line.
    for (int i = 0; i < 500 && strId != "h"; ++i)
        QVERIFY(CLS_RefDevStore::Instance().SimulateStep(rng, strId, iStatus));
    QCOMPARE(QString::fromStdString(strId), QString("h"));
    QCOMPARE(iStatus, 0);
    QCOMPARE(StatusOf("h_ch1"), 0);
    QCOMPARE(StatusOf("h_ch2"), 0);
    QCOMPARE(StatusOf("h_ch3"), 0);

    // The next event, host or channel, brings the host back with all its channels.
    QVERIFY(CLS_RefDevStore::Instance().SimulateStep(rng, strId, iStatus));
    QCOMPARE(QString::fromStdString(strId), QString("h"));
    QCOMPARE(iStatus, 1);
    QCOMPARE(StatusOf("h"), 1);
    QCOMPARE(StatusOf("h_ch1"), 1);
    QCOMPARE(StatusOf("h_ch2"), 1);
    QCOMPARE(StatusOf("h_ch3"), 1);
}

void tst_RefDevSimulation::shouldPickTheSameEventsForTheSameSeed()
{
    const QStringList qlstFirst = RunUntil(42, 200);
    const QStringList qlstSecond = RunUntil(42, 200);
    const QStringList qlstOther = RunUntil(43, 200);
    QCOMPARE(qlstFirst.size(), 200);
    QCOMPARE(qlstSecond, qlstFirst);
    QCOMPARE(qlstOther.size(), 200);
    QVERIFY(qlstOther != qlstFirst);
}

void tst_RefDevSimulation::shouldRunOnEmptyInstallationWithoutChanges()
{
    QCOMPARE(DevManageCtl_StartSimulation(500, 9), 0);
    // Twenty events came due and none found anything to change.
    QTRY_VERIFY_WITH_TIMEOUT(DevManageCtl_SimulationSteps() >= 20, 10000);
    QCOMPARE(DevManageCtl_SimulationChanges(), 0);
    // Hosts appear: the running simulation picks them up.
    QCOMPARE(DevManageCtl_GenerateInstallation(16, 16), 1 + 1 + 1 + 16 + 3 + 7);
    QTRY_VERIFY_WITH_TIMEOUT(DevManageCtl_SimulationChanges() > 0, 10000);
}

void tst_RefDevSimulation::shouldKeepRunningAcrossLoads()
{
    QCOMPARE(DevManageCtl_StartSimulation(300, 4), 0);
    for (int i = 0; i < 20; ++i) {
        QVERIFY(DevManageCtl_GenerateInstallation(64 + i, 16) > 0);
        QCOMPARE(DevManageCtl_LoadInstallation("{"), -1);
        QCOMPARE(DevManageCtl_ItemCount(), 0);
        QVERIFY(DevManageCtl_LoadInstallationFile(InstallationFile("small.json").toUtf8().constData()) == 13);
    }
    QVERIFY(CLS_RefDevSimulator::Instance().IsRunning());
    const int iChanges = DevManageCtl_SimulationChanges();
    QTRY_VERIFY_WITH_TIMEOUT(DevManageCtl_SimulationChanges() > iChanges, 10000);
}

void tst_RefDevSimulation::shouldLeaveRunningSimulationToProcessExit()
{
    QCOMPARE(DevManageCtl_GenerateInstallation(160, 16), 188);
    QCOMPARE(DevManageCtl_StartSimulation(1000, 8), 0);
    QTRY_VERIFY_WITH_TIMEOUT(DevManageCtl_SimulationChanges() > 10, 10000);
    QVERIFY(CLS_RefDevSimulator::Instance().IsRunning()); // left running on purpose
}

QTEST_GUILESS_MAIN(tst_RefDevSimulation)
#include "tst_RefDevSimulation.moc"
