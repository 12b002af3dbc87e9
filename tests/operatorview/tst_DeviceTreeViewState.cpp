// The view state of the device tree: expanded rows, current row and first row in view saved as
// bytes and put back, after a rebuild too; ids that are gone; bytes that are not a state; and the
// state kept across Init while SetKeepViewState is on.

#include "CLS_OperatorViewTestUtil.h"

#include "CLS_DeviceTreeViewState.h"

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtTest>

using namespace CLS_OperatorViewTestUtil;

namespace {

// root: s0 .. s(n-1) (groups), each with channels s<i>c0 .. s<i>c(m-1)
QMap<QString, CLS_CustomTreeNode> SiteNodes(int _iSites, int _iChannels)
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    for (int i = 0; i < _iSites; ++i) {
        const QString qstrSite = QString("s%1").arg(i);
        Add(qmapNodes, MakeNode(qstrSite, "custom_root_id", 2, QString(), i));
        for (int j = 0; j < _iChannels; ++j)
            Add(qmapNodes, MakeNode(QString("%1c%2").arg(qstrSite).arg(j), qstrSite, 4,
                                    QString("D%1_%2").arg(i).arg(j), j, j % 2));
    }
    return qmapNodes;
}

// Ids of the expanded rows that have children (a leaf's flag opens nothing), sorted.
QStringList ExpandedIds(CLS_WgtDeviceTree& _tree)
{
    QStringList qlstIds;
    QMap<QString, CLS_TreeItem> qmapItems;
    BaseOf(_tree)->GetAllItems(qmapItems);
    for (auto it = qmapItems.cbegin(); it != qmapItems.cend(); ++it) {
        QTreeWidgetItem* pRow = NodeOf(_tree, it.key());
        if (pRow->childCount() > 0 && pRow->isExpanded())
            qlstIds << it.key();
    }
    qlstIds.sort();
    return qlstIds;
}

QString CurrentId(CLS_WgtDeviceTree& _tree)
{
    QTreeWidgetItem* pCurrent = BaseOf(_tree)->currentItem();
    return pCurrent == nullptr ? QString() : CLS_TreeSnapshot::NodeId(pCurrent);
}

QString TopId(CLS_WgtDeviceTree& _tree)
{
    QTreeWidgetItem* pTop = BaseOf(_tree)->itemAt(QPoint(0, 0));
    return pTop == nullptr ? QString() : CLS_TreeSnapshot::NodeId(pTop);
}

bool ShowSmall(CLS_WgtDeviceTree& _tree)
{
    _tree.resize(300, 200);
    _tree.show();
    return QTest::qWaitForWindowExposed(&_tree);
}

} // namespace

class tst_DeviceTreeViewState : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QVERIFY2(LeakedWindows().isEmpty(), qPrintable(LeakedWindows().join(", "))); }

    void restoreGivesBackExpandedRowsCurrentRowAndFirstRow()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        QMap<QString, CLS_CustomTreeNode> qmapNodes = SiteNodes(20, 8);
        QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
        QVERIFY(ShowSmall(tree));
        PanelOf(tree)->SetItemExpandStatus("s3", TREE_EXPAND);
        PanelOf(tree)->SetItemExpandStatus("s12", TREE_EXPAND);
        tree.SetCurrentItem("s12c5");
        BaseOf(tree)->scrollToItem(NodeOf(tree, "s3c2"), QAbstractItemView::PositionAtTop);
        const QStringList qlstExpanded = ExpandedIds(tree);
        QCOMPARE(qlstExpanded, QStringList({"custom_root_id", "s12", "s3"}));
        QCOMPARE(TopId(tree), QString("s3c2"));
        const QByteArray qbaState = tree.SaveViewState();

        // Everything else: another row open, another current row, back at the top.
        PanelOf(tree)->SetItemExpandStatus("s3", TREE_COLLAPSE);
        PanelOf(tree)->SetItemExpandStatus("s7", TREE_EXPAND);
        tree.SetCurrentItem("s0");
        BaseOf(tree)->scrollToTop();
        QSignalSpy spySelected(&tree, &CLS_WgtDeviceTree::SignSelected);

        QCOMPARE(tree.RestoreViewState(qbaState), 0);
        QCOMPARE(ExpandedIds(tree), qlstExpanded);
        QCOMPARE(CurrentId(tree), QString("s12c5"));
        QCOMPARE(TopId(tree), QString("s3c2"));
        QCOMPARE(spySelected.count(), 0); // no signal for the restored current row
    }

    void restoreAfterARebuild()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        QMap<QString, CLS_CustomTreeNode> qmapNodes = SiteNodes(6, 4);
        QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
        PanelOf(tree)->SetItemExpandStatus("s1", TREE_EXPAND);
        PanelOf(tree)->SetItemExpandStatus("s4", TREE_EXPAND);
        tree.SetCurrentItem("s4c3");
        const QByteArray qbaState = tree.SaveViewState();

        qmapNodes = SiteNodes(6, 4);
        QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
        QCOMPARE(ExpandedIds(tree), QStringList({"custom_root_id"})); // Init folds everything
        QCOMPARE(tree.RestoreViewState(qbaState), 0);
        QCOMPARE(ExpandedIds(tree), QStringList({"custom_root_id", "s1", "s4"}));
        QCOMPARE(CurrentId(tree), QString("s4c3"));
    }

    void exactlyTheSavedRowsAreExpandedAfterwards()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        QMap<QString, CLS_CustomTreeNode> qmapNodes = SiteNodes(4, 2);
        QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
        // The root folded, a group open below it, the current row inside a folded group.
        PanelOf(tree)->SetItemExpandStatus("s2", TREE_EXPAND);
        tree.SetCurrentItem("s1c1");
        PanelOf(tree)->SetItemExpandStatus("s1", TREE_COLLAPSE);
        PanelOf(tree)->SetItemExpandStatus("custom_root_id", TREE_COLLAPSE);
        QCOMPARE(ExpandedIds(tree), QStringList({"s2"}));
        const QByteArray qbaState = tree.SaveViewState();

        BaseOf(tree)->expandAll();
        tree.SetCurrentItem("s3");
        QCOMPARE(tree.RestoreViewState(qbaState), 0);
        QCOMPARE(ExpandedIds(tree), QStringList({"s2"}));
        QCOMPARE(CurrentId(tree), QString("s1c1"));
    }

    void idsThatAreGoneArePassedOver()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        QMap<QString, CLS_CustomTreeNode> qmapNodes = SiteNodes(5, 3);
        QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
        PanelOf(tree)->SetItemExpandStatus("s2", TREE_EXPAND);
        PanelOf(tree)->SetItemExpandStatus("s4", TREE_EXPAND);
        tree.SetCurrentItem("s4c1");
        const QByteArray qbaState = tree.SaveViewState();

        // The device list changed: site 4 went.
        qmapNodes = SiteNodes(4, 3);
        QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
        tree.SetCurrentItem("s0c0");
        QSignalSpy spySelected(&tree, &CLS_WgtDeviceTree::SignSelected);
        QCOMPARE(tree.RestoreViewState(qbaState), 0);
        QCOMPARE(ExpandedIds(tree), QStringList({"custom_root_id", "s2"}));
        QCOMPARE(CurrentId(tree), QString("s0c0")); // the saved row is gone: the current one stays
        QCOMPARE(spySelected.count(), 0);
    }

    void bytesThatAreNotAStateChangeNothing_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        CLS_DeviceTreeViewState stState;
        stState.m_qstrCurrentId = "s1c1";
        stState.m_qstrTopId = "s1";
        stState.m_qsetExpanded = {"s1", "custom_root_id"};
        const QByteArray qbaGood = stState.Encode();
        QTest::newRow("empty") << QByteArray();
        for (int i = 1; i < qbaGood.size(); ++i)
            QTest::newRow(qPrintable(QString("cut to %1").arg(i))) << qbaGood.left(i);
        QTest::newRow("one byte more") << qbaGood + 'x';
        QByteArray qbaVersion = qbaGood;
        qbaVersion[4] = 2;
        QTest::newRow("unknown version") << qbaVersion;
        QByteArray qbaMagic = qbaGood;
        qbaMagic[0] = 'X';
        QTest::newRow("other magic") << qbaMagic;
        QByteArray qbaCount = qbaGood;
        qbaCount[5] = char(0x7f); // a count of ids far beyond the bytes
        QTest::newRow("count too big") << qbaCount;
        QByteArray qbaLength = qbaGood;
        qbaLength[9] = char(0xff); // the current id's length beyond the bytes
        QTest::newRow("length too big") << qbaLength;
        QTest::newRow("text") << QByteArray("expanded=s1;current=s1c1");
        QRandomGenerator random(24);
        for (int i = 0; i < 20; ++i) {
            QByteArray qbaRandom(int(random.bounded(64)), Qt::Uninitialized);
            for (char& c : qbaRandom)
                c = char(random.bounded(256));
            if (i % 2 == 0)
                qbaRandom.replace(0, qMin(4, qbaRandom.size()), "WTVS"); // past the magic
            QTest::newRow(qPrintable(QString("random %1").arg(i))) << qbaRandom;
        }
    }

    void bytesThatAreNotAStateChangeNothing()
    {
        QFETCH(QByteArray, bytes);
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        QMap<QString, CLS_CustomTreeNode> qmapNodes = SiteNodes(3, 2);
        QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
        PanelOf(tree)->SetItemExpandStatus("s2", TREE_EXPAND);
        tree.SetCurrentItem("s2c0");
        const QStringList qlstExpanded = ExpandedIds(tree);
        QCOMPARE(tree.RestoreViewState(bytes), -1);
        QCOMPARE(ExpandedIds(tree), qlstExpanded);
        QCOMPARE(CurrentId(tree), QString("s2c0"));
    }

    void encodeAndDecodeRoundTrip()
    {
        CLS_DeviceTreeViewState stState;
        stState.m_qstrCurrentId = QString::fromUtf8("Kamera Nord \xc3\xbc");
        stState.m_qstrTopId = QString();
        stState.m_qsetExpanded = {"a", "b", QString::fromUtf8("\xe5\x8c\x97\xe9\x97\xa8")};
        const QByteArray qbaBytes = stState.Encode();
        QVERIFY(qbaBytes.startsWith("WTVS\x01"));
        CLS_DeviceTreeViewState stRead;
        QCOMPARE(CLS_DeviceTreeViewState::Decode(qbaBytes, stRead), 0);
        QCOMPARE(stRead.m_qstrCurrentId, stState.m_qstrCurrentId);
        QCOMPARE(stRead.m_qstrTopId, stState.m_qstrTopId);
        QCOMPARE(stRead.m_qsetExpanded, stState.m_qsetExpanded);
        QCOMPARE(stRead.Encode(), qbaBytes); // one state, one form
    }

    void keptStateComesBackAfterTheNextInit()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        QVERIFY(!tree.GetKeepViewState());
        tree.SetKeepViewState(true);
        QVERIFY(tree.GetKeepViewState());
        QMap<QString, CLS_CustomTreeNode> qmapNodes = SiteNodes(20, 8);
        QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
        QVERIFY(ShowSmall(tree));
        PanelOf(tree)->SetItemExpandStatus("s5", TREE_EXPAND);
        PanelOf(tree)->SetItemExpandStatus("s9", TREE_EXPAND);
        tree.SetCurrentItem("s9c7");
        BaseOf(tree)->scrollToItem(NodeOf(tree, "s5c1"), QAbstractItemView::PositionAtTop);
        QSignalSpy spySelected(&tree, &CLS_WgtDeviceTree::SignSelected);

        // The device list changed: a site more.
        qmapNodes = SiteNodes(21, 8);
        QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
        QCOMPARE(ExpandedIds(tree), QStringList({"custom_root_id", "s5", "s9"}));
        QCOMPARE(CurrentId(tree), QString("s9c7"));
        QCOMPARE(TopId(tree), QString("s5c1"));
        QVERIFY2(spySelected.isEmpty() || CurrentId(tree) == "s9c7", "the restore selects silently");

        // A Clear in between: the Init after it gives back what was open before the Clear.
        tree.Clear();
        QCOMPARE(Rows(tree), QString());
        qmapNodes = SiteNodes(21, 8);
        QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
        QCOMPARE(ExpandedIds(tree), QStringList({"custom_root_id", "s5", "s9"}));
        QCOMPARE(CurrentId(tree), QString("s9c7"));
    }

    void withoutKeepEveryInitFoldsAndForgets()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        QMap<QString, CLS_CustomTreeNode> qmapNodes = SiteNodes(4, 2);
        QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
        PanelOf(tree)->SetItemExpandStatus("s1", TREE_EXPAND);
        tree.SetCurrentItem("s1c1");
        qmapNodes = SiteNodes(4, 2);
        QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
        QCOMPARE(ExpandedIds(tree), QStringList({"custom_root_id"}));
        QCOMPARE(CurrentId(tree), QString());

        // Switched off again, the kept state is forgotten.
        tree.SetKeepViewState(true);
        PanelOf(tree)->SetItemExpandStatus("s2", TREE_EXPAND);
        tree.Clear();
        tree.SetKeepViewState(false);
        qmapNodes = SiteNodes(4, 2);
        QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
        QCOMPARE(ExpandedIds(tree), QStringList({"custom_root_id"}));
    }

    void emptyTreeSavesAStateThatRestoresNothing()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        const QByteArray qbaEmpty = tree.SaveViewState();
        QVERIFY(!qbaEmpty.isEmpty());
        QMap<QString, CLS_CustomTreeNode> qmapNodes = SiteNodes(2, 2);
        QCOMPARE(tree.Init(qmapNodes, "Root"), 0);
        QCOMPARE(tree.RestoreViewState(qbaEmpty), 0);
        QCOMPARE(ExpandedIds(tree), QStringList()); // exactly the saved rows: none
    }
};

QTEST_MAIN(tst_DeviceTreeViewState)
#include "tst_DeviceTreeViewState.moc"
