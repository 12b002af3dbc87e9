// Any bytes as an installation file of the reference device layer: read whole or refused whole,
// with one error line that names the file (FuzzInstallation.h). The reader needs no application
// object and no device layer: it only turns JSON into plain values.

#include "FuzzInstallation.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int CONST_iMaxNesting = 96;

// Brackets opened and not yet closed at the deepest point of the text, strings skipped.
int NestingDepth(const uint8_t* _pData, size_t _uiSize)
{
    int iDepth = 0;
    int iDeepest = 0;
    bool blInString = false;
    for (size_t i = 0; i < _uiSize; ++i) {
        const uint8_t uc = _pData[i];
        if (blInString) {
            if (uc == '\\')
                ++i;
            else if (uc == '"')
                blInString = false;
        } else if (uc == '"') {
            blInString = true;
        } else if (uc == '[' || uc == '{') {
            iDeepest = std::max(iDeepest, ++iDepth);
        } else if (uc == ']' || uc == '}') {
            --iDepth;
        }
    }
    return iDeepest;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* _pData, size_t _uiSize)
{
    if (_uiSize > 1 << 20)
        return 0; // QByteArray sizes are int; nothing new to learn from larger files
    // Qt's JSON parser loses a container that a later duplicate key replaces (see lsan_fuzz.supp);
    // its parser recurses twice per bracket, and below about a hundred levels the leak's stack no
    // longer reaches QJsonDocument::fromJson, which the suppression names. Installations nest a
    // few groups deep: deeper texts teach the reader nothing new.
    if (NestingDepth(_pData, _uiSize) > CONST_iMaxNesting)
        return 0;
    const QByteArray qbaText(reinterpret_cast<const char*>(_pData), static_cast<int>(_uiSize));
    const QString qstrProblem = FuzzInstallation::Check(qbaText);
    if (!qstrProblem.isEmpty()) {
        std::fprintf(stderr, "fuzz_installation: %s\n", qstrProblem.toUtf8().constData());
        std::abort();
    }
    return 0;
}
