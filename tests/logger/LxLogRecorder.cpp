// Recording stand-in for the logging library "libLxLog.so": "PrintLog" keeps every call, with all
// six arguments, for the test to take out through "LxLogTest_TakeRecords". Any thread may log.

#include "STRCT_LogRecord.h"

#include <mutex>

namespace {
std::mutex s_mtxRecords;
std::vector<STRCT_LogRecord> s_vecRecords;
} // namespace

extern "C" void PrintLog(int _iLevel, const char* _pModule, const char* _pFile, int _iLine,
                         const char* _pFunction, const std::string& _strText)
{
    STRCT_LogRecord strctRecord;
    strctRecord.m_iLevel = _iLevel;
    strctRecord.m_strModule = nullptr == _pModule ? "(null)" : _pModule;
    strctRecord.m_strFile = nullptr == _pFile ? "(null)" : _pFile;
    strctRecord.m_iLine = _iLine;
    strctRecord.m_strFunction = nullptr == _pFunction ? "(null)" : _pFunction;
    strctRecord.m_strText = _strText;

    std::lock_guard<std::mutex> lock(s_mtxRecords);
    s_vecRecords.push_back(strctRecord);
}

extern "C" void LxLogTest_TakeRecords(std::vector<STRCT_LogRecord>* _pOut)
{
    std::lock_guard<std::mutex> lock(s_mtxRecords);
    _pOut->insert(_pOut->end(), s_vecRecords.begin(), s_vecRecords.end());
    s_vecRecords.clear();
}
