#include "CLS_LxTaskPool.h"

#include <algorithm>
#include <cstdlib>

CLS_LxTaskPool::CLS_LxTaskPool(int _iWorkers) : m_iWorkers(std::max(1, _iWorkers)) {}

CLS_LxTaskPool::~CLS_LxTaskPool()
{
    Stop();
}

int CLS_LxTaskPool::ChooseWorkerCount()
{
    const char* pThreads = std::getenv("LXTASKPOOL_THREADS");
    if (nullptr != pThreads) {
        const int iThreads = std::atoi(pThreads);
        if (iThreads >= 1 && iThreads <= 64) {
            return iThreads;
        }
    }
    const int iCores = int(std::thread::hardware_concurrency());
    return std::min(8, std::max(2, iCores));
}

void CLS_LxTaskPool::StartWorkers()
{
    // Started with the first task, so that a process that never uses the pool has no threads.
    while (int(m_vecWorkers.size()) < m_iWorkers) {
        m_vecWorkers.emplace_back([this]() { WorkerLoop(); });
        m_setWorkerIds.insert(m_vecWorkers.back().get_id());
    }
}

bool CLS_LxTaskPool::IsWorker() const
{
    return m_setWorkerIds.count(std::this_thread::get_id()) > 0;
}

int CLS_LxTaskPool::AddTmpTask(const std::function<void()>& _task, void* _pOwner)
{
    if (!_task) {
        return -1;
    }
    STRCT_TmpTask strctTask;
    strctTask.m_funTask = _task;
    strctTask.m_pOwner = _pOwner;
    {
        std::lock_guard<std::mutex> lock(m_mtx);
        if (m_blStopped) {
            return -1;
        }
        StartWorkers();
        m_dqTmpTasks.push_back(std::move(strctTask));
    }
    m_cvWork.notify_one();
    return 0;
}

int CLS_LxTaskPool::RemoveTmpTask(void* _pOwner)
{
    std::vector<STRCT_TmpTask> vecDropped; // destroyed outside the lock
    {
        std::unique_lock<std::mutex> lock(m_mtx);
        for (auto it = m_dqTmpTasks.begin(); it != m_dqTmpTasks.end();) {
            if (it->m_pOwner == _pOwner) {
                vecDropped.push_back(std::move(*it));
                it = m_dqTmpTasks.erase(it);
            } else {
                ++it;
            }
        }
        const std::thread::id idSelf = std::this_thread::get_id();
        m_cvDone.wait(lock, [&]() {
            for (const auto& pairRunning : m_mapRunningOwners) {
                if (pairRunning.second == _pOwner && pairRunning.first != idSelf) {
                    return false;
                }
            }
            return true;
        });
    }
    return int(vecDropped.size());
}

int CLS_LxTaskPool::AddLoopTask(const std::function<void()>& _task, int _iInterval, std::string& _strTaskId)
{
    if (!_task || _iInterval < 1) {
        return -1;
    }
    auto spTask = std::make_shared<STRCT_LoopTask>();
    spTask->m_funTask = _task;
    spTask->m_msPeriod = std::chrono::milliseconds(_iInterval);
    {
        std::lock_guard<std::mutex> lock(m_mtx);
        if (m_blStopped) {
            return -1;
        }
        StartWorkers();
        spTask->m_tpDue = Clock::now() + spTask->m_msPeriod;
        const std::string strId = "loop-" + std::to_string(++m_iLoopSerial);
        m_mapLoopTasks[strId] = spTask;
        _strTaskId = strId;
    }
    // Every idle worker recomputes its wake-up time.
    m_cvWork.notify_all();
    return 0;
}

int CLS_LxTaskPool::RemoveLoopTask(const std::string& _strTaskId, bool _blWait)
{
    std::shared_ptr<STRCT_LoopTask> spTask; // released outside the lock
    {
        std::unique_lock<std::mutex> lock(m_mtx);
        auto it = m_mapLoopTasks.find(_strTaskId);
        if (it == m_mapLoopTasks.end()) {
            return -1;
        }
        spTask = it->second;
        // Out of the map, no worker picks it again.
        m_mapLoopTasks.erase(it);
        if (_blWait && spTask->m_idRunner != std::this_thread::get_id()) {
            m_cvDone.wait(lock, [&]() { return !spTask->m_blRunning; });
        }
    }
    return 0;
}

int CLS_LxTaskPool::KillAll()
{
    std::deque<STRCT_TmpTask> dqDropped;
    std::map<std::string, std::shared_ptr<STRCT_LoopTask>> mapEnded;
    {
        std::lock_guard<std::mutex> lock(m_mtx);
        dqDropped.swap(m_dqTmpTasks);
        mapEnded.swap(m_mapLoopTasks);
    }
    return int(dqDropped.size() + mapEnded.size());
}

int CLS_LxTaskPool::Stop()
{
    std::deque<STRCT_TmpTask> dqDropped;
    std::map<std::string, std::shared_ptr<STRCT_LoopTask>> mapEnded;
    std::vector<std::thread> vecWorkers;
    {
        std::lock_guard<std::mutex> lock(m_mtx);
        if (IsWorker()) {
            return -1; // a worker cannot join itself; the pool goes on
        }
        m_blStopped = true;
        dqDropped.swap(m_dqTmpTasks);
        mapEnded.swap(m_mapLoopTasks);
        vecWorkers.swap(m_vecWorkers);
    }
    m_cvWork.notify_all();
    dqDropped.clear();
    mapEnded.clear();
    for (std::thread& thread : vecWorkers) {
        thread.join();
    }
    return 0;
}

int CLS_LxTaskPool::WorkerCount()
{
    std::lock_guard<std::mutex> lock(m_mtx);
    return int(m_vecWorkers.size());
}

void CLS_LxTaskPool::RunGuarded(const std::function<void()>& _task)
{
    // Nothing leaves a task: a throwing one-shot task is lost, a loop task runs again next period.
    try {
        _task();
    } catch (...) {
    }
}

void CLS_LxTaskPool::WorkerLoop()
{
    const std::thread::id idSelf = std::this_thread::get_id();
    std::unique_lock<std::mutex> lock(m_mtx);
    for (;;) {
        if (m_blStopped) {
            return;
        }

        // The loop task most overdue, and the next due time of the others.
        const Clock::time_point tpNow = Clock::now();
        std::shared_ptr<STRCT_LoopTask> spDue;
        Clock::time_point tpNext = Clock::time_point::max();
        for (const auto& pairTask : m_mapLoopTasks) {
            const std::shared_ptr<STRCT_LoopTask>& spTask = pairTask.second;
            if (spTask->m_blRunning) {
                continue;
            }
            if (spTask->m_tpDue <= tpNow) {
                if (!spDue || spTask->m_tpDue < spDue->m_tpDue) {
                    spDue = spTask;
                }
            } else {
                tpNext = std::min(tpNext, spTask->m_tpDue);
            }
        }

        if (spDue) {
            spDue->m_blRunning = true;
            spDue->m_idRunner = idSelf;
            lock.unlock();
            RunGuarded(spDue->m_funTask);
            lock.lock();
            spDue->m_blRunning = false;
            spDue->m_idRunner = std::thread::id();
            spDue->m_tpDue = tpNow + spDue->m_msPeriod;
            m_cvDone.notify_all();
            // A removed task dies here, outside the lock.
            lock.unlock();
            spDue.reset();
            lock.lock();
            continue;
        }

        if (!m_dqTmpTasks.empty()) {
            STRCT_TmpTask strctTask = std::move(m_dqTmpTasks.front());
            m_dqTmpTasks.pop_front();
            m_mapRunningOwners[idSelf] = strctTask.m_pOwner;
            lock.unlock();
            RunGuarded(strctTask.m_funTask);
            strctTask.m_funTask = nullptr;
            lock.lock();
            m_mapRunningOwners.erase(idSelf);
            m_cvDone.notify_all();
            continue;
        }

        if (Clock::time_point::max() == tpNext) {
            m_cvWork.wait(lock);
        } else {
            m_cvWork.wait_until(lock, tpNext);
        }
    }
}
