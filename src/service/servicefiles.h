#pragma once

#include <QString>
#include <QStringList>

namespace tavik {

// Where a service is saved: package folder & "\_" & ID & "._". The ID is used as typed.
QString ServiceFilePath(const QString& packageFolder, const QString& id);

// Whether an ID keeps its service file inside the package folder: it holds no "/", "\\",
// "..", ":" and no control character (NUL included). An empty ID is allowed ("_._"). The
// ID travels inside service files, so a shared file must not pick where the editor writes.
bool IsServiceId(const QString& id);

// The lowest six-digit ID ("000000", "000001" ...) whose service file the package folder
// does not hold: a new service never takes an existing one's place.
QString LowestFreeServiceId(const QString& packageFolder);

// The folder the list of services searches, with a trailing "\": the package folder with
// (in the system's separators) every "\bin\..\Data\" replaced by "\Data", which undoes the doubled
// separator the package path carries.
QString ServiceListFolder(const QString& packageFolder);

// Fills the list of services: `lstOpen` is cleared and gets the title of every "*._" file
// whose title is not empty, in directory order; `File1` is never cleared and gets each such
// file's path appended. Empty files are deleted on the way.
void FindFiles(const QString& packageFolder, QStringList& lstOpen, QStringList& File1);

} // namespace tavik
