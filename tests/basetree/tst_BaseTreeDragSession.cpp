// Whole drags through CLS_WgtBaseTreeWidget, from the press to the drop, with the view's own
// internal move. Runs on the "minimal" platform, whose drag runs an event loop fed by mouse
// events (the offscreen platform ends every drag at once). The user's moves and release inside
// the drag are queued by the test subclass when startDrag begins.

#include "CLS_TestBaseTree.h"
#include "CLS_TreeSnapshot.h"

#include <QApplication>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QWindow>
#include <QtTest>

using CLS_TreeSnapshot::Snapshot;
using namespace CLS_TreeTestUtil;

namespace {

// root (no row)
//   a (1)
//   b (2), with a button
//   c (3)
//   e (4): e1 (1), e2 (2)
QMap<QString, CLS_TreeItem> SampleTree()
{
    QMap<QString, CLS_TreeItem> qmapItems = ItemsOf("root", "a,b,c,e(e1,e2)");
    qmapItems["b"].m_qvecButtons << MakeButton("bb");
    return qmapItems;
}

const QString CONST_qstrSample = "a,b,c,e(e1,e2)";

// Presses on a row, moves far enough to start the drag, and, inside the drag, moves over the
// target (a viewport point) and releases there. _fnOverTarget runs just before the release.
// Gives false if no drag started.
bool DragRowTo(CLS_TestBaseTree& _tree, const QString& _qstrFromId, const QPoint& _posTarget,
               std::function<void()> _fnOverTarget = {})
{
    QWindow* pWindow = _tree.window()->windowHandle();
    const QPoint posFrom = _tree.viewport()->mapTo(_tree.window(), RowCenter(_tree, _qstrFromId));
    const QPoint posTo = _tree.viewport()->mapTo(_tree.window(), _posTarget);
    _tree.m_fnDuringDrag = [pWindow, posTo, _fnOverTarget, &_tree]() {
        // Escape ends a drag that missed its release, so that a failure cannot hang the test.
        QTimer::singleShot(5000, &_tree, [pWindow]() { QTest::keyClick(pWindow, Qt::Key_Escape); });
        QTest::mouseMove(pWindow, posTo);
        QTest::mouseMove(pWindow, posTo + QPoint(1, 0));
        if (_fnOverTarget)
            _fnOverTarget();
        QTest::mouseRelease(pWindow, Qt::LeftButton, Qt::NoModifier, posTo + QPoint(1, 0));
    };
    const int iDrags = _tree.m_iStartDrags;
    QTest::mousePress(pWindow, Qt::LeftButton, Qt::NoModifier, posFrom);
    QTest::mouseMove(pWindow, posFrom + QPoint(5, 0));
    QTest::mouseMove(pWindow, posFrom + QPoint(30, 0));
    QTest::mouseMove(pWindow, posFrom + QPoint(40, 0));
    if (_tree.m_iStartDrags == iDrags) {
        _tree.m_fnDuringDrag = {};
        QTest::mouseRelease(pWindow, Qt::LeftButton, Qt::NoModifier, posFrom + QPoint(40, 0));
        return false;
    }
    return true;
}

} // namespace

class tst_BaseTreeDragSession : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void shouldEmitDropedBeforeRowMoves();
    void shouldVetoDropOnRowCurrentAtPress();
    void shouldVetoDropOnPressedCurrentLeaf();
    void shouldNeverSetDraggingWithoutDropEnable();
    void shouldDragRowWithItsChildren();
};

void tst_BaseTreeDragSession::initTestCase()
{
    qRegisterMetaType<CLS_TreeItem>("CLS_TreeItem");
    QCOMPARE(QGuiApplication::platformName(), QString("minimal"));
}

void tst_BaseTreeDragSession::cleanup()
{
    const QStringList qlstLeaked = LeakedTopLevels();
    QVERIFY2(qlstLeaked.isEmpty(), qPrintable("top-level widgets left: " + qlstLeaked.join(", ")));
}

void tst_BaseTreeDragSession::shouldEmitDropedBeforeRowMoves()
{
    // Given a current, the user drags b onto c.
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    tree.SetCurrentItem("a");
    QTreeWidgetItem* pB = tree.GetNodeById("b");
    QVERIFY(tree.itemWidget(pB, 1) != nullptr);
    QStringList qlstSeen;
    connect(&tree, &CLS_WgtBaseTreeWidget::SignDroped, this, [&](CLS_TreeItem _clsItem) {
        QTreeWidgetItem* pNode = tree.GetNodeById("b");
        qlstSeen << _clsItem.m_qstrId << Snapshot(tree)
                 << (pNode == pB && pNode->parent() == nullptr ? "b on top" : "b moved")
                 << QString::number(tree.indexOfTopLevelItem(pNode));
    });

    QVERIFY(DragRowTo(tree, "b", RowCenter(tree, "c")));

    // Then the signal saw the old place, and the row moved afterwards.
    QCOMPARE(qlstSeen.join(" | "), QString("c | a,b,c,e(e1,e2) | b on top | 1"));
    QCOMPARE(Snapshot(tree), QString("a,c(b),e(e1,e2)"));
    QCOMPARE(tree.GetNodeById("b"), pB); // the same row, still indexed
    CLS_TreeItem clsRecord;
    QCOMPARE(tree.GetItemById("b", clsRecord), 0);
    QCOMPARE(clsRecord.m_qstrParentId, QString("root")); // left stale for the owner
    QCOMPARE(clsRecord.m_iSortNo, 2);
    QVERIFY(tree.itemWidget(pB, 1) == nullptr); // the tool bar does not travel with the row
    QVERIFY(!tree.m_blDragging);
}

void tst_BaseTreeDragSession::shouldVetoDropOnRowCurrentAtPress()
{
    // Given a current, the press on b records a; b is the row that is dragged.
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    tree.SetCurrentItem("a");
    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignDroped);

    QVERIFY(DragRowTo(tree, "b", RowCenter(tree, "a")));

    QCOMPARE(tree.m_clsDragItem.m_qstrId, QString("a"));
    QCOMPARE(spy.count(), 0);
    QCOMPARE(Snapshot(tree), CONST_qstrSample);
    // The drag took the release: the hover switch sleeps until the next one.
    QVERIFY(tree.m_blDragging);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, RowCenter(tree, "c"));
    QVERIFY(!tree.m_blDragging);
}

void tst_BaseTreeDragSession::shouldVetoDropOnPressedCurrentLeaf()
{
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    tree.SetCurrentItem("c");
    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignDroped);

    QVERIFY(DragRowTo(tree, "c", RowCenter(tree, "c") + QPoint(20, 0)));

    QCOMPARE(tree.m_clsDragItem.m_qstrId, QString("c"));
    QCOMPARE(spy.count(), 0);
    QCOMPARE(Snapshot(tree), CONST_qstrSample);
}

void tst_BaseTreeDragSession::shouldNeverSetDraggingWithoutDropEnable()
{
    CLS_TestBaseTree tree(nullptr, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    tree.SetCurrentItem("a");
    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignDroped);
    bool blDraggingOverTarget = true;

    QVERIFY(DragRowTo(tree, "b", RowCenter(tree, "c"),
                      [&tree, &blDraggingOverTarget]() { blDraggingOverTarget = tree.m_blDragging; }));

    QVERIFY(!blDraggingOverTarget);
    QVERIFY(!tree.m_blDragging);
    QCOMPARE(spy.count(), 0);
    QCOMPARE(Snapshot(tree), CONST_qstrSample);
}

void tst_BaseTreeDragSession::shouldDragRowWithItsChildren()
{
    CLS_TestBaseTree tree(nullptr, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", SampleTree(), false), 0);
    QVERIFY(ShowTree(tree));
    tree.SetCurrentItem("a");
    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignDroped);

    QVERIFY(DragRowTo(tree, "e", RowCenter(tree, "c")));

    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).value<CLS_TreeItem>().m_qstrId, QString("c"));
    QCOMPARE(Snapshot(tree), QString("a,b,c(e(e1,e2))"));
    QVERIFY(tree.GetNodeById("e1") != nullptr);
}

QTEST_MAIN(tst_BaseTreeDragSession)
#include "tst_BaseTreeDragSession.moc"
