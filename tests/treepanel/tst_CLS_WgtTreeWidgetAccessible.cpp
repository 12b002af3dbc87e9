// Names and descriptions for assistive technology: the search line, the result list, the clear and
// search buttons, and each row tool button, read through Qt's accessibility interfaces.

#include "CLS_LineEdit.h"
#include "CLS_WgtItemToolBar.h"
#include "CLS_WgtTranslator.h"
#include "CLS_WgtTreeWidget.h"
#include "Ui_CLS_WgtTreeWidget.h"

#include <QAccessible>
#include <QApplication>
#include <QListWidget>
#include <QToolButton>
#include <QtTest>

class CLS_TestPanel : public CLS_WgtTreeWidget
{
public:
    using CLS_WgtTreeWidget::CLS_WgtTreeWidget;
    using CLS_WgtTreeWidget::m_pBtnClear;
    using CLS_WgtTreeWidget::m_pBtnSearch;

    QLineEdit* Line() const { return m_pUi->qlineedtQueryInput; }
    QListWidget* List() const { return m_pUi->qlistWgtQueryResult; }
};

namespace {

QString AccessibleText(QObject* _pObject, QAccessible::Text _iWhich)
{
    QAccessibleInterface* pInterface = QAccessible::queryAccessibleInterface(_pObject);
    return pInterface != nullptr ? pInterface->text(_iWhich) : QString("<no interface>");
}

CLS_ItemButton MakeButton(const QString& _qstrId, const QString& _qstrText, const QString& _qstrTip)
{
    CLS_ItemButton clsButton;
    clsButton.m_qstrId = _qstrId;
    clsButton.m_qstrText = _qstrText;
    clsButton.m_qstrTooltip = _qstrTip;
    return clsButton;
}

} // namespace

class tst_CLS_WgtTreeWidgetAccessible : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();

    void shouldNameSearchWidgets_data();
    void shouldNameSearchWidgets();
    void shouldNameRowButtonsAfterTextOrToolTip();
    void shouldTranslateAccessibleTextsWithLanguage();
};

void tst_CLS_WgtTreeWidgetAccessible::initTestCase()
{
    QCOMPARE(CLS_WgtTranslator::SetLanguage(QLocale(QLocale::English, QLocale::UnitedStates)), 0);
}

void tst_CLS_WgtTreeWidgetAccessible::cleanup()
{
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a test leaked a top-level widget");
}

void tst_CLS_WgtTreeWidgetAccessible::shouldNameSearchWidgets_data()
{
    QTest::addColumn<QString>("qstrWidget");
    QTest::addColumn<QString>("qstrName");
    QTest::addColumn<QString>("qstrDescription");
    QTest::newRow("line") << "line"
                          << "Search"
                          << "Type part of a name to find rows in the tree. Down moves to the results, "
                             "Escape clears the search.";
    QTest::newRow("list") << "list"
                          << "Search results"
                          << "Rows whose names match the search. Return goes to the row, Up on the first "
                             "result returns to the search line, Escape clears the search.";
    QTest::newRow("clear") << "clear"
                           << "Clear search"
                           << "Empties the search line and closes the results.";
    QTest::newRow("search") << "search"
                            << "Start search"
                            << "Searches the tree for the text in the search line.";
}

void tst_CLS_WgtTreeWidgetAccessible::shouldNameSearchWidgets()
{
    QFETCH(QString, qstrWidget);
    QFETCH(QString, qstrName);
    QFETCH(QString, qstrDescription);
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QMap<QString, QWidget*> qmapWidgets{{"line", panel.Line()},
                                        {"list", panel.List()},
                                        {"clear", panel.m_pBtnClear},
                                        {"search", panel.m_pBtnSearch}};
    QWidget* pWidget = qmapWidgets.value(qstrWidget);
    QCOMPARE(AccessibleText(pWidget, QAccessible::Name), qstrName);
    QCOMPARE(AccessibleText(pWidget, QAccessible::Description), qstrDescription);
}

void tst_CLS_WgtTreeWidgetAccessible::shouldNameRowButtonsAfterTextOrToolTip()
{
    CLS_WgtItemToolBar bar;
    bar.Init({MakeButton("play", "Play", "Play live video"), MakeButton("record", QString(), "Record"),
              MakeButton("lock", "Lock", QString())},
             "cam1");
    const QList<QAction*> qlstActions = bar.actions();
    QCOMPARE(qlstActions.size(), 3);
    QStringList qlstTexts;
    for (QAction* pAction : qlstActions) {
        QWidget* pButton = bar.widgetForAction(pAction);
        QVERIFY(qobject_cast<QToolButton*>(pButton) != nullptr);
        qlstTexts << AccessibleText(pButton, QAccessible::Name) + " / " +
                         AccessibleText(pButton, QAccessible::Description);
    }
    QCOMPARE(qlstTexts, QStringList({"Play / Play live video", "Record / Acts on the row of this button.",
                                     "Lock / Acts on the row of this button."}));
}

void tst_CLS_WgtTreeWidgetAccessible::shouldTranslateAccessibleTextsWithLanguage()
{
    QCOMPARE(CLS_WgtTranslator::SetLanguage(QLocale(QLocale::German, QLocale::Germany)), 0);
    CLS_TestPanel panel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    CLS_WgtItemToolBar bar;
    bar.Init({MakeButton("record", QString(), "Aufnahme")}, "cam1");
    QWidget* pButton = bar.widgetForAction(bar.actions().value(0));
    QCOMPARE(AccessibleText(panel.Line(), QAccessible::Name), QString("Suche"));
    QCOMPARE(AccessibleText(panel.m_pBtnClear, QAccessible::Name), QString("Suche leeren"));
    QCOMPARE(AccessibleText(pButton, QAccessible::Description),
             QString::fromUtf8("Wirkt auf die Zeile dieser Schaltfläche."));

    // Open widgets follow a later choice with the language change the event loop delivers.
    QCOMPARE(CLS_WgtTranslator::SetLanguage(QLocale(QLocale::English)), 0);
    QTRY_COMPARE(AccessibleText(panel.List(), QAccessible::Name), QString("Search results"));
    QTRY_COMPARE(AccessibleText(pButton, QAccessible::Description),
                 QString("Acts on the row of this button."));
}

QTEST_MAIN(tst_CLS_WgtTreeWidgetAccessible)
#include "tst_CLS_WgtTreeWidgetAccessible.moc"
