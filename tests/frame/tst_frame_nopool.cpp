// The frame without a task pool library: requests are dropped without a word, the loop task is not
// started, and everything else goes on as if the pool had taken the work.

#include "CLS_FrameDoubles.h"
#include "CLS_FrameKit.h"

#include <QApplication>
#include <QtTest>

#include <typeinfo>

class tst_frame_nopool : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void shouldDropRequestSilently();
    void shouldStartAndStopWithoutLoop();
    void shouldGiveUpDataOfStartedPresenterSilently();
};

void tst_frame_nopool::initTestCase()
{
    CLS_FrameKit::PrimeGateways();
    QVERIFY(nullptr == TaskPool::GetModuleFun("AddTmpTask"));
}

void tst_frame_nopool::init()
{
    CLS_LogRecords::Take();
}

void tst_frame_nopool::shouldDropRequestSilently()
{
    CLS_ProbePresenter clsPresenter;
    CLS_ProbeView clsView(&clsPresenter);
    clsView.show();
    QSignalSpy spyPresenter(&clsPresenter, &CLS_PresenterBasic::SignTaskResult);
    QSignalSpy spyView(&clsView, &CLS_ViewBasic::SignRequestTaskRsulted);

    clsView.SendPresenterRequest("query", QVariantMap{{"a", 1}}, "u");
    QCoreApplication::processEvents();

    QCOMPARE(clsPresenter.HandledTasks().size(), 0);
    QCOMPARE(spyPresenter.count(), 0);
    QCOMPARE(spyView.count(), 0);
    // The entry line of the presenter's request, and no failure line.
    const QStringList qlstLines = CLS_FrameKit::TakeLogLines();
    QCOMPARE(qlstLines.size(), 1);
    QVERIFY2(qlstLines[0].startsWith(QString("0|default|TaskRequest|[%1]_qstrBusinessKey:[query]")
                                         .arg(typeid(CLS_ProbePresenter).name())),
             qPrintable(qlstLines[0]));
}

void tst_frame_nopool::shouldStartAndStopWithoutLoop()
{
    CLS_ProbePresenter clsPresenter;
    clsPresenter.m_iLoopInterval = 1;
    QSignalSpy spyInitEd(&clsPresenter, &CLS_PresenterBasic::SignInitEd);

    clsPresenter.Init();
    QCOMPARE(clsPresenter.m_blInited.load(), true);
    QCOMPARE(spyInitEd.count(), 1);
    QVERIFY(clsPresenter.m_strLoopTaskId.empty());

    clsPresenter.UnInit();
    QCOMPARE(clsPresenter.m_iUnInitPresenterCalls.load(), 1);
    QCOMPARE(clsPresenter.m_blInited.load(), false);
    QCOMPARE(clsPresenter.m_iLoopRuns.load(), 0);
    QCOMPARE(CLS_FrameKit::TakeLogLines(), QStringList());
}

void tst_frame_nopool::shouldGiveUpDataOfStartedPresenterSilently()
{
    CLS_ProbePresenter clsPresenter;
    clsPresenter.Init();
    CLS_ProbeView clsView(&clsPresenter);

    clsView.show();
    QCoreApplication::processEvents();

    QCOMPARE(clsView.m_blFirstShow.load(), false);
    QCOMPARE(clsView.m_iInitDataCalls.load(), 0);
    QCOMPARE(CLS_FrameKit::TakeLogLines(), QStringList());
}

QTEST_MAIN(tst_frame_nopool)
#include "tst_frame_nopool.moc"
