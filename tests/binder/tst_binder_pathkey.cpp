// A gateway asked with a folder opens "<folder>/<file>", and that whole text, not the bare file
// name, is what the binder caches the handle under.

#include "BinderLines.h"
#include "CLS_StdCapture.h"
#include "CLS_TestPaths.h"
#include "Param.h"
#include "Util.h"

#include <QtTest>

namespace {
const std::string CONST_DIR = CLS_TestPaths::FromProgramDir(WGT_TEST_LIB_ROOT) + "/binder_gw";
const std::string CONST_FULL_PATH = CONST_DIR + "/libLxParam.so";
const std::vector<std::string> CONST_PARAM_FUNS{"Init",     "IsInit",      "SetParam",
                                                "GetParam", "DeleteParam", "UnInit"};
} // namespace

class tst_BinderPathKey : public QObject
{
    Q_OBJECT

private slots:
    void shouldJoinFolderAndFileName();
    void shouldReuseHandleForSameWholePath();
    void shouldOpenAgainForBareFileName();
};

void tst_BinderPathKey::shouldJoinFolderAndFileName()
{
    CLS_StdCapture clsCapture;
    void* pFun = Param::GetModuleFun("GetParam", CONST_DIR);
    clsCapture.Stop();

    QCOMPARE(clsCapture.OutLines(), FirstBindLines(CONST_FULL_PATH, CONST_PARAM_FUNS));
    QCOMPARE(clsCapture.ErrLines(), QStringList());
    QVERIFY(nullptr != pFun);
}

void tst_BinderPathKey::shouldReuseHandleForSameWholePath()
{
    // Given the gateway has bound through the folder
    void* pGateway = Param::GetModuleFun("GetParam", CONST_DIR);

    // When the binder is asked for the same whole path
    CLS_StdCapture clsCapture;
    std::map<std::string, void*> mapFuns =
        Util::GetDllFunction(CONST_FULL_PATH, std::vector<std::string>{"GetParam"});
    clsCapture.Stop();

    // Then the cached handle is used: no load line, an empty path
    QCOMPARE(clsCapture.OutLines(), CachedBindLines({"GetParam"}));
    QCOMPARE(mapFuns.size(), size_t(1));
    QCOMPARE(mapFuns["GetParam"], pGateway);
}

void tst_BinderPathKey::shouldOpenAgainForBareFileName()
{
    Param::GetModuleFun("GetParam", CONST_DIR);

    CLS_StdCapture clsCapture;
    std::map<std::string, void*> mapFuns =
        Util::GetDllFunction("libLxParam.so", std::vector<std::string>{"GetParam"});
    clsCapture.Stop();

    // The bare name is a key of its own, although it names the same file.
    QCOMPARE(clsCapture.OutLines(), FirstBindLines("libLxParam.so", {"GetParam"}));
    QCOMPARE(clsCapture.ErrLines(), QStringList());
    QVERIFY(nullptr != mapFuns["GetParam"]);
}

QTEST_GUILESS_MAIN(tst_BinderPathKey)
#include "tst_binder_pathkey.moc"
