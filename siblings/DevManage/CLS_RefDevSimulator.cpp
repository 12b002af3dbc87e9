#include "CLS_RefDevSimulator.h"

#include "CLS_RefDevStore.h"

#include <chrono>
#include <random>

CLS_RefDevSimulator& CLS_RefDevSimulator::Instance()
{
    // Destroyed with the library's statics: its destructor joins the thread before the code the
    // thread runs goes away. The store it changes is never destroyed.
    static CLS_RefDevSimulator s_clsSimulator;
    return s_clsSimulator;
}

CLS_RefDevSimulator::~CLS_RefDevSimulator()
{
    Stop();
}

int CLS_RefDevSimulator::Start(int _iChangesPerSecond, unsigned int _uiSeed)
{
    if (_iChangesPerSecond < 1) {
        return -1;
    }
    std::lock_guard<std::mutex> lockControl(m_mtxControl);
    if (m_thread.joinable()) {
        return -1;
    }
    {
        std::lock_guard<std::mutex> lock(m_mtx);
        m_blStop = false;
        m_vecJournal.clear();
    }
    m_iChanges.store(0);
    m_iSteps.store(0);
    m_thread = std::thread(&CLS_RefDevSimulator::Run, this, _iChangesPerSecond, _uiSeed);
    return 0;
}

void CLS_RefDevSimulator::Stop()
{
    std::lock_guard<std::mutex> lockControl(m_mtxControl);
    if (!m_thread.joinable()) {
        return;
    }
    {
        std::lock_guard<std::mutex> lock(m_mtx);
        m_blStop = true;
    }
    m_cvStop.notify_all();
    m_thread.join();
}

bool CLS_RefDevSimulator::IsRunning()
{
    std::lock_guard<std::mutex> lockControl(m_mtxControl);
    return m_thread.joinable();
}

int CLS_RefDevSimulator::Changes() const
{
    return m_iChanges.load();
}

int CLS_RefDevSimulator::Steps() const
{
    return m_iSteps.load();
}

std::vector<std::string> CLS_RefDevSimulator::Journal()
{
    std::lock_guard<std::mutex> lock(m_mtx);
    return m_vecJournal;
}

void CLS_RefDevSimulator::Run(int _iChangesPerSecond, unsigned int _uiSeed)
{
    using Clock = std::chrono::steady_clock;
    std::mt19937 rng(_uiSeed);
    const std::chrono::duration<double> dPeriod(1.0 / _iChangesPerSecond);
    // Event k is due at tpStart + k periods. After a stall of more than a second the schedule
    // starts again from now instead of catching up in a burst.
    Clock::time_point tpStart = Clock::now();
    long long llEvent = 0;
    for (;;) {
        const Clock::time_point tpDue =
            tpStart + std::chrono::duration_cast<Clock::duration>(dPeriod * static_cast<double>(llEvent));
        {
            std::unique_lock<std::mutex> lock(m_mtx);
            if (m_cvStop.wait_until(lock, tpDue, [this] { return m_blStop; })) {
                return;
            }
        }
        std::string strId;
        int iStatus = 0;
        if (CLS_RefDevStore::Instance().SimulateStep(rng, strId, iStatus)) {
            std::lock_guard<std::mutex> lock(m_mtx);
            if (m_vecJournal.size() < static_cast<size_t>(CONST_iJournalSize)) {
                m_vecJournal.push_back(strId + "=" + std::to_string(iStatus));
            }
            m_iChanges.fetch_add(1);
        }
        m_iSteps.fetch_add(1);
        ++llEvent;
        if (Clock::now() - tpDue > std::chrono::seconds(1)) {
            tpStart = Clock::now();
            llEvent = 0;
        }
    }
}
