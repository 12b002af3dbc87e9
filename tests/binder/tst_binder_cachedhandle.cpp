// The first bind of a library prints its real path in every "sucess" line; a later bind through
// the cached handle prints an empty path. The one-name overload resolves afresh on every call.
// The first slot must stay first: it is the one that opens the library.

#include "BinderLines.h"
#include "CLS_StdCapture.h"
#include "CLS_TestPaths.h"
#include "Util.h"

#include <QtTest>

namespace {
const std::string CONST_PATH = CLS_TestPaths::FromProgramDir(WGT_TEST_LIB_ROOT) + "/binder_a/libLxFixture.so";
const std::vector<std::string> CONST_FUNS{"FixtureAlpha", "FixtureBeta"};
} // namespace

class tst_BinderCachedHandle : public QObject
{
    Q_OBJECT

private slots:
    void shouldPrintRealPathOnFirstBind();
    void shouldPrintEmptyPathThroughCachedHandle();
    void shouldResolveAgainOnEveryNameCall();
    void shouldGiveNullAndSucessLineForMissingName();
};

void tst_BinderCachedHandle::shouldPrintRealPathOnFirstBind()
{
    CLS_StdCapture clsCapture;
    std::map<std::string, void*> mapFuns = Util::GetDllFunction(CONST_PATH, CONST_FUNS);
    clsCapture.Stop();

    QCOMPARE(clsCapture.OutLines(), FirstBindLines(CONST_PATH, CONST_FUNS));
    QCOMPARE(clsCapture.ErrLines(), QStringList());
    QCOMPARE(mapFuns.size(), size_t(2));
    QVERIFY(nullptr != mapFuns["FixtureAlpha"]);
    QVERIFY(nullptr != mapFuns["FixtureBeta"]);
    QCOMPARE(reinterpret_cast<int (*)()>(mapFuns["FixtureBeta"])(), 2);
}

void tst_BinderCachedHandle::shouldPrintEmptyPathThroughCachedHandle()
{
    const std::map<std::string, void*> mapFirst = Util::GetDllFunction(CONST_PATH, CONST_FUNS);

    CLS_StdCapture clsCapture;
    const std::map<std::string, void*> mapFuns = Util::GetDllFunction(CONST_PATH, CONST_FUNS);
    clsCapture.Stop();

    QCOMPARE(clsCapture.OutLines(), CachedBindLines(CONST_FUNS));
    QCOMPARE(clsCapture.ErrLines(), QStringList());
    QCOMPARE(mapFuns, mapFirst);
}

void tst_BinderCachedHandle::shouldResolveAgainOnEveryNameCall()
{
    Util::GetDllFunction(CONST_PATH, CONST_FUNS);

    CLS_StdCapture clsCapture;
    void* pFirst = Util::GetDllFunction(CONST_PATH, std::string("FixtureAlpha"));
    void* pSecond = Util::GetDllFunction(CONST_PATH, std::string("FixtureAlpha"));
    clsCapture.Stop();

    QCOMPARE(clsCapture.OutLines(), CachedBindLines({"FixtureAlpha", "FixtureAlpha"}));
    QVERIFY(nullptr != pFirst);
    QCOMPARE(pSecond, pFirst);
    QCOMPARE(reinterpret_cast<int (*)()>(pFirst)(), 1);
}

void tst_BinderCachedHandle::shouldGiveNullAndSucessLineForMissingName()
{
    Util::GetDllFunction(CONST_PATH, CONST_FUNS);

    CLS_StdCapture clsCapture;
    std::map<std::string, void*> mapFuns =
        Util::GetDllFunction(CONST_PATH, std::vector<std::string>{"FixtureGamma", "FixtureAlpha"});
    void* pFun = Util::GetDllFunction(CONST_PATH, std::string("FixtureGamma"));
    clsCapture.Stop();

    QCOMPARE(clsCapture.OutLines(), CachedBindLines({"FixtureGamma", "FixtureAlpha", "FixtureGamma"}));
    QCOMPARE(clsCapture.ErrLines(), QStringList());
    // A missing function is kept in the map, with a null address.
    QCOMPARE(mapFuns.size(), size_t(2));
    QVERIFY(mapFuns.count("FixtureGamma") == 1);
    QVERIFY(nullptr == mapFuns["FixtureGamma"]);
    QVERIFY(nullptr != mapFuns["FixtureAlpha"]);
    QVERIFY(nullptr == pFun);
}

QTEST_GUILESS_MAIN(tst_BinderCachedHandle)
#include "tst_binder_cachedhandle.moc"
