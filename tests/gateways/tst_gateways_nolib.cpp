// With no sibling library at all, every gateway gives null functions and objects, and nothing
// fails: the callers' own fallbacks take over.

#include "CLS_DevManage.h"
#include "ColorManage.h"
#include "Logger.h"
#include "LxAppManager.h"
#include "Param.h"
#include "TaskPool.h"

#include <QtTest>

namespace {
typedef void* (*PFun_GetModuleFun)(const std::string&, const std::string&);
} // namespace

class tst_GatewaysNoLib : public QObject
{
    Q_OBJECT

private slots:
    void shouldGiveNullFunctions_data();
    void shouldGiveNullFunctions();
    void shouldGiveNullDevManageObjects();
    void shouldGiveDefaultSetting();
};

void tst_GatewaysNoLib::shouldGiveNullFunctions_data()
{
    QTest::addColumn<quintptr>("_uiGateway");
    QTest::addColumn<QString>("_qstrName");

    const auto addRow = [](const char* _pRow, PFun_GetModuleFun _pGateway, const char* _pName) {
        QTest::newRow(_pRow) << reinterpret_cast<quintptr>(_pGateway) << QString(_pName);
    };
    addRow("GetNamedColor", &ColorManage::GetModuleFun, "GetNamedColor");
    addRow("AddTmpTask", &TaskPool::GetModuleFun, "AddTmpTask");
    addRow("AddLoopTask", &TaskPool::GetModuleFun, "AddLoopTask");
    addRow("RemoveTask", &TaskPool::GetModuleFun, "RemoveTask");
    addRow("GetApp", &LxAppManager::GetModuleFun, "GetApp");
    addRow("GetAppData", &LxAppManager::GetModuleFun, "GetAppData");
    addRow("GetAppSignals", &LxAppManager::GetModuleFun, "GetAppSignals");
    addRow("GetParam", &Param::GetModuleFun, "GetParam");
    addRow("PrintLog", &Logger::GetModuleFun, "PrintLog");
    addRow("GetResourceTree", &DevManage::GetModuleFun, "GetResourceTree");
}

void tst_GatewaysNoLib::shouldGiveNullFunctions()
{
    QFETCH(quintptr, _uiGateway);
    QFETCH(QString, _qstrName);

    auto pGateway = reinterpret_cast<PFun_GetModuleFun>(_uiGateway);
    QVERIFY(nullptr == pGateway(_qstrName.toStdString(), ""));
}

void tst_GatewaysNoLib::shouldGiveNullDevManageObjects()
{
    QVERIFY(nullptr == DevManage::GetResourceTree());
    QVERIFY(nullptr == DevManage::GetDevFactory());
    QVERIFY(nullptr == DevManage::GetCustomTree());
}

void tst_GatewaysNoLib::shouldGiveDefaultSetting()
{
    QCOMPARE(QString::fromStdString(Param::GetParam("SystemConfig", "skin", "dark")), QString("dark"));
}

QTEST_GUILESS_MAIN(tst_GatewaysNoLib)
#include "tst_gateways_nolib.moc"
