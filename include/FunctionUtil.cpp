#include "FunctionUtil.h"

#include "Param.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QMap>
#include <QStringList>
#include <QWidget>

#include <libgen.h>

#include <cstring>

#ifdef __APPLE__
#include <mach-o/dyld.h>
#else
#include <unistd.h>
#endif

namespace FunctionUtil {

namespace {

const char* const CONST_RELATIVE_SKIN_PATH = "./resource/skin/";

// Directory a module's sheets live in: names of our own modules are used as they stand, any other
// (a view's class name, "CLS_...") gets "Module" in front.
QString ModuleDirName(const QString& _qstrModuleName)
{
    if (_qstrModuleName.startsWith(QLatin1String("Wgt")) ||
        _qstrModuleName.startsWith(QLatin1String("Module")) ||
        _qstrModuleName.startsWith(QLatin1String("Lx"))) {
        return _qstrModuleName;
    }
    return QString("Module%1").arg(_qstrModuleName);
}

// The skin setting, "dark" when it is empty. _blParamEmpty tells whether "dark" stood in for an
// empty answer: such calls must not fill the caches.
QString SkinName(bool& _blParamEmpty)
{
    const std::string strSkin = Param::GetParam("SystemConfig", "skin", "dark");
    _blParamEmpty = strSkin.empty();
    return _blParamEmpty ? QString("dark") : QString::fromStdString(strSkin);
}

// Appends the sheet at _qstrPath to _qstrResult. A file that can't be opened (missing, unreadable,
// a directory) adds nothing. The text ends at the first NUL and is taken one character per byte.
void AppendSheet(const QString& _qstrPath, QString& _qstrResult)
{
    QFile qfileSheet(_qstrPath);
    if (!qfileSheet.open(QIODevice::ReadOnly)) {
        return;
    }

    QByteArray qbaData = qfileSheet.readAll();
    const int iNul = qbaData.indexOf('\0');
    if (iNul >= 0) {
        qbaData.truncate(iNul);
    }
    QString qstrText = QString::fromLatin1(qbaData);

    // Relative skin paths point at the executable's directory. Kept: the test is "after the start",
    // not "found", so a sheet that begins with the relative form keeps all of its relative paths.
    const QString qstrRelative = QLatin1String(CONST_RELATIVE_SKIN_PATH);
    const QString qstrAbsolute = QString("%1/resource/skin/").arg(GetBinPath());
    if (qstrAbsolute.contains(qstrRelative)) {
        // An executable's directory ending in "." would bring the relative form back with every
        // replacement and never end the loop below: replace what the sheet has, once.
        if (qstrText.indexOf(qstrRelative) > 0) {
            qstrText.replace(qstrRelative, qstrAbsolute);
        }
    } else {
        int iPos = qstrText.indexOf(qstrRelative);
        while (iPos > 0) {
            qstrText.replace(iPos, qstrRelative.size(), qstrAbsolute);
            iPos = qstrText.indexOf(qstrRelative);
        }
    }

    _qstrResult += qstrText;
    qfileSheet.close();
}

} // namespace

QString LoadStyle(const QString& _qstrModuleName, QWidget* _pWidget, const QString& _qstrFileName)
{
    // Kept for symmetry with LoadStyleMini, which is handed the names as they came in and transforms
    // them itself: the transformed names are not used here.
    const QString qstrDirName = ModuleDirName(_qstrModuleName);
    const QString qstrFileName = _qstrFileName.isEmpty() ? qstrDirName : _qstrFileName;
    Q_UNUSED(qstrFileName);

    QString qstrResult;
    bool blParamEmpty = false;
    const QString qstrSkin = SkinName(blParamEmpty);

    // The skin's common text, empty while not loaded. GUI thread only, no lock.
    static QString s_qstrCommonStyle;

    if (s_qstrCommonStyle.isEmpty()) {
        const QString qstrCommonDir = QString("%1/resource/skin/%2/Common").arg(GetBinPath(), qstrSkin);
        // Default listing: every entry, by name with case ignored. "." and ".." and any other
        // directory can't be opened as a sheet and add nothing.
        const QStringList qlstEntries = QDir(qstrCommonDir).entryList();
        for (const QString& qstrEntry : qlstEntries) {
            AppendSheet(qstrCommonDir + "/" + qstrEntry, qstrResult);
        }
        if (!blParamEmpty) {
            s_qstrCommonStyle = qstrResult;
        }
    } else {
        qstrResult = s_qstrCommonStyle;
    }

    qstrResult += LoadStyleMini(_qstrModuleName, nullptr, _qstrFileName);

    if (nullptr != _pWidget) {
        _pWidget->setStyleSheet(qstrResult);
    }
    return qstrResult;
}

QString LoadStyleMini(const QString& _qstrModuleName, QWidget* _pWidget, const QString& _qstrFileName)
{
    const QString qstrDirName = ModuleDirName(_qstrModuleName);
    const QString qstrFileName = _qstrFileName.isEmpty() ? qstrDirName : _qstrFileName;

    QString qstrResult;
    bool blParamEmpty = false;
    SkinName(blParamEmpty); // asked on every call, cached or not; the skin itself is GetQssPath's

    // Sheet text by the names as the caller passed them (not the transformed ones). GUI thread only.
    static QMap<QString, QString> s_qmapStyle;

    const QString qstrKey = _qstrModuleName + _qstrFileName;
    auto itStyle = s_qmapStyle.constFind(qstrKey);
    if (itStyle != s_qmapStyle.constEnd()) {
        qstrResult = itStyle.value();
        if (nullptr != _pWidget) {
            _pWidget->setStyleSheet(qstrResult);
        }
        return qstrResult;
    }

    QString qstrPath;
    if (GetQssPath(qstrDirName, qstrFileName, qstrPath)) {
        AppendSheet(qstrPath, qstrResult);
        // A sheet that exists but can't be opened is cached as empty text, too.
        if (!blParamEmpty) {
            s_qmapStyle.insert(qstrKey, qstrResult);
        }
        if (nullptr != _pWidget) {
            _pWidget->setStyleSheet(qstrResult);
        }
    }
    return qstrResult;
}

bool GetQssPath(const QString& _qstrModule, const QString& _qstrFile, QString& _qstrPath)
{
    if (_qstrModule.isEmpty() || _qstrFile.isEmpty()) {
        return false;
    }

    bool blParamEmpty = false;
    const QString qstrSkin = SkinName(blParamEmpty);

    _qstrPath = QString("%1/resource/skin/%2/%3/qss/%4").arg(GetBinPath(), qstrSkin, _qstrModule, _qstrFile);

    // Screen scale factor, -1.0 while not read. Read once per process: a later change of the
    // environment is not seen. GUI thread only.
    static double dScale = -1.0;
    if (dScale < 0.0) {
        // Empty, unset or not a number: 0.0, which counts as no scale.
        dScale = qgetenv("QT_SCALE_FACTOR").toDouble();
    }

    QString qstrCandidate;
    if (dScale > 1.0) {
        qstrCandidate = QString("%1_%2K.qss").arg(_qstrPath, QString::number(dScale + dScale, 'g'));
    }

    if (!qstrCandidate.isEmpty() && QFile::exists(qstrCandidate)) {
        _qstrPath = qstrCandidate;
    } else {
        _qstrPath = QString("%1.qss").arg(_qstrPath);
    }
    return QFile::exists(_qstrPath);
}

QString GetBinPath()
{
    QString qstrDir = "./";
    char szPath[4096];
    std::memset(szPath, 0, sizeof(szPath));
#ifdef __APPLE__
    uint32_t uiSize = sizeof(szPath);
    if (0 == _NSGetExecutablePath(szPath, &uiSize)) {
        qstrDir = QFile::decodeName(dirname(szPath));
    }
#else
    // One byte short of the buffer, so the zeroed tail always ends the text.
    const ssize_t iLen = readlink("/proc/self/exe", szPath, sizeof(szPath) - 1);
    if (iLen > 0) {
        qstrDir = QFile::decodeName(dirname(szPath));
    }
#endif
    return qstrDir;
}

} // namespace FunctionUtil
