// A page that never deletes its device tree: the process leaves while the tree's status thread is
// still polling. With no channel in the device layer the thread runs its passes back to back, so
// it is inside the gateways and the binder during the whole of the exit. The process must end
// cleanly, every time, with no sanitizer report.

#include "CLS_DevManage.h"
#include "CLS_WgtDeviceTree.h"
#include "DevManageControl.h"
#include "LxAppManager.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QtTest>

namespace {

// Reachable to the end, so that the leak checker does not count the tree the page forgot.
CLS_WgtDeviceTree* g_pForgottenTree = nullptr;

int RunChild(int _iArgc, char* _apArgv[])
{
    QApplication app(_iArgc, _apArgv);
    DevManage::GetModuleFun("GetResourceTree", "");
    LxAppManager::GetModuleFun("GetApp", "");
    DevManageCtl_AddGroup("resource_root_id", "All", "", 0, "");
    g_pForgottenTree = new CLS_WgtDeviceTree(nullptr, DEV_TREE_RESOURCE);
    if (g_pForgottenTree->Init("All") != 0)
        return 3;
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 150)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    return 0; // the tree and its running thread are left behind on purpose
}

} // namespace

class tst_ExitWithLiveTree : public QObject
{
    Q_OBJECT

private slots:
    void shouldExitCleanlyWhileStatusThreadPolls();
};

void tst_ExitWithLiveTree::shouldExitCleanlyWhileStatusThreadPolls()
{
    for (int iRun = 0; iRun < 8; ++iRun) {
        QProcess process;
        process.setProgram(QCoreApplication::applicationFilePath());
        process.setArguments({"--child"});
        process.start();
        QVERIFY(process.waitForFinished(60000));
        const QString qstrErrors = QString::fromLocal8Bit(process.readAllStandardError());
        QVERIFY2(process.exitStatus() == QProcess::NormalExit, qPrintable(qstrErrors.right(4000)));
        QVERIFY2(process.exitCode() == 0, qPrintable(qstrErrors.right(4000)));
        QVERIFY2(!qstrErrors.contains("Sanitizer") && !qstrErrors.contains("runtime error"),
                 qPrintable(qstrErrors.right(4000)));
    }
}

int main(int argc, char* argv[])
{
    if (argc > 1 && qstrcmp(argv[1], "--child") == 0)
        return RunChild(argc, argv);
    QCoreApplication app(argc, argv);
    tst_ExitWithLiveTree test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_ExitWithLiveTree.moc"
