#pragma once
// The one place where a call from this library into a sibling library or a sibling object (device
// layer, application, settings, colours, task pool, menu view, log writer) is made. Whatever the
// sibling throws stays here: it is logged at level 3 under the module "WgtTreeWidget" with the
// caller's function, the operation and the exception text, and the call then gives the value its
// caller already treats as that call's failure (null, a negative code, false, a default).
//
// Any thread. When nothing throws a fenced call is the call itself: the lambda is inlined and the
// handlers sit on the cold side of the function (table-driven unwinding costs nothing until a throw).
//
//   CLS_IResourceTree* pTree = WGT_SIBLING_CALL("GetResourceTree", nullptr, DevManage::GetResourceTree());
//   if (WGT_SIBLING_CALL("ListIdsOfType", CONST_FAILED, pTree->ListIdsOfType(4, qvecIds)).m_iCode < 0) ...
//   WGT_SIBLING_RUN("TaskRequest", m_pMenu->TaskRequest("exec", qmapExec, qmapResult));

#include <exception>
#include <type_traits>
#include <utility>

namespace SiblingFence {

// Where a fenced call stands in this library: the log record of a throw names it.
struct STRCT_CallSite
{
    const char* m_pFile;
    const char* m_pFunction;
    int m_iLine;
};

// Writes the record of a caught exception; _pWhat is null for one that isn't a std::exception.
// Never throws: when the record itself fails it is lost.
void LogCaught(const STRCT_CallSite& _stSite, const char* _pOperation, const char* _pWhat) noexcept;

// _funCall(), or _failure (converted to the call's result type) when _funCall throws.
template <typename Failure, typename Fun>
inline auto Call(const STRCT_CallSite& _stSite, const char* _pOperation, const Failure& _failure,
                 Fun&& _funCall) noexcept -> std::invoke_result_t<Fun&>
{
    using Result = std::invoke_result_t<Fun&>;
    try {
        return _funCall();
    } catch (const std::exception& e) {
        LogCaught(_stSite, _pOperation, e.what());
    } catch (...) {
        LogCaught(_stSite, _pOperation, nullptr);
    }
    return static_cast<Result>(_failure);
}

// _funCall() for a call without a result; true when it went through, false when it threw.
template <typename Fun>
inline bool Run(const STRCT_CallSite& _stSite, const char* _pOperation, Fun&& _funCall) noexcept
{
    try {
        _funCall();
        return true;
    } catch (const std::exception& e) {
        LogCaught(_stSite, _pOperation, e.what());
    } catch (...) {
        LogCaught(_stSite, _pOperation, nullptr);
    }
    return false;
}

// The log writer's own call: what it throws is dropped without a record, since the record would go
// the same way. True when it went through.
template <typename Fun>
inline bool RunUnlogged(Fun&& _funCall) noexcept
{
    try {
        _funCall();
        return true;
    } catch (...) {
    }
    return false;
}

} // namespace SiblingFence

#define WGT_SIBLING_SITE                                                                                     \
    SiblingFence::STRCT_CallSite                                                                             \
    {                                                                                                        \
        __FILE__, __FUNCTION__, __LINE__                                                                     \
    }

// A fenced call with a result: the expression's value, or _failure when it throws.
#define WGT_SIBLING_CALL(_pOperation, _failure, ...)                                                         \
    SiblingFence::Call(WGT_SIBLING_SITE, (_pOperation), (_failure),                                          \
                       [&]() -> decltype(auto) { return __VA_ARGS__; })

// A fenced call whose result isn't used; gives true when it went through.
#define WGT_SIBLING_RUN(_pOperation, ...)                                                                    \
    SiblingFence::Run(WGT_SIBLING_SITE, (_pOperation), [&]() { __VA_ARGS__; })
