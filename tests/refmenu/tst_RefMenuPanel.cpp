// The tree panel and the device tree with the reference menu, which the panel loads by path through
// GetWgtView: entries shown at the cursor, a choice reported by the panel, nothing on a dismissal.

#include "CLS_RefMenuKit.h"
#include "CLS_ViewBasic.h"
#include "CLS_WgtDeviceTree.h"
#include "CLS_WgtTreeWidget.h"
#include "TreeStructDefine.h"

#include <QApplication>
#include <QCursor>
#include <QSignalSpy>
#include <QtTest>

using namespace RefMenuKit;

class CLS_MenuPanel : public CLS_WgtTreeWidget
{
public:
    // check, drag, search off; the menu on.
    CLS_MenuPanel() : CLS_WgtTreeWidget(nullptr, false, false, false, true, false, ITEM_BTN_SHOW_ALWAYS) {}
    using CLS_WgtTreeWidget::m_pMenu;
};

namespace {

QList<_MenuItem> PanelEntries()
{
    return {MakeEntry("open", "Open"), MakeEntry("mute", "Mute", true, true, false),
            MakeEntry("solo", "Solo", true, true, true), MakeEntry("off", "Off", false),
            MakeEntry("more", "More", true, false, false, {MakeEntry("a", "A")})};
}

} // namespace

class tst_RefMenuPanel : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void shouldLoadReferenceMenuThroughGetWgtView();
    void shouldShowEntriesAtCursor();
    void shouldReportChosenEntryThroughPanel_data();
    void shouldReportChosenEntryThroughPanel();
    void shouldHideMenuViewBeforeReportingChoice();
    void shouldReportNothingWhenMenuIsDismissed();
    void shouldReportNothingForDisabledEntryOrTitle();
    void shouldReplaceEntriesOnEachShowMenu();
    void shouldShowNothingForEmptyList();
    void shouldReachReferenceMenuFromDeviceTree();
};

void tst_RefMenuPanel::cleanup()
{
    CloseAllPopups();
}

void tst_RefMenuPanel::shouldLoadReferenceMenuThroughGetWgtView()
{
    CLS_MenuPanel panel;
    QVERIFY(panel.m_pMenu != nullptr);
    QCOMPARE(panel.m_pMenu->metaObject()->className(), "CLS_MenuView");
    QVERIFY(panel.m_pMenu->parent() == nullptr); // the panel does not own it
    QVERIFY(RootMenu(panel.m_pMenu) != nullptr);
    // Left to the library, which deletes the views left at exit (LeakSanitizer checks that).
}

void tst_RefMenuPanel::shouldShowEntriesAtCursor()
{
    CLS_MenuPanel panel;
    QCursor::setPos(QPoint(60, 70));
    const QPoint pointCursor = QCursor::pos();
    panel.ShowMenu(PanelEntries());
    QMenu* pMenu = RootMenu(panel.m_pMenu);
    QCOMPARE(MenuText(pMenu), QString("open:Open,mute:Mute[ ],solo:Solo[x],off:Off!,more:More(a:A)"));
    QVERIFY(pMenu->isVisible()); // ShowMenu returned while the menu is open
    QCOMPARE(pMenu->pos(), pointCursor);
}

void tst_RefMenuPanel::shouldReportChosenEntryThroughPanel_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<bool>("checked");
    QTest::newRow("plain") << "open" << false;
    QTest::newRow("checkable, off") << "mute" << true;
    QTest::newRow("checkable, on") << "solo" << false;
    QTest::newRow("entry of a title") << "a" << false;
}

void tst_RefMenuPanel::shouldReportChosenEntryThroughPanel()
{
    QFETCH(QString, id);
    QFETCH(bool, checked);
    CLS_MenuPanel panel;
    QSignalSpy spy(&panel, &CLS_WgtTreeWidget::SignTreeMenuItemClicked);
    panel.ShowMenu(PanelEntries());
    QMenu* pMenu = RootMenu(panel.m_pMenu);

    FindAction(pMenu, id)->trigger();

    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), id);
    QCOMPARE(spy.at(0).at(1).toBool(), checked);
    QVERIFY(!pMenu->isVisible());
}

void tst_RefMenuPanel::shouldHideMenuViewBeforeReportingChoice()
{
    CLS_MenuPanel panel;
    panel.ShowMenu(PanelEntries());
    QMenu* pMenu = RootMenu(panel.m_pMenu);
    // Shown on purpose, so that the panel's hide has something to do before the report goes out.
    panel.m_pMenu->show();
    QVERIFY(panel.m_pMenu->isVisible());
    panel.ShowMenu(PanelEntries()); // the show above closed nothing, but be sure the menu is open
    pMenu = RootMenu(panel.m_pMenu);
    QVERIFY(pMenu->isVisible());

    int iReports = 0;
    bool blViewVisibleAtReport = true;
    bool blMenuVisibleAtReport = true;
    connect(&panel, &CLS_WgtTreeWidget::SignTreeMenuItemClicked, &panel, [&](QString, bool) {
        ++iReports;
        blViewVisibleAtReport = panel.m_pMenu->isVisible();
        blMenuVisibleAtReport = pMenu->isVisible();
    });
    QTest::mouseClick(pMenu, Qt::LeftButton, Qt::NoModifier,
                      pMenu->actionGeometry(FindAction(pMenu, "open")).center());
    QTRY_COMPARE(iReports, 1);
    QVERIFY(!blViewVisibleAtReport);
    QVERIFY(!blMenuVisibleAtReport);
}

void tst_RefMenuPanel::shouldReportNothingWhenMenuIsDismissed()
{
    CLS_MenuPanel panel;
    QSignalSpy spy(&panel, &CLS_WgtTreeWidget::SignTreeMenuItemClicked);
    panel.ShowMenu(PanelEntries());
    QMenu* pMenu = RootMenu(panel.m_pMenu);
    QVERIFY(QTest::qWaitForWindowExposed(pMenu));
    QTest::keyClick(pMenu, Qt::Key_Escape);
    QTRY_VERIFY(!pMenu->isVisible());
    panel.ShowMenu(PanelEntries());
    pMenu->close();
    QCoreApplication::processEvents();
    QCOMPARE(spy.count(), 0);
}

void tst_RefMenuPanel::shouldReportNothingForDisabledEntryOrTitle()
{
    CLS_MenuPanel panel;
    QSignalSpy spy(&panel, &CLS_WgtTreeWidget::SignTreeMenuItemClicked);
    panel.ShowMenu(PanelEntries());
    QMenu* pMenu = RootMenu(panel.m_pMenu);
    QVERIFY(QTest::qWaitForWindowExposed(pMenu));
    QTest::mouseClick(pMenu, Qt::LeftButton, Qt::NoModifier,
                      pMenu->actionGeometry(FindAction(pMenu, "off")).center());
    FindAction(pMenu, "off")->trigger();
    FindAction(pMenu, "more")->trigger();
    QCoreApplication::processEvents();
    QCOMPARE(spy.count(), 0);
    QVERIFY(pMenu->isVisible());
}

void tst_RefMenuPanel::shouldReplaceEntriesOnEachShowMenu()
{
    CLS_MenuPanel panel;
    QSignalSpy spy(&panel, &CLS_WgtTreeWidget::SignTreeMenuItemClicked);
    panel.ShowMenu(PanelEntries());
    CLS_ViewBasic* pFirstView = panel.m_pMenu;
    panel.ShowMenu({MakeEntry("rename", "Rename"), MakeEntry("lock", "Lock", true, true, true)});
    QCOMPARE(panel.m_pMenu, pFirstView); // one menu view per panel, reused
    QMenu* pMenu = RootMenu(panel.m_pMenu);
    QCOMPARE(MenuText(pMenu), QString("rename:Rename,lock:Lock[x]"));
    QVERIFY(FindAction(pMenu, "open") == nullptr);

    FindAction(pMenu, "lock")->trigger();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), QString("lock"));
    QCOMPARE(spy.at(0).at(1).toBool(), false);
}

void tst_RefMenuPanel::shouldShowNothingForEmptyList()
{
    CLS_MenuPanel panel;
    QSignalSpy spy(&panel, &CLS_WgtTreeWidget::SignTreeMenuItemClicked);
    panel.ShowMenu(PanelEntries());
    panel.ShowMenu(QList<_MenuItem>());
    QMenu* pMenu = RootMenu(panel.m_pMenu);
    QCOMPARE(MenuText(pMenu), QString());
    QVERIFY(!pMenu->isVisible());
    QCOMPARE(QApplication::activePopupWidget(), static_cast<QWidget*>(nullptr));
    QCOMPARE(spy.count(), 0);
}

void tst_RefMenuPanel::shouldReachReferenceMenuFromDeviceTree()
{
    // drag off, check boxes off, the menu on.
    CLS_WgtDeviceTree tree(nullptr, DEV_TREE_GENERIC, false, false, true);
    const QList<CLS_WgtTreeWidget*> qlstPanels = tree.findChildren<CLS_WgtTreeWidget*>();
    QCOMPARE(qlstPanels.size(), 1);
    QSignalSpy spy(qlstPanels.first(), &CLS_WgtTreeWidget::SignTreeMenuItemClicked);

    tree.ShowMenu(PanelEntries());
    QMenu* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QVERIFY(pMenu != nullptr);
    QCOMPARE(pMenu->objectName(), QString("menuRoot"));
    QCOMPARE(MenuText(pMenu), QString("open:Open,mute:Mute[ ],solo:Solo[x],off:Off!,more:More(a:A)"));
    FindAction(pMenu, "mute")->trigger();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), QString("mute"));
    QCOMPARE(spy.at(0).at(1).toBool(), true);
}

QTEST_MAIN(tst_RefMenuPanel)
#include "tst_RefMenuPanel.moc"
