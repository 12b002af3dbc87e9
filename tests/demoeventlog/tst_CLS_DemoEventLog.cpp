// The demo's event log, shown offscreen: every row sits right under the one before it and is as tall
// as the lines it shows, at the width the list has now, with or without a scroll bar.

#include "CLS_DemoEventLog.h"

#include <QFontMetricsF>
#include <QScrollBar>
#include <QStyle>
#include <QtTest>

#include <cmath>

namespace {

// "row: top+height" for each row, and where the next one should start, for a failure message.
QByteArray Rows(const CLS_DemoEventLog& _log)
{
    QStringList qlstRows;
    for (int i = 0; i < _log.count(); ++i) {
        const QRect qrectRow = _log.visualItemRect(_log.item(i));
        qlstRows << QString("%1: %2+%3").arg(i).arg(qrectRow.top()).arg(qrectRow.height());
    }
    return QString("viewport %1 wide; rows %2")
        .arg(_log.viewport()->width())
        .arg(qlstRows.join(", "))
        .toUtf8();
}

// Every row starts where the one before it ends.
bool RowsAbut(const CLS_DemoEventLog& _log)
{
    for (int i = 0; i + 1 < _log.count(); ++i) {
        const QRect qrectRow = _log.visualItemRect(_log.item(i));
        if (_log.visualItemRect(_log.item(i + 1)).top() != qrectRow.top() + qrectRow.height())
            return false;
    }
    return true;
}

int LineHeight(const CLS_DemoEventLog& _log)
{
    return static_cast<int>(std::ceil(QFontMetricsF(_log.font()).height()));
}

// Space left and right of a row's text: the style's, as beside an item's text.
int TextMargin(const CLS_DemoEventLog& _log)
{
    return _log.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &_log) + 1;
}

} // namespace

class tst_CLS_DemoEventLog : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void shouldGiveLineThatFitsOneLineOfHeightWithoutScrollBar();
    void shouldWrapRowsAgainWhenListGetsNarrower();
};

void tst_CLS_DemoEventLog::cleanup()
{
    QVERIFY(QApplication::topLevelWidgets().isEmpty());
}

void tst_CLS_DemoEventLog::shouldGiveLineThatFitsOneLineOfHeightWithoutScrollBar()
{
    // Given a log just wide enough for its first line, with less room to spare than a scroll bar takes
    CLS_DemoEventLog log;
    log.resize(600, 400);
    log.show();
    QVERIFY(QTest::qWaitForWindowExposed(&log));
    log.AppendLine("status batch 2: 800 channels, 657 on, 143 off");
    const QString qstrFirst = log.item(0)->text();
    const int iTextWidth =
        static_cast<int>(std::ceil(QFontMetricsF(log.font()).horizontalAdvance(qstrFirst)));
    const int iFrame = log.width() - log.viewport()->width();
    log.resize(iTextWidth + 2 * TextMargin(log) + iFrame + 2, 400);
    QVERIFY(log.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, log.verticalScrollBar()) > 2);

    // When more rows come, fewer than fill the list
    log.AppendLine("check batch of 2: +North 01-01, +North 01-02");
    log.AppendLine("favourite selected: North 01-01");

    // Then the first row is one line high and the rows follow each other without a gap
    QTRY_VERIFY2(!log.verticalScrollBar()->isVisible() && RowsAbut(log), Rows(log));
    QVERIFY2(log.visualItemRect(log.item(0)).height() == LineHeight(log), Rows(log));
}

void tst_CLS_DemoEventLog::shouldWrapRowsAgainWhenListGetsNarrower()
{
    // Given a log whose rows are one line each
    CLS_DemoEventLog log;
    log.resize(700, 400);
    log.show();
    QVERIFY(QTest::qWaitForWindowExposed(&log));
    for (int i = 1; i <= 3; ++i)
        log.AppendLine(QString("status batch %1: 800 channels, 657 on, 143 off").arg(i));
    QTRY_VERIFY2(RowsAbut(log) && log.visualItemRect(log.item(0)).height() == LineHeight(log), Rows(log));

    // When the list gets narrower than a line, and wide again
    log.resize(QFontMetricsF(log.font()).horizontalAdvance(log.item(0)->text()) * 0.7, 400);

    // Then each row takes two lines, and one again
    QTRY_VERIFY2(RowsAbut(log) && log.visualItemRect(log.item(2)).height() == 2 * LineHeight(log), Rows(log));
    log.resize(700, 400);
    QTRY_VERIFY2(RowsAbut(log) && log.visualItemRect(log.item(2)).height() == LineHeight(log), Rows(log));
}

QTEST_MAIN(tst_CLS_DemoEventLog)
#include "tst_CLS_DemoEventLog.moc"
