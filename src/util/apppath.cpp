#include "apppath.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace tavik {

QString AppPath() {
    const QByteArray home = qgetenv("TAVIK_HOME");
    if (!home.isEmpty())
        return QDir::cleanPath(QString::fromLocal8Bit(home) + QStringLiteral("/bin"));
    if (QCoreApplication::instance()) {
        const QString exeDir = QCoreApplication::applicationDirPath();
        if (QFileInfo(exeDir).fileName() == QStringLiteral("bin") &&
            QFileInfo(exeDir + QStringLiteral("/../res")).isDir())
            return exeDir;
    }
    return QDir::cleanPath(QStringLiteral(TAVIK_SOURCE_ROOT "/bin"));
}

QString NativePath(const QString& text) {
#ifdef Q_OS_WIN
    return text;
#else
    QString s = text;
    s.replace(u'\\', u'/');
    return s;
#endif
}

} // namespace tavik
