// Shared constants: every value exactly, the vehicle colour table fixed at load time and the empty
// upload callback.

#include "ConstDefine.h"

#include <QtTest>

#include <QTranslator>
#include <type_traits>

// Answers every text of the context "QObject" with a marked text, to tell a load-time translation
// from a late one.
class CLS_MarkingTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* _pContext, const char* _pSourceText, const char* = nullptr,
                      int = -1) const override
    {
        if (qstrcmp(_pContext, "QObject") != 0)
            return QString();
        return QStringLiteral("translated:") + QString::fromLatin1(_pSourceText);
    }
};

class CLS_TestConstants : public QObject
{
    Q_OBJECT

private slots:
    void shouldHoldExactValue_data();
    void shouldHoldExactValue();
    void shouldKeepNearTwinModuleNamesApart();
    void shouldGiveEveryModuleNameItsOwnValue();

    void shouldHoldThirtyTwoColoursWithoutGap();
    void shouldMapColourCodeToItsText_data();
    void shouldMapColourCodeToItsText();
    void shouldGiveNoTextOutsideColourCodes_data();
    void shouldGiveNoTextOutsideColourCodes();
    void shouldKeepLoadTimeTextsWhenTranslatorComesLater();

    void shouldDeclareCallbackType();
    void shouldLeaveUploadCallbackEmpty();
};

void CLS_TestConstants::shouldHoldExactValue_data()
{
    QTest::addColumn<QString>("qstrActual");
    QTest::addColumn<QString>("qstrExpected");

    QTest::newRow("CONST_qstrDefaultAllTemplateID")
        << CONST_qstrDefaultAllTemplateID << QStringLiteral("default_template_id_alldays");
    QTest::newRow("CONST_qstrDefaultClientID") << CONST_qstrDefaultClientID << QStringLiteral("default");
    QTest::newRow("CONST_qstrKvHost") << CONST_qstrKvHost << QStringLiteral("KV_HOST");
    QTest::newRow("CONST_qstrAdminUserId") << CONST_qstrAdminUserId << QStringLiteral("admin");
    QTest::newRow("s_const_qstrExtendData_VideoItemInfo")
        << s_const_qstrExtendData_VideoItemInfo << QStringLiteral("VideoItemInfo");
    QTest::newRow("CONST_qstrModuleTypeLumo7Client")
        << CONST_qstrModuleTypeLumo7Client << QStringLiteral("LxClient");
    QTest::newRow("CONST_qstrModuTypeHomePage") << CONST_qstrModuTypeHomePage << QStringLiteral("HomePage");
    QTest::newRow("CONST_qstrModuTypeLogin") << CONST_qstrModuTypeLogin << QStringLiteral("Login");
    QTest::newRow("CONST_qstrModuTypeRealPlay") << CONST_qstrModuTypeRealPlay << QStringLiteral("Realplay");
    QTest::newRow("CONST_qstrModuTypePlayBack") << CONST_qstrModuTypePlayBack << QStringLiteral("Playback");
    QTest::newRow("CONST_qstrModuTypeDeviceManager")
        << CONST_qstrModuTypeDeviceManager << QStringLiteral("DeviceManager");
    QTest::newRow("CONST_qstrModuTypeDeviceManage")
        << CONST_qstrModuTypeDeviceManage << QStringLiteral("DeviceManage");
    QTest::newRow("CONST_qstrModuTypeSystem") << CONST_qstrModuTypeSystem << QStringLiteral("System");
    QTest::newRow("CONST_qstrModuTypeUserManager")
        << CONST_qstrModuTypeUserManager << QStringLiteral("UserManager");
    QTest::newRow("CONST_qstrModuTypeDownload") << CONST_qstrModuTypeDownload << QStringLiteral("Download");
    QTest::newRow("CONST_qstrModuTypeAlarmRecord")
        << CONST_qstrModuTypeAlarmRecord << QStringLiteral("AlarmRecords");
    QTest::newRow("CONST_qstrModuTypeMiniRealPlay")
        << CONST_qstrModuTypeMiniRealPlay << QStringLiteral("MiniRealplay");
    QTest::newRow("CONST_qstrModuTypeMiniPlayBack")
        << CONST_qstrModuTypeMiniPlayBack << QStringLiteral("MiniPlayback");
    QTest::newRow("CONST_qstrModuTypeLogRecord")
        << CONST_qstrModuTypeLogRecord << QStringLiteral("LogRecord");
    QTest::newRow("CONST_qstrModuTypeDaemon") << CONST_qstrModuTypeDaemon << QStringLiteral("Daemon");
    QTest::newRow("CONST_qstrModuTypeStatistics")
        << CONST_qstrModuTypeStatistics << QStringLiteral("Statistics");
    QTest::newRow("CONST_qstrModuTypeFaceStatistics")
        << CONST_qstrModuTypeFaceStatistics << QStringLiteral("FaceStatistic");
    QTest::newRow("CONST_qstrModuTypeAlarmConfig")
        << CONST_qstrModuTypeAlarmConfig << QStringLiteral("AlarmConfig");
    QTest::newRow("CONST_qstrModuTypeVCARetrieval")
        << CONST_qstrModuTypeVCARetrieval << QStringLiteral("VCARetrieval");
    QTest::newRow("CONST_qstrModuTypeFaceRetrieval")
        << CONST_qstrModuTypeFaceRetrieval << QStringLiteral("FaceRetrieval");
    QTest::newRow("CONST_qstrModuTypeFaceRecognition")
        << CONST_qstrModuTypeFaceRecognition << QStringLiteral("FaceRecognition");
    QTest::newRow("CONST_qstrModuTypeBehaviorAnalysis")
        << CONST_qstrModuTypeBehaviorAnalysis << QStringLiteral("BehaviorAnalysis");
    QTest::newRow("CONST_qstrModuTypeTripWireAnalysis")
        << CONST_qstrModuTypeTripWireAnalysis << QStringLiteral("TripWireAnalysis");
    QTest::newRow("CONST_qstrModuTypePassengerFlowStatistic")
        << CONST_qstrModuTypePassengerFlowStatistic << QStringLiteral("PassengerFlowStatistic");
    QTest::newRow("CONST_qstrModuTypeAnalyseConfig")
        << CONST_qstrModuTypeAnalyseConfig << QStringLiteral("AnalyseConfig");
    QTest::newRow("CONST_qstrModuTypeDecoder") << CONST_qstrModuTypeDecoder << QStringLiteral("Decoder");
    QTest::newRow("CONST_qstrModuTypeSecurityManage")
        << CONST_qstrModuTypeSecurityManage << QStringLiteral("SecurityManage");
    QTest::newRow("CONST_qstrModuTypeDeviceFacePad")
        << CONST_qstrModuTypeDeviceFacePad << QStringLiteral("FacePad");
    QTest::newRow("CONST_qstrModuTypeDeviceCarBrake")
        << CONST_qstrModuTypeDeviceCarBrake << QStringLiteral("CarBrake");
    QTest::newRow("CONST_qstrModuTypeSecurityUserManage")
        << CONST_qstrModuTypeSecurityUserManage << QStringLiteral("SecurityUserManage");
    QTest::newRow("CONST_qstrModuTypeSecurityCarManage")
        << CONST_qstrModuTypeSecurityCarManage << QStringLiteral("SecurityCarManage");
    QTest::newRow("CONST_qstrModuTypeSecurityLivePreview")
        << CONST_qstrModuTypeSecurityLivePreview << QStringLiteral("LivePreview");
    QTest::newRow("CONST_qstrModuTypeWayLivePreview")
        << CONST_qstrModuTypeWayLivePreview << QStringLiteral("WayLivePreview");
    QTest::newRow("CONST_qstrModuTypeSecurityPadHistory")
        << CONST_qstrModuTypeSecurityPadHistory << QStringLiteral("PadHistory");
    QTest::newRow("CONST_qstrModuTypeSecurityCarHistory")
        << CONST_qstrModuTypeSecurityCarHistory << QStringLiteral("CarHistory");
    QTest::newRow("CONST_qstrModuTypeWayHistory")
        << CONST_qstrModuTypeWayHistory << QStringLiteral("WayHistory");
    QTest::newRow("CONST_qstrModuTypeElectronicMap")
        << CONST_qstrModuTypeElectronicMap << QStringLiteral("ElectronicMap");
    QTest::newRow("CONST_qstrModuTypeTVWall") << CONST_qstrModuTypeTVWall << QStringLiteral("TVWall");
    QTest::newRow("CONST_qstrModuTypeNvrSettings")
        << CONST_qstrModuTypeNvrSettings << QStringLiteral("NvrSettings");
    QTest::newRow("CONST_qstrModuTypeSystemStatus")
        << CONST_qstrModuTypeSystemStatus << QStringLiteral("SystemStatus");
    QTest::newRow("CONST_qstrModuTypeBrowser") << CONST_qstrModuTypeBrowser << QStringLiteral("Browser");
    QTest::newRow("CONST_qstrModuTypeLumoPlayer")
        << CONST_qstrModuTypeLumoPlayer << QStringLiteral("LxPlayer");
    QTest::newRow("CONST_qstrModuleTypeHeatMapStatistic")
        << CONST_qstrModuleTypeHeatMapStatistic << QStringLiteral("HeatMapStatistic");
    QTest::newRow("CONST_qstrModuTypeLinkageVideo")
        << CONST_qstrModuTypeLinkageVideo << QStringLiteral("LinkageVideo");
}

void CLS_TestConstants::shouldHoldExactValue()
{
    QFETCH(QString, qstrActual);
    QFETCH(QString, qstrExpected);
    QCOMPARE(qstrActual, qstrExpected);
}

void CLS_TestConstants::shouldKeepNearTwinModuleNamesApart()
{
    QVERIFY(CONST_qstrModuTypeDeviceManager != CONST_qstrModuTypeDeviceManage);
    QCOMPARE(CONST_qstrModuTypeDeviceManager, QStringLiteral("DeviceManager"));
    QCOMPARE(CONST_qstrModuTypeDeviceManage, QStringLiteral("DeviceManage"));
    QVERIFY(CONST_qstrModuTypeSecurityManage != CONST_qstrModuTypeSecurityUserManage);
    QCOMPARE(CONST_qstrModuTypeSecurityManage, QStringLiteral("SecurityManage"));
    QCOMPARE(CONST_qstrModuTypeSecurityUserManage, QStringLiteral("SecurityUserManage"));
}

void CLS_TestConstants::shouldGiveEveryModuleNameItsOwnValue()
{
    const QStringList qlstNames = {CONST_qstrModuleTypeLumo7Client,
                                   CONST_qstrModuTypeHomePage,
                                   CONST_qstrModuTypeLogin,
                                   CONST_qstrModuTypeRealPlay,
                                   CONST_qstrModuTypePlayBack,
                                   CONST_qstrModuTypeDeviceManager,
                                   CONST_qstrModuTypeDeviceManage,
                                   CONST_qstrModuTypeSystem,
                                   CONST_qstrModuTypeUserManager,
                                   CONST_qstrModuTypeDownload,
                                   CONST_qstrModuTypeAlarmRecord,
                                   CONST_qstrModuTypeMiniRealPlay,
                                   CONST_qstrModuTypeMiniPlayBack,
                                   CONST_qstrModuTypeLogRecord,
                                   CONST_qstrModuTypeDaemon,
                                   CONST_qstrModuTypeStatistics,
                                   CONST_qstrModuTypeFaceStatistics,
                                   CONST_qstrModuTypeAlarmConfig,
                                   CONST_qstrModuTypeVCARetrieval,
                                   CONST_qstrModuTypeFaceRetrieval,
                                   CONST_qstrModuTypeFaceRecognition,
                                   CONST_qstrModuTypeBehaviorAnalysis,
                                   CONST_qstrModuTypeTripWireAnalysis,
                                   CONST_qstrModuTypePassengerFlowStatistic,
                                   CONST_qstrModuTypeAnalyseConfig,
                                   CONST_qstrModuTypeDecoder,
                                   CONST_qstrModuTypeSecurityManage,
                                   CONST_qstrModuTypeDeviceFacePad,
                                   CONST_qstrModuTypeDeviceCarBrake,
                                   CONST_qstrModuTypeSecurityUserManage,
                                   CONST_qstrModuTypeSecurityCarManage,
                                   CONST_qstrModuTypeSecurityLivePreview,
                                   CONST_qstrModuTypeWayLivePreview,
                                   CONST_qstrModuTypeSecurityPadHistory,
                                   CONST_qstrModuTypeSecurityCarHistory,
                                   CONST_qstrModuTypeWayHistory,
                                   CONST_qstrModuTypeElectronicMap,
                                   CONST_qstrModuTypeTVWall,
                                   CONST_qstrModuTypeNvrSettings,
                                   CONST_qstrModuTypeSystemStatus,
                                   CONST_qstrModuTypeBrowser,
                                   CONST_qstrModuTypeLumoPlayer,
                                   CONST_qstrModuleTypeHeatMapStatistic,
                                   CONST_qstrModuTypeLinkageVideo};
    QMap<QString, int> qmapSeen;
    for (const QString& qstrName : qlstNames)
        ++qmapSeen[qstrName];
    QStringList qlstTwice;
    for (auto it = qmapSeen.cbegin(); it != qmapSeen.cend(); ++it) {
        if (it.value() > 1)
            qlstTwice << it.key();
    }
    QVERIFY2(qlstTwice.isEmpty(), qPrintable("shared by several module names: " + qlstTwice.join(", ")));
    QCOMPARE(qlstNames.size(), 44);
}

void CLS_TestConstants::shouldHoldThirtyTwoColoursWithoutGap()
{
    QCOMPARE(const_qmapCarColor.size(), 32);
    QCOMPARE(const_qmapCarColor.firstKey(), 0);
    QCOMPARE(const_qmapCarColor.lastKey(), 31);
    for (int iCode = 0; iCode < 32; ++iCode)
        QVERIFY2(const_qmapCarColor.contains(iCode), qPrintable(QString("no text for code %1").arg(iCode)));
}

void CLS_TestConstants::shouldMapColourCodeToItsText_data()
{
    QTest::addColumn<int>("iCode");
    QTest::addColumn<QString>("qstrKey");

    QTest::newRow("0") << 0 << QStringLiteral("lbl_car_calor_white");
    QTest::newRow("1") << 1 << QStringLiteral("lbl_car_calor_red");
    QTest::newRow("2") << 2 << QStringLiteral("lbl_car_calor_yellow");
    QTest::newRow("3") << 3 << QStringLiteral("lbl_car_calor_yellow");
    QTest::newRow("4") << 4 << QStringLiteral("lbl_car_calor_blue");
    QTest::newRow("5") << 5 << QStringLiteral("lbl_car_calor_green");
    QTest::newRow("6") << 6 << QStringLiteral("lbl_car_calor_green");
    QTest::newRow("7") << 7 << QStringLiteral("lbl_car_calor_purple");
    QTest::newRow("8") << 8 << QStringLiteral("lbl_car_calor_yellow");
    QTest::newRow("9") << 9 << QStringLiteral("lbl_car_calor_black");
    QTest::newRow("10") << 10 << QStringLiteral("lbl_car_calor_red");
    QTest::newRow("11") << 11 << QStringLiteral("lbl_car_calor_yellow");
    QTest::newRow("12") << 12 << QStringLiteral("lbl_car_calor_yellow");
    QTest::newRow("13") << 13 << QStringLiteral("lbl_car_calor_grey");
    QTest::newRow("14") << 14 << QStringLiteral("lbl_car_calor_yellow");
    QTest::newRow("15") << 15 << QStringLiteral("lbl_car_calor_blue");
    QTest::newRow("16") << 16 << QStringLiteral("lbl_car_calor_blue");
    QTest::newRow("17") << 17 << QStringLiteral("lbl_car_calor_green");
    QTest::newRow("18") << 18 << QStringLiteral("lbl_car_calor_green");
    QTest::newRow("19") << 19 << QStringLiteral("lbl_car_calor_white");
    QTest::newRow("20") << 20 << QStringLiteral("lbl_car_calor_green");
    QTest::newRow("21") << 21 << QStringLiteral("lbl_car_calor_cyan");
    QTest::newRow("22") << 22 << QStringLiteral("lbl_car_calor_yellow");
    QTest::newRow("23") << 23 << QStringLiteral("lbl_car_calor_red");
    QTest::newRow("24") << 24 << QStringLiteral("lbl_car_calor_blue");
    QTest::newRow("25") << 25 << QStringLiteral("lbl_car_calor_blue");
    QTest::newRow("26") << 26 << QStringLiteral("lbl_car_calor_grey");
    QTest::newRow("27") << 27 << QStringLiteral("lbl_car_calor_purple");
    QTest::newRow("28") << 28 << QStringLiteral("lbl_car_calor_purple");
    QTest::newRow("29") << 29 << QStringLiteral("lbl_car_calor_brown");
    QTest::newRow("30") << 30 << QStringLiteral("lbl_car_calor_brown");
    QTest::newRow("31") << 31 << QStringLiteral("lbl_car_calor_brown");
}

void CLS_TestConstants::shouldMapColourCodeToItsText()
{
    // The table was translated when the library was loaded, before any translator existed, so each
    // text is its own translation key.
    QFETCH(int, iCode);
    QFETCH(QString, qstrKey);
    QCOMPARE(const_qmapCarColor.value(iCode), qstrKey);
}

void CLS_TestConstants::shouldGiveNoTextOutsideColourCodes_data()
{
    QTest::addColumn<int>("iCode");

    QTest::newRow("-1") << -1;
    QTest::newRow("32") << 32;
    QTest::newRow("100") << 100;
    QTest::newRow("min") << std::numeric_limits<int>::min();
}

void CLS_TestConstants::shouldGiveNoTextOutsideColourCodes()
{
    QFETCH(int, iCode);
    QVERIFY(!const_qmapCarColor.contains(iCode));
    QVERIFY(const_qmapCarColor.value(iCode).isEmpty());
}

void CLS_TestConstants::shouldKeepLoadTimeTextsWhenTranslatorComesLater()
{
    // Given a translator installed after load that answers every key,
    CLS_MarkingTranslator clsTranslator;
    QVERIFY(QCoreApplication::installTranslator(&clsTranslator));
    const QString qstrLate = QObject::tr("lbl_car_calor_white");
    const QString qstrStored = const_qmapCarColor.value(0);
    QCoreApplication::removeTranslator(&clsTranslator);

    // then a late lookup is translated, the table keeps what it got at load.
    QCOMPARE(qstrLate, QStringLiteral("translated:lbl_car_calor_white"));
    QCOMPARE(qstrStored, QStringLiteral("lbl_car_calor_white"));
}

void CLS_TestConstants::shouldDeclareCallbackType()
{
    QVERIFY((std::is_same<decltype(s_pfUpLoadTaskCallBack),
                          std::function<void(int, const std::map<std::string, std::string>&)>>::value));
    QVERIFY((std::is_same<decltype(const_qmapCarColor), const QMap<int, QString>>::value));
}

void CLS_TestConstants::shouldLeaveUploadCallbackEmpty()
{
    QVERIFY(!s_pfUpLoadTaskCallBack);
}

QTEST_GUILESS_MAIN(CLS_TestConstants)
#include "tst_constants.moc"
