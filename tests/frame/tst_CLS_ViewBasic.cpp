// CLS_ViewBasic's life: what the first show builds and asks for, with and without a presenter,
// started or not; the failure of each step; module and class codes.

#include "CLS_FrameDoubles.h"
#include "CLS_FrameKit.h"

#include <QApplication>
#include <QtTest>

#include <thread>

class tst_CLS_ViewBasic : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void shouldStartBeforeFirstShow();
    void shouldBuildViewAtFirstShow();
    void shouldInitOnceAndAskDataOnceOverShows();
    void shouldRunInitDataOnViewThreadWhenPresenterStartsElsewhere();
    void shouldAskDataOnPoolWhenPresenterStarted();
    void shouldStayFirstShowWithoutPresenter();
    void shouldGoOnAfterInitViewThrowsWithPresenter_data();
    void shouldGoOnAfterInitViewThrowsWithPresenter();
    void shouldRetryInitWithoutPresenterAfterInitViewThrows_data();
    void shouldRetryInitWithoutPresenterAfterInitViewThrows();
    void shouldLogInitDataThrow_data();
    void shouldLogInitDataThrow();
    void shouldKeepFirstShowWhenShowEventThrows_data();
    void shouldKeepFirstShowWhenShowEventThrows();
    void shouldLogLoadStyleThrowAndSkipRest_data();
    void shouldLogLoadStyleThrowAndSkipRest();
    void shouldTakeModuleCode_data();
    void shouldTakeModuleCode();
    void shouldAnswerDefaultModuleWhenPresenterThrows_data();
    void shouldAnswerDefaultModuleWhenPresenterThrows();
    void shouldStripNamespacesFromClassCode_data();
    void shouldStripNamespacesFromClassCode();

private:
    static void ShowAgain(QWidget* _pWidget)
    {
        _pWidget->hide();
        _pWidget->show();
    }
};

void tst_CLS_ViewBasic::initTestCase()
{
    qRegisterMetaType<n_Throw>();
    CLS_FrameKit::PrimeGateways();
    QVERIFY2(CLS_PoolProbe::Loaded(), "the test task pool is not on the loader's path");
}

void tst_CLS_ViewBasic::init()
{
    CLS_LogRecords::Take();
    CLS_PoolProbe::TakeCalls();
}

void tst_CLS_ViewBasic::cleanup()
{
    QVERIFY(CLS_PoolProbe::WaitIdle());
    QCOMPARE(CLS_PoolProbe::EscapedCount(), 0);
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_CLS_ViewBasic::shouldStartBeforeFirstShow()
{
    CLS_ProbeView clsView;

    QCOMPARE(clsView.m_blFirstShow.load(), true);
    QCOMPARE(clsView.m_blInited.load(), false);
    QCOMPARE(clsView.m_iInitViewCalls.load(), 0);
    QVERIFY(nullptr == clsView.GetPresenter());
}

void tst_CLS_ViewBasic::shouldBuildViewAtFirstShow()
{
    CLS_ProbePresenter clsPresenter;
    CLS_ProbeView clsView(&clsPresenter);

    clsView.show();

    QCOMPARE(clsView.m_iInitViewCalls.load(), 1);
    QCOMPARE(clsView.m_blInited.load(), true);
    QVERIFY(clsView.testAttribute(Qt::WA_StyledBackground));
    QCOMPARE(clsView.objectName(), QString("CLS_ProbeView"));
    QCOMPARE(clsView.m_blStyleDirty.load(), false);
    QCOMPARE(clsView.styleSheet(), clsView.m_qstrStyleSheet);
    // Wired: the presenter's notification reaches the view's handler.
    clsPresenter.SendTaskNotify("n", QVariantMap());
    QCOMPARE(clsView.m_qlstHandled.size(), 1);
}

void tst_CLS_ViewBasic::shouldInitOnceAndAskDataOnceOverShows()
{
    CLS_ProbePresenter clsPresenter;
    CLS_ProbeView clsView(&clsPresenter);

    clsView.show();
    ShowAgain(&clsView);
    QCOMPARE(clsView.m_iInitViewCalls.load(), 1);
    QCOMPARE(clsView.m_iInitDataCalls.load(), 0);
    QCOMPARE(clsView.m_blFirstShow.load(), false);
    // The presenter was not started: the view waits for SignInitEd, not for the pool.
    QCOMPARE(CLS_PoolProbe::Lines(CLS_PoolProbe::TakeCalls()), QStringList());

    clsPresenter.Init();
    QCOMPARE(clsView.m_iInitDataCalls.load(), 1);
    QCOMPARE(clsView.m_hInitDataThread.load(), QThread::currentThreadId());

    ShowAgain(&clsView);
    ShowAgain(&clsView);
    QCOMPARE(clsView.m_iInitViewCalls.load(), 1);
    QCOMPARE(clsView.m_iInitDataCalls.load(), 1);
    QCOMPARE(CLS_PoolProbe::Lines(CLS_PoolProbe::TakeCalls()), QStringList());
    QCOMPARE(CLS_FrameKit::TakeLogLines(), QStringList());
}

void tst_CLS_ViewBasic::shouldRunInitDataOnViewThreadWhenPresenterStartsElsewhere()
{
    CLS_ProbePresenter clsPresenter;
    CLS_ProbeView clsView(&clsPresenter);
    clsView.show();

    std::thread thrStarter([&clsPresenter]() { clsPresenter.Init(); });
    thrStarter.join();

    QTRY_COMPARE(clsView.m_iInitDataCalls.load(), 1);
    QCOMPARE(clsView.m_hInitDataThread.load(), QThread::currentThreadId());
}

void tst_CLS_ViewBasic::shouldAskDataOnPoolWhenPresenterStarted()
{
    CLS_ProbePresenter clsPresenter;
    clsPresenter.Init();
    CLS_ProbeView clsView(&clsPresenter);

    clsView.show();

    std::vector<STRCT_PoolCall> vecCalls = CLS_PoolProbe::TakeCalls();
    QCOMPARE(vecCalls.size(), size_t(1));
    QCOMPARE(QString::fromStdString(vecCalls[0].m_strFunction), QString("AddTmpTask"));
    QCOMPARE(vecCalls[0].m_pOwner, static_cast<void*>(static_cast<CLS_ViewBasic*>(&clsView)));
    QVERIFY2(CLS_FrameKit::ContextPattern("CLS_ViewBasic.cpp", QString(), "showEvent")
                 .match(QString::fromStdString(vecCalls[0].m_strContext))
                 .hasMatch(),
             vecCalls[0].m_strContext.c_str());
    QVERIFY(CLS_PoolProbe::WaitIdle());
    QCOMPARE(clsView.m_iInitDataCalls.load(), 1);
    QVERIFY(clsView.m_hInitDataThread.load() != QThread::currentThreadId());
    QCOMPARE(clsView.m_blFirstShow.load(), false);

    ShowAgain(&clsView);
    QVERIFY(CLS_PoolProbe::WaitIdle());
    QCOMPARE(CLS_PoolProbe::Lines(CLS_PoolProbe::TakeCalls()), QStringList());
    QCOMPARE(clsView.m_iInitDataCalls.load(), 1);
    QCOMPARE(clsView.m_iInitViewCalls.load(), 1);
}

void tst_CLS_ViewBasic::shouldStayFirstShowWithoutPresenter()
{
    CLS_ProbeView clsView;

    clsView.show();
    QCOMPARE(CLS_FrameKit::TakeLogLines(),
             QStringList{"3|CLS_ProbeView|Init|nullptr == pPresenter Init Fail"});
    QCOMPARE(clsView.m_blInited.load(), true);
    QCOMPARE(clsView.m_blFirstShow.load(), true);

    ShowAgain(&clsView);
    QCOMPARE(clsView.m_iInitViewCalls.load(), 1);
    QCOMPARE(clsView.m_iInitDataCalls.load(), 0);
    QCOMPARE(clsView.m_blFirstShow.load(), true);
    QCOMPARE(CLS_FrameKit::TakeLogLines(), QStringList());
    QCOMPARE(CLS_PoolProbe::Lines(CLS_PoolProbe::TakeCalls()), QStringList());
}

void tst_CLS_ViewBasic::shouldGoOnAfterInitViewThrowsWithPresenter_data()
{
    QTest::addColumn<n_Throw>("kind");
    QTest::addColumn<QString>("line");
    QTest::newRow("std::exception") << THROW_STD << "3|FrameTest|Init|Init Failview broke";
    QTest::newRow("other") << THROW_OTHER << "3|FrameTest|Init|Init Fail";
}

void tst_CLS_ViewBasic::shouldGoOnAfterInitViewThrowsWithPresenter()
{
    QFETCH(n_Throw, kind);
    QFETCH(QString, line);
    CLS_ProbePresenter clsPresenter;
    clsPresenter.m_pModuleCode = "FrameTest";
    CLS_ProbeView clsView(&clsPresenter);
    clsView.m_nInitViewThrow = kind;
    clsView.m_iInitViewThrows = 1;

    clsView.show();

    QCOMPARE(CLS_FrameKit::TakeLogLines(), QStringList{line});
    QCOMPARE(clsView.m_blInited.load(), false);
    QCOMPARE(clsView.m_blFirstShow.load(), false);
    // The data is still asked for...
    clsPresenter.Init();
    QCOMPARE(clsView.m_iInitDataCalls.load(), 1);
    // ...but the results are not wired, and Init is not tried again.
    clsPresenter.SendTaskNotify("n", QVariantMap{{"a", 1}});
    QCOMPARE(clsView.m_qlstHandled.size(), 0);
    ShowAgain(&clsView);
    QCOMPARE(clsView.m_iInitViewCalls.load(), 1);
    QCOMPARE(CLS_FrameKit::TakeLogLines(), QStringList());
}

void tst_CLS_ViewBasic::shouldRetryInitWithoutPresenterAfterInitViewThrows_data()
{
    QTest::addColumn<n_Throw>("kind");
    QTest::addColumn<QString>("line");
    QTest::newRow("std::exception") << THROW_STD << "3|CLS_ProbeView|Init|Init Failview broke";
    QTest::newRow("other") << THROW_OTHER << "3|CLS_ProbeView|Init|Init Fail";
}

void tst_CLS_ViewBasic::shouldRetryInitWithoutPresenterAfterInitViewThrows()
{
    QFETCH(n_Throw, kind);
    QFETCH(QString, line);
    CLS_ProbeView clsView;
    clsView.m_nInitViewThrow = kind;
    clsView.m_iInitViewThrows = 1;

    clsView.show();
    QCOMPARE(CLS_FrameKit::TakeLogLines(), QStringList{line});
    QCOMPARE(clsView.m_blInited.load(), false);
    QCOMPARE(clsView.m_blFirstShow.load(), true);

    ShowAgain(&clsView);
    QCOMPARE(clsView.m_iInitViewCalls.load(), 2);
    QCOMPARE(clsView.m_blInited.load(), true);
    QCOMPARE(CLS_FrameKit::TakeLogLines(),
             QStringList{"3|CLS_ProbeView|Init|nullptr == pPresenter Init Fail"});
}

void tst_CLS_ViewBasic::shouldLogInitDataThrow_data()
{
    QTest::addColumn<n_Throw>("kind");
    QTest::addColumn<QString>("line");
    QTest::newRow("std::exception") << THROW_STD << "3|CLS_ProbeView|SlotInitData|InitData Faildata broke";
    QTest::newRow("other") << THROW_OTHER << "3|CLS_ProbeView|SlotInitData|InitData Fail";
}

void tst_CLS_ViewBasic::shouldLogInitDataThrow()
{
    QFETCH(n_Throw, kind);
    QFETCH(QString, line);
    CLS_ProbeView clsView;
    clsView.m_nInitDataThrow = kind;

    clsView.SlotInitData();

    QCOMPARE(clsView.m_iInitDataCalls.load(), 1);
    QCOMPARE(CLS_FrameKit::TakeLogLines(), QStringList{line});
}

void tst_CLS_ViewBasic::shouldKeepFirstShowWhenShowEventThrows_data()
{
    QTest::addColumn<n_Throw>("kind");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("std::exception") << THROW_STD
                                    << QStringList{"3|FrameProbe|Init|Init Failpresenter broke",
                                                   "3|FrameProbe|showEvent|presenter broke"};
    QTest::newRow("other") << THROW_OTHER
                           << QStringList{"3|FrameProbe|Init|Init Fail", "3|FrameProbe|showEvent|..."};
}

void tst_CLS_ViewBasic::shouldKeepFirstShowWhenShowEventThrows()
{
    QFETCH(n_Throw, kind);
    QFETCH(QStringList, lines);
    CLS_ProbePresenter clsPresenter;
    CLS_ProbeView clsView(&clsPresenter);
    clsView.m_pModuleCode = "FrameProbe";
    clsView.m_nPresenterThrow = kind;

    clsView.show();
    QCOMPARE(CLS_FrameKit::TakeLogLines(), lines);
    QCOMPARE(clsView.m_blFirstShow.load(), true);

    // The next show tries again, and gets as far as asking for the data.
    clsView.m_nPresenterThrow = THROW_NONE;
    ShowAgain(&clsView);
    QCOMPARE(clsView.m_blFirstShow.load(), false);
    clsPresenter.Init();
    QCOMPARE(clsView.m_iInitDataCalls.load(), 1);
    QCOMPARE(clsView.m_iInitViewCalls.load(), 1);
}

void tst_CLS_ViewBasic::shouldLogLoadStyleThrowAndSkipRest_data()
{
    QTest::addColumn<n_Throw>("kind");
    QTest::addColumn<int>("throws"); // how many calls of GetModuleCode throw; -1 all
    QTest::addColumn<QStringList>("lines");
    // The record asks for the module once more: the view's class name, as it has no presenter.
    QTest::newRow("std::exception once")
        << THROW_STD << 1 << QStringList{"3|CLS_ProbeView|LoadStyle|LoadStyle Failmodule broke"};
    QTest::newRow("other once") << THROW_OTHER << 1
                                << QStringList{"3|CLS_ProbeView|LoadStyle|LoadStyle Fail"};
    // A module code that always throws leaves the record without a module: it is dropped.
    QTest::newRow("std::exception always") << THROW_STD << -1 << QStringList();
    QTest::newRow("other always") << THROW_OTHER << -1 << QStringList();
}

void tst_CLS_ViewBasic::shouldLogLoadStyleThrowAndSkipRest()
{
    QFETCH(n_Throw, kind);
    QFETCH(int, throws);
    QFETCH(QStringList, lines);
    CLS_ProbeView clsView;
    clsView.setStyleSheet("QWidget { color: green; }");
    clsView.m_nModuleThrow = kind;
    clsView.m_iModuleThrows = throws;

    clsView.LoadStyle();

    QCOMPARE(CLS_FrameKit::TakeLogLines(), lines);
    QCOMPARE(clsView.m_iModuleCalls.load(), 2); // the style's module, then the record's
    // The name came before the throw; the sheet and the flag after it.
    QCOMPARE(clsView.objectName(), QString("CLS_ProbeView"));
    QCOMPARE(clsView.styleSheet(), QString("QWidget { color: green; }"));
    QCOMPARE(clsView.m_qstrStyleSheet, QString());
    QCOMPARE(clsView.m_blStyleDirty.load(), true);
}

void tst_CLS_ViewBasic::shouldTakeModuleCode_data()
{
    QTest::addColumn<QString>("view");
    QTest::addColumn<QString>("presenterModule"); // "-" for no presenter, "" for the base's
    QTest::addColumn<QString>("module");
    QTest::newRow("presenter with a module") << "CLS_ProbeView"
                                             << "FrameTest"
                                             << "FrameTest";
    QTest::newRow("presenter without one") << "CLS_ProbeView"
                                           << ""
                                           << "default";
    QTest::newRow("no presenter") << "CLS_ProbeView"
                                  << "-"
                                  << "CLS_ProbeView";
    QTest::newRow("no presenter, namespaced") << "FrameNs::CLS_NsView"
                                              << "-"
                                              << "FrameNs::CLS_NsView";
}

void tst_CLS_ViewBasic::shouldTakeModuleCode()
{
    QFETCH(QString, view);
    QFETCH(QString, presenterModule);
    QFETCH(QString, module);
    const QByteArray qbaModule = presenterModule.toUtf8();
    CLS_ProbePresenter clsPresenter;
    clsPresenter.m_pModuleCode = presenterModule.isEmpty() ? nullptr : qbaModule.constData();
    CLS_ProbeView clsPlain;
    FrameNs::CLS_NsView clsNamespaced;
    CLS_ProbeView* pView = "CLS_ProbeView" == view ? &clsPlain : &clsNamespaced;
    pView->m_pPresenter = "-" == presenterModule ? nullptr : &clsPresenter;

    QCOMPARE(QString(pView->GetModuleCode()), module);
    QCOMPARE(CLS_FrameKit::TakeLogLines(), QStringList());
}

void tst_CLS_ViewBasic::shouldAnswerDefaultModuleWhenPresenterThrows_data()
{
    QTest::addColumn<n_Throw>("kind");
    QTest::addColumn<int>("throws"); // how many calls of GetPresenter throw; -1 all
    QTest::addColumn<QStringList>("lines");
    // The record's module is asked for again: no presenter then, so the class name.
    QTest::newRow("std::exception once")
        << THROW_STD << 1 << QStringList{"3|CLS_ProbeView|GetModuleCode|presenter broke"};
    QTest::newRow("other once") << THROW_OTHER << 1 << QStringList{"3|CLS_ProbeView|GetModuleCode|..."};
    // Asked again from its own record, the module throws again: no record, and no recursion.
    QTest::newRow("std::exception always") << THROW_STD << -1 << QStringList();
    QTest::newRow("other always") << THROW_OTHER << -1 << QStringList();
}

void tst_CLS_ViewBasic::shouldAnswerDefaultModuleWhenPresenterThrows()
{
    QFETCH(n_Throw, kind);
    QFETCH(int, throws);
    QFETCH(QStringList, lines);
    CLS_ProbeView clsView;
    clsView.m_nPresenterThrow = kind;
    clsView.m_iPresenterThrows = throws;

    QCOMPARE(QString(clsView.GetModuleCode()), QString("default"));
    QCOMPARE(CLS_FrameKit::TakeLogLines(), lines);
    QCOMPARE(clsView.m_iModuleCalls.load(), 2); // the call itself, then the one of its record

    // Nothing of the failure stays behind: the next answer is the plain one.
    QCOMPARE(QString(clsView.GetModuleCode()), throws < 0 ? QString("default") : QString("CLS_ProbeView"));
}

void tst_CLS_ViewBasic::shouldStripNamespacesFromClassCode_data()
{
    QTest::addColumn<QString>("view");
    QTest::addColumn<QString>("className");
    QTest::addColumn<QString>("classCode");
    QTest::newRow("no namespace") << "plain"
                                  << "CLS_ProbeView"
                                  << "CLS_ProbeView";
    QTest::newRow("one namespace") << "ns"
                                   << "FrameNs::CLS_NsView"
                                   << "CLS_NsView";
    QTest::newRow("two namespaces") << "deep"
                                    << "FrameNs::Inner::CLS_DeepView"
                                    << "CLS_DeepView";
}

void tst_CLS_ViewBasic::shouldStripNamespacesFromClassCode()
{
    QFETCH(QString, view);
    QFETCH(QString, className);
    QFETCH(QString, classCode);
    CLS_ProbeView clsPlain;
    FrameNs::CLS_NsView clsNamespaced;
    FrameNs::Inner::CLS_DeepView clsDeep;
    CLS_ProbeView* pView = &clsDeep;
    if ("plain" == view) {
        pView = &clsPlain;
    } else if ("ns" == view) {
        pView = &clsNamespaced;
    }

    QCOMPARE(QString(pView->metaObject()->className()), className);
    QCOMPARE(pView->GetClassCode(), classCode);
}

QTEST_MAIN(tst_CLS_ViewBasic)
#include "tst_CLS_ViewBasic.moc"
