#pragma once
// The one writer of the logging library: formats records as single lines and writes each one
// whole, under one mutex, to the log file (flushed per line) and to the standard error stream.
// Any thread.

#include <climits>
#include <cstdio>
#include <mutex>
#include <string>

class CLS_LxLogWriter
{
public:
    // Never copied; the library keeps one for the process.
    CLS_LxLogWriter() = default;
    ~CLS_LxLogWriter();
    CLS_LxLogWriter(const CLS_LxLogWriter&) = delete;
    CLS_LxLogWriter& operator=(const CLS_LxLogWriter&) = delete;

    // Stderr level that copies nothing.
    static constexpr int CONST_LEVEL_NONE = INT_MAX;

    int Init(const std::string& _strFile);
    int SetFile(const std::string& _strFile);
    void SetFileLevel(int _iLevel);
    void SetStderrLevel(int _iLevel);
    void Close();
    std::string FilePath();

    void Write(int _iLevel, const char* _pModule, const char* _pFile, int _iLine, const char* _pFunction,
               const std::string& _strText);

    // The line of a record without its line end: time, level, thread, module, file:line, function,
    // text; line breaks inside the text are written as "\n" and "\r".
    static std::string FormatLine(int _iLevel, const char* _pModule, const char* _pFile, int _iLine,
                                  const char* _pFunction, const std::string& _strText);

    // "<temp dir>/<executable name>.log".
    static std::string DefaultFilePath();

    // A level from its text: a number, or "none"/"off" for CONST_LEVEL_NONE. False for other text.
    static bool ParseLevel(const std::string& _strText, int& _iLevel);

private:
    // Under m_mtx.
    void ConfigureFromEnvironment();
    int OpenFile();
    void CloseFile();

    std::mutex m_mtx;
    bool m_blConfigured = false;
    std::string m_strPath;
    FILE* m_pFile = nullptr;
    bool m_blOpenFailed = false; // not retried until the file is set again
    int m_iFileLevel = 0;
    int m_iStderrLevel = 3;
};
