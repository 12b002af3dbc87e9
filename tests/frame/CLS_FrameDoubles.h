#pragma once
// Test doubles of the frame: a presenter and a view whose every hook counts its calls, can be told to
// throw, and opens the protected state to the tests. A thrown "other" exception is a plain int.
// Configure a double before the work starts: the pool's threads read the settings.

#include "CLS_PresenterBasic.h"
#include "CLS_ViewBasic.h"
#include "Logger.h"

#include <QMutex>
#include <QMutexLocker>
#include <QThread>

#include <atomic>
#include <stdexcept>

enum n_Throw
{
    THROW_NONE = 0,
    THROW_STD = 1,
    THROW_OTHER = 2,
};
Q_DECLARE_METATYPE(n_Throw)

inline void ThrowAs(n_Throw _nThrow, const char* _pWhat)
{
    if (THROW_STD == _nThrow) {
        throw std::runtime_error(_pWhat);
    }
    if (THROW_OTHER == _nThrow) {
        throw 42;
    }
}

// Whether this call is to throw, taking one of _iThrows: -1 means every call, 0 none, n the next n.
inline bool TakeThrow(std::atomic<int>& _iThrows)
{
    int iLeft = _iThrows.load();
    while (0 != iLeft) {
        if (iLeft < 0 || _iThrows.compare_exchange_weak(iLeft, iLeft - 1)) {
            return true;
        }
    }
    return false;
}

// One call of a TaskHandler: key, parameters, and the thread it ran on.
struct STRCT_HandledTask
{
    QString m_qstrKey;
    QVariantMap m_qmapParam;
    Qt::HANDLE m_hThread = nullptr;
};

class CLS_ProbePresenter : public CLS_PresenterBasic
{
    Q_OBJECT

public:
    using CLS_PresenterBasic::m_blInited;
    using CLS_PresenterBasic::m_strLoopTaskId;

    const char* GetModuleCode() override
    {
        ++m_iModuleCalls;
        if (TakeThrow(m_iModuleThrows)) {
            ThrowAs(m_nModuleThrow, "presenter module broke");
        }
        return nullptr == m_pModuleCode ? "default" : m_pModuleCode;
    }

    QList<STRCT_HandledTask> HandledTasks()
    {
        QMutexLocker locker(&m_mtxHandled);
        return m_qlstHandled;
    }

    const char* m_pModuleCode = nullptr; // null: the base's "default"
    n_Throw m_nModuleThrow = THROW_NONE;
    std::atomic<int> m_iModuleThrows{-1}; // how many of the next GetModuleCode calls throw; -1 all
    std::atomic<int> m_iModuleCalls{0};
    std::atomic<int> m_iInitPresenterCalls{0};
    std::atomic<int> m_iUnInitPresenterCalls{0};
    std::atomic<int> m_iLoopRuns{0};
    std::atomic<int> m_iLoopInterval{-1};
    std::atomic<int> m_iLoopThrowRun{0}; // the run (1, 2, ...) of LoopTask that throws m_nLoopThrow
    std::atomic<bool> m_blInitedSeenAtSignal{false};
    n_Throw m_nInitThrow = THROW_NONE;
    n_Throw m_nUnInitThrow = THROW_NONE;
    n_Throw m_nLoopThrow = THROW_NONE;
    n_Throw m_nHandlerThrow = THROW_NONE;
    bool m_blHandlerOutcome = true;
    QVariantMap m_qmapHandlerResult; // what TaskHandler puts into its result

protected:
    bool TaskHandler(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                     QVariantMap& _qmapResult) override
    {
        {
            QMutexLocker locker(&m_mtxHandled);
            m_qlstHandled.append({_qstrBusinessKey, _qmapParam, QThread::currentThreadId()});
        }
        ThrowAs(m_nHandlerThrow, "handler broke");
        _qmapResult = m_qmapHandlerResult;
        return m_blHandlerOutcome;
    }

    void InitPresenter() override
    {
        ++m_iInitPresenterCalls;
        ThrowAs(m_nInitThrow, "init broke");
    }

    void UnInitPresenter() override
    {
        ++m_iUnInitPresenterCalls;
        ThrowAs(m_nUnInitThrow, "uninit broke");
    }

    void LoopTask() override
    {
        const int iRun = ++m_iLoopRuns;
        if (iRun == m_iLoopThrowRun) {
            ThrowAs(m_nLoopThrow, "loop broke");
        }
    }

    int GetLoopInterval() override { return m_iLoopInterval; }

private:
    QMutex m_mtxHandled;
    QList<STRCT_HandledTask> m_qlstHandled;
};

class CLS_ProbeView : public CLS_ViewBasic
{
    Q_OBJECT

public:
    explicit CLS_ProbeView(CLS_PresenterBasic* _pPresenter = nullptr, QWidget* _pParent = nullptr)
        : CLS_ViewBasic(_pParent), m_pPresenter(_pPresenter)
    {}

    using CLS_ViewBasic::CallTaskHandler;
    using CLS_ViewBasic::m_blFirstShow;
    using CLS_ViewBasic::m_blInited;
    using CLS_ViewBasic::m_blStyleDirty;
    using CLS_ViewBasic::m_qstrStyleSheet;

    const char* GetModuleCode() override
    {
        ++m_iModuleCalls;
        if (TakeThrow(m_iModuleThrows)) {
            ThrowAs(m_nModuleThrow, "module broke");
        }
        return nullptr == m_pModuleCode ? CLS_ViewBasic::GetModuleCode() : m_pModuleCode;
    }

    CLS_PresenterBasic* GetPresenter() override
    {
        if (m_blLogGetPresenter) {
            // As a page that makes its presenter on demand logs it. Needs m_pModuleCode: the base's
            // module code would ask GetPresenter again.
            WGT_LOG(GetModuleCode(), 0) << "GetPresenter";
        }
        if (TakeThrow(m_iPresenterThrows)) {
            ThrowAs(m_nPresenterThrow, "presenter broke");
        }
        return m_pPresenter;
    }

    QList<STRCT_HandledTask> m_qlstHandled; // GUI thread only
    CLS_PresenterBasic* m_pPresenter = nullptr;
    const char* m_pModuleCode = nullptr; // null: the base's answer
    n_Throw m_nModuleThrow = THROW_NONE;
    std::atomic<int> m_iModuleThrows{-1}; // how many of the next GetModuleCode calls throw; -1 all
    std::atomic<int> m_iModuleCalls{0};
    n_Throw m_nPresenterThrow = THROW_NONE;
    std::atomic<int> m_iPresenterThrows{-1}; // how many of the next GetPresenter calls throw; -1 all
    n_Throw m_nInitViewThrow = THROW_NONE;
    int m_iInitViewThrows = 0; // how many calls of InitView throw m_nInitViewThrow, from the first
    n_Throw m_nInitDataThrow = THROW_NONE;
    bool m_blLogInitData = false;     // InitData begins with a log statement of its own
    bool m_blLogGetPresenter = false; // GetPresenter begins with a log statement of its own
    n_Throw m_nHandlerThrow = THROW_NONE;
    bool m_blHandlerOutcome = true;
    QVariantMap m_qmapHandlerResult;
    std::atomic<int> m_iInitViewCalls{0};
    std::atomic<int> m_iInitDataCalls{0};
    std::atomic<Qt::HANDLE> m_hInitDataThread{nullptr};

protected:
    void InitView() override
    {
        const int iCall = ++m_iInitViewCalls;
        if (iCall <= m_iInitViewThrows) {
            ThrowAs(m_nInitViewThrow, "view broke");
        }
    }

    void InitData() override
    {
        if (m_blLogInitData) {
            WGT_LOG(GetModuleCode(), 0) << "InitData"; // a page's own entry line, before any work
        }
        m_hInitDataThread = QThread::currentThreadId();
        ++m_iInitDataCalls;
        ThrowAs(m_nInitDataThrow, "data broke");
    }

    bool TaskHandler(const QString& _qstrBusinessKey, const QVariantMap& _qmapParam,
                     QVariantMap& _qmapResult) override
    {
        m_qlstHandled.append({_qstrBusinessKey, _qmapParam, QThread::currentThreadId()});
        ThrowAs(m_nHandlerThrow, "view handler broke");
        _qmapResult = m_qmapHandlerResult;
        return m_blHandlerOutcome;
    }
};

// Views whose class names carry namespaces.
namespace FrameNs {
class CLS_NsView : public CLS_ProbeView
{
    Q_OBJECT
};
namespace Inner {
class CLS_DeepView : public CLS_ProbeView
{
    Q_OBJECT
};
} // namespace Inner
} // namespace FrameNs
