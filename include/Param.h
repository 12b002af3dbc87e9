#pragma once
// Gateway to the settings library "libLxParam.so". Any thread.

#include <string>

namespace Param {

// "GetParam" of the settings library: section, key, default; gives the stored text or the default.
typedef std::string (*PFun_GetParam)(const std::string& _strSection, const std::string& _strKey,
                                     const std::string& _strDefault);

// Address of a function of the settings library, or null. Binds the whole function list ("Init",
// "IsInit", "SetParam", "GetParam", "DeleteParam", "UnInit") on first use; _strPath is the library's
// folder, empty for the loader's own search.
void* GetModuleFun(const std::string& _strFunName, const std::string& _strPath = std::string());

// The setting _strKey of _strSection as the library stores it, or _strDefault when the library or
// its "GetParam" is missing (the library itself answers _strDefault for an unknown setting).
std::string GetParam(const std::string& _strSection, const std::string& _strKey,
                     const std::string& _strDefault);

} // namespace Param
