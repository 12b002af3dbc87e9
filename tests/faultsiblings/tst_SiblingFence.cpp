// The fence itself: a call that goes through gives its own result and leaves no record; one that
// throws gives the failure value and one level-3 record naming the caller, the operation and the
// exception; the log writer's own form records nothing.

#include "CLS_LogRecords.h"
#include "Logger.h"
#include "SiblingFence.h"

#include <QtTest>

#include <stdexcept>
#include <string>

namespace {

int Answer(int _iThrow)
{
    if (1 == _iThrow)
        throw std::runtime_error("refused");
    if (2 == _iThrow)
        throw std::string("not a std::exception");
    return 42;
}

} // namespace

class tst_SiblingFence : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Logger::GetModuleFun("PrintLog", ""); }
    void init() { CLS_LogRecords::Take(); }

    void shouldGiveTheResultAndLogNothingWhenNothingThrows()
    {
        QCOMPARE(WGT_SIBLING_CALL("Answer", -1, Answer(0)), 42);
        int iRuns = 0;
        QVERIFY(WGT_SIBLING_RUN("Answer", ++iRuns; Answer(0)));
        QCOMPARE(iRuns, 1);
        QCOMPARE(CLS_LogRecords::Lines(CLS_LogRecords::Take()), QStringList());
    }

    void shouldGiveTheFailureAndLogOnceWhenTheCallThrows_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("text");
        QTest::newRow("std::exception") << 1 << "refused";
        QTest::newRow("anything else") << 2 << "unknown exception";
    }

    void shouldGiveTheFailureAndLogOnceWhenTheCallThrows()
    {
        QFETCH(int, kind);
        QFETCH(QString, text);
        QCOMPARE(WGT_SIBLING_CALL("Answer", -1, Answer(kind)), -1);
        QVERIFY(!WGT_SIBLING_RUN("Answer", Answer(kind)));
        const QString qstrLine =
            QString("3|WgtTreeWidget|shouldGiveTheFailureAndLogOnceWhenTheCallThrows|sibling call threw "
                    "operation:[Answer] exception:[%1]")
                .arg(text);
        QCOMPARE(CLS_LogRecords::Lines(CLS_LogRecords::Take()), QStringList({qstrLine, qstrLine}));
    }

    void shouldConvertTheFailureToTheCallsResultType()
    {
        const std::string strDefault = "dark";
        auto funThrow = []() -> std::string { throw std::runtime_error("no settings"); };
        QCOMPARE(WGT_SIBLING_CALL("GetParam", strDefault, funThrow()), strDefault);
        auto funNull = []() -> QObject* { throw 1; };
        QCOMPARE(WGT_SIBLING_CALL("GetAppSignals", nullptr, funNull()), static_cast<QObject*>(nullptr));
        QCOMPARE(CLS_LogRecords::Take().size(), size_t(2));
    }

    void shouldRecordNothingWhenTheLogWriterThrows()
    {
        QVERIFY(!SiblingFence::RunUnlogged([]() { throw std::runtime_error("log writer"); }));
        QVERIFY(SiblingFence::RunUnlogged([]() {}));
        QCOMPARE(CLS_LogRecords::Take().size(), size_t(0));
    }
};

QTEST_MAIN(tst_SiblingFence)
#include "tst_SiblingFence.moc"
