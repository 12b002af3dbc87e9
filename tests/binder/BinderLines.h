#pragma once
// Test helper: the console lines the binder is expected to write.

#include <QString>
#include <QStringList>

#include <string>
#include <vector>

inline QString LoadLine(const std::string& _strPath)
{
    return QString::fromStdString("load dll - " + _strPath);
}

inline QString SucessLine(const std::string& _strPath, const std::string& _strFunName)
{
    return QString::fromStdString("load dll [" + _strPath + ": " + _strFunName + "] sucess");
}

inline QString FailLine(const std::string& _strPath, const std::string& _strError)
{
    return QString::fromStdString("load dll [" + _strPath + "] fail !!! " + _strError);
}

// The lines of a first bind: the load line, then one line per name with the real path.
inline QStringList FirstBindLines(const std::string& _strPath, const std::vector<std::string>& _vecFunNames)
{
    QStringList qlstLines{LoadLine(_strPath)};
    for (const std::string& strName : _vecFunNames) {
        qlstLines << SucessLine(_strPath, strName);
    }
    return qlstLines;
}

// The lines of a bind through a cached handle: one line per name, with an empty path.
inline QStringList CachedBindLines(const std::vector<std::string>& _vecFunNames)
{
    QStringList qlstLines;
    for (const std::string& strName : _vecFunNames) {
        qlstLines << SucessLine(std::string(), strName);
    }
    return qlstLines;
}
