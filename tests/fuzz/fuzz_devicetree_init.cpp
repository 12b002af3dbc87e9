// Fuzz target: node maps of arbitrary shape (types, bind types, statuses, colliding device ids, root
// ids under any key) through CLS_WgtDeviceTree::Init for every tree type, then queries and edits.

#include "FuzzApp.h"
#include "FuzzDecoders.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int* _pArgc, char*** _pArgv)
{
    WgtFuzz::MakeFuzzApplication(_pArgc, _pArgv);
    for (int i = 0; i < 5; ++i)
        WgtFuzz::DeviceTreeOfType(i);
    // Registered after the trees made the binder's caches, so it runs before those are destroyed.
    std::atexit(WgtFuzz::DestroyKeptTrees);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* _pData, size_t _iSize)
{
    const WgtFuzz::STRCT_DeviceTreeRun run = WgtFuzz::RunDeviceTree(_pData, _iSize);
    // Every row names a node of the model, and every device id leads to a node.
    if (!run.m_qlstRowIdsNotInModel.isEmpty() || !run.m_qlstDevIdsToNoNode.isEmpty()) {
        std::fprintf(stderr, "devicetree mismatch: rows without node [%s], device ids without node [%s]\n",
                     qPrintable(run.m_qlstRowIdsNotInModel.join(",")),
                     qPrintable(run.m_qlstDevIdsToNoNode.join(",")));
        std::abort();
    }
    if ((run.m_iTreeType == 0 || run.m_iTreeType == 2) && !run.m_qmapCallerNodes.contains("custom_root_id")) {
        std::fprintf(stderr, "devicetree: no custom root in the caller's map after Init\n");
        std::abort();
    }
    return 0;
}
