// Choice between the plain and the scaled sheet by QT_SCALE_FACTOR, which the loader reads once per
// process. CTest runs this program once per factor; the environment tells it what to expect:
//   WGT_TEST_SKIN           the skin folder of this run, one per run so that runs don't collide
//   WGT_TEST_SCALED_SUFFIX  the ending of the sheet that must win, "_4K.qss" for a factor of 2;
//                           empty when the plain ".qss" sheet must be used
//   WGT_TEST_UNSET_SCALE    when set, QT_SCALE_FACTOR is removed before the loader sees it

#include "CLS_EnvGuard.h"
#include "CLS_SkinFiles.h"
#include "FunctionUtil.h"

#include <QtTest>

#include <memory>

namespace {
// Every ending a factor could lead to in these runs, the plain one first.
const QStringList& AllSuffixes()
{
    static const QStringList s_qlstSuffixes{".qss",    "_0K.qss", "_1K.qss", "_2K.qss",  "_2.5K.qss",
                                            "_3K.qss", "_4K.qss", "_6K.qss", "_1.0K.qss"};
    return s_qlstSuffixes;
}
} // namespace

class tst_StyleLoaderScale : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void shouldChooseSheetByScale();
    void shouldFallBackToPlainSheetWhenScaledMissing();
    void shouldReportMissingWhenNoSheetExists();
    void shouldUseScaledSheetAlone();
    void shouldLoadChosenSheetText();
    void shouldReadScaleFactorOnce();

private:
    std::unique_ptr<CLS_SkinFiles> m_pSkin;
    QString m_qstrExpectedSuffix; // ".qss" when no scaled sheet may win
    bool m_blScaled = false;
};

void tst_StyleLoaderScale::initTestCase()
{
    if (qEnvironmentVariableIsSet("WGT_TEST_UNSET_SCALE")) {
        qunsetenv("QT_SCALE_FACTOR");
    }
    const QString qstrSkin = qEnvironmentVariable("WGT_TEST_SKIN");
    QVERIFY2(!qstrSkin.isEmpty(), "WGT_TEST_SKIN must name this run's skin");
    m_qstrExpectedSuffix = qEnvironmentVariable("WGT_TEST_SCALED_SUFFIX");
    m_blScaled = !m_qstrExpectedSuffix.isEmpty();
    if (!m_blScaled) {
        m_qstrExpectedSuffix = ".qss";
    }
    qInfo("QT_SCALE_FACTOR %s, expecting \"%s\"",
          qEnvironmentVariableIsSet("QT_SCALE_FACTOR")
              ? qPrintable("=" + qEnvironmentVariable("QT_SCALE_FACTOR"))
              : "unset",
          qPrintable(m_qstrExpectedSuffix));

    QDir(CLS_SkinFiles::SkinRoot(qstrSkin)).removeRecursively();
    m_pSkin.reset(new CLS_SkinFiles(qstrSkin));
}

void tst_StyleLoaderScale::cleanupTestCase()
{
    m_pSkin.reset();
}

void tst_StyleLoaderScale::shouldChooseSheetByScale()
{
    for (const QString& qstrSuffix : AllSuffixes()) {
        QVERIFY(m_pSkin->Write("WgtScaleAll/qss/Sheet" + qstrSuffix, qstrSuffix.toLatin1()));
    }

    QString qstrPath;
    const bool blExists = FunctionUtil::GetQssPath("WgtScaleAll", "Sheet", qstrPath);

    QVERIFY(blExists);
    QCOMPARE(qstrPath, m_pSkin->SheetBase("WgtScaleAll", "Sheet") + m_qstrExpectedSuffix);
}

void tst_StyleLoaderScale::shouldFallBackToPlainSheetWhenScaledMissing()
{
    QVERIFY(m_pSkin->Write("WgtScalePlain/qss/Sheet.qss", "/*plain*/"));

    QString qstrPath;
    const bool blExists = FunctionUtil::GetQssPath("WgtScalePlain", "Sheet", qstrPath);

    QVERIFY(blExists);
    QCOMPARE(qstrPath, m_pSkin->SheetBase("WgtScalePlain", "Sheet") + ".qss");
}

void tst_StyleLoaderScale::shouldReportMissingWhenNoSheetExists()
{
    QString qstrPath;
    const bool blExists = FunctionUtil::GetQssPath("WgtScaleNone", "Sheet", qstrPath);

    QVERIFY(!blExists);
    QCOMPARE(qstrPath, m_pSkin->SheetBase("WgtScaleNone", "Sheet") + ".qss");
}

void tst_StyleLoaderScale::shouldUseScaledSheetAlone()
{
    // Only scaled sheets, no plain one: found only when this run's factor names one of them.
    for (const QString& qstrSuffix : AllSuffixes().mid(1)) {
        QVERIFY(m_pSkin->Write("WgtScaleOnly/qss/Sheet" + qstrSuffix, qstrSuffix.toLatin1()));
    }

    QString qstrPath;
    const bool blExists = FunctionUtil::GetQssPath("WgtScaleOnly", "Sheet", qstrPath);

    QCOMPARE(blExists, m_blScaled);
    QCOMPARE(qstrPath, m_pSkin->SheetBase("WgtScaleOnly", "Sheet") + m_qstrExpectedSuffix);
}

void tst_StyleLoaderScale::shouldLoadChosenSheetText()
{
    for (const QString& qstrSuffix : AllSuffixes()) {
        QVERIFY(m_pSkin->Write("WgtScaleText/qss/WgtScaleText" + qstrSuffix,
                               "/*" + qstrSuffix.toLatin1() + "*/"));
    }

    const QString qstrStyle = FunctionUtil::LoadStyleMini("WgtScaleText", nullptr, "");

    QCOMPARE(qstrStyle, "/*" + m_qstrExpectedSuffix + "*/");
}

void tst_StyleLoaderScale::shouldReadScaleFactorOnce()
{
    for (const QString& qstrSuffix : AllSuffixes()) {
        QVERIFY(m_pSkin->Write("WgtScaleOnce/qss/Sheet" + qstrSuffix, qstrSuffix.toLatin1()));
    }
    QString qstrPath;
    QVERIFY(FunctionUtil::GetQssPath("WgtScaleOnce", "Sheet", qstrPath));

    // 3 would choose "_6K.qss"; the factor read by the first call stays.
    CLS_EnvGuard clsScale("QT_SCALE_FACTOR", "3");
    QVERIFY(FunctionUtil::GetQssPath("WgtScaleOnce", "Sheet", qstrPath));

    QCOMPARE(qstrPath, m_pSkin->SheetBase("WgtScaleOnce", "Sheet") + m_qstrExpectedSuffix);
}

QTEST_GUILESS_MAIN(tst_StyleLoaderScale)
#include "tst_styleloader_scale.moc"
