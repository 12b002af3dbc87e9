// Fuzz target: arbitrary bytes through CLS_WgtDeviceTree::RestoreViewState of a kept custom tree.

#include "FuzzApp.h"
#include "FuzzViewState.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int* _pArgc, char*** _pArgv)
{
    WgtFuzz::MakeFuzzApplication(_pArgc, _pArgv);
    WgtFuzz::ViewStateTree();
    // Registered after the tree made the binder's caches, so it runs before those are destroyed.
    std::atexit(WgtFuzz::DestroyKeptTrees);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* _pData, size_t _iSize)
{
    const WgtFuzz::STRCT_ViewStateRun run = WgtFuzz::RunViewState(_pData, _iSize);
    if (!run.m_qlstProblems.isEmpty()) {
        std::fprintf(stderr, "view state: %s\n", qPrintable(run.m_qlstProblems.join("; ")));
        std::abort();
    }
    return 0;
}
