// Changes of a built CLS_WgtDeviceTree, one resource or node at a time: adds, modifications,
// deletes and moves in each of their forms, the batch signals, and the model, the id map and the
// rows kept in step. Resources come from the reference device layer.

#include "CLS_DevResKit.h"
#include "I_CustomTreeManage.h"

#include <QMetaMethod>
#include <QSignalSpy>
#include <QtTest>

using namespace CLS_DevTreeTestUtil;

Q_DECLARE_METATYPE(QVector<std::string>)

namespace {

const QString CONST_RESOURCE_ROOT = "resource_root_id";
const QString CONST_CUSTOM_ROOT = "custom_root_id";

// A resource tree of LoadInstallation without ch2 and din1, which the device layer still holds.
bool BuildResource(CLS_TestDeviceTree& _tree)
{
    LoadInstallation();
    if (_tree.Init("All") != 0 || _tree.DeleteItem("ch2") != 0 || _tree.DeleteItem("din1") != 0)
        return false;
    return Rows(_tree) == "resource_root_id(dec1(dout1),host1(ch1,ai1),host2(ch3))";
}

// A custom tree of ready nodes: root: g1 (c1 D1 sort 1, c2 D2 sort 2, c3 D3 sort 3), g2.
bool BuildCustom(CLS_TestDeviceTree& _tree)
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode("g1", CONST_CUSTOM_ROOT, 2, "G1", 1));
    Add(qmapNodes, MakeNode("c1", "g1", 4, "D1", 1));
    Add(qmapNodes, MakeNode("c2", "g1", 4, "D2", 2));
    Add(qmapNodes, MakeNode("c3", "g1", 4, "D3", 3));
    Add(qmapNodes, MakeNode("g2", CONST_CUSTOM_ROOT, 2, "G2", 2));
    return _tree.Init(qmapNodes, "Custom") == 0 && Rows(_tree) == "custom_root_id(g1(c1,c2,c3),g2)";
}

QStringList Ids(const QList<QVariant>& _qlstArgs)
{
    QStringList qlst;
    for (const std::string& str : _qlstArgs.at(0).value<QVector<std::string>>())
        qlst << QString::fromStdString(str);
    return qlst;
}

std::shared_ptr<STRCT_VideoItem> Resource(CLS_WgtDeviceTree& _tree, const QString& _qstrTreeId)
{
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapData;
    _tree.GetVideoData(qmapData);
    return qmapData.value(_qstrTreeId).lock();
}

// Opens the protected forms of the changes as well.
class CLS_ChangeTree : public CLS_TestDeviceTree
{
public:
    using CLS_TestDeviceTree::AddItem;
    using CLS_TestDeviceTree::CLS_TestDeviceTree;
    using CLS_TestDeviceTree::ModifyItem;
};

// Tree whose virtual DeleteItem records its calls: DeleteItems must go through the table.
class CLS_RecordingTree : public CLS_ChangeTree
{
public:
    using CLS_ChangeTree::CLS_ChangeTree;
    int DeleteItem(QString _qstrId) override
    {
        m_qlstDeleted << _qstrId;
        return CLS_ChangeTree::DeleteItem(_qstrId);
    }
    QStringList m_qlstDeleted;
};

} // namespace

class tst_DeviceTreeChanges : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void shouldDeclareVirtualOperationsInOrder();

    void shouldAddResourceByIdOnceOnResourceTree();
    void shouldAddTwiceOnFavouritesWithOneRowAndNoNode();
    void shouldRefuseAddOfTypeOutsideNodeTypes();
    void shouldRefuseAddOfUnknownOrEmptyId();
    void shouldSortAddedRowsByChannelNumber();
    void shouldAddReadyNodeOnce();
    void shouldAddBatchByIdsDroppingUnknownOnes();
    void shouldSignalBatchAddUnderSendRule_data();
    void shouldSignalBatchAddUnderSendRule();
    void shouldAddNodesFromVariantCountingOnlyRowsMade();
    void shouldKeepNodeOfRefusedRowAfterAdd();

    void shouldModifyResourceKeepingPlaceAndIdMap();
    void shouldClearIconOfStatusTwoOnModify();
    void shouldModifyOnlyFirstKnownNode();
    void shouldSignalBatchModifyWithModifiedIds();
    void shouldKeepEmptyBodiesDoingNothing();
    void shouldChangeCaptionByResourceId();
    void shouldClearIconOfStatusTwoOnCaptionChange();
    void shouldRefuseCaptionChangeByTreeId();

    void shouldDeleteOneNodeAndRowsBelow();
    void shouldDeleteBatchThroughVirtualTableAndSignalEmpty();
    void shouldNotSignalBatchDeleteOnResourceTreeUnlessAsked();
    void shouldNameOnlySurvivorsInDeleteSignal();

    void shouldExchangeSortNumbersOnMove();
    void shouldRefuseMoveOutsideRules_data();
    void shouldRefuseMoveOutsideRules();
    void shouldKeepExchangedNumbersWhenPanelRefusesMove();
    void shouldMoveRowsOnlyByOneRowMoves();
    void shouldAnswerCustomTreeManagersMoveSignalsWithItsOwnMoves();
    void shouldFailEveryChangeWithoutPanel();
};

void tst_DeviceTreeChanges::initTestCase()
{
    qRegisterMetaType<QVector<std::string>>();
    BindGateways();
    QVERIFY(MakeIconFiles());
}

void tst_DeviceTreeChanges::init()
{
    DevManageCtl_Reset();
    LxAppManagerCtl_Reset();
    TakeLogLines();
}

void tst_DeviceTreeChanges::cleanup()
{
    QVERIFY2(LeakedWindows().isEmpty(), qPrintable(LeakedWindows().join(", ")));
}

void tst_DeviceTreeChanges::shouldDeclareVirtualOperationsInOrder()
{
    // Each is reached through the table: a subclass override is what a base-class pointer calls.
    struct CLS_Sub : public CLS_WgtDeviceTree
    {
        QStringList m_qlstCalls;
        int Init(const QString&, const QMap<int, QVector<CLS_ItemButton>>&, const QSet<int>&,
                 const QSet<int>&) override
        {
            m_qlstCalls << "Init";
            return 7;
        }
        int AddItem(QString) override
        {
            m_qlstCalls << "AddItem";
            return 7;
        }
        int AddItems(QVector<QString>, bool) override
        {
            m_qlstCalls << "AddItems";
            return 7;
        }
        int ModifyItem(QString) override
        {
            m_qlstCalls << "ModifyItem";
            return 7;
        }
        int ModifyItems(QList<CLS_CustomTreeNode>) override
        {
            m_qlstCalls << "ModifyItems(list)";
            return 7;
        }
        int ModifyItems(QVector<QString>, bool) override
        {
            m_qlstCalls << "ModifyItems(ids)";
            return 7;
        }
        int DeleteItem(QString) override
        {
            m_qlstCalls << "DeleteItem";
            return 7;
        }
        int DeleteItems(QVector<QString>, bool) override
        {
            m_qlstCalls << "DeleteItems";
            return 7;
        }
        int MoveNodes(QVector<QString>, int) override
        {
            m_qlstCalls << "MoveNodes";
            return 7;
        }
    } sub;
    CLS_WgtDeviceTree* pTree = &sub;
    QCOMPARE(pTree->Init("x"), 7);
    QCOMPARE(pTree->AddItem(QString("x")), 7);
    QCOMPARE(pTree->AddItems(QVector<QString>()), 7);
    QCOMPARE(pTree->ModifyItem(QString("x")), 7);
    QCOMPARE(pTree->ModifyItems(QList<CLS_CustomTreeNode>()), 7);
    QCOMPARE(pTree->ModifyItems(QVector<QString>()), 7);
    QCOMPARE(pTree->DeleteItem(QString("x")), 7);
    QCOMPARE(pTree->DeleteItems(QVector<QString>()), 7);
    QCOMPARE(pTree->MoveNodes(QVector<QString>()), 7);
    QCOMPARE(sub.m_qlstCalls.size(), 9);

    // The slots of the change operations, with the cloned forms of their defaults, looked up as Qt
    // normalizes a signature (Qt 6 spells QVector<QString> "QStringList").
    const QMetaObject* pMeta = &CLS_WgtDeviceTree::staticMetaObject;
    for (const char* pSig : {"AddItems(QVector<QString>)", "AddItems(QVector<QString>,bool)",
                             "DeleteItems(QVector<QString>)", "MoveNodes(QVector<QString>)",
                             "MoveNodes(QVector<QString>,int)", "ModifyItems(QList<CLS_CustomTreeNode>)",
                             "ModifyCaptionByChannelId(QString,QString)", "AddItems(QVariant)"})
        QVERIFY2(pMeta->indexOfSlot(QMetaObject::normalizedSignature(pSig).constData()) >= 0, pSig);
}

void tst_DeviceTreeChanges::shouldAddResourceByIdOnceOnResourceTree()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_RESOURCE);
    QVERIFY(BuildResource(tree));

    QCOMPARE(tree.AddItem(QString("ch2")), 0);
    QCOMPARE(tree.AddItem(QString("ch2")), -1);

    QCOMPARE(Rows(tree), QString("resource_root_id(dec1(dout1),host1(ch1,ch2,ai1),host2(ch3))"));
    QCOMPARE(tree.m_qmapNodes.value("ch2").m_qstrDevId, QString("ch2"));
    QCOMPARE(tree.m_qmapDevIdToTreeId.value("ch2"), QString("ch2"));
    QCOMPARE(ShownIcon(tree, "ch2"), QString("channel_offline.png"));
}

void tst_DeviceTreeChanges::shouldAddTwiceOnFavouritesWithOneRowAndNoNode()
{
    LoadInstallation();
    DevManageCtl_AddCustomNode("favorite_root_id", "favorite_root_id", "", "Fav", 2, 0, 0, 0);
    DevManageCtl_AddCustomNode("f1", "f1", "favorite_root_id", "F1", 2, 1, 0, 0);
    DevManageCtl_AddCustomNode("f_ch1", "ch1", "f1", "Ch 1", 4, 1, 1, 1);
    CLS_ChangeTree tree(nullptr, DEV_TREE_FAVORITE);
    QCOMPARE(tree.Init("Fav"), 0);
    QCOMPARE(Rows(tree), QString("favorite_root_id(f1(f_ch1))"));
    QCOMPARE(tree.DeleteItem("f_ch1"), 0);

    // The resource's own tree id ("fch") names the row, and its resource parent ("f1") its parent.
    DevManageCtl_AddChannel("fch", "Fav ch", "f1", 0, 1, 7, "");
    DevManageCtl_AddCustomNode("f_fch", "fch", "f1", "Fav ch", 4, 2, 1, 7);
    QCOMPARE(tree.AddItem(QString("f_fch")), 0);
    QCOMPARE(tree.AddItem(QString("f_fch")), 0); // the panel refuses the second row, unseen

    QCOMPARE(Rows(tree), QString("favorite_root_id(f1(fch))"));
    QCOMPARE(BaseOf(tree)->findItems("Fav ch", Qt::MatchRecursive | Qt::MatchExactly).size(), 1);
    QVERIFY2(!tree.m_qmapNodes.contains("fch"), qPrintable(NodeKeys(tree)));
    QCOMPARE(tree.m_qmapDevIdToTreeId.value("fch"), QString("fch"));
    CLS_CustomTreeNode node;
    QCOMPARE(tree.GetItemById("fch", node), -1);
}

void tst_DeviceTreeChanges::shouldRefuseAddOfTypeOutsideNodeTypes()
{
    LoadInstallation();
    CLS_ChangeTree tree(nullptr, DEV_TREE_RESOURCE);
    QCOMPARE(tree.Init("All", {}, QSet<int>{3, 4}), 0);
    const QString qstrRows = Rows(tree);
    const QString qstrNodes = NodeKeys(tree);
    QVERIFY(!tree.m_qmapNodes.contains("ai1"));

    QCOMPARE(tree.AddItem(QString("ai1")), -1);

    QCOMPARE(Rows(tree), qstrRows);
    QCOMPARE(NodeKeys(tree), qstrNodes);
    QVERIFY(!tree.m_qmapDevIdToTreeId.contains("ai1"));
}

void tst_DeviceTreeChanges::shouldRefuseAddOfUnknownOrEmptyId()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_RESOURCE);
    QVERIFY(BuildResource(tree));
    QCOMPARE(tree.AddItem(QString("nothing")), -1);
    QCOMPARE(tree.AddItem(QString()), -1);
    QCOMPARE(tree.AddItem(std::weak_ptr<STRCT_VideoItem>()), -1);

    DevManageCtl_SetObjectAvailable("GetResourceTree", 0);
    QCOMPARE(tree.AddItem(QString("ch2")), -1);
    QCOMPARE(tree.AddItems(QVector<QString>{"ch2"}, true), -1);
    QCOMPARE(tree.ModifyItem(QString("ch1")), -1);
    QCOMPARE(TakeLogLines().count("3|WgtTreeWidget|GetVideoData|nullptr == pResourceTree "), 3);
    QVERIFY(!tree.m_qmapNodes.contains("ch2"));
}

void tst_DeviceTreeChanges::shouldSortAddedRowsByChannelNumber()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_RESOURCE);
    QVERIFY(BuildResource(tree));
    DevManageCtl_AddChannel("ch5", "Ch 5", "host2", 0, 0, 5, "");
    DevManageCtl_AddItem(5, "ai5", "Alarm 5", "host2", 0, 1, 5, "");
    DevManageCtl_AddItem(6, "ao5", "Out 5", "host2", 0, 1, 5, "");

    QCOMPARE(tree.AddItems(QVector<QString>{"ao5", "ai5", "ch5"}), 3);

    QCOMPARE(RowOf(tree, "ch5").m_iSortNo, 5);
    QCOMPARE(RowOf(tree, "ai5").m_iSortNo, 1005);
    QCOMPARE(RowOf(tree, "ao5").m_iSortNo, 2005);
    QCOMPARE(tree.AddItem(QString("din1")), 0);
    QCOMPARE(RowOf(tree, "din1").m_iSortNo, 3001);
}

void tst_DeviceTreeChanges::shouldAddReadyNodeOnce()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(BuildCustom(tree));

    QCOMPARE(tree.AddItem(MakeNode("c4", "g2", 4, "D4", 1)), 0);
    QCOMPARE(tree.AddItem(MakeNode("c4", "g2", 4, "D9", 1)), -1);
    QCOMPARE(tree.AddItem(MakeNode("", "g2", 4, "D5", 1)), -1);
    QCOMPARE(tree.AddItem(MakeNode("h", "g2", 3, "H", 1)), -1);           // type 3 isn't in {2, 4}
    QCOMPARE(tree.AddItem(MakeNode("orphan", "nowhere", 4, "D6", 1)), 0); // panel refuses the row

    QCOMPARE(Rows(tree), QString("custom_root_id(g1(c1,c2,c3),g2(c4))"));
    QCOMPARE(tree.m_qmapDevIdToTreeId.value("D4"), QString("c4"));
    QVERIFY(tree.m_qmapNodes.contains("orphan") && tree.m_qmapDevIdToTreeId.contains("D6"));
    QVERIFY(!tree.m_qmapNodes.contains("h"));
}

void tst_DeviceTreeChanges::shouldAddBatchByIdsDroppingUnknownOnes()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_RESOURCE);
    QVERIFY(BuildResource(tree));

    QCOMPARE(tree.AddItems(QVector<QString>{"unknown", "ch2", "", "ch1", "din1"}), 2);

    QCOMPARE(Rows(tree), QString("resource_root_id(dec1(din1,dout1),host1(ch1,ch2,ai1),host2(ch3))"));
}

void tst_DeviceTreeChanges::shouldSignalBatchAddUnderSendRule_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("send");
    QTest::addColumn<int>("iSignals");

    QTest::newRow("resource, false") << int(DEV_TREE_RESOURCE) << false << 0;
    QTest::newRow("resource, true") << int(DEV_TREE_RESOURCE) << true << 1;
    QTest::newRow("custom, false") << int(DEV_TREE_CUSTOM) << false << 1;
    QTest::newRow("favorite, false") << int(DEV_TREE_FAVORITE) << false << 1;
}

void tst_DeviceTreeChanges::shouldSignalBatchAddUnderSendRule()
{
    QFETCH(int, type);
    QFETCH(bool, send);
    QFETCH(int, iSignals);
    LoadInstallation();
    LoadCustomTree();
    CLS_ChangeTree tree(nullptr, n_DevTreeType(type));
    QSignalSpy spy(&tree, &CLS_WgtDeviceTree::SignChannelStatusUpdate);
    QSignalSpy spyAdd(&tree, &CLS_WgtDeviceTree::SignAddNode);

    // Empty batches: nothing added, and still the report is asked for.
    QCOMPARE(tree.AddItems(QVector<std::weak_ptr<STRCT_VideoItem>>(), send), 0);
    QCOMPARE(spy.count(), iSignals);
    QCOMPARE(tree.AddItems(QVector<QString>(), send), 0);
    QCOMPARE(spy.count(), 2 * iSignals);
    QCOMPARE(spyAdd.count(), 0);
}

void tst_DeviceTreeChanges::shouldAddNodesFromVariantCountingOnlyRowsMade()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(BuildCustom(tree));
    QSignalSpy spy(&tree, &CLS_WgtDeviceTree::SignChannelStatusUpdate);
    QCOMPARE(tree.AddItems(QVariant()), -1);
    CLS_CustomTreeNode nodeDup = MakeNode("c1", "g1", 4, "D1X", 7);
    nodeDup.m_qstrName = "replaced";
    const QVector<CLS_CustomTreeNode> qvecNodes{MakeNode("c5", "g2", 4, "D5", 1), nodeDup,
                                                MakeNode("", "g2", 4, "DE", 1),
                                                MakeNode("h", "g2", 3, "H", 1)};

    QCOMPARE(tree.AddItems(QVariant::fromValue(qvecNodes)), 1);

    QCOMPARE(Rows(tree), QString("custom_root_id(g1(c1,c2,c3),g2(c5))"));
    QCOMPARE(tree.m_qmapNodes.value("c1").m_qstrName, QString("replaced"));
    QCOMPARE(RowOf(tree, "c1").m_qstrText, QString("name c1")); // the row stays
    QVERIFY(tree.m_qmapNodes.contains("") && tree.m_qmapDevIdToTreeId.value("DE").isEmpty());
    QVERIFY(tree.m_qmapDevIdToTreeId.contains("DE"));
    QVERIFY(!tree.m_qmapNodes.contains("h"));
    QCOMPARE(spy.count(), 0);
}

void tst_DeviceTreeChanges::shouldKeepNodeOfRefusedRowAfterAdd()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_RESOURCE);
    QVERIFY(BuildResource(tree));
    QCOMPARE(tree.DeleteItem("host1"), 0); // its row goes, ch1 and ai1 keep their nodes
    DevManageCtl_AddChannel("ch7", "Ch 7", "host1", 0, 0, 7, "");

    QCOMPARE(tree.AddItem(QString("ch7")), 0);  // parent row gone: the panel refuses, unseen
    QCOMPARE(tree.AddItem(QString("ch1")), -1); // still a node

    QVERIFY(tree.m_qmapNodes.contains("ch7") && tree.m_qmapDevIdToTreeId.contains("ch7"));
    QVERIFY(NodeOf(tree, "ch7") == nullptr);
}

void tst_DeviceTreeChanges::shouldModifyResourceKeepingPlaceAndIdMap()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_RESOURCE);
    QVERIFY(BuildResource(tree));
    DevManageCtl_SetName("ch1", "Renamed");
    DevManageCtl_SetStatus("ch1", 0);

    QCOMPARE(tree.ModifyItem(QString("ch1")), 0);

    QCOMPARE(RowOf(tree, "ch1").m_qstrText, QString("Renamed"));
    QCOMPARE(tree.m_qmapNodes.value("ch1").m_iStatus, 0);
    QCOMPARE(ShownIcon(tree, "ch1"), QString("channel_offline.png"));
    QCOMPARE(tree.ModifyItem(QString("nothing")), -1);
    QCOMPARE(tree.ModifyItem(QString("ch2")), -1); // in the device layer, not in the tree
    QCOMPARE(tree.ModifyItem(static_cast<STRCT_VideoItem*>(nullptr)), -1);

    // A changed resource id stays out of the id map; the row keeps its parent.
    auto spMoved = MakeRes(STRCT_TestRes{4, "newdev", "ch3", "host1", "Moved", 1});
    QCOMPARE(tree.ModifyItem(spMoved.get()), 0);
    QCOMPARE(tree.m_qmapNodes.value("ch3").m_qstrDevId, QString("newdev"));
    QCOMPARE(tree.m_qmapDevIdToTreeId.value("ch3"), QString("ch3"));
    QVERIFY(!tree.m_qmapDevIdToTreeId.contains("newdev"));
    QCOMPARE(Rows(tree), QString("resource_root_id(dec1(dout1),host1(ch1,ai1),host2(ch3))"));
}

void tst_DeviceTreeChanges::shouldClearIconOfStatusTwoOnModify()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_RESOURCE);
    QVERIFY(BuildResource(tree));
    DevManageCtl_SetStatus("ch1", 2);
    QCOMPARE(ShownIcon(tree, "ch1"), QString("channel_online.png"));

    QCOMPARE(tree.ModifyItem(QString("ch1")), 0);

    QCOMPARE(ShownIcon(tree, "ch1"), QString("<none>"));
    QCOMPARE(RowOf(tree, "ch1").m_qstrIcon, QString());
}

void tst_DeviceTreeChanges::shouldModifyOnlyFirstKnownNode()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(BuildCustom(tree));
    QList<CLS_CustomTreeNode> qlstNodes;
    for (const QString& qstrId : {"unknown", "c1", "c2", "c3"}) {
        CLS_CustomTreeNode node = MakeNode(qstrId, "g1", 4, "X" + qstrId, 1);
        node.m_qstrName = "new " + qstrId;
        qlstNodes << node;
    }

    QCOMPARE(tree.ModifyItems(qlstNodes), 0);

    QCOMPARE(RowOf(tree, "c1").m_qstrText, QString("new c1"));
    QCOMPARE(RowOf(tree, "c2").m_qstrText, QString("name c2"));
    QCOMPARE(tree.m_qmapNodes.value("c2").m_qstrName, QString("name c2"));
    QCOMPARE(tree.m_qmapNodes.value("c3").m_qstrName, QString("name c3"));
    QCOMPARE(tree.m_qmapNodes.value("c1").m_qstrDevId, QString("Xc1"));
    QCOMPARE(tree.m_qmapDevIdToTreeId.value("D1"), QString("c1")); // id map as it was
    QVERIFY(!tree.m_qmapNodes.contains("unknown"));

    // A node refused by InitItem is still written, and the walk goes on to the next.
    CLS_CustomTreeNode nodeBad = MakeNode("c2", "g1", 9, "D2", 2);
    CLS_CustomTreeNode nodeGood = MakeNode("c3", "g1", 4, "D3", 3);
    nodeGood.m_qstrName = "new c3";
    QCOMPARE(tree.ModifyItems(QList<CLS_CustomTreeNode>{nodeBad, nodeGood}), 0);
    QCOMPARE(tree.m_qmapNodes.value("c2").m_iType, 9);
    QCOMPARE(RowOf(tree, "c3").m_qstrText, QString("new c3"));
    QCOMPARE(tree.ModifyItems(QList<CLS_CustomTreeNode>()), 0);
}

void tst_DeviceTreeChanges::shouldSignalBatchModifyWithModifiedIds()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_RESOURCE);
    QVERIFY(BuildResource(tree));
    QSignalSpy spy(&tree, &CLS_WgtDeviceTree::SignModifyNode);
    auto spCh1 = Resource(tree, "ch1");
    auto spCh2 = Resource(tree, "ch2"); // not in the tree
    auto spCh3 = Resource(tree, "ch3");
    const QVector<STRCT_VideoItem*> qvecItems{spCh1.get(), nullptr, spCh2.get(), spCh3.get()};

    QCOMPARE(tree.ModifyItems(qvecItems), 2);
    QCOMPARE(spy.count(), 0); // resource tree, not asked

    QCOMPARE(tree.ModifyItems(qvecItems, true), 2);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(Ids(spy.takeFirst()), QStringList({"ch1", "ch3"}));

    QCOMPARE(tree.ModifyItems(QVector<STRCT_VideoItem*>{nullptr}, true), 0);
    QCOMPARE(spy.count(), 1); // sent even when empty
    QCOMPARE(Ids(spy.takeFirst()), QStringList());
}

void tst_DeviceTreeChanges::shouldKeepEmptyBodiesDoingNothing()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(BuildCustom(tree));
    const QString qstrNodes = NodeKeys(tree);
    QSignalSpy spyModify(&tree, &CLS_WgtDeviceTree::SignModifyNode);

    QCOMPARE(tree.ModifyItems(QVector<QString>{"c1", "c2"}, true), 0);
    QCOMPARE(tree.MoveNodes(QVector<QString>{"c1", "c2"}, 0), 0);
    QCOMPARE(tree.MoveNodes(QVector<QString>{"c2", "c1"}, 1), 0);
    QCOMPARE(tree.UpdateAllChannelsStatus(QMap<QString, int>{{"D1", 1}}), -1);

    QCOMPARE(Rows(tree), QString("custom_root_id(g1(c1,c2,c3),g2)"));
    QCOMPARE(tree.m_qmapNodes.value("c1").m_iSortNo, 1);
    QCOMPARE(NodeKeys(tree), qstrNodes);
    QCOMPARE(spyModify.count(), 0);
}

void tst_DeviceTreeChanges::shouldChangeCaptionByResourceId()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(BuildCustom(tree));

    QCOMPARE(tree.ModifyCaptionByChannelId("D2", "Caption"), 0);

    QCOMPARE(RowOf(tree, "c2").m_qstrText, QString("Caption"));
    QCOMPARE(tree.m_qmapNodes.value("c2").m_qstrName, QString("Caption"));
    QCOMPARE(ShownIcon(tree, "c2"), QString("channel_offline.png"));
    QCOMPARE(tree.ModifyCaptionByChannelId(QString(), "x"), -1);
    QCOMPARE(tree.ModifyCaptionByChannelId("D9", "x"), -1);

    // Refused by InitItem: -1, and the name is kept.
    tree.m_qmapNodes["c3"].m_iType = 9;
    QCOMPARE(tree.ModifyCaptionByChannelId("D3", "Kept"), -1);
    QCOMPARE(tree.m_qmapNodes.value("c3").m_qstrName, QString("Kept"));
    QCOMPARE(RowOf(tree, "c3").m_qstrText, QString("name c3"));
}

void tst_DeviceTreeChanges::shouldClearIconOfStatusTwoOnCaptionChange()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(BuildCustom(tree));
    tree.m_qmapNodes["c1"].m_iStatus = 2;
    QCOMPARE(ShownIcon(tree, "c1"), QString("channel_offline.png"));

    QCOMPARE(tree.ModifyCaptionByChannelId("D1", "Two"), 0);

    QCOMPARE(ShownIcon(tree, "c1"), QString("<none>"));
}

void tst_DeviceTreeChanges::shouldRefuseCaptionChangeByTreeId()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(BuildCustom(tree));

    QCOMPARE(tree.ModifyCaptionByChannelId("c1", "Nope"), -1);

    QCOMPARE(RowOf(tree, "c1").m_qstrText, QString("name c1"));
}

void tst_DeviceTreeChanges::shouldDeleteOneNodeAndRowsBelow()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_RESOURCE);
    QVERIFY(BuildResource(tree));
    QSignalSpy spy(&tree, &CLS_WgtDeviceTree::SignDeleteNode);

    QCOMPARE(tree.DeleteItem("host1"), 0);

    QCOMPARE(Rows(tree), QString("resource_root_id(dec1(dout1),host2(ch3))"));
    QVERIFY(!tree.m_qmapNodes.contains("host1") && !tree.m_qmapDevIdToTreeId.contains("host1"));
    CLS_CustomTreeNode node;
    QCOMPARE(tree.GetItemById("ch1", node), 0);
    QVector<CLS_CustomTreeNode> qvecChilds;
    QVERIFY(tree.GetChilds("host1", qvecChilds, true) < 0);
    QCOMPARE(tree.DeleteItem("host1"), -1);
    QCOMPARE(tree.DeleteItem(QString()), -1);
    QCOMPARE(tree.DeleteItem("ch1"), 0); // stale id: the maps shrink
    QVERIFY(!tree.m_qmapNodes.contains("ch1") && !tree.m_qmapDevIdToTreeId.contains("ch1"));
    QCOMPARE(spy.count(), 0);
}

void tst_DeviceTreeChanges::shouldDeleteBatchThroughVirtualTableAndSignalEmpty()
{
    CLS_RecordingTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(BuildCustom(tree));
    QSignalSpy spy(&tree, &CLS_WgtDeviceTree::SignDeleteNode);

    QCOMPARE(tree.DeleteItems(QVector<QString>{"c1", "unknown", "c3"}), 2);

    QCOMPARE(tree.m_qlstDeleted, QStringList({"c1", "unknown", "c3"}));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(Ids(spy.takeFirst()), QStringList());
    QCOMPARE(Rows(tree), QString("custom_root_id(g1(c2),g2)"));
}

void tst_DeviceTreeChanges::shouldNotSignalBatchDeleteOnResourceTreeUnlessAsked()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_RESOURCE);
    QVERIFY(BuildResource(tree));
    QSignalSpy spy(&tree, &CLS_WgtDeviceTree::SignDeleteNode);

    QCOMPARE(tree.DeleteItems(QVector<QString>{"ch1"}), 1);
    QCOMPARE(spy.count(), 0);

    QCOMPARE(tree.DeleteItems(QVector<QString>{"ch3", "ai1"}, true), 2);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(Ids(spy.takeFirst()), QStringList());
}

void tst_DeviceTreeChanges::shouldNameOnlySurvivorsInDeleteSignal()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(BuildCustom(tree));
    QSignalSpy spy(&tree, &CLS_WgtDeviceTree::SignDeleteNode);
    {
        CLS_PanelAway away(tree);
        QCOMPARE(tree.DeleteItems(QVector<QString>{"c1", "c2", "", "zz"}), 0);
    }
    QCOMPARE(spy.count(), 1);
    QCOMPARE(Ids(spy.takeFirst()), QStringList({"D1", "D2"}));
}

void tst_DeviceTreeChanges::shouldExchangeSortNumbersOnMove()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(BuildCustom(tree));
    auto spC2 = MakeRes(STRCT_TestRes{4, "D2", "c2", "g1", "c2", 2});
    auto spC3 = MakeRes(STRCT_TestRes{4, "D3", "c3", "g1", "c3", 3});

    QCOMPARE(tree.MoveNodes(QVector<STRCT_VideoItem*>{spC3.get(), spC2.get()}, 0), 0);

    QCOMPARE(Rows(tree), QString("custom_root_id(g1(c1,c3,c2),g2)"));
    QCOMPARE(tree.m_qmapNodes.value("c2").m_iSortNo, 3);
    QCOMPARE(tree.m_qmapNodes.value("c3").m_iSortNo, 2);

    QCOMPARE(tree.MoveNodes(QVector<STRCT_VideoItem*>{spC3.get(), spC2.get()}, 1), 0);
    QCOMPARE(Rows(tree), QString("custom_root_id(g1(c1,c2,c3),g2)"));
    QCOMPARE(tree.m_qmapNodes.value("c2").m_iSortNo, 2);
}

void tst_DeviceTreeChanges::shouldRefuseMoveOutsideRules_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("moveType");
    QTest::addColumn<QStringList>("ids"); // tree ids of the records; "-" for a null pointer

    QTest::newRow("default move type") << int(DEV_TREE_CUSTOM) << -1 << QStringList{"c3", "c2"};
    QTest::newRow("move type 2") << int(DEV_TREE_CUSTOM) << 2 << QStringList{"c3", "c2"};
    QTest::newRow("resource tree") << int(DEV_TREE_RESOURCE) << 0 << QStringList{"c3", "c2"};
    QTest::newRow("one element") << int(DEV_TREE_CUSTOM) << 0 << QStringList{"c3"};
    QTest::newRow("three elements") << int(DEV_TREE_CUSTOM) << 0 << QStringList{"c3", "c2", "c1"};
    QTest::newRow("null destination") << int(DEV_TREE_CUSTOM) << 0 << QStringList{"c3", "-"};
    QTest::newRow("unknown destination") << int(DEV_TREE_CUSTOM) << 0 << QStringList{"c3", "zz"};
    QTest::newRow("empty source") << int(DEV_TREE_CUSTOM) << 0 << QStringList{"", "c2"};
}

void tst_DeviceTreeChanges::shouldRefuseMoveOutsideRules()
{
    QFETCH(int, type);
    QFETCH(int, moveType);
    QFETCH(QStringList, ids);
    CLS_ChangeTree tree(nullptr, n_DevTreeType(type));
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode(type == DEV_TREE_RESOURCE ? "resource_root_id" : "custom_root_id", "", 2, "R"));
    for (int i = 1; i <= 3; ++i)
        Add(qmapNodes, MakeNode(QString("c%1").arg(i), QString(), 4, QString("D%1").arg(i), i));
    QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
    std::vector<std::shared_ptr<CLS_TestChannel>> vecHold;
    QVector<STRCT_VideoItem*> qvecItems;
    for (const QString& qstrId : ids) {
        if (qstrId == "-") {
            qvecItems << nullptr;
            continue;
        }
        vecHold.push_back(MakeRes(STRCT_TestRes{4, "dev", qstrId.toStdString(), "", "x", 1}));
        qvecItems << vecHold.back().get();
    }

    QCOMPARE(tree.MoveNodes(qvecItems, moveType), -1);

    for (int i = 1; i <= 3; ++i)
        QCOMPARE(tree.m_qmapNodes.value(QString("c%1").arg(i)).m_iSortNo, i);
}

void tst_DeviceTreeChanges::shouldKeepExchangedNumbersWhenPanelRefusesMove()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(BuildCustom(tree));
    auto spC1 = MakeRes(STRCT_TestRes{4, "D1", "c1", "g1", "c1", 1});
    auto spG2 = MakeRes(STRCT_TestRes{2, "G2", "g2", "", "g2", 1});

    QVERIFY(tree.MoveNodes(QVector<STRCT_VideoItem*>{spC1.get(), spG2.get()}, 0) < 0); // not siblings

    QCOMPARE(tree.m_qmapNodes.value("c1").m_iSortNo, 2);
    QCOMPARE(tree.m_qmapNodes.value("g2").m_iSortNo, 1);
    {
        CLS_PanelAway away(tree);
        QCOMPARE(tree.MoveNodes(QVector<STRCT_VideoItem*>{spC1.get(), spG2.get()}, 0), -1);
    }
    QCOMPARE(tree.m_qmapNodes.value("c1").m_iSortNo, 1); // exchanged back
    QCOMPARE(Rows(tree), QString("custom_root_id(g1(c1,c2,c3),g2)"));
}

void tst_DeviceTreeChanges::shouldMoveRowsOnlyByOneRowMoves()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(BuildCustom(tree));

    QCOMPARE(tree.MoveUpOneRow("c2", "c1"), 0);
    QCOMPARE(Rows(tree), QString("custom_root_id(g1(c2,c1,c3),g2)"));
    QCOMPARE(tree.m_qmapNodes.value("c2").m_iSortNo, 2); // the model keeps the old number
    QCOMPARE(RowOf(tree, "c2").m_iSortNo, 1);
    QCOMPARE(tree.MoveDownOneRow("c2", "c1"), 0);
    QCOMPARE(Rows(tree), QString("custom_root_id(g1(c1,c2,c3),g2)"));
    QVERIFY(tree.MoveUpOneRow("c1", "g2") < 0);
    QVERIFY(tree.MoveDownOneRow("zz", "c1") < 0);
}

void tst_DeviceTreeChanges::shouldAnswerCustomTreeManagersMoveSignalsWithItsOwnMoves()
{
    // The tree connects the device layer's custom-tree manager when it is made: the manager's
    // move signals move its rows, and the tree's result comes back to the emitter.
    CLS_ChangeTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(BuildCustom(tree));
    I_CustomTreeManage* pManage = DevManage::GetCustomTree();
    QVERIFY(pManage != nullptr);

    QCOMPARE(emit pManage->SignMoveUpOneRow("c2", "c1"), 0);
    QCOMPARE(Rows(tree), QString("custom_root_id(g1(c2,c1,c3),g2)"));
    QCOMPARE(emit pManage->SignMoveDownOneRow("c2", "c1"), 0);
    QCOMPARE(Rows(tree), QString("custom_root_id(g1(c1,c2,c3),g2)"));
    QVERIFY(emit pManage->SignMoveUpOneRow("c1", "g2") < 0); // not siblings
    QCOMPARE(Rows(tree), QString("custom_root_id(g1(c1,c2,c3),g2)"));
}

void tst_DeviceTreeChanges::shouldFailEveryChangeWithoutPanel()
{
    CLS_ChangeTree tree(nullptr, DEV_TREE_CUSTOM);
    LoadInstallation();
    QVERIFY(BuildCustom(tree));
    const QString qstrNodes = NodeKeys(tree);
    auto spC1 = MakeRes(STRCT_TestRes{4, "D1", "c1", "g1", "c1", 1});
    auto spCh1 = std::shared_ptr<STRCT_VideoItem>(MakeRes(STRCT_TestRes{4, "x1", "x1", "g1", "x1", 1}));
    CLS_PanelAway away(tree);

    QCOMPARE(tree.AddItem(std::weak_ptr<STRCT_VideoItem>(spCh1)), -1);
    QCOMPARE(tree.AddItem(MakeNode("n", "g1", 4, "N")), -1);
    QCOMPARE(tree.AddItems(QVariant::fromValue(QVector<CLS_CustomTreeNode>{MakeNode("n", "g1", 4, "N")})),
             -1);
    QCOMPARE(tree.ModifyItem(spC1.get()), -1);
    QCOMPARE(tree.ModifyCaptionByChannelId("D1", "x"), -1);
    QCOMPARE(tree.DeleteItem("c1"), -1);
    QCOMPARE(tree.MoveUpOneRow("c2", "c1"), -1);
    QCOMPARE(tree.MoveDownOneRow("c1", "c2"), -1);
    QCOMPARE(NodeKeys(tree), qstrNodes);
}

QTEST_MAIN(tst_DeviceTreeChanges)
#include "tst_DeviceTreeChanges.moc"
