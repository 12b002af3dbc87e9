// A library that opens but lacks a function of the gateway's list: that name gives null (with
// its "sucess" line all the same), is never looked up again, and the other names work.

#include "BinderLines.h"
#include "CLS_StdCapture.h"
#include "LxAppManager.h"

#include <QtTest>

#include <dlfcn.h>

namespace {
const std::vector<std::string> CONST_APP_FUNS{"AppQuit", "GetApp", "GetAppData", "GetAppHandle",
                                              "GetAppSignals"};
} // namespace

class tst_BinderMissingFun : public QObject
{
    Q_OBJECT

private slots:
    void shouldGiveNullForMissingFunction();
    void shouldNotLookUpMissingFunctionAgain();
    void shouldKeepOtherFunctionsOfList();
};

void tst_BinderMissingFun::shouldGiveNullForMissingFunction()
{
    CLS_StdCapture clsCapture;
    void* pFun = LxAppManager::GetModuleFun("GetAppData", "");
    clsCapture.Stop();

    QVERIFY(nullptr == pFun);
    QCOMPARE(clsCapture.OutLines(), FirstBindLines("libLxAppManager.so", CONST_APP_FUNS));
    QCOMPARE(clsCapture.ErrLines(), QStringList());
}

void tst_BinderMissingFun::shouldNotLookUpMissingFunctionAgain()
{
    LxAppManager::GetModuleFun("GetAppData", "");

    CLS_StdCapture clsCapture;
    void* pFun = LxAppManager::GetModuleFun("GetAppData", "");
    clsCapture.Stop();

    QVERIFY(nullptr == pFun);
    QCOMPARE(clsCapture.OutLines(), QStringList());
    QCOMPARE(clsCapture.ErrLines(), QStringList());
}

void tst_BinderMissingFun::shouldKeepOtherFunctionsOfList()
{
    LxAppManager::GetModuleFun("GetAppData", "");
    void* pHandle = dlopen("libLxAppManager.so", RTLD_NOW | RTLD_NOLOAD);
    QVERIFY(nullptr != pHandle);

    CLS_StdCapture clsCapture;
    void* pGetApp = LxAppManager::GetModuleFun("GetApp", "");
    void* pGetAppSignals = LxAppManager::GetModuleFun("GetAppSignals", "");
    void* pAppQuit = LxAppManager::GetModuleFun("AppQuit", "");
    clsCapture.Stop();

    QCOMPARE(clsCapture.OutLines(), QStringList());
    QVERIFY(nullptr != pGetApp);
    QCOMPARE(pGetApp, dlsym(pHandle, "GetApp"));
    QCOMPARE(pGetAppSignals, dlsym(pHandle, "GetAppSignals"));
    QVERIFY(nullptr == pAppQuit);
}

QTEST_GUILESS_MAIN(tst_BinderMissingFun)
#include "tst_binder_missingfun.moc"
