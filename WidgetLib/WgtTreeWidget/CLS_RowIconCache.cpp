#include "CLS_RowIconCache.h"

thread_local CLS_RowIconCache* CLS_RowIconCache::s_pOpenBatch = nullptr;

CLS_RowIconCache::CLS_RowIconCache() : m_blOuter(s_pOpenBatch == nullptr)
{
    if (m_blOuter)
        s_pOpenBatch = this;
}

CLS_RowIconCache::~CLS_RowIconCache()
{
    if (m_blOuter)
        s_pOpenBatch = nullptr;
}

QIcon CLS_RowIconCache::Icon(const QString& _qstrPath)
{
    if (s_pOpenBatch == nullptr || _qstrPath.isEmpty())
        return QIcon(_qstrPath);
    QHash<QString, QIcon>& qhashIcons = s_pOpenBatch->m_qhashIcons;
    auto it = qhashIcons.constFind(_qstrPath);
    if (it == qhashIcons.cend())
        it = qhashIcons.insert(_qstrPath, QIcon(_qstrPath));
    return it.value();
}
