// The custom-tree manager's interface: its seven signals in order, the two move signals carrying
// the int of the connected slot back to the emitter, and a test implementation used through the base.

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

CLS_CustomTreeNode MakeNode(const QString& _qstrTreeId, const QString& _qstrParentId)
{
    CLS_CustomTreeNode clsNode;
    clsNode.m_qstrTreeId = _qstrTreeId;
    clsNode.m_qstrTreeParentId = _qstrParentId;
    return clsNode;
}
} // namespace

// A custom-tree manager with one root "r" holding "a" and "b", and a lone root "s".
class CLS_TestCustomTreeManage : public I_CustomTreeManage
{
public:
    explicit CLS_TestCustomTreeManage(bool* _pblDestroyed = nullptr) : m_pblDestroyed(_pblDestroyed)
    {
        for (const CLS_CustomTreeNode& clsNode :
             {MakeNode("r", ""), MakeNode("a", "r"), MakeNode("b", "r"), MakeNode("s", "")})
            m_qmapNodes.insert(clsNode.m_qstrTreeId, clsNode);
    }
    ~CLS_TestCustomTreeManage() override
    {
        if (m_pblDestroyed != nullptr)
            *m_pblDestroyed = true;
    }

    STRCT_DevResult GetAllNodes(QMap<QString, CLS_CustomTreeNode>& _qmapNodes, int _iFlag) override
    {
        m_qvecFlags << _iFlag;
        for (auto it = m_qmapNodes.cbegin(); it != m_qmapNodes.cend(); ++it)
            _qmapNodes.insert(it.key(), it.value());
        return STRCT_DevResult();
    }

    STRCT_DevResult GetNodesOfRoot(const QString& _qstrRootId, QMap<QString, CLS_CustomTreeNode>& _qmapNodes,
                                   int _iFlag) override
    {
        m_qvecFlags << _iFlag;
        STRCT_DevResult stResult;
        if (!m_qmapNodes.contains(_qstrRootId)) {
            stResult.m_iCode = -1;
            stResult.m_qstrMessage = "no such root";
            return stResult;
        }
        _qmapNodes.insert(_qstrRootId, m_qmapNodes.value(_qstrRootId));
        for (const CLS_CustomTreeNode& clsNode : m_qmapNodes) {
            if (clsNode.m_qstrTreeParentId == _qstrRootId)
                _qmapNodes.insert(clsNode.m_qstrTreeId, clsNode);
        }
        return stResult;
    }

    QVector<int> m_qvecFlags;

private:
    QMap<QString, CLS_CustomTreeNode> m_qmapNodes;
    bool* m_pblDestroyed = nullptr;
};

// Stands in for a device tree: answers the move signals with a result of its own.
class CLS_MoveReceiver : public QObject
{
    Q_OBJECT

public:
    QStringList m_qlstCalls;

public slots:
    int MoveUpOneRow(QString _qstrSrcId, QString _qstrDesId)
    {
        m_qlstCalls << "up " + _qstrSrcId + " " + _qstrDesId;
        return 0;
    }
    int MoveDownOneRow(QString _qstrSrcId, QString _qstrDesId)
    {
        m_qlstCalls << "down " + _qstrSrcId + " " + _qstrDesId;
        return -1;
    }
    int AnswerSeven(QString, QString) { return 7; }
};

class CLS_TestCustomTreeManageContract : public QObject
{
    Q_OBJECT

private slots:
    void shouldDeclareSignalInOrder_data();
    void shouldDeclareSignalInOrder();
    void shouldDeclareSevenSignalsAndNoSlots();
    void shouldGiveMoveSignalsIntResult();
    void shouldGiveSlotResultToEmitterOverDirectConnection();
    void shouldGiveSlotResultThroughStringConnection();
    void shouldGiveZeroWhenNoSlotAnswers();
    void shouldBeAbstract();
    void shouldServeNodesThroughBasePointer();
    void shouldAppendNodesOfRootWithRootItself();
    void shouldReportUnknownRootWithNegativeCode();
    void shouldRunDerivedDestructorThroughBasePointer();
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

void CLS_TestCustomTreeManageContract::shouldGiveSlotResultToEmitterOverDirectConnection()
{
    CLS_TestCustomTreeManage clsManage;
    CLS_MoveReceiver clsReceiver;
    connect(&clsManage, &I_CustomTreeManage::SignMoveUpOneRow, &clsReceiver, &CLS_MoveReceiver::AnswerSeven,
            Qt::DirectConnection);
    connect(&clsManage, &I_CustomTreeManage::SignMoveDownOneRow, &clsReceiver,
            &CLS_MoveReceiver::MoveDownOneRow, Qt::DirectConnection);

    const int iUp = emit clsManage.SignMoveUpOneRow("a", "b");
    const int iDown = emit clsManage.SignMoveDownOneRow("b", "a");

    QCOMPARE(iUp, 7);
    QCOMPARE(iDown, -1);
    QCOMPARE(clsReceiver.m_qlstCalls, QStringList({"down b a"}));
}

void CLS_TestCustomTreeManageContract::shouldGiveSlotResultThroughStringConnection()
{
    CLS_TestCustomTreeManage clsManage;
    CLS_MoveReceiver clsReceiver;
    QVERIFY(connect(&clsManage, SIGNAL(SignMoveUpOneRow(QString, QString)), &clsReceiver,
                    SLOT(AnswerSeven(QString, QString))));

    QCOMPARE(emit clsManage.SignMoveUpOneRow("a", "b"), 7);
}

void CLS_TestCustomTreeManageContract::shouldGiveZeroWhenNoSlotAnswers()
{
    CLS_TestCustomTreeManage clsManage;
    QCOMPARE(emit clsManage.SignMoveUpOneRow("a", "b"), 0);
    QCOMPARE(emit clsManage.SignMoveDownOneRow("a", "b"), 0);
}

void CLS_TestCustomTreeManageContract::shouldBeAbstract()
{
    QVERIFY(std::is_abstract<I_CustomTreeManage>::value);
    QVERIFY(std::has_virtual_destructor<I_CustomTreeManage>::value);
    QVERIFY(!std::is_abstract<CLS_TestCustomTreeManage>::value);
}

void CLS_TestCustomTreeManageContract::shouldServeNodesThroughBasePointer()
{
    CLS_TestCustomTreeManage clsManage;
    I_CustomTreeManage* pManage = &clsManage;
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    qmapNodes.insert("kept", MakeNode("kept", "")); // output maps are appended to

    const STRCT_DevResult stResult = pManage->GetAllNodes(qmapNodes, 0);

    QCOMPARE(stResult.m_iCode, 0);
    QCOMPARE(qmapNodes.keys(), QStringList({"a", "b", "kept", "r", "s"}));
    QCOMPARE(qmapNodes.value("a").m_qstrTreeParentId, QString("r"));
    QCOMPARE(clsManage.m_qvecFlags, QVector<int>({0}));
}

void CLS_TestCustomTreeManageContract::shouldAppendNodesOfRootWithRootItself()
{
    CLS_TestCustomTreeManage clsManage;
    I_CustomTreeManage* pManage = &clsManage;
    QMap<QString, CLS_CustomTreeNode> qmapNodes;

    const STRCT_DevResult stResult = pManage->GetNodesOfRoot("r", qmapNodes, 0);

    QVERIFY(stResult.m_iCode >= 0);
    QCOMPARE(qmapNodes.keys(), QStringList({"a", "b", "r"}));
}

void CLS_TestCustomTreeManageContract::shouldReportUnknownRootWithNegativeCode()
{
    CLS_TestCustomTreeManage clsManage;
    I_CustomTreeManage* pManage = &clsManage;
    QMap<QString, CLS_CustomTreeNode> qmapNodes;

    const STRCT_DevResult stResult = pManage->GetNodesOfRoot("missing", qmapNodes, 0);

    QVERIFY(stResult.m_iCode < 0);
    QVERIFY(qmapNodes.isEmpty());
}

void CLS_TestCustomTreeManageContract::shouldRunDerivedDestructorThroughBasePointer()
{
    bool blDestroyed = false;
    I_CustomTreeManage* pManage = new CLS_TestCustomTreeManage(&blDestroyed);
    QSignalSpy spyDestroyed(pManage, &QObject::destroyed);
    delete pManage;
    QVERIFY(blDestroyed);
    QCOMPARE(spyDestroyed.count(), 1);
}

QTEST_GUILESS_MAIN(CLS_TestCustomTreeManageContract)
#include "tst_customtreemanage.moc"
