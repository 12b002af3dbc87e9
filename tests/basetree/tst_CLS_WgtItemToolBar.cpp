// The tool bar of a row (CLS_WgtItemToolBar), the stack that holds it (CLS_WgtToolBtnStack), and
// how the base tree mounts both. No colour library is on the search path here.

#include "CLS_TestBaseTree.h"
#include "CLS_WgtItemToolBar.h"
#include "CLS_WgtToolBtnStack.h"

#include <QAction>
#include <QApplication>
#include <QPointer>
#include <QSet>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>

using namespace CLS_TreeTestUtil;

namespace {

// Colours of a grabbed widget, as "#rrggbb" names, sorted.
QStringList Colours(QWidget& _widget)
{
    const QImage image = _widget.grab().toImage();
    QSet<QRgb> qsetColours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            qsetColours.insert(image.pixel(x, y));
    }
    QStringList qlstNames;
    for (QRgb rgb : qsetColours)
        qlstNames << QColor(rgb).name();
    qlstNames.sort();
    return qlstNames;
}

QString ButtonText(const QList<QVariant>& _qlstArgs)
{
    const CLS_ItemButton clsButton = _qlstArgs.at(1).value<CLS_ItemButton>();
    return QString("%1/%2 checkable=%3 checked=%4")
        .arg(_qlstArgs.at(0).toString(), clsButton.m_qstrId)
        .arg(int(clsButton.m_blCheckable))
        .arg(int(clsButton.m_blChecked));
}

// root (no row): plain (1) without buttons, tools (2) with two buttons
QMap<QString, CLS_TreeItem> ButtonTree()
{
    QMap<QString, CLS_TreeItem> qmapItems;
    Add(qmapItems, MakeItem("root", QString(), 0));
    Add(qmapItems, MakeItem("plain", "root", 1));
    CLS_TreeItem clsTools = MakeItem("tools", "root", 2);
    clsTools.m_qvecButtons << MakeButton("t1") << MakeButton("t2", true);
    Add(qmapItems, clsTools);
    return qmapItems;
}

} // namespace

class tst_CLS_WgtItemToolBar : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    // the bar
    void shouldReportCheckableButtonWithLiveState();
    void shouldReportPlainButtonUncheckedAndNotCheckable();
    void shouldReportIdGivenToInit();
    void shouldMakeActionsInVectorOrder();
    void shouldIgnoreActionWithoutButtonRecord();
    void shouldBuildAndPaintFlatWithoutColourLibrary();
    void shouldFreeItsActionsWithIt();
    void shouldApplyStyleSheetAndIgnoreLanguage();

    // mounting in the tree
    void shouldGiveNoToolBarForEmptyButtons();
    void shouldMountStackPagesByShowType_data();
    void shouldMountStackPagesByShowType();
    void shouldReportRowIdAfterRecordRewritten();

    // the stack
    void shouldTurnStackToFirstPageOnLeave();
    void shouldShowBlankPageOnStackLeaveThoughHoverRowStays();
};

void tst_CLS_WgtItemToolBar::initTestCase()
{
    qRegisterMetaType<CLS_ItemButton>("CLS_ItemButton");
}

void tst_CLS_WgtItemToolBar::cleanup()
{
    const QStringList qlstLeaked = LeakedTopLevels();
    QVERIFY2(qlstLeaked.isEmpty(), qPrintable("top-level widgets left: " + qlstLeaked.join(", ")));
}

// ---- the bar -------------------------------------------------------------------------------------

void tst_CLS_WgtItemToolBar::shouldReportCheckableButtonWithLiveState()
{
    CLS_WgtItemToolBar bar;
    bar.Init({MakeButton("check", true, false)}, "row-7");
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QSignalSpy spy(&bar, &CLS_WgtItemToolBar::SignTriggered);
    QAction* pAction = bar.actions().value(0);
    QVERIFY(pAction != nullptr);
    QWidget* pButton = bar.widgetForAction(pAction);
    QVERIFY(qobject_cast<QToolButton*>(pButton) != nullptr);

    QTest::mouseClick(pButton, Qt::LeftButton);
    QTest::mouseClick(pButton, Qt::LeftButton);

    QCOMPARE(spy.count(), 2);
    QCOMPARE(ButtonText(spy.at(0)), QString("row-7/check checkable=1 checked=1"));
    QCOMPARE(ButtonText(spy.at(1)), QString("row-7/check checkable=1 checked=0"));
    // The record inside the action keeps the state of the build.
    QCOMPARE(pAction->data().value<CLS_ItemButton>().m_blChecked, false);
    QCOMPARE(spy.at(0).at(1).value<CLS_ItemButton>().m_qstrTooltip, QString("tip check"));
}

void tst_CLS_WgtItemToolBar::shouldReportPlainButtonUncheckedAndNotCheckable()
{
    CLS_WgtItemToolBar bar;
    bar.Init({MakeButton("plain"), MakeButton("odd", false, true)}, "row-1");
    QSignalSpy spy(&bar, &CLS_WgtItemToolBar::SignTriggered);
    bar.actions().at(0)->trigger();
    bar.actions().at(1)->trigger(); // "checked" in a record of a plain button cannot stick
    QCOMPARE(spy.count(), 2);
    QCOMPARE(ButtonText(spy.at(0)), QString("row-1/plain checkable=0 checked=0"));
    QCOMPARE(ButtonText(spy.at(1)), QString("row-1/odd checkable=0 checked=0"));
}

void tst_CLS_WgtItemToolBar::shouldReportIdGivenToInit()
{
    CLS_WgtItemToolBar bar;
    QSignalSpy spy(&bar, &CLS_WgtItemToolBar::SignTriggered);
    bar.Init({MakeButton("b")}, "the-row");
    bar.actions().at(0)->trigger();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), QString("the-row"));
}

void tst_CLS_WgtItemToolBar::shouldMakeActionsInVectorOrder()
{
    QTemporaryDir tmpDir;
    QVERIFY(tmpDir.isValid());
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::red);
    const QString qstrIcon = tmpDir.filePath("red.png");
    QVERIFY(image.save(qstrIcon));

    CLS_ItemButton clsFirst = MakeButton("z-first", true, true);
    clsFirst.m_qstrIcon = qstrIcon;
    const QVector<CLS_ItemButton> qvecButtons{clsFirst, MakeButton("a-second"), MakeButton("m-third", true)};
    CLS_WgtItemToolBar bar;
    bar.Init(qvecButtons, "row");

    const QList<QAction*> qlstActions = bar.actions();
    QCOMPARE(qlstActions.size(), 3);
    QStringList qlstSeen;
    for (QAction* pAction : qlstActions) {
        const CLS_ItemButton clsData = pAction->data().value<CLS_ItemButton>();
        qlstSeen << QString("%1|%2|%3|%4%5")
                        .arg(clsData.m_qstrId, pAction->text(), pAction->toolTip())
                        .arg(int(pAction->isCheckable()))
                        .arg(int(pAction->isChecked()));
        QVERIFY(pAction->parent() == nullptr);
    }
    QCOMPARE(qlstSeen.join(" "), QString("z-first|text z-first|tip z-first|11 "
                                         "a-second|text a-second|tip a-second|00 "
                                         "m-third|text m-third|tip m-third|10"));
    QCOMPARE(qlstActions.at(0)->icon().pixmap(8, 8).toImage().pixel(4, 4), qRgb(255, 0, 0));
    QVERIFY(qlstActions.at(1)->icon().isNull());
}

void tst_CLS_WgtItemToolBar::shouldIgnoreActionWithoutButtonRecord()
{
    CLS_WgtItemToolBar bar;
    bar.Init({MakeButton("b")}, "row");
    QSignalSpy spy(&bar, &CLS_WgtItemToolBar::SignTriggered);
    QAction bare("bare");
    QAction other("other");
    other.setData(QString("not a button"));
    bar.SlotTriggered(nullptr);
    bar.SlotTriggered(&bare);
    bar.SlotTriggered(&other);
    QCOMPARE(spy.count(), 0);
    bar.SlotTriggered(bar.actions().at(0)); // the slot alone, as actionTriggered calls it
    QCOMPARE(spy.count(), 1);
}

void tst_CLS_WgtItemToolBar::shouldBuildAndPaintFlatWithoutColourLibrary()
{
    CLS_WgtItemToolBar bar;
    bar.resize(50, 30);
    // An invalid colour paints as opaque black; no frame or handle of the base class shows.
    QCOMPARE(Colours(bar), QStringList({"#000000"}));

    CLS_WgtItemToolBar barWithButtons;
    barWithButtons.Init({MakeButton("b1"), MakeButton("b2", true)}, "row");
    barWithButtons.resize(80, 30);
    QVERIFY(!barWithButtons.grab().isNull());
}

void tst_CLS_WgtItemToolBar::shouldFreeItsActionsWithIt()
{
    QPointer<QAction> pAction;
    {
        CLS_WgtItemToolBar bar;
        bar.Init({MakeButton("b")}, "row");
        pAction = bar.actions().at(0);
        QVERIFY(pAction);
    }
    QVERIFY2(!pAction, "an action outlived its tool bar");
}

void tst_CLS_WgtItemToolBar::shouldApplyStyleSheetAndIgnoreLanguage()
{
    CLS_WgtItemToolBar bar;
    bar.Init({MakeButton("b")}, "row");
    bar.LoadStyleSheet("QToolBar { border: none; }");
    QCOMPARE(bar.styleSheet(), QString("QToolBar { border: none; }"));
    bar.SetLang("en");
    QCOMPARE(bar.actions().at(0)->text(), QString("text b"));
    QCOMPARE(bar.actions().at(0)->toolTip(), QString("tip b"));
}

// ---- mounting in the tree ------------------------------------------------------------------------

void tst_CLS_WgtItemToolBar::shouldGiveNoToolBarForEmptyButtons()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_HOVER);
    QCOMPARE(tree.Init("root", ButtonTree(), false), 0);
    QVERIFY(tree.itemWidget(tree.GetNodeById("plain"), 1) == nullptr);
    QVERIFY(tree.CreateItemButtons("plain", {}) == nullptr);
}

void tst_CLS_WgtItemToolBar::shouldMountStackPagesByShowType_data()
{
    QTest::addColumn<int>("iType");
    QTest::addColumn<int>("iPages");
    QTest::newRow("always") << int(ITEM_BTN_SHOW_ALWAYS) << 1;
    QTest::newRow("hover") << int(ITEM_BTN_SHOW_HOVER) << 2;
}

void tst_CLS_WgtItemToolBar::shouldMountStackPagesByShowType()
{
    QFETCH(int, iType);
    QFETCH(int, iPages);
    CLS_TestBaseTree tree(nullptr, false, false, false, false, static_cast<n_ItemBtnShowType>(iType));
    QCOMPARE(tree.Init("root", ButtonTree(), false), 0);
    auto* pStack = qobject_cast<CLS_WgtToolBtnStack*>(tree.itemWidget(tree.GetNodeById("tools"), 1));
    QVERIFY(pStack != nullptr);
    QCOMPARE(pStack->count(), iPages);
    QCOMPARE(pStack->currentIndex(), 0);
    auto* pBar = qobject_cast<CLS_WgtItemToolBar*>(pStack->widget(iPages - 1));
    QVERIFY(pBar != nullptr);
    QCOMPARE(pBar->actions().size(), 2);
    if (iPages == 2) {
        QWidget* pBlank = pStack->widget(0);
        QVERIFY(qobject_cast<CLS_WgtItemToolBar*>(pBlank) == nullptr);
        QVERIFY(pBlank->findChildren<QWidget*>().isEmpty());
    }
}

void tst_CLS_WgtItemToolBar::shouldReportRowIdAfterRecordRewritten()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(tree.Init("root", ButtonTree(), false), 0);
    CLS_TreeItem clsNew = MakeItem("tools", "plain", 7, "rewritten");
    clsNew.m_qvecButtons << MakeButton("new-button");
    tree.UpdateItem(clsNew);
    QSignalSpy spy(&tree, &CLS_WgtBaseTreeWidget::SignClickButton);

    auto* pBar = tree.itemWidget(tree.GetNodeById("tools"), 1)->findChild<CLS_WgtItemToolBar*>();
    QVERIFY(pBar != nullptr);
    pBar->actions().at(1)->trigger();

    QCOMPARE(spy.count(), 1);
    QCOMPARE(ButtonText(spy.at(0)), QString("tools/t2 checkable=1 checked=1"));
}

// ---- the stack -----------------------------------------------------------------------------------

void tst_CLS_WgtItemToolBar::shouldTurnStackToFirstPageOnLeave()
{
    CLS_WgtToolBtnStack stack;
    stack.addWidget(new QWidget());
    stack.addWidget(new QWidget());
    stack.setCurrentIndex(1);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&stack, &leave);
    QCOMPARE(stack.currentIndex(), 0);

    CLS_WgtToolBtnStack single;
    single.addWidget(new QWidget());
    QApplication::sendEvent(&single, &leave);
    QCOMPARE(single.currentIndex(), 0);
}

void tst_CLS_WgtItemToolBar::shouldShowBlankPageOnStackLeaveThoughHoverRowStays()
{
    CLS_TestBaseTree tree(nullptr, false, false, false, false, ITEM_BTN_SHOW_HOVER);
    QCOMPARE(tree.Init("root", ButtonTree(), false), 0);
    tree.resize(300, 200);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    MoveMouse(tree, RowCenter(tree, "tools"));
    QStackedWidget* pStack = StackOf(tree, "tools");
    QCOMPARE(pStack->currentIndex(), 1);
    QCOMPARE(tree.m_pHoverNode, tree.GetNodeById("tools"));

    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(pStack, &leave);
    QCOMPARE(pStack->currentIndex(), 0);
    QCOMPARE(tree.m_pHoverNode, tree.GetNodeById("tools"));
    MoveMouse(tree, RowCenter(tree, "tools") + QPoint(2, 0)); // the same row: no switch back
    QCOMPARE(pStack->currentIndex(), 0);
}

QTEST_MAIN(tst_CLS_WgtItemToolBar)
#include "tst_CLS_WgtItemToolBar.moc"
