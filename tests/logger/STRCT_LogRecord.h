#pragma once
// One call of "PrintLog" as the recording logging library of the tests keeps it, and the C
// function through which a test takes the records out of that library.

#include <string>
#include <vector>

struct STRCT_LogRecord
{
    int m_iLevel = 0;
    std::string m_strModule;
    std::string m_strFile;
    int m_iLine = 0;
    std::string m_strFunction;
    std::string m_strText;
};

// Exported by the recording library as "LxLogTest_TakeRecords": moves every record kept so far,
// oldest first, into *_pOut and forgets them.
typedef void (*PFun_LxLogTest_TakeRecords)(std::vector<STRCT_LogRecord>* _pOut);
