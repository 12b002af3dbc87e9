#include "CLS_TreeRowBatch.h"

#include "CLS_WgtBaseTreeWidget.h"

CLS_TreeRowBatch::CLS_TreeRowBatch(CLS_WgtBaseTreeWidget* _pTree, bool _blLayoutOnce) : m_pTree(_pTree)
{
    if (m_pTree != nullptr)
        m_pTree->BeginRowBatch(_blLayoutOnce);
}

CLS_TreeRowBatch::~CLS_TreeRowBatch()
{
    if (m_pTree != nullptr)
        m_pTree->EndRowBatch();
}
