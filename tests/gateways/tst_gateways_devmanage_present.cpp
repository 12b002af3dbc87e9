// DevManage's three gateway functions with a library that has them: each hands on what the
// library's function gives, null included, and logs nothing.

#include "CLS_DevManage.h"
#include "CLS_LogRecords.h"

#include <QtTest>

#include <dlfcn.h>

namespace {
typedef void (*PFun_DevManageTest_Objects)(void** _pObjects);
typedef void (*PFun_DevManageTest_SetNull)(bool _blNull);

void* TestFunction(const char* _pName)
{
    void* pHandle = dlopen("libDevManage.so", RTLD_NOW | RTLD_NOLOAD);
    return nullptr == pHandle ? nullptr : dlsym(pHandle, _pName);
}
} // namespace

class tst_GatewaysDevManagePresent : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void shouldGiveObjectsOfLibrary();
    void shouldGiveNullOfLibraryWithoutLog();
};

void tst_GatewaysDevManagePresent::init()
{
    CLS_LogRecords::Take();
}

void tst_GatewaysDevManagePresent::shouldGiveObjectsOfLibrary()
{
    void* pResourceTree = DevManage::GetResourceTree();
    void* pDevFactory = DevManage::GetDevFactory();
    void* pCustomTree = DevManage::GetCustomTree();

    auto pFunObjects = reinterpret_cast<PFun_DevManageTest_Objects>(TestFunction("DevManageTest_Objects"));
    QVERIFY(nullptr != pFunObjects);
    void* arrObjects[3] = {nullptr, nullptr, nullptr};
    pFunObjects(arrObjects);

    QVERIFY(nullptr != pResourceTree);
    QCOMPARE(pResourceTree, arrObjects[0]);
    QCOMPARE(pDevFactory, arrObjects[1]);
    QCOMPARE(pCustomTree, arrObjects[2]);
    QCOMPARE(CLS_LogRecords::Lines(CLS_LogRecords::Take()), QStringList());
}

void tst_GatewaysDevManagePresent::shouldGiveNullOfLibraryWithoutLog()
{
    DevManage::GetResourceTree();
    auto pFunSetNull = reinterpret_cast<PFun_DevManageTest_SetNull>(TestFunction("DevManageTest_SetNull"));
    QVERIFY(nullptr != pFunSetNull);
    pFunSetNull(true);

    void* pResourceTree = DevManage::GetResourceTree();
    void* pDevFactory = DevManage::GetDevFactory();
    void* pCustomTree = DevManage::GetCustomTree();
    pFunSetNull(false);

    QVERIFY(nullptr == pResourceTree);
    QVERIFY(nullptr == pDevFactory);
    QVERIFY(nullptr == pCustomTree);
    // Only a missing function is a failure of this gateway; a null object is the caller's concern.
    QCOMPARE(CLS_LogRecords::Lines(CLS_LogRecords::Take()), QStringList());
}

QTEST_GUILESS_MAIN(tst_GatewaysDevManagePresent)
#include "tst_gateways_devmanage_present.moc"
