#pragma once
// Test helper: sets an environment variable for one scope and puts the old value (or its absence)
// back on every path out of it.

#include <QByteArray>
#include <QtGlobal>

class CLS_EnvGuard
{
public:
    CLS_EnvGuard(const char* _pName, const QByteArray& _qbaValue)
        : m_pName(_pName), m_blWasSet(qEnvironmentVariableIsSet(_pName)), m_qbaOldValue(qgetenv(_pName))
    {
        qputenv(m_pName, _qbaValue);
    }
    ~CLS_EnvGuard()
    {
        if (m_blWasSet) {
            qputenv(m_pName, m_qbaOldValue);
        } else {
            qunsetenv(m_pName);
        }
    }
    CLS_EnvGuard(const CLS_EnvGuard&) = delete;
    CLS_EnvGuard& operator=(const CLS_EnvGuard&) = delete;

private:
    const char* m_pName;
    bool m_blWasSet;
    QByteArray m_qbaOldValue;
};
