// The reference application library libLxAppManager.so through the LxAppManager gateway: the
// application object and its state, the data object and its manager, the one signal hub, and the
// two functions nothing here calls.

#include "CLS_IApp.h"
#include "I_AppSignals.h"
#include "LxAppManager.h"
#include "LxAppManagerControl.h"

#include <QtTest>

namespace {

CLS_IApp* App()
{
    auto pFun = reinterpret_cast<LxAppManager::PFun_GetApp>(LxAppManager::GetModuleFun("GetApp", ""));
    return nullptr == pFun ? nullptr : pFun();
}

CLS_IAppData* AppData()
{
    auto pFun = reinterpret_cast<LxAppManager::PFun_GetAppData>(LxAppManager::GetModuleFun("GetAppData", ""));
    return nullptr == pFun ? nullptr : pFun();
}

I_AppSignals* AppSignals()
{
    auto pFun =
        reinterpret_cast<LxAppManager::PFun_GetAppSignals>(LxAppManager::GetModuleFun("GetAppSignals", ""));
    return nullptr == pFun ? nullptr : pFun();
}

} // namespace

class tst_ReferenceLxAppManager : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void shouldBindEveryFunctionOfTheGateway();
    void shouldReportSettableApplicationState();
    void shouldGiveNullApplicationWhenSwitchedOff();
    void shouldSwitchDataObjectAndManagerSeparately();
    void shouldHandOutOneSignalHub();
    void shouldMarkApplicationQuittingOnAppQuit();
    void shouldCountCallsPerFunction();
};

void tst_ReferenceLxAppManager::init()
{
    LxAppManagerCtl_Reset();
}

void tst_ReferenceLxAppManager::shouldBindEveryFunctionOfTheGateway()
{
    QStringList qlstMissing;
    for (const char* pName : {"AppQuit", "GetApp", "GetAppData", "GetAppHandle", "GetAppSignals"}) {
        if (nullptr == LxAppManager::GetModuleFun(pName, "")) {
            qlstMissing << pName;
        }
    }
    QCOMPARE(qlstMissing, QStringList());
}

void tst_ReferenceLxAppManager::shouldReportSettableApplicationState()
{
    QVERIFY(App() != nullptr);
    QCOMPARE(App()->GetAppState(), 1);

    LxAppManagerCtl_SetAppState(2);

    QCOMPARE(App()->GetAppState(), 2);
    QCOMPARE(LxAppManagerCtl_GetAppState(), 2);
}

void tst_ReferenceLxAppManager::shouldGiveNullApplicationWhenSwitchedOff()
{
    CLS_IApp* pBefore = App();

    LxAppManagerCtl_SetAppAvailable(0);
    QVERIFY(App() == nullptr);
    LxAppManagerCtl_SetAppAvailable(1);

    QCOMPARE(App(), pBefore);
}

void tst_ReferenceLxAppManager::shouldSwitchDataObjectAndManagerSeparately()
{
    QVERIFY(AppData() != nullptr);
    QVERIFY(AppData()->GetDataManager() != nullptr);

    LxAppManagerCtl_SetDataManagerAvailable(0);
    QVERIFY(AppData() != nullptr);
    QVERIFY(AppData()->GetDataManager() == nullptr);

    LxAppManagerCtl_SetAppDataAvailable(0);
    QVERIFY(AppData() == nullptr);

    LxAppManagerCtl_Reset();
    QVERIFY(AppData() != nullptr && AppData()->GetDataManager() != nullptr);
}

void tst_ReferenceLxAppManager::shouldHandOutOneSignalHub()
{
    I_AppSignals* pHub = AppSignals();
    QVERIFY(pHub != nullptr);
    QCOMPARE(AppSignals(), pHub);
    QSignalSpy spyResize(pHub, &I_AppSignals::SignResizeView);

    emit pHub->SignResizeView(1.5, 2.0); // a hub of this library's meta-object

    QCOMPARE(spyResize.count(), 1);
    QCOMPARE(spyResize.takeFirst(), QVariantList({1.5, 2.0}));
}

void tst_ReferenceLxAppManager::shouldMarkApplicationQuittingOnAppQuit()
{
    auto pFunQuit = reinterpret_cast<void (*)()>(LxAppManager::GetModuleFun("AppQuit", ""));
    auto pFunHandle = reinterpret_cast<void* (*)()>(LxAppManager::GetModuleFun("GetAppHandle", ""));

    pFunQuit();

    QCOMPARE(App()->GetAppState(), 2);
    QCOMPARE(pFunHandle(), static_cast<void*>(App()));
}

void tst_ReferenceLxAppManager::shouldCountCallsPerFunction()
{
    App()->GetAppState();
    App()->GetAppState();
    AppData()->GetDataManager();
    AppSignals();

    QStringList qlstCounts;
    for (const char* pName : {"GetApp", "GetAppState", "GetAppData", "GetDataManager", "GetAppSignals",
                              "AppQuit", "GetAppHandle", "Other"}) {
        qlstCounts << QString("%1=%2").arg(pName).arg(LxAppManagerCtl_CallCount(pName));
    }

    QCOMPARE(qlstCounts, QStringList({"GetApp=2", "GetAppState=2", "GetAppData=1", "GetDataManager=1",
                                      "GetAppSignals=1", "AppQuit=0", "GetAppHandle=0", "Other=-1"}));
}

QTEST_GUILESS_MAIN(tst_ReferenceLxAppManager)
#include "tst_ReferenceLxAppManager.moc"
