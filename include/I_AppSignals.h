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

/// Why the application quits (argument of I_AppSignals::SignQuit).
enum n_QuitFlag
{
    QUIT_FLAG_EXIT = 0,    ///< The application exits.
    QUIT_FLAG_LOGOUT = 1,  ///< The user logs out.
    QUIT_FLAG_RESTART = 2, ///< The application restarts.
};

/// One disk of the host, as reported by the application (I_AppSignals::SignDiskSpaceInfo).
struct STRCT_DiskInfo
{
    QString m_qstrName;        ///< Name of the disk, as the application shows it.
    qint64 m_llTotalSpace = 0; ///< Total size, in the application's unit.
    qint64 m_llFreeSpace = 0;  ///< Free space, in the same unit.
};

/// One entry of the application's export (download) list (I_AppSignals::SignUpdateDownLoadList).
struct STRUCT_RemortExportInfo
{
    int m_iIndex = 0;        ///< The entry's index in the list; the other export signals name it by this.
    int m_iDownloadType = 0; ///< Kind of export, by the application's codes.
    QString m_qstrName;      ///< Display name of the entry.
    QVariantMap m_qmapParam; ///< Further details, as the application defines them.
};

Q_DECLARE_METATYPE(n_QuitFlag)
Q_DECLARE_METATYPE(STRCT_DiskInfo)
Q_DECLARE_METATYPE(STRUCT_RemortExportInfo)

/// The application's signal hub: one instance, made and owned by the application and reached through
/// the function "GetAppSignals" of the application manager library; never deleted here.
///
/// Only signals. The application emits them, normally on the GUI thread; this library never emits
/// any of them and connects only SignResizeView (CLS_WgtTreeWidget, by an automatic connection). What
/// each signal carries is the application's; the descriptions below give the intended meaning. The
/// order of the signals is part of the interface. Signals with an @c int result give the answer of
/// the last receiver called directly, or 0 when there is none.
class I_AppSignals : public QObject
{
    Q_OBJECT

public:
    /// Made by the application, once; @p parent owns the hub the Qt way.
    explicit I_AppSignals(QObject* parent = nullptr);
    /// Destroyed by the application; receivers' connections end with it.
    ~I_AppSignals() override;

signals:
    /// The application is about to exit, log out or restart (@p _iQuitFlag); @p _qmapParam holds the
    /// application's details.
    void SignQuit(n_QuitFlag _iQuitFlag, QVariantMap _qmapParam);
    /// Asks the application to show a part of its interface, described by @p _qmapParam.
    void SignShowUi(QVariantMap _qmapParam);
    /// General data of the application, of the kind @p _iFlag.
    /// @return the answer of the last receiver called directly; 0 without one.
    int SignCommonData(int _iFlag, QVariantMap _mapData);
    /// Business data @p _mapData for the business @p _qstrBusinessId; @p _qstrUUId identifies the
    /// exchange. @return the answer of the last receiver called directly; 0 without one.
    int SignBusinessData(QString _qstrBusinessId, QVariantMap _mapData, QString _qstrUUId);
    /// The interface scale changed; CLS_WgtTreeWidget follows it. The scales are horizontal and
    /// vertical factors; each panel connects this at construction, disconnects it at destruction and
    /// only reloads its style sheet.
    void SignResizeView(double _dXScale, double _dYScale);
    /// The application's dock icon was clicked.
    void SignDockClick();
    /// Asks for a balloon tip (a passing notice) described by @p _mapData.
    void SignShowBallonTips(QVariantMap _mapData);
    /// Asks the module @p _qstrModuleName to export its configuration into @p _qstrExportDir;
    /// @p _qstrExportID identifies this export.
    void SignConfigExport(QString _qstrModuleName, QString _qstrExportID, QString _qstrExportDir);
    /// Asks the module @p _qstrModuleName to import its configuration from @p _qstrImportDir;
    /// @p _qstrImportID identifies this import.
    void SignConfigImport(QString _qstrModuleName, QString _qstrImportID, QString _qstrImportDir);
    /// Progress @p _progressValue of a module's configuration export.
    void SignConfigExportProgress(QString _qstrMouleName, int _progressValue);
    /// Progress @p _progressValue of a module's configuration import.
    void SignConfigImportProgress(QString _qstrMouleName, int _progressValue);
    /// A module finished its configuration export; @p _qstrResultJsonStr is its result as JSON text.
    void SignConfigExportFinished(QString _qstrModuleName, QString _qstrResultJsonStr);
    /// A module finished its configuration import; @p _qstrResultJsonStr is its result as JSON text.
    void SignConfigImportFinished(QString _qstrModuleName, QString _qstrResultJsonStr);
    /// The page widget @p _pWidget goes full screen (the pointer is not handed over).
    void SignPageFullScreen(QWidget* _pWidget);
    /// The page widget @p _pWidget leaves full screen (the pointer is not handed over).
    void SignPageUnFullScreen(QWidget* _pWidget);
    /// Turns the updating of the video of channel @p _qstrChannelID on or off (@p _blUpdate);
    /// @p _pParam is the application's, passed through and not handed over.
    /// One signal with two forms: the form without _iType is this signal with _iType 0 (moc makes it
    /// a clone of the full form, so a receiver of either form gets both kinds of emission).
    void SignSetVideoUpdate(QString _qstrChannelID, void* _pParam, bool _blUpdate, int _iType = 0);
    /// A peer-to-peer operation @p _iOperationFlag of the application, with its parameter text.
    void SignP2pOperation(int _iOperationFlag, QString _qstrParam);
    /// A favourites group @p _node was added.
    void SignAddFavoriteGroup(CLS_CustomTreeNode _node);
    /// The channels @p qvecChannelIds were added to the favourites.
    void SignAddFavoriteChannels(QVector<QString> qvecChannelIds);
    /// The favourites group @p _node was changed.
    void SignModifyFavoriteGroup(CLS_CustomTreeNode _node);
    /// The favourites group @p _qstrGroupId was deleted.
    void SignDeleteFavoriteGroup(QString _qstrGroupId);
    /// The favourite channel @p _node was deleted.
    void SignDeleteFavoriteChannel(CLS_CustomTreeNode _node);
    /// The favourite channel @p _node was changed.
    void SignModifyFavoriteChannel(CLS_CustomTreeNode _node);
    /// The application's window moved; @p _pEvent belongs to the emitter and is valid only during a
    /// direct delivery.
    void SignAPPMove(QEvent* _pEvent);
    /// Escape was pressed in the application.
    void SignEscPressed();
    /// The abilities of channel @p _qstrChannelId changed; @p _blUpdatePtz when its pan-tilt-zoom
    /// abilities are among them.
    void SignDevAbilityUpdated(QString _qstrChannelId, bool _blUpdatePtz);
    /// The space of the host's disks, one record per disk.
    void SignDiskSpaceInfo(QVector<STRCT_DiskInfo> _qvecDiskSpaceInfo);
    /// An entry of the export (download) list changed; @p _iCmd tells how, by the application's codes.
    void SignUpdateDownLoadList(int _iCmd, STRUCT_RemortExportInfo _strctInfo);
    /// Asks to stop the export @p _iIndex of the kind @p _iDownloadType.
    void SignStopExport(int _iIndex, int _iDownloadType);
    /// Asks to run the export @p _iIndex of the kind @p _iDownloadType again.
    void SignReExport(int _iIndex, int _iDownloadType);
    /// Asks to remove the entry @p _iIndex of the kind @p _iDownloadType from the export list.
    void SignClearRecord(int _iIndex, int _iDownloadType);
    /// Asks to remove every entry of the kind @p _iDownloadType from the export list.
    void SignClearAllExport(int _iDownloadType);
    /// A USB keyboard was connected (@p _blOnline true) or disconnected.
    void SignUsbKeyboardStatusChanged(bool _blOnline);
    /// Shows or hides the USB debug view.
    void SignSetUsbDebugViewVisiable(bool _blVisiable);
    /// Gives the focus to @p _pWidget (@p _blFocus true) or takes it away; the pointer is not handed
    /// over.
    void SignSetFocus(QWidget* _pWidget, bool _blFocus);
    /// A request of the kind @p _iType for the module @p _qstrModName, as JSON text.
    void SignSendRequset(int _iType, QString _qstrModName, QString _qstrJson);
    /// The sound state of the application changed, as described by @p _qmapParam.
    void SignSoundStateChanged(QVariantMap _qmapParam);
    /// The debug view was shown (@p _blStatus true) or hidden.
    void SignDebugViewStatueChange(bool _blStatus);
};
