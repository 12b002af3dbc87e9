#include "TreeStructDefine.h"

namespace Common {

CLS_ItemBase::CLS_ItemBase(const QString& _qstrId, const QString& _qstrText, const QString& _qstrTooltip,
                           const QString& _qstrIcon, QVariant _varData)
    : m_qstrId(_qstrId), m_qstrText(_qstrText), m_qstrTooltip(_qstrTooltip), m_qstrIcon(_qstrIcon),
      m_varData(std::move(_varData))
{}

CLS_ItemBase::CLS_ItemBase(const CLS_ItemBase& _other)
    : m_qstrId(_other.m_qstrId), m_qstrText(_other.m_qstrText), m_qstrTooltip(_other.m_qstrTooltip),
      m_qstrIcon(_other.m_qstrIcon), m_varData(_other.m_varData)
{}

} // namespace Common

CLS_ItemButton::CLS_ItemButton()
    : Common::CLS_ItemBase(QString(), QString(), QString(), QString(), QVariant())
{}

CLS_TreeItem::CLS_TreeItem() : Common::CLS_ItemBase(QString(), QString(), QString(), QString(), QVariant()) {}
