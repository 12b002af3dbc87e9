// Test application library: one I_AppSignals hub, reachable through "GetAppSignals", and a count of
// the receivers of its resize signal for the tests.
#include "I_AppSignals.h"

namespace {
class CLS_TestAppSignals : public I_AppSignals
{
public:
    int ResizeReceivers() const { return receivers(SIGNAL(SignResizeView(double, double))); }
};

CLS_TestAppSignals* Hub()
{
    static CLS_TestAppSignals* s_pSignals =
        new CLS_TestAppSignals(); // lives for the process, as the real hub
    return s_pSignals;
}
} // namespace

extern "C" I_AppSignals* GetAppSignals()
{
    return Hub();
}

extern "C" int TestAppManager_ResizeReceivers()
{
    return Hub()->ResizeReceivers();
}
