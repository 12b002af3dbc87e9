// Logger::LogMessageStream with the recording logging library on the loader's path: one "PrintLog"
// call per statement, with the statement's own six values, the text exactly as written.
// The first slot must stay first: its statement is the one that binds the library.

#include "BinderLines.h"
#include "CLS_LogRecords.h"
#include "CLS_StdCapture.h"
#include "Logger.h"

#include <QtTest>

#include <stdexcept>
#include <thread>

class tst_LoggerRecord : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void shouldBindLoggingLibraryAtFirstStatement();
    void shouldSendOneRecordPerStatement();
    void shouldPassSixValuesOfStatement();
    void shouldTakeSourcePositionThroughMacro();
    void shouldSendEveryLevelUnfiltered_data();
    void shouldSendEveryLevelUnfiltered();
    void shouldSendEmptyTextRecord();
    void shouldPassTextWithoutAddedLineEnd_data();
    void shouldPassTextWithoutAddedLineEnd();
    void shouldFormatValuesAsStandardStream();
    void shouldNameLambdaBodyOperatorCall();
    void shouldSendNamedStreamAtScopeEnd();
    void shouldSendFromCatchBlock();
    void shouldSendFromOtherThread();
    void shouldWriteNothingToConsoleAfterBind();
};

void tst_LoggerRecord::init()
{
    CLS_LogRecords::Take();
}

void tst_LoggerRecord::shouldBindLoggingLibraryAtFirstStatement()
{
    QVERIFY(nullptr == dlopen("libLxLog.so", RTLD_NOW | RTLD_NOLOAD));

    CLS_StdCapture clsCapture;
    WGT_LOG("WgtTreeWidget", 3) << "first";
    clsCapture.Stop();

    QCOMPARE(clsCapture.OutLines(),
             FirstBindLines("libLxLog.so",
                            {"Init", "SetLoggerConfig", "SetLoggerConfigAll", "PrintLog", "UnInit"}));
    QCOMPARE(clsCapture.ErrLines(), QStringList());
    QCOMPARE(CLS_LogRecords::Lines(CLS_LogRecords::Take()),
             QStringList{"3|WgtTreeWidget|shouldBindLoggingLibraryAtFirstStatement|first"});
}

void tst_LoggerRecord::shouldSendOneRecordPerStatement()
{
    WGT_LOG("WgtTreeWidget", 0) << "one";
    WGT_LOG("WgtTreeWidget", 1) << "two"
                                << " and more";
    WGT_LOG("DevManage", 3) << "three";

    QCOMPARE(CLS_LogRecords::Lines(CLS_LogRecords::Take()),
             QStringList({"0|WgtTreeWidget|shouldSendOneRecordPerStatement|one",
                          "1|WgtTreeWidget|shouldSendOneRecordPerStatement|two and more",
                          "3|DevManage|shouldSendOneRecordPerStatement|three"}));
}

void tst_LoggerRecord::shouldPassSixValuesOfStatement()
{
    // clang-format off
    const int iLine = __LINE__; Logger::LogMessageStream(__FILE__, "default", __FUNCTION__, __LINE__, 1) << "abc " << 42;
    // clang-format on

    const std::vector<STRCT_LogRecord> vecRecords = CLS_LogRecords::Take();
    QCOMPARE(vecRecords.size(), size_t(1));
    const STRCT_LogRecord& strctRecord = vecRecords.front();
    QCOMPARE(strctRecord.m_iLevel, 1);
    QCOMPARE(QString::fromStdString(strctRecord.m_strModule), QString("default"));
    QCOMPARE(QString::fromStdString(strctRecord.m_strFile), QString(__FILE__));
    QCOMPARE(strctRecord.m_iLine, iLine);
    QCOMPARE(QString::fromStdString(strctRecord.m_strFunction), QString("shouldPassSixValuesOfStatement"));
    QCOMPARE(QString::fromStdString(strctRecord.m_strText), QString("abc 42"));
}

void tst_LoggerRecord::shouldTakeSourcePositionThroughMacro()
{
    const int iLine = __LINE__ + 1;
    WGT_LOG("WgtTreeWidget", 3) << "where";

    const std::vector<STRCT_LogRecord> vecRecords = CLS_LogRecords::Take();
    QCOMPARE(vecRecords.size(), size_t(1));
    QCOMPARE(QString::fromStdString(vecRecords.front().m_strFile), QString(__FILE__));
    QCOMPARE(vecRecords.front().m_iLine, iLine);
    QCOMPARE(QString::fromStdString(vecRecords.front().m_strFunction),
             QString("shouldTakeSourcePositionThroughMacro"));
}

void tst_LoggerRecord::shouldSendEveryLevelUnfiltered_data()
{
    QTest::addColumn<int>("_iLevel");
    QTest::newRow("request begins") << 0;
    QTest::newRow("request done") << 1;
    QTest::newRow("unused level 2") << 2;
    QTest::newRow("failure") << 3;
    QTest::newRow("beyond known") << 42;
    QTest::newRow("negative") << -1;
}

void tst_LoggerRecord::shouldSendEveryLevelUnfiltered()
{
    QFETCH(int, _iLevel);

    WGT_LOG("WgtTreeWidget", _iLevel) << "level";

    QCOMPARE(CLS_LogRecords::Lines(CLS_LogRecords::Take()),
             QStringList{QString("%1|WgtTreeWidget|shouldSendEveryLevelUnfiltered|level").arg(_iLevel)});
}

void tst_LoggerRecord::shouldSendEmptyTextRecord()
{
    WGT_LOG("WgtTreeWidget", 3);
    WGT_LOG("WgtTreeWidget", 1) << "";

    const std::vector<STRCT_LogRecord> vecRecords = CLS_LogRecords::Take();
    QCOMPARE(CLS_LogRecords::Lines(vecRecords), QStringList({"3|WgtTreeWidget|shouldSendEmptyTextRecord|",
                                                             "1|WgtTreeWidget|shouldSendEmptyTextRecord|"}));
    QVERIFY(vecRecords[0].m_strText.empty());
    QVERIFY(vecRecords[1].m_strText.empty());
}

void tst_LoggerRecord::shouldPassTextWithoutAddedLineEnd_data()
{
    QTest::addColumn<QString>("_qstrText");
    QTest::newRow("plain") << QStringLiteral("nullptr == pResourceTree ");
    QTest::newRow("inner line ends") << QStringLiteral("{\n    \"a\": 1\n}");
    QTest::newRow("own line end") << QStringLiteral("ends with a line end\n");
    QTest::newRow("spaces only") << QStringLiteral("   ");
}

void tst_LoggerRecord::shouldPassTextWithoutAddedLineEnd()
{
    QFETCH(QString, _qstrText);

    WGT_LOG("WgtTreeWidget", 3) << _qstrText.toStdString();

    const std::vector<STRCT_LogRecord> vecRecords = CLS_LogRecords::Take();
    QCOMPARE(vecRecords.size(), size_t(1));
    QCOMPARE(QString::fromStdString(vecRecords.front().m_strText), _qstrText);
}

void tst_LoggerRecord::shouldFormatValuesAsStandardStream()
{
    int iValue = 7;
    const void* pValue = &iValue;
    std::ostringstream ossExpected;
    ossExpected << "[" << true << "|" << false << "|" << -12 << "|" << 2.5 << "|" << pValue << "|"
                << std::string("text") << "|" << 'c' << "]";

    WGT_LOG("WgtTreeWidget", 1) << "[" << true << "|" << false << "|" << -12 << "|" << 2.5 << "|" << pValue
                                << "|" << std::string("text") << "|" << 'c' << "]";

    const std::vector<STRCT_LogRecord> vecRecords = CLS_LogRecords::Take();
    QCOMPARE(vecRecords.size(), size_t(1));
    QCOMPARE(QString::fromStdString(vecRecords.front().m_strText), QString::fromStdString(ossExpected.str()));
    QVERIFY(vecRecords.front().m_strText.rfind("[1|0|-12|2.5|", 0) == 0);
}

void tst_LoggerRecord::shouldNameLambdaBodyOperatorCall()
{
    auto funLog = [] { WGT_LOG("WgtTreeWidget", 3) << "LoopTask Fail"; };
    funLog();

    QCOMPARE(CLS_LogRecords::Lines(CLS_LogRecords::Take()),
             QStringList{"3|WgtTreeWidget|operator()|LoopTask Fail"});
}

void tst_LoggerRecord::shouldSendNamedStreamAtScopeEnd()
{
    {
        Logger::LogMessageStream clsLog(__FILE__, "default", __FUNCTION__, __LINE__, 1);
        clsLog << "built ";
        clsLog << "in steps";
        QVERIFY(CLS_LogRecords::Take().empty());
    }

    QCOMPARE(CLS_LogRecords::Lines(CLS_LogRecords::Take()),
             QStringList{"1|default|shouldSendNamedStreamAtScopeEnd|built in steps"});
}

void tst_LoggerRecord::shouldSendFromCatchBlock()
{
    try {
        throw std::runtime_error("boom");
    } catch (const std::exception& e) {
        WGT_LOG("WgtTreeWidget", 3) << "Init Fail" << e.what();
    }

    QCOMPARE(CLS_LogRecords::Lines(CLS_LogRecords::Take()),
             QStringList{"3|WgtTreeWidget|shouldSendFromCatchBlock|Init Failboom"});
}

void tst_LoggerRecord::shouldSendFromOtherThread()
{
    std::thread thrWorker([] { WGT_LOG("WgtTreeWidget", 3) << "nullptr == pApp "; });
    thrWorker.join();

    QCOMPARE(CLS_LogRecords::Lines(CLS_LogRecords::Take()),
             QStringList{"3|WgtTreeWidget|operator()|nullptr == pApp "});
}

void tst_LoggerRecord::shouldWriteNothingToConsoleAfterBind()
{
    WGT_LOG("WgtTreeWidget", 3) << "bind";

    CLS_StdCapture clsCapture;
    WGT_LOG("WgtTreeWidget", 3) << "second";
    WGT_LOG("WgtTreeWidget", 0) << "third";
    clsCapture.Stop();

    QCOMPARE(clsCapture.OutLines(), QStringList());
    QCOMPARE(clsCapture.ErrLines(), QStringList());
    QCOMPARE(CLS_LogRecords::Take().size(), size_t(3));
}

QTEST_GUILESS_MAIN(tst_LoggerRecord)
#include "tst_logger_record.moc"
