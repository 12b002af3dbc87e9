// Fuzz target: the bytes as a sheet file of the skin beside the executable, read back through the
// style loader (NUL cut, relative skin paths) and applied to a tree widget. Needs the settings
// stand-in libLxParam.so (FuzzParam.cpp) on LD_LIBRARY_PATH: it answers an empty skin, so the loader
// caches nothing and reads the file of every input.

#include "FuzzApp.h"
#include "FuzzDecoders.h"
#include "Param.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int* _pArgc, char*** _pArgv)
{
    WgtFuzz::MakeFuzzApplication(_pArgc, _pArgv);
    if (Param::GetModuleFun("GetParam") == nullptr ||
        !Param::GetParam("SystemConfig", "skin", "dark").empty()) {
        std::fprintf(stderr, "fuzz_stylesheet: put the folder of the fuzz libLxParam.so (empty skin) on "
                             "LD_LIBRARY_PATH; without it the loader caches the first sheet\n");
        std::exit(2);
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* _pData, size_t _iSize)
{
    const WgtFuzz::STRCT_SheetRun run = WgtFuzz::RunSheet(_pData, _iSize);
    if (run.m_qstrResult != run.m_qstrExpected || run.m_qstrWidgetSheet != run.m_qstrResult) {
        std::fprintf(stderr, "stylesheet mismatch: got %d chars, expected %d, widget has %d\n",
                     int(run.m_qstrResult.size()), int(run.m_qstrExpected.size()),
                     int(run.m_qstrWidgetSheet.size()));
        std::abort();
    }
    return 0;
}
