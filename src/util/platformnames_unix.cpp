#include "util/platformnames.h"

#include <QDir>
#include <QStorageInfo>
#include <algorithm>

namespace tavik {

Qt::CaseSensitivity FileNameCase() {
    return Qt::CaseSensitive;
}

QString ProgramFileName(const QString& stem) {
    return stem;
}

QStringList DriveRoots() {
    // No drive letters: the root first, then every other volume by where it is mounted.
    QStringList volumes;
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        if (!volume.isValid() || !volume.isReady())
            continue;
        const QString root = volume.rootPath();
        if (root != QDir::rootPath() && !volumes.contains(root))
            volumes << root;
    }
    std::sort(volumes.begin(), volumes.end(), [](const QString& a, const QString& b) {
        const int c = a.compare(b, Qt::CaseInsensitive);
        return c != 0 ? c < 0 : a < b;
    });
    return QStringList{QDir::rootPath()} + volumes;
}

} // namespace tavik
