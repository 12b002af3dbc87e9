#pragma once
// The device tree's search by words and the place of each hit. Mode 0 matches as the panel's own
// search does (the line as one piece of the row text); mode 1 matches a row when every word of the
// line (split on white space) occurs, ignoring case, in its node's name or in its m_qstrExtend, in
// any order (a row without a node is never a hit, as the tree's queries never report one). With paths shown,
// each result entry reads "Name — Parent / Grandparent" and is painted by CLS_SearchResultDelegate, the
// matched words in bold. The panel runs this search only while mode 1 or the paths are on; otherwise its own
// search is untouched. GUI thread only.

#include "TreeStructDefine.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

class CLS_SearchResultDelegate;
class CLS_WgtTreeWidget;
class QAbstractItemDelegate;
class QListWidgetItem;
class QTreeWidgetItem;

/// The device tree's search by words, and the path of each hit in the result list.
///
/// Mode 0 (CONST_iModeName) matches as the panel's own search does; mode 1 (CONST_iModeWords) lists
/// the rows whose node holds every word of the line, ignoring case, in its name or m_qstrExtend.
/// With paths on, entries read "Name — Parent / Grandparent" and the result list is painted by a
/// CLS_SearchResultDelegate (owned by this object). While mode 1 or the paths are on, the panel's
/// search runs through Search(); otherwise the panel's own search is untouched. Made and owned by
/// CLS_WgtDeviceTree. GUI thread only (the static helpers: any thread).
class CLS_DeviceTreeWordSearch : public QObject
{
    Q_OBJECT

public:
    static constexpr int CONST_iModeName = 0;   ///< the panel's own search: the line as one piece
    static constexpr int CONST_iModeWords = 1;  ///< every word, in the name or the extend
    static constexpr int CONST_iMaxParents = 3; ///< most ancestors an entry's path names

    /// Makes a search that is off: the panel keeps its own search until a mode or the paths change.
    /// @param _pPanel  panel whose search line and result list are served; not owned, watched
    ///                 through a QPointer.
    /// @param _pNodes  the device tree's node model, read by tree id; not owned, must outlive this
    ///                 object (the device tree owns both).
    /// @param _pParent QObject parent, normally the device tree.
    CLS_DeviceTreeWordSearch(CLS_WgtTreeWidget* _pPanel, const QMap<QString, CLS_CustomTreeNode>* _pNodes,
                             QObject* _pParent = nullptr);
    /// Gives the panel its own search, and the result list its own delegate and sizing, back.
    ~CLS_DeviceTreeWordSearch() override;

    /// Sets the match mode: CONST_iModeName or CONST_iModeWords; another value changes nothing.
    /// Installs or removes this search on the panel as needed.
    void SetSearchMode(int _iMode);
    /// The match mode, 0 or 1 (0 by default).
    int GetSearchMode() const { return m_iMode; }
    /// Whether result entries show the path of their row (at most CONST_iMaxParents ancestors,
    /// the root left out); puts the CLS_SearchResultDelegate on the result list or takes it off.
    void SetSearchShowsPath(bool _blShow);
    /// Whether result entries show their path (false by default).
    bool GetSearchShowsPath() const { return m_blShowPath; }

    /// The result entries of a line, in the tree's order (depth first, parents ahead of their
    /// children; the root never listed), appended to @p _qlstEntries. Each entry holds the row id
    /// under Qt::UserRole and, with paths, the name length under
    /// CLS_SearchResultDelegate::CONST_iNameLengthRole. The entries are new and the caller's (the
    /// panel takes them into its list). Sets the delegate's words (mode 0: the whole line).
    /// @return 0 (also for a line of blanks, which finds nothing); -1 without a panel or for a tree
    ///         without a root row, as the panel's own search.
    int Search(const QString& _qstrLine, QList<QListWidgetItem*>& _qlstEntries);

    /// The words of a line: split on white space, empty pieces dropped.
    static QStringList SplitWords(const QString& _qstrLine);
    /// "Name — P1 / P2 / P3" from at most CONST_iMaxParents parents, the nearest first; just the
    /// name without parents.
    static QString PathText(const QString& _qstrName, const QStringList& _qlstParents);
    /// "Name — parents" from the parents already joined; just the name when they are empty.
    static QString EntryText(const QString& _qstrName, const QString& _qstrParents);

private:
    // The panel searches through this object only while something here is on.
    void Install();
    // Name of a row: its node's, or the text of its record for a row without a node.
    QString RowName(QTreeWidgetItem* _pRow) const;
    QListWidgetItem* MakeEntry(const QString& _qstrId, const QString& _qstrName, QTreeWidgetItem* _pRow,
                               QTreeWidgetItem* _pRoot,
                               QHash<QTreeWidgetItem*, QString>& _qhashParents) const;

    QPointer<CLS_WgtTreeWidget> m_pPanel;
    const QMap<QString, CLS_CustomTreeNode>* m_pNodes = nullptr;
    int m_iMode = CONST_iModeName;
    bool m_blShowPath = false;
    CLS_SearchResultDelegate* m_pDelegate = nullptr;  // child of this object, on the list while paths show
    QPointer<QAbstractItemDelegate> m_pPlainDelegate; // the list's own delegate meanwhile
    bool m_blUniformSet = false;                      // the list has uniform entry sizes from us
    bool m_blPlainUniform = false;                    // what it had before
};
