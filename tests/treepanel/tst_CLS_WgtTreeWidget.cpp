// The tree panel without any sibling library: its form, the search, the forwarders and the repeated
// signals.

#include "CLS_LineEdit.h"
#include "CLS_TreeSnapshot.h"
#include "CLS_TreeTestUtil.h"
#include "CLS_WgtBaseTreeWidget.h"
#include "CLS_WgtTranslator.h"
#include "CLS_WgtTreeWidget.h"
#include "Ui_CLS_WgtTreeWidget.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QListWidget>
#include <QSignalSpy>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtTest>

// Exposes the panel's protected parts to the tests.
class CLS_TestPanel : public CLS_WgtTreeWidget
{
public:
    using CLS_WgtTreeWidget::CLS_WgtTreeWidget;
    using CLS_WgtTreeWidget::m_blShowSearch;
    using CLS_WgtTreeWidget::m_pBaseTree;
    using CLS_WgtTreeWidget::m_pBtnClear;
    using CLS_WgtTreeWidget::m_pBtnSearch;
    using CLS_WgtTreeWidget::m_pMenu;
    using CLS_WgtTreeWidget::m_pUi;
    using CLS_WgtTreeWidget::m_qstrPicPath;

    QLineEdit* Line() const { return m_pUi->qlineedtQueryInput; }
    QListWidget* List() const { return m_pUi->qlistWgtQueryResult; }
};

namespace {

using CLS_TreeTestUtil::MakeItem;

// A root row with _iCameras rows "Camera N" and one "Door" row.
QMap<QString, CLS_TreeItem> CameraTree(int _iCameras)
{
    QMap<QString, CLS_TreeItem> qmapItems;
    qmapItems.insert("root", MakeItem("root", QString(), 0, "Site"));
    for (int i = 0; i < _iCameras; ++i) {
        const QString qstrId = QString("cam%1").arg(i, 2, 10, QChar('0'));
        qmapItems.insert(qstrId, MakeItem(qstrId, "root", i, QString("Camera %1").arg(i)));
    }
    qmapItems.insert("door", MakeItem("door", "root", 100, "Door"));
    return qmapItems;
}

QStringList ListIds(QListWidget* _pList)
{
    QStringList qlstIds;
    for (int i = 0; i < _pList->count(); ++i)
        qlstIds << _pList->item(i)->data(Qt::UserRole).toString();
    return qlstIds;
}

// Sets the line's text without running the search.
void SetTextQuietly(QLineEdit* _pLine, const QString& _qstrText)
{
    const QSignalBlocker blocker(_pLine);
    _pLine->setText(_qstrText);
}

} // namespace

class tst_CLS_WgtTreeWidget : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    // form
    void shouldBuildFormWithNamesAndSizes();
    void shouldPlaceTreeInItsLayoutAndButtonsInTheLine();
    void shouldRouteFlagsToBaseTree_data();
    void shouldRouteFlagsToBaseTree();
    void shouldUseMenuFlagAsRightClickSwitch();
    void shouldFallBackToDarkImagesWithoutSettings();
    void shouldRunWithoutAppSignalsOrMenuLibrary();

    // search line visibility
    void shouldHideQueryLineWithoutSearchFlag();
    void shouldShowAndFocusLineOnSetSearchVisible();
    void shouldShowLineAtStartWithSearchFlag();

    // search
    void shouldShowClearButtonAndListWhileTextPresent();
    void shouldSizeListByResultCount_data();
    void shouldSizeListByResultCount();
    void shouldListResultsWithTextAndId();
    void shouldShowNoResultsEntry();
    void shouldShowNoResultsWithoutRootRow();
    void shouldIgnoreSearchButtonWithEmptyLine();
    void shouldSearchTwiceOnReturn();
    void shouldLimitLineToHundredCharacters();
    void shouldGoToRowOnDoubleClickedResult();
    void shouldCloseSearchOnDoubleClickedNoResultsEntry();
    void shouldKeepLineVisibleOnClearSearch();
    void shouldHideLineOnClearAndCloseSearch();
    void shouldLeaveListOpenWhenLineHidden();
    void shouldClearSearchOnClearButton();

    // prompt
    void shouldTakeOverPlaceholderAsPrompt();
    void shouldPaintPromptOnlyWhileLineEmpty();

    // signals and forwarders
    void shouldRepeatBaseTreeSignals();
    void shouldNeverEmitSignChecked();
    void shouldForwardBuildAndLookups();
    void shouldForwardEditingAndCheckState();
    void shouldForwardLocateAndMoves();
    void shouldClearSelectionOnClearSelect();
    void shouldIgnoreShowMenuWithoutMenu();
};

void tst_CLS_WgtTreeWidget::initTestCase()
{
    // The library's English texts, whatever the machine's locale.
    QCOMPARE(CLS_WgtTranslator::SetLanguage(QLocale(QLocale::English, QLocale::UnitedStates)), 0);
}

void tst_CLS_WgtTreeWidget::cleanup()
{
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a test leaked a top-level widget");
}

void tst_CLS_WgtTreeWidget::shouldBuildFormWithNamesAndSizes()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.objectName(), QString("CLS_WgtTreeWidget"));
    QCOMPARE(panel.size(), QSize(384, 610));
    QCOMPARE(panel.windowTitle(), QString("Resource tree")); // "Form", translated

    auto* pOuter = panel.findChild<QVBoxLayout*>("verticalLayout");
    QVERIFY(pOuter != nullptr);
    QCOMPARE(pOuter->contentsMargins().left(), 0);
    QCOMPARE(pOuter->contentsMargins().right(), 0);
    QCOMPARE(pOuter->count(), 5);
    QCOMPARE(pOuter->itemAt(0)->widget(), static_cast<QWidget*>(panel.Line()));
    QCOMPARE(pOuter->itemAt(1)->widget(), static_cast<QWidget*>(panel.List()));
    QVERIFY(pOuter->itemAt(2)->spacerItem() != nullptr);
    QCOMPARE(pOuter->itemAt(2)->sizeHint(), QSize(20, 10));
    QCOMPARE(pOuter->itemAt(3)->layout(), static_cast<QLayout*>(panel.m_pUi->qvboxlayoutTreeLayout));
    QVERIFY(pOuter->itemAt(4)->spacerItem() != nullptr);
    QCOMPARE(pOuter->itemAt(4)->sizeHint(), QSize(17, 17));

    QLineEdit* pLine = panel.Line();
    QCOMPARE(pLine->objectName(), QString("qlineedtQueryInput"));
    QVERIFY(qobject_cast<CLS_LineEdit*>(pLine) != nullptr);
    QCOMPARE(pLine->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(pLine->sizePolicy().verticalPolicy(), QSizePolicy::Preferred);
    QCOMPARE(pLine->minimumSize(), QSize(0, 30));
    QCOMPARE(pLine->maximumSize(), QSize(16777215, 30));
    QCOMPARE(pLine->sizeIncrement(), QSize(0, 33));
    QCOMPARE(pLine->font().family(), QString("Arial"));
    QCOMPARE(pLine->font().pointSize(), 9);
    QCOMPARE(pLine->focusPolicy(), Qt::ClickFocus);
    QCOMPARE(pLine->contextMenuPolicy(), Qt::NoContextMenu);
    QVERIFY(!pLine->hasFrame());
    QCOMPARE(pLine->maxLength(), 100);
    QVERIFY(pLine->placeholderText().isEmpty());
    QVERIFY(pLine->text().isEmpty());

    QListWidget* pList = panel.List();
    QCOMPARE(pList->objectName(), QString("qlistWgtQueryResult"));
    QCOMPARE(pList->maximumHeight(), 280);
    QVERIFY(pList->isHidden());
    QCOMPARE(pList->count(), 0);
}

void tst_CLS_WgtTreeWidget::shouldPlaceTreeInItsLayoutAndButtonsInTheLine()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QVERIFY(panel.m_pBaseTree != nullptr);
    QCOMPARE(panel.m_pBaseTree->parentWidget(), static_cast<QWidget*>(&panel));
    QCOMPARE(panel.m_pUi->qvboxlayoutTreeLayout->indexOf(panel.m_pBaseTree), 0);

    QCOMPARE(panel.m_pBtnSearch->objectName(), QString("qtoolbtnSearch"));
    QCOMPARE(panel.m_pBtnClear->objectName(), QString("qtoolbtnClear"));
    QCOMPARE(panel.m_pBtnSearch->parentWidget(), static_cast<QWidget*>(panel.Line()));
    QCOMPARE(panel.m_pBtnClear->parentWidget(), static_cast<QWidget*>(panel.Line()));
    QCOMPARE(panel.m_pBtnSearch->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(panel.m_pBtnSearch->maximumSize(), QSize(30, 30));
    QCOMPARE(panel.m_pBtnClear->maximumSize(), QSize(30, 30));

    auto* pLineLayout = qobject_cast<QHBoxLayout*>(panel.Line()->layout());
    QVERIFY(pLineLayout != nullptr);
    QCOMPARE(pLineLayout->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(pLineLayout->spacing(), 0);
    QCOMPARE(pLineLayout->indexOf(panel.m_pBtnClear), 0); // clear to the left of search
    QCOMPARE(pLineLayout->indexOf(panel.m_pBtnSearch), 1);
    QCOMPARE(pLineLayout->stretch(0), 1);
    QCOMPARE(pLineLayout->stretch(1), 0);
    QCOMPARE(pLineLayout->itemAt(0)->alignment(), Qt::AlignRight);
    QCOMPARE(pLineLayout->itemAt(1)->alignment(), Qt::AlignRight);
    QVERIFY(panel.m_pBtnClear->isHidden());
    QVERIFY(!panel.m_pBtnSearch->isHidden());
}

void tst_CLS_WgtTreeWidget::shouldRouteFlagsToBaseTree_data()
{
    QTest::addColumn<bool>("blCheck");
    QTest::addColumn<bool>("blDrag");
    QTest::addColumn<bool>("blDrop");
    QTest::newRow("none") << false << false << false;
    QTest::newRow("check") << true << false << false;
    QTest::newRow("drag") << false << true << false;
    QTest::newRow("drop") << false << false << true;
}

void tst_CLS_WgtTreeWidget::shouldRouteFlagsToBaseTree()
{
    QFETCH(bool, blCheck);
    QFETCH(bool, blDrag);
    QFETCH(bool, blDrop);
    CLS_TestPanel panel(nullptr, blCheck, blDrag, true, false, blDrop, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.m_pBaseTree->dragEnabled(), blDrag);
    QCOMPARE(panel.m_pBaseTree->acceptDrops(), blDrop);
    QCOMPARE(panel.Init("root", CameraTree(1), true), 0);
    const QVariant varState = panel.m_pBaseTree->GetNodeById("cam00")->data(0, Qt::CheckStateRole);
    QCOMPARE(varState.isValid(), blCheck);
}

void tst_CLS_WgtTreeWidget::shouldUseMenuFlagAsRightClickSwitch()
{
    for (const bool blMenu : {false, true}) {
        CLS_TestPanel panel(nullptr, false, false, true, blMenu, false, ITEM_BTN_SHOW_ALWAYS);
        QCOMPARE(panel.Init("root", CameraTree(2), false), 0);
        panel.show();
        QVERIFY(QTest::qWaitForWindowExposed(&panel));
        QSignalSpy spy(&panel, &CLS_WgtTreeWidget::SignRightClicked);
        CLS_WgtBaseTreeWidget* pTree = panel.m_pBaseTree;
        const QPoint point = pTree->visualItemRect(pTree->GetNodeById("cam01")).center();
        QTest::mousePress(pTree->viewport(), Qt::RightButton, Qt::NoModifier, point);
        QCOMPARE(spy.count(), blMenu ? 1 : 0);
        QTest::mouseRelease(pTree->viewport(), Qt::RightButton, Qt::NoModifier, point);
    }
}

void tst_CLS_WgtTreeWidget::shouldFallBackToDarkImagesWithoutSettings()
{
    CLS_TestPanel panel;
    QCOMPARE(panel.m_qstrPicPath,
             QCoreApplication::applicationDirPath() + "/resource/skin/dark/WgtTreeWidget/images/");
}

void tst_CLS_WgtTreeWidget::shouldRunWithoutAppSignalsOrMenuLibrary()
{
    CLS_TestPanel panel(nullptr, true, false, true, true, false, ITEM_BTN_SHOW_HOVER);
    QVERIFY(panel.m_pMenu == nullptr);
    QCOMPARE(panel.Init("root", CameraTree(3), true), 0);
    QVector<CLS_TreeItem> qvecFound;
    QCOMPARE(panel.GetItemByName("camera", qvecFound), 0);
    QCOMPARE(qvecFound.size(), 3);
    panel.ShowMenu(QList<_MenuItem>()); // nothing to show it with: returns
}

void tst_CLS_WgtTreeWidget::shouldHideQueryLineWithoutSearchFlag()
{
    CLS_TestPanel panel(nullptr, false, false, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    QVERIFY(!panel.Line()->isVisible());
    panel.SetSearchVisible(true);
    QVERIFY(panel.Line()->isVisible());
}

void tst_CLS_WgtTreeWidget::shouldShowAndFocusLineOnSetSearchVisible()
{
    CLS_TestPanel panel(nullptr, false, false, false, false, false, ITEM_BTN_SHOW_ALWAYS);
    panel.show();
    QApplication::setActiveWindow(&panel);
    QVERIFY(QTest::qWaitForWindowActive(&panel));
    panel.m_pBaseTree->setFocus();
    panel.SetSearchVisible(true);
    QTRY_VERIFY(panel.Line()->hasFocus());
    panel.SetSearchVisible(false);
    QVERIFY(!panel.Line()->isVisible());
}

void tst_CLS_WgtTreeWidget::shouldShowLineAtStartWithSearchFlag()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QVERIFY(panel.m_blShowSearch);
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    QVERIFY(panel.Line()->isVisible());
    QVERIFY(panel.List()->isHidden());
}

void tst_CLS_WgtTreeWidget::shouldShowClearButtonAndListWhileTextPresent()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("root", CameraTree(3), true), 0);
    QTest::keyClicks(panel.Line(), "c");
    QVERIFY(!panel.m_pBtnClear->isHidden());
    QVERIFY(!panel.List()->isHidden());
    QCOMPARE(panel.List()->count(), 3);

    QTest::keyClick(panel.Line(), Qt::Key_Backspace);
    QVERIFY(panel.Line()->text().isEmpty());
    QVERIFY(panel.m_pBtnClear->isHidden());
    QVERIFY(panel.List()->isHidden());
    QCOMPARE(panel.List()->count(), 0);
}

void tst_CLS_WgtTreeWidget::shouldSizeListByResultCount_data()
{
    QTest::addColumn<int>("iResults");
    QTest::addColumn<int>("iHeight");
    QTest::newRow("one") << 1 << 41;
    QTest::newRow("two") << 2 << 79;
    QTest::newRow("seven") << 7 << 269;
    QTest::newRow("eight") << 8 << 280;
    QTest::newRow("twenty") << 20 << 280;
}

void tst_CLS_WgtTreeWidget::shouldSizeListByResultCount()
{
    QFETCH(int, iResults);
    QFETCH(int, iHeight);
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("root", CameraTree(iResults), true), 0);
    panel.Line()->setText("camera");
    QCOMPARE(panel.List()->count(), iResults);
    QCOMPARE(panel.List()->minimumHeight(), iHeight);
    QCOMPARE(panel.List()->maximumHeight(), iHeight);
}

void tst_CLS_WgtTreeWidget::shouldListResultsWithTextAndId()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("root", CameraTree(3), true), 0);
    panel.Line()->setText("CAMERA");
    QCOMPARE(ListIds(panel.List()), QStringList({"cam00", "cam01", "cam02"}));
    QCOMPARE(panel.List()->item(1)->text(), QString("Camera 1"));
}

void tst_CLS_WgtTreeWidget::shouldShowNoResultsEntry()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("root", CameraTree(3), true), 0);
    panel.Line()->setText("zebra");
    QCOMPARE(panel.List()->count(), 1);
    QCOMPARE(panel.List()->item(0)->text(), QString("No results"));
    QVERIFY(!panel.List()->item(0)->data(Qt::UserRole).isValid());
    QCOMPARE(panel.List()->maximumHeight(), 41);
    QVERIFY(!panel.List()->isHidden());
}

void tst_CLS_WgtTreeWidget::shouldShowNoResultsWithoutRootRow()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("root", CameraTree(3), false), 0);
    panel.Line()->setText("camera");
    QCOMPARE(panel.List()->count(), 1);
    QCOMPARE(panel.List()->item(0)->text(), QString("No results"));
}

void tst_CLS_WgtTreeWidget::shouldIgnoreSearchButtonWithEmptyLine()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("root", CameraTree(3), true), 0);
    panel.Line()->setText("camera 1");
    QCOMPARE(ListIds(panel.List()), QStringList({"cam01"}));
    SetTextQuietly(panel.Line(), QString());
    QTest::mouseClick(panel.m_pBtnSearch, Qt::LeftButton);
    QCOMPARE(ListIds(panel.List()), QStringList({"cam01"}));
    QVERIFY(!panel.List()->isHidden());
}

void tst_CLS_WgtTreeWidget::shouldSearchTwiceOnReturn()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("root", CameraTree(3), true), 0);
    SetTextQuietly(panel.Line(), "camera");
    QSignalSpy spyInserted(panel.List()->model(), &QAbstractItemModel::rowsInserted);
    QTest::keyClick(panel.Line(), Qt::Key_Return);
    QCOMPARE(spyInserted.count(), 6); // three results, filled twice
    QCOMPARE(panel.List()->count(), 3);

    spyInserted.clear();
    QTest::mouseClick(panel.m_pBtnSearch, Qt::LeftButton);
    QCOMPARE(spyInserted.count(), 3);
}

void tst_CLS_WgtTreeWidget::shouldLimitLineToHundredCharacters()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QTest::keyClicks(panel.Line(), QString(120, QChar('x')));
    QCOMPARE(panel.Line()->text().size(), 100);
}

void tst_CLS_WgtTreeWidget::shouldGoToRowOnDoubleClickedResult()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("root", CameraTree(30), true), 0);
    panel.resize(300, 400);
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    QSignalSpy spySelected(&panel, &CLS_WgtTreeWidget::SignSelected);

    panel.Line()->setText("camera 29");
    QCOMPARE(ListIds(panel.List()), QStringList({"cam29"}));
    QListWidget* pList = panel.List();
    QTRY_VERIFY(pList->isVisible() && !pList->visualItemRect(pList->item(0)).isEmpty());
    QCoreApplication::processEvents(); // let the layout place the list
    const QPoint point = pList->visualItemRect(pList->item(0)).center();
    // A user's double click: the first click, then the second press that Qt reports as double.
    QTest::mouseClick(pList->viewport(), Qt::LeftButton, Qt::NoModifier, point);
    QTest::mouseDClick(pList->viewport(), Qt::LeftButton, Qt::NoModifier, point);

    CLS_WgtBaseTreeWidget* pTree = panel.m_pBaseTree;
    QTreeWidgetItem* pRow = pTree->GetNodeById("cam29");
    QCOMPARE(pTree->currentItem(), pRow);
    QTRY_VERIFY(pTree->viewport()->rect().intersects(pTree->visualItemRect(pRow)));
    QVERIFY(panel.Line()->text().isEmpty());
    QVERIFY(pList->isHidden());
    QVERIFY(panel.m_pBtnClear->isHidden());
    QCOMPARE(pList->count(), 0);
    // Hiding the list may hand the focus to the tree, which makes a first row current on its own;
    // the row asked for comes last.
    QVERIFY(!spySelected.isEmpty());
    QCOMPARE(spySelected.last().at(0).toString(), QString("cam29"));
}

void tst_CLS_WgtTreeWidget::shouldCloseSearchOnDoubleClickedNoResultsEntry()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("root", CameraTree(3), true), 0);
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    panel.Line()->setText("zebra");
    QListWidget* pList = panel.List();
    QTRY_VERIFY(pList->isVisible());
    QCoreApplication::processEvents(); // let the layout place the list
    const QPoint point = pList->visualItemRect(pList->item(0)).center();
    QTest::mouseClick(pList->viewport(), Qt::LeftButton, Qt::NoModifier, point);
    QTest::mouseDClick(pList->viewport(), Qt::LeftButton, Qt::NoModifier, point);
    QVERIFY(pList->isHidden());
    QVERIFY(panel.Line()->text().isEmpty());
    QVERIFY(panel.m_pBtnClear->isHidden());
    QCOMPARE(pList->count(), 0);
}

void tst_CLS_WgtTreeWidget::shouldKeepLineVisibleOnClearSearch()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("root", CameraTree(3), true), 0);
    panel.Line()->setText("camera");
    panel.ClearSearch();
    QVERIFY(panel.Line()->text().isEmpty());
    QCOMPARE(panel.List()->count(), 0);
    QVERIFY(panel.List()->isHidden());
    QVERIFY(panel.m_pBtnClear->isHidden());
    QVERIFY(!panel.Line()->isHidden());
}

void tst_CLS_WgtTreeWidget::shouldHideLineOnClearAndCloseSearch()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("root", CameraTree(3), true), 0);
    panel.Line()->setText("camera");
    panel.ClearAndCloseSearch();
    QVERIFY(panel.Line()->text().isEmpty());
    QCOMPARE(panel.List()->count(), 0);
    QVERIFY(panel.List()->isHidden());
    QVERIFY(panel.m_pBtnClear->isHidden());
    QVERIFY(panel.Line()->isHidden());
}

void tst_CLS_WgtTreeWidget::shouldLeaveListOpenWhenLineHidden()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("root", CameraTree(3), true), 0);
    panel.Line()->setText("camera");
    panel.SetSearchVisible(false);
    QVERIFY(panel.Line()->isHidden());
    QVERIFY(!panel.List()->isHidden());
    QVERIFY(!panel.m_pBtnClear->isHidden());
    QCOMPARE(panel.Line()->text(), QString("camera"));
}

void tst_CLS_WgtTreeWidget::shouldClearSearchOnClearButton()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("root", CameraTree(3), true), 0);
    panel.Line()->setText("camera");
    QTest::mouseClick(panel.m_pBtnClear, Qt::LeftButton);
    QVERIFY(panel.Line()->text().isEmpty());
    QVERIFY(panel.List()->isHidden());
    QVERIFY(panel.m_pBtnClear->isHidden());
}

void tst_CLS_WgtTreeWidget::shouldTakeOverPlaceholderAsPrompt()
{
    CLS_LineEdit line;
    line.resize(200, 30);
    line.setPlaceholderText("Search devices");
    QVERIFY(line.PromptText().isEmpty());
    line.grab(); // one paint
    QCOMPARE(line.PromptText(), QString("Search devices"));
    QVERIFY(line.placeholderText().isEmpty());
}

void tst_CLS_WgtTreeWidget::shouldPaintPromptOnlyWhileLineEmpty()
{
    CLS_LineEdit plain;
    plain.resize(200, 30);
    CLS_LineEdit prompted;
    prompted.resize(200, 30);
    prompted.setPlaceholderText("Search devices");
    prompted.grab();

    // Empty: the prompt shows, also with the focus.
    QVERIFY(prompted.grab().toImage() != plain.grab().toImage());
    prompted.show();
    QApplication::setActiveWindow(&prompted);
    prompted.setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&prompted));
    plain.show();
    QVERIFY(prompted.grab().toImage() != plain.grab().toImage());
    prompted.hide();
    plain.hide();

    // With text: nothing of the prompt.
    plain.setText("abc");
    prompted.setText("abc");
    QCOMPARE(prompted.grab().toImage(), plain.grab().toImage());
    QCOMPARE(prompted.PromptText(), QString("Search devices"));
}

void tst_CLS_WgtTreeWidget::shouldRepeatBaseTreeSignals()
{
    CLS_TestPanel panel(nullptr, true, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("root", CameraTree(3), true), 0);
    CLS_WgtBaseTreeWidget* pTree = panel.m_pBaseTree;

    QSignalSpy spyClicked(&panel, &CLS_WgtTreeWidget::SignClicked);
    QSignalSpy spyDbl(&panel, &CLS_WgtTreeWidget::SignDblClicked);
    QSignalSpy spySelected(&panel, &CLS_WgtTreeWidget::SignSelected);
    QSignalSpy spyChecked(&panel, &CLS_WgtTreeWidget::SignCheckedStatusChanged);
    QSignalSpy spyRight(&panel, &CLS_WgtTreeWidget::SignRightClicked);
    QSignalSpy spyButton(&panel, &CLS_WgtTreeWidget::SignClickButton);
    QSignalSpy spyDroped(&panel, &CLS_WgtTreeWidget::SignDroped);

    CLS_TreeItem clsItem;
    QCOMPARE(pTree->GetItemById("cam01", clsItem), 0);
    emit pTree->SignClicked("cam01", clsItem);
    emit pTree->SignDblClicked("cam01", clsItem);
    emit pTree->SignRightClicked("cam01", clsItem);
    emit pTree->SignDroped(clsItem);
    CLS_ItemButton clsButton;
    clsButton.m_qstrId = "play";
    emit pTree->SignClickButton("cam01", clsButton);
    panel.SetCurrentItem("cam02", true);
    panel.SetItemCheckStatus("cam00", Qt::Checked, true);

    QCOMPARE(spyClicked.count(), 1);
    QCOMPARE(spyClicked.at(0).at(0).toString(), QString("cam01"));
    QCOMPARE(spyDbl.count(), 1);
    QCOMPARE(spyRight.count(), 1);
    QCOMPARE(spyDroped.count(), 1);
    QCOMPARE(spyDroped.at(0).at(0).value<CLS_TreeItem>().m_qstrId, QString("cam01"));
    QCOMPARE(spyButton.count(), 1);
    QCOMPARE(spyButton.at(0).at(1).value<CLS_ItemButton>().m_qstrId, QString("play"));
    QCOMPARE(spySelected.count(), 1);
    QCOMPARE(spySelected.at(0).at(0).toString(), QString("cam02"));
    QCOMPARE(spyChecked.count(), 1);
    QCOMPARE(spyChecked.at(0).at(0).toString(), QString("cam00"));
    QCOMPARE(spyChecked.at(0).at(1).toBool(), true);
}

void tst_CLS_WgtTreeWidget::shouldNeverEmitSignChecked()
{
    CLS_TestPanel panel(nullptr, true, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("root", CameraTree(3), true), 0);
    QSignalSpy spyChecked(&panel, &CLS_WgtTreeWidget::SignChecked);
    panel.SetItemCheckStatus("root", Qt::Checked, true);
    panel.SetItemCheckStatus("cam01", Qt::Unchecked, true);
    panel.m_pBaseTree->GetNodeById("cam02")->setCheckState(0, Qt::Unchecked);
    emit panel.m_pBaseTree->SignChecked("cam01", true, CLS_TreeItem()); // not connected to the panel
    QCOMPARE(spyChecked.count(), 0);
}

void tst_CLS_WgtTreeWidget::shouldForwardBuildAndLookups()
{
    CLS_TestPanel panel(nullptr, true, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("", CameraTree(2), true), -1);
    QCOMPARE(panel.Init("root", CameraTree(2), true), 0);
    QCOMPARE(CLS_TreeSnapshot::Snapshot(*panel.m_pBaseTree), QString("root(cam00,cam01,door)"));

    CLS_TreeItem clsItem;
    QCOMPARE(panel.GetItemById("cam01", clsItem), 0);
    QCOMPARE(clsItem.m_qstrText, QString("Camera 1"));
    QCOMPARE(panel.GetItemById("nope", clsItem), -1);
    QCOMPARE(panel.GetParent("cam01", clsItem), 0);
    QCOMPARE(clsItem.m_qstrId, QString("root"));
    QVector<CLS_TreeItem> qvecItems;
    QCOMPARE(panel.GetChilds("root", qvecItems, false), 0);
    QCOMPARE(qvecItems.size(), 3);
    QMap<QString, CLS_TreeItem> qmapAll;
    QCOMPARE(panel.GetAllItems(qmapAll), 0);
    QCOMPARE(qmapAll.size(), 4);
    QCOMPARE(panel.GetCurrentItem(clsItem), -1);
    panel.SetCurrentItem("door");
    QCOMPARE(panel.GetCurrentItem(clsItem), 0);
    QCOMPARE(clsItem.m_qstrId, QString("door"));
    panel.Clear();
    QCOMPARE(panel.m_pBaseTree->topLevelItemCount(), 0);
}

void tst_CLS_WgtTreeWidget::shouldForwardEditingAndCheckState()
{
    CLS_TestPanel panel(nullptr, true, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("root", CameraTree(2), true), 0);
    QCOMPARE(panel.AddItem(MakeItem("cam05", "root", 5, "Camera 5")), 0);
    QCOMPARE(panel.AddItem(MakeItem("cam05", "root", 5, "Camera 5")), -1);
    panel.AddItems({MakeItem("a", "root", 50, "A"), MakeItem("b", "a", 1, "B")});
    QCOMPARE(CLS_TreeSnapshot::Snapshot(*panel.m_pBaseTree), QString("root(cam00,cam01,cam05,a(b),door)"));
    panel.DeleteItem("a");
    QCOMPARE(CLS_TreeSnapshot::Snapshot(*panel.m_pBaseTree), QString("root(cam00,cam01,cam05,door)"));

    CLS_TreeItem clsItem = MakeItem("cam05", "root", 5, "Camera five");
    panel.UpdateItem(clsItem);
    QCOMPARE(panel.m_pBaseTree->GetNodeById("cam05")->text(0), QString("Camera five"));
    panel.UpdateItemIcon("cam05", "x.png");
    panel.SetItemDisabled("cam05", true);
    QVERIFY(!(panel.m_pBaseTree->GetNodeById("cam05")->flags() & Qt::ItemIsEnabled));
    panel.SetItemDisabled("cam05", false);

    panel.SetItemCheckStatus("cam00", Qt::Checked);
    Qt::CheckState state = Qt::Unchecked;
    QCOMPARE(panel.GetItemCheckStatus("cam00", state), 0);
    QCOMPARE(state, Qt::Checked);
    QCOMPARE(panel.GetItemCheckStatus("root", state), 0);
    QCOMPARE(state, Qt::PartiallyChecked);
    QVector<CLS_TreeItem> qvecChecked;
    QCOMPARE(panel.GetCheckedItems(qvecChecked, false), 0);
    QCOMPARE(qvecChecked.size(), 1);
    panel.SetItemCheckStatus("root", Qt::Checked);
    qvecChecked.clear();
    QCOMPARE(panel.GetCheckedNodes(qvecChecked), 0);
    QCOMPARE(qvecChecked.size(), 4); // leaves only: cam00, cam01, cam05, door

    panel.SetTextMaxWidth(40);
    panel.UpdateItem(MakeItem("door", "root", 100, "A door with a very long name"));
    QVERIFY(panel.m_pBaseTree->GetNodeById("door")->text(0) != QString("A door with a very long name"));
}

void tst_CLS_WgtTreeWidget::shouldForwardLocateAndMoves()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("root", CameraTree(3), true), 0);
    QCOMPARE(panel.MoveUpOneRow("cam02", "cam00"), 0);
    QCOMPARE(CLS_TreeSnapshot::Snapshot(*panel.m_pBaseTree), QString("root(cam02,cam01,cam00,door)"));
    QCOMPARE(panel.MoveDownOneRow("door", "cam00"), -1);
    QCOMPARE(panel.MoveDownOneRow("cam02", "cam01"), 0);
    QCOMPARE(CLS_TreeSnapshot::Snapshot(*panel.m_pBaseTree), QString("root(cam01,cam02,cam00,door)"));

    panel.SetShowItemByName("door");
    QVERIFY(panel.m_pBaseTree->GetNodeById("cam00")->isHidden());
    QVERIFY(!panel.m_pBaseTree->GetNodeById("door")->isHidden());
    panel.SetShowItemById("cam00");
    QVERIFY(!panel.m_pBaseTree->GetNodeById("cam00")->isHidden());
    QVERIFY(panel.m_pBaseTree->GetNodeById("door")->isHidden());

    panel.SetAllExpandStatus(false);
    QVERIFY(!panel.m_pBaseTree->GetNodeById("root")->isExpanded());
    panel.SetItemExpandStatus("root", TREE_EXPAND);
    QVERIFY(panel.m_pBaseTree->GetNodeById("root")->isExpanded());
}

void tst_CLS_WgtTreeWidget::shouldClearSelectionOnClearSelect()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Init("root", CameraTree(3), true), 0);
    panel.SetCurrentItem("cam01");
    QCOMPARE(panel.m_pBaseTree->selectedItems().size(), 1);
    panel.ClearSelect();
    QVERIFY(panel.m_pBaseTree->selectedItems().isEmpty());
}

void tst_CLS_WgtTreeWidget::shouldIgnoreShowMenuWithoutMenu()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QVERIFY(panel.m_pMenu == nullptr);
    _MenuItem clsEntry;
    clsEntry.m_qstrItemId = "e";
    const int iTopLevel = QApplication::topLevelWidgets().size();
    QSignalSpy spyMenu(&panel, &CLS_WgtTreeWidget::SignTreeMenuItemClicked);
    panel.ShowMenu({clsEntry});
    QCOMPARE(QApplication::topLevelWidgets().size(), iTopLevel);
    QCOMPARE(spyMenu.count(), 0);
}

QTEST_MAIN(tst_CLS_WgtTreeWidget)
#include "tst_CLS_WgtTreeWidget.moc"
