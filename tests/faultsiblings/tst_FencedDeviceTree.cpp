// A device tree over a device layer that throws. A build whose fetch throws fails before anything
// is cleared; a lookup of the changes that throws leaves its resource out; a polling tree survives
// random throws and agrees with the device layer once they stop. Installation: hosts "h1", "h2"
// with channels "h1c1", "h1c2", ...; the custom tree holds "n_<channel>" below group "g1".

#include "CLS_DevManage.h"
#include "CLS_LogRecords.h"
#include "CLS_TestDeviceTree.h"
#include "CLS_WgtDeviceTree.h"
#include "FaultDevManageControl.h"
#include "Logger.h"
#include "LxAppManager.h"
#include "LxAppManagerControl.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QtTest>

#include <memory>

Q_DECLARE_METATYPE(n_DevTreeType)

namespace {

// Log lines "level|module|function|text" since the last call.
QStringList TakeLog()
{
    return CLS_LogRecords::Lines(CLS_LogRecords::Take());
}

QString ThrowLine(const QString& _qstrFunction, const QString& _qstrOperation)
{
    return QString("3|WgtTreeWidget|%1|sibling call threw operation:[%2] exception:[fault %2]")
        .arg(_qstrFunction, _qstrOperation);
}

// Channels whose node status differs from the device layer's, as "id:node/layer" words.
QString StatusMismatches(CLS_WgtDeviceTree& _tree, int _iHosts, int _iChannels)
{
    QStringList qlstWords;
    for (int iHost = 1; iHost <= _iHosts; ++iHost) {
        for (int iChannel = 1; iChannel <= _iChannels; ++iChannel) {
            const QString qstrId = QString("h%1c%2").arg(iHost).arg(iChannel);
            CLS_CustomTreeNode node;
            const int iLayer = FaultCtl_GetStatus(qstrId.toUtf8().constData());
            if (_tree.GetItemById(qstrId, node) < 0)
                qlstWords << qstrId + ":none/" + QString::number(iLayer);
            else if (node.m_iStatus != iLayer)
                qlstWords << QString("%1:%2/%3").arg(qstrId).arg(node.m_iStatus).arg(iLayer);
        }
    }
    return qlstWords.join(' ');
}

} // namespace

using CLS_DevTreeTestUtil::Rows;

class tst_FencedDeviceTree : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // First binds on the GUI thread, before any status thread runs.
        Logger::GetModuleFun("PrintLog", "");
        DevManage::GetModuleFun("GetResourceTree", "");
        LxAppManager::GetModuleFun("GetApp", "");
    }

    void init()
    {
        FaultCtl_Reset();
        FaultCtl_Load(2, 2);
        LxAppManagerCtl_Reset();
        TakeLog();
    }

    void shouldFailInitAndKeepTheTreeWhenAFetchThrows_data();
    void shouldFailInitAndKeepTheTreeWhenAFetchThrows();
    void shouldFailAnAddByIdWhenTheResourceFetchThrows();
    void shouldLeaveOutTheResourceWhoseLookupThrows();
    void shouldAgreeWithTheDeviceLayerAfterRandomThrowsWhilePolling();
};

void tst_FencedDeviceTree::shouldFailInitAndKeepTheTreeWhenAFetchThrows_data()
{
    QTest::addColumn<n_DevTreeType>("treeType");
    QTest::addColumn<QString>("operation");
    QTest::addColumn<QString>("missingLine"); // the failure's own record, if it has one

    QTest::newRow("resource tree object") << DEV_TREE_RESOURCE << "GetResourceTree"
                                          << "3|WgtTreeWidget|Init|nullptr == pResourceTree ";
    QTest::newRow("all resources") << DEV_TREE_RESOURCE << "GetAllItems" << QString();
    QTest::newRow("custom tree object") << DEV_TREE_CUSTOM << "GetCustomTree"
                                        << "3|WgtTreeWidget|Init|nullptr == pCustomTree ";
    QTest::newRow("all nodes") << DEV_TREE_CUSTOM << "GetAllNodes" << QString();
    QTest::newRow("favourites object") << DEV_TREE_FAVORITE << "GetCustomTree"
                                       << "3|WgtTreeWidget|Init|nullptr == pCustomTree ";
    QTest::newRow("favourite nodes") << DEV_TREE_FAVORITE << "GetNodesOfRoot" << QString();
}

void tst_FencedDeviceTree::shouldFailInitAndKeepTheTreeWhenAFetchThrows()
{
    QFETCH(n_DevTreeType, treeType);
    QFETCH(QString, operation);
    QFETCH(QString, missingLine);

    // Given a built tree
    CLS_WgtDeviceTree tree(nullptr, treeType);
    QCOMPARE(tree.Init(QStringLiteral("All")), 0);
    const QString qstrRows = Rows(tree);
    QVERIFY2(qstrRows.contains("c1"), qPrintable(qstrRows));
    TakeLog();

    // When the next build's fetch throws
    FaultCtl_ThrowHere(operation.toUtf8().constData(), 0, 1, 0);
    QCOMPARE(tree.Init(QStringLiteral("All")), -1);

    // Then nothing was cleared, and the throw is logged with the failure's own record
    QCOMPARE(Rows(tree), qstrRows);
    QStringList qlstExpected{ThrowLine("Init", operation)};
    if (!missingLine.isEmpty())
        qlstExpected << missingLine;
    QCOMPARE(TakeLog(), qlstExpected);

    // And the build after it goes through
    QCOMPARE(tree.Init(QStringLiteral("All")), 0);
    QCOMPARE(Rows(tree), qstrRows);
}

void tst_FencedDeviceTree::shouldFailAnAddByIdWhenTheResourceFetchThrows()
{
    CLS_WgtDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
    QCOMPARE(tree.Init(QStringLiteral("All")), 0);
    QCOMPARE(tree.DeleteItem("h1c2"), 0);
    TakeLog();

    FaultCtl_ThrowHere("GetAllItems", 0, 1, 0);
    QCOMPARE(tree.AddItem(QStringLiteral("h1c2")), -1);
    CLS_CustomTreeNode node;
    QCOMPARE(tree.GetItemById("h1c2", node), -1);
    QCOMPARE(TakeLog(), QStringList({ThrowLine("GetVideoData", "GetAllItems")}));

    QCOMPARE(tree.AddItem(QStringLiteral("h1c2")), 0);
    QCOMPARE(tree.GetItemById("h1c2", node), 0);
}

void tst_FencedDeviceTree::shouldLeaveOutTheResourceWhoseLookupThrows()
{
    CLS_WgtDeviceTree tree(nullptr, DEV_TREE_CUSTOM);
    QCOMPARE(tree.Init(QStringLiteral("All")), 0);
    QCOMPARE(tree.DeleteItem("n_h1c1"), 0);
    QCOMPARE(tree.DeleteItem("n_h1c2"), 0);
    TakeLog();

    // GetVideoData looks the nodes up in key order: n_h1c1 first, and its lookup throws.
    FaultCtl_ThrowHere("GetItem", 0, 1, 0);
    QCOMPARE(tree.AddItems(QVector<QString>{"n_h1c1", "n_h1c2"}, false), 1);
    CLS_CustomTreeNode node;
    QCOMPARE(tree.GetItemByDevId("h1c1", node), -1);
    QCOMPARE(tree.GetItemByDevId("h1c2", node), 0);
    QCOMPARE(TakeLog(), QStringList({ThrowLine("GetVideoData", "GetItem")}));

    // The fetch of the custom tree itself throwing fails the add.
    FaultCtl_ThrowHere("GetAllNodes", 0, 1, 0);
    QCOMPARE(tree.AddItem(QStringLiteral("n_h1c1")), -1);
    QCOMPARE(TakeLog(), QStringList({ThrowLine("GetVideoData", "GetAllNodes")}));

    QCOMPARE(tree.AddItem(QStringLiteral("n_h1c1")), 0);
    QCOMPARE(tree.GetItemByDevId("h1c1", node), 0);
}

void tst_FencedDeviceTree::shouldAgreeWithTheDeviceLayerAfterRandomThrowsWhilePolling()
{
    const int iHosts = 4;
    const int iChannels = 6;
    FaultCtl_Load(iHosts, iChannels);
    const char* const apOperations[] = {
        "GetResourceTree", "GetDevFactory", "GetAllItems",  "GetItem",      "GetItemOfChannel",
        "ListItemsOfType", "ListIdsOfType", "ListChildren", "IsIdAdmitted", "QueryDeviceParam"};
    const int iOperations = int(sizeof(apOperations) / sizeof(apOperations[0]));
    QRandomGenerator rng(17); // fixed seed: a failure can be run again
    {
        CLS_WgtDeviceTree tree(nullptr, DEV_TREE_RESOURCE);
        QCOMPARE(tree.Init(QStringLiteral("All")), 0);

        // Given a polling tree, for three seconds random operations throw, now and then slowly,
        // channels change state, the tree asks for full reports and builds again.
        QElapsedTimer timer;
        timer.start();
        int iInits = 0;
        while (timer.elapsed() < 3000) {
            const char* pOperation = apOperations[rng.bounded(iOperations)];
            FaultCtl_Throw(pOperation, rng.bounded(4), rng.bounded(2) == 0 ? -1 : 1 + rng.bounded(3),
                           rng.bounded(2));
            FaultCtl_Delay(apOperations[rng.bounded(iOperations)], rng.bounded(3) == 0 ? 20 : 0);
            const QByteArray qbaId =
                QString("h%1c%2").arg(1 + rng.bounded(iHosts)).arg(1 + rng.bounded(iChannels)).toUtf8();
            FaultCtl_SetStatus(qbaId.constData(), rng.bounded(2));
            switch (rng.bounded(6)) {
            case 0:
                tree.UpdateChannelStatus();
                break;
            case 1:
                iInits += tree.Init(QStringLiteral("All")) == 0 ? 1 : 0; // may fail: a fetch throws
                break;
            default:
                break;
            }
            QTest::qWait(int(rng.bounded(30)));
        }

        // When the throwing stops and the tree asks for a full report
        FaultCtl_Heal();
        QCOMPARE(tree.Init(QStringLiteral("All")), 0);
        for (int iHost = 1; iHost <= iHosts; ++iHost) {
            const QByteArray qbaId = QString("h%1c1").arg(iHost).toUtf8();
            FaultCtl_SetStatus(qbaId.constData(), 1 - FaultCtl_GetStatus(qbaId.constData()));
        }
        tree.UpdateChannelStatus();

        // Then every channel's node has the device layer's state
        QTRY_COMPARE_WITH_TIMEOUT(StatusMismatches(tree, iHosts, iChannels), QString(), 15000);
        int iThrown = 0;
        for (const char* pOperation : apOperations)
            iThrown += FaultCtl_Thrown(pOperation);
        QVERIFY2(iThrown >= 5, qPrintable(QString("only %1 throws").arg(iThrown)));
        qInfo("%d throws, %d builds went through", iThrown, iInits);
    } // the tree's destructor joins its status thread
    TakeLog();
}

QTEST_MAIN(tst_FencedDeviceTree)
#include "tst_FencedDeviceTree.moc"
