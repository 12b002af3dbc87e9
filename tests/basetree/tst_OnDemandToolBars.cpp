// Tool bars of rows with buttons, made with the row in trees of at most 2,000 such rows, and on
// demand in bigger ones or when a page asks for it: when the row is laid out in the viewport,
// hovered, or asked for through EnsureItemButtons; given back far out of view with the live state
// of their buttons kept.

#include "CLS_TestBaseTree.h"
#include "CLS_WgtItemToolBar.h"
#include "CLS_WgtToolBtnStack.h"

#include <QAction>
#include <QScrollBar>
#include <QSignalSpy>
#include <QtTest>

using namespace CLS_TreeTestUtil;

namespace {

// root: g0..g(n-1), each with _iLeaves leaves; every leaf has a checkable and a plain button.
QMap<QString, CLS_TreeItem> Groups(int _iGroups, int _iLeaves)
{
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("root", QString(), 0));
    for (int g = 0; g < _iGroups; ++g) {
        const QString qstrGroup = QString("g%1").arg(g);
        Add(qmapItems, MakeItem(qstrGroup, "root", g));
        for (int l = 0; l < _iLeaves; ++l) {
            CLS_TreeItem clsLeaf = MakeItem(QString("%1-%2").arg(qstrGroup).arg(l), qstrGroup, l);
            clsLeaf.m_qvecButtons = {MakeButton("check", true), MakeButton("plain")};
            Add(qmapItems, clsLeaf);
        }
    }
    return qmapItems;
}

int WidgetCount(CLS_TestBaseTree& _tree)
{
    int iCount = 0;
    for (auto it = _tree.m_qmapNodes.cbegin(); it != _tree.m_qmapNodes.cend(); ++it) {
        if (_tree.GetItemButtons(it.value()) != nullptr)
            ++iCount;
    }
    return iCount;
}

// Lets the view lay out and paint what it shows.
void Paint(CLS_TestBaseTree& _tree)
{
    QCoreApplication::processEvents();
    _tree.viewport()->repaint();
    QCoreApplication::processEvents();
}

// The stack of a row's bar, made at build time or on demand; null while it is still to come.
QStackedWidget* BarStack(CLS_TestBaseTree& _tree, const QString& _qstrId)
{
    return qobject_cast<QStackedWidget*>(_tree.GetItemButtons(_tree.GetNodeById(_qstrId)));
}

// An on-demand tree of _iGroups x _iLeaves, every row expanded, shown and painted once.
bool ShowExpanded(CLS_TestBaseTree& _tree, int _iGroups, int _iLeaves, int _iHeight = 200)
{
    _tree.SetToolBarMountType(TOOLBAR_MOUNT_ON_DEMAND);
    _tree.resize(300, _iHeight);
    if (_tree.Init("root", Groups(_iGroups, _iLeaves), true) != 0)
        return false;
    _tree.expandAll();
    _tree.show();
    if (!QTest::qWaitForWindowExposed(&_tree))
        return false;
    Paint(_tree);
    return true;
}

CLS_WgtItemToolBar* BarOf(CLS_TestBaseTree& _tree, const QString& _qstrId)
{
    QStackedWidget* pStack = BarStack(_tree, _qstrId);
    return pStack != nullptr ? pStack->findChild<CLS_WgtItemToolBar*>() : nullptr;
}

} // namespace

class tst_OnDemandToolBars : public QObject
{
    Q_OBJECT

private slots:
    void shouldBuildEveryBarOfATreeWithTwoThousandButtonRows();
    void shouldLeaveBarsOfABiggerTreeForLater();
    void shouldFollowTheTypeThePageChose();
    void shouldMountTheBarsOfRowsInView();
    void shouldShowTheBlankPageFirstInHoverMode();
    void shouldMountTheBarOfAHoveredRow();
    void shouldKeepLiveCheckFlagsWhenABarIsMadeAgain();
    void shouldGiveNoBarToRowsTakenOutByAMove();
    void shouldForgetBarsOfDeletedRowsAndOfARebuild();
    void shouldKeepTheBuildButtonsAfterUpdateItem();
    void shouldGiveTheAddItemGeometryToABarMadeLater();
    void shouldHandBarsOverToRowsComingIntoViewWithTheirOwnButtons();
    void shouldGiveABigTreeWithoutRowWidgetsUniformRowHeights();
    void shouldLeaveRowHeightsFreeOnceABarIsAnIndexWidget();
    void shouldKeepThePagesOwnRowHeightSetting();
};

void tst_OnDemandToolBars::shouldBuildEveryBarOfATreeWithTwoThousandButtonRows()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.GetToolBarMountType(), TOOLBAR_MOUNT_AUTO);
    QCOMPARE(tree.Init("root", Groups(100, 20), true), 0); // exactly 2,000 rows with buttons
    QCOMPARE(tree.PendingToolBarCount(), 0);
    QCOMPARE(WidgetCount(tree), 2000);
    QVERIFY(qobject_cast<CLS_WgtToolBtnStack*>(tree.itemWidget(tree.GetNodeById("g99-19"), 1)) != nullptr);
}

void tst_OnDemandToolBars::shouldLeaveBarsOfABiggerTreeForLater()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", Groups(2001, 1), true), 0); // 2,001 rows with buttons
    QCOMPARE(tree.PendingToolBarCount(), 2001);
    QCOMPARE(WidgetCount(tree), 0);
    QVERIFY(tree.GetItemButtons(tree.GetNodeById("g2000-0")) == nullptr);

    // Asked for by the library's own call: made now, as a build would have made it.
    QWidget* pWidget = tree.EnsureItemButtons(tree.GetNodeById("g2000-0"));
    auto* pStack = qobject_cast<CLS_WgtToolBtnStack*>(pWidget);
    QVERIFY(pStack != nullptr);
    QCOMPARE(pStack, tree.GetItemButtons(tree.GetNodeById("g2000-0")));
    QVERIFY(tree.itemWidget(tree.GetNodeById("g2000-0"), 1) == nullptr); // placed by the tree itself
    QCOMPARE(pStack->count(), 1);
    QCOMPARE(tree.PendingToolBarCount(), 2000);
    QVERIFY(tree.EnsureItemButtons(tree.GetNodeById("g0")) == nullptr); // a group has no buttons
    QVERIFY(tree.EnsureItemButtons(nullptr) == nullptr);

    // Rows added to a tree that is over the limit come on demand too.
    CLS_TreeItem clsNew = MakeItem("new", "g0", 9);
    clsNew.m_qvecButtons = {MakeButton("b")};
    QCOMPARE(tree.AddItem(clsNew), 0);
    QVERIFY(tree.GetItemButtons(tree.GetNodeById("new")) == nullptr);
    QCOMPARE(tree.PendingToolBarCount(), 2001);
}

void tst_OnDemandToolBars::shouldFollowTheTypeThePageChose()
{
    CLS_TestBaseTree eager;
    eager.SetToolBarMountType(TOOLBAR_MOUNT_AT_BUILD);
    QCOMPARE(eager.Init("root", Groups(2100, 1), true), 0);
    QCOMPARE(eager.PendingToolBarCount(), 0);
    QCOMPARE(WidgetCount(eager), 2100);

    CLS_TestBaseTree lazy;
    lazy.SetToolBarMountType(TOOLBAR_MOUNT_ON_DEMAND);
    QCOMPARE(lazy.GetToolBarMountType(), TOOLBAR_MOUNT_ON_DEMAND);
    QCOMPARE(lazy.Init("root", Groups(2, 2), true), 0);
    QCOMPARE(lazy.PendingToolBarCount(), 4);
    QCOMPARE(WidgetCount(lazy), 0);
}

void tst_OnDemandToolBars::shouldMountTheBarsOfRowsInView()
{
    CLS_TestBaseTree tree;
    QVERIFY(ShowExpanded(tree, 50, 10, 200));

    // The first rows are in view and have their bar, with the bar as the page shown; the last
    // rows are far below and have none.
    QStackedWidget* pStack = BarStack(tree, "g0-0");
    QVERIFY(pStack != nullptr);
    QCOMPARE(pStack->count(), 1);
    QVERIFY(qobject_cast<CLS_WgtItemToolBar*>(pStack->currentWidget()) != nullptr);
    QVERIFY(BarStack(tree, "g49-9") == nullptr);
    const int iMounted = WidgetCount(tree);
    QVERIFY(iMounted > 0);
    QVERIFY(iMounted < 50);

    // Scrolled to the end: those rows get theirs.
    tree.scrollToItem(tree.GetNodeById("g49-9"));
    Paint(tree);
    pStack = BarStack(tree, "g49-9");
    QVERIFY(pStack != nullptr);
    QVERIFY(pStack->isVisible());
    QCOMPARE(pStack->parentWidget(), tree.viewport());
    QCOMPARE(pStack->geometry(),
             tree.visualRect(tree.model()->index(9, 1, tree.indexFromItem(tree.GetNodeById("g49")))));
    // The first rows are out of view now: their bars are hidden.
    QVERIFY(BarStack(tree, "g0-0") == nullptr || BarStack(tree, "g0-0")->isHidden());
}

void tst_OnDemandToolBars::shouldShowTheBlankPageFirstInHoverMode()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_HOVER);
    QVERIFY(ShowExpanded(tree, 3, 3, 200));
    QStackedWidget* pStack = BarStack(tree, "g0-1");
    QVERIFY(pStack != nullptr);
    QCOMPARE(pStack->count(), 2);
    QCOMPARE(pStack->currentIndex(), 0);
    QVERIFY(qobject_cast<CLS_WgtItemToolBar*>(pStack->widget(1)) != nullptr);
}

void tst_OnDemandToolBars::shouldMountTheBarOfAHoveredRow()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_HOVER);
    tree.SetToolBarMountType(TOOLBAR_MOUNT_ON_DEMAND);
    tree.resize(300, 200);
    QCOMPARE(tree.Init("root", Groups(3, 3), true), 0);
    tree.expandAll();
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    // No paint yet after the expansion: the mouse gets there first.
    const QPoint point = RowCenter(tree, "g0-1");
    QVERIFY(BarStack(tree, "g0-1") == nullptr || BarStack(tree, "g0-1")->currentIndex() == 0);
    MoveMouse(tree, point);
    QStackedWidget* pStack = BarStack(tree, "g0-1");
    QVERIFY(pStack != nullptr);
    QCOMPARE(pStack->currentIndex(), 1);
}

void tst_OnDemandToolBars::shouldKeepLiveCheckFlagsWhenABarIsMadeAgain()
{
    CLS_TestBaseTree tree;
    QVERIFY(ShowExpanded(tree, 200, 10, 200));

    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignClickButton);
    CLS_WgtItemToolBar* pBar = BarOf(tree, "g0-0");
    QVERIFY(pBar != nullptr);
    pBar->actions().at(0)->trigger();
    QCOMPARE(spy.count(), 1);
    QVERIFY(spy.at(0).at(1).value<CLS_ItemButton>().m_blChecked);

    // Page by page to the end: bars far out of view are given back on the way.
    QScrollBar* pBar2 = tree.verticalScrollBar();
    while (pBar2->value() < pBar2->maximum()) {
        pBar2->setValue(pBar2->value() + pBar2->pageStep());
        Paint(tree);
    }
    QVERIFY(BarStack(tree, "g0-0") == nullptr);
    QVERIFY(WidgetCount(tree) < 600);

    pBar2->setValue(0);
    Paint(tree);
    pBar = BarOf(tree, "g0-0");
    QVERIFY(pBar != nullptr);
    QVERIFY(pBar->actions().at(0)->isChecked());
    // The copy in the action keeps the state of the build.
    QVERIFY(!pBar->actions().at(0)->data().value<CLS_ItemButton>().m_blChecked);
    pBar->actions().at(0)->trigger();
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(1).at(0).toString(), QString("g0-0"));
    QVERIFY(!spy.at(1).at(1).value<CLS_ItemButton>().m_blChecked);
    QVERIFY(spy.at(1).at(1).value<CLS_ItemButton>().m_blCheckable);
}

void tst_OnDemandToolBars::shouldGiveNoBarToRowsTakenOutByAMove()
{
    CLS_TestBaseTree tree;
    tree.SetToolBarMountType(TOOLBAR_MOUNT_ON_DEMAND);
    tree.resize(300, 600);
    QCOMPARE(tree.Init("root", Groups(3, 4), true), 0);
    QCOMPARE(tree.PendingToolBarCount(), 12);
    // g1's children never had a bar; the move takes them all out and back.
    QCOMPARE(tree.MoveUpOneRow("g1-3", "g1-0"), 0);
    QCOMPARE(tree.PendingToolBarCount(), 8);
    tree.expandAll();
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    Paint(tree);
    for (int l = 0; l < 4; ++l) {
        QVERIFY(BarStack(tree, QString("g1-%1").arg(l)) == nullptr);
        QVERIFY(BarStack(tree, QString("g0-%1").arg(l)) != nullptr);
    }
    QVERIFY(tree.EnsureItemButtons(tree.GetNodeById("g1-0")) == nullptr);
}

void tst_OnDemandToolBars::shouldForgetBarsOfDeletedRowsAndOfARebuild()
{
    CLS_TestBaseTree tree;
    tree.SetToolBarMountType(TOOLBAR_MOUNT_ON_DEMAND);
    QCOMPARE(tree.Init("root", Groups(3, 4), true), 0);
    tree.DeleteItem("g2");
    QCOMPARE(tree.PendingToolBarCount(), 8);
    tree.DeleteItem("g1-1");
    QCOMPARE(tree.PendingToolBarCount(), 7);
    tree.Clear();
    QCOMPARE(tree.PendingToolBarCount(), 0);
    QCOMPARE(tree.Init("root", Groups(2, 2), true), 0);
    QCOMPARE(tree.PendingToolBarCount(), 4);
    QCOMPARE(tree.Init("root", Groups(1, 1), true), 0);
    QCOMPARE(tree.PendingToolBarCount(), 1);
}

void tst_OnDemandToolBars::shouldKeepTheBuildButtonsAfterUpdateItem()
{
    CLS_TestBaseTree tree;
    tree.SetToolBarMountType(TOOLBAR_MOUNT_ON_DEMAND);
    QCOMPARE(tree.Init("root", Groups(1, 1), true), 0);
    CLS_TreeItem clsItem;
    QCOMPARE(tree.GetItemById("g0-0", clsItem), 0);
    clsItem.m_qvecButtons = {MakeButton("x"), MakeButton("y"), MakeButton("z")};
    tree.UpdateItem(clsItem);
    auto* pStack = qobject_cast<QStackedWidget*>(tree.EnsureItemButtons(tree.GetNodeById("g0-0")));
    QVERIFY(pStack != nullptr);
    auto* pBar = pStack->findChild<CLS_WgtItemToolBar*>();
    QVERIFY(pBar != nullptr);
    QCOMPARE(pBar->actions().size(), 2);
    QCOMPARE(pBar->actions().at(0)->data().value<CLS_ItemButton>().m_qstrId, QString("check"));
}

void tst_OnDemandToolBars::shouldGiveTheAddItemGeometryToABarMadeLater()
{
    CLS_TestBaseTree tree;
    tree.SetToolBarMountType(TOOLBAR_MOUNT_ON_DEMAND);
    QCOMPARE(tree.Init("root", Groups(1, 1), true), 0);
    CLS_TreeItem clsNew = MakeItem("new", "g0", 9);
    clsNew.m_qvecButtons = {MakeButton("b")};
    QCOMPARE(tree.AddItem(clsNew), 0);
    QWidget* pAdded = tree.EnsureItemButtons(tree.GetNodeById("new"));
    QWidget* pBuilt = tree.EnsureItemButtons(tree.GetNodeById("g0-0"));
    QVERIFY(pAdded != nullptr && pBuilt != nullptr);
    QCOMPARE(pAdded->geometry(), QRect(0, 0, 50, 30));
    QVERIFY(pBuilt->geometry() != QRect(0, 0, 50, 30));
}

QTEST_MAIN(tst_OnDemandToolBars)
void tst_OnDemandToolBars::shouldHandBarsOverToRowsComingIntoViewWithTheirOwnButtons()
{
    // Each leaf's buttons carry the leaf's own data, as the device tree gives each channel its
    // device id: equal-looking buttons in vectors of their own.
    QMap<QString, CLS_TreeItem> qmapItems = Groups(100, 10);
    for (auto it = qmapItems.begin(); it != qmapItems.end(); ++it) {
        for (CLS_ItemButton& clsButton : it.value().m_qvecButtons)
            clsButton.m_varData = QVariant(it.key());
    }
    CLS_TestBaseTree tree;
    tree.SetToolBarMountType(TOOLBAR_MOUNT_ON_DEMAND);
    tree.resize(300, 200);
    QCOMPARE(tree.Init("root", qmapItems, true), 0);
    tree.expandAll();
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    Paint(tree);

    // Page by page through 1,101 rows: the bars of rows left behind serve the rows coming in.
    QSet<QWidget*> qsetStacks;
    int iRowsWithBars = 0;
    QScrollBar* pScroll = tree.verticalScrollBar();
    while (true) {
        for (auto it = tree.m_qmapNodes.cbegin(); it != tree.m_qmapNodes.cend(); ++it) {
            QWidget* pStack = tree.GetItemButtons(it.value());
            if (pStack != nullptr && pStack->isVisible()) {
                qsetStacks.insert(pStack);
                ++iRowsWithBars;
            }
        }
        if (pScroll->value() >= pScroll->maximum())
            break;
        pScroll->setValue(pScroll->value() + pScroll->pageStep());
        Paint(tree);
    }
    QVERIFY2(iRowsWithBars >= 500, qPrintable(QString::number(iRowsWithBars)));
    QVERIFY2(qsetStacks.size() <= 100, qPrintable(QString::number(qsetStacks.size())));

    // The last leaf's bar came from another row, yet reports this row and its own buttons.
    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignClickButton);
    CLS_WgtItemToolBar* pBar = BarOf(tree, "g99-9");
    QVERIFY(pBar != nullptr);
    QVERIFY(pBar->isVisible());
    QCOMPARE(pBar->actions().size(), 2);
    QCOMPARE(pBar->actions().at(0)->data().value<CLS_ItemButton>().m_varData.toString(), QString("g99-9"));
    QVERIFY(!pBar->actions().at(0)->isChecked());
    pBar->actions().at(1)->trigger();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), QString("g99-9"));
    const CLS_ItemButton clsClicked = spy.at(0).at(1).value<CLS_ItemButton>();
    QCOMPARE(clsClicked.m_qstrId, QString("plain"));
    QCOMPARE(clsClicked.m_varData.toString(), QString("g99-9"));
}

void tst_OnDemandToolBars::shouldGiveABigTreeWithoutRowWidgetsUniformRowHeights()
{
    // Bars on demand: no row holds a widget of its own, so every row is as high as the first.
    CLS_TestBaseTree lazy;
    QCOMPARE(lazy.Init("root", Groups(2001, 1), true), 0);
    QVERIFY(lazy.uniformRowHeights());

    // No buttons at all, more than 2,000 rows.
    QMap<QString, CLS_TreeItem> qmapPlain;
    Add(qmapPlain, MakeItem("root", QString(), 0));
    for (int i = 0; i < 2001; ++i)
        Add(qmapPlain, MakeItem(QString("r%1").arg(i), "root", i));
    CLS_TestBaseTree plain;
    QCOMPARE(plain.Init("root", qmapPlain, true), 0);
    QVERIFY(plain.uniformRowHeights());

    // Small trees keep Qt's default, and a rebuild into a small tree turns it off again.
    qmapPlain.remove("r2000");
    qmapPlain.remove("r1999");
    CLS_TestBaseTree small;
    QCOMPARE(small.Init("root", qmapPlain, true), 0); // 2,000 rows
    QVERIFY(!small.uniformRowHeights());
    QCOMPARE(plain.Init("root", qmapPlain, true), 0);
    QVERIFY(!plain.uniformRowHeights());
}

void tst_OnDemandToolBars::shouldLeaveRowHeightsFreeOnceABarIsAnIndexWidget()
{
    // Every bar made with its row is an index widget, and such a row is as high as its bar: a big
    // tree with a few rows with buttons, all built at once, keeps rows of their own heights.
    QMap<QString, CLS_TreeItem> qmapItems = Groups(2, 2);
    for (int i = 0; i < 2000; ++i)
        Add(qmapItems, MakeItem(QString("p%1").arg(i), "root", 10 + i));
    CLS_TestBaseTree eager;
    QCOMPARE(eager.Init("root", qmapItems, true), 0);
    QCOMPARE(eager.PendingToolBarCount(), 0);
    QVERIFY(eager.itemWidget(eager.GetNodeById("g1-1"), 1) != nullptr);
    QVERIFY(!eager.uniformRowHeights());

    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", Groups(2001, 1), true), 0);
    QVERIFY(tree.uniformRowHeights());
    tree.SetToolBarMountType(TOOLBAR_MOUNT_AT_BUILD);
    CLS_TreeItem clsNew = MakeItem("new", "g0", 9);
    clsNew.m_qvecButtons = {MakeButton("b")};
    QCOMPARE(tree.AddItem(clsNew), 0);
    QVERIFY(tree.itemWidget(tree.GetNodeById("new"), 1) != nullptr);
    QVERIFY(!tree.uniformRowHeights());
}

void tst_OnDemandToolBars::shouldKeepThePagesOwnRowHeightSetting()
{
    CLS_TestBaseTree tree;
    tree.setUniformRowHeights(true); // the page's choice
    QCOMPARE(tree.Init("root", Groups(2, 2), true), 0);
    QVERIFY(tree.uniformRowHeights());
    CLS_TreeItem clsNew = MakeItem("new", "g0", 9);
    clsNew.m_qvecButtons = {MakeButton("b")};
    QCOMPARE(tree.AddItem(clsNew), 0);
    QVERIFY(tree.itemWidget(tree.GetNodeById("new"), 1) != nullptr);
    QVERIFY(tree.uniformRowHeights());
}

#include "tst_OnDemandToolBars.moc"
