#pragma once
// The application's signal hub: one instance lives in the application and is reached through the
// function "GetAppSignals" of the application manager library. Its meta-object is part of this
// library so that widgets here can connect to it; this library never emits these signals.
// Signals only, no slots: the order of the signals is part of the interface, do not reorder.

#include "TreeStructDefine.h"

#include <QEvent>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <QVariantMap>
#include <QVector>
#include <QWidget>

// The application owns the meaning of the three types below; they are declared here, minimal, only
// so that the hub's signals can be declared and connected. Their values are the application's.

// Why the application quits.
enum n_QuitFlag
{
    QUIT_FLAG_EXIT = 0,
    QUIT_FLAG_LOGOUT = 1,
    QUIT_FLAG_RESTART = 2,
};

// One disk of the host, as reported by the application.
struct STRCT_DiskInfo
{
    QString m_qstrName;
    qint64 m_llTotalSpace = 0;
    qint64 m_llFreeSpace = 0;
};

// One entry of the application's export (download) list.
struct STRUCT_RemortExportInfo
{
    int m_iIndex = 0;
    int m_iDownloadType = 0;
    QString m_qstrName;
    QVariantMap m_qmapParam;
};

Q_DECLARE_METATYPE(n_QuitFlag)
Q_DECLARE_METATYPE(STRCT_DiskInfo)
Q_DECLARE_METATYPE(STRUCT_RemortExportInfo)

class I_AppSignals : public QObject
{
    Q_OBJECT

public:
    explicit I_AppSignals(QObject* parent = nullptr);
    ~I_AppSignals() override;

signals:
    void SignQuit(n_QuitFlag _iQuitFlag, QVariantMap _qmapParam);
    void SignShowUi(QVariantMap _qmapParam);
    int SignCommonData(int _iFlag, QVariantMap _mapData);
    int SignBusinessData(QString _qstrBusinessId, QVariantMap _mapData, QString _qstrUUId);
    // The interface scale changed; CLS_WgtTreeWidget follows it.
    void SignResizeView(double _dXScale, double _dYScale);
    void SignDockClick();
    void SignShowBallonTips(QVariantMap _mapData);
    void SignConfigExport(QString _qstrModuleName, QString _qstrExportID, QString _qstrExportDir);
    void SignConfigImport(QString _qstrModuleName, QString _qstrImportID, QString _qstrImportDir);
    void SignConfigExportProgress(QString _qstrMouleName, int _progressValue);
    void SignConfigImportProgress(QString _qstrMouleName, int _progressValue);
    void SignConfigExportFinished(QString _qstrModuleName, QString _qstrResultJsonStr);
    void SignConfigImportFinished(QString _qstrModuleName, QString _qstrResultJsonStr);
    void SignPageFullScreen(QWidget* _pWidget);
    void SignPageUnFullScreen(QWidget* _pWidget);
    // One signal with two forms: the form without _iType is this signal with _iType 0 (moc makes it
    // a clone of the full form, so a receiver of either form gets both kinds of emission).
    void SignSetVideoUpdate(QString _qstrChannelID, void* _pParam, bool _blUpdate, int _iType = 0);
    void SignP2pOperation(int _iOperationFlag, QString _qstrParam);
    void SignAddFavoriteGroup(CLS_CustomTreeNode _node);
    void SignAddFavoriteChannels(QVector<QString> qvecChannelIds);
    void SignModifyFavoriteGroup(CLS_CustomTreeNode _node);
    void SignDeleteFavoriteGroup(QString _qstrGroupId);
    void SignDeleteFavoriteChannel(CLS_CustomTreeNode _node);
    void SignModifyFavoriteChannel(CLS_CustomTreeNode _node);
    void SignAPPMove(QEvent* _pEvent);
    void SignEscPressed();
    void SignDevAbilityUpdated(QString _qstrChannelId, bool _blUpdatePtz);
    void SignDiskSpaceInfo(QVector<STRCT_DiskInfo> _qvecDiskSpaceInfo);
    void SignUpdateDownLoadList(int _iCmd, STRUCT_RemortExportInfo _strctInfo);
    void SignStopExport(int _iIndex, int _iDownloadType);
    void SignReExport(int _iIndex, int _iDownloadType);
    void SignClearRecord(int _iIndex, int _iDownloadType);
    void SignClearAllExport(int _iDownloadType);
    void SignUsbKeyboardStatusChanged(bool _blOnline);
    void SignSetUsbDebugViewVisiable(bool _blVisiable);
    void SignSetFocus(QWidget* _pWidget, bool _blFocus);
    void SignSendRequset(int _iType, QString _qstrModName, QString _qstrJson);
    void SignSoundStateChanged(QVariantMap _qmapParam);
    void SignDebugViewStatueChange(bool _blStatus);
};
