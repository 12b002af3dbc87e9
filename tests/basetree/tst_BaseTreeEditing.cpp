// Editing the rows of CLS_WgtBaseTreeWidget one at a time: add, delete, update, icon, disable,
// elision width.

#include "CLS_TestBaseTree.h"
#include "CLS_TreeSnapshot.h"
#include "CLS_WgtItemToolBar.h"
#include "CLS_WgtToolBtnStack.h"
#include "CLS_WgtTreeWidgetItem.h"

#include <QApplication>
#include <QFontMetrics>
#include <QIcon>
#include <QImage>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using CLS_TreeSnapshot::Snapshot;
using namespace CLS_TreeTestUtil;

namespace {

// root (no row)
//   p (1): c1 (1), c3a (3), c3b (3), c7 (7)
//   q (2): q1 (1): q11 (1): q111 (1)
//   e (3)
QMap<QString, CLS_TreeItem> SampleTree()
{
    return ItemsOf("root", "p(c1,c3a:3,c3b:3,c7:7),q(q1(q11(q111))),e");
}

const QString CONST_qstrSample = "p(c1,c3a,c3b,c7),q(q1(q11(q111))),e";

QStringList SortedKeys(const CLS_TestBaseTree& _tree)
{
    return _tree.m_qmapNodes.keys();
}

QRgb IconColour(const QVariant& _varIcon)
{
    return qvariant_cast<QIcon>(_varIcon).pixmap(8, 8).toImage().pixel(4, 4);
}

} // namespace

class tst_BaseTreeEditing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    // AddItem
    void shouldRefuseDuplicateIdAndKeepFirstRow();
    void shouldRefuseRecordWithEmptyParentId();
    void shouldRefuseParentThatIsRootWithoutRow();
    void shouldRefuseUnknownParentOrEmptyId();
    void shouldPlaceBehindSiblingsOfEqualNumber();
    void shouldPlaceByNumberAmongSiblings_data();
    void shouldPlaceByNumberAmongSiblings();
    void shouldPlaceFirstChildAtIndexZero();
    void shouldPassOverChildWithoutRecordWhenPlacing();
    void shouldStartUncheckedSilentlyAndLeaveParentCollapsed();
    void shouldGiveFixedGeometryOnlyToStackOfAddedRow();
    void shouldMountStackPagesOnAddedRowByShowType();
    void shouldGiveNoColumnWidgetToAddedRowWithoutButtons();
    void shouldAddItemsInVectorOrderDroppingResults();

    // DeleteItem
    void shouldForgetRowAndAllDescendantsOnDelete();
    void shouldTakeTopLevelRowOutOnDelete();
    void shouldChangeNothingOnDeleteOfUnknownOrEmptyId();
    void shouldKeepTakenRowsAliveUntilClear();
    void shouldKeepTakenRowsAliveUntilNextInit();
    void shouldFreeTakenRowsWithTree();
    void shouldEmitNothingWhenDeletingRowThatIsNotCurrent();
    void shouldLetSelectionFollowWhenDeletingCurrentRow();
    void shouldAcceptSameIdAgainAfterDelete();

    // UpdateItem
    void shouldNotMoveRowOnUpdateWithNewNumberOrParent();
    void shouldEnableDisabledRowOnUpdateWithZeroFlags();
    void shouldApplyRecordFlagsOnUpdate();
    void shouldKeepCheckHiddenExpandedAndToolBarOnUpdate();
    void shouldIgnoreUpdateOfUnknownOrEmptyId();
    void shouldElideOnUpdateWithFontOfRow();

    // UpdateItemIcon
    void shouldShowNewIconButKeepRecordIcon();
    void shouldIgnoreIconUpdateOfUnknownId();

    // SetItemDisabled
    void shouldLeaveRowEnabledInTreeWithoutCheckBoxes();
    void shouldDisableAndEnableRowWithItsDescendants();
    void shouldIgnoreDisableOfEmptyOrUnknownId();

    // SetTextMaxWidth
    void shouldTurnElisionOffForLaterRows_data();
    void shouldTurnElisionOffForLaterRows();
    void shouldKeepTextOfExistingRowsOnNewWidth();

private:
    QTemporaryDir m_tmpDir;
    QString m_qstrRedIcon;
    QString m_qstrBlueIcon;
};

void tst_BaseTreeEditing::initTestCase()
{
    QVERIFY(m_tmpDir.isValid());
    QImage red(8, 8, QImage::Format_RGB32);
    red.fill(Qt::red);
    QImage blue(8, 8, QImage::Format_RGB32);
    blue.fill(Qt::blue);
    m_qstrRedIcon = m_tmpDir.filePath("red.png");
    m_qstrBlueIcon = m_tmpDir.filePath("blue.png");
    QVERIFY(red.save(m_qstrRedIcon));
    QVERIFY(blue.save(m_qstrBlueIcon));
}

void tst_BaseTreeEditing::cleanup()
{
    const QStringList qlstLeaked = LeakedTopLevels();
    QVERIFY2(qlstLeaked.isEmpty(), qPrintable("top-level widgets left: " + qlstLeaked.join(", ")));
}

// ---- AddItem -------------------------------------------------------------------------------------

void tst_BaseTreeEditing::shouldRefuseDuplicateIdAndKeepFirstRow()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QCOMPARE(tree.AddItem(MakeItem("n", "p", 5, "first")), 0);
    QTreeWidgetItem* pFirst = tree.GetNodeById("n");

    CLS_TreeItem clsSecond = MakeItem("n", "q", 0, "second");
    clsSecond.m_qvecButtons << MakeButton("b1");
    QCOMPARE(tree.AddItem(clsSecond), -1);

    QCOMPARE(Snapshot(tree), QString("p(c1,c3a,c3b,n,c7),q(q1(q11(q111))),e"));
    QCOMPARE(tree.GetNodeById("n"), pFirst);
    CLS_TreeItem clsRead;
    QCOMPARE(tree.GetItemById("n", clsRead), 0);
    QCOMPARE(clsRead.m_qstrText, QString("first"));
    QCOMPARE(clsRead.m_qstrParentId, QString("p"));
    QCOMPARE(pFirst->text(0), QString("first"));
    QVERIFY(tree.itemWidget(pFirst, 1) == nullptr);
}

void tst_BaseTreeEditing::shouldRefuseRecordWithEmptyParentId()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QCOMPARE(tree.AddItem(MakeItem("top", QString(), 0)), -1);
    QCOMPARE(Snapshot(tree), CONST_qstrSample);
    QVERIFY(!tree.m_qmapNodes.contains("top"));
}

void tst_BaseTreeEditing::shouldRefuseParentThatIsRootWithoutRow()
{
    // Given a tree built without its root row, the root id names no row.
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QCOMPARE(tree.AddItem(MakeItem("top", "root", 0)), -1);
    QCOMPARE(Snapshot(tree), CONST_qstrSample);

    // With the root row it is an ordinary parent.
    CLS_TestBaseTree treeWithRoot;
    QCOMPARE(treeWithRoot.Init("root", SampleTree(), true), 0);
    QCOMPARE(treeWithRoot.AddItem(MakeItem("top", "root", 0)), 0);
    QCOMPARE(Snapshot(treeWithRoot), "root(top," + CONST_qstrSample + ")");
}

void tst_BaseTreeEditing::shouldRefuseUnknownParentOrEmptyId()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QCOMPARE(tree.AddItem(MakeItem("n", "ghost", 0)), -1);
    QCOMPARE(tree.AddItem(MakeItem(QString(), "p", 0)), -1);
    QCOMPARE(Snapshot(tree), CONST_qstrSample);
    QCOMPARE(tree.GetNodeById("p")->childCount(), 4);
    QVERIFY(!tree.m_qmapNodes.contains(QString()));
    QVERIFY(!tree.m_qmapNodes.contains("n"));
}

void tst_BaseTreeEditing::shouldPlaceBehindSiblingsOfEqualNumber()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QCOMPARE(tree.AddItem(MakeItem("new3", "p", 3)), 0);
    QTreeWidgetItem* pParent = tree.GetNodeById("p");
    QCOMPARE(ChildIds(pParent).join(","), QString("c1,c3a,c3b,new3,c7"));
    QCOMPARE(pParent->indexOfChild(tree.GetNodeById("new3")), 3);
}

void tst_BaseTreeEditing::shouldPlaceByNumberAmongSiblings_data()
{
    QTest::addColumn<int>("iSortNo");
    QTest::addColumn<int>("iIndex");
    QTest::newRow("0 first") << 0 << 0;
    QTest::newRow("1 behind 1") << 1 << 1;
    QTest::newRow("2 between 1 and 3") << 2 << 1;
    QTest::newRow("7 behind 7") << 7 << 4;
    QTest::newRow("100 last") << 100 << 4;
    QTest::newRow("negative first") << -4 << 0;
}

void tst_BaseTreeEditing::shouldPlaceByNumberAmongSiblings()
{
    QFETCH(int, iSortNo);
    QFETCH(int, iIndex);
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QCOMPARE(tree.AddItem(MakeItem("new", "p", iSortNo)), 0);
    QTreeWidgetItem* pParent = tree.GetNodeById("p");
    QVERIFY2(pParent->indexOfChild(tree.GetNodeById("new")) == iIndex, qPrintable(Snapshot(tree)));
    QCOMPARE(pParent->childCount(), 5);
}

void tst_BaseTreeEditing::shouldPlaceFirstChildAtIndexZero()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QCOMPARE(tree.AddItem(MakeItem("e1", "e", 50)), 0);
    QCOMPARE(tree.AddItem(MakeItem("q1111", "q111", -1)), 0);
    QCOMPARE(Snapshot(tree), QString("p(c1,c3a,c3b,c7),q(q1(q11(q111(q1111)))),e(e1)"));
    QCOMPARE(tree.GetNodeById("e")->indexOfChild(tree.GetNodeById("e1")), 0);
}

void tst_BaseTreeEditing::shouldPassOverChildWithoutRecordWhenPlacing()
{
    // Given children x (1), a row without a record, y (5).
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QCOMPARE(tree.AddItem(MakeItem("x", "e", 1)), 0);
    QCOMPARE(tree.AddItem(MakeItem("y", "e", 5)), 0);
    QTreeWidgetItem* pParent = tree.GetNodeById("e");
    auto* pRaw = new QTreeWidgetItem(QStringList{"raw"}); // owned by the tree from insertChild on
    pParent->insertChild(1, pRaw);

    // When a record numbered 3 comes, the unreadable row does not stop the walk.
    QCOMPARE(tree.AddItem(MakeItem("new3", "e", 3)), 0);
    QCOMPARE(pParent->indexOfChild(tree.GetNodeById("new3")), 2);
    QCOMPARE(pParent->indexOfChild(pRaw), 1);
}

void tst_BaseTreeEditing::shouldStartUncheckedSilentlyAndLeaveParentCollapsed()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetItemCheckStatus("p", Qt::Checked);
    Qt::CheckState iState = Qt::Unchecked;
    QCOMPARE(tree.GetItemCheckStatus("p", iState), 0);
    QCOMPARE(iState, Qt::Checked);

    CLS_TreeSignalLog log(&tree);
    QCOMPARE(tree.AddItem(MakeItem("new", "p", 50)), 0);

    QCOMPARE(tree.GetNodeById("new")->checkState(0), Qt::Unchecked);
    QCOMPARE(tree.GetItemCheckStatus("p", iState), 0);
    QCOMPARE(iState, Qt::PartiallyChecked); // derived by Qt from the children
    QVERIFY2(log.Lines().isEmpty(), qPrintable(log.Text()));
    QVERIFY(!tree.GetNodeById("p")->isExpanded());
}

void tst_BaseTreeEditing::shouldGiveFixedGeometryOnlyToStackOfAddedRow()
{
    QMap<QString, CLS_TreeItem> qmapItems = SampleTree();
    CLS_TreeItem clsBuilt = MakeItem("built", "p", 9);
    clsBuilt.m_qvecButtons << MakeButton("b1") << MakeButton("b2");
    Add(qmapItems, clsBuilt);

    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_HOVER);
    QCOMPARE(tree.Init("root", qmapItems, false), 0);
    CLS_TreeItem clsAdded = MakeItem("added", "p", 9);
    clsAdded.m_qvecButtons = clsBuilt.m_qvecButtons;
    QCOMPARE(tree.AddItem(clsAdded), 0);

    // Read before the view lays its index widgets out.
    QStackedWidget* pAdded = StackOf(tree, "added");
    QStackedWidget* pBuilt = StackOf(tree, "built");
    QVERIFY(pAdded != nullptr);
    QVERIFY(pBuilt != nullptr);
    QCOMPARE(pAdded->geometry(), QRect(0, 0, 50, 30));
    QVERIFY2(pBuilt->size() != QSize(50, 30), "a stack built by Init got the geometry of AddItem");
}

void tst_BaseTreeEditing::shouldMountStackPagesOnAddedRowByShowType()
{
    for (n_ItemBtnShowType iType : {ITEM_BTN_SHOW_ALWAYS, ITEM_BTN_SHOW_HOVER}) {
        CLS_TestBaseTree tree(nullptr, false, false, false, false, iType);
        QCOMPARE(tree.Init("root", SampleTree(), false), 0);
        CLS_TreeItem clsAdded = MakeItem("added", "p", 9);
        clsAdded.m_qvecButtons << MakeButton("b1");
        QCOMPARE(tree.AddItem(clsAdded), 0);
        auto* pStack = qobject_cast<CLS_WgtToolBtnStack*>(tree.itemWidget(tree.GetNodeById("added"), 1));
        QVERIFY(pStack != nullptr);
        QCOMPARE(pStack->currentIndex(), 0);
        if (iType == ITEM_BTN_SHOW_ALWAYS) {
            QCOMPARE(pStack->count(), 1);
            QVERIFY(qobject_cast<CLS_WgtItemToolBar*>(pStack->widget(0)) != nullptr);
        } else {
            QCOMPARE(pStack->count(), 2);
            QVERIFY(qobject_cast<CLS_WgtItemToolBar*>(pStack->widget(0)) == nullptr);
            QVERIFY(qobject_cast<CLS_WgtItemToolBar*>(pStack->widget(1)) != nullptr);
        }
    }
}

void tst_BaseTreeEditing::shouldGiveNoColumnWidgetToAddedRowWithoutButtons()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_HOVER);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QCOMPARE(tree.AddItem(MakeItem("plain", "p", 9)), 0);
    QVERIFY(tree.itemWidget(tree.GetNodeById("plain"), 1) == nullptr);
}

void tst_BaseTreeEditing::shouldAddItemsInVectorOrderDroppingResults()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    // y needs x, which stands ahead of it; "c1" is a duplicate and "z" waits for a later parent.
    QVector<CLS_TreeItem> qvecItems{MakeItem("x", "e", 1), MakeItem("c1", "e", 2), MakeItem("y", "x", 1),
                                    MakeItem("z", "w", 1), MakeItem("w", "e", 3)};
    tree.AddItems(qvecItems);
    QCOMPARE(Snapshot(tree), QString("p(c1,c3a,c3b,c7),q(q1(q11(q111))),e(x(y),w)"));
    QVERIFY(tree.GetNodeById("z") == nullptr);
}

// ---- DeleteItem ----------------------------------------------------------------------------------

void tst_BaseTreeEditing::shouldForgetRowAndAllDescendantsOnDelete()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    tree.DeleteItem("q1");

    QCOMPARE(Snapshot(tree), QString("root(p(c1,c3a,c3b,c7),q,e)"));
    for (const QString& qstrId : {"q1", "q11", "q111"})
        QVERIFY2(tree.GetNodeById(qstrId) == nullptr, qPrintable(qstrId));
    QMap<QString, CLS_TreeItem> qmapAll;
    QCOMPARE(tree.GetAllItems(qmapAll), 0);
    QCOMPARE(qmapAll.keys().join(","), QString("c1,c3a,c3b,c7,e,p,q,root"));
    QCOMPARE(SortedKeys(tree), qmapAll.keys());
}

void tst_BaseTreeEditing::shouldTakeTopLevelRowOutOnDelete()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.DeleteItem("q");
    QCOMPARE(Snapshot(tree), QString("p(c1,c3a,c3b,c7),e"));
    QCOMPARE(tree.topLevelItemCount(), 2);
    QVERIFY(tree.GetNodeById("q") == nullptr);
    QVERIFY(tree.GetNodeById("q111") == nullptr);
}

void tst_BaseTreeEditing::shouldChangeNothingOnDeleteOfUnknownOrEmptyId()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    const QStringList qlstKeys = SortedKeys(tree);
    CLS_TreeSignalLog log(&tree);
    tree.DeleteItem("ghost");
    tree.DeleteItem(QString());
    tree.DeleteItem("root"); // the root has no row here
    QCOMPARE(Snapshot(tree), CONST_qstrSample);
    QCOMPARE(SortedKeys(tree), qlstKeys);
    QVERIFY2(log.Lines().isEmpty(), qPrintable(log.Text()));
}

void tst_BaseTreeEditing::shouldKeepTakenRowsAliveUntilClear()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QPointer<CLS_WgtTreeWidgetItem> pRow = dynamic_cast<CLS_WgtTreeWidgetItem*>(tree.GetNodeById("q1"));
    QPointer<CLS_WgtTreeWidgetItem> pLeaf = dynamic_cast<CLS_WgtTreeWidgetItem*>(tree.GetNodeById("q111"));
    QVERIFY(pRow && pLeaf);

    tree.DeleteItem("q1");
    // Taken out of the view, not destroyed: pointers held elsewhere stay readable.
    QVERIFY(pRow);
    QVERIFY(pLeaf);
    QVERIFY(pRow->treeWidget() == nullptr);
    QCOMPARE(pRow->QTreeWidgetItem::parent(), static_cast<QTreeWidgetItem*>(nullptr));
    QCOMPARE(pRow->text(0), QString("q1"));
    QCOMPARE(CLS_TreeSnapshot::Snapshot(pRow.data()), QString("q1(q11(q111))"));

    tree.Clear();
    QVERIFY2(!pRow && !pLeaf, "rows taken out by DeleteItem outlived Clear");
}

void tst_BaseTreeEditing::shouldKeepTakenRowsAliveUntilNextInit()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QPointer<CLS_WgtTreeWidgetItem> pRow = dynamic_cast<CLS_WgtTreeWidgetItem*>(tree.GetNodeById("e"));
    tree.DeleteItem("e");
    QVERIFY(pRow);
    QCOMPARE(tree.Init("", SampleTree(), false), -1); // a refused Init changes nothing
    QVERIFY(pRow);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(!pRow);
}

void tst_BaseTreeEditing::shouldFreeTakenRowsWithTree()
{
    QPointer<CLS_WgtTreeWidgetItem> pRow;
    {
        CLS_TestBaseTree tree;
        QCOMPARE(tree.Init("root", SampleTree(), false), 0);
        pRow = dynamic_cast<CLS_WgtTreeWidgetItem*>(tree.GetNodeById("p"));
        tree.DeleteItem("p");
        QVERIFY(pRow);
    }
    QVERIFY(!pRow);
}

void tst_BaseTreeEditing::shouldEmitNothingWhenDeletingRowThatIsNotCurrent()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, true, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetItemCheckStatus("c7", Qt::Checked);
    tree.SetCurrentItem("q");
    CLS_TreeSignalLog log(&tree);

    tree.DeleteItem("c7"); // the parent's derived state goes from partial to unchecked
    tree.DeleteItem("c1");

    Qt::CheckState iState = Qt::Checked;
    QCOMPARE(tree.GetItemCheckStatus("p", iState), 0);
    QCOMPARE(iState, Qt::Unchecked);
    QVERIFY2(log.Lines().isEmpty(), qPrintable(log.Text()));
    QCOMPARE(tree.currentItem(), tree.GetNodeById("q"));
}

void tst_BaseTreeEditing::shouldLetSelectionFollowWhenDeletingCurrentRow()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.expandAll();
    tree.SetCurrentItem("c3a");
    CLS_TreeSignalLog log(&tree);

    tree.DeleteItem("c3a");

    // Whatever row Qt makes current now is reported; the gate is not touched by DeleteItem.
    QTreeWidgetItem* pCurrent = tree.currentItem();
    QVERIFY(pCurrent != nullptr);
    const QString qstrNew = CLS_TreeSnapshot::NodeId(pCurrent);
    QCOMPARE(log.Count("Selected"), 1);
    QVERIFY2(log.Lines().first().startsWith("Selected(" + qstrNew + "<-"), qPrintable(log.Text()));
    QVERIFY(tree.m_blSendSelected);
}

void tst_BaseTreeEditing::shouldAcceptSameIdAgainAfterDelete()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetItemCheckStatus("c3a", Qt::Checked);
    tree.DeleteItem("c3a");
    QCOMPARE(tree.AddItem(MakeItem("c3a", "p", 3)), 0);
    QCOMPARE(Snapshot(tree), QString("p(c1,c3b,c3a,c7),q(q1(q11(q111))),e"));
    QCOMPARE(tree.GetNodeById("c3a")->checkState(0), Qt::Unchecked);
}

// ---- UpdateItem ----------------------------------------------------------------------------------

void tst_BaseTreeEditing::shouldNotMoveRowOnUpdateWithNewNumberOrParent()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QTreeWidgetItem* pRow = tree.GetNodeById("c1");
    CLS_TreeItem clsNew = MakeItem("c1", "q", 42, "renamed");
    tree.UpdateItem(clsNew);

    QCOMPARE(Snapshot(tree), CONST_qstrSample);
    QCOMPARE(tree.GetNodeById("c1"), pRow);
    CLS_TreeItem clsRead;
    QCOMPARE(tree.GetItemById("c1", clsRead), 0);
    QCOMPARE(clsRead.m_iSortNo, 42);
    QCOMPARE(clsRead.m_qstrParentId, QString("q"));
    QCOMPARE(clsRead.m_qstrText, QString("renamed"));
    QCOMPARE(pRow->text(0), QString("renamed"));
    QCOMPARE(pRow->toolTip(0), QString("tip c1"));
    QCOMPARE(pRow->data(0, Qt::UserRole).toString(), QString("c1"));
}

void tst_BaseTreeEditing::shouldEnableDisabledRowOnUpdateWithZeroFlags()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetItemDisabled("c3b", true);
    QVERIFY(!(tree.GetNodeById("c3b")->flags() & Qt::ItemIsEnabled));

    CLS_TreeItem clsRead;
    QCOMPARE(tree.GetItemById("c3b", clsRead), 0);
    QCOMPARE(clsRead.m_iItemFlags, 0); // the record never learnt of the disabling
    tree.UpdateItem(clsRead);

    QCOMPARE(int(tree.GetNodeById("c3b")->flags()), tree.m_iDefaultFlags);
}

void tst_BaseTreeEditing::shouldApplyRecordFlagsOnUpdate()
{
    CLS_TestBaseTree tree(nullptr, true, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    CLS_TreeItem clsNew = MakeItem("c7", "p", 7);
    clsNew.m_iItemFlags = 0x21;
    tree.UpdateItem(clsNew);
    QCOMPARE(int(tree.GetNodeById("c7")->flags()), 0x21);
}

void tst_BaseTreeEditing::shouldKeepCheckHiddenExpandedAndToolBarOnUpdate()
{
    QMap<QString, CLS_TreeItem> qmapItems = SampleTree();
    qmapItems["q1"].m_qvecButtons << MakeButton("b1");
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", qmapItems, false), 0);
    tree.SetItemCheckStatus("q1", Qt::Checked);
    tree.GetNodeById("q1")->setExpanded(true);
    tree.GetNodeById("c1")->setHidden(true);
    QWidget* pStack = tree.itemWidget(tree.GetNodeById("q1"), 1);
    QVERIFY(pStack != nullptr);
    auto* pBar = pStack->findChild<CLS_WgtItemToolBar*>();
    QVERIFY(pBar != nullptr);
    QCOMPARE(pBar->actions().size(), 1);

    CLS_TreeItem clsQ1 = qmapItems["q1"];
    clsQ1.m_qstrText = "new text";
    clsQ1.m_qvecButtons << MakeButton("b2") << MakeButton("b3");
    tree.UpdateItem(clsQ1);
    tree.UpdateItem(MakeItem("c1", "p", 1, "c1 new"));

    QTreeWidgetItem* pQ1 = tree.GetNodeById("q1");
    QCOMPARE(pQ1->text(0), QString("new text"));
    QCOMPARE(pQ1->checkState(0), Qt::Checked);
    QCOMPARE(tree.GetNodeById("q111")->checkState(0), Qt::Checked);
    QVERIFY(pQ1->isExpanded());
    QVERIFY(tree.GetNodeById("c1")->isHidden());
    QCOMPARE(tree.itemWidget(pQ1, 1), pStack);
    QCOMPARE(pBar->actions().size(), 1); // buttons are stored, not shown
    CLS_TreeItem clsRead;
    QCOMPARE(tree.GetItemById("q1", clsRead), 0);
    QCOMPARE(clsRead.m_qvecButtons.size(), 3);
}

void tst_BaseTreeEditing::shouldIgnoreUpdateOfUnknownOrEmptyId()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QMap<QString, CLS_TreeItem> qmapBefore;
    tree.GetAllItems(qmapBefore);
    tree.UpdateItem(MakeItem("ghost", "p", 0, "ghost"));
    tree.UpdateItem(MakeItem(QString(), "p", 0, "nameless"));
    QCOMPARE(Snapshot(tree), CONST_qstrSample);
    QMap<QString, CLS_TreeItem> qmapAfter;
    tree.GetAllItems(qmapAfter);
    QCOMPARE(qmapAfter.keys(), qmapBefore.keys());
    for (auto it = qmapAfter.cbegin(); it != qmapAfter.cend(); ++it)
        QCOMPARE(it.value().m_qstrText, qmapBefore.value(it.key()).m_qstrText);
}

void tst_BaseTreeEditing::shouldElideOnUpdateWithFontOfRow()
{
    const QString qstrLong = "A rather long caption that cannot fit in eighty pixels";
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QTreeWidgetItem* pRow = tree.GetNodeById("c1");
    QFont bigFont;
    bigFont.setPixelSize(40);
    pRow->setFont(0, bigFont);

    tree.SetTextMaxWidth(80);
    CLS_TreeItem clsNew = MakeItem("c1", "p", 1, qstrLong);
    tree.UpdateItem(clsNew);

    const QString qstrExpected = QFontMetrics(bigFont).elidedText(qstrLong, Qt::ElideRight, 80, 0);
    const QString qstrDefaultFont = QFontMetrics(QFont()).elidedText(qstrLong, Qt::ElideRight, 80, 0);
    QVERIFY(qstrExpected != qstrDefaultFont); // else the test would not tell the fonts apart
    QCOMPARE(pRow->text(0), qstrExpected);
    CLS_TreeItem clsRead;
    QCOMPARE(tree.GetItemById("c1", clsRead), 0);
    QCOMPARE(clsRead.m_qstrText, qstrLong);
}

// ---- UpdateItemIcon ------------------------------------------------------------------------------

void tst_BaseTreeEditing::shouldShowNewIconButKeepRecordIcon()
{
    QMap<QString, CLS_TreeItem> qmapItems = SampleTree();
    qmapItems["c1"].m_qstrIcon = m_qstrRedIcon;
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", qmapItems, false), 0);
    QTreeWidgetItem* pRow = tree.GetNodeById("c1");
    QCOMPARE(IconColour(pRow->data(0, Qt::DecorationRole)), qRgb(255, 0, 0));

    tree.UpdateItemIcon("c1", m_qstrBlueIcon);
    QCOMPARE(IconColour(pRow->data(0, Qt::DecorationRole)), qRgb(0, 0, 255));
    CLS_TreeItem clsRead;
    QCOMPARE(tree.GetItemById("c1", clsRead), 0);
    QCOMPARE(clsRead.m_qstrIcon, m_qstrRedIcon);

    // A record read back from the tree puts the old icon back.
    tree.UpdateItem(clsRead);
    QCOMPARE(IconColour(pRow->data(0, Qt::DecorationRole)), qRgb(255, 0, 0));
}

void tst_BaseTreeEditing::shouldIgnoreIconUpdateOfUnknownId()
{
    QMap<QString, CLS_TreeItem> qmapItems = SampleTree();
    qmapItems["c1"].m_qstrIcon = m_qstrRedIcon;
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", qmapItems, false), 0);
    tree.UpdateItemIcon("ghost", m_qstrBlueIcon);
    tree.UpdateItemIcon(QString(), m_qstrBlueIcon);
    QCOMPARE(IconColour(tree.GetNodeById("c1")->data(0, Qt::DecorationRole)), qRgb(255, 0, 0));
    QCOMPARE(Snapshot(tree), CONST_qstrSample);
}

// ---- SetItemDisabled -----------------------------------------------------------------------------

void tst_BaseTreeEditing::shouldLeaveRowEnabledInTreeWithoutCheckBoxes()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetItemDisabled("c1", true);
    tree.SetItemDisabled("p", true);
    QVERIFY(tree.GetNodeById("c1")->flags() & Qt::ItemIsEnabled);
    QVERIFY(tree.GetNodeById("p")->flags() & Qt::ItemIsEnabled);
    CLS_TreeItem clsCurrent;
    tree.SetCurrentItem("c1");
    QCOMPARE(tree.GetCurrentItem(clsCurrent), 0);
}

void tst_BaseTreeEditing::shouldDisableAndEnableRowWithItsDescendants()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetItemDisabled("q11", true); // disabled on its own
    tree.SetItemDisabled("q", true);
    for (const QString& qstrId : {"q", "q1", "q11", "q111"})
        QVERIFY2(!(tree.GetNodeById(qstrId)->flags() & Qt::ItemIsEnabled), qPrintable(qstrId));
    QVERIFY(tree.GetNodeById("p")->flags() & Qt::ItemIsEnabled);

    tree.SetItemDisabled("q", false);
    QVERIFY(tree.GetNodeById("q")->flags() & Qt::ItemIsEnabled);
    QVERIFY(tree.GetNodeById("q1")->flags() & Qt::ItemIsEnabled);
    QVERIFY(!(tree.GetNodeById("q11")->flags() & Qt::ItemIsEnabled));
    QVERIFY(!(tree.GetNodeById("q111")->flags() & Qt::ItemIsEnabled));

    // The record keeps the flags it was built with.
    CLS_TreeItem clsRead;
    QCOMPARE(tree.GetItemById("q11", clsRead), 0);
    QCOMPARE(clsRead.m_iItemFlags, 0);
}

void tst_BaseTreeEditing::shouldIgnoreDisableOfEmptyOrUnknownId()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetItemDisabled(QString(), true);
    tree.SetItemDisabled("ghost", true);
    for (QTreeWidgetItemIterator it(&tree); *it; ++it)
        QVERIFY2((*it)->flags() & Qt::ItemIsEnabled, qPrintable(CLS_TreeSnapshot::NodeId(*it)));
}

// ---- SetTextMaxWidth -----------------------------------------------------------------------------

void tst_BaseTreeEditing::shouldTurnElisionOffForLaterRows_data()
{
    QTest::addColumn<int>("iWidth");
    QTest::newRow("zero") << 0;
    QTest::newRow("minus one") << -1;
    QTest::newRow("minus fifty") << -50;
}

void tst_BaseTreeEditing::shouldTurnElisionOffForLaterRows()
{
    QFETCH(int, iWidth);
    const QString qstrLong = "A rather long caption that cannot fit in fifty pixels";
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);

    tree.SetTextMaxWidth(50);
    QCOMPARE(tree.AddItem(MakeItem("elided", "e", 1, qstrLong)), 0);
    QCOMPARE(tree.GetNodeById("elided")->text(0),
             QFontMetrics(QFont()).elidedText(qstrLong, Qt::ElideRight, 50, 0));
    QVERIFY(tree.GetNodeById("elided")->text(0) != qstrLong);

    tree.SetTextMaxWidth(iWidth);
    QCOMPARE(tree.m_iTextMaxWidth, iWidth);
    QCOMPARE(tree.AddItem(MakeItem("full", "e", 2, qstrLong)), 0);
    QCOMPARE(tree.GetNodeById("full")->text(0), qstrLong);
    tree.UpdateItem(MakeItem("elided", "e", 1, qstrLong));
    QCOMPARE(tree.GetNodeById("elided")->text(0), qstrLong);
}

void tst_BaseTreeEditing::shouldKeepTextOfExistingRowsOnNewWidth()
{
    const QString qstrLong = "A rather long caption that cannot fit in fifty pixels";
    QMap<QString, CLS_TreeItem> qmapItems = SampleTree();
    qmapItems["c1"].m_qstrText = qstrLong;
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", qmapItems, false), 0);
    tree.SetTextMaxWidth(50);
    QCOMPARE(tree.GetNodeById("c1")->text(0), qstrLong);
    tree.UpdateItem(qmapItems["c1"]);
    QVERIFY(tree.GetNodeById("c1")->text(0) != qstrLong);
}

QTEST_MAIN(tst_BaseTreeEditing)
#include "tst_BaseTreeEditing.moc"
