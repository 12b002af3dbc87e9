#include "CLS_LxLogWriter.h"

#include <chrono>
#include <cstdlib>
#include <ctime>

#include <unistd.h>
#ifdef __APPLE__
#include <mach-o/dyld.h>
#include <pthread.h>
#else
#include <sys/syscall.h>
#endif

namespace {

std::string BaseName(const char* _pPath)
{
    if (nullptr == _pPath) {
        return "(null)";
    }
    const std::string strPath(_pPath);
    const std::string::size_type iSlash = strPath.find_last_of('/');
    return std::string::npos == iSlash ? strPath : strPath.substr(iSlash + 1);
}

const char* OrNull(const char* _pText)
{
    return nullptr == _pText ? "(null)" : _pText;
}

long ThreadNumber()
{
#ifdef __APPLE__
    uint64_t iId = 0;
    pthread_threadid_np(nullptr, &iId);
    return long(iId);
#else
    return long(syscall(SYS_gettid));
#endif
}

std::string ExecutableName()
{
    char szPath[4096] = {0};
#ifdef __APPLE__
    uint32_t iSize = sizeof(szPath);
    if (0 != _NSGetExecutablePath(szPath, &iSize)) {
        return "LxLog";
    }
#else
    const ssize_t iLength = readlink("/proc/self/exe", szPath, sizeof(szPath) - 1);
    if (iLength <= 0) {
        return "LxLog";
    }
    szPath[iLength] = '\0';
#endif
    const std::string strName = BaseName(szPath);
    return strName.empty() ? std::string("LxLog") : strName;
}

} // namespace

CLS_LxLogWriter::~CLS_LxLogWriter()
{
    CloseFile();
}

std::string CLS_LxLogWriter::DefaultFilePath()
{
    const char* pTemp = std::getenv("TMPDIR");
    std::string strDir = (nullptr == pTemp || '\0' == *pTemp) ? std::string("/tmp") : std::string(pTemp);
    while (strDir.size() > 1 && '/' == strDir.back()) {
        strDir.pop_back();
    }
    return strDir + "/" + ExecutableName() + ".log";
}

bool CLS_LxLogWriter::ParseLevel(const std::string& _strText, int& _iLevel)
{
    if ("none" == _strText || "off" == _strText) {
        _iLevel = CONST_LEVEL_NONE;
        return true;
    }
    if (_strText.empty()) {
        return false;
    }
    char* pEnd = nullptr;
    const long iValue = std::strtol(_strText.c_str(), &pEnd, 10);
    if (nullptr == pEnd || '\0' != *pEnd || iValue < INT_MIN || iValue > INT_MAX) {
        return false;
    }
    _iLevel = int(iValue);
    return true;
}

std::string CLS_LxLogWriter::FormatLine(int _iLevel, const char* _pModule, const char* _pFile, int _iLine,
                                        const char* _pFunction, const std::string& _strText)
{
    const auto tpNow = std::chrono::system_clock::now();
    const std::time_t tNow = std::chrono::system_clock::to_time_t(tpNow);
    const long iMs =
        long(std::chrono::duration_cast<std::chrono::milliseconds>(tpNow.time_since_epoch()).count() % 1000);
    std::tm tmNow{};
    localtime_r(&tNow, &tmNow);
    char szTime[32] = {0};
    std::strftime(szTime, sizeof(szTime), "%Y-%m-%d %H:%M:%S", &tmNow);
    char szHead[64] = {0};
    std::snprintf(szHead, sizeof(szHead), "%s.%03ld [%d] [%ld] ", szTime, iMs, _iLevel, ThreadNumber());

    std::string strLine(szHead);
    strLine.reserve(strLine.size() + _strText.size() + 128);
    strLine += "[";
    strLine += OrNull(_pModule);
    strLine += "] [";
    strLine += BaseName(_pFile);
    strLine += ":";
    strLine += std::to_string(_iLine);
    strLine += "] [";
    strLine += OrNull(_pFunction);
    strLine += "] ";
    // One record, one line: maps arrive as indented JSON over several lines.
    for (char chText : _strText) {
        if ('\n' == chText) {
            strLine += "\\n";
        } else if ('\r' == chText) {
            strLine += "\\r";
        } else {
            strLine += chText;
        }
    }
    return strLine;
}

void CLS_LxLogWriter::ConfigureFromEnvironment()
{
    m_blConfigured = true;
    const char* pFile = std::getenv("LXLOG_FILE");
    m_strPath = (nullptr == pFile || '\0' == *pFile) ? DefaultFilePath() : std::string(pFile);
    m_blOpenFailed = false;
    int iLevel = 0;
    const char* pLevel = std::getenv("LXLOG_LEVEL");
    m_iFileLevel = (nullptr != pLevel && ParseLevel(pLevel, iLevel)) ? iLevel : 0;
    const char* pStderr = std::getenv("LXLOG_STDERR_LEVEL");
    m_iStderrLevel = (nullptr != pStderr && ParseLevel(pStderr, iLevel)) ? iLevel : 3;
}

int CLS_LxLogWriter::OpenFile()
{
    if (nullptr != m_pFile) {
        return 0;
    }
    if (m_blOpenFailed) {
        return -1;
    }
    m_pFile = std::fopen(m_strPath.c_str(), "a");
    if (nullptr == m_pFile) {
        m_blOpenFailed = true;
        return -1;
    }
    return 0;
}

void CLS_LxLogWriter::CloseFile()
{
    if (nullptr != m_pFile) {
        std::fclose(m_pFile);
        m_pFile = nullptr;
    }
}

int CLS_LxLogWriter::Init(const std::string& _strFile)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    CloseFile();
    ConfigureFromEnvironment();
    if (!_strFile.empty()) {
        m_strPath = _strFile;
    }
    return OpenFile();
}

int CLS_LxLogWriter::SetFile(const std::string& _strFile)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    if (!m_blConfigured) {
        ConfigureFromEnvironment();
    }
    CloseFile();
    m_strPath = _strFile.empty() ? DefaultFilePath() : _strFile;
    m_blOpenFailed = false;
    return OpenFile();
}

void CLS_LxLogWriter::SetFileLevel(int _iLevel)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    if (!m_blConfigured) {
        ConfigureFromEnvironment();
    }
    m_iFileLevel = _iLevel;
}

void CLS_LxLogWriter::SetStderrLevel(int _iLevel)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    if (!m_blConfigured) {
        ConfigureFromEnvironment();
    }
    m_iStderrLevel = _iLevel;
}

void CLS_LxLogWriter::Close()
{
    std::lock_guard<std::mutex> lock(m_mtx);
    CloseFile();
    m_blOpenFailed = false;
}

std::string CLS_LxLogWriter::FilePath()
{
    std::lock_guard<std::mutex> lock(m_mtx);
    if (!m_blConfigured) {
        ConfigureFromEnvironment();
    }
    return m_strPath;
}

void CLS_LxLogWriter::Write(int _iLevel, const char* _pModule, const char* _pFile, int _iLine,
                            const char* _pFunction, const std::string& _strText)
{
    // Formatted outside the lock; written whole inside it, so lines of threads never mix.
    std::string strLine = FormatLine(_iLevel, _pModule, _pFile, _iLine, _pFunction, _strText);
    strLine += '\n';

    std::lock_guard<std::mutex> lock(m_mtx);
    if (!m_blConfigured) {
        ConfigureFromEnvironment();
    }
    if (_iLevel >= m_iFileLevel && 0 == OpenFile()) {
        std::fwrite(strLine.data(), 1, strLine.size(), m_pFile);
        std::fflush(m_pFile);
    }
    if (CONST_LEVEL_NONE != m_iStderrLevel && _iLevel >= m_iStderrLevel) {
        std::fwrite(strLine.data(), 1, strLine.size(), stderr);
        std::fflush(stderr);
    }
}
