// Test settings library "libLxParam.so": answers an empty skin, so that the style loader caches
// nothing and reads its files on every call, and counts the "GetParam" calls, which the style
// loader makes on every call, cached or not.

#include <atomic>
#include <string>

namespace {
std::atomic<int> s_iGetParamCalls{0};
} // namespace

extern "C" std::string GetParam(const std::string& _strSection, const std::string& _strKey,
                                const std::string& _strDefault)
{
    ++s_iGetParamCalls;
    if ("SystemConfig" == _strSection && "skin" == _strKey) {
        return std::string();
    }
    return _strDefault;
}

// Calls of "GetParam" since the last call of this function.
extern "C" int FrameParam_TakeCallCount()
{
    return s_iGetParamCalls.exchange(0);
}
