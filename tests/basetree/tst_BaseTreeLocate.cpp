// Narrowing CLS_WgtBaseTreeWidget to what was searched for (by hiding rows), the name lookup
// behind it, and swapping two sibling rows.

#include "CLS_TestBaseTree.h"
#include "CLS_TreeSnapshot.h"

#include <QApplication>
#include <QPointer>
#include <QSignalSpy>
#include <QtTest>

using CLS_TreeSnapshot::Snapshot;
using namespace CLS_TreeTestUtil;

namespace {

// root (no row)
//   hall "Hall" (1): cam1 "Cam 1" (1), lobby "Lobby" (2)
//   yard "Yard" (2): gate "Gate Cam" (1): sensor "Sensor" (1)
//   office "Office" (3)
QMap<QString, CLS_TreeItem> SearchTree()
{
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("root", QString(), 0, "Root"));
    Add(qmapItems, MakeItem("hall", "root", 1, "Hall"));
    Add(qmapItems, MakeItem("cam1", "hall", 1, "Cam 1"));
    Add(qmapItems, MakeItem("lobby", "hall", 2, "Lobby"));
    Add(qmapItems, MakeItem("yard", "root", 2, "Yard"));
    Add(qmapItems, MakeItem("gate", "yard", 1, "Gate Cam"));
    Add(qmapItems, MakeItem("sensor", "gate", 1, "Sensor"));
    Add(qmapItems, MakeItem("office", "root", 3, "Office"));
    return qmapItems;
}

// Each row in row order: "id:H" when hidden, "id:S" when shown, with "E" when expanded.
QString Visibility(QTreeWidget& _tree)
{
    QStringList qlstRows;
    for (QTreeWidgetItemIterator it(&_tree); *it; ++it) {
        QString qstrRow = CLS_TreeSnapshot::NodeId(*it) + ":";
        if ((*it)->isHidden())
            qstrRow += "H";
        else
            qstrRow += (*it)->isExpanded() ? "SE" : "S";
        qlstRows << qstrRow;
    }
    return qlstRows.join(" ");
}

// root (no row)
//   p (1): A (1), B (2), C (3), D (4)   each with a button; A has A1
//   q (2): Q1 (1) with a button
QMap<QString, CLS_TreeItem> MoveTree()
{
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("root", QString(), 0));
    Add(qmapItems, MakeItem("p", "root", 1));
    int iNo = 1;
    for (const QString& qstrId : {"A", "B", "C", "D"}) {
        CLS_TreeItem clsItem = MakeItem(qstrId, "p", iNo++);
        clsItem.m_qvecButtons << MakeButton("btn" + qstrId);
        Add(qmapItems, clsItem);
    }
    Add(qmapItems, MakeItem("A1", "A", 1));
    Add(qmapItems, MakeItem("q", "root", 2));
    CLS_TreeItem clsQ1 = MakeItem("Q1", "q", 1);
    clsQ1.m_qvecButtons << MakeButton("btnQ1");
    Add(qmapItems, clsQ1);
    return qmapItems;
}

const QString CONST_qstrMoveTree = "p(A(A1),B,C,D),q(Q1)";

// "A:1 B:2 ..." the numbers in the bound records of the children of a row, in row order.
QString Numbers(CLS_TestBaseTree& _tree, const QString& _qstrParentId)
{
    QStringList qlstNumbers;
    QTreeWidgetItem* pParent = _tree.GetNodeById(_qstrParentId);
    for (int i = 0; i < pParent->childCount(); ++i) {
        CLS_TreeItem clsItem;
        _tree.GetBindData(pParent->child(i), clsItem);
        qlstNumbers << QString("%1:%2").arg(clsItem.m_qstrId).arg(clsItem.m_iSortNo);
    }
    return qlstNumbers.join(" ");
}

// Rows among the given ids that still show their tool bar.
QStringList WithToolBar(CLS_TestBaseTree& _tree, const QStringList& _qlstIds)
{
    QStringList qlstWith;
    for (const QString& qstrId : _qlstIds) {
        if (_tree.itemWidget(_tree.GetNodeById(qstrId), 1) != nullptr)
            qlstWith << qstrId;
    }
    return qlstWith;
}

} // namespace

class tst_BaseTreeLocate : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    // finding and narrowing
    void shouldShowMatchAndItsAncestorsExpanded();
    void shouldHideRowsBelowMatchThatDoNotMatch();
    void shouldHideEveryRowWhenNothingMatches();
    void shouldChangeNothingWithEmptyName();
    void shouldMatchFullTextNotElidedText();
    void shouldKeepTopLevelRowAloneWithShowById();
    void shouldShowAncestorsWithShowById();
    void shouldChangeNothingForUnknownOrEmptyId();
    void shouldKeepHiddenRowInAllItemsButNotInCheckedItems();
    void shouldFindNodesByNameIgnoringCase();
    void shouldRefuseEmptyNameInNodeLookup();

    // moves
    void shouldRefuseMoveUpOfFirstChild();
    void shouldRefuseMoveDownOfLastChild();
    void shouldRefuseMoveOfTopLevelRow();
    void shouldRefuseUnknownRows();
    void shouldRefuseDestinationUnderOtherParent();
    void shouldSwapRatherThanShift();
    void shouldSwapWithDestinationOnEitherSide();
    void shouldTakeAllChildrenOutEvenForSelfSwap();
    void shouldKeepRowsChecksAndIndexAcrossMove();
    void shouldMakeSourceCurrentAndVisible();
    void shouldReportSourceAsSelectedWithLastCurrentAsOld();
};

void tst_BaseTreeLocate::initTestCase()
{
    qRegisterMetaType<CLS_TreeItem>("CLS_TreeItem");
}

void tst_BaseTreeLocate::cleanup()
{
    const QStringList qlstLeaked = LeakedTopLevels();
    QVERIFY2(qlstLeaked.isEmpty(), qPrintable("top-level widgets left: " + qlstLeaked.join(", ")));
}

// ---- finding and narrowing -----------------------------------------------------------------------

void tst_BaseTreeLocate::shouldShowMatchAndItsAncestorsExpanded()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SearchTree(), false), 0);
    tree.SetShowItemByName("cam");
    QCOMPARE(Visibility(tree), QString("hall:SE cam1:SE lobby:H yard:SE gate:SE sensor:H office:H"));
    QCOMPARE(tree.m_qmapNodes.size(), 7);
}

void tst_BaseTreeLocate::shouldHideRowsBelowMatchThatDoNotMatch()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SearchTree(), false), 0);
    tree.SetShowItemByName("YARD");
    QCOMPARE(Visibility(tree), QString("hall:H cam1:H lobby:H yard:SE gate:H sensor:H office:H"));
}

void tst_BaseTreeLocate::shouldHideEveryRowWhenNothingMatches()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SearchTree(), false), 0);
    tree.SetShowItemByName("nothing like it");
    QCOMPARE(Visibility(tree), QString("hall:H cam1:H lobby:H yard:H gate:H sensor:H office:H"));
    QCOMPARE(Snapshot(tree), QString("hall(cam1,lobby),yard(gate(sensor)),office"));
    QMap<QString, CLS_TreeItem> qmapAll;
    QCOMPARE(tree.GetAllItems(qmapAll), 0);
    QCOMPARE(qmapAll.size(), 7);
}

void tst_BaseTreeLocate::shouldChangeNothingWithEmptyName()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SearchTree(), false), 0);
    tree.SetShowItemByName("");
    QCOMPARE(Visibility(tree), QString("hall:S cam1:S lobby:S yard:S gate:S sensor:S office:S"));

    tree.SetShowItemByName("lobby");
    const QString qstrNarrowed = Visibility(tree);
    QCOMPARE(qstrNarrowed, QString("hall:SE cam1:H lobby:SE yard:H gate:H sensor:H office:H"));
    tree.SetShowItemByName(QString());
    QCOMPARE(Visibility(tree), qstrNarrowed); // does not bring the rows back
}

void tst_BaseTreeLocate::shouldMatchFullTextNotElidedText()
{
    QMap<QString, CLS_TreeItem> qmapItems = SearchTree();
    qmapItems["office"].m_qstrText = "Office camera at the far north end of the building";
    CLS_TestBaseTree tree;
    tree.SetTextMaxWidth(40);
    QCOMPARE(tree.Init("root", qmapItems, false), 0);
    QVERIFY(!tree.GetNodeById("office")->text(0).contains("north"));

    QMap<QString, QTreeWidgetItem*> qmapFound;
    QCOMPARE(tree.GetNodeByName("NORTH", qmapFound), 0);
    QCOMPARE(qmapFound.keys(), QStringList({"office"}));
    tree.SetShowItemByName("north");
    QCOMPARE(Visibility(tree), QString("hall:H cam1:H lobby:H yard:H gate:H sensor:H office:SE"));
}

void tst_BaseTreeLocate::shouldKeepTopLevelRowAloneWithShowById()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SearchTree(), false), 0);
    tree.SetShowItemById("yard");
    QCOMPARE(Visibility(tree), QString("hall:H cam1:H lobby:H yard:SE gate:H sensor:H office:H"));
}

void tst_BaseTreeLocate::shouldShowAncestorsWithShowById()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SearchTree(), true), 0);
    tree.SetShowItemById("sensor");
    QCOMPARE(Visibility(tree), QString("root:SE hall:H cam1:H lobby:H yard:SE gate:SE sensor:SE office:H"));
}

void tst_BaseTreeLocate::shouldChangeNothingForUnknownOrEmptyId()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SearchTree(), false), 0);
    tree.SetShowItemById("cam1");
    const QString qstrNarrowed = Visibility(tree);
    QCOMPARE(qstrNarrowed, QString("hall:SE cam1:SE lobby:H yard:H gate:H sensor:H office:H"));
    tree.SetShowItemById("ghost");
    tree.SetShowItemById(QString());
    tree.SetShowItemById("root"); // no row without the root row
    QCOMPARE(Visibility(tree), qstrNarrowed);
}

void tst_BaseTreeLocate::shouldKeepHiddenRowInAllItemsButNotInCheckedItems()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SearchTree(), false), 0);
    for (const QString& qstrId : {"hall", "yard", "office"})
        tree.SetItemCheckStatus(qstrId, Qt::Checked);
    tree.SetShowItemById("cam1");

    QMap<QString, CLS_TreeItem> qmapAll;
    QCOMPARE(tree.GetAllItems(qmapAll), 0);
    QCOMPARE(qmapAll.keys().join(","), QString("cam1,gate,hall,lobby,office,sensor,yard"));
    QVector<CLS_TreeItem> qvecChecked;
    QCOMPARE(tree.GetCheckedItems(qvecChecked, false), 0);
    QCOMPARE(Ids(qvecChecked).join(","), QString("cam1,hall"));
    Qt::CheckState iState = Qt::Unchecked;
    QCOMPARE(tree.GetItemCheckStatus("lobby", iState), 0);
    QCOMPARE(iState, Qt::Checked); // hidden, not unchecked
}

void tst_BaseTreeLocate::shouldFindNodesByNameIgnoringCase()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SearchTree(), true), 0);
    QMap<QString, QTreeWidgetItem*> qmapFound;
    qmapFound.insert("earlier", nullptr);
    QCOMPARE(tree.GetNodeByName("cAm", qmapFound), 0);
    QCOMPARE(qmapFound.keys().join(","), QString("cam1,earlier,gate"));
    QCOMPARE(qmapFound.value("gate"), tree.GetNodeById("gate"));

    QMap<QString, QTreeWidgetItem*> qmapNone;
    QCOMPARE(tree.GetNodeByName("xyz", qmapNone), 0);
    QVERIFY(qmapNone.isEmpty());
    QCOMPARE(tree.GetNodeByName("root", qmapNone), 0); // the root row is a row like any other
    QCOMPARE(qmapNone.keys(), QStringList({"root"}));
}

void tst_BaseTreeLocate::shouldRefuseEmptyNameInNodeLookup()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SearchTree(), false), 0);
    QMap<QString, QTreeWidgetItem*> qmapFound;
    QCOMPARE(tree.GetNodeByName(QString(), qmapFound), -1);
    QVERIFY(qmapFound.isEmpty());
}

// ---- moves ---------------------------------------------------------------------------------------

void tst_BaseTreeLocate::shouldRefuseMoveUpOfFirstChild()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", MoveTree(), false), 0);
    tree.SetCurrentItem("q");
    CLS_TreeSignalLog log(&tree);

    QCOMPARE(tree.MoveUpOneRow("A", "B"), -1);
    QCOMPARE(tree.MoveUpOneRow("A", "A"), -1);

    QCOMPARE(Snapshot(tree), CONST_qstrMoveTree);
    QCOMPARE(Numbers(tree, "p"), QString("A:1 B:2 C:3 D:4"));
    QCOMPARE(WithToolBar(tree, {"A", "B", "C", "D"}).join(","), QString("A,B,C,D"));
    QCOMPARE(tree.currentItem(), tree.GetNodeById("q"));
    QVERIFY2(log.Lines().isEmpty(), qPrintable(log.Text()));
}

void tst_BaseTreeLocate::shouldRefuseMoveDownOfLastChild()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", MoveTree(), false), 0);
    QCOMPARE(tree.MoveDownOneRow("D", "C"), -1);
    QCOMPARE(tree.MoveDownOneRow("Q1", "Q1"), -1); // an only child is also the last
    QCOMPARE(Snapshot(tree), CONST_qstrMoveTree);
    QCOMPARE(Numbers(tree, "p"), QString("A:1 B:2 C:3 D:4"));
    QCOMPARE(WithToolBar(tree, {"A", "B", "C", "D", "Q1"}).size(), 5);
    QVERIFY(tree.currentItem() == nullptr);
}

void tst_BaseTreeLocate::shouldRefuseMoveOfTopLevelRow()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", MoveTree(), false), 0);
    QCOMPARE(tree.MoveUpOneRow("q", "p"), -1);
    QCOMPARE(tree.MoveDownOneRow("p", "q"), -1);
    QCOMPARE(Snapshot(tree), CONST_qstrMoveTree);
}

void tst_BaseTreeLocate::shouldRefuseUnknownRows()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", MoveTree(), false), 0);
    QCOMPARE(tree.MoveUpOneRow("ghost", "A"), -1);
    QCOMPARE(tree.MoveUpOneRow("B", "ghost"), -1);
    QCOMPARE(tree.MoveDownOneRow(QString(), "B"), -1);
    QCOMPARE(tree.MoveDownOneRow("B", QString()), -1);
    QCOMPARE(Snapshot(tree), CONST_qstrMoveTree);
    QCOMPARE(Numbers(tree, "p"), QString("A:1 B:2 C:3 D:4"));
}

void tst_BaseTreeLocate::shouldRefuseDestinationUnderOtherParent()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", MoveTree(), false), 0);
    QCOMPARE(tree.MoveUpOneRow("B", "Q1"), -1);
    QCOMPARE(tree.MoveDownOneRow("B", "A1"), -1);
    QCOMPARE(tree.MoveUpOneRow("B", "p"), -1); // the parent is no sibling
    QCOMPARE(Snapshot(tree), CONST_qstrMoveTree);
    QCOMPARE(Numbers(tree, "p"), QString("A:1 B:2 C:3 D:4"));
    QCOMPARE(Numbers(tree, "q"), QString("Q1:1"));
    QCOMPARE(WithToolBar(tree, {"A", "B", "C", "D", "Q1"}).size(), 5);
}

void tst_BaseTreeLocate::shouldSwapRatherThanShift()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", MoveTree(), false), 0);
    QCOMPARE(tree.MoveUpOneRow("C", "A"), 0);
    QCOMPARE(Snapshot(tree), QString("p(C,B,A(A1),D),q(Q1)"));
    QCOMPARE(Numbers(tree, "p"), QString("C:1 B:2 A:3 D:4"));
    CLS_TreeItem clsA;
    QCOMPARE(tree.GetItemById("A", clsA), 0);
    QCOMPARE(clsA.m_iSortNo, 3);
}

void tst_BaseTreeLocate::shouldSwapWithDestinationOnEitherSide()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", MoveTree(), false), 0);
    QCOMPARE(tree.MoveUpOneRow("B", "D"), 0); // "up" towards a row below
    QCOMPARE(Snapshot(tree), QString("p(A(A1),D,C,B),q(Q1)"));
    QCOMPARE(tree.MoveDownOneRow("C", "A"), 0); // "down" towards a row above
    QCOMPARE(Snapshot(tree), QString("p(C,D,A(A1),B),q(Q1)"));
    QCOMPARE(Numbers(tree, "p"), QString("C:1 D:2 A:3 B:4"));
}

void tst_BaseTreeLocate::shouldTakeAllChildrenOutEvenForSelfSwap()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", MoveTree(), false), 0);
    tree.resize(300, 300);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    tree.expandAll();
    QVERIFY(tree.GetNodeById("A")->isExpanded());

    QCOMPARE(tree.MoveDownOneRow("A", "A"), 0);

    QCOMPARE(Snapshot(tree), CONST_qstrMoveTree);
    QCOMPARE(Numbers(tree, "p"), QString("A:1 B:2 C:3 D:4"));
    // Every child went out and came back: the view dropped their tool bars, and did not expand
    // them again. The other parent's child keeps its bar.
    QCOMPARE(WithToolBar(tree, {"A", "B", "C", "D", "Q1"}).join(","), QString("Q1"));
    QVERIFY(!tree.GetNodeById("A")->isExpanded());
    QVERIFY(tree.GetNodeById("p")->isExpanded());
    QCOMPARE(tree.currentItem(), tree.GetNodeById("A"));
}

void tst_BaseTreeLocate::shouldKeepRowsChecksAndIndexAcrossMove()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", MoveTree(), false), 0);
    tree.SetItemCheckStatus("B", Qt::Checked);
    tree.SetItemDisabled("D", true);
    const QMap<QString, QTreeWidgetItem*> qmapBefore = tree.m_qmapNodes;
    QPointer<QObject> pRowB = dynamic_cast<QObject*>(tree.GetNodeById("B"));

    QCOMPARE(tree.MoveDownOneRow("B", "D"), 0);

    QCOMPARE(Snapshot(tree), QString("p(A(A1),D,C,B),q(Q1)"));
    QCOMPARE(tree.m_qmapNodes, qmapBefore);
    QVERIFY(pRowB);
    QCOMPARE(tree.GetNodeById("B")->checkState(0), Qt::Checked);
    QVERIFY(!(tree.GetNodeById("D")->flags() & Qt::ItemIsEnabled));
    QCOMPARE(Numbers(tree, "p"), QString("A:1 D:2 C:3 B:4"));
}

void tst_BaseTreeLocate::shouldMakeSourceCurrentAndVisible()
{
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("root", QString(), 0));
    Add(qmapItems, MakeItem("p", "root", 0));
    for (int i = 0; i < 60; ++i)
        Add(qmapItems, MakeItem(QString("r%1").arg(i, 2, 10, QChar('0')), "p", i));
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", qmapItems, false), 0);
    tree.expandAll();
    tree.resize(200, 120);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    QTreeWidgetItem* pSource = tree.GetNodeById("r50");
    QVERIFY(!tree.viewport()->rect().intersects(tree.visualItemRect(pSource)));

    QCOMPARE(tree.MoveDownOneRow("r50", "r51"), 0);

    QCOMPARE(tree.currentItem(), pSource);
    QCOMPARE(tree.GetNodeById("p")->indexOfChild(pSource), 51);
    QVERIFY(tree.viewport()->rect().contains(tree.visualItemRect(pSource).center()));
}

void tst_BaseTreeLocate::shouldReportSourceAsSelectedWithLastCurrentAsOld()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", MoveTree(), false), 0);
    tree.SetCurrentItem("Q1");
    CLS_TreeSignalLog log(&tree);
    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignSelected);

    QCOMPARE(tree.MoveUpOneRow("C", "B"), 0);
    QCOMPARE(log.Text(), QString("Selected(C<-Q1)"));
    QCOMPARE(spy.at(0).at(1).value<CLS_TreeItem>().m_iSortNo, 2); // the record already swapped

    // With the current row among the children, whatever Qt does while they are out is reported
    // too; the last word is the source row.
    log.Clear();
    QCOMPARE(tree.MoveDownOneRow("A", "B"), 0);
    QVERIFY2(log.Lines().last().startsWith("Selected(A<-"), qPrintable(log.Text()));
    QVERIFY(tree.m_blSendSelected);
    QCOMPARE(Snapshot(tree), QString("p(B,C,A(A1),D),q(Q1)"));
}

QTEST_MAIN(tst_BaseTreeLocate)
#include "tst_BaseTreeLocate.moc"
