#pragma once
// The status simulation of the reference device layer: one background thread that takes random
// hosts and channels on line and off line at a steady rate, through CLS_RefDevStore::SimulateStep
// (under the store's lock, the way DevManageCtl_SetStatus changes an item). One process-wide
// instance; its destructor stops and joins the thread, at process exit or when the library is
// unloaded. Start, Stop and the readers are safe from any thread.

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

class CLS_RefDevSimulator
{
public:
    static CLS_RefDevSimulator& Instance();

    CLS_RefDevSimulator(const CLS_RefDevSimulator&) = delete;
    CLS_RefDevSimulator& operator=(const CLS_RefDevSimulator&) = delete;
    ~CLS_RefDevSimulator();

    // Starts the thread: about _iChangesPerSecond events a second, picks drawn from a generator
    // seeded with _uiSeed. Forgets the count and the journal of an earlier run. -1 if running or
    // the rate is below 1.
    int Start(int _iChangesPerSecond, unsigned int _uiSeed);
    // Stops and joins; nothing when not running.
    void Stop();
    bool IsRunning();
    // Events applied since the last Start.
    int Changes() const;
    // Events that came due since the last Start, whether or not they found something to change.
    int Steps() const;
    // The first events of the last run as "id=status", at most CONST_iJournalSize of them: what a
    // seed picks, for a test to compare runs.
    std::vector<std::string> Journal();

    static const int CONST_iJournalSize = 4096;

private:
    CLS_RefDevSimulator() = default;
    void Run(int _iChangesPerSecond, unsigned int _uiSeed);

    std::mutex m_mtxControl; // serialises Start and Stop; taken before m_mtx
    std::mutex m_mtx;        // guards m_blStop and m_vecJournal
    std::condition_variable m_cvStop;
    bool m_blStop = false;
    std::thread m_thread; // owned; joined by Stop
    std::atomic<int> m_iChanges{0};
    std::atomic<int> m_iSteps{0};
    std::vector<std::string> m_vecJournal;
};
