#pragma once
// Test helper: how many times the stand-in settings library was asked "GetParam", -1 while the
// library is not loaded.

#include <dlfcn.h>

namespace CLS_ParamProbe {

typedef int (*PFun_StyleParamTest_CallCount)();

inline int CallCount()
{
    void* pHandle = dlopen("libLxParam.so", RTLD_NOW | RTLD_NOLOAD);
    if (nullptr == pHandle) {
        return -1;
    }
    auto pFun = reinterpret_cast<PFun_StyleParamTest_CallCount>(dlsym(pHandle, "StyleParamTest_CallCount"));
    const int iCount = nullptr == pFun ? -1 : pFun();
    dlclose(pHandle); // drops only the reference taken above
    return iCount;
}

} // namespace CLS_ParamProbe
