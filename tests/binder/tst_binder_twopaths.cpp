// One library asked for under two different path texts is opened twice and cached twice.

#include "BinderLines.h"
#include "CLS_StdCapture.h"
#include "CLS_TestPaths.h"
#include "Util.h"

#include <QtTest>

namespace {
const std::string CONST_PATH_A =
    CLS_TestPaths::FromProgramDir(WGT_TEST_LIB_ROOT) + "/binder_a/libLxFixture.so";
const std::string CONST_PATH_B =
    CLS_TestPaths::FromProgramDir(WGT_TEST_LIB_ROOT) + "/binder_a/../binder_a/libLxFixture.so";
const std::vector<std::string> CONST_FUNS{"FixtureAlpha", "FixtureBeta"};
} // namespace

class tst_BinderTwoPaths : public QObject
{
    Q_OBJECT

private slots:
    void shouldOpenSameLibraryOncePerPath();
};

void tst_BinderTwoPaths::shouldOpenSameLibraryOncePerPath()
{
    CLS_StdCapture clsCapture;
    std::map<std::string, void*> mapA = Util::GetDllFunction(CONST_PATH_A, CONST_FUNS);
    std::map<std::string, void*> mapB = Util::GetDllFunction(CONST_PATH_B, CONST_FUNS);
    std::map<std::string, void*> mapAgainA = Util::GetDllFunction(CONST_PATH_A, CONST_FUNS);
    std::map<std::string, void*> mapAgainB = Util::GetDllFunction(CONST_PATH_B, CONST_FUNS);
    clsCapture.Stop();

    // Each path text is opened once, then both answer from the cache.
    QStringList qlstExpected = FirstBindLines(CONST_PATH_A, CONST_FUNS);
    qlstExpected << FirstBindLines(CONST_PATH_B, CONST_FUNS);
    qlstExpected << CachedBindLines(CONST_FUNS) << CachedBindLines(CONST_FUNS);
    QCOMPARE(clsCapture.OutLines(), qlstExpected);
    QCOMPARE(clsCapture.ErrLines(), QStringList());

    // Both handles lead to the one loaded file.
    QVERIFY(nullptr != mapA["FixtureAlpha"]);
    QCOMPARE(mapB, mapA);
    QCOMPARE(mapAgainA, mapA);
    QCOMPARE(mapAgainB, mapA);
}

QTEST_GUILESS_MAIN(tst_BinderTwoPaths)
#include "tst_binder_twopaths.moc"
