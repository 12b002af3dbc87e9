#include "ConstDefine.h"

#include <QObject>

// Heap copies rather than QStringLiteral: a copy that outlives an unloaded library must not point
// into its read-only data.
const QString CONST_qstrDefaultAllTemplateID = QString::fromLatin1("default_template_id_alldays");
const QString CONST_qstrDefaultClientID = QString::fromLatin1("default");
const QString CONST_qstrKvHost = QString::fromLatin1("KV_HOST");
const QString CONST_qstrAdminUserId = QString::fromLatin1("admin");
const QString s_const_qstrExtendData_VideoItemInfo = QString::fromLatin1("VideoItemInfo");

const QString CONST_qstrModuleTypeLumo7Client = QString::fromLatin1("LxClient");
const QString CONST_qstrModuTypeHomePage = QString::fromLatin1("HomePage");
const QString CONST_qstrModuTypeLogin = QString::fromLatin1("Login");
const QString CONST_qstrModuTypeRealPlay = QString::fromLatin1("Realplay");
const QString CONST_qstrModuTypePlayBack = QString::fromLatin1("Playback");
const QString CONST_qstrModuTypeDeviceManager = QString::fromLatin1("DeviceManager");
const QString CONST_qstrModuTypeDeviceManage = QString::fromLatin1("DeviceManage");
const QString CONST_qstrModuTypeSystem = QString::fromLatin1("System");
const QString CONST_qstrModuTypeUserManager = QString::fromLatin1("UserManager");
const QString CONST_qstrModuTypeDownload = QString::fromLatin1("Download");
const QString CONST_qstrModuTypeAlarmRecord = QString::fromLatin1("AlarmRecords");
const QString CONST_qstrModuTypeMiniRealPlay = QString::fromLatin1("MiniRealplay");
const QString CONST_qstrModuTypeMiniPlayBack = QString::fromLatin1("MiniPlayback");
const QString CONST_qstrModuTypeLogRecord = QString::fromLatin1("LogRecord");
const QString CONST_qstrModuTypeDaemon = QString::fromLatin1("Daemon");
const QString CONST_qstrModuTypeStatistics = QString::fromLatin1("Statistics");
const QString CONST_qstrModuTypeFaceStatistics = QString::fromLatin1("FaceStatistic");
const QString CONST_qstrModuTypeAlarmConfig = QString::fromLatin1("AlarmConfig");
const QString CONST_qstrModuTypeVCARetrieval = QString::fromLatin1("VCARetrieval");
const QString CONST_qstrModuTypeFaceRetrieval = QString::fromLatin1("FaceRetrieval");
const QString CONST_qstrModuTypeFaceRecognition = QString::fromLatin1("FaceRecognition");
const QString CONST_qstrModuTypeBehaviorAnalysis = QString::fromLatin1("BehaviorAnalysis");
const QString CONST_qstrModuTypeTripWireAnalysis = QString::fromLatin1("TripWireAnalysis");
const QString CONST_qstrModuTypePassengerFlowStatistic = QString::fromLatin1("PassengerFlowStatistic");
const QString CONST_qstrModuTypeAnalyseConfig = QString::fromLatin1("AnalyseConfig");
const QString CONST_qstrModuTypeDecoder = QString::fromLatin1("Decoder");
const QString CONST_qstrModuTypeSecurityManage = QString::fromLatin1("SecurityManage");
const QString CONST_qstrModuTypeDeviceFacePad = QString::fromLatin1("FacePad");
const QString CONST_qstrModuTypeDeviceCarBrake = QString::fromLatin1("CarBrake");
const QString CONST_qstrModuTypeSecurityUserManage = QString::fromLatin1("SecurityUserManage");
const QString CONST_qstrModuTypeSecurityCarManage = QString::fromLatin1("SecurityCarManage");
const QString CONST_qstrModuTypeSecurityLivePreview = QString::fromLatin1("LivePreview");
const QString CONST_qstrModuTypeWayLivePreview = QString::fromLatin1("WayLivePreview");
const QString CONST_qstrModuTypeSecurityPadHistory = QString::fromLatin1("PadHistory");
const QString CONST_qstrModuTypeSecurityCarHistory = QString::fromLatin1("CarHistory");
const QString CONST_qstrModuTypeWayHistory = QString::fromLatin1("WayHistory");
const QString CONST_qstrModuTypeElectronicMap = QString::fromLatin1("ElectronicMap");
const QString CONST_qstrModuTypeTVWall = QString::fromLatin1("TVWall");
const QString CONST_qstrModuTypeNvrSettings = QString::fromLatin1("NvrSettings");
const QString CONST_qstrModuTypeSystemStatus = QString::fromLatin1("SystemStatus");
const QString CONST_qstrModuTypeBrowser = QString::fromLatin1("Browser");
const QString CONST_qstrModuTypeLumoPlayer = QString::fromLatin1("LxPlayer");
const QString CONST_qstrModuleTypeHeatMapStatistic = QString::fromLatin1("HeatMapStatistic");
const QString CONST_qstrModuTypeLinkageVideo = QString::fromLatin1("LinkageVideo");

// Translated once, here, at load time: the texts are the translation keys.
// clang-format off
const QMap<int, QString> const_qmapCarColor = {
    {0, QObject::tr("lbl_car_calor_white")},
    {1, QObject::tr("lbl_car_calor_red")},
    {2, QObject::tr("lbl_car_calor_yellow")},
    {3, QObject::tr("lbl_car_calor_yellow")},
    {4, QObject::tr("lbl_car_calor_blue")},
    {5, QObject::tr("lbl_car_calor_green")},
    {6, QObject::tr("lbl_car_calor_green")},
    {7, QObject::tr("lbl_car_calor_purple")},
    {8, QObject::tr("lbl_car_calor_yellow")},
    {9, QObject::tr("lbl_car_calor_black")},
    {10, QObject::tr("lbl_car_calor_red")},
    {11, QObject::tr("lbl_car_calor_yellow")},
    {12, QObject::tr("lbl_car_calor_yellow")},
    {13, QObject::tr("lbl_car_calor_grey")},
    {14, QObject::tr("lbl_car_calor_yellow")},
    {15, QObject::tr("lbl_car_calor_blue")},
    {16, QObject::tr("lbl_car_calor_blue")},
    {17, QObject::tr("lbl_car_calor_green")},
    {18, QObject::tr("lbl_car_calor_green")},
    {19, QObject::tr("lbl_car_calor_white")},
    {20, QObject::tr("lbl_car_calor_green")},
    {21, QObject::tr("lbl_car_calor_cyan")},
    {22, QObject::tr("lbl_car_calor_yellow")},
    {23, QObject::tr("lbl_car_calor_red")},
    {24, QObject::tr("lbl_car_calor_blue")},
    {25, QObject::tr("lbl_car_calor_blue")},
    {26, QObject::tr("lbl_car_calor_grey")},
    {27, QObject::tr("lbl_car_calor_purple")},
    {28, QObject::tr("lbl_car_calor_purple")},
    {29, QObject::tr("lbl_car_calor_brown")},
    {30, QObject::tr("lbl_car_calor_brown")},
    {31, QObject::tr("lbl_car_calor_brown")},
};
// clang-format on

std::function<void(int, const std::map<std::string, std::string>&)> s_pfUpLoadTaskCallBack;
