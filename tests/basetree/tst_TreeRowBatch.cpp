// Many-row changes of CLS_WgtBaseTreeWidget in one batch (CLS_TreeRowBatch): between operations
// the header sizes column 0 to its contents as before, each column keeps the mode its owner gave
// it, repaints come back, and the signals of an operation are those of the row-by-row code.

#include "CLS_TestBaseTree.h"
#include "CLS_TreeRowBatch.h"
#include "CLS_TreeSignalLog.h"

#include <QHeaderView>
#include <QPointer>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

using namespace CLS_TreeTestUtil;

namespace {

// root: g0..g(n-1), each with _iLeaves leaves "g<i>-<j>".
QMap<QString, CLS_TreeItem> Groups(int _iGroups, int _iLeaves, const QString& _qstrTextTail = QString())
{
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("root", QString(), 0));
    for (int g = 0; g < _iGroups; ++g) {
        const QString qstrGroup = QString("g%1").arg(g);
        Add(qmapItems, MakeItem(qstrGroup, "root", g));
        for (int l = 0; l < _iLeaves; ++l) {
            const QString qstrLeaf = QString("%1-%2").arg(qstrGroup).arg(l);
            Add(qmapItems, MakeItem(qstrLeaf, qstrGroup, l, qstrLeaf + _qstrTextTail));
        }
    }
    return qmapItems;
}

// The width the header gives column 0 in ResizeToContents mode, computed the way the header does.
int ContentsWidth(CLS_TestBaseTree& _tree)
{
    QHeaderView* pHeader = _tree.header();
    return qBound(pHeader->minimumSectionSize(),
                  qMax(_tree.sizeHintForColumn(0), pHeader->sectionSizeHint(0)),
                  pHeader->maximumSectionSize());
}

// Counts how often the view lays out its rows.
class CLS_LayoutCountingTree : public CLS_TestBaseTree
{
public:
    using CLS_TestBaseTree::CLS_TestBaseTree;
    void doItemsLayout() override
    {
        ++m_iLayouts;
        CLS_TestBaseTree::doItemsLayout();
    }
    int m_iLayouts = 0;
};

} // namespace

class tst_TreeRowBatch : public QObject
{
    Q_OBJECT

private slots:
    void shouldKeepColumnsInResizeToContentsModeAfterEveryOperation();
    void shouldSizeTheTextColumnWhenTheOperationReturns();
    void shouldRestoreModesOnlyWhenTheOutermostBatchEnds();
    void shouldLeaveAColumnModeSetByTheOwnerAlone();
    void shouldRestoreRepaintsButKeepThemOffWhenTheOwnerTurnedThemOff();
    void shouldSurviveATreeDestroyedInsideTheBatch();
    void shouldAcceptANullTree();
    void shouldSendCheckSignalsOfACascadeInTheirOrder();
    void shouldKeepTheLayoutThroughACheckCascade();
    void shouldExpandAndFoldInsideABatchAsWithoutIt();
    void shouldKeepRowsSeenInsideABatchUsable();
};

void tst_TreeRowBatch::shouldKeepColumnsInResizeToContentsModeAfterEveryOperation()
{
    CLS_TestBaseTree tree(nullptr, true);
    tree.resize(300, 400);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    QCOMPARE(tree.Init("root", Groups(5, 4), true), 0);

    auto check = [&tree](const char* _pWhat) {
        for (int i = 0; i < tree.header()->count(); ++i) {
            if (tree.header()->sectionResizeMode(i) != QHeaderView::ResizeToContents)
                QFAIL(qPrintable(QString("column %1 lost its mode after %2").arg(i).arg(_pWhat)));
        }
        QVERIFY2(!tree.InRowBatch(), _pWhat);
    };
    check("Init");
    tree.AddItems({MakeItem("n1", "g1", 9), MakeItem("n2", "g2", 9)});
    check("AddItems");
    tree.SetItemCheckStatus("g1", Qt::Checked, true);
    check("SetItemCheckStatus");
    tree.SetShowItemByName("g1-");
    check("SetShowItemByName");
    tree.SetShowItemById("g2");
    check("SetShowItemById");
    tree.SetAllExpandStatus(true);
    check("SetAllExpandStatus");
    tree.SetItemExpandStatus("g3", TREE_EXPAND_ALL);
    check("SetItemExpandStatus");
    QCOMPARE(tree.MoveUpOneRow("g1-3", "g1-0"), 0);
    check("MoveUpOneRow");
    tree.DeleteItem("g4");
    check("DeleteItem");
    tree.UpdateItem(MakeItem("g0-0", "g0", 0, "renamed"));
    check("UpdateItem");
    tree.Clear();
    check("Clear");
}

void tst_TreeRowBatch::shouldSizeTheTextColumnWhenTheOperationReturns()
{
    CLS_TestBaseTree tree;
    tree.resize(300, 400);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    QCOMPARE(tree.Init("root", Groups(3, 3), true), 0);
    tree.SetAllExpandStatus(true);
    QCOMPARE(tree.columnWidth(0), ContentsWidth(tree));
    const int iBefore = tree.columnWidth(0);

    // A much longer text: the column is wider as soon as the call returns, without an event loop.
    tree.UpdateItem(MakeItem("g1-1", "g1", 1, QString("g1-1 ") + QString(60, QChar('W'))));
    QVERIFY(tree.columnWidth(0) > iBefore);
    QCOMPARE(tree.columnWidth(0), ContentsWidth(tree));

    tree.AddItems({MakeItem("long", "g2", 9, QString(90, QChar('M')))});
    QCOMPARE(tree.columnWidth(0), ContentsWidth(tree));
    tree.DeleteItem("long");
    tree.DeleteItem("g1");
    QCOMPARE(tree.columnWidth(0), ContentsWidth(tree));
    QVERIFY(tree.columnWidth(0) < ContentsWidth(tree) + 1);
}

void tst_TreeRowBatch::shouldRestoreModesOnlyWhenTheOutermostBatchEnds()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", Groups(2, 2), true), 0);
    {
        CLS_TreeRowBatch outer(&tree);
        QVERIFY(tree.InRowBatch());
        QCOMPARE(tree.header()->sectionResizeMode(0), QHeaderView::Interactive);
        {
            CLS_TreeRowBatch inner(&tree);
            tree.AddItem(MakeItem("x", "g0", 5));
        }
        QVERIFY(tree.InRowBatch());
        QCOMPARE(tree.header()->sectionResizeMode(0), QHeaderView::Interactive);
    }
    QVERIFY(!tree.InRowBatch());
    QCOMPARE(tree.header()->sectionResizeMode(0), QHeaderView::ResizeToContents);
    QCOMPARE(tree.header()->sectionResizeMode(1), QHeaderView::ResizeToContents);
    // An end without a begin changes nothing.
    tree.EndRowBatch();
    QVERIFY(!tree.InRowBatch());
    QCOMPARE(tree.header()->sectionResizeMode(0), QHeaderView::ResizeToContents);
}

void tst_TreeRowBatch::shouldLeaveAColumnModeSetByTheOwnerAlone()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", Groups(2, 2), true), 0);
    tree.header()->setSectionResizeMode(0, QHeaderView::Fixed);
    tree.header()->resizeSection(0, 77);
    tree.AddItems({MakeItem("x", "g0", 5, QString(80, QChar('W')))});
    tree.SetAllExpandStatus(true);
    QCOMPARE(tree.header()->sectionResizeMode(0), QHeaderView::Fixed);
    QCOMPARE(tree.columnWidth(0), 77);
    QCOMPARE(tree.header()->sectionResizeMode(1), QHeaderView::ResizeToContents);
}

void tst_TreeRowBatch::shouldRestoreRepaintsButKeepThemOffWhenTheOwnerTurnedThemOff()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", Groups(2, 2), true), 0);
    {
        CLS_TreeRowBatch batch(&tree);
        QVERIFY(!tree.updatesEnabled());
    }
    QVERIFY(tree.updatesEnabled());

    tree.setUpdatesEnabled(false);
    tree.SetAllExpandStatus(true);
    QVERIFY(!tree.updatesEnabled());
}

void tst_TreeRowBatch::shouldSurviveATreeDestroyedInsideTheBatch()
{
    QPointer<CLS_TestBaseTree> pGuard;
    {
        auto* pTree = new CLS_TestBaseTree;
        pGuard = pTree;
        QCOMPARE(pTree->Init("root", Groups(2, 2), true), 0);
        CLS_TreeRowBatch batch(pTree);
        QVERIFY(pTree->InRowBatch());
        QVERIFY(!pTree->updatesEnabled());
        delete pTree;
        QVERIFY(pGuard.isNull());
    } // the batch ends here, on nothing: a touch of the dead tree would crash (or trip ASan)
    CLS_TestBaseTree other;
    QVERIFY(!other.InRowBatch());
    QVERIFY(other.updatesEnabled());
}

void tst_TreeRowBatch::shouldAcceptANullTree()
{
    CLS_TreeRowBatch batch(nullptr);
    CLS_TestBaseTree tree;
    QVERIFY(!tree.InRowBatch()); // another tree is not touched
}

void tst_TreeRowBatch::shouldSendCheckSignalsOfACascadeInTheirOrder()
{
    CLS_TestBaseTree tree(nullptr, true);
    QCOMPARE(tree.Init("root", Groups(2, 2), true), 0);
    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignCheckedStatusChanged);
    tree.SetItemCheckStatus("g0", Qt::Checked, true);
    QStringList qlstIds;
    for (const QList<QVariant>& qlstArgs : qAsConst(spy))
        qlstIds << qlstArgs.at(0).toString();
    QCOMPARE(qlstIds, QStringList({"g0-0", "g0-1", "g0"}));

    // The root's cascade by the row itself (as a click does): every row, deepest first.
    spy.clear();
    tree.GetNodeById("root")->setData(0, Qt::CheckStateRole, static_cast<int>(Qt::Checked));
    qlstIds.clear();
    for (const QList<QVariant>& qlstArgs : qAsConst(spy))
        qlstIds << qlstArgs.at(0).toString();
    QCOMPARE(qlstIds, QStringList({"g1-0", "g1-1", "g1", "root"}));
    QVERIFY(!tree.InRowBatch());
    QCOMPARE(tree.header()->sectionResizeMode(0), QHeaderView::ResizeToContents);
}

void tst_TreeRowBatch::shouldKeepTheLayoutThroughACheckCascade()
{
    CLS_LayoutCountingTree tree(nullptr, true);
    tree.resize(300, 400);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    QCOMPARE(tree.Init("root", Groups(20, 5), true), 0);
    tree.expandAll();
    QCoreApplication::processEvents();
    const QRect rectBefore = tree.visualItemRect(tree.GetNodeById("g3-2"));
    QVERIFY(rectBefore.isValid());

    // Check states move no row: neither the tree's call nor a click on a parent's box lays the
    // rows out again, and every row of the cascade has its state and its place.
    tree.m_iLayouts = 0;
    tree.SetItemCheckStatus("root", Qt::Checked, true);
    QCOMPARE(tree.m_iLayouts, 0);
    QCOMPARE(tree.GetNodeById("g3-2")->checkState(0), Qt::Checked);
    tree.GetNodeById("g3")->setData(0, Qt::CheckStateRole, static_cast<int>(Qt::Unchecked));
    QCOMPARE(tree.m_iLayouts, 0);
    QCOMPARE(tree.GetNodeById("g3-2")->checkState(0), Qt::Unchecked);
    QCOMPARE(tree.GetNodeById("root")->checkState(0), Qt::PartiallyChecked);
    QCOMPARE(tree.visualItemRect(tree.GetNodeById("g3-2")), rectBefore);
    QVERIFY(!tree.InRowBatch());
    QVERIFY(tree.updatesEnabled());
}

void tst_TreeRowBatch::shouldExpandAndFoldInsideABatchAsWithoutIt()
{
    CLS_TestBaseTree tree;
    tree.resize(300, 400);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    QCOMPARE(tree.Init("root", Groups(4, 2), true), 0);
    QSignalSpy spyCollapsed(&tree, &QTreeWidget::itemCollapsed);
    {
        CLS_TreeRowBatch batch(&tree);
        tree.expandAll();
        tree.DeferRowLayout();
        for (int g = 0; g < 4; g += 2)
            tree.collapseItem(tree.GetNodeById(QString("g%1").arg(g)));
    }
    QCOMPARE(spyCollapsed.count(), 2);
    QVERIFY(tree.GetNodeById("root")->isExpanded());
    QVERIFY(!tree.GetNodeById("g0")->isExpanded());
    QVERIFY(tree.GetNodeById("g1")->isExpanded());
    QVERIFY(!tree.GetNodeById("g2")->isExpanded());
    // Laid out when the batch ended: g1's leaves are on screen below g1, g0's are not.
    QVERIFY(tree.visualItemRect(tree.GetNodeById("g1-0")).isValid());
    QVERIFY(tree.visualItemRect(tree.GetNodeById("g1-0")).top() >
            tree.visualItemRect(tree.GetNodeById("g1")).top());
    QVERIFY(!tree.visualItemRect(tree.GetNodeById("g0-0")).isValid());
}

void tst_TreeRowBatch::shouldKeepRowsSeenInsideABatchUsable()
{
    CLS_TestBaseTree tree;
    tree.resize(300, 200);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    QCOMPARE(tree.Init("root", Groups(10, 5), true), 0);
    {
        CLS_TreeRowBatch batch(&tree);
        tree.expandAll();
        // Asking where a row is lays the rows out inside the batch.
        QTreeWidgetItem* pLast = tree.GetNodeById("g9-4");
        tree.scrollToItem(pLast);
        QVERIFY(tree.visualItemRect(pLast).isValid());
        tree.AddItem(MakeItem("g9-5", "g9", 9));
    }
    QVERIFY(tree.visualItemRect(tree.GetNodeById("g9-5")).isValid());
    QCOMPARE(tree.GetNodeById("g9")->childCount(), 6);
}

QTEST_MAIN(tst_TreeRowBatch)
#include "tst_TreeRowBatch.moc"
