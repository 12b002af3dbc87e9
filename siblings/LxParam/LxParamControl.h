#pragma once
// Exported functions of the reference settings library "libLxParam.so". The binder resolves
// "Init", "IsInit", "SetParam", "GetParam", "DeleteParam" and "UnInit" by name;
// LxParamCtl_FilePath is for tests and tools. Every function is safe from any thread, and none
// needs a QCoreApplication. Nothing needs to be called first: the first call chooses the file
// (LXPARAM_FILE, else "<executable dir>/LxParam.ini").

#include <string>

extern "C" {

// Chooses the INI file: _strFile, or when empty LXPARAM_FILE, else the default. The file need not
// exist yet. 0, or -1 when the file exists and cannot be read as INI.
int Init(const std::string& _strFile);

// Whether a file has been chosen, by Init or by a first call.
bool IsInit();

// Stores _strValue under _strKey of section _strSection and writes the file at once. 0, or -1 for
// an empty key or a file that cannot be written.
int SetParam(const std::string& _strSection, const std::string& _strKey, const std::string& _strValue);

// The stored text of _strKey in _strSection, or _strDefault when there is none. Changes that
// another writer made to the file are seen on the next call.
std::string GetParam(const std::string& _strSection, const std::string& _strKey,
                     const std::string& _strDefault);

// Removes _strKey of _strSection, or the whole section when _strKey is empty. 0 when something was
// removed, -1 when there was nothing to remove or the file cannot be written.
int DeleteParam(const std::string& _strSection, const std::string& _strKey);

// Forgets the chosen file; the next call chooses again.
void UnInit();

// The file in use, or the one the next call would choose.
std::string LxParamCtl_FilePath();

} // extern "C"
