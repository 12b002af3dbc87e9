// How CLS_WgtDeviceTree fills itself from resources: the Init forms of each tree type against the
// reference device layer, the raw and weak builds, the model-only builds, the fetch of this tree's
// resources, the folding after a build, and the failures with their log lines.

#include "CLS_DevResKit.h"

#include <QtTest>

using namespace CLS_DevTreeTestUtil;

namespace {

const QString CONST_RESOURCE_ROOT = "resource_root_id";
const QString CONST_CUSTOM_ROOT = "custom_root_id";
const QString CONST_FAVORITE_ROOT = "favorite_root_id";
const QString CONST_FLOW_ROOT = "passengerflow_root_id";

QString LogLine(const QString& _qstrFunction, const QString& _qstrText)
{
    return QString("3|WgtTreeWidget|%1|%2").arg(_qstrFunction, _qstrText);
}

// Raw resources the caller owns; kept alive by the holder for the length of a call.
struct CLS_RawData
{
    QVector<std::shared_ptr<CLS_TestChannel>> m_qvecHold;
    QMap<QString, STRCT_VideoItem*> m_qmapData;

    STRCT_VideoItem* Put(const QString& _qstrKey, const STRCT_TestRes& _stRes)
    {
        m_qvecHold << MakeRes(_stRes);
        m_qmapData.insert(_qstrKey, m_qvecHold.last().get());
        return m_qvecHold.last().get();
    }
};

STRCT_TestRes Res(int _iType, const std::string& _strId, const std::string& _strParent, int _iChannelNo = 0,
                  int _iDevBindType = -1)
{
    STRCT_TestRes stRes;
    stRes.m_iType = _iType;
    stRes.m_strId = _strId;
    stRes.m_strTreeId = _strId;
    stRes.m_strParentId = _strParent;
    stRes.m_strName = "name " + _strId;
    stRes.m_iChannelNo = _iChannelNo;
    stRes.m_iDevBindType = _iDevBindType;
    return stRes;
}

// A resource tree of raw records: root, h1 (c1, c2), h2 (c3).
CLS_RawData RawResourceTree()
{
    CLS_RawData data;
    data.Put(CONST_RESOURCE_ROOT, Res(2, "resource_root_id", ""));
    data.Put("h1", Res(3, "h1", "resource_root_id"));
    data.Put("c1", Res(4, "c1", "h1", 1));
    data.Put("c2", Res(4, "c2", "h1", 2));
    data.Put("h2", Res(3, "h2", "resource_root_id"));
    data.Put("c3", Res(4, "c3", "h2", 1));
    return data;
}

} // namespace

class tst_DeviceTreeResourceBuild : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void shouldBuildEachTreeTypeFromDeviceLayer_data();
    void shouldBuildEachTreeTypeFromDeviceLayer();
    void shouldBuildResourceTreeWithRowsOnlyWhereParentsAreTreeIds();
    void shouldFailAndLogWhenSiblingObjectMissing_data();
    void shouldFailAndLogWhenSiblingObjectMissing();
    void shouldIgnoreFailingSiblingCodesInInit();

    void shouldMakeRootRowAndLeaveExpiredEntryForEmptyWeakMap();
    void shouldRefuseGroupRootWithEmptyRootNameInWeakForm();
    void shouldUseResourceRootIdForFavouritesWithoutRootInWeakForm();
    void shouldNotPutRootIntoCallersMapOfOtherTypes();
    void shouldKeepOldRowsWhenRawMapEmpty();
    void shouldLoseOldRowsWhenRawMapLacksRoot();
    void shouldUseCustomRootForPassengerFlowInRawForm();
    void shouldTreatPassengerFlowKeyAsOrdinaryResource();
    void shouldKeepExtraNodesOfRawFormAsLookupOnly();
    void shouldLeaveOutItemsWithEmptyId();
    void shouldLeaveOutFilteredItemsAndOrphanTheirChildren_data();
    void shouldLeaveOutFilteredItemsAndOrphanTheirChildren();
    void shouldKeepIdsInStepAndLetLastDeviceIdWin();
    void shouldOrderWeakRowsByChannelNumber();
    void shouldFailWithoutPanel();

    void shouldBuildRowsFromModel();
    void shouldBuildNodesOnly();

    void shouldGiveAllResourcesToResourceTree();
    void shouldGiveCustomTreeResourcesByTreeIdWithoutGroups();
    void shouldFailAndLogGetVideoDataWithoutObjects_data();
    void shouldFailAndLogGetVideoDataWithoutObjects();

    void shouldShowRootAndClosedHostsAfterBuild();
    void shouldExpandAndCollapseAll();
};

void tst_DeviceTreeResourceBuild::initTestCase()
{
    BindGateways();
    QVERIFY(MakeIconFiles());
}

void tst_DeviceTreeResourceBuild::init()
{
    DevManageCtl_Reset();
    LxAppManagerCtl_Reset();
    TakeLogLines();
}

void tst_DeviceTreeResourceBuild::cleanup()
{
    QVERIFY2(LeakedWindows().isEmpty(), qPrintable(LeakedWindows().join(", ")));
}

void tst_DeviceTreeResourceBuild::shouldBuildEachTreeTypeFromDeviceLayer_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("rootId");
    QTest::addColumn<QString>("rootIcon");
    QTest::addColumn<QString>("lastCall"); // operation of the device layer the build asked
    QTest::addColumn<QString>("rootText"); // a root node of the data keeps its own name

    QTest::newRow("generic") << int(DEV_TREE_GENERIC) << CONST_CUSTOM_ROOT << "fenzu.png"
                             << "GetAllNodes"
                             << "Custom";
    QTest::newRow("resource") << int(DEV_TREE_RESOURCE) << CONST_RESOURCE_ROOT << "root_icon.png"
                              << "GetAllItems"
                              << "Root";
    QTest::newRow("custom") << int(DEV_TREE_CUSTOM) << CONST_CUSTOM_ROOT << "fenzu.png"
                            << "GetAllNodes"
                            << "Custom";
    QTest::newRow("favorite") << int(DEV_TREE_FAVORITE) << CONST_FAVORITE_ROOT << "fenzu.png"
                              << "GetNodesOfRoot"
                              << "Favourites";
    // The passenger-flow root is made anew with the root name, over the data's own.
    QTest::newRow("passengerflow") << int(DEV_TREE_PASSENGER_FLOW) << CONST_FLOW_ROOT << "fenzu.png"
                                   << "GetAllNodes"
                                   << "Root";
}

void tst_DeviceTreeResourceBuild::shouldBuildEachTreeTypeFromDeviceLayer()
{
    QFETCH(int, type);
    QFETCH(QString, rootId);
    QFETCH(QString, rootIcon);
    QFETCH(QString, lastCall);
    QFETCH(QString, rootText);
    QCOMPARE(DevManageCtl_LoadSample(), 14);
    CLS_TestDeviceTree tree(nullptr, n_DevTreeType(type));

    QCOMPARE(tree.Init("Root"), 0);

    QCOMPARE(tree.m_qstrRootId, rootId);
    QCOMPARE(RowOf(tree, rootId).m_qstrText, rootText);
    QCOMPARE(ShownIcon(tree, rootId), rootIcon);
    QCOMPARE(DevManageCtl_CallCount(lastCall.toUtf8().constData()), 1);
    if (type == DEV_TREE_FAVORITE) {
        char szArgs[64] = {};
        DevManageCtl_LastCall("GetNodesOfRoot", szArgs, sizeof(szArgs));
        QCOMPARE(QString(szArgs), QString("favorite_root_id|0"));
        QCOMPARE(Rows(tree), QString("favorite_root_id(fav_main(f_host1_ch2))"));
    } else if (type == DEV_TREE_PASSENGER_FLOW) {
        QCOMPARE(Rows(tree), QString("passengerflow_root_id(p_host1_ch3)"));
    } else if (type != DEV_TREE_RESOURCE) {
        char szArgs[64] = {};
        DevManageCtl_LastCall("GetAllNodes", szArgs, sizeof(szArgs));
        QCOMPARE(QString(szArgs), QString("0"));
        QVERIFY2(Rows(tree).contains("grp_entrances(c_host1_ch1,c_host2_ch1)"), qPrintable(Rows(tree)));
    }
    QVERIFY(TakeLogLines().isEmpty());
}

void tst_DeviceTreeResourceBuild::shouldBuildResourceTreeWithRowsOnlyWhereParentsAreTreeIds()
{
    // The sample's children name their parent by resource id ("host1"), its hosts have tree ids
    // ("t_host1"): the parent is taken from the data as it stands, so the channels get no rows.
    DevManageCtl_LoadSample();
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);

    QCOMPARE(tree.Init("All"), 0);

    // Equal sort numbers (99): the rows stand in key order.
    QCOMPARE(Rows(tree), QString("resource_root_id(t_dec1,t_host1,t_host2)"));
    CLS_CustomTreeNode node;
    QCOMPARE(tree.GetItemById("t_host1_ch1", node), 0);
    QCOMPARE(node.m_qstrTreeParentId, QString("host1"));
    QCOMPARE(tree.m_qmapDevIdToTreeId.value("host1_ch1"), QString("t_host1_ch1"));
}

void tst_DeviceTreeResourceBuild::shouldFailAndLogWhenSiblingObjectMissing_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("switchOff"); // "AppData", "DataManager" or a device-layer function
    QTest::addColumn<QString>("line");

    QTest::newRow("no app data") << int(DEV_TREE_RESOURCE) << "AppData"
                                 << "nullptr == pCommonData ";
    QTest::newRow("no data manager") << int(DEV_TREE_CUSTOM) << "DataManager"
                                     << "nullptr == pCommonData ";
    QTest::newRow("resource, no resource tree") << int(DEV_TREE_RESOURCE) << "GetResourceTree"
                                                << "nullptr == pResourceTree ";
    QTest::newRow("favorite, no custom tree") << int(DEV_TREE_FAVORITE) << "GetCustomTree"
                                              << "nullptr == pCustomTree ";
    QTest::newRow("custom, no custom tree") << int(DEV_TREE_CUSTOM) << "GetCustomTree"
                                            << "nullptr == pCustomTree ";
    QTest::newRow("generic, no custom tree") << int(DEV_TREE_GENERIC) << "GetCustomTree"
                                             << "nullptr == pCustomTree ";
    QTest::newRow("passengerflow, no custom tree") << int(DEV_TREE_PASSENGER_FLOW) << "GetCustomTree"
                                                   << "nullptr == pCustomTree ";
}

void tst_DeviceTreeResourceBuild::shouldFailAndLogWhenSiblingObjectMissing()
{
    QFETCH(int, type);
    QFETCH(QString, switchOff);
    QFETCH(QString, line);
    DevManageCtl_LoadSample();
    CLS_TestDeviceTree tree(nullptr, n_DevTreeType(type));
    QCOMPARE(tree.Init("Root"), 0);
    const QString qstrRowsBefore = Rows(tree);
    const QString qstrNodesBefore = NodeKeys(tree);
    TakeLogLines();

    if (switchOff == "AppData")
        LxAppManagerCtl_SetAppDataAvailable(0);
    else if (switchOff == "DataManager")
        LxAppManagerCtl_SetDataManagerAvailable(0);
    else
        QCOMPARE(DevManageCtl_SetObjectAvailable(switchOff.toUtf8().constData(), 0), 0);

    QCOMPARE(tree.Init("Other"), -1);

    // Lines of the running status thread may come between; the build's own is the one of Init.
    const QStringList qlstLines = TakeLogLines().filter("|Init|");
    QCOMPARE(qlstLines, QStringList{LogLine("Init", line)});
    QCOMPARE(Rows(tree), qstrRowsBefore); // nothing cleared
    QCOMPARE(NodeKeys(tree), qstrNodesBefore);
}

void tst_DeviceTreeResourceBuild::shouldIgnoreFailingSiblingCodesInInit()
{
    // A failing GetAllItems leaves the map empty; the weak build still makes its root.
    LoadInstallation();
    DevManageCtl_FailNext("GetAllItems", 1, -5);
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);

    QCOMPARE(tree.Init("All"), 0);

    QCOMPARE(Rows(tree), CONST_RESOURCE_ROOT);
}

void tst_DeviceTreeResourceBuild::shouldMakeRootRowAndLeaveExpiredEntryForEmptyWeakMap()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapData;

    QCOMPARE(tree.Init(qmapData, "All"), 0);

    QCOMPARE(Rows(tree), CONST_RESOURCE_ROOT);
    QCOMPARE(RowOf(tree, CONST_RESOURCE_ROOT).m_qstrText, QString("All"));
    QCOMPARE(ShownIcon(tree, CONST_RESOURCE_ROOT), QString("root_icon.png"));
    QCOMPARE(qmapData.keys(), QStringList{CONST_RESOURCE_ROOT});
    QVERIFY(qmapData.value(CONST_RESOURCE_ROOT).expired());
}

void tst_DeviceTreeResourceBuild::shouldRefuseGroupRootWithEmptyRootNameInWeakForm()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    QMap<QString, CLS_CustomTreeNode> qmapOld;
    Add(qmapOld, MakeNode(CONST_RESOURCE_ROOT, QString(), 2, CONST_RESOURCE_ROOT));
    Add(qmapOld, MakeNode("h1", CONST_RESOURCE_ROOT, 3, "H1"));
    QCOMPARE(tree.Init(qmapOld, "All"), 0);
    QCOMPARE(Rows(tree), QString("resource_root_id(h1)"));
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapData;

    QCOMPARE(tree.Init(qmapData, QString()), -1);

    QCOMPARE(Rows(tree), QString()); // cleared before the refusal
    QVERIFY(tree.m_qmapNodes.isEmpty());
}

void tst_DeviceTreeResourceBuild::shouldUseResourceRootIdForFavouritesWithoutRootInWeakForm()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_FAVORITE);
    auto spChannel = MakeRes(Res(4, "c1", "", 1));
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapData;
    qmapData.insert("c1", spChannel);

    QCOMPARE(tree.Init(qmapData, "Fav"), 0);

    QCOMPARE(tree.m_qstrRootId, CONST_RESOURCE_ROOT);
    QCOMPARE(Rows(tree), QString("resource_root_id(c1)"));
    QCOMPARE(RowOf(tree, CONST_RESOURCE_ROOT).m_qstrText, QString("Fav"));
    QCOMPARE(qmapData.size(), 1); // only a resource tree gains an entry
}

void tst_DeviceTreeResourceBuild::shouldNotPutRootIntoCallersMapOfOtherTypes()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapData;

    QCOMPARE(tree.Init(qmapData, "Custom"), 0);

    QVERIFY(qmapData.isEmpty());
    QCOMPARE(Rows(tree), CONST_RESOURCE_ROOT); // the stand-in root keeps its id in every type
}

void tst_DeviceTreeResourceBuild::shouldKeepOldRowsWhenRawMapEmpty()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    CLS_RawData data = RawResourceTree();
    QCOMPARE(tree.Init(data.m_qmapData, "All"), 0);
    QCOMPARE(Rows(tree), QString("resource_root_id(h1(c1,c2),h2(c3))"));

    QCOMPARE(tree.Init(QMap<QString, STRCT_VideoItem*>(), "All"), -1);

    QCOMPARE(Rows(tree), QString("resource_root_id(h1(c1,c2),h2(c3))"));
    QCOMPARE(tree.m_qmapNodes.size(), 6);
}

void tst_DeviceTreeResourceBuild::shouldLoseOldRowsWhenRawMapLacksRoot()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    CLS_RawData data = RawResourceTree();
    QCOMPARE(tree.Init(data.m_qmapData, "All"), 0);
    CLS_RawData other;
    other.Put("h9", Res(3, "h9", "resource_root_id"));
    other.Put(CONST_CUSTOM_ROOT, Res(2, "custom_root_id", "")); // the root key of another type

    QCOMPARE(tree.Init(other.m_qmapData, "All"), -1);

    QCOMPARE(Rows(tree), QString());
    QVERIFY(tree.m_qmapNodes.isEmpty());
    QVERIFY(tree.m_qmapDevIdToTreeId.isEmpty());
}

void tst_DeviceTreeResourceBuild::shouldUseCustomRootForPassengerFlowInRawForm()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_PASSENGER_FLOW);
    CLS_RawData data;
    data.Put(CONST_FLOW_ROOT, Res(2, "passengerflow_root_id", ""));
    QCOMPARE(tree.Init(data.m_qmapData, "Flow"), -1); // no "custom_root_id"

    data.Put(CONST_CUSTOM_ROOT, Res(2, "custom_root_id", ""));
    data.Put("c1", Res(4, "c1", "custom_root_id", 1));

    QCOMPARE(tree.Init(data.m_qmapData, "Flow"), 0);

    QCOMPARE(tree.m_qstrRootId, CONST_CUSTOM_ROOT);
    QCOMPARE(ShownIcon(tree, CONST_CUSTOM_ROOT), QString("fenzu.png"));
}

void tst_DeviceTreeResourceBuild::shouldTreatPassengerFlowKeyAsOrdinaryResource()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    CLS_RawData data = RawResourceTree();
    data.Put(CONST_FLOW_ROOT, Res(3, "pf", "resource_root_id"));
    auto spHost = MakeRes(Res(3, "pfw", "resource_root_id"));
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapWeak;
    qmapWeak.insert(CONST_FLOW_ROOT, spHost);

    QCOMPARE(tree.Init(data.m_qmapData, "All"), 0);
    QVERIFY2(tree.m_qmapNodes.contains("pf"), qPrintable(NodeKeys(tree)));
    QVERIFY(NodeOf(tree, "pf") != nullptr);

    QCOMPARE(tree.Init(qmapWeak, "All"), 0);
    QCOMPARE(Rows(tree), QString("resource_root_id(pfw)"));
}

void tst_DeviceTreeResourceBuild::shouldKeepExtraNodesOfRawFormAsLookupOnly()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    CLS_RawData data = RawResourceTree();
    QMap<QString, CLS_CustomTreeNode> qmapExtra;
    Add(qmapExtra, MakeNode("x1", "h1", 4, "DX1"));

    QCOMPARE(tree.Init(data.m_qmapData, "All", {}, {}, {}, qmapExtra), 0);

    CLS_CustomTreeNode node;
    QCOMPARE(tree.GetItemById("x1", node), 0);
    QCOMPARE(node.m_qstrDevId, QString("DX1"));
    QVERIFY(NodeOf(tree, "x1") == nullptr);
    CLS_CustomTreeNode nodeByDev;
    QCOMPARE(tree.GetItemByDevId("DX1", nodeByDev), -1);
    QVERIFY(!tree.m_qmapDevIdToTreeId.contains("DX1"));
}

void tst_DeviceTreeResourceBuild::shouldLeaveOutItemsWithEmptyId()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    CLS_RawData data = RawResourceTree();
    STRCT_TestRes stNoId = Res(4, "", "h1", 5);
    stNoId.m_strTreeId = "t_noid";
    data.Put("noid", stNoId);
    data.Put("", Res(4, "c9", "h1", 9)); // an empty key is skipped too
    auto spNoId = MakeRes(stNoId);
    auto spRoot = MakeRes(Res(2, "resource_root_id", ""));
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapWeak{{CONST_RESOURCE_ROOT, spRoot}, {"noid", spNoId}};

    QCOMPARE(tree.Init(data.m_qmapData, "All"), 0);
    QVERIFY2(!tree.m_qmapNodes.contains("t_noid") && !tree.m_qmapNodes.contains("c9"),
             qPrintable(NodeKeys(tree)));

    QCOMPARE(tree.Init(qmapWeak, "All"), 0);
    QCOMPARE(NodeKeys(tree), QString("resource_root_id>resource_root_id"));
}

void tst_DeviceTreeResourceBuild::shouldLeaveOutFilteredItemsAndOrphanTheirChildren_data()
{
    QTest::addColumn<bool>("weak");
    QTest::addColumn<QSet<int>>("nodeTypes");
    QTest::addColumn<QSet<int>>("bindTypes");

    // h1 is left out by its type (3), or by its bind type (5) while channels have -1.
    QTest::newRow("raw, type") << false << QSet<int>{2, 4} << QSet<int>();
    QTest::newRow("weak, type") << true << QSet<int>{2, 4} << QSet<int>();
    QTest::newRow("raw, bind type") << false << QSet<int>() << QSet<int>{-1};
    QTest::newRow("weak, bind type") << true << QSet<int>() << QSet<int>{-1};
}

void tst_DeviceTreeResourceBuild::shouldLeaveOutFilteredItemsAndOrphanTheirChildren()
{
    QFETCH(bool, weak);
    QFETCH(QSet<int>, nodeTypes);
    QFETCH(QSet<int>, bindTypes);
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    CLS_RawData data = RawResourceTree();
    const_cast<STRCT_VideoItem*>(data.m_qmapData.value("h1"))->m_iDevBindType = 5;
    if (!bindTypes.isEmpty())
        const_cast<STRCT_VideoItem*>(data.m_qmapData.value(CONST_RESOURCE_ROOT))->m_iDevBindType = -1;
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapWeak;
    for (const auto& sp : data.m_qvecHold)
        qmapWeak.insert(QString::fromStdString(sp->m_strTreeId), sp);

    const int iRet = weak ? tree.Init(qmapWeak, "All", {}, nodeTypes, bindTypes)
                          : tree.Init(data.m_qmapData, "All", {}, nodeTypes, bindTypes);

    QCOMPARE(iRet, 0);
    QVERIFY2(!tree.m_qmapNodes.contains("h1"), qPrintable(NodeKeys(tree)));
    QVERIFY(NodeOf(tree, "h1") == nullptr);
    QVERIFY(tree.m_qmapNodes.contains("c1") && tree.m_qmapNodes.contains("c2"));
    QVERIFY(NodeOf(tree, "c1") == nullptr && NodeOf(tree, "c2") == nullptr);
    if (nodeTypes.isEmpty())
        QCOMPARE(Rows(tree), QString("resource_root_id(h2(c3))"));
    else
        QCOMPARE(Rows(tree), QString("resource_root_id")); // no host passes {2, 4}
}

void tst_DeviceTreeResourceBuild::shouldKeepIdsInStepAndLetLastDeviceIdWin()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    CLS_RawData data;
    data.Put(CONST_RESOURCE_ROOT, Res(2, "resource_root_id", ""));
    STRCT_TestRes stA = Res(4, "D1", "resource_root_id", 1);
    stA.m_strTreeId = "a";
    STRCT_TestRes stB = stA;
    stB.m_strTreeId = "b";
    data.Put("k1", stA);
    data.Put("k2", stB);

    QCOMPARE(tree.Init(data.m_qmapData, "All"), 0);

    QCOMPARE(NodeKeys(tree), QString("a>D1 b>D1 resource_root_id>resource_root_id"));
    QCOMPARE(IdMap(tree), QString("D1>b resource_root_id>resource_root_id"));
    QCOMPARE(RowOf(tree, "a").m_varData.toString(), QString("D1"));
    QCOMPARE(RowOf(tree, "a").m_qstrParentId, CONST_RESOURCE_ROOT);
}

void tst_DeviceTreeResourceBuild::shouldOrderWeakRowsByChannelNumber()
{
    LoadInstallation();
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);

    QCOMPARE(tree.Init("All"), 0);

    QCOMPARE(Rows(tree), QString("resource_root_id(dec1(din1,dout1),host1(ch1,ch2,ai1),host2(ch3))"));
    QCOMPARE(RowOf(tree, "ai1").m_iSortNo, 1001);
    QCOMPARE(RowOf(tree, "din1").m_iSortNo, 3001);
    QCOMPARE(RowOf(tree, "dout1").m_iSortNo, 4001);
    QCOMPARE(RowOf(tree, "host1").m_iSortNo, 99);
}

void tst_DeviceTreeResourceBuild::shouldFailWithoutPanel()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    CLS_RawData data = RawResourceTree();
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapWeak;
    CLS_PanelAway away(tree);

    QCOMPARE(tree.Init(data.m_qmapData, "All"), -1);
    QCOMPARE(tree.Init(qmapWeak, "All"), -1);

    QVERIFY(qmapWeak.isEmpty()); // refused before the root entry is made
    QVERIFY(tree.m_qmapNodes.isEmpty());
    QVERIFY(tree.m_pBGThread == nullptr);
}

void tst_DeviceTreeResourceBuild::shouldBuildRowsFromModel()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    CLS_RawData data = RawResourceTree();
    QCOMPARE(tree.Init(data.m_qmapData, "All"), 0);
    tree.m_qmapNodes.insert("", MakeNode("", "h1", 4, "E"));
    tree.m_qmapNodes.insert("g", MakeNode("g", "h1", 7, "G")); // refused: type 7
    QMap<QString, CLS_TreeItem> qmapItems;
    qmapItems.insert("keep", CLS_TreeItem());

    QCOMPARE(tree.BuildTreeItems(CONST_RESOURCE_ROOT, qmapItems), 0);

    // The group root is refused too: 2 isn't among a resource tree's node types.
    QCOMPARE(qmapItems.keys(), QStringList({"c1", "c2", "c3", "h1", "h2", "keep"}));
    tree.m_qsetNodeTypes.insert(2);
    QCOMPARE(tree.BuildTreeItems(CONST_RESOURCE_ROOT, qmapItems), 0);
    QCOMPARE(qmapItems.value(CONST_RESOURCE_ROOT).m_qstrText, QString("All"));
    QCOMPARE(qmapItems.value("c1").m_qstrParentId, QString("h1"));
    QCOMPARE(qmapItems.value("c1").m_varData.toString(), QString("c1"));
    QCOMPARE(Rows(tree), QString("resource_root_id(h1(c1,c2),h2(c3))")); // rows untouched
}

void tst_DeviceTreeResourceBuild::shouldBuildNodesOnly()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_FAVORITE); // no favourites case: "custom_root_id"
    CLS_RawData data;
    data.Put(CONST_FAVORITE_ROOT, Res(2, "favorite_root_id", ""));
    QString qstrRootId = "unchanged";
    QCOMPARE(tree.BuildTreeNodes(data.m_qmapData, "Fav", qstrRootId), -1);
    QCOMPARE(qstrRootId, QString("unchanged"));

    data.Put(CONST_CUSTOM_ROOT, Res(2, "custom_root_id", ""));
    data.Put("c1", Res(4, "c1", "custom_root_id", 1));

    QCOMPARE(tree.BuildTreeNodes(data.m_qmapData, "Fav", qstrRootId), 0);

    QCOMPARE(qstrRootId, CONST_CUSTOM_ROOT);
    QCOMPARE(tree.m_qstrRootId, QString()); // not the model's root
    // "favorite_root_id" isn't skipped here: a group, admitted by {2, 4}.
    QCOMPARE(NodeKeys(tree),
             QString("c1>c1 custom_root_id>custom_root_id favorite_root_id>favorite_root_id"));
    QCOMPARE(Rows(tree), QString());
}

void tst_DeviceTreeResourceBuild::shouldGiveAllResourcesToResourceTree()
{
    LoadInstallation();
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapData;
    qmapData.insert("mine", std::weak_ptr<STRCT_VideoItem>());
    DevManageCtl_FailNext("GetAllItems", 1, -3);
    QCOMPARE(tree.GetVideoData(qmapData), 0); // code ignored
    QCOMPARE(qmapData.keys(), QStringList{"mine"});

    QCOMPARE(tree.GetVideoData(qmapData), 0);

    QCOMPARE(qmapData.size(), 11); // appended to
    QCOMPARE(QString::fromStdString(qmapData.value("ch1").lock()->m_strName), QString("Ch 1"));
}

void tst_DeviceTreeResourceBuild::shouldGiveCustomTreeResourcesByTreeIdWithoutGroups()
{
    LoadInstallation();
    LoadCustomTree();
    DevManageCtl_AddCustomNode("c_ch1_again", "ch1", "custom_root_id", "Ch 1 again", 4, 5, 0, 1);
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapData;

    QCOMPARE(tree.GetVideoData(qmapData), 0);

    QCOMPARE(qmapData.keys(), QStringList({"c_ch1", "c_ch1_again", "c_ch2", "c_ch3"}));
    QCOMPARE(qmapData.value("c_ch1").lock(), qmapData.value("c_ch1_again").lock());
    QCOMPARE(QString::fromStdString(qmapData.value("c_ch3").lock()->m_strId), QString("ch3"));
}

void tst_DeviceTreeResourceBuild::shouldFailAndLogGetVideoDataWithoutObjects_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("switchOff");
    QTest::addColumn<QString>("line");

    QTest::newRow("resource") << int(DEV_TREE_RESOURCE) << "GetResourceTree"
                              << "nullptr == pResourceTree ";
    QTest::newRow("custom, no custom tree") << int(DEV_TREE_CUSTOM) << "GetCustomTree"
                                            << "nullptr == pCustomTree ";
    QTest::newRow("custom, no resource tree") << int(DEV_TREE_CUSTOM) << "GetResourceTree"
                                              << "nullptr == pResourceTree ";
}

void tst_DeviceTreeResourceBuild::shouldFailAndLogGetVideoDataWithoutObjects()
{
    QFETCH(int, type);
    QFETCH(QString, switchOff);
    QFETCH(QString, line);
    LoadInstallation();
    LoadCustomTree();
    CLS_TestDeviceTree tree(nullptr, n_DevTreeType(type));
    DevManageCtl_SetObjectAvailable(switchOff.toUtf8().constData(), 0);
    QMap<QString, std::weak_ptr<STRCT_VideoItem>> qmapData;

    QCOMPARE(tree.GetVideoData(qmapData), -1);

    // The walk stops at the first channel node: one line.
    QCOMPARE(TakeLogLines(), QStringList{LogLine("GetVideoData", line)});
    QVERIFY(qmapData.isEmpty());
}

void tst_DeviceTreeResourceBuild::shouldShowRootAndClosedHostsAfterBuild()
{
    LoadInstallation();
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);

    QCOMPARE(tree.Init("All"), 0);

    QVERIFY(NodeOf(tree, CONST_RESOURCE_ROOT)->isExpanded());
    for (const QString& qstrId : {"host1", "host2", "dec1"})
        QVERIFY2(!NodeOf(tree, qstrId)->isExpanded(), qPrintable(qstrId));

    BaseOf(tree)->expandAll();
    tree.ExpandHostItem();
    QVERIFY(NodeOf(tree, CONST_RESOURCE_ROOT)->isExpanded());
    QVERIFY(!NodeOf(tree, "host1")->isExpanded());
}

void tst_DeviceTreeResourceBuild::shouldExpandAndCollapseAll()
{
    LoadInstallation();
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    QCOMPARE(tree.Init("All"), 0);

    tree.ExpandAll();
    QVERIFY(NodeOf(tree, "host1")->isExpanded() && NodeOf(tree, "dec1")->isExpanded());

    tree.CollapseAll();
    QVERIFY(!NodeOf(tree, CONST_RESOURCE_ROOT)->isExpanded() && !NodeOf(tree, "host1")->isExpanded());
}

QTEST_MAIN(tst_DeviceTreeResourceBuild)
#include "tst_DeviceTreeResourceBuild.moc"
