// An empty function list still opens the library, writes no "sucess" line and gives an empty map.

#include "BinderLines.h"
#include "CLS_StdCapture.h"
#include "CLS_TestPaths.h"
#include "Util.h"

#include <QtTest>

#include <dlfcn.h>

namespace {
const std::string CONST_PATH = CLS_TestPaths::FromProgramDir(WGT_TEST_LIB_ROOT) + "/binder_a/libLxFixture.so";
} // namespace

class tst_BinderEmptyList : public QObject
{
    Q_OBJECT

private slots:
    void shouldOpenLibraryForEmptyList();
    void shouldKeepHandleOpenedForEmptyList();
};

void tst_BinderEmptyList::shouldOpenLibraryForEmptyList()
{
    QVERIFY(nullptr == dlopen(CONST_PATH.c_str(), RTLD_NOW | RTLD_NOLOAD));

    CLS_StdCapture clsCapture;
    std::map<std::string, void*> mapFuns = Util::GetDllFunction(CONST_PATH, std::vector<std::string>());
    clsCapture.Stop();

    QCOMPARE(clsCapture.OutLines(), QStringList{LoadLine(CONST_PATH)});
    QCOMPARE(clsCapture.ErrLines(), QStringList());
    QVERIFY(mapFuns.empty());
    QVERIFY(nullptr != dlopen(CONST_PATH.c_str(), RTLD_NOW | RTLD_NOLOAD));
}

void tst_BinderEmptyList::shouldKeepHandleOpenedForEmptyList()
{
    Util::GetDllFunction(CONST_PATH, std::vector<std::string>());

    CLS_StdCapture clsCapture;
    std::map<std::string, void*> mapFuns =
        Util::GetDllFunction(CONST_PATH, std::vector<std::string>{"FixtureAlpha"});
    clsCapture.Stop();

    QCOMPARE(clsCapture.OutLines(), CachedBindLines({"FixtureAlpha"}));
    QVERIFY(nullptr != mapFuns["FixtureAlpha"]);
}

QTEST_GUILESS_MAIN(tst_BinderEmptyList)
#include "tst_binder_emptylist.moc"
