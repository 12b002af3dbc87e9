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

class CLS_DeviceTreeWordSearch : public QObject
{
    Q_OBJECT

public:
    static constexpr int CONST_iModeName = 0;  // the panel's own search
    static constexpr int CONST_iModeWords = 1; // every word, in the name or the extend
    static constexpr int CONST_iMaxParents = 3;

    // _pNodes is the device tree's model; the device tree owns this object and outlives it.
    CLS_DeviceTreeWordSearch(CLS_WgtTreeWidget* _pPanel, const QMap<QString, CLS_CustomTreeNode>* _pNodes,
                             QObject* _pParent = nullptr);
    ~CLS_DeviceTreeWordSearch() override;

    // 0 or 1; another value changes nothing.
    void SetSearchMode(int _iMode);
    int GetSearchMode() const { return m_iMode; }
    void SetSearchShowsPath(bool _blShow);
    bool GetSearchShowsPath() const { return m_blShowPath; }

    // The result entries of a line, in the tree's order (depth first, parents ahead of their
    // children; the root never listed). -1 for a tree without a root row, as the panel's own search.
    int Search(const QString& _qstrLine, QList<QListWidgetItem*>& _qlstEntries);

    // The words of a line: split on white space, empty pieces dropped.
    static QStringList SplitWords(const QString& _qstrLine);
    // "Name — P1 / P2 / P3", the nearest parent first; just the name without parents.
    static QString PathText(const QString& _qstrName, const QStringList& _qlstParents);
    // "Name — parents" from the parents already joined; just the name when they are empty.
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
