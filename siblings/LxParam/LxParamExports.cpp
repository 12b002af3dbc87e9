// The exported C functions of the reference settings library: the six the binder resolves by
// name, and LxParamCtl_FilePath.

#include "CLS_LxParamStore.h"
#include "LxParamControl.h"

namespace {

// Made on first use and never deleted: pool threads may still read settings while the process
// exits. It holds no open file between calls.
CLS_LxParamStore& Store()
{
    static CLS_LxParamStore* s_pStore = new CLS_LxParamStore();
    return *s_pStore;
}

} // namespace

extern "C" int Init(const std::string& _strFile)
{
    return Store().Init(_strFile);
}

extern "C" bool IsInit()
{
    return Store().IsInit();
}

extern "C" int SetParam(const std::string& _strSection, const std::string& _strKey,
                        const std::string& _strValue)
{
    return Store().Set(_strSection, _strKey, _strValue);
}

extern "C" std::string GetParam(const std::string& _strSection, const std::string& _strKey,
                                const std::string& _strDefault)
{
    return Store().Get(_strSection, _strKey, _strDefault);
}

extern "C" int DeleteParam(const std::string& _strSection, const std::string& _strKey)
{
    return Store().Delete(_strSection, _strKey);
}

extern "C" void UnInit()
{
    Store().UnInit();
}

extern "C" std::string LxParamCtl_FilePath()
{
    return Store().FilePath();
}
