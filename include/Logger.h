#pragma once
// Gateway to the logging library "libLxLog.so" and the one-statement log stream.
// A LogMessageStream belongs to the statement and the thread that made it; any thread may log.
// Records go straight to the library's "PrintLog": no buffering, no queue, no level filter here.

#include <sstream>
#include <string>

/// Gateway to the logging library, which is loaded at run time, and the log statement built on it.
namespace Logger {

/// Signature of "PrintLog" of the logging library: level, module, file, line, function, text.
typedef void (*PFun_PrintLog)(int _iLevel, const char* _pModule, const char* _pFile, int _iLine,
                              const char* _pFunction, const std::string& _strText);

/// Address of the function _strFunName of the logging library, or null when the library or the
/// function is missing; cast it to its signature (PFun_PrintLog for "PrintLog"). The first call
/// loads the library and binds its whole function list ("Init", "SetLoggerConfig",
/// "SetLoggerConfigAll", "PrintLog", "UnInit"); later calls only look up. _strPath is the
/// library's folder, empty for the loader's own search; it is used only while nothing is bound,
/// and a load that failed from one folder is not tried there again. Any thread may call it once a
/// first call has returned; the first binding itself takes no lock.
void* GetModuleFun(const std::string& _strFunName, const std::string& _strPath = std::string());

/// One log statement: write into it with operator<<, and its destruction sends the text as one
/// record. Without the logging library the record is dropped silently. The file, module and
/// function texts are not copied: pass literals (`__FILE__`, `__FUNCTION__`) or texts that outlive it.
/// Usually made through WGT_LOG; belongs to the statement and thread that made it, never copied.
class LogMessageStream : public std::ostringstream
{
public:
    /// Keeps the call site and level for the record; nothing is sent yet. _iLevel is the logging
    /// library's level (this library logs its failures at 3).
    LogMessageStream(const char* _pFile, const char* _pModule, const char* _pFunction, int _iLine,
                     int _iLevel);
    /// Sends the text written so far as one record through "PrintLog". Never throws: a missing
    /// library or function drops the record, and whatever the writer throws is swallowed.
    ~LogMessageStream() override;

    /// Not copyable: each statement sends its record exactly once.
    LogMessageStream(const LogMessageStream&) = delete;
    /// Not assignable.
    LogMessageStream& operator=(const LogMessageStream&) = delete;
    /// Not movable: the statement's stream stays where it was made.
    LogMessageStream(LogMessageStream&&) = delete;
    /// Not move-assignable.
    LogMessageStream& operator=(LogMessageStream&&) = delete;

private:
    const char* m_pFile;
    const char* m_pModule;
    const char* m_pFunction;
    int m_iLine;
    int m_iLevel;
};

/// One log statement of a catch block whose module code comes from a call that may throw (the
/// virtual GetModuleCode of a page). The module is asked for here, once more; when that throws, the
/// record is lost and nothing leaves: a catch block must not throw again. _funModule gives the
/// module text (it must outlive the statement); _funText writes the text into the std::ostream
/// it is given (if it throws, what it wrote is still sent). Used through WGT_LOG_CAUGHT.
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

/// A log statement at the call site: WGT_LOG("WgtTreeWidget", 3) << "nullptr == pResourceTree ";
/// A temporary LogMessageStream with this file, line and function; the record goes out at the end
/// of the statement. In a lambda body the function name is "operator()".
#define WGT_LOG(_pModule, _iLevel)                                                                           \
    Logger::LogMessageStream(__FILE__, (_pModule), __FUNCTION__, __LINE__, (_iLevel))

/// A log statement in a catch block of a member of a class with a virtual GetModuleCode():
///   WGT_LOG_CAUGHT(3, [&](std::ostream& _osText) { _osText << "Init Fail" << e.what(); });
/// GetModuleCode() is called when the statement is made; if it throws, the record is dropped.
/// Throws nothing (see LogCaught).
#define WGT_LOG_CAUGHT(_iLevel, _funText)                                                                    \
    Logger::LogCaught(                                                                                       \
        __FILE__, [this]() { return GetModuleCode(); }, __FUNCTION__, __LINE__, (_iLevel), _funText)
