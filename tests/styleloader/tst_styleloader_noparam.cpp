// Without the settings library the skin is the default "dark", a named skin: sheets are cached.
// Writes into the shared "dark" skin beside the executable, only below its own module folder and
// one file of "Common"; CTest runs it alone.

#include "CLS_SkinFiles.h"
#include "FunctionUtil.h"
#include "Param.h"

#include <QtTest>

#include <memory>

namespace {
const char* const CONST_COMMON_FILE = "Common/zz_styleloader_noparam.qss";
} // namespace

class tst_StyleLoaderNoParam : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void shouldUseDarkWithoutSettingsLibrary();
    void shouldCacheModuleSheetWithDefaultSkin();
    void shouldCacheCommonSheetsWithDefaultSkin();

private:
    std::unique_ptr<CLS_SkinFiles> m_pDark;
};

void tst_StyleLoaderNoParam::initTestCase()
{
    qunsetenv("QT_SCALE_FACTOR");
    QVERIFY(nullptr == Param::GetModuleFun("GetParam"));

    QDir(CLS_SkinFiles::SkinRoot("dark") + "/WgtStyleNoParam").removeRecursively();
    QFile::remove(CLS_SkinFiles::SkinRoot("dark") + "/" + CONST_COMMON_FILE);
    m_pDark.reset(new CLS_SkinFiles("dark"));
}

void tst_StyleLoaderNoParam::cleanupTestCase()
{
    m_pDark.reset();
    QVERIFY(!QFileInfo::exists(CLS_SkinFiles::SkinRoot("dark") + "/WgtStyleNoParam"));
}

void tst_StyleLoaderNoParam::shouldUseDarkWithoutSettingsLibrary()
{
    QVERIFY(m_pDark->Write("WgtStyleNoParam/qss/Dark.qss", "/*dark*/"));

    QString qstrPath;
    const bool blExists = FunctionUtil::GetQssPath("WgtStyleNoParam", "Dark", qstrPath);

    QVERIFY(blExists);
    QCOMPARE(qstrPath,
             QCoreApplication::applicationDirPath() + "/resource/skin/dark/WgtStyleNoParam/qss/Dark.qss");
    QCOMPARE(FunctionUtil::LoadStyleMini("WgtStyleNoParam", nullptr, "Dark"), QString("/*dark*/"));
}

void tst_StyleLoaderNoParam::shouldCacheModuleSheetWithDefaultSkin()
{
    QVERIFY(m_pDark->Write("WgtStyleNoParam/qss/Cached.qss", "/*one*/"));
    QCOMPARE(FunctionUtil::LoadStyleMini("WgtStyleNoParam", nullptr, "Cached"), QString("/*one*/"));

    QVERIFY(m_pDark->Write("WgtStyleNoParam/qss/Cached.qss", "/*two*/"));

    QCOMPARE(FunctionUtil::LoadStyleMini("WgtStyleNoParam", nullptr, "Cached"), QString("/*one*/"));
}

void tst_StyleLoaderNoParam::shouldCacheCommonSheetsWithDefaultSkin()
{
    QVERIFY(m_pDark->Write(CONST_COMMON_FILE, "/*common one*/"));
    const QString qstrFirst = FunctionUtil::LoadStyle("WgtStyleNoParam", nullptr, "NoSheet");

    QVERIFY(m_pDark->Write(CONST_COMMON_FILE, "/*common two*/"));
    const QString qstrSecond = FunctionUtil::LoadStyle("WgtStyleNoParam", nullptr, "NoSheet");

    QVERIFY2(qstrFirst.contains("/*common one*/"), qPrintable(qstrFirst));
    QCOMPARE(qstrSecond, qstrFirst);
}

QTEST_GUILESS_MAIN(tst_StyleLoaderNoParam)
#include "tst_styleloader_noparam.moc"
