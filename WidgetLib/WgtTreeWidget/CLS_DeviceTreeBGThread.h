#pragma once
// Background poller of channel states for one device tree. A pass reads every channel (type 4) of
// the device layer's resource tree, compares each status with what it reported last, and emits
// the differences as one QMap<QString,QPair<bool,int>> (resource id -> image channel, status) in a
// QVariant; a wait of up to 100 ticks of 100 ms follows.
//
// Threads: the QThread object lives on the GUI thread, where Start, Pause, Stop and
// SlotChannelStatusChanged run; run() and IsImageChannel() run on the worker, which touches no data
// of the tree: only the queued signal crosses. m_rwlockChannelStatus guards the cache and
// m_rwlockState the state; the two are never held together.

#include <QReadWriteLock>
#include <QString>
#include <QThread>
#include <QVariant>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <string>
#include <utility>

class CLS_DeviceTreeBGThread : public QThread
{
    Q_OBJECT

public:
    // The owning tree is the parent.
    explicit CLS_DeviceTreeBGThread(QObject* parent = nullptr);
    // If the thread runs: state 3, then waits with no time limit until run() has returned, which is
    // at worst the rest of a pass plus one tick of the wait.
    ~CLS_DeviceTreeBGThread() override;

    // State 1 and an empty cache; 0, or -1 when the state already was 1 (the cache is then kept).
    // Does not start the operating-system thread: QThread::start() does.
    int Start();
    // State 2; always 0. Ends run() at its next step 1 only, after the wait: there is no resume.
    int Pause();
    // State 3; always 0. Doesn't wait: a sleep of run() (a tick of its wait, or the second before a
    // retry while the device layer isn't ready) ends at once, and run() returns.
    int Stop();

    // Whether the channel _qstrId is an image channel, asked of its device through the first
    // channel below the same parent: the device's answer (> 0: image channel), 0 when nothing
    // answers, -1 when the channel can't be read. Worker thread (from run), or any thread that
    // doesn't hold the cache lock.
    int IsImageChannel(const QString& _qstrId);

    // Passes of run() that have ended so far, whether they emitted or gave up early; an emission of
    // a pass is posted before the pass counts. For tests and diagnostics; any thread.
    int PassesDone() const { return m_iPassesDone.load(); }

public slots:
    // Forgets the cache, so that the next pass reports every channel again. Waits for a pass that
    // is folding its results into the cache.
    void SlotChannelStatusChanged();

signals:
    // QMap<QString,QPair<bool,int>> of the channels new to the cache or changed since. Emitted by
    // the worker.
    void SignChannelStatusChanged(QVariant _qvarData);

protected:
    void run() override;

    // Sleeps _iMsecs on the worker, or less when Stop (or the destructor) asks the thread to end.
    void SleepUnlessStopped(int _iMsecs);
    void WakeForStop();

    // Last reported state per channel: resource id (UTF-8) -> (image channel, status).
    std::map<std::string, std::pair<bool, int>> m_mapChannelStatus;
    QReadWriteLock m_rwlockChannelStatus; // guards m_mapChannelStatus; non-recursive
    QReadWriteLock m_rwlockState;         // guards m_iState; non-recursive
    // 0 created, 1 running, 2 paused, 3 stopped. Set and read under m_rwlockState; atomic only for
    // the one lock-free read at the top of the loop.
    std::atomic<int> m_iState;
    std::atomic<int> m_iPassesDone{0}; // PassesDone
    // Wakes the worker's sleeps for a stop. m_blStopAsked is set by Stop and the destructor and
    // cleared by Start, under m_mtxWake, which is never held with the two read-write locks.
    std::mutex m_mtxWake;
    std::condition_variable m_cvWake;
    bool m_blStopAsked = false;
};
