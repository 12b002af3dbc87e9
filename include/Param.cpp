#include "Param.h"

#include "SiblingFence.h"
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
    // Never destroyed (like the names below): a thread still running while the process exits, a
    // tree's status thread for one, may come through here after static destruction has begun.
    static std::map<std::string, void*>& mapFuns = *new std::map<std::string, void*>();

    // Bound as a whole, also the functions this library never calls.
    static const std::vector<std::string>& s_vecFunNames = *new const std::vector<std::string>{
        "Init", "IsInit", "SetParam", "GetParam", "DeleteParam", "UnInit"};
    return Util::GetGatewayFunction(mapFuns, _strFunName, _strPath, CONST_DLL_NAME, s_vecFunNames);
}

std::string GetParam(const std::string& _strSection, const std::string& _strKey,
                     const std::string& _strDefault)
{
    auto pFunGetParam = reinterpret_cast<PFun_GetParam>(GetModuleFun("GetParam", ""));
    if (nullptr == pFunGetParam) {
        return _strDefault;
    }
    // A settings library that throws gives the default, as a missing one does.
    return WGT_SIBLING_CALL("GetParam", _strDefault, pFunGetParam(_strSection, _strKey, _strDefault));
}

} // namespace Param
