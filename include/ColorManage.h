#pragma once
// Gateway to the skin colour library "libLxColorManage.so". Callers take "GetNamedColor" from
// GetModuleFun, cast it to PFun_GetNamedColor and keep their own text when it is null.

#include <string>

namespace ColorManage {

// "GetNamedColor": the colour's text in UTF-8, e.g. ("Common", "<ArgRight_TreeBranch>", "").
typedef std::string (*PFun_GetNamedColor)(const std::string& _strGroup, const std::string& _strName,
                                          const std::string& _strExtra);

// Address of a function of the colour library, or null. Binds its function list ("GetNamedColor")
// on first use; _strPath is the library's folder, empty for the loader's own search.
void* GetModuleFun(const std::string& _strFunName, const std::string& _strPath = std::string());

} // namespace ColorManage
