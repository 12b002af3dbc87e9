// Installations of the reference device layer read from JSON: the shipped sample and small
// installations with every field and default, refused documents (nothing left behind, a message
// that names the place), the file form and the copy rules of the error text.

#include "CLS_IDevFactory.h"
#include "CLS_RefDevManageKit.h"
#include "STRCT_DevRecords.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <cstring>

using namespace CLS_RefDevKit;

namespace {

int ImageAnswer(const QString& _qstrId)
{
    QMap<QString, QString> qmapValues;
    QString qstrValue;
    return DevManage::GetDevFactory()->QueryDeviceParam(_qstrId, 0, PARAM_IMAGE_CHANNEL, qmapValues,
                                                        qstrValue);
}

// A node as "parent|devId|devParent|name|type|sortNo|status|channelNo|bindType|extend".
QString NodeText(const CLS_CustomTreeNode& _node)
{
    return QStringList{_node.m_qstrTreeParentId,
                       _node.m_qstrDevId,
                       _node.m_qstrDevParentId,
                       _node.m_qstrName,
                       QString::number(_node.m_iType),
                       QString::number(_node.m_iSortNo),
                       QString::number(_node.m_iStatus),
                       QString::number(_node.m_iChannelNo),
                       QString::number(_node.m_iDevBindType),
                       _node.m_qstrExtend}
        .join('|');
}

// An item as "type|parent|treeId|order|status|name|channelNo|bindType|extend" ("-" for no channel number).
QString ItemText(const QString& _qstrId)
{
    std::shared_ptr<STRCT_VideoItem> spItem = Item(_qstrId);
    if (!spItem)
        return QStringLiteral("<missing>");
    const int* pChannelNo = DevRecordChannelNo(spItem.get());
    return QStringList{QString::number(spItem->GetType()),
                       QString::fromStdString(spItem->m_strParentId),
                       QString::fromStdString(spItem->m_strTreeId),
                       QString::number(spItem->m_iOrderNo),
                       QString::number(spItem->m_iStatus),
                       QString::fromStdString(spItem->m_strName),
                       pChannelNo != nullptr ? QString::number(*pChannelNo) : QStringLiteral("-"),
                       QString::number(spItem->m_iDevBindType),
                       QString::fromStdString(spItem->m_strExtend)}
        .join('|');
}

int LoadFile(const char* _pName)
{
    return DevManageCtl_LoadInstallationFile(InstallationFile(_pName).toUtf8().constData());
}

} // namespace

class tst_RefInstallationLoad : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void shouldLoadSampleWithCountOfEachType_data();
    void shouldLoadSampleWithCountOfEachType();
    void shouldLoadSampleWithParentsOrderAndStatus_data();
    void shouldLoadSampleWithParentsOrderAndStatus();
    void shouldLoadSampleWithMixedChannelStatuses();
    void shouldLoadSampleCustomTrees_data();
    void shouldLoadSampleCustomTrees();
    void shouldHandFavouritesOutBelowTheirRoot();

    void shouldReadEveryResourceFieldAndDefault_data();
    void shouldReadEveryResourceFieldAndDefault();
    void shouldReadDeviceFields();
    void shouldAnswerImageChannelForFirstChannelOfMarkedHost();
    void shouldReadEveryNodeFieldAndDefault_data();
    void shouldReadEveryNodeFieldAndDefault();
    void shouldMakeOnlyTheRootOfAnEmptyDocument();
    void shouldIgnoreKeysStartingWithUnderscore();
    void shouldAcceptNodesWrittenBeforeTheirParent();
    void shouldKeepTextsAsUtf8();

    void shouldRefuseInvalidDocument_data();
    void shouldRefuseInvalidDocument();
    void shouldRefuseNullText();
    void shouldResetBeforeLoading();
    void shouldForgetErrorAfterSuccessfulLoad();
    void shouldCopyErrorTextLikeOtherTextFunctions();

    void shouldLoadFile();
    void shouldRefuseUnreadableFile();
    void shouldNameFileAndFaultInOneLineForEachRefusedFile_data();
    void shouldNameFileAndFaultInOneLineForEachRefusedFile();
};

void tst_RefInstallationLoad::initTestCase()
{
    BindGateway();
}

void tst_RefInstallationLoad::init()
{
    DevManageCtl_Reset();
}

void tst_RefInstallationLoad::shouldLoadSampleWithCountOfEachType_data()
{
    QTest::addColumn<int>("iType");
    QTest::addColumn<int>("iCount");
    QTest::newRow("groups and root") << 2 << 6;
    QTest::newRow("hosts") << 3 << 50;
    QTest::newRow("channels") << 4 << 800;
    QTest::newRow("alarm inputs") << 5 << 48;
    QTest::newRow("alarm outputs") << 6 << 24;
    QTest::newRow("decoders") << 12 << 1;
    QTest::newRow("decoder outputs") << 13 << 8;
    QTest::newRow("decoder inputs") << 17 << 4;
}

void tst_RefInstallationLoad::shouldLoadSampleWithCountOfEachType()
{
    QFETCH(int, iType);
    QFETCH(int, iCount);
    QCOMPARE(LoadFile("sample.json"), 941);
    QCOMPARE(DevManageCtl_ItemCount(), 941);
    QCOMPARE(CountOfType(iType), iCount);
}

void tst_RefInstallationLoad::shouldLoadSampleWithParentsOrderAndStatus_data()
{
    QTest::addColumn<QString>("qstrId");
    QTest::addColumn<QString>("qstrItem");
    // type|parent|treeId|order|status|name|channelNo|bindType|extend
    QTest::newRow("root") << "resource_root_id"
                          << "2||resource_root_id|0|0|All resources|-|-1|";
    QTest::newRow("outer group") << "campus"
                                 << "2|resource_root_id|campus|1|0|Campus|-|-1|";
    QTest::newRow("nested group") << "south"
                                  << "2|campus|south|2|0|South building|-|-1|";
    QTest::newRow("later top group") << "perimeter"
                                     << "2|resource_root_id|perimeter|3|0|Perimeter|-|-1|";
    QTest::newRow("decoder after groups") << "dec01"
                                          << "12|resource_root_id|dec01|4|1|Video wall decoder|-|-1|";
    QTest::newRow("first host") << "nvr01"
                                << "3|north|nvr01|1|1|NVR 01|-|-1|";
    QTest::newRow("off-line host") << "nvr07"
                                   << "3|north|nvr07|7|0|NVR 07|-|-1|";
    QTest::newRow("last host") << "nvr50"
                               << "3|perimeter|nvr50|12|1|NVR 50|-|-1|";
    QTest::newRow("channel") << "nvr01_ch1"
                             << "4|nvr01|nvr01_ch1|1|1|North 01-01|1|-1|10.1.0.1:1";
    QTest::newRow("off-line channel") << "nvr01_ch12"
                                      << "4|nvr01|nvr01_ch12|12|0|North 01-12|12|-1|10.1.0.1:12";
    QTest::newRow("channel of off-line host") << "nvr07_ch3"
                                              << "4|nvr07|nvr07_ch3|3|0|North 07-03|3|-1|10.1.0.7:3";
    QTest::newRow("alarm input after channels") << "nvr04_ai1"
                                                << "5|nvr04|nvr04_ai1|17|1|Door contact 04-1|1|-1|";
    QTest::newRow("alarm output after inputs") << "nvr04_ao2"
                                               << "6|nvr04|nvr04_ao2|22|1|Siren 04-2|2|-1|";
    QTest::newRow("decoder output") << "dec01_out8"
                                    << "13|dec01|dec01_out8|8|1|Wall screen 8|8|-1|";
    QTest::newRow("decoder input after outputs") << "dec01_in1"
                                                 << "17|dec01|dec01_in1|9|1|Wall input 1|1|-1|";
}

void tst_RefInstallationLoad::shouldLoadSampleWithParentsOrderAndStatus()
{
    QFETCH(QString, qstrId);
    QFETCH(QString, qstrItem);
    QCOMPARE(LoadFile("sample.json"), 941);
    QCOMPARE(ItemText(qstrId), qstrItem);
}

void tst_RefInstallationLoad::shouldLoadSampleWithMixedChannelStatuses()
{
    QCOMPARE(LoadFile("sample.json"), 941);
    QVector<std::weak_ptr<STRCT_VideoItem>> qvecChannels;
    DevManage::GetResourceTree()->ListItemsOfType(qvecChannels, 4, QVector<QString>());
    int iOffLine = 0;
    for (const auto& wpChannel : qvecChannels) {
        std::shared_ptr<STRCT_VideoItem> spChannel = wpChannel.lock();
        QVERIFY(spChannel);
        QVERIFY2(spChannel->m_iStatus == 0 || spChannel->m_iStatus == 1, spChannel->m_strId.c_str());
        iOffLine += spChannel->m_iStatus == 0 ? 1 : 0;
    }
    QCOMPARE(qvecChannels.size(), 800);
    QCOMPARE(iOffLine, 93); // three whole recorders and one camera in seventeen of the rest
}

void tst_RefInstallationLoad::shouldLoadSampleCustomTrees_data()
{
    QTest::addColumn<QString>("qstrTreeId");
    QTest::addColumn<QString>("qstrNode");
    // parent|devId|devParent|name|type|sortNo|status|channelNo|bindType|extend (a bound channel's
    // extend is its resource's: the camera's address)
    QTest::newRow("custom root") << "custom_root_id"
                                 << "|custom_root_id||Custom|2|0|0|-1|-1|";
    QTest::newRow("custom group") << "cg_lifts"
                                  << "custom_root_id|cg_lifts|custom_root_id|Lifts|2|2|0|-1|-1|";
    QTest::newRow("nested group") << "cg_main_gate"
                                  << "cg_entrances|cg_main_gate|cg_entrances|Main gate|2|1|0|-1|-1|";
    QTest::newRow("bound channel") << "c_nvr01_ch1"
                                   << "cg_main_gate|nvr01_ch1|cg_main_gate|North 01-01|4|1|1|1|-1|10.1.0.1:1";
    QTest::newRow("renamed channel, off line") << "c_nvr05_ch9"
                                               << "cg_lifts|nvr05_ch9|cg_lifts|Lift A|4|1|0|9|-1|10.1.0.5:9";
    QTest::newRow("channel off line") << "c_nvr07_ch3"
                                      << "cg_lifts|nvr07_ch3|cg_lifts|Lift C|4|3|0|3|-1|10.1.0.7:3";
    QTest::newRow("favourites root") << "favorite_root_id"
                                     << "|favorite_root_id||Favourites|2|0|0|-1|-1|";
    QTest::newRow("favourite at top")
        << "f_nvr01_ch1"
        << "favorite_root_id|nvr01_ch1|favorite_root_id|North 01-01|4|2|1|1|-1|10.1.0.1:1";
    QTest::newRow("favourite output")
        << "f_dec01_out1"
        << "favorite_root_id|dec01_out1|favorite_root_id|Wall screen 1|13|3|1|1|-1|";
    QTest::newRow("passenger-flow root") << "passengerflow_root_id"
                                         << "|passengerflow_root_id||Passenger flow|2|0|0|-1|-1|";
    QTest::newRow("passenger-flow way") << "p_nvr16_ch1"
                                        << "pf_mall|nvr16_ch1|pf_mall|South 16-01|4|3|1|1|4|10.1.0.16:1";
}

void tst_RefInstallationLoad::shouldLoadSampleCustomTrees()
{
    QFETCH(QString, qstrTreeId);
    QFETCH(QString, qstrNode);
    QCOMPARE(LoadFile("sample.json"), 941);
    const QMap<QString, CLS_CustomTreeNode> qmapNodes = AllNodes();
    QCOMPARE(qmapNodes.size(), 15 + 10 + 6);
    QVERIFY2(qmapNodes.contains(qstrTreeId), qPrintable(QStringList(qmapNodes.keys()).join(' ')));
    QCOMPARE(NodeText(qmapNodes.value(qstrTreeId)), qstrNode);
}

void tst_RefInstallationLoad::shouldHandFavouritesOutBelowTheirRoot()
{
    QCOMPARE(LoadFile("sample.json"), 941);
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    DevManage::GetCustomTree()->GetNodesOfRoot("favorite_root_id", qmapNodes, 0);
    QCOMPARE(QStringList(qmapNodes.keys()),
             QStringList({"f_dec01_out1", "f_nvr01_ch1", "f_nvr02_ch4", "f_nvr15_ch4", "f_nvr28_ch4",
                          "f_nvr33_ch12", "f_nvr44_ch7", "f_nvr50_ch16", "fav_watch", "favorite_root_id"}));
}

void tst_RefInstallationLoad::shouldReadEveryResourceFieldAndDefault_data()
{
    QTest::addColumn<QString>("qstrId");
    QTest::addColumn<QString>("qstrItem");
    // type|parent|treeId|order|status|name|channelNo|bindType|extend
    QTest::newRow("root named by rootName") << "resource_root_id"
                                            << "2||resource_root_id|0|0|Site|-|-1|";
    QTest::newRow("group: order by position, status 0") << "g1"
                                                        << "2|resource_root_id|g1|1|0|Lobby|-|-1|";
    QTest::newRow("host: on line by default") << "h1"
                                              << "3|g1|h1|1|1|Recorder 1|-|-1|";
    QTest::newRow("channel: id, number and status by default") << "h1_ch1"
                                                               << "4|h1|h1_ch1|1|1|Door|1|-1|";
    QTest::newRow("channel: every field given") << "h1_cam2"
                                                << "4|h1|t_h1_cam2|9|0|Hall|5|3|ptz";
    QTest::newRow("alarm input: order after channels") << "h1_ai1"
                                                       << "5|h1|h1_ai1|3|1|Contact|1|-1|";
    QTest::newRow("alarm output: default name") << "h1_ao1"
                                                << "6|h1|h1_ao1|4|1|Alarm output 1|1|-1|";
    QTest::newRow("host: name defaults to id, after groups") << "h2"
                                                             << "3|resource_root_id|h2|2|0|h2|-|-1|";
    QTest::newRow("channel: status of its host") << "h2_ch1"
                                                 << "4|h2|h2_ch1|1|0|Channel 1|1|-1|";
    QTest::newRow("decoder: after hosts") << "d1"
                                          << "12|resource_root_id|d1|3|1|Decoder|-|-1|";
    QTest::newRow("decoder output: defaults") << "d1_out2"
                                              << "13|d1|d1_out2|2|1|Output 2|2|-1|";
    QTest::newRow("decoder input: after outputs") << "d1_in1"
                                                  << "17|d1|d1_in1|3|1|In|1|-1|";
}

void tst_RefInstallationLoad::shouldReadEveryResourceFieldAndDefault()
{
    QFETCH(QString, qstrId);
    QFETCH(QString, qstrItem);
    QCOMPARE(LoadFile("small.json"), 13);
    QCOMPARE(ItemText(qstrId), qstrItem);
}

void tst_RefInstallationLoad::shouldReadDeviceFields()
{
    QCOMPARE(LoadFile("small.json"), 13);
    std::shared_ptr<STRCT_VideoItem> spHost = Item("h1");
    QVERIFY(spHost && spHost->GetType() == 3);
    QCOMPARE(QString::fromStdString(static_cast<STRCT_DevHost&>(*spHost).m_strAddress), QString("10.0.0.1"));
    QCOMPARE(static_cast<STRCT_DevHost&>(*spHost).m_iPort, 8000);
    std::shared_ptr<STRCT_VideoItem> spOther = Item("h2");
    QVERIFY(spOther && spOther->GetType() == 3);
    QCOMPARE(QString::fromStdString(static_cast<STRCT_DevHost&>(*spOther).m_strAddress), QString());
    QCOMPARE(static_cast<STRCT_DevHost&>(*spOther).m_iPort, 0);
    std::shared_ptr<STRCT_VideoItem> spChannel = Item("h1_cam2");
    QVERIFY(spChannel && spChannel->GetType() == 4);
    QCOMPARE(static_cast<STRCT_DevChannel&>(*spChannel).m_iStreamType, 1);
    std::shared_ptr<STRCT_VideoItem> spDefault = Item("h1_ch1");
    QVERIFY(spDefault && spDefault->GetType() == 4);
    QCOMPARE(static_cast<STRCT_DevChannel&>(*spDefault).m_iStreamType, 0);
}

void tst_RefInstallationLoad::shouldAnswerImageChannelForFirstChannelOfMarkedHost()
{
    QCOMPARE(LoadFile("small.json"), 13);
    QCOMPARE(ImageAnswer("h1_ch1"), 1);
    QCOMPARE(ImageAnswer("h1_cam2"), 0);
    QCOMPARE(ImageAnswer("h2_ch1"), 0);
}

void tst_RefInstallationLoad::shouldReadEveryNodeFieldAndDefault_data()
{
    QTest::addColumn<QString>("qstrTreeId");
    QTest::addColumn<QString>("qstrNode");
    // parent|devId|devParent|name|type|sortNo|status|channelNo|bindType|extend
    QTest::newRow("custom root: default caption") << "custom_root_id"
                                                  << "|custom_root_id||Custom|2|0|0|-1|-1|";
    QTest::newRow("group: under the root") << "cg"
                                           << "custom_root_id|cg|custom_root_id|Group|2|1|0|-1|-1|";
    QTest::newRow("bound node: from its resource") << "c1"
                                                   << "cg|h1_ch1|cg|Door|4|1|1|1|-1|";
    QTest::newRow("favourites root: rootName") << "favorite_root_id"
                                               << "|favorite_root_id||Stars|2|0|0|-1|-1|";
    QTest::newRow("bound node: name and order given")
        << "f1"
        << "favorite_root_id|h1_cam2|favorite_root_id|Best|4|7|0|5|3|ptz";
    QTest::newRow("passenger-flow root") << "passengerflow_root_id"
                                         << "|passengerflow_root_id||Passenger flow|2|0|0|-1|-1|";
    QTest::newRow("bind type given") << "p1"
                                     << "passengerflow_root_id|h1_ch1|passengerflow_root_id|Door|4|1|1|1|2|";
}

void tst_RefInstallationLoad::shouldReadEveryNodeFieldAndDefault()
{
    QFETCH(QString, qstrTreeId);
    QFETCH(QString, qstrNode);
    QCOMPARE(LoadFile("small.json"), 13);
    const QMap<QString, CLS_CustomTreeNode> qmapNodes = AllNodes();
    QCOMPARE(qmapNodes.size(), 7);
    QCOMPARE(NodeText(qmapNodes.value(qstrTreeId)), qstrNode);
}

void tst_RefInstallationLoad::shouldMakeOnlyTheRootOfAnEmptyDocument()
{
    QCOMPARE(DevManageCtl_LoadInstallation("{}"), 1);
    QCOMPARE(ItemText("resource_root_id"), QString("2||resource_root_id|0|0|All resources|-|-1|"));
    QVERIFY(AllNodes().isEmpty()); // no section, not even a root
}

void tst_RefInstallationLoad::shouldIgnoreKeysStartingWithUnderscore()
{
    QCOMPARE(DevManageCtl_LoadInstallation(
                 R"({"_note": "free text", "hosts": [{"id": "h", "_where": 3, "channels": [{"_x": []}]}],
                     "customTree": {"_y": 1, "nodes": [{"id": "n", "_z": {}}]}})"),
             3);
    QCOMPARE(ItemText("h_ch1"), QString("4|h|h_ch1|1|1|Channel 1|1|-1|"));
    QCOMPARE(AllNodes().size(), 2);
}

void tst_RefInstallationLoad::shouldAcceptNodesWrittenBeforeTheirParent()
{
    QCOMPARE(DevManageCtl_LoadInstallation(R"({"customTree": {"nodes": [
                 {"id": "child", "parent": "grp"}, {"id": "grp"}]}})"),
             1);
    const QMap<QString, CLS_CustomTreeNode> qmapNodes = AllNodes();
    QCOMPARE(NodeText(qmapNodes.value("child")), QString("grp|child|grp|child|2|1|0|-1|-1|"));
    QCOMPARE(NodeText(qmapNodes.value("grp")), QString("custom_root_id|grp|custom_root_id|grp|2|1|0|-1|-1|"));
}

void tst_RefInstallationLoad::shouldKeepTextsAsUtf8()
{
    const QString qstrName = QString::fromUtf8("Cam\xC3\xA9ra \xE5\x8C\x97");
    const QByteArray qbaJson = QString(R"({"hosts": [{"id": "h\u00e9", "name": "%1", "extend": "%1"}],
                                          "favorites": {"nodes": [{"id": "f", "resource": "h\u00e9"}]}})")
                                   .arg(qstrName)
                                   .toUtf8();
    QCOMPARE(DevManageCtl_LoadInstallation(qbaJson.constData()), 2);
    std::shared_ptr<STRCT_VideoItem> spHost = Item(QString::fromUtf8("h\xC3\xA9"));
    QVERIFY(spHost);
    QCOMPARE(QByteArray::fromStdString(spHost->m_strName), qstrName.toUtf8());
    QCOMPARE(QByteArray::fromStdString(spHost->m_strExtend), qstrName.toUtf8());
    QCOMPARE(AllNodes().value("f").m_qstrName, qstrName);
}

void tst_RefInstallationLoad::shouldRefuseInvalidDocument_data()
{
    QTest::addColumn<QString>("qstrJson");
    QTest::addColumn<QString>("qstrError");

    QTest::newRow("not JSON") << "{\"hosts\": ["
                              << "invalid JSON at line 1, column ";
    QTest::newRow("empty text") << ""
                                << "invalid JSON at line 1, column 1: ";
    QTest::newRow("array at top") << "[]"
                                  << "the document must be a JSON object";
    QTest::newRow("unknown top key") << R"({"hostz": []})"
                                     << "hostz: unknown key";
    QTest::newRow("unknown nested key") << R"({"hosts": [{"id": "h", "channels": [{"chanelNo": 2}]}]})"
                                        << "hosts[0].channels[0].chanelNo: unknown key";
    QTest::newRow("version") << R"({"version": 2})"
                             << "version: unsupported version 2";
    QTest::newRow("list not an array") << R"({"groups": {}})"
                                       << "groups: expected an array";
    QTest::newRow("entry not an object") << R"({"hosts": [1]})"
                                         << "hosts[0]: expected an object";
    QTest::newRow("status as text") << R"({"hosts": [{"id": "h", "status": "on"}]})"
                                    << "hosts[0].status: expected an integer";
    QTest::newRow("status fraction") << R"({"hosts": [{"id": "h", "status": 0.5}]})"
                                     << "hosts[0].status: expected an integer";
    QTest::newRow("status out of range") << R"({"hosts": [{"id": "h", "status": 3}]})"
                                         << "hosts[0].status: expected 0, 1 or 2";
    QTest::newRow("order too big") << R"({"hosts": [{"id": "h", "order": 3000000000}]})"
                                   << "hosts[0].order: expected an integer";
    QTest::newRow("name not text") << R"({"decoders": [{"id": "d", "name": 5}]})"
                                   << "decoders[0].name: expected a string";
    QTest::newRow("port out of range") << R"({"hosts": [{"id": "h", "port": 70000}]})"
                                       << "hosts[0].port: expected 0 to 65535";
    QTest::newRow("flag not bool") << R"({"hosts": [{"id": "h", "imageChannel": 1}]})"
                                   << "hosts[0].imageChannel: expected true or false";
    QTest::newRow("host without id") << R"({"groups": [{"id": "g", "hosts": [{"name": "x"}]}]})"
                                     << "groups[0].hosts[0].id: missing";
    QTest::newRow("empty id") << R"({"groups": [{"id": ""}]})"
                              << "groups[0].id: must not be empty";
    QTest::newRow("reserved id") << R"({"groups": [{"id": "resource_root_id"}]})"
                                 << "groups[0].id: \"resource_root_id\" is reserved for the root";
    QTest::newRow("duplicate id") << R"({"hosts": [{"id": "h"}, {"id": "h"}]})"
                                  << "hosts[1].id: duplicate id \"h\"";
    QTest::newRow("duplicate of a default id")
        << R"({"hosts": [{"id": "h", "channels": [{}]}, {"id": "h_ch1"}]})"
        << "hosts[1].id: duplicate id \"h_ch1\"";
    QTest::newRow("duplicate tree id")
        << R"({"hosts": [{"id": "a", "treeId": "t"}, {"id": "b", "treeId": "t"}]})"
        << "hosts[1].treeId: duplicate tree id \"t\"";
    QTest::newRow("section not an object") << R"({"customTree": []})"
                                           << "customTree: expected an object";
    QTest::newRow("node without id") << R"({"favorites": {"nodes": [{"name": "x"}]}})"
                                     << "favorites.nodes[0].id: missing";
    QTest::newRow("unknown parent") << R"({"customTree": {"nodes": [{"id": "a", "parent": "zz"}]}})"
                                    << "customTree.nodes[0].parent: unknown parent \"zz\"";
    QTest::newRow("parent in another tree")
        << R"({"customTree": {"nodes": []}, "favorites": {"nodes": [{"id": "a", "parent": "custom_root_id"}]}})"
        << "favorites.nodes[0].parent: unknown parent \"custom_root_id\"";
    QTest::newRow("parents in a loop")
        << R"({"customTree": {"nodes": [{"id": "a", "parent": "b"}, {"id": "b", "parent": "a"}]}})"
        << "customTree.nodes[0].parent: parents form a loop through \"a\"";
    QTest::newRow("duplicate node id across trees")
        << R"({"customTree": {"nodes": [{"id": "a"}]}, "passengerFlow": {"nodes": [{"id": "a"}]}})"
        << "passengerFlow.nodes[0].id: duplicate node id \"a\"";
    QTest::newRow("node with a root id")
        << R"({"customTree": {"nodes": [{"id": "favorite_root_id"}]}})"
        << "customTree.nodes[0].id: \"favorite_root_id\" is reserved for a root";
    QTest::newRow("unknown resource") << R"({"customTree": {"nodes": [{"id": "a", "resource": "nope"}]}})"
                                      << "customTree.nodes[0].resource: unknown resource \"nope\"";
    QTest::newRow("node type as text") << R"({"customTree": {"nodes": [{"id": "a", "type": "group"}]}})"
                                       << "customTree.nodes[0].type: expected an integer";
}

void tst_RefInstallationLoad::shouldRefuseInvalidDocument()
{
    QFETCH(QString, qstrJson);
    QFETCH(QString, qstrError);
    // Given a loaded installation
    QCOMPARE(LoadFile("small.json"), 13);

    // When a refused document comes in
    QCOMPARE(DevManageCtl_LoadInstallation(qstrJson.toUtf8().constData()), -1);

    // Then the message names the place, and nothing of either installation is left
    QVERIFY2(LastLoadError().startsWith(qstrError), qPrintable(LastLoadError()));
    QCOMPARE(DevManageCtl_ItemCount(), 0);
    QVERIFY(AllNodes().isEmpty());
    QCOMPARE(ImageAnswer("h1_ch1"), 0);
}

void tst_RefInstallationLoad::shouldRefuseNullText()
{
    QCOMPARE(LoadFile("small.json"), 13);
    QCOMPARE(DevManageCtl_LoadInstallation(nullptr), -1);
    QCOMPARE(LastLoadError(), QString("no JSON text"));
    QCOMPARE(DevManageCtl_ItemCount(), 0);
}

void tst_RefInstallationLoad::shouldResetBeforeLoading()
{
    DevManageCtl_AddHost("old", "Old", "", 0, 1, "");
    DevManageCtl_AddCustomNode("old_node", "old", "", "Old", 4, 0, 0, 1);
    DevManageCtl_FailNext("GetItem", 5, -3);
    DevManageCtl_SetObjectAvailable("GetDevFactory", 0);

    QCOMPARE(DevManageCtl_LoadInstallation(R"({"hosts": [{"id": "h"}]})"), 2);

    QCOMPARE(ItemText("old"), QString("<missing>"));
    QCOMPARE(ItemText("h"), QString("3|resource_root_id|h|1|1|h|-|-1|")); // GetItem no longer fails
    QVERIFY(!AllNodes().contains("old_node"));
    QVERIFY(DevManage::GetDevFactory() != nullptr);
}

void tst_RefInstallationLoad::shouldForgetErrorAfterSuccessfulLoad()
{
    QCOMPARE(DevManageCtl_LoadInstallation("{"), -1);
    QVERIFY(!LastLoadError().isEmpty());
    DevManageCtl_Reset();
    QVERIFY2(!LastLoadError().isEmpty(), "a reset keeps the error of the last load");
    QCOMPARE(DevManageCtl_LoadInstallation("{}"), 1);
    QCOMPARE(LastLoadError(), QString());
    QCOMPARE(DevManageCtl_LastLoadError(nullptr, 0), 0);

    QCOMPARE(DevManageCtl_LoadInstallation("{"), -1);
    QCOMPARE(DevManageCtl_GenerateInstallation(4, 4), 17);
    QCOMPARE(LastLoadError(), QString());
}

void tst_RefInstallationLoad::shouldCopyErrorTextLikeOtherTextFunctions()
{
    QCOMPARE(DevManageCtl_LoadInstallation(R"({"hostz": []})"), -1);
    const QByteArray qbaFull = "hostz: unknown key";
    QCOMPARE(DevManageCtl_LastLoadError(nullptr, 0), qbaFull.size());

    char szBuffer[8];
    std::memset(szBuffer, 'x', sizeof(szBuffer));
    QCOMPARE(DevManageCtl_LastLoadError(szBuffer, 6), qbaFull.size());
    QCOMPARE(QByteArray(szBuffer), QByteArray("hostz"));
    QCOMPARE(szBuffer[6], 'x'); // nothing written past the size

    std::memset(szBuffer, 'x', sizeof(szBuffer));
    QCOMPARE(DevManageCtl_LastLoadError(szBuffer, 0), qbaFull.size());
    QCOMPARE(szBuffer[0], 'x');
}

void tst_RefInstallationLoad::shouldLoadFile()
{
    QCOMPARE(LoadFile("small.json"), 13);
    QFile qfile(InstallationFile("small.json"));
    QVERIFY(qfile.open(QIODevice::ReadOnly));
    const QStringList qlstFromFile = Layout();
    QCOMPARE(DevManageCtl_LoadInstallation(qfile.readAll().constData()), 13);
    QCOMPARE(Layout(), qlstFromFile);
}

void tst_RefInstallationLoad::shouldRefuseUnreadableFile()
{
    QCOMPARE(LoadFile("small.json"), 13);
    const QByteArray qbaPath = InstallationFile("no-such-file.json").toUtf8();
    QCOMPARE(DevManageCtl_LoadInstallationFile(qbaPath.constData()), -1);
    QCOMPARE(LastLoadError(), QString("cannot read \"%1\"").arg(QString::fromUtf8(qbaPath)));
    QCOMPARE(DevManageCtl_ItemCount(), 0);
    QVERIFY(AllNodes().isEmpty());

    QCOMPARE(DevManageCtl_LoadInstallationFile(nullptr), -1);
    const std::string strFolder = CLS_TestPaths::FromProgramDir(WGT_INSTALLATIONS_DIR);
    QCOMPARE(DevManageCtl_LoadInstallationFile(strFolder.c_str()), -1); // a folder
    QCOMPARE(DevManageCtl_ItemCount(), 0);
}

void tst_RefInstallationLoad::shouldNameFileAndFaultInOneLineForEachRefusedFile_data()
{
    // The file's text, and its one error line with %1 for the file's path.
    QTest::addColumn<QByteArray>("qbaText");
    QTest::addColumn<QString>("qstrLine");

    // Bad JSON: line and column (in characters, two of them of two bytes on the second row) where
    // the parser stopped.
    QTest::newRow("bad JSON, line and column")
        << QByteArray("{\n  \"hosts\": [\n    {\"id\": \"h1\" \"name\": 1}\n  ]\n}\n")
        << "%1:3:18: invalid JSON: unterminated object";
    QTest::newRow("bad JSON, column counts characters") << QByteArray("{\"rootName\": \"\xc3\x9c"
                                                                      "ber\xc3\xa4"
                                                                      "ll\", ]")
                                                        << "%1:1:26: invalid JSON: unterminated object";
    QTest::newRow("bad JSON, cut short")
        << QByteArray("{\n\"hosts\": [\n") << "%1:3:1: invalid JSON: unterminated array";
    QTest::newRow("empty file") << QByteArray() << "%1:1:1: invalid JSON: illegal value";
    QTest::newRow("not an object") << QByteArray("[1, 2]") << "%1: the document must be a JSON object";
    QTest::newRow("unsupported version")
        << QByteArray(R"({"version": 3})") << "%1: version: unsupported version 3";
    QTest::newRow("unknown key") << QByteArray(R"({"hosts": [{"id": "h1", "adress": "x"}]})")
                                 << "%1: hosts[0].adress: unknown key";
    QTest::newRow("unknown key with a line break")
        << QByteArray(R"({"hosts": [{"id": "h1", "a\nb": 1}]})") << "%1: hosts[0].a\\u000ab: unknown key";
    QTest::newRow("missing field") << QByteArray(R"({"groups": [{"id": "g", "hosts": [{"name": "x"}]}]})")
                                   << "%1: groups[0].hosts[0].id: missing";
    QTest::newRow("empty id") << QByteArray(R"({"decoders": [{"id": ""}]})")
                              << "%1: decoders[0].id: must not be empty";
    QTest::newRow("wrong type") << QByteArray(R"({"hosts": [{"id": "h1", "port": "8000"}]})")
                                << "%1: hosts[0].port: expected an integer";
    QTest::newRow("value out of range") << QByteArray(R"({"hosts": [{"id": "h1", "status": 7}]})")
                                        << "%1: hosts[0].status: expected 0, 1 or 2";
    QTest::newRow("reserved id") << QByteArray(R"({"hosts": [{"id": "resource_root_id"}]})")
                                 << "%1: hosts[0].id: \"resource_root_id\" is reserved for the root";
    QTest::newRow("duplicate id")
        << QByteArray(R"({"groups": [{"id": "g", "hosts": [{"id": "h1"}, {"id": "h1"}]}]})")
        << "%1: groups[0].hosts[1].id: duplicate id \"h1\"";
    QTest::newRow("duplicate tree id")
        << QByteArray(R"({"hosts": [{"id": "a", "treeId": "t"}, {"id": "b", "treeId": "t"}]})")
        << "%1: hosts[1].treeId: duplicate tree id \"t\"";
    QTest::newRow("duplicate node id")
        << QByteArray(R"({"customTree": {"nodes": [{"id": "n"}]}, "favorites": {"nodes": [{"id": "n"}]}})")
        << "%1: favorites.nodes[0].id: duplicate node id \"n\"";
    QTest::newRow("dangling parent")
        << QByteArray(R"({"customTree": {"nodes": [{"id": "a"}, {"id": "b", "parent": "nowhere"}]}})")
        << "%1: customTree.nodes[1].parent: unknown parent \"nowhere\"";
    QTest::newRow("parents in a loop")
        << QByteArray(R"({"favorites": {"nodes": [{"id": "a", "parent": "b"}, {"id": "b", "parent": "a"}]}})")
        << "%1: favorites.nodes[0].parent: parents form a loop through \"a\"";
    QTest::newRow("unknown resource")
        << QByteArray(
               R"({"hosts": [{"id": "h1"}], "passengerFlow": {"nodes": [{"id": "p", "resource": "h9"}]}})")
        << "%1: passengerFlow.nodes[0].resource: unknown resource \"h9\"";
}

void tst_RefInstallationLoad::shouldNameFileAndFaultInOneLineForEachRefusedFile()
{
    QFETCH(QByteArray, qbaText);
    QFETCH(QString, qstrLine);
    QTemporaryDir qtmpDir;
    QVERIFY(qtmpDir.isValid());
    const QString qstrPath = qtmpDir.filePath("site.json");
    {
        QFile qfile(qstrPath);
        QVERIFY(qfile.open(QIODevice::WriteOnly));
        QCOMPARE(qfile.write(qbaText), qint64(qbaText.size()));
    }
    // Given a loaded installation
    QCOMPARE(LoadFile("small.json"), 13);

    // When a refused file comes in
    QCOMPARE(DevManageCtl_LoadInstallationFile(qstrPath.toUtf8().constData()), -1);

    // Then one line names the file and the fault, and nothing of either installation is left
    QCOMPARE(LastLoadError(), qstrLine.arg(qstrPath));
    QVERIFY(!LastLoadError().contains('\n'));
    QCOMPARE(DevManageCtl_ItemCount(), 0);
    QVERIFY(AllNodes().isEmpty());
    QCOMPARE(ImageAnswer("h1_ch1"), 0);
}

QTEST_GUILESS_MAIN(tst_RefInstallationLoad)
#include "tst_RefInstallationLoad.moc"
