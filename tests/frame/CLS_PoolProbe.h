#pragma once
// Test helper: reads the test task pool once the TaskPool gateway has loaded it. Before that, or
// without that library, there are no calls and the pool counts as idle.

#include "STRCT_PoolCall.h"

#include <QString>
#include <QStringList>

#include <dlfcn.h>

#include <sstream>

class CLS_PoolProbe
{
public:
    static std::vector<STRCT_PoolCall> TakeCalls()
    {
        std::vector<STRCT_PoolCall> vecCalls;
        if (auto pFun = reinterpret_cast<PFun_FramePool_TakeCalls>(Function("FramePool_TakeCalls"))) {
            pFun(&vecCalls);
        }
        return vecCalls;
    }

    // The calls as readable lines "function|owner|interval|task id|context".
    static QStringList Lines(const std::vector<STRCT_PoolCall>& _vecCalls)
    {
        QStringList qlstLines;
        for (const STRCT_PoolCall& strctCall : _vecCalls) {
            qlstLines << QString("%1|%2|%3|%4|%5")
                             .arg(QString::fromStdString(strctCall.m_strFunction),
                                  nullptr == strctCall.m_pOwner ? QString() : PointerText(strctCall.m_pOwner))
                             .arg(strctCall.m_iInterval)
                             .arg(QString::fromStdString(strctCall.m_strTaskId),
                                  QString::fromStdString(strctCall.m_strContext));
        }
        return qlstLines;
    }

    static bool WaitIdle(int _iTimeoutMs = 5000)
    {
        auto pFun = reinterpret_cast<PFun_FramePool_WaitIdle>(Function("FramePool_WaitIdle"));
        return nullptr == pFun || pFun(_iTimeoutMs);
    }

    static int LoopCount()
    {
        auto pFun = reinterpret_cast<PFun_FramePool_LoopCount>(Function("FramePool_LoopCount"));
        return nullptr == pFun ? 0 : pFun();
    }

    static void ThrowOnNextAdd(int _iKind)
    {
        if (auto pFun =
                reinterpret_cast<PFun_FramePool_ThrowOnNextAdd>(Function("FramePool_ThrowOnNextAdd"))) {
            pFun(_iKind);
        }
    }

    static int EscapedCount()
    {
        auto pFun = reinterpret_cast<PFun_FramePool_EscapedCount>(Function("FramePool_EscapedCount"));
        return nullptr == pFun ? 0 : pFun();
    }

    static bool Loaded() { return nullptr != Function("FramePool_TakeCalls"); }

    static QString PointerText(const void* _pValue)
    {
        std::ostringstream ossText;
        ossText << _pValue;
        return QString::fromStdString(ossText.str());
    }

private:
    static void* Function(const char* _pName)
    {
        void* pHandle = dlopen("libLxTaskPool.so", RTLD_NOW | RTLD_NOLOAD);
        return nullptr == pHandle ? nullptr : dlsym(pHandle, _pName);
    }
};
