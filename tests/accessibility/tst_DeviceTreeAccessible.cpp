// A device tree's rows in words, as a reader hears them: kind and state of each row following its
// icon, the counts of a row with channels below it when counts are shown, words that follow a
// status batch and the language, and the page's own name for the tree.

#include "CLS_OperatorViewTestUtil.h"

#include "CLS_DeviceTreeAccessible.h"
#include "CLS_WgtTranslator.h"

#include <QAccessible>
#include <QtTest>

using namespace CLS_OperatorViewTestUtil;

namespace {

// The description a reader gets for the name cell of the row with tree id @p _qstrId.
QString Words(CLS_TestDeviceTree& _tree, const QString& _qstrId)
{
    QTreeWidgetItem* pRow = NodeOf(_tree, _qstrId);
    if (pRow == nullptr)
        return "<no row>";
    return pRow->data(0, Qt::AccessibleDescriptionRole).toString();
}

QString TreeName(CLS_WgtDeviceTree& _tree)
{
    QAccessibleInterface* pTree = QAccessible::queryAccessibleInterface(BaseOf(_tree));
    return pTree != nullptr ? pTree->text(QAccessible::Name) : QString("<no interface>");
}

} // namespace

class tst_DeviceTreeAccessible : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCOMPARE(CLS_WgtTranslator::SetLanguage(QLocale(QLocale::English, QLocale::UnitedStates)), 0);
    }
    void cleanup()
    {
        QCOMPARE(CLS_WgtTranslator::SetLanguage(QLocale(QLocale::English, QLocale::UnitedStates)), 0);
        QVERIFY2(LeakedWindows().isEmpty(), qPrintable(LeakedWindows().join(", ")));
    }

    void shouldSayEachRowsKindAndStateAsItsIconShowsThem()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        QCOMPARE(Words(tree, "resource_root_id"), QString("Group"));
        QCOMPARE(Words(tree, "h1"), QString("Recorder, on line"));
        QCOMPARE(Words(tree, "c1"), QString("Channel, on line"));
        QCOMPARE(Words(tree, "c2"), QString("Channel, off line"));
        QCOMPARE(Words(tree, "c6"), QString("Channel, no video"));
        QCOMPARE(Words(tree, "a1"), QString("Alarm input"));
    }

    void shouldSayEveryKindAndTheBoundKindsFault_data()
    {
        QTest::addColumn<int>("iType");
        QTest::addColumn<int>("iStatus");
        QTest::addColumn<int>("iBindType");
        QTest::addColumn<QString>("qstrWords");
        QTest::newRow("host off") << 3 << 0 << -1 << "Recorder, off line";
        QTest::newRow("host status 2") << 3 << 2 << -1 << "Recorder, on line";
        QTest::newRow("alarm output") << 6 << 1 << -1 << "Alarm output";
        QTest::newRow("decoder") << 12 << 0 << -1 << "Decoder";
        QTest::newRow("decoder output") << 13 << 1 << -1 << "Decoder output";
        QTest::newRow("decoder input") << 17 << 1 << -1 << "Decoder input";
        QTest::newRow("door server") << 48 << 1 << -1 << "Door server";
        QTest::newRow("unknown type") << 99 << 1 << -1 << "Resource";
        QTest::newRow("car on line") << 4 << 1 << 3 << "Channel, on line";
        QTest::newRow("car status 2") << 4 << 2 << 3 << "Channel, fault";
        QTest::newRow("pad off line") << 4 << 0 << 2 << "Channel, fault";
        QTest::newRow("bind type 1 is no bound kind") << 4 << 0 << 1 << "Channel, off line";
    }

    void shouldSayEveryKindAndTheBoundKindsFault()
    {
        QFETCH(int, iType);
        QFETCH(int, iStatus);
        QFETCH(int, iBindType);
        QFETCH(QString, qstrWords);
        const CLS_CustomTreeNode node = MakeNode("n", "g", iType, "N", 1, iStatus, iBindType);
        const QString qstrState = CLS_DeviceTreeAccessible::StateText(node);
        const QString qstrKind = CLS_DeviceTreeAccessible::KindText(node);
        QCOMPARE(qstrState.isEmpty() ? qstrKind : qstrKind + ", " + qstrState, qstrWords);
    }

    void shouldAddTheCountsOfARowWithChannelsWhenCountsAreShown()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        QCOMPARE(Words(tree, "h1"), QString("Recorder, on line"));
        tree.SetShowChannelCounts(true);
        QCOMPARE(Words(tree, "resource_root_id"), QString("Group, 2 of 5 channels on line"));
        QCOMPARE(Words(tree, "h1"), QString("Recorder, on line, 1 of 2 channels on line"));
        QCOMPARE(Words(tree, "c1"), QString("Channel, on line")); // nothing below a channel
        tree.SetShowChannelCounts(false);
        QCOMPARE(Words(tree, "resource_root_id"), QString("Group"));
    }

    void shouldFollowAStatusBatch()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        tree.SetShowChannelCounts(true);
        QCOMPARE(tree.UpdateAllChannelsStatus(Batch({{"C2", 1}, {"C1", 0}})), 0);
        QCOMPARE(Words(tree, "c2"), QString("Channel, on line"));
        QCOMPARE(Words(tree, "c1"), QString("Channel, off line"));
        QCOMPARE(Words(tree, "h1"), QString("Recorder, on line, 1 of 2 channels on line"));
    }

    void shouldSayThatARowIsPartlyChecked()
    {
        // Qt's cells report no mixed check state to a reader: the words do.
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE, false, true);
        QVERIFY(BuildResource(tree));
        tree.SetItemCheckStatus("c1", Qt::Checked);
        QCOMPARE(CheckOf(tree, "h1"), Qt::PartiallyChecked);
        QCOMPARE(Words(tree, "h1"), QString("Recorder, on line, partly checked"));
        QCOMPARE(Words(tree, "c1"), QString("Channel, on line")); // checked: Qt says so itself
        tree.SetItemCheckStatus("c2", Qt::Checked);
        tree.SetItemCheckStatus("a1", Qt::Checked);
        QCOMPARE(CheckOf(tree, "h1"), Qt::Checked);
        QCOMPARE(Words(tree, "h1"), QString("Recorder, on line"));
    }

    void shouldSayTheGroupsOfACustomTree()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
        QVERIFY(BuildCustom(tree));
        tree.SetShowChannelCounts(true);
        QCOMPARE(Words(tree, "g2"), QString("Group, 0 of 1 channels on line"));
        QCOMPARE(Words(tree, "g4"), QString("Group")); // no channels below it
        QCOMPARE(Words(tree, "c3"), QString("Channel, on line"));
    }

    void shouldSayTheWordsInTheChosenLanguage()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        QCOMPARE(CLS_WgtTranslator::SetLanguage(QLocale(QLocale::German, QLocale::Germany)), 0);
        QCOMPARE(Words(tree, "c2"), QString("Kanal, offline"));
        QCOMPARE(Words(tree, "c6"), QString("Kanal, kein Video"));
        QTRY_COMPARE(TreeName(tree), QString("Ressourcenbaum"));
    }

    void shouldTakeThePagesNameForTheTree()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_FAVORITE);
        QCOMPARE(TreeName(tree), QString("Resource tree"));
        tree.SetAccessibleTreeName("Favourites");
        QCOMPARE(TreeName(tree), QString("Favourites"));
        tree.SetAccessibleTreeName(QString());
        QCOMPARE(TreeName(tree), QString("Resource tree"));
    }

    void shouldLeaveARowWithoutANodeToTheDefaultWords()
    {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QVERIFY(BuildResource(tree));
        // A node taken out of the model behind the tree's back: its row keeps the default words.
        tree.m_qmapNodes.remove("h2");
        QCOMPARE(Words(tree, "h2"), QString("Group, 1 rows"));
        QCOMPARE(Words(tree, "c3"), QString("Channel, off line"));
    }
};

QTEST_MAIN(tst_DeviceTreeAccessible)
#include "tst_DeviceTreeAccessible.moc"
