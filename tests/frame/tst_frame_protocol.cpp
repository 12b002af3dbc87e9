// The task request protocol between views and their presenter: a request from a view runs on a pool
// thread and its result comes back queued on the GUI thread, to the requesting view only;
// notifications reach every view; the synchronous request of a view; every failure line.

#include "CLS_FrameDoubles.h"
#include "CLS_FrameKit.h"

#include <QApplication>
#include <QtTest>

#include <thread>

namespace {

// A presenter whose request entry itself fails.
class CLS_RefusingPresenter : public CLS_ProbePresenter
{
    Q_OBJECT

public:
    n_Throw m_nRequestThrow = THROW_STD;

    void TaskRequest(const QString&, const QVariantMap&, const QString&, QObject*) override
    {
        ThrowAs(m_nRequestThrow, "request refused");
    }
};

QVariant ObjectValue(const void* _pView)
{
    return QVariant::fromValue(const_cast<void*>(_pView));
}

const void* AsObject(const CLS_ViewBasic* _pView)
{
    return _pView;
}

} // namespace

class tst_frame_protocol : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void shouldBringResultBackToRequestingViewOnly();
    void shouldLeaveCallersMapUnchanged();
    void shouldHandleNotificationInEveryView();
    void shouldTreatForeignObjectAsOtherView_data();
    void shouldTreatForeignObjectAsOtherView();
    void shouldEmitNothingForEmptyViewResult();
    void shouldEmitFailForFalseViewHandler();
    void shouldLogViewHandlerThrowInCallTaskHandler_data();
    void shouldLogViewHandlerThrowInCallTaskHandler();
    void shouldSendNothingWithoutPresenter();
    void shouldCarryFailAndObjectForFalsePresenterHandler();
    void shouldAnswerSyncRequestWithoutReservedKeys();
    void shouldReturnFalseWhenSyncHandlerThrows_data();
    void shouldReturnFalseWhenSyncHandlerThrows();
    void shouldLogSendPresenterRequestThrow_data();
    void shouldLogSendPresenterRequestThrow();
    void shouldPassViewTaskRequestHandlerToPresenter();
};

void tst_frame_protocol::initTestCase()
{
    qRegisterMetaType<n_Throw>();
    CLS_FrameKit::PrimeGateways();
    QVERIFY2(CLS_PoolProbe::Loaded(), "the test task pool is not on the loader's path");
}

void tst_frame_protocol::init()
{
    CLS_LogRecords::Take();
    CLS_PoolProbe::TakeCalls();
}

void tst_frame_protocol::cleanup()
{
    QVERIFY(CLS_PoolProbe::WaitIdle());
    QCOMPARE(CLS_PoolProbe::EscapedCount(), 0);
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_frame_protocol::shouldBringResultBackToRequestingViewOnly()
{
    // Given two shown views of one presenter
    CLS_ProbePresenter clsPresenter;
    CLS_PoolIdleGuard clsIdle;
    clsPresenter.m_pModuleCode = "FrameTest";
    clsPresenter.m_qmapHandlerResult = QVariantMap{{"rows", 3}};
    CLS_ProbeView clsViewA(&clsPresenter);
    CLS_ProbeView clsViewB(&clsPresenter);
    clsViewA.m_qmapHandlerResult = QVariantMap{{"page", "done"}};
    clsViewB.m_qmapHandlerResult = QVariantMap{{"page", "other"}};
    clsViewA.show();
    clsViewB.show();
    CLS_LogRecords::Take();
    QSignalSpy spyA(&clsViewA, &CLS_ViewBasic::SignRequestTaskRsulted);
    QSignalSpy spyB(&clsViewB, &CLS_ViewBasic::SignRequestTaskRsulted);

    // When view A asks
    clsViewA.SendPresenterRequest("query", QVariantMap{{"a", 1}}, "uuid-1");

    // Then the presenter works on a pool thread, with A's address in the map
    QTRY_COMPARE(spyA.count(), 1);
    const QList<STRCT_HandledTask> qlstPresenter = clsPresenter.HandledTasks();
    QCOMPARE(qlstPresenter.size(), 1);
    QCOMPARE(qlstPresenter[0].m_qstrKey, QString("query"));
    QCOMPARE(qlstPresenter[0].m_qmapParam,
             (QVariantMap{{"a", 1}, {"__object__", ObjectValue(AsObject(&clsViewA))}}));
    QVERIFY(qlstPresenter[0].m_hThread != QThread::currentThreadId());
    // and A handles the result on the GUI thread and passes its own result on
    QCOMPARE(clsViewA.m_qlstHandled.size(), 1);
    QCOMPARE(clsViewA.m_qlstHandled[0].m_hThread, QThread::currentThreadId());
    QCOMPARE(clsViewA.m_qlstHandled[0].m_qmapParam,
             (QVariantMap{
                 {"rows", 3}, {"__object__", ObjectValue(AsObject(&clsViewA))}, {"__result__", "success"}}));
    const QList<QVariant> qlstArgs = spyA.takeFirst();
    QCOMPARE(qlstArgs.at(0).toString(), QString("query"));
    QCOMPARE(qlstArgs.at(1).toMap(), (QVariantMap{{"page", "done"}, {"__result__", "success"}}));
    QCOMPARE(qlstArgs.at(2).toString(), QString("uuid-1"));
    // while B logs the result's arrival and leaves it alone
    QStringList qlstArrivals;
    QTRY_COMPARE(
        (qlstArrivals += CLS_FrameKit::Matching(CLS_FrameKit::TakeLogLines(), "call funtion key:[query]"))
            .size(),
        2);
    const QString qstrArrival =
        QString("0|FrameTest|CallTaskHandler|call funtion key:[query] param:[%1] UUID:[uuid-1]")
            .arg(CLS_FrameKit::Json(
                {{"rows", 3}, {"__object__", ObjectValue(AsObject(&clsViewA))}, {"__result__", "success"}}));
    QCOMPARE(qlstArrivals, (QStringList{qstrArrival, qstrArrival}));
    QCOMPARE(clsViewB.m_qlstHandled.size(), 0);
    QCOMPARE(spyB.count(), 0);

    const std::vector<STRCT_PoolCall> vecCalls = CLS_PoolProbe::TakeCalls();
    QCOMPARE(vecCalls.size(), size_t(1));
    QCOMPARE(vecCalls[0].m_pOwner, static_cast<void*>(&clsPresenter));
}

void tst_frame_protocol::shouldLeaveCallersMapUnchanged()
{
    CLS_ProbePresenter clsPresenter;
    CLS_PoolIdleGuard clsIdle;
    CLS_ProbeView clsView(&clsPresenter);
    clsView.show();
    const QVariantMap qmapParam{{"a", 1}};
    QVariantMap qmapCallers = qmapParam;

    clsView.SendPresenterRequest("query", qmapCallers, "u");

    QCOMPARE(qmapCallers, qmapParam);
    QVERIFY(CLS_PoolProbe::WaitIdle());
    QTRY_COMPARE(clsView.m_qlstHandled.size(), 1);
}

void tst_frame_protocol::shouldHandleNotificationInEveryView()
{
    CLS_ProbePresenter clsPresenter;
    CLS_ProbeView clsViewA(&clsPresenter);
    CLS_ProbeView clsViewB(&clsPresenter);
    clsViewA.m_qmapHandlerResult = QVariantMap{{"seen", "A"}};
    clsViewB.m_qmapHandlerResult = QVariantMap{{"seen", "B"}};
    clsViewA.show();
    clsViewB.show();
    QSignalSpy spyA(&clsViewA, &CLS_ViewBasic::SignRequestTaskRsulted);
    QSignalSpy spyB(&clsViewB, &CLS_ViewBasic::SignRequestTaskRsulted);

    // From another thread, as a presenter's own work would notify.
    std::thread thrNotifier([&clsPresenter]() {
        clsPresenter.SendTaskNotify("alarm", QVariantMap{{"n", 1}});
    });
    thrNotifier.join();

    QTRY_COMPARE(spyA.count(), 1);
    QTRY_COMPARE(spyB.count(), 1);
    QCOMPARE(spyA.takeFirst(),
             (QList<QVariant>{"alarm", QVariantMap{{"seen", "A"}, {"__result__", "success"}}, "__notify__"}));
    QCOMPARE(spyB.takeFirst(),
             (QList<QVariant>{"alarm", QVariantMap{{"seen", "B"}, {"__result__", "success"}}, "__notify__"}));
    QCOMPARE(clsViewA.m_qlstHandled.size(), 1);
    QCOMPARE(clsViewA.m_qlstHandled[0].m_qmapParam, (QVariantMap{{"n", 1}}));
    QCOMPARE(clsViewB.m_qlstHandled.size(), 1);
}

void tst_frame_protocol::shouldTreatForeignObjectAsOtherView_data()
{
    QTest::addColumn<QVariant>("object");
    QTest::newRow("text") << QVariant(QString("view"));
    QTest::newRow("number") << QVariant(5);
    QTest::newRow("null address") << QVariant::fromValue(static_cast<void*>(nullptr));
    QTest::newRow("invalid") << QVariant();
}

void tst_frame_protocol::shouldTreatForeignObjectAsOtherView()
{
    QFETCH(QVariant, object);
    CLS_ProbeView clsView;
    QSignalSpy spyResult(&clsView, &CLS_ViewBasic::SignRequestTaskRsulted);
    const QVariantMap qmapParam{{"__object__", object}, {"__result__", "success"}};

    clsView.CallTaskHandler("k", qmapParam, "u");

    QCOMPARE(clsView.m_qlstHandled.size(), 0);
    QCOMPARE(spyResult.count(), 0);
    QCOMPARE(CLS_FrameKit::TakeLogLines(),
             QStringList{QString("0|CLS_ProbeView|CallTaskHandler|call funtion key:[k] param:[%1] UUID:[u]")
                             .arg(CLS_FrameKit::Json(qmapParam))});
}

void tst_frame_protocol::shouldEmitNothingForEmptyViewResult()
{
    CLS_ProbeView clsView;
    QSignalSpy spyResult(&clsView, &CLS_ViewBasic::SignRequestTaskRsulted);
    const QVariantMap qmapParam{{"__object__", ObjectValue(AsObject(&clsView))}, {"__result__", "success"}};

    clsView.CallTaskHandler("k", qmapParam, "u");

    QCOMPARE(clsView.m_qlstHandled.size(), 1);
    QCOMPARE(spyResult.count(), 0);
    const QString qstrJson = CLS_FrameKit::Json(qmapParam);
    QCOMPARE(
        CLS_FrameKit::TakeLogLines(),
        (QStringList{
            QString("0|CLS_ProbeView|CallTaskHandler|call funtion key:[k] param:[%1] UUID:[u]").arg(qstrJson),
            QString("1|CLS_ProbeView|CallTaskHandler|call funtion 1 key:[k] param:[%1] UUID:[u] "
                    "result:[{\n}\n]")
                .arg(qstrJson)}));
}

void tst_frame_protocol::shouldEmitFailForFalseViewHandler()
{
    CLS_ProbeView clsView;
    clsView.m_blHandlerOutcome = false;
    clsView.m_qmapHandlerResult = QVariantMap{{"why", "x"}};
    QSignalSpy spyResult(&clsView, &CLS_ViewBasic::SignRequestTaskRsulted);
    const QVariantMap qmapParam{{"n", 1}};

    clsView.CallTaskHandler("k", qmapParam, "u");

    QCOMPARE(spyResult.count(), 1);
    QCOMPARE(spyResult.takeFirst(),
             (QList<QVariant>{"k", QVariantMap{{"why", "x"}, {"__result__", "fail"}}, "u"}));
    const QString qstrJson = CLS_FrameKit::Json(qmapParam);
    const QString qstrResult = CLS_FrameKit::Json(QVariantMap{{"why", "x"}});
    QCOMPARE(
        CLS_FrameKit::TakeLogLines(),
        (QStringList{
            QString("0|CLS_ProbeView|CallTaskHandler|call funtion key:[k] param:[%1] UUID:[u]").arg(qstrJson),
            QString("1|CLS_ProbeView|CallTaskHandler|call funtion 0 key:[k] param:[%1] UUID:[u] result:[%2]")
                .arg(qstrJson, qstrResult),
            QString("3|CLS_ProbeView|CallTaskHandler|key:[k] param:[%1] UUID:[u] result:[%2]")
                .arg(qstrJson, qstrResult)}));
}

void tst_frame_protocol::shouldLogViewHandlerThrowInCallTaskHandler_data()
{
    QTest::addColumn<n_Throw>("kind");
    QTest::addColumn<QString>("line");
    const QString qstrRest = QString("_qstrBusinessKey:[k] _qmapParam:[%1] _qstrBusinessUUID:[u]")
                                 .arg(CLS_FrameKit::Json({{"n", 1}}));
    QTest::newRow("std::exception") << THROW_STD << "Fail [view handler broke] " + qstrRest;
    QTest::newRow("other") << THROW_OTHER << "Fail " + qstrRest;
}

void tst_frame_protocol::shouldLogViewHandlerThrowInCallTaskHandler()
{
    QFETCH(n_Throw, kind);
    QFETCH(QString, line);
    CLS_ProbeView clsView;
    clsView.m_nHandlerThrow = kind;
    clsView.m_qmapHandlerResult = QVariantMap{{"why", "x"}};
    QSignalSpy spyResult(&clsView, &CLS_ViewBasic::SignRequestTaskRsulted);

    clsView.CallTaskHandler("k", QVariantMap{{"n", 1}}, "u");

    QCOMPARE(spyResult.count(), 0);
    QCOMPARE(CLS_FrameKit::Matching(CLS_FrameKit::TakeLogLines(), "Fail"),
             QStringList{"3|CLS_ProbeView|CallTaskHandler|" + line});
}

void tst_frame_protocol::shouldSendNothingWithoutPresenter()
{
    CLS_ProbeView clsView;
    QSignalSpy spyResult(&clsView, &CLS_ViewBasic::SignRequestTaskRsulted);

    clsView.SendPresenterRequest("query", QVariantMap{{"a", 1}}, "u");
    QCoreApplication::processEvents();

    QCOMPARE(CLS_FrameKit::TakeLogLines(), QStringList());
    QCOMPARE(CLS_PoolProbe::Lines(CLS_PoolProbe::TakeCalls()), QStringList());
    QCOMPARE(spyResult.count(), 0);
}

void tst_frame_protocol::shouldCarryFailAndObjectForFalsePresenterHandler()
{
    CLS_ProbePresenter clsPresenter;
    CLS_PoolIdleGuard clsIdle;
    clsPresenter.m_blHandlerOutcome = false;
    CLS_ProbeView clsView(&clsPresenter);
    clsView.m_qmapHandlerResult = QVariantMap{{"shown", true}};
    clsView.show();
    QSignalSpy spyResult(&clsView, &CLS_ViewBasic::SignRequestTaskRsulted);

    clsView.SendPresenterRequest("save", QVariantMap(), "u-9");

    QTRY_COMPARE(spyResult.count(), 1);
    QCOMPARE(clsView.m_qlstHandled.size(), 1);
    QCOMPARE(clsView.m_qlstHandled[0].m_qmapParam,
             (QVariantMap{{"__object__", ObjectValue(AsObject(&clsView))}, {"__result__", "fail"}}));
    QCOMPARE(spyResult.takeFirst(),
             (QList<QVariant>{"save", QVariantMap{{"shown", true}, {"__result__", "success"}}, "u-9"}));
}

void tst_frame_protocol::shouldAnswerSyncRequestWithoutReservedKeys()
{
    CLS_ProbePresenter clsPresenter;
    clsPresenter.m_pModuleCode = "FrameTest";
    CLS_ProbeView clsView(&clsPresenter);
    clsView.m_qmapHandlerResult = QVariantMap{{"r", 2}};
    QSignalSpy spyResult(&clsView, &CLS_ViewBasic::SignRequestTaskRsulted);
    const QVariantMap qmapParam{{"q", 1}};
    QVariantMap qmapResult;

    QCOMPARE(clsView.TaskRequest("sync", qmapParam, qmapResult), true);

    QCOMPARE(qmapResult, (QVariantMap{{"r", 2}}));
    QCOMPARE(clsView.m_qlstHandled.size(), 1);
    QCOMPARE(clsView.m_qlstHandled[0].m_qmapParam, qmapParam);
    QCOMPARE(spyResult.count(), 0);
    QCOMPARE(CLS_PoolProbe::Lines(CLS_PoolProbe::TakeCalls()), QStringList());
    const QString qstrJson = CLS_FrameKit::Json(qmapParam);
    QCOMPARE(
        CLS_FrameKit::TakeLogLines(),
        (QStringList{QString("0|FrameTest|TaskRequest|run TaskRequest key:[sync] param:[%1]").arg(qstrJson),
                     QString("1|FrameTest|TaskRequest|handle 1 key:[sync] param:[%1] result:[%2]")
                         .arg(qstrJson, CLS_FrameKit::Json(qmapResult))}));

    clsView.m_blHandlerOutcome = false;
    QCOMPARE(clsView.TaskRequest("sync", qmapParam, qmapResult), false);
    QCOMPARE(CLS_FrameKit::Matching(CLS_FrameKit::TakeLogLines(), "handle 0 key:[sync]").size(), 1);
}

void tst_frame_protocol::shouldReturnFalseWhenSyncHandlerThrows_data()
{
    QTest::addColumn<n_Throw>("kind");
    QTest::addColumn<QString>("line");
    const QString qstrJson = CLS_FrameKit::Json({{"q", 1}});
    QTest::newRow("std::exception")
        << THROW_STD << QString("Request Failview handler brokekey:[sync] param:[%1]").arg(qstrJson);
    QTest::newRow("other") << THROW_OTHER << QString("Request Fail key:[sync] param:[%1]").arg(qstrJson);
}

void tst_frame_protocol::shouldReturnFalseWhenSyncHandlerThrows()
{
    QFETCH(n_Throw, kind);
    QFETCH(QString, line);
    CLS_ProbeView clsView;
    clsView.m_nHandlerThrow = kind;
    QVariantMap qmapResult;

    QCOMPARE(clsView.TaskRequest("sync", QVariantMap{{"q", 1}}, qmapResult), false);

    const QStringList qlstLines = CLS_FrameKit::TakeLogLines();
    QCOMPARE(qlstLines.size(), 2);
    QVERIFY(qlstLines[0].startsWith("0|CLS_ProbeView|TaskRequest|run TaskRequest key:[sync]"));
    QCOMPARE(qlstLines[1], "3|CLS_ProbeView|TaskRequest|" + line);
}

void tst_frame_protocol::shouldLogSendPresenterRequestThrow_data()
{
    QTest::addColumn<n_Throw>("kind");
    QTest::addColumn<QString>("line");
    // The caller's map, without "__object__".
    const QString qstrRest =
        QString("_qstrBusinessKey:[k] _qmapParam:[%1] _qstrUUID:[u]").arg(CLS_FrameKit::Json({{"a", 1}}));
    QTest::newRow("std::exception") << THROW_STD << "request refused" + qstrRest;
    QTest::newRow("other") << THROW_OTHER << qstrRest;
}

void tst_frame_protocol::shouldLogSendPresenterRequestThrow()
{
    QFETCH(n_Throw, kind);
    QFETCH(QString, line);
    CLS_RefusingPresenter clsPresenter;
    clsPresenter.m_pModuleCode = "FrameTest";
    clsPresenter.m_nRequestThrow = kind;
    CLS_ProbeView clsView(&clsPresenter);

    clsView.SendPresenterRequest("k", QVariantMap{{"a", 1}}, "u");

    QCOMPARE(CLS_FrameKit::TakeLogLines(), QStringList{"3|FrameTest|SendPresenterRequest|" + line});
    QCOMPARE(CLS_PoolProbe::Lines(CLS_PoolProbe::TakeCalls()), QStringList());
}

void tst_frame_protocol::shouldPassViewTaskRequestHandlerToPresenter()
{
    CLS_ProbePresenter clsPresenter;
    CLS_PoolIdleGuard clsIdle;
    clsPresenter.m_qmapHandlerResult = QVariantMap{{"rows", 1}};
    CLS_ProbeView clsView(&clsPresenter);
    clsView.m_qmapHandlerResult = QVariantMap{{"page", 1}};
    clsView.show();
    QSignalSpy spyResult(&clsView, &CLS_ViewBasic::SignRequestTaskRsulted);
    QVariantMap qmapResult{{"keep", 1}};

    QCOMPARE(clsView.TaskRequestHandler("k", QVariantMap{{"a", 1}}, "u-5", qmapResult), true);

    QCOMPARE(qmapResult, (QVariantMap{{"keep", 1}}));
    QTRY_COMPARE(spyResult.count(), 1);
    QCOMPARE(spyResult.takeFirst(),
             (QList<QVariant>{"k", QVariantMap{{"page", 1}, {"__result__", "success"}}, "u-5"}));
}

QTEST_MAIN(tst_frame_protocol)
#include "tst_frame_protocol.moc"
