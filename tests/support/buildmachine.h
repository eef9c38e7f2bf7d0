#pragma once

#include <QString>
#include <QStringList>

namespace tavik::test {

// The machine the tests were built on (Linux; for the Windows build, the host Wine runs on) has
// programs the tests use as they are, CMake among them.

// Runs such a program and waits for it; its exit code, or -1.
int RunBuildMachineProgram(const QString& program, const QStringList& arguments);

// A path of the tests' own system as that machine spells it: the same path on Linux.
QString BuildMachinePath(const QString& path);

} // namespace tavik::test
