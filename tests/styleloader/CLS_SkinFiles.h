#pragma once
// Test helper: files of one skin beside the test executable, "<bin>/resource/skin/<skin>/...".
// Removes on destruction what it made: the whole skin folder when it made that, else the folders
// it made directly below the skin folder and the files it wrote into folders that were there.
// Folders above the skin are shared by every test of the build and are left in place.

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QStringList>

class CLS_SkinFiles
{
public:
    explicit CLS_SkinFiles(const QString& _qstrSkin) : m_qstrSkin(_qstrSkin) {}
    ~CLS_SkinFiles() { Clear(); }
    CLS_SkinFiles(const CLS_SkinFiles&) = delete;
    CLS_SkinFiles& operator=(const CLS_SkinFiles&) = delete;

    static QString BinDir() { return QCoreApplication::applicationDirPath(); }
    static QString SkinRoot(const QString& _qstrSkin) { return BinDir() + "/resource/skin/" + _qstrSkin; }

    QString Root() const { return SkinRoot(m_qstrSkin); }
    // Absolute path of a path relative to the skin folder.
    QString Path(const QString& _qstrRelative) const { return Root() + "/" + _qstrRelative; }
    // Base path of a sheet, "<skin>/<module>/qss/<file>", without extension.
    QString SheetBase(const QString& _qstrModule, const QString& _qstrFile) const
    {
        return Path(_qstrModule + "/qss/" + _qstrFile);
    }

    // Writes (or rewrites) a file below the skin folder, making the folders it needs.
    bool Write(const QString& _qstrRelative, const QByteArray& _qbaContent)
    {
        const QString qstrPath = Path(_qstrRelative);
        if (!MakePath(QFileInfo(qstrPath).path())) {
            return false;
        }
        if (!QFileInfo::exists(qstrPath)) {
            m_qlstFiles << qstrPath;
        }
        QFile qfile(qstrPath);
        if (!qfile.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
            return false;
        }
        return qfile.write(_qbaContent) == _qbaContent.size();
    }

    // Makes a folder below the skin folder.
    bool MakeDir(const QString& _qstrRelative) { return MakePath(Path(_qstrRelative)); }

    // Removes a file or a whole folder below the skin folder.
    bool Remove(const QString& _qstrRelative)
    {
        const QString qstrPath = Path(_qstrRelative);
        const QFileInfo qinfo(qstrPath);
        if (qinfo.isDir()) {
            return QDir(qstrPath).removeRecursively();
        }
        return QFile::remove(qstrPath);
    }

    void Clear()
    {
        for (const QString& qstrFile : qAsConst(m_qlstFiles)) {
            QFile::remove(qstrFile);
        }
        for (auto it = m_qlstDirs.crbegin(); it != m_qlstDirs.crend(); ++it) {
            QDir(*it).removeRecursively();
        }
        m_qlstFiles.clear();
        m_qlstDirs.clear();
    }

private:
    // mkpath, remembering the highest folder it makes at or below the skin folder.
    bool MakePath(const QString& _qstrDir)
    {
        const QString qstrRoot = Root();
        QString qstrTop;
        if (!QFileInfo::exists(qstrRoot)) {
            qstrTop = qstrRoot;
        } else {
            const QString qstrRelative = QDir(qstrRoot).relativeFilePath(_qstrDir);
            const QString qstrFirst = qstrRelative.section('/', 0, 0);
            if (!qstrFirst.isEmpty() && qstrFirst != "." && !QFileInfo::exists(qstrRoot + "/" + qstrFirst)) {
                qstrTop = qstrRoot + "/" + qstrFirst;
            }
        }
        if (!QDir().mkpath(_qstrDir)) {
            return false;
        }
        if (!qstrTop.isEmpty() && !m_qlstDirs.contains(qstrTop)) {
            m_qlstDirs << qstrTop;
        }
        return true;
    }

    QString m_qstrSkin;
    QStringList m_qlstFiles; // written into folders that were there before
    QStringList m_qlstDirs;  // made by this object, removed whole
};
