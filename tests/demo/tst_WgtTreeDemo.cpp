// The demo program as a user runs it without a display: offscreen, in screenshot mode. Each case
// starts wgttree-demo in a process of its own and checks the "key: value" summary it prints, the
// picture it writes, and its exit code.

#include "CLS_TestPaths.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// Room for a slow sanitizer build on a busy machine: the demo itself runs a few seconds.
const int CONST_RUN_MSECS = 240000;

struct STRCT_DemoRun
{
    int m_iExitCode = -1;
    bool m_blFinished = false;
    QString m_qstrOut;
    QString m_qstrErr;
    QMap<QString, QString> m_qmapSummary; // "key: value" lines of stdout; the last one of a key wins
};

// _qstrParamFile: the settings file of the run, or empty for the one of the test's environment.
STRCT_DemoRun RunDemo(const QStringList& _qlstArgs, const QString& _qstrParamFile = QString())
{
    STRCT_DemoRun clsRun;
    QProcess clsProcess;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    if (!_qstrParamFile.isEmpty())
        env.insert("LXPARAM_FILE", _qstrParamFile);
    // Full stacks on every allocation make a sanitizer build of a window with thousands of rows
    // take minutes; the demo's runs keep the suppressions and use the usual fast stacks (the
    // offscreen plugin's own frame, which the suppression names, is there either way).
    QString qstrLsan = env.value("LSAN_OPTIONS");
    if (!qstrLsan.isEmpty()) {
        qstrLsan.remove(QRegularExpression(":?fast_unwind_on_malloc=0"));
        env.insert("LSAN_OPTIONS", qstrLsan);
    }
    clsProcess.setProcessEnvironment(env);
    clsProcess.start(CLS_TestPaths::QFromProgramDir(WGT_DEMO_EXE), _qlstArgs);
    clsRun.m_blFinished = clsProcess.waitForStarted() && clsProcess.waitForFinished(CONST_RUN_MSECS);
    if (!clsRun.m_blFinished)
        clsProcess.kill();
    clsRun.m_iExitCode = clsProcess.exitStatus() == QProcess::NormalExit ? clsProcess.exitCode() : -1;
    clsRun.m_qstrOut = QString::fromLocal8Bit(clsProcess.readAllStandardOutput());
    clsRun.m_qstrErr = QString::fromLocal8Bit(clsProcess.readAllStandardError());
    const QRegularExpression qreLine("^([a-z][a-z ]*): (.*)$");
    for (const QString& qstrLine : clsRun.m_qstrOut.split('\n')) {
        const QRegularExpressionMatch match = qreLine.match(qstrLine.trimmed());
        if (match.hasMatch())
            clsRun.m_qmapSummary.insert(match.captured(1), match.captured(2));
    }
    return clsRun;
}

// What the run printed, for a failure message.
QByteArray Printed(const STRCT_DemoRun& _clsRun)
{
    return ("\n--- stdout ---\n" + _clsRun.m_qstrOut + "\n--- stderr ---\n" + _clsRun.m_qstrErr)
        .toLocal8Bit();
}

// A sanitizer build reports undefined behaviour without failing the run; any report fails the case.
bool HasSanitizerReport(const STRCT_DemoRun& _clsRun)
{
    return _clsRun.m_qstrErr.contains("runtime error:") || _clsRun.m_qstrErr.contains("Sanitizer");
}

int SummaryInt(const STRCT_DemoRun& _clsRun, const QString& _qstrKey)
{
    bool blOk = false;
    const int iValue = _clsRun.m_qmapSummary.value(_qstrKey).toInt(&blOk);
    return blOk ? iValue : -1;
}

// Channels of an installation file: the entries of every "channels" list, wherever it stands.
int CountChannels(const QJsonValue& _value)
{
    int iCount = 0;
    if (_value.isObject()) {
        const QJsonObject obj = _value.toObject();
        for (auto it = obj.begin(); it != obj.end(); ++it) {
            if ("channels" == it.key() && it.value().isArray())
                iCount += it.value().toArray().size();
            iCount += CountChannels(it.value());
        }
    } else if (_value.isArray()) {
        for (const QJsonValue& entry : _value.toArray())
            iCount += CountChannels(entry);
    }
    return iCount;
}

} // namespace

class tst_WgtTreeDemo : public QObject
{
    Q_OBJECT

private slots:
    void shouldShowSampleWithLiveStatesAndWriteItsPicture();
    void shouldShowSyntheticInstallationOfTwoThousandChannels();
    void shouldFailWithMessageOnBadInstallation_data();
    void shouldFailWithMessageOnBadInstallation();
    void shouldFailWhenPictureCannotBeWritten();
    void shouldKeepChosenSkinForLaterRuns();
    void shouldTypeSearchIntoResourceTree_data();
    void shouldTypeSearchIntoResourceTree();
    void shouldShowWindowTextsInChosenLanguage_data();
    void shouldShowWindowTextsInChosenLanguage();
};

void tst_WgtTreeDemo::shouldShowSampleWithLiveStatesAndWriteItsPicture()
{
    // Given the sample installation and its number of channels
    QFile qfileSample(CLS_TestPaths::QFromProgramDir(WGT_DEMO_SAMPLE));
    QVERIFY2(qfileSample.open(QIODevice::ReadOnly), qPrintable(qfileSample.fileName()));
    const QJsonDocument doc = QJsonDocument::fromJson(qfileSample.readAll());
    const int iSampleChannels = CountChannels(doc.object());
    QVERIFY(iSampleChannels > 0);
    QTemporaryDir qdirTmp;
    QVERIFY(qdirTmp.isValid());
    const QString qstrPng = qdirTmp.filePath("sample.png");

    // When the demo runs three seconds on it
    const STRCT_DemoRun clsRun = RunDemo({"--screenshot", qstrPng, "--seconds", "3"});

    // Then it ends well, with rows, the sample's channels, live states and a picture of the window
    QVERIFY2(clsRun.m_blFinished, Printed(clsRun));
    QVERIFY2(!HasSanitizerReport(clsRun), Printed(clsRun));
    QVERIFY2(clsRun.m_iExitCode == 0, Printed(clsRun));
    QVERIFY2(SummaryInt(clsRun, "rows") > iSampleChannels, Printed(clsRun));
    QVERIFY2(SummaryInt(clsRun, "channels") == iSampleChannels, Printed(clsRun));
    QVERIFY2(SummaryInt(clsRun, "status batches applied") >= 1, Printed(clsRun));
    QVERIFY2(SummaryInt(clsRun, "status entries applied") >= iSampleChannels, Printed(clsRun));
    const int iOnline = SummaryInt(clsRun, "channels online");
    QVERIFY2(iOnline > 0 && iOnline <= iSampleChannels, Printed(clsRun));
    QVERIFY2(SummaryInt(clsRun, "custom rows") > 1, Printed(clsRun));
    QVERIFY2(SummaryInt(clsRun, "favourite rows") > 1, Printed(clsRun));

    const QFileInfo info(qstrPng);
    QVERIFY2(info.exists() && info.size() > 0, Printed(clsRun));
    QCOMPARE(clsRun.m_qmapSummary.value("screenshot"),
             QString("%1 (%2 bytes)").arg(info.absoluteFilePath()).arg(info.size()));
    const QImage qimgShot(qstrPng);
    QVERIFY(!qimgShot.isNull());
    QCOMPARE(QString("%1x%2").arg(qimgShot.width()).arg(qimgShot.height()),
             clsRun.m_qmapSummary.value("window"));
}

void tst_WgtTreeDemo::shouldShowSyntheticInstallationOfTwoThousandChannels()
{
    QTemporaryDir qdirTmp;
    QVERIFY(qdirTmp.isValid());
    const QString qstrPng = qdirTmp.filePath("synthetic.png");

    const STRCT_DemoRun clsRun = RunDemo({"--channels", "2000", "--screenshot", qstrPng, "--seconds", "3"});

    QVERIFY2(clsRun.m_blFinished, Printed(clsRun));
    QVERIFY2(!HasSanitizerReport(clsRun), Printed(clsRun));
    QVERIFY2(clsRun.m_iExitCode == 0, Printed(clsRun));
    QVERIFY2(SummaryInt(clsRun, "channels") == 2000, Printed(clsRun));
    // Root, hosts of 16 channels and the channels at least.
    QVERIFY2(SummaryInt(clsRun, "hosts") == 125, Printed(clsRun));
    QVERIFY2(SummaryInt(clsRun, "rows") >= 1 + 125 + 2000, Printed(clsRun));
    QVERIFY2(SummaryInt(clsRun, "status batches applied") >= 1, Printed(clsRun));
    QVERIFY2(SummaryInt(clsRun, "status entries applied") >= 2000, Printed(clsRun));
    const QImage qimgShot(qstrPng);
    QVERIFY2(!qimgShot.isNull(), Printed(clsRun));
    QCOMPARE(QString("%1x%2").arg(qimgShot.width()).arg(qimgShot.height()),
             clsRun.m_qmapSummary.value("window"));
}

void tst_WgtTreeDemo::shouldFailWithMessageOnBadInstallation_data()
{
    QTest::addColumn<QByteArray>("content"); // empty: the file is not made at all
    QTest::newRow("not JSON") << QByteArray("{ \"version\": 1, \"groups\": [ unfinished");
    QTest::newRow("missing file") << QByteArray();
}

void tst_WgtTreeDemo::shouldFailWithMessageOnBadInstallation()
{
    QFETCH(QByteArray, content);
    QTemporaryDir qdirTmp;
    QVERIFY(qdirTmp.isValid());
    const QString qstrFile = qdirTmp.filePath("broken-installation.json");
    if (!content.isEmpty()) {
        QFile qfile(qstrFile);
        QVERIFY(qfile.open(QIODevice::WriteOnly));
        qfile.write(content);
    }
    const QString qstrPng = qdirTmp.filePath("never.png");

    const STRCT_DemoRun clsRun =
        RunDemo({"--installation", qstrFile, "--screenshot", qstrPng, "--seconds", "1"});

    QVERIFY2(clsRun.m_blFinished, Printed(clsRun));
    QVERIFY2(!HasSanitizerReport(clsRun), Printed(clsRun));
    QVERIFY2(clsRun.m_iExitCode != 0, Printed(clsRun));
    QVERIFY2(clsRun.m_qstrErr.contains("cannot load the installation") && clsRun.m_qstrErr.contains(qstrFile),
             Printed(clsRun));
    QVERIFY2(!QFileInfo::exists(qstrPng), Printed(clsRun));
    QVERIFY2(!clsRun.m_qmapSummary.contains("rows"), Printed(clsRun));
}

void tst_WgtTreeDemo::shouldFailWhenPictureCannotBeWritten()
{
    QTemporaryDir qdirTmp;
    QVERIFY(qdirTmp.isValid());
    const QString qstrPng = qdirTmp.filePath("no-such-folder/picture.png");

    const STRCT_DemoRun clsRun = RunDemo({"--screenshot", qstrPng, "--seconds", "0"});

    // The run itself went well: the summary is there, the picture line is not.
    QVERIFY2(clsRun.m_blFinished, Printed(clsRun));
    QVERIFY2(!HasSanitizerReport(clsRun), Printed(clsRun));
    QVERIFY2(clsRun.m_iExitCode != 0, Printed(clsRun));
    QVERIFY2(SummaryInt(clsRun, "rows") > 0, Printed(clsRun));
    QVERIFY2(!clsRun.m_qmapSummary.contains("screenshot"), Printed(clsRun));
    QVERIFY2(clsRun.m_qstrErr.contains("cannot write the screenshot " + qstrPng), Printed(clsRun));
}

void tst_WgtTreeDemo::shouldKeepChosenSkinForLaterRuns()
{
    // Given a settings file of its own
    QTemporaryDir qdirTmp;
    QVERIFY(qdirTmp.isValid());
    const QString qstrParamFile = qdirTmp.filePath("LxParam.ini");

    // When one run chooses the light skin and the next one chooses none
    const STRCT_DemoRun clsFirst = RunDemo(
        {"--skin", "light", "--screenshot", qdirTmp.filePath("a.png"), "--seconds", "0"}, qstrParamFile);
    const STRCT_DemoRun clsSecond =
        RunDemo({"--screenshot", qdirTmp.filePath("b.png"), "--seconds", "0"}, qstrParamFile);

    // Then both show the light skin: the choice is a stored setting
    QVERIFY2(clsFirst.m_iExitCode == 0 && !HasSanitizerReport(clsFirst), Printed(clsFirst));
    QCOMPARE(clsFirst.m_qmapSummary.value("skin"), QString("light"));
    QVERIFY2(clsSecond.m_iExitCode == 0 && !HasSanitizerReport(clsSecond), Printed(clsSecond));
    QCOMPARE(clsSecond.m_qmapSummary.value("skin"), QString("light"));
}

void tst_WgtTreeDemo::shouldTypeSearchIntoResourceTree_data()
{
    QTest::addColumn<QStringList>("qlstLanguage");
    QTest::addColumn<QString>("qstrText");
    QTest::addColumn<int>("iResults");
    QTest::addColumn<QString>("qstrList");
    // Each hit with the rows above it, the root left out.
    QStringList qlstSeven;
    for (int i = 10; i <= 16; ++i)
        qlstSeven << QString::fromUtf8("North 01-%1 \u2014 NVR 01 / North building / Campus").arg(i);
    QTest::newRow("English, seven results")
        << QStringList({"--language", "en"}) << "North 01-1" << 7 << qlstSeven.join(", ");
    QTest::newRow("two words in any order")
        << QStringList({"--language", "en"}) << "gate north" << 2
        << QString::fromUtf8("North gate entry \u2014 NVR 02 / North building / Campus, "
                             "North gate exit \u2014 NVR 02 / North building / Campus");
    QTest::newRow("an address") << QStringList({"--language", "en"}) << "10.1.0.14:2" << 1
                                << QString::fromUtf8("South gate \u2014 NVR 14 / South building / Campus");
    QTest::newRow("German, no results")
        << QStringList({"--language", "de"}) << "Garage" << 0 << "Keine Treffer";
}

void tst_WgtTreeDemo::shouldTypeSearchIntoResourceTree()
{
    QFETCH(QStringList, qlstLanguage);
    QFETCH(QString, qstrText);
    QFETCH(int, iResults);
    QFETCH(QString, qstrList);
    QTemporaryDir qdirTmp;
    QVERIFY(qdirTmp.isValid());

    const STRCT_DemoRun clsRun =
        RunDemo(qlstLanguage + QStringList({"--search", qstrText, "--screenshot",
                                            qdirTmp.filePath("search.png"), "--seconds", "1"}));

    QVERIFY2(clsRun.m_blFinished, Printed(clsRun));
    QVERIFY2(!HasSanitizerReport(clsRun), Printed(clsRun));
    QVERIFY2(clsRun.m_iExitCode == 0, Printed(clsRun));
    QVERIFY2(clsRun.m_qmapSummary.value("language") == qlstLanguage.last(), Printed(clsRun));
    QVERIFY2(clsRun.m_qmapSummary.value("search") == qstrText, Printed(clsRun));
    QVERIFY2(SummaryInt(clsRun, "search results") == iResults, Printed(clsRun));
    QVERIFY2(clsRun.m_qmapSummary.value("search list") == qstrList, Printed(clsRun));
}

void tst_WgtTreeDemo::shouldShowWindowTextsInChosenLanguage_data()
{
    QTest::addColumn<QStringList>("qlstLanguage");
    QTest::addColumn<QStringList>("qlstCaptions");  // summary lines expected as they are printed
    QTest::addColumn<QString>("qstrStatusPattern"); // the whole status line, numbers as \d+
    QTest::newRow("German") << QStringList({"--language", "de"})
                            << QStringList({"demo language: de", "caption title: WgtTreeWidget-Demo",
                                            "caption resources: Ressourcen",
                                            QString::fromUtf8("caption filter: Alle Kanäle"),
                                            "caption events: Ereignisse"})
                            << QString::fromUtf8("\\d+ Hosts  ·  \\d+ Kanäle, \\d+ online  ·  "
                                                 "\\d+ Statuspakete  ·  \\d+ simulierte Änderungen");
    QTest::newRow("Simplified Chinese")
        << QStringList({"--language", "zh_CN"})
        << QStringList({"demo language: zh_CN", QString::fromUtf8("caption title: WgtTreeWidget 演示"),
                        QString::fromUtf8("caption resources: 资源"),
                        QString::fromUtf8("caption filter: 全部通道"),
                        QString::fromUtf8("caption events: 事件")})
        << QString::fromUtf8(
               "\\d+ 台主机  ·  \\d+ 个通道，\\d+ 个在线  ·  \\d+ 个状态批次  ·  \\d+ 次模拟变化");
    const QStringList qlstEnglish = {"demo language: en", "caption title: WgtTreeWidget demo",
                                     "caption resources: Resources", "caption filter: All channels",
                                     "caption events: Events"};
    const QString qstrEnglishStatus = QString::fromUtf8(
        "\\d+ hosts  ·  \\d+ channels, \\d+ on line  ·  \\d+ status batches  ·  \\d+ simulated changes");
    QTest::newRow("English") << QStringList({"--language", "en"}) << qlstEnglish << qstrEnglishStatus;
    QTest::newRow("no translation, English")
        << QStringList({"--language", "fr"}) << qlstEnglish << qstrEnglishStatus;
}

void tst_WgtTreeDemo::shouldShowWindowTextsInChosenLanguage()
{
    QFETCH(QStringList, qlstLanguage);
    QFETCH(QStringList, qlstCaptions);
    QFETCH(QString, qstrStatusPattern);
    QTemporaryDir qdirTmp;
    QVERIFY(qdirTmp.isValid());

    // When the demo runs in the language, until its first status batch
    const STRCT_DemoRun clsRun = RunDemo(
        qlstLanguage + QStringList({"--screenshot", qdirTmp.filePath("language.png"), "--seconds", "0"}));

    // Then the window's own texts are in it, the status line with its numbers filled in
    QVERIFY2(clsRun.m_blFinished, Printed(clsRun));
    QVERIFY2(!HasSanitizerReport(clsRun), Printed(clsRun));
    QVERIFY2(clsRun.m_iExitCode == 0, Printed(clsRun));
    for (const QString& qstrLine : qAsConst(qlstCaptions)) {
        const int iColon = qstrLine.indexOf(": ");
        QVERIFY2(clsRun.m_qmapSummary.value(qstrLine.left(iColon)) == qstrLine.mid(iColon + 2),
                 qPrintable("expected \"" + qstrLine + "\"" + Printed(clsRun)));
    }
    const QRegularExpression qreStatus(QRegularExpression::anchoredPattern(qstrStatusPattern));
    QVERIFY2(qreStatus.match(clsRun.m_qmapSummary.value("caption status")).hasMatch(), Printed(clsRun));
    // and the summary itself stays as it is in every language: English keys, plain numbers
    QVERIFY2(SummaryInt(clsRun, "channels") > 0 && SummaryInt(clsRun, "status batches applied") >= 1,
             Printed(clsRun));
}

QTEST_GUILESS_MAIN(tst_WgtTreeDemo)
#include "tst_WgtTreeDemo.moc"
