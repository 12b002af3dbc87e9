// The exported C functions of the reference task pool: the seven the binder resolves by name, and
// LxTaskPoolCtl_WorkerCount. Nothing leaves them by exception.

#include "CLS_LxTaskPool.h"
#include "LxTaskPoolControl.h"

namespace {

// The pool lives on the heap and is never deleted, so that a task still running on a worker at
// exit finds it; the stopper below ends the workers at exit (joins them, drops what has not
// started). Made with the first call, after the libraries it may use are loaded.
struct STRCT_PoolStopper
{
    CLS_LxTaskPool* m_pPool = new CLS_LxTaskPool(CLS_LxTaskPool::ChooseWorkerCount());
    ~STRCT_PoolStopper() { m_pPool->Stop(); }
};

CLS_LxTaskPool& Pool()
{
    static STRCT_PoolStopper s_strctStopper;
    return *s_strctStopper.m_pPool;
}

} // namespace

extern "C" int AddTmpTask(const std::function<void()>& _task, void* _pOwner, const std::string& _strContext)
{
    (void)_strContext;
    try {
        return Pool().AddTmpTask(_task, _pOwner);
    } catch (...) {
        return -1;
    }
}

extern "C" int RemoveTmpTask(void* _pOwner, const std::string& _strContext)
{
    (void)_strContext;
    try {
        return Pool().RemoveTmpTask(_pOwner);
    } catch (...) {
        return -1;
    }
}

extern "C" int AddLoopTask(const std::function<void()>& _task, int _iInterval, std::string& _strTaskId,
                           const std::string& _strContext)
{
    (void)_strContext;
    try {
        return Pool().AddLoopTask(_task, _iInterval, _strTaskId);
    } catch (...) {
        return -1;
    }
}

extern "C" int RemoveTask(const std::string& _strTaskId, const std::string& _strContext)
{
    (void)_strContext;
    try {
        return Pool().RemoveLoopTask(_strTaskId, true);
    } catch (...) {
        return -1;
    }
}

extern "C" int KillTask(const std::string& _strTaskId, const std::string& _strContext)
{
    (void)_strContext;
    try {
        return Pool().RemoveLoopTask(_strTaskId, false);
    } catch (...) {
        return -1;
    }
}

extern "C" int KillTaskAll(const std::string& _strContext)
{
    (void)_strContext;
    try {
        return Pool().KillAll();
    } catch (...) {
        return -1;
    }
}

extern "C" int UnInit()
{
    try {
        return Pool().Stop();
    } catch (...) {
        return -1;
    }
}

extern "C" int LxTaskPoolCtl_WorkerCount()
{
    return Pool().WorkerCount();
}
