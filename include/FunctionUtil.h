#pragma once
// The style loader: finds and reads the Qt style sheets of the current skin, which lie in
// "<executable's dir>/resource/skin/<skin>/...". Texts are cached for the life of the process.
// GUI thread only: the caches have no lock (only their creation is guarded).

#include <QString>

class QWidget;

namespace FunctionUtil {

// The skin's common sheets (every file of its "Common" folder, by name with case ignored) followed
// by the module sheet of LoadStyleMini. Sets the whole text on _pWidget when it is not null.
// The common text is cached only when the skin setting is not empty.
QString LoadStyle(const QString& _qstrModuleName, QWidget* _pWidget = nullptr,
                  const QString& _qstrFileName = QString());

// The module sheet alone, "<module dir>/qss/<file>[_<2*scale>K].qss". A module name that does not
// start with "Wgt", "Module" or "Lx" is looked up as "Module<name>"; an empty file name stands for
// the module's directory name. Cached by the names as passed, only when the skin setting is not
// empty. Sets the text on _pWidget when it is not null and a sheet was found.
QString LoadStyleMini(const QString& _qstrModuleName, QWidget* _pWidget = nullptr,
                      const QString& _qstrFileName = QString());

// Path of the sheet of _qstrModule and _qstrFile (both without extension) in _qstrPath: the scaled
// file when QT_SCALE_FACTOR (read once per process) is above 1 and that file exists, else the plain
// ".qss" one. Returns whether the file at _qstrPath exists. Either name empty: false, _qstrPath
// untouched.
bool GetQssPath(const QString& _qstrModule, const QString& _qstrFile, QString& _qstrPath);

// Directory of the running executable, "./" when it can't be read.
QString GetBinPath();

} // namespace FunctionUtil
