#pragma once
// Scoped locks on a QReadWriteLock of the status thread, for test code that reads the thread's
// fields while its worker may be running. In a ThreadSanitizer build each lock and unlock is
// announced to the sanitizer, the way the thread's own code does: QReadWriteLock's synchronisation
// lives in the uninstrumented QtCore.

#include <QReadWriteLock>

#if defined(__SANITIZE_THREAD__)
#define WGT_TEST_THREAD_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define WGT_TEST_THREAD_SANITIZER 1
#endif
#endif

#ifdef WGT_TEST_THREAD_SANITIZER
#include <sanitizer/tsan_interface.h>
#endif

class CLS_TestReadGuard
{
public:
    explicit CLS_TestReadGuard(QReadWriteLock& _rwlock) : m_rwlock(_rwlock)
    {
#ifdef WGT_TEST_THREAD_SANITIZER
        __tsan_mutex_pre_lock(&m_rwlock, __tsan_mutex_read_lock);
#endif
        m_rwlock.lockForRead();
#ifdef WGT_TEST_THREAD_SANITIZER
        __tsan_mutex_post_lock(&m_rwlock, __tsan_mutex_read_lock, 0);
#endif
    }
    ~CLS_TestReadGuard()
    {
#ifdef WGT_TEST_THREAD_SANITIZER
        __tsan_mutex_pre_unlock(&m_rwlock, __tsan_mutex_read_lock);
#endif
        m_rwlock.unlock();
#ifdef WGT_TEST_THREAD_SANITIZER
        __tsan_mutex_post_unlock(&m_rwlock, __tsan_mutex_read_lock);
#endif
    }
    CLS_TestReadGuard(const CLS_TestReadGuard&) = delete;
    CLS_TestReadGuard& operator=(const CLS_TestReadGuard&) = delete;

private:
    QReadWriteLock& m_rwlock;
};

// After QThread::wait() has returned true: what the worker did before it left run() is visible.
// run() marks its end for the sanitizer on the thread object's address.
inline void AcquireRunEnd(void* _pThread)
{
#ifdef WGT_TEST_THREAD_SANITIZER
    __tsan_acquire(_pThread);
#else
    (void)_pThread;
#endif
}
