#include "tickcount.h"

#include <QFileInfo>

namespace tavik {

QString ShortPath(const QString& path) {
    return QFileInfo::exists(path) ? path : QString();
}

QString ShortPathInBuffer(const QString& path, qsizetype) {
    // The path is its own short form, at any length.
    return ShortPath(path);
}

} // namespace tavik
