// The custom-tree manager's interface: its seven signals in order, the two move signals declared with
// an int result, and an abstract class with a virtual destructor. How the device tree answers the
// move signals is tested with the reference device layer (tst_DeviceTreeChanges).

#include "I_CustomTreeManage.h"

#include <QtTest>

#include <type_traits>

namespace {
QString DescribeMethods(const QMetaObject& _metaObject)
{
    QStringList qlstMethods;
    for (int i = _metaObject.methodOffset(); i < _metaObject.methodCount(); ++i)
        qlstMethods << QString::fromLatin1(_metaObject.method(i).methodSignature());
    return qlstMethods.join('\n');
}
} // namespace

class CLS_TestCustomTreeManageContract : public QObject
{
    Q_OBJECT

private slots:
    void shouldDeclareSignalInOrder_data();
    void shouldDeclareSignalInOrder();
    void shouldDeclareSevenSignalsAndNoSlots();
    void shouldGiveMoveSignalsIntResult();
    void shouldBeAbstract();
};

void CLS_TestCustomTreeManageContract::shouldDeclareSignalInOrder_data()
{
    QTest::addColumn<int>("iIndex");
    QTest::addColumn<QByteArray>("qbaSignature");
    QTest::addColumn<QByteArray>("qbaParameterNames");
    QTest::addColumn<QByteArray>("qbaReturnType");

    QTest::newRow("00 SignDataError()")
        << 0 << QByteArray("SignDataError()") << QByteArray("") << QByteArray("void");
    QTest::newRow("01 SignInitFinished()")
        << 1 << QByteArray("SignInitFinished()") << QByteArray("") << QByteArray("void");
    QTest::newRow("02 SignAddCustomTreeData(QVariant)") << 2 << QByteArray("SignAddCustomTreeData(QVariant)")
                                                        << QByteArray("_qvarItems") << QByteArray("void");
    QTest::newRow("03 SignDeleteCustomTreeData(QVariant)")
        << 3 << QByteArray("SignDeleteCustomTreeData(QVariant)") << QByteArray("_qvarItems")
        << QByteArray("void");
    QTest::newRow("04 SignModifyCustomTreeData(QVariant)")
        << 4 << QByteArray("SignModifyCustomTreeData(QVariant)") << QByteArray("_qvarItems")
        << QByteArray("void");
    QTest::newRow("05 SignMoveUpOneRow(QString,QString)")
        << 5 << QByteArray("SignMoveUpOneRow(QString,QString)") << QByteArray("_qstrSrcId,_qstrDesId")
        << QByteArray("int");
    QTest::newRow("06 SignMoveDownOneRow(QString,QString)")
        << 6 << QByteArray("SignMoveDownOneRow(QString,QString)") << QByteArray("_qstrSrcId,_qstrDesId")
        << QByteArray("int");
}

void CLS_TestCustomTreeManageContract::shouldDeclareSignalInOrder()
{
    QFETCH(int, iIndex);
    QFETCH(QByteArray, qbaSignature);
    QFETCH(QByteArray, qbaParameterNames);
    QFETCH(QByteArray, qbaReturnType);

    const QMetaObject& metaObject = I_CustomTreeManage::staticMetaObject;
    QVERIFY2(metaObject.methodOffset() + iIndex < metaObject.methodCount(),
             qPrintable(DescribeMethods(metaObject)));
    const QMetaMethod method = metaObject.method(metaObject.methodOffset() + iIndex);
    // Found under its signature as Qt looks it up: Qt 6 keeps QVector<QString> as "QStringList"
    // and QVector<T> as "QList<T>", one type with the Qt 5 spelling.
    QCOMPARE(metaObject.indexOfSignal(QMetaObject::normalizedSignature(qbaSignature.constData()).constData()),
             metaObject.methodOffset() + iIndex);
    QCOMPARE(method.methodType(), QMetaMethod::Signal);
    QCOMPARE(method.parameterNames().join(','), qbaParameterNames);
    QCOMPARE(QByteArray(method.typeName()), qbaReturnType);
}

void CLS_TestCustomTreeManageContract::shouldDeclareSevenSignalsAndNoSlots()
{
    const QMetaObject& metaObject = I_CustomTreeManage::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QObject::staticMetaObject);
    QVERIFY2(metaObject.methodCount() - metaObject.methodOffset() == 7,
             qPrintable(DescribeMethods(metaObject)));
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i)
        QVERIFY2(metaObject.method(i).methodType() == QMetaMethod::Signal,
                 metaObject.method(i).methodSignature().constData());
}

void CLS_TestCustomTreeManageContract::shouldGiveMoveSignalsIntResult()
{
    const QMetaObject& metaObject = I_CustomTreeManage::staticMetaObject;
    for (const char* pSignature :
         {"SignMoveUpOneRow(QString,QString)", "SignMoveDownOneRow(QString,QString)"}) {
        const int iIndex = metaObject.indexOfSignal(pSignature);
        QVERIFY2(iIndex >= 0, pSignature);
        QCOMPARE(metaObject.method(iIndex).returnType(), int(QMetaType::Int));
    }
    QVERIFY(
        (std::is_same<decltype(std::declval<I_CustomTreeManage&>().SignMoveUpOneRow(QString(), QString())),
                      int>::value));
    QVERIFY(
        (std::is_same<decltype(std::declval<I_CustomTreeManage&>().SignMoveDownOneRow(QString(), QString())),
                      int>::value));
}

void CLS_TestCustomTreeManageContract::shouldBeAbstract()
{
    QVERIFY(std::is_abstract<I_CustomTreeManage>::value);
    QVERIFY(std::has_virtual_destructor<I_CustomTreeManage>::value);
}

QTEST_GUILESS_MAIN(CLS_TestCustomTreeManageContract)
#include "tst_customtreemanage.moc"
