// Several rows of a device tree selected with Ctrl and Shift clicks, the selected nodes in row order,
// SignSelected and GetCurrentItem for the current row only, and the payload of CreateDragData read
// back with ReadDragData.

#include "CLS_FindAndTakeTestUtil.h"

#include <QMimeData>
#include <QSignalSpy>
#include <QtTest>

using namespace CLS_FindAndTakeTestUtil;

namespace {

void Click(CLS_WgtDeviceTree& _tree, const QString& _qstrId,
           Qt::KeyboardModifiers _modifiers = Qt::NoModifier)
{
    QTest::mouseClick(BaseOf(_tree)->viewport(), Qt::LeftButton, _modifiers, RowCenter(_tree, _qstrId));
}

QStringList Selected(CLS_WgtDeviceTree& _tree)
{
    QVector<CLS_CustomTreeNode> qvecNodes;
    if (_tree.GetSelectedNodes(qvecNodes) != 0)
        return {"<failed>"};
    return TreeIds(qvecNodes);
}

QStringList SelectedIds(const QSignalSpy& _spy)
{
    QStringList qlstIds;
    for (const QList<QVariant>& qlstArgs : _spy)
        qlstIds << qlstArgs.at(0).value<CLS_CustomTreeNode>().m_qstrTreeId;
    return qlstIds;
}

QString CurrentId(CLS_WgtDeviceTree& _tree)
{
    CLS_CustomTreeNode node;
    return _tree.GetCurrentItem(node) == 0 ? node.m_qstrTreeId : QString("<none>");
}

} // namespace

class tst_DeviceTreeMultiSelect : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QVERIFY2(LeakedWindows().isEmpty(), qPrintable(LeakedWindows().join(", "))); }

    void ctrlClickSelectsOneRowWhileMultiSelectIsOff()
    {
        CLS_SelectionTree tree;
        QVERIFY(ShowSites(tree, false));
        QVERIFY(!tree.GetMultiSelect());
        Click(tree, "c1");
        Click(tree, "c4", Qt::ControlModifier);
        QCOMPARE(Selected(tree), QStringList({"c4"}));
        Click(tree, "c7", Qt::ShiftModifier);
        QCOMPARE(Selected(tree), QStringList({"c7"}));
    }

    void ctrlClicksAddRowsInRowOrder()
    {
        CLS_SelectionTree tree;
        QVERIFY(ShowSites(tree, true));
        QVERIFY(tree.GetMultiSelect());
        Click(tree, "c7");
        Click(tree, "c1", Qt::ControlModifier);
        Click(tree, "c8", Qt::ControlModifier);
        Click(tree, "north", Qt::ControlModifier);
        // Clicked c7, c1, c8, north; listed in the tree's order.
        QCOMPARE(Selected(tree), QStringList({"north", "c1", "c8", "c7"}));
        // A second Ctrl click takes a row out again.
        Click(tree, "c1", Qt::ControlModifier);
        QCOMPARE(Selected(tree), QStringList({"north", "c8", "c7"}));
    }

    void shiftClickSelectsTheRange()
    {
        CLS_SelectionTree tree;
        QVERIFY(ShowSites(tree, true));
        Click(tree, "c2");
        Click(tree, "c4", Qt::ShiftModifier);
        QCOMPARE(Selected(tree), QStringList({"c2", "level", "c3", "room", "c8", "south", "c4"}));
        // A Ctrl click adds one row more.
        Click(tree, "c6", Qt::ControlModifier);
        QCOMPARE(Selected(tree), QStringList({"c2", "level", "c3", "room", "c8", "south", "c4", "c6"}));
    }

    void selectedSignalSpeaksOfTheCurrentRowOnly()
    {
        CLS_SelectionTree tree;
        QVERIFY(ShowSites(tree, true));
        QSignalSpy spySelected(&tree, &CLS_WgtDeviceTree::SignSelected);
        Click(tree, "c1");
        Click(tree, "c5", Qt::ShiftModifier);
        // Nine rows selected, one signal for each click, each for the clicked row.
        QCOMPARE(Selected(tree).size(), 9);
        QCOMPARE(SelectedIds(spySelected), QStringList({"c1", "c5"}));
        QCOMPARE(CurrentId(tree), QString("c5"));
        Click(tree, "c2", Qt::ControlModifier); // takes c2 out; c2 is current all the same
        QCOMPARE(SelectedIds(spySelected), QStringList({"c1", "c5", "c2"}));
        QCOMPARE(CurrentId(tree), QString("c2"));
        QVERIFY(!Selected(tree).contains("c2"));
    }

    void selectedNodesAreAppended()
    {
        CLS_SelectionTree tree;
        QVERIFY(ShowSites(tree, true));
        Click(tree, "c3");
        Click(tree, "c6", Qt::ControlModifier);
        QVector<CLS_CustomTreeNode> qvecNodes(1);
        qvecNodes[0].m_qstrTreeId = "kept";
        QCOMPARE(tree.GetSelectedNodes(qvecNodes), 0);
        QCOMPARE(TreeIds(qvecNodes), QStringList({"kept", "c3", "c6"}));
        QCOMPARE(qvecNodes.at(1).m_qstrExtend, QString("10.0.9.1:1")); // the model's record
    }

    void nothingSelectedGivesNothing()
    {
        CLS_SelectionTree tree;
        QVERIFY(BuildSites(tree));
        QCOMPARE(Selected(tree), QStringList());
        tree.SetMultiSelect(true);
        QCOMPARE(Selected(tree), QStringList());
    }

    void turningMultiSelectOffKeepsTheCurrentRowSelected()
    {
        CLS_SelectionTree tree;
        QVERIFY(ShowSites(tree, true));
        Click(tree, "c1");
        Click(tree, "c4", Qt::ControlModifier);
        Click(tree, "c6", Qt::ControlModifier);
        QCOMPARE(Selected(tree).size(), 3);
        tree.SetMultiSelect(false);
        QCOMPARE(Selected(tree), QStringList({"c6"}));
        QCOMPARE(BaseOf(tree)->selectionMode(), QAbstractItemView::SingleSelection);
        Click(tree, "c2", Qt::ControlModifier);
        QCOMPARE(Selected(tree), QStringList({"c2"}));
    }

    void createDragDataCarriesTheNodesAndReadsBack()
    {
        CLS_SelectionTree tree;
        QVERIFY(BuildSites(tree));
        std::unique_ptr<QMimeData> pData(tree.CreateDragData({"c5", "unknown", "c1", ""}));
        QVERIFY(pData != nullptr);
        QVERIFY(pData->hasFormat("application/x-wgttree-nodes"));
        QVERIFY(pData->hasFormat("application/x-qabstractitemmodeldatalist"));
        QCOMPARE(pData->text(), QString("Gate north side\nEntrance"));
        // The tree's own format holds the first row's address, as the tree's own drag writes it.
        QCOMPARE(pData->data("application/x-qabstractitemmodeldatalist"),
                 QString::number(reinterpret_cast<quintptr>(NodeOf(tree, "c5"))).toUtf8());
        QVector<CLS_CustomTreeNode> qvecNodes;
        QCOMPARE(CLS_WgtDeviceTree::ReadDragData(pData.get(), qvecNodes), 0);
        QCOMPARE(TreeIds(qvecNodes), QStringList({"c5", "c1"}));
        QCOMPARE(qvecNodes.at(0).m_qstrDevId, QString("dev-c5"));
        QCOMPARE(qvecNodes.at(0).m_iType, 4);
        QCOMPARE(qvecNodes.at(0).m_qstrName, QString("Gate north side"));
        QCOMPARE(qvecNodes.at(0).m_iChannelNo, 2);
        QCOMPARE(CLS_WgtDeviceTree::ReadDragData(nullptr, qvecNodes), -1);
        QCOMPARE(qvecNodes.size(), 2);
    }

    void selectionIsKeptWhenTheSearchGoesToARow()
    {
        // Going to a search hit makes it the current row; with multi-select the view's own
        // current-row change selects it alone, as a plain click does.
        CLS_SelectionTree tree;
        QVERIFY(ShowSites(tree, true));
        Click(tree, "c1");
        Click(tree, "c4", Qt::ControlModifier);
        tree.SetCurrentItem("c6", true);
        QCOMPARE(CurrentId(tree), QString("c6"));
        QVERIFY(Selected(tree).contains("c6"));
    }

    void ctrlFInTheTreeOpensTheSearchLine()
    {
        CLS_SelectionTree tree;
        QVERIFY(ShowSites(tree, false));
        tree.ClearAndCloseSearch();
        QLineEdit* pLine = SearchLine(tree);
        QVERIFY(pLine->isHidden());
        BaseOf(tree)->setFocus();
        QVERIFY(BaseOf(tree)->hasFocus());
        QTest::keyClick(BaseOf(tree), Qt::Key_F, Qt::ControlModifier);
        QVERIFY(pLine->isVisible());
        QVERIFY(pLine->hasFocus());
        // A plain F is the tree's keyboard search, and leaves the line alone.
        tree.ClearAndCloseSearch();
        BaseOf(tree)->setFocus();
        QTest::keyClick(BaseOf(tree), Qt::Key_F);
        QVERIFY(pLine->isHidden());
    }

    void ctrlFDoesNothingInATreeWithoutSearchLine()
    {
        CLS_SelectionTree tree(false);
        QVERIFY(ShowSites(tree, false));
        QLineEdit* pLine = SearchLine(tree);
        QVERIFY(pLine->isHidden());
        BaseOf(tree)->setFocus();
        QTest::keyClick(BaseOf(tree), Qt::Key_F, Qt::ControlModifier);
        QVERIFY(pLine->isHidden());
    }
};

QTEST_MAIN(tst_DeviceTreeMultiSelect)
#include "tst_DeviceTreeMultiSelect.moc"
