// The node-level events of CLS_WgtDeviceTree, driven as a user drives them: clicks, selection,
// right clicks and menu entries, double clicks with their check toggle, tool buttons, and check
// changes with their 200 ms batches; plus the calls that pass through to the panel.

#include "CLS_TestDeviceTree.h"

#include "CLS_WgtItemToolBar.h"
#include "Util.h"
#include "WgtMenuTestApi.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QToolButton>
#include <QtTest>

#include <dlfcn.h>

using namespace CLS_DevTreeTestUtil;

namespace {

const QString CONST_CUSTOM_ROOT = "custom_root_id";
const QString CONST_RESOURCE_ROOT = "resource_root_id";
const QString CONST_CUSTOM_ROWS = "custom_root_id(g1(c2,c1),ge,c3)";

// Custom tree below "custom_root_id":
//   g1 (1): c1 (2, D1), c2 (1, D2)
//   ge (2): a group without children
//   c3 (3, D3)
QMap<QString, CLS_CustomTreeNode> CustomNodes()
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode("g1", CONST_CUSTOM_ROOT, 2, QString(), 1));
    Add(qmapNodes, MakeNode("c1", "g1", 4, "D1", 2, 1));
    Add(qmapNodes, MakeNode("c2", "g1", 4, "D2", 1, 1));
    Add(qmapNodes, MakeNode("ge", CONST_CUSTOM_ROOT, 2, "GE", 2));
    Add(qmapNodes, MakeNode("c3", CONST_CUSTOM_ROOT, 4, "D3", 3, 1));
    return qmapNodes;
}

// Resource tree: resource_root_id: h1 (1): c1 (1), c2 (2); h2 (2): c3 (1)
QMap<QString, CLS_CustomTreeNode> ResourceNodes()
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode(CONST_RESOURCE_ROOT, QString(), 2, CONST_RESOURCE_ROOT));
    Add(qmapNodes, MakeNode("h1", CONST_RESOURCE_ROOT, 3, "H1", 1, 1));
    Add(qmapNodes, MakeNode("c1", "h1", 4, "C1", 1, 1));
    Add(qmapNodes, MakeNode("c2", "h1", 4, "C2", 2, 1));
    Add(qmapNodes, MakeNode("h2", CONST_RESOURCE_ROOT, 3, "H2", 2, 1));
    Add(qmapNodes, MakeNode("c3", "h2", 4, "C3", 1, 1));
    return qmapNodes;
}

QMap<int, QVector<CLS_ItemButton>> ChannelButtons()
{
    QMap<int, QVector<CLS_ItemButton>> qmapButtons;
    qmapButtons.insert(4, {MakeButton("play"), MakeButton("rec")});
    return qmapButtons;
}

// A checkable tree with the right-click switch on, built and shown with every row open.
bool BuildShown(CLS_TestDeviceTree& _tree, const QMap<QString, CLS_CustomTreeNode>& _qmapSource,
                const QString& _qstrRootName)
{
    QMap<QString, CLS_CustomTreeNode> qmapNodes = _qmapSource;
    if (_tree.Init(qmapNodes, _qstrRootName, ChannelButtons()) != 0)
        return false;
    return ShowOpen(_tree);
}

// Every node signal of a device tree as one line, in emission order:
//   Clicked(c1) DblClicked(c1) Selected(c1) RightClicked(c1) Check(c1,1) SignChecked(c1,1)
//   Menu(c1,open,0) Tool(rec,c1,rec) Queue[c1:1 c2:0]
// A line ends in "!" when the node is not the model's record of that id at emission time.
class CLS_NodeSignalLog : public QObject
{
public:
    explicit CLS_NodeSignalLog(CLS_TestDeviceTree* _pTree) : QObject(_pTree), m_pTree(_pTree)
    {
        connect(_pTree, &CLS_WgtDeviceTree::SignClicked, this,
                [this](CLS_CustomTreeNode _node) { Add("Clicked", _node); });
        connect(_pTree, &CLS_WgtDeviceTree::SignDblClicked, this,
                [this](CLS_CustomTreeNode _node) { Add("DblClicked", _node); });
        connect(_pTree, &CLS_WgtDeviceTree::SignSelected, this,
                [this](CLS_CustomTreeNode _node) { Add("Selected", _node); });
        connect(_pTree, &CLS_WgtDeviceTree::SignRightClicked, this,
                [this](CLS_CustomTreeNode _node) { Add("RightClicked", _node); });
        connect(_pTree, &CLS_WgtDeviceTree::SignCheckedStatusChanged, this,
                [this](CLS_CustomTreeNode _node, bool _blChecked) {
                    Add("Check", _node, _blChecked ? ",1" : ",0");
                });
        connect(_pTree, &CLS_WgtDeviceTree::SignChecked, this,
                [this](CLS_CustomTreeNode _node, bool _blChecked) {
                    Add("SignChecked", _node, _blChecked ? ",1" : ",0");
                });
        connect(_pTree, &CLS_WgtDeviceTree::SignRightMenuItemClicked, this,
                [this](CLS_CustomTreeNode _node, QString _qstrItemId, bool _blChecked) {
                    Add("Menu", _node, "," + _qstrItemId + (_blChecked ? ",1" : ",0"));
                });
        connect(_pTree, &CLS_WgtDeviceTree::SignToolButtonClicked, this,
                [this](QString _qstrCmd, CLS_CustomTreeNode _node, CLS_ItemButton _button) {
                    m_qlstLines << QString("Tool(%1,%2,%3)%4")
                                       .arg(_qstrCmd, _node.m_qstrTreeId, _button.m_qstrId, Mark(_node));
                });
        connect(_pTree, &CLS_WgtDeviceTree::SignCheckedStatusChangedQueue, this,
                [this](CLS_CheckBatch _qvecBatch, void*) {
                    m_qlstLines << "Queue[" + BatchText(_qvecBatch) + "]";
                });
    }

    QString Text() const { return m_qlstLines.join(" "); }
    // Only the lines that start with one of the prefixes.
    QString Text(const QStringList& _qlstPrefixes) const
    {
        QStringList qlstLines;
        for (const QString& qstrLine : m_qlstLines) {
            for (const QString& qstrPrefix : _qlstPrefixes) {
                if (qstrLine.startsWith(qstrPrefix + "(") || qstrLine.startsWith(qstrPrefix + "[")) {
                    qlstLines << qstrLine;
                    break;
                }
            }
        }
        return qlstLines.join(" ");
    }
    // What a check change brings, without the click and selection lines of the mouse.
    QString CheckText() const { return Text({"Check", "Queue", "SignChecked", "DblClicked"}); }
    void Clear() { m_qlstLines.clear(); }

private:
    QString Mark(const CLS_CustomTreeNode& _node) const
    {
        const auto it = m_pTree->m_qmapNodes.constFind(_node.m_qstrTreeId);
        return it != m_pTree->m_qmapNodes.cend() && NodeText(it.value()) == NodeText(_node) ? QString() : "!";
    }
    void Add(const QString& _qstrName, const CLS_CustomTreeNode& _node, const QString& _qstrMore = QString())
    {
        m_qlstLines << _qstrName + "(" + _node.m_qstrTreeId + _qstrMore + ")" + Mark(_node);
    }

    CLS_TestDeviceTree* m_pTree;
    QStringList m_qlstLines;
};

// The test menu library, once the panel has loaded it.
void* MenuLibrary()
{
    const std::string strPath = Util::GetModulePath() + "/libWgtMenu.so";
    return dlopen(strPath.c_str(), RTLD_NOW | RTLD_NOLOAD);
}

bool TriggerMenuItem(const QString& _qstrItemId)
{
    void* pLib = MenuLibrary();
    auto pFun = pLib == nullptr
                    ? nullptr
                    : reinterpret_cast<PFun_WgtMenuTest_TriggerItem>(dlsym(pLib, "WgtMenuTest_TriggerItem"));
    return pFun != nullptr && pFun(_qstrItemId);
}

_MenuItem MakeEntry(const QString& _qstrId, bool _blCheckable = false)
{
    _MenuItem entry;
    entry.m_qstrItemId = _qstrId;
    entry.m_qstrItemText = "Text " + _qstrId;
    entry.m_blCheckable = _blCheckable;
    return entry;
}

// The tool button of a row for one button id, or null.
QToolButton* ToolButton(CLS_WgtDeviceTree& _tree, const QString& _qstrRowId, const QString& _qstrButtonId)
{
    QTreeWidgetItem* pNode = NodeOf(_tree, _qstrRowId);
    QWidget* pCell = pNode == nullptr ? nullptr : BaseOf(_tree)->itemWidget(pNode, 1);
    auto* pBar = pCell == nullptr ? nullptr : pCell->findChild<CLS_WgtItemToolBar*>();
    if (pBar == nullptr)
        return nullptr;
    for (QAction* pAction : pBar->actions()) {
        if (pAction->data().value<CLS_ItemButton>().m_qstrId == _qstrButtonId)
            return qobject_cast<QToolButton*>(pBar->widgetForAction(pAction));
    }
    return nullptr;
}

} // namespace

class tst_DeviceTreeEvents : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    // node lookup
    void shouldReportClickWithModelNode();
    void shouldReportNothingForRowsWithoutNode();
    void shouldIgnoreEmptyAndUnknownIdsInRowSlots();
    void shouldReportRightClickAfterSelection();
    void shouldReportSelectionOnlyWhenAskedTo();
    void shouldClearSelectionButKeepCurrentRow();

    // double click
    void shouldReportDoubleClickThenToggleCheck();
    void shouldUncheckPartiallyCheckedRowOnDoubleClick();
    void shouldIgnoreDoubleClickOnGroup();
    void shouldSurvivePageDeletingRowOnDoubleClick();

    // menu and tool buttons
    void shouldReportMenuEntryWithCurrentNode();
    void shouldReportNoMenuEntryWithoutCurrentNode();
    void shouldReportToolButtonWithDeviceId();
    void shouldReportNoToolButtonOfRowWithoutNode();

    // check changes and batches
    void shouldBatchOneChangeIntoQueue();
    void shouldKeepEveryChangeOfOneIdInBatch();
    void shouldReportChildrenOfGroupButNeverGroup_data();
    void shouldReportChildrenOfGroupButNeverGroup();
    void shouldUntickEmptyGroupOfCustomTreeSilently();
    void shouldKeepEmptyGroupCheckedInGenericTree();
    void shouldReportHostsWithTheirChannels();
    void shouldCloseBatchOnceFromFirstChange();
    void shouldStaySilentOnQuietSet();
    void shouldReportAndOpenBatchOnSentSet();
    void shouldKeepQuietlySetIdOutOfOpenBatch();
    void shouldQueueFirstChangeDespiteEarlierQuietSet();
    void shouldDeliverBatchAfterClear();
    void shouldKeepSendMapWhenNothingQueued();
    void shouldQueueEveryRowOfACheckedSiteWithOrWithoutAListener();
    void shouldQueueNodeAsItWasWhenItsChangeWasReported();
    void shouldReportSignCheckedOnlyThroughOwnSlot();

    // calls through to the panel
    void shouldSetRootStateForEmptyId();
    void shouldRecordSendFlagForUnknownIds();
    void shouldDoNothingWithoutPanel();
    void shouldDisableRowsButNotForEmptyId();
    void shouldConsumeDropWithoutChange();
    void shouldShowAndClearSearch();
};

void tst_DeviceTreeEvents::initTestCase()
{
    qRegisterMetaType<CLS_TreeItem>("CLS_TreeItem");
    qRegisterMetaType<CLS_ItemButton>("CLS_ItemButton");
    qRegisterMetaType<CLS_CustomTreeNode>("CLS_CustomTreeNode");
    qRegisterMetaType<CLS_CheckBatch>();
}

void tst_DeviceTreeEvents::cleanup()
{
    // Menu views belong to nobody; they go here so that one test's menu does not answer the next.
    QList<QPointer<QWidget>> qlstViews;
    for (QWidget* pWidget : QApplication::topLevelWidgets()) {
        if (pWidget->inherits("CLS_ViewBasic"))
            qlstViews << pWidget;
    }
    qDeleteAll(qlstViews);
    const QStringList qlstLeaked = LeakedWindows();
    QVERIFY2(qlstLeaked.isEmpty(), qPrintable("top-level widgets left: " + qlstLeaked.join(", ")));
}

// ---- node lookup --------------------------------------------------------------------------------

void tst_DeviceTreeEvents::shouldReportClickWithModelNode()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    // The model's record, not the row's, is what goes out.
    tree.m_qmapNodes["c3"].m_qstrName = "model name";
    tree.m_qmapNodes["c3"].m_iStatus = 2;
    CLS_NodeSignalLog log(&tree);
    QSignalSpy spyClicked(&tree, &CLS_WgtDeviceTree::SignClicked);

    ClickRow(tree, "c3");
    QCOMPARE(log.Text(), QString("Selected(c3) Clicked(c3)"));
    QCOMPARE(spyClicked.count(), 1);
    const CLS_CustomTreeNode node = spyClicked.at(0).at(0).value<CLS_CustomTreeNode>();
    QCOMPARE(NodeText(node), NodeText(tree.m_qmapNodes.value("c3")));
    QCOMPARE(node.m_qstrName, QString("model name"));
}

void tst_DeviceTreeEvents::shouldReportNothingForRowsWithoutNode()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    tree.m_qmapNodes.remove("c3");
    tree.m_qmapNodes.remove(CONST_CUSTOM_ROOT);
    CLS_NodeSignalLog log(&tree);

    ClickRow(tree, "c3");
    ClickRow(tree, CONST_CUSTOM_ROOT, Qt::RightButton);
    DoubleClickRow(tree, "c3");
    ClickCheckBox(tree, "c3");
    QCOMPARE(CheckOf(tree, "c3"), Qt::Checked);
    QCOMPARE(log.Text(), QString());
    QVERIFY(!tree.m_tmCheckedWatcher.isActive());
    QVERIFY(tree.m_qvecCheckChangedQueue.isEmpty());
}

void tst_DeviceTreeEvents::shouldIgnoreEmptyAndUnknownIdsInRowSlots()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    // A node stored under the empty key is not reached by an empty id.
    tree.m_qmapNodes.insert(QString(), MakeNode(QString(), CONST_CUSTOM_ROOT, 4, "DE"));
    CLS_NodeSignalLog log(&tree);
    const CLS_TreeItem clsRow = RowOf(tree, "c3");
    CLS_ItemButton clsButton = MakeButton("play");

    for (const QString& qstrId : {QString(), QString("nope"), QString("D3")}) {
        tree.SlotClicked(qstrId, clsRow);
        tree.SlotDblClicked(qstrId, clsRow);
        tree.SlotCheckedStatusChange(qstrId, true, clsRow);
        tree.SlotSelected(qstrId, clsRow, "c1");
        tree.SlotRightClicked(qstrId, clsRow);
        tree.SlotClickButton(qstrId, clsButton);
        tree.SlotChecked(qstrId, true, clsRow);
    }
    QCOMPARE(log.Text(), QString());
    QVERIFY(!tree.m_tmCheckedWatcher.isActive());
    QCOMPARE(CheckOf(tree, "c3"), Qt::Unchecked);
}

void tst_DeviceTreeEvents::shouldReportRightClickAfterSelection()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);
    QSignalSpy spyRight(&tree, &CLS_WgtDeviceTree::SignRightClicked);

    ClickRow(tree, "c1", Qt::RightButton);
    QCOMPARE(log.Text(), QString("Selected(c1) RightClicked(c1)"));
    QCOMPARE(NodeText(spyRight.at(0).at(0).value<CLS_CustomTreeNode>()),
             NodeText(tree.m_qmapNodes.value("c1")));

    // A group is reported like any other row.
    log.Clear();
    ClickRow(tree, "ge", Qt::RightButton);
    QCOMPARE(log.Text(), QString("Selected(ge) RightClicked(ge)"));
}

void tst_DeviceTreeEvents::shouldReportSelectionOnlyWhenAskedTo()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);

    tree.SetCurrentItem("c3", true);
    QCOMPARE(log.Text(), QString("Selected(c3)"));
    tree.SetCurrentItem("c1");
    QCOMPARE(BaseOf(tree)->currentItem(), NodeOf(tree, "c1"));
    tree.SetCurrentItem("nope", true);
    tree.SetCurrentItem(QString(), true);
    QCOMPARE(BaseOf(tree)->currentItem(), NodeOf(tree, "c1"));
    QCOMPARE(log.Text(), QString("Selected(c3)"));
}

void tst_DeviceTreeEvents::shouldClearSelectionButKeepCurrentRow()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    ClickRow(tree, "c3");
    QCOMPARE(BaseOf(tree)->selectedItems().size(), 1);

    tree.ClearSelect();
    QVERIFY(BaseOf(tree)->selectedItems().isEmpty());
    QCOMPARE(BaseOf(tree)->currentItem(), NodeOf(tree, "c3"));
}

// ---- double click -------------------------------------------------------------------------------

void tst_DeviceTreeEvents::shouldReportDoubleClickThenToggleCheck()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);
    QSignalSpy spyQueue(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChangedQueue);

    DoubleClickRow(tree, "c3");
    QCOMPARE(log.Text({"DblClicked", "Check"}), QString("DblClicked(c3) Check(c3,1)"));
    QCOMPARE(CheckOf(tree, "c3"), Qt::Checked);
    QVERIFY(spyQueue.wait(5000));
    QCOMPARE(BatchText(spyQueue.at(0).at(0).value<CLS_CheckBatch>()), QString("c3:1"));

    log.Clear();
    DoubleClickRow(tree, "c3");
    QCOMPARE(log.Text({"DblClicked", "Check"}), QString("DblClicked(c3) Check(c3,0)"));
    QCOMPARE(CheckOf(tree, "c3"), Qt::Unchecked);
}

void tst_DeviceTreeEvents::shouldUncheckPartiallyCheckedRowOnDoubleClick()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE, false, true, true);
    QVERIFY(BuildShown(tree, ResourceNodes(), "All"));
    tree.SetItemCheckStatus("c1", Qt::Checked);
    QCOMPARE(CheckOf(tree, "h1"), Qt::PartiallyChecked);
    CLS_NodeSignalLog log(&tree);

    DoubleClickRow(tree, "h1");
    QCOMPARE(log.Text({"DblClicked", "Check"}), QString("DblClicked(h1) Check(c1,0) Check(h1,0)"));
    QCOMPARE(CheckOf(tree, "h1"), Qt::Unchecked);
    QCOMPARE(CheckOf(tree, "c1"), Qt::Unchecked);
}

void tst_DeviceTreeEvents::shouldIgnoreDoubleClickOnGroup()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);

    DoubleClickRow(tree, "g1");
    DoubleClickRow(tree, "ge");
    QCOMPARE(log.Text({"DblClicked", "Check"}), QString());
    QCOMPARE(CheckOf(tree, "g1"), Qt::Unchecked);
    QCOMPARE(CheckOf(tree, "c1"), Qt::Unchecked);
    QVERIFY(!tree.m_tmCheckedWatcher.isActive());
}

void tst_DeviceTreeEvents::shouldSurvivePageDeletingRowOnDoubleClick()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);
    connect(&tree, &CLS_WgtDeviceTree::SignDblClicked, &tree,
            [&tree](CLS_CustomTreeNode _node) { tree.DeleteItem(_node.m_qstrTreeId); });

    DoubleClickRow(tree, "c3");
    QCOMPARE(log.Text({"DblClicked", "Check"}), QString("DblClicked(c3)"));
    QVERIFY(NodeOf(tree, "c3") == nullptr);
    QCOMPARE(Rows(tree), QString("custom_root_id(g1(c2,c1),ge)"));
    // The toggle still asked for the gone row, with a report.
    QCOMPARE(tree.m_qmapCheckChanged.value("c3", false), true);
    QVERIFY(!tree.m_tmCheckedWatcher.isActive());
}

// ---- menu and tool buttons ----------------------------------------------------------------------

void tst_DeviceTreeEvents::shouldReportMenuEntryWithCurrentNode()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    QVERIFY2(MenuLibrary() != nullptr, "the test menu library was not loaded by the panel");
    // The page answers a right click with its menu.
    connect(&tree, &CLS_WgtDeviceTree::SignRightClicked, &tree, [&tree](CLS_CustomTreeNode) {
        PanelOf(tree)->ShowMenu({MakeEntry("open"), MakeEntry("mute", true)});
    });
    CLS_NodeSignalLog log(&tree);

    ClickRow(tree, "c1", Qt::RightButton);
    QVERIFY(TriggerMenuItem("open"));
    QCOMPARE(log.Text(), QString("Selected(c1) RightClicked(c1) Menu(c1,open,0)"));

    // The node is the current row when the entry is chosen.
    log.Clear();
    ClickRow(tree, "c2", Qt::RightButton);
    tree.SetCurrentItem("c3");
    QVERIFY(TriggerMenuItem("mute"));
    QCOMPARE(log.Text(), QString("Selected(c2) RightClicked(c2) Menu(c3,mute,1)"));
}

void tst_DeviceTreeEvents::shouldReportNoMenuEntryWithoutCurrentNode()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);

    BaseOf(tree)->setCurrentItem(nullptr);
    emit PanelOf(tree)->SignTreeMenuItemClicked("open", false);

    tree.SetCurrentItem("c3");
    tree.m_qmapNodes.remove("c3");
    emit PanelOf(tree)->SignTreeMenuItemClicked("open", false);

    tree.SetCurrentItem("c1");
    tree.SetItemDisabled("c1", true);
    emit PanelOf(tree)->SignTreeMenuItemClicked("open", false);

    tree.SetItemDisabled("c1", false);
    {
        CLS_PanelAway away(tree);
        tree.SlotTreeMenuItemClicked("open", false);
    }
    QCOMPARE(log.Text(), QString());

    emit PanelOf(tree)->SignTreeMenuItemClicked("open", true);
    QCOMPARE(log.Text(), QString("Menu(c1,open,1)"));
}

void tst_DeviceTreeEvents::shouldReportToolButtonWithDeviceId()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);
    QSignalSpy spyTool(&tree, &CLS_WgtDeviceTree::SignToolButtonClicked);

    QToolButton* pButton = ToolButton(tree, "c3", "rec");
    QVERIFY(pButton != nullptr);
    QVERIFY(pButton->isVisible());
    QTest::mouseClick(pButton, Qt::LeftButton);

    QCOMPARE(log.Text(), QString("Tool(rec,c3,rec)"));
    QCOMPARE(spyTool.count(), 1);
    const CLS_ItemButton clsButton = spyTool.at(0).at(2).value<CLS_ItemButton>();
    QCOMPARE(clsButton.m_varData.toString(), QString("D3"));
    QCOMPARE(clsButton.m_qstrIcon, tree.m_qstrPicPath + "rec.png");
    QCOMPARE(clsButton.m_qstrTooltip, QString("tip rec"));
}

void tst_DeviceTreeEvents::shouldReportNoToolButtonOfRowWithoutNode()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    tree.m_qmapNodes.remove("c3");
    CLS_NodeSignalLog log(&tree);

    QToolButton* pButton = ToolButton(tree, "c3", "play");
    QVERIFY(pButton != nullptr);
    QTest::mouseClick(pButton, Qt::LeftButton);
    QCOMPARE(log.Text(), QString());
}

// ---- check changes and batches ------------------------------------------------------------------

void tst_DeviceTreeEvents::shouldQueueEveryRowOfACheckedSiteWithOrWithoutAListener()
{
    // A site of 100 channels, big enough for the queue to be sized for the cascade.
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    Add(qmapNodes, MakeNode("site", CONST_CUSTOM_ROOT, 2, QString(), 1));
    for (int i = 0; i < 100; ++i)
        Add(qmapNodes,
            MakeNode(QString("s%1").arg(i, 3, 10, QChar('0')), "site", 4, QString("D%1").arg(i), 100 - i, 1));
    QStringList qlstTexts;
    for (bool blListener : {true, false}) {
        CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
        QVERIFY(BuildShown(tree, qmapNodes, "Root"));
        QSignalSpy spyQueue(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChangedQueue);
        int iHeard = 0;
        if (blListener) {
            connect(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChanged, &tree,
                    [&iHeard](CLS_CustomTreeNode, bool) { ++iHeard; });
        }

        tree.SetItemCheckStatus(QString(), Qt::Checked, true);

        QCOMPARE(iHeard, blListener ? 100 : 0);
        QVERIFY(spyQueue.wait(5000));
        const CLS_CheckBatch qvecBatch = spyQueue.at(0).at(0).value<CLS_CheckBatch>();
        QCOMPARE(qvecBatch.size(), 100);
        QCOMPARE(NodeText(qvecBatch.first().first), NodeText(tree.m_qmapNodes.value("s099")));
        qlstTexts << BatchText(qvecBatch);
    }
    QCOMPARE(qlstTexts.at(1), qlstTexts.at(0));
    QVERIFY(qlstTexts.at(0).startsWith("s099:1 s098:1 "));
}

void tst_DeviceTreeEvents::shouldQueueNodeAsItWasWhenItsChangeWasReported()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    QSignalSpy spyQueue(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChangedQueue);
    // The page renames the node in its slot: the batch still holds the node it was told of.
    connect(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChanged, &tree,
            [&tree](CLS_CustomTreeNode _node, bool) {
                tree.m_qmapNodes[_node.m_qstrTreeId].m_qstrName = "renamed";
            });
    const QString qstrBefore = tree.m_qmapNodes.value("c3").m_qstrName;

    ClickCheckBox(tree, "c3");

    QCOMPARE(tree.m_qmapNodes.value("c3").m_qstrName, QString("renamed"));
    QVERIFY(spyQueue.wait(5000));
    const CLS_CheckBatch qvecBatch = spyQueue.at(0).at(0).value<CLS_CheckBatch>();
    QCOMPARE(qvecBatch.size(), 1);
    QCOMPARE(qvecBatch.at(0).first.m_qstrName, qstrBefore);
}

void tst_DeviceTreeEvents::shouldBatchOneChangeIntoQueue()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);
    QSignalSpy spyQueue(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChangedQueue);

    ClickCheckBox(tree, "c3");
    QCOMPARE(log.CheckText(), QString("Check(c3,1)"));
    QVERIFY(tree.m_tmCheckedWatcher.isActive());
    QCOMPARE(spyQueue.count(), 0);

    QVERIFY(spyQueue.wait(5000));
    QCOMPARE(spyQueue.count(), 1);
    const CLS_CheckBatch qvecBatch = spyQueue.at(0).at(0).value<CLS_CheckBatch>();
    QCOMPARE(BatchText(qvecBatch), QString("c3:1"));
    QCOMPARE(NodeText(qvecBatch.at(0).first), NodeText(tree.m_qmapNodes.value("c3")));
    QVERIFY(spyQueue.at(0).at(1).value<void*>() == nullptr);
    QCOMPARE(log.CheckText(), QString("Check(c3,1) Queue[c3:1]"));
    // One shot per batch.
    QVERIFY(!tree.m_tmCheckedWatcher.isActive());
    QVERIFY(tree.m_qvecCheckChangedQueue.isEmpty());
    QVERIFY(tree.m_qmapCheckChanged.isEmpty());
}

void tst_DeviceTreeEvents::shouldKeepEveryChangeOfOneIdInBatch()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);
    QSignalSpy spyQueue(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChangedQueue);

    ClickCheckBox(tree, "c3");
    ClickCheckBox(tree, "c3");
    ClickCheckBox(tree, "c3");
    QCOMPARE(log.CheckText(), QString("Check(c3,1) Check(c3,0) Check(c3,1)"));
    QVERIFY(spyQueue.wait(5000));
    QCOMPARE(log.CheckText(), QString("Check(c3,1) Check(c3,0) Check(c3,1) Queue[c3:1 c3:0 c3:1]"));
    QVERIFY(!tree.m_tmCheckedWatcher.isActive());
}

void tst_DeviceTreeEvents::shouldReportChildrenOfGroupButNeverGroup_data()
{
    QTest::addColumn<int>("treeType");
    QTest::newRow("custom") << int(DEV_TREE_CUSTOM);
    QTest::newRow("generic") << int(DEV_TREE_GENERIC);
}

void tst_DeviceTreeEvents::shouldReportChildrenOfGroupButNeverGroup()
{
    QFETCH(int, treeType);
    const bool blCustom = treeType == DEV_TREE_CUSTOM;
    CLS_TestDeviceTree tree(nullptr, n_DevTreeType(treeType), false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);
    QSignalSpy spyQueue(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChangedQueue);

    ClickCheckBox(tree, "g1");
    QCOMPARE(CheckOf(tree, "g1"), Qt::Checked);
    QCOMPARE(log.CheckText(), QString("Check(c2,1) Check(c1,1)"));
    QVERIFY(spyQueue.wait(5000));
    QCOMPARE(log.CheckText(), QString("Check(c2,1) Check(c1,1) Queue[c2:1 c1:1]"));

    // The root's check runs through every row: the groups stay out of both signals. In a custom
    // tree the empty group is put back on the way.
    log.Clear();
    ClickCheckBox(tree, CONST_CUSTOM_ROOT);
    QCOMPARE(CheckOf(tree, "ge"), blCustom ? Qt::Unchecked : Qt::Checked);
    QCOMPARE(CheckOf(tree, "c3"), Qt::Checked);
    QCOMPARE(CheckOf(tree, CONST_CUSTOM_ROOT), blCustom ? Qt::PartiallyChecked : Qt::Checked);
    QCOMPARE(log.CheckText(), QString("Check(c3,1)"));
    QVERIFY(spyQueue.wait(5000));
    QCOMPARE(log.CheckText(), QString("Check(c3,1) Queue[c3:1]"));
}

void tst_DeviceTreeEvents::shouldUntickEmptyGroupOfCustomTreeSilently()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);

    ClickCheckBox(tree, "ge");
    QCOMPARE(CheckOf(tree, "ge"), Qt::Unchecked);
    QCOMPARE(log.CheckText(), QString());
    // The batch never opened, so nothing can follow.
    QVERIFY(!tree.m_tmCheckedWatcher.isActive());
    QVERIFY(tree.m_qvecCheckChangedQueue.isEmpty());
    QCOMPARE(tree.m_qmapCheckChanged.value("ge", true), false);
}

void tst_DeviceTreeEvents::shouldKeepEmptyGroupCheckedInGenericTree()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_GENERIC, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);

    ClickCheckBox(tree, "ge");
    QCOMPARE(CheckOf(tree, "ge"), Qt::Checked);
    QCOMPARE(log.CheckText(), QString());
    QVERIFY(!tree.m_tmCheckedWatcher.isActive());
}

void tst_DeviceTreeEvents::shouldReportHostsWithTheirChannels()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_RESOURCE, false, true, true);
    QVERIFY(BuildShown(tree, ResourceNodes(), "All"));
    CLS_NodeSignalLog log(&tree);
    QSignalSpy spyQueue(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChangedQueue);

    ClickCheckBox(tree, "h1");
    QCOMPARE(log.CheckText(), QString("Check(c1,1) Check(c2,1) Check(h1,1)"));
    QVERIFY(spyQueue.wait(5000));
    QCOMPARE(log.CheckText(), QString("Check(c1,1) Check(c2,1) Check(h1,1) Queue[c1:1 c2:1 h1:1]"));
}

void tst_DeviceTreeEvents::shouldCloseBatchOnceFromFirstChange()
{
    // Given changes that keep coming far more often than the batch length,
    // when the batch closes while they still come,
    // then it closed a fixed time after its first change, and later changes form the next batch.
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    QSignalSpy spyQueue(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChangedQueue);

    QStringList qlstChanges;
    bool blChecked = false;
    for (int i = 0; i < 100 && spyQueue.isEmpty(); ++i) {
        blChecked = !blChecked;
        tree.SetItemCheckStatus("c3", blChecked ? Qt::Checked : Qt::Unchecked, true);
        qlstChanges << (blChecked ? "c3:1" : "c3:0");
        QTest::qWait(20);
    }
    QVERIFY2(spyQueue.count() == 1, "the batch was held open by later changes");
    const QStringList qlstFirst = BatchText(spyQueue.at(0).at(0).value<CLS_CheckBatch>()).split(' ');
    QVERIFY(!qlstFirst.isEmpty());
    QCOMPARE(qlstFirst, qlstChanges.mid(0, qlstFirst.size()));

    // One more change after the close; it joins those that came after the close.
    blChecked = !blChecked;
    tree.SetItemCheckStatus("c3", blChecked ? Qt::Checked : Qt::Unchecked, true);
    qlstChanges << (blChecked ? "c3:1" : "c3:0");
    QVERIFY(spyQueue.wait(5000));
    QCOMPARE(spyQueue.count(), 2);
    QCOMPARE(BatchText(spyQueue.at(1).at(0).value<CLS_CheckBatch>()).split(' '),
             qlstChanges.mid(qlstFirst.size()));
}

void tst_DeviceTreeEvents::shouldStaySilentOnQuietSet()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);

    tree.SetItemCheckStatus("c3", Qt::Checked);
    tree.SetItemCheckStatus("g1", Qt::Checked, false);
    QCOMPARE(CheckOf(tree, "c3"), Qt::Checked);
    QCOMPARE(CheckOf(tree, "c1"), Qt::Checked);
    QCOMPARE(log.CheckText(), QString());
    QVERIFY(!tree.m_tmCheckedWatcher.isActive());
    QCOMPARE(tree.m_qmapCheckChanged.value("c3", true), false);
    QCOMPARE(tree.m_qmapCheckChanged.value("g1", true), false);
}

void tst_DeviceTreeEvents::shouldReportAndOpenBatchOnSentSet()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);
    QSignalSpy spyQueue(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChangedQueue);

    tree.SetItemCheckStatus("c3", Qt::Checked, true);
    QCOMPARE(log.CheckText(), QString("Check(c3,1)"));
    QVERIFY(tree.m_tmCheckedWatcher.isActive());
    // A state that does not change reports nothing.
    tree.SetItemCheckStatus("c3", Qt::Checked, true);
    QCOMPARE(log.CheckText(), QString("Check(c3,1)"));
    QVERIFY(spyQueue.wait(5000));
    QCOMPARE(log.CheckText(), QString("Check(c3,1) Queue[c3:1]"));
}

void tst_DeviceTreeEvents::shouldKeepQuietlySetIdOutOfOpenBatch()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);
    QSignalSpy spyQueue(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChangedQueue);

    ClickCheckBox(tree, "c3");                        // opens the batch
    tree.SetItemCheckStatus("c1", Qt::Checked);       // quiet: c1 stays out of this batch
    tree.SetItemCheckStatus("c2", Qt::Checked, true); // reported: c2 stays in
    ClickCheckBox(tree, "c1");
    ClickCheckBox(tree, "c2");
    QCOMPARE(log.CheckText(), QString("Check(c3,1) Check(c2,1) Check(c1,0) Check(c2,0)"));
    QVERIFY(spyQueue.wait(5000));
    QCOMPARE(log.CheckText(),
             QString("Check(c3,1) Check(c2,1) Check(c1,0) Check(c2,0) Queue[c3:1 c2:1 c2:0]"));

    // The next batch starts with a clean slate.
    log.Clear();
    ClickCheckBox(tree, "c1");
    QVERIFY(spyQueue.wait(5000));
    QCOMPARE(log.CheckText(), QString("Check(c1,1) Queue[c1:1]"));
}

void tst_DeviceTreeEvents::shouldQueueFirstChangeDespiteEarlierQuietSet()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);
    QSignalSpy spyQueue(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChangedQueue);

    tree.SetItemCheckStatus("c3", Qt::Checked); // no batch open
    ClickCheckBox(tree, "c3");
    ClickCheckBox(tree, "c3");
    QVERIFY(spyQueue.wait(5000));
    QCOMPARE(log.CheckText(), QString("Check(c3,0) Check(c3,1) Queue[c3:0 c3:1]"));
}

void tst_DeviceTreeEvents::shouldDeliverBatchAfterClear()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    const CLS_CustomTreeNode model = tree.m_qmapNodes.value("c3");
    QSignalSpy spyQueue(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChangedQueue);

    ClickCheckBox(tree, "c3");
    tree.Clear();
    QVERIFY(tree.m_tmCheckedWatcher.isActive());
    QVERIFY(spyQueue.wait(5000));
    const CLS_CheckBatch qvecBatch = spyQueue.at(0).at(0).value<CLS_CheckBatch>();
    QCOMPARE(BatchText(qvecBatch), QString("c3:1"));
    QCOMPARE(NodeText(qvecBatch.at(0).first), NodeText(model));
}

void tst_DeviceTreeEvents::shouldKeepSendMapWhenNothingQueued()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    QSignalSpy spyQueue(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChangedQueue);
    tree.SetItemCheckStatus("c3", Qt::Checked);

    tree.SlotCheckedSignalWatcherTimeout();
    QCOMPARE(spyQueue.count(), 0);
    QCOMPARE(tree.m_qmapCheckChanged.value("c3", true), false);
    QVERIFY(!tree.m_tmCheckedWatcher.isActive());
}

void tst_DeviceTreeEvents::shouldReportSignCheckedOnlyThroughOwnSlot()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);
    QSignalSpy spyQueue(&tree, &CLS_WgtDeviceTree::SignCheckedStatusChangedQueue);

    ClickCheckBox(tree, "g1");
    tree.SetItemCheckStatus("c3", Qt::Checked, true);
    QVERIFY(spyQueue.wait(5000));
    QCOMPARE(log.Text({"SignChecked"}), QString());
    QCOMPARE(tree.receivers(SIGNAL(SignChecked(CLS_CustomTreeNode, bool))), 1); // the log alone

    log.Clear();
    tree.SlotChecked("c1", false, RowOf(tree, "c1"));
    tree.SlotChecked("ge", true, RowOf(tree, "ge"));
    QCOMPARE(log.Text(), QString("SignChecked(c1,0) SignChecked(ge,1)"));
}

// ---- calls through to the panel -----------------------------------------------------------------

void tst_DeviceTreeEvents::shouldSetRootStateForEmptyId()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);

    tree.SetItemCheckStatus(QString(), Qt::Checked);
    QCOMPARE(CheckOf(tree, CONST_CUSTOM_ROOT), Qt::Checked);
    QCOMPARE(CheckOf(tree, "c1"), Qt::Checked);
    QCOMPARE(CheckOf(tree, "c3"), Qt::Checked);
    QCOMPARE(log.Text(), QString());
    QCOMPARE(tree.m_qmapCheckChanged.value(CONST_CUSTOM_ROOT, true), false);
    QVERIFY(!tree.m_qmapCheckChanged.contains(QString()));
}

void tst_DeviceTreeEvents::shouldRecordSendFlagForUnknownIds()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);
    tree.SetItemCheckStatus("nope", Qt::Checked, true);
    QCOMPARE(tree.m_qmapCheckChanged.value("nope", false), true);
    QCOMPARE(log.Text(), QString());
    QVERIFY(!tree.m_tmCheckedWatcher.isActive());

    CLS_TestDeviceTree plain(nullptr, DEV_TREE_CUSTOM, false, false, true);
    QVERIFY(BuildShown(plain, CustomNodes(), "Root"));
    plain.SetItemCheckStatus("c3", Qt::Checked, true);
    QCOMPARE(plain.m_qmapCheckChanged.value("c3", false), true);
    QVERIFY(!NodeOf(plain, "c3")->data(0, Qt::CheckStateRole).isValid());
}

void tst_DeviceTreeEvents::shouldDoNothingWithoutPanel()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    CLS_NodeSignalLog log(&tree);
    tree.SetCurrentItem("c3");
    {
        CLS_PanelAway away(tree);
        tree.SetItemCheckStatus("c1", Qt::Checked, true);
        tree.SetItemDisabled("c1", true);
        tree.SetCurrentItem("c1", true);
        tree.ClearSelect();
        tree.ShowSearch();
        tree.ClearSearch();
        tree.ClearAndCloseSearch();
    }
    QVERIFY(tree.m_qmapCheckChanged.isEmpty());
    QCOMPARE(CheckOf(tree, "c1"), Qt::Unchecked);
    QVERIFY(NodeOf(tree, "c1")->flags() & Qt::ItemIsEnabled);
    QCOMPARE(BaseOf(tree)->currentItem(), NodeOf(tree, "c3"));
    QCOMPARE(BaseOf(tree)->selectedItems().size(), 1);
    QCOMPARE(log.Text(), QString());
}

void tst_DeviceTreeEvents::shouldDisableRowsButNotForEmptyId()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));

    tree.SetItemDisabled(QString(), true);
    QVERIFY(NodeOf(tree, CONST_CUSTOM_ROOT)->flags() & Qt::ItemIsEnabled);
    QVERIFY(NodeOf(tree, "c3")->flags() & Qt::ItemIsEnabled);

    tree.SetItemDisabled("c3", true);
    QVERIFY(!(NodeOf(tree, "c3")->flags() & Qt::ItemIsEnabled));
    tree.SetItemDisabled("c3", false);
    QVERIFY(NodeOf(tree, "c3")->flags() & Qt::ItemIsEnabled);

    // Rows of a tree without check boxes cannot be disabled.
    CLS_TestDeviceTree plain(nullptr, DEV_TREE_CUSTOM, false, false, true);
    QVERIFY(BuildShown(plain, CustomNodes(), "Root"));
    plain.SetItemDisabled("c3", true);
    QVERIFY(NodeOf(plain, "c3")->flags() & Qt::ItemIsEnabled);
}

void tst_DeviceTreeEvents::shouldConsumeDropWithoutChange()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, true, true, true, false, true);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    QStringList qlstBefore;
    for (const CLS_CustomTreeNode& node : tree.m_qmapNodes)
        qlstBefore << NodeText(node);
    CLS_NodeSignalLog log(&tree);

    tree.SlotDroped(RowOf(tree, "c1"));
    emit PanelOf(tree)->SignDroped(RowOf(tree, "g1"));

    QStringList qlstAfter;
    for (const CLS_CustomTreeNode& node : tree.m_qmapNodes)
        qlstAfter << NodeText(node);
    QCOMPARE(qlstAfter, qlstBefore);
    QCOMPARE(Rows(tree), CONST_CUSTOM_ROWS);
    QCOMPARE(log.Text(), QString());
}

void tst_DeviceTreeEvents::shouldShowAndClearSearch()
{
    CLS_TestDeviceTree tree(nullptr, DEV_TREE_CUSTOM, false, true, true, false);
    QVERIFY(BuildShown(tree, CustomNodes(), "Root"));
    QApplication::setActiveWindow(&tree);
    QVERIFY(QTest::qWaitForWindowActive(&tree));
    auto* pLine = PanelOf(tree)->findChild<QLineEdit*>("qlineedtQueryInput");
    auto* pList = PanelOf(tree)->findChild<QListWidget*>("qlistWgtQueryResult");
    QVERIFY(pLine != nullptr && pList != nullptr);
    QVERIFY(!pLine->isVisible());

    tree.ShowSearch();
    QVERIFY(pLine->isVisible());
    QTRY_VERIFY(pLine->hasFocus());

    pLine->setText("c");
    QVERIFY(pList->isVisible());
    tree.ClearSearch();
    QCOMPARE(pLine->text(), QString());
    QVERIFY(!pList->isVisible());
    QVERIFY(pLine->isVisible());

    pLine->setText("c");
    tree.ClearAndCloseSearch();
    QCOMPARE(pLine->text(), QString());
    QVERIFY(!pList->isVisible());
    QVERIFY(!pLine->isVisible());
}

QTEST_MAIN(tst_DeviceTreeEvents)
#include "tst_DeviceTreeEvents.moc"
