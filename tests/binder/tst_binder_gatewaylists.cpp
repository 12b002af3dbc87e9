// Each gateway opens its own library file and binds its whole function list, in its order, on the
// first call, whichever of its names is asked for.

#include "BinderLines.h"
#include "CLS_DevManage.h"
#include "CLS_StdCapture.h"
#include "ColorManage.h"
#include "Logger.h"
#include "LxAppManager.h"
#include "Param.h"
#include "TaskPool.h"

#include <QtTest>

#include <dlfcn.h>

namespace {
typedef void* (*PFun_GetModuleFun)(const std::string&, const std::string&);

struct STRCT_Gateway
{
    const char* m_pName;
    PFun_GetModuleFun m_pGetModuleFun;
    std::string m_strFile;
    std::vector<std::string> m_vecFunNames;
    std::string m_strAsked; // the name asked for on the first call
};

const std::vector<STRCT_Gateway>& Gateways()
{
    static const std::vector<STRCT_Gateway> s_vecGateways{
        {"DevManage",
         &DevManage::GetModuleFun,
         "libDevManage.so",
         {"GetCustomTree", "GetResourceTree", "GetDevFactory", "GetUtil"},
         "GetResourceTree"},
        {"Logger",
         &Logger::GetModuleFun,
         "libLxLog.so",
         {"Init", "SetLoggerConfig", "SetLoggerConfigAll", "PrintLog", "UnInit"},
         "SetLoggerConfig"},
        {"LxAppManager",
         &LxAppManager::GetModuleFun,
         "libLxAppManager.so",
         {"AppQuit", "GetApp", "GetAppData", "GetAppHandle", "GetAppSignals"},
         "GetApp"},
        {"ColorManage",
         &ColorManage::GetModuleFun,
         "libLxColorManage.so",
         {"GetNamedColor"},
         "GetNamedColor"},
        {"Param",
         &Param::GetModuleFun,
         "libLxParam.so",
         {"Init", "IsInit", "SetParam", "GetParam", "DeleteParam", "UnInit"},
         "GetParam"},
        {"TaskPool",
         &TaskPool::GetModuleFun,
         "libLxTaskPool.so",
         {"AddTmpTask", "RemoveTmpTask", "AddLoopTask", "RemoveTask", "KillTask", "KillTaskAll", "UnInit"},
         "AddTmpTask"},
    };
    return s_vecGateways;
}
} // namespace

class tst_BinderGatewayLists : public QObject
{
    Q_OBJECT

private slots:
    void shouldBindWholeListOfGateway_data();
    void shouldBindWholeListOfGateway();
};

void tst_BinderGatewayLists::shouldBindWholeListOfGateway_data()
{
    QTest::addColumn<int>("_iGateway");
    for (size_t i = 0; i < Gateways().size(); ++i) {
        QTest::newRow(Gateways()[i].m_pName) << int(i);
    }
}

void tst_BinderGatewayLists::shouldBindWholeListOfGateway()
{
    QFETCH(int, _iGateway);
    const STRCT_Gateway& strctGateway = Gateways()[size_t(_iGateway)];

    CLS_StdCapture clsCapture;
    void* pFun = strctGateway.m_pGetModuleFun(strctGateway.m_strAsked, "");
    clsCapture.Stop();

    QCOMPARE(clsCapture.OutLines(), FirstBindLines(strctGateway.m_strFile, strctGateway.m_vecFunNames));
    QCOMPARE(clsCapture.ErrLines(), QStringList());

    void* pHandle = dlopen(strctGateway.m_strFile.c_str(), RTLD_NOW | RTLD_NOLOAD);
    QVERIFY(nullptr != pHandle);
    QVERIFY(nullptr != pFun);
    QCOMPARE(pFun, dlsym(pHandle, strctGateway.m_strAsked.c_str()));
}

QTEST_GUILESS_MAIN(tst_BinderGatewayLists)
#include "tst_binder_gatewaylists.moc"
