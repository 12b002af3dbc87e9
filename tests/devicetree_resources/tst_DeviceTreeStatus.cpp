// Channel and host states on a built CLS_WgtDeviceTree: the batches of the status thread applied to
// nodes and rows, the image-channel mark, the icon table and its bound-kind overrides, host events,
// and the forced full report through the thread. Batches are handed to the slot directly here; the
// device layer is left empty where that is so, so that the tree's own thread reports nothing.

#include "CLS_DevResKit.h"

#include <QSignalSpy>
#include <QtTest>

using namespace CLS_DevTreeTestUtil;

typedef QMap<QString, QPair<bool, int>> CLS_StatusBatch;

namespace {

const QString CONST_CUSTOM_ROOT = "custom_root_id";
const QString CONST_FAVORITE_ROOT = "favorite_root_id";
const QString CONST_RESOURCE_ROOT = "resource_root_id";

QVariant Batch(const CLS_StatusBatch& _qmapBatch)
{
    return QVariant::fromValue(_qmapBatch);
}

// A tree of ready nodes below the root of its type: channels c<bind> with device id D<bind> for
// the bind kinds -1, 0, 2, 3, 4 and 9, a host h1 (H1, on line), h0 (H0, off line), h2 (H2, status 2),
// and one node of each other kind.
bool Build(CLS_TestDeviceTree& _tree)
{
    QString qstrRoot = CONST_CUSTOM_ROOT;
    if (_tree.m_iTreeType == DEV_TREE_RESOURCE)
        qstrRoot = CONST_RESOURCE_ROOT;
    else if (_tree.m_iTreeType == DEV_TREE_FAVORITE)
        qstrRoot = CONST_FAVORITE_ROOT;
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode(qstrRoot, QString(), 2, qstrRoot));
    Add(qmapNodes, MakeNode("h1", QString(), 3, "H1", 1, 1));
    Add(qmapNodes, MakeNode("h0", QString(), 3, "H0", 2, 0));
    Add(qmapNodes, MakeNode("h2", QString(), 3, "H2", 3, 2));
    for (int iBind : {-1, 0, 2, 3, 4, 9})
        Add(qmapNodes, MakeNode(QString("c%1").arg(iBind), "h1", 4, QString("D%1").arg(iBind), 5, 1, iBind));
    Add(qmapNodes, MakeNode("g", QString(), 2, "G", 4));
    Add(qmapNodes, MakeNode("ai", "h1", 5, "AI", 6));
    Add(qmapNodes, MakeNode("ao", "h1", 6, "AO", 7));
    Add(qmapNodes, MakeNode("dec", QString(), 12, "DEC", 8));
    Add(qmapNodes, MakeNode("dout", "dec", 13, "DOUT", 1));
    Add(qmapNodes, MakeNode("din", "dec", 17, "DIN", 2));
    Add(qmapNodes, MakeNode("odd", "h1", 7, "ODD", 9));
    const QSet<int> qsetAll{2, 3, 4, 5, 6, 7, 12, 13, 17};
    return _tree.Init(qmapNodes, "Root", {}, qsetAll) == 0 && NodeOf(_tree, "odd") != nullptr;
}

} // namespace

class tst_DeviceTreeStatus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void shouldMarkAndUnmarkImageChannels();
    void shouldStoreOtherStatusWithoutIconChange();
    void shouldApplyOwnChannelsAndPassWholeBatch();
    void shouldTreatAnyNodeKindNamedInBatch();
    void shouldRefuseBatchWithoutPanelOrOfOtherType();
    void shouldPassQueuedBatchAfterClear();

    void shouldChooseIcon_data();
    void shouldChooseIcon();
    void shouldGiveGroupIconToFavouriteRootWhateverFlag();
    void shouldTreatRootsOnlyOfOwnTreeType();
    void shouldShowPadErrorIconWhenPadChannelGoesOffLine();
    void shouldClearIconOfUnknownKindNamedInBatch();
    void shouldRefuseIconForUnknownIdOrWithoutPanel();

    void shouldBringHostOnLineOnlyOnChange();
    void shouldTakeHostOffLine_data();
    void shouldTakeHostOffLine();
    void shouldIgnoreHostEventsOutsideResourceHosts_data();
    void shouldIgnoreHostEventsOutsideResourceHosts();

    void shouldAskThreadForFullReport();
};

void tst_DeviceTreeStatus::initTestCase()
{
    BindGateways();
    QVERIFY(MakeIconFiles());
}

void tst_DeviceTreeStatus::init()
{
    DevManageCtl_Reset();
    LxAppManagerCtl_Reset();
    TakeLogLines();
}

void tst_DeviceTreeStatus::cleanup()
{
    QVERIFY2(LeakedWindows().isEmpty(), qPrintable(LeakedWindows().join(", ")));
}

void tst_DeviceTreeStatus::shouldMarkAndUnmarkImageChannels()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(Build(tree));
    CLS_StatusBatch qmapBatch;
    for (const QString& qstrDev : {"D-1", "D0", "D3", "D9"})
        qmapBatch.insert(qstrDev, qMakePair(true, 1));

    QCOMPARE(tree.UpdateAllChannelsStatus(Batch(qmapBatch)), 0);
    QCOMPARE(tree.m_qmapNodes.value("c-1").m_iDevBindType, 9);
    QCOMPARE(tree.m_qmapNodes.value("c0").m_iDevBindType, 9);
    QCOMPARE(tree.m_qmapNodes.value("c3").m_iDevBindType, 3);
    QCOMPARE(tree.m_qmapNodes.value("c9").m_iDevBindType, 9);
    QCOMPARE(ShownIcon(tree, "c0"), QString("channel_online.png")); // 9 has no icon of its own

    for (auto it = qmapBatch.begin(); it != qmapBatch.end(); ++it)
        it.value().first = false;
    QCOMPARE(tree.UpdateAllChannelsStatus(Batch(qmapBatch)), 0);
    QCOMPARE(tree.m_qmapNodes.value("c-1").m_iDevBindType, -1);
    QCOMPARE(tree.m_qmapNodes.value("c0").m_iDevBindType, -1);
    QCOMPARE(tree.m_qmapNodes.value("c3").m_iDevBindType, 3);
    QCOMPARE(tree.m_qmapNodes.value("c9").m_iDevBindType, -1);
}

void tst_DeviceTreeStatus::shouldStoreOtherStatusWithoutIconChange()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(Build(tree));
    QCOMPARE(tree.UpdateAllChannelsStatus(Batch({{"D-1", qMakePair(false, 0)}})), 0);
    QCOMPARE(ShownIcon(tree, "c-1"), QString("channel_offline.png"));

    QCOMPARE(tree.UpdateAllChannelsStatus(Batch({{"D-1", qMakePair(false, 2)}})), 0);

    QCOMPARE(tree.m_qmapNodes.value("c-1").m_iStatus, 2);
    QCOMPARE(ShownIcon(tree, "c-1"), QString("channel_offline.png"));
    QCOMPARE(tree.UpdateAllChannelsStatus(Batch({{"D-1", qMakePair(false, 1)}})), 0);
    QCOMPARE(tree.m_qmapNodes.value("c-1").m_iStatus, 1);
    QCOMPARE(ShownIcon(tree, "c-1"), QString("channel_online.png"));
}

void tst_DeviceTreeStatus::shouldApplyOwnChannelsAndPassWholeBatch()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(Build(tree));
    QSignalSpy spy(&tree, &CLS_WgtDeviceTree::SignUpdateChannelsStatus);
    CLS_StatusBatch qmapBatch{{"D-1", qMakePair(false, 0)},
                              {"D0", qMakePair(false, 0)},
                              {"D3", qMakePair(false, 0)},
                              {"", qMakePair(false, 0)}};
    for (int i = 0; i < 6; ++i)
        qmapBatch.insert(QString("other%1").arg(i), qMakePair(true, 0));
    QCOMPARE(qmapBatch.size(), 10);

    QCOMPARE(tree.UpdateAllChannelsStatus(Batch(qmapBatch)), 0);

    QCOMPARE(ShownIcon(tree, "c-1"), QString("channel_offline.png"));
    QCOMPARE(ShownIcon(tree, "c0"), QString("channel_offline.png"));
    QCOMPARE(ShownIcon(tree, "c3"), QString("carerr_item.png"));
    QCOMPARE(ShownIcon(tree, "c2"), QString("pad_item.png")); // not in the batch
    QCOMPARE(tree.m_qmapNodes.value("c2").m_iStatus, 1);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.takeFirst().at(0).value<CLS_StatusBatch>(), qmapBatch);

    // A batch matching nothing still goes out.
    QCOMPARE(tree.UpdateAllChannelsStatus(Batch({{"none", qMakePair(false, 1)}})), 0);
    QCOMPARE(spy.count(), 1);
}

void tst_DeviceTreeStatus::shouldTreatAnyNodeKindNamedInBatch()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(Build(tree));

    QCOMPARE(tree.UpdateAllChannelsStatus(Batch({{"H1", qMakePair(true, 0)}})), 0);

    QCOMPARE(ShownIcon(tree, "h1"), QString("host_offline.png"));
    QCOMPARE(tree.m_qmapNodes.value("h1").m_iStatus, 0);
    QCOMPARE(tree.m_qmapNodes.value("h1").m_iDevBindType, 9);
}

void tst_DeviceTreeStatus::shouldRefuseBatchWithoutPanelOrOfOtherType()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(Build(tree));
    QSignalSpy spy(&tree, &CLS_WgtDeviceTree::SignUpdateChannelsStatus);

    QCOMPARE(tree.UpdateAllChannelsStatus(QVariant()), -1);
    QCOMPARE(tree.UpdateAllChannelsStatus(QVariant::fromValue(QVector<int>{1})), -1);
    {
        CLS_PanelAway away(tree);
        QCOMPARE(tree.UpdateAllChannelsStatus(Batch({{"D-1", qMakePair(true, 0)}})), -1);
    }
    QCOMPARE(tree.UpdateAllChannelsStatus(QMap<QString, int>{{"D-1", 0}}), -1);

    QCOMPARE(spy.count(), 0);
    QCOMPARE(tree.m_qmapNodes.value("c-1").m_iStatus, 1);
    QCOMPARE(tree.m_qmapNodes.value("c-1").m_iDevBindType, -1);
    QCOMPARE(ShownIcon(tree, "c-1"), QString("channel_online.png"));
}

void tst_DeviceTreeStatus::shouldPassQueuedBatchAfterClear()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(Build(tree));
    QSignalSpy spy(&tree, &CLS_WgtDeviceTree::SignUpdateChannelsStatus);
    const QVariant varBatch = Batch({{"D-1", qMakePair(false, 0)}});
    QMetaObject::invokeMethod(&tree, "UpdateAllChannelsStatus", Qt::QueuedConnection,
                              Q_ARG(QVariant, varBatch));

    tree.Clear();

    QVERIFY(spy.wait(5000));
    QCOMPARE(spy.takeFirst().at(0), varBatch);
    QVERIFY(tree.m_qmapNodes.isEmpty());
}

void tst_DeviceTreeStatus::shouldChooseIcon_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<bool>("online");
    QTest::addColumn<QString>("icon");

    QTest::newRow("host on") << "h1" << true << "host_online.png";
    QTest::newRow("host off") << "h1" << false << "host_offline.png";
    QTest::newRow("group on") << "g" << true << "fenzu.png";
    QTest::newRow("group off") << "g" << false << "fenzu.png";
    QTest::newRow("channel on") << "c-1" << true << "channel_online.png";
    QTest::newRow("channel off") << "c-1" << false << "channel_offline.png";
    QTest::newRow("image channel off") << "c9" << false << "channel_offline.png";
    QTest::newRow("alarm in") << "ai" << false << "alarm_in.png";
    QTest::newRow("alarm out") << "ao" << true << "alarm_out.png";
    QTest::newRow("decoder") << "dec" << false << "decoder_online.png";
    QTest::newRow("decoder output") << "dout" << false << "decoderout_online.png";
    QTest::newRow("decoder input") << "din" << false << "decoderin_online.png";
    QTest::newRow("car on") << "c3" << true << "car_item.png";
    QTest::newRow("car off") << "c3" << false << "carerr_item.png";
    QTest::newRow("pad on") << "c2" << true << "pad_item.png";
    QTest::newRow("pad off") << "c2" << false << "paderr_item.png";
    QTest::newRow("way on") << "c4" << true << "way_item.png";
    QTest::newRow("way off") << "c4" << false << "wayerr_item.png";
    QTest::newRow("custom root") << "custom_root_id" << false << "fenzu.png";
}

void tst_DeviceTreeStatus::shouldChooseIcon()
{
    QFETCH(QString, id);
    QFETCH(bool, online);
    QFETCH(QString, icon);
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(Build(tree));
    const int iStatus = tree.m_qmapNodes.value(id).m_iStatus;
    QString qstrIcon = "caller.png";

    QCOMPARE(tree.UpdateNodeOnlineStatus(id, online, qstrIcon), 0);

    QCOMPARE(qstrIcon, tree.m_qstrPicPath + icon);
    QCOMPARE(ShownIcon(tree, id), icon);
    QCOMPARE(tree.m_qmapNodes.value(id).m_iStatus, iStatus); // callers write the status
}

void tst_DeviceTreeStatus::shouldGiveGroupIconToFavouriteRootWhateverFlag()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_FAVORITE);
    QVERIFY(Build(tree));
    tree.m_qmapNodes[CONST_FAVORITE_ROOT].m_iDevBindType = 3; // a root skips the kinds
    for (bool blOnline : {true, false}) {
        QString qstrIcon;
        QCOMPARE(tree.UpdateNodeOnlineStatus(CONST_FAVORITE_ROOT, blOnline, qstrIcon), 0);
        QCOMPARE(qstrIcon, tree.m_qstrPicPath + "fenzu.png");
        QCOMPARE(ShownIcon(tree, CONST_FAVORITE_ROOT), QString("fenzu.png"));
    }
}

void tst_DeviceTreeStatus::shouldTreatRootsOnlyOfOwnTreeType()
{
    // A resource tree's "custom_root_id" and a custom tree's "resource_root_id" are ordinary
    // nodes: a host-type node under either id shows host icons.
    CLS_TestDeviceTree resource(nullptr, DEV_TREE_RESOURCE);
    QVERIFY(Build(resource));
    resource.m_qmapNodes.insert(CONST_CUSTOM_ROOT, MakeNode(CONST_CUSTOM_ROOT, QString(), 3, "X"));
    QString qstrIcon;
    QCOMPARE(resource.UpdateNodeOnlineStatus(CONST_CUSTOM_ROOT, false, qstrIcon), 0);
    QCOMPARE(qstrIcon, resource.m_qstrPicPath + "host_offline.png");
    resource.m_qmapNodes[CONST_RESOURCE_ROOT].m_iType = 3;
    QCOMPARE(resource.UpdateNodeOnlineStatus(CONST_RESOURCE_ROOT, false, qstrIcon), 0);
    QCOMPARE(ShownIcon(resource, CONST_RESOURCE_ROOT), QString("root_icon.png"));
    QCOMPARE(resource.UpdateNodeOnlineStatus("Resource_Root_Id", false, qstrIcon), -1);

    CLS_TestDeviceTree custom(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(Build(custom));
    custom.m_qmapNodes.insert(CONST_RESOURCE_ROOT, MakeNode(CONST_RESOURCE_ROOT, QString(), 3, "Y"));
    QCOMPARE(custom.UpdateNodeOnlineStatus(CONST_RESOURCE_ROOT, true, qstrIcon), 0);
    QCOMPARE(qstrIcon, custom.m_qstrPicPath + "host_online.png");
}

void tst_DeviceTreeStatus::shouldShowPadErrorIconWhenPadChannelGoesOffLine()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(Build(tree));

    QCOMPARE(tree.UpdateAllChannelsStatus(Batch({{"D2", qMakePair(true, 0)}})), 0);

    QCOMPARE(ShownIcon(tree, "c2"), QString("paderr_item.png"));
    QCOMPARE(tree.m_qmapNodes.value("c2").m_iDevBindType, 2);
}

void tst_DeviceTreeStatus::shouldClearIconOfUnknownKindNamedInBatch()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(Build(tree));
    QVERIFY(!NodeOf(tree, "odd")->icon(0).isNull() || ShownIcon(tree, "odd") == "<none>");

    QCOMPARE(tree.UpdateAllChannelsStatus(Batch({{"ODD", qMakePair(false, 1)}})), 0);

    QCOMPARE(ShownIcon(tree, "odd"), QString("<none>"));
    QCOMPARE(tree.m_qmapNodes.value("odd").m_iStatus, 1);
    QString qstrIcon = "kept";
    QCOMPARE(tree.UpdateNodeOnlineStatus("odd", true, qstrIcon), 0);
    QCOMPARE(qstrIcon, QString("kept"));
}

void tst_DeviceTreeStatus::shouldRefuseIconForUnknownIdOrWithoutPanel()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QVERIFY(Build(tree));
    QString qstrIcon = "kept";
    QCOMPARE(tree.UpdateNodeOnlineStatus(QString(), true, qstrIcon), -1);
    QCOMPARE(tree.UpdateNodeOnlineStatus("zz", true, qstrIcon), -1);
    {
        CLS_PanelAway away(tree);
        QCOMPARE(tree.UpdateNodeOnlineStatus("h1", false, qstrIcon), -1);
    }
    QCOMPARE(qstrIcon, QString("kept"));
    QCOMPARE(ShownIcon(tree, "h1"), QString("host_online.png"));
}

void tst_DeviceTreeStatus::shouldBringHostOnLineOnlyOnChange()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    QVERIFY(Build(tree));
    tree.m_pTreePanel->UpdateItemIcon("h1", tree.m_qstrPicPath + "channel_no.png"); // a witness

    QCOMPARE(tree.UpdateHostStatus("h1", 3, nullptr), 0);
    QCOMPARE(ShownIcon(tree, "h1"), QString("channel_no.png"));
    QCOMPARE(tree.m_qmapNodes.value("h1").m_iStatus, 1);

    QCOMPARE(tree.UpdateHostStatus("h0", 3, nullptr), 0);
    QCOMPARE(ShownIcon(tree, "h0"), QString("host_online.png"));
    QCOMPARE(tree.m_qmapNodes.value("h0").m_iStatus, 1);

    QCOMPARE(tree.UpdateHostStatus("h2", 3), 0); // status 2 isn't 1
    QCOMPARE(tree.m_qmapNodes.value("h2").m_iStatus, 1);
    QCOMPARE(tree.UpdateHostStatus("zz", 3), -1);
    QCOMPARE(tree.UpdateHostStatus(QString(), 3), -1);
}

void tst_DeviceTreeStatus::shouldTakeHostOffLine_data()
{
    QTest::addColumn<int>("code");
    QTest::newRow("4") << 4;
    QTest::newRow("41") << 41;
}

void tst_DeviceTreeStatus::shouldTakeHostOffLine()
{
    QFETCH(int, code);
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    QVERIFY(Build(tree));
    tree.m_pTreePanel->UpdateItemIcon("h2", tree.m_qstrPicPath + "channel_no.png");
    tree.m_pTreePanel->UpdateItemIcon("c-1", tree.m_qstrPicPath + "channel_no.png");

    QCOMPARE(tree.UpdateHostStatus("h1", code), 0);
    QCOMPARE(tree.UpdateHostStatus("h2", code), 0);

    QCOMPARE(ShownIcon(tree, "h1"), QString("host_offline.png"));
    QCOMPARE(tree.m_qmapNodes.value("h1").m_iStatus, 0);
    QCOMPARE(ShownIcon(tree, "h2"), QString("channel_no.png")); // neither 0 nor 1: left alone
    QCOMPARE(tree.m_qmapNodes.value("h2").m_iStatus, 2);
    QCOMPARE(ShownIcon(tree, "c-1"), QString("channel_no.png")); // channels aren't touched
    QCOMPARE(tree.m_qmapNodes.value("c-1").m_iStatus, 1);
}

void tst_DeviceTreeStatus::shouldIgnoreHostEventsOutsideResourceHosts_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("id");
    QTest::addColumn<int>("code");

    for (int iCode : {3, 4, 41}) {
        QTest::addRow("favorite h0 %d", iCode) << int(DEV_TREE_FAVORITE) << "h0" << iCode;
        QTest::addRow("favorite h1 %d", iCode) << int(DEV_TREE_FAVORITE) << "h1" << iCode;
        QTest::addRow("custom h1 %d", iCode) << int(DEV_TREE_CUSTOM) << "h1" << iCode;
        QTest::addRow("resource channel %d", iCode) << int(DEV_TREE_RESOURCE) << "c-1" << iCode;
    }
    QTest::newRow("resource host, code 5") << int(DEV_TREE_RESOURCE) << "h1" << 5;
}

void tst_DeviceTreeStatus::shouldIgnoreHostEventsOutsideResourceHosts()
{
    QFETCH(int, type);
    QFETCH(QString, id);
    QFETCH(int, code);
    CLS_TestDeviceTree tree(nullptr, n_DevTreeType(type));
    QVERIFY(Build(tree));
    tree.m_pTreePanel->UpdateItemIcon(id, tree.m_qstrPicPath + "channel_no.png");
    const QString qstrNode = NodeText(tree.m_qmapNodes.value(id));

    QCOMPARE(tree.UpdateHostStatus(id, code), 0);

    QCOMPARE(NodeText(tree.m_qmapNodes.value(id)), qstrNode);
    QCOMPARE(ShownIcon(tree, id), QString("channel_no.png"));
}

void tst_DeviceTreeStatus::shouldAskThreadForFullReport()
{
    // Given a resource tree whose thread has sent its first report
    LoadInstallation();
    DevManageCtl_SetDeviceParam("ch1", 1); // host1 is an image device: ch1 and ch2
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    QSignalSpy spyOut(&tree, &CLS_WgtDeviceTree::SignChannelStatusUpdate);
    QSignalSpy spy(&tree, &CLS_WgtDeviceTree::SignUpdateChannelsStatus);
    QCOMPARE(tree.Init("All"), 0);
    QVERIFY(spy.wait(15000));
    QCOMPARE(spy.takeFirst().at(0).value<CLS_StatusBatch>().keys(), QStringList({"ch1", "ch2", "ch3"}));
    QCOMPARE(tree.m_qmapNodes.value("ch2").m_iDevBindType, 9);

    // When the row is changed behind the thread's back and a full report is asked for
    tree.m_pTreePanel->UpdateItemIcon("ch1", tree.m_qstrPicPath + "channel_no.png");
    tree.UpdateChannelStatus();

    // Then every channel comes again, well before the next poll, and the row is put right
    QCOMPARE(spyOut.count(), 1);
    QVERIFY(spy.wait(5000));
    const CLS_StatusBatch qmapAll = spy.takeFirst().at(0).value<CLS_StatusBatch>();
    QCOMPARE(qmapAll.keys(), QStringList({"ch1", "ch2", "ch3"}));
    QCOMPARE(qmapAll.value("ch2"), qMakePair(true, 0));
    QCOMPARE(ShownIcon(tree, "ch1"), QString("channel_online.png"));
}

QTEST_MAIN(tst_DeviceTreeStatus)
#include "tst_DeviceTreeStatus.moc"
