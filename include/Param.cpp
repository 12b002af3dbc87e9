#include "Param.h"

#include "Util.h"

#include <map>
#include <vector>

namespace Param {

namespace {
#ifdef __APPLE__
const char* const CONST_DLL_NAME = "libLxParam.dylib";
#else
const char* const CONST_DLL_NAME = "libLxParam.so";
#endif
} // namespace

void* GetModuleFun(const std::string& _strFunName, const std::string& _strPath)
{
    // Function name -> address, null for a function the library lacks. No lock: only its creation
    // is guarded; a rebind replaces it as a whole.
    static std::map<std::string, void*> mapFuns;

    if (mapFuns.find(_strFunName) == mapFuns.end()) {
        std::string strDllPath;
        if (!_strPath.empty()) {
            strDllPath = _strPath + "/";
        }
        strDllPath += CONST_DLL_NAME;
        // Bound as a whole, also the functions this library never calls.
        const std::vector<std::string> vecFunNames{"Init",     "IsInit",      "SetParam",
                                                   "GetParam", "DeleteParam", "UnInit"};
        mapFuns = Util::GetDllFunction(strDllPath, vecFunNames);
    }

    auto it = mapFuns.find(_strFunName);
    return it == mapFuns.end() ? nullptr : it->second;
}

std::string GetParam(const std::string& _strSection, const std::string& _strKey,
                     const std::string& _strDefault)
{
    auto pFunGetParam = reinterpret_cast<PFun_GetParam>(GetModuleFun("GetParam", ""));
    if (nullptr == pFunGetParam) {
        return _strDefault;
    }
    return pFunGetParam(_strSection, _strKey, _strDefault);
}

} // namespace Param
