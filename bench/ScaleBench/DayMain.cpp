// One side of a page's day in one tree, in one process (ScaleBench --day runs it on both sides and
// prints the table). A custom tree of groups x 32 channels, checkable, with a search line, in a
// 420 x 900 window with the dark skin: Init, ExpandAll, a mouse over a channel row, 40 pages of
// scrolling with a repaint each, every channel put on line (not timed), one status batch that
// turns every channel off line, the root checked, two keystrokes of the search, the tree deleted.
//
//   ScaleDay --side ours|base|design --groups N --buttons none|always|hover
//       prints "OP <name> <ms>" lines, then "RSS <kB>".
//
// The program links no sibling library: it finds them by name at run time, as a page's
// application does, so that the driver can run the day with and without them on the library
// path. Our tree's status thread runs as it does in a page.

#include "ScaleSides.h"

#include "DesignRowsSide.h"

#include <QCommandLineParser>
#include <QScrollBar>

#include <ctime>

namespace {

double MonotonicSeconds()
{
    timespec stTime{};
    clock_gettime(CLOCK_MONOTONIC, &stTime);
    return stTime.tv_sec + stTime.tv_nsec / 1e9;
}

// Times one operation and prints it, with a "MARK <start> <end> <name>" line of monotonic seconds
// that "perf record -k mono" can cut its samples by (perf report --time <start>,<end>).
void Timed(const char* _pOp, const std::function<void()>& _fnWork)
{
    const double dStart = MonotonicSeconds();
    Report(_pOp, TimeMs(_fnWork));
    std::printf("MARK %.6f %.6f %s\n", dStart, MonotonicSeconds(), _pOp);
    std::fflush(stdout);
}

int RunDay(const QString& _qstrSide, const STRCT_Case& _stCase)
{
    std::unique_ptr<CLS_Side> pSide;
    if (_qstrSide == "ours")
        pSide = std::make_unique<CLS_OurSide>();
    else if (_qstrSide == "design")
        pSide = std::make_unique<CLS_DesignRowsSide>();
    else
        pSide = std::make_unique<CLS_BaseSide>();
    CLS_Side& side = *pSide;

    Timed("init", [&] {
        side.Init(_stCase);
        Settle(side.Window());
    });
    Timed("expand all", [&] {
        side.ExpandAll();
        Settle(side.Window());
    });

    // A mouse over a channel row, so that a hover tool bar is up during the rest.
    QAbstractItemView* pView = side.View();
    const QPoint point(40, pView->viewport()->height() / 2);
    QMouseEvent move(QEvent::MouseMove, point, pView->viewport()->mapToGlobal(point), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(pView->viewport(), &move);
    Settle(side.Window());
    QScrollBar* pBar = pView->verticalScrollBar();
    Timed("scroll 40 pages", [&] {
        for (int i = 0; i < CONST_iScrollPages; ++i) {
            pBar->setValue(pBar->value() + pBar->pageStep());
            QCoreApplication::processEvents();
            pView->viewport()->repaint();
        }
    });

    side.Status(Batch(_stCase.m_iGroups, 1, 1));
    Settle(side.Window());
    const StatusMap qmapOffline = Batch(_stCase.m_iGroups, 1, 0);
    Timed("status batch, all off line", [&] {
        side.Status(qmapOffline);
        Settle(side.Window());
    });

    Timed("check the root", [&] {
        side.CheckRoot(true);
        Settle(side.Window());
    });

    QLineEdit* pLine = side.SearchLine();
    pLine->setFocus();
    double dKeys = 0;
    const double dKeysStart = MonotonicSeconds();
    for (const auto& key :
         {qMakePair(Qt::Key_7, QStringLiteral("7")), qMakePair(Qt::Key_0, QStringLiteral("0"))}) {
        dKeys += TimeMs([&] {
            TypeKey(pLine, key.first, key.second);
            Settle(side.Window());
        });
    }
    Report("search keystroke", dKeys / 2);
    std::printf("MARK %.6f %.6f search keystroke\n", dKeysStart, MonotonicSeconds());

    Timed("delete the tree", [&] {
        side.Destroy();
        QCoreApplication::processEvents();
    });
    std::printf("RSS %ld\n", PeakRssKb());
    std::fflush(stdout);
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    QCommandLineOption optSide("side", "ours, base, or design (base with our design's rows).", "side",
                               "ours");
    QCommandLineOption optGroups("groups", "Groups of 32 channels.", "count", "1000");
    QCommandLineOption optButtons("buttons", "none, always or hover.", "type", "hover");
    parser.addOptions({optSide, optGroups, optButtons});
    parser.process(app);

    STRCT_Case stCase;
    stCase.m_iGroups = parser.value(optGroups).toInt();
    stCase.m_qstrButtons = parser.value(optButtons);
    stCase.m_blExpanded = true;
    return RunDay(parser.value(optSide), stCase);
}
