#pragma once
// The colour tables of the skins: skin -> group -> name -> "#rrggbb". Built once, read-only after;
// any thread.

#include <map>
#include <string>

class CLS_LxColorTable
{
public:
    // The process's tables.
    static const CLS_LxColorTable& Instance();

    bool HasSkin(const std::string& _strSkin) const;

    // The colour of _strName in _strGroup, else in "Common", of _strSkin; empty when neither has it
    // or the skin has no table.
    std::string Color(const std::string& _strSkin, const std::string& _strGroup,
                      const std::string& _strName) const;

private:
    CLS_LxColorTable();

    using ColorMap = std::map<std::string, std::map<std::string, std::string>>; // group -> name -> colour
    std::map<std::string, ColorMap> m_mapSkins;
};
