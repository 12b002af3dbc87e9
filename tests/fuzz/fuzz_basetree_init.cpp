// Fuzz target: a record map of arbitrary shape (cycles, self-parents, missing parents, duplicate ids
// under other keys, odd sort numbers and flags) through CLS_WgtBaseTreeWidget::Init, then walkers,
// queries and edits on whatever was built, then Clear.

#include "FuzzApp.h"
#include "FuzzDecoders.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int* _pArgc, char*** _pArgv)
{
    WgtFuzz::MakeFuzzApplication(_pArgc, _pArgv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* _pData, size_t _iSize)
{
    const WgtFuzz::STRCT_BaseTreeRun run = WgtFuzz::RunBaseTree(_pData, _iSize);
    if (run.m_blSkipped)
        return 0;
    // The build must give exactly the rows that the records reach from the root.
    const WgtFuzz::STRCT_BaseTreeModel& model = run.m_model;
    const int iExpectedRows = model.m_iRows == -2 ? 0 : model.m_iRows;
    const bool blRefused = model.m_iRows == -2;
    if ((!blRefused && run.m_iInitResult != model.m_iInitResult) || (blRefused && run.m_iInitResult != -1) ||
        run.m_iRows != iExpectedRows || (!blRefused && run.m_qsetIndexedIds != model.m_qsetIds)) {
        std::fprintf(stderr, "basetree mismatch: Init %d (model %d), rows %d (model %d), ids %d (model %d)\n",
                     run.m_iInitResult, model.m_iInitResult, run.m_iRows, iExpectedRows,
                     int(run.m_qsetIndexedIds.size()), int(model.m_qsetIds.size()));
        std::abort();
    }
    return 0;
}
