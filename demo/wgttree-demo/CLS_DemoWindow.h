#pragma once
// The demo's one window: the installation's resource tree (live channel states, search by words with
// paths, several cameras selected and dragged out, hover tool buttons, context menu), a custom tree
// with check boxes and reordering, the favourites tree, a layout that takes dragged cameras, and a
// log of what the trees report. Follows the screen's scale and tells the application's signal hub.
// GUI thread only.

#include "TreeStructDefine.h"

#include <QMainWindow>
#include <QMap>
#include <QMetaObject>
#include <QPair>
#include <QString>
#include <QTimer>
#include <QVariant>
#include <QVector>

class CLS_DemoEventLog;
class CLS_DemoLayoutPane;
class CLS_DemoSiblings;
class CLS_WgtDeviceTree;
class QComboBox;
class QLabel;
class QScreen;
class QTreeWidget;

// What a tree holds, counted from its rows and its nodes.
struct STRCT_DemoTreeCounts
{
    int m_iRows = 0;           // rows of the view, folded or not
    int m_iHosts = 0;          // nodes of type 3
    int m_iChannels = 0;       // nodes of type 4
    int m_iChannelsOnline = 0; // nodes of type 4 with status 1
};

class CLS_DemoWindow : public QMainWindow
{
    Q_OBJECT

public:
    // _pSiblings is not owned; it gives the simulator's change counter for the status line.
    explicit CLS_DemoWindow(const CLS_DemoSiblings* _pSiblings, QWidget* parent = nullptr);
    ~CLS_DemoWindow() override;

    // Builds the three trees from the device layer. 0, or -1 when the resource tree can't be built
    // (the other two may stay empty: an installation need not have a custom tree).
    int InitTrees();

    // Asks the status threads for a full report every _iMsecs, so that the states shown follow the
    // simulator faster than the threads' own ten-second rhythm. 0 or less stops it.
    void SetStatusRefresh(int _iMsecs);

    // Starts following the scale of the screen the window is on. After the first show.
    void WatchScreenScale();

    // Unfolds a few hosts and the side trees, brings one row's tool buttons up and ticks one group
    // of the custom tree, for a picture. The check batch reaches the log 200 ms later.
    void PrepareForPicture();

    // Types _qstrText into the resource tree's search line, key by key, as a user would. Gives the
    // texts of the result list then shown (the no-results entry too) in _qlstEntries and the number
    // of results (the no-results entry counts as none), -1 without a search line.
    int TypeSearch(const QString& _qstrText, QStringList& _qlstEntries);

    // The resource tree's status filter by name: "all", "online" or "offline"; -1 for another name.
    int SetStatusFilter(const QString& _qstrFilter);
    // The resource tree's view state (open hosts, current channel, first row) in the settings
    // store, section "WgtTreeDemo", key "resourceViewState" (Base64), for the next run.
    void SaveViewState() const;
    void RestoreViewState();

    // The texts the window shows in its own captions, by key: "title", "resources", "show", "filter"
    // (the status filter's current entry), "custom", "favourites", "layout", "events" and "status"
    // (the status line).
    QMap<QString, QString> Captions() const;

    STRCT_DemoTreeCounts CountResourceTree() const;
    STRCT_DemoTreeCounts CountCustomTree() const;
    STRCT_DemoTreeCounts CountFavoriteTree() const;
    int StatusBatches() const { return m_iStatusBatches; }
    int StatusEntries() const { return m_iStatusEntries; }

signals:
    // A batch of channel states reached the resource tree's rows; _iBatches counts them so far.
    void SignStatusBatchApplied(int _iBatches);

private slots:
    void SlotStatusBatch(QVariant _qvarData);
    void SlotResourceRightClicked(CLS_CustomTreeNode _node);
    void SlotMenuItemClicked(CLS_CustomTreeNode _node, QString _qstrItemId, bool _blChecked);
    void SlotToolButtonClicked(QString _qstrCmd, CLS_CustomTreeNode _node, CLS_ItemButton _button);
    void SlotCheckedQueue(QVector<QPair<CLS_CustomTreeNode, bool>> _qvecCheckChangedQueue, void* _pWgtPanel);
    void SlotRefreshStatus();
    void SlotScreenChanged(QScreen* _pScreen);
    void SlotCheckScale();

private:
    // A label of the window's own with _qstrText, noted under _qstrKey for Captions.
    QLabel* AddCaption(const QString& _qstrKey, const QString& _qstrText);
    void AppendLog(const QString& _qstrText);
    void UpdateStatusLine();
    // Hosts follow the device layer through UpdateHostStatus: the status thread reports channels only.
    void SyncHostStates();
    QList<_MenuItem> BuildMenu(const CLS_CustomTreeNode& _node) const;
    STRCT_DemoTreeCounts CountTree(CLS_WgtDeviceTree* _pTree, const QString& _qstrRootId) const;
    static QTreeWidget* ViewOf(CLS_WgtDeviceTree* _pTree);

    const CLS_DemoSiblings* m_pSiblings = nullptr;
    CLS_WgtDeviceTree* m_pResourceTree = nullptr; // children of the window
    CLS_WgtDeviceTree* m_pCustomTree = nullptr;
    CLS_WgtDeviceTree* m_pFavoriteTree = nullptr;
    QComboBox* m_pFilter = nullptr; // the resource tree's status filter
    CLS_DemoEventLog* m_pLog = nullptr;
    CLS_DemoLayoutPane* m_pLayoutPane = nullptr; // takes cameras dragged out of the resource tree
    QLabel* m_pStatusLine = nullptr;
    QMap<QString, QLabel*> m_qmapCaptions; // captions by key; owned by the window's layouts
    QTimer m_tmRefresh;
    int m_iStatusBatches = 0;
    int m_iStatusEntries = 0;
    QMap<QString, bool> m_qmapMenuChecks; // checked state of the menu's checkable entries, by id
    QMetaObject::Connection m_connDpi;    // the current screen's dots-per-inch signal
    double m_dScale = 0.0;                // last scale told to the hub; 0 before the first look
};
