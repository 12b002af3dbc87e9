#pragma once
// Test-only view of the status thread: its state and its cache, read under the thread's own locks.
// Overrides nothing. Stop it and wait for it before it is destroyed.

#include "CLS_DeviceTreeBGThread.h"
#include "CLS_TestLockGuards.h"

#include <QStringList>

class CLS_TestBGThread : public CLS_DeviceTreeBGThread
{
public:
    using CLS_DeviceTreeBGThread::CLS_DeviceTreeBGThread;

    int State()
    {
        CLS_TestReadGuard lock(m_rwlockState);
        return m_iState;
    }

    std::map<std::string, std::pair<bool, int>> Cache()
    {
        CLS_TestReadGuard lock(m_rwlockChannelStatus);
        return m_mapChannelStatus;
    }

    // The cache as "id=image/status" words in id order, e.g. "chA1=1/1 chA2=1/0".
    QString CacheText()
    {
        QStringList qlstWords;
        for (const auto& pairEntry : Cache()) {
            qlstWords << QString("%1=%2/%3")
                             .arg(QString::fromStdString(pairEntry.first))
                             .arg(pairEntry.second.first ? 1 : 0)
                             .arg(pairEntry.second.second);
        }
        return qlstWords.join(' ');
    }
};
