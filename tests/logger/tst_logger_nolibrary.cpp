// Logger::LogMessageStream without any logging library: statements cost nothing but the binder's
// failure line, which comes once, at the first statement of the process.
// The first slot must stay first: its statements are the first of the process.

#include "BinderLines.h"
#include "CLS_StdCapture.h"
#include "Logger.h"

#include <QtTest>

#include <dlfcn.h>

class tst_LoggerNoLibrary : public QObject
{
    Q_OBJECT

private slots:
    void shouldWriteFailLineOnceAtFirstStatement();
    void shouldDropRecordsWithoutOutput();
    void shouldGiveNoPrintLogFunction();
};

void tst_LoggerNoLibrary::shouldWriteFailLineOnceAtFirstStatement()
{
    CLS_StdCapture clsCapture;
    WGT_LOG("WgtTreeWidget", 3) << "first";
    WGT_LOG("WgtTreeWidget", 0) << "second";
    WGT_LOG("DevManage", 1);
    clsCapture.Stop();

    // The loader's text for the failed open, taken the same way.
    QVERIFY(nullptr == dlopen("libLxLog.so", RTLD_NOW));
    const std::string strError = dlerror();

    QCOMPARE(clsCapture.OutLines(), QStringList{LoadLine("libLxLog.so")});
    QCOMPARE(clsCapture.ErrLines(), QStringList{FailLine("libLxLog.so", strError)});
}

void tst_LoggerNoLibrary::shouldDropRecordsWithoutOutput()
{
    WGT_LOG("WgtTreeWidget", 3) << "first";

    CLS_StdCapture clsCapture;
    WGT_LOG("WgtTreeWidget", 3) << "dropped " << 1;
    WGT_LOG("WgtTreeWidget", 3);
    {
        Logger::LogMessageStream clsLog(__FILE__, "default", __FUNCTION__, __LINE__, 1);
        clsLog << "dropped too";
    }
    clsCapture.Stop();

    QCOMPARE(clsCapture.OutLines(), QStringList());
    QCOMPARE(clsCapture.ErrLines(), QStringList());
}

void tst_LoggerNoLibrary::shouldGiveNoPrintLogFunction()
{
    WGT_LOG("WgtTreeWidget", 3) << "first";

    QVERIFY(nullptr == Logger::GetModuleFun("PrintLog", ""));
    QVERIFY(nullptr == dlopen("libLxLog.so", RTLD_NOW | RTLD_NOLOAD));
}

QTEST_GUILESS_MAIN(tst_LoggerNoLibrary)
#include "tst_logger_nolibrary.moc"
