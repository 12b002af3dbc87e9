// On-line counts per row of the device tree: the answers of GetChannelCounts after a build, status
// batches, adds, deletes, moves and a rebuild, each compared with a count made by walking the
// nodes; the text the counts delegate paints, and that nothing is painted until a page asks.

#include "CLS_OperatorViewTestUtil.h"

#include "CLS_ChannelCountsDelegate.h"

#include <QImage>
#include <QtTest>

using namespace CLS_OperatorViewTestUtil;

namespace {

// The model index of a row, column 0, from its place among its siblings.
QModelIndex IndexOf(QTreeWidget* _pTree, QTreeWidgetItem* _pRow)
{
    QTreeWidgetItem* pParent = _pRow->parent();
    if (pParent == nullptr)
        return _pTree->model()->index(_pTree->indexOfTopLevelItem(_pRow), 0);
    return _pTree->model()->index(pParent->indexOfChild(_pRow), 0, IndexOf(_pTree, pParent));
}

QString PaintedText(CLS_TestDeviceTree& _tree, const QString& _qstrId)
{
    CLS_WgtBaseTreeWidget* pBase = BaseOf(_tree);
    auto* pDelegate = qobject_cast<CLS_ChannelCountsDelegate*>(pBase->itemDelegateForColumn(0));
    QTreeWidgetItem* pRow = NodeOf(_tree, _qstrId);
    if (pDelegate == nullptr || pRow == nullptr)
        return "<no delegate or row>";
    return pDelegate->CountText(IndexOf(pBase, pRow));
}

} // namespace

class tst_DeviceTreeChannelCounts : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QVERIFY2(LeakedWindows().isEmpty(), qPrintable(LeakedWindows().join(", "))); }

    void countsAfterBuildMatchAWalkOfTheNodes()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        QCOMPARE(CountsText(tree), QString("h1:1/2 h2:0/1 h3:1/2 resource_root_id:2/5"));
        QCOMPARE(CountsText(tree), WalkText(tree));
    }

    void countsOfNestedGroups()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        QVERIFY(BuildCustom(tree));
        QCOMPARE(CountsText(tree), QString("custom_root_id:2/3 g1:1/1 g2:0/1 g3:0/1"));
        QCOMPARE(CountsText(tree), WalkText(tree));
        int iOnline = -1;
        int iTotal = -1;
        QCOMPARE(tree.GetChannelCounts("c1", iOnline, iTotal), 0); // a channel has none below it
        QCOMPARE(iOnline, 0);
        QCOMPARE(iTotal, 0);
    }

    void unknownOrEmptyIdGivesMinusOneAndLeavesTheOutputs()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        QVERIFY(BuildCustom(tree));
        int iOnline = 7;
        int iTotal = 8;
        QCOMPARE(tree.GetChannelCounts("nope", iOnline, iTotal), -1);
        QCOMPARE(tree.GetChannelCounts(QString(), iOnline, iTotal), -1);
        QCOMPARE(iOnline, 7);
        QCOMPARE(iTotal, 8);
    }

    void statusBatchesMoveTheCounts()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        // Asked first, so that the counts are kept from here on and the batch moves them.
        QCOMPARE(CountsText(tree), QString("h1:1/2 h2:0/1 h3:1/2 resource_root_id:2/5"));
        QCOMPARE(tree.UpdateAllChannelsStatus(Batch({{"C2", 1}, {"C3", 1}, {"C5", 2}, {"XX", 1}})), 0);
        QCOMPARE(CountsText(tree), QString("h1:2/2 h2:1/1 h3:0/2 resource_root_id:3/5"));
        QCOMPARE(CountsText(tree), WalkText(tree));
        // The same state again changes nothing; an alarm input's state counts for nothing.
        QCOMPARE(tree.UpdateAllChannelsStatus(Batch({{"C2", 1}, {"A1", 0}})), 0);
        QCOMPARE(CountsText(tree), QString("h1:2/2 h2:1/1 h3:0/2 resource_root_id:3/5"));
    }

    void addsDeletesAndMovesMoveTheCounts()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        QVERIFY(BuildCustom(tree));
        QCOMPARE(CountsText(tree), QString("custom_root_id:2/3 g1:1/1 g2:0/1 g3:0/1")); // kept from here
        QVariant varNodes = QVariant::fromValue(QVector<CLS_CustomTreeNode>{
            MakeNode("c7", "g3", 4, "D7", 2, 1), MakeNode("c8", "g4", 4, "D8", 1, 0),
            MakeNode("g5", "g4", 2, "G5", 2)});
        QCOMPARE(tree.AddItems(varNodes), 3);
        QCOMPARE(CountsText(tree), QString("custom_root_id:3/5 g1:1/1 g2:1/2 g3:1/2 g4:0/1"));
        QCOMPARE(CountsText(tree), WalkText(tree));

        QCOMPARE(tree.MoveUpOneRow("c7", "c4"), 0);
        QCOMPARE(Rows(tree), QString("custom_root_id(g1(c1),g2(g3(c7,c4)),c3,g4(c8,g5))"));
        QCOMPARE(CountsText(tree), WalkText(tree));

        // A group with its channels: the page deletes the descendants as well.
        QCOMPARE(tree.DeleteItems({"g3", "c4", "c7"}), 3);
        QCOMPARE(CountsText(tree), QString("custom_root_id:2/3 g1:1/1 g4:0/1"));
        QCOMPARE(CountsText(tree), WalkText(tree));
    }

    void deletingAParentRowTakesItsChannelsOutOfTheCounts()
    {
        // The channel nodes of a deleted group stay in the model without rows: they count nowhere.
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        QVERIFY(BuildCustom(tree));
        QCOMPARE(CountsText(tree), QString("custom_root_id:2/3 g1:1/1 g2:0/1 g3:0/1")); // kept from here
        QCOMPARE(tree.DeleteItem("g2"), 0);
        int iOnline = -1;
        int iTotal = -1;
        QCOMPARE(tree.GetChannelCounts("custom_root_id", iOnline, iTotal), 0);
        QCOMPARE(QString("%1/%2").arg(iOnline).arg(iTotal), QString("2/2"));
        QCOMPARE(tree.GetChannelCounts("c4", iOnline, iTotal), 0); // a stale node: 0/0
        QCOMPARE(QString("%1/%2").arg(iOnline).arg(iTotal), QString("0/0"));
    }

    void rebuildCountsTheNewRows()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        QCOMPARE(CountsText(tree), QString("h1:1/2 h2:0/1 h3:1/2 resource_root_id:2/5"));
        QMap<QString, CLS_CustomTreeNode> qmapNodes = ResourceNodes();
        qmapNodes.remove("c5");
        qmapNodes["c3"].m_iStatus = 1;
        QCOMPARE(tree.Init(qmapNodes, "All"), 0);
        QCOMPARE(CountsText(tree), QString("h1:1/2 h2:1/1 h3:0/1 resource_root_id:2/4"));
        QCOMPARE(CountsText(tree), WalkText(tree));
    }

    void modifiedNodeMovesTheCounts()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        QVERIFY(BuildCustom(tree));
        QCOMPARE(CountsText(tree), QString("custom_root_id:2/3 g1:1/1 g2:0/1 g3:0/1"));
        CLS_CustomTreeNode node = tree.m_qmapNodes.value("c4");
        node.m_iStatus = 1;
        QCOMPARE(tree.ModifyItems(QList<CLS_CustomTreeNode>{node}), 0);
        QCOMPARE(CountsText(tree), QString("custom_root_id:3/3 g1:1/1 g2:1/1 g3:1/1"));
        QCOMPARE(CountsText(tree), WalkText(tree));
    }

    void countsAreNotPaintedUntilAsked()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        QVERIFY(!tree.GetShowChannelCounts());
        QCOMPARE(BaseOf(tree)->itemDelegateForColumn(0), nullptr);
        int iOnline = 0;
        int iTotal = 0;
        QCOMPARE(tree.GetChannelCounts("h1", iOnline, iTotal), 0); // a question paints nothing
        QCOMPARE(BaseOf(tree)->itemDelegateForColumn(0), nullptr);
    }

    void delegatePaintsOnlineOverTotalOfRowsWithChannels()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        QAbstractItemDelegate* pPlain = BaseOf(tree)->itemDelegate();
        tree.SetShowChannelCounts(true);
        QVERIFY(tree.GetShowChannelCounts());
        // Whichever delegate a caller asks the view for paints the counts.
        QVERIFY(qobject_cast<CLS_ChannelCountsDelegate*>(BaseOf(tree)->itemDelegate()) != nullptr);
        QCOMPARE(BaseOf(tree)->itemDelegateForColumn(0), BaseOf(tree)->itemDelegate());
        QCOMPARE(PaintedText(tree, "resource_root_id"), QString("2/5"));
        QCOMPARE(PaintedText(tree, "h1"), QString("1/2"));
        QCOMPARE(PaintedText(tree, "h2"), QString("0/1"));
        QCOMPARE(PaintedText(tree, "c1"), QString()); // a channel has nothing below it
        QCOMPARE(PaintedText(tree, "a1"), QString());
        QCOMPARE(tree.UpdateAllChannelsStatus(Batch({{"C3", 1}})), 0);
        QCOMPARE(PaintedText(tree, "h2"), QString("1/1"));
        // The row's own text stays the name.
        QCOMPARE(NodeOf(tree, "h2")->text(0), QString("name h2"));

        tree.SetShowChannelCounts(false);
        QCOMPARE(BaseOf(tree)->itemDelegateForColumn(0), nullptr);
        QCOMPARE(BaseOf(tree)->itemDelegate(), pPlain); // the tree's own delegate is back
    }

    void paintedRowDiffersOnlyWhereTheCountsAre()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        QVERIFY(ShowOpen(tree));
        CLS_WgtBaseTreeWidget* pBase = BaseOf(tree);
        const QRect rectRow = pBase->visualItemRect(NodeOf(tree, "h1"));
        const QImage imgPlain = pBase->viewport()->grab(rectRow).toImage();
        tree.SetShowChannelCounts(true);
        QApplication::processEvents();
        const QImage imgCounts = pBase->viewport()->grab(rectRow).toImage();
        QVERIFY(imgPlain != imgCounts);
        // The left part, where the icon and the name are, is painted as before.
        const QRect rectLeft(0, 0, 40, rectRow.height());
        QCOMPARE(imgCounts.copy(rectLeft), imgPlain.copy(rectLeft));
    }
};

QTEST_MAIN(tst_DeviceTreeChannelCounts)
#include "tst_DeviceTreeChannelCounts.moc"
