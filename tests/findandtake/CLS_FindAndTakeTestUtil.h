#pragma once
// Helpers of the word search, multi-select and drag tests: a custom tree of two sites whose cameras
// share names and carry their addresses in m_qstrExtend, and the search result list of a tree as
// the user sees it. GUI thread only.

#include "CLS_TestDeviceTree.h"

#include <QListWidget>
#include <QPair>

namespace CLS_FindAndTakeTestUtil {

using namespace CLS_DevTreeTestUtil;

inline CLS_CustomTreeNode Camera(const QString& _qstrId, const QString& _qstrParent, const QString& _qstrName,
                                 const QString& _qstrAddress, int _iSortNo)
{
    CLS_CustomTreeNode node = MakeNode(_qstrId, _qstrParent, 4, "dev-" + _qstrId, _iSortNo, 1);
    node.m_qstrName = _qstrName;
    node.m_qstrExtend = _qstrAddress;
    node.m_iChannelNo = _iSortNo;
    return node;
}

inline CLS_CustomTreeNode Group(const QString& _qstrId, const QString& _qstrParent, const QString& _qstrName,
                                int _iSortNo)
{
    CLS_CustomTreeNode node = MakeNode(_qstrId, _qstrParent, 2, QString(), _iSortNo);
    node.m_qstrName = _qstrName;
    return node;
}

// custom_root_id "Campus"
//   north "North site"
//     rec "Gate recorder"
//       c1 "Entrance" 10.0.3.7:5, c2 "Lift A" 10.0.3.7:6
//       level "Level 3"
//         c3 "North gate cam" 10.0.9.1:1
//         room "Room 12"
//           c8 "Deep cam" 10.0.9.1:2
//   south "South site"
//     c4 "Entrance" 10.0.4.2:1, c5 "Gate north side" 10.0.4.2:2, c7 "Lift A" 10.0.4.2:3
//   c6 "Campus lobby" 10.1.1.1:2
inline QMap<QString, CLS_CustomTreeNode> SiteNodes()
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, Group("north", "custom_root_id", "North site", 1));
    Add(qmapNodes, Group("rec", "north", "Gate recorder", 1));
    Add(qmapNodes, Camera("c1", "rec", "Entrance", "10.0.3.7:5", 1));
    Add(qmapNodes, Camera("c2", "rec", "Lift A", "10.0.3.7:6", 2));
    Add(qmapNodes, Group("level", "rec", "Level 3", 3));
    Add(qmapNodes, Camera("c3", "level", "North gate cam", "10.0.9.1:1", 1));
    Add(qmapNodes, Group("room", "level", "Room 12", 2));
    Add(qmapNodes, Camera("c8", "room", "Deep cam", "10.0.9.1:2", 1));
    Add(qmapNodes, Group("south", "custom_root_id", "South site", 2));
    Add(qmapNodes, Camera("c4", "south", "Entrance", "10.0.4.2:1", 1));
    Add(qmapNodes, Camera("c5", "south", "Gate north side", "10.0.4.2:2", 2));
    Add(qmapNodes, Camera("c7", "south", "Lift A", "10.0.4.2:3", 3));
    Add(qmapNodes, Camera("c6", "custom_root_id", "Campus lobby", "10.1.1.1:2", 3));
    return qmapNodes;
}

inline const char* SiteRows()
{
    return "custom_root_id(north(rec(c1,c2,level(c3,room(c8)))),south(c4,c5,c7),c6)";
}

// A custom tree with check boxes, a search line and drag and drop, as the demo's resource tree.
inline bool BuildSites(CLS_TestDeviceTree& _tree)
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes = SiteNodes();
    return _tree.Init(qmapNodes, "Campus") == 0 && Rows(_tree) == SiteRows();
}

// The tree of the selection and drag tests: drag, check boxes, drop and (unless told) a search line,
// as a page's resource tree that feeds a layout.
class CLS_SelectionTree : public CLS_TestDeviceTree
{
public:
    explicit CLS_SelectionTree(bool _blSearch = true)
        : CLS_TestDeviceTree(nullptr, DEV_TREE_CUSTOM, true, true, false, _blSearch, true)
    {}
};

// Builds the sites, shows them with every row open and sets multi-select.
inline bool ShowSites(CLS_TestDeviceTree& _tree, bool _blMultiSelect)
{
    if (!BuildSites(_tree) || !ShowOpen(_tree))
        return false;
    _tree.SetMultiSelect(_blMultiSelect);
    return true;
}

inline QListWidget* ResultList(CLS_WgtDeviceTree& _tree)
{
    return PanelOf(_tree)->findChild<QListWidget*>("qlistWgtQueryResult");
}

inline QLineEdit* SearchLine(CLS_WgtDeviceTree& _tree)
{
    return PanelOf(_tree)->findChild<QLineEdit*>("qlineedtQueryInput");
}

// Types the line as a user does (the search runs on every change) and gives the entries as
// "id=text" in list order; the no-results entry has no id.
inline QStringList Search(CLS_WgtDeviceTree& _tree, const QString& _qstrLine)
{
    SearchLine(_tree)->clear();
    SearchLine(_tree)->setText(_qstrLine);
    QStringList qlstEntries;
    QListWidget* pList = ResultList(_tree);
    for (int i = 0; i < pList->count(); ++i)
        qlstEntries << pList->item(i)->data(Qt::UserRole).toString() + "=" + pList->item(i)->text();
    return qlstEntries;
}

// The ids of the entries alone.
inline QStringList SearchIds(CLS_WgtDeviceTree& _tree, const QString& _qstrLine)
{
    QStringList qlstIds;
    for (const QString& qstrEntry : Search(_tree, _qstrLine))
        qlstIds << qstrEntry.section('=', 0, 0);
    return qlstIds;
}

} // namespace CLS_FindAndTakeTestUtil
