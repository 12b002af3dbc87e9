// Stand-in for the settings library, driven by the test that loads it: the setting "skin" of
// "SystemConfig" is the text of the environment variable WGT_TEST_SKIN (also when it is empty), or
// the default when that variable is not set. Every other setting answers its default.
// "StyleParamTest_CallCount" gives how many times "GetParam" was asked.

#include <atomic>
#include <cstdlib>
#include <string>

namespace {
std::atomic<int> s_iCallCount{0};
} // namespace

extern "C" std::string GetParam(const std::string& _strSection, const std::string& _strKey,
                                const std::string& _strDefault)
{
    ++s_iCallCount;
    if (_strSection == "SystemConfig" && _strKey == "skin") {
        const char* pSkin = std::getenv("WGT_TEST_SKIN");
        if (nullptr != pSkin) {
            return pSkin;
        }
    }
    return _strDefault;
}

extern "C" int StyleParamTest_CallCount()
{
    return s_iCallCount.load();
}
