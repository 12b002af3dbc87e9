// Stand-in for the colour, task pool and application libraries (built once under each name).
// Every function notes its call as text for "SiblingTest_LastCall"; tasks run at once, on the
// caller's thread, which is enough to see that the task itself was handed over.

#include <functional>
#include <sstream>
#include <string>

namespace {
std::string s_strLastCall;
char s_cApp = 0;
char s_cAppData = 0;
char s_cAppSignals = 0;

std::string PointerText(const void* _pValue)
{
    std::ostringstream ossText;
    ossText << _pValue;
    return ossText.str();
}
} // namespace

extern "C" std::string GetNamedColor(const std::string& _strGroup, const std::string& _strName,
                                     const std::string& _strExtra)
{
    s_strLastCall = "GetNamedColor|" + _strGroup + "|" + _strName + "|" + _strExtra;
    return "#" + _strGroup + "/" + _strName;
}

extern "C" int AddTmpTask(const std::function<void()>& _task, void* _pOwner, const std::string& _strContext)
{
    s_strLastCall = "AddTmpTask|" + PointerText(_pOwner) + "|" + _strContext;
    _task();
    return 0;
}

extern "C" int AddLoopTask(const std::function<void()>& _task, int _iInterval, std::string& _strTaskId,
                           const std::string& _strContext)
{
    _strTaskId = "loop-" + std::to_string(_iInterval);
    s_strLastCall = "AddLoopTask|" + std::to_string(_iInterval) + "|" + _strContext;
    _task();
    return 0;
}

extern "C" int RemoveTask(const std::string& _strTaskId, const std::string& _strContext)
{
    s_strLastCall = "RemoveTask|" + _strTaskId + "|" + _strContext;
    return 0;
}

extern "C" void* GetApp()
{
    return &s_cApp;
}

extern "C" void* GetAppData()
{
    return &s_cAppData;
}

extern "C" void* GetAppSignals()
{
    return &s_cAppSignals;
}

extern "C" void SiblingTest_LastCall(std::string* _pOut)
{
    *_pOut = s_strLastCall;
}

// _pObjects receives the application, its data and its signal hub, in that order.
extern "C" void SiblingTest_AppObjects(void** _pObjects)
{
    _pObjects[0] = &s_cApp;
    _pObjects[1] = &s_cAppData;
    _pObjects[2] = &s_cAppSignals;
}
