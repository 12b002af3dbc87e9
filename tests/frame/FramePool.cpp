// Test task pool "libLxTaskPool.so": one-shot tasks run on two worker threads, loop tasks each on a
// thread of their own with a period in milliseconds, until "RemoveTask". Every call is recorded for
// "FramePool_TakeCalls"; "FramePool_WaitIdle" lets a test wait for the one-shot tasks instead of
// sleeping. Exceptions that leave a task are caught here and counted.

#include "STRCT_PoolCall.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace {

struct STRCT_Loop
{
    std::mutex m_mtx;
    std::condition_variable m_cvStop;
    bool m_blStop = false;
    std::thread m_thread;
};

class CLS_FramePool
{
public:
    CLS_FramePool()
    {
        for (int i = 0; i < 2; ++i) {
            m_vecWorkers.emplace_back([this]() { WorkerLoop(); });
        }
    }

    // Process exit: stops the loops and the workers and joins them all.
    ~CLS_FramePool()
    {
        std::map<std::string, std::shared_ptr<STRCT_Loop>> mapLoops;
        {
            std::lock_guard<std::mutex> lock(m_mtx);
            m_blStop = true;
            mapLoops.swap(m_mapLoops);
        }
        m_cvWork.notify_all();
        for (auto& pairLoop : mapLoops) {
            StopLoop(pairLoop.second);
        }
        for (std::thread& thread : m_vecWorkers) {
            thread.join();
        }
    }

    int AddTmpTask(const std::function<void()>& _task, void* _pOwner, const std::string& _strContext)
    {
        STRCT_PoolCall strctCall;
        strctCall.m_strFunction = "AddTmpTask";
        strctCall.m_pOwner = _pOwner;
        strctCall.m_strContext = _strContext;
        {
            std::lock_guard<std::mutex> lock(m_mtx);
            m_vecCalls.push_back(strctCall);
            ThrowIfAsked();
            m_dqTasks.push_back(_task);
        }
        m_cvWork.notify_one();
        return 0;
    }

    int AddLoopTask(const std::function<void()>& _task, int _iInterval, std::string& _strTaskId,
                    const std::string& _strContext)
    {
        auto spLoop = std::make_shared<STRCT_Loop>();
        {
            std::lock_guard<std::mutex> lock(m_mtx);
            STRCT_PoolCall strctCall;
            strctCall.m_strFunction = "AddLoopTask";
            strctCall.m_iInterval = _iInterval;
            strctCall.m_strContext = _strContext;
            m_vecCalls.push_back(strctCall);
            ThrowIfAsked();
            if (_strTaskId.empty()) {
                _strTaskId = "loop-" + std::to_string(++m_iLoopSerial);
            }
            m_vecCalls.back().m_strTaskId = _strTaskId;
            m_mapLoops[_strTaskId] = spLoop;
        }
        const std::function<void()> funTask = _task;
        const std::chrono::milliseconds msPeriod(_iInterval);
        spLoop->m_thread = std::thread([this, spLoop, funTask, msPeriod]() {
            for (;;) {
                {
                    std::unique_lock<std::mutex> lock(spLoop->m_mtx);
                    if (spLoop->m_cvStop.wait_for(lock, msPeriod, [&]() { return spLoop->m_blStop; })) {
                        return;
                    }
                }
                RunGuarded(funTask);
            }
        });
        return 0;
    }

    int RemoveTask(const std::string& _strTaskId, const std::string& _strContext)
    {
        std::shared_ptr<STRCT_Loop> spLoop;
        {
            std::lock_guard<std::mutex> lock(m_mtx);
            STRCT_PoolCall strctCall;
            strctCall.m_strFunction = "RemoveTask";
            strctCall.m_strTaskId = _strTaskId;
            strctCall.m_strContext = _strContext;
            m_vecCalls.push_back(strctCall);
            auto it = m_mapLoops.find(_strTaskId);
            if (it == m_mapLoops.end()) {
                return -1;
            }
            spLoop = it->second;
            m_mapLoops.erase(it);
        }
        StopLoop(spLoop);
        return 0;
    }

    void TakeCalls(std::vector<STRCT_PoolCall>* _pOut)
    {
        std::lock_guard<std::mutex> lock(m_mtx);
        _pOut->insert(_pOut->end(), m_vecCalls.begin(), m_vecCalls.end());
        m_vecCalls.clear();
    }

    bool WaitIdle(int _iTimeoutMs)
    {
        std::unique_lock<std::mutex> lock(m_mtx);
        return m_cvIdle.wait_for(lock, std::chrono::milliseconds(_iTimeoutMs),
                                 [this]() { return m_dqTasks.empty() && 0 == m_iBusy; });
    }

    int LoopCount()
    {
        std::lock_guard<std::mutex> lock(m_mtx);
        return int(m_mapLoops.size());
    }

    void ThrowOnNextAdd(int _iKind)
    {
        std::lock_guard<std::mutex> lock(m_mtx);
        m_iThrowKind = _iKind;
    }

    int EscapedCount()
    {
        std::lock_guard<std::mutex> lock(m_mtx);
        return m_iEscaped;
    }

private:
    // Under m_mtx.
    void ThrowIfAsked()
    {
        const int iKind = m_iThrowKind;
        m_iThrowKind = 0;
        if (1 == iKind) {
            throw std::runtime_error("pool refused");
        }
        if (2 == iKind) {
            throw 2;
        }
    }

    void RunGuarded(const std::function<void()>& _task)
    {
        try {
            _task();
        } catch (...) {
            std::lock_guard<std::mutex> lock(m_mtx);
            ++m_iEscaped;
        }
    }

    void WorkerLoop()
    {
        for (;;) {
            std::function<void()> funTask;
            {
                std::unique_lock<std::mutex> lock(m_mtx);
                m_cvWork.wait(lock, [this]() { return m_blStop || !m_dqTasks.empty(); });
                if (m_blStop) {
                    return;
                }
                funTask = m_dqTasks.front();
                m_dqTasks.pop_front();
                ++m_iBusy;
            }
            RunGuarded(funTask);
            {
                std::lock_guard<std::mutex> lock(m_mtx);
                --m_iBusy;
            }
            m_cvIdle.notify_all();
        }
    }

    static void StopLoop(const std::shared_ptr<STRCT_Loop>& _spLoop)
    {
        {
            std::lock_guard<std::mutex> lock(_spLoop->m_mtx);
            _spLoop->m_blStop = true;
        }
        _spLoop->m_cvStop.notify_all();
        if (_spLoop->m_thread.get_id() == std::this_thread::get_id()) {
            _spLoop->m_thread.detach(); // removed from inside its own run
        } else if (_spLoop->m_thread.joinable()) {
            _spLoop->m_thread.join();
        }
    }

    std::mutex m_mtx;
    std::condition_variable m_cvWork;
    std::condition_variable m_cvIdle;
    std::deque<std::function<void()>> m_dqTasks;
    int m_iBusy = 0;
    bool m_blStop = false;
    int m_iThrowKind = 0;
    int m_iEscaped = 0;
    int m_iLoopSerial = 0;
    std::vector<STRCT_PoolCall> m_vecCalls;
    std::map<std::string, std::shared_ptr<STRCT_Loop>> m_mapLoops;
    std::vector<std::thread> m_vecWorkers;
};

CLS_FramePool& Pool()
{
    static CLS_FramePool s_clsPool;
    return s_clsPool;
}

} // namespace

extern "C" int AddTmpTask(const std::function<void()>& _task, void* _pOwner, const std::string& _strContext)
{
    return Pool().AddTmpTask(_task, _pOwner, _strContext);
}

extern "C" int AddLoopTask(const std::function<void()>& _task, int _iInterval, std::string& _strTaskId,
                           const std::string& _strContext)
{
    return Pool().AddLoopTask(_task, _iInterval, _strTaskId, _strContext);
}

extern "C" int RemoveTask(const std::string& _strTaskId, const std::string& _strContext)
{
    return Pool().RemoveTask(_strTaskId, _strContext);
}

extern "C" void FramePool_TakeCalls(std::vector<STRCT_PoolCall>* _pOut)
{
    Pool().TakeCalls(_pOut);
}

extern "C" bool FramePool_WaitIdle(int _iTimeoutMs)
{
    return Pool().WaitIdle(_iTimeoutMs);
}

extern "C" int FramePool_LoopCount()
{
    return Pool().LoopCount();
}

extern "C" void FramePool_ThrowOnNextAdd(int _iKind)
{
    Pool().ThrowOnNextAdd(_iKind);
}

extern "C" int FramePool_EscapedCount()
{
    return Pool().EscapedCount();
}
