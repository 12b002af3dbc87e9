#pragma once
// Test helper: a tree as one short string of record ids, "root(a(a1,a2),b)", so that one
// comparison checks a whole structure and a failure prints something readable.

#include <QString>
#include <QStringList>
#include <QTreeWidget>
#include <QTreeWidgetItem>

namespace CLS_TreeSnapshot {

// The record id of a row (column 0, Qt::UserRole).
QString NodeId(const QTreeWidgetItem* _pNode);

// A row and everything below it.
QString Snapshot(const QTreeWidgetItem* _pNode);

// Every top-level row, joined by ",".
QString Snapshot(const QTreeWidget& _tree);

} // namespace CLS_TreeSnapshot
