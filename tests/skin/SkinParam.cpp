// Settings library for the skin tests: the setting "skin" of "SystemConfig" is the text of the
// environment variable WGT_TEST_SKIN, or the default when that variable is not set. Every other
// setting answers its default.

#include <cstdlib>
#include <string>

extern "C" std::string GetParam(const std::string& _strSection, const std::string& _strKey,
                                const std::string& _strDefault)
{
    if (_strSection == "SystemConfig" && _strKey == "skin") {
        const char* pSkin = std::getenv("WGT_TEST_SKIN");
        if (nullptr != pSkin) {
            return pSkin;
        }
    }
    return _strDefault;
}
