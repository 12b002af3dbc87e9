#pragma once
// The task pool: a fixed set of worker threads that take one-shot tasks in order of arrival and
// loop tasks when their period is due (a due loop task goes first). One mutex guards all state;
// tasks run outside it, and task objects are destroyed outside it, so a task may call the pool.
// Any thread.

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

class CLS_LxTaskPool
{
public:
    explicit CLS_LxTaskPool(int _iWorkers);
    ~CLS_LxTaskPool();
    CLS_LxTaskPool(const CLS_LxTaskPool&) = delete;
    CLS_LxTaskPool& operator=(const CLS_LxTaskPool&) = delete;

    int AddTmpTask(const std::function<void()>& _task, void* _pOwner);
    int RemoveTmpTask(void* _pOwner);
    int AddLoopTask(const std::function<void()>& _task, int _iInterval, std::string& _strTaskId);
    // _blWait: wait for a run in progress (never for one on the calling thread).
    int RemoveLoopTask(const std::string& _strTaskId, bool _blWait);
    int KillAll();
    // Stops for good and joins the workers; -1 on a worker, which cannot join itself.
    int Stop();
    int WorkerCount();

    // LXTASKPOOL_THREADS when it is 1 to 64, else the number of cores within 2 to 8.
    static int ChooseWorkerCount();

private:
    using Clock = std::chrono::steady_clock;

    struct STRCT_TmpTask
    {
        std::function<void()> m_funTask;
        void* m_pOwner = nullptr;
    };

    // m_funTask and m_msPeriod never change after creation; the rest only under m_mtx.
    struct STRCT_LoopTask
    {
        std::function<void()> m_funTask;
        std::chrono::milliseconds m_msPeriod{1};
        Clock::time_point m_tpDue;
        bool m_blRunning = false;
        std::thread::id m_idRunner;
    };

    // Under m_mtx.
    void StartWorkers();
    bool IsWorker() const;

    void WorkerLoop();
    static void RunGuarded(const std::function<void()>& _task);

    const int m_iWorkers;
    std::mutex m_mtx;
    std::condition_variable m_cvWork; // new work, a new due time, or the stop
    std::condition_variable m_cvDone; // a run ended
    std::deque<STRCT_TmpTask> m_dqTmpTasks;
    std::map<std::string, std::shared_ptr<STRCT_LoopTask>> m_mapLoopTasks;
    std::map<std::thread::id, void*> m_mapRunningOwners; // one-shot tasks running, by worker
    std::vector<std::thread> m_vecWorkers;
    std::set<std::thread::id> m_setWorkerIds;
    bool m_blStopped = false;
    long long m_iLoopSerial = 0;
};
