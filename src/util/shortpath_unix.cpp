#include "tickcount.h"

#include <QFileInfo>

namespace tavik {

QString ShortPath(const QString& path) {
    return QFileInfo::exists(path) ? path : QString();
}

} // namespace tavik
