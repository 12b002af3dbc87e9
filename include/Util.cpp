#include "Util.h"

#include <dlfcn.h>
#include <libgen.h>

#include <cstring>
#include <fstream>
#include <iostream>
#include <utility>

#ifdef __APPLE__
#include <mach-o/dyld.h>
#else
#include <unistd.h>
#endif

namespace Util {

std::map<std::string, void*> GetDllFunction(const std::string& _strDllName,
                                            const std::vector<std::string>& _vecFunNames)
{
    // Library name as handed in -> handle from dlopen. A failed open stays here as a null handle,
    // so it is never tried again. Handles are never closed, and the map is never destroyed: a thread
    // still running while the process exits may bind through it after static destruction began.
    static std::map<std::string, void*>& s_mapDllConn = *new std::map<std::string, void*>();

    std::map<std::string, void*> mapResult;
    std::string strPath;
    void* pHandle = nullptr;

    auto itConn = s_mapDllConn.find(_strDllName);
    if (itConn == s_mapDllConn.end()) {
        // Kept: leftover of an older directory lookup. strPath is still empty here, both results are
        // unused and nothing depends on them.
        if (!FileExists(strPath)) {
            (void)strPath.find('\\');
        }

        strPath = _strDllName;
        std::cout << "load dll - " << strPath << std::endl;
        pHandle = dlopen(strPath.c_str(), RTLD_NOW);
        s_mapDllConn[_strDllName] = pHandle;
    } else {
        // Cached handle: strPath stays empty, which is what the console lines below then show.
        pHandle = itConn->second;
    }

    if (nullptr == pHandle) {
        const char* pError = dlerror();
        if (nullptr != pError) {
            std::cerr << "load dll [" << strPath << "] fail !!! " << pError << std::endl;
        }
        return mapResult;
    }

    for (const std::string& strFunName : _vecFunNames) {
        void* pFun = dlsym(pHandle, strFunName.c_str());
        mapResult[strFunName] = pFun;
        // Written for found and missing functions alike (the spelling is relied on by log readers).
        std::cout << "load dll [" << strPath << ": " << strFunName << "] sucess" << std::endl;
    }
    return mapResult;
}

void* GetDllFunction(const std::string& _strDllName, const std::string& _strFunName)
{
    const std::vector<std::string> vecFunNames{_strFunName};
    const std::map<std::string, void*> mapFuns = GetDllFunction(_strDllName, vecFunNames);
    auto it = mapFuns.find(_strFunName);
    return it == mapFuns.end() ? nullptr : it->second;
}

std::string GetModulePath()
{
    std::string strDir = "./";
    char szPath[4096];
    std::memset(szPath, 0, sizeof(szPath));
#ifdef __APPLE__
    uint32_t uiSize = sizeof(szPath);
    if (0 == _NSGetExecutablePath(szPath, &uiSize)) {
        strDir = dirname(szPath);
    }
    strDir += "/../Frameworks";
#else
    // One byte short of the buffer, so the zeroed tail always terminates the text.
    const ssize_t iLen = readlink("/proc/self/exe", szPath, sizeof(szPath) - 1);
    if (iLen > 0) {
        strDir = dirname(szPath);
    }
    strDir += "/../lib";
#endif
    return strDir;
}

bool FileExists(const std::string& _strPath)
{
    std::ifstream ifsFile(_strPath, std::ios::in);
    return ifsFile.good();
}

void* GetGatewayFunction(std::map<std::string, void*>& _mapFuns, const std::string& _strFunName,
                         const std::string& _strPath, const char* _pDllName,
                         const std::vector<std::string>& _vecFunNames)
{
    if (_mapFuns.find(_strFunName) == _mapFuns.end()) {
        std::string strDllPath;
        if (!_strPath.empty())
            strDllPath = _strPath + "/";
        strDllPath += _pDllName;
        std::map<std::string, void*> mapBound = GetDllFunction(strDllPath, _vecFunNames);
        // Replaced as a whole. While the library stays missing both maps are empty, and the map is
        // then left unwritten, so that threads asking at the same time only read it.
        if (mapBound != _mapFuns)
            _mapFuns = std::move(mapBound);
    }
    const auto it = _mapFuns.find(_strFunName);
    return it == _mapFuns.end() ? nullptr : it->second;
}

} // namespace Util
