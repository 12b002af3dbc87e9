// The read operations of CLS_WgtDeviceTree: lookups by tree id and device id, children, parents,
// the current row, check states and the lists of checked nodes. Each answers with the model's
// nodes, asks the rows for places and states, appends to output vectors and leaves a single output
// alone on failure.

#include "CLS_TestDeviceTree.h"

#include <QtTest>

using namespace CLS_DevTreeTestUtil;

namespace {

const QString CONST_CUSTOM_ROOT = "custom_root_id";
const QString CONST_RESOURCE_ROOT = "resource_root_id";

// Custom tree below "custom_root_id":
//   g1 (1, no device id): c1 (2, D1), c2 (1, D2)
//   g2 (2, G2): g3 (1, no device id): c4 (1, D4)
//   c3 (3, D3)
QMap<QString, CLS_CustomTreeNode> CustomNodes()
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode("g1", CONST_CUSTOM_ROOT, 2, QString(), 1));
    Add(qmapNodes, MakeNode("c1", "g1", 4, "D1", 2));
    Add(qmapNodes, MakeNode("c2", "g1", 4, "D2", 1));
    Add(qmapNodes, MakeNode("g2", CONST_CUSTOM_ROOT, 2, "G2", 2));
    Add(qmapNodes, MakeNode("g3", "g2", 2, QString(), 1));
    Add(qmapNodes, MakeNode("c4", "g3", 4, "D4", 1));
    Add(qmapNodes, MakeNode("c3", CONST_CUSTOM_ROOT, 4, "D3", 3));
    return qmapNodes;
}

// Resource tree:
//   resource_root_id: h1 (1, H1): c1 (1, C1), c2 (2, C2), a1 (1001, A1)
//                     h2 (2, H2): c3 (1, C3)
QMap<QString, CLS_CustomTreeNode> ResourceNodes()
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode(CONST_RESOURCE_ROOT, QString(), 2, CONST_RESOURCE_ROOT));
    Add(qmapNodes, MakeNode("h1", CONST_RESOURCE_ROOT, 3, "H1", 1));
    Add(qmapNodes, MakeNode("c1", "h1", 4, "C1", 1));
    Add(qmapNodes, MakeNode("c2", "h1", 4, "C2", 2));
    Add(qmapNodes, MakeNode("a1", "h1", 5, "A1", 1001));
    Add(qmapNodes, MakeNode("h2", CONST_RESOURCE_ROOT, 3, "H2", 2));
    Add(qmapNodes, MakeNode("c3", "h2", 4, "C3", 1));
    return qmapNodes;
}

bool BuildCustom(CLS_TestDeviceTree& _tree)
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes = CustomNodes();
    return _tree.Init(qmapNodes, "Root") == 0 && Rows(_tree) == "custom_root_id(g1(c2,c1),g2(g3(c4)),c3)";
}

bool BuildResource(CLS_TestDeviceTree& _tree)
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes = ResourceNodes();
    return _tree.Init(qmapNodes, "All") == 0 && Rows(_tree) == "resource_root_id(h1(c1,c2,a1),h2(c3))";
}

// A node that no query would give back, to see whether an output was touched.
CLS_CustomTreeNode Marker(int _iSortNo = 0)
{
    return MakeNode("marker", "nowhere", 99, "MARK", _iSortNo);
}

// A row the node map knows nothing of, added straight to the panel.
CLS_TreeItem StrayRow(const QString& _qstrId, const QString& _qstrParentId, int _iSortNo)
{
    CLS_TreeItem clsItem;
    clsItem.m_qstrId = _qstrId;
    clsItem.m_qstrParentId = _qstrParentId;
    clsItem.m_qstrText = _qstrId;
    clsItem.m_varData = QString("DEV_" + _qstrId);
    clsItem.m_iSortNo = _iSortNo;
    return clsItem;
}

// Ids with the numbers they carry: "c4:1 c1:2".
QString IdsAndSort(const QVector<CLS_CustomTreeNode>& _qvecNodes)
{
    QStringList qlstIds;
    for (const CLS_CustomTreeNode& node : _qvecNodes)
        qlstIds << QString("%1:%2").arg(node.m_qstrTreeId).arg(node.m_iSortNo);
    return qlstIds.join(" ");
}

} // namespace

class tst_DeviceTreeQueries : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    // by id
    void shouldFindNodeById();
    void shouldLeaveNodeAloneForUnknownTreeId_data();
    void shouldLeaveNodeAloneForUnknownTreeId();
    void shouldFindNodeByIdWithoutPanel();
    void shouldFindNodeByDeviceId_data();
    void shouldFindNodeByDeviceId();
    void shouldFailDeviceLookupOnBrokenIdMap_data();
    void shouldFailDeviceLookupOnBrokenIdMap();
    void shouldFindStaleNodeOnlyById();

    // by channel id under a parent
    void shouldFindChannelAmongChildren();
    void shouldReturnZeroWithoutTouchingNodeForChannelElsewhere();
    void shouldFailChannelLookupForUnknownParent_data();
    void shouldFailChannelLookupForUnknownParent();
    void shouldNotMatchEmptyChannelIdToChildWithoutDevice();
    void shouldTakeFirstChildOfChannelId();

    // children
    void shouldListDirectChildrenInRowOrder();
    void shouldListAllLevelsDepthFirst();
    void shouldAppendChildrenToFilledVector();
    void shouldListOnlyChildrenWithNodes();
    void shouldFailChildrenOfUnknownRow_data();
    void shouldFailChildrenOfUnknownRow();
    void shouldListDirectChildrenByDeviceId();
    void shouldListChildrenWithDeviceIdAsChannels();
    void shouldFailChannelsOfUnknownRow_data();
    void shouldFailChannelsOfUnknownRow();

    // parents
    void shouldFindParentOfRow();
    void shouldFailParentOfTopRowOrUnknownId_data();
    void shouldFailParentOfTopRowOrUnknownId();
    void shouldFailParentWithoutNode();
    void shouldFailParentOfRootChildWithoutRootRow();
    void shouldFindParentByDeviceId();
    void shouldFailParentByDeviceIdWithoutPanel();
    void shouldCollectDistinctParents();
    void shouldFailParentsOfEmptyList();

    // current row
    void shouldFailCurrentWithoutCurrentRow();
    void shouldFindCurrentNode();
    void shouldFailCurrentWhenDisabledOrWithoutNode();

    // check states
    void shouldReadCheckStateOfRows();
    void shouldFailCheckStateOfUnknownRows_data();
    void shouldFailCheckStateOfUnknownRows();
    void shouldReadUncheckedWithoutCheckBoxes();
    void shouldListCheckedChannelsByNumber();
    void shouldSortFilledVectorWithCheckedChannels();
    void shouldOrderCheckedChannelsByRowsAfterMove();
    void shouldFailCheckedListsWithoutCheckBoxes();
    void shouldListAllFullyCheckedRowsWithNodes();
    void shouldListCheckedGroupsWithoutCustomRoot();
    void shouldListFavoritesRootAsCheckedGroup();
    void shouldCompareSortNumbers();
};

void tst_DeviceTreeQueries::cleanup()
{
    const QStringList qlstLeaked = LeakedWindows();
    QVERIFY2(qlstLeaked.isEmpty(), qPrintable("top-level widgets left: " + qlstLeaked.join(", ")));
}

// ---- by id --------------------------------------------------------------------------------------

void tst_DeviceTreeQueries::shouldFindNodeById()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetItemById("c1", node), 0);
    QCOMPARE(NodeText(node), NodeText(tree.m_qmapNodes.value("c1")));
    QCOMPARE(tree.GetItemById(CONST_CUSTOM_ROOT, node), 0);
    QCOMPARE(node.m_qstrName, QString("Root"));
}

void tst_DeviceTreeQueries::shouldLeaveNodeAloneForUnknownTreeId_data()
{
    QTest::addColumn<QString>("id");
    QTest::newRow("empty") << QString();
    QTest::newRow("unknown") << QString("nope");
    QTest::newRow("device id") << QString("D1");
}

void tst_DeviceTreeQueries::shouldLeaveNodeAloneForUnknownTreeId()
{
    QFETCH(QString, id);
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    // Even a node stored under the empty key is not found by an empty id.
    tree.m_qmapNodes.insert(QString(), MakeNode(QString(), CONST_CUSTOM_ROOT, 4, "DE"));

    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetItemById(id, node), -1);
    QCOMPARE(NodeText(node), NodeText(Marker()));
}

void tst_DeviceTreeQueries::shouldFindNodeByIdWithoutPanel()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    CLS_PanelAway away(tree);
    CLS_CustomTreeNode node;
    QCOMPARE(tree.GetItemById("c3", node), 0);
    QCOMPARE(node.m_qstrDevId, QString("D3"));
}

void tst_DeviceTreeQueries::shouldFindNodeByDeviceId_data()
{
    QTest::addColumn<bool>("channelName");
    QTest::newRow("GetItemByDevId") << false;
    QTest::newRow("GetItemByChannelId") << true;
}

void tst_DeviceTreeQueries::shouldFindNodeByDeviceId()
{
    QFETCH(bool, channelName);
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    auto fnLookup = [&](const QString& _qstrDevId, CLS_CustomTreeNode& _node) {
        return channelName ? tree.GetItemByChannelId(_qstrDevId, _node)
                           : tree.GetItemByDevId(_qstrDevId, _node);
    };

    CLS_CustomTreeNode node = Marker();
    QCOMPARE(fnLookup("D4", node), 0);
    QCOMPARE(NodeText(node), NodeText(tree.m_qmapNodes.value("c4")));
    QCOMPARE(fnLookup(CONST_CUSTOM_ROOT, node), 0);
    QCOMPARE(node.m_qstrTreeId, CONST_CUSTOM_ROOT);

    CLS_CustomTreeNode untouched = Marker();
    QCOMPARE(fnLookup(QString(), untouched), -1);
    QCOMPARE(fnLookup("nope", untouched), -1);
    QCOMPARE(fnLookup("c4", untouched), -1); // a tree id is no device id
    QCOMPARE(NodeText(untouched), NodeText(Marker()));
}

void tst_DeviceTreeQueries::shouldFailDeviceLookupOnBrokenIdMap_data()
{
    QTest::addColumn<QString>("treeId");
    QTest::newRow("tree id without node") << QString("gone");
    QTest::newRow("empty tree id") << QString();
}

void tst_DeviceTreeQueries::shouldFailDeviceLookupOnBrokenIdMap()
{
    QFETCH(QString, treeId);
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    tree.m_qmapDevIdToTreeId.insert("DZ", treeId);
    tree.m_qmapNodes.insert(QString(), MakeNode(QString(), CONST_CUSTOM_ROOT, 4, "DZ"));

    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetItemByDevId("DZ", node), -1);
    QCOMPARE(tree.GetItemByChannelId("DZ", node), -1);
    QCOMPARE(NodeText(node), NodeText(Marker()));
}

void tst_DeviceTreeQueries::shouldFindStaleNodeOnlyById()
{
    // x hangs under a parent that never gets a row: its node exists, its row does not.
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QMap<QString, CLS_CustomTreeNode> qmapNodes = CustomNodes();
    Add(qmapNodes, MakeNode("x", "nowhere", 4, "DX"));
    QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
    QVERIFY(NodeOf(tree, "x") == nullptr);

    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetItemById("x", node), 0);
    QCOMPARE(node.m_qstrTreeId, QString("x"));
    node = Marker();
    QCOMPARE(tree.GetItemByDevId("DX", node), 0);
    QCOMPARE(node.m_qstrTreeId, QString("x"));

    node = Marker();
    QCOMPARE(tree.GetParent("x", node), -1);
    QCOMPARE(tree.GetParentByDevId("DX", node), -1);
    QVector<CLS_CustomTreeNode> qvecNodes;
    QCOMPARE(tree.GetChilds("x", qvecNodes, true), -1);
    Qt::CheckState iState = Qt::Checked;
    QCOMPARE(tree.GetItemCheckStatus("x", iState), -1);
    QCOMPARE(NodeText(node), NodeText(Marker()));
    QVERIFY(qvecNodes.isEmpty());
}

// ---- by channel id under a parent ---------------------------------------------------------------

void tst_DeviceTreeQueries::shouldFindChannelAmongChildren()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE, false, true);
    QVERIFY(BuildResource(tree));
    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetItemByChannelId("h1", "C2", node), 0);
    QCOMPARE(NodeText(node), NodeText(tree.m_qmapNodes.value("c2")));
    QCOMPARE(tree.GetItemByChannelId("h1", "A1", node), 0);
    QCOMPARE(node.m_qstrTreeId, QString("a1"));
}

void tst_DeviceTreeQueries::shouldReturnZeroWithoutTouchingNodeForChannelElsewhere()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE, false, true);
    QVERIFY(BuildResource(tree));
    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetItemByChannelId("h1", "C3", node), 0); // C3 is a channel of h2
    QCOMPARE(tree.GetItemByChannelId("h1", "nope", node), 0);
    QCOMPARE(tree.GetItemByChannelId(CONST_RESOURCE_ROOT, "C1", node), 0); // not a direct child
    QCOMPARE(NodeText(node), NodeText(Marker()));
}

void tst_DeviceTreeQueries::shouldFailChannelLookupForUnknownParent_data()
{
    QTest::addColumn<QString>("parent");
    QTest::newRow("empty parent") << QString();
    QTest::newRow("unknown parent") << QString("nope");
    QTest::newRow("device id as parent") << QString("H1");
}

void tst_DeviceTreeQueries::shouldFailChannelLookupForUnknownParent()
{
    QFETCH(QString, parent);
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE, false, true);
    QVERIFY(BuildResource(tree));
    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetItemByChannelId(parent, "C1", node), -1);
    QCOMPARE(NodeText(node), NodeText(Marker()));
}

void tst_DeviceTreeQueries::shouldNotMatchEmptyChannelIdToChildWithoutDevice()
{
    // g2's only child g3 has no device id, and is not a channel here.
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetItemByChannelId("g2", QString(), node), 0);
    QCOMPARE(NodeText(node), NodeText(Marker()));
}

void tst_DeviceTreeQueries::shouldTakeFirstChildOfChannelId()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode("g1", CONST_CUSTOM_ROOT, 2, "G1"));
    Add(qmapNodes, MakeNode("a", "g1", 4, "SAME", 3));
    Add(qmapNodes, MakeNode("b", "g1", 4, "SAME", 1));
    Add(qmapNodes, MakeNode("c", "g1", 4, "SAME", 2));
    QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
    QCOMPARE(Rows(tree), QString("custom_root_id(g1(b,c,a))"));

    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetItemByChannelId("g1", "SAME", node), 0);
    QCOMPARE(node.m_qstrTreeId, QString("b"));
}

// ---- children -----------------------------------------------------------------------------------

void tst_DeviceTreeQueries::shouldListDirectChildrenInRowOrder()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    QVector<CLS_CustomTreeNode> qvecNodes;
    QCOMPARE(tree.GetChilds(CONST_CUSTOM_ROOT, qvecNodes, false), 0);
    QCOMPARE(TreeIds(qvecNodes), (QStringList{"g1", "g2", "c3"}));
    QCOMPARE(NodeText(qvecNodes.at(2)), NodeText(tree.m_qmapNodes.value("c3")));

    QVector<CLS_CustomTreeNode> qvecLeaf;
    QCOMPARE(tree.GetChilds("c3", qvecLeaf, false), 0);
    QVERIFY(qvecLeaf.isEmpty());
}

void tst_DeviceTreeQueries::shouldListAllLevelsDepthFirst()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    QVector<CLS_CustomTreeNode> qvecNodes;
    QCOMPARE(tree.GetChilds(CONST_CUSTOM_ROOT, qvecNodes, true), 0);
    QCOMPARE(TreeIds(qvecNodes), (QStringList{"g1", "c2", "c1", "g2", "g3", "c4", "c3"}));
}

void tst_DeviceTreeQueries::shouldAppendChildrenToFilledVector()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    QVector<CLS_CustomTreeNode> qvecNodes{Marker()};
    QCOMPARE(tree.GetChilds("g1", qvecNodes, false), 0);
    QCOMPARE(TreeIds(qvecNodes), (QStringList{"marker", "c2", "c1"}));
}

void tst_DeviceTreeQueries::shouldListOnlyChildrenWithNodes()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    // One node goes from the model, and one row comes without a node.
    tree.m_qmapNodes.remove("c1");
    QCOMPARE(PanelOf(tree)->AddItem(StrayRow("stray", "g1", 5)), 0);
    QCOMPARE(Rows(tree), QString("custom_root_id(g1(c2,c1,stray),g2(g3(c4)),c3)"));

    QVector<CLS_CustomTreeNode> qvecNodes;
    QCOMPARE(tree.GetChilds("g1", qvecNodes, false), 0);
    QCOMPARE(TreeIds(qvecNodes), QStringList{"c2"});

    QVector<CLS_CustomTreeNode> qvecChannels;
    QCOMPARE(tree.GetChannelsById("g1", qvecChannels), 0);
    QCOMPARE(TreeIds(qvecChannels), QStringList{"c2"});
}

void tst_DeviceTreeQueries::shouldFailChildrenOfUnknownRow_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<bool>("panel");
    QTest::newRow("empty id") << QString() << true;
    QTest::newRow("unknown id") << QString("nope") << true;
    QTest::newRow("no panel") << QString("g1") << false;
}

void tst_DeviceTreeQueries::shouldFailChildrenOfUnknownRow()
{
    QFETCH(QString, id);
    QFETCH(bool, panel);
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    std::unique_ptr<CLS_PanelAway> pAway(panel ? nullptr : new CLS_PanelAway(tree));

    QVector<CLS_CustomTreeNode> qvecNodes{Marker()};
    QCOMPARE(tree.GetChilds(id, qvecNodes, false), -1);
    QCOMPARE(tree.GetChilds(id, qvecNodes, true), -1);
    QCOMPARE(TreeIds(qvecNodes), QStringList{"marker"});
}

void tst_DeviceTreeQueries::shouldListDirectChildrenByDeviceId()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    QVector<CLS_CustomTreeNode> qvecNodes{Marker()};
    QCOMPARE(tree.GetChildsByDevId("G2", qvecNodes), 0);
    QCOMPARE(TreeIds(qvecNodes), (QStringList{"marker", "g3"}));

    QCOMPARE(tree.GetChildsByDevId(QString(), qvecNodes), -1);
    QCOMPARE(tree.GetChildsByDevId("nope", qvecNodes), -1);
    QCOMPARE(tree.GetChildsByDevId("g2", qvecNodes), -1); // a tree id is no device id
    QCOMPARE(TreeIds(qvecNodes), (QStringList{"marker", "g3"}));
}

void tst_DeviceTreeQueries::shouldListChildrenWithDeviceIdAsChannels()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE, false, true);
    QVERIFY(BuildResource(tree));
    QVector<CLS_CustomTreeNode> qvecNodes{Marker()};
    QCOMPARE(tree.GetChannelsById("h1", qvecNodes), 0);
    // The alarm input has a device id too; the test is for a device id, not for a channel type.
    QCOMPARE(TreeIds(qvecNodes), (QStringList{"marker", "c1", "c2", "a1"}));

    // Direct children only, and none without a device id.
    CLS_TestDeviceTree custom(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(custom));
    QVector<CLS_CustomTreeNode> qvecCustom;
    QCOMPARE(custom.GetChannelsById(CONST_CUSTOM_ROOT, qvecCustom), 0);
    QCOMPARE(TreeIds(qvecCustom), (QStringList{"g2", "c3"}));
}

void tst_DeviceTreeQueries::shouldFailChannelsOfUnknownRow_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<bool>("panel");
    QTest::newRow("empty id") << QString() << true;
    QTest::newRow("unknown id") << QString("nope") << true;
    QTest::newRow("no panel") << QString("h1") << false;
}

void tst_DeviceTreeQueries::shouldFailChannelsOfUnknownRow()
{
    QFETCH(QString, id);
    QFETCH(bool, panel);
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE, false, true);
    QVERIFY(BuildResource(tree));
    std::unique_ptr<CLS_PanelAway> pAway(panel ? nullptr : new CLS_PanelAway(tree));

    QVector<CLS_CustomTreeNode> qvecNodes{Marker()};
    QCOMPARE(tree.GetChannelsById(id, qvecNodes), -1);
    QCOMPARE(TreeIds(qvecNodes), QStringList{"marker"});
    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetItemByChannelId(id, "C1", node), -1);
    QCOMPARE(NodeText(node), NodeText(Marker()));
}

// ---- parents ------------------------------------------------------------------------------------

void tst_DeviceTreeQueries::shouldFindParentOfRow()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetParent("c4", node), 0);
    QCOMPARE(NodeText(node), NodeText(tree.m_qmapNodes.value("g3")));
    QCOMPARE(tree.GetParent("g1", node), 0);
    QCOMPARE(node.m_qstrTreeId, CONST_CUSTOM_ROOT);
}

void tst_DeviceTreeQueries::shouldFailParentOfTopRowOrUnknownId_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<bool>("panel");
    QTest::newRow("root row") << CONST_CUSTOM_ROOT << true;
    QTest::newRow("empty id") << QString() << true;
    QTest::newRow("unknown id") << QString("nope") << true;
    QTest::newRow("no panel") << QString("c1") << false;
}

void tst_DeviceTreeQueries::shouldFailParentOfTopRowOrUnknownId()
{
    QFETCH(QString, id);
    QFETCH(bool, panel);
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    std::unique_ptr<CLS_PanelAway> pAway(panel ? nullptr : new CLS_PanelAway(tree));

    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetParent(id, node), -1);
    QCOMPARE(NodeText(node), NodeText(Marker()));
}

void tst_DeviceTreeQueries::shouldFailParentWithoutNode()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    tree.m_qmapNodes.remove("g1");
    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetParent("c1", node), -1);
    QCOMPARE(tree.GetParentByDevId("D1", node), -1);
    QCOMPARE(NodeText(node), NodeText(Marker()));
}

void tst_DeviceTreeQueries::shouldFailParentOfRootChildWithoutRootRow()
{
    // The same rows, handed to the panel without a root row.
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QMap<QString, CLS_CustomTreeNode> qmapNodes = CustomNodes();
    Add(qmapNodes, MakeNode(CONST_CUSTOM_ROOT, QString(), 2, CONST_CUSTOM_ROOT));
    QMap<QString, CLS_TreeItem> qmapRows;
    QCOMPARE(tree.BuildTreeItems(qmapNodes, "Root", qmapRows), 0);
    QCOMPARE(PanelOf(tree)->Init(CONST_CUSTOM_ROOT, qmapRows, false), 0);
    QCOMPARE(Rows(tree), QString("g1(c2,c1),g2(g3(c4)),c3"));
    QCOMPARE(tree.m_qmapNodes.value("g1").m_qstrTreeParentId, CONST_CUSTOM_ROOT);

    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetParent("g1", node), -1);
    QCOMPARE(NodeText(node), NodeText(Marker()));
    QCOMPARE(tree.GetParent("c1", node), 0);
    QCOMPARE(node.m_qstrTreeId, QString("g1"));
}

void tst_DeviceTreeQueries::shouldFindParentByDeviceId()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE, false, true);
    QVERIFY(BuildResource(tree));
    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetParentByDevId("C3", node), 0);
    QCOMPARE(NodeText(node), NodeText(tree.m_qmapNodes.value("h2")));

    CLS_CustomTreeNode untouched = Marker();
    QCOMPARE(tree.GetParentByDevId(QString(), untouched), -1);
    QCOMPARE(tree.GetParentByDevId("nope", untouched), -1);
    QCOMPARE(tree.GetParentByDevId("c3", untouched), -1);
    QCOMPARE(tree.GetParentByDevId(CONST_RESOURCE_ROOT, untouched), -1); // the root row is on top
    QCOMPARE(NodeText(untouched), NodeText(Marker()));
}

void tst_DeviceTreeQueries::shouldFailParentByDeviceIdWithoutPanel()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE, false, true);
    QVERIFY(BuildResource(tree));
    CLS_PanelAway away(tree);
    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetParentByDevId("C3", node), -1);
    QCOMPARE(NodeText(node), NodeText(Marker()));
}

void tst_DeviceTreeQueries::shouldCollectDistinctParents()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE, false, true);
    QVERIFY(BuildResource(tree));

    QVector<QString> qvecParents;
    QCOMPARE(tree.GetAllNodeParent({"c1", "c2"}, qvecParents), 0);
    QCOMPARE(qvecParents, QVector<QString>{"h1"});

    // Order of first sight; unknown ids and the root are skipped; what the vector held counts.
    QVector<QString> qvecFilled{"h2"};
    QCOMPARE(tree.GetAllNodeParent({"nope", "c3", "c1", CONST_RESOURCE_ROOT, "a1", "h2", ""}, qvecFilled), 0);
    QCOMPARE(qvecFilled, (QVector<QString>{"h2", "h1", CONST_RESOURCE_ROOT}));

    QVector<QString> qvecNone;
    QCOMPARE(tree.GetAllNodeParent({"nope"}, qvecNone), 0);
    QVERIFY(qvecNone.isEmpty());
}

void tst_DeviceTreeQueries::shouldFailParentsOfEmptyList()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE, false, true);
    QVERIFY(BuildResource(tree));
    QVector<QString> qvecParents{"kept"};
    QCOMPARE(tree.GetAllNodeParent({}, qvecParents), -1);
    QCOMPARE(qvecParents, QVector<QString>{"kept"});
}

// ---- current row --------------------------------------------------------------------------------

void tst_DeviceTreeQueries::shouldFailCurrentWithoutCurrentRow()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    BaseOf(tree)->setCurrentItem(nullptr);
    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetCurrentItem(node), -1);
    QCOMPARE(NodeText(node), NodeText(Marker()));
}

void tst_DeviceTreeQueries::shouldFindCurrentNode()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    tree.SetCurrentItem("c4");
    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetCurrentItem(node), 0);
    QCOMPARE(NodeText(node), NodeText(tree.m_qmapNodes.value("c4")));

    CLS_PanelAway away(tree);
    CLS_CustomTreeNode untouched = Marker();
    QCOMPARE(tree.GetCurrentItem(untouched), -1);
    QCOMPARE(NodeText(untouched), NodeText(Marker()));
}

void tst_DeviceTreeQueries::shouldFailCurrentWhenDisabledOrWithoutNode()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    tree.SetCurrentItem("c4");
    tree.SetItemDisabled("c4", true);
    CLS_CustomTreeNode node = Marker();
    QCOMPARE(tree.GetCurrentItem(node), -1);
    QCOMPARE(NodeText(node), NodeText(Marker()));

    tree.SetItemDisabled("c4", false);
    QCOMPARE(tree.GetCurrentItem(node), 0);
    node = Marker();
    tree.m_qmapNodes.remove("c4");
    QCOMPARE(tree.GetCurrentItem(node), -1);
    QCOMPARE(NodeText(node), NodeText(Marker()));
}

// ---- check states -------------------------------------------------------------------------------

void tst_DeviceTreeQueries::shouldReadCheckStateOfRows()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    tree.SetItemCheckStatus("c1", Qt::Checked);

    Qt::CheckState iState = Qt::Unchecked;
    QCOMPARE(tree.GetItemCheckStatus("c1", iState), 0);
    QCOMPARE(iState, Qt::Checked);
    QCOMPARE(tree.GetItemCheckStatus("g1", iState), 0);
    QCOMPARE(iState, Qt::PartiallyChecked);
    QCOMPARE(tree.GetItemCheckStatus("c2", iState), 0);
    QCOMPARE(iState, Qt::Unchecked);
    QCOMPARE(tree.GetItemCheckStatus(CONST_CUSTOM_ROOT, iState), 0);
    QCOMPARE(iState, Qt::PartiallyChecked);
}

void tst_DeviceTreeQueries::shouldFailCheckStateOfUnknownRows_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<bool>("panel");
    QTest::newRow("empty id") << QString() << true;
    QTest::newRow("unknown id") << QString("nope") << true;
    QTest::newRow("row without node") << QString("stray") << true;
    QTest::newRow("no panel") << QString("c1") << false;
}

void tst_DeviceTreeQueries::shouldFailCheckStateOfUnknownRows()
{
    QFETCH(QString, id);
    QFETCH(bool, panel);
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    QCOMPARE(PanelOf(tree)->AddItem(StrayRow("stray", "g1", 5)), 0);
    std::unique_ptr<CLS_PanelAway> pAway(panel ? nullptr : new CLS_PanelAway(tree));

    Qt::CheckState iState = Qt::PartiallyChecked;
    QCOMPARE(tree.GetItemCheckStatus(id, iState), -1);
}

void tst_DeviceTreeQueries::shouldReadUncheckedWithoutCheckBoxes()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false);
    QVERIFY(BuildCustom(tree));
    Qt::CheckState iState = Qt::Checked;
    QCOMPARE(tree.GetItemCheckStatus("c1", iState), 0);
    QCOMPARE(iState, Qt::Unchecked);
}

void tst_DeviceTreeQueries::shouldListCheckedChannelsByNumber()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    tree.SetItemCheckStatus("c3", Qt::Checked);
    tree.SetItemCheckStatus("c1", Qt::Checked);
    tree.SetItemCheckStatus("g2", Qt::Checked); // checks g3 and c4 with it

    QVector<CLS_CustomTreeNode> qvecNodes;
    QCOMPARE(tree.GetCheckedChannel(qvecNodes), 0);
    // Leaves only, by number: c4 (1), c1 (2), c3 (3).
    QCOMPARE(IdsAndSort(qvecNodes), QString("c4:1 c1:2 c3:3"));
    QCOMPARE(NodeText(qvecNodes.at(1)), NodeText(tree.m_qmapNodes.value("c1")));
}

void tst_DeviceTreeQueries::shouldSortFilledVectorWithCheckedChannels()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    tree.SetItemCheckStatus("c3", Qt::Checked);
    tree.SetItemCheckStatus("c4", Qt::Checked);
    QCOMPARE(PanelOf(tree)->AddItem(StrayRow("stray", "g1", 0)), 0);
    tree.SetItemCheckStatus("stray", Qt::Checked);

    QVector<CLS_CustomTreeNode> qvecNodes{Marker(2)};
    QCOMPARE(tree.GetCheckedChannel(qvecNodes), 0);
    QCOMPARE(IdsAndSort(qvecNodes), QString("c4:1 marker:2 c3:3"));
}

void tst_DeviceTreeQueries::shouldOrderCheckedChannelsByRowsAfterMove()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    tree.SetItemCheckStatus("g1", Qt::Checked);
    QVector<CLS_CustomTreeNode> qvecBefore;
    QCOMPARE(tree.GetCheckedChannel(qvecBefore), 0);
    QCOMPARE(IdsAndSort(qvecBefore), QString("c2:1 c1:2"));

    QCOMPARE(PanelOf(tree)->MoveUpOneRow("c1", "c2"), 0);
    QCOMPARE(Rows(tree), QString("custom_root_id(g1(c1,c2),g2(g3(c4)),c3)"));
    QVector<CLS_CustomTreeNode> qvecAfter;
    QCOMPARE(tree.GetCheckedChannel(qvecAfter), 0);
    QCOMPARE(IdsAndSort(qvecAfter), QString("c1:1 c2:2"));
    // The model keeps the old numbers.
    QCOMPARE(tree.m_qmapNodes.value("c1").m_iSortNo, 2);
    QCOMPARE(tree.m_qmapNodes.value("c2").m_iSortNo, 1);
}

void tst_DeviceTreeQueries::shouldFailCheckedListsWithoutCheckBoxes()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, false);
    QVERIFY(BuildCustom(tree));
    tree.SetItemCheckStatus(QString(), Qt::Checked);

    QVector<CLS_CustomTreeNode> qvecNodes{Marker()};
    QCOMPARE(tree.GetAllCheckedItems(qvecNodes), -1);
    QCOMPARE(tree.GetCheckedChannel(qvecNodes), -1);
    QCOMPARE(tree.GetCheckedGroup(qvecNodes), -1);
    QCOMPARE(TreeIds(qvecNodes), QStringList{"marker"});

    CLS_TestDeviceTree checkable(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(checkable));
    CLS_PanelAway away(checkable);
    QCOMPARE(checkable.GetAllCheckedItems(qvecNodes), -1);
    QCOMPARE(checkable.GetCheckedChannel(qvecNodes), -1);
    QCOMPARE(checkable.GetCheckedGroup(qvecNodes), -1);
    QCOMPARE(TreeIds(qvecNodes), QStringList{"marker"});
}

void tst_DeviceTreeQueries::shouldListAllFullyCheckedRowsWithNodes()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    QCOMPARE(PanelOf(tree)->AddItem(StrayRow("stray", "g1", 5)), 0);
    tree.SetItemCheckStatus("g1", Qt::Checked);
    tree.SetItemCheckStatus("c4", Qt::Checked);

    QVector<CLS_CustomTreeNode> qvecNodes{Marker()};
    QCOMPARE(tree.GetAllCheckedItems(qvecNodes), 0);
    // In id order, every level, the stray row and the partly checked root left out.
    QCOMPARE(TreeIds(qvecNodes), (QStringList{"marker", "c1", "c2", "c4", "g1", "g2", "g3"}));
}

void tst_DeviceTreeQueries::shouldListCheckedGroupsWithoutCustomRoot()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QVERIFY(BuildCustom(tree));
    tree.SetItemCheckStatus(CONST_CUSTOM_ROOT, Qt::Checked);
    QCOMPARE(CheckOf(tree, CONST_CUSTOM_ROOT), Qt::Checked);

    QVector<CLS_CustomTreeNode> qvecNodes{Marker()};
    QCOMPARE(tree.GetCheckedGroup(qvecNodes), 0);
    QCOMPARE(TreeIds(qvecNodes), (QStringList{"marker", "g1", "g2", "g3"}));

    // A partly checked group is not listed.
    tree.SetItemCheckStatus("c1", Qt::Unchecked);
    QVector<CLS_CustomTreeNode> qvecPartly;
    QCOMPARE(tree.GetCheckedGroup(qvecPartly), 0);
    QCOMPARE(TreeIds(qvecPartly), (QStringList{"g2", "g3"}));
}

void tst_DeviceTreeQueries::shouldListFavoritesRootAsCheckedGroup()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_FAVORITE, false, true);
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode("g1", "favorite_root_id", 2, "G1"));
    Add(qmapNodes, MakeNode("c1", "g1", 4, "D1"));
    QCOMPARE(tree.Init(qmapNodes, "Favourites"), 0);
    tree.SetItemCheckStatus(QString(), Qt::Checked);

    QVector<CLS_CustomTreeNode> qvecNodes;
    QCOMPARE(tree.GetCheckedGroup(qvecNodes), 0);
    QCOMPARE(TreeIds(qvecNodes), (QStringList{"favorite_root_id", "g1"}));
}

void tst_DeviceTreeQueries::shouldCompareSortNumbers()
{
    const CLS_CustomTreeNode one = MakeNode("a", QString(), 4, "A", 1);
    const CLS_CustomTreeNode two = MakeNode("b", QString(), 4, "B", 2);
    const CLS_CustomTreeNode otherTwo = MakeNode("c", QString(), 4, "C", 2);
    QVERIFY(CLS_WgtDeviceTree::SortChannel(one, two));
    QVERIFY(!CLS_WgtDeviceTree::SortChannel(two, one));
    QVERIFY(!CLS_WgtDeviceTree::SortChannel(two, otherTwo));
}

QTEST_MAIN(tst_DeviceTreeQueries)
#include "tst_DeviceTreeQueries.moc"
