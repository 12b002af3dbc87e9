// Whole drags out of a device tree, from the press to the drop: the selected rows reach a page's
// widget as nodes, one row when multi-select is off, and a drop inside the tree still moves the one
// current row. Runs on the "minimal" platform, whose drag runs an event loop fed by mouse events.

#include "CLS_FindAndTakeTestUtil.h"

#include <QDrag>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <QWindow>
#include <QtTest>

using namespace CLS_FindAndTakeTestUtil;

namespace {

// A page's layout pane: takes any drag whose payload holds nodes, and keeps what it read.
class CLS_DropPane : public QWidget
{
public:
    explicit CLS_DropPane(QWidget* _pParent) : QWidget(_pParent) { setAcceptDrops(true); }

    QVector<CLS_CustomTreeNode> m_qvecNodes;
    QString m_qstrText;
    int m_iDrops = 0;

protected:
    void dragEnterEvent(QDragEnterEvent* _pEvent) override
    {
        QVector<CLS_CustomTreeNode> qvecNodes;
        if (CLS_WgtDeviceTree::ReadDragData(_pEvent->mimeData(), qvecNodes) == 0)
            _pEvent->acceptProposedAction();
    }
    void dropEvent(QDropEvent* _pEvent) override
    {
        ++m_iDrops;
        CLS_WgtDeviceTree::ReadDragData(_pEvent->mimeData(), m_qvecNodes);
        m_qstrText = _pEvent->mimeData()->text();
        _pEvent->acceptProposedAction();
    }
};

// A window with the tree on the left and the pane on the right.
struct STRCT_Page
{
    QWidget m_window;
    CLS_TestDeviceTree* m_pTree = nullptr;
    CLS_DropPane* m_pPane = nullptr;

    STRCT_Page()
    {
        auto* pLayout = new QHBoxLayout(&m_window);
        m_pTree = new CLS_TestDeviceTree(&m_window, DEV_TREE_CUSTOM, true, true, false, true, true);
        m_pPane = new CLS_DropPane(&m_window);
        m_pPane->setMinimumSize(200, 300);
        pLayout->addWidget(m_pTree);
        pLayout->addWidget(m_pPane);
    }
    bool Show()
    {
        if (!BuildSites(*m_pTree))
            return false;
        BaseOf(*m_pTree)->expandAll();
        m_window.resize(640, 480);
        m_window.show();
        return QTest::qWaitForWindowExposed(&m_window);
    }
};

// Presses on a row, moves until the drag starts, and inside the drag moves to the target (a point
// of _pTarget) and releases there. False if no drag started.
bool DragRowTo(STRCT_Page& _page, const QString& _qstrFromId, QWidget* _pTarget, const QPoint& _posTarget)
{
    QWindow* pWindow = _page.m_window.windowHandle();
    CLS_WgtBaseTreeWidget* pBase = BaseOf(*_page.m_pTree);
    const QPoint posFrom = pBase->viewport()->mapTo(&_page.m_window, RowCenter(*_page.m_pTree, _qstrFromId));
    const QPoint posTo = _pTarget->mapTo(&_page.m_window, _posTarget);
    const int iDragsBefore = pBase->findChildren<QDrag*>().size();
    bool blDragged = false;
    // Acts once the drag's own event loop runs; Escape ends a drag that missed its release.
    QTimer timer;
    timer.setInterval(10);
    QObject::connect(&timer, &QTimer::timeout, [&]() {
        if (pBase->findChildren<QDrag*>().size() == iDragsBefore)
            return;
        timer.stop();
        blDragged = true;
        QTimer::singleShot(5000, pBase, [pWindow]() { QTest::keyClick(pWindow, Qt::Key_Escape); });
        QTest::mouseMove(pWindow, posTo);
        QTest::mouseMove(pWindow, posTo + QPoint(1, 0));
        QTest::mouseRelease(pWindow, Qt::LeftButton, Qt::NoModifier, posTo + QPoint(1, 0));
    });
    timer.start();
    QTest::mousePress(pWindow, Qt::LeftButton, Qt::NoModifier, posFrom);
    QTest::mouseMove(pWindow, posFrom + QPoint(5, 0));
    QTest::mouseMove(pWindow, posFrom + QPoint(30, 0));
    QTest::mouseMove(pWindow, posFrom + QPoint(40, 0));
    timer.stop();
    if (!blDragged)
        QTest::mouseRelease(pWindow, Qt::LeftButton, Qt::NoModifier, posFrom + QPoint(40, 0));
    return blDragged;
}

// The text of the drag picture's button, which the tree keeps after the drag.
QString DragPictureText()
{
    for (QWidget* pWidget : QApplication::allWidgets()) {
        if (auto* pButton = qobject_cast<QPushButton*>(pWidget);
            pButton != nullptr && pButton->objectName() == "dragBgBtn")
            return pButton->text();
    }
    return "<no picture>";
}

void Click(CLS_WgtDeviceTree& _tree, const QString& _qstrId,
           Qt::KeyboardModifiers _modifiers = Qt::NoModifier)
{
    QTest::mouseClick(BaseOf(_tree)->viewport(), Qt::LeftButton, _modifiers, RowCenter(_tree, _qstrId));
}

} // namespace

class tst_DeviceTreeDragOut : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QCOMPARE(QGuiApplication::platformName(), QString("minimal")); }
    void cleanup() { QVERIFY2(LeakedWindows().isEmpty(), qPrintable(LeakedWindows().join(", "))); }

    void dragOfSelectedRowsReachesAPageAsNodes()
    {
        STRCT_Page page;
        QVERIFY(page.Show());
        page.m_pTree->SetMultiSelect(true);
        Click(*page.m_pTree, "c6");
        Click(*page.m_pTree, "c1", Qt::ControlModifier);
        Click(*page.m_pTree, "c4", Qt::ControlModifier);
        QVERIFY(DragRowTo(page, "c4", page.m_pPane, QPoint(100, 100)));
        QCOMPARE(page.m_pPane->m_iDrops, 1);
        QCOMPARE(TreeIds(page.m_pPane->m_qvecNodes), QStringList({"c1", "c4", "c6"}));
        QCOMPARE(page.m_pPane->m_qvecNodes.at(2).m_qstrName, QString("Campus lobby"));
        QCOMPARE(page.m_pPane->m_qstrText, QString("Entrance\nEntrance\nCampus lobby"));
        // The picture names the row under the mouse and tells how many more come with it.
        QCOMPARE(DragPictureText(), QString("Entrance (+2)"));
        // Nothing left the tree.
        QCOMPARE(Rows(*page.m_pTree), QString(SiteRows()));
    }

    void dragWithoutMultiSelectCarriesTheOneRow()
    {
        STRCT_Page page;
        QVERIFY(page.Show());
        Click(*page.m_pTree, "c1");
        QVERIFY(DragRowTo(page, "c5", page.m_pPane, QPoint(100, 100)));
        QCOMPARE(TreeIds(page.m_pPane->m_qvecNodes), QStringList({"c5"}));
        QCOMPARE(page.m_pPane->m_qvecNodes.at(0).m_qstrDevId, QString("dev-c5"));
        QCOMPARE(DragPictureText(), QString("Gate north side"));
    }

    void dropInsideTheTreeMovesOnlyTheCurrentRow()
    {
        STRCT_Page page;
        QVERIFY(page.Show());
        page.m_pTree->SetMultiSelect(true);
        Click(*page.m_pTree, "c1");
        Click(*page.m_pTree, "c4", Qt::ControlModifier);
        QSignalSpy spyDroped(BaseOf(*page.m_pTree), &CLS_WgtBaseTreeWidget::SignDroped);
        CLS_WgtBaseTreeWidget* pBase = BaseOf(*page.m_pTree);
        QVERIFY(DragRowTo(page, "c4", pBase->viewport(), RowCenter(*page.m_pTree, "c6")));
        QCOMPARE(spyDroped.count(), 1);
        QCOMPARE(spyDroped.at(0).at(0).value<CLS_TreeItem>().m_qstrId, QString("c6"));
        // c4 went under c6; c1, selected as well, stayed where it was.
        QCOMPARE(Rows(*page.m_pTree),
                 QString("custom_root_id(north(rec(c1,c2,level(c3,room(c8)))),south(c5,c7),c6(c4))"));
        QCOMPARE(page.m_pPane->m_iDrops, 0);
    }
};

QTEST_MAIN(tst_DeviceTreeDragOut)
#include "tst_DeviceTreeDragOut.moc"
