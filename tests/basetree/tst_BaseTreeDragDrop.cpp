// Drag and drop of CLS_WgtBaseTreeWidget with hand-made drag-enter and drop events: the vetoes,
// SignDroped, the dragging flag, and what startDrag builds. A drop event made by hand has no drag
// source, so the view's internal move never runs here; tst_BaseTreeDragSession covers real drags.

#include "CLS_TestBaseTree.h"
#include "CLS_TreeSnapshot.h"

#include <QApplication>
#include <QDataStream>
#include <QDrag>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using CLS_TreeSnapshot::Snapshot;
using namespace CLS_TreeTestUtil;

namespace {

const char* const CONST_pMimeType = "application/x-qabstractitemmodeldatalist";

// root (no row)
//   a (1): a1 (1), a2 (2)
//   b (2)
//   c (3)
//   d (4), not enabled
QMap<QString, CLS_TreeItem> SampleTree()
{
    QMap<QString, CLS_TreeItem> qmapItems = ItemsOf("root", "a(a1,a2),b,c,d");
    qmapItems["d"].m_iItemFlags = Qt::ItemIsSelectable | Qt::ItemIsDropEnabled;
    return qmapItems;
}

const QString CONST_qstrSample = "a(a1,a2),b,c,d";

// One row "copy" in the item-model stream, which the base class inserts when it handles a drop
// itself. It shows whether, and when, the base class's drop ran.
void FillModelStream(QMimeData& _mimeData)
{
    QByteArray qbaEncoded;
    QDataStream stream(&qbaEncoded, QIODevice::WriteOnly);
    QMap<int, QVariant> qmapRoles;
    qmapRoles.insert(Qt::DisplayRole, QString("copy"));
    qmapRoles.insert(Qt::UserRole, QString("copy"));
    stream << 0 << 0 << qmapRoles;
    _mimeData.setData(CONST_pMimeType, qbaEncoded);
}

struct STRCT_DropResult
{
    bool m_blAccepted = false;
    Qt::DropAction m_iAction = Qt::IgnoreAction;
};

STRCT_DropResult SendDragEnter(CLS_TestBaseTree& _tree, const QPoint& _pos, QMimeData& _mimeData)
{
    QDragEnterEvent event(_pos, Qt::MoveAction, &_mimeData, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(_tree.viewport(), &event);
    return {event.isAccepted(), event.dropAction()};
}

// A drag that enters at the point and drops there. The enter is needed: the application hands a
// drop only to the widget that accepted the last drag enter.
STRCT_DropResult SendDrop(CLS_TestBaseTree& _tree, const QPoint& _pos, QMimeData& _mimeData)
{
    SendDragEnter(_tree, _pos, _mimeData);
    QDropEvent event(QPointF(_pos), Qt::MoveAction, &_mimeData, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(_tree.viewport(), &event);
    return {event.isAccepted(), event.dropAction()};
}

QPushButton* DragPictureButton()
{
    for (QWidget* pWidget : QApplication::topLevelWidgets()) {
        if (pWidget->objectName() == "dragBgBtn")
            return qobject_cast<QPushButton*>(pWidget);
    }
    return nullptr;
}

int DragPictureButtonCount()
{
    int iCount = 0;
    for (QWidget* pWidget : QApplication::topLevelWidgets())
        iCount += pWidget->objectName() == "dragBgBtn" ? 1 : 0;
    return iCount;
}

} // namespace

class tst_BaseTreeDragDrop : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    // drag enter
    void shouldAcceptEnterAndSetDraggingWithDrag();
    void shouldNotSetDraggingWithoutDrag();

    // drop
    void shouldVetoDropOnEmptyArea();
    void shouldVetoDropOnDisabledRow();
    void shouldVetoDropOnPressedCurrentLeaf();
    void shouldVetoRowCurrentAtPressButReportOtherTarget();
    void shouldVetoEmptyRecordAgainstEmptyDragItem();
    void shouldEmitDropedBeforeBaseDropRuns();
    void shouldNeverLetBaseDropActOnVeto();
    void shouldPassDropStraightOnWithoutDrag();
    void shouldKeepDraggingAfterVetoUntilRelease();

    // startDrag
    void shouldStartNothingWithoutCurrentRow();
    void shouldStartNothingFromDisabledRow();
    void shouldBuildMovePayloadFromCurrentRow();
    void shouldKeepPictureButtonAfterDragWithShownText();
    void shouldDragRowWithChildren();
};

void tst_BaseTreeDragDrop::initTestCase()
{
    qRegisterMetaType<CLS_TreeItem>("CLS_TreeItem");
}

void tst_BaseTreeDragDrop::cleanup()
{
    const QStringList qlstLeaked = LeakedTopLevels();
    QVERIFY2(qlstLeaked.isEmpty(), qPrintable("top-level widgets left: " + qlstLeaked.join(", ")));
}

// ---- drag enter ----------------------------------------------------------------------------------

void tst_BaseTreeDragDrop::shouldAcceptEnterAndSetDraggingWithDrag()
{
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    QMimeData mimeData;
    mimeData.setData(CONST_pMimeType, QByteArray("12345"));
    const STRCT_DropResult result = SendDragEnter(tree, RowCenter(tree, "c"), mimeData);
    QVERIFY(result.m_blAccepted);
    QCOMPARE(result.m_iAction, Qt::MoveAction);
    QVERIFY(tree.m_blDragging);
}

void tst_BaseTreeDragDrop::shouldNotSetDraggingWithoutDrag()
{
    CLS_TestBaseTree tree(nullptr, false, false, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    QMimeData mimeData;
    mimeData.setData(CONST_pMimeType, QByteArray("12345"));
    SendDragEnter(tree, RowCenter(tree, "c"), mimeData);
    QVERIFY(!tree.m_blDragging);
    tree.dragEnterEvent(nullptr); // ignored
    QVERIFY(!tree.m_blDragging);
}

// ---- drop ----------------------------------------------------------------------------------------

void tst_BaseTreeDragDrop::shouldVetoDropOnEmptyArea()
{
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    CLS_TreeSignalLog log(&tree);
    QMimeData mimeData;
    mimeData.setData(CONST_pMimeType, QByteArray("1"));
    SendDragEnter(tree, EmptyAreaPoint(tree), mimeData);

    const STRCT_DropResult result = SendDrop(tree, EmptyAreaPoint(tree), mimeData);

    QCOMPARE(result.m_iAction, Qt::IgnoreAction);
    QVERIFY(!result.m_blAccepted);
    QVERIFY2(log.Count("Droped") == 0, qPrintable(log.Text()));
    QCOMPARE(Snapshot(tree), CONST_qstrSample);
    tree.dropEvent(nullptr); // ignored
}

void tst_BaseTreeDragDrop::shouldVetoDropOnDisabledRow()
{
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    CLS_TreeSignalLog log(&tree);
    QMimeData mimeData;
    mimeData.setData(CONST_pMimeType, QByteArray("1"));
    SendDragEnter(tree, RowCenter(tree, "d"), mimeData);

    const STRCT_DropResult result = SendDrop(tree, RowCenter(tree, "d"), mimeData);

    QCOMPARE(result.m_iAction, Qt::IgnoreAction);
    QVERIFY(!result.m_blAccepted);
    QVERIFY2(log.Count("Droped") == 0, qPrintable(log.Text()));
}

void tst_BaseTreeDragDrop::shouldVetoDropOnPressedCurrentLeaf()
{
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    tree.SetCurrentItem("a1");
    QTest::mousePress(tree.viewport(), Qt::LeftButton, Qt::NoModifier, RowCenter(tree, "a1"));
    QCOMPARE(tree.m_clsDragItem.m_qstrId, QString("a1"));
    CLS_TreeSignalLog log(&tree);
    QMimeData mimeData;
    mimeData.setData(CONST_pMimeType, QByteArray("1"));
    SendDragEnter(tree, RowCenter(tree, "a1"), mimeData);

    const STRCT_DropResult result = SendDrop(tree, RowCenter(tree, "a1"), mimeData);

    QCOMPARE(result.m_iAction, Qt::IgnoreAction);
    QVERIFY2(log.Count("Droped") == 0, qPrintable(log.Text()));
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, Qt::NoModifier, RowCenter(tree, "a1"));
}

void tst_BaseTreeDragDrop::shouldVetoRowCurrentAtPressButReportOtherTarget()
{
    // Given a2 current, the user presses on b (which becomes current) and drags b.
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    tree.SetCurrentItem("a2");
    QTest::mousePress(tree.viewport(), Qt::LeftButton, Qt::NoModifier, RowCenter(tree, "b"));
    QCOMPARE(tree.currentItem(), tree.GetNodeById("b"));
    QCOMPARE(tree.m_clsDragItem.m_qstrId, QString("a2"));
    CLS_TreeSignalLog log(&tree);
    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignDroped);
    QMimeData mimeData;
    mimeData.setData(CONST_pMimeType, QByteArray("1"));
    SendDragEnter(tree, RowCenter(tree, "b"), mimeData);

    // When dropped on a2, the recorded row, the drop is vetoed though b is the row that moves.
    STRCT_DropResult result = SendDrop(tree, RowCenter(tree, "a2"), mimeData);
    QCOMPARE(result.m_iAction, Qt::IgnoreAction);
    QCOMPARE(spy.count(), 0);

    // When dropped on c, c's record goes out, and the drop is left to the base class.
    result = SendDrop(tree, RowCenter(tree, "c"), mimeData);
    QVERIFY(result.m_iAction != Qt::IgnoreAction);
    QCOMPARE(spy.count(), 1);
    const CLS_TreeItem clsTarget = spy.at(0).at(0).value<CLS_TreeItem>();
    QCOMPARE(clsTarget.m_qstrId, QString("c"));
    QCOMPARE(clsTarget.m_qstrTooltip, QString("tip c"));
    QCOMPARE(clsTarget.m_iSortNo, 3);
    QCOMPARE(log.Text(), QString("Droped(c)"));
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, Qt::NoModifier, RowCenter(tree, "b"));
}

void tst_BaseTreeDragDrop::shouldVetoEmptyRecordAgainstEmptyDragItem()
{
    // A row without a record reads as the default record; with nothing recorded at the press the
    // two empty ids are equal.
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.GetNodeById("c")->setData(0, Qt::UserRole + 1, QVariant());
    QVERIFY(ShowTree(tree));
    QVERIFY(tree.m_clsDragItem.m_qstrId.isEmpty());
    CLS_TreeSignalLog log(&tree);
    QMimeData mimeData;
    mimeData.setData(CONST_pMimeType, QByteArray("1"));
    QCOMPARE(SendDrop(tree, RowCenter(tree, "c"), mimeData).m_iAction, Qt::IgnoreAction);

    // With a record kept, the same row is reported with the empty record.
    tree.m_clsDragItem.m_qstrId = "b";
    QVERIFY(SendDrop(tree, RowCenter(tree, "c"), mimeData).m_iAction != Qt::IgnoreAction);
    QCOMPARE(log.Text(), QString("Droped()"));
}

void tst_BaseTreeDragDrop::shouldEmitDropedBeforeBaseDropRuns()
{
    // The view is switched to DragDrop here so that the base class inserts the row of a hand-made
    // event (it has no drag source, which InternalMove would need). The tree's own checks run as
    // before, since they depend on m_blDragEnable alone.
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.setDragDropMode(QAbstractItemView::DragDrop);
    QVERIFY(ShowTree(tree));
    tree.SetCurrentItem("b");
    QTest::mousePress(tree.viewport(), Qt::LeftButton, Qt::NoModifier, RowCenter(tree, "a1"));
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, Qt::NoModifier, RowCenter(tree, "a1"));
    QCOMPARE(tree.m_clsDragItem.m_qstrId, QString("b"));
    QMimeData mimeData;
    FillModelStream(mimeData);
    SendDragEnter(tree, RowCenter(tree, "a1"), mimeData);
    QVERIFY(tree.m_blDragging);

    QStringList qlstSeen;
    connect(&tree, &CLS_WgtBaseTreeWidget::SignDroped, this, [&tree, &qlstSeen](CLS_TreeItem _clsItem) {
        qlstSeen << _clsItem.m_qstrId << Snapshot(tree) << (tree.m_blDragging ? "dragging" : "not dragging")
                 << (tree.GetNodeById(_clsItem.m_qstrId) != nullptr ? "indexed" : "not indexed");
    });
    const STRCT_DropResult result = SendDrop(tree, RowCenter(tree, "c"), mimeData);

    QCOMPARE(qlstSeen.join(" | "), QString("c | a(a1,a2),b,c,d | dragging | indexed"));
    QVERIFY(result.m_blAccepted);
    QCOMPARE(Snapshot(tree), QString("a(a1,a2),b,c(copy),d"));
    QVERIFY(!tree.m_blDragging);
}

void tst_BaseTreeDragDrop::shouldNeverLetBaseDropActOnVeto()
{
    // Same probe as above: a vetoed drop reaches the base class with the ignore action.
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.setDragDropMode(QAbstractItemView::DragDrop);
    QVERIFY(ShowTree(tree));
    tree.m_clsDragItem.m_qstrId = "b";
    CLS_TreeSignalLog log(&tree);
    QMimeData mimeData;
    FillModelStream(mimeData);
    SendDragEnter(tree, RowCenter(tree, "b"), mimeData);

    SendDrop(tree, EmptyAreaPoint(tree), mimeData);
    SendDrop(tree, RowCenter(tree, "d"), mimeData);
    SendDrop(tree, RowCenter(tree, "b"), mimeData);

    QCOMPARE(Snapshot(tree), CONST_qstrSample);
    QVERIFY2(log.Lines().isEmpty(), qPrintable(log.Text()));
    QVERIFY(tree.m_blDragging);
}

void tst_BaseTreeDragDrop::shouldPassDropStraightOnWithoutDrag()
{
    CLS_TestBaseTree tree(nullptr, false, false, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    tree.m_clsDragItem.m_qstrId = "c"; // no veto looks at it in this tree
    CLS_TreeSignalLog log(&tree);
    QMimeData mimeData;
    FillModelStream(mimeData);

    SendDrop(tree, RowCenter(tree, "c"), mimeData);
    QCOMPARE(Snapshot(tree), QString("a(a1,a2),b,c(copy),d"));
    SendDrop(tree, EmptyAreaPoint(tree), mimeData);
    QCOMPARE(Snapshot(tree), QString("a(a1,a2),b,c(copy),d,copy"));

    QVERIFY2(log.Lines().isEmpty(), qPrintable(log.Text()));
    QVERIFY(!tree.m_blDragging);
}

void tst_BaseTreeDragDrop::shouldKeepDraggingAfterVetoUntilRelease()
{
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    QMimeData mimeData;
    mimeData.setData(CONST_pMimeType, QByteArray("1"));

    SendDragEnter(tree, RowCenter(tree, "c"), mimeData);
    QVERIFY(tree.m_blDragging);
    SendDrop(tree, RowCenter(tree, "d"), mimeData); // vetoed
    QVERIFY(tree.m_blDragging);
    QTest::mouseRelease(tree.viewport(), Qt::LeftButton, Qt::NoModifier, RowCenter(tree, "c"));
    QVERIFY(!tree.m_blDragging);

    SendDragEnter(tree, RowCenter(tree, "c"), mimeData);
    tree.m_clsDragItem.m_qstrId = "b";
    SendDrop(tree, RowCenter(tree, "c"), mimeData); // accepted
    QVERIFY(!tree.m_blDragging);
}

// ---- startDrag -----------------------------------------------------------------------------------

void tst_BaseTreeDragDrop::shouldStartNothingWithoutCurrentRow()
{
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(tree.currentItem() == nullptr);
    tree.startDrag(Qt::MoveAction);
    QVERIFY(DragPictureButton() == nullptr);
    QVERIFY(tree.findChild<QDrag*>() == nullptr);
}

void tst_BaseTreeDragDrop::shouldStartNothingFromDisabledRow()
{
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetCurrentItem("c"); // Qt makes no disabled row current, so disable it afterwards
    QTreeWidgetItem* pRow = tree.GetNodeById("c");
    pRow->setFlags(pRow->flags() & ~Qt::ItemIsEnabled);
    QCOMPARE(tree.currentItem(), pRow);
    tree.startDrag(Qt::MoveAction | Qt::CopyAction);
    QVERIFY(DragPictureButton() == nullptr);
    QVERIFY(tree.findChild<QDrag*>() == nullptr);
}

void tst_BaseTreeDragDrop::shouldBuildMovePayloadFromCurrentRow()
{
    // The offscreen platform ends a drag at once, so startDrag returns here; the drag object
    // waits for its deferred deletion and can be read until then.
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetCurrentItem("c");
    tree.startDrag(Qt::CopyAction | Qt::LinkAction);

    auto* pDrag = tree.findChild<QDrag*>();
    QVERIFY(pDrag != nullptr);
    QVERIFY(pDrag->mimeData() != nullptr);
    QCOMPARE(pDrag->mimeData()->formats(), QStringList({CONST_pMimeType}));
    const QByteArray qbaPayload = pDrag->mimeData()->data(CONST_pMimeType);
    QCOMPARE(qbaPayload, QByteArray::number(reinterpret_cast<quintptr>(tree.GetNodeById("c"))));
    QCOMPARE(pDrag->supportedActions(), Qt::DropActions(Qt::MoveAction));
    QCOMPARE(pDrag->hotSpot(), QPoint(0, 0));
    QVERIFY(!pDrag->pixmap().isNull());
    QCOMPARE(pDrag->source(), static_cast<QObject*>(&tree));
}

void tst_BaseTreeDragDrop::shouldKeepPictureButtonAfterDragWithShownText()
{
    QTemporaryDir tmpDir;
    QVERIFY(tmpDir.isValid());
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::green);
    const QString qstrIcon = tmpDir.filePath("green.png");
    QVERIFY(image.save(qstrIcon));

    const QString qstrLong = "A caption far too long for sixty pixels of text";
    QMap<QString, CLS_TreeItem> qmapItems = SampleTree();
    qmapItems["b"].m_qstrText = qstrLong;
    qmapItems["b"].m_qstrIcon = qstrIcon;
    {
        CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
        tree.SetTextMaxWidth(60);
        QCOMPARE(tree.Init("root", qmapItems, false), 0);
        tree.SetCurrentItem("b");
        tree.startDrag(Qt::MoveAction);

        QPushButton* pButton = DragPictureButton();
        QVERIFY(pButton != nullptr);
        QVERIFY(!pButton->isVisible());
        QVERIFY(pButton->parentWidget() == nullptr);
        QCOMPARE(pButton->text(), tree.GetNodeById("b")->text(0)); // the shown, elided text
        QVERIFY(pButton->text() != qstrLong);
        QCOMPARE(pButton->icon().pixmap(8, 8).toImage().pixel(4, 4), qRgb(0, 255, 0));

        // A second drag has its own picture; one such button is alive at a time.
        tree.SetCurrentItem("c");
        tree.startDrag(Qt::MoveAction);
        QCOMPARE(DragPictureButtonCount(), 1);
        QCOMPARE(DragPictureButton()->text(), QString("c"));
    }
    // The tree is gone, and so is the button (cleanup() checks every top-level widget too).
    QCOMPARE(DragPictureButtonCount(), 0);
}

void tst_BaseTreeDragDrop::shouldDragRowWithChildren()
{
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    tree.SetCurrentItem("a");
    tree.startDrag(Qt::MoveAction);
    QCOMPARE(tree.m_iStartDrags, 1);
    QVERIFY(tree.findChild<QDrag*>() != nullptr);
    QCOMPARE(DragPictureButton()->text(), QString("a"));
}

QTEST_MAIN(tst_BaseTreeDragDrop)
#include "tst_BaseTreeDragDrop.moc"
