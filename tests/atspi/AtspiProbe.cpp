// A small program for the walk through the accessibility bus (atspi_walk.py): one device tree with
// two recorders, their channels (on line, off line, no video), an alarm input and the row buttons
// "Play" and an icon-only "Record", channel counts shown and the search line open. It prints what a
// page would see ("button: <id> <row>", "selected: <row>") and takes keys on its standard input,
// one per line ("Down", "Return", "Escape", "Ctrl+Right", ...), sent to the widget that has the
// focus, so that the walk needs no input device of the display; "shot FILE" saves the window.

#include "CLS_TestDeviceTree.h"
#include "CLS_TreeTestUtil.h"
#include "CLS_WgtDeviceTree.h"
#include "CLS_WgtTranslator.h"

#include <QApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QSocketNotifier>
#include <QTimer>

#include <cstdio>
#include <iostream>
#include <string>

#include <unistd.h>

namespace {

void Print(const QString& _qstrLine)
{
    std::fputs(qPrintable(_qstrLine + "\n"), stdout);
    std::fflush(stdout);
}

// A node of the probe's tree under the name a reader hears.
CLS_CustomTreeNode Node(const QString& _qstrId, const QString& _qstrParent, int _iType,
                        const QString& _qstrName, int _iSortNo, int _iStatus)
{
    CLS_CustomTreeNode node =
        CLS_DevTreeTestUtil::MakeNode(_qstrId, _qstrParent, _iType, _qstrId.toUpper(), _iSortNo, _iStatus);
    node.m_qstrName = _qstrName;
    return node;
}

// "Ctrl+Right" -> the key event a keyboard would give; false for a line that names no key.
bool SendKey(const QString& _qstrLine)
{
    const QKeySequence qkeySequence(_qstrLine);
    if (qkeySequence.isEmpty())
        return false;
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    const int iCombined = qkeySequence[0].toCombined();
#else
    const int iCombined = qkeySequence[0];
#endif
    const auto iKey = static_cast<int>(iCombined & ~Qt::KeyboardModifierMask);
    const auto iModifiers = Qt::KeyboardModifiers(iCombined & Qt::KeyboardModifierMask);
    QWidget* pTarget = QApplication::focusWidget();
    if (pTarget == nullptr)
        return false;
    const QString qstrText = iKey == Qt::Key_Return ? "\r" : (iKey == Qt::Key_Space ? " " : QString());
    QKeyEvent keyPress(QEvent::KeyPress, iKey, iModifiers, qstrText);
    QKeyEvent keyRelease(QEvent::KeyRelease, iKey, iModifiers, qstrText);
    QApplication::sendEvent(pTarget, &keyPress);
    if (QApplication::focusWidget() == pTarget)
        QApplication::sendEvent(pTarget, &keyRelease);
    return true;
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName("wgt-atspi-probe");
    CLS_WgtTranslator::SetLanguage(QLocale(QLocale::English, QLocale::UnitedStates));

    CLS_WgtDeviceTree wgtTree(nullptr, DEV_TREE_CUSTOM, false, true, false, true);
    QMap<QString, CLS_CustomTreeNode> qmapNodes;
    for (const CLS_CustomTreeNode& node :
         {Node("hall", QString(), 2, "Hall", 1, 0), Node("cam1", "hall", 4, "Camera 1", 1, 1),
          Node("cam2", "hall", 4, "Camera 2", 2, 0), Node("cam3", "hall", 4, "Camera 3", 3, 2),
          Node("yard", QString(), 2, "Yard", 2, 0), Node("cam4", "yard", 4, "Camera 4", 1, 1),
          Node("gate", "yard", 5, "Gate contact", 2, 1)})
        qmapNodes.insert(node.m_qstrTreeId, node);
    QMap<int, QVector<CLS_ItemButton>> qmapButtons;
    qmapButtons.insert(4, {CLS_TreeTestUtil::MakeNamedButton("play", "Play", "Open the live view"),
                           CLS_TreeTestUtil::MakeNamedButton("record", QString(), "Record")});
    // Groups, channels and alarm inputs (a custom tree shows groups and channels by default).
    if (wgtTree.Init(qmapNodes, "Site", qmapButtons, {2, 4, 5}) != 0) {
        Print("init failed");
        return 1;
    }
    wgtTree.SetShowChannelCounts(true);
    wgtTree.ExpandAll();
    // One checked channel: its group is part checked.
    wgtTree.SetItemCheckStatus("cam1", Qt::Checked);
    QObject::connect(&wgtTree, &CLS_WgtDeviceTree::SignToolButtonClicked,
                     [](QString _qstrCmd, CLS_CustomTreeNode _node, CLS_ItemButton _clsButton) {
                         Print(QString("button: %1 %2").arg(_clsButton.m_qstrId, _node.m_qstrTreeId));
                         Q_UNUSED(_qstrCmd)
                     });
    QObject::connect(&wgtTree, &CLS_WgtDeviceTree::SignSelected,
                     [](CLS_CustomTreeNode _node) { Print("selected: " + _node.m_qstrTreeId); });

    wgtTree.setGeometry(0, 0, 420, 600);
    wgtTree.show();
    wgtTree.ShowSearch();
    wgtTree.activateWindow();

    QSocketNotifier notifierInput(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&notifierInput, &QSocketNotifier::activated, [&]() {
        std::string strLine;
        if (!std::getline(std::cin, strLine)) {
            notifierInput.setEnabled(false);
            QCoreApplication::quit();
            return;
        }
        const QString qstrLine = QString::fromStdString(strLine).trimmed();
        if (qstrLine.startsWith("shot ")) {
            // The window as it looks now, for a person to see where the focus is.
            const bool blSaved = wgtTree.grab().save(qstrLine.mid(5));
            Print(QString(blSaved ? "shot: %1" : "no shot: %1").arg(qstrLine.mid(5)));
            return;
        }
        if (qstrLine == "quit") {
            QCoreApplication::quit();
            return;
        }
        Print(QString(SendKey(qstrLine) ? "key: %1" : "no key: %1").arg(qstrLine));
    });
    QTimer::singleShot(0, []() { Print("ready"); });
    return app.exec();
}
