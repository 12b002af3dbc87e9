// Stand-in for the skin colour library: answers every colour request with "#12ab34" and keeps
// the arguments of each call, which the test reads through ColorRecorder_Calls.

#include <string>

namespace {
std::string s_strCalls; // "group|name|extra;" per call
int s_iCalls = 0;
} // namespace

extern "C" std::string GetNamedColor(const std::string& _strGroup, const std::string& _strName,
                                     const std::string& _strExtra)
{
    s_strCalls += _strGroup + "|" + _strName + "|" + _strExtra + ";";
    ++s_iCalls;
    return "#12ab34";
}

extern "C" const char* ColorRecorder_Calls()
{
    return s_strCalls.c_str();
}

extern "C" int ColorRecorder_CallCount()
{
    return s_iCalls;
}
