// An application's own translation of one of the library's keys wins over the library's text,
// whether the application installed its translator before the first panel or after it.

#include "CLS_LineEdit.h"
#include "CLS_WgtTranslator.h"
#include "CLS_WgtTreeWidget.h"
#include "Ui_CLS_WgtTreeWidget.h"

#include <QApplication>
#include <QHash>
#include <QListWidget>
#include <QTranslator>
#include <QtTest>

class CLS_TestPanel : public CLS_WgtTreeWidget
{
public:
    using CLS_WgtTreeWidget::CLS_WgtTreeWidget;
    QLineEdit* Line() const { return m_pUi->qlineedtQueryInput; }
    QListWidget* List() const { return m_pUi->qlistWgtQueryResult; }
};

// An application's translator with a few texts of its own.
class CLS_TestAppTranslator : public QTranslator
{
public:
    void Add(const char* _pContext, const char* _pKey, const QString& _qstrText)
    {
        m_qhashTexts.insert(QByteArray(_pContext) + '/' + _pKey, _qstrText);
    }
    QString translate(const char* _pContext, const char* _pSourceText, const char* _pDisambiguation,
                      int _iCount) const override
    {
        Q_UNUSED(_pDisambiguation)
        Q_UNUSED(_iCount)
        return m_qhashTexts.value(QByteArray(_pContext) + '/' + _pSourceText);
    }
    bool isEmpty() const override { return m_qhashTexts.isEmpty(); }

private:
    QHash<QByteArray, QString> m_qhashTexts;
};

namespace {

QString NoResultsText(CLS_TestPanel& _panel)
{
    _panel.Line()->setText("zebra");
    return _panel.List()->count() == 1 ? _panel.List()->item(0)->text() : QString();
}

QString Tr(const char* _pContext, const char* _pKey)
{
    return QCoreApplication::translate(_pContext, _pKey);
}

} // namespace

class tst_WgtTranslatorPrecedence : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    // In this order: the early translator is installed before the first panel.
    void shouldPreferTranslatorInstalledBeforeFirstPanel();
    void shouldGiveLibraryTextForKeysTheApplicationLeaves();
    void shouldPreferTranslatorInstalledAfterFirstPanel();
    void shouldGiveLibraryTextAgainWhenApplicationTranslatorGoes();

private:
    CLS_TestAppTranslator m_clsEarly;
    CLS_TestAppTranslator m_clsLate;
};

void tst_WgtTranslatorPrecedence::initTestCase()
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    m_clsEarly.Add("CLS_WgtTreeWidget", "msg_no_results", "Nothing matches");
    m_clsEarly.Add("QObject", "lbl_car_calor_red", "Scarlet");
    QVERIFY(QCoreApplication::installTranslator(&m_clsEarly));
    QVERIFY(CLS_WgtTranslator::Instance() == nullptr);
}

void tst_WgtTranslatorPrecedence::cleanup()
{
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a test leaked a top-level widget");
}

void tst_WgtTranslatorPrecedence::shouldPreferTranslatorInstalledBeforeFirstPanel()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QVERIFY(CLS_WgtTranslator::Instance() != nullptr); // installed after the application's, so asked first
    QCOMPARE(NoResultsText(panel), QString("Nothing matches"));
    QCOMPARE(Tr("QObject", "lbl_car_calor_red"), QString("Scarlet"));
}

void tst_WgtTranslatorPrecedence::shouldGiveLibraryTextForKeysTheApplicationLeaves()
{
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(panel.Line()->accessibleName(), QString("Search"));
    QCOMPARE(Tr("QObject", "lbl_car_calor_white"), QString("White"));
    QCOMPARE(Tr("CLS_WgtTreeWidget", "acc_btn_clear"), QString("Clear search"));
}

void tst_WgtTranslatorPrecedence::shouldPreferTranslatorInstalledAfterFirstPanel()
{
    m_clsLate.Add("CLS_WgtTreeWidget", "acc_btn_clear", "Wipe the search");
    QVERIFY(QCoreApplication::installTranslator(&m_clsLate));
    QCOMPARE(Tr("CLS_WgtTreeWidget", "acc_btn_clear"), QString("Wipe the search"));
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(NoResultsText(panel), QString("Nothing matches"));
    QVERIFY(QCoreApplication::removeTranslator(&m_clsLate));
    QCOMPARE(Tr("CLS_WgtTreeWidget", "acc_btn_clear"), QString("Clear search"));
}

void tst_WgtTranslatorPrecedence::shouldGiveLibraryTextAgainWhenApplicationTranslatorGoes()
{
    QVERIFY(QCoreApplication::removeTranslator(&m_clsEarly));
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(NoResultsText(panel), QString("No results"));
    QCOMPARE(Tr("QObject", "lbl_car_calor_red"), QString("Red"));
}

QTEST_MAIN(tst_WgtTranslatorPrecedence)
#include "tst_WgtTranslatorPrecedence.moc"
