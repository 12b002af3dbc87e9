// Test settings library for the device tree's image folder: "skin" of "SystemConfig" is read from
// the environment variable DEVTREE_TEST_SKIN on every call (unset: the caller's default), so that
// one test process can try several skins. Every other setting answers the default.
#include <cstdlib>
#include <string>

extern "C" std::string GetParam(const std::string& _strSection, const std::string& _strKey,
                                const std::string& _strDefault)
{
    if (_strSection == "SystemConfig" && _strKey == "skin") {
        if (const char* pSkin = std::getenv("DEVTREE_TEST_SKIN"))
            return pSkin;
    }
    return _strDefault;
}
