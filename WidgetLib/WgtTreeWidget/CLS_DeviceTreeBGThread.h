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

/// Polls the channel states of the device layer for one CLS_WgtDeviceTree and reports the changes.
///
/// Made, connected and started by its tree after the tree's first successful build, and stopped and
/// deleted by the tree's destructor. The worker (run()) emits SignChannelStatusChanged(), which
/// reaches the tree's UpdateAllChannelsStatus() queued on the GUI thread; the tree's
/// SignChannelStatusUpdate() reaches SlotChannelStatusChanged(). The object itself lives on the GUI
/// thread; only run() and the calls it makes execute on the worker.
class CLS_DeviceTreeBGThread : public QThread
{
    Q_OBJECT

public:
    /// Creates the thread in state 0 (created) with an empty cache; the operating-system thread is
    /// not started. @p parent is the owning tree, which deletes the object. GUI thread.
    explicit CLS_DeviceTreeBGThread(QObject* parent = nullptr);
    /// If the thread runs: sets state 3, wakes its sleeps, then waits with no time limit until run()
    /// has returned, which is at worst the rest of a pass plus one tick of the wait. Empties the cache.
    /// GUI thread.
    ~CLS_DeviceTreeBGThread() override;

    /// Sets state 1 (running), clears a pending stop request and empties the cache.
    /// @return 0, or -1 when the state already was 1 (nothing changes; the cache is kept).
    /// Does not start the operating-system thread: QThread::start() does. GUI thread.
    int Start();
    /// Sets state 2 (paused). run() ends at its next step 1 only, after the current pass and the wait
    /// that follows it: there is no resume, only Start() and QThread::start() again.
    /// @return always 0. GUI thread.
    int Pause();
    /// Sets state 3 (stopped) and returns without waiting. A sleep of run() (a tick of its wait, or the
    /// second before a retry while the device layer isn't ready) ends at once, and run() returns at its
    /// next check of the state. @return always 0. GUI thread.
    int Stop();

    /// Whether the channel @p _qstrId is an image channel, asked of its device through the first
    /// channel below the same parent.
    /// @return the device's answer (> 0: image channel), 0 when nothing answers (no channels below
    /// the parent, no device factory, a failed listing), -1 when the channel can't be read (no
    /// resource tree, unknown or expired resource, not a channel). Worker thread (from run), or any
    /// thread that doesn't hold the cache lock.
    int IsImageChannel(const QString& _qstrId);

    /// Passes of run() that have ended so far, whether they emitted or gave up early; the emission of
    /// a pass is posted before the pass counts. For tests and diagnostics; any thread.
    int PassesDone() const { return m_iPassesDone.load(); }

public slots:
    /// Forgets the cache, so that the next pass reports every channel again, and an empty cache ends
    /// the worker's current wait at its next tick. Blocks while a pass is folding its results into
    /// the cache. Connected to the tree's SignChannelStatusUpdate(); GUI thread.
    void SlotChannelStatusChanged();

signals:
    /// The channels new to the cache or changed since: @p _qvarData holds a
    /// `QMap<QString, QPair<bool, int>>` of resource id -> (image channel, status). Emitted by the
    /// worker at the end of a pass, only when something changed.
    void SignChannelStatusChanged(QVariant _qvarData);

protected:
    /// The worker's loop: while the state is 1, a pass over all channels (see the file comment),
    /// then a wait of up to 100 ticks of 100 ms, cut short by an empty cache. Returns when the state
    /// is no longer 1 at the top of the loop, on Stop() or an application that is quitting during the
    /// wait, or when no application object is found (the state then stays 1). Worker thread.
    void run() override;

    /// Sleeps @p _iMsecs milliseconds on the worker, or less when Stop() (or the destructor) asks
    /// the thread to end; returns at once while such a request stands.
    void SleepUnlessStopped(int _iMsecs);
    /// Records a stop request and wakes every sleep of SleepUnlessStopped(). Any thread; takes
    /// m_mtxWake only.
    void WakeForStop();

    /// Last reported state per channel: resource id (UTF-8) -> (image channel, status).
    std::map<std::string, std::pair<bool, int>> m_mapChannelStatus;
    QReadWriteLock m_rwlockChannelStatus; ///< Guards m_mapChannelStatus; non-recursive.
    QReadWriteLock m_rwlockState;         ///< Guards m_iState; non-recursive.
    /// 0 created, 1 running, 2 paused, 3 stopped. Set and read under m_rwlockState; atomic only for
    /// the one lock-free read at the top of the loop.
    std::atomic<int> m_iState;
    std::atomic<int> m_iPassesDone{0}; ///< Count behind PassesDone(); raised by the worker.
    /// Guards m_blStopAsked for the worker's sleeps; never held together with the two read-write
    /// locks.
    std::mutex m_mtxWake;
    std::condition_variable m_cvWake; ///< Wakes the worker's sleeps for a stop; waited on with m_mtxWake.
    /// Set by Stop() and the destructor and cleared by Start(), under m_mtxWake: a stop request that
    /// ends every sleep of the worker until the next Start().
    bool m_blStopAsked = false;
};
