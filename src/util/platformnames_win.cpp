#include "util/platformnames.h"

#include <QDir>
#include <QFileInfo>

namespace tavik {

Qt::CaseSensitivity FileNameCase() {
    return Qt::CaseInsensitive;
}

QString ProgramFileName(const QString& stem) {
    return stem + QStringLiteral(".exe");
}

QStringList DriveRoots() {
    QStringList roots;
    for (const QFileInfo& drive : QDir::drives())
        roots << QDir::toNativeSeparators(drive.absoluteFilePath());
    return roots;
}

} // namespace tavik
