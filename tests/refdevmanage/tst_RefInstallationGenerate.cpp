// The generated installation of the reference device layer: its counts by size, its layout, its
// mixed statuses and custom trees, the same result for the same arguments, and refused sizes.

#include "CLS_RefDevManageKit.h"

#include <QtTest>

#include <algorithm>

using namespace CLS_RefDevKit;

class tst_RefInstallationGenerate : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void shouldMakeExpectedCounts_data();
    void shouldMakeExpectedCounts();
    void shouldGiveLastHostTheRemainingChannels();
    void shouldPutEachChannelsAddressInItsExtend();
    void shouldSpreadHostsOverGroups();
    void shouldMixStatuses();
    void shouldBuildCustomTreesOverExistingChannels();
    void shouldBeTheSameForTheSameArguments();
    void shouldRefuseBadSizesAndKeepInstallation_data();
    void shouldRefuseBadSizesAndKeepInstallation();
};

void tst_RefInstallationGenerate::initTestCase()
{
    BindGateway();
}

void tst_RefInstallationGenerate::init()
{
    DevManageCtl_Reset();
}

void tst_RefInstallationGenerate::shouldMakeExpectedCounts_data()
{
    QTest::addColumn<int>("iChannels");
    QTest::addColumn<int>("iPerHost");
    QTest::addColumn<int>("iItems");
    QTest::addColumn<int>("iGroups"); // root included
    QTest::addColumn<int>("iHosts");
    QTest::addColumn<int>("iAlarmIns");
    QTest::addColumn<int>("iAlarmOuts");
    // Items: root, groups, hosts, channels, two alarm inputs and one output on every fourth host
    // (1, 5, 9, ...), one decoder with four outputs and two inputs.
    QTest::newRow("800 in 16") << 800 << 16 << 901 << 5 << 50 << 26 << 13;
    QTest::newRow("64 in 16") << 64 << 16 << 80 << 2 << 4 << 2 << 1;
    QTest::newRow("10 in 4, last host short") << 10 << 4 << 25 << 2 << 3 << 2 << 1;
    QTest::newRow("one big host") << 1000 << 1000 << 1013 << 2 << 1 << 2 << 1;
    QTest::newRow("no channels") << 0 << 16 << 9 << 2 << 0 << 0 << 0;
}

void tst_RefInstallationGenerate::shouldMakeExpectedCounts()
{
    QFETCH(int, iChannels);
    QFETCH(int, iPerHost);
    QFETCH(int, iItems);
    QFETCH(int, iGroups);
    QFETCH(int, iHosts);
    QFETCH(int, iAlarmIns);
    QFETCH(int, iAlarmOuts);

    QCOMPARE(DevManageCtl_GenerateInstallation(iChannels, iPerHost), iItems);
    QCOMPARE(DevManageCtl_ItemCount(), iItems);
    QCOMPARE(CountOfType(2), iGroups);
    QCOMPARE(CountOfType(3), iHosts);
    QCOMPARE(CountOfType(4), iChannels);
    QCOMPARE(CountOfType(5), iAlarmIns);
    QCOMPARE(CountOfType(6), iAlarmOuts);
    QCOMPARE(CountOfType(12), 1);
    QCOMPARE(CountOfType(13), 4);
    QCOMPARE(CountOfType(17), 2);
    QVERIFY(Item("resource_root_id"));
}

void tst_RefInstallationGenerate::shouldGiveLastHostTheRemainingChannels()
{
    QCOMPARE(DevManageCtl_GenerateInstallation(10, 4), 25);
    const QStringList qlstLayout = Layout();
    auto ChannelsOf = [&](const QString& _qstrHost) {
        QStringList qlstIds;
        for (const QString& qstrItem : qlstLayout) {
            const QStringList qlstFields = qstrItem.split('|');
            if (qlstFields.at(1) == "4" && qlstFields.at(2) == _qstrHost)
                qlstIds << qlstFields.at(0);
        }
        return qlstIds.join(' ');
    };
    QCOMPARE(ChannelsOf("host1"), QString("host1_ch1 host1_ch2 host1_ch3 host1_ch4"));
    QCOMPARE(ChannelsOf("host3"), QString("host3_ch1 host3_ch2"));
}

void tst_RefInstallationGenerate::shouldPutEachChannelsAddressInItsExtend()
{
    QVERIFY(DevManageCtl_GenerateInstallation(600, 16) > 0);
    // Host address and channel number; a host's own record has no extend.
    for (const auto& pair : {qMakePair(QString("host1_ch1"), QString("10.0.0.2:1")),
                             qMakePair(QString("host3_ch16"), QString("10.0.0.4:16")),
                             qMakePair(QString("host38_ch8"), QString("10.0.0.39:8"))}) {
        const std::shared_ptr<STRCT_VideoItem> spItem = Item(pair.first);
        QVERIFY2(spItem != nullptr, qPrintable(pair.first));
        QCOMPARE(QString::fromStdString(spItem->m_strExtend), pair.second);
    }
    QVERIFY(Item("host1") != nullptr);
    QCOMPARE(QString::fromStdString(Item("host1")->m_strExtend), QString());
}

void tst_RefInstallationGenerate::shouldSpreadHostsOverGroups()
{
    QCOMPARE(DevManageCtl_GenerateInstallation(800, 16), 901);
    // Resource ids are tree ids, so a tree's rows find their parents.
    for (const QString& qstrItem : Layout()) {
        const QStringList qlstFields = qstrItem.split('|');
        QCOMPARE(qlstFields.at(3), qlstFields.at(0));
    }
    QCOMPARE(QString::fromStdString(Item("host1")->m_strParentId), QString("group1"));
    QCOMPARE(QString::fromStdString(Item("host50")->m_strParentId), QString("group4"));
    QCOMPARE(QString::fromStdString(Item("group2")->m_strParentId), QString("resource_root_id"));
    QCOMPARE(QString::fromStdString(Item("dec1_in2")->m_strParentId), QString("dec1"));
    QCOMPARE(Item("host1_ch7")->m_iOrderNo, 7);
    QCOMPARE(Item("host1_ai1")->m_iOrderNo, 17); // after the channels
}

void tst_RefInstallationGenerate::shouldMixStatuses()
{
    QCOMPARE(DevManageCtl_GenerateInstallation(800, 16), 901);
    QCOMPARE(Item("host10")->m_iStatus, 0);
    QCOMPARE(Item("host10_ch1")->m_iStatus, 0);
    QCOMPARE(Item("host9")->m_iStatus, 1);
    int iOn = 0;
    int iOff = 0;
    for (const QString& qstrStatus : Statuses()) {
        if (!qstrStatus.contains("_ch"))
            continue;
        iOn += qstrStatus.endsWith(":1") ? 1 : 0;
        iOff += qstrStatus.endsWith(":0") ? 1 : 0;
    }
    QCOMPARE(iOn + iOff, 800);
    QVERIFY2(iOff > 80 && iOn > 600, qPrintable(QString("%1 on, %2 off").arg(iOn).arg(iOff)));
}

void tst_RefInstallationGenerate::shouldBuildCustomTreesOverExistingChannels()
{
    QCOMPARE(DevManageCtl_GenerateInstallation(800, 16), 901);
    const QMap<QString, CLS_CustomTreeNode> qmapNodes = AllNodes();
    QMap<QString, int> qmapBelowRoot;
    QList<int> qlstFlowBindTypes;
    for (const CLS_CustomTreeNode& node : qmapNodes) {
        if (node.m_iType != 4)
            continue;
        // Every channel node stands for a channel of the installation, with its state.
        std::shared_ptr<STRCT_VideoItem> spChannel = Item(node.m_qstrDevId);
        QVERIFY2(spChannel, qPrintable(node.m_qstrTreeId));
        QCOMPARE(node.m_iStatus, spChannel->m_iStatus);
        QCOMPARE(node.m_qstrName, QString::fromStdString(spChannel->m_strName));
        QString qstrRoot = node.m_qstrTreeParentId;
        while (qmapNodes.value(qstrRoot).m_qstrTreeParentId != QString())
            qstrRoot = qmapNodes.value(qstrRoot).m_qstrTreeParentId;
        ++qmapBelowRoot[qstrRoot];
        if (qstrRoot == "passengerflow_root_id")
            qlstFlowBindTypes << node.m_iDevBindType;
    }
    QCOMPARE(qmapBelowRoot.value("custom_root_id"), 12);
    QCOMPARE(qmapBelowRoot.value("favorite_root_id"), 7);
    QCOMPARE(qmapBelowRoot.value("passengerflow_root_id"), 3);
    std::sort(qlstFlowBindTypes.begin(), qlstFlowBindTypes.end());
    QCOMPARE(qlstFlowBindTypes, QList<int>({2, 3, 4})); // pad, car, way
    QCOMPARE(qmapNodes.value("fav_main").m_qstrTreeParentId, QString("favorite_root_id"));
}

void tst_RefInstallationGenerate::shouldBeTheSameForTheSameArguments()
{
    QCOMPARE(DevManageCtl_GenerateInstallation(200, 8), 1 + 3 + 25 + 200 + 7 * 3 + 7);
    const QStringList qlstFirst = Layout();
    const QStringList qlstFirstNodes = AllNodes().keys();
    QCOMPARE(DevManageCtl_GenerateInstallation(40, 8), 1 + 1 + 5 + 40 + 2 * 3 + 7);
    QCOMPARE(DevManageCtl_GenerateInstallation(200, 8), 257);
    QCOMPARE(Layout(), qlstFirst);
    QCOMPARE(QStringList(AllNodes().keys()), qlstFirstNodes);
}

void tst_RefInstallationGenerate::shouldRefuseBadSizesAndKeepInstallation_data()
{
    QTest::addColumn<int>("iChannels");
    QTest::addColumn<int>("iPerHost");
    QTest::newRow("negative channels") << -1 << 16;
    QTest::newRow("no channel per host") << 16 << 0;
    QTest::newRow("negative per host") << 16 << -4;
}

void tst_RefInstallationGenerate::shouldRefuseBadSizesAndKeepInstallation()
{
    QFETCH(int, iChannels);
    QFETCH(int, iPerHost);
    QCOMPARE(DevManageCtl_GenerateInstallation(8, 4), 1 + 1 + 2 + 8 + 3 + 7);
    const QStringList qlstBefore = Layout();
    QCOMPARE(DevManageCtl_GenerateInstallation(iChannels, iPerHost), -1);
    QCOMPARE(Layout(), qlstBefore);
}

QTEST_GUILESS_MAIN(tst_RefInstallationGenerate)
#include "tst_RefInstallationGenerate.moc"
