#include "CLS_RefAppData.h"

CLS_IDataManager* CLS_RefAppData::GetDataManager()
{
    ++m_iManagerCalls;
    return m_blAvailable.load() ? &m_clsDataManager : nullptr;
}

void CLS_RefAppData::SetDataManagerAvailable(bool _blAvailable)
{
    m_blAvailable.store(_blAvailable);
}

int CLS_RefAppData::ManagerCalls() const
{
    return m_iManagerCalls.load();
}

void CLS_RefAppData::Reset()
{
    m_blAvailable.store(true);
    m_iManagerCalls.store(0);
}
