#include "CLS_LxParamStore.h"

#include <QSettings>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <cstdlib>

#include <unistd.h>
#ifdef __APPLE__
#include <mach-o/dyld.h>
#endif

namespace {

std::string ExecutableDir()
{
    char szPath[4096] = {0};
#ifdef __APPLE__
    uint32_t iSize = sizeof(szPath);
    if (0 != _NSGetExecutablePath(szPath, &iSize)) {
        return ".";
    }
#else
    const ssize_t iLength = readlink("/proc/self/exe", szPath, sizeof(szPath) - 1);
    if (iLength <= 0) {
        return ".";
    }
    szPath[iLength] = '\0';
#endif
    const std::string strPath(szPath);
    const std::string::size_type iSlash = strPath.find_last_of('/');
    if (std::string::npos == iSlash) {
        return ".";
    }
    return 0 == iSlash ? std::string("/") : strPath.substr(0, iSlash);
}

QString Key(const std::string& _strSection, const std::string& _strKey)
{
    const QString qstrKey = QString::fromStdString(_strKey);
    return _strSection.empty() ? qstrKey : QString::fromStdString(_strSection) + "/" + qstrKey;
}

// A value as the text it was written from: an unquoted "a,b" in a hand-written file reads back as
// a list, which is joined again.
std::string TextOf(const QVariant& _varValue)
{
    if (QMetaType::QStringList == _varValue.userType()) {
        return _varValue.toStringList().join(",").toStdString();
    }
    return _varValue.toString().toStdString();
}

// The file is UTF-8: QSettings::setIniCodec("UTF-8") in Qt 5; Qt 6 reads and writes INI files as
// UTF-8 always (and has no codecs).
void UseUtf8(QSettings& _settings)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    _settings.setIniCodec("UTF-8");
#else
    Q_UNUSED(_settings);
#endif
}

} // namespace

std::string CLS_LxParamStore::ChooseFile()
{
    const char* pFile = std::getenv("LXPARAM_FILE");
    if (nullptr != pFile && '\0' != *pFile) {
        return pFile;
    }
    return ExecutableDir() + "/LxParam.ini";
}

void CLS_LxParamStore::EnsureFile()
{
    if (m_strFile.empty()) {
        m_strFile = ChooseFile();
    }
}

int CLS_LxParamStore::Init(const std::string& _strFile)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    m_strFile = _strFile.empty() ? ChooseFile() : _strFile;
    QSettings settings(QString::fromStdString(m_strFile), QSettings::IniFormat);
    UseUtf8(settings);
    return QSettings::FormatError == settings.status() ? -1 : 0;
}

bool CLS_LxParamStore::IsInit()
{
    std::lock_guard<std::mutex> lock(m_mtx);
    return !m_strFile.empty();
}

int CLS_LxParamStore::Set(const std::string& _strSection, const std::string& _strKey,
                          const std::string& _strValue)
{
    if (_strKey.empty()) {
        return -1;
    }
    std::lock_guard<std::mutex> lock(m_mtx);
    EnsureFile();
    QSettings settings(QString::fromStdString(m_strFile), QSettings::IniFormat);
    UseUtf8(settings);
    settings.setValue(Key(_strSection, _strKey), QString::fromStdString(_strValue));
    settings.sync();
    return QSettings::NoError == settings.status() ? 0 : -1;
}

std::string CLS_LxParamStore::Get(const std::string& _strSection, const std::string& _strKey,
                                  const std::string& _strDefault)
{
    if (_strKey.empty()) {
        return _strDefault;
    }
    std::lock_guard<std::mutex> lock(m_mtx);
    EnsureFile();
    QSettings settings(QString::fromStdString(m_strFile), QSettings::IniFormat);
    UseUtf8(settings);
    const QString qstrKey = Key(_strSection, _strKey);
    if (!settings.contains(qstrKey)) {
        return _strDefault;
    }
    return TextOf(settings.value(qstrKey));
}

int CLS_LxParamStore::Delete(const std::string& _strSection, const std::string& _strKey)
{
    std::lock_guard<std::mutex> lock(m_mtx);
    EnsureFile();
    QSettings settings(QString::fromStdString(m_strFile), QSettings::IniFormat);
    UseUtf8(settings);
    if (_strKey.empty()) {
        if (_strSection.empty()) {
            return -1; // the whole file is not a section
        }
        settings.beginGroup(QString::fromStdString(_strSection));
        const bool blFound = !settings.allKeys().isEmpty();
        settings.endGroup();
        if (!blFound) {
            return -1;
        }
        settings.remove(QString::fromStdString(_strSection));
    } else {
        const QString qstrKey = Key(_strSection, _strKey);
        if (!settings.contains(qstrKey)) {
            return -1;
        }
        settings.remove(qstrKey);
    }
    settings.sync();
    return QSettings::NoError == settings.status() ? 0 : -1;
}

void CLS_LxParamStore::UnInit()
{
    std::lock_guard<std::mutex> lock(m_mtx);
    m_strFile.clear();
}

std::string CLS_LxParamStore::FilePath()
{
    std::lock_guard<std::mutex> lock(m_mtx);
    return m_strFile.empty() ? ChooseFile() : m_strFile;
}
