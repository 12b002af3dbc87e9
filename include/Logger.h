#pragma once
// Gateway to the logging library "libLxLog.so" and the one-statement log stream.
// A LogMessageStream belongs to the statement and the thread that made it; any thread may log.
// Records go straight to the library's "PrintLog": no buffering, no queue, no level filter here.

#include <sstream>
#include <string>

namespace Logger {

// "PrintLog" of the logging library: level, module, file, line, function, text.
typedef void (*PFun_PrintLog)(int _iLevel, const char* _pModule, const char* _pFile, int _iLine,
                              const char* _pFunction, const std::string& _strText);

// Address of a function of the logging library, or null. Binds the whole function list on first
// use; _strPath is the library's folder, empty for the loader's own search.
void* GetModuleFun(const std::string& _strFunName, const std::string& _strPath = std::string());

// One log statement: write into it with operator<<, and its destruction sends the text as one
// record. Without the logging library the record is dropped silently. The file, module and
// function texts are not copied: pass literals (__FILE__, __FUNCTION__) or texts that outlive it.
class LogMessageStream : public std::ostringstream
{
public:
    LogMessageStream(const char* _pFile, const char* _pModule, const char* _pFunction, int _iLine,
                     int _iLevel);
    ~LogMessageStream() override;

    LogMessageStream(const LogMessageStream&) = delete;
    LogMessageStream& operator=(const LogMessageStream&) = delete;
    LogMessageStream(LogMessageStream&&) = delete;
    LogMessageStream& operator=(LogMessageStream&&) = delete;

private:
    const char* m_pFile;
    const char* m_pModule;
    const char* m_pFunction;
    int m_iLine;
    int m_iLevel;
};

// One log statement of a catch block whose module code comes from a call that may throw (the
// virtual GetModuleCode of a page). The module is asked for here, once more; when that throws, the
// record is lost and nothing leaves: a catch block must not throw again. _funText writes the text.
template <typename FunModule, typename FunText>
void LogCaught(const char* _pFile, FunModule&& _funModule, const char* _pFunction, int _iLine, int _iLevel,
               FunText&& _funText) noexcept
{
    try {
        LogMessageStream clsLog(_pFile, _funModule(), _pFunction, _iLine, _iLevel);
        _funText(clsLog);
    } catch (...) {
    }
}

} // namespace Logger

// A log statement at the call site: WGT_LOG("WgtTreeWidget", 3) << "nullptr == pResourceTree ";
// In a lambda body the function name is "operator()".
#define WGT_LOG(_pModule, _iLevel)                                                                           \
    Logger::LogMessageStream(__FILE__, (_pModule), __FUNCTION__, __LINE__, (_iLevel))

// A log statement in a catch block of a member of a class with a virtual GetModuleCode():
//   WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) { _osText << "Init Fail" << e.what(); });
// GetModuleCode() is called when the statement is made; if it throws, the record is dropped.
#define WGT_LOG_CAUGHT(_iLevel, _funText)                                                                    \
    Logger::LogCaught(                                                                                       \
        __FILE__, [this]() { return GetModuleCode(); }, __FUNCTION__, __LINE__, (_iLevel), _funText)
