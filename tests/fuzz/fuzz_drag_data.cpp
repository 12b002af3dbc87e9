// Fuzz target: arbitrary bytes as the nodes format of a drag payload, through CLS_DeviceTreeDragData::Read.

#include "FuzzDragData.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* _pData, size_t _iSize)
{
    const WgtFuzz::STRCT_DragDataRun run = WgtFuzz::RunDragData(_pData, _iSize);
    if (!run.m_qlstProblems.isEmpty()) {
        std::fprintf(stderr, "drag data: %s\n", qPrintable(run.m_qlstProblems.join("; ")));
        std::abort();
    }
    return 0;
}
