// What a reader finds in a tree panel, read through Qt's accessibility interfaces: the tree's name
// and description, the header sections, each row's cells, the row buttons reached from the keyboard,
// and the order of the focus a reader hears in the keyboard search.

#include "CLS_LineEdit.h"
#include "CLS_TreeAccessibility.h"
#include "CLS_TreeTestUtil.h"
#include "CLS_WgtBaseTreeWidget.h"
#include "CLS_WgtItemToolBar.h"
#include "CLS_WgtTranslator.h"
#include "CLS_WgtTreeWidget.h"
#include "Ui_CLS_WgtTreeWidget.h"

#include <QAccessible>
#include <QApplication>
#include <QListWidget>
#include <QMimeData>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QToolButton>
#include <QtTest>

#include <functional>

class CLS_TestPanel : public CLS_WgtTreeWidget
{
public:
    using CLS_WgtTreeWidget::CLS_WgtTreeWidget;
    using CLS_WgtTreeWidget::m_pBaseTree;

    QLineEdit* Line() const { return m_pUi->qlineedtQueryInput; }
    QListWidget* List() const { return m_pUi->qlistWgtQueryResult; }
};

namespace {

using CLS_TreeTestUtil::MakeItem;
using CLS_TreeTestUtil::MakeNamedButton;

// "site" (Site) with "cam0" .. "cam2" (two buttons each, "Play" and an icon-only "Record"), "door"
// (no buttons, tool tip "tip door") and "spare" (tool tip equal to its text).
QMap<QString, CLS_TreeItem> SiteRows(int _iCameras = 3)
{
    QMap<QString, CLS_TreeItem> qmapItems;
    qmapItems.insert("site", MakeItem("site", QString(), 0, "Site"));
    for (int i = 0; i < _iCameras; ++i) {
        CLS_TreeItem clsItem = MakeItem(QString("cam%1").arg(i), "site", i, QString("Camera %1").arg(i));
        clsItem.m_qvecButtons = {MakeNamedButton("play", "Play", "Play live video"),
                                 MakeNamedButton("record", QString(), "Record")};
        qmapItems.insert(clsItem.m_qstrId, clsItem);
    }
    qmapItems.insert("door", MakeItem("door", "site", 10, "Door"));
    CLS_TreeItem clsSpare = MakeItem("spare", "site", 11, "Spare");
    clsSpare.m_qstrTooltip = "Spare";
    qmapItems.insert("spare", clsSpare);
    return qmapItems;
}

QAccessibleInterface* TreeInterface(CLS_TestPanel& _panel)
{
    return QAccessible::queryAccessibleInterface(_panel.m_pBaseTree);
}

// The cell a reader finds at visual row @p _iRow (header not counted) and column @p _iColumn.
QString CellText(CLS_TestPanel& _panel, int _iRow, int _iColumn, QAccessible::Text _iWhich)
{
    QAccessibleInterface* pTree = TreeInterface(_panel);
    if (pTree == nullptr || pTree->tableInterface() == nullptr)
        return "<no table>";
    QAccessibleInterface* pCell = pTree->tableInterface()->cellAt(_iRow, _iColumn);
    return pCell != nullptr ? pCell->text(_iWhich) : QString("<no cell>");
}

QString FocusText()
{
    QWidget* pFocus = QApplication::focusWidget();
    if (pFocus == nullptr)
        return "none";
    QAccessibleInterface* pInterface = QAccessible::queryAccessibleInterface(pFocus);
    return QString(pFocus->metaObject()->className()) + ":" +
           (pInterface ? pInterface->text(QAccessible::Name) : "");
}

// Focus events as a reader gets them: "Class" for a widget, "Class/child text" for a cell or item.
QStringList g_qlstFocusEvents;

void RecordFocus(QAccessibleEvent* _pEvent)
{
    if (_pEvent->type() != QAccessible::Focus)
        return;
    QAccessibleInterface* pInterface = _pEvent->accessibleInterface();
    QString qstrText = _pEvent->object() != nullptr ? _pEvent->object()->metaObject()->className() : "?";
    if (_pEvent->child() >= 0 && pInterface != nullptr)
        qstrText += "/" + pInterface->text(QAccessible::Name);
    g_qlstFocusEvents << qstrText;
}

// Delivers the watched widget's focus-in itself, so that what the widget does while taking the focus
// is known: m_blInside is true during that delivery only.
class CLS_FocusWatch : public QObject
{
public:
    bool m_blInside = false;

protected:
    bool eventFilter(QObject* _pWatched, QEvent* _pEvent) override
    {
        if (_pEvent->type() != QEvent::FocusIn)
            return QObject::eventFilter(_pWatched, _pEvent);
        _pWatched->removeEventFilter(this);
        m_blInside = true;
        QCoreApplication::sendEvent(_pWatched, _pEvent);
        m_blInside = false;
        return true;
    }
};

} // namespace

class tst_TreeAccessibility : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void shouldNameTheTreeAfterThePanelTitleByDefault();
    void shouldTakeThePagesTreeNameAndGoBackOnAnEmptyOne();
    void shouldFollowTheLanguageAndThePanelTitle();
    void shouldNameTheHiddenHeaderSections();
    void shouldDescribeARowWithChildrenAndALeafByItsToolTip();
    void shouldNameTheButtonCellsAfterTheRowButtons();
    void shouldGiveTheFullTextOfAnElidedRow();
    void shouldKeepTheRowsOwnValuesTextsAndDragPayload();
    void shouldMoveFocusIntoTheRowBarAndBackWithTheKeyboard();
    void shouldPressAButtonFromTheKeyboardAsAClick();
    void shouldMakeAnOnDemandBarWhenAskedFromTheKeyboard();
    void shouldShowAHoverBarWhileItsButtonsHaveTheFocus();
    void shouldLeaveCtrlRightToTheTreeOnARowWithoutButtons();
    void shouldAnnounceTheListBeforeItsFirstResult();
    void shouldAnnounceTheRowLastAfterReturnOnAResult();

private:
    CLS_TestPanel* MakePanel(n_ItemBtnShowType _iShow = ITEM_BTN_SHOW_ALWAYS,
                             n_ToolBarMountType _iMount = TOOLBAR_MOUNT_AUTO, int _iCameras = 3);

    // The panel's search line takes the focus and @p _qstrText; true once the results are shown.
    bool TypeSearch(const QString& _qstrText);
    // The row @p _qstrId becomes current and the tree takes the focus; true once it has it.
    bool FocusRow(const QString& _qstrId);

    CLS_TestPanel* m_pPanel = nullptr;
};

void tst_TreeAccessibility::initTestCase()
{
    QCOMPARE(CLS_WgtTranslator::SetLanguage(QLocale(QLocale::English, QLocale::UnitedStates)), 0);
}

void tst_TreeAccessibility::init()
{
    g_qlstFocusEvents.clear();
}

void tst_TreeAccessibility::cleanup()
{
    QAccessible::installUpdateHandler(nullptr);
    QAccessible::setActive(false);
    delete m_pPanel;
    m_pPanel = nullptr;
    QCOMPARE(CLS_WgtTranslator::SetLanguage(QLocale(QLocale::English, QLocale::UnitedStates)), 0);
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a test leaked a top-level widget");
}

CLS_TestPanel* tst_TreeAccessibility::MakePanel(n_ItemBtnShowType _iShow, n_ToolBarMountType _iMount,
                                                int _iCameras)
{
    m_pPanel = new CLS_TestPanel(nullptr, false, false, true, false, false, _iShow);
    m_pPanel->m_pBaseTree->SetToolBarMountType(_iMount);
    if (m_pPanel->Init("site", SiteRows(_iCameras), true) != 0)
        return nullptr;
    m_pPanel->SetAllExpandStatus(true);
    m_pPanel->resize(320, 400);
    m_pPanel->show();
    QApplication::setActiveWindow(m_pPanel);
    if (!QTest::qWaitForWindowActive(m_pPanel))
        return nullptr;
    return m_pPanel;
}

bool tst_TreeAccessibility::TypeSearch(const QString& _qstrText)
{
    m_pPanel->Line()->setFocus(Qt::MouseFocusReason);
    if (!QTest::qWaitFor([this]() { return m_pPanel->Line()->hasFocus(); }))
        return false;
    QTest::keyClicks(m_pPanel->Line(), _qstrText);
    return QTest::qWaitFor([this]() { return m_pPanel->List()->isVisible(); });
}

bool tst_TreeAccessibility::FocusRow(const QString& _qstrId)
{
    CLS_WgtBaseTreeWidget* pTree = m_pPanel->m_pBaseTree;
    pTree->setCurrentItem(pTree->GetNodeById(_qstrId));
    pTree->setFocus();
    return QTest::qWaitFor([pTree]() { return pTree->hasFocus(); });
}

void tst_TreeAccessibility::shouldNameTheTreeAfterThePanelTitleByDefault()
{
    CLS_TestPanel panel;
    QAccessibleInterface* pTree = TreeInterface(panel);
    QVERIFY(pTree != nullptr);
    QCOMPARE(pTree->text(QAccessible::Name), QString("Resource tree"));
    QCOMPARE(pTree->text(QAccessible::Description),
             QString("Arrow keys move between rows. Ctrl+Right moves to the buttons of the current row, "
                     "Escape returns to the row."));
    QCOMPARE(panel.GetAccessibility()->TreeName(), QString("Resource tree"));
}

void tst_TreeAccessibility::shouldTakeThePagesTreeNameAndGoBackOnAnEmptyOne()
{
    CLS_TestPanel panel;
    panel.SetAccessibleTreeName("Cameras of hall 2");
    QCOMPARE(TreeInterface(panel)->text(QAccessible::Name), QString("Cameras of hall 2"));
    // A later window title leaves the page's name alone.
    panel.setWindowTitle("Other");
    QCOMPARE(TreeInterface(panel)->text(QAccessible::Name), QString("Cameras of hall 2"));
    panel.SetAccessibleTreeName(QString());
    QCOMPARE(TreeInterface(panel)->text(QAccessible::Name), QString("Other"));
}

void tst_TreeAccessibility::shouldFollowTheLanguageAndThePanelTitle()
{
    CLS_TestPanel panel;
    QCOMPARE(CLS_WgtTranslator::SetLanguage(QLocale(QLocale::German, QLocale::Germany)), 0);
    QTRY_COMPARE(TreeInterface(panel)->text(QAccessible::Name), QString("Ressourcenbaum"));
    QTRY_COMPARE(panel.m_pBaseTree->model()->headerData(1, Qt::Horizontal, Qt::AccessibleTextRole).toString(),
                 QString::fromUtf8("Schaltflächen"));
    panel.setWindowTitle("Kameras");
    QCOMPARE(TreeInterface(panel)->text(QAccessible::Name), QString("Kameras"));
}

void tst_TreeAccessibility::shouldNameTheHiddenHeaderSections()
{
    CLS_TestPanel panel;
    QAbstractItemModel* pModel = panel.m_pBaseTree->model();
    QCOMPARE(pModel->headerData(0, Qt::Horizontal, Qt::AccessibleTextRole).toString(), QString("Name"));
    QCOMPARE(pModel->headerData(1, Qt::Horizontal, Qt::AccessibleTextRole).toString(), QString("Buttons"));
    // The header shows nothing new: its display texts stay Qt's numbers.
    QCOMPARE(pModel->headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), QString("1"));
    // Where Qt lists the hidden header's sections, a reader hears the names.
    QAccessibleInterface* pTree = TreeInterface(panel);
    QAccessibleInterface* pFirst = pTree->child(0);
    QVERIFY(pFirst != nullptr);
    if (pFirst->role() == QAccessible::ColumnHeader) {
        QCOMPARE(pFirst->text(QAccessible::Name), QString("Name"));
        QCOMPARE(pTree->child(1)->text(QAccessible::Name), QString("Buttons"));
    }
}

void tst_TreeAccessibility::shouldDescribeARowWithChildrenAndALeafByItsToolTip()
{
    QVERIFY(MakePanel());
    // Visual rows: site, cam0, cam1, cam2, door, spare.
    QCOMPARE(CellText(*m_pPanel, 0, 0, QAccessible::Name), QString("Site"));
    QCOMPARE(CellText(*m_pPanel, 0, 0, QAccessible::Description), QString("Group, 5 rows"));
    QCOMPARE(CellText(*m_pPanel, 4, 0, QAccessible::Name), QString("Door"));
    QCOMPARE(CellText(*m_pPanel, 4, 0, QAccessible::Description), QString("tip door"));
    // A tool tip that only repeats the text says nothing more.
    QCOMPARE(CellText(*m_pPanel, 5, 0, QAccessible::Description), QString());

    // A describer of the page's own replaces the default; an empty one restores it.
    m_pPanel->GetAccessibility()->SetRowDescriber(
        [](const QTreeWidgetItem* _pRow) { return "row " + _pRow->text(0); });
    QCOMPARE(CellText(*m_pPanel, 4, 0, QAccessible::Description), QString("row Door"));
    m_pPanel->GetAccessibility()->SetRowDescriber(nullptr);
    QCOMPARE(CellText(*m_pPanel, 4, 0, QAccessible::Description), QString("tip door"));
}

void tst_TreeAccessibility::shouldNameTheButtonCellsAfterTheRowButtons()
{
    QVERIFY(MakePanel());
    // Named after the text, or the tool tip of an icon-only button, as the bar names its buttons.
    QCOMPARE(CellText(*m_pPanel, 1, 1, QAccessible::Name), QString("Buttons: Play, Record"));
    QCOMPARE(CellText(*m_pPanel, 1, 1, QAccessible::Description),
             QString("Ctrl+Right on the row moves to these buttons, Escape returns."));
    QCOMPARE(CellText(*m_pPanel, 4, 1, QAccessible::Name), QString("No buttons"));
    QCOMPARE(CellText(*m_pPanel, 4, 1, QAccessible::Description), QString());
    QCOMPARE(CellText(*m_pPanel, 0, 1, QAccessible::Name), QString("No buttons"));
}

void tst_TreeAccessibility::shouldGiveTheFullTextOfAnElidedRow()
{
    CLS_TestPanel panel;
    panel.SetTextMaxWidth(40); // rows built from here on show their text elided
    QCOMPARE(panel.Init("site", SiteRows(), true), 0);
    panel.SetAllExpandStatus(true);
    QTreeWidgetItem* pRow = panel.m_pBaseTree->GetNodeById("cam1");
    QVERIFY(pRow != nullptr);
    QVERIFY2(pRow->text(0) != "Camera 1", qPrintable(pRow->text(0)));
    QCOMPARE(CellText(panel, 2, 0, QAccessible::Name), QString("Camera 1"));
}

void tst_TreeAccessibility::shouldKeepTheRowsOwnValuesTextsAndDragPayload()
{
    QVERIFY(MakePanel());
    CLS_WgtBaseTreeWidget* pTree = m_pPanel->m_pBaseTree;
    QTreeWidgetItem* pRow = pTree->GetNodeById("door");
    QVERIFY(pRow != nullptr);
    // A value the page stored itself wins over the words.
    pRow->setData(0, Qt::AccessibleDescriptionRole, "Main entrance");
    QCOMPARE(CellText(*m_pPanel, 4, 0, QAccessible::Description), QString("Main entrance"));
    // What the rows hold for Qt is what they held: texts, and the roles a drag carries.
    QCOMPARE(pRow->text(0), QString("Door"));
    QCOMPARE(pRow->text(1), QString());
    QTreeWidgetItem* pCam = pTree->GetNodeById("cam0");
    const QModelIndex index = pTree->model()->index(0, 1, pTree->model()->index(0, 0));
    QCOMPARE(pTree->model()->itemData(index).contains(Qt::AccessibleTextRole), false);
    QCOMPARE(pTree->model()->itemData(index.sibling(0, 0)).contains(Qt::AccessibleDescriptionRole), false);
    QCOMPARE(pCam->data(0, Qt::DisplayRole).toString(), QString("Camera 0"));
    // A row outside any tree has no words to give.
    QTreeWidgetItem clsLoose;
    QCOMPARE(CLS_TreeAccessibility::RowData(&clsLoose, 0, Qt::AccessibleDescriptionRole).isValid(), false);
    QCOMPARE(CLS_TreeAccessibility::RowData(pCam, 0, Qt::ToolTipRole).isValid(), false);
}

void tst_TreeAccessibility::shouldMoveFocusIntoTheRowBarAndBackWithTheKeyboard()
{
    QVERIFY(MakePanel());
    CLS_WgtBaseTreeWidget* pTree = m_pPanel->m_pBaseTree;
    QVERIFY(FocusRow("cam1"));
    QTest::keyClick(pTree, Qt::Key_Right, Qt::ControlModifier);
    QTRY_COMPARE(FocusText(), QString("QToolButton:Play"));
    // The bar is the current row's.
    auto* pBar = qobject_cast<CLS_WgtItemToolBar*>(QApplication::focusWidget()->parentWidget());
    QVERIFY(pBar != nullptr);
    QCOMPARE(pTree->GetItemButtons(pTree->GetNodeById("cam1"))->isAncestorOf(pBar), true);
    // The button with the focus is framed, for those who see the screen; the frame follows the focus.
    auto* pPlay = qobject_cast<QToolButton*>(QApplication::focusWidget());
    QVERIFY(pPlay->styleSheet().contains("palette(highlight)"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    QTRY_COMPARE(FocusText(), QString("QToolButton:Record"));
    auto* pRecord = qobject_cast<QToolButton*>(QApplication::focusWidget());
    QCOMPARE(pPlay->styleSheet(), QString());
    QVERIFY(pRecord->styleSheet().contains("palette(highlight)"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right); // the last stays
    QCOMPARE(FocusText(), QString("QToolButton:Record"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
    QTRY_COMPARE(FocusText(), QString("QToolButton:Play"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QTRY_VERIFY(pTree->hasFocus());
    QCOMPARE(pTree->currentItem(), pTree->GetNodeById("cam1"));
    QCOMPARE(pPlay->styleSheet() + pRecord->styleSheet(), QString());
    // Ctrl+Left goes back as well.
    QTest::keyClick(pTree, Qt::Key_Right, Qt::ControlModifier);
    QTRY_COMPARE(FocusText(), QString("QToolButton:Play"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left, Qt::ControlModifier);
    QTRY_VERIFY(pTree->hasFocus());
}

void tst_TreeAccessibility::shouldPressAButtonFromTheKeyboardAsAClick()
{
    QVERIFY(MakePanel());
    CLS_WgtBaseTreeWidget* pTree = m_pPanel->m_pBaseTree;
    QSignalSpy spyButton(m_pPanel, &CLS_WgtTreeWidget::SignClickButton);
    QVERIFY(FocusRow("cam2"));
    QTest::keyClick(pTree, Qt::Key_Right, Qt::ControlModifier);
    QTRY_COMPARE(FocusText(), QString("QToolButton:Play"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTRY_COMPARE(spyButton.count(), 1);
    QCOMPARE(spyButton.at(0).at(0).toString(), QString("cam2"));
    QCOMPARE(spyButton.at(0).at(1).value<CLS_ItemButton>().m_qstrId, QString("record"));
    // Space presses too, as it does on any button.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QTRY_COMPARE(spyButton.count(), 2);
    QCOMPARE(spyButton.at(1).at(1).value<CLS_ItemButton>().m_qstrId, QString("record"));
    // And the button's own press action, as a reader invokes it.
    QAccessibleInterface* pButton = QAccessible::queryAccessibleInterface(QApplication::focusWidget());
    QVERIFY(pButton != nullptr && pButton->actionInterface() != nullptr);
    pButton->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(spyButton.count(), 3);
}

void tst_TreeAccessibility::shouldMakeAnOnDemandBarWhenAskedFromTheKeyboard()
{
    // Enough cameras that the last is far out of view: no paint has made its bar.
    QVERIFY(MakePanel(ITEM_BTN_SHOW_ALWAYS, TOOLBAR_MOUNT_ON_DEMAND, 60));
    CLS_WgtBaseTreeWidget* pTree = m_pPanel->m_pBaseTree;
    QTreeWidgetItem* pRow = pTree->GetNodeById("cam59");
    QCOMPARE(pTree->GetItemButtons(pRow), nullptr);
    QVERIFY(FocusRow(pRow->data(0, Qt::UserRole).toString()));
    QTest::keyClick(pTree, Qt::Key_Right, Qt::ControlModifier);
    QVERIFY(pTree->GetItemButtons(pRow) != nullptr);
    QTRY_COMPARE(FocusText(), QString("QToolButton:Play"));
}

void tst_TreeAccessibility::shouldShowAHoverBarWhileItsButtonsHaveTheFocus()
{
    QVERIFY(MakePanel(ITEM_BTN_SHOW_HOVER));
    CLS_WgtBaseTreeWidget* pTree = m_pPanel->m_pBaseTree;
    QTreeWidgetItem* pRow = pTree->GetNodeById("cam0");
    QVERIFY(FocusRow(pRow->data(0, Qt::UserRole).toString()));
    auto* pStack = qobject_cast<QStackedWidget*>(pTree->EnsureItemButtons(pRow));
    QVERIFY(pStack != nullptr);
    const int iPageBefore = pStack->currentIndex();
    QTest::keyClick(pTree, Qt::Key_Right, Qt::ControlModifier);
    QTRY_COMPARE(FocusText(), QString("QToolButton:Play"));
    QVERIFY(qobject_cast<CLS_WgtItemToolBar*>(pStack->currentWidget()) != nullptr);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QTRY_VERIFY(pTree->hasFocus());
    QCOMPARE(pStack->currentIndex(), iPageBefore);
}

void tst_TreeAccessibility::shouldLeaveCtrlRightToTheTreeOnARowWithoutButtons()
{
    QVERIFY(MakePanel());
    CLS_WgtBaseTreeWidget* pTree = m_pPanel->m_pBaseTree;
    QVERIFY(FocusRow("door"));
    QVERIFY(!m_pPanel->GetAccessibility()->EnterRowButtons());
    QTest::keyClick(pTree, Qt::Key_Right, Qt::ControlModifier);
    QTest::qWait(20);
    QVERIFY(pTree->hasFocus());
    // Collapsed, the site row takes Ctrl+Right as the tree always did: it opens.
    pTree->GetNodeById("site")->setExpanded(false);
    pTree->setCurrentItem(pTree->GetNodeById("site"));
    QTest::keyClick(pTree, Qt::Key_Right, Qt::ControlModifier);
    QTRY_VERIFY(pTree->GetNodeById("site")->isExpanded());
    QVERIFY(pTree->hasFocus());
}

void tst_TreeAccessibility::shouldAnnounceTheListBeforeItsFirstResult()
{
    QVERIFY(MakePanel());
    QVERIFY(TypeSearch("Camera"));
    // The first result becomes current after the list has the focus, never while it takes it: a
    // row made current inside the focus change is heard before the list.
    CLS_FocusWatch watch;
    QStringList qlstChanges;
    connect(m_pPanel->List(), &QListWidget::currentRowChanged, this, [&](int _iRow) {
        qlstChanges << QString("%1%2").arg(watch.m_blInside ? "inside focus-in: " : "").arg(_iRow);
    });
    m_pPanel->List()->installEventFilter(&watch);
    QTest::keyClick(m_pPanel->Line(), Qt::Key_Down);
    QTRY_VERIFY(m_pPanel->List()->hasFocus());
    m_pPanel->List()->removeEventFilter(&watch);
    disconnect(m_pPanel->List(), &QListWidget::currentRowChanged, this, nullptr);
    QCOMPARE(qlstChanges, QStringList({"0"}));
    // The result a reader is told of after the list is the first one.
    const int iChild = CLS_TreeAccessibility::CurrentChild(m_pPanel->List());
    QAccessibleInterface* pList = QAccessible::queryAccessibleInterface(m_pPanel->List());
    QVERIFY(iChild >= 0 && pList->child(iChild) != nullptr);
    QCOMPARE(pList->child(iChild)->text(QAccessible::Name), QString("Camera 0"));

    QAccessible::installUpdateHandler(RecordFocus);
    QAccessible::setActive(true);
    if (!QAccessible::isActive())
        QSKIP("this platform has no accessibility bridge: the order heard is checked through AT-SPI");
    m_pPanel->Line()->setFocus(Qt::MouseFocusReason);
    QTRY_VERIFY(m_pPanel->Line()->hasFocus());
    g_qlstFocusEvents.clear();
    QTest::keyClick(m_pPanel->Line(), Qt::Key_Down);
    QTRY_VERIFY(m_pPanel->List()->hasFocus());
    QVERIFY2(!g_qlstFocusEvents.isEmpty(), "no focus reached a reader");
    QCOMPARE(g_qlstFocusEvents.first(), QString("QListWidget"));
    QCOMPARE(g_qlstFocusEvents.last(), QString("QListWidget/Camera 0"));
}

void tst_TreeAccessibility::shouldAnnounceTheRowLastAfterReturnOnAResult()
{
    QVERIFY(MakePanel());
    QVERIFY(TypeSearch("Camera 2"));
    QTest::keyClick(m_pPanel->Line(), Qt::Key_Down);
    QTRY_VERIFY(m_pPanel->List()->hasFocus());
    QTest::keyClick(m_pPanel->List(), Qt::Key_Return);
    QTRY_VERIFY(m_pPanel->m_pBaseTree->hasFocus());
    // The row a reader is told of last is the one found.
    CLS_WgtBaseTreeWidget* pTree = m_pPanel->m_pBaseTree;
    QCOMPARE(pTree->currentItem(), pTree->GetNodeById("cam2"));
    const int iChild = CLS_TreeAccessibility::CurrentChild(pTree);
    QVERIFY(iChild >= 0);
    QCOMPARE(TreeInterface(*m_pPanel)->child(iChild)->text(QAccessible::Name), QString("Camera 2"));

    QAccessible::installUpdateHandler(RecordFocus);
    QAccessible::setActive(true);
    if (!QAccessible::isActive())
        QSKIP("this platform has no accessibility bridge: the order heard is checked through AT-SPI");
    QTest::keyClicks(m_pPanel->Line(), "Camera 1");
    QTest::keyClick(m_pPanel->Line(), Qt::Key_Down);
    QTRY_VERIFY(m_pPanel->List()->hasFocus());
    g_qlstFocusEvents.clear();
    QTest::keyClick(m_pPanel->List(), Qt::Key_Return);
    QTRY_VERIFY(pTree->hasFocus());
    QVERIFY2(!g_qlstFocusEvents.isEmpty(), "no focus reached a reader");
    QCOMPARE(g_qlstFocusEvents.last(), QString("CLS_WgtBaseTreeWidget/Camera 1"));
}

QTEST_MAIN(tst_TreeAccessibility)
#include "tst_TreeAccessibility.moc"
