// DevManage's three gateway functions when their function can't be bound, either because the
// library lacks it or because there is no library at all (two programs built from this file):
// each call gives null and sends one level 3 record of module "DevManage".

#include "CLS_DevManage.h"
#include "CLS_LogRecords.h"

#include <QtTest>

namespace {
void* CallGateway(int _iIndex)
{
    switch (_iIndex) {
    case 0:
        return DevManage::GetResourceTree();
    case 1:
        return DevManage::GetDevFactory();
    default:
        return DevManage::GetCustomTree();
    }
}
} // namespace

class tst_GatewaysDevManageMissing : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void shouldGiveNullAndLogFailure_data();
    void shouldGiveNullAndLogFailure();
    void shouldLogOnEveryCall();
};

void tst_GatewaysDevManageMissing::init()
{
    CLS_LogRecords::Take();
}

void tst_GatewaysDevManageMissing::shouldGiveNullAndLogFailure_data()
{
    QTest::addColumn<int>("_iGateway");
    QTest::addColumn<QString>("_qstrFunction");
    QTest::addColumn<QString>("_qstrText");

    QTest::newRow("resource tree") << 0 << "GetResourceTree"
                                   << "nullptr == pFun_GetResourceTree ";
    QTest::newRow("device factory") << 1 << "GetDevFactory"
                                    << "nullptr == pFun_GetDevFactory ";
    QTest::newRow("custom tree") << 2 << "GetCustomTree"
                                 << "nullptr == pFun_GetCustomTree ";
}

void tst_GatewaysDevManageMissing::shouldGiveNullAndLogFailure()
{
    QFETCH(int, _iGateway);
    QFETCH(QString, _qstrFunction);
    QFETCH(QString, _qstrText);

    QVERIFY(nullptr == CallGateway(_iGateway));

    const std::vector<STRCT_LogRecord> vecRecords = CLS_LogRecords::Take();
    QCOMPARE(CLS_LogRecords::Lines(vecRecords),
             QStringList{QString("3|DevManage|%1|%2").arg(_qstrFunction, _qstrText)});
    const QString qstrFile = QString::fromStdString(vecRecords.front().m_strFile);
    QVERIFY2(qstrFile.endsWith("SDKLib/DevManage/CLS_DevManage.cpp"), qPrintable(qstrFile));
    QVERIFY(vecRecords.front().m_iLine > 0);
}

void tst_GatewaysDevManageMissing::shouldLogOnEveryCall()
{
    QVERIFY(nullptr == DevManage::GetResourceTree());
    QVERIFY(nullptr == DevManage::GetResourceTree());
    QVERIFY(nullptr == DevManage::GetCustomTree());

    QCOMPARE(CLS_LogRecords::Lines(CLS_LogRecords::Take()),
             QStringList({"3|DevManage|GetResourceTree|nullptr == pFun_GetResourceTree ",
                          "3|DevManage|GetResourceTree|nullptr == pFun_GetResourceTree ",
                          "3|DevManage|GetCustomTree|nullptr == pFun_GetCustomTree "}));
}

QTEST_GUILESS_MAIN(tst_GatewaysDevManageMissing)
#include "tst_gateways_devmanage_missing.moc"
