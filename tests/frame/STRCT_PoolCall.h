#pragma once
// One call into the test task pool as the pool keeps it, and the C functions through which a test
// reads the pool ("FramePool_..."), shared by the pool library and the test helper.

#include <string>
#include <vector>

struct STRCT_PoolCall
{
    std::string m_strFunction; // "AddTmpTask", "AddLoopTask" or "RemoveTask"
    void* m_pOwner = nullptr;  // "AddTmpTask" only
    int m_iInterval = 0;       // "AddLoopTask" only
    std::string m_strTaskId;   // the loop's id: the one handed back, or the one asked to remove
    std::string m_strContext;
};

// Moves every call kept so far, oldest first, into *_pOut and forgets them.
typedef void (*PFun_FramePool_TakeCalls)(std::vector<STRCT_PoolCall>* _pOut);
// Waits until no one-shot task is queued or running; false after _iTimeoutMs.
typedef bool (*PFun_FramePool_WaitIdle)(int _iTimeoutMs);
// Number of loop tasks still running.
typedef int (*PFun_FramePool_LoopCount)();
// The next "AddTmpTask" or "AddLoopTask" throws: 1 a std::runtime_error("pool refused"), 2 an int.
typedef void (*PFun_FramePool_ThrowOnNextAdd)(int _iKind);
// Number of exceptions that came out of a task into the pool since the start.
typedef int (*PFun_FramePool_EscapedCount)();
