#include "ColorManage.h"

#include "Util.h"

#include <map>
#include <vector>

namespace ColorManage {

namespace {
#ifdef __APPLE__
const char* const CONST_DLL_NAME = "libLxColorManage.dylib";
#else
const char* const CONST_DLL_NAME = "libLxColorManage.so";
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
    static const std::vector<std::string>& s_vecFunNames =
        *new const std::vector<std::string>{"GetNamedColor"};
    return Util::GetGatewayFunction(mapFuns, _strFunName, _strPath, CONST_DLL_NAME, s_vecFunNames);
}

} // namespace ColorManage
