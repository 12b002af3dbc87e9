// The drag payload of the device tree: what Create puts in (the tree's own format, the nodes as JSON,
// the names as text), what Read gives back, and that Read refuses whole, appending nothing, whatever
// bytes it is handed. No widget and no application object: the codec is plain data.

#include "CLS_DeviceTreeDragData.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMimeData>
#include <QRandomGenerator>
#include <QtTest>

#include <climits>
#include <memory>

namespace {

CLS_CustomTreeNode MakeNode(const QString& _qstrTreeId, const QString& _qstrDevId, int _iType,
                            const QString& _qstrName, int _iChannelNo)
{
    CLS_CustomTreeNode node;
    node.m_qstrTreeId = _qstrTreeId;
    node.m_qstrDevId = _qstrDevId;
    node.m_iType = _iType;
    node.m_qstrName = _qstrName;
    node.m_iChannelNo = _iChannelNo;
    return node;
}

// "treeId|devId|type|name|channelNo", one entry a node: a failed comparison prints the nodes.
QStringList Describe(const QVector<CLS_CustomTreeNode>& _qvecNodes)
{
    QStringList qlstOut;
    for (const CLS_CustomTreeNode& node : _qvecNodes)
        qlstOut << node.m_qstrTreeId + '|' + node.m_qstrDevId + '|' + QString::number(node.m_iType) + '|' +
                       node.m_qstrName + '|' + QString::number(node.m_iChannelNo);
    return qlstOut;
}

// What a refused read must leave: the caller's vector as it was.
QVector<CLS_CustomTreeNode> PrefilledNodes()
{
    return {MakeNode("kept1", "K1", 4, "Kept one", 1), MakeNode("kept2", "K2", 3, "Kept two", -1)};
}

std::unique_ptr<QMimeData> NodesPayload(const QByteArray& _qbaBytes)
{
    std::unique_ptr<QMimeData> pData(new QMimeData);
    pData->setData(CLS_DeviceTreeDragData::s_pszNodesMime, _qbaBytes);
    return pData;
}

// Reads _qbaBytes as a nodes format into a pre-filled vector; the vector's entries after the read.
int ReadIntoPrefilled(const QByteArray& _qbaBytes, QStringList& _qlstAfter)
{
    QVector<CLS_CustomTreeNode> qvecNodes = PrefilledNodes();
    const std::unique_ptr<QMimeData> pData = NodesPayload(_qbaBytes);
    const int iResult = CLS_DeviceTreeDragData::Read(pData.get(), qvecNodes);
    _qlstAfter = Describe(qvecNodes);
    return iResult;
}

QByteArray ThreeNodeBytes()
{
    return CLS_DeviceTreeDragData::Encode({MakeNode("g1c0", "D1", 4, "Nord", 1),
                                           MakeNode("g1", "", 2,
                                                    QString::fromUtf8("Stra\xc3\x9f"
                                                                      "e"),
                                                    -1),
                                           MakeNode("h7", "H7", 3, "Host 7", 0)});
}

const QStringList& FiveKeys()
{
    static const QStringList s_qlstKeys{"channelNo", "devId", "name", "treeId", "type"};
    return s_qlstKeys;
}

} // namespace

class tst_DeviceTreeDragData : public QObject
{
    Q_OBJECT

private slots:
    void roundTripOfOneNodeKeepsItsFields()
    {
        CLS_CustomTreeNode node = MakeNode("g3c2", "DEV-42", 4, "Gate", 7);
        node.m_qstrTreeParentId = "g3";
        node.m_iStatus = 1;
        node.m_iSortNo = 9;
        const std::unique_ptr<QMimeData> pData(CLS_DeviceTreeDragData::Create({node}, "row"));

        QVector<CLS_CustomTreeNode> qvecRead;
        QCOMPARE(CLS_DeviceTreeDragData::Read(pData.get(), qvecRead), 0);
        QCOMPARE(qvecRead.size(), 1);
        QCOMPARE(qvecRead[0].m_qstrTreeId, QString("g3c2"));
        QCOMPARE(qvecRead[0].m_qstrDevId, QString("DEV-42"));
        QCOMPARE(qvecRead[0].m_iType, 4);
        QCOMPARE(qvecRead[0].m_qstrName, QString("Gate"));
        QCOMPARE(qvecRead[0].m_iChannelNo, 7);
        // Only the five fields travel; the rest are a new node's.
        QCOMPARE(qvecRead[0].m_qstrTreeParentId, QString());
        QCOMPARE(qvecRead[0].m_iStatus, 0);
        QCOMPARE(qvecRead[0].m_iSortNo, 0);
    }

    void roundTripOf200NonAsciiNodesKeepsOrderAndFields()
    {
        const QStringList qlstNames{
            QString::fromUtf8("\xe5\x8c\x97\xe9\x97\xa8\xe6\x91\x84\xe5\x83\x8f\xe6\x9c\xba"),
            QString::fromUtf8("T\xc3\xbcr \xc3\x96stfl\xc3\xbc"
                              "gel \xc3\x84u\xc3\x9f"
                              "eres"),
            QString::fromUtf8("Kamera \xf0\x9f\x93\xb7 \xf0\x9f\x9a\xaa"),
            QString::fromUtf8("\"quoted\"\\ tab\t and\nnew line")};
        QVector<CLS_CustomTreeNode> qvecNodes;
        for (int i = 0; i < 200; ++i) {
            // Tree ids not in sorted order, so a reader that sorted would be seen.
            const QString qstrName = qlstNames[i % qlstNames.size()] + QString::number(i);
            const int iChannel = i == 0 ? INT_MIN : i == 1 ? INT_MAX : i - 100;
            qvecNodes << MakeNode(QString("n%1").arg((i * 37) % 200),
                                  QString::fromUtf8("d\xc3\xa9v%1").arg(i), i % 18, qstrName, iChannel);
        }
        const std::unique_ptr<QMimeData> pData(CLS_DeviceTreeDragData::Create(qvecNodes, "rows"));

        QVector<CLS_CustomTreeNode> qvecRead;
        QCOMPARE(CLS_DeviceTreeDragData::Read(pData.get(), qvecRead), 0);
        QCOMPARE(Describe(qvecRead), Describe(qvecNodes));
    }

    void payloadHoldsTheTreeFormatWithTheRowAddress()
    {
        const QByteArray qbaAddress("\x00\x00\x00\x01\x00\x00\x00\x02\xff row", 13);
        const std::unique_ptr<QMimeData> pData(
            CLS_DeviceTreeDragData::Create({MakeNode("a", "A", 4, "Alpha", 1)}, qbaAddress));
        QVERIFY2(pData->hasFormat("application/x-qabstractitemmodeldatalist"),
                 qPrintable(pData->formats().join(", ")));
        QCOMPARE(pData->data("application/x-qabstractitemmodeldatalist"), qbaAddress);
        QCOMPARE(QByteArray(CLS_DeviceTreeDragData::s_pszTreeMime),
                 QByteArray("application/x-qabstractitemmodeldatalist"));
    }

    void payloadHoldsTheNodesFormatAsWrittenByEncode()
    {
        const QVector<CLS_CustomTreeNode> qvecNodes{MakeNode("a", "A", 4, "Alpha", 1),
                                                    MakeNode("b", "B", 3, "Beta", -1)};
        const std::unique_ptr<QMimeData> pData(CLS_DeviceTreeDragData::Create(qvecNodes, "row"));
        QVERIFY2(pData->hasFormat("application/x-wgttree-nodes"), qPrintable(pData->formats().join(", ")));
        QCOMPARE(QByteArray(CLS_DeviceTreeDragData::s_pszNodesMime),
                 QByteArray("application/x-wgttree-nodes"));
        QCOMPARE(pData->data("application/x-wgttree-nodes"), CLS_DeviceTreeDragData::Encode(qvecNodes));
    }

    void payloadHoldsTheNamesAsPlainTextOneALine()
    {
        const QString qstrUmlaut = QString::fromUtf8("Tor S\xc3\xbc"
                                                     "d");
        const std::unique_ptr<QMimeData> pData(CLS_DeviceTreeDragData::Create(
            {MakeNode("a", "A", 4, "Alpha", 1), MakeNode("b", "B", 4, qstrUmlaut, 2),
             MakeNode("c", "C", 2, "", -1), MakeNode("d", "D", 4, "Delta", 3)},
            "row"));
        QVERIFY(pData->hasText());
        QCOMPARE(pData->text(), "Alpha\n" + qstrUmlaut + "\n\nDelta");
        QCOMPARE(pData->data("text/plain"), ("Alpha\n" + qstrUmlaut + "\n\nDelta").toUtf8());
    }

    void addPageFormatsKeepsTheOtherFormatsOfAPayload()
    {
        QMimeData data;
        data.setData("application/x-page-own", "mine");
        CLS_DeviceTreeDragData::AddPageFormats({MakeNode("a", "A", 4, "Alpha", 1)}, &data);
        QCOMPARE(data.data("application/x-page-own"), QByteArray("mine"));
        QCOMPARE(data.text(), QString("Alpha"));
        QVERIFY2(!data.hasFormat(CLS_DeviceTreeDragData::s_pszTreeMime),
                 qPrintable(data.formats().join(", ")));
        QVector<CLS_CustomTreeNode> qvecRead;
        QCOMPARE(CLS_DeviceTreeDragData::Read(&data, qvecRead), 0);
        QCOMPARE(Describe(qvecRead), QStringList{"a|A|4|Alpha|1"});
        // A null payload is passed over.
        CLS_DeviceTreeDragData::AddPageFormats({MakeNode("a", "A", 4, "Alpha", 1)}, nullptr);
    }

    void nodesFormatIsCompactUtf8Json()
    {
        const QString qstrName = QString::fromUtf8("\xe5\x8d\x97\xe9\x97\xa8 \xf0\x9f\x93\xb7");
        const QByteArray qbaBytes = CLS_DeviceTreeDragData::Encode(
            {MakeNode("a", "A", 4, qstrName, 1), MakeNode("b", "B", 3, "x", 0)});
        QVERIFY2(qbaBytes.contains(qstrName.toUtf8()), qbaBytes.constData());
        QVERIFY2(!qbaBytes.contains('\n') && !qbaBytes.contains(": ") && !qbaBytes.contains(", "),
                 qbaBytes.constData());
        QVERIFY2(qbaBytes.startsWith("[{") && qbaBytes.endsWith("}]"), qbaBytes.constData());
    }

    void nodesFormatIsAnArrayOfObjectsWithExactlyTheFiveKeys()
    {
        const QVector<CLS_CustomTreeNode> qvecNodes{MakeNode("g1c0", "D1", 4, "Nord", 1),
                                                    MakeNode("g1", "", 2, "Gruppe", -1)};
        const QByteArray qbaBytes = CLS_DeviceTreeDragData::Encode(qvecNodes);
        QJsonParseError qjpeError;
        const QJsonDocument qjdDoc = QJsonDocument::fromJson(qbaBytes, &qjpeError);
        QCOMPARE(qjpeError.error, QJsonParseError::NoError);
        QVERIFY2(qjdDoc.isArray(), qbaBytes.constData());
        const QJsonArray qjaNodes = qjdDoc.array();
        QCOMPARE(qjaNodes.size(), qvecNodes.size());
        for (int i = 0; i < qjaNodes.size(); ++i) {
            QVERIFY2(qjaNodes[i].isObject(), qbaBytes.constData());
            const QJsonObject qjoNode = qjaNodes[i].toObject();
            QStringList qlstKeys = qjoNode.keys();
            qlstKeys.sort();
            QCOMPARE(qlstKeys, FiveKeys());
            QVERIFY(qjoNode["treeId"].isString());
            QVERIFY(qjoNode["devId"].isString());
            QVERIFY(qjoNode["name"].isString());
            QVERIFY(qjoNode["type"].isDouble());
            QVERIFY(qjoNode["channelNo"].isDouble());
            QCOMPARE(qjoNode["treeId"].toString(), qvecNodes[i].m_qstrTreeId);
            QCOMPARE(qjoNode["devId"].toString(), qvecNodes[i].m_qstrDevId);
            QCOMPARE(qjoNode["name"].toString(), qvecNodes[i].m_qstrName);
            QCOMPARE(qjoNode["type"].toInt(), qvecNodes[i].m_iType);
            QCOMPARE(qjoNode["channelNo"].toInt(), qvecNodes[i].m_iChannelNo);
        }
    }

    void readRefusesANullPayload()
    {
        QVector<CLS_CustomTreeNode> qvecNodes = PrefilledNodes();
        QCOMPARE(CLS_DeviceTreeDragData::Read(nullptr, qvecNodes), -1);
        QCOMPARE(Describe(qvecNodes), Describe(PrefilledNodes()));
    }

    void readRefusesAPayloadWithoutTheNodesFormat_data()
    {
        QTest::addColumn<QString>("qstrFormat");
        QTest::addColumn<QByteArray>("qbaBytes");
        const QByteArray qbaValid = ThreeNodeBytes();
        // The very bytes of a valid payload, under other formats.
        QTest::newRow("text only") << "text/plain" << qbaValid;
        QTest::newRow("tree format only") << CLS_DeviceTreeDragData::s_pszTreeMime << qbaValid;
        QTest::newRow("similar name") << "application/x-wgttree-node" << qbaValid;
    }

    void readRefusesAPayloadWithoutTheNodesFormat()
    {
        QFETCH(QString, qstrFormat);
        QFETCH(QByteArray, qbaBytes);
        QMimeData data;
        data.setData(qstrFormat, qbaBytes);
        QVector<CLS_CustomTreeNode> qvecNodes = PrefilledNodes();
        QCOMPARE(CLS_DeviceTreeDragData::Read(&data, qvecNodes), -1);
        QCOMPARE(Describe(qvecNodes), Describe(PrefilledNodes()));
    }

    void readRefusesWhatIsNotAnArrayOfWholeNodes_data()
    {
        QTest::addColumn<QByteArray>("qbaBytes");
        const QByteArray qbaNode = R"({"treeId":"a","devId":"A","type":4,"name":"Alpha","channelNo":1})";
        QTest::newRow("empty nodes format") << QByteArray();
        QTest::newRow("blank") << QByteArray("  \n");
        QTest::newRow("object instead of array") << qbaNode;
        QTest::newRow("string instead of array") << QByteArray(R"("[]")");
        QTest::newRow("number in array") << "[" + qbaNode + ",7]";
        QTest::newRow("string in array") << "[" + qbaNode + R"(,"a"])";
        QTest::newRow("null in array") << QByteArray("[null]");
        QTest::newRow("array in array") << "[[" + qbaNode + "]]";
        QTest::newRow("junk after array") << "[" + qbaNode + "]x";
        QTest::newRow("second document") << "[" + qbaNode + "][]";
        QTest::newRow("nested junk") << QByteArray(R"([{"treeId":{"a":[1,{"b":null}]},"devId":"A","type":4,)"
                                                   R"("name":"Alpha","channelNo":1}])");
        QTest::newRow("invalid utf-8 in a name")
            << QByteArray("[{\"treeId\":\"a\",\"devId\":\"A\",\"type\":4,"
                          "\"name\":\"\xc0\x80\",\"channelNo\":1}]");
        for (const QString& qstrKey : FiveKeys()) {
            QJsonObject qjoNode = QJsonDocument::fromJson(qbaNode).object();
            qjoNode.remove(qstrKey);
            QTest::newRow(qPrintable("missing " + qstrKey))
                << QJsonDocument(QJsonArray{QJsonDocument::fromJson(qbaNode).object(), qjoNode}).toJson();
        }
        const auto wrong = [&qbaNode](const char* _pszKey, const QJsonValue& _qjvValue) {
            QJsonObject qjoNode = QJsonDocument::fromJson(qbaNode).object();
            qjoNode.insert(_pszKey, _qjvValue);
            return QJsonDocument(QJsonArray{qjoNode}).toJson(QJsonDocument::Compact);
        };
        QTest::newRow("treeId a number") << wrong("treeId", 5);
        QTest::newRow("devId null") << wrong("devId", QJsonValue::Null);
        QTest::newRow("name a list") << wrong("name", QJsonArray{"Alpha"});
        QTest::newRow("type a string") << wrong("type", "4");
        QTest::newRow("type a boolean") << wrong("type", true);
        QTest::newRow("channelNo 1.5") << wrong("channelNo", 1.5);
        QTest::newRow("channelNo 1e12") << QByteArray(R"([{"treeId":"a","devId":"A","type":4,"name":"Alpha",)"
                                                      R"("channelNo":1e12}])");
        QTest::newRow("channelNo just above int") << wrong("channelNo", 2147483648.0);
        QTest::newRow("type just below int") << wrong("type", -2147483649.0);
        QTest::newRow("type tiny fraction") << wrong("type", 4.000001);
    }

    void readRefusesWhatIsNotAnArrayOfWholeNodes()
    {
        QFETCH(QByteArray, qbaBytes);
        QStringList qlstAfter;
        QCOMPARE(ReadIntoPrefilled(qbaBytes, qlstAfter), -1);
        QCOMPARE(qlstAfter, Describe(PrefilledNodes()));
    }

    void readRefusesEveryTruncationOfAValidPayload()
    {
        const QByteArray qbaWhole = ThreeNodeBytes();
        QStringList qlstAfter;
        QCOMPARE(ReadIntoPrefilled(qbaWhole, qlstAfter), 0);
        QCOMPARE(qlstAfter.size(), PrefilledNodes().size() + 3);
        for (int i = 0; i < qbaWhole.size(); ++i) {
            const QByteArray qbaPrefix = qbaWhole.left(i);
            const int iResult = ReadIntoPrefilled(qbaPrefix, qlstAfter);
            QVERIFY2(iResult == -1,
                     qPrintable(QString("%1 bytes: %2").arg(i).arg(QString::fromUtf8(qbaPrefix))));
            QCOMPARE(qlstAfter, Describe(PrefilledNodes()));
        }
    }

    void readRefusesRandomBytes()
    {
        QRandomGenerator random(20240611);
        const QByteArray qbaValid = ThreeNodeBytes();
        for (int iRun = 0; iRun < 4000; ++iRun) {
            QByteArray qbaBytes;
            // A quarter start like an array and a quarter like a node, so the parser gets past the
            // first byte; the rest is noise.
            if (iRun % 4 == 1)
                qbaBytes = "[";
            else if (iRun % 4 == 2)
                qbaBytes = qbaValid.left(1 + int(random.bounded(qbaValid.size() - 1)));
            const int iLength = int(random.bounded(1, 96));
            for (int i = 0; i < iLength; ++i)
                qbaBytes.append(char(random.bounded(256)));
            QStringList qlstAfter;
            const int iResult = ReadIntoPrefilled(qbaBytes, qlstAfter);
            QVERIFY2(iResult == -1,
                     qPrintable(QString("run %1: %2").arg(iRun).arg(QString(qbaBytes.toHex()))));
            QCOMPARE(qlstAfter, Describe(PrefilledNodes()));
        }
    }

    void emptyArrayGivesZeroAndAppendsNothing()
    {
        QStringList qlstAfter;
        QCOMPARE(ReadIntoPrefilled("[]", qlstAfter), 0);
        QCOMPARE(qlstAfter, Describe(PrefilledNodes()));
        QCOMPARE(ReadIntoPrefilled(" [ ] ", qlstAfter), 0);
        QCOMPARE(qlstAfter, Describe(PrefilledNodes()));
    }

    void extraKeysAreIgnored()
    {
        const QByteArray qbaBytes =
            R"([{"zone":"north","treeId":"a","devId":"A","type":4,"status":1,)"
            R"("name":"Alpha","extend":{"x":[1,2]},"channelNo":1,"treeParentId":"g"}])";
        QStringList qlstAfter;
        QCOMPARE(ReadIntoPrefilled(qbaBytes, qlstAfter), 0);
        QCOMPARE(qlstAfter, Describe(PrefilledNodes()) << "a|A|4|Alpha|1");
    }

    void extraKeysMayNestUpToThirtyTwoLevelsInAll()
    {
        // Two levels for the list and its object, the rest under an extra key; brackets inside a
        // string do not count.
        auto payload = [](int _iExtraLevels) {
            const QByteArray qbaName = QByteArrayLiteral("\"[[{{\\\"]]\"");
            return QByteArrayLiteral("[{\"treeId\":\"a\",\"devId\":\"A\",\"type\":4,\"name\":") + qbaName +
                   QByteArrayLiteral(",\"channelNo\":1,\"x\":") + QByteArray(_iExtraLevels, '[') +
                   QByteArray(_iExtraLevels, ']') + "}]";
        };
        QVector<CLS_CustomTreeNode> qvecNodes;
        QCOMPARE(CLS_DeviceTreeDragData::Decode(payload(30), qvecNodes), 0);
        QCOMPARE(Describe(qvecNodes), QStringList{"a|A|4|[[{{\"]]|1"});
        QCOMPARE(CLS_DeviceTreeDragData::Decode(payload(31), qvecNodes), -1);
        QCOMPARE(CLS_DeviceTreeDragData::Decode(payload(400), qvecNodes), -1);
        QCOMPARE(qvecNodes.size(), 1);
    }

    void wholeNumbersAtTheEdgesOfIntAreRead()
    {
        const QByteArray qbaBytes =
            R"([{"treeId":"a","devId":"","type":-2147483648,"name":"","channelNo":2147483647},)"
            R"({"treeId":"b","devId":"B","type":4.0,"name":"n","channelNo":-0}])";
        QVector<CLS_CustomTreeNode> qvecNodes;
        QCOMPARE(CLS_DeviceTreeDragData::Decode(qbaBytes, qvecNodes), 0);
        QCOMPARE(Describe(qvecNodes), (QStringList{"a||-2147483648||2147483647", "b|B|4|n|0"}));
    }

    void readAppendsToAPrefilledVector()
    {
        const std::unique_ptr<QMimeData> pData(CLS_DeviceTreeDragData::Create(
            {MakeNode("a", "A", 4, "Alpha", 1), MakeNode("b", "B", 3, "Beta", -1)}, "row"));
        QVector<CLS_CustomTreeNode> qvecNodes = PrefilledNodes();
        QCOMPARE(CLS_DeviceTreeDragData::Read(pData.get(), qvecNodes), 0);
        QCOMPARE(Describe(qvecNodes), Describe(PrefilledNodes()) << "a|A|4|Alpha|1"
                                                                 << "b|B|3|Beta|-1");
    }

    void decodeAppendsWhatEncodeWrote()
    {
        const QVector<CLS_CustomTreeNode> qvecNodes{MakeNode("x", "X", 17, "Out", 3)};
        QVector<CLS_CustomTreeNode> qvecRead = PrefilledNodes();
        QCOMPARE(CLS_DeviceTreeDragData::Decode(CLS_DeviceTreeDragData::Encode(qvecNodes), qvecRead), 0);
        QCOMPARE(Describe(qvecRead), Describe(PrefilledNodes() + qvecNodes));
    }
};

QTEST_GUILESS_MAIN(tst_DeviceTreeDragData)
#include "tst_DeviceTreeDragData.moc"
