#pragma once
// Gateway to the application library "libLxAppManager.so": the application object, its data and
// its signal hub. Callers take a function from GetModuleFun at the point of use and cast it; the
// objects belong to the application and are never deleted here.

#include <string>

class CLS_IApp;
class CLS_IAppData;
class I_AppSignals;

namespace LxAppManager {

typedef CLS_IApp* (*PFun_GetApp)();
typedef CLS_IAppData* (*PFun_GetAppData)();
typedef I_AppSignals* (*PFun_GetAppSignals)();

// Address of a function of the application library, or null. Binds the whole function list
// ("AppQuit", "GetApp", "GetAppData", "GetAppHandle", "GetAppSignals") on first use; _strPath is
// the library's folder, empty for the loader's own search.
void* GetModuleFun(const std::string& _strFunName, const std::string& _strPath = std::string());

} // namespace LxAppManager
