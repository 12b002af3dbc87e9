#pragma once
// Test helpers for base trees: record and button makers, id lists, and the viewport points a user
// would click. GUI thread only.

#include "TreeStructDefine.h"

#include <QMap>
#include <QPoint>
#include <QStringList>
#include <QVector>

class CLS_TestBaseTree;
class QStackedWidget;
class QTreeWidgetItem;

namespace CLS_TreeTestUtil {

// A record with a tool tip "tip <id>"; the text is the id unless given.
CLS_TreeItem MakeItem(const QString& _qstrId, const QString& _qstrParentId, int _iSortNo = 99,
                      const QString& _qstrText = QString());

// A button with text "text <id>" and tool tip "tip <id>".
CLS_ItemButton MakeButton(const QString& _qstrId, bool _blCheckable = false, bool _blChecked = false);

// A button with the text and tool tip given (either may be empty, as for an icon-only button).
CLS_ItemButton MakeNamedButton(const QString& _qstrId, const QString& _qstrText, const QString& _qstrTip);

// Adds a record to a map by its id.
void Add(QMap<QString, CLS_TreeItem>& _qmapItems, const CLS_TreeItem& _clsItem);

// The records of a tree written as its rows: "a(a1,a2),b:5,c" under the root record _qstrRootId
// (no parent, number 0). Siblings are numbered by place from 1 unless ":n" gives the number; each
// record is MakeItem's.
QMap<QString, CLS_TreeItem> ItemsOf(const QString& _qstrRootId, const QString& _qstrRows);

// Expands every row, shows the tree at 300 x 300 and waits until it is on the screen.
bool ShowTree(CLS_TestBaseTree& _tree);

// Top-level widgets still alive, as "Class \"name\"": a test's cleanup expects none.
QStringList LeakedTopLevels();

// Ids of records, in vector order.
QStringList Ids(const QVector<CLS_TreeItem>& _qvecItems);

// Ids of the children of a row, in row order.
QStringList ChildIds(const QTreeWidgetItem* _pNode);

// Centre of a row on the viewport (column 0), where a user would click it.
QPoint RowCenter(CLS_TestBaseTree& _tree, const QString& _qstrId);

// A point on the viewport below the last row.
QPoint EmptyAreaPoint(CLS_TestBaseTree& _tree);

// Centre of the check box of a row, taken from the style as the delegate does.
QPoint CheckBoxCenter(CLS_TestBaseTree& _tree, const QString& _qstrId);

// A plain mouse move without buttons, straight to the viewport, so that it reaches
// mouseMoveEvent whatever the platform does with the cursor.
void MoveMouse(CLS_TestBaseTree& _tree, const QPoint& _pos, Qt::MouseButtons _buttons = Qt::NoButton);

// The column-1 widget of a row as a stack, or null.
QStackedWidget* StackOf(CLS_TestBaseTree& _tree, const QString& _qstrId);

} // namespace CLS_TreeTestUtil
