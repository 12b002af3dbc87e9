// The style loader with a skin named by the settings library: paths, the module name rules, the
// cache and its key, what a widget gets, and how a sheet's text is read. One process: the common
// sheet is cached by the first LoadStyle, so every case here expects the same common text.

#include "CLS_EnvGuard.h"
#include "CLS_ParamProbe.h"
#include "CLS_SkinFiles.h"
#include "FunctionUtil.h"
#include "Param.h"

#include <QApplication>
#include <QWidget>
#include <QtTest>

#include <memory>

namespace {
const char* const CONST_SKIN = "styleloader_main";
const char* const CONST_OTHER_SKIN = "styleloader_other";

// Common folder of the main skin, in the order the loader must join it: by name, case ignored.
// Directories (".", "..", "Bb.qss") and hidden files are not part of it.
const char* const CONST_COMMON = "/*A*//*b*//*c*//*Z*/";
} // namespace

class tst_StyleLoader : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void cleanup();

    void shouldGiveExecutableDirectory();
    void shouldLeavePathAloneForEmptyName_data();
    void shouldLeavePathAloneForEmptyName();
    void shouldBuildPathFromSkinModuleAndFile();
    void shouldReportMissingSheet();
    void shouldIgnoreScaledSheetsWithoutScaleFactor();

    void shouldFindModuleSheet_data();
    void shouldFindModuleSheet();
    void shouldCacheModuleSheet();
    void shouldKeyCacheByUntransformedModuleName();
    void shouldKeyCacheByFileNameAsPassed();
    void shouldKeyCacheByJoinedNames();
    void shouldAskSkinOnEveryCall();
    void shouldKeepFirstSkinForCachedSheets();

    void shouldSetSheetOnWidget();
    void shouldLeaveWidgetAloneWhenSheetMissing();
    void shouldCacheUnreadableSheetAsEmpty();

    void shouldCutTextAtFirstNul();
    void shouldTakeOneCharacterPerByte();
    void shouldAnchorRelativeSkinPaths_data();
    void shouldAnchorRelativeSkinPaths();

    void shouldJoinCommonAndModuleSheets();
    void shouldCacheCommonSheets();
    void shouldSetWholeStyleOnWidget();
    void shouldSetCommonOnWidgetWhenModuleMissing();
    void shouldLoadViewStyleUnderModuleName();

private:
    std::unique_ptr<CLS_SkinFiles> m_pSkin;
    std::unique_ptr<CLS_SkinFiles> m_pOtherSkin;
};

void tst_StyleLoader::initTestCase()
{
    // The scale factor is not this program's concern: the plain sheets are the ones expected.
    qunsetenv("QT_SCALE_FACTOR");
    qputenv("WGT_TEST_SKIN", CONST_SKIN);

    // Leftovers of an aborted run would be taken for files of this one.
    QDir(CLS_SkinFiles::SkinRoot(CONST_SKIN)).removeRecursively();
    QDir(CLS_SkinFiles::SkinRoot(CONST_OTHER_SKIN)).removeRecursively();
    m_pSkin.reset(new CLS_SkinFiles(CONST_SKIN));
    m_pOtherSkin.reset(new CLS_SkinFiles(CONST_OTHER_SKIN));

    QVERIFY(m_pSkin->Write("Common/b.qss", "/*b*/"));
    QVERIFY(m_pSkin->Write("Common/Z", "/*Z*/"));
    QVERIFY(m_pSkin->Write("Common/A.qss", "/*A*/"));
    QVERIFY(m_pSkin->Write("Common/c.txt", "/*c*/"));
    QVERIFY(m_pSkin->Write("Common/.hidden.qss", "/*hidden*/"));
    QVERIFY(m_pSkin->Write("Common/Bb.qss/inner.qss", "/*inner*/"));
    QVERIFY(m_pOtherSkin->Write("Common/A.qss", "/*other common*/"));

    QVERIFY(nullptr != Param::GetModuleFun("GetParam"));
}

void tst_StyleLoader::cleanupTestCase()
{
    m_pSkin.reset();
    m_pOtherSkin.reset();
    QVERIFY(!QFileInfo::exists(CLS_SkinFiles::SkinRoot(CONST_SKIN)));
}

void tst_StyleLoader::cleanup()
{
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a top-level widget leaked");
}

void tst_StyleLoader::shouldGiveExecutableDirectory()
{
    const QString qstrBin = FunctionUtil::GetBinPath();

    QCOMPARE(qstrBin, QCoreApplication::applicationDirPath());
    QVERIFY(QFileInfo(QCoreApplication::applicationFilePath()).dir() == QDir(qstrBin));
}

void tst_StyleLoader::shouldLeavePathAloneForEmptyName_data()
{
    QTest::addColumn<QString>("_qstrModule");
    QTest::addColumn<QString>("_qstrFile");

    // "<module>/qss/.qss" exists, so only the guard can make the first row false.
    QTest::newRow("empty file, module set") << "WgtEmptyName"
                                            << "";
    QTest::newRow("empty module, file set") << ""
                                            << "WgtEmptyName";
    QTest::newRow("both empty") << ""
                                << "";
}

void tst_StyleLoader::shouldLeavePathAloneForEmptyName()
{
    QFETCH(QString, _qstrModule);
    QFETCH(QString, _qstrFile);
    QVERIFY(m_pSkin->Write("WgtEmptyName/qss/.qss", "/*no name*/"));
    QVERIFY(m_pSkin->Write("WgtEmptyName/qss/WgtEmptyName.qss", "/*named*/"));

    QString qstrPath = "untouched";
    const bool blExists = FunctionUtil::GetQssPath(_qstrModule, _qstrFile, qstrPath);

    QVERIFY(!blExists);
    QCOMPARE(qstrPath, QString("untouched"));
}

void tst_StyleLoader::shouldBuildPathFromSkinModuleAndFile()
{
    // GetQssPath takes the module as the directory name as it stands: no "Module" in front.
    QVERIFY(m_pSkin->Write("CLS_RawModule/qss/Sheet.qss", "/*raw*/"));

    QString qstrPath;
    const bool blExists = FunctionUtil::GetQssPath("CLS_RawModule", "Sheet", qstrPath);

    QVERIFY(blExists);
    QCOMPARE(qstrPath, QCoreApplication::applicationDirPath() +
                           "/resource/skin/styleloader_main/CLS_RawModule/qss/Sheet.qss");
}

void tst_StyleLoader::shouldReportMissingSheet()
{
    QString qstrPath;
    const bool blExists = FunctionUtil::GetQssPath("WgtNoSuchModule", "Sheet", qstrPath);

    QVERIFY(!blExists);
    QCOMPARE(qstrPath, m_pSkin->SheetBase("WgtNoSuchModule", "Sheet") + ".qss");
}

void tst_StyleLoader::shouldIgnoreScaledSheetsWithoutScaleFactor()
{
    const QString qstrBase = m_pSkin->SheetBase("WgtNoScale", "Sheet");
    for (const char* pSuffix : {".qss", "_0K.qss", "_2K.qss", "_4K.qss"}) {
        QVERIFY(m_pSkin->Write(QString("WgtNoScale/qss/Sheet%1").arg(pSuffix), pSuffix));
    }

    QString qstrPath;
    QVERIFY(FunctionUtil::GetQssPath("WgtNoScale", "Sheet", qstrPath));
    QCOMPARE(qstrPath, qstrBase + ".qss");

    // The factor was read (as none) by the first call; setting it now changes nothing.
    CLS_EnvGuard clsScale("QT_SCALE_FACTOR", "2");
    QVERIFY(FunctionUtil::GetQssPath("WgtNoScale", "Sheet", qstrPath));
    QCOMPARE(qstrPath, qstrBase + ".qss");
}

void tst_StyleLoader::shouldFindModuleSheet_data()
{
    QTest::addColumn<QString>("_qstrModule");
    QTest::addColumn<QString>("_qstrFile");
    QTest::addColumn<QString>("_qstrExpectedFile"); // below the skin folder

    QTest::newRow("Wgt kept") << "WgtNameA"
                              << "Sheet"
                              << "WgtNameA/qss/Sheet.qss";
    QTest::newRow("Module kept") << "ModuleNameB"
                                 << "Sheet"
                                 << "ModuleNameB/qss/Sheet.qss";
    QTest::newRow("Lx kept") << "LxNameC"
                             << "Sheet"
                             << "LxNameC/qss/Sheet.qss";
    QTest::newRow("bare prefix kept") << "Lx"
                                      << "Sheet"
                                      << "Lx/qss/Sheet.qss";
    QTest::newRow("class name gets Module") << "CLS_NameD"
                                            << "Sheet"
                                            << "ModuleCLS_NameD/qss/Sheet.qss";
    QTest::newRow("prefix is case-sensitive") << "wgtNameE"
                                              << "Sheet"
                                              << "ModulewgtNameE/qss/Sheet.qss";
    QTest::newRow("prefix must lead") << "MyWgtNameF"
                                      << "Sheet"
                                      << "ModuleMyWgtNameF/qss/Sheet.qss";
    QTest::newRow("empty file is dir name") << "WgtNameG"
                                            << ""
                                            << "WgtNameG/qss/WgtNameG.qss";
    QTest::newRow("empty file is transformed dir name") << "CLS_NameH"
                                                        << ""
                                                        << "ModuleCLS_NameH/qss/ModuleCLS_NameH.qss";
}

void tst_StyleLoader::shouldFindModuleSheet()
{
    QFETCH(QString, _qstrModule);
    QFETCH(QString, _qstrFile);
    QFETCH(QString, _qstrExpectedFile);
    const QByteArray qbaText = "/*" + _qstrExpectedFile.toLatin1() + "*/";
    QVERIFY(m_pSkin->Write(_qstrExpectedFile, qbaText));

    const QString qstrStyle = FunctionUtil::LoadStyleMini(_qstrModule, nullptr, _qstrFile);

    QCOMPARE(qstrStyle, QString::fromLatin1(qbaText));
}

void tst_StyleLoader::shouldCacheModuleSheet()
{
    QVERIFY(m_pSkin->Write("WgtCached/qss/Sheet.qss", "/*one*/"));
    QCOMPARE(FunctionUtil::LoadStyleMini("WgtCached", nullptr, "Sheet"), QString("/*one*/"));

    QVERIFY(m_pSkin->Write("WgtCached/qss/Sheet.qss", "/*two*/"));

    QCOMPARE(FunctionUtil::LoadStyleMini("WgtCached", nullptr, "Sheet"), QString("/*one*/"));
}

void tst_StyleLoader::shouldKeyCacheByUntransformedModuleName()
{
    // "CLS_KeyView" and "ModuleCLS_KeyView" share one directory but not one cache entry.
    QVERIFY(m_pSkin->Write("ModuleCLS_KeyView/qss/Sheet.qss", "/*one*/"));
    QCOMPARE(FunctionUtil::LoadStyleMini("CLS_KeyView", nullptr, "Sheet"), QString("/*one*/"));

    QVERIFY(m_pSkin->Write("ModuleCLS_KeyView/qss/Sheet.qss", "/*two*/"));

    QCOMPARE(FunctionUtil::LoadStyleMini("ModuleCLS_KeyView", nullptr, "Sheet"), QString("/*two*/"));
    QCOMPARE(FunctionUtil::LoadStyleMini("CLS_KeyView", nullptr, "Sheet"), QString("/*one*/"));
}

void tst_StyleLoader::shouldKeyCacheByFileNameAsPassed()
{
    // An empty file name and the directory name read the same file under two cache entries.
    QVERIFY(m_pSkin->Write("WgtKeyFile/qss/WgtKeyFile.qss", "/*one*/"));
    QCOMPARE(FunctionUtil::LoadStyleMini("WgtKeyFile", nullptr, ""), QString("/*one*/"));

    QVERIFY(m_pSkin->Write("WgtKeyFile/qss/WgtKeyFile.qss", "/*two*/"));

    QCOMPARE(FunctionUtil::LoadStyleMini("WgtKeyFile", nullptr, "WgtKeyFile"), QString("/*two*/"));
    QCOMPARE(FunctionUtil::LoadStyleMini("WgtKeyFile", nullptr, QString()), QString("/*one*/"));
}

void tst_StyleLoader::shouldKeyCacheByJoinedNames()
{
    // The key is module and file run together: "WgtJoinA"+"BSheet" and "WgtJoinAB"+"Sheet" meet.
    QVERIFY(m_pSkin->Write("WgtJoinA/qss/BSheet.qss", "/*first*/"));
    QVERIFY(m_pSkin->Write("WgtJoinAB/qss/Sheet.qss", "/*second*/"));
    QCOMPARE(FunctionUtil::LoadStyleMini("WgtJoinA", nullptr, "BSheet"), QString("/*first*/"));

    QCOMPARE(FunctionUtil::LoadStyleMini("WgtJoinAB", nullptr, "Sheet"), QString("/*first*/"));
}

void tst_StyleLoader::shouldAskSkinOnEveryCall()
{
    QVERIFY(m_pSkin->Write("WgtAskSkin/qss/Sheet.qss", "/*ask*/"));
    QCOMPARE(FunctionUtil::LoadStyleMini("WgtAskSkin", nullptr, "Sheet"), QString("/*ask*/"));
    const int iBefore = CLS_ParamProbe::CallCount();
    QVERIFY(iBefore > 0);

    QCOMPARE(FunctionUtil::LoadStyleMini("WgtAskSkin", nullptr, "Sheet"), QString("/*ask*/"));

    QVERIFY2(CLS_ParamProbe::CallCount() > iBefore, "a cached call did not ask for the skin");
}

void tst_StyleLoader::shouldKeepFirstSkinForCachedSheets()
{
    QVERIFY(m_pSkin->Write("WgtSkinKeep/qss/Sheet.qss", "/*main*/"));
    QVERIFY(m_pOtherSkin->Write("WgtSkinKeep/qss/Sheet.qss", "/*other*/"));
    QVERIFY(m_pSkin->Write("WgtSkinFresh/qss/Sheet.qss", "/*fresh main*/"));
    QVERIFY(m_pOtherSkin->Write("WgtSkinFresh/qss/Sheet.qss", "/*fresh other*/"));
    QCOMPARE(FunctionUtil::LoadStyleMini("WgtSkinKeep", nullptr, "Sheet"), QString("/*main*/"));
    QCOMPARE(FunctionUtil::LoadStyle("WgtSkinKeep", nullptr, "Sheet"), QString(CONST_COMMON) + "/*main*/");

    CLS_EnvGuard clsSkin("WGT_TEST_SKIN", CONST_OTHER_SKIN);

    // Cached texts stay those of the first skin, common sheet included ...
    QCOMPARE(FunctionUtil::LoadStyleMini("WgtSkinKeep", nullptr, "Sheet"), QString("/*main*/"));
    QCOMPARE(FunctionUtil::LoadStyle("WgtSkinKeep", nullptr, "Sheet"), QString(CONST_COMMON) + "/*main*/");
    // ... while a sheet not read before comes from the skin the setting names now.
    QCOMPARE(FunctionUtil::LoadStyleMini("WgtSkinFresh", nullptr, "Sheet"), QString("/*fresh other*/"));
}

void tst_StyleLoader::shouldSetSheetOnWidget()
{
    QVERIFY(m_pSkin->Write("WgtOnWidget/qss/Sheet.qss", "QWidget { color: blue; }"));
    QWidget wgtFirst;
    QWidget wgtSecond;

    const QString qstrFirst = FunctionUtil::LoadStyleMini("WgtOnWidget", &wgtFirst, "Sheet");
    const QString qstrSecond = FunctionUtil::LoadStyleMini("WgtOnWidget", &wgtSecond, "Sheet"); // cached

    QCOMPARE(qstrFirst, QString("QWidget { color: blue; }"));
    QCOMPARE(wgtFirst.styleSheet(), qstrFirst);
    QCOMPARE(qstrSecond, qstrFirst);
    QCOMPARE(wgtSecond.styleSheet(), qstrFirst);
}

void tst_StyleLoader::shouldLeaveWidgetAloneWhenSheetMissing()
{
    QWidget wgtTarget;
    wgtTarget.setStyleSheet("QWidget { color: red; }");

    const QString qstrStyle = FunctionUtil::LoadStyleMini("WgtAbsent", &wgtTarget, "Sheet");

    QVERIFY(qstrStyle.isEmpty());
    QCOMPARE(wgtTarget.styleSheet(), QString("QWidget { color: red; }"));

    // Nothing was stored: the sheet is read once it is there.
    QVERIFY(m_pSkin->Write("WgtAbsent/qss/Sheet.qss", "/*late*/"));
    QCOMPARE(FunctionUtil::LoadStyleMini("WgtAbsent", &wgtTarget, "Sheet"), QString("/*late*/"));
    QCOMPARE(wgtTarget.styleSheet(), QString("/*late*/"));
}

void tst_StyleLoader::shouldCacheUnreadableSheetAsEmpty()
{
    // A folder by the sheet's name exists but can't be opened as a file (chmod would not stop root).
    QVERIFY(m_pSkin->MakeDir("WgtUnreadable/qss/Sheet.qss"));
    QWidget wgtTarget;
    wgtTarget.setStyleSheet("QWidget { color: red; }");

    const QString qstrStyle = FunctionUtil::LoadStyleMini("WgtUnreadable", &wgtTarget, "Sheet");

    QVERIFY(qstrStyle.isEmpty());
    QVERIFY2(wgtTarget.styleSheet().isEmpty(), "the found sheet's (empty) text was not set");

    QVERIFY(m_pSkin->Remove("WgtUnreadable/qss/Sheet.qss"));
    QVERIFY(m_pSkin->Write("WgtUnreadable/qss/Sheet.qss", "/*readable now*/"));
    QCOMPARE(FunctionUtil::LoadStyleMini("WgtUnreadable", nullptr, "Sheet"), QString());
}

void tst_StyleLoader::shouldCutTextAtFirstNul()
{
    QVERIFY(m_pSkin->Write("WgtNul/qss/Sheet.qss", QByteArray("a { }") + '\0' + "b { }" + '\0' + "c"));

    QCOMPARE(FunctionUtil::LoadStyleMini("WgtNul", nullptr, "Sheet"), QString("a { }"));
}

void tst_StyleLoader::shouldTakeOneCharacterPerByte()
{
    // "\xC3\xA9" is one character in UTF-8; the loader makes two of it.
    QVERIFY(m_pSkin->Write("WgtBytes/qss/Sheet.qss", "/*\xE9\xC3\xA9*/"));

    const QString qstrStyle = FunctionUtil::LoadStyleMini("WgtBytes", nullptr, "Sheet");

    QCOMPARE(qstrStyle.size(), 7);
    QCOMPARE(qstrStyle, QString("/*") + QChar(0xE9) + QChar(0xC3) + QChar(0xA9) + QString("*/"));
}

void tst_StyleLoader::shouldAnchorRelativeSkinPaths_data()
{
    QTest::addColumn<QString>("_qstrModule");
    QTest::addColumn<QByteArray>("_qbaText");
    QTest::addColumn<QString>("_qstrExpected"); // <BIN> stands for the executable's directory

    QTest::newRow("every one after the start")
        << "WgtRelTwo"
        << QByteArray("a { image: url(./resource/skin/x.png); } b { image: url(./resource/skin/y.png); }")
        << "a { image: url(<BIN>/resource/skin/x.png); } b { image: url(<BIN>/resource/skin/y.png); }";
    QTest::newRow("one at the start keeps all")
        << "WgtRelStart" << QByteArray("./resource/skin/x.png a { image: url(./resource/skin/y.png); }")
        << "./resource/skin/x.png a { image: url(./resource/skin/y.png); }";
    QTest::newRow("at index 1") << "WgtRelOne" << QByteArray(" ./resource/skin/x.png")
                                << " <BIN>/resource/skin/x.png";
    QTest::newRow("inside a parent path")
        << "WgtRelParent" << QByteArray("url(../resource/skin/x.png)") << "url(.<BIN>/resource/skin/x.png)";
    QTest::newRow("other relative paths")
        << "WgtRelOther" << QByteArray("url(./images/x.png) url(resource/skin/y)")
        << "url(./images/x.png) url(resource/skin/y)";
    QTest::newRow("only after a NUL")
        << "WgtRelNul" << QByteArray("a { }") + '\0' + " url(./resource/skin/x.png)"
        << "a { }";
}

void tst_StyleLoader::shouldAnchorRelativeSkinPaths()
{
    QFETCH(QString, _qstrModule);
    QFETCH(QByteArray, _qbaText);
    QFETCH(QString, _qstrExpected);
    QVERIFY(m_pSkin->Write(_qstrModule + "/qss/Sheet.qss", _qbaText));

    const QString qstrStyle = FunctionUtil::LoadStyleMini(_qstrModule, nullptr, "Sheet");

    QCOMPARE(qstrStyle, QString(_qstrExpected).replace("<BIN>", QCoreApplication::applicationDirPath()));
}

void tst_StyleLoader::shouldJoinCommonAndModuleSheets()
{
    QVERIFY(m_pSkin->Write("WgtJoinAll/qss/Sheet.qss", "/*module*/"));

    const QString qstrStyle = FunctionUtil::LoadStyle("WgtJoinAll", nullptr, "Sheet");

    QCOMPARE(qstrStyle, QString(CONST_COMMON) + "/*module*/");
}

void tst_StyleLoader::shouldCacheCommonSheets()
{
    QCOMPARE(FunctionUtil::LoadStyle("WgtCommonCache", nullptr, "Sheet"), QString(CONST_COMMON));
    QVERIFY(m_pSkin->Write("Common/A.qss", "/*A changed*/"));
    QVERIFY(m_pSkin->Write("Common/0.qss", "/*new*/"));

    const QString qstrStyle = FunctionUtil::LoadStyle("WgtCommonCacheOther", nullptr, "Sheet");

    QVERIFY(m_pSkin->Write("Common/A.qss", "/*A*/"));
    QVERIFY(m_pSkin->Remove("Common/0.qss"));
    QCOMPARE(qstrStyle, QString(CONST_COMMON));
}

void tst_StyleLoader::shouldSetWholeStyleOnWidget()
{
    QVERIFY(m_pSkin->Write("WgtWholeStyle/qss/Sheet.qss", "/*whole*/"));
    QWidget wgtTarget;

    const QString qstrStyle = FunctionUtil::LoadStyle("WgtWholeStyle", &wgtTarget, "Sheet");

    QCOMPARE(qstrStyle, QString(CONST_COMMON) + "/*whole*/");
    QCOMPARE(wgtTarget.styleSheet(), qstrStyle);
}

void tst_StyleLoader::shouldSetCommonOnWidgetWhenModuleMissing()
{
    QWidget wgtTarget;
    wgtTarget.setStyleSheet("QWidget { color: red; }");

    const QString qstrStyle = FunctionUtil::LoadStyle("WgtNoModuleSheet", &wgtTarget, "Sheet");

    QCOMPARE(qstrStyle, QString(CONST_COMMON));
    QCOMPARE(wgtTarget.styleSheet(), QString(CONST_COMMON));
}

void tst_StyleLoader::shouldLoadViewStyleUnderModuleName()
{
    // A view passes its class names; the module sheet is looked up under "Module<name>".
    QVERIFY(m_pSkin->Write("ModuleCLS_SomeView/qss/CLS_SomePage.qss", "/*view*/"));

    const QString qstrStyle = FunctionUtil::LoadStyle("CLS_SomeView", nullptr, "CLS_SomePage");

    QCOMPARE(qstrStyle, QString(CONST_COMMON) + "/*view*/");
}

QTEST_MAIN(tst_StyleLoader)
#include "tst_styleloader.moc"
