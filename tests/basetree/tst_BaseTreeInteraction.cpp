// Mouse and selection of CLS_WgtBaseTreeWidget: click, double click, right press, the current
// row under program control, the hover switch of the tool bars, and the button relay.

#include "CLS_TestBaseTree.h"
#include "CLS_TreeSnapshot.h"
#include "CLS_WgtItemToolBar.h"
#include "CLS_WgtToolBtnStack.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QToolButton>
#include <QtTest>

using CLS_TreeSnapshot::Snapshot;
using namespace CLS_TreeTestUtil;

namespace {

// root (no row)
//   a (1): a1 (1), a2 (2)
//   b (2)
//   c (3)
//   d (4), not enabled
QMap<QString, CLS_TreeItem> SampleTree()
{
    QMap<QString, CLS_TreeItem> qmapItems = ItemsOf("root", "a(a1,a2),b,c,d");
    qmapItems["d"].m_iItemFlags = Qt::ItemIsSelectable;
    return qmapItems;
}

// root (no row)
//   ha (1) with buttons: ha1 (1) with buttons
//   hn (2) without buttons
//   hb (3) with buttons
QMap<QString, CLS_TreeItem> HoverTree()
{
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("root", QString(), 0));
    CLS_TreeItem clsA = MakeItem("ha", "root", 1);
    clsA.m_qvecButtons << MakeButton("ba1") << MakeButton("ba2", true);
    Add(qmapItems, clsA);
    CLS_TreeItem clsA1 = MakeItem("ha1", "ha", 1);
    clsA1.m_qvecButtons << MakeButton("ba11");
    Add(qmapItems, clsA1);
    Add(qmapItems, MakeItem("hn", "root", 2));
    CLS_TreeItem clsB = MakeItem("hb", "root", 3);
    clsB.m_qvecButtons << MakeButton("bb1");
    Add(qmapItems, clsB);
    return qmapItems;
}

// Press, release, double-click press, release: what a user's double click delivers.
void DoubleClick(CLS_TestBaseTree& _tree, const QPoint& _pos)
{
    QTest::mouseClick(_tree.viewport(), Qt::LeftButton, Qt::NoModifier, _pos);
    QTest::mouseDClick(_tree.viewport(), Qt::LeftButton, Qt::NoModifier, _pos);
    QTest::mouseRelease(_tree.viewport(), Qt::LeftButton, Qt::NoModifier, _pos);
}

// "ha:1 hb:0 ha1:0", the current page of each two-page stack.
QString Pages(CLS_TestBaseTree& _tree)
{
    QStringList qlstPages;
    for (const QString& qstrId : {"ha", "ha1", "hb"}) {
        QStackedWidget* pStack = StackOf(_tree, qstrId);
        qlstPages << qstrId + ":" +
                         (pStack == nullptr ? QString("-") : QString::number(pStack->currentIndex()));
    }
    return qlstPages.join(" ");
}

QString HoverId(CLS_TestBaseTree& _tree)
{
    return _tree.m_pHoverNode == nullptr ? QString("null") : CLS_TreeSnapshot::NodeId(_tree.m_pHoverNode);
}

} // namespace

class tst_BaseTreeInteraction : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    // click and double click
    void shouldEmitClickedWithRecordOnLeftClick();
    void shouldReportClickThatQtReportsOnDisabledRow();
    void shouldIgnorePressOnEmptyAreaAndPassItOn();
    void shouldEmitDblClickedOnEnabledRow();
    void shouldNotEmitDblClickedForDisabledRow();
    void shouldNotEmitDblClickedForRowOutOfIndex();

    // right press
    void shouldSelectThroughBaseOnlyWhenRightClickDisabled();
    void shouldSelectBeforeRightClickBeforeBasePress();
    void shouldRightClickCurrentRowWithoutSelected();
    void shouldPassRightPressOnRowWithoutRecordToBase();

    // current row
    void shouldMoveSelectionSilentlyWithSetCurrentItem();
    void shouldEmitNothingForCurrentRowEvenWithSend();
    void shouldReportOldIdAndReopenGate();
    void shouldIgnoreSetCurrentItemForUnknownOrEmptyId();
    void shouldScrollRowIntoViewOnSetCurrentItem();
    void shouldGiveEmptyOldIdForUnreadablePrevious();

    // left press and the drag record
    void shouldKeepDragItemOnLeftPressWithCurrentParent();
    void shouldRecordPreviousCurrentLeafOnLeftPress();
    void shouldNotRecordDragItemWithoutDrag();

    // hover
    void shouldReachMouseMoveThroughQTest();
    void shouldSwitchToolBarsOnHover();
    void shouldNotSwitchAtAlwaysType();
    void shouldSleepDuringDragUntilRelease();
    void shouldKeepSwitchingWhenDragDisabled();
    void shouldLeaveBlankPageOnReturnToSameRow();
    void shouldNotTurnPagesOnLeaveAtAlwaysType();
    void shouldSurviveMoveAfterHoverRowDeleted();
    void shouldSurviveLeaveAfterHoverRowDeleted();
    void shouldForgetHoverRowOnClearAndInit();

    // button relay
    void shouldRelayToolButtonToSignalOnce();
    void shouldWireToolBarsToSignalNotToSlot();
    void shouldEmitClickButtonWhenSlotInvokedByName();
};

void tst_BaseTreeInteraction::initTestCase()
{
    qRegisterMetaType<CLS_TreeItem>("CLS_TreeItem");
    qRegisterMetaType<CLS_ItemButton>("CLS_ItemButton");
}

void tst_BaseTreeInteraction::cleanup()
{
    const QStringList qlstLeaked = LeakedTopLevels();
    QVERIFY2(qlstLeaked.isEmpty(), qPrintable("top-level widgets left: " + qlstLeaked.join(", ")));
}

// ---- click and double click ----------------------------------------------------------------------

void tst_BaseTreeInteraction::shouldEmitClickedWithRecordOnLeftClick()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    tree.SetCurrentItem("c");
    CLS_TreeSignalLog log(&tree);
    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignClicked);

    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, RowCenter(tree, "b"));

    QCOMPARE(log.Text(), QString("Selected(b<-c) Pressed(b) Clicked(b)"));
    QCOMPARE(spy.count(), 1);
    const QList<QVariant> qlstArgs = spy.takeFirst();
    QCOMPARE(qlstArgs.at(0).toString(), QString("b"));
    QCOMPARE(qlstArgs.at(1).value<CLS_TreeItem>().m_qstrTooltip, QString("tip b"));
    QCOMPARE(qlstArgs.at(1).value<CLS_TreeItem>().m_iSortNo, 2);
}

void tst_BaseTreeInteraction::shouldReportClickThatQtReportsOnDisabledRow()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    CLS_TreeSignalLog log(&tree);
    tree.SlotClicked(tree.GetNodeById("d"), 1);
    tree.SlotClicked(nullptr, 0);
    auto* pRaw = new QTreeWidgetItem(QStringList{"raw"});
    tree.addTopLevelItem(pRaw); // owned by the tree
    tree.SlotClicked(pRaw, 0);
    QCOMPARE(log.Text(), QString("Clicked(d)"));
}

void tst_BaseTreeInteraction::shouldIgnorePressOnEmptyAreaAndPassItOn()
{
    CLS_TestBaseTree tree(nullptr, false, true, true, true, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    tree.SetCurrentItem("b");
    tree.m_clsDragItem.m_qstrId = "earlier";
    CLS_TreeSignalLog log(&tree);
    const QPoint posEmpty = EmptyAreaPoint(tree);
    QVERIFY(tree.itemAt(posEmpty) == nullptr);

    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, posEmpty);
    QTest::mouseClick(tree.viewport(), Qt::RightButton, Qt::NoModifier, posEmpty);
    QVERIFY2(log.Lines().isEmpty(), qPrintable(log.Text()));
    QCOMPARE(tree.m_clsDragItem.m_qstrId, QString("earlier"));
    QCOMPARE(tree.currentItem(), tree.GetNodeById("b"));

    // The view keeps the row of the last press; a double-click event on that row counts as a
    // double click only if no press came in between. Check the probe first, on row c.
    auto dblClickAt = [&tree](const QPoint& _pos) {
        QMouseEvent event(QEvent::MouseButtonDblClick, _pos, tree.viewport()->mapToGlobal(_pos),
                          Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(tree.viewport(), &event);
    };
    const QPoint posC = RowCenter(tree, "c");
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, posC);
    dblClickAt(posC);
    QVERIFY2(log.Count("DblClicked") == 1, qPrintable(log.Text()));

    // Then with a press on the empty area in between: the base class saw that press.
    log.Clear();
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, posC);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, posEmpty);
    dblClickAt(posC);
    QVERIFY2(log.Count("DblClicked") == 0, qPrintable(log.Text()));
}

void tst_BaseTreeInteraction::shouldEmitDblClickedOnEnabledRow()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignDblClicked);

    DoubleClick(tree, RowCenter(tree, "a2"));

    QCOMPARE(spy.count(), 1);
    const QList<QVariant> qlstArgs = spy.takeFirst();
    QCOMPARE(qlstArgs.at(0).toString(), QString("a2"));
    QCOMPARE(qlstArgs.at(1).value<CLS_TreeItem>().m_qstrParentId, QString("a"));
}

void tst_BaseTreeInteraction::shouldNotEmitDblClickedForDisabledRow()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetItemDisabled("c", true);
    QVERIFY(ShowTree(tree));
    CLS_TreeSignalLog log(&tree);

    DoubleClick(tree, RowCenter(tree, "c"));
    DoubleClick(tree, RowCenter(tree, "d"));
    tree.SlotDblClicked(tree.GetNodeById("c"), 0);
    tree.SlotDblClicked(tree.GetNodeById("d"), 0);
    QVERIFY2(log.Count("DblClicked") == 0, qPrintable(log.Text()));

    tree.SlotDblClicked(tree.GetNodeById("b"), 1); // the column plays no part
    QCOMPARE(log.Count("DblClicked"), 1);
}

void tst_BaseTreeInteraction::shouldNotEmitDblClickedForRowOutOfIndex()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QTreeWidgetItem* pTaken = tree.GetNodeById("a1");
    tree.DeleteItem("a1");
    CLS_TreeSignalLog log(&tree);
    tree.SlotDblClicked(pTaken, 0); // the row object lives on after DeleteItem
    tree.SlotDblClicked(nullptr, 0);
    QVERIFY2(log.Lines().isEmpty(), qPrintable(log.Text()));
}

// ---- right press ---------------------------------------------------------------------------------

void tst_BaseTreeInteraction::shouldSelectThroughBaseOnlyWhenRightClickDisabled()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    tree.SetCurrentItem("a");
    CLS_TreeSignalLog log(&tree);

    QTest::mousePress(tree.viewport(), Qt::RightButton, Qt::NoModifier, RowCenter(tree, "b"));

    QCOMPARE(log.Text(), QString("Selected(b<-a) Pressed(b)"));
    QCOMPARE(tree.currentItem(), tree.GetNodeById("b"));
    QVERIFY(tree.GetNodeById("b")->isSelected());
    QTest::mouseRelease(tree.viewport(), Qt::RightButton, Qt::NoModifier, RowCenter(tree, "b"));
}

void tst_BaseTreeInteraction::shouldSelectBeforeRightClickBeforeBasePress()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, true, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    tree.SetCurrentItem("a");
    CLS_TreeSignalLog log(&tree);
    // A right-click listener (a context menu) finds the row current and selected already.
    connect(&tree, &CLS_WgtBaseTreeWidget::SignRightClicked, &log, [&tree, &log]() {
        QTreeWidgetItem* pCurrent = tree.currentItem();
        log.Add("current=" + (pCurrent == nullptr ? QString("null") : CLS_TreeSnapshot::NodeId(pCurrent)) +
                (pCurrent != nullptr && pCurrent->isSelected() ? "+selected" : ""));
    });
    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignRightClicked);

    QTest::mousePress(tree.viewport(), Qt::RightButton, Qt::NoModifier, RowCenter(tree, "b"));

    QCOMPARE(log.Text(), QString("Selected(b<-a) RightClicked(b) current=b+selected Pressed(b)"));
    QCOMPARE(tree.currentItem(), tree.GetNodeById("b"));
    QVERIFY(tree.GetNodeById("b")->isSelected());
    QVERIFY(tree.m_blSendSelected);
    QCOMPARE(spy.count(), 1);
    const QList<QVariant> qlstArgs = spy.takeFirst();
    QCOMPARE(qlstArgs.at(0).toString(), QString("b"));
    QCOMPARE(qlstArgs.at(1).value<CLS_TreeItem>().m_qstrTooltip, QString("tip b"));
    QTest::mouseRelease(tree.viewport(), Qt::RightButton, Qt::NoModifier, RowCenter(tree, "b"));
}

void tst_BaseTreeInteraction::shouldRightClickCurrentRowWithoutSelected()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, true, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    tree.SetCurrentItem("a1");
    CLS_TreeSignalLog log(&tree);

    QTest::mouseClick(tree.viewport(), Qt::RightButton, Qt::NoModifier, RowCenter(tree, "a1"));

    QCOMPARE(log.Text(), QString("RightClicked(a1) Pressed(a1)"));
}

void tst_BaseTreeInteraction::shouldPassRightPressOnRowWithoutRecordToBase()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, true, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.GetNodeById("c")->setData(0, Qt::UserRole + 1, QVariant());
    QVERIFY(ShowTree(tree));
    tree.SetCurrentItem("a");
    CLS_TreeSignalLog log(&tree);

    QTest::mouseClick(tree.viewport(), Qt::RightButton, Qt::NoModifier, RowCenter(tree, "c"));

    // The base press makes it current; with no record there is nothing to report for it.
    QCOMPARE(log.Text(), QString("Pressed(c)"));
    QCOMPARE(tree.currentItem(), tree.GetNodeById("c"));
}

// ---- current row ---------------------------------------------------------------------------------

void tst_BaseTreeInteraction::shouldMoveSelectionSilentlyWithSetCurrentItem()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    CLS_TreeSignalLog log(&tree);

    tree.SetCurrentItem("a2");
    QCOMPARE(tree.currentItem(), tree.GetNodeById("a2"));
    QVERIFY(tree.GetNodeById("a2")->isSelected());
    QVERIFY2(log.Lines().isEmpty(), qPrintable(log.Text()));
    QVERIFY(tree.m_blSendSelected);

    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, RowCenter(tree, "c"));
    QVERIFY2(log.Lines().value(0) == "Selected(c<-a2)", qPrintable(log.Text()));
}

void tst_BaseTreeInteraction::shouldEmitNothingForCurrentRowEvenWithSend()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    CLS_TreeSignalLog log(&tree);
    tree.SetCurrentItem("b", true);
    QCOMPARE(log.Text(), QString("Selected(b<-)"));
    log.Clear();
    tree.SetCurrentItem("b", true);
    QVERIFY2(log.Lines().isEmpty(), qPrintable(log.Text()));
}

void tst_BaseTreeInteraction::shouldReportOldIdAndReopenGate()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignSelected);
    tree.SetCurrentItem("a", false);
    tree.SetCurrentItem("c", true);
    QCOMPARE(spy.count(), 1);
    const QList<QVariant> qlstArgs = spy.takeFirst();
    QCOMPARE(qlstArgs.at(0).toString(), QString("c"));
    QCOMPARE(qlstArgs.at(1).value<CLS_TreeItem>().m_qstrId, QString("c"));
    QCOMPARE(qlstArgs.at(2).toString(), QString("a"));

    // A silent call leaves the gate open afterwards: Qt's own changes report again.
    tree.SetCurrentItem("b");
    QVERIFY(tree.m_blSendSelected);
    tree.setCurrentItem(tree.GetNodeById("a1"));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), QString("a1"));
    QCOMPARE(spy.at(0).at(2).toString(), QString("b"));
}

void tst_BaseTreeInteraction::shouldIgnoreSetCurrentItemForUnknownOrEmptyId()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetCurrentItem("b");
    CLS_TreeSignalLog log(&tree);
    tree.SetCurrentItem("ghost", true);
    tree.SetCurrentItem(QString(), true);
    tree.SetCurrentItem("root", true); // no row without the root row
    QCOMPARE(tree.currentItem(), tree.GetNodeById("b"));
    QVERIFY2(log.Lines().isEmpty(), qPrintable(log.Text()));
    QVERIFY(tree.m_blSendSelected);
}

void tst_BaseTreeInteraction::shouldScrollRowIntoViewOnSetCurrentItem()
{
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("root", QString(), 0));
    for (int i = 0; i < 80; ++i)
        Add(qmapItems, MakeItem(QString("r%1").arg(i, 2, 10, QChar('0')), "root", i));
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", qmapItems, false), 0);
    tree.resize(200, 120);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    QTreeWidgetItem* pLast = tree.GetNodeById("r79");
    QVERIFY(!tree.viewport()->rect().intersects(tree.visualItemRect(pLast)));

    tree.SetCurrentItem("r79");
    QVERIFY(tree.viewport()->rect().contains(tree.visualItemRect(pLast).center()));
    QCOMPARE(tree.currentItem(), pLast);
}

void tst_BaseTreeInteraction::shouldGiveEmptyOldIdForUnreadablePrevious()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    CLS_TreeSignalLog log(&tree);
    QTreeWidgetItem* pUnreadable = tree.GetNodeById("c");
    pUnreadable->setData(0, Qt::UserRole + 1, QVariant());

    tree.SlotCurrentChanged(tree.GetNodeById("b"), pUnreadable);
    tree.SlotCurrentChanged(pUnreadable, tree.GetNodeById("b")); // no record of its own: nothing
    tree.SlotCurrentChanged(nullptr, tree.GetNodeById("b"));
    tree.SlotCurrentChanged(tree.GetNodeById("a"), tree.GetNodeById("b"));
    QCOMPARE(log.Text(), QString("Selected(b<-) Selected(a<-b)"));
}

// ---- left press and the drag record --------------------------------------------------------------

void tst_BaseTreeInteraction::shouldKeepDragItemOnLeftPressWithCurrentParent()
{
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    tree.SetCurrentItem("a");
    tree.m_clsDragItem.m_qstrId = "earlier";

    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, RowCenter(tree, "b"));

    QCOMPARE(tree.m_clsDragItem.m_qstrId, QString("earlier"));
    QCOMPARE(tree.currentItem(), tree.GetNodeById("b"));
}

void tst_BaseTreeInteraction::shouldRecordPreviousCurrentLeafOnLeftPress()
{
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    tree.SetCurrentItem("a2");

    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, RowCenter(tree, "c"));
    QCOMPARE(tree.m_clsDragItem.m_qstrId, QString("a2")); // the row current before the press
    QCOMPARE(tree.m_clsDragItem.m_qstrParentId, QString("a"));

    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, RowCenter(tree, "c"));
    QCOMPARE(tree.m_clsDragItem.m_qstrId, QString("c"));

    // A right press records nothing.
    QTest::mouseClick(tree.viewport(), Qt::RightButton, Qt::NoModifier, RowCenter(tree, "b"));
    QCOMPARE(tree.m_clsDragItem.m_qstrId, QString("c"));
}

void tst_BaseTreeInteraction::shouldNotRecordDragItemWithoutDrag()
{
    CLS_TestBaseTree tree(nullptr, false, false, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    tree.SetCurrentItem("b");
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, RowCenter(tree, "c"));
    QVERIFY(tree.m_clsDragItem.m_qstrId.isEmpty());
}

// ---- hover ---------------------------------------------------------------------------------------

void tst_BaseTreeInteraction::shouldReachMouseMoveThroughQTest()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_HOVER);
    QCOMPARE(tree.Init("root", HoverTree(), false), 0);
    QVERIFY(ShowTree(tree));
    QTest::mouseMove(tree.viewport(), RowCenter(tree, "hb"));
    QTRY_COMPARE(HoverId(tree), QString("hb"));
    QCOMPARE(Pages(tree), QString("ha:0 ha1:0 hb:1"));
}

void tst_BaseTreeInteraction::shouldSwitchToolBarsOnHover()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_HOVER);
    QCOMPARE(tree.Init("root", HoverTree(), false), 0);
    QVERIFY(ShowTree(tree));
    QCOMPARE(Pages(tree), QString("ha:0 ha1:0 hb:0"));

    MoveMouse(tree, RowCenter(tree, "ha"));
    QCOMPARE(HoverId(tree) + " " + Pages(tree), QString("ha ha:1 ha1:0 hb:0"));
    MoveMouse(tree, RowCenter(tree, "ha") + QPoint(3, 1)); // same row: nothing changes
    QCOMPARE(HoverId(tree) + " " + Pages(tree), QString("ha ha:1 ha1:0 hb:0"));
    MoveMouse(tree, RowCenter(tree, "hn"));
    QCOMPARE(HoverId(tree) + " " + Pages(tree), QString("hn ha:0 ha1:0 hb:0"));
    MoveMouse(tree, RowCenter(tree, "hb"));
    QCOMPARE(HoverId(tree) + " " + Pages(tree), QString("hb ha:0 ha1:0 hb:1"));
    MoveMouse(tree, RowCenter(tree, "ha1"));
    QCOMPARE(HoverId(tree) + " " + Pages(tree), QString("ha1 ha:0 ha1:1 hb:0"));
    MoveMouse(tree, EmptyAreaPoint(tree));
    QCOMPARE(HoverId(tree) + " " + Pages(tree), QString("null ha:0 ha1:0 hb:0"));
}

void tst_BaseTreeInteraction::shouldNotSwitchAtAlwaysType()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", HoverTree(), false), 0);
    QVERIFY(ShowTree(tree));
    for (const QString& qstrId : {"ha", "hn", "hb", "ha1", "ha"}) {
        MoveMouse(tree, RowCenter(tree, qstrId));
        QVERIFY2(tree.m_pHoverNode == nullptr, qPrintable(qstrId));
    }
    for (const QString& qstrId : {"ha", "ha1", "hb"}) {
        QCOMPARE(StackOf(tree, qstrId)->count(), 1);
        QCOMPARE(StackOf(tree, qstrId)->currentIndex(), 0);
    }
}

void tst_BaseTreeInteraction::shouldSleepDuringDragUntilRelease()
{
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_HOVER);
    QCOMPARE(tree.Init("root", HoverTree(), false), 0);
    QVERIFY(ShowTree(tree));
    MoveMouse(tree, RowCenter(tree, "ha"));
    QCOMPARE(HoverId(tree), QString("ha"));

    QMimeData mimeData;
    mimeData.setData("application/x-qabstractitemmodeldatalist", QByteArray("1"));
    QDragEnterEvent enter(RowCenter(tree, "ha"), Qt::MoveAction, &mimeData, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree.viewport(), &enter);
    QVERIFY(tree.m_blDragging);

    MoveMouse(tree, RowCenter(tree, "hb"), Qt::LeftButton);
    QCOMPARE(HoverId(tree) + " " + Pages(tree), QString("ha ha:1 ha1:0 hb:0"));

    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, Qt::NoModifier, RowCenter(tree, "hb"));
    QVERIFY(!tree.m_blDragging);
    MoveMouse(tree, RowCenter(tree, "hb") + QPoint(1, 0));
    QCOMPARE(HoverId(tree) + " " + Pages(tree), QString("hb ha:0 ha1:0 hb:1"));
}

void tst_BaseTreeInteraction::shouldKeepSwitchingWhenDragDisabled()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_HOVER);
    QCOMPARE(tree.Init("root", HoverTree(), false), 0);
    QVERIFY(ShowTree(tree));
    tree.m_blDragging = true; // only a drag-enabled tree sleeps
    MoveMouse(tree, RowCenter(tree, "hb"));
    QCOMPARE(HoverId(tree) + " " + Pages(tree), QString("hb ha:0 ha1:0 hb:1"));
}

void tst_BaseTreeInteraction::shouldLeaveBlankPageOnReturnToSameRow()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_HOVER);
    QCOMPARE(tree.Init("root", HoverTree(), false), 0);
    QVERIFY(ShowTree(tree));
    MoveMouse(tree, RowCenter(tree, "ha"));
    QCOMPARE(Pages(tree), QString("ha:1 ha1:0 hb:0"));

    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&tree, &leave);
    QCOMPARE(HoverId(tree) + " " + Pages(tree), QString("ha ha:0 ha1:0 hb:0"));

    MoveMouse(tree, RowCenter(tree, "ha"));
    QCOMPARE(HoverId(tree) + " " + Pages(tree), QString("ha ha:0 ha1:0 hb:0"));
    MoveMouse(tree, RowCenter(tree, "hb"));
    MoveMouse(tree, RowCenter(tree, "ha"));
    QCOMPARE(HoverId(tree) + " " + Pages(tree), QString("ha ha:1 ha1:0 hb:0"));
}

void tst_BaseTreeInteraction::shouldNotTurnPagesOnLeaveAtAlwaysType()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", HoverTree(), false), 0);
    // A two-page widget put there by hand, on a row the tree holds as its hover row.
    auto* pStack = new QStackedWidget(); // owned by the view after setItemWidget
    pStack->addWidget(new QWidget());
    pStack->addWidget(new QWidget());
    tree.setItemWidget(tree.GetNodeById("hn"), 1, pStack);
    pStack->setCurrentIndex(1);
    tree.m_pHoverNode = tree.GetNodeById("hn");

    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&tree, &leave);
    QCOMPARE(pStack->currentIndex(), 1);
    QCOMPARE(HoverId(tree), QString("hn"));
}

void tst_BaseTreeInteraction::shouldSurviveMoveAfterHoverRowDeleted()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_HOVER);
    QCOMPARE(tree.Init("root", HoverTree(), false), 0);
    QVERIFY(ShowTree(tree));
    const QPoint posA1 = RowCenter(tree, "ha1");
    MoveMouse(tree, posA1);
    QCOMPARE(HoverId(tree), QString("ha1"));

    tree.DeleteItem("ha"); // takes ha1 with it; the hover pointer still names ha1
    QCoreApplication::processEvents();
    MoveMouse(tree, posA1); // hb or nothing sits there now
    MoveMouse(tree, RowCenter(tree, "hb"));
    QCOMPARE(HoverId(tree), QString("hb"));
    QCOMPARE(StackOf(tree, "hb")->currentIndex(), 1);
    QCOMPARE(Snapshot(tree), QString("hn,hb"));
}

void tst_BaseTreeInteraction::shouldSurviveLeaveAfterHoverRowDeleted()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_HOVER);
    QCOMPARE(tree.Init("root", HoverTree(), false), 0);
    QVERIFY(ShowTree(tree));
    MoveMouse(tree, RowCenter(tree, "hb"));
    QTreeWidgetItem* pHover = tree.m_pHoverNode;
    tree.DeleteItem("hb");
    QCoreApplication::processEvents();
    QCOMPARE(tree.m_pHoverNode, pHover);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&tree, &leave);
    MoveMouse(tree, RowCenter(tree, "hn"));
    QCOMPARE(HoverId(tree), QString("hn"));
}

void tst_BaseTreeInteraction::shouldForgetHoverRowOnClearAndInit()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_HOVER);
    QCOMPARE(tree.Init("root", HoverTree(), false), 0);
    QVERIFY(ShowTree(tree));
    MoveMouse(tree, RowCenter(tree, "hb"));
    QVERIFY(tree.m_pHoverNode != nullptr);
    tree.Clear();
    QVERIFY(tree.m_pHoverNode == nullptr);
    MoveMouse(tree, QPoint(10, 10));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&tree, &leave);

    QCOMPARE(tree.Init("root", HoverTree(), false), 0);
    tree.expandAll();
    QCoreApplication::processEvents();
    MoveMouse(tree, RowCenter(tree, "ha"));
    QCOMPARE(HoverId(tree), QString("ha"));
    QCOMPARE(tree.Init("root", HoverTree(), false), 0);
    QVERIFY(tree.m_pHoverNode == nullptr);
}

// ---- button relay --------------------------------------------------------------------------------

void tst_BaseTreeInteraction::shouldRelayToolButtonToSignalOnce()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", HoverTree(), false), 0);
    // Nothing inside the tree listens to its own button signal (no loop through the slot).
    QCOMPARE(tree.receivers(SIGNAL(SignClickButton(QString, CLS_ItemButton))), 0);
    QVERIFY(!tree.isSignalConnected(QMetaMethod::fromSignal(&CLS_WgtBaseTreeWidget::SignClickButton)));
    const QList<CLS_WgtItemToolBar*> qlstBars = tree.findChildren<CLS_WgtItemToolBar*>();
    QCOMPARE(qlstBars.size(), 3);

    QVERIFY(ShowTree(tree));
    CLS_TreeSignalLog log(&tree);
    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignClickButton);
    auto* pBar = StackOf(tree, "ha")->findChild<CLS_WgtItemToolBar*>();
    QVERIFY(pBar != nullptr);
    QWidget* pButton = pBar->widgetForAction(pBar->actions().at(1));
    QVERIFY(pButton != nullptr && pButton->isVisible());
    QTest::mouseClick(pButton, Qt::LeftButton);

    QCOMPARE(log.Text(), QString("ClickButton(ha,ba2,1,1)"));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), QString("ha"));
    QCOMPARE(spy.at(0).at(1).value<CLS_ItemButton>().m_qstrTooltip, QString("tip ba2"));
}

void tst_BaseTreeInteraction::shouldWireToolBarsToSignalNotToSlot()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_HOVER);
    QCOMPARE(tree.Init("root", HoverTree(), false), 0);
    CLS_TreeItem clsAdded = MakeItem("added", "hn", 1);
    clsAdded.m_qvecButtons << MakeButton("bx");
    QCOMPARE(tree.AddItem(clsAdded), 0);
    const QList<CLS_WgtItemToolBar*> qlstBars = tree.findChildren<CLS_WgtItemToolBar*>();
    QCOMPARE(qlstBars.size(), 4);
    for (CLS_WgtItemToolBar* pBar : qlstBars) {
        // disconnect() tells whether such a connection existed.
        QVERIFY(!QObject::disconnect(pBar, &CLS_WgtItemToolBar::SignTriggered, &tree,
                                     &CLS_TestBaseTree::SlotClickButton));
        QVERIFY(QObject::disconnect(pBar, &CLS_WgtItemToolBar::SignTriggered, &tree,
                                    &CLS_WgtBaseTreeWidget::SignClickButton));
    }
    // With the relays gone a triggered action reaches nobody: there was no second path.
    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignClickButton);
    for (CLS_WgtItemToolBar* pBar : qlstBars)
        pBar->actions().first()->trigger();
    QCOMPARE(spy.count(), 0);
}

void tst_BaseTreeInteraction::shouldEmitClickButtonWhenSlotInvokedByName()
{
    CLS_TestBaseTree tree;
    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignClickButton);
    const CLS_ItemButton clsButton = MakeButton("btn", true, true);
    QVERIFY(QMetaObject::invokeMethod(&tree, "SlotClickButton", Q_ARG(QString, "row9"),
                                      Q_ARG(CLS_ItemButton, clsButton)));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), QString("row9"));
    const CLS_ItemButton clsSent = spy.at(0).at(1).value<CLS_ItemButton>();
    QCOMPARE(clsSent.m_qstrId, QString("btn"));
    QVERIFY(clsSent.m_blCheckable && clsSent.m_blChecked);

    // The slot is a protected one of the meta-object.
    const int iIndex = tree.metaObject()->indexOfSlot("SlotClickButton(QString,CLS_ItemButton)");
    QVERIFY(iIndex >= 0);
    QCOMPARE(tree.metaObject()->method(iIndex).access(), QMetaMethod::Protected);
}

QTEST_MAIN(tst_BaseTreeInteraction)
#include "tst_BaseTreeInteraction.moc"
