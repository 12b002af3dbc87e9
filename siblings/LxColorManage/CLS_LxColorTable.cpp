#include "CLS_LxColorTable.h"

namespace {

struct STRCT_ColorRow
{
    const char* m_pGroup;
    const char* m_pName;
    const char* m_pDark;
    const char* m_pLight;
};

// One row per named colour: group, name, dark skin, light skin.
const STRCT_ColorRow CONST_COLOR_ROWS[] = {
    {"Common", "<ArgRight_TreeBranch>", "#2b3a4f", "#dce3ec"},
    {"Common", "<Background>", "#1e2632", "#f5f7fa"},
    {"Common", "<Foreground>", "#d7dde6", "#1f2933"},
    {"Common", "<Border>", "#3a4658", "#c5ceda"},
    {"Common", "<Highlight>", "#2f6fd1", "#3d7fe6"},
    {"Common", "<HighlightText>", "#ffffff", "#ffffff"},
    {"Common", "<Hover>", "#33445c", "#e6edf5"},
    {"Common", "<Disabled>", "#6b7686", "#a3adba"},
    {"Common", "<Warning>", "#e0a030", "#c77c00"},
    {"Common", "<Error>", "#e05252", "#c62828"},
    {"WgtTreeWidget", "<TreeBackground>", "#222b38", "#ffffff"},
    {"WgtTreeWidget", "<TreeText>", "#c9d1dc", "#2a3440"},
    {"WgtTreeWidget", "<TreeSelected>", "#2d4a73", "#cfe0f7"},
    {"WgtTreeWidget", "<TreeOffline>", "#7a8493", "#9aa3ad"},
};

} // namespace

const CLS_LxColorTable& CLS_LxColorTable::Instance()
{
    static const CLS_LxColorTable s_clsTable;
    return s_clsTable;
}

CLS_LxColorTable::CLS_LxColorTable()
{
    for (const STRCT_ColorRow& strctRow : CONST_COLOR_ROWS) {
        m_mapSkins["dark"][strctRow.m_pGroup][strctRow.m_pName] = strctRow.m_pDark;
        m_mapSkins["light"][strctRow.m_pGroup][strctRow.m_pName] = strctRow.m_pLight;
    }
}

bool CLS_LxColorTable::HasSkin(const std::string& _strSkin) const
{
    return m_mapSkins.count(_strSkin) > 0;
}

std::string CLS_LxColorTable::Color(const std::string& _strSkin, const std::string& _strGroup,
                                    const std::string& _strName) const
{
    const auto itSkin = m_mapSkins.find(_strSkin);
    if (itSkin == m_mapSkins.end()) {
        return std::string();
    }
    for (const std::string& strGroup : {_strGroup, std::string("Common")}) {
        const auto itGroup = itSkin->second.find(strGroup);
        if (itGroup == itSkin->second.end()) {
            continue;
        }
        const auto itName = itGroup->second.find(_strName);
        if (itName != itGroup->second.end()) {
            return itName->second;
        }
    }
    return std::string();
}
