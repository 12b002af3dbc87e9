// A page's GetModuleCode that throws while a log statement of the frame is made: the exception goes
// to the catch of the function that makes the statement, which logs at level 3 (asking for the
// module once more) and takes that function's failure path. When the module throws again for that
// record, the record is dropped and nothing leaves the function. The one function that catches its
// own is the view's GetModuleCode, so a view without a module code of its own goes on under
// "default".

#include "CLS_FrameDoubles.h"
#include "CLS_FrameKit.h"

#include <QApplication>
#include <QSignalSpy>
#include <QtTest>

#include <sstream>
#include <typeinfo>

namespace {

// A page's presenter whose TaskRequest makes a log statement of its own before the base's work.
class CLS_PagePresenter : public CLS_ProbePresenter
{
    Q_OBJECT

public:
    void TaskRequest(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                     const QString& _qstrBusinessUUID, QObject* _pRequestObj) override
    {
        WGT_LOG(GetModuleCode(), 0) << "page request " << _qstrBusinessKey.toStdString();
        CLS_PresenterBasic::TaskRequest(_qstrBusinessKey, _qmapParam, _qstrBusinessUUID, _pRequestObj);
    }
};

QString PointerText(const void* _pValue)
{
    std::ostringstream ossText;
    ossText << _pValue;
    return QString::fromStdString(ossText.str());
}

const QString CONST_TAG = QString("[%1]").arg(typeid(CLS_ProbePresenter).name());
const char* const CONST_MODULE = "FramePage";

// The rows every case runs: the kind of exception, and whether the module throws once (the entry
// statement's call) or on every call (the record's call too).
void AddThrowRows()
{
    QTest::addColumn<n_Throw>("kind");
    QTest::addColumn<int>("throws");
    QTest::newRow("std::exception once") << THROW_STD << 1;
    QTest::newRow("other once") << THROW_OTHER << 1;
    QTest::newRow("std::exception always") << THROW_STD << -1;
    QTest::newRow("other always") << THROW_OTHER << -1;
}

// The expected records: _qstrLine when the module throws once, none when it always throws.
QStringList Expected(int _iThrows, const QString& _qstrLine)
{
    return _iThrows < 0 ? QStringList() : QStringList{_qstrLine};
}

} // namespace

class tst_frame_module_throw : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void shouldQueueNothingWhenModuleThrowsInPresenterTaskRequest_data() { AddThrowRows(); }
    void shouldQueueNothingWhenModuleThrowsInPresenterTaskRequest();
    void shouldSendNoResultWhenModuleThrowsInTaskRequestHandler_data() { AddThrowRows(); }
    void shouldSendNoResultWhenModuleThrowsInTaskRequestHandler();
    void shouldReturnFalseWhenModuleThrowsInViewTaskRequest_data() { AddThrowRows(); }
    void shouldReturnFalseWhenModuleThrowsInViewTaskRequest();
    void shouldEmitNothingWhenModuleThrowsInCallTaskHandler_data() { AddThrowRows(); }
    void shouldEmitNothingWhenModuleThrowsInCallTaskHandler();
    void shouldLogInitFailWhenModuleThrowsInInitLine_data() { AddThrowRows(); }
    void shouldLogInitFailWhenModuleThrowsInInitLine();
    void shouldLogInitDataFailWhenModuleThrowsInPageInitData_data() { AddThrowRows(); }
    void shouldLogInitDataFailWhenModuleThrowsInPageInitData();
    void shouldKeepFirstShowWhenModuleThrowsInShowEvent_data() { AddThrowRows(); }
    void shouldKeepFirstShowWhenModuleThrowsInShowEvent();
    void shouldSendNothingWhenModuleThrowsInPresenterOfSendPresenterRequest_data() { AddThrowRows(); }
    void shouldSendNothingWhenModuleThrowsInPresenterOfSendPresenterRequest();
    void shouldGoOnUnderDefaultWhenPresenterModuleThrowsInViewStatement();
};

void tst_frame_module_throw::initTestCase()
{
    qRegisterMetaType<n_Throw>();
    CLS_FrameKit::PrimeGateways();
    QVERIFY2(CLS_PoolProbe::Loaded(), "the test task pool is not on the loader's path");
}

void tst_frame_module_throw::init()
{
    CLS_LogRecords::Take();
    CLS_PoolProbe::TakeCalls();
}

void tst_frame_module_throw::cleanup()
{
    QVERIFY(CLS_PoolProbe::WaitIdle());
    QCOMPARE(CLS_PoolProbe::EscapedCount(), 0);
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_frame_module_throw::shouldQueueNothingWhenModuleThrowsInPresenterTaskRequest()
{
    QFETCH(n_Throw, kind);
    QFETCH(int, throws);
    CLS_ProbePresenter clsPresenter;
    CLS_PoolIdleGuard clsIdle;
    CLS_ResultCatcher clsResults(&clsPresenter);
    clsPresenter.m_pModuleCode = CONST_MODULE;
    clsPresenter.m_nModuleThrow = kind;
    clsPresenter.m_iModuleThrows = throws;
    const QVariantMap qmapParam{{"p", 1}};

    clsPresenter.TaskRequest("k", qmapParam, "u", nullptr);
    QVERIFY(CLS_PoolProbe::WaitIdle());
    QCoreApplication::processEvents();

    const QString qstrEntry =
        QString("_qstrBusinessKey:[k] _qmapParam:[%1] _qstrBusinessUUID:[u] _pRequestObj :[%2]")
            .arg(CLS_FrameKit::Json(qmapParam), PointerText(nullptr));
    const QString qstrText = THROW_STD == kind ? CONST_TAG + "Request Failpresenter module broke" + qstrEntry
                                               : CONST_TAG + "Request Fail " + qstrEntry;
    QCOMPARE(CLS_FrameKit::TakeLogLines(), Expected(throws, "3|FramePage|TaskRequest|" + qstrText));
    QCOMPARE(clsPresenter.m_iModuleCalls.load(), 2); // the entry line's, then the record's
    // Nothing queued, nothing handled, no result.
    QCOMPARE(CLS_PoolProbe::Lines(CLS_PoolProbe::TakeCalls()), QStringList());
    QCOMPARE(clsPresenter.HandledTasks().size(), 0);
    QCOMPARE(clsResults.m_qlstResults.size(), 0);
}

void tst_frame_module_throw::shouldSendNoResultWhenModuleThrowsInTaskRequestHandler()
{
    QFETCH(n_Throw, kind);
    QFETCH(int, throws);
    CLS_ProbePresenter clsPresenter;
    CLS_ResultCatcher clsResults(&clsPresenter);
    clsPresenter.m_pModuleCode = CONST_MODULE;
    clsPresenter.m_nModuleThrow = kind;
    clsPresenter.m_iModuleThrows = throws;
    QObject clsRequester;
    clsRequester.setObjectName("requester");
    const QVariantMap qmapParam{{"p", 2}};

    // The body of a task, run here as the pool would run it.
    clsPresenter.TaskRequestHandler("k", qmapParam, "u", &clsRequester);
    QCoreApplication::processEvents();

    const QString qstrRest = QString("k:[k] _qmapParam:[%1] _qstrBusinessUUID:[u] _pRequestObj:[requester] ")
                                 .arg(CLS_FrameKit::Json(qmapParam));
    const QString qstrText = THROW_STD == kind ? CONST_TAG + "Request Failpresenter module broke" + qstrRest
                                               : CONST_TAG + "Request Fail" + qstrRest;
    QCOMPARE(CLS_FrameKit::TakeLogLines(), Expected(throws, "3|FramePage|TaskRequestHandler|" + qstrText));
    QCOMPARE(clsPresenter.m_iModuleCalls.load(), 2);
    QCOMPARE(clsPresenter.HandledTasks().size(), 0);
    QCOMPARE(clsResults.m_qlstResults.size(), 0);
}

void tst_frame_module_throw::shouldReturnFalseWhenModuleThrowsInViewTaskRequest()
{
    QFETCH(n_Throw, kind);
    QFETCH(int, throws);
    CLS_ProbeView clsView;
    clsView.m_pModuleCode = CONST_MODULE;
    clsView.m_nModuleThrow = kind;
    clsView.m_iModuleThrows = throws;
    clsView.m_qmapHandlerResult = QVariantMap{{"r", 1}};
    const QVariantMap qmapParam{{"p", 1}};
    QVariantMap qmapResult{{"kept", true}};

    const bool blResult = clsView.TaskRequest("k", qmapParam, qmapResult);

    QCOMPARE(blResult, false);
    const QString qstrRest = QString("key:[k] param:[%1]").arg(CLS_FrameKit::Json(qmapParam));
    const QString qstrText =
        THROW_STD == kind ? "Request Failmodule broke" + qstrRest : "Request Fail " + qstrRest;
    QCOMPARE(CLS_FrameKit::TakeLogLines(), Expected(throws, "3|FramePage|TaskRequest|" + qstrText));
    QCOMPARE(clsView.m_iModuleCalls.load(), 2);
    QCOMPARE(clsView.m_qlstHandled.size(), 0);
    QCOMPARE(qmapResult, (QVariantMap{{"kept", true}}));
}

void tst_frame_module_throw::shouldEmitNothingWhenModuleThrowsInCallTaskHandler()
{
    QFETCH(n_Throw, kind);
    QFETCH(int, throws);
    CLS_ProbeView clsView;
    clsView.m_pModuleCode = CONST_MODULE;
    clsView.m_nModuleThrow = kind;
    clsView.m_iModuleThrows = throws;
    clsView.m_qmapHandlerResult = QVariantMap{{"r", 1}}; // would be emitted, had the handler run
    QSignalSpy spyResult(&clsView, &CLS_ViewBasic::SignRequestTaskRsulted);
    const QVariantMap qmapParam{{"p", 1}};

    clsView.CallTaskHandler("k", qmapParam, "u");

    const QString qstrRest = QString("_qstrBusinessKey:[k] _qmapParam:[%1] _qstrBusinessUUID:[u]")
                                 .arg(CLS_FrameKit::Json(qmapParam));
    const QString qstrText = THROW_STD == kind ? "Fail [module broke] " + qstrRest : "Fail " + qstrRest;
    QCOMPARE(CLS_FrameKit::TakeLogLines(), Expected(throws, "3|FramePage|CallTaskHandler|" + qstrText));
    QCOMPARE(clsView.m_iModuleCalls.load(), 2);
    QCOMPARE(clsView.m_qlstHandled.size(), 0);
    QCOMPARE(spyResult.count(), 0);
}

void tst_frame_module_throw::shouldLogInitFailWhenModuleThrowsInInitLine()
{
    QFETCH(n_Throw, kind);
    QFETCH(int, throws);
    // No presenter: Init's one statement of its own is "nullptr == pPresenter Init Fail". The sheet is
    // there already, so the style loader does not ask for the module first.
    CLS_ProbeView clsView;
    clsView.m_qstrStyleSheet = "QWidget { color: red; }";
    clsView.m_pModuleCode = CONST_MODULE;
    clsView.m_nModuleThrow = kind;
    clsView.m_iModuleThrows = throws;

    clsView.Init();

    const QString qstrText = THROW_STD == kind ? "Init Failmodule broke" : "Init Fail";
    QCOMPARE(CLS_FrameKit::TakeLogLines(), Expected(throws, "3|FramePage|Init|" + qstrText));
    QCOMPARE(clsView.m_iModuleCalls.load(), 2);
    QCOMPARE(clsView.m_iInitViewCalls.load(), 1);
    // The statement comes after the view is built: the flag was set before it, and stays.
    QCOMPARE(clsView.m_blInited.load(), true);
    QCOMPARE(clsView.styleSheet(), QString("QWidget { color: red; }"));
}

void tst_frame_module_throw::shouldLogInitDataFailWhenModuleThrowsInPageInitData()
{
    QFETCH(n_Throw, kind);
    QFETCH(int, throws);
    CLS_ProbeView clsView;
    clsView.m_blLogInitData = true;
    clsView.m_pModuleCode = CONST_MODULE;
    clsView.m_nModuleThrow = kind;
    clsView.m_iModuleThrows = throws;

    clsView.SlotInitData();

    const QString qstrText = THROW_STD == kind ? "InitData Failmodule broke" : "InitData Fail";
    QCOMPARE(CLS_FrameKit::TakeLogLines(), Expected(throws, "3|FramePage|SlotInitData|" + qstrText));
    QCOMPARE(clsView.m_iModuleCalls.load(), 2);
    // InitData stopped at its first statement.
    QCOMPARE(clsView.m_iInitDataCalls.load(), 0);
}

void tst_frame_module_throw::shouldKeepFirstShowWhenModuleThrowsInShowEvent()
{
    QFETCH(n_Throw, kind);
    QFETCH(int, throws);
    CLS_ProbePresenter clsPresenter;
    CLS_ProbeView clsView(&clsPresenter);
    // Built already, so that the show's first call of GetModuleCode is its own, in the page's
    // GetPresenter.
    clsView.m_blInited = true;
    clsView.m_blLogGetPresenter = true;
    clsView.m_pModuleCode = CONST_MODULE;
    clsView.m_nModuleThrow = kind;
    clsView.m_iModuleThrows = throws;

    clsView.show();

    const QString qstrText = THROW_STD == kind ? "module broke" : "...";
    QCOMPARE(CLS_FrameKit::TakeLogLines(), Expected(throws, "3|FramePage|showEvent|" + qstrText));
    QCOMPARE(clsView.m_iModuleCalls.load(), 2);
    QCOMPARE(clsView.m_blFirstShow.load(), true);
    QCOMPARE(clsView.m_iInitViewCalls.load(), 0);
    // Data was not asked for: the presenter's start reaches no connection.
    clsPresenter.Init();
    QCOMPARE(clsView.m_iInitDataCalls.load(), 0);
    QCOMPARE(CLS_PoolProbe::Lines(CLS_PoolProbe::TakeCalls()), QStringList());

    // Once the module answers, the next show gets as far as asking for the data.
    clsView.m_iModuleThrows = 0;
    clsView.hide();
    clsView.show();
    QCOMPARE(clsView.m_blFirstShow.load(), false);
    QCOMPARE(CLS_PoolProbe::TakeCalls().size(), size_t(1)); // "AddTmpTask" for the started presenter
    QVERIFY(CLS_PoolProbe::WaitIdle());
    QCOMPARE(clsView.m_iInitDataCalls.load(), 1);
    clsView.hide();
}

void tst_frame_module_throw::shouldSendNothingWhenModuleThrowsInPresenterOfSendPresenterRequest()
{
    QFETCH(n_Throw, kind);
    QFETCH(int, throws);
    CLS_PagePresenter clsPresenter;
    CLS_PoolIdleGuard clsIdle;
    CLS_ResultCatcher clsResults(&clsPresenter);
    clsPresenter.m_pModuleCode = CONST_MODULE;
    clsPresenter.m_nModuleThrow = kind;
    clsPresenter.m_iModuleThrows = throws;
    CLS_ProbeView clsView(&clsPresenter); // no module code of its own: the presenter's
    const QVariantMap qmapParam{{"p", 1}};

    clsView.SendPresenterRequest("k", qmapParam, "u");
    QVERIFY(CLS_PoolProbe::WaitIdle());
    QCoreApplication::processEvents();

    // The page presenter's entry line threw into SendPresenterRequest's catch. Its record asks the
    // view, which asks the presenter: its module once it answers. When it never answers, the view's
    // GetModuleCode catches that itself (its own record dropped) and the record goes under "default".
    const QString qstrRest =
        QString("_qstrBusinessKey:[k] _qmapParam:[%1] _qstrUUID:[u]").arg(CLS_FrameKit::Json(qmapParam));
    const QString qstrText = THROW_STD == kind ? "presenter module broke" + qstrRest : qstrRest;
    QCOMPARE(CLS_FrameKit::TakeLogLines(),
             QStringList{QString("3|%1|SendPresenterRequest|").arg(throws < 0 ? "default" : CONST_MODULE) +
                         qstrText});
    // Nothing queued, nothing handled, no result.
    QCOMPARE(CLS_PoolProbe::Lines(CLS_PoolProbe::TakeCalls()), QStringList());
    QCOMPARE(clsPresenter.HandledTasks().size(), 0);
    QCOMPARE(clsResults.m_qlstResults.size(), 0);
}

void tst_frame_module_throw::shouldGoOnUnderDefaultWhenPresenterModuleThrowsInViewStatement()
{
    // The view's own GetModuleCode catches what the presenter's throws: the view's statement is made
    // under "default" and its function goes on.
    CLS_ProbePresenter clsPresenter;
    clsPresenter.m_pModuleCode = CONST_MODULE;
    clsPresenter.m_nModuleThrow = THROW_STD;
    clsPresenter.m_iModuleThrows = 1;
    CLS_ProbeView clsView(&clsPresenter);
    clsView.m_qmapHandlerResult = QVariantMap{{"r", 1}};
    const QVariantMap qmapParam{{"p", 1}};
    QVariantMap qmapResult;

    QCOMPARE(clsView.TaskRequest("k", qmapParam, qmapResult), true);

    const QString qstrJson = CLS_FrameKit::Json(qmapParam);
    QCOMPARE(CLS_FrameKit::TakeLogLines(),
             (QStringList{"3|FramePage|GetModuleCode|presenter module broke",
                          QString("0|default|TaskRequest|run TaskRequest key:[k] param:[%1]").arg(qstrJson),
                          QString("1|FramePage|TaskRequest|handle 1 key:[k] param:[%1] result:[%2]")
                              .arg(qstrJson, CLS_FrameKit::Json(QVariantMap{{"r", 1}}))}));
    QCOMPARE(clsView.m_qlstHandled.size(), 1);
    QCOMPARE(qmapResult, (QVariantMap{{"r", 1}}));
}

QTEST_MAIN(tst_frame_module_throw)
#include "tst_frame_module_throw.moc"
