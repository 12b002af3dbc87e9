// The exported C functions of the reference application library: the five functions the binder
// resolves by name, and the control interface of LxAppManagerControl.h.

#include "CLS_RefApp.h"
#include "CLS_RefAppData.h"
#include "I_AppSignals.h"
#include "LxAppManagerControl.h"

#include <atomic>
#include <cstring>

namespace {

// The objects live for the process and are never deleted: threads may still ask for them while
// the process exits.
CLS_RefApp* App()
{
    static CLS_RefApp* s_pApp = new CLS_RefApp();
    return s_pApp;
}

CLS_RefAppData* AppData()
{
    static CLS_RefAppData* s_pAppData = new CLS_RefAppData();
    return s_pAppData;
}

std::atomic<bool> s_blAppAvailable{true};
std::atomic<bool> s_blAppDataAvailable{true};
std::atomic<int> s_iGetAppCalls{0};
std::atomic<int> s_iGetAppDataCalls{0};
std::atomic<int> s_iGetAppSignalsCalls{0};
std::atomic<int> s_iAppQuitCalls{0};
std::atomic<int> s_iGetAppHandleCalls{0};

} // namespace

// ---- functions bound by the LxAppManager gateway -------------------------------------------

// Marks the application as quitting: GetAppState() gives 2 from then on.
extern "C" void AppQuit()
{
    ++s_iAppQuitCalls;
    App()->SetAppState(2);
}

extern "C" CLS_IApp* GetApp()
{
    ++s_iGetAppCalls;
    return s_blAppAvailable.load() ? App() : nullptr;
}

extern "C" CLS_IAppData* GetAppData()
{
    ++s_iGetAppDataCalls;
    return s_blAppDataAvailable.load() ? AppData() : nullptr;
}

// The application object as an opaque handle.
extern "C" void* GetAppHandle()
{
    ++s_iGetAppHandleCalls;
    return App();
}

namespace {
// One hub for the process, made on the thread of the first caller (the GUI thread in a client).
I_AppSignals* AppSignals()
{
    static I_AppSignals* s_pSignals = new I_AppSignals();
    return s_pSignals;
}
} // namespace

extern "C" I_AppSignals* GetAppSignals()
{
    ++s_iGetAppSignalsCalls;
    return AppSignals();
}

// ---- control interface --------------------------------------------------------------------------

extern "C" void LxAppManagerCtl_Reset(void)
{
    App()->Reset();
    AppData()->Reset();
    s_blAppAvailable.store(true);
    s_blAppDataAvailable.store(true);
    s_iGetAppCalls.store(0);
    s_iGetAppDataCalls.store(0);
    s_iGetAppSignalsCalls.store(0);
    s_iAppQuitCalls.store(0);
    s_iGetAppHandleCalls.store(0);
}

extern "C" void LxAppManagerCtl_SetAppState(int _iState)
{
    App()->SetAppState(_iState);
}

extern "C" int LxAppManagerCtl_GetAppState(void)
{
    return App()->State();
}

extern "C" void LxAppManagerCtl_SetAppAvailable(int _iAvailable)
{
    s_blAppAvailable.store(0 != _iAvailable);
}

extern "C" void LxAppManagerCtl_SetAppDataAvailable(int _iAvailable)
{
    s_blAppDataAvailable.store(0 != _iAvailable);
}

extern "C" void LxAppManagerCtl_SetDataManagerAvailable(int _iAvailable)
{
    AppData()->SetDataManagerAvailable(0 != _iAvailable);
}

extern "C" void LxAppManagerCtl_EmitResizeView(double _dXScale, double _dYScale)
{
    // Not counted as a call of "GetAppSignals": the counters are what the widget library asked for.
    emit AppSignals()->SignResizeView(_dXScale, _dYScale);
}

extern "C" int LxAppManagerCtl_CallCount(const char* _pFunction)
{
    if (nullptr == _pFunction) {
        return -1;
    }
    if (0 == std::strcmp(_pFunction, "GetApp")) {
        return s_iGetAppCalls.load();
    }
    if (0 == std::strcmp(_pFunction, "GetAppState")) {
        return App()->StateCalls();
    }
    if (0 == std::strcmp(_pFunction, "GetAppData")) {
        return s_iGetAppDataCalls.load();
    }
    if (0 == std::strcmp(_pFunction, "GetDataManager")) {
        return AppData()->ManagerCalls();
    }
    if (0 == std::strcmp(_pFunction, "GetAppSignals")) {
        return s_iGetAppSignalsCalls.load();
    }
    if (0 == std::strcmp(_pFunction, "AppQuit")) {
        return s_iAppQuitCalls.load();
    }
    if (0 == std::strcmp(_pFunction, "GetAppHandle")) {
        return s_iGetAppHandleCalls.load();
    }
    return -1;
}
