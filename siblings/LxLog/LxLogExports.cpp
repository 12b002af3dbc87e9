// The exported C functions of the reference logging library: the five the binder resolves by
// name, and LxLogCtl_FilePath.

#include "CLS_LxLogWriter.h"
#include "LxLogControl.h"

#include <cstring>

namespace {

// Made on first use and never deleted: threads and static destructors may still log while the
// process exits. Lines are flushed one by one, so nothing waits in a buffer.
CLS_LxLogWriter& Writer()
{
    static CLS_LxLogWriter* s_pWriter = new CLS_LxLogWriter();
    return *s_pWriter;
}

std::string TextOf(const char* _pText)
{
    return nullptr == _pText ? std::string() : std::string(_pText);
}

} // namespace

extern "C" int Init(const char* _pFile)
{
    return Writer().Init(TextOf(_pFile));
}

extern "C" int SetLoggerConfig(const char* _pKey, const char* _pValue)
{
    const std::string strKey = TextOf(_pKey);
    const std::string strValue = TextOf(_pValue);
    if ("file" == strKey) {
        return Writer().SetFile(strValue);
    }
    int iLevel = 0;
    if ("level" == strKey) {
        if (!CLS_LxLogWriter::ParseLevel(strValue, iLevel)) {
            return -1;
        }
        Writer().SetFileLevel(iLevel);
        return 0;
    }
    if ("stderr_level" == strKey) {
        if (!CLS_LxLogWriter::ParseLevel(strValue, iLevel)) {
            return -1;
        }
        Writer().SetStderrLevel(iLevel);
        return 0;
    }
    return -1;
}

extern "C" int SetLoggerConfigAll(const char* _pFile, int _iFileLevel, int _iStderrLevel)
{
    Writer().SetFileLevel(_iFileLevel);
    Writer().SetStderrLevel(_iStderrLevel < 0 ? CLS_LxLogWriter::CONST_LEVEL_NONE : _iStderrLevel);
    if (nullptr == _pFile || '\0' == *_pFile) {
        return 0;
    }
    return Writer().SetFile(_pFile);
}

extern "C" void PrintLog(int _iLevel, const char* _pModule, const char* _pFile, int _iLine,
                         const char* _pFunction, const std::string& _strText)
{
    Writer().Write(_iLevel, _pModule, _pFile, _iLine, _pFunction, _strText);
}

extern "C" void UnInit()
{
    Writer().Close();
}

extern "C" int LxLogCtl_FilePath(char* _pBuffer, int _iSize)
{
    const std::string strPath = Writer().FilePath();
    if (nullptr == _pBuffer || _iSize <= 0 || strPath.size() + 1 > size_t(_iSize)) {
        return -1;
    }
    std::memcpy(_pBuffer, strPath.c_str(), strPath.size() + 1);
    return int(strPath.size());
}
