// How the device tree presents its data: the image folder by skin, resource records to nodes
// (raw and weak forms), nodes to row records, row icons in their two stages, tool buttons from
// templates, the drag rule, and the two operations that are kept empty.

#include "CLS_TestDeviceTree.h"

#include <QCoreApplication>
#include <QDir>
#include <QtTest>

using namespace CLS_DevTreeTestUtil;

namespace {

const QString CONST_PRESENT_SKIN = "devtree_test_skin";

QString SkinFolder(const QString& _qstrSkin)
{
    return QCoreApplication::applicationDirPath() + "/resource/skin/" + _qstrSkin + "/WgtTreeWidget/images/";
}

// Sets the skin that the test settings library answers, for one scope.
class CLS_SkinGuard
{
public:
    explicit CLS_SkinGuard(const QString& _qstrSkin, bool _blSet = true)
    {
        if (_blSet)
            qputenv("DEVTREE_TEST_SKIN", _qstrSkin.toUtf8());
        else
            qunsetenv("DEVTREE_TEST_SKIN");
    }
    ~CLS_SkinGuard() { qunsetenv("DEVTREE_TEST_SKIN"); }
    CLS_SkinGuard(const CLS_SkinGuard&) = delete;
    CLS_SkinGuard& operator=(const CLS_SkinGuard&) = delete;
};

QString Pic(const CLS_TestDeviceTree& _tree, const QString& _qstrImage)
{
    return _qstrImage.isEmpty() ? QString() : _tree.m_qstrPicPath + _qstrImage;
}

std::weak_ptr<STRCT_VideoItem> Weak(const std::shared_ptr<CLS_TestChannel>& _pRes)
{
    return std::weak_ptr<STRCT_VideoItem>(_pRes);
}

STRCT_VideoItem* Raw(const std::shared_ptr<CLS_TestChannel>& _pRes)
{
    return _pRes.get();
}

// A resource that fills every field the node takes.
std::shared_ptr<CLS_TestChannel> FullChannel()
{
    STRCT_TestRes stRes;
    stRes.m_iType = 4;
    stRes.m_strId = "ch1";
    stRes.m_strTreeId = "t_ch1";
    stRes.m_strParentId = "h1";
    stRes.m_strName = u8"Kanal \u00fc 1";
    stRes.m_iChannelNo = 9;
    stRes.m_iOrderNo = 0;
    stRes.m_iStatus = 1;
    stRes.m_iDevBindType = 1;
    stRes.m_strExtend = u8"ext \u00e4";
    return MakeRes(stRes);
}

// A node whose untouched fields carry values, to see that they stay.
CLS_CustomTreeNode MarkedNode()
{
    CLS_CustomTreeNode node;
    node.m_qstrReserved = "keep";
    node.m_llReserved = 77;
    node.m_iReserved = 5;
    node.m_blValid = false;
    node.m_qmapExtend.insert("k", 1);
    return node;
}

CLS_CustomTreeNode ExpectedFullNode(int _iSortNo)
{
    CLS_CustomTreeNode node = MarkedNode();
    node.m_qstrTreeId = "t_ch1";
    node.m_qstrTreeParentId = "h1";
    node.m_qstrDevId = "ch1";
    node.m_qstrDevParentId = "h1";
    node.m_qstrName = QString::fromUtf8(u8"Kanal \u00fc 1");
    node.m_iType = 4;
    node.m_iStatus = 1;
    node.m_iSortNo = _iSortNo;
    node.m_iDevBindType = 1;
    node.m_qstrExtend = QString::fromUtf8(u8"ext \u00e4");
    node.m_iChannelNo = 9;
    return node;
}

QMap<int, QVector<CLS_ItemButton>> ChannelTemplates()
{
    QMap<int, QVector<CLS_ItemButton>> qmapButtons;
    qmapButtons.insert(4, {MakeButton("play", "/elsewhere/custom.png", true, true), MakeButton("rec")});
    return qmapButtons;
}

// The buttons as "id:icon:data" each.
QString Buttons(const CLS_TreeItem& _clsItem)
{
    QStringList qlstButtons;
    for (const CLS_ItemButton& clsButton : _clsItem.m_qvecButtons)
        qlstButtons << clsButton.m_qstrId + ":" + clsButton.m_qstrIcon + ":" + clsButton.m_varData.toString();
    return qlstButtons.join(" ");
}

} // namespace

class tst_DeviceTreePresentation : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void cleanup();

    // image folder
    void shouldChooseImageFolderBySkin_data();
    void shouldChooseImageFolderBySkin();
    void shouldReadSkinOncePerTree();

    // InitNode
    void shouldRefuseMissingRecordInInitNode();
    void shouldCopyRawRecordIntoNode();
    void shouldCopyWeakRecordIntoNode();
    void shouldTakeNumbersFromRawRecordByType_data();
    void shouldTakeNumbersFromRawRecordByType();
    void shouldTakeNumbersFromWeakRecordByType_data();
    void shouldTakeNumbersFromWeakRecordByType();
    void shouldFilterTypeUnlessRoot_data();
    void shouldFilterTypeUnlessRoot();
    void shouldFilterBindTypeAlsoForRoot_data();
    void shouldFilterBindTypeAlsoForRoot();

    // CreateItem
    void shouldUseReadyNodeAsItStandsWithoutResource();
    void shouldRefuseReadyNodeOfOtherTypeUnlessRoot();
    void shouldReturnRefusalOfInitNode();
    void shouldHangParentlessRowUnderRoot();
    void shouldUseRecordIdAsTreeIdOfNamedRoot();
    void shouldOrderRawRowByNodeAndWeakRowByChannel();
    void shouldOrderWeakRowsByKind_data();
    void shouldOrderWeakRowsByKind();
    void shouldOrderDecoderOutputByRecordThoughNodeHasNoChannel();
    void shouldShowBindIconsAndButtonsOfBoundChannels();

    // drag rule
    void shouldApplyDragRule_data();
    void shouldApplyDragRule();
    void shouldKeepGroupsUndraggableInBuiltCustomTree();
    void shouldKeepDefaultFlagsInBuiltResourceTree();

    // icons
    void shouldChooseIcon_data();
    void shouldChooseIcon();

    // tool buttons
    void shouldMakeButtonsFromIdAlone();
    void shouldShareOnePathPerPictureAndFollowAMovedFolder();
    void shouldLeaveSomeRowsWithoutButtons_data();
    void shouldLeaveSomeRowsWithoutButtons();
    void shouldAddEmptyTemplateForTypeWithoutButtons();
    void shouldGiveNamedRootNoButtons();
    void shouldKeepButtonsOfExistingRowsOnSetItemToolButtons();

    // InitItem
    void shouldRefuseTypeOutsideSetInInitItemEvenForRoot();
    void shouldFillRowInInitItem();
    void shouldGiveRootButtonsInInitItem();
    void shouldTakeIconFromStatusInInitItem_data();
    void shouldTakeIconFromStatusInInitItem();

    // kept empty
    void shouldCopyNothingInCloneNode();
    void shouldNeverCallAnIdImageChannel();
};

void tst_DeviceTreePresentation::initTestCase()
{
    qunsetenv("DEVTREE_TEST_SKIN");
    QVERIFY(QDir().mkpath(SkinFolder(CONST_PRESENT_SKIN)));
}

void tst_DeviceTreePresentation::cleanupTestCase()
{
    QDir(QCoreApplication::applicationDirPath() + "/resource/skin/" + CONST_PRESENT_SKIN).removeRecursively();
}

void tst_DeviceTreePresentation::cleanup()
{
    const QStringList qlstLeaked = LeakedWindows();
    QVERIFY2(qlstLeaked.isEmpty(), qPrintable("top-level widgets left: " + qlstLeaked.join(", ")));
}

// ---- image folder -------------------------------------------------------------------------------

void tst_DeviceTreePresentation::shouldChooseImageFolderBySkin_data()
{
    QTest::addColumn<bool>("set");
    QTest::addColumn<QString>("skin");
    QTest::addColumn<QString>("folder");

    QTest::newRow("no skin setting") << false << QString() << SkinFolder("dark");
    QTest::newRow("empty skin") << true << QString() << SkinFolder("dark");
    QTest::newRow("skin with images") << true << CONST_PRESENT_SKIN << SkinFolder(CONST_PRESENT_SKIN);
    QTest::newRow("skin without images") << true << QString("no_such_skin") << SkinFolder("dark");
}

void tst_DeviceTreePresentation::shouldChooseImageFolderBySkin()
{
    QFETCH(bool, set);
    QFETCH(QString, skin);
    QFETCH(QString, folder);

    CLS_SkinGuard guard(skin, set);
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QCOMPARE(tree.m_qstrPicPath, folder);
}

void tst_DeviceTreePresentation::shouldReadSkinOncePerTree()
{
    CLS_SkinGuard guard(CONST_PRESENT_SKIN);
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QCOMPARE(tree.m_qstrPicPath, SkinFolder(CONST_PRESENT_SKIN));

    qputenv("DEVTREE_TEST_SKIN", "no_such_skin");
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode("c1", "custom_root_id", 4, "D1"));
    QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
    QCOMPARE(RowOf(tree, "c1").m_qstrIcon, SkinFolder(CONST_PRESENT_SKIN) + "channel_offline.png");

    // Only a new look-up sees the change.
    tree.LoadPicPath();
    QCOMPARE(tree.m_qstrPicPath, SkinFolder("dark"));
}

// ---- InitNode -----------------------------------------------------------------------------------

void tst_DeviceTreePresentation::shouldRefuseMissingRecordInInitNode()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    CLS_CustomTreeNode node;
    QCOMPARE(tree.InitNode(static_cast<STRCT_VideoItem*>(nullptr), node, QString()), -1);
    QCOMPARE(tree.InitNode(static_cast<STRCT_VideoItem*>(nullptr), node, "Top"), -1);

    QCOMPARE(tree.InitNode(std::weak_ptr<STRCT_VideoItem>(), node, QString()), -1);

    std::weak_ptr<STRCT_VideoItem> pExpired;
    {
        auto pRes = MakeChannelRes(4, "gone", "h1", 1);
        pExpired = pRes;
    }
    QVERIFY(pExpired.expired());
    QCOMPARE(tree.InitNode(pExpired, node, QString()), -1);

    // A live control block that holds no object.
    auto pOwner = MakeChannelRes(4, "owner", "h1", 1);
    std::shared_ptr<STRCT_VideoItem> pEmpty(pOwner, nullptr);
    std::weak_ptr<STRCT_VideoItem> pLocksToNull = pEmpty;
    QVERIFY(!pLocksToNull.expired());
    QCOMPARE(tree.InitNode(pLocksToNull, node, QString()), -1);
    QCOMPARE(tree.InitNode(pLocksToNull, node, "Top"), -1);
}

void tst_DeviceTreePresentation::shouldCopyRawRecordIntoNode()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    auto pRes = FullChannel();
    CLS_CustomTreeNode node = MarkedNode();
    QCOMPARE(tree.InitNode(Raw(pRes), node, QString()), 0);
    QCOMPARE(NodeText(node), NodeText(ExpectedFullNode(9)));
}

void tst_DeviceTreePresentation::shouldCopyWeakRecordIntoNode()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    auto pRes = FullChannel();
    CLS_CustomTreeNode node = MarkedNode();
    QCOMPARE(tree.InitNode(Weak(pRes), node, QString()), 0);
    // The weak form takes the order number as it is, 0 included.
    QCOMPARE(NodeText(node), NodeText(ExpectedFullNode(0)));
}

void tst_DeviceTreePresentation::shouldTakeNumbersFromRawRecordByType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("channelNo");
    QTest::addColumn<int>("orderNo");
    QTest::addColumn<int>("nodeChannel");
    QTest::addColumn<int>("nodeSort");

    // The node starts with channel -1 and order 42.
    QTest::newRow("channel, order 0") << 4 << 9 << 0 << 9 << 9;
    QTest::newRow("channel, order 5") << 4 << 9 << 5 << 9 << 5;
    QTest::newRow("decoder input, order 0") << 17 << 3 << 0 << 3 << 0;
    QTest::newRow("decoder input, order 6") << 17 << 3 << 6 << 3 << 6;
    QTest::newRow("decoder output, order 0") << 13 << 4 << 0 << 4 << 0;
    QTest::newRow("decoder output, order 2") << 13 << 4 << 2 << 4 << 2;
    QTest::newRow("alarm input, order 0") << 5 << 2 << 0 << -1 << 42;
    QTest::newRow("alarm input, order 7") << 5 << 2 << 7 << -1 << 7;
    QTest::newRow("alarm output, order 0") << 6 << 2 << 0 << -1 << 42;
    QTest::newRow("host, order 0") << 3 << 8 << 0 << -1 << 42;
}

void tst_DeviceTreePresentation::shouldTakeNumbersFromRawRecordByType()
{
    QFETCH(int, type);
    QFETCH(int, channelNo);
    QFETCH(int, orderNo);
    QFETCH(int, nodeChannel);
    QFETCH(int, nodeSort);

    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    auto pRes = MakeChannelRes(type, "r1", "h1", channelNo, orderNo);
    CLS_CustomTreeNode node;
    node.m_iSortNo = 42;
    QCOMPARE(tree.InitNode(Raw(pRes), node, QString()), 0);
    QCOMPARE(node.m_iChannelNo, nodeChannel);
    QCOMPARE(node.m_iSortNo, nodeSort);
}

void tst_DeviceTreePresentation::shouldTakeNumbersFromWeakRecordByType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("channelNo");
    QTest::addColumn<int>("orderNo");
    QTest::addColumn<int>("nodeChannel");
    QTest::addColumn<int>("nodeSort");

    QTest::newRow("channel, order 0") << 4 << 9 << 0 << 9 << 0;
    QTest::newRow("channel, order 5") << 4 << 9 << 5 << 9 << 5;
    QTest::newRow("decoder input, order 0") << 17 << 3 << 0 << 3 << 0;
    QTest::newRow("decoder output, order 2") << 13 << 4 << 2 << -1 << 2;
    QTest::newRow("alarm input, order 0") << 5 << 2 << 0 << -1 << 0;
    QTest::newRow("host, order 3") << 3 << 8 << 3 << -1 << 3;
}

void tst_DeviceTreePresentation::shouldTakeNumbersFromWeakRecordByType()
{
    QFETCH(int, type);
    QFETCH(int, channelNo);
    QFETCH(int, orderNo);
    QFETCH(int, nodeChannel);
    QFETCH(int, nodeSort);

    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    auto pRes = MakeChannelRes(type, "r1", "h1", channelNo, orderNo);
    CLS_CustomTreeNode node;
    node.m_iSortNo = 42;
    QCOMPARE(tree.InitNode(Weak(pRes), node, QString()), 0);
    QCOMPARE(node.m_iChannelNo, nodeChannel);
    QCOMPARE(node.m_iSortNo, nodeSort);
}

void tst_DeviceTreePresentation::shouldFilterTypeUnlessRoot_data()
{
    QTest::addColumn<bool>("weak");
    QTest::newRow("raw") << false;
    QTest::newRow("weak") << true;
}

void tst_DeviceTreePresentation::shouldFilterTypeUnlessRoot()
{
    QFETCH(bool, weak);

    // A middleware host (7) is no type of a resource tree.
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    STRCT_TestRes stRes;
    stRes.m_iType = 7;
    stRes.m_strId = "m1";
    stRes.m_strTreeId = "t_m1";
    stRes.m_strName = "Middleware";
    auto pRes = MakeRes(stRes);

    CLS_CustomTreeNode node;
    QCOMPARE(weak ? tree.InitNode(Weak(pRes), node, QString()) : tree.InitNode(Raw(pRes), node, QString()),
             -1);

    CLS_CustomTreeNode root;
    QCOMPARE(weak ? tree.InitNode(Weak(pRes), root, "Top") : tree.InitNode(Raw(pRes), root, "Top"), 0);
    QCOMPARE(root.m_qstrName, QString("Top"));
    QCOMPARE(root.m_qstrTreeId, QString("m1"));
    QCOMPARE(root.m_qstrDevId, QString("m1"));
    QCOMPARE(root.m_iType, 7);
}

void tst_DeviceTreePresentation::shouldFilterBindTypeAlsoForRoot_data()
{
    QTest::addColumn<bool>("weak");
    QTest::newRow("raw") << false;
    QTest::newRow("weak") << true;
}

void tst_DeviceTreePresentation::shouldFilterBindTypeAlsoForRoot()
{
    QFETCH(bool, weak);

    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    auto pRes = MakeChannelRes(4, "c7", "h1", 1);
    pRes->m_iDevBindType = 7;
    auto fnInit = [&](CLS_CustomTreeNode& _node, const QString& _qstrRootName) {
        return weak ? tree.InitNode(Weak(pRes), _node, _qstrRootName)
                    : tree.InitNode(Raw(pRes), _node, _qstrRootName);
    };

    CLS_CustomTreeNode node;
    QCOMPARE(fnInit(node, QString()), -1);
    QCOMPARE(fnInit(node, "Top"), -1);

    // An empty set lets every bind type through.
    tree.m_qsetDevBindTypes.clear();
    QCOMPARE(fnInit(node, QString()), 0);
    QCOMPARE(node.m_iDevBindType, 7);
    CLS_CustomTreeNode root;
    QCOMPARE(fnInit(root, "Top"), 0);
}

// ---- CreateItem ---------------------------------------------------------------------------------

void tst_DeviceTreePresentation::shouldUseReadyNodeAsItStandsWithoutResource()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    tree.m_qstrRootId = "R";
    CLS_CustomTreeNode node = MakeNode("c1", "g1", 4, "D1", 7, 1);
    node.m_qstrName = "Front door";
    const QString qstrBefore = NodeText(node);

    CLS_TreeItem clsRow;
    QCOMPARE(tree.CreateItem(clsRow, node, static_cast<STRCT_VideoItem*>(nullptr), QString()), 0);
    QCOMPARE(NodeText(node), qstrBefore);
    QCOMPARE(RowText(clsRow), QString("id=c1 parent=g1 text=Front door tip=Front door icon=%1 data=D1 sort=7 "
                                      "flags=0x0 buttons=[]")
                                  .arg(Pic(tree, "channel_online.png")));
    QCOMPARE(clsRow.m_varData.userType(), int(QMetaType::QString));
}

void tst_DeviceTreePresentation::shouldRefuseReadyNodeOfOtherTypeUnlessRoot()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    CLS_CustomTreeNode host = MakeNode("h1", "custom_root_id", 3, "H1");
    CLS_TreeItem clsRow;
    QCOMPARE(tree.CreateItem(clsRow, host, static_cast<STRCT_VideoItem*>(nullptr), QString()), -1);
    QCOMPARE(tree.CreateItem(clsRow, host, static_cast<STRCT_VideoItem*>(nullptr), "Top"), 0);
    QCOMPARE(clsRow.m_qstrId, QString("h1"));

    // An empty set refuses every type.
    tree.m_qsetNodeTypes.clear();
    CLS_CustomTreeNode channel = MakeNode("c1", "custom_root_id", 4, "D1");
    QCOMPARE(tree.CreateItem(clsRow, channel, static_cast<STRCT_VideoItem*>(nullptr), QString()), -1);
}

void tst_DeviceTreePresentation::shouldReturnRefusalOfInitNode()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    auto pRes = MakeChannelRes(4, "c1", "h1", 1);
    pRes->m_iDevBindType = 7;
    CLS_CustomTreeNode node;
    CLS_TreeItem clsRow;
    QCOMPARE(tree.CreateItem(clsRow, node, Raw(pRes), QString()), -1);
    QCOMPARE(tree.CreateItem(clsRow, node, Weak(pRes), QString()), -1);
}

void tst_DeviceTreePresentation::shouldHangParentlessRowUnderRoot()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    tree.m_qstrRootId = "resource_root_id";
    auto pRes = MakeChannelRes(3, "h1", std::string(), 0);

    CLS_CustomTreeNode node;
    CLS_TreeItem clsRow;
    QCOMPARE(tree.CreateItem(clsRow, node, Raw(pRes), QString()), 0);
    QCOMPARE(node.m_qstrTreeParentId, QString());
    QCOMPARE(clsRow.m_qstrParentId, QString("resource_root_id"));

    CLS_CustomTreeNode nodeWeak;
    CLS_TreeItem clsRowWeak;
    QCOMPARE(tree.CreateItem(clsRowWeak, nodeWeak, Weak(pRes), QString()), 0);
    QCOMPARE(nodeWeak.m_qstrTreeParentId, QString());
    QCOMPARE(clsRowWeak.m_qstrParentId, QString("resource_root_id"));

    // InitItem has no fall-back.
    CLS_TreeItem clsRowInit;
    QCOMPARE(tree.InitItem(node, clsRowInit, false, false), 0);
    QCOMPARE(clsRowInit.m_qstrParentId, QString());

    // Nor has a root.
    CLS_CustomTreeNode root;
    CLS_TreeItem clsRoot;
    QCOMPARE(tree.CreateItem(clsRoot, root, Raw(pRes), "Top"), 0);
    QCOMPARE(clsRoot.m_qstrParentId, QString());
}

void tst_DeviceTreePresentation::shouldUseRecordIdAsTreeIdOfNamedRoot()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    STRCT_TestRes stRes;
    stRes.m_iType = 2;
    stRes.m_strId = "r1";
    stRes.m_strTreeId = "t_r1";
    stRes.m_strName = "Stored name";
    auto pRes = MakeRes(stRes);

    CLS_CustomTreeNode node;
    CLS_TreeItem clsRow;
    QCOMPARE(tree.CreateItem(clsRow, node, Raw(pRes), "Top"), 0);
    QCOMPARE(node.m_qstrTreeId, QString("r1"));
    QCOMPARE(node.m_qstrName, QString("Top"));
    QCOMPARE(RowText(clsRow),
             QString("id=r1 parent= text=Top tip=Top icon=%1 data=r1 sort=0 flags=0x0 buttons=[]")
                 .arg(Pic(tree, "root_icon.png")));
}

void tst_DeviceTreePresentation::shouldOrderRawRowByNodeAndWeakRowByChannel()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    auto pRes = MakeChannelRes(4, "c1", "h1", 9, 5);

    CLS_CustomTreeNode nodeRaw;
    CLS_TreeItem clsRowRaw;
    QCOMPARE(tree.CreateItem(clsRowRaw, nodeRaw, Raw(pRes), QString()), 0);
    QCOMPARE(nodeRaw.m_iSortNo, 5);
    QCOMPARE(clsRowRaw.m_iSortNo, 5);

    CLS_CustomTreeNode nodeWeak;
    CLS_TreeItem clsRowWeak;
    QCOMPARE(tree.CreateItem(clsRowWeak, nodeWeak, Weak(pRes), QString()), 0);
    QCOMPARE(nodeWeak.m_iSortNo, 5);
    QCOMPARE(clsRowWeak.m_iSortNo, 9);
}

void tst_DeviceTreePresentation::shouldOrderWeakRowsByKind_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("channelNo");
    QTest::addColumn<int>("rowSort");

    QTest::newRow("channel") << 4 << 9 << 9;
    QTest::newRow("alarm input") << 5 << 2 << 1002;
    QTest::newRow("alarm output") << 6 << 3 << 2003;
    QTest::newRow("decoder input") << 17 << 4 << 3004;
    QTest::newRow("decoder output") << 13 << 7 << 4007;
    QTest::newRow("host") << 3 << 5 << 99;
    QTest::newRow("decoder") << 12 << 5 << 99;
    QTest::newRow("channel 1000 runs into alarm inputs") << 4 << 1000 << 1000;
}

void tst_DeviceTreePresentation::shouldOrderWeakRowsByKind()
{
    QFETCH(int, type);
    QFETCH(int, channelNo);
    QFETCH(int, rowSort);

    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    auto pRes = MakeChannelRes(type, "r1", "h1", channelNo, 1);
    CLS_CustomTreeNode node;
    CLS_TreeItem clsRow;
    QCOMPARE(tree.CreateItem(clsRow, node, Weak(pRes), QString()), 0);
    QCOMPARE(clsRow.m_iSortNo, rowSort);
    QCOMPARE(node.m_iSortNo, 1);
}

void tst_DeviceTreePresentation::shouldOrderDecoderOutputByRecordThoughNodeHasNoChannel()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    auto pRes = MakeChannelRes(13, "o1", "d1", 7);
    CLS_CustomTreeNode node;
    CLS_TreeItem clsRow;
    QCOMPARE(tree.CreateItem(clsRow, node, Weak(pRes), QString()), 0);
    QCOMPARE(node.m_iChannelNo, -1);
    QCOMPARE(clsRow.m_iSortNo, 4007);
}

void tst_DeviceTreePresentation::shouldShowBindIconsAndButtonsOfBoundChannels()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    tree.SetItemToolButtons(ChannelTemplates());

    auto pCar = MakeChannelRes(4, "car", "h1", 1);
    pCar->m_iDevBindType = 3;
    pCar->m_iStatus = 1;
    CLS_CustomTreeNode nodeCar;
    CLS_TreeItem clsCar;
    QCOMPARE(tree.CreateItem(clsCar, nodeCar, Raw(pCar), QString()), 0);
    QCOMPARE(clsCar.m_qstrIcon, Pic(tree, "car_item.png"));
    QVERIFY(clsCar.m_qvecButtons.isEmpty());

    auto pWay = MakeChannelRes(4, "way", "h1", 2);
    pWay->m_iDevBindType = 4;
    pWay->m_iStatus = 1;
    CLS_CustomTreeNode nodeWay;
    CLS_TreeItem clsWay;
    QCOMPARE(tree.CreateItem(clsWay, nodeWay, Raw(pWay), QString()), 0);
    QCOMPARE(clsWay.m_qstrIcon, Pic(tree, "way_item.png"));
    QCOMPARE(clsWay.m_qvecButtons.size(), 2);
}

// ---- drag rule ----------------------------------------------------------------------------------

void tst_DeviceTreePresentation::shouldApplyDragRule_data()
{
    QTest::addColumn<int>("treeType");
    QTest::addColumn<bool>("drag");
    QTest::addColumn<bool>("check");
    QTest::addColumn<int>("nodeType");
    QTest::addColumn<int>("bind");
    QTest::addColumn<int>("flags");

    QTest::newRow("custom, group") << 2 << true << false << 2 << -1 << 0x61;
    QTest::newRow("custom, group, check") << 2 << true << true << 2 << -1 << 0x71;
    QTest::newRow("custom, host") << 2 << true << true << 3 << -1 << 0x71;
    QTest::newRow("custom, channel") << 2 << true << true << 4 << -1 << 0;
    QTest::newRow("custom, channel bind 0") << 2 << true << false << 4 << 0 << 0;
    QTest::newRow("custom, channel bind 1") << 2 << true << false << 4 << 1 << 0;
    QTest::newRow("custom, pad") << 2 << true << true << 4 << 2 << 0x71;
    QTest::newRow("custom, car") << 2 << true << false << 4 << 3 << 0x61;
    QTest::newRow("custom, way") << 2 << true << false << 4 << 4 << 0x61;
    QTest::newRow("custom without drag, group") << 2 << false << true << 2 << -1 << 0;
    QTest::newRow("resource, host") << 1 << true << true << 3 << -1 << 0;
    QTest::newRow("resource, group") << 1 << true << true << 2 << -1 << 0;
    QTest::newRow("generic, group") << 0 << true << true << 2 << -1 << 0;
    QTest::newRow("favorite, group") << 3 << true << true << 2 << -1 << 0;
    QTest::newRow("passenger flow, group") << 4 << true << true << 2 << -1 << 0;
}

void tst_DeviceTreePresentation::shouldApplyDragRule()
{
    QFETCH(int, treeType);
    QFETCH(bool, drag);
    QFETCH(bool, check);
    QFETCH(int, nodeType);
    QFETCH(int, bind);
    QFETCH(int, flags);

    CLS_TestDeviceTree tree(nullptr, n_DevTreeType(treeType), drag, check);
    tree.m_qsetNodeTypes << nodeType;
    CLS_CustomTreeNode node = MakeNode("n1", "p1", nodeType, "N1", 0, 1, bind);

    CLS_TreeItem clsRow;
    QCOMPARE(tree.CreateItem(clsRow, node, static_cast<STRCT_VideoItem*>(nullptr), QString()), 0);
    QCOMPARE(clsRow.m_iItemFlags, flags);

    CLS_TreeItem clsRowInit;
    QCOMPARE(tree.InitItem(node, clsRowInit, false, false), 0);
    QCOMPARE(clsRowInit.m_iItemFlags, flags);
}

void tst_DeviceTreePresentation::shouldKeepGroupsUndraggableInBuiltCustomTree()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, true, true);
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode("g1", "custom_root_id", 2, "G1"));
    Add(qmapNodes, MakeNode("c1", "g1", 4, "D1"));
    QCOMPARE(tree.Init(qmapNodes, "Root"), 0);

    QTreeWidgetItem* pGroup = NodeOf(tree, "g1");
    QTreeWidgetItem* pChannel = NodeOf(tree, "c1");
    QVERIFY(pGroup != nullptr && pChannel != nullptr);
    QCOMPARE(int(pGroup->flags()), 0x71);
    QVERIFY(pChannel->flags() & Qt::ItemIsDragEnabled);
    QCOMPARE(RowOf(tree, "c1").m_iItemFlags, 0);
}

void tst_DeviceTreePresentation::shouldKeepDefaultFlagsInBuiltResourceTree()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE, true, true);
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode("resource_root_id", QString(), 2, "resource_root_id"));
    Add(qmapNodes, MakeNode("h1", "resource_root_id", 3, "H1"));
    QCOMPARE(tree.Init(qmapNodes, "All"), 0);

    QCOMPARE(RowOf(tree, "h1").m_iItemFlags, 0);
    QCOMPARE(RowOf(tree, "resource_root_id").m_iItemFlags, 0);
    QVERIFY(NodeOf(tree, "h1")->flags() & Qt::ItemIsDragEnabled);
}

// ---- icons --------------------------------------------------------------------------------------

void tst_DeviceTreePresentation::shouldChooseIcon_data()
{
    QTest::addColumn<int>("treeType");
    QTest::addColumn<bool>("root");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("bind");
    QTest::addColumn<QString>("image");

    QTest::newRow("root of resource tree") << 1 << true << 2 << 0 << -1 << "root_icon.png";
    QTest::newRow("root of custom tree") << 2 << true << 2 << 0 << -1 << "fenzu.png";
    QTest::newRow("root of favourites") << 3 << true << 4 << 1 << -1 << "fenzu.png";
    QTest::newRow("bound root keeps root icon") << 2 << true << 2 << 1 << 3 << "fenzu.png";
    QTest::newRow("group") << 2 << false << 2 << 1 << -1 << "fenzu.png";
    QTest::newRow("host off line") << 1 << false << 3 << 0 << -1 << "host_offline.png";
    QTest::newRow("host on line") << 1 << false << 3 << 1 << -1 << "host_online.png";
    QTest::newRow("host status 2") << 1 << false << 3 << 2 << -1 << "host_online.png";
    QTest::newRow("channel off line") << 1 << false << 4 << 0 << -1 << "channel_offline.png";
    QTest::newRow("channel on line") << 1 << false << 4 << 1 << -1 << "channel_online.png";
    QTest::newRow("channel status 2") << 1 << false << 4 << 2 << -1 << "channel_no.png";
    QTest::newRow("channel status 5") << 1 << false << 4 << 5 << -1 << "channel_online.png";
    QTest::newRow("alarm input") << 1 << false << 5 << 0 << -1 << "alarm_in.png";
    QTest::newRow("alarm output") << 1 << false << 6 << 1 << -1 << "alarm_out.png";
    QTest::newRow("decoder") << 1 << false << 12 << 0 << -1 << "decoder_online.png";
    QTest::newRow("decoder output") << 1 << false << 13 << 0 << -1 << "decoderout_online.png";
    QTest::newRow("decoder input") << 1 << false << 17 << 0 << -1 << "decoderin_online.png";
    QTest::newRow("middleware host") << 1 << false << 7 << 1 << -1 << "";
    QTest::newRow("car on line") << 1 << false << 4 << 1 << 3 << "car_item.png";
    QTest::newRow("car off line") << 1 << false << 4 << 0 << 3 << "carerr_item.png";
    QTest::newRow("car status 2") << 1 << false << 4 << 2 << 3 << "carerr_item.png";
    QTest::newRow("pad on line") << 1 << false << 4 << 1 << 2 << "pad_item.png";
    QTest::newRow("pad status 2") << 1 << false << 4 << 2 << 2 << "paderr_item.png";
    QTest::newRow("way on line") << 1 << false << 4 << 1 << 4 << "way_item.png";
    QTest::newRow("way off line") << 1 << false << 4 << 0 << 4 << "wayerr_item.png";
    QTest::newRow("way on a middleware host") << 1 << false << 7 << 1 << 4 << "way_item.png";
    QTest::newRow("pad on a group") << 2 << false << 2 << 0 << 2 << "paderr_item.png";
    QTest::newRow("bind 0 keeps first stage") << 1 << false << 4 << 0 << 0 << "channel_offline.png";
    QTest::newRow("bind 1 keeps first stage") << 1 << false << 3 << 1 << 1 << "host_online.png";
}

void tst_DeviceTreePresentation::shouldChooseIcon()
{
    QFETCH(int, treeType);
    QFETCH(bool, root);
    QFETCH(int, type);
    QFETCH(int, status);
    QFETCH(int, bind);
    QFETCH(QString, image);

    CLS_TestDeviceTree tree(nullptr, n_DevTreeType(treeType));
    CLS_CustomTreeNode node = MakeNode("n1", "p1", type, "N1", 0, status, bind);
    CLS_TreeItem clsRow;
    clsRow.m_qstrIcon = "stale.png";
    tree.SetItemIcon(node, clsRow, root);
    QCOMPARE(clsRow.m_qstrIcon, Pic(tree, image));
}

// ---- tool buttons -------------------------------------------------------------------------------

void tst_DeviceTreePresentation::shouldMakeButtonsFromIdAlone()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    tree.SetItemToolButtons(ChannelTemplates());

    CLS_TreeItem clsFirst;
    tree.CreateItemToolBtn(MakeNode("c1", "g1", 4, "D1"), clsFirst);
    CLS_TreeItem clsSecond;
    tree.CreateItemToolBtn(MakeNode("c2", "g1", 4, "D2"), clsSecond);

    QCOMPARE(RowText(clsFirst).section("buttons=", 1),
             QString("[play:text play:tip play:%1:D1:1:1 rec:text rec:tip rec:%2:D1:0:0]")
                 .arg(Pic(tree, "play.png"), Pic(tree, "rec.png")));
    QCOMPARE(Buttons(clsSecond),
             QString("play:%1:D2 rec:%2:D2").arg(Pic(tree, "play.png"), Pic(tree, "rec.png")));
    QCOMPARE(clsFirst.m_qvecButtons.at(0).m_varData.userType(), int(QMetaType::QString));
    // The templates themselves stay as given.
    QCOMPARE(tree.m_qmapItemBtns.value(4).at(0).m_qstrIcon, QString("/elsewhere/custom.png"));
}

void tst_DeviceTreePresentation::shouldShareOnePathPerPictureAndFollowAMovedFolder()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    tree.SetItemToolButtons(ChannelTemplates());
    CLS_TreeItem clsFirst;
    tree.InitItem(MakeNode("c1", "g1", 4, "D1"), clsFirst, false, false);
    CLS_TreeItem clsSecond;
    tree.InitItem(MakeNode("c2", "g1", 4, "D2"), clsSecond, false, false);
    QCOMPARE(clsFirst.m_qstrIcon, Pic(tree, "channel_offline.png"));
    // Rows of one picture hold one string, and so do their buttons.
    QCOMPARE(clsFirst.m_qstrIcon.constData(), clsSecond.m_qstrIcon.constData());
    QCOMPARE(clsFirst.m_qvecButtons.at(1).m_qstrIcon, Pic(tree, "rec.png"));
    QCOMPARE(clsFirst.m_qvecButtons.at(1).m_qstrIcon.constData(),
             clsSecond.m_qvecButtons.at(1).m_qstrIcon.constData());

    // A tree whose folder changed makes its paths from the new folder.
    tree.m_qstrPicPath = "/moved/";
    CLS_TreeItem clsMoved;
    tree.InitItem(MakeNode("c3", "g1", 4, "D3"), clsMoved, false, false);
    QCOMPARE(clsMoved.m_qstrIcon, QString("/moved/channel_offline.png"));
    QCOMPARE(clsMoved.m_qvecButtons.at(0).m_qstrIcon, QString("/moved/play.png"));
}

void tst_DeviceTreePresentation::shouldLeaveSomeRowsWithoutButtons_data()
{
    QTest::addColumn<QString>("treeId");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("bind");
    QTest::addColumn<int>("buttons");

    QTest::newRow("plain channel") << "c1" << 4 << -1 << 2;
    QTest::newRow("empty tree id") << "" << 4 << -1 << 0;
    QTest::newRow("type outside the set") << "h1" << 3 << -1 << 0;
    QTest::newRow("pad") << "c1" << 4 << 2 << 0;
    QTest::newRow("car") << "c1" << 4 << 3 << 0;
    QTest::newRow("way") << "c1" << 4 << 4 << 2;
    QTest::newRow("bind 1") << "c1" << 4 << 1 << 2;
}

void tst_DeviceTreePresentation::shouldLeaveSomeRowsWithoutButtons()
{
    QFETCH(QString, treeId);
    QFETCH(int, type);
    QFETCH(int, bind);
    QFETCH(int, buttons);

    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QMap<int, QVector<CLS_ItemButton>> qmapButtons = ChannelTemplates();
    qmapButtons.insert(3, {MakeButton("hostbtn")});
    tree.SetItemToolButtons(qmapButtons);

    CLS_TreeItem clsRow;
    tree.CreateItemToolBtn(MakeNode(treeId, "g1", type, "DEV", 0, 1, bind), clsRow);
    QCOMPARE(clsRow.m_qvecButtons.size(), buttons);
}

void tst_DeviceTreePresentation::shouldAddEmptyTemplateForTypeWithoutButtons()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    tree.SetItemToolButtons(ChannelTemplates());
    QVERIFY(!tree.m_qmapItemBtns.contains(5));

    CLS_TreeItem clsRow;
    tree.CreateItemToolBtn(MakeNode("a1", "h1", 5, "A1"), clsRow);
    QVERIFY(clsRow.m_qvecButtons.isEmpty());
    QVERIFY(tree.m_qmapItemBtns.contains(5));
    QVERIFY(tree.m_qmapItemBtns.value(5).isEmpty());
}

void tst_DeviceTreePresentation::shouldGiveNamedRootNoButtons()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode("g1", "custom_root_id", 2, "G1"));
    Add(qmapNodes, MakeNode("c1", "g1", 4, "D1"));
    QMap<int, QVector<CLS_ItemButton>> qmapButtons = ChannelTemplates();
    qmapButtons.insert(2, {MakeButton("groupbtn")});
    QCOMPARE(tree.Init(qmapNodes, "Root", qmapButtons), 0);

    QVERIFY(RowOf(tree, "custom_root_id").m_qvecButtons.isEmpty());
    QCOMPARE(Buttons(RowOf(tree, "g1")), QString("groupbtn:%1:G1").arg(Pic(tree, "groupbtn.png")));
    QCOMPARE(RowOf(tree, "c1").m_qvecButtons.size(), 2);
}

void tst_DeviceTreePresentation::shouldKeepButtonsOfExistingRowsOnSetItemToolButtons()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode("c1", "custom_root_id", 4, "D1"));
    QCOMPARE(tree.Init(qmapNodes, "Root", ChannelTemplates()), 0);

    QMap<int, QVector<CLS_ItemButton>> qmapOther;
    qmapOther.insert(4, {MakeButton("snap")});
    tree.SetItemToolButtons(qmapOther);
    QCOMPARE(tree.m_qmapItemBtns.keys(), QList<int>{4});
    QCOMPARE(tree.m_qmapItemBtns.value(4).size(), 1);
    QCOMPARE(tree.m_qmapItemBtns.value(4).at(0).m_qstrId, QString("snap"));
    QCOMPARE(RowOf(tree, "c1").m_qvecButtons.size(), 2);

    // Rows made from now on use the new templates.
    CLS_TreeItem clsRow;
    tree.CreateItemToolBtn(MakeNode("c2", "custom_root_id", 4, "D2"), clsRow);
    QCOMPARE(Buttons(clsRow), QString("snap:%1:D2").arg(Pic(tree, "snap.png")));
}

// ---- InitItem -----------------------------------------------------------------------------------

void tst_DeviceTreePresentation::shouldRefuseTypeOutsideSetInInitItemEvenForRoot()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    CLS_TreeItem clsRow;
    QCOMPARE(tree.InitItem(MakeNode("g1", QString(), 2, "G1"), clsRow, true, false), -1);
    QCOMPARE(tree.InitItem(MakeNode("g1", QString(), 2, "G1"), clsRow, false, false), -1);
    QCOMPARE(tree.InitItem(MakeNode("h1", QString(), 3, "H1"), clsRow, true, false), 0);
}

void tst_DeviceTreePresentation::shouldFillRowInInitItem()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, true, false);
    tree.m_qstrRootId = "R";
    CLS_CustomTreeNode node = MakeNode("g1", QString(), 2, "G1", 6, 0);
    node.m_qstrName = "Lobby";
    CLS_TreeItem clsRow;
    QCOMPARE(tree.InitItem(node, clsRow, false, false), 0);
    QCOMPARE(RowText(clsRow), QString("id=g1 parent= text=Lobby tip=Lobby icon=%1 data=G1 sort=6 flags=0x61 "
                                      "buttons=[]")
                                  .arg(Pic(tree, "fenzu.png")));

    CLS_CustomTreeNode channel = MakeNode("c1", "g1", 4, "D1", 3, 0);
    CLS_TreeItem clsChannel;
    QCOMPARE(tree.InitItem(channel, clsChannel, false, false), 0);
    QCOMPARE(clsChannel.m_qstrIcon, Pic(tree, "channel_offline.png"));
    QCOMPARE(clsChannel.m_qstrParentId, QString("g1"));
    QCOMPARE(clsChannel.m_iSortNo, 3);
    QCOMPARE(clsChannel.m_iItemFlags, 0);

    // With _blRoot the row takes the root icon.
    CLS_TreeItem clsRoot;
    QCOMPARE(tree.InitItem(channel, clsRoot, true, false), 0);
    QCOMPARE(clsRoot.m_qstrIcon, Pic(tree, "fenzu.png"));
}

void tst_DeviceTreePresentation::shouldGiveRootButtonsInInitItem()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QMap<int, QVector<CLS_ItemButton>> qmapButtons;
    qmapButtons.insert(2, {MakeButton("groupbtn")});
    tree.SetItemToolButtons(qmapButtons);

    CLS_TreeItem clsRow;
    QCOMPARE(tree.InitItem(MakeNode("custom_root_id", QString(), 2, "custom_root_id"), clsRow, true, false),
             0);
    QCOMPARE(Buttons(clsRow), QString("groupbtn:%1:custom_root_id").arg(Pic(tree, "groupbtn.png")));
}

void tst_DeviceTreePresentation::shouldTakeIconFromStatusInInitItem_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("known");
    QTest::addColumn<QString>("image");

    QTest::newRow("off line") << 0 << true << "channel_offline.png";
    QTest::newRow("on line") << 1 << true << "channel_online.png";
    QTest::newRow("status 2 has no status icon") << 2 << true << "";
    QTest::newRow("node not in the model") << 1 << false << "";
}

void tst_DeviceTreePresentation::shouldTakeIconFromStatusInInitItem()
{
    QFETCH(int, status);
    QFETCH(bool, known);
    QFETCH(QString, image);

    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode("c1", "custom_root_id", 4, "D1", 0, status));
    QCOMPARE(tree.Init(qmapNodes, "Root"), 0);

    CLS_CustomTreeNode node =
        known ? tree.m_qmapNodes.value("c1") : MakeNode("c9", "custom_root_id", 4, "D9", 0, status);
    CLS_TreeItem clsRow;
    clsRow.m_qstrIcon = "stale.png";
    QCOMPARE(tree.InitItem(node, clsRow, false, true), 0);
    QCOMPARE(clsRow.m_qstrIcon, Pic(tree, image));
}

// ---- kept empty ---------------------------------------------------------------------------------

void tst_DeviceTreePresentation::shouldCopyNothingInCloneNode()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    CLS_CustomTreeNode source = MakeNode("c1", "g1", 4, "D1", 3, 1, 2);
    CLS_CustomTreeNode target = MarkedNode();
    target.m_qstrTreeId = "target";
    const QString qstrBefore = NodeText(target);
    QCOMPARE(tree.CloneNode(source, target), 0);
    QCOMPARE(NodeText(target), qstrBefore);
}

void tst_DeviceTreePresentation::shouldNeverCallAnIdImageChannel()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode("c1", "custom_root_id", 4, "D1", 0, 1, 9));
    QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
    QVERIFY(!tree.IsImageChannel("D1"));
    QVERIFY(!tree.IsImageChannel("c1"));
    QVERIFY(!tree.IsImageChannel(QString()));
}

QTEST_MAIN(tst_DeviceTreePresentation)
#include "tst_DeviceTreePresentation.moc"
