#include "apppath.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace tavik {

QString resolveProgramFolder(const QString& tavikHome, const QString& executableFolder,
                             const QString& sourceRoot) {
    if (!tavikHome.isEmpty())
        return QDir::cleanPath(tavikHome + QStringLiteral("/bin"));
    // An installed program sits in the "bin" folder of its root, beside "res".
    if (!executableFolder.isEmpty() &&
        QFileInfo(executableFolder).fileName() == QStringLiteral("bin") &&
        QFileInfo(executableFolder + QStringLiteral("/../res")).isDir())
        return QDir::cleanPath(executableFolder);
    return QDir::cleanPath(sourceRoot + QStringLiteral("/bin"));
}

QString AppPath() {
    const QString exeDir =
        QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QString();
    return resolveProgramFolder(qEnvironmentVariable("TAVIK_HOME"), exeDir,
                                QStringLiteral(TAVIK_SOURCE_ROOT));
}

} // namespace tavik
