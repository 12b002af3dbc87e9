#include "CLS_RefApp.h"

int CLS_RefApp::GetAppState()
{
    ++m_iStateCalls;
    return m_iState.load();
}

void CLS_RefApp::SetAppState(int _iState)
{
    m_iState.store(_iState);
}

int CLS_RefApp::State() const
{
    return m_iState.load();
}

int CLS_RefApp::StateCalls() const
{
    return m_iStateCalls.load();
}

void CLS_RefApp::Reset()
{
    m_iState.store(1);
    m_iStateCalls.store(0);
}
