// The reference menu view as "CreateWgt" hands it out: which types it makes, the menu that "setInfo"
// builds, the popup of "exec", and the one answer a choice gives.

#include "CLS_RefMenuKit.h"
#include "CLS_ViewBasic.h"
#include "TreeStructDefine.h"
#include "Util.h"

#include <QApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPixmap>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <dlfcn.h>

#include <memory>

using namespace RefMenuKit;

namespace {

void* MenuLibrary()
{
    static void* s_pHandle = nullptr;
    if (nullptr == s_pHandle) {
        const std::string strPath = Util::GetModulePath() + "/libWgtMenu.so";
        s_pHandle = dlopen(strPath.c_str(), RTLD_NOW);
    }
    return s_pHandle;
}

PFun_CreateWgt CreateWgtFunction()
{
    return reinterpret_cast<PFun_CreateWgt>(dlsym(MenuLibrary(), "CreateWgt"));
}

std::unique_ptr<CLS_ViewBasic> MakeMenuView()
{
    QMap<QString, QVariant> qmapParam;
    qmapParam.insert("MenuType", QString("CLS_Menu"));
    PFun_CreateWgt pFun = CreateWgtFunction();
    return std::unique_ptr<CLS_ViewBasic>(nullptr == pFun ? nullptr : pFun(qmapParam));
}

// play, mute (checkable, off), solo (checkable, on), off (disabled), and a title "more" holding
// "a" and a title "deep" holding "d".
QList<_MenuItem> SampleEntries()
{
    return {MakeEntry("play", "Play"), MakeEntry("mute", "Mute", true, true, false),
            MakeEntry("solo", "Solo", true, true, true), MakeEntry("off", "Off", false),
            MakeEntry(
                "more", "More", true, false, false,
                {MakeEntry("a", "A"), MakeEntry("deep", "Deep", true, false, false, {MakeEntry("d", "D")})})};
}

QString Describe(const QSignalSpy& _spy)
{
    QStringList qlstLines;
    for (const QList<QVariant>& qlstArgs : _spy)
        qlstLines << qlstArgs.at(0).toString() + " " +
                         QString::fromUtf8(QJsonDocument(QJsonObject::fromVariantMap(qlstArgs.at(1).toMap()))
                                               .toJson(QJsonDocument::Compact));
    return qlstLines.join(" | ");
}

} // namespace

class tst_RefMenuView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void shouldMakeViewOnlyForMenuTypeClsMenu_data();
    void shouldMakeViewOnlyForMenuTypeClsMenu();
    void shouldMakeHiddenViewWithoutParent();
    void shouldBuildNestedMenuFromInfo();
    void shouldSetIconOnlyWhereEntryNamesOne();
    void shouldKeepEntriesWhenInfoIsMissingOrOfOtherType_data();
    void shouldKeepEntriesWhenInfoIsMissingOrOfOtherType();
    void shouldReplaceEntriesOnSecondSetInfo();
    void shouldShowMenuAtPointAndReturnAtOnce();
    void shouldRefuseExecWithoutPoint();
    void shouldNotShowEmptyMenu();
    void shouldRefuseUnknownTaskAndLeaveResultAlone();
    void shouldEmitChosenEntryOnce_data();
    void shouldEmitChosenEntryOnce();
    void shouldEmitEntryChosenByMouseClick();
    void shouldReportNewCheckedStateOfToggledEntry();
    void shouldEmitNothingWhenMenuIsClosed_data();
    void shouldEmitNothingWhenMenuIsClosed();
    void shouldNotChooseDisabledEntry();
    void shouldNotChooseEntryUnderDisabledTitle();
    void shouldNotChooseSubmenuTitle();
    void shouldNotAnswerForReplacedEntries();
};

void tst_RefMenuView::initTestCase()
{
    QVERIFY2(nullptr != MenuLibrary(), dlerror());
    QVERIFY(nullptr != CreateWgtFunction());
    // The reference menu, not the test menu of the frame tests.
    QVERIFY(nullptr == dlsym(MenuLibrary(), "WgtMenuTest_TakeRequests"));
}

void tst_RefMenuView::cleanup()
{
    CloseAllPopups();
    QCOMPARE(QApplication::activePopupWidget(), static_cast<QWidget*>(nullptr));
}

void tst_RefMenuView::shouldMakeViewOnlyForMenuTypeClsMenu_data()
{
    QTest::addColumn<bool>("hasType");
    QTest::addColumn<QVariant>("type");
    QTest::addColumn<bool>("expectView");
    QTest::newRow("CLS_Menu") << true << QVariant(QString("CLS_Menu")) << true;
    QTest::newRow("other type") << true << QVariant(QString("CLS_Panel")) << false;
    QTest::newRow("other case") << true << QVariant(QString("cls_menu")) << false;
    QTest::newRow("empty type") << true << QVariant(QString()) << false;
    QTest::newRow("no type") << false << QVariant() << false;
}

void tst_RefMenuView::shouldMakeViewOnlyForMenuTypeClsMenu()
{
    QFETCH(bool, hasType);
    QFETCH(QVariant, type);
    QFETCH(bool, expectView);
    QMap<QString, QVariant> qmapParam;
    if (hasType)
        qmapParam.insert("MenuType", type);
    std::unique_ptr<CLS_ViewBasic> pView(CreateWgtFunction()(qmapParam));
    QCOMPARE(pView != nullptr, expectView);
    if (expectView) {
        QCOMPARE(pView->metaObject()->className(), "CLS_MenuView");
        QVERIFY(RootMenu(pView.get()) != nullptr);
    }
}

void tst_RefMenuView::shouldMakeHiddenViewWithoutParent()
{
    std::unique_ptr<CLS_ViewBasic> pView = MakeMenuView();
    QVERIFY(pView);
    QVERIFY(pView->parent() == nullptr);
    QVERIFY(!pView->isVisible());
    QVERIFY(!RootMenu(pView.get())->isVisible());
    QCOMPARE(MenuText(RootMenu(pView.get())), QString());
}

void tst_RefMenuView::shouldBuildNestedMenuFromInfo()
{
    std::unique_ptr<CLS_ViewBasic> pView = MakeMenuView();
    QVERIFY(SendInfo(pView.get(), SampleEntries()));
    QMenu* pMenu = RootMenu(pView.get());
    QCOMPARE(MenuText(pMenu),
             QString("play:Play,mute:Mute[ ],solo:Solo[x],off:Off!,more:More(a:A,deep:Deep(d:D))"));
    // Titles are real sub-menus, in order, and are not checkable themselves.
    QAction* pMore = FindAction(pMenu, "more");
    QVERIFY(pMore != nullptr && pMore->menu() != nullptr);
    QCOMPARE(pMore->menu()->title(), QString("More"));
    QVERIFY(!pMore->isCheckable());
    QAction* pDeep = FindAction(pMenu, "deep");
    QVERIFY(pDeep != nullptr && pDeep->menu() != nullptr);
    QCOMPARE(pDeep->menu()->parent(), static_cast<QObject*>(pMore->menu()));
    QVERIFY(FindAction(pMenu, "d")->menu() == nullptr);
    QVERIFY(!pMenu->isVisible()); // "setInfo" builds, it does not show
}

void tst_RefMenuView::shouldSetIconOnlyWhereEntryNamesOne()
{
    QTemporaryDir tmpDir;
    QVERIFY(tmpDir.isValid());
    const QString qstrIcon = tmpDir.filePath("entry.png");
    QPixmap pixmap(8, 8);
    pixmap.fill(Qt::red);
    QVERIFY(pixmap.save(qstrIcon));

    _MenuItem stWithIcon = MakeEntry("icon", "With icon");
    stWithIcon.m_qstrItemIcon = qstrIcon;
    _MenuItem stTitle = MakeEntry("title", "Title", true, false, false, {MakeEntry("x", "X")});
    stTitle.m_qstrItemIcon = qstrIcon;
    std::unique_ptr<CLS_ViewBasic> pView = MakeMenuView();
    QVERIFY(SendInfo(pView.get(), {stWithIcon, MakeEntry("plain", "Plain"), stTitle}));
    QMenu* pMenu = RootMenu(pView.get());
    QVERIFY(!FindAction(pMenu, "icon")->icon().isNull());
    QVERIFY(FindAction(pMenu, "plain")->icon().isNull());
    QVERIFY(!FindAction(pMenu, "title")->icon().isNull());
}

void tst_RefMenuView::shouldKeepEntriesWhenInfoIsMissingOrOfOtherType_data()
{
    QTest::addColumn<QVariantMap>("param");
    QTest::newRow("no Info") << QVariantMap();
    QTest::newRow("Info as text") << QVariantMap({{"Info", QString("play")}});
    QTest::newRow("Info as one entry") << QVariantMap({{"Info", QVariant::fromValue(MakeEntry("x", "X"))}});
    QTest::newRow("Info as variant list") << QVariantMap({{"Info", QVariantList()}});
}

void tst_RefMenuView::shouldKeepEntriesWhenInfoIsMissingOrOfOtherType()
{
    QFETCH(QVariantMap, param);
    std::unique_ptr<CLS_ViewBasic> pView = MakeMenuView();
    QVERIFY(SendInfo(pView.get(), {MakeEntry("play", "Play")}));
    QVariantMap qmapResult;
    QVERIFY(!pView->TaskRequest("setInfo", param, qmapResult));
    QVERIFY(qmapResult.isEmpty());
    QCOMPARE(MenuText(RootMenu(pView.get())), QString("play:Play"));
}

void tst_RefMenuView::shouldReplaceEntriesOnSecondSetInfo()
{
    std::unique_ptr<CLS_ViewBasic> pView = MakeMenuView();
    QVERIFY(SendInfo(pView.get(), SampleEntries()));
    QMenu* pMenu = RootMenu(pView.get());
    QPointer<QAction> pOldEntry = FindAction(pMenu, "play");
    QPointer<QMenu> pOldTitle = FindAction(pMenu, "more")->menu();

    QVERIFY(SendInfo(pView.get(), {MakeEntry("stop", "Stop", true, true, true)}));
    QCOMPARE(MenuText(pMenu), QString("stop:Stop[x]"));
    QCOMPARE(RootMenu(pView.get()), pMenu); // same menu, new entries
    // The old entries go, sub-menus included; nothing piles up across menus.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(pOldEntry.isNull());
    QVERIFY(pOldTitle.isNull());
    QCOMPARE(pMenu->findChildren<QMenu*>().size(), 0);

    QVERIFY(SendInfo(pView.get(), {}));
    QCOMPARE(MenuText(pMenu), QString());
}

void tst_RefMenuView::shouldShowMenuAtPointAndReturnAtOnce()
{
    std::unique_ptr<CLS_ViewBasic> pView = MakeMenuView();
    QSignalSpy spy(pView.get(), &CLS_ViewBasic::SignRequestTaskRsulted);
    QVERIFY(SendInfo(pView.get(), SampleEntries()));
    QMenu* pMenu = RootMenu(pView.get());
    // A menu that blocked would be closed by this timer before "exec" returned, and then seen hidden.
    QTimer::singleShot(3000, pMenu, &QMenu::close);

    QVERIFY(SendExec(pView.get(), QPoint(40, 50)));
    QVERIFY(pMenu->isVisible());
    QCOMPARE(pMenu->pos(), QPoint(40, 50));
    QCOMPARE(QApplication::activePopupWidget(), static_cast<QWidget*>(pMenu));
    QVERIFY(!pView->isVisible()); // the view itself stays hidden
    QCOMPARE(spy.count(), 0);     // showing is no answer
}

void tst_RefMenuView::shouldRefuseExecWithoutPoint()
{
    std::unique_ptr<CLS_ViewBasic> pView = MakeMenuView();
    QVERIFY(SendInfo(pView.get(), SampleEntries()));
    QVariantMap qmapResult;
    QVERIFY(!pView->TaskRequest("exec", QVariantMap(), qmapResult));
    QVERIFY(!pView->TaskRequest("exec", QVariantMap({{"Pointexec", QString("here")}}), qmapResult));
    QVERIFY(!RootMenu(pView.get())->isVisible());
}

void tst_RefMenuView::shouldNotShowEmptyMenu()
{
    std::unique_ptr<CLS_ViewBasic> pView = MakeMenuView();
    QVERIFY(SendInfo(pView.get(), {}));
    QVERIFY(SendExec(pView.get(), QPoint(40, 50)));
    QVERIFY(!RootMenu(pView.get())->isVisible());
    QCOMPARE(QApplication::activePopupWidget(), static_cast<QWidget*>(nullptr));
}

void tst_RefMenuView::shouldRefuseUnknownTaskAndLeaveResultAlone()
{
    std::unique_ptr<CLS_ViewBasic> pView = MakeMenuView();
    QSignalSpy spy(pView.get(), &CLS_ViewBasic::SignRequestTaskRsulted);
    QVariantMap qmapResult({{"kept", 1}});
    QVERIFY(!pView->TaskRequest("show", QVariantMap({{"Pointexec", QPoint(1, 1)}}), qmapResult));
    QCOMPARE(qmapResult, QVariantMap({{"kept", 1}}));
    // The two known tasks answer by their outcome only.
    QVariantMap qmapInfo({{"Info", QVariant::fromValue(SampleEntries())}});
    QVERIFY(pView->TaskRequest("setInfo", qmapInfo, qmapResult));
    QVERIFY(pView->TaskRequest("exec", QVariantMap({{"Pointexec", QPoint(10, 10)}}), qmapResult));
    QCOMPARE(qmapResult, QVariantMap({{"kept", 1}}));
    QCOMPARE(spy.count(), 0);
}

void tst_RefMenuView::shouldEmitChosenEntryOnce_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<bool>("checked");
    QTest::newRow("plain entry") << "play" << false;
    QTest::newRow("checkable entry, off") << "mute" << true;
    QTest::newRow("checkable entry, on") << "solo" << false;
    QTest::newRow("entry of a title") << "a" << false;
    QTest::newRow("entry two titles down") << "d" << false;
}

void tst_RefMenuView::shouldEmitChosenEntryOnce()
{
    QFETCH(QString, id);
    QFETCH(bool, checked);
    std::unique_ptr<CLS_ViewBasic> pView = MakeMenuView();
    QSignalSpy spy(pView.get(), &CLS_ViewBasic::SignRequestTaskRsulted);
    QVERIFY(SendInfo(pView.get(), SampleEntries()));
    QVERIFY(SendExec(pView.get(), QPoint(40, 50)));
    QMenu* pMenu = RootMenu(pView.get());

    QAction* pAction = FindAction(pMenu, id);
    QVERIFY(pAction != nullptr);
    pAction->trigger();

    QCOMPARE(spy.count(), 1);
    const QVariantMap qmapData = spy.at(0).at(1).toMap();
    QCOMPARE(qmapData.keys(), QStringList({"StrMenuItemClicked", "boolTreeWidget"}));
    QCOMPARE(qmapData.value("StrMenuItemClicked").userType(), int(QMetaType::QString));
    QCOMPARE(qmapData.value("StrMenuItemClicked").toString(), id);
    QCOMPARE(qmapData.value("boolTreeWidget").userType(), int(QMetaType::Bool));
    QCOMPARE(qmapData.value("boolTreeWidget").toBool(), checked);
    // The menu and every sub-menu close on a choice.
    QVERIFY(!pMenu->isVisible());
    for (QMenu* pSubMenu : pMenu->findChildren<QMenu*>())
        QVERIFY(!pSubMenu->isVisible());
    QCoreApplication::processEvents();
    QCOMPARE(spy.count(), 1);
}

void tst_RefMenuView::shouldEmitEntryChosenByMouseClick()
{
    std::unique_ptr<CLS_ViewBasic> pView = MakeMenuView();
    QSignalSpy spy(pView.get(), &CLS_ViewBasic::SignRequestTaskRsulted);
    QVERIFY(SendInfo(pView.get(), SampleEntries()));
    QVERIFY(SendExec(pView.get(), QPoint(40, 50)));
    QMenu* pMenu = RootMenu(pView.get());
    QVERIFY(QTest::qWaitForWindowExposed(pMenu));

    QTest::mouseClick(pMenu, Qt::LeftButton, Qt::NoModifier,
                      pMenu->actionGeometry(FindAction(pMenu, "mute")).center());
    QTRY_COMPARE_WITH_TIMEOUT(spy.count(), 1, 2000);
    QVERIFY2(spy.count() == 1, qPrintable(Describe(spy)));
    const QVariantMap qmapData = spy.at(0).at(1).toMap();
    QCOMPARE(qmapData.value("StrMenuItemClicked").toString(), QString("mute"));
    QCOMPARE(qmapData.value("boolTreeWidget").toBool(), true);
    QVERIFY(!pMenu->isVisible());
}

void tst_RefMenuView::shouldReportNewCheckedStateOfToggledEntry()
{
    std::unique_ptr<CLS_ViewBasic> pView = MakeMenuView();
    QSignalSpy spy(pView.get(), &CLS_ViewBasic::SignRequestTaskRsulted);
    QVERIFY(SendInfo(pView.get(), SampleEntries()));
    QMenu* pMenu = RootMenu(pView.get());
    QAction* pMute = FindAction(pMenu, "mute");

    QVERIFY(SendExec(pView.get(), QPoint(40, 50)));
    pMute->trigger();
    QVERIFY(SendExec(pView.get(), QPoint(40, 50)));
    pMute->trigger();

    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(0).at(1).toMap().value("boolTreeWidget").toBool(), true);
    QCOMPARE(spy.at(1).at(1).toMap().value("boolTreeWidget").toBool(), false);
    QVERIFY(!pMute->isChecked()); // the menu keeps the state until the next "setInfo"
}

void tst_RefMenuView::shouldEmitNothingWhenMenuIsClosed_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("escape") << "escape";
    QTest::newRow("close") << "close";
    QTest::newRow("hide") << "hide";
    QTest::newRow("click outside") << "outside";
}

void tst_RefMenuView::shouldEmitNothingWhenMenuIsClosed()
{
    QFETCH(QString, how);
    std::unique_ptr<CLS_ViewBasic> pView = MakeMenuView();
    QSignalSpy spy(pView.get(), &CLS_ViewBasic::SignRequestTaskRsulted);
    QVERIFY(SendInfo(pView.get(), SampleEntries()));
    QVERIFY(SendExec(pView.get(), QPoint(40, 50)));
    QMenu* pMenu = RootMenu(pView.get());
    QVERIFY(QTest::qWaitForWindowExposed(pMenu));

    if ("escape" == how)
        QTest::keyClick(pMenu, Qt::Key_Escape);
    else if ("close" == how)
        pMenu->close();
    else if ("hide" == how)
        pMenu->hide();
    else
        QTest::mouseClick(pMenu, Qt::LeftButton, Qt::NoModifier,
                          QPoint(pMenu->width() + 50, pMenu->height() + 50));

    QTRY_VERIFY(!pMenu->isVisible());
    QCoreApplication::processEvents();
    QVERIFY2(spy.isEmpty(), qPrintable(Describe(spy)));
}

void tst_RefMenuView::shouldNotChooseDisabledEntry()
{
    _MenuItem stDisabledCheckable = MakeEntry("lock", "Lock", false, true, false);
    std::unique_ptr<CLS_ViewBasic> pView = MakeMenuView();
    QSignalSpy spy(pView.get(), &CLS_ViewBasic::SignRequestTaskRsulted);
    QVERIFY(SendInfo(pView.get(),
                     {MakeEntry("play", "Play"), MakeEntry("off", "Off", false), stDisabledCheckable}));
    QVERIFY(SendExec(pView.get(), QPoint(40, 50)));
    QMenu* pMenu = RootMenu(pView.get());
    QVERIFY(QTest::qWaitForWindowExposed(pMenu));

    // By a click: nothing, and the menu stays open.
    QTest::mouseClick(pMenu, Qt::LeftButton, Qt::NoModifier,
                      pMenu->actionGeometry(FindAction(pMenu, "off")).center());
    QCoreApplication::processEvents();
    QVERIFY(pMenu->isVisible());
    // From code: nothing either, and the check mark does not move.
    FindAction(pMenu, "off")->trigger();
    FindAction(pMenu, "lock")->trigger();
    QVERIFY(!FindAction(pMenu, "lock")->isChecked());
    QCoreApplication::processEvents();
    QVERIFY2(spy.isEmpty(), qPrintable(Describe(spy)));
}

void tst_RefMenuView::shouldNotChooseEntryUnderDisabledTitle()
{
    std::unique_ptr<CLS_ViewBasic> pView = MakeMenuView();
    QSignalSpy spy(pView.get(), &CLS_ViewBasic::SignRequestTaskRsulted);
    QVERIFY(SendInfo(pView.get(),
                     {MakeEntry("more", "More", false, false, false,
                                {MakeEntry("deep", "Deep", true, false, false, {MakeEntry("d", "D")})})}));
    QVERIFY(SendExec(pView.get(), QPoint(40, 50)));
    QMenu* pMenu = RootMenu(pView.get());
    QCOMPARE(MenuText(pMenu), QString("more:More!(deep:Deep(d:D))"));
    FindAction(pMenu, "d")->trigger();
    QCoreApplication::processEvents();
    QVERIFY2(spy.isEmpty(), qPrintable(Describe(spy)));
}

void tst_RefMenuView::shouldNotChooseSubmenuTitle()
{
    std::unique_ptr<CLS_ViewBasic> pView = MakeMenuView();
    QSignalSpy spy(pView.get(), &CLS_ViewBasic::SignRequestTaskRsulted);
    QVERIFY(SendInfo(pView.get(), SampleEntries()));
    QVERIFY(SendExec(pView.get(), QPoint(40, 50)));
    QMenu* pMenu = RootMenu(pView.get());
    QVERIFY(QTest::qWaitForWindowExposed(pMenu));
    QAction* pMore = FindAction(pMenu, "more");

    QTest::mouseClick(pMenu, Qt::LeftButton, Qt::NoModifier, pMenu->actionGeometry(pMore).center());
    pMore->trigger();
    QCoreApplication::processEvents();
    QVERIFY2(spy.isEmpty(), qPrintable(Describe(spy)));
    QVERIFY(pMenu->isVisible()); // a title opens its entries; the menu stays
}

void tst_RefMenuView::shouldNotAnswerForReplacedEntries()
{
    std::unique_ptr<CLS_ViewBasic> pView = MakeMenuView();
    QSignalSpy spy(pView.get(), &CLS_ViewBasic::SignRequestTaskRsulted);
    QVERIFY(SendInfo(pView.get(), SampleEntries()));
    QPointer<QAction> pOld = FindAction(RootMenu(pView.get()), "play");
    QPointer<QAction> pOldNested = FindAction(RootMenu(pView.get()), "d");
    QVERIFY(SendInfo(pView.get(), {MakeEntry("stop", "Stop")}));
    // Not yet deleted (that waits for the event loop), but no longer an entry of this menu.
    QVERIFY(!pOld.isNull());
    QVERIFY(!pOldNested.isNull());
    pOld->trigger();
    pOldNested->trigger();
    QVERIFY2(spy.isEmpty(), qPrintable(Describe(spy)));
}

QTEST_MAIN(tst_RefMenuView)
#include "tst_RefMenuView.moc"
