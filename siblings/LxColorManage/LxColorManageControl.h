#pragma once
// Exported functions of the reference colour library "libLxColorManage.so". The binder resolves
// "GetNamedColor" by name; the others are for the application, tests and demos. Every function is
// safe from any thread.

#include <string>

extern "C" {

// The colour _strName of group _strGroup in the skin in force, as a "#rrggbb" text that style
// sheets and QColor accept; a name the group lacks is looked up in "Common". A non-empty _strSkin
// asks for that skin instead (one without a table counts as "dark"). An empty text for an unknown
// name.
std::string GetNamedColor(const std::string& _strGroup, const std::string& _strName,
                          const std::string& _strSkin);

// Fixes the skin ("dark" or "light") over the environment and the settings library; an empty
// text goes back to them. 0, or -1 for a skin without a table.
int LxColorCtl_SetSkin(const std::string& _strSkin);

// The skin in force: the fixed one, else LXCOLOR_SKIN, else "skin" of "SystemConfig" through the
// settings library "libLxParam.so" (default "dark"). A skin without a table counts as "dark".
std::string LxColorCtl_GetSkin();

} // extern "C"
