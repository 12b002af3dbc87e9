// The panel's context menu against a menu library found by name at run time.

#include "CLS_ViewBasic.h"
#include "CLS_WgtDeviceTree.h"
#include "CLS_WgtTreeWidget.h"
#include "Util.h"
#include "WgtMenuTestApi.h"
#include "WgtQtCompat.h"

#include <QApplication>
#include <QCursor>
#include <QSignalSpy>
#include <QtTest>

#include <dlfcn.h>

class CLS_TestPanel : public CLS_WgtTreeWidget
{
public:
    using CLS_WgtTreeWidget::CLS_WgtTreeWidget;
    using CLS_WgtTreeWidget::m_pMenu;
};

namespace {

void* MenuLibrary()
{
    const std::string strPath = Util::GetModulePath() + "/libWgtMenu.so";
    return dlopen(strPath.c_str(), RTLD_NOW | RTLD_NOLOAD);
}

QList<STRCT_MenuRequest> TakeRequests()
{
    QList<STRCT_MenuRequest> qlstRequests;
    auto pFun =
        reinterpret_cast<PFun_WgtMenuTest_TakeRequests>(dlsym(MenuLibrary(), "WgtMenuTest_TakeRequests"));
    if (pFun != nullptr)
        pFun(&qlstRequests);
    return qlstRequests;
}

QStringList Keys(const QList<STRCT_MenuRequest>& _qlstRequests)
{
    QStringList qlstKeys;
    for (const STRCT_MenuRequest& request : _qlstRequests)
        qlstKeys << request.first;
    return qlstKeys;
}

_MenuItem MakeEntry(const QString& _qstrId, bool _blCheckable, bool _blChecked)
{
    _MenuItem clsEntry;
    clsEntry.m_qstrItemId = _qstrId;
    clsEntry.m_qstrItemText = "Text " + _qstrId;
    clsEntry.m_blEnable = true;
    clsEntry.m_blCheckable = _blCheckable;
    clsEntry.m_blChecked = _blChecked;
    return clsEntry;
}

} // namespace

class tst_CLS_WgtTreeWidgetMenu : public QObject
{
    Q_OBJECT

private slots:
    void init() { TakeRequests(); }
    void shouldMakeMenuWithMenuType();
    void shouldNotMakeMenuWithoutMenuFlag();
    void shouldSendBothTasksForEmptyList();
    void shouldSendEntriesAndCursorPosition();
    void shouldReportChosenEntry();
    void shouldHideMenuBeforeReportingChoice();
    void shouldReportAnswerWithoutKeysAsEmptyChoice();
    void shouldReachPanelMenuFromDeviceTree();
};

void tst_CLS_WgtTreeWidgetMenu::shouldMakeMenuWithMenuType()
{
    CLS_TestPanel panel(nullptr, false, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QVERIFY(panel.m_pMenu != nullptr);
    QVERIFY(panel.m_pMenu->parent() == nullptr); // not owned by the panel
    const QList<STRCT_MenuRequest> qlstRequests = TakeRequests();
    QCOMPARE(Keys(qlstRequests), QStringList({"CreateWgt"}));
    QCOMPARE(qlstRequests.at(0).second.value("MenuType").toString(), QString("CLS_Menu"));
    delete panel.m_pMenu; // the menu library's view; the test cleans up after itself
}

void tst_CLS_WgtTreeWidgetMenu::shouldNotMakeMenuWithoutMenuFlag()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QVERIFY(panel.m_pMenu == nullptr);
    panel.ShowMenu({MakeEntry("a", false, false)});
    QVERIFY(TakeRequests().isEmpty());
}

void tst_CLS_WgtTreeWidgetMenu::shouldSendBothTasksForEmptyList()
{
    CLS_TestPanel panel(nullptr, false, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    TakeRequests();
    panel.ShowMenu(QList<_MenuItem>());
    const QList<STRCT_MenuRequest> qlstRequests = TakeRequests();
    QCOMPARE(Keys(qlstRequests), QStringList({"setInfo", "exec"}));
    const QVariant varInfo = qlstRequests.at(0).second.value("Info");
    QCOMPARE(QtCompat::MetaTypeName(varInfo.userType()), "QList<STRUCT_MenuItem>");
    QVERIFY(varInfo.value<QList<_MenuItem>>().isEmpty());
    delete panel.m_pMenu;
}

void tst_CLS_WgtTreeWidgetMenu::shouldSendEntriesAndCursorPosition()
{
    CLS_TestPanel panel(nullptr, false, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    TakeRequests();
    QCursor::setPos(QPoint(40, 50));
    const QPoint pointCursor = QCursor::pos();
    panel.ShowMenu({MakeEntry("play", false, false), MakeEntry("mute", true, true)});
    const QList<STRCT_MenuRequest> qlstRequests = TakeRequests();
    QCOMPARE(Keys(qlstRequests), QStringList({"setInfo", "exec"}));
    const QList<_MenuItem> qlstEntries = qlstRequests.at(0).second.value("Info").value<QList<_MenuItem>>();
    QCOMPARE(qlstEntries.size(), 2);
    QCOMPARE(qlstEntries.at(1).m_qstrItemId, QString("mute"));
    QVERIFY(qlstEntries.at(1).m_blChecked);
    QCOMPARE(qlstRequests.at(1).second.value("Pointexec").toPoint(), pointCursor);
    delete panel.m_pMenu;
}

void tst_CLS_WgtTreeWidgetMenu::shouldReportChosenEntry()
{
    CLS_TestPanel panel(nullptr, false, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QSignalSpy spy(&panel, &CLS_WgtTreeWidget::SignTreeMenuItemClicked);
    panel.ShowMenu({MakeEntry("play", false, false), MakeEntry("mute", true, false)});
    auto pTrigger =
        reinterpret_cast<PFun_WgtMenuTest_TriggerItem>(dlsym(MenuLibrary(), "WgtMenuTest_TriggerItem"));
    QVERIFY(pTrigger != nullptr);
    QVERIFY(pTrigger("mute"));
    QTRY_COMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), QString("mute"));
    QCOMPARE(spy.at(0).at(1).toBool(), true); // a checkable entry that was unchecked, now checked
    delete panel.m_pMenu;
}

void tst_CLS_WgtTreeWidgetMenu::shouldHideMenuBeforeReportingChoice()
{
    CLS_TestPanel panel(nullptr, false, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    CLS_ViewBasic* pMenu = panel.m_pMenu;
    pMenu->show();
    QVERIFY(pMenu->isVisible());
    QList<bool> qlstVisibleAtSignal;
    connect(&panel, &CLS_WgtTreeWidget::SignTreeMenuItemClicked, this,
            [&qlstVisibleAtSignal, pMenu]() { qlstVisibleAtSignal << pMenu->isVisible(); });
    QVariantMap qmapData;
    qmapData.insert("StrMenuItemClicked", QString("play"));
    qmapData.insert("boolTreeWidget", false);
    emit pMenu->SignRequestTaskRsulted("exec", qmapData, QString());
    QCOMPARE(qlstVisibleAtSignal, QList<bool>({false}));
    delete pMenu;
}

void tst_CLS_WgtTreeWidgetMenu::shouldReportAnswerWithoutKeysAsEmptyChoice()
{
    CLS_TestPanel panel(nullptr, false, false, true, true, false, ITEM_BTN_SHOW_ALWAYS);
    QSignalSpy spy(&panel, &CLS_WgtTreeWidget::SignTreeMenuItemClicked);
    emit panel.m_pMenu->SignRequestTaskRsulted("anything", QVariantMap(), "uuid");
    QCOMPARE(spy.count(), 1);
    QVERIFY(spy.at(0).at(0).toString().isEmpty());
    QCOMPARE(spy.at(0).at(1).toBool(), false);
    delete panel.m_pMenu;
}

void tst_CLS_WgtTreeWidgetMenu::shouldReachPanelMenuFromDeviceTree()
{
    CLS_WgtDeviceTree tree(nullptr, DEV_TREE_GENERIC, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    auto* pPanel = tree.findChild<CLS_WgtTreeWidget*>();
    QVERIFY(pPanel != nullptr);
    auto pLastView =
        reinterpret_cast<PFun_WgtMenuTest_LastView>(dlsym(MenuLibrary(), "WgtMenuTest_LastView"));
    QVERIFY(pLastView != nullptr);
    CLS_ViewBasic* pMenu = pLastView(); // the view made for this tree's panel
    QVERIFY(pMenu != nullptr);
    TakeRequests();
    tree.ShowMenu({MakeEntry("locate", false, false)});
    const QList<STRCT_MenuRequest> qlstRequests = TakeRequests();
    QCOMPARE(Keys(qlstRequests), QStringList({"setInfo", "exec"}));
    QCOMPARE(qlstRequests.at(0).second.value("Info").value<QList<_MenuItem>>().at(0).m_qstrItemId,
             QString("locate"));
    delete pMenu;
}

QTEST_MAIN(tst_CLS_WgtTreeWidgetMenu)
#include "tst_CLS_WgtTreeWidgetMenu.moc"
