#pragma once
// Run-time binding of the client's sibling libraries, and two small file helpers.
// The binder keeps one process-wide table of opened libraries; it has no lock of its own (the
// table is only guarded at its creation), and it never closes a library it opened.

#include <map>
#include <string>
#include <vector>

namespace Util {

// Opens _strDllName on first use (the name as given is the cache key) and resolves every name of
// _vecFunNames in order. A missing function is kept with a null address. Returns an empty map when
// the library could not be opened. Writes its progress to stdout and failures to stderr.
std::map<std::string, void*> GetDllFunction(const std::string& _strDllName,
                                            const std::vector<std::string>& _vecFunNames);

// One-name form of the above. Keeps nothing itself: each call resolves again and writes its lines.
void* GetDllFunction(const std::string& _strDllName, const std::string& _strFunName);

// The steps every gateway's GetModuleFun shares, on that gateway's own function map: when
// _strFunName is not in _mapFuns, bind the whole list from "<_strPath>/<_pDllName>" (the bare file
// name for an empty path) and replace _mapFuns by the result; then give the stored address, or null.
void* GetGatewayFunction(std::map<std::string, void*>& _mapFuns, const std::string& _strFunName,
                         const std::string& _strPath, const char* _pDllName,
                         const std::vector<std::string>& _vecFunNames);

// Directory of the running executable followed by "/../lib" ("/../Frameworks" on macOS): the
// folder where the widget libraries are deployed. "./" stands for the directory if it can't be read.
std::string GetModulePath();

// True when the file can be opened for reading.
bool FileExists(const std::string& _strPath);

} // namespace Util
