#include "support/buildmachine.h"

#include <QProcess>

namespace tavik::test {

int RunBuildMachineProgram(const QString& program, const QStringList& arguments) {
    QProcess p;
    p.setProcessChannelMode(QProcess::ForwardedChannels);
    p.start(program, arguments);
    if (!p.waitForFinished(120000))
        return -1;
    return p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
}

QString BuildMachinePath(const QString& path) {
    return path;
}

} // namespace tavik::test
