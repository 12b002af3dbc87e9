// CLS_DeviceTreeBGThread with no device layer and no application library: the loop waits for the
// device layer, retrying once a second, and never reaches its wait; the gateway logs each attempt.

#include "CLS_StatusThreadKit.h"

#include <QElapsedTimer>
#include <QtTest>

namespace {

const QString CONST_qstrLogNoFunction =
    QStringLiteral("3|DevManage|GetResourceTree|nullptr == pFun_GetResourceTree ");

} // namespace

class tst_DeviceTreeBGThread_nosiblings : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void shouldRetryEverySecondWithoutDeviceLibrary();
    void shouldAnswerMinusOneForImageChannelWithoutDeviceLibrary();
};

void tst_DeviceTreeBGThread_nosiblings::initTestCase()
{
    BindGateways();
    QVERIFY(nullptr == DevManage::GetModuleFun("GetResourceTree", ""));
}

void tst_DeviceTreeBGThread_nosiblings::init()
{
    CLS_LogRecords::Take();
}

void tst_DeviceTreeBGThread_nosiblings::shouldRetryEverySecondWithoutDeviceLibrary()
{
    CLS_LogTap clsLog;
    CLS_ThreadRig clsRig;
    QElapsedTimer clsTimer;
    clsTimer.start();

    clsRig.Run();

    QTRY_VERIFY_WITH_TIMEOUT(clsLog.Count(CONST_qstrLogNoFunction) >= 2, 10000);
    QVERIFY2(clsTimer.elapsed() >= 900, qPrintable(QString("retried after %1 ms").arg(clsTimer.elapsed())));
    clsRig.m_clsThread.Stop();
    QVERIFY(clsRig.WaitEnd(3000));
    const QStringList qlstLines = clsLog.Lines();
    QCOMPARE(QSet<QString>(qlstLines.cbegin(), qlstLines.cend()), QSet<QString>({CONST_qstrLogNoFunction}));
    QCOMPARE(clsRig.m_clsTree.Count(), 0);
}

void tst_DeviceTreeBGThread_nosiblings::shouldAnswerMinusOneForImageChannelWithoutDeviceLibrary()
{
    CLS_LogTap clsLog;
    CLS_TestBGThread clsThread;

    QCOMPARE(clsThread.IsImageChannel(QStringLiteral("ch1")), -1);

    QCOMPARE(clsLog.Lines(),
             QStringList({CONST_qstrLogNoFunction,
                          QStringLiteral("3|WgtTreeWidget|IsImageChannel|nullptr == pResourceTree ")}));
}

QTEST_GUILESS_MAIN(tst_DeviceTreeBGThread_nosiblings)
#include "tst_DeviceTreeBGThread_nosiblings.moc"
