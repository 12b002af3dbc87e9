// A library that cannot be opened: the first call writes the load line and the loader's error,
// the open is never tried again, and later calls stay silent unless an error is pending.
// The first slot must stay first: it is the one that meets the library for the first time.

#include "BinderLines.h"
#include "CLS_StdCapture.h"
#include "CLS_TestPaths.h"
#include "TaskPool.h"
#include "Util.h"

#include <QtTest>

#include <dlfcn.h>

namespace {
// The loader's own text for a failed open of _strPath, taken the same way the binder takes it.
std::string OpenErrorOf(const std::string& _strPath)
{
    void* pHandle = dlopen(_strPath.c_str(), RTLD_NOW);
    if (nullptr != pHandle) {
        return "(opened)";
    }
    const char* pError = dlerror();
    return nullptr == pError ? std::string() : std::string(pError);
}
} // namespace

class tst_BinderFailedOpen : public QObject
{
    Q_OBJECT

private slots:
    void shouldWriteLoadAndFailLinesAtFirstOpen();
    void shouldNotTryOpenAgainOnLaterCall();
    void shouldWritePendingErrorWithEmptyPath();
    void shouldGiveNullThroughNameOverload();
};

void tst_BinderFailedOpen::shouldWriteLoadAndFailLinesAtFirstOpen()
{
    CLS_StdCapture clsCapture;
    void* pFun = TaskPool::GetModuleFun("AddTmpTask", "");
    clsCapture.Stop();

    QVERIFY(nullptr == pFun);
    QCOMPARE(clsCapture.OutLines(), QStringList{LoadLine("libLxTaskPool.so")});
    const std::string strError = OpenErrorOf("libLxTaskPool.so");
    QVERIFY(!strError.empty());
    QCOMPARE(clsCapture.ErrLines(), QStringList{FailLine("libLxTaskPool.so", strError)});
}

void tst_BinderFailedOpen::shouldNotTryOpenAgainOnLaterCall()
{
    TaskPool::GetModuleFun("AddTmpTask", "");

    CLS_StdCapture clsCapture;
    void* pFirst = TaskPool::GetModuleFun("RemoveTask", "");
    void* pSecond = TaskPool::GetModuleFun("AddTmpTask", "");
    clsCapture.Stop();

    QVERIFY(nullptr == pFirst);
    QVERIFY(nullptr == pSecond);
    QCOMPARE(clsCapture.OutLines(), QStringList());
    QCOMPARE(clsCapture.ErrLines(), QStringList());
}

void tst_BinderFailedOpen::shouldWritePendingErrorWithEmptyPath()
{
    TaskPool::GetModuleFun("AddTmpTask", "");

    // Given an error text the loader still holds for its next caller
    void* pHandle = dlopen(nullptr, RTLD_NOW);
    QVERIFY(nullptr == dlsym(pHandle, "WgtNoSuchSymbol"));
    const std::string strError = dlerror();
    QVERIFY(nullptr == dlsym(pHandle, "WgtNoSuchSymbol"));

    // When the gateway is asked again
    CLS_StdCapture clsCapture;
    void* pFun = TaskPool::GetModuleFun("AddLoopTask", "");
    clsCapture.Stop();

    // Then that text comes out with the empty path of a cached handle
    QVERIFY(nullptr == pFun);
    QCOMPARE(clsCapture.OutLines(), QStringList());
    QCOMPARE(clsCapture.ErrLines(), QStringList{FailLine("", strError)});
}

void tst_BinderFailedOpen::shouldGiveNullThroughNameOverload()
{
    const std::string strPath = CLS_TestPaths::FromProgramDir(WGT_TEST_LIB_ROOT) + "/none/libMissing.so";

    CLS_StdCapture clsCapture;
    void* pFirst = Util::GetDllFunction(strPath, std::string("CreateWgt"));
    void* pSecond = Util::GetDllFunction(strPath, std::string("CreateWgt"));
    clsCapture.Stop();

    QVERIFY(nullptr == pFirst);
    QVERIFY(nullptr == pSecond);
    QCOMPARE(clsCapture.OutLines(), QStringList{LoadLine(strPath)});
    QCOMPARE(clsCapture.ErrLines(), QStringList{FailLine(strPath, OpenErrorOf(strPath))});
}

QTEST_GUILESS_MAIN(tst_BinderFailedOpen)
#include "tst_binder_failedopen.moc"
