#include "Logger.h"

#include "SiblingFence.h"
#include "Util.h"

#include <map>
#include <vector>

namespace Logger {

namespace {
#ifdef __APPLE__
const char* const CONST_DLL_NAME = "libLxLog.dylib";
#else
const char* const CONST_DLL_NAME = "libLxLog.so";
#endif
} // namespace

void* GetModuleFun(const std::string& _strFunName, const std::string& _strPath)
{
    // Function name -> address, null for a function the library lacks. No lock: only its creation
    // is guarded; a rebind replaces it as a whole.
    // Never destroyed (like the names below): a thread still running while the process exits, a
    // tree's status thread for one, may come through here after static destruction has begun.
    static std::map<std::string, void*>& mapFuns = *new std::map<std::string, void*>();

    // Bound as a whole, also the functions this library never calls.
    static const std::vector<std::string>& s_vecFunNames = *new const std::vector<std::string>{
        "Init", "SetLoggerConfig", "SetLoggerConfigAll", "PrintLog", "UnInit"};
    return Util::GetGatewayFunction(mapFuns, _strFunName, _strPath, CONST_DLL_NAME, s_vecFunNames);
}

LogMessageStream::LogMessageStream(const char* _pFile, const char* _pModule, const char* _pFunction,
                                   int _iLine, int _iLevel)
    : m_pFile(_pFile), m_pModule(_pModule), m_pFunction(_pFunction), m_iLine(_iLine), m_iLevel(_iLevel)
{}

LogMessageStream::~LogMessageStream()
{
    // Runs inside catch blocks too: nothing may leave a destructor, so whatever happens stays here.
    // The log writer's own throw is not logged: that record would go the same way.
    SiblingFence::RunUnlogged([this]() {
        const std::string strText = str();
        auto pFunPrintLog = reinterpret_cast<PFun_PrintLog>(GetModuleFun("PrintLog", ""));
        if (nullptr != pFunPrintLog) {
            pFunPrintLog(m_iLevel, m_pModule, m_pFile, m_iLine, m_pFunction, strText);
        }
    });
}

} // namespace Logger
