// The tree panel with an application hub and a settings store present: the resize broadcast and
// the choice of the image folder by skin.

#include "CLS_WgtTreeWidget.h"
#include "I_AppSignals.h"

#include <QApplication>
#include <QDir>
#include <QtTest>

#include <cstdlib>
#include <dlfcn.h>

class CLS_TestPanel : public CLS_WgtTreeWidget
{
public:
    using CLS_WgtTreeWidget::CLS_WgtTreeWidget;
    using CLS_WgtTreeWidget::m_qstrPicPath;
};

namespace {

I_AppSignals* TestAppSignals()
{
    void* pHandle = dlopen("libLxAppManager.so", RTLD_NOW | RTLD_NOLOAD);
    if (pHandle == nullptr)
        pHandle = dlopen("libLxAppManager.so", RTLD_NOW);
    auto pFun = reinterpret_cast<I_AppSignals* (*)()>(dlsym(pHandle, "GetAppSignals"));
    return pFun != nullptr ? pFun() : nullptr;
}

// Receivers of the hub's resize signal, as the test library counts them.
int ResizeReceivers(I_AppSignals* _pSignals)
{
    Q_UNUSED(_pSignals)
    void* pHandle = dlopen("libLxAppManager.so", RTLD_NOW | RTLD_NOLOAD);
    auto pFun = reinterpret_cast<int (*)()>(dlsym(pHandle, "TestAppManager_ResizeReceivers"));
    return pFun != nullptr ? pFun() : -1;
}

} // namespace

class tst_CLS_WgtTreeWidgetSiblings : public QObject
{
    Q_OBJECT

private slots:
    void shouldReloadStyleOnResizeBroadcast();
    void shouldDisconnectResizeOnDestruction();
    void shouldTakeImagesFromDarkForUnknownSkin();
    void shouldTakeImagesFromSkinFolderThatExists();
};

void tst_CLS_WgtTreeWidgetSiblings::shouldReloadStyleOnResizeBroadcast()
{
    I_AppSignals* pSignals = TestAppSignals();
    QVERIFY(pSignals != nullptr);
    CLS_TestPanel first(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    CLS_TestPanel second(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    const QString qstrLoaded = first.styleSheet();
    first.setStyleSheet("QWidget { color: red; }");
    second.setStyleSheet("QWidget { color: blue; }");
    const QRect rectFirst = first.geometry();

    emit pSignals->SignResizeView(2.0, 2.0);

    // Each panel loaded its style again (the loaded text replaces the marker) and kept its geometry.
    QCOMPARE(first.styleSheet(), qstrLoaded);
    QCOMPARE(second.styleSheet(), qstrLoaded);
    QCOMPARE(first.geometry(), rectFirst);
}

void tst_CLS_WgtTreeWidgetSiblings::shouldDisconnectResizeOnDestruction()
{
    I_AppSignals* pSignals = TestAppSignals();
    QVERIFY(pSignals != nullptr);
    const int iBefore = ResizeReceivers(pSignals);
    {
        CLS_TestPanel panel;
        QCOMPARE(ResizeReceivers(pSignals), iBefore + 1);
    }
    QCOMPARE(ResizeReceivers(pSignals), iBefore);
    emit pSignals->SignResizeView(1.0, 1.0); // nobody left to reach
}

void tst_CLS_WgtTreeWidgetSiblings::shouldTakeImagesFromDarkForUnknownSkin()
{
    qputenv("WGT_TEST_SKIN", "no_such_skin");
    CLS_TestPanel panel;
    QCOMPARE(panel.m_qstrPicPath,
             QCoreApplication::applicationDirPath() + "/resource/skin/dark/WgtTreeWidget/images/");
}

void tst_CLS_WgtTreeWidgetSiblings::shouldTakeImagesFromSkinFolderThatExists()
{
    const QString qstrDir = QCoreApplication::applicationDirPath() + "/resource/skin/panel_test_skin";
    QVERIFY(QDir().mkpath(qstrDir + "/WgtTreeWidget/images"));
    qputenv("WGT_TEST_SKIN", "panel_test_skin");
    {
        CLS_TestPanel panel;
        QCOMPARE(panel.m_qstrPicPath, qstrDir + "/WgtTreeWidget/images/");
    }
    QDir(qstrDir).removeRecursively();
    qputenv("WGT_TEST_SKIN", "no_such_skin");
}

QTEST_MAIN(tst_CLS_WgtTreeWidgetSiblings)
#include "tst_CLS_WgtTreeWidgetSiblings.moc"
