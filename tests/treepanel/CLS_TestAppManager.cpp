// Test application library: one I_AppSignals hub, reachable through "GetAppSignals".
#include "I_AppSignals.h"

extern "C" I_AppSignals* GetAppSignals()
{
    static I_AppSignals* s_pSignals = new I_AppSignals(); // lives for the process, as the real hub
    return s_pSignals;
}
