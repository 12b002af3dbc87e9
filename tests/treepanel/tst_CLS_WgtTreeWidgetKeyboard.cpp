// The search driven from the keyboard: Down from the line into the results, Return or Enter on a
// result, Up back to the line, Escape clearing the search. Real key events on the widgets.

#include "CLS_LineEdit.h"
#include "CLS_TreeTestUtil.h"
#include "CLS_WgtBaseTreeWidget.h"
#include "CLS_WgtTreeWidget.h"
#include "Ui_CLS_WgtTreeWidget.h"

#include <QApplication>
#include <QListWidget>
#include <QShortcut>
#include <QSignalSpy>
#include <QToolButton>
#include <QtTest>

class CLS_TestPanel : public CLS_WgtTreeWidget
{
public:
    using CLS_WgtTreeWidget::CLS_WgtTreeWidget;
    using CLS_WgtTreeWidget::m_pBaseTree;
    using CLS_WgtTreeWidget::m_pBtnClear;

    QLineEdit* Line() const { return m_pUi->qlineedtQueryInput; }
    QListWidget* List() const { return m_pUi->qlistWgtQueryResult; }
};

namespace {

using CLS_TreeTestUtil::MakeItem;

// A root row "Site" with "Camera 0" .. "Camera 4" and "Door".
QMap<QString, CLS_TreeItem> CameraTree()
{
    QMap<QString, CLS_TreeItem> qmapItems;
    qmapItems.insert("root", MakeItem("root", QString(), 0, "Site"));
    for (int i = 0; i < 5; ++i)
        qmapItems.insert(QString("cam%1").arg(i),
                         MakeItem(QString("cam%1").arg(i), "root", i, QString("Camera %1").arg(i)));
    qmapItems.insert("door", MakeItem("door", "root", 100, "Door"));
    return qmapItems;
}

// The ids of the SignSelected emissions, in order.
QStringList SelectedIds(const QSignalSpy& _spy)
{
    QStringList qlstIds;
    for (const QList<QVariant>& qlstArgs : _spy)
        qlstIds << qlstArgs.at(0).toString();
    return qlstIds;
}

QString FocusName()
{
    QWidget* pFocus = QApplication::focusWidget();
    return pFocus != nullptr ? pFocus->objectName() + "(" + pFocus->metaObject()->className() + ")" : "none";
}

} // namespace

class tst_CLS_WgtTreeWidgetKeyboard : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void shouldMoveFocusToFirstResultOnDown();
    void shouldKeepFocusInLineOnDownWithoutResults();
    void shouldGoToRowOnReturnOnResult_data();
    void shouldGoToRowOnReturnOnResult();
    void shouldCloseSearchOnReturnOnNoResultsEntry();
    void shouldReturnToLineOnUpOnFirstResult();
    void shouldMoveUpWithinListBelowFirstResult();
    void shouldClearSearchOnEscapeInLine();
    void shouldClearSearchOnEscapeInList();
    void shouldPassEscapeOnWithNoSearchOpen();
    void shouldTakeEscapeBeforeWindowShortcutWhileSearching();

private:
    // Given a shown, active panel with the camera tree and "camera" typed into its line.
    void Search(const QString& _qstrText);

    CLS_TestPanel* m_pPanel = nullptr;
};

void tst_CLS_WgtTreeWidgetKeyboard::init()
{
    m_pPanel = new CLS_TestPanel(nullptr, false, false, true, false, false, ITEM_BTN_SHOW_ALWAYS);
    QCOMPARE(m_pPanel->Init("root", CameraTree(), true), 0);
    m_pPanel->resize(300, 500);
    m_pPanel->show();
    QApplication::setActiveWindow(m_pPanel);
    QVERIFY(QTest::qWaitForWindowActive(m_pPanel));
}

void tst_CLS_WgtTreeWidgetKeyboard::cleanup()
{
    delete m_pPanel;
    m_pPanel = nullptr;
    QVERIFY2(QApplication::topLevelWidgets().isEmpty(), "a test leaked a top-level widget");
}

void tst_CLS_WgtTreeWidgetKeyboard::Search(const QString& _qstrText)
{
    m_pPanel->Line()->setFocus(Qt::MouseFocusReason);
    QTRY_VERIFY(m_pPanel->Line()->hasFocus());
    QTest::keyClicks(m_pPanel->Line(), _qstrText);
    QTRY_VERIFY(m_pPanel->List()->isVisible());
}

void tst_CLS_WgtTreeWidgetKeyboard::shouldMoveFocusToFirstResultOnDown()
{
    Search("camera");
    QCOMPARE(m_pPanel->List()->count(), 5);
    QTest::keyClick(m_pPanel->Line(), Qt::Key_Down);
    QTRY_VERIFY2(m_pPanel->List()->hasFocus(), qPrintable("focus on " + FocusName()));
    QCOMPARE(m_pPanel->List()->currentRow(), 0);
    QCOMPARE(m_pPanel->Line()->text(), QString("camera")); // the search stays open
}

void tst_CLS_WgtTreeWidgetKeyboard::shouldKeepFocusInLineOnDownWithoutResults()
{
    m_pPanel->Line()->setFocus(Qt::MouseFocusReason);
    QTRY_VERIFY(m_pPanel->Line()->hasFocus());
    QTest::keyClick(m_pPanel->Line(), Qt::Key_Down);
    QVERIFY2(m_pPanel->Line()->hasFocus(), qPrintable("focus on " + FocusName()));
    QVERIFY(m_pPanel->List()->isHidden());
}

void tst_CLS_WgtTreeWidgetKeyboard::shouldGoToRowOnReturnOnResult_data()
{
    QTest::addColumn<int>("iKey");
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
}

void tst_CLS_WgtTreeWidgetKeyboard::shouldGoToRowOnReturnOnResult()
{
    QFETCH(int, iKey);
    Search("camera");
    QTest::keyClick(m_pPanel->Line(), Qt::Key_Down);
    QTest::keyClick(m_pPanel->List(), Qt::Key_Down);
    QCOMPARE(m_pPanel->List()->currentItem()->data(Qt::UserRole).toString(), QString("cam1"));

    QSignalSpy spySelected(m_pPanel, &CLS_WgtTreeWidget::SignSelected);
    QTest::keyClick(m_pPanel->List(), Qt::Key(iKey),
                    iKey == Qt::Key_Enter ? Qt::KeypadModifier : Qt::NoModifier);

    CLS_WgtBaseTreeWidget* pTree = m_pPanel->m_pBaseTree;
    QCOMPARE(SelectedIds(spySelected), QStringList({"cam1"}));
    QCOMPARE(pTree->currentItem(), pTree->GetNodeById("cam1"));
    QVERIFY(m_pPanel->Line()->text().isEmpty());
    QVERIFY(m_pPanel->List()->isHidden());
    QCOMPARE(m_pPanel->List()->count(), 0);
    QVERIFY(m_pPanel->m_pBtnClear->isHidden());
    QVERIFY(m_pPanel->Line()->isVisible());
    QTRY_VERIFY2(pTree->hasFocus(), qPrintable("focus on " + FocusName()));
    QCOMPARE(SelectedIds(spySelected), QStringList({"cam1"})); // the focus made no other row current
}

void tst_CLS_WgtTreeWidgetKeyboard::shouldCloseSearchOnReturnOnNoResultsEntry()
{
    Search("zebra");
    QCOMPARE(m_pPanel->List()->count(), 1);
    QTest::keyClick(m_pPanel->Line(), Qt::Key_Down);
    QTRY_VERIFY(m_pPanel->List()->hasFocus());

    QSignalSpy spySelected(m_pPanel, &CLS_WgtTreeWidget::SignSelected);
    QTest::keyClick(m_pPanel->List(), Qt::Key_Return);
    QVERIFY(m_pPanel->List()->isHidden());
    QVERIFY(m_pPanel->Line()->text().isEmpty());
    QVERIFY(m_pPanel->Line()->isVisible());
    QTRY_VERIFY2(m_pPanel->Line()->hasFocus(), qPrintable("focus on " + FocusName()));
    QCOMPARE(SelectedIds(spySelected), QStringList());
}

void tst_CLS_WgtTreeWidgetKeyboard::shouldReturnToLineOnUpOnFirstResult()
{
    Search("camera");
    QTest::keyClick(m_pPanel->Line(), Qt::Key_Down);
    QTRY_VERIFY(m_pPanel->List()->hasFocus());
    QTest::keyClick(m_pPanel->List(), Qt::Key_Up);
    QTRY_VERIFY2(m_pPanel->Line()->hasFocus(), qPrintable("focus on " + FocusName()));
    QVERIFY(m_pPanel->List()->isVisible());
    QCOMPARE(m_pPanel->Line()->text(), QString("camera"));
}

void tst_CLS_WgtTreeWidgetKeyboard::shouldMoveUpWithinListBelowFirstResult()
{
    Search("camera");
    QTest::keyClick(m_pPanel->Line(), Qt::Key_Down);
    QTest::keyClick(m_pPanel->List(), Qt::Key_Down);
    QTest::keyClick(m_pPanel->List(), Qt::Key_Down);
    QCOMPARE(m_pPanel->List()->currentRow(), 2);
    QTest::keyClick(m_pPanel->List(), Qt::Key_Up);
    QCOMPARE(m_pPanel->List()->currentRow(), 1);
    QVERIFY2(m_pPanel->List()->hasFocus(), qPrintable("focus on " + FocusName()));
}

void tst_CLS_WgtTreeWidgetKeyboard::shouldClearSearchOnEscapeInLine()
{
    Search("camera");
    QSignalSpy spySelected(m_pPanel, &CLS_WgtTreeWidget::SignSelected);
    QTest::keyClick(m_pPanel->Line(), Qt::Key_Escape);
    QVERIFY(m_pPanel->Line()->text().isEmpty());
    QVERIFY(m_pPanel->List()->isHidden());
    QCOMPARE(m_pPanel->List()->count(), 0);
    QVERIFY(m_pPanel->m_pBtnClear->isHidden());
    QVERIFY(m_pPanel->Line()->isVisible());
    QVERIFY2(m_pPanel->Line()->hasFocus(), qPrintable("focus on " + FocusName()));
    QCOMPARE(SelectedIds(spySelected), QStringList());
}

void tst_CLS_WgtTreeWidgetKeyboard::shouldClearSearchOnEscapeInList()
{
    Search("camera");
    QTest::keyClick(m_pPanel->Line(), Qt::Key_Down);
    QTRY_VERIFY(m_pPanel->List()->hasFocus());
    QSignalSpy spySelected(m_pPanel, &CLS_WgtTreeWidget::SignSelected);
    QTest::keyClick(m_pPanel->List(), Qt::Key_Escape);
    QVERIFY(m_pPanel->Line()->text().isEmpty());
    QVERIFY(m_pPanel->List()->isHidden());
    QCOMPARE(m_pPanel->List()->count(), 0);
    QVERIFY(m_pPanel->m_pBtnClear->isHidden());
    QVERIFY(m_pPanel->Line()->isVisible());
    QTRY_VERIFY2(m_pPanel->Line()->hasFocus(), qPrintable("focus on " + FocusName()));
    QCOMPARE(SelectedIds(spySelected), QStringList());
}

// With nothing to clear, Escape goes on to the line's parents, where a dialog would close on it.
void tst_CLS_WgtTreeWidgetKeyboard::shouldPassEscapeOnWithNoSearchOpen()
{
    m_pPanel->Line()->setFocus(Qt::MouseFocusReason);
    QTRY_VERIFY(m_pPanel->Line()->hasFocus());
    QKeyEvent escapeOpen(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QTest::keyClicks(m_pPanel->Line(), "door");
    QApplication::sendEvent(m_pPanel->Line(), &escapeOpen);
    QVERIFY2(escapeOpen.isAccepted(), "Escape on an open search was passed on");
    QVERIFY(m_pPanel->Line()->text().isEmpty());

    QKeyEvent escapeClosed(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(m_pPanel->Line(), &escapeClosed);
    QVERIFY2(!escapeClosed.isAccepted(), "Escape with no search open was taken");
}

// A page's Escape shortcut (say, closing its window) waits while a search is open, and works again
// once there is none.
void tst_CLS_WgtTreeWidgetKeyboard::shouldTakeEscapeBeforeWindowShortcutWhileSearching()
{
    QShortcut shortcut(QKeySequence(Qt::Key_Escape), m_pPanel);
    QSignalSpy spyShortcut(&shortcut, &QShortcut::activated);
    Search("camera");
    QTest::keyClick(m_pPanel->Line(), Qt::Key_Escape);
    QCOMPARE(spyShortcut.count(), 0);
    QVERIFY(m_pPanel->Line()->text().isEmpty());
    QVERIFY(m_pPanel->List()->isHidden());

    QTest::keyClick(m_pPanel->Line(), Qt::Key_Escape);
    QCOMPARE(spyShortcut.count(), 1);
}

QTEST_MAIN(tst_CLS_WgtTreeWidgetKeyboard)
#include "tst_CLS_WgtTreeWidgetKeyboard.moc"
