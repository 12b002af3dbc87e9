// The language of the library's texts: that of QLocale() when the first panel is made, English for
// a language without a translation, and the page's own choice through CLS_WgtTranslator.

#include "CLS_LineEdit.h"
#include "CLS_WgtTranslator.h"
#include "CLS_WgtTreeWidget.h"
#include "Ui_CLS_WgtTreeWidget.h"

#include <QApplication>
#include <QListWidget>
#include <QtTest>

// Exposes the panel's form to the tests.
class CLS_TestPanel : public CLS_WgtTreeWidget
{
public:
    using CLS_WgtTreeWidget::CLS_WgtTreeWidget;
    QLineEdit* Line() const { return m_pUi->qlineedtQueryInput; }
    QListWidget* List() const { return m_pUi->qlistWgtQueryResult; }
};

namespace {

// The text of the result list after a search that finds nothing in an empty panel.
QString NoResultsText(CLS_TestPanel& _panel)
{
    _panel.Line()->setText("zebra");
    return _panel.List()->count() == 1 ? _panel.List()->item(0)->text()
                                       : QString("<%1 entries>").arg(_panel.List()->count());
}

} // namespace

class tst_WgtTranslatorLanguage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    // Runs first: the translator is made by the first panel of the process.
    void shouldInstallWithFirstPanelInLanguageOfLocale();
    void shouldInstallOnlyOnce();
    void shouldShowNoResultsInEnglishLocale();
    void shouldFallBackToEnglishWithoutTranslation();
    void shouldShowSimplifiedChineseForChineseLocale();
    void shouldRetranslateOpenPanelOnLanguageChoice();
};

void tst_WgtTranslatorLanguage::initTestCase()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
}

void tst_WgtTranslatorLanguage::cleanup()
{
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a test leaked a top-level widget");
}

void tst_WgtTranslatorLanguage::shouldInstallWithFirstPanelInLanguageOfLocale()
{
    QVERIFY(CLS_WgtTranslator::Instance() == nullptr);
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QVERIFY(CLS_WgtTranslator::Instance() != nullptr);
    QCOMPARE(CLS_WgtTranslator::Instance()->Language(), QString("de"));
    QCOMPARE(NoResultsText(panel), QString("Keine Treffer"));
    QCOMPARE(panel.windowTitle(), QString("Ressourcenbaum"));
}

void tst_WgtTranslatorLanguage::shouldInstallOnlyOnce()
{
    CLS_WgtTranslator* pFirst = CLS_WgtTranslator::Instance();
    QVERIFY(pFirst != nullptr);
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(CLS_WgtTranslator::Instance(), pFirst);
    QCOMPARE(CLS_WgtTranslator::Install(), 0);
    QCOMPARE(CLS_WgtTranslator::Instance(), pFirst);
    QCOMPARE(QCoreApplication::instance()->findChildren<CLS_WgtTranslator*>().size(), 1);
}

void tst_WgtTranslatorLanguage::shouldShowNoResultsInEnglishLocale()
{
    QCOMPARE(CLS_WgtTranslator::SetLanguage(QLocale(QLocale::English, QLocale::UnitedStates)), 0);
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(NoResultsText(panel), QString("No results"));
    QCOMPARE(CLS_WgtTranslator::Instance()->Language(), QString("en"));
}

void tst_WgtTranslatorLanguage::shouldFallBackToEnglishWithoutTranslation()
{
    QCOMPARE(CLS_WgtTranslator::SetLanguage(QLocale(QLocale::German)), 0);
    QCOMPARE(CLS_WgtTranslator::SetLanguage(QLocale(QLocale::French, QLocale::France)), -1);
    QCOMPARE(CLS_WgtTranslator::Instance()->Language(), QString("en"));
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(NoResultsText(panel), QString("No results"));
}

void tst_WgtTranslatorLanguage::shouldShowSimplifiedChineseForChineseLocale()
{
    QCOMPARE(CLS_WgtTranslator::SetLanguage(QLocale(QLocale::Chinese, QLocale::China)), 0);
    QCOMPARE(CLS_WgtTranslator::Instance()->Language(), QString("zh_CN"));
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(NoResultsText(panel), QString::fromUtf8("无结果"));
}

void tst_WgtTranslatorLanguage::shouldRetranslateOpenPanelOnLanguageChoice()
{
    QCOMPARE(CLS_WgtTranslator::SetLanguage(QLocale(QLocale::German)), 0);
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(NoResultsText(panel), QString("Keine Treffer"));
    QCOMPARE(panel.Line()->accessibleName(), QString("Suche"));

    QCOMPARE(CLS_WgtTranslator::SetLanguage(QLocale(QLocale::English)), 0);
    // The panel follows with the application's language change, delivered by the event loop.
    QTRY_COMPARE(panel.List()->item(0)->text(), QString("No results"));
    QCOMPARE(panel.Line()->accessibleName(), QString("Search"));
    QCOMPARE(panel.windowTitle(), QString("Resource tree"));
}

QTEST_MAIN(tst_WgtTranslatorLanguage)
#include "tst_WgtTranslatorLanguage.moc"
