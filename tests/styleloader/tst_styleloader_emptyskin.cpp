// The settings library answers an empty skin: "dark" stands in, and nothing is cached, so every
// call reads the files again. A skin named by the setting, even "dark", is cached.
// Writes into the shared "dark" skin beside the executable, only below its own module folders and
// one file of "Common"; CTest runs it alone.

#include "CLS_EnvGuard.h"
#include "CLS_SkinFiles.h"
#include "FunctionUtil.h"
#include "Param.h"

#include <QtTest>

#include <memory>

namespace {
const char* const CONST_COMMON_FILE = "Common/zz_styleloader_emptyskin.qss";
} // namespace

class tst_StyleLoaderEmptySkin : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void shouldUseDarkForEmptySkin();
    void shouldRereadModuleSheetWhenSkinEmpty();
    void shouldRereadCommonSheetsWhenSkinEmpty();
    void shouldCacheWhenSkinIsNamed();

private:
    std::unique_ptr<CLS_SkinFiles> m_pDark;
};

void tst_StyleLoaderEmptySkin::initTestCase()
{
    qunsetenv("QT_SCALE_FACTOR");
    qputenv("WGT_TEST_SKIN", "");
    QCOMPARE(QString::fromStdString(Param::GetParam("SystemConfig", "skin", "dark")), QString());

    QDir(CLS_SkinFiles::SkinRoot("dark") + "/WgtStyleEmptySkin").removeRecursively();
    QFile::remove(CLS_SkinFiles::SkinRoot("dark") + "/" + CONST_COMMON_FILE);
    m_pDark.reset(new CLS_SkinFiles("dark"));
}

void tst_StyleLoaderEmptySkin::cleanupTestCase()
{
    m_pDark.reset();
    QVERIFY(!QFileInfo::exists(CLS_SkinFiles::SkinRoot("dark") + "/WgtStyleEmptySkin"));
}

void tst_StyleLoaderEmptySkin::shouldUseDarkForEmptySkin()
{
    QVERIFY(m_pDark->Write("WgtStyleEmptySkin/qss/Dark.qss", "/*dark*/"));

    QString qstrPath;
    const bool blExists = FunctionUtil::GetQssPath("WgtStyleEmptySkin", "Dark", qstrPath);

    QVERIFY(blExists);
    QCOMPARE(qstrPath,
             QCoreApplication::applicationDirPath() + "/resource/skin/dark/WgtStyleEmptySkin/qss/Dark.qss");
    QCOMPARE(FunctionUtil::LoadStyleMini("WgtStyleEmptySkin", nullptr, "Dark"), QString("/*dark*/"));
}

void tst_StyleLoaderEmptySkin::shouldRereadModuleSheetWhenSkinEmpty()
{
    QVERIFY(m_pDark->Write("WgtStyleEmptySkin/qss/Reread.qss", "/*one*/"));
    QCOMPARE(FunctionUtil::LoadStyleMini("WgtStyleEmptySkin", nullptr, "Reread"), QString("/*one*/"));

    QVERIFY(m_pDark->Write("WgtStyleEmptySkin/qss/Reread.qss", "/*two*/"));

    QCOMPARE(FunctionUtil::LoadStyleMini("WgtStyleEmptySkin", nullptr, "Reread"), QString("/*two*/"));
}

void tst_StyleLoaderEmptySkin::shouldRereadCommonSheetsWhenSkinEmpty()
{
    // Other files of the shared "Common" folder may be there too: only this one is looked for.
    QVERIFY(m_pDark->Write("WgtStyleEmptySkin/qss/Common.qss", "/*module*/"));
    QVERIFY(m_pDark->Write(CONST_COMMON_FILE, "/*common one*/"));
    const QString qstrFirst = FunctionUtil::LoadStyle("WgtStyleEmptySkin", nullptr, "Common");

    QVERIFY(m_pDark->Write(CONST_COMMON_FILE, "/*common two*/"));
    const QString qstrSecond = FunctionUtil::LoadStyle("WgtStyleEmptySkin", nullptr, "Common");

    QVERIFY2(qstrFirst.contains("/*common one*/"), qPrintable(qstrFirst));
    QVERIFY2(qstrFirst.endsWith("/*module*/"), qPrintable(qstrFirst));
    QVERIFY2(qstrSecond.contains("/*common two*/"), qPrintable(qstrSecond));
    QVERIFY2(!qstrSecond.contains("/*common one*/"), qPrintable(qstrSecond));
}

void tst_StyleLoaderEmptySkin::shouldCacheWhenSkinIsNamed()
{
    CLS_EnvGuard clsSkin("WGT_TEST_SKIN", "dark");
    QVERIFY(m_pDark->Write("WgtStyleEmptySkin/qss/Named.qss", "/*module one*/"));
    QVERIFY(m_pDark->Write(CONST_COMMON_FILE, "/*common one*/"));
    const QString qstrFirst = FunctionUtil::LoadStyle("WgtStyleEmptySkin", nullptr, "Named");

    QVERIFY(m_pDark->Write("WgtStyleEmptySkin/qss/Named.qss", "/*module two*/"));
    QVERIFY(m_pDark->Write(CONST_COMMON_FILE, "/*common two*/"));
    const QString qstrSecond = FunctionUtil::LoadStyle("WgtStyleEmptySkin", nullptr, "Named");

    QVERIFY2(qstrFirst.contains("/*common one*/") && qstrFirst.endsWith("/*module one*/"),
             qPrintable(qstrFirst));
    QCOMPARE(qstrSecond, qstrFirst);
}

QTEST_GUILESS_MAIN(tst_StyleLoaderEmptySkin)
#include "tst_styleloader_emptyskin.moc"
