#pragma once

#include <QString>
#include <QStringList>

namespace tavik::test {

// Under Wine a Windows program's folders are folders of the host system, and the host's own
// programs can be started from it. Tests of the Windows build use that to make what only the
// host can make (a small file system, a pipe in a folder); on Windows itself there is no host.

// The host system's path of a Windows path; "" when not running under Wine.
QString HostPath(const QString& windowsPath);

// How a Windows program starts one of the host's programs: by its path through drive Z:,
// since Wine's own search path holds only Windows folders. `name` is a path or a name in
// /usr/bin.
QString HostProgram(const QString& name);

// Runs a program of the host system (such as "/bin/mount") and waits up to `waitMs` for it;
// its exit code, or -1 when it could not be run or did not end.
int RunOnHost(const QString& program, const QStringList& arguments, int waitMs = 10000);

} // namespace tavik::test
