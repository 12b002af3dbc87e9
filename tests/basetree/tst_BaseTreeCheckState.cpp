// Check boxes of CLS_WgtBaseTreeWidget: setting and reading states, the signals of each change
// and their order, the gate of silent changes, and the lists of checked records.

#include "CLS_TestBaseTree.h"
#include "CLS_TreeSnapshot.h"

#include <QApplication>
#include <QSignalSpy>
#include <QtTest>

using CLS_TreeSnapshot::Snapshot;
using namespace CLS_TreeTestUtil;

namespace {

// root (no row)
//   g (1): p1 (1): x1 (1), x2 (2)
//          p2 (2): y1 (1)
//   p (2): l1 (1), l2 (2)
//   s (3)
QMap<QString, CLS_TreeItem> SampleTree()
{
    return ItemsOf("root", "g(p1(x1,x2),p2(y1)),p(l1,l2),s");
}

// All rows with their states, "g:0 p1:0 ...", in row order.
QString States(QTreeWidget& _tree)
{
    QStringList qlstStates;
    for (QTreeWidgetItemIterator it(&_tree); *it; ++it)
        qlstStates << QString("%1:%2")
                          .arg(CLS_TreeSnapshot::NodeId(*it))
                          .arg((*it)->data(0, Qt::CheckStateRole).toInt());
    return qlstStates.join(" ");
}

Qt::CheckState StateOf(CLS_TestBaseTree& _tree, const QString& _qstrId)
{
    Qt::CheckState iState = static_cast<Qt::CheckState>(-1);
    if (_tree.GetItemCheckStatus(_qstrId, iState) != 0)
        return static_cast<Qt::CheckState>(-1);
    return iState;
}

} // namespace

class tst_BaseTreeCheckState : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void shouldSetStateSilentlyByDefault();
    void shouldReportLeavesBeforeParentWhenSetWithSend();
    void shouldReportDeepestFirstWithinEachBranch();
    void shouldNotChangeChildrenOnPartiallyChecked();
    void shouldReportLeafAloneWhenUncheckingLastCheckedLeaf();
    void shouldReportNothingForStateAlreadyHeld();
    void shouldRestoreGateAfterSilentCall();
    void shouldDerivePartialParentAndNotListIt();
    void shouldListLeavesOnlyWithCheckedNodes();
    void shouldLeaveDisabledOrHiddenCheckedRowsOutOfLists();
    void shouldAppendCheckedItemsInIdOrder();
    void shouldRefuseCheckedListsWithoutCheckBoxes();
    void shouldDoNothingWithoutCheckBoxes();
    void shouldIgnoreUnknownOrEmptyId();
    void shouldReadStateOnlyForKnownRows();
    void shouldReportUserClickOnLeafForLeafAlone();
    void shouldReportUserClickOnParentChildrenFirst();
    void shouldSendNothingForRowWithoutRecord();
    void shouldNeitherPassOnNorDeriveWithoutAutoTristate();
    void shouldNeverFireSignChecked();
};

void tst_BaseTreeCheckState::initTestCase()
{
    qRegisterMetaType<CLS_TreeItem>("CLS_TreeItem");
}

void tst_BaseTreeCheckState::cleanup()
{
    const QStringList qlstLeaked = LeakedTopLevels();
    QVERIFY2(qlstLeaked.isEmpty(), qPrintable("top-level widgets left: " + qlstLeaked.join(", ")));
}

void tst_BaseTreeCheckState::shouldSetStateSilentlyByDefault()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignCheckedStatusChanged);
    CLS_TreeSignalLog log(&tree);

    tree.SetItemCheckStatus("l1", Qt::Checked);
    tree.SetItemCheckStatus("g", Qt::Checked);

    QCOMPARE(tree.GetNodeById("l1")->checkState(0), Qt::Checked);
    QCOMPARE(StateOf(tree, "y1"), Qt::Checked);
    QCOMPARE(spy.count(), 0);
    QVERIFY2(log.Lines().isEmpty(), qPrintable(log.Text()));
}

void tst_BaseTreeCheckState::shouldReportLeavesBeforeParentWhenSetWithSend()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignCheckedStatusChanged);

    tree.SetItemCheckStatus("p", Qt::Checked, true);

    QCOMPARE(spy.count(), 3);
    QStringList qlstIds;
    for (const QList<QVariant>& qlstArgs : qAsConst(spy)) {
        const QString qstrId = qlstArgs.at(0).toString();
        qlstIds << qstrId;
        QVERIFY2(qlstArgs.at(1).toBool(), qPrintable(qstrId));
        const CLS_TreeItem clsItem = qlstArgs.at(2).value<CLS_TreeItem>();
        QCOMPARE(clsItem.m_qstrId, qstrId);
        QCOMPARE(clsItem.m_qstrTooltip, "tip " + qstrId);
    }
    QCOMPARE(qlstIds.join(","), QString("l1,l2,p"));
}

void tst_BaseTreeCheckState::shouldReportDeepestFirstWithinEachBranch()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetItemCheckStatus("x2", Qt::Checked); // x2 already holds the new state
    CLS_TreeSignalLog log(&tree);

    tree.SetItemCheckStatus("g", Qt::Checked, true);

    QCOMPARE(log.Text(), QString("CheckedStatus(x1,1) CheckedStatus(p1,1) CheckedStatus(y1,1) "
                                 "CheckedStatus(p2,1) CheckedStatus(g,1)"));
}

void tst_BaseTreeCheckState::shouldNotChangeChildrenOnPartiallyChecked()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetItemCheckStatus("l2", Qt::Checked);
    CLS_TreeSignalLog log(&tree);

    tree.SetItemCheckStatus("p", Qt::PartiallyChecked);
    QCOMPARE(StateOf(tree, "l1"), Qt::Unchecked);
    QCOMPARE(StateOf(tree, "l2"), Qt::Checked);

    tree.SetItemCheckStatus("g", Qt::PartiallyChecked, true);
    QCOMPARE(States(tree), QString("g:0 p1:0 x1:0 x2:0 p2:0 y1:0 p:1 l1:0 l2:2 s:0"));
    // No child speaks; g itself reports, as the state Qt derives for it stays unchecked.
    QCOMPARE(log.Text(), QString("CheckedStatus(g,0)"));
}

void tst_BaseTreeCheckState::shouldReportLeafAloneWhenUncheckingLastCheckedLeaf()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetItemCheckStatus("l1", Qt::Checked);
    QCOMPARE(StateOf(tree, "p"), Qt::PartiallyChecked);
    CLS_TreeSignalLog log(&tree);

    tree.SetItemCheckStatus("l1", Qt::Unchecked, true);

    QCOMPARE(log.Text(), QString("CheckedStatus(l1,0)"));
    QCOMPARE(StateOf(tree, "p"), Qt::Unchecked);
}

void tst_BaseTreeCheckState::shouldReportNothingForStateAlreadyHeld()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetItemCheckStatus("p", Qt::Checked);
    CLS_TreeSignalLog log(&tree);

    tree.SetItemCheckStatus("p", Qt::Checked, true);
    tree.SetItemCheckStatus("s", Qt::Unchecked, true);
    tree.SetItemCheckStatus("l1", Qt::Checked, true);

    QVERIFY2(log.Lines().isEmpty(), qPrintable(log.Text()));
}

void tst_BaseTreeCheckState::shouldRestoreGateAfterSilentCall()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    CLS_TreeSignalLog log(&tree);

    tree.SetItemCheckStatus("s", Qt::Checked, false);
    QVERIFY(tree.m_blSendChecked);
    tree.GetNodeById("l1")->setCheckState(0, Qt::Checked); // any later change reports again
    QCOMPARE(log.Text(), QString("CheckedStatus(l1,1)"));
    QCOMPARE(StateOf(tree, "s"), Qt::Checked);
}

void tst_BaseTreeCheckState::shouldDerivePartialParentAndNotListIt()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetItemCheckStatus("l1", Qt::Checked);

    QCOMPARE(StateOf(tree, "p"), Qt::PartiallyChecked);
    QVector<CLS_TreeItem> qvecChecked;
    QCOMPARE(tree.GetCheckedItems(qvecChecked, false), 0);
    QCOMPARE(Ids(qvecChecked).join(","), QString("l1"));
}

void tst_BaseTreeCheckState::shouldListLeavesOnlyWithCheckedNodes()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetItemCheckStatus("p", Qt::Checked);
    tree.SetItemCheckStatus("p1", Qt::Checked);

    QVector<CLS_TreeItem> qvecNodes;
    QCOMPARE(tree.GetCheckedNodes(qvecNodes), 0);
    QCOMPARE(Ids(qvecNodes).join(","), QString("l1,l2,x1,x2"));

    QVector<CLS_TreeItem> qvecLeaves;
    QCOMPARE(tree.GetCheckedItems(qvecLeaves, true), 0);
    QCOMPARE(Ids(qvecLeaves), Ids(qvecNodes));

    QVector<CLS_TreeItem> qvecAll;
    QCOMPARE(tree.GetCheckedItems(qvecAll, false), 0);
    QCOMPARE(Ids(qvecAll).join(","), QString("l1,l2,p,p1,x1,x2")); // g is partial
}

void tst_BaseTreeCheckState::shouldLeaveDisabledOrHiddenCheckedRowsOutOfLists()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetItemCheckStatus("p", Qt::Checked);
    tree.SetItemCheckStatus("s", Qt::Checked);
    tree.SetItemDisabled("l1", true);
    tree.GetNodeById("s")->setHidden(true);

    QVector<CLS_TreeItem> qvecAll;
    QCOMPARE(tree.GetCheckedItems(qvecAll, false), 0);
    QCOMPARE(Ids(qvecAll).join(","), QString("l2,p"));
    QVector<CLS_TreeItem> qvecNodes;
    QCOMPARE(tree.GetCheckedNodes(qvecNodes), 0);
    QCOMPARE(Ids(qvecNodes).join(","), QString("l2"));
}

void tst_BaseTreeCheckState::shouldAppendCheckedItemsInIdOrder()
{
    QMap<QString, CLS_TreeItem> qmapItems = SampleTree();
    qmapItems["l1"].m_iSortNo = 9; // l2 comes first among the rows, l1 first among the ids
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", qmapItems, false), 0);
    QCOMPARE(CLS_TreeSnapshot::Snapshot(tree.GetNodeById("p")), QString("p(l2,l1)"));
    tree.SetItemCheckStatus("p", Qt::Checked);

    QVector<CLS_TreeItem> qvecItems{MakeItem("earlier", QString())};
    QCOMPARE(tree.GetCheckedNodes(qvecItems), 0);
    QCOMPARE(Ids(qvecItems).join(","), QString("earlier,l1,l2"));
}

void tst_BaseTreeCheckState::shouldRefuseCheckedListsWithoutCheckBoxes()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.GetNodeById("s")->setCheckState(0, Qt::Checked); // even a row given a state by hand
    QVector<CLS_TreeItem> qvecItems;
    QCOMPARE(tree.GetCheckedItems(qvecItems, false), -1);
    QCOMPARE(tree.GetCheckedItems(qvecItems, true), -1);
    QCOMPARE(tree.GetCheckedNodes(qvecItems), -1);
    QVERIFY(qvecItems.isEmpty());
}

void tst_BaseTreeCheckState::shouldDoNothingWithoutCheckBoxes()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    CLS_TreeSignalLog log(&tree);
    tree.SetItemCheckStatus("l1", Qt::Checked, true);
    QVERIFY(!tree.GetNodeById("l1")->data(0, Qt::CheckStateRole).isValid());
    QCOMPARE(StateOf(tree, "l1"), Qt::Unchecked); // no state reads as 0
    QVERIFY2(log.Lines().isEmpty(), qPrintable(log.Text()));
}

void tst_BaseTreeCheckState::shouldIgnoreUnknownOrEmptyId()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    const QString qstrBefore = States(tree);
    CLS_TreeSignalLog log(&tree);
    tree.SetItemCheckStatus("ghost", Qt::Checked, true);
    tree.SetItemCheckStatus(QString(), Qt::Checked, true);
    tree.SetItemCheckStatus("root", Qt::Checked, true); // the root has no row here
    QCOMPARE(States(tree), qstrBefore);
    QVERIFY2(log.Lines().isEmpty(), qPrintable(log.Text()));
    QVERIFY(tree.m_blSendChecked);
}

void tst_BaseTreeCheckState::shouldReadStateOnlyForKnownRows()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    Qt::CheckState iState = Qt::PartiallyChecked;
    QCOMPARE(tree.GetItemCheckStatus("ghost", iState), -1);
    QCOMPARE(tree.GetItemCheckStatus(QString(), iState), -1);
    QCOMPARE(iState, Qt::PartiallyChecked);
    tree.SetItemCheckStatus("x1", Qt::Checked);
    QCOMPARE(tree.GetItemCheckStatus("x1", iState), 0);
    QCOMPARE(iState, Qt::Checked);
    QCOMPARE(tree.GetItemCheckStatus("p1", iState), 0);
    QCOMPARE(iState, Qt::PartiallyChecked);
    QCOMPARE(tree.GetItemCheckStatus("s", iState), 0);
    QCOMPARE(iState, Qt::Unchecked);
}

void tst_BaseTreeCheckState::shouldReportUserClickOnLeafForLeafAlone()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.expandAll();
    tree.resize(300, 400);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    CLS_TreeSignalLog log(&tree);

    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, CheckBoxCenter(tree, "x1"));

    QCOMPARE(StateOf(tree, "x1"), Qt::Checked);
    QCOMPARE(StateOf(tree, "p1"), Qt::PartiallyChecked);
    QCOMPARE(StateOf(tree, "g"), Qt::PartiallyChecked);
    QStringList qlstChecks;
    for (const QString& qstrLine : log.Lines()) {
        if (qstrLine.startsWith("Checked"))
            qlstChecks << qstrLine;
    }
    QCOMPARE(qlstChecks.join(" "), QString("CheckedStatus(x1,1)"));

    // The second click on the last checked leaf reports the leaf alone again.
    log.Clear();
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, CheckBoxCenter(tree, "x1"));
    QCOMPARE(StateOf(tree, "x1"), Qt::Unchecked);
    QCOMPARE(StateOf(tree, "g"), Qt::Unchecked);
    QCOMPARE(log.Count("CheckedStatus"), 1);
    QVERIFY2(log.Text().contains("CheckedStatus(x1,0)"), qPrintable(log.Text()));
}

void tst_BaseTreeCheckState::shouldReportUserClickOnParentChildrenFirst()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetItemCheckStatus("y1", Qt::Checked);
    tree.expandAll();
    tree.resize(300, 400);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    CLS_TreeSignalLog log(&tree);

    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, CheckBoxCenter(tree, "g"));

    QStringList qlstChecks;
    for (const QString& qstrLine : log.Lines()) {
        if (qstrLine.startsWith("Checked"))
            qlstChecks << qstrLine;
    }
    // y1 and p2 already were checked and stay silent.
    QCOMPARE(qlstChecks.join(" "),
             QString("CheckedStatus(x1,1) CheckedStatus(x2,1) CheckedStatus(p1,1) CheckedStatus(g,1)"));
    QCOMPARE(States(tree), QString("g:2 p1:2 x1:2 x2:2 p2:2 y1:2 p:0 l1:0 l2:0 s:0"));
}

void tst_BaseTreeCheckState::shouldSendNothingForRowWithoutRecord()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.GetNodeById("l1")->setData(0, Qt::UserRole + 1, QVariant());
    CLS_TreeSignalLog log(&tree);

    tree.SetItemCheckStatus("l1", Qt::Checked, true);
    QCOMPARE(StateOf(tree, "l1"), Qt::Checked);
    QVERIFY2(log.Lines().isEmpty(), qPrintable(log.Text()));

    // Its parent still reports its own change.
    tree.SetItemCheckStatus("p", Qt::Checked, true);
    QCOMPARE(log.Text(), QString("CheckedStatus(l2,1) CheckedStatus(p,1)"));
}

void tst_BaseTreeCheckState::shouldNeitherPassOnNorDeriveWithoutAutoTristate()
{
    QMap<QString, CLS_TreeItem> qmapItems = SampleTree();
    qmapItems["p"].m_iItemFlags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsUserCheckable;
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", qmapItems, false), 0);
    CLS_TreeSignalLog log(&tree);

    tree.SetItemCheckStatus("p", Qt::Checked, true);
    QCOMPARE(StateOf(tree, "p"), Qt::Checked);
    QCOMPARE(StateOf(tree, "l1"), Qt::Unchecked);
    QCOMPARE(StateOf(tree, "l2"), Qt::Unchecked);
    QCOMPARE(log.Text(), QString("CheckedStatus(p,1)"));

    tree.SetItemCheckStatus("p", Qt::Unchecked);
    tree.SetItemCheckStatus("l1", Qt::Checked);
    tree.SetItemCheckStatus("l2", Qt::Checked);
    QCOMPARE(StateOf(tree, "p"), Qt::Unchecked);
}

void tst_BaseTreeCheckState::shouldNeverFireSignChecked()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    // Nothing in the tree listens to it, or relays into it.
    QCOMPARE(tree.receivers(SIGNAL(SignChecked(QString, bool, CLS_TreeItem))), 0);
    QVERIFY(!tree.isSignalConnected(QMetaMethod::fromSignal(&CLS_WgtBaseTreeWidget::SignChecked)));

    QSignalSpy spyChecked(&tree, &CLS_WgtBaseTreeWidget::SignChecked);
    QSignalSpy spyStatus(&tree, &CLS_WgtBaseTreeWidget::SignCheckedStatusChanged);
    tree.expandAll();
    tree.resize(300, 400);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));

    tree.SetItemCheckStatus("g", Qt::Checked, true);
    tree.SetItemCheckStatus("p", Qt::PartiallyChecked, true);
    tree.SetItemCheckStatus("l1", Qt::Checked);
    tree.SetItemCheckStatus("x1", Qt::Unchecked, true);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, CheckBoxCenter(tree, "s"));
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, CheckBoxCenter(tree, "p"));
    tree.DeleteItem("l2");
    QCOMPARE(tree.AddItem(MakeItem("l3", "p", 3)), 0);
    QVector<CLS_TreeItem> qvecItems;
    tree.GetCheckedItems(qvecItems, false);

    QVERIFY(spyStatus.count() > 5);
    QCOMPARE(spyChecked.count(), 0);
}

QTEST_MAIN(tst_BaseTreeCheckState)
#include "tst_BaseTreeCheckState.moc"
