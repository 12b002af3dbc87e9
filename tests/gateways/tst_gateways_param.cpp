// Param::GetParam with the settings library (stored text, else the default) and without it (always
// the default). Two programs are built from this file; WGT_PARAM_LIBRARY tells which one this is.

#include "Param.h"

#include <QtTest>

#include <dlfcn.h>

namespace {
typedef void (*PFun_ParamTest_LastCall)(std::string* _pOut);

std::string LastLibraryCall()
{
    std::string strCall;
    void* pHandle = dlopen("libLxParam.so", RTLD_NOW | RTLD_NOLOAD);
    auto pFun = nullptr == pHandle
                    ? nullptr
                    : reinterpret_cast<PFun_ParamTest_LastCall>(dlsym(pHandle, "ParamTest_LastCall"));
    if (nullptr != pFun) {
        pFun(&strCall);
    }
    return strCall;
}
} // namespace

class tst_GatewaysParam : public QObject
{
    Q_OBJECT

private slots:
    void shouldAnswerSetting_data();
    void shouldAnswerSetting();
};

void tst_GatewaysParam::shouldAnswerSetting_data()
{
    QTest::addColumn<QString>("_qstrSection");
    QTest::addColumn<QString>("_qstrKey");
    QTest::addColumn<QString>("_qstrDefault");
    QTest::addColumn<QString>("_qstrExpected");

#ifdef WGT_PARAM_LIBRARY
    QTest::newRow("stored skin") << "SystemConfig"
                                 << "skin"
                                 << "dark"
                                 << "blue";
    QTest::newRow("unknown key") << "SystemConfig"
                                 << "language"
                                 << "en"
                                 << "en";
    QTest::newRow("unknown section") << "Nowhere"
                                     << "skin"
                                     << "dark"
                                     << "dark";
    QTest::newRow("stored empty text") << "Tree"
                                       << "emptyValue"
                                       << "fallback"
                                       << "";
    QTest::newRow("unknown, empty default") << "Tree"
                                            << "missing"
                                            << ""
                                            << "";
#else
    QTest::newRow("skin") << "SystemConfig"
                          << "skin"
                          << "dark"
                          << "dark";
    QTest::newRow("other default") << "SystemConfig"
                                   << "skin"
                                   << "light"
                                   << "light";
    QTest::newRow("empty default") << "Tree"
                                   << "emptyValue"
                                   << ""
                                   << "";
    QTest::newRow("empty names") << ""
                                 << ""
                                 << "x"
                                 << "x";
#endif
}

void tst_GatewaysParam::shouldAnswerSetting()
{
    QFETCH(QString, _qstrSection);
    QFETCH(QString, _qstrKey);
    QFETCH(QString, _qstrDefault);
    QFETCH(QString, _qstrExpected);

    const std::string strAnswer =
        Param::GetParam(_qstrSection.toStdString(), _qstrKey.toStdString(), _qstrDefault.toStdString());

    QCOMPARE(QString::fromStdString(strAnswer), _qstrExpected);
#ifdef WGT_PARAM_LIBRARY
    // Section, key and default reach the library unchanged.
    QCOMPARE(QString::fromStdString(LastLibraryCall()), _qstrSection + "|" + _qstrKey + "|" + _qstrDefault);
#else
    QVERIFY(nullptr == Param::GetModuleFun("GetParam", ""));
    QVERIFY(LastLibraryCall().empty());
#endif
}

QTEST_GUILESS_MAIN(tst_GatewaysParam)
#include "tst_gateways_param.moc"
