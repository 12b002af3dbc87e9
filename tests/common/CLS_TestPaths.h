#pragma once
// Paths the build hands a test program are relative to the program's own folder, never absolute:
// an absolute path compiled in would make the program's objects differ between two checkouts, and
// the compiler cache would miss them in every fresh clone. These turn them into absolute paths at
// run time. No application object is needed, so they also serve static initialisers.

#include <QString>

#include <string>

namespace CLS_TestPaths {

// The folder of the running program, as the system reports it.
std::string ProgramDir();

// _pRelative, a path relative to the program's folder, as a clean absolute path without a trailing
// separator.
std::string FromProgramDir(const char* _pRelative);

// The same as a QString.
QString QFromProgramDir(const char* _pRelative);

} // namespace CLS_TestPaths
