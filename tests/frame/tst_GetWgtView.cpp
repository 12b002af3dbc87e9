// GetWgtView: a view made by a widget library found by module name beside this library, the log
// line before the lookup, and null for a missing library or a factory that throws. The test menu
// library then shows the menu contract: "setInfo" and "exec" in, a chosen entry out.

#include "CLS_FrameKit.h"
#include "CLS_ViewBasic.h"
#include "TreeStructDefine.h"
#include "Util.h"
#include "WgtMenuTestApi.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QtTest>

#include <dlfcn.h>

#include <memory>

namespace {

void* MenuFunction(const char* _pName)
{
    const std::string strPath = Util::GetModulePath() + "/libWgtMenu.so";
    void* pHandle = dlopen(strPath.c_str(), RTLD_NOW | RTLD_NOLOAD);
    return nullptr == pHandle ? nullptr : dlsym(pHandle, _pName);
}

QList<STRCT_MenuRequest> TakeMenuRequests()
{
    QList<STRCT_MenuRequest> qlstRequests;
    if (auto pFun =
            reinterpret_cast<PFun_WgtMenuTest_TakeRequests>(MenuFunction("WgtMenuTest_TakeRequests"))) {
        pFun(&qlstRequests);
    }
    return qlstRequests;
}

QString MenuText()
{
    auto pFun = reinterpret_cast<PFun_WgtMenuTest_MenuText>(MenuFunction("WgtMenuTest_MenuText"));
    return nullptr == pFun ? QString("(no library)") : pFun();
}

bool TriggerItem(const QString& _qstrItemId)
{
    auto pFun = reinterpret_cast<PFun_WgtMenuTest_TriggerItem>(MenuFunction("WgtMenuTest_TriggerItem"));
    return nullptr != pFun && pFun(_qstrItemId);
}

_MenuItem Item(const QString& _qstrId, const QString& _qstrText)
{
    _MenuItem stItem;
    stItem.m_qstrItemId = _qstrId;
    stItem.m_qstrItemText = _qstrText;
    return stItem;
}

QVariantMap MenuParam()
{
    return QVariantMap{{"MenuType", "CLS_Menu"}};
}

} // namespace

class tst_GetWgtView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void shouldMakeViewOfMenuLibrary();
    void shouldGiveNullForMissingLibrary();
    void shouldGiveNullWhenFactoryThrows_data();
    void shouldGiveNullWhenFactoryThrows();
    void shouldCarryMenuEntriesUnderRegisteredName();
    void shouldBuildMenuAndShowItAtPoint();
    void shouldSendChosenEntryOnce();
};

void tst_GetWgtView::initTestCase()
{
    CLS_FrameKit::PrimeGateways();
}

void tst_GetWgtView::init()
{
    CLS_LogRecords::Take();
    TakeMenuRequests();
}

void tst_GetWgtView::cleanup()
{
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_GetWgtView::shouldMakeViewOfMenuLibrary()
{
    std::unique_ptr<CLS_ViewBasic> upView(GetWgtView("WgtMenu", MenuParam()));

    QVERIFY(upView);
    QCOMPARE(QString(upView->metaObject()->className()), QString("CLS_TestMenuView"));
    QCOMPARE(CLS_FrameKit::TakeLogLines(),
             QStringList{"1|default|GetWgtView|run function _strModuleName:[WgtMenu] param:[{\n"
                         "    \"MenuType\": \"CLS_Menu\"\n}\n]"});
    const QList<STRCT_MenuRequest> qlstRequests = TakeMenuRequests();
    QCOMPARE(qlstRequests.size(), 1);
    QCOMPARE(qlstRequests[0].first, QString("CreateWgt"));
    QCOMPARE(qlstRequests[0].second, MenuParam());
}

void tst_GetWgtView::shouldGiveNullForMissingLibrary()
{
    CLS_ViewBasic* pView = GetWgtView("WgtNoSuchMenu", QVariantMap{{"a", 1}});

    QVERIFY(nullptr == pView);
    QCOMPARE(
        CLS_FrameKit::TakeLogLines(),
        QStringList{
            "1|default|GetWgtView|run function _strModuleName:[WgtNoSuchMenu] param:[{\n    \"a\": 1\n}\n]"});
}

void tst_GetWgtView::shouldGiveNullWhenFactoryThrows_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("line");
    const QString qstrJson = "{\n    \"Throw\": \"%1\"\n}\n";
    QTest::newRow("std::exception")
        << "std"
        << "3|default|GetWgtView|Request Failmenu refused_strModuleName:[WgtMenu] param:[" +
               qstrJson.arg("std") + "]";
    QTest::newRow("other") << "other"
                           << "3|default|GetWgtView|Request Fail _strModuleName:[WgtMenu] param:[" +
                                  qstrJson.arg("other") + "]";
}

void tst_GetWgtView::shouldGiveNullWhenFactoryThrows()
{
    QFETCH(QString, kind);
    QFETCH(QString, line);

    CLS_ViewBasic* pView = GetWgtView("WgtMenu", QVariantMap{{"Throw", kind}});

    QVERIFY(nullptr == pView);
    const QStringList qlstLines = CLS_FrameKit::TakeLogLines();
    QCOMPARE(qlstLines.size(), 2);
    QVERIFY(qlstLines[0].startsWith("1|default|GetWgtView|run function _strModuleName:[WgtMenu]"));
    QCOMPARE(qlstLines[1], line);
}

void tst_GetWgtView::shouldCarryMenuEntriesUnderRegisteredName()
{
    const QVariant varInfo = QVariant::fromValue(QList<_MenuItem>{Item("a", "Alpha")});

    QCOMPARE(QString(varInfo.typeName()), QString("QList<STRUCT_MenuItem>"));
}

void tst_GetWgtView::shouldBuildMenuAndShowItAtPoint()
{
    std::unique_ptr<CLS_ViewBasic> upView(GetWgtView("WgtMenu", MenuParam()));
    QVERIFY(upView);
    _MenuItem stDisabled = Item("b", "Beta");
    stDisabled.m_blEnable = false;
    stDisabled.m_blCheckable = true;
    _MenuItem stChecked = Item("c", "Gamma");
    stChecked.m_blCheckable = true;
    stChecked.m_blChecked = true;
    _MenuItem stGroup = Item("g", "Group");
    stGroup.m_qlstChildren << stChecked;
    const QList<_MenuItem> qlstItems{Item("a", "Alpha"), stDisabled, stGroup};
    QVariantMap qmapResult;

    QVERIFY(
        upView->TaskRequest("setInfo", QVariantMap{{"Info", QVariant::fromValue(qlstItems)}}, qmapResult));
    QCOMPARE(MenuText(), QString("a:Alpha,b:Beta![ ],g:Group(c:Gamma[x])"));
    // "setInfo" replaces the entries.
    QVERIFY(upView->TaskRequest("setInfo", QVariantMap{{"Info", QVariant::fromValue(qlstItems.mid(0, 1))}},
                                qmapResult));
    QCOMPARE(MenuText(), QString("a:Alpha"));

    QVERIFY(upView->TaskRequest("exec", QVariantMap{{"Pointexec", QPoint(40, 50)}}, qmapResult));
    QMenu* pMenu = upView->findChild<QMenu*>();
    QVERIFY(pMenu);
    QTRY_VERIFY(pMenu->isVisible());
    QCOMPARE(pMenu->pos(), QPoint(40, 50));
    QCOMPARE(qmapResult, QVariantMap());

    QStringList qlstKeys;
    for (const STRCT_MenuRequest& stRequest : TakeMenuRequests()) {
        qlstKeys << stRequest.first;
    }
    QCOMPARE(qlstKeys, (QStringList{"CreateWgt", "setInfo", "setInfo", "exec"}));
    pMenu->hide();
}

void tst_GetWgtView::shouldSendChosenEntryOnce()
{
    std::unique_ptr<CLS_ViewBasic> upView(GetWgtView("WgtMenu", MenuParam()));
    QVERIFY(upView);
    _MenuItem stChecked = Item("c", "Gamma");
    stChecked.m_blCheckable = true;
    _MenuItem stGroup = Item("g", "Group");
    stGroup.m_qlstChildren << stChecked;
    QVariantMap qmapResult;
    upView->TaskRequest(
        "setInfo", QVariantMap{{"Info", QVariant::fromValue(QList<_MenuItem>{Item("a", "Alpha"), stGroup})}},
        qmapResult);
    upView->TaskRequest("exec", QVariantMap{{"Pointexec", QPoint(10, 10)}}, qmapResult);
    QSignalSpy spyChoice(upView.get(), &CLS_ViewBasic::SignRequestTaskRsulted);
    QCOMPARE(spyChoice.count(), 0);

    QVERIFY(TriggerItem("c"));

    QCOMPARE(spyChoice.count(), 1);
    const QVariantMap qmapData = spyChoice.takeFirst().at(1).toMap();
    QCOMPARE(qmapData.value("StrMenuItemClicked").toString(), QString("c"));
    QCOMPARE(qmapData.value("boolTreeWidget").toBool(), true);
    QVERIFY(!upView->findChild<QMenu*>()->isVisible());
    QVERIFY(!TriggerItem("nothing"));
    QCOMPARE(spyChoice.count(), 0);
}

QTEST_MAIN(tst_GetWgtView)
#include "tst_GetWgtView.moc"
