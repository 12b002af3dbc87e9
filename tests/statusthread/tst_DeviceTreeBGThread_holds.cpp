// CLS_DeviceTreeBGThread holds a channel of the device layer only while it reads that channel: when
// it folds a pass into its cache, asking the device about each new channel, it holds none of them.
// A device layer that counts the channels locked by others stands in; no application library is on
// the search path, so the thread ends after its first pass.

#include "CLS_StatusThreadKit.h"

#include <QtTest>

extern "C" void HoldCtl_Load(int _iChannels);
extern "C" int HoldCtl_Queries();
extern "C" int HoldCtl_MaxHeldAtQuery();

class tst_DeviceTreeBGThread_holds : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { BindGateways(); }

    void shouldHoldNoChannelWhileAskingTheDeviceDuringTheFold()
    {
        HoldCtl_Load(12);
        CLS_ThreadRig clsRig;
        clsRig.Run();
        QTRY_COMPARE_WITH_TIMEOUT(clsRig.m_clsTree.Count(), 1, 10000);
        QVERIFY(clsRig.WaitEnd(5000));

        // Every channel is new to the cache, so the device is asked once for each.
        QCOMPARE(HoldCtl_Queries(), 12);
        QCOMPARE(HoldCtl_MaxHeldAtQuery(), 0);
        QCOMPARE(clsRig.m_clsTree.Texts(),
                 QStringList({"ch01=1/1 ch02=1/0 ch03=1/1 ch04=1/0 ch05=1/1 ch06=1/0 ch07=1/1 ch08=1/0 "
                              "ch09=1/1 ch10=1/0 ch11=1/1 ch12=1/0"}));
    }
};

QTEST_MAIN(tst_DeviceTreeBGThread_holds)
#include "tst_DeviceTreeBGThread_holds.moc"
