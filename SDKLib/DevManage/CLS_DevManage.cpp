#include "CLS_DevManage.h"

#include "Logger.h"
#include "Util.h"

#include <map>
#include <vector>

namespace DevManage {

namespace {
#ifdef __APPLE__
const char* const CONST_DLL_NAME = "libDevManage.dylib";
#else
const char* const CONST_DLL_NAME = "libDevManage.so";
#endif
// Module code of this gateway's log lines.
const char* const CONST_MODULE = "DevManage";
} // namespace

void* GetModuleFun(const std::string& _strFunName, const std::string& _strPath)
{
    // Function name -> address, null for a function the library lacks. No lock: only its creation
    // is guarded; a rebind replaces it as a whole.
    // Never destroyed (like the names below): a thread still running while the process exits, a
    // tree's status thread for one, may come through here after static destruction has begun.
    static std::map<std::string, void*>& mapFuns = *new std::map<std::string, void*>();

    // Bound as a whole, also the functions this library never calls.
    static const std::vector<std::string>& s_vecFunNames =
        *new const std::vector<std::string>{"GetCustomTree", "GetResourceTree", "GetDevFactory", "GetUtil"};
    return Util::GetGatewayFunction(mapFuns, _strFunName, _strPath, CONST_DLL_NAME, s_vecFunNames);
}

CLS_IResourceTree* GetResourceTree()
{
    auto pFun_GetResourceTree = reinterpret_cast<PFun_GetResourceTree>(GetModuleFun("GetResourceTree", ""));
    if (nullptr == pFun_GetResourceTree) {
        WGT_LOG(CONST_MODULE, 3) << "nullptr == pFun_GetResourceTree ";
        return nullptr;
    }
    return pFun_GetResourceTree();
}

CLS_IDevFactory* GetDevFactory()
{
    auto pFun_GetDevFactory = reinterpret_cast<PFun_GetDevFactory>(GetModuleFun("GetDevFactory", ""));
    if (nullptr == pFun_GetDevFactory) {
        WGT_LOG(CONST_MODULE, 3) << "nullptr == pFun_GetDevFactory ";
        return nullptr;
    }
    return pFun_GetDevFactory();
}

I_CustomTreeManage* GetCustomTree()
{
    auto pFun_GetCustomTree = reinterpret_cast<PFun_GetCustomTree>(GetModuleFun("GetCustomTree", ""));
    if (nullptr == pFun_GetCustomTree) {
        WGT_LOG(CONST_MODULE, 3) << "nullptr == pFun_GetCustomTree ";
        return nullptr;
    }
    return pFun_GetCustomTree();
}

} // namespace DevManage
