// The application's signal hub: its 39 signals in order, with exact signatures, argument names and
// results, nothing else in its meta-object, and the two forms of SignSetVideoUpdate being one signal.

#include "I_AppSignals.h"

#include <QtTest>

namespace {
QByteArray ParameterNames(const QMetaMethod& _method)
{
    return _method.parameterNames().join(',');
}

// Lists the hub's own methods, one per line, for a readable failure.
QString DescribeMethods(const QMetaObject& _metaObject)
{
    QStringList qlstMethods;
    for (int i = _metaObject.methodOffset(); i < _metaObject.methodCount(); ++i)
        qlstMethods << QString::fromLatin1(_metaObject.method(i).methodSignature());
    return qlstMethods.join('\n');
}
} // namespace

// Receives the short form of SignSetVideoUpdate through a string-based connection.
class CLS_VideoUpdateReceiver : public QObject
{
    Q_OBJECT

public:
    QStringList m_qlstReceived;

public slots:
    void SlotShortForm(QString _qstrChannelID, void* _pParam, bool _blUpdate)
    {
        m_qlstReceived << QString("%1 %2 %3").arg(_qstrChannelID).arg(_pParam != nullptr).arg(_blUpdate);
    }
};

class CLS_TestAppSignals : public QObject
{
    Q_OBJECT

private slots:
    void shouldDeclareSignalInOrder_data();
    void shouldDeclareSignalInOrder();
    void shouldDeclareThirtyNineSignalsAndNoSlots();
    void shouldGiveIntResultTypeOnlyToDataSignals();
    void shouldDeliverShortVideoUpdateAsTypeZero();
    void shouldReachShortFormReceiverFromFullEmission();
    void shouldGiveSlotResultFromCommonDataToEmitter();
    void shouldCarryApplicationRecords();
    void shouldTakeParentFromConstructor();
};

void CLS_TestAppSignals::shouldDeclareSignalInOrder_data()
{
    QTest::addColumn<int>("iIndex");
    QTest::addColumn<QByteArray>("qbaSignature");
    QTest::addColumn<QByteArray>("qbaParameterNames");
    QTest::addColumn<QByteArray>("qbaReturnType");

    QTest::newRow("00 SignQuit(n_QuitFlag,QVariantMap)")
        << 0 << QByteArray("SignQuit(n_QuitFlag,QVariantMap)") << QByteArray("_iQuitFlag,_qmapParam")
        << QByteArray("void");
    QTest::newRow("01 SignShowUi(QVariantMap)")
        << 1 << QByteArray("SignShowUi(QVariantMap)") << QByteArray("_qmapParam") << QByteArray("void");
    QTest::newRow("02 SignCommonData(int,QVariantMap)") << 2 << QByteArray("SignCommonData(int,QVariantMap)")
                                                        << QByteArray("_iFlag,_mapData") << QByteArray("int");
    QTest::newRow("03 SignBusinessData(QString,QVariantMap,QString)")
        << 3 << QByteArray("SignBusinessData(QString,QVariantMap,QString)")
        << QByteArray("_qstrBusinessId,_mapData,_qstrUUId") << QByteArray("int");
    QTest::newRow("04 SignResizeView(double,double)")
        << 4 << QByteArray("SignResizeView(double,double)") << QByteArray("_dXScale,_dYScale")
        << QByteArray("void");
    QTest::newRow("05 SignDockClick()")
        << 5 << QByteArray("SignDockClick()") << QByteArray("") << QByteArray("void");
    QTest::newRow("06 SignShowBallonTips(QVariantMap)")
        << 6 << QByteArray("SignShowBallonTips(QVariantMap)") << QByteArray("_mapData") << QByteArray("void");
    QTest::newRow("07 SignConfigExport(QString,QString,QString)")
        << 7 << QByteArray("SignConfigExport(QString,QString,QString)")
        << QByteArray("_qstrModuleName,_qstrExportID,_qstrExportDir") << QByteArray("void");
    QTest::newRow("08 SignConfigImport(QString,QString,QString)")
        << 8 << QByteArray("SignConfigImport(QString,QString,QString)")
        << QByteArray("_qstrModuleName,_qstrImportID,_qstrImportDir") << QByteArray("void");
    QTest::newRow("09 SignConfigExportProgress(QString,int)")
        << 9 << QByteArray("SignConfigExportProgress(QString,int)")
        << QByteArray("_qstrMouleName,_progressValue") << QByteArray("void");
    QTest::newRow("10 SignConfigImportProgress(QString,int)")
        << 10 << QByteArray("SignConfigImportProgress(QString,int)")
        << QByteArray("_qstrMouleName,_progressValue") << QByteArray("void");
    QTest::newRow("11 SignConfigExportFinished(QString,QString)")
        << 11 << QByteArray("SignConfigExportFinished(QString,QString)")
        << QByteArray("_qstrModuleName,_qstrResultJsonStr") << QByteArray("void");
    QTest::newRow("12 SignConfigImportFinished(QString,QString)")
        << 12 << QByteArray("SignConfigImportFinished(QString,QString)")
        << QByteArray("_qstrModuleName,_qstrResultJsonStr") << QByteArray("void");
    QTest::newRow("13 SignPageFullScreen(QWidget*)")
        << 13 << QByteArray("SignPageFullScreen(QWidget*)") << QByteArray("_pWidget") << QByteArray("void");
    QTest::newRow("14 SignPageUnFullScreen(QWidget*)")
        << 14 << QByteArray("SignPageUnFullScreen(QWidget*)") << QByteArray("_pWidget") << QByteArray("void");
    QTest::newRow("15 SignSetVideoUpdate(QString,void*,bool,int)")
        << 15 << QByteArray("SignSetVideoUpdate(QString,void*,bool,int)")
        << QByteArray("_qstrChannelID,_pParam,_blUpdate,_iType") << QByteArray("void");
    QTest::newRow("16 SignSetVideoUpdate(QString,void*,bool)")
        << 16 << QByteArray("SignSetVideoUpdate(QString,void*,bool)")
        << QByteArray("_qstrChannelID,_pParam,_blUpdate") << QByteArray("void");
    QTest::newRow("17 SignP2pOperation(int,QString)")
        << 17 << QByteArray("SignP2pOperation(int,QString)") << QByteArray("_iOperationFlag,_qstrParam")
        << QByteArray("void");
    QTest::newRow("18 SignAddFavoriteGroup(CLS_CustomTreeNode)")
        << 18 << QByteArray("SignAddFavoriteGroup(CLS_CustomTreeNode)") << QByteArray("_node")
        << QByteArray("void");
    QTest::newRow("19 SignAddFavoriteChannels(QVector<QString>)")
        << 19 << QByteArray("SignAddFavoriteChannels(QVector<QString>)") << QByteArray("qvecChannelIds")
        << QByteArray("void");
    QTest::newRow("20 SignModifyFavoriteGroup(CLS_CustomTreeNode)")
        << 20 << QByteArray("SignModifyFavoriteGroup(CLS_CustomTreeNode)") << QByteArray("_node")
        << QByteArray("void");
    QTest::newRow("21 SignDeleteFavoriteGroup(QString)")
        << 21 << QByteArray("SignDeleteFavoriteGroup(QString)") << QByteArray("_qstrGroupId")
        << QByteArray("void");
    QTest::newRow("22 SignDeleteFavoriteChannel(CLS_CustomTreeNode)")
        << 22 << QByteArray("SignDeleteFavoriteChannel(CLS_CustomTreeNode)") << QByteArray("_node")
        << QByteArray("void");
    QTest::newRow("23 SignModifyFavoriteChannel(CLS_CustomTreeNode)")
        << 23 << QByteArray("SignModifyFavoriteChannel(CLS_CustomTreeNode)") << QByteArray("_node")
        << QByteArray("void");
    QTest::newRow("24 SignAPPMove(QEvent*)")
        << 24 << QByteArray("SignAPPMove(QEvent*)") << QByteArray("_pEvent") << QByteArray("void");
    QTest::newRow("25 SignEscPressed()")
        << 25 << QByteArray("SignEscPressed()") << QByteArray("") << QByteArray("void");
    QTest::newRow("26 SignDevAbilityUpdated(QString,bool)")
        << 26 << QByteArray("SignDevAbilityUpdated(QString,bool)")
        << QByteArray("_qstrChannelId,_blUpdatePtz") << QByteArray("void");
    QTest::newRow("27 SignDiskSpaceInfo(QVector<STRCT_DiskInfo>)")
        << 27 << QByteArray("SignDiskSpaceInfo(QVector<STRCT_DiskInfo>)") << QByteArray("_qvecDiskSpaceInfo")
        << QByteArray("void");
    QTest::newRow("28 SignUpdateDownLoadList(int,STRUCT_RemortExportInfo)")
        << 28 << QByteArray("SignUpdateDownLoadList(int,STRUCT_RemortExportInfo)")
        << QByteArray("_iCmd,_strctInfo") << QByteArray("void");
    QTest::newRow("29 SignStopExport(int,int)") << 29 << QByteArray("SignStopExport(int,int)")
                                                << QByteArray("_iIndex,_iDownloadType") << QByteArray("void");
    QTest::newRow("30 SignReExport(int,int)") << 30 << QByteArray("SignReExport(int,int)")
                                              << QByteArray("_iIndex,_iDownloadType") << QByteArray("void");
    QTest::newRow("31 SignClearRecord(int,int)")
        << 31 << QByteArray("SignClearRecord(int,int)") << QByteArray("_iIndex,_iDownloadType")
        << QByteArray("void");
    QTest::newRow("32 SignClearAllExport(int)")
        << 32 << QByteArray("SignClearAllExport(int)") << QByteArray("_iDownloadType") << QByteArray("void");
    QTest::newRow("33 SignUsbKeyboardStatusChanged(bool)")
        << 33 << QByteArray("SignUsbKeyboardStatusChanged(bool)") << QByteArray("_blOnline")
        << QByteArray("void");
    QTest::newRow("34 SignSetUsbDebugViewVisiable(bool)")
        << 34 << QByteArray("SignSetUsbDebugViewVisiable(bool)") << QByteArray("_blVisiable")
        << QByteArray("void");
    QTest::newRow("35 SignSetFocus(QWidget*,bool)") << 35 << QByteArray("SignSetFocus(QWidget*,bool)")
                                                    << QByteArray("_pWidget,_blFocus") << QByteArray("void");
    QTest::newRow("36 SignSendRequset(int,QString,QString)")
        << 36 << QByteArray("SignSendRequset(int,QString,QString)")
        << QByteArray("_iType,_qstrModName,_qstrJson") << QByteArray("void");
    QTest::newRow("37 SignSoundStateChanged(QVariantMap)")
        << 37 << QByteArray("SignSoundStateChanged(QVariantMap)") << QByteArray("_qmapParam")
        << QByteArray("void");
    QTest::newRow("38 SignDebugViewStatueChange(bool)") << 38 << QByteArray("SignDebugViewStatueChange(bool)")
                                                        << QByteArray("_blStatus") << QByteArray("void");
}

void CLS_TestAppSignals::shouldDeclareSignalInOrder()
{
    QFETCH(int, iIndex);
    QFETCH(QByteArray, qbaSignature);
    QFETCH(QByteArray, qbaParameterNames);
    QFETCH(QByteArray, qbaReturnType);

    const QMetaObject& metaObject = I_AppSignals::staticMetaObject;
    QVERIFY2(metaObject.methodOffset() + iIndex < metaObject.methodCount(),
             qPrintable(DescribeMethods(metaObject)));
    const QMetaMethod method = metaObject.method(metaObject.methodOffset() + iIndex);
    // Found under its signature as Qt looks it up: Qt 6 keeps QVector<QString> as "QStringList"
    // and QVector<T> as "QList<T>", one type with the Qt 5 spelling.
    QCOMPARE(metaObject.indexOfSignal(QMetaObject::normalizedSignature(qbaSignature.constData()).constData()),
             metaObject.methodOffset() + iIndex);
    QCOMPARE(method.methodType(), QMetaMethod::Signal);
    QCOMPARE(ParameterNames(method), qbaParameterNames);
    QCOMPARE(QByteArray(method.typeName()), qbaReturnType);
}

void CLS_TestAppSignals::shouldDeclareThirtyNineSignalsAndNoSlots()
{
    const QMetaObject& metaObject = I_AppSignals::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QObject::staticMetaObject);
    QVERIFY2(metaObject.methodCount() - metaObject.methodOffset() == 39,
             qPrintable(DescribeMethods(metaObject)));
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
        const QMetaMethod method = metaObject.method(i);
        QVERIFY2(method.methodType() == QMetaMethod::Signal, method.methodSignature().constData());
    }
    QCOMPARE(metaObject.propertyCount(), metaObject.propertyOffset());
}

void CLS_TestAppSignals::shouldGiveIntResultTypeOnlyToDataSignals()
{
    const QMetaObject& metaObject = I_AppSignals::staticMetaObject;
    QStringList qlstIntSignals;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
        const QMetaMethod method = metaObject.method(i);
        if (method.returnType() == QMetaType::Int)
            qlstIntSignals << QString::fromLatin1(method.name());
        else
            QVERIFY2(method.returnType() == QMetaType::Void, method.methodSignature().constData());
    }
    QCOMPARE(qlstIntSignals, QStringList({"SignCommonData", "SignBusinessData"}));
}

void CLS_TestAppSignals::shouldDeliverShortVideoUpdateAsTypeZero()
{
    I_AppSignals clsSignals;
    QStringList qlstReceived;
    connect(&clsSignals, &I_AppSignals::SignSetVideoUpdate, this,
            [&qlstReceived](QString _qstrChannelID, void*, bool _blUpdate, int _iType) {
                qlstReceived << QString("%1 %2 %3").arg(_qstrChannelID).arg(_blUpdate).arg(_iType);
            });

    int iParam = 0;
    emit clsSignals.SignSetVideoUpdate("ch1", &iParam, true);
    emit clsSignals.SignSetVideoUpdate("ch2", &iParam, false, 3);

    QCOMPARE(qlstReceived, QStringList({"ch1 1 0", "ch2 0 3"}));
}

void CLS_TestAppSignals::shouldReachShortFormReceiverFromFullEmission()
{
    // The short form is a clone of the full one: a receiver connected by the short signature hears
    // every emission of the signal.
    I_AppSignals clsSignals;
    CLS_VideoUpdateReceiver clsReceiver;
    QVERIFY(connect(&clsSignals, SIGNAL(SignSetVideoUpdate(QString, void*, bool)), &clsReceiver,
                    SLOT(SlotShortForm(QString, void*, bool))));

    int iParam = 0;
    emit clsSignals.SignSetVideoUpdate("ch1", &iParam, true, 5);
    emit clsSignals.SignSetVideoUpdate("ch2", nullptr, false);

    QCOMPARE(clsReceiver.m_qlstReceived, QStringList({"ch1 1 1", "ch2 0 0"}));
}

void CLS_TestAppSignals::shouldGiveSlotResultFromCommonDataToEmitter()
{
    I_AppSignals clsSignals;
    QVariantMap qmapSeen;
    connect(
        &clsSignals, &I_AppSignals::SignCommonData, this,
        [&qmapSeen](int _iFlag, QVariantMap _mapData) {
            qmapSeen = _mapData;
            return _iFlag * 10;
        },
        Qt::DirectConnection);

    const int iResult = emit clsSignals.SignCommonData(4, QVariantMap{{"key", 1}});

    QCOMPARE(iResult, 40);
    QCOMPARE(qmapSeen.value("key").toInt(), 1);
}

void CLS_TestAppSignals::shouldCarryApplicationRecords()
{
    I_AppSignals clsSignals;
    QVector<STRCT_DiskInfo> qvecSeen;
    STRUCT_RemortExportInfo strctSeen;
    n_QuitFlag iQuitSeen = QUIT_FLAG_EXIT;
    connect(&clsSignals, &I_AppSignals::SignDiskSpaceInfo, this,
            [&qvecSeen](QVector<STRCT_DiskInfo> _qvecInfo) { qvecSeen = _qvecInfo; });
    connect(&clsSignals, &I_AppSignals::SignUpdateDownLoadList, this,
            [&strctSeen](int, STRUCT_RemortExportInfo _strctInfo) { strctSeen = _strctInfo; });
    connect(&clsSignals, &I_AppSignals::SignQuit, this,
            [&iQuitSeen](n_QuitFlag _iQuitFlag, QVariantMap) { iQuitSeen = _iQuitFlag; });

    STRCT_DiskInfo stDisk;
    stDisk.m_qstrName = "disk0";
    stDisk.m_llFreeSpace = 42;
    STRUCT_RemortExportInfo strctInfo;
    strctInfo.m_iIndex = 3;
    emit clsSignals.SignDiskSpaceInfo({stDisk});
    emit clsSignals.SignUpdateDownLoadList(1, strctInfo);
    emit clsSignals.SignQuit(QUIT_FLAG_RESTART, QVariantMap());

    QCOMPARE(qvecSeen.size(), 1);
    QCOMPARE(qvecSeen.first().m_qstrName, QString("disk0"));
    QCOMPARE(qvecSeen.first().m_llFreeSpace, qint64(42));
    QCOMPARE(strctSeen.m_iIndex, 3);
    QCOMPARE(iQuitSeen, QUIT_FLAG_RESTART);
}

void CLS_TestAppSignals::shouldTakeParentFromConstructor()
{
    QObject clsParent;
    auto* pSignals = new I_AppSignals(&clsParent);
    QCOMPARE(pSignals->parent(), &clsParent);

    I_AppSignals clsOrphan;
    QCOMPARE(clsOrphan.parent(), nullptr);
}

QTEST_GUILESS_MAIN(CLS_TestAppSignals)
#include "tst_appsignals.moc"
