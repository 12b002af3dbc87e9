#include "CLS_DeviceTreeBGThread.h"

#include "CLS_DevManage.h"
#include "CLS_IApp.h"
#include "CLS_IDevFactory.h"
#include "CLS_IResourceTree.h"
#include "DevStructDefine.h"
#include "Logger.h"
#include "LxAppManager.h"
#include "SiblingFence.h"

#include <QMap>
#include <QPair>
#include <QVector>

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#if defined(__SANITIZE_THREAD__)
#define WGT_THREAD_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define WGT_THREAD_SANITIZER 1
#endif
#endif

#ifdef WGT_THREAD_SANITIZER
#include <sanitizer/tsan_interface.h>
#endif

namespace {

const char* const CONST_MODULE = "WgtTreeWidget"; // module code of this class's log lines

const int CONST_TYPE_CHANNEL = 4;

const int CONST_STATE_CREATED = 0;
const int CONST_STATE_RUNNING = 1;
const int CONST_STATE_PAUSED = 2;
const int CONST_STATE_STOPPED = 3;

const int CONST_APP_STATE_QUITTING = 2;
const int CONST_APP_STATE_NO_ANSWER = -1; // a GetAppState that threw: not quitting, the wait goes on

// What a device-layer operation that threw counts as: a failed call.
const STRCT_DevResult CONST_stFailedResult{-1, QString(), QMap<QString, QString>()};

const int CONST_WAIT_TICKS = 100;  // ticks of one wait
const int CONST_TICK_MSECS = 100;  // length of a tick
const int CONST_RETRY_SECONDS = 1; // pause before a retry while the device layer isn't ready

// _qstrText as UTF-8 in _strOut, reusing _strOut's storage: plain ASCII ids, the usual case, cost
// no allocation once the buffer has grown to the longest id.
void AssignUtf8(std::string& _strOut, const QString& _qstrText)
{
    _strOut.clear();
    for (const QChar ch : _qstrText) {
        if (ch.unicode() >= 0x80) {
            const QByteArray qbaUtf8 = _qstrText.toUtf8();
            _strOut.assign(qbaUtf8.constData(), static_cast<size_t>(qbaUtf8.size()));
            return;
        }
        _strOut.push_back(static_cast<char>(ch.unicode()));
    }
}

// QReadWriteLock keeps its synchronisation inside QtCore, where a ThreadSanitizer build of this
// library can't see it; these guards tell the sanitizer what each lock and unlock is. Otherwise
// they are plain scoped lockers.
class CLS_ReadGuard
{
public:
    explicit CLS_ReadGuard(QReadWriteLock& _rwlock) : m_rwlock(_rwlock)
    {
#ifdef WGT_THREAD_SANITIZER
        __tsan_mutex_pre_lock(&m_rwlock, __tsan_mutex_read_lock);
#endif
        m_rwlock.lockForRead();
#ifdef WGT_THREAD_SANITIZER
        __tsan_mutex_post_lock(&m_rwlock, __tsan_mutex_read_lock, 0);
#endif
    }
    ~CLS_ReadGuard()
    {
#ifdef WGT_THREAD_SANITIZER
        __tsan_mutex_pre_unlock(&m_rwlock, __tsan_mutex_read_lock);
#endif
        m_rwlock.unlock();
#ifdef WGT_THREAD_SANITIZER
        __tsan_mutex_post_unlock(&m_rwlock, __tsan_mutex_read_lock);
#endif
    }
    CLS_ReadGuard(const CLS_ReadGuard&) = delete;
    CLS_ReadGuard& operator=(const CLS_ReadGuard&) = delete;

private:
    QReadWriteLock& m_rwlock;
};

class CLS_WriteGuard
{
public:
    explicit CLS_WriteGuard(QReadWriteLock& _rwlock) : m_rwlock(_rwlock)
    {
#ifdef WGT_THREAD_SANITIZER
        __tsan_mutex_pre_lock(&m_rwlock, 0);
#endif
        m_rwlock.lockForWrite();
#ifdef WGT_THREAD_SANITIZER
        __tsan_mutex_post_lock(&m_rwlock, 0, 0);
#endif
    }
    ~CLS_WriteGuard()
    {
#ifdef WGT_THREAD_SANITIZER
        __tsan_mutex_pre_unlock(&m_rwlock, 0);
#endif
        m_rwlock.unlock();
#ifdef WGT_THREAD_SANITIZER
        __tsan_mutex_post_unlock(&m_rwlock, 0);
#endif
    }
    CLS_WriteGuard(const CLS_WriteGuard&) = delete;
    CLS_WriteGuard& operator=(const CLS_WriteGuard&) = delete;

private:
    QReadWriteLock& m_rwlock;
};

// One channel of a pass's listing: where its id stands in the pass's id buffer, and its status.
struct STRCT_ListedChannel
{
    size_t m_iOffset;
    size_t m_iLength;
    int m_iStatus;
};

// Marks, for the sanitizer, the end of run() on every path out of it. QThread's own handshake
// between the end of run() and QThread::wait() lives inside QtCore; the destructor pairs this with
// an acquire after its wait.
class CLS_RunEndMark
{
public:
    explicit CLS_RunEndMark(void* _pThread) : m_pThread(_pThread) {}
    ~CLS_RunEndMark()
    {
#ifdef WGT_THREAD_SANITIZER
        __tsan_release(m_pThread);
#endif
    }
    CLS_RunEndMark(const CLS_RunEndMark&) = delete;
    CLS_RunEndMark& operator=(const CLS_RunEndMark&) = delete;

private:
    [[maybe_unused]] void* m_pThread; // read only by the sanitizer build
};

// Counts a pass as ended when it goes out of scope.
class CLS_PassEnd
{
public:
    explicit CLS_PassEnd(std::atomic<int>& _iPasses) : m_iPasses(_iPasses) {}
    ~CLS_PassEnd() { m_iPasses.fetch_add(1); }
    CLS_PassEnd(const CLS_PassEnd&) = delete;
    CLS_PassEnd& operator=(const CLS_PassEnd&) = delete;

private:
    std::atomic<int>& m_iPasses;
};

} // namespace

CLS_DeviceTreeBGThread::CLS_DeviceTreeBGThread(QObject* parent)
    : QThread(parent), m_iState(CONST_STATE_CREATED)
{
#ifdef WGT_THREAD_SANITIZER
    __tsan_mutex_create(&m_rwlockChannelStatus, 0);
    __tsan_mutex_create(&m_rwlockState, 0);
#endif
}

CLS_DeviceTreeBGThread::~CLS_DeviceTreeBGThread()
{
    if (isRunning()) {
        {
            CLS_WriteGuard lock(m_rwlockState);
            m_iState = CONST_STATE_STOPPED;
        }
        WakeForStop();
        quit(); // run() has no event loop: the state value is what ends it
        wait();
    }
#ifdef WGT_THREAD_SANITIZER
    __tsan_acquire(this);
#endif
    {
        // The worker's last fold is complete before the cache goes.
        CLS_WriteGuard lock(m_rwlockChannelStatus);
        m_mapChannelStatus.clear();
    }
#ifdef WGT_THREAD_SANITIZER
    __tsan_mutex_destroy(&m_rwlockChannelStatus, 0);
    __tsan_mutex_destroy(&m_rwlockState, 0);
#endif
}

int CLS_DeviceTreeBGThread::Start()
{
    {
        CLS_WriteGuard lock(m_rwlockState);
        if (CONST_STATE_RUNNING == m_iState) {
            return -1; // the cache is kept
        }
        m_iState = CONST_STATE_RUNNING;
    }
    {
        const std::lock_guard<std::mutex> lock(m_mtxWake);
        m_blStopAsked = false;
    }
    // The state lock is released before the cache lock is taken: the two are never held together.
    CLS_WriteGuard lock(m_rwlockChannelStatus);
    m_mapChannelStatus.clear();
    return 0;
}

int CLS_DeviceTreeBGThread::Pause()
{
    CLS_WriteGuard lock(m_rwlockState);
    m_iState = CONST_STATE_PAUSED;
    return 0;
}

int CLS_DeviceTreeBGThread::Stop()
{
    {
        CLS_WriteGuard lock(m_rwlockState);
        m_iState = CONST_STATE_STOPPED;
    }
    WakeForStop();
    return 0;
}

void CLS_DeviceTreeBGThread::WakeForStop()
{
    {
        const std::lock_guard<std::mutex> lock(m_mtxWake);
        m_blStopAsked = true;
    }
    m_cvWake.notify_all();
}

void CLS_DeviceTreeBGThread::SleepUnlessStopped(int _iMsecs)
{
    std::unique_lock<std::mutex> lock(m_mtxWake);
    m_cvWake.wait_for(lock, std::chrono::milliseconds(_iMsecs), [this] { return m_blStopAsked; });
}

void CLS_DeviceTreeBGThread::SlotChannelStatusChanged()
{
    CLS_WriteGuard lock(m_rwlockChannelStatus);
    m_mapChannelStatus.clear();
}

int CLS_DeviceTreeBGThread::IsImageChannel(const QString& _qstrId)
{
    // Every call into the device layer goes through the fence: one that throws counts as failed.
    CLS_IResourceTree* pResourceTree =
        WGT_SIBLING_CALL("GetResourceTree", nullptr, DevManage::GetResourceTree());
    if (nullptr == pResourceTree) {
        WGT_LOG(CONST_MODULE, 3) << "nullptr == pResourceTree ";
        return -1;
    }

    std::weak_ptr<STRCT_VideoItem> wpItem;
    if (WGT_SIBLING_CALL("GetItem", CONST_stFailedResult, pResourceTree->GetItem(wpItem, _qstrId)).m_iCode <
        0) {
        return -1;
    }
    std::string strParentId;
    {
        // Held only while the item is read.
        std::shared_ptr<STRCT_VideoItem> spItem = wpItem.lock();
        if (nullptr == spItem) {
            WGT_LOG(CONST_MODULE, 3) << "nullptr == spItem " << _qstrId.toStdString();
            return -1;
        }
        if (CONST_TYPE_CHANNEL != spItem->GetType()) {
            return -1;
        }
        strParentId = spItem->m_strParentId;
    }

    // The device answers for all its channels, by way of the first channel below the parent.
    // Kept: the parent id is converted as ASCII.
    QVector<std::weak_ptr<STRCT_VideoItem>> qvecChildren;
    const QString qstrParentId = QString::fromLatin1(strParentId.c_str());
    if (WGT_SIBLING_CALL("ListChildren", CONST_stFailedResult,
                         pResourceTree->ListChildren(qvecChildren, qstrParentId))
                .m_iCode < 0 ||
        qvecChildren.isEmpty()) {
        return 0;
    }
    for (const std::weak_ptr<STRCT_VideoItem>& wpChild : qvecChildren) {
        std::string strChannelId;
        {
            std::shared_ptr<STRCT_VideoItem> spChild = wpChild.lock();
            if (nullptr == spChild || CONST_TYPE_CHANNEL != spChild->GetType()) {
                continue;
            }
            strChannelId = spChild->m_strId;
        }
        CLS_IDevFactory* pDevFactory = WGT_SIBLING_CALL("GetDevFactory", nullptr, DevManage::GetDevFactory());
        if (nullptr == pDevFactory) {
            return 0;
        }
        QMap<QString, QString> qmapValues;
        QString qstrValue;
        const QString qstrChannelId = QString::fromUtf8(strChannelId.c_str());
        // A query that threw is a failed one: no image channel.
        return WGT_SIBLING_CALL(
            "QueryDeviceParam", -1,
            pDevFactory->QueryDeviceParam(qstrChannelId, 0, PARAM_IMAGE_CHANNEL, qmapValues, qstrValue));
    }
    return 0;
}

void CLS_DeviceTreeBGThread::run()
{
    CLS_RunEndMark clsRunEnd(this);

    // The channels of a pass, sorted by id with one status per id. Each item is locked only while
    // its id and status are copied out; the ids go one after another into one buffer, which keeps
    // its room from pass to pass, so that an unchanged channel costs no allocation.
    std::string strIdBuffer;
    std::vector<STRCT_ListedChannel> vecChannels;
    std::string strKey; // the id of one cache lookup

    for (;;) {
        // 1. Deliberately read without the lock (the atomic keeps the read defined).
        if (CONST_STATE_RUNNING != m_iState.load(std::memory_order_relaxed)) {
            return;
        }

        {
            // The pass counts as ended when this block is left: after its emission, or where it
            // gives up early.
            CLS_PassEnd clsPassEnd(m_iPassesDone);
            // 2. The changes of this pass.
            QMap<QString, QPair<bool, int>> qmapChanges;
            strIdBuffer.clear();
            vecChannels.clear();

            // 3.-5. First pass: every channel as the resource tree lists it. Each call into a sibling goes
            // through the fence, and one that throws takes the path of its failure: here a second's sleep.
            CLS_IResourceTree* pResourceTree =
                WGT_SIBLING_CALL("GetResourceTree", nullptr, DevManage::GetResourceTree());
            if (nullptr == pResourceTree) {
                SleepUnlessStopped(CONST_RETRY_SECONDS * 1000);
                continue;
            }
            QVector<std::weak_ptr<STRCT_VideoItem>> qvecItems;
            if (WGT_SIBLING_CALL(
                    "ListItemsOfType", CONST_stFailedResult,
                    pResourceTree->ListItemsOfType(qvecItems, CONST_TYPE_CHANNEL, QVector<QString>()))
                    .m_iCode < 0) {
                SleepUnlessStopped(CONST_RETRY_SECONDS * 1000);
                continue;
            }
            vecChannels.reserve(static_cast<size_t>(qvecItems.size()));
            for (const std::weak_ptr<STRCT_VideoItem>& wpItem : qvecItems) {
                const std::shared_ptr<STRCT_VideoItem> spItem = wpItem.lock();
                if (nullptr == spItem || CONST_TYPE_CHANNEL != spItem->GetType()) {
                    continue;
                }
                vecChannels.push_back({strIdBuffer.size(), spItem->m_strId.size(), spItem->m_iStatus});
                strIdBuffer += spItem->m_strId;
            }
            const auto IdOf = [&strIdBuffer](const STRCT_ListedChannel& _stChannel) {
                return std::string_view(strIdBuffer.data() + _stChannel.m_iOffset, _stChannel.m_iLength);
            };
            // Sorted by id; of several entries with one id the last one listed counts.
            std::stable_sort(vecChannels.begin(), vecChannels.end(),
                             [&IdOf](const STRCT_ListedChannel& _first, const STRCT_ListedChannel& _second) {
                                 return IdOf(_first) < IdOf(_second);
                             });

            // 6. Fold into the cache. IsImageChannel asks the device layer under this lock, once per
            // channel new to the cache.
            if (!vecChannels.empty()) {
                CLS_WriteGuard lock(m_rwlockChannelStatus);
                for (size_t i = 0; i < vecChannels.size(); ++i) {
                    const std::string_view svId = IdOf(vecChannels[i]);
                    if (i + 1 < vecChannels.size() && IdOf(vecChannels[i + 1]) == svId) {
                        continue; // a later entry of the same id counts
                    }
                    if (svId.empty()) {
                        continue;
                    }
                    const int iStatus = vecChannels[i].m_iStatus;
                    strKey.assign(svId.data(), svId.size());
                    auto it = m_mapChannelStatus.find(strKey);
                    if (it == m_mapChannelStatus.end()) {
                        const QString qstrId = QString::fromUtf8(strKey.c_str());
                        // -1 and 0 both mean no image channel.
                        const bool blImage = IsImageChannel(qstrId) > 0;
                        m_mapChannelStatus[strKey] = std::make_pair(blImage, iStatus);
                        qmapChanges.insert(qstrId, qMakePair(blImage, iStatus));
                    } else if (it->second.second != iStatus) {
                        it->second.second = iStatus;
                        qmapChanges.insert(QString::fromUtf8(strKey.c_str()),
                                           qMakePair(it->second.first, iStatus));
                    }
                }
            }

            // 7. Without a factory the pass ends here and starts again at once: the cache has taken
            // this pass's changes in, so they are not reported until they change again. Kept.
            CLS_IDevFactory* pDevFactory =
                WGT_SIBLING_CALL("GetDevFactory", nullptr, DevManage::GetDevFactory());
            if (nullptr == pDevFactory) {
                WGT_LOG(CONST_MODULE, 3) << "nullptr == pDevFactory ";
                continue;
            }

            // 8. Same without the list of ids.
            QVector<QString> qvecIds;
            if (WGT_SIBLING_CALL("ListIdsOfType", CONST_stFailedResult,
                                 pResourceTree->ListIdsOfType(CONST_TYPE_CHANNEL, qvecIds))
                    .m_iCode < 0) {
                continue;
            }

            // 9. Second pass: each admitted id read afresh. An id can overwrite its entry of step 6
            // with a later value; the last write counts.
            for (const QString& qstrId : qvecIds) {
                // Each of these that throws skips the id, as its failure does.
                if (!WGT_SIBLING_CALL("IsIdAdmitted", false, pDevFactory->IsIdAdmitted(qstrId))) {
                    continue;
                }
                CLS_IResourceTree* pTree =
                    WGT_SIBLING_CALL("GetResourceTree", nullptr, DevManage::GetResourceTree());
                if (nullptr == pTree) {
                    continue;
                }
                std::weak_ptr<STRCT_VideoItem> wpItem;
                if (WGT_SIBLING_CALL("GetItemOfChannel", CONST_stFailedResult,
                                     pTree->GetItemOfChannel(wpItem, qstrId, -1, 0))
                        .m_iCode < 0) {
                    continue;
                }
                std::shared_ptr<STRCT_VideoItem> spItem = wpItem.lock();
                if (nullptr == spItem) {
                    continue;
                }
                const int iStatus = spItem->m_iStatus;
                spItem.reset();

                AssignUtf8(strKey, qstrId);
                CLS_WriteGuard lock(m_rwlockChannelStatus);
                auto it = m_mapChannelStatus.find(strKey);
                if (it == m_mapChannelStatus.end()) {
                    // Only ids the first pass didn't see; their image flag isn't asked.
                    m_mapChannelStatus[strKey] = std::make_pair(false, iStatus);
                    qmapChanges.insert(qstrId, qMakePair(false, iStatus));
                } else if (it->second.second != iStatus) {
                    it->second.second = iStatus;
                    qmapChanges.insert(qstrId, qMakePair(it->second.first, iStatus));
                }
            }

            // 10. Nothing changed, nothing sent.
            if (!qmapChanges.isEmpty()) {
                emit SignChannelStatusChanged(QVariant::fromValue(qmapChanges));
            }
        }

        // 11. The wait: short ticks, so that a stop or a cleared cache is seen within one tick.
        for (int iTick = 0; iTick < CONST_WAIT_TICKS; ++iTick) {
            auto pFunGetApp =
                reinterpret_cast<LxAppManager::PFun_GetApp>(LxAppManager::GetModuleFun("GetApp", ""));
            CLS_IApp* pApp =
                nullptr == pFunGetApp ? nullptr : WGT_SIBLING_CALL("GetApp", nullptr, pFunGetApp());
            if (nullptr == pApp) {
                WGT_LOG(CONST_MODULE, 3) << "nullptr == pApp ";
                return; // the state stays 1
            }
            {
                CLS_ReadGuard lock(m_rwlockState);
                if (CONST_STATE_STOPPED == m_iState ||
                    CONST_APP_STATE_QUITTING ==
                        WGT_SIBLING_CALL("GetAppState", CONST_APP_STATE_NO_ANSWER, pApp->GetAppState())) {
                    return;
                }
            }
            {
                // An empty cache (cleared, or no channels at all) starts the next pass at once.
                CLS_ReadGuard lock(m_rwlockChannelStatus);
                if (m_mapChannelStatus.empty()) {
                    break;
                }
            }
            SleepUnlessStopped(CONST_TICK_MSECS);
        }
    }
}
