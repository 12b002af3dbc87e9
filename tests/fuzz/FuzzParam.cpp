// Settings stand-in for the style-sheet fuzz target and its replay test: the skin setting is empty
// (so the style loader uses "dark" and caches nothing), every other setting answers its default.

#include <string>

#if defined(__clang__)
// The binder looks the function up by its plain name; the C++ types are what the loader expects.
#pragma clang diagnostic ignored "-Wreturn-type-c-linkage"
#endif

extern "C" std::string GetParam(const std::string& _strSection, const std::string& _strKey,
                                const std::string& _strDefault)
{
    if (_strSection == "SystemConfig" && _strKey == "skin")
        return std::string();
    return _strDefault;
}
