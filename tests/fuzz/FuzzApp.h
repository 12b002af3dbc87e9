#pragma once
// The one QApplication of a fuzz target, made in LLVMFuzzerInitialize on the offscreen platform and
// kept for the process (libFuzzer never returns to a place where it could be destroyed).

#include <QApplication>
#include <QByteArray>
#include <QFont>
#include <QFontMetrics>
#include <QTreeWidget>

#include <cstdlib>

namespace WgtFuzz {

inline QApplication* MakeFuzzApplication(int* _pArgc, char*** _pArgv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    static int s_iArgc = 1;
    static char s_szName[] = "wgt_fuzz";
    static char* s_apArgv[] = {s_szName, nullptr};
    Q_UNUSED(_pArgc)
    Q_UNUSED(_pArgv)
    // libFuzzer's own flags are no business of Qt's; it gets a bare command line.
    static QApplication* s_pApp = new QApplication(s_iArgc, s_apArgv);
    // Warm the font database and the style once, so that their first-use allocations, kept for the
    // process, are not taken for leaks of the first input.
    {
        QTreeWidget tree;
        tree.ensurePolished();
        QFontMetrics(QFont()).elidedText(QStringLiteral("warm up the fonts"), Qt::ElideRight, 20, 0);
    }
    return s_pApp;
}

} // namespace WgtFuzz
