// The exported C functions of the reference colour library: "GetNamedColor", which the binder
// resolves by name, and the skin control of LxColorManageControl.h.

#include "CLS_LxColorTable.h"
#include "LxColorManageControl.h"

#include <cstdlib>
#include <mutex>

#include <dlfcn.h>

namespace {

#ifdef __APPLE__
const char* const CONST_PARAM_DLL = "libLxParam.dylib";
#else
const char* const CONST_PARAM_DLL = "libLxParam.so";
#endif

using PFun_GetParam = std::string (*)(const std::string&, const std::string&, const std::string&);

std::mutex s_mtxSkin;
std::string s_strFixedSkin; // set through LxColorCtl_SetSkin; empty: not fixed

// "GetParam" of the settings library, opened by bare name like every sibling, once per process;
// null when it is not there.
PFun_GetParam ParamGetter()
{
    static const PFun_GetParam s_pFun = []() -> PFun_GetParam {
        void* pHandle = dlopen(CONST_PARAM_DLL, RTLD_NOW);
        if (nullptr == pHandle) {
            return nullptr;
        }
        return reinterpret_cast<PFun_GetParam>(dlsym(pHandle, "GetParam"));
    }();
    return s_pFun;
}

std::string CurrentSkin()
{
    std::string strSkin;
    {
        std::lock_guard<std::mutex> lock(s_mtxSkin);
        strSkin = s_strFixedSkin;
    }
    if (strSkin.empty()) {
        const char* pEnv = std::getenv("LXCOLOR_SKIN");
        if (nullptr != pEnv) {
            strSkin = pEnv;
        }
    }
    if (strSkin.empty()) {
        const PFun_GetParam pFunGetParam = ParamGetter();
        if (nullptr != pFunGetParam) {
            strSkin = pFunGetParam("SystemConfig", "skin", "dark");
        }
    }
    // A skin without a table of its own wears the dark colours.
    return CLS_LxColorTable::Instance().HasSkin(strSkin) ? strSkin : std::string("dark");
}

} // namespace

extern "C" std::string GetNamedColor(const std::string& _strGroup, const std::string& _strName,
                                     const std::string& _strSkin)
{
    try {
        std::string strSkin = _strSkin.empty() ? CurrentSkin() : _strSkin;
        if (!CLS_LxColorTable::Instance().HasSkin(strSkin)) {
            strSkin = "dark";
        }
        return CLS_LxColorTable::Instance().Color(strSkin, _strGroup, _strName);
    } catch (...) {
        return std::string();
    }
}

extern "C" int LxColorCtl_SetSkin(const std::string& _strSkin)
{
    if (!_strSkin.empty() && !CLS_LxColorTable::Instance().HasSkin(_strSkin)) {
        return -1;
    }
    std::lock_guard<std::mutex> lock(s_mtxSkin);
    s_strFixedSkin = _strSkin;
    return 0;
}

extern "C" std::string LxColorCtl_GetSkin()
{
    try {
        return CurrentSkin();
    } catch (...) {
        return "dark";
    }
}
