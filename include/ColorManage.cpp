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
    static std::map<std::string, void*> mapFuns;

    if (mapFuns.find(_strFunName) == mapFuns.end()) {
        std::string strDllPath;
        if (!_strPath.empty()) {
            strDllPath = _strPath + "/";
        }
        strDllPath += CONST_DLL_NAME;
        // Bound as a whole, also the functions this library never calls.
        const std::vector<std::string> vecFunNames{"GetNamedColor"};
        mapFuns = Util::GetDllFunction(strDllPath, vecFunNames);
    }

    auto it = mapFuns.find(_strFunName);
    return it == mapFuns.end() ? nullptr : it->second;
}

} // namespace ColorManage
