#include "CLS_TreeRowBatch.h"

#include "CLS_WgtBaseTreeWidget.h"

CLS_TreeRowBatch::CLS_TreeRowBatch(CLS_WgtBaseTreeWidget* _pTree) : m_pTree(_pTree)
{
    if (m_pTree != nullptr)
        m_pTree->BeginRowBatch();
}

CLS_TreeRowBatch::~CLS_TreeRowBatch()
{
    if (m_pTree != nullptr)
        m_pTree->EndRowBatch();
}
