#pragma once
// Exported functions of the reference logging library "libLxLog.so". The binder resolves "Init",
// "SetLoggerConfig", "SetLoggerConfigAll", "PrintLog" and "UnInit" by name; LxLogCtl_FilePath is
// for tests and tools. Every function is safe from any thread. Nothing needs to be called before
// "PrintLog": the first record configures the library from the environment.

#include <string>

extern "C" {

// Configures from the environment (LXLOG_FILE, LXLOG_LEVEL, LXLOG_STDERR_LEVEL) and opens the log
// file; a non-empty _pFile replaces LXLOG_FILE. 0, or -1 when the file cannot be opened (records
// then still reach the standard error stream at or above its level).
int Init(const char* _pFile);

// One setting by name: "file" (path; empty for the default file), "level" (lowest level written
// to the file) or "stderr_level" (lowest level copied to the standard error stream; "none" for
// never). 0, or -1 for an unknown key, a value that is not a number, or a file that cannot be
// opened.
int SetLoggerConfig(const char* _pKey, const char* _pValue);

// All settings at once; a null or empty _pFile keeps the current file. A negative _iStderrLevel
// means "none". 0, or -1 when the file cannot be opened.
int SetLoggerConfigAll(const char* _pFile, int _iFileLevel, int _iStderrLevel);

// One record, written as one line.
void PrintLog(int _iLevel, const char* _pModule, const char* _pFile, int _iLine, const char* _pFunction,
              const std::string& _strText);

// Closes the log file. A later record reopens it (appending) with the settings in force.
void UnInit();

// Copies the path of the log file in use (or to be used) into _pBuffer, NUL-terminated.
// The length of the path, or -1 when _pBuffer is null or too small.
int LxLogCtl_FilePath(char* _pBuffer, int _iSize);

} // extern "C"
