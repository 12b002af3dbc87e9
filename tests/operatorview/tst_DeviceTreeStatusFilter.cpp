// The status filter of the device tree: on line only, off line only and all; live with status
// batches, adds, deletes, moves and rebuilds; composed with the tree's own narrowing by id or name;
// and what the rest of the tree makes of the rows it hides.

#include "CLS_OperatorViewTestUtil.h"

#include <QtTest>

using namespace CLS_OperatorViewTestUtil;

class tst_DeviceTreeStatusFilter : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QVERIFY2(LeakedWindows().isEmpty(), qPrintable(LeakedWindows().join(", "))); }

    void filterIsOffByDefault()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        QCOMPARE(tree.GetStatusFilter(), int(STATUS_FILTER_ALL));
        QCOMPARE(Shown(tree), QString("resource_root_id(h1(c1,c2,a1),h2(c3),h3(c5,c6))"));
    }

    void onlineShowsOnlineChannelsAndTheRowsAboveThem()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_ONLINE), 0);
        QCOMPARE(tree.GetStatusFilter(), int(STATUS_FILTER_ONLINE));
        // The alarm input is no channel, and a host with no channel on line goes.
        QCOMPARE(Shown(tree), QString("resource_root_id(h1(c1),h3(c5))"));
        QCOMPARE(HiddenIds(tree), QStringList({"a1", "c2", "c3", "c6", "h2"}));
    }

    void offlineShowsEveryChannelWhoseStatusIsNotOne()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_OFFLINE), 0);
        QCOMPARE(Shown(tree), QString("resource_root_id(h1(c2),h2(c3),h3(c6))"));
    }

    void allGivesBackWhatTheTreeShowsAlone()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_ONLINE), 0);
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_OFFLINE), 0);
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_ALL), 0);
        QCOMPARE(HiddenIds(tree), QStringList());
        QCOMPARE(Shown(tree), QString("resource_root_id(h1(c1,c2,a1),h2(c3),h3(c5,c6))"));
    }

    void rootRowAlwaysShows()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        QMap<QString, CLS_CustomTreeNode> qmapNodes;
        Add(qmapNodes, MakeNode("g1", "custom_root_id", 2, QString(), 1));
        QVERIFY(tree.Init(qmapNodes, "Root") == 0);
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_ONLINE), 0);
        QCOMPARE(Shown(tree), QString("custom_root_id"));
        QCOMPARE(HiddenIds(tree), QStringList({"g1"}));
    }

    void unknownFilterValueIsRefusedAndChangesNothing_data()
    {
        QTest::addColumn<int>("value");
        QTest::newRow("-1") << -1;
        QTest::newRow("3") << 3;
        QTest::newRow("100") << 100;
    }

    void unknownFilterValueIsRefusedAndChangesNothing()
    {
        QFETCH(int, value);
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        QCOMPARE(tree.SetStatusFilter(value), -1);
        QCOMPARE(tree.GetStatusFilter(), int(STATUS_FILTER_ALL));
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_OFFLINE), 0);
        QCOMPARE(tree.SetStatusFilter(value), -1);
        QCOMPARE(tree.GetStatusFilter(), int(STATUS_FILTER_OFFLINE));
        QCOMPARE(Shown(tree), QString("resource_root_id(h1(c2),h2(c3),h3(c6))"));
    }

    void statusBatchMovesAChannelBetweenTheFiltersAtOnce()
    {
        CLS_TestDeviceTree online(nullptr, DEV_TREE_RESOURCE);
        CLS_TestDeviceTree offline(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(online));
        QVERIFY(BuildResource(offline));
        QCOMPARE(online.SetStatusFilter(STATUS_FILTER_ONLINE), 0);
        QCOMPARE(offline.SetStatusFilter(STATUS_FILTER_OFFLINE), 0);

        // c1 goes off line, c3 comes on line.
        const QVariant varBatch = Batch({{"C1", 0}, {"C3", 1}});
        QCOMPARE(online.UpdateAllChannelsStatus(varBatch), 0);
        QCOMPARE(offline.UpdateAllChannelsStatus(varBatch), 0);
        QCOMPARE(Shown(online), QString("resource_root_id(h2(c3),h3(c5))"));
        QCOMPARE(Shown(offline), QString("resource_root_id(h1(c1,c2),h3(c6))"));
    }

    void groupWhoseChannelsAreAllFilteredOutHidesAndComesBack()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        QVERIFY(BuildCustom(tree));
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_ONLINE), 0);
        QCOMPARE(Shown(tree), QString("custom_root_id(g1(c1),c3)"));
        QVERIFY(NodeOf(tree, "g2")->isHidden() && NodeOf(tree, "g3")->isHidden());

        QCOMPARE(tree.UpdateAllChannelsStatus(Batch({{"D4", 1}})), 0);
        QCOMPARE(Shown(tree), QString("custom_root_id(g1(c1),g2(g3(c4)),c3)"));
        QCOMPARE(tree.UpdateAllChannelsStatus(Batch({{"D4", 0}, {"D1", 0}})), 0);
        QCOMPARE(Shown(tree), QString("custom_root_id(c3)"));
    }

    void filterComposesWithShowItemByName()
    {
        // The tree's own narrowing first, then the filter.
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        PanelOf(tree)->SetShowItemByName("name c"); // every channel, with its host and the root
        const QString qstrNarrowed = Shown(tree);
        const QStringList qlstNarrowedHidden = HiddenIds(tree);
        QCOMPARE(qstrNarrowed, QString("resource_root_id(h1(c1,c2),h2(c3),h3(c5,c6))"));

        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_ONLINE), 0);
        QCOMPARE(Shown(tree), QString("resource_root_id(h1(c1),h3(c5))"));
        // Off again: exactly what the narrowing alone shows.
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_ALL), 0);
        QCOMPARE(Shown(tree), qstrNarrowed);
        QCOMPARE(HiddenIds(tree), qlstNarrowedHidden);
    }

    void showItemByNameComposesWithTheFilter()
    {
        // The filter first, then the tree's own narrowing, then a narrowing that keeps every row.
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_OFFLINE), 0);
        const QString qstrFiltered = Shown(tree);

        PanelOf(tree)->SetShowItemByName("name c1"); // c1 is on line: the filter hides it
        QCOMPARE(Shown(tree), QString("resource_root_id(h1)"));
        PanelOf(tree)->SetShowItemByName("name c"); // c2, c3 and c6 are off line
        QCOMPARE(Shown(tree), QString("resource_root_id(h1(c2),h2(c3),h3(c6))"));
        PanelOf(tree)->SetShowItemByName("name"); // every row: the filter alone
        QCOMPARE(Shown(tree), qstrFiltered);
    }

    void showItemByIdComposesWithTheFilter()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_ONLINE), 0);
        PanelOf(tree)->SetShowItemById("c5");
        QCOMPARE(Shown(tree), QString("resource_root_id(h3(c5))"));
        QCOMPARE(tree.UpdateAllChannelsStatus(Batch({{"C5", 0}})), 0);
        QCOMPARE(Shown(tree), QString("resource_root_id"));
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_ALL), 0);
        QCOMPARE(Shown(tree), QString("resource_root_id(h3(c5))"));
    }

    void addedChannelIsFilteredAtOnce()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        QVERIFY(BuildCustom(tree));
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_OFFLINE), 0);
        QCOMPARE(Shown(tree), QString("custom_root_id(g2(g3(c4)))"));

        QVariant varNodes = QVariant::fromValue(QVector<CLS_CustomTreeNode>{
            MakeNode("c7", "g4", 4, "D7", 1, 0), MakeNode("c8", "g1", 4, "D8", 2, 1)});
        QCOMPARE(tree.AddItems(varNodes), 2);
        QCOMPARE(Shown(tree), QString("custom_root_id(g2(g3(c4)),g4(c7))"));
        QVERIFY(NodeOf(tree, "c8")->isHidden());
    }

    void deletingTheLastShownChannelHidesItsGroup()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        QVERIFY(BuildCustom(tree));
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_ONLINE), 0);
        QCOMPARE(tree.DeleteItem("c1"), 0);
        QCOMPARE(Shown(tree), QString("custom_root_id(c3)"));
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_ALL), 0);
        QCOMPARE(Shown(tree), QString("custom_root_id(g1,g2(g3(c4)),c3,g4)"));
    }

    void rowMovesKeepTheFilter()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_ONLINE), 0);
        QCOMPARE(tree.MoveDownOneRow("c1", "c2"), 0);
        QCOMPARE(Rows(tree), QString("resource_root_id(h1(c2,c1,a1),h2(c3),h3(c5,c6))"));
        QCOMPARE(Shown(tree), QString("resource_root_id(h1(c1),h3(c5))"));
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_ALL), 0);
        QCOMPARE(HiddenIds(tree), QStringList());
    }

    void rebuildAppliesTheFilterToTheNewRows()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_OFFLINE), 0);
        QMap<QString, CLS_CustomTreeNode> qmapNodes = ResourceNodes();
        qmapNodes["c1"].m_iStatus = 0;
        qmapNodes["c2"].m_iStatus = 1;
        QCOMPARE(tree.Init(qmapNodes, "All"), 0);
        QCOMPARE(tree.GetStatusFilter(), int(STATUS_FILTER_OFFLINE));
        QCOMPARE(Shown(tree), QString("resource_root_id(h1(c1),h2(c3),h3(c6))"));
    }

    void modifiedNodeFollowsTheFilter()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        QVERIFY(BuildCustom(tree));
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_ONLINE), 0);
        CLS_CustomTreeNode node = tree.m_qmapNodes.value("c4");
        node.m_iStatus = 1;
        QCOMPARE(tree.ModifyItems(QList<CLS_CustomTreeNode>{node}), 0);
        QCOMPARE(Shown(tree), QString("custom_root_id(g1(c1),g2(g3(c4)),c3)"));
    }

    void filteredRowsAreLeftOutOfTheCheckedLists()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE, false, true);
        QVERIFY(BuildResource(tree));
        tree.SetItemCheckStatus(QString(), Qt::Checked, false);
        QVector<CLS_CustomTreeNode> qvecAll;
        QCOMPARE(tree.GetCheckedChannel(qvecAll), 0);
        QStringList qlstAll = TreeIds(qvecAll);
        qlstAll.sort(); // equal numbers have no settled order
        QCOMPARE(qlstAll, QStringList({"a1", "c1", "c2", "c3", "c5", "c6"}));

        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_ONLINE), 0);
        QVector<CLS_CustomTreeNode> qvecShown;
        QCOMPARE(tree.GetCheckedChannel(qvecShown), 0);
        QStringList qlstShown = TreeIds(qvecShown);
        qlstShown.sort();
        QCOMPARE(qlstShown, QStringList({"c1", "c5"}));
    }

    void filterBeforeTheFirstBuildAppliesToIt()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QCOMPARE(tree.SetStatusFilter(STATUS_FILTER_ONLINE), 0);
        QVERIFY(BuildResource(tree));
        QCOMPARE(Shown(tree), QString("resource_root_id(h1(c1),h3(c5))"));
    }
};

QTEST_MAIN(tst_DeviceTreeStatusFilter)
#include "tst_DeviceTreeStatusFilter.moc"
