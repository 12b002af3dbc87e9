// A gateway asked for a name outside its list binds its whole list again on every such call, and
// gives null. The first slot must stay first: it is the gateway's first call.

#include "BinderLines.h"
#include "CLS_DevManage.h"
#include "CLS_StdCapture.h"

#include <QtTest>

#include <dlfcn.h>

namespace {
const std::vector<std::string> CONST_DEV_FUNS{"GetCustomTree", "GetResourceTree", "GetDevFactory", "GetUtil"};
} // namespace

class tst_BinderUnlisted : public QObject
{
    Q_OBJECT

private slots:
    void shouldBindWholeListForFirstUnlistedName();
    void shouldBindWholeListAgainOnEveryUnlistedCall();
    void shouldKeepListedNamesAfterRebind();
};

void tst_BinderUnlisted::shouldBindWholeListForFirstUnlistedName()
{
    CLS_StdCapture clsCapture;
    void* pFun = DevManage::GetModuleFun("CreateWgt", "");
    clsCapture.Stop();

    QVERIFY(nullptr == pFun);
    QCOMPARE(clsCapture.OutLines(), FirstBindLines("libDevManage.so", CONST_DEV_FUNS));
    QCOMPARE(clsCapture.ErrLines(), QStringList());
}

void tst_BinderUnlisted::shouldBindWholeListAgainOnEveryUnlistedCall()
{
    DevManage::GetModuleFun("GetUtil", "");

    CLS_StdCapture clsCapture;
    void* pFirst = DevManage::GetModuleFun("CreateWgt", "");
    void* pSecond = DevManage::GetModuleFun("CreateWgt", "");
    clsCapture.Stop();

    QVERIFY(nullptr == pFirst);
    QVERIFY(nullptr == pSecond);
    QCOMPARE(clsCapture.OutLines(), CachedBindLines(CONST_DEV_FUNS) + CachedBindLines(CONST_DEV_FUNS));
    QCOMPARE(clsCapture.ErrLines(), QStringList());
}

void tst_BinderUnlisted::shouldKeepListedNamesAfterRebind()
{
    DevManage::GetModuleFun("CreateWgt", "");
    void* pHandle = dlopen("libDevManage.so", RTLD_NOW | RTLD_NOLOAD);
    QVERIFY(nullptr != pHandle);

    CLS_StdCapture clsCapture;
    void* pFun = DevManage::GetModuleFun("GetResourceTree", "");
    void* pMissing = DevManage::GetModuleFun("GetDevFactory", "");
    clsCapture.Stop();

    QCOMPARE(clsCapture.OutLines(), QStringList());
    QVERIFY(nullptr != pFun);
    QCOMPARE(pFun, dlsym(pHandle, "GetResourceTree"));
    QVERIFY(nullptr == pMissing);
}

QTEST_GUILESS_MAIN(tst_BinderUnlisted)
#include "tst_binder_unlisted.moc"
