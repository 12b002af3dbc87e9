#pragma once
// Shared pieces of the status thread tests: binding the gateways once on the GUI thread, a tap on
// the recording logging library, a small installation in the reference device layer, and a rig
// that owns a thread with its stand-in tree and always stops and joins it.

#include "CLS_DevManage.h"
#include "CLS_LogRecords.h"
#include "CLS_TestBGThread.h"
#include "CLS_TreeStandIn.h"
#include "Logger.h"
#include "LxAppManager.h"

#include <QStringList>

#include <climits>

// The gateways' first binds are not thread-safe by design: make them here, on the GUI thread,
// before any worker runs. Also drops the records the binds may have left.
inline void BindGateways()
{
    Logger::GetModuleFun("PrintLog", "");
    DevManage::GetModuleFun("GetResourceTree", "");
    LxAppManager::GetModuleFun("GetApp", "");
    CLS_LogRecords::Take();
}

// Log lines "level|module|function|text" collected across calls.
class CLS_LogTap
{
public:
    const QStringList& Lines()
    {
        m_qlstLines << CLS_LogRecords::Lines(CLS_LogRecords::Take());
        return m_qlstLines;
    }
    int Count(const QString& _qstrLine) { return Lines().count(_qstrLine); }
    void Clear()
    {
        CLS_LogRecords::Take();
        m_qlstLines.clear();
    }

private:
    QStringList m_qlstLines;
};

// Owns a status thread and the stand-in of its tree; stops and joins the thread on every path out.
class CLS_ThreadRig
{
public:
    CLS_ThreadRig() { m_clsTree.Attach(&m_clsThread); }
    ~CLS_ThreadRig() { StopAndJoin(); }
    CLS_ThreadRig(const CLS_ThreadRig&) = delete;
    CLS_ThreadRig& operator=(const CLS_ThreadRig&) = delete;

    // What the tree does at the end of a build.
    void Run()
    {
        m_clsThread.Start();
        m_clsThread.start(QThread::InheritPriority);
    }
    // True when run() has returned within _iMsecs.
    bool WaitEnd(unsigned long _ulMsecs)
    {
        const bool blEnded = m_clsThread.wait(_ulMsecs);
        if (blEnded) {
            AcquireRunEnd(&m_clsThread);
        }
        return blEnded;
    }
    void StopAndJoin()
    {
        m_clsThread.Stop();
        WaitEnd(ULONG_MAX);
    }

    CLS_TreeStandIn m_clsTree;
    CLS_TestBGThread m_clsThread;
};

#ifdef WGT_STATUSTHREAD_WITH_DEVMANAGE
#include "DevManageControl.h"

// Two hosts below the root. Host A is an image device (its first channel answers 1), host B isn't
// (and lists an alarm input before its channel).
inline void LoadTwoHosts()
{
    DevManageCtl_AddGroup("resource_root_id", "All", "", 0, "");
    DevManageCtl_AddHost("hostA", "Host A", "resource_root_id", 1, 1, "t_hostA");
    DevManageCtl_AddChannel("chA1", "A1", "hostA", 1, 1, 1, "t_chA1");
    DevManageCtl_AddChannel("chA2", "A2", "hostA", 2, 0, 2, "t_chA2");
    DevManageCtl_AddItem(5, "aiA1", "Alarm A1", "hostA", 3, 1, 1, "t_aiA1");
    DevManageCtl_AddHost("hostB", "Host B", "resource_root_id", 2, 1, "t_hostB");
    DevManageCtl_AddItem(5, "aiB1", "Alarm B1", "hostB", 1, 1, 1, "t_aiB1");
    DevManageCtl_AddChannel("chB1", "B1", "hostB", 2, 1, 1, "t_chB1");
    DevManageCtl_SetDeviceParam("chA1", 1);
    DevManageCtl_SetDeviceParam("chB1", 0);
}

// The first report of LoadTwoHosts: every channel, with its image flag.
inline QString FirstReportOfTwoHosts()
{
    return QStringLiteral("chA1=1/1 chA2=1/0 chB1=0/1");
}
#endif
