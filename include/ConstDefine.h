#pragma once
// Named values shared by the client's modules: default ids, the module type names by which modules
// know each other, the vehicle colour table and the upload callback slot. Set up when the library
// is loaded and destroyed at process exit; read-only after load (the callback is the client's to
// set). Nothing inside this library reads them.
//
// Beware of reading them from another library's static initialisers: like any namespace-scope
// object they exist only once this library's own initialisers have run.

#include <QMap>
#include <QString>

#include <functional>
#include <map>
#include <string>

// General values.
extern const QString CONST_qstrDefaultAllTemplateID;       // "default_template_id_alldays"
extern const QString CONST_qstrDefaultClientID;            // "default"
extern const QString CONST_qstrKvHost;                     // "KV_HOST"
extern const QString CONST_qstrAdminUserId;                // "admin"
extern const QString s_const_qstrExtendData_VideoItemInfo; // "VideoItemInfo"

// Module type names: the text that identifies each module between modules. Near-twins such as
// "DeviceManager" / "DeviceManage" name different modules and must stay apart.
extern const QString CONST_qstrModuleTypeLumo7Client;          // "LxClient"
extern const QString CONST_qstrModuTypeHomePage;               // "HomePage"
extern const QString CONST_qstrModuTypeLogin;                  // "Login"
extern const QString CONST_qstrModuTypeRealPlay;               // "Realplay"
extern const QString CONST_qstrModuTypePlayBack;               // "Playback"
extern const QString CONST_qstrModuTypeDeviceManager;          // "DeviceManager"
extern const QString CONST_qstrModuTypeDeviceManage;           // "DeviceManage"
extern const QString CONST_qstrModuTypeSystem;                 // "System"
extern const QString CONST_qstrModuTypeUserManager;            // "UserManager"
extern const QString CONST_qstrModuTypeDownload;               // "Download"
extern const QString CONST_qstrModuTypeAlarmRecord;            // "AlarmRecords"
extern const QString CONST_qstrModuTypeMiniRealPlay;           // "MiniRealplay"
extern const QString CONST_qstrModuTypeMiniPlayBack;           // "MiniPlayback"
extern const QString CONST_qstrModuTypeLogRecord;              // "LogRecord"
extern const QString CONST_qstrModuTypeDaemon;                 // "Daemon"
extern const QString CONST_qstrModuTypeStatistics;             // "Statistics"
extern const QString CONST_qstrModuTypeFaceStatistics;         // "FaceStatistic"
extern const QString CONST_qstrModuTypeAlarmConfig;            // "AlarmConfig"
extern const QString CONST_qstrModuTypeVCARetrieval;           // "VCARetrieval"
extern const QString CONST_qstrModuTypeFaceRetrieval;          // "FaceRetrieval"
extern const QString CONST_qstrModuTypeFaceRecognition;        // "FaceRecognition"
extern const QString CONST_qstrModuTypeBehaviorAnalysis;       // "BehaviorAnalysis"
extern const QString CONST_qstrModuTypeTripWireAnalysis;       // "TripWireAnalysis"
extern const QString CONST_qstrModuTypePassengerFlowStatistic; // "PassengerFlowStatistic"
extern const QString CONST_qstrModuTypeAnalyseConfig;          // "AnalyseConfig"
extern const QString CONST_qstrModuTypeDecoder;                // "Decoder"
extern const QString CONST_qstrModuTypeSecurityManage;         // "SecurityManage"
extern const QString CONST_qstrModuTypeDeviceFacePad;          // "FacePad"
extern const QString CONST_qstrModuTypeDeviceCarBrake;         // "CarBrake"
extern const QString CONST_qstrModuTypeSecurityUserManage;     // "SecurityUserManage"
extern const QString CONST_qstrModuTypeSecurityCarManage;      // "SecurityCarManage"
extern const QString CONST_qstrModuTypeSecurityLivePreview;    // "LivePreview"
extern const QString CONST_qstrModuTypeWayLivePreview;         // "WayLivePreview"
extern const QString CONST_qstrModuTypeSecurityPadHistory;     // "PadHistory"
extern const QString CONST_qstrModuTypeSecurityCarHistory;     // "CarHistory"
extern const QString CONST_qstrModuTypeWayHistory;             // "WayHistory"
extern const QString CONST_qstrModuTypeElectronicMap;          // "ElectronicMap"
extern const QString CONST_qstrModuTypeTVWall;                 // "TVWall"
extern const QString CONST_qstrModuTypeNvrSettings;            // "NvrSettings"
extern const QString CONST_qstrModuTypeSystemStatus;           // "SystemStatus"
extern const QString CONST_qstrModuTypeBrowser;                // "Browser"
extern const QString CONST_qstrModuTypeLumoPlayer;             // "LxPlayer"
extern const QString CONST_qstrModuleTypeHeatMapStatistic;     // "HeatMapStatistic"
extern const QString CONST_qstrModuTypeLinkageVideo;           // "LinkageVideo"

// Vehicle colour code (0..31) to colour text. Each text went through QObject::tr when the library
// was loaded, so it is what the translator in place at that moment gave; a translator installed
// later does not change it. Several codes share a colour.
extern const QMap<int, QString> const_qmapCarColor;

// Upload task callback of the client: task code and its named values. Empty after load; nothing in
// this library sets or calls it.
extern std::function<void(int, const std::map<std::string, std::string>&)> s_pfUpLoadTaskCallBack;
