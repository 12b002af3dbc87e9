// The reference application library "libLxAppManager.so" as a demo uses it: one I_AppSignals hub
// from "GetAppSignals", and SignResizeView emitted on it through the control interface reaches
// whoever connected to the hub.

#include "I_AppSignals.h"
#include "LxAppManager.h"
#include "LxAppManagerControl.h"

#include <QSignalSpy>
#include <QtTest>

namespace {

I_AppSignals* AppSignals()
{
    auto pFun =
        reinterpret_cast<LxAppManager::PFun_GetAppSignals>(LxAppManager::GetModuleFun("GetAppSignals", ""));
    return nullptr == pFun ? nullptr : pFun();
}

} // namespace

class tst_RefLxAppManager : public QObject
{
    Q_OBJECT

private slots:
    void shouldHandOutOneHub();
    void shouldDeliverResizeViewEmittedThroughControl();
    void shouldDeliverResizeViewEmittedOnHub();
};

void tst_RefLxAppManager::shouldHandOutOneHub()
{
    I_AppSignals* pHub = AppSignals();
    QVERIFY(nullptr != pHub);
    QCOMPARE(AppSignals(), pHub);
}

void tst_RefLxAppManager::shouldDeliverResizeViewEmittedThroughControl()
{
    QSignalSpy spyResize(AppSignals(), &I_AppSignals::SignResizeView);
    LxAppManagerCtl_EmitResizeView(1.5, 2.0);
    LxAppManagerCtl_EmitResizeView(1.0, 1.0);

    QCOMPARE(spyResize.count(), 2);
    QCOMPARE(spyResize.takeFirst(), QVariantList({1.5, 2.0}));
    QCOMPARE(spyResize.takeFirst(), QVariantList({1.0, 1.0}));
}

void tst_RefLxAppManager::shouldDeliverResizeViewEmittedOnHub()
{
    // A demo that holds the hub may emit on it directly.
    I_AppSignals* pHub = AppSignals();
    QSignalSpy spyResize(pHub, &I_AppSignals::SignResizeView);
    emit pHub->SignResizeView(0.75, 0.5);
    QCOMPARE(spyResize.count(), 1);
    QCOMPARE(spyResize.takeFirst(), QVariantList({0.75, 0.5}));
}

QTEST_GUILESS_MAIN(tst_RefLxAppManager)
#include "tst_RefLxAppManager.moc"
