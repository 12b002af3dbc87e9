// The abstract interfaces of the sibling libraries' objects: each is abstract with a virtual
// destructor; the result record's defaults and the parameter code of the image channel. How the
// library itself calls these interfaces is tested against the reference siblings (the status thread
// and device tree tests), not against implementations written here.

#include "CLS_IApp.h"
#include "CLS_IDevFactory.h"
#include "CLS_IResourceTree.h"
#include "STRCT_DevResult.h"

#include <QtTest>

#include <type_traits>

class CLS_TestSiblingInterfaces : public QObject
{
    Q_OBJECT

private slots:
    void shouldStartResultAsSuccessWithNothingElse();
    void shouldMakeEveryInterfaceAbstractWithVirtualDestructor();
    void shouldNameImageChannelParameter();
};

void CLS_TestSiblingInterfaces::shouldStartResultAsSuccessWithNothingElse()
{
    STRCT_DevResult stResult;
    QCOMPARE(stResult.m_iCode, 0);
    QVERIFY(stResult.m_qstrMessage.isEmpty());
    QVERIFY(stResult.m_qmapExtend.isEmpty());
    QVERIFY((std::is_same<decltype(stResult.m_qmapExtend), QMap<QString, QString>>::value));
}

void CLS_TestSiblingInterfaces::shouldMakeEveryInterfaceAbstractWithVirtualDestructor()
{
    QVERIFY(std::is_abstract<CLS_IResourceTree>::value);
    QVERIFY(std::is_abstract<CLS_IDevFactory>::value);
    QVERIFY(std::is_abstract<CLS_IApp>::value);
    QVERIFY(std::is_abstract<CLS_IAppData>::value);
    QVERIFY(std::has_virtual_destructor<CLS_IResourceTree>::value);
    QVERIFY(std::has_virtual_destructor<CLS_IDevFactory>::value);
    QVERIFY(std::has_virtual_destructor<CLS_IApp>::value);
    QVERIFY(std::has_virtual_destructor<CLS_IAppData>::value);
    QVERIFY(std::has_virtual_destructor<CLS_IDataManager>::value);
}

void CLS_TestSiblingInterfaces::shouldNameImageChannelParameter()
{
    QCOMPARE(PARAM_IMAGE_CHANNEL, 10072);
    constexpr int iAtCompileTime = PARAM_IMAGE_CHANNEL; // usable where a constant expression is needed
    QCOMPARE(iAtCompileTime, 10072);
}

QTEST_GUILESS_MAIN(CLS_TestSiblingInterfaces)
#include "tst_siblinginterfaces.moc"
