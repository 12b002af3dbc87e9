// Building, lookups, walkers and expansion of CLS_WgtBaseTreeWidget.

#include "CLS_TestBaseTree.h"
#include "CLS_TreeSnapshot.h"
#include "CLS_WgtBaseTreeWidget.h"
#include "CLS_WgtTreeWidgetItem.h"
#include "WgtQtCompat.h"

#include <QApplication>
#include <QFontMetrics>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QtTest>

using CLS_TreeSnapshot::Snapshot;

namespace {

CLS_TreeItem MakeItem(const QString& _qstrId, const QString& _qstrParentId, int _iSortNo = 99,
                      const QString& _qstrText = QString())
{
    CLS_TreeItem clsItem;
    clsItem.m_qstrId = _qstrId;
    clsItem.m_qstrParentId = _qstrParentId;
    clsItem.m_iSortNo = _iSortNo;
    clsItem.m_qstrText = _qstrText.isEmpty() ? _qstrId : _qstrText;
    clsItem.m_qstrTooltip = "tip " + _qstrId;
    return clsItem;
}

void Add(QMap<QString, CLS_TreeItem>& _qmapItems, const CLS_TreeItem& _clsItem)
{
    _qmapItems.insert(_clsItem.m_qstrId, _clsItem);
}

// root
//   a (1)
//     a1 (1)
//       a11 (1)
//     a2 (2)
//   b (2)
QMap<QString, CLS_TreeItem> SampleTree()
{
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("root", QString(), 0, "Root"));
    Add(qmapItems, MakeItem("a", "root", 1, "Alpha"));
    Add(qmapItems, MakeItem("a1", "a", 1, "Alpha One"));
    Add(qmapItems, MakeItem("a11", "a1", 1, "Alpha One One"));
    Add(qmapItems, MakeItem("a2", "a", 2, "Alpha Two"));
    Add(qmapItems, MakeItem("b", "root", 2, "Beta"));
    return qmapItems;
}

QStringList Ids(const QVector<CLS_TreeItem>& _qvecItems)
{
    QStringList qlstIds;
    for (const CLS_TreeItem& clsItem : _qvecItems)
        qlstIds << clsItem.m_qstrId;
    return qlstIds;
}

QStringList NodeIds(const QVector<QTreeWidgetItem*>& _qvecNodes)
{
    QStringList qlstIds;
    for (const QTreeWidgetItem* pNode : _qvecNodes)
        qlstIds << CLS_TreeSnapshot::NodeId(pNode);
    return qlstIds;
}

// Rows with children that are expanded (Qt may also mark a leaf expanded, which shows nothing).
QStringList ExpandedIds(QTreeWidget& _tree)
{
    QStringList qlstIds;
    for (QTreeWidgetItemIterator it(&_tree); *it; ++it) {
        if ((*it)->childCount() > 0 && (*it)->isExpanded())
            qlstIds << CLS_TreeSnapshot::NodeId(*it);
    }
    return qlstIds;
}

} // namespace

class tst_CLS_WgtBaseTreeWidget : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    // construction
    void shouldSetDefaultFlagsFromConstructorArguments_data();
    void shouldSetDefaultFlagsFromConstructorArguments();
    void shouldConfigureViewAtConstruction();
    void shouldSetDragModeOnlyWhenDragEnabled();
    void shouldStartEmptyAndAnswerLookupsWithFailure();

    // Init
    void shouldMakeRootChildrenTopLevelWithoutRootRow();
    void shouldCountRowAndEveryRowBelowIt();
    void shouldShowRootAsOnlyTopRowWithRootRow();
    void shouldKeepOldTreeWhenRootIdUnknown();
    void shouldRefuseEmptyRootIdOrEmptyMap();
    void shouldLeaveOutRecordWithUnknownParent();
    void shouldSortSiblingsByNumberWhateverTheKeys_data();
    void shouldSortSiblingsByNumberWhateverTheKeys();
    void shouldPutDefaultNumberedRowAfterLowerNumbers();
    void shouldNotExpandOrSelectAfterInit();
    void shouldReplaceWholeTreeOnSecondInit();
    void shouldSkipChildWithEmptyIdAndBuildItsSiblings();
    void shouldNotRecurseIntoRecordListedUnderItself();
    void shouldNotRecurseIntoParentCycleBelowRoot();
    void shouldLetLaterDuplicateIdReplaceEarlierInIndex();
    void shouldKeepDragStateAcrossInit();
    void shouldBuildTheRecordsPassedWhenTheCallerChangesItsMapDuringTheBuild();

    // rows
    void shouldTakeTreeFlagsForRecordWithZeroFlags();
    void shouldTakeExactRecordFlags();
    void shouldBindRecordAndIdInRowRoles();
    void shouldGiveUncheckedStateOnlyInCheckableTree();
    void shouldMakeRowsOfOwnTypeAndClass();
    void shouldRefuseRowForEmptyId();
    void shouldElideShownTextButKeepFullTextInRecord();
    void shouldNotElideWithWidthBelowOne_data();
    void shouldNotElideWithWidthBelowOne();
    void shouldCompareSortNumbersStrictly();

    // lookups
    void shouldGiveMinusOneForRowWithoutRecord();
    void shouldFindRowAndRecordById();
    void shouldFindItemsByTextIgnoringCase();
    void shouldMatchEveryRowWithEmptySearchText();
    void shouldAppendToFilledOutputOfGetChilds();
    void shouldListDirectChildrenOnlyWithoutAllLevels();
    void shouldFailGetChildsForEmptyOrUnknownId();
    void shouldReadParentRecord();
    void shouldGiveCurrentItemOnlyForEnabledRow();
    void shouldCollectAllItemsWithoutClearingOutput();
    void shouldForgetRowsOnClearButKeepRootId();

    // misc
    void shouldDoNothingOnSetLang();
    void shouldApplyStyleSheet();
    void shouldReportCheckChangeOnlyInCheckableTree();

    // walkers
    void shouldAppendChildNodesDepthFirst();
    void shouldFailChildNodeForNullRow();
    void shouldListParentsNearestFirst();
    void shouldLeaveOutputAloneForTopLevelParentNode();
    void shouldMapParentsByIdUpToTopRow();
    void shouldStopParentMapOnUnreadableParent();

    // expansion
    void shouldExpandAncestorsAndRowButNotChildren();
    void shouldExpandEveryLevelWithExpandAll();
    void shouldCollapseRowOnly();
    void shouldIgnoreUnknownIdOrExpandType();
    void shouldCollapseEveryRowWithSetAllExpandStatus();
};

void tst_CLS_WgtBaseTreeWidget::cleanup()
{
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a test leaked a top-level widget");
}

void tst_CLS_WgtBaseTreeWidget::shouldSetDefaultFlagsFromConstructorArguments_data()
{
    QTest::addColumn<bool>("blCheck");
    QTest::addColumn<bool>("blDrag");
    QTest::addColumn<bool>("blDrop");
    QTest::addColumn<int>("iExpected");
    QTest::newRow("none") << false << false << false << 0x61;
    QTest::newRow("check") << true << false << false << 0x71;
    QTest::newRow("drag") << false << true << false << 0x65;
    QTest::newRow("drop") << false << false << true << 0x69;
    QTest::newRow("all") << true << true << true << 0x7d;
}

void tst_CLS_WgtBaseTreeWidget::shouldSetDefaultFlagsFromConstructorArguments()
{
    QFETCH(bool, blCheck);
    QFETCH(bool, blDrag);
    QFETCH(bool, blDrop);
    QFETCH(int, iExpected);
    CLS_TestBaseTree tree(nullptr, blCheck, blDrag, blDrop, true, ITEM_BTN_SHOW_HOVER);
    QCOMPARE(tree.m_iDefaultFlags, iExpected);
    QCOMPARE(tree.m_blCheckEnable, blCheck);
    QCOMPARE(tree.m_blDragEnable, blDrag);
    QCOMPARE(tree.m_blDropEnable, blDrop);
    QCOMPARE(tree.m_blRightClickEnable, true);
    QCOMPARE(tree.m_iBtnShowType, ITEM_BTN_SHOW_HOVER);
    QCOMPARE(tree.dragEnabled(), blDrag);
    QCOMPARE(tree.acceptDrops(), blDrop);
}

void tst_CLS_WgtBaseTreeWidget::shouldConfigureViewAtConstruction()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QVERIFY(tree.testAttribute(Qt::WA_MouseTracking));
    QVERIFY(tree.rootIsDecorated());
    QVERIFY(tree.isHeaderHidden());
    QCOMPARE(tree.selectionMode(), QAbstractItemView::SingleSelection);
    QCOMPARE(tree.selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(tree.horizontalScrollBar()->contextMenuPolicy(), Qt::NoContextMenu);
    QCOMPARE(tree.verticalScrollBar()->contextMenuPolicy(), Qt::NoContextMenu);
    QCOMPARE(tree.header()->sectionResizeMode(0), QHeaderView::ResizeToContents);
    QCOMPARE(tree.horizontalScrollMode(), QAbstractItemView::ScrollPerPixel);
    QCOMPARE(tree.horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    QVERIFY(!tree.hasAutoScroll());
    QCOMPARE(tree.columnCount(), 2);
    QCOMPARE(tree.m_pHoverNode, static_cast<QTreeWidgetItem*>(nullptr));
    QVERIFY(tree.m_blSendChecked);
    QVERIFY(tree.m_blSendSelected);
    QVERIFY(!tree.m_blDragging);
    QCOMPARE(tree.m_iTextMaxWidth, -1);
    QVERIFY(tree.m_qstrRootId.isEmpty());
    QVERIFY(tree.m_clsDragItem.m_qstrId.isEmpty());
}

void tst_CLS_WgtBaseTreeWidget::shouldSetDragModeOnlyWhenDragEnabled()
{
    CLS_TestBaseTree dragTree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(dragTree.dragDropMode(), QAbstractItemView::InternalMove);
    QCOMPARE(dragTree.defaultDropAction(), Qt::MoveAction);
    QVERIFY(!dragTree.showDropIndicator());

    CLS_TestBaseTree plainTree(nullptr, false, false, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(plainTree.dragDropMode(), QAbstractItemView::DropOnly); // from setAcceptDrops alone
    QVERIFY(plainTree.showDropIndicator());
    QVERIFY(plainTree.acceptDrops());
}

void tst_CLS_WgtBaseTreeWidget::shouldStartEmptyAndAnswerLookupsWithFailure()
{
    CLS_TestBaseTree tree;
    CLS_TreeItem clsItem;
    QVector<CLS_TreeItem> qvecItems;
    QMap<QString, CLS_TreeItem> qmapItems;
    QCOMPARE(tree.topLevelItemCount(), 0);
    QVERIFY(tree.GetNodeById("x") == nullptr);
    QCOMPARE(tree.GetItemById("x", clsItem), -1);
    QCOMPARE(tree.GetItemByName("", qvecItems), -1);
    QCOMPARE(tree.GetChilds("x", qvecItems, true), -1);
    QCOMPARE(tree.GetCurrentItem(clsItem), -1);
    QCOMPARE(tree.GetParent("x", clsItem), -1);
    QCOMPARE(tree.GetAllItems(qmapItems), 0);
    QVERIFY(qmapItems.isEmpty());
    QVERIFY(qvecItems.isEmpty());
}

void tst_CLS_WgtBaseTreeWidget::shouldCountRowAndEveryRowBelowIt()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    QCOMPARE(Snapshot(tree), QString("root(a(a1(a11),a2),b)"));
    tree.collapseAll();
    tree.GetNodeById("a2")->setHidden(true);

    // Folded and hidden rows count too.
    QCOMPARE(CLS_WgtBaseTreeWidget::CountRows(tree.GetNodeById("root")), 6);
    QCOMPARE(CLS_WgtBaseTreeWidget::CountRows(tree.GetNodeById("a")), 4);
    QCOMPARE(CLS_WgtBaseTreeWidget::CountRows(tree.GetNodeById("a11")), 1);
    QCOMPARE(CLS_WgtBaseTreeWidget::CountRows(nullptr), 0);
}

void tst_CLS_WgtBaseTreeWidget::shouldBuildTheRecordsPassedWhenTheCallerChangesItsMapDuringTheBuild()
{
    CLS_TestBaseTree tree;
    QMap<QString, CLS_TreeItem> qmapItems = SampleTree();
    int iInserts = 0;
    // A caller whose slot on the model rewrites the very map it passed, while the rows are made.
    connect(tree.model(), &QAbstractItemModel::rowsInserted, &tree, [&]() {
        if (iInserts++ > 0)
            return;
        qmapItems.clear();
        Add(qmapItems, MakeItem("z", QString(), 0, "Zulu"));
    });
    QCOMPARE(tree.Init("root", qmapItems, true), 0);
    QVERIFY(iInserts > 0);
    QCOMPARE(Snapshot(tree), QString("root(a(a1(a11),a2),b)"));
    CLS_TreeItem clsItem;
    QCOMPARE(tree.GetItemById("a2", clsItem), 0);
    QCOMPARE(clsItem.m_qstrText, QString("Alpha Two"));
}

void tst_CLS_WgtBaseTreeWidget::shouldMakeRootChildrenTopLevelWithoutRootRow()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QCOMPARE(Snapshot(tree), QString("a(a1(a11),a2),b"));
    QVERIFY(tree.GetNodeById("root") == nullptr);
    QVERIFY(!tree.m_qmapNodes.contains("root"));
    QCOMPARE(tree.m_qstrRootId, QString("root"));

    QVector<CLS_TreeItem> qvecFound;
    QCOMPARE(tree.GetItemByName("Alpha", qvecFound), -1);
    QCOMPARE(tree.GetItemByName("", qvecFound), -1);
    QVERIFY(qvecFound.isEmpty());

    CLS_TreeItem clsParent;
    clsParent.m_qstrId = "untouched";
    QCOMPARE(tree.GetParent("a", clsParent), -1);
    QCOMPARE(clsParent.m_qstrId, QString("untouched"));
    QCOMPARE(tree.GetParent("a1", clsParent), 0);
    QCOMPARE(clsParent.m_qstrId, QString("a"));
}

void tst_CLS_WgtBaseTreeWidget::shouldShowRootAsOnlyTopRowWithRootRow()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    QCOMPARE(tree.topLevelItemCount(), 1);
    QCOMPARE(Snapshot(tree), QString("root(a(a1(a11),a2),b)"));
    QVERIFY(tree.GetNodeById("root") != nullptr);

    QVector<CLS_TreeItem> qvecFound;
    QCOMPARE(tree.GetItemByName("", qvecFound), 0);
    QCOMPARE(Ids(qvecFound), QStringList({"a", "a1", "a11", "a2", "b"}));

    qvecFound.clear();
    QCOMPARE(tree.GetItemByName("Root", qvecFound), 0);
    QVERIFY2(qvecFound.isEmpty(), qPrintable(Ids(qvecFound).join(",")));
}

void tst_CLS_WgtBaseTreeWidget::shouldKeepOldTreeWhenRootIdUnknown()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    QMap<QString, CLS_TreeItem> qmapOther;
    Add(qmapOther, MakeItem("other", QString(), 0));
    Add(qmapOther, MakeItem("x", "other", 0));
    QCOMPARE(tree.Init("nowhere", qmapOther, true), -1);
    QCOMPARE(Snapshot(tree), QString("root(a(a1(a11),a2),b)"));
    QCOMPARE(tree.m_qstrRootId, QString("root"));
    QVERIFY(tree.GetNodeById("a11") != nullptr);
}

void tst_CLS_WgtBaseTreeWidget::shouldRefuseEmptyRootIdOrEmptyMap()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QCOMPARE(tree.Init("", SampleTree(), false), -1);
    QCOMPARE(tree.Init("root", QMap<QString, CLS_TreeItem>(), false), -1);
    QCOMPARE(Snapshot(tree), QString("a(a1(a11),a2),b"));
    QCOMPARE(tree.m_qstrRootId, QString("root"));
}

void tst_CLS_WgtBaseTreeWidget::shouldLeaveOutRecordWithUnknownParent()
{
    CLS_TestBaseTree tree;
    QMap<QString, CLS_TreeItem> qmapItems = SampleTree();
    Add(qmapItems, MakeItem("orphan", "ghost", 0));
    Add(qmapItems, MakeItem("orphanChild", "orphan", 0));
    QCOMPARE(tree.Init("root", qmapItems, true), 0);
    QVERIFY(tree.GetNodeById("orphan") == nullptr);
    QVERIFY(tree.GetNodeById("orphanChild") == nullptr);
    QCOMPARE(Snapshot(tree), QString("root(a(a1(a11),a2),b)"));
}

void tst_CLS_WgtBaseTreeWidget::shouldSortSiblingsByNumberWhateverTheKeys_data()
{
    QTest::addColumn<QString>("qstrFirstKey");
    QTest::addColumn<QString>("qstrSecondKey");
    QTest::newRow("five first by key") << "a_five"
                                       << "b_three";
    QTest::newRow("three first by key") << "b_five"
                                        << "a_three";
}

void tst_CLS_WgtBaseTreeWidget::shouldSortSiblingsByNumberWhateverTheKeys()
{
    QFETCH(QString, qstrFirstKey);
    QFETCH(QString, qstrSecondKey);
    QMap<QString, CLS_TreeItem> qmapItems;
    qmapItems.insert("r", MakeItem("r", QString(), 0));
    qmapItems.insert(qstrFirstKey, MakeItem("five", "r", 5));
    qmapItems.insert(qstrSecondKey, MakeItem("three", "r", 3));
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("r", qmapItems, false), 0);
    QCOMPARE(Snapshot(tree), QString("three,five"));
}

void tst_CLS_WgtBaseTreeWidget::shouldPutDefaultNumberedRowAfterLowerNumbers()
{
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("r", QString(), 0));
    CLS_TreeItem clsDefault;
    clsDefault.m_qstrId = "0default";
    clsDefault.m_qstrParentId = "r";
    QCOMPARE(clsDefault.m_iSortNo, 99);
    Add(qmapItems, clsDefault);
    Add(qmapItems, MakeItem("z98", "r", 98));
    Add(qmapItems, MakeItem("y1", "r", 1));
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("r", qmapItems, false), 0);
    QCOMPARE(Snapshot(tree), QString("y1,z98,0default"));
}

void tst_CLS_WgtBaseTreeWidget::shouldNotExpandOrSelectAfterInit()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    QVERIFY2(ExpandedIds(tree).isEmpty(), qPrintable(ExpandedIds(tree).join(",")));
    QVERIFY(tree.currentItem() == nullptr);
}

void tst_CLS_WgtBaseTreeWidget::shouldReplaceWholeTreeOnSecondInit()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    QMap<QString, CLS_TreeItem> qmapOther;
    Add(qmapOther, MakeItem("other", QString(), 0));
    Add(qmapOther, MakeItem("x", "other", 0));
    QCOMPARE(tree.Init("other", qmapOther, false), 0);
    QCOMPARE(Snapshot(tree), QString("x"));
    QCOMPARE(tree.m_qmapNodes.keys(), QStringList({"x"}));
    QCOMPARE(tree.m_qstrRootId, QString("other"));
}

void tst_CLS_WgtBaseTreeWidget::shouldSkipChildWithEmptyIdAndBuildItsSiblings()
{
    QMap<QString, CLS_TreeItem> qmapItems = SampleTree();
    qmapItems.insert("emptyKey", MakeItem(QString(), "root", 0));
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", qmapItems, true), 0);
    QCOMPARE(Snapshot(tree), QString("root(a(a1(a11),a2),b)"));
    QVERIFY(!tree.m_qmapNodes.contains(QString()));
}

void tst_CLS_WgtBaseTreeWidget::shouldNotRecurseIntoRecordListedUnderItself()
{
    // "self" names itself as parent and so stands among its own children.
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("root", QString(), 0));
    qmapItems.insert("k1", MakeItem("self", "root", 1));
    qmapItems.insert("k2", MakeItem("self", "self", 2));
    Add(qmapItems, MakeItem("leaf", "self", 3));
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", qmapItems, true), 0);
    QCOMPARE(Snapshot(tree), QString("root(self(leaf))"));
}

void tst_CLS_WgtBaseTreeWidget::shouldNotRecurseIntoParentCycleBelowRoot()
{
    // root -> a -> b -> a: the second "a" is on the path already.
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("root", QString(), 0));
    qmapItems.insert("k1", MakeItem("a", "root", 1));
    qmapItems.insert("k2", MakeItem("b", "a", 1));
    qmapItems.insert("k3", MakeItem("a", "b", 1));
    // and a root that is listed below its own descendant
    qmapItems.insert("k4", MakeItem("root", "b", 2));
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", qmapItems, true), 0);
    QCOMPARE(Snapshot(tree), QString("root(a(b))"));
}

void tst_CLS_WgtBaseTreeWidget::shouldLetLaterDuplicateIdReplaceEarlierInIndex()
{
    // Two records with the same id in different places: both are built, the later row wins the index.
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("root", QString(), 0));
    Add(qmapItems, MakeItem("p1", "root", 1));
    Add(qmapItems, MakeItem("p2", "root", 2));
    qmapItems.insert("k1", MakeItem("dup", "p1", 1, "first"));
    qmapItems.insert("k2", MakeItem("dup", "p2", 1, "second"));
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", qmapItems, false), 0);
    QCOMPARE(Snapshot(tree), QString("p1(dup),p2(dup)"));
    QTreeWidgetItem* pIndexed = tree.GetNodeById("dup");
    QVERIFY(pIndexed != nullptr);
    QCOMPARE(CLS_TreeSnapshot::NodeId(pIndexed->parent()), QString("p2"));
}

void tst_CLS_WgtBaseTreeWidget::shouldKeepDragStateAcrossInit()
{
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    tree.m_clsDragItem = MakeItem("dragged", "p");
    tree.m_blDragging = true;
    tree.m_pHoverNode = reinterpret_cast<QTreeWidgetItem*>(0x1); // never dereferenced here
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QCOMPARE(tree.m_clsDragItem.m_qstrId, QString("dragged"));
    QVERIFY(tree.m_blDragging);
    QVERIFY(tree.m_pHoverNode == nullptr);
}

void tst_CLS_WgtBaseTreeWidget::shouldTakeTreeFlagsForRecordWithZeroFlags()
{
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QCOMPARE(int(tree.GetNodeById("a")->flags()), 0x71);
}

void tst_CLS_WgtBaseTreeWidget::shouldTakeExactRecordFlags()
{
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("root", QString(), 0));
    CLS_TreeItem clsParent = MakeItem("p", "root", 1);
    clsParent.m_iItemFlags = 0x21;
    Add(qmapItems, clsParent);
    Add(qmapItems, MakeItem("c1", "p", 1));
    Add(qmapItems, MakeItem("c2", "p", 2));
    CLS_TestBaseTree tree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", qmapItems, false), 0);

    QTreeWidgetItem* pParent = tree.GetNodeById("p");
    QCOMPARE(int(pParent->flags()), 0x21);
    QVERIFY(!(pParent->flags() & Qt::ItemIsUserCheckable));
    QVERIFY(!(pParent->flags() & Qt::ItemIsAutoTristate));

    // Without auto-tristate the parent neither derives its state nor passes it on.
    tree.GetNodeById("c1")->setCheckState(0, Qt::Checked);
    QCOMPARE(pParent->checkState(0), Qt::Unchecked);
    pParent->setCheckState(0, Qt::Checked);
    QCOMPARE(tree.GetNodeById("c2")->checkState(0), Qt::Unchecked);
}

void tst_CLS_WgtBaseTreeWidget::shouldBindRecordAndIdInRowRoles()
{
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("root", QString(), 0));
    CLS_TreeItem clsItem = MakeItem("a", "root", 4, "Alpha");
    clsItem.m_qstrIcon = ":/no/such/icon.png";
    clsItem.m_varData = QString("dev-a");
    clsItem.m_iReserved = 17;
    Add(qmapItems, clsItem);
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", qmapItems, false), 0);

    QTreeWidgetItem* pNode = tree.GetNodeById("a");
    QVERIFY(pNode != nullptr);
    QCOMPARE(pNode->data(0, Qt::DisplayRole).toString(), QString("Alpha"));
    QCOMPARE(pNode->data(0, Qt::ToolTipRole).toString(), QString("tip a"));
    QVERIFY(pNode->data(0, Qt::DecorationRole).canConvert<QIcon>());
    QCOMPARE(pNode->data(0, Qt::UserRole).toString(), QString("a"));
    QCOMPARE(pNode->data(0, Qt::UserRole).userType(), int(QMetaType::QString));
    const QVariant varRecord = pNode->data(0, Qt::UserRole + 1);
    QCOMPARE(varRecord.userType(), qMetaTypeId<CLS_TreeItem>());
    QCOMPARE(QtCompat::MetaTypeName(varRecord.userType()), "CLS_TreeItem");
    const CLS_TreeItem clsBound = varRecord.value<CLS_TreeItem>();
    QCOMPARE(clsBound.m_qstrIcon, clsItem.m_qstrIcon);
    QCOMPARE(clsBound.m_varData.toString(), QString("dev-a"));
    QCOMPARE(clsBound.m_iReserved, 17);
    QCOMPARE(clsBound.m_iSortNo, 4);
    QVERIFY(pNode->text(1).isEmpty());
    QVERIFY(tree.itemWidget(pNode, 1) == nullptr); // no buttons, no tool bar
}

void tst_CLS_WgtBaseTreeWidget::shouldGiveUncheckedStateOnlyInCheckableTree()
{
    CLS_TestBaseTree checkTree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(checkTree.Init("root", SampleTree(), false), 0);
    const QVariant varState = checkTree.GetNodeById("b")->data(0, Qt::CheckStateRole);
    QVERIFY(varState.isValid());
    QCOMPARE(varState.toInt(), int(Qt::Unchecked));

    CLS_TestBaseTree plainTree;
    QCOMPARE(plainTree.Init("root", SampleTree(), false), 0);
    QVERIFY(!plainTree.GetNodeById("b")->data(0, Qt::CheckStateRole).isValid());
}

void tst_CLS_WgtBaseTreeWidget::shouldMakeRowsOfOwnTypeAndClass()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    for (QTreeWidgetItemIterator it(&tree); *it; ++it) {
        QCOMPARE((*it)->type(), 1001);
        QVERIFY(dynamic_cast<CLS_WgtTreeWidgetItem*>(*it) != nullptr);
    }
    QTreeWidgetItem* pNode = tree.CreateNode(MakeItem("loose", "root"));
    QVERIFY(pNode != nullptr);
    QVERIFY(pNode->parent() == nullptr);
    QVERIFY(pNode->treeWidget() == nullptr);
    QVERIFY(!tree.m_qmapNodes.contains("loose"));
    delete pNode;
}

void tst_CLS_WgtBaseTreeWidget::shouldRefuseRowForEmptyId()
{
    CLS_TestBaseTree tree;
    QVERIFY(tree.CreateNode(CLS_TreeItem()) == nullptr);
    QCOMPARE(tree.CreateTree(nullptr, CLS_TreeItem(), QMap<QString, QVector<CLS_TreeItem>>(), true), -1);
    QCOMPARE(tree.CreateTree(nullptr, CLS_TreeItem(), QMap<QString, QVector<CLS_TreeItem>>(), false), -1);
    QCOMPARE(tree.topLevelItemCount(), 0);
}

void tst_CLS_WgtBaseTreeWidget::shouldElideShownTextButKeepFullTextInRecord()
{
    const QString qstrLong = "A very long channel name that cannot fit into fifty pixels";
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("root", QString(), 0));
    Add(qmapItems, MakeItem("long", "root", 1, qstrLong));
    CLS_TestBaseTree tree;
    tree.SetTextMaxWidth(50);
    QCOMPARE(tree.m_iTextMaxWidth, 50);
    QCOMPARE(tree.Init("root", qmapItems, true), 0);

    const QString qstrShown = tree.GetNodeById("long")->text(0);
    QCOMPARE(qstrShown, QFontMetrics(QFont()).elidedText(qstrLong, Qt::ElideRight, 50, 0));
    QVERIFY2(qstrShown != qstrLong, qPrintable(qstrShown));

    CLS_TreeItem clsItem;
    QCOMPARE(tree.GetItemById("long", clsItem), 0);
    QCOMPARE(clsItem.m_qstrText, qstrLong);

    QVector<CLS_TreeItem> qvecFound;
    QCOMPARE(tree.GetItemByName("fifty pixels", qvecFound), 0);
    QCOMPARE(Ids(qvecFound), QStringList({"long"}));
}

void tst_CLS_WgtBaseTreeWidget::shouldNotElideWithWidthBelowOne_data()
{
    QTest::addColumn<int>("iWidth");
    QTest::newRow("zero") << 0;
    QTest::newRow("negative") << -5;
}

void tst_CLS_WgtBaseTreeWidget::shouldNotElideWithWidthBelowOne()
{
    QFETCH(int, iWidth);
    const QString qstrLong = "A very long channel name that cannot fit into fifty pixels";
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("root", QString(), 0));
    Add(qmapItems, MakeItem("long", "root", 1, qstrLong));
    CLS_TestBaseTree tree;
    tree.SetTextMaxWidth(50);
    tree.SetTextMaxWidth(iWidth);
    QCOMPARE(tree.Init("root", qmapItems, false), 0);
    QCOMPARE(tree.GetNodeById("long")->text(0), qstrLong);
}

void tst_CLS_WgtBaseTreeWidget::shouldCompareSortNumbersStrictly()
{
    CLS_TreeItem clsA = MakeItem("a", "r", 3);
    CLS_TreeItem clsB = MakeItem("b", "r", 3);
    CLS_TreeItem clsC = MakeItem("c", "r", 4);
    QVERIFY(!CLS_TestBaseTree::SortByNo(clsA, clsB));
    QVERIFY(!CLS_TestBaseTree::SortByNo(clsB, clsA));
    QVERIFY(CLS_TestBaseTree::SortByNo(clsA, clsC));
    QVERIFY(!CLS_TestBaseTree::SortByNo(clsC, clsA));
}

void tst_CLS_WgtBaseTreeWidget::shouldGiveMinusOneForRowWithoutRecord()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    CLS_TreeItem clsOut = MakeItem("untouched", "x");
    QCOMPARE(tree.GetBindData(nullptr, clsOut), -1);

    QTreeWidgetItem* pNode = tree.GetNodeById("a2");
    pNode->setData(0, Qt::UserRole + 1, QVariant());
    QCOMPARE(tree.GetBindData(pNode, clsOut), -1);
    QCOMPARE(tree.GetItemById("a2", clsOut), -1);
    pNode->setData(0, Qt::UserRole + 1, QString("not a record"));
    QCOMPARE(tree.GetBindData(pNode, clsOut), -1);
    QCOMPARE(clsOut.m_qstrId, QString("untouched"));

    // List operations pass over that row.
    QVector<CLS_TreeItem> qvecChilds;
    QCOMPARE(tree.GetChilds("a", qvecChilds, true), 0);
    QCOMPARE(Ids(qvecChilds), QStringList({"a1", "a11"}));
    QMap<QString, CLS_TreeItem> qmapAll;
    QCOMPARE(tree.GetAllItems(qmapAll), 0);
    QVERIFY(!qmapAll.contains("a2"));
    QCOMPARE(qmapAll.size(), 5);
}

void tst_CLS_WgtBaseTreeWidget::shouldFindRowAndRecordById()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    QTreeWidgetItem* pNode = tree.GetNodeById("a11");
    QVERIFY(pNode != nullptr);
    QCOMPARE(pNode->text(0), QString("Alpha One One"));
    CLS_TreeItem clsItem;
    QCOMPARE(tree.GetItemById("a11", clsItem), 0);
    QCOMPARE(clsItem.m_qstrId, QString("a11"));
    QCOMPARE(clsItem.m_qstrParentId, QString("a1"));
    QCOMPARE(clsItem.m_qstrText, QString("Alpha One One"));

    // The reader gets a copy: changing it does not change the row.
    clsItem.m_qstrText = "changed";
    CLS_TreeItem clsAgain;
    QCOMPARE(tree.GetItemById("a11", clsAgain), 0);
    QCOMPARE(clsAgain.m_qstrText, QString("Alpha One One"));

    QVERIFY(tree.GetNodeById("") == nullptr);
    QCOMPARE(tree.GetItemById("", clsItem), -1);
    QCOMPARE(tree.GetItemById("nope", clsItem), -1);
}

void tst_CLS_WgtBaseTreeWidget::shouldFindItemsByTextIgnoringCase()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    QVector<CLS_TreeItem> qvecFound{MakeItem("before", "x")};
    QCOMPARE(tree.GetItemByName("alpha ONE", qvecFound), 0);
    QCOMPARE(Ids(qvecFound), QStringList({"before", "a1", "a11"}));

    QVector<CLS_TreeItem> qvecNone;
    QCOMPARE(tree.GetItemByName("gamma", qvecNone), 0);
    QVERIFY(qvecNone.isEmpty());
}

void tst_CLS_WgtBaseTreeWidget::shouldMatchEveryRowWithEmptySearchText()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    QVector<CLS_TreeItem> qvecFound;
    QCOMPARE(tree.GetItemByName(QString(), qvecFound), 0);
    QCOMPARE(qvecFound.size(), 5);
}

void tst_CLS_WgtBaseTreeWidget::shouldAppendToFilledOutputOfGetChilds()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVector<CLS_TreeItem> qvecItems{MakeItem("x", "y"), MakeItem("z", "y")};
    QCOMPARE(tree.GetChilds("a", qvecItems, true), 0);
    QCOMPARE(Ids(qvecItems), QStringList({"x", "z", "a1", "a11", "a2"}));
}

void tst_CLS_WgtBaseTreeWidget::shouldListDirectChildrenOnlyWithoutAllLevels()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVector<CLS_TreeItem> qvecItems;
    QCOMPARE(tree.GetChilds("a", qvecItems, false), 0);
    QCOMPARE(Ids(qvecItems), QStringList({"a1", "a2"}));
    qvecItems.clear();
    QCOMPARE(tree.GetChilds("b", qvecItems, true), 0);
    QVERIFY(qvecItems.isEmpty());
}

void tst_CLS_WgtBaseTreeWidget::shouldFailGetChildsForEmptyOrUnknownId()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVector<CLS_TreeItem> qvecItems{MakeItem("keep", "y")};
    QCOMPARE(tree.GetChilds("", qvecItems, true), -1);
    QCOMPARE(tree.GetChilds("root", qvecItems, true), -1); // the root has no row here
    QCOMPARE(tree.GetChilds("nope", qvecItems, false), -1);
    QCOMPARE(Ids(qvecItems), QStringList({"keep"}));
}

void tst_CLS_WgtBaseTreeWidget::shouldReadParentRecord()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    CLS_TreeItem clsParent;
    QCOMPARE(tree.GetParent("a11", clsParent), 0);
    QCOMPARE(clsParent.m_qstrId, QString("a1"));
    QCOMPARE(tree.GetParent("a", clsParent), 0);
    QCOMPARE(clsParent.m_qstrId, QString("root"));
    QCOMPARE(tree.GetParent("root", clsParent), -1);
    QCOMPARE(tree.GetParent("", clsParent), -1);
    QCOMPARE(tree.GetParent("nope", clsParent), -1);
    QCOMPARE(clsParent.m_qstrId, QString("root"));
}

void tst_CLS_WgtBaseTreeWidget::shouldGiveCurrentItemOnlyForEnabledRow()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    CLS_TreeItem clsItem;
    QCOMPARE(tree.GetCurrentItem(clsItem), -1);

    tree.setCurrentItem(tree.GetNodeById("a1"));
    QCOMPARE(tree.GetCurrentItem(clsItem), 0);
    QCOMPARE(clsItem.m_qstrId, QString("a1"));

    QTreeWidgetItem* pNode = tree.GetNodeById("a1");
    pNode->setFlags(pNode->flags() & ~Qt::ItemIsEnabled);
    CLS_TreeItem clsOut = MakeItem("untouched", "x");
    QCOMPARE(tree.GetCurrentItem(clsOut), -1);
    QCOMPARE(clsOut.m_qstrId, QString("untouched"));
}

void tst_CLS_WgtBaseTreeWidget::shouldCollectAllItemsWithoutClearingOutput()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QMap<QString, CLS_TreeItem> qmapItems;
    qmapItems.insert("extra", MakeItem("extra", "x"));
    qmapItems.insert("a", MakeItem("a", "old parent"));
    QCOMPARE(tree.GetAllItems(qmapItems), 0);
    QCOMPARE(qmapItems.keys(), QStringList({"a", "a1", "a11", "a2", "b", "extra"}));
    QCOMPARE(qmapItems.value("a").m_qstrParentId, QString("root"));
}

void tst_CLS_WgtBaseTreeWidget::shouldForgetRowsOnClearButKeepRootId()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    tree.m_pHoverNode = tree.GetNodeById("a");
    tree.Clear();
    QCOMPARE(tree.topLevelItemCount(), 0);
    QVERIFY(tree.m_qmapNodes.isEmpty());
    QVERIFY(tree.m_pHoverNode == nullptr);
    QCOMPARE(tree.m_qstrRootId, QString("root"));
    QVector<CLS_TreeItem> qvecFound;
    QCOMPARE(tree.GetItemByName("", qvecFound), -1);
    QMap<QString, CLS_TreeItem> qmapItems;
    QCOMPARE(tree.GetAllItems(qmapItems), 0);
    QVERIFY(qmapItems.isEmpty());
}

void tst_CLS_WgtBaseTreeWidget::shouldDoNothingOnSetLang()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    const QString qstrBefore = Snapshot(tree);
    const QString qstrText = tree.GetNodeById("a")->text(0);
    tree.SetLang("zh_CN");
    QCOMPARE(Snapshot(tree), qstrBefore);
    QCOMPARE(tree.GetNodeById("a")->text(0), qstrText);
    QVERIFY(tree.styleSheet().isEmpty());
}

void tst_CLS_WgtBaseTreeWidget::shouldApplyStyleSheet()
{
    CLS_TestBaseTree tree;
    const QString qstrSheet = "QTreeWidget { background: #102030; }";
    tree.LoadStyleSheet(qstrSheet);
    QCOMPARE(tree.styleSheet(), qstrSheet);
}

void tst_CLS_WgtBaseTreeWidget::shouldReportCheckChangeOnlyInCheckableTree()
{
    CLS_TestBaseTree checkTree(nullptr, true, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(checkTree.Init("root", SampleTree(), false), 0);
    QSignalSpy spy(&checkTree, &CLS_WgtBaseTreeWidget::SignCheckedStatusChanged);
    checkTree.GetNodeById("b")->setCheckState(0, Qt::Checked);
    QCOMPARE(spy.count(), 1);
    const QList<QVariant> qlstArgs = spy.takeFirst();
    QCOMPARE(qlstArgs.at(0).toString(), QString("b"));
    QCOMPARE(qlstArgs.at(1).toBool(), true);
    QCOMPARE(qlstArgs.at(2).value<CLS_TreeItem>().m_qstrText, QString("Beta"));

    // The gate holds the signal back.
    checkTree.m_blSendChecked = false;
    checkTree.GetNodeById("b")->setCheckState(0, Qt::Unchecked);
    QCOMPARE(spy.count(), 0);

    // A tree without check boxes gives rows no state; one set by hand is still not reported.
    CLS_TestBaseTree plainTree;
    QCOMPARE(plainTree.Init("root", SampleTree(), false), 0);
    QSignalSpy plainSpy(&plainTree, &CLS_WgtBaseTreeWidget::SignCheckedStatusChanged);
    plainTree.GetNodeById("b")->setCheckState(0, Qt::Unchecked); // first state: silent
    plainTree.GetNodeById("b")->setCheckState(0, Qt::Checked);
    QCOMPARE(plainSpy.count(), 0);
}

void tst_CLS_WgtBaseTreeWidget::shouldAppendChildNodesDepthFirst()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    QTreeWidgetItem* pOther = tree.GetNodeById("b");
    QVector<QTreeWidgetItem*> qvecNodes{pOther};
    QCOMPARE(tree.GetChildNode(tree.GetNodeById("root"), qvecNodes, true), 0);
    QCOMPARE(NodeIds(qvecNodes), QStringList({"b", "a", "a1", "a11", "a2", "b"}));

    QVector<QTreeWidgetItem*> qvecDirect;
    QCOMPARE(tree.GetChildNode(tree.GetNodeById("root"), qvecDirect, false), 0);
    QCOMPARE(NodeIds(qvecDirect), QStringList({"a", "b"}));

    QVector<QTreeWidgetItem*> qvecLeaf;
    QCOMPARE(tree.GetChildNode(tree.GetNodeById("a11"), qvecLeaf, true), 0);
    QVERIFY(qvecLeaf.isEmpty());
}

void tst_CLS_WgtBaseTreeWidget::shouldFailChildNodeForNullRow()
{
    CLS_TestBaseTree tree;
    QVector<QTreeWidgetItem*> qvecNodes;
    QCOMPARE(tree.GetChildNode(nullptr, qvecNodes, true), -1);
    QVERIFY(qvecNodes.isEmpty());
}

void tst_CLS_WgtBaseTreeWidget::shouldListParentsNearestFirst()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    QVector<QTreeWidgetItem*> qvecParents{tree.GetNodeById("b")};
    QCOMPARE(tree.GetParentNode(tree.GetNodeById("a11"), qvecParents), 0);
    QCOMPARE(NodeIds(qvecParents), QStringList({"b", "a1", "a", "root"}));
}

void tst_CLS_WgtBaseTreeWidget::shouldLeaveOutputAloneForTopLevelParentNode()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVector<QTreeWidgetItem*> qvecParents{tree.GetNodeById("b")};
    QCOMPARE(tree.GetParentNode(tree.GetNodeById("a"), qvecParents), -1);
    QCOMPARE(tree.GetParentNode(nullptr, qvecParents), -1);
    QCOMPARE(NodeIds(qvecParents), QStringList({"b"}));

    QMap<QString, QTreeWidgetItem*> qmapParents;
    QCOMPARE(tree.GetParentNode(tree.GetNodeById("a"), qmapParents), -1);
    QCOMPARE(tree.GetParentNode(nullptr, qmapParents), -1);
    QVERIFY(qmapParents.isEmpty());
}

void tst_CLS_WgtBaseTreeWidget::shouldMapParentsByIdUpToTopRow()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    QMap<QString, QTreeWidgetItem*> qmapParents;
    qmapParents.insert("b", tree.GetNodeById("b"));
    QCOMPARE(tree.GetParentNode(tree.GetNodeById("a11"), qmapParents), 0);
    QCOMPARE(qmapParents.keys(), QStringList({"a", "a1", "b", "root"}));
    QCOMPARE(qmapParents.value("a1"), tree.GetNodeById("a1"));
    QCOMPARE(qmapParents.value("root"), tree.GetNodeById("root"));
}

void tst_CLS_WgtBaseTreeWidget::shouldStopParentMapOnUnreadableParent()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    // a1's parent "a" loses its record: a1 is mapped, then the walk stops at "a".
    tree.GetNodeById("a")->setData(0, Qt::UserRole + 1, QVariant());

    QMap<QString, QTreeWidgetItem*> qmapParents;
    QCOMPARE(tree.GetParentNode(tree.GetNodeById("a1"), qmapParents), -1);
    QVERIFY(qmapParents.isEmpty());

    // From one level further down the first parent is readable, so the result is 0 and the map
    // holds what was read before the walk stopped.
    QCOMPARE(tree.GetParentNode(tree.GetNodeById("a11"), qmapParents), 0);
    QCOMPARE(qmapParents.keys(), QStringList({"a1"}));
}

void tst_CLS_WgtBaseTreeWidget::shouldExpandAncestorsAndRowButNotChildren()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    tree.SetItemExpandStatus("a1", TREE_EXPAND);
    QCOMPARE(ExpandedIds(tree), QStringList({"root", "a", "a1"}));

    tree.collapseAll();
    tree.SetItemExpandStatus("a", TREE_EXPAND);
    QCOMPARE(ExpandedIds(tree), QStringList({"root", "a"}));
    QVERIFY(!tree.GetNodeById("a1")->isExpanded());
}

void tst_CLS_WgtBaseTreeWidget::shouldExpandEveryLevelWithExpandAll()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    tree.SetItemExpandStatus("a", TREE_EXPAND_ALL);
    QCOMPARE(ExpandedIds(tree), QStringList({"root", "a", "a1"}));
    QVERIFY(tree.GetNodeById("a11")->isExpanded()); // every descendant was asked to expand
    QVERIFY(!tree.GetNodeById("b")->isExpanded());
}

void tst_CLS_WgtBaseTreeWidget::shouldCollapseRowOnly()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    tree.expandAll();
    tree.SetItemExpandStatus("a", TREE_COLLAPSE);
    QCOMPARE(ExpandedIds(tree), QStringList({"root", "a1"}));
}

void tst_CLS_WgtBaseTreeWidget::shouldIgnoreUnknownIdOrExpandType()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    tree.SetItemExpandStatus("nope", TREE_EXPAND_ALL);
    tree.SetItemExpandStatus("", TREE_EXPAND);
    tree.SetItemExpandStatus("a1", static_cast<n_TreeExpandType>(7));
    QVERIFY(ExpandedIds(tree).isEmpty());

    tree.expandAll();
    tree.SetItemExpandStatus("a", static_cast<n_TreeExpandType>(-1));
    QCOMPARE(ExpandedIds(tree).size(), 3);
}

void tst_CLS_WgtBaseTreeWidget::shouldCollapseEveryRowWithSetAllExpandStatus()
{
    CLS_TestBaseTree tree;
    QCOMPARE(tree.Init("root", SampleTree(), true), 0);
    tree.SetAllExpandStatus(true);
    QCOMPARE(ExpandedIds(tree), QStringList({"root", "a", "a1"}));
    tree.SetAllExpandStatus(false);
    QVERIFY(ExpandedIds(tree).isEmpty());
    QCOMPARE(tree.topLevelItemCount(), 1);
    QCOMPARE(CLS_TreeSnapshot::NodeId(tree.topLevelItem(0)), QString("root"));
    QVERIFY(!tree.topLevelItem(0)->isExpanded());
}

QTEST_MAIN(tst_CLS_WgtBaseTreeWidget)
#include "tst_CLS_WgtBaseTreeWidget.moc"
