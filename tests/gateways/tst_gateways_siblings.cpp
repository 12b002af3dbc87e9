// The colour, task pool and application gateways give the library's functions, which callers cast
// to the function types of the gateway headers; arguments and results cross unchanged.

#include "ColorManage.h"
#include "LxAppManager.h"
#include "TaskPool.h"

#include <QtTest>

#include <dlfcn.h>

#include <sstream>

namespace {
typedef void (*PFun_SiblingTest_LastCall)(std::string* _pOut);
typedef void (*PFun_SiblingTest_AppObjects)(void** _pObjects);

void* TestFunction(const char* _pLibrary, const char* _pName)
{
    void* pHandle = dlopen(_pLibrary, RTLD_NOW | RTLD_NOLOAD);
    return nullptr == pHandle ? nullptr : dlsym(pHandle, _pName);
}

std::string LastCall(const char* _pLibrary)
{
    std::string strCall;
    auto pFun = reinterpret_cast<PFun_SiblingTest_LastCall>(TestFunction(_pLibrary, "SiblingTest_LastCall"));
    if (nullptr != pFun) {
        pFun(&strCall);
    }
    return strCall;
}

std::string PointerText(const void* _pValue)
{
    std::ostringstream ossText;
    ossText << _pValue;
    return ossText.str();
}
} // namespace

class tst_GatewaysSiblings : public QObject
{
    Q_OBJECT

private slots:
    void shouldGiveNamedColorOfLibrary();
    void shouldHandTemporaryTaskToPool();
    void shouldHandLoopTaskAndTakeItsId();
    void shouldHandTaskIdToRemoveTask();
    void shouldGiveApplicationObjects();
};

void tst_GatewaysSiblings::shouldGiveNamedColorOfLibrary()
{
    auto pFun =
        reinterpret_cast<ColorManage::PFun_GetNamedColor>(ColorManage::GetModuleFun("GetNamedColor", ""));
    QVERIFY(nullptr != pFun);

    const std::string strColor = pFun("Common", "<ArgRight_TreeBranch>", "");

    QCOMPARE(QString::fromStdString(strColor), QString("#Common/<ArgRight_TreeBranch>"));
    QCOMPARE(QString::fromStdString(LastCall("libLxColorManage.so")),
             QString("GetNamedColor|Common|<ArgRight_TreeBranch>|"));
}

void tst_GatewaysSiblings::shouldHandTemporaryTaskToPool()
{
    auto pFun = reinterpret_cast<TaskPool::PFun_AddTmpTask>(TaskPool::GetModuleFun("AddTmpTask", ""));
    QVERIFY(nullptr != pFun);
    int iRuns = 0;

    const int iResult = pFun([&iRuns] { ++iRuns; }, this, "[tst] showEvent");

    QCOMPARE(iResult, 0);
    QCOMPARE(iRuns, 1);
    QCOMPARE(QString::fromStdString(LastCall("libLxTaskPool.so")),
             QString::fromStdString("AddTmpTask|" + PointerText(this) + "|[tst] showEvent"));
}

void tst_GatewaysSiblings::shouldHandLoopTaskAndTakeItsId()
{
    auto pFun = reinterpret_cast<TaskPool::PFun_AddLoopTask>(TaskPool::GetModuleFun("AddLoopTask", ""));
    QVERIFY(nullptr != pFun);
    int iRuns = 0;
    std::string strTaskId;

    const int iResult = pFun([&iRuns] { ++iRuns; }, 500, strTaskId, "StartLoopTask");

    QCOMPARE(iResult, 0);
    QCOMPARE(iRuns, 1);
    // The id comes back through the reference.
    QCOMPARE(QString::fromStdString(strTaskId), QString("loop-500"));
    QCOMPARE(QString::fromStdString(LastCall("libLxTaskPool.so")), QString("AddLoopTask|500|StartLoopTask"));
}

void tst_GatewaysSiblings::shouldHandTaskIdToRemoveTask()
{
    auto pFun = reinterpret_cast<TaskPool::PFun_RemoveTask>(TaskPool::GetModuleFun("RemoveTask", ""));
    QVERIFY(nullptr != pFun);

    QCOMPARE(pFun("loop-500", "UnInit"), 0);

    QCOMPARE(QString::fromStdString(LastCall("libLxTaskPool.so")), QString("RemoveTask|loop-500|UnInit"));
}

void tst_GatewaysSiblings::shouldGiveApplicationObjects()
{
    auto pFunGetApp = reinterpret_cast<LxAppManager::PFun_GetApp>(LxAppManager::GetModuleFun("GetApp", ""));
    auto pFunGetAppData =
        reinterpret_cast<LxAppManager::PFun_GetAppData>(LxAppManager::GetModuleFun("GetAppData", ""));
    auto pFunGetAppSignals =
        reinterpret_cast<LxAppManager::PFun_GetAppSignals>(LxAppManager::GetModuleFun("GetAppSignals", ""));
    QVERIFY(nullptr != pFunGetApp);
    QVERIFY(nullptr != pFunGetAppData);
    QVERIFY(nullptr != pFunGetAppSignals);

    auto pFunObjects = reinterpret_cast<PFun_SiblingTest_AppObjects>(
        TestFunction("libLxAppManager.so", "SiblingTest_AppObjects"));
    QVERIFY(nullptr != pFunObjects);
    void* arrObjects[3] = {nullptr, nullptr, nullptr};
    pFunObjects(arrObjects);

    QCOMPARE(static_cast<void*>(pFunGetApp()), arrObjects[0]);
    QCOMPARE(static_cast<void*>(pFunGetAppData()), arrObjects[1]);
    QCOMPARE(static_cast<void*>(pFunGetAppSignals()), arrObjects[2]);
}

QTEST_GUILESS_MAIN(tst_GatewaysSiblings)
#include "tst_gateways_siblings.moc"
