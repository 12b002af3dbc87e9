// The style loader reading a generated skin from the program's folder. One process per skin and
// scale (the loader caches for the whole process): WGT_TEST_SKIN names the skin the settings
// library answers, WGT_TEST_EXPECT_SHEET the module sheet that has to win at this QT_SCALE_FACTOR.

#include "SkinTestFiles.h"

#include "CLS_WgtTreeWidget.h"
#include "FunctionUtil.h"
#include "WgtQtCompat.h"

#include <QIcon>
#include <QToolButton>
#include <QtTest>

class CLS_TestSkinLoader : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void shouldPickTheSheetForTheScale();
    void shouldReturnCommonThenModuleText();
    void shouldReadCommonFilesByName();
    void shouldRewriteRelativeSkinPaths();
    void shouldPointAtExistingImages();
    void shouldStyleAPanelWhenBuilt();
    void shouldShowTheSkinsSearchImages();

private:
    QString m_qstrSkin;
    QString m_qstrExpectedSheet;
    bool m_blScaled = false;
};

void CLS_TestSkinLoader::initTestCase()
{
    m_qstrSkin = QString::fromLocal8Bit(qgetenv("WGT_TEST_SKIN"));
    m_qstrExpectedSheet = QString::fromLocal8Bit(qgetenv("WGT_TEST_EXPECT_SHEET"));
    QVERIFY2(!m_qstrSkin.isEmpty(), "WGT_TEST_SKIN is not set");
    QVERIFY2(!m_qstrExpectedSheet.isEmpty(), "WGT_TEST_EXPECT_SHEET is not set");
    m_blScaled = m_qstrExpectedSheet.endsWith("_4K.qss");
    QVERIFY2(QFileInfo(SkinTest::SkinDir(m_qstrSkin)).isDir(),
             qPrintable("no skin: " + SkinTest::SkinDir(m_qstrSkin)));
    QCOMPARE(FunctionUtil::GetBinPath(), SkinTest::BinDir());
}

void CLS_TestSkinLoader::shouldPickTheSheetForTheScale()
{
    QString qstrPath;
    QVERIFY(FunctionUtil::GetQssPath("WgtTreeWidget", "WgtTreeWidget", qstrPath));
    QCOMPARE(qstrPath, SkinTest::SkinDir(m_qstrSkin) + "/WgtTreeWidget/qss/" + m_qstrExpectedSheet);
}

void CLS_TestSkinLoader::shouldReturnCommonThenModuleText()
{
    const QString qstrCommon = SkinTest::CommonText(m_qstrSkin);
    const QString qstrModule = SkinTest::ReadSheet(SkinTest::ModuleSheetPath(m_qstrSkin, m_blScaled));
    QVERIFY(!qstrCommon.isEmpty());
    QVERIFY(!qstrModule.isEmpty());

    const QString qstrStyle = FunctionUtil::LoadStyle("WgtTreeWidget", nullptr, "");
    QCOMPARE(qstrStyle.size(), qstrCommon.size() + qstrModule.size());
    QVERIFY2(qstrStyle == qstrCommon + qstrModule,
             "the text is not the common sheets followed by the module sheet");
    // The other scale's sheet is not in it.
    const QString qstrOther = SkinTest::ReadSheet(SkinTest::ModuleSheetPath(m_qstrSkin, !m_blScaled));
    QVERIFY(!qstrStyle.contains(qstrOther));
    // And the module alone, from the cache now.
    QCOMPARE(FunctionUtil::LoadStyleMini("WgtTreeWidget", nullptr, ""), qstrModule);
}

// Every common file is read, in the order of their names.
void CLS_TestSkinLoader::shouldReadCommonFilesByName()
{
    const QStringList qlstFiles = SkinTest::CommonFiles(m_qstrSkin);
    QVERIFY2(qlstFiles.size() >= 2, qPrintable(qlstFiles.join(", ")));
    const QString qstrStyle = FunctionUtil::LoadStyle("WgtTreeWidget", nullptr, "");
    int iLast = -1;
    for (const QString& qstrFile : qlstFiles) {
        const QString qstrText = SkinTest::ReadSheet(SkinTest::CommonDir(m_qstrSkin) + "/" + qstrFile);
        const int iPos = qstrStyle.indexOf(qstrText);
        QVERIFY2(iPos > iLast, qPrintable(qstrFile + " is missing or out of order"));
        iLast = iPos;
    }
}

void CLS_TestSkinLoader::shouldRewriteRelativeSkinPaths()
{
    const QString qstrStyle = FunctionUtil::LoadStyle("WgtTreeWidget", nullptr, "");
    QVERIFY(!qstrStyle.contains("\"./resource/skin/"));
    const QString qstrArrow = QString("url(\"%1/resource/skin/%2/WgtTreeWidget/images/branch_closed.png\")")
                                  .arg(SkinTest::BinDir(), m_qstrSkin);
    QVERIFY2(qstrStyle.contains(qstrArrow), qPrintable("no " + qstrArrow));
}

void CLS_TestSkinLoader::shouldPointAtExistingImages()
{
    const QStringList qlstUrls = SkinTest::Urls(FunctionUtil::LoadStyle("WgtTreeWidget", nullptr, ""));
    QVERIFY(qlstUrls.size() >= 2);
    for (const QString& qstrUrl : qlstUrls) {
        QVERIFY2(QFile::exists(qstrUrl), qPrintable("missing: " + qstrUrl));
    }
}

void CLS_TestSkinLoader::shouldStyleAPanelWhenBuilt()
{
    CLS_WgtTreeWidget panel(nullptr, false, false, true);
    QCOMPARE(panel.styleSheet(), FunctionUtil::LoadStyle("WgtTreeWidget", nullptr, ""));
    QVERIFY(panel.styleSheet().contains("#qlineedtQueryInput"));
}

// The panel takes its button images from the same skin as its sheet.
void CLS_TestSkinLoader::shouldShowTheSkinsSearchImages()
{
    CLS_WgtTreeWidget panel(nullptr, false, false, true);
    for (const QString& qstrButton : {QString("qtoolbtnSearch"), QString("qtoolbtnClear")}) {
        auto* pButton = panel.findChild<QToolButton*>(qstrButton);
        QVERIFY2(pButton != nullptr, qPrintable("no " + qstrButton));
        const QIcon icon = pButton->icon();
        QVERIFY2(!icon.isNull(), qPrintable(qstrButton + " has no icon"));
        QVERIFY2(icon.availableSizes().contains(QSize(16, 16)),
                 qPrintable(qstrButton + ": no 16 by 16 image"));

        const QString qstrFile = qstrButton == "qtoolbtnSearch" ? "icon_search" : "edit_close";
        const QString qstrExpected = SkinTest::ImageDir(m_qstrSkin) + qstrFile + ".png";
        const QImage imageExpected = QImage(qstrExpected).convertToFormat(QImage::Format_ARGB32);
        // At ratio 1 on both majors: Qt 6 would hand the @2x image to a 16 by 16 request at scale 2.
        const QImage imageShown =
            QtCompat::IconPixmapAt1x(icon, QSize(16, 16)).toImage().convertToFormat(QImage::Format_ARGB32);
        QVERIFY(!imageExpected.isNull());
        QCOMPARE(imageShown.size(), imageExpected.size());
        QVERIFY2(imageShown == imageExpected, qPrintable(qstrButton + " doesn't show " + qstrExpected));
    }
}

QTEST_MAIN(CLS_TestSkinLoader)
#include "tst_skinloader.moc"
