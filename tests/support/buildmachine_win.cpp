#include "support/buildmachine.h"

#include "support/winehost.h"

namespace tavik::test {

int RunBuildMachineProgram(const QString& program, const QStringList& arguments) {
    return RunOnHost(program, arguments, 120000);
}

QString BuildMachinePath(const QString& path) {
    return HostPath(path);
}

} // namespace tavik::test
