#include "SiblingFence.h"

#include "Logger.h"

namespace SiblingFence {

namespace {
const char* const CONST_MODULE = "WgtTreeWidget"; // module code of a fenced call's record
} // namespace

// Kept out of line and cold: the fenced calls inline only the try and the call itself.
__attribute__((cold, noinline)) void LogCaught(const STRCT_CallSite& _stSite, const char* _pOperation,
                                               const char* _pWhat) noexcept
{
    try {
        Logger::LogMessageStream clsLog(_stSite.m_pFile, CONST_MODULE, _stSite.m_pFunction, _stSite.m_iLine,
                                        3);
        clsLog << "sibling call threw operation:[" << (nullptr != _pOperation ? _pOperation : "")
               << "] exception:[" << (nullptr != _pWhat ? _pWhat : "unknown exception") << "]";
    } catch (...) {
        // The record is lost; the caller goes on with its failure value.
    }
}

} // namespace SiblingFence
