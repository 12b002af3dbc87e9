#include "CLS_TestPaths.h"

#include <filesystem>

#ifdef __APPLE__
#include <mach-o/dyld.h>

#include <cstdint>
#include <vector>
#endif

namespace CLS_TestPaths {

std::string ProgramDir()
{
    std::error_code ec;
#ifdef __APPLE__
    uint32_t uSize = 0;
    _NSGetExecutablePath(nullptr, &uSize);
    std::vector<char> vecPath(uSize + 1, '\0');
    if (_NSGetExecutablePath(vecPath.data(), &uSize) != 0)
        return std::string();
    const std::filesystem::path pathExe = std::filesystem::canonical(vecPath.data(), ec);
#else
    const std::filesystem::path pathExe = std::filesystem::read_symlink("/proc/self/exe", ec);
#endif
    if (ec)
        return std::string();
    return pathExe.parent_path().string();
}

std::string FromProgramDir(const char* _pRelative)
{
    std::filesystem::path path =
        std::filesystem::path(ProgramDir()) / (_pRelative != nullptr ? _pRelative : "");
    std::string strPath = path.lexically_normal().string();
    while (strPath.size() > 1 && strPath.back() == '/')
        strPath.pop_back();
    return strPath;
}

QString QFromProgramDir(const char* _pRelative)
{
    return QString::fromStdString(FromProgramDir(_pRelative));
}

} // namespace CLS_TestPaths
