// Any bytes as an installation file of the reference device layer: read whole or refused whole,
// with one error line that names the file (FuzzInstallation.h). The reader needs no application
// object and no device layer: it only turns JSON into plain values.

#include "FuzzInstallation.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* _pData, size_t _uiSize)
{
    if (_uiSize > 1 << 20)
        return 0; // QByteArray sizes are int; nothing new to learn from larger files
    const QByteArray qbaText(reinterpret_cast<const char*>(_pData), static_cast<int>(_uiSize));
    const QString qstrProblem = FuzzInstallation::Check(qbaText);
    if (!qstrProblem.isEmpty()) {
        std::fprintf(stderr, "fuzz_installation: %s\n", qstrProblem.toUtf8().constData());
        std::abort();
    }
    return 0;
}
