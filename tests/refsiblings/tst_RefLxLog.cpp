// The reference logging library "libLxLog.so" behind the Logger gateway: every record one whole
// line with all its fields in the log file, copies to the standard error stream from a level on,
// configuration by environment and by its functions, and whole lines from many threads.

#include "CLS_StderrCapture.h"
#include "Logger.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <string>
#include <thread>
#include <vector>

#include <dlfcn.h>

namespace {

using PFun_SetLoggerConfig = int (*)(const char*, const char*);
using PFun_SetLoggerConfigAll = int (*)(const char*, int, int);
using PFun_Init = int (*)(const char*);
using PFun_UnInit = void (*)();
using PFun_FilePath = int (*)(char*, int);

// A function of the logging library through the gateway; fails the test when missing.
template <typename T>
T LogFun(const char* _pName)
{
    return reinterpret_cast<T>(Logger::GetModuleFun(_pName, ""));
}

int SetConfig(const char* _pKey, const char* _pValue)
{
    auto pFun = LogFun<PFun_SetLoggerConfig>("SetLoggerConfig");
    return nullptr == pFun ? -100 : pFun(_pKey, _pValue);
}

// The library's own idea of its file; the control function is outside the gateway's list.
QString LibraryFilePath()
{
    void* pHandle = dlopen("libLxLog.so", RTLD_NOW | RTLD_NOLOAD);
    if (nullptr == pHandle) {
        return "<libLxLog.so not loaded>";
    }
    auto pFun = reinterpret_cast<PFun_FilePath>(dlsym(pHandle, "LxLogCtl_FilePath"));
    char szPath[4096] = {0};
    const int iLength = nullptr == pFun ? -1 : pFun(szPath, sizeof(szPath));
    dlclose(pHandle);
    return iLength < 0 ? QString("<no path>") : QString::fromUtf8(szPath);
}

QStringList ReadLines(const QString& _qstrPath)
{
    QFile file(_qstrPath);
    if (!file.open(QIODevice::ReadOnly)) {
        return {QString("<cannot open %1>").arg(_qstrPath)};
    }
    QStringList qlstLines = QString::fromUtf8(file.readAll()).split('\n');
    if (!qlstLines.isEmpty() && qlstLines.last().isEmpty()) {
        qlstLines.removeLast(); // after the last line end
    }
    return qlstLines;
}

// time with ms, [level], [thread], [module], [file:line], [function], text
const QRegularExpression CONST_LINE_PATTERN(
    "^(\\d{4}-\\d{2}-\\d{2} \\d{2}:\\d{2}:\\d{2}\\.\\d{3}) \\[(-?\\d+)\\] \\[(\\d+)\\] \\[([^\\]]*)\\] "
    "\\[([^\\]:]*):(-?\\d+)\\] \\[([^\\]]*)\\] (.*)$");

} // namespace

class tst_RefLxLog : public QObject
{
    Q_OBJECT

private slots:
    // First: it sees the library as the environment left it.
    void shouldStartFromEnvironment();
    void init();
    void shouldWriteEveryFieldOfRecordAsOneLine();
    void shouldWriteRecordWithoutTextAsLine();
    void shouldKeepMultiLineTextOnOneLine();
    void shouldCopyRecordsAtOrAboveStderrLevel_data();
    void shouldCopyRecordsAtOrAboveStderrLevel();
    void shouldCopyNothingToStderrAtLevelNone();
    void shouldLeaveRecordsBelowFileLevelOutOfFile();
    void shouldSetAllSettingsAtOnce();
    void shouldRejectUnknownKeyAndBadLevel();
    void shouldFailForFileThatCannotBeOpened();
    void shouldAppendAfterUnInit();
    void shouldWriteWholeLinesFromManyThreads();

private:
    QTemporaryDir m_tmpDir;
    QString m_qstrFile;
    int m_iCase = 0; // a fresh file for every case and data row
};

void tst_RefLxLog::shouldStartFromEnvironment()
{
    // Given the environment of this process, when the first record is logged
    const int iLine = __LINE__ + 1;
    WGT_LOG("RefLog", 3) << "first record";

    // then it is in the file the environment names, or in the default one in the temp folder.
    const QByteArray qbaFile = qgetenv("LXLOG_FILE");
    const QString qstrExpected =
        qbaFile.isEmpty() ? QDir::tempPath() + "/" +
                                QFileInfo("/proc/self/exe").canonicalFilePath().section('/', -1) + ".log"
                          : QString::fromUtf8(qbaFile);
    QCOMPARE(LibraryFilePath(), qstrExpected);
    const QStringList qlstLines = ReadLines(qstrExpected);
    QVERIFY2(!qlstLines.isEmpty() &&
                 qlstLines.last().endsWith("[RefLog] [tst_RefLxLog.cpp:" + QString::number(iLine) +
                                           "] [shouldStartFromEnvironment] first record"),
             qPrintable(qlstLines.join('\n')));

    // The stderr level of the environment: errors by default, none when LXLOG_STDERR_LEVEL=none.
    CLS_StderrCapture clsCapture;
    WGT_LOG("RefLog", 3) << "error record";
    WGT_LOG("RefLog", 2) << "warning record";
    const QString qstrStderr = QString::fromUtf8(clsCapture.Take());
    const bool blNone = "none" == qgetenv("LXLOG_STDERR_LEVEL");
    QCOMPARE(qstrStderr.contains("error record"), !blNone);
    QVERIFY2(!qstrStderr.contains("warning record"), qPrintable(qstrStderr));

    // LXLOG_LEVEL keeps lower records out of the file.
    WGT_LOG("RefLog", 0) << "request begins";
    const int iFileLevel =
        qEnvironmentVariableIsSet("LXLOG_LEVEL") ? qEnvironmentVariableIntValue("LXLOG_LEVEL") : 0;
    QCOMPARE(ReadLines(qstrExpected).join('\n').contains("request begins"), iFileLevel <= 0);
}

void tst_RefLxLog::init()
{
    if (QLatin1String("shouldStartFromEnvironment") == QLatin1String(QTest::currentTestFunction())) {
        return; // that case is about the configuration before anything is set
    }
    QVERIFY(m_tmpDir.isValid());
    m_qstrFile = m_tmpDir.filePath(QString("%1-%2.log").arg(QTest::currentTestFunction()).arg(m_iCase++));
    QCOMPARE(SetConfig("file", m_qstrFile.toUtf8().constData()), 0);
    QCOMPARE(SetConfig("level", "0"), 0);
    QCOMPARE(SetConfig("stderr_level", "none"), 0);
}

void tst_RefLxLog::shouldWriteEveryFieldOfRecordAsOneLine()
{
    const int iLine = __LINE__ + 1;
    WGT_LOG("WgtTreeWidget", 1) << "handle " << true << " key:[" << 42 << "]";

    const QStringList qlstLines = ReadLines(m_qstrFile);
    QCOMPARE(qlstLines.size(), 1);
    const QRegularExpressionMatch match = CONST_LINE_PATTERN.match(qlstLines.first());
    QVERIFY2(match.hasMatch(), qPrintable(qlstLines.first()));
    const QDateTime dtLogged = QDateTime::fromString(match.captured(1), "yyyy-MM-dd HH:mm:ss.zzz");
    QVERIFY2(dtLogged.isValid() && qAbs(dtLogged.msecsTo(QDateTime::currentDateTime())) < 60000,
             qPrintable(match.captured(1)));
    QCOMPARE(match.captured(2), QString("1"));
    QVERIFY(match.captured(3).toLongLong() > 0);
    QCOMPARE(match.captured(4), QString("WgtTreeWidget"));
    QCOMPARE(match.captured(5), QString("tst_RefLxLog.cpp"));
    QCOMPARE(match.captured(6).toInt(), iLine);
    QCOMPARE(match.captured(7), QString("shouldWriteEveryFieldOfRecordAsOneLine"));
    QCOMPARE(match.captured(8), QString("handle 1 key:[42]"));
}

void tst_RefLxLog::shouldWriteRecordWithoutTextAsLine()
{
    WGT_LOG("RefLog", 3);

    const QStringList qlstLines = ReadLines(m_qstrFile);
    QCOMPARE(qlstLines.size(), 1);
    QVERIFY2(qlstLines.first().endsWith("[shouldWriteRecordWithoutTextAsLine] "),
             qPrintable(qlstLines.first()));
}

void tst_RefLxLog::shouldKeepMultiLineTextOnOneLine()
{
    WGT_LOG("RefLog", 1) << "param:[{\n    \"a\": 1\r\n}]";

    const QStringList qlstLines = ReadLines(m_qstrFile);
    QCOMPARE(qlstLines.size(), 1);
    const QRegularExpressionMatch match = CONST_LINE_PATTERN.match(qlstLines.first());
    QVERIFY2(match.hasMatch(), qPrintable(qlstLines.first()));
    QCOMPARE(match.captured(8), QString("param:[{\\n    \"a\": 1\\r\\n}]"));
}

void tst_RefLxLog::shouldCopyRecordsAtOrAboveStderrLevel_data()
{
    QTest::addColumn<QString>("qstrLevel");
    QTest::addColumn<QString>("qstrExpected"); // levels on stderr, in order

    QTest::newRow("errors") << "3"
                            << "3";
    QTest::newRow("requests done and up") << "1"
                                          << "1,3";
    QTest::newRow("everything") << "0"
                                << "0,1,3";
    QTest::newRow("negative is everything") << "-5"
                                            << "0,1,3";
}

void tst_RefLxLog::shouldCopyRecordsAtOrAboveStderrLevel()
{
    QFETCH(QString, qstrLevel);
    QFETCH(QString, qstrExpected);
    QCOMPARE(SetConfig("stderr_level", qstrLevel.toUtf8().constData()), 0);

    QStringList qlstStderrLevels;
    {
        CLS_StderrCapture clsCapture;
        for (int iLevel : {0, 1, 3}) {
            WGT_LOG("RefLog", iLevel) << "level " << iLevel;
        }
        const QStringList qlstCaught = QString::fromUtf8(clsCapture.Take()).split('\n', Qt::SkipEmptyParts);
        for (const QString& qstrLine : qlstCaught) {
            const QRegularExpressionMatch match = CONST_LINE_PATTERN.match(qstrLine);
            QVERIFY2(match.hasMatch(), qPrintable(qstrLine));
            QCOMPARE(match.captured(8), "level " + match.captured(2));
            qlstStderrLevels << match.captured(2);
        }
    }
    QCOMPARE(qlstStderrLevels.join(','), qstrExpected);
    // The file has every record whatever goes to stderr.
    QCOMPARE(ReadLines(m_qstrFile).size(), 3);
}

void tst_RefLxLog::shouldCopyNothingToStderrAtLevelNone()
{
    CLS_StderrCapture clsCapture;
    WGT_LOG("RefLog", 3) << "failure";
    WGT_LOG("RefLog", 100) << "worse";
    QCOMPARE(clsCapture.Take(), QByteArray());
    QCOMPARE(ReadLines(m_qstrFile).size(), 2);
}

void tst_RefLxLog::shouldLeaveRecordsBelowFileLevelOutOfFile()
{
    QCOMPARE(SetConfig("level", "1"), 0);
    WGT_LOG("RefLog", 0) << "begins";
    WGT_LOG("RefLog", 1) << "done";
    WGT_LOG("RefLog", 3) << "failed";

    QStringList qlstTexts;
    for (const QString& qstrLine : ReadLines(m_qstrFile)) {
        qlstTexts << CONST_LINE_PATTERN.match(qstrLine).captured(8);
    }
    QCOMPARE(qlstTexts, QStringList({"done", "failed"}));
}

void tst_RefLxLog::shouldSetAllSettingsAtOnce()
{
    auto pFunAll = LogFun<PFun_SetLoggerConfigAll>("SetLoggerConfigAll");
    QVERIFY(nullptr != pFunAll);
    const QString qstrOther = m_tmpDir.filePath("all.log");
    QCOMPARE(pFunAll(qstrOther.toUtf8().constData(), 1, 3), 0);

    QString qstrStderr;
    {
        CLS_StderrCapture clsCapture;
        WGT_LOG("RefLog", 0) << "begins";
        WGT_LOG("RefLog", 1) << "done";
        WGT_LOG("RefLog", 3) << "failed";
        qstrStderr = QString::fromUtf8(clsCapture.Take());
    }
    QCOMPARE(ReadLines(qstrOther).size(), 2);
    QCOMPARE(qstrStderr.count('\n'), 1);
    QVERIFY2(qstrStderr.endsWith("failed\n"), qPrintable(qstrStderr));
    QCOMPARE(QFileInfo(m_qstrFile).size(), 0); // the file of init() was never written

    // A negative stderr level is "none"; an empty file keeps the current one.
    QCOMPARE(pFunAll(nullptr, 0, -1), 0);
    CLS_StderrCapture clsCapture;
    WGT_LOG("RefLog", 3) << "quiet";
    QCOMPARE(clsCapture.Take(), QByteArray());
    QCOMPARE(ReadLines(qstrOther).size(), 3);
}

void tst_RefLxLog::shouldRejectUnknownKeyAndBadLevel()
{
    QCOMPARE(SetConfig("colour", "red"), -1);
    QCOMPARE(SetConfig(nullptr, "1"), -1);
    QCOMPARE(SetConfig("level", "high"), -1);
    QCOMPARE(SetConfig("stderr_level", ""), -1);
    QCOMPARE(SetConfig("stderr_level", "2x"), -1);
    // A refused value leaves the level as it was: everything still reaches the file.
    WGT_LOG("RefLog", 0) << "kept";
    QCOMPARE(ReadLines(m_qstrFile).size(), 1);
}

void tst_RefLxLog::shouldFailForFileThatCannotBeOpened()
{
    const QString qstrBad = m_tmpDir.filePath("missing-folder/x.log");
    auto pFunInit = LogFun<PFun_Init>("Init");
    QVERIFY(nullptr != pFunInit);
    QCOMPARE(SetConfig("file", qstrBad.toUtf8().constData()), -1);
    QCOMPARE(pFunInit(qstrBad.toUtf8().constData()), -1);
    QCOMPARE(SetConfig("stderr_level", "3"), 0);

    // Records still reach stderr, and logging goes on without a file.
    CLS_StderrCapture clsCapture;
    WGT_LOG("RefLog", 3) << "no file";
    QVERIFY(QString::fromUtf8(clsCapture.Take()).endsWith("no file\n"));
    QVERIFY(!QFileInfo::exists(qstrBad));
}

void tst_RefLxLog::shouldAppendAfterUnInit()
{
    WGT_LOG("RefLog", 1) << "before";
    auto pFunUnInit = LogFun<PFun_UnInit>("UnInit");
    QVERIFY(nullptr != pFunUnInit);
    pFunUnInit();
    WGT_LOG("RefLog", 1) << "after";

    const QStringList qlstLines = ReadLines(m_qstrFile);
    QCOMPARE(qlstLines.size(), 2);
    QVERIFY(qlstLines.at(0).endsWith("before"));
    QVERIFY(qlstLines.at(1).endsWith("after"));
}

void tst_RefLxLog::shouldWriteWholeLinesFromManyThreads()
{
    const int iThreads = 8;
    const int iRecords = 400;
    const int iWidth = 300;
    // Given eight threads that log long lines of one letter each at once
    std::vector<std::thread> vecThreads;
    for (int i = 0; i < iThreads; ++i) {
        vecThreads.emplace_back([i]() {
            const std::string strBody(iWidth, char('a' + i));
            for (int iRecord = 0; iRecord < iRecords; ++iRecord) {
                WGT_LOG("RefLog", 1) << "t" << i << ":" << strBody;
            }
        });
    }
    for (std::thread& thread : vecThreads) {
        thread.join();
    }

    // then every line is whole: all fields, and a body of one thread only.
    const QStringList qlstLines = ReadLines(m_qstrFile);
    QCOMPARE(qlstLines.size(), iThreads * iRecords);
    QVector<int> qvecPerThread(iThreads, 0);
    for (const QString& qstrLine : qlstLines) {
        const QRegularExpressionMatch match = CONST_LINE_PATTERN.match(qstrLine);
        QVERIFY2(match.hasMatch(), qPrintable(qstrLine));
        const QString qstrText = match.captured(8);
        const int iThread = qstrText.mid(1, qstrText.indexOf(':') - 1).toInt();
        QVERIFY2(iThread >= 0 && iThread < iThreads, qPrintable(qstrLine));
        QCOMPARE(qstrText, QString("t%1:%2").arg(iThread).arg(QString(iWidth, QChar('a' + iThread))));
        ++qvecPerThread[iThread];
    }
    QCOMPARE(qvecPerThread, QVector<int>(iThreads, iRecords));
}

QTEST_GUILESS_MAIN(tst_RefLxLog)
#include "tst_RefLxLog.moc"
