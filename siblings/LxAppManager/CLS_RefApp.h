#pragma once
// The application object of the reference application library. Its state is set through the
// control interface; GetAppState() is polled by the channel status threads, so it reads an atomic.

#include "CLS_IApp.h"

#include <atomic>

class CLS_RefApp : public CLS_IApp
{
public:
    int GetAppState() override;

    void SetAppState(int _iState);
    // The state, without counting a call.
    int State() const;
    // Calls of GetAppState since the last reset.
    int StateCalls() const;
    void Reset();

private:
    std::atomic<int> m_iState{1}; // 1 running, 2 quitting
    std::atomic<int> m_iStateCalls{0};
};
