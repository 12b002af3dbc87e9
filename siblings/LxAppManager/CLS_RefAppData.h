#pragma once
// The application data object of the reference application library. Whether GetDataManager()
// gives its data manager is switched through the control interface. Safe from any thread.

#include "CLS_IApp.h"
#include "CLS_RefDataManager.h"

#include <atomic>

class CLS_RefAppData : public CLS_IAppData
{
public:
    CLS_IDataManager* GetDataManager() override;

    void SetDataManagerAvailable(bool _blAvailable);
    int ManagerCalls() const;
    void Reset();

private:
    CLS_RefDataManager m_clsDataManager; // owned; handed out, never deleted by callers
    std::atomic<bool> m_blAvailable{true};
    std::atomic<int> m_iManagerCalls{0};
};
