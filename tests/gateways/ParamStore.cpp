// Stand-in for the settings library: a fixed store, "GetParam" answers the stored text or the
// default. "ParamTest_LastCall" gives the three arguments of the last "GetParam" call.

#include <map>
#include <string>
#include <utility>

namespace {
std::string s_strLastCall;

const std::map<std::pair<std::string, std::string>, std::string>& Store()
{
    static const std::map<std::pair<std::string, std::string>, std::string> s_mapStore{
        {{"SystemConfig", "skin"}, "blue"},
        {{"Tree", "emptyValue"}, ""},
    };
    return s_mapStore;
}
} // namespace

extern "C" std::string GetParam(const std::string& _strSection, const std::string& _strKey,
                                const std::string& _strDefault)
{
    s_strLastCall = _strSection + "|" + _strKey + "|" + _strDefault;
    auto it = Store().find({_strSection, _strKey});
    return it == Store().end() ? _strDefault : it->second;
}

extern "C" void ParamTest_LastCall(std::string* _pOut)
{
    *_pOut = s_strLastCall;
}
