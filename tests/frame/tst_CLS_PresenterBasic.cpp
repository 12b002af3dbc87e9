// CLS_PresenterBasic with a real task pool: start and stop, the loop task and its period, the task
// body on a pool thread with its result signal, notifications, and every failure line.

#include "CLS_FrameDoubles.h"
#include "CLS_FrameKit.h"

#include <QTimer>
#include <QtTest>

#include <sstream>
#include <typeinfo>

namespace {

// A presenter with nothing but the required hooks, to see the base's own answers.
class CLS_PlainPresenter : public CLS_PresenterBasic
{
    Q_OBJECT

public:
    using CLS_PresenterBasic::GetLoopInterval;
    using CLS_PresenterBasic::m_blInited;

protected:
    bool TaskHandler(const QString&, const QVariantMap&, QVariantMap&) override { return true; }
    void InitPresenter() override {}
    void UnInitPresenter() override {}
};

QString PointerText(const void* _pValue)
{
    std::ostringstream ossText;
    ossText << _pValue;
    return QString::fromStdString(ossText.str());
}

// The type tag of the presenter's log lines: its run-time type name as typeid gives it.
const QString CONST_TAG = QString("[%1]").arg(typeid(CLS_ProbePresenter).name());

} // namespace

class tst_CLS_PresenterBasic : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void shouldWriteMapAsIndentedJson_data();
    void shouldWriteMapAsIndentedJson();
    void shouldAnswerDefaultModuleAndNoLoop();
    void shouldSetFlagBeforeSignInitEd();
    void shouldStartNoLoopBelowIntervalOne_data();
    void shouldStartNoLoopBelowIntervalOne();
    void shouldRunLoopFromIntervalOneUntilUnInit();
    void shouldLogLoopTaskThrowAndRunAgain_data();
    void shouldLogLoopTaskThrowAndRunAgain();
    void shouldLeaveLoopWhenIntervalDropsBeforeUnInit();
    void shouldCallUnInitPresenterWithoutInit();
    void shouldLogInitThrowAndStayStopped_data();
    void shouldLogInitThrowAndStayStopped();
    void shouldNameTheDynamicTypeInTheTypeTag();
    void shouldLogUnInitThrowAndStayInited_data();
    void shouldLogUnInitThrowAndStayInited();
    void shouldQueueRequestWithClassContext();
    void shouldRunHandlerOnPoolThreadAndSendSuccess();
    void shouldSendFailAndObjectForFalseHandler();
    void shouldSendNoResultWhenHandlerThrows_data();
    void shouldSendNoResultWhenHandlerThrows();
    void shouldLogPoolThrowInTaskRequest_data();
    void shouldLogPoolThrowInTaskRequest();
    void shouldSendNotifyWithNotifyId();
};

void tst_CLS_PresenterBasic::initTestCase()
{
    qRegisterMetaType<n_Throw>();
    CLS_FrameKit::PrimeGateways();
    QVERIFY2(CLS_PoolProbe::Loaded(), "the test task pool is not on the loader's path");
}

void tst_CLS_PresenterBasic::init()
{
    CLS_LogRecords::Take();
    CLS_PoolProbe::TakeCalls();
}

void tst_CLS_PresenterBasic::cleanup()
{
    QVERIFY(CLS_PoolProbe::WaitIdle());
    QCOMPARE(CLS_PoolProbe::LoopCount(), 0);
    // Nothing thrown inside a task may reach the pool.
    QCOMPARE(CLS_PoolProbe::EscapedCount(), 0);
}

void tst_CLS_PresenterBasic::shouldWriteMapAsIndentedJson_data()
{
    QTest::addColumn<QVariantMap>("map");
    QTest::addColumn<QString>("text");

    QTest::newRow("empty") << QVariantMap() << "{\n}\n";
    QTest::newRow("one number") << QVariantMap{{"a", 1}} << "{\n    \"a\": 1\n}\n";
    QTest::newRow("sorted keys, nested")
        << QVariantMap{{"k", "v"}, {"b", QVariantMap{{"x", true}}}}
        << "{\n    \"b\": {\n        \"x\": true\n    },\n    \"k\": \"v\"\n}\n";
    QTest::newRow("list") << QVariantMap{{"l", QVariantList{1, "two"}}}
                          << "{\n    \"l\": [\n        1,\n        \"two\"\n    ]\n}\n";
}

void tst_CLS_PresenterBasic::shouldWriteMapAsIndentedJson()
{
    QFETCH(QVariantMap, map);
    QFETCH(QString, text);

    QCOMPARE(QString::fromStdString(QVariantMap2strString(map)), text);
}

void tst_CLS_PresenterBasic::shouldAnswerDefaultModuleAndNoLoop()
{
    CLS_PlainPresenter clsPresenter;

    QCOMPARE(QString(clsPresenter.GetModuleCode()), QString("default"));
    QCOMPARE(clsPresenter.GetLoopInterval(), -1);
    QCOMPARE(clsPresenter.m_blInited.load(), false);
}

void tst_CLS_PresenterBasic::shouldSetFlagBeforeSignInitEd()
{
    CLS_ProbePresenter clsPresenter;
    QStringList qlstSeen;
    connect(&clsPresenter, &CLS_PresenterBasic::SignInitEd, this, [&]() {
        qlstSeen << QString("inited=%1 initPresenter=%2")
                        .arg(clsPresenter.m_blInited.load())
                        .arg(clsPresenter.m_iInitPresenterCalls.load());
    });

    clsPresenter.Init();

    QCOMPARE(qlstSeen, QStringList{"inited=1 initPresenter=1"});
    QCOMPARE(clsPresenter.m_blInited.load(), true);
    QCOMPARE(CLS_FrameKit::TakeLogLines(), QStringList());
}

void tst_CLS_PresenterBasic::shouldStartNoLoopBelowIntervalOne_data()
{
    QTest::addColumn<int>("interval");
    QTest::newRow("zero") << 0;
    QTest::newRow("minus one") << -1;
}

void tst_CLS_PresenterBasic::shouldStartNoLoopBelowIntervalOne()
{
    QFETCH(int, interval);
    CLS_ProbePresenter clsPresenter;
    clsPresenter.m_iLoopInterval = interval;

    clsPresenter.Init();
    QCOMPARE(CLS_PoolProbe::Lines(CLS_PoolProbe::TakeCalls()), QStringList());
    QCOMPARE(CLS_PoolProbe::LoopCount(), 0);

    clsPresenter.UnInit();
    // No "RemoveTask" either.
    QCOMPARE(CLS_PoolProbe::Lines(CLS_PoolProbe::TakeCalls()), QStringList());
    QCOMPARE(clsPresenter.m_iUnInitPresenterCalls.load(), 1);
    QCOMPARE(clsPresenter.m_blInited.load(), false);
    QCOMPARE(clsPresenter.m_iLoopRuns.load(), 0);
}

void tst_CLS_PresenterBasic::shouldRunLoopFromIntervalOneUntilUnInit()
{
    CLS_ProbePresenter clsPresenter;
    clsPresenter.m_iLoopInterval = 1;

    clsPresenter.Init();

    std::vector<STRCT_PoolCall> vecCalls = CLS_PoolProbe::TakeCalls();
    QCOMPARE(vecCalls.size(), size_t(1));
    QCOMPARE(QString::fromStdString(vecCalls[0].m_strFunction), QString("AddLoopTask"));
    QCOMPARE(vecCalls[0].m_iInterval, 1);
    QVERIFY2(CLS_FrameKit::ContextPattern("CLS_PresenterBasic.cpp", typeid(CLS_ProbePresenter).name(),
                                          "StartLoopTask")
                 .match(QString::fromStdString(vecCalls[0].m_strContext))
                 .hasMatch(),
             vecCalls[0].m_strContext.c_str());
    // The pool handed its id back through the reference.
    QVERIFY(!clsPresenter.m_strLoopTaskId.empty());
    QCOMPARE(clsPresenter.m_strLoopTaskId, vecCalls[0].m_strTaskId);
    QCOMPARE(CLS_PoolProbe::LoopCount(), 1);
    QTRY_VERIFY(clsPresenter.m_iLoopRuns >= 3);

    clsPresenter.UnInit();

    vecCalls = CLS_PoolProbe::TakeCalls();
    QCOMPARE(vecCalls.size(), size_t(1));
    QCOMPARE(QString::fromStdString(vecCalls[0].m_strFunction), QString("RemoveTask"));
    QCOMPARE(vecCalls[0].m_strTaskId, clsPresenter.m_strLoopTaskId);
    QVERIFY2(CLS_FrameKit::ContextPattern("CLS_PresenterBasic.cpp", QString(), "UnInit")
                 .match(QString::fromStdString(vecCalls[0].m_strContext))
                 .hasMatch(),
             vecCalls[0].m_strContext.c_str());
    QCOMPARE(CLS_PoolProbe::LoopCount(), 0);
    QCOMPARE(clsPresenter.m_iUnInitPresenterCalls.load(), 1);
    QCOMPARE(clsPresenter.m_blInited.load(), false);
}

void tst_CLS_PresenterBasic::shouldLogLoopTaskThrowAndRunAgain_data()
{
    QTest::addColumn<n_Throw>("kind");
    QTest::addColumn<QString>("line");
    QTest::newRow("std::exception")
        << THROW_STD << QString("3|FrameTest|operator()|%1LoopTask Failloop broke").arg(CONST_TAG);
    QTest::newRow("other") << THROW_OTHER << QString("3|FrameTest|operator()|%1LoopTask Fail").arg(CONST_TAG);
}

void tst_CLS_PresenterBasic::shouldLogLoopTaskThrowAndRunAgain()
{
    QFETCH(n_Throw, kind);
    QFETCH(QString, line);
    CLS_ProbePresenter clsPresenter;
    clsPresenter.m_pModuleCode = "FrameTest";
    clsPresenter.m_iLoopInterval = 1;
    clsPresenter.m_nLoopThrow = kind;
    clsPresenter.m_iLoopThrowRun = 1;

    clsPresenter.Init();
    // The first run throws; the loop goes on.
    QTRY_VERIFY(clsPresenter.m_iLoopRuns >= 3);
    clsPresenter.UnInit();

    QCOMPARE(CLS_FrameKit::TakeLogLines(), QStringList{line});
}

void tst_CLS_PresenterBasic::shouldLeaveLoopWhenIntervalDropsBeforeUnInit()
{
    CLS_ProbePresenter clsPresenter;
    clsPresenter.m_iLoopInterval = 1;
    clsPresenter.Init();
    CLS_PoolProbe::TakeCalls();

    clsPresenter.m_iLoopInterval = 0;
    clsPresenter.UnInit();

    QCOMPARE(CLS_PoolProbe::Lines(CLS_PoolProbe::TakeCalls()), QStringList());
    QCOMPARE(CLS_PoolProbe::LoopCount(), 1);
    QCOMPARE(clsPresenter.m_blInited.load(), false);

    // The loop is left in the pool; end it here, before the presenter goes.
    auto pFunRemoveTask = reinterpret_cast<TaskPool::PFun_RemoveTask>(TaskPool::GetModuleFun("RemoveTask"));
    QVERIFY(nullptr != pFunRemoveTask);
    QCOMPARE(pFunRemoveTask(clsPresenter.m_strLoopTaskId, "test"), 0);
    QCOMPARE(CLS_PoolProbe::LoopCount(), 0);
}

void tst_CLS_PresenterBasic::shouldCallUnInitPresenterWithoutInit()
{
    CLS_ProbePresenter clsPresenter;

    clsPresenter.UnInit();

    QCOMPARE(clsPresenter.m_iUnInitPresenterCalls.load(), 1);
    QCOMPARE(clsPresenter.m_iInitPresenterCalls.load(), 0);
    QCOMPARE(clsPresenter.m_blInited.load(), false);
    QCOMPARE(CLS_PoolProbe::Lines(CLS_PoolProbe::TakeCalls()), QStringList());
}

void tst_CLS_PresenterBasic::shouldLogInitThrowAndStayStopped_data()
{
    QTest::addColumn<n_Throw>("kind");
    QTest::addColumn<QString>("line");
    QTest::newRow("std::exception") << THROW_STD
                                    << QString("3|default|Init|%1Init Failinit broke").arg(CONST_TAG);
    QTest::newRow("other") << THROW_OTHER << QString("3|default|Init|%1Init Fail").arg(CONST_TAG);
}

void tst_CLS_PresenterBasic::shouldLogInitThrowAndStayStopped()
{
    QFETCH(n_Throw, kind);
    QFETCH(QString, line);
    CLS_ProbePresenter clsPresenter;
    clsPresenter.m_iLoopInterval = 1;
    clsPresenter.m_nInitThrow = kind;
    QSignalSpy spyInitEd(&clsPresenter, &CLS_PresenterBasic::SignInitEd);

    clsPresenter.Init();

    QCOMPARE(CLS_FrameKit::TakeLogLines(), QStringList{line});
    QCOMPARE(clsPresenter.m_blInited.load(), false);
    QCOMPARE(spyInitEd.count(), 0);
    QCOMPARE(CLS_PoolProbe::Lines(CLS_PoolProbe::TakeCalls()), QStringList());
}

// A presenter class of the page's own, without a meta-object of its own.
class CLS_PageOwnPresenter : public CLS_ProbePresenter
{};

void tst_CLS_PresenterBasic::shouldNameTheDynamicTypeInTheTypeTag()
{
    CLS_PageOwnPresenter clsPresenter;
    clsPresenter.m_nInitThrow = THROW_OTHER;
    CLS_PresenterBasic& clsBase = clsPresenter;

    clsBase.Init();

    const QString qstrTag = QString("[%1]").arg(typeid(CLS_PageOwnPresenter).name());
    QVERIFY(qstrTag != CONST_TAG);
    QCOMPARE(CLS_FrameKit::TakeLogLines(), QStringList{QString("3|default|Init|%1Init Fail").arg(qstrTag)});
}

void tst_CLS_PresenterBasic::shouldLogUnInitThrowAndStayInited_data()
{
    QTest::addColumn<n_Throw>("kind");
    QTest::addColumn<QString>("line");
    QTest::newRow("std::exception") << THROW_STD
                                    << QString("3|default|UnInit|%1UnInit Failuninit broke").arg(CONST_TAG);
    QTest::newRow("other") << THROW_OTHER << QString("3|default|UnInit|%1UnInit Fail").arg(CONST_TAG);
}

void tst_CLS_PresenterBasic::shouldLogUnInitThrowAndStayInited()
{
    QFETCH(n_Throw, kind);
    QFETCH(QString, line);
    CLS_ProbePresenter clsPresenter;
    clsPresenter.Init();
    clsPresenter.m_nUnInitThrow = kind;

    clsPresenter.UnInit();

    QCOMPARE(CLS_FrameKit::TakeLogLines(), QStringList{line});
    QCOMPARE(clsPresenter.m_blInited.load(), true);
}

void tst_CLS_PresenterBasic::shouldQueueRequestWithClassContext()
{
    CLS_ProbePresenter clsPresenter;
    CLS_PoolIdleGuard clsIdle;
    clsPresenter.m_pModuleCode = "FrameTest";
    QObject clsRequester;
    const QVariantMap qmapParam{{"a", 1}};

    clsPresenter.TaskRequest("query", qmapParam, "u-1", &clsRequester);

    const std::vector<STRCT_PoolCall> vecCalls = CLS_PoolProbe::TakeCalls();
    QCOMPARE(vecCalls.size(), size_t(1));
    QCOMPARE(QString::fromStdString(vecCalls[0].m_strFunction), QString("AddTmpTask"));
    QCOMPARE(vecCalls[0].m_pOwner, static_cast<void*>(&clsPresenter));
    QVERIFY2(CLS_FrameKit::ContextPattern("CLS_PresenterBasic.cpp", typeid(CLS_ProbePresenter).name(),
                                          "TaskRequest")
                 .match(QString::fromStdString(vecCalls[0].m_strContext))
                 .hasMatch(),
             vecCalls[0].m_strContext.c_str());

    QVERIFY(CLS_PoolProbe::WaitIdle());
    const QStringList qlstLines = CLS_FrameKit::TakeLogLines();
    QCOMPARE(CLS_FrameKit::Matching(qlstLines, CONST_TAG + QString("_qstrBusinessKey")),
             QStringList{QString("0|FrameTest|TaskRequest|%1_qstrBusinessKey:[query] _qmapParam:[%2] "
                                 "_qstrBusinessUUID:[u-1] _pRequestObj :[%3]")
                             .arg(CONST_TAG, CLS_FrameKit::Json(qmapParam), PointerText(&clsRequester))});
}

void tst_CLS_PresenterBasic::shouldRunHandlerOnPoolThreadAndSendSuccess()
{
    CLS_ProbePresenter clsPresenter;
    CLS_PoolIdleGuard clsIdle;
    clsPresenter.m_qmapHandlerResult = QVariantMap{{"rows", 3}};
    CLS_ResultCatcher clsResults(&clsPresenter);
    const QVariantMap qmapParam{{"a", 1}};

    clsPresenter.TaskRequest("query", qmapParam, "u-2", nullptr);

    QTRY_COMPARE(clsResults.m_qlstResults.size(), 1);
    const QList<QVariant> qlstArgs = clsResults.m_qlstResults.takeFirst();
    QCOMPARE(qlstArgs.at(0).toString(), QString("query"));
    // No "__object__" in, none out.
    const QVariantMap qmapExpected{{"rows", 3}, {"__result__", "success"}};
    QCOMPARE(qlstArgs.at(1).toMap(), qmapExpected);
    QCOMPARE(qlstArgs.at(2).toString(), QString("u-2"));

    const QList<STRCT_HandledTask> qlstHandled = clsPresenter.HandledTasks();
    QCOMPARE(qlstHandled.size(), 1);
    QCOMPARE(qlstHandled[0].m_qmapParam, qmapParam);
    QVERIFY(qlstHandled[0].m_hThread != QThread::currentThreadId());

    QVERIFY(CLS_PoolProbe::WaitIdle());
    const QStringList qlstLines = CLS_FrameKit::TakeLogLines();
    const QString qstrJson = CLS_FrameKit::Json(qmapParam);
    QCOMPARE(CLS_FrameKit::Matching(qlstLines, CONST_TAG + QString("run TaskRequest")),
             QStringList{
                 QString("0|default|TaskRequestHandler|%1run TaskRequest key:[query] param:[%2] UUID:[u-2]")
                     .arg(CONST_TAG, qstrJson)});
    QCOMPARE(CLS_FrameKit::Matching(qlstLines, CONST_TAG + QString("handle ")),
             QStringList{QString("1|default|TaskRequestHandler|%1handle 1 key:[query] param:[%2] UUID:[u-2] "
                                 "result:[%3]")
                             .arg(CONST_TAG, qstrJson, CLS_FrameKit::Json(QVariantMap{{"rows", 3}}))});
    // No failure line on success.
    QCOMPARE(CLS_FrameKit::Matching(qlstLines, CONST_TAG + QString("key:[")), QStringList());
}

void tst_CLS_PresenterBasic::shouldSendFailAndObjectForFalseHandler()
{
    CLS_ProbePresenter clsPresenter;
    CLS_PoolIdleGuard clsIdle;
    clsPresenter.m_blHandlerOutcome = false;
    CLS_ResultCatcher clsResults(&clsPresenter);
    QObject clsView;
    const QVariant varObject = QVariant::fromValue(static_cast<void*>(&clsView));
    const QVariantMap qmapParam{{"a", 1}, {"__object__", varObject}};

    clsPresenter.TaskRequest("save", qmapParam, "u-3", &clsView);

    QTRY_COMPARE(clsResults.m_qlstResults.size(), 1);
    const QList<QVariant> qlstArgs = clsResults.m_qlstResults.takeFirst();
    const QVariantMap qmapResult = qlstArgs.at(1).toMap();
    QCOMPARE(qmapResult.keys(), (QStringList{"__object__", "__result__"}));
    QCOMPARE(qmapResult.value("__result__").toString(), QString("fail"));
    QCOMPARE(qmapResult.value("__object__").userType(), int(QMetaType::VoidStar));
    QCOMPARE(qmapResult.value("__object__").value<void*>(), static_cast<void*>(&clsView));

    QVERIFY(CLS_PoolProbe::WaitIdle());
    const QStringList qlstLines = CLS_FrameKit::TakeLogLines();
    // The failure line shows the result as it stood before "__result__".
    QCOMPARE(
        CLS_FrameKit::Matching(qlstLines, CONST_TAG + QString("key:[")),
        QStringList{QString("3|default|TaskRequestHandler|%1key:[save] param:[%2] UUID:[u-3] result:[%3]")
                        .arg(CONST_TAG, CLS_FrameKit::Json(qmapParam),
                             CLS_FrameKit::Json(QVariantMap{{"__object__", varObject}}))});
    QCOMPARE(CLS_FrameKit::Matching(qlstLines, CONST_TAG + QString("handle 0 key:[save]")).size(), 1);
}

void tst_CLS_PresenterBasic::shouldSendNoResultWhenHandlerThrows_data()
{
    QTest::addColumn<n_Throw>("kind");
    QTest::addColumn<QString>("requester"); // "", "named" or a class of an unnamed object
    QTest::addColumn<QString>("line");

    const QString qstrRest = "k:[k] _qmapParam:[%1] _qstrBusinessUUID:[u] _pRequestObj:[%2] ";
    const QString qstrJson = CLS_FrameKit::Json(QVariantMap{{"p", 2}});
    QTest::newRow("std::exception, no requester")
        << THROW_STD << ""
        << CONST_TAG + QString("Request Failhandler broke") + qstrRest.arg(qstrJson, "null");
    QTest::newRow("std::exception, named requester")
        << THROW_STD << "named"
        << CONST_TAG + QString("Request Failhandler broke") + qstrRest.arg(qstrJson, "requester");
    QTest::newRow("other, unnamed QObject")
        << THROW_OTHER << "QObject"
        << CONST_TAG + QString("Request Fail") + qstrRest.arg(qstrJson, "QObject");
    QTest::newRow("other, unnamed QTimer")
        << THROW_OTHER << "QTimer" << CONST_TAG + QString("Request Fail") + qstrRest.arg(qstrJson, "QTimer");
}

void tst_CLS_PresenterBasic::shouldSendNoResultWhenHandlerThrows()
{
    QFETCH(n_Throw, kind);
    QFETCH(QString, requester);
    QFETCH(QString, line);
    CLS_ProbePresenter clsPresenter;
    CLS_PoolIdleGuard clsIdle;
    clsPresenter.m_nHandlerThrow = kind;
    CLS_ResultCatcher clsResults(&clsPresenter);
    QObject clsNamed;
    clsNamed.setObjectName("requester");
    QObject clsUnnamed;
    QTimer clsTimer;
    QObject* pRequester = nullptr;
    if ("named" == requester) {
        pRequester = &clsNamed;
    } else if ("QObject" == requester) {
        pRequester = &clsUnnamed;
    } else if ("QTimer" == requester) {
        pRequester = &clsTimer;
    }

    clsPresenter.TaskRequest("k", QVariantMap{{"p", 2}}, "u", pRequester);
    QVERIFY(CLS_PoolProbe::WaitIdle());
    QCoreApplication::processEvents();

    QCOMPARE(clsPresenter.HandledTasks().size(), 1);
    QCOMPARE(clsResults.m_qlstResults.size(), 0);
    const QStringList qlstLines = CLS_FrameKit::TakeLogLines();
    QCOMPARE(CLS_FrameKit::Matching(qlstLines, CONST_TAG + QString("Request Fail")),
             QStringList{"3|default|TaskRequestHandler|" + line});
}

void tst_CLS_PresenterBasic::shouldLogPoolThrowInTaskRequest_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("line");
    const QString qstrRest =
        QString("_qstrBusinessKey:[k] _qmapParam:[%1] _qstrBusinessUUID:[u] _pRequestObj :[0]")
            .arg(CLS_FrameKit::Json(QVariantMap{{"p", 1}}));
    QTest::newRow("std::exception") << 1 << CONST_TAG + QString("Request Failpool refused") + qstrRest;
    QTest::newRow("other") << 2 << CONST_TAG + QString("Request Fail ") + qstrRest;
}

void tst_CLS_PresenterBasic::shouldLogPoolThrowInTaskRequest()
{
    QFETCH(int, kind);
    QFETCH(QString, line);
    CLS_ProbePresenter clsPresenter;
    CLS_PoolIdleGuard clsIdle;
    CLS_ResultCatcher clsResults(&clsPresenter);
    CLS_PoolProbe::ThrowOnNextAdd(kind);

    clsPresenter.TaskRequest("k", QVariantMap{{"p", 1}}, "u", nullptr);
    QVERIFY(CLS_PoolProbe::WaitIdle());
    QCoreApplication::processEvents();

    const QStringList qlstLines = CLS_FrameKit::TakeLogLines();
    QCOMPARE(CLS_FrameKit::Matching(qlstLines, CONST_TAG + QString("Request Fail")),
             QStringList{"3|default|TaskRequest|" + line});
    QCOMPARE(clsPresenter.HandledTasks().size(), 0);
    QCOMPARE(clsResults.m_qlstResults.size(), 0);
}

void tst_CLS_PresenterBasic::shouldSendNotifyWithNotifyId()
{
    CLS_ProbePresenter clsPresenter;
    CLS_ResultCatcher clsResults(&clsPresenter);
    const QVariantMap qmapParam{{"n", 1}};

    clsPresenter.SendTaskNotify("alarm", qmapParam);

    QCOMPARE(clsResults.m_qlstResults.size(), 1);
    const QList<QVariant> qlstArgs = clsResults.m_qlstResults.takeFirst();
    QCOMPARE(qlstArgs.at(0).toString(), QString("alarm"));
    QCOMPARE(qlstArgs.at(1).toMap(), qmapParam);
    QCOMPARE(qlstArgs.at(2).toString(), QString("__notify__"));
    QCOMPARE(CLS_PoolProbe::Lines(CLS_PoolProbe::TakeCalls()), QStringList());
}

QTEST_GUILESS_MAIN(tst_CLS_PresenterBasic)
#include "tst_CLS_PresenterBasic.moc"
