// Test settings library: "skin" of "SystemConfig" comes from WGT_TEST_SKIN; everything else is
// the default the caller gave.
#include <cstdlib>
#include <string>

extern "C" std::string GetParam(const std::string& _strSection, const std::string& _strKey,
                                const std::string& _strDefault)
{
    if (_strSection == "SystemConfig" && _strKey == "skin") {
        if (const char* pSkin = std::getenv("WGT_TEST_SKIN"))
            return pSkin;
    }
    return _strDefault;
}
