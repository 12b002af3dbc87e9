// CLS_DeviceTreeBGThread::IsImageChannel, called directly on a thread object that never runs: the
// device answers for a channel by way of the first channel below the same parent.

#include "CLS_StatusThreadKit.h"
#include "DevManageControl.h"

#include <QtTest>

namespace {

QString LastQuery()
{
    char szBuffer[512] = {0};
    if (DevManageCtl_LastCall("QueryDeviceParam", szBuffer, sizeof(szBuffer)) < 0) {
        return QStringLiteral("<no query>");
    }
    return QString::fromUtf8(szBuffer);
}

// How the installation of LoadTwoHosts is changed before the question.
enum n_ImageCase
{
    IMAGE_CASE_AS_LOADED,
    IMAGE_CASE_DEVICE_ANSWERS_FIVE,
    IMAGE_CASE_QUERY_FAILS,
    IMAGE_CASE_STALE_ENTRIES,
    IMAGE_CASE_FIRST_CHANNEL_STALE,
    IMAGE_CASE_ONLY_CHANNEL_STALE,
    IMAGE_CASE_GETITEM_FAILS,
    IMAGE_CASE_ITEM_EXPIRED,
    IMAGE_CASE_LISTCHILDREN_FAILS,
    IMAGE_CASE_NON_ASCII_PARENT,
    IMAGE_CASE_NO_FACTORY,
    IMAGE_CASE_NO_RESOURCE_TREE,
};

} // namespace

class tst_DeviceTreeBGThread_image : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void shouldAnswerForChannelThroughFirstChannelOfParent_data();
    void shouldAnswerForChannelThroughFirstChannelOfParent();
    void shouldGiveSameAnswerToEveryChannelOfOneParent();
};

void tst_DeviceTreeBGThread_image::initTestCase()
{
    BindGateways();
}

void tst_DeviceTreeBGThread_image::init()
{
    DevManageCtl_Reset();
    CLS_LogRecords::Take();
}

void tst_DeviceTreeBGThread_image::shouldAnswerForChannelThroughFirstChannelOfParent_data()
{
    QTest::addColumn<int>("iCase");
    QTest::addColumn<QString>("qstrId");
    QTest::addColumn<int>("iExpected");
    QTest::addColumn<QString>("qstrQuery"); // arguments of the device query, or "<no query>"
    QTest::addColumn<QStringList>("qlstLog");

    const QStringList qlstNone;
    QTest::newRow("first channel answers for itself")
        << int(IMAGE_CASE_AS_LOADED) << "chA1" << 1 << "chA1|0|10072|0|" << qlstNone;
    QTest::newRow("first channel answers for a later one")
        << int(IMAGE_CASE_AS_LOADED) << "chA2" << 1 << "chA1|0|10072|0|" << qlstNone;
    QTest::newRow("a device that says no")
        << int(IMAGE_CASE_AS_LOADED) << "chB1" << 0 << "chB1|0|10072|0|" << qlstNone;
    QTest::newRow("the answer passes through")
        << int(IMAGE_CASE_DEVICE_ANSWERS_FIVE) << "chA2" << 5 << "chA1|0|10072|0|" << qlstNone;
    QTest::newRow("a failing query passes through")
        << int(IMAGE_CASE_QUERY_FAILS) << "chA1" << -3 << "chA1|0|10072|0|" << qlstNone;
    QTest::newRow("expired and empty children are skipped")
        << int(IMAGE_CASE_STALE_ENTRIES) << "chA2" << 1 << "chA1|0|10072|0|" << qlstNone;
    QTest::newRow("an expired first channel is skipped")
        << int(IMAGE_CASE_FIRST_CHANNEL_STALE) << "chA1" << 0 << "chA2|0|10072|0|" << qlstNone;
    QTest::newRow("an alarm input before the channel is skipped")
        << int(IMAGE_CASE_AS_LOADED) << "chB1" << 0 << "chB1|0|10072|0|" << qlstNone;
    QTest::newRow("no live channel below the parent")
        << int(IMAGE_CASE_ONLY_CHANNEL_STALE) << "chB1" << 0 << "<no query>" << qlstNone;
    QTest::newRow("not a channel") << int(IMAGE_CASE_AS_LOADED) << "aiA1" << -1 << "<no query>" << qlstNone;
    QTest::newRow("unknown id") << int(IMAGE_CASE_AS_LOADED) << "nowhere" << -1 << "<no query>" << qlstNone;
    QTest::newRow("lookup fails") << int(IMAGE_CASE_GETITEM_FAILS) << "chA1" << -1 << "<no query>"
                                  << qlstNone;
    QTest::newRow("lookup gives an expired pointer")
        << int(IMAGE_CASE_ITEM_EXPIRED) << "chA2" << -1 << "<no query>"
        << QStringList({"3|WgtTreeWidget|IsImageChannel|nullptr == spItem chA2"});
    QTest::newRow("children can't be listed")
        << int(IMAGE_CASE_LISTCHILDREN_FAILS) << "chA1" << 0 << "<no query>" << qlstNone;
    // Kept: the parent id is taken as ASCII, so a parent with other letters lists nothing.
    QTest::newRow("parent id beyond ASCII")
        << int(IMAGE_CASE_NON_ASCII_PARENT) << "chC1" << 0 << "<no query>" << qlstNone;
    QTest::newRow("no device factory")
        << int(IMAGE_CASE_NO_FACTORY) << "chA1" << 0 << "<no query>" << qlstNone;
    QTest::newRow("no resource tree")
        << int(IMAGE_CASE_NO_RESOURCE_TREE) << "chA1" << -1 << "<no query>"
        << QStringList({"3|WgtTreeWidget|IsImageChannel|nullptr == pResourceTree "});
}

void tst_DeviceTreeBGThread_image::shouldAnswerForChannelThroughFirstChannelOfParent()
{
    QFETCH(int, iCase);
    QFETCH(QString, qstrId);
    QFETCH(int, iExpected);
    QFETCH(QString, qstrQuery);
    QFETCH(QStringList, qlstLog);
    LoadTwoHosts();
    DevManageCtl_SetDeviceParam("chA2", 7); // never asked: chA1 answers for host A
    switch (iCase) {
    case IMAGE_CASE_DEVICE_ANSWERS_FIVE:
        DevManageCtl_SetDeviceParam("chA1", 5);
        break;
    case IMAGE_CASE_QUERY_FAILS:
        DevManageCtl_FailNext("QueryDeviceParam", 1, -3);
        break;
    case IMAGE_CASE_STALE_ENTRIES:
        DevManageCtl_SetStaleEntries(2);
        break;
    case IMAGE_CASE_FIRST_CHANNEL_STALE:
        DevManageCtl_SetStale("chA1", DEVMANAGECTL_STALE_IN_LISTS);
        DevManageCtl_SetDeviceParam("chA2", 0);
        break;
    case IMAGE_CASE_ONLY_CHANNEL_STALE:
        DevManageCtl_SetStale("chB1", DEVMANAGECTL_STALE_IN_LISTS);
        break;
    case IMAGE_CASE_GETITEM_FAILS:
        DevManageCtl_FailNext("GetItem", 1, -1);
        break;
    case IMAGE_CASE_ITEM_EXPIRED:
        DevManageCtl_SetStale("chA2", DEVMANAGECTL_STALE_IN_GETITEM);
        break;
    case IMAGE_CASE_LISTCHILDREN_FAILS:
        DevManageCtl_FailNext("ListChildren", 1, -1);
        break;
    case IMAGE_CASE_NON_ASCII_PARENT:
        DevManageCtl_AddHost("h\xc3\xb4te", "Host C", "resource_root_id", 3, 1, "");
        DevManageCtl_AddChannel("chC1", "C1", "h\xc3\xb4te", 1, 1, 1, "");
        DevManageCtl_SetDeviceParam("chC1", 1);
        break;
    case IMAGE_CASE_NO_FACTORY:
        DevManageCtl_SetObjectAvailable("GetDevFactory", 0);
        break;
    case IMAGE_CASE_NO_RESOURCE_TREE:
        DevManageCtl_SetObjectAvailable("GetResourceTree", 0);
        break;
    default:
        break;
    }
    CLS_TestBGThread clsThread;
    CLS_LogTap clsLog;

    const int iResult = clsThread.IsImageChannel(qstrId);

    QCOMPARE(iResult, iExpected);
    QCOMPARE(LastQuery(), qstrQuery);
    QCOMPARE(clsLog.Lines(), qlstLog);
    QVERIFY(clsThread.Cache().empty()); // asking fills nothing
}

void tst_DeviceTreeBGThread_image::shouldGiveSameAnswerToEveryChannelOfOneParent()
{
    LoadTwoHosts();
    DevManageCtl_AddChannel("chA3", "A3", "hostA", 4, 1, 3, "");
    DevManageCtl_SetDeviceParam("chA2", 0);
    DevManageCtl_SetDeviceParam("chA3", 0);
    CLS_TestBGThread clsThread;

    QStringList qlstAnswers;
    for (const QString& qstrId : {"chA1", "chA2", "chA3"}) {
        qlstAnswers << QString("%1=%2").arg(qstrId).arg(clsThread.IsImageChannel(qstrId));
    }

    QCOMPARE(qlstAnswers, QStringList({"chA1=1", "chA2=1", "chA3=1"}));
    QCOMPARE(DevManageCtl_CallCount("QueryDeviceParam"), 3);
}

QTEST_GUILESS_MAIN(tst_DeviceTreeBGThread_image)
#include "tst_DeviceTreeBGThread_image.moc"
