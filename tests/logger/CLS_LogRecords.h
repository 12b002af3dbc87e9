#pragma once
// Test helper: reads the records of the recording logging library, once the logger has loaded it.
// Before that, or without that library, there are no records.

#include "STRCT_LogRecord.h"

#include <QString>
#include <QStringList>

#include <dlfcn.h>

class CLS_LogRecords
{
public:
    // Every record sent since the last call, oldest first.
    static std::vector<STRCT_LogRecord> Take()
    {
        std::vector<STRCT_LogRecord> vecRecords;
        void* pHandle = dlopen("libLxLog.so", RTLD_NOW | RTLD_NOLOAD);
        if (nullptr == pHandle) {
            return vecRecords;
        }
        auto pFunTake = reinterpret_cast<PFun_LxLogTest_TakeRecords>(dlsym(pHandle, "LxLogTest_TakeRecords"));
        if (nullptr != pFunTake) {
            pFunTake(&vecRecords);
        }
        return vecRecords;
    }

    // The records as readable lines "level|module|function|text", for comparisons that print well.
    static QStringList Lines(const std::vector<STRCT_LogRecord>& _vecRecords)
    {
        QStringList qlstLines;
        for (const STRCT_LogRecord& strctRecord : _vecRecords) {
            qlstLines << QString("%1|%2|%3|%4")
                             .arg(strctRecord.m_iLevel)
                             .arg(QString::fromStdString(strctRecord.m_strModule),
                                  QString::fromStdString(strctRecord.m_strFunction),
                                  QString::fromStdString(strctRecord.m_strText));
        }
        return qlstLines;
    }
};
