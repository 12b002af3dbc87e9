#pragma once
// Exported functions of the reference task pool "libLxTaskPool.so". The binder resolves
// "AddTmpTask", "RemoveTmpTask", "AddLoopTask", "RemoveTask", "KillTask", "KillTaskAll" and
// "UnInit" by name; LxTaskPoolCtl_WorkerCount is for tests and tools. Every function is safe from
// any thread, pool threads included. The workers start with the first task; their number is
// LXTASKPOOL_THREADS (1 to 64), else the number of cores, at least 2 and at most 8.
// A task that throws is caught and dropped; a loop task goes on after a throwing run.

#include <functional>
#include <string>

extern "C" {

// Runs _task once, later, on a worker. _pOwner groups tasks for RemoveTmpTask; _strContext is for
// records only. 0, or -1 for an empty task or a pool that was stopped by UnInit.
int AddTmpTask(const std::function<void()>& _task, void* _pOwner, const std::string& _strContext);

// Drops the one-shot tasks of _pOwner that have not started, then waits for those of _pOwner that
// are running (but for one running on the calling thread). The number dropped.
int RemoveTmpTask(void* _pOwner, const std::string& _strContext);

// Runs _task on a worker every _iInterval milliseconds, the first time one period after the call,
// until RemoveTask. Runs of one loop task never overlap; a run that overruns its period is followed
// by the next at once. Writes a new id ("loop-<n>", unique in the process) into _strTaskId.
// 0, or -1 (and _strTaskId untouched) for an empty task, _iInterval < 1 or a stopped pool.
int AddLoopTask(const std::function<void()>& _task, int _iInterval, std::string& _strTaskId,
                const std::string& _strContext);

// Ends loop task _strTaskId: it never starts again once this returns. A run in progress is waited
// for, unless this is called from that run itself. 0, or -1 for an unknown id.
int RemoveTask(const std::string& _strTaskId, const std::string& _strContext);

// As RemoveTask, without waiting for a run in progress.
int KillTask(const std::string& _strTaskId, const std::string& _strContext);

// Ends every loop task and drops every one-shot task that has not started; waits for nothing.
// The number of tasks ended or dropped.
int KillTaskAll(const std::string& _strContext);

// Stops the pool for good: drops what has not started, waits for running tasks and joins the
// workers. Later adds fail. 0, or -1 (and nothing changes) when called from a worker, which
// cannot join itself.
// The same happens by itself at process exit.
int UnInit();

// Number of worker threads running now.
int LxTaskPoolCtl_WorkerCount();

} // extern "C"
