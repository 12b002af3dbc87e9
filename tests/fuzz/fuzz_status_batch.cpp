// Fuzz target: arbitrary payloads through CLS_WgtDeviceTree::UpdateAllChannelsStatus(QVariant) of a
// resource tree and a custom tree built from a fixed node map, with host commands in between.

#include "FuzzApp.h"
#include "FuzzDecoders.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int* _pArgc, char*** _pArgv)
{
    WgtFuzz::MakeFuzzApplication(_pArgc, _pArgv);
    WgtFuzz::StatusTree(0);
    WgtFuzz::StatusTree(1);
    // Registered after the trees made the binder's caches, so it runs before those are destroyed.
    std::atexit(WgtFuzz::DestroyKeptTrees);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* _pData, size_t _iSize)
{
    const WgtFuzz::STRCT_StatusRun run = WgtFuzz::RunStatusBatch(_pData, _iSize);
    if (run.m_iRebuildResult != 0) {
        std::fprintf(stderr, "status tree: rebuild gave %d\n", run.m_iRebuildResult);
        std::abort();
    }
    for (const WgtFuzz::STRCT_StatusBatch& batch : run.m_qvecBatches) {
        // The right payload type is applied (0), anything else is refused (-1).
        const int iExpected = batch.m_blExactType ? 0 : -1;
        if (batch.m_iResult != iExpected || !batch.m_qlstMismatches.isEmpty()) {
            std::fprintf(stderr, "status batch of type %s gave %d, expected %d; %s\n",
                         batch.m_varPayload.typeName() ? batch.m_varPayload.typeName() : "(invalid)",
                         batch.m_iResult, iExpected, qPrintable(batch.m_qlstMismatches.join("; ")));
            std::abort();
        }
    }
    return 0;
}
