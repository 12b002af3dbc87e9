// Smoke tests of the device tree as a whole: a build from nodes, the rows it shows, hostile input
// that must not bring it down, a page that deletes rows from inside a signal, the check batch and
// an Init from a worker thread. The detailed behaviour has its own test programs beside this one.

#include "CLS_TreeSnapshot.h"
#include "CLS_WgtBaseTreeWidget.h"
#include "CLS_WgtDeviceTree.h"
#include "CLS_WgtTreeWidget.h"
#include "DevStructDefine.h"

#include <QApplication>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTreeWidgetItem>

#include <atomic>
#include <memory>

namespace {

// A channel-like record as the device layer lays it out: the channel number opens its own fields.
struct STRCT_SmokeChannel : public STRCT_VideoItem
{
    int m_iChannelNo = 0;
    int m_iTypeCode = 4;
    int GetType() override { return m_iTypeCode; }
};

class CLS_SmokeTree : public CLS_WgtDeviceTree
{
public:
    using CLS_WgtDeviceTree::CLS_WgtDeviceTree;
    using CLS_WgtDeviceTree::CreateItem;
    using CLS_WgtDeviceTree::m_qmapNodes;
    using CLS_WgtDeviceTree::m_qstrPicPath;
    using CLS_WgtDeviceTree::m_tmCheckedWatcher;
    using CLS_WgtDeviceTree::SlotInit;
};

CLS_CustomTreeNode MakeNode(const QString& _qstrTreeId, const QString& _qstrParentId, int _iType,
                            const QString& _qstrDevId, int _iSortNo = 0)
{
    CLS_CustomTreeNode node;
    node.m_qstrTreeId = _qstrTreeId;
    node.m_qstrTreeParentId = _qstrParentId;
    node.m_qstrDevId = _qstrDevId;
    node.m_qstrName = "name " + _qstrTreeId;
    node.m_iType = _iType;
    node.m_iSortNo = _iSortNo;
    return node;
}

CLS_WgtBaseTreeWidget* BaseOf(CLS_WgtDeviceTree& _tree)
{
    CLS_WgtTreeWidget* pPanel = _tree.findChild<CLS_WgtTreeWidget*>();
    return pPanel == nullptr ? nullptr : pPanel->GetBaseTree();
}

QString Rows(CLS_WgtDeviceTree& _tree)
{
    CLS_WgtBaseTreeWidget* pBase = BaseOf(_tree);
    return pBase == nullptr ? QString("<no base tree>") : CLS_TreeSnapshot::Snapshot(*pBase);
}

// custom_root_id(g1(c1,c2),g2(c3)) with c1 and c3 on one device id.
QMap<QString, CLS_CustomTreeNode> SampleNodes()
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    for (const CLS_CustomTreeNode& node :
         {MakeNode("g1", "custom_root_id", 2, "g1"), MakeNode("g2", "custom_root_id", 2, "g2"),
          MakeNode("c1", "g1", 4, "dev1", 1), MakeNode("c2", "g1", 4, "dev2", 2),
          MakeNode("c3", "g2", 4, "dev3", 1)})
        qmapNodes.insert(node.m_qstrTreeId, node);
    return qmapNodes;
}

} // namespace

class CLS_TestDeviceTreeSmoke : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void shouldShowOneRootRowForAnEmptyCustomTree();
    void shouldBuildRowsFromNodesAndFoldTheGroups();
    void shouldSizeColumnToContentsAgainAfterFolding();
    void shouldKeepThePagesModeOfEachColumnAfterFolding();
    void shouldSurviveHostileNodes();
    void shouldIgnoreAVariantOfTheWrongTypeInSlotInit();
    void shouldNotCrashWhenAPageDeletesTheRowInItsDblClickSlot();
    void shouldNotCrashWhenAPageClearsTheTreeInItsDblClickSlot();
    void shouldBatchCheckChangesOfOneWindowIntoOneSignal();
    void shouldKeepTheModelOfAnInitFromAWorkerThread();
    void shouldKeepNodeUntouchedWhenChannelIsNotAChildOfTheParent();
    void shouldTakeIconsFromTypeThenBindKind();
};

void CLS_TestDeviceTreeSmoke::initTestCase()
{
    // The batch signal's argument, for QSignalSpy.
    qRegisterMetaType<QVector<QPair<CLS_CustomTreeNode, bool>>>();
}

void CLS_TestDeviceTreeSmoke::cleanup()
{
    QCOMPARE(QApplication::topLevelWidgets().size(), 0);
}

void CLS_TestDeviceTreeSmoke::shouldShowOneRootRowForAnEmptyCustomTree()
{
    CLS_SmokeTree tree(nullptr, DEV_TREE_CUSTOM);
    QMap<QString, CLS_CustomTreeNode> qmapNodes;

    QCOMPARE(tree.Init(qmapNodes, "Root"), 0);

    QCOMPARE(Rows(tree), QString("custom_root_id"));
    QVERIFY(qmapNodes.contains("custom_root_id"));
    QCOMPARE(qmapNodes.value("custom_root_id").m_qstrName, QString("Root"));
    QTreeWidgetItem* pRoot = BaseOf(tree)->topLevelItem(0);
    QCOMPARE(pRoot->text(0), QString("Root"));
}

void CLS_TestDeviceTreeSmoke::shouldBuildRowsFromNodesAndFoldTheGroups()
{
    CLS_SmokeTree tree(nullptr, DEV_TREE_CUSTOM);
    QMap<QString, CLS_CustomTreeNode> qmapNodes = SampleNodes();

    QCOMPARE(tree.Init(qmapNodes, "Root"), 0);

    QCOMPARE(Rows(tree), QString("custom_root_id(g1(c1,c2),g2(c3))"));
    CLS_WgtBaseTreeWidget* pBase = BaseOf(tree);
    QVERIFY(pBase->GetNodeById("custom_root_id")->isExpanded());
    QVERIFY(!pBase->GetNodeById("g1")->isExpanded());
    QVERIFY(!pBase->GetNodeById("g2")->isExpanded());

    CLS_CustomTreeNode node;
    QCOMPARE(tree.GetItemByDevId("dev3", node), 0);
    QCOMPARE(node.m_qstrTreeId, QString("c3"));
    QVector<CLS_CustomTreeNode> qvecChildren;
    QCOMPARE(tree.GetChilds("g1", qvecChildren, false), 0);
    QCOMPARE(qvecChildren.size(), 2);
}

void CLS_TestDeviceTreeSmoke::shouldSizeColumnToContentsAgainAfterFolding()
{
    // The fold sizes the column once at its end; the header must be back in its own mode.
    CLS_SmokeTree tree(nullptr, DEV_TREE_CUSTOM);
    QMap<QString, CLS_CustomTreeNode> qmapNodes = SampleNodes();
    QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
    CLS_WgtBaseTreeWidget* pBase = BaseOf(tree);
    QCOMPARE(pBase->header()->sectionResizeMode(0), QHeaderView::ResizeToContents);
    pBase->expandAll();
    tree.ExpandHostItem();
    QCOMPARE(pBase->header()->sectionResizeMode(0), QHeaderView::ResizeToContents);
    QVERIFY(!pBase->GetNodeById("g1")->isExpanded());
    QVERIFY(pBase->GetNodeById("custom_root_id")->isExpanded());
}

void CLS_TestDeviceTreeSmoke::shouldKeepThePagesModeOfEachColumnAfterFolding()
{
    CLS_SmokeTree tree(nullptr, DEV_TREE_CUSTOM);
    QMap<QString, CLS_CustomTreeNode> qmapNodes = SampleNodes();
    QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
    CLS_WgtBaseTreeWidget* pBase = BaseOf(tree);
    QCOMPARE(pBase->header()->count(), 2);
    pBase->header()->setSectionResizeMode(1, QHeaderView::Fixed); // the page's choice for the tool bars
    pBase->expandAll();
    tree.ExpandHostItem();
    QCOMPARE(pBase->header()->sectionResizeMode(0), QHeaderView::ResizeToContents);
    QCOMPARE(pBase->header()->sectionResizeMode(1), QHeaderView::Fixed);
    QVERIFY(!pBase->GetNodeById("g1")->isExpanded());
}

void CLS_TestDeviceTreeSmoke::shouldSurviveHostileNodes()
{
    // Given nodes with empty ids, root ids in odd places, a parent cycle, a self parent, an unknown
    // parent and a device id shared by two nodes,
    CLS_SmokeTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QMap<QString, CLS_CustomTreeNode> qmapNodes = SampleNodes();
    qmapNodes.insert("empty", MakeNode("", "custom_root_id", 4, "devE"));
    qmapNodes.insert("", MakeNode("k", "custom_root_id", 4, "devK"));
    qmapNodes.insert("odd", MakeNode("favorite_root_id", "g1", 4, "devF"));
    qmapNodes.insert("x", MakeNode("x", "y", 4, "devX"));
    qmapNodes.insert("y", MakeNode("y", "x", 2, "devY"));
    qmapNodes.insert("self", MakeNode("self", "self", 2, "devS"));
    qmapNodes.insert("lost", MakeNode("lost", "nowhere", 4, "devL"));
    qmapNodes.insert("dup", MakeNode("dup", "g2", 4, "dev1"));

    // when the tree is built, used and cleared,
    QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
    const QString qstrRows = Rows(tree);

    // then the reachable part shows, the rest has no rows, and the last node of a device id wins.
    QVERIFY2(qstrRows.startsWith("custom_root_id("), qPrintable(qstrRows));
    QVERIFY2(!qstrRows.contains("lost") && !qstrRows.contains("self") && !qstrRows.contains("x"),
             qPrintable(qstrRows));
    CLS_CustomTreeNode node;
    QCOMPARE(tree.GetItemByDevId("dev1", node), 0);
    QCOMPARE(node.m_qstrTreeId, QString("dup"));
    QCOMPARE(tree.GetParent("lost", node), -1);
    tree.SetItemCheckStatus("custom_root_id", Qt::Checked, true);
    tree.SetItemCheckStatus(QString(), Qt::Unchecked, true);
    QVector<CLS_CustomTreeNode> qvecNodes;
    tree.GetCheckedChannel(qvecNodes);
    tree.GetChilds("custom_root_id", qvecNodes, true);
    tree.Clear();
    QCOMPARE(Rows(tree), QString());
    QCOMPARE(tree.GetItemById("c1", node), -1);
}

void CLS_TestDeviceTreeSmoke::shouldIgnoreAVariantOfTheWrongTypeInSlotInit()
{
    CLS_SmokeTree tree(nullptr, DEV_TREE_CUSTOM);
    QMap<QString, CLS_CustomTreeNode> qmapNodes = SampleNodes();
    QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
    const QString qstrBefore = Rows(tree);

    tree.SlotInit("custom_root_id", QVariant());
    tree.SlotInit("custom_root_id", QVariant(QString("not rows")));
    tree.SlotInit("custom_root_id", QVariant::fromValue(QVector<CLS_CustomTreeNode>()));

    QCOMPARE(Rows(tree), qstrBefore);
}

void CLS_TestDeviceTreeSmoke::shouldNotCrashWhenAPageDeletesTheRowInItsDblClickSlot()
{
    CLS_SmokeTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QMap<QString, CLS_CustomTreeNode> qmapNodes = SampleNodes();
    QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
    QSignalSpy spyChecked(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChanged);
    connect(&tree, &CLS_WgtDeviceTree::SignDblClicked, &tree,
            [&tree](CLS_CustomTreeNode _node) { tree.DeleteItem(_node.m_qstrTreeId); });

    CLS_WgtBaseTreeWidget* pBase = BaseOf(tree);
    QTreeWidgetItem* pRow = pBase->GetNodeById("c1");
    QVERIFY(pRow != nullptr);
    emit pBase->itemDoubleClicked(pRow, 0);

    QCOMPARE(Rows(tree), QString("custom_root_id(g1(c2),g2(c3))"));
    QCOMPARE(spyChecked.count(), 0); // the toggle met an id that has gone
}

void CLS_TestDeviceTreeSmoke::shouldNotCrashWhenAPageClearsTheTreeInItsDblClickSlot()
{
    CLS_SmokeTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QMap<QString, CLS_CustomTreeNode> qmapNodes = SampleNodes();
    QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
    connect(&tree, &CLS_WgtDeviceTree::SignDblClicked, &tree, [&tree](CLS_CustomTreeNode) { tree.Clear(); });

    QSignalSpy spyDbl(&tree, &CLS_WgtDeviceTree::SignDblClicked);
    CLS_WgtBaseTreeWidget* pBase = BaseOf(tree);
    emit pBase->itemDoubleClicked(pBase->GetNodeById("c2"), 0);

    QCOMPARE(spyDbl.count(), 1);
    QCOMPARE(Rows(tree), QString());
}

void CLS_TestDeviceTreeSmoke::shouldBatchCheckChangesOfOneWindowIntoOneSignal()
{
    CLS_SmokeTree tree(nullptr, DEV_TREE_CUSTOM, false, true);
    QMap<QString, CLS_CustomTreeNode> qmapNodes = SampleNodes();
    QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
    QSignalSpy spyOne(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChanged);
    QSignalSpy spyBatch(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChangedQueue);

    tree.SetItemCheckStatus("c1", Qt::Checked, true);
    tree.SetItemCheckStatus("c1", Qt::Unchecked, true);
    tree.SetItemCheckStatus("g2", Qt::Checked, true); // the group is not reported, its child is

    QCOMPARE(spyOne.count(), 3);
    QVERIFY(tree.m_tmCheckedWatcher.isActive());
    QTRY_COMPARE(spyBatch.count(), 1);
    const auto qvecBatch = spyBatch.takeFirst().at(0).value<QVector<QPair<CLS_CustomTreeNode, bool>>>();
    QStringList qlstBatch;
    for (const auto& pair : qvecBatch)
        qlstBatch << pair.first.m_qstrTreeId + (pair.second ? ":1" : ":0");
    QCOMPARE(qlstBatch.join(" "), QString("c1:1 c1:0 c3:1"));
    QVERIFY(!tree.m_tmCheckedWatcher.isActive());
}

void CLS_TestDeviceTreeSmoke::shouldKeepTheModelOfAnInitFromAWorkerThread()
{
    CLS_SmokeTree tree(nullptr, DEV_TREE_CUSTOM);
    QMap<QString, CLS_CustomTreeNode> qmapOld;
    qmapOld.insert("old", MakeNode("old", "custom_root_id", 4, "devOld"));
    QCOMPARE(tree.Init(qmapOld, "Old"), 0);

    int iResult = -2;
    // The flag's release and acquire order the worker's writes before the reads below where
    // ThreadSanitizer can see it (QThread::wait() does it through Qt's own lock).
    std::atomic<bool> blDone{false};
    std::unique_ptr<QThread> pWorker(QThread::create([&tree, &iResult, &blDone] {
        QMap<QString, CLS_CustomTreeNode> qmapNodes = SampleNodes();
        iResult = tree.Init(qmapNodes, "Root");
        blDone.store(true, std::memory_order_release);
    }));
    pWorker->start();
    QVERIFY(pWorker->wait(5000));
    QVERIFY(blDone.load(std::memory_order_acquire));
    QCOMPARE(iResult, 0);

    QTRY_COMPARE(Rows(tree), QString("custom_root_id(g1(c1,c2),g2(c3))"));
    CLS_CustomTreeNode node;
    QCOMPARE(tree.GetItemById("c2", node), 0);
    QCOMPARE(tree.GetItemById("old", node), -1);
    QCOMPARE(tree.GetItemByDevId("devOld", node), -1);
}

void CLS_TestDeviceTreeSmoke::shouldKeepNodeUntouchedWhenChannelIsNotAChildOfTheParent()
{
    CLS_SmokeTree tree(nullptr, DEV_TREE_CUSTOM);
    QMap<QString, CLS_CustomTreeNode> qmapNodes = SampleNodes();
    QCOMPARE(tree.Init(qmapNodes, "Root"), 0);

    CLS_CustomTreeNode node = MakeNode("marker", "", 7, "marker");
    QCOMPARE(tree.GetItemByChannelId("g1", "dev3", node), 0);
    QCOMPARE(node.m_qstrTreeId, QString("marker"));
    QCOMPARE(tree.GetItemByChannelId("g1", "dev2", node), 0);
    QCOMPARE(node.m_qstrTreeId, QString("c2"));
    QCOMPARE(tree.GetItemByChannelId("nowhere", "dev2", node), -1);
}

void CLS_TestDeviceTreeSmoke::shouldTakeIconsFromTypeThenBindKind()
{
    CLS_SmokeTree tree(nullptr, DEV_TREE_RESOURCE);
    const QString qstrPic = tree.m_qstrPicPath;
    QVERIFY2(qstrPic.endsWith("/WgtTreeWidget/images/"), qPrintable(qstrPic));

    STRCT_SmokeChannel stHost;
    stHost.m_iTypeCode = 3;
    stHost.m_strId = "h";
    stHost.m_strTreeId = "h";
    stHost.m_iStatus = 2;
    CLS_CustomTreeNode node;
    CLS_TreeItem clsRow;
    QCOMPARE(tree.CreateItem(clsRow, node, &stHost, QString()), 0);
    QCOMPARE(clsRow.m_qstrIcon, qstrPic + "host_online.png");

    auto spCar = std::make_shared<STRCT_SmokeChannel>();
    spCar->m_strId = "car";
    spCar->m_strTreeId = "t_car";
    spCar->m_iChannelNo = 7;
    spCar->m_iStatus = 2;
    spCar->m_iDevBindType = 3;
    node = CLS_CustomTreeNode();
    clsRow = CLS_TreeItem();
    QCOMPARE(tree.CreateItem(clsRow, node, std::weak_ptr<STRCT_VideoItem>(spCar), QString()), 0);
    QCOMPARE(clsRow.m_qstrIcon, qstrPic + "carerr_item.png");
    QCOMPARE(clsRow.m_iSortNo, 7);
    QCOMPARE(node.m_iChannelNo, 7);
    QVERIFY(clsRow.m_qvecButtons.isEmpty());
}

QTEST_MAIN(CLS_TestDeviceTreeSmoke)
#include "tst_DeviceTreeSmoke.moc"
